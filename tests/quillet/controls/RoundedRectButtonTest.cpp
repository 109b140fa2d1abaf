#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"
#include "support/ControlHost.h"
#include "support/TempFolder.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace test {
namespace {

using namespace DuiLib;
using Button = CRoundedRectButtonUI;

constexpr wchar_t kImages[] = L"drawable/corvane_common/btn_blue_round_";

// The message of the exception that an attribute raises.
template <class Exception>
std::string ErrorOf(CControlUI& control, const wchar_t* name, const wchar_t* value)
{
    try {
        control.SetAttribute(name, value);
    } catch (const Exception& error) {
        return error.what();
    }
    return "nothing raised";
}

class RoundedRectButtonTest : public testing::Test {
protected:
    Button button;
};

TEST_F(RoundedRectButtonTest, AnswersItsOwnNameAndThatOfAControlOnly)
{
    EXPECT_STREQ(button.GetClass(), L"RoundedRectButtonUI");
    EXPECT_EQ(button.GetInterface(L"RoundedRectButton"), &button);
    EXPECT_EQ(button.GetInterface(L"ROUNDEDRECTBUTTON"), &button);
    EXPECT_EQ(button.GetInterface(L"Control"), static_cast<CControlUI*>(&button));
    EXPECT_EQ(button.GetInterface(L"Button"), nullptr);
    EXPECT_EQ(button.GetInterface(L"Label"), nullptr);
}

TEST_F(RoundedRectButtonTest, IsMadeByItsFunction)
{
    CControlUI* const made = Button::CreateControl();
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->GetClass(), L"RoundedRectButtonUI");
    delete made;
}

TEST_F(RoundedRectButtonTest, IsAlwaysATabStopWithACursor)
{
    EXPECT_EQ(button.GetControlFlags(), UINT{UIFLAG_TABSTOP | UIFLAG_SETCURSOR});
    button.SetEnabled(false);
    button.SetKeyboardEnabled(false);
    EXPECT_EQ(button.GetControlFlags(), UINT{UIFLAG_TABSTOP | UIFLAG_SETCURSOR});
}

TEST_F(RoundedRectButtonTest, IsPresetWithSizeCursorColoursAndPictures)
{
    EXPECT_EQ(button.GetFixedHeight(), 40);
    EXPECT_TRUE(button.IsMouseEnabled());
    EXPECT_EQ(button.GetCursor(), DUI_HAND);
    EXPECT_FALSE(button.IsChecked());
    EXPECT_FALSE(button.IsCheckable());
    EXPECT_EQ(button.GetTextColor(), 0xFFFFFFFFu);
    EXPECT_EQ(button.GetTextColor(Button::Normal), 0xFFFFFFFFu);
    EXPECT_EQ(button.GetDisabledTextColor(), 0xFFFDFDFDu);
    EXPECT_EQ(button.GetNormalImage(), std::wstring(kImages) + L"normal.png");
    EXPECT_EQ(button.GetPushedImage(), std::wstring(kImages) + L"press.png");
    EXPECT_EQ(button.GetHotImage(), std::wstring(kImages) + L"hover.png");
    EXPECT_EQ(button.GetDisabledImage(), std::wstring(kImages) + L"disable.png");
}

TEST_F(RoundedRectButtonTest, TheNormalStateIsNumberZero)
{
    EXPECT_EQ(Button::Normal, 0);
}

TEST_F(RoundedRectButtonTest, KeepsCheckedAndCheckableApart)
{
    button.SetChecked(true);
    EXPECT_TRUE(button.IsChecked());
    EXPECT_FALSE(button.IsCheckable());
    button.SetCheckable(true);
    EXPECT_TRUE(button.IsCheckable());
    button.SetChecked(false);
    EXPECT_FALSE(button.IsChecked());
}

TEST_F(RoundedRectButtonTest, OnlyTheNormalTextIsShown)
{
    button.SetText(L"normal", Button::Normal);
    button.SetText(L"hot", Button::Hot);
    EXPECT_STREQ(button.GetText(), L"normal");
    EXPECT_STREQ(button.GetText(Button::Normal), L"normal");
    EXPECT_STREQ(button.GetText(Button::Hot), L"hot");
    EXPECT_STREQ(button.GetText(Button::Pushed), L"");
}

TEST_F(RoundedRectButtonTest, ATextColourOfAnyStateIsTheLabels)
{
    button.SetTextColor(0xFF112233, Button::Hot);
    EXPECT_EQ(button.GetTextColor(), 0xFF112233u);
    EXPECT_EQ(button.GetTextColor(Button::Hot), 0xFF112233u);
    EXPECT_EQ(button.GetTextColor(Button::Normal), 0xFFFFFFFFu);
    button.SetTextColor(0xFF445566, Button::Disabled);
    EXPECT_EQ(button.GetTextColor(), 0xFF445566u);
    EXPECT_EQ(button.GetDisabledTextColor(), 0xFFFDFDFDu);
}

TEST_F(RoundedRectButtonTest, BackgroundAndBorderColoursAreOnlyKept)
{
    button.SetBackgroundColor(0xFF0000AA, Button::Normal);
    button.SetBorderColor(0xFF00BB00, Button::Pushed);
    EXPECT_EQ(button.GetBackgroundColor(Button::Normal), 0xFF0000AAu);
    EXPECT_EQ(button.GetBorderColor(Button::Pushed), 0xFF00BB00u);
    EXPECT_EQ(button.GetBackgroundColor(Button::Hot), 0u);
    EXPECT_EQ(button.GetBkColor(), 0u);
    EXPECT_EQ(button.GetBorderColor(), 0u);
    EXPECT_EQ(button.GetPushedBorderColor(), 0u);
}

TEST_F(RoundedRectButtonTest, TheButtonsOwnSettersAreStillThere)
{
    button.SetText(L"plain");
    button.SetTextColor(0xFF010203);
    button.SetBorderColor(0xFF040506);
    EXPECT_STREQ(button.GetText(), L"plain");
    EXPECT_EQ(button.GetTextColor(), 0xFF010203u);
    EXPECT_EQ(button.GetBorderColor(), 0xFF040506u);
    EXPECT_STREQ(button.GetText(Button::Normal), L"");
}

TEST_F(RoundedRectButtonTest, TheRoundedWidthStartsAtMinusOne)
{
    const FakeShcore shcore;
    EXPECT_EQ(Button().GetRoundedWidth(), -1);
}

TEST_F(RoundedRectButtonTest, TheRoundedWidthAtTheStartIsScaledToo)
{
    FakeShcore shcore;
    shcore.dpi = {192};
    EXPECT_EQ(Button().GetRoundedWidth(), -2);
    EXPECT_EQ(shcore.monitors.size(), 2u);
}

TEST_F(RoundedRectButtonTest, TheRoundedWidthIsScaledTowardZero)
{
    FakeShcore shcore;
    shcore.dpi = {144};
    button.SetRoundedWidth(5);
    EXPECT_EQ(button.GetRoundedWidth(), 7);
    button.SetRoundedWidth(-5);
    EXPECT_EQ(button.GetRoundedWidth(), -7);
    button.SetRoundedWidth(std::numeric_limits<int>::max());
    EXPECT_EQ(button.GetRoundedWidth(), std::numeric_limits<int>::max());
}

TEST_F(RoundedRectButtonTest, DisablingShowsTheArrowAndEnablingTheHand)
{
    button.SetEnabled(false);
    EXPECT_FALSE(button.IsEnabled());
    EXPECT_EQ(button.GetCursor(), DUI_ARROW);
    button.SetEnabled();
    EXPECT_TRUE(button.IsEnabled());
    EXPECT_EQ(button.GetCursor(), DUI_HAND);
}

TEST_F(RoundedRectButtonTest, TheTextAttributeIsTheNormalText)
{
    for (const wchar_t* const name : {L"text", L"TEXT", L"Text"}) {
        button.SetAttribute(name, name);
        EXPECT_STREQ(button.GetText(), name);
        EXPECT_STREQ(button.GetText(Button::Normal), name);
    }
}

TEST_F(RoundedRectButtonTest, TheTextAttributeIsSetTwice)
{
    // The second time through the base, which finds the text already there.
    struct Watched : Button {
        using Button::SetText;
        void SetText(LPCTSTR text) override
        {
            ++sets;
            before = GetText();
            Button::SetText(text);
        }
        int sets = 0;
        CDuiString before;
    } watched;
    watched.SetAttribute(L"text", L"twice");
    EXPECT_EQ(watched.sets, 1);
    EXPECT_STREQ(watched.before, L"twice");
    EXPECT_STREQ(watched.GetText(), L"twice");
}

TEST_F(RoundedRectButtonTest, TheRoundWidthAttributeIsANumber)
{
    struct Row {
        const wchar_t* text;
        int width;
    };
    const FakeShcore shcore;
    for (const auto& [text, width] : {Row{L"12", 12}, Row{L"-7", -7}, Row{L"+3", 3}, Row{L"  8", 8},
                                      Row{L"9px", 9}, Row{L"2147483647", 2147483647}}) {
        button.SetAttribute(L"roundwidth", text);
        EXPECT_EQ(button.GetRoundedWidth(), width) << text;
    }
    button.SetAttribute(L"RoundWidth", L"4");
    EXPECT_EQ(button.GetRoundedWidth(), 4);
}

TEST_F(RoundedRectButtonTest, ARoundWidthThatIsNoNumberIsAnInvalidArgument)
{
    for (const wchar_t* const text : {L"abc", L"", L"  ", L"-", L"px9"})
        EXPECT_EQ(ErrorOf<std::invalid_argument>(button, L"roundwidth", text),
                  "invalid stoi argument")
            << text;
    EXPECT_EQ(ErrorOf<std::invalid_argument>(button, L"roundwidth", nullptr),
              "invalid stoi argument");
}

TEST_F(RoundedRectButtonTest, ARoundWidthBeyondIntIsOutOfRange)
{
    for (const wchar_t* const text : {L"2147483648", L"-2147483649", L"99999999999999999999999999"})
        EXPECT_EQ(ErrorOf<std::out_of_range>(button, L"roundwidth", text),
                  "stoi argument out of range")
            << text;
}

TEST_F(RoundedRectButtonTest, ARaisedErrorLeavesWidthAndBaseAlone)
{
    const FakeShcore shcore;
    button.SetRoundedWidth(6);
    EXPECT_THROW(button.SetAttribute(L"roundwidth", L"abc"), std::invalid_argument);
    EXPECT_EQ(button.GetRoundedWidth(), 6);
    EXPECT_EQ(button.GetCustomAttribute(L"roundwidth"), nullptr);
}

TEST_F(RoundedRectButtonTest, TheRoundWidthAttributeIsPassedOn)
{
    button.SetAttribute(L"roundwidth", L"12");
    EXPECT_STREQ(button.GetCustomAttribute(L"roundwidth"), L"12");
}

TEST_F(RoundedRectButtonTest, OtherAttributesAreTheButtons)
{
    button.SetAttribute(L"normalimage", L"other.png");
    button.SetAttribute(L"hottextcolor", L"#FF123456");
    button.SetAttribute(L"height", L"30");
    EXPECT_STREQ(button.GetNormalImage(), L"other.png");
    EXPECT_EQ(button.GetHotTextColor(), 0xFF123456u);
    EXPECT_EQ(button.GetFixedHeight(), 30);
}

// In a window, with four plain pictures.
class RoundedRectButtonWindowTest : public testing::Test {
protected:
    static constexpr Argb kNormal{0xFF0000FF};
    static constexpr Argb kPressed{0xFF000080};
    static constexpr Argb kHover{0xFF4040FF};
    static constexpr Argb kDisabled{0xFF808080};

    RoundedRectButtonWindowTest()
    {
        for (const auto& [name, colour] :
             {std::pair(L"normal", kNormal), std::pair(L"press", kPressed),
              std::pair(L"hover", kHover), std::pair(L"disable", kDisabled)}) {
            const std::wstring path =
                folder.Write(std::wstring(kImages) + name + L".png", std::string_view());
            Picture(8, 8, colour).Save(path);
        }
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    }
    ~RoundedRectButtonWindowTest() override { CPaintManagerUI::SetResourcePath(L""); }

    Argb Face() { return host.Paint().At(20, 20); }

    TempFolder folder;
    ControlHost host{120, 40};
    Button& button = host.Add<Button>();
};

TEST_F(RoundedRectButtonWindowTest, ShowsThePictureOfItsState)
{
    EXPECT_EQ(Face(), kNormal);
    host.MoveMouse(20, 20);
    EXPECT_EQ(Face(), kHover);
    host.Press(20, 20);
    EXPECT_EQ(Face(), kPressed);
    host.Release(20, 20);
    host.LeaveMouse();
    EXPECT_EQ(Face(), kNormal);
    button.SetEnabled(false);
    EXPECT_EQ(Face(), kDisabled);
}

TEST_F(RoundedRectButtonWindowTest, PaintsWithoutLookingAtTheColoursOfItsStates)
{
    const Picture before = host.Paint();
    for (const auto role :
         {Button::Normal, Button::Hot, Button::Pushed, Button::Disabled, Button::Checked}) {
        button.SetBackgroundColor(0xFFFF0000, role);
        button.SetBorderColor(0xFF00FF00, role);
    }
    button.SetText(L"hot", Button::Hot);
    button.SetRoundedWidth(12);
    button.SetCheckable(true);
    button.SetChecked(true);
    EXPECT_EQ(host.Paint(), before);
}

TEST_F(RoundedRectButtonWindowTest, PaintsItsTextInTheLastTextColour)
{
    button.SetText(L"MMMMMM", Button::Normal);
    button.SetTextColor(0xFFFF0000, Button::Pushed);
    const Picture picture = host.Paint();
    int reddish = 0;
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            reddish += (picture.At(x, y).value >> 16 & 0xFF) > 0xC0;
    EXPECT_GT(reddish, 10);
}

TEST_F(RoundedRectButtonWindowTest, ClicksAsAButton)
{
    host.Click(20, 20);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    button.SetEnabled(false);
    host.Click(20, 20);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
}

TEST_F(RoundedRectButtonWindowTest, PaintingNeverStopsTheTree)
{
    const Canvas canvas(120, 40);
    EXPECT_TRUE(button.DoPaint(canvas.Dc(), RECT{0, 0, 120, 40}, nullptr));
    EXPECT_EQ(canvas.Take().At(20, 20), kNormal);
}

TEST_F(RoundedRectButtonWindowTest, ItsSettersAskForAPaint)
{
    const auto asks = [&](auto set) {
        host.Paint();
        ::ValidateRect(host.Window(), nullptr);
        set();
        return ::GetUpdateRect(host.Window(), nullptr, FALSE) != FALSE;
    };
    EXPECT_TRUE(asks([&] { button.SetText(L"t", Button::Hot); }));
    EXPECT_TRUE(asks([&] { button.SetTextColor(0xFFFFFFFF, Button::Hot); }));
    EXPECT_TRUE(asks([&] { button.SetBackgroundColor(0xFFFFFFFF, Button::Hot); }));
    EXPECT_TRUE(asks([&] { button.SetBorderColor(0xFFFFFFFF, Button::Hot); }));
    EXPECT_TRUE(asks([&] { button.SetRoundedWidth(3); }));
    EXPECT_TRUE(asks([&] { button.SetEnabled(true); }));
}

} // namespace
} // namespace test
