#include "Core/UIRender.h"

#include "Core/DrawingColor.h"
#include "Core/NearPart.h"
#include "win32/Handles.h"
#include "win32/PerThread.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

namespace DuiLib {

namespace {

constexpr DWORD kOpaqueBlack = Opaque(0);

// A top-down strip of 32-bit pixels that stays selected in a DC of its own: the source of every
// translucent fill of a thread.
template <int columns, int rows>
class PixelSource {
public:
    PixelSource()
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = columns;
        info.bmiHeader.biHeight = -rows;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_dc.reset(::CreateCompatibleDC(nullptr));
        void* bits = nullptr;
        m_bitmap.reset(::CreateDIBSection(m_dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (m_dc && m_bitmap) {
            m_selected.emplace(m_dc.get(), m_bitmap.get());
            m_pixels = static_cast<std::uint32_t*>(bits);
        }
    }

    HDC Dc() const { return m_dc.get(); }

    // Empty when the system could not make the strip. GDI may still have to read what was drawn
    // before.
    std::span<std::uint32_t> Edit()
    {
        if (!m_pixels)
            return {};
        ::GdiFlush();
        return {m_pixels, static_cast<std::size_t>(columns) * rows};
    }

private:
    Quillet::UniqueMemoryDc m_dc;
    Quillet::UniqueBitmap m_bitmap;
    std::optional<Quillet::SelectedObject> m_selected;
    std::uint32_t* m_pixels = nullptr;
};

DWORD Premultiplied(DWORD color)
{
    const DWORD alpha = AlphaOf(color);
    const auto scaled = [&](int shift) {
        return ((((color >> shift) & 0xFF) * alpha + 127) / 255) << shift;
    };
    return alpha << 24 | scaled(16) | scaled(8) | scaled(0);
}

constexpr BLENDFUNCTION kBlendPremultiplied{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};

class SinglePixel {
public:
    // Null when there is no pixel.
    HDC In(DWORD color)
    {
        if (m_color != color) {
            const auto pixels = m_source.Edit();
            if (pixels.empty())
                return nullptr;
            pixels[0] = Premultiplied(color);
            m_color = color;
        }
        return m_source.Dc();
    }

private:
    PixelSource<1, 1> m_source;
    std::optional<DWORD> m_color;
};

void FillOpaque(HDC dc, const RECT& rect, DWORD color)
{
    const COLORREF previous = ::SetDCBrushColor(dc, ToColorRef(color));
    ::FillRect(dc, &rect, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
    ::SetDCBrushColor(dc, previous);
}

// One wide, along the inside.
void FrameOpaque(HDC dc, const RECT& rect, DWORD color)
{
    const COLORREF previous = ::SetDCBrushColor(dc, ToColorRef(color));
    ::FrameRect(dc, &rect, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
    ::SetDCBrushColor(dc, previous);
}

// A brush writes no alpha, and in a layered window black without alpha is nothing at all. A copied
// pixel keeps its alpha.
void FillBlack(HDC dc, const RECT& rect)
{
    static Quillet::PerThread<SinglePixel> pixels;
    const HDC source = pixels.Get().In(kOpaqueBlack);
    if (source)
        ::StretchBlt(dc, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                     source, 0, 0, 1, 1, SRCCOPY);
    else
        FillOpaque(dc, rect, kOpaqueBlack);
}

void FillBlended(HDC dc, const RECT& rect, DWORD color)
{
    static Quillet::PerThread<SinglePixel> pixels;
    const HDC source = pixels.Get().In(color);
    if (!source)
        return;
    ::AlphaBlend(dc, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, source, 0,
                 0, 1, 1, kBlendPremultiplied);
}

void FillGradient(HDC dc, const RECT& rect, DWORD first, DWORD second, bool vertical)
{
    const auto corner = [](LONG x, LONG y, DWORD color) {
        return TRIVERTEX{x,
                         y,
                         static_cast<COLOR16>((color >> 8) & 0xFF00),
                         static_cast<COLOR16>(color & 0xFF00),
                         static_cast<COLOR16>((color << 8) & 0xFF00),
                         0xFF00};
    };
    TRIVERTEX corners[]{corner(rect.left, rect.top, first),
                        corner(rect.right, rect.bottom, second)};
    GRADIENT_RECT whole{0, 1};
    ::GradientFill(dc, corners, 2, &whole, 1,
                   vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

// The colour a share of the way from one to the other, with the given alpha.
DWORD Between(DWORD first, DWORD second, DWORD alpha, int share, int whole)
{
    const auto mixed = [&](int shift) {
        const int from = static_cast<int>((first >> shift) & 0xFF);
        const int to = static_cast<int>((second >> shift) & 0xFF);
        return static_cast<DWORD>(from + ::MulDiv(to - from, share, whole)) << shift;
    };
    return alpha << 24 | mixed(16) | mixed(8) | mixed(0);
}

constexpr int kStrip = 1024; // pixels of a translucent gradient that are blended at once

template <int columns, int rows>
void BlendGradient(HDC dc, const RECT& rect, DWORD first, DWORD second, DWORD alpha,
                   PixelSource<columns, rows>& strip)
{
    constexpr bool kVertical = rows > 1;
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int length = kVertical ? height : width;
    for (int done = 0; done < length; done += kStrip) {
        const auto pixels = strip.Edit();
        if (pixels.empty())
            return;
        const int count = std::min(length - done, kStrip);
        for (int i = 0; i < count; ++i)
            pixels[i] = Premultiplied(Between(first, second, alpha, done + i, length));
        if (kVertical) {
            ::AlphaBlend(dc, rect.left, rect.top + done, width, count, strip.Dc(), 0, 0, 1, count,
                         kBlendPremultiplied);
        } else {
            ::AlphaBlend(dc, rect.left + done, rect.top, count, height, strip.Dc(), 0, 0, count, 1,
                         kBlendPremultiplied);
        }
    }
}

// A pen draws colours that a skin gave without alpha.
DWORD PenColor(DWORD color)
{
    return AlphaOf(color) == 0 ? Opaque(color) : color;
}

// Lengths of the strokes and gaps of a pen style, in line widths; empty for an unbroken line.
std::span<const int> DashesOf(int style)
{
    static constexpr int kDash[] = {3, 1};
    static constexpr int kDot[] = {1, 1};
    static constexpr int kDashDot[] = {3, 1, 1, 1};
    static constexpr int kDashDotDot[] = {3, 1, 1, 1, 1, 1};
    switch (style & PS_STYLE_MASK) {
    case PS_DASH:
        return kDash;
    case PS_DOT:
        return kDot;
    case PS_DASHDOT:
        return kDashDot;
    case PS_DASHDOTDOT:
        return kDashDotDot;
    default:
        return {};
    }
}

enum class Direction { Horizontal, Vertical };

// Fills a straight band, in strokes when the style has gaps.
void FillBand(HDC dc, const RECT& band, Direction direction, int size, DWORD color, int style)
{
    const auto dashes = DashesOf(style);
    if (dashes.empty()) {
        CRenderEngine::DrawColor(dc, band, color);
        return;
    }
    const bool horizontal = direction == Direction::Horizontal;
    RECT stroke = band;
    LONG& from = horizontal ? stroke.left : stroke.top;
    LONG& to = horizontal ? stroke.right : stroke.bottom;
    RECT visible{};
    ::GetClipBox(dc, &visible);
    const LONG end = std::min(to, horizontal ? visible.right : visible.bottom);
    const LONG hidden = std::max<LONG>((horizontal ? visible.left : visible.top) - from, 0);
    const LONG period = std::accumulate(dashes.begin(), dashes.end(), 0) * size;
    from += hidden / period * period;
    for (std::size_t i = 0; from < end; i = (i + 1) % dashes.size()) {
        to = std::min<LONG>(from + dashes[i] * size, end);
        const bool isStroke = i % 2 == 0;
        if (isStroke)
            CRenderEngine::DrawColor(dc, stroke, color);
        from = to;
    }
}

Gdiplus::DashStyle GdiplusDashOf(int style)
{
    switch (style & PS_STYLE_MASK) {
    case PS_DASH:
        return Gdiplus::DashStyleDash;
    case PS_DOT:
        return Gdiplus::DashStyleDot;
    case PS_DASHDOT:
        return Gdiplus::DashStyleDashDot;
    case PS_DASHDOTDOT:
        return Gdiplus::DashStyleDashDotDot;
    default:
        return Gdiplus::DashStyleSolid;
    }
}

void DrawSlantedLine(HDC dc, const RECT& ends, int size, DWORD color, int style)
{
    Gdiplus::Graphics graphics(dc);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    Gdiplus::Pen pen(Gdiplus::Color(color), static_cast<Gdiplus::REAL>(size));
    pen.SetDashStyle(GdiplusDashOf(style));
    graphics.DrawLine(&pen, static_cast<INT>(ends.left), static_cast<INT>(ends.top),
                      static_cast<INT>(ends.right), static_cast<INT>(ends.bottom));
}

// The pixels from one end of a line to the other, which itself is left out.
std::pair<LONG, LONG> Covered(LONG from, LONG to)
{
    return from <= to ? std::pair{from, to} : std::pair{to + 1, from + 1};
}

bool IsDrawable(int size, int style)
{
    return size > 0 && (style & PS_STYLE_MASK) != PS_NULL;
}

void AddRoundRect(Gdiplus::GraphicsPath& path, const Gdiplus::Rect& rect, int diameter)
{
    if (diameter <= 0) {
        path.AddRectangle(rect);
        return;
    }
    const int right = rect.X + rect.Width - diameter;
    const int bottom = rect.Y + rect.Height - diameter;
    path.AddArc(rect.X, rect.Y, diameter, diameter, 180, 90);
    path.AddArc(right, rect.Y, diameter, diameter, 270, 90);
    path.AddArc(right, bottom, diameter, diameter, 0, 90);
    path.AddArc(rect.X, bottom, diameter, diameter, 90, 90);
    path.CloseFigure();
}

} // namespace

void CRenderEngine::DrawColor(HDC dc, const RECT& rect, DWORD color)
{
    if (AlphaOf(color) == 0 || ::IsRectEmpty(&rect))
        return;
    if (color == kOpaqueBlack)
        FillBlack(dc, rect);
    else if (AlphaOf(color) == kOpaqueAlpha)
        FillOpaque(dc, rect, color);
    else
        FillBlended(dc, rect, color);
}

void CRenderEngine::DrawGradient(HDC dc, const RECT& rect, DWORD first, DWORD second, bool vertical,
                                 int)
{
    const DWORD alpha = (AlphaOf(first) + AlphaOf(second)) / 2;
    if (alpha == 0 || ::IsRectEmpty(&rect))
        return;
    if (alpha == kOpaqueAlpha) {
        FillGradient(dc, rect, first, second, vertical);
    } else if (vertical) {
        static Quillet::PerThread<PixelSource<1, kStrip>> strips;
        BlendGradient(dc, rect, first, second, alpha, strips.Get());
    } else {
        static Quillet::PerThread<PixelSource<kStrip, 1>> strips;
        BlendGradient(dc, rect, first, second, alpha, strips.Get());
    }
}

void CRenderEngine::DrawLine(HDC dc, const RECT& rect, int size, DWORD color, int style)
{
    if (!IsDrawable(size, style))
        return;
    const DWORD pen = PenColor(color);
    if (rect.top == rect.bottom) {
        const auto [left, right] = Covered(rect.left, rect.right);
        const LONG top = rect.top - size / 2;
        FillBand(dc, {left, top, right, top + size}, Direction::Horizontal, size, pen, style);
    } else if (rect.left == rect.right) {
        const auto [top, bottom] = Covered(rect.top, rect.bottom);
        const LONG left = rect.left - size / 2;
        FillBand(dc, {left, top, left + size, bottom}, Direction::Vertical, size, pen, style);
    } else {
        DrawSlantedLine(dc, rect, size, pen, style);
    }
}

void CRenderEngine::DrawRect(HDC dc, const RECT& rect, int size, DWORD color, int style)
{
    if (!IsDrawable(size, style) || ::IsRectEmpty(&rect))
        return;
    const DWORD pen = PenColor(color);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    if (size >= width - size || size >= height - size) {
        DrawColor(dc, rect, pen);
        return;
    }
    const bool isFrame = size == 1 && DashesOf(style).empty();
    if (isFrame && AlphaOf(pen) == kOpaqueAlpha && pen != kOpaqueBlack) {
        FrameOpaque(dc, rect, pen);
        return;
    }
    const LONG innerTop = rect.top + size;
    const LONG innerBottom = rect.bottom - size;
    FillBand(dc, {rect.left, rect.top, rect.right, innerTop}, Direction::Horizontal, size, pen,
             style);
    FillBand(dc, {rect.left, innerBottom, rect.right, rect.bottom}, Direction::Horizontal, size,
             pen, style);
    FillBand(dc, {rect.left, innerTop, rect.left + size, innerBottom}, Direction::Vertical, size,
             pen, style);
    FillBand(dc, {rect.right - size, innerTop, rect.right, innerBottom}, Direction::Vertical, size,
             pen, style);
}

// The corner height has no say: the corners are quarter circles.
void CRenderEngine::DrawRoundRect(HDC dc, const RECT& rect, int size, int width, int, DWORD color,
                                  int style)
{
    if (!IsDrawable(size, style) || AlphaOf(color) == 0 || ::IsRectEmpty(&rect))
        return;
    RECT visible{};
    ::GetClipBox(dc, &visible);
    const RECT part = NearPart(rect, visible);
    if (::IsRectEmpty(&part))
        return;
    const Gdiplus::Rect outline(part.left, part.top, part.right - part.left - 1,
                                part.bottom - part.top - 1);
    const int diameter = std::min({width, outline.Width, outline.Height, int{kOutOfSight}});
    Gdiplus::GraphicsPath path;
    AddRoundRect(path, outline, diameter);

    Gdiplus::Graphics graphics(dc);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    Gdiplus::Pen pen(Gdiplus::Color(color), static_cast<Gdiplus::REAL>(size));
    pen.SetDashStyle(GdiplusDashOf(style));
    graphics.DrawPath(&pen, &path);
}

} // namespace DuiLib
