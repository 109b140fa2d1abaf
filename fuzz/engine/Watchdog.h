#pragma once

#include "win32/Handles.h"

#include <thread>

namespace fuzz {

// The exit code of a process that found a hang.
constexpr unsigned kHangExitCode = 98;

// How long one execution may take, in milliseconds: of the thread's own time, and, much longer, of
// any, because other programs may keep the thread from running.
struct WatchdogLimits {
    unsigned work = 1'000;
    unsigned wait = 60'000;
};

// Ends the process, with the running input saved, when an execution exceeds a limit.
class Watchdog {
public:
    explicit Watchdog(const WatchdogLimits& limits); // watches the calling thread
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    void Watch();
    CONTEXT StopWhereItCanBeSeen() const;
    [[noreturn]] void ReportHang();

    WatchdogLimits m_limits;
    Quillet::UniqueKernelHandle m_watched;
    Quillet::UniqueKernelHandle m_end;
    std::thread m_thread;
};

} // namespace fuzz
