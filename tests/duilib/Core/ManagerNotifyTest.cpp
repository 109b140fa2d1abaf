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

class ManagerNotifyTest : public testing::Test {
protected:
    ManagerNotifyTest()
    {
        host.Pump();
        host.ClearSent();
    }
    void Drop(Probe& control)
    {
        RootOf(host).SetAutoDestroy(false);
        RootOf(host).Remove(&control);
        delete &control;
    }

    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"probe");
};

std::wstring* g_order = nullptr;

bool NoteDelegate(void*)
{
    *g_order += L"d";
    return false;
}

TEST_F(ManagerNotifyTest, DelegatesComeFirstThenNotifiersInOrder)
{
    std::wstring order;
    g_order = &order;
    probe.OnNotify += &NoteDelegate;
    Listener first;
    Listener second;
    first.onNotify = [&](TNotifyUI&) { order += L"1"; };
    second.onNotify = [&](TNotifyUI&) { order += L"2"; };
    manager.AddNotifier(&first);
    manager.AddNotifier(&second);
    manager.SendNotify(&probe, L"x");
    EXPECT_EQ(order, L"d12");
    manager.RemoveNotifier(&first);
    manager.RemoveNotifier(&second);
}

TEST_F(ManagerNotifyTest, TheManagerFillsInMouseTimeAndParameters)
{
    host.MoveMouse(7, 9);
    Listener listener;
    manager.AddNotifier(&listener);
    const DWORD before = ::GetTickCount();
    manager.SendNotify(&probe, L"x", 11, 22);
    ASSERT_EQ(listener.heard.size(), 1u);
    const auto& heard = listener.heard[0];
    EXPECT_EQ(heard.ptMouse.x, 7);
    EXPECT_EQ(heard.ptMouse.y, 9);
    EXPECT_GE(heard.dwTimestamp, before);
    EXPECT_EQ(heard.wParam, 11u);
    EXPECT_EQ(heard.lParam, 22);
    EXPECT_TRUE(heard.sType == L"x");
    EXPECT_EQ(heard.pSender, &probe);
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, VirtualWindowsAreNamedOnlyWhenInUse)
{
    probe.SetVirtualWnd(L"page");
    Listener listener;
    manager.AddNotifier(&listener);
    manager.SendNotify(&probe, L"x");
    manager.UsedVirtualWnd(true);
    manager.SendNotify(&probe, L"x");
    EXPECT_TRUE(listener.heard.at(0).sVirtualWnd.IsEmpty());
    EXPECT_TRUE(listener.heard.at(1).sVirtualWnd == L"page");
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, ANotifierIsRegisteredOnce)
{
    Listener listener;
    EXPECT_TRUE(manager.AddNotifier(&listener));
    EXPECT_FALSE(manager.AddNotifier(&listener));
    EXPECT_FALSE(manager.AddNotifier(nullptr));
    manager.SendNotify(&probe, L"x");
    EXPECT_EQ(listener.heard.size(), 1u);
    EXPECT_TRUE(manager.RemoveNotifier(&listener));
    EXPECT_FALSE(manager.RemoveNotifier(&listener));
}

TEST_F(ManagerNotifyTest, ANotifierMayRemoveItself)
{
    Listener first;
    Listener second;
    first.onNotify = [&](TNotifyUI&) { manager.RemoveNotifier(&first); };
    manager.AddNotifier(&first);
    manager.AddNotifier(&second);
    manager.SendNotify(&probe, L"x");
    manager.SendNotify(&probe, L"y");
    EXPECT_EQ(first.heard.size(), 1u);
    EXPECT_EQ(second.heard.size(), 2u);
    manager.RemoveNotifier(&second);
}

TEST_F(ManagerNotifyTest, ARemovedNotifierHearsNothingMore)
{
    Listener first;
    auto second = std::make_unique<Listener>();
    Listener third;
    first.onNotify = [&](TNotifyUI&) {
        manager.RemoveNotifier(second.get());
        second.reset();
    };
    manager.AddNotifier(&first);
    manager.AddNotifier(second.get());
    manager.AddNotifier(&third);
    manager.SendNotify(&probe, L"x");
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(third.heard.size(), 1u);
    manager.RemoveNotifier(&first);
    manager.RemoveNotifier(&third);
}

TEST_F(ManagerNotifyTest, ANotifierAddedMeanwhileWaitsForTheNext)
{
    Listener first;
    Listener late;
    first.onNotify = [&](TNotifyUI&) { manager.AddNotifier(&late); };
    manager.AddNotifier(&first);
    manager.SendNotify(&probe, L"x");
    EXPECT_TRUE(late.heard.empty());
    manager.SendNotify(&probe, L"y");
    EXPECT_EQ(late.heard.size(), 1u);
    manager.RemoveNotifier(&first);
    manager.RemoveNotifier(&late);
}

TEST_F(ManagerNotifyTest, NotificationsNest)
{
    Listener listener;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == L"x")
            manager.SendNotify(&probe, L"y");
    };
    manager.AddNotifier(&listener);
    manager.SendNotify(&probe, L"x");
    ASSERT_EQ(listener.heard.size(), 2u);
    EXPECT_TRUE(listener.heard[1].sType == L"y");
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, AsynchronousOnesComeFromTheQueueInOrder)
{
    manager.SendNotify(&probe, L"a", 1, 0, true);
    manager.SendNotify(&probe, L"b", 2, 0, true);
    EXPECT_TRUE(host.Sent().empty());
    host.Pump();
    ASSERT_EQ(host.Sent().size(), 2u);
    EXPECT_EQ(host.Sent()[0].type, L"a");
    EXPECT_EQ(host.Sent()[1].type, L"b");
}

TEST_F(ManagerNotifyTest, WhatIsQueuedDuringDeliveryComesLaterToo)
{
    Listener listener;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == L"a")
            manager.SendNotify(&probe, L"b", 0, 0, true);
    };
    manager.AddNotifier(&listener);
    manager.SendNotify(&probe, L"a", 0, 0, true);
    host.Send(WM_APP + 1);
    EXPECT_EQ(listener.heard.size(), 1u);
    host.Pump();
    EXPECT_EQ(listener.heard.size(), 2u);
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, QueuedOnesOfADeadControlAreDropped)
{
    Probe& second = AddProbe(host, {0, 0, 10, 10}, L"second");
    manager.SendNotify(&probe, L"a", 0, 0, true);
    manager.SendNotify(&second, L"b", 0, 0, true);
    Drop(probe);
    host.Pump();
    EXPECT_TRUE(host.Sent(L"a").empty());
    ASSERT_EQ(host.Sent(L"b").size(), 1u);
    EXPECT_EQ(host.Sent(L"b")[0].sender, &second);
}

TEST_F(ManagerNotifyTest, QueuedOnesOfARemovedControlAreDropped)
{
    manager.SendNotify(&probe, L"a", 0, 0, true);
    RootOf(host).Remove(&probe);
    host.Pump();
    EXPECT_TRUE(host.Sent(L"a").empty());
}

TEST_F(ManagerNotifyTest, AFullQueueSurvivesAListenerThatDeletesASender)
{
    Probe& second = AddProbe(host, {0, 0, 10, 10}, L"second");
    manager.SendNotify(&probe, L"a", 0, 0, true);
    manager.SendNotify(&second, L"b", 0, 0, true);
    manager.SendNotify(&probe, L"c", 0, 0, true);
    Listener listener;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == L"a")
            Drop(second);
    };
    manager.AddNotifier(&listener);
    host.Pump();
    EXPECT_EQ(host.Sent(L"a").size(), 1u);
    EXPECT_TRUE(host.Sent(L"b").empty());
    EXPECT_EQ(host.Sent(L"c").size(), 1u);
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, ANotificationWithoutASenderIsDelivered)
{
    manager.SendNotify(nullptr, L"x");
    ASSERT_EQ(host.Sent().size(), 1u);
    EXPECT_EQ(host.Sent()[0].sender, nullptr);
}

TEST_F(ManagerNotifyTest, AClickHandlerMayRemoveItsButton)
{
    auto& button = host.Add<CButtonUI>();
    button.SetName(L"button");
    Listener listener;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == DUI_MSGTYPE_CLICK)
            RootOf(host).Remove(notification.pSender);
    };
    manager.AddNotifier(&listener);
    host.Click(50, 30);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    EXPECT_EQ(RootOf(host).GetCount(), 1);
    host.Pump();
    host.Click(50, 30);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerNotifyTest, AClickHandlerMayRemoveEveryNotifier)
{
    host.Add<CButtonUI>();
    Listener first;
    Listener second;
    first.onNotify = [&](TNotifyUI&) {
        manager.RemoveNotifier(&first);
        manager.RemoveNotifier(&second);
    };
    manager.AddNotifier(&first);
    manager.AddNotifier(&second);
    host.Click(50, 30);
    EXPECT_TRUE(second.heard.empty());
    EXPECT_FALSE(manager.RemoveNotifier(&first));
}

TEST_F(ManagerNotifyTest, ADeadSenderIsNotHeardOfAnyMore)
{
    int deaths = 0;
    probe.deaths = &deaths;
    Listener first;
    Listener later;
    first.onNotify = [&](TNotifyUI&) { Drop(probe); };
    manager.AddNotifier(&first);
    manager.AddNotifier(&later);
    manager.SendNotify(&probe, L"x");
    EXPECT_EQ(deaths, 1);
    EXPECT_TRUE(later.heard.empty());
    manager.RemoveNotifier(&first);
    manager.RemoveNotifier(&later);
}

TEST_F(ManagerNotifyTest, AMessageLoopInsideAHandlerDoesNotDeleteItsControl)
{
    int deaths = 0;
    probe.deaths = &deaths;
    bool alive = false;
    probe.onEvent = [&](TEventUI& event) {
        if (event.Type != UIEVENT_BUTTONDOWN)
            return;
        RootOf(host).Remove(&probe);
        host.Pump();
        alive = deaths == 0;
    };
    host.Press(5, 5);
    EXPECT_TRUE(alive);
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

TEST_F(ManagerNotifyTest, AMessageLoopInsideAHandlerDoesNotDeleteItsParent)
{
    auto* const box = new CContainerUI;
    auto* const inner = new Probe;
    int deaths = 0;
    inner->deaths = &deaths;
    box->Add(inner);
    host.Adopt(box);
    bool alive = false;
    inner->onEvent = [&](TEventUI& event) {
        if (event.Type != UIEVENT_BUTTONDOWN)
            return;
        RootOf(host).Remove(box);
        host.Pump();
        alive = deaths == 0;
    };
    host.Press(50, 50);
    EXPECT_TRUE(alive);
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

TEST_F(ManagerNotifyTest, DelayedCleanupTwiceDeletesOnce)
{
    int deaths = 0;
    auto* const loose = new Probe;
    loose->deaths = &deaths;
    manager.AddDelayedCleanup(loose);
    manager.AddDelayedCleanup(loose);
    manager.AddDelayedCleanup(nullptr);
    EXPECT_EQ(loose->GetParent(), nullptr);
    EXPECT_EQ(loose->GetManager(), &manager);
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

TEST_F(ManagerNotifyTest, AScheduledControlMayBeDeletedEarly)
{
    int deaths = 0;
    auto* const loose = new Probe;
    loose->deaths = &deaths;
    manager.AddDelayedCleanup(loose);
    delete loose;
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

TEST(ManagerNotifyWindowTest, WhatIsScheduledDiesWithTheManager)
{
    int deaths = 0;
    {
        ControlHost host(40, 30);
        auto* const loose = new Probe;
        loose->deaths = &deaths;
        host.Manager().AddDelayedCleanup(loose);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(ManagerNotifyWindowTest, ANotifierMayDestroyTheWindowAndItsManager)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    window->m_manager.AttachDialog(new CButtonUI);
    Listener first;
    Listener second;
    first.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == L"leave")
            ::DestroyWindow(handle);
    };
    window->m_manager.AddNotifier(&first);
    window->m_manager.AddNotifier(&second);
    window->m_manager.SendNotify(window->m_manager.GetRoot(), L"leave");
    EXPECT_TRUE(gone);
    EXPECT_TRUE(second.heard.empty());
}

TEST(ManagerNotifyWindowTest, AQueuedNotificationMayDestroyTheWindowAndItsManager)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    window->m_manager.AttachDialog(new CControlUI);
    Listener listener;
    listener.onNotify = [&](TNotifyUI&) { ::DestroyWindow(handle); };
    window->m_manager.AddNotifier(&listener);
    window->m_manager.SendNotify(window->m_manager.GetRoot(), L"leave", 0, 0, true);
    window->m_manager.SendNotify(window->m_manager.GetRoot(), L"leave", 0, 0, true);
    ::SendMessageW(handle, WM_APP + 1, 0, 0);
    EXPECT_TRUE(gone);
    EXPECT_EQ(listener.heard.size(), 1u);
}

} // namespace
