#include "duilib/Core/ManagerKit.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

using namespace DuiLib;
using test::AddProbe;
using test::Argb;
using test::ControlHost;
using test::ImportHook;
using test::Listener;
using test::Picture;
using test::Probe;
using test::RootOf;
using test::ShortLivedWindow;

namespace {

constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlack{0xFF000000};

void Spoil(HWND window, const RECT& rect)
{
    ::InvalidateRect(window, &rect, FALSE);
}

class ManagerPaintTest : public testing::Test {
protected:
    ManagerPaintTest()
    {
        host.Root()->SetBkColor(kRed.value);
        host.Paint();
        host.Pump();
        host.ClearSent();
    }
    void Forget()
    {
        left.paints.clear();
        right.paints.clear();
        left.placements = right.placements = 0;
    }

    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
    Probe& left = AddProbe(host, {0, 0, 20, 20}, L"left");
    Probe& right = AddProbe(host, {80, 40, 100, 60}, L"right");
};

TEST_F(ManagerPaintTest, WithoutARootTheWindowIsBlack)
{
    delete host.Root();
    ::InvalidateRect(host.Window(), nullptr, FALSE);
    ::UpdateWindow(host.Window());
    EXPECT_EQ(host.Screen().At(50, 30), kBlack);
    EXPECT_FALSE(::GetUpdateRect(host.Window(), nullptr, FALSE));
}

TEST_F(ManagerPaintTest, ThePictureReachesTheWindow)
{
    left.SetBkColor(kGreen.value);
    ::UpdateWindow(host.Window());
    const Picture screen = host.Screen();
    EXPECT_EQ(screen.At(10, 10), kGreen);
    EXPECT_EQ(screen.At(50, 30), kRed);
}

TEST_F(ManagerPaintTest, PaintingIsOneWindowSizedUpdateAtATime)
{
    Forget();
    Spoil(host.Window(), {0, 0, 30, 30});
    ::UpdateWindow(host.Window());
    ASSERT_EQ(left.paints.size(), 1u);
    EXPECT_TRUE(right.paints.empty());
    EXPECT_EQ(left.paints[0].right, 20);
}

TEST_F(ManagerPaintTest, AScatteredUpdateDoesNotPaintWhatLiesBetween)
{
    Probe& middle = AddProbe(host, {45, 25, 55, 35});
    ::UpdateWindow(host.Window());
    middle.paints.clear();
    Forget();
    Spoil(host.Window(), {0, 0, 20, 20});
    Spoil(host.Window(), {80, 40, 100, 60});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(left.paints.size(), 1u);
    EXPECT_EQ(right.paints.size(), 1u);
    EXPECT_TRUE(middle.paints.empty());
}

TEST_F(ManagerPaintTest, ManyScatteredRectanglesBecomeTheOneAroundThem)
{
    Probe& middle = AddProbe(host, {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
    middle.paints.clear();
    for (LONG index = 0; index < 30; ++index)
        Spoil(host.Window(), {index * 3, index * 2, index * 3 + 1, index * 2 + 1});
    ::UpdateWindow(host.Window());
    ASSERT_EQ(middle.paints.size(), 1u);
    EXPECT_EQ(middle.paints[0].left, 0);
    EXPECT_EQ(middle.paints[0].right, 88);
}

TEST_F(ManagerPaintTest, TranslucentControlsLookTheSameAfterAScatteredUpdate)
{
    Probe& veil = AddProbe(host, {0, 0, 100, 60});
    veil.SetBkColor(0x80000000);
    ::UpdateWindow(host.Window());
    const Picture before = host.Screen();
    for (int round = 0; round < 3; ++round) {
        Spoil(host.Window(), {0, 0, 20, 20});
        Spoil(host.Window(), {80, 40, 100, 60});
        ::UpdateWindow(host.Window());
    }
    EXPECT_EQ(host.Screen(), before);
}

TEST_F(ManagerPaintTest, ATranslucentRootLooksTheSameAfterEveryPaint)
{
    auto* const root = new CControlUI;
    root->SetBkColor(0x80FFFFFF);
    manager.AttachDialog(root);
    host.Layout();
    const Picture before = host.Screen();
    Spoil(host.Window(), {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(host.Screen(), before);
}

TEST_F(ManagerPaintTest, AnEmptyUpdateRegionPaintsNothing)
{
    Forget();
    host.Send(WM_PAINT);
    EXPECT_TRUE(left.paints.empty());
}

TEST_F(ManagerPaintTest, AnUnchangedWindowCostsNothing)
{
    Forget();
    ::UpdateWindow(host.Window());
    host.Pump();
    EXPECT_TRUE(left.paints.empty());
    EXPECT_EQ(left.placements, 0);
    EXPECT_FALSE(::GetUpdateRect(host.Window(), nullptr, FALSE));
}

TEST_F(ManagerPaintTest, OnlyFlaggedControlsAreLaidOut)
{
    Forget();
    left.NeedUpdate();
    EXPECT_TRUE(manager.IsUpdateNeeded());
    ::UpdateWindow(host.Window());
    EXPECT_EQ(left.placements, 1);
    EXPECT_EQ(right.placements, 0);
    EXPECT_FALSE(manager.IsUpdateNeeded());
}

TEST_F(ManagerPaintTest, BelowAFlaggedContainerNothingIsLaidOutTwice)
{
    auto* const box = new CContainerUI;
    auto* const inner = new Probe;
    box->Add(inner);
    host.Adopt(box);
    inner->placements = 0;
    inner->NeedUpdate();
    box->NeedUpdate();
    ::UpdateWindow(host.Window());
    EXPECT_EQ(inner->placements, 1);
}

TEST_F(ManagerPaintTest, HiddenFlaggedControlsWait)
{
    left.SetVisible(false);
    host.Layout();
    Forget();
    left.NeedUpdate();
    right.NeedUpdate();
    ::UpdateWindow(host.Window());
    EXPECT_EQ(left.placements, 0);
    EXPECT_EQ(right.placements, 1);
}

TEST_F(ManagerPaintTest, WindowInitComesOnceAfterTheFirstLayoutBeforeAnythingIsDrawn)
{
    auto* const root = new Probe;
    root->SetName(L"root");
    bool drawn = true;
    RECT place{};
    Listener listener;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == DUI_MSGTYPE_WINDOWINIT) {
            drawn = !root->paints.empty();
            place = root->GetPos();
        }
    };
    manager.AddNotifier(&listener);
    manager.AttachDialog(root);
    host.Layout();
    EXPECT_FALSE(drawn);
    EXPECT_EQ(place.right, 100);
    root->NeedUpdate();
    host.Layout();
    ASSERT_EQ(host.Sent(L"windowinit").size(), 1u);
    EXPECT_EQ(host.Sent(L"windowinit")[0].senderName, L"root");
    manager.RemoveNotifier(&listener);
}

TEST_F(ManagerPaintTest, WindowSizeFollowsAPassThatLaidOut)
{
    Spoil(host.Window(), {0, 0, 20, 20});
    ::UpdateWindow(host.Window());
    host.Pump();
    EXPECT_TRUE(host.Sent(L"windowsize").empty());
    left.NeedUpdate();
    ::UpdateWindow(host.Window());
    EXPECT_TRUE(host.Sent(L"windowsize").empty());
    host.Pump();
    EXPECT_EQ(host.Sent(L"windowsize").size(), 1u);
}

TEST_F(ManagerPaintTest, SizingTheWindowLaysTheRootOut)
{
    host.Resize(150, 90);
    host.Layout();
    EXPECT_EQ(host.Root()->GetWidth(), 150);
    EXPECT_EQ(host.Root()->GetHeight(), 90);
    EXPECT_EQ(host.Screen().At(140, 80), kRed);
    host.Resize(60, 40);
    host.Layout();
    EXPECT_EQ(host.Root()->GetWidth(), 60);
    EXPECT_EQ(host.Screen().At(50, 30), kRed);
}

TEST_F(ManagerPaintTest, ALayoutMayAskForAnother)
{
    bool again = true;
    class Restless : public Probe {
    public:
        void SetPos(RECT place, bool invalidate = true) override
        {
            Probe::SetPos(place, invalidate);
            if (std::exchange(*again, false))
                NeedUpdate();
        }
        bool* again = nullptr;
    };
    auto* const root = new Restless;
    root->again = &again;
    manager.AttachDialog(root);
    ::UpdateWindow(host.Window());
    EXPECT_TRUE(manager.IsUpdateNeeded());
    EXPECT_TRUE(::GetUpdateRect(host.Window(), nullptr, FALSE));
    ::UpdateWindow(host.Window());
    EXPECT_FALSE(manager.IsUpdateNeeded());
}

TEST_F(ManagerPaintTest, IsPaintingIsTrueWhileThingsAreDrawn)
{
    bool painting = false;
    manager.AddPostPaint(&left);
    left.onPostPaint = [&] { painting = manager.IsPainting(); };
    EXPECT_FALSE(manager.IsPainting());
    Spoil(host.Window(), {0, 0, 10, 10});
    ::UpdateWindow(host.Window());
    EXPECT_TRUE(painting);
    EXPECT_FALSE(manager.IsPainting());
    manager.SetPainting(true);
    EXPECT_TRUE(manager.IsPainting());
    manager.SetPainting(false);
}

TEST_F(ManagerPaintTest, PostPaintRunsAfterTheTreeInOrder)
{
    std::wstring order;
    EXPECT_TRUE(manager.AddPostPaint(&left));
    EXPECT_TRUE(manager.AddPostPaint(&right));
    left.onPostPaint = [&] { order += L"l"; };
    right.onPostPaint = [&] { order += L"r"; };
    Spoil(host.Window(), {40, 20, 50, 30});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(order, L"lr");
    EXPECT_EQ(left.postPaints.at(0).left, 40);
    EXPECT_EQ(left.postPaints.at(0).bottom, 30);
    EXPECT_TRUE(manager.SetPostPaintIndex(&right, 0));
    EXPECT_FALSE(manager.SetPostPaintIndex(&right, 2));
    order.clear();
    Spoil(host.Window(), {40, 20, 50, 30});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(order, L"rl");
}

TEST_F(ManagerPaintTest, AddingAPostPaintControlTwiceIsRefused)
{
    EXPECT_TRUE(manager.AddPostPaint(&left));
    EXPECT_FALSE(manager.AddPostPaint(&left));
    EXPECT_EQ(manager.GetPostPaintCount(), 1);
    EXPECT_TRUE(manager.IsPostPaint(&left));
    EXPECT_TRUE(manager.RemovePostPaint(&left));
    EXPECT_FALSE(manager.RemovePostPaint(&left));
    EXPECT_FALSE(manager.IsPostPaint(&left));
    EXPECT_FALSE(manager.SetPostPaintIndex(&left, 0));
}

TEST_F(ManagerPaintTest, ADeadControlLeavesNoPostPaintEntry)
{
    manager.AddPostPaint(&left);
    RootOf(host).Remove(&left);
    EXPECT_EQ(manager.GetPostPaintCount(), 0);
    host.Pump();
    Spoil(host.Window(), {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
}

TEST_F(ManagerPaintTest, APostPaintControlMayRemoveItself)
{
    manager.AddPostPaint(&left);
    manager.AddPostPaint(&right);
    left.onPostPaint = [&] { manager.RemovePostPaint(&left); };
    Spoil(host.Window(), {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(right.postPaints.size(), 1u);
    EXPECT_EQ(manager.GetPostPaintCount(), 1);
}

TEST_F(ManagerPaintTest, APaintThatRunsOutOfMemoryIsOverAndTheNextOneIsWhole)
{
    manager.AddPostPaint(&left);
    left.onPostPaint = [] { throw std::bad_alloc(); };
    Spoil(host.Window(), {0, 0, 20, 20});
    ::UpdateWindow(host.Window());
    EXPECT_FALSE(::GetUpdateRect(host.Window(), nullptr, FALSE)) << "nothing is due for ever";
    EXPECT_FALSE(manager.IsPainting());

    left.onPostPaint = nullptr;
    host.Root()->SetBkColor(kGreen.value);
    Spoil(host.Window(), {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(host.Screen().At(10, 10), kGreen);
    EXPECT_EQ(host.Screen().At(90, 30), kGreen) << "not cut to what was due before";
}

TEST_F(ManagerPaintTest, WithoutARegionTheWholeWindowIsPainted)
{
    ControlHost other(40, 30);
    other.Root()->SetBkColor(kGreen.value);
    {
        const ImportHook hook(
            L"DuiLib.dll", "gdi32.dll", "CreateRectRgn",
            +[](int, int, int, int) -> HRGN { return nullptr; });
        ASSERT_TRUE(hook);
        Spoil(other.Window(), {0, 0, 1, 1});
        ::UpdateWindow(other.Window());
        EXPECT_FALSE(::GetUpdateRect(other.Window(), nullptr, FALSE));
    }
    EXPECT_EQ(other.Screen().At(20, 15), kGreen);
}

TEST_F(ManagerPaintTest, AControlThatUpdatesTheWindowWhileItDrawsIsDrawnOnce)
{
    manager.AddPostPaint(&left);
    left.onPostPaint = [&] {
        Spoil(host.Window(), {80, 40, 100, 60});
        ::UpdateWindow(host.Window());
    };
    Forget();
    Spoil(host.Window(), {0, 0, 20, 20});
    ::UpdateWindow(host.Window());
    EXPECT_EQ(left.postPaints.size(), 1u);
    EXPECT_TRUE(right.paints.empty());
    left.onPostPaint = nullptr;
    ::UpdateWindow(host.Window());
    EXPECT_EQ(right.paints.size(), 1u);
}

TEST_F(ManagerPaintTest, InvalidateClampsItsRectangle)
{
    RECT rect{-20, -10, 30, 15};
    ::ValidateRect(host.Window(), nullptr);
    manager.Invalidate(rect);
    RECT due{};
    ::GetUpdateRect(host.Window(), &due, FALSE);
    EXPECT_EQ(due.left, 0);
    EXPECT_EQ(due.top, 0);
    EXPECT_EQ(due.right, 30);
    EXPECT_EQ(due.bottom, 15);
}

TEST_F(ManagerPaintTest, PrintClientPaintsTheWholeRootAnywhere)
{
    ::ValidateRect(host.Window(), nullptr);
    Forget();
    test::Canvas canvas(100, 60);
    host.Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
    EXPECT_EQ(canvas.Take().At(50, 30), kRed);
    EXPECT_EQ(left.paints.size(), 1u);
    EXPECT_EQ(right.paints.size(), 1u);
}

TEST_F(ManagerPaintTest, PrintClientPrintsChildrenWhenAsked)
{
    test::MakePrintedChild(host.Window(), {30, 20, 50, 40});
    test::Canvas without(100, 60);
    host.Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(without.Dc()), PRF_CLIENT);
    EXPECT_EQ(without.Take().At(40, 30), kRed);
    test::Canvas with(100, 60);
    host.Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(with.Dc()), PRF_CLIENT | PRF_CHILDREN);
    const Picture picture = with.Take();
    EXPECT_EQ(picture.At(30, 20), Argb{0xFF0000FF});
    EXPECT_EQ(picture.At(49, 39), Argb{0xFF0000FF});
    EXPECT_EQ(picture.Count(Argb{0xFF0000FF}), 400);
}

int g_made;

HRGN WINAPI NoteRectRgn(int left, int top, int right, int bottom)
{
    ++g_made;
    return ::CreateRectRgn(left, top, right, bottom);
}

HDC WINAPI NoteCompatibleDc(HDC dc)
{
    ++g_made;
    return ::CreateCompatibleDC(dc);
}

HBITMAP WINAPI NoteDib(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                       DWORD offset)
{
    ++g_made;
    return ::CreateDIBSection(dc, info, usage, bits, section, offset);
}

HBRUSH WINAPI NoteBrush(COLORREF colour)
{
    ++g_made;
    return ::CreateSolidBrush(colour);
}

TEST_F(ManagerPaintTest, ASteadyPaintMakesNoHandle)
{
    left.SetBkColor(kGreen.value);
    right.SetBkColor(0x80FF0000);
    host.Paint();
    Spoil(host.Window(), {0, 0, 100, 60});
    ::UpdateWindow(host.Window());
    const ImportHook region(L"DuiLib.dll", "GDI32.dll", "CreateRectRgn", &NoteRectRgn);
    const ImportHook dc(L"DuiLib.dll", "GDI32.dll", "CreateCompatibleDC", &NoteCompatibleDc);
    const ImportHook dib(L"DuiLib.dll", "GDI32.dll", "CreateDIBSection", &NoteDib);
    const ImportHook brush(L"DuiLib.dll", "GDI32.dll", "CreateSolidBrush", &NoteBrush);
    ASSERT_TRUE(region);
    ASSERT_TRUE(dc);
    ASSERT_TRUE(dib);
    g_made = 0;
    Forget();
    for (int round = 0; round < 5; ++round) {
        Spoil(host.Window(), {0, 0, 20, 20});
        Spoil(host.Window(), {80, 40, 100, 60});
        ::UpdateWindow(host.Window());
    }
    EXPECT_EQ(left.paints.size(), 5u);
    EXPECT_EQ(g_made, 0);
}

TEST_F(ManagerPaintTest, PaintingLeavesNoObjects)
{
    host.Paint();
    const int objects = test::GdiObjects();
    for (int round = 0; round < 20; ++round) {
        Spoil(host.Window(), {0, 0, 20, 20});
        Spoil(host.Window(), {80, 40, 100, 60});
        ::UpdateWindow(host.Window());
    }
    EXPECT_EQ(test::GdiObjects(), objects);
}

TEST_F(ManagerPaintTest, TheUpdateRectangleIsShownWhenAsked)
{
    EXPECT_FALSE(manager.IsShowUpdateRect());
    manager.SetShowUpdateRect(true);
    Spoil(host.Window(), {30, 20, 60, 40});
    ::UpdateWindow(host.Window());
    const Picture shown = host.Screen();
    host.Root()->SetBkColor(kGreen.value);
    manager.SetShowUpdateRect(false);
    ::UpdateWindow(host.Window());
    EXPECT_EQ(host.Screen().At(30, 30), kGreen);
    EXPECT_EQ(shown.At(45, 30), kRed);
}

TEST(ManagerPaintWindowTest, ZeroSizedWindowsAreSafe)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone, 0, 0);
    auto* const root = new Probe;
    window->m_manager.AttachDialog(root);
    ::ShowWindow(window->GetHWND(), SW_SHOWNOACTIVATE);
    ::UpdateWindow(window->GetHWND());
    ::SendMessageW(window->GetHWND(), WM_PAINT, 0, 0);
    EXPECT_EQ(root->placements, 0);
    EXPECT_TRUE(window->m_manager.IsUpdateNeeded());
    ::SetWindowPos(window->GetHWND(), nullptr, 0, 0, 30, 20, SWP_NOZORDER | SWP_NOACTIVATE);
    ::InvalidateRect(window->GetHWND(), nullptr, FALSE);
    ::UpdateWindow(window->GetHWND());
    EXPECT_EQ(root->GetWidth(), 30);
    ::DestroyWindow(window->GetHWND());
}

TEST(ManagerPaintWindowTest, AWindowInitHandlerMayDestroyTheWindow)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    Listener listener;
    listener.onNotify = [handle](TNotifyUI& notification) {
        if (notification.sType == DUI_MSGTYPE_WINDOWINIT)
            ::DestroyWindow(handle);
    };
    window->m_manager.AddNotifier(&listener);
    window->m_manager.AttachDialog(new CControlUI);
    ::ShowWindow(handle, SW_SHOWNOACTIVATE);
    ::UpdateWindow(handle);
    EXPECT_TRUE(gone);
}

TEST(ManagerPaintWindowTest, AFocusHandlerInThePaintMayDestroyTheWindow)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    const HWND handle = window->GetHWND();
    auto* const stop = new Probe;
    stop->flags = UIFLAG_TABSTOP;
    stop->onEvent = [handle](TEventUI& event) {
        if (event.Type == UIEVENT_SETFOCUS)
            ::DestroyWindow(handle);
    };
    window->m_manager.AttachDialog(stop);
    ::ShowWindow(handle, SW_SHOWNOACTIVATE);
    ::UpdateWindow(handle);
    EXPECT_TRUE(gone);
}

TEST(ManagerPaintWindowTest, AWindowInitHandlerMayReplaceTheRoot)
{
    ControlHost host(40, 30);
    Listener listener;
    bool replaced = false;
    listener.onNotify = [&](TNotifyUI& notification) {
        if (notification.sType == DUI_MSGTYPE_WINDOWINIT && !std::exchange(replaced, true)) {
            auto* const root = new CContainerUI;
            root->SetBkColor(kGreen.value);
            host.Manager().AttachDialog(root);
        }
    };
    host.Manager().AddNotifier(&listener);
    host.Manager().AttachDialog(new CContainerUI);
    host.Layout();
    host.Pump();
    host.Layout();
    EXPECT_TRUE(replaced);
    EXPECT_EQ(host.Screen().At(20, 15), kGreen);
    host.Manager().RemoveNotifier(&listener);
}

} // namespace
