#include "Core/ManagerState.h"

namespace DuiLib {

namespace {

// Messages of the common controls, sent back to the child that told its parent.
constexpr UINT kReflected = WM_USER + 0x1C00;

WORD KeyState()
{
    WORD state = 0;
    if (::GetKeyState(VK_CONTROL) < 0)
        state |= MK_CONTROL;
    if (::GetKeyState(VK_LBUTTON) < 0)
        state |= MK_LBUTTON;
    if (::GetKeyState(VK_RBUTTON) < 0)
        state |= MK_RBUTTON;
    if (::GetKeyState(VK_SHIFT) < 0)
        state |= MK_SHIFT;
    if (::GetKeyState(VK_MENU) < 0)
        state |= MK_ALT;
    return state;
}

// The events whose wParam holds the state of keys and buttons at the time of the message.
bool CarriesKeys(int type)
{
    return type == UIEVENT_MOUSEMOVE || (type >= UIEVENT_BUTTONDOWN && type <= UIEVENT_DBLCLICK);
}

bool IsKeyEvent(int type)
{
    return type > UIEVENT__KEYBEGIN && type < UIEVENT__KEYEND;
}

LRESULT SendBack(HWND child, UINT message, WPARAM wParam, LPARAM lParam)
{
    return child ? ::SendMessageW(child, kReflected + message, wParam, lParam) : 0;
}

} // namespace

TEventUI CPaintManagerUI::State::MakeEvent(int type, WPARAM wParam, LPARAM lParam) const
{
    TEventUI event = {};
    event.Type = type;
    event.dwTimestamp = ::GetTickCount();
    event.ptMouse = mouse;
    event.wKeyState = KeyState();
    event.wParam = wParam;
    event.lParam = lParam;
    if (IsKeyEvent(type))
        event.chKey = static_cast<TCHAR>(wParam);
    else if (CarriesKeys(type))
        event.wKeyState = static_cast<WORD>(LOWORD(wParam) | (event.wKeyState & MK_ALT));
    return event;
}

bool CPaintManagerUI::State::Send(CControlUI* control, TEventUI& event)
{
    if (!control)
        return true;
    const Watch watch(*this, control);
    event.pSender = control;
    control->Event(event);
    return watch.ManagerLives();
}

bool CPaintManagerUI::State::Send(CControlUI* control, int type, WPARAM wParam, LPARAM lParam)
{
    TEventUI event = MakeEvent(type, wParam, lParam);
    return Send(control, event);
}

// True when a filter handled the message.
bool CPaintManagerUI::State::Filter(WalkedList<IMessageFilterUI>& list, UINT message, WPARAM wParam,
                                    LPARAM lParam, LRESULT& result)
{
    return list.Walk([&](IMessageFilterUI* filter) {
        bool handled = false;
        const LRESULT answer = filter->MessageHandler(message, wParam, lParam, handled);
        if (handled)
            result = answer;
        return handled;
    });
}

bool CPaintManagerUI::PreMessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    // A window procedure that offers all its messages here has had this one from the loop already.
    if (const auto passed = std::exchange(m_pState->passedOn, std::nullopt)) {
        if (passed->message == message && passed->wParam == wParam && passed->lParam == lParam &&
            passed->time == ::GetMessageTime())
            return false;
        m_pState->passedOn = passed;
    }
    return m_pState->OfferQueued(message, wParam, lParam, result);
}

bool CPaintManagerUI::State::OfferQueued(UINT message, WPARAM wParam, LPARAM lParam,
                                         LRESULT& result)
{
    const Watch watch(*this);
    if (Filter(preFilters, message, wParam, lParam, result))
        return true;
    if (!watch.ManagerLives() || !root)
        return false;

    switch (message) {
    case WM_KEYDOWN:
        if (wParam == VK_TAB && ::GetKeyState(VK_CONTROL) >= 0)
            manager.SetNextTabControl(::GetKeyState(VK_SHIFT) >= 0);
        return false;
    case WM_SYSCHAR:
        return ActivateShortcut(wParam);
    case WM_SYSKEYDOWN:
        Send(focus, UIEVENT_SYSKEY, wParam, lParam);
        return false;
    default:
        return false;
    }
}

bool CPaintManagerUI::State::ActivateShortcut(WPARAM character)
{
    struct Search {
        wchar_t wanted;
        CControlUI* found;
    } search{Quillet::Text::LowerCase(static_cast<wchar_t>(character)), nullptr};
    const auto match = [](CControlUI* control, LPVOID data) -> CControlUI* {
        auto& wanted = *static_cast<Search*>(data);
        const wchar_t shortcut = control->GetShortcut();
        if (!wanted.found && shortcut && Quillet::Text::LowerCase(shortcut) == wanted.wanted)
            wanted.found = control;
        return wanted.found;
    };
    if (search.wanted)
        root->FindControl(match, &search, UIFIND_VISIBLE | UIFIND_ENABLED | UIFIND_ME_FIRST);
    if (!search.found)
        return false;

    const Watch watch(*this, search.found);
    MoveFocus(search.found, true);
    if (watch.Lives())
        search.found->Activate();
    return true;
}

bool CPaintManagerUI::MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    auto& state = *m_pState;
    if (!state.window)
        return false;
    if (message == kDeferredWorkMessage)
        state.workPosted = false;

    const State::Watch watch(state);
    const bool filtered = state.Filter(state.filters, message, wParam, lParam, result);
    if (!watch.ManagerLives())
        return filtered;
    if (message == WM_DESTROY || message == WM_NCDESTROY)
        state.ReleaseWindow();
    if (filtered) {
        if (HasClientPoint(message))
            state.mouse = PointOf(lParam);
        return true;
    }
    if (!state.HasWindow())
        return false;
    return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
               ? state.HandleMouse(message, wParam, lParam)
               : state.HandleOther(message, wParam, lParam, result);
}

bool CPaintManagerUI::State::HandleOther(UINT message, WPARAM wParam, LPARAM lParam,
                                         LRESULT& result)
{
    const Watch watch(*this);
    switch (message) {
    case kDeferredWorkMessage:
        DeleteDelayed();
        if (watch.ManagerLives())
            DeliverQueued();
        return false;
    case WM_CLOSE:
        CloseWindow();
        return false;
    case WM_ERASEBKGND:
        result = 1;
        return true;
    case WM_PAINT:
        Paint();
        result = 0;
        return true;
    case WM_PRINTCLIENT:
        if (root && wParam) {
            const HDC dc = reinterpret_cast<HDC>(wParam);
            RECT client{};
            ::GetClientRect(window, &client);
            {
                const Quillet::SavedDc saved(dc);
                root->Paint(dc, client, nullptr);
            }
            if (watch.ManagerLives() && (lParam & PRF_CHILDREN) != 0)
                PrintChildren(dc);
        }
        return false;
    case WM_SIZE:
        if (Send(focus, UIEVENT_WINDOWSIZE, wParam, lParam) && root)
            root->NeedUpdate();
        result = 0;
        return true;
    case WM_WINDOWPOSCHANGED:
        // The system asks for no paint of a layered window that appears.
        if (layered && (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_SHOWWINDOW) != 0)
            manager.Invalidate();
        return false;
    case WM_GETMINMAXINFO: {
        auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
        const SIZE smallest = manager.GetMinInfo();
        const SIZE largest = manager.GetMaxInfo();
        if (smallest.cx > 0)
            limits.ptMinTrackSize.x = smallest.cx;
        if (smallest.cy > 0)
            limits.ptMinTrackSize.y = smallest.cy;
        if (largest.cx > 0)
            limits.ptMaxTrackSize.x = largest.cx;
        if (largest.cy > 0)
            limits.ptMaxTrackSize.y = largest.cy;
        return false;
    }
    case WM_TIMER:
        Tick(wParam, lParam);
        return false;
    case WM_MOUSELEAVE:
        tracking = false;
        mouse = {-1, -1};
        HideTip();
        if (!captured)
            MoveHover(nullptr);
        return false;
    case WM_MOUSEHOVER:
        return HoverMouse(lParam);
    case WM_CONTEXTMENU:
        OpenContextMenu(lParam);
        return false;
    case WM_KEYDOWN:
        keyReceiver = focus;
        Send(focus, UIEVENT_KEYDOWN, wParam, lParam);
        return false;
    case WM_KEYUP:
        Send(std::exchange(keyReceiver, nullptr), UIEVENT_KEYUP, wParam, lParam);
        return false;
    case WM_CHAR:
        Send(focus, UIEVENT_CHAR, wParam, lParam);
        return false;
    case WM_SETCURSOR:
        return ShowCursor(lParam);
    case WM_SETFOCUS:
        if (!movingFocus)
            Send(focus, UIEVENT_SETFOCUS, wParam, lParam);
        return false;
    case WM_KILLFOCUS:
        if (captured)
            manager.ReleaseCapture();
        return false;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window)
            captured = false;
        return false;
    case WM_NOTIFY:
        if (!lParam)
            return false;
        result = SendBack(reinterpret_cast<NMHDR*>(lParam)->hwndFrom, message, wParam, lParam);
        return true;
    case WM_COMMAND:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
        result = SendBack(reinterpret_cast<HWND>(lParam), message, wParam, lParam);
        return result != 0;
    default:
        return false;
    }
}

void CPaintManagerUI::State::CloseWindow()
{
    const Watch watch(*this);
    mouse = {-1, -1};
    if (!MoveHover(nullptr))
        return;
    if (!Send(std::exchange(pressed, nullptr), UIEVENT_BUTTONUP))
        return;
    MoveFocus(nullptr, false);
    if (!watch.ManagerLives() || !HasWindow())
        return;
    const HWND owner = ::GetWindow(window, GW_OWNER);
    if (owner && ::GetActiveWindow() == window)
        ::SetFocus(owner);
    if (watch.ManagerLives())
        DestroyTip();
}

} // namespace DuiLib
