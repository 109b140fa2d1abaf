#include "Core/GdiplusText.h"

#include "Core/DrawingColor.h"
#include "Core/UIManager.h"
#include "win32/Handles.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace DuiLib {

namespace {

Gdiplus::StringAlignment HorizontalAlignment(UINT style)
{
    if (style & DT_CENTER)
        return Gdiplus::StringAlignmentCenter;
    return style & DT_RIGHT ? Gdiplus::StringAlignmentFar : Gdiplus::StringAlignmentNear;
}

// As in GDI, only a single line has a place between top and bottom.
Gdiplus::StringAlignment VerticalAlignment(UINT style)
{
    if (!(style & DT_SINGLELINE))
        return Gdiplus::StringAlignmentNear;
    if (style & DT_VCENTER)
        return Gdiplus::StringAlignmentCenter;
    return style & DT_BOTTOM ? Gdiplus::StringAlignmentFar : Gdiplus::StringAlignmentNear;
}

Gdiplus::StringTrimming Trimming(UINT style)
{
    if (style & DT_END_ELLIPSIS)
        return Gdiplus::StringTrimmingEllipsisCharacter;
    if (style & DT_WORD_ELLIPSIS)
        return Gdiplus::StringTrimmingEllipsisWord;
    return style & DT_PATH_ELLIPSIS ? Gdiplus::StringTrimmingEllipsisPath
                                    : Gdiplus::StringTrimmingNone;
}

Gdiplus::HotkeyPrefix Prefix(UINT style)
{
    if (style & DT_NOPREFIX)
        return Gdiplus::HotkeyPrefixNone;
    return style & DT_HIDEPREFIX ? Gdiplus::HotkeyPrefixHide : Gdiplus::HotkeyPrefixShow;
}

bool Wraps(UINT style)
{
    return (style & (DT_WORDBREAK | DT_SINGLELINE)) == DT_WORDBREAK;
}

void ApplyStyle(Gdiplus::StringFormat& format, UINT style)
{
    INT flags =
        Gdiplus::StringFormatFlagsNoFitBlackBox | Gdiplus::StringFormatFlagsMeasureTrailingSpaces;
    if (!Wraps(style))
        flags |= Gdiplus::StringFormatFlagsNoWrap;
    if (style & (DT_NOCLIP | DT_CALCRECT))
        flags |= Gdiplus::StringFormatFlagsNoClip;
    format.SetFormatFlags(flags);
    format.SetHotkeyPrefix(Prefix(style));
    if (style & DT_CALCRECT)
        return;
    format.SetAlignment(HorizontalAlignment(style));
    format.SetLineAlignment(VerticalAlignment(style));
    format.SetTrimming(Trimming(style));
}

Gdiplus::RectF ToRectF(const RECT& rect)
{
    return {static_cast<Gdiplus::REAL>(rect.left), static_cast<Gdiplus::REAL>(rect.top),
            static_cast<Gdiplus::REAL>(rect.right - rect.left),
            static_cast<Gdiplus::REAL>(rect.bottom - rect.top)};
}

// GDI+ breaks lines wherever the text does.
std::wstring OnOneLine(std::wstring_view text)
{
    std::wstring line(text);
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c == L'\r' || c == L'\n'; }, L' ');
    return line;
}

// GDI ends a line at a carriage return, a line feed or both together; GDI+ has its own mind about
// carriage returns.
std::wstring WithLineFeeds(std::wstring_view text)
{
    std::wstring lines;
    lines.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); at++) {
        const bool isReturn = text[at] == L'\r';
        lines += isReturn ? L'\n' : text[at];
        if (isReturn && text.substr(at + 1).starts_with(L'\n'))
            at++;
    }
    return lines;
}

INT FontStyleOf(const LOGFONTW& look)
{
    INT style = Gdiplus::FontStyleRegular;
    if (look.lfWeight > FW_MEDIUM)
        style |= Gdiplus::FontStyleBold;
    if (look.lfItalic)
        style |= Gdiplus::FontStyleItalic;
    if (look.lfUnderline)
        style |= Gdiplus::FontStyleUnderline;
    if (look.lfStrikeOut)
        style |= Gdiplus::FontStyleStrikeout;
    return style;
}

} // namespace

bool DrawsTextWithGdiplus(CPaintManagerUI& manager)
{
    return manager.IsLayered() || manager.IsUseGdiplusText();
}

std::unique_ptr<Gdiplus::Font> MakeGdiplusFont(HDC dc, HFONT font)
{
    LOGFONTW look{};
    if (::GetObjectW(font, sizeof look, &look) == 0)
        return nullptr;
    // What the system shows for the face that was asked for.
    TEXTMETRICW metrics{};
    WCHAR face[LF_FACESIZE]{};
    {
        const Quillet::SelectedObject selected(dc, font);
        ::GetTextMetricsW(dc, &metrics);
        ::GetTextFaceW(dc, LF_FACESIZE, face);
    }
    const Gdiplus::FontFamily shown(face);
    const auto* const family =
        shown.IsAvailable() ? &shown : Gdiplus::FontFamily::GenericSansSerif();
    const LONG emHeight = metrics.tmHeight - metrics.tmInternalLeading;
    auto made = std::make_unique<Gdiplus::Font>(family, static_cast<Gdiplus::REAL>(emHeight),
                                                FontStyleOf(look), Gdiplus::UnitPixel);
    return made->GetLastStatus() == Gdiplus::Ok ? std::move(made) : nullptr;
}

std::unique_ptr<Gdiplus::StringFormat> MakePieceFormat()
{
    auto format =
        std::make_unique<Gdiplus::StringFormat>(Gdiplus::StringFormat::GenericTypographic());
    format->SetFormatFlags(Gdiplus::StringFormatFlagsMeasureTrailingSpaces |
                           Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip);
    return format;
}

bool DrawTextWithGdiplus(HDC dc, CPaintManagerUI& manager, HFONT font, std::wstring_view text,
                         RECT& rect, DWORD color, UINT style)
{
    constexpr Gdiplus::REAL kUnbounded = 1 << 20;

    const auto gdiplusFont = MakeGdiplusFont(dc, font);
    if (!gdiplusFont)
        return false;
    Gdiplus::Graphics graphics(dc);
    graphics.SetTextRenderingHint(
        static_cast<Gdiplus::TextRenderingHint>(manager.GetGdiplusTextRenderingHint()));
    Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
    ApplyStyle(format, style);

    const bool singleLine = (style & DT_SINGLELINE) != 0;
    std::wstring changed;
    std::wstring_view shown = text;
    if (text.find_first_of(singleLine ? L"\r\n" : L"\r") != text.npos)
        shown = changed = singleLine ? OnOneLine(text) : WithLineFeeds(text);
    const auto length = static_cast<INT>(shown.size());
    auto area = ToRectF(rect);
    if (style & DT_CALCRECT) {
        if (!Wraps(style))
            area.Width = kUnbounded;
        area.Height = kUnbounded;
        Gdiplus::RectF bounds;
        graphics.MeasureString(shown.data(), length, gdiplusFont.get(), area, &format, &bounds);
        rect.right = rect.left + static_cast<LONG>(std::ceil(bounds.Width));
        rect.bottom = rect.top + static_cast<LONG>(std::ceil(bounds.Height));
        return true;
    }
    if (!(style & DT_NOCLIP))
        graphics.IntersectClip(area);
    const Gdiplus::SolidBrush brush{Gdiplus::Color(Opaque(color))};
    graphics.DrawString(shown.data(), length, gdiplusFont.get(), area, &format, &brush);
    return true;
}

} // namespace DuiLib
