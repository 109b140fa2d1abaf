#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/ImportHook.h"
#include "support/TempFolder.h"

#include <string>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

class ResourceIndexTest : public testing::Test {
protected:
    ResourceIndexTest() { manager.ResetResourceMap(); }
    ~ResourceIndexTest() override
    {
        manager.ResetResourceMap();
        CPaintManagerUI::SetResourcePath(L"");
        CPaintManagerUI::SetResourceDll(nullptr);
    }

    int Load(const wchar_t* index) { return manager.LoadResource(STRINGorID(index), nullptr); }

    CResourceManagerEx& manager = *CResourceManagerEx::GetInstance();
};

TEST_F(ResourceIndexTest, KeepsImagesAndLayoutsApart)
{
    EXPECT_EQ(Load(L"<R><Image id=\"a\" path=\"a.png\"/><Xml id=\"a\" path=\"a.xml\"/></R>"), 1);
    EXPECT_STREQ(manager.GetImagePath(L"a"), L"a.png");
    EXPECT_STREQ(manager.GetXmlPath(L"a"), L"a.xml");
}

TEST_F(ResourceIndexTest, AnswersNullForUnknownIds)
{
    Load(L"<R><Image id=\"known\" path=\"a.png\"/></R>");
    EXPECT_EQ(manager.GetImagePath(L"unknown"), nullptr);
    EXPECT_EQ(manager.GetXmlPath(L"known"), nullptr);
    EXPECT_EQ(manager.GetImagePath(nullptr), nullptr);
    EXPECT_EQ(manager.GetXmlPath(nullptr), nullptr);
}

TEST_F(ResourceIndexTest, LoadsAFileOfTheResources)
{
    const TempFolder folder;
    folder.Write(L"index.xml", std::string_view("<R><Image id=\"f\" path=\"file.png\"/></R>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_EQ(Load(L"index.xml"), 1);
    EXPECT_STREQ(manager.GetImagePath(L"f"), L"file.png");
}

TEST_F(ResourceIndexTest, AnswersZeroForWhatCannotBeLoaded)
{
    EXPECT_EQ(Load(L"missing.xml"), 0);
    EXPECT_EQ(Load(L"<R><Image"), 0);
    EXPECT_EQ(Load(L""), 0);
    EXPECT_EQ(Load(nullptr), 0);
}

TEST_F(ResourceIndexTest, ARootWithoutChildrenIsFine)
{
    EXPECT_EQ(Load(L"<R/>"), 1);
    EXPECT_EQ(Load(L"<Image id=\"root\" path=\"root.png\"/>"), 1);
    EXPECT_EQ(manager.GetImagePath(L"root"), nullptr);
}

TEST_F(ResourceIndexTest, AnInvalidNodeIsAFailure)
{
    CMarkup empty(nullptr);
    EXPECT_EQ(manager.LoadResource(empty.GetRoot()), 0);
}

TEST_F(ResourceIndexTest, WalksANodeOfTheApplicationsOwnDocument)
{
    CMarkup document(L"<R><Other><Image id=\"in\" path=\"in.png\"/></Other>"
                     L"<Image id=\"out\" path=\"out.png\"/></R>");
    EXPECT_EQ(manager.LoadResource(document.GetRoot().GetChild()), 1);
    EXPECT_STREQ(manager.GetImagePath(L"in"), L"in.png");
    EXPECT_EQ(manager.GetImagePath(L"out"), nullptr);
}

TEST_F(ResourceIndexTest, FindsElementsAtAnyDepth)
{
    Load(L"<R><A><B><C><Image id=\"deep\" path=\"deep.png\"/></C></B></A></R>");
    EXPECT_STREQ(manager.GetImagePath(L"deep"), L"deep.png");
}

TEST_F(ResourceIndexTest, NamesHaveNoCase)
{
    Load(L"<r><iMAGE ID=\"i\" pAtH=\"i.png\"/><XML Id=\"x\" PATH=\"x.xml\"/></r>");
    EXPECT_STREQ(manager.GetImagePath(L"i"), L"i.png");
    EXPECT_STREQ(manager.GetXmlPath(L"x"), L"x.xml");
}

TEST_F(ResourceIndexTest, TheFirstPathOfAnIdStays)
{
    Load(L"<R><Image id=\"dup\" path=\"1\"/><Image id=\"dup\" path=\"2\"/></R>");
    EXPECT_STREQ(manager.GetImagePath(L"dup"), L"1");
    Load(L"<R><Image id=\"dup\" path=\"3\"/></R>");
    EXPECT_STREQ(manager.GetImagePath(L"dup"), L"1");
}

TEST_F(ResourceIndexTest, TheFirstPathIsTheFirstInDocumentOrder)
{
    Load(L"<R><Group><Image id=\"order\" path=\"inside\"/></Group>"
         L"<Image id=\"order\" path=\"after\"/></R>");
    EXPECT_STREQ(manager.GetImagePath(L"order"), L"inside");
}

TEST_F(ResourceIndexTest, AnElementWithChildrenOnlyContains)
{
    Load(L"<R><Image id=\"box\" path=\"box.png\"><Image id=\"leaf\" "
         L"path=\"leaf.png\"/></Image></R>");
    EXPECT_EQ(manager.GetImagePath(L"box"), nullptr);
    EXPECT_STREQ(manager.GetImagePath(L"leaf"), L"leaf.png");
}

TEST_F(ResourceIndexTest, MissingAttributesAreTakenOverFromAnEarlierSiblingOfEitherKind)
{
    Load(L"<R><Image id=\"i\" path=\"shared\"/><Xml id=\"x\"/><Image path=\"never\"/>"
         L"<Xml path=\"fresh\"/></R>");
    EXPECT_STREQ(manager.GetImagePath(L"i"), L"shared");
    EXPECT_STREQ(manager.GetXmlPath(L"x"), L"shared");
    EXPECT_STREQ(manager.GetImagePath(L"x"), L"never");
}

TEST_F(ResourceIndexTest, NothingIsTakenOverFromAnotherLevel)
{
    Load(L"<R><Image id=\"outer\" path=\"outer.png\"/><Group><Image id=\"inner\"/></Group>"
         L"<Image id=\"after\"/></R>");
    EXPECT_EQ(manager.GetImagePath(L"inner"), nullptr);
    EXPECT_STREQ(manager.GetImagePath(L"after"), L"outer.png");
}

TEST_F(ResourceIndexTest, LeavesOfOtherNamesAreIgnored)
{
    Load(L"<R><Font id=\"f\" path=\"f.ttf\"/><Image id=\"i\"/></R>");
    EXPECT_EQ(manager.GetImagePath(L"f"), nullptr);
    EXPECT_EQ(manager.GetImagePath(L"i"), nullptr);
}

TEST_F(ResourceIndexTest, NestingOfAnyDepthIsHarmless)
{
    std::wstring index;
    constexpr int kDepth = 100'000;
    for (int i = 0; i < kDepth; ++i)
        index += L"<G>";
    index += L"<Image id=\"bottom\" path=\"b.png\"/>";
    for (int i = 0; i < kDepth; ++i)
        index += L"</G>";
    if (Load(index.c_str()))
        EXPECT_STREQ(manager.GetImagePath(L"bottom"), L"b.png");
    else
        EXPECT_EQ(manager.GetImagePath(L"bottom"), nullptr);
}

// What was asked of the module, and how it answers.
struct ModuleCalls {
    HMODULE module = nullptr;
    std::wstring type;
    int id = 0;
    bool finds = true;
    bool loads = true;
    std::string bytes = "<R><Image id=\"res\" path=\"res.png\"/></R>";
    std::vector<HGLOBAL> freed;
};

// Resources of the module are replaced call by call, so that every handle is known.
class ResourceIndexModuleTest : public ResourceIndexTest {
protected:
    ResourceIndexModuleTest()
    {
        calls = ModuleCalls{};
        CPaintManagerUI::SetResourceDll(Module());
    }

    static HINSTANCE Module() { return reinterpret_cast<HINSTANCE>(0x4000); }
    static HRSRC Found() { return reinterpret_cast<HRSRC>(0x5000); }
    static HGLOBAL Loaded() { return reinterpret_cast<HGLOBAL>(0x6000); }

    static inline ModuleCalls calls;

    static HRSRC WINAPI Find(HMODULE module, LPCWSTR name, LPCWSTR type)
    {
        calls.module = module;
        calls.id = static_cast<int>(reinterpret_cast<INT_PTR>(name));
        calls.type = type;
        return calls.finds ? Found() : nullptr;
    }
    static HGLOBAL WINAPI LoadIt(HMODULE, HRSRC found)
    {
        return calls.loads && found == Found() ? Loaded() : nullptr;
    }
    static DWORD WINAPI Size(HMODULE, HRSRC) { return static_cast<DWORD>(calls.bytes.size()); }
    static LPVOID WINAPI Lock(HGLOBAL loaded)
    {
        return loaded == Loaded() ? calls.bytes.data() : nullptr;
    }
    static BOOL WINAPI Free(HGLOBAL resource)
    {
        calls.freed.push_back(resource);
        return FALSE;
    }

    int LoadFromModule() { return manager.LoadResource(STRINGorID(101u), L"INDEX"); }

    ImportHook find{L"Quillet.dll", "KERNEL32.dll", "FindResourceW", &Find};
    ImportHook load{L"Quillet.dll", "KERNEL32.dll", "LoadResource", &LoadIt};
    ImportHook size{L"Quillet.dll", "KERNEL32.dll", "SizeofResource", &Size};
    ImportHook lock{L"Quillet.dll", "KERNEL32.dll", "LockResource", &Lock};
    ImportHook free{L"Quillet.dll", "KERNEL32.dll", "FreeResource", &Free};
};

TEST_F(ResourceIndexModuleTest, ANumberIsAResourceOfTheToolkitsModule)
{
    EXPECT_EQ(LoadFromModule(), 1);
    EXPECT_EQ(calls.module, Module());
    EXPECT_EQ(calls.id, 101);
    EXPECT_EQ(calls.type, L"INDEX");
    EXPECT_STREQ(manager.GetImagePath(L"res"), L"res.png");
}

TEST_F(ResourceIndexModuleTest, SuccessFreesTheHandleOfTheSearch)
{
    LoadFromModule();
    EXPECT_EQ(calls.freed, (std::vector<HGLOBAL>{reinterpret_cast<HGLOBAL>(Found())}));
}

TEST_F(ResourceIndexModuleTest, AFailedLoadFreesTheHandleOfTheSearch)
{
    calls.loads = false;
    EXPECT_EQ(LoadFromModule(), 0);
    EXPECT_EQ(calls.freed, (std::vector<HGLOBAL>{reinterpret_cast<HGLOBAL>(Found())}));
}

TEST_F(ResourceIndexModuleTest, AFailedParseFreesNothing)
{
    calls.bytes = "<R><Image";
    EXPECT_EQ(LoadFromModule(), 0);
    EXPECT_TRUE(calls.freed.empty());
}

TEST_F(ResourceIndexModuleTest, AFailedSearchFreesNothing)
{
    calls.finds = false;
    EXPECT_EQ(LoadFromModule(), 0);
    EXPECT_TRUE(calls.freed.empty());
}

} // namespace
} // namespace test
