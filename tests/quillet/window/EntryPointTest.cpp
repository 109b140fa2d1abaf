#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/ImportHook.h"

#include <vector>

// The entry point itself, under another name, so that it can be called at will.
#define DllMain EntryPointUnderTest
#include "quillet/EntryPoint.cpp"
#undef DllMain

namespace test {
namespace {

std::vector<HMODULE> g_disabled;
BOOL g_answer = TRUE;

BOOL WINAPI Disable(HMODULE module)
{
    g_disabled.push_back(module);
    return g_answer;
}

class EntryPointTest : public testing::Test {
protected:
    EntryPointTest()
    {
        g_disabled.clear();
        g_answer = TRUE;
    }

    HMODULE module = reinterpret_cast<HMODULE>(0x1000);
    ImportHook hook{nullptr, "KERNEL32.dll", "DisableThreadLibraryCalls", &Disable};
};

TEST_F(EntryPointTest, DisablesThreadCallsOfItsOwnModule)
{
    EXPECT_TRUE(EntryPointUnderTest(module, DLL_PROCESS_ATTACH, nullptr));
    EXPECT_EQ(g_disabled, (std::vector<HMODULE>{module}));
}

TEST_F(EntryPointTest, IgnoresARefusal)
{
    g_answer = FALSE;
    EXPECT_TRUE(EntryPointUnderTest(module, DLL_PROCESS_ATTACH, nullptr));
    EXPECT_EQ(g_disabled.size(), 1u);
}

TEST_F(EntryPointTest, IsSatisfiedWithEveryOtherCall)
{
    for (const DWORD reason : {DLL_PROCESS_DETACH, DLL_THREAD_ATTACH, DLL_THREAD_DETACH})
        EXPECT_TRUE(EntryPointUnderTest(module, reason, nullptr));
}

TEST_F(EntryPointTest, IsThatOfTheLibrary)
{
    EXPECT_NE(
        FindImport(::GetModuleHandleW(L"Quillet.dll"), "KERNEL32.dll", "DisableThreadLibraryCalls"),
        nullptr);
}

} // namespace
} // namespace test
