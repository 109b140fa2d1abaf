#pragma once

#include <string>

#include "quillet/Export.h"

namespace DuiLib {

// Opens the folder of a file in the file manager, with the file selected. Any file name will do;
// the path is absolute. False when there is no such file or the file manager cannot be opened. On
// any thread; one without COM has it for the time of the call.
QUILLET_API bool ShowFileInFolder(const std::wstring& path);

} // namespace DuiLib
