#pragma once

namespace fuzz {

// The exit code of a process that found a crash.
constexpr unsigned kCrashExitCode = 99;

// From now on a fault, an abort or an uncaught exception saves the running input, prints the stack
// and ends the process.
void InstallCrashReport();

} // namespace fuzz
