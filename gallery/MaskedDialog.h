#pragma once

#include <quillet/quillet.h>

#include <optional>

namespace gallery {

// A modal page over the dimmed main window.
class MaskedDialog {
public:
    // Opens it hidden, with the scale and the font of the main window; with keepTitle the title
    // strip of the parent stays free. False when there is no window.
    bool Open(HWND parent, DuiLib::CPaintManagerUI& main, bool keepTitle);

    UINT ShowModal(); // IDOK or IDCANCEL; 0 when it was closed otherwise
    void Show();
    void Close(); // at once

    // After the parent has moved.
    void Follow();

private:
    std::optional<UIWindow> m_window; // the one opened last
    HWND m_handle = nullptr;
};

} // namespace gallery
