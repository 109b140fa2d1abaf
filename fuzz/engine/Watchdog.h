#pragma once

#include "win32/Handles.h"

#include <thread>

namespace fuzz {

// The exit code of a process that found a hang.
constexpr unsigned kHangExitCode = 98;

// Ends the process, with the running input saved, when one execution takes longer than a second of
// the thread's own time, or much longer of any: other programs may keep the thread from running.
class Watchdog {
public:
    Watchdog(); // watches the calling thread
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    void Watch();
    CONTEXT StopWhereItCanBeSeen() const;
    [[noreturn]] void ReportHang();

    Quillet::UniqueKernelHandle m_watched;
    Quillet::UniqueKernelHandle m_end;
    std::thread m_thread;
};

} // namespace fuzz
