#include "quillet/resources/ThumbnailKit.h"

#include "quillet/frame/FreshProcess.h"

#include <cstdlib>
#include <cstring>

namespace test {
namespace {

using DuiLib::ResourceQueue;
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

// The colours in the middle of the quarters: upper left, upper right, lower left, lower right.
struct Middles {
    Argb upperLeft, upperRight, lowerLeft, lowerRight;
    bool operator==(const Middles&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Middles& middles)
{
    return out << middles.upperLeft << ' ' << middles.upperRight << ' ' << middles.lowerLeft << ' '
               << middles.lowerRight;
}

Middles MiddlesOf(const ThumbnailData& data)
{
    const Picture picture = PixelsOf(*data.thumbnail);
    const int left = picture.Width() / 4;
    const int right = picture.Width() * 3 / 4;
    const int top = picture.Height() / 4;
    const int bottom = picture.Height() * 3 / 4;
    return {picture.At(left, top), picture.At(right, top), picture.At(left, bottom),
            picture.At(right, bottom)};
}

constexpr Middles kUpright{kRed, kGreen, kBlue, kYellow};

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

void ExpectNothingRead(const ThumbnailData* data)
{
    ASSERT_NE(data, nullptr);
    EXPECT_FALSE(data->loaded);
    EXPECT_EQ(data->width, 0);
    EXPECT_EQ(data->height, 0);
    ASSERT_NE(data->thumbnail, nullptr);
    EXPECT_EQ(SizeOf(*data), (Size{0, 0}));
    EXPECT_NE(data->thumbnail->GetLastStatus(), Gdiplus::Ok);
}

using ResourceQueueTest = ThumbnailTest;

TEST_F(ResourceQueueTest, FirstFormMakesThumbnailsOf128x64)
{
    const ThumbnailData* const data = Small(WritePng(L"a.png", 40, 30));
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(data->icon, nullptr);
    EXPECT_EQ(data->width, 40);
    EXPECT_EQ(data->height, 30);
    EXPECT_EQ(SizeOf(*data), (Size{128, 64}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);
}

TEST_F(ResourceQueueTest, SecondFormMakesThumbnailsOfTwiceTheSize)
{
    const ThumbnailData* const data = Sized(WritePng(L"a.png", 40, 30), 25, 35);
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(data->icon, nullptr);
    EXPECT_EQ(data->width, 40);
    EXPECT_EQ(data->height, 30);
    EXPECT_EQ(SizeOf(*data), (Size{50, 70}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);
}

TEST_F(ResourceQueueTest, ThirdFormMakesThumbnailsOf384x448ForALargeTip)
{
    const ThumbnailData* const data = Shown(WritePng(L"a.png", 40, 30), Tip::Large);
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(data->icon, nullptr);
    EXPECT_EQ(data->width, 40);
    EXPECT_EQ(data->height, 30);
    EXPECT_EQ(SizeOf(*data), (Size{384, 448}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);
}

TEST_F(ResourceQueueTest, ThirdFormMakesThumbnailsOfThePicturesOwnSizeOtherwise)
{
    const ThumbnailData* const data = Shown(WritePng(L"a.png", 40, 30));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(SizeOf(*data), (Size{40, 30}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);

    const ThumbnailData* const turned =
        Shown(WritePng(L"b.png", 40, 30), Tip::Whole, Cached::Use, 90);
    ASSERT_NE(turned, nullptr);
    EXPECT_EQ(SizeOf(*turned), (Size{30, 40}));
}

TEST_F(ResourceQueueTest, ThumbnailsAreDistortedToExactlyTheirSize)
{
    const std::wstring wide = WritePng(L"wide.png", 200, 10);
    const std::wstring high = WritePng(L"high.png", 10, 200);
    for (const auto& path : {wide, high}) {
        const ThumbnailData* const data = Small(path);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(SizeOf(*data), (Size{128, 64}));
        EXPECT_EQ(MiddlesOf(*data), kUpright);
    }
    const ThumbnailData* const tip = Shown(WritePng(L"tip.png", 200, 10), Tip::Large);
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(SizeOf(*tip), (Size{384, 448}));
    EXPECT_EQ(MiddlesOf(*tip), kUpright);
}

TEST_F(ResourceQueueTest, ReadsTheFormatsOfGdiPlusWhateverTheNameSays)
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

TEST_F(ResourceQueueTest, ReadsABitmapMadeByHand)
{
    // One row of two pixels, blue and red, padded to eight bytes.
    std::string file = "BM";
    const auto append = [&file](std::uint32_t value, int count) {
        for (int index = 0; index < count; ++index)
            file += static_cast<char>(value >> 8 * index);
    };
    for (const std::uint32_t field : {62u, 0u, 54u, 40u, 2u, 1u})
        append(field, 4);
    append(1, 2);
    append(24, 2);
    for (int field = 0; field < 6; ++field)
        append(0, 4);
    file += std::string("\xFF\0\0\0\0\xFF\0\0", 8);

    const ThumbnailData* const data = Shown(folder.Write(L"a.bmp", file));
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
        const std::wstring whole = WritePng(L"whole.png", 8, 8);
        std::string start(20, '\0');
        std::FILE* const file = _wfopen(whole.c_str(), L"rb");
        EXPECT_EQ(std::fread(start.data(), 1, start.size(), file), start.size());
        std::fclose(file);
        existing = {folder.Write(L"text.txt", "text"), folder.Write(L"text.png", "text"),
                    folder.Write(L"truncated.png", start), folder.Write(L"empty.jpg", ""),
                    folder.Path() + L"sub"};
        folder.Write(L"sub\\in.txt", "");
    }

    std::vector<std::wstring> existing;
    std::wstring missing = folder / L"missing.png";
};

TEST_F(UnreadableTest, FirstFormKeepsTheShellsIconAndAsksForItOnce)
{
    const CacheCalls calls;
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
    const CacheCalls calls;
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
    WritePng(L"missing.png", 8, 8);
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

    WritePng(L"missing.png", 8, 6);
    const ThumbnailData* const data = Sized(missing, 20, 20);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->width, 8);
}

TEST_F(UnreadableTest, NullIsTheEmptyPath)
{
    const CacheCalls calls;
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

TEST_F(ResourceQueueTest, OpensForReadingAndDeniesWritingMeanwhile)
{
    const std::wstring path = WritePng(L"a.png", 8, 8);
    const CacheCalls calls;
    const std::wstring other = WritePng(L"b.png", 8, 8);
    const std::wstring third = WritePng(L"c.png", 8, 8);
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

TEST_F(ResourceQueueTest, LeavesTheFileToOthers)
{
    const CacheCalls calls;
    const auto expectFree = [&](const std::wstring& path) {
        EXPECT_EQ(calls.Decoded(), 0u) << "the picture is still held";
        EXPECT_TRUE(::DeleteFileW(path.c_str()));
        EXPECT_FALSE(Exists(path));
        const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        ::CloseHandle(file);
    };
    std::wstring path = WritePng(L"a.png", 8, 8);
    ASSERT_NE(Small(path), nullptr);
    expectFree(path);
    path = WritePng(L"b.png", 8, 8);
    ASSERT_NE(Sized(path, 8, 8), nullptr);
    expectFree(path);
    path = WritePng(L"c.png", 8, 8);
    ASSERT_NE(Shown(path), nullptr);
    ASSERT_NE(Shown(path, Tip::Large, Cached::Reload), nullptr);
    expectFree(path);
    path = folder.Write(L"d.png", "text");
    ASSERT_NE(Small(path), nullptr);
    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload), nullptr);
    expectFree(path);
}

TEST_F(ResourceQueueTest, RotatesClockwiseByQuarters)
{
    struct Row {
        int rotation;
        Gdiplus::RotateFlipType type;
        Middles middles;
        bool swapped;
    };
    for (const auto& [rotation, type, middles, swapped] :
         {Row{0, Gdiplus::RotateNoneFlipNone, kUpright, false},
          Row{90, Gdiplus::Rotate90FlipNone, {kBlue, kRed, kYellow, kGreen}, true},
          Row{180, Gdiplus::Rotate180FlipNone, {kYellow, kBlue, kGreen, kRed}, false},
          Row{270, Gdiplus::Rotate270FlipNone, {kGreen, kYellow, kRed, kBlue}, true}}) {
        SCOPED_TRACE(rotation);
        const CacheCalls calls;
        const std::wstring name = std::to_wstring(rotation);
        const ThumbnailData* const sized =
            Sized(WritePng(name + L".png", 40, 24), 32, 32, rotation);
        const ThumbnailData* const shown =
            Shown(WritePng(name + L"+.png", 40, 24), Tip::Whole, Cached::Use, rotation);
        for (const auto* data : {sized, shown}) {
            ASSERT_NE(data, nullptr);
            EXPECT_EQ(data->width, swapped ? 24 : 40);
            EXPECT_EQ(data->height, swapped ? 40 : 24);
            EXPECT_EQ(MiddlesOf(*data), middles);
        }
        EXPECT_EQ(SizeOf(*sized), (Size{64, 64}));
        EXPECT_EQ(SizeOf(*shown), (Size{sized->width, sized->height}));
        EXPECT_EQ(calls.turned, (std::vector{type, type}));
    }
}

TEST_F(ResourceQueueTest, OtherRotationsLeaveThePictureAsItIs)
{
    const CacheCalls calls;
    int number = 0;
    for (const int rotation : {45, -90, 1, 89, 91, 360, 450, -180}) {
        SCOPED_TRACE(rotation);
        const std::wstring name = std::to_wstring(number++);
        const ThumbnailData* const sized =
            Sized(WritePng(name + L".png", 40, 24), 32, 32, rotation);
        const ThumbnailData* const shown =
            Shown(WritePng(name + L"+.png", 40, 24), Tip::Whole, Cached::Use, rotation);
        for (const auto* data : {sized, shown}) {
            ASSERT_NE(data, nullptr);
            EXPECT_EQ(data->width, 40);
            EXPECT_EQ(data->height, 24);
            EXPECT_EQ(MiddlesOf(*data), kUpright);
        }
    }
    EXPECT_TRUE(calls.turned.empty());
}

TEST_F(ResourceQueueTest, FirstFormNeverRotates)
{
    const CacheCalls calls;
    Small(WritePng(L"a.png", 40, 24));
    EXPECT_TRUE(calls.turned.empty());
}

// Memory that must not be written or not even be read.
class Guarded {
public:
    explicit Guarded(int value)
        : m_memory(static_cast<int*>(
              ::VirtualAlloc(nullptr, sizeof(int), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)))
    {
        *m_memory = value;
    }
    ~Guarded() { ::VirtualFree(m_memory, 0, MEM_RELEASE); }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    int& Allow(DWORD protection)
    {
        DWORD before = 0;
        ::VirtualProtect(m_memory, sizeof(int), protection, &before);
        return *m_memory;
    }

private:
    int* m_memory;
};

TEST_F(ResourceQueueTest, SecondFormOnlyReadsItsSizeAndNeverTouchesTheReservedNumbers)
{
    Guarded width(25);
    Guarded height(35);
    Guarded first(-1);
    Guarded second(-2);
    int& readWidth = width.Allow(PAGE_READONLY);
    int& readHeight = height.Allow(PAGE_READONLY);
    int& noFirst = first.Allow(PAGE_NOACCESS);
    int& noSecond = second.Allow(PAGE_NOACCESS);

    const std::wstring picture = WritePng(L"a.png", 40, 24);
    const std::wstring text = folder.Write(L"a.txt", "text");
    const auto ask = [&](const std::wstring& path) {
        return queue.GetResource(path.c_str(), readWidth, readHeight, noFirst, noSecond, 90);
    };
    ASSERT_NE(ask(picture), nullptr);
    EXPECT_EQ(SizeOf(*ask(picture)), (Size{50, 70}));
    EXPECT_EQ(ask(text), nullptr);

    EXPECT_EQ(width.Allow(PAGE_READWRITE), 25);
    EXPECT_EQ(height.Allow(PAGE_READWRITE), 35);
    EXPECT_EQ(first.Allow(PAGE_READWRITE), -1);
    EXPECT_EQ(second.Allow(PAGE_READWRITE), -2);
}

TEST_F(ResourceQueueTest, SecondFormLeavesOddSizesToGdiPlus)
{
    CacheCalls calls;
    ThumbnailData* const nothing = Sized(WritePng(L"a.png", 40, 24), 0, 0);
    ASSERT_NE(nothing, nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{0, 0}));
    EXPECT_EQ(SizeOf(*nothing), (Size{120, 120}));

    ThumbnailData* const negative = Sized(WritePng(L"b.png", 40, 24), -3, 5);
    ASSERT_NE(negative, nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{-6, 10}));
    EXPECT_TRUE(negative->loaded);
    EXPECT_EQ(negative->width, 40);
    ASSERT_NE(negative->thumbnail, nullptr);
    EXPECT_EQ(SizeOf(*negative), (Size{0, 0}));

    calls.thumbnailStatus = Gdiplus::OutOfMemory;
    ASSERT_NE(Sized(WritePng(L"c.png", 40, 24), INT_MAX, INT_MIN), nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{-2, 0})) << "wraps";
}

TEST_F(ResourceQueueTest, ThirdFormIgnoresItsSizes)
{
    int number = 0;
    for (const int size : {0, -1, 1, 10000, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(size);
        const std::wstring path = WritePng(std::to_wstring(number++), 40, 24);
        const ThumbnailData* data = queue.GetResource(path.c_str(), size, size, 0, false, false);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(SizeOf(*data), (Size{40, 24}));
        data = queue.GetResource(path.c_str(), size, -size / 2, 0, true, true);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(SizeOf(*data), (Size{384, 448}));
    }
}

TEST_F(ResourceQueueTest, FailedThumbnailIsAnImageThatHoldsNothing)
{
    CacheCalls calls;
    calls.thumbnailStatus = Gdiplus::OutOfMemory;
    const std::wstring path = WritePng(L"a.png", 40, 24);
    ThumbnailData* const small = Small(path);
    ASSERT_NE(small, nullptr);
    EXPECT_TRUE(small->loaded);
    EXPECT_EQ(small->icon, nullptr);
    EXPECT_EQ(small->width, 40);
    ASSERT_NE(small->thumbnail, nullptr);
    EXPECT_EQ(SizeOf(*small), (Size{0, 0}));
    EXPECT_TRUE(calls.asked.empty());

    calls.thumbnailStatus.reset();
    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload), small);
    EXPECT_EQ(SizeOf(*small), (Size{40, 24}));
}

TEST_F(ResourceQueueTest, ManagerIsKeptAndNeverRead)
{
    // A manager that cannot be read.
    void* const nowhere = ::VirtualAlloc(nullptr, 1, MEM_RESERVE, PAGE_NOACCESS);
    queue.SetManager(static_cast<DuiLib::CPaintManagerUI*>(nowhere));
    ThumbnailData* const small = Small(WritePng(L"a.png", 40, 24));
    ThumbnailData* const sized = Sized(WritePng(L"b.png", 40, 24), 10, 20, 90);
    ThumbnailData* const shown = Shown(WritePng(L"c.png", 40, 24), Tip::Large);
    ExpectNothingRead(Small(folder.Write(L"d.txt", "text")));
    ASSERT_TRUE(small && sized && shown);
    EXPECT_EQ(SizeOf(*small), (Size{128, 64}));
    EXPECT_EQ(SizeOf(*sized), (Size{20, 40}));
    EXPECT_EQ(SizeOf(*shown), (Size{384, 448}));

    queue.SetManager(nullptr);
    EXPECT_EQ(Small(folder / L"a.png"), small) << "the entries stay";
    ::VirtualFree(nowhere, 0, MEM_RELEASE);
}

TEST_F(ResourceQueueTest, DefaultIconIsWhatTheShellShowsForAnExistingFile)
{
    const CacheCalls calls;
    const std::wstring path = folder.Write(L"a.txt", "text");
    const HICON icon = ResourceQueue::GetDefaultIcon(path.c_str());
    EXPECT_NE(icon, nullptr);
    EXPECT_TRUE(::DestroyIcon(icon));
    EXPECT_EQ(ResourceQueue::GetDefaultIcon((folder / L"missing.txt").c_str()), nullptr);
    const HICON folderIcon = ResourceQueue::GetDefaultIcon(folder.Path().c_str());
    EXPECT_NE(folderIcon, nullptr);
    EXPECT_TRUE(::DestroyIcon(folderIcon));
    EXPECT_EQ(calls.answered, (std::vector<HICON>{icon, nullptr, folderIcon}));
    EXPECT_EQ(ResourceQueue::GetDefaultIcon(nullptr), nullptr);
}

TEST_F(ResourceQueueTest, DefaultIconIsAskedForWithAnAttributeThatHasNoEffect)
{
    const CacheCalls calls;
    const std::wstring missing = folder / L"missing";
    EXPECT_EQ(ResourceQueue::GetDefaultIcon(missing.c_str()), nullptr)
        << "an icon for any folder of that name";
    const CacheCalls::IconQuestion wanted{missing, FILE_ATTRIBUTE_DIRECTORY, sizeof(SHFILEINFOW),
                                          SHGFI_ICON | SHGFI_DISPLAYNAME};
    ASSERT_EQ(calls.asked.size(), 1u);
    EXPECT_EQ(calls.asked[0], wanted);
}

TEST(DefaultIconTest, PreparesOnceAndHoldsNoImageList)
{
    EXPECT_EXIT(RunAndExit([] {
                    CacheCalls calls;
                    calls.countedIcons = true;
                    EXPECT_NE(ResourceQueue::GetDefaultIcon(L"a"), nullptr);
                    EXPECT_NE(ResourceQueue::GetDefaultIcon(L"b"), nullptr);
                    EXPECT_EQ(ResourceQueue::GetDefaultIcon(L"missing"), nullptr);
                    EXPECT_EQ(calls.parsed,
                              std::vector<std::wstring>{L"{46EB5926-582E-4017-9FDF-E8998DAA0950}"});
                    EXPECT_EQ(calls.imageLists, 1);
                    EXPECT_FALSE(calls.imageListsWanted);
                    // Nothing was put in place of the icons.
                    EXPECT_TRUE(calls.destroyed.empty());
                }),
                testing::ExitedWithCode(0), "");
}

// What happens while the process ends, written by the system alone.
void Say(char letter)
{
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), &letter, 1, &written, nullptr);
}

const ImportHook* closeHandle = nullptr;
const ImportHook* destroyIcon = nullptr;
const ImportHook* disposeImage = nullptr;

BOOL WINAPI SayClose(HANDLE handle)
{
    if (!handle)
        Say('C');
    return closeHandle->Original<decltype(::CloseHandle)>()(handle);
}

BOOL WINAPI SayIcon(HICON icon)
{
    Say(icon ? 'I' : 'i');
    return destroyIcon->Original<decltype(::DestroyIcon)>()(icon);
}

Gdiplus::Status WINAPI SayImage(Gdiplus::GpImage* image)
{
    Say(image ? 'P' : 'p');
    return disposeImage->Original<decltype(Gdiplus::DllExports::GdipDisposeImage)>()(image);
}

// Never undone, as the process ends with them.
void SayWhatEnds()
{
    static constexpr const wchar_t* kModule = L"Quillet.dll";
    closeHandle = new ImportHook(kModule, "KERNEL32.dll", "CloseHandle", &SayClose);
    destroyIcon = new ImportHook(kModule, "USER32.dll", "DestroyIcon", &SayIcon);
    disposeImage = new ImportHook(kModule, "gdiplus.dll", "GdipDisposeImage", &SayImage);
}

// Runs in a process of its own, which ends as every program does once its files are removed.
template <class Body>
[[noreturn]] void FillAndExit(Body fill)
{
    {
        const DuiLib::CPaintManagerUI manager;
        const TempFolder folder;
        fill(*ResourceQueue::GetInstance(), folder);
    }
    std::exit(0);
}

TEST(EndOfTheProcessTest, ClosesAHandleThatNobodySetAndFreesEveryEntry)
{
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    for (const auto* name : {L"a.png", L"b.png"}) {
                        EXPECT_TRUE(Quarters(8, 8).Save(folder / name));
                        queue.GetResource((folder / name).c_str());
                    }
                    Say('[');
                    SayWhatEnds();
                }),
                testing::ExitedWithCode(0), "\\[CiPiP$");
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    queue.GetResource(folder.Write(L"a.txt", "text").c_str());
                    Say('[');
                    SayWhatEnds();
                }),
                testing::ExitedWithCode(0), "\\[CIp$");
}

TEST(EndOfTheProcessTest, IsCleanWithAFullCache)
{
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    for (int index = 0; index < 250; ++index) {
                        const std::wstring path = folder.Write(std::to_wstring(index), "text");
                        if (index % 2) {
                            EXPECT_TRUE(Quarters(2, 2).Save(path));
                        }
                        queue.GetResource(path.c_str());
                    }
                }),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace test
