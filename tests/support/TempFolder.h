#pragma once

#include <span>
#include <string>
#include <string_view>

namespace test {

// A fresh folder that is removed, with all it holds, when the object dies.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // With a trailing backslash.
    const std::wstring& Path() const { return m_path; }
    std::wstring operator/(std::wstring_view name) const;

    // Writes the bytes, making sub-folders as needed, and returns the full path.
    std::wstring Write(std::wstring_view name, std::string_view bytes) const;
    std::wstring Write(std::wstring_view name, std::span<const unsigned char> bytes) const;

private:
    std::wstring m_path;
};

// UTF-8 of a wide text.
std::string Utf8(std::wstring_view text);

} // namespace test
