#include "win32/TextParse.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <unordered_map>

namespace Text = Quillet::Text;

TEST(TextParseTest, OnlyTheWordTrueIsTrue)
{
    for (const wchar_t* text : {L"true", L"TRUE", L"True"})
        EXPECT_TRUE(Text::IsTrue(text)) << text;
    for (const wchar_t* text : {L"", L"1", L"yes", L" true", L"true ", L"tru", L"false"})
        EXPECT_FALSE(Text::IsTrue(text)) << text;
    EXPECT_FALSE(Text::IsTrue(nullptr));
}

TEST(TextParseTest, NumbersStopAtTheFirstOtherCharacter)
{
    EXPECT_EQ(Text::ToInt(L"42"), 42);
    EXPECT_EQ(Text::ToInt(L"  -7px"), -7);
    EXPECT_EQ(Text::ToInt(L"010"), 10);
    EXPECT_EQ(Text::ToInt(L"0x10"), 0);
    EXPECT_EQ(Text::ToInt(L"x"), 0);
    EXPECT_EQ(Text::ToInt(L""), 0);
    EXPECT_EQ(Text::ToInt(nullptr), 0);
}

TEST(TextParseTest, RectanglesSkipOneCharacterBetweenNumbers)
{
    const struct {
        const wchar_t* text;
        RECT expected;
    } rows[] = {
        {L"1,2,3,4", {1, 2, 3, 4}},
        {L"1;2|3 4", {1, 2, 3, 4}},
        {L"-1,-2,-3,-4", {-1, -2, -3, -4}},
        {L"1, 2, 3, 4", {1, 2, 3, 4}},
        {L"1,2", {1, 2, 0, 0}},
        {L"1,,3,4", {1, 0, 3, 4}},
        {L"", {0, 0, 0, 0}},
        {nullptr, {0, 0, 0, 0}},
        {L"1,2,3,4,5", {1, 2, 3, 4}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text != nullptr ? std::wstring(row.text).size() : 0);
        const RECT rect = Text::ToRect(row.text);
        EXPECT_EQ(rect.left, row.expected.left);
        EXPECT_EQ(rect.top, row.expected.top);
        EXPECT_EQ(rect.right, row.expected.right);
        EXPECT_EQ(rect.bottom, row.expected.bottom);
    }
}

TEST(TextParseTest, SizesAreTwoNumbers)
{
    const SIZE size = Text::ToSize(L"600,400");
    EXPECT_EQ(size.cx, 600);
    EXPECT_EQ(size.cy, 400);
    EXPECT_EQ(Text::ToSize(L"5").cx, 5);
    EXPECT_EQ(Text::ToSize(L"5").cy, 0);
    EXPECT_EQ(Text::ToSize(nullptr).cx, 0);
}

TEST(TextParseTest, ColoursAreHexadecimalWithAlphaFirst)
{
    EXPECT_EQ(Text::ToColour(L"#FF102030"), 0xFF102030u);
    EXPECT_EQ(Text::ToColour(L"ff102030"), 0xFF102030u);
    EXPECT_EQ(Text::ToColour(L"  \t#80AABBCC"), 0x80AABBCCu);
    EXPECT_EQ(Text::ToColour(L"0xFF000001"), 0xFF000001u);
    EXPECT_EQ(Text::ToColour(L"red"), 0u);
    EXPECT_EQ(Text::ToColour(L""), 0u);
    EXPECT_EQ(Text::ToColour(nullptr), 0u);
}

TEST(TextParseTest, SixDigitsLeaveTheAlphaAtZero)
{
    EXPECT_EQ(Text::ToColour(L"#102030"), 0x00102030u);
}

TEST(TextParseTest, EqualityWithoutCaseIsOrdinal)
{
    EXPECT_TRUE(Text::EqualsNoCase(L"BkColor", L"bkcolor"));
    EXPECT_TRUE(Text::EqualsNoCase(L"\u00C9\u0429", L"\u00E9\u0449"));
    EXPECT_FALSE(Text::EqualsNoCase(L"a", L"ab"));
    EXPECT_FALSE(Text::EqualsNoCase(L"[", L"{"));
    EXPECT_FALSE(Text::EqualsNoCase(L"I", L"\u0131"));
    EXPECT_TRUE(Text::EqualsNoCase(L"", L""));
}

TEST(TextParseTest, ChineseAndHangulHaveNoCase)
{
    for (const wchar_t unit : {L'\u4E2D', L'\u9FFF', L'\uAC00', L'\uD7A3'})
        EXPECT_EQ(Text::LowerCase(unit), unit);
    EXPECT_EQ(Text::LowerCase(L'\uFF21'), L'\uFF41'); // full-width A
}

TEST(TextParseTest, HashTablesAreSearchedWithoutACopyOfTheKey)
{
    std::unordered_map<std::wstring, int, Text::WideHashNoCase, Text::WideEqualNoCase> noCase;
    noCase[L"Name"] = 1;
    EXPECT_NE(noCase.find(std::wstring_view(L"NAME")), noCase.end());
    EXPECT_NE(noCase.find(L"name"), noCase.end());
    EXPECT_EQ(noCase.find(L"other"), noCase.end());

    std::unordered_map<std::wstring, int, Text::WideHash, Text::WideEqual> exact;
    exact[L"Name"] = 1;
    EXPECT_NE(exact.find(std::wstring_view(L"Name")), exact.end());
    EXPECT_EQ(exact.find(std::wstring_view(L"name")), exact.end());
}
