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
    {"FixedHeights", L"", L"<Control height=\"20\"/><Control height=\"30\"/>",
     L"0,0,200,20 0,20,200,50", L"0,0,300,30 0,30,300,75"},
    {"AdjustablesShare", L"", L"<Control/><Control/><Control/>",
     L"0,0,200,40 0,40,200,80 0,80,200,120", L"0,0,300,60 0,60,300,120 0,120,300,180"},
    {"TheLastTakesWhatIsLeft", L"", L"<Control height=\"20\"/><Control/><Control/><Control/>",
     L"0,0,200,20 0,20,200,53 0,53,200,86 0,86,200,120",
     L"0,0,300,30 0,30,300,80 0,80,300,130 0,130,300,180"},
    {"Paddings", L"",
     L"<Control height=\"20\" padding=\"2,4,6,8\"/><Control padding=\"10,0,0,2\"/>",
     L"2,4,194,24 10,32,200,118", L"3,6,291,36 15,48,300,177"},
    {"ChildPadding", L"childpadding=\"10\"",
     L"<Control height=\"20\"/><Control height=\"20\"/><Control/>",
     L"0,0,200,20 0,30,200,50 0,60,200,120", L"0,0,300,30 0,45,300,75 0,90,300,180"},
    {"Inset", L"inset=\"10,20,30,40\"", L"<Control height=\"20\"/><Control/>",
     L"10,20,170,40 10,40,170,80", L"15,30,255,60 15,60,255,120"},
    {"Widths", L"", L"<Control width=\"50\" height=\"20\"/><Control width=\"400\" height=\"20\"/>",
     L"0,0,50,20 0,20,200,40", L"0,0,75,30 0,30,300,60"},
    {"MaximumWidth", L"", L"<Control maxwidth=\"60\" height=\"20\"/>", L"0,0,60,20", L"0,0,90,30"},
    {"MinimumWidthWins", L"", L"<Control minwidth=\"250\" width=\"50\" height=\"20\"/>",
     L"0,0,250,20", L"0,0,375,30"},
    {"MinimumAndMaximumHeight", L"",
     L"<Control height=\"20\" minheight=\"30\"/><Control maxheight=\"10\"/><Control/>",
     L"0,0,200,30 0,30,200,40 0,40,200,120", L"0,0,300,45 0,45,300,60 0,60,300,180"},
    {"AdjustableMinimum", L"", L"<Control height=\"100\"/><Control minheight=\"50\"/>",
     L"0,0,200,100 0,100,200,150", L"0,0,300,150 0,150,300,225"},
    {"NoRoomLeft", L"", L"<Control height=\"150\"/><Control/>", L"0,0,200,150 0,150,200,150",
     L"0,0,300,225 0,225,300,225"},
    {"AlignedRight", L"childalign=\"right\"",
     L"<Control width=\"50\" height=\"20\" padding=\"5,0,10,0\"/>", L"140,0,190,20",
     L"209,0,284,30"},
    {"CentredWhateverThePadding", L"childalign=\"center\"",
     L"<Control width=\"50\" height=\"20\" padding=\"40,0,0,0\"/>", L"75,0,125,20",
     L"112,0,187,30"},
    {"StackInTheMiddle", L"childvalign=\"vcenter\"",
     L"<Control height=\"20\"/><Control height=\"40\"/>", L"0,30,200,50 0,50,200,90",
     L"0,45,300,75 0,75,300,135"},
    {"StackAtTheBottom", L"childvalign=\"bottom\" inset=\"0,0,0,10\"",
     L"<Control height=\"20\"/><Control height=\"40\"/>", L"0,50,200,70 0,70,200,110",
     L"0,75,300,105 0,105,300,165"},
    {"AStackWithAdjustablesIsNotShifted", L"childvalign=\"bottom\"",
     L"<Control height=\"20\"/><Control maxheight=\"10\"/>", L"0,0,200,20 0,20,200,30",
     L"0,0,300,30 0,30,300,45"},
    {"AStackTooHighIsNotShifted", L"childvalign=\"vcenter\"", L"<Control height=\"200\"/>",
     L"0,0,200,200", L"0,0,300,300"},
    {"HiddenChildrenTakeNoPart", L"childpadding=\"10\"",
     L"<Control height=\"20\"/><Control height=\"50\" visible=\"false\"/><Control/>",
     L"0,0,200,20 0,0,0,0 0,30,200,120", L"0,0,300,30 0,0,0,0 0,45,300,180"},
    {"FloatingChildrenTakeNoPart", L"childpadding=\"10\"",
     L"<Control height=\"20\"/><Control float=\"true\" pos=\"5,6,15,26\"/><Control/>",
     L"0,0,200,20 5,6,15,26 0,30,200,120", L"0,0,300,30 8,9,23,39 0,45,300,180"},
};

std::wstring Skin(const Row& row)
{
    return std::wstring(L"<Window><VBox name=\"box\" ") + row.attributes + L">" + row.children +
           L"</VBox></Window>";
}

class VerticalPlacesTest : public testing::TestWithParam<Row> {};

std::string NameOf(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(VerticalPlacesTest, At100Percent)
{
    ControlHost host{200, 120};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    auto& box = host.Find<CContainerUI>(L"box");
    EXPECT_EQ(Places(box), GetParam().places);
    box.SetPos(box.GetPos());
    EXPECT_EQ(Places(box), GetParam().places);
}

TEST_P(VerticalPlacesTest, At150Percent)
{
    ControlHost host{300, 180, 144};
    ASSERT_NE(host.Load(Skin(GetParam()).c_str()), nullptr);
    EXPECT_EQ(Places(host.Find<CContainerUI>(L"box")), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(Rows, VerticalPlacesTest, testing::ValuesIn(kRows), NameOf);

TEST(VerticalLayoutTest, AnswersToItsNames)
{
    CVerticalLayoutUI layout;
    EXPECT_STREQ(layout.GetClass(), L"VerticalLayoutUI");
    EXPECT_EQ(layout.GetInterface(L"VerticalLayout"), &layout);
    EXPECT_EQ(layout.GetInterface(L"IContainer"), static_cast<IContainerUI*>(&layout));
    EXPECT_EQ(layout.GetInterface(L"HorizontalLayout"), nullptr);
}

TEST(VerticalLayoutTest, AChildIsAskedForItsSizeWithinItsLimits)
{
    class Asked : public CControlUI {
    public:
        SIZE available{};
        SIZE EstimateSize(SIZE space) override
        {
            available = space;
            return CControlUI::EstimateSize(space);
        }
    };
    ControlHost host{200, 120};
    auto& layout = host.Add<CVerticalLayoutUI>();
    auto* const plain = new Asked;
    auto* const fixed = new Asked;
    auto* const limited = new Asked;
    plain->SetPadding({10, 7, 20, 7});
    fixed->SetFixedWidth(50);
    fixed->SetFixedHeight(30);
    limited->SetMaxWidth(70);
    limited->SetMaxHeight(40);
    for (auto* const child : {plain, fixed, limited})
        layout.Add(child);
    host.Layout();
    EXPECT_EQ(plain->available.cx, 170);
    EXPECT_EQ(plain->available.cy, 120);
    EXPECT_EQ(fixed->available.cx, 50);
    EXPECT_EQ(fixed->available.cy, 30);
    EXPECT_EQ(limited->available.cx, 70);
    EXPECT_EQ(limited->available.cy, 40);
}

TEST(VerticalLayoutTest, ScrolledChildrenStayWhereTheyAreWhenLaidOutAgain)
{
    ControlHost host{200, 120};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, false);
    for (int i = 0; i < 10; ++i) {
        auto* const child = new CControlUI;
        child->SetFixedHeight(30);
        layout.Add(child);
    }
    host.Layout();
    layout.SetScrollPos({0, 45});
    const std::wstring before = Places(layout);
    EXPECT_EQ(layout.GetItemAt(0)->GetY(), -45);
    layout.NeedUpdate();
    host.Layout();
    EXPECT_EQ(Places(layout), before);
}

TEST(VerticalLayoutTest, ManyHugeChildrenDoNotOverflow)
{
    ControlHost host{200, 120};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, true);
    for (int i = 0; i < 3000; ++i) {
        auto* const child = new CControlUI;
        child->SetFixedHeight(1'000'000);
        child->SetMaxHeight(1'000'000);
        child->SetPadding({1'000'000, 1'000'000, 1'000'000, 1'000'000});
        layout.Add(child);
    }
    host.Layout();
    EXPECT_GT(layout.GetScrollRange().cy, 0);
    EXPECT_LE(layout.GetItemAt(0)->GetY(), layout.GetItemAt(2999)->GetY());
}

TEST(VerticalLayoutTest, AChildMayBeRemovedWhileItsSiblingIsPlaced)
{
    ControlHost host{200, 120};
    auto& layout = host.Add<CVerticalLayoutUI>();
    for (int i = 0; i < 4; ++i) {
        auto* const child = new CControlUI;
        child->SetFixedHeight(20);
        layout.Add(child);
    }
    test::EventSink remover{[&](void*) {
        if (layout.GetCount() == 4)
            layout.RemoveAt(1);
        return true;
    }};
    layout.GetItemAt(0)->OnSize += remover.Delegate();
    host.Layout();
    host.Layout();
    EXPECT_EQ(Places(layout), L"0,0,200,20 0,20,200,40 0,40,200,60");
}

TEST(VerticalLayoutTest, HugeNegativePaddingsDoNotOverflow)
{
    ControlHost host{200, 120};
    auto& layout = host.Add<CVerticalLayoutUI>();
    for (int i = 0; i < 3000; ++i) {
        auto* const child = new CControlUI;
        child->SetPadding({-1'000'000, -1'000'000, -1'000'000, -1'000'000});
        layout.Add(child);
    }
    host.Layout();
    for (int i = 0; i < layout.GetCount(); ++i)
        ASSERT_GE(layout.GetItemAt(i)->GetHeight(), 0);
    EXPECT_GT(layout.GetItemAt(0)->GetHeight(), 0);
}
