#include "Core/ManagerState.h"

#include <algorithm>

namespace DuiLib {

namespace {

// The one tool of the tip window. The size of the first version of the record suits every version
// of the common controls.
TTTOOLINFOW ToolOf(HWND window)
{
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    return tool;
}

// Below the cursor, or above it where there is no room; inside the work area of the monitor.
POINT PlaceOf(SIZE tip, POINT cursor)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    const LONG cursorHeight = ::GetSystemMetrics(SM_CYCURSOR) / 2;
    POINT place{cursor.x, cursor.y + cursorHeight};
    if (!::GetMonitorInfoW(::MonitorFromPoint(cursor, MONITOR_DEFAULTTONEAREST), &monitor))
        return place;
    if (place.y + tip.cy > monitor.rcWork.bottom)
        place.y = cursor.y - cursorHeight / 2 - tip.cy;
    place.x = std::max(std::min(place.x, monitor.rcWork.right - tip.cx), monitor.rcWork.left);
    return place;
}

HWND CreateTip(HWND window)
{
    const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    const HWND tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                       WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                       CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr,
                                       CPaintManagerUI::GetInstance(), nullptr);
    if (!tip)
        return nullptr;
    TTTOOLINFOW tool = ToolOf(window);
    wchar_t empty[] = L"";
    tool.lpszText = empty;
    ::SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    return tip;
}

} // namespace

void CPaintManagerUI::State::ShowTip(CControlUI& control)
{
    CDuiString text = control.GetToolTip();
    if (text.IsEmpty()) {
        HideTip();
        return;
    }
    if (!tip)
        tip = CreateTip(window);
    if (!tip)
        return;

    TTTOOLINFOW tool = ToolOf(window);
    tool.rect = control.GetPos();
    tool.lpszText = const_cast<LPTSTR>(text.GetData());
    ::SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, control.GetToolTipWidth());
    ::SendMessageW(tip, TTM_SETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));

    POINT cursor{};
    ::GetCursorPos(&cursor);
    const LRESULT size = ::SendMessageW(tip, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool));
    const POINT place = PlaceOf({LOWORD(size), HIWORD(size)}, cursor);
    ::SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(place.x, place.y));
    ::SendMessageW(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    tipShown = true;
}

void CPaintManagerUI::State::HideTip()
{
    if (!tip || !std::exchange(tipShown, false))
        return;
    TTTOOLINFOW tool = ToolOf(window);
    ::SendMessageW(tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void CPaintManagerUI::State::DestroyTip()
{
    tipShown = false;
    if (tip && ::IsWindow(tip))
        ::DestroyWindow(tip);
    tip = nullptr;
}

} // namespace DuiLib
