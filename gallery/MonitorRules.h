#pragma once

#include <quillet/quillet.h>

#include <string>
#include <vector>

namespace gallery {

// The DPI that a window on a monitor of that size uses when the system asks for one, and what the
// window writes to its trace meanwhile.
unsigned UsableDpi(SIZE monitor, unsigned requestedDpi);
std::vector<std::string> TraceOf(SIZE monitor, unsigned requestedDpi);

} // namespace gallery
