#pragma once

#include "Core/UIPlatform.h"

#include <memory>
#include <string_view>

namespace DuiLib {

class CPaintManagerUI;

// True when the window's text is drawn with GDI+: it has alpha, or the application wants it.
bool DrawsTextWithGdiplus(CPaintManagerUI& manager);

// The same font for GDI+, or one that stands in for it: GDI+ knows outline fonts only. Null when
// there is none at all.
std::unique_ptr<Gdiplus::Font> MakeGdiplusFont(HDC dc, HFONT font);

// For pieces of text that stand beside each other: no space around them, blanks count.
std::unique_ptr<Gdiplus::StringFormat> MakePieceFormat();

// Draws or measures as DrawTextW does for the DT_* style. False without a font.
bool DrawTextWithGdiplus(HDC dc, CPaintManagerUI& manager, HFONT font, std::wstring_view text,
                         RECT& rect, DWORD color, UINT style);

} // namespace DuiLib
