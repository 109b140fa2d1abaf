#include "support/DebugOutput.h"
#include "support/TempFolder.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using namespace DuiLib;

namespace {

std::wstring Message(const CMarkup& markup)
{
    wchar_t text[300];
    markup.GetLastErrorMessage(text, 300);
    return text;
}

std::wstring Location(const CMarkup& markup)
{
    wchar_t text[300];
    markup.GetLastErrorLocation(text, 300);
    return text;
}

bool LoadBytes(CMarkup& markup, std::string bytes, int encoding = XMLFILE_ENCODING_UTF8)
{
    return markup.LoadFromMem(reinterpret_cast<BYTE*>(bytes.data()),
                              static_cast<DWORD>(bytes.size()), encoding);
}

// The only attribute of the root.
std::wstring ValueOf(const wchar_t* attributeText)
{
    CMarkup markup((std::wstring(L"<a v=\"") + attributeText + L"\"/>").c_str());
    return markup.GetRoot().GetAttributeValue(L"v");
}

// Names of an element and all below it: "a(b,c(d))".
std::wstring Shape(CMarkupNode node)
{
    std::wstring text = node.GetName();
    if (node.HasChildren()) {
        text += L'(';
        for (auto child = node.GetChild(); child.IsValid(); child = child.GetSibling())
            text += Shape(child) + (child.HasSiblings() ? L"," : L"");
        text += L')';
    }
    return text;
}

} // namespace

TEST(MarkupTest, EmptyObjectHasNoRootAndNoError)
{
    CMarkup markup;
    EXPECT_FALSE(markup.IsValid());
    EXPECT_FALSE(markup.GetRoot().IsValid());
    EXPECT_EQ(Message(markup), L"");
    EXPECT_EQ(Location(markup), L"");
}

TEST(MarkupTest, ConstructorParsesItsText)
{
    CMarkup markup(L"<Window/>");
    EXPECT_TRUE(markup.IsValid());
    EXPECT_STREQ(markup.GetRoot().GetName(), L"Window");
}

TEST(MarkupTest, LoadCopiesTheText)
{
    std::wstring text = L"<Window name=\"first\"/>";
    CMarkup markup;
    ASSERT_TRUE(markup.Load(text.c_str()));
    text.assign(text.size(), L'#');
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"name"), L"first");
}

TEST(MarkupTest, NestingAndOrderAreKept)
{
    CMarkup markup(L"<a><b><c/><d></d></b><e/>\r\n<f><g/></f></a>");
    EXPECT_EQ(Shape(markup.GetRoot()), L"a(b(c,d),e,f(g))");
}

TEST(MarkupTest, NodesLeadToParentSiblingAndChild)
{
    CMarkup markup(L"<a><b/><c/></a>");
    CMarkupNode root = markup.GetRoot();
    EXPECT_FALSE(root.GetParent().IsValid());
    EXPECT_FALSE(root.GetSibling().IsValid());
    EXPECT_FALSE(root.HasSiblings());

    CMarkupNode first = root.GetChild();
    EXPECT_TRUE(first.HasSiblings());
    EXPECT_FALSE(first.HasChildren());
    EXPECT_STREQ(first.GetParent().GetName(), L"a");
    EXPECT_STREQ(first.GetSibling().GetName(), L"c");
    EXPECT_FALSE(first.GetSibling().GetSibling().IsValid());
}

TEST(MarkupTest, ChildIsFoundByNameInAnyCase)
{
    CMarkup markup(L"<a><b n=\"1\"/><Button n=\"2\"/><button n=\"3\"/></a>");
    CMarkupNode root = markup.GetRoot();
    EXPECT_STREQ(root.GetChild(L"BUTTON").GetAttributeValue(L"n"), L"2");
    EXPECT_FALSE(root.GetChild(L"label").IsValid());
    EXPECT_FALSE(root.GetChild(nullptr).IsValid());
}

TEST(MarkupTest, InvalidNodeAnswersHarmlessly)
{
    CMarkupNode node = CMarkup().GetRoot();
    EXPECT_FALSE(node.IsValid());
    EXPECT_FALSE(node.GetParent().IsValid());
    EXPECT_FALSE(node.GetSibling().IsValid());
    EXPECT_FALSE(node.GetChild().IsValid());
    EXPECT_FALSE(node.GetChild(L"a").IsValid());
    EXPECT_FALSE(node.HasChildren());
    EXPECT_FALSE(node.HasSiblings());
    EXPECT_FALSE(node.HasAttributes());
    EXPECT_EQ(node.GetAttributeCount(), 0);
    EXPECT_STREQ(node.GetName(), L"");
    EXPECT_STREQ(node.GetValue(), L"");
    EXPECT_STREQ(node.GetAttributeName(0), L"");
    EXPECT_STREQ(node.GetAttributeValue(L"x"), L"");
}

TEST(MarkupTest, AttributesKeepTheirOrder)
{
    CMarkup markup(L"<a  z=\"1\"\ty = \"2\"\r\n x=\"\" />");
    CMarkupNode root = markup.GetRoot();
    ASSERT_EQ(root.GetAttributeCount(), 3);
    EXPECT_STREQ(root.GetAttributeName(0), L"z");
    EXPECT_STREQ(root.GetAttributeName(1), L"y");
    EXPECT_STREQ(root.GetAttributeName(2), L"x");
    EXPECT_STREQ(root.GetAttributeValue(0), L"1");
    EXPECT_STREQ(root.GetAttributeValue(1), L"2");
    EXPECT_STREQ(root.GetAttributeValue(2), L"");
    EXPECT_TRUE(root.HasAttributes());
}

TEST(MarkupTest, AttributesAreFoundInAnyCase)
{
    CMarkup markup(L"<a BkColor=\"#FF00FF00\"/>");
    CMarkupNode root = markup.GetRoot();
    EXPECT_TRUE(root.HasAttribute(L"bkcolor"));
    EXPECT_STREQ(root.GetAttributeValue(L"BKCOLOR"), L"#FF00FF00");
    EXPECT_STREQ(root.GetAttributeName(0), L"BkColor");
}

TEST(MarkupTest, UnknownAttributeIsTheEmptyText)
{
    CMarkup markup(L"<a b=\"1\"/>");
    CMarkupNode root = markup.GetRoot();
    EXPECT_FALSE(root.HasAttribute(L"c"));
    EXPECT_FALSE(root.HasAttribute(nullptr));
    EXPECT_STREQ(root.GetAttributeValue(L"c"), L"");
    EXPECT_STREQ(root.GetAttributeValue(1), L"");
    EXPECT_STREQ(root.GetAttributeValue(-1), L"");
}

TEST(MarkupTest, ValueIsCopiedIntoABufferAndCut)
{
    CMarkup markup(L"<a text=\"abcdef\"/>");
    CMarkupNode root = markup.GetRoot();
    wchar_t buffer[5] = L"????";
    EXPECT_TRUE(root.GetAttributeValue(L"text", buffer, 5));
    EXPECT_STREQ(buffer, L"abcd");
    EXPECT_TRUE(root.GetAttributeValue(0, buffer, 2));
    EXPECT_STREQ(buffer, L"a");
    EXPECT_FALSE(root.GetAttributeValue(L"none", buffer, 5));
    EXPECT_FALSE(root.GetAttributeValue(1, buffer, 5));
    EXPECT_FALSE(root.GetAttributeValue(0, buffer, 0));
}

TEST(MarkupTest, AnElementHasAtMost64Attributes)
{
    std::wstring text = L"<a";
    for (int i = 0; i < 70; ++i)
        text += L" n" + std::to_wstring(i) + L"=\"" + std::to_wstring(i) + L"\"";
    CMarkup markup;
    ASSERT_TRUE(markup.Load((text + L"><b c=\"1\"/></a>").c_str()));

    CMarkupNode root = markup.GetRoot();
    EXPECT_EQ(root.GetAttributeCount(), 64);
    EXPECT_STREQ(root.GetAttributeValue(63), L"63");
    EXPECT_FALSE(root.HasAttribute(L"n64"));
    EXPECT_STREQ(root.GetChild().GetAttributeValue(L"c"), L"1");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"text(1,1): the element has more than 64 attributes, the others are ignored");
}

TEST(MarkupTest, TheFiveEntitiesStandForTheirCharacters)
{
    EXPECT_EQ(ValueOf(L"&amp;&lt;&gt;&quot;&apos;"), L"&<>\"'");
    EXPECT_EQ(ValueOf(L"a&amp;b"), L"a&b");
    EXPECT_EQ(ValueOf(L"&amp;lt;"), L"&lt;");
}

TEST(MarkupTest, AnyOtherAmpersandStaysAsWritten)
{
    for (const wchar_t* text :
         {L"&", L"a & b", L"&amp", L"&AMP;", L"&nbsp;", L"&#x41;", L"&#65;", L"&&", L"&lt"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        EXPECT_EQ(ValueOf(text), text);
    }
}

TEST(MarkupTest, ValuesKeepWhiteSpaceAndAngleBrackets)
{
    EXPECT_EQ(ValueOf(L"  a\t b\r\n c "), L"  a\t b\r\n c ");
    EXPECT_EQ(ValueOf(L"{b}<x>{/b}"), L"{b}<x>{/b}");
    EXPECT_EQ(ValueOf(L"file='a.png' corner='1,2,3,4'"), L"file='a.png' corner='1,2,3,4'");
}

TEST(MarkupTest, TextOfAnElementReachesToItsFirstChild)
{
    CMarkup markup(L"<a> one &lt; two <b>inner</b> three</a>");
    EXPECT_STREQ(markup.GetRoot().GetValue(), L" one < two ");
    EXPECT_STREQ(markup.GetRoot().GetChild().GetValue(), L"inner");
}

TEST(MarkupTest, CommentDoesNotEndTheTextOfAnElement)
{
    CMarkup markup(L"<a>one<!-- <no/> -->&amp;two</a>");
    EXPECT_STREQ(markup.GetRoot().GetValue(), L"one&two");
    EXPECT_FALSE(markup.GetRoot().HasChildren());
}

TEST(MarkupTest, ElementsWithoutTextHaveAnEmptyValue)
{
    CMarkup markup(L"<a><b/><c></c></a>");
    EXPECT_STREQ(markup.GetRoot().GetValue(), L"");
    EXPECT_STREQ(markup.GetRoot().GetChild().GetValue(), L"");
    EXPECT_STREQ(markup.GetRoot().GetChild(L"c").GetValue(), L"");
}

TEST(MarkupTest, WhiteSpaceOfTextIsDroppedOnRequest)
{
    CMarkup markup;
    markup.SetPreserveWhitespace(false);
    ASSERT_TRUE(markup.Load(L"<a v=\"  x  \">\r\n  one \t two\n</a>"));
    EXPECT_STREQ(markup.GetRoot().GetValue(), L"one two");
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"v"), L"  x  ");

    markup.SetPreserveWhitespace();
    ASSERT_TRUE(markup.Load(L"<a> one </a>"));
    EXPECT_STREQ(markup.GetRoot().GetValue(), L" one ");
}

TEST(MarkupTest, CommentsAndInstructionsMayStandAnywhere)
{
    CMarkup markup(L"<?xml version=\"1.0\"?><!-- a > b --><?x?>\n<a><!----><b/><?y <z/>?></a>\n"
                   L"<!-- end --><?end?>");
    ASSERT_TRUE(markup.IsValid());
    EXPECT_EQ(Shape(markup.GetRoot()), L"a(b)");
}

TEST(MarkupTest, NamesMayHoldLettersDigitsUnderscoreAndColon)
{
    CMarkup markup(L"<ui:My_Box2 按钮=\"1\" a_1:b=\"2\"/>");
    ASSERT_TRUE(markup.IsValid());
    EXPECT_STREQ(markup.GetRoot().GetName(), L"ui:My_Box2");
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"按钮"), L"1");
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"a_1:b"), L"2");
}

TEST(MarkupTest, ClosingTagMayEndWithBlanks)
{
    EXPECT_TRUE(CMarkup(L"<a><b></b \r\n></a >").IsValid());
}

struct BadText {
    const wchar_t* text;
    const wchar_t* location;
    const wchar_t* message;
};

class BrokenMarkupTest : public testing::TestWithParam<BadText> {};

TEST_P(BrokenMarkupTest, FailureSaysWhereAndWhy)
{
    CMarkup markup;
    EXPECT_FALSE(markup.Load(GetParam().text));
    EXPECT_FALSE(markup.IsValid());
    EXPECT_FALSE(markup.GetRoot().IsValid());
    EXPECT_EQ(Location(markup), GetParam().location);
    EXPECT_EQ(Message(markup), GetParam().message);
    EXPECT_EQ(std::wstring(CPaintManagerUI::GetLastErrorText()),
              std::wstring(GetParam().location) + L": " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Table, BrokenMarkupTest,
    testing::Values(
        BadText{L"", L"text(1,1)", L"there is no element"},
        BadText{L" \n <!-- only --> \n", L"text(3,1)", L"there is no element"},
        BadText{L"plain", L"text(1,1)", L"text outside the root element"},
        BadText{L"<a/>\nrest", L"text(2,1)", L"text outside the root element"},
        BadText{L"<a/><b/>", L"text(1,5)", L"a second root element"},
        BadText{L"<a>\n  <b>\n</a>", L"text(3,1)",
                L"the closing tag \"a\" does not match \"b\" of line 2"},
        BadText{L"<a></A>", L"text(1,4)", L"the closing tag \"A\" does not match \"a\" of line 1"},
        BadText{L"<a></aa>", L"text(1,4)",
                L"the closing tag \"aa\" does not match \"a\" of line 1"},
        BadText{L"<a>\r\n  <b>text", L"text(2,3)", L"the element \"b\" is not closed"},
        BadText{L"</a>", L"text(1,1)", L"a closing tag without an opening one"},
        BadText{L"<a></a", L"text(1,7)", L"the closing tag of \"a\" must end with '>'"},
        BadText{L"<a", L"text(1,1)", L"the tag of \"a\" is not closed"},
        BadText{L"<a/", L"text(1,1)", L"the tag of \"a\" is not closed"},
        BadText{L"<a b=\"1\"", L"text(1,1)", L"the tag of \"a\" is not closed"},
        BadText{L"<", L"text(1,2)", L"a name must follow '<'"},
        BadText{L"< a/>", L"text(1,2)", L"a name must follow '<'"},
        BadText{L"<a / >", L"text(1,5)", L"the tag of \"a\" must go on with a name or '>'"},
        BadText{L"<a-b/>", L"text(1,3)", L"the tag of \"a\" must go on with a name or '>'"},
        BadText{L"<a b/>", L"text(1,4)", L"the attribute \"b\" of \"a\" has no value"},
        BadText{L"<a b=1/>", L"text(1,6)", L"the value of \"b\" must stand in double quotes"},
        BadText{L"<a b='1'/>", L"text(1,6)", L"the value of \"b\" must stand in double quotes"},
        BadText{L"<a\n b=\"1/>\n</a>", L"text(2,2)", L"the value of \"b\" has no closing quote"},
        BadText{L"<a b=\"1 c=\"2\"/>", L"text(1,12)", L"the attribute \"2\" of \"a\" has no value"},
        BadText{L"<a><!-- </a>", L"text(1,4)", L"the comment is not closed"},
        BadText{L"<!-->", L"text(1,1)", L"the comment is not closed"},
        BadText{L"<?xml", L"text(1,1)", L"the processing instruction is not closed"},
        BadText{L"<!DOCTYPE a><a/>", L"text(1,1)",
                L"declarations such as DOCTYPE and CDATA are not supported"},
        BadText{L"<a><![CDATA[x]]></a>", L"text(1,4)",
                L"declarations such as DOCTYPE and CDATA are not supported"}));

TEST(MarkupTest, PositionsCountTheTextAsItWasWritten)
{
    // The entities and the comment before shrink the text inside the parser.
    CMarkup markup;
    EXPECT_FALSE(markup.Load(L"<a v=\"&amp;&amp;\n&quot;\">x&lt;\n<!-- -->y\n <b></c></a>"));
    EXPECT_EQ(Location(markup), L"text(4,5)");
}

TEST(MarkupTest, FailureIsOneLineOnTheDebuggerOutput)
{
    test::DebugOutput output(L"DuiLib.dll");
    CMarkup markup;
    EXPECT_FALSE(markup.Load(L"<a>"));
    EXPECT_EQ(output.Text(), L"text(1,1): the element \"a\" is not closed\n");
}

TEST(MarkupTest, MessageIsCutToItsBuffer)
{
    CMarkup markup(L"<a>");
    wchar_t text[8] = L"???????";
    markup.GetLastErrorMessage(text, 8);
    EXPECT_STREQ(text, L"the ele");
    markup.GetLastErrorLocation(text, 5);
    EXPECT_STREQ(text, L"text");
    markup.GetLastErrorMessage(nullptr, 0);
}

TEST(MarkupTest, SuccessClearsTheError)
{
    CMarkup markup(L"<a>");
    ASSERT_NE(Message(markup), L"");
    ASSERT_TRUE(markup.Load(L"<a/>"));
    EXPECT_EQ(Message(markup), L"");
    EXPECT_EQ(Location(markup), L"");
}

TEST(MarkupTest, FailureForgetsTheTextBefore)
{
    CMarkup markup(L"<a/>");
    EXPECT_FALSE(markup.Load(L"<b>"));
    EXPECT_FALSE(markup.IsValid());
    EXPECT_FALSE(markup.Load(nullptr));
    EXPECT_FALSE(markup.IsValid());
}

TEST(MarkupTest, ReleaseLetsGoOfTheText)
{
    CMarkup markup(L"<a/>");
    markup.Release();
    EXPECT_FALSE(markup.IsValid());
    EXPECT_FALSE(markup.GetRoot().IsValid());
    markup.Release();
}

TEST(MarkupTest, CopiesShareTheTextUntilTheLastOneGoes)
{
    static_assert(std::is_copy_constructible_v<CMarkup> && std::is_copy_assignable_v<CMarkup>);
    static_assert(std::is_copy_constructible_v<CMarkupNode> &&
                  std::is_copy_assignable_v<CMarkupNode>);

    CMarkup copy;
    const wchar_t* name = nullptr;
    {
        CMarkup original(L"<a><b/></a>");
        copy = original;
        name = original.GetRoot().GetName();
        CMarkup another(original);
        another.Release();
        EXPECT_TRUE(original.IsValid());
    }
    EXPECT_EQ(copy.GetRoot().GetName(), name);
    EXPECT_EQ(Shape(copy.GetRoot()), L"a(b)");
}

TEST(MarkupTest, LoadingACopyLeavesTheOriginalAlone)
{
    CMarkup original(L"<a/>");
    CMarkup copy(original);
    CMarkupNode root = original.GetRoot();
    ASSERT_TRUE(copy.Load(L"<b/>"));
    EXPECT_STREQ(root.GetName(), L"a");
    EXPECT_STREQ(copy.GetRoot().GetName(), L"b");
}

TEST(MarkupTest, DuplicateAttributesAreAllKept)
{
    CMarkup markup(L"<a b=\"1\" B=\"2\"/>");
    ASSERT_TRUE(markup.IsValid());
    EXPECT_EQ(markup.GetRoot().GetAttributeCount(), 2);
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"b"), L"1");
}

TEST(MarkupTest, HundredThousandNestedElementsAreParsed)
{
    constexpr int kDepth = 100'000;
    std::wstring text;
    for (int i = 0; i < kDepth; ++i)
        text += L"<a>";
    for (int i = 0; i < kDepth; ++i)
        text += L"</a>";
    CMarkup markup;
    ASSERT_TRUE(markup.Load(text.c_str()));

    int depth = 0;
    for (auto node = markup.GetRoot(); node.IsValid(); node = node.GetChild())
        ++depth;
    EXPECT_EQ(depth, kDepth);
}

TEST(MarkupTest, HundredThousandOpenElementsFailReadably)
{
    std::wstring text;
    for (int i = 0; i < 100'000; ++i)
        text += L"<a>\n";
    CMarkup markup;
    EXPECT_FALSE(markup.Load(text.c_str()));
    EXPECT_EQ(Location(markup), L"text(100000,1)");
}

TEST(MarkupTest, Utf8IsReadWithAndWithoutByteOrderMark)
{
    const std::string text = test::Utf8(L"<a v=\"Grüße 按钮 \xD83D\xDE00\"/>");
    for (const auto& bytes : {text, "\xEF\xBB\xBF" + text}) {
        CMarkup markup;
        ASSERT_TRUE(LoadBytes(markup, bytes));
        EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"v"), L"Grüße 按钮 \xD83D\xDE00");
    }
}

TEST(MarkupTest, Utf16IsReadInBothOrders)
{
    const std::wstring text = L"<a v=\"按钮\"/>";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const wchar_t ch : text) {
        little += {static_cast<char>(ch & 0xFF), static_cast<char>(ch >> 8)};
        big += {static_cast<char>(ch >> 8), static_cast<char>(ch & 0xFF)};
    }
    for (const auto& bytes : {little, big}) {
        for (const int encoding : {XMLFILE_ENCODING_UNICODE, XMLFILE_ENCODING_UTF8}) {
            CMarkup markup;
            ASSERT_TRUE(LoadBytes(markup, bytes, encoding));
            EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"v"), L"按钮");
        }
    }
}

TEST(MarkupTest, AnsiIsReadInTheSystemCodePage)
{
    wchar_t expected[2] = {};
    const char code = '\xE4';
    if (::GetACP() != 1252)
        GTEST_SKIP() << "the byte is a letter of its own in code page 1252 only";
    ::MultiByteToWideChar(CP_ACP, 0, &code, 1, expected, 1);

    CMarkup markup;
    ASSERT_TRUE(LoadBytes(markup, "<a v=\"\xE4\"/>", XMLFILE_ENCODING_ASNI));
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"v"), expected);
}

TEST(MarkupTest, BytesThatAreNoUtf8BecomeReplacementsAndLeaveALine)
{
    CMarkup markup;
    ASSERT_TRUE(LoadBytes(markup, "<a>\n <!-- \xB0\xB4 --><b v=\"1\"/></a>"));
    EXPECT_STREQ(markup.GetRoot().GetChild().GetAttributeValue(L"v"), L"1");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"memory(2,7): bytes that are no text in the encoding");
}

TEST(MarkupTest, EmptyAndMissingMemoryFail)
{
    CMarkup markup;
    BYTE byte = 0;
    EXPECT_FALSE(markup.LoadFromMem(&byte, 0));
    EXPECT_EQ(Message(markup), L"the file is empty");
    EXPECT_FALSE(markup.LoadFromMem(nullptr, 5));
    EXPECT_FALSE(LoadBytes(markup, "\xEF\xBB\xBF"));
    EXPECT_EQ(Message(markup), L"there is no element");
}

TEST(MarkupTest, ZeroCharacterInsideFails)
{
    CMarkup markup;
    EXPECT_FALSE(LoadBytes(markup, std::string("<a>\n\0</a>", 10)));
    EXPECT_EQ(Message(markup), L"a zero character in the text");
    EXPECT_EQ(Location(markup), L"memory(2,1)");
}

TEST(MarkupTest, FileStandsBelowTheResourcePath)
{
    test::TempFolder folder;
    folder.Write(L"sub/a.xml", std::string_view("<a v=\"1\"/>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CMarkup markup;
    ASSERT_TRUE(markup.LoadFromFile(L"sub\\a.xml"));
    EXPECT_STREQ(markup.GetRoot().GetAttributeValue(L"v"), L"1");
}

TEST(MarkupTest, AbsolutePathWorksOnlyWithoutAResourcePath)
{
    test::TempFolder folder;
    const auto path = folder.Write(L"a.xml", std::string_view("<a/>"));
    CMarkup markup;
    CPaintManagerUI::SetResourcePath(L"");
    EXPECT_TRUE(markup.LoadFromFile(path.c_str()));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    EXPECT_FALSE(markup.LoadFromFile(path.c_str()));
}

TEST(MarkupTest, FailureInAFileNamesTheFile)
{
    test::TempFolder folder;
    folder.Write(L"bad.xml", std::string_view("<a>\r\n\t<b c=\"1\">\r\n</a>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CMarkup markup;
    EXPECT_FALSE(markup.LoadFromFile(L"bad.xml"));
    EXPECT_EQ(Location(markup), L"bad.xml(3,1)");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"bad.xml(3,1): the closing tag \"a\" does not match \"b\" of line 2");
}

TEST(MarkupTest, MissingFileFailsReadably)
{
    test::TempFolder folder;
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CMarkup markup;
    EXPECT_FALSE(markup.LoadFromFile(L"none.xml"));
    EXPECT_EQ(Location(markup), L"none.xml");
    EXPECT_EQ(Message(markup), L"the file does not exist");
    EXPECT_FALSE(markup.LoadFromFile(nullptr));
    EXPECT_FALSE(markup.LoadFromFile(L""));
}

TEST(MarkupTest, FileMayHaveFourMegabytesAndNotAByteMore)
{
    constexpr std::size_t kLimit = 4u * 1024u * 1024u;
    const std::string start = "<a><!--";
    const std::string end = "--></a>";
    std::string text = start + std::string(kLimit - start.size() - end.size(), ' ') + end;
    test::TempFolder folder;
    folder.Write(L"a.xml", text);
    folder.Write(L"b.xml", text + " ");
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CMarkup markup;
    EXPECT_TRUE(markup.LoadFromFile(L"a.xml"));
    EXPECT_FALSE(markup.LoadFromFile(L"b.xml"));
    EXPECT_EQ(Message(markup), L"the file is larger than 4194304 bytes");
}
