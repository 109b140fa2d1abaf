#include "docs/tool/Classes.h"
#include "tests/docs/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>

namespace {

using docs::ClassAttributes;
using testing::Contains;

std::map<std::string, ClassAttributes> ClassesByName()
{
    std::map<std::string, ClassAttributes> classes;
    for (auto& each : docs::AllClasses())
        classes.emplace(each.name, each);
    return classes;
}

// The sources of both libraries in one text.
std::string Sources()
{
    std::string text;
    for (const char* folder : {"duilib", "quillet"}) {
        for (const auto& file : test_docs::FilesIn(folder, ".cpp"))
            text += test_docs::Read(file);
    }
    return text;
}

std::vector<std::string> AllMatches(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator i(text.begin(), text.end(), expression), end; i != end; ++i)
        found.push_back((*i)[1]);
    return found;
}

} // namespace

TEST(DocumentedClassesTest, EveryClassThatTakesAttributesTellsThem)
{
    const auto classes = ClassesByName();
    const auto defined = AllMatches(Sources(), R"(\n\w+ (C\w+UI)::SetAttribute\(LPCTSTR)");
    EXPECT_GT(defined.size(), 10u);
    for (const auto& name : defined) {
        const auto found = classes.find(name);
        ASSERT_TRUE(found != classes.end()) << name << " is not listed in docs/tool/Classes.cpp";
        EXPECT_FALSE(found->second.own.empty()) << name << " has no table";
    }
}

TEST(DocumentedClassesTest, EveryTableBelongsToAListedClass)
{
    const auto tables = AllMatches(Sources(), R"(=\s+(MakeAttributeTable)<)");
    const auto classes = docs::AllClasses();
    const auto withTable =
        std::ranges::count_if(classes, [](const auto& each) { return !each.own.empty(); });
    EXPECT_EQ(static_cast<std::size_t>(withTable), tables.size());
}

TEST(DocumentedClassesTest, EveryBaseIsListed)
{
    const auto classes = ClassesByName();
    for (const auto& [name, each] : classes) {
        if (!each.base.empty()) {
            EXPECT_TRUE(classes.contains(each.base)) << name << " is based on " << each.base;
        }
    }
}

TEST(DocumentedClassesTest, ATableIsToldWithItsKindsAndItsBase)
{
    const auto classes = ClassesByName();
    const auto attribute = [](const char* name, const char* value) {
        return testing::AllOf(testing::Field(&docs::Attribute::name, name),
                              testing::Field(&docs::Attribute::value, value));
    };
    const auto& label = classes.at("CLabelUI");
    EXPECT_EQ(label.base, "CControlUI");
    EXPECT_THAT(label.own, Contains(attribute("align", "choice")));
    EXPECT_THAT(label.own, Contains(attribute("font", "number")));
    EXPECT_THAT(label.own, Contains(attribute("showhtml", "boolean")));
    EXPECT_THAT(label.own, Contains(attribute("textcolor", "colour")));
    EXPECT_THAT(label.own, Contains(attribute("textpadding", "rectangle")));

    EXPECT_EQ(classes.at("CControlUI").base, "");
    EXPECT_THAT(classes.at("CControlUI").own, Contains(attribute("borderround", "size")));
    EXPECT_THAT(classes.at("CButtonUI").own, Contains(attribute("normalimage", "image")));
    EXPECT_THAT(classes.at("CPaintManagerUI").own, Contains(attribute("caption", "rectangle")));
}

TEST(DocumentedClassesTest, AClassWithoutTableTellsThatOfItsBase)
{
    const auto classes = ClassesByName();
    EXPECT_TRUE(classes.at("CTextUI").own.empty());
    EXPECT_EQ(classes.at("CTextUI").base, "CLabelUI");
}

TEST(DocumentedClassesTest, AClassOfTheLibraryTellsThoseOfTheToolkitAsWell)
{
    const auto button = ClassesByName().at("CRoundedRectButtonUI");
    EXPECT_EQ(button.base, "CButtonUI");
    EXPECT_THAT(button.own, Contains(testing::Field(&docs::Attribute::name, "roundwidth")));
}
