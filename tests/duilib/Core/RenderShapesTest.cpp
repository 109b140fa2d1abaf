#include "support/ObjectCounters.h"
#include "support/Picture.h"

#include <UIlib.h>

#include <gtest/gtest.h>

using namespace DuiLib;
using namespace test;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kBlue{0xFF0000FF};

int Channel(Argb colour, int shift)
{
    return static_cast<int>((colour.value >> shift) & 0xFF);
}

void ExpectNear(Argb actual, Argb expected, int tolerance)
{
    for (const int shift : {16, 8, 0})
        EXPECT_NEAR(Channel(actual, shift), Channel(expected, shift), tolerance)
            << actual << " instead of " << expected;
}

class RenderShapesTest : public testing::Test {
protected:
    void ExpectOnlyIn(Argb colour, const RECT& part)
    {
        const Picture picture = canvas.Take();
        const int area = (part.right - part.left) * (part.bottom - part.top);
        EXPECT_EQ(picture.Count(colour, part), area);
        EXPECT_EQ(picture.Count(kWhite), 40 * 30 - area);
    }

    Canvas canvas{40, 30};
    HDC dc = canvas.Dc();
};

using DrawColorTest = RenderShapesTest;

TEST_F(DrawColorTest, OpaqueColourFillsTheRectangleExactly)
{
    CRenderEngine::DrawColor(dc, {3, 4, 20, 15}, kRed.value);
    ExpectOnlyIn(kRed, {3, 4, 20, 15});
}

TEST_F(DrawColorTest, ColourWithoutAlphaDrawsNothing)
{
    CRenderEngine::DrawColor(dc, {0, 0, 40, 30}, 0x00FF0000);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(DrawColorTest, EmptyAndReversedRectanglesDrawNothing)
{
    for (const DWORD colour : {0xFFFF0000u, 0x80FF0000u}) {
        CRenderEngine::DrawColor(dc, {5, 5, 5, 20}, colour);
        CRenderEngine::DrawColor(dc, {20, 20, 5, 5}, colour);
    }
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

struct Blend {
    const char* name;
    DWORD colour;
    Argb below;
    Argb result;
};

class BlendTest : public RenderShapesTest, public testing::WithParamInterface<Blend> {};

TEST_P(BlendTest, MixesByTheAlphaOfTheColour)
{
    canvas.Fill(GetParam().below);
    CRenderEngine::DrawColor(dc, {5, 5, 35, 25}, GetParam().colour);
    const Picture picture = canvas.Take();
    for (const POINT point : {POINT{5, 5}, POINT{20, 15}, POINT{34, 24}})
        ExpectNear(picture.At(point.x, point.y), GetParam().result, 1);
    EXPECT_EQ(picture.At(4, 5), GetParam().below);
    EXPECT_EQ(picture.At(35, 24), GetParam().below);
}

INSTANTIATE_TEST_SUITE_P(
    Colours, BlendTest,
    testing::Values(Blend{"HalfRedOnWhite", 0x80C80000, kWhite, Argb{0xFFE37F7F}},
                    Blend{"HalfBlackOnWhite", 0x80000000, kWhite, Argb{0xFF7F7F7F}},
                    Blend{"HalfWhiteOnBlack", 0x80FFFFFF, Argb{0xFF000000}, Argb{0xFF808080}},
                    Blend{"AlmostNothing", 0x01000000, kWhite, Argb{0xFFFEFEFE}},
                    Blend{"AlmostAll", 0xFE00FF00, kRed, Argb{0xFF01FE00}},
                    Blend{"Black", 0xFF000000, kWhite, Argb{0xFF000000}}),
    [](const auto& info) { return info.param.name; });

TEST_F(DrawColorTest, EachColourOfASeriesIsItsOwn)
{
    CRenderEngine::DrawColor(dc, {0, 0, 10, 30}, 0x80FF0000);
    CRenderEngine::DrawColor(dc, {10, 0, 20, 30}, 0x8000FF00);
    CRenderEngine::DrawColor(dc, {20, 0, 30, 30}, 0x80FF0000);
    const Picture picture = canvas.Take();
    ExpectNear(picture.At(5, 5), Argb{0xFFFF7F7F}, 1);
    ExpectNear(picture.At(15, 5), Argb{0xFF7FFF7F}, 1);
    EXPECT_EQ(picture.At(25, 5), picture.At(5, 5));
}

TEST_F(DrawColorTest, TranslucentColourWritesItsAlpha)
{
    canvas.Fill(Argb{0});
    CRenderEngine::DrawColor(dc, {0, 0, 40, 30}, 0x80FF0000);
    EXPECT_EQ(canvas.Take(Canvas::Alpha::AsDrawn).At(10, 10), Argb{0x80800000});
}

TEST_F(DrawColorTest, BlackIsToldFromNothing)
{
    canvas.Fill(Argb{0});
    CRenderEngine::DrawColor(dc, {5, 5, 35, 25}, 0xFF000000);
    const Picture picture = canvas.Take(Canvas::Alpha::AsDrawn);
    EXPECT_EQ(picture.Count(Argb{0xFF000000}, {5, 5, 35, 25}), 30 * 20);
    EXPECT_EQ(picture.Count(Argb{0xFF000000}), 30 * 20);
}

TEST_F(DrawColorTest, KeepsTheBrushColourOfTheDc)
{
    ::SetDCBrushColor(dc, RGB(1, 2, 3));
    CRenderEngine::DrawColor(dc, {0, 0, 40, 30}, kRed.value);
    EXPECT_EQ(::GetDCBrushColor(dc), RGB(1, 2, 3));
}

using DrawGradientTest = RenderShapesTest;

TEST_F(DrawGradientTest, VerticalGradientRunsFromTopToBottom)
{
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, kRed.value, kBlue.value, true, 8);
    const Picture picture = canvas.Take();
    ExpectNear(picture.At(20, 0), kRed, 10);
    ExpectNear(picture.At(20, 15), Argb{0xFF800080}, 10);
    ExpectNear(picture.At(20, 29), kBlue, 10);
    EXPECT_EQ(picture.At(0, 10), picture.At(39, 10));
}

TEST_F(DrawGradientTest, HorizontalGradientRunsFromLeftToRight)
{
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, kRed.value, kBlue.value, false, 8);
    const Picture picture = canvas.Take();
    ExpectNear(picture.At(0, 15), kRed, 10);
    ExpectNear(picture.At(39, 15), kBlue, 10);
    EXPECT_EQ(picture.At(10, 0), picture.At(10, 29));
}

TEST_F(DrawGradientTest, StepsChangeNothing)
{
    Canvas other(40, 30);
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, kRed.value, kBlue.value, false, 2);
    CRenderEngine::DrawGradient(other.Dc(), {0, 0, 40, 30}, kRed.value, kBlue.value, false, 64);
    EXPECT_EQ(canvas.Take(), other.Take());
}

TEST_F(DrawGradientTest, AlphaIsTheMeanOfBothColours)
{
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, 0xC0FF0000, 0x40FF0000, true, 8);
    const Picture picture = canvas.Take();
    ExpectNear(picture.At(20, 0), Argb{0xFFFF7F7F}, 1);
    EXPECT_EQ(picture.At(20, 0), picture.At(20, 29));
}

TEST_F(DrawGradientTest, TranslucentGradientFollowsBothDirections)
{
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, 0x80FF0000, 0x800000FF, false, 8);
    const Picture across = canvas.Take();
    ExpectNear(across.At(0, 10), Argb{0xFFFF7F7F}, 10);
    ExpectNear(across.At(39, 10), Argb{0xFF7F7FFF}, 10);

    canvas.Fill(kWhite);
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, 0x80FF0000, 0x800000FF, true, 8);
    const Picture down = canvas.Take();
    ExpectNear(down.At(10, 0), Argb{0xFFFF7F7F}, 10);
    ExpectNear(down.At(10, 29), Argb{0xFF7F7FFF}, 10);
}

TEST_F(DrawGradientTest, LongTranslucentGradientHasNoSeam)
{
    const Canvas tall(2, 2500);
    CRenderEngine::DrawGradient(tall.Dc(), {0, 0, 2, 2500}, 0x80000000, 0x80FFFFFF, true, 8);
    const Picture picture = tall.Take();
    for (int y = 1; y < 2500; ++y) {
        const int step = Channel(picture.At(0, y), 0) - Channel(picture.At(0, y - 1), 0);
        ASSERT_GE(step, 0) << y;
        ASSERT_LE(step, 1) << y;
    }
}

TEST_F(DrawGradientTest, TransparentColoursDrawNothing)
{
    CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, 0x00FF0000, 0x000000FF, true, 8);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(DrawGradientTest, StaysInItsRectangle)
{
    CRenderEngine::DrawGradient(dc, {10, 10, 20, 20}, kRed.value, kRed.value, true, 8);
    ExpectOnlyIn(kRed, {10, 10, 20, 20});
}

struct Line {
    const char* name;
    RECT ends;
    int size;
    RECT covered;
};

class LineTest : public RenderShapesTest, public testing::WithParamInterface<Line> {};

TEST_P(LineTest, CoversExactlyItsPixels)
{
    CRenderEngine::DrawLine(dc, GetParam().ends, GetParam().size, kRed.value);
    ExpectOnlyIn(kRed, GetParam().covered);
}

INSTANTIATE_TEST_SUITE_P(Lines, LineTest,
                         testing::Values(Line{"Horizontal", {5, 10, 25, 10}, 1, {5, 10, 25, 11}},
                                         Line{"Vertical", {5, 10, 5, 20}, 1, {5, 10, 6, 20}},
                                         Line{"WideHorizontal", {5, 10, 25, 10}, 3, {5, 9, 25, 12}},
                                         Line{"WideVertical", {5, 10, 5, 20}, 4, {3, 10, 7, 20}},
                                         Line{"Backwards", {25, 10, 5, 10}, 1, {6, 10, 26, 11}},
                                         Line{"NoLength", {5, 10, 5, 10}, 3, {0, 0, 0, 0}},
                                         Line{"NoWidth", {5, 10, 25, 10}, 0, {0, 0, 0, 0}}),
                         [](const auto& info) { return info.param.name; });

using DrawLineTest = RenderShapesTest;

TEST_F(DrawLineTest, SlantedLineRunsBetweenItsEnds)
{
    CRenderEngine::DrawLine(dc, {5, 5, 25, 25}, 3, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(15, 15), kRed);
    EXPECT_EQ(picture.At(25, 5), kWhite);
    EXPECT_EQ(picture.At(5, 25), kWhite);
}

TEST_F(DrawLineTest, SixDigitColourDrawsOpaque)
{
    CRenderEngine::DrawLine(dc, {5, 10, 25, 10}, 1, 0x00FF0000);
    ExpectOnlyIn(kRed, {5, 10, 25, 11});
}

TEST_F(DrawLineTest, TranslucentColourIsBlended)
{
    CRenderEngine::DrawLine(dc, {5, 10, 25, 10}, 1, 0x80000000);
    ExpectNear(canvas.Take().At(10, 10), Argb{0xFF7F7F7F}, 1);
}

TEST_F(DrawLineTest, NullPenDrawsNothing)
{
    CRenderEngine::DrawLine(dc, {5, 10, 25, 10}, 1, kRed.value, PS_NULL);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

struct Dash {
    const char* name;
    int style;
    const char* row;
};

class DashTest : public RenderShapesTest, public testing::WithParamInterface<Dash> {
protected:
    static std::string RowOf(const Picture& picture, int y)
    {
        std::string row;
        for (int x = 0; x < 20; ++x)
            row += picture.At(x, y) == kRed ? '#' : '.';
        return row;
    }
};

TEST_P(DashTest, HorizontalLineHasThePatternOfItsStyle)
{
    CRenderEngine::DrawLine(dc, {0, 10, 20, 10}, 1, kRed.value, GetParam().style);
    EXPECT_EQ(RowOf(canvas.Take(), 10), GetParam().row);
}

TEST_P(DashTest, ClippedLineKeepsThePattern)
{
    ::IntersectClipRect(dc, 9, 0, 40, 30);
    CRenderEngine::DrawLine(dc, {0, 10, 20, 10}, 1, kRed.value, GetParam().style);
    EXPECT_EQ(RowOf(canvas.Take(), 10), "........." + std::string(GetParam().row).substr(9));
}

TEST_P(DashTest, OutlineHasThePatternAtItsTop)
{
    CRenderEngine::DrawRect(dc, {0, 0, 20, 20}, 1, kRed.value, GetParam().style);
    EXPECT_EQ(RowOf(canvas.Take(), 0), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(Styles, DashTest,
                         testing::Values(Dash{"Solid", PS_SOLID, "####################"},
                                         Dash{"Dash", PS_DASH, "###.###.###.###.###."},
                                         Dash{"Dot", PS_DOT, "#.#.#.#.#.#.#.#.#.#."},
                                         Dash{"DashDot", PS_DASHDOT, "###.#.###.#.###.#.##"},
                                         Dash{"DashDotDot", PS_DASHDOTDOT, "###.#.#.###.#.#.###."}),
                         [](const auto& info) { return info.param.name; });

using DrawRectTest = RenderShapesTest;

TEST_F(DrawRectTest, OutlineLiesInsideTheRectangle)
{
    CRenderEngine::DrawRect(dc, {5, 5, 25, 20}, 2, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.Count(kRed), 20 * 15 - 16 * 11);
    EXPECT_EQ(picture.Count(kWhite, {7, 7, 23, 18}), 16 * 11);
    EXPECT_EQ(picture.Count(kWhite, {5, 5, 25, 20}), 16 * 11);
}

TEST_F(DrawRectTest, TranslucentOutlineIsEvenInTheCorners)
{
    CRenderEngine::DrawRect(dc, {5, 5, 25, 20}, 3, 0x80000000);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(5, 5), picture.At(15, 5));
    EXPECT_EQ(picture.At(24, 19), picture.At(5, 10));
    EXPECT_EQ(picture.At(6, 17), picture.At(5, 10));
}

TEST_F(DrawRectTest, ThickOutlineFillsTheRectangle)
{
    CRenderEngine::DrawRect(dc, {5, 5, 15, 10}, 9, kRed.value);
    ExpectOnlyIn(kRed, {5, 5, 15, 10});
}

TEST_F(DrawRectTest, NoWidthOrAnEmptyRectangleDrawsNothing)
{
    CRenderEngine::DrawRect(dc, {5, 5, 15, 10}, 0, kRed.value);
    CRenderEngine::DrawRect(dc, {5, 5, 5, 10}, 1, kRed.value);
    CRenderEngine::DrawRect(dc, {5, 5, 15, 10}, 1, kRed.value, PS_NULL);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

// GDI+ must be running, as it is while a manager lives.
class DrawRoundRectTest : public RenderShapesTest {
protected:
    CPaintManagerUI manager;
};

TEST_F(DrawRoundRectTest, OutlineRunsThroughTheLastColumnAndRow)
{
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 1, 8, 8, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(5, 15), kRed);
    EXPECT_EQ(picture.At(34, 15), kRed);
    EXPECT_EQ(picture.At(20, 5), kRed);
    EXPECT_EQ(picture.At(20, 24), kRed);
    EXPECT_EQ(picture.At(35, 15), kWhite);
    EXPECT_EQ(picture.At(20, 25), kWhite);
    EXPECT_EQ(picture.At(20, 15), kWhite);
}

TEST_F(DrawRoundRectTest, FirstNumberIsTheLineWidth)
{
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 3, 12, 0, kRed.value);
    const Picture picture = canvas.Take();
    for (const int y : {4, 5, 6})
        EXPECT_EQ(picture.At(20, y), kRed) << y;
    EXPECT_EQ(picture.At(20, 8), kWhite);
}

TEST_F(DrawRoundRectTest, CornerRadiusIsHalfTheCornerWidth)
{
    CRenderEngine::DrawRoundRect(dc, {0, 0, 40, 30}, 1, 20, 2, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(0, 0), kWhite);
    EXPECT_EQ(picture.At(3, 0), kWhite); // still in the corner
    EXPECT_EQ(picture.At(14, 0), kRed);  // beyond it
    EXPECT_EQ(picture.At(0, 14), kRed);
}

TEST_F(DrawRoundRectTest, CornerHeightHasNoSay)
{
    Canvas other(40, 30);
    CRenderEngine::DrawRoundRect(dc, {0, 0, 40, 30}, 1, 12, 2, kRed.value);
    CRenderEngine::DrawRoundRect(other.Dc(), {0, 0, 40, 30}, 1, 12, 28, kRed.value);
    EXPECT_EQ(canvas.Take(), other.Take());
}

TEST_F(DrawRoundRectTest, CornersLargerThanTheRectangleAreCut)
{
    CRenderEngine::DrawRoundRect(dc, {10, 10, 20, 20}, 1, 100, 100, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(10, 10), kWhite);
    EXPECT_EQ(picture.Count(kRed), picture.Count(kRed, {10, 10, 20, 20}));
    EXPECT_GT(picture.Count(kRed), 10);
}

TEST_F(DrawRoundRectTest, WithoutCornersItIsARectangle)
{
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 1, 0, 0, kRed.value);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(5, 5), kRed);
    EXPECT_EQ(picture.At(34, 24), kRed);
    EXPECT_EQ(picture.At(20, 15), kWhite);
}

TEST_F(DrawRoundRectTest, AHugeRectangleShowsTheSidesThatAreNear)
{
    constexpr LONG kHuge = 80'000'000;
    CRenderEngine::DrawRoundRect(dc, {5, 5, kHuge, 25}, 1, 20, 20, kRed.value);
    const Picture wide = canvas.Take();
    EXPECT_EQ(wide.At(5, 15), kRed);
    EXPECT_EQ(wide.At(5, 5), kWhite); // the corner
    EXPECT_EQ(wide.At(39, 5), kRed);
    EXPECT_EQ(wide.At(39, 24), kRed);

    Canvas other(40, 30);
    CRenderEngine::DrawRoundRect(other.Dc(), {-kHuge, -kHuge, 20, kHuge}, 1, kHuge, kHuge,
                                 kRed.value);
    EXPECT_EQ(other.Take().At(19, 15), kRed);
}

TEST_F(DrawRoundRectTest, NothingIsDrawnFarAway)
{
    CRenderEngine::DrawRoundRect(dc, {80'000'000, 5, 90'000'000, 25}, 1, 8, 8, kRed.value);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(DrawRoundRectTest, NoWidthNoAlphaAndNullPenDrawNothing)
{
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 0, 8, 8, kRed.value);
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 1, 8, 8, 0x00FF0000);
    CRenderEngine::DrawRoundRect(dc, {5, 5, 35, 25}, 1, 8, 8, kRed.value, PS_NULL);
    CRenderEngine::DrawRoundRect(dc, {5, 5, 5, 25}, 1, 8, 8, kRed.value);
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(DrawRoundRectTest, ShapesKeepTheNumberOfObjects)
{
    const auto drawAll = [this] {
        for (const DWORD colour : {0xFFFF0000u, 0x8000FF00u}) {
            CRenderEngine::DrawColor(dc, {0, 0, 40, 30}, colour);
            CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, colour, 0xFF000000, true, 8);
            CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, colour, 0x80000000, true, 8);
            CRenderEngine::DrawGradient(dc, {0, 0, 40, 30}, colour, 0x80000000, false, 8);
            CRenderEngine::DrawLine(dc, {0, 5, 40, 5}, 2, colour, PS_DASH);
            CRenderEngine::DrawLine(dc, {0, 5, 40, 25}, 2, colour);
            CRenderEngine::DrawRect(dc, {0, 0, 40, 30}, 2, colour);
            CRenderEngine::DrawRoundRect(dc, {0, 0, 40, 30}, 2, 8, 8, colour);
        }
    };
    drawAll();
    GdiplusObjects();
    drawAll();
    const int gdi = GdiObjects();
    const int gdiplus = GdiplusObjects();
    for (int i = 0; i < 100; ++i)
        drawAll();
    EXPECT_EQ(GdiObjects(), gdi);
    EXPECT_EQ(GdiplusObjects(), gdiplus);
}

} // namespace
