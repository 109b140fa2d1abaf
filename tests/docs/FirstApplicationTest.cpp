#include "tests/docs/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr std::string_view kFence = "```";
constexpr std::string_view kFolder = "](first-application/";

struct Quotation {
    std::string file; // that the last link before it leads to
    std::string text;
};

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The code blocks of a guide.
std::vector<Quotation> QuotationsIn(const std::string& guide)
{
    std::vector<Quotation> quotations;
    std::string file;
    bool inside = false;
    for (const auto& line : Lines(guide)) {
        if (line.starts_with(kFence)) {
            inside = !inside;
            if (inside)
                quotations.push_back({file, {}});
        } else if (inside) {
            quotations.back().text += line + '\n';
        } else if (const auto link = line.find(kFolder); link != std::string::npos) {
            const auto begin = link + kFolder.size();
            file = line.substr(begin, line.find(')', begin) - begin);
        }
    }
    return quotations;
}

// Whether the text is a run of whole lines of a file.
bool IsPassage(const std::string& text, const std::string& file)
{
    return ("\n" + file).find("\n" + text) != std::string::npos;
}

std::string WithoutEmptyLines(const std::string& text)
{
    std::string rest;
    for (const auto& line : Lines(text)) {
        if (!line.empty())
            rest += line + '\n';
    }
    return rest;
}

const std::filesystem::path& ApplicationFolder()
{
    static const auto folder = test_docs::FileAt("docs/guides/first-application");
    return folder;
}

std::vector<Quotation> QuotationsOfTheGuide()
{
    return QuotationsIn(test_docs::Read(test_docs::FileAt("docs/guides/first-application.md")));
}

MATCHER_P2(Quotes, file, text, "")
{
    return arg.file == file && arg.text == text;
}

} // namespace

TEST(FirstApplicationGuideTest, EveryCodeBlockIsAPassageOfTheFileBeforeIt)
{
    const auto quotations = QuotationsOfTheGuide();
    EXPECT_GT(quotations.size(), 10u);
    for (const auto& [file, text] : quotations) {
        EXPECT_FALSE(text.empty()) << file;
        EXPECT_TRUE(IsPassage(text, test_docs::Read(ApplicationFolder() / file))) << file << ":\n"
                                                                                  << text;
    }
}

TEST(FirstApplicationGuideTest, TheBlocksOfAFileAreTheWholeFile)
{
    std::map<std::string, std::string> quoted;
    for (const auto& [file, text] : QuotationsOfTheGuide())
        quoted[file] += WithoutEmptyLines(text);

    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ApplicationFolder())) {
        if (!entry.is_regular_file())
            continue;
        const auto file = entry.path().lexically_relative(ApplicationFolder()).generic_string();
        EXPECT_EQ(quoted[file], WithoutEmptyLines(test_docs::Read(entry.path()))) << file;
        ++files;
    }
    EXPECT_GT(files, 10);
}

TEST(FirstApplicationGuideTest, BlocksAreFoundWithTheFileBeforeThem)
{
    const auto quotations = QuotationsIn("Text.\n"
                                         "[a.cpp](first-application/a.cpp) begins:\n"
                                         "\n"
                                         "```cpp\nint a;\n\nint b;\n```\n"
                                         "More, and [another](other/c.md).\n"
                                         "```cpp\nint c;\n```\n"
                                         "    indented\n"
                                         "[d](first-application/skin/d.xml)\n"
                                         "```xml\n<D/>\n```\n");
    EXPECT_THAT(quotations,
                ElementsAre(Quotes("a.cpp", "int a;\n\nint b;\n"), Quotes("a.cpp", "int c;\n"),
                            Quotes("skin/d.xml", "<D/>\n")));
}

TEST(FirstApplicationGuideTest, APassageIsWholeLinesOfTheFileAsTheyStand)
{
    const std::string file = "int a;\n    int b;\nint c;\n";
    for (const char* text :
         {"int a;\n", "int a;\n    int b;\n", "    int b;\nint c;\n", "int c;\n"})
        EXPECT_TRUE(IsPassage(text, file)) << text;
    for (const char* text : {"int b;\n", "int a;\nint b;\n", "int a;\nint c;\n", "nt c;\n"})
        EXPECT_FALSE(IsPassage(text, file)) << text;
}
