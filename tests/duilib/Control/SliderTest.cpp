#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <string>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;
using test::SentTypes;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};

// The thumb is 10 wide and moves over 100 pixels: a pixel is a unit.
class SliderTest : public testing::Test {
protected:
    ControlHost host{110, 20};
    CSliderUI& slider = host.Add<CSliderUI>();

    // Presses the middle of the thumb.
    void Grab()
    {
        const RECT thumb = slider.GetThumbRect();
        host.Press((thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2);
    }
};

TEST_F(SliderTest, StartsAsAProgressBarWithAThumb)
{
    EXPECT_STREQ(slider.GetClass(), L"SliderUI");
    EXPECT_EQ(slider.GetInterface(L"Slider"), static_cast<CSliderUI*>(&slider));
    EXPECT_EQ(slider.GetInterface(L"Progress"), static_cast<CProgressUI*>(&slider));
    EXPECT_TRUE(slider.IsHorizontal());
    EXPECT_EQ(slider.GetChangeStep(), 1);
    EXPECT_FALSE(slider.GetCanSendMove());
    EXPECT_STREQ(slider.GetThumbImage(), L"");
    const RECT thumb = slider.GetThumbRect();
    EXPECT_EQ(thumb.left, 0);
    EXPECT_EQ(thumb.right, 10);
    EXPECT_EQ(thumb.top, 5);
    EXPECT_EQ(thumb.bottom, 15);
}

TEST_F(SliderTest, TheFactoryMakesIt)
{
    const std::unique_ptr<CControlUI> made(
        CControlFactory::GetInstance()->CreateControl(L"CSliderUI"));
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->GetClass(), L"SliderUI");
}

TEST_F(SliderTest, AttributesReachTheirSetters)
{
    slider.SetAttribute(L"thumbimage", L"a");
    slider.SetAttribute(L"thumbhotimage", L"b");
    slider.SetAttribute(L"thumbpushedimage", L"c");
    slider.SetAttribute(L"ThumbSize", L"20,8");
    slider.SetAttribute(L"step", L"5");
    slider.SetAttribute(L"sendmove", L"true");
    slider.SetAttribute(L"max", L"50");
    EXPECT_STREQ(slider.GetThumbImage(), L"a");
    EXPECT_STREQ(slider.GetThumbHotImage(), L"b");
    EXPECT_STREQ(slider.GetThumbPushedImage(), L"c");
    EXPECT_EQ(slider.GetThumbRect().right, 20);
    EXPECT_EQ(slider.GetThumbRect().top, 6);
    EXPECT_EQ(slider.GetChangeStep(), 5);
    EXPECT_TRUE(slider.GetCanSendMove());
    EXPECT_EQ(slider.GetMaxValue(), 50);
}

TEST_F(SliderTest, IsATabStopUnlessTheKeyboardIsOff)
{
    EXPECT_EQ(slider.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP | UIFLAG_SETCURSOR));
    slider.SetKeyboardEnabled(false);
    EXPECT_EQ(slider.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    slider.SetEnabled(false);
    EXPECT_EQ(slider.GetControlFlags(), 0u);
}

TEST_F(SliderTest, TheThumbStandsInProportion)
{
    slider.SetValue(30);
    EXPECT_EQ(slider.GetThumbRect().left, 30);
    slider.SetValue(100);
    EXPECT_EQ(slider.GetThumbRect().right, 110);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty()) << "not by the user";
}

TEST_F(SliderTest, AVerticalOneHasItsLeastValueBelow)
{
    host.Resize(20, 110);
    slider.SetHorizontal(false);
    host.Layout();
    EXPECT_EQ(slider.GetThumbRect().bottom, 110);
    EXPECT_EQ(slider.GetThumbRect().left, 5);
    slider.SetValue(100);
    EXPECT_EQ(slider.GetThumbRect().top, 0);
    Grab();
    host.MoveMouse(10, 30);
    host.Release(10, 30);
    EXPECT_EQ(slider.GetValue(), 75);
}

TEST_F(SliderTest, DraggingTheThumbSetsTheValueOnceAtItsEnd)
{
    Grab();
    host.MoveMouse(35, 10);
    EXPECT_EQ(slider.GetValue(), 30);
    host.MoveMouse(45, 10);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty());
    host.Release(45, 10);
    EXPECT_EQ(slider.GetValue(), 40);
    EXPECT_EQ(host.Sent(L"valuechanged").size(), 1u);
    EXPECT_TRUE(host.Sent(L"movevaluechanged").empty());
}

TEST_F(SliderTest, TheThumbDoesNotJumpWhenItsEdgeIsPressed)
{
    slider.SetValue(50);
    host.Click(51, 10);
    EXPECT_EQ(slider.GetValue(), 50);
    host.Press(59, 10);
    host.MoveMouse(69, 10);
    host.Release(69, 10);
    EXPECT_EQ(slider.GetValue(), 60);
}

TEST_F(SliderTest, TellsEachMoveWhenAskedTo)
{
    slider.SetCanSendMove(true);
    Grab();
    host.MoveMouse(15, 10);
    host.MoveMouse(15, 11);
    host.MoveMouse(25, 10);
    host.Release(25, 10);
    EXPECT_EQ(host.Sent(L"movevaluechanged").size(), 2u);
    EXPECT_EQ(host.Sent(L"valuechanged").size(), 1u);
    EXPECT_EQ(host.Sent(L"valuechanged").front().sender, &slider);
}

TEST_F(SliderTest, NothingIsToldOfADragThatComesBack)
{
    Grab();
    host.MoveMouse(55, 10);
    host.MoveMouse(5, 10);
    host.Release(5, 10);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty());
}

TEST_F(SliderTest, APressBesideTheThumbBringsItThere)
{
    host.Press(75, 10);
    EXPECT_EQ(slider.GetValue(), 70);
    host.MoveMouse(85, 10);
    EXPECT_EQ(slider.GetValue(), 80);
    host.Release(85, 10);
    EXPECT_EQ(host.Sent(L"valuechanged").size(), 1u);
    host.Click(109, 10);
    EXPECT_EQ(slider.GetValue(), 100);
    host.Click(0, 10);
    EXPECT_EQ(slider.GetValue(), 0);
}

TEST_F(SliderTest, TheMouseOutsideKeepsTheValueAtTheEnds)
{
    Grab();
    host.MoveMouse(5000, -300);
    EXPECT_EQ(slider.GetValue(), 100);
    host.MoveMouse(-5000, 10);
    EXPECT_EQ(slider.GetValue(), 0);
    host.Release(-5000, 10);
}

TEST_F(SliderTest, SetValueIsIgnoredWhileTheThumbIsDragged)
{
    Grab();
    host.MoveMouse(35, 10);
    slider.SetValue(90);
    EXPECT_EQ(slider.GetValue(), 30);
    host.Release(35, 10);
    slider.SetValue(90);
    EXPECT_EQ(slider.GetValue(), 90);
    slider.SetValue(101);
    EXPECT_EQ(slider.GetValue(), 90);
}

TEST_F(SliderTest, TheWheelMovesByTheStep)
{
    slider.SetChangeStep(5);
    slider.SetValue(50);
    host.Wheel(50, 10, 120);
    EXPECT_EQ(slider.GetValue(), 55);
    host.Wheel(50, 10, -240);
    EXPECT_EQ(slider.GetValue(), 45);
    EXPECT_EQ(host.Sent(L"valuechanged").size(), 2u);
    slider.SetValue(98);
    host.Wheel(50, 10, 120);
    EXPECT_EQ(slider.GetValue(), 100);
    host.ClearSent();
    host.Wheel(50, 10, 120);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty());
}

TEST_F(SliderTest, PartsOfANotchAddUp)
{
    slider.SetValue(50);
    host.Wheel(50, 10, 60);
    EXPECT_EQ(slider.GetValue(), 50);
    host.Wheel(50, 10, 60);
    EXPECT_EQ(slider.GetValue(), 51);
    host.Wheel(50, 10, 60);
    host.Wheel(50, 10, -60);
    host.Wheel(50, 10, -60);
    EXPECT_EQ(slider.GetValue(), 50) << "turning back starts anew";
}

TEST_F(SliderTest, KeysMoveTheThumb)
{
    slider.SetFocus();
    slider.SetChangeStep(2);
    slider.SetValue(50);
    const struct {
        int key;
        int value;
    } presses[] = {{VK_RIGHT, 52}, {VK_UP, 54},   {VK_LEFT, 52}, {VK_DOWN, 50},
                   {VK_PRIOR, 60}, {VK_NEXT, 50}, {VK_END, 100}, {VK_HOME, 0}};
    for (const auto& press : presses) {
        SCOPED_TRACE(press.key);
        host.ClearSent();
        host.Key(press.key);
        EXPECT_EQ(slider.GetValue(), press.value);
        EXPECT_EQ(host.Sent(L"valuechanged").size(), 1u);
    }
    host.ClearSent();
    host.Key(VK_LEFT);
    EXPECT_EQ(slider.GetValue(), 0);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty());
    slider.SetKeyboardEnabled(false);
    host.Key(VK_RIGHT);
    EXPECT_EQ(slider.GetValue(), 0);
}

TEST_F(SliderTest, AStepIsAtLeastOne)
{
    slider.SetChangeStep(0);
    EXPECT_EQ(slider.GetChangeStep(), 1);
    slider.SetAttribute(L"step", L"-3");
    EXPECT_EQ(slider.GetChangeStep(), 1);
}

// A range of no length must not be divided by.
TEST_F(SliderTest, PaintingChangesNeitherTheValueNorTheRange)
{
    AddColumns(host.Manager(), L"bar", {kRed});
    slider.SetForeImage(L"bar");
    slider.SetValue(90);
    slider.SetMaxValue(50);
    host.Paint();
    EXPECT_EQ(slider.GetValue(), 90);
    EXPECT_EQ(slider.GetMaxValue(), 50);
    slider.SetMaxValue(0);
    host.Paint();
    EXPECT_EQ(slider.GetValue(), 90);
    EXPECT_EQ(slider.GetMinValue(), 0);
    EXPECT_EQ(slider.GetMaxValue(), 0);
}

TEST(UprightSliderTest, AnEmptyRangeIsSafe)
{
    ControlHost host{20, 110};
    auto& slider = host.Add<CSliderUI>();
    slider.SetHorizontal(false);
    for (const int max : {0, -5}) {
        SCOPED_TRACE(max);
        slider.SetMaxValue(max);
        host.ClearSent();
        EXPECT_EQ(slider.GetThumbRect().bottom, 110);
        host.Paint();
        host.Click(10, 30);
        host.Press(10, 105);
        host.MoveMouse(10, 50);
        host.Release(10, 50);
        host.Wheel(10, 50, 120);
        EXPECT_EQ(slider.GetValue(), 0);
        EXPECT_TRUE(host.Sent(L"valuechanged").empty());
    }
}

TEST_F(SliderTest, AnEmptyRangeIsSafe)
{
    for (const int max : {0, -5}) {
        SCOPED_TRACE(max);
        slider.SetMaxValue(max);
        host.ClearSent();
        EXPECT_EQ(slider.GetThumbRect().left, 0);
        host.Paint();
        host.Click(80, 10);
        Grab();
        host.MoveMouse(90, 10);
        host.Release(90, 10);
        host.Wheel(50, 10, 120);
        slider.SetFocus();
        host.Key(VK_END);
        host.Key(VK_NEXT);
        EXPECT_EQ(slider.GetValue(), 0);
        EXPECT_TRUE(host.Sent(L"valuechanged").empty());
    }
}

TEST_F(SliderTest, TheWidestRangeDoesNotOverflow)
{
    slider.SetMinValue(INT_MIN);
    slider.SetMaxValue(INT_MAX);
    host.Click(109, 10);
    EXPECT_EQ(slider.GetValue(), INT_MAX);
    EXPECT_EQ(slider.GetThumbRect().right, 110);
    slider.SetFocus();
    host.Key(VK_RIGHT);
    EXPECT_EQ(slider.GetValue(), INT_MAX);
    host.Key(VK_HOME);
    EXPECT_EQ(slider.GetValue(), INT_MIN);
    host.Key(VK_NEXT);
    EXPECT_EQ(slider.GetValue(), INT_MIN);
}

TEST_F(SliderTest, AThumbLargerThanTheControlIsSafe)
{
    slider.SetThumbSize({500, 500});
    host.Paint();
    host.Click(50, 10);
    EXPECT_EQ(slider.GetValue(), 0);
    slider.SetThumbSize({-3, -3});
    EXPECT_EQ(slider.GetThumbRect().left, slider.GetThumbRect().right);
    host.Click(110 / 2, 10);
    EXPECT_EQ(slider.GetValue(), 50);
}

TEST_F(SliderTest, ADisabledOneDoesNothing)
{
    slider.SetEnabled(false);
    host.Click(80, 10);
    host.Wheel(50, 10, 120);
    slider.SetFocus();
    host.Key(VK_RIGHT);
    EXPECT_EQ(slider.GetValue(), 0);
    EXPECT_TRUE(host.Sent(L"valuechanged").empty());
}

TEST_F(SliderTest, DisablingEndsADrag)
{
    Grab();
    host.MoveMouse(35, 10);
    slider.SetEnabled(false);
    host.MoveMouse(65, 10);
    host.Release(65, 10);
    EXPECT_EQ(slider.GetValue(), 30);
    slider.SetEnabled(true);
    slider.SetValue(10);
    EXPECT_EQ(slider.GetValue(), 10);
}

TEST_F(SliderTest, AHandlerMayDeleteTheSlider)
{
    test::DeleteAtOnce(host.Root());
    struct Deleter : INotifyUI {
        ControlHost& host;
        std::wstring type;
        int calls = 0;
        Deleter(ControlHost& owner, const wchar_t* which) : host(owner), type(which) {}
        void Notify(TNotifyUI& sent) override
        {
            if (type == sent.sType.GetData()) {
                ++calls;
                static_cast<CContainerUI*>(host.Root())->Remove(sent.pSender);
            }
        }
    };
    {
        Deleter onMove(host, L"movevaluechanged");
        host.Manager().AddNotifier(&onMove);
        slider.SetCanSendMove(true);
        Grab();
        host.MoveMouse(35, 10);
        host.Release(35, 10);
        EXPECT_EQ(onMove.calls, 1);
        host.Manager().RemoveNotifier(&onMove);
    }
    Deleter onChange(host, L"valuechanged");
    host.Manager().AddNotifier(&onChange);
    const std::function<void()> changes[] = {
        [this] { host.Click(80, 10); },
        [this] { host.Wheel(50, 10, 120); },
        [this] { host.Key(VK_RIGHT); },
    };
    int expected = 0;
    for (const auto& change : changes) {
        host.Add<CSliderUI>().SetFocus();
        change();
        EXPECT_EQ(onChange.calls, ++expected);
        host.Release(0, 0);
    }
    host.Manager().RemoveNotifier(&onChange);
}

TEST_F(SliderTest, DrawsTheThumbPictureOfTheState)
{
    AddColumns(host.Manager(), L"n", {kRed});
    AddColumns(host.Manager(), L"h", {kGreen});
    AddColumns(host.Manager(), L"p", {kBlue});
    slider.SetThumbImage(L"n");
    slider.SetBkColor(kWhite.value);
    slider.SetValue(50);
    Picture picture = host.Paint();
    EXPECT_EQ(picture.Count(kRed), 100);
    EXPECT_EQ(picture.At(50, 5), kRed);
    EXPECT_EQ(picture.At(59, 14), kRed);
    EXPECT_EQ(picture.At(60, 10), kWhite);

    host.MoveMouse(55, 10);
    EXPECT_EQ(host.Paint().Count(kRed), 100) << "the normal picture stands in";
    slider.SetThumbHotImage(L"h");
    EXPECT_EQ(host.Paint().Count(kGreen), 100);
    slider.SetThumbPushedImage(L"p");
    host.Press(55, 10);
    EXPECT_EQ(host.Paint().Count(kBlue), 100);
    host.Release(55, 10);
    EXPECT_EQ(host.Paint().Count(kGreen), 100);
    host.LeaveMouse();
    EXPECT_EQ(host.Paint().Count(kRed), 100);
}

TEST_F(SliderTest, TheBarIsFilledUpToTheThumb)
{
    AddColumns(host.Manager(), L"n", {kRed});
    slider.SetThumbImage(L"n");
    slider.SetBkColor(kWhite.value);
    slider.SetForeColor(kGreen.value);
    slider.SetValue(50);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(10, 10), kGreen);
    EXPECT_EQ(picture.At(49, 10), kGreen);
    EXPECT_EQ(picture.At(55, 10), kRed);
    EXPECT_EQ(picture.At(61, 10), kWhite);
}

TEST_F(SliderTest, HasAPlainLookWithoutPictures)
{
    slider.SetValue(50);
    const Picture picture = host.Paint();
    const Argb done = picture.At(20, 10);
    const Argb rest = picture.At(90, 10);
    const Argb thumb = picture.At(55, 7);
    EXPECT_NE(done, kWhite);
    EXPECT_NE(rest, kWhite);
    EXPECT_NE(thumb, kWhite);
    EXPECT_NE(done, rest);
    EXPECT_EQ(picture.At(20, 2), kWhite) << "the track is a line";
}

TEST_F(SliderTest, ThePlainLookShowsStateAndFocus)
{
    slider.SetValue(50);
    const Picture normal = host.Paint();
    slider.SetFocus();
    const Picture focused = host.Paint();
    EXPECT_NE(focused, normal);
    host.Manager().SetFocus(nullptr);
    host.MoveMouse(55, 10);
    const Picture hot = host.Paint();
    EXPECT_NE(hot.At(55, 10), normal.At(55, 10));
    host.LeaveMouse();
    slider.SetEnabled(false);
    EXPECT_NE(host.Paint().At(55, 10), normal.At(55, 10));
}

TEST_F(SliderTest, ThePlainLookLeavesNoObjectsBehind)
{
    slider.SetFocus();
    const auto drawAll = [this] {
        for (int value = 0; value <= 100; ++value) {
            slider.SetValue(value);
            host.Paint();
        }
    };
    drawAll();
    const int before = test::GdiObjects();
    drawAll();
    EXPECT_EQ(test::GdiObjects(), before);
}

TEST(SliderScaleTest, TheThumbPictureFillsTheThumbAtAnyScale)
{
    for (const int dpi : {96, 120, 144, 192}) {
        SCOPED_TRACE(dpi);
        ControlHost host{200, 60, dpi};
        AddColumns(host.Manager(), L"thumb", {kRed});
        auto& slider = host.Add<CSliderUI>();
        slider.SetBkColor(kWhite.value);
        slider.SetThumbImage(L"thumb");
        slider.SetThumbSize({10, 20});
        slider.SetValue(50);
        const RECT thumb = slider.GetThumbRect();
        const int area = (thumb.right - thumb.left) * (thumb.bottom - thumb.top);
        EXPECT_EQ(thumb.right - thumb.left, ::MulDiv(10, dpi, 96));
        const Picture picture = host.Paint();
        EXPECT_EQ(picture.Count(kRed, thumb), area);
        EXPECT_EQ(picture.Count(kRed), area);
    }
}

TEST(SliderScaleTest, TheThumbIsScaled)
{
    ControlHost host{165, 30, 144};
    auto& slider = host.Add<CSliderUI>();
    slider.SetValue(100);
    EXPECT_EQ(slider.GetThumbRect().left, 150);
    EXPECT_EQ(slider.GetThumbRect().right, 165);
    host.Click(82, 15);
    EXPECT_EQ(slider.GetValue(), 50);
}

} // namespace
