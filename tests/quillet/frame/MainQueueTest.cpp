#include "quillet/quillet.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "tests/quillet/frame/FreshProcess.h"
#include "win32/Handles.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <future>
#include <initializer_list>
#include <latch>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;
using Quillet::UniqueKernelHandle;
using Task = std::function<void()>;

constexpr UINT kWakeUp = WM_USER + 4;
constexpr std::chrono::seconds kDeadline{30}; // only a failure gets there

static_assert(std::is_same_v<decltype(&QuilletGlobal::GetInstatnce), QuilletGlobal& (*)()>);
static_assert(!std::is_default_constructible_v<QuilletGlobal>);
static_assert(std::is_copy_assignable_v<QuilletGlobal>);
static_assert(!std::is_default_constructible_v<UIMainQueue>);
static_assert(!std::is_destructible_v<UIMainQueue>);
static_assert(!std::is_copy_constructible_v<UIMainQueue>);
static_assert(!std::is_copy_assignable_v<UIMainQueue>);
static_assert(std::is_same_v<decltype(&UIMainQueue::getInstance), UIMainQueue& (*)()>);
static_assert(
    std::is_same_v<decltype(&UIMainQueue::dispatch), bool (UIMainQueue::*)(const Task&, HWND)>);

UIMainQueue& Queue()
{
    return UIMainQueue::getInstance();
}

// Makes the calling thread one that messages can be posted to.
void MakeMessageQueue()
{
    MSG message{};
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
}

const HWND kThreadItself = reinterpret_cast<HWND>(-1);

// How many wake-ups wait for the window, or for the calling thread itself; none waits afterwards.
int TakeWakeUps(HWND window = kThreadItself)
{
    int count = 0;
    MSG message{};
    while (::PeekMessageW(&message, window, 0, 0, PM_REMOVE)) {
        if (message.message != kWakeUp)
            continue;
        EXPECT_EQ(message.wParam, 0u);
        EXPECT_EQ(message.lParam, 0);
        EXPECT_EQ(message.hwnd, window == kThreadItself ? nullptr : window);
        ++count;
    }
    return count;
}

class MessageWindow {
public:
    ~MessageWindow() { ::DestroyWindow(m_handle); }
    HWND Handle() const { return m_handle; }

private:
    HWND m_handle = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr);
};

// Adds to a text when it dies: for a task to hold.
std::shared_ptr<void> NotesItsEnd(std::string& log)
{
    return {&log, [&log](void*) { log += "destroyed "; }};
}

// Replaces a function of the C++ run-time library as it is called by the library: the first that is
// imported, because compilers name it differently.
class RuntimeHook {
public:
    struct Name {
        const char* dll;
        const char* function;
    };
    RuntimeHook(std::initializer_list<Name> names, void* replacement)
    {
        for (const auto& name : names) {
            m_hook.emplace(L"Quillet.dll", name.dll, name.function, replacement);
            if (*m_hook)
                return;
        }
    }
    explicit operator bool() const { return static_cast<bool>(*m_hook); }
    template <class Function>
    Function* Original() const
    {
        return m_hook->Original<Function>();
    }

private:
    std::optional<ImportHook> m_hook;
};

// Notes when a thread gives way in the library.
class YieldHook : public RuntimeHook {
public:
    explicit YieldHook(std::string& log)
        : RuntimeHook({{"libwinpthread-1.dll", "sched_yield"},
                       {"MSVCP140.dll", "_Thrd_yield"},
                       {"MSVCP140D.dll", "_Thrd_yield"}},
                      reinterpret_cast<void*>(&OnYield))
    {
        s_log = &log;
    }

private:
    static int OnYield()
    {
        *s_log += "yield ";
        return 0;
    }
    static inline std::string* s_log;
};

// Notes when the library locks and unlocks, or lets locking fail.
class LockHooks {
public:
    explicit LockHooks(std::string& log) { s_log = &log, s_locks = this, s_failure = 0; }
    explicit operator bool() const { return lock && unlock; }
    static void Fail() { s_failure = EDEADLK; }

private:
    using Function = int(void*);
    static int OnLock(void* mutex)
    {
        if (s_failure)
            return s_failure;
        const int result = s_locks->lock.Original<Function>()(mutex);
        *s_log += "lock ";
        return result;
    }
    static int OnUnlock(void* mutex)
    {
        *s_log += "unlock ";
        return s_locks->unlock.Original<Function>()(mutex);
    }

    static inline std::string* s_log;
    static inline LockHooks* s_locks;
    static inline int s_failure;

    RuntimeHook lock{{{"libwinpthread-1.dll", "pthread_mutex_lock"},
                      {"MSVCP140.dll", "_Mtx_lock"},
                      {"MSVCP140D.dll", "_Mtx_lock"}},
                     reinterpret_cast<void*>(&OnLock)};
    RuntimeHook unlock{{{"libwinpthread-1.dll", "pthread_mutex_unlock"},
                        {"MSVCP140.dll", "_Mtx_unlock"},
                        {"MSVCP140D.dll", "_Mtx_unlock"}},
                       reinterpret_cast<void*>(&OnUnlock)};
};

// --- QuilletGlobal ---

TEST(QuilletGlobalTest, TheMisspelledDoorLeadsToTheSameObjectEachTime)
{
    QuilletGlobal* const here = &QuilletGlobal::GetInstatnce();
    const auto elsewhere =
        std::async(std::launch::async, [] { return &QuilletGlobal::GetInstatnce(); }).get();
    EXPECT_EQ(&QuilletGlobal::GetInstatnce(), here);
    EXPECT_EQ(elsewhere, here);
}

TEST(QuilletGlobalTest, KeepsAnyIdAndTakesAnotherOne)
{
    auto& global = QuilletGlobal::GetInstatnce();
    const DWORD before = global.GetMainThreadId();
    for (const DWORD id : {DWORD{1}, DWORD{0xFFFFFFFF}, ::GetCurrentThreadId(), DWORD{0}}) {
        global.SetMainThreadId(id);
        EXPECT_EQ(global.GetMainThreadId(), id);
    }
    global.SetMainThreadId(before);
}

TEST(QuilletGlobalTest, AssigningCopiesTheIdAndNothingElse)
{
    auto& global = QuilletGlobal::GetInstatnce();
    const DWORD before = global.GetMainThreadId();
    QuilletGlobal copy = global;
    copy.SetMainThreadId(77);
    EXPECT_EQ(global.GetMainThreadId(), before);
    global = copy;
    EXPECT_EQ(global.GetMainThreadId(), 77u);
    copy.SetMainThreadId(78);
    EXPECT_EQ(global.GetMainThreadId(), 77u);
    EXPECT_EQ(sizeof(QuilletGlobal), sizeof(DWORD));
    global.SetMainThreadId(before);
}

TEST(QuilletGlobalProcessTest, TheIdIsZeroUntilItIsSet)
{
    EXPECT_EXIT(RunAndExit([] { EXPECT_EQ(QuilletGlobal::GetInstatnce().GetMainThreadId(), 0u); }),
                testing::ExitedWithCode(0), "");
}

constexpr int kThreads = 64;

// Starts the threads, holds them at a line and lets them go together.
template <class Body>
void RunTogether(Body body)
{
    std::latch line(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&line, &body, i] {
            line.arrive_and_wait();
            body(i);
        });
    for (auto& thread : threads)
        thread.join();
}

TEST(QuilletGlobalProcessTest, ManyThreadsThatComeFirstMakeOneObject)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::array<DWORD, kThreads> ids{};
                    RunTogether([&ids](int i) {
                        QuilletGlobal::GetInstatnce().SetMainThreadId(42);
                        ids[static_cast<std::size_t>(i)] =
                            QuilletGlobal::GetInstatnce().GetMainThreadId();
                    });
                    for (const DWORD id : ids)
                        EXPECT_EQ(id, 42u);
                }),
                testing::ExitedWithCode(0), "");
}

// --- UIMainQueue: storing and running ---

// The queue of the process, empty, with this thread as the one that it wakes.
class MainQueueTest : public testing::Test {
protected:
    MainQueueTest()
    {
        MakeMessageQueue();
        Queue().SetUIMainThread(::GetCurrentThreadId());
        Queue().finish();
        TakeWakeUps();
    }
    ~MainQueueTest() override
    {
        Queue().finish();
        TakeWakeUps();
        Queue().SetUIMainThread(0);
    }

    // A task that notes its name.
    Task Note(const char* name)
    {
        return [this, name] { log += std::string(name) + " "; };
    }
    void DispatchABC()
    {
        for (const char* const name : {"A", "B", "C"})
            Queue().dispatch(Note(name));
    }

    std::string log;
};

TEST_F(MainQueueTest, GetInstanceAnswersTheSameQueueEachTime)
{
    EXPECT_EQ(&UIMainQueue::getInstance(), &UIMainQueue::getInstance());
}

TEST_F(MainQueueTest, DispatchRunsNothingItself)
{
    EXPECT_TRUE(Queue().dispatch(Note("A")));
    EXPECT_EQ(log, "");
    EXPECT_TRUE(Queue().finish());
    EXPECT_EQ(log, "A ");
}

TEST_F(MainQueueTest, TasksRunInTheOrderOfTheirDispatchWithinOneCall)
{
    DispatchABC();
    Queue().finish();
    EXPECT_EQ(log, "A B C ");
}

TEST_F(MainQueueTest, EachTaskRunsOnce)
{
    DispatchABC();
    Queue().finish();
    Queue().finish();
    EXPECT_EQ(log, "A B C ");
}

TEST_F(MainQueueTest, FinishOfAnEmptyQueueRunsNothingAndIsTrue)
{
    const YieldHook yields(log);
    EXPECT_TRUE(Queue().finish());
    EXPECT_EQ(log, "");
}

TEST_F(MainQueueTest, FinishRunsTheTasksOnTheThreadThatCallsIt)
{
    std::thread::id ran;
    Queue().dispatch([&ran] { ran = std::this_thread::get_id(); });
    std::thread::id called;
    std::thread([&called] {
        called = std::this_thread::get_id();
        Queue().finish();
    }).join();
    EXPECT_EQ(ran, called);
}

TEST_F(MainQueueTest, ATaskIsCopiedOnceOnItsWayInAndNeverAgain)
{
    struct Copied {
        explicit Copied(int& copies) : m_copies(copies) {}
        Copied(const Copied& other) : m_copies(other.m_copies) { ++m_copies; }
        void operator()() const {}
        int& m_copies;
    };
    int copies = 0;
    const Task task{Copied(copies)};
    copies = 0;
    Queue().dispatch(task);
    EXPECT_EQ(copies, 1);
    Queue().finish();
    EXPECT_EQ(copies, 1);
    EXPECT_TRUE(task);
}

TEST_F(MainQueueTest, WhatBecomesOfTheCallersTaskDoesNotMatter)
{
    Task task = Note("A");
    Queue().dispatch(task);
    task = Note("B");
    Queue().dispatch(task);
    task = nullptr;
    Queue().finish();
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, ATaskMayBeDispatchedTwice)
{
    const Task task = Note("A");
    Queue().dispatch(task);
    Queue().dispatch(task);
    Queue().finish();
    EXPECT_EQ(log, "A A ");
}

TEST_F(MainQueueTest, AnEmptyTaskIsQueuedAndSkipped)
{
    Queue().dispatch(Note("A"));
    EXPECT_TRUE(Queue().dispatch(Task{}));
    EXPECT_TRUE(Queue().dispatch(nullptr));
    Queue().dispatch(Note("B"));
    EXPECT_EQ(TakeWakeUps(), 4);
    EXPECT_TRUE(Queue().finish());
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, EmptyTasksTakeUpRoomUntilTheyAreSkipped)
{
    const auto dispatchMany = [] {
        for (int i = 0; i < 1000; ++i)
            Queue().dispatch(Task{});
    };
    dispatchMany();
    Queue().finish();
    const int before = HeapBlocks();
    dispatchMany();
    EXPECT_GT(HeapBlocks(), before);
    Queue().finish();
    EXPECT_EQ(HeapBlocks(), before);
}

TEST_F(MainQueueTest, OtherThreadsGetAChanceAfterEachTaskThatRan)
{
    const YieldHook yields(log);
    ASSERT_TRUE(yields);
    Queue().dispatch(Note("A"));
    Queue().dispatch(Task{});
    Queue().dispatch(Note("B"));
    Queue().dispatch(Task{});
    Queue().finish();
    EXPECT_EQ(log, "A yield B yield ");
}

TEST_F(MainQueueTest, DispatchGivesNobodyAChance)
{
    const YieldHook yields(log);
    Queue().dispatch(Note("A"));
    EXPECT_EQ(log, "");
}

TEST_F(MainQueueTest, ATaskDispatchedByATaskWaitsForTheNextCall)
{
    Queue().dispatch([this] {
        log += "A ";
        Queue().dispatch(Note("D"));
    });
    Queue().dispatch(Note("B"));
    Queue().finish();
    EXPECT_EQ(log, "A B ");
    EXPECT_EQ(TakeWakeUps(), 3);
    Queue().finish();
    EXPECT_EQ(log, "A B D ");
}

TEST_F(MainQueueTest, ATaskThatDispatchesItselfRunsOncePerCall)
{
    struct Again {
        int& runs;
        void operator()() const
        {
            if (++runs < 3)
                Queue().dispatch(*this);
        }
    };
    int runs = 0;
    Queue().dispatch(Again{runs});
    for (const int expected : {1, 2, 3, 3}) {
        Queue().finish();
        EXPECT_EQ(runs, expected);
    }
}

TEST_F(MainQueueTest, FinishWithinATaskRunsTheNestedBatchAtOnce)
{
    Queue().dispatch([this] {
        log += "A( ";
        Queue().dispatch(Note("D"));
        Queue().dispatch(Note("E"));
        EXPECT_TRUE(Queue().finish());
        log += ")A ";
    });
    Queue().dispatch(Note("B"));
    Queue().finish();
    EXPECT_EQ(log, "A( D E )A B ");
}

TEST_F(MainQueueTest, FinishWithinFinishGoesAsDeepAsItIsAsked)
{
    constexpr int kDepth = 50;
    int depth = 0;
    int deepest = 0;
    Task down = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth < kDepth) {
            Queue().dispatch(down);
            Queue().finish();
        }
        --depth;
    };
    Queue().dispatch(down);
    Queue().finish();
    EXPECT_EQ(deepest, kDepth);
}

TEST_F(MainQueueTest, FinishWithinATaskDoesNotRunTheRestOfItsOwnBatch)
{
    Queue().dispatch([this] {
        Queue().finish();
        log += "A ";
    });
    Queue().dispatch(Note("B"));
    Queue().finish();
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, TheTasksOfABatchAreDestroyedAfterTheLastRan)
{
    Queue().dispatch([this, end = NotesItsEnd(log)] { log += "A "; });
    Queue().dispatch(Note("B"));
    Queue().finish();
    EXPECT_EQ(log, "A B destroyed ");
}

TEST_F(MainQueueTest, TasksOfFourThreadsKeepTheOrderOfEach)
{
    constexpr int kEach = 1000;
    std::array<std::vector<int>, 4> ran;
    {
        std::vector<std::thread> threads;
        for (auto& list : ran)
            threads.emplace_back([&list] {
                for (int i = 0; i < kEach; ++i)
                    Queue().dispatch([&list, i] { list.push_back(i); });
            });
        for (auto& thread : threads)
            thread.join();
    }
    Queue().finish();
    for (const auto& list : ran) {
        ASSERT_EQ(list.size(), std::size_t{kEach});
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
    }
}

// --- The lock ---

TEST_F(MainQueueTest, DispatchStoresUnderTheLockAndFinishRunsOutsideIt)
{
    const LockHooks locks(log);
    ASSERT_TRUE(locks);
    Queue().dispatch(Note("A"));
    Queue().dispatch(Note("B"));
    EXPECT_EQ(log, "lock unlock lock unlock ");
    log.clear();
    Queue().finish();
    EXPECT_EQ(log, "lock unlock A B ");
}

TEST_F(MainQueueTest, AnotherThreadMayDispatchWhileATaskRuns)
{
    Queue().dispatch([this] {
        const auto other =
            std::async(std::launch::async, [this] { return Queue().dispatch(Note("D")); });
        EXPECT_EQ(other.wait_for(kDeadline), std::future_status::ready);
        log += "A ";
    });
    Queue().finish();
    EXPECT_EQ(log, "A ");
    Queue().finish();
    EXPECT_EQ(log, "A D ");
}

TEST_F(MainQueueTest, AFailureOfTheLockIsASystemErrorFromEachCall)
{
    Queue().dispatch(Note("A"));
    TakeWakeUps();
    {
        const LockHooks locks(log);
        ASSERT_TRUE(locks);
        LockHooks::Fail();
        EXPECT_THROW(Queue().dispatch(Note("B")), std::system_error);
        EXPECT_THROW(Queue().finish(), std::system_error);
        EXPECT_THROW(Queue().over(), std::system_error);
    }
    EXPECT_EQ(TakeWakeUps(), 0);
    Queue().dispatch(Note("C"));
    Queue().finish();
    EXPECT_EQ(log, "A C ");
}

// --- Failures of a task ---

struct TaskFailure {
    int code;
};

TEST_F(MainQueueTest, WhatATaskThrowsReachesTheCallerOfFinish)
{
    Queue().dispatch([] { throw TaskFailure{31}; });
    try {
        Queue().finish();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const TaskFailure& failure) {
        EXPECT_EQ(failure.code, 31);
    }
}

TEST_F(MainQueueTest, TheRestOfABatchIsDestroyedUnrunWhenATaskThrows)
{
    Queue().dispatch(Note("A"));
    Queue().dispatch([] { throw TaskFailure{1}; });
    Queue().dispatch([this, end = NotesItsEnd(log)] { log += "C "; });
    EXPECT_THROW(Queue().finish(), TaskFailure);
    EXPECT_EQ(log, "A destroyed ");
    Queue().finish();
    EXPECT_EQ(log, "A destroyed ");
}

TEST_F(MainQueueTest, WhatIsQueuedMeanwhileStaysQueuedWhenATaskThrows)
{
    Queue().dispatch([this] {
        Queue().dispatch(Note("D"));
        throw TaskFailure{1};
    });
    Queue().dispatch(Note("B"));
    EXPECT_THROW(Queue().finish(), TaskFailure);
    EXPECT_TRUE(Queue().finish());
    EXPECT_EQ(log, "D ");
}

TEST_F(MainQueueTest, NobodyGetsAChanceAfterATaskThatThrew)
{
    const YieldHook yields(log);
    ASSERT_TRUE(yields);
    Queue().dispatch([] { throw TaskFailure{1}; });
    EXPECT_THROW(Queue().finish(), TaskFailure);
    EXPECT_EQ(log, "");
}

TEST_F(MainQueueTest, AThrowingNestedBatchEndsTheOuterOneToo)
{
    Queue().dispatch([this] {
        log += "A ";
        Queue().dispatch([] { throw TaskFailure{1}; });
        Queue().finish();
    });
    Queue().dispatch(Note("B"));
    EXPECT_THROW(Queue().finish(), TaskFailure);
    Queue().finish();
    EXPECT_EQ(log, "A ");
}

// --- Waking the user-interface thread ---

TEST_F(MainQueueTest, WithoutAWindowTheThreadIsWoken)
{
    const MessageWindow window;
    Queue().dispatch(Note("A"));
    EXPECT_EQ(TakeWakeUps(window.Handle()), 0);
    EXPECT_EQ(TakeWakeUps(), 1);
}

TEST_F(MainQueueTest, WithAWindowTheWindowIsWokenAndNotTheThread)
{
    const MessageWindow window;
    Queue().dispatch(Note("A"), window.Handle());
    EXPECT_EQ(TakeWakeUps(), 0);
    EXPECT_EQ(TakeWakeUps(window.Handle()), 1);
    Queue().finish();
    EXPECT_EQ(log, "A ");
}

TEST_F(MainQueueTest, EveryDispatchWakesOnceThoughOneCallRunsThemAll)
{
    DispatchABC();
    MSG message{};
    int wakeUps = 0;
    while (::PeekMessageW(&message, kThreadItself, kWakeUp, kWakeUp, PM_REMOVE)) {
        ++wakeUps;
        EXPECT_TRUE(Queue().finish());
        EXPECT_EQ(log, "A B C ");
    }
    EXPECT_EQ(wakeUps, 3);
}

TEST_F(MainQueueTest, FinishLeavesTheWakeUpsInTheThreadsQueue)
{
    DispatchABC();
    Queue().finish();
    EXPECT_EQ(TakeWakeUps(), 3);
}

TEST_F(MainQueueTest, AWorkerWakesTheUserInterfaceThread)
{
    std::thread([this] { Queue().dispatch(Note("A")); }).join();
    EXPECT_EQ(TakeWakeUps(), 1);
    Queue().finish();
    EXPECT_EQ(log, "A ");
}

TEST_F(MainQueueTest, AWindowsWakeUpArrivesInALoopThatOnlyDispatches)
{
    struct Finishing {
        static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        {
            if (message == kWakeUp)
                return Queue().finish();
            return ::DefWindowProcW(window, message, wParam, lParam);
        }
    };
    const MessageWindow window;
    ::SetWindowLongPtrW(window.Handle(), GWLP_WNDPROC,
                        reinterpret_cast<LONG_PTR>(&Finishing::Procedure));
    Queue().dispatch(Note("A"), window.Handle());
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        ::DispatchMessageW(&message);
    EXPECT_EQ(log, "A ");
}

TEST_F(MainQueueTest, AWakeUpForAWindowThatIsGoneIsLostAndTheTaskStays)
{
    HWND gone = nullptr;
    {
        const MessageWindow window;
        gone = window.Handle();
    }
    EXPECT_TRUE(Queue().dispatch(Note("A"), gone));
    EXPECT_EQ(TakeWakeUps(), 0);
    Queue().dispatch(Note("B"));
    EXPECT_EQ(TakeWakeUps(), 1);
    Queue().finish();
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, WithTheThreadIdZeroTheWakeUpIsLostAndTheTaskStays)
{
    Queue().SetUIMainThread(0);
    EXPECT_TRUE(Queue().dispatch(Note("A")));
    EXPECT_EQ(TakeWakeUps(), 0);
    Queue().SetUIMainThread(::GetCurrentThreadId());
    Queue().dispatch(Note("B"));
    EXPECT_EQ(TakeWakeUps(), 1);
    Queue().finish();
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, WithTheThreadIdZeroAWindowIsWokenAllTheSame)
{
    const MessageWindow window;
    Queue().SetUIMainThread(0);
    Queue().dispatch(Note("A"), window.Handle());
    EXPECT_EQ(TakeWakeUps(window.Handle()), 1);
}

TEST_F(MainQueueTest, SetUIMainThreadChoosesTheThreadThatIsWoken)
{
    std::promise<DWORD> listening;
    std::promise<void> dispatched;
    auto woken = std::async(std::launch::async, [&] {
        MakeMessageQueue();
        listening.set_value(::GetCurrentThreadId());
        dispatched.get_future().wait();
        return TakeWakeUps();
    });
    Queue().SetUIMainThread(listening.get_future().get());
    Queue().dispatch(Note("A"));
    dispatched.set_value();
    EXPECT_EQ(woken.get(), 1);
    EXPECT_EQ(TakeWakeUps(), 0);
}

TEST_F(MainQueueTest, SetMainThreadIdDoesNotReachAQueueThatExists)
{
    auto& global = QuilletGlobal::GetInstatnce();
    const DWORD before = global.GetMainThreadId();
    global.SetMainThreadId(0);
    Queue().dispatch(Note("A"));
    EXPECT_EQ(TakeWakeUps(), 1);

    Queue().SetUIMainThread(0);
    global.SetMainThreadId(::GetCurrentThreadId());
    Queue().dispatch(Note("B"));
    EXPECT_EQ(TakeWakeUps(), 0);
    global.SetMainThreadId(before);
}

// Stands for the posting of a wake-up, which fails.
struct FailingPost {
    static inline std::function<void()> meanwhile;
    static inline int threads = 0, windows = 0;
    static BOOL WINAPI ToThread(DWORD, UINT, WPARAM, LPARAM)
    {
        ++threads;
        if (meanwhile)
            meanwhile();
        return FALSE;
    }
    static BOOL WINAPI ToWindow(HWND, UINT, WPARAM, LPARAM)
    {
        ++windows;
        return FALSE;
    }
};

TEST_F(MainQueueTest, DispatchIsTrueAlsoWhenTheWakeUpCannotBePosted)
{
    const ImportHook thread(L"Quillet.dll", "USER32.dll", "PostThreadMessageW",
                            &FailingPost::ToThread);
    const ImportHook window(L"Quillet.dll", "USER32.dll", "PostMessageW", &FailingPost::ToWindow);
    FailingPost::threads = FailingPost::windows = 0;
    FailingPost::meanwhile = nullptr;
    EXPECT_TRUE(Queue().dispatch(Note("A")));
    EXPECT_TRUE(Queue().dispatch(Note("B"), ::GetDesktopWindow()));
    EXPECT_EQ(FailingPost::threads, 1); // not tried again
    EXPECT_EQ(FailingPost::windows, 1);
    Queue().finish();
    EXPECT_EQ(log, "A B ");
}

TEST_F(MainQueueTest, TheWakeUpIsPostedAfterTheTaskIsStoredAndTheLockReleased)
{
    const ImportHook thread(L"Quillet.dll", "USER32.dll", "PostThreadMessageW",
                            &FailingPost::ToThread);
    ASSERT_TRUE(thread);
    std::future<bool> other;
    FailingPost::meanwhile = [&] {
        other = std::async(std::launch::async, [] { return Queue().finish(); });
        EXPECT_EQ(other.wait_for(kDeadline), std::future_status::ready);
        log += "posted ";
    };
    Queue().dispatch(Note("A"));
    FailingPost::meanwhile = nullptr;
    EXPECT_EQ(log, "A posted ");
}

// --- In a process of their own: the first use, and closing, which is for good ---

TEST(MainQueueProcessTest, TheThreadIdIsCopiedAtTheFirstUse)
{
    EXPECT_EXIT(RunAndExit([] {
                    MakeMessageQueue();
                    QuilletGlobal::GetInstatnce().SetMainThreadId(::GetCurrentThreadId());
                    UIMainQueue::getInstance();
                    QuilletGlobal::GetInstatnce().SetMainThreadId(0);
                    Queue().dispatch([] {});
                    EXPECT_EQ(TakeWakeUps(), 1);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, AQueueThatWasTouchedTooEarlyHoldsZeroUntilItIsTold)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    MakeMessageQueue();
                    UIMainQueue::getInstance();
                    QuilletGlobal::GetInstatnce().SetMainThreadId(::GetCurrentThreadId());
                    EXPECT_TRUE(Queue().dispatch([&log] { log += "A "; }));
                    EXPECT_EQ(TakeWakeUps(), 0);

                    Queue().SetUIMainThread(::GetCurrentThreadId());
                    Queue().dispatch([&log] { log += "B "; });
                    EXPECT_EQ(TakeWakeUps(), 1);
                    Queue().finish();
                    EXPECT_EQ(log, "A B ");
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ANewQueueIsEmptyAndOpen)
{
    EXPECT_EXIT(RunAndExit([] {
                    EXPECT_TRUE(Queue().finish());
                    bool ran = false;
                    Queue().dispatch([&ran] { ran = true; });
                    Queue().finish();
                    EXPECT_TRUE(ran);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ManyThreadsThatComeFirstMakeOneQueue)
{
    EXPECT_EXIT(RunAndExit([] {
                    int ran = 0;
                    RunTogether([&ran](int) { Queue().dispatch([&ran] { ++ran; }); });
                    Queue().finish();
                    EXPECT_EQ(ran, kThreads);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, AClosedQueueStoresNothingAndStillWakes)
{
    EXPECT_EXIT(RunAndExit([] {
                    MakeMessageQueue();
                    const MessageWindow window;
                    Queue().SetUIMainThread(::GetCurrentThreadId());
                    Queue().over();
                    bool ran = false;
                    const auto held = std::make_shared<int>();
                    const Task task = [&ran, held] { ran = true; };
                    const long before = held.use_count();
                    EXPECT_TRUE(Queue().dispatch(task));
                    EXPECT_TRUE(Queue().dispatch(task, window.Handle()));
                    EXPECT_TRUE(Queue().dispatch(task));
                    EXPECT_EQ(held.use_count(), before);
                    EXPECT_EQ(TakeWakeUps(window.Handle()), 1);
                    EXPECT_EQ(TakeWakeUps(), 2);
                    EXPECT_TRUE(Queue().finish());
                    EXPECT_FALSE(ran);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ClosingPostsNothingAndTakesNoWakeUpBack)
{
    EXPECT_EXIT(RunAndExit([] {
                    MakeMessageQueue();
                    Queue().SetUIMainThread(::GetCurrentThreadId());
                    Queue().dispatch([] {});
                    Queue().over();
                    EXPECT_EQ(TakeWakeUps(), 1);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ClosingIsForGood)
{
    EXPECT_EXIT(RunAndExit([] {
                    Queue().over();
                    Queue().over();
                    Queue().SetUIMainThread(::GetCurrentThreadId());
                    Queue().finish();
                    bool ran = false;
                    Queue().dispatch([&ran] { ran = true; });
                    Queue().finish();
                    EXPECT_FALSE(ran);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ClosingDestroysWhatIsQueuedUnrun)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    Queue().dispatch([&log, end = NotesItsEnd(log)] { log += "ran "; });
                    Queue().dispatch([&log, end = NotesItsEnd(log)] { log += "ran "; });
                    Queue().over();
                    EXPECT_EQ(log, "destroyed destroyed ");
                    Queue().finish();
                    EXPECT_EQ(log, "destroyed destroyed ");
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ClosingDestroysTheTasksInsideTheLock)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    Queue().dispatch([end = NotesItsEnd(log)] {});
                    const LockHooks locks(log);
                    EXPECT_TRUE(locks);
                    Queue().over();
                    EXPECT_EQ(log, "lock destroyed unlock ");
                }),
                testing::ExitedWithCode(0), "");
}

// The lock is recursive, so the end of a task may come back to the queue, which is closed by then.
TEST(MainQueueProcessTest, ATaskThatClosingDestroysMayUseTheQueue)
{
    EXPECT_EXIT(RunAndExit([] {
                    MakeMessageQueue();
                    Queue().SetUIMainThread(::GetCurrentThreadId());
                    std::string log;
                    const auto dispatches = [&log](void*) {
                        EXPECT_TRUE(Queue().dispatch([&log] { log += "ran "; }));
                        EXPECT_TRUE(Queue().finish());
                        Queue().over();
                        log += "destroyed ";
                    };
                    Queue().dispatch([end = std::shared_ptr<void>(&log, dispatches)] {});
                    Queue().dispatch([&log] { log += "ran "; });
                    TakeWakeUps();
                    Queue().over();
                    EXPECT_EQ(log, "destroyed ");
                    EXPECT_EQ(TakeWakeUps(), 1);
                    Queue().finish();
                    EXPECT_EQ(log, "destroyed ");
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, ATaskMayCloseTheQueueAndItsBatchGoesOn)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    Queue().dispatch([&log] {
                        Queue().dispatch([&log] { log += "D "; });
                        Queue().over();
                        Queue().dispatch([&log] { log += "E "; });
                        log += "A ";
                    });
                    Queue().dispatch([&log] { log += "B "; });
                    EXPECT_TRUE(Queue().finish());
                    EXPECT_EQ(log, "A B ");
                    Queue().finish();
                    EXPECT_EQ(log, "A B ");
                }),
                testing::ExitedWithCode(0), "");
}

TEST(MainQueueProcessTest, AnotherThreadMayCloseTheQueueWhileABatchRuns)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    Queue().dispatch([&log] {
                        std::thread([] { Queue().over(); }).join();
                        log += "A ";
                    });
                    Queue().dispatch([&log] { log += "B "; });
                    Queue().finish();
                    EXPECT_EQ(log, "A B ");
                }),
                testing::ExitedWithCode(0), "");
}

// --- Many threads and a closing one ---

constexpr int kTasksEach = 10'000;
constexpr int kPauseUntilAllHaveBegun = kTasksEach / 4;
constexpr int kHalfWay = kTasksEach / 2;
constexpr int kCertainlyClosed = kTasksEach * 9 / 10;

// What became of the tasks of one thread.
struct Course {
    int stored = 0; // written by that thread
    bool storedInOrder = true;
    int ran = 0; // written by the thread that finishes
    bool ranInOrder = true;
    int dropped = 0; // written by the thread that closes
};

struct Courses {
    std::array<Course, kThreads> of;
    std::atomic<int> lost = 0; // destroyed unrun, and not by closing
};

thread_local bool t_closes = false;

// A task that knows whose it is. Only the queue makes copies.
class NumberedTask {
public:
    NumberedTask(Courses& courses, std::size_t thread, int number)
        : m_courses(&courses), m_course(&courses.of[thread]), m_number(number)
    {
    }
    NumberedTask(NumberedTask&& other) noexcept = default;
    NumberedTask(const NumberedTask& other)
        : m_courses(other.m_courses),
          m_course(other.m_course),
          m_number(other.m_number),
          m_waits(true)
    {
        m_course->storedInOrder &= m_course->stored++ == m_number;
    }
    ~NumberedTask()
    {
        if (m_waits)
            t_closes ? ++m_course->dropped : ++m_courses->lost;
    }
    void operator()()
    {
        m_course->ranInOrder &= m_course->ran++ == m_number;
        m_waits = false;
    }

private:
    Courses* m_courses;
    Course* m_course;
    int m_number;
    bool m_waits = false;
};

// Dispatches from all the threads and meanwhile closes the queue from one more; calls finish on
// this thread for each wake-up.
void CloseHalfWay(Courses& courses)
{
    MakeMessageQueue();
    Queue().SetUIMainThread(::GetCurrentThreadId());
    std::latch begun(1);
    std::latch halfWay(kThreads);
    std::latch closed(1);
    std::atomic<bool> isClosed = false;
    const UniqueKernelHandle ended(::CreateEventW(nullptr, TRUE, FALSE, nullptr));

    std::thread all([&] {
        std::thread closing([&] {
            halfWay.wait();
            t_closes = true;
            Queue().over();
            t_closes = false;
            isClosed = true;
            closed.count_down();
        });
        RunTogether([&](int thread) {
            for (int i = 0; i < kTasksEach; ++i) {
                if (i == kPauseUntilAllHaveBegun)
                    begun.wait();
                if (i == kHalfWay)
                    halfWay.count_down();
                if (i == kCertainlyClosed)
                    closed.wait();
                EXPECT_TRUE(
                    Queue().dispatch(NumberedTask(courses, static_cast<std::size_t>(thread), i)));
            }
        });
        closing.join();
        ::SetEvent(ended.get());
    });

    const auto totalRun = [&courses] {
        int total = 0;
        for (const auto& course : courses.of)
            total += course.ran;
        return total;
    };
    bool allHaveBegun = false;
    const auto finish = [&] {
        const bool closedBefore = isClosed;
        const int before = totalRun();
        EXPECT_TRUE(Queue().finish());
        EXPECT_TRUE(!closedBefore || totalRun() == before);
        if (!allHaveBegun && std::all_of(courses.of.begin(), courses.of.end(),
                                         [](const Course& course) { return course.ran > 0; })) {
            allHaveBegun = true;
            begun.count_down();
        }
    };
    const HANDLE handle = ended.get();
    DWORD what = WAIT_OBJECT_0 + 1;
    while (what == WAIT_OBJECT_0 + 1) {
        MSG message{};
        while (::PeekMessageW(&message, kThreadItself, kWakeUp, kWakeUp, PM_REMOVE))
            finish();
        what = ::MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_POSTMESSAGE);
    }
    finish();
    all.join();
}

TEST(MainQueueProcessTest, NothingIsLostBeforeClosingAndNothingRunsAfterIt)
{
    EXPECT_EXIT(RunAndExit([] {
                    Courses courses;
                    CloseHalfWay(courses);
                    EXPECT_EQ(courses.lost, 0);
                    for (const auto& course : courses.of) {
                        EXPECT_TRUE(course.storedInOrder);
                        EXPECT_TRUE(course.ranInOrder);
                        EXPECT_GE(course.stored, kHalfWay);
                        EXPECT_LE(course.stored, kCertainlyClosed);
                        EXPECT_EQ(course.ran + course.dropped, course.stored);
                        EXPECT_GT(course.ran, 0);
                    }
                }),
                testing::ExitedWithCode(0), "");
}

// --- The end of the process ---

constexpr UINT kDestroyed = 5;
constexpr UINT kRan = 6;
constexpr UINT kEnded = 7;

void EndAtOnce(UINT code)
{
    ::TerminateProcess(::GetCurrentProcess(), code);
}

TEST(MainQueueProcessTest, WhatIsQueuedIsDestroyedUnrunWhenTheProcessEnds)
{
    EXPECT_EXIT(
        {
            Queue().dispatch([end = std::shared_ptr<void>(&Queue(), [](void*) {
                                  EndAtOnce(kDestroyed);
                              })] { EndAtOnce(kRan); });
            std::exit(kEnded);
        },
        testing::ExitedWithCode(kDestroyed), "");
}

TEST(MainQueueProcessTest, ATaskThatTheEndOfTheProcessDestroysMayUseTheQueue)
{
    EXPECT_EXIT(
        {
            const auto dispatches = [](void*) {
                Queue().dispatch([] { EndAtOnce(kRan); });
                Queue().finish();
            };
            Queue().dispatch([end = std::shared_ptr<void>(&Queue(), dispatches)] {});
            std::exit(kEnded);
        },
        testing::ExitedWithCode(kEnded), "");
}

// Stops for ever when the queue copies it, which is inside the lock.
class Stopping {
public:
    explicit Stopping(HANDLE inside) : m_inside(inside) {}
    Stopping(Stopping&& other) noexcept = default;
    Stopping(const Stopping& other) : m_inside(other.m_inside)
    {
        ::SetEvent(m_inside);
        ::WaitForSingleObject(::GetCurrentProcess(), INFINITE);
    }
    void operator()() const {}

private:
    HANDLE m_inside;
};

TEST(MainQueueProcessTest, TheProcessEndsThoughAnEndedThreadHoldsTheLock)
{
    EXPECT_EXIT(
        {
            const UniqueKernelHandle inside(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
            Queue();
            std::thread([&inside] { Queue().dispatch(Stopping(inside.get())); }).detach();
            ::WaitForSingleObject(inside.get(), INFINITE);
            std::exit(kEnded);
        },
        testing::ExitedWithCode(kEnded), "");
}

} // namespace
} // namespace test
