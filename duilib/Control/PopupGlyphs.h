#pragma once

#include "Core/UIPlatform.h"

#include "Core/UIRender.h"

#include <algorithm>

// The little shapes of combos and menus, drawn in filled columns and rows so that painting needs no
// handle.
namespace DuiLib {

// A hook that opens downwards, in the middle of the rectangle. Device pixels.
inline void DrawDownArrow(HDC dc, const RECT& room, int halfWidth, int thickness, DWORD color)
{
    const LONG middle = (room.left + room.right) / 2;
    const LONG top = (room.top + room.bottom - halfWidth - thickness) / 2;
    for (LONG step = 0; step <= halfWidth; ++step) {
        const LONG y = top + halfWidth - step;
        CRenderEngine::DrawColor(dc, {middle + step, y, middle + step + 1, y + thickness}, color);
        if (step > 0)
            CRenderEngine::DrawColor(dc, {middle - step, y, middle - step + 1, y + thickness},
                                     color);
    }
}

// The same, opening to the right.
inline void DrawRightArrow(HDC dc, const RECT& room, int halfHeight, int thickness, DWORD color)
{
    const LONG middle = (room.top + room.bottom) / 2;
    const LONG left = (room.left + room.right - halfHeight - thickness) / 2;
    for (LONG step = 0; step <= halfHeight; ++step) {
        const LONG x = left + halfHeight - step;
        CRenderEngine::DrawColor(dc, {x, middle + step, x + thickness, middle + step + 1}, color);
        if (step > 0)
            CRenderEngine::DrawColor(dc, {x, middle - step, x + thickness, middle - step + 1},
                                     color);
    }
}

// A tick that fills the rectangle.
inline void DrawTick(HDC dc, const RECT& room, int thickness, DWORD color)
{
    const LONG width = room.right - room.left;
    const LONG shortArm = (std::max<LONG>)(width / 3, 1);
    const LONG lowest = (room.top + room.bottom) / 2 + width / 3 - thickness / 2;
    for (LONG step = 0; step < width; ++step) {
        const LONG rise = step < shortArm ? shortArm - step : step - shortArm;
        const LONG y = lowest - rise;
        CRenderEngine::DrawColor(dc, {room.left + step, y, room.left + step + 1, y + thickness},
                                 color);
    }
}

} // namespace DuiLib
