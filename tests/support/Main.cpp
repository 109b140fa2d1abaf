#include <gtest/gtest.h>

#include "support/CrashFilter.h"

int main(int argc, char** argv)
{
    test::InstallCrashFilter();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
