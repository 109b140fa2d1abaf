#pragma once

#include "Core/UIManager.h"

namespace DuiLib {

// What the manager of a popup window has from that of the window that it belongs to.
struct PopupLink {
    // Gives the popup the other window's scale, and lets it find that window's fonts, pictures,
    // colours, styles and defaults where it has none of its own.
    static void Borrow(CPaintManagerUI& popup, CPaintManagerUI& main);

    // Hands a notification on to the receivers of another window. The sender's own delegates have
    // had it already.
    static void PassOn(CPaintManagerUI& main, TNotifyUI& notification);
};

} // namespace DuiLib
