#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

constexpr DWORD kOpaqueAlpha = 0xFF;

// The parts of a colour 0xAARRGGBB.
constexpr DWORD AlphaOf(DWORD color)
{
    return color >> 24;
}

constexpr DWORD Opaque(DWORD color)
{
    return color | kOpaqueAlpha << 24;
}

constexpr COLORREF ToColorRef(DWORD color)
{
    return RGB((color >> 16) & 0xFF, (color >> 8) & 0xFF, color & 0xFF);
}

} // namespace DuiLib
