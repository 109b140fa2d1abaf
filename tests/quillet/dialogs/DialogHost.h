#pragma once

#include "support/ObjectCounters.h"
#include "support/TempFolder.h"
#include "tests/quillet/window/TestWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace test {

// A folder of skins for every dialog, each with all the controls that its dialog looks for. It is
// the resource folder while the object lives.
class DialogSkins {
public:
    DialogSkins()
    {
        Write(L"Confirmation.xml", Confirmation());
        Write(L"common/Loading.xml",
              Skin(L"<Label name=\"message\" height=\"30\"/><Label name=\"other\"/>"));
        for (const wchar_t* const name : {L"MessageBox.xml", L"MessageBox02.xml"})
            Write(name, MessageBox());
        Write(L"MessageBox03.xml", Skin(L"<Label name=\"lab_text\"/>"));
        Write(L"PromptWnd.xml",
              Skin(L"<Label name=\"titleText\" height=\"30\"/><Label name=\"delText\"/>"
                   L"<Button name=\"cancel\" height=\"30\"/><Button name=\"ok\" height=\"30\"/>"
                   L"<Button name=\"close\" height=\"30\"/>"));
        Write(L"Loading.xml",
              Skin(L"<Label name=\"loadingText\" height=\"30\"/><Control name=\"loadingGif\"/>"));
        Write(L"ViewContacts.xml",
              Skin(L"<Label name=\"lab_caption\" height=\"30\"/><Label name=\"lab_text\"/>"
                   L"<Button name=\"btn_ViewContacts\" height=\"30\"/>"
                   L"<Button name=\"btn_ok\" height=\"30\"/>"
                   L"<Button name=\"btn_close\" height=\"30\"/>"));
        Write(L"HomePageTools/PrintShadow.xml",
              L"<Window opacity=\"120\"><VerticalLayout bkcolor=\"#FF203040\"/></Window>");
        DuiLib::CPaintManagerUI::SetResourcePath(m_folder.Path().c_str());
    }
    ~DialogSkins() { DuiLib::CPaintManagerUI::SetResourcePath(L""); }
    DialogSkins(const DialogSkins&) = delete;
    DialogSkins& operator=(const DialogSkins&) = delete;

    // Instead of the skin of that name; before the dialog is opened.
    void Write(std::wstring_view name, const std::wstring& skin) const
    {
        m_folder.Write(name, Utf8(skin));
    }

    // A window of 300 x 200 design pixels with these controls below each other.
    static std::wstring Skin(const std::wstring& controls)
    {
        return L"<Window size=\"300,200\"><Font id=\"0\" name=\"Tahoma\" size=\"12\" "
               L"default=\"true\"/><VerticalLayout>" +
               controls + L"</VerticalLayout></Window>";
    }
    static std::wstring Confirmation()
    {
        return Skin(L"<Label name=\"header\" text=\"skin header\" height=\"30\"/>"
                    L"<Label name=\"content\" text=\"skin content\" height=\"40\"/>"
                    L"<Button name=\"confirm\" text=\"skin confirm\" height=\"30\"/>"
                    L"<Button name=\"reject\" text=\"skin reject\" height=\"30\"/>"
                    L"<Button name=\"close\" height=\"30\"/>"
                    L"<Button name=\"other\" height=\"30\"/>");
    }
    static std::wstring MessageBox()
    {
        return Skin(L"<Label name=\"lab_caption\" height=\"20\"/>"
                    L"<Button name=\"btn_close\" height=\"20\"/>"
                    L"<Control name=\"lab_divide\" height=\"1\"/>"
                    L"<Label name=\"lab_text\" height=\"30\"/>"
                    L"<Label name=\"lab_tip\" height=\"20\"/>"
                    L"<CheckBox name=\"checkbox_tip\" height=\"20\"/>"
                    L"<Button name=\"btn_ok\" height=\"20\"/>"
                    L"<Button name=\"btn_cancel\" height=\"20\"/>"
                    L"<Button name=\"other\" height=\"20\"/>");
    }

private:
    TempFolder m_folder;
};

// A plain window that dialogs are opened over, at (100, 100), 400 x 300 pixels.
class DialogParent : public DuiLib::CWindowWnd {
public:
    explicit DialogParent(HWND owner = nullptr)
    {
        Create(owner, L"", WS_POPUP | WS_VISIBLE, 0, 100, 100, 400, 300);
    }
    ~DialogParent() { Destroy(); }

    void Destroy()
    {
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
    }
    bool IsEnabled() const { return ::IsWindowEnabled(m_hWnd); }

    std::function<void(UINT message)> onMessage; // before the window handles it

protected:
    LPCTSTR GetWindowClassName() const override { return L"DialogTestParent"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (onMessage)
            onMessage(message);
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }
};

// Actions that run inside whatever message loop runs next, each in a message of its own, in the
// order in which they were posted.
class LoopActions : public DuiLib::CWindowWnd {
public:
    LoopActions() { Create(HWND_MESSAGE, L"", 0, 0, 0, 0, 0, 0); }
    ~LoopActions() { ::DestroyWindow(m_hWnd); }

    void Post(std::function<void()> action)
    {
        m_actions.push_back(std::move(action));
        ::PostMessageW(m_hWnd, WM_APP, 0, 0);
    }

    // In a timer's message that is as good as due.
    void PostTimer(std::function<void()> action)
    {
        m_actions.push_back(std::move(action));
        ::PostMessageW(m_hWnd, WM_TIMER, 1, 0);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"DialogTestLoopActions"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_APP && message != WM_TIMER)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        const auto action = std::move(m_actions.front());
        m_actions.pop_front();
        action();
        return 0;
    }

private:
    std::deque<std::function<void()>> m_actions;
};

// The manager that paints the window; null for other windows.
inline DuiLib::CPaintManagerUI* ManagerOf(HWND window)
{
    const DuiLib::CStdPtrArray& managers = *DuiLib::CPaintManagerUI::GetPaintManagers();
    for (int i = 0; i < managers.GetSize(); ++i) {
        auto* const manager = static_cast<DuiLib::CPaintManagerUI*>(managers.GetAt(i));
        if (manager->GetPaintWindow() == window)
            return manager;
    }
    return nullptr;
}

// Null when the window has no such control.
template <class Control = DuiLib::CControlUI>
Control* ControlOf(HWND window, const wchar_t* name)
{
    DuiLib::CPaintManagerUI* const manager = ManagerOf(window);
    return manager ? dynamic_cast<Control*>(manager->FindControl(name)) : nullptr;
}

// With the mouse, in the middle of the control. The window has to be shown.
inline void ClickControl(HWND window, const wchar_t* name)
{
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const auto* const control = ControlOf(window, name);
    ASSERT_NE(control, nullptr);
    const RECT place = control->GetPos();
    ASSERT_FALSE(::IsRectEmpty(&place));
    const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ::SendMessageW(window, WM_MOUSEMOVE, 0, point);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    ::SendMessageW(window, WM_LBUTTONUP, 0, point);
}

// Dispatches what is queued and waits for nothing.
inline void Pump()
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (!DuiLib::CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

// Expects that doing it so many times leaves as many objects and as much memory as before.
//
// A system under load may fall behind with what it keeps of windows that have gone, so growth has
// to show in several tries.
template <class Action>
void ExpectNoGrowth(int times, Action action)
{
    constexpr int kTries = 5;
    action();
    action();
    int gdi = INT_MAX;
    int windows = INT_MAX;
    int blocks = INT_MAX;
    for (int i = 0; i < kTries && (gdi > 0 || windows > 0 || blocks > 0); ++i) {
        const int gdiBefore = GdiObjects();
        const int windowsBefore = UserWindows();
        const int blocksBefore = HeapBlocks();
        for (int j = 0; j < times; ++j)
            action();
        gdi = std::min(gdi, GdiObjects() - gdiBefore);
        windows = std::min(windows, UserWindows() - windowsBefore);
        blocks = std::min(blocks, HeapBlocks() - blocksBefore);
    }
    EXPECT_LE(gdi, 0) << GdiObjectKinds();
    EXPECT_LE(windows, 0);
    EXPECT_LE(blocks, 0);
}

} // namespace test
