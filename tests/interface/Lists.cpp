#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

struct CListUIProtected : CListUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CListUI, CListUIProtected, m_bScrollSelect, bool),
            MEMBER(CListUI, CListUIProtected, m_bMultiSel, bool),
            MEMBER(CListUI, CListUIProtected, m_iCurSel, int),
            MEMBER(CListUI, CListUIProtected, m_iFirstSel, int),
            MEMBER(CListUI, CListUIProtected, m_iCurSelActivate, int),
            MEMBER(CListUI, CListUIProtected, m_iExpandedItem, int),
            MEMBER(CListUI, CListUIProtected, m_pCallback, IListCallbackUI*),
            MEMBER(CListUI, CListUIProtected, m_pList, CListBodyUI*),
            MEMBER(CListUI, CListUIProtected, m_pHeader, CListHeaderUI*),
            MEMBER(CListUI, CListUIProtected, m_ListInfo, TListInfoUI),
        };
    }
};

std::vector<Declaration> CListUIOperations()
{
    return {
        OPERATION(CListUI, CListUI, GetControlFlags, UINT() const),
        OPERATION(CListUI, CListUI, GetHeader, CListHeaderUI * () const),
        OPERATION(CListUI, CListUI, GetList, CContainerUI * () const),
        OPERATION(CListUI, CListUI, GetListType, UINT()),
        OPERATION(CListUI, CListUI, GetListInfo, TListInfoUI * ()),
        OPERATION(CListUI, CListUI, GetScrollSelect, bool()),
        OPERATION(CListUI, CListUI, SetScrollSelect, void(bool)),
        OPERATION(CListUI, CListUI, GetCurSel, int() const),
        OPERATION(CListUI, CListUI, GetCurSelActivate, int() const),
        OPERATION(CListUI, CListUI, SelectItem, bool(int, bool)),
        OPERATION(CListUI, CListUI, SelectItemActivate, bool(int)),
        OPERATION(CListUI, CListUI, SelectMultiItem, bool(int, bool)),
        OPERATION(CListUI, CListUI, SetMultiSelect, void(bool)),
        OPERATION(CListUI, CListUI, IsMultiSelect, bool() const),
        OPERATION(CListUI, CListUI, UnSelectItem, bool(int, bool)),
        OPERATION(CListUI, CListUI, SelectAllItems, void()),
        OPERATION(CListUI, CListUI, UnSelectAllItems, void()),
        OPERATION(CListUI, CListUI, GetSelectItemCount, int() const),
        OPERATION(CListUI, CListUI, GetNextSelItem, int(int) const),
        OPERATION(CListUI, CListUI, GetItemAt, CControlUI * (int) const),
        OPERATION(CListUI, CListUI, GetItemIndex, int(CControlUI*) const),
        OPERATION(CListUI, CListUI, SetItemIndex, bool(CControlUI*, int)),
        OPERATION(CListUI, CListUI, GetCount, int() const),
        OPERATION(CListUI, CListUI, Add, bool(CControlUI*)),
        OPERATION(CListUI, CListUI, AddAt, bool(CControlUI*, int)),
        OPERATION(CListUI, CListUI, Remove, bool(CControlUI*)),
        OPERATION(CListUI, CListUI, RemoveAt, bool(int)),
        OPERATION(CListUI, CListUI, RemoveAll, void()),
        OPERATION(CListUI, CListUI, EnsureVisible, void(int)),
        OPERATION(CListUI, CListUI, Scroll, void(int, int)),
        OPERATION(CListUI, CListUI, IsDelayedDestroy, bool() const),
        OPERATION(CListUI, CListUI, SetDelayedDestroy, void(bool)),
        OPERATION(CListUI, CListUI, GetChildPadding, int() const),
        OPERATION(CListUI, CListUI, SetChildPadding, void(int)),
        OPERATION(CListUI, CListUI, SetItemFont, void(int)),
        OPERATION(CListUI, CListUI, SetItemTextStyle, void(UINT)),
        OPERATION(CListUI, CListUI, SetItemTextPadding, void(RECT)),
        OPERATION(CListUI, CListUI, GetItemTextPadding, RECT() const),
        OPERATION(CListUI, CListUI, SetItemTextColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetItemTextColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetItemBkColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetItemBkColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetItemBkImage, void(LPCTSTR)),
        OPERATION(CListUI, CListUI, GetItemBkImage, LPCTSTR() const),
        OPERATION(CListUI, CListUI, SetAlternateBk, void(bool)),
        OPERATION(CListUI, CListUI, IsAlternateBk, bool() const),
        OPERATION(CListUI, CListUI, SetSelectedItemTextColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetSelectedItemTextColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetSelectedItemBkColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetSelectedItemBkColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetSelectedItemImage, void(LPCTSTR)),
        OPERATION(CListUI, CListUI, GetSelectedItemImage, LPCTSTR() const),
        OPERATION(CListUI, CListUI, SetHotItemTextColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetHotItemTextColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetHotItemBkColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetHotItemBkColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetHotItemImage, void(LPCTSTR)),
        OPERATION(CListUI, CListUI, GetHotItemImage, LPCTSTR() const),
        OPERATION(CListUI, CListUI, SetDisabledItemTextColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetDisabledItemTextColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetDisabledItemBkColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetDisabledItemBkColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetDisabledItemImage, void(LPCTSTR)),
        OPERATION(CListUI, CListUI, GetDisabledItemImage, LPCTSTR() const),
        OPERATION(CListUI, CListUI, SetItemLineColor, void(DWORD)),
        OPERATION(CListUI, CListUI, GetItemLineColor, DWORD() const),
        OPERATION(CListUI, CListUI, SetItemShowRowLine, void(bool)),
        OPERATION(CListUI, CListUI, SetItemShowColumnLine, void(bool)),
        OPERATION(CListUI, CListUI, IsItemShowHtml, bool()),
        OPERATION(CListUI, CListUI, SetItemShowHtml, void(bool)),
        OPERATION(CListUI, CListUI, IsItemRSelected, bool()),
        OPERATION(CListUI, CListUI, SetItemRSelected, void(bool)),
        OPERATION(CListUI, CListUI, SetMultiExpanding, void(bool)),
        OPERATION(CListUI, CListUI, GetExpandedItem, int() const),
        OPERATION(CListUI, CListUI, ExpandItem, bool(int, bool)),
        OPERATION(CListUI, CListUI, GetTextCallback, IListCallbackUI * () const),
        OPERATION(CListUI, CListUI, SetTextCallback, void(IListCallbackUI*)),
        OPERATION(CListUI, CListUI, SortItems, BOOL(PULVCompareFunc, UINT_PTR)),
        OPERATION(CListUI, CListUI, GetScrollPos, SIZE() const),
        OPERATION(CListUI, CListUI, GetScrollRange, SIZE() const),
        OPERATION(CListUI, CListUI, SetScrollPos, void(SIZE, bool)),
        OPERATION(CListUI, CListUI, LineUp, void()),
        OPERATION(CListUI, CListUI, LineDown, void()),
        OPERATION(CListUI, CListUI, PageUp, void()),
        OPERATION(CListUI, CListUI, PageDown, void()),
        OPERATION(CListUI, CListUI, HomeUp, void()),
        OPERATION(CListUI, CListUI, EndDown, void()),
        OPERATION(CListUI, CListUI, LineLeft, void()),
        OPERATION(CListUI, CListUI, LineRight, void()),
        OPERATION(CListUI, CListUI, PageLeft, void()),
        OPERATION(CListUI, CListUI, PageRight, void()),
        OPERATION(CListUI, CListUI, HomeLeft, void()),
        OPERATION(CListUI, CListUI, EndRight, void()),
        OPERATION(CListUI, CListUI, EnableScrollBar, void(bool, bool)),
        OPERATION(CListUI, CListUI, GetVerticalScrollBar, CScrollBarUI * () const),
        OPERATION(CListUI, CListUI, GetHorizontalScrollBar, CScrollBarUI * () const),
        OPERATION(CListUI, CListUI, SetPos, void(RECT, bool)),
        OPERATION(CListUI, CListUI, Move, void(SIZE, bool)),
        OPERATION(CListUI, CListUI, DoEvent, void(TEventUI&)),
        OPERATION(CListUI, CListUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        FUNCTION(CListUI, CListUI, CreateControl, CControlUI * ()),
        OPERATION(CListUI, CListUI, CheckColumEditable, BOOL(int)),
        OPERATION(CListUI, CListUI, GetEditUI, CEditUI * ()),
        OPERATION(CListUI, CListUI, CheckColumComboBoxable, BOOL(int)),
        OPERATION(CListUI, CListUI, GetComboBoxUI, CComboUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CListUIOverrides : CListUI {
    CScrollBarUI* GetVerticalScrollBar() const override;
    CScrollBarUI* GetHorizontalScrollBar() const override;
    BOOL CheckColumEditable(int) override;
    CEditUI* GetEditUI() override;
    BOOL CheckColumComboBoxable(int) override;
    CComboUI* GetComboBoxUI() override;
};

struct CListBodyUIProtected : CListBodyUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CListBodyUI, CListBodyUIProtected, m_pOwner, CListUI*),
            MEMBER(CListBodyUI, CListBodyUIProtected, m_pCompareFunc, PULVCompareFunc),
            MEMBER(CListBodyUI, CListBodyUIProtected, m_compareData, UINT_PTR),
        };
    }
};

std::vector<Declaration> CListBodyUIOperations()
{
    return {
        OPERATION(CListBodyUI, CListBodyUI, GetScrollStepSize, int() const),
        OPERATION(CListBodyUI, CListBodyUI, SetScrollPos, void(SIZE, bool)),
        OPERATION(CListBodyUI, CListBodyUI, SetPos, void(RECT, bool)),
        OPERATION(CListBodyUI, CListBodyUI, DoEvent, void(TEventUI&)),
        OPERATION(CListBodyUI, CListBodyUI, SortItems, BOOL(PULVCompareFunc, UINT_PTR)),
    };
}

std::vector<Declaration> CListHeaderUIOperations()
{
    return {
        OPERATION(CListHeaderUI, CListHeaderUI, EstimateSize, SIZE(SIZE)),
        OPERATION(CListHeaderUI, CListHeaderUI, SetPos, void(RECT, bool)),
        OPERATION(CListHeaderUI, CListHeaderUI, SetScaleHeader, void(bool)),
        OPERATION(CListHeaderUI, CListHeaderUI, IsScaleHeader, bool() const),
        OPERATION(CListHeaderUI, CListHeaderUI, DoInit, void()),
        OPERATION(CListHeaderUI, CListHeaderUI, DoPostPaint, void(HDC, const RECT&)),
        FUNCTION(CListHeaderUI, CListHeaderUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> CListHeaderItemUIOperations()
{
    return {
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, IsDragable, bool() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetDragable, void(bool)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetSepWidth, DWORD() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetSepWidth, void(int)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetTextStyle, DWORD() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetTextStyle, void(UINT)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetTextColor, DWORD() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetTextColor, void(DWORD)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetTextPadding, void(RECT)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetTextPadding, RECT() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetFont, void(int)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, IsShowHtml, bool()),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetShowHtml, void(bool)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetSepImage, LPCTSTR() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetSepImage, void(LPCTSTR)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetScale, void(int)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetScale, int() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetThumbRect, RECT() const),
        FUNCTION(CListHeaderItemUI, CListHeaderItemUI, CreateControl, CControlUI * ()),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetNormalImage, LPCTSTR() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetNormalImage, void(LPCTSTR)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetHotImage, LPCTSTR() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetHotImage, void(LPCTSTR)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetPushedImage, LPCTSTR() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetPushedImage, void(LPCTSTR)),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, GetFocusedImage, LPCTSTR() const),
        OPERATION(CListHeaderItemUI, CListHeaderItemUI, SetFocusedImage, void(LPCTSTR)),
    };
}

std::vector<Declaration> CListElementUIOperations()
{
    return {
        OPERATION(CListElementUI, CListElementUI, GetIndex, int() const),
        OPERATION(CListElementUI, CListElementUI, SetIndex, void(int)),
        OPERATION(CListElementUI, CListElementUI, GetOwner, IListOwnerUI * ()),
        OPERATION(CListElementUI, CListElementUI, SetOwner, void(CControlUI*)),
        OPERATION(CListElementUI, CListElementUI, IsSelected, bool() const),
        OPERATION(CListElementUI, CListElementUI, Select, bool(bool)),
        OPERATION(CListElementUI, CListElementUI, SelectMulti, bool(bool)),
        OPERATION(CListElementUI, CListElementUI, IsExpanded, bool() const),
        OPERATION(CListElementUI, CListElementUI, Expand, bool(bool)),
        OPERATION(CListElementUI, CListElementUI, SetVisible, void(bool)),
        OPERATION(CListElementUI, CListElementUI, SetEnabled, void(bool)),
        OPERATION(CListElementUI, CListElementUI, Activate, bool()),
        OPERATION(CListElementUI, CListElementUI, Invalidate, void()),
        OPERATION(CListElementUI, CListElementUI, DoEvent, void(TEventUI&)),
        OPERATION(CListElementUI, CListElementUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        OPERATION(CListElementUI, CListElementUI, DrawItemText, void(HDC, const RECT&)),
        OPERATION(CListElementUI, CListElementUI, DrawItemBk, void(HDC, const RECT&)),
    };
}

struct CListContainerElementUIProtected : CListContainerElementUI {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CListContainerElementUI, CListContainerElementUIProtected, NotifyDoubleClick,
                      void()),
        };
    }
};

std::vector<Declaration> CListContainerElementUIOperations()
{
    return {
        OPERATION(CListContainerElementUI, CListContainerElementUI, GetIndex, int() const),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SetIndex, void(int)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, GetOwner, IListOwnerUI * ()),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SetOwner, void(CControlUI*)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, IsSelected, bool() const),
        OPERATION(CListContainerElementUI, CListContainerElementUI, Select, bool(bool)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SelectMulti, bool(bool)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, IsExpanded, bool() const),
        OPERATION(CListContainerElementUI, CListContainerElementUI, Expand, bool(bool)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SetVisible, void(bool)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SetEnabled, void(bool)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, Activate, bool()),
        OPERATION(CListContainerElementUI, CListContainerElementUI, Invalidate, void()),
        OPERATION(CListContainerElementUI, CListContainerElementUI, DoEvent, void(TEventUI&)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, SetAttribute,
                  void(LPCTSTR, LPCTSTR)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, DrawItemText,
                  void(HDC, const RECT&)),
        OPERATION(CListContainerElementUI, CListContainerElementUI, DrawItemBk,
                  void(HDC, const RECT&)),
        FUNCTION(CListContainerElementUI, CListContainerElementUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CListContainerElementUIOverrides : CListContainerElementUI {
    void NotifyDoubleClick() override;
};

struct CListTextElementUIProtected : CListTextElementUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CListTextElementUI, CListTextElementUIProtected, m_iIndex, int),
            MEMBER(CListTextElementUI, CListTextElementUIProtected, m_bSelected, bool),
            MEMBER(CListTextElementUI, CListTextElementUIProtected, m_uButtonState, UINT),
            MEMBER(CListTextElementUI, CListTextElementUIProtected, m_pOwner, IListOwnerUI*),
        };
    }
};

std::vector<Declaration> CListTextElementUIOperations()
{
    return {
        OPERATION(CListTextElementUI, CListTextElementUI, GetText, LPCTSTR(int) const),
        OPERATION(CListTextElementUI, CListTextElementUI, SetText, void(int, LPCTSTR)),
        OPERATION(CListTextElementUI, CListTextElementUI, GetTextColor, DWORD(int) const),
        OPERATION(CListTextElementUI, CListTextElementUI, SetTextColor, void(int, DWORD)),
        OPERATION(CListTextElementUI, CListTextElementUI, GetLinkContent, CDuiString * (int)),
        FUNCTION(CListTextElementUI, CListTextElementUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> CListLabelElementUIOperations()
{
    return {
        FUNCTION(CListLabelElementUI, CListLabelElementUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> TListInfoUIMembers()
{
    return {
        MEMBER(TListInfoUI, TListInfoUI, nColumns, int),
        MEMBER(TListInfoUI, TListInfoUI, rcColumn, RECT[UILIST_MAX_COLUMNS]),
        MEMBER(TListInfoUI, TListInfoUI, nFont, int),
        MEMBER(TListInfoUI, TListInfoUI, uTextStyle, UINT),
        MEMBER(TListInfoUI, TListInfoUI, rcTextPadding, RECT),
        MEMBER(TListInfoUI, TListInfoUI, dwTextColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, dwBkColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, sBkImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, bAlternateBk, bool),
        MEMBER(TListInfoUI, TListInfoUI, dwSelectedTextColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, dwSelectedBkColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, sSelectedImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, dwHotTextColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, dwHotBkColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, sHotImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, dwDisabledTextColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, dwDisabledBkColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, sDisabledImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, sForeImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, sHotForeImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, sSelectedForeImage, CDuiString),
        MEMBER(TListInfoUI, TListInfoUI, dwLineColor, DWORD),
        MEMBER(TListInfoUI, TListInfoUI, bShowRowLine, bool),
        MEMBER(TListInfoUI, TListInfoUI, bShowColumnLine, bool),
        MEMBER(TListInfoUI, TListInfoUI, bShowHtml, bool),
        MEMBER(TListInfoUI, TListInfoUI, bMultiExpandable, bool),
        MEMBER(TListInfoUI, TListInfoUI, bRSelected, bool),
    };
}

// What may be left out of a call.
static_assert(requires(CListUI & it, int a0) { it.SelectItem(a0); });
static_assert(requires(CListUI & it, int a0) { it.SelectMultiItem(a0); });
static_assert(requires(CListUI & it, int a0) { it.UnSelectItem(a0); });
static_assert(requires(CListUI & it) { it.SetItemShowRowLine(); });
static_assert(requires(CListUI & it) { it.SetItemShowColumnLine(); });
static_assert(requires(CListUI & it) { it.SetItemShowHtml(); });
static_assert(requires(CListUI & it) { it.SetItemRSelected(); });
static_assert(requires(CListUI & it, int a0) { it.ExpandItem(a0); });
static_assert(requires(CListUI & it, SIZE a0) { it.SetScrollPos(a0); });
static_assert(requires(CListUI & it) { it.EnableScrollBar(); });
static_assert(requires(CListUI & it, bool a0) { it.EnableScrollBar(a0); });
static_assert(requires(CListUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CListUI & it, SIZE a0) { it.Move(a0); });
static_assert(requires(CListBodyUI & it, SIZE a0) { it.SetScrollPos(a0); });
static_assert(requires(CListBodyUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CListHeaderUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CListHeaderItemUI & it) { it.SetShowHtml(); });
static_assert(requires(CListElementUI & it) { it.Select(); });
static_assert(requires(CListElementUI & it) { it.SelectMulti(); });
static_assert(requires(CListElementUI & it) { it.Expand(); });
static_assert(requires(CListElementUI & it) { it.SetVisible(); });
static_assert(requires(CListElementUI & it) { it.SetEnabled(); });
static_assert(requires(CListContainerElementUI & it) { it.Select(); });
static_assert(requires(CListContainerElementUI & it) { it.SelectMulti(); });
static_assert(requires(CListContainerElementUI & it) { it.Expand(); });
static_assert(requires(CListContainerElementUI & it) { it.SetVisible(); });
static_assert(requires(CListContainerElementUI & it) { it.SetEnabled(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Lists()
{
    return Join({CListUIProtected::List(), CListUIOperations(), CListBodyUIProtected::List(),
                 CListBodyUIOperations(), CListHeaderUIOperations(), CListHeaderItemUIOperations(),
                 CListElementUIOperations(), CListContainerElementUIProtected::List(),
                 CListContainerElementUIOperations(), CListTextElementUIProtected::List(),
                 CListTextElementUIOperations(), CListLabelElementUIOperations(),
                 TListInfoUIMembers()});
}

} // namespace interface_test
