#include "Control/UITreeView.h"

#include "Core/UIManager.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <new>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

bool IsHeaderPart(CControlUI& control)
{
    return control.GetInterface(DUI_CTR_LISTHEADER) != nullptr ||
           control.GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr;
}

} // namespace

CControlUI* CTreeViewUI::CreateControl()
{
    return new CTreeViewUI;
}

// Without columns there is no header to see.
CTreeViewUI::CTreeViewUI()
{
    m_pHeader->SetVisible(false);
}

CTreeViewUI::~CTreeViewUI()
{
    ForgetNodes(0, GetCount());
}

LPCTSTR CTreeViewUI::GetClass() const
{
    return L"TreeViewUI";
}

LPVOID CTreeViewUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_TREEVIEW))
        return this;
    return CListUI::GetInterface(name);
}

UINT CTreeViewUI::GetListType()
{
    return LT_TREE;
}

bool CTreeViewUI::HasOrderOfItsOwn() const
{
    return true;
}

CTreeNodeUI* CTreeViewUI::NodeAt(int index) const
{
    CControlUI* const row = m_pList->GetItemAt(index);
    return row != nullptr ? static_cast<CTreeNodeUI*>(row->GetInterface(DUI_CTR_TREENODE))
                          : nullptr;
}

// The node of this view that a control is part of.
CTreeNodeUI* CTreeViewUI::NodeOf(CControlUI* part) const
{
    for (CControlUI* control = part; control != nullptr; control = control->GetParent()) {
        auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE));
        if (node != nullptr)
            return node->m_pTreeView == this ? node : nullptr;
    }
    return nullptr;
}

// Nodes

bool CTreeViewUI::Add(CTreeNodeUI* node)
{
    if (node == nullptr)
        return false;
    CTreeNodeUI* const parent = node->m_pParentNode;
    if (parent != nullptr && parent->m_pTreeView == this)
        return Insert(node, parent, parent->m_aNodes.GetSize());
    return Insert(node, nullptr, m_aTopNodes.GetSize());
}

long CTreeViewUI::AddAt(CTreeNodeUI* node, int index)
{
    bool added = false;
    if (index == GetCount())
        added = Insert(node, nullptr, m_aTopNodes.GetSize());
    else if (CTreeNodeUI* const before = NodeAt(index))
        added = AddAt(node, before);
    return added ? node->m_iIndex : -1;
}

bool CTreeViewUI::AddAt(CTreeNodeUI* node, CTreeNodeUI* before)
{
    if (before == nullptr || before->m_pTreeView != this || !before->m_bIsLinked)
        return false;
    return Insert(node, before->m_pParentNode, before->GetNodeIndex());
}

// Puts a node with all below it among the nodes of a parent, or at the top level.
bool CTreeViewUI::Insert(CTreeNodeUI* node, CTreeNodeUI* parent, int index)
{
    if (node == nullptr || node->m_pTreeView != nullptr || node->m_bIsLinked)
        return false;
    CStdPtrArray& siblings = parent != nullptr ? parent->m_aNodes : m_aTopNodes;
    int row = GetCount();
    if (auto* const next = static_cast<CTreeNodeUI*>(siblings.GetAt(index)))
        row = next->m_iIndex;
    else if (parent != nullptr)
        row = parent->LastBelow()->m_iIndex + 1;
    if (row < 0 || row > GetCount())
        return false;

    const std::vector<CTreeNodeUI*> subtree = node->ListSubtree();
    CStdPtrArray rows(static_cast<int>(subtree.size()));
    for (CTreeNodeUI* const added : subtree)
        rows.Add(static_cast<CControlUI*>(added));
    node->Link(parent, this, index);
    try {
        for (CTreeNodeUI* const added : subtree) {
            added->m_pTreeView = this;
            added->m_bIsShown = added->IsShownByParent();
            added->SetInternVisible(m_pList->IsVisible());
            added->ConnectParts(true);
        }
        if (parent != nullptr && siblings.GetSize() == 1)
            parent->PartsChanged();
        m_pList->InsertChildren(rows, row);
    } catch (const std::bad_alloc&) {
        // The branch is the caller's again.
        node->Unlink();
        for (CTreeNodeUI* const added : subtree) {
            added->ConnectParts(false);
            added->m_pTreeView = nullptr;
        }
        throw;
    }
    return true;
}

bool CTreeViewUI::Remove(CTreeNodeUI* node)
{
    if (node == nullptr || node->m_pTreeView != this || NodeAt(node->m_iIndex) != node)
        return false;
    const int first = node->m_iIndex;
    const int last = node->LastBelow()->m_iIndex;
    node->Unlink();
    RemoveRows(first, last - first + 1);
    return true;
}

bool CTreeViewUI::RemoveAt(int index)
{
    return Remove(NodeAt(index));
}

void CTreeViewUI::RemoveAll()
{
    ForgetNodes(0, GetCount());
    CListUI::RemoveAll();
}

// Rows whose topmost nodes have no siblings any more.
void CTreeViewUI::RemoveRows(int first, int count)
{
    ForgetNodes(first, count);
    m_pList->RemoveChildren(first, count);
}

// What the view does not delete keeps its sub-nodes.
void CTreeViewUI::ForgetNodes(int first, int count)
{
    const bool keepBranches = !m_pList->IsAutoDestroy();
    for (int i = first; i < first + count; ++i) {
        CTreeNodeUI* const node = NodeAt(i);
        if (node == nullptr)
            continue;
        node->ConnectParts(false);
        node->m_pTreeView = nullptr;
        node->m_bIsShown = true;
        if (keepBranches && node->m_pParentNode != nullptr)
            continue;
        node->m_pParentNode = nullptr;
        node->m_bIsLinked = false;
        if (!keepBranches)
            node->m_aNodes.Empty();
    }
    if (count == GetCount())
        m_aTopNodes.Empty();
}

bool CTreeViewUI::ShowHeader()
{
    m_pHeader->SetVisible(true);
    return true;
}

bool CTreeViewUI::Add(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return Add(node);
    return IsHeaderPart(*control) && CListUI::Add(control) && ShowHeader();
}

bool CTreeViewUI::AddAt(CControlUI* control, int index)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return AddAt(node, index) >= 0;
    return IsHeaderPart(*control) && CListUI::AddAt(control, index) && ShowHeader();
}

bool CTreeViewUI::Remove(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return Remove(node);
    return CListUI::Remove(control);
}

bool CTreeViewUI::SetItemIndex(CControlUI* control, int index)
{
    if (control != nullptr && control->GetInterface(DUI_CTR_TREENODE) != nullptr)
        return GetItemIndex(control) == index && index >= 0;
    return CListUI::SetItemIndex(control, index);
}

// Boxes

bool CTreeViewUI::OnCheckBoxChanged(void* param)
{
    const auto* const notification = static_cast<const TNotifyUI*>(param);
    if (notification == nullptr || notification->sType != DUI_MSGTYPE_SELECTCHANGED)
        return true;
    CTreeNodeUI* const node = NodeOf(notification->pSender);
    if (node != nullptr && node->GetCheckBox() == notification->pSender)
        SetItemCheckBox(node->GetCheckBox()->IsSelected(), node);
    return true;
}

bool CTreeViewUI::OnFolderChanged(void* param)
{
    const auto* const notification = static_cast<const TNotifyUI*>(param);
    if (notification == nullptr || notification->sType != DUI_MSGTYPE_SELECTCHANGED)
        return true;
    CTreeNodeUI* const node = NodeOf(notification->pSender);
    if (node != nullptr && node->GetFolderButton() == notification->pSender)
        SetItemExpand(!node->GetFolderButton()->IsSelected(), node);
    return true;
}

bool CTreeViewUI::OnDBClickItem(void* param)
{
    auto* const notification = static_cast<TNotifyUI*>(param);
    if (notification != nullptr && NodeOf(notification->pSender) == notification->pSender &&
        notification->pSender != nullptr && m_pManager != nullptr)
        m_pManager->SendNotify(*notification);
    return true;
}

void CTreeViewUI::Notify(TNotifyUI& notification)
{
    const CTreeNodeUI* const node = NodeOf(notification.pSender);
    if (node == nullptr || notification.pSender == node)
        return;
    if (notification.pSender == node->GetFolderButton())
        OnFolderChanged(&notification);
    else if (notification.pSender == node->GetCheckBox())
        OnCheckBoxChanged(&notification);
}

bool CTreeViewUI::SetItemCheckBox(bool selected, CTreeNodeUI* node)
{
    if (node != nullptr && (node->m_pTreeView != this || node->m_iIndex < 0))
        return false;
    const int first = node != nullptr ? node->m_iIndex : 0;
    const int last = node != nullptr ? node->LastBelow()->m_iIndex : GetCount() - 1;
    for (int i = first; i <= last; ++i) {
        if (CTreeNodeUI* const checked = NodeAt(i))
            checked->CheckBoxSelected(selected);
    }
    if (node != nullptr)
        CheckAbove(node);
    return true;
}

void CTreeViewUI::CheckAbove(CTreeNodeUI* node)
{
    for (CTreeNodeUI* above = node->m_pParentNode; above != nullptr; above = above->m_pParentNode) {
        bool all = true;
        for (int i = 0; all && i < above->m_aNodes.GetSize(); ++i)
            all = static_cast<CTreeNodeUI*>(above->m_aNodes[i])->m_bIsChecked;
        if (above->m_bIsChecked == all)
            return;
        above->CheckBoxSelected(all);
    }
}

void CTreeViewUI::SetItemExpand(bool expand, CTreeNodeUI* node)
{
    if (node != nullptr) {
        if (node->m_pTreeView != this || node->m_iIndex < 0)
            return;
        node->StoreClosed(!expand);
        ShowBelow(*node);
        return;
    }
    for (int i = 0; i < GetCount(); ++i) {
        if (CTreeNodeUI* const each = NodeAt(i))
            each->StoreClosed(!expand);
    }
    ShowRows(0, GetCount() - 1);
}

void CTreeViewUI::ShowBelow(CTreeNodeUI& node)
{
    ShowRows(node.m_iIndex + 1, node.LastBelow()->m_iIndex);
}

// Shows and hides rows as the nodes above them want it. What was selected among those that are
// hidden now gives way to the node that hides it, and so does the focus.
void CTreeViewUI::ShowRows(int first, int last)
{
    const auto shownAbove = [](CTreeNodeUI* node) {
        while (node != nullptr && !node->m_bIsShown)
            node = node->m_pParentNode;
        return node;
    };
    CTreeNodeUI* const focused = m_pManager != nullptr ? NodeOf(m_pManager->GetFocus()) : nullptr;
    bool changed = false;
    bool hidesFocus = false;
    const ChildWalk watch(*this);
    for (int i = first; i <= last && i < GetCount(); ++i) {
        CTreeNodeUI* const node = NodeAt(i);
        if (node == nullptr || node->m_bIsShown == node->IsShownByParent())
            continue;
        node->m_bIsShown = !node->m_bIsShown;
        changed = true;
        hidesFocus = hidesFocus || (node == focused && !node->m_bIsShown);
        m_pList->ForgetHeight(i);
        node->SetInternVisible(m_pList->IsVisible());
        if (!watch.IsAlive())
            return;
    }
    if (!changed)
        return;
    m_pList->NeedUpdate();

    CTreeNodeUI* const current = NodeAt(m_iCurSel);
    const bool hidesCurrent = current != nullptr && !current->m_bIsShown;
    bool deselected = false;
    for (int i = GetNextSelItem(first - 1); i >= 0 && i <= last; i = GetNextSelItem(i)) {
        const CTreeNodeUI* const node = NodeAt(i);
        if (node != nullptr && !node->m_bIsShown)
            deselected = ChangeRow(i, false) || deselected;
    }
    if (hidesCurrent && GetSelectItemCount() == 0) {
        SelectItem(shownAbove(current)->m_iIndex, hidesFocus);
        return;
    }
    if (hidesCurrent)
        m_iCurSel = GetNextSelItem(-1);
    if (hidesFocus) {
        if (CTreeNodeUI* const next = NodeAt(m_iCurSel))
            next->SetFocus();
        else
            SetFocus();
    }
    if (deselected && watch.IsAlive())
        NotifySelected(-1);
}

bool CTreeViewUI::ExpandItem(int index, bool expand)
{
    CTreeNodeUI* const node = NodeAt(index);
    return node != nullptr && node->Expand(expand);
}

bool CTreeViewUI::DoRowKey(const TEventUI& event)
{
    CTreeNodeUI* const node = NodeAt(m_iCurSel);
    if (node == nullptr || !node->IsEnabled())
        return false;
    switch (event.chKey) {
    case VK_RIGHT:
        if (!node->IsHasChild())
            return false;
        if (node->m_bIsClosed)
            node->GetFolderButton()->Selected(false);
        else
            SelectFromKeyboard(FindSelectable(node->m_iIndex + 1));
        return true;
    case VK_LEFT:
        if (node->IsHasChild() && !node->m_bIsClosed)
            node->GetFolderButton()->Selected(true);
        else if (node->m_pParentNode != nullptr)
            SelectFromKeyboard(node->m_pParentNode->m_iIndex);
        else
            return false;
        return true;
    case VK_SPACE:
        if (!node->ShowsCheckBox() || ::GetKeyState(VK_CONTROL) < 0)
            return false;
        node->GetCheckBox()->Selected(!node->m_bIsChecked);
        return true;
    default:
        return false;
    }
}

// Look

void CTreeViewUI::SetVisibleFolderBtn(bool visible)
{
    m_bVisibleFolderBtn = visible;
    for (int i = 0; i < GetCount(); ++i) {
        if (CTreeNodeUI* const node = NodeAt(i))
            node->m_nFolderVisible = -1;
    }
    m_pList->ForgetHeights();
}

bool CTreeViewUI::GetVisibleFolderBtn()
{
    return m_bVisibleFolderBtn;
}

void CTreeViewUI::SetVisibleCheckBtn(bool visible)
{
    m_bVisibleCheckBtn = visible;
    for (int i = 0; i < GetCount(); ++i) {
        if (CTreeNodeUI* const node = NodeAt(i))
            node->m_nCheckVisible = -1;
    }
    m_pList->ForgetHeights();
}

bool CTreeViewUI::GetVisibleCheckBtn()
{
    return m_bVisibleCheckBtn;
}

void CTreeViewUI::SetItemMinWidth(UINT width)
{
    m_uItemMinWidth = width;
    m_pList->ForgetHeights();
}

UINT CTreeViewUI::GetItemMinWidth()
{
    return m_uItemMinWidth;
}

void CTreeViewUI::SetItemTextColor(DWORD color)
{
    m_dwItemTextColor = color;
    CListUI::SetItemTextColor(color);
}

void CTreeViewUI::SetItemHotTextColor(DWORD color)
{
    m_dwItemHotTextColor = color;
    SetHotItemTextColor(color);
}

void CTreeViewUI::SetSelItemTextColor(DWORD color)
{
    m_dwSelItemTextColor = color;
    SetSelectedItemTextColor(color);
}

void CTreeViewUI::SetSelItemHotTextColor(DWORD color)
{
    m_dwSelItemHotTextColor = color;
    Invalidate();
}

void CTreeViewUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CTreeViewUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"visiblefolderbtn", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetVisibleFolderBtn(IsTrue(v)); }},
        {L"visiblecheckbtn", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetVisibleCheckBtn(IsTrue(v)); }},
        {L"itemminwidth", AttributeKind::Number,
         [](Self& self, LPCTSTR v) {
             self.SetItemMinWidth(static_cast<UINT>((std::max)(ToInt(v), 0)));
         }},
        {L"itemtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemTextColor(ToColour(v)); }},
        {L"itemhottextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemHotTextColor(ToColour(v)); }},
        {L"selitemtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelItemTextColor(ToColour(v)); }},
        {L"selitemhottextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelItemHotTextColor(ToColour(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CListUI::SetAttribute(name, value);
}

} // namespace DuiLib
