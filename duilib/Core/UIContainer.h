#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIControl.h"
#include "Core/UIInterfaces.h"
#include "Utils/Utils.h"

namespace DuiLib {

class CScrollBarUI;

// A control with children and scroll bars. It gives every child its whole client area.
//
// XML classes "Container" and "Box". What Add takes belongs to the container: removing it deletes
// it, after the current message where there is a manager, unless automatic or delayed deletion is
// turned off. Lengths are design pixels in setters and device pixels in getters.
class UILIB_API CContainerUI : public CControlUI, public IContainerUI {
public:
    static CControlUI* CreateControl();

    CContainerUI();
    ~CContainerUI() override;
    CContainerUI(const CContainerUI&) = delete;
    CContainerUI& operator=(const CContainerUI&) = delete;

    // IContainerUI:
    CControlUI* GetItemAt(int index) const override; // null out of range
    int GetItemIndex(CControlUI* control) const override;
    bool SetItemIndex(CControlUI* control, int index) override;
    int GetCount() const override;
    bool Add(CControlUI* control) override; // false for null and for a child of the container
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    virtual RECT GetInset() const; // inner margin
    virtual void SetInset(RECT inset);
    virtual int GetChildPadding() const; // distance between children
    virtual void SetChildPadding(int padding);
    virtual UINT GetChildAlign() const; // DT_LEFT, DT_CENTER, DT_RIGHT
    virtual void SetChildAlign(UINT align);
    virtual UINT GetChildVAlign() const; // DT_TOP, DT_VCENTER, DT_BOTTOM
    virtual void SetChildVAlign(UINT align);
    virtual bool IsAutoDestroy() const;
    virtual void SetAutoDestroy(bool destroy);
    virtual bool IsDelayedDestroy() const;
    virtual void SetDelayedDestroy(bool delayed);
    virtual bool IsMouseChildEnabled() const; // off: the mouse does not see the children
    virtual void SetMouseChildEnabled(bool enable = true);

    // The next visible, enabled list item from an index on; -1 when there is none.
    virtual int FindSelectable(int index, bool forward = true) const;

    // Scrolling, in device pixels; 0 for a bar that is absent or hidden.
    virtual SIZE GetScrollPos() const;
    virtual SIZE GetScrollRange() const;
    virtual void SetScrollPos(SIZE position, bool notify = true);
    virtual void SetScrollStepSize(int size); // positive
    virtual int GetScrollStepSize() const;    // 0 = default
    virtual void LineUp();
    virtual void LineDown();
    virtual void PageUp();
    virtual void PageDown();
    virtual void HomeUp();
    virtual void EndDown();
    virtual void LineLeft();
    virtual void LineRight();
    virtual void PageLeft();
    virtual void PageRight();
    virtual void HomeLeft();
    virtual void EndRight();
    virtual void EnableScrollBar(bool vertical = true, bool horizontal = false);
    virtual CScrollBarUI* GetVerticalScrollBar() const;
    virtual CScrollBarUI* GetHorizontalScrollBar() const;

protected:
    // Places the floating child at an index.
    virtual void SetFloatPos(int index);

    // Shows, hides, ranges and places the bars for an available rectangle and the size that the
    // children need; lays out again when that changes their space.
    virtual void ProcessScrollBar(RECT client, int neededWidth, int neededHeight);

public:
    bool IsFixedScrollbar(); // shown also when there is nothing to scroll
    void SetFixedScrollbar(bool isFixed);
    bool IsShowScrollbar(); // a bar that is not shown keeps working
    void SetShowScrollbar(bool show);

    // By the name of a control in this subtree, in any case.
    bool SetSubControlText(LPCTSTR name, LPCTSTR text);
    bool SetSubControlFixedHeight(LPCTSTR name, int height);
    bool SetSubControlFixedWdith(LPCTSTR name, int width);
    bool SetSubControlUserData(LPCTSTR name, LPCTSTR data);
    CDuiString GetSubControlText(LPCTSTR name);
    int GetSubControlFixedHeight(LPCTSTR name);
    int GetSubControlFixedWdith(LPCTSTR name);
    const CDuiString GetSubControlUserData(LPCTSTR name);
    CControlUI* FindSubControl(LPCTSTR name);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void DoEvent(TEventUI& event) override;
    void SetVisible(bool visible = true) override;
    void SetInternVisible(bool visible = true) override;
    void SetEnabled(bool enable) override;
    void SetMouseEnabled(bool enable = true) override;
    RECT GetClientPos() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    CControlUI* FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags) override;

protected:
    // Visits the children in order: `for (ChildWalk walk(*this); auto* child = walk.Next();)`. The
    // body may add, remove and delete children and the container itself.
    class UILIB_API ChildWalk {
    public:
        explicit ChildWalk(CContainerUI& container, int first = 0);
        ~ChildWalk();
        ChildWalk(const ChildWalk&) = delete;
        ChildWalk& operator=(const ChildWalk&) = delete;

        CControlUI* Next();
        int GetIndex() const { return m_nNext - 1; } // of what Next answered
        bool IsAlive() const { return m_pContainer != nullptr; }

    private:
        friend class CContainerUI;
        CContainerUI* m_pContainer;
        ChildWalk* m_pOuter;
        int m_nNext;
    };

    bool Detach(int index);

    // The rectangle less the inset and the shown bars; and that area as far as it can be scrolled,
    // for children that need a size, moved by the scroll positions.
    RECT GetChildArea() const;
    RECT GetContentArea(const RECT& client, SIZE needed) const;

    // Many children at once, for the price of one insertion and one removal. The index must exist,
    // and none of the controls may be a child already.
    void InsertChildren(const CStdPtrArray& children, int index);
    void RemoveChildren(int first, int count);

    CStdPtrArray m_items;
    RECT m_rcInset;
    int m_iChildPadding;
    UINT m_iChildAlign;
    UINT m_iChildVAlign;
    bool m_bAutoDestroy;
    bool m_bDelayedDestroy;
    bool m_bMouseChildEnabled;
    int m_nScrollStepSize;
    bool m_bFixedScrollbar;
    bool m_bShowScrollbar;
    CScrollBarUI* m_pVerticalScrollBar;
    CScrollBarUI* m_pHorizontalScrollBar;
    CDuiString m_sVerticalScrollBarStyle;
    CDuiString m_sHorizontalScrollBarStyle;

private:
    enum class Direction { Vertical, Horizontal };

    // What a container with many children keeps about them. Each is told before any handler runs.
    virtual void ChildInserted(int index);
    virtual void ChildRemoved(int index, CControlUI* child);
    virtual void RangeInserted(int first, int count);
    virtual void RangeRemoved(int first, const CStdPtrArray& children);
    virtual void ChildrenRemoved();
    // Moves what does not float, after scrolling.
    virtual void ShiftChildren(int dx, int dy);
    // The children that may be in sight: from `first` up to `last`, without it.
    virtual void GetChildrenInSight(int& first, int& last) const;

    bool Insert(CControlUI* control, int index);
    void WalkInserted(int index);
    void WalkRemoved(int index);
    void LetGo(CControlUI* control);
    void HandVisibilityDown();
    CControlUI* FindBelow(FINDCONTROLPROC procedure, LPVOID data, UINT flags);
    void ScrollTo(Direction direction, int position);
    bool ScrollByKey(TCHAR key);
    int GetLineStep(Direction direction) const;
    int GetPageStep(Direction direction) const;
    CScrollBarUI*& BarOf(Direction direction);
    void CreateBar(Direction direction);
    void DeleteBar(Direction direction);
    void ApplyBarStyle(Direction direction);
    int BarThickness(Direction direction) const;
    bool FitBar(Direction direction, int space, int needed, bool mayLayOut);
    void PlaceBars(const RECT& client);

    ChildWalk* m_pWalks = nullptr; // the running ones
    int m_nLayoutDepth = 0;
    bool m_bBarShownInPass[2] = {}; // vertical, horizontal
};

} // namespace DuiLib
