#include "Control/UITrayIcon.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"

#include <shellapi.h>
#include <wchar.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace DuiLib {

CTrayIcon::CTrayIcon() : m_hWnd(nullptr), m_nIconId(0), m_hIcon(nullptr) {}

CTrayIcon::~CTrayIcon()
{
    DeleteTrayIcon();
}

void CTrayIcon::CreateTrayIcon(HWND receiver, UINT iconId, LPCTSTR tip, UINT message)
{
    DeleteTrayIcon();
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof(data);
    data.hWnd = receiver;
    data.uID = iconId;
    data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    data.uCallbackMessage = message != 0 ? message : UIMSG_TRAYICON;
    m_hIcon = static_cast<HICON>(::LoadImageW(
        CPaintManagerUI::GetInstance(), MAKEINTRESOURCEW(iconId), IMAGE_ICON,
        ::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON), LR_DEFAULTCOLOR));
    data.hIcon = m_hIcon;
    if (tip != nullptr)
        std::copy_n(tip, std::min(::wcslen(tip), std::size(data.szTip) - 1), data.szTip);
    if (::Shell_NotifyIconW(NIM_ADD, &data)) {
        m_hWnd = receiver;
        m_nIconId = iconId;
        return;
    }
    if (m_hIcon != nullptr)
        ::DestroyIcon(std::exchange(m_hIcon, nullptr));
}

void CTrayIcon::DeleteTrayIcon()
{
    if (m_hWnd != nullptr) {
        NOTIFYICONDATAW data{};
        data.cbSize = sizeof(data);
        data.hWnd = std::exchange(m_hWnd, nullptr);
        data.uID = m_nIconId;
        ::Shell_NotifyIconW(NIM_DELETE, &data);
    }
    if (m_hIcon != nullptr)
        ::DestroyIcon(std::exchange(m_hIcon, nullptr));
}

} // namespace DuiLib
