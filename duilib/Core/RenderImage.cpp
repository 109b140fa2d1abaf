#include "Core/UIRender.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cwchar>
#include <memory>
#include <optional>
#include <string>

#include "Core/ImageCache.h"
#include "Core/UIManager.h"
#include "Core/UIResourceManager.h"
#include "Utils/DPI.h"
#include "win32/GdiPlus.h"

namespace DuiLib {

namespace {

int Width(const RECT& rect)
{
    return rect.right - rect.left;
}

int Height(const RECT& rect)
{
    return rect.bottom - rect.top;
}

bool IsEmpty(const RECT& rect)
{
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

bool IsZero(const RECT& rect)
{
    return rect.left == 0 && rect.top == 0 && rect.right == 0 && rect.bottom == 0;
}

bool Meet(const RECT& first, const RECT& second)
{
    return first.left < second.right && second.left < first.right && first.top < second.bottom &&
           second.top < first.bottom;
}

// The memory DC through which this thread draws its bitmaps, one after the other. It was made for
// no window, so the system takes it back with the thread.
HDC BitmapDc()
{
    thread_local HDC dc = nullptr;
    if (dc == nullptr)
        dc = ::CreateCompatibleDC(nullptr);
    return dc;
}

// A bitmap, ready to be drawn in pieces.
class BitmapSource {
public:
    BitmapSource(HDC target, HBITMAP bitmap, const RECT& paint, bool alpha, UINT fade)
        : m_target(target),
          m_paint(paint),
          m_blended(alpha || fade < 255),
          m_blend{AC_SRC_OVER, 0, static_cast<BYTE>(std::min(fade, 255u)),
                  static_cast<BYTE>(alpha ? AC_SRC_ALPHA : 0)},
          m_former(::SelectObject(BitmapDc(), bitmap))
    {
    }

    ~BitmapSource()
    {
        if (m_former != nullptr)
            ::SelectObject(BitmapDc(), m_former);
        if (m_formerMode != 0) {
            ::SetStretchBltMode(m_target, m_formerMode);
            ::SetBrushOrgEx(m_target, m_formerOrigin.x, m_formerOrigin.y, nullptr);
        }
    }

    BitmapSource(const BitmapSource&) = delete;
    BitmapSource& operator=(const BitmapSource&) = delete;

    bool IsReady() const { return m_former != nullptr; }

    const RECT& Paint() const { return m_paint; }

    void Draw(const RECT& to, const RECT& part)
    {
        if (IsEmpty(to) || IsEmpty(part) || !Meet(to, m_paint))
            return;
        if (m_blended) {
            ::AlphaBlend(m_target, to.left, to.top, Width(to), Height(to), BitmapDc(), part.left,
                         part.top, Width(part), Height(part), m_blend);
        } else if (Width(to) == Width(part) && Height(to) == Height(part)) {
            ::BitBlt(m_target, to.left, to.top, Width(to), Height(to), BitmapDc(), part.left,
                     part.top, SRCCOPY);
        } else {
            UseHalftone();
            ::StretchBlt(m_target, to.left, to.top, Width(to), Height(to), BitmapDc(), part.left,
                         part.top, Width(part), Height(part), SRCCOPY);
        }
    }

private:
    void UseHalftone()
    {
        if (m_formerMode != 0)
            return;
        m_formerMode = ::SetStretchBltMode(m_target, HALFTONE);
        ::SetBrushOrgEx(m_target, 0, 0, &m_formerOrigin);
    }

    HDC m_target;
    RECT m_paint;
    bool m_blended;
    BLENDFUNCTION m_blend;
    HGDIOBJ m_former;
    int m_formerMode = 0;
    POINT m_formerOrigin{};
};

// Four lines in each direction cut a rectangle into nine pieces.
struct Grid {
    int x[4];
    int y[4];

    Grid(const RECT& whole, const RECT& corners)
        : x{whole.left, whole.left + corners.left, whole.right - corners.right, whole.right},
          y{whole.top, whole.top + corners.top, whole.bottom - corners.bottom, whole.bottom}
    {
    }

    RECT Piece(int column, int row) const { return {x[column], y[row], x[column + 1], y[row + 1]}; }
};

// Corners that the part of the picture really has.
RECT BoundedCorners(const RECT& corners, const RECT& part)
{
    const auto bound = [](LONG wanted, LONG room) {
        return std::clamp(wanted, 0L, std::max(room, 0L));
    };
    RECT bounded{};
    bounded.left = bound(corners.left, Width(part));
    bounded.right = bound(corners.right, Width(part) - bounded.left);
    bounded.top = bound(corners.top, Height(part));
    bounded.bottom = bound(corners.bottom, Height(part) - bounded.top);
    return bounded;
}

// Repeats a part at its own size, or stretches it in a direction that is not tiled.
void DrawTiled(BitmapSource& source, const RECT& to, const RECT& part, bool tiledX, bool tiledY)
{
    if (IsEmpty(to) || IsEmpty(part))
        return;

    const RECT& paint = source.Paint();
    const int stepX = tiledX ? Width(part) : Width(to);
    const int stepY = tiledY ? Height(part) : Height(to);
    const auto firstSeen = [](int start, int seen, int step) {
        return seen > start ? start + (seen - start) / step * step : start;
    };
    const int firstX = firstSeen(to.left, paint.left, stepX);
    const int firstY = firstSeen(to.top, paint.top, stepY);
    const int endX = std::min(to.right, paint.right);
    const int endY = std::min(to.bottom, paint.bottom);
    for (int y = firstY; y < endY; y += stepY) {
        for (int x = firstX; x < endX; x += stepX) {
            const RECT tile{x, y, std::min<LONG>(x + stepX, to.right),
                            std::min<LONG>(y + stepY, to.bottom)};
            RECT cut = part;
            if (tiledX)
                cut.right = cut.left + Width(tile);
            if (tiledY)
                cut.bottom = cut.top + Height(tile);
            source.Draw(tile, cut);
        }
    }
}

// Where the picture of an image string goes.
RECT Destination(const TDrawInfo& info, const RECT& item, CDPI& dpi)
{
    RECT to = item;
    if (!IsZero(info.rcDest)) {
        to = dpi.Scale(info.rcDest);
        ::OffsetRect(&to, item.left, item.top);
        to.right = std::min(to.right, item.right);
        to.bottom = std::min(to.bottom, item.bottom);
    }
    if (info.szImage.cx <= 0 || info.szImage.cy <= 0)
        return to;

    const SIZE size = dpi.Scale(SIZE{info.szImage.cx, info.szImage.cy});
    const auto asked = [&info](LPCTSTR word) {
        return std::wcsstr(info.sAlign.GetData(), word) != nullptr;
    };
    const RECT all = to;
    const auto placeX = [&](LONG left) {
        to.left = left;
        to.right = left + size.cx;
    };
    const auto placeY = [&](LONG top) {
        to.top = top;
        to.bottom = top + size.cy;
    };
    if (asked(L"left"))
        placeX(all.left);
    else if (asked(L"hcenter"))
        placeX(all.left + (Width(all) - size.cx) / 2);
    else if (asked(L"right"))
        placeX(all.right - size.cx);
    if (asked(L"top"))
        placeY(all.top);
    else if (asked(L"vcenter"))
        placeY(all.top + (Height(all) - size.cy) / 2);
    else if (asked(L"bottom"))
        placeY(all.bottom - size.cy);

    const auto& padding = info.rcPadding;
    ::OffsetRect(
        &to, dpi.Scale(static_cast<int>(padding.left)) - dpi.Scale(static_cast<int>(padding.right)),
        dpi.Scale(static_cast<int>(padding.top)) - dpi.Scale(static_cast<int>(padding.bottom)));
    return to;
}

RECT ScaleEach(const RECT& rect, int percent)
{
    return {::MulDiv(rect.left, percent, 100), ::MulDiv(rect.top, percent, 100),
            ::MulDiv(rect.right, percent, 100), ::MulDiv(rect.bottom, percent, 100)};
}

// The parts of a picture that an image string names. They are pixels of the picture at its own
// size, so for a drawing that was made larger they grow with it.
struct PictureParts {
    RECT source;
    RECT corners;

    PictureParts(const TDrawInfo& info, const TImageInfo& image)
        : source(info.rcSource), corners(info.rcCorner)
    {
        const bool derived = std::wcschr(info.sImageName.GetData(), L'@') != nullptr;
        const int scale = derived ? ImageCache::ScaleOf(&image) : 100;
        if (scale != 100) {
            source = ScaleEach(source, scale);
            corners = ScaleEach(corners, scale);
        }
        const RECT whole{0, 0, image.nX, image.nY};
        if (IsZero(source))
            source = whole;
        else if (!::IntersectRect(&source, &source, &whole))
            source = RECT{};
    }
};

// The pixels of a bitmap in the order and form of GDI+; null when it is no 32-bit DIB section.
std::unique_ptr<Gdiplus::Bitmap> ViewOf(const TImageInfo& image)
{
    DIBSECTION section{};
    const int size = ::GetObjectW(image.hBitmap, sizeof section, &section);
    if (size != static_cast<int>(sizeof section) || section.dsBm.bmBitsPixel != 32)
        return nullptr;

    const int width = section.dsBm.bmWidth;
    const int height = section.dsBm.bmHeight;
    auto* first = static_cast<BYTE*>(section.dsBm.bmBits);
    int stride = width * 4;
    // Whoever made a picture of his own may have begun with the last row.
    const bool bottomUp = image.pBits == nullptr && section.dsBmih.biHeight > 0;
    if (bottomUp) {
        first += std::ptrdiff_t{stride} * (height - 1);
        stride = -stride;
    }
    const auto format = image.bAlpha ? PixelFormat32bppPARGB : PixelFormat32bppRGB;
    return std::make_unique<Gdiplus::Bitmap>(width, height, stride, format, first);
}

// Draws with GDI+, also a picture that was decoded to a bitmap. False when its pixels are not at
// hand.
bool DrawWithGdiplus(HDC dc, const TImageInfo& image, const RECT& to, const RECT& paint,
                     const RECT& part, const TDrawInfo& info)
{
    const auto view = image.pImage == nullptr ? ViewOf(image) : nullptr;
    auto* const picture = view != nullptr ? view.get() : image.pImage;
    if (picture == nullptr)
        return false;
    CRenderEngine::GdiplusDrawImage(dc, picture, to, paint, part, image.bAlpha, info.uFade,
                                    info.uRotate);
    return true;
}

TImageInfo* Load(STRINGorID name, LPCTSTR type, DWORD mask, HINSTANCE module, bool gdiplus)
{
    if (name.m_lpstr == nullptr || (!IS_INTRESOURCE(name.m_lpstr) && *name.m_lpstr == 0))
        return nullptr;
    const auto load = LoadImageRecord(
        {.name = name, .type = type, .mask = mask, .module = module, .gdiplus = gdiplus});
    if (load.image == nullptr)
        ReportImageFailure(load.failure);
    return load.image;
}

} // namespace

TImageInfo* CRenderEngine::LoadImage(STRINGorID bitmap, LPCTSTR type, DWORD mask,
                                     HINSTANCE instance)
{
    return Load(bitmap, type, mask, instance, false);
}

TImageInfo* CRenderEngine::LoadImage(LPCTSTR name, LPCTSTR type, DWORD mask, HINSTANCE instance)
{
    std::wstring path;
    if (type == nullptr && name != nullptr && !IS_INTRESOURCE(name)) {
        if (LPCTSTR mapped = CResourceManager::GetInstance()->GetImagePath(name)) {
            path = mapped;
            name = path.c_str();
        }
    }
    return Load(STRINGorID(name), type, mask, instance, false);
}

TImageInfo* CRenderEngine::LoadImage(UINT id, LPCTSTR type, DWORD mask, HINSTANCE instance)
{
    return Load(STRINGorID(id), type, mask, instance, false);
}

TImageInfo* CRenderEngine::GdiplusLoadImage(STRINGorID bitmap, LPCTSTR type, DWORD mask,
                                            HINSTANCE instance)
{
    return Load(bitmap, type, mask, instance, true);
}

void CRenderEngine::FreeImage(TImageInfo* bitmap, bool deleteRecord)
{
    if (bitmap == nullptr)
        return;
    if (bitmap->hBitmap != nullptr)
        ::DeleteObject(bitmap->hBitmap);
    delete bitmap->pImage;
    delete[] bitmap->pSrcBits;
    bitmap->hBitmap = nullptr;
    bitmap->pImage = nullptr;
    bitmap->pSrcBits = nullptr;
    bitmap->pBits = nullptr; // they were the bitmap's
    if (deleteRecord)
        delete bitmap;
}

void CRenderEngine::DrawImage(HDC dc, HBITMAP bitmap, const RECT& destination, const RECT& paint,
                              const RECT& part, const RECT& corners, bool alpha, UINT fade,
                              bool hole, bool tiledX, bool tiledY)
{
    if (dc == nullptr || bitmap == nullptr || fade == 0 || !Meet(destination, paint))
        return;
    BitmapSource source(dc, bitmap, paint, alpha, fade);
    if (!source.IsReady())
        return;

    const RECT bounded = BoundedCorners(corners, part);
    const Grid to(destination, bounded);
    const Grid from(part, bounded);
    constexpr int kMiddle = 1;
    for (int row = 0; row < 3; row++) {
        for (int column = 0; column < 3; column++) {
            const RECT pieceTo = to.Piece(column, row);
            const RECT pieceFrom = from.Piece(column, row);
            if (column != kMiddle || row != kMiddle)
                source.Draw(pieceTo, pieceFrom);
            else if (!hole)
                DrawTiled(source, pieceTo, pieceFrom, tiledX, tiledY);
        }
    }
}

bool CRenderEngine::DrawImageInfo(HDC dc, CPaintManagerUI* manager, const RECT& item,
                                  const RECT& paint, const TDrawInfo* info, HINSTANCE instance)
{
    if (dc == nullptr || manager == nullptr || info == nullptr || info->sImageName.IsEmpty())
        return false;

    const bool gdiplus = info->bGdiplus || info->uRotate % 360 != 0;
    const LPCTSTR type = info->sResType.IsEmpty() ? nullptr : info->sResType.GetData();
    const TImageInfo* const image =
        manager->GetImageEx(info->sImageName, type, info->dwMask, info->bHSL, gdiplus, instance);
    if (image == nullptr)
        return false;

    const RECT to = Destination(*info, item, *manager->GetDPIObj());
    if (!Meet(to, item) || !Meet(to, paint))
        return true;

    const PictureParts parts(*info, *image);
    if (IsEmpty(parts.source))
        return true;
    if ((gdiplus || image->hBitmap == nullptr) &&
        DrawWithGdiplus(dc, *image, to, paint, parts.source, *info))
        return true;

    // The bitmap of a layered window keeps its alpha only when pictures are blended into it. Those
    // of the application need not have any.
    const bool decoded = image->pBits != nullptr;
    const bool alpha = image->bAlpha || (decoded && manager->IsLayered());
    DrawImage(dc, image->hBitmap, to, paint, parts.source, parts.corners, alpha, info->uFade,
              info->bHole, info->bTiledX, info->bTiledY);
    return true;
}

bool CRenderEngine::DrawImageString(HDC dc, CPaintManagerUI* manager, const RECT& item,
                                    const RECT& paint, LPCTSTR image, LPCTSTR modify,
                                    HINSTANCE instance)
{
    if (dc == nullptr || manager == nullptr || image == nullptr)
        return false;
    return DrawImageInfo(dc, manager, item, paint, manager->GetDrawInfo(image, modify), instance);
}

void CRenderEngine::GdiplusDrawImage(HDC dc, Gdiplus::Image* image, const RECT& destination,
                                     const RECT& paint, const RECT& part, bool, UINT fade,
                                     UINT rotate)
{
    if (dc == nullptr || image == nullptr || fade == 0 || IsEmpty(destination) || IsEmpty(part))
        return;

    Gdiplus::Graphics graphics(dc);
    graphics.IntersectClip(Gdiplus::Rect(paint.left, paint.top, Width(paint), Height(paint)));
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    if (rotate % 360 != 0) {
        const auto middleX = static_cast<Gdiplus::REAL>(destination.left + destination.right) / 2;
        const auto middleY = static_cast<Gdiplus::REAL>(destination.top + destination.bottom) / 2;
        graphics.TranslateTransform(middleX, middleY);
        graphics.RotateTransform(static_cast<Gdiplus::REAL>(rotate % 360));
        graphics.TranslateTransform(-middleX, -middleY);
        graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBilinear);
    }

    Gdiplus::ImageAttributes attributes;
    // Without the mirrored surroundings a stretched picture fades out at its edges.
    attributes.SetWrapMode(Gdiplus::WrapModeTileFlipXY);
    if (fade < 255) {
        Gdiplus::ColorMatrix matrix{};
        for (int channel = 0; channel < 5; channel++)
            matrix.m[channel][channel] = 1;
        matrix.m[3][3] = static_cast<Gdiplus::REAL>(fade) / 255;
        attributes.SetColorMatrix(&matrix);
    }
    const Gdiplus::Rect to(destination.left, destination.top, Width(destination),
                           Height(destination));
    graphics.DrawImage(image, to, part.left, part.top, Width(part), Height(part),
                       Gdiplus::UnitPixel, &attributes);
}

} // namespace DuiLib
