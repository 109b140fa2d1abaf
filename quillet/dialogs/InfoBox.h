#pragma once

#include <UIlib.h>

#include <memory>
#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/DialogWindow.h"

namespace DuiLib {

// A toast: a line of text that goes away after three seconds. The skin is "MessageBox03.xml" with
// the label "lab_text". The caller creates and shows the window and owns the object, which must
// outlive it:
//
//     UIInfoBox toast(L"Copied");
//     toast.Create(parent, L"", WS_POPUP, WS_EX_TOPMOST | WS_EX_TOOLWINDOW);
//     toast.OnSetWndPos();
class QUILLET_API UIInfoBox : public DialogWindow {
public:
    explicit UIInfoBox(std::wstring text);
    ~UIInfoBox() override;

    // Shows the window, without a change of its size, in the middle of its parent and 120 design
    // pixels above the lower edge.
    void OnSetWndPos();

    // WindowImplBaseEx:
    LRESULT OnClose(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled) override;

protected:
    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;
    LRESULT HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam) override;

    // The width of the text in device pixels; 0 without the label.
    // Published: each call takes a device context of the window for good.
    int OnCalTextWidth();

    void TimerClose(); // at once

    CLabelUI* m_pTextLabel = nullptr; // null before the window exists
    std::wstring m_strText;
    bool m_bInfo = true; // Published: has no meaning here
};

} // namespace DuiLib
