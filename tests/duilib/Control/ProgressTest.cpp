#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <climits>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kGreen{0xFF00C000};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kBlue{0xFF0000FF};

// 200 x 20 pixels, so one percent is two pixels.
class ProgressTest : public testing::Test {
protected:
    ControlHost host{200, 20};
    CProgressUI& progress = host.Add<CProgressUI>();

    void SetUp() override
    {
        progress.SetBkColor(kWhite.value);
        progress.SetForeColor(kGreen.value);
    }
};

TEST_F(ProgressTest, StartsEmptyFromZeroToAHundred)
{
    EXPECT_TRUE(progress.IsHorizontal());
    EXPECT_TRUE(progress.IsStretchForeImage());
    EXPECT_FALSE(progress.IsShowText());
    EXPECT_EQ(progress.GetMinValue(), 0);
    EXPECT_EQ(progress.GetMaxValue(), 100);
    EXPECT_EQ(progress.GetValue(), 0);
    EXPECT_EQ(progress.GetFixedHeight(), 12);
    EXPECT_STREQ(progress.GetClass(), L"ProgressUI");
    EXPECT_EQ(progress.GetInterface(L"Progress"), static_cast<CProgressUI*>(&progress));
}

TEST_F(ProgressTest, AttributesReachTheirSetters)
{
    progress.SetAttribute(L"hor", L"false");
    progress.SetAttribute(L"min", L"-10");
    progress.SetAttribute(L"max", L"30");
    progress.SetAttribute(L"value", L"20");
    progress.SetAttribute(L"isstretchfore", L"false");
    progress.SetAttribute(L"showtext", L"true");
    EXPECT_FALSE(progress.IsHorizontal());
    EXPECT_EQ(progress.GetMinValue(), -10);
    EXPECT_EQ(progress.GetMaxValue(), 30);
    EXPECT_EQ(progress.GetValue(), 20);
    EXPECT_FALSE(progress.IsStretchForeImage());
    EXPECT_TRUE(progress.IsShowText());
}

TEST_F(ProgressTest, AValueOutsideTheRangeIsIgnored)
{
    progress.SetValue(40);
    progress.SetValue(101);
    EXPECT_EQ(progress.GetValue(), 40);
    progress.SetValue(-1);
    EXPECT_EQ(progress.GetValue(), 40);
    progress.SetValue(100);
    EXPECT_EQ(progress.GetValue(), 100);
}

TEST_F(ProgressTest, FillsFromTheLeftInProportion)
{
    progress.SetValue(40);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(0, 10), kGreen);
    EXPECT_EQ(picture.At(79, 10), kGreen);
    EXPECT_EQ(picture.At(80, 10), kWhite);
    EXPECT_EQ(picture.Count(kGreen), 80 * 20);
}

TEST_F(ProgressTest, AVerticalOneFillsFromTheBottom)
{
    progress.SetHorizontal(false);
    progress.SetValue(25);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(100, 14), kWhite);
    EXPECT_EQ(picture.At(100, 15), kGreen);
    EXPECT_EQ(picture.At(100, 19), kGreen);
    EXPECT_EQ(picture.Count(kGreen), 200 * 5);
}

TEST_F(ProgressTest, TheRangeNeedNotStartAtZero)
{
    progress.SetMinValue(-50);
    progress.SetMaxValue(50);
    progress.SetValue(0);
    EXPECT_EQ(host.Paint().Count(kGreen), 100 * 20);
}

TEST_F(ProgressTest, TheWidestRangeDoesNotOverflow)
{
    progress.SetMinValue(INT_MIN);
    progress.SetMaxValue(INT_MAX);
    progress.SetValue(INT_MAX);
    EXPECT_EQ(host.Paint().Count(kGreen), 200 * 20);
    progress.SetValue(0);
    EXPECT_NEAR(host.Paint().Count(kGreen), 100 * 20, 20);
}

TEST_F(ProgressTest, AnEmptyRangeDrawsNothing)
{
    progress.SetForeImage(L"bar");
    AddColumns(host.Manager(), L"bar", {kRed});
    progress.SetShowText(true);
    progress.SetMaxValue(0);
    EXPECT_EQ(host.Paint().Count(kGreen), 0);
    progress.SetMaxValue(-5);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.Count(kGreen), 0);
    EXPECT_EQ(picture.Count(kRed), 0);
    EXPECT_STREQ(progress.GetText(), L"0%");
}

TEST_F(ProgressTest, PaintingChangesNeitherTheValueNorTheRange)
{
    progress.SetForeImage(L"bar");
    AddColumns(host.Manager(), L"bar", {kRed});
    progress.SetValue(90);
    progress.SetMaxValue(50);
    host.Paint();
    EXPECT_EQ(progress.GetValue(), 90);
    EXPECT_EQ(progress.GetMaxValue(), 50);
    EXPECT_EQ(host.Paint().Count(kRed), 200 * 20) << "drawn as full";

    progress.SetMaxValue(0);
    host.Paint();
    EXPECT_EQ(progress.GetValue(), 90);
    EXPECT_EQ(progress.GetMinValue(), 0);
    EXPECT_EQ(progress.GetMaxValue(), 0);
}

TEST_F(ProgressTest, WithoutAForeColourThereIsNoColouredPart)
{
    progress.SetForeColor(0);
    progress.SetValue(50);
    EXPECT_EQ(host.Paint().Count(kWhite), 200 * 20);
}

TEST_F(ProgressTest, AStretchedImageShrinksIntoThePart)
{
    AddColumns(host.Manager(), L"bar", {kRed, kBlue}, 50, 20);
    progress.SetForeColor(0);
    progress.SetForeImage(L"bar");
    progress.SetValue(50);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(20, 10), kRed);
    EXPECT_EQ(picture.At(80, 10), kBlue);
    EXPECT_EQ(picture.At(100, 10), kWhite);
}

TEST_F(ProgressTest, AnUnstretchedImageIsCutToThePart)
{
    AddColumns(host.Manager(), L"bar", {kRed, kBlue}, 50, 20);
    progress.SetForeColor(0);
    progress.SetForeImage(L"bar");
    progress.SetStretchForeImage(false);
    progress.SetValue(75);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(20, 10), kRed);
    EXPECT_EQ(picture.At(90, 10), kRed);
    EXPECT_EQ(picture.At(110, 10), kBlue);
    EXPECT_EQ(picture.At(149, 10), kBlue);
    EXPECT_EQ(picture.At(150, 10), kWhite);
}

TEST_F(ProgressTest, ThePartIsTheSameShareAtAnyScale)
{
    for (const int dpi : {96, 120, 144, 192}) {
        SCOPED_TRACE(dpi);
        ControlHost scaled(200, 20, dpi);
        auto& bar = scaled.Add<CProgressUI>();
        AddColumns(scaled.Manager(), L"bar", {kRed}, 50, 20);
        bar.SetBkColor(kWhite.value);
        bar.SetForeImage(L"bar");
        for (const bool stretch : {true, false}) {
            bar.SetStretchForeImage(stretch);
            bar.SetValue(50);
            EXPECT_EQ(scaled.Paint().Count(kRed), 100 * 20);
        }
    }
}

TEST_F(ProgressTest, ShowsThePercentageWhenAsked)
{
    progress.SetValue(25);
    EXPECT_STREQ(progress.GetText(), L"");
    progress.SetShowText(true);
    EXPECT_STREQ(progress.GetText(), L"25%");
    progress.SetValue(50);
    EXPECT_STREQ(progress.GetText(), L"50%");
    progress.SetMaxValue(200);
    EXPECT_STREQ(progress.GetText(), L"25%");
    progress.SetMinValue(50);
    EXPECT_STREQ(progress.GetText(), L"0%");
    progress.SetShowText(false);
    EXPECT_STREQ(progress.GetText(), L"");
}

TEST_F(ProgressTest, ThePercentageIsRoundedDown)
{
    progress.SetShowText(true);
    progress.SetMaxValue(1000);
    progress.SetValue(999);
    EXPECT_STREQ(progress.GetText(), L"99%");
}

TEST_F(ProgressTest, ItsHeightScales)
{
    ControlHost scaled(200, 20, 144);
    auto& bar = scaled.Add<CProgressUI>();
    EXPECT_EQ(bar.EstimateSize({200, 100}).cy, 18);
    EXPECT_EQ(bar.EstimateSize({200, 100}).cx, 0);
}

} // namespace
