#include "duilib/Control/RowOwner.h"
#include "duilib/Control/TestPictures.h"
#include "duilib/Core/ControlKit.h"

#include <gtest/gtest.h>

#include <memory>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::Canvas;
using test::ControlHost;
using test::EventSink;
using test::Picture;
using test::Place;

namespace {

class ControlCopyTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    CControlUI& original = host.Add<CControlUI>();
};

// Every class without children, with all that shows of it set.
template <class Control>
class ControlLookTest : public testing::Test {
protected:
    ControlLookTest()
    {
        owner.info.dwSelectedBkColor = 0xFFC0FFC0;
        AddColumns(host.Manager(), L"one", {Argb{0xFFFF8000}});
        AddColumns(host.Manager(), L"two", {Argb{0xFF0080FF}});
        Prepare(original);
        original.ApplyAttributeList(
            L"text=\"Text\" textcolor=\"#FF800000\" textpadding=\"3,2,1,0\" align=\"right\" "
            L"bkcolor=\"#FFFFFFC0\" bordercolor=\"#FF00FF00\" bordersize=\"2\" "
            L"foreimage=\"file='one' dest='20,20,30,30'\" "
            L"normalimage=\"file='two' dest='4,4,12,12'\" "
            L"selectedimage=\"file='one' dest='30,4,40,20'\" "
            L"forecolor=\"#FF8080FF\" min=\"10\" max=\"60\" value=\"30\" "
            L"isstretchfore=\"false\" thumbsize=\"8,20\" thumbimage=\"two\" range=\"90\" "
            L"thumbnormalimage=\"one\" button1normalimage=\"two\" tipvalue=\"hint\"");
        if constexpr (std::is_base_of_v<COptionUI, Control>)
            original.Selected(true, false);
        original.SetPos({0, 0, 60, 40});
    }

    void Prepare(Control& control)
    {
        control.SetManager(&host.Manager(), nullptr, false);
        if constexpr (std::is_base_of_v<CListElementUI, Control>) {
            control.SetOwner(&owner);
            control.SetIndex(2);
        }
    }

    static Picture Look(Control& control)
    {
        const Canvas canvas(60, 40);
        control.Paint(canvas.Dc(), {0, 0, 60, 40}, nullptr);
        return canvas.Take();
    }

    ControlHost host{60, 40};
    test::RowOwner owner;
    Control original;
};

using ControlsWithoutChildren =
    testing::Types<CControlUI, CLabelUI, CTextUI, CButtonUI, COptionUI, CCheckBoxUI, CEditUI,
                   CProgressUI, CSliderUI, CScrollBarUI, CListLabelElementUI, CListTextElementUI>;
TYPED_TEST_SUITE(ControlLookTest, ControlsWithoutChildren);

} // namespace

TYPED_TEST(ControlLookTest, ACopyShowsAndMeasuresTheSame)
{
    TypeParam plain;
    this->Prepare(plain);
    plain.SetPos({0, 0, 60, 40});
    const Picture expected = this->Look(this->original);
    ASSERT_FALSE(this->Look(plain) == expected) << "there is something to copy";
    const SIZE size = this->original.EstimateSize({500, 500});

    TypeParam copy(this->original);
    TypeParam assigned;
    this->Prepare(assigned);
    assigned = this->original;
    this->original.ApplyAttributeList(L"text=\"other\" bkcolor=\"#FF000000\" value=\"50\" "
                                      L"foreimage=\"\" thumbimage=\"one\" bordersize=\"5\"");
    for (TypeParam* const each : {&copy, &assigned}) {
        SCOPED_TRACE(each == &copy ? "constructed" : "assigned");
        EXPECT_EQ(this->Look(*each), expected);
        EXPECT_EQ(each->EstimateSize({500, 500}).cx, size.cx);
        EXPECT_EQ(each->EstimateSize({500, 500}).cy, size.cy);
    }
}

TEST(ControlValueTest, ACopyHasAllValues)
{
    CControlUI original;
    original.SetPos({1, 2, 30, 40});
    original.ApplyAttributeList(
        L"name=\"n\" text=\"t\" tooltip=\"tip\" userdata=\"u\" virtualwnd=\"v\" width=\"1\" "
        L"height=\"2\" minwidth=\"3\" minheight=\"4\" maxwidth=\"5\" maxheight=\"6\" "
        L"padding=\"1,2,3,4\" float=\"0,0,1,1\" floatalign=\"right\" bkcolor=\"#FF000001\" "
        L"bkcolor2=\"#FF000002\" bkcolor3=\"#FF000003\" forecolor=\"#FF000004\" "
        L"bordercolor=\"#FF000005\" focusbordercolor=\"#FF000006\" colorhsl=\"true\" "
        L"gradient=\"hor\" leftbordersize=\"7\" borderstyle=\"2\" borderround=\"8,9\" "
        L"bkimage=\"b\" foreimage=\"f\" enabled=\"false\" mouse=\"false\" keyboard=\"false\" "
        L"menu=\"true\" drag=\"true\" drop=\"true\" richevent=\"true\" shortcut=\"s\" "
        L"cursor=\"hand\" own=\"mine\"");
    original.SetTag(77);
    original.SetFixedXY({10, 11});
    original.SetToolTipWidth(123);
    original.SetBorderSize(3);
    original.SetVisible(false);

    const auto check = [](CControlUI& copy) {
        EXPECT_EQ(Place(copy.GetPos()), Place(1, 2, 30, 40));
        EXPECT_STREQ(copy.GetName(), L"n");
        EXPECT_STREQ(copy.GetText(), L"t");
        EXPECT_STREQ(copy.GetToolTip(), L"tip");
        EXPECT_STREQ(copy.GetUserData(), L"u");
        EXPECT_STREQ(copy.GetVirtualWnd(), L"v");
        EXPECT_EQ(copy.GetFixedWidth(), 1);
        EXPECT_EQ(copy.GetFixedHeight(), 2);
        EXPECT_EQ(copy.GetMinWidth(), 3);
        EXPECT_EQ(copy.GetMinHeight(), 4);
        EXPECT_EQ(copy.GetMaxWidth(), 5);
        EXPECT_EQ(copy.GetMaxHeight(), 6);
        EXPECT_EQ(Place(copy.GetPadding()), Place(1, 2, 3, 4));
        EXPECT_TRUE(copy.IsFloat());
        EXPECT_EQ(copy.GetFloatPercent().right, 1);
        EXPECT_EQ(copy.GetFloatAlign(), static_cast<UINT>(DT_RIGHT));
        EXPECT_EQ(copy.GetBkColor(), 0xFF000001);
        EXPECT_EQ(copy.GetBkColor2(), 0xFF000002);
        EXPECT_EQ(copy.GetBkColor3(), 0xFF000003);
        EXPECT_EQ(copy.GetForeColor(), 0xFF000004);
        EXPECT_EQ(copy.GetBorderColor(), 0xFF000005);
        EXPECT_EQ(copy.GetFocusBorderColor(), 0xFF000006);
        EXPECT_TRUE(copy.IsColorHSL());
        EXPECT_STREQ(copy.GetGradient(), L"hor");
        EXPECT_EQ(copy.GetBorderSize(), 3);
        EXPECT_EQ(copy.GetLeftBorderSize(), 7);
        EXPECT_EQ(copy.GetBorderStyle(), 2);
        EXPECT_EQ(copy.GetBorderRound().cy, 9);
        EXPECT_STREQ(copy.GetBkImage(), L"b");
        EXPECT_STREQ(copy.GetForeImage(), L"f");
        EXPECT_FALSE(copy.IsEnabled());
        EXPECT_FALSE(copy.IsMouseEnabled());
        EXPECT_FALSE(copy.IsKeyboardEnabled());
        EXPECT_FALSE(copy.IsVisible());
        EXPECT_TRUE(copy.IsContextMenuUsed());
        EXPECT_TRUE(copy.IsDragEnabled());
        EXPECT_TRUE(copy.IsDropEnabled());
        EXPECT_TRUE(copy.IsRichEvent());
        EXPECT_EQ(copy.GetShortcut(), L's');
        EXPECT_EQ(copy.GetCursor(), DUI_HAND);
        EXPECT_EQ(copy.GetTag(), 77u);
        EXPECT_EQ(copy.GetFixedXY().cy, 11);
        EXPECT_EQ(copy.GetToolTipWidth(), 123);
        EXPECT_STREQ(copy.GetCustomAttribute(L"own"), L"mine");
    };
    {
        SCOPED_TRACE("constructed");
        CControlUI copy(original);
        check(copy);
    }
    {
        SCOPED_TRACE("assigned");
        CControlUI copy;
        copy = original;
        check(copy);
    }
}

TEST(ControlValueTest, CustomAttributesAreDuplicated)
{
    CControlUI original;
    original.AddCustomAttribute(L"a", L"1");
    CControlUI copy(original);
    copy.RemoveAllCustomAttribute();
    copy.AddCustomAttribute(L"a", L"2");
    EXPECT_STREQ(original.GetCustomAttribute(L"a"), L"1");
    EXPECT_STREQ(copy.GetCustomAttribute(L"a"), L"2");
}

TEST(ControlValueTest, DelegatesAreDuplicated)
{
    EventSink listener{[](void*) { return true; }};
    auto original = std::make_unique<CControlUI>();
    original->OnInit += listener.Delegate();
    CControlUI copy(*original);
    original.reset();
    copy.OnInit(&copy);
    EXPECT_EQ(listener.Calls(), 1);
    copy.OnInit -= listener.Delegate();
    copy.OnInit(&copy);
    EXPECT_EQ(listener.Calls(), 1);
}

TEST(ControlValueTest, AssigningToItselfChangesNothing)
{
    EventSink listener{[](void*) { return true; }};
    CControlUI control;
    control.SetText(L"t");
    control.AddCustomAttribute(L"a", L"1");
    control.OnInit += listener.Delegate();
    CControlUI& same = control;
    control = same;
    control.OnInit(&control);
    EXPECT_STREQ(control.GetText(), L"t");
    EXPECT_STREQ(control.GetCustomAttribute(L"a"), L"1");
    EXPECT_EQ(listener.Calls(), 1);
}

TEST_F(ControlCopyTest, ACopyIsRegisteredNowhere)
{
    original.SetName(L"original");
    host.Manager().InitControls(&original);
    original.SetTimer(1, 10);
    original.SetFocus();
    {
        const CControlUI copy(original);
        EXPECT_EQ(host.Manager().FindControl(L"original"), &original);
        EXPECT_EQ(host.Timers().size(), 1u);
    }
    EXPECT_EQ(host.Manager().FindControl(L"original"), &original);
    EXPECT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Manager().GetFocus(), &original);
}

TEST_F(ControlCopyTest, ACopyHasNoShareInThePressOfTheMouse)
{
    auto& button = host.Add<CButtonUI>();
    host.Press(25, 12);
    {
        const CButtonUI copy(button);
        CButtonUI assigned;
        assigned = button;
    }
    EXPECT_TRUE(host.Manager().IsCaptured());
    host.Release(25, 12);
    ASSERT_EQ(host.Sent(DUI_MSGTYPE_CLICK).size(), 1u);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_CLICK)[0].sender, &button);
}

TEST(ControlValueTest, SettingsThatDoNotShowAreCopied)
{
    CSliderUI slider;
    slider.SetChangeStep(7);
    slider.SetCanSendMove(true);
    CSliderUI sliderCopy(slider);
    EXPECT_EQ(sliderCopy.GetChangeStep(), 7);
    EXPECT_TRUE(sliderCopy.GetCanSendMove());

    CProgressUI progress;
    progress.SetMinValue(-5);
    progress.SetMaxValue(5);
    progress.SetValue(-3);
    progress.SetHorizontal(false);
    CProgressUI progressCopy(progress);
    EXPECT_EQ(progressCopy.GetMinValue(), -5);
    EXPECT_EQ(progressCopy.GetMaxValue(), 5);
    EXPECT_EQ(progressCopy.GetValue(), -3);
    EXPECT_FALSE(progressCopy.IsHorizontal());

    CCheckBoxUI box;
    box.SetAutoCheck(true);
    box.SetCheck(true);
    ControlHost host{50, 24};
    auto& boxCopy = host.Add<CCheckBoxUI>(box);
    EXPECT_TRUE(boxCopy.GetCheck());
    host.Click(25, 12);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_CHECKCLICK).size(), 1u);
}

TEST_F(ControlCopyTest, ACopyTakesItsOwnTimersAlong)
{
    {
        CControlUI copy(original);
        EXPECT_TRUE(copy.SetTimer(5, 10));
        EXPECT_EQ(host.Timers().size(), 1u);
    }
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ControlCopyTest, AssigningLeavesThePlaceOfTheTargetAlone)
{
    CControlUI loose;
    loose.SetText(L"loose");
    original = loose;
    EXPECT_STREQ(original.GetText(), L"loose");
    EXPECT_EQ(original.GetManager(), &host.Manager());
    EXPECT_EQ(original.GetParent(), host.Root());
    loose = original;
    EXPECT_EQ(loose.GetManager(), nullptr);
    EXPECT_EQ(loose.GetParent(), nullptr);
}

TEST(ControlOutlivingTest, ACopyMayOutliveTheWindow)
{
    std::unique_ptr<CControlUI> copy;
    {
        ControlHost host{50, 24};
        auto& original = host.Add<CControlUI>();
        original.SetText(L"t");
        copy = std::make_unique<CControlUI>(original);
    }
    EXPECT_STREQ(copy->GetText(), L"t");
    copy.reset();
}

TEST(ControlOutlivingTest, AScrollBarIsCopiedWithItsPictures)
{
    CScrollBarUI original;
    original.SetScrollRange(100);
    original.SetScrollPos(40);
    original.SetThumbHotImage(L"hot.png");
    original.SetShowButton1(false);
    CScrollBarUI copy(original);
    EXPECT_EQ(copy.GetScrollPos(), 40);
    EXPECT_STREQ(copy.GetThumbHotImage(), L"hot.png");
    EXPECT_FALSE(copy.GetShowButton1());
    copy.SetScrollPos(50);
    EXPECT_EQ(original.GetScrollPos(), 40);
}
