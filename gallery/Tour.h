#pragma once

#include <string>
#include <vector>

namespace gallery {

// Walks every page at 100 and 150 percent and in every language, writes a picture of each into the
// folder, and tells what is wrong with them: empty pages, clipped texts, missing glyphs.
struct TourResult {
    int pictures = 0;
    std::vector<std::wstring> problems;
};

TourResult TakeTour(const std::wstring& folder);

} // namespace gallery
