#pragma once

#include "tests/quillet/frame/RecordingController.h"

#include <memory>
#include <utility>

namespace test {

inline constexpr wchar_t kFrameSkin[] =
    L"<Window size=\"200,100\"><VerticalLayout>"
    L"<Button name=\"save\" height=\"30\"/><Button name=\"closebtn\" height=\"30\"/>"
    L"<Edit name=\"edit\" height=\"30\"/></VerticalLayout></Window>";

// A window of the frame with the controllers "1" and "2", which share a log.
class FrameHost {
public:
    FrameHost()
    {
        window.AddUIController(first);
        window.AddUIController(second);
        log.clear();
    }
    ~FrameHost() { Destroy(); }
    FrameHost(const FrameHost&) = delete;
    FrameHost& operator=(const FrameHost&) = delete;

    HWND Make(HWND parent = nullptr, const wchar_t* skin = kFrameSkin)
    {
        handle = window.Create(parent, L"Test", skin, WS_POPUP, 0, false, false);
        return handle;
    }
    void Destroy()
    {
        if (::IsWindow(handle))
            ::DestroyWindow(handle);
    }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendMessageW(handle, message, wParam, lParam);
    }
    DuiLib::CPaintManagerUI& Manager() { return first->GetPaintManagerUI(); }
    DuiLib::CControlUI* Control(const wchar_t* name) { return first->GetControl(name); }

    // Dispatches what is queued and waits for nothing.
    static void Pump()
    {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            if (!DuiLib::CPaintManagerUI::TranslateMessage(&message))
                ::DispatchMessageW(&message);
    }

    // What was noted since the last time.
    RecordingController::Log TakeLog() { return std::exchange(log, {}); }

    RecordingController::Log log;
    std::shared_ptr<RecordingController> first = std::make_shared<RecordingController>(log, "1");
    std::shared_ptr<RecordingController> second = std::make_shared<RecordingController>(log, "2");
    UIWindow window;
    HWND handle = nullptr;
};

} // namespace test
