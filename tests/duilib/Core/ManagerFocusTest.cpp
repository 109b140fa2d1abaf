#include "duilib/Core/ManagerKit.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Probe;
using test::RootOf;

namespace {

// Three tab stops.
class ManagerFocusTest : public testing::Test {
protected:
    ManagerFocusTest()
    {
        for (Probe* const probe : {&first, &second, &third}) {
            probe->flags = UIFLAG_TABSTOP;
            probe->events.clear();
        }
        ::SetFocus(host.Window());
        host.Manager().SetFocus(nullptr);
        host.ClearSent();
    }

    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
    Probe& first = AddProbe(host, {0, 0, 10, 10}, L"1");
    Probe& second = AddProbe(host, {10, 0, 20, 10}, L"2");
    Probe& third = AddProbe(host, {20, 0, 30, 10}, L"3");
};

TEST_F(ManagerFocusTest, SetFocusTellsBothSides)
{
    manager.SetFocus(&first);
    EXPECT_EQ(manager.GetFocus(), &first);
    EXPECT_TRUE(first.IsFocused());
    EXPECT_EQ(first.Types(), std::vector<int>{UIEVENT_SETFOCUS});
    manager.SetFocus(&second);
    EXPECT_EQ(first.Types(), (std::vector<int>{UIEVENT_SETFOCUS, UIEVENT_KILLFOCUS}));
    EXPECT_FALSE(first.IsFocused());
    ASSERT_EQ(host.Sent().size(), 3u);
    EXPECT_EQ(host.Sent()[0].type, L"setfocus");
    EXPECT_EQ(host.Sent()[1].type, L"killfocus");
    EXPECT_EQ(host.Sent()[1].sender, &first);
    EXPECT_EQ(host.Sent()[2].type, L"setfocus");
    EXPECT_EQ(host.Sent()[2].sender, &second);
}

TEST_F(ManagerFocusTest, TheSameControlIsToldOnce)
{
    manager.SetFocus(&first);
    manager.SetFocus(&first);
    EXPECT_EQ(first.Count(UIEVENT_SETFOCUS), 1);
}

TEST_F(ManagerFocusTest, HiddenDisabledAndForeignControlsGetNone)
{
    ControlHost other(20, 20);
    Probe& foreign = AddProbe(other, {0, 0, 10, 10});
    manager.SetFocus(&first);
    second.SetVisible(false);
    manager.SetFocus(&second);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    third.SetEnabled(false);
    manager.SetFocus(&third);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    manager.SetFocus(&foreign);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    EXPECT_EQ(first.Count(UIEVENT_KILLFOCUS), 1);
}

TEST_F(ManagerFocusTest, NullClears)
{
    manager.SetFocus(&first);
    manager.SetFocus(nullptr);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    EXPECT_EQ(host.Sent(L"killfocus").size(), 1u);
}

TEST_F(ManagerFocusTest, TheWindowGetsTheKeyboard)
{
    ::SetFocus(nullptr);
    manager.SetFocus(&first);
    EXPECT_EQ(::GetFocus(), host.Window());
    EXPECT_EQ(first.Count(UIEVENT_SETFOCUS), 1);
}

TEST_F(ManagerFocusTest, TabWalksTheStopsAndWraps)
{
    host.KeyDown(VK_TAB);
    EXPECT_EQ(manager.GetFocus(), &first);
    host.KeyDown(VK_TAB);
    EXPECT_EQ(manager.GetFocus(), &second);
    host.KeyDown(VK_TAB);
    host.KeyDown(VK_TAB);
    EXPECT_EQ(manager.GetFocus(), &first);
}

TEST_F(ManagerFocusTest, BackwardsWalksTheOtherWay)
{
    EXPECT_TRUE(manager.SetNextTabControl(false));
    EXPECT_EQ(manager.GetFocus(), &third);
    EXPECT_TRUE(manager.SetNextTabControl(false));
    EXPECT_EQ(manager.GetFocus(), &second);
    manager.SetFocus(&first);
    manager.SetNextTabControl(false);
    EXPECT_EQ(manager.GetFocus(), &third);
}

TEST_F(ManagerFocusTest, TabSkipsHiddenDisabledAndOtherControls)
{
    second.SetEnabled(false);
    host.Layout();
    manager.SetFocus(&first);
    manager.SetNextTabControl();
    EXPECT_EQ(manager.GetFocus(), &third);
    second.SetEnabled(true);
    third.SetVisible(false);
    host.Layout();
    manager.SetFocus(&first);
    manager.SetNextTabControl();
    EXPECT_EQ(manager.GetFocus(), &second);
    first.flags = 0;
    manager.SetNextTabControl();
    EXPECT_EQ(manager.GetFocus(), &second);
}

TEST_F(ManagerFocusTest, TabGoesOnFromAControlThatIsNoStop)
{
    second.flags = 0;
    manager.SetFocus(&second);
    manager.SetNextTabControl();
    EXPECT_EQ(manager.GetFocus(), &third);
    manager.SetFocus(&second);
    manager.SetNextTabControl(false);
    EXPECT_EQ(manager.GetFocus(), &first);
}

TEST_F(ManagerFocusTest, WithoutStopsTabDoesNothing)
{
    first.flags = second.flags = third.flags = 0;
    EXPECT_FALSE(manager.SetNextTabControl());
    EXPECT_EQ(manager.GetFocus(), nullptr);
}

TEST_F(ManagerFocusTest, ControlTabIsLeftAlone)
{
    manager.SetFocus(&first);
    BYTE keys[256]{};
    ::GetKeyboardState(keys);
    keys[VK_CONTROL] = 0x80;
    ::SetKeyboardState(keys);
    LRESULT result = 0;
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYDOWN, VK_TAB, 0, result));
    EXPECT_EQ(manager.GetFocus(), &first);
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYDOWN, VK_TAB, 0, result));
    EXPECT_EQ(manager.GetFocus(), &second);
}

TEST_F(ManagerFocusTest, ShiftTabGoesBack)
{
    manager.SetFocus(&second);
    BYTE keys[256]{};
    ::GetKeyboardState(keys);
    keys[VK_SHIFT] = 0x80;
    ::SetKeyboardState(keys);
    host.KeyDown(VK_TAB);
    keys[VK_SHIFT] = 0;
    ::SetKeyboardState(keys);
    EXPECT_EQ(manager.GetFocus(), &first);
}

TEST_F(ManagerFocusTest, AForwardStepWaitsForAPendingLayout)
{
    manager.NeedUpdate();
    EXPECT_TRUE(manager.SetNextTabControl());
    EXPECT_EQ(manager.GetFocus(), nullptr);
    host.Layout();
    EXPECT_EQ(manager.GetFocus(), &first);
}

TEST_F(ManagerFocusTest, SetFocusNeededFocusesAtTheNextPaint)
{
    manager.SetFocusNeeded(&second);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    host.Layout();
    EXPECT_EQ(manager.GetFocus(), &second);
}

TEST_F(ManagerFocusTest, AFreshRootFocusesItsFirstStop)
{
    auto* const root = new CContainerUI;
    auto* const stop = new Probe;
    stop->flags = UIFLAG_TABSTOP;
    root->Add(stop);
    manager.AttachDialog(root);
    host.Layout();
    EXPECT_EQ(manager.GetFocus(), stop);
}

TEST_F(ManagerFocusTest, AnExplicitFocusSettlesTheDebtOfAFreshRoot)
{
    auto* const root = new CContainerUI;
    auto* const stop = new Probe;
    auto* const chosen = new Probe;
    stop->flags = chosen->flags = UIFLAG_TABSTOP;
    root->Add(stop);
    root->Add(chosen);
    manager.AttachDialog(root);
    manager.SetFocus(chosen);
    host.Layout();
    EXPECT_EQ(manager.GetFocus(), chosen);
}

TEST_F(ManagerFocusTest, AWindowThatOnlyAppearsLeavesTheKeyboardWhereItIs)
{
    ::SetFocus(host.Window());
    const HWND before = ::GetFocus();
    ControlHost other(20, 20);
    auto* const root = new CContainerUI;
    auto* const stop = new Probe;
    stop->flags = UIFLAG_TABSTOP;
    root->Add(stop);
    other.Manager().AttachDialog(root);
    other.Layout();
    EXPECT_EQ(other.Manager().GetFocus(), stop);
    EXPECT_EQ(::GetFocus(), before);
}

TEST_F(ManagerFocusTest, AKillFocusHandlerMayRedirectTheFocus)
{
    manager.SetFocus(&first);
    first.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_KILLFOCUS)
            manager.SetFocus(&third);
    };
    manager.SetFocus(&second);
    EXPECT_EQ(manager.GetFocus(), &third);
    EXPECT_EQ(second.Count(UIEVENT_SETFOCUS), 0);
}

TEST_F(ManagerFocusTest, AKillFocusHandlerMayDeleteTheNextControl)
{
    manager.SetFocus(&first);
    first.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_KILLFOCUS) {
            RootOf(host).SetAutoDestroy(false);
            RootOf(host).Remove(&second);
            delete &second;
        }
    };
    manager.SetFocus(&second);
    EXPECT_EQ(manager.GetFocus(), nullptr);
}

TEST_F(ManagerFocusTest, AKillFocusHandlerMayDeleteItsControl)
{
    manager.SetFocus(&first);
    first.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_KILLFOCUS) {
            RootOf(host).SetAutoDestroy(false);
            RootOf(host).Remove(&first);
            delete &first;
        }
    };
    manager.SetFocus(&second);
    EXPECT_EQ(manager.GetFocus(), &second);
    EXPECT_TRUE(host.Sent(L"killfocus").empty());
}

TEST_F(ManagerFocusTest, RemovingTheFocusedControlForgetsIt)
{
    manager.SetFocus(&second);
    RootOf(host).Remove(&second);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    host.Pump();
    manager.SetFocus(&first);
    EXPECT_EQ(manager.GetFocus(), &first);
}

TEST_F(ManagerFocusTest, WinFocusReachesTheFocusedControl)
{
    manager.SetFocus(&first);
    first.events.clear();
    host.Send(WM_SETFOCUS);
    EXPECT_EQ(first.Types(), std::vector<int>{UIEVENT_SETFOCUS});
}

TEST_F(ManagerFocusTest, TheShortcutFocusesAndActivates)
{
    second.SetShortcut(L'B');
    third.SetShortcut(L'b');
    LRESULT result = 0;
    EXPECT_TRUE(manager.PreMessageHandler(WM_SYSCHAR, L'b', 0, result));
    EXPECT_EQ(manager.GetFocus(), &second);
    EXPECT_EQ(second.activations, 1);
    second.SetEnabled(false);
    EXPECT_TRUE(manager.PreMessageHandler(WM_SYSCHAR, L'B', 0, result));
    EXPECT_EQ(third.activations, 1);
    EXPECT_FALSE(manager.PreMessageHandler(WM_SYSCHAR, L'x', 0, result));
}

} // namespace
