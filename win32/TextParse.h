#pragma once

#include "win32/Windows.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <string_view>

// How attribute values are read. Null pointers read as the empty text.
namespace Quillet::Text {

// By the invariant table of the system, whatever the user's language and the C locale.
inline wchar_t LowerCase(wchar_t unit)
{
    if (unit < 0x80)
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + (L'a' - L'A')) : unit;

    const bool cjk = unit >= 0x2E80 && unit < 0xA640;
    const bool hangulOrSurrogate = unit >= 0xAC00 && unit < 0xFF00;
    if (cjk || hangulOrSurrogate)
        return unit;

    wchar_t lower = unit;
    ::LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, &unit, 1, &lower, 1);
    return lower;
}

// Ordinal, not by the user's language.
inline bool EqualsNoCase(std::wstring_view first, std::wstring_view second)
{
    if (first.size() != second.size())
        return false;
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (first[i] != second[i] && LowerCase(first[i]) != LowerCase(second[i]))
            return false;
    }
    return true;
}

inline std::wstring_view View(LPCTSTR text)
{
    return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}

inline bool IsTrue(LPCTSTR text)
{
    return EqualsNoCase(View(text), L"true");
}

inline int ToInt(LPCTSTR text)
{
    return text != nullptr ? static_cast<int>(std::wcstol(text, nullptr, 10)) : 0;
}

// Reads decimal numbers with exactly one character, of any kind, between two of them.
class NumberReader {
public:
    explicit NumberReader(LPCTSTR text) : m_at(text != nullptr ? text : L"") {}

    // 0 when the text is used up or has no number here.
    int Next()
    {
        if (m_started && *m_at != L'\0')
            ++m_at;
        m_started = true;
        wchar_t* end = nullptr;
        const long number = std::wcstol(m_at, &end, 10);
        m_at = end;
        return static_cast<int>(number);
    }

private:
    const wchar_t* m_at;
    bool m_started = false;
};

// "left,top,right,bottom"
inline RECT ToRect(LPCTSTR text)
{
    NumberReader numbers(text);
    RECT rect;
    rect.left = numbers.Next();
    rect.top = numbers.Next();
    rect.right = numbers.Next();
    rect.bottom = numbers.Next();
    return rect;
}

// "width,height"
inline SIZE ToSize(LPCTSTR text)
{
    NumberReader numbers(text);
    SIZE size;
    size.cx = numbers.Next();
    size.cy = numbers.Next();
    return size;
}

// Whether a text is a colour: blanks, an optional '#', one to eight hexadecimal digits, blanks. The
// empty text stands for no colour.
inline bool IsColour(LPCTSTR text)
{
    if (text == nullptr || *text == L'\0')
        return true;
    const auto skipBlanks = [&text] {
        while (*text > L'\0' && *text <= L' ')
            ++text;
    };
    skipBlanks();
    if (*text == L'#')
        ++text;
    int digits = 0;
    while (std::iswxdigit(*text)) {
        ++text;
        ++digits;
    }
    skipBlanks();
    return *text == L'\0' && digits >= 1 && digits <= 8;
}

// Hexadecimal ARGB with an optional '#'. Six digits leave the alpha at 0.
inline DWORD ToColour(LPCTSTR text)
{
    if (text == nullptr)
        return 0;
    while (*text > L'\0' && *text <= L' ')
        ++text;
    if (*text == L'#')
        ++text;
    return static_cast<DWORD>(std::wcstoul(text, nullptr, 16));
}

constexpr std::uint32_t kHashSeed = 2166136261u;

constexpr std::uint32_t HashStep(std::uint32_t hash, wchar_t unit)
{
    return (hash ^ static_cast<std::uint32_t>(unit)) * 16777619u;
}

// For hash tables that are searched with any kind of text, without a copy.
struct WideHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const
    {
        std::uint32_t hash = kHashSeed;
        for (const wchar_t unit : text)
            hash = HashStep(hash, unit);
        return hash;
    }
};

struct WideEqual {
    using is_transparent = void;
    bool operator()(std::wstring_view first, std::wstring_view second) const
    {
        return first == second;
    }
};

struct WideHashNoCase {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const
    {
        std::uint32_t hash = kHashSeed;
        for (const wchar_t unit : text)
            hash = HashStep(hash, LowerCase(unit));
        return hash;
    }
};

struct WideEqualNoCase {
    using is_transparent = void;
    bool operator()(std::wstring_view first, std::wstring_view second) const
    {
        return EqualsNoCase(first, second);
    }
};

} // namespace Quillet::Text
