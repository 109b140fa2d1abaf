#pragma once

#include <string>

namespace gallery {

// A demonstration: the markup that is built, and the same markup as a page shows it.
class Demonstration {
public:
    static Demonstration Read(const std::wstring& file); // below the resource path

    const wchar_t* Markup() const { return m_markup.c_str(); }
    std::wstring Code() const; // without the wrapper around it

private:
    std::wstring m_markup;
};

} // namespace gallery
