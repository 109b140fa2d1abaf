#include "fuzz/engine/CrashReport.h"
#include "fuzz/engine/Files.h"
#include "fuzz/engine/Growth.h"
#include "fuzz/engine/Session.h"
#include "fuzz/engine/Watchdog.h"
#include "fuzz/tests/ChildProcess.h"
#include "support/TempFolder.h"
#include "win32/Windows.h"

#include <gtest/gtest.h>

namespace {

using namespace fuzz;

std::vector<void*> g_kept;
unsigned g_sum = 0;

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

TEST_F(DISABLED_Failing, Hangs)
{
    const auto target = TargetThat([](ByteView input) {
        volatile bool hangs = input.size() == 9;
        while (hangs) {
        }
    });
    RunSession(target, OptionsOfChild());
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
                    Failure{"Hangs", kHangExitCode, "hang in target wrong"}),
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
    for (void* const block : g_kept)
        std::free(block);
}

TEST(SessionTest, FindsGrowthOfSystemObjects)
{
    const auto target = TargetThat([](ByteView) { ::CreateSolidBrush(0); });
    const auto result = RunSession(target, {.executions = 100, .seed = 1});
    EXPECT_NE(result.failure.find("GDI objects grew from"), std::string::npos) << result.failure;
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
