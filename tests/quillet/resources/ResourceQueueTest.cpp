#include "quillet/resources/ThumbnailKit.h"

#include <climits>

namespace test {
namespace {

using DuiLib::ThumbnailData;
using Size = CacheCalls::Size;

using ResourceQueueTest = ThumbnailTest;

TEST_F(ResourceQueueTest, FirstFormMakesThumbnailsOf128x64)
{
    const ThumbnailData* const data = Small(WritePicture(L"a.png", 40, 30));
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
    const ThumbnailData* const data = Sized(WritePicture(L"a.png", 40, 30), 25, 35);
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
    const ThumbnailData* const data = Shown(WritePicture(L"a.png", 40, 30), Tip::Large);
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
    const ThumbnailData* const data = Shown(WritePicture(L"a.png", 40, 30));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(SizeOf(*data), (Size{40, 30}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);

    const ThumbnailData* const turned =
        Shown(WritePicture(L"b.png", 40, 30), Tip::Whole, Cached::Use, 90);
    ASSERT_NE(turned, nullptr);
    EXPECT_EQ(SizeOf(*turned), (Size{30, 40}));
}

TEST_F(ResourceQueueTest, ThumbnailsAreDistortedToExactlyTheirSize)
{
    const std::wstring wide = WritePicture(L"wide.png", 200, 10);
    const std::wstring high = WritePicture(L"high.png", 10, 200);
    for (const auto& path : {wide, high}) {
        const ThumbnailData* const data = Small(path);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(SizeOf(*data), (Size{128, 64}));
        EXPECT_EQ(MiddlesOf(*data), kUpright);
    }
    const ThumbnailData* const tip = Shown(WritePicture(L"tip.png", 200, 10), Tip::Large);
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(SizeOf(*tip), (Size{384, 448}));
    EXPECT_EQ(MiddlesOf(*tip), kUpright);
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
        CacheCalls calls;
        const std::wstring name = std::to_wstring(rotation);
        const ThumbnailData* const sized =
            Sized(WritePicture(name + L".png", 40, 24), 32, 32, rotation);
        const ThumbnailData* const shown =
            Shown(WritePicture(name + L"+.png", 40, 24), Tip::Whole, Cached::Use, rotation);
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
    CacheCalls calls;
    int number = 0;
    for (const int rotation : {45, -90, 1, 89, 91, 360, 450, -180}) {
        SCOPED_TRACE(rotation);
        const std::wstring name = std::to_wstring(number++);
        const ThumbnailData* const sized =
            Sized(WritePicture(name + L".png", 40, 24), 32, 32, rotation);
        const ThumbnailData* const shown =
            Shown(WritePicture(name + L"+.png", 40, 24), Tip::Whole, Cached::Use, rotation);
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
    CacheCalls calls;
    Small(WritePicture(L"a.png", 40, 24));
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

    const std::wstring picture = WritePicture(L"a.png", 40, 24);
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
    ThumbnailData* const nothing = Sized(WritePicture(L"a.png", 40, 24), 0, 0);
    ASSERT_NE(nothing, nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{0, 0}));
    EXPECT_EQ(SizeOf(*nothing), (Size{120, 120}));

    ThumbnailData* const negative = Sized(WritePicture(L"b.png", 40, 24), -3, 5);
    ASSERT_NE(negative, nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{-6, 10}));
    EXPECT_TRUE(negative->loaded);
    EXPECT_EQ(negative->width, 40);
    ASSERT_NE(negative->thumbnail, nullptr);
    EXPECT_EQ(SizeOf(*negative), (Size{0, 0}));

    calls.thumbnailStatus = Gdiplus::OutOfMemory;
    ASSERT_NE(Sized(WritePicture(L"c.png", 40, 24), INT_MAX, INT_MIN), nullptr);
    EXPECT_EQ(calls.sizes.back(), (Size{-2, 0})) << "wraps";
}

TEST_F(ResourceQueueTest, ThirdFormIgnoresItsSizes)
{
    int number = 0;
    for (const int size : {0, -1, 1, 10000, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(size);
        const std::wstring path = WritePicture(std::to_wstring(number++), 40, 24);
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
    const std::wstring path = WritePicture(L"a.png", 40, 24);
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
    ThumbnailData* const small = Small(WritePicture(L"a.png", 40, 24));
    ThumbnailData* const sized = Sized(WritePicture(L"b.png", 40, 24), 10, 20, 90);
    ThumbnailData* const shown = Shown(WritePicture(L"c.png", 40, 24), Tip::Large);
    ExpectNothingRead(Small(folder.Write(L"d.txt", "text")));
    ASSERT_TRUE(small && sized && shown);
    EXPECT_EQ(SizeOf(*small), (Size{128, 64}));
    EXPECT_EQ(SizeOf(*sized), (Size{20, 40}));
    EXPECT_EQ(SizeOf(*shown), (Size{384, 448}));

    queue.SetManager(nullptr);
    EXPECT_EQ(Small(folder / L"a.png"), small) << "the entries stay";
    ::VirtualFree(nowhere, 0, MEM_RELEASE);
}

} // namespace
} // namespace test
