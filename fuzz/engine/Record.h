#pragma once

#include "fuzz/engine/Bytes.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace fuzz {

// What is running right now, for whoever ends the process: the crash handler and the watchdog.
struct Record {
    std::string target;
    std::uint64_t seed = 0;
    std::wstring folder; // for failing inputs, with a trailing backslash; empty: not saved

    ByteView input;
    std::atomic<std::uint64_t> execution{0}; // the number of the running one, 0 between two

    static Record& Instance();

    // Saves the input and prints what failed. Allocates nothing. Null when nothing runs.
    void Report(const char* failure) const;
};

} // namespace fuzz
