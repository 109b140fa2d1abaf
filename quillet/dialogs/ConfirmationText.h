#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// Lays the content of a confirmation out in lines.
namespace Quillet::Dialogs {

// Replaces until the pattern does not occur any more, also where a replacement completes it.
void ReplaceAll(std::wstring_view from, std::wstring_view to, std::wstring& text);

// Whether the position belongs to the opening or the closing tag of the text's first link.
bool IsInLinkTag(std::wstring_view text, std::size_t position);

struct LineRules {
    std::function<int(const std::wstring& line)> widthOf;
    int width; // every line stays narrower, in the units of widthOf
    // Whether a character of the text is markup: neither measured nor a place to break.
    std::function<bool(std::size_t position)> isMarkup;
    int maxLines = 0; // 0 is no limit
};

// Puts carriage returns in the place of spaces. Stops at a word that is too wide for a line. Throws
// std::out_of_range when the only spaces before an overflow are markup.
void BreakLines(std::wstring& text, const LineRules& rules);

// How many lines the text fills when it may be broken anywhere.
int CountLines(std::wstring_view text, const LineRules& rules);

// Gives a short last line a space before its break. Throws std::out_of_range for a text of up to
// four characters without a break.
void MarkShortLastLine(std::wstring& text);

// Each line as a paragraph; an empty one holds a space, so that it keeps its height.
std::wstring AsParagraphs(const std::wstring& text);

// How often the pattern occurs, without overlaps.
int CountOf(std::wstring_view pattern, std::wstring_view text);

} // namespace Quillet::Dialogs
