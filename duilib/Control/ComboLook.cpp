#include "Control/UICombo.h"

#include "Control/ComboDropWindow.h"
#include "Control/PopupGlyphs.h"
#include "Control/TextStyle.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>

// How a combo and its items look, and the attributes that say so.
namespace DuiLib {

namespace {

using namespace Quillet::Text;
using namespace TextStyle;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

// The look without state images. Lengths are design pixels.
constexpr DWORD kFieldColor = 0xFFFFFFFF;
constexpr DWORD kDisabledFieldColor = 0xFFF4F5F7;
constexpr DWORD kFrameColor = 0xFFC8CDD4;
constexpr DWORD kHotFrameColor = 0xFF8FA0B5;
constexpr DWORD kFocusColor = 0xFF007DFF;
constexpr DWORD kDisabledFrameColor = 0xFFE1E4E8;
constexpr DWORD kArrowColor = 0xFF5A6472;
constexpr DWORD kDisabledArrowColor = 0xFFB9BEC6;
constexpr int kArrowRoom = 24;
constexpr int kArrowHalfWidth = 4;
constexpr int kArrowThickness = 2;
constexpr int kTextIndent = 6;
constexpr int kLineMargin = 12; // above and below the text, together

} // namespace

void CComboUI::SetTextStyle(UINT style)
{
    m_uTextStyle = style;
    Invalidate();
}

UINT CComboUI::GetTextStyle() const
{
    return m_uTextStyle;
}

void CComboUI::SetTextColor(DWORD color)
{
    m_dwTextColor = color;
    Invalidate();
}

DWORD CComboUI::GetTextColor() const
{
    return m_dwTextColor;
}

void CComboUI::SetDisabledTextColor(DWORD color)
{
    m_dwDisabledTextColor = color;
    Invalidate();
}

DWORD CComboUI::GetDisabledTextColor() const
{
    return m_dwDisabledTextColor;
}

void CComboUI::SetFont(int index)
{
    m_iFont = index;
    Invalidate();
}

int CComboUI::GetFont() const
{
    return m_iFont;
}

RECT CComboUI::GetTextPadding() const
{
    return ScaleLength(m_rcTextPadding);
}

void CComboUI::SetTextPadding(RECT padding)
{
    m_rcTextPadding = ClampLength(padding);
    Invalidate();
}

bool CComboUI::IsShowHtml()
{
    return m_bShowHtml;
}

void CComboUI::SetShowHtml(bool show)
{
    m_bShowHtml = show;
    Invalidate();
}

bool CComboUI::IsShowShadow()
{
    return m_bShowShadow;
}

void CComboUI::SetShowShadow(bool show)
{
    m_bShowShadow = show;
}

CDuiString CComboUI::GetDropBoxAttributeList()
{
    return m_sDropBoxAttributes;
}

void CComboUI::SetDropBoxAttributeList(LPCTSTR attributes)
{
    m_sDropBoxAttributes = attributes;
}

SIZE CComboUI::GetDropBoxSize() const
{
    return ScaleLength(m_szDropBox);
}

void CComboUI::SetDropBoxSize(SIZE size)
{
    m_szDropBox = ClampLength(size);
}

RECT CComboUI::GetDropBoxInset() const
{
    return ScaleLength(m_rcDropBoxInset);
}

void CComboUI::SetDropBoxInset(RECT inset)
{
    m_rcDropBoxInset = ClampLength(inset);
}

void CComboUI::SetStateImage(CDuiString& member, LPCTSTR image)
{
    member = image;
    Invalidate();
}

LPCTSTR CComboUI::GetNormalImage() const
{
    return m_sNormalImage;
}

void CComboUI::SetNormalImage(LPCTSTR image)
{
    SetStateImage(m_sNormalImage, image);
}

LPCTSTR CComboUI::GetHotImage() const
{
    return m_sHotImage;
}

void CComboUI::SetHotImage(LPCTSTR image)
{
    SetStateImage(m_sHotImage, image);
}

LPCTSTR CComboUI::GetPushedImage() const
{
    return m_sPushedImage;
}

void CComboUI::SetPushedImage(LPCTSTR image)
{
    SetStateImage(m_sPushedImage, image);
}

LPCTSTR CComboUI::GetFocusedImage() const
{
    return m_sFocusedImage;
}

void CComboUI::SetFocusedImage(LPCTSTR image)
{
    SetStateImage(m_sFocusedImage, image);
}

LPCTSTR CComboUI::GetDisabledImage() const
{
    return m_sDisabledImage;
}

void CComboUI::SetDisabledImage(LPCTSTR image)
{
    SetStateImage(m_sDisabledImage, image);
}

bool CComboUI::GetScrollSelect()
{
    return m_bScrollSelect;
}

void CComboUI::SetScrollSelect(bool select)
{
    m_bScrollSelect = select;
}

// Only an open list shows its items.
template <class Value>
void CComboUI::SetItemLook(Value& member, const Value& value)
{
    member = value;
    if (m_pDrop != nullptr)
        m_pDrop->ItemsChanged();
}

void CComboUI::SetItemLook(CDuiString& member, LPCTSTR value)
{
    SetItemLook(member, CDuiString(value));
}

void CComboUI::SetItemFont(int index)
{
    SetItemLook(m_ListInfo.nFont, index);
}

void CComboUI::SetItemTextStyle(UINT style)
{
    SetItemLook(m_ListInfo.uTextStyle, style);
}

void CComboUI::SetItemTextPadding(RECT padding)
{
    SetItemLook(m_ListInfo.rcTextPadding, ClampLength(padding));
}

RECT CComboUI::GetItemTextPadding() const
{
    return ScaleLength(m_ListInfo.rcTextPadding);
}

void CComboUI::SetItemTextColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwTextColor, color);
}

DWORD CComboUI::GetItemTextColor() const
{
    return m_ListInfo.dwTextColor;
}

void CComboUI::SetItemBkColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwBkColor, color);
}

DWORD CComboUI::GetItemBkColor() const
{
    return m_ListInfo.dwBkColor;
}

void CComboUI::SetItemBkImage(LPCTSTR image)
{
    SetItemLook(m_ListInfo.sBkImage, image);
}

LPCTSTR CComboUI::GetItemBkImage() const
{
    return m_ListInfo.sBkImage;
}

void CComboUI::SetAlternateBk(bool alternate)
{
    SetItemLook(m_ListInfo.bAlternateBk, alternate);
}

bool CComboUI::IsAlternateBk() const
{
    return m_ListInfo.bAlternateBk;
}

void CComboUI::SetSelectedItemTextColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwSelectedTextColor, color);
}

DWORD CComboUI::GetSelectedItemTextColor() const
{
    return m_ListInfo.dwSelectedTextColor;
}

void CComboUI::SetSelectedItemBkColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwSelectedBkColor, color);
}

DWORD CComboUI::GetSelectedItemBkColor() const
{
    return m_ListInfo.dwSelectedBkColor;
}

void CComboUI::SetSelectedItemImage(LPCTSTR image)
{
    SetItemLook(m_ListInfo.sSelectedImage, image);
}

LPCTSTR CComboUI::GetSelectedItemImage() const
{
    return m_ListInfo.sSelectedImage;
}

void CComboUI::SetHotItemTextColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwHotTextColor, color);
}

DWORD CComboUI::GetHotItemTextColor() const
{
    return m_ListInfo.dwHotTextColor;
}

void CComboUI::SetHotItemBkColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwHotBkColor, color);
}

DWORD CComboUI::GetHotItemBkColor() const
{
    return m_ListInfo.dwHotBkColor;
}

void CComboUI::SetHotItemImage(LPCTSTR image)
{
    SetItemLook(m_ListInfo.sHotImage, image);
}

LPCTSTR CComboUI::GetHotItemImage() const
{
    return m_ListInfo.sHotImage;
}

void CComboUI::SetDisabledItemTextColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwDisabledTextColor, color);
}

DWORD CComboUI::GetDisabledItemTextColor() const
{
    return m_ListInfo.dwDisabledTextColor;
}

void CComboUI::SetDisabledItemBkColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwDisabledBkColor, color);
}

DWORD CComboUI::GetDisabledItemBkColor() const
{
    return m_ListInfo.dwDisabledBkColor;
}

void CComboUI::SetDisabledItemImage(LPCTSTR image)
{
    SetItemLook(m_ListInfo.sDisabledImage, image);
}

LPCTSTR CComboUI::GetDisabledItemImage() const
{
    return m_ListInfo.sDisabledImage;
}

void CComboUI::SetItemLineColor(DWORD color)
{
    SetItemLook(m_ListInfo.dwLineColor, color);
}

DWORD CComboUI::GetItemLineColor() const
{
    return m_ListInfo.dwLineColor;
}

bool CComboUI::IsItemShowHtml()
{
    return m_ListInfo.bShowHtml;
}

void CComboUI::SetItemShowHtml(bool show)
{
    SetItemLook(m_ListInfo.bShowHtml, show);
}

bool CComboUI::IsItemRSelected()
{
    return m_ListInfo.bRSelected;
}

void CComboUI::SetItemRSelected(bool select)
{
    m_ListInfo.bRSelected = select;
}

void CComboUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CComboUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"align", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(WithHorizontalAlignment(self.GetTextStyle(), v));
         }},
        {L"valign", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(WithVerticalAlignment(self.GetTextStyle(), v));
         }},
        {L"endellipsis", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(WithFlag(self.GetTextStyle(), DT_END_ELLIPSIS, IsTrue(v)));
         }},
        {L"wordbreak", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(WithWordBreak(self.GetTextStyle(), IsTrue(v)));
         }},
        {L"noprefix", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(WithFlag(self.GetTextStyle(), DT_NOPREFIX, IsTrue(v)));
         }},
        {L"font", AttributeKind::Number, [](Self& self, LPCTSTR v) { self.SetFont(ToInt(v)); }},
        {L"textcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetTextColor(ToColour(v)); }},
        {L"disabledtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetDisabledTextColor(ToColour(v)); }},
        {L"textpadding", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetTextPadding(ToRect(v)); }},
        {L"showhtml", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowHtml(IsTrue(v)); }},
        {L"normalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetNormalImage(v); }},
        {L"hotimage", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetHotImage(v); }},
        {L"pushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetPushedImage(v); }},
        {L"focusedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetFocusedImage(v); }},
        {L"disabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetDisabledImage(v); }},
        {L"scrollselect", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetScrollSelect(IsTrue(v)); }},
        {L"showshadow", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowShadow(IsTrue(v)); }},
        {L"dropbox", AttributeKind::Text,
         [](Self& self, LPCTSTR v) { self.SetDropBoxAttributeList(v); }},
        {L"dropboxsize", AttributeKind::Size,
         [](Self& self, LPCTSTR v) { self.SetDropBoxSize(ToSize(v)); }},
        {L"dropboxinset", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetDropBoxInset(ToRect(v)); }},
        {L"itemfont", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetItemFont(ToInt(v)); }},
        {L"itemalign", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetItemTextStyle(WithHorizontalAlignment(self.m_ListInfo.uTextStyle, v));
         }},
        {L"itemvalign", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetItemTextStyle(WithVerticalAlignment(self.m_ListInfo.uTextStyle, v));
         }},
        {L"itemendellipsis", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetItemTextStyle(WithFlag(self.m_ListInfo.uTextStyle, DT_END_ELLIPSIS, IsTrue(v)));
         }},
        {L"itemtextpadding", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetItemTextPadding(ToRect(v)); }},
        {L"itemtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemTextColor(ToColour(v)); }},
        {L"itembkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemBkColor(ToColour(v)); }},
        {L"itembkimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetItemBkImage(v); }},
        {L"itemaltbk", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetAlternateBk(IsTrue(v)); }},
        {L"itemselectedtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemTextColor(ToColour(v)); }},
        {L"itemselectedbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemBkColor(ToColour(v)); }},
        {L"itemselectedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemImage(v); }},
        {L"itemhottextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetHotItemTextColor(ToColour(v)); }},
        {L"itemhotbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetHotItemBkColor(ToColour(v)); }},
        {L"itemhotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetHotItemImage(v); }},
        {L"itemdisabledtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemTextColor(ToColour(v)); }},
        {L"itemdisabledbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemBkColor(ToColour(v)); }},
        {L"itemdisabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemImage(v); }},
        {L"itemforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetItemLook(self.m_ListInfo.sForeImage, v); }},
        {L"itemhotforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetItemLook(self.m_ListInfo.sHotForeImage, v); }},
        {L"itemselectedforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetItemLook(self.m_ListInfo.sSelectedForeImage, v); }},
        {L"itemlinecolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemLineColor(ToColour(v)); }},
        {L"itemshowrowline", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemLook(self.m_ListInfo.bShowRowLine, IsTrue(v)); }},
        {L"itemshowcolumnline", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetItemLook(self.m_ListInfo.bShowColumnLine, IsTrue(v));
         }},
        {L"itemshowhtml", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemShowHtml(IsTrue(v)); }},
        {L"itemrselected", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemRSelected(IsTrue(v)); }},
        {L"multiexpanding", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.m_ListInfo.bMultiExpandable = IsTrue(v); }},
    });
    if (!kTable.Apply(*this, name, value))
        CContainerUI::SetAttribute(name, value);
}

// A line of text and room around it, unless the skin says otherwise.
SIZE CComboUI::EstimateSize(SIZE)
{
    SIZE size = GetFixedSize();
    if (size.cy <= 0 && m_pManager != nullptr)
        size.cy = m_pManager->GetFontInfo(m_iFont)->tm.tmHeight + ScaleLength(kLineMargin);
    return size;
}

// The items have no place in the closed combo.
bool CComboUI::DoPaint(HDC dc, const RECT& paint, CControlUI* stop)
{
    return CControlUI::DoPaint(dc, paint, stop);
}

bool CComboUI::HasOwnLook() const
{
    return m_sNormalImage.IsEmpty() && m_sHotImage.IsEmpty() && m_sPushedImage.IsEmpty() &&
           m_sFocusedImage.IsEmpty() && m_sDisabledImage.IsEmpty();
}

RECT CComboUI::ArrowRect() const
{
    RECT rect = m_rcItem;
    rect.left = std::max(rect.left, rect.right - ScaleLength(kArrowRoom));
    return rect;
}

void CComboUI::PaintBkColor(HDC dc)
{
    if (m_dwBackColor == 0 && m_sBkImage.IsEmpty() && HasOwnLook())
        CRenderEngine::DrawColor(dc, m_rcPaint,
                                 GetAdjustColor(IsEnabled() ? kFieldColor : kDisabledFieldColor));
    else
        CContainerUI::PaintBkColor(dc);
}

void CComboUI::PaintStatusImage(HDC dc)
{
    if (HasOwnLook()) {
        DrawDownArrow(dc, ArrowRect(), ScaleLength(kArrowHalfWidth), ScaleLength(kArrowThickness),
                      GetAdjustColor(IsEnabled() ? kArrowColor : kDisabledArrowColor));
        return;
    }
    const CDuiString* image = &m_sNormalImage;
    if (!IsEnabled())
        image = &m_sDisabledImage;
    else if (m_pDrop != nullptr || (m_uButtonState & UISTATE_CAPTURED) != 0)
        image = &m_sPushedImage;
    else if ((m_uButtonState & UISTATE_HOT) != 0)
        image = &m_sHotImage;
    else if (IsFocused())
        image = &m_sFocusedImage;
    if (image->IsEmpty() || !DrawImage(dc, *image)) {
        if (!m_sNormalImage.IsEmpty())
            DrawImage(dc, m_sNormalImage);
    }
}

void CComboUI::PaintText(HDC dc)
{
    const CDuiString text = GetText();
    if (text.IsEmpty() || m_pManager == nullptr)
        return;

    const RECT padding = GetTextPadding();
    RECT room{m_rcItem.left + padding.left, m_rcItem.top + padding.top,
              m_rcItem.right - padding.right, m_rcItem.bottom - padding.bottom};
    if (HasOwnLook()) {
        if (padding.left == 0)
            room.left += ScaleLength(kTextIndent);
        room.right = std::min(room.right, ArrowRect().left);
    }
    if (room.right <= room.left)
        return;

    DWORD color = IsEnabled() ? m_dwTextColor : m_dwDisabledTextColor;
    if (color == 0)
        color =
            IsEnabled() ? m_pManager->GetDefaultFontColor() : m_pManager->GetDefaultDisabledColor();
    color = GetAdjustColor(color);
    if (m_bShowHtml) {
        int links = 0;
        CRenderEngine::DrawHtmlText(dc, m_pManager, room, text, color, nullptr, nullptr, links,
                                    m_iFont, m_uTextStyle);
    } else {
        CRenderEngine::DrawText(dc, m_pManager, room, text, color, m_iFont, m_uTextStyle);
    }
}

// Without state images the frame shows the state; a border of the skin's own gets a second one
// inside when it has the focus and the skin does not say how that looks.
void CComboUI::PaintBorder(HDC dc)
{
    const bool hasBorder = m_dwBorderColor != 0 || m_dwFocusBorderColor != 0;
    if (hasBorder || !HasOwnLook())
        CContainerUI::PaintBorder(dc);
    if (!HasOwnLook() || m_dwFocusBorderColor != 0)
        return;

    RECT frame = m_rcItem;
    DWORD color = kFrameColor;
    if (!IsEnabled())
        color = kDisabledFrameColor;
    else if (IsFocused() || m_pDrop != nullptr)
        color = kFocusColor;
    else if ((m_uButtonState & UISTATE_HOT) != 0)
        color = kHotFrameColor;
    if (hasBorder) {
        if (color != kFocusColor)
            return;
        const int inside = std::max(GetBorderSize(), 1);
        ::InflateRect(&frame, -inside, -inside);
    }
    const int width = ScaleLength(1);
    const SIZE round = GetBorderRound();
    if (round.cx > 0 || round.cy > 0)
        CRenderEngine::DrawRoundRect(dc, frame, width, round.cx, round.cy, GetAdjustColor(color));
    else
        CRenderEngine::DrawRect(dc, frame, width, GetAdjustColor(color));
}

} // namespace DuiLib
