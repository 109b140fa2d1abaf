#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

class CPaintManagerUI;

// Applies one attribute of a skin's Window element to a manager that has a window. Names are
// compared in any case; one that the toolkit does not know becomes a custom attribute of the
// window.
void ApplyWindowAttribute(CPaintManagerUI& manager, LPCTSTR name, LPCTSTR value);

} // namespace DuiLib
