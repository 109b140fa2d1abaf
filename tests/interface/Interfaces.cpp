#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> INotifyUIOperations()
{
    return {
        OPERATION(INotifyUI, INotifyUI, Notify, void(TNotifyUI&)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct INotifyUIOverrides : INotifyUI {
    void Notify(TNotifyUI&) override;
};

std::vector<Declaration> IMessageFilterUIOperations()
{
    return {
        OPERATION(IMessageFilterUI, IMessageFilterUI, MessageHandler,
                  LRESULT(UINT, WPARAM, LPARAM, bool&)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IMessageFilterUIOverrides : IMessageFilterUI {
    LRESULT MessageHandler(UINT, WPARAM, LPARAM, bool&) override;
};

std::vector<Declaration> ITranslateAcceleratorOperations()
{
    return {
        OPERATION(ITranslateAccelerator, ITranslateAccelerator, TranslateAccelerator,
                  LRESULT(MSG*)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct ITranslateAcceleratorOverrides : ITranslateAccelerator {
    LRESULT TranslateAccelerator(MSG*) override;
};

std::vector<Declaration> IDialogBuilderCallbackOperations()
{
    return {
        OPERATION(IDialogBuilderCallback, IDialogBuilderCallback, CreateControl,
                  CControlUI * (LPCTSTR)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IDialogBuilderCallbackOverrides : IDialogBuilderCallback {
    CControlUI* CreateControl(LPCTSTR) override;
};

std::vector<Declaration> IQueryControlTextOperations()
{
    return {
        OPERATION(IQueryControlText, IQueryControlText, QueryControlText,
                  LPCTSTR(LPCTSTR, LPCTSTR)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IQueryControlTextOverrides : IQueryControlText {
    LPCTSTR QueryControlText(LPCTSTR, LPCTSTR) override;
};

std::vector<Declaration> IDragDropUIOperations()
{
    return {
        OPERATION(IDragDropUI, IDragDropUI, OnDragDrop, bool(CControlUI*)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IDragDropUIOverrides : IDragDropUI {
    bool OnDragDrop(CControlUI*) override;
};

std::vector<Declaration> IContainerUIOperations()
{
    return {
        OPERATION(IContainerUI, IContainerUI, GetItemAt, CControlUI * (int) const),
        OPERATION(IContainerUI, IContainerUI, GetItemIndex, int(CControlUI*) const),
        OPERATION(IContainerUI, IContainerUI, SetItemIndex, bool(CControlUI*, int)),
        OPERATION(IContainerUI, IContainerUI, GetCount, int() const),
        OPERATION(IContainerUI, IContainerUI, Add, bool(CControlUI*)),
        OPERATION(IContainerUI, IContainerUI, AddAt, bool(CControlUI*, int)),
        OPERATION(IContainerUI, IContainerUI, Remove, bool(CControlUI*)),
        OPERATION(IContainerUI, IContainerUI, RemoveAt, bool(int)),
        OPERATION(IContainerUI, IContainerUI, RemoveAll, void()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IContainerUIOverrides : IContainerUI {
    CControlUI* GetItemAt(int) const override;
    int GetItemIndex(CControlUI*) const override;
    bool SetItemIndex(CControlUI*, int) override;
    int GetCount() const override;
    bool Add(CControlUI*) override;
    bool AddAt(CControlUI*, int) override;
    bool Remove(CControlUI*) override;
    bool RemoveAt(int) override;
    void RemoveAll() override;
};

std::vector<Declaration> IListCallbackUIOperations()
{
    return {
        OPERATION(IListCallbackUI, IListCallbackUI, GetItemText, LPCTSTR(CControlUI*, int, int)),
        OPERATION(IListCallbackUI, IListCallbackUI, GetItemTextColor,
                  DWORD(CControlUI*, int, int, int)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IListCallbackUIOverrides : IListCallbackUI {
    LPCTSTR GetItemText(CControlUI*, int, int) override;
    DWORD GetItemTextColor(CControlUI*, int, int, int) override;
};

std::vector<Declaration> IListOwnerUIOperations()
{
    return {
        OPERATION(IListOwnerUI, IListOwnerUI, GetListType, UINT()),
        OPERATION(IListOwnerUI, IListOwnerUI, GetListInfo, TListInfoUI * ()),
        OPERATION(IListOwnerUI, IListOwnerUI, GetCurSel, int() const),
        OPERATION(IListOwnerUI, IListOwnerUI, SelectItem, bool(int, bool)),
        OPERATION(IListOwnerUI, IListOwnerUI, SelectMultiItem, bool(int, bool)),
        OPERATION(IListOwnerUI, IListOwnerUI, UnSelectItem, bool(int, bool)),
        OPERATION(IListOwnerUI, IListOwnerUI, DoEvent, void(TEventUI&)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IListOwnerUIOverrides : IListOwnerUI {
    UINT GetListType() override;
    TListInfoUI* GetListInfo() override;
    int GetCurSel() const override;
    bool SelectItem(int, bool) override;
    bool SelectMultiItem(int, bool) override;
    bool UnSelectItem(int, bool) override;
    void DoEvent(TEventUI&) override;
};

std::vector<Declaration> IListUIOperations()
{
    return {
        OPERATION(IListUI, IListUI, GetHeader, CListHeaderUI * () const),
        OPERATION(IListUI, IListUI, GetList, CContainerUI * () const),
        OPERATION(IListUI, IListUI, GetTextCallback, IListCallbackUI * () const),
        OPERATION(IListUI, IListUI, SetTextCallback, void(IListCallbackUI*)),
        OPERATION(IListUI, IListUI, ExpandItem, bool(int, bool)),
        OPERATION(IListUI, IListUI, GetExpandedItem, int() const),
        OPERATION(IListUI, IListUI, SetMultiSelect, void(bool)),
        OPERATION(IListUI, IListUI, IsMultiSelect, bool() const),
        OPERATION(IListUI, IListUI, SelectAllItems, void()),
        OPERATION(IListUI, IListUI, UnSelectAllItems, void()),
        OPERATION(IListUI, IListUI, GetSelectItemCount, int() const),
        OPERATION(IListUI, IListUI, GetNextSelItem, int(int) const),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IListUIOverrides : IListUI {
    CListHeaderUI* GetHeader() const override;
    CContainerUI* GetList() const override;
    IListCallbackUI* GetTextCallback() const override;
    void SetTextCallback(IListCallbackUI*) override;
    bool ExpandItem(int, bool) override;
    int GetExpandedItem() const override;
    void SetMultiSelect(bool) override;
    bool IsMultiSelect() const override;
    void SelectAllItems() override;
    void UnSelectAllItems() override;
    int GetSelectItemCount() const override;
    int GetNextSelItem(int) const override;
};

std::vector<Declaration> IListItemUIOperations()
{
    return {
        OPERATION(IListItemUI, IListItemUI, GetIndex, int() const),
        OPERATION(IListItemUI, IListItemUI, SetIndex, void(int)),
        OPERATION(IListItemUI, IListItemUI, GetOwner, IListOwnerUI * ()),
        OPERATION(IListItemUI, IListItemUI, SetOwner, void(CControlUI*)),
        OPERATION(IListItemUI, IListItemUI, IsSelected, bool() const),
        OPERATION(IListItemUI, IListItemUI, Select, bool(bool)),
        OPERATION(IListItemUI, IListItemUI, SelectMulti, bool(bool)),
        OPERATION(IListItemUI, IListItemUI, IsExpanded, bool() const),
        OPERATION(IListItemUI, IListItemUI, Expand, bool(bool)),
        OPERATION(IListItemUI, IListItemUI, DrawItemText, void(HDC, const RECT&)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IListItemUIOverrides : IListItemUI {
    int GetIndex() const override;
    void SetIndex(int) override;
    IListOwnerUI* GetOwner() override;
    void SetOwner(CControlUI*) override;
    bool IsSelected() const override;
    bool Select(bool) override;
    bool SelectMulti(bool) override;
    bool IsExpanded() const override;
    bool Expand(bool) override;
    void DrawItemText(HDC, const RECT&) override;
};

// What may be left out of a call.
static_assert(requires(IListOwnerUI & it, int a0) { it.SelectItem(a0); });
static_assert(requires(IListOwnerUI & it, int a0) { it.SelectMultiItem(a0); });
static_assert(requires(IListOwnerUI & it, int a0) { it.UnSelectItem(a0); });
static_assert(requires(IListUI & it, int a0) { it.ExpandItem(a0); });
static_assert(requires(IListItemUI & it) { it.Select(); });
static_assert(requires(IListItemUI & it) { it.SelectMulti(); });
static_assert(requires(IListItemUI & it) { it.Expand(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Interfaces()
{
    return Join({INotifyUIOperations(), IMessageFilterUIOperations(),
                 ITranslateAcceleratorOperations(), IDialogBuilderCallbackOperations(),
                 IQueryControlTextOperations(), IDragDropUIOperations(), IContainerUIOperations(),
                 IListCallbackUIOperations(), IListOwnerUIOperations(), IListUIOperations(),
                 IListItemUIOperations()});
}

} // namespace interface_test
