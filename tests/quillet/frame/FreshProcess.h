#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace test {

// Runs the body in the child of a death test and ends it with 0 when everything held. A child keeps
// its failures to itself, so they are written to where the parent shows them.
//
//     EXPECT_EXIT(RunAndExit([] { EXPECT_EQ(First(), 1); }), testing::ExitedWithCode(0), "");
template <class Body>
[[noreturn]] void RunAndExit(Body body)
{
    body();
    const auto& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = 0; i < result.total_part_count(); ++i) {
        const auto& part = result.GetTestPartResult(i);
        if (part.failed())
            std::fprintf(stderr, "line %d: %s\n", part.line_number(), part.message());
    }
    std::fflush(stderr);
    std::_Exit(result.Failed() ? 1 : 0);
}

} // namespace test
