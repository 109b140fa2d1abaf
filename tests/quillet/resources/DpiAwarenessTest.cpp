#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"

#include <optional>
#include <string>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

// What a question for the version compares.
struct VersionQuestions {
    static inline std::vector<OSVERSIONINFOEXW> versions;
    static inline std::vector<DWORD> fields;
    static BOOL WINAPI Verify(LPOSVERSIONINFOEXW version, DWORD field, DWORDLONG)
    {
        versions.push_back(*version);
        fields.push_back(field);
        return TRUE;
    }
};

class DpiAwarenessTest : public testing::Test {
protected:
    DpiAwarenessTest() { manager.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE); }
    ~DpiAwarenessTest() override
    {
        shcore.present = shcore.hasExports = true;
        shcore.setResult = S_OK;
        manager.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
        manager.SetScale(96);
    }

    static std::wstring SystemPath()
    {
        wchar_t folder[MAX_PATH]{};
        ::GetSystemDirectoryW(folder, MAX_PATH);
        return std::wstring(folder) + L"\\Shcore.dll";
    }

    // The field, seen through what it selects.
    std::optional<PROCESS_DPI_AWARENESS> Field()
    {
        manager.SetScale(192);
        if (manager.GetScale() == 200)
            return PROCESS_PER_MONITOR_DPI_AWARE;
        return std::nullopt;
    }

    FakeShcore shcore;
    CResourceManagerEx& manager = *CResourceManagerEx::GetInstance();
};

TEST_F(DpiAwarenessTest, AnAcceptedAwarenessIsKept)
{
    shcore.set.clear();
    EXPECT_EQ(manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 1);
    EXPECT_EQ(shcore.set, (std::vector<PROCESS_DPI_AWARENESS>{PROCESS_DPI_UNAWARE}));
    EXPECT_EQ(Field(), std::nullopt);
}

TEST_F(DpiAwarenessTest, ARefusedAwarenessIsNotKept)
{
    for (const HRESULT refusal : {E_ACCESSDENIED, E_INVALIDARG, S_FALSE}) {
        shcore.setResult = refusal;
        EXPECT_EQ(manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 0);
        EXPECT_EQ(Field(), PROCESS_PER_MONITOR_DPI_AWARE);
    }
}

TEST_F(DpiAwarenessTest, WithoutTheLibraryNothingIsSet)
{
    shcore.present = false;
    EXPECT_EQ(manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 0);
    EXPECT_EQ(Field(), PROCESS_PER_MONITOR_DPI_AWARE);
}

TEST_F(DpiAwarenessTest, WithoutTheExportNothingIsSet)
{
    shcore.hasExports = false;
    EXPECT_EQ(manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 0);
    EXPECT_EQ(shcore.looked.back(), "SetProcessDpiAwareness");
    EXPECT_EQ(Field(), PROCESS_PER_MONITOR_DPI_AWARE);
}

TEST_F(DpiAwarenessTest, SettingLoadsFromTheSystemFolderAndKeepsTheLibrary)
{
    shcore.loaded.clear();
    manager.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
    EXPECT_EQ(shcore.loaded, (std::vector<std::wstring>{SystemPath()}));
    EXPECT_EQ(shcore.freed, 0);
}

TEST_F(DpiAwarenessTest, AskingTakesTheSystemsAnswer)
{
    shcore.awareness = PROCESS_SYSTEM_DPI_AWARE;
    EXPECT_EQ(manager.GetDPIAwareness(), PROCESS_SYSTEM_DPI_AWARE);
    EXPECT_EQ(shcore.looked.back(), "GetProcessDpiAwareness");
    EXPECT_EQ(Field(), std::nullopt);
}

TEST_F(DpiAwarenessTest, AskingIgnoresAFailure)
{
    shcore.awareness = PROCESS_DPI_UNAWARE;
    shcore.getResult = E_ACCESSDENIED;
    EXPECT_EQ(manager.GetDPIAwareness(), PROCESS_PER_MONITOR_DPI_AWARE);
}

TEST_F(DpiAwarenessTest, AskingWithoutTheLibraryAnswersTheField)
{
    shcore.present = false;
    EXPECT_EQ(manager.GetDPIAwareness(), PROCESS_PER_MONITOR_DPI_AWARE);
    shcore.present = true;
    shcore.hasExports = false;
    EXPECT_EQ(manager.GetDPIAwareness(), PROCESS_PER_MONITOR_DPI_AWARE);
}

TEST_F(DpiAwarenessTest, AskingLeavesTheLibraryAndTheProcessHandleOpen)
{
    shcore.loaded.clear();
    manager.GetDPIAwareness();
    EXPECT_EQ(shcore.loaded, (std::vector<std::wstring>{SystemPath()}));
    EXPECT_EQ(shcore.freed, 0);

    ASSERT_NE(shcore.process, nullptr);
    EXPECT_NE(shcore.process, ::GetCurrentProcess());
    DWORD flags = 0;
    EXPECT_TRUE(::GetHandleInformation(shcore.process, &flags));
    EXPECT_EQ(::GetProcessId(shcore.process), ::GetCurrentProcessId());
    ::CloseHandle(shcore.process);
}

TEST_F(DpiAwarenessTest, TrueDpiIsTheEffectiveHorizontalOneOfTheMainMonitor)
{
    shcore.dpi = {144};
    EXPECT_EQ(manager.GetTrueDPI(), 144u);
    EXPECT_EQ(shcore.looked.back(), "GetDpiForMonitor");
    EXPECT_EQ(shcore.monitors,
              (std::vector<HMONITOR>{::MonitorFromPoint(POINT{1, 1}, MONITOR_DEFAULTTONEAREST)}));
    EXPECT_EQ(shcore.dpiTypes, (std::vector<int>{0}));
}

TEST_F(DpiAwarenessTest, TrueDpiGivesTheLibraryBack)
{
    shcore.loaded.clear();
    manager.GetTrueDPI();
    EXPECT_EQ(shcore.loaded, (std::vector<std::wstring>{SystemPath()}));
    EXPECT_EQ(shcore.freed, 1);
}

TEST_F(DpiAwarenessTest, TrueDpiIgnoresAFailure)
{
    shcore.dpi = {144};
    shcore.dpiResult = E_FAIL;
    EXPECT_EQ(manager.GetTrueDPI(), 96u);
    EXPECT_EQ(shcore.freed, 1);
}

TEST_F(DpiAwarenessTest, TrueDpiIsTheDefaultWithoutLibraryOrExport)
{
    shcore.dpi = {144};
    shcore.hasExports = false;
    EXPECT_EQ(manager.GetTrueDPI(), 96u);
    EXPECT_EQ(shcore.freed, 1);
    shcore.present = false;
    EXPECT_EQ(manager.GetTrueDPI(), 96u);
    EXPECT_EQ(shcore.freed, 1);
}

TEST_F(DpiAwarenessTest, TrueDpiDoesNotTouchTheScale)
{
    manager.SetScale(120);
    shcore.dpi = {192};
    manager.GetTrueDPI();
    EXPECT_EQ(manager.GetScale(), 125u);
}

TEST_F(DpiAwarenessTest, APathThatCannotBeBuiltIsAMissingLibrary)
{
    struct NoFolder {
        static UINT WINAPI Get(LPWSTR, UINT) { return 0; }
    };
    const ImportHook hook(L"Quillet.dll", "KERNEL32.dll", "GetSystemDirectoryW", &NoFolder::Get);
    ASSERT_TRUE(static_cast<bool>(hook));
    shcore.loaded.clear();
    shcore.dpi = {144};
    EXPECT_EQ(manager.GetTrueDPI(), 96u);
    EXPECT_EQ(manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 0);
    EXPECT_TRUE(shcore.loaded.empty());
}

TEST_F(DpiAwarenessTest, ASystemBeforeWindowsSevenHasTheDefaultDpi)
{
    struct OldSystem {
        static BOOL WINAPI Verify(LPOSVERSIONINFOEXW version, DWORD, DWORDLONG)
        {
            return version->dwMajorVersion < 6;
        }
    };
    const ImportHook hook(L"Quillet.dll", "KERNEL32.dll", "VerifyVersionInfoW", &OldSystem::Verify);
    ASSERT_TRUE(static_cast<bool>(hook));
    shcore.loaded.clear();
    shcore.dpi = {144};
    EXPECT_EQ(manager.GetTrueDPI(), 96u);
    EXPECT_TRUE(shcore.loaded.empty());
}

TEST_F(DpiAwarenessTest, TheVersionIsComparedFieldByField)
{
    const ImportHook hook(L"Quillet.dll", "KERNEL32.dll", "VerifyVersionInfoW",
                          &VersionQuestions::Verify);
    ASSERT_TRUE(static_cast<bool>(hook));
    manager.GetDPIAwareness();
    manager.GetTrueDPI();
    ASSERT_EQ(VersionQuestions::versions.size(), 2u);
    EXPECT_EQ(VersionQuestions::versions[0].dwMajorVersion, 6u);
    EXPECT_EQ(VersionQuestions::versions[0].dwMinorVersion, 3u);
    EXPECT_EQ(VersionQuestions::versions[0].wServicePackMajor, 0u);
    EXPECT_EQ(VersionQuestions::versions[1].dwMajorVersion, 6u);
    EXPECT_EQ(VersionQuestions::versions[1].dwMinorVersion, 1u);
    EXPECT_EQ(VersionQuestions::fields[0],
              DWORD{VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR});
    if (shcore.process)
        ::CloseHandle(shcore.process);
}

} // namespace
} // namespace test
