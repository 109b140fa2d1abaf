#include "Core/HtmlMarkup.h"

#include "win32/TextParse.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <optional>
#include <utility>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;

constexpr wchar_t kPlaceholder = L'\xFFFC';
constexpr int kDefaultFontSize = 10;
constexpr long kLargestNumber = 0x7FFF;

bool IsOpening(wchar_t c)
{
    return c == L'<' || c == L'{';
}

bool IsClosing(wchar_t c)
{
    return c == L'>' || c == L'}';
}

bool IsTagLetter(wchar_t c)
{
    return c >= L'a' && c <= L'z';
}

void TrimLeft(std::wstring_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(L' '), text.size()));
}

// Takes the next word off the front of a text; empty at its end.
std::wstring_view TakeWord(std::wstring_view& text)
{
    TrimLeft(text);
    const auto word = text.substr(0, text.find(L' '));
    text.remove_prefix(word.size());
    return word;
}

// A decimal number, alone.
std::optional<int> ToNumber(std::wstring_view word)
{
    const std::wstring text(word);
    wchar_t* end = nullptr;
    const long number = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != L'\0')
        return std::nullopt;
    return static_cast<int>(std::clamp(number, -kLargestNumber, kLargestNumber));
}

// Hexadecimal with or without a number sign in front.
std::optional<DWORD> ToColor(std::wstring_view argument)
{
    TrimLeft(argument);
    if (argument.starts_with(L'#'))
        argument.remove_prefix(1);
    const std::wstring digits(argument);
    wchar_t* end = nullptr;
    const unsigned long color = std::wcstoul(digits.c_str(), &end, 16);
    return end == digits.c_str() ? std::nullopt : std::optional<DWORD>(color);
}

std::optional<HtmlFont> ToFont(std::wstring_view argument)
{
    const auto name = TakeWord(argument);
    if (name.empty())
        return std::nullopt;
    HtmlFont font;
    if (const auto id = ToNumber(name)) {
        font.source = HtmlFont::Source::Id;
        font.id = *id;
        return font;
    }
    font.source = HtmlFont::Source::Description;
    font.name = name;
    font.size = kDefaultFontSize;
    for (auto word = TakeWord(argument); !word.empty(); word = TakeWord(argument)) {
        if (const auto size = ToNumber(word); size && *size > 0)
            font.size = *size;
        else if (EqualsNoCase(word, L"bold"))
            font.bold = true;
        else if (EqualsNoCase(word, L"underline"))
            font.underline = true;
        else if (EqualsNoCase(word, L"italic"))
            font.italic = true;
        else if (EqualsNoCase(word, L"strikeout"))
            font.strikeout = true;
    }
    return font;
}

// `name columns column`, where the name may be an image string.
HtmlPicture ToPicture(std::wstring_view argument)
{
    HtmlPicture picture;
    TrimLeft(argument);
    const auto quote = argument.rfind(L'\'');
    picture.isImageString = quote != std::wstring_view::npos;
    if (picture.isImageString) {
        picture.source = argument.substr(0, quote + 1);
        argument.remove_prefix(quote + 1);
    } else {
        picture.source = TakeWord(argument);
    }
    picture.columns = std::max(ToNumber(TakeWord(argument)).value_or(1), 1);
    picture.column = ToNumber(TakeWord(argument)).value_or(0);
    if (picture.column < 0 || picture.column >= picture.columns)
        picture.column = 0;
    return picture;
}

struct Tag {
    wchar_t letter = 0;
    bool isClosing = false;
    std::wstring_view argument;
    std::size_t end = 0; // behind the tag
};

class Parser {
public:
    explicit Parser(std::wstring_view text) : m_source(text), m_lastEnd(text.find_last_of(L">}"))
    {
        m_content.fonts.emplace_back();
        m_fontIndex.emplace(HtmlFont(), 0);
        m_content.text.reserve(text.size());
    }

    HtmlContent Parse()
    {
        while (m_at < m_source.size()) {
            if (m_isRaw)
                ReadRaw();
            else
                ReadNext();
        }
        return std::move(m_content);
    }

private:
    // What an open tag asks for, and how deep among all tags it was opened: of two tags that speak
    // about the same thing the later one wins.
    template <class Value>
    struct Open {
        std::size_t order;
        Value value;
    };
    template <class Value>
    using OpenTags = std::vector<Open<Value>>;
    struct Nothing {};
    struct Paint {
        HtmlColor source;
        DWORD color;
    };

    void ReadRaw()
    {
        const auto tag = ClosingTagAt(m_at);
        if (tag && tag->letter == L'r') {
            m_isRaw = false;
            m_at = tag->end;
        } else {
            AddCharacter(m_source[m_at++]);
        }
    }

    void ReadNext()
    {
        if (const auto escaped = EscapeAt(m_at)) {
            AddCharacter(*escaped);
            m_at += 3;
        } else if (const auto closing = ClosingTagAt(m_at)) {
            m_at = closing->end;
            Close(closing->letter);
        } else if (const auto opening = OpeningTagAt(m_at)) {
            m_at = opening->end;
            OpenTag(opening->letter, opening->argument);
        } else {
            AddCharacter(m_source[m_at++]);
        }
    }

    // One of the delimiters of tags between two of the other spelling.
    std::optional<wchar_t> EscapeAt(std::size_t at) const
    {
        const auto three = m_source.substr(at, 3);
        const bool isEscape =
            three == L"<{>" || three == L"<}>" || three == L"{<}" || three == L"{>}";
        return isEscape ? std::optional(three[1]) : std::nullopt;
    }

    std::optional<Tag> ClosingTagAt(std::size_t at) const
    {
        const auto four = m_source.substr(at, 4);
        if (four.size() < 4 || !IsOpening(four[0]) || four[1] != L'/' || !IsTagLetter(four[2]) ||
            !IsClosing(four[3]))
            return std::nullopt;
        return Tag{.letter = four[2], .isClosing = true, .argument = {}, .end = at + 4};
    }

    std::optional<Tag> OpeningTagAt(std::size_t at) const
    {
        const auto three = m_source.substr(at, 3);
        if (three.size() < 3 || !IsOpening(three[0]) || !IsTagLetter(three[1]))
            return std::nullopt;
        const bool isColor = three[1] == L'c' && three[2] == L'#';
        if (three[2] != L' ' && !IsClosing(three[2]) && !isColor)
            return std::nullopt;
        // Without an end it is text. Asking this first keeps broken tags from being searched for
        // their end one by one.
        if (m_lastEnd == std::wstring_view::npos || m_lastEnd < at + 2)
            return std::nullopt;
        const auto end = m_source.find_first_of(L">}", at + 2);
        auto argument = m_source.substr(at + 2, end - at - 2);
        TrimLeft(argument);
        return Tag{.letter = three[1], .isClosing = false, .argument = argument, .end = end + 1};
    }

    void OpenTag(wchar_t letter, std::wstring_view argument)
    {
        m_isStyleKnown = false;
        ++m_order;
        switch (letter) {
        case L'a':
            m_content.links.emplace_back(argument);
            m_links.push_back({m_order, static_cast<int>(m_content.links.size()) - 1});
            break;
        case L'b':
            m_bold.push_back({m_order, {}});
            break;
        case L'c':
            m_colors.push_back({m_order, ColorTag(argument)});
            break;
        case L'f':
            m_fonts.push_back({m_order, ToFont(argument).value_or(CurrentBase())});
            break;
        case L'i':
            if (argument.empty())
                m_italic.push_back({m_order, {}});
            else
                AddPicture(argument);
            break;
        case L'n':
            AddPlaced(HtmlItem::Kind::Break, 0);
            break;
        case L'p':
            AddPlaced(HtmlItem::Kind::ParagraphEdge, 0);
            m_paragraphs.push_back({m_order, std::max(LeadingNumber(argument).value_or(0), 0)});
            break;
        case L'r':
            m_isRaw = true;
            break;
        case L's':
            m_selected.push_back({m_order, {}});
            break;
        case L'u':
            m_underline.push_back({m_order, {}});
            break;
        case L'x':
            if (const auto pixels = LeadingNumber(argument))
                AddPlaced(HtmlItem::Kind::Shift, *pixels);
            break;
        case L'y':
            if (const auto pixels = LeadingNumber(argument); pixels && *pixels > 0)
                AddPlaced(HtmlItem::Kind::LineHeight, *pixels);
            break;
        default: // a tag without meaning
            break;
        }
    }

    void Close(wchar_t letter)
    {
        m_isStyleKnown = false;
        switch (letter) {
        case L'a':
            Pop(m_links);
            break;
        case L'b':
            Pop(m_bold);
            break;
        case L'c':
            Pop(m_colors);
            break;
        case L'f':
            Pop(m_fonts);
            break;
        case L'i':
            Pop(m_italic);
            break;
        case L'p':
            if (!m_paragraphs.empty())
                AddPlaced(HtmlItem::Kind::ParagraphEdge, 0);
            Pop(m_paragraphs);
            break;
        case L's':
            Pop(m_selected);
            break;
        case L'u':
            Pop(m_underline);
            break;
        default:
            break;
        }
    }

    template <class Value>
    static void Pop(OpenTags<Value>& tags)
    {
        if (!tags.empty())
            tags.pop_back();
    }

    template <class Value>
    static std::size_t OrderOf(const OpenTags<Value>& tags)
    {
        return tags.empty() ? 0 : tags.back().order;
    }

    static std::optional<int> LeadingNumber(std::wstring_view argument)
    {
        return ToNumber(TakeWord(argument));
    }

    // A colour tag without a colour changes nothing.
    Paint ColorTag(std::wstring_view argument) const
    {
        const auto color = ToColor(argument);
        return color ? Paint{HtmlColor::OfTag, *color} : CurrentPaint();
    }

    Paint CurrentPaint() const
    {
        if (OrderOf(m_links) > OrderOf(m_colors))
            return {HtmlColor::OfLink, 0};
        return m_colors.empty() ? Paint{HtmlColor::OfCall, 0} : m_colors.back().value;
    }

    HtmlFont CurrentBase() const { return m_fonts.empty() ? HtmlFont() : m_fonts.back().value; }

    // A font tag starts afresh: it is not bold because of a tag around it. A link is always
    // underlined.
    HtmlFont CurrentFont() const
    {
        HtmlFont font = CurrentBase();
        const std::size_t base = OrderOf(m_fonts);
        font.bold = font.bold || OrderOf(m_bold) > base;
        font.italic = font.italic || OrderOf(m_italic) > base;
        font.underline = font.underline || OrderOf(m_underline) > base || !m_links.empty();
        return font;
    }

    std::size_t CurrentStyle()
    {
        if (m_isStyleKnown)
            return m_content.styles.size() - 1;
        HtmlFont font = CurrentFont();
        const auto [entry, isNew] = m_fontIndex.try_emplace(font, m_content.fonts.size());
        if (isNew)
            m_content.fonts.push_back(std::move(font));
        const Paint paint = CurrentPaint();
        const HtmlStyle style{.font = entry->second,
                              .colorSource = paint.source,
                              .color = paint.color,
                              .link = m_links.empty() ? -1 : m_links.back().value,
                              .selected = !m_selected.empty()};
        if (m_content.styles.empty() || m_content.styles.back() != style)
            m_content.styles.push_back(style);
        m_isStyleKnown = true;
        return m_content.styles.size() - 1;
    }

    int LineExtra() const { return m_paragraphs.empty() ? 0 : m_paragraphs.back().value; }

    void AddCharacter(wchar_t character)
    {
        if (character == L'\n') {
            AddPlaced(HtmlItem::Kind::Break, 0);
            return;
        }
        const std::size_t style = CurrentStyle();
        auto& items = m_content.items;
        const bool goesOn = !items.empty() && items.back().kind == HtmlItem::Kind::Text &&
                            items.back().style == style;
        if (!goesOn) {
            items.push_back({.kind = HtmlItem::Kind::Text,
                             .first = m_content.text.size(),
                             .length = 0,
                             .style = style,
                             .value = 0,
                             .lineExtra = LineExtra()});
        }
        ++items.back().length;
        m_content.text.push_back(character);
    }

    void AddPicture(std::wstring_view argument)
    {
        m_content.pictures.push_back(ToPicture(argument));
        AddPlaced(HtmlItem::Kind::Picture, static_cast<int>(m_content.pictures.size()) - 1);
    }

    void AddPlaced(HtmlItem::Kind kind, int value)
    {
        const std::size_t style = CurrentStyle();
        m_content.items.push_back({.kind = kind,
                                   .first = m_content.text.size(),
                                   .length = 1,
                                   .style = style,
                                   .value = value,
                                   .lineExtra = LineExtra()});
        m_content.text.push_back(kPlaceholder);
    }

    std::wstring_view m_source;
    std::size_t m_lastEnd;
    std::size_t m_at = 0;
    bool m_isRaw = false;

    std::size_t m_order = 0;
    OpenTags<int> m_links;
    OpenTags<int> m_paragraphs;
    OpenTags<Paint> m_colors;
    OpenTags<HtmlFont> m_fonts;
    OpenTags<Nothing> m_bold;
    OpenTags<Nothing> m_italic;
    OpenTags<Nothing> m_underline;
    OpenTags<Nothing> m_selected;

    HtmlContent m_content;
    std::map<HtmlFont, std::size_t> m_fontIndex;
    bool m_isStyleKnown = false;
};

} // namespace

HtmlContent ParseHtml(std::wstring_view text)
{
    return Parser(text).Parse();
}

} // namespace DuiLib
