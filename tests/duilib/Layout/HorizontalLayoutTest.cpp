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
    const wchar_t* attributes; // of the layout
    const wchar_t* children;
    const wchar_t* places; // at 100 percent in 200 x 120
    const wchar_t* scaled; // at 150 percent in 300 x 180
};

const Row kRows[] = {
    {"FixedWidths", L"", L"<Control width=\"20\"/><Control width=\"30\"/>",
     L"0,0,20,120 20,0,50,120", L"0,0,30,180 30,0,75,180"},
    {"AdjustablesShare", L"", L"<Control/><Control/>", L"0,0,100,120 100,0,200,120",
     L"0,0,150,180 150,0,300,180"},
    {"TheLastTakesWhatIsLeft", L"", L"<Control/><Control/><Control/>",
     L"0,0,66,120 66,0,132,120 132,0,200,120", L"0,0,100,180 100,0,200,180 200,0,300,180"},
    {"Paddings", L"", L"<Control width=\"20\" padding=\"2,4,6,8\"/><Control padding=\"10,0,4,2\"/>",
     L"2,4,22,112 38,0,196,118", L"3,6,33,168 57,0,294,177"},
    {"ChildPadding", L"childpadding=\"10\"", L"<Control width=\"20\"/><Control/>",
     L"0,0,20,120 30,0,200,120", L"0,0,30,180 45,0,300,180"},
    {"Inset", L"inset=\"10,20,30,40\"", L"<Control width=\"20\"/><Control/>",
     L"10,20,30,80 30,20,170,80", L"15,30,45,120 45,30,255,120"},
    {"Heights", L"", L"<Control width=\"20\" height=\"50\"/><Control width=\"20\" height=\"400\"/>",
     L"0,0,20,50 20,0,40,120", L"0,0,30,75 30,0,60,180"},
    {"MaximumHeight", L"", L"<Control width=\"20\" maxheight=\"60\"/>", L"0,0,20,60", L"0,0,30,90"},
    {"MinimumHeightWins", L"", L"<Control width=\"20\" minheight=\"150\" height=\"50\"/>",
     L"0,0,20,150", L"0,0,30,225"},
    {"MinimumAndMaximumWidth", L"",
     L"<Control width=\"20\" minwidth=\"30\"/><Control maxwidth=\"10\"/><Control/>",
     L"0,0,30,120 30,0,40,120 40,0,200,120", L"0,0,45,180 45,0,60,180 60,0,300,180"},
    {"AlignedToTheBottom", L"childvalign=\"bottom\"",
     L"<Control width=\"20\" height=\"50\" padding=\"0,5,0,10\"/>", L"0,60,20,110", L"0,89,30,164"},
    {"CentredWhateverThePadding", L"childvalign=\"vcenter\"",
     L"<Control width=\"20\" height=\"50\" padding=\"0,40,0,0\"/>", L"0,35,20,85", L"0,52,30,127"},
    {"RowInTheMiddle", L"childalign=\"center\"", L"<Control width=\"20\"/><Control width=\"40\"/>",
     L"70,0,90,120 90,0,130,120", L"105,0,135,180 135,0,195,180"},
    {"RowAtTheRight", L"childalign=\"right\"", L"<Control width=\"20\"/><Control width=\"40\"/>",
     L"140,0,160,120 160,0,200,120", L"210,0,240,180 240,0,300,180"},
    {"ARowWithAdjustablesIsNotShifted", L"childalign=\"right\"",
     L"<Control width=\"20\"/><Control maxwidth=\"10\"/>", L"0,0,20,120 20,0,30,120",
     L"0,0,30,180 30,0,45,180"},
    {"HiddenAndFloatingChildrenTakeNoPart", L"childpadding=\"10\"",
     L"<Control width=\"20\"/><Control visible=\"false\" width=\"5\"/>"
     L"<Control float=\"true\" pos=\"5,6,15,26\"/><Control/>",
     L"0,0,20,120 0,0,0,0 5,6,15,26 30,0,200,120", L"0,0,30,180 0,0,0,0 8,9,23,39 45,0,300,180"},
};

std::wstring Skin(const Row& row)
{
    return std::wstring(L"<Window><HBox name=\"box\" ") + row.attributes + L">" + row.children +
           L"</HBox></Window>";
}

class HorizontalPlacesTest : public testing::TestWithParam<Row> {};

std::string NameOf(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

// Wants a size without having one.
class Wishful : public CControlUI {
public:
    SIZE EstimateSize(SIZE) override { return {30, 40}; }
};

} // namespace

TEST_P(HorizontalPlacesTest, At100Percent)
{
    ControlHost host{200, 120};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    auto& box = host.Find<CContainerUI>(L"box");
    EXPECT_EQ(Places(box), GetParam().places);
    box.SetPos(box.GetPos());
    EXPECT_EQ(Places(box), GetParam().places);
}

TEST_P(HorizontalPlacesTest, At150Percent)
{
    ControlHost host{300, 180, 144};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    EXPECT_EQ(Places(host.Find<CContainerUI>(L"box")), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(Rows, HorizontalPlacesTest, testing::ValuesIn(kRows), NameOf);

TEST(HorizontalLayoutTest, AnswersToItsNames)
{
    CHorizontalLayoutUI layout;
    EXPECT_STREQ(layout.GetClass(), L"HorizontalLayoutUI");
    EXPECT_EQ(layout.GetInterface(L"HorizontalLayout"), &layout);
    EXPECT_EQ(layout.GetInterface(L"VerticalLayout"), nullptr);
}

TEST(HorizontalLayoutTest, AnEstimatedHeightIsNotUsed)
{
    ControlHost host{200, 120};
    auto& row = host.Add<CHorizontalLayoutUI>();
    row.Add(new Wishful);
    host.Layout();
    EXPECT_EQ(Places(row), L"0,0,30,120");
}

TEST(HorizontalLayoutTest, AnEstimatedSizeIsUsedWhollyInAStack)
{
    ControlHost host{200, 120};
    auto& stack = host.Add<CVerticalLayoutUI>();
    stack.Add(new Wishful);
    host.Layout();
    EXPECT_EQ(Places(stack), L"0,0,30,40");
}

TEST(HorizontalLayoutTest, ARowTooWideScrollsSideways)
{
    ControlHost host{200, 120};
    auto& row = host.Add<CHorizontalLayoutUI>();
    row.EnableScrollBar(false, true);
    for (int i = 0; i < 5; ++i) {
        auto* const child = new CControlUI;
        child->SetFixedWidth(60);
        row.Add(child);
    }
    host.Layout();
    EXPECT_EQ(row.GetScrollRange().cx, 100);
    EXPECT_EQ(Place(row.GetHorizontalScrollBar()->GetPos()), Place(0, 104, 200, 120));
    row.SetScrollPos({50, 0});
    EXPECT_EQ(Place(row.GetItemAt(0)->GetPos()), Place(-50, 0, 10, 104));
    row.SetPos(row.GetPos());
    EXPECT_EQ(Place(row.GetItemAt(4)->GetPos()), Place(190, 0, 250, 104));
}
