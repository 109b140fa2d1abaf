#include "quillet/resources/ThumbnailKit.h"

#include <cstring>

namespace test {
namespace {

using DuiLib::ThumbnailData;
using Size = CacheCalls::Size;

CLSID EncoderOf(const wchar_t* format)
{
    UINT count = 0;
    UINT size = 0;
    Gdiplus::GetImageEncodersSize(&count, &size);
    std::vector<std::byte> memory(size);
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.data());
    Gdiplus::GetImageEncoders(count, size, encoders);
    for (UINT index = 0; index < count; ++index) {
        if (std::wcscmp(encoders[index].MimeType, format) == 0)
            return encoders[index].Clsid;
    }
    ADD_FAILURE() << "no encoder";
    return {};
}

void SaveAs(const Picture& picture, const std::wstring& path, const wchar_t* format)
{
    Gdiplus::Bitmap bitmap(picture.Width(), picture.Height(), PixelFormat32bppARGB);
    for (int y = 0; y < picture.Height(); ++y) {
        for (int x = 0; x < picture.Width(); ++x)
            bitmap.SetPixel(x, y, Gdiplus::Color(picture.At(x, y).value));
    }
    const CLSID encoder = EncoderOf(format);
    ASSERT_EQ(bitmap.Save(path.c_str(), &encoder, nullptr), Gdiplus::Ok);
}

// A GIF of the four colours: every pixel follows a code that clears the table, so that all codes
// stay three bits long.
std::string GifOf(const Picture& picture)
{
    constexpr unsigned kClear = 4;
    constexpr unsigned kEnd = 5;
    constexpr std::size_t kLargestBlock = 255;
    const auto word = [](int value) {
        return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
    };
    const std::string size = word(picture.Width()) + word(picture.Height());
    std::string file = "GIF89a" + size + std::string("\x91\0\0", 3);
    for (const Argb colour : {kRed, kGreen, kBlue, kYellow}) {
        for (const int shift : {16, 8, 0})
            file += static_cast<char>(colour.value >> shift);
    }
    file += "," + word(0) + word(0) + size + std::string("\0\2", 2);

    std::string codes;
    unsigned bits = 0;
    int count = 0;
    const auto append = [&](unsigned code) {
        bits |= code << count;
        for (count += 3; count >= 8; count -= 8, bits >>= 8)
            codes += static_cast<char>(bits);
    };
    for (int y = 0; y < picture.Height(); ++y) {
        for (int x = 0; x < picture.Width(); ++x) {
            append(kClear);
            const Argb colour = picture.At(x, y);
            append(colour == kRed ? 0 : colour == kGreen ? 1 : colour == kBlue ? 2 : 3);
        }
    }
    append(kEnd);
    codes += static_cast<char>(bits);
    for (std::size_t at = 0; at < codes.size(); at += kLargestBlock) {
        const std::string block = codes.substr(at, kLargestBlock);
        file += static_cast<char>(block.size()) + block;
    }
    return file + std::string("\0;", 2);
}

bool Exists(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsNear(Argb colour, Argb wanted, int largest)
{
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = static_cast<int>(colour.value >> shift & 0xFF) -
                               static_cast<int>(wanted.value >> shift & 0xFF);
        if (difference > largest || difference < -largest)
            return false;
    }
    return true;
}

using ResourceQueueFilesTest = ThumbnailTest;

TEST_F(ResourceQueueFilesTest, ReadsTheFormatsOfGdiPlusWhateverTheNameSays)
{
    constexpr int kLossy = 12;
    struct Row {
        const wchar_t* name;
        const wchar_t* format; // null: a GIF made by hand
    };
    for (const auto& [name, format] :
         {Row{L"a.png", L"image/png"}, Row{L"a.jpg", L"image/jpeg"}, Row{L"a.bmp", L"image/bmp"},
          Row{L"a.gif", nullptr}, Row{L"a.tif", L"image/tiff"}, Row{L"png.jpg", L"image/png"},
          Row{L"jpeg.txt", L"image/jpeg"}, Row{L"gif", nullptr},
          Row{L"图片 照片.png", L"image/png"}, Row{L"相册.tiff", L"image/bmp"}}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(name)));
        const std::wstring path = folder / name;
        if (format)
            SaveAs(Quarters(64, 48), path, format);
        else
            folder.Write(name, GifOf(Quarters(64, 48)));
        const ThumbnailData* const data = Small(path);
        ASSERT_NE(data, nullptr);
        EXPECT_TRUE(data->loaded);
        EXPECT_EQ(data->icon, nullptr);
        EXPECT_EQ(data->width, 64);
        EXPECT_EQ(data->height, 48);
        EXPECT_EQ(SizeOf(*data), (Size{128, 64}));
        const Middles middles = MiddlesOf(*data);
        EXPECT_TRUE(
            IsNear(middles.upperLeft, kRed, kLossy) && IsNear(middles.upperRight, kGreen, kLossy) &&
            IsNear(middles.lowerLeft, kBlue, kLossy) && IsNear(middles.lowerRight, kYellow, kLossy))
            << middles;
    }
}

TEST_F(ResourceQueueFilesTest, ReadsABitmapMadeByHand)
{
    Picture picture(2, 1, kRed);
    picture.Set(0, 0, kBlue);
    const ThumbnailData* const data = Shown(folder.Write(L"a.bmp", BmpOf(picture)));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->width, 2);
    EXPECT_EQ(data->height, 1);
    EXPECT_EQ(SizeOf(*data), (Size{2, 1}));
    EXPECT_EQ(PixelsOf(*data->thumbnail).At(0, 0), kBlue);
}

// Files that GDI+ cannot read.
class UnreadableTest : public ThumbnailTest {
protected:
    UnreadableTest()
    {
        const std::string start("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x08", 20);
        existing = {folder.Write(L"text.txt", "text"),
                    folder.Write(L"text.png", "text"),
                    folder.Write(L"truncated.png", start),
                    folder.Write(L"truncated.bmp", BmpOf(Quarters(8, 8)).substr(0, 30)),
                    folder.Write(L"empty.jpg", ""),
                    folder.Path() + L"sub"};
        folder.Write(L"sub\\in.txt", "");
    }

    std::vector<std::wstring> existing;
    std::wstring missing = folder / L"missing.png";
};

TEST_F(UnreadableTest, FirstFormKeepsTheShellsIconAndAsksForItOnce)
{
    CacheCalls calls;
    std::size_t count = 0;
    for (const auto& path : existing) {
        SCOPED_TRACE(testing::PrintToString(path));
        ThumbnailData* const data = Small(path);
        ++count;
        ExpectNothingRead(data);
        EXPECT_NE(data->icon, nullptr);
        EXPECT_EQ(data->icon, calls.answered.back());
        EXPECT_EQ(Small(path), data);
        EXPECT_EQ(calls.opened.size(), count);
        EXPECT_EQ(calls.asked.size(), count);
    }
}

TEST_F(UnreadableTest, MissingFileIsAnEntryWithoutAnIcon)
{
    CacheCalls calls;
    ThumbnailData* const data = Small(missing);
    ExpectNothingRead(data);
    EXPECT_EQ(data->icon, nullptr);
    EXPECT_EQ(Small(missing), data);
    EXPECT_EQ(calls.opened.size(), 1u);
    EXPECT_EQ(calls.asked.size(), 1u);
}

TEST_F(UnreadableTest, FallbackStaysWhenTheFileBecomesAPicture)
{
    ThumbnailData* const data = Small(missing);
    WritePicture(L"missing.png", 8, 8);
    EXPECT_EQ(Small(missing), data);
    EXPECT_FALSE(data->loaded);
}

TEST_F(UnreadableTest, OtherFormsReturnNullAndKeepNothing)
{
    CacheCalls calls;
    for (const auto& path : existing) {
        SCOPED_TRACE(testing::PrintToString(path));
        EXPECT_EQ(Sized(path, 20, 20), nullptr);
        EXPECT_EQ(Shown(path), nullptr);
        EXPECT_EQ(Shown(path, Tip::Large), nullptr);
        EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload), nullptr);
        EXPECT_EQ(calls.opened.size(), 4u);
        calls.opened.clear();
    }
    EXPECT_EQ(Sized(missing, 20, 20), nullptr);
    EXPECT_EQ(Shown(missing), nullptr);
    EXPECT_TRUE(calls.asked.empty());
    EXPECT_TRUE(calls.sizes.empty());

    WritePicture(L"missing.png", 8, 6);
    const ThumbnailData* const data = Sized(missing, 20, 20);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->width, 8);
}

TEST_F(UnreadableTest, NullIsTheEmptyPath)
{
    CacheCalls calls;
    EXPECT_EQ(Sized(L"", 20, 20), nullptr);
    EXPECT_EQ(Shown(L""), nullptr);
    int size = 10;
    EXPECT_EQ(queue.GetResource(nullptr, size, size, size, size, 0), nullptr);
    EXPECT_EQ(queue.GetResource(nullptr, 0, 0, 0, false, true), nullptr);
    EXPECT_EQ(calls.opened.size(), 4u);

    ThumbnailData* const data = queue.GetResource(nullptr);
    ExpectNothingRead(data);
    EXPECT_EQ(data->icon, calls.answered.at(0));
    EXPECT_EQ(Small(L""), data);
    EXPECT_EQ(calls.opened.size(), 5u);
}

TEST_F(UnreadableTest, CachedFallbackAnswersTheOtherFormsToo)
{
    ThumbnailData* const data = Small(existing[0]);
    EXPECT_EQ(Sized(existing[0], 20, 20), data);
    EXPECT_EQ(Shown(existing[0]), data);
    EXPECT_EQ(Shown(existing[0], Tip::Large), data);
}

TEST_F(ResourceQueueFilesTest, OpensForReadingAndDeniesWritingMeanwhile)
{
    const std::wstring path = WritePicture(L"a.png", 8, 8);
    CacheCalls calls;
    const std::wstring other = WritePicture(L"b.png", 8, 8);
    const std::wstring third = WritePicture(L"c.png", 8, 8);
    Small(path);
    Sized(other, 8, 8);
    Shown(third);
    ASSERT_EQ(calls.opened.size(), 3u);
    for (std::size_t index = 0; index < 3; ++index) {
        const std::wstring& opened = index == 0 ? path : index == 1 ? other : third;
        const CacheCalls::Opening wanted{opened, STGM_READ | STGM_SHARE_DENY_WRITE, 0, FALSE,
                                         nullptr};
        EXPECT_EQ(calls.opened[index], wanted) << index;
    }
}

TEST_F(ResourceQueueFilesTest, LeavesTheFileToOthers)
{
    CacheCalls calls;
    const auto expectFree = [&](const std::wstring& path) {
        EXPECT_EQ(calls.Decoded(), 0u) << "the picture is still held";
        EXPECT_TRUE(::DeleteFileW(path.c_str()));
        EXPECT_FALSE(Exists(path));
        const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        ::CloseHandle(file);
    };
    std::wstring path = WritePicture(L"a.png", 8, 8);
    ASSERT_NE(Small(path), nullptr);
    expectFree(path);
    path = WritePicture(L"b.png", 8, 8);
    ASSERT_NE(Sized(path, 8, 8), nullptr);
    expectFree(path);
    path = WritePicture(L"c.png", 8, 8);
    ASSERT_NE(Shown(path), nullptr);
    ASSERT_NE(Shown(path, Tip::Large, Cached::Reload), nullptr);
    expectFree(path);
    path = folder.Write(L"d.png", "text");
    ASSERT_NE(Small(path), nullptr);
    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload), nullptr);
    expectFree(path);
}

} // namespace
} // namespace test
