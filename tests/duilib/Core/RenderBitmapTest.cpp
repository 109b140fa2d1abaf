#include "duilib/Core/PictureFiles.h"

#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

namespace {

using namespace test;
using DuiLib::CRenderEngine;
using DuiLib::TImageInfo;

struct BitmapCloser {
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapCloser>;

Picture PixelsOf(HBITMAP bitmap)
{
    BITMAP form{};
    ::GetObjectW(bitmap, sizeof form, &form);
    Canvas canvas(form.bmWidth, form.bmHeight);
    HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ former = ::SelectObject(dc, bitmap);
    ::BitBlt(canvas.Dc(), 0, 0, form.bmWidth, form.bmHeight, dc, 0, 0, SRCCOPY);
    ::SelectObject(dc, former);
    ::DeleteDC(dc);
    return canvas.Take();
}

TEST(RenderBitmapTest, NewBitmapHas32BitsAndItsLastRowFirst)
{
    BYTE* bits = nullptr;
    const OwnedBitmap bitmap(CRenderEngine::CreateARGB32Bitmap(nullptr, 5, 3, &bits));
    ASSERT_NE(bitmap, nullptr);
    DIBSECTION section{};
    ASSERT_NE(::GetObjectW(bitmap.get(), sizeof section, &section), 0);
    EXPECT_EQ(section.dsBm.bmBitsPixel, 32);
    EXPECT_EQ(section.dsBm.bmWidth, 5);
    EXPECT_EQ(section.dsBm.bmHeight, 3);
    EXPECT_EQ(section.dsBm.bmBits, bits);
    EXPECT_GT(section.dsBmih.biHeight, 0);
    for (int index = 0; index < 5 * 3 * 4; index++)
        ASSERT_EQ(bits[index], 0);

    reinterpret_cast<DWORD*>(bits)[0] = kRed.value;
    EXPECT_EQ(PixelsOf(bitmap.get()).At(0, 2), kRed);
}

TEST(RenderBitmapTest, EmptyBitmapIsRefused)
{
    BYTE* bits = reinterpret_cast<BYTE*>(1);
    EXPECT_EQ(CRenderEngine::CreateARGB32Bitmap(nullptr, 0, 3, &bits), nullptr);
    EXPECT_EQ(bits, nullptr);
    EXPECT_EQ(CRenderEngine::CreateARGB32Bitmap(nullptr, 3, -3, nullptr), nullptr);
}

TEST(RenderBitmapTest, PureBlackBecomesTheDarkestBlue)
{
    struct Row {
        DWORD colour;
        DWORD checked;
    };
    for (const auto& row : {Row{0xFF000000, 0xFF000001}, Row{0x00000000, 0x00000001},
                            Row{0xFF010000, 0xFF010000}, Row{0xFFFFFFFF, 0xFFFFFFFF}}) {
        DWORD colour = row.colour;
        CRenderEngine::CheckAlphaColor(colour);
        EXPECT_EQ(Argb{colour}, Argb{row.checked});
    }
}

TEST(RenderBitmapTest, NeutralAdjustmentIsExact)
{
    for (DWORD colour = 0; colour < 0xFFFFFF; colour += 0x10307)
        ASSERT_EQ(CRenderEngine::AdjustColor(0xFF000000 | colour, 180, 100, 100),
                  0xFF000000 | colour);
}

TEST(RenderBitmapTest, ColoursAreAdjusted)
{
    struct Row {
        DWORD colour;
        short hue;
        short saturation;
        short lightness;
        DWORD adjusted;
    };
    const Row rows[] = {
        {0xFFFF0000, 300, 100, 100, 0xFF00FF00}, {0xFFFF0000, 60, 100, 100, 0xFF0000FF},
        {0xFFFF0000, 360, 100, 100, 0xFF00FFFF}, {0xFFFF0000, 0, 100, 100, 0xFF00FFFF},
        {0x80FF0000, 300, 100, 100, 0x8000FF00}, {0xFFFF0000, 180, 0, 100, 0xFF808080},
        {0xFFFF0000, 180, 200, 100, 0xFFFF0000}, {0xFF404040, 180, 100, 200, 0xFF808080},
        {0xFF804040, 180, 100, 0, 0xFF000000},   {0xFF808080, 300, 200, 100, 0xFF808080},
        {0xFFFFFFFF, 180, 100, 200, 0xFFFFFFFF}, {0x00FF0000, 300, 100, 100, 0x0000FF00},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Argb{row.colour}));
        EXPECT_EQ(
            Argb{CRenderEngine::AdjustColor(row.colour, row.hue, row.saturation, row.lightness)},
            Argb{row.adjusted});
    }
}

class AdjustImageTest : public ImageFilesTest {
protected:
    // A picture that was loaded to be recoloured.
    TImageInfo& Recolourable(Argb colour)
    {
        Write(L"a.png", Png(Picture(2, 2, colour)));
        const auto* const image = manager.GetImageEx(L"a.png", nullptr, 0, true);
        return *const_cast<TImageInfo*>(image);
    }
};

TEST_F(AdjustImageTest, ChangesStartFromTheOriginalColours)
{
    auto& image = Recolourable(kRed);
    CRenderEngine::AdjustImage(true, &image, 300, 100, 100);
    EXPECT_EQ(PixelOf(image, 1, 1), kGreen);
    CRenderEngine::AdjustImage(true, &image, 300, 100, 100);
    EXPECT_EQ(PixelOf(image, 1, 1), kGreen);
    CRenderEngine::AdjustImage(true, &image, 180, 100, 100);
    EXPECT_EQ(PixelOf(image, 1, 1), kRed);
}

TEST_F(AdjustImageTest, OriginalColoursReturnWithoutAdjustment)
{
    auto& image = Recolourable(kRed);
    CRenderEngine::AdjustImage(true, &image, 300, 100, 100);
    CRenderEngine::AdjustImage(false, &image, 300, 100, 100);
    EXPECT_EQ(PixelOf(image, 0, 0), kRed);
}

TEST_F(AdjustImageTest, ColoursStayMultipliedByTheirAlpha)
{
    auto& image = Recolourable(Argb{0x80FF0000});
    CRenderEngine::AdjustImage(true, &image, 300, 100, 100);
    EXPECT_EQ(PixelOf(image, 0, 0), Argb{0x80008000});
    CRenderEngine::AdjustImage(true, &image, 180, 100, 200);
    EXPECT_EQ(PixelOf(image, 0, 0), Argb{0x80808080});
}

TEST_F(AdjustImageTest, OtherPicturesAreLeftAlone)
{
    Write(L"a.png", Png(Picture(2, 2, kRed)));
    const auto image = Load(L"a.png");
    CRenderEngine::AdjustImage(true, image.get(), 300, 100, 100);
    EXPECT_EQ(PixelOf(*image, 0, 0), kRed);
    CRenderEngine::AdjustImage(true, nullptr, 300, 100, 100);
}

class GenerateBitmapTest : public testing::Test {
protected:
    GenerateBitmapTest()
    {
        host.Load(L"<Window><VerticalLayout bkcolor=\"#FFFF0000\">"
                  L"<Label name=\"a\" height=\"10\" bkcolor=\"#FF00FF00\"/>"
                  L"<Label name=\"b\" height=\"10\" bkcolor=\"#FF0000FF\"/>"
                  L"</VerticalLayout></Window>");
        host.Layout();
    }

    DuiLib::CControlUI& Control(const wchar_t* name) { return host.Find<DuiLib::CControlUI>(name); }

    ControlHost host{40, 30};
};

TEST_F(GenerateBitmapTest, PicturesAPartOfTheWindow)
{
    const OwnedBitmap bitmap(CRenderEngine::GenerateBitmap(&host.Manager(), RECT{5, 5, 25, 30}));
    ASSERT_NE(bitmap, nullptr);
    const auto picture = PixelsOf(bitmap.get());
    EXPECT_EQ(picture.Width(), 20);
    EXPECT_EQ(picture.Height(), 25);
    EXPECT_EQ(picture.Count(kGreen), 20 * 5);
    EXPECT_EQ(picture.Count(kBlue), 20 * 10);
    EXPECT_EQ(picture.Count(kRed), 20 * 10);
    EXPECT_EQ(picture.At(0, 4), kGreen);
    EXPECT_EQ(picture.At(0, 5), kBlue);
}

TEST_F(GenerateBitmapTest, StopsAtTheStopControl)
{
    const OwnedBitmap bitmap(
        CRenderEngine::GenerateBitmap(&host.Manager(), RECT{0, 0, 40, 30}, &Control(L"b")));
    const auto picture = PixelsOf(bitmap.get());
    EXPECT_EQ(picture.Count(kGreen), 400);
    EXPECT_EQ(picture.Count(kBlue), 0);
    EXPECT_EQ(picture.At(5, 15), kRed);
}

TEST_F(GenerateBitmapTest, PicturesOneControl)
{
    auto& control = Control(L"b");
    const OwnedBitmap bitmap(
        CRenderEngine::GenerateBitmap(&host.Manager(), &control, control.GetPos()));
    EXPECT_EQ(PixelsOf(bitmap.get()), Picture(40, 10, kBlue));
}

TEST_F(GenerateBitmapTest, FilterIsBlendedOver)
{
    const OwnedBitmap bitmap(
        CRenderEngine::GenerateBitmap(&host.Manager(), RECT{0, 0, 40, 10}, nullptr, 0x80000000));
    ExpectSimilar(PixelsOf(bitmap.get()), Picture(40, 10, Argb{0xFF007F00}), 1, 1);
}

TEST_F(GenerateBitmapTest, DrawnPixelsAreOpaque)
{
    const OwnedBitmap bitmap(CRenderEngine::GenerateBitmap(&host.Manager(), RECT{0, 0, 40, 30}));
    DIBSECTION section{};
    ASSERT_NE(::GetObjectW(bitmap.get(), sizeof section, &section), 0);
    const auto* const pixels = static_cast<const DWORD*>(section.dsBm.bmBits);
    for (int index = 0; index < 40 * 30; index++)
        ASSERT_EQ(pixels[index] >> 24, 0xFFu);
}

TEST_F(GenerateBitmapTest, RefusesNothing)
{
    EXPECT_EQ(CRenderEngine::GenerateBitmap(nullptr, RECT{0, 0, 4, 4}), nullptr);
    EXPECT_EQ(CRenderEngine::GenerateBitmap(&host.Manager(), RECT{4, 4, 4, 9}), nullptr);
    EXPECT_EQ(CRenderEngine::GenerateBitmap(
                  &host.Manager(), static_cast<DuiLib::CControlUI*>(nullptr), RECT{0, 0, 4, 4}),
              nullptr);
    EXPECT_EQ(CRenderEngine::GenerateBitmap(&host.Manager(), RECT{-9, -9, 0, 0}), nullptr);
}

TEST_F(GenerateBitmapTest, LeavesNothingButTheBitmap)
{
    const auto once = [this] {
        OwnedBitmap(CRenderEngine::GenerateBitmap(&host.Manager(), RECT{0, 0, 40, 30}));
    };
    once();
    const int objects = GdiObjects();
    for (int round = 0; round < 10; round++)
        once();
    EXPECT_EQ(GdiObjects(), objects);
}

} // namespace
