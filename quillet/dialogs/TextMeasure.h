#pragma once

#include <string_view>

#include "win32/Handles.h"

namespace Quillet::Dialogs {

// Measures texts in one font; the device context has its own font back afterwards.
class TextMeasure {
public:
    TextMeasure(HDC dc, HFONT font) : m_dc(dc), m_font(dc, font) { ::SetBkMode(dc, TRANSPARENT); }

    int WidthOf(std::wstring_view text) const // device pixels
    {
        SIZE extent{};
        ::GetTextExtentPoint32W(m_dc, text.data(), static_cast<int>(text.size()), &extent);
        return extent.cx;
    }

private:
    HDC m_dc;
    SelectedObject m_font;
};

} // namespace Quillet::Dialogs
