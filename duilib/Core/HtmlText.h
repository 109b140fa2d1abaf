#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

class CPaintManagerUI;

// Drops every laid-out text that uses the font, or that was laid out for a manager that ends.
void ForgetHtmlTexts(HFONT font);
void ForgetHtmlTexts(const CPaintManagerUI* manager);

} // namespace DuiLib
