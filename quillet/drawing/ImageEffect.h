#pragma once

#include "win32/GdiPlus.h"

// Effects of GDI+ 1.1, applied to the pixels of a bitmap. Nothing happens where the system has
// none.
namespace Quillet {

void Blur(Gdiplus::Bitmap& bitmap, float radius, bool expandEdge);
void Brighten(Gdiplus::Bitmap& bitmap, int level, int contrast);

} // namespace Quillet
