#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::ControlHost;
using test::Place;

namespace {

class TabLayoutTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CTabLayoutUI& tabs = host.Add<CTabLayoutUI>();

    CControlUI* AddPage(int index = -1)
    {
        auto* const page = new CControlUI;
        index < 0 ? tabs.Add(page) : tabs.AddAt(page, index);
        return page;
    }
};

} // namespace

TEST_F(TabLayoutTest, AnswersToItsNames)
{
    EXPECT_STREQ(tabs.GetClass(), L"TabLayoutUI");
    EXPECT_EQ(tabs.GetInterface(L"TabLayout"), &tabs);
    EXPECT_EQ(tabs.GetInterface(L"TileLayout"), nullptr);
}

TEST_F(TabLayoutTest, TheFirstVisiblePageIsSelectedAndTheOthersHidden)
{
    EXPECT_EQ(tabs.GetCurSel(), -1);
    auto* const hidden = new CControlUI;
    hidden->SetVisible(false);
    tabs.Add(hidden);
    EXPECT_EQ(tabs.GetCurSel(), -1);
    auto* const first = AddPage();
    auto* const second = AddPage();
    EXPECT_EQ(tabs.GetCurSel(), 1);
    EXPECT_TRUE(first->IsVisible());
    EXPECT_FALSE(second->IsVisible());
}

TEST_F(TabLayoutTest, SelectingShowsFocusesAndTellsTheWindow)
{
    auto* const first = AddPage();
    auto* const second = AddPage();
    host.Layout();
    host.ClearSent();
    EXPECT_TRUE(tabs.SelectItem(1));
    EXPECT_EQ(tabs.GetCurSel(), 1);
    EXPECT_FALSE(first->IsVisible());
    EXPECT_TRUE(second->IsVisible());
    const auto sent = host.Sent(L"tabselect");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, &tabs);
    EXPECT_EQ(sent[0].wParam, 1u);
    EXPECT_EQ(sent[0].lParam, 0);
    host.Layout();
    EXPECT_EQ(Place(second->GetPos()), Place(0, 0, 100, 60));
}

TEST_F(TabLayoutTest, SelectingTheSamePageAgainOrNoneSendsNothing)
{
    AddPage();
    AddPage();
    host.ClearSent();
    EXPECT_TRUE(tabs.SelectItem(0));
    EXPECT_FALSE(tabs.SelectItem(-1));
    EXPECT_FALSE(tabs.SelectItem(2));
    CControlUI stranger;
    EXPECT_FALSE(tabs.SelectItem(&stranger));
    EXPECT_TRUE(host.Sent(L"tabselect").empty());
    EXPECT_EQ(tabs.GetCurSel(), 0);
}

TEST_F(TabLayoutTest, APageIsSelectedByItself)
{
    AddPage();
    auto* const second = AddPage();
    EXPECT_TRUE(tabs.SelectItem(second));
    EXPECT_EQ(tabs.GetCurSel(), 1);
}

TEST_F(TabLayoutTest, APageAddedAtOrBeforeTheSelectionShiftsIt)
{
    auto* const first = AddPage();
    auto* const before = AddPage(0);
    EXPECT_EQ(tabs.GetCurSel(), 1);
    EXPECT_TRUE(first->IsVisible());
    EXPECT_TRUE(before->IsVisible());
    auto* const after = AddPage(2);
    EXPECT_EQ(tabs.GetCurSel(), 1);
    EXPECT_FALSE(after->IsVisible());
}

TEST_F(TabLayoutTest, RemovingTheSelectionSelectsTheFirstPage)
{
    auto* const first = AddPage();
    AddPage();
    auto* const third = AddPage();
    tabs.SelectItem(2);
    tabs.Remove(third);
    EXPECT_EQ(tabs.GetCurSel(), 0);
    EXPECT_TRUE(first->IsVisible());
}

TEST_F(TabLayoutTest, RemovingAPageBeforeTheSelectionKeepsTheSelectedPage)
{
    AddPage();
    auto* const second = AddPage();
    tabs.SelectItem(1);
    EXPECT_TRUE(tabs.RemoveAt(0));
    EXPECT_EQ(tabs.GetCurSel(), 0);
    EXPECT_EQ(tabs.GetItemAt(0), second);
    EXPECT_TRUE(second->IsVisible());
}

TEST_F(TabLayoutTest, AnEmptyLayoutHasNoSelection)
{
    auto* const only = AddPage();
    tabs.Remove(only);
    EXPECT_EQ(tabs.GetCurSel(), -1);
    AddPage();
    AddPage();
    tabs.RemoveAll();
    EXPECT_EQ(tabs.GetCurSel(), -1);
    host.Layout();
    EXPECT_EQ(tabs.GetCount(), 0);
}

TEST_F(TabLayoutTest, MovingAPageKeepsTheSelectedOne)
{
    auto* const first = AddPage();
    AddPage();
    AddPage();
    EXPECT_TRUE(tabs.SetItemIndex(first, 2));
    EXPECT_EQ(tabs.GetCurSel(), 2);
    EXPECT_TRUE(first->IsVisible());
}

TEST_F(TabLayoutTest, OnlyTheSelectedPageIsPlaced)
{
    tabs.SetInset({10, 5, 0, 0});
    auto* const first = AddPage();
    auto* const second = AddPage();
    first->SetPadding({1, 2, 3, 4});
    second->SetFixedWidth(20);
    host.Layout();
    EXPECT_EQ(Place(first->GetPos()), Place(11, 7, 97, 56));
    EXPECT_EQ(Place(second->GetPos()), Place(0, 0, 0, 0));
    tabs.SelectItem(1);
    host.Layout();
    EXPECT_EQ(Place(second->GetPos()), Place(10, 5, 30, 60));
}

TEST_F(TabLayoutTest, TheSelectionIsAnAttribute)
{
    AddPage();
    AddPage();
    tabs.SetAttribute(L"selectedid", L"1");
    EXPECT_EQ(tabs.GetCurSel(), 1);
}

TEST_F(TabLayoutTest, ASkinSelectsItsPage)
{
    host.Load(L"<Window><TabBox name=\"t\" selectedid=\"1\"><Control name=\"a\"/>"
              L"<VBox name=\"b\"><Control name=\"c\"/></VBox></TabBox></Window>");
    EXPECT_EQ(host.Find<CTabLayoutUI>(L"t").GetCurSel(), 1);
    EXPECT_FALSE(host.Find<CControlUI>(L"a").IsVisible());
    EXPECT_TRUE(host.Find<CControlUI>(L"c").IsVisible());
    EXPECT_EQ(Place(host.Find<CControlUI>(L"c").GetPos()), Place(0, 0, 100, 60));
}
