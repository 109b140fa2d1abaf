#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>
#include <vector>

using namespace DuiLib;
using namespace test;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr DWORD kBlack = 0xFF000000;
constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kGreen = 0xFF00C000;
constexpr int kWidth = 200;
constexpr int kHeight = 120;
constexpr RECT kWhole{0, 0, kWidth, kHeight};

// Font ids.
constexpr int kBase = 1;
constexpr int kBold = 2;
constexpr int kTall = 3;
constexpr int kItalic = 4;
constexpr int kUnderlined = 5;
constexpr int kBoldItalic = 6;
constexpr wchar_t kFace[] = L"DejaVu Sans";
constexpr int kSize = 14;
constexpr int kTallSize = 24;

struct Link {
    RECT rect;
    std::wstring content;
};

class HtmlTextTest : public testing::Test {
protected:
    HtmlTextTest()
    {
        manager.AddFont(kBase, kFace, kSize, false, false, false, false);
        manager.AddFont(kBold, kFace, kSize, true, false, false, false);
        manager.AddFont(kTall, kFace, kTallSize, false, false, false, false);
        manager.AddFont(kItalic, kFace, kSize, false, false, true, false);
        manager.AddFont(kUnderlined, kFace, kSize, false, true, false, false);
        manager.AddFont(kBoldItalic, kFace, kSize, true, false, true, false);
    }

    Picture Html(const std::wstring& text, UINT style = 0, RECT rect = kWhole,
                 DWORD colour = kBlack)
    {
        const Canvas canvas(kWidth, kHeight);
        int links = 0;
        CRenderEngine::DrawHtmlText(canvas.Dc(), &manager, rect, text.c_str(), colour, nullptr,
                                    nullptr, links, kBase, style);
        return canvas.Take();
    }

    std::vector<Link> LinksOf(const std::wstring& text, UINT style = 0, RECT rect = kWhole,
                              int capacity = 8, DWORD colour = kBlack)
    {
        std::array<RECT, 8> rects{};
        std::array<CDuiString, 8> contents;
        int count = capacity;
        CRenderEngine::DrawHtmlText(scratch.Dc(), &manager, rect, text.c_str(), colour,
                                    rects.data(), contents.data(), count, kBase, style);
        std::vector<Link> links;
        for (int i = 0; i < count; ++i)
            links.push_back({rects[i], contents[i].GetData()});
        return links;
    }

    SIZE SizeOf(const std::wstring& text, UINT style = 0, int width = kWidth)
    {
        RECT rect{3, 4, 3 + width, 5};
        int links = 0;
        CRenderEngine::DrawHtmlText(scratch.Dc(), &manager, rect, text.c_str(), kBlack, nullptr,
                                    nullptr, links, kBase, style | DT_CALCRECT);
        EXPECT_EQ(rect.left, 3);
        EXPECT_EQ(rect.top, 4);
        return {rect.right - 3, rect.bottom - 4};
    }

    int WidthOf(const std::wstring& text, int font = kBase)
    {
        const HGDIOBJ before = ::SelectObject(scratch.Dc(), manager.GetFont(font));
        SIZE extent{};
        ::GetTextExtentPoint32W(scratch.Dc(), text.c_str(), static_cast<int>(text.size()), &extent);
        ::SelectObject(scratch.Dc(), before);
        return extent.cx;
    }

    TEXTMETRICW MetricsOf(int font)
    {
        const HGDIOBJ before = ::SelectObject(scratch.Dc(), manager.GetFont(font));
        TEXTMETRICW metrics{};
        ::GetTextMetricsW(scratch.Dc(), &metrics);
        ::SelectObject(scratch.Dc(), before);
        return metrics;
    }

    int LineHeight(int font = kBase)
    {
        const auto metrics = MetricsOf(font);
        return metrics.tmHeight + metrics.tmExternalLeading;
    }

    // Draws like the system by itself, piece after piece.
    class Reference {
    public:
        explicit Reference(HtmlTextTest& test) : m_test(test) {}
        // The text stands on the bottom of its line.
        Reference& Put(int x, int lineBottom, const wchar_t* text, int font = kBase,
                       DWORD colour = kBlack)
        {
            const HGDIOBJ before = ::SelectObject(m_canvas.Dc(), m_test.manager.GetFont(font));
            ::SetBkMode(m_canvas.Dc(), TRANSPARENT);
            ::SetTextColor(m_canvas.Dc(),
                           RGB((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF));
            ::TextOutW(m_canvas.Dc(), x, lineBottom - m_test.MetricsOf(font).tmHeight, text,
                       static_cast<int>(wcslen(text)));
            ::SelectObject(m_canvas.Dc(), before);
            return *this;
        }
        Reference& Fill(const RECT& rect, DWORD colour)
        {
            CRenderEngine::DrawColor(m_canvas.Dc(), rect, colour);
            return *this;
        }
        operator Picture() const { return m_canvas.Take(); }

    private:
        HtmlTextTest& m_test;
        Canvas m_canvas{kWidth, kHeight};
    };

    // One line in the base font at the left.
    Picture Plain(const wchar_t* text) { return Reference(*this).Put(0, LineHeight(), text); }

    ControlHost host{60, 40};
    CPaintManagerUI& manager = host.Manager();
    Canvas scratch{kWidth, kHeight};
};

// --- What is text and what is a tag ---

struct Shown {
    const char* name;
    const wchar_t* markup;
    const wchar_t* text;
};

class ShownTextTest : public HtmlTextTest, public testing::WithParamInterface<Shown> {};

TEST_P(ShownTextTest, ShowsTheText)
{
    EXPECT_EQ(Html(GetParam().markup), Plain(GetParam().text));
    EXPECT_EQ(SizeOf(GetParam().markup).cx, WidthOf(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ShownTextTest,
    testing::Values(
        Shown{"Plain", L"plain", L"plain"}, Shown{"LessThan", L"1 < 2 > 0", L"1 < 2 > 0"},
        Shown{"Braces", L"a { b } c", L"a { b } c"},
        Shown{"UpperCaseLetter", L"<B>a</B>", L"<B>a</B>"},
        Shown{"LongName", L"<bold>a</bold>", L"<bold>a</bold>"},
        Shown{"TagWithoutEnd", L"a <b c", L"a <b c"}, Shown{"TagCutOff", L"a<b", L"a<b"},
        Shown{"OnlyOpening", L"a<", L"a<"}, Shown{"ClosingTagWithBlank", L"a</b >", L"a</b >"},
        Shown{"ClosingTagCutOff", L"a</b", L"a</b"}, Shown{"Ampersand", L"a &b && c", L"a &b && c"},
        Shown{"EscapedOpeningAngle", L"a{<}b", L"a<b"},
        Shown{"EscapedClosingAngle", L"a{>}b", L"a>b"},
        Shown{"EscapedOpeningBrace", L"a<{>b", L"a{b"},
        Shown{"EscapedClosingBrace", L"a<}>b", L"a}b"}, Shown{"EscapedTag", L"{<}b>a", L"<b>a"},
        Shown{"Raw", L"<r><b>a</b></r>", L"<b>a</b>"},
        Shown{"RawInBraces", L"{r}{b}a{/b}{/r}", L"{b}a{/b}"},
        Shown{"RawEndsInEitherSpelling", L"<r>{n}{/r}a", L"{n}a"},
        Shown{"RawEscapesAreText", L"<r>{<}</r>", L"{<}"},
        Shown{"UnclosedRaw", L"<r>a<b>", L"a<b>"}, Shown{"UnknownLetter", L"a<z>b</z>c", L"abc"},
        Shown{"ClosingNothing", L"a</b></f></c></a></p></u></i></s>b", L"ab"},
        Shown{"ColourWithoutColour", L"a<c >b</c>c", L"abc"},
        Shown{"FontWithoutName", L"a<f>b</f>c", L"abc"},
        Shown{"MissingPicture", L"a<i no-such-picture.png>b", L"ab"},
        Shown{"ShiftWithoutNumber", L"a<x>b<x y>c", L"abc"},
        Shown{"HeightWithoutNumber", L"a<y>b<y -3>c", L"abc"}),
    [](const auto& info) { return info.param.name; });

// --- Fonts ---

struct FontTag {
    const char* name;
    const wchar_t* markup;
    int font;
};

class FontTagTest : public HtmlTextTest, public testing::WithParamInterface<FontTag> {};

TEST_P(FontTagTest, DrawsTheWordInItsFont)
{
    const int bottom = LineHeight();
    const int font = GetParam().font;
    const Picture expected = Reference(*this)
                                 .Put(0, bottom, L"a ")
                                 .Put(WidthOf(L"a "), bottom, L"word", font)
                                 .Put(WidthOf(L"a ") + WidthOf(L"word", font), bottom, L" b");
    EXPECT_EQ(Html(GetParam().markup), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, FontTagTest,
    testing::Values(FontTag{"Bold", L"a <b>word</b> b", kBold},
                    FontTag{"Braces", L"a {b}word{/b} b", kBold},
                    FontTag{"Mixed", L"a <b}word{/b> b", kBold},
                    FontTag{"Italic", L"a <i>word</i> b", kItalic},
                    FontTag{"Underlined", L"a <u>word</u> b", kUnderlined},
                    FontTag{"BoldItalic", L"a <b><i>word</i></b> b", kBoldItalic},
                    FontTag{"ById", L"a <f 2>word</f> b", kBold},
                    FontTag{"ByIdOverBold", L"a <b><f 4>word</f></b> b", kItalic},
                    FontTag{"BoldInsideId", L"a <f 4><b>word</b></f> b", kBoldItalic},
                    FontTag{"Twice", L"a <b><b>word</b></b> b", kBold},
                    FontTag{"UnknownTagInside", L"a <b>wo<z>rd</b> b", kBold},
                    // Each closing tag undoes its own opening tag, and no other.
                    FontTag{"CrossedTags", L"a <b><c #000000>wo</b></c><b>rd</b> b", kBold},
                    FontTag{"ColourInsideBold", L"a <b>w<c #000000>o</c>rd</b> b", kBold},
                    FontTag{"ShiftInsideBold", L"a <b>wo<x 0></x>rd</b> b", kBold},
                    FontTag{"CloseOfAnotherTag", L"a <b>wo</f>rd</b> b", kBold},
                    FontTag{"CloseOfColour", L"a <c #000000><b>word</b></c> b", kBold},
                    FontTag{"InnerBoldClosedFirst", L"a <b><b>wo</b>rd</b> b", kBold}),
    [](const auto& info) { return info.param.name; });

TEST_F(HtmlTextTest, FontByNameSizeAndAttributes)
{
    manager.AddFont(20, L"DejaVu Serif", 18, true, true, true, true);
    EXPECT_EQ(Html(L"<f DejaVuX 18 bold>x</f>"), Html(L"<f DejaVuX 18 bold}x{/f}"));

    const int font = manager.GetFontIndex(L"DejaVuX", 18, true, false, false, false);
    ASSERT_GE(font, MAX_FONT_ID);
    EXPECT_EQ(SizeOf(L"<f DejaVuX 18 bold>word</f>").cx, WidthOf(L"word", font));
}

TEST_F(HtmlTextTest, FontWithoutSizeHasTenPixels)
{
    Html(L"<f SomeFace>x</f>");
    EXPECT_NE(manager.GetFontIndex(L"SomeFace", 10, false, false, false, false), -1);
}

TEST_F(HtmlTextTest, AllFontAttributesAreUnderstood)
{
    Html(L"<f SomeFace 12 bold underline italic strikeout>x</f>");
    EXPECT_NE(manager.GetFontIndex(L"SomeFace", 12, true, true, true, true), -1);
}

TEST_F(HtmlTextTest, FontsThatExistAreNotAddedAgain)
{
    const DWORD before = manager.GetCustomFontCount();
    Html(L"<b>b</b><i>i</i><u>u</u><b><i>bi</i></b>");
    EXPECT_EQ(manager.GetCustomFontCount(), before);
}

TEST_F(HtmlTextTest, EachNewFontHasAnIdOfItsOwn)
{
    Html(L"<f One 11>x</f><f Two 12>x</f><f Three 13>x</f>");
    const int ids[] = {manager.GetFontIndex(L"One", 11, false, false, false, false),
                       manager.GetFontIndex(L"Two", 12, false, false, false, false),
                       manager.GetFontIndex(L"Three", 13, false, false, false, false)};
    for (const int id : ids)
        EXPECT_GE(id, MAX_FONT_ID);
    EXPECT_NE(ids[0], ids[1]);
    EXPECT_NE(ids[1], ids[2]);
    EXPECT_NE(ids[0], ids[2]);
}

TEST_F(HtmlTextTest, NewFontsLeaveTheOnesInUseAlone)
{
    const int taken = MAX_FONT_ID + static_cast<int>(manager.GetCustomFontCount()) + 1;
    manager.AddFont(taken, L"Taken", 11, false, false, false, false);
    const HFONT before = manager.GetFont(taken);
    Html(L"<f One 11>x</f><f Two 12>x</f><f Three 13>x</f>");
    EXPECT_EQ(manager.GetFont(taken), before);
}

TEST_F(HtmlTextTest, ATextCannotUseUpTheFonts)
{
    std::wstring text;
    for (int size = 1; size <= 2000; ++size)
        text += L"<f Face " + std::to_wstring(size % 1000 + 1) + (size > 1000 ? L" bold" : L"") +
                L">x</f>";
    SizeOf(text);
    EXPECT_LE(manager.GetCustomFontCount(), 600u);
}

TEST_F(HtmlTextTest, TextsOfDifferentFontsStandOnACommonBottom)
{
    const int bottom = LineHeight(kTall);
    const Picture expected =
        Reference(*this).Put(0, bottom, L"a").Put(WidthOf(L"a"), bottom, L"b", kTall);
    EXPECT_EQ(Html(L"a<f 3>b</f>"), expected);
}

// --- Colours ---

struct ColourTag {
    const char* name;
    const wchar_t* markup;
    DWORD colour;
};

class ColourTagTest : public HtmlTextTest, public testing::WithParamInterface<ColourTag> {};

TEST_P(ColourTagTest, DrawsTheWordInItsColour)
{
    const int bottom = LineHeight();
    const int x = WidthOf(L"a ");
    const Picture expected = Reference(*this)
                                 .Put(0, bottom, L"a ", kBase, kGreen)
                                 .Put(x, bottom, L"word", kBase, GetParam().colour)
                                 .Put(x + WidthOf(L"word"), bottom, L" b", kBase, kGreen);
    EXPECT_EQ(Html(GetParam().markup, 0, kWhole, kGreen), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, ColourTagTest,
    testing::Values(ColourTag{"SixDigits", L"a <c #FF0000>word</c> b", kRed},
                    ColourTag{"WithoutSign", L"a <c FF0000>word</c> b", kRed},
                    ColourTag{"Braces", L"a {c #FF0000}word{/c} b", kRed},
                    ColourTag{"EightDigitsAreUnsigned", L"a <c #FFFF0000>word</c> b", kRed},
                    ColourTag{"AlphaIsIgnored", L"a <c #00FF0000>word</c> b", kRed},
                    ColourTag{"NoBlankInBraces", L"a {c#FF0000}word{/c} b", kRed},
                    ColourTag{"NoBlankInAngles", L"a <c#ff0000>word</c> b", kRed},
                    ColourTag{"InnerWins", L"a <c #0000FF><c #FF0000>word</c></c> b", kRed},
                    ColourTag{"Black", L"a <c #000000>word</c> b", kBlack},
                    ColourTag{"EmptyTagKeepsTheOuter", L"a <c #FF0000><c >word</c></c> b", kRed}),
    [](const auto& info) { return info.param.name; });

TEST_F(HtmlTextTest, AnUnclosedTagLastsToTheEnd)
{
    const int bottom = LineHeight();
    const Picture expected =
        Reference(*this).Put(0, bottom, L"a").Put(WidthOf(L"a"), bottom, L"bc", kBase, kRed);
    EXPECT_EQ(Html(L"a<c #FF0000>bc"), expected);
}

TEST_F(HtmlTextTest, AlphaOfTheTextColourIsIgnored)
{
    EXPECT_EQ(Html(L"text", 0, kWhole, 0x00FF0000), Html(L"text", 0, kWhole, kRed));
}

TEST_F(HtmlTextTest, SelectedTextHasTheSelectedBackgroundBehindIt)
{
    manager.SetDefaultSelectedBkColor(0xFF80C0FF);
    const int bottom = LineHeight();
    const int x = WidthOf(L"a ");
    const int end = x + WidthOf(L"word");
    const Picture expected = Reference(*this)
                                 .Fill({x, 0, end, bottom}, 0xFF80C0FF)
                                 .Put(0, bottom, L"a ")
                                 .Put(x, bottom, L"word")
                                 .Put(end, bottom, L" b");
    EXPECT_EQ(Html(L"a <s>word</s> b"), expected);
}

// --- Lines ---

struct Height {
    const char* name;
    const wchar_t* markup;
    int lines;
    int extra; // pixels beyond the lines
};

class LinesTest : public HtmlTextTest, public testing::WithParamInterface<Height> {};

TEST_P(LinesTest, HasSoManyLines)
{
    EXPECT_EQ(SizeOf(GetParam().markup).cy, GetParam().lines * LineHeight() + GetParam().extra);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, LinesTest,
    testing::Values(Height{"One", L"a", 1, 0}, Height{"LineFeed", L"a\nb", 2, 0},
                    Height{"BreakTag", L"a<n>b{n}c", 3, 0}, Height{"EmptyLine", L"a\n\nb", 3, 0},
                    Height{"LeadingBreak", L"\na", 2, 0}, Height{"TrailingBreak", L"a\n", 1, 0},
                    Height{"CarriageReturnIsNoBreak", L"a\rb", 1, 0},
                    Height{"BreakInRaw", L"<r>a\nb</r>", 2, 0}, Height{"Nothing", L"", 0, 0},
                    Height{"TagsOnly", L"<b></b><c #1></c>", 0, 0},
                    Height{"TwoParagraphs", L"<p>a</p><p>b</p>", 2, 0},
                    Height{"ParagraphAmongText", L"a<p>b</p>c", 3, 0},
                    Height{"EmptyParagraph", L"a<p></p>b", 2, 0},
                    Height{"OnlyAnEmptyParagraph", L"<p></p>", 0, 0},
                    Height{"ParagraphOfABlank", L"<p>a</p><p> </p><p>b</p>", 3, 0},
                    Height{"ParagraphAfterBreak", L"a<n><p>b</p>", 2, 0},
                    Height{"ParagraphExtra", L"<p 6>a</p>", 1, 6},
                    Height{"ExtraForEachLine", L"<p 6>a<n>b</p>", 2, 12},
                    Height{"ExtraEndsWithItsParagraph", L"<p 6>a</p>b", 2, 6},
                    Height{"NestedParagraphs", L"<p 6>a<p 2>b</p>c</p>", 3, 14},
                    Height{"UnopenedParagraph", L"a</p>b", 1, 0},
                    Height{"UnclosedParagraph", L"a<p 6>b<n>c", 3, 12}),
    [](const auto& info) { return info.param.name; });

TEST_F(HtmlTextTest, LineIsAsHighAsItsTallestFont)
{
    EXPECT_EQ(SizeOf(L"a<f 3>b</f>\nc").cy, LineHeight(kTall) + LineHeight());
    EXPECT_EQ(SizeOf(L"<f 3>b</f>").cy, LineHeight(kTall));
}

TEST_F(HtmlTextTest, LineIsAtLeastAsHighAsTheBaseFont)
{
    manager.AddFont(9, kFace, 6, false, false, false, false);
    EXPECT_EQ(SizeOf(L"<f 9>small</f>").cy, LineHeight());
}

TEST_F(HtmlTextTest, HeightTagSetsTheHeightOfItsLineOnly)
{
    EXPECT_EQ(SizeOf(L"a<y 40>b\nc").cy, 40 + LineHeight());
    EXPECT_EQ(SizeOf(L"<y 7>a").cy, 7);
}

TEST_F(HtmlTextTest, HeightTagMovesTheTextToTheBottomOfItsLine)
{
    EXPECT_EQ(Html(L"<y 40>text"), Picture(Reference(*this).Put(0, 40, L"text")));
}

TEST_F(HtmlTextTest, ShiftTagMovesRight)
{
    const int bottom = LineHeight();
    const Picture expected =
        Reference(*this).Put(0, bottom, L"a").Put(WidthOf(L"a") + 25, bottom, L"b");
    EXPECT_EQ(Html(L"a<x 25>b"), expected);
    EXPECT_EQ(SizeOf(L"a<x 25>b").cx, WidthOf(L"ab") + 25);
}

TEST_F(HtmlTextTest, MeasuringDrawsNothingAndGivesTheExtent)
{
    const SIZE size = SizeOf(L"one\nlonger line\nx");
    EXPECT_EQ(size.cx, WidthOf(L"longer line"));
    EXPECT_EQ(size.cy, 3 * LineHeight());
    EXPECT_EQ(scratch.Take().Count(kWhite), kWidth * kHeight);
}

// --- Breaking and cutting ---

TEST_F(HtmlTextTest, WordBreakBreaksAfterBlanks)
{
    const int bottom = LineHeight();
    const Picture expected = Reference(*this)
                                 .Put(0, bottom, L"one ")
                                 .Put(0, 2 * bottom, L"two ")
                                 .Put(0, 3 * bottom, L"three");
    const RECT narrow{0, 0, WidthOf(L"three") + 2, kHeight};
    EXPECT_EQ(Html(L"one two three", DT_WORDBREAK, narrow), expected);
}

TEST_F(HtmlTextTest, WordBreakBreaksAfterOtherNonLetters)
{
    const int width = WidthOf(L"abc-") + 1;
    EXPECT_EQ(SizeOf(L"abc-def", DT_WORDBREAK, width).cy, 2 * LineHeight());
    EXPECT_EQ(SizeOf(L"abc-def", DT_WORDBREAK, width).cx,
              std::max(WidthOf(L"abc-"), WidthOf(L"def")));
}

TEST_F(HtmlTextTest, WordBreakKeepsAWordOfSeveralFontsTogether)
{
    const int width = WidthOf(L"aaa bbb");
    EXPECT_EQ(SizeOf(L"aaa b<b>b</b>bccc", DT_WORDBREAK, width).cx,
              WidthOf(L"b") * 2 + WidthOf(L"b", kBold) + WidthOf(L"ccc"));
}

TEST_F(HtmlTextTest, WordThatIsTooLongIsBrokenAnywhere)
{
    const int width = WidthOf(L"aaa") + 1;
    EXPECT_EQ(SizeOf(L"aaaaaaaaa", DT_WORDBREAK, width).cy, 3 * LineHeight());
}

TEST_F(HtmlTextTest, WithoutWordBreakAFullLineBreaksBetweenAnyCharacters)
{
    const int bottom = LineHeight();
    const RECT narrow{0, 0, WidthOf(L"one t") + 1, kHeight};
    const Picture expected = Reference(*this).Put(0, bottom, L"one t").Put(0, 2 * bottom, L"wo");
    EXPECT_EQ(Html(L"one two", 0, narrow), expected);
}

TEST_F(HtmlTextTest, BlanksAtTheEndOfALineMayHangOver)
{
    const int width = WidthOf(L"three") + 1;
    EXPECT_EQ(SizeOf(L"three     three", DT_WORDBREAK, width).cy, 2 * LineHeight());
    EXPECT_EQ(SizeOf(L"three     three", DT_WORDBREAK, width).cx, WidthOf(L"three"));
}

TEST_F(HtmlTextTest, CharacterWiderThanTheRectangleStillHasALine)
{
    EXPECT_EQ(SizeOf(L"abc", 0, 1).cy, 3 * LineHeight());
    EXPECT_EQ(SizeOf(L"abc", DT_WORDBREAK, 1).cy, 3 * LineHeight());
}

TEST_F(HtmlTextTest, SurrogatePairsAndMarksAreNotTornApart)
{
    EXPECT_EQ(SizeOf(L"\xD83D\xDE00\xD83D\xDE00", 0, 1).cy, 2 * LineHeight());
    EXPECT_EQ(SizeOf(L"e\x0301"
                     L"e\x0301",
                     0, WidthOf(L"e") + 1)
                  .cy,
              2 * LineHeight());
}

// A long row of them is no character that cannot be broken.
TEST_F(HtmlTextTest, HalvesOfSurrogatePairsAreCharactersOfTheirOwn)
{
    EXPECT_EQ(SizeOf(L"\xDC00\xDC00\xDC00", 0, 1).cy, 3 * LineHeight());
    EXPECT_EQ(SizeOf(L"\xD800\xD800", 0, 1).cy, 2 * LineHeight());
}

TEST_F(HtmlTextTest, IdeographsBreakWithoutBlanks)
{
    const std::wstring text(6, L'\x4E00');
    const int width = WidthOf(L"ab") + WidthOf(text.substr(0, 2)) + 1;
    EXPECT_EQ(SizeOf(L"ab" + text.substr(0, 4), DT_WORDBREAK, width).cx,
              WidthOf(L"ab") + WidthOf(text.substr(0, 2)));
}

TEST_F(HtmlTextTest, SingleLineStopsAfterTheFirstLine)
{
    for (const auto* text : {L"first\nsecond", L"first<n>second", L"first<p>second</p>"}) {
        EXPECT_EQ(Html(text, DT_SINGLELINE), Plain(L"first"));
        EXPECT_EQ(SizeOf(text, DT_SINGLELINE).cy, LineHeight());
    }
    EXPECT_EQ(SizeOf(L"a line that is too long", DT_SINGLELINE, 40).cy, LineHeight());
    EXPECT_EQ(SizeOf(L"a line that is too long", DT_SINGLELINE | DT_WORDBREAK, 40).cy,
              LineHeight());
}

TEST_F(HtmlTextTest, EllipsisEndsACutLine)
{
    const UINT style = DT_SINGLELINE | DT_END_ELLIPSIS;
    const RECT narrow{0, 0, WidthOf(L"a long...") + 1, kHeight};
    EXPECT_EQ(Html(L"a longer text", style, narrow), Plain(L"a long..."));
}

TEST_F(HtmlTextTest, EllipsisIsInTheFontOfItsPlace)
{
    const UINT style = DT_SINGLELINE | DT_END_ELLIPSIS;
    const RECT narrow{0, 0, WidthOf(L"aa") + WidthOf(L"bb...", kBold) + 1, kHeight};
    const int bottom = LineHeight();
    const Picture expected =
        Reference(*this).Put(0, bottom, L"aa").Put(WidthOf(L"aa"), bottom, L"bb...", kBold);
    EXPECT_EQ(Html(L"aa<b>bbbbbbbbbb</b>", style, narrow), expected);
}

TEST_F(HtmlTextTest, LineThatFitsHasNoEllipsis)
{
    const UINT style = DT_SINGLELINE | DT_END_ELLIPSIS;
    const RECT exact{0, 0, WidthOf(L"a text"), kHeight};
    EXPECT_EQ(Html(L"a text", style, exact), Html(L"a text", DT_SINGLELINE, exact));
    EXPECT_EQ(Html(L"first\nsecond", style), Plain(L"first"));
}

TEST_F(HtmlTextTest, EllipsisStaysInsideTheRectangle)
{
    const UINT style = DT_SINGLELINE | DT_END_ELLIPSIS;
    for (int width = 1; width < 60; width += 7) {
        const RECT bounds =
            Html(L"some longer text", style, {0, 0, width, kHeight}).BoundsOfAllBut(kWhite);
        EXPECT_LE(bounds.right, width);
    }
}

// --- Alignment ---

TEST_F(HtmlTextTest, EachLineIsCentredByItself)
{
    const int bottom = LineHeight();
    const Picture expected =
        Reference(*this)
            .Put((kWidth - WidthOf(L"one")) / 2, bottom, L"one")
            .Put((kWidth - WidthOf(L"a longer one")) / 2, 2 * bottom, L"a longer one");
    EXPECT_EQ(Html(L"one\na longer one", DT_CENTER), expected);
}

TEST_F(HtmlTextTest, EachLineEndsAtTheRight)
{
    const int bottom = LineHeight();
    const Picture expected =
        Reference(*this)
            .Put(kWidth - WidthOf(L"one"), bottom, L"one")
            .Put(kWidth - WidthOf(L"a longer one"), 2 * bottom, L"a longer one");
    EXPECT_EQ(Html(L"one\na longer one", DT_RIGHT), expected);
}

TEST_F(HtmlTextTest, ALineOfSeveralRunsIsAlignedAsAWhole)
{
    const int bottom = LineHeight();
    const int width = WidthOf(L"a ") + WidthOf(L"b", kBold);
    const int x = (kWidth - width) / 2;
    const Picture expected =
        Reference(*this).Put(x, bottom, L"a ").Put(x + WidthOf(L"a "), bottom, L"b", kBold);
    EXPECT_EQ(Html(L"a <b>b</b>", DT_CENTER), expected);
}

TEST_F(HtmlTextTest, WrappedLinesAreAlignedWithoutTheirBlanks)
{
    const int bottom = LineHeight();
    const int width = WidthOf(L"three") + 10;
    const Picture expected = Reference(*this)
                                 .Put(width - WidthOf(L"one"), bottom, L"one")
                                 .Put(width - WidthOf(L"three"), 2 * bottom, L"three");
    EXPECT_EQ(Html(L"one three", DT_WORDBREAK | DT_RIGHT, {0, 0, width, kHeight}), expected);
}

TEST_F(HtmlTextTest, WrappedLinesOfSeveralRunsAreAlignedAsAWhole)
{
    const int bottom = LineHeight();
    const int first = WidthOf(L"one ") + WidthOf(L"two", kBold);
    const int second = WidthOf(L"six", kBold) + WidthOf(L"ed");
    const int width = first + WidthOf(L" ", kBold) + 2;
    const auto expected = [&](int share) {
        const int x = (width - first) / share;
        const int y = (width - second) / share;
        return Picture(Reference(*this)
                           .Put(x, bottom, L"one ")
                           .Put(x + WidthOf(L"one "), bottom, L"two", kBold)
                           .Put(y, 2 * bottom, L"six", kBold)
                           .Put(y + WidthOf(L"six", kBold), 2 * bottom, L"ed"));
    };
    const RECT narrow{0, 0, width, kHeight};
    EXPECT_EQ(Html(L"one <b>two six</b>ed", DT_WORDBREAK | DT_RIGHT, narrow), expected(1));
    EXPECT_EQ(Html(L"one <b>two six</b>ed", DT_WORDBREAK | DT_CENTER, narrow), expected(2));
}

TEST_F(HtmlTextTest, TheBlockIsCentredOrAtTheBottom)
{
    const int line = LineHeight();
    const int middle = (kHeight - 2 * line) / 2;
    EXPECT_EQ(
        Html(L"a\nb", DT_VCENTER),
        Picture(Reference(*this).Put(0, middle + line, L"a").Put(0, middle + 2 * line, L"b")));
    EXPECT_EQ(Html(L"a\nb", DT_BOTTOM),
              Picture(Reference(*this).Put(0, kHeight - line, L"a").Put(0, kHeight, L"b")));
}

TEST_F(HtmlTextTest, TheBlockIsMeasuredAtTheWidthOfTheRectangle)
{
    const int line = LineHeight();
    const RECT narrow{0, 0, WidthOf(L"three") + 2, kHeight};
    const Picture expected =
        Reference(*this).Put(0, kHeight - line, L"three").Put(0, kHeight, L"four");
    EXPECT_EQ(Html(L"three four", DT_WORDBREAK | DT_BOTTOM, narrow), expected);

    const int middle = (kHeight - 2 * line) / 2;
    EXPECT_EQ(
        Html(L"three four", DT_WORDBREAK | DT_VCENTER, narrow),
        Picture(
            Reference(*this).Put(0, middle + line, L"three").Put(0, middle + 2 * line, L"four")));
}

TEST_F(HtmlTextTest, DrawsInsideItsRectangleOnly)
{
    const RECT rect{20, 10, 60, 18};
    const Picture picture = Html(L"<s>some words that fill more than that</s>", 0, rect);
    EXPECT_EQ(picture.Count(kWhite), kWidth * kHeight - 40 * 8 + picture.Count(kWhite, rect));
    EXPECT_LT(picture.Count(kWhite, rect), 40 * 8);
}

// --- Links ---

TEST_F(HtmlTextTest, LinkHasItsRectangleAndContent)
{
    const auto links = LinksOf(L"see <a page.html>here</a> now");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].content, L"page.html");
    const int left = WidthOf(L"see ");
    const RECT expected{left, 0, left + WidthOf(L"here", kUnderlined), LineHeight()};
    EXPECT_TRUE(::EqualRect(&links[0].rect, &expected));
}

TEST_F(HtmlTextTest, LinkIsUnderlinedInTheTextColour)
{
    const int bottom = LineHeight();
    const int x = WidthOf(L"see ");
    const Picture expected = Reference(*this)
                                 .Put(0, bottom, L"see ", kBase, kGreen)
                                 .Put(x, bottom, L"here", kUnderlined, kGreen);
    EXPECT_EQ(Html(L"see <a x>here</a>", 0, kWhole, kGreen), expected);
}

TEST_F(HtmlTextTest, LinkOfATextWithoutColourHasTheLinkColour)
{
    manager.SetDefaultLinkFontColor(kGreen);
    EXPECT_EQ(Html(L"<a x>here</a>", 0, kWhole, 0),
              Picture(Reference(*this).Put(0, LineHeight(), L"here", kUnderlined, kGreen)));
}

TEST_F(HtmlTextTest, LinkIgnoresTheColourTagAroundIt)
{
    EXPECT_EQ(Html(L"<c #FF0000><a x>here</a></c>"),
              Picture(Reference(*this).Put(0, LineHeight(), L"here", kUnderlined)));
}

TEST_F(HtmlTextTest, ColourTagInALinkWins)
{
    const Picture expected = Reference(*this).Put(0, LineHeight(), L"here", kUnderlined, kRed);
    EXPECT_EQ(Html(L"<a x><c #FF0000>here</c></a>"), expected);
    host.MoveMouse(3, 3);
    LinksOf(L"<a x><c #FF0000>here</c></a>");
    EXPECT_EQ(scratch.Take(), expected);
}

TEST_F(HtmlTextTest, LinkWithoutContent)
{
    const auto links = LinksOf(L"<a>one</a> {a}two{/a}");
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].content, L"");
    EXPECT_EQ(links[1].content, L"");
}

TEST_F(HtmlTextTest, LinkContentMayHoldBlanks)
{
    const auto links = LinksOf(L"<a a page with blanks>one</a>");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].content, L"a page with blanks");
}

TEST_F(HtmlTextTest, LinkOnTwoLinesHasTwoRectangles)
{
    const int line = LineHeight();
    const auto links = LinksOf(L"<a x>one<n>longer</a>");
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].content, L"x");
    EXPECT_EQ(links[1].content, L"x");
    const RECT first{0, 0, WidthOf(L"one", kUnderlined), line};
    const RECT second{0, line, WidthOf(L"longer", kUnderlined), 2 * line};
    EXPECT_TRUE(::EqualRect(&links[0].rect, &first));
    EXPECT_TRUE(::EqualRect(&links[1].rect, &second));
}

TEST_F(HtmlTextTest, LinkOfSeveralFontsHasOneRectanglePerLine)
{
    const auto links = LinksOf(L"<a x>one <b>two</b> three</a>");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].rect.left, 0);
    EXPECT_GT(links[0].rect.right, WidthOf(L"one two three"));
}

TEST_F(HtmlTextTest, LinkRectanglesFollowTheAlignment)
{
    const auto links = LinksOf(L"<a x>here</a>", DT_RIGHT | DT_BOTTOM);
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].rect.right, kWidth);
    EXPECT_EQ(links[0].rect.bottom, kHeight);
}

TEST_F(HtmlTextTest, EmptyLinkHasNoRectangle)
{
    EXPECT_TRUE(LinksOf(L"a<a x></a>b").empty());
}

TEST_F(HtmlTextTest, LinksBeyondTheCapacityAreLeftOut)
{
    const auto links = LinksOf(L"<a 1>1</a> <a 2>2</a> <a 3>3</a>", 0, kWhole, 2);
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[1].content, L"2");
}

TEST_F(HtmlTextTest, NullArraysAreAllowed)
{
    RECT rect = kWhole;
    int links = 0;
    CRenderEngine::DrawHtmlText(scratch.Dc(), &manager, rect, L"<a 1>1</a>", kBlack, nullptr,
                                nullptr, links, kBase, 0);
    EXPECT_EQ(links, 0);
    EXPECT_LT(scratch.Take().Count(kWhite), kWidth * kHeight);
}

TEST_F(HtmlTextTest, NothingToDrawSetsTheLinkCounterToZero)
{
    const auto countAfter = [&](CPaintManagerUI* used, const wchar_t* text, RECT rect) {
        RECT rects[2]{};
        CDuiString contents[2];
        int links = 2;
        CRenderEngine::DrawHtmlText(scratch.Dc(), used, rect, text, kBlack, rects, contents, links,
                                    kBase, 0);
        return links;
    };
    EXPECT_EQ(countAfter(&manager, L"<a 1>1</a>", kWhole), 1);
    EXPECT_EQ(countAfter(&manager, L"<a 1>1</a>", {5, 5, 5, 50}), 0);
    EXPECT_EQ(countAfter(&manager, nullptr, kWhole), 0);
    EXPECT_EQ(countAfter(nullptr, L"<a 1>1</a>", kWhole), 0);
}

TEST_F(HtmlTextTest, LinksOfTheSameContentShowTheHoverColourTogether)
{
    manager.SetDefaultLinkHoverFontColor(kRed);
    const std::wstring text = L"<a x>one</a> <a y>two</a> <a x>three</a>";
    const int bottom = LineHeight();
    const int two = WidthOf(L"one", kUnderlined) + WidthOf(L" ");
    const int three = two + WidthOf(L"two", kUnderlined) + WidthOf(L" ");
    host.MoveMouse(three + 3, 5);
    LinksOf(text);
    const Picture expected = Reference(*this)
                                 .Put(0, bottom, L"one", kUnderlined, kRed)
                                 .Put(two, bottom, L"two", kUnderlined)
                                 .Put(three, bottom, L"three", kUnderlined, kRed);
    EXPECT_EQ(scratch.Take(), expected);
}

TEST_F(HtmlTextTest, LinkThatIsNotRecordedHasNoHoverColour)
{
    manager.SetDefaultLinkHoverFontColor(kRed);
    host.MoveMouse(3, 5);
    EXPECT_EQ(Html(L"<a x>one</a>"),
              Picture(Reference(*this).Put(0, LineHeight(), L"one", kUnderlined)));
}

// --- Pictures ---

class HtmlPictureTest : public HtmlTextTest {
protected:
    HtmlPictureTest() { AddColumns(manager, L"columns", {kFirst, kSecond, kThird}, 10, 30); }

    static constexpr Argb kFirst{0xFFFF0000};
    static constexpr Argb kSecond{0xFF00FF00};
    static constexpr Argb kThird{0xFF0000FF};
};

TEST_F(HtmlPictureTest, WholePictureStandsInTheLine)
{
    const Picture picture = Html(L"<i columns>");
    EXPECT_EQ(picture.Count(kFirst, {0, 0, 10, 30}), 300);
    EXPECT_EQ(picture.Count(kThird, {20, 0, 30, 30}), 300);
    EXPECT_EQ(SizeOf(L"<i columns>").cx, 30);
}

TEST_F(HtmlPictureTest, ColumnOfAPicture)
{
    const Picture picture = Html(L"<i columns 3 1>");
    EXPECT_EQ(picture.Count(kSecond, {0, 0, 10, 30}), 300);
    EXPECT_EQ(picture.Count(kFirst), 0);
    EXPECT_EQ(SizeOf(L"a<i columns 3 1>").cx, WidthOf(L"a") + 10);
}

TEST_F(HtmlPictureTest, ColumnOutsideThePictureIsTheFirst)
{
    EXPECT_EQ(Html(L"<i columns 3 7>").Count(kFirst), 300);
    EXPECT_EQ(Html(L"{i columns 3 -1}").Count(kFirst), 300);
    EXPECT_EQ(Html(L"<i columns 0 0>").Count(kThird), 300);
}

TEST_F(HtmlPictureTest, LineIsAsHighAsThePicture)
{
    EXPECT_EQ(SizeOf(L"a<i columns>\nb").cy, 30 + LineHeight());
}

TEST_F(HtmlPictureTest, TextBesideAPictureStandsAtTheBottom)
{
    const Picture picture = Html(L"<i columns 3 0>x");
    const Picture text = Reference(*this).Put(10, 30, L"x");
    for (int y = 0; y < 40; ++y) {
        for (int x = 10; x < 40; ++x)
            ASSERT_EQ(picture.At(x, y), text.At(x, y));
    }
}

TEST_F(HtmlPictureTest, ImageStringIsUnderstood)
{
    const Picture picture = Html(L"<i file='columns' source='10,0,20,30'>");
    EXPECT_EQ(picture.Count(kSecond, {0, 0, 10, 30}), 300);
    EXPECT_EQ(SizeOf(L"<i file='columns' source='10,0,20,30'>").cx, 10);
    EXPECT_EQ(Html(L"<i file='columns' 3 2>").Count(kThird), 300);
    EXPECT_EQ(SizeOf(L"<i file='columns' 3 2>").cx, 10);
}

TEST_F(HtmlPictureTest, PictureBelongsToItsLink)
{
    const auto links = LinksOf(L"<a x><i columns></a>");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].rect.right, 30);
}

TEST_F(HtmlPictureTest, PictureWithoutRoomGoesToTheNextLine)
{
    EXPECT_EQ(SizeOf(L"word <i columns>", DT_WORDBREAK, 50).cy, LineHeight() + 30);
}

TEST_F(HtmlPictureTest, ReplacedPictureIsMeasuredAnew)
{
    EXPECT_EQ(SizeOf(L"<i columns>").cx, 30);
    manager.RemoveImage(L"columns");
    AddColumns(manager, L"columns", {kFirst}, 50, 10);
    EXPECT_EQ(SizeOf(L"<i columns>").cx, 50);
}

// --- State, cost, robustness ---

TEST_F(HtmlTextTest, RestoresTheStateOfTheDc)
{
    const HDC dc = scratch.Dc();
    const HFONT font = manager.GetFont(kTall);
    const HGDIOBJ before = ::SelectObject(dc, font);
    ::SetTextColor(dc, RGB(1, 2, 3));
    ::SetBkMode(dc, OPAQUE);
    LinksOf(L"<b>a</b> <c #FF0000>b</c> <s>c</s>", 0, {10, 10, 60, 40});
    EXPECT_EQ(::GetCurrentObject(dc, OBJ_FONT), font);
    EXPECT_EQ(::GetTextColor(dc), RGB(1, 2, 3));
    EXPECT_EQ(::GetBkMode(dc), OPAQUE);
    RECT box{};
    ::GetClipBox(dc, &box);
    EXPECT_EQ(box.right, kWidth);
    EXPECT_EQ(box.bottom, kHeight);
    ::SelectObject(dc, before);
}

TEST_F(HtmlTextTest, DrawingAgainShowsTheSame)
{
    const std::wstring text = L"some <b>bold</b> and <a x>linked</a> words <c #FF0000>red</c>";
    const Picture first = Html(text, DT_WORDBREAK);
    EXPECT_EQ(Html(text, DT_WORDBREAK), first);
    EXPECT_NE(Html(text, DT_WORDBREAK | DT_RIGHT), first);
    EXPECT_NE(Html(text, DT_WORDBREAK, {0, 0, 60, kHeight}), first);
}

TEST_F(HtmlTextTest, FollowsAFontThatIsReplaced)
{
    const int before = SizeOf(L"<f 3>word</f>").cx;
    manager.AddFont(kTall, kFace, 40, false, false, false, false);
    EXPECT_EQ(SizeOf(L"<f 3>word</f>").cx, WidthOf(L"word", kTall));
    EXPECT_GT(SizeOf(L"<f 3>word</f>").cx, before);
}

TEST_F(HtmlTextTest, FollowsAFontIdThatBecomesKnown)
{
    SizeOf(L"<f 77>word</f>");
    manager.AddFont(77, kFace, 40, false, false, false, false);
    EXPECT_EQ(SizeOf(L"<f 77>word</f>").cx, WidthOf(L"word", 77));
}

TEST_F(HtmlTextTest, FollowsTheScaleOfTheWindow)
{
    const int before = SizeOf(L"a <b>word</b>").cx;
    manager.SetDPI(192);
    EXPECT_EQ(SizeOf(L"a <b>word</b>").cx, WidthOf(L"a ") + WidthOf(L"word", kBold));
    EXPECT_GT(SizeOf(L"a <b>word</b>").cx, before);
}

TEST_F(HtmlTextTest, SurvivesTheRemovalOfItsFonts)
{
    const Picture before = Html(L"<f Face 13>word</f> <b>b</b>");
    manager.RemoveAllFonts();
    manager.AddFont(kBase, kFace, kSize, false, false, false, false);
    EXPECT_EQ(Html(L"<f Face 13>word</f> <b>b</b>"), before);
}

int measurements = 0;
decltype(&::GetTextExtentExPointW) realTextExtent = nullptr;

BOOL WINAPI CountTextExtent(HDC dc, LPCWSTR text, int length, int most, LPINT fitting, LPINT ends,
                            LPSIZE size)
{
    ++measurements;
    return realTextExtent(dc, text, length, most, fitting, ends, size);
}

TEST_F(HtmlTextTest, ATextIsLaidOutOnce)
{
    const ImportHook hook(L"DuiLib.dll", "gdi32.dll", "GetTextExtentExPointW", &CountTextExtent);
    ASSERT_TRUE(hook);
    realTextExtent = hook.Original<decltype(::GetTextExtentExPointW)>();
    Html(L"once <b>only</b>", DT_WORDBREAK);
    EXPECT_GT(measurements, 0);
    measurements = 0;
    for (int i = 0; i < 5; ++i)
        Html(L"once <b>only</b>", DT_WORDBREAK | (i % 2 ? DT_CENTER : DT_RIGHT));
    EXPECT_EQ(measurements, 0);
}

TEST_F(HtmlTextTest, TextKeepsTheNumberOfObjects)
{
    const auto drawAll = [&] {
        Html(L"<b>bold</b> <a x>link</a> <f Face 13>face</f> <s>selected</s>", DT_WORDBREAK);
        manager.SetUseGdiplusText(true);
        Html(L"<b>bold</b> <a x>link</a> <f Face 13>face</f> <s>selected</s>", DT_WORDBREAK);
        manager.SetUseGdiplusText(false);
    };
    drawAll();
    GdiplusObjects();
    drawAll();
    const int gdi = GdiObjects();
    const int gdiplus = GdiplusObjects();
    for (int i = 0; i < 100; ++i)
        drawAll();
    EXPECT_EQ(GdiObjects(), gdi);
    EXPECT_EQ(GdiplusObjects(), gdiplus);
}

TEST_F(HtmlTextTest, ManyTextsStayWithinABound)
{
    const auto measureMany = [&](const wchar_t* prefix) {
        for (int i = 0; i < 5000; ++i)
            SizeOf(prefix + std::to_wstring(i) + L" <b>and more</b> of a text");
    };
    measureMany(L"first ");
    const int before = HeapBlocks();
    measureMany(L"second ");
    measureMany(L"third ");
    EXPECT_LT(HeapBlocks(), before * 2);
}

struct Long {
    const char* name;
    const wchar_t* piece;
};

// Times are compared with those of a text a quarter as long, generously.
class LongTextTest : public HtmlTextTest, public testing::WithParamInterface<Long> {
protected:
    double SecondsFor(std::size_t length)
    {
        std::wstring text;
        while (text.size() < length)
            text += GetParam().piece;
        const auto start = std::chrono::steady_clock::now();
        SizeOf(text, DT_WORDBREAK);
        SizeOf(text, 0);
        SizeOf(text, DT_SINGLELINE | DT_END_ELLIPSIS);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
};

TEST_P(LongTextTest, TakesTimeInProportion)
{
    SecondsFor(1000); // adds the fonts
    const double quarter = SecondsFor(15000);
    const double whole = SecondsFor(60000);
    EXPECT_LT(whole, quarter * 12 + 0.2);
}

INSTANTIATE_TEST_SUITE_P(Pieces, LongTextTest,
                         testing::Values(Long{"Words", L"word "}, Long{"OneWord", L"word"},
                                         Long{"Blanks", L" "}, Long{"OpenTags", L"<b>"},
                                         Long{"OpenTagsWithText", L"<b>x"},
                                         Long{"BrokenTags", L"<b "}, Long{"BrokenClosings", L"</b"},
                                         Long{"Braces", L"{"}, Long{"ClosingTags", L"</b>"},
                                         Long{"Links", L"<a x>y</a>"}, Long{"OpenLinks", L"<a x>y"},
                                         Long{"Colours", L"<c #FF0000>y"}, Long{"Breaks", L"\n"},
                                         Long{"Paragraphs", L"<p 3>x</p>"},
                                         Long{"OpenParagraphs", L"<p 3>"}, Long{"Marks", L"\x0301"},
                                         Long{"Escapes", L"{<}"}, Long{"Raw", L"<r>x</r>"}),
                         [](const auto& info) { return info.param.name; });

// Whatever comes, it ends, and the rectangle stays sane.
TEST_F(HtmlTextTest, GarbageIsHarmless)
{
    const wchar_t alphabet[] = L"<>{}/abcfinprsuxyz #'0123 9\n\r.\xD83D\xDE00\x4E00";
    unsigned state = 12345;
    for (int round = 0; round < 150; ++round) {
        std::wstring text;
        for (int i = 0; i < 60; ++i) {
            state = state * 1103515245 + 12345;
            text += alphabet[(state >> 16) % (std::size(alphabet) - 1)];
        }
        for (const UINT style : {UINT{0}, UINT{DT_WORDBREAK | DT_CENTER},
                                 UINT{DT_SINGLELINE | DT_END_ELLIPSIS | DT_VCENTER}}) {
            const SIZE size = SizeOf(text, style, 50);
            EXPECT_GE(size.cx, 0);
            EXPECT_GE(size.cy, 0);
            Html(text, style, {5, 5, 55, 100});
        }
    }
}

class HtmlGdiplusTest : public HtmlTextTest {};

TEST_F(HtmlGdiplusTest, DrawsAboutWhereTheSystemDoes)
{
    const RECT plain = Html(L"some <b>bold</b> text").BoundsOfAllBut(kWhite);
    manager.SetUseGdiplusText(true);
    const RECT drawn = Html(L"some <b>bold</b> text").BoundsOfAllBut(kWhite);
    EXPECT_NEAR(drawn.left, plain.left, 4);
    EXPECT_NEAR(drawn.top, plain.top, 5);
    EXPECT_NEAR(drawn.right, plain.right, 30);
    EXPECT_NEAR(drawn.bottom, plain.bottom, 5);
}

TEST_F(HtmlGdiplusTest, LayeredWindowIsWrittenWithAlpha)
{
    manager.SetLayered(true);
    scratch.Fill(Argb{0});
    RECT rect = kWhole;
    int links = 0;
    CRenderEngine::DrawHtmlText(scratch.Dc(), &manager, rect, L"text", kBlack, nullptr, nullptr,
                                links, kBase, 0);
    EXPECT_GT(scratch.Take(Canvas::Alpha::AsDrawn).Count(Argb{kBlack}), 0);
}

} // namespace
