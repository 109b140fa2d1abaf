#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

struct CControlUIProtected : CControlUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CControlUI, CControlUIProtected, m_pManager, CPaintManagerUI*),
            MEMBER(CControlUI, CControlUIProtected, m_pParent, CControlUI*),
            MEMBER(CControlUI, CControlUIProtected, m_sVirtualWnd, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_sName, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_bUpdateNeeded, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bMenuUsed, bool),
            MEMBER(CControlUI, CControlUIProtected, m_rcItem, RECT),
            MEMBER(CControlUI, CControlUIProtected, m_rcPadding, RECT),
            MEMBER(CControlUI, CControlUIProtected, m_cXY, SIZE),
            MEMBER(CControlUI, CControlUIProtected, m_cxyFixed, SIZE),
            MEMBER(CControlUI, CControlUIProtected, m_cxyMin, SIZE),
            MEMBER(CControlUI, CControlUIProtected, m_cxyMax, SIZE),
            MEMBER(CControlUI, CControlUIProtected, m_bVisible, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bInternVisible, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bEnabled, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bMouseEnabled, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bKeyboardEnabled, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bFocused, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bFloat, bool),
            MEMBER(CControlUI, CControlUIProtected, m_piFloatPercent, TPercentInfo),
            MEMBER(CControlUI, CControlUIProtected, m_uFloatAlign, UINT),
            MEMBER(CControlUI, CControlUIProtected, m_bSetPos, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bRichEvent, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bDragEnabled, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bDropEnabled, bool),
            MEMBER(CControlUI, CControlUIProtected, m_bResourceText, bool),
            MEMBER(CControlUI, CControlUIProtected, m_sText, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_sToolTip, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_chShortcut, TCHAR),
            MEMBER(CControlUI, CControlUIProtected, m_sUserData, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_pTag, UINT_PTR),
            MEMBER(CControlUI, CControlUIProtected, m_sGradient, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_dwBackColor, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_dwBackColor2, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_dwBackColor3, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_dwForeColor, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_sBkImage, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_sForeImage, CDuiString),
            MEMBER(CControlUI, CControlUIProtected, m_dwBorderColor, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_dwFocusBorderColor, DWORD),
            MEMBER(CControlUI, CControlUIProtected, m_bColorHSL, bool),
            MEMBER(CControlUI, CControlUIProtected, m_nBorderSize, int),
            MEMBER(CControlUI, CControlUIProtected, m_nBorderStyle, int),
            MEMBER(CControlUI, CControlUIProtected, m_nTooltipWidth, int),
            MEMBER(CControlUI, CControlUIProtected, m_wCursor, WORD),
            MEMBER(CControlUI, CControlUIProtected, m_cxyBorderRound, SIZE),
            MEMBER(CControlUI, CControlUIProtected, m_rcPaint, RECT),
            MEMBER(CControlUI, CControlUIProtected, m_rcBorderSize, RECT),
            MEMBER(CControlUI, CControlUIProtected, m_instance, HINSTANCE),
        };
    }
};

std::vector<Declaration> CControlUIOperations()
{
    return {
        FUNCTION(CControlUI, CControlUI, CreateControl, CControlUI * ()),
        OPERATION(CControlUI, CControlUI, GetName, CDuiString() const),
        OPERATION(CControlUI, CControlUI, SetName, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetClass, LPCTSTR() const),
        OPERATION(CControlUI, CControlUI, GetInterface, LPVOID(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetControlFlags, UINT() const),
        OPERATION(CControlUI, CControlUI, Activate, bool()),
        OPERATION(CControlUI, CControlUI, GetManager, CPaintManagerUI * () const),
        OPERATION(CControlUI, CControlUI, SetManager, void(CPaintManagerUI*, CControlUI*, bool)),
        OPERATION(CControlUI, CControlUI, GetParent, CControlUI * () const),
        OPERATION(CControlUI, CControlUI, GetText, CDuiString() const),
        OPERATION(CControlUI, CControlUI, SetText, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, IsResourceText, bool() const),
        OPERATION(CControlUI, CControlUI, SetResourceText, void(bool)),
        OPERATION(CControlUI, CControlUI, IsDragEnabled, bool() const),
        OPERATION(CControlUI, CControlUI, SetDragEnable, void(bool)),
        OPERATION(CControlUI, CControlUI, IsDropEnabled, bool() const),
        OPERATION(CControlUI, CControlUI, SetDropEnable, void(bool)),
        OPERATION(CControlUI, CControlUI, IsRichEvent, bool() const),
        OPERATION(CControlUI, CControlUI, SetRichEvent, void(bool)),
        OPERATION(CControlUI, CControlUI, GetRelativePos, RECT() const),
        OPERATION(CControlUI, CControlUI, GetClientPos, RECT() const),
        OPERATION(CControlUI, CControlUI, GetPos, const RECT&() const),
        OPERATION(CControlUI, CControlUI, SetPos, void(RECT, bool)),
        OPERATION(CControlUI, CControlUI, Move, void(SIZE, bool)),
        OPERATION(CControlUI, CControlUI, GetWidth, int() const),
        OPERATION(CControlUI, CControlUI, GetHeight, int() const),
        OPERATION(CControlUI, CControlUI, GetX, int() const),
        OPERATION(CControlUI, CControlUI, GetY, int() const),
        OPERATION(CControlUI, CControlUI, GetPadding, RECT() const),
        OPERATION(CControlUI, CControlUI, SetPadding, void(RECT)),
        OPERATION(CControlUI, CControlUI, GetFixedXY, SIZE() const),
        OPERATION(CControlUI, CControlUI, SetFixedXY, void(SIZE)),
        OPERATION(CControlUI, CControlUI, GetFixedSize, SIZE() const),
        OPERATION(CControlUI, CControlUI, GetFixedWidth, int() const),
        OPERATION(CControlUI, CControlUI, SetFixedWidth, void(int)),
        OPERATION(CControlUI, CControlUI, GetFixedHeight, int() const),
        OPERATION(CControlUI, CControlUI, SetFixedHeight, void(int)),
        OPERATION(CControlUI, CControlUI, GetMinWidth, int() const),
        OPERATION(CControlUI, CControlUI, SetMinWidth, void(int)),
        OPERATION(CControlUI, CControlUI, GetMaxWidth, int() const),
        OPERATION(CControlUI, CControlUI, SetMaxWidth, void(int)),
        OPERATION(CControlUI, CControlUI, GetMinHeight, int() const),
        OPERATION(CControlUI, CControlUI, SetMinHeight, void(int)),
        OPERATION(CControlUI, CControlUI, GetMaxHeight, int() const),
        OPERATION(CControlUI, CControlUI, SetMaxHeight, void(int)),
        OPERATION(CControlUI, CControlUI, GetFloatPercent, TPercentInfo() const),
        OPERATION(CControlUI, CControlUI, SetFloatPercent, void(TPercentInfo)),
        OPERATION(CControlUI, CControlUI, SetFloatAlign, void(UINT)),
        OPERATION(CControlUI, CControlUI, GetFloatAlign, UINT() const),
        OPERATION(CControlUI, CControlUI, GetToolTip, CDuiString() const),
        OPERATION(CControlUI, CControlUI, SetToolTip, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, SetToolTipWidth, void(int)),
        OPERATION(CControlUI, CControlUI, GetToolTipWidth, int(void)),
        OPERATION(CControlUI, CControlUI, GetCursor, WORD()),
        OPERATION(CControlUI, CControlUI, SetCursor, void(WORD)),
        OPERATION(CControlUI, CControlUI, GetShortcut, TCHAR() const),
        OPERATION(CControlUI, CControlUI, SetShortcut, void(TCHAR)),
        OPERATION(CControlUI, CControlUI, IsContextMenuUsed, bool() const),
        OPERATION(CControlUI, CControlUI, SetContextMenuUsed, void(bool)),
        OPERATION(CControlUI, CControlUI, GetUserData, const CDuiString&()),
        OPERATION(CControlUI, CControlUI, SetUserData, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetTag, UINT_PTR() const),
        OPERATION(CControlUI, CControlUI, SetTag, void(UINT_PTR)),
        OPERATION(CControlUI, CControlUI, IsVisible, bool() const),
        OPERATION(CControlUI, CControlUI, SetVisible, void(bool)),
        OPERATION(CControlUI, CControlUI, SetInternVisible, void(bool)),
        OPERATION(CControlUI, CControlUI, IsEnabled, bool() const),
        OPERATION(CControlUI, CControlUI, SetEnabled, void(bool)),
        OPERATION(CControlUI, CControlUI, IsMouseEnabled, bool() const),
        OPERATION(CControlUI, CControlUI, SetMouseEnabled, void(bool)),
        OPERATION(CControlUI, CControlUI, IsKeyboardEnabled, bool() const),
        OPERATION(CControlUI, CControlUI, SetKeyboardEnabled, void(bool)),
        OPERATION(CControlUI, CControlUI, IsFocused, bool() const),
        OPERATION(CControlUI, CControlUI, SetFocus, void()),
        OPERATION(CControlUI, CControlUI, IsFloat, bool() const),
        OPERATION(CControlUI, CControlUI, SetFloat, void(bool)),
        OPERATION(CControlUI, CControlUI, FindControl,
                  CControlUI * (FINDCONTROLPROC, LPVOID, UINT)),
        OPERATION(CControlUI, CControlUI, Init, void()),
        OPERATION(CControlUI, CControlUI, DoInit, void()),
        OPERATION(CControlUI, CControlUI, Event, void(TEventUI&)),
        OPERATION(CControlUI, CControlUI, DoEvent, void(TEventUI&)),
        OPERATION(CControlUI, CControlUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        OPERATION(CControlUI, CControlUI, EstimateSize, SIZE(SIZE)),
        OPERATION(CControlUI, CControlUI, Paint, bool(HDC, const RECT&, CControlUI*)),
        OPERATION(CControlUI, CControlUI, DoPaint, bool(HDC, const RECT&, CControlUI*)),
        OPERATION(CControlUI, CControlUI, PaintBkColor, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintBkImage, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintStatusImage, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintForeColor, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintForeImage, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintText, void(HDC)),
        OPERATION(CControlUI, CControlUI, PaintBorder, void(HDC)),
        OPERATION(CControlUI, CControlUI, DoPostPaint, void(HDC, const RECT&)),
        OPERATION(CControlUI, CControlUI, setInstance, void(HINSTANCE)),
        OPERATION(CControlUI, CControlUI, SetTimer, bool(UINT, UINT)),
        OPERATION(CControlUI, CControlUI, KillTimer, void(UINT)),
        OPERATION(CControlUI, CControlUI, GetGradient, LPCTSTR()),
        OPERATION(CControlUI, CControlUI, SetGradient, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetBkColor, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetBkColor, void(DWORD)),
        OPERATION(CControlUI, CControlUI, GetBkColor2, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetBkColor2, void(DWORD)),
        OPERATION(CControlUI, CControlUI, GetBkColor3, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetBkColor3, void(DWORD)),
        OPERATION(CControlUI, CControlUI, GetForeColor, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetForeColor, void(DWORD)),
        OPERATION(CControlUI, CControlUI, GetBkImage, LPCTSTR()),
        OPERATION(CControlUI, CControlUI, SetBkImage, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetForeImage, LPCTSTR() const),
        OPERATION(CControlUI, CControlUI, SetForeImage, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetFocusBorderColor, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetFocusBorderColor, void(DWORD)),
        OPERATION(CControlUI, CControlUI, GetBorderColor, DWORD() const),
        OPERATION(CControlUI, CControlUI, SetBorderColor, void(DWORD)),
        OPERATION(CControlUI, CControlUI, IsColorHSL, bool() const),
        OPERATION(CControlUI, CControlUI, SetColorHSL, void(bool)),
        OPERATION(CControlUI, CControlUI, GetAdjustColor, DWORD(DWORD)),
        OPERATION(CControlUI, CControlUI, GetBorderRound, SIZE() const),
        OPERATION(CControlUI, CControlUI, SetBorderRound, void(SIZE)),
        OPERATION(CControlUI, CControlUI, DrawImage, bool(HDC, LPCTSTR, LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetBorderSize, int() const),
        OPERATION(CControlUI, CControlUI, SetBorderSize, void(int)),
        OPERATION(CControlUI, CControlUI, GetBorderRectSize, RECT() const),
        OPERATION(CControlUI, CControlUI, SetBorderSize, void(RECT)),
        OPERATION(CControlUI, CControlUI, GetLeftBorderSize, int() const),
        OPERATION(CControlUI, CControlUI, SetLeftBorderSize, void(int)),
        OPERATION(CControlUI, CControlUI, GetTopBorderSize, int() const),
        OPERATION(CControlUI, CControlUI, SetTopBorderSize, void(int)),
        OPERATION(CControlUI, CControlUI, GetRightBorderSize, int() const),
        OPERATION(CControlUI, CControlUI, SetRightBorderSize, void(int)),
        OPERATION(CControlUI, CControlUI, GetBottomBorderSize, int() const),
        OPERATION(CControlUI, CControlUI, SetBottomBorderSize, void(int)),
        OPERATION(CControlUI, CControlUI, GetBorderStyle, int() const),
        OPERATION(CControlUI, CControlUI, SetBorderStyle, void(int)),
        OPERATION(CControlUI, CControlUI, Invalidate, void()),
        OPERATION(CControlUI, CControlUI, IsUpdateNeeded, bool() const),
        OPERATION(CControlUI, CControlUI, NeedUpdate, void()),
        OPERATION(CControlUI, CControlUI, NeedParentUpdate, void()),
        OPERATION(CControlUI, CControlUI, AddCustomAttribute, void(LPCTSTR, LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetCustomAttribute, LPCTSTR(LPCTSTR) const),
        OPERATION(CControlUI, CControlUI, RemoveCustomAttribute, bool(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, RemoveAllCustomAttribute, void()),
        OPERATION(CControlUI, CControlUI, ApplyAttributeList, CControlUI * (LPCTSTR)),
        OPERATION(CControlUI, CControlUI, SetVirtualWnd, void(LPCTSTR)),
        OPERATION(CControlUI, CControlUI, GetVirtualWnd, CDuiString() const),
        MEMBER(CControlUI, CControlUI, OnInit, CEventSource),
        MEMBER(CControlUI, CControlUI, OnDestroy, CEventSource),
        MEMBER(CControlUI, CControlUI, OnSize, CEventSource),
        MEMBER(CControlUI, CControlUI, OnEvent, CEventSource),
        MEMBER(CControlUI, CControlUI, OnNotify, CEventSource),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CControlUIOverrides : CControlUI {
    CDuiString GetName() const override;
    void SetName(LPCTSTR) override;
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR) override;
    UINT GetControlFlags() const override;
    bool Activate() override;
    CPaintManagerUI* GetManager() const override;
    void SetManager(CPaintManagerUI*, CControlUI*, bool) override;
    CControlUI* GetParent() const override;
    CDuiString GetText() const override;
    void SetText(LPCTSTR) override;
    bool IsResourceText() const override;
    void SetResourceText(bool) override;
    bool IsDragEnabled() const override;
    void SetDragEnable(bool) override;
    bool IsDropEnabled() const override;
    void SetDropEnable(bool) override;
    bool IsRichEvent() const override;
    void SetRichEvent(bool) override;
    RECT GetRelativePos() const override;
    RECT GetClientPos() const override;
    const RECT& GetPos() const override;
    void SetPos(RECT, bool) override;
    void Move(SIZE, bool) override;
    int GetWidth() const override;
    int GetHeight() const override;
    int GetX() const override;
    int GetY() const override;
    RECT GetPadding() const override;
    void SetPadding(RECT) override;
    SIZE GetFixedXY() const override;
    void SetFixedXY(SIZE) override;
    SIZE GetFixedSize() const override;
    int GetFixedWidth() const override;
    void SetFixedWidth(int) override;
    int GetFixedHeight() const override;
    void SetFixedHeight(int) override;
    int GetMinWidth() const override;
    void SetMinWidth(int) override;
    int GetMaxWidth() const override;
    void SetMaxWidth(int) override;
    int GetMinHeight() const override;
    void SetMinHeight(int) override;
    int GetMaxHeight() const override;
    void SetMaxHeight(int) override;
    TPercentInfo GetFloatPercent() const override;
    void SetFloatPercent(TPercentInfo) override;
    void SetFloatAlign(UINT) override;
    UINT GetFloatAlign() const override;
    CDuiString GetToolTip() const override;
    void SetToolTip(LPCTSTR) override;
    void SetToolTipWidth(int) override;
    int GetToolTipWidth(void) override;
    WORD GetCursor() override;
    void SetCursor(WORD) override;
    TCHAR GetShortcut() const override;
    void SetShortcut(TCHAR) override;
    bool IsContextMenuUsed() const override;
    void SetContextMenuUsed(bool) override;
    const CDuiString& GetUserData() override;
    void SetUserData(LPCTSTR) override;
    UINT_PTR GetTag() const override;
    void SetTag(UINT_PTR) override;
    bool IsVisible() const override;
    void SetVisible(bool) override;
    void SetInternVisible(bool) override;
    bool IsEnabled() const override;
    void SetEnabled(bool) override;
    bool IsMouseEnabled() const override;
    void SetMouseEnabled(bool) override;
    bool IsKeyboardEnabled() const override;
    void SetKeyboardEnabled(bool) override;
    bool IsFocused() const override;
    void SetFocus() override;
    bool IsFloat() const override;
    void SetFloat(bool) override;
    CControlUI* FindControl(FINDCONTROLPROC, LPVOID, UINT) override;
    void Init() override;
    void DoInit() override;
    void Event(TEventUI&) override;
    void DoEvent(TEventUI&) override;
    void SetAttribute(LPCTSTR, LPCTSTR) override;
    SIZE EstimateSize(SIZE) override;
    bool Paint(HDC, const RECT&, CControlUI*) override;
    bool DoPaint(HDC, const RECT&, CControlUI*) override;
    void PaintBkColor(HDC) override;
    void PaintBkImage(HDC) override;
    void PaintStatusImage(HDC) override;
    void PaintForeColor(HDC) override;
    void PaintForeImage(HDC) override;
    void PaintText(HDC) override;
    void PaintBorder(HDC) override;
    void DoPostPaint(HDC, const RECT&) override;
};

struct CContainerUIProtected : CContainerUI {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CContainerUI, CContainerUIProtected, SetFloatPos, void(int)),
            OPERATION(CContainerUI, CContainerUIProtected, ProcessScrollBar, void(RECT, int, int)),
            OPERATION(CContainerUI, CContainerUIProtected, InsertChildren,
                      void(const CStdPtrArray&, int)),
            OPERATION(CContainerUI, CContainerUIProtected, RemoveChildren, void(int, int)),
            MEMBER(CContainerUI, CContainerUIProtected, m_items, CStdPtrArray),
            MEMBER(CContainerUI, CContainerUIProtected, m_rcInset, RECT),
            MEMBER(CContainerUI, CContainerUIProtected, m_iChildPadding, int),
            MEMBER(CContainerUI, CContainerUIProtected, m_iChildAlign, UINT),
            MEMBER(CContainerUI, CContainerUIProtected, m_iChildVAlign, UINT),
            MEMBER(CContainerUI, CContainerUIProtected, m_bAutoDestroy, bool),
            MEMBER(CContainerUI, CContainerUIProtected, m_bDelayedDestroy, bool),
            MEMBER(CContainerUI, CContainerUIProtected, m_bMouseChildEnabled, bool),
            MEMBER(CContainerUI, CContainerUIProtected, m_nScrollStepSize, int),
            MEMBER(CContainerUI, CContainerUIProtected, m_bFixedScrollbar, bool),
            MEMBER(CContainerUI, CContainerUIProtected, m_bShowScrollbar, bool),
            MEMBER(CContainerUI, CContainerUIProtected, m_pVerticalScrollBar, CScrollBarUI*),
            MEMBER(CContainerUI, CContainerUIProtected, m_pHorizontalScrollBar, CScrollBarUI*),
            MEMBER(CContainerUI, CContainerUIProtected, m_sVerticalScrollBarStyle, CDuiString),
            MEMBER(CContainerUI, CContainerUIProtected, m_sHorizontalScrollBarStyle, CDuiString),
        };
    }
};

std::vector<Declaration> CContainerUIOperations()
{
    return {
        OPERATION(CContainerUI, CContainerUI, GetInset, RECT() const),
        OPERATION(CContainerUI, CContainerUI, SetInset, void(RECT)),
        OPERATION(CContainerUI, CContainerUI, GetChildPadding, int() const),
        OPERATION(CContainerUI, CContainerUI, SetChildPadding, void(int)),
        OPERATION(CContainerUI, CContainerUI, GetChildAlign, UINT() const),
        OPERATION(CContainerUI, CContainerUI, SetChildAlign, void(UINT)),
        OPERATION(CContainerUI, CContainerUI, GetChildVAlign, UINT() const),
        OPERATION(CContainerUI, CContainerUI, SetChildVAlign, void(UINT)),
        OPERATION(CContainerUI, CContainerUI, IsAutoDestroy, bool() const),
        OPERATION(CContainerUI, CContainerUI, SetAutoDestroy, void(bool)),
        OPERATION(CContainerUI, CContainerUI, IsDelayedDestroy, bool() const),
        OPERATION(CContainerUI, CContainerUI, SetDelayedDestroy, void(bool)),
        OPERATION(CContainerUI, CContainerUI, IsMouseChildEnabled, bool() const),
        OPERATION(CContainerUI, CContainerUI, SetMouseChildEnabled, void(bool)),
        OPERATION(CContainerUI, CContainerUI, FindSelectable, int(int, bool) const),
        OPERATION(CContainerUI, CContainerUI, GetScrollPos, SIZE() const),
        OPERATION(CContainerUI, CContainerUI, GetScrollRange, SIZE() const),
        OPERATION(CContainerUI, CContainerUI, SetScrollPos, void(SIZE, bool)),
        OPERATION(CContainerUI, CContainerUI, SetScrollStepSize, void(int)),
        OPERATION(CContainerUI, CContainerUI, GetScrollStepSize, int() const),
        OPERATION(CContainerUI, CContainerUI, LineUp, void()),
        OPERATION(CContainerUI, CContainerUI, LineDown, void()),
        OPERATION(CContainerUI, CContainerUI, PageUp, void()),
        OPERATION(CContainerUI, CContainerUI, PageDown, void()),
        OPERATION(CContainerUI, CContainerUI, HomeUp, void()),
        OPERATION(CContainerUI, CContainerUI, EndDown, void()),
        OPERATION(CContainerUI, CContainerUI, LineLeft, void()),
        OPERATION(CContainerUI, CContainerUI, LineRight, void()),
        OPERATION(CContainerUI, CContainerUI, PageLeft, void()),
        OPERATION(CContainerUI, CContainerUI, PageRight, void()),
        OPERATION(CContainerUI, CContainerUI, HomeLeft, void()),
        OPERATION(CContainerUI, CContainerUI, EndRight, void()),
        OPERATION(CContainerUI, CContainerUI, EnableScrollBar, void(bool, bool)),
        OPERATION(CContainerUI, CContainerUI, GetVerticalScrollBar, CScrollBarUI * () const),
        OPERATION(CContainerUI, CContainerUI, GetHorizontalScrollBar, CScrollBarUI * () const),
        OPERATION(CContainerUI, CContainerUI, Add, bool(CControlUI*)),
        OPERATION(CContainerUI, CContainerUI, AddAt, bool(CControlUI*, int)),
        OPERATION(CContainerUI, CContainerUI, Remove, bool(CControlUI*)),
        OPERATION(CContainerUI, CContainerUI, RemoveAt, bool(int)),
        OPERATION(CContainerUI, CContainerUI, RemoveAll, void()),
        OPERATION(CContainerUI, CContainerUI, SetPos, void(RECT, bool)),
        OPERATION(CContainerUI, CContainerUI, SetVisible, void(bool)),
        OPERATION(CContainerUI, CContainerUI, SetInternVisible, void(bool)),
        OPERATION(CContainerUI, CContainerUI, SetEnabled, void(bool)),
        OPERATION(CContainerUI, CContainerUI, SetMouseEnabled, void(bool)),
        OPERATION(CContainerUI, CContainerUI, IsFixedScrollbar, bool()),
        OPERATION(CContainerUI, CContainerUI, SetFixedScrollbar, void(bool)),
        OPERATION(CContainerUI, CContainerUI, IsShowScrollbar, bool()),
        OPERATION(CContainerUI, CContainerUI, SetShowScrollbar, void(bool)),
        OPERATION(CContainerUI, CContainerUI, SetSubControlText, bool(LPCTSTR, LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, SetSubControlFixedHeight, bool(LPCTSTR, int)),
        OPERATION(CContainerUI, CContainerUI, SetSubControlFixedWdith, bool(LPCTSTR, int)),
        OPERATION(CContainerUI, CContainerUI, SetSubControlUserData, bool(LPCTSTR, LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, GetSubControlText, CDuiString(LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, GetSubControlFixedHeight, int(LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, GetSubControlFixedWdith, int(LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, GetSubControlUserData, const CDuiString(LPCTSTR)),
        OPERATION(CContainerUI, CContainerUI, FindSubControl, CControlUI * (LPCTSTR)),
        FUNCTION(CContainerUI, CContainerUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CContainerUIOverrides : CContainerUI {
    RECT GetInset() const override;
    void SetInset(RECT) override;
    int GetChildPadding() const override;
    void SetChildPadding(int) override;
    UINT GetChildAlign() const override;
    void SetChildAlign(UINT) override;
    UINT GetChildVAlign() const override;
    void SetChildVAlign(UINT) override;
    bool IsAutoDestroy() const override;
    void SetAutoDestroy(bool) override;
    bool IsDelayedDestroy() const override;
    void SetDelayedDestroy(bool) override;
    bool IsMouseChildEnabled() const override;
    void SetMouseChildEnabled(bool) override;
    int FindSelectable(int, bool) const override;
    SIZE GetScrollPos() const override;
    SIZE GetScrollRange() const override;
    void SetScrollPos(SIZE, bool) override;
    void SetScrollStepSize(int) override;
    int GetScrollStepSize() const override;
    void LineUp() override;
    void LineDown() override;
    void PageUp() override;
    void PageDown() override;
    void HomeUp() override;
    void EndDown() override;
    void LineLeft() override;
    void LineRight() override;
    void PageLeft() override;
    void PageRight() override;
    void HomeLeft() override;
    void EndRight() override;
    void EnableScrollBar(bool, bool) override;
    CScrollBarUI* GetVerticalScrollBar() const override;
    CScrollBarUI* GetHorizontalScrollBar() const override;
    void SetFloatPos(int) override;
    void ProcessScrollBar(RECT, int, int) override;
};

// What may be left out of a call.
static_assert(requires(CControlUI & it, CPaintManagerUI* a0, CControlUI* a1) {
    it.SetManager(a0, a1);
});
static_assert(requires(CControlUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CControlUI & it, SIZE a0) { it.Move(a0); });
static_assert(requires(CControlUI & it) { it.SetVisible(); });
static_assert(requires(CControlUI & it) { it.SetInternVisible(); });
static_assert(requires(CControlUI & it) { it.SetEnabled(); });
static_assert(requires(CControlUI & it) { it.SetMouseEnabled(); });
static_assert(requires(CControlUI & it) { it.SetKeyboardEnabled(); });
static_assert(requires(CControlUI & it) { it.SetFloat(); });
static_assert(requires(CControlUI & it, HDC a0, const RECT& a1) { it.Paint(a0, a1); });
static_assert(requires(CControlUI & it) { it.setInstance(); });
static_assert(requires(CControlUI & it, HDC a0, LPCTSTR a1) { it.DrawImage(a0, a1); });
static_assert(requires(CContainerUI & it) { it.SetMouseChildEnabled(); });
static_assert(requires(CContainerUI & it, int a0) { it.FindSelectable(a0); });
static_assert(requires(CContainerUI & it, SIZE a0) { it.SetScrollPos(a0); });
static_assert(requires(CContainerUI & it) { it.EnableScrollBar(); });
static_assert(requires(CContainerUI & it, bool a0) { it.EnableScrollBar(a0); });
static_assert(requires(CContainerUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CContainerUI & it) { it.SetVisible(); });
static_assert(requires(CContainerUI & it) { it.SetInternVisible(); });
static_assert(requires(CContainerUI & it) { it.SetMouseEnabled(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Controls()
{
    return Join({CControlUIProtected::List(), CControlUIOperations(), CContainerUIProtected::List(),
                 CContainerUIOperations()});
}

} // namespace interface_test
