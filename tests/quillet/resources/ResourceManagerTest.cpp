#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"
#include "support/ImportHook.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

LPVOID WINAPI NoHeapAlloc(HANDLE, DWORD, SIZE_T)
{
    return nullptr;
}

CResourceManagerEx& Manager()
{
    return *CResourceManagerEx::GetInstance();
}

// Ends the child process of a test; the parent sees whether it held.
[[noreturn]] void Report(bool held)
{
    std::_Exit(held ? 0 : 1);
}

TEST(ResourceManagerTest, GetInstanceAlwaysAnswersTheSameObject)
{
    ASSERT_NE(CResourceManagerEx::GetInstance(), nullptr);
    EXPECT_EQ(CResourceManagerEx::GetInstance(), CResourceManagerEx::GetInstance());
}

TEST(ResourceManagerTest, AFailedAllocationIsNeverTriedAgain)
{
    EXPECT_EXIT(
        {
            CResourceManagerEx* first = nullptr;
            {
                const ImportHook hook(L"Quillet.dll", "KERNEL32.dll", "HeapAlloc", &NoHeapAlloc);
                first = CResourceManagerEx::GetInstance();
                if (!hook)
                    Report(false);
            }
            Report(!first && !CResourceManagerEx::GetInstance());
        },
        testing::ExitedWithCode(0), "");
}

TEST(ResourceManagerTest, ReleaseLeavesTheStoredPointerBehind)
{
    EXPECT_EXIT(
        {
            CResourceManagerEx* const manager = CResourceManagerEx::GetInstance();
            manager->LoadLanguage(L"<L><Text id=\"a\" value=\"b\"/></L>");
            manager->Release();
            Report(CResourceManagerEx::GetInstance() == manager);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ResourceManagerTest, ReleaseFreesTextsPathsAndItsOwnStorage)
{
    EXPECT_EXIT(
        {
            static int freed = 0;
            static void* instance = nullptr;
            static const ImportHook* current = nullptr;
            struct Hooks {
                static BOOL WINAPI OnHeapFree(HANDLE heap, DWORD flags, LPVOID block)
                {
                    freed += block == instance;
                    return current->Original<decltype(::HeapFree)>()(heap, flags, block);
                }
            };
            const ImportHook hook(L"Quillet.dll", "KERNEL32.dll", "HeapFree", &Hooks::OnHeapFree);
            current = &hook;
            instance = CResourceManagerEx::GetInstance();
            CResourceManagerEx::GetInstance()->Release();
            Report(freed == 1);
        },
        testing::ExitedWithCode(0), "");
}

// Calls the exported function itself, because a compiler takes a member call's object for existing.
TEST(ResourceManagerTest, ReleaseThroughANullPointerDoesNothing)
{
#ifdef _MSC_VER
    constexpr char kRelease[] = "?Release@CResourceManagerEx@DuiLib@@QEAAXXZ";
#else
    constexpr char kRelease[] = "_ZN6DuiLib18CResourceManagerEx7ReleaseEv";
#endif
    using ReleaseFunction = void(void*);
    auto* const release = reinterpret_cast<ReleaseFunction*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"Quillet.dll"), kRelease)));
    ASSERT_NE(release, nullptr);
    Manager().SetLanguage(L"still here");

    release(nullptr);

    EXPECT_STREQ(Manager().GetLanguage(), L"still here");
}

TEST(ResourceManagerTest, OnlyReleaseDestroysAManager)
{
    EXPECT_FALSE(std::is_destructible_v<CResourceManagerEx>);
    EXPECT_FALSE(std::is_default_constructible_v<CResourceManagerEx>);
    EXPECT_TRUE(std::is_copy_assignable_v<CResourceManagerEx>);
}

TEST(ResourceManagerTest, ACopySharesItsTextsWithTheOriginal)
{
    Manager().LoadLanguage(L"<L><Text id=\"copy.a\" value=\"old\"/></L>");
    auto* const copy = new CResourceManagerEx(Manager()); // shares its tables, so it is never freed

    Manager().LoadLanguage(
        L"<L><Text id=\"copy.a\" value=\"new\"/><Text id=\"copy.b\" value=\"later\"/></L>");

    EXPECT_STREQ(copy->GetText(L"copy.a"), L"new");
    EXPECT_STREQ(copy->GetText(L"copy.b"), L"later");
}

TEST(ResourceManagerTest, ACopySharesItsPathsWithTheOriginal)
{
    Manager().LoadResource(L"<R><Image id=\"copy.before\" path=\"b.png\"/></R>");
    auto* const copy = new CResourceManagerEx(Manager());

    Manager().LoadResource(L"<R><Image id=\"copy.i\" path=\"i.png\"/></R>");

    EXPECT_STREQ(copy->GetImagePath(L"copy.i"), L"i.png");
    EXPECT_EQ(copy->GetImagePath(L"copy.i"), Manager().GetImagePath(L"copy.i"));
}

TEST(ResourceManagerTest, ACopyHasItsOwnLanguageScaleAndWindows)
{
    const auto window = reinterpret_cast<HWND>(0x1234);
    Manager().SetLanguage(L"zh-CN");
    Manager().SetScale(144);
    Manager().SetMainHWND(window);
    Manager().SetVeskaMaskHWND(window);
    auto* const copy = new CResourceManagerEx(Manager());

    Manager().SetLanguage(L"en-US");
    Manager().SetScale(96);
    Manager().SetMainHWND(nullptr);
    Manager().SetVeskaMaskHWND(nullptr);

    EXPECT_STREQ(copy->GetLanguage(), L"zh-CN");
    EXPECT_EQ(copy->GetScale(), 150u);
    EXPECT_EQ(copy->GetMainHWND(), window);
    EXPECT_EQ(copy->GetVeskaMaskHWND(), window);
}

TEST(ResourceManagerTest, AssignmentCopiesAsConstructionDoes)
{
    auto* const copy = new CResourceManagerEx(Manager());
    Manager().SetLanguage(L"th-TH");
    Manager().SetScale(192);

    *copy = Manager();

    EXPECT_STREQ(copy->GetLanguage(), L"th-TH");
    EXPECT_EQ(copy->GetScale(), 200u);
    Manager().SetScale(96);
}

TEST(ResourceManagerTest, AFreshManagerIsMonitorAwareAtHundredPercent)
{
    EXPECT_EXIT(
        {
            auto& manager = Manager();
            Report(manager.GetScale() == 100 && manager.GetDPI() == 96 && manager.Scale(0) == 1 &&
                   manager.GetLanguage()[0] == 0 && !manager.GetMainHWND() &&
                   !manager.GetVeskaMaskHWND());
        },
        testing::ExitedWithCode(0), "");
}

TEST(ResourceManagerTest, KeepsAnyLanguageCodeUnchecked)
{
    for (const wchar_t* const code : {L"zh-CN", L"en-US", L"no language at all", L""}) {
        Manager().SetLanguage(code);
        EXPECT_STREQ(Manager().GetLanguage(), code);
    }
    Manager().SetLanguage(nullptr);
    EXPECT_STREQ(Manager().GetLanguage(), L"");
}

TEST(ResourceManagerTest, LanguageIsACopyOfTheGivenText)
{
    wchar_t code[] = L"de-DE";
    Manager().SetLanguage(code);
    code[0] = L'x';
    EXPECT_STREQ(Manager().GetLanguage(), L"de-DE");
}

TEST(ResourceManagerTest, KeepsMainAndMaskWindowApart)
{
    const auto mainWindow = reinterpret_cast<HWND>(0x10);
    const auto maskWindow = reinterpret_cast<HWND>(0x20);
    Manager().SetMainHWND(mainWindow);
    Manager().SetVeskaMaskHWND(maskWindow);
    EXPECT_EQ(Manager().GetMainHWND(), mainWindow);
    EXPECT_EQ(Manager().GetVeskaMaskHWND(), maskWindow);
    Manager().SetMainHWND(nullptr);
    Manager().SetVeskaMaskHWND(nullptr);
}

// The spare table is built with the manager and dies with it, and no text or path ends up there:
// all of them are found in the three others.
TEST(ResourceManagerTest, TheSpareTableTakesNothing)
{
    Manager().LoadLanguage(L"<L><Text id=\"spare.t\" value=\"t\"/></L>");
    Manager().LoadResource(
        L"<R><Image id=\"spare.i\" path=\"i\"/><Xml id=\"spare.x\" path=\"x\"/></R>");

    // The tables stand in the order texts, query interface, images, layouts, document, language,
    // spare table.
    struct Layout {
        CStdStringPtrMap texts;
        void* query;
        CStdStringPtrMap images;
        CStdStringPtrMap layouts;
        CMarkup document;
        CDuiString language;
        CStdStringPtrMap spare;
    };
    const auto& layout = reinterpret_cast<const Layout&>(Manager());
    EXPECT_NE(layout.texts.Find(L"spare.t"), nullptr);
    EXPECT_NE(layout.images.Find(L"spare.i"), nullptr);
    EXPECT_NE(layout.layouts.Find(L"spare.x"), nullptr);
    EXPECT_EQ(layout.spare.GetSize(), 0);
}

TEST(ResourceManagerTest, AResetManagerForgetsTextsAndPathsButKeepsItsKeys)
{
    Manager().LoadLanguage(L"<L><Text id=\"reset.t\" value=\"text\"/></L>");
    Manager().LoadResource(
        L"<R><Image id=\"reset.i\" path=\"i\"/><Xml id=\"reset.x\" path=\"x\"/></R>");

    Manager().ResetTextMap();
    Manager().ResetResourceMap();

    EXPECT_STREQ(Manager().GetText(L"reset.t"), L"reset.t");
    EXPECT_EQ(Manager().GetImagePath(L"reset.i"), nullptr);
    EXPECT_EQ(Manager().GetXmlPath(L"reset.x"), nullptr);

    // The keys are still there: a reload of texts asks the application for them.
    struct Asked : IQueryControlTextEx {
        const wchar_t* QueryControlText(const wchar_t* id, const wchar_t*) override
        {
            ids.emplace_back(id);
            return nullptr;
        }
        std::vector<std::wstring> ids;
    } asked;
    Manager().SetTextQueryInterface(&asked);
    Manager().ReloadText();
    Manager().SetTextQueryInterface(nullptr);
    EXPECT_EQ(std::count(asked.ids.begin(), asked.ids.end(), L"reset.t"), 1);
}

TEST(ResourceManagerTest, AResetManagerLoadsAgain)
{
    for (const wchar_t* const value : {L"first", L"second"}) {
        const std::wstring text =
            std::wstring(L"<L><Text id=\"again.t\" value=\"") + value + L"\"/></L>";
        const std::wstring index =
            std::wstring(L"<R><Image id=\"again.i\" path=\"") + value + L"\"/></R>";
        Manager().ResetTextMap();
        Manager().ResetResourceMap();
        Manager().LoadLanguage(text.c_str());
        Manager().LoadResource(index.c_str());
        EXPECT_STREQ(Manager().GetText(L"again.t"), value);
        EXPECT_STREQ(Manager().GetImagePath(L"again.i"), value);
    }
}

TEST(ResourceManagerTest, ResettingTwiceIsHarmless)
{
    Manager().LoadLanguage(L"<L><Text id=\"twice.t\" value=\"text\"/></L>");
    Manager().ResetTextMap();
    Manager().ResetTextMap();
    Manager().ResetResourceMap();
    Manager().ResetResourceMap();
    EXPECT_STREQ(Manager().GetText(L"twice.t"), L"twice.t");
}

// Only the nothrow form of the text's allocation is made to fail, and only in the library.
TEST(ResourceManagerTest, WithoutMemoryForATextTheKeyIsAddedWithoutOne)
{
#ifdef _MSC_VER
    GTEST_SKIP() << "the allocation function is not imported by name";
#else
    struct Memory {
        static void* None(std::size_t, const std::nothrow_t&) { return nullptr; }
    };
    {
        const ImportHook hook(L"Quillet.dll", "libstdc++-6.dll", "_ZnwyRKSt9nothrow_t",
                              &Memory::None);
        ASSERT_TRUE(static_cast<bool>(hook));
        Manager().LoadLanguage(L"<L><Text id=\"memory.t\" value=\"text\"/></L>");
        Manager().LoadResource(L"<R><Image id=\"memory.i\" path=\"i\"/></R>");
    }
    EXPECT_STREQ(Manager().GetText(L"memory.t"), L"memory.t");
    EXPECT_EQ(Manager().GetImagePath(L"memory.i"), nullptr);

    Manager().LoadLanguage(L"<L><Text id=\"memory.t\" value=\"text\"/></L>");
    Manager().LoadResource(L"<R><Image id=\"memory.i\" path=\"i\"/></R>");
    EXPECT_STREQ(Manager().GetText(L"memory.t"), L"text");
    EXPECT_STREQ(Manager().GetImagePath(L"memory.i"), L"i");
#endif
}

} // namespace
} // namespace test
