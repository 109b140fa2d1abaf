#pragma once

#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

#include <string>
#include <string_view>

namespace DuiLib {

// Leaves a reason for the application to read: it becomes the process-wide last-error text and one
// line on the debugger output. Safe from any thread.
void ReportFailure(std::wstring_view what);

// The same for what had to be given up for lack of memory; does without any.
void ReportOutOfMemory() noexcept;

// Replaces the last-error text without a line on the debugger output.
void SetLastFailure(std::wstring_view what);

// The last-error text; empty when nothing has failed.
CDuiString LastFailure();

// "file(line,column)", both counted from 1; line 0 leaves the file alone.
std::wstring PlaceOf(std::wstring_view file, unsigned line, unsigned column);

// "file(line,column): reason".
std::wstring FailureAt(std::wstring_view file, unsigned line, unsigned column,
                       std::wstring_view reason);

} // namespace DuiLib
