#pragma once

#include "win32/Windows.h"

namespace test {

// Whether the pointer looks like the system's cursor of that name. Only 32 bits of a handle count;
// the system may hand out the others differently.
inline bool IsCursorShown(LPCWSTR name)
{
    return HandleToLong(::GetCursor()) == HandleToLong(::LoadCursorW(nullptr, name));
}

} // namespace test
