#include "duilib/Core/PictureFiles.h"

#include "support/DebugOutput.h"
#include "support/FaultPlan.h"
#include "support/ObjectCounters.h"

namespace {

using namespace test;
using DuiLib::CPaintManagerUI;
using DuiLib::TImageInfo;

class ImageCacheTest : public ImageFilesTest {
protected:
    CPaintManagerUI other;
};

TEST_F(ImageCacheTest, WindowsShareTheDecodedPicture)
{
    Write(L"a.png", Png(FourColours(4)));
    const auto* const first = manager.GetImageEx(L"a.png");
    const auto* const second = other.GetImageEx(L"a.png");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->hBitmap, second->hBitmap);
    EXPECT_EQ(manager.GetImageEx(L"a.png"), first);
}

TEST_F(ImageCacheTest, PictureLivesUntilItsLastWindowLetsGo)
{
    Write(L"a.png", Png(FourColours(4)));
    manager.GetImageEx(L"a.png");
    const auto* const kept = other.GetImageEx(L"a.png");
    manager.RemoveImage(L"a.png");
    EXPECT_EQ(manager.GetImage(L"a.png"), nullptr);
    EXPECT_EQ(PixelOf(*kept, 0, 0), kRed);
}

TEST_F(ImageCacheTest, NothingIsLeftWhenEveryWindowLetGo)
{
    Write(L"a.png", Png(FourColours(4)));
    Write(L"b.svg", SvgFile(4, "<rect width=\"4\" height=\"4\"/>"));
    const auto once = [this] {
        for (const auto* name : {L"a.png", L"b@150.svg", L"nowhere.png"}) {
            manager.GetImageEx(name);
            other.GetImageEx(name);
            manager.GetImageEx(name);
        }
        manager.RemoveAllImages();
        other.RemoveAllImages();
    };
    once();
    const int objects = GdiObjects();
    for (int round = 0; round < 10; round++)
        once();
    EXPECT_EQ(GdiObjects(), objects);
}

TEST_F(ImageCacheTest, PictureIsReadAgainAfterItWasRemoved)
{
    Write(L"a.png", Png(Picture(2, 2, kRed)));
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"a.png"), 0, 0), kRed);
    Write(L"a.png", Png(Picture(2, 2, kGreen)));
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"a.png"), 0, 0), kRed);
    manager.RemoveImage(L"a.png");
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"a.png"), 0, 0), kGreen);
}

TEST_F(ImageCacheTest, MasksAreDifferentPictures)
{
    Write(L"a.png", Png(FourColours(2)));
    const auto* const plain = manager.GetImageEx(L"a.png");
    const auto* const masked = other.GetImageEx(L"a.png", nullptr, 0xFFFF0000);
    EXPECT_EQ(PixelOf(*plain, 0, 0), kRed);
    EXPECT_EQ(PixelOf(*masked, 0, 0), kClear);
}

TEST_F(ImageCacheTest, ResourcePathsAreDifferentPictures)
{
    Write(L"dark/a.png", Png(Picture(2, 2, kBlack)));
    Write(L"light/a.png", Png(Picture(2, 2, kWhite)));
    CPaintManagerUI::SetResourcePath((folder / L"dark").c_str());
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"a.png"), 0, 0), kBlack);
    CPaintManagerUI::SetResourcePath((folder / L"light").c_str());
    EXPECT_EQ(PixelOf(*other.GetImageEx(L"a.png"), 0, 0), kWhite);
}

TEST_F(ImageCacheTest, FailedLoadIsNotRemembered)
{
    EXPECT_EQ(manager.GetImageEx(L"a.png"), nullptr);
    Write(L"a.png", Png(FourColours(4)));
    EXPECT_NE(manager.GetImageEx(L"a.png"), nullptr);
}

TEST_F(ImageCacheTest, MissingPictureIsOneLineHoweverOftenItIsWanted)
{
    DebugOutput output(L"DuiLib.dll");
    for (int paint = 0; paint < 5; paint++) {
        EXPECT_EQ(manager.GetImageEx(L"one-line@150.png"), nullptr);
        EXPECT_EQ(other.GetImageEx(L"one-line-more.png"), nullptr);
    }
    ASSERT_EQ(output.Lines().size(), 2u);
    EXPECT_NE(output.Lines()[0].find(L"one-line.png"), std::wstring::npos);
}

TEST_F(ImageCacheTest, ScaledNameFallsBackToThePlainOneSilently)
{
    Write(L"a.png", Png(FourColours(4)));
    DebugOutput output(L"DuiLib.dll");
    const auto* const image = manager.GetImageEx(L"a@150.png");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 4);
    EXPECT_EQ(manager.GetImage(L"a@150.png"), image);
    EXPECT_EQ(manager.GetImage(L"a.png"), nullptr);
    EXPECT_TRUE(output.Lines().empty());
}

TEST_F(ImageCacheTest, DamagedScaledPictureFallsBackWithALine)
{
    Write(L"a.png", Png(FourColours(4)));
    Write(L"a@150.png", ToBytes("damaged"));
    DebugOutput output(L"DuiLib.dll");
    EXPECT_NE(manager.GetImageEx(L"a@150.png"), nullptr);
    ASSERT_EQ(output.Lines().size(), 1u);
    EXPECT_NE(output.Lines()[0].find(L"a@150.png"), std::wstring::npos);
}

TEST_F(ImageCacheTest, FallbackCutsFromTheLastSignToTheDot)
{
    Write(L"a@b.png", Png(Picture(2, 2, kRed)));
    Write(L"x.png", Png(Picture(2, 2, kBlue)));
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"a@b@200.png"), 0, 0), kRed);
    EXPECT_EQ(PixelOf(*manager.GetImageEx(L"x@hover.png"), 0, 0), kBlue);
    EXPECT_EQ(manager.GetImageEx(L"x@hover"), nullptr);
}

TEST_F(ImageCacheTest, LoadImageDerivesAndDropsNoNames)
{
    Write(L"a.png", Png(FourColours(4)));
    EXPECT_EQ(Load(L"a@150.png"), nullptr);
}

TEST_F(ImageCacheTest, SvgGrowsToTheScaleOfItsName)
{
    Write(L"a.svg", SvgFile(10, "<rect width=\"10\" height=\"10\" fill=\"red\"/>"));
    struct Row {
        const wchar_t* name;
        int size;
    };
    const Row rows[] = {
        {L"a.svg", 10},     {L"a@125.svg", 13},   {L"a@150.svg", 15},
        {L"a@400.svg", 40}, {L"a@50.svg", 5},     {L"a@0.svg", 10},
        {L"a@2x.svg", 10},  {L"a@99999.svg", 10}, {L"a@-150.svg", 10},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.name)));
        const auto* const image = manager.GetImageEx(row.name);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(PixelsOf(*image), Picture(row.size, row.size, kRed));
    }
}

TEST_F(ImageCacheTest, SvgMadeForAScaleKeepsItsOwnSize)
{
    Write(L"a.svg", SvgFile(10, "<rect width=\"10\" height=\"10\" fill=\"red\"/>"));
    Write(L"a@150.svg", SvgFile(16, "<rect width=\"16\" height=\"16\" fill=\"blue\"/>"));
    EXPECT_EQ(PixelsOf(*manager.GetImageEx(L"a@150.svg")), Picture(16, 16, kBlue));
}

TEST_F(ImageCacheTest, ChangeOfDpiKeepsThePicture)
{
    Write(L"a.png", Png(FourColours(4)));
    const auto* const image = manager.GetImageEx(L"a.png");
    manager.SetDPI(144);
    EXPECT_EQ(manager.GetImage(L"a.png"), image);
    EXPECT_EQ(PixelOf(*image, 0, 0), kRed);
}

TEST_F(ImageCacheTest, ReloadReadsTheFilesAgainAndKeepsTheRecords)
{
    Write(L"a.png", Png(Picture(2, 2, kRed)));
    const auto* const image = manager.GetImageEx(L"a.png");
    ASSERT_NE(image, nullptr);
    Write(L"a.png", Png(Picture(6, 3, kGreen)));
    manager.ReloadImages();
    EXPECT_EQ(manager.GetImage(L"a.png"), image);
    EXPECT_EQ(image->nX, 6);
    EXPECT_EQ(PixelsOf(*image), Picture(6, 3, kGreen));
}

TEST_F(ImageCacheTest, ReloadFollowsTheResourcePath)
{
    Write(L"dark/a.png", Png(Picture(2, 2, kBlack)));
    Write(L"light/a.png", Png(Picture(2, 2, kWhite)));
    CPaintManagerUI::SetResourcePath((folder / L"dark").c_str());
    const auto* const image = manager.GetImageEx(L"a.png");
    CPaintManagerUI::SetResourcePath((folder / L"light").c_str());
    manager.ReloadImages();
    EXPECT_EQ(PixelOf(*image, 0, 0), kWhite);
    EXPECT_EQ(other.GetImageEx(L"a.png")->hBitmap, image->hBitmap);
}

TEST_F(ImageCacheTest, ReloadKeepsAPictureWhoseFileIsGone)
{
    Write(L"a.png", Png(Picture(2, 2, kRed)));
    const auto* const image = manager.GetImageEx(L"a.png");
    ASSERT_TRUE(::DeleteFileW((folder / L"a.png").c_str()));
    manager.ReloadImages();
    EXPECT_EQ(manager.GetImage(L"a.png"), image);
    EXPECT_EQ(PixelOf(*image, 0, 0), kRed);
}

TEST_F(ImageCacheTest, PictureWithHslFollowsTheProcess)
{
    Write(L"a.png", Png(Picture(2, 2, kRed)));
    CPaintManagerUI::SetHSL(true, 300, 100, 100);
    const auto* const image = manager.GetImageEx(L"a.png", nullptr, 0, true);
    const auto* const plain = other.GetImageEx(L"a.png");
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->bUseHSL);
    EXPECT_EQ(PixelOf(*image, 0, 0), kGreen);
    EXPECT_EQ(PixelOf(*plain, 0, 0), kRed);
    CPaintManagerUI::SetHSL(false, 180, 100, 100);
}

TEST_F(ImageCacheTest, TextFormOfTheResourceTableIsUsed)
{
    Write(L"deep/a.png", Png(FourColours(4)));
    auto* const resources = DuiLib::CResourceManager::GetInstance();
    ASSERT_TRUE(resources->LoadResource(
        DuiLib::STRINGorID(L"<Res><Image id=\"close\" path=\"deep/a.png\"/></Res>")));
    EXPECT_NE(manager.GetImageEx(L"close"), nullptr);
    resources->ResetResourceMap();
}

TEST_F(ImageCacheTest, APictureThatRunsOutOfMemoryLeavesNothingAndLoadsLater)
{
    Write(L"a.png", Png(FourColours(4)));
    FaultPlan plan(Resource::Memory);
    plan.Start();
    manager.GetImageEx(L"a.png");
    manager.RemoveAllImages();
    const int requests = plan.Stop();
    EXPECT_GT(requests, 5);

    const auto refuseEach = [&] {
        for (int refused = 1; refused <= requests; ++refused) {
            SCOPED_TRACE(refused);
            plan.Start(refused);
            try {
                manager.GetImageEx(L"a.png");
            } catch (const std::bad_alloc&) {
            }
            plan.Stop();
            const auto* const later = manager.GetImageEx(L"a.png");
            ASSERT_NE(later, nullptr);
            EXPECT_EQ(PixelOf(*later, 0, 0), kRed);
            EXPECT_EQ(other.GetImageEx(L"a.png")->hBitmap, later->hBitmap);
            other.RemoveAllImages();
            manager.RemoveAllImages();
        }
    };
    refuseEach();
    const int held = FaultPlan::HeldBlocks();
    refuseEach();
    EXPECT_LE(FaultPlan::HeldBlocks(), held + 2) << "the last failure's text may be kept";
}

} // namespace
