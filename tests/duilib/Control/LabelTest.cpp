#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::Ink;
using test::MeasureLine;
using test::MeasureWrapped;
using test::Picture;

namespace {

constexpr SIZE kRoom{400, 300};
constexpr Argb kWhite{0xFFFFFFFF};

constexpr wchar_t kLine[] = L"HHHH";

bool HasColour(const Picture& picture, Argb colour)
{
    return picture.Count(colour) > 0;
}

class LabelTest : public testing::Test {
protected:
    ControlHost host{200, 100};
    CLabelUI& label = host.Add<CLabelUI>();
};

TEST_F(LabelTest, StartsAsOneVerticallyCentredLine)
{
    EXPECT_EQ(label.GetTextStyle(), static_cast<UINT>(DT_VCENTER | DT_SINGLELINE));
    EXPECT_EQ(label.GetFont(), -1);
    EXPECT_EQ(label.GetTextColor(), 0u);
    EXPECT_EQ(label.GetDisabledTextColor(), 0u);
    EXPECT_FALSE(label.IsShowHtml());
    EXPECT_FALSE(label.GetAutoCalcWidth());
    EXPECT_FALSE(label.GetAutoCalcHeight());
}

TEST_F(LabelTest, AnswersToItsNames)
{
    EXPECT_STREQ(label.GetClass(), L"LabelUI");
    EXPECT_EQ(label.GetInterface(L"label"), static_cast<CLabelUI*>(&label));
    EXPECT_EQ(label.GetInterface(L"Control"), static_cast<CControlUI*>(&label));
    EXPECT_EQ(label.GetInterface(L"Button"), nullptr);
}

TEST_F(LabelTest, AsksForTheCursorWhileEnabled)
{
    EXPECT_EQ(label.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    label.SetEnabled(false);
    EXPECT_EQ(label.GetControlFlags(), 0u);
}

TEST_F(LabelTest, StyleAttributesChangeTheStyle)
{
    constexpr UINT start = DT_VCENTER | DT_SINGLELINE;
    constexpr UINT wrap = DT_WORDBREAK | DT_EDITCONTROL;
    const struct {
        const wchar_t* name;
        const wchar_t* value;
        UINT before;
        UINT after;
    } rows[] = {
        {L"align", L"center", start, start | DT_CENTER},
        {L"align", L"right", start | DT_CENTER, start | DT_RIGHT},
        {L"align", L"left", start | DT_RIGHT, start},
        {L"align", L"elsewhere", start | DT_RIGHT, start | DT_RIGHT},
        {L"ALIGN", L"center", start, start | DT_CENTER},
        {L"valign", L"top", start, DT_SINGLELINE},
        {L"valign", L"vcenter", DT_SINGLELINE | DT_BOTTOM, DT_SINGLELINE | DT_VCENTER},
        {L"valign", L"bottom", start, DT_SINGLELINE | DT_BOTTOM},
        {L"valign", L"bottom", wrap, DT_SINGLELINE | DT_BOTTOM},
        {L"valign", L"top", wrap | DT_CENTER, DT_SINGLELINE | DT_CENTER},
        {L"valign", L"center", wrap, wrap},
        {L"wordbreak", L"true", start, DT_VCENTER | wrap},
        {L"wordbreak", L"false", wrap, DT_SINGLELINE},
        {L"endellipsis", L"TRUE", start, start | DT_END_ELLIPSIS},
        {L"endellipsis", L"false", start | DT_END_ELLIPSIS, start},
        {L"noprefix", L"true", start, start | DT_NOPREFIX},
        {L"noprefix", L"1", start | DT_NOPREFIX, start},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name << "=" << row.value);
        label.SetTextStyle(row.before);
        label.SetAttribute(row.name, row.value);
        EXPECT_EQ(label.GetTextStyle(), row.after);
    }
}

TEST_F(LabelTest, OtherAttributesReachTheirSetters)
{
    label.SetAttribute(L"font", L"3");
    label.SetAttribute(L"textcolor", L"#FF112233");
    label.SetAttribute(L"disabledtextcolor", L"FF445566");
    label.SetAttribute(L"textpadding", L"1,2,3,4");
    label.SetAttribute(L"showhtml", L"true");
    label.SetAttribute(L"autocalcwidth", L"true");
    label.SetAttribute(L"autocalcheight", L"true");
    EXPECT_EQ(label.GetFont(), 3);
    EXPECT_EQ(label.GetTextColor(), 0xFF112233u);
    EXPECT_EQ(label.GetDisabledTextColor(), 0xFF445566u);
    const RECT padding = label.GetTextPadding();
    EXPECT_TRUE(padding.left == 1 && padding.top == 2 && padding.right == 3 && padding.bottom == 4);
    EXPECT_TRUE(label.IsShowHtml());
    EXPECT_TRUE(label.GetAutoCalcWidth());
    EXPECT_TRUE(label.GetAutoCalcHeight());
}

TEST_F(LabelTest, AnUnknownAttributeIsKeptAsACustomOne)
{
    label.SetAttribute(L"flavour", L"mint");
    ASSERT_NE(label.GetCustomAttribute(L"flavour"), nullptr);
    EXPECT_STREQ(label.GetCustomAttribute(L"flavour"), L"mint");
}

TEST_F(LabelTest, ASingleLineIsAsHighAsItsFontAndEightMore)
{
    label.SetText(L"Wide or not");
    label.SetTextPadding({1, 2, 3, 4});
    const SIZE size = label.EstimateSize(kRoom);
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, host.Manager().GetFontInfo(-1)->tm.tmHeight + 8 + 2 + 4);
}

TEST_F(LabelTest, AWrappedTextHasNoWishOfItsOwn)
{
    label.SetText(L"one two three");
    label.SetAttribute(L"wordbreak", L"true");
    const SIZE size = label.EstimateSize(kRoom);
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, 0);
}

TEST_F(LabelTest, AFixedSizeIsTheSize)
{
    label.SetFixedWidth(70);
    label.SetFixedHeight(30);
    label.SetAutoCalcWidth(true);
    label.SetAutoCalcHeight(true);
    label.SetText(L"a text that is much wider than seventy pixels, and it is not short either");
    const SIZE size = label.EstimateSize(kRoom);
    EXPECT_EQ(size.cx, 70);
    EXPECT_EQ(size.cy, 30);
}

TEST_F(LabelTest, WithoutAManagerOnlyTheFixedSizeCounts)
{
    CLabelUI outside;
    outside.SetText(L"text");
    outside.SetAutoCalcWidth(true);
    outside.SetFixedHeight(20);
    const SIZE size = outside.EstimateSize(kRoom);
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, 20);
}

TEST_F(LabelTest, AComputedWidthIsTheTextsAndThePadding)
{
    label.SetText(L"Measure me");
    label.SetTextPadding({5, 0, 7, 0});
    label.SetAutoCalcWidth(true);
    EXPECT_EQ(label.EstimateSize(kRoom).cx, MeasureLine(host.Manager(), L"Measure me").cx + 12);
}

TEST_F(LabelTest, AComputedWidthDoesNotDependOnTheAlignment)
{
    label.SetText(L"Measure me");
    label.SetAutoCalcWidth(true);
    const LONG width = MeasureLine(host.Manager(), L"Measure me").cx;
    for (const UINT align : {DT_LEFT, DT_CENTER, DT_RIGHT, DT_END_ELLIPSIS}) {
        SCOPED_TRACE(align);
        label.SetTextStyle(DT_SINGLELINE | align);
        EXPECT_EQ(label.EstimateSize(kRoom).cx, width);
    }
}

TEST_F(LabelTest, AComputedHeightIsThatOfTheWrappedText)
{
    constexpr wchar_t text[] = L"several words that do not fit into one line of sixty pixels";
    label.SetText(text);
    label.SetAttribute(L"wordbreak", L"true");
    label.SetTextPadding({4, 3, 6, 5});
    label.SetAutoCalcHeight(true);
    const LONG wrapped = MeasureWrapped(host.Manager(), text, 60, DT_WORDBREAK | DT_EDITCONTROL).cy;
    ASSERT_GT(wrapped, MeasureLine(host.Manager(), text).cy);
    EXPECT_EQ(label.EstimateSize({70, 300}).cy, wrapped + 8);
}

TEST_F(LabelTest, AFixedWidthIsTheWidthToWrapAt)
{
    constexpr wchar_t text[] = L"several words that do not fit into one line of sixty pixels";
    label.SetText(text);
    label.SetAttribute(L"wordbreak", L"true");
    label.SetAutoCalcHeight(true);
    label.SetFixedWidth(60);
    const SIZE size = label.EstimateSize(kRoom);
    EXPECT_EQ(size.cx, 60);
    EXPECT_EQ(size.cy, MeasureWrapped(host.Manager(), text, 60, DT_WORDBREAK | DT_EDITCONTROL).cy);
}

TEST_F(LabelTest, MarkupIsMeasuredAsShown)
{
    label.SetAutoCalcWidth(true);
    label.SetShowHtml(true);
    label.SetText(L"<c #FF0000>Measure me</c>");
    EXPECT_EQ(label.EstimateSize(kRoom).cx, MeasureLine(host.Manager(), L"Measure me").cx);
    label.SetShowHtml(false);
    EXPECT_EQ(label.EstimateSize(kRoom).cx,
              MeasureLine(host.Manager(), L"<c #FF0000>Measure me</c>").cx);
}

TEST_F(LabelTest, TheEstimateFollowsEveryChange)
{
    label.SetAutoCalcWidth(true);
    label.SetText(L"first");
    const LONG first = label.EstimateSize(kRoom).cx;
    label.SetText(L"a longer second text");
    const LONG second = label.EstimateSize(kRoom).cx;
    EXPECT_GT(second, first);

    label.SetTextPadding({10, 0, 0, 0});
    EXPECT_EQ(label.EstimateSize(kRoom).cx, second + 10);

    host.Manager().AddFont(5, L"Arial", 40, false, false, false, false);
    label.SetFont(5);
    const LONG large = label.EstimateSize(kRoom).cx;
    EXPECT_EQ(large, MeasureLine(host.Manager(), L"a longer second text", 5).cx + 10);

    host.Manager().AddFont(5, L"Arial", 20, false, false, false, false);
    EXPECT_EQ(label.EstimateSize(kRoom).cx,
              MeasureLine(host.Manager(), L"a longer second text", 5).cx + 10)
        << "the font of the id was replaced";

    label.SetFixedWidth(33);
    EXPECT_EQ(label.EstimateSize(kRoom).cx, 33);
}

TEST_F(LabelTest, TheEstimateFollowsTheAvailableWidth)
{
    constexpr wchar_t text[] = L"several words that do not fit into one line of sixty pixels";
    label.SetText(text);
    label.SetAttribute(L"wordbreak", L"true");
    label.SetAutoCalcHeight(true);
    const LONG narrow = label.EstimateSize({60, 300}).cy;
    const LONG wide = label.EstimateSize({2000, 300}).cy;
    EXPECT_GT(narrow, wide);
    EXPECT_EQ(label.EstimateSize({60, 300}).cy, narrow);
}

TEST_F(LabelTest, EstimatesScaleWithTheWindow)
{
    for (const int dpi : {96, 144}) {
        SCOPED_TRACE(dpi);
        ControlHost scaled(300, 200, dpi);
        CLabelUI& text = scaled.Add<CLabelUI>();
        text.SetText(L"Measure me");
        text.SetTextPadding({4, 2, 4, 2});
        text.SetAutoCalcWidth(true);
        const LONG side = dpi == 144 ? 6 : 4;
        const LONG height = dpi == 144 ? 3 : 2;
        const SIZE size = text.EstimateSize(kRoom);
        EXPECT_EQ(size.cx, MeasureLine(scaled.Manager(), L"Measure me").cx + 2 * side);
        EXPECT_EQ(size.cy, scaled.Manager().GetFontInfo(-1)->tm.tmHeight + 8 + 2 * height);
        text.SetFixedWidth(50);
        EXPECT_EQ(text.EstimateSize(kRoom).cx, dpi == 144 ? 75 : 50);
    }
}

TEST_F(LabelTest, AChangeOfScaleDropsTheRememberedEstimate)
{
    label.SetText(L"Measure me");
    label.SetAutoCalcWidth(true);
    label.EstimateSize(kRoom);
    host.Manager().SetDPI(144);
    EXPECT_EQ(label.EstimateSize(kRoom).cx, MeasureLine(host.Manager(), L"Measure me").cx);
}

TEST_F(LabelTest, ANewTextLaysOutTheParentOnlyWhenASizeComesFromIt)
{
    host.Paint();
    label.SetText(L"plain");
    EXPECT_FALSE(host.Root()->IsUpdateNeeded());

    label.SetAutoCalcWidth(true);
    host.Paint();
    ASSERT_FALSE(host.Root()->IsUpdateNeeded());
    label.SetText(L"measured");
    EXPECT_TRUE(host.Root()->IsUpdateNeeded());

    host.Paint();
    label.SetText(L"measured");
    EXPECT_FALSE(host.Root()->IsUpdateNeeded()) << "nothing changed";
}

TEST_F(LabelTest, DrawsTheEnabledAndTheDisabledColour)
{
    test::UnderlineTexts(host.Manager());
    label.SetBkColor(kWhite.value);
    label.SetText(kLine);
    label.SetTextColor(0xFFFF0000);
    label.SetDisabledTextColor(0xFF00FF00);
    EXPECT_TRUE(HasColour(host.Paint(), Argb{0xFFFF0000}));
    label.SetEnabled(false);
    const Picture disabled = host.Paint();
    EXPECT_TRUE(HasColour(disabled, Argb{0xFF00FF00}));
    EXPECT_FALSE(HasColour(disabled, Argb{0xFFFF0000}));
}

TEST_F(LabelTest, WithoutColoursOfItsOwnItUsesTheWindowsDefaults)
{
    test::UnderlineTexts(host.Manager());
    label.SetBkColor(kWhite.value);
    label.SetText(kLine);
    host.Manager().SetDefaultFontColor(0xFF0000FF);
    host.Manager().SetDefaultDisabledColor(0xFF808000);
    EXPECT_TRUE(HasColour(host.Paint(), Argb{0xFF0000FF}));
    label.SetEnabled(false);
    EXPECT_TRUE(HasColour(host.Paint(), Argb{0xFF808000}));
    EXPECT_EQ(label.GetTextColor(), 0u) << "painting changes nothing";
    EXPECT_EQ(label.GetDisabledTextColor(), 0u);
}

TEST_F(LabelTest, PaddingMovesTheText)
{
    label.SetBkColor(kWhite.value);
    label.SetText(kLine);
    label.SetTextStyle(DT_SINGLELINE | DT_TOP);
    const RECT before = Ink(host.Paint());
    label.SetTextPadding({20, 10, 0, 0});
    const RECT after = Ink(host.Paint());
    EXPECT_EQ(after.left, before.left + 20);
    EXPECT_EQ(after.top, before.top + 10);
}

TEST_F(LabelTest, AlignmentPlacesTheText)
{
    label.SetBkColor(kWhite.value);
    label.SetText(kLine);
    label.SetTextStyle(DT_SINGLELINE | DT_TOP | DT_LEFT);
    const RECT left = Ink(host.Paint());
    label.SetTextStyle(DT_SINGLELINE | DT_BOTTOM | DT_RIGHT);
    const RECT right = Ink(host.Paint());
    const LONG width = MeasureLine(host.Manager(), kLine).cx;
    const LONG height = MeasureLine(host.Manager(), kLine).cy;
    EXPECT_EQ(right.left - left.left, 200 - width);
    EXPECT_EQ(right.top - left.top, 100 - height);
}

TEST_F(LabelTest, ShowsMarkupOnlyWhenAsked)
{
    test::UnderlineTexts(host.Manager());
    label.SetBkColor(kWhite.value);
    label.SetText(L"<c #FF0000>HHHH</c>");
    EXPECT_FALSE(HasColour(host.Paint(), Argb{0xFFFF0000}));
    label.SetShowHtml(true);
    EXPECT_TRUE(HasColour(host.Paint(), Argb{0xFFFF0000}));
}

TEST_F(LabelTest, ACarriageReturnBreaksALineOfPlainText)
{
    label.SetBkColor(kWhite.value);
    label.SetTextStyle(DT_WORDBREAK);
    label.SetText(L"HH\r\nHH");
    const RECT two = Ink(host.Paint());
    label.SetText(L"HH");
    const RECT one = Ink(host.Paint());
    EXPECT_GT(two.bottom, one.bottom);
    EXPECT_EQ(two.right, one.right);
}

TEST_F(LabelTest, ACopyIsALabelOfItsOwn)
{
    label.SetText(L"original");
    label.SetTextColor(0xFF123456);
    label.SetTextPadding({1, 2, 3, 4});
    CLabelUI copy(label);
    label.SetText(L"changed");
    EXPECT_STREQ(copy.GetText(), L"original");
    EXPECT_EQ(copy.GetTextColor(), 0xFF123456u);
    EXPECT_EQ(copy.GetTextPadding().bottom, 4);
}

} // namespace
