#include "Control/UIListElement.h"

#include "Control/ListRow.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <cstdint>

namespace DuiLib {

namespace {

using namespace Quillet::Text;

using Shared = ListRow<CListElementUI>;

bool Wraps(const TListInfoUI& info)
{
    return (info.uTextStyle & DT_SINGLELINE) == 0;
}

} // namespace

CControlUI* CListLabelElementUI::CreateControl()
{
    return new CListLabelElementUI;
}

CListLabelElementUI::CListLabelElementUI()
    : m_cxyFixedLast{},
      m_bNeedEstimateSize(true),
      m_szAvailableLast{},
      m_uFixedHeightLast(0),
      m_nFontLast(-1),
      m_uTextStyleLast(0),
      m_rcTextPaddingLast{}
{
}

LPCTSTR CListLabelElementUI::GetClass() const
{
    return L"ListLabelElementUI";
}

LPVOID CListLabelElementUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTLABELELEMENT))
        return this;
    return CListElementUI::GetInterface(name);
}

void CListLabelElementUI::SetFixedWidth(int width)
{
    CListElementUI::SetFixedWidth(width);
    m_bNeedEstimateSize = true;
}

void CListLabelElementUI::SetText(LPCTSTR text)
{
    CListElementUI::SetText(text);
    m_bNeedEstimateSize = true;
    const TListInfoUI* const info = Shared::Info(*this);
    if (info != nullptr && Wraps(*info) && m_cxyFixed.cy <= 0)
        NeedParentUpdate();
}

// As high as it was told or else as its text; as wide as the list likes unless it was told.
SIZE CListLabelElementUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    const TListInfoUI* const info = Shared::Info(*this);
    if (size.cy > 0 || m_pManager == nullptr)
        return size;

    const RECT padding = info != nullptr ? ScaleLength(info->rcTextPadding) : RECT{};
    const LONG besides = padding.top + padding.bottom;
    if (info == nullptr || !Wraps(*info)) {
        const TFontInfo* const font = m_pManager->GetFontInfo(info != nullptr ? info->nFont : -1);
        size.cy = font->tm.tmHeight + kRowLineMargin + besides;
        return size;
    }

    const UINT key = MeasureKey(*info);
    const bool known = !m_bNeedEstimateSize && available.cx == m_szAvailableLast.cx &&
                       key == m_uFixedHeightLast && info->nFont == m_nFontLast &&
                       info->uTextStyle == m_uTextStyleLast &&
                       ::EqualRect(&padding, &m_rcTextPaddingLast);
    if (known)
        return m_cxyFixedLast;

    const LONG width = (size.cx > 0 ? size.cx : available.cx) - padding.left - padding.right;
    size.cy = std::max<LONG>(MeasureText(*info, std::max<LONG>(width, 1)) + besides, 1);

    m_cxyFixedLast = size;
    m_szAvailableLast = available;
    m_uFixedHeightLast = key;
    m_nFontLast = info->nFont;
    m_uTextStyleLast = info->uTextStyle;
    m_rcTextPaddingLast = padding;
    m_bNeedEstimateSize = IsResourceText();
    return size;
}

// What text and font do not tell: the font is rebuilt for another scale under its old id.
UINT CListLabelElementUI::MeasureKey(const TListInfoUI& info) const
{
    const TFontInfo* const font = m_pManager->GetFontInfo(info.nFont);
    std::uint32_t key = kHashSeed;
    for (const LONG part :
         {font->tm.tmHeight, font->tm.tmAveCharWidth, static_cast<LONG>(info.bShowHtml)}) {
        key = (key ^ static_cast<std::uint32_t>(part)) * 16777619u;
    }
    return key;
}

LONG CListLabelElementUI::MeasureText(const TListInfoUI& info, int width) const
{
    return MeasureRowText(*m_pManager, info, CControlUI::GetText(), width);
}

void CListLabelElementUI::DrawItemText(HDC dc, const RECT& item)
{
    const TListInfoUI* const info = Shared::Info(*this);
    if (info == nullptr)
        return;
    const RECT room = LessPadding(item, ScaleLength(info->rcTextPadding));
    const DWORD color = Shared::TextColor(*this, *info);
    if (IsResourceText())
        Shared::DrawText(*this, dc, room, GetText(), color, *info);
    else
        Shared::DrawText(*this, dc, room, m_sText, color, *info);
}

bool CListLabelElementUI::DoPaint(HDC dc, const RECT& paint, CControlUI*)
{
    if (!::IntersectRect(&m_rcPaint, &paint, &m_rcItem))
        return true;
    DrawItemBk(dc, m_rcItem);
    DrawItemText(dc, m_rcItem);
    return true;
}

} // namespace DuiLib
