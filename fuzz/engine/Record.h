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
    std::wstring folder; // for failing inputs, with a trailing backslash; empty: none

    ByteView input;
    std::atomic<std::uint64_t> execution{0}; // the number of the running one, 0 between two

    static Record& Instance();

    // Prints what failed and saves the input, or prints it too without a folder. Allocates
    // nothing.
    void Report(const char* failure) const;
};

} // namespace fuzz
