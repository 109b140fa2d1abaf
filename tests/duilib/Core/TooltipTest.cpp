#include "duilib/Core/ManagerKit.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::ImportHook;
using test::Probe;

namespace {

class TooltipTest : public testing::Test {
protected:
    void Hover(int x, int y)
    {
        host.MoveMouse(x, y);
        host.Send(WM_MOUSEHOVER, 0, MAKELPARAM(x, y));
    }
    bool Shows() const
    {
        const HWND tip = host.Manager().GetTooltipWindow();
        return tip && ::IsWindowVisible(tip);
    }
    std::wstring Text() const
    {
        wchar_t text[200]{};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.hwnd = host.Window();
        tool.uId = reinterpret_cast<UINT_PTR>(host.Window());
        tool.lpszText = text;
        ::SendMessageW(host.Manager().GetTooltipWindow(), TTM_GETTEXTW, 200,
                       reinterpret_cast<LPARAM>(&tool));
        return text;
    }

    mutable ControlHost host{100, 60};
    Probe& left = AddProbe(host, {0, 0, 50, 60});
    Probe& right = AddProbe(host, {50, 0, 100, 60});
};

TEST_F(TooltipTest, RestingShowsTheTipOfTheControl)
{
    left.SetToolTip(L"first line<n>second line");
    EXPECT_EQ(host.Manager().GetTooltipWindow(), nullptr);
    Hover(10, 10);
    EXPECT_TRUE(Shows());
    EXPECT_EQ(Text(), L"first line\r\nsecond line");
    EXPECT_EQ(left.Count(UIEVENT_MOUSEHOVER), 1);
}

TEST_F(TooltipTest, TheMaximumWidthIsTheControls)
{
    left.SetToolTip(L"tip");
    left.SetToolTipWidth(123);
    Hover(10, 10);
    EXPECT_EQ(::SendMessageW(host.Manager().GetTooltipWindow(), TTM_GETMAXTIPWIDTH, 0, 0), 123);
}

TEST_F(TooltipTest, TheTipStaysInsideTheWorkAreaAndOffTheCursor)
{
    POINT before{};
    ::GetCursorPos(&before);
    RECT work{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    left.SetToolTip(L"some tip of a certain width");
    ::SetCursorPos(work.right - 2, work.bottom - 2);
    Hover(10, 10);
    RECT tip{};
    ::GetWindowRect(host.Manager().GetTooltipWindow(), &tip);
    EXPECT_LE(tip.right, work.right);
    EXPECT_LE(tip.bottom, work.bottom);
    EXPECT_FALSE(::PtInRect(&tip, POINT{work.right - 2, work.bottom - 2}));
    ::SetCursorPos(before.x, before.y);
}

TEST_F(TooltipTest, MovingToAnotherControlHidesIt)
{
    left.SetToolTip(L"tip");
    Hover(10, 10);
    host.MoveMouse(12, 10);
    EXPECT_TRUE(Shows());
    host.MoveMouse(60, 10);
    EXPECT_FALSE(Shows());
}

TEST_F(TooltipTest, LeavingAndPressingHideIt)
{
    left.SetToolTip(L"tip");
    Hover(10, 10);
    host.LeaveMouse();
    EXPECT_FALSE(Shows());
    Hover(10, 10);
    EXPECT_TRUE(Shows());
    host.Press(10, 10);
    EXPECT_FALSE(Shows());
    host.Release(10, 10);
}

TEST_F(TooltipTest, ControlsWithoutATextShowNone)
{
    left.SetToolTip(L"tip");
    Hover(10, 10);
    Hover(60, 10);
    EXPECT_FALSE(Shows());
    EXPECT_EQ(right.Count(UIEVENT_MOUSEHOVER), 1);
}

TEST_F(TooltipTest, OneWindowServesAllTips)
{
    left.SetToolTip(L"left");
    right.SetToolTip(L"right");
    Hover(10, 10);
    const HWND tip = host.Manager().GetTooltipWindow();
    Hover(60, 10);
    EXPECT_EQ(host.Manager().GetTooltipWindow(), tip);
    EXPECT_EQ(Text(), L"right");
    EXPECT_TRUE(Shows());
}

TEST_F(TooltipTest, HoverIsConsumedOverAControlOnly)
{
    LRESULT result = 0;
    EXPECT_TRUE(host.Manager().MessageHandler(WM_MOUSEHOVER, 0, MAKELPARAM(5, 5), result));
    EXPECT_FALSE(host.Manager().MessageHandler(WM_MOUSEHOVER, 0, MAKELPARAM(500, 5), result));
}

TEST_F(TooltipTest, AHoverHandlerMayDeleteItsControl)
{
    left.SetToolTip(L"tip");
    left.onEvent = [&](TEventUI& event) {
        if (event.Type == UIEVENT_MOUSEHOVER) {
            test::RootOf(host).SetAutoDestroy(false);
            test::RootOf(host).Remove(&left);
            delete &left;
        }
    };
    Hover(10, 10);
    EXPECT_FALSE(Shows());
}

TEST_F(TooltipTest, ClosingDestroysTheTipWindow)
{
    left.SetToolTip(L"tip");
    Hover(10, 10);
    const HWND tip = host.Manager().GetTooltipWindow();
    LRESULT result = 0;
    host.Manager().MessageHandler(WM_CLOSE, 0, 0, result);
    EXPECT_FALSE(::IsWindow(tip));
    EXPECT_EQ(host.Manager().GetTooltipWindow(), nullptr);
}

DWORD g_hoverTime;
int g_tracked;

BOOL WINAPI NoteTracking(LPTRACKMOUSEEVENT track)
{
    g_hoverTime = track->dwHoverTime;
    ++g_tracked;
    return TRUE;
}

TEST_F(TooltipTest, TheDelayIsTheManagersHoverTime)
{
    const ImportHook hook(L"DuiLib.dll", "USER32.dll", "TrackMouseEvent", &NoteTracking);
    ASSERT_TRUE(hook);
    host.LeaveMouse();
    g_tracked = 0;
    host.MoveMouse(10, 10);
    EXPECT_EQ(g_hoverTime, 400u);
    host.Manager().SetHoverTime(150);
    host.MoveMouse(11, 10);
    EXPECT_EQ(g_hoverTime, 150u);
    host.MoveMouse(12, 10);
    EXPECT_EQ(g_tracked, 2);
    Hover(12, 10);
    host.MoveMouse(13, 10);
    EXPECT_EQ(g_tracked, 3);
}

TEST(TooltipWindowTest, TipsGoWithTheirManager)
{
    const int windows = test::UserWindows();
    {
        ControlHost host(40, 30);
        Probe& probe = AddProbe(host, {0, 0, 40, 30});
        probe.SetToolTip(L"tip");
        host.MoveMouse(5, 5);
        host.Send(WM_MOUSEHOVER, 0, MAKELPARAM(5, 5));
        EXPECT_NE(host.Manager().GetTooltipWindow(), nullptr);
    }
    EXPECT_EQ(test::UserWindows(), windows);
}

} // namespace
