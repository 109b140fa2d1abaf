#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CDuiRectOperations()
{
    return {
        OPERATION(CDuiRect, CDuiRect, GetWidth, int() const),
        OPERATION(CDuiRect, CDuiRect, GetHeight, int() const),
        OPERATION(CDuiRect, CDuiRect, Empty, void()),
        OPERATION(CDuiRect, CDuiRect, IsNull, bool() const),
        OPERATION(CDuiRect, CDuiRect, Join, void(const RECT&)),
        OPERATION(CDuiRect, CDuiRect, ResetOffset, void()),
        OPERATION(CDuiRect, CDuiRect, Normalize, void()),
        OPERATION(CDuiRect, CDuiRect, Offset, void(int, int)),
        OPERATION(CDuiRect, CDuiRect, Inflate, void(int, int)),
        OPERATION(CDuiRect, CDuiRect, Deflate, void(int, int)),
        OPERATION(CDuiRect, CDuiRect, Union, void(CDuiRect&)),
    };
}

std::vector<Declaration> CDuiStringOperations()
{
    return {
        OPERATION(CDuiString, CDuiString, Empty, void()),
        OPERATION(CDuiString, CDuiString, IsEmpty, bool() const),
        OPERATION(CDuiString, CDuiString, GetLength, int() const),
        OPERATION(CDuiString, CDuiString, GetAt, TCHAR(int) const),
        OPERATION(CDuiString, CDuiString, operator[], TCHAR(int) const),
        OPERATION(CDuiString, CDuiString, SetAt, void(int, TCHAR)),
        OPERATION(CDuiString, CDuiString, GetData, LPCTSTR() const),
        OPERATION(CDuiString, CDuiString, Append, void(LPCTSTR)),
        OPERATION(CDuiString, CDuiString, Assign, void(LPCTSTR, int)),
        OPERATION(CDuiString, CDuiString, operator=, const CDuiString&(const CDuiString&)),
        OPERATION(CDuiString, CDuiString, operator=, const CDuiString&(const TCHAR)),
        OPERATION(CDuiString, CDuiString, operator=, const CDuiString&(LPCTSTR)),
        OPERATION(CDuiString, CDuiString, operator=, const CDuiString&(LPCSTR)),
        OPERATION(CDuiString, CDuiString, operator+=, const CDuiString&(const CDuiString&)),
        OPERATION(CDuiString, CDuiString, operator+=, const CDuiString&(LPCTSTR)),
        OPERATION(CDuiString, CDuiString, operator+=, const CDuiString&(const TCHAR)),
        OPERATION(CDuiString, CDuiString, operator+=, const CDuiString&(LPCSTR)),
        OPERATION(CDuiString, CDuiString, operator+, CDuiString(const CDuiString&) const),
        OPERATION(CDuiString, CDuiString, operator+, CDuiString(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator==, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator!=, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator<=, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator<, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator>=, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, operator>, bool(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, Compare, int(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, CompareNoCase, int(LPCTSTR) const),
        OPERATION(CDuiString, CDuiString, MakeUpper, void()),
        OPERATION(CDuiString, CDuiString, MakeLower, void()),
        OPERATION(CDuiString, CDuiString, Left, CDuiString(int) const),
        OPERATION(CDuiString, CDuiString, Mid, CDuiString(int, int) const),
        OPERATION(CDuiString, CDuiString, Right, CDuiString(int) const),
        OPERATION(CDuiString, CDuiString, TrimLeft, CDuiString & ()),
        OPERATION(CDuiString, CDuiString, TrimRight, CDuiString & ()),
        OPERATION(CDuiString, CDuiString, Trim, CDuiString & ()),
        OPERATION(CDuiString, CDuiString, Find, int(TCHAR, int) const),
        OPERATION(CDuiString, CDuiString, Find, int(LPCTSTR, int) const),
        OPERATION(CDuiString, CDuiString, ReverseFind, int(TCHAR) const),
        OPERATION(CDuiString, CDuiString, Replace, int(LPCTSTR, LPCTSTR)),
        OPERATION(CDuiString, CDuiString, Format, int(LPCTSTR, ...)),
        OPERATION(CDuiString, CDuiString, SmallFormat, int(LPCTSTR, ...)),
    };
}

struct CStdPtrArrayProtected : CStdPtrArray {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CStdPtrArray, CStdPtrArrayProtected, m_ppVoid, LPVOID*),
            MEMBER(CStdPtrArray, CStdPtrArrayProtected, m_nCount, int),
            MEMBER(CStdPtrArray, CStdPtrArrayProtected, m_nAllocated, int),
        };
    }
};

std::vector<Declaration> CStdPtrArrayOperations()
{
    return {
        OPERATION(CStdPtrArray, CStdPtrArray, Empty, void()),
        OPERATION(CStdPtrArray, CStdPtrArray, IsEmpty, bool() const),
        OPERATION(CStdPtrArray, CStdPtrArray, GetSize, int() const),
        OPERATION(CStdPtrArray, CStdPtrArray, Resize, void(int)),
        OPERATION(CStdPtrArray, CStdPtrArray, Find, int(LPVOID) const),
        OPERATION(CStdPtrArray, CStdPtrArray, Add, bool(LPVOID)),
        OPERATION(CStdPtrArray, CStdPtrArray, SetAt, bool(int, LPVOID)),
        OPERATION(CStdPtrArray, CStdPtrArray, InsertAt, bool(int, LPVOID)),
        OPERATION(CStdPtrArray, CStdPtrArray, Remove, bool(int)),
        OPERATION(CStdPtrArray, CStdPtrArray, GetData, LPVOID * ()),
        OPERATION(CStdPtrArray, CStdPtrArray, GetAt, LPVOID(int) const),
        OPERATION(CStdPtrArray, CStdPtrArray, operator[], LPVOID(int) const),
    };
}

std::vector<Declaration> CStdValArrayOperations()
{
    return {
        OPERATION(CStdValArray, CStdValArray, Empty, void()),
        OPERATION(CStdValArray, CStdValArray, IsEmpty, bool() const),
        OPERATION(CStdValArray, CStdValArray, Add, bool(LPCVOID)),
        OPERATION(CStdValArray, CStdValArray, Remove, bool(int)),
        OPERATION(CStdValArray, CStdValArray, GetSize, int() const),
        OPERATION(CStdValArray, CStdValArray, GetData, LPVOID()),
        OPERATION(CStdValArray, CStdValArray, GetAt, LPVOID(int) const),
        OPERATION(CStdValArray, CStdValArray, operator[], LPVOID(int) const),
    };
}

struct CStdStringPtrMapProtected : CStdStringPtrMap {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CStdStringPtrMap, CStdStringPtrMapProtected, m_nBuckets, int),
            MEMBER(CStdStringPtrMap, CStdStringPtrMapProtected, m_nCount, int),
        };
    }
};

std::vector<Declaration> CStdStringPtrMapOperations()
{
    return {
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, Resize, void(int)),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, Find, LPVOID(LPCTSTR, bool) const),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, Insert, bool(LPCTSTR, LPVOID)),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, Set, LPVOID(LPCTSTR, LPVOID)),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, Remove, bool(LPCTSTR)),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, RemoveAll, void()),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, GetSize, int() const),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, GetAt, LPCTSTR(int) const),
        OPERATION(CStdStringPtrMap, CStdStringPtrMap, operator[], LPCTSTR(int) const),
    };
}

struct CDelegateBaseProtected : CDelegateBase {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CDelegateBase, CDelegateBaseProtected, GetFn, void*() const),
            OPERATION(CDelegateBase, CDelegateBaseProtected, GetObject, void*()),
            OPERATION(CDelegateBase, CDelegateBaseProtected, Invoke, bool(void*)),
        };
    }
};

std::vector<Declaration> CDelegateBaseOperations()
{
    return {
        OPERATION(CDelegateBase, CDelegateBase, Equals, bool(const CDelegateBase&) const),
        OPERATION(CDelegateBase, CDelegateBase, operator(), bool(void*)),
        OPERATION(CDelegateBase, CDelegateBase, Copy, CDelegateBase * () const),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CDelegateBaseOverrides : CDelegateBase {
    CDelegateBase* Copy() const override;
    void* GetFn() const override;
    bool Invoke(void*) override;
};

struct CEventSourceProtected : CEventSource {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CEventSource, CEventSourceProtected, m_aDelegates, CStdPtrArray),
        };
    }
};

std::vector<Declaration> CEventSourceOperations()
{
    return {
        OPERATION(CEventSource, CEventSource, operator+=, void(const CDelegateBase&)),
        OPERATION(CEventSource, CEventSource, operator+=, void(bool (*)(void*))),
        OPERATION(CEventSource, CEventSource, operator-=, void(const CDelegateBase&)),
        OPERATION(CEventSource, CEventSource, operator-=, void(bool (*)(void*))),
        OPERATION(CEventSource, CEventSource, operator(), bool(void*)),
        OPERATION(CEventSource, CEventSource, Clear, void()),
    };
}

std::vector<Declaration> TDrawInfoOperations()
{
    return {
        OPERATION(TDrawInfo, TDrawInfo, Clear, void()),
        OPERATION(TDrawInfo, TDrawInfo, Parse, void(LPCTSTR, LPCTSTR, CPaintManagerUI*)),
        MEMBER(TDrawInfo, TDrawInfo, sDrawString, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sDrawModify, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sImageName, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sResType, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, rcDest, RECT),
        MEMBER(TDrawInfo, TDrawInfo, rcSource, RECT),
        MEMBER(TDrawInfo, TDrawInfo, rcCorner, RECT),
        MEMBER(TDrawInfo, TDrawInfo, dwMask, DWORD),
        MEMBER(TDrawInfo, TDrawInfo, uFade, UINT),
        MEMBER(TDrawInfo, TDrawInfo, uRotate, UINT),
        MEMBER(TDrawInfo, TDrawInfo, bHole, bool),
        MEMBER(TDrawInfo, TDrawInfo, bTiledX, bool),
        MEMBER(TDrawInfo, TDrawInfo, bTiledY, bool),
        MEMBER(TDrawInfo, TDrawInfo, bHSL, bool),
        MEMBER(TDrawInfo, TDrawInfo, bGdiplus, bool),
        MEMBER(TDrawInfo, TDrawInfo, szImage, CDuiSize),
        MEMBER(TDrawInfo, TDrawInfo, rcPadding, RECT),
        MEMBER(TDrawInfo, TDrawInfo, sAlign, CDuiString),
    };
}

std::vector<Declaration> TNotifyUIMembers()
{
    return {
        MEMBER(TNotifyUI, TNotifyUI, sType, CDuiString),
        MEMBER(TNotifyUI, TNotifyUI, sVirtualWnd, CDuiString),
        MEMBER(TNotifyUI, TNotifyUI, pSender, CControlUI*),
        MEMBER(TNotifyUI, TNotifyUI, dwTimestamp, DWORD),
        MEMBER(TNotifyUI, TNotifyUI, ptMouse, POINT),
        MEMBER(TNotifyUI, TNotifyUI, wParam, WPARAM),
        MEMBER(TNotifyUI, TNotifyUI, lParam, LPARAM),
    };
}

std::vector<Declaration> TEventUIMembers()
{
    return {
        MEMBER(TEventUI, TEventUI, Type, int),
        MEMBER(TEventUI, TEventUI, pSender, CControlUI*),
        MEMBER(TEventUI, TEventUI, dwTimestamp, DWORD),
        MEMBER(TEventUI, TEventUI, ptMouse, POINT),
        MEMBER(TEventUI, TEventUI, chKey, TCHAR),
        MEMBER(TEventUI, TEventUI, wKeyState, WORD),
        MEMBER(TEventUI, TEventUI, wParam, WPARAM),
        MEMBER(TEventUI, TEventUI, lParam, LPARAM),
    };
}

std::vector<Declaration> TImageInfoMembers()
{
    return {
        MEMBER(TImageInfo, TImageInfo, pImage, Gdiplus::Image*),
        MEMBER(TImageInfo, TImageInfo, hBitmap, HBITMAP),
        MEMBER(TImageInfo, TImageInfo, pBits, LPBYTE),
        MEMBER(TImageInfo, TImageInfo, pSrcBits, LPBYTE),
        MEMBER(TImageInfo, TImageInfo, nX, int),
        MEMBER(TImageInfo, TImageInfo, nY, int),
        MEMBER(TImageInfo, TImageInfo, bAlpha, bool),
        MEMBER(TImageInfo, TImageInfo, bUseHSL, bool),
        MEMBER(TImageInfo, TImageInfo, sResType, CDuiString),
        MEMBER(TImageInfo, TImageInfo, dwMask, DWORD),
    };
}

std::vector<Declaration> TDrawInfoMembers()
{
    return {
        MEMBER(TDrawInfo, TDrawInfo, sDrawString, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sDrawModify, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sImageName, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, sResType, CDuiString),
        MEMBER(TDrawInfo, TDrawInfo, rcDest, RECT),
        MEMBER(TDrawInfo, TDrawInfo, rcSource, RECT),
        MEMBER(TDrawInfo, TDrawInfo, rcCorner, RECT),
        MEMBER(TDrawInfo, TDrawInfo, dwMask, DWORD),
        MEMBER(TDrawInfo, TDrawInfo, uFade, UINT),
        MEMBER(TDrawInfo, TDrawInfo, uRotate, UINT),
        MEMBER(TDrawInfo, TDrawInfo, bHole, bool),
        MEMBER(TDrawInfo, TDrawInfo, bTiledX, bool),
        MEMBER(TDrawInfo, TDrawInfo, bTiledY, bool),
        MEMBER(TDrawInfo, TDrawInfo, bHSL, bool),
        MEMBER(TDrawInfo, TDrawInfo, bGdiplus, bool),
        MEMBER(TDrawInfo, TDrawInfo, szImage, CDuiSize),
        MEMBER(TDrawInfo, TDrawInfo, rcPadding, RECT),
        MEMBER(TDrawInfo, TDrawInfo, sAlign, CDuiString),
    };
}

std::vector<Declaration> TFontInfoMembers()
{
    return {
        MEMBER(TFontInfo, TFontInfo, hFont, HFONT),
        MEMBER(TFontInfo, TFontInfo, sFontName, CDuiString),
        MEMBER(TFontInfo, TFontInfo, iSize, int),
        MEMBER(TFontInfo, TFontInfo, bBold, bool),
        MEMBER(TFontInfo, TFontInfo, bUnderline, bool),
        MEMBER(TFontInfo, TFontInfo, bItalic, bool),
        MEMBER(TFontInfo, TFontInfo, bStrikeout, bool),
        MEMBER(TFontInfo, TFontInfo, tm, TEXTMETRIC),
    };
}

std::vector<Declaration> TPercentInfoMembers()
{
    return {
        MEMBER(TPercentInfo, TPercentInfo, left, double),
        MEMBER(TPercentInfo, TPercentInfo, top, double),
        MEMBER(TPercentInfo, TPercentInfo, right, double),
        MEMBER(TPercentInfo, TPercentInfo, bottom, double),
    };
}

std::vector<Declaration> TResInfoMembers()
{
    return {
        MEMBER(TResInfo, TResInfo, m_dwDefaultDisabledColor, DWORD),
        MEMBER(TResInfo, TResInfo, m_dwDefaultFontColor, DWORD),
        MEMBER(TResInfo, TResInfo, m_dwDefaultLinkFontColor, DWORD),
        MEMBER(TResInfo, TResInfo, m_dwDefaultLinkHoverFontColor, DWORD),
        MEMBER(TResInfo, TResInfo, m_dwDefaultSelectedBkColor, DWORD),
        MEMBER(TResInfo, TResInfo, m_DefaultFontInfo, TFontInfo),
        MEMBER(TResInfo, TResInfo, m_CustomFonts, CStdStringPtrMap),
        MEMBER(TResInfo, TResInfo, m_ImageHash, CStdStringPtrMap),
        MEMBER(TResInfo, TResInfo, m_AttrHash, CStdStringPtrMap),
        MEMBER(TResInfo, TResInfo, m_StyleHash, CStdStringPtrMap),
        MEMBER(TResInfo, TResInfo, m_DrawInfoHash, CStdStringPtrMap),
    };
}

std::vector<Declaration> TDragDropUIMembers()
{
    return {
        MEMBER(TDragDropUI, TDragDropUI, pDataObject, IDataObject*),
        MEMBER(TDragDropUI, TDragDropUI, dwKeyState, DWORD),
        MEMBER(TDragDropUI, TDragDropUI, ptMouse, POINT),
        MEMBER(TDragDropUI, TDragDropUI, pdwEffect, DWORD*),
        MEMBER(TDragDropUI, TDragDropUI, pControl, CControlUI*),
    };
}

// What may be left out of a call.
static_assert(requires(CDuiString & it, LPCTSTR a0) { it.Assign(a0); });
static_assert(requires(CDuiString & it, int a0) { it.Mid(a0); });
static_assert(requires(CDuiString & it, TCHAR a0) { it.Find(a0); });
static_assert(requires(CDuiString & it, LPCTSTR a0) { it.Find(a0); });
static_assert(requires(CStdStringPtrMap & it) { it.Resize(); });
static_assert(requires(CStdStringPtrMap & it, LPCTSTR a0) { it.Find(a0); });

} // namespace

namespace interface_test {

std::vector<Declaration> Basics()
{
    return Join({CDuiRectOperations(),
                 CDuiStringOperations(),
                 CStdPtrArrayProtected::List(),
                 CStdPtrArrayOperations(),
                 CStdValArrayOperations(),
                 CStdStringPtrMapProtected::List(),
                 CStdStringPtrMapOperations(),
                 CDelegateBaseProtected::List(),
                 CDelegateBaseOperations(),
                 CEventSourceProtected::List(),
                 CEventSourceOperations(),
                 TDrawInfoOperations(),
                 TNotifyUIMembers(),
                 TEventUIMembers(),
                 TImageInfoMembers(),
                 TDrawInfoMembers(),
                 TFontInfoMembers(),
                 TPercentInfoMembers(),
                 TResInfoMembers(),
                 TDragDropUIMembers()});
}

} // namespace interface_test
