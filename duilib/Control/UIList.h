#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Control/UIListElement.h"
#include "Control/UIListHeader.h"
#include "Core/UIInterfaces.h"
#include "Layout/UIVerticalLayout.h"

#include <memory>
#include <vector>

namespace DuiLib {

// How an owner's rows look. Colours are ARGB, 0 = none; images are image strings; distances are
// design pixels, column rectangles device pixels of the window.
typedef struct UILIB_API tagTListInfoUI {
    tagTListInfoUI();

    int nColumns;
    RECT rcColumn[UILIST_MAX_COLUMNS];
    int nFont;
    UINT uTextStyle; // DT_* bits
    RECT rcTextPadding;
    DWORD dwTextColor;
    DWORD dwBkColor;
    CDuiString sBkImage;
    bool bAlternateBk;
    DWORD dwSelectedTextColor;
    DWORD dwSelectedBkColor;
    CDuiString sSelectedImage;
    DWORD dwHotTextColor;
    DWORD dwHotBkColor;
    CDuiString sHotImage;
    DWORD dwDisabledTextColor;
    DWORD dwDisabledBkColor;
    CDuiString sDisabledImage;
    CDuiString sForeImage;
    CDuiString sHotForeImage;
    CDuiString sSelectedForeImage;
    DWORD dwLineColor;
    bool bShowRowLine;
    bool bShowColumnLine;
    bool bShowHtml;
    bool bMultiExpandable;
    bool bRSelected;
} TListInfoUI;

class CComboUI;
class CEditUI;
class CListUI;

// The scrolled rows of a list, stacked with the full width.
//
// Only the rows in sight are placed; any other row takes its place when it is asked for it. So a
// scroll step costs what is visible, whatever the number of rows. A row that a caller moves with
// SetPos stays there until the body is scrolled or laid out.
class UILIB_API CListBodyUI : public CVerticalLayoutUI {
public:
    explicit CListBodyUI(CListUI* owner);
    ~CListBodyUI() override;

    // Stable. The comparison gets two rows as CControlUI* and the data; negative: the first comes
    // first. FALSE without a comparison.
    BOOL SortItems(PULVCompareFunc compare, UINT_PTR data);

    // CContainerUI:
    int GetScrollStepSize() const override; // the owner's
    void SetScrollPos(SIZE position, bool notify = true) override;
    int GetItemIndex(CControlUI* control) const override;
    bool Remove(CControlUI* control) override;

    // CControlUI:
    void SetPos(RECT rect, bool invalidate = true) override;
    void DoEvent(TEventUI& event) override;

protected:
    CListUI* m_pOwner;
    PULVCompareFunc m_pCompareFunc;
    UINT_PTR m_compareData;

private:
    friend class CListUI;
    friend class CTreeViewUI;
    template <class Row>
    friend class ListRow;
    struct Layout;

    // CContainerUI and CControlUI:
    void ChildInserted(int index) override;
    void ChildRemoved(int index, CControlUI* child) override;
    void RangeInserted(int first, int count) override;
    void RangeRemoved(int first, const CStdPtrArray& children) override;
    void ChildrenRemoved() override;
    void ShiftChildren(int dx, int dy) override;
    void GetChildrenInSight(int& first, int& last) const override;
    void ChildNeedsLayout(CControlUI* child) override;

    void MeasureRows(const RECT& client);
    void PlaceRowsInSight();
    void PlaceRow(CControlUI& row, int index);
    RECT PlaceOf(CControlUI& row, int index) const;
    unsigned GetPlacing() const; // counts the placings; never 0
    void EnsureRowPlaced(CControlUI& row, int index);
    void RowMoved(CControlUI& row, int index, const RECT& rect);
    void EnsureVisible(int index);
    int IndexAPageAway(int index, bool forward) const;
    void ForgetHeights();
    void ForgetHeight(int index);
    bool AreRowsNumbered() const;
    void NumberRows() const;

    std::unique_ptr<Layout> m_pLayout;
};

// A list: a header over a scrolled body of rows. XML class "List".
//
// Every operation on children works on the body: a header replaces an empty header, a header item
// becomes a column, a list item a row. Rows are owned. Distances are design pixels in the setters
// and device pixels in the getters.
class UILIB_API CListUI : public CVerticalLayoutUI, public IListUI {
public:
    static CControlUI* CreateControl();

    CListUI();
    ~CListUI() override;

    // The wheel moves the selection instead of scrolling.
    bool GetScrollSelect();
    void SetScrollSelect(bool select);

    int GetCurSelActivate() const;
    bool SelectItemActivate(int index);

    void EnsureVisible(int index);
    void Scroll(int dx, int dy);

    void SetItemFont(int index);
    void SetItemTextStyle(UINT style);
    void SetItemTextPadding(RECT padding);
    RECT GetItemTextPadding() const;
    void SetItemTextColor(DWORD color);
    DWORD GetItemTextColor() const;
    void SetItemBkColor(DWORD color);
    DWORD GetItemBkColor() const;
    void SetItemBkImage(LPCTSTR image);
    LPCTSTR GetItemBkImage() const;
    void SetAlternateBk(bool alternate); // only every second row has the list's background
    bool IsAlternateBk() const;
    void SetSelectedItemTextColor(DWORD color);
    DWORD GetSelectedItemTextColor() const;
    void SetSelectedItemBkColor(DWORD color);
    DWORD GetSelectedItemBkColor() const;
    void SetSelectedItemImage(LPCTSTR image);
    LPCTSTR GetSelectedItemImage() const;
    void SetHotItemTextColor(DWORD color);
    DWORD GetHotItemTextColor() const;
    void SetHotItemBkColor(DWORD color);
    DWORD GetHotItemBkColor() const;
    void SetHotItemImage(LPCTSTR image);
    LPCTSTR GetHotItemImage() const;
    void SetDisabledItemTextColor(DWORD color);
    DWORD GetDisabledItemTextColor() const;
    void SetDisabledItemBkColor(DWORD color);
    DWORD GetDisabledItemBkColor() const;
    void SetDisabledItemImage(LPCTSTR image);
    LPCTSTR GetDisabledItemImage() const;
    void SetItemLineColor(DWORD color);
    DWORD GetItemLineColor() const;
    void SetItemShowRowLine(bool show = false);
    void SetItemShowColumnLine(bool show = false);
    bool IsItemShowHtml();
    void SetItemShowHtml(bool show = true);
    bool IsItemRSelected(); // the right button selects too
    void SetItemRSelected(bool select = true);
    void SetMultiExpanding(bool multiExpandable);

    // As CListBodyUI::SortItems; the selection stays with its rows.
    BOOL SortItems(PULVCompareFunc compare, UINT_PTR data);

    // For a list with cells that can be edited: FALSE and null here.
    virtual BOOL CheckColumEditable(int column);
    virtual CEditUI* GetEditUI();
    virtual BOOL CheckColumComboBoxable(int column);
    virtual CComboUI* GetComboBoxUI();

    // IListUI:
    UINT GetListType() override;
    TListInfoUI* GetListInfo() override;
    int GetCurSel() const override;
    // Alone; scrolls it into view, sends "itemselect" when that changed something.
    bool SelectItem(int index, bool takeFocus = false) override;
    bool SelectMultiItem(int index, bool takeFocus = false) override;
    bool UnSelectItem(int index, bool others = false) override;
    CListHeaderUI* GetHeader() const override;
    CContainerUI* GetList() const override;
    IListCallbackUI* GetTextCallback() const override;
    void SetTextCallback(IListCallbackUI* callback) override;
    bool ExpandItem(int index, bool expand = true) override;
    int GetExpandedItem() const override;
    void SetMultiSelect(bool multiSelect) override;
    bool IsMultiSelect() const override;
    void SelectAllItems() override;
    void UnSelectAllItems() override;
    int GetSelectItemCount() const override;
    int GetNextSelItem(int index) const override;

    // CContainerUI:
    CControlUI* GetItemAt(int index) const override;
    int GetItemIndex(CControlUI* control) const override;
    bool SetItemIndex(CControlUI* control, int index) override;
    int GetCount() const override;
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool RemoveAt(int index) override;
    void RemoveAll() override;
    bool IsDelayedDestroy() const override;
    void SetDelayedDestroy(bool delayed) override;
    int GetChildPadding() const override;
    void SetChildPadding(int padding) override;
    SIZE GetScrollPos() const override;
    SIZE GetScrollRange() const override;
    void SetScrollPos(SIZE position, bool notify = true) override;
    void LineUp() override;
    void LineDown() override;
    void PageUp() override;
    void PageDown() override;
    void HomeUp() override;
    void EndDown() override;
    void LineLeft() override;
    void LineRight() override;
    void PageLeft() override;
    void PageRight() override;
    void HomeLeft() override;
    void EndRight() override;
    void EnableScrollBar(bool vertical = true, bool horizontal = false) override;
    CScrollBarUI* GetVerticalScrollBar() const override;
    CScrollBarUI* GetHorizontalScrollBar() const override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void Move(SIZE offset, bool invalidate = true) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    bool m_bScrollSelect;
    bool m_bMultiSel;
    int m_iCurSel;
    int m_iFirstSel;
    int m_iCurSelActivate;
    int m_iExpandedItem;
    IListCallbackUI* m_pCallback;
    CListBodyUI* m_pList;
    CListHeaderUI* m_pHeader;
    TListInfoUI m_ListInfo;

private:
    friend class CListBodyUI;
    friend class CTreeViewUI;
    class Selection; // which rows are selected, in their order

    // What a list whose rows stand in a tree does otherwise.
    virtual bool HasOrderOfItsOwn() const; // its rows cannot be sorted one by one
    virtual bool DoRowKey(const TEventUI& event);

    void RowsInserted(int first, int count);
    void RowsRemoved(int first, const CStdPtrArray& rows);
    void RowsRemoved();
    void RowsSorted(const std::vector<int>& oldIndices);
    void NumberRows();
    bool ReplaceHeader(CListHeaderUI* header);
    bool AddColumn(CControlUI* column, int index);
    IListItemUI* RowAt(int index) const;
    bool IsSelectable(int index) const;
    bool ChangeRow(int index, bool select);
    bool ChangeOthers(int kept);
    void SelectRange(int from, int to);
    void ShowSelected(int index, bool takeFocus);
    void NotifySelected(int index);
    void QueueSelected(int index);
    bool SelectByKey(const TEventUI& event);
    void SelectFromKeyboard(int index);
    void LayOutColumns();
    int ColumnsWidth() const;
    void LookChanged();

    std::unique_ptr<Selection> m_pSelection;
    bool m_bChangingRow = false; // a row is told what the list knows already
    int m_nNumbered = 0;         // the rows before this one know their indices
};

} // namespace DuiLib
