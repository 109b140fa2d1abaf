#include "duilib/Control/TestPictures.h"
#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::Canvas;
using test::ControlHost;
using test::Picture;
using test::Place;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};

// Writes down which steps run.
class StepControl : public CControlUI {
public:
    using CControlUI::m_rcPaint;

    std::wstring steps;

    void PaintBkColor(HDC) override { steps += L"1"; }
    void PaintBkImage(HDC) override { steps += L"2"; }
    void PaintStatusImage(HDC) override { steps += L"3"; }
    void PaintForeColor(HDC) override { steps += L"4"; }
    void PaintForeImage(HDC) override { steps += L"5"; }
    void PaintText(HDC) override { steps += L"6"; }
    void PaintBorder(HDC) override { steps += L"7"; }
};

// Draws beyond its own rectangle, as a translucent colour does when only a part is painted.
class SpillingControl : public CControlUI {
public:
    void PaintForeColor(HDC dc) override
    {
        RECT wide = GetPos();
        ::InflateRect(&wide, 100, 100);
        CRenderEngine::DrawColor(dc, wide, kRed.value);
    }
};

class ControlPaintTest : public testing::Test {
protected:
    ControlHost host{40, 30};
    CControlUI& control = host.Add<CControlUI>();
};

Picture PaintAlone(CControlUI& control, const RECT& paint, CControlUI* stop = nullptr)
{
    const Canvas canvas(40, 30);
    control.Paint(canvas.Dc(), paint, stop);
    return canvas.Take();
}

} // namespace

TEST(ControlPaintStepsTest, RunInTheirOrder)
{
    StepControl control;
    control.SetPos({0, 0, 10, 10});
    PaintAlone(control, {0, 0, 40, 30});
    EXPECT_EQ(control.steps, L"1234567");
}

TEST(ControlPaintStepsTest, RunAlsoInARoundedControlAndADisabledOne)
{
    StepControl control;
    control.SetPos({0, 0, 10, 10});
    control.SetBorderRound({4, 4});
    control.SetEnabled(false);
    PaintAlone(control, {0, 0, 40, 30});
    EXPECT_EQ(control.steps, L"1234567");
}

TEST(ControlPaintStepsTest, DoNotRunWhenThePaintMissesTheControl)
{
    StepControl control;
    control.SetPos({0, 0, 10, 10});
    const Canvas canvas(40, 30);
    EXPECT_TRUE(control.Paint(canvas.Dc(), {10, 0, 40, 30}));
    EXPECT_EQ(control.steps, L"");
}

TEST(ControlPaintStepsTest, TheStopControlEndsThePainting)
{
    StepControl control;
    control.SetPos({0, 0, 10, 10});
    const Canvas canvas(40, 30);
    EXPECT_FALSE(control.Paint(canvas.Dc(), {0, 0, 40, 30}, &control));
    EXPECT_EQ(control.steps, L"");
}

TEST(ControlPaintStepsTest, BothWaysToPaintSetThePaintedPart)
{
    StepControl control;
    control.SetPos({5, 5, 20, 20});
    const Canvas canvas(40, 30);
    control.Paint(canvas.Dc(), {0, 0, 10, 10});
    EXPECT_EQ(Place(control.m_rcPaint), Place(5, 5, 10, 10));
    control.DoPaint(canvas.Dc(), {8, 0, 40, 12}, nullptr);
    EXPECT_EQ(Place(control.m_rcPaint), Place(8, 5, 20, 12));
}

TEST_F(ControlPaintTest, AnOpaqueBackgroundFillsTheControl)
{
    control.SetBkColor(kRed.value);
    EXPECT_EQ(host.Paint().Count(kRed), 40 * 30);
}

TEST_F(ControlPaintTest, AnOpaqueBackgroundStaysInThePaintedPart)
{
    control.SetBkColor(kRed.value);
    EXPECT_EQ(PaintAlone(control, {5, 5, 15, 10}).BoundsOfAllBut(kWhite).right, 15);
    EXPECT_EQ(PaintAlone(control, {5, 5, 15, 10}).Count(kRed), 10 * 5);
}

TEST_F(ControlPaintTest, ATranslucentBackgroundIsBlendedOnce)
{
    control.SetBkColor(0x80FF0000);
    const Picture picture = host.Paint();
    const Argb pixel = picture.At(20, 15);
    EXPECT_EQ(picture.Count(pixel), 40 * 30);
    EXPECT_NEAR(static_cast<int>(pixel.value & 0xFF), 0x7F, 2);
    EXPECT_EQ((pixel.value >> 16) & 0xFF, 0xFFu);
}

TEST_F(ControlPaintTest, ABackgroundWithoutAlphaDrawsNothing)
{
    control.SetBkColor(0x00FF0000);
    EXPECT_EQ(host.Paint().Count(kWhite), 40 * 30);
}

TEST_F(ControlPaintTest, TwoColoursMakeAGradientFromTopToBottom)
{
    control.SetBkColor(kRed.value);
    control.SetBkColor2(kBlue.value);
    const Picture picture = host.Paint();
    EXPECT_GT((picture.At(20, 1).value >> 16) & 0xFF, 0xD0u);
    EXPECT_GT(picture.At(20, 28).value & 0xFF, 0xD0u);
    EXPECT_EQ(picture.At(1, 10), picture.At(38, 10));
}

TEST_F(ControlPaintTest, AHorizontalGradientRunsFromLeftToRight)
{
    control.SetBkColor(kRed.value);
    control.SetBkColor2(kBlue.value);
    control.SetGradient(L"hor");
    const Picture picture = host.Paint();
    EXPECT_GT((picture.At(1, 15).value >> 16) & 0xFF, 0xD0u);
    EXPECT_GT(picture.At(38, 15).value & 0xFF, 0xD0u);
    EXPECT_EQ(picture.At(10, 1), picture.At(10, 28));
}

TEST_F(ControlPaintTest, AThirdColourMakesTwoGradients)
{
    control.SetBkColor(kRed.value);
    control.SetBkColor2(kGreen.value);
    control.SetBkColor3(kBlue.value);
    const Picture picture = host.Paint();
    EXPECT_GT((picture.At(20, 1).value >> 16) & 0xFF, 0xC0u);
    EXPECT_GT((picture.At(20, 15).value >> 8) & 0xFF, 0xC0u);
    EXPECT_GT(picture.At(20, 28).value & 0xFF, 0xC0u);
}

TEST_F(ControlPaintTest, TheBackgroundPictureLiesOverTheBackgroundColour)
{
    AddColumns(host.Manager(), L"two.png", {kGreen, kBlue});
    control.SetBkColor(kRed.value);
    control.SetBkImage(L"file='two.png' dest='0,0,20,10'");
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(5, 5), kGreen);
    EXPECT_EQ(picture.At(15, 5), kBlue);
    EXPECT_EQ(picture.At(25, 5), kRed);
}

TEST_F(ControlPaintTest, TheForeColourLiesOverTheBackgroundPicture)
{
    AddColumns(host.Manager(), L"green.png", {kGreen});
    control.SetBkImage(L"green.png");
    control.SetForeColor(kBlue.value);
    EXPECT_EQ(host.Paint().Count(kBlue), 40 * 30);
}

TEST_F(ControlPaintTest, TheForePictureLiesOverTheForeColour)
{
    AddColumns(host.Manager(), L"green.png", {kGreen});
    control.SetForeColor(kBlue.value);
    control.SetForeImage(L"green.png");
    EXPECT_EQ(host.Paint().Count(kGreen), 40 * 30);
}

TEST_F(ControlPaintTest, PicturesFollowTheControl)
{
    AddColumns(host.Manager(), L"green.png", {kGreen});
    control.SetBkImage(L"file='green.png' dest='0,0,10,10'");
    host.Layout();
    control.SetPos({20, 10, 40, 30});
    EXPECT_EQ(Place(PaintAlone(control, {0, 0, 40, 30}).BoundsOfAllBut(kWhite)),
              Place(20, 10, 30, 20));
}

TEST_F(ControlPaintTest, OneWidthDrawsAFrameInside)
{
    control.SetBorderColor(kRed.value);
    control.SetBorderSize(2);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.Count(kRed), 40 * 30 - 36 * 26);
    EXPECT_EQ(picture.At(1, 15), kRed);
    EXPECT_EQ(picture.At(2, 15), kWhite);
    EXPECT_EQ(picture.At(39, 29), kRed);
}

TEST_F(ControlPaintTest, FourWidthsDrawTheirEdges)
{
    const struct {
        RECT widths;
        int pixels;
        POINT drawn;
    } rows[] = {
        {{3, 0, 0, 0}, 3 * 30, {2, 15}},          {{0, 4, 0, 0}, 4 * 40, {20, 3}},
        {{0, 0, 5, 0}, 5 * 30, {35, 15}},         {{0, 0, 0, 6}, 6 * 40, {20, 24}},
        {{1, 1, 1, 1}, 2 * 40 + 2 * 28, {39, 1}}, {{100, 0, 0, 0}, 40 * 30, {39, 29}},
        {{-3, 2, 0, 0}, 2 * 40, {0, 1}},
    };
    control.SetBorderColor(kRed.value);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << Place(row.widths));
        control.SetBorderSize(row.widths);
        const Picture picture = host.Paint();
        EXPECT_EQ(picture.Count(kRed), row.pixels);
        EXPECT_EQ(picture.At(row.drawn.x, row.drawn.y), kRed);
    }
}

TEST_F(ControlPaintTest, TheFourWidthsWinOverTheOne)
{
    control.SetBorderColor(kRed.value);
    control.SetBorderSize(5);
    control.SetLeftBorderSize(2);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.Count(kRed), 2 * 30);
}

TEST_F(ControlPaintTest, ATranslucentFrameIsBlendedOnceAtTheCorners)
{
    control.SetBorderColor(0x80FF0000);
    control.SetBorderSize({3, 3, 3, 3});
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(1, 1), picture.At(20, 1));
    EXPECT_EQ(picture.At(1, 1), picture.At(1, 15));
    EXPECT_EQ(picture.At(38, 28), picture.At(1, 1));
}

TEST_F(ControlPaintTest, AFrameNeedsAColourAndAWidth)
{
    control.SetBorderSize(2);
    EXPECT_EQ(host.Paint().Count(kWhite), 40 * 30);
    control.SetBorderSize(0);
    control.SetBorderColor(kRed.value);
    EXPECT_EQ(host.Paint().Count(kWhite), 40 * 30);
}

TEST_F(ControlPaintTest, TheFocusedFrameHasItsOwnColour)
{
    control.SetBorderColor(kRed.value);
    control.SetFocusBorderColor(kBlue.value);
    control.SetBorderSize(2);
    control.SetLeftBorderSize(1);
    EXPECT_EQ(host.Paint().Count(kRed), 30);
    control.SetFocus();
    const Picture focused = host.Paint();
    EXPECT_EQ(focused.Count(kBlue), 40 * 30 - 36 * 26);
    EXPECT_EQ(focused.Count(kRed), 0);
}

TEST_F(ControlPaintTest, AFocusColourAloneShowsOnlyWithTheFocus)
{
    control.SetFocusBorderColor(kBlue.value);
    control.SetBorderSize(2);
    EXPECT_EQ(host.Paint().Count(kWhite), 40 * 30);
    control.SetFocus();
    EXPECT_EQ(host.Paint().Count(kBlue), 40 * 30 - 36 * 26);
}

TEST_F(ControlPaintTest, ARoundedFrameLeavesTheCornersOut)
{
    control.SetBorderColor(kRed.value);
    control.SetBorderSize(2);
    control.SetBorderRound({16, 16});
    control.SetBkColor(kBlue.value);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(0, 0), kWhite);
    EXPECT_EQ(picture.At(39, 0), kWhite);
    EXPECT_EQ(picture.At(0, 29), kWhite);
    EXPECT_EQ(picture.At(20, 15), kBlue);
    EXPECT_EQ(picture.At(20, 0), kRed);
}

TEST_F(ControlPaintTest, ARoundedFrameAlsoTakesTheFocusColour)
{
    control.SetBorderColor(kRed.value);
    control.SetFocusBorderColor(kBlue.value);
    control.SetBorderSize(2);
    control.SetBorderRound({16, 16});
    control.SetFocus();
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(20, 0), kBlue);
    EXPECT_EQ(picture.Count(kRed), 0);
}

TEST_F(ControlPaintTest, BordersGrowWithTheScale)
{
    ControlHost scaled{60, 60, 144};
    auto& child = scaled.Add<CControlUI>();
    child.SetBorderColor(kRed.value);
    child.SetBorderSize(2);
    const Picture picture = scaled.Paint();
    EXPECT_EQ(picture.At(2, 30), kRed);
    EXPECT_EQ(picture.At(3, 30), kWhite);
}

TEST_F(ControlPaintTest, ColoursFollowTheHslOfTheProcess)
{
    control.SetBkColor(0xFF804020);
    control.SetColorHSL(true);
    CPaintManagerUI::SetHSL(true, 180, 100, 50);
    const Argb expected{CRenderEngine::AdjustColor(0xFF804020, 180, 100, 50)};
    EXPECT_EQ(host.Paint().At(20, 15), expected);
    CPaintManagerUI::SetHSL(false, 180, 100, 100);
}

TEST_F(ControlPaintTest, DrawImageSaysWhetherThePictureLoads)
{
    AddColumns(host.Manager(), L"green.png", {kGreen});
    host.Paint();
    const Canvas canvas(40, 30);
    control.DoPaint(canvas.Dc(), {0, 0, 40, 30}, nullptr);
    EXPECT_TRUE(control.DrawImage(canvas.Dc(), L"green.png"));
    EXPECT_FALSE(control.DrawImage(canvas.Dc(), L"no such picture.png"));
    EXPECT_EQ(canvas.Take().Count(kGreen), 40 * 30);
}

class ContainerPaintTest : public testing::Test {
protected:
    ControlHost host{40, 30};
    CContainerUI& outer = host.Add<CContainerUI>();

    template <class C>
    C& AddAt(const RECT& place)
    {
        auto* const child = new C;
        outer.Add(child);
        host.Layout();
        child->SetPos(place);
        return *child;
    }
};

TEST_F(ContainerPaintTest, ChildrenLieOverTheirContainerAndLaterOnesOnTop)
{
    outer.SetBkColor(kRed.value);
    AddAt<CControlUI>({0, 0, 20, 20}).SetBkColor(kGreen.value);
    AddAt<CControlUI>({10, 10, 30, 30}).SetBkColor(kBlue.value);
    outer.GetItemAt(0)->SetPos({0, 0, 20, 20});
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(5, 5), kGreen);
    EXPECT_EQ(picture.At(15, 15), kBlue);
    EXPECT_EQ(picture.At(35, 5), kRed);
}

TEST_F(ContainerPaintTest, ChildrenAreClippedToTheAreaInsideTheInset)
{
    outer.SetInset({5, 6, 7, 8});
    host.Layout();
    auto& child = AddAt<CControlUI>({0, 0, 40, 30});
    child.SetForeColor(kRed.value);
    EXPECT_EQ(Place(host.Paint().BoundsOfAllBut(kWhite)), Place(5, 6, 33, 22));
}

TEST_F(ContainerPaintTest, FloatingChildrenAreClippedToTheContainerOnly)
{
    outer.SetInset({5, 6, 7, 8});
    host.Layout();
    auto& child = AddAt<CControlUI>({});
    child.SetFloat(true);
    host.Layout();
    child.SetPos({-10, 0, 20, 30});
    child.SetForeColor(kRed.value);
    EXPECT_EQ(Place(host.Paint().BoundsOfAllBut(kWhite)), Place(0, 0, 20, 30));
}

TEST_F(ContainerPaintTest, NothingLeavesThePaintedPart)
{
    AddAt<SpillingControl>({2, 2, 30, 28});
    const Canvas canvas(40, 30);
    outer.DoPaint(canvas.Dc(), {10, 10, 20, 20}, nullptr);
    EXPECT_EQ(Place(canvas.Take().BoundsOfAllBut(kWhite)), Place(10, 10, 20, 20));
}

TEST_F(ContainerPaintTest, TheClipIsTheSameAfterThePaint)
{
    outer.SetInset({5, 5, 5, 5});
    host.Layout();
    AddAt<CControlUI>({0, 0, 40, 30}).SetForeColor(kRed.value);
    const Canvas canvas(40, 30);
    outer.DoPaint(canvas.Dc(), {10, 10, 20, 20}, nullptr);
    RECT clip{};
    ::GetClipBox(canvas.Dc(), &clip);
    EXPECT_EQ(Place(clip), Place(0, 0, 40, 30));
}

TEST_F(ContainerPaintTest, HiddenChildrenAndThoseOutsideThePaintAreSkipped)
{
    auto& shown = AddAt<StepControl>({0, 0, 10, 10});
    auto& hidden = AddAt<StepControl>({0, 0, 10, 10});
    auto& elsewhere = AddAt<StepControl>({20, 20, 30, 30});
    hidden.SetVisible(false);
    host.Layout();
    shown.SetPos({0, 0, 10, 10});
    elsewhere.SetPos({20, 20, 30, 30});
    shown.steps = hidden.steps = elsewhere.steps = L"";
    const Canvas canvas(40, 30);
    EXPECT_TRUE(outer.DoPaint(canvas.Dc(), {0, 0, 15, 15}, nullptr));
    EXPECT_EQ(shown.steps, L"1234567");
    EXPECT_EQ(hidden.steps, L"");
    EXPECT_EQ(elsewhere.steps, L"");
}

TEST_F(ContainerPaintTest, OnlyFloatingChildrenArePaintedOutsideTheChildArea)
{
    outer.SetInset({20, 0, 0, 0});
    host.Layout();
    auto& fixed = AddAt<StepControl>({0, 0, 40, 30});
    auto& floating = AddAt<StepControl>({});
    floating.SetFloat(true);
    host.Layout();
    fixed.SetPos({0, 0, 40, 30});
    floating.SetPos({0, 0, 40, 30});
    fixed.steps = floating.steps = L"";
    const Canvas canvas(40, 30);
    outer.DoPaint(canvas.Dc(), {0, 0, 10, 30}, nullptr);
    EXPECT_EQ(fixed.steps, L"");
    EXPECT_EQ(floating.steps, L"1234567");
}

TEST_F(ContainerPaintTest, TheStopControlEndsThePaintingOfTheTree)
{
    auto& first = AddAt<StepControl>({0, 0, 10, 10});
    auto& stop = AddAt<StepControl>({20, 20, 30, 30});
    auto& last = AddAt<StepControl>({0, 0, 10, 10});
    stop.SetVisible(false);
    host.Layout();
    first.SetPos({0, 0, 10, 10});
    last.SetPos({0, 0, 10, 10});
    first.steps = last.steps = L"";
    const Canvas canvas(40, 30);
    EXPECT_FALSE(host.Root()->Paint(canvas.Dc(), {0, 0, 15, 15}, &stop));
    EXPECT_EQ(first.steps, L"1234567");
    EXPECT_EQ(last.steps, L"");
}

TEST_F(ContainerPaintTest, APaintThatMissesTheContainerDrawsNothing)
{
    auto& child = AddAt<StepControl>({0, 0, 10, 10});
    child.steps = L"";
    const Canvas canvas(100, 30);
    EXPECT_TRUE(outer.DoPaint(canvas.Dc(), {50, 0, 100, 30}, nullptr));
    EXPECT_EQ(child.steps, L"");
}

TEST_F(ContainerPaintTest, ScrollBarsLieOverTheChildrenAndMayBeTheStopControl)
{
    outer.EnableScrollBar(true, false);
    outer.SetFixedScrollbar(true);
    auto& child = AddAt<CControlUI>({});
    child.SetBkColor(kRed.value);
    outer.GetVerticalScrollBar()->SetBkColor(kBlue.value);
    outer.GetVerticalScrollBar()->SetShowButton1(false);
    outer.GetVerticalScrollBar()->SetShowButton2(false);
    outer.NeedUpdate();
    host.Layout();
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(10, 15), kRed);
    EXPECT_EQ(picture.At(32, 15), kBlue);
    const Canvas canvas(40, 30);
    EXPECT_FALSE(outer.DoPaint(canvas.Dc(), {0, 0, 40, 30}, outer.GetVerticalScrollBar()));
}

TEST_F(ContainerPaintTest, ContainersNestTheirClips)
{
    auto* const inner = new CContainerUI;
    outer.SetInset({5, 5, 5, 5});
    outer.Add(inner);
    inner->SetInset({3, 3, 3, 3});
    auto* const leaf = new SpillingControl;
    inner->Add(leaf);
    host.Layout();
    leaf->SetPos({0, 0, 40, 30});
    EXPECT_EQ(Place(host.Paint().BoundsOfAllBut(kWhite)), Place(8, 8, 32, 22));
}
