#pragma once

#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace DuiLib {

// What to try when a name is neither below the resource path nor in the archive or module.
enum class ResourceFallback {
    None,
    PlainPath, // the file whose path is the name itself
};

constexpr std::size_t kLargestResource = 256u * 1024u * 1024u;

// The bytes of a resource: without a type, a file below the resource path or an item of the
// resource archive; with one, the Win32 resource of that type and number in the module, or in the
// resource module when it is null. Safe from any thread.
//
// Nothing is reported: callers may have another name to try. `reason` receives a readable reason
// for a failure, without the name.
std::optional<std::vector<BYTE>> LoadResourceBytes(STRINGorID name, LPCTSTR type, HINSTANCE module,
                                                   ResourceFallback fallback,
                                                   std::size_t largest = kLargestResource,
                                                   std::wstring* reason = nullptr);

// The archive that resources come from, as the statics of CPaintManagerUI set it. An empty path or
// no bytes: none. A cached file is kept open, any other is opened for each look-up.
void UseResourceZip(const std::wstring& path, bool cached, const CDuiString& password);
void UseResourceZip(const void* bytes, std::size_t size, const CDuiString& password);

// Identifies the archive while it is open; null when there is none.
HANDLE ResourceZipHandle();

} // namespace DuiLib
