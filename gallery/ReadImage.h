#pragma once

#include <quillet/quillet.h>

#include <memory>

namespace gallery {

// A picture of the skin as an image that does not hold on to its file.
std::unique_ptr<DuiLib::UIImage> ReadImage(const wchar_t* name);

} // namespace gallery
