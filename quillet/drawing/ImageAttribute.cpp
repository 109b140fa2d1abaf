#include "quillet/drawing/ImageAttribute.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "win32/TextParse.h"

namespace DuiLib {

namespace {

bool IsBlank(wchar_t character)
{
    return character != L'\0' && character <= L' ';
}

const wchar_t* SkipBlanks(const wchar_t* at)
{
    while (IsBlank(*at))
        at++;
    return at;
}

DWORD ToMask(const wchar_t* value)
{
    return std::wcstoul(*value == L'#' ? value + 1 : value, nullptr, 16);
}

bool IsZero(const RECT& rect)
{
    return rect.left == 0 && rect.top == 0 && rect.right == 0 && rect.bottom == 0;
}

} // namespace

struct CImageAttribute::Pair {
    std::wstring key;
    std::wstring value;
};

CImageAttribute::CImageAttribute()
{
    Clear();
}

CImageAttribute::~CImageAttribute() = default;

CImageAttribute::CImageAttribute(const CImageAttribute& other)
{
    Clone(other);
}

CImageAttribute& CImageAttribute::operator=(const CImageAttribute& other)
{
    if (this != &other)
        Clone(other);
    return *this;
}

void CImageAttribute::Clear()
{
    m_sAttribute.Empty();
    m_sImageName.Empty();
    m_sResType.Empty();
    m_pImageInfo = nullptr;
    m_bLoadAllowed = true;
    m_rcDest = m_rcSource = m_rcCorner = RECT{};
    m_uFade = 255;
    m_dwMask = 0;
    m_bHole = m_bXTiled = m_bYTiled = false;
}

void CImageAttribute::Clone(const CImageAttribute& other)
{
    m_sAttribute = other.m_sAttribute;
    m_sImageName = other.m_sImageName;
    m_sResType = other.m_sResType;
    m_pImageInfo = other.m_pImageInfo;
    m_bLoadAllowed = other.m_bLoadAllowed;
    m_rcDest = other.m_rcDest;
    m_rcSource = other.m_rcSource;
    m_rcCorner = other.m_rcCorner;
    m_uFade = other.m_uFade;
    m_dwMask = other.m_dwMask;
    m_bHole = other.m_bHole;
    m_bXTiled = other.m_bXTiled;
    m_bYTiled = other.m_bYTiled;
}

void CImageAttribute::SetAttributeString(const wchar_t* attribute)
{
    const CDuiString text = attribute;
    if (text == m_sAttribute)
        return;
    Clear();
    m_sAttribute = text;
    m_sImageName = text;
    ParseAttribute(text);
}

void CImageAttribute::ModifyAttribute(const wchar_t* attribute)
{
    ParseAttribute(attribute);
}

void CImageAttribute::ParseAttribute(const wchar_t* attribute)
{
    if (!attribute)
        return;
    Pair pair;
    for (const wchar_t* at = attribute; *at != L'\0';) {
        at = SkipBlanks(at);
        const wchar_t* const key = at;
        while (*at > L' ' && *at != L'=')
            at++;
        pair.key.assign(key, at);
        at = SkipBlanks(at);
        if (*at != L'=')
            return;
        at = SkipBlanks(at + 1);
        if (*at != L'\'')
            return;
        const wchar_t* const value = at + 1;
        const wchar_t* const end = std::wcschr(value, L'\'');
        if (!end)
            return;
        pair.value.assign(value, end);
        Apply(pair);
        // Published: exactly one space leads to the next pair.
        if (end[1] != L' ')
            return;
        at = end + 2;
    }
}

void CImageAttribute::Apply(const Pair& pair)
{
    using Setter = void (*)(CImageAttribute & self, const wchar_t* value);
    struct Row {
        std::wstring_view key;
        Setter set;
    };
    // Published: "res" and "file" are the same field, and only "true" itself is true.
    static constexpr auto isTrue = [](const wchar_t* value) {
        return std::wstring_view(value) == L"true";
    };
    static constexpr Row kRows[] = {
        {L"file", [](auto& self, auto* value) { self.m_sImageName = value; }},
        {L"res", [](auto& self, auto* value) { self.m_sImageName = value; }},
        {L"restype", [](auto& self, auto* value) { self.m_sResType = value; }},
        {L"dest", [](auto& self, auto* value) { self.m_rcDest = Quillet::Text::ToRect(value); }},
        {L"source",
         [](auto& self, auto* value) { self.m_rcSource = Quillet::Text::ToRect(value); }},
        {L"corner",
         [](auto& self, auto* value) { self.m_rcCorner = Quillet::Text::ToRect(value); }},
        {L"mask", [](auto& self, auto* value) { self.m_dwMask = ToMask(value); }},
        {L"fade",
         [](auto& self, auto* value) {
             self.m_uFade = static_cast<BYTE>(std::wcstoul(value, nullptr, 10));
         }},
        {L"hole", [](auto& self, auto* value) { self.m_bHole = isTrue(value); }},
        {L"xtiled", [](auto& self, auto* value) { self.m_bXTiled = isTrue(value); }},
        {L"ytiled", [](auto& self, auto* value) { self.m_bYTiled = isTrue(value); }},
    };
    // Published: an empty value is as none.
    if (pair.value.empty())
        return;
    const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [&pair](const Row& r) { return r.key == pair.key; });
    if (row != std::end(kRows))
        row->set(*this, pair.value.c_str());
}

const CDuiString& CImageAttribute::GetAttributeString() const
{
    return m_sAttribute;
}

RECT CImageAttribute::GetDest()
{
    return m_rcDest;
}

void CImageAttribute::SetDest(const RECT& dest)
{
    m_rcDest = dest;
}

const CDuiString& CImageAttribute::GetImageName() const
{
    return m_sImageName;
}

const CDuiString& CImageAttribute::GetResType() const
{
    return m_sResType;
}

RECT CImageAttribute::GetSource() const
{
    return m_rcSource;
}

RECT CImageAttribute::GetCorner() const
{
    return m_rcCorner;
}

BYTE CImageAttribute::GetFade() const
{
    return m_uFade;
}

DWORD CImageAttribute::GetMask() const
{
    return m_dwMask;
}

bool CImageAttribute::IsHole() const
{
    return m_bHole;
}

bool CImageAttribute::IsXTiled() const
{
    return m_bXTiled;
}

bool CImageAttribute::IsYTiled() const
{
    return m_bYTiled;
}

bool CImageAttribute::LoadImageW(CPaintManagerUI* manager)
{
    if (m_pImageInfo)
        return true;
    // Published: what could not be loaded is not tried again.
    if (!m_bLoadAllowed || !manager)
        return false;
    const wchar_t* const type = m_sResType.IsEmpty() ? nullptr : m_sResType.GetData();
    const auto* const image = manager->GetImageEx(m_sImageName, type, m_dwMask, false,
                                                  static_cast<HINSTANCE>(nullptr), false);
    m_bLoadAllowed = image != nullptr;
    if (!image)
        return false;
    if (IsZero(m_rcSource))
        m_rcSource = {0, 0, image->nX, image->nY};
    m_rcSource.right = std::min<LONG>(m_rcSource.right, image->nX);
    m_rcSource.bottom = std::min<LONG>(m_rcSource.bottom, image->nY);
    m_pImageInfo = image;
    return true;
}

const TImageInfo* CImageAttribute::GetImageInfo() const
{
    return m_pImageInfo;
}

bool CImageAttribute::IsLoadSuccess()
{
    return !m_sAttribute.IsEmpty() && m_bLoadAllowed;
}

} // namespace DuiLib
