#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CRenderClipOperations()
{
    return {
        FUNCTION(CRenderClip, CRenderClip, GenerateClip, void(HDC, RECT, CRenderClip&)),
        FUNCTION(CRenderClip, CRenderClip, GenerateRoundClip,
                 void(HDC, RECT, RECT, int, int, CRenderClip&)),
        FUNCTION(CRenderClip, CRenderClip, UseOldClipBegin, void(HDC, CRenderClip&)),
        FUNCTION(CRenderClip, CRenderClip, UseOldClipEnd, void(HDC, CRenderClip&)),
    };
}

std::vector<Declaration> CRenderEngineOperations()
{
    return {
        FUNCTION(CRenderEngine, CRenderEngine, LoadImage,
                 TImageInfo * (STRINGorID, LPCTSTR, DWORD, HINSTANCE)),
        FUNCTION(CRenderEngine, CRenderEngine, LoadImage,
                 TImageInfo * (LPCTSTR, LPCTSTR, DWORD, HINSTANCE)),
        FUNCTION(CRenderEngine, CRenderEngine, LoadImage,
                 TImageInfo * (UINT, LPCTSTR, DWORD, HINSTANCE)),
        FUNCTION(CRenderEngine, CRenderEngine, FreeImage, void(TImageInfo*, bool)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawImage,
                 void(HDC, HBITMAP, const RECT&, const RECT&, const RECT&, const RECT&, bool, UINT,
                      bool, bool, bool)),
        FUNCTION(
            CRenderEngine, CRenderEngine, DrawImageInfo,
            bool(HDC, CPaintManagerUI*, const RECT&, const RECT&, const TDrawInfo*, HINSTANCE)),
        FUNCTION(
            CRenderEngine, CRenderEngine, DrawImageString,
            bool(HDC, CPaintManagerUI*, const RECT&, const RECT&, LPCTSTR, LPCTSTR, HINSTANCE)),
        FUNCTION(CRenderEngine, CRenderEngine, GdiplusLoadImage,
                 TImageInfo * (STRINGorID, LPCTSTR, DWORD, HINSTANCE)),
        FUNCTION(
            CRenderEngine, CRenderEngine, GdiplusDrawImage,
            void(HDC, Gdiplus::Image*, const RECT&, const RECT&, const RECT&, bool, UINT, UINT)),
        FUNCTION(CRenderEngine, CRenderEngine, GdiplusDrawText,
                 void(HDC, CPaintManagerUI*, RECT&, LPCTSTR, DWORD, int, UINT)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawColor, void(HDC, const RECT&, DWORD)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawGradient,
                 void(HDC, const RECT&, DWORD, DWORD, bool, int)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawLine, void(HDC, const RECT&, int, DWORD, int)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawRect, void(HDC, const RECT&, int, DWORD, int)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawRoundRect,
                 void(HDC, const RECT&, int, int, int, DWORD, int)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawText,
                 void(HDC, CPaintManagerUI*, RECT&, LPCTSTR, DWORD, int, UINT)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawText,
                 void(HDC, CPaintManagerUI*, RECT&, LPCTSTR, DWORD, int, UINT, DWORD)),
        FUNCTION(CRenderEngine, CRenderEngine, DrawHtmlText,
                 void(HDC, CPaintManagerUI*, RECT&, LPCTSTR, DWORD, RECT*, CDuiString*, int&, int,
                      UINT)),
        FUNCTION(CRenderEngine, CRenderEngine, CheckAlphaColor, void(DWORD&)),
        FUNCTION(CRenderEngine, CRenderEngine, AdjustColor, DWORD(DWORD, short, short, short)),
        FUNCTION(CRenderEngine, CRenderEngine, AdjustImage,
                 void(bool, TImageInfo*, short, short, short)),
        FUNCTION(CRenderEngine, CRenderEngine, CreateARGB32Bitmap, HBITMAP(HDC, int, int, BYTE**)),
        FUNCTION(CRenderEngine, CRenderEngine, GenerateBitmap,
                 HBITMAP(CPaintManagerUI*, RECT, CControlUI*, DWORD)),
        FUNCTION(CRenderEngine, CRenderEngine, GenerateBitmap,
                 HBITMAP(CPaintManagerUI*, CControlUI*, RECT, DWORD)),
        FUNCTION(CRenderEngine, CRenderEngine, GetTextSize,
                 SIZE(HDC, CPaintManagerUI*, LPCTSTR, int, UINT)),
    };
}

// What may be left out of a call.
static_assert(requires(CRenderEngine & it, STRINGorID a0) { it.LoadImage(a0); });
static_assert(requires(CRenderEngine & it, STRINGorID a0, LPCTSTR a1) { it.LoadImage(a0, a1); });
static_assert(requires(CRenderEngine & it, STRINGorID a0, LPCTSTR a1, DWORD a2) {
    it.LoadImage(a0, a1, a2);
});
static_assert(requires(CRenderEngine & it, LPCTSTR a0) { it.LoadImage(a0); });
static_assert(requires(CRenderEngine & it, LPCTSTR a0, LPCTSTR a1) { it.LoadImage(a0, a1); });
static_assert(requires(CRenderEngine & it, LPCTSTR a0, LPCTSTR a1, DWORD a2) {
    it.LoadImage(a0, a1, a2);
});
static_assert(requires(CRenderEngine & it, UINT a0) { it.LoadImage(a0); });
static_assert(requires(CRenderEngine & it, UINT a0, LPCTSTR a1) { it.LoadImage(a0, a1); });
static_assert(requires(CRenderEngine & it, UINT a0, LPCTSTR a1, DWORD a2) {
    it.LoadImage(a0, a1, a2);
});
static_assert(requires(CRenderEngine & it, TImageInfo* a0) { it.FreeImage(a0); });
static_assert(requires(CRenderEngine & it, HDC a0, HBITMAP a1, const RECT& a2, const RECT& a3,
                       const RECT& a4, const RECT& a5,
                       bool a6) { it.DrawImage(a0, a1, a2, a3, a4, a5, a6); });
static_assert(requires(CRenderEngine & it, HDC a0, HBITMAP a1, const RECT& a2, const RECT& a3,
                       const RECT& a4, const RECT& a5, bool a6,
                       UINT a7) { it.DrawImage(a0, a1, a2, a3, a4, a5, a6, a7); });
static_assert(requires(CRenderEngine & it, HDC a0, HBITMAP a1, const RECT& a2, const RECT& a3,
                       const RECT& a4, const RECT& a5, bool a6, UINT a7,
                       bool a8) { it.DrawImage(a0, a1, a2, a3, a4, a5, a6, a7, a8); });
static_assert(requires(CRenderEngine & it, HDC a0, HBITMAP a1, const RECT& a2, const RECT& a3,
                       const RECT& a4, const RECT& a5, bool a6, UINT a7, bool a8,
                       bool a9) { it.DrawImage(a0, a1, a2, a3, a4, a5, a6, a7, a8, a9); });
static_assert(requires(CRenderEngine & it, HDC a0, CPaintManagerUI* a1, const RECT& a2,
                       const RECT& a3,
                       const TDrawInfo* a4) { it.DrawImageInfo(a0, a1, a2, a3, a4); });
static_assert(requires(CRenderEngine & it, HDC a0, CPaintManagerUI* a1, const RECT& a2,
                       const RECT& a3, LPCTSTR a4) { it.DrawImageString(a0, a1, a2, a3, a4); });
static_assert(requires(CRenderEngine & it, HDC a0, CPaintManagerUI* a1, const RECT& a2,
                       const RECT& a3, LPCTSTR a4,
                       LPCTSTR a5) { it.DrawImageString(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CRenderEngine & it, STRINGorID a0) { it.GdiplusLoadImage(a0); });
static_assert(requires(CRenderEngine & it, STRINGorID a0, LPCTSTR a1) {
    it.GdiplusLoadImage(a0, a1);
});
static_assert(requires(CRenderEngine & it, STRINGorID a0, LPCTSTR a1, DWORD a2) {
    it.GdiplusLoadImage(a0, a1, a2);
});
static_assert(requires(CRenderEngine & it, HDC a0, Gdiplus::Image* a1, const RECT& a2,
                       const RECT& a3, const RECT& a4,
                       bool a5) { it.GdiplusDrawImage(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CRenderEngine & it, HDC a0, Gdiplus::Image* a1, const RECT& a2,
                       const RECT& a3, const RECT& a4, bool a5,
                       UINT a6) { it.GdiplusDrawImage(a0, a1, a2, a3, a4, a5, a6); });
static_assert(requires(CRenderEngine & it, HDC a0, const RECT& a1, int a2, DWORD a3) {
    it.DrawLine(a0, a1, a2, a3);
});
static_assert(requires(CRenderEngine & it, HDC a0, const RECT& a1, int a2, DWORD a3) {
    it.DrawRect(a0, a1, a2, a3);
});
static_assert(requires(CRenderEngine & it, HDC a0, const RECT& a1, int a2, int a3, int a4,
                       DWORD a5) { it.DrawRoundRect(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CRenderEngine & it, CPaintManagerUI* a0, RECT a1) {
    it.GenerateBitmap(a0, a1);
});
static_assert(requires(CRenderEngine & it, CPaintManagerUI* a0, RECT a1, CControlUI* a2) {
    it.GenerateBitmap(a0, a1, a2);
});
static_assert(requires(CRenderEngine & it, CPaintManagerUI* a0, CControlUI* a1, RECT a2) {
    it.GenerateBitmap(a0, a1, a2);
});

} // namespace

namespace interface_test {

std::vector<Declaration> Drawing()
{
    return Join({CRenderClipOperations(), CRenderEngineOperations()});
}

} // namespace interface_test
