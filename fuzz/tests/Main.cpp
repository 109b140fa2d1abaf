#include "fuzz/engine/CrashReport.h"
#include "fuzz/engine/GuardedHeap.h"

#include <UIlib.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    fuzz::GuardedHeap::Install(fuzz::GuardedHeap::Placement::Aligned);
    fuzz::InstallCrashReport();
    DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    return RUN_ALL_TESTS();
}
