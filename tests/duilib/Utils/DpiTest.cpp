#include <UIlib.h>

#include "support/ImportHook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <string>
#include <vector>

using namespace DuiLib;

namespace {

CDPI At(UINT dpi)
{
    CDPI scaling;
    scaling.SetScale(dpi);
    return scaling;
}

// What the replaced functions of Shcore.dll answer.
HRESULT g_result = S_OK;
UINT g_dpi = 96;
HMONITOR g_monitor = nullptr;
PROCESS_DPI_AWARENESS g_awareness = PROCESS_DPI_UNAWARE;

HRESULT WINAPI FakeGetDpiForMonitor(HMONITOR monitor, MONITOR_DPI_TYPE, UINT* x, UINT* y)
{
    g_monitor = monitor;
    if (SUCCEEDED(g_result)) {
        *x = g_dpi;
        *y = g_dpi + 1;
    }
    return g_result;
}

HRESULT WINAPI FakeSetProcessDpiAwareness(PROCESS_DPI_AWARENESS awareness)
{
    if (SUCCEEDED(g_result))
        g_awareness = awareness;
    return g_result;
}

HRESULT WINAPI FakeGetProcessDpiAwareness(HANDLE, PROCESS_DPI_AWARENESS* awareness)
{
    if (SUCCEEDED(g_result))
        *awareness = g_awareness;
    return g_result;
}

bool g_functionsMissing = false;

FARPROC WINAPI FakeGetProcAddress(HMODULE module, LPCSTR name)
{
    const std::string function = HIWORD(reinterpret_cast<ULONG_PTR>(name)) != 0 ? name : "";
    void* fake = nullptr;
    if (function == "GetDpiForMonitor")
        fake = reinterpret_cast<void*>(&FakeGetDpiForMonitor);
    else if (function == "SetProcessDpiAwareness")
        fake = reinterpret_cast<void*>(&FakeSetProcessDpiAwareness);
    else if (function == "GetProcessDpiAwareness")
        fake = reinterpret_cast<void*>(&FakeGetProcessDpiAwareness);
    else
        return ::GetProcAddress(module, name);
    return g_functionsMissing ? nullptr : reinterpret_cast<FARPROC>(fake);
}

// Every library that the toolkit has loaded since the start of the process.
std::vector<std::wstring> g_loaded;
int g_messageBoxes = 0;

HMODULE WINAPI RecordLoadLibrary(LPCWSTR path)
{
    g_loaded.push_back(path);
    return ::LoadLibraryW(path);
}

const test::ImportHook g_libraries(L"DuiLib.dll", "kernel32.dll", "LoadLibraryW",
                                   &RecordLoadLibrary);

int WINAPI CountMessageBox(HWND, LPCWSTR, LPCWSTR, UINT)
{
    ++g_messageBoxes;
    return IDOK;
}

// The monitor of every window, another one than that at the origin.
const auto kOtherMonitor = reinterpret_cast<HMONITOR>(0x1234);
HWND g_askedWindow = nullptr;

HMONITOR WINAPI FakeMonitorFromWindow(HWND window, DWORD)
{
    g_askedWindow = window;
    return kOtherMonitor;
}

class SystemDpiTest : public testing::Test {
protected:
    SystemDpiTest()
    {
        g_result = S_OK;
        g_dpi = 144;
        g_functionsMissing = false;
        g_messageBoxes = 0;
    }

    test::ImportHook addresses{L"DuiLib.dll", "kernel32.dll", "GetProcAddress",
                               &FakeGetProcAddress};
    test::ImportHook boxes{L"DuiLib.dll", "user32.dll", "MessageBoxW", &CountMessageBox};
};

} // namespace

TEST(DpiTest, StartsAtNormalScale)
{
    CDPI scaling;
    EXPECT_EQ(scaling.GetScale(), 100u);
    EXPECT_EQ(scaling.GetDPI(), 96u);
    EXPECT_EQ(scaling.Scale(7), 7);
}

TEST(DpiTest, SetScaleTakesDotsPerInch)
{
    const struct {
        UINT dpi;
        UINT percent;
    } rows[] = {{96, 100}, {120, 125}, {144, 150}, {168, 175}, {192, 200}, {216, 225}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.dpi);
        CDPI scaling = At(row.dpi);
        EXPECT_EQ(scaling.GetScale(), row.percent);
        EXPECT_EQ(scaling.GetDPI(), row.dpi);
    }
}

TEST(DpiTest, ScalesNumbersRounded)
{
    CDPI scaling = At(144);
    EXPECT_EQ(scaling.Scale(10), 15);
    EXPECT_EQ(scaling.Scale(1), 2);
    EXPECT_EQ(scaling.Scale(-10), -15);
    EXPECT_EQ(scaling.ScaleBack(15), 10);
    EXPECT_EQ(scaling.ScaleBack(16), 11);
}

TEST(DpiTest, WhatIsThereDoesNotVanish)
{
    CDPI scaling = At(24);
    EXPECT_EQ(scaling.Scale(1), 1);
    EXPECT_EQ(scaling.Scale(-1), -1);
    EXPECT_EQ(scaling.Scale(0), 0);
}

TEST(DpiTest, ScalesPositionAndSizeOfRectangles)
{
    CDPI scaling = At(120);
    const RECT scaled = scaling.Scale(RECT{1, 3, 4, 5});
    EXPECT_EQ(scaled.left, 1);
    EXPECT_EQ(scaled.top, 4);
    EXPECT_EQ(scaled.right, 1 + 4);
    EXPECT_EQ(scaled.bottom, 4 + 3);

    RECT back = {10, 20, 60, 120};
    scaling.ScaleBack(&back);
    EXPECT_EQ(back.left, 8);
    EXPECT_EQ(back.top, 16);
    EXPECT_EQ(back.right, 48);
    EXPECT_EQ(back.bottom, 96);
}

TEST(DpiTest, ScalesPointsAndSizes)
{
    CDPI scaling = At(192);
    const POINT point = scaling.Scale(POINT{3, -4});
    EXPECT_EQ(point.x, 6);
    EXPECT_EQ(point.y, -8);
    const SIZE size = scaling.Scale(SIZE{5, 6});
    EXPECT_EQ(size.cx, 10);
    EXPECT_EQ(size.cy, 12);
}

TEST(DpiTest, AMonitorHasTheDpiThatTheSystemTells)
{
    const int main = CDPI::GetMainMonitorDPI();
    EXPECT_GE(main, 96);
    EXPECT_EQ(CDPI::GetDPIOfMonitorNearestToPoint({1, 1}), main);
}

TEST_F(SystemDpiTest, TheDpiOfAMonitorIsTheHorizontalOne)
{
    const auto monitor = ::MonitorFromPoint({5, 5}, MONITOR_DEFAULTTONEAREST);
    EXPECT_EQ(CDPI::GetDPIOfMonitor(monitor), 144);
    EXPECT_EQ(g_monitor, monitor);
}

TEST_F(SystemDpiTest, MainMonitorDpiOfAWindowAsksItsMonitor)
{
    const test::ImportHook monitors(L"DuiLib.dll", "user32.dll", "MonitorFromWindow",
                                    &FakeMonitorFromWindow);
    const HWND window = ::CreateWindowW(L"STATIC", L"", WS_POPUP, 10, 10, 50, 50, nullptr, nullptr,
                                        nullptr, nullptr);
    EXPECT_EQ(CDPI::GetMainMonitorDPI(window), 144);
    EXPECT_EQ(g_monitor, kOtherMonitor);
    EXPECT_EQ(g_askedWindow, window);
    ::DestroyWindow(window);

    g_monitor = nullptr;
    EXPECT_EQ(CDPI::GetMainMonitorDPI(), 144);
    EXPECT_EQ(g_monitor, ::MonitorFromPoint({1, 1}, MONITOR_DEFAULTTONEAREST));
}

TEST_F(SystemDpiTest, AFailedQueryAnswersNinetySixWithoutAMessageBox)
{
    g_result = E_INVALIDARG;
    EXPECT_EQ(CDPI::GetDPIOfMonitor(nullptr), 96);
    EXPECT_EQ(CDPI::GetMainMonitorDPI(), 96);
    EXPECT_EQ(g_messageBoxes, 0);
}

TEST_F(SystemDpiTest, OlderSystemsHaveTheDpiOfTheScreen)
{
    g_functionsMissing = true;
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(CDPI::GetMainMonitorDPI(), ::GetDeviceCaps(screen, LOGPIXELSX));
    ::ReleaseDC(nullptr, screen);
    EXPECT_EQ(g_messageBoxes, 0);
}

TEST_F(SystemDpiTest, ShcoreComesFromTheSystemDirectory)
{
    CDPI::GetMainMonitorDPI();
    wchar_t folder[MAX_PATH] = {};
    ::GetSystemDirectoryW(folder, MAX_PATH);

    std::vector<std::wstring> paths;
    std::ranges::copy_if(g_loaded, std::back_inserter(paths), [](std::wstring path) {
        std::ranges::transform(path, path.begin(), ::towlower);
        return path.find(L"shcore") != std::wstring::npos;
    });
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0], std::wstring(folder) + L"\\Shcore.dll");
}

TEST_F(SystemDpiTest, AwarenessIsRememberedOnlyWhenTheSystemAcceptsIt)
{
    CDPI scaling = At(144);
    g_awareness = PROCESS_PER_MONITOR_DPI_AWARE;
    g_result = E_ACCESSDENIED;
    EXPECT_FALSE(scaling.SetDPIAwareness(PROCESS_DPI_UNAWARE));
    EXPECT_EQ(scaling.GetDPIAwareness(), PROCESS_PER_MONITOR_DPI_AWARE);
    EXPECT_EQ(scaling.GetScale(), 150u);

    g_result = S_OK;
    EXPECT_TRUE(scaling.SetDPIAwareness(PROCESS_DPI_UNAWARE));
    EXPECT_EQ(scaling.GetDPIAwareness(), PROCESS_DPI_UNAWARE);
}

TEST_F(SystemDpiTest, AnUnawareProcessDoesNotScale)
{
    CDPI scaling = At(144);
    ASSERT_TRUE(scaling.SetDPIAwareness(PROCESS_DPI_UNAWARE));
    EXPECT_EQ(scaling.GetScale(), 100u);
    EXPECT_EQ(scaling.GetDPI(), 96u);
    EXPECT_EQ(scaling.Scale(10), 10);
    ASSERT_TRUE(scaling.SetDPIAwareness(PROCESS_SYSTEM_DPI_AWARE));
    EXPECT_EQ(scaling.GetScale(), 150u);
}

TEST_F(SystemDpiTest, OlderSystemsTakeEveryAwareness)
{
    g_functionsMissing = true;
    CDPI scaling;
    EXPECT_TRUE(scaling.SetDPIAwareness(PROCESS_SYSTEM_DPI_AWARE));
    EXPECT_EQ(scaling.GetDPIAwareness(), PROCESS_SYSTEM_DPI_AWARE);
}

TEST_F(SystemDpiTest, AwarenessIsWhatTheProcessReports)
{
    g_awareness = PROCESS_SYSTEM_DPI_AWARE;
    CDPI scaling;
    EXPECT_EQ(scaling.GetDPIAwareness(), PROCESS_SYSTEM_DPI_AWARE);
}
