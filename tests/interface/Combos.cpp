#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CComboUIOperations()
{
    return {
        OPERATION(CComboUI, CComboUI, GetText, CDuiString() const),
        OPERATION(CComboUI, CComboUI, SetTextStyle, void(UINT)),
        OPERATION(CComboUI, CComboUI, GetTextStyle, UINT() const),
        OPERATION(CComboUI, CComboUI, SetTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetDisabledTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetDisabledTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetFont, void(int)),
        OPERATION(CComboUI, CComboUI, GetFont, int() const),
        OPERATION(CComboUI, CComboUI, GetTextPadding, RECT() const),
        OPERATION(CComboUI, CComboUI, SetTextPadding, void(RECT)),
        OPERATION(CComboUI, CComboUI, IsShowHtml, bool()),
        OPERATION(CComboUI, CComboUI, SetShowHtml, void(bool)),
        OPERATION(CComboUI, CComboUI, IsShowShadow, bool()),
        OPERATION(CComboUI, CComboUI, SetShowShadow, void(bool)),
        OPERATION(CComboUI, CComboUI, GetDropBoxAttributeList, CDuiString()),
        OPERATION(CComboUI, CComboUI, SetDropBoxAttributeList, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetDropBoxSize, SIZE() const),
        OPERATION(CComboUI, CComboUI, SetDropBoxSize, void(SIZE)),
        OPERATION(CComboUI, CComboUI, GetDropBoxInset, RECT() const),
        OPERATION(CComboUI, CComboUI, SetDropBoxInset, void(RECT)),
        OPERATION(CComboUI, CComboUI, GetListType, UINT()),
        OPERATION(CComboUI, CComboUI, GetListInfo, TListInfoUI * ()),
        OPERATION(CComboUI, CComboUI, GetCurSel, int() const),
        OPERATION(CComboUI, CComboUI, SelectItem, bool(int, bool)),
        OPERATION(CComboUI, CComboUI, SelectMultiItem, bool(int, bool)),
        OPERATION(CComboUI, CComboUI, UnSelectItem, bool(int, bool)),
        OPERATION(CComboUI, CComboUI, SetItemIndex, bool(CControlUI*, int)),
        OPERATION(CComboUI, CComboUI, Activate, bool()),
        OPERATION(CComboUI, CComboUI, GetScrollSelect, bool()),
        OPERATION(CComboUI, CComboUI, SetScrollSelect, void(bool)),
        OPERATION(CComboUI, CComboUI, SortItems, void()),
        OPERATION(CComboUI, CComboUI, SortItems, BOOL(PULVCompareFunc, UINT_PTR)),
        FUNCTION(CComboUI, CComboUI, CreateControl, CControlUI * ()),
        OPERATION(CComboUI, CComboUI, GetNormalImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetNormalImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetHotImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetHotImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetPushedImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetPushedImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetFocusedImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetFocusedImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetDisabledImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetDisabledImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, SetItemFont, void(int)),
        OPERATION(CComboUI, CComboUI, SetItemTextStyle, void(UINT)),
        OPERATION(CComboUI, CComboUI, SetItemTextPadding, void(RECT)),
        OPERATION(CComboUI, CComboUI, GetItemTextPadding, RECT() const),
        OPERATION(CComboUI, CComboUI, SetItemTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetItemTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetItemBkColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetItemBkColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetItemBkImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetItemBkImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetAlternateBk, void(bool)),
        OPERATION(CComboUI, CComboUI, IsAlternateBk, bool() const),
        OPERATION(CComboUI, CComboUI, SetSelectedItemTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetSelectedItemTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetSelectedItemBkColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetSelectedItemBkColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetSelectedItemImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetSelectedItemImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetHotItemTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetHotItemTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetHotItemBkColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetHotItemBkColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetHotItemImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetHotItemImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetDisabledItemTextColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetDisabledItemTextColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetDisabledItemBkColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetDisabledItemBkColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, SetDisabledItemImage, void(LPCTSTR)),
        OPERATION(CComboUI, CComboUI, GetDisabledItemImage, LPCTSTR() const),
        OPERATION(CComboUI, CComboUI, SetItemLineColor, void(DWORD)),
        OPERATION(CComboUI, CComboUI, GetItemLineColor, DWORD() const),
        OPERATION(CComboUI, CComboUI, IsItemShowHtml, bool()),
        OPERATION(CComboUI, CComboUI, SetItemShowHtml, void(bool)),
        OPERATION(CComboUI, CComboUI, IsItemRSelected, bool()),
        OPERATION(CComboUI, CComboUI, SetItemRSelected, void(bool)),
    };
}

// What may be left out of a call.
static_assert(requires(CComboUI & it) { it.SetShowHtml(); });
static_assert(requires(CComboUI & it) { it.SetShowShadow(); });
static_assert(requires(CComboUI & it, int a0) { it.SelectItem(a0); });
static_assert(requires(CComboUI & it, int a0) { it.SelectMultiItem(a0); });
static_assert(requires(CComboUI & it, int a0) { it.UnSelectItem(a0); });
static_assert(requires(CComboUI & it) { it.SetItemShowHtml(); });
static_assert(requires(CComboUI & it) { it.SetItemRSelected(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Combos()
{
    return Join({CComboUIOperations()});
}

} // namespace interface_test
