#pragma once

#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/ImportHook.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

struct TraceLine {
    int line;
    std::string function;
    std::string message;
};

struct DpiChange {
    UINT message;
    WPARAM dpi;
    LPARAM lParam;
};

// A window of the library that notes what reaches it.
class TestWindow : public DuiLib::WindowImplBaseEx {
public:
    explicit TestWindow(const wchar_t* className = L"QuilletTestWindow") : className(className) {}
    ~TestWindow() override { Destroy(); }

    HWND Make(DWORD style = WS_POPUP, HWND parent = nullptr)
    {
        return Create(parent, L"test", style, 0, 0, 0, 200, 100);
    }
    void Destroy()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    void AnnounceDpi(unsigned dpi)
    {
        RECT suggested{0, 0, 200, 100};
        Send(WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
    }

    std::vector<std::string> Messages() const
    {
        std::vector<std::string> messages;
        for (const auto& trace : traces)
            messages.push_back(trace.message);
        return messages;
    }
    bool Saw(UINT message) const
    {
        return std::find(passedOn.begin(), passedOn.end(), message) != passedOn.end();
    }
    unsigned ManagerScale() { return m_pm.GetDPIObj()->GetScale(); }
    DuiLib::CPaintManagerUI& Manager() { return m_pm; }

    using WindowImplBaseEx::m_bDpiChangePending;
    using WindowImplBaseEx::m_hWnd;
    using WindowImplBaseEx::m_mapCustomMessages;
    using WindowImplBaseEx::m_szLastScreen;
    using WindowImplBaseEx::m_szScreen;
    using WindowImplBaseEx::m_uDpi;
    using WindowImplBaseEx::m_uLastTime;

    // What the window is.
    const wchar_t* className;
    std::wstring skin = L"<Window size=\"200,100\"><VerticalLayout name=\"root\"/></Window>";
    std::wstring skinType;
    std::function<void()> onInit;
    std::function<LRESULT(BOOL& handled)> onDpiChanged;

    // What reached it.
    std::vector<TraceLine> traces;
    std::vector<DpiChange> dpiChanges;
    std::vector<UINT> passedOn; // messages that reached the base and were left over by it
    std::vector<WPARAM> keys;
    std::vector<std::wstring> createdControls;
    int initialised = 0;

    void InitWindow() override
    {
        ++initialised;
        if (onInit)
            onInit();
    }
    LRESULT OnDPIChanged(UINT message, WPARAM dpi, LPARAM lParam, BOOL& handled) override
    {
        dpiChanges.push_back({message, dpi, lParam});
        return onDpiChanged ? onDpiChanged(handled)
                            : WindowImplBaseEx::OnDPIChanged(message, dpi, lParam, handled);
    }
    void WriteLog(int line, std::string function, std::string message) override
    {
        traces.push_back({line, std::move(function), std::move(message)});
    }
    LRESULT HandleCustomMessage(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        passedOn.push_back(message);
        return WindowImplBaseEx::HandleCustomMessage(message, wParam, lParam, handled);
    }
    LRESULT OnKeyDown(UINT, WPARAM key, LPARAM, BOOL& handled) override
    {
        keys.push_back(key);
        handled = FALSE;
        return 0;
    }
    DuiLib::CControlUI* CreateControl(LPCTSTR name) override
    {
        createdControls.emplace_back(name);
        return nullptr;
    }

protected:
    LPCTSTR GetWindowClassName() const override { return className; }
    DuiLib::CDuiString GetSkinFile() override { return skin.c_str(); }
    DuiLib::CDuiString GetSkinType() override { return skinType.c_str(); }
};

// Monitors of any size and place, as the library sees them. A window of no monitor is on the first.
class FakeMonitors {
public:
    explicit FakeMonitors(SIZE screen) : FakeMonitors({RECT{0, 0, screen.cx, screen.cy}}) {}
    explicit FakeMonitors(std::vector<RECT> monitors)
        : rects(std::move(monitors)),
          m_info(L"Quillet.dll", "USER32.dll", "GetMonitorInfoW", &FakeMonitors::OnInfo),
          m_from(L"Quillet.dll", "USER32.dll", "MonitorFromWindow", &FakeMonitors::OnFromWindow),
          m_metrics(L"Quillet.dll", "USER32.dll", "GetSystemMetrics", &FakeMonitors::OnMetrics)
    {
        Current() = this;
    }
    ~FakeMonitors() { Current() = nullptr; }
    FakeMonitors(const FakeMonitors&) = delete;
    FakeMonitors& operator=(const FakeMonitors&) = delete;

    void Resize(LONG width, LONG height) { rects[0] = {0, 0, width, height}; }

    std::vector<RECT> rects;
    HWND onSecond = nullptr; // the window that stands on the second one
    HWND asked = nullptr;
    DWORD flags = 0;
    bool answers = true;

private:
    static FakeMonitors*& Current()
    {
        static FakeMonitors* current = nullptr;
        return current;
    }
    static HMONITOR WINAPI OnFromWindow(HWND window, DWORD flags)
    {
        Current()->asked = window;
        Current()->flags = flags;
        const bool second = window && window == Current()->onSecond;
        return reinterpret_cast<HMONITOR>(INT_PTR{second ? 2 : 1});
    }
    static BOOL WINAPI OnInfo(HMONITOR monitor, LPMONITORINFO info)
    {
        if (!Current()->answers || info->cbSize < sizeof(MONITORINFO))
            return FALSE;
        info->rcMonitor = Current()->rects[reinterpret_cast<INT_PTR>(monitor) - 1];
        info->rcWork = {0, 0, 10, 10}; // must never be taken for the monitor
        return TRUE;
    }
    static int WINAPI OnMetrics(int metric)
    {
        const RECT& primary = Current()->rects[0];
        return metric == SM_CXSCREEN ? primary.right : metric == SM_CYSCREEN ? primary.bottom : 0;
    }

    ImportHook m_info;
    ImportHook m_from;
    ImportHook m_metrics;
};

// The DPI that the toolkit reports for a window's monitor.
class FakeMainMonitorDpi {
public:
    explicit FakeMainMonitorDpi(int answer)
        : m_hook(L"Quillet.dll", "DuiLib.dll", kName, &FakeMainMonitorDpi::Answer)
    {
        dpi = answer;
        window = nullptr;
        windows.clear();
        calls = 0;
    }
    explicit operator bool() const { return static_cast<bool>(m_hook); }

    static inline int dpi = 96;
    static inline HWND window = nullptr; // that was asked for last
    static inline std::vector<HWND> windows;
    static inline int calls = 0;

private:
#ifdef _MSC_VER
    static constexpr char kName[] = "?GetMainMonitorDPI@CDPI@DuiLib@@SAHPEAUHWND__@@@Z";
#else
    static constexpr char kName[] = "_ZN6DuiLib4CDPI17GetMainMonitorDPIEP6HWND__";
#endif
    static int Answer(HWND asked)
    {
        window = asked;
        windows.push_back(asked);
        ++calls;
        return dpi;
    }

    ImportHook m_hook;
};

// Puts the process back to before its first window.
inline void ForgetProcessState()
{
    using Base = DuiLib::WindowImplBaseEx;
    Base::dpiVal = 0;
    Base::dpiSys = 0;
    Base::m_hotkeyCallback = nullptr;
    Base::m_parentHwnd = nullptr;
    Base::vChildHwndMap.clear();
    DuiLib::CResourceManagerEx::GetInstance()->SetScale(96);
    DuiLib::CResourceManagerEx::GetInstance()->SetMainHWND(nullptr);
    DuiLib::CResourceManagerModeEx::GetInstance()->SetScale(96);
    DuiLib::CResourceManagerTransEx::GetInstance()->SetScale(96);
}

class WindowTest : public testing::Test {
protected:
    WindowTest() { ForgetProcessState(); }
    ~WindowTest() override { ForgetProcessState(); }
};

} // namespace test
