#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

namespace DuiLib {

class CControlUI;
class CPaintManagerUI;

// A notification: what a control tells its listeners.
typedef struct UILIB_API tagTNotifyUI {
    CDuiString sType;       // a DUI_MSGTYPE_ text or any other
    CDuiString sVirtualWnd; // the virtual window of the sender, usually empty
    CControlUI* pSender = NULL;
    DWORD dwTimestamp = 0;  // milliseconds, as GetTickCount
    POINT ptMouse = {0, 0}; // the last mouse position, client coordinates
    WPARAM wParam = 0;
    LPARAM lParam = 0;
} TNotifyUI;

// An event: what the manager or a parent tells a control. A plain structure.
typedef struct tagTEventUI {
    int Type; // EVENTTYPE_UI
    CControlUI* pSender;
    DWORD dwTimestamp; // milliseconds, as GetTickCount
    POINT ptMouse;     // client coordinates
    TCHAR chKey;
    WORD wKeyState; // MK_ bits; MK_ALT for the Alt key
    WPARAM wParam;
    LPARAM lParam;
} TEventUI;

// A decoded picture. CRenderEngine::FreeImage, or delete after taking hBitmap out, ends it.
typedef struct UILIB_API tagTImageInfo {
    Gdiplus::Image* pImage = NULL; // set when loaded for GDI+
    HBITMAP hBitmap = NULL;        // 32-bit top-down DIB section, premultiplied
    LPBYTE pBits = NULL;           // the pixels of hBitmap
    LPBYTE pSrcBits = NULL;        // the unchanged pixels, kept only for HSL; new BYTE[]
    int nX = 0;                    // width and height, pixels
    int nY = 0;
    bool bAlpha = false; // any pixel is not opaque, or was masked
    bool bUseHSL = false;
    CDuiString sResType;
    DWORD dwMask = 0;
} TImageInfo;

// A parsed image string: which picture, which part of it, where to, and how.
typedef struct UILIB_API tagTDrawInfo {
    tagTDrawInfo();

    // Reads an image string, then a modifier string over it; either may be null. The manager serves
    // only the name of the picture that is made for its scale, and may be null.
    void Parse(LPCTSTR drawString, LPCTSTR drawModify, CPaintManagerUI* manager);
    void Clear();

    CDuiString sDrawString;
    CDuiString sDrawModify;
    CDuiString sImageName;
    CDuiString sResType;
    RECT rcDest;
    RECT rcSource;
    RECT rcCorner;
    DWORD dwMask;
    UINT uFade;   // 0 invisible to 255 opaque
    UINT uRotate; // degrees, clockwise
    bool bHole;   // leave out the middle of a nine-part picture
    bool bTiledX;
    bool bTiledY;
    bool bHSL;
    bool bGdiplus;
    CDuiSize szImage;
    RECT rcPadding;
    CDuiString sAlign;
} TDrawInfo;

// A font and what it was made from.
typedef struct UILIB_API tagTFontInfo {
    HFONT hFont = NULL;
    CDuiString sFontName;
    int iSize = 0; // design pixels
    bool bBold = false;
    bool bUnderline = false;
    bool bItalic = false;
    bool bStrikeout = false;
    TEXTMETRIC tm = {};
} TFontInfo;

// Edges as fractions of the parent.
typedef struct tagTPercentInfo {
    double left;
    double top;
    double right;
    double bottom;
} TPercentInfo;

// What the windows of a process share, or one window has for itself. The tables own nothing: their
// holder frees the entries.
typedef struct UILIB_API tagTResInfo {
    DWORD m_dwDefaultDisabledColor = 0; // colours: ARGB
    DWORD m_dwDefaultFontColor = 0;
    DWORD m_dwDefaultLinkFontColor = 0;
    DWORD m_dwDefaultLinkHoverFontColor = 0;
    DWORD m_dwDefaultSelectedBkColor = 0;
    TFontInfo m_DefaultFontInfo;
    CStdStringPtrMap m_CustomFonts;
    CStdStringPtrMap m_ImageHash;
    CStdStringPtrMap m_AttrHash;
    CStdStringPtrMap m_StyleHash;
    CStdStringPtrMap m_DrawInfoHash;
} TResInfo;

// What the drag messages carry in wParam.
struct TDragDropUI {
    IDataObject* pDataObject; // null for UIMSG_DRAG and UIMSG_DRAGLEAVE
    DWORD dwKeyState;         // MK_ bits
    POINT ptMouse;            // client coordinates
    DWORD* pdwEffect;         // DROPEFFECT_; the receiver may change it
    CControlUI* pControl;     // under the point; for UIMSG_DRAG the one that is dragged
};

} // namespace DuiLib
