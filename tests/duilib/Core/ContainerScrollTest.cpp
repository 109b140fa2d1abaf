#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::Place;
using test::Places;

namespace {

// Counts its layouts.
class CountingLayout : public CVerticalLayoutUI {
public:
    int layouts = 0;

    void SetPos(RECT rect, bool invalidate = true) override
    {
        ++layouts;
        CVerticalLayoutUI::SetPos(rect, invalidate);
    }
};

// Is higher the wider it may be, so that a scroll bar makes itself unnecessary.
class Stubborn : public CControlUI {
public:
    SIZE EstimateSize(SIZE available) override { return {0, available.cx >= 100 ? 200 : 10}; }
};

class ContainerScrollTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CountingLayout& layout = host.Add<CountingLayout>();

    void Fill(int count, int height)
    {
        for (int i = 0; i < count; ++i) {
            auto* const child = new CControlUI;
            child->SetFixedHeight(height);
            layout.Add(child);
        }
        host.Layout();
        host.ClearSent();
    }

    CScrollBarUI& Bar() { return *layout.GetVerticalScrollBar(); }
};

} // namespace

TEST_F(ContainerScrollTest, ABarIsMadeHiddenOwnedAndWithTheDefaultsOfTheWindow)
{
    host.Manager().AddDefaultAttributeList(L"VScrollBar", L"width=\"10\" showbutton1=\"false\"");
    host.Manager().AddDefaultAttributeList(L"HScrollBar", L"height=\"7\"");
    layout.EnableScrollBar(true, true);
    EXPECT_EQ(Bar().GetOwner(), &layout);
    EXPECT_EQ(Bar().GetManager(), &host.Manager());
    EXPECT_FALSE(Bar().IsVisible());
    EXPECT_FALSE(Bar().IsHorizontal());
    EXPECT_EQ(Bar().GetFixedWidth(), 10);
    EXPECT_FALSE(Bar().GetShowButton1());
    EXPECT_TRUE(layout.GetHorizontalScrollBar()->IsHorizontal());
    EXPECT_EQ(layout.GetHorizontalScrollBar()->GetFixedHeight(), 7);
    auto* const same = &Bar();
    layout.EnableScrollBar(true, false);
    EXPECT_EQ(&Bar(), same);
    EXPECT_EQ(layout.GetHorizontalScrollBar(), nullptr);
}

TEST_F(ContainerScrollTest, AStyleOfABarIsANameOrAList)
{
    host.Manager().AddStyle(L"thin", L"width=\"5\"");
    layout.SetAttribute(L"vscrollbarstyle", L"thin");
    EXPECT_EQ(Bar().GetFixedWidth(), 5);
    layout.SetAttribute(L"vscrollbarstyle", L"width=\"6\"");
    EXPECT_EQ(Bar().GetFixedWidth(), 6);
}

TEST_F(ContainerScrollTest, ABarAppearsWhenTheChildrenNeedItAndGoesAgain)
{
    layout.EnableScrollBar(true, false);
    Fill(3, 20);
    EXPECT_FALSE(Bar().IsVisible());
    EXPECT_EQ(Places(layout), L"0,0,100,20 0,20,100,40 0,40,100,60");
    Fill(2, 20);
    EXPECT_TRUE(Bar().IsVisible());
    EXPECT_EQ(Bar().GetScrollRange(), 40);
    EXPECT_EQ(Place(Bar().GetPos()), Place(84, 0, 100, 60));
    EXPECT_EQ(Place(layout.GetItemAt(4)->GetPos()), Place(0, 80, 84, 100));
    layout.SetScrollPos({0, 40});
    layout.RemoveAt(0);
    host.Layout();
    EXPECT_EQ(Bar().GetScrollRange(), 20);
    EXPECT_EQ(Bar().GetScrollPos(), 20);
    EXPECT_EQ(Place(layout.GetItemAt(3)->GetPos()), Place(0, 40, 84, 60));
    layout.RemoveAt(0);
    host.Layout();
    EXPECT_FALSE(Bar().IsVisible());
    EXPECT_EQ(Bar().GetScrollPos(), 0);
    EXPECT_EQ(Bar().GetScrollRange(), 0);
    EXPECT_EQ(Places(layout), L"0,0,100,20 0,20,100,40 0,40,100,60");
}

TEST_F(ContainerScrollTest, AnAdjustableChildDoesNotKeepABarAlive)
{
    layout.EnableScrollBar(true, false);
    Fill(1, 100);
    layout.Add(new CControlUI);
    host.Layout();
    EXPECT_EQ(Bar().GetScrollRange(), 40);
    layout.GetItemAt(0)->SetFixedHeight(20);
    host.Layout();
    EXPECT_FALSE(Bar().IsVisible());
    EXPECT_EQ(Places(layout), L"0,0,100,20 0,20,100,60");
}

TEST_F(ContainerScrollTest, ALayoutTakesAtMostTwoMorePassesForItsBars)
{
    layout.EnableScrollBar(true, true);
    Fill(1, 100);
    layout.layouts = 0;
    layout.Add(new CControlUI);
    layout.GetItemAt(1)->SetFixedHeight(30);
    layout.GetItemAt(1)->SetMinWidth(300);
    host.Layout();
    EXPECT_LE(layout.layouts, 3);
    EXPECT_TRUE(layout.GetHorizontalScrollBar()->IsVisible());
}

TEST_F(ContainerScrollTest, ABarThatMakesItselfUnnecessaryStaysAndDoesNotFlicker)
{
    layout.EnableScrollBar(true, false);
    layout.Add(new Stubborn);
    layout.layouts = 0;
    host.Layout();
    EXPECT_LE(layout.layouts, 3);
    EXPECT_TRUE(Bar().IsVisible());
}

TEST_F(ContainerScrollTest, BothBarsShareTheCorner)
{
    layout.EnableScrollBar(true, true);
    Fill(1, 100);
    layout.GetItemAt(0)->SetMinWidth(150);
    host.Layout();
    EXPECT_EQ(Place(Bar().GetPos()), Place(84, 0, 100, 44));
    EXPECT_EQ(Place(layout.GetHorizontalScrollBar()->GetPos()), Place(0, 44, 84, 60));
    EXPECT_EQ(Bar().GetScrollRange(), 56);
    EXPECT_EQ(layout.GetHorizontalScrollBar()->GetScrollRange(), 66);
}

TEST_F(ContainerScrollTest, AFixedBarIsThereBeforeItIsNeeded)
{
    layout.EnableScrollBar(true, false);
    layout.SetFixedScrollbar(true);
    Fill(1, 10);
    EXPECT_TRUE(Bar().IsVisible());
    EXPECT_EQ(Bar().GetScrollRange(), 0);
    EXPECT_EQ(Places(layout), L"0,0,84,10");
    layout.SetFixedScrollbar(false);
    host.Layout();
    EXPECT_FALSE(Bar().IsVisible());
}

TEST_F(ContainerScrollTest, AnUnshownBarStillScrolls)
{
    layout.EnableScrollBar(true, false);
    layout.SetShowScrollbar(false);
    Fill(5, 20);
    EXPECT_TRUE(Bar().IsVisible());
    EXPECT_FALSE(Bar().GetShow());
    layout.SetScrollPos({0, 10});
    EXPECT_EQ(layout.GetScrollPos().cy, 10);
    layout.SetShowScrollbar(true);
    EXPECT_TRUE(Bar().GetShow());
}

TEST_F(ContainerScrollTest, ScrollingMovesTheChildrenThatDoNotFloatAndTellsTheWindow)
{
    layout.EnableScrollBar(true, false);
    Fill(5, 20);
    auto* const floating = new CControlUI;
    floating->SetFloat(true);
    floating->SetFixedWidth(10);
    floating->SetFixedHeight(10);
    layout.Add(floating);
    host.Layout();
    host.ClearSent();
    layout.SetScrollPos({0, 17});
    EXPECT_EQ(layout.GetScrollPos().cy, 17);
    EXPECT_EQ(layout.GetItemAt(0)->GetY(), -17);
    EXPECT_EQ(layout.GetItemAt(4)->GetY(), 63);
    EXPECT_EQ(Place(floating->GetPos()), Place(0, 0, 10, 10));
    const auto sent = host.Sent(L"scroll");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, &layout);
    EXPECT_EQ(sent[0].wParam, static_cast<WPARAM>((17 + 8) / 8));
}

TEST_F(ContainerScrollTest, NothingIsSentWhenNothingMovedOrWhenNotWanted)
{
    layout.EnableScrollBar(true, false);
    Fill(5, 20);
    layout.SetScrollPos({0, 0});
    layout.SetScrollPos({50, 0});
    layout.SetScrollPos({0, 10}, false);
    EXPECT_EQ(layout.GetScrollPos().cy, 10);
    EXPECT_TRUE(host.Sent(L"scroll").empty());
}

TEST_F(ContainerScrollTest, APositionIsClampedToTheRange)
{
    layout.EnableScrollBar(true, false);
    Fill(5, 20);
    layout.SetScrollPos({0, 1000});
    EXPECT_EQ(layout.GetScrollPos().cy, 40);
    layout.SetScrollPos({0, -1000});
    EXPECT_EQ(layout.GetScrollPos().cy, 0);
    EXPECT_EQ(layout.GetItemAt(0)->GetY(), 0);
}

TEST_F(ContainerScrollTest, WithoutBarsNothingScrolls)
{
    Fill(5, 20);
    layout.SetScrollPos({0, 10});
    layout.LineDown();
    layout.PageDown();
    layout.EndDown();
    layout.LineRight();
    EXPECT_EQ(layout.GetScrollPos().cy, 0);
    EXPECT_EQ(layout.GetItemAt(0)->GetY(), 0);
    EXPECT_TRUE(host.Sent(L"scroll").empty());
}

TEST_F(ContainerScrollTest, LinesAndPagesHaveTheirSizes)
{
    layout.EnableScrollBar(true, true);
    Fill(20, 20);
    layout.GetItemAt(0)->SetMinWidth(500);
    host.Layout();
    const int line = host.Manager().GetDefaultFontInfo()->tm.tmHeight + 8;
    const int range = layout.GetScrollRange().cy;
    layout.LineDown();
    EXPECT_EQ(layout.GetScrollPos().cy, line);
    layout.PageDown();
    EXPECT_EQ(layout.GetScrollPos().cy, line + 44);
    layout.EndDown();
    EXPECT_EQ(layout.GetScrollPos().cy, range);
    layout.PageUp();
    layout.LineUp();
    EXPECT_EQ(layout.GetScrollPos().cy, range - 44 - line);
    layout.HomeUp();
    EXPECT_EQ(layout.GetScrollPos().cy, 0);
    layout.LineRight();
    EXPECT_EQ(layout.GetScrollPos().cx, 8);
    layout.PageRight();
    EXPECT_EQ(layout.GetScrollPos().cx, 8 + 84);
    layout.EndRight();
    EXPECT_EQ(layout.GetScrollPos().cx, 500 - 84);
    layout.PageLeft();
    layout.LineLeft();
    EXPECT_EQ(layout.GetScrollPos().cx, 500 - 84 - 84 - 8);
    layout.HomeLeft();
    EXPECT_EQ(layout.GetScrollPos().cx, 0);
    layout.SetScrollStepSize(5);
    layout.SetScrollStepSize(0);
    layout.LineDown();
    layout.LineRight();
    EXPECT_EQ(layout.GetScrollPos().cy, 5);
    EXPECT_EQ(layout.GetScrollPos().cx, 5);
}

TEST(ContainerScrollScaleTest, BarsAndStepsGrowWithTheScale)
{
    ControlHost host{150, 90, 144};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, false);
    layout.SetScrollStepSize(10);
    auto* const child = new CControlUI;
    child->SetFixedHeight(100);
    layout.Add(child);
    host.Layout();
    EXPECT_EQ(layout.GetVerticalScrollBar()->GetWidth(), 24);
    EXPECT_EQ(layout.GetScrollRange().cy, 60);
    layout.LineDown();
    EXPECT_EQ(layout.GetScrollPos().cy, 15);
}

TEST_F(ContainerScrollTest, TheWheelScrollsByLines)
{
    layout.EnableScrollBar(true, false);
    layout.SetScrollStepSize(10);
    Fill(5, 20);
    host.Wheel(10, 10, -120);
    EXPECT_EQ(layout.GetScrollPos().cy, 10);
    host.Wheel(10, 10, 120);
    EXPECT_EQ(layout.GetScrollPos().cy, 0);
}

TEST_F(ContainerScrollTest, KeysScrollTheFocusedContainer)
{
    layout.EnableScrollBar(true, false);
    layout.SetScrollStepSize(10);
    Fill(5, 20);
    layout.SetFocus();
    const struct {
        int key;
        int position;
    } rows[] = {{VK_DOWN, 10}, {VK_UP, 0},   {VK_NEXT, 40},
                {VK_PRIOR, 0}, {VK_END, 40}, {VK_HOME, 0}};
    for (const auto& row : rows) {
        host.Key(row.key);
        EXPECT_EQ(layout.GetScrollPos().cy, row.position) << row.key;
    }
    layout.SetKeyboardEnabled(false);
    host.Key(VK_DOWN);
    EXPECT_EQ(layout.GetScrollPos().cy, 0);
}

TEST_F(ContainerScrollTest, AReplacedBarBelongsToTheContainer)
{
    class OwnBar : public CScrollBarUI {
    public:
        explicit OwnBar(int& alive) : m_alive(alive) { ++m_alive; }
        ~OwnBar() override { --m_alive; }

    private:
        int& m_alive;
    };
    class OwnBarContainer : public CVerticalLayoutUI {
    public:
        explicit OwnBarContainer(int& alive)
        {
            m_pVerticalScrollBar = new OwnBar(alive);
            m_pVerticalScrollBar->SetOwner(this);
        }
    };
    int alive = 0;
    {
        ControlHost other{50, 50};
        auto& container = other.Add<OwnBarContainer>(alive);
        other.Layout();
        EXPECT_FALSE(container.GetVerticalScrollBar()->IsVisible());
        EXPECT_EQ(container.GetVerticalScrollBar()->GetManager(), &other.Manager());
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST_F(ContainerScrollTest, ABarMayBeTakenAwayByItsOwnHandler)
{
    layout.EnableScrollBar(true, false);
    Fill(5, 20);
    test::EventSink remover{[this](void* argument) {
        if (static_cast<TNotifyUI*>(argument)->sType == DUI_MSGTYPE_SCROLL)
            layout.EnableScrollBar(false, false);
        return true;
    }};
    Bar().OnNotify += remover.Delegate();
    host.Click(90, 55);
    EXPECT_EQ(layout.GetVerticalScrollBar(), nullptr);
    host.Pump();
    host.Paint();
    EXPECT_TRUE(host.Timers().empty());
}
