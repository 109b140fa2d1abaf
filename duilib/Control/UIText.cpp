#include "Control/UIText.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

CControlUI* CTextUI::CreateControl()
{
    return new CTextUI;
}

CTextUI::CTextUI() : m_nLinks(0), m_rcLinks{}, m_nHoverLink(-1)
{
    m_uTextStyle = DT_WORDBREAK;
}

CTextUI::~CTextUI() = default;

LPCTSTR CTextUI::GetClass() const
{
    return L"TextUI";
}

LPVOID CTextUI::GetInterface(LPCTSTR name)
{
    if (name && Quillet::Text::EqualsNoCase(name, DUI_CTR_TEXT))
        return static_cast<CTextUI*>(this);
    return CLabelUI::GetInterface(name);
}

UINT CTextUI::GetControlFlags() const
{
    return IsEnabled() && m_nLinks > 0 ? UIFLAG_SETCURSOR : 0;
}

CDuiString* CTextUI::GetLinkContent(int index)
{
    return index >= 0 && index < m_nLinks ? &m_sLinks[index] : NULL;
}

void CTextUI::SetText(LPCTSTR text)
{
    const CDuiString before = m_sText;
    CLabelUI::SetText(text);
    const bool sizeMayChange = m_cxyFixed.cx <= 0 || m_cxyFixed.cy <= 0;
    if (sizeMayChange && before != m_sText)
        NeedParentUpdate();
}

void CTextUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (!IsMouseEnabled() && isMouse) {
        CLabelUI::DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_SETCURSOR:
        if (IsEnabled() && LinkAt(event.ptMouse) >= 0) {
            ::SetCursor(::LoadCursor(NULL, MAKEINTRESOURCE(DUI_HAND)));
            return;
        }
        break;
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        if (IsEnabled() && LinkAt(event.ptMouse) >= 0) {
            Invalidate();
            return;
        }
        break;
    case UIEVENT_BUTTONUP:
        if (const int link = LinkAt(event.ptMouse); IsEnabled() && link >= 0) {
            if (m_pManager)
                m_pManager->SendNotify(this, DUI_MSGTYPE_LINK, static_cast<WPARAM>(link));
            return;
        }
        break;
    case UIEVENT_MOUSEMOVE:
        SetHoverLink(IsEnabled() ? LinkAt(event.ptMouse) : -1);
        break;
    case UIEVENT_MOUSELEAVE:
        SetHoverLink(-1);
        break;
    default:
        break;
    }
    CLabelUI::DoEvent(event);
}

// As wide as the wrapped text and as high, as far as the size is not fixed.
SIZE CTextUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    if ((size.cx > 0 && size.cy > 0) || !m_pManager)
        return size;

    const MeasureKey key = CurrentMeasureKey();
    const bool known = !m_bNeedEstimateSize && key == m_LastMeasure &&
                       available.cx == m_szAvailableLast.cx && available.cy == m_szAvailableLast.cy;
    if (known)
        return m_cxyFixedLast;

    const RECT padding = GetTextPadding();
    const LONG besides = padding.left + padding.right;
    const LONG room = size.cx > 0 ? size.cx : available.cx;
    const SIZE text = MeasureText(std::max(1L, room - besides));
    if (size.cx <= 0)
        size.cx = text.cx + besides;
    if (size.cy <= 0)
        size.cy = text.cy + padding.top + padding.bottom;

    m_szAvailableLast = available;
    m_cxyFixedLast = size;
    m_LastMeasure = key;
    m_bNeedEstimateSize = IsResourceText();
    return size;
}

void CTextUI::PaintText(HDC dc)
{
    const CDuiString text = GetText();
    if (text.IsEmpty() || !m_bShowHtml || !m_pManager) {
        m_nLinks = 0;
        CLabelUI::PaintText(dc);
        return;
    }

    RECT room = TextRect();
    int links = MAX_LINK;
    CRenderEngine::DrawHtmlText(dc, m_pManager, room, text, GetAdjustColor(LabelTextColor()),
                                m_rcLinks, m_sLinks, links, m_iFont, m_uTextStyle);
    m_nLinks = std::clamp(links, 0, static_cast<int>(MAX_LINK));
}

int CTextUI::LinkAt(POINT point) const
{
    for (int i = 0; i < m_nLinks; ++i) {
        if (::PtInRect(&m_rcLinks[i], point))
            return i;
    }
    return -1;
}

void CTextUI::SetHoverLink(int index)
{
    if (m_nHoverLink == index)
        return;
    m_nHoverLink = index;
    Invalidate();
}

} // namespace DuiLib
