#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kBase{0xFF202020};
constexpr Argb kHot{0xFF00A000};
constexpr Argb kPushed{0xFFA00000};
constexpr Argb kDisabled{0xFF808080};
constexpr Argb kFocused{0xFF0000A0};
constexpr Argb kSelected{0xFFA0A000};

constexpr wchar_t kText[] = L"HHHHHHHH";

// The states a test puts a button into, as bits.
enum State : unsigned { Rest = 0, Hot = 1, Pushed = 2, Focused = 4, Disabled = 8, Selected = 16 };

// What is in front of the control's picture, at a place that no border and no text reaches.
Argb Inside(const Picture& picture)
{
    return picture.At(6, 6);
}

template <class Control>
class States : public testing::Test {
protected:
    ControlHost host{60, 30};
    Control& control = host.Add<Control>();

    void Enter(unsigned state)
    {
        control.SetEnabled(true);
        host.Release(30, 500);
        host.LeaveMouse();
        host.Manager().SetFocus(nullptr);
        if constexpr (std::is_base_of_v<COptionUI, Control>)
            control.Selected((state & Selected) != 0, false);
        if (state & (Hot | Pushed))
            host.MoveMouse(30, 15);
        if (state & Pushed)
            host.Press(30, 15);
        if (state & Focused)
            control.SetFocus();
        else
            host.Manager().SetFocus(nullptr);
        if (state & Disabled)
            control.SetEnabled(false);
    }

    Picture PaintIn(unsigned state)
    {
        Enter(state);
        return host.Paint();
    }
};

struct Row {
    unsigned state;
    Argb expected;
};

using ButtonStates = States<CButtonUI>;
using OptionStates = States<COptionUI>;

TEST_F(ButtonStates, TheBackgroundFollowsTheState)
{
    control.SetBkColor(kBase.value);
    control.SetHotBkColor(kHot.value);
    control.SetPushedBkColor(kPushed.value);
    control.SetDisabledBkColor(kDisabled.value);
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed}, Row{Focused, kBase},
          Row{Focused | Hot, kHot}, Row{Disabled, kDisabled}, Row{Disabled | Hot, kDisabled}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(ButtonStates, WithoutABackgroundForTheStateTheBaseShows)
{
    control.SetBkColor(kBase.value);
    control.SetHotBkColor(kHot.value);
    EXPECT_EQ(Inside(PaintIn(Pushed)), kBase) << "a pushed button is not also drawn as hot";
    EXPECT_EQ(Inside(PaintIn(Disabled)), kBase);
}

TEST_F(ButtonStates, TheImageFollowsTheState)
{
    AddColumns(host.Manager(), L"normal", {kBase});
    AddColumns(host.Manager(), L"hot", {kHot});
    AddColumns(host.Manager(), L"pushed", {kPushed});
    AddColumns(host.Manager(), L"focused", {kFocused});
    AddColumns(host.Manager(), L"disabled", {kDisabled});
    control.SetNormalImage(L"normal");
    control.SetHotImage(L"hot");
    control.SetPushedImage(L"pushed");
    control.SetFocusedImage(L"focused");
    control.SetDisabledImage(L"disabled");
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed}, Row{Focused, kFocused},
          Row{Focused | Hot, kHot}, Row{Focused | Pushed, kPushed}, Row{Disabled, kDisabled},
          Row{Disabled | Hot, kDisabled}, Row{Disabled | Focused, kDisabled}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(ButtonStates, AStateWithoutAnImageShowsTheNormalOne)
{
    AddColumns(host.Manager(), L"normal", {kBase});
    AddColumns(host.Manager(), L"hot", {kHot});
    control.SetNormalImage(L"normal");
    control.SetHotImage(L"hot");
    control.SetPushedImage(L"there is no such picture");
    EXPECT_EQ(Inside(PaintIn(Pushed)), kBase);
    EXPECT_EQ(Inside(PaintIn(Disabled)), kBase);
    EXPECT_EQ(Inside(PaintIn(Focused)), kBase);
    EXPECT_STREQ(control.GetPushedImage(), L"there is no such picture");

    AddColumns(host.Manager(), L"there is no such picture", {kPushed});
    EXPECT_EQ(Inside(PaintIn(Pushed)), kPushed) << "a failed picture is tried again";
}

TEST_F(ButtonStates, FourColumnsServeAsNormalHotPushedAndDisabled)
{
    AddColumns(host.Manager(), L"states", {kBase, kHot, kPushed, kDisabled});
    control.SetStateImage(L"states");
    control.SetStateCount(4);
    for (const Row& row : {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed},
                           Row{Disabled, kDisabled}, Row{Focused, kBase}}) {
        SCOPED_TRACE(row.state);
        const Picture picture = PaintIn(row.state);
        EXPECT_EQ(picture.At(1, 1), row.expected);
        EXPECT_EQ(Inside(picture), row.expected);
        EXPECT_EQ(picture.At(57, 27), row.expected);
    }
}

TEST_F(ButtonStates, WithTwoColumnsTheSecondIsHotAndPushed)
{
    AddColumns(host.Manager(), L"states", {kBase, kHot});
    control.SetAttribute(L"stateimage", L"states");
    control.SetAttribute(L"statecount", L"2");
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kHot}, Row{Disabled, kBase}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(ButtonStates, WithThreeColumnsDisabledLooksNormal)
{
    AddColumns(host.Manager(), L"states", {kBase, kHot, kPushed});
    control.SetStateImage(L"states");
    control.SetStateCount(3);
    EXPECT_EQ(Inside(PaintIn(Pushed)), kPushed);
    EXPECT_EQ(Inside(PaintIn(Disabled)), kBase);
}

TEST_F(ButtonStates, WithoutACountTheWholePictureIsDrawn)
{
    AddColumns(host.Manager(), L"states", {kBase, kHot});
    control.SetStateImage(L"states");
    const Picture picture = PaintIn(Hot);
    EXPECT_EQ(picture.At(10, 15), kBase);
    EXPECT_EQ(picture.At(50, 15), kHot);
}

TEST_F(ButtonStates, ANormalImageReplacesTheColumns)
{
    AddColumns(host.Manager(), L"normal", {kSelected});
    AddColumns(host.Manager(), L"states", {kBase, kHot});
    control.SetNormalImage(L"normal");
    control.SetStateImage(L"states");
    control.SetStateCount(2);
    EXPECT_EQ(Inside(PaintIn(Rest)), kSelected);
    EXPECT_EQ(Inside(PaintIn(Hot)), kSelected);
}

TEST_F(ButtonStates, TheForeImageFollowsTheState)
{
    AddColumns(host.Manager(), L"fore", {kBase});
    AddColumns(host.Manager(), L"hot", {kHot});
    AddColumns(host.Manager(), L"pushed", {kPushed});
    control.SetForeImage(L"fore");
    EXPECT_EQ(Inside(PaintIn(Hot)), kBase);
    control.SetHotForeImage(L"hot");
    EXPECT_EQ(Inside(PaintIn(Pushed)), kBase);
    control.SetPushedForeImage(L"pushed");
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed}, Row{Disabled, kBase}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(ButtonStates, ADerivedClassCanSupplyAStateImage)
{
    class Badge : public CButtonUI {
        LPCTSTR GetPushedForeImage() override { return L"badge"; }
    };
    auto& badge = host.Add<Badge>();
    AddColumns(host.Manager(), L"badge", {kSelected});
    host.Press(30, 15);
    EXPECT_EQ(Inside(host.Paint()), kSelected);
    host.Release(30, 15);
    EXPECT_STREQ(static_cast<CButtonUI&>(badge).GetPushedForeImage(), L"badge");
}

TEST_F(ButtonStates, TheTextColourFollowsTheState)
{
    test::UnderlineTexts(host.Manager());
    control.SetBkColor(kWhite.value);
    control.SetText(kText);
    control.SetTextColor(kBase.value);
    control.SetDisabledTextColor(kDisabled.value);
    control.SetHotTextColor(kHot.value);
    control.SetPushedTextColor(kPushed.value);
    control.SetFocusedTextColor(kFocused.value);
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed}, Row{Focused, kFocused},
          Row{Focused | Hot, kHot}, Row{Focused | Pushed, kPushed}, Row{Disabled, kDisabled},
          Row{Disabled | Focused, kDisabled}}) {
        SCOPED_TRACE(row.state);
        EXPECT_GT(PaintIn(row.state).Count(row.expected), 0);
    }
}

TEST_F(ButtonStates, AStateWithoutATextColourFallsBackToTheNextOneThatHasOne)
{
    test::UnderlineTexts(host.Manager());
    control.SetBkColor(kWhite.value);
    control.SetText(kText);
    control.SetTextColor(kBase.value);
    control.SetFocusedTextColor(kFocused.value);
    EXPECT_GT(PaintIn(Hot).Count(kBase), 0);
    EXPECT_GT(PaintIn(Hot | Focused).Count(kFocused), 0);
    control.SetHotTextColor(kHot.value);
    EXPECT_GT(PaintIn(Pushed).Count(kHot), 0);
}

TEST_F(ButtonStates, TheFontFollowsTheState)
{
    host.Manager().AddFont(1, L"Arial", 8, false, false, false, false);
    host.Manager().AddFont(2, L"Arial", 14, false, false, false, false);
    host.Manager().AddFont(3, L"Arial", 20, false, false, false, false);
    host.Manager().AddFont(4, L"Arial", 26, false, false, false, false);
    control.SetBkColor(kWhite.value);
    control.SetText(L"H");
    control.SetFont(1);
    const auto inkHeight = [this](unsigned state) {
        const RECT ink = test::Ink(PaintIn(state));
        return ink.bottom - ink.top;
    };
    const LONG base = inkHeight(Rest);
    EXPECT_EQ(inkHeight(Hot), base) << "-1 is the label's own font";
    control.SetFocusedFont(2);
    control.SetHotFont(3);
    control.SetPushedFont(4);
    const LONG focused = inkHeight(Focused);
    const LONG hot = inkHeight(Hot);
    const LONG pushed = inkHeight(Pushed);
    EXPECT_LT(base, focused);
    EXPECT_LT(focused, hot);
    EXPECT_LT(hot, pushed);
    EXPECT_EQ(inkHeight(Focused | Hot), hot);
    EXPECT_EQ(inkHeight(Rest), base);
}

TEST_F(ButtonStates, TheBorderColourFollowsTheState)
{
    control.SetBorderSize(2);
    control.SetBorderColor(kBase.value);
    control.SetHotBorderColor(kHot.value);
    control.SetPushedBorderColor(kPushed.value);
    control.SetDisabledBorderColor(kDisabled.value);
    for (const Row& row : {Row{Rest, kBase}, Row{Hot, kHot}, Row{Pushed, kPushed},
                           Row{Focused, kBase}, Row{Disabled, kDisabled}}) {
        SCOPED_TRACE(row.state);
        const Picture picture = PaintIn(row.state);
        EXPECT_EQ(picture.At(30, 0), row.expected);
        EXPECT_EQ(picture.At(30, 1), row.expected);
        EXPECT_EQ(picture.At(0, 15), row.expected);
        EXPECT_EQ(picture.At(59, 15), row.expected);
        EXPECT_EQ(picture.At(30, 29), row.expected);
        EXPECT_NE(picture.At(30, 3), row.expected);
    }
    control.SetPushedBorderColor(0);
    EXPECT_EQ(PaintIn(Pushed).At(30, 0), kHot) << "the next state that has a colour";
}

TEST_F(ButtonStates, AStateBorderIsAsWideAsEachSide)
{
    control.SetBkColor(kWhite.value);
    control.SetBorderSize(RECT{1, 2, 3, 4});
    control.SetBorderColor(kBase.value);
    control.SetHotBorderColor(kHot.value);
    const Picture rest = PaintIn(Rest);
    const Picture hot = PaintIn(Hot);
    EXPECT_EQ(hot.Count(kHot), rest.Count(kBase));
    const RECT middle{10, 10, 50, 20};
    EXPECT_EQ(hot.Count(kWhite, middle), 400);
    EXPECT_EQ(hot.At(0, 15), kHot);
    EXPECT_EQ(hot.At(1, 15), kWhite);
    EXPECT_EQ(hot.At(30, 1), kHot);
    EXPECT_EQ(hot.At(30, 2), kWhite);
    EXPECT_EQ(hot.At(57, 15), kHot);
    EXPECT_EQ(hot.At(56, 15), kWhite);
    EXPECT_EQ(hot.At(30, 26), kHot);
    EXPECT_EQ(hot.At(30, 25), kWhite);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 60; ++x)
            ASSERT_EQ(rest.At(x, y) == kBase, hot.At(x, y) == kHot) << x << ',' << y;
}

TEST_F(ButtonStates, ATranslucentStateBorderIsBlendedOnceEverywhere)
{
    control.SetBkColor(kWhite.value);
    control.SetBorderSize(RECT{3, 3, 3, 3});
    control.SetBorderColor(0x80FF0000);
    const Picture ordinary = PaintIn(Rest);
    control.SetHotBorderColor(0x80FF0000);
    control.SetBorderColor(0);
    EXPECT_EQ(PaintIn(Hot), ordinary);
    EXPECT_EQ(ordinary.At(1, 1), ordinary.At(30, 1));
    EXPECT_NE(ordinary.At(1, 1), kWhite);
}

TEST_F(ButtonStates, ARoundStateBorderHasTheShapeOfTheOrdinaryOne)
{
    control.SetBkColor(kWhite.value);
    control.SetBorderSize(2);
    control.SetBorderRound({10, 10});
    control.SetBorderColor(kHot.value);
    const Picture ordinary = PaintIn(Rest);
    control.SetBorderColor(kBase.value);
    control.SetHotBorderColor(kHot.value);
    test::ExpectSimilar(PaintIn(Hot), ordinary, 0, 0);
}

TEST_F(ButtonStates, TheFocusBorderWinsOverTheStateBorder)
{
    control.SetBorderSize(2);
    control.SetBorderColor(kBase.value);
    control.SetFocusBorderColor(kFocused.value);
    control.SetHotBorderColor(kHot.value);
    EXPECT_EQ(PaintIn(Hot).At(30, 0), kHot);
    EXPECT_EQ(PaintIn(Hot | Focused).At(30, 0), kFocused);
}

TEST_F(ButtonStates, WhileTheWindowIsDisabledNothingIsHotOrPushed)
{
    AddColumns(host.Manager(), L"normal", {kBase});
    AddColumns(host.Manager(), L"hot", {kHot});
    control.SetNormalImage(L"normal");
    control.SetHotImage(L"hot");
    ASSERT_EQ(Inside(PaintIn(Hot)), kHot);
    ::EnableWindow(host.Window(), FALSE);
    EXPECT_EQ(Inside(host.Paint()), kBase);
    ::EnableWindow(host.Window(), TRUE);
    EXPECT_EQ(Inside(host.Paint()), kBase) << "it was forgotten, not only hidden";
}

TEST_F(OptionStates, ASelectedOptionHasItsOwnBackground)
{
    control.SetBkColor(kBase.value);
    control.SetHotBkColor(kHot.value);
    EXPECT_EQ(Inside(PaintIn(Selected)), kBase);
    EXPECT_EQ(Inside(PaintIn(Selected | Hot)), kHot);
    control.SetSelectedBkColor(kSelected.value);
    EXPECT_EQ(Inside(PaintIn(Selected)), kSelected);
    EXPECT_EQ(Inside(PaintIn(Selected | Hot)), kSelected);
    EXPECT_EQ(Inside(PaintIn(Rest)), kBase);
}

TEST_F(OptionStates, ASelectedOptionHasItsOwnImages)
{
    AddColumns(host.Manager(), L"normal", {kBase});
    AddColumns(host.Manager(), L"selected", {kSelected});
    AddColumns(host.Manager(), L"hot", {kHot});
    AddColumns(host.Manager(), L"pushed", {kPushed});
    control.SetNormalImage(L"normal");
    EXPECT_EQ(Inside(PaintIn(Selected)), kBase) << "without a picture it looks like a button";
    control.SetSelectedImage(L"selected");
    EXPECT_EQ(Inside(PaintIn(Selected | Hot)), kSelected);
    EXPECT_EQ(Inside(PaintIn(Selected | Pushed)), kSelected);
    control.SetSelectedHotImage(L"hot");
    control.SetSelectedPushedImage(L"pushed");
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kBase}, Row{Selected, kSelected}, Row{Selected | Hot, kHot},
          Row{Selected | Pushed, kPushed}, Row{Selected | Focused, kSelected},
          Row{Selected | Disabled, kSelected}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(OptionStates, ASelectedOptionHasItsOwnColumns)
{
    AddColumns(host.Manager(), L"states", {kBase, kBase, kBase, kBase});
    AddColumns(host.Manager(), L"selected", {kSelected, kHot, kPushed, kDisabled});
    control.SetStateImage(L"states");
    control.SetStateCount(4);
    control.SetSelectedStateImage(L"selected");
    control.SetSelectedStateCount(4);
    for (const Row& row :
         {Row{Rest, kBase}, Row{Hot, kBase}, Row{Selected, kSelected}, Row{Selected | Hot, kHot},
          Row{Selected | Pushed, kPushed}, Row{Selected | Disabled, kDisabled}}) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(Inside(PaintIn(row.state)), row.expected);
    }
}

TEST_F(OptionStates, ASelectedOptionHasItsOwnForeImage)
{
    AddColumns(host.Manager(), L"fore", {kBase});
    AddColumns(host.Manager(), L"selected", {kSelected});
    control.SetForeImage(L"fore");
    EXPECT_EQ(Inside(PaintIn(Selected)), kBase);
    control.SetSelectedForedImage(L"selected");
    EXPECT_EQ(Inside(PaintIn(Selected)), kSelected);
    EXPECT_EQ(Inside(PaintIn(Rest)), kBase);
}

TEST_F(OptionStates, ASelectedOptionHasItsOwnTextColourAndFont)
{
    host.Manager().AddFont(1, L"Arial", 8, false, true, false, false);
    host.Manager().AddFont(2, L"Arial", 24, false, true, false, false);
    control.SetBkColor(kWhite.value);
    control.SetText(L"H");
    control.SetFont(1);
    control.SetTextColor(kBase.value);
    control.SetHotTextColor(kHot.value);
    control.SetDisabledTextColor(kDisabled.value);
    const Picture rest = PaintIn(Rest);
    EXPECT_GT(PaintIn(Selected | Hot).Count(kHot), 0);
    control.SetSelectedTextColor(kSelected.value);
    control.SetSelectedFont(2);
    const Picture selected = PaintIn(Selected | Hot);
    EXPECT_GT(selected.Count(kSelected), 0);
    EXPECT_EQ(selected.Count(kHot), 0);
    EXPECT_GT(test::Ink(selected).bottom - test::Ink(selected).top,
              test::Ink(rest).bottom - test::Ink(rest).top);
    EXPECT_GT(PaintIn(Selected | Disabled).Count(kDisabled), 0);
}

TEST_F(OptionStates, ASelectedOptionStaysSelectedThroughADisabledWindow)
{
    AddColumns(host.Manager(), L"selected", {kSelected});
    control.SetBkColor(kBase.value);
    control.SetSelectedImage(L"selected");
    Enter(Selected);
    ::EnableWindow(host.Window(), FALSE);
    EXPECT_EQ(Inside(host.Paint()), kSelected);
    ::EnableWindow(host.Window(), TRUE);
    EXPECT_EQ(Inside(host.Paint()), kSelected);
    EXPECT_TRUE(control.IsSelected());
}

} // namespace
