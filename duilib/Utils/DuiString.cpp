#include "Utils/Utils.h"

#include "win32/TextParse.h"

#include <stdarg.h>
#include <stdlib.h>
#include <wchar.h>
#include <wctype.h>

#include <new>
#include <string>
#include <utility>

namespace DuiLib {

namespace {

LPCTSTR OrEmpty(LPCTSTR text)
{
    return text != nullptr ? text : L"";
}

int LengthOf(LPCTSTR text)
{
    return text != nullptr ? static_cast<int>(wcslen(text)) : 0;
}

// At most that many characters; -1: all.
int LengthOf(LPCTSTR text, int limit)
{
    if (text == nullptr)
        return 0;
    return static_cast<int>(limit < 0 ? wcslen(text) : wcsnlen(text, static_cast<size_t>(limit)));
}

void CopyCharacters(LPTSTR to, LPCTSTR from, int count)
{
    wmemmove(to, from, static_cast<size_t>(count));
}

} // namespace

// Shared by all empty strings of the process, also by those of other modules. Never written to.
TCHAR CDuiString::s_szEmpty[1] = {0};

CDuiString::CDuiString(const TCHAR character) : CDuiString()
{
    AssignCounted(&character, character != 0 ? 1 : 0);
}

CDuiString::CDuiString(const CDuiString& other) : CDuiString()
{
    AssignCounted(other.m_pstr, other.m_nLength);
}

CDuiString::CDuiString(CDuiString&& other) noexcept
    : m_pstr(std::exchange(other.m_pstr, s_szEmpty)),
      m_nLength(std::exchange(other.m_nLength, 0)),
      m_nCapacity(std::exchange(other.m_nCapacity, 0))
{
}

CDuiString::CDuiString(LPCTSTR text, int length) : CDuiString()
{
    AssignCounted(text, LengthOf(text, length));
}

CDuiString::~CDuiString()
{
    Empty();
}

void CDuiString::Empty()
{
    if (m_nCapacity != 0)
        free(m_pstr);
    m_pstr = s_szEmpty;
    m_nLength = 0;
    m_nCapacity = 0;
}

// Keeps the text.
void CDuiString::Reserve(int capacity)
{
    if (capacity <= m_nCapacity)
        return;
    void* const old = m_nCapacity != 0 ? m_pstr : nullptr;
    void* const grown = realloc(old, (static_cast<size_t>(capacity) + 1) * sizeof(TCHAR));
    if (grown == nullptr)
        throw std::bad_alloc();
    m_pstr = static_cast<LPTSTR>(grown);
    m_pstr[m_nLength] = 0;
    m_nCapacity = capacity;
}

bool CDuiString::Owns(LPCTSTR text) const
{
    return m_nCapacity != 0 && text >= m_pstr && text <= m_pstr + m_nLength;
}

void CDuiString::AssignCounted(LPCTSTR text, int length)
{
    if (length <= 0) {
        Empty();
        return;
    }
    // A part of the own text is never longer than the text, so it does not move the buffer.
    if (length > m_nCapacity) {
        m_nLength = 0;
        Reserve(length);
    }
    CopyCharacters(m_pstr, text, length);
    m_pstr[length] = 0;
    m_nLength = length;
}

void CDuiString::AppendCounted(LPCTSTR text, int length)
{
    if (length <= 0)
        return;
    const int total = m_nLength + length;
    if (total > m_nCapacity) {
        const bool own = Owns(text);
        const auto offset = text - m_pstr;
        Reserve(m_nCapacity != 0 ? (std::max)(total, m_nCapacity + m_nCapacity / 2) : total);
        if (own)
            text = m_pstr + offset;
    }
    CopyCharacters(m_pstr + m_nLength, text, length);
    m_pstr[total] = 0;
    m_nLength = total;
}

void CDuiString::AppendNarrow(LPCSTR text)
{
    if (text == nullptr || *text == 0)
        return;
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (length <= 1)
        return;
    std::wstring wide(static_cast<size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), length);
    AppendCounted(wide.c_str(), length - 1);
}

void CDuiString::SetAt(int index, TCHAR character)
{
    assert(index >= 0 && index < m_nLength);
    if (index < 0 || index >= m_nLength)
        return;
    m_pstr[index] = character;
    if (character == 0)
        m_nLength = index;
}

void CDuiString::Append(LPCTSTR text)
{
    AppendCounted(text, LengthOf(text));
}

void CDuiString::Assign(LPCTSTR text, int length)
{
    AssignCounted(text, LengthOf(text, length));
}

const CDuiString& CDuiString::operator=(const CDuiString& other)
{
    if (this != &other)
        AssignCounted(other.m_pstr, other.m_nLength);
    return *this;
}

const CDuiString& CDuiString::operator=(CDuiString&& other) noexcept
{
    if (this != &other) {
        Empty();
        std::swap(m_pstr, other.m_pstr);
        std::swap(m_nLength, other.m_nLength);
        std::swap(m_nCapacity, other.m_nCapacity);
    }
    return *this;
}

const CDuiString& CDuiString::operator=(const TCHAR character)
{
    AssignCounted(&character, character != 0 ? 1 : 0);
    return *this;
}

const CDuiString& CDuiString::operator=(LPCTSTR text)
{
    AssignCounted(text, LengthOf(text));
    return *this;
}

const CDuiString& CDuiString::operator=(LPCSTR text)
{
    Empty();
    AppendNarrow(text);
    return *this;
}

const CDuiString& CDuiString::operator+=(const CDuiString& other)
{
    AppendCounted(other.m_pstr, other.m_nLength);
    return *this;
}

const CDuiString& CDuiString::operator+=(LPCTSTR text)
{
    AppendCounted(text, LengthOf(text));
    return *this;
}

const CDuiString& CDuiString::operator+=(const TCHAR character)
{
    AppendCounted(&character, character != 0 ? 1 : 0);
    return *this;
}

const CDuiString& CDuiString::operator+=(LPCSTR text)
{
    AppendNarrow(text);
    return *this;
}

CDuiString CDuiString::operator+(const CDuiString& other) const
{
    CDuiString sum;
    sum.Reserve(m_nLength + other.m_nLength);
    sum += *this;
    sum += other;
    return sum;
}

CDuiString CDuiString::operator+(LPCTSTR text) const
{
    CDuiString sum;
    sum.Reserve(m_nLength + LengthOf(text));
    sum += *this;
    sum += text;
    return sum;
}

bool CDuiString::operator==(LPCTSTR text) const
{
    return Compare(text) == 0;
}

bool CDuiString::operator!=(LPCTSTR text) const
{
    return Compare(text) != 0;
}

bool CDuiString::operator<=(LPCTSTR text) const
{
    return Compare(text) <= 0;
}

bool CDuiString::operator<(LPCTSTR text) const
{
    return Compare(text) < 0;
}

bool CDuiString::operator>=(LPCTSTR text) const
{
    return Compare(text) >= 0;
}

bool CDuiString::operator>(LPCTSTR text) const
{
    return Compare(text) > 0;
}

bool CDuiString::operator==(const CDuiString& other) const
{
    return m_nLength == other.m_nLength &&
           wmemcmp(m_pstr, other.m_pstr, static_cast<size_t>(m_nLength)) == 0;
}

bool CDuiString::operator!=(const CDuiString& other) const
{
    return !(*this == other);
}

int CDuiString::Compare(LPCTSTR text) const
{
    return wcscmp(m_pstr, OrEmpty(text));
}

int CDuiString::CompareNoCase(LPCTSTR text) const
{
    LPCTSTR first = m_pstr;
    LPCTSTR second = OrEmpty(text);
    while (true) {
        const int difference = Quillet::Text::LowerCase(*first) - Quillet::Text::LowerCase(*second);
        if (difference != 0 || *first == 0)
            return difference;
        ++first;
        ++second;
    }
}

void CDuiString::MakeUpper()
{
    if (m_nLength != 0)
        ::LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, m_pstr, m_nLength, m_pstr, m_nLength);
}

void CDuiString::MakeLower()
{
    if (m_nLength != 0)
        ::LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, m_pstr, m_nLength, m_pstr, m_nLength);
}

CDuiString CDuiString::Left(int length) const
{
    return Mid(0, (std::max)(length, 0));
}

CDuiString CDuiString::Mid(int position, int length) const
{
    position = std::clamp(position, 0, m_nLength);
    const int rest = m_nLength - position;
    CDuiString part;
    part.AssignCounted(m_pstr + position, length < 0 ? rest : (std::min)(length, rest));
    return part;
}

CDuiString CDuiString::Right(int length) const
{
    return Mid(m_nLength - std::clamp(length, 0, m_nLength));
}

CDuiString& CDuiString::TrimLeft()
{
    LPCTSTR start = m_pstr;
    while (iswspace(*start))
        ++start;
    if (start != m_pstr)
        AssignCounted(start, m_nLength - static_cast<int>(start - m_pstr));
    return *this;
}

CDuiString& CDuiString::TrimRight()
{
    int length = m_nLength;
    while (length > 0 && iswspace(m_pstr[length - 1]))
        --length;
    if (length != m_nLength)
        AssignCounted(m_pstr, length);
    return *this;
}

CDuiString& CDuiString::Trim()
{
    TrimRight();
    return TrimLeft();
}

int CDuiString::Find(TCHAR character, int position) const
{
    if (character == 0 || position < 0 || position >= m_nLength)
        return -1;
    const auto* const found = wcschr(m_pstr + position, character);
    return found != nullptr ? static_cast<int>(found - m_pstr) : -1;
}

int CDuiString::Find(LPCTSTR text, int position) const
{
    if (text == nullptr || position < 0 || position > m_nLength)
        return -1;
    const auto* const found = wcsstr(m_pstr + position, text);
    return found != nullptr ? static_cast<int>(found - m_pstr) : -1;
}

int CDuiString::ReverseFind(TCHAR character) const
{
    if (character == 0)
        return -1;
    const auto* const found = wcsrchr(m_pstr, character);
    return found != nullptr ? static_cast<int>(found - m_pstr) : -1;
}

int CDuiString::Replace(LPCTSTR from, LPCTSTR to)
{
    const int fromLength = LengthOf(from);
    if (fromLength == 0)
        return 0;
    const int toLength = LengthOf(to);

    int count = 0;
    CDuiString replaced;
    LPCTSTR at = m_pstr;
    for (LPCTSTR found = wcsstr(at, from); found != nullptr; found = wcsstr(at, from)) {
        replaced.AppendCounted(at, static_cast<int>(found - at));
        replaced.AppendCounted(to, toLength);
        at = found + fromLength;
        ++count;
    }
    if (count > 0) {
        replaced.AppendCounted(at, LengthOf(at));
        *this = std::move(replaced);
    }
    return count;
}

int CDuiString::Format(LPCTSTR format, ...)
{
    if (format == nullptr)
        return -1;

    // These two take %s as wide text in every C library for Windows; swprintf does not.
    va_list arguments;
    va_start(arguments, format);
    const int length = _vscwprintf(format, arguments);
    va_end(arguments);
    if (length < 0)
        return -1;

    CDuiString formatted;
    formatted.Reserve(length);
    if (length > 0) {
        const auto size = static_cast<size_t>(length) + 1;
        va_start(arguments, format);
        _vsnwprintf_s(formatted.m_pstr, size, _TRUNCATE, format, arguments);
        va_end(arguments);
    }
    formatted.m_nLength = LengthOf(formatted.m_pstr);
    *this = std::move(formatted);
    return m_nLength;
}

int CDuiString::SmallFormat(LPCTSTR format, ...)
{
    if (format == nullptr)
        return -1;
    TCHAR buffer[MAX_LOCAL_STRING_LEN + 1] = {0};
    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf_s(buffer, MAX_LOCAL_STRING_LEN + 1, _TRUNCATE, format, arguments);
    va_end(arguments);
    Assign(buffer);
    return m_nLength;
}

std::vector<CDuiString> StrSplit(CDuiString text, CDuiString separator)
{
    std::vector<CDuiString> pieces;
    if (text.IsEmpty())
        return pieces;
    if (separator.IsEmpty()) {
        pieces.push_back(std::move(text));
        return pieces;
    }
    int start = 0;
    for (int end = text.Find(separator.GetData()); end >= 0;
         end = text.Find(separator.GetData(), start)) {
        pieces.push_back(text.Mid(start, end - start));
        start = end + separator.GetLength();
    }
    pieces.push_back(text.Mid(start));
    return pieces;
}

} // namespace DuiLib
