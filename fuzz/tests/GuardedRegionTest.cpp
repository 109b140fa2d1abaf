#include "fuzz/engine/GuardedRegion.h"
#include "fuzz/engine/GuardedText.h"
#include "fuzz/tests/ChildProcess.h"

#include <gtest/gtest.h>

namespace {

using namespace fuzz;

template <class T>
bool CanRead(const T* address)
{
    MEMORY_BASIC_INFORMATION memory{};
    ::VirtualQuery(address, &memory, sizeof memory);
    return memory.State == MEM_COMMIT && memory.Protect == PAGE_READWRITE;
}

TEST(GuardedRegionTest, NothingCanBeReadBehindACopyOfAnyLength)
{
    GuardedRegion region(5000);
    for (const std::size_t size : {0u, 1u, 2u, 3u, 4095u, 4096u, 4097u, 5000u}) {
        const Bytes bytes(size, std::byte{7});
        const ByteView copy = region.Place(bytes);
        ASSERT_EQ(copy.size(), size);
        EXPECT_TRUE(std::equal(copy.begin(), copy.end(), bytes.begin()));
        EXPECT_TRUE(size == 0 || CanRead(copy.data() + size - 1));
        EXPECT_FALSE(CanRead(copy.data() + size)) << size;
    }
}

TEST(GuardedTextTest, TheFinalZeroIsTheLastThingThatCanBeRead)
{
    GuardedText text(100);
    for (const std::wstring content : {L"", L"a", L"ab", L"abc"}) {
        const wchar_t* const copy = text.Place(content);
        EXPECT_EQ(copy, content);
        EXPECT_TRUE(CanRead(copy + content.size()));
        EXPECT_FALSE(CanRead(copy + content.size() + 1));
    }
}

TEST(GuardedTextTest, AWholeTextEndsAtItsFirstZero)
{
    GuardedText text(100);
    EXPECT_STREQ(text.Place({L"ab\0cd", 5}), L"ab");
}

TEST(WidenTest, ReadsUtf8AndTurnsAnythingElseIntoLoneSurrogates)
{
    EXPECT_EQ(Widen(AsBytes("a\xC3\xA4\xE4\xB8\xAD")), L"a\u00E4\u4E2D");
    EXPECT_EQ(Widen(AsBytes("\xF0\x9F\x98\x80")), L"\xD83D\xDE00");
    EXPECT_EQ(Widen(AsBytes("\xFFz")), L"\xDCFFz");
    EXPECT_EQ(Widen(AsBytes("\xC3")), L"\xDCC3");
    EXPECT_EQ(Widen(AsBytes("\xC0\x80")), L"\xDCC0\xDC80");
}

} // namespace
