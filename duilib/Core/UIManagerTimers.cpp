#include "Core/ManagerState.h"

namespace DuiLib {

namespace {

// Windows use small numbers for timers of their own.
constexpr UINT kFirstTimer = 0x10000000;

// Never the number of a timer that may still run, also not of another manager: a window that died
// may have left its handle to a new one.
UINT NextTimer()
{
    static UINT next = kFirstTimer;
    const UINT timer = next++;
    if (next < kFirstTimer)
        next = kFirstTimer;
    return timer;
}

} // namespace

bool CPaintManagerUI::SetTimer(CControlUI* control, UINT id, UINT milliseconds)
{
    auto& state = *m_pState;
    const std::pair key(control, id);
    if (!control || !state.HasWindow() || state.timers.contains(key))
        return false;
    UINT_PTR timer = NextTimer();
    while (state.timerOwners.contains(timer))
        timer = NextTimer();
    if (!::SetTimer(state.window, timer, milliseconds, nullptr))
        return false;
    state.timers.emplace(key, timer);
    state.timerOwners.emplace(timer, key);
    return true;
}

bool CPaintManagerUI::KillTimer(CControlUI* control, UINT id)
{
    auto& state = *m_pState;
    const auto found = state.timers.find({control, id});
    if (found == state.timers.end())
        return false;
    if (state.HasWindow())
        ::KillTimer(state.window, found->second);
    state.timerOwners.erase(found->second);
    state.timers.erase(found);
    return true;
}

void CPaintManagerUI::KillTimer(CControlUI* control)
{
    auto& timers = m_pState->timers;
    auto timer = timers.lower_bound({control, 0});
    while (timer != timers.end() && timer->first.first == control) {
        if (m_pState->HasWindow())
            ::KillTimer(m_pState->window, timer->second);
        m_pState->timerOwners.erase(timer->second);
        timer = timers.erase(timer);
    }
}

void CPaintManagerUI::RemoveAllTimers()
{
    for (const auto& [key, timer] : m_pState->timers) {
        if (m_pState->HasWindow())
            ::KillTimer(m_pState->window, timer);
    }
    m_pState->timers.clear();
    m_pState->timerOwners.clear();
}

void CPaintManagerUI::State::Tick(WPARAM timer, LPARAM lParam)
{
    const auto found = timerOwners.find(timer);
    if (found == timerOwners.end())
        return;
    const auto [control, id] = found->second;
    Send(control, UIEVENT_TIMER, id, lParam);
}

} // namespace DuiLib
