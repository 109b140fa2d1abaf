#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

namespace DuiLib {

// An icon in the notification area of the task bar.
//
// Its window is sent the icon's message with wParam = the resource number and lParam = the mouse
// message. The icon goes with the object.
class UILIB_API CTrayIcon {
public:
    CTrayIcon();
    ~CTrayIcon();
    CTrayIcon(const CTrayIcon&) = delete;
    CTrayIcon& operator=(const CTrayIcon&) = delete;

    // The window that is told, the number of an icon among the resources of
    // CPaintManagerUI::GetInstance, a tip of at most 127 characters, and the message; 0 is
    // UIMSG_TRAYICON. Replaces an icon that is there.
    void CreateTrayIcon(HWND receiver, UINT iconId, LPCTSTR tip = NULL, UINT message = 0);
    void DeleteTrayIcon();

private:
    HWND m_hWnd;
    UINT m_nIconId;
    HICON m_hIcon;
};

} // namespace DuiLib
