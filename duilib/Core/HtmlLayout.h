#pragma once

#include "Core/HtmlMarkup.h"
#include "Core/UIRecords.h"

#include <cstddef>
#include <vector>

namespace DuiLib {

class CPaintManagerUI;

// A font that a text is drawn in.
struct HtmlFontUse {
    HFONT font = nullptr;
    HFONT start = nullptr; // the one it was derived from
    int height = 0;        // of its characters
    int lineHeight = 0;    // with external leading
};

// A picture as it was when the text was laid out.
struct HtmlPictureUse {
    SIZE whole{}; // of the loaded picture; zero when it did not load
    RECT part{};  // the column that is shown
};

// A piece of text, or a picture, that is drawn at once.
struct HtmlRun {
    HtmlItem::Kind kind = HtmlItem::Kind::Text;
    std::size_t first = 0; // in the content's text
    std::size_t length = 0;
    std::size_t style = 0;
    std::size_t line = 0;
    int picture = 0;
    int left = 0; // from the start of its line
    int width = 0;
};

struct HtmlLine {
    std::size_t firstRun = 0;
    std::size_t runCount = 0;
    int top = 0; // from the first line
    int height = 0;
    int width = 0;
};

// The part of a link that stands on one line.
struct HtmlLinkPart {
    int link = 0;
    std::size_t line = 0;
    int left = 0; // from the start of the line
    int right = 0;
};

struct HtmlLayout {
    HtmlContent content;
    std::vector<HtmlFontUse> fonts;
    std::vector<HtmlPictureUse> pictures;
    std::vector<HtmlRun> runs;
    std::vector<std::size_t> textRuns; // those with text, one font after the other
    std::vector<HtmlLine> lines;
    std::vector<HtmlLinkPart> linkParts;
    SIZE size{};
};

enum class HtmlMeter { Gdi, Gdiplus };

// Breaks a text into lines no wider than `width`, as the DT_* style says. Adds the fonts that the
// tags need to the manager's table.
HtmlLayout LayOutHtml(HDC dc, CPaintManagerUI& manager, HtmlContent content, int width, HFONT font,
                      UINT style, HtmlMeter meter);

// False when a font id or a picture means something else by now.
bool IsUpToDate(const HtmlLayout& layout, CPaintManagerUI& manager);

// The loaded picture and what of it is wanted; null when it does not load.
struct HtmlLoadedPicture {
    const TImageInfo* image = nullptr;
    SIZE size{};
    RECT source{}; // of an image string, else the whole
    UINT fade = 255;
};
HtmlLoadedPicture LoadHtmlPicture(CPaintManagerUI& manager, const HtmlPicture& picture);

} // namespace DuiLib
