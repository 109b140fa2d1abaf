#pragma once

#include "support/ControlHost.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

// Receives the commands of menus in a window.
class MenuCommands : public DuiLib::IMessageFilterUI {
public:
    struct Received {
        std::unique_ptr<DuiLib::MenuCmd> command;
        DuiLib::CMenuElementUI* element; // alive on arrival, unless a handler ended it meanwhile
    };

    explicit MenuCommands(DuiLib::CPaintManagerUI& manager) : m_manager(manager)
    {
        m_manager.AddMessageFilter(this);
    }
    ~MenuCommands() { m_manager.RemoveMessageFilter(this); }
    MenuCommands(const MenuCommands&) = delete;
    MenuCommands& operator=(const MenuCommands&) = delete;

    LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, bool&) override
    {
        if (message == WM_NCACTIVATE)
            looksActive = wParam != 0;
        if (message == WM_MENUCLICK) {
            received.push_back(
                {std::unique_ptr<DuiLib::MenuCmd>(reinterpret_cast<DuiLib::MenuCmd*>(wParam)),
                 reinterpret_cast<DuiLib::CMenuElementUI*>(lParam)});
            if (onCommand)
                onCommand();
        }
        return 0;
    }

    std::vector<Received> received;
    std::function<void()> onCommand;
    bool looksActive = false;

private:
    DuiLib::CPaintManagerUI& m_manager;
};

// The open menu windows of this thread, in the order in which they were opened.
inline std::vector<DuiLib::CMenuWnd*> OpenMenus()
{
    std::vector<DuiLib::CMenuWnd*> menus;
    DuiLib::MenuObserverImpl::Iterator all(DuiLib::CMenuWnd::GetGlobalContextMenuObserver());
    while (DuiLib::MenuMenuReceiverImplBase* const receiver = all.next()) {
        auto* const menu = dynamic_cast<DuiLib::CMenuWnd*>(receiver);
        if (menu && ::IsWindow(menu->GetHWND()))
            menus.push_back(menu);
    }
    return menus;
}

inline RECT PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

inline RECT WorkArea()
{
    RECT area{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

// As a message loop delivers it.
inline void PressKey(HWND window, int virtualKey, UINT type = WM_KEYDOWN)
{
    MSG message{};
    message.hwnd = window;
    message.message = type;
    message.wParam = static_cast<WPARAM>(virtualKey);
    message.lParam = 1;
    if (!DuiLib::CPaintManagerUI::TranslateMessage(&message))
        ::DispatchMessageW(&message);
}

inline LPARAM MiddleOf(const DuiLib::CControlUI& control)
{
    const RECT& place = control.GetPos();
    return MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

inline void PointAt(const DuiLib::CControlUI& control)
{
    const HWND window = control.GetManager()->GetPaintWindow();
    ::UpdateWindow(window);
    ::SendMessageW(window, WM_MOUSEMOVE, 0, MiddleOf(control));
}

inline void ClickOn(const DuiLib::CControlUI& control)
{
    const HWND window = control.GetManager()->GetPaintWindow();
    PointAt(control);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(control));
    ::SendMessageW(window, WM_LBUTTONUP, 0, MiddleOf(control));
}

// Fires the timers of a menu window that run now, without waiting for them.
class MenuClock {
public:
    MenuClock();
    ~MenuClock();
    MenuClock(const MenuClock&) = delete;
    MenuClock& operator=(const MenuClock&) = delete;

    void Tick(HWND window);
    int Running(HWND window) const;

private:
    struct Hooks;
    std::unique_ptr<Hooks> m_hooks;
};

} // namespace test
