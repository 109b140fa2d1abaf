#pragma once

#include "Core/UIPlatform.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "win32/Handles.h"

namespace DuiLib {

// Pictures above this size are refused.
constexpr std::int64_t kLargestPicturePixels = 64ll * 1024 * 1024;

// A decoded picture: 32 bits per pixel, blue, green, red, alpha, first row on top, colours
// multiplied by alpha. The bits belong to the bitmap.
struct DecodedPicture {
    Quillet::UniqueBitmap bitmap;
    BYTE* bits = nullptr;
    int width = 0;
    int height = 0;
    bool alpha = false;    // some pixel is not opaque
    bool scalable = false; // a drawing, made at the scale that was asked for
};

// PNG, JPEG, BMP, GIF (its first frame), ICO, TGA or a simple SVG, by its content. A pixel whose 32
// bits equal the mask becomes transparent; a mask of 0 masks nothing. The scale (percent) counts
// for SVG only. Without a bitmap the picture is not decodable, and `failure` says why.
DecodedPicture DecodePicture(std::span<const BYTE> data, DWORD mask, int scale,
                             std::wstring& failure);

// An empty (transparent) picture; without a bitmap when the size is absurd.
DecodedPicture CreatePicture(std::int64_t width, std::int64_t height, std::wstring& failure);

// Multiplies the colours by their alpha.
void Premultiply(const DecodedPicture& picture);

// Whether the content is text that begins with markup.
bool IsMarkup(std::span<const BYTE> data);

// Empty when the sizes that the file's header names are bearable, else the reason. GDI+ would
// allocate them before it looks at the rest.
std::wstring CheckHeaderSize(std::span<const BYTE> data);

// A GDI+ image with all its frames; null when it is not decodable.
std::unique_ptr<Gdiplus::Image> DecodeGdiplusImage(std::span<const BYTE> data);

} // namespace DuiLib
