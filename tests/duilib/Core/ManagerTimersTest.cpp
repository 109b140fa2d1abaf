#include "duilib/Core/ManagerKit.h"

#include <gtest/gtest.h>

#include <set>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Probe;
using test::RootOf;
using test::ShortLivedWindow;

namespace {

class ManagerTimersTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"probe");
    Probe& other = AddProbe(host, {10, 0, 20, 10}, L"other");
};

TEST_F(ManagerTimersTest, ATickIsAnEventAndANotification)
{
    EXPECT_TRUE(manager.SetTimer(&probe, 7, 50));
    host.Send(WM_TIMER, host.Timers().at(0).id, 99);
    ASSERT_EQ(probe.Count(UIEVENT_TIMER), 1);
    EXPECT_EQ(probe.events[0].wParam, 7u);
    ASSERT_EQ(host.Sent(L"timer").size(), 1u);
    EXPECT_EQ(host.Sent(L"timer")[0].sender, &probe);
    EXPECT_EQ(host.Sent(L"timer")[0].wParam, 7u);
    EXPECT_EQ(host.Sent(L"timer")[0].lParam, 99);
}

TEST_F(ManagerTimersTest, APairRunsOnce)
{
    EXPECT_TRUE(manager.SetTimer(&probe, 1, 50));
    EXPECT_FALSE(manager.SetTimer(&probe, 1, 80));
    ASSERT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Timers()[0].period, 50u);
    EXPECT_TRUE(manager.SetTimer(&other, 1, 80));
    EXPECT_TRUE(manager.SetTimer(&probe, 2, 80));
    EXPECT_EQ(host.Timers().size(), 3u);
}

TEST_F(ManagerTimersTest, AKilledTimerRestartsWithTheNewPeriod)
{
    manager.SetTimer(&probe, 1, 50);
    EXPECT_TRUE(manager.KillTimer(&probe, 1));
    EXPECT_FALSE(manager.KillTimer(&probe, 1));
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_TRUE(manager.SetTimer(&probe, 1, 80));
    EXPECT_EQ(host.Timers().at(0).period, 80u);
}

TEST_F(ManagerTimersTest, NumbersStartFarAboveThoseOfWindows)
{
    manager.SetTimer(&probe, 1, 50);
    manager.SetTimer(&probe, 2, 50);
    for (const auto& timer : host.Timers())
        EXPECT_GE(timer.id, 0x10000000u);
}

TEST_F(ManagerTimersTest, NumbersAreNotReused)
{
    std::set<UINT_PTR> seen;
    for (int round = 0; round < 20; ++round) {
        manager.SetTimer(&probe, 1, 50);
        EXPECT_TRUE(seen.insert(host.Timers().at(0).id).second);
        manager.KillTimer(&probe, 1);
    }
}

TEST_F(ManagerTimersTest, TheWholeNumberIsCompared)
{
    manager.SetTimer(&probe, 1, 50);
    const UINT_PTR id = host.Timers().at(0).id;
    host.Send(WM_TIMER, LOWORD(id));
    host.Send(WM_TIMER, id | (static_cast<UINT_PTR>(1) << 40));
    host.Send(WM_TIMER, 1);
    EXPECT_EQ(probe.Count(UIEVENT_TIMER), 0);
}

TEST_F(ManagerTimersTest, TimersOfTheWindowAreNotTheManagers)
{
    LRESULT result = 0;
    EXPECT_FALSE(manager.MessageHandler(WM_TIMER, 3257, 0, result));
    manager.SetTimer(&probe, 1, 50);
    EXPECT_FALSE(manager.MessageHandler(WM_TIMER, host.Timers().at(0).id, 0, result));
}

TEST_F(ManagerTimersTest, HiddenAndDisabledControlsTickToo)
{
    probe.SetVisible(false);
    probe.SetEnabled(false);
    manager.SetTimer(&probe, 1, 50);
    host.AdvanceFrames(2);
    EXPECT_EQ(probe.Count(UIEVENT_TIMER), 2);
}

TEST_F(ManagerTimersTest, KillTimerOfAControlStopsAllOfItsTimers)
{
    manager.SetTimer(&probe, 1, 50);
    manager.SetTimer(&probe, 0xFFFFFFFF, 50);
    manager.SetTimer(&other, 1, 50);
    manager.KillTimer(&probe);
    ASSERT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(1);
    EXPECT_EQ(other.Count(UIEVENT_TIMER), 1);
    EXPECT_EQ(probe.Count(UIEVENT_TIMER), 0);
}

TEST_F(ManagerTimersTest, RemoveAllTimersStopsEverything)
{
    manager.SetTimer(&probe, 1, 50);
    manager.SetTimer(&other, 1, 50);
    manager.RemoveAllTimers();
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ManagerTimersTest, ARemovedControlLosesItsTimersAtOnce)
{
    manager.SetTimer(&probe, 1, 50);
    RootOf(host).Remove(&probe);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ManagerTimersTest, ADeletedControlLosesItsTimers)
{
    manager.SetTimer(&probe, 1, 50);
    RootOf(host).SetAutoDestroy(false);
    RootOf(host).Remove(&probe);
    delete &probe;
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ManagerTimersTest, AHandlerMayKillItsOwnTimer)
{
    manager.SetTimer(&probe, 1, 50);
    probe.onEvent = [&](TEventUI& event) {
        manager.KillTimer(&probe, static_cast<UINT>(event.wParam));
    };
    host.AdvanceFrames(3);
    EXPECT_EQ(probe.Count(UIEVENT_TIMER), 1);
}

TEST_F(ManagerTimersTest, AHandlerMayRestartItsOwnTimer)
{
    manager.SetTimer(&probe, 1, 50);
    probe.onEvent = [&](TEventUI&) {
        manager.KillTimer(&probe, 1);
        manager.SetTimer(&probe, 1, 90);
    };
    host.AdvanceFrames(3);
    EXPECT_EQ(probe.Count(UIEVENT_TIMER), 3);
    EXPECT_EQ(host.Timers().at(0).period, 90u);
}

TEST_F(ManagerTimersTest, AHandlerMayDeleteItsControl)
{
    int deaths = 0;
    probe.deaths = &deaths;
    manager.SetTimer(&probe, 1, 50);
    manager.SetTimer(&other, 1, 50);
    probe.onEvent = [&](TEventUI&) {
        RootOf(host).SetAutoDestroy(false);
        RootOf(host).Remove(&probe);
        delete &probe;
    };
    host.AdvanceFrames(2);
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(other.Count(UIEVENT_TIMER), 2);
}

TEST_F(ManagerTimersTest, AHandlerMayRemoveTheOtherControl)
{
    manager.SetTimer(&probe, 1, 50);
    manager.SetTimer(&other, 1, 50);
    probe.onEvent = [&](TEventUI&) { RootOf(host).Remove(&other); };
    host.AdvanceFrames(1);
    EXPECT_EQ(host.Timers().size(), 1u);
}

TEST(ManagerTimersWindowTest, AHandlerMayDestroyTheWindowAndItsManager)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    auto* const probe = new Probe;
    window->m_manager.AttachDialog(probe);
    ASSERT_TRUE(probe->SetTimer(1, 10000));
    probe->onEvent = [handle](TEventUI& event) {
        if (event.Type == UIEVENT_TIMER)
            ::DestroyWindow(handle);
    };
    // Numbers grow by one, so the newest of the process belongs to the probe.
    for (UINT id = 0x10000000; !gone && id < 0x10000100; ++id)
        ::SendMessageW(handle, WM_TIMER, id, 0);
    EXPECT_TRUE(gone);
}

TEST_F(ManagerTimersTest, AnIdleWindowHasNoTimer)
{
    host.MoveMouse(5, 5);
    host.Click(5, 5);
    host.Paint();
    host.Pump();
    EXPECT_TRUE(host.Timers().empty());
}

} // namespace
