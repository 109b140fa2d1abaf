#include "support/ObjectCounters.h"
#include "tests/quillet/dialogs/Popups.h"
#include "tests/quillet/frame/FreshProcess.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <ctime>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

using namespace DuiLib;
using test::ImportHook;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Log = std::vector<std::string>;

// The time as the worker sees it. It passes at once, and what happens is written to a log.
class FakeTime {
public:
    FakeTime()
        : m_clock(L"Quillet.dll", test::kClockLibrary, "clock", &FakeTime::Clock),
          m_sleep(L"Quillet.dll", "KERNEL32.dll", "Sleep", &FakeTime::Sleep)
    {
        Current() = this;
    }
    ~FakeTime() { Current() = nullptr; }
    FakeTime(const FakeTime&) = delete;
    FakeTime& operator=(const FakeTime&) = delete;

    explicit operator bool() const { return m_clock && m_sleep; }

    void Note(const std::string& what)
    {
        const std::scoped_lock lock(m_mutex);
        if (keeps)
            m_log.push_back(what);
    }
    Log Happened()
    {
        const std::scoped_lock lock(m_mutex);
        return m_log;
    }

    std::clock_t start = 0; // the first answer
    std::clock_t end = 0;   // all others
    bool keeps = true;      // the log

private:
    static FakeTime*& Current()
    {
        static FakeTime* current = nullptr;
        return current;
    }
    static std::clock_t Clock()
    {
        Current()->Note("clock");
        return Current()->m_asked++ == 0 ? Current()->start : Current()->end;
    }
    static void WINAPI Sleep(DWORD time) { Current()->Note("Sleep " + std::to_string(time)); }

    std::mutex m_mutex;
    Log m_log;
    std::atomic<int> m_asked = 0;
    ImportHook m_clock;
    ImportHook m_sleep;
};

// The results of the modal loops.
class ModalResults {
public:
    ModalResults() : m_hook(L"Quillet.dll", "DuiLib.dll", kName, &ModalResults::ShowModal)
    {
        All().clear();
        Original() = m_hook.Original<UINT(CWindowWnd*)>();
    }
    static std::vector<UINT>& All()
    {
        static std::vector<UINT> all;
        return all;
    }

private:
#ifdef _MSC_VER
    static constexpr char kName[] = "?ShowModal@CWindowWnd@DuiLib@@QEAAIXZ";
#else
    static constexpr char kName[] = "_ZN6DuiLib10CWindowWnd9ShowModalEv";
#endif
    static UINT (*&Original())(CWindowWnd*)
    {
        static UINT (*original)(CWindowWnd*) = nullptr;
        return original;
    }
    static UINT ShowModal(CWindowWnd* window)
    {
        const UINT result = Original()(window);
        All().push_back(result);
        return result;
    }

    ImportHook m_hook;
};

struct Post {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    bool operator==(const Post&) const = default;
};

// What the library posts.
class PostRecord {
public:
    PostRecord() : m_hook(L"Quillet.dll", "USER32.dll", "PostMessageW", &PostRecord::PostIt)
    {
        const std::scoped_lock lock(Mutex());
        All().clear();
        OnPost() = nullptr;
    }
    ~PostRecord()
    {
        const std::scoped_lock lock(Mutex());
        OnPost() = nullptr;
    }
    std::vector<Post> Taken()
    {
        const std::scoped_lock lock(Mutex());
        return All();
    }
    void Before(std::function<void()> function)
    {
        const std::scoped_lock lock(Mutex());
        OnPost() = std::move(function);
    }

private:
    static std::mutex& Mutex()
    {
        static std::mutex mutex;
        return mutex;
    }
    static std::vector<Post>& All()
    {
        static std::vector<Post> all;
        return all;
    }
    static std::function<void()>& OnPost()
    {
        static std::function<void()> function;
        return function;
    }
    static BOOL WINAPI PostIt(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        {
            const std::scoped_lock lock(Mutex());
            if (OnPost())
                OnPost()();
            All().push_back({window, message, wParam, lParam});
        }
        return ::PostMessageW(window, message, wParam, lParam);
    }

    ImportHook m_hook;
};

class TestLoading : public CommonLoadingWindow {
public:
    explicit TestLoading(HWND parent, const std::wstring& message = L"Loading", bool flag = false)
        : CommonLoadingWindow(parent, message, flag)
    {
    }
    ~TestLoading() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    using CommonLoadingWindow::CloseWindow;
    using CommonLoadingWindow::GetSkinFile;
    using CommonLoadingWindow::GetWindowClassName;
    using CommonLoadingWindow::m_bFlag;
    using CommonLoadingWindow::m_hMaskParent;
    using CommonLoadingWindow::m_hParent;
    using CommonLoadingWindow::m_hWnd;
    using CommonLoadingWindow::m_pMaskLayer;
    using CommonLoadingWindow::m_strMessage;
    using CommonLoadingWindow::m_vWaitingEvents;
    using CommonLoadingWindow::ShowWindowCore;

    std::function<void()> onInit;
    std::vector<WPARAM> closings;
    int shown = 0;

protected:
    void InitWindow() override
    {
        CommonLoadingWindow::InitWindow();
        if (onInit)
            onInit();
    }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CLOSE)
            closings.push_back(wParam);
        if (message == WM_SHOWWINDOW && wParam)
            ++shown;
        return CommonLoadingWindow::HandleMessage(message, wParam, lParam);
    }
};

class FleetingLoading : public TestLoading, public test::OutOfReachWhenDeleted {
    using TestLoading::TestLoading;
};

class FleetingMask : public test::DialogParent, public test::OutOfReachWhenDeleted {
    using DialogParent::DialogParent;
};

// Work that waits to be let go, and the thread that runs it.
class Gate {
public:
    // The work: begins, waits, ends.
    std::function<void()> Work()
    {
        return [state = m_state] {
            HANDLE thread = nullptr;
            ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(),
                              &thread, 0, FALSE, DUPLICATE_SAME_ACCESS);
            state->begun.set_value(thread);
            state->release.get_future().wait_for(std::chrono::milliseconds(test::kLongestWait));
            ++state->ended;
        };
    }
    // When the work has begun.
    void AwaitBegin()
    {
        auto begun = m_state->begun.get_future();
        ASSERT_EQ(begun.wait_for(std::chrono::milliseconds(test::kLongestWait)),
                  std::future_status::ready);
        m_thread = begun.get();
    }
    // Lets the work end and waits until its thread has ended too.
    void Release()
    {
        m_state->release.set_value();
        EXPECT_EQ(::WaitForSingleObject(m_thread, test::kLongestWait), WAIT_OBJECT_0);
        ::CloseHandle(m_thread);
    }
    int Ended() const { return m_state->ended; }

private:
    struct State {
        std::promise<HANDLE> begun;
        std::promise<void> release;
        std::atomic<int> ended = 0;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
    HANDLE m_thread = nullptr;
};

class CommonLoadingWindowTest : public test::PopupTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(static_cast<bool>(time));
        WorkersBefore() = test::Threads();
    }
    // No worker outlives its test, whose hooks it calls.
    ~CommonLoadingWindowTest() override
    {
        EXPECT_TRUE(test::PumpUntil([] { return test::Threads() <= WorkersBefore(); }));
    }
    static int& WorkersBefore()
    {
        static int threads = 0;
        return threads;
    }

    FakeTime time;
    ModalResults results;
};

// --- The work ---

TEST_F(CommonLoadingWindowTest, RunsTheWorkInOrderAndOnce)
{
    TestLoading loading(owner);
    for (const char* const name : {"A", "B", "C", "B"})
        loading.RegitsterWaitingEvent([this, name] { time.Note(name); });
    loading.ShowWindow();
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "A", "B", "C", "B", "clock", "Sleep 1000"));
}

TEST_F(CommonLoadingWindowTest, AllWorkIsDoneByOneOtherThread)
{
    TestLoading loading(owner);
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 3; ++i)
        loading.RegitsterWaitingEvent([&] { threads.push_back(std::this_thread::get_id()); });
    loading.ShowWindow();
    ASSERT_EQ(threads.size(), 3u);
    EXPECT_NE(threads[0], std::this_thread::get_id());
    EXPECT_EQ(threads[1], threads[0]);
    EXPECT_EQ(threads[2], threads[0]);
}

TEST_F(CommonLoadingWindowTest, SkipsWorkThatHoldsNothing)
{
    TestLoading loading(owner);
    loading.RegitsterWaitingEvent(nullptr);
    loading.RegitsterWaitingEvent([this] { time.Note("A"); });
    loading.RegitsterWaitingEvent(std::function<void()>());
    loading.RegitsterWaitingEvent([this] { time.Note("B"); });
    EXPECT_EQ(loading.m_vWaitingEvents.size(), 4u);
    loading.ShowWindow();
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "A", "B", "clock", "Sleep 1000"));
}

TEST_F(CommonLoadingWindowTest, CopiesTheWorkWhenItIsRegistered)
{
    TestLoading loading(owner);
    std::function<void()> work = [this] { time.Note("first"); };
    loading.RegitsterWaitingEvent(work);
    work = [this] { time.Note("second"); };
    loading.ShowWindow();
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "first", "clock", "Sleep 1000"));
}

TEST_F(CommonLoadingWindowTest, WithoutWorkTheWindowStaysForTheShortestTime)
{
    TestLoading loading(owner);
    loading.ShowWindow();
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "clock", "Sleep 1000"));
    EXPECT_EQ(loading.shown, 1);
    EXPECT_THAT(results.All(), ElementsAre(8u));
}

TEST_F(CommonLoadingWindowTest, TheWindowIsUpWhileTheWorkRuns)
{
    TestLoading loading(owner);
    Gate gate;
    loading.RegitsterWaitingEvent(gate.Work());
    bool visible = false;
    bool ownerEnabled = true;
    int ended = 1;
    actions.Post([&] {
        gate.AwaitBegin();
        ended = gate.Ended();
        visible = ::IsWindowVisible(loading.m_hWnd);
        ownerEnabled = ::IsWindowEnabled(owner);
        gate.Release();
    });
    loading.ShowWindow();
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(visible);
    EXPECT_FALSE(ownerEnabled);
    EXPECT_TRUE(::IsWindowEnabled(owner));
    EXPECT_EQ(gate.Ended(), 1);
}

TEST_F(CommonLoadingWindowTest, ASecondShowingDoesTheWorkAgain)
{
    TestLoading loading(owner);
    int runs = 0;
    loading.RegitsterWaitingEvent([&runs] { ++runs; });
    loading.ShowWindow();
    loading.ShowWindow();
    EXPECT_EQ(runs, 2);
    EXPECT_THAT(results.All(), ElementsAre(8u, 8u));
}

// --- The shortest time ---

struct TimeCase {
    const char* name;
    std::clock_t start;
    std::clock_t end;
    std::optional<DWORD> sleep;
};

void PrintTo(const TimeCase& each, std::ostream* out)
{
    *out << each.name;
}

class CommonLoadingTimeTest : public CommonLoadingWindowTest,
                              public testing::WithParamInterface<TimeCase> {};

TEST_P(CommonLoadingTimeTest, SleepsForWhatIsLeftOfOneSecond)
{
    static_assert(CLOCKS_PER_SEC == 1000);
    time.start = GetParam().start;
    time.end = GetParam().end;
    TestLoading loading(owner);
    loading.RegitsterWaitingEvent([this] { time.Note("work"); });
    loading.ShowWindow();
    Log expected{"clock", "work", "clock"};
    if (GetParam().sleep)
        expected.push_back("Sleep " + std::to_string(*GetParam().sleep));
    EXPECT_EQ(time.Happened(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Elapsed, CommonLoadingTimeTest,
    testing::Values(TimeCase{"Nothing", 0, 0, 1000}, TimeCase{"NothingLater", 70000, 70000, 1000},
                    TimeCase{"TwiceTwoHundred", 10, 410, 600}, TimeCase{"OneLess", 500, 1499, 1},
                    TimeCase{"Exactly", 500, 1500, {}}, TimeCase{"OneMore", 500, 1501, {}},
                    TimeCase{"Long", 0, 1500, {}},
                    TimeCase{"BeyondTheMicroseconds", 0, 2147484, {}},
                    TimeCase{"FarBeyondThem", 0, 4294968, {}},
                    TimeCase{"TheLongest", 0, 2147483647, {}},
                    TimeCase{"AClockThatDoesNotAnswer", -1, -1, 1000},
                    TimeCase{"AClockThatStops", 2147483600, -1, 1000}),
    [](const auto& test) { return std::string(test.param.name); });

// --- The window ---

TEST_F(CommonLoadingWindowTest, ClosesWithEight)
{
    TestLoading loading(owner);
    PostRecord posted;
    HWND window = nullptr;
    loading.onInit = [&] { window = loading.m_hWnd; };
    loading.ShowWindow();
    EXPECT_THAT(results.All(), ElementsAre(8u));
    EXPECT_THAT(posted.Taken(), ElementsAre(Post{window, WM_CLOSE, 8, 0}));
    EXPECT_THAT(loading.closings, ElementsAre(8u));
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(loading.m_hWnd, nullptr);
}

TEST_F(CommonLoadingWindowTest, TheMessageIsTheTextTheTitleAndTheClassName)
{
    for (const wchar_t* const message : {L"Copying files...", L"正在加载"}) {
        TestLoading loading(owner, message);
        std::wstring text;
        std::wstring title;
        std::wstring className;
        actions.Post([&] {
            text = test::TextOf(loading.m_hWnd, L"message");
            wchar_t buffer[64]{};
            ::GetWindowTextW(loading.m_hWnd, buffer, 64);
            title = buffer;
            className = test::ClassOf(loading.m_hWnd);
            loading.CloseWindow();
        });
        EXPECT_STREQ(loading.GetWindowClassName(), message);
        loading.ShowWindow();
        EXPECT_EQ(text, message);
        EXPECT_EQ(title, message);
        EXPECT_EQ(className, message);
    }
}

TEST_F(CommonLoadingWindowTest, TheMessageIsCopied)
{
    std::wstring message = L"Before";
    const TestLoading loading(owner, message);
    message = L"After";
    EXPECT_EQ(loading.m_strMessage, L"Before");
}

TEST_F(CommonLoadingWindowTest, ASkinWithoutTheMessageWillDo)
{
    skins.Write(L"common/Loading.xml", test::DialogSkins::Skin(L""));
    TestLoading loading(owner);
    bool initialised = false;
    loading.onInit = [&initialised] { initialised = true; };
    loading.ShowWindow();
    EXPECT_TRUE(initialised);
    EXPECT_EQ(loading.shown, 1);
    EXPECT_THAT(results.All(), ElementsAre(8u));
    EXPECT_STREQ(loading.GetSkinFile(), L"common/Loading.xml");
}

// The message names the window class, and no class has an empty name.
TEST_F(CommonLoadingWindowTest, AnEmptyMessageMakesNoWindowButTheWorkIsDone)
{
    TestLoading loading(owner, L"");
    Gate gate;
    loading.RegitsterWaitingEvent(gate.Work());
    PostRecord posted;
    const int windows = test::UserWindows();
    actions.Post([&loading] { loading.CloseWindow(); }); // for one that is there all the same
    loading.ShowWindow();
    test::Pump();
    EXPECT_THAT(loading.closings, IsEmpty());
    EXPECT_EQ(loading.m_hWnd, nullptr);
    EXPECT_EQ(test::UserWindows(), windows);
    gate.AwaitBegin();
    EXPECT_EQ(gate.Ended(), 0);
    gate.Release();
    EXPECT_EQ(gate.Ended(), 1);
    EXPECT_THAT(results.All(), IsEmpty());
    EXPECT_THAT(posted.Taken(), IsEmpty());
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST_F(CommonLoadingWindowTest, IsCreatedWithItsStylesOverItsParent)
{
    TestLoading loading(owner, L"Styles");
    test::Creations creations;
    bool visibleAtFirst = true;
    loading.onInit = [&] { visibleAtFirst = ::IsWindowVisible(loading.m_hWnd); };
    loading.ShowWindow();
    ASSERT_EQ(creations.All().size(), 1u);
    const test::Creation& made = creations.All()[0];
    EXPECT_EQ(made.className, L"Styles");
    EXPECT_EQ(made.title, L"Styles");
    EXPECT_EQ(made.style, 0x86C80000u);
    EXPECT_EQ(made.exStyle, 0x100u);
    const RECT nowhere{};
    EXPECT_TRUE(::EqualRect(&made.place, &nowhere));
    EXPECT_EQ(made.owner, owner.GetHWND());
    EXPECT_FALSE(visibleAtFirst);
    EXPECT_EQ(loading.m_hParent, owner.GetHWND());
}

TEST_F(CommonLoadingWindowTest, TheOverrideReplacesTheOwner)
{
    const test::DialogParent other;
    TestLoading loading(owner);
    EXPECT_EQ(loading.m_hMaskParent, nullptr);
    loading.m_hMaskParent = other.GetHWND();
    bool enabled[2] = {false, true};
    actions.Post([&] {
        enabled[0] = ::IsWindowEnabled(owner);
        enabled[1] = ::IsWindowEnabled(other.GetHWND());
        loading.CloseWindow();
    });
    test::Creations creations;
    loading.ShowWindow();
    ASSERT_EQ(creations.All().size(), 1u);
    EXPECT_EQ(creations.All()[0].owner, other.GetHWND());
    EXPECT_TRUE(enabled[0]);
    EXPECT_FALSE(enabled[1]);
    EXPECT_EQ(loading.m_hParent, owner.GetHWND());
}

TEST_F(CommonLoadingWindowTest, StandsInTheMiddleOfItsOwner)
{
    TestLoading loading(owner);
    RECT place{};
    actions.Post([&] {
        place = test::PlaceOf(loading.m_hWnd);
        loading.CloseWindow();
    });
    loading.ShowWindow();
    const RECT middle{150, 150, 450, 350};
    EXPECT_TRUE(::EqualRect(&place, &middle)) << place.left << ", " << place.top;
}

// The flag is kept and changes nothing.
TEST_F(CommonLoadingWindowTest, TheFlagMeansNothing)
{
    for (const bool flag : {false, true}) {
        TestLoading loading(owner, L"Flag", flag);
        EXPECT_EQ(loading.m_bFlag, flag);
        test::Creations creations;
        loading.ShowWindow();
        EXPECT_EQ(loading.m_bFlag, flag);
        ASSERT_EQ(creations.All().size(), 1u);
        EXPECT_EQ(creations.All()[0].style, 0x86C80000u);
    }
    EXPECT_THAT(results.All(), ElementsAre(8u, 8u));
    EXPECT_THAT(time.Happened(),
                ElementsAre("clock", "clock", "Sleep 1000", "clock", "clock", "Sleep 1000"));
}

// --- The mask ---

TEST_F(CommonLoadingWindowTest, MakesNoMaskOfItsOwn)
{
    TestLoading loading(owner);
    EXPECT_EQ(loading.m_pMaskLayer, nullptr);
    int windows = 0;
    CWindowWnd* mask = &owner;
    const int before = test::UserWindows();
    actions.Post([&] {
        windows = test::UserWindows() - before;
        mask = loading.m_pMaskLayer;
        loading.CloseWindow();
    });
    test::Creations creations;
    loading.ShowWindow();
    EXPECT_EQ(windows, 1);
    EXPECT_EQ(creations.All().size(), 1u);
    EXPECT_EQ(mask, nullptr);
}

TEST_F(CommonLoadingWindowTest, AMaskIsClosedAfterTheWindowAndForgotten)
{
    test::DialogParent mask(owner.GetHWND());
    TestLoading loading(owner);
    loading.m_pMaskLayer = &mask;
    HWND window = nullptr;
    loading.onInit = [&] { window = loading.m_hWnd; };
    const HWND maskWindow = mask.GetHWND();
    PostRecord posted;
    std::vector<CWindowWnd*> masks;
    posted.Before([&] { masks.push_back(loading.m_pMaskLayer); });
    loading.ShowWindow();
    EXPECT_TRUE(test::PumpUntil([&] { return !::IsWindow(maskWindow); }));
    EXPECT_THAT(posted.Taken(),
                ElementsAre(Post{window, WM_CLOSE, 8, 0}, Post{maskWindow, WM_CLOSE, 0, 0}));
    EXPECT_THAT(masks, ElementsAre(nullptr, nullptr));
    EXPECT_EQ(loading.m_pMaskLayer, nullptr);
}

TEST_F(CommonLoadingWindowTest, AMaskThatIsGoneIsLeftAlone)
{
    test::DialogParent mask(owner.GetHWND());
    TestLoading loading(owner);
    loading.m_pMaskLayer = &mask;
    mask.Destroy();
    PostRecord posted;
    loading.ShowWindow();
    EXPECT_EQ(posted.Taken().size(), 1u);
    EXPECT_EQ(loading.m_pMaskLayer, &mask);
}

// --- For derived classes ---

TEST_F(CommonLoadingWindowTest, ADerivedClassShowsAWindowOfItsOwn)
{
    TestLoading loading(owner);
    loading.RegitsterWaitingEvent([this] { time.Note("work"); });
    ASSERT_NE(loading.Create(owner, L"own", WS_POPUP, 0, 0, 0, 0, 0), nullptr);
    test::DialogParent mask(owner.GetHWND());
    const HWND maskWindow = mask.GetHWND();
    loading.m_pMaskLayer = &mask;
    PostRecord posted;
    RECT place{};
    actions.Post([&] {
        place = test::PlaceOf(loading.m_hWnd);
        loading.CloseWindow();
        EXPECT_EQ(loading.m_pMaskLayer, nullptr);
        EXPECT_TRUE(::IsWindow(loading.m_hWnd));
        EXPECT_TRUE(::IsWindow(mask.GetHWND()));
    });
    loading.ShowWindowCore();
    EXPECT_THAT(results.All(), ElementsAre(8u));
    EXPECT_THAT(loading.closings, ElementsAre(8u));
    EXPECT_TRUE(test::PumpUntil([&] { return mask.GetHWND() == nullptr; }));
    EXPECT_THAT(posted.Taken(), ElementsAre(Post{maskWindow, WM_CLOSE, 0, 0}));
    EXPECT_THAT(time.Happened(), IsEmpty());
    const RECT middle{150, 150, 450, 350};
    EXPECT_TRUE(::EqualRect(&place, &middle)) << place.left << ", " << place.top;
}

TEST_F(CommonLoadingWindowTest, WithoutAWindowThereIsNothingToShowOrClose)
{
    TestLoading loading(owner);
    loading.ShowWindowCore();
    loading.CloseWindow();
    EXPECT_THAT(results.All(), IsEmpty());
}

TEST_F(CommonLoadingWindowTest, ClosingWithoutAWindowClosesTheMask)
{
    test::DialogParent mask(owner.GetHWND());
    TestLoading loading(owner);
    loading.m_pMaskLayer = &mask;
    loading.CloseWindow();
    EXPECT_EQ(loading.m_pMaskLayer, nullptr);
    EXPECT_TRUE(test::PumpUntil([&] { return mask.GetHWND() == nullptr; }));
}

// --- What ends before its time ---

TEST_F(CommonLoadingWindowTest, TheUserClosesItWhileTheWorkRuns)
{
    auto loading = std::make_unique<FleetingLoading>(owner);
    auto mask = std::make_unique<FleetingMask>(owner.GetHWND());
    loading->m_pMaskLayer = mask.get();
    Gate gate;
    loading->RegitsterWaitingEvent(gate.Work());
    loading->RegitsterWaitingEvent([this] { time.Note("next"); });
    actions.Post([&] {
        gate.AwaitBegin();
        ::PostMessageW(loading->m_hWnd, WM_CLOSE, 2, 0);
    });
    loading->ShowWindow();
    EXPECT_EQ(gate.Ended(), 0);
    EXPECT_THAT(results.All(), ElementsAre(2u));
    EXPECT_TRUE(::IsWindowEnabled(owner));

    loading.reset();
    mask.reset();
    PostRecord posted;
    std::vector<std::unique_ptr<test::DialogParent>> later;
    for (int i = 0; i < 20; ++i)
        later.push_back(std::make_unique<test::DialogParent>());
    gate.Release();
    test::Pump();
    EXPECT_EQ(gate.Ended(), 1);
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "next", "clock", "Sleep 1000"));
    EXPECT_THAT(posted.Taken(), IsEmpty());
    for (const auto& window : later)
        EXPECT_TRUE(::IsWindow(window->GetHWND()));
}

TEST_F(CommonLoadingWindowTest, TheWorkOfAnEarlierShowingDoesNotCloseALaterOne)
{
    TestLoading loading(owner);
    Gate first;
    Gate second;
    int showing = 0;
    loading.RegitsterWaitingEvent(
        [&, works = std::vector{first.Work(), second.Work()}] { works[showing++](); });
    actions.Post([&] {
        first.AwaitBegin();
        ::PostMessageW(loading.m_hWnd, WM_CLOSE, 2, 0);
    });
    loading.ShowWindow();

    bool survived = false;
    actions.Post([&] {
        second.AwaitBegin();
        first.Release();
        actions.Post([&] {
            survived = ::IsWindow(loading.m_hWnd);
            second.Release();
        });
    });
    loading.ShowWindow();
    EXPECT_TRUE(survived);
    EXPECT_THAT(results.All(), ElementsAre(2u, 8u));
    EXPECT_THAT(loading.closings, ElementsAre(2u, 8u));
}

TEST_F(CommonLoadingWindowTest, TheOwnerEndsWhileTheWorkRuns)
{
    auto loading = std::make_unique<FleetingLoading>(owner);
    Gate gate;
    loading->RegitsterWaitingEvent(gate.Work());
    HWND window = nullptr;
    actions.Post([&] {
        gate.AwaitBegin();
        window = loading->m_hWnd;
        owner.Destroy();
    });
    loading->ShowWindow();
    EXPECT_THAT(results.All(), ElementsAre(0u));
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(loading->m_hWnd, nullptr);
    EXPECT_EQ(gate.Ended(), 0);
    loading.reset();
    PostRecord posted;
    gate.Release();
    EXPECT_EQ(gate.Ended(), 1);
    EXPECT_THAT(posted.Taken(), IsEmpty());
}

// --- Failures ---

#ifdef _MSC_VER
constexpr wchar_t kThreadImporter[] = L"Quillet.dll";
constexpr char kThreadLibrary[] = "api-ms-win-crt-runtime-l1-1-0.dll";
constexpr char kThreadFunction[] = "_beginthreadex";

uintptr_t NoThread(void*, unsigned, unsigned(__stdcall*)(void*), void*, unsigned, unsigned*)
{
    errno = EAGAIN;
    return 0;
}
#else
constexpr wchar_t kThreadImporter[] = L"libstdc++-6.dll";
constexpr char kThreadLibrary[] = "libwinpthread-1.dll";
constexpr char kThreadFunction[] = "pthread_create";

int NoThread(void*, const void*, void* (*)(void*), void*)
{
    return EAGAIN;
}
#endif

TEST_F(CommonLoadingWindowTest, WithoutAThreadNothingIsShownAndTheErrorIsRaised)
{
    TestLoading loading(owner);
    loading.RegitsterWaitingEvent([this] { time.Note("work"); });
    HWND window = nullptr;
    loading.onInit = [&] { window = loading.m_hWnd; };
    const int windows = test::UserWindows();
    {
        const ImportHook hook(kThreadImporter, kThreadLibrary, kThreadFunction, &NoThread);
        ASSERT_TRUE(static_cast<bool>(hook));
        EXPECT_THROW(loading.ShowWindow(), std::system_error);
    }
    EXPECT_NE(window, nullptr);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(loading.m_hWnd, nullptr);
    EXPECT_EQ(loading.shown, 0);
    EXPECT_EQ(test::UserWindows(), windows);
    EXPECT_TRUE(::IsWindowEnabled(owner));
    EXPECT_THAT(results.All(), IsEmpty());
    EXPECT_THAT(time.Happened(), IsEmpty());

    loading.ShowWindow();
    EXPECT_THAT(time.Happened(), ElementsAre("clock", "work", "clock", "Sleep 1000"));
    EXPECT_THAT(results.All(), ElementsAre(8u));
}

TEST_F(CommonLoadingWindowTest, WorkThatThrowsEndsTheProcess)
{
    EXPECT_EXIT(
        test::RunAndExit([this] {
            TestLoading loading(owner);
            loading.RegitsterWaitingEvent([] { throw std::runtime_error("work"); });
            loading.ShowWindow();
        }),
        [](int code) { return code != 0 && code != 1; }, "");
}

// --- Many times ---

TEST_F(CommonLoadingWindowTest, ManyOpeningsLeaveNothingBehind)
{
    int runs = 0;
    const auto open = [&] {
        TestLoading loading(owner, L"Many");
        loading.RegitsterWaitingEvent([&runs] { ++runs; });
        loading.ShowWindow();
    };
    const auto settle = [] {
        return test::PumpUntil([] { return test::Threads() <= WorkersBefore(); });
    };
    time.end = 2000; // without notes of sleeping
    time.keeps = false;
    test::ExpectNoGrowth(500, [&] {
        open();
        settle();
    });
    EXPECT_GE(runs, 502);
    EXPECT_TRUE(settle());
}

} // namespace
