#include "support/TempFolder.h"

#include "win32/Windows.h"

#include <atomic>
#include <filesystem>
#include <fstream>

namespace test {

namespace fs = std::filesystem;

TempFolder::TempFolder()
{
    static std::atomic<int> counter{0};
    const auto name = L"quillet-test-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                      std::to_wstring(++counter);
    const fs::path folder = fs::temp_directory_path() / name;
    fs::remove_all(folder);
    fs::create_directories(folder);
    m_path = folder.wstring() + L"\\";
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::wstring TempFolder::operator/(std::wstring_view name) const
{
    return m_path + std::wstring(name);
}

std::wstring TempFolder::Write(std::wstring_view name, std::string_view bytes) const
{
    const fs::path path = *this / name;
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path.wstring();
}

std::wstring TempFolder::Write(std::wstring_view name, std::span<const unsigned char> bytes) const
{
    return Write(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string Utf8(std::wstring_view text)
{
    const int length = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                             nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(),
                          length, nullptr, nullptr);
    return utf8;
}

} // namespace test
