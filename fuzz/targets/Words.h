#pragma once

#include "fuzz/engine/Bytes.h"

#include <string_view>
#include <vector>

namespace fuzz {

// The words of fuzz/dictionaries/NAME.txt.
std::vector<Bytes> DictionaryFile(const wchar_t* name);

// The files of fuzz/seeds/NAME; one whose name ends in ".lines" holds a seed in every line.
std::vector<Bytes> SeedFolder(const wchar_t* name);

// The files of the gallery's skin with that extension, such as L".xml".
std::vector<Bytes> GalleryFiles(const wchar_t* extension);

// Names of classes as a skin writes them, and of attributes.
std::vector<Bytes> ControlNames();
std::vector<Bytes> AttributeNames();

// Values that attributes of some kind take, or nearly.
std::vector<Bytes> AttributeValues();

void Append(std::vector<Bytes>& to, std::vector<Bytes> more);

} // namespace fuzz
