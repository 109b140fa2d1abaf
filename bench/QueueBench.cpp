#include <quillet/quillet.h>

#include "bench/Harness.h"
#include "win32/Handles.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace bench {

namespace {

using DuiLib::UIMainQueue;
using Quillet::UniqueKernelHandle;
using Task = std::function<void()>;

constexpr UINT kWakeUp = WM_USER + 4;
constexpr int kBatch = 100;
constexpr std::size_t kRounds = 9;
constexpr double kLargestToBareQueue = 1.3;

// The least that hands tasks to another thread, giving way after each as well.
class BareQueue {
public:
    explicit BareQueue(DWORD thread) : m_thread(thread) {}

    void dispatch(const Task& task)
    {
        {
            const std::lock_guard lock(m_lock);
            m_tasks.push_back(task);
        }
        ::PostThreadMessageW(m_thread, kWakeUp, 0, 0);
    }
    void finish()
    {
        std::deque<Task> batch;
        {
            const std::lock_guard lock(m_lock);
            batch.swap(m_tasks);
        }
        for (const auto& task : batch) {
            task();
            std::this_thread::yield();
        }
    }

private:
    DWORD m_thread;
    std::mutex m_lock;
    std::deque<Task> m_tasks;
};

// Removes a wake-up that waits, or waits for the next one.
void AwaitWakeUp()
{
    MSG message{};
    ::GetMessageW(&message, nullptr, kWakeUp, kWakeUp);
}

// Tasks dispatched by the thread that runs them, and run together.
template <class Queue>
void RunBatch(Queue& queue, int& ran)
{
    for (int i = 0; i < kBatch; ++i)
        queue.dispatch([&ran] { ++ran; });
    for (int i = 0; i < kBatch; ++i) {
        AwaitWakeUp();
        queue.finish();
    }
}

// A thread that does one thing each time it is told to.
class Worker {
public:
    explicit Worker(std::function<void()> duty) : m_thread([this, duty] { Work(duty); }) {}
    ~Worker()
    {
        m_ends = true;
        Tell();
        m_thread.join();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void Tell() { ::SetEvent(m_told.get()); }

private:
    void Work(const std::function<void()>& duty)
    {
        while (true) {
            ::WaitForSingleObject(m_told.get(), INFINITE);
            if (m_ends)
                return;
            duty();
        }
    }

    UniqueKernelHandle m_told{::CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};

// Posting and switching threads cost what the system makes of them at the moment, so the round
// whose ratio is the median is taken.
Pair MedianRound(const std::function<void()>& function, const std::function<void()>& bare)
{
    std::array<Pair, kRounds> rounds;
    for (auto& round : rounds)
        round = TimeBoth(function, bare);
    const auto median = rounds.begin() + kRounds / 2;
    std::nth_element(rounds.begin(), median, rounds.end(), [](const Pair& a, const Pair& b) {
        return a.cost / a.bare < b.cost / b.bare;
    });
    return *median;
}

void MeasureThroughput(Report& report, UIMainQueue& queue, BareQueue& bare)
{
    int ran = 0;
    const auto pair = MedianRound([&] { RunBatch(queue, ran); }, [&] { RunBatch(bare, ran); });
    report.Add({"dispatch and run 100 tasks / lock, deque and posted messages", pair.cost,
                pair.bare, kLargestToBareQueue});
}

// From telling a worker to dispatch until its task has run here.
void MeasureLatency(Report& report, UIMainQueue& queue, BareQueue& bare)
{
    bool ran = false;
    const Task task = [&ran] { ran = true; };
    Worker dispatching([&] { queue.dispatch(task); });
    Worker dispatchingBare([&] { bare.dispatch(task); });
    const auto runOne = [&ran](Worker& worker, auto& from) {
        ran = false;
        worker.Tell();
        while (!ran) {
            AwaitWakeUp();
            from.finish();
        }
    };
    const auto pair =
        MedianRound([&] { runOne(dispatching, queue); }, [&] { runOne(dispatchingBare, bare); });
    report.Add({"from a worker's dispatch to the run / lock, deque and message", pair.cost,
                pair.bare, kLargestToBareQueue});
}

} // namespace

void RunQueueBench(Report& report)
{
    MSG message{};
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    auto& queue = UIMainQueue::getInstance();
    queue.SetUIMainThread(::GetCurrentThreadId());
    BareQueue bare(::GetCurrentThreadId());
    MeasureThroughput(report, queue, bare);
    MeasureLatency(report, queue, bare);
}

} // namespace bench
