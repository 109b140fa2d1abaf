#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

// Draws a border along the inside of each edge that has a positive width. Device pixels, ARGB.
void DrawBorderEdges(HDC dc, const RECT& item, const RECT& sizes, DWORD color, int style);

} // namespace DuiLib
