#include "Control/UIScrollBar.h"

#include "Core/UIContainer.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;
using Quillet::Text::View;

constexpr UINT kTick = 50; // milliseconds
constexpr int kTicksBeforeRepeat = 5;
constexpr int kDefaultLineSize = 8; // device pixels
constexpr int kOutlineWidth = 2;    // device pixels
constexpr DWORD kOutlineColor = 0xFF85E4FF;

} // namespace

// The pictures of a part by state.
struct CScrollBarUI::Look {
    const CDuiString& normal;
    const CDuiString& hot;
    const CDuiString& pushed;
    const CDuiString& disabled;
};

CControlUI* CScrollBarUI::CreateControl()
{
    return new CScrollBarUI;
}

CScrollBarUI::CScrollBarUI()
    : m_bShow(true),
      m_bHorizontal(false),
      m_nRange(0),
      m_nScrollPos(0),
      m_nLineSize(kDefaultLineSize),
      m_pOwner(nullptr),
      m_ptLastMouse{},
      m_nLastScrollPos(0),
      m_nLastScrollOffset(0),
      m_nScrollRepeatDelay(0),
      m_bShowButton1(true),
      m_rcButton1{},
      m_uButton1State(0),
      m_bShowButton2(true),
      m_rcButton2{},
      m_uButton2State(0),
      m_rcThumb{},
      m_uThumbState(0)
{
    m_cxyFixed.cx = DEFAULT_SCROLLBAR_SIZE;
}

CContainerUI* CScrollBarUI::GetOwner() const
{
    return m_pOwner;
}

void CScrollBarUI::SetOwner(CContainerUI* owner)
{
    m_pOwner = owner;
}

bool CScrollBarUI::IsHorizontal()
{
    return m_bHorizontal;
}

void CScrollBarUI::SetHorizontal(bool horizontal)
{
    if (m_bHorizontal == horizontal)
        return;
    m_bHorizontal = horizontal;
    // The default thickness turns with the bar; one that was set does not.
    if (horizontal && m_cxyFixed.cx == DEFAULT_SCROLLBAR_SIZE && m_cxyFixed.cy == 0)
        m_cxyFixed = {0, DEFAULT_SCROLLBAR_SIZE};
    else if (!horizontal && m_cxyFixed.cy == DEFAULT_SCROLLBAR_SIZE && m_cxyFixed.cx == 0)
        m_cxyFixed = {DEFAULT_SCROLLBAR_SIZE, 0};
    if (m_pOwner != nullptr)
        m_pOwner->NeedUpdate();
    else
        NeedParentUpdate();
}

int CScrollBarUI::GetScrollRange() const
{
    return static_cast<int>(m_nRange);
}

void CScrollBarUI::SetScrollRange(int range)
{
    range = std::max(range, 0);
    if (m_nRange == range)
        return;
    m_nRange = range;
    m_nScrollPos = std::min<__int64>(m_nScrollPos, m_nRange);
    SetPos(m_rcItem, true);
}

int CScrollBarUI::GetScrollPos() const
{
    return static_cast<int>(m_nScrollPos);
}

void CScrollBarUI::SetScrollPos(int position)
{
    const __int64 clamped = std::clamp<__int64>(position, 0, m_nRange);
    if (m_nScrollPos == clamped)
        return;
    m_nScrollPos = clamped;
    SetPos(m_rcItem, true);
}

int CScrollBarUI::GetLineSize() const
{
    return m_nLineSize;
}

void CScrollBarUI::SetLineSize(int size)
{
    m_nLineSize = ClampLength(size);
}

bool CScrollBarUI::GetShowButton1()
{
    return m_bShowButton1;
}

void CScrollBarUI::SetShowButton1(bool show)
{
    if (m_bShowButton1 == show)
        return;
    m_bShowButton1 = show;
    SetPos(m_rcItem, true);
}

bool CScrollBarUI::GetShowButton2()
{
    return m_bShowButton2;
}

void CScrollBarUI::SetShowButton2(bool show)
{
    if (m_bShowButton2 == show)
        return;
    m_bShowButton2 = show;
    SetPos(m_rcItem, true);
}

bool CScrollBarUI::GetShow()
{
    return m_bShow;
}

void CScrollBarUI::SetShow(bool show)
{
    if (m_bShow == show)
        return;
    m_bShow = show;
    Invalidate();
}

LPCTSTR CScrollBarUI::GetClass() const
{
    return L"ScrollBarUI";
}

LPVOID CScrollBarUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_SCROLLBAR))
        return this;
    return CControlUI::GetInterface(name);
}

void CScrollBarUI::SetVisible(bool visible)
{
    if (m_bVisible == visible)
        return;
    Invalidate();
    m_bVisible = visible;
    Invalidate();
    if (!visible)
        StopWork();
}

void CScrollBarUI::SetEnabled(bool enable)
{
    CControlUI::SetEnabled(enable);
    if (!enable)
        StopWork();
}

void CScrollBarUI::SetFocus()
{
    if (m_pOwner != nullptr)
        m_pOwner->SetFocus();
    else
        CControlUI::SetFocus();
}

void CScrollBarUI::SetPos(RECT rect, bool invalidate)
{
    CControlUI::SetPos(rect, invalidate);
    PlaceParts();
}

// The bar's extent along its direction, as start and length, and a rectangle across it.
LONG CScrollBarUI::Start() const
{
    return m_bHorizontal ? m_rcItem.left : m_rcItem.top;
}

LONG CScrollBarUI::Length() const
{
    return m_bHorizontal ? m_rcItem.right - m_rcItem.left : m_rcItem.bottom - m_rcItem.top;
}

LONG CScrollBarUI::Along(POINT point) const
{
    return m_bHorizontal ? point.x : point.y;
}

RECT CScrollBarUI::Slice(LONG from, LONG to) const
{
    return m_bHorizontal ? RECT{from, m_rcItem.top, to, m_rcItem.bottom}
                         : RECT{m_rcItem.left, from, m_rcItem.right, to};
}

// The lengths of a button, of the track between the buttons, and of the thumb on it.
CScrollBarUI::Lengths CScrollBarUI::Measure() const
{
    const LONG length = Length();
    const LONG thickness = m_bHorizontal ? GetFixedHeight() : GetFixedWidth();
    const int buttons = (m_bShowButton1 ? 1 : 0) + (m_bShowButton2 ? 1 : 0);

    Lengths lengths{};
    lengths.button = buttons > 0 ? std::min(thickness, length / buttons) : 0;
    lengths.track = length - buttons * lengths.button;
    if (m_nRange > 0 && lengths.track > 0) {
        const __int64 share = static_cast<__int64>(lengths.track) * length / (m_nRange + length);
        lengths.thumb = static_cast<LONG>(std::max<__int64>(share, thickness));
        if (lengths.thumb >= lengths.track)
            lengths.thumb = 0; // no room to move it
    }
    return lengths;
}

void CScrollBarUI::PlaceParts()
{
    m_rcButton1 = m_rcButton2 = m_rcThumb = {};
    if (::IsRectEmpty(&m_rcItem))
        return;

    const Lengths lengths = Measure();
    LONG trackStart = Start();
    if (m_bShowButton1) {
        m_rcButton1 = Slice(trackStart, trackStart + lengths.button);
        trackStart += lengths.button;
    }
    if (m_bShowButton2) {
        const LONG end = Start() + Length();
        m_rcButton2 = Slice(end - lengths.button, end);
    }
    if (lengths.thumb > 0) {
        const __int64 offset = (lengths.track - lengths.thumb) * m_nScrollPos / m_nRange;
        const LONG from = trackStart + static_cast<LONG>(offset);
        m_rcThumb = Slice(from, from + lengths.thumb);
    }
}

CScrollBarUI::Part CScrollBarUI::PartAt(POINT point) const
{
    if (!::PtInRect(&m_rcItem, point))
        return Part::None;
    if (::PtInRect(&m_rcButton1, point))
        return Part::Button1;
    if (::PtInRect(&m_rcButton2, point))
        return Part::Button2;
    if (::IsRectEmpty(&m_rcThumb))
        return Part::None;
    if (::PtInRect(&m_rcThumb, point))
        return Part::Thumb;
    const LONG thumb = m_bHorizontal ? m_rcThumb.left : m_rcThumb.top;
    return Along(point) < thumb ? Part::TrackBefore : Part::TrackAfter;
}

void CScrollBarUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (!isMouse || IsMouseEnabled()) {
        switch (event.Type) {
        case UIEVENT_BUTTONDOWN:
        case UIEVENT_DBLCLICK:
            if (IsEnabled())
                Press(event.ptMouse);
            return;
        case UIEVENT_BUTTONUP:
            Release();
            return;
        case UIEVENT_MOUSEENTER:
        case UIEVENT_MOUSEMOVE:
            if (IsEnabled())
                FollowMouse(event.ptMouse);
            return;
        case UIEVENT_MOUSELEAVE:
            ShowHot(Part::None);
            return;
        case UIEVENT_TIMER:
            if (event.wParam != DEFAULT_TIMERID)
                break;
            Tick();
            return;
        default:
            break;
        }
    }
    if (m_pOwner != nullptr)
        m_pOwner->DoEvent(event);
    else
        CControlUI::DoEvent(event);
}

void CScrollBarUI::Press(POINT mouse)
{
    StopWork();
    const Part part = PartAt(mouse);
    if (part == Part::None)
        return;
    m_ptLastMouse = mouse;
    SetTimer(DEFAULT_TIMERID, kTick);
    if (part == Part::Thumb) {
        m_nLastScrollPos = GetScrollPos();
        SetState(m_uThumbState, UISTATE_CAPTURED | UISTATE_PUSHED, true);
        return;
    }
    if (part == Part::Button1)
        SetState(m_uButton1State, UISTATE_PUSHED, true);
    else if (part == Part::Button2)
        SetState(m_uButton2State, UISTATE_PUSHED, true);
    m_PressedPart = part;
    ScrollBy(part);
    SendScroll();
}

void CScrollBarUI::Release()
{
    if ((m_uThumbState & UISTATE_CAPTURED) != 0)
        DragThumb(); // the way since the last tick
    StopWork();
}

// Forgets what is pressed.
void CScrollBarUI::StopWork()
{
    m_PressedPart = Part::None;
    m_nLastScrollOffset = 0;
    m_nScrollRepeatDelay = 0;
    SetState(m_uButton1State, UISTATE_PUSHED, false);
    SetState(m_uButton2State, UISTATE_PUSHED, false);
    SetState(m_uThumbState, UISTATE_CAPTURED | UISTATE_PUSHED, false);
    KillTimer(DEFAULT_TIMERID);
}

void CScrollBarUI::FollowMouse(POINT mouse)
{
    if ((m_uThumbState & UISTATE_CAPTURED) != 0) {
        const Lengths lengths = Measure();
        const __int64 way = static_cast<__int64>(Along(mouse)) - Along(m_ptLastMouse);
        const __int64 room = std::max<__int64>(lengths.track - lengths.thumb, 1);
        m_nLastScrollOffset =
            static_cast<int>(std::clamp<__int64>(way * m_nRange / room, -m_nRange, m_nRange));
        return;
    }
    if (m_PressedPart != Part::None)
        m_ptLastMouse = mouse;
    else
        ShowHot(PartAt(mouse));
}

void CScrollBarUI::ShowHot(Part part)
{
    SetState(m_uButton1State, UISTATE_HOT, part == Part::Button1);
    SetState(m_uButton2State, UISTATE_HOT, part == Part::Button2);
    SetState(m_uThumbState, UISTATE_HOT, part == Part::Thumb);
}

void CScrollBarUI::Tick()
{
    if ((m_uThumbState & UISTATE_CAPTURED) != 0) {
        DragThumb();
        return;
    }
    if (m_PressedPart == Part::None || ++m_nScrollRepeatDelay <= kTicksBeforeRepeat)
        return;
    // A page key stops where the thumb has come to the mouse, a button where the mouse has left it.
    if (PartAt(m_ptLastMouse) != m_PressedPart)
        return;
    ScrollBy(m_PressedPart);
    SendScroll();
}

void CScrollBarUI::DragThumb()
{
    const __int64 wanted = static_cast<__int64>(m_nLastScrollPos) + m_nLastScrollOffset;
    const int position = static_cast<int>(std::clamp<__int64>(wanted, 0, m_nRange));
    if (position == m_nScrollPos)
        return;
    MoveTo(position);
    SendScroll();
}

void CScrollBarUI::ScrollBy(Part part)
{
    if (m_pOwner != nullptr) {
        switch (part) {
        case Part::Button1:
            m_bHorizontal ? m_pOwner->LineLeft() : m_pOwner->LineUp();
            break;
        case Part::Button2:
            m_bHorizontal ? m_pOwner->LineRight() : m_pOwner->LineDown();
            break;
        case Part::TrackBefore:
            m_bHorizontal ? m_pOwner->PageLeft() : m_pOwner->PageUp();
            break;
        case Part::TrackAfter:
            m_bHorizontal ? m_pOwner->PageRight() : m_pOwner->PageDown();
            break;
        default:
            break;
        }
        return;
    }
    const bool isLine = part == Part::Button1 || part == Part::Button2;
    const bool isBack = part == Part::Button1 || part == Part::TrackBefore;
    const __int64 step = isLine ? m_nLineSize : Length();
    const __int64 position = m_nScrollPos + (isBack ? -step : step);
    SetScrollPos(static_cast<int>(std::clamp<__int64>(position, 0, m_nRange)));
}

void CScrollBarUI::MoveTo(int position)
{
    if (m_pOwner == nullptr) {
        SetScrollPos(position);
        return;
    }
    SIZE target = m_pOwner->GetScrollPos();
    (m_bHorizontal ? target.cx : target.cy) = position;
    m_pOwner->SetScrollPos(target);
}

void CScrollBarUI::SendScroll()
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_SCROLL);
}

void CScrollBarUI::SetState(UINT& state, UINT bits, bool on)
{
    const UINT wanted = on ? state | bits : state & ~bits;
    if (state == wanted)
        return;
    state = wanted;
    Invalidate();
}

bool CScrollBarUI::DoPaint(HDC dc, const RECT& paint, CControlUI*)
{
    ::IntersectRect(&m_rcPaint, &paint, &m_rcItem);
    if (!m_bShow)
        return true;
    PaintBkColor(dc);
    PaintBkImage(dc);
    PaintBk(dc);
    PaintButton1(dc);
    PaintButton2(dc);
    PaintThumb(dc);
    PaintRail(dc);
    PaintBorder(dc);
    return true;
}

void CScrollBarUI::PaintBk(HDC dc)
{
    DrawPart(dc, m_rcItem, m_uThumbState,
             {m_sBkNormalImage, m_sBkHotImage, m_sBkPushedImage, m_sBkDisabledImage});
}

void CScrollBarUI::PaintButton1(HDC dc)
{
    if (m_bShowButton1 && !DrawPart(dc, m_rcButton1, m_uButton1State,
                                    {m_sButton1NormalImage, m_sButton1HotImage,
                                     m_sButton1PushedImage, m_sButton1DisabledImage}))
        DrawOutline(dc, m_rcButton1);
}

void CScrollBarUI::PaintButton2(HDC dc)
{
    if (m_bShowButton2 && !DrawPart(dc, m_rcButton2, m_uButton2State,
                                    {m_sButton2NormalImage, m_sButton2HotImage,
                                     m_sButton2PushedImage, m_sButton2DisabledImage}))
        DrawOutline(dc, m_rcButton2);
}

void CScrollBarUI::PaintThumb(HDC dc)
{
    if (!DrawPart(
            dc, m_rcThumb, m_uThumbState,
            {m_sThumbNormalImage, m_sThumbHotImage, m_sThumbPushedImage, m_sThumbDisabledImage}))
        DrawOutline(dc, m_rcThumb);
}

void CScrollBarUI::PaintRail(HDC dc)
{
    if (::IsRectEmpty(&m_rcThumb))
        return;
    // A square on the middle of the thumb.
    const LONG half = (m_bHorizontal ? GetFixedHeight() : GetFixedWidth()) / 2;
    const LONG middle = m_bHorizontal ? (m_rcThumb.left + m_rcThumb.right) / 2
                                      : (m_rcThumb.top + m_rcThumb.bottom) / 2;
    DrawPart(dc, Slice(middle - half, middle + half), m_uThumbState,
             {m_sRailNormalImage, m_sRailHotImage, m_sRailPushedImage, m_sRailDisabledImage});
}

// False when the part has no picture for its state.
bool CScrollBarUI::DrawPart(HDC dc, const RECT& part, UINT state, const Look& look)
{
    if (::IsRectEmpty(&part))
        return true;
    const CDuiString* image = &look.normal;
    if (!IsEnabled())
        image = &look.disabled;
    else if ((state & (UISTATE_PUSHED | UISTATE_CAPTURED)) != 0)
        image = &look.pushed;
    else if ((state & UISTATE_HOT) != 0)
        image = &look.hot;

    const auto draw = [&](const CDuiString& picture) {
        return !picture.IsEmpty() && CRenderEngine::DrawImageString(dc, m_pManager, part, m_rcPaint,
                                                                    picture, nullptr, m_instance);
    };
    if (draw(*image) || (image != &look.normal && draw(look.normal)))
        return true;
    return !image->IsEmpty() || !look.normal.IsEmpty();
}

void CScrollBarUI::DrawOutline(HDC dc, const RECT& part)
{
    CRenderEngine::DrawRect(dc, part, kOutlineWidth, GetAdjustColor(kOutlineColor));
}

} // namespace DuiLib
