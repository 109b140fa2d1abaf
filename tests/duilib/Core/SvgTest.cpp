#include "duilib/Core/PictureFiles.h"

#include "support/DebugOutput.h"

#include <algorithm>

namespace {

using namespace test;
using DuiLib::CPaintManagerUI;

class SvgTest : public ImageFilesTest {
protected:
    UniqueImage LoadText(std::string_view text)
    {
        Write(L"a.svg", text);
        return Load(L"a.svg");
    }

    // The pixels of a drawing whose view box is its pixels; nothing when it fails.
    Picture Draw(int size, std::string_view content, std::string_view rootAttributes = "")
    {
        const auto image = LoadText(SvgFile(size, content, rootAttributes));
        if (image == nullptr) {
            ADD_FAILURE() << Utf8(LastError());
            return Picture(size, size);
        }
        return PixelsOf(*image);
    }

    std::wstring FailureOf(std::string_view text)
    {
        CPaintManagerUI::SetLastErrorText(L"");
        EXPECT_EQ(LoadText(text), nullptr);
        return LastError();
    }
};

// How many pixels are covered, in units of whole pixels.
double Coverage(const Picture& picture)
{
    double sum = 0;
    for (int y = 0; y < picture.Height(); y++) {
        for (int x = 0; x < picture.Width(); x++)
            sum += picture.At(x, y).value >> 24;
    }
    return sum / 255;
}

constexpr double kPi = 3.14159265358979;

TEST_F(SvgTest, SizeComesFromWidthAndHeight)
{
    const auto image = LoadText("<svg width=\"12\" height=\"7px\"/>");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 12);
    EXPECT_EQ(image->nY, 7);
    EXPECT_TRUE(image->bAlpha);
    EXPECT_EQ(PixelsOf(*image), Picture(12, 7, kClear));
}

TEST_F(SvgTest, SizeComesFromTheViewBox)
{
    const auto image = LoadText("<svg viewBox=\"0 0 9 11\"/>");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 9);
    EXPECT_EQ(image->nY, 11);
}

TEST_F(SvgTest, MissingSideFollowsTheViewBox)
{
    const auto image = LoadText("<svg width=\"20\" viewBox=\"0 0 10 30\"/>");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 20);
    EXPECT_EQ(image->nY, 60);
}

TEST_F(SvgTest, UnitsAreConverted)
{
    const auto image = LoadText("<svg width=\"0.5in\" height=\"12pt\"/>");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 48);
    EXPECT_EQ(image->nY, 16);
}

TEST_F(SvgTest, ViewBoxIsFittedAndCentred)
{
    const auto picture =
        PixelsOf(*LoadText("<svg width=\"20\" height=\"10\" viewBox=\"5 5 5 5\">"
                           "<rect x=\"5\" y=\"5\" width=\"5\" height=\"5\" fill=\"red\"/></svg>"));
    EXPECT_EQ(picture.At(4, 5), kClear);
    EXPECT_EQ(picture.At(5, 0), kRed);
    EXPECT_EQ(picture.At(14, 9), kRed);
    EXPECT_EQ(picture.At(15, 5), kClear);
}

TEST_F(SvgTest, ViewBoxMayBeStretched)
{
    const auto picture = PixelsOf(*LoadText(
        "<svg width=\"20\" height=\"10\" viewBox=\"0 0 5 5\" preserveAspectRatio=\"none\">"
        "<rect width=\"5\" height=\"5\" fill=\"red\"/></svg>"));
    EXPECT_EQ(picture, Picture(20, 10, kRed));
}

TEST_F(SvgTest, RectFillsItsPixelsExactly)
{
    const auto picture =
        Draw(10, "<rect x=\"2\" y=\"3\" width=\"4\" height=\"5\" fill=\"#FF0000\"/>");
    EXPECT_EQ(picture.Count(kRed), 20);
    EXPECT_EQ(picture.Count(kClear), 80);
    EXPECT_EQ(picture.At(2, 3), kRed);
    EXPECT_EQ(picture.At(5, 7), kRed);
}

TEST_F(SvgTest, HalfCoveredPixelsAreHalfTransparent)
{
    const auto picture = Draw(4, "<rect x=\"0.5\" width=\"2\" height=\"4\" fill=\"#FF0000\"/>");
    ExpectSimilar(
        picture,
        [] {
            Picture expected(4, 4, kClear);
            for (int y = 0; y < 4; y++) {
                expected.Set(0, y, Argb{0x80800000});
                expected.Set(1, y, kRed);
                expected.Set(2, y, Argb{0x80800000});
            }
            return expected;
        }(),
        1, 0.5);
}

TEST_F(SvgTest, DefaultFillIsBlack)
{
    EXPECT_EQ(Draw(4, "<rect width=\"4\" height=\"4\"/>"), Picture(4, 4, kBlack));
}

TEST_F(SvgTest, CircleCoversItsArea)
{
    const auto picture = Draw(40, "<circle cx=\"20\" cy=\"20\" r=\"15\" fill=\"lime\"/>");
    EXPECT_NEAR(Coverage(picture), kPi * 15 * 15, 12);
    EXPECT_EQ(picture.At(20, 6), kGreen);
    EXPECT_EQ(picture.At(20, 4), kClear);
    EXPECT_EQ(picture.At(8, 8), kClear);
}

TEST_F(SvgTest, EdgesAreSmooth)
{
    const auto picture = Draw(40, "<circle cx=\"20\" cy=\"20\" r=\"15\" fill=\"lime\"/>");
    const int between = 40 * 40 - picture.Count(kGreen) - picture.Count(kClear);
    EXPECT_GT(between, 60);
}

TEST_F(SvgTest, EllipseCoversItsArea)
{
    const auto picture = Draw(40, "<ellipse cx=\"20\" cy=\"20\" rx=\"18\" ry=\"9\"/>");
    EXPECT_NEAR(Coverage(picture), kPi * 18 * 9, 12);
    EXPECT_EQ(picture.At(20, 12), kBlack);
    EXPECT_EQ(picture.At(20, 10), kClear);
}

TEST_F(SvgTest, RectCornersAreRounded)
{
    const auto square = 32.0 * 32;
    const auto both = Draw(32, "<rect width=\"32\" height=\"32\" rx=\"8\" ry=\"4\"/>");
    EXPECT_NEAR(Coverage(both), square - (4 - kPi) * 8 * 4, 6);
    const auto one = Draw(32, "<rect width=\"32\" height=\"32\" rx=\"8\"/>");
    EXPECT_NEAR(Coverage(one), square - (4 - kPi) * 8 * 8, 6);
    const auto other = Draw(32, "<rect width=\"32\" height=\"32\" ry=\"8\"/>");
    EXPECT_EQ(one, other);
    const auto whole = Draw(32, "<rect width=\"32\" height=\"32\" rx=\"99\"/>");
    EXPECT_NEAR(Coverage(whole), kPi * 16 * 16, 12);
}

TEST_F(SvgTest, PolygonCloses)
{
    const auto picture = Draw(20, "<polygon points=\"0,0 20,0 20,20\"/>");
    EXPECT_NEAR(Coverage(picture), 200, 6);
    EXPECT_EQ(picture.At(18, 2), kBlack);
    EXPECT_EQ(picture.At(2, 18), kClear);
}

TEST_F(SvgTest, PolylineStrokesWithoutItsClosingLine)
{
    const auto picture = Draw(
        20,
        "<polyline points=\"2 2 18 2 18 18\" fill=\"none\" stroke=\"red\" stroke-width=\"2\"/>");
    EXPECT_EQ(picture.At(10, 1), kRed);
    EXPECT_EQ(picture.At(17, 10), kRed);
    EXPECT_EQ(picture.At(10, 10), kClear);
    EXPECT_EQ(picture.At(2, 10), kClear);
}

TEST_F(SvgTest, LineIsStrokedAndNeverFilled)
{
    const auto picture = Draw(10, "<line x1=\"1\" y1=\"5\" x2=\"9\" y2=\"5\" stroke=\"blue\" "
                                  "stroke-width=\"2\" fill=\"red\"/>");
    EXPECT_EQ(picture.Count(kBlue), 16);
    EXPECT_EQ(picture.Count(kRed), 0);
    EXPECT_EQ(picture.At(1, 4), kBlue);
    EXPECT_EQ(picture.At(8, 5), kBlue);
}

// Every command, absolute and relative: all of them draw the square from 2 to 8, or an area in it.
TEST_F(SvgTest, PathCommandsDrawTheirLines)
{
    struct Row {
        const char* data;
        double area;
    };
    const Row rows[] = {
        {"M2 2L8 2L8 8L2 8Z", 36},
        {"m2,2 l6,0 l0,6 l-6,0 z", 36},
        {"M2 2H8V8H2Z", 36},
        {"m2 2h6v6h-6z", 36},
        {"M2 2 8 2 8 8 2 8", 36},
        {"m2 2 6 0 0 6-6 0", 36},
        {"M2-0m0 2h6v6h-6", 36},
        {"M2 2C2 2 8 2 8 2S8 8 8 8S2 8 2 8z", 36},
        {"M2 2c0 0 6 0 6 0s0 6 0 6s-6 0-6 0z", 36},
        {"M2 2Q8 2 8 2T8 8", 18},
        {"M2 2q6 0 6 0t0 6", 18},
        {"M2 5A3 3 0 0 1 8 5A3 3 0 0 1 2 5", kPi * 9},
        {"M2 5a3 3 0 0 1 6 0a3 3 0 0 1-6 0", kPi * 9},
        {"M2 5a3 3 0 016 0a3 3 0 01-6 0z", kPi * 9},
        {"M2 5A3 3 0 0 0 8 5Z", kPi * 9 / 2},
        {"M2e0 .2e1h60e-1v6h-6z", 36},
        {"M2 2h3v3h-3zM5 5h3v3h-3z", 18},
        {"M2 2h3v3h-3zm3 3h3v3h-3z", 18},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.data);
        const auto picture = Draw(10, "<path d=\"" + std::string(row.data) + "\"/>");
        EXPECT_NEAR(Coverage(picture), row.area, row.area == 36 ? 1.5 : 2.5);
        const RECT bounds = picture.BoundsOfAllBut(kClear);
        EXPECT_GE(bounds.left, 1);
        EXPECT_LE(bounds.right, 9);
        EXPECT_LE(bounds.bottom, 9);
    }
}

TEST_F(SvgTest, SmoothCurvesMirrorTheControlPoint)
{
    const auto cubic = Draw(20, "<path d=\"M2 10C2 4 10 4 10 10S18 16 18 10\"/>");
    EXPECT_EQ(cubic.At(6, 7), kBlack);
    EXPECT_EQ(cubic.At(14, 13), kBlack);
    EXPECT_EQ(cubic.At(14, 7), kClear);
    const auto quadratic = Draw(20, "<path d=\"M2 10Q6 2 10 10T18 10\"/>");
    EXPECT_EQ(quadratic.At(6, 8), kBlack);
    EXPECT_EQ(quadratic.At(14, 12), kBlack);
    const auto relative = Draw(20, "<path d=\"M2 10q4-8 8 0t8 0\"/>");
    EXPECT_EQ(relative, quadratic);
    // After another command the control point is the current point.
    const auto straight = Draw(20, "<path d=\"M2 10Q6 2 10 10L10 10T18 10\"/>");
    EXPECT_EQ(straight.At(14, 12), kClear);
}

TEST_F(SvgTest, ArcFlagsChooseTheArc)
{
    // A quarter of a circle around (5, 5) with radius 5, and the other three quarters.
    const auto small = Draw(20, "<path d=\"M10 5A5 5 0 0 1 5 10L5 5Z\"/>");
    EXPECT_NEAR(Coverage(small), kPi * 25 / 4, 2);
    const auto large = Draw(20, "<path d=\"M10 5A5 5 0 1 0 5 10L5 5Z\"/>");
    EXPECT_NEAR(Coverage(large), kPi * 25 * 3 / 4, 3);
}

TEST_F(SvgTest, ArcOfATooSmallRadiusGrows)
{
    EXPECT_NEAR(Coverage(Draw(20, "<path d=\"M2 10A1 1 0 0 1 18 10Z\"/>")), kPi * 64 / 2, 4);
}

TEST_F(SvgTest, TurnedArcTurnsItsEllipse)
{
    // The whole ellipse, standing although its radii say lying.
    const auto picture = Draw(20, "<path d=\"M10 1A9 4 90 0 1 10 19A9 4 90 0 1 10 1\"/>");
    EXPECT_NEAR(Coverage(picture), kPi * 9 * 4, 4);
    const RECT bounds = picture.BoundsOfAllBut(kClear);
    EXPECT_GE(bounds.left, 5);
    EXPECT_LE(bounds.right, 15);
    EXPECT_LE(bounds.top, 1);
}

TEST_F(SvgTest, PathIsDrawnUpToItsFirstMistake)
{
    const auto picture = Draw(10, "<path d=\"M2 2H8V8H2 what H0\"/>");
    EXPECT_NEAR(Coverage(picture), 36, 1);
    EXPECT_EQ(Draw(10, "<path d=\"H8V8\"/>"), Picture(10, 10, kClear));
    EXPECT_EQ(Draw(10, "<path/>"), Picture(10, 10, kClear));
}

TEST_F(SvgTest, FillRuleMakesHoles)
{
    const std::string path = "d=\"M1 1H9V9H1ZM3 3H7V7H3Z\"";
    EXPECT_EQ(Draw(10, "<path " + path + "/>").At(5, 5), kBlack);
    const auto holed = Draw(10, "<path fill-rule=\"evenodd\" " + path + "/>");
    EXPECT_EQ(holed.At(5, 5), kClear);
    EXPECT_EQ(holed.At(2, 5), kBlack);
    EXPECT_EQ(Draw(10, "<path d=\"M1 1H9V9H1ZM3 3V7H7V3Z\"/>").At(5, 5), kClear);
}

TEST_F(SvgTest, StrokeLiesOnBothSidesOfTheLine)
{
    const auto picture = Draw(20, "<rect x=\"5\" y=\"5\" width=\"10\" height=\"10\" fill=\"lime\" "
                                  "stroke=\"red\" stroke-width=\"4\"/>");
    EXPECT_EQ(picture.At(3, 10), kRed);
    EXPECT_EQ(picture.At(6, 10), kRed);
    EXPECT_EQ(picture.At(7, 10), kGreen);
    EXPECT_EQ(picture.At(2, 10), kClear);
    EXPECT_EQ(picture.At(3, 3), kRed);
}

TEST_F(SvgTest, JoinsDiffer)
{
    // The outer corner of the angle is at (16, 4).
    const auto corner = [this](const char* join) {
        return Draw(20, "<path d=\"M2 6H14V18\" fill=\"none\" stroke=\"red\" stroke-width=\"4\" "
                        "stroke-linejoin=\"" +
                            std::string(join) + "\"/>");
    };
    const auto miter = corner("miter");
    const auto round = corner("round");
    const auto bevel = corner("bevel");
    EXPECT_EQ(miter.At(15, 4), kRed);
    EXPECT_NE(round.At(15, 4), kRed);
    EXPECT_NEAR(Coverage(miter) - Coverage(bevel), 2, 0.7);
    EXPECT_NEAR(Coverage(miter) - Coverage(round), 4 - kPi, 0.7);
}

TEST_F(SvgTest, SharpMiterBecomesABevel)
{
    const auto sharp = [this](const char* limit) {
        return Draw(40, "<path d=\"M5 18L30 20L5 22\" fill=\"none\" stroke=\"red\" "
                        "stroke-width=\"2\" stroke-miterlimit=\"" +
                            std::string(limit) + "\"/>");
    };
    EXPECT_EQ(sharp("4").At(34, 20), kClear);
    EXPECT_NE(sharp("40").At(34, 20), kClear);
}

TEST_F(SvgTest, CapsDiffer)
{
    const auto capped = [this](const char* cap) {
        return Coverage(Draw(20, "<path d=\"M6 10H14\" stroke=\"red\" stroke-width=\"4\" "
                                 "stroke-linecap=\"" +
                                     std::string(cap) + "\"/>"));
    };
    EXPECT_NEAR(capped("butt"), 32, 0.1);
    EXPECT_NEAR(capped("square"), 48, 0.1);
    EXPECT_NEAR(capped("round"), 32 + kPi * 4, 1);
}

TEST_F(SvgTest, DotIsDrawnByItsCap)
{
    const auto dot = [this](const char* cap) {
        return Coverage(Draw(20, "<path d=\"M10 10Z\" stroke=\"red\" stroke-width=\"4\" "
                                 "stroke-linecap=\"" +
                                     std::string(cap) + "\"/>"));
    };
    EXPECT_EQ(dot("butt"), 0);
    EXPECT_NEAR(dot("square"), 16, 0.1);
    EXPECT_NEAR(dot("round"), kPi * 4, 1);
}

TEST_F(SvgTest, ClosedCurvesHaveNoGapInTheirStroke)
{
    const auto picture = Draw(
        40,
        "<circle cx=\"20\" cy=\"20\" r=\"12\" fill=\"none\" stroke=\"red\" stroke-width=\"4\"/>");
    EXPECT_NEAR(Coverage(picture), 2 * kPi * 12 * 4, 10);
    EXPECT_EQ(picture.At(20, 20), kClear);
    EXPECT_EQ(picture.At(31, 20), kRed);
}

TEST_F(SvgTest, ColoursAreRead)
{
    struct Row {
        const char* text;
        std::uint32_t colour;
    };
    const Row rows[] = {
        {"#1aF", 0xFF11AAFF},
        {"#12abEF", 0xFF12ABEF},
        {"rgb(1, 2,3)", 0xFF010203},
        {"rgb(100%,0%,20%)", 0xFFFF0033},
        {"RGB(300,0,0)", 0xFFFF0000},
        {"red", 0xFFFF0000},
        {"CornflowerBlue", 0xFF6495ED},
        {"darkgrey", 0xFFA9A9A9},
        {"yellowgreen", 0xFF9ACD32},
        {"aliceblue", 0xFFF0F8FF},
        {"none", 0},
        {"transparent", 0},
        {"nocolour", 0xFF000000},
        {"#12", 0xFF000000},
        {"url(#a) lime", 0xFF00FF00},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto picture =
            Draw(4, "<rect width=\"4\" height=\"4\" fill=\"" + std::string(row.text) + "\"/>");
        EXPECT_EQ(picture, Picture(4, 4, Argb{row.colour}));
    }
}

TEST_F(SvgTest, CurrentColourIsTheInheritedColour)
{
    EXPECT_EQ(
        Draw(4, "<g color=\"lime\"><rect width=\"4\" height=\"4\" fill=\"currentColor\"/></g>"),
        Picture(4, 4, kGreen));
}

TEST_F(SvgTest, OpacitiesMultiply)
{
    struct Row {
        const char* content;
        Argb pixel;
    };
    const Row rows[] = {
        {"<rect width=\"4\" height=\"4\" fill=\"red\" opacity=\"0.5\"/>", Argb{0x80800000}},
        {"<rect width=\"4\" height=\"4\" fill=\"red\" fill-opacity=\"50%\"/>", Argb{0x80800000}},
        {"<g opacity=\".5\"><rect width=\"4\" height=\"4\" fill=\"red\" fill-opacity=\".5\"/></g>",
         Argb{0x40400000}},
        {"<g fill-opacity=\".5\"><rect width=\"4\" height=\"4\" fill=\"red\"/></g>",
         Argb{0x80800000}},
        {"<path d=\"M0 2H4\" stroke=\"red\" stroke-width=\"4\" stroke-opacity=\"0.5\"/>",
         Argb{0x80800000}},
        {"<rect width=\"4\" height=\"4\" opacity=\"0\"/>", kClear},
        {"<rect width=\"4\" height=\"4\" fill=\"red\" opacity=\"7\"/>", kRed},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content);
        ExpectSimilar(Draw(4, row.content), Picture(4, 4, row.pixel), 1, 1);
    }
}

TEST_F(SvgTest, LaterShapesBlendOverEarlierOnes)
{
    const auto picture = Draw(4, "<rect width=\"4\" height=\"4\" fill=\"red\"/>"
                                 "<rect width=\"4\" height=\"4\" fill=\"blue\" opacity=\"0.5\"/>");
    ExpectSimilar(picture, Picture(4, 4, Argb{0xFF7F0080}), 1, 1);
}

TEST_F(SvgTest, TransformsAreApplied)
{
    struct Row {
        const char* transform;
        RECT bounds;
    };
    const Row rows[] = {
        {"translate(3)", {3, 0, 5, 2}},
        {"translate(3,4)", {3, 4, 5, 6}},
        {"scale(2)", {0, 0, 4, 4}},
        {"scale(2,3)", {0, 0, 4, 6}},
        {"matrix(1 0 0 1 5 6)", {5, 6, 7, 8}},
        {"translate(4 4) scale(2)", {4, 4, 8, 8}},
        {"scale(2) translate(4,4)", {8, 8, 12, 12}},
        {"translate(10,0) rotate(90)", {8, 0, 10, 2}},
        {"rotate(180 5 5)", {8, 8, 10, 10}},
        {"translate(8,0)scale(-1,1)", {6, 0, 8, 2}},
        {"skewX(0) skewY(0)", {0, 0, 2, 2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.transform);
        const auto picture = Draw(16, "<rect width=\"2\" height=\"2\" fill=\"red\" transform=\"" +
                                          std::string(row.transform) + "\"/>");
        const RECT bounds = picture.BoundsOfAllBut(kClear);
        EXPECT_EQ(bounds.left, row.bounds.left);
        EXPECT_EQ(bounds.top, row.bounds.top);
        EXPECT_EQ(bounds.right, row.bounds.right);
        EXPECT_EQ(bounds.bottom, row.bounds.bottom);
    }
}

TEST_F(SvgTest, SkewShifts)
{
    const auto picture =
        Draw(16, "<rect width=\"2\" height=\"8\" fill=\"red\" transform=\"skewX(45)\"/>");
    EXPECT_EQ(picture.At(8, 7), kRed);
    EXPECT_EQ(picture.At(1, 7), kClear);
}

TEST_F(SvgTest, GroupsNestTransformsAndStyles)
{
    const auto picture =
        Draw(16, "<g transform=\"translate(4,4)\" fill=\"red\"><g transform=\"scale(2)\">"
                 "<rect width=\"2\" height=\"2\"/></g></g><rect width=\"2\" height=\"2\"/>");
    EXPECT_EQ(picture.Count(kRed, {4, 4, 8, 8}), 16);
    EXPECT_EQ(picture.Count(kBlack, {0, 0, 2, 2}), 4);
}

TEST_F(SvgTest, RootStylesAreInherited)
{
    EXPECT_EQ(Draw(4, "<rect width=\"4\" height=\"4\"/>", "fill=\"red\""), Picture(4, 4, kRed));
}

TEST_F(SvgTest, StyleAttributeWinsOverAttributes)
{
    EXPECT_EQ(
        Draw(4, "<rect width=\"4\" height=\"4\" fill=\"red\" style=\"stroke:none; fill : lime\"/>"),
        Picture(4, 4, kGreen));
}

TEST_F(SvgTest, StyleSheetsSelectByClassAndIdAndElement)
{
    const auto picture = Draw(
        16, "<defs><style type=\"text/css\"><![CDATA[/* note */ .a,.b{fill:#F00} #c{fill:lime} "
            "circle{fill:blue}]]></style></defs>"
            "<rect class=\"x b\" width=\"4\" height=\"4\"/><rect id=\"c\" x=\"4\" width=\"4\" "
            "height=\"4\"/>"
            "<circle cx=\"12\" cy=\"12\" r=\"3\"/><rect y=\"4\" width=\"4\" height=\"4\"/>");
    EXPECT_EQ(picture.At(1, 1), kRed);
    EXPECT_EQ(picture.At(5, 1), kGreen);
    EXPECT_EQ(picture.At(12, 12), kBlue);
    EXPECT_EQ(picture.At(1, 5), kBlack);
}

TEST_F(SvgTest, HiddenElementsAreNotDrawn)
{
    EXPECT_EQ(Draw(4, "<rect width=\"4\" height=\"4\" display=\"none\"/>"
                      "<g style=\"display:none\"><rect width=\"4\" height=\"4\"/></g>"
                      "<rect width=\"4\" height=\"4\" visibility=\"hidden\"/>"
                      "<defs><rect width=\"4\" height=\"4\"/></defs>"
                      "<title>a rect</title><metadata><x:y/></metadata>"),
              Picture(4, 4, kClear));
}

TEST_F(SvgTest, EmptyShapesAreNotDrawn)
{
    EXPECT_EQ(Draw(4, "<rect width=\"0\" height=\"4\"/><rect width=\"4\" height=\"-4\"/>"
                      "<circle r=\"0\"/><ellipse rx=\"3\"/><polygon points=\"1\"/><polygon/><line/>"
                      "<rect width=\"4\" height=\"4\" transform=\"scale(0)\"/>"),
              Picture(4, 4, kClear));
}

TEST_F(SvgTest, DeclarationsAndQuotesOfDrawingProgramsAreRead)
{
    const auto image = LoadText(
        "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>\n"
        "<!-- made by hand -->\n"
        "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"svg11.dtd\" [<!ENTITY a \"b\">]>\n"
        "<svg:svg xmlns:svg='http://www.w3.org/2000/svg' width='4' height='4'>"
        "<svg:rect width='4' height='&#x34;' fill='&#114;ed'></svg:rect></svg:svg>\n");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), Picture(4, 4, kRed));
}

TEST_F(SvgTest, Utf16IsRead)
{
    std::string file("\xFF\xFE");
    for (const char character : SvgFile(4, "<rect width=\"4\" height=\"4\"/>")) {
        file += character;
        file += '\0';
    }
    const auto image = LoadText(file);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), Picture(4, 4, kBlack));
}

TEST_F(SvgTest, WhatCannotBeDrawnFailsWithPlaceAndReason)
{
    struct Row {
        const char* text;
        const wchar_t* reason;
    };
    const Row rows[] = {
        {"<svg width=\"4\" height=\"4\">\n <text>a</text></svg>",
         L"line 2, column 2: the element <text>"},
        {"<svg width=\"4\" height=\"4\"><image/></svg>", L"<image>"},
        {"<svg width=\"4\" height=\"4\"><use/></svg>", L"<use>"},
        {"<svg width=\"4\" height=\"4\"><rect fill=\"url(#a)\"/></svg>", L"url(#a)"},
        {"<svg width=\"4\" height=\"4\"><rect transform=\"turn(1)\"/></svg>", L"transform"},
        {"<svg width=\"0\" height=\"4\"/>", L"empty"},
        {"<svg width=\"4\" height=\"-1\"/>", L"empty"},
        {"<svg viewBox=\"0 0 0 9\"/>", L"empty"},
        {"<svg/>", L"no size"},
        {"<svg width=\"100000\" height=\"100000\"/>", L"too large"},
        {"<svg width=\"20000\" height=\"20000\"/>", L"too large"},
        {"<html width=\"4\" height=\"4\"/>", L"<svg>"},
        {"<svg width=\"4\" height=\"4\">", L"not closed"},
        {"<svg width=\"4\" height=\"4\"></g>", L"does not match"},
        {"<svg width=\"4\" height=\"4\"/><svg/>", L"second root"},
        {"<svg width=\"4\" height=4/>", L"well formed"},
        {"<!-- only -->", L"no element"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto failure = FailureOf(row.text);
        EXPECT_NE(failure.find(row.reason), std::wstring::npos) << Utf8(failure);
        EXPECT_NE(failure.find(L"a.svg"), std::wstring::npos);
    }
}

TEST_F(SvgTest, BrokenDrawingIsOneLineHoweverOftenItIsTried)
{
    Write(L"one-line.svg", "<svg width=\"4\" height=\"4\">");
    DebugOutput output(L"DuiLib.dll");
    for (int attempt = 0; attempt < 4; attempt++)
        EXPECT_EQ(Load(L"one-line.svg"), nullptr);
    EXPECT_EQ(output.Lines().size(), 1u);
}

TEST_F(SvgTest, DeepNestingFails)
{
    std::string open;
    std::string close;
    for (int level = 0; level < 100000; level++) {
        open += "<g>";
        close += "</g>";
    }
    EXPECT_NE(FailureOf(SvgFile(4, open + close)).find(L"too deeply"), std::wstring::npos);
}

TEST_F(SvgTest, FarCoordinatesAndManyPointsAreHarmless)
{
    std::string zigzag = "M0 0";
    for (int point = 0; point < 20000; point++)
        zigzag += point % 2 == 0 ? "L9 1" : "L1 9";
    const auto picture = Draw(8, "<rect x=\"-1e6\" y=\"-1e6\" width=\"2e6\" height=\"2e6\" "
                                 "fill=\"red\"/><path d=\"M1e300 NaN\"/><circle r=\"1e300\" "
                                 "cx=\"-1e300\"/><path fill=\"none\" d=\"" +
                                     zigzag + "\"/>");
    EXPECT_EQ(picture.At(4, 4), kRed);
}

// The slanted side crosses the last row between 0.7 and 0.8 pixels from the left.
TEST_F(SvgTest, AHugeShapeIsExactWhereItIsSeen)
{
    const auto picture = Draw(8, "<path d=\"M-1e5 -1e6L1e5 1e6H-1e5z\" fill=\"blue\"/>");
    EXPECT_EQ(picture.At(0, 7), Argb{0xBF0000BF});
    EXPECT_EQ(picture.At(1, 7), kClear);
    EXPECT_EQ(picture.At(0, 0), kClear);
}

TEST_F(SvgTest, AHugeStrokeCoversThePicture)
{
    const auto picture = Draw(8, "<path d=\"M3 3L4 4\" stroke=\"red\" fill=\"none\" "
                                 "stroke-width=\"9e9\" stroke-linecap=\"round\"/>");
    EXPECT_EQ(picture, Picture(8, 8, kRed));
}

// By the even-odd rule every second ring is empty; otherwise turns add up.
TEST_F(SvgTest, LoopsOverEachOtherFollowTheFillRule)
{
    std::string loops;
    for (int loop = 0; loop < 1001; loop++)
        loops += "M0 0h4v4h-4z";
    const auto draw = [&loops, this](const char* rule, const char* more) {
        return Draw(8, "<path fill=\"red\" fill-rule=\"" + std::string(rule) + "\" d=\"" + loops +
                           more + "\"/>");
    };
    EXPECT_EQ(draw("nonzero", "").At(2, 2), kRed);
    EXPECT_EQ(draw("evenodd", "").At(2, 2), kRed);
    EXPECT_EQ(draw("nonzero", "M0 0h4v4h-4z").At(2, 2), kRed);
    EXPECT_EQ(draw("evenodd", "M0 0h4v4h-4z").At(2, 2), kClear);
    EXPECT_EQ(draw("nonzero", "M0 0v4h4v-4z").At(2, 2), kRed);
}

TEST_F(SvgTest, OpposedLoopsCancelEachOther)
{
    EXPECT_EQ(Draw(8, "<path d=\"M0 0h4v4h-4zM0 0v4h4v-4z\"/>").Count(kClear), 64);
}

TEST_F(SvgTest, TallDrawingsAreDrawnInBandsWithoutSeams)
{
    const auto image =
        LoadText("<svg width=\"1000\" height=\"700\">"
                 "<rect width=\"1000\" height=\"700\" fill=\"red\"/>"
                 "<path d=\"M0 0L1000 700\" stroke=\"blue\" stroke-width=\"40\"/></svg>");
    ASSERT_NE(image, nullptr);
    const auto picture = PixelsOf(*image);
    EXPECT_EQ(picture.At(999, 0), kRed);
    EXPECT_EQ(picture.At(0, 699), kRed);
    for (int y = 40; y < 660; y++) {
        ASSERT_EQ(picture.At(y * 10 / 7, y), kBlue) << y;
        ASSERT_EQ(picture.At((y * 10 / 7 + 500) % 1000, y), kRed) << y;
    }
}

} // namespace
