#include <UIlib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

using namespace DuiLib;

namespace {

void* P(int number)
{
    return reinterpret_cast<void*>(static_cast<UINT_PTR>(number));
}

std::vector<int> Numbers(const CStdPtrArray& array)
{
    std::vector<int> numbers;
    for (int i = 0; i < array.GetSize(); ++i)
        numbers.push_back(static_cast<int>(reinterpret_cast<UINT_PTR>(array[i])));
    return numbers;
}

std::vector<std::wstring> Keys(const CStdStringPtrMap& map)
{
    std::vector<std::wstring> keys;
    for (int i = 0; i < map.GetSize(); ++i)
        keys.push_back(map.GetAt(i));
    return keys;
}

using List = std::vector<int>;
using Words = std::vector<std::wstring>;

} // namespace

TEST(PtrArrayTest, InsertsAnywhereAndAppendsAtTheEnd)
{
    CStdPtrArray array;
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_TRUE(array.Add(P(1)));
    EXPECT_TRUE(array.InsertAt(1, P(3)));
    EXPECT_TRUE(array.InsertAt(1, P(2)));
    EXPECT_TRUE(array.InsertAt(0, P(9)));
    EXPECT_EQ(Numbers(array), (List{9, 1, 2, 3}));
}

TEST(PtrArrayTest, RefusesIndicesOutOfRange)
{
    CStdPtrArray array;
    array.Add(P(1));
    EXPECT_FALSE(array.InsertAt(2, P(2)));
    EXPECT_FALSE(array.InsertAt(-1, P(2)));
    EXPECT_FALSE(array.SetAt(1, P(2)));
    EXPECT_FALSE(array.SetAt(-1, P(2)));
    EXPECT_FALSE(array.Remove(1));
    EXPECT_FALSE(array.Remove(-1));
    EXPECT_EQ(array.GetAt(1), nullptr);
    EXPECT_EQ(array.GetAt(-1), nullptr);
    EXPECT_EQ(Numbers(array), (List{1}));
}

TEST(PtrArrayTest, FindsSetsAndRemoves)
{
    CStdPtrArray array(4);
    for (int i = 1; i <= 20; ++i)
        array.Add(P(i));
    EXPECT_EQ(array.Find(P(20)), 19);
    EXPECT_EQ(array.Find(P(99)), -1);
    EXPECT_TRUE(array.SetAt(0, P(50)));
    EXPECT_TRUE(array.Remove(1));
    EXPECT_TRUE(array.Remove(18));
    EXPECT_EQ(array.GetSize(), 18);
    EXPECT_EQ(array.GetAt(0), P(50));
    EXPECT_EQ(array.GetAt(1), P(3));
    EXPECT_EQ(array.GetAt(17), P(19));
    EXPECT_EQ(array.GetData()[0], P(50));
}

TEST(PtrArrayTest, ResizeEmptiesAndHoldsNulls)
{
    CStdPtrArray array;
    array.Add(P(1));
    array.Resize(3);
    EXPECT_EQ(Numbers(array), (List{0, 0, 0}));
    array.Resize(0);
    EXPECT_TRUE(array.IsEmpty());
    array.Add(P(2));
    array.Empty();
    EXPECT_TRUE(array.IsEmpty());
}

TEST(PtrArrayTest, AssignmentCopiesTheEntries)
{
    CStdPtrArray original;
    original.Add(P(1));
    original.Add(P(2));
    CStdPtrArray copy(original);
    CStdPtrArray assigned;
    assigned.Add(P(7));
    assigned = original;

    original.SetAt(0, P(9));
    copy.Add(P(3));
    EXPECT_EQ(Numbers(original), (List{9, 2}));
    EXPECT_EQ(Numbers(copy), (List{1, 2, 3}));
    EXPECT_EQ(Numbers(assigned), (List{1, 2}));
    const CStdPtrArray& same = assigned;
    assigned = same;
    EXPECT_EQ(Numbers(assigned), (List{1, 2}));
}

TEST(ValArrayTest, CopiesRecordsByValue)
{
    CStdValArray array(sizeof(POINT));
    for (int i = 0; i < 30; ++i) {
        const POINT point = {i, -i};
        EXPECT_TRUE(array.Add(&point));
    }
    ASSERT_EQ(array.GetSize(), 30);
    EXPECT_EQ(static_cast<POINT*>(array.GetAt(29))->y, -29);
    EXPECT_TRUE(array.Remove(0));
    EXPECT_EQ(static_cast<POINT*>(array[0])->x, 1);
    EXPECT_FALSE(array.Remove(29));
    EXPECT_EQ(array.GetAt(29), nullptr);
    EXPECT_EQ(array.GetAt(-1), nullptr);
    array.Empty();
    EXPECT_TRUE(array.IsEmpty());
}

TEST(ValArrayTest, TakesARecordOfItsOwnWhileItGrows)
{
    CStdValArray array(sizeof(int), 1);
    const int first = 42;
    array.Add(&first);
    for (int i = 0; i < 100; ++i)
        array.Add(array.GetAt(0));
    EXPECT_EQ(*static_cast<int*>(array.GetAt(100)), 42);
}

TEST(ValArrayTest, CopiesShareNothing)
{
    CStdValArray original(sizeof(int));
    const int one = 1;
    const int two = 2;
    original.Add(&one);
    CStdValArray copy(original);
    CStdValArray assigned(sizeof(double));
    assigned = original;
    original.Add(&two);
    *static_cast<int*>(original.GetAt(0)) = 9;
    EXPECT_EQ(copy.GetSize(), 1);
    EXPECT_EQ(*static_cast<int*>(copy.GetAt(0)), 1);
    EXPECT_EQ(*static_cast<int*>(assigned.GetAt(0)), 1);
}

TEST(StringPtrMapTest, FindsExactKeysOnly)
{
    CStdStringPtrMap map;
    EXPECT_TRUE(map.Insert(L"Key", P(1)));
    EXPECT_EQ(map.Find(L"Key"), P(1));
    EXPECT_EQ(map.Find(L"key"), nullptr);
    EXPECT_EQ(map.Find(L""), nullptr);
    EXPECT_EQ(map.Find(nullptr), nullptr);
}

TEST(StringPtrMapTest, CopiesItsKeys)
{
    CStdStringPtrMap map;
    wchar_t key[] = L"abc";
    map.Insert(key, P(1));
    key[0] = L'x';
    EXPECT_EQ(map.Find(L"abc"), P(1));
    EXPECT_EQ(map.Find(L"xbc"), nullptr);
}

TEST(StringPtrMapTest, InsertRefusesAKeyThatHasAValue)
{
    CStdStringPtrMap map;
    EXPECT_TRUE(map.Insert(L"a", P(1)));
    EXPECT_FALSE(map.Insert(L"a", P(2)));
    EXPECT_EQ(map.Find(L"a"), P(1));
    EXPECT_EQ(map.GetSize(), 1);
    EXPECT_FALSE(map.Insert(nullptr, P(1)));
}

TEST(StringPtrMapTest, InsertTakesAKeyWhoseValueIsNull)
{
    CStdStringPtrMap map;
    EXPECT_TRUE(map.Insert(L"a", nullptr));
    EXPECT_TRUE(map.Insert(L"a", P(2)));
    EXPECT_EQ(map.Find(L"a"), P(2));
    EXPECT_EQ(map.GetSize(), 1);
}

TEST(StringPtrMapTest, SetReplacesAndAnswersTheOldValue)
{
    CStdStringPtrMap map;
    EXPECT_EQ(map.Set(L"a", P(1)), nullptr);
    EXPECT_EQ(map.Set(L"a", P(2)), P(1));
    EXPECT_EQ(map.Find(L"a"), P(2));
    EXPECT_EQ(map.GetSize(), 1);
}

TEST(StringPtrMapTest, RemovesOneOrAll)
{
    CStdStringPtrMap map;
    for (int i = 1; i <= 200; ++i)
        map.Insert(std::to_wstring(i).c_str(), P(i));
    EXPECT_TRUE(map.Remove(L"77"));
    EXPECT_FALSE(map.Remove(L"77"));
    EXPECT_FALSE(map.Remove(nullptr));
    EXPECT_EQ(map.GetSize(), 199);
    for (int i = 1; i <= 200; ++i)
        EXPECT_EQ(map.Find(std::to_wstring(i).c_str()), i == 77 ? nullptr : P(i));
    map.RemoveAll();
    EXPECT_EQ(map.GetSize(), 0);
    EXPECT_TRUE(map.Insert(L"77", P(1)));
}

TEST(StringPtrMapTest, WithoutBucketsItTakesNothing)
{
    CStdStringPtrMap map;
    map.Insert(L"a", P(1));
    map.Resize(0);
    EXPECT_EQ(map.GetSize(), 0);
    EXPECT_EQ(map.Find(L"a"), nullptr);
    EXPECT_FALSE(map.Insert(L"a", P(1)));
    EXPECT_EQ(map.Set(L"a", P(5)), P(5));
    EXPECT_FALSE(map.Remove(L"a"));
    EXPECT_EQ(map.GetAt(0), nullptr);
    map.Resize(5);
    EXPECT_TRUE(map.Insert(L"a", P(1)));
    EXPECT_EQ(map.Find(L"a"), P(1));
}

TEST(StringPtrMapTest, WalksFromTheLastBucketToTheFirst)
{
    // One code unit hashes to itself, so with 16 buckets 'a' (97) is in bucket 1 and 'o' (111) in
    // bucket 15.
    CStdStringPtrMap map(16);
    for (const wchar_t* key : {L"a", L"o", L"b"})
        map.Insert(key, P(1));
    EXPECT_EQ(Keys(map), (Words{L"o", L"b", L"a"}));
    EXPECT_STREQ(map[0], L"o");
    EXPECT_EQ(map.GetAt(3), nullptr);
    EXPECT_EQ(map.GetAt(-1), nullptr);
}

TEST(StringPtrMapTest, HashesFromTheLastUnitToTheFirst)
{
    // "ab": 98 * 33 + 97 = 3331 = 3 (mod 16); "ba": 97 * 33 + 98 = 3299 = 3; "bc": 99 * 33 + 98
    // = 3365 = 5; "cb": 98 * 33 + 99 = 3333 = 5; "ac": 99 * 33 + 97 = 3364 = 4.
    CStdStringPtrMap map(16);
    for (const wchar_t* key : {L"ab", L"ba", L"bc", L"cb", L"ac"})
        map.Insert(key, P(1));
    EXPECT_EQ(Keys(map), (Words{L"cb", L"bc", L"ac", L"ba", L"ab"}));
}

TEST(StringPtrMapTest, HasAtLeastSixteenBuckets)
{
    // With fewer buckets 'a' and 'i' (105 = 97 + 8) would share one, newest first.
    CStdStringPtrMap map(8);
    map.Insert(L"i", P(1));
    map.Insert(L"a", P(1));
    EXPECT_EQ(Keys(map), (Words{L"i", L"a"}));
}

TEST(StringPtrMapTest, FindMovesTheEntryToTheHeadOfItsBucket)
{
    CStdStringPtrMap map(16);
    for (const wchar_t* key : {L"A", L"Q", L"a"})
        map.Insert(key, P(1));
    EXPECT_EQ(Keys(map), (Words{L"a", L"Q", L"A"}));

    map.Find(L"A", false);
    EXPECT_EQ(Keys(map), (Words{L"a", L"Q", L"A"}));
    const CStdStringPtrMap& constant = map;
    constant.Find(L"A");
    EXPECT_EQ(Keys(map), (Words{L"A", L"a", L"Q"}));
}

TEST(StringPtrMapTest, ALoopThatFindsEachKeyReachesEveryEntryOnce)
{
    CStdStringPtrMap map(16);
    for (int i = 1; i <= 100; ++i)
        map.Insert(std::to_wstring(i).c_str(), P(i));

    std::multiset<UINT_PTR> seen;
    for (int i = 0; i < map.GetSize(); ++i) {
        LPCTSTR key = map.GetAt(i);
        ASSERT_NE(key, nullptr);
        seen.insert(reinterpret_cast<UINT_PTR>(map.Find(key)));
    }
    EXPECT_EQ(seen.size(), 100u);
    for (UINT_PTR i = 1; i <= 100; ++i)
        EXPECT_EQ(seen.count(i), 1u) << i;
}

TEST(StringPtrMapTest, ACopySharesTheEntries)
{
    static_assert(std::is_copy_constructible_v<CStdStringPtrMap>);
    static_assert(std::is_copy_assignable_v<CStdStringPtrMap>);

    CStdStringPtrMap original;
    original.Insert(L"a", P(1));
    alignas(CStdStringPtrMap) unsigned char memory[sizeof(CStdStringPtrMap)];
    const auto* const copy = new (memory) CStdStringPtrMap(original);
    EXPECT_EQ(copy->GetSize(), 1);
    EXPECT_EQ(copy->GetAt(0), original.GetAt(0));
    original.Set(L"a", P(2));
    EXPECT_EQ(copy->Find(L"a"), P(2));
    // Only one of the two may be destroyed, so the copy is not.
}
