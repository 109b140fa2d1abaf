#include "Control/UIListElement.h"

#include "Control/ListRow.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <cwchar>
#include <utility>

namespace DuiLib {

namespace {

using namespace Quillet::Text;

using Shared = ListRow<CListElementUI>;

int ColumnCount(const TListInfoUI& info)
{
    return std::clamp(info.nColumns, 0, UILIST_MAX_COLUMNS);
}

bool MayHaveLink(LPCTSTR text)
{
    return std::wcsstr(text, L"<a") != nullptr || std::wcsstr(text, L"{a") != nullptr;
}

} // namespace

struct CListTextElementUI::Links {
    int count = 0;
    int hover = -1;
    RECT rects[MAX_LINK] = {};
    CDuiString contents[MAX_LINK];
};

CControlUI* CListTextElementUI::CreateControl()
{
    return new CListTextElementUI;
}

CListTextElementUI::CListTextElementUI() = default;

CListTextElementUI::~CListTextElementUI() = default;

CListTextElementUI::CListTextElementUI(const CListTextElementUI& other)
    : CListLabelElementUI(other),
      m_pCells(other.m_pCells ? std::make_unique<std::vector<Cell>>(*other.m_pCells) : nullptr),
      m_pListControl(other.m_pListControl),
      m_pList(other.m_pList)
{
}

CListTextElementUI& CListTextElementUI::operator=(const CListTextElementUI& other)
{
    if (this == &other)
        return *this;
    CListLabelElementUI::operator=(other);
    m_pCells = other.m_pCells ? std::make_unique<std::vector<Cell>>(*other.m_pCells) : nullptr;
    m_pLinks.reset();
    return *this;
}

LPCTSTR CListTextElementUI::GetClass() const
{
    return L"ListTextElementUI";
}

LPVOID CListTextElementUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTTEXTELEMENT))
        return this;
    return CListLabelElementUI::GetInterface(name);
}

UINT CListTextElementUI::GetControlFlags() const
{
    const bool hasLinks = m_pLinks != nullptr && m_pLinks->count > 0;
    return UIFLAG_WANTRETURN | (hasLinks && IsEnabled() ? UIFLAG_SETCURSOR : 0);
}

LPCTSTR CListTextElementUI::GetText(int column) const
{
    if (column == 0)
        return m_pCells != nullptr || !m_sText.IsEmpty() ? m_sText.GetData() : nullptr;
    if (column < 0 || m_pCells == nullptr || column >= static_cast<int>(m_pCells->size()))
        return nullptr;
    return (*m_pCells)[static_cast<std::size_t>(column)].text;
}

void CListTextElementUI::SetText(int column, LPCTSTR text)
{
    if (column == 0) {
        CListLabelElementUI::SetText(text);
        return;
    }
    if (column < 0 || column >= UILIST_MAX_COLUMNS)
        return;
    CDuiString converted(text != nullptr ? text : L"");
    converted.Replace(L"{\\n}", L"\n");
    CDuiString& cell = MakeCell(column).text;
    if (cell == converted)
        return;
    cell = std::move(converted);
    TextChanged();
}

CListTextElementUI::Cell& CListTextElementUI::MakeCell(int column)
{
    const auto index = static_cast<std::size_t>(column);
    if (m_pCells == nullptr)
        m_pCells = std::make_unique<std::vector<Cell>>();
    if (m_pCells->size() <= index)
        m_pCells->resize(index + 1);
    return (*m_pCells)[index];
}

DWORD CListTextElementUI::GetTextColor(int column) const
{
    if (column < 0 || m_pCells == nullptr || column >= static_cast<int>(m_pCells->size()))
        return 0;
    return (*m_pCells)[static_cast<std::size_t>(column)].color;
}

void CListTextElementUI::SetTextColor(int column, DWORD color)
{
    if (column < 0 || column >= UILIST_MAX_COLUMNS || GetTextColor(column) == color)
        return;
    MakeCell(column).color = color;
    Invalidate();
}

void CListTextElementUI::SetText(LPCTSTR text)
{
    SetText(0, text);
}

CDuiString CListTextElementUI::GetText() const
{
    return CListLabelElementUI::GetText();
}

CDuiString* CListTextElementUI::GetLinkContent(int link)
{
    if (m_pLinks == nullptr || link < 0 || link >= m_pLinks->count)
        return nullptr;
    return &m_pLinks->contents[link];
}

void CListTextElementUI::SetOwner(CControlUI* owner)
{
    CListLabelElementUI::SetOwner(owner);
    m_pListControl = owner;
    m_pList =
        owner != nullptr ? static_cast<IListUI*>(owner->GetInterface(DUI_CTR_ILIST)) : nullptr;
}

// The text that a column shows; a translation is put into the second argument.
LPCTSTR CListTextElementUI::CellText(int column, CDuiString& translated) const
{
    if (IListCallbackUI* const callback = m_pList != nullptr ? m_pList->GetTextCallback() : nullptr)
        return callback->GetItemText(m_pListControl, GetIndex(), column);
    if (column != 0 || !IsResourceText())
        return GetText(column);
    translated = GetText();
    return translated;
}

// The callback decides, or the column unless the row is disabled, or the list.
DWORD CListTextElementUI::CellColor(int column, const TListInfoUI& info)
{
    if (IListCallbackUI* const callback =
            m_pList != nullptr ? m_pList->GetTextCallback() : nullptr) {
        const DWORD color = callback->GetItemTextColor(m_pListControl, GetIndex(), column,
                                                       Shared::StateNumber(*this));
        if (color != 0)
            return color;
    }
    if (const DWORD own = GetTextColor(column); own != 0 && IsEnabled())
        return own;
    return Shared::TextColor(*this, info);
}

void CListTextElementUI::DrawItemText(HDC dc, const RECT& item)
{
    const TListInfoUI* const info = Shared::Info(*this);
    if (info == nullptr)
        return;
    if (!info->bShowHtml)
        m_pLinks.reset();
    else if (m_pLinks != nullptr)
        m_pLinks->count = 0;

    const RECT padding = ScaleLength(info->rcTextPadding);
    const int columns = ColumnCount(*info);
    if (columns == 0)
        DrawCell(dc, 0, LessPadding(item, padding), *info);
    for (int i = 0; i < columns; ++i) {
        const RECT cell{info->rcColumn[i].left, item.top, info->rcColumn[i].right, item.bottom};
        DrawCell(dc, i, LessPadding(cell, padding), *info);
    }
}

void CListTextElementUI::DrawCell(HDC dc, int column, const RECT& room, const TListInfoUI& info)
{
    if (::IsRectEmpty(&room))
        return;
    CDuiString translated;
    const LPCTSTR text = CellText(column, translated);
    if (text == nullptr || *text == L'\0')
        return;
    const DWORD color = CellColor(column, info);
    if (!info.bShowHtml) {
        Shared::DrawText(*this, dc, room, text, color, info);
        return;
    }
    if (!MayHaveLink(text)) {
        Shared::DrawText(*this, dc, room, text, color, info);
        return;
    }
    if (m_pLinks == nullptr)
        m_pLinks = std::make_unique<Links>();
    int count = MAX_LINK - m_pLinks->count;
    Shared::DrawText(*this, dc, room, text, color, info, m_pLinks->rects + m_pLinks->count,
                     m_pLinks->contents + m_pLinks->count, &count);
    m_pLinks->count += std::clamp(count, 0, MAX_LINK - m_pLinks->count);
}

LONG CListTextElementUI::MeasureText(const TListInfoUI& info, int width) const
{
    const RECT padding = ScaleLength(info.rcTextPadding);
    const int columns = ColumnCount(info);
    LONG highest = 0;
    for (int i = 0; i < std::max(columns, 1); ++i) {
        const RECT& column = info.rcColumn[i];
        const LONG room =
            columns == 0 ? width : column.right - column.left - padding.left - padding.right;
        CDuiString translated;
        const LPCTSTR text = CellText(i, translated);
        if (room > 0) {
            highest = std::max(
                highest, MeasureRowText(*m_pManager, info, text != nullptr ? text : L"", room));
        }
    }
    return highest;
}

UINT CListTextElementUI::MeasureKey(const TListInfoUI& info) const
{
    UINT key = CListLabelElementUI::MeasureKey(info);
    for (int i = 0; i < ColumnCount(info); ++i) {
        const LONG width = info.rcColumn[i].right - info.rcColumn[i].left;
        key = key * 31 + static_cast<UINT>(width);
    }
    return key;
}

SIZE CListTextElementUI::EstimateSize(SIZE available)
{
    // Nobody tells when the texts of a callback change.
    if (m_pList != nullptr && m_pList->GetTextCallback() != nullptr)
        m_bNeedEstimateSize = true;
    return CListLabelElementUI::EstimateSize(available);
}

void CListTextElementUI::TextChanged()
{
    m_bNeedEstimateSize = true;
    const TListInfoUI* const info = Shared::Info(*this);
    if (info != nullptr && (info->uTextStyle & DT_SINGLELINE) == 0 && m_cxyFixed.cy <= 0)
        NeedParentUpdate();
    else
        Invalidate();
}

int CListTextElementUI::LinkAt(POINT point) const
{
    if (m_pLinks == nullptr)
        return -1;
    for (int i = 0; i < m_pLinks->count; ++i) {
        if (::PtInRect(&m_pLinks->rects[i], point))
            return i;
    }
    return -1;
}

void CListTextElementUI::SetHoverLink(int link)
{
    if (m_pLinks == nullptr || m_pLinks->hover == link)
        return;
    m_pLinks->hover = link;
    Invalidate();
}

void CListTextElementUI::DoEvent(TEventUI& event)
{
    const bool isLinkLive = IsMouseEnabled() && IsEnabled();
    switch (event.Type) {
    case UIEVENT_SETCURSOR:
        if (isLinkLive && LinkAt(event.ptMouse) >= 0)
            ::SetCursor(::LoadCursorW(nullptr, MAKEINTRESOURCEW(DUI_HAND)));
        else
            CControlUI::DoEvent(event);
        return;
    case UIEVENT_BUTTONUP:
        if (const int link = LinkAt(event.ptMouse); isLinkLive && link >= 0) {
            m_uButtonState &= ~static_cast<UINT>(UISTATE_PUSHED | UISTATE_CAPTURED);
            if (m_pManager != nullptr)
                m_pManager->SendNotify(this, DUI_MSGTYPE_LINK, static_cast<WPARAM>(link));
            return;
        }
        break;
    case UIEVENT_MOUSEMOVE:
        SetHoverLink(isLinkLive ? LinkAt(event.ptMouse) : -1);
        break;
    case UIEVENT_MOUSELEAVE:
        SetHoverLink(-1);
        break;
    default:
        break;
    }
    CListLabelElementUI::DoEvent(event);
}

} // namespace DuiLib
