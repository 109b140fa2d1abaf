#pragma once

#include <UIlib.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "quillet/Export.h"

namespace DuiLib {

// A top-level window of the process and what its parent was when it was made.
struct strChildWndhWnd {
    bool bFlag = false; // Published: always false here; applications keep a mark in it
    HWND hWnd = nullptr;
    HWND hParentWnd = nullptr;
};

// The base of all windows: builds the window from its skin, works out the DPI to lay it out with
// and keeps paint manager and resource manager at that DPI.
//
// A derived window supplies GetWindowClassName and GetSkinFile. When it overrides HandleMessage or
// OnCreate it calls this class's version. A skin that cannot be built ends the process.
class QUILLET_API WindowImplBaseEx : public WindowImplBase {
public:
    // Answers a message with (wParam, lParam, handled); the result counts when handled is set.
    using CustomMessageHandler = std::function<LRESULT(WPARAM, LPARAM, BOOL&)>;

    WindowImplBaseEx();
    ~WindowImplBaseEx() override;
    WindowImplBaseEx(const WindowImplBaseEx&) = delete;
    WindowImplBaseEx& operator=(const WindowImplBaseEx&) = delete;

    // Called with (1, 1) when Ctrl+Tab is pressed in any window; null for none.
    static void SetHotkeyCallback(void (*callback)(WPARAM, LPARAM));
    // The parent to record for the windows made from now on.
    static void SetWndParentHwnd(HWND window);

    // DPI, 96 at 100 percent. Only GetScreenSize measures; the others use what it found last.
    HMONITOR GetCurrentMonitor();
    SIZE GetScreenSize();                   // the whole monitor of the window, in pixels
    unsigned GetScreenSizeMaxDPI();         // the largest DPI that the screen has room for
    unsigned GetDPI(unsigned requestedDpi); // the DPI to use for one that the system asks for
    unsigned GetSystemDPI();   // the same for the main monitor, computed once per process
    bool UpdateDPIByMonitor(); // whether this and the main window share the kind of monitor

    // WindowImplBase:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnCreate(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override;
    LRESULT HandleCustomMessage(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override;

    // After a new DPI was applied: WM_TIMER for an announced one, WM_DISPLAYCHANGE for a changed
    // display, with that message's lParam.
    virtual LRESULT OnDPIChanged(UINT message, WPARAM dpi, LPARAM lParam, BOOL& handled);
    // The trace of the DPI computation; nothing happens to it here.
    virtual void WriteLog(int line, std::string function, std::string message);

    static void (*m_hotkeyCallback)(WPARAM, LPARAM);
    static HWND m_parentHwnd;
    static std::atomic<unsigned int> dpiVal; // the usable DPI of the process, 0 before any window
    static std::atomic<unsigned int> dpiSys; // what the system announced last
    static std::vector<strChildWndhWnd> vChildHwndMap; // Published: only grows

protected:
    unsigned m_uDpi = 0;   // the window lays out with it
    SIZE m_szLastScreen{}; // when a display change was last looked at
    SIZE m_szScreen{};     // as last measured
    std::map<UINT, CustomMessageHandler> m_mapCustomMessages;
    unsigned m_uLastTime = 0; // Published: only ever printed
    bool m_bDpiChangePending = false;

private:
    void AttachSkin();
    void ApplyScale();
    void TakeDpiOfProcess();

    LRESULT OnDisplayChange(LPARAM lParam, BOOL& handled);
    void OnDpiAnnounced(unsigned dpi);
    void ApplyAnnouncedDpi(LPARAM lParam, BOOL& handled);
};

} // namespace DuiLib
