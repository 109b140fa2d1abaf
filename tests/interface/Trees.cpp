#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CTreeViewUIOperations()
{
    return {
        OPERATION(CTreeViewUI, CTreeViewUI, Add, bool(CTreeNodeUI*)),
        OPERATION(CTreeViewUI, CTreeViewUI, AddAt, long(CTreeNodeUI*, int)),
        OPERATION(CTreeViewUI, CTreeViewUI, AddAt, bool(CTreeNodeUI*, CTreeNodeUI*)),
        OPERATION(CTreeViewUI, CTreeViewUI, Remove, bool(CTreeNodeUI*)),
        OPERATION(CTreeViewUI, CTreeViewUI, RemoveAt, bool(int)),
        OPERATION(CTreeViewUI, CTreeViewUI, RemoveAll, void()),
        OPERATION(CTreeViewUI, CTreeViewUI, OnCheckBoxChanged, bool(void*)),
        OPERATION(CTreeViewUI, CTreeViewUI, OnFolderChanged, bool(void*)),
        OPERATION(CTreeViewUI, CTreeViewUI, OnDBClickItem, bool(void*)),
        OPERATION(CTreeViewUI, CTreeViewUI, Notify, void(TNotifyUI&)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetItemCheckBox, bool(bool, CTreeNodeUI*)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetItemExpand, void(bool, CTreeNodeUI*)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetVisibleFolderBtn, void(bool)),
        OPERATION(CTreeViewUI, CTreeViewUI, GetVisibleFolderBtn, bool()),
        OPERATION(CTreeViewUI, CTreeViewUI, SetVisibleCheckBtn, void(bool)),
        OPERATION(CTreeViewUI, CTreeViewUI, GetVisibleCheckBtn, bool()),
        OPERATION(CTreeViewUI, CTreeViewUI, SetItemMinWidth, void(UINT)),
        OPERATION(CTreeViewUI, CTreeViewUI, GetItemMinWidth, UINT()),
        OPERATION(CTreeViewUI, CTreeViewUI, SetItemTextColor, void(DWORD)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetItemHotTextColor, void(DWORD)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetSelItemTextColor, void(DWORD)),
        OPERATION(CTreeViewUI, CTreeViewUI, SetSelItemHotTextColor, void(DWORD)),
        FUNCTION(CTreeViewUI, CTreeViewUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CTreeViewUIOverrides : CTreeViewUI {
    bool Add(CTreeNodeUI*) override;
    long AddAt(CTreeNodeUI*, int) override;
    bool AddAt(CTreeNodeUI*, CTreeNodeUI*) override;
    bool Remove(CTreeNodeUI*) override;
    bool RemoveAt(int) override;
    void RemoveAll() override;
    bool OnCheckBoxChanged(void*) override;
    bool OnFolderChanged(void*) override;
    bool OnDBClickItem(void*) override;
    void Notify(TNotifyUI&) override;
    bool SetItemCheckBox(bool, CTreeNodeUI*) override;
    void SetItemExpand(bool, CTreeNodeUI*) override;
    void SetVisibleFolderBtn(bool) override;
    bool GetVisibleFolderBtn() override;
    void SetVisibleCheckBtn(bool) override;
    bool GetVisibleCheckBtn() override;
    void SetItemMinWidth(UINT) override;
    UINT GetItemMinWidth() override;
    void SetItemTextColor(DWORD) override;
    void SetItemHotTextColor(DWORD) override;
    void SetSelItemTextColor(DWORD) override;
    void SetSelItemHotTextColor(DWORD) override;
};

std::vector<Declaration> CTreeNodeUIOperations()
{
    return {
        OPERATION(CTreeNodeUI, CTreeNodeUI, Add, bool(CControlUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, AddAt, bool(CControlUI*, int)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, Remove, bool(CControlUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, AddChildNode, bool(CTreeNodeUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, RemoveAt, bool(CTreeNodeUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetParentNode, void(CTreeNodeUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetParentNode, CTreeNodeUI * ()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetCountChild, long()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetChildNode, CTreeNodeUI * (int)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, IsHasChild, bool() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetTreeLevel, long()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetTreeView, void(CTreeViewUI*)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetTreeView, CTreeViewUI * ()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetItemText, void(LPCTSTR)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetItemText, CDuiString()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, CheckBoxSelected, void(bool)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, IsCheckBoxSelected, bool() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetVisibleTag, void(bool)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetVisibleTag, bool()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetVisibleFolderBtn, void(bool)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetVisibleFolderBtn, bool()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetVisibleCheckBtn, void(bool)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetVisibleCheckBtn, bool()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetItemTextColor, void(DWORD)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetItemTextColor, DWORD() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetItemHotTextColor, void(DWORD)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetItemHotTextColor, DWORD() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetSelItemTextColor, void(DWORD)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetSelItemTextColor, DWORD() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, SetSelItemHotTextColor, void(DWORD)),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetSelItemHotTextColor, DWORD() const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetTreeNodes, CStdPtrArray()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetTreeIndex, int()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetNodeIndex, int()),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetTreeNodeHoriznotal, CHorizontalLayoutUI * () const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetFolderButton, CCheckBoxUI * () const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetDottedLine, CLabelUI * () const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetCheckBox, CCheckBoxUI * () const),
        OPERATION(CTreeNodeUI, CTreeNodeUI, GetItemButton, COptionUI * () const),
        FUNCTION(CTreeNodeUI, CTreeNodeUI, CreateControl, CControlUI * ()),
    };
}

// What may be left out of a call.
static_assert(requires(CTreeViewUI & it, bool a0) { it.SetItemCheckBox(a0); });
static_assert(requires(CTreeViewUI & it, bool a0) { it.SetItemExpand(a0); });

} // namespace

namespace interface_test {

std::vector<Declaration> Trees()
{
    return Join({CTreeViewUIOperations(), CTreeNodeUIOperations()});
}

} // namespace interface_test
