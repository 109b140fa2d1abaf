#include "Control/UIList.h"

#include "Control/ListSelection.h"
#include "Control/UIScrollBar.h"
#include "Core/UIManager.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

using namespace Quillet::Text;

tagTListInfoUI::tagTListInfoUI()
    : nColumns(0),
      rcColumn{},
      nFont(-1),
      uTextStyle(DT_VCENTER | DT_SINGLELINE),
      rcTextPadding{},
      dwTextColor(0xFF000000),
      dwBkColor(0),
      bAlternateBk(false),
      dwSelectedTextColor(0),
      dwSelectedBkColor(0xFFC1E3FF),
      dwHotTextColor(0),
      dwHotBkColor(0xFFE9F5FF),
      dwDisabledTextColor(0xFFCCCCCC),
      dwDisabledBkColor(0xFFFFFFFF),
      dwLineColor(0),
      bShowRowLine(false),
      bShowColumnLine(false),
      bShowHtml(false),
      bMultiExpandable(false),
      bRSelected(false)
{
}

CControlUI* CListUI::CreateControl()
{
    return new CListUI;
}

CListUI::CListUI()
    : m_bScrollSelect(false),
      m_bMultiSel(false),
      m_iCurSel(-1),
      m_iFirstSel(-1),
      m_iCurSelActivate(-1),
      m_iExpandedItem(-1),
      m_pCallback(nullptr),
      m_pList(nullptr),
      m_pHeader(nullptr),
      m_pSelection(std::make_unique<Selection>())
{
    auto header = std::make_unique<CListHeaderUI>();
    CVerticalLayoutUI::Add(header.get());
    m_pHeader = header.release();
    auto body = std::make_unique<CListBodyUI>(this);
    CVerticalLayoutUI::Add(body.get());
    m_pList = body.release();
}

CListUI::~CListUI()
{
    for (int i = 0; i < m_items.GetSize(); ++i) {
        // The body outlives this part of the list.
        if (m_items[i] == m_pList)
            m_pList->m_pOwner = nullptr;
    }
}

LPCTSTR CListUI::GetClass() const
{
    return L"ListUI";
}

LPVOID CListUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LIST))
        return this;
    if (EqualsNoCase(View(name), DUI_CTR_ILIST))
        return static_cast<IListUI*>(this);
    if (EqualsNoCase(View(name), DUI_CTR_ILISTOWNER))
        return static_cast<IListOwnerUI*>(this);
    return CVerticalLayoutUI::GetInterface(name);
}

UINT CListUI::GetControlFlags() const
{
    return UIFLAG_TABSTOP;
}

UINT CListUI::GetListType()
{
    return LT_LIST;
}

TListInfoUI* CListUI::GetListInfo()
{
    return &m_ListInfo;
}

CListHeaderUI* CListUI::GetHeader() const
{
    return m_pHeader;
}

CContainerUI* CListUI::GetList() const
{
    return m_pList;
}

BOOL CListUI::CheckColumEditable(int)
{
    return FALSE;
}

CEditUI* CListUI::GetEditUI()
{
    return nullptr;
}

BOOL CListUI::CheckColumComboBoxable(int)
{
    return FALSE;
}

CComboUI* CListUI::GetComboBoxUI()
{
    return nullptr;
}

// Children

CControlUI* CListUI::GetItemAt(int index) const
{
    return m_pList->GetItemAt(index);
}

int CListUI::GetItemIndex(CControlUI* control) const
{
    if (control != nullptr && control->GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr)
        return m_pHeader->GetItemIndex(control);
    return m_pList->GetItemIndex(control);
}

bool CListUI::SetItemIndex(CControlUI* control, int index)
{
    if (control != nullptr && control->GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr)
        return m_pHeader->SetItemIndex(control, index);
    return m_pList->SetItemIndex(control, index);
}

int CListUI::GetCount() const
{
    return m_pList->GetCount();
}

bool CListUI::Add(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (control->GetInterface(DUI_CTR_LISTITEM) != nullptr)
        return m_pList->Add(control);
    if (auto* const header = static_cast<CListHeaderUI*>(control->GetInterface(DUI_CTR_LISTHEADER)))
        return ReplaceHeader(header);
    if (control->GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr)
        return AddColumn(control, m_pHeader->GetCount());
    return m_pList->Add(control);
}

bool CListUI::AddAt(CControlUI* control, int index)
{
    if (control == nullptr)
        return false;
    if (control->GetInterface(DUI_CTR_LISTITEM) != nullptr)
        return m_pList->AddAt(control, index);
    if (auto* const header = static_cast<CListHeaderUI*>(control->GetInterface(DUI_CTR_LISTHEADER)))
        return ReplaceHeader(header);
    if (control->GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr)
        return AddColumn(control, index);
    return m_pList->AddAt(control, index);
}

// Only a header without columns is replaced.
bool CListUI::ReplaceHeader(CListHeaderUI* header)
{
    if (header == m_pHeader || m_pHeader->GetCount() > 0)
        return false;
    CListHeaderUI* const old = m_pHeader;
    if (!CVerticalLayoutUI::AddAt(header, 0))
        return false;
    m_pHeader = header;
    m_ListInfo.nColumns = std::min<int>(header->GetCount(), UILIST_MAX_COLUMNS);
    return CVerticalLayoutUI::Remove(old);
}

bool CListUI::AddColumn(CControlUI* column, int index)
{
    if (!m_pHeader->AddAt(column, index))
        return false;
    m_ListInfo.nColumns = std::min<int>(m_pHeader->GetCount(), UILIST_MAX_COLUMNS);
    NeedUpdate();
    return true;
}

bool CListUI::Remove(CControlUI* control)
{
    if (control == nullptr)
        return false;
    if (control->GetInterface(DUI_CTR_LISTHEADERITEM) != nullptr) {
        if (!m_pHeader->Remove(control))
            return false;
        m_ListInfo.nColumns = std::min<int>(m_pHeader->GetCount(), UILIST_MAX_COLUMNS);
        NeedUpdate();
        return true;
    }
    return m_pList->Remove(control);
}

bool CListUI::RemoveAt(int index)
{
    return m_pList->RemoveAt(index);
}

void CListUI::RemoveAll()
{
    m_pList->RemoveAll();
}

BOOL CListUI::SortItems(PULVCompareFunc compare, UINT_PTR data)
{
    return m_pList->SortItems(compare, data);
}

bool CListUI::IsDelayedDestroy() const
{
    return m_pList->IsDelayedDestroy();
}

void CListUI::SetDelayedDestroy(bool delayed)
{
    m_pList->SetDelayedDestroy(delayed);
}

int CListUI::GetChildPadding() const
{
    return m_pList->GetChildPadding();
}

void CListUI::SetChildPadding(int padding)
{
    m_pList->SetChildPadding(padding);
}

// Scrolling

SIZE CListUI::GetScrollPos() const
{
    return m_pList->GetScrollPos();
}

SIZE CListUI::GetScrollRange() const
{
    return m_pList->GetScrollRange();
}

void CListUI::SetScrollPos(SIZE position, bool notify)
{
    m_pList->SetScrollPos(position, notify);
}

void CListUI::LineUp()
{
    m_pList->LineUp();
}

void CListUI::LineDown()
{
    m_pList->LineDown();
}

void CListUI::PageUp()
{
    m_pList->PageUp();
}

void CListUI::PageDown()
{
    m_pList->PageDown();
}

void CListUI::HomeUp()
{
    m_pList->HomeUp();
}

void CListUI::EndDown()
{
    m_pList->EndDown();
}

void CListUI::LineLeft()
{
    m_pList->LineLeft();
}

void CListUI::LineRight()
{
    m_pList->LineRight();
}

void CListUI::PageLeft()
{
    m_pList->PageLeft();
}

void CListUI::PageRight()
{
    m_pList->PageRight();
}

void CListUI::HomeLeft()
{
    m_pList->HomeLeft();
}

void CListUI::EndRight()
{
    m_pList->EndRight();
}

void CListUI::EnableScrollBar(bool vertical, bool horizontal)
{
    m_pList->EnableScrollBar(vertical, horizontal);
}

CScrollBarUI* CListUI::GetVerticalScrollBar() const
{
    return m_pList->GetVerticalScrollBar();
}

CScrollBarUI* CListUI::GetHorizontalScrollBar() const
{
    return m_pList->GetHorizontalScrollBar();
}

void CListUI::EnsureVisible(int index)
{
    m_pList->EnsureVisible(index);
}

void CListUI::Scroll(int dx, int dy)
{
    if (dx == 0 && dy == 0)
        return;
    const SIZE position = m_pList->GetScrollPos();
    m_pList->SetScrollPos({position.cx + dx, position.cy + dy});
}

// Expanding

bool CListUI::ExpandItem(int index, bool expand)
{
    IListItemUI* const row = RowAt(index);
    if (row == nullptr || (expand && !IsSelectable(index)))
        return false;
    const int other = m_iExpandedItem;
    if (expand && other >= 0 && other != index && !m_ListInfo.bMultiExpandable) {
        m_iExpandedItem = -1;
        if (IListItemUI* const collapsed = RowAt(other))
            collapsed->Expand(false);
    }
    if (!row->Expand(expand)) {
        if (m_iExpandedItem == index)
            m_iExpandedItem = -1;
        return false;
    }
    if (expand)
        m_iExpandedItem = index;
    else if (m_iExpandedItem == index)
        m_iExpandedItem = -1;
    m_pList->NeedUpdate();
    return true;
}

int CListUI::GetExpandedItem() const
{
    return m_iExpandedItem;
}

void CListUI::SetMultiExpanding(bool multiExpandable)
{
    m_ListInfo.bMultiExpandable = multiExpandable;
}

// Layout

void CListUI::SetPos(RECT rect, bool invalidate)
{
    const ChildWalk watch(*this);
    CVerticalLayoutUI::SetPos(rect, invalidate);
    if (watch.IsAlive())
        LayOutColumns();
}

void CListUI::Move(SIZE offset, bool invalidate)
{
    CVerticalLayoutUI::Move(offset, invalidate);
}

// Where the columns are. The columns of a hidden header are placed all the same, for the texts
// below them.
void CListUI::LayOutColumns()
{
    if (m_pHeader->GetCount() == 0) {
        m_ListInfo.nColumns = 0;
        return;
    }
    const bool isHidden = !m_pHeader->IsVisible();
    const auto show = [&](bool visible) {
        for (int i = 0; isHidden && i < m_pHeader->GetCount(); ++i)
            m_pHeader->GetItemAt(i)->SetInternVisible(visible);
    };
    RECT place = m_pHeader->GetPos();
    if (isHidden)
        place = {m_rcItem.left, m_rcItem.top, m_rcItem.right, m_rcItem.top};
    show(true);
    m_pHeader->SetPos(place, !isHidden);
    m_ListInfo.nColumns = std::min<int>(m_pHeader->GetCount(), UILIST_MAX_COLUMNS);
    for (int i = 0; i < m_ListInfo.nColumns; ++i) {
        const CControlUI* const column = m_pHeader->GetItemAt(i);
        m_ListInfo.rcColumn[i] =
            column->IsVisible() && !column->IsFloat() ? column->GetPos() : RECT{};
    }
    show(false);
}

// What the header needs; the rows are as wide.
int CListUI::ColumnsWidth() const
{
    if (m_pHeader->IsScaleHeader() || !m_pHeader->IsVisible())
        return 0;
    LONG width = 0;
    for (int i = 0; i < m_pHeader->GetCount(); ++i) {
        const CControlUI* const column = m_pHeader->GetItemAt(i);
        if (!column->IsVisible() || column->IsFloat())
            continue;
        const RECT padding = column->GetPadding();
        width +=
            std::max(column->GetFixedWidth(), column->GetMinWidth()) + padding.left + padding.right;
    }
    return static_cast<int>(width);
}

void CListUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (isMouse && !IsMouseEnabled()) {
        if (m_pParent != nullptr)
            m_pParent->DoEvent(event);
        else
            CVerticalLayoutUI::DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_KEYDOWN:
        if (IsKeyboardEnabled() && IsEnabled() && SelectByKey(event))
            return;
        break;
    case UIEVENT_BUTTONDOWN:
        // Beside the rows: the list takes the keys.
        if (IsEnabled() && event.pSender != this)
            SetFocus();
        return;
    case UIEVENT_SCROLLWHEEL: {
        const bool up = LOWORD(event.wParam) == SB_LINEUP;
        if (m_bScrollSelect && IsEnabled()) {
            const int from = m_iCurSel + (up ? -1 : 1);
            if (from >= 0 && from < GetCount())
                SelectFromKeyboard(FindSelectable(from, !up));
            return;
        }
        const CScrollBarUI* const bar = m_pList->GetVerticalScrollBar();
        if (bar == nullptr || !bar->IsVisible() || !bar->IsEnabled())
            break;
        up ? LineUp() : LineDown();
        return;
    }
    default:
        break;
    }
    CVerticalLayoutUI::DoEvent(event);
}

} // namespace DuiLib
