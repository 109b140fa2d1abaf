#include "Control/UITreeView.h"

#include "Control/ListRow.h"
#include "Control/PopupGlyphs.h"
#include "win32/AttributeTable.h"
#include "win32/Handles.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

using Shared = ListRow<CListContainerElementUI>;

// Design pixels.
constexpr int kMargin = 4; // in front of the top level
constexpr int kIndentPerLevel = 18;
constexpr int kBoxWidth = 20;
constexpr int kTriangleSize = 4;
constexpr int kCheckBoxSize = 13;
constexpr int kTickMargin = 3;
constexpr RECT kTextPadding{3, 0, 4, 0};

constexpr DWORD kGlyphColor = 0xFF6E6E6E;
constexpr DWORD kHotGlyphColor = 0xFF1F1F1F;
constexpr DWORD kDisabledGlyphColor = 0xFFBFBFBF;
constexpr DWORD kCheckedColor = 0xFF0067C0;
constexpr DWORD kWhite = 0xFFFFFFFF;

DWORD GlyphColor(UINT state, bool enabled)
{
    if (!enabled)
        return kDisabledGlyphColor;
    return (state & UISTATE_HOT) != 0 ? kHotGlyphColor : kGlyphColor;
}

// A filled triangle in the middle of the rectangle, pointing right or down.
void DrawTriangle(HDC dc, const RECT& room, int size, bool right, DWORD color)
{
    const LONG middleX = (room.left + room.right) / 2;
    const LONG middleY = (room.top + room.bottom) / 2;
    for (LONG step = 0; step <= size; ++step) {
        const LONG reach = size - step;
        if (right) {
            const LONG x = middleX - size / 2 + step;
            CRenderEngine::DrawColor(dc, {x, middleY - reach, x + 1, middleY + reach + 1}, color);
        } else {
            const LONG y = middleY - size / 2 + step;
            CRenderEngine::DrawColor(dc, {middleX - reach, y, middleX + reach + 1, y + 1}, color);
        }
    }
}

DWORD FirstColor(DWORD first, DWORD second)
{
    return first != 0 ? first : second;
}

} // namespace

// As wide as the level of the node asks for; a width of its own is that of one level.
class CTreeNodeUI::Indent : public CLabelUI {
public:
    explicit Indent(CTreeNodeUI& node) : m_node(node) {}

    SIZE EstimateSize(SIZE) override
    {
        const int step = m_cxyFixed.cx > 0 ? static_cast<int>(m_cxyFixed.cx) : kIndentPerLevel;
        const int levels = static_cast<int>((std::min)(m_node.GetTreeLevel(), 10000L));
        return {ScaleLength(kMargin + levels * step), ScaleLength(static_cast<int>(m_cxyFixed.cy))};
    }

private:
    CTreeNodeUI& m_node;
};

class CTreeNodeUI::FolderBox : public CCheckBoxUI {
public:
    explicit FolderBox(CTreeNodeUI& node) : m_node(node) {}

    bool IsVisible() const override { return CCheckBoxUI::IsVisible() && m_node.ShowsFolder(); }

    // Where there is nothing to open, the mouse gets the node.
    bool IsMouseEnabled() const override
    {
        return m_node.IsHasChild() && CCheckBoxUI::IsMouseEnabled();
    }

    void Selected(bool selected, bool notify) override
    {
        const RowWitness witness(&m_node);
        CCheckBoxUI::Selected(selected, notify);
        if (witness.RowLives())
            m_node.FolderBoxChanged();
    }

    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override
    {
        return !m_node.IsHasChild() || CCheckBoxUI::DoPaint(dc, paint, stop);
    }

    void PaintStatusImage(HDC dc) override
    {
        CCheckBoxUI::PaintStatusImage(dc);
        if (!m_sNormalImage.IsEmpty() || !m_sStateImage.IsEmpty() || !m_sSelectedImage.IsEmpty() ||
            !m_sSelectedStateImage.IsEmpty() || !m_sBkImage.IsEmpty() || !m_sForeImage.IsEmpty())
            return;
        DrawTriangle(dc, m_rcItem, ScaleLength(kTriangleSize), m_bSelected,
                     GetAdjustColor(GlyphColor(m_uButtonState, IsEnabled())));
    }

private:
    CTreeNodeUI& m_node;
};

class CTreeNodeUI::CheckBox : public CCheckBoxUI {
public:
    explicit CheckBox(CTreeNodeUI& node) : m_node(node) {}

    bool IsVisible() const override { return CCheckBoxUI::IsVisible() && m_node.ShowsCheckBox(); }

    void Selected(bool selected, bool notify) override
    {
        const RowWitness witness(&m_node);
        CCheckBoxUI::Selected(selected, notify);
        if (witness.RowLives())
            m_node.CheckBoxChanged();
    }

    void PaintStatusImage(HDC dc) override
    {
        CCheckBoxUI::PaintStatusImage(dc);
        if (!m_sNormalImage.IsEmpty() || !m_sStateImage.IsEmpty() || !m_sSelectedImage.IsEmpty() ||
            !m_sSelectedStateImage.IsEmpty() || !m_sBkImage.IsEmpty() || !m_sForeImage.IsEmpty())
            return;
        const DWORD edge = GlyphColor(m_uButtonState, IsEnabled());
        const bool isBlue = m_bSelected && IsEnabled();
        const LONG size = ScaleLength(kCheckBoxSize);
        const LONG line = (std::max<LONG>)(ScaleLength(1), 1);
        RECT box{(m_rcItem.left + m_rcItem.right - size) / 2,
                 (m_rcItem.top + m_rcItem.bottom - size) / 2, 0, 0};
        box.right = box.left + size;
        box.bottom = box.top + size;
        CRenderEngine::DrawColor(dc, box, GetAdjustColor(isBlue ? kCheckedColor : edge));
        const RECT inside{box.left + line, box.top + line, box.right - line, box.bottom - line};
        CRenderEngine::DrawColor(dc, inside, GetAdjustColor(isBlue ? kCheckedColor : kWhite));
        if (!m_bSelected)
            return;
        const LONG margin = ScaleLength(kTickMargin);
        DrawTick(dc, {box.left + margin, box.top, box.right - margin, box.bottom},
                 static_cast<int>(line + line), GetAdjustColor(isBlue ? kWhite : edge));
    }

private:
    CTreeNodeUI& m_node;
};

// The text. The mouse goes to the node, whose states it shows.
class CTreeNodeUI::Item : public COptionUI {
public:
    explicit Item(CTreeNodeUI& node) : m_node(node)
    {
        m_uTextStyle = DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_END_ELLIPSIS;
        m_rcTextPadding = kTextPadding;
    }

    int GetMinWidth() const override
    {
        CTreeViewUI* const view = m_node.m_pTreeView;
        const int least = view != nullptr
                              ? ScaleLength(ClampLength(static_cast<int>(view->GetItemMinWidth())))
                              : 0;
        return (std::max)(COptionUI::GetMinWidth(), least);
    }

    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override
    {
        m_uButtonState = (m_uButtonState & ~static_cast<UINT>(UISTATE_HOT)) |
                         (m_node.m_uButtonState & UISTATE_HOT);
        return COptionUI::DoPaint(dc, paint, stop);
    }

    void PaintText(HDC dc) override
    {
        const DWORD normal = m_dwTextColor;
        const DWORD selected = m_dwSelectedTextColor;
        const DWORD hot = m_dwHotTextColor;
        const int font = m_iFont;
        if (IsEnabled())
            TakeColors();
        if (const TListInfoUI* const info = Shared::Info(m_node); info != nullptr && font == -1)
            m_iFont = info->nFont;
        COptionUI::PaintText(dc);
        m_dwTextColor = normal;
        m_dwSelectedTextColor = selected;
        m_dwHotTextColor = hot;
        m_iFont = font;
    }

private:
    // Those of the node and of its view first, then its own, then those of the list.
    void TakeColors()
    {
        const DWORD shown = m_node.ShownTextColor();
        const TListInfoUI* const info = Shared::Info(m_node);
        const DWORD list = info != nullptr ? Shared::TextColor(m_node, *info) : 0;
        if (shown != 0)
            m_dwTextColor = m_dwSelectedTextColor = m_dwHotTextColor = shown;
        else if (m_dwTextColor == 0)
            m_dwTextColor = list;
    }

    CTreeNodeUI& m_node;
};

struct CTreeNodeUI::Parts {
    explicit Parts(CTreeNodeUI& node)
    {
        auto owner = std::make_unique<CHorizontalLayoutUI>();
        indent = &Add<Indent>(*owner, node);
        folder = &Add<FolderBox>(*owner, node);
        check = &Add<CheckBox>(*owner, node);
        item = &Add<Item>(*owner, node);
        row = owner.release();
        row->SetMouseEnabled(false);
        indent->SetMouseEnabled(false);
        item->SetMouseEnabled(false);
        folder->SetFixedWidth(kBoxWidth);
        check->SetFixedWidth(kBoxWidth);
    }

    template <class Part>
    static Part& Add(CHorizontalLayoutUI& row, CTreeNodeUI& node)
    {
        auto part = std::make_unique<Part>(node);
        part->SetKeyboardEnabled(false);
        row.Add(part.get());
        return *part.release();
    }

    CHorizontalLayoutUI* row; // the caller's, who gives it to the node
    Indent* indent;
    FolderBox* folder;
    CheckBox* check;
    Item* item;
};

CControlUI* CTreeNodeUI::CreateControl()
{
    return new CTreeNodeUI;
}

CTreeNodeUI::CTreeNodeUI(CTreeNodeUI* parent)
{
    Announce(parent);
}

CTreeNodeUI::~CTreeNodeUI()
{
    RowWitness::RowDies(this);
    Unlink();
    if (m_pAnnounced != nullptr) {
        for (CTreeNodeUI* const node : *m_pAnnounced)
            node->m_pParentNode = nullptr;
    }

    // All that is below goes in one loop, so that a deep tree needs no deep stack.
    std::vector<CTreeNodeUI*> owned;
    bool isOneByOne = false;
    if (m_pTreeView == nullptr) {
        try {
            owned = ListSubtree();
        } catch (const std::bad_alloc&) {
            isOneByOne = true; // without memory each node ends those right below it
        }
    }
    for (int i = 0; i < m_aNodes.GetSize(); ++i) {
        auto* const child = static_cast<CTreeNodeUI*>(m_aNodes[i]);
        child->m_pParentNode = nullptr;
        child->m_bIsLinked = false;
        if (isOneByOne)
            delete child;
    }
    for (CTreeNodeUI* const node : owned) {
        node->m_aNodes.Empty();
        if (node != this) {
            node->m_pParentNode = nullptr;
            node->m_bIsLinked = false;
        }
    }
    for (CTreeNodeUI* const node : owned) {
        if (node != this)
            delete node;
    }
    m_bAutoDestroy = true; // the parts refer to their node
}

// Parts

CTreeNodeUI::Parts& CTreeNodeUI::MakeParts() const
{
    if (m_pParts != nullptr)
        return *m_pParts;
    auto& self = const_cast<CTreeNodeUI&>(*this);
    self.m_pParts = std::make_unique<Parts>(self);
    Parts& parts = *m_pParts;
    std::unique_ptr<CHorizontalLayoutUI> row(parts.row);
    const Quillet::AtScopeEnd undone([&] {
        if (row != nullptr)
            self.m_pParts.reset();
    });
    parts.item->SetResourceText(IsResourceText());
    parts.item->SetText(m_sText);
    parts.item->Selected(m_bSelected, false);
    parts.folder->Selected(m_bIsClosed, false);
    parts.check->Selected(m_bIsChecked, false);
    if (!m_bEnabled)
        parts.row->SetEnabled(false);
    self.ConnectParts(true);

    if (m_pManager != nullptr && m_pParent != nullptr) {
        self.CListContainerElementUI::AddAt(parts.row, 0);
        row.release();
    } else {
        self.m_items.InsertAt(0, parts.row);
        row.release();
        parts.row->SetManager(m_pManager, &self, false);
        parts.row->SetInternVisible(IsVisible());
    }
    return parts;
}

void CTreeNodeUI::ConnectParts(bool connect)
{
    if (m_pParts == nullptr || m_pTreeView == nullptr)
        return;
    const auto folderChanged = MakeDelegate(m_pTreeView, &CTreeViewUI::OnFolderChanged);
    const auto checkBoxChanged = MakeDelegate(m_pTreeView, &CTreeViewUI::OnCheckBoxChanged);
    if (connect) {
        m_pParts->folder->OnNotify += folderChanged;
        m_pParts->check->OnNotify += checkBoxChanged;
    } else {
        m_pParts->folder->OnNotify -= folderChanged;
        m_pParts->check->OnNotify -= checkBoxChanged;
    }
}

// The room for the parts is another one, or one of them looks otherwise.
void CTreeNodeUI::PartsChanged()
{
    NeedParentUpdate();
    NeedUpdate();
    Invalidate();
}

void CTreeNodeUI::FolderBoxChanged()
{
    SetClosed(m_pParts->folder->IsSelected());
}

void CTreeNodeUI::CheckBoxChanged()
{
    m_bIsChecked = m_pParts->check->IsSelected();
}

CHorizontalLayoutUI* CTreeNodeUI::GetTreeNodeHoriznotal() const
{
    return MakeParts().row;
}

CLabelUI* CTreeNodeUI::GetDottedLine() const
{
    return MakeParts().indent;
}

CCheckBoxUI* CTreeNodeUI::GetFolderButton() const
{
    return MakeParts().folder;
}

CCheckBoxUI* CTreeNodeUI::GetCheckBox() const
{
    return MakeParts().check;
}

COptionUI* CTreeNodeUI::GetItemButton() const
{
    return MakeParts().item;
}

// Children

bool CTreeNodeUI::Add(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return AddChildNode(node);
    return MakeParts().row->Add(control);
}

bool CTreeNodeUI::AddAt(CControlUI* control, int index)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return InsertChild(node, index);
    return MakeParts().row->AddAt(control, index);
}

bool CTreeNodeUI::Remove(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (auto* const node = static_cast<CTreeNodeUI*>(control->GetInterface(DUI_CTR_TREENODE)))
        return RemoveAt(node);
    const Parts& parts = MakeParts();
    if (control == parts.indent || control == parts.folder || control == parts.check ||
        control == parts.item)
        return false;
    return parts.row->Remove(control);
}

bool CTreeNodeUI::RemoveAt(int index)
{
    return RemoveAt(GetChildNode(index));
}

bool CTreeNodeUI::RemoveAt(CTreeNodeUI* node)
{
    if (node == nullptr || node->m_pParentNode != this || !node->m_bIsLinked)
        return false;
    if (m_pTreeView != nullptr)
        return m_pTreeView->Remove(node);
    node->Unlink();
    if (m_bAutoDestroy)
        delete node;
    return true;
}

void CTreeNodeUI::RemoveAll()
{
    if (m_aNodes.IsEmpty())
        return;
    CTreeViewUI* const view = m_pTreeView;
    const int first = GetTreeIndex() + 1;
    const int last = LastBelow()->GetTreeIndex();
    const CStdPtrArray removed = m_aNodes;
    m_aNodes.Empty();
    for (int i = 0; i < removed.GetSize(); ++i) {
        auto* const child = static_cast<CTreeNodeUI*>(removed[i]);
        child->m_pParentNode = nullptr;
        child->m_bIsLinked = false;
    }
    if (view != nullptr) {
        PartsChanged();
        view->RemoveRows(first, last - first + 1);
        return;
    }
    for (int i = 0; m_bAutoDestroy && i < removed.GetSize(); ++i)
        delete static_cast<CTreeNodeUI*>(removed[i]);
}

bool CTreeNodeUI::AddChildNode(CTreeNodeUI* node)
{
    return InsertChild(node, m_aNodes.GetSize());
}

bool CTreeNodeUI::InsertChild(CTreeNodeUI* node, int index)
{
    if (node == nullptr || node->m_bIsLinked || node->m_pTreeView != nullptr || index < 0 ||
        index > m_aNodes.GetSize() || IsBelow(*node))
        return false;
    if (m_pTreeView != nullptr)
        return m_pTreeView->Insert(node, this, index);
    node->Link(this, nullptr, index);
    return true;
}

void CTreeNodeUI::SetParentNode(CTreeNodeUI* parent)
{
    if (!m_bIsLinked && m_pTreeView == nullptr)
        Announce(parent);
}

void CTreeNodeUI::Announce(CTreeNodeUI* parent)
{
    if (parent == m_pParentNode || (parent != nullptr && parent->IsBelow(*this)))
        return;
    Unlink();
    if (parent == nullptr)
        return;
    if (parent->m_pAnnounced == nullptr)
        parent->m_pAnnounced = std::make_unique<std::vector<CTreeNodeUI*>>();
    parent->m_pAnnounced->push_back(this);
    m_pParentNode = parent;
}

CStdPtrArray& CTreeNodeUI::Siblings()
{
    return m_pParentNode != nullptr ? m_pParentNode->m_aNodes : m_pTreeView->m_aTopNodes;
}

void CTreeNodeUI::Link(CTreeNodeUI* parent, CTreeViewUI* view, int index)
{
    Unlink();
    (parent != nullptr ? parent->m_aNodes : view->m_aTopNodes).InsertAt(index, this);
    m_pParentNode = parent;
    m_pTreeView = view;
    m_bIsLinked = true;
}

// From its siblings, or from the parent that expects it.
void CTreeNodeUI::Unlink()
{
    if (m_bIsLinked) {
        CStdPtrArray& siblings = Siblings();
        siblings.Remove(siblings.Find(this));
        if (m_pParentNode != nullptr && m_pParentNode->m_aNodes.IsEmpty())
            m_pParentNode->PartsChanged();
    } else if (m_pParentNode != nullptr) {
        std::erase(*m_pParentNode->m_pAnnounced, this);
    }
    m_bIsLinked = false;
    m_pParentNode = nullptr;
}

CTreeNodeUI* CTreeNodeUI::GetParentNode()
{
    return m_pParentNode;
}

long CTreeNodeUI::GetCountChild()
{
    return m_aNodes.GetSize();
}

CTreeNodeUI* CTreeNodeUI::GetChildNode(int index)
{
    return static_cast<CTreeNodeUI*>(m_aNodes.GetAt(index));
}

bool CTreeNodeUI::IsHasChild() const
{
    return !m_aNodes.IsEmpty();
}

CStdPtrArray CTreeNodeUI::GetTreeNodes()
{
    return m_aNodes;
}

long CTreeNodeUI::GetTreeLevel()
{
    long level = 0;
    for (const CTreeNodeUI* node = m_pParentNode; node != nullptr; node = node->m_pParentNode)
        ++level;
    return level;
}

int CTreeNodeUI::GetTreeIndex()
{
    return m_pTreeView != nullptr ? m_iIndex : -1;
}

int CTreeNodeUI::GetNodeIndex()
{
    return m_bIsLinked ? Siblings().Find(this) : -1;
}

void CTreeNodeUI::SetTreeView(CTreeViewUI* view)
{
    if (view != nullptr && m_pTreeView == nullptr && !m_bIsLinked)
        view->Add(this);
}

CTreeViewUI* CTreeNodeUI::GetTreeView()
{
    return m_pTreeView;
}

bool CTreeNodeUI::IsBelow(const CTreeNodeUI& node) const
{
    for (const CTreeNodeUI* above = this; above != nullptr; above = above->m_pParentNode) {
        if (above == &node)
            return true;
    }
    return false;
}

CTreeNodeUI* CTreeNodeUI::LastBelow()
{
    CTreeNodeUI* last = this;
    while (last->IsHasChild())
        last = static_cast<CTreeNodeUI*>(last->m_aNodes[last->m_aNodes.GetSize() - 1]);
    return last;
}

// This node and what is below it, in the order of the rows.
std::vector<CTreeNodeUI*> CTreeNodeUI::ListSubtree()
{
    std::vector<CTreeNodeUI*> nodes;
    std::vector<CTreeNodeUI*> pending{this};
    while (!pending.empty()) {
        CTreeNodeUI* const node = pending.back();
        pending.pop_back();
        nodes.push_back(node);
        for (int i = node->m_aNodes.GetSize() - 1; i >= 0; --i)
            pending.push_back(static_cast<CTreeNodeUI*>(node->m_aNodes[i]));
    }
    return nodes;
}

bool CTreeNodeUI::IsShownByParent() const
{
    const CTreeNodeUI* const parent = m_bIsLinked ? m_pParentNode : nullptr;
    return parent == nullptr || (parent->m_bIsShown && parent->m_bVisible && !parent->m_bIsClosed);
}

// State

bool CTreeNodeUI::IsExpanded() const
{
    return !m_bIsClosed;
}

bool CTreeNodeUI::Expand(bool expand)
{
    SetClosed(!expand);
    return true;
}

void CTreeNodeUI::SetClosed(bool closed)
{
    if (m_bIsClosed == closed)
        return;
    if (m_pTreeView != nullptr)
        m_pTreeView->SetItemExpand(!closed, this);
    else
        StoreClosed(closed);
}

void CTreeNodeUI::StoreClosed(bool closed)
{
    m_bIsClosed = closed;
    if (m_pParts != nullptr)
        m_pParts->folder->Selected(closed, false);
}

void CTreeNodeUI::SetVisibleTag(bool visible)
{
    SetClosed(!visible);
}

bool CTreeNodeUI::GetVisibleTag()
{
    return !m_bIsClosed;
}

void CTreeNodeUI::CheckBoxSelected(bool selected)
{
    m_bIsChecked = selected;
    if (m_pParts != nullptr)
        m_pParts->check->Selected(selected, false);
}

bool CTreeNodeUI::IsCheckBoxSelected() const
{
    return m_bIsChecked;
}

bool CTreeNodeUI::ShowsFolder() const
{
    if (m_nFolderVisible >= 0)
        return m_nFolderVisible != 0;
    return m_pTreeView == nullptr || m_pTreeView->m_bVisibleFolderBtn;
}

bool CTreeNodeUI::ShowsCheckBox() const
{
    if (m_nCheckVisible >= 0)
        return m_nCheckVisible != 0;
    return m_pTreeView != nullptr && m_pTreeView->m_bVisibleCheckBtn;
}

void CTreeNodeUI::SetVisibleFolderBtn(bool visible)
{
    m_nFolderVisible = visible ? 1 : 0;
    PartsChanged();
}

bool CTreeNodeUI::GetVisibleFolderBtn()
{
    return ShowsFolder();
}

void CTreeNodeUI::SetVisibleCheckBtn(bool visible)
{
    m_nCheckVisible = visible ? 1 : 0;
    PartsChanged();
}

bool CTreeNodeUI::GetVisibleCheckBtn()
{
    return ShowsCheckBox();
}

void CTreeNodeUI::SetInternVisible(bool visible)
{
    CListContainerElementUI::SetInternVisible(visible && m_bIsShown);
}

void CTreeNodeUI::SetVisible(bool visible)
{
    const RowWitness witness(this);
    CListContainerElementUI::SetVisible(visible);
    if (witness.RowLives() && m_pTreeView != nullptr)
        m_pTreeView->ShowBelow(*this);
}

bool CTreeNodeUI::Select(bool select)
{
    const RowWitness witness(this);
    const bool done = CListContainerElementUI::Select(select);
    if (witness.RowLives() && m_pParts != nullptr)
        m_pParts->item->Selected(m_bSelected, false);
    return done;
}

bool CTreeNodeUI::SelectMulti(bool select)
{
    const RowWitness witness(this);
    const bool done = CListContainerElementUI::SelectMulti(select);
    if (witness.RowLives() && m_pParts != nullptr)
        m_pParts->item->Selected(m_bSelected, false);
    return done;
}

// The view may have been derived from, and sends it on.
void CTreeNodeUI::NotifyDoubleClick()
{
    TNotifyUI notification;
    notification.sType = DUI_MSGTYPE_TREEITEMDBCLICK;
    notification.pSender = this;
    if (m_pTreeView != nullptr)
        m_pTreeView->OnDBClickItem(&notification);
    else if (m_pManager != nullptr)
        m_pManager->SendNotify(notification);
}

// Look

void CTreeNodeUI::SetItemText(LPCTSTR text)
{
    SetText(text);
}

CDuiString CTreeNodeUI::GetItemText()
{
    return GetText();
}

CDuiString CTreeNodeUI::GetText() const
{
    return m_pParts != nullptr ? m_pParts->item->GetText() : CListContainerElementUI::GetText();
}

void CTreeNodeUI::SetText(LPCTSTR text)
{
    CListContainerElementUI::SetText(text);
    if (m_pParts != nullptr)
        m_pParts->item->SetText(text);
}

void CTreeNodeUI::SetResourceText(bool resource)
{
    CListContainerElementUI::SetResourceText(resource);
    if (m_pParts != nullptr)
        m_pParts->item->SetResourceText(resource);
}

void CTreeNodeUI::SetItemTextColor(DWORD color)
{
    m_dwItemTextColor = color;
    Invalidate();
}

DWORD CTreeNodeUI::GetItemTextColor() const
{
    return FirstColor(m_dwItemTextColor,
                      m_pTreeView != nullptr ? m_pTreeView->m_dwItemTextColor : 0);
}

void CTreeNodeUI::SetItemHotTextColor(DWORD color)
{
    m_dwItemHotTextColor = color;
    Invalidate();
}

DWORD CTreeNodeUI::GetItemHotTextColor() const
{
    return FirstColor(m_dwItemHotTextColor,
                      m_pTreeView != nullptr ? m_pTreeView->m_dwItemHotTextColor : 0);
}

void CTreeNodeUI::SetSelItemTextColor(DWORD color)
{
    m_dwSelItemTextColor = color;
    Invalidate();
}

DWORD CTreeNodeUI::GetSelItemTextColor() const
{
    return FirstColor(m_dwSelItemTextColor,
                      m_pTreeView != nullptr ? m_pTreeView->m_dwSelItemTextColor : 0);
}

void CTreeNodeUI::SetSelItemHotTextColor(DWORD color)
{
    m_dwSelItemHotTextColor = color;
    Invalidate();
}

DWORD CTreeNodeUI::GetSelItemHotTextColor() const
{
    return FirstColor(m_dwSelItemHotTextColor,
                      m_pTreeView != nullptr ? m_pTreeView->m_dwSelItemHotTextColor : 0);
}

// A colour for a state that is missing is that of the state without the mouse.
DWORD CTreeNodeUI::ShownTextColor() const
{
    const bool hot = (m_uButtonState & UISTATE_HOT) != 0;
    if (m_bSelected)
        return FirstColor(hot ? GetSelItemHotTextColor() : 0, GetSelItemTextColor());
    return FirstColor(hot ? GetItemHotTextColor() : 0, GetItemTextColor());
}

int CTreeNodeUI::GetMinWidth() const
{
    const int least = CListContainerElementUI::GetMinWidth();
    const UINT text = m_pTreeView != nullptr ? m_pTreeView->GetItemMinWidth() : 0;
    if (text == 0)
        return least;
    const Parts& parts = MakeParts();
    int width = static_cast<int>(parts.indent->EstimateSize({}).cx) + parts.item->GetMinWidth();
    if (ShowsFolder())
        width += parts.folder->GetFixedWidth();
    if (ShowsCheckBox())
        width += parts.check->GetFixedWidth();
    return (std::max)(least, width);
}

SIZE CTreeNodeUI::EstimateSize(SIZE)
{
    SIZE size = GetFixedSize();
    if (size.cy > 0 || m_pManager == nullptr)
        return size;
    const TListInfoUI* const info = Shared::Info(*this);
    int font = m_pParts != nullptr ? m_pParts->item->GetFont() : -1;
    if (font == -1 && info != nullptr)
        font = info->nFont;
    size.cy = m_pManager->GetFontInfo(font)->tm.tmHeight + kRowLineMargin;
    return size;
}

void CTreeNodeUI::SetPos(RECT rect, bool invalidate)
{
    MakeParts();
    CListContainerElementUI::SetPos(rect, invalidate);
}

LPCTSTR CTreeNodeUI::GetClass() const
{
    return L"TreeNodeUI";
}

LPVOID CTreeNodeUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_TREENODE))
        return this;
    return CListContainerElementUI::GetInterface(name);
}

void CTreeNodeUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CTreeNodeUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"text", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetItemText(v); }},
        {L"horizattr", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.GetTreeNodeHoriznotal()->ApplyAttributeList(v); }},
        {L"dotlineattr", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.GetDottedLine()->ApplyAttributeList(v); }},
        {L"folderattr", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.GetFolderButton()->ApplyAttributeList(v); }},
        {L"checkboxattr", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.GetCheckBox()->ApplyAttributeList(v); }},
        {L"itemattr", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.GetItemButton()->ApplyAttributeList(v); }},
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
        CListContainerElementUI::SetAttribute(name, value);
}

} // namespace DuiLib
