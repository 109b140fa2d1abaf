#include "docs/tool/AttributeTables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using docs::CheckTables;
using docs::ClassAttributes;
using docs::Page;
using docs::RewriteTables;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<ClassAttributes> kClasses{
    {"CControlUI", "", {{"name", "text"}}},
    {"CLabelUI", "CControlUI", {{"font", "number"}, {"Align", "choice"}}},
    {"CTextUI", "CLabelUI", {}},
};

const Page kControlPage{"Control.md", "<!-- attributes CControlUI -->\n"
                                      "| Attribute | Value | Effect |\n"
                                      "|---|---|---|\n"
                                      "| `name` | text | its name |\n"
                                      "<!-- end attributes -->\n"};

constexpr const char* kLabelTable = "<!-- attributes CLabelUI -->\n"
                                    "| Attribute | Value | Effect |\n"
                                    "|---|---|---|\n"
                                    "| `Align` | choice | `left` \\| `right` |\n"
                                    "| `font` | number | font of the text |\n"
                                    "\n"
                                    "Inherited: all attributes of [CControlUI](Control.md).\n"
                                    "<!-- end attributes -->\n";

const Page kLabelPage{"Label.md", std::string("# Label\n\n") + kLabelTable + "\nMore.\n"};

// The label's page with this between its marks.
Page LabelPage(const std::string& between)
{
    return {"Label.md", "<!-- attributes CLabelUI -->\n" + between + "<!-- end attributes -->\n"};
}

} // namespace

TEST(AttributePagesTest, PagesInStepStayAsTheyAre)
{
    const std::vector<Page> pages{kControlPage, kLabelPage};
    const auto [rewritten, complaints] = RewriteTables(kClasses, pages);
    EXPECT_THAT(complaints, IsEmpty());
    ASSERT_EQ(rewritten.size(), 2u);
    EXPECT_EQ(rewritten[0].text, kControlPage.text);
    EXPECT_EQ(rewritten[1].text, kLabelPage.text);
    EXPECT_THAT(CheckTables(kClasses, pages), IsEmpty());
}

TEST(AttributePagesTest, RowsAreSortedAndGetTheirValueAndKeepTheirEffect)
{
    const std::vector<Page> pages{kControlPage, LabelPage("a stray line\n"
                                                          "| `font` | text | font of the text |\n"
                                                          "| `Align` | | `left` \\| `right` |\n")};
    const auto [rewritten, complaints] = RewriteTables(kClasses, pages);
    EXPECT_THAT(complaints, IsEmpty());
    EXPECT_EQ(rewritten[1].text, kLabelTable);
}

TEST(AttributePagesTest, AWrongValueIsNamedByItsLine)
{
    Page page = kLabelPage;
    page.text.replace(page.text.find("number"), 6, "colour");
    EXPECT_THAT(CheckTables(kClasses, {kControlPage, page}),
                ElementsAre("Label.md: line 7 should be: | `font` | number | font of the text |"));
}

TEST(AttributePagesTest, ALineTooManyIsNamed)
{
    const std::vector<ClassAttributes> classes{{"CControlUI", "", {{"name", "text"}}}};
    Page page = kControlPage;
    page.text.insert(page.text.find("<!-- end"), "| | | |\n");
    EXPECT_THAT(CheckTables(classes, {page}),
                ElementsAre(HasSubstr("Control.md: line 5 should be: <!-- end attributes -->")));
}

TEST(AttributePagesTest, AnAttributeWithoutEffectIsWrittenAndComplainedOf)
{
    const auto [rewritten, complaints] = RewriteTables(
        kClasses, {kControlPage, LabelPage("| `font` | number | font of the text |\n")});
    EXPECT_THAT(rewritten[1].text, HasSubstr("| `Align` | choice | |\n| `font` | number | font"));
    EXPECT_THAT(complaints,
                ElementsAre("Label.md: CLabelUI: attribute \"Align\" has no effect text"));
}

TEST(AttributePagesTest, AnEmptyEffectIsNone)
{
    const auto complaints = CheckTables(
        kClasses, {kControlPage, LabelPage("| `Align` | choice | |\n"
                                           "| `font` | number | font of the text |\n")});
    EXPECT_THAT(complaints,
                ElementsAre("Label.md: CLabelUI: attribute \"Align\" has no effect text"));
}

TEST(AttributePagesTest, ARowWhoseAttributeIsGoneIsDroppedAndComplainedOf)
{
    Page page = kLabelPage;
    page.text.insert(page.text.find("| `font`"), "| `fnt` | number | another |\n");
    const auto [rewritten, complaints] = RewriteTables(kClasses, {kControlPage, page});
    EXPECT_EQ(rewritten[1].text, kLabelPage.text);
    EXPECT_THAT(complaints, ElementsAre("Label.md: CLabelUI: there is no attribute \"fnt\""));
    EXPECT_EQ(CheckTables(kClasses, {kControlPage, page}), complaints);
}

TEST(AttributePagesTest, RowsThatCannotBeReadAreComplainedOf)
{
    for (const char* row :
         {"| font | number | no backticks |\n", "| `font`, `Align` | text | two |\n",
          "| `font` | number | three | four |\n"}) {
        SCOPED_TRACE(row);
        const auto complaints = CheckTables(kClasses, {kControlPage, LabelPage(row)});
        ASSERT_FALSE(complaints.empty());
        EXPECT_THAT(complaints[0],
                    HasSubstr("Label.md: CLabelUI: not `name`, value and effect: |"));
    }
}

TEST(AttributePagesTest, TwoRowsOfOneAttributeAreComplainedOf)
{
    Page page = kLabelPage;
    page.text.insert(page.text.find("| `font`"), "| `font` | number | another |\n");
    EXPECT_THAT(CheckTables(kClasses, {kControlPage, page}),
                ElementsAre("Label.md: CLabelUI: a second row of \"font\""));
}

TEST(AttributePagesTest, AnUnknownClassIsComplainedOfAndItsTableKept)
{
    const Page page{"Lable.md",
                    "<!-- attributes CLableUI -->\n| kept |\n<!-- end attributes -->\n"};
    const auto [rewritten, complaints] = RewriteTables(kClasses, {kControlPage, kLabelPage, page});
    EXPECT_EQ(rewritten[2].text, page.text);
    EXPECT_THAT(complaints, ElementsAre("Lable.md: CLableUI: there is no such class"));
}

TEST(AttributePagesTest, AClassWithAttributesNeedsAPage)
{
    EXPECT_THAT(CheckTables(kClasses, {kLabelPage}),
                testing::Contains("no page has the attributes of CControlUI"));
}

TEST(AttributePagesTest, AClassHasOneTable)
{
    const Page second{"Other.md", kLabelTable};
    EXPECT_THAT(CheckTables(kClasses, {kControlPage, kLabelPage, second}),
                ElementsAre("Other.md: CLabelUI: has another table"));
}

TEST(AttributePagesTest, AMissingEndMarkIsComplainedOfAndTheTextKept)
{
    const std::string open = "<!-- attributes CLabelUI -->\n| `font` | number | font |\n";
    for (const auto& text : {open + "\nMore.\n", open + kLabelTable}) {
        SCOPED_TRACE(text);
        const auto [rewritten, complaints] =
            RewriteTables(kClasses, {kControlPage, {"Label.md", text}});
        EXPECT_EQ(rewritten[1].text, text);
        EXPECT_THAT(complaints, ElementsAre("Label.md: CLabelUI: the table has no end mark"));
    }
}

TEST(AttributePagesTest, AnEndMarkAloneIsComplainedOf)
{
    const Page page{"Stray.md", "Text.\n<!-- end attributes -->\n"};
    EXPECT_THAT(CheckTables(kClasses, {kControlPage, kLabelPage, page}),
                ElementsAre("Stray.md: end mark without a table"));
}

TEST(AttributePagesTest, AClassWithoutAttributesOfItsOwnSaysSo)
{
    const Page page{"Text.md", "<!-- attributes CTextUI -->\n<!-- end attributes -->\n"};
    const auto [rewritten, complaints] = RewriteTables(kClasses, {kControlPage, kLabelPage, page});
    EXPECT_THAT(complaints, IsEmpty());
    EXPECT_EQ(rewritten[2].text, "<!-- attributes CTextUI -->\n"
                                 "No attributes of its own.\n"
                                 "\n"
                                 "Inherited: all attributes of [CLabelUI](Label.md).\n"
                                 "<!-- end attributes -->\n");
}

TEST(AttributePagesTest, LineEndsOfWindowsAreNoDifference)
{
    Page page = kControlPage;
    for (std::size_t i = 0; (i = page.text.find('\n', i)) != std::string::npos; i += 2)
        page.text.insert(i, "\r");
    EXPECT_THAT(CheckTables({kClasses[0]}, {page}), IsEmpty());
}
