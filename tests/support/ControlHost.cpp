#include "support/ControlHost.h"

#include "support/ImportHook.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace test {

using namespace DuiLib;

namespace {

// Control timers of host windows, instead of the system's own.
class HostClock {
public:
    static HostClock& Instance()
    {
        static HostClock clock;
        return clock;
    }

    void Adopt(HWND window) { m_timers[window]; }
    void Drop(HWND window) { m_timers.erase(window); }

    std::vector<HostTimer> TimersOf(HWND window) const
    {
        const auto found = m_timers.find(window);
        return found == m_timers.end() ? std::vector<HostTimer>{} : found->second;
    }

private:
    HostClock()
        : m_set(L"DuiLib.dll", "USER32.dll", "SetTimer", &HostClock::OnSetTimer),
          m_kill(L"DuiLib.dll", "USER32.dll", "KillTimer", &HostClock::OnKillTimer)
    {
    }

    static UINT_PTR WINAPI OnSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC callback)
    {
        auto& timers = Instance().m_timers;
        const auto found = timers.find(window);
        if (found == timers.end() || callback)
            return Instance().m_set.Original<decltype(::SetTimer)>()(window, id, period, callback);
        Remove(found->second, id);
        found->second.push_back({id, period});
        return id;
    }

    static BOOL WINAPI OnKillTimer(HWND window, UINT_PTR id)
    {
        auto& timers = Instance().m_timers;
        const auto found = timers.find(window);
        if (found == timers.end())
            return Instance().m_kill.Original<decltype(::KillTimer)>()(window, id);
        return Remove(found->second, id);
    }

    static BOOL Remove(std::vector<HostTimer>& timers, UINT_PTR id)
    {
        return std::erase_if(timers, [id](const HostTimer& timer) { return timer.id == id; }) > 0;
    }

    std::map<HWND, std::vector<HostTimer>> m_timers;
    ImportHook m_set;
    ImportHook m_kill;
};

} // namespace

class ControlHost::HostWindow : public CWindowWnd, public INotifyUI {
public:
    HostWindow(int width, int height)
    {
        const RECT place{0, 0, width, height};
        Create(nullptr, L"host", WS_POPUP, WS_EX_TOOLWINDOW, place);
    }
    ~HostWindow()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    void Notify(TNotifyUI& notification) override
    {
        const auto name = notification.pSender ? notification.pSender->GetName() : CDuiString();
        m_sent.push_back({notification.sType.GetData(), name.GetData(), notification.pSender,
                          notification.wParam, notification.lParam});
    }

    CPaintManagerUI m_manager;
    std::vector<Notification> m_sent;
    WPARAM m_mouseKeys = 0;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletTestHost"; }
    UINT GetClassStyle() const override { return CS_DBLCLKS; }

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CREATE) {
            HostClock::Instance().Adopt(m_hWnd);
            m_manager.Init(m_hWnd, L"host");
            m_manager.AddNotifier(this);
        }
        LRESULT result = 0;
        if (m_manager.MessageHandler(message, wParam, lParam, result))
            return result;
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }

    void OnFinalMessage(HWND window) override { HostClock::Instance().Drop(window); }
};

ControlHost::ControlHost(int width, int height, int dpi)
    : m_window(std::make_unique<HostWindow>(width, height))
{
    Manager().AttachDialog(new CContainerUI);
    if (dpi != 96) {
        Manager().SetDPI(dpi);
        Resize(width, height);
    }
    ::ShowWindow(Window(), SW_SHOWNOACTIVATE);
    Pump();
}

ControlHost::~ControlHost() = default;

void ControlHost::Adopt(CControlUI* control)
{
    static_cast<CContainerUI*>(Root())->Add(control);
    Layout();
}

CControlUI* ControlHost::Load(const wchar_t* skin, IDialogBuilderCallback* callback)
{
    RECT before{};
    ::GetWindowRect(Window(), &before);
    CDialogBuilder builder;
    CControlUI* const root = builder.Create(STRINGorID(skin), nullptr, callback, &Manager());
    if (root) {
        Manager().AttachDialog(root);
        Resize(before.right - before.left, before.bottom - before.top);
        Layout();
        ClearSent();
    }
    return root;
}

CControlUI* ControlHost::FindOrThrow(const wchar_t* name)
{
    CControlUI* const control = Manager().FindControl(name);
    if (!control)
        throw std::runtime_error("the skin has no control of that name");
    return control;
}

CPaintManagerUI& ControlHost::Manager()
{
    return m_window->m_manager;
}

HWND ControlHost::Window() const
{
    return m_window->GetHWND();
}

CControlUI* ControlHost::Root()
{
    return Manager().GetRoot();
}

void ControlHost::Resize(int width, int height)
{
    ::SetWindowPos(Window(), nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlHost::Layout()
{
    if (Manager().IsUpdateNeeded())
        ::InvalidateRect(Window(), nullptr, FALSE);
    ::UpdateWindow(Window());
}

Picture ControlHost::Paint()
{
    Layout();
    RECT client{};
    ::GetClientRect(Window(), &client);
    const Canvas canvas(client.right, client.bottom);
    ::SendMessageW(Window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
    return canvas.Take();
}

Picture ControlHost::Screen() const
{
    RECT client{};
    ::GetClientRect(Window(), &client);
    const Canvas canvas(client.right, client.bottom);
    const HDC window = ::GetDC(Window());
    ::BitBlt(canvas.Dc(), 0, 0, client.right, client.bottom, window, 0, 0, SRCCOPY);
    ::ReleaseDC(Window(), window);
    return canvas.Take();
}

void ControlHost::MoveMouse(int x, int y)
{
    Send(WM_MOUSEMOVE, m_window->m_mouseKeys, MAKELPARAM(x, y));
}

void ControlHost::LeaveMouse()
{
    Send(WM_MOUSELEAVE);
}

void ControlHost::Press(int x, int y)
{
    MoveMouse(x, y);
    m_window->m_mouseKeys = MK_LBUTTON;
    Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
}

void ControlHost::Release(int x, int y)
{
    m_window->m_mouseKeys = 0;
    Send(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void ControlHost::Click(int x, int y)
{
    Press(x, y);
    Release(x, y);
}

void ControlHost::DoubleClick(int x, int y)
{
    Click(x, y);
    m_window->m_mouseKeys = MK_LBUTTON;
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(x, y));
    Release(x, y);
}

void ControlHost::RightClick(int x, int y)
{
    MoveMouse(x, y);
    Send(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
    Send(WM_RBUTTONUP, 0, MAKELPARAM(x, y));
    POINT screen{x, y};
    ::ClientToScreen(Window(), &screen);
    Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Window()), MAKELPARAM(screen.x, screen.y));
}

void ControlHost::Wheel(int x, int y, int delta)
{
    POINT screen{x, y};
    ::ClientToScreen(Window(), &screen);
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MAKELPARAM(screen.x, screen.y));
}

void ControlHost::KeyDown(int virtualKey)
{
    Deliver(WM_KEYDOWN, static_cast<WPARAM>(virtualKey), 1);
}

void ControlHost::KeyUp(int virtualKey)
{
    Deliver(WM_KEYUP, static_cast<WPARAM>(virtualKey), 1);
}

void ControlHost::Key(int virtualKey)
{
    KeyDown(virtualKey);
    KeyUp(virtualKey);
}

void ControlHost::Char(wchar_t character)
{
    Deliver(WM_CHAR, character, 1);
}

void ControlHost::Deliver(UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG queued{};
    queued.hwnd = Window();
    queued.message = message;
    queued.wParam = wParam;
    queued.lParam = lParam;
    if (!CPaintManagerUI::TranslateMessage(&queued))
        ::DispatchMessageW(&queued);
}

LRESULT ControlHost::Send(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendMessageW(Window(), message, wParam, lParam);
}

void ControlHost::Pump()
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (!CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

const std::vector<Notification>& ControlHost::Sent() const
{
    return m_window->m_sent;
}

std::vector<Notification> ControlHost::Sent(const wchar_t* type) const
{
    std::vector<Notification> sent;
    std::copy_if(m_window->m_sent.begin(), m_window->m_sent.end(), std::back_inserter(sent),
                 [type](const Notification& notification) { return notification.type == type; });
    return sent;
}

void ControlHost::ClearSent()
{
    m_window->m_sent.clear();
}

std::vector<HostTimer> ControlHost::Timers() const
{
    return HostClock::Instance().TimersOf(Window());
}

void ControlHost::AdvanceFrames(int count)
{
    for (int frame = 0; frame < count; ++frame) {
        for (const auto& timer : Timers()) {
            const auto live = Timers();
            const bool stillRuns =
                std::any_of(live.begin(), live.end(),
                            [&timer](const HostTimer& other) { return other.id == timer.id; });
            if (stillRuns)
                Send(WM_TIMER, timer.id);
        }
    }
}

} // namespace test
