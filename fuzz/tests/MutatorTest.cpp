#include "fuzz/engine/Mutator.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace fuzz;

constexpr std::size_t kLargest = 200;

std::vector<Bytes> Pool()
{
    return {ToBytes("<a width=\"12\"/>"), ToBytes("<b><c/></b>"), Bytes()};
}

TEST(MutatorTest, TheSameSeedGivesTheSameInputs)
{
    Mutator first(7, {ToBytes("word")}, kLargest);
    Mutator second(7, {ToBytes("word")}, kLargest);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(first.Make(Pool()), second.Make(Pool()));
}

TEST(MutatorTest, AnotherSeedGivesOtherInputs)
{
    Mutator first(7, {}, kLargest);
    Mutator second(8, {}, kLargest);
    int same = 0;
    for (int i = 0; i < 100; ++i)
        same += first.Make(Pool()) == second.Make(Pool());
    EXPECT_LT(same, 50);
}

TEST(MutatorTest, InputsVaryAndNeverOutgrowTheLimit)
{
    Mutator mutator(1, {ToBytes("word")}, kLargest);
    std::set<Bytes> made;
    std::size_t longest = 0;
    for (int i = 0; i < 2000; ++i) {
        const Bytes input = mutator.Make(Pool());
        longest = std::max(longest, input.size());
        made.insert(input);
    }
    EXPECT_EQ(longest, kLargest);
    EXPECT_GT(made.size(), 1500u);
}

TEST(MutatorTest, UsesTheWordsOfTheDictionaryAndEdgesOfNumbers)
{
    Mutator mutator(1, {ToBytes("word")}, kLargest);
    int words = 0;
    int numbers = 0;
    for (int i = 0; i < 1000; ++i) {
        const Bytes input = mutator.Make(Pool());
        words += AsText(input).find("word") != std::string_view::npos;
        numbers += AsText(input).find("2147483648") != std::string_view::npos;
    }
    EXPECT_GT(words, 100);
    EXPECT_GT(numbers, 10);
}

TEST(MutatorTest, MakesInputsOutOfNothing)
{
    Mutator mutator(1, {ToBytes("word")}, kLargest);
    std::size_t longest = 0;
    for (int i = 0; i < 100; ++i)
        longest = std::max(longest, mutator.Make({}).size());
    EXPECT_GE(longest, 4u);
}

} // namespace
