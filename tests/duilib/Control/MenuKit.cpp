#include "duilib/Control/MenuKit.h"

#include "support/ImportHook.h"

#include <algorithm>

namespace test {

namespace {

struct LiveTimer {
    HWND window;
    UINT_PTR id;
};

std::vector<LiveTimer> g_running;
ImportHook* g_set = nullptr;
ImportHook* g_kill = nullptr;

void Forget(HWND window, UINT_PTR id)
{
    std::erase_if(g_running,
                  [=](const LiveTimer& each) { return each.window == window && each.id == id; });
}

UINT_PTR WINAPI OnSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC callback)
{
    Forget(window, id);
    g_running.push_back({window, id});
    return g_set->Original<decltype(::SetTimer)>()(window, id, period, callback);
}

BOOL WINAPI OnKillTimer(HWND window, UINT_PTR id)
{
    Forget(window, id);
    return g_kill->Original<decltype(::KillTimer)>()(window, id);
}

} // namespace

struct MenuClock::Hooks {
    ImportHook set{L"DuiLib.dll", "USER32.dll", "SetTimer", &OnSetTimer};
    ImportHook kill{L"DuiLib.dll", "USER32.dll", "KillTimer", &OnKillTimer};
};

MenuClock::MenuClock() : m_hooks(std::make_unique<Hooks>())
{
    g_set = &m_hooks->set;
    g_kill = &m_hooks->kill;
}

MenuClock::~MenuClock()
{
    g_running.clear();
}

void MenuClock::Tick(HWND window)
{
    const auto running = g_running;
    for (const LiveTimer& each : running) {
        if (each.window == window)
            ::SendMessageW(window, WM_TIMER, each.id, 0);
    }
}

int MenuClock::Running(HWND window) const
{
    return static_cast<int>(std::count_if(g_running.begin(), g_running.end(),
                                          [=](const auto& each) { return each.window == window; }));
}

} // namespace test
