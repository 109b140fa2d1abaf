#pragma once

#include "Core/UIPlatform.h"

#include <algorithm>

// Where popup windows go. Screen coordinates, device pixels.
namespace DuiLib {

inline RECT WorkAreaAt(const RECT& place)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

// The start of a stretch as near to the wanted one as the limits allow; one that is too long
// starts with them.
inline LONG KeepWithin(LONG start, LONG length, LONG from, LONG to)
{
    return (std::max)(from, (std::min)(start, to - length));
}

} // namespace DuiLib
