#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#if !defined(DPI_ENUMS_DECLARED)
#define DPI_ENUMS_DECLARED

typedef enum PROCESS_DPI_AWARENESS {
    PROCESS_DPI_UNAWARE = 0,
    PROCESS_SYSTEM_DPI_AWARE = 1,
    PROCESS_PER_MONITOR_DPI_AWARE = 2
} PROCESS_DPI_AWARENESS;

typedef enum MONITOR_DPI_TYPE {
    MDT_EFFECTIVE_DPI = 0,
    MDT_ANGULAR_DPI = 1,
    MDT_RAW_DPI = 2,
    MDT_DEFAULT = MDT_EFFECTIVE_DPI
} MONITOR_DPI_TYPE;

#endif

namespace DuiLib {

// The scale of a window: design pixels (96 per inch) to device pixels and back.
class UILIB_API CDPI {
public:
    CDPI(); // 100 percent

    // Dots per inch, effective, horizontal; 96 when the system does not tell.
    static int GetDPIOfMonitor(HMONITOR hMonitor);
    static int GetDPIOfMonitorNearestToPoint(POINT pt);
    static int GetMainMonitorDPI(HWND hWnd = NULL); // of the window's monitor, or the main one

    PROCESS_DPI_AWARENESS GetDPIAwareness();
    BOOL SetDPIAwareness(PROCESS_DPI_AWARENESS Awareness);

    UINT GetDPI();            // 96 when the process is unaware of scaling
    UINT GetScale();          // percent; 100 when the process is unaware of scaling
    void SetScale(UINT uDPI); // takes dots per inch

    int Scale(int iValue); // what is not 0 stays at least 1 (at most -1)
    int ScaleBack(int iValue);
    RECT Scale(RECT rcRect); // position and size are scaled
    void Scale(RECT* pRect);
    void ScaleBack(RECT* pRect);
    POINT Scale(POINT ptPoint);
    void Scale(POINT* pPoint);
    SIZE Scale(SIZE szSize);
    void Scale(SIZE* pSize);

private:
    int m_nScale; // percent
    PROCESS_DPI_AWARENESS m_Awareness;
};

} // namespace DuiLib
