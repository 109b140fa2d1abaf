#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::Place;
using test::Places;

namespace {

struct Row {
    const char* name;
    const wchar_t* attributes;
    const wchar_t* children;
    const wchar_t* places; // at 100 percent in 100 x 60
    const wchar_t* scaled; // at 150 percent in 150 x 90
};

const Row kRows[] = {
    {"AsManyAsFit", L"itemsize=\"30,20\"", L"<Control/><Control/><Control/><Control/>",
     L"0,0,30,20 30,0,60,20 60,0,90,20 0,20,30,40", L"0,0,45,30 45,0,90,30 90,0,135,30 0,30,45,60"},
    {"Columns", L"columns=\"2\" itemsize=\"0,20\"", L"<Control/><Control/><Control/>",
     L"0,0,50,20 50,0,100,20 0,20,50,40", L"0,0,75,30 75,0,150,30 0,30,75,60"},
    {"ColumnsAndSize", L"columns=\"2\" itemsize=\"20,20\"", L"<Control/><Control/><Control/>",
     L"0,0,20,20 20,0,40,20 0,20,20,40", L"0,0,30,30 30,0,60,30 0,30,30,60"},
    {"Gaps", L"itemsize=\"30,20\" childpadding=\"10\"", L"<Control/><Control/><Control/>",
     L"0,0,30,20 40,0,70,20 0,30,30,50", L"0,0,45,30 60,0,105,30 0,45,45,75"},
    {"SizesWithinTheCell", L"itemsize=\"30,20\"",
     L"<Control width=\"10\" height=\"12\"/><Control padding=\"2,4,6,8\"/><Control width=\"90\"/>",
     L"0,0,10,12 32,4,54,12 60,0,90,20", L"0,0,15,18 48,6,81,18 90,0,135,30"},
    {"RowsAsHighAsTheirHighest", L"columns=\"2\"",
     L"<Control height=\"10\"/><Control height=\"20\"/><Control height=\"8\"/>",
     L"0,0,50,10 50,0,100,20 0,20,50,28", L"0,0,75,15 75,0,150,30 0,30,75,42"},
    {"Inset", L"itemsize=\"30,20\" inset=\"5,6,7,8\"", L"<Control/><Control/><Control/>",
     L"5,6,35,26 35,6,65,26 5,26,35,46", L"8,9,53,39 53,9,98,39 8,39,53,69"},
    {"HiddenAndFloating", L"itemsize=\"30,20\"",
     L"<Control visible=\"false\"/><Control float=\"true\" pos=\"1,2,3,4\"/><Control/>",
     L"0,0,0,0 1,2,3,4 0,0,30,20", L"0,0,0,0 2,3,5,6 0,0,45,30"},
    {"TooWide", L"itemsize=\"300,20\"", L"<Control/><Control/>", L"0,0,300,20 0,20,300,40",
     L"0,0,450,30 0,30,450,60"},
};

std::wstring Skin(const Row& row)
{
    return std::wstring(L"<Window><TileBox name=\"box\" ") + row.attributes + L">" + row.children +
           L"</TileBox></Window>";
}

class TilePlacesTest : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(TilePlacesTest, At100Percent)
{
    ControlHost host{100, 60};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    auto& box = host.Find<CContainerUI>(L"box");
    EXPECT_EQ(Places(box), GetParam().places);
    box.SetPos(box.GetPos());
    EXPECT_EQ(Places(box), GetParam().places);
}

TEST_P(TilePlacesTest, At150Percent)
{
    ControlHost host{150, 90, 144};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    EXPECT_EQ(Places(host.Find<CContainerUI>(L"box")), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(Rows, TilePlacesTest, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row>& info) {
                             return std::string(info.param.name);
                         });

TEST(TileLayoutTest, AnswersToItsNamesAndKeepsItsNumbers)
{
    CTileLayoutUI layout;
    EXPECT_STREQ(layout.GetClass(), L"TileLayoutUI");
    EXPECT_EQ(layout.GetInterface(L"TileLayout"), &layout);
    layout.SetColumns(3);
    layout.SetItemSize({40, 50});
    EXPECT_EQ(layout.GetColumns(), 3);
    EXPECT_EQ(layout.GetItemSize().cx, 40);
    EXPECT_EQ(layout.GetItemSize().cy, 50);
    layout.SetColumns(-1);
    layout.SetItemSize({-1, -1});
    EXPECT_EQ(layout.GetColumns(), 0);
    EXPECT_EQ(layout.GetItemSize().cx, 0);
}

TEST(TileLayoutTest, RowsThatDoNotFitScroll)
{
    ControlHost host{100, 60};
    auto& layout = host.Add<CTileLayoutUI>();
    layout.SetItemSize({30, 20});
    layout.EnableScrollBar(true, false);
    for (int i = 0; i < 12; ++i)
        layout.Add(new CControlUI);
    host.Layout();
    // The bar takes the third column's room.
    EXPECT_EQ(layout.GetScrollRange().cy, 6 * 20 - 60);
    EXPECT_EQ(Place(layout.GetItemAt(2)->GetPos()), Place(0, 20, 30, 40));
    layout.SetScrollPos({0, 30});
    EXPECT_EQ(Place(layout.GetItemAt(2)->GetPos()), Place(0, -10, 30, 10));
    layout.SetPos(layout.GetPos());
    EXPECT_EQ(Place(layout.GetItemAt(2)->GetPos()), Place(0, -10, 30, 10));
}

TEST(TileLayoutTest, AbsurdNumbersAreHarmless)
{
    ControlHost host{100, 60};
    auto& layout = host.Add<CTileLayoutUI>();
    layout.Add(new CControlUI);
    layout.Add(new CControlUI);
    for (const int columns : {INT_MAX, INT_MIN, 0, 1}) {
        for (const int size : {INT_MAX, INT_MIN, 0, 1}) {
            layout.SetColumns(columns);
            layout.SetItemSize({size, size});
            layout.SetChildPadding(size);
            host.Layout();
            EXPECT_GE(layout.GetItemAt(1)->GetWidth(), 0);
        }
    }
}
