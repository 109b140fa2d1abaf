#include "quillet/dialogs/ConfirmationText.h"

#include <algorithm>

namespace Quillet::Dialogs {

namespace {

constexpr std::size_t kNone = std::wstring_view::npos;
constexpr wchar_t kBreak = L'\r';

constexpr std::wstring_view kLinkOpening = L"<a><c #007DFF>";
constexpr std::wstring_view kLinkClosing = L"</c></a>";

constexpr std::size_t kShortLine = 4; // characters

std::size_t LastSpaceBefore(std::wstring_view text, std::size_t position)
{
    return text.substr(0, position).rfind(L' ');
}

// Published: the position behind a tag counts as inside it, and only the first tag counts.
bool IsInFirst(std::wstring_view tag, std::wstring_view text, std::size_t position)
{
    const std::size_t from = position - std::min(position, tag.size());
    const std::size_t at = text.substr(from, position - from + tag.size()).find(tag);
    return at != kNone && text.find(tag) == from + at;
}

} // namespace

void ReplaceAll(std::wstring_view from, std::wstring_view to, std::wstring& text)
{
    if (from.empty())
        return;
    // A replacement can only complete an occurrence that begins before it and reaches into it.
    const std::size_t overlap = from.size() - 1;
    for (std::size_t at = text.find(from); at != kNone;
         at = text.find(from, at - std::min(at, overlap)))
        text.replace(at, from.size(), to);
}

bool IsInLinkTag(std::wstring_view text, std::size_t position)
{
    return IsInFirst(kLinkOpening, text, position) || IsInFirst(kLinkClosing, text, position);
}

void BreakLines(std::wstring& text, const LineRules& rules)
{
    // A word that is too wide for a line makes the search for a space go back further and further,
    // and what comes after the first of the breaks overflows in the same place each time.
    struct {
        std::size_t from = kNone;
        std::size_t to = 0;
    } known;

    std::wstring line;
    std::size_t lastBreak = 0; // of those made here
    int breaks = 0;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (rules.isMarkup(i))
            continue;
        if (text[i] == kBreak) {
            line.clear();
            if (i != known.from)
                continue;
            i = known.to;
        } else {
            line += text[i];
            if (rules.widthOf(line) < rules.width)
                continue;
        }

        // Published: a text that is too wide only with its last character stays in one line.
        if (line.size() == text.size())
            return;
        breaks++;
        if (rules.maxLines != 0 && rules.maxLines <= breaks)
            return;
        std::size_t space = i;
        if (text[i] != L' ') {
            space = LastSpaceBefore(text, i);
            if (space == kNone)
                return;
            while (space != kNone && rules.isMarkup(space))
                space = LastSpaceBefore(text, space);
        }
        // Published: throws when there was none but in markup.
        text.replace(space, 1, 1, kBreak);
        line.clear();
        if (space < lastBreak)
            known = {lastBreak, i};
        lastBreak = space;
        i = space;
    }
}

int CountLines(std::wstring_view text, const LineRules& rules)
{
    int lines = 1;
    std::wstring line;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (rules.isMarkup(i))
            continue;
        if (text[i] != kBreak) {
            line += text[i];
            if (rules.widthOf(line) < rules.width)
                continue;
        }
        // Published: the character that is too much belongs to no line.
        line.clear();
        lines++;
    }
    return lines;
}

void MarkShortLastLine(std::wstring& text)
{
    // Published: with no break at all the subtraction wraps, and the replacement throws.
    const std::size_t lastBreak = text.rfind(kBreak);
    if (text.size() - lastBreak <= kShortLine + 1)
        text.replace(lastBreak, 1, L" \r");
}

std::wstring AsParagraphs(const std::wstring& text)
{
    std::wstring paragraphs = L"<p>" + text + L"</p>";
    ReplaceAll(L"\r", L"</p><p>", paragraphs);
    ReplaceAll(L"</p><p></p><p>", L"</p><p> </p><p>", paragraphs);
    return paragraphs;
}

int CountOf(std::wstring_view pattern, std::wstring_view text)
{
    if (pattern.empty())
        return 0;
    int count = 0;
    for (std::size_t at = text.find(pattern); at != kNone;
         at = text.find(pattern, at + pattern.size()))
        count++;
    return count;
}

} // namespace Quillet::Dialogs
