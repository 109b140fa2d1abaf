#include "duilib/Core/ManagerKit.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Listener;
using test::Probe;

namespace {

LONG CellHeight(HFONT font)
{
    LOGFONTW look{};
    ::GetObjectW(font, sizeof(look), &look);
    return -look.lfHeight;
}

SIZE SizeOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

class ManagerDpiTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
};

TEST_F(ManagerDpiTest, SizesTheWindowOnce)
{
    manager.SetDPI(144);
    EXPECT_EQ(manager.GetDPIObj()->GetScale(), 150u);
    EXPECT_EQ(SizeOf(host.Window()).cx, 150);
    EXPECT_EQ(SizeOf(host.Window()).cy, 90);
    manager.SetDPI(144);
    EXPECT_EQ(SizeOf(host.Window()).cx, 150);
    manager.SetDPI(96);
    EXPECT_EQ(SizeOf(host.Window()).cx, 100);
    EXPECT_EQ(SizeOf(host.Window()).cy, 60);
}

TEST_F(ManagerDpiTest, KeepsThePlaceOfTheWindow)
{
    ::SetWindowPos(host.Window(), nullptr, 31, 17, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    manager.SetDPI(192);
    RECT place{};
    ::GetWindowRect(host.Window(), &place);
    EXPECT_EQ(place.left, 31);
    EXPECT_EQ(place.top, 17);
}

TEST_F(ManagerDpiTest, LaysTheRootOutAndTellsTheWindow)
{
    Listener listener;
    manager.AddMessageFilter(&listener);
    manager.SetDPI(144);
    EXPECT_TRUE(manager.IsUpdateNeeded());
    EXPECT_EQ(listener.CountOf(UIMSG_SET_DPI), 0);
    host.Pump();
    EXPECT_EQ(listener.CountOf(UIMSG_SET_DPI), 1);
    host.Layout();
    EXPECT_EQ(host.Root()->GetWidth(), 150);
    manager.RemoveMessageFilter(&listener);
}

TEST_F(ManagerDpiTest, RebuildsTheFontsInPlace)
{
    manager.AddFont(1, L"Arial", 20, false, false, false, false);
    manager.SetDefaultFont(L"Arial", 10, false, false, false, false);
    TFontInfo* const info = manager.GetFontInfo(1);
    const LONG before = info->tm.tmHeight;
    manager.SetDPI(192);
    EXPECT_EQ(manager.GetFontInfo(1), info);
    EXPECT_EQ(info->iSize, 20);
    EXPECT_EQ(CellHeight(manager.GetFont(1)), 40);
    EXPECT_EQ(CellHeight(manager.GetFont(-1)), 20);
    EXPECT_GT(info->tm.tmHeight, before);
    EXPECT_EQ(manager.GetFontIndex(manager.GetFont(1)), 1);
}

TEST_F(ManagerDpiTest, EveryWindowHasSharedFontsAtItsOwnScale)
{
    ControlHost other(20, 20);
    manager.AddFont(1, L"Arial", 20, false, false, false, false, true);
    manager.SetDPI(144);
    EXPECT_EQ(CellHeight(manager.GetFont(1)), 30);
    EXPECT_EQ(CellHeight(other.Manager().GetFont(1)), 20);
    const int size = manager.GetDefaultFontInfo()->iSize;
    EXPECT_EQ(CellHeight(manager.GetFont(-1)), ::MulDiv(size, 150, 100));
    EXPECT_EQ(CellHeight(other.Manager().GetFont(-1)), size);
    EXPECT_EQ(manager.GetFontIndex(manager.GetFont(1), true), 1);
    manager.RemoveAllFonts(true);
}

TEST_F(ManagerDpiTest, KeepsCachedPicturesAndDropsParsedStrings)
{
    const TImageInfo* const image =
        manager.AddImage(L"i", ::CreateBitmap(4, 3, 1, 32, nullptr), 4, 3, false);
    EXPECT_TRUE(manager.GetDrawInfo(L"a.png", nullptr)->sImageName == L"a.png");
    manager.SetDPI(144);
    EXPECT_EQ(manager.GetImage(L"i"), image);
    EXPECT_TRUE(manager.GetDrawInfo(L"a.png", nullptr)->sImageName == L"a@150.png");
}

TEST_F(ManagerDpiTest, RemovingAPictureTakesTheOneOfTheScaleAlong)
{
    manager.AddImage(L"a.png", ::CreateBitmap(4, 3, 1, 32, nullptr), 4, 3, false);
    manager.AddImage(L"a@150.png", ::CreateBitmap(4, 3, 1, 32, nullptr), 4, 3, false);
    manager.AddImage(L"a@200.png", ::CreateBitmap(4, 3, 1, 32, nullptr), 4, 3, false);
    manager.SetDPI(144);
    manager.RemoveImage(L"a.png");
    EXPECT_EQ(manager.GetImage(L"a.png"), nullptr);
    EXPECT_EQ(manager.GetImage(L"a@150.png"), nullptr);
    EXPECT_NE(manager.GetImage(L"a@200.png"), nullptr);
}

TEST_F(ManagerDpiTest, IsSafeWithoutAWindow)
{
    CPaintManagerUI loose;
    loose.AddFont(1, L"Arial", 20, false, false, false, false);
    loose.SetDPI(144);
    EXPECT_EQ(loose.GetDPIObj()->GetScale(), 150u);
    EXPECT_EQ(CellHeight(loose.GetFont(1)), 30);

    // A message to no window would be one to the thread.
    loose.SetDPI(144);
    MSG message{};
    EXPECT_FALSE(::PeekMessageW(&message, reinterpret_cast<HWND>(-1), UIMSG_SET_DPI, UIMSG_SET_DPI,
                                PM_REMOVE));
}

TEST_F(ManagerDpiTest, SetAllDpiReachesEveryWindow)
{
    ControlHost other(40, 20);
    CPaintManagerUI::SetAllDPI(192);
    EXPECT_EQ(SizeOf(host.Window()).cx, 200);
    EXPECT_EQ(SizeOf(other.Window()).cx, 80);
    EXPECT_EQ(other.Manager().GetDPIObj()->GetScale(), 200u);
}

TEST_F(ManagerDpiTest, ARebuiltFontFollowsTheScale)
{
    manager.AddFont(1, L"Arial", 20, false, false, false, false);
    TFontInfo* const info = manager.GetFontInfo(1);
    manager.GetDPIObj()->SetScale(144);
    manager.RebuildFont(info);
    EXPECT_EQ(CellHeight(info->hFont), 30);
    manager.RebuildFont(nullptr);
    manager.ResetDPIAssets();
    EXPECT_EQ(CellHeight(manager.GetFont(1)), 30);
}

TEST_F(ManagerDpiTest, ASizeHandlerMayCloseTheWindow)
{
    Listener listener;
    const HWND window = host.Window();
    listener.onMessage = [window](UINT message, WPARAM, LPARAM, bool&) -> LRESULT {
        if (message == WM_SIZE)
            ::DestroyWindow(window);
        return 0;
    };
    manager.AddMessageFilter(&listener);
    manager.SetDPI(144);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_FALSE(manager.IsValid());
}

} // namespace
