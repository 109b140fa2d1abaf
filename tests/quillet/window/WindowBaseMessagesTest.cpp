#include "quillet/window/TestWindow.h"
#include "support/DebugOutput.h"

namespace test {
namespace {

using namespace DuiLib;
using Lines = std::vector<std::string>;

constexpr char kFunction[] = "DuiLib::WindowImplBaseEx::HandleMessage";

class WindowBaseMessagesTest : public WindowTest {
protected:
    WindowBaseMessagesTest() { Restart(1920, 1080, 96); }

    // Makes the window on a screen of that size, whose DPI the system gives.
    void Restart(LONG width, LONG height, int dpi)
    {
        window.Destroy();
        window.m_szLastScreen = {};
        monitors.Resize(width, height);
        FakeMainMonitorDpi::dpi = dpi;
        window.Make();
        Forget();
    }
    void Forget()
    {
        window.traces.clear();
        window.passedOn.clear();
        window.dpiChanges.clear();
        debug.Clear();
    }
    std::wstring Handle() const
    {
        return std::to_wstring(static_cast<int>(reinterpret_cast<INT_PTR>(window.GetHWND())));
    }
    static unsigned ExScale() { return CResourceManagerEx::GetInstance()->GetScale(); }

    FakeMonitors monitors{SIZE{1920, 1080}};
    FakeMainMonitorDpi monitorDpi{96};
    DebugOutput debug{L"Quillet.dll"};
    TestWindow window;
};

// Ctrl+Tab

class HotkeyTest : public WindowBaseMessagesTest {
protected:
    HotkeyTest()
    {
        calls.clear();
        control = true;
        WindowImplBaseEx::SetHotkeyCallback([](WPARAM w, LPARAM l) { calls.emplace_back(w, l); });
    }

    static SHORT WINAPI KeyState(int key)
    {
        return static_cast<SHORT>(key == VK_CONTROL && control ? 0x8000 : 0);
    }

    using Calls = std::vector<std::pair<WPARAM, LPARAM>>;
    static inline Calls calls;
    static inline bool control = true;
    ImportHook keyState{L"Quillet.dll", "USER32.dll", "GetKeyState", &KeyState};
};

TEST_F(HotkeyTest, ControlTabCallsWithOnesAndTheKeyGoesOn)
{
    window.Send(WM_KEYDOWN, VK_TAB, 0x12345);
    EXPECT_EQ(calls, (Calls{{1, 1}}));
    EXPECT_EQ(window.keys, (std::vector<WPARAM>{VK_TAB}));
}

TEST_F(HotkeyTest, TabAloneNeverCalls)
{
    control = false;
    window.Send(WM_KEYDOWN, VK_TAB);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(window.keys, (std::vector<WPARAM>{VK_TAB}));
}

TEST_F(HotkeyTest, OtherKeysNeverCall)
{
    window.Send(WM_KEYDOWN, VK_RETURN);
    window.Send(WM_KEYUP, VK_TAB);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(window.keys, (std::vector<WPARAM>{VK_RETURN}));
}

TEST_F(HotkeyTest, WithoutACallbackTheKeyStillGoesOn)
{
    WindowImplBaseEx::SetHotkeyCallback(nullptr);
    window.Send(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(window.keys, (std::vector<WPARAM>{VK_TAB}));
}

TEST_F(HotkeyTest, ReachesTheWindowThroughTheMessageLoop)
{
    MSG message{};
    message.hwnd = window.GetHWND();
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    if (!CPaintManagerUI::TranslateMessage(&message))
        ::DispatchMessageW(&message);
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(HotkeyTest, ACallbackMayEndTheWindow)
{
    static TestWindow* target = nullptr;
    target = &window;
    WindowImplBaseEx::SetHotkeyCallback([](WPARAM, LPARAM) { target->Destroy(); });
    window.Send(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_TRUE(window.keys.empty());
}

// WM_DPICHANGED

TEST_F(WindowBaseMessagesTest, AnAnnouncementIsTakenAsItIsAndNotYetApplied)
{
    window.AnnounceDpi(192);
    EXPECT_EQ(WindowImplBaseEx::dpiSys, 192u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 192u);
    EXPECT_EQ(window.m_uDpi, 192u);
    EXPECT_TRUE(window.m_bDpiChangePending);
    EXPECT_EQ(window.ManagerScale(), 100u);
    EXPECT_EQ(ExScale(), 100u);
    EXPECT_TRUE(window.dpiChanges.empty());
    EXPECT_TRUE(window.Saw(WM_DPICHANGED));
}

TEST_F(WindowBaseMessagesTest, AnAnnouncementIsTraced)
{
    window.AnnounceDpi(192);
    EXPECT_EQ(window.Messages(), (Lines{"system dpi changed:192"}));
    EXPECT_EQ(window.traces[0].function, kFunction);
}

TEST_F(WindowBaseMessagesTest, AnAnnouncementWritesTwoDebugLines)
{
    window.AnnounceDpi(192);
    EXPECT_EQ(debug.Lines(),
              (std::vector<std::wstring>{
                  L"WindowImplBaseEx1 tavrin  dpiX:96 sysDpiValue:192 HWND:" + Handle() +
                      L" WindowsName:QuilletTestWindow\n",
                  L"WindowImplBaseEx tavrin  dpiX:96 sysDpiValue:192 HWND:" + Handle() +
                      L" WindowsName:QuilletTestWindow lastTime:0 end \n"}));
}

TEST_F(WindowBaseMessagesTest, AnAnnouncementOfTheCurrentDpiSetsNothing)
{
    WindowImplBaseEx::dpiVal = 77;
    window.AnnounceDpi(96);
    EXPECT_EQ(WindowImplBaseEx::dpiSys, 96u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 77u);
    EXPECT_FALSE(window.m_bDpiChangePending);
    EXPECT_EQ(debug.Lines(),
              (std::vector<std::wstring>{L"WindowImplBaseEx1 tavrin  dpiX:96 sysDpiValue:96 HWND:" +
                                         Handle() + L" WindowsName:QuilletTestWindow\n"}));
    EXPECT_TRUE(window.Saw(WM_DPICHANGED));
}

TEST_F(WindowBaseMessagesTest, AnAnnouncementIsTheHorizontalDpi)
{
    RECT suggested{};
    window.Send(WM_DPICHANGED, MAKEWPARAM(144, 288), reinterpret_cast<LPARAM>(&suggested));
    EXPECT_EQ(window.m_uDpi, 144u);
}

TEST_F(WindowBaseMessagesTest, TheLastTimeIsPrintedAndNeverWritten)
{
    window.m_uLastTime = 4321;
    window.AnnounceDpi(120);
    window.Send(WM_TIMER, 3257);
    EXPECT_NE(debug.Lines()[1].find(L" lastTime:4321 end \n"), std::wstring::npos);
    EXPECT_EQ(window.m_uLastTime, 4321u);
}

TEST_F(WindowBaseMessagesTest, AHandleIsPrintedAsASignedNumberOf32Bits)
{
    // Any window's number serves; this one is negative in 32 bits and beyond them.
    const HWND real = window.m_hWnd;
    window.m_hWnd = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x1FFFFFFF0));
    RECT suggested{};
    window.HandleMessage(WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&suggested));
    window.m_hWnd = real;
    ASSERT_EQ(debug.Lines().size(), 1u);
    EXPECT_NE(debug.Lines()[0].find(L" HWND:-16 "), std::wstring::npos);
}

// WM_TIMER 3257

TEST_F(WindowBaseMessagesTest, TheTimerAppliesWhatWasAnnounced)
{
    Restart(2560, 1440, 96);
    window.AnnounceDpi(144);
    window.Send(WM_TIMER, 3257, 55);
    EXPECT_FALSE(window.m_bDpiChangePending);
    EXPECT_EQ(window.m_uDpi, 144u);
    EXPECT_EQ(window.ManagerScale(), 150u);
    EXPECT_EQ(ExScale(), 150u);
    ASSERT_EQ(window.dpiChanges.size(), 1u);
    EXPECT_EQ(window.dpiChanges[0].message, UINT{WM_TIMER});
    EXPECT_EQ(window.dpiChanges[0].dpi, 144u);
    EXPECT_EQ(window.dpiChanges[0].lParam, 55);
    EXPECT_TRUE(window.Saw(WM_TIMER));
}

TEST_F(WindowBaseMessagesTest, TheTimerLowersTheWindowsDpiOnly)
{
    window.AnnounceDpi(192);
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(window.m_uDpi, 120u);
    EXPECT_EQ(window.ManagerScale(), 125u);
    EXPECT_EQ(ExScale(), 125u);
    EXPECT_EQ(window.dpiChanges[0].dpi, 120u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 192u);

    // Only the next window computes the process's DPI again.
    TestWindow next;
    next.Make();
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 96u);
}

TEST_F(WindowBaseMessagesTest, TheTimerNeverRaisesTheDpi)
{
    Restart(2560, 1440, 96);
    window.AnnounceDpi(110); // rounds up to 120
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(window.m_uDpi, 110u);
    EXPECT_EQ(ExScale(), 115u);
}

TEST_F(WindowBaseMessagesTest, TheTimerWritesThreeDebugLines)
{
    window.AnnounceDpi(192);
    debug.Clear();
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(debug.Lines(),
              (std::vector<std::wstring>{
                  L"WindowImplBaseEx tavrin  dpiX:192 HWND:" + Handle() +
                      L" WindowsName:QuilletTestWindow\n",
                  L"WindowImplBaseEx tavrin  screenSize.cx:1920 screenSize.cy:1080\n",
                  L"WindowImplBaseEx2 tavrin  dpiX:120 dpixMax:120 HWND:" + Handle() +
                      L" WindowsName:QuilletTestWindow\n"}));
}

TEST_F(WindowBaseMessagesTest, TheTimerMeasuresTheNewMonitor)
{
    window.AnnounceDpi(192);
    monitors.Resize(3840, 2160);
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(window.m_szScreen.cx, 3840);
    EXPECT_EQ(window.m_uDpi, 192u);
    EXPECT_EQ(window.m_szLastScreen.cx, 1920);
}

TEST_F(WindowBaseMessagesTest, TheTimerDoesNothingWhenNothingIsPending)
{
    window.Send(WM_TIMER, 3257);
    EXPECT_TRUE(debug.Lines().empty());
    EXPECT_TRUE(window.dpiChanges.empty());
    EXPECT_TRUE(window.Saw(WM_TIMER));

    window.AnnounceDpi(120);
    window.Send(WM_TIMER, 3257);
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(window.dpiChanges.size(), 1u);
}

TEST_F(WindowBaseMessagesTest, OtherTimersDoNotApplyTheDpi)
{
    window.AnnounceDpi(120);
    window.Send(WM_TIMER, 3258);
    EXPECT_TRUE(window.m_bDpiChangePending);
    EXPECT_TRUE(window.Saw(WM_TIMER));
}

TEST_F(WindowBaseMessagesTest, AHandledDpiChangeEndsTheTimerMessage)
{
    window.onDpiChanged = [](BOOL& handled) -> LRESULT {
        EXPECT_FALSE(handled);
        handled = TRUE;
        return 99;
    };
    window.AnnounceDpi(120);
    EXPECT_EQ(window.Send(WM_TIMER, 3257), 0);
    EXPECT_FALSE(window.Saw(WM_TIMER));
}

TEST_F(WindowBaseMessagesTest, ATimerOfADeadWindowIsPassedOn)
{
    struct Dead {
        static BOOL WINAPI IsWindow(HWND) { return FALSE; }
    };
    window.AnnounceDpi(120);
    Forget();
    {
        // Dead for the library alone, so that what it passes on can be seen.
        const ImportHook hook(L"Quillet.dll", "USER32.dll", "IsWindow", &Dead::IsWindow);
        ASSERT_TRUE(static_cast<bool>(hook));
        window.Send(WM_TIMER, 3257);
    }
    EXPECT_TRUE(window.m_bDpiChangePending);
    EXPECT_TRUE(debug.Lines().empty());
    EXPECT_TRUE(window.Saw(WM_TIMER));
}

TEST_F(WindowBaseMessagesTest, AWindowMayEndItselfWhenItsDpiChanges)
{
    window.onDpiChanged = [&](BOOL&) -> LRESULT {
        window.Destroy();
        return 0;
    };
    window.AnnounceDpi(120);
    window.Send(WM_TIMER, 3257);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_FALSE(window.Saw(WM_TIMER));
}

TEST_F(WindowBaseMessagesTest, TheTimerScalesTheManagerOfTheWindowsClass)
{
    TestWindow transfer(L"TransferWindow");
    transfer.Make();
    TestWindow settings(L"SettingsMainWindow");
    settings.Make();

    transfer.AnnounceDpi(120);
    transfer.Send(WM_TIMER, 3257);
    EXPECT_EQ(CResourceManagerTransEx::GetInstance()->GetScale(), 125u);
    EXPECT_EQ(CResourceManagerModeEx::GetInstance()->GetScale(), 100u);

    settings.AnnounceDpi(120);
    settings.Send(WM_TIMER, 3257);
    EXPECT_EQ(CResourceManagerModeEx::GetInstance()->GetScale(), 125u);
    EXPECT_EQ(ExScale(), 100u);
}

// WM_DISPLAYCHANGE

TEST_F(WindowBaseMessagesTest, ADisplayOfTheSameSizeIsOnlyTraced)
{
    window.Send(WM_DISPLAYCHANGE, 32, MAKELPARAM(1920, 1080));
    EXPECT_EQ(window.Messages(), (Lines{"screen size changed:1920*1080 to 1920*1080"}));
    EXPECT_EQ(window.traces[0].function, kFunction);
    EXPECT_TRUE(window.dpiChanges.empty());
    EXPECT_TRUE(window.Saw(WM_DISPLAYCHANGE));
}

TEST_F(WindowBaseMessagesTest, ASmallerDisplayLowersTheDpiAtOnce)
{
    Restart(2560, 1440, 144);
    ASSERT_EQ(window.m_uDpi, 144u);
    monitors.Resize(1920, 1080);

    window.Send(WM_DISPLAYCHANGE, 32, 1234);

    EXPECT_EQ(window.m_uDpi, 120u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 120u);
    EXPECT_EQ(WindowImplBaseEx::dpiSys, 0u);
    EXPECT_EQ(window.ManagerScale(), 125u);
    EXPECT_EQ(ExScale(), 125u);
    EXPECT_EQ(window.m_szLastScreen.cx, 1920);
    ASSERT_EQ(window.dpiChanges.size(), 1u);
    EXPECT_EQ(window.dpiChanges[0].message, UINT{WM_DISPLAYCHANGE});
    EXPECT_EQ(window.dpiChanges[0].dpi, 120u);
    EXPECT_EQ(window.dpiChanges[0].lParam, 1234);
}

TEST_F(WindowBaseMessagesTest, ADisplayChangeIsTracedInThreeLinesAroundTheComputation)
{
    Restart(2560, 1440, 144);
    monitors.Resize(1920, 1080);
    window.Send(WM_DISPLAYCHANGE);
    std::vector<std::string> own;
    for (const auto& trace : window.traces)
        if (trace.function == kFunction)
            own.push_back(trace.message);
    EXPECT_EQ(own, (Lines{"screen size changed:2560*1440 to 1920*1080", "get can used dpi:120",
                          "change dpi by DisplayChange"}));
    EXPECT_EQ(window.traces[1].message, "system request dpi:144");
}

TEST_F(WindowBaseMessagesTest, ADisplayOfTheSameDpiChangesNothingElse)
{
    monitors.Resize(3840, 2160);
    window.Send(WM_DISPLAYCHANGE);
    EXPECT_EQ(window.traces.back().message, "get can used dpi:96");
    EXPECT_EQ(window.m_szLastScreen.cx, 3840);
    EXPECT_TRUE(window.dpiChanges.empty());
    EXPECT_TRUE(window.Saw(WM_DISPLAYCHANGE));
}

TEST_F(WindowBaseMessagesTest, ADifferenceInHeightAloneIsAChange)
{
    monitors.Resize(1920, 1200);
    window.Send(WM_DISPLAYCHANGE);
    EXPECT_EQ(window.m_szLastScreen.cy, 1200);
}

TEST_F(WindowBaseMessagesTest, ADisplayChangeScalesTheMainManagerWhateverTheClass)
{
    monitors.Resize(2560, 1440);
    FakeMainMonitorDpi::dpi = 144;
    TestWindow transfer(L"TransferWindow");
    transfer.Make();
    ASSERT_EQ(CResourceManagerTransEx::GetInstance()->GetScale(), 150u);
    ASSERT_EQ(ExScale(), 100u);

    monitors.Resize(1920, 1080);
    transfer.Send(WM_DISPLAYCHANGE);

    EXPECT_EQ(CResourceManagerTransEx::GetInstance()->GetScale(), 150u);
    EXPECT_EQ(ExScale(), 125u);
}

TEST_F(WindowBaseMessagesTest, AHandledDisplayChangeGivesItsResult)
{
    Restart(2560, 1440, 144);
    monitors.Resize(1920, 1080);
    window.onDpiChanged = [](BOOL& handled) -> LRESULT {
        handled = TRUE;
        return 99;
    };
    EXPECT_EQ(window.Send(WM_DISPLAYCHANGE), 99);
    EXPECT_FALSE(window.Saw(WM_DISPLAYCHANGE));
}

TEST_F(WindowBaseMessagesTest, AnUnhandledDisplayChangeGoesToTheBase)
{
    Restart(2560, 1440, 144);
    monitors.Resize(1920, 1080);
    window.onDpiChanged = [](BOOL&) -> LRESULT { return 99; };
    EXPECT_EQ(window.Send(WM_DISPLAYCHANGE), 0);
    EXPECT_TRUE(window.Saw(WM_DISPLAYCHANGE));
}

} // namespace
} // namespace test
