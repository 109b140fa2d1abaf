#include "Control/UIListHeader.h"

#include "Control/TextStyle.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <cstdlib>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr int kDefaultSepWidth = 4; // design pixels
constexpr int kKeyStep = 8;         // design pixels that a key moves a separator
constexpr LONG kLineMargin = 8;     // device pixels above and below a line of text, together
constexpr int kFocusInset = 2;      // design pixels

} // namespace

CControlUI* CListHeaderItemUI::CreateControl()
{
    return new CListHeaderItemUI;
}

CListHeaderItemUI::CListHeaderItemUI()
    : ptLastMouse{},
      m_bDragable(true),
      m_uButtonState(0),
      m_iSepWidth(kDefaultSepWidth),
      m_dwTextColor(0),
      m_iFont(-1),
      m_uTextStyle(DT_CENTER | DT_VCENTER | DT_SINGLELINE),
      m_bShowHtml(false),
      m_rcTextPadding{},
      m_nScale(0),
      m_bFocusByKey(false)
{
}

bool CListHeaderItemUI::IsDragable() const
{
    return m_bDragable;
}

void CListHeaderItemUI::SetDragable(bool dragable)
{
    m_bDragable = dragable;
    if (!dragable)
        EndDrag(false);
}

DWORD CListHeaderItemUI::GetSepWidth() const
{
    return static_cast<DWORD>(ScaleLength(m_iSepWidth));
}

void CListHeaderItemUI::SetSepWidth(int width)
{
    m_iSepWidth = ClampLength(width);
    Invalidate();
}

DWORD CListHeaderItemUI::GetTextStyle() const
{
    return m_uTextStyle;
}

void CListHeaderItemUI::SetTextStyle(UINT style)
{
    m_uTextStyle = style;
    Invalidate();
}

DWORD CListHeaderItemUI::GetTextColor() const
{
    return m_dwTextColor;
}

void CListHeaderItemUI::SetTextColor(DWORD color)
{
    m_dwTextColor = color;
    Invalidate();
}

void CListHeaderItemUI::SetTextPadding(RECT padding)
{
    m_rcTextPadding = ClampLength(padding);
    NeedParentUpdate();
}

RECT CListHeaderItemUI::GetTextPadding() const
{
    return ScaleLength(m_rcTextPadding);
}

void CListHeaderItemUI::SetFont(int index)
{
    if (m_iFont == index)
        return;
    m_iFont = index;
    NeedParentUpdate();
}

bool CListHeaderItemUI::IsShowHtml()
{
    return m_bShowHtml;
}

void CListHeaderItemUI::SetShowHtml(bool show)
{
    m_bShowHtml = show;
    Invalidate();
}

void CListHeaderItemUI::SetImage(CDuiString& member, LPCTSTR image)
{
    member = image != nullptr ? image : L"";
    Invalidate();
}

LPCTSTR CListHeaderItemUI::GetNormalImage() const
{
    return m_sNormalImage;
}

void CListHeaderItemUI::SetNormalImage(LPCTSTR image)
{
    SetImage(m_sNormalImage, image);
}

LPCTSTR CListHeaderItemUI::GetHotImage() const
{
    return m_sHotImage;
}

void CListHeaderItemUI::SetHotImage(LPCTSTR image)
{
    SetImage(m_sHotImage, image);
}

LPCTSTR CListHeaderItemUI::GetPushedImage() const
{
    return m_sPushedImage;
}

void CListHeaderItemUI::SetPushedImage(LPCTSTR image)
{
    SetImage(m_sPushedImage, image);
}

LPCTSTR CListHeaderItemUI::GetFocusedImage() const
{
    return m_sFocusedImage;
}

void CListHeaderItemUI::SetFocusedImage(LPCTSTR image)
{
    SetImage(m_sFocusedImage, image);
}

LPCTSTR CListHeaderItemUI::GetSepImage() const
{
    return m_sSepImage;
}

void CListHeaderItemUI::SetSepImage(LPCTSTR image)
{
    SetImage(m_sSepImage, image);
}

void CListHeaderItemUI::SetScale(int scale)
{
    if (m_nScale == scale)
        return;
    m_nScale = scale;
    if (CListHeaderUI* const header = GetHeader(); header != nullptr && header->IsScaleHeader())
        header->ColumnsChanged();
}

int CListHeaderItemUI::GetScale() const
{
    return m_nScale;
}

CListHeaderUI* CListHeaderItemUI::GetHeader() const
{
    return m_pParent != nullptr
               ? static_cast<CListHeaderUI*>(m_pParent->GetInterface(DUI_CTR_LISTHEADER))
               : nullptr;
}

RECT CListHeaderItemUI::ThumbOf(RECT item) const
{
    const int width = ScaleLength(m_iSepWidth);
    if (width >= 0)
        item.left = std::max(item.right - width, item.left);
    else
        item.right = std::min(item.left - width, item.right);
    return item;
}

RECT CListHeaderItemUI::GetThumbRect() const
{
    return ThumbOf(m_rcItem);
}

RECT CListHeaderItemUI::GetNewThumbRect() const
{
    return ThumbOf(m_rcNewPos);
}

bool CListHeaderItemUI::IsDragging() const
{
    return (m_uButtonState & UISTATE_CAPTURED) != 0;
}

bool CListHeaderItemUI::IsOverThumb(POINT point) const
{
    const RECT thumb = GetThumbRect();
    return m_bDragable && ::PtInRect(&thumb, point);
}

LPCTSTR CListHeaderItemUI::GetClass() const
{
    return L"ListHeaderItemUI";
}

LPVOID CListHeaderItemUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTHEADERITEM))
        return this;
    return CHorizontalLayoutUI::GetInterface(name);
}

// One column is in the order of Tab: the one with the focus, or else the first one.
UINT CListHeaderItemUI::GetControlFlags() const
{
    UINT flags = IsEnabled() && m_bDragable && m_iSepWidth != 0 ? UIFLAG_SETCURSOR : 0;
    const CListHeaderUI* const header = GetHeader();
    if (!IsKeyboardEnabled() || header == nullptr || m_pManager == nullptr)
        return flags;
    const CControlUI* const focus = m_pManager->GetFocus();
    const bool focusIsHere = focus != nullptr && focus->GetParent() == header;
    if (focusIsHere ? focus == this : header->NextColumn(*this, false) == nullptr)
        flags |= UIFLAG_TABSTOP;
    return flags;
}

void CListHeaderItemUI::SetEnabled(bool enable)
{
    CHorizontalLayoutUI::SetEnabled(enable);
    if (!IsEnabled()) {
        EndDrag(false);
        m_uButtonState = 0;
    }
}

void CListHeaderItemUI::SetVisible(bool visible)
{
    if (m_bVisible == visible)
        return;
    EndDrag(false);
    CHorizontalLayoutUI::SetVisible(visible);
    if (CListHeaderUI* const header = GetHeader())
        header->ColumnsChanged();
}

void CListHeaderItemUI::SetFixedWidth(int width)
{
    const LONG before = m_cxyFixed.cx;
    CHorizontalLayoutUI::SetFixedWidth(width);
    CListHeaderUI* const header = m_cxyFixed.cx != before ? GetHeader() : nullptr;
    if (header != nullptr)
        header->ColumnsChanged();
}

// A line of text and 8 pixels, unless a height was told.
SIZE CListHeaderItemUI::EstimateSize(SIZE available)
{
    SIZE size = CHorizontalLayoutUI::EstimateSize(available);
    if (size.cy <= 0 && m_pManager != nullptr) {
        const RECT padding = GetTextPadding();
        size.cy = m_pManager->GetFontInfo(m_iFont)->tm.tmHeight + kLineMargin + padding.top +
                  padding.bottom;
    }
    return size;
}

void CListHeaderItemUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (isMouse && !IsMouseEnabled()) {
        if (m_pParent != nullptr)
            m_pParent->DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        Press(event);
        return;
    case UIEVENT_BUTTONUP:
        m_uButtonState &= ~static_cast<UINT>(UISTATE_PUSHED);
        Invalidate();
        EndDrag(true);
        return;
    case UIEVENT_MOUSEMOVE:
        // The release of the button is not told to a window that lost the mouse.
        if (m_pManager != nullptr && m_pManager->IsCaptured())
            Drag(event.ptMouse);
        else
            EndDrag(false);
        return;
    case UIEVENT_MOUSEENTER:
    case UIEVENT_MOUSELEAVE:
        SetHot(event.Type == UIEVENT_MOUSEENTER);
        return;
    case UIEVENT_SETCURSOR:
        if (IsEnabled() && IsOverThumb(event.ptMouse)) {
            ::SetCursor(::LoadCursorW(nullptr, MAKEINTRESOURCEW(DUI_SIZEWE)));
            return;
        }
        break;
    case UIEVENT_KEYDOWN:
        if (HandleKey(event))
            return;
        break;
    case UIEVENT_SETFOCUS:
        m_bFocusByKey = (event.wKeyState & (MK_LBUTTON | MK_RBUTTON)) == 0;
        break;
    case UIEVENT_KILLFOCUS:
        m_bFocusByKey = false;
        break;
    default:
        break;
    }
    CHorizontalLayoutUI::DoEvent(event);
}

void CListHeaderItemUI::Press(const TEventUI& event)
{
    if (!IsEnabled())
        return;
    m_bFocusByKey = false;
    if (!IsOverThumb(event.ptMouse)) {
        m_uButtonState |= UISTATE_PUSHED;
        Invalidate();
        NotifyClick();
        return;
    }
    m_uButtonState |= UISTATE_CAPTURED;
    ptLastMouse = event.ptMouse;
    m_rcNewPos = m_rcItem;
    CListHeaderUI* const header = GetHeader();
    if (header != nullptr && m_pManager != nullptr && !m_bImmMode)
        m_pManager->AddPostPaint(header);
}

void CListHeaderItemUI::Drag(POINT mouse)
{
    if (!IsDragging())
        return;
    // Beyond a limit the separator stays, and waits for the mouse to come back to it.
    const bool atEnd = m_iSepWidth > 0;
    const LONG width = m_rcNewPos.right - m_rcNewPos.left;
    const LONG moved = mouse.x - ptLastMouse.x;
    const LONG wanted = LimitNewWidth(atEnd ? width + moved : width - moved);
    if (wanted == width)
        return;

    CListHeaderUI* const header = GetHeader();
    if (header != nullptr && !m_bImmMode)
        header->InvalidateDragBar();
    const LONG step = atEnd ? wanted - width : width - wanted;
    (atEnd ? m_rcNewPos.right : m_rcNewPos.left) += step;
    ptLastMouse.x += step;
    if (m_bImmMode)
        ApplyWidth(wanted);
    else if (header != nullptr)
        header->InvalidateDragBar();
}

void CListHeaderItemUI::EndDrag(bool apply)
{
    if (!IsDragging())
        return;
    CListHeaderUI* const header = GetHeader();
    if (header != nullptr && !m_bImmMode) {
        header->InvalidateDragBar();
        if (m_pManager != nullptr)
            m_pManager->RemovePostPaint(header);
    }
    m_uButtonState &= ~static_cast<UINT>(UISTATE_CAPTURED);
    const LONG width = m_rcNewPos.right - m_rcNewPos.left;
    if (apply && !m_bImmMode && width != m_rcItem.right - m_rcItem.left)
        ApplyWidth(width);
}

// At least the separator itself stays, so that it can be dragged back.
LONG CListHeaderItemUI::LimitWidth(LONG width) const
{
    const LONG separator = std::abs(ScaleLength(m_iSepWidth));
    return std::max<LONG>({std::min<LONG>(width, GetMaxWidth()), GetMinWidth(), separator});
}

// In a header that scales the neighbour gives or takes the space.
LONG CListHeaderItemUI::LimitNewWidth(LONG width) const
{
    const LONG limited = LimitWidth(width);
    const CListHeaderUI* const header = GetHeader();
    if (header == nullptr || !header->IsScaleHeader())
        return limited;
    const CListHeaderItemUI* const neighbour = header->NextColumn(*this, m_iSepWidth > 0);
    const LONG now = m_rcItem.right - m_rcItem.left;
    if (neighbour == nullptr)
        return now;
    const LONG both = now + neighbour->m_rcItem.right - neighbour->m_rcItem.left;
    return both - neighbour->LimitWidth(both - limited);
}

void CListHeaderItemUI::ApplyWidth(LONG width)
{
    CListHeaderUI* const header = GetHeader();
    CListHeaderItemUI* const neighbour = header != nullptr && header->IsScaleHeader()
                                             ? header->NextColumn(*this, m_iSepWidth > 0)
                                             : nullptr;
    if (neighbour == nullptr) {
        Resize(width);
        return;
    }
    // From here on the scales are the widths that the columns have now.
    const LONG now = m_rcItem.right - m_rcItem.left;
    const LONG both = now + neighbour->m_rcItem.right - neighbour->m_rcItem.left;
    for (int i = 0; i < header->GetCount(); ++i) {
        auto* const item = static_cast<CListHeaderItemUI*>(
            header->GetItemAt(i)->GetInterface(DUI_CTR_LISTHEADERITEM));
        if (item != nullptr && item->IsVisible())
            item->m_nScale = std::max<int>(item->m_rcItem.right - item->m_rcItem.left, 1);
    }
    m_nScale = std::max<int>(width, 1);
    neighbour->m_nScale = std::max<int>(both - width, 1);
    header->ColumnsChanged();
}

void CListHeaderItemUI::Resize(LONG width)
{
    SetFixedWidth(m_pManager != nullptr ? m_pManager->GetDPIObj()->ScaleBack(width) : width);
}

void CListHeaderItemUI::NotifyClick()
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_HEADERCLICK);
}

// False for a key that is not the column's.
bool CListHeaderItemUI::HandleKey(const TEventUI& event)
{
    if (event.chKey == VK_ESCAPE && IsDragging()) {
        EndDrag(false);
        return true;
    }
    if (!IsKeyboardEnabled() || !IsEnabled())
        return false;
    switch (event.chKey) {
    case VK_SPACE:
    case VK_RETURN:
        NotifyClick();
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        break;
    default:
        return false;
    }

    const bool forward = event.chKey == VK_RIGHT;
    if ((event.wKeyState & MK_SHIFT) != 0) {
        const LONG width = m_rcItem.right - m_rcItem.left;
        const LONG step = ScaleLength(forward ? kKeyStep : -kKeyStep);
        if (m_bDragable && m_iSepWidth != 0)
            ApplyWidth(LimitNewWidth(width + step));
        return true;
    }
    const CListHeaderUI* const header = GetHeader();
    CListHeaderItemUI* const next =
        header != nullptr ? header->NextColumn(*this, forward) : nullptr;
    if (next != nullptr)
        next->SetFocus();
    return true;
}

void CListHeaderItemUI::SetHot(bool hot)
{
    if (!IsEnabled())
        return;
    if (hot)
        m_uButtonState |= UISTATE_HOT;
    else
        m_uButtonState &= ~static_cast<UINT>(UISTATE_HOT);
    Invalidate();
}

void CListHeaderItemUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CListHeaderItemUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"dragable", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetDragable(IsTrue(v)); }},
        {L"sepwidth", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetSepWidth(ToInt(v)); }},
        {L"align", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(TextStyle::WithHorizontalAlignment(self.GetTextStyle(), v));
         }},
        {L"endellipsis", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.SetTextStyle(
                 TextStyle::WithFlag(self.GetTextStyle(), DT_END_ELLIPSIS, IsTrue(v)));
         }},
        {L"font", AttributeKind::Number, [](Self& self, LPCTSTR v) { self.SetFont(ToInt(v)); }},
        {L"textcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetTextColor(ToColour(v)); }},
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
        {L"sepimage", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetSepImage(v); }},
        {L"scale", AttributeKind::Number, [](Self& self, LPCTSTR v) { self.SetScale(ToInt(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CHorizontalLayoutUI::SetAttribute(name, value);
}

bool CListHeaderItemUI::DrawOwn(HDC dc, LPCTSTR image)
{
    return *image != L'\0' && DrawImage(dc, image);
}

void CListHeaderItemUI::PaintStatusImage(HDC dc)
{
    LPCTSTR image = L"";
    if ((m_uButtonState & UISTATE_PUSHED) != 0 && !m_sPushedImage.IsEmpty())
        image = m_sPushedImage;
    else if ((m_uButtonState & UISTATE_HOT) != 0 && !m_sHotImage.IsEmpty())
        image = m_sHotImage;
    else if (IsFocused())
        image = m_sFocusedImage;
    if (!DrawOwn(dc, image))
        DrawOwn(dc, m_sNormalImage);

    if (m_sSepImage.IsEmpty())
        return;
    const RECT thumb = GetThumbRect();
    CRenderEngine::DrawImageString(dc, m_pManager, thumb, m_rcPaint, m_sSepImage, nullptr,
                                   m_instance);
}

void CListHeaderItemUI::PaintText(HDC dc)
{
    CDuiString translated;
    if (IsResourceText())
        translated = GetText();
    const LPCTSTR text = IsResourceText() ? translated.GetData() : m_sText.GetData();
    if (*text == L'\0' || m_pManager == nullptr)
        return;
    DWORD color = IsEnabled() ? m_dwTextColor : m_pManager->GetDefaultDisabledColor();
    if (color == 0)
        color = m_pManager->GetDefaultFontColor();
    color = GetAdjustColor(color);

    const RECT padding = GetTextPadding();
    RECT room{m_rcItem.left + padding.left, m_rcItem.top + padding.top,
              m_rcItem.right - padding.right, m_rcItem.bottom - padding.bottom};
    if (::IsRectEmpty(&room))
        return;
    if (m_bShowHtml) {
        int links = 0;
        CRenderEngine::DrawHtmlText(dc, m_pManager, room, text, color, nullptr, nullptr, links,
                                    m_iFont, m_uTextStyle);
    } else {
        CRenderEngine::DrawText(dc, m_pManager, room, text, color, m_iFont, m_uTextStyle);
    }
}

// A focus that came by key is visible also when the skin has nothing for it.
void CListHeaderItemUI::PaintBorder(HDC dc)
{
    CHorizontalLayoutUI::PaintBorder(dc);
    const bool skinShowsFocus = !m_sFocusedImage.IsEmpty() || GetFocusBorderColor() != 0;
    if (!IsFocused() || !m_bFocusByKey || skinShowsFocus || m_pManager == nullptr)
        return;
    RECT frame = m_rcItem;
    ::InflateRect(&frame, -ScaleLength(kFocusInset), -ScaleLength(kFocusInset));
    const DWORD color = m_dwTextColor != 0 ? m_dwTextColor : m_pManager->GetDefaultFontColor();
    if (!::IsRectEmpty(&frame))
        CRenderEngine::DrawRect(dc, frame, ScaleLength(1), GetAdjustColor(color), PS_DOT);
}

} // namespace DuiLib
