#include "tests/docs/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <string_view>

namespace {

// Code has brackets before parentheses as well.
std::string WithoutCode(std::string page)
{
    constexpr std::string_view kFence = "```";
    for (auto begin = page.find(kFence); begin != std::string::npos; begin = page.find(kFence)) {
        const auto end = page.find(kFence, begin + kFence.size());
        page.erase(begin, end == std::string::npos ? end : end + kFence.size() - begin);
    }
    return page;
}

// What stands between the parentheses of links, without the part behind '#'.
std::vector<std::string> LinksIn(const std::string& markdown)
{
    const std::string page = WithoutCode(markdown);
    static const std::regex kLink(R"(\]\(([^)#]+)(#[^)]*)?\))");
    std::vector<std::string> links;
    for (std::sregex_iterator i(page.begin(), page.end(), kLink), end; i != end; ++i)
        links.push_back((*i)[1]);
    return links;
}

const std::string& Index()
{
    static const std::string index = test_docs::Read(test_docs::FileAt("docs/controls/README.md"));
    return index;
}

} // namespace

TEST(DocumentationPagesTest, EveryLinkLeadsToAFile)
{
    auto files = test_docs::FilesIn("docs", ".md");
    files.push_back(test_docs::FileAt("README.md"));
    files.push_back(test_docs::FileAt("CONTRIBUTING.md"));
    int links = 0;
    for (const auto& file : files) {
        for (const auto& link : LinksIn(test_docs::Read(file))) {
            if (link.find("://") != std::string::npos)
                continue;
            EXPECT_TRUE(std::filesystem::exists(file.parent_path() / link)) << file << ": " << link;
            ++links;
        }
    }
    EXPECT_GT(links, 30);
}

TEST(DocumentationPagesTest, TheIndexLeadsToEveryPage)
{
    const auto links = LinksIn(Index());
    for (const auto& file : test_docs::FilesIn("docs/controls", ".md")) {
        const auto name = file.filename().string();
        if (name != "README.md") {
            EXPECT_TRUE(std::ranges::find(links, name) != links.end())
                << "docs/controls/README.md does not lead to " << name;
        }
    }
}

TEST(DocumentationPagesTest, TheIndexNamesEveryElementOfTheFactory)
{
    const auto source = test_docs::Read(test_docs::FileAt("duilib/Core/ControlFactory.cpp"));
    static const std::regex kClass(R"re(\{L"C(\w+)UI", &)re");
    int elements = 0;
    for (std::sregex_iterator i(source.begin(), source.end(), kClass), end; i != end; ++i) {
        const std::string element = (*i)[1];
        EXPECT_TRUE(Index().find("`" + element + "`") != std::string::npos)
            << "docs/controls/README.md does not name " << element;
        ++elements;
    }
    EXPECT_GT(elements, 15);
}
