#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "support/Picture.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <thread>

using namespace DuiLib;
using namespace test;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr DWORD kRedFill = 0xFFFF0000;

class RenderClipTest : public testing::Test {
protected:
    void FillAll() { CRenderEngine::DrawColor(canvas.Dc(), {0, 0, 40, 30}, kRedFill); }

    // The rectangle is red and everything else white.
    void ExpectRedOnlyIn(const RECT& part)
    {
        const Picture picture = canvas.Take();
        const int area = (part.right - part.left) * (part.bottom - part.top);
        EXPECT_EQ(picture.Count(kRed, part), area);
        EXPECT_EQ(picture.Count(kRed), area);
    }

    bool HasClip()
    {
        const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
        const int answer = ::GetClipRgn(canvas.Dc(), region);
        ::DeleteObject(region);
        return answer == 1;
    }

    RECT ClipBox()
    {
        RECT box{};
        ::GetClipBox(canvas.Dc(), &box);
        return box;
    }

    Canvas canvas{40, 30};
};

TEST_F(RenderClipTest, NarrowsDrawingToItsRectangle)
{
    CRenderClip clip;
    CRenderClip::GenerateClip(canvas.Dc(), {5, 6, 20, 16}, clip);
    FillAll();
    ExpectRedOnlyIn({5, 6, 20, 16});
}

TEST_F(RenderClipTest, RemembersWhatItWasGeneratedFor)
{
    CRenderClip clip;
    CRenderClip::GenerateClip(canvas.Dc(), {5, 6, 20, 16}, clip);
    EXPECT_EQ(clip.hDC, canvas.Dc());
    EXPECT_EQ(clip.rcItem.left, 5);
    EXPECT_EQ(clip.rcItem.bottom, 16);
}

TEST_F(RenderClipTest, DrawingIsFreeAgainWhenTheObjectDies)
{
    {
        CRenderClip clip;
        CRenderClip::GenerateClip(canvas.Dc(), {5, 6, 20, 16}, clip);
    }
    FillAll();
    ExpectRedOnlyIn({0, 0, 40, 30});
    EXPECT_FALSE(HasClip());
}

TEST_F(RenderClipTest, RestoresTheClipThatWasThereBefore)
{
    ::IntersectClipRect(canvas.Dc(), 2, 2, 30, 20);
    {
        CRenderClip clip;
        CRenderClip::GenerateClip(canvas.Dc(), {10, 10, 40, 30}, clip);
    }
    FillAll();
    ExpectRedOnlyIn({2, 2, 30, 20});
}

TEST_F(RenderClipTest, RestoresAClipThatIsNoRectangle)
{
    const HRGN shape = ::CreateRectRgn(0, 0, 10, 10);
    const HRGN second = ::CreateRectRgn(20, 20, 30, 30);
    ::CombineRgn(shape, shape, second, RGN_OR);
    ::SelectClipRgn(canvas.Dc(), shape);
    {
        CRenderClip clip;
        CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 5, 5}, clip);
    }
    FillAll();
    EXPECT_EQ(canvas.Take().Count(kRed), 200);
    ::DeleteObject(shape);
    ::DeleteObject(second);
}

TEST_F(RenderClipTest, AnObjectThatWasNeverGeneratedIsHarmless)
{
    ::IntersectClipRect(canvas.Dc(), 1, 1, 9, 9);
    {
        alignas(CRenderClip) unsigned char memory[sizeof(CRenderClip)];
        std::memset(memory, 0xCC, sizeof(memory));
        CRenderClip& unused = *new (memory) CRenderClip;
        EXPECT_EQ(unused.hDC, nullptr);
        EXPECT_EQ(unused.hRgn, nullptr);
        EXPECT_EQ(unused.hOldRgn, nullptr);
        CRenderClip::UseOldClipBegin(canvas.Dc(), unused);
        CRenderClip::UseOldClipEnd(canvas.Dc(), unused);
        unused.~CRenderClip();
    }
    FillAll();
    ExpectRedOnlyIn({1, 1, 9, 9});
}

TEST_F(RenderClipTest, NestedClipsIntersect)
{
    CRenderClip outer;
    CRenderClip inner;
    CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 20, 20}, outer);
    CRenderClip::GenerateClip(canvas.Dc(), {10, 10, 40, 30}, inner);
    FillAll();
    ExpectRedOnlyIn({10, 10, 20, 20});
}

TEST_F(RenderClipTest, TheOuterClipIsBackWhenTheInnerOneDies)
{
    CRenderClip outer;
    CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 20, 20}, outer);
    {
        CRenderClip inner;
        CRenderClip::GenerateClip(canvas.Dc(), {10, 10, 40, 30}, inner);
    }
    FillAll();
    ExpectRedOnlyIn({0, 0, 20, 20});
}

TEST_F(RenderClipTest, UseOldClipBeginDrawsUnderTheClipBeforeTheObject)
{
    CRenderClip outer;
    CRenderClip inner;
    CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 20, 20}, outer);
    CRenderClip::GenerateClip(canvas.Dc(), {5, 5, 10, 10}, inner);
    CRenderClip::UseOldClipBegin(canvas.Dc(), inner);
    FillAll();
    CRenderClip::UseOldClipEnd(canvas.Dc(), inner);
    ExpectRedOnlyIn({0, 0, 20, 20});
}

TEST_F(RenderClipTest, UseOldClipEndNarrowsAgain)
{
    CRenderClip outer;
    CRenderClip inner;
    CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 20, 20}, outer);
    CRenderClip::GenerateClip(canvas.Dc(), {15, 15, 40, 30}, inner);
    CRenderClip::UseOldClipBegin(canvas.Dc(), inner);
    CRenderClip::UseOldClipEnd(canvas.Dc(), inner);
    FillAll();
    ExpectRedOnlyIn({15, 15, 20, 20});
}

TEST_F(RenderClipTest, UseOldClipWorksWithoutAnyClipBefore)
{
    CRenderClip clip;
    CRenderClip::GenerateClip(canvas.Dc(), {5, 5, 10, 10}, clip);
    CRenderClip::UseOldClipBegin(canvas.Dc(), clip);
    EXPECT_FALSE(HasClip());
    CRenderClip::UseOldClipEnd(canvas.Dc(), clip);
    FillAll();
    ExpectRedOnlyIn({5, 5, 10, 10});
}

TEST_F(RenderClipTest, GeneratingAgainReplacesTheFirstClip)
{
    {
        CRenderClip clip;
        CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 5, 5}, clip);
        CRenderClip::GenerateClip(canvas.Dc(), {20, 20, 30, 30}, clip);
        FillAll();
        ExpectRedOnlyIn({20, 20, 30, 30});
    }
    EXPECT_FALSE(HasClip());
}

TEST_F(RenderClipTest, AnEmptyRectangleLetsNothingThrough)
{
    CRenderClip clip;
    CRenderClip::GenerateClip(canvas.Dc(), {5, 5, 5, 5}, clip);
    FillAll();
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(RenderClipTest, LeavesTheDcAloneWhenAllOfItIsInside)
{
    CRenderClip clip;
    CRenderClip::GenerateClip(canvas.Dc(), {-5, 0, 40, 30}, clip);
    EXPECT_FALSE(HasClip());
    FillAll();
    ExpectRedOnlyIn({0, 0, 40, 30});
}

TEST_F(RenderClipTest, FollowsAMovedOrigin)
{
    ::SetViewportOrgEx(canvas.Dc(), 10, 4, nullptr);
    {
        CRenderClip clip;
        CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 5, 5}, clip);
        CRenderEngine::DrawColor(canvas.Dc(), {-10, -4, 30, 26}, kRedFill);
    }
    ExpectRedOnlyIn({10, 4, 15, 9});
}

TEST_F(RenderClipTest, RoundClipLeavesTheCornersOut)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, 35, 25}, 12, 12, clip);
    FillAll();
    const Picture picture = canvas.Take();
    for (const POINT corner : {POINT{5, 5}, POINT{34, 5}, POINT{5, 24}, POINT{34, 24}})
        EXPECT_EQ(picture.At(corner.x, corner.y), kWhite);
    EXPECT_EQ(picture.At(20, 15), kRed);
    EXPECT_EQ(picture.At(4, 15), kWhite);
}

TEST_F(RenderClipTest, RoundClipReachesAllFourEdges)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, 35, 25}, 8, 8, clip);
    const RECT box = ClipBox();
    EXPECT_EQ(box.left, 5);
    EXPECT_EQ(box.top, 5);
    EXPECT_EQ(box.right, 35);
    EXPECT_EQ(box.bottom, 25);
}

TEST_F(RenderClipTest, RoundClipIsCutByThePaintRectangle)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {10, 0, 20, 30}, {5, 5, 35, 25}, 8, 8, clip);
    FillAll();
    ExpectRedOnlyIn({10, 5, 20, 25});
}

TEST_F(RenderClipTest, RoundClipOfDifferentCornersIsRoundedAsWideAndHighAsAsked)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {0, 0, 40, 30}, 30, 4, clip);
    FillAll();
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(3, 0), kWhite);
    EXPECT_EQ(picture.At(0, 3), kRed);
    EXPECT_EQ(picture.At(20, 0), kRed);
}

TEST_F(RenderClipTest, RoundClipOfAHugeItemIsCutWhereItIsNear)
{
    constexpr int kHuge = 80'000'000;
    {
        CRenderClip clip;
        CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, kHuge, kHuge}, 8, 8,
                                       clip);
        EXPECT_EQ(clip.rcItem.right, kHuge);
        FillAll();
    }
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(5, 5), kWhite); // the corner
    EXPECT_EQ(picture.At(4, 20), kWhite);
    EXPECT_EQ(picture.At(5, 20), kRed);
    EXPECT_EQ(picture.At(39, 29), kRed);
}

TEST_F(RenderClipTest, RoundClipWithHugeCornersEndsInTime)
{
    constexpr int kHuge = 80'000'000;
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {-kHuge, -kHuge, 20, kHuge}, kHuge,
                                   kHuge, clip);
    EXPECT_EQ(ClipBox().right, 20);
}

TEST_F(RenderClipTest, RoundClipOfAFarItemIsEmpty)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {80'000'000, 0, 90'000'000, 30}, 8,
                                   8, clip);
    FillAll();
    EXPECT_EQ(canvas.Take().Count(kWhite), 40 * 30);
}

TEST_F(RenderClipTest, RoundClipWithoutCornersIsTheRectangle)
{
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, 35, 25}, 0, 0, clip);
    FillAll();
    ExpectRedOnlyIn({5, 5, 35, 25});
}

TEST_F(RenderClipTest, RoundClipLeavesTheDcAloneAwayFromTheCorners)
{
    ::IntersectClipRect(canvas.Dc(), 12, 5, 28, 25);
    const RECT before = ClipBox();
    CRenderClip clip;
    CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, 35, 25}, 8, 8, clip);
    EXPECT_EQ(clip.hRgn, nullptr);
    const RECT after = ClipBox();
    EXPECT_TRUE(::EqualRect(&before, &after));
}

TEST_F(RenderClipTest, EachSizeOfRoundClipHasItsOwnShape)
{
    for (int size = 10; size < 30; ++size) {
        SCOPED_TRACE(size);
        CRenderClip clip;
        CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {0, 0, size, size}, 6, 6, clip);
        EXPECT_EQ(ClipBox().right, size);
    }
}

class ClipCost : public RenderClipTest {
protected:
    void UseClips()
    {
        CRenderClip outer;
        CRenderClip round;
        CRenderClip inner;
        CRenderClip::GenerateClip(canvas.Dc(), {2, 2, 38, 28}, outer);
        CRenderClip::GenerateRoundClip(canvas.Dc(), {0, 0, 40, 30}, {5, 5, 35, 25}, 8, 8, round);
        CRenderClip::GenerateClip(canvas.Dc(), {10, 10, 12, 12}, inner);
        CRenderClip::UseOldClipBegin(canvas.Dc(), inner);
        CRenderClip::UseOldClipEnd(canvas.Dc(), inner);
    }
};

TEST_F(ClipCost, KeepsTheNumberOfGdiObjects)
{
    UseClips();
    const int before = GdiObjects();
    for (int i = 0; i < 100; ++i)
        UseClips();
    EXPECT_EQ(GdiObjects(), before);
}

int createdRegions = 0;
decltype(&::CreateRectRgn) realCreateRectRgn = nullptr;
decltype(&::CreateRoundRectRgn) realCreateRoundRectRgn = nullptr;

HRGN WINAPI CountCreateRectRgn(int left, int top, int right, int bottom)
{
    ++createdRegions;
    return realCreateRectRgn(left, top, right, bottom);
}

HRGN WINAPI CountCreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height)
{
    ++createdRegions;
    return realCreateRoundRectRgn(left, top, right, bottom, width, height);
}

TEST_F(ClipCost, MakesNoRegionOnceItHasSome)
{
    const ImportHook rect(L"DuiLib.dll", "gdi32.dll", "CreateRectRgn", &CountCreateRectRgn);
    const ImportHook round(L"DuiLib.dll", "gdi32.dll", "CreateRoundRectRgn",
                           &CountCreateRoundRectRgn);
    ASSERT_TRUE(rect);
    ASSERT_TRUE(round);
    realCreateRectRgn = rect.Original<decltype(::CreateRectRgn)>();
    realCreateRoundRectRgn = round.Original<decltype(::CreateRoundRectRgn)>();

    // A thread starts without any.
    int first = 0;
    int later = 0;
    std::thread([&] {
        createdRegions = 0;
        UseClips();
        first = createdRegions;
        for (int i = 0; i < 10; ++i)
            UseClips();
        later = createdRegions - first;
    }).join();
    EXPECT_GT(first, 0);
    EXPECT_EQ(later, 0);
}

TEST_F(ClipCost, ManyLiveClipsWorkToo)
{
    std::vector<std::unique_ptr<CRenderClip>> clips;
    for (int i = 0; i < 100; ++i) {
        clips.push_back(std::make_unique<CRenderClip>());
        CRenderClip::GenerateClip(canvas.Dc(), {0, 0, 39 - i % 20, 29}, *clips.back());
    }
    while (!clips.empty())
        clips.pop_back();
    EXPECT_FALSE(HasClip());
}

// Draws in a thread of its own, of the kind that the system makes.
DWORD WINAPI DrawClipped(void* result)
{
    const Canvas canvas(10, 10);
    {
        CRenderClip clip;
        CRenderClip::GenerateRoundClip(canvas.Dc(), {2, 2, 4, 4}, {0, 0, 10, 10}, 2, 2, clip);
        CRenderEngine::DrawColor(canvas.Dc(), {0, 0, 10, 10}, 0x80FF0000);
    }
    *static_cast<int*>(result) = canvas.Take().Count(kWhite);
    return 0;
}

TEST_F(RenderClipTest, ThreadsDrawWithTheirOwnAndLeaveNothing)
{
    const auto drawInThread = [] {
        int white = 0;
        const HANDLE thread = ::CreateThread(nullptr, 0, &DrawClipped, &white, 0, nullptr);
        ::WaitForSingleObject(thread, INFINITE);
        ::CloseHandle(thread);
        EXPECT_EQ(white, 96);
    };
    drawInThread();
    const int before = GdiObjects();
    for (int i = 0; i < 20; ++i)
        drawInThread();
    EXPECT_EQ(GdiObjects(), before);
}

} // namespace
