#include "duilib/Core/PictureFiles.h"

#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

namespace {

using namespace test;
using DuiLib::CPaintManagerUI;
using DuiLib::CRenderEngine;
using DuiLib::TDrawInfo;

constexpr RECT kNoCorners{0, 0, 0, 0};

// A picture of nine different colours: corners of two pixels around a middle of the given size.
Argb NinthColour(int column, int row)
{
    return Argb{0xFF000000u | static_cast<std::uint32_t>(0x50 * (column + 1)) << 16 |
                static_cast<std::uint32_t>(0x50 * (row + 1))};
}

Picture NineColours(int middle)
{
    const int size = middle + 4;
    Picture picture(size, size);
    const auto part = [size](int at) { return at < 2 ? 0 : at < size - 2 ? 1 : 2; };
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++)
            picture.Set(x, y, NinthColour(part(x), part(y)));
    }
    return picture;
}

class RenderImageTest : public ImageFilesTest {
protected:
    // Draws the whole picture file to a rectangle of a white canvas of 20 x 20.
    struct Job {
        RECT to{0, 0, 20, 20};
        RECT paint{0, 0, 20, 20};
        RECT corners = kNoCorners;
        UINT fade = 255;
        bool hole = false;
        bool tiledX = false;
        bool tiledY = false;
    };

    Picture DrawFile(const Picture& file, const Job& job)
    {
        Write(L"file.png", Png(file));
        const auto image = Load(L"file.png");
        Canvas canvas(20, 20);
        CRenderEngine::DrawImage(canvas.Dc(), image->hBitmap, job.to, job.paint,
                                 {0, 0, image->nX, image->nY}, job.corners, image->bAlpha, job.fade,
                                 job.hole, job.tiledX, job.tiledY);
        return canvas.Take();
    }

    // Draws an image string into an item of 20 x 20 at the canvas's corner.
    Picture DrawString(const wchar_t* text, const wchar_t* modify = nullptr)
    {
        Canvas canvas(30, 30);
        EXPECT_TRUE(CRenderEngine::DrawImageString(canvas.Dc(), &manager, {0, 0, 20, 20},
                                                   {0, 0, 30, 30}, text, modify));
        return canvas.Take();
    }

    void UseScale(int dpi) { manager.GetDPIObj()->SetScale(static_cast<UINT>(dpi)); }
};

void ExpectBounds(const Picture& picture, const RECT& expected)
{
    const RECT bounds = picture.BoundsOfAllBut(kWhite);
    EXPECT_EQ(bounds.left, expected.left);
    EXPECT_EQ(bounds.top, expected.top);
    EXPECT_EQ(bounds.right, expected.right);
    EXPECT_EQ(bounds.bottom, expected.bottom);
}

TEST_F(RenderImageTest, UnstretchedCopyIsExact)
{
    const auto picture = DrawFile(FourColours(8), {.to = {3, 4, 11, 12}});
    for (int y = 0; y < 8; y++) {
        for (int x = 0; x < 8; x++)
            ASSERT_EQ(picture.At(3 + x, 4 + y), FourColours(8).At(x, y));
    }
    EXPECT_EQ(picture.Count(kWhite), 400 - 64);
}

TEST_F(RenderImageTest, OpaquePicturesAreCopiedAndNotBlended)
{
    static int blends;
    static int copies;
    blends = copies = 0;
    ImportHook blend(
        L"DuiLib.dll", "msimg32.dll", "AlphaBlend",
        +[](HDC, int, int, int, int, HDC, int, int, int, int, BLENDFUNCTION) -> BOOL {
            blends++;
            return TRUE;
        });
    ImportHook copy(
        L"DuiLib.dll", "gdi32.dll", "BitBlt",
        +[](HDC, int, int, int, int, HDC, int, int, DWORD) -> BOOL {
            copies++;
            return TRUE;
        });
    ASSERT_TRUE(copy);
    DrawFile(FourColours(20), {});
    EXPECT_EQ(copies, 1);
    EXPECT_EQ(blends, 0);
}

TEST_F(RenderImageTest, OpaquePictureStretches)
{
    const auto picture = DrawFile(FourColours(8), {.to = {0, 0, 16, 16}});
    EXPECT_EQ(picture.At(3, 3), kRed);
    EXPECT_EQ(picture.At(12, 3), kGreen);
    EXPECT_EQ(picture.At(3, 12), kBlue);
    EXPECT_EQ(picture.At(12, 12), kYellow);
    ExpectBounds(picture, {0, 0, 16, 16});
}

TEST_F(RenderImageTest, StretchingRestoresTheModeOfTheDc)
{
    Write(L"a.png", Png(FourColours(2)));
    const auto image = Load(L"a.png");
    Canvas canvas(20, 20);
    ::SetStretchBltMode(canvas.Dc(), COLORONCOLOR);
    ::SetBrushOrgEx(canvas.Dc(), 3, 5, nullptr);
    CRenderEngine::DrawImage(canvas.Dc(), image->hBitmap, {0, 0, 20, 20}, {0, 0, 20, 20},
                             {0, 0, 2, 2}, kNoCorners, false);
    POINT origin{};
    ::GetBrushOrgEx(canvas.Dc(), &origin);
    EXPECT_EQ(::GetStretchBltMode(canvas.Dc()), COLORONCOLOR);
    EXPECT_EQ(origin.x, 3);
    EXPECT_EQ(origin.y, 5);
}

TEST_F(RenderImageTest, AlphaBlendsOverTheBackground)
{
    EXPECT_EQ(DrawFile(Picture(4, 4, kClear), {}), Picture(20, 20, kWhite));
    ExpectSimilar(DrawFile(Picture(20, 20, Argb{0x80FF0000}), {}),
                  Picture(20, 20, Argb{0xFFFF7F7F}), 1, 1);
}

TEST_F(RenderImageTest, FadeIsAConstantAlpha)
{
    ExpectSimilar(DrawFile(Picture(20, 20, kBlack), {.fade = 128}),
                  Picture(20, 20, Argb{0xFF7F7F7F}), 1, 1);
    ExpectSimilar(DrawFile(Picture(20, 20, Argb{0x80000000}), {.fade = 128}),
                  Picture(20, 20, Argb{0xFFBFBFBF}), 2, 2);
    EXPECT_EQ(DrawFile(Picture(20, 20, kBlack), {.fade = 0}), Picture(20, 20, kWhite));
}

TEST_F(RenderImageTest, NineGridKeepsItsCornersAndStretchesTheRest)
{
    const auto picture = DrawFile(NineColours(3), {.corners = {2, 2, 2, 2}});
    const auto part = [](int at) { return at < 2 ? 0 : at < 18 ? 1 : 2; };
    for (int y = 0; y < 20; y++) {
        for (int x = 0; x < 20; x++)
            ASSERT_EQ(picture.At(x, y), NinthColour(part(x), part(y))) << x << ", " << y;
    }
}

TEST_F(RenderImageTest, CornersMayDiffer)
{
    const auto picture = DrawFile(NineColours(3), {.corners = {2, 0, 0, 2}});
    EXPECT_EQ(picture.At(1, 19), NinthColour(0, 2));
    EXPECT_EQ(picture.At(0, 0), NinthColour(0, 0));
    EXPECT_EQ(picture.At(19, 19), NinthColour(2, 2));
}

TEST_F(RenderImageTest, HoleLeavesTheMiddleOut)
{
    const auto picture = DrawFile(NineColours(3), {.corners = {2, 2, 2, 2}, .hole = true});
    EXPECT_EQ(picture.Count(kWhite), 16 * 16);
    EXPECT_EQ(picture.At(2, 2), kWhite);
    EXPECT_EQ(picture.At(10, 1), NinthColour(1, 0));
    EXPECT_EQ(picture.At(1, 10), NinthColour(0, 1));
}

TEST_F(RenderImageTest, HoleWithoutCornersDrawsNothing)
{
    EXPECT_EQ(DrawFile(NineColours(3), {.hole = true}), Picture(20, 20, kWhite));
}

TEST_F(RenderImageTest, CornersOverlapInASmallDestination)
{
    const auto picture = DrawFile(NineColours(3), {.to = {5, 5, 8, 8}, .corners = {2, 2, 2, 2}});
    EXPECT_EQ(picture.At(5, 5), NinthColour(0, 0));
    EXPECT_EQ(picture.At(7, 7), NinthColour(2, 2));
    ExpectBounds(picture, {5, 5, 8, 8});
}

TEST_F(RenderImageTest, CornersBeyondThePictureAreBounded)
{
    const auto picture = DrawFile(FourColours(4), {.corners = {100, 100, 100, 100}});
    EXPECT_EQ(picture.At(0, 0), kRed);
    EXPECT_EQ(picture.At(3, 3), kYellow);
    EXPECT_EQ(DrawFile(FourColours(4), {.to = {0, 0, 4, 4}, .corners = {-5, -5, -5, -5}}).At(0, 0),
              kRed);
}

TEST_F(RenderImageTest, TilesRepeatFromLeftAndTopAndTheLastIsCut)
{
    const auto picture =
        DrawFile(FourColours(6), {.to = {1, 2, 17, 18}, .tiledX = true, .tiledY = true});
    for (int y = 0; y < 16; y++) {
        for (int x = 0; x < 16; x++)
            ASSERT_EQ(picture.At(1 + x, 2 + y), FourColours(6).At(x % 6, y % 6)) << x << ", " << y;
    }
    ExpectBounds(picture, {1, 2, 17, 18});
}

TEST_F(RenderImageTest, TilesInOneDirectionStretchInTheOther)
{
    const auto columns = DrawFile(FourColours(4), {.tiledX = true});
    for (int x = 0; x < 20; x++) {
        ASSERT_EQ(columns.At(x, 2), x % 4 < 2 ? kRed : kGreen) << x;
        ASSERT_EQ(columns.At(x, 17), x % 4 < 2 ? kBlue : kYellow) << x;
    }
    const auto rows = DrawFile(FourColours(4), {.tiledY = true});
    for (int y = 0; y < 20; y++) {
        ASSERT_EQ(rows.At(2, y), y % 4 < 2 ? kRed : kBlue) << y;
        ASSERT_EQ(rows.At(17, y), y % 4 < 2 ? kGreen : kYellow) << y;
    }
}

TEST_F(RenderImageTest, OnlyTheMiddleIsTiled)
{
    // The middle is red on the left and green on the right; the edges are two pixels.
    Picture file(8, 8, kBlack);
    for (int y = 2; y < 6; y++) {
        for (int x = 2; x < 6; x++)
            file.Set(x, y, x < 4 ? kRed : kGreen);
    }
    const auto picture = DrawFile(file, {.corners = {2, 2, 2, 2}, .tiledX = true});
    for (int x = 2; x < 18; x++)
        ASSERT_EQ(picture.At(x, 10), (x - 2) % 4 < 2 ? kRed : kGreen) << x;
    EXPECT_EQ(picture.Count(kBlack), 400 - 256);
}

TEST_F(RenderImageTest, MiddleOfNoWidthIsNotTiled)
{
    const auto picture =
        DrawFile(FourColours(4), {.corners = {2, 0, 2, 0}, .tiledX = true, .tiledY = true});
    EXPECT_EQ(picture.At(10, 10), kWhite);
    EXPECT_EQ(picture.At(0, 2), kRed);
    EXPECT_EQ(picture.At(19, 2), kGreen);
}

TEST_F(RenderImageTest, TilesOutsideThePaintRectangleAreSkipped)
{
    static int copies;
    copies = 0;
    ImportHook copy(
        L"DuiLib.dll", "gdi32.dll", "BitBlt",
        +[](HDC, int, int, int, int, HDC, int, int, DWORD) -> BOOL {
            copies++;
            return TRUE;
        });
    DrawFile(FourColours(2), {.paint = {9, 9, 11, 11}, .tiledX = true, .tiledY = true});
    EXPECT_EQ(copies, 4);
    copies = 0;
    DrawFile(FourColours(2), {.to = {-1000000, 0, 1000000, 2}, .tiledX = true});
    EXPECT_EQ(copies, 10);
}

TEST_F(RenderImageTest, PiecesOutsideThePaintRectangleAreSkipped)
{
    const auto picture = DrawFile(NineColours(3), {.paint = {0, 0, 1, 1}, .corners = {2, 2, 2, 2}});
    ExpectBounds(picture, {0, 0, 2, 2});
    EXPECT_EQ(DrawFile(NineColours(3), {.paint = {30, 30, 40, 40}}), Picture(20, 20, kWhite));
}

TEST_F(RenderImageTest, NullsDrawNothing)
{
    Canvas canvas(4, 4);
    Write(L"a.png", Png(FourColours(4)));
    const auto image = Load(L"a.png");
    const RECT all{0, 0, 4, 4};
    CRenderEngine::DrawImage(nullptr, image->hBitmap, all, all, all, kNoCorners, false);
    CRenderEngine::DrawImage(canvas.Dc(), nullptr, all, all, all, kNoCorners, false);
    CRenderEngine::GdiplusDrawImage(canvas.Dc(), nullptr, all, all, all, true);
    EXPECT_EQ(canvas.Take(), Picture(4, 4, kWhite));
}

TEST_F(RenderImageTest, BitmapIsFreeAfterDrawing)
{
    Write(L"a.png", Png(FourColours(4)));
    const auto image = Load(L"a.png");
    Canvas canvas(4, 4);
    const RECT all{0, 0, 4, 4};
    CRenderEngine::DrawImage(canvas.Dc(), image->hBitmap, all, all, all, kNoCorners, false);
    HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ former = ::SelectObject(dc, image->hBitmap);
    EXPECT_NE(former, nullptr);
    ::SelectObject(dc, former);
    ::DeleteDC(dc);
}

TEST_F(RenderImageTest, StringFailsForNullsAndMissingPictures)
{
    Write(L"a.png", Png(FourColours(4)));
    Canvas canvas(4, 4);
    const RECT all{0, 0, 4, 4};
    const auto draw = [&](HDC dc, CPaintManagerUI* with, LPCTSTR text) {
        return CRenderEngine::DrawImageString(dc, with, all, all, text);
    };
    EXPECT_TRUE(draw(canvas.Dc(), &manager, L"a.png"));
    EXPECT_FALSE(draw(nullptr, &manager, L"a.png"));
    EXPECT_FALSE(draw(canvas.Dc(), nullptr, L"a.png"));
    EXPECT_FALSE(draw(canvas.Dc(), &manager, nullptr));
    EXPECT_FALSE(draw(canvas.Dc(), &manager, L""));
    EXPECT_FALSE(draw(canvas.Dc(), &manager, L"nowhere.png"));
    EXPECT_FALSE(CRenderEngine::DrawImageInfo(canvas.Dc(), &manager, all, all, nullptr));
    const TDrawInfo empty;
    EXPECT_FALSE(CRenderEngine::DrawImageInfo(canvas.Dc(), &manager, all, all, &empty));
}

TEST_F(RenderImageTest, PictureOutsideItemOrPaintRectangleIsNoFailure)
{
    Write(L"a.png", Png(FourColours(4)));
    Canvas canvas(20, 20);
    EXPECT_TRUE(CRenderEngine::DrawImageString(canvas.Dc(), &manager, {0, 0, 4, 4},
                                               {10, 10, 20, 20}, L"a.png"));
    EXPECT_TRUE(CRenderEngine::DrawImageString(canvas.Dc(), &manager, {0, 0, 4, 4}, {0, 0, 20, 20},
                                               L"file='a.png' dest='8,8,12,12'"));
    EXPECT_EQ(canvas.Take(), Picture(20, 20, kWhite));
}

TEST_F(RenderImageTest, StringFillsTheItem)
{
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    const auto picture = DrawString(L"a.png");
    EXPECT_EQ(picture.Count(kRed), 400);
    ExpectBounds(picture, {0, 0, 20, 20});
}

TEST_F(RenderImageTest, DestinationIsRelativeToTheItemAndCutAtItsFarEdges)
{
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    Canvas canvas(30, 30);
    const RECT all{0, 0, 30, 30};
    const auto draw = [&](LPCTSTR text) {
        canvas.Fill(kWhite);
        EXPECT_TRUE(
            CRenderEngine::DrawImageString(canvas.Dc(), &manager, {5, 6, 25, 26}, all, text));
        return canvas.Take();
    };
    ExpectBounds(draw(L"file='a.png' dest='2,3,8,9'"), {7, 9, 13, 15});
    ExpectBounds(draw(L"file='a.png' dest='10,10,90,90'"), {15, 16, 25, 26});
    ExpectBounds(draw(L"file='a.png' dest='-3,-3,4,4'"), {2, 3, 9, 10});
}

TEST_F(RenderImageTest, DestinationIsInDesignPixels)
{
    UseScale(144);
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    ExpectBounds(DrawString(L"file='a.png' dest='2,2,6,8'"), {3, 3, 9, 12});
}

TEST_F(RenderImageTest, SourceChoosesAPart)
{
    Write(L"a.png", Png(FourColours(8)));
    EXPECT_EQ(DrawString(L"file='a.png' source='4,0,8,4'").Count(kGreen), 400);
    EXPECT_EQ(DrawString(L"file='a.png' source='0,4,4,8'").Count(kBlue), 400);
}

TEST_F(RenderImageTest, SourceIsCutAtThePicture)
{
    Write(L"a.png", Png(FourColours(8)));
    EXPECT_EQ(DrawString(L"file='a.png' source='4,4,800,800'").Count(kYellow), 400);
    EXPECT_EQ(DrawString(L"file='a.png' source='50,50,60,60'").Count(kWhite), 900);
}

TEST_F(RenderImageTest, SourceAndCornerOfARasterPictureAreNotScaled)
{
    UseScale(200 * 96 / 100);
    Write(L"a.png", Png(FourColours(8)));
    EXPECT_EQ(DrawString(L"file='a.png' source='4,0,8,4'").Count(kGreen), 400);
    Write(L"b.png", Png(NineColours(3)));
    const auto picture = DrawString(L"file='b.png' corner='2,2,2,2'");
    EXPECT_EQ(picture.At(1, 1), NinthColour(0, 0));
    EXPECT_EQ(picture.At(2, 2), NinthColour(1, 1));
}

TEST_F(RenderImageTest, SizeAndAlignPlaceThePicture)
{
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    struct Row {
        const wchar_t* align;
        RECT bounds;
    };
    const Row rows[] = {
        {L"left,top", {0, 0, 4, 6}},         {L"hcenter,vcenter", {8, 7, 12, 13}},
        {L"right bottom", {16, 14, 20, 20}}, {L"left", {0, 0, 4, 20}},
        {L"vcenter", {0, 7, 20, 13}},        {L"nothing", {0, 0, 20, 20}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.align)));
        const auto text = L"file='a.png' size='4,6' align='" + std::wstring(row.align) + L"'";
        ExpectBounds(DrawString(text.c_str()), row.bounds);
    }
    ExpectBounds(DrawString(L"file='a.png' size='4,0' align='right'"), {0, 0, 20, 20});
    ExpectBounds(DrawString(L"file='a.png' size='4,6' align='right,top' dest='2,2,10,10'"),
                 {6, 2, 10, 8});
}

TEST_F(RenderImageTest, PaddingShiftsASizedPicture)
{
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    ExpectBounds(DrawString(L"file='a.png' size='4,4' align='left,top' padding='5,7,1,2'"),
                 {4, 5, 8, 9});
    ExpectBounds(DrawString(L"file='a.png' padding='5,7,1,2'"), {0, 0, 20, 20});
}

TEST_F(RenderImageTest, SizeAndPaddingAreInDesignPixels)
{
    UseScale(144);
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    ExpectBounds(DrawString(L"file='a.png' size='4,4' align='left,top' padding='4,2,0,0'"),
                 {6, 3, 12, 9});
}

TEST_F(RenderImageTest, MaskOfAStringIsApplied)
{
    Write(L"a.png", Png(FourColours(20)));
    const auto picture = DrawString(L"file='a.png' mask='#FF0000FF'");
    EXPECT_EQ(picture.Count(kBlue), 0);
    EXPECT_EQ(picture.At(5, 15), kWhite);
    EXPECT_EQ(picture.At(5, 5), kRed);
}

TEST_F(RenderImageTest, FadeAndHoleAndTilesOfAStringAreApplied)
{
    Write(L"a.png", Png(Picture(20, 20, kBlack)));
    EXPECT_NEAR(static_cast<double>(DrawString(L"file='a.png' fade='128'").At(9, 9).value & 0xFF),
                127, 1);
    Write(L"b.png", Png(NineColours(3)));
    EXPECT_EQ(DrawString(L"file='b.png' corner='2,2,2,2' hole='true'").At(10, 10), kWhite);
    Write(L"c.png", Png(FourColours(4)));
    const auto tiled = DrawString(L"file='c.png' xtiled='true' ytiled='true'");
    EXPECT_EQ(tiled.At(16, 16), kRed);
    EXPECT_EQ(tiled.At(18, 16), kGreen);
}

TEST_F(RenderImageTest, ModifierChangesTheDrawing)
{
    Write(L"a.png", Png(FourColours(8)));
    EXPECT_EQ(DrawString(L"file='a.png' source='0,0,4,4'", L"source='4,4,8,8'").Count(kYellow),
              400);
    EXPECT_EQ(DrawString(L"file='a.png' source='0,0,4,4'").Count(kRed), 400);
}

TEST_F(RenderImageTest, ScaleNameIsTriedFirstAndThenThePlainName)
{
    Write(L"a.png", Png(Picture(4, 4, kRed)));
    Write(L"a@150.png", Png(Picture(6, 6, kGreen)));
    Write(L"b.png", Png(Picture(4, 4, kBlue)));
    EXPECT_EQ(DrawString(L"a.png").Count(kRed), 400);
    UseScale(144);
    manager.RemoveAllDrawInfos();
    EXPECT_EQ(DrawString(L"a.png").Count(kGreen), 400);
    EXPECT_EQ(DrawString(L"b.png").Count(kBlue), 400);
}

TEST_F(RenderImageTest, SvgIsDrawnAtTheScaleOfItsName)
{
    Write(L"a.svg", SvgFile(10, "<rect width=\"5\" height=\"10\" fill=\"red\"/>"
                                "<rect x=\"5\" width=\"5\" height=\"10\" fill=\"blue\"/>"));
    UseScale(192);
    const auto* const image = manager.GetImageEx(L"a@200.svg");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 20);
    const auto picture = DrawString(L"a.svg");
    EXPECT_EQ(picture.Count(kRed), 200);
    EXPECT_EQ(picture.Count(kBlue), 200);
}

TEST_F(RenderImageTest, SourceAndCornerOfAScaledSvgGrowWithIt)
{
    Write(L"a.svg", SvgFile(5, "<rect width=\"1\" height=\"5\" fill=\"red\"/>"
                               "<rect x=\"1\" width=\"4\" height=\"5\" fill=\"blue\"/>"));
    EXPECT_EQ(DrawString(L"file='a.svg' source='0,0,1,5'").Count(kRed), 400);
    EXPECT_EQ(DrawString(L"file='a.svg' corner='1,0,0,0'").Count(kRed), 1 * 20);
    UseScale(192);
    manager.RemoveAllDrawInfos();
    EXPECT_EQ(DrawString(L"file='a.svg' source='0,0,1,5'").Count(kRed), 400);
    EXPECT_EQ(DrawString(L"file='a.svg' source='1,0,5,5'").Count(kBlue), 400);
    const auto cornered = DrawString(L"file='a.svg' corner='1,0,0,0'");
    EXPECT_EQ(cornered.Count(kRed), 2 * 20);
    EXPECT_EQ(cornered.Count(kBlue), 18 * 20);
}

TEST_F(RenderImageTest, RotatedPictureTurnsAroundTheMiddle)
{
    Write(L"a.png", Png(FourColours(20)));
    const auto quarter = DrawString(L"file='a.png' rotate='90'");
    EXPECT_EQ(quarter.At(5, 5), kBlue);
    EXPECT_EQ(quarter.At(15, 5), kRed);
    EXPECT_EQ(quarter.At(15, 15), kGreen);
    const auto half = DrawString(L"file='a.png' rotate='180'");
    EXPECT_EQ(half.At(5, 5), kYellow);
    EXPECT_EQ(DrawString(L"file='a.png' rotate='360'").At(5, 5), kRed);
}

TEST_F(RenderImageTest, GdiplusDrawsTheSamePicture)
{
    Write(L"a.png", Png(FourColours(20)));
    EXPECT_EQ(DrawString(L"file='a.png' gdiplus='true'"), DrawString(L"file='a.png'"));
    Write(L"b.png", Png(FourColours(20)));
    const auto picture = DrawString(L"file='b.png' gdiplus='true' source='10,0,20,10'");
    EXPECT_EQ(picture.At(10, 10), kGreen);
    EXPECT_EQ(picture.At(1, 18), kGreen);
    ExpectBounds(picture, {0, 0, 20, 20});
}

TEST_F(RenderImageTest, GdiplusFadesAndStaysInThePaintRectangle)
{
    Write(L"a.png", Png(Picture(20, 20, kBlack)));
    const auto faded = DrawString(L"file='a.png' gdiplus='true' fade='128'");
    EXPECT_NEAR(static_cast<double>(faded.At(9, 9).value & 0xFF), 127, 2);

    Canvas canvas(30, 30);
    EXPECT_TRUE(CRenderEngine::DrawImageString(canvas.Dc(), &manager, {0, 0, 20, 20}, {4, 5, 9, 10},
                                               L"file='a.png' gdiplus='true'"));
    ExpectBounds(canvas.Take(), {4, 5, 9, 10});
}

// A bottom-up bitmap of 20 x 20 whose upper half is red and whose lower half is blue.
HBITMAP RedOverBlue(DWORD alpha)
{
    BYTE* bits = nullptr;
    const HBITMAP bitmap = CRenderEngine::CreateARGB32Bitmap(nullptr, 20, 20, &bits);
    auto* const pixels = reinterpret_cast<DWORD*>(bits);
    for (int index = 0; index < 400; index++)
        pixels[index] = alpha | (index < 200 ? 0x0000FF : 0xFF0000);
    return bitmap;
}

TEST_F(RenderImageTest, BitmapOfTheApplicationIsDrawnToo)
{
    ASSERT_NE(manager.AddImage(L"made", RedOverBlue(0xFF000000), 20, 20, true), nullptr);
    ASSERT_NE(manager.AddImage(L"opaque", RedOverBlue(0), 20, 20, false), nullptr);
    for (const std::wstring name : {L"made", L"opaque"}) {
        SCOPED_TRACE(testing::PrintToString(name));
        const auto plain = DrawString(name.c_str());
        EXPECT_EQ(plain.At(10, 5), kRed);
        EXPECT_EQ(plain.At(10, 15), kBlue);
        const auto turned = DrawString((L"file='" + name + L"' rotate='90'").c_str());
        EXPECT_EQ(turned.At(15, 10), kRed);
        EXPECT_EQ(turned.At(5, 10), kBlue);
    }
}

TEST_F(RenderImageTest, BitmapWithoutAlphaFadesByItsColoursOnly)
{
    ASSERT_NE(manager.AddImage(L"opaque", RedOverBlue(0), 20, 20, false), nullptr);
    const auto faded = DrawString(L"file='opaque' fade='128'");
    const auto colour = faded.At(10, 5).value;
    EXPECT_NEAR(static_cast<double>(colour >> 16 & 0xFF), 255, 1);
    EXPECT_NEAR(static_cast<double>(colour & 0xFF), 127, 1);
}

TEST_F(RenderImageTest, SteadyDrawingMakesNothing)
{
    Write(L"a.png", Png(FourColours(8)));
    Write(L"b.png", Png(Picture(8, 8, Argb{0x80FF0000})));
    Canvas canvas(20, 20);
    const RECT all{0, 0, 20, 20};
    const auto once = [&] {
        for (const auto* text :
             {L"a.png", L"b.png", L"file='a.png' corner='2,2,2,2' xtiled='true'"})
            CRenderEngine::DrawImageInfo(canvas.Dc(), &manager, all, all,
                                         manager.GetDrawInfo(text, nullptr));
    };
    once();
    static int made;
    made = 0;
    ImportHook dc(
        L"DuiLib.dll", "gdi32.dll", "CreateCompatibleDC", +[](HDC) -> HDC {
            made++;
            return nullptr;
        });
    const int objects = GdiObjects();
    const int blocks = HeapBlocks();
    for (int round = 0; round < 10; round++)
        once();
    EXPECT_EQ(made, 0);
    EXPECT_EQ(GdiObjects(), objects);
    EXPECT_EQ(HeapBlocks(), blocks);
}

} // namespace
