#include "duilib/Control/ListKit.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

using namespace DuiLib;
using test::AddRows;
using test::ControlHost;

namespace {

// A row that counts what the list does to it.
struct Counts {
    int placed = 0;
    int measured = 0;
    int painted = 0;
};

class CountingRow : public CListLabelElementUI {
public:
    Counts counts;

    void SetPos(RECT rect, bool invalidate) override
    {
        ++counts.placed;
        CListLabelElementUI::SetPos(rect, invalidate);
    }
    SIZE EstimateSize(SIZE available) override
    {
        ++counts.measured;
        return CListLabelElementUI::EstimateSize(available);
    }
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override
    {
        ++counts.painted;
        return CListLabelElementUI::DoPaint(dc, paint, stop);
    }
};

// 100 x 100 pixels: five rows of 20 are in sight.
class ListBodyTest : public testing::Test {
protected:
    ControlHost host{100, 100};
    CListUI& list = host.Add<CListUI>();

    void SetUp() override
    {
        list.SetAttribute(L"header", L"hidden");
        list.EnableScrollBar(true, false);
        list.SetDelayedDestroy(false);
    }

    LONG Top(int row) const { return list.GetItemAt(row)->GetPos().top; }

    static Counts Sum(const std::vector<CountingRow*>& rows)
    {
        Counts sum;
        for (CountingRow* const row : rows) {
            sum.placed += row->counts.placed;
            sum.measured += row->counts.measured;
            sum.painted += row->counts.painted;
            row->counts = {};
        }
        return sum;
    }
};

TEST_F(ListBodyTest, OnlyRowsInSightArePlacedAndPainted)
{
    const auto rows = AddRows<CountingRow>(list, 1000);
    host.Paint();
    const Counts first = Sum(rows);
    EXPECT_EQ(first.measured, 2000) << "again beside the scroll bar";
    EXPECT_LT(first.placed, 30);
    EXPECT_LT(first.painted, 30);

    list.SetScrollPos({0, 10'000});
    host.Paint();
    const Counts scrolled = Sum(rows);
    EXPECT_EQ(scrolled.measured, 0);
    EXPECT_GE(scrolled.placed, 10) << "those in sight, and those that were";
    EXPECT_LT(scrolled.placed, 30);
    EXPECT_GE(scrolled.painted, 5);
    EXPECT_LT(scrolled.painted, 30);
}

TEST_F(ListBodyTest, AnyRowKnowsItsPlaceWhenItIsAsked)
{
    const auto rows = AddRows<CountingRow>(list, 1000);
    host.Layout();
    EXPECT_EQ(Top(900), 18'000);
    EXPECT_EQ(rows[901]->GetY(), 18'020);
    EXPECT_EQ(rows[902]->GetHeight(), 20);
    EXPECT_EQ(rows[903]->GetRelativePos().top, 18'060);
    EXPECT_EQ(rows[904]->GetClientPos().bottom, 18'100);
    list.SetScrollPos({0, 18'000});
    EXPECT_EQ(Top(0), -18'000);
    EXPECT_EQ(Top(900), 0);
    Sum(rows);
    EXPECT_EQ(Top(0), -18'000);
    EXPECT_EQ(Sum(rows).placed, 0) << "until the next scrolling";
}

TEST_F(ListBodyTest, RowsThatLeaveTheSightAreMovedAway)
{
    const auto rows = AddRows<CListContainerElementUI>(list, 100);
    auto* const inner = new CControlUI; // as a native window would be, it is where it was put
    rows[1]->Add(inner);
    host.Layout();
    EXPECT_EQ(inner->GetPos().top, 20);
    list.SetScrollPos({0, 1000});
    EXPECT_EQ(inner->GetPos().top, 20 - 1000);
}

TEST_F(ListBodyTest, AnUnchangedListMeasuresNothing)
{
    const auto rows = AddRows<CountingRow>(list, 100);
    host.Layout();
    Sum(rows);
    list.NeedUpdate();
    host.Layout();
    EXPECT_EQ(Sum(rows).measured, 0);

    rows[50]->SetFixedHeight(35);
    rows[60]->SetVisible(false);
    host.Layout();
    EXPECT_LE(Sum(rows).measured, 2);
    EXPECT_EQ(Top(99), 99 * 20 + 15 - 20);

    host.Resize(90, 100);
    host.Layout();
    EXPECT_GE(Sum(rows).measured, 99);
}

TEST_F(ListBodyTest, WhatARowHoldsMayChangeItsHeight)
{
    class HighAsItsChild : public CListContainerElementUI {
    public:
        SIZE EstimateSize(SIZE available) override
        {
            return {0, GetItemAt(0)->EstimateSize(available).cy};
        }
    };
    auto* const row = new HighAsItsChild;
    auto* const inner = new CControlUI;
    inner->SetFixedHeight(30);
    row->Add(inner);
    list.Add(row);
    AddRows(list, 1);
    host.Layout();
    EXPECT_EQ(Top(1), 30);
    inner->SetFixedHeight(45);
    row->NeedParentUpdate();
    host.Layout();
    EXPECT_EQ(Top(1), 45);
}

TEST_F(ListBodyTest, RowsWithoutAHeightShareWhatIsLeft)
{
    AddRows(list, 2);
    AddRows<CListContainerElementUI>(list, 2, 0);
    list.GetItemAt(3)->SetMaxHeight(25);
    host.Layout();
    EXPECT_EQ(list.GetItemAt(2)->GetHeight(), 30);
    EXPECT_EQ(Top(3), 70);
    EXPECT_EQ(list.GetItemAt(3)->GetHeight(), 25);
    EXPECT_FALSE(list.GetVerticalScrollBar()->IsVisible());
}

TEST_F(ListBodyTest, ARowIsWhereACallerPutsIt)
{
    const auto rows = AddRows<CListContainerElementUI>(list, 100);
    rows[1]->SetFixedWidth(40);
    host.Layout();
    const RECT before = rows[1]->GetPos();
    rows[1]->SetPos(rows[1]->GetPos(), true);
    EXPECT_TRUE(::EqualRect(&before, &rows[1]->GetPos()));

    // In sight and out of it, with a scale and columns or without.
    const RECT shifted{5, 47, 60, 59};
    for (const int index : {1, 80}) {
        rows[static_cast<std::size_t>(index)]->SetPos(shifted, true);
        EXPECT_TRUE(::EqualRect(&shifted, &rows[static_cast<std::size_t>(index)]->GetPos()));
    }
    EXPECT_EQ(Top(79), 79 * 20);
    EXPECT_EQ(Top(81), 81 * 20);
}

TEST_F(ListBodyTest, AMovedRowIsPaintedAndHitWhereItIs)
{
    const auto rows = AddRows<CListContainerElementUI>(list, 100);
    rows[90]->SetBkColor(0xFFFF0000);
    host.Layout();
    rows[90]->SetPos({0, 50, 80, 60}, true);
    EXPECT_EQ(host.Manager().FindControl(POINT{10, 55}), rows[90]);
    EXPECT_EQ(host.Paint().At(10, 55), test::Argb{0xFFFF0000});
}

TEST_F(ListBodyTest, AMovedRowGoesBackWithTheNextScrolling)
{
    const auto rows = AddRows<CListContainerElementUI>(list, 100);
    host.Layout();
    rows[90]->SetPos({0, 50, 80, 60}, true);
    rows[1]->SetPos({0, 50, 80, 60}, true);
    list.SetScrollPos({0, 10});
    EXPECT_EQ(Top(90), 1790);
    EXPECT_EQ(Top(1), 10);
}

TEST_F(ListBodyTest, ScrollingTellsWithTheListAsSender)
{
    AddRows(list, 100);
    host.Layout();
    host.ClearSent();
    list.GetVerticalScrollBar()->SetLineSize(10);
    list.SetScrollPos({0, 55});
    const auto sent = host.Sent(L"scroll");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, &list);
    EXPECT_EQ(sent[0].wParam, 6u) << "(55 + 10) / 10";

    list.SetScrollPos({0, 55});
    list.SetScrollPos({0, 80}, false);
    EXPECT_EQ(host.Sent(L"scroll").size(), 1u) << "nothing moved, or nobody is told";
}

TEST_F(ListBodyTest, TheWheelScrollsByTheListsStep)
{
    AddRows(list, 100);
    list.SetScrollStepSize(30);
    host.Layout();
    EXPECT_EQ(list.GetList()->GetScrollStepSize(), 30);
    host.Wheel(10, 10, -120);
    EXPECT_EQ(list.GetScrollPos().cy, 30);
    host.Wheel(10, 10, -120);
    host.Wheel(10, 10, 120);
    EXPECT_EQ(list.GetScrollPos().cy, 30);
    EXPECT_EQ(host.Sent(L"scroll").size(), 3u);
}

TEST_F(ListBodyTest, ScrollOperationsAreThoseOfTheRows)
{
    AddRows(list, 100);
    list.SetScrollStepSize(10);
    host.Layout();
    EXPECT_EQ(list.GetScrollRange().cy, 1900);
    list.LineDown();
    EXPECT_EQ(list.GetScrollPos().cy, 10);
    list.PageDown();
    EXPECT_EQ(list.GetScrollPos().cy, 110);
    list.LineUp();
    list.PageUp();
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    list.EndDown();
    EXPECT_EQ(list.GetScrollPos().cy, 1900);
    list.HomeUp();
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    list.Scroll(0, 35);
    EXPECT_EQ(list.GetScrollPos().cy, 35);
    list.Scroll(0, -100);
    EXPECT_EQ(list.GetScrollPos().cy, 0);
}

TEST_F(ListBodyTest, ColumnsFollowTheHorizontalPosition)
{
    list.SetAttribute(L"header", L"");
    for (const int width : {90, 80}) {
        auto* const column = new CListHeaderItemUI;
        column->SetFixedWidth(width);
        list.Add(column);
    }
    AddRows<CListTextElementUI>(list, 3);
    list.EnableScrollBar(false, true);
    host.Layout();
    ASSERT_EQ(list.GetScrollRange().cx, 70);
    EXPECT_EQ(list.GetItemAt(0)->GetWidth(), 170);
    list.SetScrollPos({30, 0});
    EXPECT_EQ(list.GetHeader()->GetItemAt(1)->GetPos().left, 60);
    EXPECT_EQ(list.GetListInfo()->rcColumn[1].left, 60);
    EXPECT_EQ(list.GetItemAt(0)->GetPos().left, -30);
    list.LineRight();
    EXPECT_EQ(list.GetScrollPos().cx, 38);
    list.EndRight();
    EXPECT_EQ(list.GetScrollPos().cx, 70);
    list.LineLeft();
    EXPECT_EQ(list.GetScrollPos().cx, 62);
    list.HomeLeft();
    list.PageRight();
    EXPECT_EQ(list.GetScrollPos().cx, 70);
    list.PageLeft();
    EXPECT_EQ(list.GetListInfo()->rcColumn[0].left, 0);
}

TEST_F(ListBodyTest, EnsureVisibleScrollsNoFurtherThanNeeded)
{
    AddRows(list, 100);
    host.Layout();
    list.EnsureVisible(4);
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    list.EnsureVisible(5);
    EXPECT_EQ(list.GetScrollPos().cy, 20);
    list.EnsureVisible(3);
    EXPECT_EQ(list.GetScrollPos().cy, 20);
    list.EnsureVisible(0);
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    list.EnsureVisible(99);
    EXPECT_EQ(list.GetScrollPos().cy, 1900);
    list.EnsureVisible(100);
    list.EnsureVisible(-1);
    EXPECT_EQ(list.GetScrollPos().cy, 1900);
}

TEST_F(ListBodyTest, ARowWithoutAPlaceIsShownAfterTheLayout)
{
    AddRows(list, 100);
    list.EnsureVisible(50);
    list.AddAt(new CListLabelElementUI, 0);
    list.GetItemAt(0)->SetFixedHeight(20);
    host.Layout();
    EXPECT_EQ(Top(51), 80);
}

TEST_F(ListBodyTest, ARowThatIsWaitedForMayGo)
{
    AddRows(list, 100);
    list.EnsureVisible(50);
    list.RemoveAt(50);
    host.Layout();
    EXPECT_EQ(list.GetScrollPos().cy, 0);
}

TEST_F(ListBodyTest, ThePositionStaysInAShorterRange)
{
    AddRows(list, 100);
    host.Layout();
    list.EndDown();
    for (int i = 0; i < 50; ++i)
        list.RemoveAt(0);
    host.Layout();
    EXPECT_EQ(list.GetScrollPos().cy, 900);
    EXPECT_EQ(Top(49), 80);
    list.RemoveAll();
    host.Layout();
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    EXPECT_FALSE(list.GetVerticalScrollBar()->IsVisible());
}

TEST_F(ListBodyTest, FloatingChildrenStayWhereTheyAre)
{
    AddRows(list, 100);
    auto* const badge = new CControlUI;
    badge->SetFloat(true);
    badge->SetFixedXY({10, 10});
    badge->SetFixedWidth(20);
    badge->SetFixedHeight(20);
    badge->SetBkColor(0xFF00FF00);
    list.GetList()->Add(badge);
    host.Layout();
    list.SetScrollPos({0, 500});
    EXPECT_EQ(badge->GetPos().top, 10);
    EXPECT_EQ(host.Manager().FindControl(POINT{15, 15}), badge);
    EXPECT_EQ(host.Paint().At(15, 15), test::Argb{0xFF00FF00});
    EXPECT_EQ(Top(25), 0);
}

TEST_F(ListBodyTest, AlternateRowsHaveTheBackground)
{
    AddRows(list, 10);
    list.SetBkColor(0xFFFFFFFF);
    list.SetItemBkColor(0xFF0000FF);
    list.SetAlternateBk(true);
    EXPECT_EQ(host.Paint().At(50, 10), test::Argb{0xFF0000FF});
    EXPECT_EQ(host.Paint().At(50, 30), test::Argb{0xFFFFFFFF});
    list.RemoveAt(0);
    EXPECT_EQ(host.Paint().At(50, 10), test::Argb{0xFF0000FF});
    list.SetAlternateBk(false);
    EXPECT_EQ(host.Paint().At(50, 30), test::Argb{0xFF0000FF});
}

TEST_F(ListBodyTest, RowsKnowTheirIndicesWhateverWasInsertedBeforeThem)
{
    const auto rows = AddRows(list, 50);
    for (int i = 0; i < 200; ++i) {
        list.AddAt(new CListLabelElementUI, i % 3);
        EXPECT_EQ(list.GetItemIndex(rows[20]), 21 + i);
    }
    EXPECT_EQ(rows[49]->GetIndex(), 249);
    list.RemoveAt(0);
    EXPECT_EQ(rows[49]->GetIndex(), 248);
    EXPECT_TRUE(list.Remove(rows[10]));
    EXPECT_EQ(rows[49]->GetIndex(), 247);
    EXPECT_TRUE(rows[30]->Select());
    EXPECT_EQ(list.GetCurSel(), 228);
    EXPECT_EQ(list.GetItemAt(228), rows[30]);
}

// Calls a function whenever a row gets a place.
struct WhenPlaced {
    std::function<void()> run;

    bool Call(void*)
    {
        if (run)
            std::exchange(run, nullptr)();
        return true;
    }
};

TEST_F(ListBodyTest, ARowThatIsPlacedMayRemoveOthersThatLeaveTheSight)
{
    const auto rows = AddRows(list, 100);
    host.Layout();
    WhenPlaced handler{[&] {
        for (int i = 0; i < 5; ++i)
            list.RemoveAt(0);
    }};
    rows[60]->OnSize += MakeDelegate(&handler, &WhenPlaced::Call);
    list.SetScrollPos({0, 1150});
    host.Paint();
    EXPECT_EQ(list.GetCount(), 95);
    EXPECT_EQ(Top(94), 94 * 20 - list.GetScrollPos().cy);
}

TEST_F(ListBodyTest, ARowThatIsPlacedMayEndTheList)
{
    const auto rows = AddRows(list, 100);
    host.Layout();
    auto& parent = *static_cast<CContainerUI*>(list.GetParent());
    parent.SetDelayedDestroy(false);
    WhenPlaced handler{[&] { parent.Remove(&list); }};
    rows[60]->OnSize += MakeDelegate(&handler, &WhenPlaced::Call);
    list.SetScrollPos({0, 1150});
    EXPECT_EQ(parent.GetCount(), 0);
}

TEST_F(ListBodyTest, HidingTheListKeepsItsRows)
{
    AddRows(list, 100);
    host.Layout();
    list.SetScrollPos({0, 200});
    list.SetVisible(false);
    host.Layout();
    list.SetVisible(true);
    host.Layout();
    EXPECT_EQ(list.GetScrollPos().cy, 200);
    EXPECT_EQ(Top(10), 0);
}

TEST_F(ListBodyTest, RowsAddedToAHiddenListShowWithIt)
{
    list.SetVisible(false);
    AddRows(list, 3);
    EXPECT_FALSE(list.GetItemAt(1)->IsVisible());
    list.SetVisible(true);
    host.Layout();
    EXPECT_TRUE(list.GetItemAt(1)->IsVisible());
    EXPECT_EQ(Top(2), 40);
}

TEST_F(ListBodyTest, NamesOfRowsAreFound)
{
    const auto rows = AddRows(list, 10);
    auto* const late = new CListLabelElementUI;
    late->SetName(L"late");
    list.AddAt(late, 3);
    EXPECT_EQ(host.Manager().FindControl(L"late"), late);
    EXPECT_EQ(list.FindSubControl(L"late"), late);
    list.Remove(late);
    EXPECT_EQ(host.Manager().FindControl(L"late"), nullptr);
}

} // namespace
