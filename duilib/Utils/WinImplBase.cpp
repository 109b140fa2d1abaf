#include "Utils/WinImplBase.h"

#include "Core/UIDlgBuilder.h"
#include "win32/TextParse.h"

#include <stdlib.h>

namespace DuiLib {

namespace {

constexpr LPCTSTR kCloseButton = L"closebtn";
constexpr LPCTSTR kMinimiseButton = L"minbtn";
constexpr LPCTSTR kMaximiseButton = L"maxbtn";
constexpr LPCTSTR kRestoreButton = L"restorebtn";

// Controls that only show something.
constexpr LPCTSTR kStaticClasses[] = {
    L"ControlUI",
    L"TextUI",
    L"LabelUI",
    L"ContainerUI",
    L"HorizontalLayoutUI",
    L"VerticalLayoutUI",
    L"TabLayoutUI",
    L"ChildLayoutUI",
    L"DialogLayoutUI",
    L"ProgressContainerUI",
};

bool IsStaticClass(LPCTSTR className)
{
    return std::any_of(std::begin(kStaticClasses), std::end(kStaticClasses), [&](LPCTSTR known) {
        return Quillet::Text::EqualsNoCase(Quillet::Text::View(className), known);
    });
}

bool IsShownAt(CPaintManagerUI& manager, LPCTSTR name, POINT point)
{
    const CControlUI* const control = manager.FindControl(name);
    return control != nullptr && control->IsVisible() && ::PtInRect(&control->GetPos(), point);
}

// The skin's maximise button, or the restore button that stands in its place.
bool IsMaximiseButtonAt(CPaintManagerUI& manager, POINT point)
{
    return IsShownAt(manager, kMaximiseButton, point) || IsShownAt(manager, kRestoreButton, point);
}

void ShowZoomButtons(CPaintManagerUI& manager, bool zoomed)
{
    if (CControlUI* const maximise = manager.FindControl(kMaximiseButton))
        maximise->SetVisible(!zoomed);
    if (CControlUI* const restore = manager.FindControl(kRestoreButton))
        restore->SetVisible(zoomed);
}

// The border under a client point, or HTCLIENT.
LRESULT BorderAt(POINT point, const RECT& client, const RECT& box)
{
    const bool left = point.x < client.left + box.left;
    const bool right = point.x >= client.right - box.right;
    if (point.y < client.top + box.top)
        return left ? HTTOPLEFT : right ? HTTOPRIGHT : HTTOP;
    if (point.y >= client.bottom - box.bottom)
        return left ? HTBOTTOMLEFT : right ? HTBOTTOMRIGHT : HTBOTTOM;
    return left ? HTLEFT : right ? HTRIGHT : HTCLIENT;
}

// Caption: distances from left, top and right, and a height; a negative height is the whole one.
bool IsInCaption(POINT point, const RECT& client, const RECT& caption)
{
    const LONG top = client.top + caption.top;
    const LONG bottom = caption.bottom < 0 ? client.bottom : top + caption.bottom;
    return point.x >= client.left + caption.left && point.x < client.right - caption.right &&
           point.y >= top && point.y < bottom;
}

LPARAM ScreenToClientParameter(HWND window, LPARAM screen)
{
    POINT point = {GET_X_LPARAM(screen), GET_Y_LPARAM(screen)};
    ::ScreenToClient(window, &point);
    return MAKELPARAM(point.x, point.y);
}

WPARAM MouseKeyState()
{
    const struct {
        int key;
        WPARAM bit;
    } keys[] = {{VK_CONTROL, MK_CONTROL},
                {VK_SHIFT, MK_SHIFT},
                {VK_LBUTTON, MK_LBUTTON},
                {VK_RBUTTON, MK_RBUTTON},
                {VK_MBUTTON, MK_MBUTTON}};
    WPARAM state = 0;
    for (const auto& [key, bit] : keys) {
        if (::GetKeyState(key) < 0)
            state |= bit;
    }
    return state;
}

UINT ClientMessageOf(UINT message)
{
    switch (message) {
    case WM_NCMOUSEMOVE:
        return WM_MOUSEMOVE;
    case WM_NCLBUTTONDOWN:
        return WM_LBUTTONDOWN;
    case WM_NCLBUTTONUP:
        return WM_LBUTTONUP;
    case WM_NCLBUTTONDBLCLK:
        return WM_LBUTTONDBLCLK;
    default:
        return 0;
    }
}

void TrackLeavingOfFrame(HWND window)
{
    TRACKMOUSEEVENT tracking{};
    tracking.cbSize = sizeof(tracking);
    tracking.dwFlags = TME_LEAVE | TME_NONCLIENT;
    tracking.hwndTrack = window;
    ::TrackMouseEvent(&tracking);
}

bool IsCursorOverMaximiseButton(HWND window, CPaintManagerUI& manager)
{
    POINT cursor{};
    if (!::GetCursorPos(&cursor) || ::WindowFromPoint(cursor) != window)
        return false;
    ::ScreenToClient(window, &cursor);
    return IsMaximiseButtonAt(manager, cursor);
}

} // namespace

DUI_BEGIN_MESSAGE_MAP(WindowImplBase, CNotifyPump)
DUI_ON_MSGTYPE(DUI_MSGTYPE_CLICK, OnClick)
DUI_END_MESSAGE_MAP()

WindowImplBase::~WindowImplBase() = default;

void WindowImplBase::InitResource() {}

void WindowImplBase::InitWindow() {}

void WindowImplBase::OnFinalMessage(HWND /*hWnd*/)
{
    m_pm.RemovePreMessageFilter(this);
    m_pm.RemoveNotifier(this);
    if (CControlUI* const root = m_pm.GetRoot())
        m_pm.ReapObjects(root);
}

void WindowImplBase::Notify(TNotifyUI& msg)
{
    NotifyPump(msg);
}

void WindowImplBase::OnClick(TNotifyUI& msg)
{
    if (msg.pSender == nullptr)
        return;
    const CDuiString name = msg.pSender->GetName();
    if (name == kCloseButton)
        Close();
    else if (name == kMinimiseButton)
        SendMessage(WM_SYSCOMMAND, SC_MINIMIZE, 0);
    else if (name == kMaximiseButton)
        SendMessage(WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    else if (name == kRestoreButton)
        SendMessage(WM_SYSCOMMAND, SC_RESTORE, 0);
}

BOOL WindowImplBase::IsInStaticControl(CControlUI* pControl)
{
    if (pControl == nullptr)
        return FALSE;
    for (const CControlUI* control = pControl; control != nullptr; control = control->GetParent()) {
        if (!IsStaticClass(control->GetClass()))
            return FALSE;
    }
    return TRUE;
}

CDuiString WindowImplBase::GetSkinType()
{
    return CDuiString();
}

LPCTSTR WindowImplBase::GetManagerName()
{
    return nullptr;
}

LRESULT WindowImplBase::ResponseDefaultKeyEvent(WPARAM wParam)
{
    return wParam == VK_ESCAPE ? TRUE : FALSE;
}

UINT WindowImplBase::GetClassStyle() const
{
    return CS_DBLCLKS;
}

CControlUI* WindowImplBase::CreateControl(LPCTSTR /*pstrClass*/)
{
    return nullptr;
}

LPCTSTR WindowImplBase::QueryControlText(LPCTSTR /*lpstrId*/, LPCTSTR /*lpstrType*/)
{
    return nullptr;
}

LRESULT WindowImplBase::MessageHandler(UINT uMsg, WPARAM wParam, LPARAM /*lParam*/,
                                       bool& /*bHandled*/)
{
    if (uMsg == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE))
        return ResponseDefaultKeyEvent(wParam);
    return FALSE;
}

LRESULT WindowImplBase::OnClose(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnDestroy(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnNcActivate(UINT, WPARAM wParam, LPARAM, BOOL& bHandled)
{
    if (::IsIconic(m_hWnd))
        bHandled = FALSE;
    return wParam == 0 ? TRUE : FALSE;
}

LRESULT WindowImplBase::OnNcCalcSize(UINT, WPARAM, LPARAM, BOOL&)
{
    return 0;
}

LRESULT WindowImplBase::OnNcPaint(UINT, WPARAM, LPARAM, BOOL&)
{
    return 0;
}

LRESULT WindowImplBase::OnNcHitTest(UINT, WPARAM, LPARAM lParam, BOOL&)
{
    POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ::ScreenToClient(m_hWnd, &point);
    RECT client{};
    ::GetClientRect(m_hWnd, &client);

    if (IsMaximiseButtonAt(m_pm, point))
        return HTMAXBUTTON;
    if (!::IsZoomed(m_hWnd)) {
        const LRESULT border = BorderAt(point, client, m_pm.GetSizeBox());
        if (border != HTCLIENT)
            return border;
    }
    if (IsInCaption(point, client, m_pm.GetCaptionRect()) &&
        IsInStaticControl(m_pm.FindControl(point))) {
        return HTCAPTION;
    }
    return HTCLIENT;
}

LRESULT WindowImplBase::OnGetMinMaxInfo(UINT, WPARAM, LPARAM lParam, BOOL&)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromWindow(m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor);

    // The maximised position counts from the corner of the monitor.
    auto& info = *reinterpret_cast<MINMAXINFO*>(lParam);
    const CDuiRect work(monitor.rcWork);
    info.ptMaxPosition = {work.left - monitor.rcMonitor.left, work.top - monitor.rcMonitor.top};
    info.ptMaxSize = {work.GetWidth(), work.GetHeight()};

    const SIZE least = m_pm.GetMinInfo();
    if (least.cx > 0)
        info.ptMinTrackSize.x = least.cx;
    if (least.cy > 0)
        info.ptMinTrackSize.y = least.cy;
    const SIZE largest = m_pm.GetMaxInfo();
    if (largest.cx > 0)
        info.ptMaxTrackSize.x = largest.cx;
    if (largest.cy > 0)
        info.ptMaxTrackSize.y = largest.cy;
    return 0;
}

LRESULT WindowImplBase::OnMouseWheel(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnMouseHover(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnSize(UINT, WPARAM wParam, LPARAM, BOOL& bHandled)
{
    const SIZE round = m_pm.GetRoundCorner();
    if (!::IsIconic(m_hWnd) && (round.cx != 0 || round.cy != 0)) {
        RECT window{};
        ::GetWindowRect(m_hWnd, &window);
        const CDuiSize size(window);
        // The region's right and bottom edges do not belong to it. The window owns the region.
        ::SetWindowRgn(
            m_hWnd, ::CreateRoundRectRgn(0, 0, size.cx + 1, size.cy + 1, round.cx, round.cy), TRUE);
    }
    if (wParam == SIZE_RESTORED)
        ShowZoomButtons(m_pm, false);
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnChar(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnSysCommand(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL&)
{
    constexpr WPARAM kCommand = 0xFFF0; // the system uses the lower bits itself
    if ((wParam & kCommand) == SC_CLOSE) {
        SendMessage(WM_CLOSE);
        return 0;
    }
    const HWND window = m_hWnd;
    const BOOL zoomedBefore = ::IsZoomed(window);
    const LRESULT result = CWindowWnd::HandleMessage(uMsg, wParam, lParam);
    if (::IsWindow(window) && ::IsZoomed(window) != zoomedBefore)
        ShowZoomButtons(m_pm, zoomedBefore == FALSE);
    return result;
}

LRESULT WindowImplBase::OnCreate(UINT, WPARAM, LPARAM, BOOL&)
{
    ::SetWindowLong(m_hWnd, GWL_STYLE, GetStyle() | WS_CLIPSIBLINGS | WS_CLIPCHILDREN);
    m_pm.Init(m_hWnd, GetManagerName());
    m_pm.AddPreMessageFilter(this);

    const CDuiString type = GetSkinType();
    const CDuiString skin = GetSkinFile();
    CDialogBuilder builder;
    CControlUI* const root =
        type.IsEmpty()
            ? builder.Create(STRINGorID(skin.GetData()), nullptr, this, &m_pm)
            : builder.Create(STRINGorID(static_cast<UINT>(_wtoi(skin))), type, this, &m_pm);
    if (root == nullptr) {
        CDuiString text;
        text.Format(L"The skin %s cannot be loaded.\n%s", skin.GetData(),
                    CPaintManagerUI::GetLastErrorText().GetData());
        ::MessageBox(nullptr, text, L"DuiLib", MB_OK | MB_ICONERROR);
        ::ExitProcess(1);
    }
    m_pm.AttachDialog(root);
    m_pm.AddNotifier(this);
    InitWindow();
    return 0;
}

LRESULT WindowImplBase::OnKeyDown(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnKillFocus(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnSetFocus(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnLButtonDown(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnLButtonUp(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::OnMouseMove(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LRESULT WindowImplBase::HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    const HWND window = m_hWnd;

    // The maximise button is not client area, so that the system offers its snap layouts there.
    // The skin's button works all the same: its mouse messages become those of the client area.
    const UINT clientMessage = wParam == HTMAXBUTTON ? ClientMessageOf(uMsg) : 0;
    if (clientMessage != 0) {
        if (uMsg == WM_NCMOUSEMOVE)
            TrackLeavingOfFrame(window);
        uMsg = clientMessage;
        wParam = MouseKeyState();
        lParam = ScreenToClientParameter(window, lParam);
    } else if (uMsg == WM_NCMOUSELEAVE) {
        uMsg = WM_MOUSELEAVE;
        wParam = 0;
        lParam = 0;
    } else if (uMsg == WM_MOUSELEAVE && IsCursorOverMaximiseButton(window, m_pm)) {
        return 0;
    }

    LRESULT result = 0;
    BOOL handled = TRUE;
    switch (uMsg) {
    case WM_CREATE:
        result = OnCreate(uMsg, wParam, lParam, handled);
        break;
    case WM_CLOSE:
        result = OnClose(uMsg, wParam, lParam, handled);
        break;
    case WM_DESTROY:
        result = OnDestroy(uMsg, wParam, lParam, handled);
        break;
    case WM_NCACTIVATE:
        result = OnNcActivate(uMsg, wParam, lParam, handled);
        break;
    case WM_NCCALCSIZE:
        result = OnNcCalcSize(uMsg, wParam, lParam, handled);
        break;
    case WM_NCPAINT:
        result = OnNcPaint(uMsg, wParam, lParam, handled);
        break;
    case WM_NCHITTEST:
        result = OnNcHitTest(uMsg, wParam, lParam, handled);
        break;
    case WM_GETMINMAXINFO:
        result = OnGetMinMaxInfo(uMsg, wParam, lParam, handled);
        break;
    case WM_MOUSEWHEEL:
        result = OnMouseWheel(uMsg, wParam, lParam, handled);
        break;
    case WM_SIZE:
        result = OnSize(uMsg, wParam, lParam, handled);
        break;
    case WM_CHAR:
        result = OnChar(uMsg, wParam, lParam, handled);
        break;
    case WM_SYSCOMMAND:
        result = OnSysCommand(uMsg, wParam, lParam, handled);
        break;
    case WM_KEYDOWN:
        result = OnKeyDown(uMsg, wParam, lParam, handled);
        break;
    case WM_KILLFOCUS:
        result = OnKillFocus(uMsg, wParam, lParam, handled);
        break;
    case WM_SETFOCUS:
        result = OnSetFocus(uMsg, wParam, lParam, handled);
        break;
    case WM_LBUTTONUP:
        result = OnLButtonUp(uMsg, wParam, lParam, handled);
        break;
    case WM_LBUTTONDOWN:
        result = OnLButtonDown(uMsg, wParam, lParam, handled);
        break;
    case WM_MOUSEMOVE:
        result = OnMouseMove(uMsg, wParam, lParam, handled);
        break;
    case WM_MOUSEHOVER:
        result = OnMouseHover(uMsg, wParam, lParam, handled);
        break;
    default:
        handled = FALSE;
        break;
    }

    // Any of these may have ended the window and this object with it.
    if (handled || !::IsWindow(window))
        return result;
    result = HandleCustomMessage(uMsg, wParam, lParam, handled);
    if (handled || !::IsWindow(window))
        return result;
    if (m_pm.MessageHandler(uMsg, wParam, lParam, result) || !::IsWindow(window))
        return result;
    return CWindowWnd::HandleMessage(uMsg, wParam, lParam);
}

LRESULT WindowImplBase::HandleCustomMessage(UINT, WPARAM, LPARAM, BOOL& bHandled)
{
    bHandled = FALSE;
    return 0;
}

LONG WindowImplBase::GetStyle()
{
    return static_cast<LONG>(::GetWindowLong(m_hWnd, GWL_STYLE) & ~WS_CAPTION);
}

} // namespace DuiLib
