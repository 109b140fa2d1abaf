#include "Core/ManagerState.h"

namespace DuiLib {

bool CPaintManagerUI::State::HandleMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (HasClientPoint(message))
        mouse = PointOf(lParam);
    switch (message) {
    case WM_MOUSEMOVE:
        MoveMouse(wParam, lParam);
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        PressMouse(message, wParam, lParam);
        break;
    case WM_LBUTTONUP:
        ReleaseMouse(wParam, lParam);
        break;
    case WM_RBUTTONDOWN:
        PressOtherButton(UIEVENT_RBUTTONDOWN, wParam, lParam);
        break;
    case WM_RBUTTONUP:
        ReleaseOtherButton(UIEVENT_RBUTTONUP, wParam, lParam);
        break;
    case WM_MBUTTONDOWN:
        PressOtherButton(UIEVENT_MBUTTONDOWN, wParam, lParam);
        break;
    case WM_MBUTTONUP:
        ReleaseOtherButton(UIEVENT_MBUTTONUP, wParam, lParam);
        break;
    case WM_MOUSEWHEEL:
        TurnWheel(wParam, lParam);
        break;
    }
    return false;
}

void CPaintManagerUI::State::MoveMouse(WPARAM wParam, LPARAM lParam)
{
    if (!tracking) {
        TRACKMOUSEEVENT track{sizeof(track), TME_HOVER | TME_LEAVE, window,
                              hoverTime > 0 ? static_cast<DWORD>(hoverTime) : HOVER_DEFAULT};
        tracking = ::TrackMouseEvent(&track) != FALSE;
    }
    if (!root || DragPressed(wParam))
        return;

    const Watch under(*this, manager.FindControl(mouse));
    if (!captured && !MoveHover(under.Control()))
        return;
    Send(pressed ? pressed : under.Control(), UIEVENT_MOUSEMOVE, wParam, lParam);
}

// Mouse-leave and mouse-enter in pairs. False when the manager died.
bool CPaintManagerUI::State::MoveHover(CControlUI* control)
{
    if (control == hover)
        return true;
    HideTip();

    const Watch entered(*this, control);
    CControlUI* const left = std::exchange(hover, nullptr);
    if (left)
        mouseLeave.Remove(left);
    if (!Send(left, UIEVENT_MOUSELEAVE))
        return false;
    mouseLeave.Walk([&](CControlUI* extra) {
        mouseLeave.Remove(extra);
        return extra != entered.Control() && !Send(extra, UIEVENT_MOUSELEAVE);
    });
    if (!entered.ManagerLives())
        return false;

    // A handler may have moved the mouse on, or removed the control.
    if (hover || !entered.Control())
        return true;
    hover = entered.Control();
    return Send(hover, UIEVENT_MOUSEENTER);
}

bool CPaintManagerUI::State::HoverMouse(LPARAM lParam)
{
    tracking = false;
    mouse = PointOf(lParam);
    const Watch under(*this, manager.FindControl(mouse));
    if (!under.Control())
        return false;
    if (!Send(hover, UIEVENT_MOUSEHOVER))
        return true;
    if (under.Lives() && HasWindow())
        ShowTip(*under.Control());
    return true;
}

void CPaintManagerUI::State::PressMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Watch watch(*this);
    HideTip();
    if (!noActivate)
        ::SetFocus(window);
    if (!watch.ManagerLives() || !HasWindow())
        return;
    const Watch under(*this, manager.FindControl(PointOf(lParam)));
    if (!under.Control())
        return;
    pressed = under.Control();
    pressPoint = PointOf(lParam);
    dragAsked = false;
    manager.SetCapture();
    MoveFocus(under.Control(), !noActivate);
    if (!under.Lives())
        return;
    Send(under.Control(), message == WM_LBUTTONDOWN ? UIEVENT_BUTTONDOWN : UIEVENT_DBLCLICK, wParam,
         lParam);
}

void CPaintManagerUI::State::ReleaseMouse(WPARAM wParam, LPARAM lParam)
{
    const Watch watch(*this);
    manager.ReleaseCapture();
    if (watch.ManagerLives())
        Send(std::exchange(pressed, nullptr), UIEVENT_BUTTONUP, wParam, lParam);
}

void CPaintManagerUI::State::PressOtherButton(int type, WPARAM wParam, LPARAM lParam)
{
    const Watch watch(*this);
    HideTip();
    if (!noActivate)
        ::SetFocus(window);
    if (!watch.ManagerLives() || !HasWindow())
        return;
    const Watch under(*this, manager.FindControl(PointOf(lParam)));
    if (!under.Control())
        return;
    if (type == UIEVENT_RBUTTONDOWN)
        rightClicked = under.Control();
    manager.SetCapture();
    MoveFocus(under.Control(), !noActivate);
    if (under.Lives())
        Send(under.Control(), type, wParam, lParam);
}

void CPaintManagerUI::State::ReleaseOtherButton(int type, WPARAM wParam, LPARAM lParam)
{
    const Watch watch(*this);
    manager.ReleaseCapture();
    if (watch.ManagerLives())
        Send(manager.FindControl(PointOf(lParam)), type, wParam, lParam);
}

void CPaintManagerUI::State::TurnWheel(WPARAM wParam, LPARAM lParam)
{
    POINT point = PointOf(lParam);
    ::ScreenToClient(window, &point);
    mouse = point;
    CControlUI* const under = manager.FindControl(point);
    if (!under)
        return;
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    TEventUI event = MakeEvent(UIEVENT_SCROLLWHEEL,
                               MAKEWPARAM(delta < 0 ? SB_LINEDOWN : SB_LINEUP, delta), lParam);
    event.wKeyState = static_cast<WORD>(LOWORD(wParam) | (event.wKeyState & MK_ALT));

    // What was scrolled may have moved another control under the mouse.
    if (Send(under, event) && HasWindow())
        ::SendMessageW(window, WM_MOUSEMOVE, LOWORD(wParam), MAKELPARAM(point.x, point.y));
}

void CPaintManagerUI::State::OpenContextMenu(LPARAM lParam)
{
    CControlUI* const control = std::exchange(rightClicked, nullptr);
    if (lParam != -1) {
        POINT point = PointOf(lParam);
        ::ScreenToClient(window, &point);
        mouse = point;
    }
    Send(control, UIEVENT_CONTEXTMENU, 0, reinterpret_cast<LPARAM>(control));
}

bool CPaintManagerUI::State::ShowCursor(LPARAM lParam)
{
    if (LOWORD(lParam) != HTCLIENT)
        return false;
    if (captured)
        return true;
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(window, &point);
    CControlUI* const under = manager.FindControl(point);
    if (!under || (under->GetControlFlags() & UIFLAG_SETCURSOR) == 0)
        return false;
    TEventUI event = MakeEvent(UIEVENT_SETCURSOR, 0, lParam);
    event.ptMouse = point;
    Send(under, event);
    return true;
}

void CPaintManagerUI::SetCapture()
{
    if (!m_pState->HasWindow())
        return;
    ::SetCapture(m_pState->window);
    m_pState->captured = true;
}

void CPaintManagerUI::ReleaseCapture()
{
    const bool held = std::exchange(m_pState->captured, false);
    if (held || (m_pState->HasWindow() && ::GetCapture() == m_pState->window))
        ::ReleaseCapture();
}

bool CPaintManagerUI::IsCaptured()
{
    return m_pState->captured;
}

} // namespace DuiLib
