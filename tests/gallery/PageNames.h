#pragma once

#include "gallery/Page.h"

#include <cstddef>
#include <string>

namespace test {

// A page's name as a part of a test's.
inline std::string NameOfPage(std::size_t index)
{
    std::string name;
    for (const wchar_t* at = gallery::Pages()[index].name; *at; ++at) {
        if (*at != L'-')
            name += static_cast<char>(*at);
    }
    return name;
}

} // namespace test
