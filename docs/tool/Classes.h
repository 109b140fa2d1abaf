#pragma once

#include "docs/tool/AttributeTables.h"

#include <vector>

namespace docs {

// The classes of the toolkit and of the library, as their own tables tell; the attributes of a
// skin's Window element under CPaintManagerUI.
std::vector<ClassAttributes> AllClasses();

} // namespace docs
