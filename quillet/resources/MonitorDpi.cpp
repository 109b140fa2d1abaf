#include "quillet/resources/MonitorDpi.h"

#include <UIlib.h>

#include "quillet/resources/SystemLibrary.h"
#include "quillet/resources/WindowsVersion.h"
#include "win32/Handles.h"

namespace Quillet {

MonitorDpi MeasureMainMonitorDpi()
{
    MonitorDpi measured;
    const HMONITOR monitor = ::MonitorFromPoint(POINT{1, 1}, MONITOR_DEFAULTTONEAREST);
    if (!IsWindows7OrLater())
        return measured;

    const UniqueModule shcore(LoadSystemLibrary(L"Shcore.dll"));
    using GetDpiForMonitor = HRESULT WINAPI(HMONITOR, MONITOR_DPI_TYPE, UINT*, UINT*);
    auto* const getDpi = FindExport<GetDpiForMonitor>(shcore.get(), "GetDpiForMonitor");
    if (!getDpi)
        return measured;

    UINT dpiX = USER_DEFAULT_SCREEN_DPI;
    UINT dpiY = USER_DEFAULT_SCREEN_DPI;
    if (FAILED(getDpi(monitor, MDT_EFFECTIVE_DPI, &dpiX, &dpiY))) {
        measured.succeeded = false;
        measured.error = ::GetLastError();
    }
    measured.dpi = dpiX;
    return measured;
}

} // namespace Quillet
