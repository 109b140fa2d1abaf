#include "Core/HtmlLayout.h"

#include "Core/GdiplusText.h"
#include "Core/TextCache.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "win32/Handles.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace DuiLib {

namespace {

constexpr std::wstring_view kDots = L"...";
constexpr std::size_t kLongestCharacter = 8; // code units, with its marks

// More fonts than any skin has: a text that asks for yet another one gets the font it started from,
// so no text can use up the system's handles.
constexpr DWORD kMostFonts = 512;

// The font of a DC while others are selected one after the other.
class KeptFont : public Quillet::SelectedObject {
public:
    explicit KeptFont(HDC dc) : SelectedObject(dc, ::GetCurrentObject(dc, OBJ_FONT)) {}
};

// An unknown id stands for the default font.
bool IsFontId(CPaintManagerUI& manager, int id)
{
    const HFONT font = manager.GetFont(id);
    return font != manager.GetDefaultFontInfo()->hFont || manager.GetFontIndex(font) == id ||
           manager.GetFontIndex(font, true) == id;
}

HFONT FindOrAddFont(CPaintManagerUI& manager, LPCTSTR name, int size, const HtmlFont& look)
{
    if (const HFONT font =
            manager.GetFont(name, size, look.bold, look.underline, look.italic, look.strikeout))
        return font;
    const DWORD count = manager.GetCustomFontCount();
    if (count >= kMostFonts)
        return nullptr;
    int id = MAX_FONT_ID + static_cast<int>(count);
    while (IsFontId(manager, id))
        ++id;
    return manager.AddFont(id, name, size, look.bold, look.underline, look.italic, look.strikeout);
}

HtmlFontUse ResolveFont(CPaintManagerUI& manager, HFONT base, const HtmlFont& wanted)
{
    HtmlFontUse use;
    if (wanted.source == HtmlFont::Source::Description) {
        use.font = FindOrAddFont(manager, wanted.name.c_str(), wanted.size, wanted);
        use.start = base;
    } else {
        use.start = wanted.source == HtmlFont::Source::Id ? manager.GetFont(wanted.id) : base;
        const TFontInfo* const info = manager.GetFontInfo(use.start);
        HtmlFont look = wanted;
        look.bold = look.bold || info->bBold;
        look.underline = look.underline || info->bUnderline;
        look.italic = look.italic || info->bItalic;
        look.strikeout = info->bStrikeout;
        const bool isThatOne = look.bold == info->bBold && look.underline == info->bUnderline &&
                               look.italic == info->bItalic;
        const CDuiString name = info->sFontName; // adding a font may move the records
        use.font = isThatOne ? use.start : FindOrAddFont(manager, name, info->iSize, look);
    }
    if (!use.font)
        use.font = use.start;
    return use;
}

void MeasureFont(HDC dc, HtmlFontUse& use)
{
    TEXTMETRICW metrics{};
    ::SelectObject(dc, use.font);
    ::GetTextMetricsW(dc, &metrics);
    use.height = metrics.tmHeight;
    use.lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
}

// GDI+ spaces characters in its own way; each then gets its share of the difference.
double GdiplusStretch(HDC dc, HFONT font, std::wstring_view text, int gdiWidth)
{
    const auto gdiplusFont = MakeGdiplusFont(dc, font);
    if (gdiWidth <= 0 || !gdiplusFont)
        return 1.0;
    const Gdiplus::Graphics graphics(dc);
    Gdiplus::RectF bounds;
    graphics.MeasureString(text.data(), static_cast<INT>(text.size()), gdiplusFont.get(),
                           Gdiplus::PointF(0, 0), MakePieceFormat().get(), &bounds);
    return bounds.Width / gdiWidth;
}

bool IsWithin(wchar_t c, wchar_t first, wchar_t last)
{
    return c >= first && c <= last;
}

// Writing without blanks: a line may break before and after each character.
bool IsIdeograph(wchar_t c)
{
    return IsWithin(c, 0x2E80, 0x2FFF) || IsWithin(c, 0x3040, 0x9FFF) ||
           IsWithin(c, 0xAC00, 0xD7A3) || IsWithin(c, 0xF900, 0xFAFF);
}

// Belongs to the character before it, whichever that is.
bool IsMark(wchar_t c)
{
    return IsWithin(c, 0x0300, 0x036F) || IsWithin(c, 0xFE00, 0xFE0F) || c == 0x200D;
}

bool IsLetter(wchar_t c)
{
    return ::IsCharAlphaNumericW(c) || IsWithin(c, 0xD800, 0xDFFF) || IsMark(c);
}

// Fills the lines of a layout whose content, fonts and pictures are known.
class LineBreaker {
public:
    LineBreaker(HDC dc, HtmlLayout& layout, int width, UINT style, HtmlMeter meter)
        : m_dc(dc),
          m_layout(layout),
          m_content(layout.content),
          m_width(width),
          m_isSingleLine((style & DT_SINGLELINE) != 0),
          m_breaksWords((style & DT_WORDBREAK) != 0),
          m_hasEllipsis((style & DT_END_ELLIPSIS) != 0),
          m_meter(meter)
    {
    }

    void Run()
    {
        MeasureItems();
        BreakLines();
        SortByFont();
        m_layout.size.cy = m_top;
    }

private:
    enum class End { Hard, Soft, Cut };

    // m_reach[i] is where unit i starts when all stood on one line.
    void MeasureItems()
    {
        m_reach.reserve(m_content.text.size() + 1);
        m_reach.push_back(0);
        const KeptFont kept(m_dc);
        for (const auto& item : m_content.items) {
            if (item.kind == HtmlItem::Kind::Text)
                MeasureTextItem(item);
            else
                m_reach.push_back(m_reach.back() + WidthOfPlaced(item));
        }
    }

    void MeasureTextItem(const HtmlItem& item)
    {
        const HFONT font = FontOf(item.style).font;
        const auto text = std::wstring_view(m_content.text).substr(item.first, item.length);
        const int start = m_reach.back();
        std::vector<int> ends(item.length);
        SIZE extent{};
        ::SelectObject(m_dc, font);
        ::GetTextExtentExPointW(m_dc, text.data(), static_cast<int>(text.size()), 0, nullptr,
                                ends.data(), &extent);
        const double stretch =
            m_meter == HtmlMeter::Gdiplus ? GdiplusStretch(m_dc, font, text, extent.cx) : 1.0;
        for (const int end : ends)
            m_reach.push_back(start + static_cast<int>(end * stretch + 0.5));
    }

    int WidthOfPlaced(const HtmlItem& item) const
    {
        if (item.kind == HtmlItem::Kind::Shift)
            return item.value;
        if (item.kind != HtmlItem::Kind::Picture)
            return 0;
        const RECT& part = m_layout.pictures[item.value].part;
        return part.right - part.left;
    }

    void BreakLines()
    {
        int lineExtra = 0;
        for (const auto& item : m_content.items) {
            lineExtra = item.lineExtra;
            switch (item.kind) {
            case HtmlItem::Kind::Break:
                FinishLine(item.first, item.first + 1, End::Hard, lineExtra);
                break;
            case HtmlItem::Kind::ParagraphEdge:
                if (HasContent())
                    FinishLine(item.first, item.first + 1, End::Hard, lineExtra);
                break;
            case HtmlItem::Kind::LineHeight:
                break;
            default:
                for (std::size_t unit = item.first; unit < item.first + item.length; ++unit)
                    Place(unit, item);
                break;
            }
            if (m_isDone)
                return;
        }
        if (HasContent())
            FinishLine(m_content.text.size(), m_content.text.size(), End::Hard, lineExtra);
    }

    // Selecting a font is what costs most when text is drawn.
    void SortByFont()
    {
        auto& order = m_layout.textRuns;
        for (std::size_t i = 0; i < m_layout.runs.size(); ++i) {
            if (m_layout.runs[i].kind == HtmlItem::Kind::Text)
                order.push_back(i);
        }
        std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            const auto& styles = m_content.styles;
            return styles[m_layout.runs[a].style].font < styles[m_layout.runs[b].style].font;
        });
    }

    bool HasContent() const { return m_placedUntil > m_start; }

    void Place(std::size_t unit, const HtmlItem& item)
    {
        if (m_isDone)
            return;
        const bool isText = item.kind == HtmlItem::Kind::Text;
        const wchar_t character = m_content.text[unit];
        const bool breaksBefore =
            item.kind == HtmlItem::Kind::Picture || (isText && IsIdeograph(character));
        if (m_breaksWords && breaksBefore)
            m_opportunity = unit;

        while (HasContent() && Overflows(unit, isText)) {
            if (m_isSingleLine) {
                CutLine(unit, item.lineExtra);
                return;
            }
            const std::size_t next = NextLineStart(unit);
            FinishLine(next, next, End::Soft, item.lineExtra);
        }
        m_placedUntil = unit + 1;

        const bool breaksAfter = item.kind == HtmlItem::Kind::Picture ||
                                 (isText && (!IsLetter(character) || IsIdeograph(character)));
        if (m_breaksWords && breaksAfter)
            m_opportunity = unit + 1;
    }

    // Blanks at the end of a line may hang over its edge. What belongs to a character stays with
    // it.
    bool Overflows(std::size_t unit, bool isText) const
    {
        if (isText && IsContinuation(unit))
            return false;
        const bool hangs =
            (m_breaksWords || m_isSingleLine) && isText && m_content.text[unit] == L' ';
        const int end = m_reach[isText ? EndOfCharacter(unit) : unit + 1];
        return !hangs && end > m_reach[unit] && end - m_reach[m_start] > m_width;
    }

    std::size_t NextLineStart(std::size_t unit) const
    {
        return m_breaksWords && m_opportunity > m_start ? m_opportunity : unit;
    }

    // Half a surrogate pair is a character of its own.
    bool IsContinuation(std::size_t unit) const
    {
        const auto& text = m_content.text;
        if (IsWithin(text[unit], 0xDC00, 0xDFFF))
            return unit > 0 && IsWithin(text[unit - 1], 0xD800, 0xDBFF);
        return IsMark(text[unit]);
    }

    std::size_t EndOfCharacter(std::size_t unit) const
    {
        std::size_t end = unit + 1;
        while (end - unit < kLongestCharacter && end < m_content.text.size() && IsContinuation(end))
            ++end;
        return end;
    }

    std::size_t StartOfCharacter(std::size_t unit) const
    {
        std::size_t start = unit;
        while (unit - start < kLongestCharacter && start > m_start && IsContinuation(start))
            --start;
        return start;
    }

    void CutLine(std::size_t unit, int lineExtra)
    {
        std::size_t end = unit;
        std::size_t style = StyleOf(end);
        if (m_hasEllipsis) {
            while (end > m_start &&
                   m_reach[end] - m_reach[m_start] + DotsWidth(style = StyleOf(end)) > m_width)
                end = StartOfCharacter(end - 1);
        }
        FinishLine(end, end, End::Cut, lineExtra);
        if (m_hasEllipsis)
            AppendDots(style);
        m_isDone = true;
    }

    // The style before a place in the line.
    std::size_t StyleOf(std::size_t end) const
    {
        const auto after = std::upper_bound(
            m_content.items.begin(), m_content.items.end(), end > m_start ? end - 1 : end,
            [](std::size_t unit, const HtmlItem& item) { return unit < item.first; });
        return std::prev(after)->style;
    }

    int DotsWidth(std::size_t style)
    {
        auto& use = FontOf(style);
        if (m_dotsFont != use.font) {
            const Quillet::SelectedObject selected(m_dc, use.font);
            m_dotsFont = use.font;
            m_dotsWidth = MeasureText(m_dc, use.font, kDots).size.cx;
        }
        return m_dotsWidth;
    }

    void AppendDots(std::size_t style)
    {
        auto& line = m_layout.lines.back();
        const int width = DotsWidth(style);
        const std::size_t first = m_content.text.size();
        m_content.text += kDots;
        m_layout.runs.push_back({.kind = HtmlItem::Kind::Text,
                                 .first = first,
                                 .length = kDots.size(),
                                 .style = style,
                                 .line = m_layout.lines.size() - 1,
                                 .picture = 0,
                                 .left = line.width,
                                 .width = width});
        ++line.runCount;
        AddToLink(style, line.width, width);
        line.width += width;
        m_layout.size.cx = std::max<LONG>(m_layout.size.cx, line.width);
    }

    // Ends the line before `end`; the next one starts at `next`.
    void FinishLine(std::size_t end, std::size_t next, End kind, int lineExtra)
    {
        const std::size_t shownEnd = kind == End::Soft ? WithoutBlanks(end) : end;
        HtmlLine line;
        line.top = m_top;
        line.firstRun = m_layout.runs.size();
        line.width = m_reach[shownEnd] - m_reach[m_start];
        if (line.width > m_width && kind != End::Soft)
            line.width = std::max(m_width, m_reach[WithoutBlanks(end)] - m_reach[m_start]);
        m_layout.lines.push_back(line);

        int height = m_layout.fonts.front().lineHeight;
        std::optional<int> fixedHeight;
        for (; m_item < m_content.items.size(); ++m_item) {
            const auto& item = m_content.items[m_item];
            if (item.first >= end)
                break;
            if (item.kind == HtmlItem::Kind::LineHeight)
                fixedHeight = item.value;
            else
                height = std::max(height, AddRun(item, shownEnd));
            if (item.first + item.length > end)
                break; // goes on in the next line
        }
        auto& added = m_layout.lines.back();
        added.runCount = m_layout.runs.size() - added.firstRun;
        added.height = fixedHeight.value_or(height + lineExtra);
        m_top += added.height;
        m_layout.size.cx = std::max<LONG>(m_layout.size.cx, added.width);

        m_start = next;
        m_opportunity = next;
        m_isDone = m_isSingleLine;
    }

    std::size_t WithoutBlanks(std::size_t end) const
    {
        while (end > m_start && m_content.text[end - 1] == L' ')
            --end;
        return end;
    }

    // Adds the part of the item that stands in the current line; gives the height it needs.
    int AddRun(const HtmlItem& item, std::size_t lineEnd)
    {
        const std::size_t first = std::max(item.first, m_start);
        const std::size_t end = std::min(item.first + item.length, lineEnd);
        const bool isPicture = item.kind == HtmlItem::Kind::Picture;
        if (first >= end || (!isPicture && item.kind != HtmlItem::Kind::Text))
            return 0;
        const int left = m_reach[first] - m_reach[m_start];
        const int width = m_reach[end] - m_reach[first];
        m_layout.runs.push_back({.kind = item.kind,
                                 .first = first,
                                 .length = end - first,
                                 .style = item.style,
                                 .line = m_layout.lines.size() - 1,
                                 .picture = isPicture ? item.value : 0,
                                 .left = left,
                                 .width = width});
        AddToLink(item.style, left, width);
        if (!isPicture)
            return FontOf(item.style).lineHeight;
        const RECT& part = m_layout.pictures[item.value].part;
        return part.bottom - part.top;
    }

    void AddToLink(std::size_t style, int left, int width)
    {
        const int link = m_content.styles[style].link;
        if (link < 0 || width <= 0)
            return;
        const std::size_t line = m_layout.lines.size() - 1;
        auto& parts = m_layout.linkParts;
        if (!parts.empty() && parts.back().link == link && parts.back().line == line)
            parts.back().right = left + width;
        else
            parts.push_back({link, line, left, left + width});
    }

    HtmlFontUse& FontOf(std::size_t style) const
    {
        return m_layout.fonts[m_content.styles[style].font];
    }

    HDC m_dc;
    HtmlLayout& m_layout;
    HtmlContent& m_content;
    const int m_width;
    const bool m_isSingleLine;
    const bool m_breaksWords;
    const bool m_hasEllipsis;
    const HtmlMeter m_meter;

    std::vector<int> m_reach;
    std::size_t m_item = 0;        // the first that reaches into the current line
    std::size_t m_start = 0;       // the first unit of the current line
    std::size_t m_placedUntil = 0; // behind the last unit with a place
    std::size_t m_opportunity = 0; // where the line may break, when behind its start
    int m_top = 0;
    bool m_isDone = false;

    HFONT m_dotsFont = nullptr;
    int m_dotsWidth = 0;
};

HtmlPictureUse UseOf(CPaintManagerUI& manager, const HtmlPicture& picture)
{
    const auto loaded = LoadHtmlPicture(manager, picture);
    if (!loaded.image)
        return {};
    HtmlPictureUse use{loaded.size, loaded.source};
    const LONG columnWidth = (use.part.right - use.part.left) / picture.columns;
    use.part.left += columnWidth * picture.column;
    use.part.right = use.part.left + columnWidth;
    return use;
}

void ResolveFonts(HDC dc, CPaintManagerUI& manager, HFONT base, HtmlLayout& layout)
{
    const auto& content = layout.content;
    std::vector<bool> isNeeded(content.fonts.size());
    isNeeded[0] = true;
    for (const auto& item : content.items) {
        if (item.kind == HtmlItem::Kind::Text)
            isNeeded[content.styles[item.style].font] = true;
    }
    layout.fonts.resize(content.fonts.size(), {base, base});
    const KeptFont kept(dc);
    for (std::size_t i = 0; i < layout.fonts.size(); ++i) {
        if (isNeeded[i])
            layout.fonts[i] = ResolveFont(manager, base, content.fonts[i]);
        MeasureFont(dc, layout.fonts[i]);
    }
}

} // namespace

HtmlLoadedPicture LoadHtmlPicture(CPaintManagerUI& manager, const HtmlPicture& picture)
{
    HtmlLoadedPicture loaded;
    const TDrawInfo* const info = manager.GetDrawInfo(picture.source.c_str(), nullptr);
    if (!info)
        return loaded;
    const CDuiString type = info->sResType;
    const RECT source = info->rcSource;
    loaded.fade = info->uFade;
    loaded.image = manager.GetImageEx(info->sImageName, type.IsEmpty() ? nullptr : type.GetData(),
                                      info->dwMask, info->bHSL);
    if (!loaded.image && !picture.isImageString)
        loaded.image = manager.GetImage(picture.source.c_str());
    if (!loaded.image || !loaded.image->hBitmap)
        return {};
    loaded.size = {loaded.image->nX, loaded.image->nY};
    const RECT whole{0, 0, loaded.size.cx, loaded.size.cy};
    if (::IsRectEmpty(&source) || !::IntersectRect(&loaded.source, &source, &whole))
        loaded.source = whole;
    return loaded;
}

HtmlLayout LayOutHtml(HDC dc, CPaintManagerUI& manager, HtmlContent content, int width, HFONT font,
                      UINT style, HtmlMeter meter)
{
    HtmlLayout layout;
    layout.content = std::move(content);
    ResolveFonts(dc, manager, font, layout);
    for (const auto& picture : layout.content.pictures)
        layout.pictures.push_back(UseOf(manager, picture));
    LineBreaker(dc, layout, width, style, meter).Run();
    return layout;
}

bool IsUpToDate(const HtmlLayout& layout, CPaintManagerUI& manager)
{
    const auto& content = layout.content;
    for (std::size_t i = 0; i < content.fonts.size(); ++i) {
        if (content.fonts[i].source == HtmlFont::Source::Id &&
            manager.GetFont(content.fonts[i].id) != layout.fonts[i].start)
            return false;
    }
    for (std::size_t i = 0; i < content.pictures.size(); ++i) {
        const SIZE now = LoadHtmlPicture(manager, content.pictures[i]).size;
        if (now.cx != layout.pictures[i].whole.cx || now.cy != layout.pictures[i].whole.cy)
            return false;
    }
    return true;
}

} // namespace DuiLib
