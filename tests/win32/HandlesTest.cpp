#include "win32/Handles.h"

#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Quillet;

TEST(HandlesTest, OwnersFreeWhatTheyHold)
{
    const auto work = [] {
        const WindowDc screen(nullptr);
        const UniqueMemoryDc memory(::CreateCompatibleDC(screen.get()));
        const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen.get(), 4, 4));
        const UniqueBrush brush(::CreateSolidBrush(RGB(1, 2, 3)));
        const UniquePen pen(::CreatePen(PS_SOLID, 1, RGB(1, 2, 3)));
        const UniqueRegion region(::CreateRectRgn(0, 0, 1, 1));
        EXPECT_TRUE(screen && memory && bitmap && brush && pen && region);
        const SelectedObject selectedBitmap(memory.get(), bitmap.get());
        const SelectedObject selectedPen(memory.get(), pen.get());
    };
    work();
    const int before = test::GdiObjects();
    for (int i = 0; i < 10; ++i)
        work();
    EXPECT_EQ(test::GdiObjects(), before);
}

TEST(HandlesTest, SelectedObjectSelectsTheEarlierOneAgain)
{
    const UniqueMemoryDc memory(::CreateCompatibleDC(nullptr));
    const UniquePen pen(::CreatePen(PS_SOLID, 3, RGB(1, 2, 3)));
    const HGDIOBJ original = ::GetCurrentObject(memory.get(), OBJ_PEN);
    {
        const SelectedObject selected(memory.get(), pen.get());
        EXPECT_EQ(::GetCurrentObject(memory.get(), OBJ_PEN), pen.get());
        EXPECT_EQ(selected.previous(), original);
    }
    EXPECT_EQ(::GetCurrentObject(memory.get(), OBJ_PEN), original);
}

TEST(HandlesTest, SavedDcRestoresTheWholeState)
{
    const UniqueMemoryDc memory(::CreateCompatibleDC(nullptr));
    ::SetTextColor(memory.get(), RGB(1, 1, 1));
    {
        const SavedDc saved(memory.get());
        ::SetTextColor(memory.get(), RGB(9, 9, 9));
        ::SetBkMode(memory.get(), TRANSPARENT);
    }
    EXPECT_EQ(::GetTextColor(memory.get()), static_cast<COLORREF>(RGB(1, 1, 1)));
    EXPECT_EQ(::GetBkMode(memory.get()), OPAQUE);
}

TEST(HandlesTest, ReleasePassesTheHandleOn)
{
    UniqueRegion region(::CreateRectRgn(0, 0, 5, 5));
    const HRGN raw = region.release();
    EXPECT_FALSE(region);
    RECT box{};
    EXPECT_NE(::GetRgnBox(raw, &box), 0);
    EXPECT_EQ(box.right, 5);
    ::DeleteObject(raw);
}

TEST(HandlesTest, AnInvalidFileHandleCountsAsEmpty)
{
    const UniqueKernelHandle missing(
        ::CreateFileW(L"Z:\\no\\such\\file", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(missing);

    UniqueKernelHandle event(::CreateEventW(nullptr, TRUE, TRUE, nullptr));
    ASSERT_TRUE(event);
    EXPECT_EQ(::WaitForSingleObject(event.get(), 0), WAIT_OBJECT_0);
    event.reset();
    EXPECT_FALSE(event);
}

TEST(HandlesTest, AtScopeEndRunsOnceAtTheEnd)
{
    int runs = 0;
    {
        const AtScopeEnd cleanup([&] { ++runs; });
        EXPECT_EQ(runs, 0);
    }
    EXPECT_EQ(runs, 1);
}
