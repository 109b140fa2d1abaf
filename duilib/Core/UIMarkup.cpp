#include "Core/UIMarkup.h"

#include "Core/Diagnostics.h"
#include "Core/MarkupDocument.h"
#include "Core/ResourceLoader.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>
#include <span>

namespace DuiLib {

namespace {

constexpr std::size_t kLargestFile = 4u * 1024u * 1024u;
constexpr wchar_t kByteOrderMark = 0xFEFF;
constexpr wchar_t kReplacement = 0xFFFD;

struct DecodedText {
    std::unique_ptr<wchar_t[]> text; // with a final zero
    std::size_t length = 0;
    const wchar_t* reason = nullptr; // why there is none
    bool damaged = false;            // bytes that mean nothing became U+FFFD
};

enum class Encoding { Utf8, Utf16, Utf16Swapped, Ansi };

struct EncodedText {
    Encoding encoding;
    std::span<const BYTE> bytes; // without byte-order mark
};

EncodedText FindEncoding(std::span<const BYTE> bytes, int encoding)
{
    const auto startsWith = [bytes](std::initializer_list<BYTE> mark) {
        return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
    };
    if (startsWith({0xEF, 0xBB, 0xBF}))
        return {Encoding::Utf8, bytes.subspan(3)};
    if (startsWith({0xFF, 0xFE}))
        return {Encoding::Utf16, bytes.subspan(2)};
    if (startsWith({0xFE, 0xFF}))
        return {Encoding::Utf16Swapped, bytes.subspan(2)};
    if (encoding == XMLFILE_ENCODING_UNICODE)
        return {Encoding::Utf16, bytes};
    return {encoding == XMLFILE_ENCODING_ASNI ? Encoding::Ansi : Encoding::Utf8, bytes};
}

DecodedText DecodeUtf16(std::span<const BYTE> bytes, bool swapped)
{
    DecodedText decoded;
    if (bytes.size() % sizeof(wchar_t) != 0) {
        decoded.reason = L"the UTF-16 text ends in the middle of a character";
        return decoded;
    }
    decoded.length = bytes.size() / sizeof(wchar_t);
    decoded.text = std::make_unique<wchar_t[]>(decoded.length + 1);
    for (std::size_t i = 0; i < decoded.length; ++i) {
        const unsigned first = bytes[2 * i];
        const unsigned second = bytes[2 * i + 1];
        decoded.text[i] = static_cast<wchar_t>(swapped ? first << 8 | second : second << 8 | first);
    }
    return decoded;
}

DecodedText DecodeBytes(std::span<const BYTE> bytes, UINT codePage)
{
    DecodedText decoded;
    if (bytes.size() >= INT_MAX) {
        decoded.reason = L"the text is too long";
        return decoded;
    }

    // No encoding makes more UTF-16 units than it has bytes.
    const auto size = static_cast<int>(bytes.size());
    decoded.text = std::make_unique_for_overwrite<wchar_t[]>(bytes.size() + 1);
    const auto* const from = reinterpret_cast<LPCSTR>(bytes.data());
    int length =
        ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, from, size, decoded.text.get(), size);
    if (length == 0 && size > 0) {
        decoded.damaged = true;
        length = ::MultiByteToWideChar(codePage, 0, from, size, decoded.text.get(), size);
    }
    decoded.length = static_cast<std::size_t>(length);
    decoded.text[decoded.length] = 0;
    if (length == 0 && size > 0)
        decoded.reason = L"the bytes cannot be read as text";
    return decoded;
}

DecodedText Decode(const EncodedText& encoded)
{
    switch (encoded.encoding) {
    case Encoding::Utf8:
        return DecodeBytes(encoded.bytes, CP_UTF8);
    case Encoding::Ansi:
        return DecodeBytes(encoded.bytes, CP_ACP);
    case Encoding::Utf16:
        return DecodeUtf16(encoded.bytes, false);
    case Encoding::Utf16Swapped:
        return DecodeUtf16(encoded.bytes, true);
    }
    return {};
}

bool CopyText(std::wstring_view text, LPTSTR buffer, SIZE_T size)
{
    if (buffer == nullptr || size == 0)
        return false;
    const auto length = std::min<SIZE_T>(text.size(), size - 1);
    std::copy_n(text.data(), length, buffer);
    buffer[length] = 0;
    return true;
}

} // namespace

CMarkup::CMarkup(LPCTSTR text)
{
    if (text != nullptr)
        Load(text);
}

CMarkup::~CMarkup() = default;

bool CMarkup::Load(LPCTSTR text)
{
    constexpr auto kSource = L"text";
    if (text == nullptr)
        return Fail(kSource, L"there is no text");
    if (*text == kByteOrderMark)
        ++text;

    const std::size_t length = std::wcslen(text);
    auto copy = std::make_unique_for_overwrite<wchar_t[]>(length + 1);
    std::wmemcpy(copy.get(), text, length + 1);

    auto document = std::make_shared<MarkupDocument>();
    document->source = kSource;
    ParseMarkup(*document, std::move(copy), length, m_bPreserveWhitespace);
    return Adopt(std::move(document));
}

bool CMarkup::LoadFromMem(BYTE* bytes, DWORD size, int encoding)
{
    return LoadBytes(L"memory", bytes, size, encoding);
}

bool CMarkup::LoadFromFile(LPCTSTR file, int encoding)
{
    if (file == nullptr || *file == 0)
        return Fail(L"", L"there is no file name");

    std::wstring reason;
    const auto bytes = LoadResourceBytes(STRINGorID(file), nullptr, nullptr, ResourceFallback::None,
                                         kLargestFile, &reason);
    if (!bytes)
        return Fail(file, reason.c_str());
    return LoadBytes(file, bytes->data(), bytes->size(), encoding);
}

bool CMarkup::LoadFromResource(STRINGorID name, LPCTSTR type, HINSTANCE module)
{
    const std::wstring source =
        IS_INTRESOURCE(name.m_lpstr)
            ? L"resource " + std::to_wstring(reinterpret_cast<ULONG_PTR>(name.m_lpstr))
            : std::wstring(name.m_lpstr);
    std::wstring reason;
    const auto bytes =
        LoadResourceBytes(name, type, module, ResourceFallback::None, kLargestFile, &reason);
    if (!bytes)
        return Fail(source.c_str(), reason.c_str());
    return LoadBytes(source.c_str(), bytes->data(), bytes->size(), XMLFILE_ENCODING_UTF8);
}

bool CMarkup::LoadBytes(LPCTSTR source, const BYTE* bytes, SIZE_T size, int encoding)
{
    if (bytes == nullptr || size == 0)
        return Fail(source, L"the file is empty");

    auto decoded = Decode(FindEncoding({bytes, size}, encoding));
    if (decoded.reason != nullptr)
        return Fail(source, decoded.reason);

    // The parser writes into the text, so look for damage first.
    const std::wstring_view text(decoded.text.get(), decoded.length);
    const auto damage = decoded.damaged ? text.find(kReplacement) : text.npos;

    auto document = std::make_shared<MarkupDocument>();
    document->source = source;
    ParseMarkup(*document, std::move(decoded.text), decoded.length, m_bPreserveWhitespace);
    if (damage != text.npos && document->IsValid()) {
        const auto position = document->PositionOf(static_cast<UINT>(damage));
        document->remark = FailureAt(source, position.line, position.column,
                                     L"bytes that are no text in the encoding");
    }
    return Adopt(std::move(document));
}

bool CMarkup::Fail(LPCTSTR source, LPCTSTR reason)
{
    auto document = std::make_shared<MarkupDocument>();
    document->source = source;
    document->location = source;
    document->reason = reason;
    return Adopt(std::move(document));
}

bool CMarkup::Adopt(std::shared_ptr<MarkupDocument> document)
{
    m_pDocument = std::move(document);
    if (!m_pDocument->reason.empty())
        ReportFailure(m_pDocument->location + L": " + m_pDocument->reason);
    else if (!m_pDocument->remark.empty())
        ReportFailure(m_pDocument->remark);
    return m_pDocument->IsValid();
}

void CMarkup::Release()
{
    m_pDocument.reset();
}

bool CMarkup::IsValid() const
{
    return m_pDocument && m_pDocument->IsValid();
}

void CMarkup::SetPreserveWhitespace(bool preserve)
{
    m_bPreserveWhitespace = preserve;
}

void CMarkup::GetLastErrorMessage(LPTSTR buffer, SIZE_T size) const
{
    CopyText(m_pDocument ? std::wstring_view(m_pDocument->reason) : L"", buffer, size);
}

void CMarkup::GetLastErrorLocation(LPTSTR buffer, SIZE_T size) const
{
    CopyText(m_pDocument ? std::wstring_view(m_pDocument->location) : L"", buffer, size);
}

CMarkupNode CMarkup::GetRoot()
{
    return IsValid() ? CMarkupNode(m_pDocument.get(), 0) : CMarkupNode();
}

CMarkupNode::CMarkupNode() : m_pDocument(nullptr), m_uIndex(kNoElement) {}

CMarkupNode::CMarkupNode(const MarkupDocument* document, UINT index)
    : m_pDocument(document), m_uIndex(index)
{
}

bool CMarkupNode::IsValid() const
{
    return m_pDocument != nullptr && m_uIndex != kNoElement;
}

CMarkupNode CMarkupNode::GetParent()
{
    return IsValid() ? CMarkupNode(m_pDocument, m_pDocument->elements[m_uIndex].parent) : *this;
}

CMarkupNode CMarkupNode::GetSibling()
{
    return IsValid() ? CMarkupNode(m_pDocument, m_pDocument->elements[m_uIndex].next) : *this;
}

CMarkupNode CMarkupNode::GetChild()
{
    return IsValid() ? CMarkupNode(m_pDocument, m_pDocument->elements[m_uIndex].firstChild) : *this;
}

CMarkupNode CMarkupNode::GetChild(LPCTSTR name)
{
    if (name == nullptr)
        return {};
    auto child = GetChild();
    while (child.IsValid() && !Quillet::Text::EqualsNoCase(child.GetName(), name))
        child = child.GetSibling();
    return child;
}

bool CMarkupNode::HasSiblings() const
{
    return IsValid() && m_pDocument->elements[m_uIndex].next != kNoElement;
}

bool CMarkupNode::HasChildren() const
{
    return IsValid() && m_pDocument->elements[m_uIndex].firstChild != kNoElement;
}

LPCTSTR CMarkupNode::GetName() const
{
    return IsValid() ? m_pDocument->elements[m_uIndex].name : L"";
}

LPCTSTR CMarkupNode::GetValue() const
{
    return IsValid() ? m_pDocument->elements[m_uIndex].value : L"";
}

bool CMarkupNode::HasAttributes()
{
    return GetAttributeCount() > 0;
}

bool CMarkupNode::HasAttribute(LPCTSTR name)
{
    return FindAttribute(name) != nullptr;
}

int CMarkupNode::GetAttributeCount()
{
    return IsValid() ? static_cast<int>(m_pDocument->elements[m_uIndex].attributeCount) : 0;
}

LPCTSTR CMarkupNode::GetAttributeName(int index)
{
    const auto* const attribute = AttributeAt(index);
    return attribute != nullptr ? attribute->name : L"";
}

LPCTSTR CMarkupNode::GetAttributeValue(int index)
{
    const auto* const attribute = AttributeAt(index);
    return attribute != nullptr ? attribute->value : L"";
}

LPCTSTR CMarkupNode::GetAttributeValue(LPCTSTR name)
{
    const auto* const attribute = FindAttribute(name);
    return attribute != nullptr ? attribute->value : L"";
}

bool CMarkupNode::GetAttributeValue(int index, LPTSTR buffer, SIZE_T size)
{
    const auto* const attribute = AttributeAt(index);
    return attribute != nullptr && CopyText(attribute->value, buffer, size);
}

bool CMarkupNode::GetAttributeValue(LPCTSTR name, LPTSTR buffer, SIZE_T size)
{
    const auto* const attribute = FindAttribute(name);
    return attribute != nullptr && CopyText(attribute->value, buffer, size);
}

const MarkupAttribute* CMarkupNode::AttributeAt(int index) const
{
    if (!IsValid())
        return nullptr;
    const auto& element = m_pDocument->elements[m_uIndex];
    if (index < 0 || static_cast<UINT>(index) >= element.attributeCount)
        return nullptr;
    return &m_pDocument->attributes[element.firstAttribute + static_cast<UINT>(index)];
}

const MarkupAttribute* CMarkupNode::FindAttribute(LPCTSTR name) const
{
    if (!IsValid() || name == nullptr)
        return nullptr;
    const auto& element = m_pDocument->elements[m_uIndex];
    const std::wstring_view wanted(name);
    const std::span all(m_pDocument->attributes.data() + element.firstAttribute,
                        element.attributeCount);
    const auto found = std::find_if(all.begin(), all.end(), [wanted](const auto& each) {
        return Quillet::Text::EqualsNoCase(each.name, wanted);
    });
    return found != all.end() ? &*found : nullptr;
}

} // namespace DuiLib
