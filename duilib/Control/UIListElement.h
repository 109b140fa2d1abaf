#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIControl.h"
#include "Core/UIInterfaces.h"
#include "Layout/UIHorizontalLayout.h"

#include <memory>
#include <vector>

// What stands in the rows of a list, combo, tree or menu. A row belongs to the owner that it was
// added to; looks come from the owner's TListInfoUI.
//
// Selecting is an agreement of two: Select and SelectMulti store the state when it changes and then
// tell the owner (SelectItem, SelectMultiItem, UnSelectItem with the row's index); the owner stores
// its own state first and then tells the rows. Either may be asked; the second call finds nothing
// to change.
//
// Notifications: "itemclick", "itemactivate", "itemdbclick", "menu", "timer", and with rich events
// "buttondown", "mouseenter" and "mouseleave". Their handlers may delete the row, also at once.

namespace DuiLib {

class CListBodyUI;
template <class Row>
class ListRow;

// The base of rows that draw themselves and hold no children.
class UILIB_API CListElementUI : public CControlUI, public IListItemUI {
public:
    CListElementUI();
    ~CListElementUI() override;
    // A copy looks at the same owner, but is none of its rows. Assigning leaves owner, index and
    // selection of the target alone.
    CListElementUI(const CListElementUI& other);
    CListElementUI& operator=(const CListElementUI& other);

    // Background by the owner's look: colour of the state, then the first image that is set, then
    // the lines between rows and columns.
    void DrawItemBk(HDC dc, const RECT& item);

    // Hides the base operation: cut by the client area of the body.
    void Invalidate();

    // IListItemUI:
    int GetIndex() const override;
    void SetIndex(int index) override;
    IListOwnerUI* GetOwner() override;
    // The owner is the argument's "IListOwner" interface; null for none.
    void SetOwner(CControlUI* owner) override;
    bool IsSelected() const override;
    // Goes through the owner; false when disabled.
    bool Select(bool select = true) override;
    bool SelectMulti(bool select = true) override;
    // A row has nothing to expand; derived classes may.
    bool IsExpanded() const override;
    bool Expand(bool expand = true) override;
    void DrawItemText(HDC dc, const RECT& item) override; // nothing

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    const RECT& GetPos() const override;
    RECT GetRelativePos() const override;
    RECT GetClientPos() const override;
    int GetWidth() const override;
    int GetHeight() const override;
    int GetX() const override;
    int GetY() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetVisible(bool visible = true) override; // a hidden row is not selected
    void SetEnabled(bool enable = true) override;
    bool Activate() override; // sends "itemactivate"
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    int m_iIndex;
    bool m_bSelected;
    UINT m_uButtonState; // UISTATE_* bits
    IListOwnerUI* m_pOwner;

private:
    friend class CListBodyUI;
    friend class ListRow<CListElementUI>;

    void NotifyDoubleClick();

    CListBodyUI* m_pBody = nullptr; // the parent, when it is one that places its rows lazily
    unsigned m_uPlaced = 0;         // the placing of the body that this row has followed
};

// A row of one text, in the look of the list. Without a height of its own it is as high as a line
// of text and 8 pixels more, or as the text where that wraps. XML class "ListLabelElement".
class UILIB_API CListLabelElementUI : public CListElementUI {
public:
    static CControlUI* CreateControl();

    CListLabelElementUI();

    // IListItemUI:
    void DrawItemText(HDC dc, const RECT& item) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetFixedWidth(int width) override;
    void SetText(LPCTSTR text) override;
    SIZE EstimateSize(SIZE available) override;
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;

protected:
    // The estimate of a text that wraps, and what it was made for.
    SIZE m_cxyFixedLast;
    bool m_bNeedEstimateSize;
    SIZE m_szAvailableLast;
    UINT m_uFixedHeightLast;
    int m_nFontLast;
    UINT m_uTextStyleLast;
    RECT m_rcTextPaddingLast; // device pixels

private:
    friend class CListTextElementUI;

    // Height of the text in device pixels, wrapped at a width; and a number that changes with what
    // that height depends on besides the width.
    virtual LONG MeasureText(const TListInfoUI& info, int width) const;
    virtual UINT MeasureKey(const TListInfoUI& info) const;
};

// A row with a text for each column of the header. Texts come from SetText, or from the list's
// text callback where that is set; with markup on they may contain links: a hand cursor, and on
// release of the left button "link" with wParam = the link's index, counted through the row.
// XML class "ListTextElement".
class UILIB_API CListTextElementUI : public CListLabelElementUI {
public:
    static CControlUI* CreateControl();

    CListTextElementUI();
    ~CListTextElementUI() override;
    CListTextElementUI(const CListTextElementUI& other);
    CListTextElementUI& operator=(const CListTextElementUI& other);

    // Column from 0; null outside the columns that have a text. The list's callback is not asked.
    LPCTSTR GetText(int column) const;
    void SetText(int column, LPCTSTR text);
    DWORD GetTextColor(int column) const; // ARGB, 0 = the list's
    void SetTextColor(int column, DWORD color);
    // Null when there is no such link. The address is valid until the row is painted again.
    CDuiString* GetLinkContent(int link);

    // IListItemUI:
    void SetOwner(CControlUI* owner) override;
    void DrawItemText(HDC dc, const RECT& item) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetText(LPCTSTR text) override; // of the first column
    CDuiString GetText() const override;
    void DoEvent(TEventUI& event) override;
    SIZE EstimateSize(SIZE available) override;

protected:
    enum { MAX_LINK = 8 };

private:
    struct Cell {
        CDuiString text;
        DWORD color = 0;
    };
    struct Links;

    Cell& MakeCell(int column);
    LPCTSTR CellText(int column, CDuiString& translated) const;
    DWORD CellColor(int column, const TListInfoUI& info);
    void DrawCell(HDC dc, int column, const RECT& room, const TListInfoUI& info);
    void TextChanged();
    LONG MeasureText(const TListInfoUI& info, int width) const override;
    UINT MeasureKey(const TListInfoUI& info) const override;
    int LinkAt(POINT point) const;
    void SetHoverLink(int link);

    std::unique_ptr<std::vector<Cell>> m_pCells; // from column 0 on, whose text is the control's
    std::unique_ptr<Links> m_pLinks;             // of the latest paint
    CControlUI* m_pListControl = nullptr;
    IListUI* m_pList = nullptr;
};

// A row that holds any children, laid out from left to right. Its own background lies over the
// look of the list. XML class "ListContainerElement".
class UILIB_API CListContainerElementUI : public CHorizontalLayoutUI, public IListItemUI {
public:
    static CControlUI* CreateControl();

    CListContainerElementUI();
    ~CListContainerElementUI() override;

    // As for CListElementUI.
    virtual void DrawItemBk(HDC dc, const RECT& item);
    void Invalidate();

    // IListItemUI:
    int GetIndex() const override;
    void SetIndex(int index) override;
    IListOwnerUI* GetOwner() override;
    void SetOwner(CControlUI* owner) override;
    bool IsSelected() const override;
    bool Select(bool select = true) override;
    bool SelectMulti(bool select = true) override;
    bool IsExpanded() const override;
    bool Expand(bool expand = true) override;
    // The text in the look of the list. Painting the row does not call it.
    void DrawItemText(HDC dc, const RECT& item) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    const RECT& GetPos() const override;
    RECT GetRelativePos() const override;
    RECT GetClientPos() const override;
    int GetWidth() const override;
    int GetHeight() const override;
    int GetX() const override;
    int GetY() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetVisible(bool visible = true) override;
    void SetEnabled(bool enable = true) override;
    bool Activate() override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;

protected:
    int m_iIndex;
    bool m_bSelected;
    UINT m_uButtonState;
    IListOwnerUI* m_pOwner;

    // What follows "itemactivate" on a double click: "itemdbclick".
    virtual void NotifyDoubleClick();

private:
    friend class CListBodyUI;
    friend class ListRow<CListContainerElementUI>;

    CListBodyUI* m_pBody = nullptr;
    unsigned m_uPlaced = 0;
};

} // namespace DuiLib
