#include "Core/ManagerState.h"

#include <algorithm>

namespace DuiLib {

namespace {

bool HasKeyboard(HWND window)
{
    const HWND holder = ::GetFocus();
    return holder && (holder == window || ::IsChild(window, holder));
}

bool TakesFocus(const CControlUI* control, const CPaintManagerUI* manager)
{
    return control && control->GetManager() == manager && control->IsVisible() &&
           control->IsEnabled();
}

// The stops in the order of the document, and where the focus stands among them.
struct TabStops {
    const CControlUI* focus;
    std::vector<CControlUI*> stops;
    std::size_t before = 0; // stops up to the focus, without it
    bool passed = false;    // the focus has been met
    bool atStop = false;    // and is a stop

    static CControlUI* CALLBACK Collect(CControlUI* control, LPVOID data)
    {
        auto& self = *static_cast<TabStops*>(data);
        const bool isStop = (control->GetControlFlags() & UIFLAG_TABSTOP) != 0;
        if (control == self.focus) {
            self.passed = true;
            self.atStop = isStop;
        } else if (isStop && !self.passed) {
            ++self.before;
        }
        if (isStop)
            self.stops.push_back(control);
        return nullptr;
    }

    CControlUI* Next(bool forward) const
    {
        if (stops.empty())
            return nullptr;
        if (!passed)
            return forward ? stops.front() : stops.back();
        const std::size_t count = stops.size();
        if (forward)
            return stops[(before + (atStop ? 1 : 0)) % count];
        return stops[(before + count - 1) % count];
    }
};

} // namespace

CControlUI* CPaintManagerUI::GetFocus() const
{
    return m_pState->focus;
}

void CPaintManagerUI::SetFocus(CControlUI* control)
{
    m_pState->MoveFocus(control, true);
}

void CPaintManagerUI::State::MoveFocus(CControlUI* control, bool takeKeyboard)
{
    const Watch watch(*this, control);
    if (control && takeKeyboard && HasWindow() &&
        (control == focus ? !HasKeyboard(window) : ::GetFocus() != window)) {
        movingFocus = control != focus;
        ::SetFocus(window);
        if (!watch.ManagerLives())
            return;
        movingFocus = false;
    }
    if (watch.Control() == focus)
        return;

    if (CControlUI* const old = std::exchange(focus, nullptr)) {
        const Watch left(*this, old);
        if (!Send(old, UIEVENT_KILLFOCUS))
            return;
        if (left.Lives())
            manager.SendNotify(old, DUI_MSGTYPE_KILLFOCUS);
        if (!watch.ManagerLives())
            return;
    }

    // A handler that gave the focus to somebody else has decided.
    if (focus || !TakesFocus(watch.Control(), &manager))
        return;
    focus = watch.Control();
    focusOwed = false;
    if (Send(focus, UIEVENT_SETFOCUS) && watch.Control())
        manager.SendNotify(watch.Control(), DUI_MSGTYPE_SETFOCUS);
}

void CPaintManagerUI::SetFocusNeeded(CControlUI* control)
{
    m_pState->focusOwed = true;
    m_pState->owedFocus = control;
    Invalidate();
}

void CPaintManagerUI::State::GiveOwedFocus()
{
    if (!std::exchange(focusOwed, false))
        return;

    // A window that merely appears does not take the keyboard from another one.
    const bool active = ::GetActiveWindow() == ::GetAncestor(window, GA_ROOT);
    if (CControlUI* const owed = std::exchange(owedFocus, nullptr); TakesFocus(owed, &manager))
        MoveFocus(owed, true);
    else
        FocusNext(true, active);
}

bool CPaintManagerUI::SetNextTabControl(bool forward)
{
    auto& state = *m_pState;
    if (!state.root)
        return false;

    // Layout may change what is visible.
    if (state.layoutNeeded && forward) {
        state.focusOwed = true;
        Invalidate();
        return true;
    }
    return state.FocusNext(forward, true);
}

bool CPaintManagerUI::State::FocusNext(bool forward, bool takeKeyboard)
{
    if (!root)
        return false;
    TabStops stops{focus, {}, 0, false, false};
    root->FindControl(&TabStops::Collect, &stops,
                      UIFIND_VISIBLE | UIFIND_ENABLED | UIFIND_ME_FIRST);
    CControlUI* const next = stops.Next(forward);
    if (!next)
        return false;
    MoveFocus(next, takeKeyboard);
    return true;
}

} // namespace DuiLib
