#include "duilib/Core/ControlKit.h"
#include "support/Cursors.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::Place;

namespace {

constexpr Argb kBar{0xFF555555}; // black at two thirds over white

// A strip of 6 at the inner edge of a layout that the user may drag.
class SeparatorTest : public testing::Test {
protected:
    ControlHost host{200, 120};

    void Load(const wchar_t* skin)
    {
        ASSERT_NE(host.Load(skin), nullptr);
        host.Layout();
    }

    void Drag(POINT from, POINT to)
    {
        host.Press(from.x, from.y);
        host.MoveMouse(to.x, to.y);
        host.Release(to.x, to.y);
        host.Layout();
    }
};

} // namespace

TEST_F(SeparatorTest, TheStripLiesAtTheEdgeOfItsSign)
{
    Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" sepheight=\"6\"/>"
         L"<HBox name=\"h\" height=\"40\" width=\"80\" sepwidth=\"6\"/></VBox></Window>");
    auto& stack = host.Find<CVerticalLayoutUI>(L"v");
    auto& row = host.Find<CHorizontalLayoutUI>(L"h");
    EXPECT_EQ(Place(stack.GetThumbRect()), Place(0, 34, 200, 40));
    EXPECT_EQ(Place(row.GetThumbRect()), Place(74, 40, 80, 80));
    stack.SetSepHeight(-6);
    row.SetSepWidth(-6);
    EXPECT_EQ(Place(stack.GetThumbRect()), Place(0, 0, 200, 6));
    EXPECT_EQ(Place(row.GetThumbRect()), Place(0, 40, 6, 80));
}

TEST_F(SeparatorTest, AStripAsksForTheCursorWhileEnabled)
{
    CVerticalLayoutUI stack;
    CHorizontalLayoutUI row;
    EXPECT_EQ(stack.GetControlFlags(), 0u);
    stack.SetSepHeight(4);
    row.SetSepWidth(-4);
    EXPECT_EQ(stack.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    EXPECT_EQ(row.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    stack.SetEnabled(false);
    EXPECT_EQ(stack.GetControlFlags(), 0u);
}

TEST_F(SeparatorTest, AttributesReachTheirSetters)
{
    CVerticalLayoutUI stack;
    CHorizontalLayoutUI row;
    stack.SetAttribute(L"sepheight", L"-5");
    stack.SetAttribute(L"sepimm", L"true");
    row.SetAttribute(L"sepwidth", L"7");
    row.SetAttribute(L"sepimm", L"true");
    EXPECT_EQ(stack.GetSepHeight(), -5);
    EXPECT_TRUE(stack.IsSepImmMode());
    EXPECT_EQ(row.GetSepWidth(), 7);
    EXPECT_TRUE(row.IsSepImmMode());
}

TEST_F(SeparatorTest, DraggingResizesOnRelease)
{
    Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" "
         L"sepheight=\"6\"/><Control/></VBox></Window>");
    auto& stack = host.Find<CVerticalLayoutUI>(L"v");
    host.Press(100, 37);
    host.MoveMouse(100, 57);
    host.Layout();
    EXPECT_EQ(stack.GetHeight(), 40);
    EXPECT_EQ(Place(stack.GetThumbRect(true)), Place(0, 54, 200, 60));
    host.Release(100, 57);
    host.Layout();
    EXPECT_EQ(stack.GetHeight(), 60);
}

TEST_F(SeparatorTest, ABarShowsWhereTheStripWillBe)
{
    Load(L"<Window><VBox bkcolor=\"#FFFFFFFF\"><VBox name=\"v\" height=\"40\" sepheight=\"6\"/>"
         L"<Control/></VBox></Window>");
    host.Press(100, 37);
    host.MoveMouse(100, 57);
    host.Layout();
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 1);
    const auto dragged = host.Screen();
    EXPECT_EQ(dragged.At(100, 53).value, 0xFFFFFFFF);
    EXPECT_NEAR(static_cast<int>(dragged.At(100, 57).value & 0xFF),
                static_cast<int>(kBar.value & 0xFF), 2);
    host.MoveMouse(100, 67);
    host.Layout();
    EXPECT_EQ(host.Screen().At(100, 57).value, 0xFFFFFFFF);
    host.Release(100, 67);
    host.Layout();
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
    EXPECT_EQ(host.Screen().At(100, 67).value, 0xFFFFFFFF);
}

TEST_F(SeparatorTest, ImmediateModeResizesWhileDragging)
{
    Load(L"<Window><HBox><HBox name=\"h\" width=\"80\" sepwidth=\"6\" sepimm=\"true\"/><Control/>"
         L"</HBox></Window>");
    auto& row = host.Find<CHorizontalLayoutUI>(L"h");
    host.Press(77, 50);
    host.MoveMouse(97, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 100);
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
    host.MoveMouse(87, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 90);
    host.Release(87, 50);
    host.MoveMouse(150, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 90);
}

TEST_F(SeparatorTest, AStripAtTheStartGrowsAgainstTheMouse)
{
    Load(
        L"<Window><HBox><Control/><HBox name=\"h\" width=\"80\" sepwidth=\"-6\"/></HBox></Window>");
    auto& row = host.Find<CHorizontalLayoutUI>(L"h");
    Drag({123, 50}, {103, 50});
    EXPECT_EQ(row.GetWidth(), 100);
    EXPECT_EQ(row.GetX(), 100);
}

TEST_F(SeparatorTest, TheSizeStaysWithinItsLimitsAndTheStripWaitsForTheMouse)
{
    Load(L"<Window><HBox><HBox name=\"h\" width=\"80\" minwidth=\"50\" maxwidth=\"120\" "
         L"sepwidth=\"6\" sepimm=\"true\"/><Control/></HBox></Window>");
    auto& row = host.Find<CHorizontalLayoutUI>(L"h");
    host.Press(77, 50);
    host.MoveMouse(190, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 120);
    host.MoveMouse(127, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 120);
    host.MoveMouse(107, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 110);
    host.MoveMouse(0, 50);
    host.Layout();
    EXPECT_EQ(row.GetWidth(), 50);
    host.Release(0, 50);
}

TEST_F(SeparatorTest, TheStripItselfCannotBeDraggedAway)
{
    Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" "
         L"sepheight=\"6\"/><Control/></VBox></Window>");
    Drag({100, 37}, {100, 0});
    EXPECT_EQ(host.Find<CVerticalLayoutUI>(L"v").GetHeight(), 6);
}

TEST_F(SeparatorTest, PressingBesideTheStripOrDisabledDragsNothing)
{
    Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" "
         L"sepheight=\"6\"/><Control/></VBox></Window>");
    auto& stack = host.Find<CVerticalLayoutUI>(L"v");
    Drag({100, 20}, {100, 60});
    EXPECT_EQ(stack.GetHeight(), 40);
    stack.SetEnabled(false);
    Drag({100, 37}, {100, 60});
    EXPECT_EQ(stack.GetHeight(), 40);
}

TEST_F(SeparatorTest, TheCursorTellsTheDirection)
{
    Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" sepheight=\"6\"/>"
         L"<HBox name=\"h\" width=\"80\" sepwidth=\"6\"/></VBox></Window>");
    TEventUI event{};
    event.Type = UIEVENT_SETCURSOR;
    event.ptMouse = {100, 37};
    host.Find<CControlUI>(L"v").Event(event);
    EXPECT_TRUE(test::IsCursorShown(MAKEINTRESOURCEW(DUI_SIZENS)));
    event.ptMouse = {77, 60};
    host.Find<CControlUI>(L"h").Event(event);
    EXPECT_TRUE(test::IsCursorShown(MAKEINTRESOURCEW(DUI_SIZEWE)));
    event.ptMouse = {10, 60};
    host.Find<CControlUI>(L"h").Event(event);
    EXPECT_TRUE(test::IsCursorShown(MAKEINTRESOURCEW(DUI_ARROW)));
}

TEST(SeparatorScaleTest, AStripGrowsWithTheScaleAndKeepsTheSizeInDesignPixels)
{
    ControlHost host{300, 180, 144};
    ASSERT_NE(host.Load(L"<Window><VBox><VBox name=\"v\" height=\"40\" sepheight=\"6\"/><Control/>"
                        L"</VBox></Window>"),
              nullptr);
    host.Layout();
    auto& stack = host.Find<CVerticalLayoutUI>(L"v");
    EXPECT_EQ(Place(stack.GetThumbRect()), Place(0, 51, 300, 60));
    host.Press(100, 55);
    host.MoveMouse(100, 85);
    host.Release(100, 85);
    host.Layout();
    EXPECT_EQ(stack.GetHeight(), 90);
    host.Manager().SetDPI(96);
    host.Layout();
    EXPECT_EQ(stack.GetHeight(), 60);
}

TEST(SeparatorEndTest, ALayoutMayDieWhileItIsDragged)
{
    ControlHost host{200, 120};
    host.Load(L"<Window><VBox name=\"root\"><VBox name=\"v\" height=\"40\" sepheight=\"6\"/>"
              L"</VBox></Window>");
    host.Layout();
    host.Press(100, 37);
    host.Find<CContainerUI>(L"root").RemoveAll();
    host.Pump();
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
    host.MoveMouse(100, 50);
    host.Release(100, 50);
    host.Paint();
}
