#pragma once

#include <UIlib.h>

// The few places where one toolkit spells something differently from another. Everything else in
// the library uses the forms that all of them share.
namespace Quillet::Toolkit {

// The DPI of the monitor that a window stands on, or of the main monitor where the toolkit's
// operation takes no window.
template <class Dpi = DuiLib::CDPI>
unsigned MonitorDpiOf(HWND window)
{
    if constexpr (requires { Dpi::GetMainMonitorDPI(window); })
        return static_cast<unsigned>(Dpi::GetMainMonitorDPI(window));
    else
        return static_cast<unsigned>(Dpi::GetMainMonitorDPI());
}

// Names the control that runs an animation's timers.
template <class Animation>
void AttachOwner(Animation& animation, DuiLib::CControlUI* owner)
{
    if constexpr (requires { animation.Attach(owner); })
        animation.Attach(owner);
}

} // namespace Quillet::Toolkit
