#pragma once

namespace test {

// A fault ends the process with exit code 99 and a printed stack, so a crash never counts as
// success and never opens a dialog.
void InstallCrashFilter();

} // namespace test
