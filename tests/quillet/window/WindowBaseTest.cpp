#include "quillet/window/TestWindow.h"

#include <type_traits>

namespace test {
namespace {

using namespace DuiLib;

// What the creation of a window calls, in order.
class CreationCalls {
public:
    CreationCalls()
        : m_setDpi(L"Quillet.dll", "DuiLib.dll", kSetDpi, &CreationCalls::OnSetDpi),
          m_setTimer(L"Quillet.dll", "USER32.dll", "SetTimer", &CreationCalls::OnSetTimer),
          m_killTimer(L"Quillet.dll", "USER32.dll", "KillTimer", &CreationCalls::OnKillTimer)
    {
        Current() = this;
    }
    ~CreationCalls() { Current() = nullptr; }
    CreationCalls(const CreationCalls&) = delete;
    CreationCalls& operator=(const CreationCalls&) = delete;

    explicit operator bool() const { return m_setDpi && m_setTimer && m_killTimer; }
    void Note(std::string call) { calls.push_back(std::move(call)); }

    std::vector<std::string> calls;
    std::vector<UINT_PTR> killed;

private:
#ifdef _MSC_VER
    static constexpr char kSetDpi[] = "?SetDPI@CPaintManagerUI@DuiLib@@QEAAXH@Z";
#else
    static constexpr char kSetDpi[] = "_ZN6DuiLib15CPaintManagerUI6SetDPIEi";
#endif
    static CreationCalls*& Current()
    {
        static CreationCalls* current = nullptr;
        return current;
    }
    static void OnSetDpi(CPaintManagerUI* manager, int dpi)
    {
        Current()->Note("SetDPI " + std::to_string(dpi));
        using SetDpi = void(CPaintManagerUI*, int);
        Current()->m_setDpi.Original<SetDpi>()(manager, dpi);
    }
    static UINT_PTR WINAPI OnSetTimer(HWND, UINT_PTR id, UINT period, TIMERPROC procedure)
    {
        Current()->Note("SetTimer " + std::to_string(id) + " " + std::to_string(period) +
                        (procedure ? " with procedure" : ""));
        return id;
    }
    static BOOL WINAPI OnKillTimer(HWND, UINT_PTR id)
    {
        Current()->killed.push_back(id);
        return TRUE;
    }

    ImportHook m_setDpi;
    ImportHook m_setTimer;
    ImportHook m_killTimer;
};

class WindowBaseTest : public WindowTest {
protected:
    FakeMonitors monitors{SIZE{2560, 1440}};
    FakeMainMonitorDpi monitorDpi{96};
    TestWindow window;
};

TEST_F(WindowBaseTest, CreationTakesTheCaptionAndAddsClipping)
{
    ASSERT_NE(window.Make(WS_POPUP | WS_CAPTION | WS_THICKFRAME), nullptr);
    const LONG style = ::GetWindowLongW(window, GWL_STYLE);
    EXPECT_EQ(style & LONG{WS_CAPTION} & ~LONG{WS_BORDER | WS_DLGFRAME}, 0);
    EXPECT_EQ(style & LONG{WS_CAPTION}, 0);
    EXPECT_NE(style & LONG{WS_CLIPSIBLINGS}, 0);
    EXPECT_NE(style & LONG{WS_CLIPCHILDREN}, 0);
}

TEST_F(WindowBaseTest, CreationBuildsAndAttachesTheSkin)
{
    ASSERT_NE(window.Make(), nullptr);
    ASSERT_NE(window.Manager().GetRoot(), nullptr);
    EXPECT_STREQ(window.Manager().GetRoot()->GetName(), L"root");
    EXPECT_EQ(window.Manager().GetPaintWindow(), window.GetHWND());
    EXPECT_EQ(window.initialised, 1);
}

TEST_F(WindowBaseTest, UnknownElementsAreAskedOfTheWindow)
{
    window.skin = L"<Window><VerticalLayout><Unheard/></VerticalLayout></Window>";
    window.Make();
    EXPECT_EQ(window.createdControls, (std::vector<std::wstring>{L"Unheard"}));
}

TEST_F(WindowBaseTest, TheWindowGetsTheNotificationsOfItsSkin)
{
    struct Listening : TestWindow {
        void Notify(TNotifyUI& notification) override
        {
            types.emplace_back(notification.sType.GetData());
            TestWindow::Notify(notification);
        }
        std::vector<std::wstring> types;
    } listening;
    listening.Make();
    listening.Manager().SendNotify(listening.Manager().GetRoot(), L"custom");
    EXPECT_EQ(std::count(listening.types.begin(), listening.types.end(), L"custom"), 1);
}

TEST_F(WindowBaseTest, TheWindowFiltersMessagesBeforeTheyAreDispatched)
{
    struct Filtering : TestWindow {
        LRESULT MessageHandler(UINT message, WPARAM, LPARAM, bool&) override
        {
            filtered.push_back(message);
            return 0;
        }
        std::vector<UINT> filtered;
    } filtering;
    filtering.Make();
    MSG message{};
    message.hwnd = filtering.GetHWND();
    message.message = WM_CHAR;
    message.wParam = L'a';
    CPaintManagerUI::TranslateMessage(&message);
    EXPECT_EQ(filtering.filtered, (std::vector<UINT>{WM_CHAR}));
}

TEST_F(WindowBaseTest, CreationEndsInTheOperationAndNeverReachesTheBase)
{
    struct Creating : TestWindow {
        LRESULT OnCreate(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
        {
            handledAtStart = handled;
            const LRESULT result = TestWindow::OnCreate(message, wParam, lParam, handled);
            handled = FALSE;
            return result;
        }
        BOOL handledAtStart = TRUE;
    } creating;
    ASSERT_NE(creating.Make(), nullptr);
    EXPECT_FALSE(creating.handledAtStart);
    EXPECT_FALSE(creating.Saw(WM_CREATE));
}

TEST_F(WindowBaseTest, CreationMeasuresTheScreenOnce)
{
    window.Make();
    EXPECT_EQ(window.m_szScreen.cx, 2560);
    EXPECT_EQ(window.m_szScreen.cy, 1440);
    EXPECT_EQ(window.m_szLastScreen.cx, 2560);
    EXPECT_EQ(window.m_szLastScreen.cy, 1440);
    EXPECT_EQ(monitors.asked, window.GetHWND());
}

TEST_F(WindowBaseTest, AScreenKnownBeforeIsNotMeasuredAgain)
{
    window.m_szLastScreen = {1366, 768};
    window.m_szScreen = {1366, 768};
    window.Make();
    EXPECT_EQ(window.m_szScreen.cx, 1366);
    EXPECT_EQ(window.m_szLastScreen.cx, 1366);
}

TEST_F(WindowBaseTest, TheFirstWindowTakesTheSystemDpi)
{
    FakeMainMonitorDpi::dpi = 144;
    window.Make();
    EXPECT_EQ(window.m_uDpi, 144u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 144u);
    EXPECT_EQ(WindowImplBaseEx::dpiSys, 0u);
    EXPECT_EQ(window.ManagerScale(), 150u);
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetScale(), 150u);
    EXPECT_EQ(FakeMainMonitorDpi::window, window.GetHWND());
}

TEST_F(WindowBaseTest, EveryFurtherWindowComputesTheDpiAnew)
{
    WindowImplBaseEx::dpiVal = 192;
    FakeMainMonitorDpi::dpi = 120;
    window.Make();
    EXPECT_EQ(window.m_uDpi, 120u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 120u);

    FakeMainMonitorDpi::dpi = 110; // rounds up to 120, which the monitor has not
    TestWindow second;
    second.Make();
    EXPECT_EQ(second.m_uDpi, 110u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 110u);
    EXPECT_EQ(window.m_uDpi, 120u);
}

TEST_F(WindowBaseTest, TheDpiIsSetBeforeTheInitialisationAndAgainAfterTheTimer)
{
    FakeMainMonitorDpi::dpi = 120;
    CreationCalls calls;
    ASSERT_TRUE(static_cast<bool>(calls));
    window.onInit = [&] { calls.Note("InitWindow"); };
    window.Make();
    EXPECT_EQ(calls.calls, (std::vector<std::string>{"SetDPI 120", "InitWindow",
                                                     "SetTimer 3257 100", "SetDPI 120"}));
}

TEST_F(WindowBaseTest, TheScaleIsSetBeforeTheInitialisation)
{
    FakeMainMonitorDpi::dpi = 120;
    unsigned seen = 0;
    window.onInit = [&] { seen = CResourceManagerEx::GetInstance()->GetScale(); };
    window.Make();
    EXPECT_EQ(seen, 125u);
}

TEST_F(WindowBaseTest, TheTimerRunsUntilTheWindowIsDestroyed)
{
    CreationCalls calls;
    window.Make();
    window.Send(WM_TIMER, 3257);
    window.AnnounceDpi(144);
    window.Send(WM_TIMER, 3257);
    window.Send(WM_TIMER, 3257);
    window.Destroy();
    EXPECT_TRUE(calls.killed.empty());
}

TEST_F(WindowBaseTest, TheDestructorStopsTheTimerOfALivingWindow)
{
    const HWND other = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                         nullptr, nullptr);
    CreationCalls calls;
    {
        // Without its own destruction of the window.
        struct Plain : WindowImplBaseEx {
            using WindowImplBaseEx::m_hWnd;
            LPCTSTR GetWindowClassName() const override { return L"Plain"; }
            CDuiString GetSkinFile() override { return L""; }
        } plain;
        plain.m_hWnd = other;
    }
    EXPECT_EQ(calls.killed, (std::vector<UINT_PTR>{3257}));
    ::DestroyWindow(other);
}

TEST_F(WindowBaseTest, TheDestructorOfADeadWindowStopsNoTimer)
{
    CreationCalls calls;
    {
        TestWindow dying;
        dying.Make();
        dying.Destroy();
    }
    EXPECT_TRUE(calls.killed.empty());
}

TEST_F(WindowBaseTest, AWindowMayEndItselfWhileItIsInitialised)
{
    CreationCalls calls;
    window.onInit = [&] { ::DestroyWindow(window.m_hWnd); };
    window.Make();
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(calls.calls.size(), 1u);
}

TEST_F(WindowBaseTest, TheClassNameChoosesTheManagerThatIsScaled)
{
    struct Row {
        const wchar_t* className;
        unsigned ex, mode, trans;
    };
    for (const auto& [className, ex, mode, trans] :
         {Row{L"TransferWindow", 100, 100, 150}, Row{L"SettingsMainWindow", 100, 150, 100},
          Row{L"AnyOtherWindow", 150, 100, 100}, Row{L"transferwindow", 150, 100, 100},
          Row{L"SETTINGSMAINWINDOW", 150, 100, 100}, Row{L"TransferWindow2", 150, 100, 100}}) {
        ForgetProcessState();
        FakeMainMonitorDpi::dpi = 144;
        TestWindow created(className);
        ASSERT_NE(created.Make(), nullptr);
        EXPECT_EQ(CResourceManagerEx::GetInstance()->GetScale(), ex) << className;
        EXPECT_EQ(CResourceManagerModeEx::GetInstance()->GetScale(), mode) << className;
        EXPECT_EQ(CResourceManagerTransEx::GetInstance()->GetScale(), trans) << className;
        EXPECT_EQ(created.ManagerScale(), 150u) << className;
    }
}

TEST_F(WindowBaseTest, EveryTopLevelWindowIsRecordedForEver)
{
    const auto parent = reinterpret_cast<HWND>(0x99);
    window.Make();
    WindowImplBaseEx::SetWndParentHwnd(parent);
    HWND second = nullptr;
    {
        TestWindow another;
        second = another.Make();
    }
    const auto& records = WindowImplBaseEx::vChildHwndMap;
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].hWnd, window.GetHWND());
    EXPECT_EQ(records[0].hParentWnd, nullptr);
    EXPECT_EQ(records[1].hWnd, second);
    EXPECT_EQ(records[1].hParentWnd, parent);
    EXPECT_FALSE(records[0].bFlag);
    EXPECT_FALSE(records[1].bFlag);
}

TEST_F(WindowBaseTest, AChildWindowIsNotRecorded)
{
    window.Make();
    TestWindow child(L"QuilletTestChild");
    ASSERT_NE(child.Make(WS_CHILD, window), nullptr);
    EXPECT_EQ(WindowImplBaseEx::vChildHwndMap.size(), 1u);
}

TEST_F(WindowBaseTest, TheSettersStoreIntoTheStatics)
{
    const auto callback = [](WPARAM, LPARAM) {};
    WindowImplBaseEx::SetHotkeyCallback(callback);
    EXPECT_EQ(WindowImplBaseEx::m_hotkeyCallback, +callback);
    WindowImplBaseEx::SetHotkeyCallback(nullptr);
    EXPECT_EQ(WindowImplBaseEx::m_hotkeyCallback, nullptr);

    const auto parent = reinterpret_cast<HWND>(0x99);
    WindowImplBaseEx::SetWndParentHwnd(parent);
    EXPECT_EQ(WindowImplBaseEx::m_parentHwnd, parent);
}

TEST_F(WindowBaseTest, AFreshWindowHasNoStateYet)
{
    EXPECT_TRUE(window.m_mapCustomMessages.empty());
    EXPECT_EQ(window.m_szLastScreen.cx, 0);
    EXPECT_EQ(window.m_szLastScreen.cy, 0);
    EXPECT_EQ(window.m_uLastTime, 0u);
    EXPECT_FALSE(window.m_bDpiChangePending);
}

TEST_F(WindowBaseTest, TheBaseDiscardsTheTraceAndAnswersNothingToADpiChange)
{
    struct Plain : WindowImplBaseEx {
        LPCTSTR GetWindowClassName() const override { return L"Plain"; }
        CDuiString GetSkinFile() override { return L""; }
    } plain;
    plain.WriteLog(1, "function", "message");
    BOOL handled = TRUE;
    EXPECT_EQ(plain.OnDPIChanged(WM_TIMER, 96, 0, handled), 0);
    EXPECT_TRUE(handled);
    handled = FALSE;
    plain.OnDPIChanged(WM_TIMER, 96, 0, handled);
    EXPECT_FALSE(handled);
}

TEST_F(WindowBaseTest, TheStaticsAreAtomicWhereThreadsRead)
{
    EXPECT_TRUE((std::is_same_v<decltype(WindowImplBaseEx::dpiVal), std::atomic<unsigned int>>));
    EXPECT_TRUE((std::is_same_v<decltype(WindowImplBaseEx::dpiSys), std::atomic<unsigned int>>));
}

TEST_F(WindowBaseTest, ACustomHandlerGetsTheMessageAndAnswersIt)
{
    window.Make();
    WPARAM gotW = 0;
    LPARAM gotL = 0;
    BOOL handledAtStart = TRUE;
    window.m_mapCustomMessages[WM_APP + 77] = [&](WPARAM w, LPARAM l, BOOL& handled) -> LRESULT {
        gotW = w;
        gotL = l;
        handledAtStart = handled;
        handled = TRUE;
        return 4711;
    };
    EXPECT_EQ(window.Send(WM_APP + 77, 12, 34), 4711);
    EXPECT_EQ(gotW, 12u);
    EXPECT_EQ(gotL, 34);
    EXPECT_FALSE(handledAtStart);
}

TEST_F(WindowBaseTest, AnUnhandledCustomMessageGoesOnToTheBase)
{
    window.Make();
    window.m_mapCustomMessages[WM_APP + 78] = [](WPARAM, LPARAM, BOOL&) -> LRESULT { return 4711; };
    EXPECT_EQ(window.Send(WM_APP + 78), 0);

    BOOL handled = TRUE;
    EXPECT_EQ(window.HandleCustomMessage(WM_APP + 79, 0, 0, handled), 0);
    EXPECT_FALSE(handled);
}

TEST_F(WindowBaseTest, AnEmptyCustomHandlerThrows)
{
    window.m_mapCustomMessages[WM_APP + 80] = nullptr;
    BOOL handled = FALSE;
    EXPECT_THROW(window.HandleCustomMessage(WM_APP + 80, 0, 0, handled), std::bad_function_call);
}

TEST_F(WindowBaseTest, ACustomHandlerMayTakeItselfOut)
{
    window.m_mapCustomMessages[WM_APP + 81] = [&](WPARAM, LPARAM, BOOL& handled) -> LRESULT {
        const std::string kept(1000, 'x');
        window.m_mapCustomMessages.clear();
        handled = TRUE;
        return static_cast<LRESULT>(kept.size());
    };
    BOOL handled = FALSE;
    EXPECT_EQ(window.HandleCustomMessage(WM_APP + 81, 0, 0, handled), 1000);
    EXPECT_TRUE(window.m_mapCustomMessages.empty());
}

TEST_F(WindowBaseTest, ACustomHandlerMayEndTheWindow)
{
    window.Make();
    window.m_mapCustomMessages[WM_APP + 82] = [&](WPARAM, LPARAM, BOOL&) -> LRESULT {
        window.Destroy();
        return 5;
    };
    window.Send(WM_APP + 82);
    EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST_F(WindowBaseTest, OtherMessagesGoToTheBase)
{
    window.Make();
    window.Send(WM_APP + 90);
    EXPECT_TRUE(window.Saw(WM_APP + 90));
}

} // namespace
} // namespace test
