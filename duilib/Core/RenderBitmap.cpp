#include "Core/UIRender.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Core/UIControl.h"
#include "Core/UIManager.h"
#include "win32/Handles.h"

namespace DuiLib {

namespace {

using Quillet::SelectedObject;
using Quillet::UniqueBitmap;
using Quillet::UniqueMemoryDc;

constexpr short kNeutralHue = 180;
constexpr short kNeutralPercent = 100;

struct Hsl {
    double hue; // degrees
    double saturation;
    double lightness;
};

struct Rgb {
    double red;
    double green;
    double blue;
};

Hsl ToHsl(const Rgb& colour)
{
    const auto [low, high] = std::minmax({colour.red, colour.green, colour.blue});
    const double range = high - low;
    Hsl hsl{.hue = 0, .saturation = 0, .lightness = (high + low) / 2};
    if (range == 0)
        return hsl;

    hsl.saturation = range / (1 - std::abs(2 * hsl.lightness - 1));
    if (high == colour.red)
        hsl.hue = 60 * (colour.green - colour.blue) / range;
    else if (high == colour.green)
        hsl.hue = 60 * (colour.blue - colour.red) / range + 120;
    else
        hsl.hue = 60 * (colour.red - colour.green) / range + 240;
    return hsl;
}

Rgb ToRgb(const Hsl& hsl)
{
    const double reach = hsl.saturation * std::min(hsl.lightness, 1 - hsl.lightness);
    const auto channel = [&](double offset) {
        double place = std::fmod(offset + hsl.hue / 30, 12);
        if (place < 0)
            place += 12;
        return hsl.lightness - reach * std::clamp(std::min(place - 3, 9 - place), -1.0, 1.0);
    };
    return {.red = channel(0), .green = channel(8), .blue = channel(4)};
}

BYTE ToByte(double value)
{
    return static_cast<BYTE>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

bool IsNeutral(short hue, short saturation, short lightness)
{
    return hue == kNeutralHue && saturation == kNeutralPercent && lightness == kNeutralPercent;
}

// A pixel whose colours are multiplied by its alpha.
DWORD AdjustPixel(DWORD pixel, short hue, short saturation, short lightness)
{
    const DWORD alpha = pixel >> 24;
    if (alpha == 0)
        return pixel;
    if (alpha == 255)
        return CRenderEngine::AdjustColor(pixel, hue, saturation, lightness);

    DWORD plain = alpha << 24;
    for (int shift = 0; shift < 24; shift += 8)
        plain |= std::min<DWORD>(255, ((pixel >> shift & 0xFF) * 255 + alpha / 2) / alpha) << shift;
    const DWORD adjusted = CRenderEngine::AdjustColor(plain, hue, saturation, lightness);
    DWORD result = alpha << 24;
    for (int shift = 0; shift < 24; shift += 8)
        result |= ((adjusted >> shift & 0xFF) * alpha + 127) / 255 << shift;
    return result;
}

// GDI leaves the alpha of what it draws at 0.
void MakeDrawnPixelsOpaque(BYTE* bits, std::size_t count)
{
    for (std::size_t index = 0; index < count; index++) {
        DWORD pixel = 0;
        std::memcpy(&pixel, bits + index * 4, sizeof pixel);
        if (pixel != 0 && pixel >> 24 == 0)
            bits[index * 4 + 3] = 255;
    }
}

// Lets `paint` draw in client coordinates and cuts the rectangle out. Controls clip with regions,
// which know no shifted origin, so the canvas begins at the client area's corner.
template <class Paint>
HBITMAP PaintToBitmap(const RECT& rect, DWORD filter, Paint paint)
{
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    if (width <= 0 || height <= 0 || rect.right <= 0 || rect.bottom <= 0)
        return nullptr;

    const UniqueBitmap canvas(
        CRenderEngine::CreateARGB32Bitmap(nullptr, rect.right, rect.bottom, nullptr));
    BYTE* bits = nullptr;
    UniqueBitmap picture(CRenderEngine::CreateARGB32Bitmap(nullptr, width, height, &bits));
    const UniqueMemoryDc canvasDc(::CreateCompatibleDC(nullptr));
    const UniqueMemoryDc pictureDc(::CreateCompatibleDC(nullptr));
    if (canvas == nullptr || picture == nullptr || !canvasDc || !pictureDc)
        return nullptr;

    {
        const SelectedObject selectedCanvas(canvasDc.get(), canvas.get());
        const SelectedObject selectedPicture(pictureDc.get(), picture.get());
        ::IntersectClipRect(canvasDc.get(), rect.left, rect.top, rect.right, rect.bottom);
        paint(canvasDc.get());
        const int left = std::max(0L, -rect.left);
        const int top = std::max(0L, -rect.top);
        ::BitBlt(pictureDc.get(), left, top, width - left, height - top, canvasDc.get(),
                 rect.left + left, rect.top + top, SRCCOPY);
        ::GdiFlush();
        MakeDrawnPixelsOpaque(bits, std::size_t{1} * width * height);
        CRenderEngine::DrawColor(pictureDc.get(), {0, 0, width, height}, filter);
    }
    return picture.release();
}

} // namespace

void CRenderEngine::CheckAlphaColor(DWORD& color)
{
    constexpr DWORD kDarkestBlue = 0x000001;
    if ((color & 0x00FFFFFF) == 0)
        color |= kDarkestBlue;
}

DWORD CRenderEngine::AdjustColor(DWORD color, short H, short S, short L)
{
    if (IsNeutral(H, S, L))
        return color;

    auto hsl = ToHsl({.red = (color >> 16 & 0xFF) / 255.0,
                      .green = (color >> 8 & 0xFF) / 255.0,
                      .blue = (color & 0xFF) / 255.0});
    hsl.hue += H - kNeutralHue;
    hsl.saturation = std::clamp(hsl.saturation * S / kNeutralPercent, 0.0, 1.0);
    hsl.lightness = std::clamp(hsl.lightness * L / kNeutralPercent, 0.0, 1.0);
    const auto rgb = ToRgb(hsl);
    return (color & 0xFF000000) | static_cast<DWORD>(ToByte(rgb.red)) << 16 |
           static_cast<DWORD>(ToByte(rgb.green)) << 8 | ToByte(rgb.blue);
}

void CRenderEngine::AdjustImage(bool useHSL, TImageInfo* image, short H, short S, short L)
{
    if (image == nullptr || !image->bUseHSL || image->pBits == nullptr ||
        image->pSrcBits == nullptr)
        return;

    ::GdiFlush();
    const auto count = std::size_t{1} * image->nX * image->nY;
    if (!useHSL || IsNeutral(H, S, L)) {
        std::memcpy(image->pBits, image->pSrcBits, count * 4);
        return;
    }

    // Neighbours are mostly of one colour.
    DWORD last = 0;
    DWORD lastAdjusted = 0;
    for (std::size_t index = 0; index < count; index++) {
        DWORD pixel = 0;
        std::memcpy(&pixel, image->pSrcBits + index * 4, sizeof pixel);
        if (pixel != last) {
            last = pixel;
            lastAdjusted = AdjustPixel(pixel, H, S, L);
        }
        std::memcpy(image->pBits + index * 4, &lastAdjusted, sizeof lastAdjusted);
    }
}

HBITMAP CRenderEngine::CreateARGB32Bitmap(HDC dc, int width, int height, BYTE** bits)
{
    if (bits != nullptr)
        *bits = nullptr;
    if (width <= 0 || height <= 0)
        return nullptr;

    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (bits != nullptr)
        *bits = static_cast<BYTE*>(memory);
    return bitmap;
}

HBITMAP CRenderEngine::GenerateBitmap(CPaintManagerUI* manager, RECT rect, CControlUI* stop,
                                      DWORD filter)
{
    if (manager == nullptr || manager->GetRoot() == nullptr)
        return nullptr;
    return PaintToBitmap(rect, filter, [&](HDC dc) { manager->GetRoot()->Paint(dc, rect, stop); });
}

HBITMAP CRenderEngine::GenerateBitmap(CPaintManagerUI* manager, CControlUI* control, RECT rect,
                                      DWORD filter)
{
    if (manager == nullptr || control == nullptr)
        return nullptr;
    return PaintToBitmap(rect, filter, [&](HDC dc) { control->Paint(dc, rect, nullptr); });
}

} // namespace DuiLib
