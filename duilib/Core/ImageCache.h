#pragma once

#include "Core/UIPlatform.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "Core/UIRecords.h"
#include "Utils/Utils.h"

namespace DuiLib {

// The decoded pictures of the process: every picture is decoded once, whoever asks for it, and
// lives until the last one that acquired it has released it. Safe from any thread.
namespace ImageCache {

// A picture by its name, as image strings and image tables ask for it. A name that is not found is
// tried again without the part from its last `@` to the dot; an SVG found that way is drawn at the
// scale which that part names. Null on failure, which is reported but not remembered.
const TImageInfo* Acquire(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL, bool gdiplus,
                          HINSTANCE module);

// Ends one Acquire. False when the record is not one of the cache's.
bool Release(const TImageInfo* image);

// Decodes a picture again. The record keeps its address; when that fails it also keeps its
// picture. False when the picture does not load or the record is not one of the cache's.
bool Reload(const TImageInfo* image);

// The scale in percent at which the picture was drawn: 100 for all but an SVG that was asked for
// by a scale-specific name.
int ScaleOf(const TImageInfo* image);

std::size_t Count();

} // namespace ImageCache

// The name with `@scale` before its last dot; the name itself at scale 100 or without a dot.
std::wstring ScaledImageName(std::wstring_view name, int scale);

// The name without the part from its last `@` to the dot, and the scale which that part names (100
// when it names none).
struct PlainImageName {
    std::wstring name;
    int scale = 100;
};
bool SplitScaledImageName(std::wstring_view name, PlainImageName& plain);

// How a picture is wanted.
struct ImageRequest {
    STRINGorID name;
    LPCTSTR type = nullptr;
    DWORD mask = 0;
    HINSTANCE module = nullptr;
    int scale = 100;
    bool gdiplus = false;
};

struct ImageLoad {
    TImageInfo* image = nullptr; // owned by the caller
    std::wstring failure;        // why there is none
    bool found = false;          // there was a file, whatever it holds
    bool scalable = false;       // drawn at the scale of the request
};

// Loads without the cache and without a report.
ImageLoad LoadImageRecord(const ImageRequest& request);

// Reports a picture that did not load. It becomes the last-error text; a line on the debugger
// output only when it was not one of the last ones reported.
void ReportImageFailure(const std::wstring& failure);

} // namespace DuiLib
