#include "Core/UIRender.h"

#include "Core/DrawingColor.h"
#include "Core/GdiplusText.h"
#include "Core/HtmlText.h"
#include "Core/PaintPass.h"
#include "Core/TextCache.h"
#include "Core/UIManager.h"
#include "win32/Handles.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace DuiLib {

namespace {

constexpr std::size_t kLongestKeptText = 512; // longer texts are measured every time
constexpr std::size_t kKeptMeasurements = 4096;

thread_local PaintPass* t_innermostPass = nullptr;

// A font in a DC with a text colour over the background as it is, until the end of the scope. In a
// paint pass the font stays.
class TextState {
public:
    TextState(HDC dc, HFONT font, DWORD color) : m_dc(dc)
    {
        if (!PaintPass::Covers(dc))
            m_font = ::SelectObject(dc, font);
        // A control may have selected a font of its own since the last text.
        else if (::GetCurrentObject(dc, OBJ_FONT) != font)
            ::SelectObject(dc, font);
        m_color = ::SetTextColor(dc, ToColorRef(color));
        m_mode = ::SetBkMode(dc, TRANSPARENT);
    }
    ~TextState()
    {
        ::SetBkMode(m_dc, m_mode);
        ::SetTextColor(m_dc, m_color);
        if (m_font)
            ::SelectObject(m_dc, m_font);
    }
    TextState(const TextState&) = delete;
    TextState& operator=(const TextState&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_font = nullptr; // null when it stays
    COLORREF m_color;
    int m_mode;
};

// What a measurement depends on.
template <class Text>
struct Measurement {
    HFONT font;
    UINT style;
    SIZE room;
    Text text;
};
using MeasurementKey = Measurement<std::wstring>;
using MeasurementView = Measurement<std::wstring_view>;

struct MeasurementHash {
    using is_transparent = void;
    template <class Text>
    std::size_t operator()(const Measurement<Text>& measurement) const
    {
        std::size_t hash = std::hash<std::wstring_view>()(measurement.text);
        hash = HashWith(hash, measurement.font);
        hash = HashWith(hash, measurement.style);
        hash = HashWith(hash, measurement.room.cx);
        return HashWith(hash, measurement.room.cy);
    }
};

struct MeasurementEqual {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const Measurement<A>& a, const Measurement<B>& b) const
    {
        return a.font == b.font && a.style == b.style && a.room.cx == b.room.cx &&
               a.room.cy == b.room.cy && std::wstring_view(a.text) == std::wstring_view(b.text);
    }
};

// What was measured lately, for the whole process.
template <class Value>
class Measurements {
public:
    std::optional<Value> Find(const MeasurementView& view)
    {
        const std::scoped_lock lock(m_mutex);
        const Value* const found = m_cache.Find(view);
        return found ? std::optional(*found) : std::nullopt;
    }

    void Keep(const MeasurementView& view, const Value& value)
    {
        const std::scoped_lock lock(m_mutex);
        m_cache.Insert({view.font, view.style, view.room, std::wstring(view.text)}, value);
    }

    void Forget(HFONT font)
    {
        const std::scoped_lock lock(m_mutex);
        m_cache.EraseIf([font](const auto& key, const auto&) { return key.font == font; });
    }

private:
    std::mutex m_mutex;
    BoundedCache<MeasurementKey, Value, MeasurementHash, MeasurementEqual> m_cache{
        kKeptMeasurements};
};

Measurements<TextExtent>& Extents()
{
    static Measurements<TextExtent> extents;
    return extents;
}

// Results of DT_CALCRECT for a rectangle at the origin.
Measurements<RECT>& TextRects()
{
    static Measurements<RECT> rects;
    return rects;
}

// The character of the first `&#x1F2e`-like reference of a text.
std::optional<wchar_t> ReferencedCharacter(std::wstring_view text)
{
    constexpr std::wstring_view kOpening = L"&#x";
    constexpr std::size_t kMostDigits = 4;

    const auto start = text.find(kOpening);
    if (start == text.npos)
        return std::nullopt;
    const auto digits = text.substr(start + kOpening.size(), kMostDigits);
    unsigned value = 0;
    for (const wchar_t digit : digits) {
        if (digit >= L'0' && digit <= L'9')
            value = value * 16 + (digit - L'0');
        else if (digit >= L'a' && digit <= L'f')
            value = value * 16 + (digit - L'a' + 10);
        else if (digit >= L'A' && digit <= L'F')
            value = value * 16 + (digit - L'A' + 10);
        else
            break;
    }
    return value == 0 ? std::nullopt : std::optional(static_cast<wchar_t>(value));
}

// What DrawText shows: the text itself, or the one character that it refers to.
class ShownText {
public:
    explicit ShownText(LPCTSTR text) : m_text(text)
    {
        if (const auto character = ReferencedCharacter(m_text)) {
            m_character = *character;
            m_text = {&m_character, 1};
            m_extraStyle = DT_NOPREFIX;
        }
    }
    ShownText(const ShownText&) = delete;
    ShownText& operator=(const ShownText&) = delete;

    std::wstring_view Text() const { return m_text; }
    UINT ExtraStyle() const { return m_extraStyle; }

private:
    std::wstring_view m_text;
    wchar_t m_character = 0;
    UINT m_extraStyle = 0;
};

void DrawPlain(HDC dc, std::wstring_view text, RECT& rect, UINT style)
{
    // The system measures an empty text only when it is told to look for the end.
    const int length = text.empty() ? -1 : static_cast<int>(text.size());
    ::DrawTextW(dc, text.data(), length, &rect, style & ~static_cast<UINT>(DT_MODIFYSTRING));
}

// Characters that stand one after the other, each with its own width: no control characters, no
// marks that combine, no writing that joins or runs from the right.
bool StandsAlone(wchar_t character)
{
    const auto within = [character](wchar_t first, wchar_t last) {
        return character >= first && character <= last;
    };
    return within(0x0020, 0x007E) || within(0x00AE, 0x02FF) || within(0x00A1, 0x00AC) ||
           within(0x0370, 0x0482) || within(0x048A, 0x052F) || within(0x3000, 0x3029) ||
           within(0x3041, 0x3096) || within(0x30A0, 0x30FF) || within(0x3400, 0x4DBF) ||
           within(0x4E00, 0x9FFF) || within(0xE000, 0xFAFF) || within(0xFF01, 0xFF60);
}

bool IsSimple(std::wstring_view text, UINT style)
{
    const bool hasPrefixes = (style & DT_NOPREFIX) == 0;
    return text.size() <= kLongestKeptText &&
           std::all_of(text.begin(), text.end(), [hasPrefixes](wchar_t character) {
               return StandsAlone(character) && !(hasPrefixes && character == L'&');
           });
}

// Where DrawTextW puts the one line of a text; nothing when that is not certain.
std::optional<POINT> PlaceOfLine(const RECT& rect, SIZE line, UINT style)
{
    const int freeWidth = rect.right - rect.left - line.cx;
    const int freeHeight = rect.bottom - rect.top - line.cy;
    POINT place{rect.left, rect.top};

    if (freeWidth < 0 && (style & (DT_CENTER | DT_END_ELLIPSIS | DT_WORD_ELLIPSIS)))
        return std::nullopt;
    if (style & DT_CENTER)
        place.x += freeWidth / 2;
    else if (style & DT_RIGHT)
        place.x += freeWidth;

    if (style & DT_VCENTER) {
        // Whether both heights are halved or their difference matters when just the line's is odd.
        const bool isAmbiguous = freeHeight < 0 || (line.cy % 2 != 0 && freeHeight % 2 != 0);
        if (isAmbiguous)
            return std::nullopt;
        place.y += freeHeight / 2;
    } else if (style & DT_BOTTOM) {
        place.y += freeHeight;
    }
    return place;
}

TextExtent MeasureNow(HDC dc, std::wstring_view text)
{
    TextExtent extent{};
    TEXTMETRICW metrics{};
    ::GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &extent.size);
    ::GetTextMetricsW(dc, &metrics);
    extent.overhangs = metrics.tmOverhang != 0;
    return extent;
}

// For a text that is not too long to be kept, on a DC that measures like all others.
TextExtent MeasureOnce(HDC dc, HFONT font, std::wstring_view text)
{
    const MeasurementView view{font, 0, {}, text};
    if (const auto known = Extents().Find(view))
        return *known;
    const auto extent = MeasureNow(dc, text);
    Extents().Keep(view, extent);
    return extent;
}

// Draws what DrawTextW would draw, without its work for line breaks, prefixes and ellipses. False
// when the text may need some of that.
bool DrawSimpleLine(HDC dc, HFONT font, std::wstring_view text, const RECT& rect, UINT style)
{
    constexpr UINT kSimpleStyles = DT_SINGLELINE | DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM |
                                   DT_NOPREFIX | DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_NOCLIP;
    const bool isOneLine = (style & DT_SINGLELINE) && (style & ~kSimpleStyles) == 0;
    const bool contradicts =
        (style & DT_CENTER && style & DT_RIGHT) || (style & DT_VCENTER && style & DT_BOTTOM);
    if (!isOneLine || contradicts || !IsSimple(text, style) || !MeasuresAlike(dc) ||
        ::GetTextAlign(dc) != (TA_LEFT | TA_TOP))
        return false;

    const auto extent = MeasureOnce(dc, font, text);
    if (extent.overhangs)
        return false;
    const auto place = PlaceOfLine(rect, extent.size, style);
    if (!place)
        return false;
    const UINT clip = style & DT_NOCLIP ? 0 : ETO_CLIPPED;
    return ::ExtTextOutW(dc, place->x, place->y, clip, &rect, text.data(),
                         static_cast<UINT>(text.size()), nullptr) != FALSE;
}

// Selecting a font costs more than anything else here: a known result does without.
void MeasurePlain(HDC dc, HFONT font, std::wstring_view text, RECT& rect, UINT style)
{
    const SIZE room{rect.right - rect.left, rect.bottom - rect.top};
    const MeasurementView view{font, style, room, text};
    const bool isKept = text.size() <= kLongestKeptText && MeasuresAlike(dc);
    auto measured = isKept ? TextRects().Find(view) : std::nullopt;
    if (!measured) {
        const Quillet::SelectedObject selected(dc, font);
        measured = RECT{0, 0, room.cx, room.cy};
        DrawPlain(dc, text, *measured, style);
        if (isKept)
            TextRects().Keep(view, *measured);
    }
    const POINT origin{rect.left, rect.top};
    rect = *measured;
    ::OffsetRect(&rect, origin.x, origin.y);
}

void DrawWithGdi(HDC dc, HFONT font, std::wstring_view text, RECT& rect, DWORD color, UINT style)
{
    if (style & DT_CALCRECT) {
        MeasurePlain(dc, font, text, rect, style);
        return;
    }
    const TextState state(dc, font, color);
    if (!DrawSimpleLine(dc, font, text, rect, style))
        DrawPlain(dc, text, rect, style);
}

bool HasNothingToDraw(const RECT& rect, std::wstring_view text, UINT style)
{
    if (style & DT_CALCRECT)
        return false;
    return text.empty() || (!(style & DT_NOCLIP) && ::IsRectEmpty(&rect));
}

} // namespace

PaintPass::PaintPass(HDC dc) : m_dc(dc), m_outer(std::exchange(t_innermostPass, this)) {}

PaintPass::~PaintPass()
{
    t_innermostPass = m_outer;
}

bool PaintPass::Covers(HDC dc)
{
    const PaintPass* pass = t_innermostPass;
    while (pass && pass->m_dc != dc)
        pass = pass->m_outer;
    return pass != nullptr;
}

void PaintPass::ForgetFont(HFONT font)
{
    for (const PaintPass* pass = t_innermostPass; pass; pass = pass->m_outer) {
        if (::GetCurrentObject(pass->m_dc, OBJ_FONT) == font)
            ::SelectObject(pass->m_dc, ::GetStockObject(SYSTEM_FONT));
    }
}

bool MeasuresAlike(HDC dc)
{
    return ::GetMapMode(dc) == MM_TEXT && ::GetGraphicsMode(dc) == GM_COMPATIBLE &&
           ::GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY;
}

TextExtent MeasureText(HDC dc, HFONT font, std::wstring_view text)
{
    return text.size() <= kLongestKeptText && MeasuresAlike(dc) ? MeasureOnce(dc, font, text)
                                                                : MeasureNow(dc, text);
}

void ForgetFont(HFONT font)
{
    PaintPass::ForgetFont(font);
    Extents().Forget(font);
    TextRects().Forget(font);
    ForgetHtmlTexts(font);
}

void CRenderEngine::DrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                             DWORD color, int font, UINT style)
{
    if (!dc || !manager || !text)
        return;
    if (DrawsTextWithGdiplus(*manager)) {
        GdiplusDrawText(dc, manager, rect, text, color, font, style);
        return;
    }
    const ShownText shown(text);
    if (HasNothingToDraw(rect, shown.Text(), style))
        return;
    DrawWithGdi(dc, manager->GetFont(font), shown.Text(), rect, color, style | shown.ExtraStyle());
}

void CRenderEngine::DrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                             DWORD color, int font, UINT style, DWORD background)
{
    if (!(style & DT_CALCRECT))
        DrawColor(dc, rect, background);
    DrawText(dc, manager, rect, text, color, font, style);
}

void CRenderEngine::GdiplusDrawText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                                    DWORD color, int font, UINT style)
{
    if (!dc || !manager || !text)
        return;
    const ShownText shown(text);
    if (HasNothingToDraw(rect, shown.Text(), style))
        return;
    const HFONT handle = manager->GetFont(font);
    const UINT shownStyle = style | shown.ExtraStyle();
    if (!DrawTextWithGdiplus(dc, *manager, handle, shown.Text(), rect, color, shownStyle))
        DrawWithGdi(dc, handle, shown.Text(), rect, color, shownStyle);
}

SIZE CRenderEngine::GetTextSize(HDC dc, CPaintManagerUI* manager, LPCTSTR text, int font,
                                UINT style)
{
    constexpr UINT kMeasuredStyles = DT_NOPREFIX | DT_EXPANDTABS | DT_TABSTOP | DT_EXTERNALLEADING |
                                     DT_HIDEPREFIX | DT_PREFIXONLY;
    RECT rect{};
    DrawText(dc, manager, rect, text, 0, font,
             (style & kMeasuredStyles) | DT_SINGLELINE | DT_CALCRECT);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

} // namespace DuiLib
