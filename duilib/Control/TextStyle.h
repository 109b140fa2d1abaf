#pragma once

#include "Core/UIPlatform.h"

#include <string_view>

// What attributes do to DT_* bits.
namespace DuiLib::TextStyle {

inline constexpr UINT kHorizontalBits = DT_LEFT | DT_CENTER | DT_RIGHT;
inline constexpr UINT kVerticalBits = DT_TOP | DT_VCENTER | DT_BOTTOM;
inline constexpr UINT kWrapBits = DT_WORDBREAK | DT_EDITCONTROL;

inline bool Contains(LPCTSTR text, std::wstring_view word)
{
    return text && std::wstring_view(text).find(word) != std::wstring_view::npos;
}

inline UINT WithHorizontalAlignment(UINT style, LPCTSTR words)
{
    if (Contains(words, L"left"))
        style = (style & ~kHorizontalBits) | DT_LEFT;
    if (Contains(words, L"center"))
        style = (style & ~kHorizontalBits) | DT_CENTER;
    if (Contains(words, L"right"))
        style = (style & ~kHorizontalBits) | DT_RIGHT;
    return style;
}

// Vertical alignment exists for single lines only, so naming one selects a single line.
inline UINT WithVerticalAlignment(UINT style, LPCTSTR words)
{
    const UINT line = (style & ~(kVerticalBits | kWrapBits)) | DT_SINGLELINE;
    if (Contains(words, L"top"))
        style = line | DT_TOP;
    if (Contains(words, L"vcenter"))
        style = line | DT_VCENTER;
    if (Contains(words, L"bottom"))
        style = line | DT_BOTTOM;
    return style;
}

inline UINT WithFlag(UINT style, UINT flag, bool on)
{
    return on ? style | flag : style & ~flag;
}

inline UINT WithWordBreak(UINT style, bool on)
{
    return on ? (style & ~DT_SINGLELINE) | kWrapBits : (style & ~kWrapBits) | DT_SINGLELINE;
}

} // namespace DuiLib::TextStyle
