#include "Control/UIProgress.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr int kBarHeight = 12; // design pixels
constexpr int kWholePercent = 100;

} // namespace

CControlUI* CProgressUI::CreateControl()
{
    return new CProgressUI;
}

CProgressUI::CProgressUI()
    : m_bShowText(false),
      m_bHorizontal(true),
      m_bStretchForeImage(true),
      m_nMax(100),
      m_nMin(0),
      m_nValue(0)
{
    m_uTextStyle = DT_SINGLELINE | DT_CENTER | DT_VCENTER;
    m_cxyFixed.cy = kBarHeight;
}

CProgressUI::~CProgressUI() = default;

LPCTSTR CProgressUI::GetClass() const
{
    return L"ProgressUI";
}

LPVOID CProgressUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_PROGRESS))
        return static_cast<CProgressUI*>(this);
    return CLabelUI::GetInterface(name);
}

bool CProgressUI::IsShowText()
{
    return m_bShowText;
}

void CProgressUI::SetShowText(bool show)
{
    if (m_bShowText == show)
        return;
    m_bShowText = show;
    if (show)
        UpdateText();
    else
        SetText(L"");
}

void CProgressUI::UpdateText()
{
    if (!m_bShowText)
        return;
    CDuiString percent;
    percent.SmallFormat(L"%d%%", PartOf(kWholePercent));
    SetText(percent);
}

bool CProgressUI::IsHorizontal()
{
    return m_bHorizontal;
}

void CProgressUI::SetHorizontal(bool horizontal)
{
    if (m_bHorizontal == horizontal)
        return;
    m_bHorizontal = horizontal;
    Invalidate();
}

bool CProgressUI::IsStretchForeImage()
{
    return m_bStretchForeImage;
}

void CProgressUI::SetStretchForeImage(bool stretch)
{
    if (m_bStretchForeImage == stretch)
        return;
    m_bStretchForeImage = stretch;
    Invalidate();
}

int CProgressUI::GetMinValue() const
{
    return m_nMin;
}

void CProgressUI::SetMinValue(int value)
{
    if (m_nMin == value)
        return;
    m_nMin = value;
    UpdateText();
    Invalidate();
}

int CProgressUI::GetMaxValue() const
{
    return m_nMax;
}

void CProgressUI::SetMaxValue(int value)
{
    if (m_nMax == value)
        return;
    m_nMax = value;
    UpdateText();
    Invalidate();
}

int CProgressUI::GetValue() const
{
    return m_nValue;
}

void CProgressUI::SetValue(int value)
{
    if (m_nValue == value || value < m_nMin || value > m_nMax)
        return;
    m_nValue = value;
    UpdateText();
    Invalidate();
}

void CProgressUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CProgressUI>({
        {L"hor", AttributeKind::Boolean,
         [](CProgressUI& self, LPCTSTR on) { self.SetHorizontal(Text::IsTrue(on)); }},
        {L"min", AttributeKind::Number,
         [](CProgressUI& self, LPCTSTR number) { self.SetMinValue(Text::ToInt(number)); }},
        {L"max", AttributeKind::Number,
         [](CProgressUI& self, LPCTSTR number) { self.SetMaxValue(Text::ToInt(number)); }},
        {L"value", AttributeKind::Number,
         [](CProgressUI& self, LPCTSTR number) { self.SetValue(Text::ToInt(number)); }},
        {L"isstretchfore", AttributeKind::Boolean,
         [](CProgressUI& self, LPCTSTR on) { self.SetStretchForeImage(Text::IsTrue(on)); }},
        {L"showtext", AttributeKind::Boolean,
         [](CProgressUI& self, LPCTSTR on) { self.SetShowText(Text::IsTrue(on)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CLabelUI::SetAttribute(name, value);
}

// The share of a whole that the value takes, rounded down. Nothing of an empty range, and never
// more than the whole: the range can have been narrowed around an older value.
int CProgressUI::PartOf(int whole) const
{
    if (m_nMax <= m_nMin)
        return 0;
    const long long range = static_cast<long long>(m_nMax) - m_nMin;
    const long long done = static_cast<long long>(std::clamp(m_nValue, m_nMin, m_nMax)) - m_nMin;
    return static_cast<int>(whole * done / range);
}

RECT CProgressUI::FilledPart() const
{
    RECT part = m_rcItem;
    if (m_bHorizontal)
        part.right = part.left + PartOf(part.right - part.left);
    else
        part.top = part.bottom - PartOf(part.bottom - part.top);
    return part;
}

void CProgressUI::PaintForeColor(HDC dc)
{
    const RECT part = FilledPart();
    if (m_dwForeColor != 0 && !::IsRectEmpty(&part))
        CRenderEngine::DrawColor(dc, part, GetAdjustColor(m_dwForeColor));
}

void CProgressUI::PaintForeImage(HDC dc)
{
    const RECT part = FilledPart();
    RECT dirty;
    if (m_sForeImage.IsEmpty() || !::IntersectRect(&dirty, &m_rcPaint, &part))
        return;
    CRenderClip cut;
    if (!m_bStretchForeImage)
        CRenderClip::GenerateClip(dc, part, cut);
    CRenderEngine::DrawImageString(dc, m_pManager, m_bStretchForeImage ? part : m_rcItem, dirty,
                                   m_sForeImage, m_sForeImageModify, m_instance);
}

} // namespace DuiLib
