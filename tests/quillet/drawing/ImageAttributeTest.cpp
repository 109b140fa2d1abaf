#include <gtest/gtest.h>

#include "quillet/drawing/ReferenceAttribute.h"
#include "quillet/quillet.h"
#include "support/ImportHook.h"
#include "support/Picture.h"
#include "support/TempFolder.h"

#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace DuiLib {

// For failing tests.
static void PrintTo(const TImageInfo* image, std::ostream* out)
{
    *out << static_cast<const void*>(image);
}

} // namespace DuiLib

namespace test {
namespace {

using namespace DuiLib;

AttributeFields FieldsOf(CImageAttribute& attribute)
{
    const auto edges = [](const RECT& rect) {
        return std::array<long, 4>{rect.left, rect.top, rect.right, rect.bottom};
    };
    return {.name = attribute.GetImageName().GetData(),
            .type = attribute.GetResType().GetData(),
            .dest = edges(attribute.GetDest()),
            .source = edges(attribute.GetSource()),
            .corner = edges(attribute.GetCorner()),
            .fade = attribute.GetFade(),
            .mask = attribute.GetMask(),
            .hole = attribute.IsHole(),
            .xTiled = attribute.IsXTiled(),
            .yTiled = attribute.IsYTiled()};
}

AttributeFields Parsed(const std::wstring& text)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(text.c_str());
    EXPECT_STREQ(attribute.GetAttributeString(), text.c_str());
    return FieldsOf(attribute);
}

struct Case {
    std::wstring text;
    AttributeFields fields; // a name that is not given is the whole text
};

void ExpectParsed(std::vector<Case> cases)
{
    for (auto& [text, expected] : cases) {
        SCOPED_TRACE(Utf8(text));
        if (expected.name.empty())
            expected.name = text;
        EXPECT_EQ(Parsed(text), expected);
        EXPECT_EQ(ReferenceAttribute(text), expected) << "of the reference";
    }
}

TEST(ImageAttributeTest, HasNothingAtFirst)
{
    CImageAttribute attribute;
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{});
    EXPECT_STREQ(attribute.GetAttributeString(), L"");
    EXPECT_EQ(attribute.GetFade(), 255);
    EXPECT_EQ(attribute.GetImageInfo(), nullptr);
    EXPECT_FALSE(attribute.IsLoadSuccess());
}

TEST(ImageAttributeTest, WholeTextIsTheNameUntilAPairSaysOtherwise)
{
    ExpectParsed({{L"man_big.png", {.name = L"man_big.png"}},
                  {L"pictures\\a b.png", {.name = L"pictures\\a b.png"}},
                  {L" ", {.name = L" "}},
                  {L"'", {.name = L"'"}},
                  {L"=", {.name = L"="}},
                  {L"dest='1,2,3,4'", {.name = L"dest='1,2,3,4'", .dest = {1, 2, 3, 4}}},
                  {L"fade='7' file='a.png'", {.name = L"a.png", .fade = 7}}});
}

TEST(ImageAttributeTest, ReadsEveryKey)
{
    ExpectParsed({
        {L"file='a.png'", {.name = L"a.png"}},
        {L"res='101'", {.name = L"101"}},
        {L"restype='png'", {.type = L"png"}},
        {L"dest='1,2,3,4'", {.dest = {1, 2, 3, 4}}},
        {L"source='5,6,7,8'", {.source = {5, 6, 7, 8}}},
        {L"corner='9,10,11,12'", {.corner = {9, 10, 11, 12}}},
        {L"mask='FF00FF'", {.mask = 0x00FF00FF}},
        {L"mask='#FF00FF'", {.mask = 0x00FF00FF}},
        {L"fade='128'", {.fade = 128}},
        {L"hole='true'", {.hole = true}},
        {L"xtiled='true'", {.xTiled = true}},
        {L"ytiled='true'", {.yTiled = true}},
        {L"file='a.png' restype='png' dest='1,2,3,4' source='5,6,7,8' corner='9,10,11,12' "
         L"mask='#12345678' fade='9' hole='true' xtiled='true' ytiled='true'",
         {.name = L"a.png",
          .type = L"png",
          .dest = {1, 2, 3, 4},
          .source = {5, 6, 7, 8},
          .corner = {9, 10, 11, 12},
          .fade = 9,
          .mask = 0x12345678,
          .hole = true,
          .xTiled = true,
          .yTiled = true}},
    });
}

TEST(ImageAttributeTest, IgnoresOtherKeys)
{
    for (const std::wstring key : {L"File", L"FILE", L"Dest", L"restypes", L"filex", L"fil", L"x",
                                   L"", L"xTiled", L"\x4E2D", L"'file'"})
        ExpectParsed({{key + L"='a.png' fade='5'", {.fade = 5}}});
}

TEST(ImageAttributeTest, FileAndResAreOneField)
{
    ExpectParsed({{L"file='a' res='b'", {.name = L"b"}}, {L"res='b' file='a'", {.name = L"a"}}});
}

TEST(ImageAttributeTest, LaterPairsReplaceEarlierOnes)
{
    ExpectParsed({{L"dest='1,2,3,4' dest='5'", {.dest = {5, 0, 0, 0}}},
                  {L"hole='true' hole='no'", {.hole = false}},
                  {L"fade='1' fade='2'", {.fade = 2}}});
}

TEST(ImageAttributeTest, BlanksCountForNothingBeforeAKeyAndAroundTheEqualsSign)
{
    for (const wchar_t blank : {L' ', L'\t', L'\n', L'\r', L'\x01', L'\x1F'}) {
        SCOPED_TRACE(static_cast<int>(blank));
        const std::wstring one(1, blank);
        const std::wstring three(3, blank);
        for (const auto& blanks : {one, three})
            ExpectParsed({{blanks + L"file='a'", {.name = L"a"}},
                          {L"file" + blanks + L"='a'", {.name = L"a"}},
                          {L"file=" + blanks + L"'a'", {.name = L"a"}},
                          {L"file='a' " + blanks + L"fade='3'", {.name = L"a", .fade = 3}}});
        // They belong to a value.
        ExpectParsed({{L"file='" + one + L"a" + one + L"'", {.name = one + L"a" + one}}});
    }
    // One above the largest blank is part of a key.
    ExpectParsed({{L"!file='a' fade='3'", {.fade = 3}},
                  {L"\x7F"
                   L"file='a'",
                   {}}});
}

TEST(ImageAttributeTest, PairsAreSeparatedByExactlyOneSpaceBehindTheQuote)
{
    ExpectParsed({
        {L"file='a.png' dest='1,2,3,4'", {.name = L"a.png", .dest = {1, 2, 3, 4}}},
        {L"file='a.png'  dest='1,2,3,4'", {.name = L"a.png", .dest = {1, 2, 3, 4}}},
        {L"file='a.png' \tdest='1,2,3,4'", {.name = L"a.png", .dest = {1, 2, 3, 4}}},
        {L"file='a.png',dest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png'\tdest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png'\ndest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png'\t dest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png'dest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png''dest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png' ,dest='1,2,3,4'", {.name = L"a.png"}},
        {L"file='a.png' ", {.name = L"a.png"}},
        {L"file='a.png'  ", {.name = L"a.png"}},
        {L"other='a.png',fade='1'", {}},
        {L"file='' fade='1'", {.fade = 1}},
        {L"file='',fade='1'", {}},
    });
}

TEST(ImageAttributeTest, FaultsEndTheReading)
{
    const std::wstring good = L"fade='1' ";
    for (const std::wstring fault :
         {L"", L"file", L"file ", L"file=", L"file= ", L"file='", L"file='a.png", L"file a='b'",
          L"file=a.png", L"file=\"a.png\"", L"=", L"'a'", L"file='a"})
        ExpectParsed({{good + fault, {.fade = 1}}});
    ExpectParsed({{L"hole='true' file=x ytiled='true'", {.hole = true}}});
}

TEST(ImageAttributeTest, EmptyValueIsIgnored)
{
    ExpectParsed({{L"file=''", {}},
                  {L"fade='7' fade=''", {.fade = 7}},
                  {L"hole='true' hole=''", {.hole = true}},
                  {L"dest='1,2,3,4' dest='' mask='A' mask=''", {.dest = {1, 2, 3, 4}, .mask = 10}},
                  {L"restype='x' restype=''", {.type = L"x"}}});
}

TEST(ImageAttributeTest, ValuesHaveNoEscapes)
{
    ExpectParsed({{LR"(file='a\'b' fade='1')", {.name = LR"(a\)"}},
                  {L"file='a''b' fade='1'", {.name = L"a"}},
                  {L"file='a&apos;b' fade='1'", {.name = L"a&apos;b", .fade = 1}},
                  {LR"(file='a"=b' fade='1')", {.name = LR"(a"=b)", .fade = 1}},
                  {LR"(file='c:\new\table.png')", {.name = LR"(c:\new\table.png)"}}});
}

TEST(ImageAttributeTest, BooleansAreTrueItselfOnly)
{
    for (const std::wstring value :
         {L"True", L"TRUE", L"1", L"yes", L" true", L"true ", L"truer", L"tru", L"false", L"0"})
        ExpectParsed({{L"hole='" + value + L"'", {}},
                      {L"xtiled='" + value + L"'", {}},
                      {L"ytiled='" + value + L"'", {}},
                      {L"hole='true' hole='" + value + L"'", {}}});
}

TEST(ImageAttributeTest, OneCharacterIsSkippedBehindANumber)
{
    struct Row {
        const wchar_t* value;
        std::array<long, 4> edges;
    };
    for (const auto& [value, edges] : {
             Row{L"1,2,3,4", {1, 2, 3, 4}},
             Row{L"1 2 3 4", {1, 2, 3, 4}},
             Row{L"1x2y3z4", {1, 2, 3, 4}},
             Row{L"1, 2, 3, 4", {1, 2, 3, 4}},
             Row{L" 1,\t2,\n3,4 ", {1, 2, 3, 4}},
             Row{L"1,2,3,4,5", {1, 2, 3, 4}},
             Row{L"1,,3,4", {1, 0, 3, 4}},
             Row{L"1,;2,3", {1, 0, 2, 3}},
             Row{L"1 ,2 ,3", {1, 0, 2, 0}},
             Row{L"ab1,2", {0, 0, 1, 2}},
             Row{L",,,7", {0, 0, 0, 7}},
             Row{L"1", {1, 0, 0, 0}},
             Row{L"1,", {1, 0, 0, 0}},
             Row{L"1,2,3", {1, 2, 3, 0}},
             Row{L"x", {0, 0, 0, 0}},
             Row{L"-1,+2,-3,+4", {-1, 2, -3, 4}},
             Row{L"--1,2", {0, -1, 2, 0}},
             Row{L"1-2-3-4", {1, 2, 3, 4}},
             Row{L"1,-,3", {1, 0, 0, 3}},
             Row{L"0x10,2", {0, 10, 2, 0}},
             Row{L"010,1.5,2", {10, 1, 5, 2}},
             Row{L"2147483647,-2147483648,2147483648,-2147483649",
                 {2147483647, -2147483647 - 1, 2147483647, -2147483647 - 1}},
             Row{L"99999999999999999999,1", {2147483647, 1, 0, 0}},
         }) {
        const std::wstring text = value;
        ExpectParsed({{L"dest='" + text + L"'", {.dest = edges}},
                      {L"source='" + text + L"'", {.source = edges}},
                      {L"corner='" + text + L"'", {.corner = edges}}});
    }
}

TEST(ImageAttributeTest, MaskIsHexadecimal)
{
    struct Row {
        const wchar_t* value;
        unsigned long mask;
    };
    for (const auto& [value, mask] :
         {Row{L"#FFFF00FF", 0xFFFF00FF}, Row{L"ffff00ff", 0xFFFF00FF}, Row{L"#", 0}, Row{L"0", 0},
          Row{L"##FF", 0}, Row{L" #FF", 0}, Row{L" FF", 0xFF}, Row{L"# FF", 0xFF},
          Row{L"0xFF", 0xFF}, Row{L"#0XfF", 0xFF}, Row{L"FFg0", 0xFF}, Row{L"g", 0},
          Row{L"123456789", 0xFFFFFFFF}, Row{L"-1", 0xFFFFFFFF}, Row{L"+a", 10}})
        ExpectParsed({{std::wstring(L"mask='") + value + L"'", {.mask = mask}}});
}

TEST(ImageAttributeTest, FadeIsCutToAByte)
{
    struct Row {
        const wchar_t* value;
        int fade;
    };
    for (const auto& [value, fade] :
         {Row{L"0", 0}, Row{L"255", 255}, Row{L"256", 0}, Row{L"300", 44}, Row{L"-1", 255},
          Row{L"x", 0}, Row{L" 12", 12}, Row{L"12x", 12}, Row{L"+5", 5}, Row{L"4294967295", 255},
          Row{L"4294967296", 255}, Row{L"0x10", 0}, Row{L"FF", 0}})
        ExpectParsed({{std::wstring(L"fade='") + value + L"'", {.fade = fade}}});
}

TEST(ImageAttributeTest, AnotherTextClearsTheFields)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(L"file='a' dest='1,2,3,4' fade='1' hole='true' restype='x'");
    attribute.SetAttributeString(L"fade='2'");
    EXPECT_EQ(FieldsOf(attribute), (AttributeFields{.name = L"fade='2'", .fade = 2}));
    attribute.SetAttributeString(L"");
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{});
    EXPECT_STREQ(attribute.GetAttributeString(), L"");
}

TEST(ImageAttributeTest, TheSameTextChangesNothing)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(L"file='a' dest='1,2,3,4'");
    attribute.SetDest({9, 9, 9, 9});
    attribute.ModifyAttribute(L"fade='7'");
    attribute.SetAttributeString(L"file='a' dest='1,2,3,4'");
    EXPECT_EQ(FieldsOf(attribute),
              (AttributeFields{.name = L"a", .dest = {9, 9, 9, 9}, .fade = 7}));
    attribute.SetAttributeString(L"FILE='a' dest='1,2,3,4'");
    EXPECT_EQ(attribute.GetFade(), 255) << "case makes another text";

    CImageAttribute fresh;
    fresh.ModifyAttribute(L"fade='7'");
    fresh.SetAttributeString(L"");
    EXPECT_EQ(fresh.GetFade(), 7) << "the empty text is set already";
}

TEST(ImageAttributeTest, NullIsTheEmptyText)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(nullptr);
    attribute.ModifyAttribute(nullptr);
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{});
    attribute.SetAttributeString(L"fade='1'");
    attribute.ModifyAttribute(nullptr);
    EXPECT_EQ(attribute.GetFade(), 1);
    attribute.SetAttributeString(nullptr);
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{});
}

TEST(ImageAttributeTest, ReadsItsOwnText)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(L"fade='1' file='dest'");
    attribute.ModifyAttribute(attribute.GetAttributeString());
    attribute.SetAttributeString(attribute.GetAttributeString().GetData() + 9);
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{.name = L"dest"});
    EXPECT_STREQ(attribute.GetAttributeString(), L"file='dest'");
    attribute.SetAttributeString(attribute.GetImageName());
    EXPECT_EQ(FieldsOf(attribute), AttributeFields{.name = L"dest"});
}

TEST(ImageAttributeTest, ModifyingClearsNothingAndKeepsTheText)
{
    CImageAttribute attribute;
    attribute.SetAttributeString(L"file='a' dest='1,2,3,4' hole='true'");
    attribute.ModifyAttribute(L"fade='7' dest='5,6' broken");
    EXPECT_EQ(FieldsOf(attribute),
              (AttributeFields{.name = L"a", .dest = {5, 6, 0, 0}, .fade = 7, .hole = true}));
    EXPECT_STREQ(attribute.GetAttributeString(), L"file='a' dest='1,2,3,4' hole='true'");
    attribute.ModifyAttribute(L"b.png");
    EXPECT_STREQ(attribute.GetImageName(), L"a");
    attribute.ModifyAttribute(L"");
    EXPECT_EQ(attribute.GetFade(), 7);
}

TEST(ImageAttributeTest, DestCanBeSet)
{
    CImageAttribute attribute;
    attribute.SetDest({4, 3, 2, 1});
    const RECT dest = attribute.GetDest();
    EXPECT_EQ(FieldsOf(attribute), (AttributeFields{.dest = {4, 3, 2, 1}}));
    EXPECT_EQ(dest.left, 4);
    EXPECT_EQ(dest.bottom, 1);
    EXPECT_FALSE(attribute.IsLoadSuccess()) << "there is no text";
}

TEST(ImageAttributeTest, LongTextsAreRead)
{
    const std::wstring name(5000, L'n');
    std::wstring text = L"file='" + name + L"'";
    for (int i = 0; i < 2000; ++i)
        text += L" fade='" + std::to_wstring(i) + L"'";
    EXPECT_EQ(Parsed(text), (AttributeFields{.name = name, .fade = 1999 % 256}));
}

TEST(ImageAttributeTest, HasOneVirtualOperation)
{
    struct Derived : CImageAttribute {
        explicit Derived(bool& flag) : destroyed(flag) {}
        ~Derived() override { destroyed = true; }
        bool& destroyed;
    };
    bool destroyed = false;
    std::unique_ptr<CImageAttribute>(new Derived(destroyed)).reset();
    EXPECT_TRUE(destroyed);
}

// Random texts

class RandomText {
public:
    explicit RandomText(unsigned seed) : m_random(seed) {}

    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    bool Chance(int inHundred) { return Below(100) < inHundred; }
    std::wstring From(std::wstring_view alphabet, int longest)
    {
        std::wstring text;
        for (int left = Below(longest + 1); left > 0; --left)
            text += alphabet[static_cast<std::size_t>(Below(static_cast<int>(alphabet.size())))];
        return text;
    }
    std::wstring Blanks() { return From(L" \t\n", Chance(80) ? 0 : 3); }

    // A pair, and what it does.
    std::wstring Pair(AttributeFields& fields)
    {
        switch (Below(11)) {
        case 0:
            return Written(L"file", fields.name = Name());
        case 1:
            return Written(L"res", fields.name = Name());
        case 2:
            return Written(L"restype", fields.type = Name());
        case 3:
            return Written(L"dest", Edges(fields.dest));
        case 4:
            return Written(L"source", Edges(fields.source));
        case 5:
            return Written(L"corner", Edges(fields.corner));
        case 6:
            return Written(L"mask", Mask(fields.mask));
        case 7:
            fields.fade = Below(256);
            return Written(L"fade", std::to_wstring(fields.fade + 256 * Below(4)));
        case 8:
            return Written(L"hole", Flag(fields.hole));
        case 9:
            return Written(L"xtiled", Flag(fields.xTiled));
        default:
            return Written(L"ytiled", Flag(fields.yTiled));
        }
    }

private:
    std::wstring Written(const std::wstring& key, const std::wstring& value)
    {
        return Blanks() + key + Blanks() + L'=' + Blanks() + L'\'' + value + L'\'';
    }
    std::wstring Name() { return L"n" + From(L"abc .\\/=@\"\x4E2D\x00E9", 8); }
    std::wstring Edges(std::array<long, 4>& edges)
    {
        std::wstring text;
        for (long& edge : edges) {
            edge = Chance(50) ? Below(100) : static_cast<long>(m_random());
            text += (text.empty() ? L"" : Chance(80) ? L"," : L" ") + std::to_wstring(edge);
        }
        return text;
    }
    std::wstring Mask(unsigned long& mask)
    {
        mask = static_cast<unsigned long>(m_random());
        wchar_t text[16];
        std::swprintf(text, std::size(text), Chance(50) ? L"#%08lx" : L"%lX", mask);
        return text;
    }
    std::wstring Flag(bool& flag)
    {
        flag = Chance(60);
        return flag ? L"true" : Chance(50) ? L"false" : L"True";
    }

    std::mt19937 m_random;
};

TEST(ImageAttributeTest, RandomDescriptionsReadBack)
{
    RandomText random(20'240'602);
    for (int i = 0; i < 5000; ++i) {
        AttributeFields fields;
        std::wstring text;
        for (int pairs = 1 + random.Below(8); pairs > 0; --pairs)
            text += (text.empty() ? L"" : L" ") + random.Pair(fields);
        text += random.Chance(20) ? L" " : L"";
        if (fields.name.empty())
            fields.name = text;
        ASSERT_EQ(Parsed(text), fields) << Utf8(text);
        ASSERT_EQ(ReferenceAttribute(text), fields) << Utf8(text);
    }
}

TEST(ImageAttributeTest, RandomModificationsReadBack)
{
    RandomText random(4711);
    CImageAttribute attribute;
    AttributeFields fields;
    for (int i = 0; i < 5000; ++i) {
        std::wstring text = random.Pair(fields);
        if (random.Chance(50))
            text += L" " + random.Pair(fields);
        attribute.ModifyAttribute(text.c_str());
        ASSERT_EQ(FieldsOf(attribute), fields) << Utf8(text);
    }
}

TEST(ImageAttributeTest, GarbageIsReadAsTheReferenceReadsIt)
{
    RandomText random(99);
    int applied = 0;
    for (int i = 0; i < 100'000; ++i) {
        // Letters alone seldom make a key, so words are mixed in.
        static const std::wstring kWords[] = {
            L"file", L"res",    L"restype", L"dest",       L"source",   L"corner", L"mask",
            L"fade", L"hole",   L"xtiled",  L"ytiled",     L"true",     L"='",     L"' ",
            L"12,3", L"file='", L"dest='",  L"hole='true", L"' fade='", L"mask='#"};
        std::wstring text;
        for (int parts = random.Below(14); parts > 0; --parts)
            text += random.Chance(60) ? kWords[random.Below(static_cast<int>(std::size(kWords)))]
                                      : random.From(L"=''  \tax1-+,#0f\x01", 3);
        const auto fields = Parsed(text);
        ASSERT_EQ(fields, ReferenceAttribute(text)) << Utf8(text);
        applied += fields != AttributeFields{.name = text};
    }
    EXPECT_GT(applied, 1000) << "the garbage has too few pairs in it";
}

// Loading

class ImageAttributeLoadTest : public testing::Test {
protected:
    ImageAttributeLoadTest()
    {
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
        Picture picture(100, 80, Argb{0xFFFF0000});
        picture.Set(0, 0, Argb{0xFF00FF00});
        picture.Save(folder / L"a.png");
    }
    ~ImageAttributeLoadTest() override { CPaintManagerUI::SetResourcePath(L""); }

    std::array<long, 4> SourceAfterLoading(const wchar_t* text)
    {
        CImageAttribute attribute;
        attribute.SetAttributeString(text);
        EXPECT_TRUE(attribute.LoadImageW(&manager));
        return FieldsOf(attribute).source;
    }

    TempFolder folder;
    CPaintManagerUI manager;
    CImageAttribute attribute;
};

TEST_F(ImageAttributeLoadTest, TakesThePictureOfTheManager)
{
    attribute.SetAttributeString(L"a.png");
    EXPECT_EQ(attribute.GetImageInfo(), nullptr);
    ASSERT_TRUE(attribute.LoadImageW(&manager));
    ASSERT_NE(attribute.GetImageInfo(), nullptr);
    EXPECT_EQ(attribute.GetImageInfo(), manager.GetImage(L"a.png"));
    EXPECT_EQ(attribute.GetImageInfo()->nX, 100);
    EXPECT_EQ(attribute.GetImageInfo()->nY, 80);
    EXPECT_FALSE(attribute.GetImageInfo()->bUseHSL);
    EXPECT_EQ(attribute.GetImageInfo()->pImage, nullptr) << "not for GDI+";
    EXPECT_NE(attribute.GetImageInfo()->hBitmap, nullptr);
    EXPECT_TRUE(attribute.IsLoadSuccess());
}

TEST_F(ImageAttributeLoadTest, SourceIsTheWholeOrIsCut)
{
    using Edges = std::array<long, 4>;
    EXPECT_EQ(SourceAfterLoading(L"a.png"), (Edges{0, 0, 100, 80}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='0,0,0,0'"), (Edges{0, 0, 100, 80}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='0,0,500,500'"), (Edges{0, 0, 100, 80}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='10,20,30,40'"), (Edges{10, 20, 30, 40}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='10,20,130,40'"), (Edges{10, 20, 100, 40}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='10,20,30,81'"), (Edges{10, 20, 30, 80}));
    // Left and top are as they are written, and no zero is filled in beside other numbers.
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='500,-3,0,0'"), (Edges{500, -3, 0, 0}));
    EXPECT_EQ(SourceAfterLoading(L"file='a.png' source='0,0,-5,1'"), (Edges{0, 0, -5, 1}));
}

TEST_F(ImageAttributeLoadTest, HandsTheMaskOn)
{
    attribute.SetAttributeString(L"file='a.png' mask='#FF00FF00'");
    ASSERT_TRUE(attribute.LoadImageW(&manager));
    EXPECT_EQ(attribute.GetImageInfo()->dwMask, 0xFF00FF00u);
    EXPECT_TRUE(attribute.GetImageInfo()->bAlpha);
    EXPECT_EQ(attribute.GetImageInfo()->pBits[3], 0) << "the green pixel is gone";
    EXPECT_EQ(attribute.GetImageInfo()->pBits[7], 255);
}

// What the manager asks the system for.
struct AskedResource {
    static inline std::vector<std::wstring> types;
    static HRSRC WINAPI Find(HMODULE, LPCWSTR, LPCWSTR type)
    {
        types.push_back(IS_INTRESOURCE(type) ? L"#" : type);
        return nullptr;
    }
};

TEST_F(ImageAttributeLoadTest, HandsTheTypeOn)
{
    AskedResource::types.clear();
    const ImportHook hook(L"DuiLib.dll", "KERNEL32.dll", "FindResourceW", &AskedResource::Find);
    ASSERT_TRUE(hook);
    attribute.SetAttributeString(L"res='picture' restype='PNGS'");
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    ASSERT_FALSE(AskedResource::types.empty());
    EXPECT_EQ(AskedResource::types[0], L"PNGS");

    // No type at all is a file.
    AskedResource::types.clear();
    attribute.SetAttributeString(L"file='a.png'");
    EXPECT_TRUE(attribute.LoadImageW(&manager));
    EXPECT_TRUE(AskedResource::types.empty());
}

// Stands between the attribute and the manager: what was asked for, and nothing is found.
class AskedManager {
public:
    struct Question {
        CPaintManagerUI* manager;
        std::wstring name;
        LPCTSTR type;
        DWORD mask;
        bool useHsl;
        HINSTANCE instance;
        bool gdiplus;
    };
    static inline std::vector<Question> questions;

    AskedManager()
    {
        questions.clear();
        // Compilers decorate the name in their own ways.
        ForEachImport(::GetModuleHandleW(L"Quillet.dll"), &FindOperation, this);
        if (m_slot)
            m_original = ReplaceImport(m_slot, reinterpret_cast<void*>(&Answer));
    }
    ~AskedManager()
    {
        if (m_slot)
            ReplaceImport(m_slot, m_original);
    }
    AskedManager(const AskedManager&) = delete;
    AskedManager& operator=(const AskedManager&) = delete;

    bool Found() const { return m_slot != nullptr; }

private:
    static void FindOperation(void* self, const char*, const char* name, void** slot)
    {
        if (std::string_view(name).find("GetImageEx") != std::string_view::npos)
            static_cast<AskedManager*>(self)->m_slot = slot;
    }
    static const TImageInfo* Answer(CPaintManagerUI* manager, LPCTSTR name, LPCTSTR type,
                                    DWORD mask, bool useHsl, HINSTANCE instance, bool gdiplus)
    {
        questions.push_back({manager, name, type, mask, useHsl, instance, gdiplus});
        return nullptr;
    }

    void** m_slot = nullptr;
    void* m_original = nullptr;
};

TEST_F(ImageAttributeLoadTest, AsksForNameTypeAndMaskOnly)
{
    const AskedManager asked;
    ASSERT_TRUE(asked.Found());
    attribute.SetAttributeString(L"file='a.png' mask='#80FF0000'");
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    ASSERT_EQ(asked.questions.size(), 1u) << "a failure is not tried again";
    const auto& question = asked.questions[0];
    EXPECT_EQ(question.manager, &manager);
    EXPECT_EQ(question.name, L"a.png");
    EXPECT_EQ(question.type, nullptr) << "not the empty text";
    EXPECT_EQ(question.mask, 0x80FF0000u);
    EXPECT_FALSE(question.useHsl);
    EXPECT_EQ(question.instance, nullptr);
    EXPECT_FALSE(question.gdiplus);
}

TEST_F(ImageAttributeLoadTest, ASecondTimeAsksNobody)
{
    attribute.SetAttributeString(L"file='a.png' source='1,2,3,4'");
    ASSERT_TRUE(attribute.LoadImageW(&manager));
    const TImageInfo* const loaded = attribute.GetImageInfo();
    attribute.ModifyAttribute(L"source='1,2,900,900'");
    EXPECT_TRUE(attribute.LoadImageW(nullptr));
    EXPECT_EQ(attribute.GetImageInfo(), loaded);
    EXPECT_EQ(FieldsOf(attribute).source, (std::array<long, 4>{1, 2, 900, 900}));

    attribute.ModifyAttribute(L"file='other.png'");
    EXPECT_TRUE(attribute.LoadImageW(&manager));
    EXPECT_EQ(attribute.GetImageInfo(), loaded) << "the picture stays";
}

TEST_F(ImageAttributeLoadTest, AFailureIsNotTriedAgainUntilAnotherText)
{
    attribute.SetAttributeString(L"late.png");
    EXPECT_TRUE(attribute.IsLoadSuccess());
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    EXPECT_FALSE(attribute.IsLoadSuccess());
    EXPECT_EQ(attribute.GetImageInfo(), nullptr);

    Picture(3, 3, Argb{0xFF0000FF}).Save(folder / L"late.png");
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    attribute.SetAttributeString(L"late.png");
    EXPECT_FALSE(attribute.LoadImageW(&manager)) << "the same text";
    attribute.ModifyAttribute(L"file='a.png'");
    EXPECT_FALSE(attribute.LoadImageW(&manager)) << "modified";
    EXPECT_FALSE(attribute.IsLoadSuccess());
    EXPECT_STREQ(attribute.GetImageName(), L"a.png");
    CImageAttribute copy(attribute);
    EXPECT_FALSE(copy.LoadImageW(&manager)) << "copied";

    attribute.SetAttributeString(L"file='late.png'");
    EXPECT_TRUE(attribute.IsLoadSuccess());
    EXPECT_TRUE(attribute.LoadImageW(&manager));
}

// True needs a text and no failure, no picture.
TEST_F(ImageAttributeLoadTest, SuccessIsClaimedWithoutALoad)
{
    EXPECT_FALSE(attribute.IsLoadSuccess());
    attribute.SetAttributeString(L"no such file.png");
    EXPECT_TRUE(attribute.IsLoadSuccess());
    EXPECT_EQ(attribute.GetImageInfo(), nullptr);
    attribute.SetAttributeString(L"");
    EXPECT_FALSE(attribute.IsLoadSuccess());
    attribute.ModifyAttribute(L"file='a.png'");
    EXPECT_TRUE(attribute.LoadImageW(&manager));
    EXPECT_FALSE(attribute.IsLoadSuccess()) << "loaded, but without a text";
}

TEST_F(ImageAttributeLoadTest, WithoutNameOrManagerFails)
{
    EXPECT_FALSE(attribute.LoadImageW(&manager));
    attribute.SetAttributeString(L"a.png");
    EXPECT_FALSE(attribute.LoadImageW(nullptr));
    EXPECT_TRUE(attribute.LoadImageW(&manager)) << "nobody was asked before";
}

TEST_F(ImageAttributeLoadTest, AnotherTextForgetsThePicture)
{
    attribute.SetAttributeString(L"a.png");
    ASSERT_TRUE(attribute.LoadImageW(&manager));
    attribute.SetAttributeString(L"file='a.png'");
    EXPECT_EQ(attribute.GetImageInfo(), nullptr);
    EXPECT_EQ(FieldsOf(attribute).source, (std::array<long, 4>{}));
    EXPECT_NE(manager.GetImage(L"a.png"), nullptr) << "it is the manager's";
}

TEST_F(ImageAttributeLoadTest, CopiesHaveAllFieldsAndThePicture)
{
    attribute.SetAttributeString(L"file='a.png' restype='' dest='1,2,3,4' corner='1,1,1,1' "
                                 L"fade='3' mask='5' hole='true' xtiled='true' ytiled='true'");
    attribute.ModifyAttribute(L"fade='4'");
    ASSERT_TRUE(attribute.LoadImageW(&manager));

    const auto expectSame = [&](CImageAttribute& copy) {
        EXPECT_EQ(FieldsOf(copy), FieldsOf(attribute));
        EXPECT_STREQ(copy.GetAttributeString(), attribute.GetAttributeString());
        EXPECT_EQ(copy.GetImageInfo(), attribute.GetImageInfo());
        EXPECT_TRUE(copy.LoadImageW(nullptr));
    };
    CImageAttribute copy(attribute);
    expectSame(copy);
    CImageAttribute assigned;
    assigned.SetAttributeString(L"restype='old'");
    assigned = attribute;
    expectSame(assigned);
    const CImageAttribute& same = assigned;
    assigned = same;
    expectSame(assigned);

    copy.SetAttributeString(L"other");
    EXPECT_STREQ(attribute.GetImageName(), L"a.png") << "texts are the copy's own";
    copy.SetDest({9, 9, 9, 9});
    EXPECT_EQ(attribute.GetDest().left, 1);
}

} // namespace
} // namespace test
