#include "Control/UILabel.h"

#include "Control/TextStyle.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <string_view>

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;
using namespace TextStyle;

// What a single line gets above and below its text, together, in device pixels.
constexpr LONG kLineMargin = 8;

// No text is wider or higher than this; GDI takes 32-bit coordinates, but not near their end.
constexpr LONG kUnlimited = 0xFFFFF;

bool SameSize(const SIZE& a, const SIZE& b)
{
    return a.cx == b.cx && a.cy == b.cy;
}

} // namespace

CControlUI* CLabelUI::CreateControl()
{
    return new CLabelUI;
}

CLabelUI::CLabelUI()
    : m_dwTextColor(0),
      m_dwDisabledTextColor(0),
      m_iFont(-1),
      m_uTextStyle(DT_VCENTER | DT_SINGLELINE),
      m_rcTextPadding{0, 0, 0, 0},
      m_bShowHtml(false),
      m_bAutoCalcWidth(false),
      m_bAutoCalcHeight(false),
      m_szAvailableLast{0, 0},
      m_cxyFixedLast{0, 0},
      m_bNeedEstimateSize(true),
      m_LastMeasure{}
{
}

CLabelUI::~CLabelUI() = default;

LPCTSTR CLabelUI::GetClass() const
{
    return L"LabelUI";
}

LPVOID CLabelUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_LABEL))
        return static_cast<CLabelUI*>(this);
    return CControlUI::GetInterface(name);
}

UINT CLabelUI::GetControlFlags() const
{
    return IsEnabled() ? UIFLAG_SETCURSOR : 0;
}

void CLabelUI::SetTextStyle(UINT style)
{
    if (m_uTextStyle == style)
        return;
    m_uTextStyle = style;
    TextChanged();
}

UINT CLabelUI::GetTextStyle() const
{
    return m_uTextStyle;
}

void CLabelUI::SetTextColor(DWORD color)
{
    if (m_dwTextColor == color)
        return;
    m_dwTextColor = color;
    Invalidate();
}

DWORD CLabelUI::GetTextColor() const
{
    return m_dwTextColor;
}

void CLabelUI::SetDisabledTextColor(DWORD color)
{
    if (m_dwDisabledTextColor == color)
        return;
    m_dwDisabledTextColor = color;
    Invalidate();
}

DWORD CLabelUI::GetDisabledTextColor() const
{
    return m_dwDisabledTextColor;
}

void CLabelUI::SetFont(int index)
{
    if (m_iFont == index)
        return;
    m_iFont = index;
    TextChanged();
}

int CLabelUI::GetFont() const
{
    return m_iFont;
}

RECT CLabelUI::GetTextPadding() const
{
    return m_pManager ? m_pManager->GetDPIObj()->Scale(m_rcTextPadding) : m_rcTextPadding;
}

void CLabelUI::SetTextPadding(RECT padding)
{
    if (::EqualRect(&m_rcTextPadding, &padding))
        return;
    m_rcTextPadding = padding;
    TextChanged();
}

bool CLabelUI::IsShowHtml()
{
    return m_bShowHtml;
}

void CLabelUI::SetShowHtml(bool show)
{
    if (m_bShowHtml == show)
        return;
    m_bShowHtml = show;
    TextChanged();
}

bool CLabelUI::GetAutoCalcWidth() const
{
    return m_bAutoCalcWidth;
}

void CLabelUI::SetAutoCalcWidth(bool autoCalc)
{
    if (m_bAutoCalcWidth == autoCalc)
        return;
    m_bAutoCalcWidth = autoCalc;
    m_bNeedEstimateSize = true;
    NeedParentUpdate();
}

bool CLabelUI::GetAutoCalcHeight() const
{
    return m_bAutoCalcHeight;
}

void CLabelUI::SetAutoCalcHeight(bool autoCalc)
{
    if (m_bAutoCalcHeight == autoCalc)
        return;
    m_bAutoCalcHeight = autoCalc;
    m_bNeedEstimateSize = true;
    NeedParentUpdate();
}

void CLabelUI::SetText(LPCTSTR text)
{
    const CDuiString before = m_sText;
    CControlUI::SetText(text);
    if (before != m_sText)
        TextChanged();
}

// Something that the look of the text depends on changed.
void CLabelUI::TextChanged()
{
    m_bNeedEstimateSize = true;
    const bool sizeMayChange =
        (m_cxyFixed.cx <= 0 && GetAutoCalcWidth()) || (m_cxyFixed.cy <= 0 && GetAutoCalcHeight());
    if (sizeMayChange)
        NeedParentUpdate();
    else
        Invalidate();
}

bool CLabelUI::MeasureKey::operator==(const MeasureKey& other) const
{
    return SameSize(fixed, other.fixed) && font == other.font && fontHeight == other.fontHeight &&
           fontWidth == other.fontWidth && scale == other.scale;
}

CLabelUI::MeasureKey CLabelUI::CurrentMeasureKey() const
{
    const TFontInfo* font = m_pManager->GetFontInfo(m_iFont);
    return {GetFixedSize(), font->hFont, font->tm.tmHeight, font->tm.tmAveCharWidth,
            m_pManager->GetDPIObj()->GetScale()};
}

SIZE CLabelUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    if ((size.cx > 0 && size.cy > 0) || !m_pManager)
        return size;

    const MeasureKey key = CurrentMeasureKey();
    const bool known =
        !m_bNeedEstimateSize && SameSize(available, m_szAvailableLast) && key == m_LastMeasure;
    if (known)
        return m_cxyFixedLast;

    const RECT padding = GetTextPadding();
    const LONG besides = padding.left + padding.right;
    const bool measureWidth = size.cx <= 0 && GetAutoCalcWidth();
    const bool measureHeight = size.cy <= 0 && GetAutoCalcHeight();
    if (measureWidth || measureHeight) {
        const LONG room = size.cx > 0 ? size.cx : available.cx;
        const SIZE text = MeasureText(std::max(1L, room - besides));
        if (measureWidth)
            size.cx = text.cx + besides;
        if (measureHeight)
            size.cy = text.cy + padding.top + padding.bottom;
    }
    if (size.cy <= 0 && !measureHeight && (m_uTextStyle & DT_SINGLELINE) != 0)
        size.cy = key.fontHeight + kLineMargin + padding.top + padding.bottom;

    m_szAvailableLast = available;
    m_cxyFixedLast = size;
    m_LastMeasure = key;
    m_bNeedEstimateSize = IsResourceText();
    return size;
}

// Extent of the text in device pixels, wrapped at a width when it wraps at all.
SIZE CLabelUI::MeasureText(int width) const
{
    const CDuiString text = GetText();
    if (text.IsEmpty())
        return {0, 0};
    const bool wraps = (m_uTextStyle & DT_SINGLELINE) == 0 && (m_uTextStyle & DT_WORDBREAK) != 0;
    const UINT style =
        (m_uTextStyle & ~(kHorizontalBits | kVerticalBits | DT_END_ELLIPSIS)) | DT_CALCRECT;
    RECT extent{0, 0, wraps ? static_cast<LONG>(width) : kUnlimited, kUnlimited};
    if (m_bShowHtml) {
        int links = 0;
        CRenderEngine::DrawHtmlText(m_pManager->GetPaintDC(), m_pManager, extent, text, 0, NULL,
                                    NULL, links, m_iFont, style);
    } else {
        CRenderEngine::DrawText(m_pManager->GetPaintDC(), m_pManager, extent, text, 0, m_iFont,
                                style);
    }
    return {extent.right - extent.left, extent.bottom - extent.top};
}

void CLabelUI::DoEvent(TEventUI& event)
{
    CControlUI::DoEvent(event);
}

void CLabelUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CLabelUI>({
        {L"align", AttributeKind::Choice,
         [](CLabelUI& self, LPCTSTR words) {
             self.SetTextStyle(WithHorizontalAlignment(self.GetTextStyle(), words));
         }},
        {L"valign", AttributeKind::Choice,
         [](CLabelUI& self, LPCTSTR words) {
             self.SetTextStyle(WithVerticalAlignment(self.GetTextStyle(), words));
         }},
        {L"endellipsis", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) {
             self.SetTextStyle(WithFlag(self.GetTextStyle(), DT_END_ELLIPSIS, Text::IsTrue(on)));
         }},
        {L"wordbreak", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) {
             self.SetTextStyle(WithWordBreak(self.GetTextStyle(), Text::IsTrue(on)));
         }},
        {L"noprefix", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) {
             self.SetTextStyle(WithFlag(self.GetTextStyle(), DT_NOPREFIX, Text::IsTrue(on)));
         }},
        {L"font", AttributeKind::Number,
         [](CLabelUI& self, LPCTSTR id) { self.SetFont(Text::ToInt(id)); }},
        {L"textcolor", AttributeKind::Colour,
         [](CLabelUI& self, LPCTSTR color) { self.SetTextColor(Text::ToColour(color)); }},
        {L"disabledtextcolor", AttributeKind::Colour,
         [](CLabelUI& self, LPCTSTR color) { self.SetDisabledTextColor(Text::ToColour(color)); }},
        {L"textpadding", AttributeKind::Rectangle,
         [](CLabelUI& self, LPCTSTR sides) { self.SetTextPadding(Text::ToRect(sides)); }},
        {L"showhtml", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) { self.SetShowHtml(Text::IsTrue(on)); }},
        {L"autocalcwidth", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) { self.SetAutoCalcWidth(Text::IsTrue(on)); }},
        {L"autocalcheight", AttributeKind::Boolean,
         [](CLabelUI& self, LPCTSTR on) { self.SetAutoCalcHeight(Text::IsTrue(on)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CControlUI::SetAttribute(name, value);
}

void CLabelUI::PaintText(HDC dc)
{
    DrawLabelText(dc, LabelTextColor(), m_iFont);
}

DWORD CLabelUI::LabelTextColor() const
{
    const DWORD own = IsEnabled() ? m_dwTextColor : m_dwDisabledTextColor;
    if (own != 0 || !m_pManager)
        return own;
    return IsEnabled() ? m_pManager->GetDefaultFontColor() : m_pManager->GetDefaultDisabledColor();
}

RECT CLabelUI::TextRect() const
{
    const RECT padding = GetTextPadding();
    return {m_rcItem.left + padding.left, m_rcItem.top + padding.top,
            m_rcItem.right - padding.right, m_rcItem.bottom - padding.bottom};
}

void CLabelUI::DrawLabelText(HDC dc, DWORD color, int font)
{
    const CDuiString text = GetText();
    if (text.IsEmpty() || !m_pManager)
        return;
    RECT room = TextRect();
    if (m_bShowHtml) {
        int links = 0;
        CRenderEngine::DrawHtmlText(dc, m_pManager, room, text, GetAdjustColor(color), NULL, NULL,
                                    links, font, m_uTextStyle);
    } else {
        CRenderEngine::DrawText(dc, m_pManager, room, text, GetAdjustColor(color), font,
                                m_uTextStyle);
    }
}

} // namespace DuiLib
