#include "fuzz/targets/HiddenWindow.h"

#include <algorithm>

namespace fuzz {

using namespace DuiLib;

namespace {

// The timers of all windows of this thread, instead of the system's own.
class Timers {
public:
    static Timers& Instance()
    {
        static Timers* const timers = new Timers;
        return *timers;
    }

    std::vector<UINT_PTR> Of(HWND window) const
    {
        std::vector<UINT_PTR> ids;
        for (const auto& timer : m_running) {
            if (timer.first == window)
                ids.push_back(timer.second);
        }
        return ids;
    }
    void Forget(HWND window)
    {
        std::erase_if(m_running, [window](const auto& timer) { return timer.first == window; });
    }

private:
    Timers()
        : m_set(L"DuiLib.dll", "USER32.dll", "SetTimer", &Timers::OnSet),
          m_kill(L"DuiLib.dll", "USER32.dll", "KillTimer", &Timers::OnKill)
    {
    }

    static UINT_PTR WINAPI OnSet(HWND window, UINT_PTR id, UINT, TIMERPROC)
    {
        OnKill(window, id);
        Instance().m_running.emplace_back(window, id);
        return id;
    }
    static BOOL WINAPI OnKill(HWND window, UINT_PTR id)
    {
        return std::erase(Instance().m_running, std::pair(window, id)) != 0;
    }

    std::vector<std::pair<HWND, UINT_PTR>> m_running;
    test::ImportHook m_set;
    test::ImportHook m_kill;
};

std::unique_ptr<HiddenWindow>& Shared()
{
    static auto* const shared = new std::unique_ptr<HiddenWindow>;
    return *shared;
}

} // namespace

HiddenWindow::HiddenWindow() : m_canvas(::CreateCompatibleDC(nullptr))
{
    Timers::Instance();
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    m_bitmap.reset(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
    m_previous = ::SelectObject(m_canvas.get(), m_bitmap.get());
    const RECT place{0, 0, kWidth, kHeight};
    Create(nullptr, L"fuzz", WS_POPUP, WS_EX_TOOLWINDOW, place);
}

HiddenWindow::~HiddenWindow()
{
    if (m_hWnd)
        ::DestroyWindow(m_hWnd);
    Pump();
    ::SelectObject(m_canvas.get(), m_previous);
}

LRESULT HiddenWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CREATE) {
        m_manager.Init(m_hWnd, L"fuzz");
        m_manager.AddNotifier(this);
    }
    if (message == WM_DESTROY)
        Timers::Instance().Forget(m_hWnd);
    LRESULT result = 0;
    if (m_manager.MessageHandler(message, wParam, lParam, result))
        return result;
    return CWindowWnd::HandleMessage(message, wParam, lParam);
}

void HiddenWindow::Send(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_hWnd)
        ::SendMessageW(m_hWnd, message, wParam, lParam);
}

void HiddenWindow::LayOutAndPaint()
{
    if (!m_hWnd || !m_manager.GetRoot())
        return;
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    m_manager.GetRoot()->SetPos(client, true);
    Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_canvas.get()), PRF_CLIENT);
}

void HiddenWindow::ShowAndPaint()
{
    if (!m_hWnd)
        return;
    ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
    if (m_hWnd)
        ::UpdateWindow(m_hWnd);
}

void HiddenWindow::Use(std::uint64_t choice)
{
    const auto take = [&choice](unsigned below) {
        const auto taken = static_cast<int>(choice % below);
        choice /= below;
        return taken;
    };
    constexpr WPARAM kKeys[] = {VK_TAB,  VK_RETURN, VK_SPACE, VK_DOWN,  VK_UP,  VK_RIGHT,
                                VK_LEFT, VK_HOME,   VK_END,   VK_PRIOR, VK_NEXT};
    for (int i = 0; i < 3; ++i) {
        const LPARAM place = MAKELPARAM(take(kWidth), take(kHeight));
        Send(WM_MOUSEMOVE, 0, place);
        Send(WM_LBUTTONDOWN, MK_LBUTTON, place);
        Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(take(kWidth), LOWORD(place)));
        Send(WM_LBUTTONUP, 0, place);
        POINT screen{LOWORD(place), HIWORD(place)};
        ::ClientToScreen(m_hWnd, &screen);
        Send(WM_MOUSEWHEEL, MAKEWPARAM(0, take(2) != 0 ? WHEEL_DELTA : -WHEEL_DELTA),
             MAKELPARAM(screen.x, screen.y));
        Send(WM_KEYDOWN, kKeys[take(std::size(kKeys))], 1);
        Send(WM_KEYUP, kKeys[0], 1);
        Send(WM_CHAR, L'a' + take(26), 1);
    }
    Send(WM_MOUSELEAVE, 0, 0);
}

void HiddenWindow::Tick()
{
    for (const UINT_PTR id : Timers::Instance().Of(m_hWnd)) {
        const auto live = Timers::Instance().Of(m_hWnd);
        if (std::find(live.begin(), live.end(), id) != live.end())
            Send(WM_TIMER, id, 0);
    }
}

void HiddenWindow::Pump()
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            continue;
        if (!CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

HiddenWindow& SharedWindow()
{
    auto& shared = Shared();
    if (!shared || !shared->Lives())
        shared = std::make_unique<HiddenWindow>();
    return *shared;
}

void CloseSharedWindow()
{
    Shared().reset();
}

} // namespace fuzz
