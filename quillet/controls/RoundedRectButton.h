#pragma once

#include <UIlib.h>

#include <memory>

#include "quillet/Export.h"

namespace DuiLib {

// A blue rounded button of 40 pixels' height, drawn from four pictures of the application's
// resources. Texts and colours per state and the corner width are kept for the application to read.
//
// XML class "RoundedRectButtonUI", attributes "text" and "roundwidth" beside those of a button.
// Sends "click" as a button does.
class QUILLET_API CRoundedRectButtonUI : public CButtonUI {
public:
    enum StateRole { Normal = 0, Hot = 1, Pushed = 2, Disabled = 3, Checked = 4 };

    static CControlUI* CreateControl();

    CRoundedRectButtonUI();
    ~CRoundedRectButtonUI() override;
    CRoundedRectButtonUI(const CRoundedRectButtonUI&) = delete;
    CRoundedRectButtonUI& operator=(const CRoundedRectButtonUI&) = delete;

    // Per state. The text of the normal state is what the button shows.
    void SetText(const CDuiString& text, StateRole role);
    void SetTextColor(DWORD colour, StateRole role);
    void SetBackgroundColor(DWORD colour, StateRole role);
    void SetBorderColor(DWORD colour, StateRole role);
    CDuiString GetText(StateRole role) const; // empty when never set
    DWORD GetTextColor(StateRole role) const; // 0 when never set
    DWORD GetBackgroundColor(StateRole role) const;
    DWORD GetBorderColor(StateRole role) const;
    using CButtonUI::GetBorderColor;
    using CButtonUI::GetText;
    using CButtonUI::GetTextColor;
    using CButtonUI::SetBorderColor;
    using CButtonUI::SetText;
    using CButtonUI::SetTextColor;

    void SetRoundedWidth(int width); // design pixels, scaled by the main monitor's DPI
    int GetRoundedWidth() const;     // device pixels
    void SetCheckable(bool checkable);
    bool IsCheckable() const;
    void SetChecked(bool checked);
    bool IsChecked() const;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetEnabled(bool enable = true) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void DoEvent(TEventUI& event) override;
    bool DoPaint(HDC dc, const RECT& dirty, CControlUI* stopAt) override;

protected:
    CDuiString m_sNotifyType; // "click"

private:
    struct State;
    std::unique_ptr<State> m_pState;
};

} // namespace DuiLib
