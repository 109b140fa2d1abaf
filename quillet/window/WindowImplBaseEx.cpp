#include "quillet/window/WindowImplBaseEx.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "quillet/ToolkitCompat.h"
#include "quillet/resources/ResourceManagerEx.h"
#include "quillet/resources/ResourceManagerModeEx.h"
#include "quillet/resources/ResourceManagerTransEx.h"

namespace DuiLib {

namespace {

// The timer that applies an announced DPI once the window has settled.
constexpr UINT_PTR kDpiTimer = 3257;
constexpr UINT kDpiTimerPeriod = 100; // milliseconds

// The layouts are made for a screen of this size at 96 DPI.
constexpr int kReferenceWidth = 1366;
constexpr int kReferenceHeight = 800;

constexpr unsigned kPercentStep = 25;
constexpr unsigned kRoundUpFrom = 13; // percent above a step
constexpr unsigned kLargestDpi = 216;

constexpr char kScreenTrace[] = "DuiLib::WindowImplBaseEx::GetScreenSizeMaxDPI";
constexpr char kDpiTrace[] = "DuiLib::WindowImplBaseEx::GetDPI";
constexpr char kMessageTrace[] = "DuiLib::WindowImplBaseEx::HandleMessage";

constexpr std::wstring_view kDebugPrefix = L"WindowImplBaseEx tavrin ";
constexpr std::wstring_view kDebugPrefixAnnounced = L"WindowImplBaseEx1 tavrin ";
constexpr std::wstring_view kDebugPrefixCapped = L"WindowImplBaseEx2 tavrin ";

int PercentOf(LONG pixels, int reference)
{
    return static_cast<int>(static_cast<unsigned>(pixels) * 100u) / reference;
}

std::string SizeText(SIZE size)
{
    return std::to_string(size.cx) + "*" + std::to_string(size.cy);
}

SIZE SizeOf(const RECT& rect)
{
    return {rect.right - rect.left, rect.bottom - rect.top};
}

bool MonitorRect(HWND window, RECT& rect)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info))
        return false;
    rect = info.rcMonitor;
    return true;
}

bool IsOnPrimaryMonitor(HWND window)
{
    RECT monitor{};
    return MonitorRect(window, monitor) && monitor.right > 0 && monitor.bottom > 0 &&
           monitor.left < ::GetSystemMetrics(SM_CXSCREEN) &&
           monitor.top < ::GetSystemMetrics(SM_CYSCREEN);
}

// Tells after a call whether the callee has ended the window, and maybe the object with it.
class WindowWatch {
public:
    explicit WindowWatch(HWND window) : m_window(window), m_existed(::IsWindow(window) != FALSE) {}
    bool IsGone() const { return m_existed && !::IsWindow(m_window); }

private:
    HWND m_window;
    bool m_existed;
};

// Published: a handle is printed as the signed decimal of its low 32 bits; log readers expect it.
std::wstring HandleText(HWND window)
{
    return std::to_wstring(static_cast<int>(reinterpret_cast<INT_PTR>(window)));
}

std::wstring_view TextOrEmpty(const wchar_t* text)
{
    return text ? text : L"";
}

void WriteDebugLine(std::initializer_list<std::wstring_view> pieces)
{
    std::wstring line;
    for (const auto piece : pieces)
        line += piece;
    ::OutputDebugStringW(line.c_str());
}

[[noreturn]] void EndWithoutSkin(const CDuiString& skin)
{
    const std::wstring text = std::wstring(L"加载资源文件失败：") + skin.GetData();
    ::MessageBoxW(nullptr, text.c_str(), L"Duilib", MB_OK | MB_ICONHAND);
    ::ExitProcess(1);
}

} // namespace

void (*WindowImplBaseEx::m_hotkeyCallback)(WPARAM, LPARAM) = nullptr;
HWND WindowImplBaseEx::m_parentHwnd = nullptr;
std::atomic<unsigned int> WindowImplBaseEx::dpiVal{0};
std::atomic<unsigned int> WindowImplBaseEx::dpiSys{0};
std::vector<strChildWndhWnd> WindowImplBaseEx::vChildHwndMap;

WindowImplBaseEx::WindowImplBaseEx() = default;

WindowImplBaseEx::~WindowImplBaseEx()
{
    // Published: the timer runs as long as the window; it is stopped nowhere else.
    if (m_hWnd)
        ::KillTimer(m_hWnd, kDpiTimer);
}

void WindowImplBaseEx::SetHotkeyCallback(void (*callback)(WPARAM, LPARAM))
{
    m_hotkeyCallback = callback;
}

void WindowImplBaseEx::SetWndParentHwnd(HWND window)
{
    m_parentHwnd = window;
}

HMONITOR WindowImplBaseEx::GetCurrentMonitor()
{
    return ::MonitorFromWindow(GetHWND(), MONITOR_DEFAULTTONEAREST);
}

SIZE WindowImplBaseEx::GetScreenSize()
{
    RECT monitor{};
    if (MonitorRect(GetHWND(), monitor))
        m_szScreen = SizeOf(monitor);
    return m_szScreen;
}

unsigned WindowImplBaseEx::GetScreenSizeMaxDPI()
{
    // Published: works on the size measured last, so an unmeasured screen allows 96 DPI only. Width
    // and height are compared with a reference whose sides have different bases, as unsigned
    // numbers; callers rely on the results.
    const int ratioX = PercentOf(m_szScreen.cx, kReferenceWidth);
    const int ratioY = PercentOf(m_szScreen.cy, kReferenceHeight);
    const unsigned ratio = std::min(static_cast<unsigned>(ratioX), static_cast<unsigned>(ratioY));
    // Published: the last two labels have no colon; log readers expect it.
    WriteLog(__LINE__, kScreenTrace,
             "screen size:" + SizeText(m_szScreen) + " ratioX:" + std::to_string(ratioX) +
                 " ratioY" + std::to_string(ratioY) + " ratio" + std::to_string(ratio));

    const unsigned rounded = std::max(ratio / kPercentStep * kPercentStep, 100u);
    WriteLog(__LINE__, kScreenTrace, "round ratio by 25%:" + std::to_string(rounded));

    const unsigned maxDpi = rounded * USER_DEFAULT_SCREEN_DPI / 100;
    WriteLog(__LINE__, kScreenTrace, "fix ratio by 0.96:" + std::to_string(maxDpi));
    return maxDpi;
}

unsigned WindowImplBaseEx::GetDPI(unsigned requestedDpi)
{
    WriteLog(__LINE__, kDpiTrace, "system request dpi:" + std::to_string(requestedDpi));

    const unsigned percent = requestedDpi * 100 / USER_DEFAULT_SCREEN_DPI;
    WriteLog(__LINE__, kDpiTrace, "system dpi by 0.96:" + std::to_string(percent));

    // Published: 12 percent above a step still go down, 13 go up.
    const unsigned step = percent % kPercentStep >= kRoundUpFrom ? kPercentStep : 0;
    WriteLog(__LINE__, kDpiTrace, "system dpi round:" + std::to_string(step));

    const unsigned wholeSteps = requestedDpi * 100 / (USER_DEFAULT_SCREEN_DPI * kPercentStep);
    const unsigned dpi = (wholeSteps * kPercentStep + step) * USER_DEFAULT_SCREEN_DPI / 100;
    WriteLog(__LINE__, kDpiTrace, "system dpi:" + std::to_string(dpi));

    // Published: the screen is evaluated, and traced, afresh for each comparison and each value;
    // log readers count the lines.
    const auto cap = [this] {
        return kLargestDpi < GetScreenSizeMaxDPI() ? kLargestDpi : GetScreenSizeMaxDPI();
    };
    return dpi < cap() ? dpi : cap();
}

unsigned WindowImplBaseEx::GetSystemDPI()
{
    // Published: computed once; afterwards only windows and display changes write it.
    if (const unsigned known = dpiVal)
        return known;

    // Rounding may go up, but never beyond what the monitor has.
    const unsigned monitorDpi = Quillet::Toolkit::MonitorDpiOf(GetHWND());
    const unsigned usable = std::min(GetDPI(monitorDpi), monitorDpi);
    dpiVal.exchange(usable);
    unsigned unset = 0; // in case that another thread has reset it meanwhile
    dpiVal.compare_exchange_strong(unset, usable);
    return dpiVal;
}

bool WindowImplBaseEx::UpdateDPIByMonitor()
{
    return IsOnPrimaryMonitor(GetHWND()) ==
           IsOnPrimaryMonitor(CResourceManagerEx::GetInstance()->GetMainHWND());
}

LRESULT WindowImplBaseEx::OnCreate(UINT, WPARAM, LPARAM, BOOL&)
{
    const HWND window = m_hWnd;
    LONG style = ::GetWindowLongW(window, GWL_STYLE);
    style = (style & ~static_cast<LONG>(WS_CAPTION)) | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    ::SetWindowLongW(window, GWL_STYLE, style);

    m_pm.Init(window, GetManagerName());
    if (!(style & WS_CHILD))
        vChildHwndMap.push_back({false, window, m_parentHwnd});
    m_pm.AddPreMessageFilter(this);
    AttachSkin();

    if (m_szLastScreen.cx == 0)
        m_szLastScreen = GetScreenSize();
    TakeDpiOfProcess();
    ApplyScale();

    const WindowWatch watch(window);
    InitWindow();
    if (watch.IsGone())
        return 0;
    ::SetTimer(window, kDpiTimer, kDpiTimerPeriod, nullptr);
    // Published: the DPI is set a second time, after the skin's own initialisation.
    m_pm.SetDPI(static_cast<int>(m_uDpi));
    return 0;
}

void WindowImplBaseEx::AttachSkin()
{
    const CDuiString skin = GetSkinFile();
    const CDuiString type = GetSkinType();
    CDialogBuilder builder;
    CControlUI* const root =
        type.IsEmpty() ? builder.Create(STRINGorID(skin.GetData()), nullptr, this, &m_pm, nullptr)
                       : builder.Create(STRINGorID(static_cast<UINT>(_wtoi(skin))), type, this,
                                        &m_pm, nullptr);
    // Published: a window without its skin ends the process.
    if (!root)
        EndWithoutSkin(skin);
    m_pm.AttachDialog(root);
    m_pm.AddNotifier(this);
}

void WindowImplBaseEx::TakeDpiOfProcess()
{
    // Published: every window after the first computes the process's DPI anew.
    if (dpiVal != 0) {
        const unsigned monitorDpi = Quillet::Toolkit::MonitorDpiOf(m_hWnd);
        dpiVal = std::min(monitorDpi, GetDPI(monitorDpi));
    } else {
        GetSystemDPI();
    }
    m_uDpi = dpiVal;
}

void WindowImplBaseEx::ApplyScale()
{
    // Published: the class name, compared exactly, decides which one manager is scaled.
    const std::wstring_view className = TextOrEmpty(GetWindowClassName());
    if (className == L"TransferWindow")
        CResourceManagerTransEx::GetInstance()->SetScale(m_uDpi);
    else if (className == L"SettingsMainWindow")
        CResourceManagerModeEx::GetInstance()->SetScale(m_uDpi);
    else
        CResourceManagerEx::GetInstance()->SetScale(m_uDpi);
    m_pm.SetDPI(static_cast<int>(m_uDpi));
}

LRESULT WindowImplBaseEx::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const WindowWatch watch(m_hWnd);
    BOOL handled = FALSE;
    LRESULT result = 0;
    switch (message) {
    case WM_CREATE:
        // Published: creation ends here; the base never sees the message.
        return OnCreate(message, wParam, lParam, handled);

    case WM_DISPLAYCHANGE:
        result = OnDisplayChange(lParam, handled);
        break;

    case WM_KEYDOWN:
        // Published: the callback gets (1, 1) and the key still goes its way.
        if (wParam == VK_TAB && ::GetKeyState(VK_CONTROL) < 0 && m_hotkeyCallback)
            m_hotkeyCallback(1, 1);
        break;

    case WM_DPICHANGED:
        OnDpiAnnounced(LOWORD(wParam));
        break;

    case WM_TIMER:
        if (wParam == kDpiTimer && m_bDpiChangePending && ::IsWindow(m_hWnd))
            ApplyAnnouncedDpi(lParam, handled);
        break;
    }
    if (handled || watch.IsGone())
        return result;
    return WindowImplBase::HandleMessage(message, wParam, lParam);
}

LRESULT WindowImplBaseEx::OnDisplayChange(LPARAM lParam, BOOL& handled)
{
    const SIZE screen = GetScreenSize();
    WriteLog(__LINE__, kMessageTrace,
             "screen size changed:" + SizeText(m_szLastScreen) + " to " + SizeText(screen));
    if (screen.cx == m_szLastScreen.cx && screen.cy == m_szLastScreen.cy)
        return 0;

    m_szLastScreen = screen;
    const unsigned usable = GetDPI(m_uDpi);
    WriteLog(__LINE__, kMessageTrace, "get can used dpi:" + std::to_string(usable));
    if (usable == m_uDpi)
        return 0;

    WriteLog(__LINE__, kMessageTrace, "change dpi by DisplayChange");
    dpiVal = usable;
    m_uDpi = usable;
    // Published: a display change scales this manager whatever the window's class is.
    CResourceManagerEx::GetInstance()->SetScale(usable);
    m_pm.SetDPI(static_cast<int>(usable));
    return OnDPIChanged(WM_DISPLAYCHANGE, usable, lParam, handled);
}

// Published: the announced DPI is taken as it is; the timer applies it, and lowers it where needed.
void WindowImplBaseEx::OnDpiAnnounced(unsigned dpi)
{
    WriteLog(__LINE__, kMessageTrace, "system dpi changed:" + std::to_string(dpi));
    dpiSys = dpi;

    const std::wstring announced = std::to_wstring(dpi);
    const std::wstring handle = HandleText(m_hWnd);
    const std::wstring_view className = TextOrEmpty(GetWindowClassName());
    // Published: the prefixes differ, and a blank ends each and begins the next label.
    WriteDebugLine({kDebugPrefixAnnounced, L" dpiX:", std::to_wstring(m_uDpi), L" sysDpiValue:",
                    announced, L" HWND:", handle, L" WindowsName:", className, L"\n"});
    if (dpi == m_uDpi)
        return;

    WriteDebugLine({kDebugPrefix, L" dpiX:", std::to_wstring(m_uDpi), L" sysDpiValue:", announced,
                    L" HWND:", handle, L" WindowsName:", className, L" lastTime:",
                    std::to_wstring(m_uLastTime), L" end \n"});
    dpiVal = dpi;
    m_uDpi = dpi;
    m_bDpiChangePending = true;
}

void WindowImplBaseEx::ApplyAnnouncedDpi(LPARAM lParam, BOOL& handled)
{
    const std::wstring handle = HandleText(m_hWnd);
    const std::wstring_view className = TextOrEmpty(GetWindowClassName());
    WriteDebugLine({kDebugPrefix, L" dpiX:", std::to_wstring(m_uDpi), L" HWND:", handle,
                    L" WindowsName:", className, L"\n"});

    const SIZE screen = GetScreenSize();
    WriteDebugLine({kDebugPrefix, L" screenSize.cx:", std::to_wstring(screen.cx),
                    L" screenSize.cy:", std::to_wstring(screen.cy), L"\n"});

    // Published: only the window's DPI is lowered; dpiVal keeps what was announced.
    const unsigned usable = GetDPI(m_uDpi);
    m_uDpi = std::min(m_uDpi, usable);
    WriteDebugLine({kDebugPrefixCapped, L" dpiX:", std::to_wstring(m_uDpi), L" dpixMax:",
                    std::to_wstring(usable), L" HWND:", handle, L" WindowsName:", className,
                    L"\n"});

    m_bDpiChangePending = false;
    ApplyScale();
    OnDPIChanged(WM_TIMER, m_uDpi, lParam, handled);
}

LRESULT WindowImplBaseEx::HandleCustomMessage(UINT message, WPARAM wParam, LPARAM lParam,
                                              BOOL& handled)
{
    handled = FALSE;
    const WindowWatch watch(m_hWnd);
    const auto found = m_mapCustomMessages.find(message);
    if (found != m_mapCustomMessages.end()) {
        // A copy, because a handler may take itself out of the map.
        const CustomMessageHandler handler = found->second;
        // Published: an empty handler raises std::bad_function_call.
        const LRESULT result = handler(wParam, lParam, handled);
        if (handled || watch.IsGone())
            return result;
    }
    return WindowImplBase::HandleCustomMessage(message, wParam, lParam, handled);
}

LRESULT WindowImplBaseEx::OnDPIChanged(UINT, WPARAM, LPARAM, BOOL&)
{
    return 0;
}

void WindowImplBaseEx::WriteLog(int, std::string, std::string) {}

} // namespace DuiLib
