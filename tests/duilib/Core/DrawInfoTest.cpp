#include <UIlib.h>

#include <gtest/gtest.h>

namespace {

using DuiLib::CPaintManagerUI;
using DuiLib::TDrawInfo;

TDrawInfo Parsed(const wchar_t* image, const wchar_t* modify = nullptr,
                 CPaintManagerUI* manager = nullptr)
{
    TDrawInfo info;
    info.Parse(image, modify, manager);
    return info;
}

std::wstring Text(const DuiLib::CDuiString& text)
{
    return text.GetData();
}

void ExpectRect(const RECT& actual, const RECT& expected)
{
    EXPECT_EQ(actual.left, expected.left);
    EXPECT_EQ(actual.top, expected.top);
    EXPECT_EQ(actual.right, expected.right);
    EXPECT_EQ(actual.bottom, expected.bottom);
}

void ExpectCleared(const TDrawInfo& info)
{
    for (const auto* text :
         {&info.sDrawString, &info.sDrawModify, &info.sImageName, &info.sResType, &info.sAlign})
        EXPECT_EQ(Text(*text), L"");
    for (const auto* rect : {&info.rcDest, &info.rcSource, &info.rcCorner, &info.rcPadding})
        ExpectRect(*rect, {});
    EXPECT_EQ(info.dwMask, 0u);
    EXPECT_EQ(info.uFade, 255u);
    EXPECT_EQ(info.uRotate, 0u);
    for (const bool flag : {info.bHole, info.bTiledX, info.bTiledY, info.bHSL, info.bGdiplus})
        EXPECT_FALSE(flag);
    EXPECT_EQ(info.szImage.cx, 0);
    EXPECT_EQ(info.szImage.cy, 0);
}

constexpr wchar_t kEveryKey[] =
    L"file='a.png' restype='PNG' dest='1,2,3,4' source='5,6,7,8' corner='9,10,11,12' "
    L"mask='#FF00FF00' fade='128' rotate='90' gdiplus='true' hole='true' xtiled='true' "
    L"ytiled='true' hsl='true' size='13,14' align='right' padding='15,16,17,18'";

TEST(DrawInfoTest, StartsCleared)
{
    ExpectCleared(TDrawInfo());
}

TEST(DrawInfoTest, ClearForgetsEverything)
{
    auto info = Parsed(kEveryKey, L"fade='3'");
    info.Clear();
    ExpectCleared(info);
}

TEST(DrawInfoTest, BareNameIsTheImage)
{
    const auto info = Parsed(L"icons/a.png");
    EXPECT_EQ(Text(info.sImageName), L"icons/a.png");
    EXPECT_EQ(Text(info.sDrawString), L"icons/a.png");
    EXPECT_EQ(Text(info.sDrawModify), L"");
    EXPECT_EQ(info.uFade, 255u);
}

TEST(DrawInfoTest, NullTextsGiveAClearedRecord)
{
    ExpectCleared(Parsed(nullptr));
}

TEST(DrawInfoTest, ModifierAloneNamesTheImage)
{
    EXPECT_EQ(Text(Parsed(nullptr, L"file='b.png'").sImageName), L"b.png");
}

TEST(DrawInfoTest, EveryKeyHasItsField)
{
    const auto info = Parsed(kEveryKey);
    EXPECT_EQ(Text(info.sImageName), L"a.png");
    EXPECT_EQ(Text(info.sResType), L"PNG");
    ExpectRect(info.rcDest, {1, 2, 3, 4});
    ExpectRect(info.rcSource, {5, 6, 7, 8});
    ExpectRect(info.rcCorner, {9, 10, 11, 12});
    EXPECT_EQ(info.dwMask, 0xFF00FF00u);
    EXPECT_EQ(info.uFade, 128u);
    EXPECT_EQ(info.uRotate, 90u);
    EXPECT_TRUE(info.bGdiplus);
    EXPECT_TRUE(info.bHole);
    EXPECT_TRUE(info.bTiledX);
    EXPECT_TRUE(info.bTiledY);
    EXPECT_TRUE(info.bHSL);
    EXPECT_EQ(info.szImage.cx, 13);
    EXPECT_EQ(info.szImage.cy, 14);
    EXPECT_EQ(Text(info.sAlign), L"right");
    ExpectRect(info.rcPadding, {15, 16, 17, 18});
}

TEST(DrawInfoTest, KeepsBothTexts)
{
    const auto info = Parsed(L"file='a.png'", L"fade='1'");
    EXPECT_EQ(Text(info.sDrawString), L"file='a.png'");
    EXPECT_EQ(Text(info.sDrawModify), L"fade='1'");
}

TEST(DrawInfoTest, ModifierOverwritesTheImageString)
{
    const auto info = Parsed(L"file='a.png' fade='10' hole='true'", L"fade='20' file='b.png'");
    EXPECT_EQ(Text(info.sImageName), L"b.png");
    EXPECT_EQ(info.uFade, 20u);
    EXPECT_TRUE(info.bHole);
}

TEST(DrawInfoTest, LaterPairsOverwriteEarlierOnes)
{
    const auto info = Parsed(L"fade='1' res='a.png' fade='2' file='b.png'");
    EXPECT_EQ(info.uFade, 2u);
    EXPECT_EQ(Text(info.sImageName), L"b.png");
}

TEST(DrawInfoTest, ParsingAgainStartsAfresh)
{
    TDrawInfo info;
    info.Parse(kEveryKey, nullptr, nullptr);
    info.Parse(L"b.png", nullptr, nullptr);
    EXPECT_EQ(Text(info.sImageName), L"b.png");
    EXPECT_EQ(Text(info.sResType), L"");
    EXPECT_EQ(info.uFade, 255u);
    ExpectRect(info.rcDest, {});
}

TEST(DrawInfoTest, KeysAreExactAndUnknownOnesAreIgnored)
{
    const auto info = Parsed(L"File='x' FADE='1' colour='2' fade='3'");
    EXPECT_EQ(Text(info.sImageName), L"File='x' FADE='1' colour='2' fade='3'");
    EXPECT_EQ(info.uFade, 3u);
}

TEST(DrawInfoTest, EmptyValuesAreIgnored)
{
    const auto info = Parsed(L"file='a.png' fade='7' fade='' file='' hole='true'");
    EXPECT_EQ(Text(info.sImageName), L"a.png");
    EXPECT_EQ(info.uFade, 7u);
    EXPECT_TRUE(info.bHole);
}

// What is read of a text in which something follows `fade='1'`.
TEST(DrawInfoTest, DeviationEndsTheTextAndKeepsWhatWasRead)
{
    struct Row {
        const wchar_t* text;
        bool holeIsRead;
    };
    const Row rows[] = {
        {L"fade='1' hole='true'", true},       {L"fade='1'  \t hole='true'", true},
        {L"\n  fade='1' hole='true'", true},   {L"fade = '1' hole  =  'true'", true},
        {L"fade='1'hole='true'", false},       {L"fade='1'\thole='true'", false},
        {L"fade='1', hole='true'", false},     {L"fade='1' hole=\"true\"", false},
        {L"fade='1' hole=true", false},        {L"fade='1' hole 'true'", false},
        {L"fade='1' hole='true", false},       {L"fade='1' hole=\t'true'", false},
        {L"fade='1' junk hole='true'", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto info = Parsed(row.text);
        EXPECT_EQ(info.uFade, 1u);
        EXPECT_EQ(info.bHole, row.holeIsRead);
    }
}

TEST(DrawInfoTest, DeviationInTheImageStringDoesNotEndTheModifier)
{
    const auto info = Parsed(L"fade='1' hole", L"hole='true'");
    EXPECT_EQ(info.uFade, 1u);
    EXPECT_TRUE(info.bHole);
}

TEST(DrawInfoTest, BackslashIsNoEscape)
{
    const auto info = Parsed(L"file='a\\' fade='9'");
    EXPECT_EQ(Text(info.sImageName), L"a\\");
    EXPECT_EQ(info.uFade, 9u);
}

TEST(DrawInfoTest, FlagsAreTrueInAnyCaseOnly)
{
    for (const auto* text : {L"hole='TRUE'", L"hole='True'"})
        EXPECT_TRUE(Parsed(text).bHole);
    for (const auto* text : {L"hole='1'", L"hole='yes'", L"hole=' true'"})
        EXPECT_FALSE(Parsed(text).bHole);
    EXPECT_FALSE(Parsed(L"hole='true'", L"hole='false'").bHole);
}

TEST(DrawInfoTest, FadeIsBounded)
{
    EXPECT_EQ(Parsed(L"fade='-3'").uFade, 0u);
    EXPECT_EQ(Parsed(L"fade='1000'").uFade, 255u);
    EXPECT_EQ(Parsed(L"fade='12x'").uFade, 12u);
}

TEST(DrawInfoTest, NegativeRotationTurnsTheOtherWay)
{
    EXPECT_EQ(Parsed(L"rotate='-90'").uRotate, 270u);
}

TEST(DrawInfoTest, MaskHasAnOptionalSign)
{
    EXPECT_EQ(Parsed(L"mask='FF112233'").dwMask, 0xFF112233u);
    EXPECT_EQ(Parsed(L"mask='112233'").dwMask, 0x00112233u);
}

TEST(DrawInfoTest, ScaleGoesBeforeTheLastDotOfTheName)
{
    CPaintManagerUI manager;
    manager.GetDPIObj()->SetScale(144);
    struct Row {
        const wchar_t* text;
        const wchar_t* name;
    };
    const Row rows[] = {
        {L"a.png", L"a@150.png"},
        {L"a.b.png", L"a.b@150.png"},
        {L"icons\\a.svg", L"icons\\a@150.svg"},
        {L"file='a.png' fade='3'", L"a@150.png"},
        {L"close", L"close"},
        {L"", L""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Text(Parsed(row.text, nullptr, &manager).sImageName), row.name);
    }
}

TEST(DrawInfoTest, ScaleOfAHundredLeavesTheName)
{
    CPaintManagerUI manager;
    EXPECT_EQ(Text(Parsed(L"a.png", nullptr, &manager).sImageName), L"a.png");
}

TEST(DrawInfoTest, ScaledNameComesFromTheModifierToo)
{
    CPaintManagerUI manager;
    manager.GetDPIObj()->SetScale(192);
    EXPECT_EQ(Text(Parsed(L"a.png", L"file='b.png'", &manager).sImageName), L"b@200.png");
}

} // namespace
