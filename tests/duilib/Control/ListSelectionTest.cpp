#include "duilib/Control/ListKit.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <vector>

using namespace DuiLib;
using test::AddRows;
using test::ControlHost;
using test::HeldKey;
using test::ItemAt;
using test::SelectedRows;

namespace {

using Rows = std::vector<int>;
constexpr auto kSeveral = static_cast<WPARAM>(-1); // told when several rows may have changed

// 100 x 100 pixels: five of ten rows are in sight, the second of which is disabled and the fourth
// hidden.
class ListSelectionTest : public testing::Test {
protected:
    ControlHost host{100, 100};
    CListUI& list = host.Add<CListUI>();
    std::vector<CListLabelElementUI*> rows;

    void SetUp() override
    {
        list.SetAttribute(L"header", L"hidden");
        list.EnableScrollBar(true, false);
        rows = AddRows(list, 10);
        rows[1]->SetEnabled(false);
        rows[3]->SetVisible(false);
        host.Layout();
        host.ClearSent();
    }

    // What the list told since the last question.
    std::vector<WPARAM> Told()
    {
        std::vector<WPARAM> told;
        for (const auto& sent : host.Sent(DUI_MSGTYPE_ITEMSELECT)) {
            EXPECT_EQ(sent.sender, &list);
            told.push_back(sent.wParam);
        }
        host.ClearSent();
        return told;
    }

    // Control and Shift are those of the keyboard.
    void ClickRow(int index)
    {
        WPARAM keys = MK_LBUTTON;
        keys |= ::GetKeyState(VK_CONTROL) < 0 ? MK_CONTROL : 0;
        keys |= ::GetKeyState(VK_SHIFT) < 0 ? MK_SHIFT : 0;
        const RECT& place = rows[static_cast<std::size_t>(index)]->GetPos();
        const LPARAM point = MAKELPARAM(place.left + 5, place.top + 5);
        host.Send(WM_MOUSEMOVE, keys & ~static_cast<WPARAM>(MK_LBUTTON), point);
        host.Send(WM_LBUTTONDOWN, keys, point);
        host.Send(WM_LBUTTONUP, keys & ~static_cast<WPARAM>(MK_LBUTTON), point);
    }

    // The list has the focus.
    void PressKey(int key)
    {
        list.SetFocus();
        host.Key(key);
    }
};

TEST_F(ListSelectionTest, OneRowIsSelectedAtATime)
{
    EXPECT_TRUE(list.SelectItem(2));
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_EQ(Told(), std::vector<WPARAM>{2});
    EXPECT_TRUE(list.SelectItem(2));
    EXPECT_TRUE(Told().empty()) << "nothing changed";
    EXPECT_TRUE(list.SelectItem(4));
    EXPECT_EQ(SelectedRows(list), Rows{4});
    EXPECT_EQ(Told(), std::vector<WPARAM>{4});
    EXPECT_FALSE(list.SelectItem(-1));
    EXPECT_EQ(SelectedRows(list), Rows{});
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
}

TEST_F(ListSelectionTest, RowsThatCannotBeSelectedLeaveTheSelectionAlone)
{
    list.SetMultiSelect(true);
    list.SelectItem(2);
    Told();
    for (const int index : {1, 3, 10, 1000}) {
        SCOPED_TRACE(index);
        EXPECT_FALSE(list.SelectItem(index));
        EXPECT_FALSE(list.SelectMultiItem(index));
        EXPECT_EQ(SelectedRows(list), Rows{2});
        EXPECT_EQ(list.GetCurSel(), 2);
    }
    EXPECT_TRUE(Told().empty());
}

TEST_F(ListSelectionTest, TheSelectedRowIsScrolledIntoView)
{
    list.SelectItem(9);
    EXPECT_EQ(list.GetItemAt(9)->GetPos().bottom, 100);
    list.SelectItem(0);
    EXPECT_EQ(list.GetItemAt(0)->GetPos().top, 0);
}

TEST_F(ListSelectionTest, TheRowTakesTheFocusWhenAskedTo)
{
    list.SetFocus();
    list.SelectItem(2);
    EXPECT_EQ(host.Manager().GetFocus(), &list);
    list.SelectItem(4, true);
    EXPECT_EQ(host.Manager().GetFocus(), rows[4]);
}

TEST_F(ListSelectionTest, TheActivatedRowIsRemembered)
{
    EXPECT_EQ(list.GetCurSelActivate(), -1);
    EXPECT_TRUE(list.SelectItemActivate(2));
    EXPECT_EQ(list.GetCurSelActivate(), 2);
    EXPECT_EQ(list.GetCurSel(), 2);
    list.SelectItem(4);
    EXPECT_EQ(list.GetCurSelActivate(), 2);
    EXPECT_FALSE(list.SelectItemActivate(1));
    EXPECT_EQ(list.GetCurSelActivate(), 2);
}

TEST_F(ListSelectionTest, WithoutMultiSelectionMoreIsOne)
{
    list.SelectMultiItem(2);
    list.SelectMultiItem(4);
    EXPECT_EQ(SelectedRows(list), Rows{4});
    EXPECT_EQ(Told(), (std::vector<WPARAM>{2, 4}));
    list.SelectAllItems();
    EXPECT_EQ(SelectedRows(list), Rows{4});
    EXPECT_TRUE(Told().empty());
}

TEST_F(ListSelectionTest, MultiSelectionAddsRowsAndTellsNoIndex)
{
    list.SetMultiSelect(true);
    list.SelectMultiItem(2);
    list.SelectMultiItem(5);
    EXPECT_EQ(SelectedRows(list), (Rows{2, 5}));
    EXPECT_EQ(list.GetSelectItemCount(), 2);
    EXPECT_EQ(list.GetCurSel(), 5);
    EXPECT_EQ(Told(), (std::vector<WPARAM>{kSeveral, kSeveral}));
    list.SelectItem(4);
    EXPECT_EQ(SelectedRows(list), Rows{4}) << "one is one";
    EXPECT_EQ(Told(), std::vector<WPARAM>{4});
}

TEST_F(ListSelectionTest, AllRowsThatCanBeSelectedAre)
{
    list.SetMultiSelect(true);
    list.SelectAllItems();
    EXPECT_EQ(SelectedRows(list), (Rows{0, 2, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
    list.SelectAllItems();
    EXPECT_TRUE(Told().empty());
    list.UnSelectAllItems();
    EXPECT_EQ(SelectedRows(list), Rows{});
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
    list.UnSelectAllItems();
    EXPECT_TRUE(Told().empty());
}

TEST_F(ListSelectionTest, UnselectingTakesOneRowOutOrAllOthers)
{
    list.SetMultiSelect(true);
    list.SelectAllItems();
    Told();
    EXPECT_TRUE(list.UnSelectItem(4));
    EXPECT_EQ(SelectedRows(list), (Rows{0, 2, 5, 6, 7, 8, 9}));
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
    EXPECT_FALSE(list.UnSelectItem(4));
    EXPECT_TRUE(Told().empty());
    EXPECT_TRUE(list.UnSelectItem(6, true));
    EXPECT_EQ(SelectedRows(list), Rows{6});
    EXPECT_EQ(list.GetCurSel(), 6);
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
}

TEST_F(ListSelectionTest, TurningMultiSelectionOffKeepsTheCurrentRow)
{
    list.SetMultiSelect(true);
    list.SelectAllItems();
    list.SelectMultiItem(5);
    Told();
    list.SetMultiSelect(false);
    EXPECT_EQ(SelectedRows(list), Rows{list.GetCurSel()});
    EXPECT_EQ(Told(), std::vector<WPARAM>{static_cast<WPARAM>(list.GetCurSel())});
}

TEST_F(ListSelectionTest, ControlClicksTakeRowsInAndOut)
{
    list.SetMultiSelect(true);
    ClickRow(0);
    EXPECT_EQ(Told(), std::vector<WPARAM>{0});
    const HeldKey control(VK_CONTROL);
    ClickRow(2);
    ClickRow(4);
    EXPECT_EQ(SelectedRows(list), (Rows{0, 2, 4}));
    ClickRow(2);
    EXPECT_EQ(SelectedRows(list), (Rows{0, 4}));
    EXPECT_EQ(Told(), (std::vector<WPARAM>{kSeveral, kSeveral, kSeveral}));
}

TEST_F(ListSelectionTest, ShiftClicksExtendFromTheRowClickedBefore)
{
    list.SetMultiSelect(true);
    ClickRow(2);
    Told();
    {
        const HeldKey shift(VK_SHIFT);
        ClickRow(5);
        EXPECT_EQ(SelectedRows(list), (Rows{2, 4, 5})) << "the hidden row stays out";
        ClickRow(0);
        EXPECT_EQ(SelectedRows(list), (Rows{0, 2})) << "from the same row, without the disabled";
    }
    EXPECT_EQ(Told(), (std::vector<WPARAM>{kSeveral, kSeveral}));
    ClickRow(5);
    const HeldKey shift(VK_SHIFT);
    ClickRow(4);
    EXPECT_EQ(SelectedRows(list), (Rows{4, 5}));
    const HeldKey control(VK_CONTROL);
    list.SelectMultiItem(2);
    list.SelectMultiItem(8);
    EXPECT_EQ(SelectedRows(list), (Rows{2, 4, 5, 6, 7, 8})) << "with Control in addition";
}

TEST_F(ListSelectionTest, ExtendingToTheSameRowAgainTellsNothing)
{
    list.SetMultiSelect(true);
    ClickRow(2);
    const HeldKey shift(VK_SHIFT);
    ClickRow(5);
    Told();
    ClickRow(5);
    EXPECT_EQ(SelectedRows(list), (Rows{2, 4, 5}));
    EXPECT_TRUE(Told().empty());
}

TEST_F(ListSelectionTest, KeysPassOverRowsThatCannotBeSelected)
{
    PressKey(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 0);
    PressKey(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 2);
    PressKey(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 4);
    PressKey(VK_UP);
    EXPECT_EQ(list.GetCurSel(), 2);
    PressKey(VK_UP);
    PressKey(VK_UP);
    EXPECT_EQ(list.GetCurSel(), 0);
    rows[9]->SetEnabled(false);
    PressKey(VK_END);
    EXPECT_EQ(list.GetCurSel(), 8);
    PressKey(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 8);
    rows[0]->SetVisible(false);
    PressKey(VK_HOME);
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_EQ(host.Manager().GetFocus(), &list);
    EXPECT_EQ(Told(), (std::vector<WPARAM>{0, 2, 4, 2, 0, 8, 2}));
}

TEST_F(ListSelectionTest, PageKeysMoveByWhatIsInSight)
{
    list.SelectItem(0);
    PressKey(VK_NEXT);
    const int down = list.GetCurSel();
    EXPECT_GE(down, 4);
    EXPECT_LE(down, 6);
    PressKey(VK_NEXT);
    PressKey(VK_NEXT);
    EXPECT_EQ(list.GetCurSel(), 9);
    PressKey(VK_PRIOR);
    EXPECT_LT(list.GetCurSel(), 9);
    PressKey(VK_PRIOR);
    PressKey(VK_PRIOR);
    EXPECT_EQ(list.GetCurSel(), 0);
}

TEST_F(ListSelectionTest, KeysWithShiftAndControlSelectSeveralRows)
{
    list.SetMultiSelect(true);
    list.SelectItem(4);
    {
        const HeldKey shift(VK_SHIFT);
        PressKey(VK_DOWN);
        PressKey(VK_DOWN);
        EXPECT_EQ(SelectedRows(list), (Rows{4, 5, 6}));
        PressKey(VK_UP);
        EXPECT_EQ(SelectedRows(list), (Rows{4, 5}));
    }
    const HeldKey control(VK_CONTROL);
    PressKey(VK_SPACE);
    EXPECT_EQ(SelectedRows(list), Rows{4});
    PressKey('A');
    EXPECT_EQ(list.GetSelectItemCount(), 8);
}

TEST_F(ListSelectionTest, WithoutItsKeyboardOrDisabledKeysDoNothing)
{
    list.SelectItem(2);
    TEventUI event{};
    event.Type = UIEVENT_KEYDOWN;
    event.chKey = VK_DOWN;
    event.wParam = VK_DOWN;
    list.SetKeyboardEnabled(false);
    list.DoEvent(event);
    EXPECT_EQ(list.GetCurSel(), 2);
    list.SetKeyboardEnabled(true);
    list.SetEnabled(false);
    list.DoEvent(event);
    EXPECT_EQ(list.GetCurSel(), 2);
}

TEST_F(ListSelectionTest, WithoutTheMouseItsEventsReachTheParent)
{
    class Parent : public CContainerUI {
    public:
        void DoEvent(TEventUI& event) override { types.push_back(event.Type); }
        std::vector<int> types;
    };
    Parent parent;
    auto* const inner = new CListUI;
    parent.Add(inner);
    inner->SetScrollSelect(true);
    AddRows(*inner, 3);
    TEventUI wheel{};
    wheel.Type = UIEVENT_SCROLLWHEEL;
    wheel.wParam = MAKEWPARAM(SB_LINEDOWN, 0);
    inner->DoEvent(wheel);
    EXPECT_EQ(inner->GetCurSel(), 0);
    EXPECT_TRUE(parent.types.empty());
    inner->SetMouseEnabled(false);
    inner->DoEvent(wheel);
    EXPECT_EQ(inner->GetCurSel(), 0);
    EXPECT_EQ(parent.types, std::vector<int>{UIEVENT_SCROLLWHEEL});
}

TEST_F(ListSelectionTest, TheWheelScrollsUnlessItMovesTheSelection)
{
    list.SelectItem(2);
    host.Wheel(50, 50, -120);
    EXPECT_GT(list.GetScrollPos().cy, 0);
    EXPECT_EQ(list.GetCurSel(), 2);
    host.Wheel(50, 50, 120);
    EXPECT_EQ(list.GetScrollPos().cy, 0);

    list.SetScrollSelect(true);
    host.Wheel(50, 50, -120);
    EXPECT_EQ(list.GetCurSel(), 4) << "over the hidden row";
    host.Wheel(50, 50, 120);
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_EQ(list.GetScrollPos().cy, 0);
    for (int i = 0; i < 10; ++i)
        host.Wheel(50, 50, -120);
    EXPECT_EQ(list.GetCurSel(), 9);
    EXPECT_EQ(list.GetItemAt(9)->GetPos().bottom, 100);
}

TEST_F(ListSelectionTest, TheSelectionGoesWithItsRows)
{
    list.SetMultiSelect(true);
    list.SelectMultiItem(4);
    list.SelectMultiItem(6);
    auto* const first = new CListLabelElementUI;
    list.AddAt(first, 0);
    EXPECT_EQ(SelectedRows(list), (Rows{5, 7}));
    EXPECT_EQ(list.GetCurSel(), 7);
    Told();
    list.RemoveAt(7);
    EXPECT_EQ(SelectedRows(list), Rows{5});
    EXPECT_EQ(list.GetCurSel(), -1);
    host.Pump();
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
    list.Remove(first);
    EXPECT_EQ(SelectedRows(list), Rows{4});
    host.Pump();
    EXPECT_TRUE(Told().empty());
    list.RemoveAll();
    host.Pump();
    EXPECT_EQ(Told(), std::vector<WPARAM>{kSeveral});
}

TEST_F(ListSelectionTest, ARowThatIsHiddenOrDisabledLosesOrKeepsItsSelection)
{
    list.SelectItem(2);
    rows[2]->SetEnabled(false);
    EXPECT_EQ(SelectedRows(list), Rows{2}) << "it may be taken out, not in";
    rows[2]->SetEnabled(true);
    rows[2]->SetVisible(false);
    EXPECT_EQ(SelectedRows(list), Rows{});
    EXPECT_FALSE(ItemAt(list, 2)->IsSelected());
}

} // namespace
