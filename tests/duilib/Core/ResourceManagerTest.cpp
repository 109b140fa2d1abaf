#include "support/TempFolder.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <thread>

using DuiLib::CDuiString;
using DuiLib::CMarkup;
using DuiLib::CPaintManagerUI;
using DuiLib::CResourceManager;
using DuiLib::STRINGorID;

namespace {

// Answers from a table and remembers what it was asked.
class Answers : public DuiLib::IQueryControlText {
public:
    LPCTSTR QueryControlText(LPCTSTR id, LPCTSTR type) override
    {
        asked += std::wstring(id) + L"/" + (type != nullptr ? type : L"-") + L" ";
        const auto found = texts.find(id);
        return found != texts.end() ? found->second.c_str() : nullptr;
    }

    std::map<std::wstring, std::wstring> texts;
    std::wstring asked;
};

// A fresh object for every test.
class ResourceManagerTest : public testing::Test {
protected:
    ~ResourceManagerTest() override { CResourceManager::GetInstance()->Release(); }

    std::wstring Text(const wchar_t* id, const wchar_t* type = nullptr)
    {
        return std::wstring(manager.GetText(id, type));
    }

    CResourceManager& manager = *CResourceManager::GetInstance();
};

} // namespace

TEST_F(ResourceManagerTest, OneObjectServesTheProcess)
{
    EXPECT_EQ(CResourceManager::GetInstance(), &manager);
}

TEST_F(ResourceManagerTest, ReleaseForgetsEverything)
{
    manager.SetLanguage(L"de");
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"a\" value=\"b\"/></L>"));
    manager.Release();
    EXPECT_STREQ(CResourceManager::GetInstance()->GetLanguage(), L"");
    EXPECT_STREQ(CResourceManager::GetInstance()->GetText(L"a"), L"a");
}

TEST_F(ResourceManagerTest, PathsAreFoundById)
{
    ASSERT_TRUE(manager.LoadResource(
        L"<Index><Image id=\"logo\" path=\"img/logo.png\"/><Xml id=\"main\" path=\"main.xml\"/>"
        L"</Index>"));
    EXPECT_STREQ(manager.GetImagePath(L"logo"), L"img/logo.png");
    EXPECT_STREQ(manager.GetXmlPath(L"main"), L"main.xml");
    EXPECT_EQ(manager.GetImagePath(L"main"), nullptr);
    EXPECT_EQ(manager.GetXmlPath(L"logo"), nullptr);
}

TEST_F(ResourceManagerTest, UnknownAndNullIdsHaveNoPath)
{
    EXPECT_EQ(manager.GetImagePath(L"none"), nullptr);
    EXPECT_EQ(manager.GetXmlPath(L"none"), nullptr);
    EXPECT_EQ(manager.GetImagePath(nullptr), nullptr);
    EXPECT_EQ(manager.GetXmlPath(nullptr), nullptr);
}

TEST_F(ResourceManagerTest, IdsAreComparedExactly)
{
    ASSERT_TRUE(manager.LoadResource(L"<I><Image id=\"Logo\" path=\"a.png\"/></I>"));
    EXPECT_EQ(manager.GetImagePath(L"logo"), nullptr);
}

TEST_F(ResourceManagerTest, LeavesCountAtAnyDepthInAnyCase)
{
    ASSERT_TRUE(manager.LoadResource(
        L"<I><Group><More><IMAGE ID=\"a\" Path=\"a.png\"/></More><xml id=\"b\" path=\"b.xml\"/>"
        L"</Group><Image id=\"c\" path=\"c.png\"/></I>"));
    EXPECT_STREQ(manager.GetImagePath(L"a"), L"a.png");
    EXPECT_STREQ(manager.GetXmlPath(L"b"), L"b.xml");
    EXPECT_STREQ(manager.GetImagePath(L"c"), L"c.png");
}

TEST_F(ResourceManagerTest, ElementsWithChildrenAreOnlyGroups)
{
    ASSERT_TRUE(manager.LoadResource(
        L"<I><Image id=\"outer\" path=\"o.png\"><Image id=\"inner\" path=\"i.png\"/></Image></I>"));
    EXPECT_EQ(manager.GetImagePath(L"outer"), nullptr);
    EXPECT_STREQ(manager.GetImagePath(L"inner"), L"i.png");
}

TEST_F(ResourceManagerTest, LaterPathsReplaceEarlierOnes)
{
    ASSERT_TRUE(manager.LoadResource(L"<I><Image id=\"a\" path=\"1.png\"/></I>"));
    ASSERT_TRUE(manager.LoadResource(L"<I><Image id=\"a\" path=\"2.png\"/></I>"));
    EXPECT_STREQ(manager.GetImagePath(L"a"), L"2.png");
}

TEST_F(ResourceManagerTest, EntriesWithoutIdOrPathAreSkipped)
{
    ASSERT_TRUE(manager.LoadResource(L"<I><Image path=\"1.png\"/><Image id=\"a\"/></I>"));
    EXPECT_EQ(manager.GetImagePath(L""), nullptr);
    EXPECT_EQ(manager.GetImagePath(L"a"), nullptr);
}

TEST_F(ResourceManagerTest, HundredThousandNestedGroupsAreWalked)
{
    std::wstring text;
    for (int i = 0; i < 100'000; ++i)
        text += L"<g>";
    text += L"<Image id=\"deep\" path=\"d.png\"/>";
    for (int i = 0; i < 100'000; ++i)
        text += L"</g>";
    ASSERT_TRUE(manager.LoadResource(text.c_str()));
    EXPECT_STREQ(manager.GetImagePath(L"deep"), L"d.png");
}

TEST_F(ResourceManagerTest, IndexMayBeANodeAFileOrAResource)
{
    CMarkup markup(L"<I><Image id=\"node\" path=\"n.png\"/></I>");
    EXPECT_TRUE(manager.LoadResource(markup.GetRoot()));
    EXPECT_STREQ(manager.GetImagePath(L"node"), L"n.png");

    test::TempFolder folder;
    folder.Write(L"index.xml", std::string_view("<I><Image id=\"file\" path=\"f.png\"/></I>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_TRUE(manager.LoadResource(L"index.xml"));
    EXPECT_STREQ(manager.GetImagePath(L"file"), L"f.png");

    EXPECT_TRUE(manager.LoadResource(STRINGorID(105u), L"XML"));
    EXPECT_STREQ(manager.GetImagePath(L"dot"), L"pictures/dot.png");
    EXPECT_STREQ(manager.GetXmlPath(L"page"), L"pages/page.xml");
}

TEST_F(ResourceManagerTest, IndexThatCannotBeReadIsFalse)
{
    EXPECT_FALSE(manager.LoadResource(L"<I>"));
    EXPECT_FALSE(manager.LoadResource(L"no-such-file.xml"));
    EXPECT_FALSE(manager.LoadResource(STRINGorID(999u), L"XML"));
    EXPECT_FALSE(manager.LoadResource(CMarkup().GetRoot()));
}

TEST_F(ResourceManagerTest, ResetForgetsPathsButNotTexts)
{
    ASSERT_TRUE(manager.LoadResource(
        L"<I><Image id=\"a\" path=\"1.png\"/><Xml id=\"b\" path=\"b.xml\"/></I>"));
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"a\" value=\"text\"/></L>"));
    manager.ResetResourceMap();
    EXPECT_EQ(manager.GetImagePath(L"a"), nullptr);
    EXPECT_EQ(manager.GetXmlPath(L"b"), nullptr);
    EXPECT_EQ(Text(L"a"), L"text");
}

TEST_F(ResourceManagerTest, SkinIsFoundByItsId)
{
    test::TempFolder folder;
    folder.Write(L"pages/p.xml", std::string_view("<Window><Label name=\"found\"/></Window>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    ASSERT_TRUE(manager.LoadResource(L"<I><Xml id=\"page\" path=\"pages/p.xml\"/></I>"));
    const std::unique_ptr<DuiLib::CControlUI> control(
        DuiLib::CDialogBuilder().Create(L"page", nullptr));
    ASSERT_NE(control, nullptr);
    EXPECT_STREQ(control->GetName(), L"found");
}

TEST_F(ResourceManagerTest, LanguageIsNeverNull)
{
    EXPECT_STREQ(manager.GetLanguage(), L"");
    manager.SetLanguage(L"zh-CN");
    EXPECT_STREQ(manager.GetLanguage(), L"zh-CN");
    manager.SetLanguage(nullptr);
    EXPECT_STREQ(manager.GetLanguage(), L"");
}

TEST_F(ResourceManagerTest, TextsAreFoundById)
{
    ASSERT_TRUE(manager.LoadLanguage(
        L"<Language><Text id=\"ok\" value=\"确定\"/><text ID=\"cancel\" VALUE=\"取消\"/>"
        L"<Other id=\"x\" value=\"y\"/></Language>"));
    EXPECT_EQ(Text(L"ok"), L"确定");
    EXPECT_EQ(Text(L"cancel"), L"取消");
    EXPECT_EQ(Text(L"x"), L"x");
}

TEST_F(ResourceManagerTest, LaterLanguagesReplaceEarlierTexts)
{
    ASSERT_TRUE(
        manager.LoadLanguage(L"<L><Text id=\"a\" value=\"1\"/><Text id=\"b\" value=\"1\"/></L>"));
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"a\" value=\"2\"/></L>"));
    EXPECT_EQ(Text(L"a"), L"2");
    EXPECT_EQ(Text(L"b"), L"1");
}

TEST_F(ResourceManagerTest, EmptyTextIsATextToo)
{
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"a\" value=\"\"/><Text id=\"b\"/></L>"));
    EXPECT_EQ(Text(L"a"), L"");
    EXPECT_EQ(Text(L"b"), L"b");
}

TEST_F(ResourceManagerTest, LanguageMayBeAFile)
{
    test::TempFolder folder;
    folder.Write(L"de.xml", std::string_view("<L><Text id=\"ok\" value=\"Gut\"/></L>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_TRUE(manager.LoadLanguage(L"de.xml"));
    EXPECT_EQ(Text(L"ok"), L"Gut");
    EXPECT_FALSE(manager.LoadLanguage(L"fr.xml"));
    EXPECT_FALSE(manager.LoadLanguage(L"<L>"));
    EXPECT_FALSE(manager.LoadLanguage(nullptr));
    EXPECT_EQ(Text(L"ok"), L"Gut");
}

TEST_F(ResourceManagerTest, UnknownTextIsItsIdAndNullIsEmpty)
{
    EXPECT_EQ(Text(L"unknown"), L"unknown");
    EXPECT_EQ(Text(nullptr), L"");
}

TEST_F(ResourceManagerTest, QueryIsAskedForUnknownTextsOnce)
{
    Answers answers;
    answers.texts = {{L"a", L"answer"}};
    manager.SetTextQueryInterface(&answers);
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"known\" value=\"text\"/></L>"));
    EXPECT_EQ(Text(L"known"), L"text");
    EXPECT_EQ(Text(L"a", L"button"), L"answer");
    EXPECT_EQ(Text(L"a", L"button"), L"answer");
    EXPECT_EQ(Text(L"b"), L"b");
    EXPECT_EQ(answers.asked, L"a/button b/- ");
    manager.SetTextQueryInterface(nullptr);
    EXPECT_EQ(Text(L"a"), L"answer");
}

TEST_F(ResourceManagerTest, ReloadAsksForEveryKnownTextAgain)
{
    Answers answers;
    answers.texts = {{L"a", L"1"}};
    manager.SetTextQueryInterface(&answers);
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"loaded\" value=\"text\"/></L>"));
    EXPECT_EQ(Text(L"a"), L"1");

    answers.texts = {{L"a", L"2"}};
    EXPECT_EQ(Text(L"a"), L"1");
    manager.ReloadText();
    EXPECT_EQ(Text(L"a"), L"2");
    EXPECT_EQ(Text(L"loaded"), L"text");

    manager.SetTextQueryInterface(nullptr);
    manager.ReloadText();
    EXPECT_EQ(Text(L"a"), L"2");
}

TEST_F(ResourceManagerTest, ResetForgetsTextsButNotPaths)
{
    ASSERT_TRUE(manager.LoadResource(L"<I><Image id=\"a\" path=\"1.png\"/></I>"));
    ASSERT_TRUE(manager.LoadLanguage(L"<L><Text id=\"a\" value=\"text\"/></L>"));
    manager.ResetTextMap();
    EXPECT_EQ(Text(L"a"), L"a");
    EXPECT_STREQ(manager.GetImagePath(L"a"), L"1.png");
}

TEST_F(ResourceManagerTest, PathsMayBeLookedUpFromAWorker)
{
    ASSERT_TRUE(manager.LoadResource(L"<I><Image id=\"a\" path=\"1.png\"/></I>"));
    int found = 0;
    std::thread worker([this, &found] {
        for (int i = 0; i < 1000; ++i)
            found += manager.GetImagePath(L"a") != nullptr ? 1 : 0;
    });
    for (int i = 0; i < 200; ++i) {
        const auto text = L"<I><Image id=\"n" + std::to_wstring(i) + L"\" path=\"x.png\"/></I>";
        EXPECT_TRUE(manager.LoadResource(text.c_str()));
    }
    worker.join();
    EXPECT_EQ(found, 1000);
}
