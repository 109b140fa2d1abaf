#include "fuzz/engine/CrashReport.h"
#include "fuzz/engine/Files.h"
#include "fuzz/engine/Growth.h"
#include "fuzz/engine/Session.h"
#include "fuzz/engine/Watchdog.h"
#include "fuzz/tests/ChildProcess.h"
#include "support/TempFolder.h"
#include "win32/Handles.h"

#include <gtest/gtest.h>

namespace {

using namespace fuzz;

std::vector<void*> g_kept;
unsigned g_sum = 0;

void FreeKept()
{
    for (void* const block : g_kept)
        std::free(block);
    g_kept.clear();
}

Target TargetThat(void (*run)(ByteView))
{
    return {"wrong", run, [] { return std::vector<Bytes>{ToBytes("seed")}; },
            [] { return std::vector<Bytes>{ToBytes("word")}; }};
}

SessionOptions OptionsOfChild()
{
    const std::string folder = ChildArgument();
    return {.executions = 2000,
            .seed = 1,
            .longest = 0,
            .saveFolder = std::wstring(folder.begin(), folder.end())};
}

// What a child does; run on purpose only.
class DISABLED_Failing : public testing::Test {};

TEST_F(DISABLED_Failing, ReadsOneByteBehindItsInput)
{
    const auto target = TargetThat([](ByteView input) {
        volatile std::byte read{};
        if (input.size() == 9)
            read = input.data()[9];
        g_sum += std::to_integer<unsigned>(read);
    });
    RunSession(target, OptionsOfChild());
}

TEST_F(DISABLED_Failing, Throws)
{
    const auto target = TargetThat([](ByteView input) {
        if (input.size() == 9)
            throw 1;
    });
    RunSession(target, OptionsOfChild());
}

// The sum is used after the call, so that no compiler turns it into a loop.
std::size_t Nest(std::size_t levels)
{
    volatile char room[256] = {};
    return levels == 0 ? 0 : Nest(levels - 1) + static_cast<std::size_t>(room[levels % 256]) + 1;
}

TEST_F(DISABLED_Failing, OverflowsTheStack)
{
    const auto target = TargetThat([](ByteView input) {
        if (input.size() == 9)
            g_sum += static_cast<unsigned>(Nest(100'000'000));
    });
    RunSession(target, OptionsOfChild());
}

void Hang(ByteView input)
{
    volatile bool hangs = input.size() == 9;
    while (hangs) {
    }
}

TEST_F(DISABLED_Failing, Hangs)
{
    RunSession(TargetThat(&Hang), OptionsOfChild());
}

// Something that never comes, such as the end of a dialogue that waits for a user.
TEST_F(DISABLED_Failing, Waits)
{
    const auto target = TargetThat([](ByteView input) {
        const Quillet::UniqueKernelHandle never(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
        if (input.size() == 9)
            ::WaitForSingleObject(never.get(), INFINITE);
    });
    auto options = OptionsOfChild();
    options.limits.wait = 300;
    RunSession(target, options);
}

TEST_F(DISABLED_Failing, HangsWhenReplayed)
{
    Replay(TargetThat(&Hang), AsBytes("nine byte"), OptionsOfChild());
}

TEST_F(DISABLED_Failing, ReadsOneByteBehindItsInputWhenReplayed)
{
    const auto target = TargetThat([](ByteView input) {
        volatile std::byte read = input.data()[input.size()];
        g_sum += std::to_integer<unsigned>(read);
    });
    Replay(target, AsBytes("nine byte"), OptionsOfChild());
}

TEST_F(DISABLED_Failing, ThrowsWithoutAFolder)
{
    Replay(TargetThat([](ByteView) { throw 1; }), AsBytes("nine byte"));
}

TEST(RecordTest, WithoutAFolderTheInputIsPrinted)
{
    const auto result = RunTestInChild("DISABLED_Failing.ThrowsWithoutAFolder");
    EXPECT_EQ(result.exitCode, kCrashExitCode);
    EXPECT_NE(result.output.find("6e696e652062797465"), std::string::npos) << result.output;
}

struct Failure {
    const char* test;
    unsigned exitCode;
    const char* message;
};

class FailureTest : public testing::TestWithParam<Failure> {};

TEST_P(FailureTest, EndsTheProcessAndSavesTheInput)
{
    const test::TempFolder folder;
    const auto result = RunTestInChild(std::string("DISABLED_Failing.") + GetParam().test,
                                       test::Utf8(folder.Path()));
    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.output;
    EXPECT_NE(result.output.find(GetParam().message), std::string::npos) << result.output;
    const auto saved = ReadFolder(folder.Path());
    ASSERT_EQ(saved.size(), 1u) << result.output;
    EXPECT_EQ(saved[0].bytes.size(), 9u);
}

INSTANTIATE_TEST_SUITE_P(
    AllSorts, FailureTest,
    testing::Values(Failure{"ReadsOneByteBehindItsInput", kCrashExitCode, "crash in target wrong"},
                    Failure{"Throws", kCrashExitCode, "uncaught exception in target wrong"},
                    Failure{"OverflowsTheStack", kCrashExitCode, "CRASH c00000fd"},
                    Failure{"Hangs", kHangExitCode, "hang in target wrong"},
                    Failure{"Waits", kHangExitCode, "hang in target wrong"},
                    Failure{"HangsWhenReplayed", kHangExitCode, "hang in target wrong"},
                    Failure{"ReadsOneByteBehindItsInputWhenReplayed", kCrashExitCode,
                            "crash in target wrong"}),
    [](const auto& test) { return test.param.test; });

TEST(SessionTest, FindsALeakOfEveryRunAndSavesTheInput)
{
    const test::TempFolder folder;
    const auto target = TargetThat([](ByteView) { g_kept.push_back(std::malloc(10)); });
    const auto result = RunSession(
        target, {.executions = 1000, .seed = 1, .longest = 0, .saveFolder = folder.Path()});
    EXPECT_EQ(result.failure, "1 blocks are left of every run");
    EXPECT_LT(result.executions, 1000u);
    EXPECT_EQ(ReadFolder(folder.Path()).size(), 1u);
    FreeKept();
}

TEST(SessionTest, FindsALeakOfAReplayedInput)
{
    const auto target = TargetThat([](ByteView) { g_kept.push_back(std::malloc(10)); });
    EXPECT_EQ(Replay(target, AsBytes("input")).failure, "1 blocks are left of every run");
    FreeKept();
}

struct Growing {
    const char* what;
    void (*run)(ByteView);
};

class GrowingTest : public testing::TestWithParam<Growing> {};

TEST_P(GrowingTest, IsFoundWhenTheSessionEnds)
{
    const auto result = RunSession(TargetThat(GetParam().run), {.executions = 2000, .seed = 1});
    EXPECT_NE(result.failure.find(GetParam().what + std::string(" grew from")), std::string::npos)
        << result.failure;
}

// None of them leaves a block behind at each run.
INSTANTIATE_TEST_SUITE_P(
    AllSorts, GrowingTest,
    testing::Values(Growing{"GDI objects", [](ByteView) { ::CreateSolidBrush(0); }},
                    Growing{"windows",
                            [](ByteView) {
                                static int turn = 0;
                                if (++turn % 100 == 0)
                                    ::CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 9, 9,
                                                      nullptr, nullptr, nullptr, nullptr);
                            }},
                    Growing{"blocks",
                            [](ByteView) {
                                static int turn = 0;
                                for (int i = 0; turn % 4 != 0 && i < 40; ++i)
                                    g_kept.push_back(std::malloc(1));
                                ++turn;
                            }},
                    Growing{"bytes",
                            [](ByteView) {
                                static int turn = 0;
                                constexpr std::size_t kMegabyte = 1024 * 1024;
                                if (++turn % 50 == 0)
                                    g_kept.push_back(std::malloc(kMegabyte));
                            }},
                    Growing{"bytes of the system",
                            [](ByteView) { ::HeapAlloc(::GetProcessHeap(), 0, 32 * 1024); }}),
    [](const auto& test) {
        std::string name = test.param.what;
        std::erase(name, ' ');
        return name;
    });

TEST(SessionTest, SlowButWithinTheLimitIsNoFinding)
{
    const auto target = TargetThat([](ByteView input) {
        const ULONGLONG start = ::GetTickCount64();
        while (input.size() == 4 && ::GetTickCount64() - start < 100) {
        }
    });
    const auto result = Replay(target, AsBytes("slow"));
    EXPECT_EQ(result.failure, "");
    EXPECT_GE(result.slowest, 0.05);
}

TEST(SessionTest, FindsNothingInWhatFreesAll)
{
    const auto target = TargetThat([](ByteView input) {
        const Bytes copy(input.begin(), input.end());
        ::DeleteObject(::CreateSolidBrush(copy.empty() ? 0 : 1));
    });
    const auto result = RunSession(target, {.executions = 3000, .seed = 1});
    EXPECT_EQ(result.failure, "");
    EXPECT_GE(result.executions, 3000u);
}

TEST(GrowthTest, SmallDifferencesAreCaches)
{
    const Holdings before{
        .gdiObjects = 10, .windows = 1, .blocks = 100, .bytes = 1000, .systemBytes = 0};
    Holdings after = before;
    after.gdiObjects += 3;
    after.bytes += 1000;
    EXPECT_EQ(FindGrowth(before, after), "");
    after.windows += 1;
    EXPECT_EQ(FindGrowth(before, after), "windows grew from 1 to 2; ");
}

} // namespace
