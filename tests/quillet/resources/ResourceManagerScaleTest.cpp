#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"

#include <climits>
#include <ostream>

namespace test {
namespace {

using namespace DuiLib;

constexpr auto kUnaware = PROCESS_DPI_UNAWARE;
constexpr auto kSystem = PROCESS_SYSTEM_DPI_AWARE;
constexpr auto kMonitor = PROCESS_PER_MONITOR_DPI_AWARE;

class ResourceManagerScaleTest : public testing::Test {
protected:
    ResourceManagerScaleTest() { Use(kMonitor, 96); }
    ~ResourceManagerScaleTest() override { Use(kMonitor, 96); }

    void Use(PROCESS_DPI_AWARENESS awareness, unsigned dpi)
    {
        GiveAwareness(manager, awareness);
        manager.SetScale(dpi);
    }

    CResourceManagerEx& manager = *CResourceManagerEx::GetInstance();
};

TEST_F(ResourceManagerScaleTest, TakesADpiAndAnswersAPercentage)
{
    struct Row {
        unsigned dpi, scale, answered;
    };
    for (const auto& [dpi, scale, answered] :
         {Row{96, 100, 96}, Row{120, 125, 120}, Row{144, 150, 144}, Row{100, 104, 100},
          Row{216, 225, 216}, Row{0, 0, 0}}) {
        SCOPED_TRACE(dpi);
        manager.SetScale(dpi);
        EXPECT_EQ(manager.GetScale(), scale);
        EXPECT_EQ(manager.GetDPI(), answered);
    }
}

TEST_F(ResourceManagerScaleTest, AnUnawareProcessIsAlwaysAtHundredPercent)
{
    Use(kUnaware, 192);
    EXPECT_EQ(manager.GetScale(), 100u);
    EXPECT_EQ(manager.GetDPI(), 96u);
    EXPECT_EQ(manager.Scale(37), 37);
}

TEST_F(ResourceManagerScaleTest, ASystemAwareProcessStaysAtHundredPercent)
{
    Use(kSystem, 192);
    EXPECT_EQ(manager.GetScale(), 100u);
    EXPECT_EQ(manager.GetDPI(), 96u);
    EXPECT_EQ(manager.Scale(37), 37);
    EXPECT_EQ(manager.RestoreScale(37), 37);
}

TEST_F(ResourceManagerScaleTest, TheMonitorScaleSurvivesATimeInAnotherMode)
{
    Use(kMonitor, 144);
    GiveAwareness(manager, kUnaware);
    GiveAwareness(manager, kMonitor);
    EXPECT_EQ(manager.GetScale(), 150u);
}

TEST_F(ResourceManagerScaleTest, OneStaysOneAtEveryScaleAndInEveryMode)
{
    for (const auto awareness : {kUnaware, kSystem, kMonitor}) {
        for (const unsigned dpi : {48u, 96u, 144u, 288u}) {
            Use(awareness, dpi);
            EXPECT_EQ(manager.Scale(1), 1) << awareness << " " << dpi;
        }
    }
}

TEST_F(ResourceManagerScaleTest, OnlyAMonitorAwareProcessLiftsZeroToOne)
{
    Use(kUnaware, 144);
    EXPECT_EQ(manager.Scale(0), 0);
    Use(kSystem, 144);
    EXPECT_EQ(manager.Scale(0), 0);
    Use(kMonitor, 144);
    EXPECT_EQ(manager.Scale(0), 1);
}

TEST_F(ResourceManagerScaleTest, AnythingThatVanishesBecomesOnePixel)
{
    manager.SetScale(10); // 10 percent
    EXPECT_EQ(manager.Scale(3), 1);
    EXPECT_EQ(manager.Scale(-3), 1);
    EXPECT_EQ(manager.Scale(5), 1); // a half, rounded away from zero
}

TEST_F(ResourceManagerScaleTest, RoundsHalvesAwayFromZero)
{
    manager.SetScale(144);
    EXPECT_EQ(manager.Scale(3), 5);
    EXPECT_EQ(manager.Scale(-3), -5);
    EXPECT_EQ(manager.Scale(-1), -2);
    EXPECT_EQ(manager.Scale(2), 3);
    EXPECT_EQ(manager.Scale(1000), 1500);
}

TEST_F(ResourceManagerScaleTest, ScalingByAGivenDpiHasNoSpecialCases)
{
    Use(kUnaware, 96);
    EXPECT_EQ(manager.Scale(1, 192u), 2);
    EXPECT_EQ(manager.Scale(0, 192u), 0);
    EXPECT_EQ(manager.Scale(10, 144u), 15);
    EXPECT_EQ(manager.Scale(10, 100u), 10); // 104 percent
    EXPECT_EQ(manager.Scale(1, 48u), 1);    // a half, rounded
    EXPECT_EQ(manager.Scale(1, 40u), 0);
}

TEST_F(ResourceManagerScaleTest, ASizeInPlaceOfAtMostOnePixelStays)
{
    manager.SetScale(144);
    for (const SIZE small : {SIZE{1, 0}, SIZE{0, 0}, SIZE{-4, 1}, SIZE{1, 1}, SIZE{-9, -9}}) {
        SIZE size = small;
        manager.Scale(&size);
        EXPECT_EQ(size.cx, small.cx);
        EXPECT_EQ(size.cy, small.cy);
    }
    SIZE size{2, 0};
    manager.Scale(&size);
    EXPECT_EQ(size.cx, 3);
    EXPECT_EQ(size.cy, 1);
}

TEST_F(ResourceManagerScaleTest, ASizeByValueHasNoExemption)
{
    manager.SetScale(144);
    const SIZE size = manager.Scale(SIZE{-4, 0});
    EXPECT_EQ(size.cx, -6);
    EXPECT_EQ(size.cy, 1);
}

TEST_F(ResourceManagerScaleTest, APointScalesBothMembersInBothForms)
{
    manager.SetScale(144);
    const POINT value = manager.Scale(POINT{10, -4});
    EXPECT_EQ(value.x, 15);
    EXPECT_EQ(value.y, -6);
    POINT inPlace{1, 0};
    manager.Scale(&inPlace);
    EXPECT_EQ(inPlace.x, 1);
    EXPECT_EQ(inPlace.y, 1);
}

TEST_F(ResourceManagerScaleTest, ARectangleKeepsItsRoundedSize)
{
    struct Row {
        RECT given, scaled;
    };
    manager.SetScale(144);
    // At 150 percent the right edge 5 alone would become 8.
    for (const auto& [given, scaled] :
         {Row{{1, 1, 11, 11}, {1, 1, 16, 16}}, Row{{3, 3, 5, 5}, {5, 5, 8, 8}},
          Row{{3, 3, 6, 6}, {5, 5, 10, 10}}, Row{{5, 5, 6, 6}, {8, 8, 9, 9}},
          Row{{-3, -3, 3, 3}, {-5, -5, 4, 4}}}) {
        const RECT value = manager.Scale(given);
        RECT inPlace = given;
        manager.Scale(&inPlace);
        for (const RECT& rect : {value, inPlace}) {
            EXPECT_EQ(rect.left, scaled.left);
            EXPECT_EQ(rect.top, scaled.top);
            EXPECT_EQ(rect.right, scaled.right);
            EXPECT_EQ(rect.bottom, scaled.bottom);
        }
    }
}

TEST_F(ResourceManagerScaleTest, AnEndlessRectangleWrapsAround)
{
    const RECT rect = manager.Scale(RECT{-2'000'000'000, -2, 2'000'000'000, 2});
    EXPECT_EQ(rect.left, -2'000'000'000);
    EXPECT_EQ(rect.top, -2);
    EXPECT_EQ(rect.right, 2'000'000'000);
    EXPECT_EQ(rect.bottom, 2);
}

TEST_F(ResourceManagerScaleTest, NullPointersAreLeftAlone)
{
    manager.Scale(static_cast<POINT*>(nullptr));
    manager.Scale(static_cast<SIZE*>(nullptr));
    manager.Scale(static_cast<RECT*>(nullptr));
    EXPECT_EQ(manager.GetScale(), 100u);
}

TEST_F(ResourceManagerScaleTest, RestoringRoundsUp)
{
    manager.SetScale(144);
    EXPECT_EQ(manager.RestoreScale(5), 4);
    EXPECT_EQ(manager.RestoreScale(-5), -3);
    EXPECT_EQ(manager.RestoreScale(3), 2);
    EXPECT_EQ(manager.RestoreScale(0), 0);
}

TEST_F(ResourceManagerScaleTest, RestoringLeavesOneAlone)
{
    manager.SetScale(48); // 50 percent: 1 would become 2
    EXPECT_EQ(manager.RestoreScale(1), 1);
    EXPECT_EQ(manager.RestoreScale(2), 4);
}

TEST_F(ResourceManagerScaleTest, RestoringIsNotTheInverseOfScaling)
{
    manager.SetScale(120);
    for (const int value : {2, 3, 6, 7, 10})
        EXPECT_EQ(manager.RestoreScale(manager.Scale(value)), value + 1) << value;
    for (const int value : {4, 8, 100})
        EXPECT_EQ(manager.RestoreScale(manager.Scale(value)), value) << value;
}

TEST_F(ResourceManagerScaleTest, RestoringComputesInSinglePrecision)
{
    manager.SetScale(100);                     // 104 percent
    EXPECT_EQ(manager.RestoreScale(130), 126); // exactly 125
    manager.SetScale(125);                     // 130 percent
    EXPECT_EQ(manager.RestoreScale(39), 31);   // exactly 30
    manager.SetScale(144);
    EXPECT_EQ(manager.RestoreScale(150), 100);
}

TEST_F(ResourceManagerScaleTest, RestoringTakesAScaleOfZeroForHundred)
{
    manager.SetScale(0);
    EXPECT_EQ(manager.GetScale(), 0u);
    EXPECT_EQ(manager.RestoreScale(7), 7);
}

TEST_F(ResourceManagerScaleTest, RestoringHugeValuesStaysInRange)
{
    manager.SetScale(48);
    EXPECT_EQ(manager.RestoreScale(INT_MAX), INT_MAX);
    EXPECT_EQ(manager.RestoreScale(INT_MIN), INT_MIN);
}

TEST_F(ResourceManagerScaleTest, RestoringARectangleTreatsEachEdgeByItself)
{
    manager.SetScale(144);
    const RECT rect = manager.RestoreScaleRect({5, -5, 15, 16});
    EXPECT_EQ(rect.left, 4);
    EXPECT_EQ(rect.top, -3);
    EXPECT_EQ(rect.right, 10);
    EXPECT_EQ(rect.bottom, 11);
    const RECT empty = manager.RestoreScaleRect({0, 0, 0, 0});
    EXPECT_TRUE(empty.left == 0 && empty.top == 0 && empty.right == 0 && empty.bottom == 0);
    const RECT ones = manager.RestoreScaleRect({1, 1, 1, 1});
    EXPECT_TRUE(ones.left == 1 && ones.top == 1 && ones.right == 1 && ones.bottom == 1);
}

TEST_F(ResourceManagerScaleTest, RestoringARectangleHasNoExemptionForOne)
{
    manager.SetScale(48);
    const RECT rect = manager.RestoreScaleRect({1, 1, 1, 1});
    EXPECT_TRUE(rect.left == 2 && rect.top == 2 && rect.right == 2 && rect.bottom == 2);
}

} // namespace
} // namespace test
