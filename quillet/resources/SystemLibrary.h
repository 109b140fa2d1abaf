#pragma once

#include "win32/Windows.h"

#include <shlwapi.h>

namespace Quillet {

// Loads a system DLL by its full path, so that no file beside the application can take its place.
// Null when the path cannot be built or the file cannot be loaded. The caller owns the reference.
inline HMODULE LoadSystemLibrary(const wchar_t* fileName)
{
    wchar_t path[MAX_PATH]{};
    const UINT length = ::GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH || !::PathAppendW(path, fileName))
        return nullptr;
    return ::LoadLibraryW(path);
}

// An exported function as the type it has; null without the module or the export.
template <class Function>
Function* FindExport(HMODULE module, const char* name)
{
    if (!module)
        return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

} // namespace Quillet
