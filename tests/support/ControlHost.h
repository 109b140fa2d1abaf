#pragma once

#include <UIlib.h>

#include "support/Picture.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

// A notification as the window received it.
struct Notification {
    std::wstring type;
    std::wstring senderName;
    DuiLib::CControlUI* sender;
    WPARAM wParam;
    LPARAM lParam;
};

// A running control timer of the host's manager.
struct HostTimer {
    UINT_PTR id;
    UINT period; // milliseconds
};

// A real window at the screen's top left, with a paint manager and a container as root.
//
// Mouse and keyboard are messages, delivered at once. The clock belongs to the host: control timers
// tick only in AdvanceFrames.
class ControlHost {
public:
    ControlHost(int width, int height, int dpi = 96);
    ~ControlHost();
    ControlHost(const ControlHost&) = delete;
    ControlHost& operator=(const ControlHost&) = delete;

    // Makes a control that fills the client area. The host's root owns it.
    template <class Control, class... Arguments>
    Control& Add(Arguments&&... arguments)
    {
        auto control = std::make_unique<Control>(std::forward<Arguments>(arguments)...);
        Control& added = *control;
        Adopt(control.release());
        return added;
    }
    void Adopt(DuiLib::CControlUI* control);

    // Builds a skin text, with its <Window> element around the controls, and makes it the root;
    // null when it cannot be built.
    DuiLib::CControlUI* Load(const wchar_t* skin,
                             DuiLib::IDialogBuilderCallback* callback = nullptr);

    // The control of that name as the given class; the test fails when there is none.
    template <class Control>
    Control& Find(const wchar_t* name)
    {
        return *static_cast<Control*>(FindOrThrow(name));
    }

    DuiLib::CPaintManagerUI& Manager();
    HWND Window() const;
    DuiLib::CControlUI* Root();
    void Resize(int width, int height);

    void Layout();
    Picture Paint();        // lays out, paints the window, then paints once more into a picture
    Picture Screen() const; // what the window shows now

    void MoveMouse(int x, int y);
    void LeaveMouse();
    void Press(int x, int y);
    void Release(int x, int y);
    void Click(int x, int y);
    void DoubleClick(int x, int y);
    void RightClick(int x, int y);
    void Wheel(int x, int y, int delta);

    // As the message loop delivers them: filters and Tab handling first.
    void KeyDown(int virtualKey);
    void KeyUp(int virtualKey);
    void Key(int virtualKey); // down, then up
    void Char(wchar_t character);

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void Pump(); // dispatches what is queued, waits for nothing

    const std::vector<Notification>& Sent() const;
    std::vector<Notification> Sent(const wchar_t* type) const;
    void ClearSent();

    std::vector<HostTimer> Timers() const;
    void AdvanceFrames(int count); // fires every running timer that many times

private:
    class HostWindow;

    DuiLib::CControlUI* FindOrThrow(const wchar_t* name);
    void Deliver(UINT message, WPARAM wParam, LPARAM lParam);

    std::unique_ptr<HostWindow> m_window;
};

} // namespace test
