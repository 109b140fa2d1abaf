#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <ostream>
#include <string>

#include "support/TempFolder.h"

namespace test {

// The fields of an image description.
struct AttributeFields {
    std::wstring name{};
    std::wstring type{};
    std::array<long, 4> dest{};
    std::array<long, 4> source{};
    std::array<long, 4> corner{};
    int fade = 255;
    unsigned long mask = 0;
    bool hole = false;
    bool xTiled = false;
    bool yTiled = false;

    bool operator==(const AttributeFields&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const AttributeFields& fields)
{
    out << '"' << Utf8(fields.name) << "\" \"" << Utf8(fields.type) << '"';
    for (const auto* edges : {&fields.dest, &fields.source, &fields.corner})
        out << " (" << (*edges)[0] << ' ' << (*edges)[1] << ' ' << (*edges)[2] << ' ' << (*edges)[3]
            << ')';
    return out << ' ' << fields.fade << ' ' << std::hex << fields.mask << std::dec << ' '
               << fields.hole << fields.xTiled << fields.yTiled;
}

// A second way to read a description, one character at a time and with a number reader of its own,
// to compare with. Slow and plain on purpose.
class AttributeReader {
public:
    explicit AttributeReader(const std::wstring& text) : m_text(text) { fields.name = text; }

    AttributeFields fields;

    void ReadAll()
    {
        while (m_at < m_text.size()) {
            std::wstring key;
            std::wstring value;
            while (At() != 0 && At() <= 32)
                m_at++;
            while (At() > 32 && At() != L'=')
                key += m_text[m_at++];
            while (At() != 0 && At() <= 32)
                m_at++;
            if (At() != L'=')
                return;
            m_at++;
            while (At() != 0 && At() <= 32)
                m_at++;
            if (At() != L'\'')
                return;
            m_at++;
            while (At() != 0 && At() != L'\'')
                value += m_text[m_at++];
            if (At() == 0)
                return;
            m_at++;
            if (value.size() > 0)
                Set(key, value);
            if (At() != L' ')
                return;
            m_at++;
        }
    }

private:
    wchar_t At() const { return m_at < m_text.size() ? m_text[m_at] : L'\0'; }

    void Set(const std::wstring& key, const std::wstring& value)
    {
        if (key == L"file" || key == L"res")
            fields.name = value;
        if (key == L"restype")
            fields.type = value;
        if (key == L"dest")
            fields.dest = Rectangle(value);
        if (key == L"source")
            fields.source = Rectangle(value);
        if (key == L"corner")
            fields.corner = Rectangle(value);
        if (key == L"mask")
            fields.mask = Unsigned(value[0] == L'#' ? value.substr(1) : value, 16);
        if (key == L"fade")
            fields.fade = static_cast<int>(Unsigned(value, 10) % 256);
        if (key == L"hole")
            fields.hole = value == L"true";
        if (key == L"xtiled")
            fields.xTiled = value == L"true";
        if (key == L"ytiled")
            fields.yTiled = value == L"true";
    }

    struct Number {
        bool negative = false;
        unsigned long long size = 0;
        std::size_t end = 0; // the beginning when there is no number
    };
    static Number Read(const std::wstring& text, std::size_t begin, unsigned base)
    {
        Number number{.end = begin};
        std::size_t at = begin;
        const auto digit = [&](std::size_t index) {
            const wchar_t c = index < text.size() ? text[index] : L'\0';
            unsigned value = 99;
            if (c >= L'0' && c <= L'9')
                value = static_cast<unsigned>(c - L'0');
            else if (c >= L'a' && c <= L'z')
                value = static_cast<unsigned>(c - L'a' + 10);
            else if (c >= L'A' && c <= L'Z')
                value = static_cast<unsigned>(c - L'A' + 10);
            return value < base ? static_cast<int>(value) : -1;
        };
        while (at < text.size() && (text[at] == L' ' || (text[at] >= 9 && text[at] <= 13)))
            at++;
        if (at < text.size() && (text[at] == L'-' || text[at] == L'+'))
            number.negative = text[at++] == L'-';
        if (base == 16 && digit(at) == 0 && at + 1 < text.size() &&
            (text[at + 1] == L'x' || text[at + 1] == L'X'))
            at += 2;
        for (; digit(at) >= 0; at++) {
            if (number.size <= 0xFFFFFFFFFFull)
                number.size = number.size * base + static_cast<unsigned>(digit(at));
            number.end = at + 1;
        }
        return number;
    }
    static long Signed(const Number& number)
    {
        if (number.negative)
            return number.size > 2147483648ull
                       ? LONG_MIN
                       : static_cast<long>(-static_cast<long long>(number.size));
        return number.size > 2147483647ull ? LONG_MAX : static_cast<long>(number.size);
    }
    static unsigned long Unsigned(const std::wstring& text, unsigned base)
    {
        const Number number = Read(text, 0, base);
        if (number.size > 0xFFFFFFFFull)
            return 0xFFFFFFFFul;
        const auto size = static_cast<unsigned long>(number.size);
        return number.negative ? 0ul - size : size;
    }
    static std::array<long, 4> Rectangle(const std::wstring& text)
    {
        std::array<long, 4> edges{};
        std::size_t at = 0;
        for (long& edge : edges) {
            const Number number = Read(text, at, 10);
            edge = number.end > at ? Signed(number) : 0;
            at = number.end + 1; // a separator, whatever it is
        }
        return edges;
    }

    const std::wstring& m_text;
    std::size_t m_at = 0;
};

inline AttributeFields ReferenceAttribute(const std::wstring& text)
{
    AttributeReader reader(text);
    reader.ReadAll();
    return reader.fields;
}

} // namespace test
