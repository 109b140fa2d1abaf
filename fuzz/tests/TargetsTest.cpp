#include "fuzz/engine/Session.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace fuzz;

constexpr std::uint64_t kExecutions = 5000;
constexpr double kLongest = 4; // seconds
constexpr std::uint64_t kSeed = 20'240'601;

std::string NameOf(const testing::TestParamInfo<const Target*>& test)
{
    std::string name(test.param->name);
    std::erase(name, '-');
    return name;
}

std::vector<const Target*> AllTargets()
{
    std::vector<const Target*> all;
    for (const auto& target : Targets())
        all.push_back(&target);
    return all;
}

class TargetTest : public testing::TestWithParam<const Target*> {};

TEST_P(TargetTest, HasSeedsAndWords)
{
    EXPECT_GE(GetParam()->seeds().size(), 5u);
    EXPECT_GE(GetParam()->dictionary().size(), 10u);
}

TEST_P(TargetTest, SurvivesMutatedInputs)
{
    const auto result =
        RunSession(*GetParam(), {.executions = kExecutions, .seed = kSeed, .longest = kLongest});
    EXPECT_EQ(result.failure, "");
    EXPECT_GT(result.executions, 100u);
    EXPECT_GT(result.pool, GetParam()->seeds().size());
}

INSTANTIATE_TEST_SUITE_P(AllTargets, TargetTest, testing::ValuesIn(AllTargets()), NameOf);

} // namespace
