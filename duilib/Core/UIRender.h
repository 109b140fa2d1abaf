#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIRecords.h"
#include "Utils/Utils.h"

namespace DuiLib {

class CControlUI;
class CPaintManagerUI;

// Narrows the clip of a device context for its own lifetime. Clips nest: the destructor restores
// the clip that was in force before. An object that was never generated does nothing.
class UILIB_API CRenderClip {
public:
    CRenderClip() = default;
    ~CRenderClip();
    CRenderClip(const CRenderClip&) = delete;
    CRenderClip& operator=(const CRenderClip&) = delete;

    // Narrows the clip to its intersection with the rectangle (device pixels).
    static void GenerateClip(HDC dc, RECT item, CRenderClip& clip);

    // Narrows the clip to the paint rectangle and the rounded item rectangle; the corner ellipse
    // is `width` wide and `height` high.
    static void GenerateRoundClip(HDC dc, RECT paint, RECT item, int width, int height,
                                  CRenderClip& clip);

    // Switches to the clip before the object, and back.
    static void UseOldClipBegin(HDC dc, CRenderClip& clip);
    static void UseOldClipEnd(HDC dc, CRenderClip& clip);

    RECT rcItem{};
    HDC hDC = nullptr;
    HRGN hRgn = nullptr;
    HRGN hOldRgn = nullptr;
};

// The drawing operations of the toolkit. Rectangles are device pixels, colours are ARGB, a fade is
// an opacity from 0 to 255. Loading and freeing pictures is allowed on every thread, everything
// else belongs to the thread of the windows.
class UILIB_API CRenderEngine {
public:
    // Load and decode a picture from the resource folder, the zip archive, a resource of the given
    // type, or the path that the name is. A pixel whose 32 bits equal the mask becomes transparent.
    // Null on failure, with the reason in the last-error text. The record is freed by FreeImage.
    static TImageInfo* LoadImage(STRINGorID bitmap, LPCTSTR type = NULL, DWORD mask = 0,
                                 HINSTANCE instance = NULL);

    // The same; without a type the name is first looked up in the image table of CResourceManager.
    static TImageInfo* LoadImage(LPCTSTR name, LPCTSTR type = NULL, DWORD mask = 0,
                                 HINSTANCE instance = NULL);
    static TImageInfo* LoadImage(UINT id, LPCTSTR type = NULL, DWORD mask = 0,
                                 HINSTANCE instance = NULL);

    // Frees the bitmap, the GDI+ image and the buffers, and the record itself when `deleteRecord`.
    static void FreeImage(TImageInfo* bitmap, bool deleteRecord = true);

    // Nine-grid drawing: the corners keep their size, the edges stretch in one direction, the
    // middle (left out with `hole`) stretches in both or is repeated. The bitmap's colours are
    // multiplied by its alpha when it has any. Pieces outside the paint rectangle are not drawn.
    static void DrawImage(HDC dc, HBITMAP bitmap, const RECT& destination, const RECT& paint,
                          const RECT& part, const RECT& corners, bool alpha, UINT fade = 255,
                          bool hole = false, bool tiledX = false, bool tiledY = false);

    // Draws a parsed image string into an item. False for null arguments or a picture that does
    // not load, true when there was nothing to draw inside the paint rectangle.
    static bool DrawImageInfo(HDC dc, CPaintManagerUI* manager, const RECT& item, const RECT& paint,
                              const TDrawInfo* info, HINSTANCE instance = NULL);

    // The same from an image string and a modifier over it, through the manager's parsed strings.
    static bool DrawImageString(HDC dc, CPaintManagerUI* manager, const RECT& item,
                                const RECT& paint, LPCTSTR image, LPCTSTR modify = NULL,
                                HINSTANCE instance = NULL);

    // The picture as a GDI+ image (all its frames) instead of a bitmap.
    static TImageInfo* GdiplusLoadImage(STRINGorID bitmap, LPCTSTR type = NULL, DWORD mask = 0,
                                        HINSTANCE instance = NULL);

    // Draws a part of a GDI+ image, turned clockwise by `rotate` degrees around the centre of the
    // destination.
    static void GdiplusDrawImage(HDC dc, Gdiplus::Image* image, const RECT& destination,
                                 const RECT& paint, const RECT& part, bool alpha, UINT fade = 255,
                                 UINT rotate = 0);
    static void GdiplusDrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                                DWORD color, int font, UINT style);

    // Fills the rectangle, blended by the colour's alpha; a colour with alpha 0 draws nothing.
    static void DrawColor(HDC dc, const RECT& rect, DWORD color);

    // The alpha of the gradient is the mean of both colours'.
    static void DrawGradient(HDC dc, const RECT& rect, DWORD first, DWORD second, bool vertical,
                             int steps);

    // From (left, top) to (right, bottom).
    static void DrawLine(HDC dc, const RECT& rect, int size, DWORD color, int style = PS_SOLID);

    // The outline inside the rectangle.
    static void DrawRect(HDC dc, const RECT& rect, int size, DWORD color, int style = PS_SOLID);

    // Line width, corner width, corner height. The corner radius is half the corner width; the
    // outline runs through right - 1 and bottom - 1.
    static void DrawRoundRect(HDC dc, const RECT& rect, int size, int width, int height,
                              DWORD color, int style = PS_SOLID);

    // Text with DT_* style; DT_CALCRECT measures into the rectangle. The alpha of the colour is
    // ignored, the background stays.
    static void DrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text, DWORD color,
                         int font, UINT style);

    // Fills the rectangle with the background colour first.
    static void DrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text, DWORD color,
                         int font, UINT style, DWORD background);

    // Text with markup. `linkCount` is the capacity of both arrays, which may be null with
    // capacity 0, and afterwards the number of links found.
    static void DrawHtmlText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                             DWORD color, RECT* links, CDuiString* linkTexts, int& linkCount,
                             int font, UINT style);

    // In a layered window black without alpha cannot be told from nothing: makes an all-black
    // colour the darkest blue.
    static void CheckAlphaColor(DWORD& color);

    // Turns the hue by H - 180 degrees and scales saturation and lightness to S and L percent.
    // The alpha stays.
    static DWORD AdjustColor(DWORD color, short H, short S, short L);

    // Recolours a picture that was loaded for it, from its original colours; without `useHSL` the
    // original colours return.
    static void AdjustImage(bool useHSL, TImageInfo* image, short H, short S, short L);

    // A bottom-up 32-bit DIB section, transparent; the caller owns it. `bits` may be null.
    static HBITMAP CreateARGB32Bitmap(HDC dc, int width, int height, BYTE** bits);

    // A new bitmap with a part of the window, up to a stop control, or with a part of one control.
    // The rectangle is in client coordinates; a filter colour is blended over the picture.
    static HBITMAP GenerateBitmap(CPaintManagerUI* manager, RECT rect, CControlUI* stop = NULL,
                                  DWORD filter = 0);
    static HBITMAP GenerateBitmap(CPaintManagerUI* manager, CControlUI* control, RECT rect,
                                  DWORD filter = 0);

    // The extent of one line in device pixels.
    static SIZE GetTextSize(HDC dc, CPaintManagerUI* manager, LPCTSTR text, int font, UINT style);
};

} // namespace DuiLib
