#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::Place;

namespace {

struct Row {
    const char* name;
    const wchar_t* attributes; // of a child of a container at 10,10,110,70
    Place place;
    Place scaled; // at 150 percent, of a container at 15,15,165,105
};

const Row kRows[] = {
    {"FromTheCorner", L"float=\"true\" pos=\"5,6,25,16\"", {15, 16, 35, 26}, {23, 24, 53, 39}},
    {"FromTheFarCorner",
     L"float=\"true\" pos=\"-30,-20,-10,-8\"",
     {100, 62, 120, 74},
     {150, 93, 180, 111}},
    {"Fractions", L"float=\"0.5,0.5,1,1\"", {60, 40, 110, 70}, {90, 60, 165, 105}},
    {"Everything", L"float=\"0,0,1,1\"", {10, 10, 110, 70}, {15, 15, 165, 105}},
    {"FractionsAndPosition",
     L"float=\"0.5,0,0.5,0\" pos=\"4,2,14,22\"",
     {64, 12, 74, 32},
     {96, 18, 111, 48}},
    {"Centred",
     L"float=\"true\" floatalign=\"center,vcenter\" width=\"20\" height=\"10\"",
     {50, 35, 70, 45},
     {75, 52, 105, 67}},
    {"BottomRight",
     L"float=\"true\" floatalign=\"right,bottom\" width=\"20\" height=\"10\"",
     {90, 60, 110, 70},
     {135, 90, 165, 105}},
    {"AlignedInOneDirection",
     L"float=\"true\" floatalign=\"right\" pos=\"5,6,25,16\"",
     {90, 16, 110, 26},
     {135, 24, 165, 39}},
};

class FloatPlacesTest : public testing::TestWithParam<Row> {};

RECT PlaceAt(ControlHost& host, const Row& row)
{
    // Inset and scroll bars of the container do not matter to a floating child.
    const std::wstring skin =
        std::wstring(L"<Window><Container inset=\"10,10,10,10\"><VBox inset=\"9,9,9,9\" "
                     L"vscrollbar=\"true\" fixedscrollbar=\"true\"><Control name=\"c\" ") +
        row.attributes + L"/></VBox></Container></Window>";
    return host.Load(skin.c_str()) ? host.Find<CControlUI>(L"c").GetPos() : RECT{};
}

} // namespace

TEST_P(FloatPlacesTest, At100Percent)
{
    ControlHost host{120, 80};
    EXPECT_EQ(Place(PlaceAt(host, GetParam())), GetParam().place);
}

TEST_P(FloatPlacesTest, At150Percent)
{
    ControlHost host{180, 120, 144};
    EXPECT_EQ(Place(PlaceAt(host, GetParam())), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(Rows, FloatPlacesTest, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row>& info) {
                             return std::string(info.param.name);
                         });

TEST(FloatTest, OnlyVisibleFloatingChildrenArePlacedFreely)
{
    class Open : public CContainerUI {
    public:
        using CContainerUI::SetFloatPos;
    };
    ControlHost host{100, 60};
    auto& container = host.Add<Open>();
    auto* const child = new CControlUI;
    container.Add(child);
    child->SetFixedWidth(10);
    child->SetFixedHeight(10);
    host.Layout();
    container.SetFloatPos(0);
    EXPECT_EQ(Place(child->GetPos()), Place(0, 0, 100, 60));
    child->SetFloat(true);
    child->SetVisible(false);
    container.SetFloatPos(0);
    EXPECT_EQ(Place(child->GetPos()), Place(0, 0, 100, 60));
    child->SetVisible(true);
    container.SetFloatPos(0);
    container.SetFloatPos(1);
    container.SetFloatPos(-1);
    EXPECT_EQ(Place(child->GetPos()), Place(0, 0, 10, 10));
}

TEST(FloatTest, AbsurdFractionsDoNotOverflow)
{
    ControlHost host{100, 60};
    auto& container = host.Add<CContainerUI>();
    auto* const child = new CControlUI;
    container.Add(child);
    child->SetAttribute(L"float", L"-1e300,nan,1e300,inf");
    container.SetPos({-2'000'000'000, -2'000'000'000, 2'000'000'000, 2'000'000'000});
    EXPECT_LE(child->GetX(), child->GetX() + child->GetWidth());
    EXPECT_GE(child->GetHeight(), 0);
}
