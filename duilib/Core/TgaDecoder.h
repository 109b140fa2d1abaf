#pragma once

#include "Core/ImageDecoder.h"

namespace DuiLib {

// The Truevision format has no signature: a file is one when every field of its header makes sense.
bool IsTga(std::span<const BYTE> data);

// Without a bitmap the file is damaged, and `failure` says how.
DecodedPicture DecodeTga(std::span<const BYTE> data, std::wstring& failure);

} // namespace DuiLib
