#pragma once

#include <string>

// Where the dialogs take their texts, their language and their scale from.
//
// Published: texts and language come from the toolkit's resource manager, the scale from the
// library's. An application loads its language file into both.
namespace Quillet::Dialogs {

std::wstring TextOf(const wchar_t* id); // the id itself when no language file has it
std::wstring Language();                // such as "de-DE"; empty when none was set
int Scaled(int designPixels);           // in device pixels

} // namespace Quillet::Dialogs
