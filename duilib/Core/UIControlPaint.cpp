#include "Core/UIControl.h"

#include "Core/BorderEdges.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

constexpr int kGradientSteps = 16;

bool IsOpaque(DWORD color)
{
    return color >= 0xFF000000;
}

// A border along the inside of an edge. The pen style matters only when it is not solid.
void DrawEdge(HDC dc, const RECT& edge, bool vertical, int size, DWORD color, int style)
{
    if (::IsRectEmpty(&edge))
        return;
    if (style == PS_SOLID) {
        CRenderEngine::DrawColor(dc, edge, color);
        return;
    }
    RECT line = edge;
    if (vertical)
        line.left = line.right = edge.left + size / 2;
    else
        line.top = line.bottom = edge.top + size / 2;
    CRenderEngine::DrawLine(dc, line, size, color, style);
}

} // namespace

void DrawBorderEdges(HDC dc, const RECT& item, const RECT& sizes, DWORD color, int style)
{
    RECT middle = item; // between the upper and the lower edge, so that no corner is drawn twice
    if (sizes.top > 0) {
        middle.top = std::min(item.top + sizes.top, item.bottom);
        DrawEdge(dc, {item.left, item.top, item.right, middle.top}, false, sizes.top, color, style);
    }
    if (sizes.bottom > 0) {
        middle.bottom = std::max(item.bottom - sizes.bottom, middle.top);
        DrawEdge(dc, {item.left, middle.bottom, item.right, item.bottom}, false, sizes.bottom,
                 color, style);
    }
    if (sizes.left > 0) {
        const LONG right = std::min(item.left + sizes.left, item.right);
        DrawEdge(dc, {item.left, middle.top, right, middle.bottom}, true, sizes.left, color, style);
        middle.left = right;
    }
    if (sizes.right > 0) {
        const LONG left = std::max(item.right - sizes.right, middle.left);
        DrawEdge(dc, {left, middle.top, item.right, middle.bottom}, true, sizes.right, color,
                 style);
    }
}

bool CControlUI::Paint(HDC dc, const RECT& paint, CControlUI* stop)
{
    if (stop == this)
        return false;
    if (!::IntersectRect(&m_rcPaint, &paint, &m_rcItem))
        return true;
    const RECT visible = m_rcPaint;
    return DoPaint(dc, visible, stop);
}

bool CControlUI::DoPaint(HDC dc, const RECT& paint, CControlUI*)
{
    // A container may call this step directly, without Paint.
    ::IntersectRect(&m_rcPaint, &paint, &m_rcItem);

    const SIZE round = GetBorderRound();
    if (round.cx > 0 || round.cy > 0) {
        CRenderClip clip;
        CRenderClip::GenerateRoundClip(dc, m_rcPaint, m_rcItem, round.cx, round.cy, clip);
        PaintSteps(dc);
    } else {
        PaintSteps(dc);
    }
    return true;
}

void CControlUI::PaintSteps(HDC dc)
{
    PaintBkColor(dc);
    PaintBkImage(dc);
    PaintStatusImage(dc);
    PaintForeColor(dc);
    PaintForeImage(dc);
    PaintText(dc);
    PaintBorder(dc);
}

void CControlUI::PaintBkColor(HDC dc)
{
    if (m_dwBackColor == 0)
        return;
    const DWORD color = GetAdjustColor(m_dwBackColor);
    if (m_dwBackColor2 == 0) {
        CRenderEngine::DrawColor(dc, IsOpaque(m_dwBackColor) ? m_rcPaint : m_rcItem, color);
        return;
    }

    const DWORD color2 = GetAdjustColor(m_dwBackColor2);
    const bool vertical = !Quillet::Text::EqualsNoCase(m_sGradient.GetData(), L"hor");
    if (m_dwBackColor3 == 0) {
        CRenderEngine::DrawGradient(dc, m_rcItem, color, color2, vertical, kGradientSteps);
        return;
    }
    const DWORD color3 = GetAdjustColor(m_dwBackColor3);
    RECT first = m_rcItem;
    RECT second = m_rcItem;
    if (vertical)
        first.bottom = second.top = m_rcItem.top + (m_rcItem.bottom - m_rcItem.top) / 2;
    else
        first.right = second.left = m_rcItem.left + (m_rcItem.right - m_rcItem.left) / 2;
    CRenderEngine::DrawGradient(dc, first, color, color2, vertical, kGradientSteps);
    CRenderEngine::DrawGradient(dc, second, color2, color3, vertical, kGradientSteps);
}

void CControlUI::PaintBkImage(HDC dc)
{
    if (!m_sBkImage.IsEmpty())
        DrawImage(dc, m_sBkImage);
}

void CControlUI::PaintStatusImage(HDC) {}

void CControlUI::PaintForeColor(HDC dc)
{
    if (m_dwForeColor != 0)
        CRenderEngine::DrawColor(dc, m_rcItem, GetAdjustColor(m_dwForeColor));
}

void CControlUI::PaintForeImage(HDC dc)
{
    if (!m_sForeImage.IsEmpty())
        DrawImage(dc, m_sForeImage);
}

void CControlUI::PaintText(HDC) {}

void CControlUI::PaintBorder(HDC dc)
{
    if (m_dwBorderColor == 0 && m_dwFocusBorderColor == 0)
        return;
    const bool showsFocus = IsFocused() && m_dwFocusBorderColor != 0;
    const DWORD color = showsFocus ? m_dwFocusBorderColor : m_dwBorderColor;
    if (color == 0)
        return;

    const DWORD adjusted = GetAdjustColor(color);
    const int size = GetBorderSize();
    const SIZE round = GetBorderRound();
    if (size > 0 && (round.cx > 0 || round.cy > 0)) {
        CRenderEngine::DrawRoundRect(dc, m_rcItem, size, round.cx, round.cy, adjusted,
                                     m_nBorderStyle);
        return;
    }
    if (showsFocus && size > 0) {
        CRenderEngine::DrawRect(dc, m_rcItem, size, adjusted, m_nBorderStyle);
        return;
    }
    if (m_dwBorderColor == 0)
        return;

    const DWORD borderColor = GetAdjustColor(m_dwBorderColor);
    const RECT& sizes = m_rcBorderSize;
    if (sizes.left > 0 || sizes.top > 0 || sizes.right > 0 || sizes.bottom > 0)
        DrawBorderEdges(dc, m_rcItem, GetBorderRectSize(), borderColor, m_nBorderStyle);
    else if (size > 0)
        CRenderEngine::DrawRect(dc, m_rcItem, size, borderColor, m_nBorderStyle);
}

void CControlUI::DoPostPaint(HDC, const RECT&) {}

DWORD CControlUI::GetAdjustColor(DWORD color)
{
    if (!m_bColorHSL)
        return color;
    short hue = 0;
    short saturation = 0;
    short lightness = 0;
    if (!CPaintManagerUI::GetHSL(&hue, &saturation, &lightness))
        return color;
    return CRenderEngine::AdjustColor(color, hue, saturation, lightness);
}

bool CControlUI::DrawImage(HDC dc, LPCTSTR image, LPCTSTR modify)
{
    return CRenderEngine::DrawImageString(dc, m_pManager, m_rcItem, m_rcPaint, image, modify,
                                          m_instance);
}

} // namespace DuiLib
