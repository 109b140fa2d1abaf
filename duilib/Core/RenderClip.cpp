#include "Core/UIRender.h"

#include "Core/NearPart.h"
#include "win32/Handles.h"
#include "win32/PerThread.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace DuiLib {

namespace {

// Regions that no clip uses at the moment. A clip is made for every control that is painted, so
// their regions are lent and not created.
class RegionStock {
public:
    RegionStock() = default;
    ~RegionStock()
    {
        while (m_count > 0)
            ::DeleteObject(m_regions[--m_count]);
    }
    RegionStock(const RegionStock&) = delete;
    RegionStock& operator=(const RegionStock&) = delete;

    HRGN Take() { return m_count > 0 ? m_regions[--m_count] : ::CreateRectRgn(0, 0, 0, 0); }

    void GiveBack(HRGN region)
    {
        if (!region)
            return;
        if (m_count < m_regions.size())
            m_regions[m_count++] = region;
        else
            ::DeleteObject(region);
    }

private:
    std::array<HRGN, 64> m_regions{};
    std::size_t m_count = 0;
};

// Rounded regions at the origin. GDI cannot give an existing region another shape, but it can copy
// one.
class RoundShapes {
public:
    HRGN Get(SIZE item, SIZE corner)
    {
        for (const auto& shape : m_shapes) {
            if (shape.region && shape.item.cx == item.cx && shape.item.cy == item.cy &&
                shape.corner.cx == corner.cx && shape.corner.cy == corner.cy)
                return shape.region.get();
        }
        // GDI leaves out the last column and row of a rounded region.
        auto& oldest = m_shapes[m_next];
        m_next = (m_next + 1) % m_shapes.size();
        oldest.item = item;
        oldest.corner = corner;
        oldest.region.reset(
            ::CreateRoundRectRgn(0, 0, item.cx + 1, item.cy + 1, corner.cx, corner.cy));
        return oldest.region.get();
    }

private:
    struct Shape {
        SIZE item;
        SIZE corner;
        Quillet::UniqueRegion region;
    };
    std::array<Shape, 16> m_shapes{};
    std::size_t m_next = 0;
};

RegionStock& Stock()
{
    static Quillet::PerThread<RegionStock> stocks;
    return stocks.Get();
}

RoundShapes& Shapes()
{
    static Quillet::PerThread<RoundShapes> shapes;
    return shapes.Get();
}

bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// Regions know device coordinates only.
RECT InDevicePixels(HDC dc, RECT rect)
{
    ::LPtoDP(dc, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

void Restore(CRenderClip& clip)
{
    if (clip.hDC && clip.hRgn)
        ::SelectClipRgn(clip.hDC, clip.hOldRgn);
    Stock().GiveBack(clip.hRgn);
    Stock().GiveBack(clip.hOldRgn);
    clip.hDC = nullptr;
    clip.hRgn = nullptr;
    clip.hOldRgn = nullptr;
}

// Takes the region over as the clip's narrowing. Without a former clip the old region stays null,
// which is what SelectClipRgn calls no clip.
void Narrow(HDC dc, HRGN region, CRenderClip& clip)
{
    clip.hRgn = region;
    clip.hOldRgn = Stock().Take();
    if (::GetClipRgn(dc, clip.hOldRgn) != 1) {
        Stock().GiveBack(clip.hOldRgn);
        clip.hOldRgn = nullptr;
    }
    ::ExtSelectClipRgn(dc, region, RGN_AND);
}

// Makes the region the rounded rectangle.
void SetShape(HRGN region, const RECT& rect, SIZE corner)
{
    const bool isRound = corner.cx > 1 && corner.cy > 1 && !::IsRectEmpty(&rect);
    if (!isRound) {
        ::SetRectRgn(region, rect.left, rect.top, rect.right, rect.bottom);
        return;
    }
    const SIZE size{rect.right - rect.left, rect.bottom - rect.top};
    ::CombineRgn(region, Shapes().Get(size, corner), nullptr, RGN_COPY);
    ::OffsetRgn(region, rect.left, rect.top);
}

// True when every pixel that can be drawn is inside the rectangle, so there is nothing to narrow.
bool IsInside(const RECT& drawable, const RECT& rect)
{
    return ::IsRectEmpty(&drawable) || Contains(rect, drawable);
}

// The same for a rounded rectangle: what keeps clear of the corner rows or the corner columns.
bool IsInsideRound(const RECT& drawable, const RECT& item, int width, int height)
{
    const RECT betweenColumns{item.left + (width + 1) / 2, item.top, item.right - (width + 1) / 2,
                              item.bottom};
    const RECT betweenRows{item.left, item.top + (height + 1) / 2, item.right,
                           item.bottom - (height + 1) / 2};
    return IsInside(drawable, betweenColumns) || IsInside(drawable, betweenRows);
}

} // namespace

CRenderClip::~CRenderClip()
{
    if (hDC)
        Restore(*this);
}

void CRenderClip::GenerateClip(HDC dc, RECT item, CRenderClip& clip)
{
    if (clip.hDC)
        Restore(clip);
    clip.hDC = dc;
    clip.rcItem = item;

    RECT drawable{};
    if (::GetClipBox(dc, &drawable) == ERROR || IsInside(drawable, item))
        return;
    const RECT device = InDevicePixels(dc, item);
    const HRGN region = Stock().Take();
    ::SetRectRgn(region, device.left, device.top, device.right, device.bottom);
    Narrow(dc, region, clip);
}

void CRenderClip::GenerateRoundClip(HDC dc, RECT paint, RECT item, int width, int height,
                                    CRenderClip& clip)
{
    if (clip.hDC)
        Restore(clip);
    clip.hDC = dc;
    clip.rcItem = item;

    width = std::clamp<int>(width, 0, kOutOfSight);
    height = std::clamp<int>(height, 0, kOutOfSight);
    RECT drawable{};
    if (::GetClipBox(dc, &drawable) == ERROR)
        return;
    item = NearPart(item, drawable);
    if (IsInside(drawable, paint) && IsInsideRound(drawable, item, width, height))
        return;

    const RECT devicePaint = InDevicePixels(dc, paint);
    const RECT deviceItem = InDevicePixels(dc, item);
    const HRGN region = Stock().Take();
    const HRGN limit = Stock().Take();
    ::SetRectRgn(limit, devicePaint.left, devicePaint.top, devicePaint.right, devicePaint.bottom);
    SetShape(region, deviceItem, {width, height});
    ::CombineRgn(region, region, limit, RGN_AND);
    Stock().GiveBack(limit);
    Narrow(dc, region, clip);
}

void CRenderClip::UseOldClipBegin(HDC dc, CRenderClip& clip)
{
    if (clip.hRgn)
        ::SelectClipRgn(dc, clip.hOldRgn);
}

void CRenderClip::UseOldClipEnd(HDC dc, CRenderClip& clip)
{
    if (!clip.hRgn)
        return;
    ::SelectClipRgn(dc, clip.hOldRgn);
    ::ExtSelectClipRgn(dc, clip.hRgn, RGN_AND);
}

} // namespace DuiLib
