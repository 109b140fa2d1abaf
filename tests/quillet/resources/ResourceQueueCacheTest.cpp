#include "quillet/resources/ThumbnailKit.h"

#include "support/ObjectCounters.h"

#include <cwctype>
#include <numeric>
#include <type_traits>

namespace test {
namespace {

using DuiLib::ResourceQueue;
using DuiLib::ThumbnailData;
using Size = CacheCalls::Size;

static_assert(std::is_polymorphic_v<ResourceQueue>);
static_assert(!std::is_default_constructible_v<ResourceQueue>);
static_assert(!std::is_destructible_v<ResourceQueue>);
static_assert(std::is_copy_assignable_v<ResourceQueue>);

std::vector<int> Numbers(int first, int last)
{
    std::vector<int> numbers(static_cast<std::size_t>(last - first + 1));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

class ResourceQueueCacheTest : public ThumbnailTest {
protected:
    // Asks for new pictures until there are so many: the thumbnail of paths[n] has the number n.
    void FillTo(std::size_t count)
    {
        while (paths.size() < count) {
            paths.push_back(WritePicture(std::to_wstring(paths.size()), 2, 2));
            ASSERT_NE(Small(paths.back()), nullptr);
        }
    }

    std::vector<std::wstring> paths;
};

TEST_F(ResourceQueueCacheTest, ThereIsOne)
{
    EXPECT_EQ(ResourceQueue::GetInstance(), &queue);
}

TEST_F(ResourceQueueCacheTest, KeysAreThePathsAsTheyAreWritten)
{
    CacheCalls calls;
    const std::wstring path = WritePicture(L"a.png", 8, 6);
    std::wstring lowerDrive = path;
    lowerDrive[0] = static_cast<wchar_t>(std::towlower(lowerDrive[0]));
    std::wstring upperDrive = path;
    upperDrive[0] = static_cast<wchar_t>(std::towupper(upperDrive[0]));
    const std::vector<std::wstring> spellings{lowerDrive, upperDrive, folder / L"A.PNG",
                                              folder / L".\\a.png", folder.Path() + L"/a.png"};
    std::set<ThumbnailData*> entries;
    for (const auto& spelling : spellings) {
        SCOPED_TRACE(testing::PrintToString(spelling));
        ThumbnailData* const data = Small(spelling);
        ASSERT_NE(data, nullptr);
        EXPECT_TRUE(data->loaded);
        EXPECT_EQ(*data->position, spelling);
        entries.insert(data);
    }
    EXPECT_EQ(entries.size(), spellings.size());
    EXPECT_EQ(calls.opened.size(), spellings.size());
}

TEST_F(ResourceQueueCacheTest, EntryOfOneFormAnswersTheOthers)
{
    CacheCalls calls;
    const std::wstring first = WritePicture(L"a.png", 8, 6);
    ThumbnailData* const small = Small(first);
    EXPECT_EQ(Sized(first, 50, 50, 90), small);
    EXPECT_EQ(Shown(first, Tip::Large, Cached::Use, 90), small);
    EXPECT_EQ(SizeOf(*small), (Size{128, 64}));

    const std::wstring second = WritePicture(L"b.png", 8, 6);
    ThumbnailData* const shown = Shown(second, Tip::Large, Cached::Use, 90);
    EXPECT_EQ(Small(second), shown);
    EXPECT_EQ(Shown(second), shown);
    EXPECT_EQ(Sized(second, 1, 1), shown);
    EXPECT_EQ(SizeOf(*shown), (Size{384, 448}));
    EXPECT_EQ(shown->width, 6);
    EXPECT_EQ(calls.opened.size(), 2u);
}

TEST_F(ResourceQueueCacheTest, SecondFormIgnoresSizeAndRotationOfWhatIsCached)
{
    CacheCalls calls;
    const std::wstring path = WritePicture(L"a.png", 8, 6);
    ThumbnailData* const data = Sized(path, 10, 20, 0);
    Gdiplus::Image* const thumbnail = data->thumbnail;
    EXPECT_EQ(Sized(path, 30, 40, 90), data);
    EXPECT_EQ(data->thumbnail, thumbnail);
    EXPECT_EQ(SizeOf(*data), (Size{20, 40}));
    EXPECT_EQ(data->width, 8);
    EXPECT_EQ(data->height, 6);
    EXPECT_EQ(calls.opened.size(), 1u);
    EXPECT_EQ(calls.sizes.size(), 1u);
}

TEST_F(ResourceQueueCacheTest, PositionIsThePathInTheOrderOfUse)
{
    const std::wstring first = WritePicture(L"a.png", 8, 6);
    const std::wstring second = WritePicture(L"b.png", 8, 6);
    ThumbnailData* const a = Small(first);
    ThumbnailData* const b = Sized(second, 8, 8);
    EXPECT_EQ(*a->position, first);
    EXPECT_EQ(*std::next(a->position), second);
    Small(first);
    EXPECT_EQ(*std::next(b->position), first);
    Shown(second, Tip::Whole, Cached::Reload);
    EXPECT_EQ(*b->position, second);
    EXPECT_EQ(std::next(a->position), b->position);
}

TEST_F(ResourceQueueCacheTest, EvictsTheLeastRecentlyUsedOf202)
{
    CacheCalls calls;
    FillTo(201);
    EXPECT_TRUE(calls.disposed.empty());
    EXPECT_EQ(calls.Alive(), 201u);
    FillTo(202);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));
    FillTo(203);
    EXPECT_EQ(calls.disposed, Numbers(0, 1));
    FillTo(403);
    EXPECT_EQ(calls.disposed, Numbers(0, 201));
    EXPECT_EQ(calls.Alive(), 201u);
    EXPECT_EQ(calls.mostAlive, 201u);
    EXPECT_EQ(calls.opened.size(), 403u);
}

TEST_F(ResourceQueueCacheTest, RequestOfEachFormMovesToTheBack)
{
    CacheCalls calls;
    FillTo(200);
    Small(paths[5]);
    Sized(paths[3], 8, 8);
    Shown(paths[4]);
    folder.Write(L"7", "no picture any more");
    EXPECT_EQ(Shown(paths[7], Tip::Whole, Cached::Reload), nullptr);
    EXPECT_TRUE(calls.disposed.empty()) << "200 are not too many";
    FillTo(402);

    std::vector<int> wanted{0, 1, 2, 6};
    for (const int number : Numbers(8, 199))
        wanted.push_back(number);
    for (const int number : {5, 3, 4, 7, 200})
        wanted.push_back(number);
    EXPECT_EQ(calls.disposed, wanted);
}

TEST_F(ResourceQueueCacheTest, LeastRecentlyUsedIsLostAndMadeAgainWhenAskedForAt201)
{
    CacheCalls calls;
    FillTo(201);
    calls.opened.clear();
    ThumbnailData* const data = Small(paths[0]);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));
    ASSERT_EQ(calls.opened.size(), 1u);
    EXPECT_EQ(calls.opened[0].path, paths[0]);
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(*data->position, paths[0]);
    EXPECT_EQ(calls.Alive(), 201u);
}

TEST_F(ResourceQueueCacheTest, EvictsOncePerRequestAlsoForAHit)
{
    CacheCalls calls;
    FillTo(201);
    calls.opened.clear();
    Small(paths[200]);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));
    EXPECT_TRUE(calls.opened.empty());
    EXPECT_EQ(calls.Alive(), 200u);
    Small(paths[200]);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));

    FillTo(202);
    Sized(paths[201], 8, 8);
    EXPECT_EQ(calls.disposed, Numbers(0, 1));
    FillTo(203);
    Shown(paths[202]);
    EXPECT_EQ(calls.disposed, Numbers(0, 2));
}

TEST_F(ResourceQueueCacheTest, EvictsAlsoForAFileThatCannotBeRead)
{
    CacheCalls calls;
    const std::wstring text = folder.Write(L"text", "text");
    FillTo(201);
    EXPECT_EQ(Sized(text, 8, 8), nullptr);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));
    EXPECT_EQ(Shown(text), nullptr);
    EXPECT_EQ(calls.disposed, Numbers(0, 0)) << "200 are not too many";
    FillTo(202);
    EXPECT_EQ(Shown(text), nullptr);
    EXPECT_EQ(calls.disposed, Numbers(0, 1));
}

TEST_F(ResourceQueueCacheTest, DestroysAlsoTheIconThatAnEvictedEntryDoesNotHave)
{
    CacheCalls calls;
    FillTo(201);
    EXPECT_TRUE(calls.destroyed.empty());
    FillTo(204);
    EXPECT_EQ(calls.destroyed, (std::vector<HICON>{nullptr, nullptr, nullptr}));
}

TEST_F(ResourceQueueCacheTest, DestroysTheIconsOfEvictedEntries)
{
    CacheCalls calls;
    calls.countedIcons = true;
    for (int index = 0; index < 230; ++index)
        Small(folder.Write(std::to_wstring(index), "text"));
    EXPECT_EQ(calls.asked.size(), 230u);
    EXPECT_EQ(calls.destroyed,
              std::vector<HICON>(calls.answered.begin(), calls.answered.begin() + 29));
    EXPECT_EQ(calls.icons.size(), 201u);
}

TEST_F(ResourceQueueCacheTest, EvictedIconsLeaveNoObjects)
{
    constexpr int kEntries = 201;
    std::vector<std::wstring> texts;
    for (int index = 0; index < 2 * kEntries; ++index)
        texts.push_back(folder.Write(std::to_wstring(index), "text"));
    const auto ask = [&](int first) {
        for (int index = first; index < first + kEntries; ++index)
            Small(texts[static_cast<std::size_t>(index)]);
    };
    ask(0);
    const int before = GdiObjects();
    ask(kEntries);
    ask(0);
    EXPECT_EQ(GdiObjects(), before);
}

TEST_F(ResourceQueueCacheTest, ReloadKeepsTheEntryAndReplacesTheThumbnail)
{
    CacheCalls calls;
    const std::wstring path = WritePicture(L"a.png", 8, 6);
    ThumbnailData* const data = Small(path);
    WritePicture(L"a.png", 20, 10);
    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Use), data);
    EXPECT_EQ(data->width, 8);
    EXPECT_EQ(SizeOf(*data), (Size{128, 64}));

    EXPECT_EQ(Shown(path, Tip::Large, Cached::Reload), data);
    EXPECT_EQ(calls.disposed, Numbers(0, 0));
    EXPECT_EQ(calls.destroyed, std::vector<HICON>{nullptr});
    EXPECT_EQ(data->width, 20);
    EXPECT_EQ(data->height, 10);
    EXPECT_EQ(SizeOf(*data), (Size{384, 448}));
    EXPECT_EQ(MiddlesOf(*data), kUpright);

    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload, 90), data);
    EXPECT_EQ(calls.disposed, Numbers(0, 1));
    EXPECT_EQ(data->width, 10);
    EXPECT_EQ(data->height, 20);
    EXPECT_EQ(SizeOf(*data), (Size{10, 20}));
    EXPECT_EQ(calls.Alive(), 1u);
    EXPECT_EQ(Small(path), data);
}

TEST_F(ResourceQueueCacheTest, ReloadOfWhatIsNotCachedMakesIt)
{
    CacheCalls calls;
    const std::wstring path = WritePicture(L"a.png", 8, 6);
    ThumbnailData* const data = Shown(path, Tip::Whole, Cached::Reload);
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(calls.destroyed.empty());
    EXPECT_EQ(Small(path), data);
    EXPECT_EQ(calls.opened.size(), 1u);
}

TEST_F(ResourceQueueCacheTest, ReloadTurnsAFallbackIntoAThumbnail)
{
    CacheCalls calls;
    const std::wstring path = folder.Write(L"a.png", "text");
    ThumbnailData* const data = Small(path);
    const HICON icon = data->icon;
    ASSERT_NE(icon, nullptr);
    WritePicture(L"a.png", 8, 6);
    EXPECT_EQ(Shown(path, Tip::Whole, Cached::Reload), data);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(data->icon, nullptr);
    EXPECT_EQ(calls.destroyed, std::vector<HICON>{icon});
    EXPECT_EQ(SizeOf(*data), (Size{8, 6}));
}

TEST_F(ResourceQueueCacheTest, FailedReloadReturnsNullAndLeavesTheEntry)
{
    CacheCalls calls;
    const std::wstring path = WritePicture(L"a.png", 8, 6);
    ThumbnailData* const data = Small(path);
    Gdiplus::Image* const thumbnail = data->thumbnail;
    folder.Write(L"a.png", "text");
    EXPECT_EQ(Shown(path, Tip::Large, Cached::Reload, 90), nullptr);
    EXPECT_TRUE(calls.disposed.empty());
    EXPECT_TRUE(calls.destroyed.empty());
    EXPECT_TRUE(calls.asked.empty());
    EXPECT_EQ(Small(path), data);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(data->thumbnail, thumbnail);
    EXPECT_EQ(data->width, 8);
    EXPECT_EQ(SizeOf(*data), (Size{128, 64}));

    const std::wstring text = folder.Write(L"text", "text");
    ThumbnailData* const fallback = Small(text);
    const HICON icon = fallback->icon;
    EXPECT_EQ(Shown(text, Tip::Large, Cached::Reload), nullptr);
    EXPECT_EQ(Small(text), fallback);
    EXPECT_EQ(fallback->icon, icon);
    EXPECT_EQ(calls.asked.size(), 1u);
}

TEST_F(ResourceQueueCacheTest, PathMayBeThatOfTheEntryWhichGoes)
{
    CacheCalls calls;
    const std::wstring first = WritePicture(L"a picture with a long name", 8, 6);
    ThumbnailData* data = Shown(first);
    FillTo(200);
    data = queue.GetResource(data->position->c_str());
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->loaded);
    EXPECT_EQ(*data->position, first);
    EXPECT_EQ(SizeOf(*data), (Size{128, 64}));
    EXPECT_EQ(calls.opened.back().path, first);
}

TEST_F(ResourceQueueCacheTest, CopyAnswersWithTheSameEntries)
{
    CacheCalls calls;
    FillTo(3);
    ThumbnailData* const data = Small(paths[1]);
    ResourceQueue& copy = CopyOf(queue);
    EXPECT_EQ(copy.GetResource(paths[1].c_str()), data);
    EXPECT_EQ(copy.GetResource(paths[1].c_str(), 0, 0, 0, true, true), data);
    EXPECT_EQ(Small(paths[1]), data);
    EXPECT_EQ(SizeOf(*data), (Size{384, 448}));

    ResourceQueue& assigned = CopyOf(emptyQueue);
    assigned = queue;
    EXPECT_EQ(assigned.GetResource(paths[1].c_str()), data);
    const ResourceQueue& same = queue;
    queue = same;
    EXPECT_EQ(Small(paths[1]), data);
    EXPECT_EQ(*data->position, paths[1]);
    EXPECT_EQ(calls.Alive(), 3u);
}

TEST_F(ResourceQueueCacheTest, CopyDoesNotSeeWhatIsAskedOfTheOtherLater)
{
    CacheCalls calls;
    ResourceQueue& copy = CopyOf(queue);
    FillTo(1);
    EXPECT_EQ(calls.opened.size(), 1u);
    EXPECT_NE(copy.GetResource(paths[0].c_str()), Small(paths[0]));
    EXPECT_EQ(calls.opened.size(), 2u);
}

TEST_F(ResourceQueueCacheTest, CopyHasAnOrderOfItsOwn)
{
    CacheCalls calls;
    FillTo(200);
    ResourceQueue& copy = CopyOf(queue);
    // All that the original would drop is used through the copy.
    for (const auto& path : paths)
        copy.GetResource(path.c_str());
    Small(paths[0]);
    for (const auto& path : paths)
        copy.GetResource(path.c_str());
    EXPECT_TRUE(calls.disposed.empty());
    FillTo(401);

    std::vector<int> wanted = Numbers(1, 199);
    wanted.push_back(0);
    EXPECT_EQ(calls.disposed, wanted);
}

TEST_F(ResourceQueueCacheTest, FullCopyDropsItsOwnLeastRecentlyUsed)
{
    CacheCalls calls;
    FillTo(200);
    ResourceQueue& copy = CopyOf(queue);
    for (std::size_t index = paths.size(); index > 0; --index)
        copy.GetResource(paths[index - 1].c_str());
    for (int index = 0; index < 11; ++index) {
        const std::wstring path = WritePicture(L"new" + std::to_wstring(index), 2, 2);
        EXPECT_NE(copy.GetResource(path.c_str()), nullptr);
    }
    std::vector<int> wanted = Numbers(190, 199);
    std::reverse(wanted.begin(), wanted.end());
    EXPECT_EQ(calls.disposed, wanted);
    queue = emptyQueue; // which still knew them
}

} // namespace
} // namespace test
