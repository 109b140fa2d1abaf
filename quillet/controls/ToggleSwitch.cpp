#include "quillet/controls/ToggleSwitch.h"

#include <cstdlib>
#include <span>

#include "quillet/ToolkitCompat.h"
#include "quillet/resources/Utils.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

constexpr wchar_t kToggled[] = L"UIToggleSwitch_Toggled";

constexpr int kAnimation = 0;    // the number of the only one
constexpr int kFramePeriod = 10; // milliseconds
constexpr int kPixelsPerFrame = 2;

constexpr DWORD kTrackOn = 0xFF007DFF;
constexpr DWORD kTrackOff = 0xFFDEDEDE;
constexpr DWORD kTrackDisabled = 0xFFCCCCCC;
constexpr DWORD kHoverSheen = 0x44FFFFFF;
constexpr DWORD kKnobFace = 0xFFFFFFFF;
constexpr DWORD kKnobShadow = 0x33000000;

constexpr int kShadowOffset = 3;        // pixels to the right and below the knob
constexpr int kLargestKnob = 4096;      // pixels; larger than any screen
constexpr int kShadowMagnification = 4; // a small ellipse drawn this much larger is a soft one

// How far the knob slides between its resting places.
int TravelOf(const RECT& switchRect)
{
    const int width = switchRect.right - switchRect.left;
    const int height = switchRect.bottom - switchRect.top;
    return width - height - 1;
}

} // namespace

// The state of a switch and the animation of its knob.
class UIToggleSwitchHelper : public CUIAnimation {
public:
    explicit UIToggleSwitchHelper(CToggleSwitchUI* owner) : m_pOwner(owner)
    {
        Quillet::Toolkit::AttachOwner(*this, owner);
    }

    void SetOn(bool on)
    {
        if (m_bOn != on) {
            m_bOn = on;
            Rest();
        }
        m_pOwner->Invalidate();
    }

    void Toggle(bool on)
    {
        if (m_bOn == on)
            return;
        m_bOn = on;
        StopAnimation(kAnimation);

        // Published: the knob starts at the far end even when it was on its way, and at two pixels
        // a frame an odd travel begins one pixel short.
        const int travel = TravelOf(m_pOwner->GetPos());
        const int frames = travel / kPixelsPerFrame;
        m_bAnimating = true;
        m_nOffset = on ? -travel : travel;
        const bool started = m_pOwner->GetManager() && frames > 0 &&
                             StartAnimation(kFramePeriod, frames, kAnimation);
        if (!started) {
            Rest();
            m_pOwner->Invalidate();
        }
    }

    // CUIAnimation:
    void OnAnimationStep(int totalFrames, int currentFrame, int) override
    {
        const int left = (totalFrames - currentFrame) * kPixelsPerFrame;
        m_nOffset = m_bOn ? -left : left;
        m_pOwner->Invalidate();
    }

    void OnAnimationStop(int) override
    {
        m_bAnimating = false;
        m_pOwner->Invalidate();
    }

    bool OnNotify(void* parameter)
    {
        const auto& notification = *static_cast<TNotifyUI*>(parameter);
        if (notification.pSender == m_pOwner && notification.sType == DUI_MSGTYPE_TIMER)
            OnAnimationElapse(static_cast<int>(notification.wParam));
        return true;
    }

    int m_nPadding = 3; // pixels between the track's edge and the knob
    bool m_bOn = false;
    bool m_bToggleOnClick = true;
    bool m_bHover = false;
    bool m_bPressed = false;
    bool m_bAnimating = false;
    int m_nOffset = 0; // pixels from the knob's resting place, while animating
    CToggleSwitchUI* m_pOwner;
    std::unique_ptr<Gdiplus::Bitmap> m_pShadow; // of the knob's size at the last paint

private:
    void Rest()
    {
        StopAnimation(kAnimation);
        m_bAnimating = false;
        m_nOffset = 0;
    }
};

namespace {

// Where everything goes, worked out once per paint.
struct SwitchGeometry {
    Gdiplus::Rect leftCap, middle, rightCap, knob;
    int travel;
};

SwitchGeometry Measure(const RECT& switchRect, const UIToggleSwitchHelper& state)
{
    const int left = switchRect.left;
    const int top = switchRect.top;
    const int right = switchRect.right - 1;
    const int bottom = switchRect.bottom - 1;
    const int diameter = bottom - top;

    const int knob = diameter - 2 * state.m_nPadding;
    const int knobAtRest =
        state.m_bOn ? right - state.m_nPadding - knob - 1 : left + state.m_nPadding;
    const int knobLeft = knobAtRest + (state.m_bAnimating ? state.m_nOffset : 0);

    return {.leftCap = {left, top, diameter, diameter},
            .middle = {left + diameter / 2 - 1, top, right - left - diameter + 1, diameter},
            .rightCap = {right - diameter - 1, top, diameter, diameter},
            .knob = {knobLeft, top + state.m_nPadding, knob, knob},
            .travel = TravelOf(switchRect)};
}

Gdiplus::Color TrackColour(const UIToggleSwitchHelper& state, bool enabled, int travel)
{
    const Gdiplus::Color current(state.m_bOn ? kTrackOn : kTrackOff);
    // Published: a moving switch fades between its two colours, also when it is disabled.
    if (state.m_bAnimating) {
        const Gdiplus::Color previous(state.m_bOn ? kTrackOff : kTrackOn);
        const auto whole = static_cast<float>(travel);
        const auto left = static_cast<float>(std::abs(state.m_nOffset));
        return Utils::GetTransitionColor(previous, current,
                                         travel != 0 ? (whole - left) / whole : 1.0f);
    }
    return enabled ? current : Gdiplus::Color(kTrackDisabled);
}

void PaintTrack(Gdiplus::Graphics& graphics, const SwitchGeometry& geometry,
                const Gdiplus::Color& colour, bool hover)
{
    const Gdiplus::SolidBrush track(colour);
    const Gdiplus::SolidBrush sheen{Gdiplus::Color(kHoverSheen)};
    const Gdiplus::Brush* const both[] = {&track, &sheen};
    const std::span coats(both, hover ? 2 : 1);

    // The pieces overlap, so each gets all its coats before the next is drawn.
    for (const auto* coat : coats)
        graphics.FillPie(coat, geometry.leftCap, 90, 180);
    for (const auto* coat : coats)
        graphics.FillRectangle(coat, geometry.middle);
    for (const auto* coat : coats)
        graphics.FillPie(coat, geometry.rightCap, -90, 180);
}

std::unique_ptr<Gdiplus::Bitmap> DrawShadow(Gdiplus::Graphics& graphics, int size)
{
    auto shadow = std::make_unique<Gdiplus::Bitmap>(size, size, &graphics);
    Gdiplus::Graphics canvas(shadow.get());
    const Gdiplus::SolidBrush brush{Gdiplus::Color(kKnobShadow)};
    canvas.FillEllipse(&brush, 0, 0, size, size);
    return shadow;
}

void PaintKnobShadow(Gdiplus::Graphics& graphics, const Gdiplus::Rect& knob,
                     std::unique_ptr<Gdiplus::Bitmap>& shadow)
{
    const int size = knob.Width / kShadowMagnification;
    if (size <= 0)
        return;
    if (!shadow || shadow->GetWidth() != static_cast<UINT>(size))
        shadow = DrawShadow(graphics, size);

    const auto saved = graphics.Save();
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBilinear);
    graphics.DrawImage(shadow.get(), knob.X + kShadowOffset, knob.Y + kShadowOffset, knob.Width,
                       knob.Height);
    graphics.Restore(saved);
}

void PaintKnob(Gdiplus::Graphics& graphics, const Gdiplus::Rect& knob)
{
    const Gdiplus::SolidBrush face{Gdiplus::Color(kKnobFace)};
    graphics.FillEllipse(&face, knob);
}

} // namespace

CControlUI* CToggleSwitchUI::CreateControl()
{
    return new CToggleSwitchUI;
}

CToggleSwitchUI::CToggleSwitchUI() : m_pHelper(std::make_shared<UIToggleSwitchHelper>(this))
{
    OnNotify += MakeDelegate(m_pHelper.get(), &UIToggleSwitchHelper::OnNotify);
    SetCursor(DUI_HAND);
    // Published: the background is red; the switch's own painting covers its face.
    SetBkColor(0xFFFF0000);
}

CToggleSwitchUI::~CToggleSwitchUI() = default;

bool CToggleSwitchUI::IsOn() const
{
    return m_pHelper->m_bOn;
}

void CToggleSwitchUI::SetOn(bool on)
{
    m_pHelper->SetOn(on);
}

void CToggleSwitchUI::Toggle(bool on)
{
    m_pHelper->Toggle(on);
}

void CToggleSwitchUI::SetToggleOnClick(bool toggle)
{
    m_pHelper->m_bToggleOnClick = toggle;
}

LPCTSTR CToggleSwitchUI::GetClass() const
{
    return L"ToggleSwitchUI";
}

LPVOID CToggleSwitchUI::GetInterface(LPCTSTR name)
{
    if (name && Quillet::Text::EqualsNoCase(name, L"ToggleSwitch"))
        return this;
    return CControlUI::GetInterface(name);
}

UINT CToggleSwitchUI::GetControlFlags() const
{
    return IsEnabled() ? UIFLAG_SETCURSOR : CControlUI::GetControlFlags();
}

void CToggleSwitchUI::DoEvent(TEventUI& event)
{
    // A handler of a notification may delete the switch.
    const std::weak_ptr<UIToggleSwitchHelper> watch = m_pHelper;
    auto& state = *m_pHelper;

    switch (event.Type) {
    case UIEVENT_MOUSEENTER:
        if (IsEnabled())
            state.m_bHover = true;
        break;

    case UIEVENT_MOUSELEAVE:
        state.m_bHover = false;
        break;

    case UIEVENT_BUTTONDOWN:
        if (IsEnabled())
            state.m_bPressed = true;
        break;

    case UIEVENT_BUTTONUP:
        state.m_bPressed = false;
        if (!::PtInRect(&m_rcItem, event.ptMouse) || !IsEnabled())
            break;
        if (state.m_bToggleOnClick)
            Toggle(!state.m_bOn);
        // Published: sent after every click, also when the state stays as it is.
        if (GetManager())
            GetManager()->SendNotify(this, kToggled, state.m_bOn, 0);
        break;
    }
    if (watch.expired())
        return;

    CControlUI::DoEvent(event);
    if (!watch.expired() && !state.IsAnimationRunning(kAnimation))
        Invalidate();
}

bool CToggleSwitchUI::DoPaint(HDC dc, const RECT& dirty, CControlUI*)
{
    DoPaint(dc, dirty);
    return true;
}

void CToggleSwitchUI::DoPaint(HDC dc, const RECT&)
{
    Gdiplus::Graphics graphics(dc);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);

    auto& state = *m_pHelper;
    const auto geometry = Measure(GetPos(), state);
    const bool hover = state.m_bHover && !state.m_bPressed;

    // Of a huge switch only a part can be seen, and GDI+ works through the whole ellipses.
    if (geometry.knob.Width > kLargestKnob)
        return;
    PaintTrack(graphics, geometry, TrackColour(state, IsEnabled(), geometry.travel), hover);
    PaintKnobShadow(graphics, geometry.knob, state.m_pShadow);
    PaintKnob(graphics, geometry.knob);
}

} // namespace DuiLib
