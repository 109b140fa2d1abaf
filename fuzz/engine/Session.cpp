#include "fuzz/engine/Session.h"

#include "fuzz/engine/Complaint.h"
#include "fuzz/engine/Growth.h"
#include "fuzz/engine/GuardedHeap.h"
#include "fuzz/engine/GuardedRegion.h"
#include "fuzz/engine/Record.h"
#include "fuzz/engine/Watchdog.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <vector>

namespace fuzz {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLargestInput = 4 * 1024;
constexpr std::size_t kLargestPool = 2000;
constexpr std::size_t kCourses = std::size_t{1} << 20;
constexpr std::uint64_t kRestEvery = 500;
constexpr std::uint64_t kRepeatEvery = 100;
constexpr std::uint64_t kProgressEvery = 20'000;

// The running number for the watchdog, as long as something runs.
class Running {
public:
    Running(ByteView input, std::uint64_t number)
    {
        Record::Instance().input = input;
        Record::Instance().execution = number;
    }
    ~Running() { Record::Instance().execution = 0; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
};

GuardedRegion& InputRegion()
{
    static GuardedRegion region(16 * 1024 * 1024);
    return region;
}

// What gets out of a target ends the process here, with the input saved.
void Call(const Target& target, ByteView input) noexcept
{
    target.run(input);
}

class Session {
public:
    Session(const Target& target, const SessionOptions& options)
        : m_target(target),
          m_options(options),
          m_mutator(options.seed, target.dictionary(), kLargestInput),
          m_watchdog(options.limits)
    {
        auto& record = Record::Instance();
        record.target = target.name;
        record.seed = options.seed;
        record.folder = options.saveFolder;
    }

    SessionResult Run()
    {
        m_pool = m_target.seeds();
        const auto seeds = m_pool;
        for (const auto& seed : seeds) {
            if (IsOver())
                break;
            Execute(seed);
        }
        while (!IsOver())
            Execute(m_mutator.Make(m_pool));
        Rest();
        if (m_counted && m_failure.empty())
            m_failure = FindGrowth(m_before, CountHoldings());
        return Result();
    }

    SessionResult RunOnly(ByteView input)
    {
        RunNumbered(input);
        LookForLeak(input);
        return Result();
    }

private:
    bool IsOver() const
    {
        return !m_failure.empty() || m_executions >= m_options.executions ||
               (m_options.longest > 0 && Seconds() > m_options.longest);
    }
    double Seconds() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

    SessionResult Result() const
    {
        return {.executions = m_executions,
                .seconds = Seconds(),
                .slowest = m_slowest.count(),
                .pool = m_pool.size(),
                .failure = m_failure};
    }

    void Execute(const Bytes& input)
    {
        const std::uint64_t course = RunNumbered(input);
        const std::uint64_t number = m_executions; // looking for leaks adds some
        if (!m_seen[course % kCourses])
            Keep(input);
        m_seen[course % kCourses] = true;
        if (number % kRepeatEvery == 0)
            LookForLeak(input);
        if (number % kRestEvery == 0)
            Rest();
        // Late enough for the caches to be as full as at the end.
        if (!m_counted && number >= m_options.executions / 2) {
            Rest();
            m_before = CountHoldings();
            m_counted = true;
        }
        if (m_options.progress && number % kProgressEvery == 0)
            PrintProgress();
    }

    void PrintProgress() const
    {
        Rest();
        std::printf("%llu executions, %.0f s, %llu inputs in the pool, %lld blocks\n",
                    static_cast<unsigned long long>(m_executions), Seconds(),
                    static_cast<unsigned long long>(m_pool.size()),
                    static_cast<long long>(GuardedHeap::Count().blocks));
        std::fflush(stdout);
    }

    // How the run went, roughly: how much it allocated and what the toolkit complained about.
    std::uint64_t RunNumbered(ByteView input)
    {
        ++m_executions;
        ClearComplaint();
        const auto before = GuardedHeap::Count().allocations;
        {
            const ByteView guarded = InputRegion().Place(input);
            const Running running(guarded, m_executions);
            const auto start = Clock::now();
            Call(m_target, guarded);
            m_slowest = std::max<std::chrono::duration<double>>(m_slowest, Clock::now() - start);
        }
        const auto allocations = GuardedHeap::Count().allocations - before;
        const auto magnitude = static_cast<unsigned>(std::bit_width(allocations));
        const auto detail = magnitude > 3 ? allocations >> (magnitude - 3) : allocations;
        return HashStep(HashStep(ComplaintHash(), magnitude), detail);
    }

    void Keep(const Bytes& input)
    {
        if (m_pool.size() < kLargestPool)
            m_pool.push_back(input);
        else
            m_pool[m_mutator.Dice().Below(m_pool.size())] = input;
    }

    void Rest() const
    {
        if (m_target.rest)
            m_target.rest();
    }

    // What is left of a run at each repetition is lost. Caches are as full as they get by then.
    void LookForLeak(ByteView input)
    {
        constexpr int kRepetitions = 4;
        std::int64_t least = INT64_MAX;
        Rest();
        RunNumbered(input);
        Rest();
        auto before = GuardedHeap::Count().blocks;
        for (int i = 0; i < kRepetitions; ++i) {
            RunNumbered(input);
            Rest();
            const auto after = GuardedHeap::Count().blocks;
            least = std::min(least, after - before);
            before = after;
        }
        if (least > 0) {
            const Running running(InputRegion().Place(input), m_executions);
            Record::Instance().Report("leak");
            m_failure = std::to_string(least) + " blocks are left of every run";
        }
    }

    const Target& m_target;
    const SessionOptions& m_options;
    std::vector<Bytes> m_pool;
    Mutator m_mutator;
    Watchdog m_watchdog;
    std::vector<bool> m_seen = std::vector<bool>(kCourses); // by hash, so that it never grows
    std::uint64_t m_executions = 0;
    std::chrono::duration<double> m_slowest{0};
    Clock::time_point m_start = Clock::now();
    Holdings m_before{};
    bool m_counted = false;
    std::string m_failure;
};

} // namespace

SessionResult RunSession(const Target& target, const SessionOptions& options)
{
    return Session(target, options).Run();
}

SessionResult Replay(const Target& target, ByteView input, const SessionOptions& options)
{
    return Session(target, options).RunOnly(input);
}

} // namespace fuzz
