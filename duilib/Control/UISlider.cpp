#include "Control/UISlider.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <climits>

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr SIZE kThumbSize{10, 10}; // design pixels
constexpr int kPagesOfRange = 10;

// The plain look; lengths are design pixels.
constexpr int kTrackWidth = 4;
constexpr int kFocusRing = 2;
constexpr DWORD kTrackColor = 0xFFC9CED6;
constexpr DWORD kDoneColor = 0xFF3A7BD5;
constexpr DWORD kThumbColor = 0xFF3A7BD5;
constexpr DWORD kThumbHotColor = 0xFF5C97E6;
constexpr DWORD kThumbPushedColor = 0xFF2A5FAB;
constexpr DWORD kDisabledColor = 0xFFB4B9C1;
constexpr DWORD kFocusColor = 0xFF1B3F73;

bool IsMouseEvent(const TEventUI& event)
{
    return event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
}

} // namespace

CControlUI* CSliderUI::CreateControl()
{
    return new CSliderUI;
}

CSliderUI::CSliderUI()
    : m_szThumb(kThumbSize),
      m_uButtonState(0),
      m_nStep(1),
      m_bSendMove(false),
      m_nGrabbed(0),
      m_nValueAtPress(0),
      m_nWheelDelta(0)
{
}

CSliderUI::~CSliderUI() = default;

LPCTSTR CSliderUI::GetClass() const
{
    return L"SliderUI";
}

LPVOID CSliderUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_SLIDER))
        return static_cast<CSliderUI*>(this);
    return CProgressUI::GetInterface(name);
}

UINT CSliderUI::GetControlFlags() const
{
    if (!IsEnabled())
        return 0;
    return UIFLAG_SETCURSOR | (IsKeyboardEnabled() ? UIFLAG_TABSTOP : 0);
}

int CSliderUI::GetChangeStep()
{
    return m_nStep;
}

void CSliderUI::SetChangeStep(int step)
{
    m_nStep = std::max(step, 1);
}

void CSliderUI::SetThumbSize(SIZE size)
{
    m_szThumb = ClampLength(SIZE{std::max(size.cx, 0L), std::max(size.cy, 0L)});
    Invalidate();
}

LPCTSTR CSliderUI::GetThumbImage() const
{
    return m_sThumbImage;
}

void CSliderUI::SetThumbImage(LPCTSTR image)
{
    SetImage(m_sThumbImage, image);
}

LPCTSTR CSliderUI::GetThumbHotImage() const
{
    return m_sThumbHotImage;
}

void CSliderUI::SetThumbHotImage(LPCTSTR image)
{
    SetImage(m_sThumbHotImage, image);
}

LPCTSTR CSliderUI::GetThumbPushedImage() const
{
    return m_sThumbPushedImage;
}

void CSliderUI::SetThumbPushedImage(LPCTSTR image)
{
    SetImage(m_sThumbPushedImage, image);
}

void CSliderUI::SetImage(CDuiString& member, LPCTSTR image)
{
    if (member == image)
        return;
    member = image;
    Invalidate();
}

void CSliderUI::SetValue(int value)
{
    if (!IsDragged())
        CProgressUI::SetValue(value);
}

void CSliderUI::SetCanSendMove(bool canSend)
{
    m_bSendMove = canSend;
}

bool CSliderUI::GetCanSendMove() const
{
    return m_bSendMove;
}

// A slider that is disabled forgets the mouse.
void CSliderUI::SetEnabled(bool enable)
{
    CProgressUI::SetEnabled(enable);
    if (!IsEnabled())
        m_uButtonState = 0;
}

void CSliderUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CSliderUI>({
        {L"thumbimage", AttributeKind::Image,
         [](CSliderUI& self, LPCTSTR image) { self.SetThumbImage(image); }},
        {L"thumbhotimage", AttributeKind::Image,
         [](CSliderUI& self, LPCTSTR image) { self.SetThumbHotImage(image); }},
        {L"thumbpushedimage", AttributeKind::Image,
         [](CSliderUI& self, LPCTSTR image) { self.SetThumbPushedImage(image); }},
        {L"thumbsize", AttributeKind::Size,
         [](CSliderUI& self, LPCTSTR size) { self.SetThumbSize(Text::ToSize(size)); }},
        {L"step", AttributeKind::Number,
         [](CSliderUI& self, LPCTSTR number) { self.SetChangeStep(Text::ToInt(number)); }},
        {L"sendmove", AttributeKind::Boolean,
         [](CSliderUI& self, LPCTSTR on) { self.SetCanSendMove(Text::IsTrue(on)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CProgressUI::SetAttribute(name, value);
}

bool CSliderUI::IsDragged() const
{
    return (m_uButtonState & UISTATE_CAPTURED) != 0;
}

// How far the thumb can move.
LONG CSliderUI::Room() const
{
    const SIZE thumb = ScaleLength(m_szThumb);
    return std::max(0L, m_bHorizontal ? GetWidth() - thumb.cx : GetHeight() - thumb.cy);
}

// From the end of the smallest value: the left, or the bottom.
LONG CSliderUI::ThumbOffset() const
{
    if (m_nMax <= m_nMin)
        return 0;
    const long long range = static_cast<long long>(m_nMax) - m_nMin;
    const long long done = static_cast<long long>(std::clamp(m_nValue, m_nMin, m_nMax)) - m_nMin;
    return static_cast<LONG>(Room() * done / range);
}

// The value that is nearest to an offset of the thumb.
int CSliderUI::ValueAt(LONG offset) const
{
    const long long room = Room();
    if (m_nMax <= m_nMin || room == 0)
        return m_nValue;
    const long long range = static_cast<long long>(m_nMax) - m_nMin;
    const long long place = std::clamp<long long>(offset, 0, room);
    return static_cast<int>(m_nMin + (range * place + room / 2) / room);
}

LONG CSliderUI::OffsetAt(POINT mouse) const
{
    return m_bHorizontal ? mouse.x - m_rcItem.left : m_rcItem.bottom - mouse.y;
}

RECT CSliderUI::GetThumbRect() const
{
    const SIZE thumb = ScaleLength(m_szThumb);
    const LONG offset = ThumbOffset();
    RECT rect;
    if (m_bHorizontal) {
        rect.left = m_rcItem.left + offset;
        rect.top = (m_rcItem.top + m_rcItem.bottom - thumb.cy) / 2;
    } else {
        rect.left = (m_rcItem.left + m_rcItem.right - thumb.cx) / 2;
        rect.top = m_rcItem.bottom - offset - thumb.cy;
    }
    rect.right = rect.left + thumb.cx;
    rect.bottom = rect.top + thumb.cy;
    return rect;
}

void CSliderUI::DoEvent(TEventUI& event)
{
    if (!IsMouseEnabled() && IsMouseEvent(event)) {
        if (m_pParent)
            m_pParent->DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        if (IsEnabled())
            Press(event.ptMouse);
        return;
    case UIEVENT_MOUSEMOVE:
        if (IsDragged())
            Drag(event.ptMouse);
        return;
    case UIEVENT_BUTTONUP:
        if (IsDragged())
            Release(event.ptMouse);
        return;
    case UIEVENT_MOUSEENTER:
        SetState(UISTATE_HOT, IsEnabled());
        return;
    case UIEVENT_MOUSELEAVE:
        SetState(UISTATE_HOT, false);
        return;
    case UIEVENT_SCROLLWHEEL:
        if (!IsEnabled())
            break;
        TurnWheel(static_cast<short>(HIWORD(event.wParam)));
        return;
    case UIEVENT_KEYDOWN:
        if (!IsEnabled() || !IsKeyboardEnabled() || !PressKey(event.wParam))
            break;
        return;
    default:
        break;
    }
    CProgressUI::DoEvent(event);
}

void CSliderUI::SetState(UINT bits, bool on)
{
    const UINT state = on ? m_uButtonState | bits : m_uButtonState & ~bits;
    if (m_uButtonState == state)
        return;
    m_uButtonState = state;
    Invalidate();
}

// On the thumb it is taken where it is; beside it, its middle comes to the mouse.
void CSliderUI::Press(POINT mouse)
{
    if (!IsDragged())
        m_nValueAtPress = m_nValue;
    SetState(UISTATE_CAPTURED | UISTATE_PUSHED, true);
    const RECT thumb = GetThumbRect();
    const LONG length = m_bHorizontal ? thumb.right - thumb.left : thumb.bottom - thumb.top;
    m_nGrabbed = ::PtInRect(&thumb, mouse) ? OffsetAt(mouse) - ThumbOffset() : length / 2;
    Drag(mouse);
}

void CSliderUI::Drag(POINT mouse)
{
    const LONG offset = OffsetAt(mouse) - m_nGrabbed;
    if (offset == ThumbOffset())
        return; // as fine as a pixel: the value between two pixels stays
    if (Change(ValueAt(offset)) && m_bSendMove)
        Send(DUI_MSGTYPE_VALUECHANGED_MOVE);
}

void CSliderUI::Release(POINT mouse)
{
    const LONG offset = OffsetAt(mouse) - m_nGrabbed;
    if (offset != ThumbOffset())
        Change(ValueAt(offset));
    SetState(UISTATE_CAPTURED | UISTATE_PUSHED, false);
    if (m_nValue != m_nValueAtPress)
        Send(DUI_MSGTYPE_VALUECHANGED);
}

// False for a key that it has no use for.
bool CSliderUI::PressKey(WPARAM key)
{
    const long long range = static_cast<long long>(m_nMax) - m_nMin;
    const long long page = std::max<long long>(m_nStep, range / kPagesOfRange);
    const long long value = m_nValue;
    long long wanted = value;
    switch (key) {
    case VK_LEFT:
    case VK_DOWN:
        wanted = value - m_nStep;
        break;
    case VK_RIGHT:
    case VK_UP:
        wanted = value + m_nStep;
        break;
    case VK_NEXT:
        wanted = value - page;
        break;
    case VK_PRIOR:
        wanted = value + page;
        break;
    case VK_HOME:
        wanted = m_nMin;
        break;
    case VK_END:
        wanted = m_nMax;
        break;
    default:
        return false;
    }
    if (!IsDragged() && Change(wanted))
        Send(DUI_MSGTYPE_VALUECHANGED);
    return true;
}

void CSliderUI::TurnWheel(int delta)
{
    if (IsDragged())
        return;
    const bool turnsBack = (delta < 0) != (m_nWheelDelta < 0);
    m_nWheelDelta = (turnsBack ? 0 : m_nWheelDelta) + delta;
    const long long notches = m_nWheelDelta / WHEEL_DELTA;
    m_nWheelDelta %= WHEEL_DELTA;
    if (notches != 0 && Change(m_nValue + notches * m_nStep))
        Send(DUI_MSGTYPE_VALUECHANGED);
}

// By the user; false when nothing changes.
bool CSliderUI::Change(long long value)
{
    if (m_nMax <= m_nMin)
        return false;
    const auto wanted = static_cast<int>(std::clamp<long long>(value, m_nMin, m_nMax));
    if (wanted == m_nValue)
        return false;
    CProgressUI::SetValue(wanted);
    return true;
}

// May delete this.
void CSliderUI::Send(LPCTSTR type)
{
    if (m_pManager)
        m_pManager->SendNotify(this, type);
}

void CSliderUI::PaintForeImage(HDC dc)
{
    if (!HasOwnTrack())
        PaintTrack(dc);
    CProgressUI::PaintForeImage(dc);
    PaintThumb(dc);
}

// Whether the skin draws the bar.
bool CSliderUI::HasOwnTrack() const
{
    return m_dwBackColor != 0 || m_dwForeColor != 0 || !m_sBkImage.IsEmpty() ||
           !m_sForeImage.IsEmpty();
}

void CSliderUI::FillRounded(HDC dc, const RECT& part, DWORD color)
{
    RECT dirty;
    if (!::IntersectRect(&dirty, &part, &m_rcPaint))
        return;
    const int diameter = std::min(part.right - part.left, part.bottom - part.top);
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(dc, dirty, part, diameter, diameter, clip);
    CRenderEngine::DrawColor(dc, part, GetAdjustColor(color));
}

// A line through the middle, up to the thumb in another colour.
void CSliderUI::PaintTrack(HDC dc)
{
    const LONG width = ScaleLength(kTrackWidth);
    const RECT thumb = GetThumbRect();
    RECT track = m_rcItem;
    RECT done = m_rcItem;
    if (m_bHorizontal) {
        track.top = (m_rcItem.top + m_rcItem.bottom - width) / 2;
        track.bottom = track.top + width;
        done = track;
        done.right = (thumb.left + thumb.right) / 2;
    } else {
        track.left = (m_rcItem.left + m_rcItem.right - width) / 2;
        track.right = track.left + width;
        done = track;
        done.top = (thumb.top + thumb.bottom) / 2;
    }
    FillRounded(dc, track, kTrackColor);
    if (IsEnabled())
        FillRounded(dc, done, kDoneColor);
}

void CSliderUI::PaintThumb(HDC dc)
{
    const RECT thumb = GetThumbRect();
    RECT dirty;
    if (!::IntersectRect(&dirty, &m_rcPaint, &thumb))
        return;

    const bool isPushed = (m_uButtonState & UISTATE_PUSHED) != 0;
    const bool isHot = (m_uButtonState & UISTATE_HOT) != 0;
    const auto draw = [&](const CDuiString& image) {
        return !image.IsEmpty() && CRenderEngine::DrawImageString(dc, m_pManager, thumb, dirty,
                                                                  image, NULL, m_instance);
    };
    if (isPushed && draw(m_sThumbPushedImage))
        return;
    if (isHot && !isPushed && draw(m_sThumbHotImage))
        return;
    if (draw(m_sThumbImage) || !m_sThumbImage.IsEmpty())
        return;

    DWORD color = kThumbColor;
    if (!IsEnabled())
        color = kDisabledColor;
    else if (isPushed)
        color = kThumbPushedColor;
    else if (isHot)
        color = kThumbHotColor;
    FillRounded(dc, thumb, color);

    // An outline smooths the edge, and shows the focus.
    const bool isFocused = IsFocused() && IsEnabled();
    const int diameter = std::min(thumb.right - thumb.left, thumb.bottom - thumb.top);
    CRenderEngine::DrawRoundRect(dc, thumb, isFocused ? ScaleLength(kFocusRing) : 1, diameter,
                                 diameter, GetAdjustColor(isFocused ? kFocusColor : color));
}

} // namespace DuiLib
