#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

// An application that answers from a table and notes what it was asked.
class Application : public IQueryControlTextEx {
public:
    const wchar_t* QueryControlText(const wchar_t* id, const wchar_t* type) override
    {
        asked.emplace_back(id);
        types.emplace_back(type ? std::optional<std::wstring>(type) : std::nullopt);
        const auto found = answers.find(id);
        return found != answers.end() ? found->second.c_str() : nullptr;
    }

    std::map<std::wstring, std::wstring> answers;
    std::vector<std::wstring> asked;
    std::vector<std::optional<std::wstring>> types;
};

class LanguageTest : public testing::Test {
protected:
    ~LanguageTest() override
    {
        manager.SetTextQueryInterface(nullptr);
        manager.ResetTextMap();
        CPaintManagerUI::SetResourcePath(L"");
    }

    std::wstring Text(const wchar_t* id, const wchar_t* type = nullptr)
    {
        return manager.GetText(id, type).GetData();
    }

    CResourceManagerEx& manager = *CResourceManagerEx::GetInstance();
};

TEST_F(LanguageTest, LoadsXmlText)
{
    EXPECT_EQ(manager.LoadLanguage(L"<Language><Text id=\"ok\" value=\"OK\"/></Language>"), 1);
    EXPECT_EQ(Text(L"ok"), L"OK");
}

TEST_F(LanguageTest, LoadsAUtf8FileOfTheResources)
{
    const TempFolder folder;
    folder.Write(
        L"zh-CN.xml",
        std::string_view(
            "<Language><Text id=\"hello\" value=\"\xE4\xBD\xA0\xE5\xA5\xBD\"/></Language>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_EQ(manager.LoadLanguage(L"zh-CN.xml"), 1);
    EXPECT_EQ(Text(L"hello"), L"\u4F60\u597D");
}

TEST_F(LanguageTest, AnswersZeroForWhatCannotBeLoaded)
{
    const TempFolder folder;
    folder.Write(L"empty.xml", std::string_view());
    folder.Write(L"binary.xml", std::string_view("\x7F\x45\x4C\x46\x02\x01\x01\x00\xFF", 9));
    folder.Write(L"truncated.xml", std::string_view("<Language><Text id=\"a\" value=\"b\""));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    for (const wchar_t* const source :
         {L"missing.xml", L"empty.xml", L"binary.xml", L"truncated.xml", L"", L"<Language>"}) {
        EXPECT_EQ(manager.LoadLanguage(source), 0) << source;
    }
    EXPECT_EQ(manager.LoadLanguage(nullptr), 0);
}

TEST_F(LanguageTest, AFailedLoadLeavesTheTexts)
{
    manager.LoadLanguage(L"<L><Text id=\"keep\" value=\"kept\"/></L>");
    EXPECT_EQ(manager.LoadLanguage(L"<L><Text id=\"keep\" value=\"lost\"/>"), 0);
    EXPECT_EQ(Text(L"keep"), L"kept");
}

TEST_F(LanguageTest, AnUnusableFileIsRefusedWithAReadableReason)
{
    struct Unusable {
        std::string bytes;
        const wchar_t* place;
    };
    const Unusable files[] = {
        {"", L"broken.xml"},
        {std::string("\0\x01\x02\xFF\xFE", 5), L"broken.xml"},
        {"<Language>\n  <Text id=\"a\" val", L"broken.xml(2,"},
    };
    manager.LoadLanguage(L"<L><Text id=\"keep\" value=\"kept\"/></L>");
    const TempFolder folder;
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    for (const auto& file : files) {
        folder.Write(L"broken.xml", file.bytes);
        CPaintManagerUI::SetLastErrorText(L"");
        EXPECT_EQ(manager.LoadLanguage(L"broken.xml"), 0);
        const std::wstring reason = CPaintManagerUI::GetLastErrorText().GetData();
        EXPECT_EQ(reason.substr(0, std::wstring(file.place).size()), file.place);
        EXPECT_GT(reason.size(), std::wstring(file.place).size() + 2);
    }
    EXPECT_EQ(Text(L"keep"), L"kept");
}

TEST_F(LanguageTest, NamesOfElementsAndAttributesHaveNoCase)
{
    EXPECT_EQ(manager.LoadLanguage(L"<anything><tExT ID=\"case\" VaLuE=\"any\"/></anything>"), 1);
    EXPECT_EQ(Text(L"case"), L"any");
    EXPECT_EQ(Text(L"CASE"), L"CASE");
}

TEST_F(LanguageTest, IgnoresOtherElementsAttributesAndDeeperLevels)
{
    manager.LoadLanguage(L"<L><Other id=\"other\" value=\"no\"/>"
                         L"<Group><Text id=\"nested\" value=\"no\"/></Group>"
                         L"<Text comment=\"c\" id=\"top\" value=\"yes\"/><Text/></L>");
    EXPECT_EQ(Text(L"other"), L"other");
    EXPECT_EQ(Text(L"nested"), L"nested");
    EXPECT_EQ(Text(L"top"), L"yes");
}

TEST_F(LanguageTest, AMissingIdIsTakenOverFromAnEarlierText)
{
    manager.LoadLanguage(L"<L><Text id=\"carry\" value=\"first\"/><Text value=\"second\"/></L>");
    EXPECT_EQ(Text(L"carry"), L"second");
}

TEST_F(LanguageTest, AMissingValueIsTakenOverFromAnEarlierText)
{
    manager.LoadLanguage(L"<L><Text id=\"one\" value=\"shared\"/><Text id=\"two\"/></L>");
    EXPECT_EQ(Text(L"two"), L"shared");
}

TEST_F(LanguageTest, IdAndValueMayComeFromTwoTexts)
{
    manager.LoadLanguage(L"<L><Text value=\"early\"/><Text id=\"late\"/></L>");
    EXPECT_EQ(Text(L"late"), L"early");
}

TEST_F(LanguageTest, NothingIsTakenOverFromAnotherFile)
{
    manager.LoadLanguage(L"<L><Text id=\"file\" value=\"first\"/></L>");
    manager.LoadLanguage(L"<L><Text value=\"second\"/></L>");
    EXPECT_EQ(Text(L"file"), L"first");
}

TEST_F(LanguageTest, ALaterTextReplacesAnEarlierOne)
{
    manager.LoadLanguage(L"<L><Text id=\"dup\" value=\"1\"/><Text id=\"dup\" value=\"2\"/></L>");
    EXPECT_EQ(Text(L"dup"), L"2");
    manager.LoadLanguage(L"<L><Text id=\"dup\" value=\"3\"/></L>");
    EXPECT_EQ(Text(L"dup"), L"3");
}

TEST_F(LanguageTest, ALaterAttributeOfTheSameNameCounts)
{
    manager.LoadLanguage(L"<L><Text id=\"x\" ID=\"attribute\" value=\"1\" Value=\"2\"/></L>");
    EXPECT_EQ(Text(L"attribute"), L"2");
}

TEST_F(LanguageTest, ANullIdHasTheEmptyText)
{
    Application application;
    manager.SetTextQueryInterface(&application);
    EXPECT_EQ(Text(nullptr, L"any"), L"");
    EXPECT_TRUE(application.asked.empty());
}

TEST_F(LanguageTest, AnUnknownIdIsItsOwnTextAndIsNotRemembered)
{
    EXPECT_EQ(Text(L"unknown.id"), L"unknown.id");

    Application application;
    application.answers[L"unknown.id"] = L"known now";
    manager.SetTextQueryInterface(&application);
    EXPECT_EQ(Text(L"unknown.id"), L"known now");
}

TEST_F(LanguageTest, TheApplicationIsAskedOnceAndItsAnswerRemembered)
{
    Application application;
    application.answers[L"asked"] = L"answer";
    manager.SetTextQueryInterface(&application);
    EXPECT_EQ(Text(L"asked", L"button"), L"answer");
    application.answers[L"asked"] = L"another";
    EXPECT_EQ(Text(L"asked", L"button"), L"answer");
    EXPECT_EQ(application.asked, (std::vector<std::wstring>{L"asked"}));
    EXPECT_EQ(application.types.front(), std::optional<std::wstring>(L"button"));

    manager.SetTextQueryInterface(nullptr);
    EXPECT_EQ(Text(L"asked"), L"answer");
}

TEST_F(LanguageTest, AnApplicationWithoutAnAnswerGivesTheEmptyText)
{
    Application application;
    manager.SetTextQueryInterface(&application);
    EXPECT_EQ(Text(L"no.answer"), L"");
    EXPECT_EQ(Text(L"no.answer"), L"");
    EXPECT_EQ(application.asked.size(), 1u);
}

TEST_F(LanguageTest, LoadedTextsAreNotAskedFor)
{
    Application application;
    manager.SetTextQueryInterface(&application);
    manager.LoadLanguage(L"<L><Text id=\"loaded\" value=\"text\"/></L>");
    EXPECT_EQ(Text(L"loaded"), L"text");
    EXPECT_TRUE(application.asked.empty());
}

TEST_F(LanguageTest, ReloadingAsksForEveryIdOnceWithoutAType)
{
    manager.LoadLanguage(L"<L><Text id=\"r1\" value=\"1\"/><Text id=\"r2\" value=\"2\"/>"
                         L"<Text id=\"r3\" value=\"3\"/></L>");
    Application application;
    application.answers = {{L"r1", L"one"}, {L"r2", L"two"}};
    manager.SetTextQueryInterface(&application);

    manager.ReloadText();

    for (const wchar_t* const id : {L"r1", L"r2", L"r3"})
        EXPECT_EQ(std::count(application.asked.begin(), application.asked.end(), id), 1) << id;
    for (const auto& type : application.types)
        EXPECT_EQ(type, std::nullopt);
    EXPECT_EQ(Text(L"r1"), L"one");
    EXPECT_EQ(Text(L"r2"), L"two");
}

TEST_F(LanguageTest, ReloadingWithoutAnAnswerKeepsTheOldText)
{
    manager.LoadLanguage(L"<L><Text id=\"old\" value=\"kept\"/></L>");
    Application application;
    manager.SetTextQueryInterface(&application);
    manager.ReloadText();
    EXPECT_FALSE(application.asked.empty());
    EXPECT_EQ(Text(L"old"), L"kept");
}

TEST_F(LanguageTest, ReloadingReachesHundredsOfIds)
{
    std::wstring file = L"<L>";
    for (int i = 0; i < 500; ++i)
        file += L"<Text id=\"many" + std::to_wstring(i) + L"\" value=\"old\"/>";
    manager.LoadLanguage((file + L"</L>").c_str());
    Application application;
    for (int i = 0; i < 500; ++i)
        application.answers[L"many" + std::to_wstring(i)] = L"new" + std::to_wstring(i);
    manager.SetTextQueryInterface(&application);

    manager.ReloadText();

    for (int i = 0; i < 500; ++i)
        EXPECT_EQ(Text((L"many" + std::to_wstring(i)).c_str()), L"new" + std::to_wstring(i));
}

TEST_F(LanguageTest, ReloadingWithoutAnApplicationDoesNothing)
{
    manager.LoadLanguage(L"<L><Text id=\"alone\" value=\"text\"/></L>");
    manager.ReloadText();
    EXPECT_EQ(Text(L"alone"), L"text");
}

TEST_F(LanguageTest, AnApplicationMayLoadTextsWhileItIsAsked)
{
    struct Loader : IQueryControlTextEx {
        const wchar_t* QueryControlText(const wchar_t*, const wchar_t*) override
        {
            CResourceManagerEx::GetInstance()->LoadLanguage(
                L"<L><Text id=\"reentered\" value=\"from inside\"/></L>");
            return L"outer";
        }
    } loader;
    manager.SetTextQueryInterface(&loader);
    EXPECT_EQ(Text(L"reentered"), L"outer");
    EXPECT_EQ(Text(L"reentered"), L"outer");
}

TEST_F(LanguageTest, TheResultIsACopy)
{
    manager.LoadLanguage(L"<L><Text id=\"value\" value=\"before\"/></L>");
    const CDuiString text = manager.GetText(L"value");
    manager.LoadLanguage(L"<L><Text id=\"value\" value=\"after\"/></L>");
    EXPECT_STREQ(text, L"before");
}

} // namespace
} // namespace test
