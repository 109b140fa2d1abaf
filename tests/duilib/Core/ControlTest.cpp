#include "duilib/Core/ControlKit.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::EventSink;
using test::Place;
using test::UpdateRect;
using test::Validate;

namespace {

constexpr Place kNothing{0, 0, 0, 0};

// Shows what a derived class sees.
class OpenControl : public CControlUI {
public:
    using CControlUI::m_bInternVisible;
    using CControlUI::m_bUpdateNeeded;
    using CControlUI::m_cxyMax;
    using CControlUI::m_nBorderStyle;
    using CControlUI::m_rcItem;
};

class ControlTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CContainerUI& outer = host.Add<CContainerUI>();

    OpenControl& AddAt(const RECT& place)
    {
        auto* const control = new OpenControl;
        outer.Add(control);
        host.Layout();
        control->SetPos(place);
        Validate(host);
        return *control;
    }
};

} // namespace

TEST(ControlStartTest, StartsVisibleEnabledAndOtherwiseEmpty)
{
    OpenControl control;
    EXPECT_TRUE(control.IsVisible());
    EXPECT_TRUE(control.IsEnabled());
    EXPECT_TRUE(control.IsMouseEnabled());
    EXPECT_TRUE(control.IsKeyboardEnabled());
    EXPECT_FALSE(control.IsFocused());
    EXPECT_FALSE(control.IsFloat());
    EXPECT_FALSE(control.IsUpdateNeeded());
    EXPECT_FALSE(control.IsContextMenuUsed());
    EXPECT_FALSE(control.IsDragEnabled());
    EXPECT_FALSE(control.IsDropEnabled());
    EXPECT_FALSE(control.IsResourceText());
    EXPECT_FALSE(control.IsRichEvent());
    EXPECT_FALSE(control.IsColorHSL());
    EXPECT_EQ(control.GetManager(), nullptr);
    EXPECT_EQ(control.GetParent(), nullptr);
    EXPECT_EQ(control.GetMaxWidth(), 9999);
    EXPECT_EQ(control.GetMaxHeight(), 9999);
    EXPECT_EQ(control.GetMinWidth(), 0);
    EXPECT_EQ(control.GetFixedWidth(), 0);
    EXPECT_EQ(control.GetToolTipWidth(), 300);
    EXPECT_EQ(control.GetBorderStyle(), PS_SOLID);
    EXPECT_EQ(control.GetCursor(), 0);
    EXPECT_EQ(control.GetControlFlags(), 0u);
    EXPECT_EQ(control.GetTag(), 0u);
    EXPECT_TRUE(control.GetText().IsEmpty());
    EXPECT_EQ(Place(control.GetPos()), kNothing);
}

TEST(ControlStartTest, AnswersToItsNames)
{
    CControlUI control;
    EXPECT_STREQ(control.GetClass(), L"ControlUI");
    EXPECT_EQ(control.GetInterface(L"Control"), &control);
    EXPECT_EQ(control.GetInterface(L"Label"), nullptr);
    EXPECT_EQ(control.GetInterface(nullptr), nullptr);
}

TEST(ControlStartTest, APlainControlIsOneSmallBlockOfMemory)
{
    delete new CControlUI;
    const int before = test::HeapBlocks();
    const auto control = std::make_unique<CControlUI>();
    EXPECT_EQ(test::HeapBlocks() - before, 1);
    EXPECT_LE(sizeof(CControlUI), 1024u);
}

TEST(ControlStartTest, NegativeLengthsAreIgnored)
{
    CControlUI control;
    control.SetFixedWidth(10);
    control.SetFixedHeight(11);
    control.SetMinWidth(1);
    control.SetMaxHeight(20);
    control.SetFixedWidth(-1);
    control.SetFixedHeight(-1);
    control.SetMinWidth(-5);
    control.SetMaxHeight(-5);
    EXPECT_EQ(control.GetFixedWidth(), 10);
    EXPECT_EQ(control.GetFixedHeight(), 11);
    EXPECT_EQ(control.GetMinWidth(), 1);
    EXPECT_EQ(control.GetMaxHeight(), 20);
}

TEST(ControlStartTest, AbsurdValuesStayFarFromOverflow)
{
    CControlUI control;
    control.SetFixedWidth(INT_MAX);
    control.SetMaxHeight(INT_MAX);
    control.SetPadding({INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    control.SetFixedXY({INT_MIN, INT_MAX});
    control.SetBorderSize(INT_MIN);
    control.SetPos({INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    EXPECT_EQ(control.GetFixedWidth(), 1'000'000);
    EXPECT_EQ(control.GetMaxHeight(), 1'000'000);
    EXPECT_EQ(Place(control.GetPadding()), Place(-1'000'000, -1'000'000, 1'000'000, 1'000'000));
    EXPECT_EQ(control.GetFixedXY().cx, -1'000'000);
    EXPECT_EQ(control.GetFixedXY().cy, 1'000'000);
    EXPECT_EQ(control.GetBorderSize(), -1'000'000);
    EXPECT_GT(control.GetWidth(), 0);
    EXPECT_GT(control.GetHeight(), 0);
}

TEST(ControlStartTest, ALineFeedIsWrittenInBraces)
{
    CControlUI control;
    control.SetText(L"one{\\n}two{\\n}three");
    EXPECT_STREQ(control.GetText(), L"one\ntwo\nthree");
    control.SetText(nullptr);
    EXPECT_STREQ(control.GetText(), L"");
}

TEST(ControlStartTest, ALineBreakInATipIsWrittenInAngleBrackets)
{
    CControlUI control;
    control.SetToolTip(L"one<n>two");
    EXPECT_STREQ(control.GetToolTip(), L"one\r\ntwo");
}

TEST(ControlStartTest, AResourceTextIsTranslated)
{
    auto* const resources = CResourceManager::GetInstance();
    resources->LoadLanguage(L"<Language><Text id=\"greeting\" value=\"hello\"/></Language>");
    CControlUI control;
    control.SetText(L"greeting");
    EXPECT_STREQ(control.GetText(), L"greeting");
    control.SetResourceText(true);
    EXPECT_STREQ(control.GetText(), L"hello");
    resources->ResetTextMap();
}

TEST(ControlStartTest, IsActiveWhileVisibleAndEnabled)
{
    CControlUI control;
    EXPECT_TRUE(control.Activate());
    control.SetEnabled(false);
    EXPECT_FALSE(control.Activate());
    control.SetEnabled(true);
    control.SetVisible(false);
    EXPECT_FALSE(control.Activate());
}

TEST(ControlStartTest, ReversedEdgesAreClamped)
{
    CControlUI control;
    control.SetPos({10, 20, 5, 6});
    EXPECT_EQ(Place(control.GetPos()), Place(10, 20, 10, 20));
}

TEST(ControlStartTest, WithoutAWindowNothingIsScaledTimedOrDrawn)
{
    CControlUI control;
    EventSink resized{[](void*) { return true; }};
    control.OnSize += resized.Delegate();
    control.SetPos({0, 0, 10, 10});
    control.Invalidate();
    control.NeedUpdate();
    control.NeedParentUpdate();
    control.SetFocus();
    control.KillTimer(1);
    EXPECT_FALSE(control.SetTimer(1, 10));
    EXPECT_EQ(resized.Calls(), 0);
    EXPECT_TRUE(control.IsUpdateNeeded());
    EXPECT_EQ(Place(control.GetRelativePos()), kNothing);
}

TEST(ControlStartTest, TheVirtualWindowIsThatOfTheNearestParentWithOne)
{
    CContainerUI root;
    auto* const middle = new CContainerUI;
    auto* const leaf = new CControlUI;
    root.Add(middle);
    middle->Add(leaf);
    EXPECT_STREQ(leaf->GetVirtualWnd(), L"");
    root.SetVirtualWnd(L"page");
    EXPECT_STREQ(leaf->GetVirtualWnd(), L"page");
    middle->SetVirtualWnd(L"part");
    EXPECT_STREQ(leaf->GetVirtualWnd(), L"part");
    leaf->SetVirtualWnd(L"own");
    EXPECT_STREQ(leaf->GetVirtualWnd(), L"own");
    EXPECT_STREQ(root.GetVirtualWnd(), L"page");
}

TEST(ControlStartTest, ASearchTestsTheFlagsThenAsksTheProcedure)
{
    const auto accept = [](CControlUI* control, LPVOID) -> CControlUI* { return control; };
    CControlUI control;
    control.SetPos({10, 10, 20, 20});
    POINT inside{15, 15};
    POINT outside{20, 15};
    EXPECT_EQ(control.FindControl(accept, &outside, UIFIND_ALL), &control);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_HITTEST), &control);
    EXPECT_EQ(control.FindControl(accept, &outside, UIFIND_HITTEST), nullptr);
    control.SetMouseEnabled(false);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_HITTEST), nullptr);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_VISIBLE | UIFIND_ENABLED), &control);
    control.SetEnabled(false);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_VISIBLE), &control);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_ENABLED), nullptr);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_UPDATETEST), nullptr);
    control.NeedUpdate();
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_UPDATETEST), &control);
    control.SetVisible(false);
    EXPECT_EQ(control.FindControl(accept, &inside, UIFIND_VISIBLE), nullptr);
}

class ScaledControlTest : public testing::TestWithParam<int> {};

TEST_P(ScaledControlTest, SizesAreSetInDesignPixelsAndReadInDevicePixels)
{
    const int dpi = GetParam();
    ControlHost host{300, 300, dpi};
    auto& control = host.Add<OpenControl>();
    const auto scaled = [dpi](int design) { return ::MulDiv(design, dpi, 96); };

    control.SetFixedWidth(10);
    control.SetFixedHeight(21);
    control.SetMinWidth(3);
    control.SetMinHeight(4);
    control.SetMaxWidth(50);
    control.SetMaxHeight(60);
    control.SetPadding({2, 4, 6, 8});
    control.SetFixedXY({-10, 30});
    control.SetBorderSize(2);
    control.SetBorderSize({1, 2, 3, 4});
    control.SetBorderRound({6, 8});
    control.SetToolTipWidth(200);

    EXPECT_EQ(control.GetFixedWidth(), scaled(10));
    EXPECT_EQ(control.GetFixedHeight(), scaled(21));
    EXPECT_EQ(control.GetFixedSize().cx, scaled(10));
    EXPECT_EQ(control.GetFixedSize().cy, scaled(21));
    EXPECT_EQ(control.EstimateSize({}).cx, scaled(10));
    EXPECT_EQ(control.EstimateSize({}).cy, scaled(21));
    EXPECT_EQ(control.GetMinWidth(), scaled(3));
    EXPECT_EQ(control.GetMinHeight(), scaled(4));
    EXPECT_EQ(control.GetMaxWidth(), scaled(50));
    EXPECT_EQ(control.GetMaxHeight(), scaled(60));
    EXPECT_EQ(Place(control.GetPadding()), Place(scaled(2), scaled(4), scaled(6), scaled(8)));
    EXPECT_EQ(control.GetFixedXY().cx, scaled(-10));
    EXPECT_EQ(control.GetFixedXY().cy, scaled(30));
    EXPECT_EQ(control.GetBorderSize(), scaled(2));
    EXPECT_EQ(Place(control.GetBorderRectSize()),
              Place(scaled(1), scaled(2), scaled(3), scaled(4)));
    EXPECT_EQ(control.GetBorderRound().cx, scaled(6));
    EXPECT_EQ(control.GetBorderRound().cy, scaled(8));
    EXPECT_EQ(control.GetToolTipWidth(), scaled(200));
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaledControlTest, testing::Values(96, 144, 192));

TEST_F(ControlTest, PositionsAreAlsoKnownRelativeToTheParent)
{
    outer.SetPos({20, 10, 100, 60});
    auto& control = AddAt({25, 30, 45, 50});
    EXPECT_EQ(control.GetX(), 25);
    EXPECT_EQ(control.GetY(), 30);
    EXPECT_EQ(control.GetWidth(), 20);
    EXPECT_EQ(control.GetHeight(), 20);
    EXPECT_EQ(Place(control.GetClientPos()), Place(25, 30, 45, 50));
    EXPECT_EQ(Place(control.GetRelativePos()),
              Place(25 - outer.GetX(), 30 - outer.GetY(), 45 - outer.GetX(), 50 - outer.GetY()));
}

TEST_F(ControlTest, EachNewPositionIsAnnouncedOnceAlsoWhenTheHandlerMovesTheControl)
{
    auto& control = AddAt({0, 0, 10, 10});
    EventSink resized{[](void* argument) {
        static_cast<CControlUI*>(argument)->SetPos({1, 1, 5, 5});
        return true;
    }};
    control.OnSize += resized.Delegate();
    control.SetPos({0, 0, 20, 20});
    EXPECT_EQ(resized.Calls(), 1);
    EXPECT_EQ(Place(control.GetPos()), Place(1, 1, 5, 5));
    control.SetPos({0, 0, 20, 20});
    EXPECT_EQ(resized.Calls(), 2);
}

TEST_F(ControlTest, MovingInvalidatesTheOldAndTheNewPlace)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetPos({30, 15, 40, 25});
    EXPECT_EQ(UpdateRect(host), Place(10, 10, 40, 25));
    Validate(host);
    control.SetPos({50, 15, 60, 25}, false);
    EXPECT_EQ(UpdateRect(host), kNothing);
}

TEST_F(ControlTest, WhatIsInvalidatedIsCutByEveryParent)
{
    auto& control = AddAt({10, 10, 90, 50});
    outer.CControlUI::SetPos({20, 0, 60, 30}, false);
    control.Invalidate();
    EXPECT_EQ(UpdateRect(host), Place(20, 10, 60, 30));
    ::ValidateRect(host.Window(), nullptr);
    control.SetPos({0, 20, 100, 60});
    EXPECT_EQ(UpdateRect(host), Place(20, 10, 60, 30));
    ::ValidateRect(host.Window(), nullptr);
    control.SetPos({70, 40, 100, 60}, false);
    control.Invalidate();
    EXPECT_EQ(UpdateRect(host), kNothing);
}

TEST_F(ControlTest, NothingIsInvalidatedBelowAHiddenParent)
{
    auto& control = AddAt({10, 10, 20, 20});
    outer.SetVisible(false);
    Validate(host);
    control.SetPos({30, 15, 40, 25});
    control.Invalidate();
    control.SetBkColor(0xFF010203);
    EXPECT_EQ(UpdateRect(host), kNothing);
    EXPECT_FALSE(control.IsVisible());
}

TEST_F(ControlTest, ASetterThatChangesNothingInvalidatesNothing)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetText(L"text");
    control.SetBkColor(0xFF010203);
    control.SetBkImage(L"a.png");
    control.SetBorderSize(2);
    control.SetEnabled(false);
    EXPECT_EQ(UpdateRect(host), Place(10, 10, 20, 20));
    Validate(host);
    control.SetText(L"text");
    control.SetBkColor(0xFF010203);
    control.SetBkImage(L"a.png");
    control.SetBorderSize(2);
    control.SetEnabled(false);
    control.SetFixedWidth(0);
    control.SetVisible(true);
    EXPECT_EQ(UpdateRect(host), kNothing);
    EXPECT_FALSE(host.Manager().IsUpdateNeeded());
}

TEST_F(ControlTest, ANeededUpdateFlagsTheControlAndTheWindow)
{
    auto& control = AddAt({10, 10, 20, 20});
    EXPECT_FALSE(control.IsUpdateNeeded());
    control.NeedUpdate();
    EXPECT_TRUE(control.IsUpdateNeeded());
    EXPECT_TRUE(host.Manager().IsUpdateNeeded());
    EXPECT_FALSE(outer.IsUpdateNeeded());
    EXPECT_EQ(UpdateRect(host), Place(10, 10, 20, 20));
    host.Layout();
    EXPECT_FALSE(control.IsUpdateNeeded());
    EXPECT_FALSE(host.Manager().IsUpdateNeeded());
}

TEST_F(ControlTest, AHiddenControlNeedsNoUpdate)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetVisible(false);
    Validate(host);
    control.NeedUpdate();
    EXPECT_FALSE(control.IsUpdateNeeded());
    EXPECT_FALSE(host.Manager().IsUpdateNeeded());
}

TEST_F(ControlTest, ASizeChangesTheLayoutOfTheParent)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetFixedWidth(5);
    EXPECT_TRUE(outer.IsUpdateNeeded());
    EXPECT_FALSE(control.IsUpdateNeeded());
    EXPECT_TRUE(host.Manager().IsUpdateNeeded());
}

TEST_F(ControlTest, AnUpdateOfALeafDoesNotLayItsParentOut)
{
    auto& control = AddAt({10, 10, 20, 20});
    EventSink parentResized{[](void*) { return true; }};
    EventSink resized{[](void*) { return true; }};
    outer.OnSize += parentResized.Delegate();
    control.OnSize += resized.Delegate();
    control.NeedUpdate();
    host.Layout();
    EXPECT_EQ(resized.Calls(), 1);
    EXPECT_EQ(parentResized.Calls(), 0);
    EXPECT_EQ(Place(control.GetPos()), Place(10, 10, 20, 20));
}

TEST_F(ControlTest, AHiddenControlLosesTheFocusAndItsPlaceInTheLayout)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetFocus();
    ASSERT_TRUE(control.IsFocused());
    Validate(host);
    control.SetVisible(false);
    EXPECT_FALSE(control.IsFocused());
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
    EXPECT_TRUE(outer.IsUpdateNeeded());
}

TEST_F(ControlTest, IsVisibleWhenTheApplicationAndTheContainerWantIt)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetInternVisible(false);
    EXPECT_FALSE(control.IsVisible());
    control.SetVisible(false);
    control.SetInternVisible(true);
    EXPECT_FALSE(control.IsVisible());
    control.SetVisible(true);
    EXPECT_TRUE(control.IsVisible());
}

TEST_F(ControlTest, ShowingWithinAHiddenContainerLaysNothingOut)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetVisible(false);
    outer.SetVisible(false);
    Validate(host);
    control.SetVisible(true);
    EXPECT_FALSE(control.IsVisible());
    EXPECT_FALSE(host.Manager().IsUpdateNeeded());
}

TEST_F(ControlTest, MovingAFloatingControlMovesItsPresetPosition)
{
    auto& control = AddAt({0, 0, 10, 10});
    control.SetFloat(true);
    control.SetFixedWidth(10);
    control.SetFixedHeight(10);
    control.SetFixedXY({5, 6});
    control.Move({7, -2});
    host.Layout();
    EXPECT_EQ(Place(control.GetPos()), Place(12, 4, 22, 14));
}

TEST_F(ControlTest, ColoursAreAdjustedOnlyOnRequest)
{
    auto& control = AddAt({0, 0, 10, 10});
    CPaintManagerUI::SetHSL(true, 180, 100, 50);
    const DWORD colour = 0xFF804020;
    const DWORD darker = CRenderEngine::AdjustColor(colour, 180, 100, 50);
    ASSERT_NE(darker, colour);
    EXPECT_EQ(control.GetAdjustColor(colour), colour);
    control.SetColorHSL(true);
    EXPECT_EQ(control.GetAdjustColor(colour), darker);
    CPaintManagerUI::SetHSL(false, 180, 100, 50);
    EXPECT_EQ(control.GetAdjustColor(colour), colour);
    CPaintManagerUI::SetHSL(false, 180, 100, 100);
}

TEST_F(ControlTest, ADeadControlIsForgottenByItsWindow)
{
    auto& control = AddAt({10, 10, 20, 20});
    control.SetTimer(3, 100);
    control.SetFocus();
    ASSERT_EQ(host.Timers().size(), 1u);
    outer.SetDelayedDestroy(false);
    outer.Remove(&control);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
}

TEST_F(ControlTest, AControlThatLostItsManagerStillTakesItsTimersAlong)
{
    auto control = std::make_unique<CControlUI>();
    control->SetManager(&host.Manager(), nullptr, false);
    ASSERT_TRUE(control->SetTimer(1, 100));
    control->SetManager(nullptr, nullptr, false);
    control.reset();
    EXPECT_TRUE(host.Timers().empty());
    host.AdvanceFrames(1);
}

TEST_F(ControlTest, ATimerRunsOncePerNumber)
{
    auto& control = AddAt({10, 10, 20, 20});
    EXPECT_TRUE(control.SetTimer(3, 100));
    EXPECT_FALSE(control.SetTimer(3, 50));
    EXPECT_TRUE(control.SetTimer(4, 50));
    EXPECT_EQ(host.Timers().size(), 2u);
    control.KillTimer(3);
    EXPECT_TRUE(control.SetTimer(3, 50));
}
