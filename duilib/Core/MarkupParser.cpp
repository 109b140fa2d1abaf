#include "Core/MarkupDocument.h"

#include "Core/Diagnostics.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace DuiLib {

namespace {

bool IsBlank(wchar_t ch)
{
    return ch == L' ' || ch == L'\t' || ch == L'\n' || ch == L'\r';
}

bool IsNameCharacter(wchar_t ch)
{
    if (ch < 0x80)
        return (ch >= L'a' && ch <= L'z') || (ch >= L'A' && ch <= L'Z') ||
               (ch >= L'0' && ch <= L'9') || ch == L'_' || ch == L':';
    return ::IsCharAlphaW(ch) != FALSE;
}

struct Entity {
    std::wstring_view text;
    wchar_t character;
};

constexpr Entity kEntities[] = {
    {L"&amp;", L'&'}, {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&quot;", L'"'}, {L"&apos;", L'\''},
};

std::wstring Quoted(std::wstring_view name)
{
    constexpr std::size_t kLongestShown = 80;
    std::wstring text = L"\"";
    text += name.substr(0, kLongestShown);
    return text += L'"';
}

class Parser {
public:
    Parser(MarkupDocument& document, std::size_t length, bool preserveWhitespace)
        : m_document(document),
          m_begin(document.text.get()),
          m_end(m_begin + length),
          m_at(m_begin),
          m_preserveWhitespace(preserveWhitespace)
    {
    }

    bool Run();

private:
    bool Markup();
    bool SkipPast(std::wstring_view opening, std::wstring_view closing, const wchar_t* what);
    bool Declaration();
    bool OpeningTag();
    bool ClosingTag();
    bool Attribute(std::wstring_view element);
    void Text();
    bool AttributeText(const wchar_t* start, std::wstring_view name);

    wchar_t Unescape();
    void SkipBlanks();
    std::wstring_view Name();
    void BeginValue();
    void EndValue();

    UINT Offset(const wchar_t* where) const { return static_cast<UINT>(where - m_begin); }
    bool Fail(const wchar_t* where, std::wstring_view reason);
    bool FailHere(std::wstring_view reason);

    MarkupDocument& m_document;
    wchar_t* const m_begin;
    wchar_t* const m_end;
    wchar_t* m_at;
    const bool m_preserveWhitespace;

    UINT m_open = kNoElement;   // the innermost open element
    bool m_collecting = false;  // it has no child yet, so its text counts
    wchar_t* m_value = nullptr; // where it begins
    wchar_t* m_write = nullptr; // where its next character goes
};

bool Parser::Run()
{
    for (;;) {
        if (m_open != kNoElement)
            Text();
        else
            SkipBlanks();

        if (m_at == m_end)
            break;
        if (*m_at == 0)
            return FailHere(L"");
        if (*m_at != L'<')
            return FailHere(L"text outside the root element");
        if (!Markup())
            return false;
    }

    if (m_open != kNoElement) {
        const auto& element = m_document.elements[m_open];
        return Fail(m_begin + element.offset,
                    L"the element " + Quoted(element.name) + L" is not closed");
    }
    if (m_document.elements.empty())
        return FailHere(L"there is no element");
    return true;
}

// At a '<'.
bool Parser::Markup()
{
    switch (m_at[1]) {
    case L'/':
        return ClosingTag();
    case L'?':
        return SkipPast(L"<?", L"?>", L"processing instruction");
    case L'!':
        return Declaration();
    default:
        return OpeningTag();
    }
}

bool Parser::Declaration()
{
    if (m_at[2] == L'-' && m_at[3] == L'-')
        return SkipPast(L"<!--", L"-->", L"comment");
    return FailHere(L"declarations such as DOCTYPE and CDATA are not supported");
}

bool Parser::SkipPast(std::wstring_view opening, std::wstring_view closing, const wchar_t* what)
{
    const std::wstring_view rest(m_at, m_end);
    const auto found = rest.find(closing, opening.size());
    if (found == rest.npos)
        return FailHere(std::wstring(L"the ") + what + L" is not closed");
    m_at += found + closing.size();
    return true;
}

bool Parser::OpeningTag()
{
    const wchar_t* const tag = m_at;
    if (m_open == kNoElement && !m_document.elements.empty())
        return FailHere(L"a second root element");

    // The text before ends here, and its final zero may replace the '<'.
    if (m_collecting)
        EndValue();

    ++m_at;
    const std::wstring_view name = Name();
    wchar_t* const nameEnd = m_at;
    if (name.empty())
        return FailHere(L"a name must follow '<'");

    auto& elements = m_document.elements;
    const auto index = static_cast<UINT>(elements.size());
    const auto firstAttribute = static_cast<UINT>(m_document.attributes.size());
    elements.push_back({name.data(), L"", m_open, kNoElement, kNoElement, kNoElement,
                        firstAttribute, 0, Offset(tag)});
    if (m_open != kNoElement) {
        auto& parent = elements[m_open];
        if (parent.firstChild == kNoElement)
            parent.firstChild = index;
        else
            elements[parent.lastChild].next = index;
        parent.lastChild = index;
    }

    for (;;) {
        SkipBlanks();
        if (IsNameCharacter(*m_at)) {
            if (!Attribute(name))
                return false;
            continue;
        }
        break;
    }

    const bool empty = *m_at == L'/';
    if (empty)
        ++m_at;
    if (*m_at != L'>') {
        if (m_at == m_end)
            return Fail(tag, L"the tag of " + Quoted(name) + L" is not closed");
        return FailHere(L"the tag of " + Quoted(name) + L" must go on with a name or '>'");
    }
    *nameEnd = 0;
    ++m_at;

    if (empty) {
        m_collecting = false;
    } else {
        m_open = index;
        BeginValue();
    }
    return true;
}

bool Parser::Attribute(std::wstring_view element)
{
    const wchar_t* const start = m_at;
    const std::wstring_view name = Name();
    wchar_t* const nameEnd = m_at;
    SkipBlanks();
    if (*m_at != L'=') {
        return Fail(start, L"the attribute " + Quoted(name) + L" of " + Quoted(element) +
                               L" has no value");
    }
    ++m_at;
    SkipBlanks();
    if (*m_at != L'"')
        return FailHere(L"the value of " + Quoted(name) + L" must stand in double quotes");
    ++m_at;
    *nameEnd = 0;
    return AttributeText(start, name);
}

// Behind the opening quote.
bool Parser::AttributeText(const wchar_t* start, std::wstring_view name)
{
    wchar_t* const value = m_at;
    while (*m_at != L'"' && *m_at != L'&' && *m_at != 0)
        ++m_at;
    wchar_t* write = m_at;
    while (*m_at != L'"' && *m_at != 0)
        *write++ = Unescape();

    if (*m_at == 0) {
        if (m_at != m_end)
            return FailHere(L"");
        return Fail(start, L"the value of " + Quoted(name) + L" has no closing quote");
    }
    ++m_at;
    *write = 0;

    auto& element = m_document.elements.back();
    if (element.attributeCount < kMostAttributes) {
        ++element.attributeCount;
        m_document.attributes.push_back({name.data(), value});
    } else if (m_document.remark.empty()) {
        m_document.remark =
            m_document.At(static_cast<UINT>(m_document.elements.size()) - 1,
                          L"the element has more than 64 attributes, the others are ignored");
    }
    return true;
}

bool Parser::ClosingTag()
{
    const wchar_t* const tag = m_at;
    if (m_open == kNoElement)
        return FailHere(L"a closing tag without an opening one");
    if (m_collecting)
        EndValue();

    m_at += 2;
    const std::wstring_view name = Name();
    const auto& element = m_document.elements[m_open];
    if (name != element.name) {
        const auto opened = m_document.PositionOf(element.offset);
        return Fail(tag, L"the closing tag " + Quoted(name) + L" does not match " +
                             Quoted(element.name) + L" of line " + std::to_wstring(opened.line));
    }
    SkipBlanks();
    if (*m_at != L'>')
        return FailHere(L"the closing tag of " + Quoted(name) + L" must end with '>'");
    ++m_at;
    m_open = element.parent;
    m_collecting = false;
    return true;
}

void Parser::BeginValue()
{
    m_collecting = true;
    m_value = m_at;
    m_write = m_at;
    m_document.elements[m_open].value = m_at;
}

void Parser::EndValue()
{
    m_collecting = false;
    *m_write = 0;
    if (m_preserveWhitespace)
        return;

    wchar_t* to = m_value;
    for (const wchar_t* from = m_value; *from != 0; ++from) {
        if (!IsBlank(*from))
            *to++ = *from;
        else if (to != m_value && to[-1] != L' ')
            *to++ = L' ';
    }
    if (to != m_value && to[-1] == L' ')
        --to;
    *to = 0;
}

// The text of the open element up to the next '<'.
void Parser::Text()
{
    while (*m_at != L'<' && *m_at != 0) {
        const wchar_t* const start = m_at;
        while (*m_at != L'<' && *m_at != L'&' && *m_at != 0)
            ++m_at;
        if (m_collecting) {
            if (m_write != start)
                std::wmemmove(m_write, start, static_cast<std::size_t>(m_at - start));
            m_write += m_at - start;
        }
        if (*m_at == L'&') {
            const wchar_t character = Unescape();
            if (m_collecting)
                *m_write++ = character;
        }
    }
}

// The next character of a text; any '&' that begins no known entity stands for itself.
wchar_t Parser::Unescape()
{
    if (*m_at == L'&') {
        for (const auto& entity : kEntities) {
            if (std::wcsncmp(m_at, entity.text.data(), entity.text.size()) == 0) {
                m_at += entity.text.size();
                return entity.character;
            }
        }
    }
    return *m_at++;
}

void Parser::SkipBlanks()
{
    while (IsBlank(*m_at))
        ++m_at;
}

std::wstring_view Parser::Name()
{
    const wchar_t* const start = m_at;
    while (IsNameCharacter(*m_at))
        ++m_at;
    return {start, static_cast<std::size_t>(m_at - start)};
}

bool Parser::FailHere(std::wstring_view reason)
{
    return Fail(m_at, *m_at == 0 && m_at != m_end ? L"a zero character in the text" : reason);
}

bool Parser::Fail(const wchar_t* where, std::wstring_view reason)
{
    const auto position = m_document.PositionOf(Offset(where));
    m_document.reason = reason;
    m_document.location = PlaceOf(m_document.source, position.line, position.column);
    return false;
}

// Room for what the text seems to hold, so that a large document is not moved again and again. A
// text of many tags and quotes that is no markup must not take more memory than its own length.
void ReserveRoom(MarkupDocument& document, std::wstring_view text)
{
    constexpr std::size_t kLeastCharactersOfElement = 24;
    constexpr std::size_t kLeastCharactersOfAttribute = 8;
    const auto count = [text](wchar_t ch) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), ch));
    };
    document.elements.reserve(
        std::min(count(L'<') + 1, text.size() / kLeastCharactersOfElement + 1));
    document.attributes.reserve(
        std::min(count(L'"') / 2, text.size() / kLeastCharactersOfAttribute + 1));
}

} // namespace

MarkupPosition MarkupDocument::PositionOf(UINT offset) const
{
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
    const auto line = static_cast<UINT>(next - lineStarts.begin());
    return {line, offset - lineStarts[line - 1] + 1};
}

std::wstring MarkupDocument::At(UINT element, std::wstring_view what) const
{
    const auto position = PositionOf(elements[element].offset);
    return FailureAt(source, position.line, position.column, what);
}

bool ParseMarkup(MarkupDocument& document, std::unique_ptr<wchar_t[]> text, std::size_t length,
                 bool preserveWhitespace)
{
    if (length >= std::numeric_limits<UINT>::max()) {
        document.reason = L"the text is too long";
        document.location = document.source;
        return false;
    }

    // Before the parser cuts the text: positions speak of the text as it was read.
    document.text = std::move(text);
    document.lineStarts.assign(1, 0);
    const std::wstring_view characters(document.text.get(), length);
    for (auto end = characters.find(L'\n'); end != characters.npos;
         end = characters.find(L'\n', end + 1))
        document.lineStarts.push_back(static_cast<UINT>(end) + 1);
    ReserveRoom(document, characters);
    return Parser(document, length, preserveWhitespace).Run();
}

} // namespace DuiLib
