#include "fuzz/engine/GuardedHeap.h"
#include "fuzz/engine/CrashReport.h"
#include "fuzz/tests/ChildProcess.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace fuzz;
using DuiLib::CDuiString;

GuardedHeap::Block BlockOf(const void* address)
{
    GuardedHeap::Block block{};
    EXPECT_TRUE(GuardedHeap::FindBlock(reinterpret_cast<std::uintptr_t>(address), block));
    return block;
}

// The compiler must not see that a write is wrong.
template <class T>
void WriteAt(T* start, std::size_t index)
{
    volatile T* const place = start;
    place[index] = T{};
}

TEST(GuardedHeapTest, CoversTheProgramTheToolkitAndTheSharedRuntime)
{
    const auto own = std::make_unique<char[]>(40);
    EXPECT_EQ(BlockOf(own.get()).size, 40u);

    const CDuiString text(L"a text of the toolkit");
    EXPECT_FALSE(BlockOf(text.GetData()).freed);

    // Made by code of the runtime.
    const std::string long_(100, 'x');
    EXPECT_GE(BlockOf(long_.data()).size, 101u);

    const std::unique_ptr<DuiLib::CControlUI> control(
        DuiLib::CControlFactory::GetInstance()->CreateControl(L"CButtonUI"));
    EXPECT_EQ(BlockOf(control.get()).size, sizeof(DuiLib::CButtonUI));
}

TEST(GuardedHeapTest, CountsWhatItCannotGuard)
{
    const auto before = GuardedHeap::Count();
    const auto small = std::make_unique<char[]>(1000);
    EXPECT_EQ(GuardedHeap::Count().unguarded, before.unguarded);
    const auto huge = std::make_unique<char[]>(100'000'000);
    EXPECT_EQ(GuardedHeap::Count().unguarded, before.unguarded + 1);
}

TEST(GuardedHeapTest, CountsBlocksAndBytesThatLive)
{
    const auto before = GuardedHeap::Count();
    auto blocks = std::make_unique<std::vector<char>>(1000);
    const auto between = GuardedHeap::Count();
    EXPECT_EQ(between.blocks - before.blocks, 2);
    EXPECT_EQ(between.bytes - before.bytes,
              static_cast<std::int64_t>(1000 + sizeof(std::vector<char>)));
    blocks.reset();
    EXPECT_EQ(GuardedHeap::Count().blocks, before.blocks);
    EXPECT_EQ(GuardedHeap::Count().bytes, before.bytes);
}

TEST(GuardedHeapTest, ReallocationKeepsTheContentAndMoves)
{
    auto* const first = static_cast<char*>(std::malloc(10));
    std::fill_n(first, 10, 'x');
    const auto where = reinterpret_cast<std::uintptr_t>(first);
    auto* const second = static_cast<char*>(std::realloc(first, 6000));
    EXPECT_NE(reinterpret_cast<std::uintptr_t>(second), where);
    EXPECT_EQ(std::string(second, 10), "xxxxxxxxxx");
    EXPECT_EQ(BlockOf(second).size, 6000u);
    std::free(second);
}

TEST(GuardedHeapTest, ClearedMemoryIsClear)
{
    auto* const block = static_cast<char*>(std::calloc(33, 3));
    EXPECT_EQ(std::string(block, 99), std::string(99, '\0'));
    EXPECT_EQ(BlockOf(block).size, 99u);
    std::free(block);
    volatile std::size_t tooMany = SIZE_MAX / 2;
    EXPECT_EQ(std::calloc(tooMany, 3), nullptr);
}

// What a child does; run on purpose only.
class DISABLED_WrongUse : public testing::Test {};

TEST_F(DISABLED_WrongUse, WritesOneByteBehindABlock)
{
    const std::unique_ptr<char[]> block(new char[64]);
    WriteAt(block.get(), 64);
}

TEST_F(DISABLED_WrongUse, LetsTheToolkitReadATextWithoutAnEnd)
{
    const std::unique_ptr<wchar_t[]> text(new wchar_t[8]);
    std::fill_n(text.get(), 8, L'x');
    const CDuiString copy(text.get());
}

TEST_F(DISABLED_WrongUse, LetsTheToolkitWriteBehindABuffer)
{
    DuiLib::CMarkup markup(L"<a b=\"12345678\"/>");
    const std::unique_ptr<wchar_t[]> buffer(new wchar_t[8]);
    markup.GetRoot().GetAttributeValue(0, buffer.get(), 9);
}

TEST_F(DISABLED_WrongUse, WritesBetweenTheBlockAndItsPage)
{
    const std::unique_ptr<char[]> block(new char[61]);
    WriteAt(block.get(), 61);
}

TEST_F(DISABLED_WrongUse, FreesTwice)
{
    void* volatile block = std::malloc(10);
    for (int i = 0; i < 2; ++i)
        std::free(block);
}

TEST_F(DISABLED_WrongUse, UsesFreedBlocks)
{
    // A share of the freed ones is inaccessible.
    for (int i = 0; i < 200; ++i) {
        void* const block = std::malloc(sizeof(int));
        void* volatile same = block;
        std::free(block);
        WriteAt(static_cast<int*>(same), 0);
    }
}

struct WrongUse {
    const char* name;
    const char* test;
    const char* argument;
    const char* message;
};

class WrongUseTest : public testing::TestWithParam<WrongUse> {};

TEST_P(WrongUseTest, EndsTheProcess)
{
    const auto result =
        RunTestInChild(std::string("DISABLED_WrongUse.") + GetParam().test, GetParam().argument);
    EXPECT_EQ(result.exitCode, kCrashExitCode) << result.output;
    EXPECT_NE(result.output.find(GetParam().message), std::string::npos) << result.output;
}

INSTANTIATE_TEST_SUITE_P(
    AllWays, WrongUseTest,
    testing::Values(WrongUse{"Write", "WritesOneByteBehindABlock", "",
                             ", 64 bytes into a block of 64"},
                    WrongUse{"ToolkitsRead", "LetsTheToolkitReadATextWithoutAnEnd", "",
                             ", 16 bytes into a block of 16"},
                    WrongUse{"ToolkitsWrite", "LetsTheToolkitWriteBehindABuffer", "",
                             ", 16 bytes into a block of 16"},
                    WrongUse{"WriteBesideThePage", "WritesBetweenTheBlockAndItsPage", "",
                             "written behind the end: block of 61 bytes"},
                    WrongUse{"WriteBehindAnExactBlock", "WritesBetweenTheBlockAndItsPage", kExact,
                             ", 61 bytes into a block of 61"},
                    WrongUse{"SecondFree", "FreesTwice", "", "freed twice"},
                    WrongUse{"UseOfAFreedBlock", "UsesFreedBlocks", "", "into a freed block of 4"}),
    [](const auto& test) { return test.param.name; });

} // namespace
