#pragma once

#include "fuzz/engine/Mutator.h"
#include "fuzz/engine/Target.h"
#include "fuzz/engine/Watchdog.h"

#include <cstdint>
#include <string>

namespace fuzz {

struct SessionOptions {
    std::uint64_t executions = 1'000'000;
    std::uint64_t seed = 1;
    double longest = 0; // seconds; 0: no limit
    WatchdogLimits limits{};
    std::wstring saveFolder{};
    bool progress = false;
};

struct SessionResult {
    std::uint64_t executions = 0;
    double seconds = 0;
    double slowest = 0;    // execution, in seconds
    std::size_t pool = 0;  // inputs that showed something new
    std::string failure{}; // empty: none. A crash or a hang ends the process instead
};

// Runs a target with its seeds, then with mutations of them and of every input that made it do
// something new.
SessionResult RunSession(const Target& target, const SessionOptions& options);

// Runs a target with one input, then a few times more to see whether anything is left of a run.
SessionResult Replay(const Target& target, ByteView input, const SessionOptions& options = {});

} // namespace fuzz
