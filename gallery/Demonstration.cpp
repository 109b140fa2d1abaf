#include "gallery/Demonstration.h"

#include <quillet/quillet.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace gallery {

namespace {

std::wstring FromUtf8(const std::string& bytes)
{
    const int size = static_cast<int>(bytes.size());
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), length);
    return text;
}

} // namespace

Demonstration Demonstration::Read(const std::wstring& file)
{
    const std::filesystem::path path =
        std::wstring(DuiLib::CPaintManagerUI::GetResourcePath()) + file;
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    Demonstration demonstration;
    demonstration.m_markup = FromUtf8(bytes);
    return demonstration;
}

std::wstring Demonstration::Code() const
{
    constexpr std::wstring_view kOpening = L"<Demo><VerticalLayout>\n";
    constexpr std::wstring_view kClosing = L"</VerticalLayout></Demo>";
    constexpr std::wstring_view kIndent = L"  ";

    const auto opening = m_markup.find(kOpening);
    const auto closing = m_markup.find(kClosing);
    if (opening == std::wstring::npos || closing == std::wstring::npos)
        return {};

    std::wstring code;
    std::size_t at = opening + kOpening.size();
    while (at < closing) {
        const auto end = m_markup.find(L'\n', at) + 1;
        if (m_markup.compare(at, kIndent.size(), kIndent) == 0)
            at += kIndent.size();
        code.append(m_markup, at, end - at);
        at = end;
    }
    return code;
}

} // namespace gallery
