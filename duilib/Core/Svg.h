#pragma once

#include "Core/ImageDecoder.h"

namespace DuiLib {

// Draws a simple SVG file at `scale` percent of its own size. Without a bitmap the file is not one
// that can be drawn, and `failure` says why.
DecodedPicture DrawSvg(std::span<const BYTE> data, int scale, std::wstring& failure);

} // namespace DuiLib
