#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

struct CNotifyPumpProtected : CNotifyPump {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CNotifyPump, CNotifyPumpProtected, GetMessageMap, const DUI_MSGMAP*() const),
        };
    }
};

std::vector<Declaration> CNotifyPumpOperations()
{
    return {
        OPERATION(CNotifyPump, CNotifyPump, AddVirtualWnd, bool(CDuiString, CNotifyPump*)),
        OPERATION(CNotifyPump, CNotifyPump, RemoveVirtualWnd, bool(CDuiString)),
        OPERATION(CNotifyPump, CNotifyPump, NotifyPump, void(TNotifyUI&)),
        OPERATION(CNotifyPump, CNotifyPump, LoopDispatch, bool(TNotifyUI&)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CNotifyPumpOverrides : CNotifyPump {
    const DUI_MSGMAP* GetMessageMap() const override;
};

struct CWindowWndProtected : CWindowWnd {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CWindowWnd, CWindowWndProtected, GetWindowClassName, LPCTSTR() const),
            OPERATION(CWindowWnd, CWindowWndProtected, GetSuperClassName, LPCTSTR() const),
            OPERATION(CWindowWnd, CWindowWndProtected, GetClassStyle, UINT() const),
            OPERATION(CWindowWnd, CWindowWndProtected, HandleMessage,
                      LRESULT(UINT, WPARAM, LPARAM)),
            OPERATION(CWindowWnd, CWindowWndProtected, OnFinalMessage, void(HWND)),
            FUNCTION(CWindowWnd, CWindowWndProtected, __WndProc,
                     LRESULT(HWND, UINT, WPARAM, LPARAM)),
            FUNCTION(CWindowWnd, CWindowWndProtected, __ControlProc,
                     LRESULT(HWND, UINT, WPARAM, LPARAM)),
            MEMBER(CWindowWnd, CWindowWndProtected, m_hWnd, HWND),
            MEMBER(CWindowWnd, CWindowWndProtected, m_OldWndProc, WNDPROC),
            MEMBER(CWindowWnd, CWindowWndProtected, m_bSubclassed, bool),
            MEMBER(CWindowWnd, CWindowWndProtected, m_bUnicode, bool),
            MEMBER(CWindowWnd, CWindowWndProtected, m_bFakeModal, bool),
        };
    }
};

std::vector<Declaration> CWindowWndOperations()
{
    return {
        OPERATION(CWindowWnd, CWindowWnd, GetHWND, HWND() const),
        OPERATION(CWindowWnd, CWindowWnd, EnableUnicode, void()),
        OPERATION(CWindowWnd, CWindowWnd, RegisterWindowClass, bool()),
        OPERATION(CWindowWnd, CWindowWnd, RegisterSuperclass, bool()),
        OPERATION(CWindowWnd, CWindowWnd, Create,
                  HWND(HWND, LPCTSTR, DWORD, DWORD, const RECT, HMENU)),
        OPERATION(CWindowWnd, CWindowWnd, Create,
                  HWND(HWND, LPCTSTR, DWORD, DWORD, int, int, int, int, HMENU)),
        OPERATION(CWindowWnd, CWindowWnd, CreateDuiWindow, HWND(HWND, LPCTSTR, DWORD, DWORD)),
        OPERATION(CWindowWnd, CWindowWnd, Subclass, HWND(HWND)),
        OPERATION(CWindowWnd, CWindowWnd, Unsubclass, void()),
        OPERATION(CWindowWnd, CWindowWnd, ShowWindow, void(bool, bool)),
        OPERATION(CWindowWnd, CWindowWnd, ShowModal, UINT()),
        OPERATION(CWindowWnd, CWindowWnd, ShowModalFake, void()),
        OPERATION(CWindowWnd, CWindowWnd, Close, void(UINT)),
        OPERATION(CWindowWnd, CWindowWnd, CenterWindow, void()),
        OPERATION(CWindowWnd, CWindowWnd, SetIcon, void(UINT)),
        OPERATION(CWindowWnd, CWindowWnd, SendMessage, LRESULT(UINT, WPARAM, LPARAM)),
        OPERATION(CWindowWnd, CWindowWnd, PostMessage, LRESULT(UINT, WPARAM, LPARAM)),
        OPERATION(CWindowWnd, CWindowWnd, ResizeClient, void(int, int)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CWindowWndOverrides : CWindowWnd {
    LPCTSTR GetWindowClassName() const override;
    LPCTSTR GetSuperClassName() const override;
    UINT GetClassStyle() const override;
    LRESULT HandleMessage(UINT, WPARAM, LPARAM) override;
    void OnFinalMessage(HWND) override;
};

struct WindowImplBaseProtected : WindowImplBase {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(WindowImplBase, WindowImplBaseProtected, GetSkinType, CDuiString()),
            OPERATION(WindowImplBase, WindowImplBaseProtected, GetSkinFile, CDuiString()),
            OPERATION(WindowImplBase, WindowImplBaseProtected, GetWindowClassName, LPCTSTR() const),
            OPERATION(WindowImplBase, WindowImplBaseProtected, GetManagerName, LPCTSTR()),
            OPERATION(WindowImplBase, WindowImplBaseProtected, ResponseDefaultKeyEvent,
                      LRESULT(WPARAM)),
            MEMBER(WindowImplBase, WindowImplBaseProtected, m_pm, CPaintManagerUI),
        };
    }
};

std::vector<Declaration> WindowImplBaseOperations()
{
    return {
        OPERATION(WindowImplBase, WindowImplBase, InitResource, void()),
        OPERATION(WindowImplBase, WindowImplBase, InitWindow, void()),
        OPERATION(WindowImplBase, WindowImplBase, OnFinalMessage, void(HWND)),
        OPERATION(WindowImplBase, WindowImplBase, Notify, void(TNotifyUI&)),
        OPERATION(WindowImplBase, WindowImplBase, OnClick, void(TNotifyUI&)),
        OPERATION(WindowImplBase, WindowImplBase, IsInStaticControl, BOOL(CControlUI*)),
        OPERATION(WindowImplBase, WindowImplBase, GetClassStyle, UINT() const),
        OPERATION(WindowImplBase, WindowImplBase, CreateControl, CControlUI * (LPCTSTR)),
        OPERATION(WindowImplBase, WindowImplBase, QueryControlText, LPCTSTR(LPCTSTR, LPCTSTR)),
        OPERATION(WindowImplBase, WindowImplBase, MessageHandler,
                  LRESULT(UINT, WPARAM, LPARAM, bool&)),
        OPERATION(WindowImplBase, WindowImplBase, OnClose, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnDestroy, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnNcActivate,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnNcCalcSize,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnNcPaint, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnNcHitTest,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnGetMinMaxInfo,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnMouseWheel,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnMouseHover,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnSize, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnChar, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnSysCommand,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnCreate, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnKeyDown, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnKillFocus,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnSetFocus, LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnLButtonDown,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnLButtonUp,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, OnMouseMove,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, HandleMessage, LRESULT(UINT, WPARAM, LPARAM)),
        OPERATION(WindowImplBase, WindowImplBase, HandleCustomMessage,
                  LRESULT(UINT, WPARAM, LPARAM, BOOL&)),
        OPERATION(WindowImplBase, WindowImplBase, GetStyle, LONG()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct WindowImplBaseOverrides : WindowImplBase {
    void InitResource() override;
    void InitWindow() override;
    void OnFinalMessage(HWND) override;
    void Notify(TNotifyUI&) override;
    void OnClick(TNotifyUI&) override;
    BOOL IsInStaticControl(CControlUI*) override;
    CDuiString GetSkinType() override;
    CDuiString GetSkinFile() override;
    LPCTSTR GetWindowClassName() const override;
    LPCTSTR GetManagerName() override;
    LRESULT ResponseDefaultKeyEvent(WPARAM) override;
    UINT GetClassStyle() const override;
    CControlUI* CreateControl(LPCTSTR) override;
    LPCTSTR QueryControlText(LPCTSTR, LPCTSTR) override;
    LRESULT MessageHandler(UINT, WPARAM, LPARAM, bool&) override;
    LRESULT OnClose(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnDestroy(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnNcActivate(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnNcCalcSize(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnNcPaint(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnNcHitTest(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnGetMinMaxInfo(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnMouseWheel(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnMouseHover(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnSize(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnChar(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnSysCommand(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnCreate(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnKeyDown(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnKillFocus(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnSetFocus(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnLButtonDown(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnLButtonUp(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT OnMouseMove(UINT, WPARAM, LPARAM, BOOL&) override;
    LRESULT HandleMessage(UINT, WPARAM, LPARAM) override;
    LRESULT HandleCustomMessage(UINT, WPARAM, LPARAM, BOOL&) override;
    LONG GetStyle() override;
};

std::vector<Declaration> CPaintManagerUIOperations()
{
    return {
        OPERATION(CPaintManagerUI, CPaintManagerUI, Init, void(HWND, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsUpdateNeeded, bool() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, NeedUpdate, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, Invalidate, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, Invalidate, void(RECT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetName, LPCTSTR() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetPaintDC, HDC() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetPaintWindow, HWND() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetTooltipWindow, HWND() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetHoverTime, int() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetHoverTime, void(int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetMousePos, POINT() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetClientSize, SIZE() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetInitSize, SIZE()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetInitSize, void(int, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetSizeBox, RECT()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetSizeBox, void(RECT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetCaptionRect, RECT()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetCaptionRect, void(RECT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetRoundCorner, SIZE()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetRoundCorner, void(int, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetMinInfo, SIZE()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetMinInfo, void(int, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetMaxInfo, SIZE()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetMaxInfo, void(int, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsShowUpdateRect, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetShowUpdateRect, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsNoActivate, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetNoActivate, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetOpacity, BYTE() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetOpacity, void(BYTE)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsLayered, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetLayered, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetLayeredInset, RECT & ()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetLayeredInset, void(RECT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetLayeredOpacity, BYTE()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetLayeredOpacity, void(BYTE)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetLayeredImage, LPCTSTR()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetLayeredImage, void(LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetShadow, CShadowUI * ()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetUseGdiplusText, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsUseGdiplusText, bool() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetGdiplusTextRenderingHint, void(int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetGdiplusTextRenderingHint, int() const),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetInstance, HINSTANCE()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetInstance, void(HINSTANCE)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetInstancePath, CDuiString()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetCurrentPath, CDuiString()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetCurrentPath, void(LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourceDll, HINSTANCE()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetResourceDll, void(HINSTANCE)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourcePath, const CDuiString&()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetResourcePath, void(LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourceZip, const CDuiString&()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourceZipPwd, const CDuiString&()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, IsCachedResourceZip, bool()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourceZipHandle, HANDLE()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetResourceZip,
                 void(LPVOID, unsigned int, LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetResourceZip, void(LPCTSTR, bool, LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetResourceType, void(int)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetResourceType, int()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetHSL, bool(short*, short*, short*)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetHSL, void(bool, short, short, short)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, ReloadSkin, void()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, ReloadSharedImages, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, ReloadImages, void()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetPaintManager, CPaintManagerUI * (LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetPaintManagers, CStdPtrArray * ()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, LoadPlugin, bool(LPCTSTR)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetPlugins, CStdPtrArray * ()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, MessageLoop, void()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, TranslateMessage, bool(const LPMSG)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, Term, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsForceUseSharedRes, bool() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetForceUseSharedRes, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, DeletePtr, void(void*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultDisabledColor, DWORD() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultDisabledColor, void(DWORD, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultFontColor, DWORD() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultFontColor, void(DWORD, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultLinkFontColor, DWORD() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultLinkFontColor, void(DWORD, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultLinkHoverFontColor, DWORD() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultLinkHoverFontColor,
                  void(DWORD, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultSelectedBkColor, DWORD() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultSelectedBkColor, void(DWORD, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultFontInfo, TFontInfo * ()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDefaultFont,
                  void(LPCTSTR, int, bool, bool, bool, bool, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetCustomFontCount, DWORD(bool) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddFontArray, void(LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddFont,
                  HFONT(int, LPCTSTR, int, bool, bool, bool, bool, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFont, HFONT(int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFont,
                  HFONT(LPCTSTR, int, bool, bool, bool, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFontIndex, int(HFONT, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFontIndex,
                  int(LPCTSTR, int, bool, bool, bool, bool, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveFont, void(HFONT, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveFont, void(int, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllFonts, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFontInfo, TFontInfo * (int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFontInfo, TFontInfo * (HFONT)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetImage, const TImageInfo*(LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetImageEx,
                  const TImageInfo*(LPCTSTR, LPCTSTR, DWORD, bool, bool, HINSTANCE)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetImageEx,
                  const TImageInfo*(LPCTSTR, LPCTSTR, DWORD, bool, HINSTANCE, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddImage,
                  const TImageInfo*(LPCTSTR, LPCTSTR, DWORD, bool, bool, bool, HINSTANCE)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddImage,
                  const TImageInfo*(LPCTSTR, HBITMAP, int, int, bool, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveImage, void(LPCTSTR, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllImages, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDrawInfo,
                  const TDrawInfo*(LPCTSTR, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveDrawInfo, void(LPCTSTR, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllDrawInfos, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetImageString,
                  const TImageInfo*(LPCTSTR, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddDefaultAttributeList,
                  void(LPCTSTR, LPCTSTR, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDefaultAttributeList,
                  LPCTSTR(LPCTSTR) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveDefaultAttributeList,
                  bool(LPCTSTR, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllDefaultAttributeList, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddWindowCustomAttribute,
                  void(LPCTSTR, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetWindowCustomAttribute,
                  LPCTSTR(LPCTSTR) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveWindowCustomAttribute, bool(LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllWindowCustomAttribute, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddStyle, void(LPCTSTR, LPCTSTR, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetStyle, LPCTSTR(LPCTSTR) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveStyle, BOOL(LPCTSTR, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetStyles, const CStdStringPtrMap&(bool) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllStyle, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, EnableDragDrop, bool(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDragDrop, void(IDragDropUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, OnDrop, bool(FORMATETC*, STGMEDIUM&, DWORD*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsValid, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AttachDialog, bool(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, InitControls, bool(CControlUI*, CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, ReapObjects, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddOptionGroup, bool(LPCTSTR, CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetOptionGroup, CStdPtrArray * (LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveOptionGroup, void(LPCTSTR, CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllOptionGroups, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetFocus, CControlUI * () const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetFocus, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetFocusNeeded, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetNextTabControl, bool(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetTimer, bool(CControlUI*, UINT, UINT)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, KillTimer, bool(CControlUI*, UINT)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, KillTimer, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveAllTimers, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetCapture, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, ReleaseCapture, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsCaptured, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsPainting, bool()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetPainting, void(bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddNotifier, bool(INotifyUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveNotifier, bool(INotifyUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SendNotify, void(TNotifyUI&, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SendNotify,
                  void(CControlUI*, LPCTSTR, WPARAM, LPARAM, bool)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddPreMessageFilter, bool(IMessageFilterUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemovePreMessageFilter,
                  bool(IMessageFilterUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddMessageFilter, bool(IMessageFilterUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveMessageFilter, bool(IMessageFilterUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetPostPaintCount, int() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, IsPostPaint, bool(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddPostPaint, bool(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemovePostPaint, bool(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetPostPaintIndex, bool(CControlUI*, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetNativeWindowCount, int() const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetNativeWindowRect, RECT(HWND)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddNativeWindow, bool(CControlUI*, HWND)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveNativeWindow, bool(HWND)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddDelayedCleanup, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddMouseLeaveNeeded, void(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveMouseLeaveNeeded, bool(CControlUI*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, AddTranslateAccelerator,
                  bool(ITranslateAccelerator*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RemoveTranslateAccelerator,
                  bool(ITranslateAccelerator*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, TranslateAccelerator, bool(LPMSG)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetRoot, CControlUI * () const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindControl, CControlUI * (POINT) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindControl, CControlUI * (LPCTSTR) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindSubControlByPoint,
                  CControlUI * (CControlUI*, POINT) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindSubControlByName,
                  CControlUI * (CControlUI*, LPCTSTR) const),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindSubControlByClass,
                  CControlUI * (CControlUI*, LPCTSTR, int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, FindSubControlsByClass,
                  CStdPtrArray * (CControlUI*, LPCTSTR)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, GetDPIObj, CDPI * ()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, ResetDPIAssets, void()),
        OPERATION(CPaintManagerUI, CPaintManagerUI, RebuildFont, void(TFontInfo*)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, SetDPI, void(int)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetAllDPI, void(int)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, MessageHandler,
                  bool(UINT, WPARAM, LPARAM, LRESULT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, PreMessageHandler,
                  bool(UINT, WPARAM, LPARAM, LRESULT&)),
        OPERATION(CPaintManagerUI, CPaintManagerUI, UsedVirtualWnd, void(bool)),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, GetLastErrorText, CDuiString()),
        FUNCTION(CPaintManagerUI, CPaintManagerUI, SetLastErrorText, void(LPCTSTR)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CPaintManagerUIOverrides : CPaintManagerUI {
    bool OnDrop(FORMATETC*, STGMEDIUM&, DWORD*) override;
};

std::vector<Declaration> CIDropTargetOperations()
{
    return {
        OPERATION(CIDropTarget, CIDropTarget, SetTargetWnd, void(HWND)),
        OPERATION(CIDropTarget, CIDropTarget, AddSuportedFormat, void(FORMATETC&)),
        OPERATION(CIDropTarget, CIDropTarget, OnDrop, bool(FORMATETC*, STGMEDIUM&, DWORD*)),
        OPERATION(CIDropTarget, CIDropTarget, QueryDrop, bool(DWORD, LPDWORD)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CIDropTargetOverrides : CIDropTarget {
    bool OnDrop(FORMATETC*, STGMEDIUM&, DWORD*) override;
};

// What may be left out of a call.
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3, const RECT a4) {
    it.Create(a0, a1, a2, a3, a4);
});
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3) {
    it.Create(a0, a1, a2, a3);
});
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3, int a4) {
    it.Create(a0, a1, a2, a3, a4);
});
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3, int a4, int a5) {
    it.Create(a0, a1, a2, a3, a4, a5);
});
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3, int a4, int a5,
                       int a6) { it.Create(a0, a1, a2, a3, a4, a5, a6); });
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2, DWORD a3, int a4, int a5,
                       int a6, int a7) { it.Create(a0, a1, a2, a3, a4, a5, a6, a7); });
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1) { it.CreateDuiWindow(a0, a1); });
static_assert(requires(CWindowWnd & it, HWND a0, LPCTSTR a1, DWORD a2) {
    it.CreateDuiWindow(a0, a1, a2);
});
static_assert(requires(CWindowWnd & it) { it.ShowWindow(); });
static_assert(requires(CWindowWnd & it, bool a0) { it.ShowWindow(a0); });
static_assert(requires(CWindowWnd & it) { it.Close(); });
static_assert(requires(CWindowWnd & it, UINT a0) { it.SendMessage(a0); });
static_assert(requires(CWindowWnd & it, UINT a0, WPARAM a1) { it.SendMessage(a0, a1); });
static_assert(requires(CWindowWnd & it, UINT a0) { it.PostMessage(a0); });
static_assert(requires(CWindowWnd & it, UINT a0, WPARAM a1) { it.PostMessage(a0, a1); });
static_assert(requires(CWindowWnd & it) { it.ResizeClient(); });
static_assert(requires(CWindowWnd & it, int a0) { it.ResizeClient(a0); });
static_assert(requires(CPaintManagerUI & it, HWND a0) { it.Init(a0); });
static_assert(requires(CPaintManagerUI & it, LPVOID a0, unsigned int a1) {
    it.SetResourceZip(a0, a1);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.SetResourceZip(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, bool a1) { it.SetResourceZip(a0, a1); });
static_assert(requires(CPaintManagerUI & it, DWORD a0) { it.SetDefaultDisabledColor(a0); });
static_assert(requires(CPaintManagerUI & it, DWORD a0) { it.SetDefaultFontColor(a0); });
static_assert(requires(CPaintManagerUI & it, DWORD a0) { it.SetDefaultLinkFontColor(a0); });
static_assert(requires(CPaintManagerUI & it, DWORD a0) { it.SetDefaultLinkHoverFontColor(a0); });
static_assert(requires(CPaintManagerUI & it, DWORD a0) { it.SetDefaultSelectedBkColor(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, int a1, bool a2, bool a3, bool a4,
                       bool a5) { it.SetDefaultFont(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CPaintManagerUI & it) { it.GetCustomFontCount(); });
static_assert(requires(CPaintManagerUI & it, int a0, LPCTSTR a1, int a2, bool a3, bool a4, bool a5,
                       bool a6) { it.AddFont(a0, a1, a2, a3, a4, a5, a6); });
static_assert(requires(CPaintManagerUI & it, HFONT a0) { it.GetFontIndex(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, int a1, bool a2, bool a3, bool a4,
                       bool a5) { it.GetFontIndex(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CPaintManagerUI & it, HFONT a0) { it.RemoveFont(a0); });
static_assert(requires(CPaintManagerUI & it, int a0) { it.RemoveFont(a0); });
static_assert(requires(CPaintManagerUI & it) { it.RemoveAllFonts(); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.GetImageEx(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1) { it.GetImageEx(a0, a1); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2) {
    it.GetImageEx(a0, a1, a2);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2, bool a3) {
    it.GetImageEx(a0, a1, a2, a3);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2, bool a3, bool a4) {
    it.GetImageEx(a0, a1, a2, a3, a4);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.AddImage(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1) { it.AddImage(a0, a1); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2) {
    it.AddImage(a0, a1, a2);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2, bool a3) {
    it.AddImage(a0, a1, a2, a3);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2, bool a3, bool a4) {
    it.AddImage(a0, a1, a2, a3, a4);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1, DWORD a2, bool a3, bool a4,
                       bool a5) { it.AddImage(a0, a1, a2, a3, a4, a5); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, HBITMAP a1, int a2, int a3, bool a4) {
    it.AddImage(a0, a1, a2, a3, a4);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.RemoveImage(a0); });
static_assert(requires(CPaintManagerUI & it) { it.RemoveAllImages(); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.GetImageString(a0); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1) {
    it.AddDefaultAttributeList(a0, a1);
});
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.RemoveDefaultAttributeList(a0); });
static_assert(requires(CPaintManagerUI & it) { it.RemoveAllDefaultAttributeList(); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0, LPCTSTR a1) { it.AddStyle(a0, a1); });
static_assert(requires(CPaintManagerUI & it, LPCTSTR a0) { it.RemoveStyle(a0); });
static_assert(requires(CPaintManagerUI & it) { it.GetStyles(); });
static_assert(requires(CPaintManagerUI & it) { it.RemoveAllStyle(); });
static_assert(requires(CPaintManagerUI & it, CControlUI* a0) { it.InitControls(a0); });
static_assert(requires(CPaintManagerUI & it) { it.SetNextTabControl(); });
static_assert(requires(CPaintManagerUI & it, TNotifyUI& a0) { it.SendNotify(a0); });
static_assert(requires(CPaintManagerUI & it, CControlUI* a0, LPCTSTR a1) {
    it.SendNotify(a0, a1);
});
static_assert(requires(CPaintManagerUI & it, CControlUI* a0, LPCTSTR a1, WPARAM a2) {
    it.SendNotify(a0, a1, a2);
});
static_assert(requires(CPaintManagerUI & it, CControlUI* a0, LPCTSTR a1, WPARAM a2, LPARAM a3) {
    it.SendNotify(a0, a1, a2, a3);
});
static_assert(requires(CPaintManagerUI & it, CControlUI* a0, LPCTSTR a1) {
    it.FindSubControlByClass(a0, a1);
});

} // namespace

namespace interface_test {

std::vector<Declaration> Windows()
{
    return Join({CNotifyPumpProtected::List(), CNotifyPumpOperations(), CWindowWndProtected::List(),
                 CWindowWndOperations(), WindowImplBaseProtected::List(),
                 WindowImplBaseOperations(), CPaintManagerUIOperations(),
                 CIDropTargetOperations()});
}

} // namespace interface_test
