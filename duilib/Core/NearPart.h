#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

// Pixels; more than any screen has in a row.
constexpr LONG kOutOfSight = 16384;

// The part of a shape's rectangle that lies in what can be seen or near it; empty when none does.
// GDI and GDI+ work through a whole shape, seen or not, and GDI+ in fixed point: a side that is
// far away has to come closer, to where it is still out of sight.
inline RECT NearPart(const RECT& shape, RECT visible)
{
    ::InflateRect(&visible, kOutOfSight, kOutOfSight);
    RECT part{};
    ::IntersectRect(&part, &shape, &visible);
    return part;
}

} // namespace DuiLib
