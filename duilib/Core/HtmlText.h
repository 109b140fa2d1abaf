#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

// Drops every laid-out text that uses the font.
void ForgetHtmlTexts(HFONT font);

} // namespace DuiLib
