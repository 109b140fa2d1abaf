#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using namespace DuiLib;
using test::Argb;
using test::Canvas;
using test::ControlHost;
using test::Picture;
using test::Place;

namespace {

// An element of the skin, with the control around it that it needs.
struct Element {
    const wchar_t* name;
    const wchar_t* before = L"";
    const wchar_t* after = L"";
    const wchar_t* children = L"";
};

void PrintTo(const Element& element, std::ostream* out)
{
    *out << testing::PrintToString(std::wstring(element.name));
}

constexpr Argb kRed{0xFFFF0000};

// Each control of the factory by itself, red, with a child when it takes any.
class EveryControlTest : public testing::TestWithParam<Element> {
protected:
    static std::wstring Skin()
    {
        const Element& element = GetParam();
        return std::wstring(L"<Window><VerticalLayout>") + element.before + L"<" + element.name +
               L" name=\"it\" text=\"Text\" bkcolor=\"#FFFF0000\" height=\"40\" "
               L"itemtextcolor=\"#FF00FF00\">" +
               element.children + L"</" + element.name + L">" + element.after +
               L"</VerticalLayout></Window>";
    }

    static CControlUI& Load(ControlHost& host)
    {
        host.Load(Skin().c_str());
        return host.Find<CControlUI>(L"it");
    }

    static void AddPlaces(CControlUI& control, std::vector<Place>& places)
    {
        places.push_back(control.GetPos());
        auto* const container = static_cast<IContainerUI*>(control.GetInterface(L"IContainer"));
        for (int i = 0; container && i < container->GetCount(); ++i)
            AddPlaces(*container->GetItemAt(i), places);
    }
};

constexpr wchar_t kChildren[] =
    L"<Label height=\"10\" width=\"20\" text=\"a\"/><Button height=\"10\"/>";

const Element kElements[] = {
    {L"Button"},
    {L"CheckBox"},
    {L"ChildLayout"},
    {L"Combo", L"", L"", L"<ListLabelElement text=\"a\" selected=\"true\"/>"},
    {L"Container", L"", L"", kChildren},
    {L"Control"},
    {L"Edit"},
    {L"HorizontalLayout", L"", L"", kChildren},
    {L"Label"},
    {L"List", L"", L"", kChildren},
    {L"ListContainerElement", L"<List header=\"hidden\">", L"</List>", kChildren},
    {L"ListHeader", L"", L"", L"<ListHeaderItem text=\"a\" width=\"30\"/>"},
    {L"ListHeaderItem", L"<ListHeader>", L"</ListHeader>"},
    {L"ListLabelElement", L"<List header=\"hidden\">", L"</List>"},
    {L"ListTextElement", L"<List header=\"hidden\">", L"</List>"},
    {L"Menu", L"", L"", L"<MenuElement text=\"a\"/>"},
    {L"MenuElement", L"<Menu>", L"</Menu>"},
    {L"Option"},
    {L"Progress"},
    {L"ScrollBar"},
    {L"Slider"},
    {L"TabLayout", L"", L"", kChildren},
    {L"Text"},
    {L"TileLayout", L"", L"", kChildren},
    {L"TreeNode", L"<TreeView>", L"</TreeView>"},
    {L"TreeView", L"", L"", L"<TreeNode text=\"a\"><TreeNode text=\"b\"/></TreeNode>"},
    {L"VerticalLayout", L"", L"", kChildren},
};

// A container may paint its children without Paint, whatever was painted of them before.
TEST_P(EveryControlTest, IsPaintedWhollyByItsContainerAfterAPartOfIt)
{
    ControlHost host(80, 60);
    CControlUI& control = Load(host);
    const RECT whole{0, 0, 80, 60};

    const Canvas fresh(80, 60);
    control.Paint(fresh.Dc(), whole, nullptr);
    const Picture expected = fresh.Take();
    EXPECT_GT(expected.Count(kRed), 200) << "of its background";

    const Canvas before(80, 60);
    control.Paint(before.Dc(), {0, 0, 3, 3}, nullptr);
    const Canvas direct(80, 60);
    control.DoPaint(direct.Dc(), whole, nullptr);
    EXPECT_EQ(direct.Take(), expected);
}

TEST_P(EveryControlTest, SendsTheTicksOfTimersThatItDoesNotKnow)
{
    ControlHost host(80, 60);
    CControlUI& control = Load(host);
    ASSERT_TRUE(control.SetTimer(77, 100));
    const auto ticks = [&] {
        int count = 0;
        for (const auto& sent : host.Sent(DUI_MSGTYPE_TIMER))
            count += sent.sender == &control && sent.wParam == 77 ? 1 : 0;
        return count;
    };
    host.AdvanceFrames(1);
    EXPECT_EQ(ticks(), 1);
    control.SetEnabled(false);
    host.AdvanceFrames(1);
    EXPECT_EQ(ticks(), 2) << "disabled";
    control.SetVisible(false);
    host.AdvanceFrames(1);
    EXPECT_EQ(ticks(), 3) << "hidden";
}

TEST_P(EveryControlTest, StaysWhereItIsWhenItIsPlacedThereAgain)
{
    for (const int dpi : {96, 144}) {
        SCOPED_TRACE(dpi);
        ControlHost host(120, 90, dpi);
        CControlUI& control = Load(host);
        control.ApplyAttributeList(L"padding=\"1,2,3,4\" width=\"50\" inset=\"3,3,3,3\"");
        host.Layout();
        std::vector<Place> before;
        AddPlaces(control, before);
        control.SetPos(control.GetPos(), true);
        std::vector<Place> after;
        AddPlaces(control, after);
        EXPECT_EQ(after, before);
    }
}

INSTANTIATE_TEST_SUITE_P(All, EveryControlTest, testing::ValuesIn(kElements), [](const auto& info) {
    const std::wstring name = info.param.name;
    return std::string(name.begin(), name.end());
});

} // namespace
