#include "quillet/window/TestWindow.h"
#include "support/ObjectCounters.h"
#include "support/Picture.h"
#include "support/TempFolder.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <string>

using namespace DuiLib;
using test::FrameHost;
using test::kFrameSkin;

namespace {

constexpr COLORREF kParentColour = RGB(30, 160, 60);
constexpr test::Argb kParent{0xFF1EA03C};
constexpr test::Argb kMask{0xFF203040};
constexpr test::Argb kParentUnderMask{0xFF1F6B3E}; // with an opacity of 120

std::wstring ClassOf(HWND window)
{
    wchar_t name[256]{};
    ::GetClassNameW(window, name, 256);
    return name;
}

RECT PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

test::Picture PictureOfScreen(const RECT& area)
{
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const test::Canvas canvas(width, height);
    const HDC screen = ::GetDC(nullptr);
    ::BitBlt(canvas.Dc(), 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    ::ReleaseDC(nullptr, screen);
    return canvas.Take();
}

// A plain window of one colour at (100, 100), 800 x 600 pixels.
class ColouredWindow : public CWindowWnd {
public:
    ColouredWindow() { Create(nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 100, 100, 800, 600); }
    ~ColouredWindow()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"MaskLayerTestParent"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_ERASEBKGND) {
            RECT client{};
            ::GetClientRect(m_hWnd, &client);
            const HBRUSH brush = ::CreateSolidBrush(kParentColour);
            ::FillRect(reinterpret_cast<HDC>(wParam), &client, brush);
            ::DeleteObject(brush);
            return 1;
        }
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }
};

class MaskLayerTest : public test::WindowTest {
protected:
    MaskLayerTest()
    {
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
        folder.Write(L"HomePageTools/PrintShadow.xml",
                     "<Window opacity=\"120\"><VerticalLayout bkcolor=\"#FF203040\"/></Window>");
        CResourceManagerEx::GetInstance()->SetMainHWND(parent.GetHWND());
        CResourceManagerEx::GetInstance()->SetVeskaMaskHWND(nullptr);
    }
    ~MaskLayerTest() override
    {
        Close();
        CPaintManagerUI::SetResourcePath(L"");
    }

    void Open(bool keepTitle, bool withMask = true)
    {
        dialog = window.Create(parent.GetHWND(), L"Dialog", kFrameSkin, WS_POPUP, 0, withMask,
                               keepTitle);
        mask = window.GetMaskWnd();
    }
    void Close()
    {
        if (::IsWindow(dialog))
            ::DestroyWindow(dialog);
        FrameHost::Pump();
    }
    RECT Place() const { return PlaceOf(mask); }

    test::TempFolder folder;
    ColouredWindow parent;
    UIWindow window;
    HWND dialog = nullptr;
    HWND mask = nullptr;
};

void ExpectPlace(const RECT& place, const RECT& expected)
{
    EXPECT_TRUE(::EqualRect(&place, &expected))
        << place.left << ", " << place.top << ", " << place.right << ", " << place.bottom;
}

TEST_F(MaskLayerTest, CoversTheWholeParent)
{
    Open(false);
    ExpectPlace(Place(), {100, 100, 900, 700});
}

TEST_F(MaskLayerTest, LeavesTheTitleStripFree)
{
    Open(true);
    ExpectPlace(Place(), {100, 133, 900, 700});
}

struct ScaleCase {
    int dpi;
    int strip; // device pixels
};

class MaskScaleTest : public MaskLayerTest, public testing::WithParamInterface<ScaleCase> {
protected:
    test::FakeMonitors monitors{SIZE{7680, 4320}};
    test::FakeMainMonitorDpi monitorDpi{GetParam().dpi};
};

TEST_P(MaskScaleTest, TheTitleStripGrowsWithTheScale)
{
    ASSERT_TRUE(static_cast<bool>(monitorDpi));
    Open(true);
    ExpectPlace(Place(), {100, 100 + GetParam().strip, 900, 700});
    EXPECT_EQ(WindowImplBaseEx::dpiVal, static_cast<unsigned>(GetParam().dpi));
}

TEST_P(MaskScaleTest, WithoutATitleTheScaleDoesNotMatter)
{
    Open(false);
    ExpectPlace(Place(), {100, 100, 900, 700});
}

INSTANTIATE_TEST_SUITE_P(Dpi, MaskScaleTest,
                         testing::Values(ScaleCase{96, 33}, ScaleCase{144, 50}, ScaleCase{216, 74}),
                         [](const auto& test) { return std::to_string(test.param.dpi); });

TEST_F(MaskLayerTest, IsADisabledWindowOfItsOwnClass)
{
    Open(false);
    EXPECT_EQ(ClassOf(mask), L"MaskLayerWindow");
    wchar_t text[64]{};
    ::GetWindowTextW(mask, text, 64);
    EXPECT_STREQ(text, L"PrintShadowingWnd");
    EXPECT_FALSE(::IsWindowEnabled(mask));
    EXPECT_TRUE(::IsWindowVisible(mask));
    EXPECT_EQ(::GetWindow(mask, GW_OWNER), parent.GetHWND());
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), mask);
    EXPECT_FALSE(::IsWindowVisible(dialog));
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetVeskaMaskHWND(), mask);
}

struct CreationRecord {
    static inline DWORD style = 0;
    static inline DWORD exStyle = 0;
    static HWND WINAPI Create(DWORD ex, LPCWSTR name, LPCWSTR text, DWORD plain, int x, int y,
                              int width, int height, HWND owner, HMENU menu, HINSTANCE instance,
                              LPVOID parameter)
    {
        if (std::wstring(name) == L"MaskLayerWindow") {
            style = plain;
            exStyle = ex;
            EXPECT_EQ(x | y | width | height, 0);
        }
        return ::CreateWindowExW(ex, name, text, plain, x, y, width, height, owner, menu, instance,
                                 parameter);
    }
};

TEST_F(MaskLayerTest, IsCreatedWithItsStyles)
{
    const test::ImportHook hook(L"DuiLib.dll", "user32.dll", "CreateWindowExW",
                                &CreationRecord::Create);
    Open(false);
    EXPECT_EQ(CreationRecord::style, 0x9EC80000u);
    EXPECT_EQ(CreationRecord::exStyle, 0x100u);
}

TEST_F(MaskLayerTest, WithoutAMaskTheParentIsTheOwner)
{
    Open(false, false);
    EXPECT_EQ(window.GetMaskWnd(), parent.GetHWND());
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), parent.GetHWND());
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetVeskaMaskHWND(), nullptr);
}

TEST_F(MaskLayerTest, ShowsAndHidesWithItsWindow)
{
    Open(false);
    window.ShowWindow(true);
    EXPECT_TRUE(::IsWindowVisible(dialog));
    EXPECT_TRUE(::IsWindowVisible(mask));
    window.ShowWindow(false);
    EXPECT_FALSE(::IsWindowVisible(dialog));
    EXPECT_FALSE(::IsWindowVisible(mask));
}

TEST_F(MaskLayerTest, ShowTitleWindowShowsItAsTold)
{
    Open(false);
    window.ShowTitleWindow(true, false);
    EXPECT_TRUE(::IsWindowVisible(dialog));
    EXPECT_FALSE(::IsWindowVisible(mask));
    window.ShowTitleWindow(false, true);
    EXPECT_FALSE(::IsWindowVisible(dialog));
    EXPECT_TRUE(::IsWindowVisible(mask));
}

TEST_F(MaskLayerTest, AnyMoveMakesItCoverItsParentAgain)
{
    for (const bool keepTitle : {false, true}) {
        ::MoveWindow(parent.GetHWND(), 100, 100, 800, 600, FALSE);
        window = UIWindow();
        Open(keepTitle);
        const LONG strip = keepTitle ? 33 : 0;
        ::MoveWindow(parent.GetHWND(), 150, 120, 700, 500, FALSE);
        ::SendMessageW(mask, WM_MOVE, 0, 0);
        ExpectPlace(Place(), {150, 120 + strip, 850, 620});
        ::MoveWindow(mask, 0, 0, 10, 10, FALSE);
        ExpectPlace(Place(), {150, 120 + strip, 850, 620});
        Close();
    }
}

TEST_F(MaskLayerTest, ANewScaleCountsAtTheNextMove)
{
    Open(true);
    CResourceManagerEx::GetInstance()->SetScale(144);
    ::SendMessageW(mask, WM_MOVE, 0, 0);
    ExpectPlace(Place(), {100, 150, 900, 700});
}

TEST_F(MaskLayerTest, TheEndOfTheWindowPostsItsClosing)
{
    Open(false);
    ::DestroyWindow(dialog);
    EXPECT_TRUE(::IsWindow(mask)) << "not yet";
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, mask, WM_CLOSE, WM_CLOSE, PM_NOREMOVE));
    EXPECT_EQ(message.wParam, 0u);
    FrameHost::Pump();
    EXPECT_FALSE(::IsWindow(mask));
}

TEST_F(MaskLayerTest, TheRecordedHandleIsNeverCleared)
{
    Open(false);
    const HWND recorded = mask;
    Close();
    EXPECT_FALSE(::IsWindow(recorded));
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetVeskaMaskHWND(), recorded);
}

TEST_F(MaskLayerTest, EndsWithItsParentAndTheDialogWithIt)
{
    Open(false);
    ::DestroyWindow(parent.GetHWND());
    FrameHost::Pump();
    EXPECT_FALSE(::IsWindow(mask));
    EXPECT_FALSE(::IsWindow(dialog));
    EXPECT_FALSE(window.IsWindow());
}

TEST_F(MaskLayerTest, AModalWindowDisablesTheMaskAndNotTheParent)
{
    class Closing : public UIController {
    public:
        std::function<void()> check;

    private:
        void OnInit() override
        {
            SetTimer(1, [this] {
                check();
                OnCloseX(4);
            });
        }
    };
    const auto controller = std::make_shared<Closing>();
    window.AddUIController(controller);
    Open(false);
    bool maskEnabled = true;
    bool parentEnabled = false;
    controller->check = [&] {
        maskEnabled = ::IsWindowEnabled(mask);
        parentEnabled = ::IsWindowEnabled(parent.GetHWND());
    };
    EXPECT_EQ(window.ShowModal(), 4u);
    EXPECT_FALSE(maskEnabled);
    EXPECT_TRUE(parentEnabled);
}

HWND WINAPI RefuseDialogs(DWORD ex, LPCWSTR name, LPCWSTR text, DWORD plain, int x, int y,
                          int width, int height, HWND owner, HMENU menu, HINSTANCE instance,
                          LPVOID parameter)
{
    if (std::wstring(name).starts_with(L"UIWindow-"))
        return nullptr;
    return ::CreateWindowExW(ex, name, text, plain, x, y, width, height, owner, menu, instance,
                             parameter);
}

TEST_F(MaskLayerTest, ADialogThatCannotBeCreatedLeavesItsMask)
{
    const test::ImportHook hook(L"DuiLib.dll", "user32.dll", "CreateWindowExW", &RefuseDialogs);
    Open(false);
    EXPECT_EQ(dialog, nullptr);
    EXPECT_EQ(ClassOf(mask), L"MaskLayerWindow");
    ::DestroyWindow(mask);
}

HWND WINAPI RefuseMasks(DWORD ex, LPCWSTR name, LPCWSTR text, DWORD plain, int x, int y, int width,
                        int height, HWND owner, HMENU menu, HINSTANCE instance, LPVOID parameter)
{
    if (std::wstring(name) == L"MaskLayerWindow")
        return nullptr;
    return ::CreateWindowExW(ex, name, text, plain, x, y, width, height, owner, menu, instance,
                             parameter);
}

TEST_F(MaskLayerTest, WithoutAMaskThatCouldBeCreatedNobodyOwnsTheDialog)
{
    const test::ImportHook hook(L"DuiLib.dll", "user32.dll", "CreateWindowExW", &RefuseMasks);
    Open(false);
    EXPECT_EQ(mask, nullptr);
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), nullptr);
    window.ShowWindow(false);
    EXPECT_TRUE(::IsWindowVisible(parent.GetHWND()));
}

// The object behind the mask.
WindowImplBaseEx& ObjectOf(HWND window)
{
    return *static_cast<WindowImplBaseEx*>(
        reinterpret_cast<CWindowWnd*>(::GetWindowLongPtrW(window, GWLP_USERDATA)));
}

TEST_F(MaskLayerTest, KeepsTheWorkAreaWhereOtherWindowsKeepTheMonitor)
{
    const test::FakeMonitors monitors(SIZE{7680, 4320}); // with a work area of 10 x 10 pixels
    const test::FakeMainMonitorDpi monitorDpi(144);
    Open(false);
    EXPECT_EQ(ObjectOf(mask).GetScreenSizeMaxDPI(), 96u);
    ObjectOf(mask).GetScreenSize();
    EXPECT_GT(ObjectOf(mask).GetScreenSizeMaxDPI(), 216u);
}

TEST_F(MaskLayerTest, MeasuresTheMonitorOfTheMainWindow)
{
    ColouredWindow main;
    CResourceManagerEx::GetInstance()->SetMainHWND(main.GetHWND());
    test::FakeMonitors monitors(SIZE{7680, 4320});
    const test::FakeMainMonitorDpi monitorDpi(120);
    Open(false);
    EXPECT_THAT(monitorDpi.windows, testing::Contains(main.GetHWND()));
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 120u);
    EXPECT_EQ(monitors.flags, DWORD{MONITOR_DEFAULTTONEAREST});
}

TEST_F(MaskLayerTest, IsLaidOutWithTheDpiThatItComputes)
{
    const test::FakeMonitors monitors(SIZE{7680, 4320});
    const test::FakeMainMonitorDpi monitorDpi(150); // between two steps
    Open(false);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 144u);
}

TEST_F(MaskLayerTest, DimsTheParentAndLeavesItsTitleStripAsItIs)
{
    Open(true);
    BYTE alpha = 0;
    DWORD flags = 0;
    ASSERT_TRUE(::GetLayeredWindowAttributes(mask, nullptr, &alpha, &flags));
    EXPECT_EQ(alpha, 120);
    EXPECT_TRUE(flags & LWA_ALPHA);

    ::UpdateWindow(parent.GetHWND());
    ::UpdateWindow(mask);
    FrameHost::Pump();
    const test::Picture shown = PictureOfScreen({100, 100, 900, 700});
    EXPECT_EQ(shown.At(400, 16), kParent);
    // A system that does not blend windows shows the mask itself.
    const bool blends = shown.At(400, 300) != kMask;
    test::Picture expected(800, 600, blends ? kParentUnderMask : kMask);
    for (int y = 0; y < 33; ++y)
        for (int x = 0; x < 800; ++x)
            expected.Set(x, y, kParent);
    test::ExpectSimilar(shown, expected, blends ? 2 : 0, 1.0);
}

TEST_F(MaskLayerTest, OpeningAndClosing200TimesLeavesNoObject)
{
    const auto round = [&] {
        window = UIWindow();
        Open(true);
        window.ShowWindow(true);
        FrameHost::Pump();
        Close();
        EXPECT_FALSE(::IsWindow(mask));
    };
    round();
    round();
    const int gdi = test::GdiObjects();
    const int windows = test::UserWindows();
    for (int i = 0; i < 200; ++i)
        round();
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(test::UserWindows(), windows);
}

} // namespace
