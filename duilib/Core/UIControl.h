#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIDefine.h"
#include "Core/UIInterfaces.h"
#include "Core/UIRecords.h"
#include "Utils/UIDelegate.h"
#include "Utils/Utils.h"

#include <memory>
#include <utility>
#include <vector>

namespace DuiLib {

class CPaintManagerUI;

// The base of everything that a window shows: a rectangle with a look, a place in a layout, and
// events.
//
// XML class "Control". Members, setters and attributes hold design pixels (those of a screen of 96
// dots per inch); getters of sizes and distances, positions, event points and paint rectangles are
// device pixels. Colours are ARGB, 0 = none. Images are image strings. Everything belongs to the
// thread of the window; a handler may delete the control that called it through delayed deletion.
class UILIB_API CControlUI {
public:
    static CControlUI* CreateControl();

    CControlUI();

    // A copy has all values, delegates and custom attributes, but is registered nowhere: name,
    // timers, focus and capture stay those of the original. Assigning leaves manager and parent of
    // the target alone.
    CControlUI(const CControlUI& other);
    CControlUI& operator=(const CControlUI& other);

    virtual ~CControlUI();

    virtual CDuiString GetName() const;
    virtual void SetName(LPCTSTR name); // the manager's table of names is not told
    virtual LPCTSTR GetClass() const;
    virtual LPVOID GetInterface(LPCTSTR name); // null for an unknown name
    virtual UINT GetControlFlags() const;      // UIFLAG_* bits
    virtual bool Activate();                   // true when visible and enabled

    // Parent and manager are not owned. With `init` and a parent the control initialises itself.
    virtual CPaintManagerUI* GetManager() const;
    virtual void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true);
    virtual CControlUI* GetParent() const;

    // `{\n}` in the text becomes a line feed. A resource text is the id of a translation.
    virtual CDuiString GetText() const;
    virtual void SetText(LPCTSTR text);
    virtual bool IsResourceText() const;
    virtual void SetResourceText(bool resource);

    virtual bool IsDragEnabled() const;
    virtual void SetDragEnable(bool enable);
    virtual bool IsDropEnabled() const;
    virtual void SetDropEnable(bool enable);
    virtual bool IsRichEvent() const; // more notifications, where a class has them
    virtual void SetRichEvent(bool enable);

    virtual RECT GetRelativePos() const; // to the parent's corner; empty without a parent
    virtual RECT GetClientPos() const;   // where children go
    virtual const RECT& GetPos() const;  // in the window
    virtual void SetPos(RECT rect, bool invalidate = true);
    virtual void Move(SIZE offset, bool invalidate = true); // a floating control, device pixels
    virtual int GetWidth() const;
    virtual int GetHeight() const;
    virtual int GetX() const;
    virtual int GetY() const;
    virtual RECT GetPadding() const; // outer margin
    virtual void SetPadding(RECT padding);
    virtual SIZE GetFixedXY() const; // preset position of a floating control
    virtual void SetFixedXY(SIZE position);
    virtual SIZE GetFixedSize() const; // 0 = as the container likes
    virtual int GetFixedWidth() const;
    virtual void SetFixedWidth(int width); // negative: ignored, as in the five setters below
    virtual int GetFixedHeight() const;
    virtual void SetFixedHeight(int height);
    virtual int GetMinWidth() const;
    virtual void SetMinWidth(int width);
    virtual int GetMaxWidth() const;
    virtual void SetMaxWidth(int width);
    virtual int GetMinHeight() const;
    virtual void SetMinHeight(int height);
    virtual int GetMaxHeight() const;
    virtual void SetMaxHeight(int height);

    // Edges of a floating control as fractions of its container, or an alignment (DT_* bits).
    virtual TPercentInfo GetFloatPercent() const;
    virtual void SetFloatPercent(TPercentInfo percent);
    virtual void SetFloatAlign(UINT align);
    virtual UINT GetFloatAlign() const;

    virtual CDuiString GetToolTip() const;
    virtual void SetToolTip(LPCTSTR text); // `<n>` breaks the line
    virtual void SetToolTipWidth(int width);
    virtual int GetToolTipWidth(void);
    virtual WORD GetCursor();
    virtual void SetCursor(WORD cursor); // DUI_* cursor number, 0 = arrow
    virtual TCHAR GetShortcut() const;
    virtual void SetShortcut(TCHAR shortcut);
    virtual bool IsContextMenuUsed() const;
    virtual void SetContextMenuUsed(bool use);

    // For the application.
    virtual const CDuiString& GetUserData();
    virtual void SetUserData(LPCTSTR data);
    virtual UINT_PTR GetTag() const;
    virtual void SetTag(UINT_PTR tag);

    // Visible is what the application wants and what the container allows.
    virtual bool IsVisible() const;
    virtual void SetVisible(bool visible = true);
    virtual void SetInternVisible(bool visible = true); // for containers
    virtual bool IsEnabled() const;
    virtual void SetEnabled(bool enable = true);
    virtual bool IsMouseEnabled() const; // off: transparent to the mouse
    virtual void SetMouseEnabled(bool enable = true);
    virtual bool IsKeyboardEnabled() const;
    virtual void SetKeyboardEnabled(bool enable = true);
    virtual bool IsFocused() const;
    virtual void SetFocus();
    virtual bool IsFloat() const; // placed freely instead of by the layout
    virtual void SetFloat(bool isFloat = true);

    // This control, when the UIFIND_* flags let it pass and the procedure accepts it.
    virtual CControlUI* FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags);

    virtual void Init(); // DoInit, then OnInit
    virtual void DoInit();

    virtual void Event(TEventUI& event); // OnEvent, and DoEvent unless a delegate returned false
    virtual void DoEvent(TEventUI& event);
    virtual void SetAttribute(LPCTSTR name, LPCTSTR value);

    // The wanted size; 0 in a direction = as the container likes.
    virtual SIZE EstimateSize(SIZE available);

    // Paint cuts the rectangle to the control, DoPaint runs the steps in the order below, inside
    // a rounded clip when there is a border round. False ends the painting of the whole tree: it
    // has come to the stop control.
    virtual bool Paint(HDC dc, const RECT& paint, CControlUI* stop = NULL);
    virtual bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop);
    virtual void PaintBkColor(HDC dc);
    virtual void PaintBkImage(HDC dc);
    virtual void PaintStatusImage(HDC dc);
    virtual void PaintForeColor(HDC dc);
    virtual void PaintForeImage(HDC dc);
    virtual void PaintText(HDC dc);
    virtual void PaintBorder(HDC dc);

    // Runs after the tree was painted, for a control registered with AddPostPaint; not clipped.
    virtual void DoPostPaint(HDC dc, const RECT& paint);

    void setInstance(HINSTANCE instance = NULL); // module with the pictures

    // A timer of this control; false when it runs already or there is no manager.
    bool SetTimer(UINT id, UINT milliseconds);
    void KillTimer(UINT id);

    LPCTSTR GetGradient(); // "hor" = horizontal, else vertical
    void SetGradient(LPCTSTR gradient);
    DWORD GetBkColor() const;
    void SetBkColor(DWORD color);
    DWORD GetBkColor2() const;
    void SetBkColor2(DWORD color);
    DWORD GetBkColor3() const;
    void SetBkColor3(DWORD color);
    DWORD GetForeColor() const;
    void SetForeColor(DWORD color);
    LPCTSTR GetBkImage();
    void SetBkImage(LPCTSTR image);
    LPCTSTR GetForeImage() const;
    void SetForeImage(LPCTSTR image);
    DWORD GetFocusBorderColor() const;
    void SetFocusBorderColor(DWORD color);
    DWORD GetBorderColor() const;
    void SetBorderColor(DWORD color);
    bool IsColorHSL() const;
    void SetColorHSL(bool enable);
    DWORD GetAdjustColor(DWORD color); // with the HSL of the process, when the control uses it
    SIZE GetBorderRound() const;
    void SetBorderRound(SIZE round);

    // Draws an image string, with a modifier over it, into the control's rectangle. False when
    // the picture cannot be loaded.
    bool DrawImage(HDC dc, LPCTSTR image, LPCTSTR modify = NULL);

    // One width for the whole border, or one per side.
    int GetBorderSize() const;
    void SetBorderSize(int size);
    RECT GetBorderRectSize() const;
    void SetBorderSize(RECT sizes);
    int GetLeftBorderSize() const;
    void SetLeftBorderSize(int size);
    int GetTopBorderSize() const;
    void SetTopBorderSize(int size);
    int GetRightBorderSize() const;
    void SetRightBorderSize(int size);
    int GetBottomBorderSize() const;
    void SetBottomBorderSize(int size);
    int GetBorderStyle() const; // PS_*
    void SetBorderStyle(int style);

    // Schedules a paint; a layout of this control and a paint; a layout of the parent.
    void Invalidate();
    bool IsUpdateNeeded() const;
    void NeedUpdate();
    void NeedParentUpdate();

    // Attributes that no class knew. The first value of a name stays.
    void AddCustomAttribute(LPCTSTR name, LPCTSTR value);
    LPCTSTR GetCustomAttribute(LPCTSTR name) const; // null when there is none
    bool RemoveCustomAttribute(LPCTSTR name);
    void RemoveAllCustomAttribute();

    // Applies the style of that name, or a list `name="value" name2="value2"` up to its first
    // malformed pair.
    CControlUI* ApplyAttributeList(LPCTSTR list);

    void SetVirtualWnd(LPCTSTR name);
    CDuiString GetVirtualWnd() const; // its own, or that of the nearest parent with one

    CEventSource OnInit;
    CEventSource OnDestroy;
    CEventSource OnSize;
    CEventSource OnEvent;
    CEventSource OnNotify;

protected:
    // A design length in device pixels; unchanged without a manager.
    int ScaleLength(int length) const;
    SIZE ScaleLength(SIZE size) const;
    RECT ScaleLength(RECT rect) const;

    // What a size or distance may be: keeps sums of many of them inside an int.
    static int ClampLength(int length);
    static SIZE ClampLength(SIZE size);
    static RECT ClampLength(RECT rect);

    CPaintManagerUI* m_pManager;
    CControlUI* m_pParent;
    CDuiString m_sVirtualWnd;
    CDuiString m_sName;
    bool m_bUpdateNeeded;
    bool m_bMenuUsed;
    RECT m_rcItem;
    RECT m_rcPadding;
    SIZE m_cXY;
    SIZE m_cxyFixed;
    SIZE m_cxyMin;
    SIZE m_cxyMax;
    bool m_bVisible;
    bool m_bInternVisible;
    bool m_bEnabled;
    bool m_bMouseEnabled;
    bool m_bKeyboardEnabled;
    bool m_bFocused;
    bool m_bFloat;
    TPercentInfo m_piFloatPercent;
    UINT m_uFloatAlign;
    bool m_bSetPos; // OnSize is running
    bool m_bRichEvent;
    bool m_bDragEnabled;
    bool m_bDropEnabled;
    bool m_bResourceText;
    CDuiString m_sText;
    CDuiString m_sToolTip;
    TCHAR m_chShortcut;
    CDuiString m_sUserData;
    UINT_PTR m_pTag;
    CDuiString m_sGradient;
    DWORD m_dwBackColor;
    DWORD m_dwBackColor2;
    DWORD m_dwBackColor3;
    DWORD m_dwForeColor;
    CDuiString m_sBkImage;
    CDuiString m_sForeImage;
    DWORD m_dwBorderColor;
    DWORD m_dwFocusBorderColor;
    bool m_bColorHSL;
    int m_nBorderSize;
    int m_nBorderStyle;
    int m_nTooltipWidth;
    WORD m_wCursor;
    SIZE m_cxyBorderRound;
    RECT m_rcPaint;
    RECT m_rcBorderSize;
    HINSTANCE m_instance;

private:
    // A list that costs a pointer until it is used and copies its entries.
    class CustomAttributes {
    public:
        using Entries = std::vector<std::pair<CDuiString, CDuiString>>;

        CustomAttributes() = default;
        CustomAttributes(const CustomAttributes& other);
        CustomAttributes& operator=(const CustomAttributes& other);
        ~CustomAttributes() = default;

        Entries& Use(); // creates the list
        Entries* Find() const { return m_pEntries.get(); }
        void Clear() { m_pEntries.reset(); }

    private:
        std::unique_ptr<Entries> m_pEntries;
    };

    // A child wishes another size or place than when it was laid out last.
    virtual void ChildNeedsLayout(CControlUI* child);

    void CopyFrom(const CControlUI& other);
    template <class Value>
    void SetLook(Value& member, Value value);
    void SetLook(CDuiString& member, LPCTSTR value);
    void SetLength(LONG& member, int length);
    void DropFocus();
    bool CutByParents(RECT& rect) const;
    bool ApplyStyle(LPCTSTR name);
    void PaintSteps(HDC dc);

    CPaintManagerUI* m_pFormerManager; // the latest that was taken away
    bool m_bCopied;                    // the manager does not know it, and may die before it
    CustomAttributes m_mCustomAttrHash;
};

} // namespace DuiLib
