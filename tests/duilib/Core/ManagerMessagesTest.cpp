#include "duilib/Core/ManagerKit.h"

#include <gtest/gtest.h>

#include <memory>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Listener;
using test::Probe;
using test::RootOf;
using test::ShortLivedWindow;

namespace {

class ManagerMessagesTest : public testing::Test {
protected:
    ManagerMessagesTest() { ::SetFocus(host.Window()); }

    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
    Probe& left = AddProbe(host, {0, 0, 50, 60}, L"left");
    Probe& right = AddProbe(host, {50, 0, 100, 60}, L"right");
};

class OfferingWindow final : public CWindowWnd {
public:
    OfferingWindow()
    {
        Create(nullptr, L"", WS_POPUP | WS_VISIBLE, WS_EX_TOOLWINDOW, RECT{0, 0, 100, 50});
        m_manager.Init(m_hWnd);
    }
    ~OfferingWindow() { ::DestroyWindow(m_hWnd); }
    OfferingWindow(const OfferingWindow&) = delete;
    OfferingWindow& operator=(const OfferingWindow&) = delete;

    CPaintManagerUI m_manager;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletOfferingWindow"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        LRESULT result = 0;
        if (m_manager.PreMessageHandler(message, wParam, lParam, result) ||
            m_manager.MessageHandler(message, wParam, lParam, result))
            return result;
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }
};

TEST_F(ManagerMessagesTest, EnterAndLeaveComeInPairs)
{
    host.MoveMouse(10, 10);
    EXPECT_EQ(left.Types(), (std::vector<int>{UIEVENT_MOUSEENTER, UIEVENT_MOUSEMOVE}));
    host.MoveMouse(60, 10);
    EXPECT_EQ(left.Types(),
              (std::vector<int>{UIEVENT_MOUSEENTER, UIEVENT_MOUSEMOVE, UIEVENT_MOUSELEAVE}));
    EXPECT_EQ(right.Types(), (std::vector<int>{UIEVENT_MOUSEENTER, UIEVENT_MOUSEMOVE}));
    host.LeaveMouse();
    EXPECT_EQ(right.Count(UIEVENT_MOUSELEAVE), 1);
    host.LeaveMouse();
    EXPECT_EQ(right.Count(UIEVENT_MOUSELEAVE), 1);
}

TEST_F(ManagerMessagesTest, EventsCarryPointTimeAndKeys)
{
    const DWORD before = ::GetTickCount();
    host.Send(WM_MOUSEMOVE, MK_CONTROL | MK_SHIFT, MAKELPARAM(12, 34));
    const TEventUI& event = left.events.back();
    EXPECT_EQ(event.Type, UIEVENT_MOUSEMOVE);
    EXPECT_EQ(event.pSender, &left);
    EXPECT_EQ(event.ptMouse.x, 12);
    EXPECT_EQ(event.ptMouse.y, 34);
    EXPECT_EQ(event.wKeyState & (MK_CONTROL | MK_SHIFT), MK_CONTROL | MK_SHIFT);
    EXPECT_EQ(event.wParam, static_cast<WPARAM>(MK_CONTROL | MK_SHIFT));
    EXPECT_EQ(event.lParam, MAKELPARAM(12, 34));
    EXPECT_GE(event.dwTimestamp, before);
    EXPECT_EQ(manager.GetMousePos().x, 12);
    EXPECT_EQ(manager.GetMousePos().y, 34);
}

TEST_F(ManagerMessagesTest, NegativePointsStayNegative)
{
    host.Press(10, 10);
    host.MoveMouse(-5, -7);
    EXPECT_EQ(left.events.back().ptMouse.x, -5);
    EXPECT_EQ(left.events.back().ptMouse.y, -7);
    host.Release(-5, -7);
}

TEST_F(ManagerMessagesTest, AButtonDownIsFollowedByItsUpWhereverThePointIs)
{
    host.Press(10, 10);
    EXPECT_TRUE(manager.IsCaptured());
    EXPECT_EQ(::GetCapture(), host.Window());
    EXPECT_EQ(manager.GetFocus(), &left);
    host.MoveMouse(60, 10);
    EXPECT_EQ(left.Count(UIEVENT_MOUSELEAVE), 0);
    EXPECT_EQ(right.Count(UIEVENT_MOUSEENTER), 0);
    EXPECT_EQ(left.events.back().Type, UIEVENT_MOUSEMOVE);
    host.Release(60, 10);
    EXPECT_EQ(left.events.back().Type, UIEVENT_BUTTONUP);
    EXPECT_EQ(right.Count(UIEVENT_BUTTONUP), 0);
    EXPECT_FALSE(manager.IsCaptured());
    EXPECT_EQ(::GetCapture(), nullptr);
    host.MoveMouse(60, 10);
    EXPECT_EQ(left.Count(UIEVENT_MOUSELEAVE), 1);
    EXPECT_EQ(right.Count(UIEVENT_MOUSEENTER), 1);
}

TEST_F(ManagerMessagesTest, AnUpWithoutADownIsNobodys)
{
    host.Release(10, 10);
    EXPECT_EQ(left.Count(UIEVENT_BUTTONUP), 0);
}

TEST_F(ManagerMessagesTest, ADisabledControlStillGetsEvents)
{
    left.SetEnabled(false);
    host.Click(10, 10);
    EXPECT_EQ(left.Count(UIEVENT_BUTTONDOWN), 1);
    EXPECT_EQ(left.Count(UIEVENT_BUTTONUP), 1);
    EXPECT_EQ(manager.GetFocus(), nullptr);
}

TEST_F(ManagerMessagesTest, ADoubleClickIsAnEventOfItsOwn)
{
    host.DoubleClick(10, 10);
    EXPECT_EQ(left.Count(UIEVENT_BUTTONDOWN), 1);
    EXPECT_EQ(left.Count(UIEVENT_DBLCLICK), 1);
    EXPECT_EQ(left.Count(UIEVENT_BUTTONUP), 2);
}

TEST_F(ManagerMessagesTest, OtherButtonsGoToTheControlUnderThePoint)
{
    host.Send(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
    EXPECT_TRUE(manager.IsCaptured());
    host.Send(WM_RBUTTONUP, 0, MAKELPARAM(60, 10));
    EXPECT_FALSE(manager.IsCaptured());
    EXPECT_EQ(left.Count(UIEVENT_RBUTTONDOWN), 1);
    EXPECT_EQ(right.Count(UIEVENT_RBUTTONUP), 1);
    host.Send(WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(10, 10));
    host.Send(WM_MBUTTONUP, 0, MAKELPARAM(10, 10));
    EXPECT_EQ(left.Count(UIEVENT_MBUTTONDOWN), 1);
    EXPECT_EQ(left.Count(UIEVENT_MBUTTONUP), 1);
}

TEST_F(ManagerMessagesTest, TheContextMenuGoesToTheRightClickedControlOnce)
{
    left.SetContextMenuUsed(true);
    host.RightClick(10, 10);
    ASSERT_EQ(left.Count(UIEVENT_CONTEXTMENU), 1);
    EXPECT_EQ(left.events.back().lParam, reinterpret_cast<LPARAM>(&left));
    EXPECT_EQ(left.events.back().ptMouse.x, 10);
    EXPECT_EQ(left.events.back().ptMouse.y, 10);
    EXPECT_EQ(host.Sent(L"menu").size(), 1u);
    host.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(host.Window()), MAKELPARAM(10, 10));
    EXPECT_EQ(left.Count(UIEVENT_CONTEXTMENU), 1);
}

TEST_F(ManagerMessagesTest, TheWheelTellsDirectionAndDistance)
{
    host.Wheel(10, 10, -240);
    ASSERT_EQ(left.Count(UIEVENT_SCROLLWHEEL), 1);
    EXPECT_EQ(LOWORD(left.events[0].wParam), SB_LINEDOWN);
    EXPECT_EQ(static_cast<short>(HIWORD(left.events[0].wParam)), -240);
    EXPECT_EQ(left.events[0].ptMouse.x, 10);
    EXPECT_EQ(left.Count(UIEVENT_MOUSEMOVE), 1);
    host.Wheel(60, 10, 120);
    ASSERT_EQ(right.Count(UIEVENT_SCROLLWHEEL), 1);
    EXPECT_EQ(LOWORD(right.events[0].wParam), SB_LINEUP);
}

TEST_F(ManagerMessagesTest, KeysGoToTheFocus)
{
    manager.SetFocus(&left);
    left.events.clear();
    host.Send(WM_KEYDOWN, VK_F2, 1);
    host.Send(WM_CHAR, L'x', 1);
    host.Send(WM_KEYUP, VK_F2, 1);
    ASSERT_EQ(left.Types(), (std::vector<int>{UIEVENT_KEYDOWN, UIEVENT_CHAR, UIEVENT_KEYUP}));
    EXPECT_EQ(left.events[0].wParam, static_cast<WPARAM>(VK_F2));
    EXPECT_EQ(left.events[1].chKey, L'x');
    EXPECT_TRUE(right.events.empty());
}

TEST_F(ManagerMessagesTest, TheKeyUpFollowsTheKeyDown)
{
    manager.SetFocus(&left);
    host.Send(WM_KEYDOWN, VK_F2, 1);
    manager.SetFocus(&right);
    host.Send(WM_KEYUP, VK_F2, 1);
    EXPECT_EQ(left.Count(UIEVENT_KEYUP), 1);
    EXPECT_EQ(right.Count(UIEVENT_KEYUP), 0);
    host.Send(WM_KEYUP, VK_F2, 1);
    EXPECT_EQ(left.Count(UIEVENT_KEYUP), 1);
}

TEST_F(ManagerMessagesTest, SystemKeysReachTheFocus)
{
    manager.SetFocus(&left);
    LRESULT result = 0;
    EXPECT_FALSE(manager.PreMessageHandler(WM_SYSKEYDOWN, VK_F10, 0, result));
    EXPECT_EQ(left.Count(UIEVENT_SYSKEY), 1);
}

TEST_F(ManagerMessagesTest, LosingTheKeyboardReleasesTheCapture)
{
    host.Press(10, 10);
    host.Send(WM_KILLFOCUS);
    EXPECT_FALSE(manager.IsCaptured());
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(ManagerMessagesTest, AStolenCaptureIsNoCaptureAnyMore)
{
    ControlHost other(20, 20);
    host.Press(10, 10);
    ::SetCapture(other.Window());
    EXPECT_FALSE(manager.IsCaptured());
    ::ReleaseCapture();
}

TEST_F(ManagerMessagesTest, ANoActivateWindowDoesNotTakeTheKeyboard)
{
    struct Button {
        UINT down;
        UINT up;
    };
    for (const Button& button :
         {Button{WM_LBUTTONDOWN, WM_LBUTTONUP}, Button{WM_LBUTTONDBLCLK, WM_LBUTTONUP},
          Button{WM_RBUTTONDOWN, WM_RBUTTONUP}, Button{WM_MBUTTONDOWN, WM_MBUTTONUP}}) {
        SCOPED_TRACE(button.down);
        const auto press = [&](int x) {
            host.Send(button.down, 0, MAKELPARAM(x, 10));
            host.Send(button.up, 0, MAKELPARAM(x, 10));
        };
        manager.SetNoActivate(true);
        ::SetFocus(nullptr);
        press(10);
        EXPECT_EQ(::GetFocus(), nullptr);
        EXPECT_EQ(manager.GetFocus(), &left);
        manager.SetNoActivate(false);
        press(60);
        EXPECT_EQ(::GetFocus(), host.Window());
        EXPECT_EQ(manager.GetFocus(), &right);
    }
}

TEST_F(ManagerMessagesTest, SizingTellsTheFocusAndAsksForALayout)
{
    manager.SetFocus(&left);
    left.events.clear();
    LRESULT result = 1;
    EXPECT_TRUE(manager.MessageHandler(WM_SIZE, SIZE_RESTORED, MAKELPARAM(100, 60), result));
    EXPECT_EQ(result, 0);
    EXPECT_EQ(left.Types(), std::vector<int>{UIEVENT_WINDOWSIZE});
    EXPECT_TRUE(manager.IsUpdateNeeded());
}

TEST_F(ManagerMessagesTest, TheLimitsOfTheWindowAreItsMinimumAndMaximum)
{
    MINMAXINFO info{};
    info.ptMaxTrackSize = {5000, 4000};
    host.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMaxTrackSize.x, 5000);
    manager.SetMinInfo(30, 20);
    manager.SetMaxInfo(300, 0);
    LRESULT result = 0;
    EXPECT_FALSE(
        manager.MessageHandler(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info), result));
    EXPECT_EQ(info.ptMinTrackSize.x, 30);
    EXPECT_EQ(info.ptMinTrackSize.y, 20);
    EXPECT_EQ(info.ptMaxTrackSize.x, 300);
    EXPECT_EQ(info.ptMaxTrackSize.y, 4000);
}

TEST_F(ManagerMessagesTest, ConsumesWhatItPromises)
{
    LRESULT result = 0;
    EXPECT_TRUE(manager.MessageHandler(WM_ERASEBKGND, 0, 0, result));
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(manager.MessageHandler(WM_PAINT, 0, 0, result));
    EXPECT_FALSE(manager.MessageHandler(WM_PRINTCLIENT, 0, 0, result));
    EXPECT_FALSE(manager.MessageHandler(WM_MOUSEMOVE, 0, MAKELPARAM(1, 1), result));
    EXPECT_FALSE(manager.MessageHandler(WM_APP + 1, 0, 0, result));
    EXPECT_FALSE(manager.MessageHandler(WM_USER + 4, 0, 0, result));
    EXPECT_FALSE(manager.MessageHandler(WM_CLOSE, 0, 0, result));
}

TEST_F(ManagerMessagesTest, ClosingEndsHoverPressAndFocus)
{
    host.MoveMouse(10, 10);
    host.Press(10, 10);
    left.events.clear();
    LRESULT result = 0;
    manager.MessageHandler(WM_CLOSE, 0, 0, result);
    EXPECT_EQ(left.Types(),
              (std::vector<int>{UIEVENT_MOUSELEAVE, UIEVENT_BUTTONUP, UIEVENT_KILLFOCUS}));
    EXPECT_EQ(manager.GetFocus(), nullptr);
    EXPECT_EQ(host.Sent(L"killfocus").size(), 1u);
}

TEST_F(ManagerMessagesTest, OnlyControlsThatWantToAreAskedForACursor)
{
    POINT cursor{};
    ::GetCursorPos(&cursor);
    ::SetCursorPos(20, 20);
    LRESULT result = 0;
    const WPARAM window = reinterpret_cast<WPARAM>(host.Window());
    EXPECT_FALSE(manager.MessageHandler(WM_SETCURSOR, window, HTCLIENT, result));
    left.flags = UIFLAG_SETCURSOR;
    EXPECT_TRUE(manager.MessageHandler(WM_SETCURSOR, window, HTCLIENT, result));
    EXPECT_EQ(left.Count(UIEVENT_SETCURSOR), 1);
    EXPECT_FALSE(manager.MessageHandler(WM_SETCURSOR, window, HTCAPTION, result));
    manager.SetCapture();
    EXPECT_TRUE(manager.MessageHandler(WM_SETCURSOR, window, HTCLIENT, result));
    EXPECT_EQ(left.Count(UIEVENT_SETCURSOR), 1);
    manager.ReleaseCapture();
    ::SetCursorPos(cursor.x, cursor.y);
}

TEST_F(ManagerMessagesTest, ExtraReceiversGetTheNextMouseLeave)
{
    manager.AddMouseLeaveNeeded(&right);
    manager.AddMouseLeaveNeeded(&right);
    host.MoveMouse(10, 10);
    EXPECT_EQ(right.Count(UIEVENT_MOUSELEAVE), 1);
    host.LeaveMouse();
    EXPECT_EQ(right.Count(UIEVENT_MOUSELEAVE), 1);
    EXPECT_EQ(left.Count(UIEVENT_MOUSELEAVE), 1);
    manager.AddMouseLeaveNeeded(&right);
    EXPECT_TRUE(manager.RemoveMouseLeaveNeeded(&right));
    EXPECT_FALSE(manager.RemoveMouseLeaveNeeded(&right));
    host.MoveMouse(10, 10);
    EXPECT_EQ(right.Count(UIEVENT_MOUSELEAVE), 1);
}

TEST_F(ManagerMessagesTest, TheHoveredControlGetsOneMouseLeaveAlsoWhenItAskedForOne)
{
    host.MoveMouse(10, 10);
    manager.AddMouseLeaveNeeded(&left);
    host.MoveMouse(60, 10);
    EXPECT_EQ(left.Count(UIEVENT_MOUSELEAVE), 1);
    EXPECT_FALSE(manager.RemoveMouseLeaveNeeded(&left));
}

TEST_F(ManagerMessagesTest, ADeadControlLeavesNoMouseLeaveEntry)
{
    auto loose = std::make_unique<Probe>();
    loose->SetManager(&manager, nullptr, false);
    manager.AddMouseLeaveNeeded(loose.get());
    manager.AddMouseLeaveNeeded(&right);
    CControlUI* const dead = loose.get();
    loose.reset();
    EXPECT_FALSE(manager.RemoveMouseLeaveNeeded(dead));
    RootOf(host).Remove(&right);
    EXPECT_FALSE(manager.RemoveMouseLeaveNeeded(&right));
    host.Pump();
    host.MoveMouse(10, 10);
    EXPECT_EQ(left.Count(UIEVENT_MOUSEENTER), 1);
}

TEST_F(ManagerMessagesTest, AFilterThatHandlesEndsTheMessage)
{
    Listener first;
    Listener second;
    first.onMessage = [](UINT message, WPARAM, LPARAM, bool& handled) -> LRESULT {
        handled = message == WM_MOUSEMOVE;
        return 42;
    };
    EXPECT_TRUE(manager.AddMessageFilter(&first));
    EXPECT_TRUE(manager.AddMessageFilter(&second));
    LRESULT result = 0;
    EXPECT_TRUE(manager.MessageHandler(WM_MOUSEMOVE, 0, MAKELPARAM(8, 9), result));
    EXPECT_EQ(result, 42);
    EXPECT_TRUE(second.messages.empty());
    EXPECT_TRUE(left.events.empty());
    EXPECT_EQ(manager.GetMousePos().x, 8);
    EXPECT_FALSE(manager.MessageHandler(WM_KEYDOWN, VK_F2, 0, result));
    EXPECT_EQ(result, 42);
    EXPECT_EQ(second.messages.size(), 1u);
    manager.RemoveMessageFilter(&first);
    manager.RemoveMessageFilter(&second);
}

TEST_F(ManagerMessagesTest, AddingAFilterTwiceIsRefused)
{
    Listener filter;
    EXPECT_TRUE(manager.AddMessageFilter(&filter));
    EXPECT_FALSE(manager.AddMessageFilter(&filter));
    EXPECT_TRUE(manager.AddPreMessageFilter(&filter));
    EXPECT_FALSE(manager.AddPreMessageFilter(&filter));
    host.Send(WM_USER + 77);
    EXPECT_EQ(filter.CountOf(WM_USER + 77), 1);
    EXPECT_TRUE(manager.RemoveMessageFilter(&filter));
    EXPECT_FALSE(manager.RemoveMessageFilter(&filter));
    EXPECT_TRUE(manager.RemovePreMessageFilter(&filter));
    EXPECT_FALSE(manager.RemovePreMessageFilter(&filter));
}

TEST_F(ManagerMessagesTest, AFilterMayRemoveItselfAndOthers)
{
    Listener first;
    auto second = std::make_unique<Listener>();
    Listener third;
    first.onMessage = [&](UINT message, WPARAM, LPARAM, bool&) -> LRESULT {
        if (message == WM_USER + 77) {
            manager.RemoveMessageFilter(&first);
            manager.RemoveMessageFilter(second.get());
            second.reset();
        }
        return 0;
    };
    manager.AddMessageFilter(&first);
    manager.AddMessageFilter(second.get());
    manager.AddMessageFilter(&third);
    host.Send(WM_USER + 77);
    host.Send(WM_USER + 77);
    EXPECT_EQ(first.CountOf(WM_USER + 77), 1);
    EXPECT_EQ(third.CountOf(WM_USER + 77), 2);
    manager.RemoveMessageFilter(&third);
}

TEST_F(ManagerMessagesTest, PreFiltersSeeQueuedMessagesBeforeTheWindow)
{
    Listener filter;
    filter.onMessage = [](UINT message, WPARAM wParam, LPARAM, bool& handled) -> LRESULT {
        handled = message == WM_KEYDOWN && wParam == VK_F3;
        return 0;
    };
    manager.AddPreMessageFilter(&filter);
    manager.SetFocus(&left);
    left.events.clear();
    host.KeyDown(VK_F2);
    host.KeyDown(VK_F3);
    EXPECT_EQ(left.Count(UIEVENT_KEYDOWN), 1);
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, TheSecondPreHandlingOfAQueuedMessageIsSkipped)
{
    Listener filter;
    manager.AddPreMessageFilter(&filter);
    MSG queued{};
    queued.hwnd = host.Window();
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    queued.lParam = 1;
    LRESULT result = 0;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYUP, VK_F2, 1, result));
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYDOWN, VK_F2, 1, result));
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 1);
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYDOWN, VK_F2, 1, result));
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    EXPECT_EQ(filter.CountOf(WM_KEYUP), 1);
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, MessagesOfChildWindowsAreNotRemembered)
{
    Listener filter;
    manager.AddPreMessageFilter(&filter);
    const HWND child = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, host.Window(),
                                         nullptr, nullptr, nullptr);
    MSG queued{};
    queued.hwnd = child;
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    CPaintManagerUI::TranslateMessage(&queued);
    LRESULT result = 0;
    manager.PreMessageHandler(WM_KEYDOWN, VK_F2, 0, result);
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, AConsumedMessageIsNotRemembered)
{
    Listener filter;
    filter.onMessage = [](UINT, WPARAM, LPARAM, bool& handled) -> LRESULT {
        handled = true;
        return 0;
    };
    manager.AddPreMessageFilter(&filter);
    MSG queued{};
    queued.hwnd = host.Window();
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    EXPECT_TRUE(CPaintManagerUI::TranslateMessage(&queued));
    LRESULT result = 0;
    EXPECT_TRUE(manager.PreMessageHandler(WM_KEYDOWN, VK_F2, 0, result));
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    manager.RemovePreMessageFilter(&filter);
}

// A window that offers each of its messages to its manager, the queued ones a second time.
TEST(ManagerOfferingTest, TabAndFiltersRunOnceForAQueuedMessage)
{
    OfferingWindow window;
    auto& manager = window.m_manager;
    auto* const root = new CContainerUI;
    Probe* stops[3];
    for (auto& stop : stops) {
        stop = new Probe;
        stop->flags = UIFLAG_TABSTOP;
        root->Add(stop);
    }
    manager.AttachDialog(root);
    ::UpdateWindow(window);
    manager.SetFocus(stops[0]);
    Listener filter;
    manager.AddPreMessageFilter(&filter);

    ::PostMessageW(window, WM_KEYDOWN, VK_TAB, 1);
    MSG message{};
    while (::PeekMessageW(&message, window, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        if (!CPaintManagerUI::TranslateMessage(&message))
            ::DispatchMessageW(&message);
    }
    EXPECT_EQ(manager.GetFocus(), stops[1]);
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 1);

    ::SendMessageW(window, WM_KEYDOWN, VK_TAB, 1);
    EXPECT_EQ(manager.GetFocus(), stops[2]) << "a sent message comes once, and counts";
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, TheNextMessageEndsTheMemoryOfTheLast)
{
    Listener filter;
    manager.AddPreMessageFilter(&filter);
    MSG queued{};
    queued.hwnd = host.Window();
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    CPaintManagerUI::TranslateMessage(&queued);
    queued.message = WM_KEYUP;
    CPaintManagerUI::TranslateMessage(&queued);
    LRESULT result = 0;
    manager.PreMessageHandler(WM_KEYDOWN, VK_F2, 0, result);
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 2);
    manager.RemovePreMessageFilter(&filter);
}

class Accelerator : public ITranslateAccelerator {
public:
    LRESULT TranslateAccelerator(MSG*) override
    {
        ++asked;
        if (onMessage)
            onMessage();
        return answer;
    }
    LRESULT answer = S_FALSE;
    int asked = 0;
    std::function<void()> onMessage;
};

TEST_F(ManagerMessagesTest, AcceleratorsComeBeforeFilters)
{
    Accelerator accelerator;
    Listener filter;
    EXPECT_TRUE(manager.AddTranslateAccelerator(&accelerator));
    manager.AddPreMessageFilter(&filter);
    MSG queued{};
    queued.hwnd = host.Window();
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_EQ(filter.messages.size(), 1u);
    accelerator.answer = S_OK;
    EXPECT_TRUE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_EQ(filter.messages.size(), 1u);
    EXPECT_EQ(accelerator.asked, 2);
    accelerator.onMessage = [&] { manager.RemoveTranslateAccelerator(&accelerator); };
    EXPECT_TRUE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_FALSE(manager.RemoveTranslateAccelerator(&accelerator));
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, ChildWindowsOfferTheirMessagesWithoutLosingThem)
{
    Listener filter;
    filter.onMessage = [](UINT, WPARAM, LPARAM, bool& handled) -> LRESULT {
        handled = true;
        return 0;
    };
    manager.AddPreMessageFilter(&filter);
    const HWND child = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, host.Window(),
                                         nullptr, nullptr, nullptr);
    MSG queued{};
    queued.hwnd = child;
    queued.message = WM_KEYDOWN;
    queued.wParam = VK_F2;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_EQ(filter.CountOf(WM_KEYDOWN), 1);
    queued.hwnd = host.Window();
    EXPECT_TRUE(CPaintManagerUI::TranslateMessage(&queued));
    manager.RemovePreMessageFilter(&filter);
}

TEST_F(ManagerMessagesTest, MessagesOfForeignWindowsPass)
{
    Listener filter;
    manager.AddPreMessageFilter(&filter);
    const HWND foreign = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                           nullptr, nullptr, nullptr);
    MSG queued{};
    queued.hwnd = foreign;
    queued.message = WM_KEYDOWN;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    queued.hwnd = nullptr;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(nullptr));
    EXPECT_TRUE(filter.messages.empty());
    manager.RemovePreMessageFilter(&filter);
    ::DestroyWindow(foreign);
}

TEST_F(ManagerMessagesTest, APreFilterMayDestroyItsWindow)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    Listener filter;
    filter.onMessage = [&](UINT, WPARAM, LPARAM, bool&) -> LRESULT {
        ::DestroyWindow(handle);
        return 0;
    };
    window->m_manager.AddPreMessageFilter(&filter);
    MSG queued{};
    queued.hwnd = handle;
    queued.message = WM_KEYDOWN;
    EXPECT_FALSE(CPaintManagerUI::TranslateMessage(&queued));
    EXPECT_TRUE(gone);
}

TEST_F(ManagerMessagesTest, TheMessageLoopRunsUntilQuit)
{
    manager.SetFocus(&left);
    left.events.clear();
    ::PostMessageW(host.Window(), WM_KEYDOWN, VK_F2, 1);
    ::PostQuitMessage(0);
    CPaintManagerUI::MessageLoop();
    EXPECT_EQ(left.Count(UIEVENT_KEYDOWN), 1);
}

TEST_F(ManagerMessagesTest, MessagesOfNativeChildrenAreSentBackToThem)
{
    static UINT reflected;
    reflected = 0;
    const HWND child = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, host.Window(),
                                         nullptr, nullptr, nullptr);
    ::SetWindowLongPtrW(child, GWLP_WNDPROC,
                        reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam) -> LRESULT {
                            if (message >= WM_USER + 0x1C00) {
                                reflected = message;
                                return 5;
                            }
                            return ::DefWindowProcW(window, message, wParam, lParam);
                        }));
    EXPECT_EQ(host.Send(WM_COMMAND, 0, reinterpret_cast<LPARAM>(child)), 5);
    EXPECT_EQ(reflected, WM_USER + 0x1C00 + WM_COMMAND);
    NMHDR notice{child, 0, NM_CLICK};
    EXPECT_EQ(host.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice)), 5);
    EXPECT_EQ(reflected, WM_USER + 0x1C00 + WM_NOTIFY);
    LRESULT result = 0;
    EXPECT_FALSE(manager.MessageHandler(WM_COMMAND, 1, 0, result));
}

TEST_F(ManagerMessagesTest, APressHandlerMayDeleteItsControl)
{
    int deaths = 0;
    left.deaths = &deaths;
    left.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_BUTTONDOWN) {
            RootOf(host).SetAutoDestroy(false);
            RootOf(host).Remove(&left);
            delete &left;
        }
    };
    host.Press(10, 10);
    EXPECT_EQ(deaths, 1);
    host.Release(10, 10);
    host.MoveMouse(60, 10);
    EXPECT_EQ(right.Count(UIEVENT_MOUSEENTER), 1);
}

TEST_F(ManagerMessagesTest, ALeaveHandlerMayDeleteTheControlThatIsEntered)
{
    left.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_MOUSELEAVE) {
            RootOf(host).SetAutoDestroy(false);
            RootOf(host).Remove(&right);
            delete &right;
        }
    };
    host.MoveMouse(10, 10);
    host.MoveMouse(60, 10);
    EXPECT_EQ(RootOf(host).GetCount(), 1);
    host.MoveMouse(61, 10);
}

TEST_F(ManagerMessagesTest, ARemovedControlGetsNoMoreEvents)
{
    int deaths = 0;
    left.deaths = &deaths;
    host.Press(10, 10);
    const size_t before = left.events.size();
    RootOf(host).Remove(&left);
    host.MoveMouse(11, 10);
    host.Release(11, 10);
    EXPECT_EQ(left.events.size(), before);
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

// Each message may be the last one of the window, whatever else would follow.
TEST(ManagerMessagesWindowTest, EveryHandlerMayDestroyTheWindowAndItsManager)
{
    struct Case {
        int event;
        UINT message;
        WPARAM wParam;
    };
    const Case cases[] = {
        {UIEVENT_MOUSEENTER, WM_MOUSEMOVE, 0},
        {UIEVENT_MOUSEMOVE, WM_MOUSEMOVE, 0},
        {UIEVENT_BUTTONDOWN, WM_LBUTTONDOWN, 0},
        {UIEVENT_DBLCLICK, WM_LBUTTONDBLCLK, 0},
        {UIEVENT_RBUTTONDOWN, WM_RBUTTONDOWN, 0},
        {UIEVENT_RBUTTONUP, WM_RBUTTONUP, 0},
        {UIEVENT_SETFOCUS, WM_LBUTTONDOWN, 0},
        {UIEVENT_KEYDOWN, WM_KEYDOWN, VK_F2},
        {UIEVENT_CHAR, WM_CHAR, L'a'},
        {UIEVENT_WINDOWSIZE, WM_SIZE, 0},
        {UIEVENT_SCROLLWHEEL, WM_MOUSEWHEEL, WHEEL_DELTA << 16},
        {UIEVENT_MOUSELEAVE, WM_MOUSELEAVE, 0},
        {UIEVENT_MOUSEHOVER, WM_MOUSEHOVER, 0},
        {UIEVENT_KILLFOCUS, WM_CLOSE, 0},
    };
    for (const auto& [type, message, wParam] : cases) {
        SCOPED_TRACE(type);
        bool gone = false;
        auto* const window = new ShortLivedWindow(&gone);
        const HWND handle = window->GetHWND();
        auto* const probe = new Probe;
        window->m_manager.AttachDialog(probe);
        ::ShowWindow(handle, SW_SHOWNOACTIVATE);
        ::UpdateWindow(handle);
        if (message != WM_LBUTTONDOWN)
            window->m_manager.SetFocus(probe);
        if (type == UIEVENT_MOUSELEAVE || type == UIEVENT_MOUSEHOVER)
            ::SendMessageW(handle, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
        probe->onEvent = [handle, type](TEventUI& event) {
            if (event.Type == type)
                ::DestroyWindow(handle);
        };
        ::SendMessageW(handle, message, wParam, MAKELPARAM(5, 5));
        EXPECT_TRUE(gone);
        if (!gone)
            ::DestroyWindow(handle);
    }
}

} // namespace
