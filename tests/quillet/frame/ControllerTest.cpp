#include "support/ImportHook.h"
#include "support/TempFolder.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <new>
#include <string>
#include <thread>
#include <type_traits>

using namespace DuiLib;
using test::FrameHost;
using test::RecordingController;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr UINT kPrivateMessage = WM_USER + 500;

// Identification numbers. Each test has a process of its own, so the counters are fresh unless the
// tests run in one.

TEST(ControllerIdTest, MessageNumbersCountUpwardsFrom20000)
{
    class Probe : public UIController {
    public:
        static UINT Next() { return m_msgBaseId; }
    };
    const UINT next = Probe::Next();
    EXPECT_GE(next, 20000u);
    EXPECT_EQ(RecordingController::GenerateMsgId(), next);
    EXPECT_EQ(RecordingController::GenerateMsgId(), next + 1);
    EXPECT_EQ(RecordingController::GenerateMsgId(), next + 2);
}

TEST(ControllerIdTest, TimersOfAllControllersShareOneCounterWithGenerateTimerId)
{
    FrameHost host;
    host.Make();
    const UINT first = RecordingController::GenerateTimerId();
    EXPECT_GE(first, 1000u);
    EXPECT_EQ(host.first->SetTimer(1000, [] {}), first + 1);
    EXPECT_EQ(host.second->SetTimer(1000, [] {}), first + 2);
    EXPECT_EQ(RecordingController::GenerateTimerId(), first + 3);
}

// The counters as any controller sees them; they are restored for tests in the same process.
class CounterProbe : public UIController {
public:
    CounterProbe() : m_timers(m_timerBaseId), m_messages(m_msgBaseId) {}
    ~CounterProbe()
    {
        m_timerBaseId = m_timers;
        m_msgBaseId = m_messages;
    }
    using UIController::GenerateMsgId;
    using UIController::GenerateTimerId;
    using UIController::m_msgBaseId;
    using UIController::m_timerBaseId;

private:
    UINT m_timers;
    UINT m_messages;
};

TEST(ControllerIdTest, TheCountersAreNotGuardedAgainstWrappingRound)
{
    const CounterProbe probe;
    CounterProbe::m_timerBaseId = 0xFFFFFFFF;
    CounterProbe::m_msgBaseId = 0xFFFFFFFF;
    EXPECT_EQ(CounterProbe::GenerateTimerId(), 0xFFFFFFFFu);
    EXPECT_EQ(CounterProbe::GenerateTimerId(), 0u);
    EXPECT_EQ(CounterProbe::GenerateMsgId(), 0xFFFFFFFFu);
    EXPECT_EQ(CounterProbe::GenerateMsgId(), 0u);
}

TEST(ControllerIdTest, NumbersThatTheLibraryUsesItselfAreNotSkipped)
{
    const CounterProbe probe;
    FrameHost host;
    host.Make();
    for (const UINT taken : {3257u, 9001u}) {
        CounterProbe::m_timerBaseId = taken;
        int ticks = 0;
        EXPECT_EQ(host.first->SetTimer(100000, [&] { ++ticks; }), taken);
        host.Send(WM_TIMER, taken);
        EXPECT_EQ(ticks, 1);
        host.first->KillTimer(taken);
    }
}

TEST(ControllerIdTest, TheCountersArePlainNumbers)
{
    static_assert(std::is_same_v<decltype(CounterProbe::m_timerBaseId), UINT>);
    static_assert(std::is_same_v<decltype(CounterProbe::m_msgBaseId), UINT>);
}

TEST(ControllerIdTest, ClosingAWindowGivesNoNumberBack)
{
    UINT id = 0;
    {
        FrameHost host;
        host.Make();
        id = host.first->SetTimer(1000, [] {});
        host.first->KillTimer(id);
    }
    FrameHost host;
    host.Make();
    EXPECT_EQ(host.first->SetTimer(1000, [] {}), id + 1);
}

// Timers

TEST(ControllerTimerTest, EachTimerRunsItsOwnersHandlerOnly)
{
    FrameHost host;
    host.Make();
    int first = 0;
    int second = 0;
    const UINT one = host.first->SetTimer(100000, [&] { ++first; });
    const UINT two = host.second->SetTimer(100000, [&] { ++second; });
    host.Send(WM_TIMER, one);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
    host.Send(WM_TIMER, two);
    host.Send(WM_TIMER, two);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

UINT_PTR g_timerId = 0;
UINT g_timerPeriod = 0;
HWND g_timerWindow = nullptr;
TIMERPROC g_timerProcedure = nullptr;

UINT_PTR WINAPI RecordSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    g_timerWindow = window;
    g_timerId = id;
    g_timerPeriod = period;
    g_timerProcedure = procedure;
    return id;
}

TEST(ControllerTimerTest, StartsATimerOfTheWindow)
{
    FrameHost host;
    host.Make();
    test::ImportHook hook(L"Quillet.dll", "user32.dll", "SetTimer", &RecordSetTimer);
    const UINT id = host.first->SetTimer(250, [] {});
    EXPECT_EQ(g_timerWindow, host.handle);
    EXPECT_EQ(g_timerId, id);
    EXPECT_EQ(g_timerPeriod, 250u);
    EXPECT_EQ(g_timerProcedure, nullptr);
}

TEST(ControllerTimerTest, ATimerThatIsSetBeforeTheWindowExistsNeverRuns)
{
    FrameHost host;
    int ticks = 0;
    const UINT first = RecordingController::GenerateTimerId();
    const UINT id = host.first->SetTimer(10, [&] { ++ticks; });
    EXPECT_EQ(id, first + 1);
    host.Make();
    const DWORD start = ::GetTickCount();
    while (::GetTickCount() - start < 60)
        FrameHost::Pump();
    EXPECT_EQ(ticks, 0);
}

TEST(ControllerTimerTest, RepeatsUntilItIsKilled)
{
    FrameHost host;
    host.Make();
    int ticks = 0;
    const UINT id = host.first->SetTimer(1, [&] { ++ticks; });
    const DWORD start = ::GetTickCount();
    MSG message{};
    while (ticks < 3 && ::GetTickCount() - start < 10'000 && ::GetMessageW(&message, nullptr, 0, 0))
        ::DispatchMessageW(&message);
    EXPECT_EQ(ticks, 3);
    host.first->KillTimer(id);
    EXPECT_FALSE(::KillTimer(host.handle, id)) << "there is no timer left";
}

TEST(ControllerTimerTest, AKilledTimersHandlerStaysAndRunsForAMessageThatIsQueuedAlready)
{
    FrameHost host;
    host.Make();
    int ticks = 0;
    const UINT id = host.first->SetTimer(100000, [&] { ++ticks; });
    host.first->KillTimer(id);
    ::PostMessageW(host.handle, WM_TIMER, id, 0);
    FrameHost::Pump();
    EXPECT_EQ(ticks, 1);
}

TEST(ControllerTimerTest, AnUnknownTimerIsIgnored)
{
    FrameHost host;
    host.Make();
    host.Send(WM_TIMER, 999);
    EXPECT_TRUE(::IsWindow(host.handle));
}

TEST(ControllerTimerTest, TheIdIsTakenAs32Bits)
{
    FrameHost host;
    host.Make();
    int ticks = 0;
    const UINT id = host.first->SetTimer(100000, [&] { ++ticks; });
    host.Send(WM_TIMER, (WPARAM{1} << 32) | id);
    EXPECT_EQ(ticks, 1);
}

TEST(ControllerTimerTest, AHandlerMayKillItsTimerAndSetAnother)
{
    FrameHost host;
    host.Make();
    int late = 0;
    UINT id = 0;
    UINT next = 0;
    id = host.first->SetTimer(100000, [&] {
        host.first->KillTimer(id);
        next = host.first->SetTimer(100000, [&] { ++late; });
    });
    host.Send(WM_TIMER, id);
    host.Send(WM_TIMER, next);
    EXPECT_EQ(late, 1);
}

// Messages

TEST(ControllerMessageTest, ACallbackGetsBothParameters)
{
    FrameHost host;
    host.Make();
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM w, LPARAM l) {
        wParam = w;
        lParam = l;
    });
    host.Send(kPrivateMessage, 12, -34);
    EXPECT_EQ(wParam, 12u);
    EXPECT_EQ(lParam, -34);
}

TEST(ControllerMessageTest, EveryControllersCallbackIsCalledInOrder)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.second->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { host.log.push_back("2"); });
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { host.log.push_back("1"); });
    host.Send(kPrivateMessage);
    EXPECT_THAT(host.log, ElementsAre("1", "2"));
}

TEST(ControllerMessageTest, ALaterCallbackReplacesTheEarlierOne)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { host.log.push_back("old"); });
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { host.log.push_back("new"); });
    host.Send(kPrivateMessage);
    EXPECT_THAT(host.log, ElementsAre("new"));
}

TEST(ControllerMessageTest, AMessageWithoutACallbackIsIgnored)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    EXPECT_EQ(host.Send(kPrivateMessage), 0);
    EXPECT_THAT(host.log, IsEmpty());
}

TEST(ControllerMessageTest, TimersAreNeverOfferedToTheCallbacks)
{
    FrameHost host;
    host.Make();
    bool called = false;
    host.first->ListenMessage(WM_TIMER, [&](WPARAM, LPARAM) { called = true; });
    host.Send(WM_TIMER, 5);
    EXPECT_FALSE(called);
}

TEST(ControllerMessageTest, ACallbackMayReplaceItself)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    const std::string kept = "a text that is too long to be kept inside the function object";
    host.first->ListenMessage(kPrivateMessage, [&host, kept](WPARAM, LPARAM) {
        host.first->ListenMessage(kPrivateMessage, [](WPARAM, LPARAM) {});
        host.log.push_back(kept);
    });
    host.Send(kPrivateMessage);
    host.Send(kPrivateMessage);
    EXPECT_THAT(host.log, ElementsAre(kept));
}

TEST(ControllerMessageTest, MessagesBeforeTheWindowIsBuiltReachTheCallbacks)
{
    FrameHost host;
    host.first->ListenMessage(WM_NCCREATE, [&](WPARAM, LPARAM) { host.log.push_back("NCCREATE"); });
    host.Make();
    ASSERT_FALSE(host.log.empty());
    const auto created = std::ranges::find(host.log, "NCCREATE");
    const auto initialised = std::ranges::find(host.log, "1: OnInit()");
    EXPECT_LT(created, initialised);
}

// Clicks

TEST(ControllerClickTest, AClickRunsTheCallbackOfItsControlOnly)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.first->ListenClickEvent(host.Control(L"save"), [&] { host.log.push_back("save"); });
    host.first->ListenClickEvent(host.Control(L"edit"), [&] { host.log.push_back("edit"); });
    host.second->ListenClickEvent(host.Control(L"save"), [&] { host.log.push_back("save too"); });
    host.Manager().SendNotify(host.Control(L"save"), L"click");
    EXPECT_THAT(host.log, ElementsAre("save", "save too"));
}

TEST(ControllerClickTest, ARealClickRunsTheMouseHooksFirst)
{
    FrameHost host;
    host.Make();
    ::ShowWindow(host.handle, SW_SHOWNOACTIVATE);
    ::UpdateWindow(host.handle);
    host.first->ListenClickEvent(host.Control(L"save"), [&] { host.log.push_back("clicked"); });
    host.Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10));
    host.TakeLog();
    host.Send(WM_LBUTTONUP, 0, MAKELPARAM(20, 10));
    ASSERT_GE(host.log.size(), 3u);
    EXPECT_EQ(host.log[0], "1: OnLButtonUp(20, 10)");
    EXPECT_EQ(host.log[1], "2: OnLButtonUp(20, 10)");
    EXPECT_THAT(host.log, testing::Contains("clicked"));
}

TEST(ControllerClickTest, ALaterCallbackReplacesTheEarlierOne)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.first->ListenClickEvent(host.Control(L"save"), [&] { host.log.push_back("old"); });
    host.first->ListenClickEvent(host.Control(L"save"), [&] { host.log.push_back("new"); });
    host.Manager().SendNotify(host.Control(L"save"), L"click");
    EXPECT_THAT(host.log, ElementsAre("new"));
}

TEST(ControllerClickTest, AClickOfAControlThatNobodyListensToIsIgnored)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.Manager().SendNotify(host.Control(L"save"), L"click");
    EXPECT_THAT(host.log, IsEmpty());
}

TEST(ControllerClickTest, ANewControlInheritsTheCallbackOfADeletedOneAtItsAddress)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    alignas(CButtonUI) std::byte storage[sizeof(CButtonUI)];
    auto* const old = new (storage) CButtonUI;
    host.first->ListenClickEvent(old, [&] { host.log.push_back("inherited"); });
    old->~CButtonUI();
    auto* const other = new (storage) CButtonUI;
    host.Manager().SendNotify(other, L"click");
    EXPECT_THAT(host.log, ElementsAre("inherited"));
    other->~CButtonUI();
}

TEST(ControllerClickTest, ACallbackMayReplaceItself)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    const std::string kept = "a text that is too long to be kept inside the function object";
    auto* const save = host.Control(L"save");
    host.first->ListenClickEvent(save, [&host, save, kept] {
        host.first->ListenClickEvent(save, [] {});
        host.log.push_back(kept);
    });
    host.Manager().SendNotify(save, L"click");
    EXPECT_THAT(host.log, ElementsAre(kept));
}

TEST(ControllerClickTest, ACallbackMayDeleteTheControlThatWasClicked)
{
    FrameHost host;
    host.Make();
    auto* const save = host.Control(L"save");
    int second = 0;
    host.first->ListenClickEvent(
        save, [&] { static_cast<CContainerUI*>(host.Manager().GetRoot())->Remove(save); });
    host.second->ListenClickEvent(save, [&] { ++second; });
    host.Manager().SendNotify(save, L"click");
    EXPECT_EQ(host.Control(L"save"), nullptr);
}

// An empty callback

TEST(EmptyCallbackTest, RaisesBadFunctionCallForAClick)
{
    FrameHost host;
    host.Make();
    host.first->ListenClickEvent(host.Control(L"save"), nullptr);
    EXPECT_THROW(host.Manager().SendNotify(host.Control(L"save"), L"click"),
                 std::bad_function_call);
    host.first->ListenClickEvent(host.Control(L"save"), [] {});
}

// What reaches a window's procedure directly, without the system's frames in between.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam)
{
    const auto procedure = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
    return procedure(window, message, wParam, 0);
}

TEST(EmptyCallbackTest, RaisesBadFunctionCallForAMessage)
{
    FrameHost host;
    host.Make();
    host.first->ListenMessage(kPrivateMessage, nullptr);
    EXPECT_THROW(CallProcedure(host.handle, kPrivateMessage, 0), std::bad_function_call);
}

TEST(EmptyCallbackTest, RaisesBadFunctionCallForATimer)
{
    FrameHost host;
    host.Make();
    const UINT id = host.first->SetTimer(100000, nullptr);
    EXPECT_THROW(CallProcedure(host.handle, WM_TIMER, id), std::bad_function_call);
}

TEST(EmptyCallbackTest, AnExceptionOfACallbackReachesTheMessageHandling)
{
    FrameHost host;
    host.Make();
    host.first->ListenMessage(kPrivateMessage, [](WPARAM, LPARAM) { throw 42; });
    EXPECT_THROW(CallProcedure(host.handle, kPrivateMessage, 0), int);
    host.TakeLog();
    host.Send(WM_KEYUP, 'A');
    EXPECT_THAT(host.log, ElementsAre("1: OnKeyUp(65)", "2: OnKeyUp(65)")) << "the window works";
}

// The window and its controls

TEST(ControllerTest, FindsControlsByNameAndByPoint)
{
    FrameHost host;
    host.Make();
    ::ShowWindow(host.handle, SW_SHOWNOACTIVATE);
    ::UpdateWindow(host.handle);
    auto* const save = host.first->GetControl(L"save");
    ASSERT_NE(save, nullptr);
    EXPECT_EQ(save->GetName(), L"save");
    EXPECT_EQ(host.first->GetControl(POINT{20, 10}), save);
    EXPECT_EQ(host.first->GetControl(L"nobody"), nullptr);
    EXPECT_EQ(host.first->GetHwnd(), host.handle);
    EXPECT_EQ(host.first->GetPaintManagerUI().GetPaintWindow(), host.handle);
}

TEST(ControllerTest, HasNoWindowBeforeItIsInitialised)
{
    RecordingController::Log log;
    RecordingController controller(log, "1");
    EXPECT_EQ(controller.GetHwnd(), nullptr);
    EXPECT_FALSE(controller.IsLoad());
}

TEST(ControllerTest, OnCloseXPostsTheCode)
{
    FrameHost host;
    host.Make();
    host.first->OnCloseX(5);
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, host.handle, WM_CLOSE, WM_CLOSE, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5u);
    EXPECT_EQ(message.lParam, 0);
}

TEST(ControllerTest, OnCloseXMayBeOverridden)
{
    class Stubborn : public UIController {
    public:
        UINT code = 0;
        void OnCloseX(UINT asked) override { code = asked; }
    };
    Stubborn controller;
    static_cast<UIController&>(controller).OnCloseX(7);
    EXPECT_EQ(controller.code, 7u);
}

TEST(ControllerTest, PostsAndSendsMessagesToItsWindow)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM wParam, LPARAM lParam) {
        host.log.push_back(std::to_string(wParam) + " " + std::to_string(lParam));
    });
    host.first->SendMessageW(kPrivateMessage, 1, 2);
    EXPECT_THAT(host.TakeLog(), ElementsAre("1 2"));
    EXPECT_TRUE(host.first->PostMessageW(kPrivateMessage, 3, 4));
    EXPECT_THAT(host.log, IsEmpty());
    FrameHost::Pump();
    EXPECT_THAT(host.log, ElementsAre("3 4"));
}

TEST(ControllerTest, SendMessageReturnsTheResult)
{
    FrameHost host;
    host.Make();
    ::SetWindowTextW(host.handle, L"four");
    EXPECT_EQ(host.first->SendMessageW(WM_GETTEXTLENGTH), 4);
}

TEST(ControllerTest, AnswersAWorkerThreadThroughAPrivateMessage)
{
    FrameHost host;
    host.Make();
    const UINT id = RecordingController::GenerateMsgId();
    WPARAM result = 0;
    host.first->ListenMessage(id, [&](WPARAM wParam, LPARAM) { result = wParam; });
    std::thread([&] { host.first->PostMessageW(id, 99); }).join();
    FrameHost::Pump();
    EXPECT_EQ(result, 99u);
}

TEST(ControllerTest, EnableDragDropReachesTheManager)
{
    ::OleInitialize(nullptr);
    {
        FrameHost host;
        host.Make();
        host.first->EnableDragDrop(true);
        EXPECT_FALSE(host.Manager().EnableDragDrop(true)) << "it is a drop target already";
        host.first->EnableDragDrop(false);
        EXPECT_FALSE(host.Manager().EnableDragDrop(false));
    }
    ::OleUninitialize();
}

// Loading

TEST(ControllerTest, LoadingSetsTheFlagBeforeTheHook)
{
    RecordingController::Log log;
    auto controller = std::make_shared<RecordingController>(log, "1");
    bool loadedInHook = false;
    controller->inHook = [&](const std::string&) { loadedInHook = controller->IsLoad(); };
    FrameHost host;
    host.window.AddUIController(controller);
    EXPECT_THAT(log, ElementsAre("1: OnLoad()"));
    EXPECT_TRUE(loadedInHook);
}

TEST(ControllerTest, TheEndOfTheWindowUnloadsWithoutAnyHook)
{
    FrameHost host;
    host.Make();
    EXPECT_TRUE(host.first->IsLoad());
    host.Destroy();
    EXPECT_FALSE(host.first->IsLoad());
    EXPECT_FALSE(host.second->IsLoad());
    EXPECT_EQ(host.log.back(), "2: OnDestroy()");
}

TEST(ControllerTest, NobodyCallsOnChangeLanguage)
{
    FrameHost host;
    host.Make();
    CResourceManagerEx::GetInstance()->SetLanguage(L"de-DE");
    host.Send(WM_INPUTLANGCHANGE);
    host.Send(WM_SETTINGCHANGE);
    EXPECT_THAT(host.log, testing::Not(testing::Contains("1: OnChangeLanguage()")));
    host.TakeLog();
    host.first->OnChangeLanguage();
    EXPECT_THAT(host.log, ElementsAre("1: OnChangeLanguage()"));
}

// Copies

TEST(ControllerTest, ACopySharesWindowManagerAndCallbacks)
{
    class Copied : public UIController {
    public:
        using UIController::GetHwnd;
        using UIController::GetPaintManagerUI;
        using UIController::ListenClickEvent;
        using UIController::ListenMessage;
        using UIController::SetTimer;
    };
    const auto original = std::make_shared<Copied>();
    UIWindow window;
    window.AddUIController(original);
    const HWND handle = window.Create(nullptr, L"Test", test::kFrameSkin, WS_POPUP, 0, 0, 0);
    int clicks = 0;
    int messages = 0;
    int ticks = 0;
    auto* const save = original->GetPaintManagerUI().FindControl(L"save");
    original->ListenClickEvent(save, [&] { ++clicks; });
    original->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { ++messages; });
    const UINT timer = original->SetTimer(100000, [&] { ++ticks; });

    const auto copy = std::make_shared<Copied>(*original);
    auto assigned = std::make_shared<Copied>();
    *assigned = *original;
    for (const auto& other : {copy, assigned}) {
        EXPECT_EQ(other->GetHwnd(), handle);
        EXPECT_EQ(&other->GetPaintManagerUI(), &original->GetPaintManagerUI());
        EXPECT_NE(other->shared_from_this(), original->shared_from_this());
        window.AddUIController(other);
    }
    original->GetPaintManagerUI().SendNotify(save, L"click");
    ::SendMessageW(handle, kPrivateMessage, 0, 0);
    ::SendMessageW(handle, WM_TIMER, timer, 0);
    EXPECT_EQ(clicks, 3);
    EXPECT_EQ(messages, 3);
    EXPECT_EQ(ticks, 3);
    ::DestroyWindow(handle);
}

TEST(ControllerTest, HasHooksButNoVirtualDestructor)
{
    static_assert(std::is_polymorphic_v<UIController>);
    static_assert(!std::has_virtual_destructor_v<UIController>);
}

TEST(ControllerTest, TheSharedPointerDeletesWhatItMade)
{
    class Counting : public UIController {
    public:
        explicit Counting(int& ended) : m_ended(ended) {}
        ~Counting() { ++m_ended; }

    private:
        int& m_ended;
    };
    int ended = 0;
    std::shared_ptr<UIController> controller = std::make_shared<Counting>(ended);
    controller.reset();
    EXPECT_EQ(ended, 1);
}

TEST(ControllerTest, GivesCallbacksAWeakReferenceOfItself)
{
    FrameHost host;
    host.Make();
    const std::weak_ptr<UIController> weak = host.first->weak_from_this();
    EXPECT_EQ(weak.lock(), host.first);
}

// Menus

class ControllerMenuTest : public testing::Test {
protected:
    ControllerMenuTest()
    {
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
        folder.Write(L"menu.xml", "<Window><Menu><MenuElement name=\"open\" text=\"Open\"/>"
                                  "<MenuElement name=\"close\" text=\"Close\"/></Menu></Window>");
        host.Make();
    }
    ~ControllerMenuTest() override
    {
        CMenuWnd::GetGlobalContextMenuObserver().RBroadcast({1, nullptr});
        FrameHost::Pump();
        CMenuWnd::DestroyMenu();
    }

    test::TempFolder folder;
    FrameHost host;
};

TEST_F(ControllerMenuTest, OpensAMenuAndFindsItsControls)
{
    CMenuWnd* const menu = host.first->OnCreateMenuInit(nullptr, L"menu.xml", POINT{10, 10});
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(::IsWindow(menu->GetHWND()));
    EXPECT_EQ(host.first->FindMenuControl(L"open"), menu->m_pm.FindControl(L"open"));
    EXPECT_NE(host.first->FindMenuControl(L"open"), nullptr);
    EXPECT_EQ(host.first->FindMenuControl(L"nobody"), nullptr);
}

TEST_F(ControllerMenuTest, PassesTheManagerTheCheckStatesAndTheAlignmentOn)
{
    CStdStringPtrMap states;
    CMenuWnd* const menu =
        host.first->OnCreateMenuInit(nullptr, L"menu.xml", POINT{300, 200}, &states,
                                     eMenuAlignment_Right | eMenuAlignment_Bottom);
    ASSERT_NE(menu, nullptr);
    auto& observer = CMenuWnd::GetGlobalContextMenuObserver();
    EXPECT_EQ(observer.GetManager(), &host.Manager());
    EXPECT_EQ(observer.GetMenuCheckInfo(), &states);
    EXPECT_EQ(menu->m_dwAlignment, DWORD{eMenuAlignment_Right | eMenuAlignment_Bottom});
    EXPECT_EQ(menu->m_BasedPoint.x, 300);
    EXPECT_EQ(menu->m_pOwner, nullptr);
    observer.SetMenuCheckInfo(nullptr);
}

TEST_F(ControllerMenuTest, TheControllerOfACopyKnowsTheMenuToo)
{
    host.first->OnCreateMenuInit(nullptr, L"menu.xml", POINT{10, 10});
    RecordingController copy(*host.first);
    EXPECT_NE(copy.FindMenuControl(L"open"), nullptr);
}

TEST_F(ControllerMenuTest, AMenuThatHasClosedIsNotTouched)
{
    CMenuWnd* const menu = host.first->OnCreateMenuInit(nullptr, L"menu.xml", POINT{10, 10});
    ASSERT_NE(menu, nullptr);
    ::DestroyWindow(menu->GetHWND());
    EXPECT_EQ(host.first->FindMenuControl(L"open"), nullptr);
}

TEST_F(ControllerMenuTest, AMissingSkinGivesNoMenu)
{
    EXPECT_EQ(host.first->OnCreateMenuInit(nullptr, L"missing.xml", POINT{10, 10}), nullptr);
    EXPECT_EQ(host.first->FindMenuControl(L"open"), nullptr);
}

TEST_F(ControllerMenuTest, AChosenElementReachesOnMenuClick)
{
    host.first->OnCreateMenuInit(nullptr, L"menu.xml", POINT{10, 10});
    MenuCmd* chosen = nullptr;
    static_cast<CMenuElementUI*>(host.first->FindMenuControl(L"close"))->Activate();
    MSG message{};
    while (::PeekMessageW(&message, host.handle, WM_USER + 3, WM_USER + 3, PM_REMOVE)) {
        chosen = reinterpret_cast<MenuCmd*>(message.wParam);
        host.TakeLog();
        ::DispatchMessageW(&message);
    }
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(std::wstring(chosen->szName), L"close");
    const auto argument = std::to_string(reinterpret_cast<WPARAM>(chosen));
    EXPECT_THAT(host.log, ElementsAre("1: OnMenuClick(" + argument + ")",
                                      "2: OnMenuClick(" + argument + ")"));
    delete chosen;
}

} // namespace
