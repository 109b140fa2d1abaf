#pragma once

#include <UIlib.h>

#include <memory>

#include "quillet/Export.h"

namespace DuiLib {

class UIToggleSwitchHelper;

// An on/off switch: a pill-shaped track and a knob that slides between its ends.
//
// XML class "ToggleSwitchUI", no attributes of its own. Releasing the mouse over the enabled switch
// flips it and sends "UIToggleSwitch_Toggled" with wParam = the state.
class QUILLET_API CToggleSwitchUI : public CControlUI {
public:
    static CControlUI* CreateControl();

    CToggleSwitchUI();
    ~CToggleSwitchUI() override;
    CToggleSwitchUI(const CToggleSwitchUI&) = delete;
    CToggleSwitchUI& operator=(const CToggleSwitchUI&) = delete;

    bool IsOn() const;
    void SetOn(bool on);  // at once, without animation or notification
    void Toggle(bool on); // slides there, without notification

    // Whether a click flips the switch, as it does at first. The notification is sent either way.
    void SetToggleOnClick(bool toggle);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    bool DoPaint(HDC dc, const RECT& dirty, CControlUI* stopAt) override; // calls the next one

protected:
    void DoPaint(HDC dc, const RECT& dirty);

    // CControlUI:
    void DoEvent(TEventUI& event) override;

private:
    std::shared_ptr<UIToggleSwitchHelper> m_pHelper; // shared with nobody, watched during events
};

} // namespace DuiLib
