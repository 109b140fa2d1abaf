#include "duilib/Core/PictureFiles.h"
#include "duilib/Core/ZipWriter.h"

#include "support/DebugOutput.h"
#include "support/ObjectCounters.h"

#include <atomic>
#include <thread>

namespace {

using namespace test;
using DuiLib::CPaintManagerUI;
using DuiLib::CRenderEngine;
using DuiLib::STRINGorID;
using DuiLib::TImageInfo;

class ImageDecoderTest : public ImageFilesTest {
protected:
    // Fails when the file loads; answers the reason.
    std::wstring FailureOf(const wchar_t* name)
    {
        CPaintManagerUI::SetLastErrorText(L"");
        EXPECT_EQ(Load(name), nullptr);
        return LastError();
    }
};

// A TGA header; content follows it.
struct TgaForm {
    int type = 2;
    int width = 2;
    int height = 2;
    int depth = 24;
    int descriptor = 0; // alpha bits, 0x10 from the right, 0x20 from the top
    int mapLength = 0;
    int mapDepth = 0;
};

Bytes Tga(const TgaForm& form, const Bytes& content)
{
    const auto byte = [](int value) { return static_cast<unsigned char>(value); };
    Bytes file{0,
               byte(form.mapLength > 0 ? 1 : 0),
               byte(form.type),
               0,
               0,
               byte(form.mapLength),
               byte(form.mapLength >> 8),
               byte(form.mapDepth),
               0,
               0,
               0,
               0,
               byte(form.width),
               byte(form.width >> 8),
               byte(form.height),
               byte(form.height >> 8),
               byte(form.depth),
               byte(form.descriptor)};
    file.insert(file.end(), content.begin(), content.end());
    return file;
}

const Bytes kRedGreenBlueYellow{0, 0, 255, 0, 255, 0, 255, 0, 0, 0, 255, 255};

TEST_F(ImageDecoderTest, PngBecomesATopDownBitmapOfItsSize)
{
    Write(L"a.png", Png(FourColours(4)));
    const auto image = Load(L"a.png");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 4);
    EXPECT_EQ(image->nY, 4);
    EXPECT_NE(image->hBitmap, nullptr);
    EXPECT_EQ(image->pImage, nullptr);
    EXPECT_FALSE(image->bAlpha);
    EXPECT_EQ(PixelsOf(*image), FourColours(4));

    DIBSECTION section{};
    ASSERT_EQ(::GetObjectW(image->hBitmap, sizeof section, &section), int{sizeof section});
    EXPECT_EQ(section.dsBm.bmBitsPixel, 32);
    EXPECT_EQ(section.dsBm.bmBits, image->pBits);
}

TEST_F(ImageDecoderTest, ColoursAreMultipliedByTheirAlpha)
{
    struct Row {
        std::uint32_t file;
        std::uint32_t stored;
    };
    const Row rows[] = {
        {0x80FF0000, 0x80800000}, {0x80FFFFFF, 0x80808080}, {0x00FFFFFF, 0x00000000},
        {0xFFFFFFFF, 0xFFFFFFFF}, {0x40804020, 0x40201008}, {0x01FF7F00, 0x01010000},
        {0xFE010203, 0xFE010203},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Argb{row.file}));
        Write(L"a.png", Png(Picture(3, 2, Argb{row.file})));
        const auto image = Load(L"a.png");
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(PixelOf(*image, 0, 0), Argb{row.stored});
        EXPECT_EQ(PixelOf(*image, 2, 1), Argb{row.stored});
        EXPECT_EQ(image->bAlpha, row.file < 0xFF000000);
    }
}

TEST_F(ImageDecoderTest, EveryPngColourTypeDecodes)
{
    struct Row {
        const char* name;
        PngForm form;
        Bytes rows;
        Bytes palette;
        Bytes transparency;
        Argb left;
        Argb right;
    };
    const Row rows[] = {
        {"grey 8", {2, 1, 8, 0}, {0, 0x00, 0x80}, {}, {}, kBlack, Argb{0xFF808080}},
        {"grey 1", {2, 1, 1, 0}, {0, 0x40}, {}, {}, kBlack, kWhite},
        {"grey 16", {2, 1, 16, 0}, {0, 0, 0, 0xFF, 0xFF}, {}, {}, kBlack, kWhite},
        {"colour 8", {2, 1, 8, 2}, {0, 255, 0, 0, 0, 0, 255}, {}, {}, kRed, kBlue},
        {"palette", {2, 1, 8, 3}, {0, 1, 0}, {255, 0, 0, 0, 255, 0}, {}, kGreen, kRed},
        {"palette with alpha",
         {2, 1, 8, 3},
         {0, 1, 0},
         {255, 0, 0, 0, 255, 0},
         {0},
         kGreen,
         kClear},
        {"grey and alpha", {2, 1, 8, 4}, {0, 255, 255, 255, 0}, {}, {}, kWhite, kClear},
        {"colour and alpha", {2, 1, 8, 6}, {0, 255, 0, 0, 255, 9, 9, 9, 0}, {}, {}, kRed, kClear},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Write(L"a.png", Png(row.form, row.rows, row.palette, row.transparency));
        const auto image = Load(L"a.png");
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(PixelOf(*image, 0, 0), row.left);
        EXPECT_EQ(PixelOf(*image, 1, 0), row.right);
        EXPECT_EQ(image->bAlpha, row.right == kClear);
    }
}

TEST_F(ImageDecoderTest, BitmapFileDecodesOpaque)
{
    Write(L"a.bmp", Bmp(FourColours(6)));
    const auto image = Load(L"a.bmp");
    ASSERT_NE(image, nullptr);
    EXPECT_FALSE(image->bAlpha);
    EXPECT_EQ(PixelsOf(*image), FourColours(6));
}

TEST_F(ImageDecoderTest, BitmapWithoutItsFileHeaderDecodes)
{
    auto resource = Bmp(FourColours(6));
    resource.erase(resource.begin(), resource.begin() + 14);
    Write(L"a.bin", resource);
    const auto image = Load(L"a.bin");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), FourColours(6));
}

TEST_F(ImageDecoderTest, PalettedBitmapWithoutItsFileHeaderDecodes)
{
    // Two pixels of one bit each: the second colour, then the first.
    Bytes resource(40, 0);
    resource[0] = 40;
    resource[4] = 2;
    resource[8] = 1;
    resource[12] = 1;
    resource[14] = 1;
    for (const int byte : {0, 0, 255, 0, 255, 0, 0, 0, 0x80, 0, 0, 0})
        resource.push_back(static_cast<unsigned char>(byte));
    Write(L"a.bin", resource);
    const auto image = Load(L"a.bin");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelOf(*image, 0, 0), kBlue);
    EXPECT_EQ(PixelOf(*image, 1, 0), kRed);
}

TEST_F(ImageDecoderTest, JpegDecodes)
{
    Write(L"a.jpg", Encoded(Picture(16, 8, Argb{0xFF3060C0}), L"image/jpeg"));
    const auto image = Load(L"a.jpg");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 16);
    EXPECT_EQ(image->nY, 8);
    EXPECT_FALSE(image->bAlpha);
    ExpectSimilar(PixelsOf(*image), Picture(16, 8, Argb{0xFF3060C0}), 4, 4);
}

TEST_F(ImageDecoderTest, GifGivesItsFirstFrame)
{
    // Two frames of one pixel in a palette of red, green: first red, then green.
    Bytes file = ToBytes("GIF89a");
    const Bytes screen{1, 0, 1, 0, 0x80, 0, 0, 255, 0, 0, 0, 255, 0};
    const Bytes red{0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0, 2, 2, 0x44, 0x01, 0};
    const Bytes green{0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0, 2, 2, 0x4C, 0x01, 0};
    for (const auto* part : {&screen, &red, &green})
        file.insert(file.end(), part->begin(), part->end());
    file.push_back(0x3B);
    Write(L"a.gif", file);
    const auto image = Load(L"a.gif");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), Picture(1, 1, kRed));
}

TEST_F(ImageDecoderTest, IconDecodes)
{
    // One 24-bit picture of 2 x 2 and its mask, bottom row first.
    Bytes file{0, 0, 1, 0, 1, 0, 2, 2, 0, 0, 1, 0, 24, 0, 64, 0, 0, 0, 22, 0, 0, 0};
    Bytes header(40, 0);
    header[0] = 40;
    header[4] = 2;
    header[8] = 4; // twice the height
    header[12] = 1;
    header[14] = 24;
    file.insert(file.end(), header.begin(), header.end());
    const Bytes pixels{255, 0, 0, 255, 0, 0, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0};
    file.insert(file.end(), pixels.begin(), pixels.end());
    file.insert(file.end(), 8, 0);
    Write(L"a.ico", file);
    const auto image = Load(L"a.ico");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 2);
    EXPECT_EQ(PixelOf(*image, 0, 0), kRed);
    EXPECT_EQ(PixelOf(*image, 1, 1), kBlue);
}

TEST_F(ImageDecoderTest, ContentCountsNotTheExtension)
{
    Write(L"a.txt", Png(FourColours(2)));
    const auto image = Load(L"a.txt");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), FourColours(2));
}

TEST_F(ImageDecoderTest, TgaDecodesInEveryLayout)
{
    struct Row {
        const char* name;
        TgaForm form;
        Bytes content;
    };
    // All of them are red, green over blue, yellow.
    const Row rows[] = {
        {"from the top", {.descriptor = 0x20}, kRedGreenBlueYellow},
        {"from the bottom", {}, {255, 0, 0, 0, 255, 255, 0, 0, 255, 0, 255, 0}},
        {"from the right", {.descriptor = 0x30}, {0, 255, 0, 0, 0, 255, 0, 255, 255, 255, 0, 0}},
        {"32 bits without alpha",
         {.depth = 32, .descriptor = 0x20},
         {0, 0, 255, 0, 0, 255, 0, 7, 255, 0, 0, 0, 0, 255, 255, 9}},
        {"16 bits",
         {.depth = 16, .descriptor = 0x20},
         {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x00, 0xE0, 0x7F}},
        {"colour map",
         {.type = 1, .depth = 8, .descriptor = 0x20, .mapLength = 4, .mapDepth = 24},
         {0, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255, 3, 2, 1, 0}},
        {"runs",
         {.type = 10, .descriptor = 0x20},
         {0x80, 0, 0, 255, 0x02, 0, 255, 0, 255, 0, 0, 0, 255, 255}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Write(L"a.tga", Tga(row.form, row.content));
        const auto image = Load(L"a.tga");
        ASSERT_NE(image, nullptr);
        EXPECT_FALSE(image->bAlpha);
        EXPECT_EQ(PixelsOf(*image), FourColours(2));
    }
}

TEST_F(ImageDecoderTest, TgaRunCrossesRowsAndGreyIsGrey)
{
    Write(L"a.tga", Tga({.type = 11, .width = 3, .height = 2, .depth = 8, .descriptor = 0x20},
                        {0x84, 0x40, 0x00, 0xFF}));
    const auto image = Load(L"a.tga");
    ASSERT_NE(image, nullptr);
    auto expected = Picture(3, 2, Argb{0xFF404040});
    expected.Set(2, 1, kWhite);
    EXPECT_EQ(PixelsOf(*image), expected);
}

TEST_F(ImageDecoderTest, TgaAlphaIsMultipliedIn)
{
    Write(L"a.tga",
          Tga({.width = 1, .height = 1, .depth = 32, .descriptor = 0x28}, {0, 0, 255, 128}));
    const auto image = Load(L"a.tga");
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->bAlpha);
    EXPECT_EQ(PixelOf(*image, 0, 0), Argb{0x80800000});
}

TEST_F(ImageDecoderTest, MaskedPixelsBecomeTransparent)
{
    Write(L"a.png", Png(FourColours(2)));
    const auto image = Load(L"a.png", 0xFF00FF00);
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->bAlpha);
    EXPECT_EQ(image->dwMask, 0xFF00FF00u);
    EXPECT_EQ(PixelOf(*image, 0, 0), kRed);
    EXPECT_EQ(PixelOf(*image, 1, 0), kClear);
}

TEST_F(ImageDecoderTest, MaskComparesAll32BitsOfTheStoredPixel)
{
    Write(L"a.png", Png(Picture(1, 1, kGreen)));
    EXPECT_EQ(PixelOf(*Load(L"a.png", 0x0000FF00), 0, 0), kGreen);
    EXPECT_FALSE(Load(L"a.png", 0x0000FF00)->bAlpha);

    Write(L"b.png", Png(Picture(1, 1, Argb{0x80FF0000})));
    EXPECT_EQ(PixelOf(*Load(L"b.png", 0x80FF0000), 0, 0), Argb{0x80800000});
    EXPECT_EQ(PixelOf(*Load(L"b.png", 0x80800000), 0, 0), kClear);
}

TEST_F(ImageDecoderTest, UndecodableFilesFailWithAReason)
{
    auto truncated = Png(FourColours(64));
    truncated.resize(40);
    auto shortTga = Tga({.width = 9, .height = 9}, kRedGreenBlueYellow);
    auto outsideMap =
        Tga({.type = 1, .depth = 8, .mapLength = 1, .mapDepth = 24}, {1, 2, 3, 0, 0, 0, 7});
    struct Row {
        const wchar_t* name;
        Bytes content;
    };
    const Row rows[] = {
        {L"empty.png", {}},
        {L"truncated.png", truncated},
        {L"text.png", ToBytes("this is a text and no picture at all")},
        {L"short.tga", shortTga},
        {L"map.tga", outsideMap},
        {L"skin.xml", ToBytes("<Window><Label/></Window>")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.name)));
        Write(row.name, row.content);
        const auto failure = FailureOf(row.name);
        EXPECT_NE(failure.find(row.name), std::wstring::npos);
        EXPECT_GT(failure.size(), std::wcslen(row.name) + 5);
        EXPECT_EQ(failure.find(L'\n'), std::wstring::npos);
    }
}

TEST_F(ImageDecoderTest, MissingFileFailsWithItsName)
{
    EXPECT_NE(FailureOf(L"nowhere.png").find(L"nowhere.png"), std::wstring::npos);
}

TEST_F(ImageDecoderTest, AbsurdSizesFailBeforeTheyAreAllocated)
{
    struct Row {
        unsigned width;
        unsigned height;
        const wchar_t* reason;
    };
    const Row rows[] = {
        {0, 10, L"empty"},
        {10, 0, L"empty"},
        {100000, 100000, L"too large"},
        {0x7FFFFFFF, 0x7FFFFFFF, L"too large"},
        {0xFFFFFFFF, 1, L"too large"},
        {8193, 8192, L"too large"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        Write(L"bomb.png", Png({row.width, row.height, 8, 6}, {0, 0, 0, 0, 0}));
        EXPECT_NE(FailureOf(L"bomb.png").find(row.reason), std::wstring::npos);
    }
}

TEST_F(ImageDecoderTest, AbsurdBitmapAndGifAndTgaSizesFail)
{
    auto bitmap = Bmp(FourColours(2));
    bitmap[20] = 0x7F; // the high byte of the width
    bitmap[24] = 0x7F;
    Write(L"a.bmp", bitmap);
    EXPECT_NE(FailureOf(L"a.bmp").find(L"too large"), std::wstring::npos);

    Write(L"a.gif", ToBytes(std::string("GIF89a\xFF\xFF\xFF\xFF\0\0\0;", 14)));
    EXPECT_NE(FailureOf(L"a.gif").find(L"too large"), std::wstring::npos);

    Write(L"a.tga", Tga({.width = 0xFFFF, .height = 0xFFFF}, kRedGreenBlueYellow));
    EXPECT_NE(FailureOf(L"a.tga").find(L"too large"), std::wstring::npos);

    Write(L"b.tga", Tga({.width = 0, .height = 4}, kRedGreenBlueYellow));
    EXPECT_NE(FailureOf(L"b.tga").find(L"empty"), std::wstring::npos);
}

TEST_F(ImageDecoderTest, DamagedFilesGiveAPictureOrAReason)
{
    const Bytes files[] = {
        Png(FourColours(8)),
        Bmp(FourColours(8)),
        Encoded(FourColours(8), L"image/gif"),
        Encoded(FourColours(8), L"image/jpeg"),
        Tga({.type = 10, .descriptor = 0x20},
            {0x80, 0, 0, 255, 0x02, 0, 255, 0, 255, 0, 0, 0, 255, 255}),
        ToBytes(SvgFile(8, "<g transform=\"rotate(5 1 2)\"><path d=\"M2 2a3 3 0 016 0l1 1z\" "
                           "style=\"stroke:#123;stroke-width:2\"/></g><rect rx='2' width=\"8\" "
                           "height=\"4\" fill=\"rgb(1,2,3)\"/>")),
    };
    std::uint32_t random = 1;
    const auto next = [&random](std::size_t bound) {
        random = random * 1664525 + 1013904223;
        return (random >> 8) % bound;
    };
    for (const auto& file : files) {
        for (int round = 0; round < 60; round++) {
            auto damaged = file;
            for (int change = 0; change < 3; change++)
                damaged[next(damaged.size())] = static_cast<unsigned char>(next(256));
            if (round % 4 == 0)
                damaged.resize(next(damaged.size()));
            Write(L"damaged", damaged);
            CPaintManagerUI::SetLastErrorText(L"");
            const auto image = Load(L"damaged");
            ASSERT_EQ(image == nullptr, !LastError().empty()) << Utf8(LastError());
            ASSERT_TRUE(image == nullptr || (image->nX > 0 && image->nY > 0));
        }
    }
}

TEST_F(ImageDecoderTest, GdiplusFormsRefuseAbsurdSizesToo)
{
    Write(L"bomb.png", Png({100000, 100000, 8, 6}, {0, 0, 0, 0, 0}));
    EXPECT_EQ(CRenderEngine::GdiplusLoadImage(STRINGorID(L"bomb.png")), nullptr);
    EXPECT_NE(LastError().find(L"too large"), std::wstring::npos);
}

TEST_F(ImageDecoderTest, SameFailureIsOneLine)
{
    DebugOutput output(L"DuiLib.dll");
    for (int attempt = 0; attempt < 5; attempt++) {
        EXPECT_EQ(Load(L"same-failure.png"), nullptr);
        EXPECT_EQ(Load(L"other-failure.png"), nullptr);
    }
    EXPECT_EQ(output.Lines().size(), 2u);
    EXPECT_NE(LastError().find(L"other-failure.png"), std::wstring::npos);
    EXPECT_EQ(Load(L"same-failure.png"), nullptr);
    EXPECT_NE(LastError().find(L"same-failure.png"), std::wstring::npos);
    EXPECT_EQ(output.Lines().size(), 2u);
}

TEST_F(ImageDecoderTest, NamesThatAreNoneGiveNull)
{
    EXPECT_EQ(CRenderEngine::LoadImage(static_cast<LPCTSTR>(nullptr)), nullptr);
    EXPECT_EQ(CRenderEngine::LoadImage(L""), nullptr);
    EXPECT_EQ(CRenderEngine::LoadImage(STRINGorID(L"")), nullptr);
    EXPECT_EQ(CRenderEngine::LoadImage(UINT{4711}, L"PNG"), nullptr);
    EXPECT_EQ(CRenderEngine::GdiplusLoadImage(STRINGorID(L"")), nullptr);
}

TEST_F(ImageDecoderTest, FullPathIsTriedAfterTheResourcePath)
{
    TempFolder other;
    const auto path = other.Write(L"b.png", std::span<const unsigned char>(Png(FourColours(2))));
    const auto image = Load(path.c_str());
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 2);
}

TEST_F(ImageDecoderTest, OnlyTheTextFormMapsNames)
{
    Write(L"deep/a.png", Png(FourColours(2)));
    auto* const resources = DuiLib::CResourceManager::GetInstance();
    ASSERT_TRUE(resources->LoadResource(
        STRINGorID(L"<Res><Image id=\"icon.close\" path=\"deep/a.png\"/></Res>")));
    EXPECT_NE(UniqueImage(CRenderEngine::LoadImage(L"icon.close")), nullptr);
    EXPECT_EQ(UniqueImage(CRenderEngine::LoadImage(STRINGorID(L"icon.close"))), nullptr);
    EXPECT_EQ(UniqueImage(CRenderEngine::LoadImage(L"icon.close", L"PNG")), nullptr);
    resources->ResetResourceMap();
}

TEST_F(ImageDecoderTest, GdiplusFormGivesAnImage)
{
    Write(L"a.png", Png(FourColours(4)));
    const UniqueImage image(CRenderEngine::GdiplusLoadImage(STRINGorID(L"a.png")));
    ASSERT_NE(image, nullptr);
    ASSERT_NE(image->pImage, nullptr);
    EXPECT_EQ(image->hBitmap, nullptr);
    EXPECT_EQ(image->nX, 4);
    EXPECT_EQ(image->nY, 4);
    EXPECT_EQ(image->pImage->GetWidth(), 4u);
}

TEST_F(ImageDecoderTest, GdiplusFormKeepsTheFileFree)
{
    Write(L"a.png", Png(FourColours(4)));
    const UniqueImage image(CRenderEngine::GdiplusLoadImage(STRINGorID(L"a.png")));
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(::DeleteFileW((folder / L"a.png").c_str()));
}

TEST_F(ImageDecoderTest, GdiplusFormTakesWhatGdiplusCannotDecode)
{
    Write(L"a.tga", Tga({.descriptor = 0x20}, kRedGreenBlueYellow));
    const UniqueImage image(CRenderEngine::GdiplusLoadImage(STRINGorID(L"a.tga")));
    ASSERT_NE(image, nullptr);
    ASSERT_NE(image->pImage, nullptr);
    Gdiplus::Color colour;
    static_cast<Gdiplus::Bitmap*>(image->pImage)->GetPixel(1, 0, &colour);
    EXPECT_EQ(Argb{colour.GetValue()}, kGreen);
}

TEST_F(ImageDecoderTest, GdiplusFormMasks)
{
    Write(L"a.png", Png(FourColours(2)));
    const UniqueImage image(
        CRenderEngine::GdiplusLoadImage(STRINGorID(L"a.png"), nullptr, 0xFF0000FF));
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->bAlpha);
    Gdiplus::Color colour;
    static_cast<Gdiplus::Bitmap*>(image->pImage)->GetPixel(0, 1, &colour);
    EXPECT_EQ(colour.GetAlpha(), 0);
}

TEST_F(ImageDecoderTest, FreeAcceptsNullAndNullMembers)
{
    CRenderEngine::FreeImage(nullptr);
    CRenderEngine::FreeImage(new TImageInfo);
    TImageInfo kept;
    CRenderEngine::FreeImage(&kept, false);
    EXPECT_EQ(kept.hBitmap, nullptr);
}

TEST_F(ImageDecoderTest, FreeCanLeaveTheRecord)
{
    Write(L"a.png", Png(FourColours(2)));
    auto* const image = CRenderEngine::LoadImage(L"a.png");
    ASSERT_NE(image, nullptr);
    CRenderEngine::FreeImage(image, false);
    EXPECT_EQ(image->hBitmap, nullptr);
    EXPECT_EQ(image->pBits, nullptr);
    EXPECT_EQ(image->nX, 2);
    delete image;
}

TEST_F(ImageDecoderTest, BitmapCanBeTakenOut)
{
    Write(L"a.png", Png(FourColours(2)));
    auto* const image = CRenderEngine::LoadImage(L"a.png");
    ASSERT_NE(image, nullptr);
    const HBITMAP bitmap = image->hBitmap;
    image->hBitmap = nullptr;
    CRenderEngine::FreeImage(image);
    DIBSECTION section{};
    ASSERT_NE(::GetObjectW(bitmap, sizeof section, &section), 0);
    EXPECT_EQ(static_cast<DWORD*>(section.dsBm.bmBits)[1], kGreen.value);
    ::DeleteObject(bitmap);
}

TEST_F(ImageDecoderTest, LoadingAndFreeingLeavesNothing)
{
    Write(L"a.png", Png(FourColours(8)));
    Write(L"a.svg", SvgFile(8, "<rect width=\"8\" height=\"8\"/>"));
    Write(L"bad.png", ToBytes("nothing"));
    const auto once = [this] {
        for (const auto* name : {L"a.png", L"a.svg", L"bad.png"}) {
            Load(name);
            UniqueImage(CRenderEngine::GdiplusLoadImage(STRINGorID(name)));
        }
    };
    once();
    GdiplusObjects();
    const int objects = GdiObjects();
    const int images = GdiplusObjects();
    for (int round = 0; round < 20; round++)
        once();
    EXPECT_EQ(GdiObjects(), objects);
    EXPECT_EQ(GdiplusObjects(), images);
}

// A worker for thumbnails beside the window that draws from the same archive, kept open or not.
TEST_F(ImageDecoderTest, WorkersLoadFromAnArchiveWhileTheWindowDraws)
{
    constexpr int kThreads = 4;
    constexpr int kRounds = 40;
    const auto text = [](const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); };
    ZipWriter zip;
    zip.Add({.name = "a.png", .content = text(Png(FourColours(64)))});
    zip.Add({.name = "b.png", .content = text(Png(Picture(50, 50, kBlue)))});
    folder.Write(L"skin.zip", zip.Finish());

    for (const bool cached : {true, false}) {
        SCOPED_TRACE(cached);
        CPaintManagerUI::SetResourceZip(L"skin.zip", cached);
        std::atomic<int> right = 0;
        {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < kThreads; thread++) {
                threads.emplace_back([this, &right] {
                    for (int round = 0; round < kRounds; round++) {
                        const auto a = Load(L"a.png");
                        const auto b = Load(L"b.png");
                        if (a && b && PixelOf(*a, 63, 63) == kYellow && PixelOf(*b, 7, 7) == kBlue)
                            ++right;
                    }
                });
            }
            for (int round = 0; round < kRounds; round++) {
                manager.RemoveAllImages();
                const Canvas canvas(64, 64);
                CRenderEngine::DrawImageString(canvas.Dc(), &manager, {0, 0, 64, 64},
                                               {0, 0, 64, 64}, L"a.png");
                EXPECT_EQ(canvas.Take(), FourColours(64));
            }
        }
        EXPECT_EQ(right, kThreads * kRounds);
    }
    CPaintManagerUI::SetResourceZip(L"");
}

TEST_F(ImageDecoderTest, EightThreadsLoadAtOnce)
{
    constexpr int kThreads = 8;
    constexpr int kRounds = 20;
    Write(L"a.png", Png(FourColours(16)));
    Write(L"b.tga", Tga({.descriptor = 0x20}, kRedGreenBlueYellow));
    Write(L"c.svg", SvgFile(16, "<rect width=\"16\" height=\"16\" fill=\"#00F\"/>"));

    std::array<int, kThreads> right{};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; thread++) {
        threads.emplace_back([this, &right, thread] {
            for (int round = 0; round < kRounds; round++) {
                const auto png = Load(L"a.png");
                const auto tga = Load(L"b.tga");
                const auto svg = Load(L"c.svg");
                const bool missing = Load(L"nowhere.png") == nullptr;
                if (png && tga && svg && missing && PixelOf(*png, 15, 15) == kYellow &&
                    PixelOf(*tga, 1, 0) == kGreen && PixelOf(*svg, 8, 8) == kBlue)
                    right[static_cast<std::size_t>(thread)]++;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (const int count : right)
        EXPECT_EQ(count, kRounds);
}

} // namespace
