#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"

// Small pure functions on bitmaps, colours and rectangles.
namespace DuiLib::Utils {

// The size in bytes of the colour table behind a BITMAPCOREHEADER or BITMAPINFOHEADER, the three
// masks of BI_BITFIELDS included.
QUILLET_API WORD ColorTableSize(void* header);

QUILLET_API Gdiplus::Rect FromWin32RECT(const RECT& rect);

// The scale of the main monitor, 1.0 at 96 DPI. When the system refuses to answer, `ok` is false,
// `error` is its error code and the factor 1.0.
QUILLET_API double GetDPIFactor(bool& ok, DWORD& error);

// The colour at `t` on the way between two colours: 0 is the first, 1 the second.
QUILLET_API Gdiplus::Color GetTransitionColor(const Gdiplus::Color& from, const Gdiplus::Color& to,
                                              float t);

// Loads a picture of the toolkit's resources. The caller owns the bitmap; null when there is none.
QUILLET_API HBITMAP LoadBitmapFromDuiRes(const wchar_t* name);

// Writes a PNG file, whatever the extension of the path says.
QUILLET_API bool SaveBitmap(Gdiplus::Bitmap* bitmap, const std::wstring& path);

} // namespace DuiLib::Utils
