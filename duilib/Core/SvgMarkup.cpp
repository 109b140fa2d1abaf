#include "Core/SvgMarkup.h"

#include <algorithm>
#include <array>

namespace DuiLib::Svg {

namespace {

constexpr std::size_t kDeepestElement = 256;
constexpr std::size_t kMostAttributes = 256;

bool IsBlank(wchar_t character)
{
    return character == L' ' || character == L'\t' || character == L'\r' || character == L'\n';
}

bool EndsName(wchar_t character)
{
    return IsBlank(character) ||
           std::wstring_view(L"=/><\"'&").find(character) != std::wstring_view::npos;
}

// The character that `&name;` stands for; 0 when the name is unknown.
unsigned Referenced(std::wstring_view name)
{
    struct Entity {
        std::wstring_view name;
        wchar_t character;
    };
    static constexpr std::array kEntities{
        Entity{L"amp", L'&'},  Entity{L"lt", L'<'},    Entity{L"gt", L'>'},
        Entity{L"quot", L'"'}, Entity{L"apos", L'\''},
    };
    if (name.starts_with(L"#")) {
        const bool hexadecimal = name.size() > 1 && (name[1] == L'x' || name[1] == L'X');
        const std::wstring digits(name.substr(hexadecimal ? 2 : 1));
        const auto value = std::wcstoul(digits.c_str(), nullptr, hexadecimal ? 16 : 10);
        return value <= 0x10FFFF ? value : 0;
    }
    const auto entity = std::ranges::find(kEntities, name, &Entity::name);
    return entity == kEntities.end() ? 0 : static_cast<unsigned>(entity->character);
}

std::wstring Unescape(std::wstring_view text)
{
    constexpr std::size_t kLongestReference = 10;
    std::wstring plain;
    while (!text.empty()) {
        const auto start = std::min(text.find(L'&'), text.size());
        plain += text.substr(0, start);
        text.remove_prefix(start);
        if (text.empty())
            break;

        const auto end = text.find(L';');
        const unsigned character =
            end < kLongestReference ? Referenced(text.substr(1, end - 1)) : 0;
        if (character == 0) {
            plain += text.front();
            text.remove_prefix(1);
            continue;
        }
        if (character > 0xFFFF) {
            plain += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
            plain += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
        } else {
            plain += static_cast<wchar_t>(character);
        }
        text.remove_prefix(end + 1);
    }
    return plain;
}

} // namespace

MarkupReader::MarkupReader(std::wstring_view text) : m_all(text) {}

MarkupReader::Piece MarkupReader::Next()
{
    if (m_closing) {
        m_closing = false;
        m_open.pop_back();
        return Piece::Close;
    }

    for (;;) {
        m_piece = m_at;
        if (m_open.empty())
            SkipBlanks();
        if (m_at == m_all.size()) {
            if (!m_open.empty())
                return Fail(L"an element is not closed");
            return m_rooted ? Piece::End : Fail(L"there is no element");
        }

        m_piece = m_at;
        if (!Starts(L"<") || Starts(L"<![CDATA["))
            return ReadText();
        if (Starts(L"<!--")) {
            if (!SkipPast(L"-->"))
                return Fail(L"a comment is not closed");
        } else if (Starts(L"<?")) {
            if (!SkipPast(L"?>"))
                return Fail(L"an instruction is not closed");
        } else if (Starts(L"<!")) {
            if (!SkipDeclaration())
                return Fail(L"a declaration is not closed");
        } else {
            return Starts(L"</") ? ReadClosing() : ReadTag();
        }
    }
}

std::wstring MarkupReader::At(std::wstring_view reason) const
{
    const auto before = m_all.substr(0, m_piece);
    const auto lines = std::ranges::count(before, L'\n');
    const auto newline = before.rfind(L'\n');
    const auto column = newline == before.npos ? before.size() : before.size() - newline - 1;
    return L"line " + std::to_wstring(lines + 1) + L", column " + std::to_wstring(column + 1) +
           L": " + std::wstring(reason);
}

MarkupReader::Piece MarkupReader::Fail(std::wstring_view reason)
{
    m_mistake = At(reason);
    m_at = m_all.size();
    return Piece::Mistake;
}

MarkupReader::Piece MarkupReader::ReadText()
{
    if (m_open.empty())
        return Fail(L"text outside the root element");

    constexpr std::wstring_view kLiteral = L"<![CDATA[";
    constexpr std::wstring_view kLiteralEnd = L"]]>";
    if (Starts(kLiteral)) {
        const auto start = m_at + kLiteral.size();
        if (!SkipPast(kLiteralEnd))
            return Fail(L"a CDATA section is not closed");
        m_text = m_all.substr(start, m_at - kLiteralEnd.size() - start);
        return Piece::Text;
    }
    const auto end = std::min(m_all.find(L'<', m_at), m_all.size());
    m_text = Unescape(m_all.substr(m_at, end - m_at));
    m_at = end;
    return Piece::Text;
}

MarkupReader::Piece MarkupReader::ReadTag()
{
    if (m_open.empty() && m_rooted)
        return Fail(L"there is a second root element");
    if (m_open.size() == kDeepestElement)
        return Fail(L"the elements are nested too deeply");

    m_at++;
    m_name = ReadName();
    if (m_name.empty())
        return Fail(L"a tag has no name");
    m_attributes.clear();
    for (;;) {
        SkipBlanks();
        if (Starts(L">") || Starts(L"/>"))
            break;
        if (m_attributes.size() == kMostAttributes)
            return Fail(L"an element has too many attributes");
        if (!ReadAttribute())
            return Fail(L"the tag of <" + std::wstring(m_name) + L"> is not well formed");
    }
    m_closing = Starts(L"/>");
    m_at += m_closing ? 2 : 1;
    m_open.push_back(m_name);
    m_rooted = true;
    return Piece::Open;
}

MarkupReader::Piece MarkupReader::ReadClosing()
{
    m_at += 2;
    const auto name = ReadName();
    SkipBlanks();
    if (m_open.empty() || name != m_open.back() || !Starts(L">"))
        return Fail(L"a closing tag does not match");
    m_at++;
    m_open.pop_back();
    return Piece::Close;
}

bool MarkupReader::ReadAttribute()
{
    const auto name = ReadName();
    SkipBlanks();
    if (name.empty() || !Starts(L"="))
        return false;
    m_at++;
    SkipBlanks();
    if (!Starts(L"\"") && !Starts(L"'"))
        return false;
    const auto start = m_at + 1;
    const auto end = m_all.find(m_all[m_at], start);
    if (end == m_all.npos)
        return false;
    m_attributes.push_back({.name = name, .value = Unescape(m_all.substr(start, end - start))});
    m_at = end + 1;
    return true;
}

std::wstring_view MarkupReader::ReadName()
{
    const auto start = m_at;
    while (m_at < m_all.size() && !EndsName(m_all[m_at]))
        m_at++;
    return m_all.substr(start, m_at - start);
}

void MarkupReader::SkipBlanks()
{
    while (m_at < m_all.size() && IsBlank(m_all[m_at]))
        m_at++;
}

bool MarkupReader::SkipPast(std::wstring_view closing)
{
    const auto found = m_all.find(closing, m_at);
    if (found == m_all.npos)
        return false;
    m_at = found + closing.size();
    return true;
}

// A document type may list declarations of its own between brackets; none of them is read.
bool MarkupReader::SkipDeclaration()
{
    const auto end = m_all.find_first_of(L"[>", m_at);
    if (end == m_all.npos)
        return false;
    m_at = end + 1;
    return m_all[end] == L'>' || (SkipPast(L"]") && SkipPast(L">"));
}

bool MarkupReader::Starts(std::wstring_view with) const
{
    return Rest().starts_with(with);
}

std::optional<std::wstring> DecodeText(std::span<const BYTE> data)
{
    const auto marked = [data](BYTE first, BYTE second) {
        return data.size() >= 2 && data[0] == first && data[1] == second;
    };
    const bool little = marked(0xFF, 0xFE);
    if (little || marked(0xFE, 0xFF)) {
        std::wstring text;
        for (std::size_t at = 2; at + 1 < data.size(); at += 2) {
            const unsigned low = data[at + (little ? 0 : 1)];
            const unsigned high = data[at + (little ? 1 : 0)];
            text += static_cast<wchar_t>(high << 8 | low);
        }
        return text;
    }

    if (marked(0xEF, 0xBB))
        data = data.subspan(std::min<std::size_t>(3, data.size()));
    const auto* bytes = reinterpret_cast<LPCSTR>(data.data());
    const int count = static_cast<int>(data.size());
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, bytes, count, nullptr, 0);
    if (length <= 0)
        return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, bytes, count, text.data(), length);
    return text;
}

} // namespace DuiLib::Svg
