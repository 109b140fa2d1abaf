#pragma once

#include "win32/Windows.h"

namespace test {

// A fault, or an exception that nobody catches, ends the process with exit code 99 and a printed
// stack, so a crash never counts as success and never opens a dialog.
void InstallCrashFilter();

// Prints "module+offset" of each frame; the module's image base and addr2line give the line.
void PrintStack(CONTEXT context);

} // namespace test
