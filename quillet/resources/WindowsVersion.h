#pragma once

#include "win32/Windows.h"

#include <initializer_list>

namespace Quillet {

// Whether the system presents itself to this process as the given version or a later one.
inline bool IsWindowsVersionOrLater(DWORD major, DWORD minor)
{
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    version.dwMajorVersion = major;
    version.dwMinorVersion = minor;

    DWORDLONG conditions = 0;
    for (const DWORD field : {VER_MAJORVERSION, VER_MINORVERSION, VER_SERVICEPACKMAJOR})
        conditions = ::VerSetConditionMask(conditions, field, VER_GREATER_EQUAL);
    return ::VerifyVersionInfoW(&version,
                                VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                                conditions) != FALSE;
}

inline bool IsWindows7OrLater()
{
    return IsWindowsVersionOrLater(6, 1);
}
inline bool IsWindows81OrLater()
{
    return IsWindowsVersionOrLater(6, 3);
}

} // namespace Quillet
