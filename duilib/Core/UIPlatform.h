#pragma once

// The platform headers, in the one order in which they compile. Every toolkit header includes this
// one first, because the Win32 name macros are part of the toolkit's binary interface.

#if !defined(UNICODE) || !defined(_UNICODE)
#error "DuiLib is Unicode only: define UNICODE and _UNICODE"
#endif

#include <windows.h>

#include <windowsx.h>

#include <commctrl.h>

#include <assert.h>
#include <malloc.h>
#include <richedit.h>
#include <stddef.h>
#include <tchar.h>

#include <objbase.h>
#include <objidl.h>
#include <oleauto.h>
#include <oleidl.h>

// The GDI+ headers of Visual C++ need min and max, whatever NOMINMAX says.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus

#include <gdiplus.h>

#include <shlobj.h>
