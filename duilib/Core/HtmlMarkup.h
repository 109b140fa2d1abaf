#pragma once

#include "Core/UIPlatform.h"

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace DuiLib {

// A font as tags ask for it: one to start from and what they add to it.
struct HtmlFont {
    enum class Source { Call, Id, Description };

    Source source = Source::Call;
    int id = 0;        // Source::Id
    std::wstring name; // Source::Description
    int size = 0;      // Source::Description; pixels at a scale of 100 percent
    bool bold = false;
    bool underline = false;
    bool italic = false;
    bool strikeout = false;

    auto operator<=>(const HtmlFont&) const = default;
};

enum class HtmlColor { OfCall, OfTag, OfLink };

// The look of a stretch of text.
struct HtmlStyle {
    std::size_t font = 0; // in HtmlContent::fonts
    HtmlColor colorSource = HtmlColor::OfCall;
    DWORD color = 0; // HtmlColor::OfTag
    int link = -1;   // in HtmlContent::links
    bool selected = false;

    bool operator==(const HtmlStyle&) const = default;
};

struct HtmlPicture {
    std::wstring source;
    bool isImageString = false; // else the name of a picture
    int columns = 1;
    int column = 0;
};

struct HtmlItem {
    enum class Kind {
        Text,
        Break,
        ParagraphEdge, // breaks a line that is not empty
        Picture,       // value: in HtmlContent::pictures
        Shift,         // value: pixels to the right
        LineHeight,    // value: pixels
    };

    Kind kind = Kind::Text;
    std::size_t first = 0; // in HtmlContent::text; everything but text is one placeholder
    std::size_t length = 0;
    std::size_t style = 0; // in HtmlContent::styles
    int value = 0;
    int lineExtra = 0; // pixels that the paragraph adds to the height of its lines
};

// A text without its tags, and what they meant.
struct HtmlContent {
    std::wstring text;
    std::vector<HtmlItem> items; // in the order of the text, without gaps
    std::vector<HtmlStyle> styles;
    std::vector<HtmlFont> fonts; // the first is the font of the call
    std::vector<HtmlPicture> pictures;
    std::vector<std::wstring> links;
};

// Takes time in proportion to the text, whatever it contains.
HtmlContent ParseHtml(std::wstring_view text);

} // namespace DuiLib
