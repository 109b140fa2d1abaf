#pragma once

#include <UIlib.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "quillet/Export.h"
#include "quillet/window/WindowImplBaseEx.h"

// A small modal window that stays up while a worker thread runs the registered work, and for one
// second at least:
//
//     CommonLoadingWindow loading(parent, L"Copying...", false);
//     loading.RegitsterWaitingEvent([&] { CopyFiles(); });
//     loading.ShowWindow();
//
// The skin is "common/Loading.xml"; its control "message", if there is one, shows the message.
// All is called on the user-interface thread. The object may end before the work does, when the
// user has closed the window; the work then runs to its end, so it must own what it uses.
class QUILLET_API CommonLoadingWindow : public DuiLib::WindowImplBaseEx {
public:
    // Published: the message is also the title and the name of the window class, so an empty one
    // makes no window. The flag is kept and has no meaning here.
    CommonLoadingWindow(HWND parent, const std::wstring& message, bool flag);
    ~CommonLoadingWindow() override;

    // Work for the worker thread, run in the order of registration; before ShowWindow. It must not
    // touch controls. An exception that leaves it ends the process.
    void RegitsterWaitingEvent(const std::function<void()>& event);

    // Starts the work, shows the window and returns when it has closed. Throws std::system_error
    // when there is no thread for the work.
    void ShowWindow();

protected:
    // For derived classes that create the window and start the work themselves.
    void ShowWindowCore();
    void CloseWindow(); // and the mask

    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    DuiLib::CDuiString GetSkinFile() override;
    void InitWindow() override;

    std::wstring m_strMessage;
    HWND m_hParent;
    std::vector<std::function<void()>> m_vWaitingEvents;

    // Dims the parent; not owned, set by derived classes. Closed together with this window.
    DuiLib::CWindowWnd* m_pMaskLayer = nullptr;
    bool m_bFlag;
    HWND m_hMaskParent = nullptr; // the owner instead of the parent, when set

private:
    class Link;

    void CreateLMaskLayer(); // Published: creates the window itself, hidden, and no mask
    void CloseMaskLayer();
    void ExecuteWaitingEvent();

    std::shared_ptr<Link> m_pLink; // what the worker knows of this object
};
