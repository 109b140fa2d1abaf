#include "fuzz/engine/Files.h"
#include "fuzz/engine/Session.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using namespace fuzz;

// An input that failed once: fuzz/kept/TARGET/NAME.
struct KeptInput {
    std::string target;
    std::string name;
    Bytes bytes;
};

void PrintTo(const KeptInput& input, std::ostream* out)
{
    *out << input.target << "/" << input.name;
}

std::vector<KeptInput> AllKeptInputs()
{
    std::vector<KeptInput> inputs;
    for (auto& file : ReadFolder(FuzzFolder() + L"kept")) {
        const std::string path(file.name.begin(), file.name.end());
        const auto slash = path.find('/');
        if (slash != std::string::npos)
            inputs.push_back(
                {path.substr(0, slash), path.substr(slash + 1), std::move(file.bytes)});
    }
    return inputs;
}

std::string NameOf(const testing::TestParamInfo<KeptInput>& test)
{
    std::string name = test.param.target + '_' + test.param.name;
    std::erase(name, '-');
    return name;
}

// No value at all, because the folder was not found, is a failure of its own.
class KeptInputsTest : public testing::TestWithParam<KeptInput> {};

TEST_P(KeptInputsTest, DoesNotFailAgain)
{
    const Target* const target = FindTarget(GetParam().target);
    ASSERT_NE(target, nullptr);
    ASSERT_FALSE(GetParam().bytes.empty());
    const auto result = Replay(*target, GetParam().bytes);
    EXPECT_EQ(result.failure, "");
    EXPECT_GT(result.executions, 1u);
}

INSTANTIATE_TEST_SUITE_P(All, KeptInputsTest, testing::ValuesIn(AllKeptInputs()), NameOf);

} // namespace
