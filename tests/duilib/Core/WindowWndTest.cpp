#include <UIlib.h>

#include "support/ImportHook.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <vector>

using namespace DuiLib;

namespace {

constexpr UINT kRun = WM_APP + 50; // runs TestWindow::action

class TestWindow : public CWindowWnd {
public:
    explicit TestWindow(bool* deleted = nullptr) : m_deleted(deleted) {}
    virtual ~TestWindow()
    {
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
        if (m_deleted != nullptr)
            *m_deleted = true;
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND Open(HWND owner = nullptr, const RECT& rect = {20, 20, 220, 120})
    {
        return Create(owner, L"test window", WS_POPUP, 0, rect);
    }

    LPCTSTR GetWindowClassName() const override { return L"DuiLib.WindowWndTest"; }

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        messages.push_back(message);
        if (message == WM_CREATE) {
            hadWindowInCreate = ::IsWindow(m_hWnd) != FALSE;
            if (refuse)
                return -1;
        }
        if (message == kRun && action) {
            const auto run = action;
            run();
            return 0;
        }
        if (message == WM_CLOSE) {
            closeCode = static_cast<int>(wParam);
            if (veto)
                return 0;
        }
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }

    void OnFinalMessage(HWND window) override
    {
        finalWindow = window;
        handleInFinal = GetHWND();
        if (deleteItself)
            delete this;
    }

    bool Got(UINT message) const
    {
        return std::find(messages.begin(), messages.end(), message) != messages.end();
    }

    std::vector<UINT> messages;
    std::function<void()> action;
    bool deleteItself = false;
    bool refuse = false;
    bool veto = false;
    bool hadWindowInCreate = false;
    int closeCode = -1;
    HWND finalWindow = nullptr;
    HWND handleInFinal = reinterpret_cast<HWND>(1);

    using CWindowWnd::m_OldWndProc;

private:
    bool* m_deleted;
};

// Whoever reads it when it has been deleted, faults.
class FencedWindow : public TestWindow {
public:
    using TestWindow::TestWindow;

    static void* operator new(std::size_t size)
    {
        return ::VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    static void operator delete(void* memory, std::size_t size)
    {
        ::VirtualFree(memory, size, MEM_DECOMMIT);
    }
};

// Its handle, once it has been opened by this function, is owned by the window itself.
TestWindow* OpenSelfDeleting(HWND owner, bool* deleted)
{
    auto* const window = new TestWindow(deleted);
    window->deleteItself = true;
    window->Open(owner);
    return window;
}

void Pump()
{
    MSG message{};
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessage(&message);
    }
}

RECT PositionOf(HWND window)
{
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return rect;
}

RECT WorkArea()
{
    RECT work{};
    ::SystemParametersInfo(SPI_GETWORKAREA, 0, &work, 0);
    return work;
}

// An EDIT control with a procedure of ours in front.
class EditWindow : public CWindowWnd {
public:
    LPCTSTR GetWindowClassName() const override { return L"DuiLib.EditWindowTest"; }
    LPCTSTR GetSuperClassName() const override { return WC_EDIT; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CHAR)
            ++characters;
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }
    void OnFinalMessage(HWND) override { ++finals; }

    int characters = 0;
    int finals = 0;
};

} // namespace

TEST(WindowWndTest, HasNoWindowBeforeCreation)
{
    TestWindow window;
    EXPECT_EQ(window.GetHWND(), nullptr);
    EXPECT_EQ(static_cast<HWND>(window), nullptr);
}

TEST(WindowWndTest, HandleMessageSeesCreationWithTheHandleSet)
{
    TestWindow window;
    const HWND handle = window.Open();
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(window.GetHWND(), handle);
    EXPECT_TRUE(window.hadWindowInCreate);
    EXPECT_TRUE(window.Got(WM_NCCREATE));

    wchar_t name[64] = {};
    ::GetClassName(handle, name, 64);
    EXPECT_STREQ(name, L"DuiLib.WindowWndTest");
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.right - position.left, 200);
}

TEST(WindowWndTest, AClassThatExistsCountsAsRegistered)
{
    TestWindow first;
    TestWindow second;
    EXPECT_TRUE(first.RegisterWindowClass());
    EXPECT_TRUE(second.RegisterWindowClass());
    EXPECT_NE(first.Open(), nullptr);
    EXPECT_NE(second.Open(), nullptr);
}

TEST(WindowWndTest, CreateDuiWindowStartsAtTheOriginWithoutSize)
{
    TestWindow window;
    const HWND handle = window.CreateDuiWindow(nullptr, L"title", WS_POPUP);
    ASSERT_NE(handle, nullptr);
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, 0);
    EXPECT_EQ(position.top, 0);
    EXPECT_EQ(position.right, 0);
}

TEST(WindowWndTest, LosesItsHandleBeforeTheFinalMessage)
{
    TestWindow window;
    const HWND handle = window.Open();
    ::DestroyWindow(handle);
    EXPECT_EQ(window.finalWindow, handle);
    EXPECT_EQ(window.handleInFinal, nullptr);
    EXPECT_EQ(window.GetHWND(), nullptr);
    EXPECT_TRUE(window.Got(WM_DESTROY));
    EXPECT_FALSE(window.Got(WM_NCDESTROY));
}

TEST(WindowWndTest, MayDeleteItselfInTheFinalMessage)
{
    bool deleted = false;
    TestWindow* const window = OpenSelfDeleting(nullptr, &deleted);
    ::DestroyWindow(*window);
    EXPECT_TRUE(deleted);
}

TEST(WindowWndTest, AWindowThatRefusesItsCreationMayDeleteItself)
{
    bool deleted = false;
    auto* const window = new TestWindow(&deleted);
    window->deleteItself = true;
    window->refuse = true;
    EXPECT_EQ(window->Open(), nullptr);
    EXPECT_TRUE(deleted);
}

TEST(WindowWndTest, MessagesWithoutAWindowDoNothing)
{
    TestWindow window;
    EXPECT_EQ(window.SendMessage(WM_CLOSE), 0);
    EXPECT_EQ(window.PostMessage(WM_CLOSE), 0);
    EXPECT_TRUE(window.messages.empty());
    window.Close();
    window.CenterWindow();
    window.ShowWindow();
    window.ResizeClient(10, 10);
    EXPECT_EQ(window.GetHWND(), nullptr);
}

TEST(WindowWndTest, SendAndPostReachTheWindow)
{
    TestWindow window;
    window.Open();
    int runs = 0;
    window.action = [&] { ++runs; };
    window.SendMessage(kRun);
    EXPECT_EQ(runs, 1);
    EXPECT_NE(window.PostMessage(kRun), 0);
    EXPECT_EQ(runs, 1);
    Pump();
    EXPECT_EQ(runs, 2);
}

TEST(WindowWndTest, ClosePostsItsCode)
{
    TestWindow window;
    const HWND handle = window.Open();
    window.Close(42);
    EXPECT_TRUE(::IsWindow(handle));
    Pump();
    EXPECT_EQ(window.closeCode, 42);
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(WindowWndTest, CloseWorksFromAnotherThread)
{
    TestWindow window;
    const HWND handle = window.Open();
    std::thread([&] { window.Close(9); }).join();
    Pump();
    EXPECT_EQ(window.closeCode, 9);
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(WindowWndTest, AMessageThatRunsOutOfMemoryIsLeftToTheSystem)
{
    class Poor : public CWindowWnd {
    public:
        UINT poorAt = 0;

    protected:
        LPCTSTR GetWindowClassName() const override { return L"DuiLib.WindowWndTest.Poor"; }
        LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == poorAt)
                throw std::bad_alloc();
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        }
    };
    Poor window;
    for (const UINT message : {WM_NCCREATE, WM_CREATE}) {
        window.poorAt = message;
        EXPECT_EQ(window.Create(nullptr, L"", WS_POPUP, 0, 0, 0, 10, 10), nullptr);
    }
    window.poorAt = WM_SETTEXT;
    CPaintManagerUI::SetLastErrorText(L"");
    const HWND handle = window.Create(nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 0, 10, 10);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(::SetWindowTextW(handle, L"set by the system"));
    EXPECT_EQ(::GetWindowTextLengthW(handle), 17);
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"out of memory");

    window.poorAt = WM_PAINT;
    ::InvalidateRect(handle, nullptr, TRUE);
    ::UpdateWindow(handle);
    EXPECT_FALSE(::GetUpdateRect(handle, nullptr, FALSE)) << "it is not asked for ever";
    ::DestroyWindow(handle);
}

TEST(WindowWndTest, ShowWindowShowsAndHides)
{
    TestWindow window;
    const HWND handle = window.Open();
    window.ShowWindow(true, false);
    EXPECT_TRUE(::IsWindowVisible(handle));
    window.ShowWindow(false);
    EXPECT_FALSE(::IsWindowVisible(handle));
    window.ShowWindow();
    EXPECT_TRUE(::IsWindowVisible(handle));
}

TEST(WindowWndTest, ShowModalReturnsTheCodeOfTheClose)
{
    TestWindow owner;
    owner.Open();
    owner.ShowWindow();
    TestWindow dialog;
    dialog.Open(owner);
    bool ownerEnabledDuring = true;
    dialog.action = [&] {
        ownerEnabledDuring = ::IsWindowEnabled(owner) != FALSE;
        owner.messages.clear();
        dialog.Close(77);
    };
    dialog.PostMessage(kRun);

    EXPECT_EQ(dialog.ShowModal(), 77u);
    EXPECT_FALSE(ownerEnabledDuring);
    EXPECT_TRUE(::IsWindowEnabled(owner));
    EXPECT_TRUE(owner.Got(WM_SETFOCUS));
    EXPECT_EQ(dialog.GetHWND(), nullptr);
}

TEST(WindowWndTest, TheOwnerIsEnabledBeforeTheCloseIsDispatched)
{
    TestWindow owner;
    owner.Open();
    TestWindow dialog;
    dialog.Open(owner);
    dialog.veto = true;
    bool ownerEnabled = false;
    dialog.action = [&] {
        ownerEnabled = ::IsWindowEnabled(owner) != FALSE;
        ::DestroyWindow(dialog);
    };
    dialog.Close(5);
    dialog.PostMessage(kRun);
    EXPECT_EQ(dialog.ShowModal(), 5u);
    EXPECT_TRUE(ownerEnabled);
}

TEST(WindowWndTest, ShowModalSurvivesAWindowThatDeletesItself)
{
    TestWindow owner;
    owner.Open();
    bool deleted = false;
    TestWindow* const dialog = OpenSelfDeleting(owner, &deleted);
    dialog->Close(3);
    EXPECT_EQ(dialog->ShowModal(), 3u);
    EXPECT_TRUE(deleted);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, ShowModalLeavesTheMemoryOfAWindowThatIsGoneAlone)
{
    TestWindow owner;
    owner.Open();
    bool deleted = false;
    TestWindow* const dialog = new FencedWindow(&deleted);
    dialog->deleteItself = true;
    dialog->Open(owner);
    dialog->Close(4);
    EXPECT_EQ(dialog->ShowModal(), 4u);
    EXPECT_TRUE(deleted);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, ACloseThatWasSentLeavesTheResultZero)
{
    TestWindow dialog;
    dialog.Open();
    dialog.action = [&] { dialog.SendMessage(WM_CLOSE, 8); };
    dialog.PostMessage(kRun);
    EXPECT_EQ(dialog.ShowModal(), 0u);
    EXPECT_EQ(dialog.closeCode, 8);
}

TEST(WindowWndTest, ModalWindowsNest)
{
    TestWindow owner;
    owner.Open();
    TestWindow outer;
    outer.Open(owner);
    UINT innerResult = 0;
    bool outerEnabledDuring = true;
    bool ownerEnabledAfterInner = true;
    outer.action = [&] {
        TestWindow inner;
        inner.Open(outer);
        inner.action = [&] {
            outerEnabledDuring = ::IsWindowEnabled(outer) != FALSE;
            inner.Close(1);
        };
        inner.PostMessage(kRun);
        innerResult = inner.ShowModal();
        ownerEnabledAfterInner = ::IsWindowEnabled(owner) != FALSE;
        outer.Close(2);
    };
    outer.PostMessage(kRun);
    EXPECT_EQ(outer.ShowModal(), 2u);
    EXPECT_EQ(innerResult, 1u);
    EXPECT_FALSE(outerEnabledDuring);
    EXPECT_FALSE(ownerEnabledAfterInner);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, AnOwnerOfTwoModalWindowsStaysDisabledUntilTheLast)
{
    TestWindow owner;
    owner.Open();
    TestWindow outer;
    outer.Open(owner);
    bool ownerEnabledAfterInner = true;
    outer.action = [&] {
        TestWindow inner;
        inner.Open(owner);
        inner.Close(1);
        inner.ShowModal();
        ownerEnabledAfterInner = ::IsWindowEnabled(owner) != FALSE;
        outer.Close(2);
    };
    outer.PostMessage(kRun);
    EXPECT_EQ(outer.ShowModal(), 2u);
    EXPECT_FALSE(ownerEnabledAfterInner);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, AnInnerLoopTakesTheCloseOfAnOuterWindow)
{
    TestWindow owner;
    owner.Open();
    TestWindow outer;
    outer.Open(owner);
    UINT innerResult = 99;
    outer.action = [&] {
        // Owned by the outer window, so it ends together with it.
        bool deleted = false;
        TestWindow* const inner = OpenSelfDeleting(outer, &deleted);
        outer.Close(6);
        innerResult = inner->ShowModal();
        EXPECT_TRUE(deleted);
    };
    outer.PostMessage(kRun);
    EXPECT_EQ(outer.ShowModal(), 6u);
    EXPECT_EQ(innerResult, 0u);
}

TEST(WindowWndTest, ShowModalPostsTheEndOfTheApplicationAgain)
{
    TestWindow owner;
    owner.Open();
    TestWindow dialog;
    dialog.Open(owner);
    dialog.action = [] { ::PostQuitMessage(31); };
    dialog.PostMessage(kRun);
    EXPECT_EQ(dialog.ShowModal(), 0u);
    EXPECT_TRUE(::IsWindowEnabled(owner));

    MSG message{};
    ASSERT_TRUE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 31u);
}

TEST(WindowWndTest, ShowModalOffersMessagesToTheManagersFirst)
{
    class Filter : public IMessageFilterUI {
    public:
        LRESULT MessageHandler(UINT message, WPARAM, LPARAM, bool& handled) override
        {
            if (message == kRun) {
                ++seen;
                handled = seen == 1;
            }
            return 0;
        }
        int seen = 0;
    } filter;

    TestWindow dialog;
    dialog.Open();
    CPaintManagerUI manager;
    manager.Init(dialog);
    manager.AddPreMessageFilter(&filter);
    int runs = 0;
    dialog.action = [&] { ++runs; };
    dialog.PostMessage(kRun);
    dialog.PostMessage(kRun);
    dialog.Close();
    EXPECT_EQ(dialog.ShowModal(), static_cast<UINT>(IDOK));
    EXPECT_EQ(filter.seen, 2);
    EXPECT_EQ(runs, 1);
}

TEST(WindowWndTest, ShowModalFakeReturnsAtOnce)
{
    TestWindow owner;
    owner.Open();
    TestWindow dialog;
    const HWND handle = dialog.Open(owner);
    dialog.ShowModalFake();
    EXPECT_TRUE(::IsWindowVisible(handle));
    EXPECT_FALSE(::IsWindowEnabled(owner));
    dialog.Close();
    EXPECT_TRUE(::IsWindowEnabled(owner));
    Pump();
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(WindowWndTest, AFakeModalWindowEnablesItsOwnerHoweverItEnds)
{
    TestWindow owner;
    owner.Open();
    TestWindow dialog;
    dialog.Open(owner);
    dialog.ShowModalFake();
    ::DestroyWindow(dialog);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, ClosingAWindowThatIsNotModalLeavesItsOwnerAlone)
{
    TestWindow owner;
    owner.Open();
    TestWindow tool;
    tool.Open(owner);
    ::EnableWindow(owner, FALSE);
    tool.Close();
    Pump();
    EXPECT_FALSE(::IsWindowEnabled(owner));
}

TEST(WindowWndTest, CentersOnItsOwner)
{
    TestWindow owner;
    owner.Open(nullptr, {100, 100, 500, 400});
    TestWindow dialog;
    const HWND handle = dialog.Open(owner, {0, 0, 200, 100});
    dialog.CenterWindow();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, 200);
    EXPECT_EQ(position.top, 200);
    EXPECT_EQ(position.right, 400);
    EXPECT_EQ(position.bottom, 300);
    EXPECT_FALSE(::IsWindowVisible(handle));
}

TEST(WindowWndTest, CentersOnTheWorkAreaWithoutAnOwner)
{
    TestWindow window;
    const HWND handle = window.Open(nullptr, {0, 0, 200, 100});
    window.CenterWindow();
    const RECT work = WorkArea();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, work.left + (work.right - work.left - 200) / 2);
    EXPECT_EQ(position.top, work.top + (work.bottom - work.top - 100) / 2);
}

TEST(WindowWndTest, CenteringStaysInsideTheWorkArea)
{
    const RECT work = WorkArea();
    TestWindow owner;
    owner.Open(nullptr, {work.right - 50, work.top - 20, work.right + 50, work.top + 20});
    TestWindow dialog;
    const HWND handle = dialog.Open(owner, {0, 0, 200, 100});
    dialog.CenterWindow();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.right, work.right);
    EXPECT_EQ(position.top, work.top);
}

// Two monitors, the second one to the left of the first and higher.
constexpr RECT kFirstWork{0, 0, 1000, 700};
constexpr RECT kSecondWork{-1600, -300, -40, 900};
const HMONITOR kFirstMonitor = reinterpret_cast<HMONITOR>(std::uintptr_t{0x101});
const HMONITOR kSecondMonitor = reinterpret_cast<HMONITOR>(std::uintptr_t{0x102});
HWND onSecondMonitor = nullptr;

HMONITOR WINAPI MadeUpMonitorOf(HWND window, DWORD)
{
    return window == onSecondMonitor ? kSecondMonitor : kFirstMonitor;
}

BOOL WINAPI MadeUpMonitorInfo(HMONITOR monitor, MONITORINFO* info)
{
    info->rcWork = monitor == kSecondMonitor ? kSecondWork : kFirstWork;
    info->rcMonitor = info->rcWork;
    info->dwFlags = monitor == kFirstMonitor ? MONITORINFOF_PRIMARY : 0;
    return TRUE;
}

class TwoMonitorsTest : public testing::Test {
protected:
    ~TwoMonitorsTest() override { onSecondMonitor = nullptr; }

    test::ImportHook monitorOf{L"DuiLib.dll", "user32.dll", "MonitorFromWindow",
                               reinterpret_cast<void*>(&MadeUpMonitorOf)};
    test::ImportHook monitorInfo{L"DuiLib.dll", "user32.dll", "GetMonitorInfoW",
                                 reinterpret_cast<void*>(&MadeUpMonitorInfo)};
};

TEST_F(TwoMonitorsTest, AWindowIsCentredOnTheMonitorItIsOn)
{
    TestWindow window;
    const HWND handle = window.Open(nullptr, {0, 0, 200, 100});
    onSecondMonitor = handle;
    window.CenterWindow();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, -1600 + (1560 - 200) / 2);
    EXPECT_EQ(position.top, -300 + (1200 - 100) / 2);
}

TEST_F(TwoMonitorsTest, AnOwnedWindowStaysOnTheMonitorOfItsOwner)
{
    TestWindow owner;
    onSecondMonitor = owner.Open(nullptr, {-1590, -290, -1490, -190});
    TestWindow dialog;
    const HWND handle = dialog.Open(owner, {0, 0, 300, 400});
    dialog.CenterWindow();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, kSecondWork.left);
    EXPECT_EQ(position.top, kSecondWork.top);
    EXPECT_EQ(position.right - position.left, 300);
}

TEST_F(TwoMonitorsTest, AWindowLargerThanTheWorkAreaBeginsAtItsCorner)
{
    TestWindow window;
    const HWND handle = window.Open(nullptr, {0, 0, 1700, 1300});
    onSecondMonitor = handle;
    window.CenterWindow();
    const RECT position = PositionOf(handle);
    EXPECT_EQ(position.left, kSecondWork.left);
    EXPECT_EQ(position.top, kSecondWork.top);
}

TEST(WindowWndTest, ResizeClientKeepsWhatIsMinusOne)
{
    TestWindow window;
    const HWND handle = window.Create(nullptr, L"", WS_OVERLAPPEDWINDOW, 0, 10, 10, 300, 200);
    window.ResizeClient(420, 190);
    RECT client{};
    ::GetClientRect(handle, &client);
    EXPECT_EQ(client.right, 420);
    EXPECT_EQ(client.bottom, 190);

    window.ResizeClient(-1, 170);
    ::GetClientRect(handle, &client);
    EXPECT_EQ(client.right, 420);
    EXPECT_EQ(client.bottom, 170);
    window.ResizeClient(350);
    ::GetClientRect(handle, &client);
    EXPECT_EQ(client.right, 350);
    EXPECT_EQ(client.bottom, 170);
}

TEST(WindowWndTest, SubclassSeesMessagesFirstAndUnsubclassGivesTheWindowBack)
{
    const HWND plain =
        ::CreateWindow(WC_EDIT, L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
    const auto procedure = ::GetWindowLongPtr(plain, GWLP_WNDPROC);
    TestWindow window;
    EXPECT_EQ(window.Subclass(plain), plain);
    EXPECT_EQ(window.GetHWND(), plain);
    ::SendMessage(plain, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"abc"));
    EXPECT_TRUE(window.Got(WM_SETTEXT));
    EXPECT_EQ(::GetWindowTextLength(plain), 3);

    window.Unsubclass();
    EXPECT_EQ(window.GetHWND(), nullptr);
    EXPECT_EQ(::GetWindowLongPtr(plain, GWLP_WNDPROC), procedure);
    window.messages.clear();
    ::SendMessage(plain, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"abcd"));
    EXPECT_TRUE(window.messages.empty());
    EXPECT_EQ(::GetWindowTextLength(plain), 4);
    ::DestroyWindow(plain);
}

TEST(WindowWndTest, ASubclassedWindowEndsWithTheFinalMessage)
{
    const HWND plain =
        ::CreateWindow(WC_EDIT, L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
    TestWindow window;
    window.Subclass(plain);
    ::DestroyWindow(plain);
    EXPECT_EQ(window.finalWindow, plain);
    EXPECT_EQ(window.GetHWND(), nullptr);
    EXPECT_EQ(window.m_OldWndProc, static_cast<WNDPROC>(::DefWindowProc));
}

TEST(WindowWndTest, SubclassRefusesWhatIsNoWindow)
{
    TestWindow window;
    EXPECT_EQ(window.Subclass(nullptr), nullptr);
    EXPECT_EQ(window.GetHWND(), nullptr);
    window.Unsubclass();
    EXPECT_EQ(window.GetHWND(), nullptr);
}

TEST(WindowWndTest, ASuperclassedWindowKeepsTheBehaviourOfItsClass)
{
    EditWindow edit;
    const HWND handle = edit.Create(nullptr, L"", WS_POPUP, 0, 0, 0, 100, 20);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(edit.GetHWND(), handle);
    ::SendMessage(handle, WM_CHAR, L'x', 1);
    EXPECT_EQ(edit.characters, 1);
    wchar_t text[8] = {};
    ::GetWindowText(handle, text, 8);
    EXPECT_STREQ(text, L"x");

    EditWindow second;
    EXPECT_NE(second.Create(nullptr, L"", WS_POPUP, 0, 0, 0, 100, 20), nullptr);
    ::DestroyWindow(second);
    ::DestroyWindow(handle);
    EXPECT_EQ(edit.finals, 1);
    EXPECT_EQ(edit.GetHWND(), nullptr);
}

TEST(WindowWndTest, AnUnknownSuperclassMakesNoWindow)
{
    class Unknown : public CWindowWnd {
        LPCTSTR GetWindowClassName() const override { return L"DuiLib.UnknownTest"; }
        LPCTSTR GetSuperClassName() const override { return L"NoSuchClassAnywhere"; }
    } window;
    EXPECT_EQ(window.Create(nullptr, L"", WS_POPUP, 0), nullptr);
}

TEST(WindowWndTest, SetIconTakesBothSizesFromTheInstance)
{
    const HINSTANCE shell = ::LoadLibrary(L"shell32.dll");
    constexpr UINT kIcon = 1;
    ASSERT_NE(::LoadIcon(shell, MAKEINTRESOURCE(kIcon)), nullptr);
    TestWindow window;
    const HWND handle = window.Open();
    const HINSTANCE instance = CPaintManagerUI::GetInstance();
    CPaintManagerUI::SetInstance(shell);
    window.SetIcon(kIcon);
    CPaintManagerUI::SetInstance(instance);
    EXPECT_NE(::SendMessage(handle, WM_GETICON, ICON_BIG, 0), 0);
    EXPECT_NE(::SendMessage(handle, WM_GETICON, ICON_SMALL, 0), 0);
}
