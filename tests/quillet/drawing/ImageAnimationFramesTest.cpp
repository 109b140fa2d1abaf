#include "quillet/drawing/AnimationKit.h"

#include <climits>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

constexpr int kTicks = 10'000;

// The frames of an animation as they are written down, step by step.
class Reference {
public:
    Reference(int during, int precision, int count, int limit)
        : m_during(during), m_precision(precision), m_count(count), m_limit(limit)
    {
    }

    void Start()
    {
        m_animating = true;
        m_index = -1;
        m_elapsed = 0;
    }

    void Tick()
    {
        m_elapsed += m_precision;
        if (m_elapsed > m_during + m_precision)
            m_elapsed = 0;

        double frame = 0;
        if (m_during != 0)
            frame = std::trunc(m_elapsed / m_during * m_count);
        else if (m_index + 1 < m_count)
            frame = m_index + 1;
        if (m_limit >= 1 && m_rounds >= m_limit && frame > m_count) {
            m_rounds = 0;
            frame = 0;
            m_animating = false;
        }
        if (frame == m_index)
            return;
        m_index = frame;
        if (m_index >= m_count) {
            m_index = m_count - 1;
            m_rounds++;
        }
    }

    bool IsAnimating() const { return m_animating; }
    // -1 for none.
    int Shown() const
    {
        return m_animating && m_index >= 0 && m_index < m_count ? static_cast<int>(m_index) : -1;
    }

private:
    double m_during;
    double m_precision;
    double m_count;
    double m_limit;
    double m_elapsed = 0;
    double m_index = 0;
    double m_rounds = 0;
    bool m_animating = false;
};

// One pixel to paint into, read back as it is.
class Pixel {
public:
    Pixel() : m_dc(::CreateCompatibleDC(nullptr))
    {
        BYTE* bits = nullptr;
        m_bitmap = CRenderEngine::CreateARGB32Bitmap(m_dc, 1, 1, &bits);
        m_pixel = reinterpret_cast<volatile DWORD*>(bits);
        m_former = ::SelectObject(m_dc, m_bitmap);
    }
    ~Pixel()
    {
        ::SelectObject(m_dc, m_former);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    Pixel(const Pixel&) = delete;
    Pixel& operator=(const Pixel&) = delete;

    // The frame that the painter draws; -1 for none.
    int FrameOf(ImageAnimationPainter& painter)
    {
        *m_pixel = 0;
        painter.Paint(m_dc);
        ::GdiFlush();
        return static_cast<int>(*m_pixel & 0xFFFFFF) - 1;
    }

private:
    HDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_former = nullptr;
    volatile DWORD* m_pixel = nullptr;
};

std::vector<HBITMAP> CountedFrames(int count)
{
    std::vector<HBITMAP> frames;
    for (int frame = 0; frame < count; ++frame)
        frames.push_back(MakeBitmap(Argb{0xFF000001u + static_cast<unsigned>(frame)}, 1, 1));
    return frames;
}

// An animation of its own, without a window.
struct Animation {
    Animation(int during, int precision, int count, int limit) : painter(&control)
    {
        control.SetPos({0, 0, 1, 1}, false);
        painter.SetBitmaps(CountedFrames(count));
        painter.SetDuring(during);
        painter.SetPrecision(precision);
        painter.SetMaxRound(limit);
        painter.Start();
    }

    void Tick(int times = 1) { test::Tick(control, times); }
    int Frame() { return pixel.FrameOf(painter); }

    // The tick that stops the animation, the first being 1; nothing when none of that many does.
    std::optional<int> StopTick(int most)
    {
        for (int tick = 1; tick <= most; ++tick) {
            Tick();
            if (!painter.IsAnimating())
                return tick;
        }
        return std::nullopt;
    }

    CControlUI control;
    ImageAnimationPainter painter;
    Pixel pixel;
};

class ImageAnimationFramesTest : public testing::TestWithParam<int> {};

TEST_P(ImageAnimationFramesTest, AreThoseOfTheTime)
{
    const int during = GetParam();
    Pixel pixel;
    for (const int precision : {1, 10, 16, 1000}) {
        for (const int count : {0, 1, 2, 8, 10, 99, 100, 1000}) {
            for (const int limit : {0, 1, 3}) {
                SCOPED_TRACE(testing::Message() << "precision " << precision << ", " << count
                                                << " frames, limit " << limit);
                Animation animation(during, precision, count, limit);
                Reference reference(during, precision, count, limit);
                reference.Start();
                for (int tick = 1; tick <= kTicks; ++tick) {
                    animation.Tick();
                    reference.Tick();
                    ASSERT_EQ(animation.painter.IsAnimating(), reference.IsAnimating()) << tick;
                    ASSERT_EQ(animation.Frame(), reference.Shown()) << tick;
                    if (!reference.IsAnimating()) {
                        animation.painter.Start();
                        reference.Start();
                    }
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Durations, ImageAnimationFramesTest,
                         testing::Values(0, 1, 7, 100, 1000, -1, -1000, INT_MAX),
                         [](const testing::TestParamInfo<int>& during) {
                             return (during.param < 0 ? "Minus" : "") +
                                    std::to_string(std::abs(during.param));
                         });

TEST(ImageAnimationTimeTest, TenFramesInASecondChangeEveryTenthTick)
{
    Animation animation(1000, 10, 10, 0);
    EXPECT_EQ(animation.Frame(), -1);
    animation.Tick(51);
    EXPECT_EQ(animation.Frame(), 5);
    animation.Tick(49); // 1000
    EXPECT_EQ(animation.Frame(), 9);
    animation.Tick(); // 1010
    EXPECT_EQ(animation.Frame(), 9);
    animation.Tick(); // would be 1020
    EXPECT_EQ(animation.Frame(), 0);
}

TEST(ImageAnimationTimeTest, AHundredFramesAreCutOffInDoublePrecision)
{
    Animation animation(1000, 10, 100, 0);
    animation.Tick(29);
    EXPECT_EQ(animation.Frame(), 28);
    animation.Tick(28);
    EXPECT_EQ(animation.Frame(), 56);
    animation.Tick();
    EXPECT_EQ(animation.Frame(), 57);
}

TEST(ImageAnimationTimeTest, WithoutADurationEveryTickIsTheNextFrame)
{
    Animation animation(0, 10, 3, 0);
    for (const int frame : {0, 1, 2, 0, 1, 2, 0}) {
        animation.Tick();
        EXPECT_EQ(animation.Frame(), frame);
    }
}

TEST(ImageAnimationTimeTest, ATickTakesThePrecisionOfItsOwnTime)
{
    Animation animation(1000, 10, 10, 0);
    animation.Tick(10);
    EXPECT_EQ(animation.Frame(), 1);
    animation.painter.SetPrecision(400);
    animation.Tick();
    EXPECT_EQ(animation.Frame(), 5);
    animation.painter.SetDuring(5000);
    animation.Tick(); // 900 of 5000
    EXPECT_EQ(animation.Frame(), 1);
}

TEST(ImageAnimationTimeTest, APrecisionBelowZeroRunsBackOutOfTheFrames)
{
    Animation animation(1000, 10, 10, 0);
    animation.Tick(30);
    EXPECT_EQ(animation.Frame(), 3);
    animation.painter.SetPrecision(-100);
    animation.Tick();
    EXPECT_EQ(animation.Frame(), 2);
    animation.Tick(3); // -100
    EXPECT_EQ(animation.Frame(), -1);
}

TEST(ImageAnimationTimeTest, TheLargestDurationAndPrecisionStillCount)
{
    Animation animation(INT_MAX, INT_MAX, 2, 0);
    animation.Tick();
    EXPECT_EQ(animation.Frame(), 1);
    animation.Tick(); // twice the duration, and not beyond duration and precision
    EXPECT_EQ(animation.Frame(), 1);
    animation.Tick();
    EXPECT_EQ(animation.Frame(), 0);
}

TEST(ImageAnimationRoundsTest, TheLimitStopsOnlyWithAFrameForEveryTick)
{
    EXPECT_EQ(Animation(1000, 10, 8, 3).StopTick(kTicks), std::nullopt);
    EXPECT_EQ(Animation(1000, 10, 99, 3).StopTick(kTicks), std::nullopt);
    EXPECT_EQ(Animation(1000, 10, 100, 3).StopTick(kTicks), 203);
    EXPECT_EQ(Animation(0, 10, 100, 1).StopTick(kTicks), std::nullopt);
}

TEST(ImageAnimationRoundsTest, ACycleCountsTwoRounds)
{
    // Both ticks at the end of a cycle count one; the limit is seen on the second.
    constexpr int kCycle = 102; // ticks
    EXPECT_EQ(Animation(1000, 10, 100, 1).StopTick(kTicks), 101);
    EXPECT_EQ(Animation(1000, 10, 100, 2).StopTick(kTicks), kCycle + 101);
    EXPECT_EQ(Animation(1000, 10, 100, 3).StopTick(kTicks), kCycle + 101);
    EXPECT_EQ(Animation(1000, 10, 100, 4).StopTick(kTicks), 2 * kCycle + 101);
    EXPECT_EQ(Animation(1000, 10, 100, 5).StopTick(kTicks), 2 * kCycle + 101);
}

TEST(ImageAnimationRoundsTest, GrowByTwoPerCycleAlsoWhereTheLimitHasNoEffect)
{
    Animation animation(1000, 10, 10, 3);
    animation.Tick(101);
    animation.painter.SetBitmaps(CountedFrames(1000));
    // The third round is the next tick that reaches the last frame, and the one after it stops.
    EXPECT_EQ(animation.StopTick(kTicks), 102);
}

TEST(ImageAnimationRoundsTest, BelowOneAreNoLimit)
{
    for (const int limit : {0, -1, INT_MIN}) {
        Animation animation(1000, 10, 100, 1);
        animation.painter.SetMaxRound(limit);
        EXPECT_EQ(animation.StopTick(kTicks), std::nullopt) << limit;
    }
}

TEST(ImageAnimationRoundsTest, GoOnOverAStopByHand)
{
    Animation animation(1000, 10, 100, 3);
    animation.Tick(101); // two rounds
    animation.painter.Stop();
    animation.painter.Start();
    EXPECT_EQ(animation.StopTick(kTicks), 101);
}

TEST(ImageAnimationRoundsTest, BeginAgainAfterTheLimit)
{
    Animation animation(1000, 10, 100, 3);
    EXPECT_EQ(animation.StopTick(kTicks), 203);
    animation.painter.Start();
    EXPECT_EQ(animation.StopTick(kTicks), 203);
}

TEST(ImageAnimationRoundsTest, OfNoFramesGrowByOneWithEveryTick)
{
    Animation animation(1000, 10, 0, 3);
    animation.Tick(3);
    animation.painter.SetBitmaps(CountedFrames(1000));
    EXPECT_EQ(animation.StopTick(kTicks), 98); // at the first frame beyond the last
}

} // namespace
} // namespace test
