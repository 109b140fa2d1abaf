#include "Core/Diagnostics.h"

#include <mutex>
#include <new>

namespace DuiLib {

namespace {

struct LastError {
    std::mutex mutex;
    std::wstring text;
};

// Never destroyed: other threads may still report while the process ends.
LastError& TheLastError()
{
    static LastError& error = *new LastError;
    return error;
}

} // namespace

void ReportFailure(std::wstring_view what)
{
    SetLastFailure(what);
    std::wstring line(what);
    line += L'\n';
    ::OutputDebugStringW(line.c_str());
}

void ReportOutOfMemory() noexcept
{
    ::OutputDebugStringW(L"out of memory\n");
    try {
        SetLastFailure(L"out of memory");
    } catch (const std::bad_alloc&) {
        // The line has to do.
    }
}

void SetLastFailure(std::wstring_view what)
{
    auto& error = TheLastError();
    const std::lock_guard lock(error.mutex);
    error.text = what;
}

CDuiString LastFailure()
{
    auto& error = TheLastError();
    const std::lock_guard lock(error.mutex);
    return error.text.c_str();
}

std::wstring PlaceOf(std::wstring_view file, unsigned line, unsigned column)
{
    std::wstring place(file);
    if (line == 0)
        return place;
    place += L'(';
    place += std::to_wstring(line);
    place += L',';
    place += std::to_wstring(column);
    return place += L')';
}

std::wstring FailureAt(std::wstring_view file, unsigned line, unsigned column,
                       std::wstring_view reason)
{
    std::wstring text = PlaceOf(file, line, column);
    text += L": ";
    return text += reason;
}

} // namespace DuiLib
