#pragma once

#include <UIlib.h>

#include <string>

// Small steps in which the dialogs fill their skins; a control that the skin lacks is skipped.
namespace Quillet::Dialogs {

// Null when the skin lacks the control or it is of another class.
template <class Control>
Control* FindSkinControl(DuiLib::CPaintManagerUI& manager, const wchar_t* name)
{
    return dynamic_cast<Control*>(manager.FindControl(name));
}

inline void SetTextUnlessEmpty(DuiLib::CControlUI* control, const std::wstring& text)
{
    if (control && !text.empty())
        control->SetText(text.c_str());
}

inline void SetVisible(DuiLib::CControlUI* control, bool visible)
{
    if (control)
        control->SetVisible(visible);
}

// ARGB; nothing happens to a control that shows no text.
inline void SetTextColour(DuiLib::CControlUI* control, DWORD colour)
{
    if (auto* const label = dynamic_cast<DuiLib::CLabelUI*>(control))
        label->SetTextColor(colour);
}

// The handler gets the control's notifications as TNotifyUI*.
inline void Listen(DuiLib::CControlUI* control, const DuiLib::CDelegateBase& handler)
{
    if (control)
        control->OnNotify += handler;
}

} // namespace Quillet::Dialogs
