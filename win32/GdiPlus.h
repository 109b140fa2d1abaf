#pragma once

#include "win32/Windows.h"

#include <objidl.h>

#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus

#include <gdiplus.h>
