#include "Core/HtmlText.h"

#include "Core/DrawingColor.h"
#include "Core/GdiplusText.h"
#include "Core/HtmlLayout.h"
#include "Core/TextCache.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace DuiLib {

namespace {

constexpr std::size_t kKeptWeight = 1 << 18; // characters, more or less
constexpr std::size_t kEntryWeight = 64;
constexpr UINT kBreakingStyles = DT_SINGLELINE | DT_WORDBREAK | DT_END_ELLIPSIS;

// Everything that a layout depends on, but for the fonts and pictures that its tags name.
template <class Text>
struct Request {
    CPaintManagerUI* manager;
    HFONT font;
    int width;
    UINT style;
    HtmlMeter meter;
    Text text;
};
using RequestKey = Request<std::wstring>;
using RequestView = Request<std::wstring_view>;

struct RequestHash {
    using is_transparent = void;
    template <class Text>
    std::size_t operator()(const Request<Text>& request) const
    {
        std::size_t hash = std::hash<std::wstring_view>()(request.text);
        hash = HashWith(hash, request.manager);
        hash = HashWith(hash, request.font);
        hash = HashWith(hash, request.width);
        return HashWith(hash, request.style);
    }
};

struct RequestEqual {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const Request<A>& a, const Request<B>& b) const
    {
        return a.manager == b.manager && a.font == b.font && a.width == b.width &&
               a.style == b.style && a.meter == b.meter &&
               std::wstring_view(a.text) == std::wstring_view(b.text);
    }
};

using SharedLayout = std::shared_ptr<const HtmlLayout>;

// The layouts drawn lately, for the whole process. Laying a text out can add and remove fonts,
// which comes back here: the lock is never held meanwhile.
class Layouts {
public:
    SharedLayout Find(const RequestView& view)
    {
        const std::scoped_lock lock(m_mutex);
        const SharedLayout* const found = m_cache.Find(view);
        return found ? *found : nullptr;
    }

    void Keep(const RequestView& view, const SharedLayout& layout)
    {
        const std::scoped_lock lock(m_mutex);
        m_cache.Insert(
            {view.manager, view.font, view.width, view.style, view.meter, std::wstring(view.text)},
            layout, view.text.size() + kEntryWeight);
    }

    void Forget(const CPaintManagerUI* manager)
    {
        const std::scoped_lock lock(m_mutex);
        m_cache.EraseIf(
            [manager](const RequestKey& key, const auto&) { return key.manager == manager; });
    }

    void Forget(HFONT font)
    {
        const std::scoped_lock lock(m_mutex);
        m_cache.EraseIf([font](const RequestKey& key, const SharedLayout& layout) {
            return key.font == font || std::any_of(layout->fonts.begin(), layout->fonts.end(),
                                                   [font](const HtmlFontUse& use) {
                                                       return use.font == font || use.start == font;
                                                   });
        });
    }

private:
    std::mutex m_mutex;
    BoundedCache<RequestKey, SharedLayout, RequestHash, RequestEqual> m_cache{kKeptWeight};
};

Layouts& KeptLayouts()
{
    static Layouts layouts;
    return layouts;
}

SharedLayout GetLayout(HDC dc, const RequestView& request)
{
    const bool isKept = MeasuresAlike(dc);
    if (isKept) {
        const auto known = KeptLayouts().Find(request);
        if (known && IsUpToDate(*known, *request.manager))
            return known;
    }
    auto made = std::make_shared<const HtmlLayout>(
        LayOutHtml(dc, *request.manager, ParseHtml(request.text), request.width, request.font,
                   request.style, request.meter));
    if (isKept)
        KeptLayouts().Keep(request, made);
    return made;
}

// A layout in its rectangle.
class Placement {
public:
    Placement(const HtmlLayout& layout, const RECT& rect, UINT style)
        : m_layout(layout), m_rect(rect), m_style(style), m_top(rect.top)
    {
        const LONG room = rect.bottom - rect.top - layout.size.cy;
        if (style & DT_CALCRECT)
            return;
        if (style & DT_VCENTER)
            m_top += room / 2;
        else if (style & DT_BOTTOM)
            m_top += room;
    }

    int Left(const HtmlLine& line) const
    {
        const int room = std::max<int>(m_rect.right - m_rect.left - line.width, 0);
        if (m_style & DT_CALCRECT)
            return m_rect.left;
        if (m_style & DT_CENTER)
            return m_rect.left + room / 2;
        return m_style & DT_RIGHT ? m_rect.left + room : m_rect.left;
    }
    int Top(const HtmlLine& line) const { return m_top + line.top; }
    int Bottom(const HtmlLine& line) const { return m_top + line.top + line.height; }

    RECT Of(const HtmlLinkPart& part) const
    {
        const auto& line = m_layout.lines[part.line];
        const int left = Left(line);
        return {left + part.left, Top(line), left + part.right, Bottom(line)};
    }

    RECT Of(const HtmlLine& line, const HtmlRun& run) const
    {
        const int left = Left(line) + run.left;
        return {left, Top(line), left + run.width, Bottom(line)};
    }

private:
    const HtmlLayout& m_layout;
    const RECT& m_rect;
    UINT m_style;
    int m_top;
};

// Puts characters into a DC.
class TextWriter {
public:
    virtual ~TextWriter() = default;
    virtual void Write(HFONT font, DWORD color, int x, int y, std::wstring_view text) = 0;
};

class GdiWriter : public TextWriter {
public:
    explicit GdiWriter(HDC dc)
        : m_dc(dc),
          m_previousFont(::GetCurrentObject(dc, OBJ_FONT)),
          m_previousColor(::GetTextColor(dc)),
          m_previousMode(::SetBkMode(dc, TRANSPARENT))
    {
    }
    ~GdiWriter() override
    {
        ::SetBkMode(m_dc, m_previousMode);
        ::SetTextColor(m_dc, m_previousColor);
        ::SelectObject(m_dc, m_previousFont);
    }
    GdiWriter(const GdiWriter&) = delete;
    GdiWriter& operator=(const GdiWriter&) = delete;

    void Write(HFONT font, DWORD color, int x, int y, std::wstring_view text) override
    {
        if (std::exchange(m_font, font) != font)
            ::SelectObject(m_dc, font);
        if (m_color != color) {
            ::SetTextColor(m_dc, ToColorRef(color));
            m_color = color;
        }
        ::ExtTextOutW(m_dc, x, y, 0, nullptr, text.data(), static_cast<UINT>(text.size()), nullptr);
    }

private:
    HDC m_dc;
    HGDIOBJ m_previousFont;
    COLORREF m_previousColor;
    int m_previousMode;
    HFONT m_font = nullptr;
    std::optional<DWORD> m_color;
};

class GdiplusWriter : public TextWriter {
public:
    GdiplusWriter(HDC dc, int renderingHint) : m_dc(dc), m_graphics(dc), m_format(MakePieceFormat())
    {
        m_graphics.SetTextRenderingHint(static_cast<Gdiplus::TextRenderingHint>(renderingHint));
    }

    void Write(HFONT font, DWORD color, int x, int y, std::wstring_view text) override
    {
        if (std::exchange(m_handle, font) != font)
            m_font = MakeGdiplusFont(m_dc, font);
        const Gdiplus::SolidBrush brush{Gdiplus::Color(Opaque(color))};
        const Gdiplus::PointF place(static_cast<Gdiplus::REAL>(x), static_cast<Gdiplus::REAL>(y));
        m_graphics.DrawString(text.data(), static_cast<INT>(text.size()), m_font.get(), place,
                              m_format.get(), &brush);
    }

private:
    HDC m_dc;
    Gdiplus::Graphics m_graphics;
    std::unique_ptr<Gdiplus::StringFormat> m_format;
    HFONT m_handle = nullptr;
    std::unique_ptr<Gdiplus::Font> m_font;
};

class Painter {
public:
    Painter(HDC dc, CPaintManagerUI& manager, const HtmlLayout& layout, const Placement& placement,
            const RECT& clip)
        : m_dc(dc), m_manager(manager), m_layout(layout), m_placement(placement), m_clip(clip)
    {
    }

    void SetTextColor(DWORD color) { m_textColor = color; }

    // Links with this content are drawn as hovered; null for none.
    void SetHoveredLink(const std::wstring* content) { m_hoveredLink = content; }

    // What lies behind the text comes first, so that no character is covered by its neighbour's
    // background.
    void Paint(HtmlMeter meter)
    {
        RECT drawable{};
        ::GetClipBox(m_dc, &drawable);
        for (const auto& line : m_layout.lines) {
            if (IsVisible(line, drawable))
                PaintBehindText(line);
        }
        if (meter == HtmlMeter::Gdiplus) {
            GdiplusWriter writer(m_dc, m_manager.GetGdiplusTextRenderingHint());
            PaintText(writer, drawable);
        } else {
            GdiWriter writer(m_dc);
            PaintText(writer, drawable);
        }
    }

private:
    void PaintBehindText(const HtmlLine& line)
    {
        for (std::size_t i = line.firstRun; i < line.firstRun + line.runCount; ++i) {
            const auto& run = m_layout.runs[i];
            const RECT place = m_placement.Of(line, run);
            if (m_layout.content.styles[run.style].selected)
                CRenderEngine::DrawColor(m_dc, place, m_manager.GetDefaultSelectedBkColor());
            if (run.kind == HtmlItem::Kind::Picture)
                PaintPicture(run, place);
        }
    }

    void PaintPicture(const HtmlRun& run, const RECT& place)
    {
        const auto loaded = LoadHtmlPicture(m_manager, m_layout.content.pictures[run.picture]);
        if (!loaded.image)
            return;
        const RECT& part = m_layout.pictures[run.picture].part;
        const RECT target{place.left, place.bottom - (part.bottom - part.top), place.right,
                          place.bottom};
        CRenderEngine::DrawImage(m_dc, loaded.image->hBitmap, target, m_clip, part, RECT{},
                                 loaded.image->bAlpha, loaded.fade);
    }

    bool IsVisible(const HtmlLine& line, const RECT& drawable) const
    {
        return m_placement.Bottom(line) > drawable.top && m_placement.Top(line) < drawable.bottom;
    }

    void PaintText(TextWriter& writer, const RECT& drawable)
    {
        for (const auto index : m_layout.textRuns) {
            const auto& run = m_layout.runs[index];
            const auto& line = m_layout.lines[run.line];
            if (!IsVisible(line, drawable))
                continue;
            const auto& style = m_layout.content.styles[run.style];
            const auto& font = m_layout.fonts[style.font];
            const auto text =
                std::wstring_view(m_layout.content.text).substr(run.first, run.length);
            writer.Write(font.font, ColorOf(style), m_placement.Left(line) + run.left,
                         m_placement.Bottom(line) - font.height, text);
        }
    }

    DWORD ColorOf(const HtmlStyle& style) const
    {
        switch (style.colorSource) {
        case HtmlColor::OfTag:
            return style.color;
        case HtmlColor::OfLink:
            if (m_hoveredLink && *m_hoveredLink == m_layout.content.links[style.link])
                return m_manager.GetDefaultLinkHoverFontColor();
            return m_textColor == 0 ? m_manager.GetDefaultLinkFontColor() : m_textColor;
        default:
            return m_textColor;
        }
    }

    HDC m_dc;
    CPaintManagerUI& m_manager;
    const HtmlLayout& m_layout;
    const Placement& m_placement;
    RECT m_clip;
    DWORD m_textColor = 0;
    const std::wstring* m_hoveredLink = nullptr;
};

// Fills the caller's arrays as far as they reach; gives the number of entries.
int RecordLinks(const HtmlLayout& layout, const Placement& placement, RECT* rects,
                CDuiString* contents, int capacity)
{
    const int count =
        static_cast<int>(std::min<std::size_t>(layout.linkParts.size(), std::max(capacity, 0)));
    for (int i = 0; i < count; ++i) {
        const auto& part = layout.linkParts[i];
        if (rects)
            rects[i] = placement.Of(part);
        if (contents)
            contents[i] = layout.content.links[part.link].c_str();
    }
    return count;
}

// The content of the recorded link under the mouse, or null.
const std::wstring* FindHoveredLink(const HtmlLayout& layout, const Placement& placement,
                                    int recorded, POINT mouse)
{
    for (int i = 0; i < recorded; ++i) {
        const RECT rect = placement.Of(layout.linkParts[i]);
        if (::PtInRect(&rect, mouse))
            return &layout.content.links[layout.linkParts[i].link];
    }
    return nullptr;
}

} // namespace

void ForgetHtmlTexts(HFONT font)
{
    KeptLayouts().Forget(font);
}

void ForgetHtmlTexts(const CPaintManagerUI* manager)
{
    KeptLayouts().Forget(manager);
}

void CRenderEngine::DrawHtmlText(HDC dc, CPaintManagerUI* manager, RECT& rect, LPCTSTR text,
                                 DWORD color, RECT* links, CDuiString* linkTexts, int& linkCount,
                                 int font, UINT style)
{
    const int capacity = std::exchange(linkCount, 0);
    if (!dc || !manager || !text || ::IsRectEmpty(&rect))
        return;

    const auto meter = DrawsTextWithGdiplus(*manager) ? HtmlMeter::Gdiplus : HtmlMeter::Gdi;
    const auto layout =
        GetLayout(dc, {manager, manager->GetFont(font), static_cast<int>(rect.right - rect.left),
                       style & kBreakingStyles, meter, text});
    const Placement placement(*layout, rect, style);
    linkCount = RecordLinks(*layout, placement, links, linkTexts, capacity);

    if (style & DT_CALCRECT) {
        rect.right = rect.left + layout->size.cx;
        rect.bottom = rect.top + layout->size.cy;
        return;
    }
    CRenderClip clip;
    CRenderClip::GenerateClip(dc, rect, clip);
    Painter painter(dc, *manager, *layout, placement, rect);
    painter.SetTextColor(color);
    painter.SetHoveredLink(FindHoveredLink(*layout, placement, linkCount, manager->GetMousePos()));
    painter.Paint(meter);
}

} // namespace DuiLib
