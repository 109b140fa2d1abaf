#include <UIlib.h>

#include "support/ControlHost.h"
#include "support/ImportHook.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr int kSmallFont = 1;
constexpr int kLargeFont = 2;

constexpr auto kTwoLabels = LR"(<Window><VerticalLayout bkcolor="#FFFFFFFF">
    <Label name="first" text="First" font="1" height="24"/>
    <Container name="middle" height="24"/>
    <Label name="last" text="Last" font="1" height="24"/>
</VerticalLayout></Window>)";

void AddFonts(CPaintManagerUI& manager)
{
    manager.AddFont(kSmallFont, L"Arial", 12, false, false, false, false);
    manager.AddFont(kLargeFont, L"Arial", 22, true, false, false, false);
}

using Step = std::function<void(HDC)>;

// A control of an application with a text step of its own.
class OwnStep : public CControlUI {
public:
    void PaintText(HDC dc) override
    {
        if (step)
            step(dc);
    }

    Step step;
};

// A window with a label, a control of an application, and a label in the same font.
class StepBetweenLabels {
public:
    StepBetweenLabels() : m_control(new OwnStep)
    {
        AddFonts(host.Manager());
        host.Load(kTwoLabels);
        host.Find<CContainerUI>(L"middle").Add(m_control);
        host.Layout();
    }

    void Repaint(Step step)
    {
        m_control->step = std::move(step);
        ::InvalidateRect(host.Window(), nullptr, FALSE);
        ::UpdateWindow(host.Window());
    }

    ControlHost host{80, 90};

private:
    OwnStep* m_control;
};

HGDIOBJ FontOf(HDC dc)
{
    return ::GetCurrentObject(dc, OBJ_FONT);
}

test::ImportHook* g_select = nullptr;
int g_fontSelections = 0;

HGDIOBJ WINAPI CountFontSelections(HDC dc, HGDIOBJ object)
{
    if (::GetObjectType(object) == OBJ_FONT)
        ++g_fontSelections;
    return g_select->Original<decltype(CountFontSelections)>()(dc, object);
}

} // namespace

TEST(PaintPassTest, TextsInOneFontSelectItOnce)
{
    ControlHost host(80, 90);
    AddFonts(host.Manager());
    host.Load(LR"(<Window><VerticalLayout>
        <Label text="a" font="1"/><Label text="b" font="1"/><Label text="c" font="1"/>
        <Label text="d" font="1"/><Label text="e" font="1"/><Label text="f" font="1"/>
    </VerticalLayout></Window>)");
    host.Paint();

    test::ImportHook hook(L"DuiLib.dll", "gdi32.dll", "SelectObject", &CountFontSelections);
    ASSERT_TRUE(hook);
    g_select = &hook;
    g_fontSelections = 0;
    ::InvalidateRect(host.Window(), nullptr, FALSE);
    ::UpdateWindow(host.Window());
    EXPECT_EQ(g_fontSelections, 1);
}

TEST(PaintPassTest, TheFontIsWhatItWasAfterThePass)
{
    StepBetweenLabels window;
    HDC painted = nullptr;
    HGDIOBJ during = nullptr;
    window.Repaint([&](HDC dc) {
        painted = dc;
        during = FontOf(dc);
    });
    ASSERT_NE(painted, nullptr);
    EXPECT_EQ(during, window.host.Manager().GetFont(kSmallFont));
    EXPECT_EQ(FontOf(painted), ::GetStockObject(SYSTEM_FONT));
}

TEST(PaintPassTest, ColourAndBackgroundModeAreRestoredAfterEachText)
{
    StepBetweenLabels window;
    window.host.Find<CLabelUI>(L"first").SetTextColor(0xFF2080C0);
    COLORREF colour = CLR_INVALID;
    int mode = 0;
    window.Repaint([&](HDC dc) {
        colour = ::GetTextColor(dc);
        mode = ::GetBkMode(dc);
    });
    EXPECT_EQ(colour, RGB(0, 0, 0));
    EXPECT_EQ(mode, OPAQUE);
}

// The printed picture is made on a DC that keeps no font.
TEST(PaintPassTest, ControlsWithDifferentFontsLookAsPrinted)
{
    ControlHost host(120, 160);
    AddFonts(host.Manager());
    host.Load(LR"(<Window><VerticalLayout bkcolor="#FFFFFFFF">
        <Label text="Small" font="1"/><Label text="Large" font="2"/>
        <Label text="Small {b}bold{/b} {f 2}large{/f}" showhtml="true" font="1"/>
        <Label text="Default"/><Label text="Large" font="2"/><Label text="Small" font="1"/>
    </VerticalLayout></Window>)");
    const auto printed = host.Paint();
    EXPECT_GT(printed.Count(test::Argb{0xFF000000}), 0);
    test::ExpectSimilar(host.Screen(), printed, 0, 0);
}

TEST(PaintPassTest, AFontThatAControlLeavesSelectedDoesNotReachTheNextText)
{
    StepBetweenLabels window;
    const auto expected = window.host.Screen();
    ASSERT_LT(expected.Count(test::Argb{0xFFFFFFFF}), expected.Width() * expected.Height());
    const HFONT large = window.host.Manager().GetFont(kLargeFont);
    bool ran = false;
    window.Repaint([&](HDC dc) { ran = ::SelectObject(dc, large) != nullptr; });
    EXPECT_TRUE(ran);
    test::ExpectSimilar(window.host.Screen(), expected, 0, 0);
}

TEST(PaintPassTest, AFontThatAControlSelectsAndPutsBackDoesNotReachTheNextText)
{
    StepBetweenLabels window;
    const auto expected = window.host.Screen();
    ASSERT_LT(expected.Count(test::Argb{0xFFFFFFFF}), expected.Width() * expected.Height());
    const HFONT large = window.host.Manager().GetFont(kLargeFont);
    HGDIOBJ put = nullptr;
    window.Repaint([&](HDC dc) {
        const HGDIOBJ before = ::SelectObject(dc, large);
        put = ::SelectObject(dc, before);
    });
    EXPECT_EQ(put, large);
    test::ExpectSimilar(window.host.Screen(), expected, 0, 0);
}

TEST(PaintPassTest, AFontThatIsRemovedDuringThePassIsLetGo)
{
    StepBetweenLabels window;
    auto& manager = window.host.Manager();
    const HFONT removed = manager.GetFont(kSmallFont);
    HGDIOBJ before = nullptr;
    HGDIOBJ after = nullptr;
    window.Repaint([&](HDC dc) {
        before = FontOf(dc);
        manager.RemoveFont(kSmallFont);
        after = FontOf(dc);
    });
    EXPECT_EQ(before, removed);
    EXPECT_EQ(after, ::GetStockObject(SYSTEM_FONT));
}

TEST(PaintPassTest, AnotherDcKeepsNoFont)
{
    StepBetweenLabels window;
    test::Canvas canvas(60, 20);
    const HGDIOBJ before = FontOf(canvas.Dc());
    HGDIOBJ after = nullptr;
    window.Repaint([&](HDC) {
        RECT place{0, 0, 60, 20};
        CRenderEngine::DrawText(canvas.Dc(), &window.host.Manager(), place, L"Text", 0xFF000000,
                                kLargeFont, DT_SINGLELINE);
        after = FontOf(canvas.Dc());
    });
    EXPECT_EQ(after, before);
}
