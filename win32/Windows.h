#pragma once

// <windows.h> for the project's own headers: sorted includes would otherwise put <gdiplus.h> first,
// which does not compile.
#include <windows.h>
