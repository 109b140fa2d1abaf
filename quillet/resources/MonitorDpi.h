#pragma once

#include "win32/Windows.h"

namespace Quillet {

// What the system answers when it is asked for the main monitor's effective DPI.
struct MonitorDpi {
    unsigned dpi = USER_DEFAULT_SCREEN_DPI;
    bool succeeded = true; // also when the system is too old to be asked
    DWORD error = ERROR_SUCCESS;
};

MonitorDpi MeasureMainMonitorDpi();

} // namespace Quillet
