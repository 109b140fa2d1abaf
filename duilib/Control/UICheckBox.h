#pragma once

#include "Control/UIOption.h"

namespace DuiLib {

// An option used as a check box.
//
// XML class "CheckBox". With automatic check, attribute "EnableAutoCheck", a press toggles it at
// once and sends "checkclick"; there is no "click" then.
class UILIB_API CCheckBoxUI : public COptionUI {
public:
    static CControlUI* CreateControl();

    CCheckBoxUI();
    ~CCheckBoxUI() override;
    CCheckBoxUI(const CCheckBoxUI&) = default;
    CCheckBoxUI& operator=(const CCheckBoxUI&) = default;

    void SetCheck(bool check);
    bool GetCheck() const;
    void SetAutoCheck(bool enable);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    bool m_bAutoCheck;
};

} // namespace DuiLib
