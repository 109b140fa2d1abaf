#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr int kSteps = 500;
constexpr int kMostRows = 250;

// What a list is, in the simplest way that can be right.
struct ModelRow {
    CControlUI* control;
    bool selected = false;

    bool IsShown() const { return control->IsVisible(); }
};

struct Trial {
    unsigned seed;
    int dpi;
    int gap; // design pixels
};

std::string NameOf(const testing::TestParamInfo<Trial>& info)
{
    return "Seed" + std::to_string(info.param.seed) + "Dpi" + std::to_string(info.param.dpi) +
           "Gap" + std::to_string(info.param.gap);
}

int CALLBACK ByTag(UINT_PTR left, UINT_PTR right, UINT_PTR)
{
    // Few different tags, so that rows which compare equal show whether they kept their order.
    const auto tag = [](UINT_PTR row) { return reinterpret_cast<CControlUI*>(row)->GetTag() % 16; };
    return tag(left) < tag(right) ? -1 : tag(left) > tag(right);
}

IListItemUI* ItemOf(CControlUI* control)
{
    return static_cast<IListItemUI*>(control->GetInterface(DUI_CTR_LISTITEM));
}

// Random changes of a list and of its model, which have to stay the same.
class ListModelTest : public testing::TestWithParam<Trial> {
protected:
    ControlHost host{220, 160, GetParam().dpi};
    CListUI& list = host.Add<CListUI>();
    std::vector<ModelRow> rows;
    std::mt19937 random{GetParam().seed};
    std::wstring history; // the latest operations, for a failure's message

    void SetUp() override
    {
        list.SetAttribute(L"header", L"hidden");
        list.SetAttribute(L"inset", L"3,4,5,6");
        list.EnableScrollBar(true, false);
        list.SetMultiSelect(true);
        list.SetChildPadding(GetParam().gap);
    }

    int Pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    int PickRow() { return Pick(static_cast<int>(rows.size())); }
    ModelRow& Row(int index) { return rows[static_cast<std::size_t>(index)]; }
    std::vector<ModelRow>::iterator At(int index) { return rows.begin() + index; }

    CControlUI* MakeRow()
    {
        CControlUI* row = nullptr;
        switch (Pick(3)) {
        case 0:
            row = new CListLabelElementUI;
            break;
        case 1:
            row = new CListTextElementUI;
            break;
        default:
            row = new CListContainerElementUI;
            break;
        }
        row->SetFixedHeight(8 + Pick(40));
        row->SetTag(random());
        if (Pick(4) == 0)
            row->SetPadding({1, 2, 3, 4});
        if (Pick(8) == 0)
            row->SetVisible(false);
        return row;
    }

    void Note(const wchar_t* what, int index = -1)
    {
        history += std::wstring(L" ") + what + L' ' + std::to_wstring(index);
        if (history.size() > 400)
            history.erase(0, history.size() - 400);
    }

    void Insert(int index)
    {
        Note(L"insert", index);
        CControlUI* const row = MakeRow();
        const bool atEnd = index == static_cast<int>(rows.size()) && Pick(2) == 0;
        ASSERT_TRUE(atEnd ? list.Add(row) : list.AddAt(row, index));
        rows.insert(At(index), {row});
    }

    void Erase(int index)
    {
        Note(L"erase", index);
        ASSERT_TRUE(Pick(2) == 0 ? list.RemoveAt(index) : list.Remove(Row(index).control));
        rows.erase(At(index));
    }

    void Show(int index)
    {
        ModelRow& row = Row(index);
        Note(L"show", index);
        row.control->SetVisible(!row.IsShown());
        row.selected = row.selected && row.IsShown();
    }

    void Move(int from, int to)
    {
        Note(L"move from", from);
        Note(L"to", to);
        ASSERT_TRUE(list.SetItemIndex(Row(from).control, to));
        const ModelRow moved = Row(from);
        rows.erase(At(from));
        rows.insert(At(to), moved);
    }

    void Select(int index)
    {
        Note(L"select", index);
        const bool possible = Row(index).IsShown();
        ASSERT_EQ(list.SelectItem(index), possible);
        if (!possible)
            return;
        for (ModelRow& row : rows)
            row.selected = false;
        Row(index).selected = true;
        ASSERT_EQ(list.GetCurSel(), index);
    }

    void SelectAlso(int index)
    {
        Note(L"select also", index);
        list.SelectMultiItem(index);
        Row(index).selected = Row(index).selected || Row(index).IsShown();
    }

    void Unselect(int index)
    {
        Note(L"unselect", index);
        list.UnSelectItem(index);
        Row(index).selected = false;
    }

    void SelectByRow(int index)
    {
        Note(L"row selects itself", index);
        if (!Row(index).IsShown())
            return;
        ItemOf(Row(index).control)->Select(true);
        if (Row(index).selected)
            return;
        for (ModelRow& row : rows)
            row.selected = false;
        Row(index).selected = true;
    }

    void Sort()
    {
        Note(L"sort");
        ASSERT_TRUE(list.SortItems(ByTag, 0));
        std::stable_sort(rows.begin(), rows.end(), [](const ModelRow& left, const ModelRow& right) {
            return left.control->GetTag() % 16 < right.control->GetTag() % 16;
        });
    }

    void Change()
    {
        const int count = static_cast<int>(rows.size());
        if (count == 0 || (count < kMostRows && Pick(3) == 0)) {
            Insert(Pick(2) == 0 ? count : Pick(count + 1));
            return;
        }
        switch (Pick(14)) {
        case 0:
            Erase(PickRow());
            break;
        case 1:
            Show(PickRow());
            break;
        case 2:
            Note(L"resize");
            Row(PickRow()).control->SetFixedHeight(8 + Pick(40));
            break;
        case 3:
            Select(PickRow());
            break;
        case 4:
            SelectAlso(PickRow());
            break;
        case 5:
            Unselect(PickRow());
            break;
        case 6:
            SelectByRow(PickRow());
            break;
        case 7:
            Move(PickRow(), PickRow());
            break;
        case 8:
            if (Pick(4) == 0)
                Sort();
            break;
        case 9:
            ChangeWhole();
            break;
        case 10:
        case 11:
            Note(L"scroll");
            list.SetScrollPos({0, Pick(4000) - 200});
            break;
        case 12:
            Note(L"ensure visible");
            list.EnsureVisible(PickRow());
            break;
        default:
            list.EndDown();
            list.LineUp();
            break;
        }
    }

    // What touches every row is rare.
    void ChangeWhole()
    {
        switch (Pick(8)) {
        case 0:
            Note(L"select all");
            list.SelectAllItems();
            for (ModelRow& row : rows)
                row.selected = row.IsShown();
            break;
        case 1:
            Note(L"unselect all");
            list.UnSelectAllItems();
            for (ModelRow& row : rows)
                row.selected = false;
            break;
        case 2:
            if (Pick(3) == 0) {
                Note(L"remove all");
                list.RemoveAll();
                rows.clear();
            }
            break;
        case 3:
            Note(L"hide and show");
            list.SetVisible(false);
            list.SetVisible(true);
            break;
        default:
            break;
        }
    }

    void CheckOrder()
    {
        ASSERT_EQ(list.GetCount(), static_cast<int>(rows.size()));
        for (int i = 0; i < list.GetCount(); ++i) {
            ASSERT_EQ(list.GetItemAt(i), Row(i).control) << i;
            ASSERT_EQ(list.GetItemIndex(Row(i).control), i);
            ASSERT_EQ(ItemOf(Row(i).control)->GetIndex(), i);
        }
    }

    void CheckSelection()
    {
        int next = -1;
        int count = 0;
        for (int i = 0; i < list.GetCount(); ++i) {
            ASSERT_EQ(ItemOf(Row(i).control)->IsSelected(), Row(i).selected) << i;
            if (!Row(i).selected)
                continue;
            ++count;
            next = list.GetNextSelItem(next);
            ASSERT_EQ(next, i);
        }
        ASSERT_EQ(list.GetNextSelItem(next), -1);
        ASSERT_EQ(list.GetSelectItemCount(), count);
        ASSERT_TRUE(list.GetCurSel() < 0 || Row(list.GetCurSel()).selected);
    }

    std::vector<RECT> Places()
    {
        const RECT client = list.GetList()->GetClientPos();
        const int gap = list.GetChildPadding();
        LONG at = client.top - list.GetScrollPos().cy;
        std::vector<RECT> places;
        for (const ModelRow& row : rows) {
            places.push_back({});
            if (!row.IsShown())
                continue;
            const RECT padding = row.control->GetPadding();
            const LONG top = at + padding.top;
            const LONG bottom = top + row.control->GetFixedHeight();
            places.back() = {client.left + padding.left, top, client.right - padding.right, bottom};
            at = bottom + padding.bottom + gap;
        }
        return places;
    }

    void CheckPlaces()
    {
        const std::vector<RECT> places = Places();
        const RECT client = list.GetList()->GetClientPos();
        LONG end = client.top - list.GetScrollPos().cy;
        for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
            if (!Row(i).IsShown())
                continue;
            const RECT& expected = places[static_cast<std::size_t>(i)];
            const RECT& actual = Row(i).control->GetPos();
            ASSERT_TRUE(::EqualRect(&actual, &expected))
                << i << ": " << actual.left << ' ' << actual.top << ' ' << actual.right << ' '
                << actual.bottom << " instead of " << expected.left << ' ' << expected.top << ' '
                << expected.right << ' ' << expected.bottom;
            ASSERT_EQ(Row(i).control->GetHeight(), expected.bottom - expected.top);
            ASSERT_EQ(Row(i).control->GetY(), expected.top);
            end = expected.bottom + Row(i).control->GetPadding().bottom;
        }
        const LONG needed = end + list.GetScrollPos().cy - client.top;
        ASSERT_EQ(list.GetScrollRange().cy,
                  std::max<LONG>(needed - (client.bottom - client.top), 0));
    }

    void CheckHits()
    {
        const std::vector<RECT> places = Places();
        const RECT client = list.GetList()->GetClientPos();
        for (int trial = 0; trial < 4; ++trial) {
            const POINT point{client.left + Pick(client.right - client.left),
                              client.top + Pick(client.bottom - client.top)};
            CControlUI* expected = list.GetList();
            for (std::size_t i = 0; i < rows.size(); ++i) {
                if (rows[i].IsShown() && ::PtInRect(&places[i], point))
                    expected = rows[i].control;
            }
            ASSERT_EQ(host.Manager().FindControl(point), expected) << point.x << ' ' << point.y;
        }
    }
};

TEST_P(ListModelTest, StaysAsItsModel)
{
    for (int step = 0; step < kSteps; ++step) {
        const int changes = 1 + Pick(3);
        for (int i = 0; i < changes; ++i)
            ASSERT_NO_FATAL_FAILURE(Change()) << "after" << ::testing::PrintToString(history);
        ASSERT_NO_FATAL_FAILURE(CheckOrder()) << ::testing::PrintToString(history);
        ASSERT_NO_FATAL_FAILURE(CheckSelection()) << ::testing::PrintToString(history);

        host.Layout();
        // Rows out of sight take their places when they are asked, so not all are asked each time.
        ASSERT_NO_FATAL_FAILURE(CheckHits()) << ::testing::PrintToString(history);
        if (Pick(3) == 0) {
            ASSERT_NO_FATAL_FAILURE(CheckPlaces()) << ::testing::PrintToString(history);
        }
        host.Pump();
    }
}

INSTANTIATE_TEST_SUITE_P(Random, ListModelTest,
                         testing::Values(Trial{1, 96, 0}, Trial{2, 96, 0}, Trial{3, 96, 3},
                                         Trial{4, 144, 0}, Trial{5, 144, 3}, Trial{6, 120, 1}),
                         NameOf);

} // namespace
