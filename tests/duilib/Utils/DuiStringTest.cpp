#include <UIlib.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

using DuiLib::CDuiString;

namespace {

const std::wstring kLong(100, L'x');

std::wstring Text(const CDuiString& string)
{
    return string.GetData();
}

} // namespace

TEST(DuiStringTest, StartsEmptyAndOwnsNoMemory)
{
    const CDuiString first;
    const CDuiString second(L"");
    EXPECT_TRUE(first.IsEmpty());
    EXPECT_EQ(first.GetLength(), 0);
    EXPECT_STREQ(first, L"");
    EXPECT_EQ(first.GetData(), second.GetData());
}

TEST(DuiStringTest, TakesSixteenBytes)
{
    EXPECT_EQ(sizeof(CDuiString), 16u);
}

TEST(DuiStringTest, NullIsTheEmptyText)
{
    CDuiString string(static_cast<LPCTSTR>(nullptr));
    EXPECT_TRUE(string.IsEmpty());

    string = L"abc";
    string = static_cast<LPCTSTR>(nullptr);
    EXPECT_TRUE(string.IsEmpty());

    string = L"abc";
    string += static_cast<LPCTSTR>(nullptr);
    string += static_cast<LPCSTR>(nullptr);
    EXPECT_EQ(Text(string), L"abc");
    EXPECT_EQ(Text(string + static_cast<LPCTSTR>(nullptr)), L"abc");

    string = static_cast<LPCSTR>(nullptr);
    EXPECT_TRUE(string.IsEmpty());
}

TEST(DuiStringTest, ConstructsFromACharacterOrAPartOfAText)
{
    EXPECT_EQ(Text(CDuiString(L'q')), L"q");
    EXPECT_EQ(Text(CDuiString(L"abcdef", 3)), L"abc");
    EXPECT_EQ(Text(CDuiString(L"abc", 10)), L"abc");
    EXPECT_EQ(Text(CDuiString(L"abc", 0)), L"");
    EXPECT_TRUE(CDuiString(L'\0').IsEmpty());
}

TEST(DuiStringTest, LengthEndsAtTheFirstZero)
{
    EXPECT_EQ(CDuiString(L"ab\0cd", 5).GetLength(), 2);

    CDuiString string(L"abcdef");
    string.SetAt(2, L'\0');
    EXPECT_EQ(string.GetLength(), 2);
    EXPECT_EQ(Text(string), L"ab");
    string += L'\0';
    EXPECT_EQ(string.GetLength(), 2);
}

TEST(DuiStringTest, CopiesShareNothing)
{
    CDuiString original(L"abc");
    const CDuiString copy(original);
    original.SetAt(0, L'z');
    EXPECT_EQ(Text(original), L"zbc");
    EXPECT_EQ(Text(copy), L"abc");
}

TEST(DuiStringTest, MovingTakesTheTextAndLeavesNone)
{
    CDuiString original(kLong.c_str());
    const LPCTSTR data = original.GetData();

    CDuiString moved(std::move(original));
    EXPECT_EQ(moved.GetData(), data);
    EXPECT_TRUE(original.IsEmpty()); // NOLINT: a moved-from string is empty

    CDuiString assigned(L"old");
    assigned = std::move(moved);
    EXPECT_EQ(assigned.GetData(), data);
    EXPECT_EQ(Text(assigned), kLong);
    static_assert(std::is_nothrow_move_constructible_v<CDuiString>);
    static_assert(std::is_nothrow_move_assignable_v<CDuiString>);
}

TEST(DuiStringTest, AssignsPartsOfItself)
{
    CDuiString string(L"abcdef");
    string = string.GetData() + 2;
    EXPECT_EQ(Text(string), L"cdef");
    string.Assign(string.GetData() + 1, 2);
    EXPECT_EQ(Text(string), L"de");
    const CDuiString& same = string;
    string = same;
    EXPECT_EQ(Text(string), L"de");
}

TEST(DuiStringTest, AppendsItselfWhileItGrows)
{
    CDuiString string(L"ab");
    std::wstring expected = L"ab";
    for (int i = 0; i < 10; ++i) {
        string += string;
        expected += expected;
        string.Append(string.GetData() + expected.size() - 1);
        expected += expected.back();
    }
    EXPECT_EQ(Text(string), expected);
    EXPECT_EQ(string.GetLength(), static_cast<int>(expected.size()));
}

TEST(DuiStringTest, ConcatenatesWithoutChangingTheOperands)
{
    const CDuiString left(L"ab");
    const CDuiString right(L"cd");
    EXPECT_EQ(Text(left + right), L"abcd");
    EXPECT_EQ(Text(left + L"xyz"), L"abxyz");
    EXPECT_EQ(Text(left), L"ab");
    EXPECT_EQ(Text(CDuiString() + CDuiString()), L"");
}

TEST(DuiStringTest, ConvertsNarrowTextFromTheAnsiCodePage)
{
    CDuiString string;
    string = "plain";
    EXPECT_EQ(Text(string), L"plain");
    string += " text";
    EXPECT_EQ(Text(string), L"plain text");
    string = "";
    EXPECT_TRUE(string.IsEmpty());
}

TEST(DuiStringTest, ComparesByCodeUnits)
{
    const CDuiString string(L"abc");
    EXPECT_TRUE(string == L"abc");
    EXPECT_TRUE(L"abc" == string);
    EXPECT_TRUE(string != L"abC");
    EXPECT_TRUE(string < L"abd");
    EXPECT_TRUE(string <= L"abc");
    EXPECT_TRUE(string > L"abC");
    EXPECT_TRUE(string >= L"ab");
    EXPECT_TRUE(string == CDuiString(L"abc"));
    EXPECT_TRUE(string != CDuiString(L"abcd"));
    EXPECT_LT(CDuiString(L"Z").Compare(L"a"), 0);
    EXPECT_GT(CDuiString(L"a").Compare(L"Z"), 0);
}

TEST(DuiStringTest, ComparesWithoutCaseInEveryScript)
{
    EXPECT_EQ(CDuiString(L"MaxBtn").CompareNoCase(L"maxBTN"), 0);
    EXPECT_EQ(CDuiString(L"\u00C4\u0416\u03A9").CompareNoCase(L"\u00E4\u0436\u03C9"), 0);
    EXPECT_EQ(CDuiString(L"\u4E2D\u6587").CompareNoCase(L"\u4E2D\u6587"), 0);
    EXPECT_LT(CDuiString(L"ab").CompareNoCase(L"ABC"), 0);
    EXPECT_GT(CDuiString(L"B").CompareNoCase(L"a"), 0);
}

TEST(DuiStringTest, NullComparesAsTheEmptyText)
{
    const CDuiString empty;
    const CDuiString string(L"a");
    EXPECT_EQ(empty.Compare(nullptr), 0);
    EXPECT_EQ(empty.CompareNoCase(nullptr), 0);
    EXPECT_GT(string.Compare(nullptr), 0);
    EXPECT_GT(string.CompareNoCase(nullptr), 0);
    EXPECT_TRUE(empty == static_cast<LPCTSTR>(nullptr));
    EXPECT_TRUE(string != static_cast<LPCTSTR>(nullptr));
}

TEST(DuiStringTest, SortsAsAKey)
{
    std::map<CDuiString, int> numbers;
    numbers[L"b"] = 2;
    numbers[L"a"] = 1;
    numbers[L"b"] = 3;
    ASSERT_EQ(numbers.size(), 2u);
    EXPECT_EQ(Text(numbers.begin()->first), L"a");
    EXPECT_EQ(numbers[L"b"], 3);
}

TEST(DuiStringTest, ChangesCaseInEveryScript)
{
    CDuiString string(L"aB1\u00E4\u0436");
    string.MakeUpper();
    EXPECT_EQ(Text(string), L"AB1\u00C4\u0416");
    string.MakeLower();
    EXPECT_EQ(Text(string), L"ab1\u00E4\u0436");
    CDuiString empty;
    empty.MakeUpper();
    empty.MakeLower();
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(DuiStringTest, LeftMidAndRightClampTheirLengths)
{
    const CDuiString string(L"abcdef");
    EXPECT_EQ(Text(string.Left(2)), L"ab");
    EXPECT_EQ(Text(string.Left(99)), L"abcdef");
    EXPECT_EQ(Text(string.Left(-1)), L"");
    EXPECT_EQ(Text(string.Right(2)), L"ef");
    EXPECT_EQ(Text(string.Right(99)), L"abcdef");
    EXPECT_EQ(Text(string.Right(0)), L"");
    EXPECT_EQ(Text(string.Right(-3)), L"");
    EXPECT_EQ(Text(string.Mid(2)), L"cdef");
    EXPECT_EQ(Text(string.Mid(2, 3)), L"cde");
    EXPECT_EQ(Text(string.Mid(4, 99)), L"ef");
    EXPECT_EQ(Text(string.Mid(6)), L"");
    EXPECT_EQ(Text(string.Mid(99, 1)), L"");
    EXPECT_EQ(Text(string.Mid(2, 0)), L"");
}

TEST(DuiStringTest, TrimsWhiteSpace)
{
    EXPECT_EQ(Text(CDuiString(L" \t\r\n a b \n").Trim()), L"a b");
    EXPECT_EQ(Text(CDuiString(L"  a ").TrimLeft()), L"a ");
    EXPECT_EQ(Text(CDuiString(L"  a ").TrimRight()), L"  a");
    EXPECT_EQ(Text(CDuiString(L" \t ").Trim()), L"");
    EXPECT_EQ(Text(CDuiString().Trim()), L"");
}

TEST(DuiStringTest, FindsCharactersAndTexts)
{
    const CDuiString string(L"abcabc");
    EXPECT_EQ(string.Find(L'b'), 1);
    EXPECT_EQ(string.Find(L'b', 2), 4);
    EXPECT_EQ(string.Find(L'x'), -1);
    EXPECT_EQ(string.Find(L'a', 99), -1);
    EXPECT_EQ(string.Find(L'a', -1), -1);
    EXPECT_EQ(string.Find(L"ca"), 2);
    EXPECT_EQ(string.Find(L"abc", 1), 3);
    EXPECT_EQ(string.Find(L"abd"), -1);
    EXPECT_EQ(string.Find(static_cast<LPCTSTR>(nullptr)), -1);
    EXPECT_EQ(string.ReverseFind(L'b'), 4);
    EXPECT_EQ(string.ReverseFind(L'x'), -1);
    EXPECT_EQ(CDuiString().ReverseFind(L'x'), -1);
}

TEST(DuiStringTest, ReplacesLeftToRightBehindWhatItPutIn)
{
    CDuiString string(L"aaa");
    EXPECT_EQ(string.Replace(L"a", L"aa"), 3);
    EXPECT_EQ(Text(string), L"aaaaaa");
    EXPECT_EQ(string.Replace(L"aaa", L"b"), 2);
    EXPECT_EQ(Text(string), L"bb");
    EXPECT_EQ(string.Replace(L"b", L""), 2);
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_EQ(string.Replace(L"b", L"c"), 0);
}

TEST(DuiStringTest, ReplaceOfNothingChangesNothing)
{
    CDuiString string(L"abc");
    EXPECT_EQ(string.Replace(L"", L"x"), 0);
    EXPECT_EQ(string.Replace(nullptr, L"x"), 0);
    EXPECT_EQ(Text(string), L"abc");
    EXPECT_EQ(string.Replace(L"b", nullptr), 1);
    EXPECT_EQ(Text(string), L"ac");
}

TEST(DuiStringTest, FormatTakesWideTextForPercentS)
{
    CDuiString string;
    EXPECT_EQ(string.Format(L"%s=%d %ls %c %05.1f", L"\u540D", 42, L"wide", L'c', 1.5), 17);
    EXPECT_EQ(Text(string), L"\u540D=42 wide c 001.5");
}

TEST(DuiStringTest, FormatHasNoLengthLimit)
{
    CDuiString string;
    EXPECT_EQ(string.Format(L"[%s]", kLong.c_str()), 102);
    EXPECT_EQ(Text(string), L"[" + kLong + L"]");
    EXPECT_EQ(string.Format(L""), 0);
    EXPECT_TRUE(string.IsEmpty());
}

TEST(DuiStringTest, FormatMayUseItsOwnText)
{
    CDuiString string(L"old");
    string.Format(L"%s and %s", string.GetData(), string.GetData());
    EXPECT_EQ(Text(string), L"old and old");
}

TEST(DuiStringTest, FormatRefusesNull)
{
    CDuiString string(L"kept");
    EXPECT_EQ(string.Format(nullptr), -1);
    EXPECT_EQ(string.SmallFormat(nullptr), -1);
    EXPECT_EQ(Text(string), L"kept");
}

TEST(DuiStringTest, SmallFormatStopsAtSixtyThreeCharacters)
{
    CDuiString string;
    EXPECT_EQ(string.SmallFormat(L"%s-%d", L"\u540D", 7), 3);
    EXPECT_EQ(Text(string), L"\u540D-7");
    string.SmallFormat(L"%s", kLong.c_str());
    EXPECT_EQ(Text(string), kLong.substr(0, 63));
}

TEST(DuiStringTest, ReadsCharactersByIndex)
{
    const CDuiString string(L"abc");
    EXPECT_EQ(string[0], L'a');
    EXPECT_EQ(string.GetAt(2), L'c');
    EXPECT_EQ(string[3], L'\0');
}

TEST(DuiStringTest, EmptyGivesTheMemoryBack)
{
    CDuiString string(kLong.c_str());
    string.Empty();
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_EQ(string.GetData(), CDuiString().GetData());
}

TEST(DuiStringTest, SplitKeepsEmptyPieces)
{
    const auto pieces = DuiLib::StrSplit(L"a,,b,", L",");
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_EQ(Text(pieces[0]), L"a");
    EXPECT_EQ(Text(pieces[1]), L"");
    EXPECT_EQ(Text(pieces[2]), L"b");
    EXPECT_EQ(Text(pieces[3]), L"");
}

TEST(DuiStringTest, SplitsAtSeparatorsOfSeveralCharacters)
{
    const auto pieces = DuiLib::StrSplit(L"one<n>two", L"<n>");
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(Text(pieces[0]), L"one");
    EXPECT_EQ(Text(pieces[1]), L"two");
    EXPECT_TRUE(DuiLib::StrSplit(L"", L",").empty());
    ASSERT_EQ(DuiLib::StrSplit(L"whole", L"").size(), 1u);
}
