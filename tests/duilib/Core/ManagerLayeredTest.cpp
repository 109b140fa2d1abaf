#include "duilib/Core/ManagerKit.h"
#include "support/ImportHook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::ImportHook;
using test::Probe;

namespace {

// What the window showed last: the premultiplied pixels and the opacity of the whole.
struct Shown {
    int times = 0;
    SIZE size{};
    BYTE opacity = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t At(int x, int y) const
    {
        return pixels.at(static_cast<size_t>(y) * static_cast<size_t>(size.cx) +
                         static_cast<size_t>(x));
    }
};
Shown g_shown;

BOOL WINAPI NoteLayer(HWND, HDC, POINT*, SIZE* size, HDC source, POINT*, COLORREF,
                      BLENDFUNCTION* blend, DWORD)
{
    ++g_shown.times;
    g_shown.size = *size;
    g_shown.opacity = blend->SourceConstantAlpha;
    const auto bitmap = static_cast<HBITMAP>(::GetCurrentObject(source, OBJ_BITMAP));
    DIBSECTION section{};
    ::GetObjectW(bitmap, sizeof(section), &section);
    const auto* const bits = static_cast<const std::uint32_t*>(section.dsBm.bmBits);
    g_shown.pixels.clear();
    for (LONG y = 0; y < size->cy; ++y) {
        const auto* const row =
            bits + static_cast<size_t>(y) * static_cast<size_t>(section.dsBm.bmWidth);
        g_shown.pixels.insert(g_shown.pixels.end(), row, row + size->cx);
    }
    return TRUE;
}

class ManagerLayeredTest : public testing::Test {
protected:
    ManagerLayeredTest() { g_shown = {}; }
    bool IsLayeredWindow() const
    {
        return (::GetWindowLongPtrW(host.Window(), GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
    }
    void Repaint()
    {
        ::InvalidateRect(host.Window(), nullptr, FALSE);
        ::UpdateWindow(host.Window());
    }

    ControlHost host{60, 40};
    CPaintManagerUI& manager = host.Manager();
    ImportHook hook{L"DuiLib.dll", "USER32.dll", "UpdateLayeredWindow", &NoteLayer};
};

TEST_F(ManagerLayeredTest, OpacityIsAConstantAlphaOfTheWindow)
{
    manager.SetOpacity(100);
    EXPECT_EQ(manager.GetOpacity(), 100);
    EXPECT_TRUE(IsLayeredWindow());
    BYTE alpha = 0;
    DWORD flags = 0;
    EXPECT_TRUE(::GetLayeredWindowAttributes(host.Window(), nullptr, &alpha, &flags));
    EXPECT_EQ(alpha, 100);
    EXPECT_EQ(flags & LWA_ALPHA, static_cast<DWORD>(LWA_ALPHA));
    manager.SetOpacity(255);
    EXPECT_TRUE(IsLayeredWindow());
    EXPECT_EQ(g_shown.times, 0);
}

TEST_F(ManagerLayeredTest, SwitchesTheStyleOnAndOff)
{
    manager.SetLayered(true);
    EXPECT_TRUE(manager.IsLayered());
    EXPECT_TRUE(IsLayeredWindow());
    manager.SetLayered(false);
    EXPECT_FALSE(manager.IsLayered());
    EXPECT_FALSE(IsLayeredWindow());
}

TEST_F(ManagerLayeredTest, ChildWindowsAreNeverLayered)
{
    const HWND child = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, host.Window(),
                                         nullptr, nullptr, nullptr);
    CPaintManagerUI inner;
    inner.Init(child);
    inner.SetLayered(true);
    EXPECT_FALSE(inner.IsLayered());
}

TEST_F(ManagerLayeredTest, WhatIsNotPaintedIsTransparentAndFillsAreOpaque)
{
    ASSERT_TRUE(hook);
    AddProbe(host, {10, 10, 30, 30}).SetBkColor(0xFF204060);
    manager.SetLayered(true);
    host.Layout();
    ASSERT_GT(g_shown.times, 0);
    EXPECT_EQ(g_shown.size.cx, 60);
    EXPECT_EQ(g_shown.size.cy, 40);
    EXPECT_EQ(g_shown.At(50, 35), 0u);
    EXPECT_EQ(g_shown.At(20, 20), 0xFF204060u);
}

TEST_F(ManagerLayeredTest, TranslucentColoursKeepTheirAlpha)
{
    AddProbe(host, {10, 10, 30, 30}).SetBkColor(0x80FF0000);
    manager.SetLayered(true);
    host.Layout();
    EXPECT_NEAR(g_shown.At(20, 20) >> 24, 0x80, 1);
    EXPECT_NEAR(g_shown.At(20, 20) >> 16 & 0xFF, 0x80, 1);
    Repaint();
    EXPECT_NEAR(g_shown.At(20, 20) >> 24, 0x80, 1);
}

TEST_F(ManagerLayeredTest, APartialUpdateKeepsTheRest)
{
    AddProbe(host, {0, 0, 10, 10}).SetBkColor(0xFF204060);
    Probe& other = AddProbe(host, {40, 20, 60, 40});
    manager.SetLayered(true);
    host.Layout();
    other.SetBkColor(0xFF806040);
    ::UpdateWindow(host.Window());
    EXPECT_EQ(g_shown.At(5, 5), 0xFF204060u);
    EXPECT_EQ(g_shown.At(50, 30), 0xFF806040u);
    other.SetVisible(false);
    host.Layout();
    EXPECT_EQ(g_shown.At(50, 30), 0u);
    EXPECT_EQ(g_shown.At(5, 5), 0xFF204060u);
}

TEST_F(ManagerLayeredTest, TheLayeredOpacityAppliesToTheWhole)
{
    host.Root()->SetBkColor(0xFF204060);
    manager.SetLayered(true);
    manager.SetLayeredOpacity(77);
    host.Layout();
    EXPECT_EQ(manager.GetLayeredOpacity(), 77);
    Repaint();
    EXPECT_EQ(g_shown.opacity, 77);
    EXPECT_EQ(g_shown.At(20, 20), 0xFF204060u);
}

TEST_F(ManagerLayeredTest, TheWindowOpacityCountsToo)
{
    manager.SetLayered(true);
    manager.SetOpacity(128);
    Repaint();
    EXPECT_EQ(g_shown.opacity, 128);
    manager.SetLayered(false);
    BYTE alpha = 0;
    EXPECT_TRUE(::GetLayeredWindowAttributes(host.Window(), nullptr, &alpha, nullptr));
    EXPECT_EQ(alpha, 128);
}

TEST_F(ManagerLayeredTest, TheInsetMovesTheRootIn)
{
    manager.SetLayered(true);
    RECT inset{3, 4, 5, 6};
    manager.SetLayeredInset(inset);
    host.Layout();
    const RECT& place = host.Root()->GetPos();
    EXPECT_EQ(place.left, 3);
    EXPECT_EQ(place.top, 4);
    EXPECT_EQ(place.right, 55);
    EXPECT_EQ(place.bottom, 34);
    EXPECT_EQ(manager.GetLayeredInset().bottom, 6);
    manager.SetLayered(false);
    host.Layout();
    EXPECT_EQ(host.Root()->GetPos().right, 60);
}

TEST_F(ManagerLayeredTest, TheInsetIsNotScaled)
{
    manager.GetDPIObj()->SetScale(144);
    manager.SetLayered(true);
    RECT inset{3, 4, 5, 6};
    manager.SetLayeredInset(inset);
    manager.NeedUpdate();
    host.Root()->NeedUpdate();
    host.Layout();
    EXPECT_EQ(host.Root()->GetPos().left, 3);
    EXPECT_EQ(host.Root()->GetPos().bottom, 34);
}

TEST_F(ManagerLayeredTest, PicturesKeepTheirAlpha)
{
    BYTE* bytes = nullptr;
    HBITMAP bitmap = CRenderEngine::CreateARGB32Bitmap(manager.GetPaintDC(), 4, 4, &bytes);
    std::fill_n(reinterpret_cast<std::uint32_t*>(bytes), 16, 0x40201008u);
    manager.AddImage(L"clear", bitmap, 4, 4, true);
    bitmap = CRenderEngine::CreateARGB32Bitmap(manager.GetPaintDC(), 4, 4, &bytes);
    std::fill_n(reinterpret_cast<std::uint32_t*>(bytes), 16, 0xFF201008u);
    manager.AddImage(L"opaque", bitmap, 4, 4, false);
    AddProbe(host, {0, 0, 20, 20}).SetBkImage(L"clear");
    AddProbe(host, {30, 0, 50, 20}).SetBkImage(L"opaque");
    AddProbe(host, {0, 20, 20, 40}).SetBkImage(L"file='opaque' fade='128'");
    manager.SetLayered(true);
    host.Layout();
    Repaint();
    EXPECT_EQ(g_shown.At(10, 10), 0x40201008u);
    EXPECT_EQ(g_shown.At(40, 10), 0xFF201008u);
    EXPECT_NEAR(g_shown.At(10, 30) >> 24, 128, 1) << "faded";
    EXPECT_NEAR(g_shown.At(10, 30) >> 16 & 0xFF, 16, 1);
    EXPECT_EQ(g_shown.At(40, 30), 0u);
}

TEST_F(ManagerLayeredTest, TheImageShapesTheWindow)
{
    BYTE* bytes = nullptr;
    const HBITMAP bitmap = CRenderEngine::CreateARGB32Bitmap(manager.GetPaintDC(), 60, 40, &bytes);
    auto* const pixels = reinterpret_cast<std::uint32_t*>(bytes);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x)
            pixels[y * 60 + x] = x < 20 ? 0 : x < 40 ? 0x80808080 : 0xFFFFFFFF;
    }
    manager.AddImage(L"shape", bitmap, 60, 40, true);
    host.Root()->SetBkColor(0xFFC08040);
    manager.SetLayered(true);
    manager.SetLayeredImage(L"shape");
    EXPECT_STREQ(manager.GetLayeredImage(), L"shape");
    host.Layout();
    Repaint();
    EXPECT_EQ(g_shown.At(10, 20), 0u);
    EXPECT_NEAR(g_shown.At(30, 20) >> 24, 0x80, 1);
    EXPECT_NEAR(g_shown.At(30, 20) >> 16 & 0xFF, 0x60, 1);
    EXPECT_EQ(g_shown.At(50, 20), 0xFFC08040u);
}

TEST_F(ManagerLayeredTest, NativeWindowsArePrintedIntoThePicture)
{
    Probe& owner = AddProbe(host, {0, 0, 10, 10});
    const HWND child = test::MakePrintedChild(host.Window(), {20, 10, 40, 30});
    EXPECT_TRUE(manager.AddNativeWindow(&owner, child));
    EXPECT_FALSE(manager.AddNativeWindow(&owner, child));
    EXPECT_FALSE(manager.AddNativeWindow(nullptr, child));
    EXPECT_EQ(manager.GetNativeWindowCount(), 1);
    const RECT place = manager.GetNativeWindowRect(child);
    EXPECT_EQ(place.left, 20);
    EXPECT_EQ(place.top, 10);
    EXPECT_EQ(place.right, 40);
    manager.SetLayered(true);
    host.Layout();
    EXPECT_EQ(g_shown.At(30, 20), 0xFF0000FFu);
    EXPECT_EQ(g_shown.At(50, 35), 0u);
    ::ShowWindow(child, SW_HIDE);
    Repaint();
    EXPECT_EQ(g_shown.At(30, 20), 0u) << "hidden";
    ::ShowWindow(child, SW_SHOWNA);
    Repaint();
    EXPECT_EQ(g_shown.At(30, 20), 0xFF0000FFu);
    EXPECT_TRUE(manager.RemoveNativeWindow(child));
    EXPECT_FALSE(manager.RemoveNativeWindow(child));
    Repaint();
    EXPECT_EQ(g_shown.At(30, 20), 0u);
}

TEST_F(ManagerLayeredTest, ADeadControlTakesItsNativeWindowsAlong)
{
    Probe& owner = AddProbe(host, {0, 0, 10, 10});
    manager.AddNativeWindow(&owner, host.Window());
    test::RootOf(host).Remove(&owner);
    EXPECT_EQ(manager.GetNativeWindowCount(), 0);
}

TEST_F(ManagerLayeredTest, SizingKeepsThePictureWhole)
{
    host.Root()->SetBkColor(0xFF204060);
    manager.SetLayered(true);
    host.Layout();
    host.Resize(120, 90);
    host.Layout();
    EXPECT_EQ(g_shown.size.cx, 120);
    EXPECT_EQ(g_shown.At(110, 80), 0xFF204060u);
    EXPECT_EQ(g_shown.At(5, 5), 0xFF204060u);
}

TEST_F(ManagerLayeredTest, TextSettingsAreKept)
{
    EXPECT_FALSE(manager.IsUseGdiplusText());
    manager.SetUseGdiplusText(true);
    manager.SetGdiplusTextRenderingHint(3);
    EXPECT_TRUE(manager.IsUseGdiplusText());
    EXPECT_EQ(manager.GetGdiplusTextRenderingHint(), 3);
}

// A window made layered by its skin, before it is shown for the first time.
class LayeredWindow : public WindowImplBase {
protected:
    LPCTSTR GetWindowClassName() const override { return L"LayeredTestWindow"; }
    CDuiString GetSkinFile() override
    {
        return L"<Window size=\"60,40\" layered=\"true\"><VerticalLayout "
               L"bkcolor=\"#FF00FF00\" /></Window>";
    }
};

TEST_F(ManagerLayeredTest, AWindowShowsItsPictureAsSoonAsItIsShown)
{
    LayeredWindow window;
    ASSERT_NE(window.Create(nullptr, L"layered", WS_POPUP, WS_EX_TOOLWINDOW), nullptr);
    host.Pump();
    EXPECT_EQ(g_shown.times, 0);
    window.ShowWindow();
    host.Pump();
    EXPECT_GT(g_shown.times, 0);
    EXPECT_EQ(g_shown.size.cx, 60);
    EXPECT_EQ(g_shown.At(30, 20), 0xFF00FF00u);
    ::DestroyWindow(window);
}

} // namespace
