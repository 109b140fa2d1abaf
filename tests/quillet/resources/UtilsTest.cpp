#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"
#include "support/Picture.h"
#include "support/TempFolder.h"

#include <limits>
#include <string>

namespace test {
namespace {

using namespace DuiLib;

class GdiPlus {
public:
    GdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(m_token); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

private:
    ULONG_PTR m_token = 0;
};

WORD InfoTable(WORD bits, DWORD compression, DWORD used)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biBitCount = bits;
    header.biCompression = compression;
    header.biClrUsed = used;
    return Utils::ColorTableSize(&header);
}

TEST(ColorTableSizeTest, OfACoreHeaderHasThreeByteEntries)
{
    struct Row {
        WORD bits, size;
    };
    for (const auto& [bits, size] : {Row{1, 6}, Row{4, 48}, Row{8, 768}, Row{24, 0}, Row{2, 0}}) {
        BITMAPCOREHEADER header{};
        header.bcSize = sizeof header;
        header.bcBitCount = bits;
        EXPECT_EQ(Utils::ColorTableSize(&header), size) << bits;
    }
}

TEST(ColorTableSizeTest, OfAnInfoHeaderFollowsDepthAndUsedColours)
{
    struct Row {
        WORD bits;
        DWORD compression, used;
        WORD size;
    };
    for (const auto& [bits, compression, used, size] :
         {Row{1, BI_RGB, 0, 8}, Row{4, BI_RGB, 0, 64}, Row{8, BI_RGB, 0, 1024},
          Row{24, BI_RGB, 0, 0}, Row{8, BI_RGB, 3, 12}, Row{24, BI_RGB, 256, 1024},
          Row{8, BI_RLE8, 0, 1024}, Row{1, BI_BITFIELDS, 0, 20}, Row{4, BI_BITFIELDS, 0, 76},
          Row{8, BI_BITFIELDS, 0, 1036}, Row{16, BI_BITFIELDS, 0, 12},
          Row{32, BI_BITFIELDS, 2, 20}}) {
        EXPECT_EQ(InfoTable(bits, compression, used), size)
            << bits << " bits, compression " << compression << ", " << used << " used";
    }
}

TEST(ColorTableSizeTest, WrapsAtSixteenBits)
{
    EXPECT_EQ(InfoTable(16, BI_RGB, 16384), 0);
    EXPECT_EQ(InfoTable(16, BI_RGB, 16385), 4);
    EXPECT_EQ(InfoTable(16, BI_BITFIELDS, 16384), 12);
}

TEST(ColorTableSizeTest, OfNothingIsNothing)
{
    EXPECT_EQ(Utils::ColorTableSize(nullptr), 0);
}

TEST(FromWin32RectTest, TurnsEdgesIntoASize)
{
    const Gdiplus::Rect rect = Utils::FromWin32RECT({10, 20, 35, 60});
    EXPECT_EQ(rect.X, 10);
    EXPECT_EQ(rect.Y, 20);
    EXPECT_EQ(rect.Width, 25);
    EXPECT_EQ(rect.Height, 40);
    EXPECT_EQ(Utils::FromWin32RECT({5, 5, 1, 2}).Width, -4);
}

TEST(DpiFactorTest, OfAnUnscaledMonitorIsOneAndMeasuredOnce)
{
    FakeShcore shcore;
    bool ok = false;
    DWORD error = 99;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(error, DWORD{ERROR_SUCCESS});
    EXPECT_EQ(shcore.monitors.size(), 1u);
    EXPECT_EQ(shcore.freed, 1);
}

TEST(DpiFactorTest, OfAScaledMonitorIsMeasuredTwiceAndTheSecondCounts)
{
    FakeShcore shcore;
    shcore.dpi = {120, 144};
    bool ok = false;
    DWORD error = 99;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.5);
    EXPECT_TRUE(ok);
    EXPECT_EQ(shcore.monitors.size(), 2u);
    EXPECT_EQ(shcore.freed, 2);
}

TEST(DpiFactorTest, IsInDoublePrecision)
{
    FakeShcore shcore;
    shcore.dpi = {100};
    bool ok = false;
    DWORD error = 0;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 100.0 / 96.0);
}

TEST(DpiFactorTest, ReportsWhyTheSystemRefuses)
{
    FakeShcore shcore;
    shcore.dpiResult = E_INVALIDARG;
    shcore.lastError = ERROR_INVALID_PARAMETER;
    bool ok = true;
    DWORD error = 0;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(error, DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(shcore.freed, 1);
}

TEST(DpiFactorTest, AMissingLibraryOrExportIsNoFailure)
{
    FakeShcore shcore;
    bool ok = false;
    DWORD error = 99;
    shcore.hasExports = false;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.0);
    EXPECT_TRUE(ok);
    shcore.present = false;
    ok = false;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(error, DWORD{ERROR_SUCCESS});
}

TEST(TransitionColorTest, BlendsChannelsTruncatingTowardZero)
{
    const Gdiplus::Color black(0xFF000000);
    const Gdiplus::Color white(0xFFFFFFFF);
    EXPECT_EQ(Utils::GetTransitionColor(black, white, 0.5f).GetValue(), 0xFF7F7F7Fu);
    EXPECT_EQ(Utils::GetTransitionColor(white, black, 0.5f).GetValue(), 0xFF808080u);
    EXPECT_EQ(Utils::GetTransitionColor(black, white, 1.0f).GetValue(), 0xFFFFFFFFu);
    EXPECT_EQ(
        Utils::GetTransitionColor(Gdiplus::Color(0xFFDEDEDE), Gdiplus::Color(0xFF007DFF), 0.04f)
            .GetValue(),
        0xFFD6DBDFu);
}

TEST(TransitionColorTest, TakesTheAlphaOfTheTargetFromTheStart)
{
    const Gdiplus::Color from(0xFF102030);
    const Gdiplus::Color to(0x80FFFFFF);
    EXPECT_EQ(Utils::GetTransitionColor(from, to, 0.0f).GetValue(), 0x80102030u);
    EXPECT_EQ(Utils::GetTransitionColor(Gdiplus::Color(0xFF000000), to, 0.5f).GetValue(),
              0x807F7F7Fu);
}

TEST(TransitionColorTest, WrapsBeyondTheEnds)
{
    const Gdiplus::Color from(0xFF000000);
    const Gdiplus::Color to(0xFF640A01);
    EXPECT_EQ(Utils::GetTransitionColor(from, to, 3.0f).GetValue(), 0xFF2C1E03u); // 300 wraps to 44
    EXPECT_EQ(Utils::GetTransitionColor(from, to, -1.0f).GetValue(), 0xFF9CF6FFu);
}

TEST(TransitionColorTest, SurvivesANumberThatIsNone)
{
    const Gdiplus::Color from(0xFF102030);
    const Gdiplus::Color to(0xFF405060);
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Utils::GetTransitionColor(from, to, none).GetValue(), 0xFF102030u);
    const float endless = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Utils::GetTransitionColor(from, to, endless).GetA(), 0xFF);
}

class BitmapFilesTest : public testing::Test {
protected:
    ~BitmapFilesTest() override { CPaintManagerUI::SetResourcePath(L""); }

    GdiPlus gdiPlus;
    TempFolder folder;
};

TEST_F(BitmapFilesTest, LoadsAPictureOfTheResourcesForTheCallerToOwn)
{
    ASSERT_TRUE(Picture(7, 5, Argb{0xFF336699}).Save(folder / L"picture.png"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());

    const HBITMAP bitmap = Utils::LoadBitmapFromDuiRes(L"picture.png");

    ASSERT_NE(bitmap, nullptr);
    BITMAP info{};
    ASSERT_NE(::GetObjectW(bitmap, sizeof info, &info), 0);
    EXPECT_EQ(info.bmWidth, 7);
    EXPECT_EQ(info.bmHeight, 5);
    EXPECT_EQ(info.bmBitsPixel, 32);
    ASSERT_NE(info.bmBits, nullptr);
    EXPECT_EQ(*static_cast<const DWORD*>(info.bmBits), 0xFF336699u);
    EXPECT_TRUE(::DeleteObject(bitmap));
}

TEST_F(BitmapFilesTest, AMissingPictureIsNull)
{
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_EQ(Utils::LoadBitmapFromDuiRes(L"missing.png"), nullptr);
    EXPECT_EQ(Utils::LoadBitmapFromDuiRes(nullptr), nullptr);
}

TEST_F(BitmapFilesTest, SavesPngWhateverTheExtension)
{
    for (const wchar_t* const name : {L"a.png", L"b.jpg", L"c.bmp", L"d"}) {
        Gdiplus::Bitmap bitmap(3, 2, PixelFormat32bppARGB);
        bitmap.SetPixel(1, 1, Gdiplus::Color(0x80FF0000));
        const std::wstring path = folder / name;
        ASSERT_TRUE(Utils::SaveBitmap(&bitmap, path)) << name;

        const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        char signature[4]{};
        DWORD read = 0;
        ::ReadFile(file, signature, sizeof signature, &read, nullptr);
        ::CloseHandle(file);
        EXPECT_EQ(std::string(signature, read), "\x89PNG") << name;
    }
}

TEST_F(BitmapFilesTest, SavesNothingOfANullBitmapOrToAMissingFolder)
{
    EXPECT_FALSE(Utils::SaveBitmap(nullptr, folder / L"null.png"));
    Gdiplus::Bitmap bitmap(2, 2, PixelFormat32bppARGB);
    EXPECT_FALSE(Utils::SaveBitmap(&bitmap, folder / L"no\\such\\folder\\a.png"));
    EXPECT_NE(bitmap.GetLastStatus(), Gdiplus::Ok);
}

} // namespace
} // namespace test
