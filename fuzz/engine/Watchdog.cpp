#include "fuzz/engine/Watchdog.h"

#include "fuzz/engine/Record.h"
#include "support/CrashFilter.h"

#include <cstdint>
#include <cstdlib>

namespace fuzz {

namespace {

constexpr DWORD kInterval = 50; // milliseconds

HANDLE DuplicateOfThisThread()
{
    HANDLE thread = nullptr;
    ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(), &thread,
                      0, FALSE, DUPLICATE_SAME_ACCESS);
    return thread;
}

// In milliseconds.
ULONGLONG WorkOf(HANDLE thread)
{
    FILETIME created{}, ended{}, kernel{}, user{};
    ::GetThreadTimes(thread, &created, &ended, &kernel, &user);
    const auto number = [](const FILETIME& time) {
        return static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    };
    constexpr ULONGLONG kInAMillisecond = 10'000;
    return (number(kernel) + number(user)) / kInAMillisecond;
}

bool IsInModule(DWORD64 address)
{
    HMODULE module = nullptr;
    return ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                    GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                reinterpret_cast<LPCWSTR>(address), &module) != 0;
}

} // namespace

Watchdog::Watchdog(const WatchdogLimits& limits)
    : m_limits(limits),
      m_watched(DuplicateOfThisThread()),
      m_end(::CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      m_thread(&Watchdog::Watch, this)
{
}

Watchdog::~Watchdog()
{
    ::SetEvent(m_end.get());
    m_thread.join();
}

void Watchdog::Watch()
{
    const auto& record = Record::Instance();
    std::uint64_t watched = 0;
    ULONGLONG workBefore = 0;
    ULONGLONG start = 0;
    while (::WaitForSingleObject(m_end.get(), kInterval) == WAIT_TIMEOUT) {
        const std::uint64_t running = record.execution;
        if (running == 0 || running != watched) {
            watched = running;
            workBefore = WorkOf(m_watched.get());
            start = ::GetTickCount64();
        } else if (WorkOf(m_watched.get()) - workBefore > m_limits.work ||
                   ::GetTickCount64() - start > m_limits.wait) {
            ReportHang();
        }
    }
}

// Code of the system below its modules has no stack that can be walked; it returns now and then.
CONTEXT Watchdog::StopWhereItCanBeSeen() const
{
    constexpr int kMostTries = 500;
    CONTEXT context{};
    for (int i = 0; i < kMostTries; ++i) {
        ::SuspendThread(m_watched.get());
        context.ContextFlags = CONTEXT_FULL;
        if (::GetThreadContext(m_watched.get(), &context) && IsInModule(context.Rip))
            break;
        ::ResumeThread(m_watched.get());
        ::Sleep(1);
    }
    return context;
}

void Watchdog::ReportHang()
{
    Record::Instance().Report("hang");
    test::PrintStack(StopWhereItCanBeSeen());
    ::TerminateProcess(::GetCurrentProcess(), kHangExitCode);
    for (;;)
        ::Sleep(INFINITE);
}

} // namespace fuzz
