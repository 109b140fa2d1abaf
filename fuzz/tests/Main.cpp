#include "fuzz/engine/CrashReport.h"
#include "fuzz/engine/GuardedHeap.h"
#include "fuzz/tests/ChildProcess.h"

#include <UIlib.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    using fuzz::GuardedHeap::Placement;
    fuzz::GuardedHeap::Install(fuzz::ChildArgument() == fuzz::kExact ? Placement::Exact
                                                                     : Placement::Aligned);
    fuzz::InstallCrashReport();
    DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    return RUN_ALL_TESTS();
}
