#include "support/ControlHost.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace DuiLib;
using namespace test;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr DWORD kBlack = 0xFF000000;
constexpr int kLarge = 1; // font ids
constexpr int kSlanted = 2;

class RenderTextTest : public testing::Test {
protected:
    RenderTextTest()
    {
        manager.AddFont(kLarge, L"DejaVu Sans", 21, false, false, false, false);
        manager.AddFont(kSlanted, L"DejaVu Serif", 16, true, true, true, false);
    }

    // What the system draws by itself.
    Picture Expected(const wchar_t* text, RECT rect, int font, UINT style, COLORREF colour = 0)
    {
        const Canvas canvas(160, 90);
        const HGDIOBJ before = ::SelectObject(canvas.Dc(), manager.GetFont(font));
        ::SetBkMode(canvas.Dc(), TRANSPARENT);
        ::SetTextColor(canvas.Dc(), colour);
        ::DrawTextW(canvas.Dc(), text, -1, &rect, style);
        ::SelectObject(canvas.Dc(), before);
        return canvas.Take();
    }

    Picture Drawn(const wchar_t* text, RECT rect, int font, UINT style, DWORD colour = kBlack)
    {
        const Canvas canvas(160, 90);
        CRenderEngine::DrawText(canvas.Dc(), &manager, rect, text, colour, font, style);
        return canvas.Take();
    }

    SIZE SystemExtent(const wchar_t* text, int font)
    {
        const HGDIOBJ before = ::SelectObject(canvas.Dc(), manager.GetFont(font));
        SIZE extent{};
        ::GetTextExtentPoint32W(canvas.Dc(), text, static_cast<int>(wcslen(text)), &extent);
        ::SelectObject(canvas.Dc(), before);
        return extent;
    }

    ControlHost host{60, 40};
    CPaintManagerUI& manager = host.Manager();
    Canvas canvas{160, 90};
};

struct Style {
    const char* name;
    UINT flags;
};

class TextStyleTest : public RenderTextTest, public testing::WithParamInterface<Style> {
protected:
    const std::vector<const wchar_t*> texts{L"Caption",
                                            L"A longer text that does not fit at all",
                                            L"x",
                                            L"&File and && more",
                                            L"two\nlines",
                                            L"cr\r\nlf",
                                            L"a\tb",
                                            L"",
                                            L" blank ends ",
                                            L"\x4F60\x597D",
                                            L"e\x0301 mark",
                                            L"\x05D0\x05D1"};
    const std::vector<RECT> rects{
        {0, 0, 160, 90}, {10, 10, 110, 41}, {10, 10, 111, 42}, {3, 5, 40, 20}, {0, 0, 160, 8}};
};

TEST_P(TextStyleTest, DrawsWhatTheSystemDraws)
{
    for (const int font : {-1, kLarge, kSlanted}) {
        for (const auto* text : texts) {
            for (const RECT& rect : rects) {
                EXPECT_EQ(Drawn(text, rect, font, GetParam().flags),
                          Expected(text, rect, font, GetParam().flags))
                    << "font " << font << ", text of " << wcslen(text) << ", first character "
                    << static_cast<int>(text[0]) << ", rectangle at " << rect.left << ','
                    << rect.top << " to " << rect.right << ',' << rect.bottom;
            }
        }
    }
}

TEST_P(TextStyleTest, MeasuresWhatTheSystemMeasures)
{
    for (const auto* text : texts) {
        for (const RECT& rect : rects) {
            for (int time = 0; time < 2; ++time) { // the second time from what is known
                RECT measured = rect;
                CRenderEngine::DrawText(canvas.Dc(), &manager, measured, text, kBlack, kLarge,
                                        GetParam().flags | DT_CALCRECT);

                RECT expected = rect;
                const HGDIOBJ before = ::SelectObject(canvas.Dc(), manager.GetFont(kLarge));
                ::DrawTextW(canvas.Dc(), text, -1, &expected, GetParam().flags | DT_CALCRECT);
                ::SelectObject(canvas.Dc(), before);
                EXPECT_TRUE(::EqualRect(&measured, &expected))
                    << measured.left << ',' << measured.top << ',' << measured.right << ','
                    << measured.bottom << " instead of " << expected.left << ',' << expected.top
                    << ',' << expected.right << ',' << expected.bottom << ", text of "
                    << wcslen(text) << ", first character " << static_cast<int>(text[0]);
            }
        }
    }
    EXPECT_EQ(canvas.Take().Count(kWhite), 160 * 90);
}

INSTANTIATE_TEST_SUITE_P(
    Styles, TextStyleTest,
    testing::Values(
        Style{"SingleLine", DT_SINGLELINE}, Style{"Centred", DT_SINGLELINE | DT_CENTER},
        Style{"Right", DT_SINGLELINE | DT_RIGHT}, Style{"Middle", DT_SINGLELINE | DT_VCENTER},
        Style{"Bottom", DT_SINGLELINE | DT_BOTTOM},
        Style{"CentredMiddle", DT_SINGLELINE | DT_CENTER | DT_VCENTER},
        Style{"RightBottom", DT_SINGLELINE | DT_RIGHT | DT_BOTTOM},
        Style{"CentredMiddleEllipsis", DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS},
        Style{"Ellipsis", DT_SINGLELINE | DT_END_ELLIPSIS},
        Style{"WordEllipsis", DT_SINGLELINE | DT_WORD_ELLIPSIS},
        Style{"PathEllipsis", DT_SINGLELINE | DT_PATH_ELLIPSIS},
        Style{"NoPrefix", DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER},
        Style{"NoClip", DT_SINGLELINE | DT_NOCLIP | DT_CENTER},
        Style{"HiddenPrefix", DT_SINGLELINE | DT_HIDEPREFIX},
        Style{"Tabs", DT_SINGLELINE | DT_EXPANDTABS},
        Style{"Contradiction", DT_SINGLELINE | DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM},
        Style{"Lines", 0}, Style{"CentredLines", DT_CENTER}, Style{"Words", DT_WORDBREAK},
        Style{"RightWords", DT_WORDBREAK | DT_RIGHT},
        Style{"EditWords", DT_WORDBREAK | DT_EDITCONTROL},
        Style{"WordsEllipsis", DT_WORDBREAK | DT_END_ELLIPSIS},
        Style{"ExternalLeading", DT_SINGLELINE | DT_EXTERNALLEADING | DT_VCENTER}),
    [](const auto& info) { return info.param.name; });

using DrawTextTest = RenderTextTest;

TEST_F(DrawTextTest, AlphaOfTheColourIsIgnored)
{
    const RECT rect{0, 0, 160, 90};
    const auto opaque = Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0xFF123456);
    EXPECT_EQ(Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0x00123456), opaque);
    EXPECT_EQ(Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0x80123456), opaque);
    EXPECT_EQ(Expected(L"Text", rect, kLarge, DT_SINGLELINE, RGB(0x12, 0x34, 0x56)), opaque);
}

TEST_F(DrawTextTest, BackgroundStays)
{
    canvas.Fill(Argb{0xFF00FF00});
    ::SetBkMode(canvas.Dc(), OPAQUE);
    ::SetBkColor(canvas.Dc(), RGB(255, 0, 0));
    RECT rect{0, 0, 160, 90};
    CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"a b", kBlack, kLarge, DT_SINGLELINE);
    EXPECT_EQ(canvas.Take().Count(Argb{0xFFFF0000}), 0);
}

TEST_F(DrawTextTest, RestoresTheStateOfTheDc)
{
    const HFONT font = manager.GetFont(kSlanted);
    const HGDIOBJ before = ::SelectObject(canvas.Dc(), font);
    ::SetTextColor(canvas.Dc(), RGB(1, 2, 3));
    ::SetBkColor(canvas.Dc(), RGB(4, 5, 6));
    ::SetBkMode(canvas.Dc(), OPAQUE);
    for (const UINT style : {UINT{DT_SINGLELINE}, UINT{DT_WORDBREAK}, UINT{DT_CALCRECT}}) {
        RECT rect{0, 0, 160, 90};
        CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"Some text", 0xFFABCDEF, kLarge,
                                style);
        EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_FONT), font);
        EXPECT_EQ(::GetTextColor(canvas.Dc()), RGB(1, 2, 3));
        EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(4, 5, 6));
        EXPECT_EQ(::GetBkMode(canvas.Dc()), OPAQUE);
    }
    ::SelectObject(canvas.Dc(), before);
}

TEST_F(DrawTextTest, SecondFormFillsTheRectangleFirst)
{
    RECT rect{10, 10, 60, 40};
    CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"T", kBlack, kLarge, DT_SINGLELINE,
                            0xFF0000FF);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(59, 39), Argb{0xFF0000FF});
    EXPECT_EQ(picture.At(60, 40), kWhite);
    EXPECT_LT(picture.Count(Argb{0xFF0000FF}), 50 * 30); // the text covers some of it
}

TEST_F(DrawTextTest, SecondFormFillsNothingWhenItMeasures)
{
    RECT rect{10, 10, 60, 40};
    CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"T", kBlack, kLarge,
                            DT_SINGLELINE | DT_CALCRECT, 0xFF0000FF);
    EXPECT_EQ(canvas.Take().Count(kWhite), 160 * 90);
    EXPECT_EQ(rect.right - rect.left, SystemExtent(L"T", kLarge).cx);
}

TEST_F(DrawTextTest, NullArgumentsDrawNothing)
{
    RECT rect{0, 0, 160, 90};
    CRenderEngine::DrawText(canvas.Dc(), nullptr, rect, L"T", kBlack, kLarge, DT_SINGLELINE);
    CRenderEngine::DrawText(canvas.Dc(), &manager, rect, nullptr, kBlack, kLarge, DT_SINGLELINE);
    CRenderEngine::DrawText(nullptr, &manager, rect, L"T", kBlack, kLarge, DT_SINGLELINE);
    EXPECT_EQ(canvas.Take().Count(kWhite), 160 * 90);
}

TEST_F(DrawTextTest, UnknownFontIsTheDefaultFont)
{
    const RECT rect{0, 0, 160, 90};
    EXPECT_EQ(Drawn(L"Text", rect, 4711, DT_SINGLELINE), Drawn(L"Text", rect, -1, DT_SINGLELINE));
}

struct Reference {
    const char* name;
    const wchar_t* text;
    const wchar_t* shown;
};

class ReferenceTest : public RenderTextTest, public testing::WithParamInterface<Reference> {};

TEST_P(ReferenceTest, ShowsOneCharacter)
{
    const RECT rect{0, 0, 160, 90};
    EXPECT_EQ(Drawn(GetParam().text, rect, kLarge, DT_SINGLELINE),
              Expected(GetParam().shown, rect, kLarge, DT_SINGLELINE | DT_NOPREFIX));
}

TEST_P(ReferenceTest, MeasuresOneCharacter)
{
    const SIZE size = CRenderEngine::GetTextSize(canvas.Dc(), &manager, GetParam().text, kLarge, 0);
    EXPECT_EQ(size.cx, SystemExtent(GetParam().shown, kLarge).cx);
}

INSTANTIATE_TEST_SUITE_P(References, ReferenceTest,
                         testing::Values(Reference{"Alone", L"&#x41;", L"A"},
                                         Reference{"WithoutEnd", L"&#x41", L"A"},
                                         Reference{"AmongText", L"before &#x41; after", L"A"},
                                         Reference{"LowerCaseDigits", L"&#xe9;", L"\xE9"},
                                         Reference{"UpperCaseDigits", L"&#xE9;", L"\xE9"},
                                         Reference{"AtMostFourDigits", L"&#x00411", L"A"},
                                         Reference{"FirstOfTwo", L"&#x41;&#x42;", L"A"},
                                         Reference{"Ampersand", L"&#x26;", L"&"}),
                         [](const auto& info) { return info.param.name; });

TEST_F(DrawTextTest, ReferenceWithoutDigitsIsText)
{
    const RECT rect{0, 0, 160, 90};
    const UINT style = DT_SINGLELINE | DT_NOPREFIX;
    EXPECT_EQ(Drawn(L"&#xg;", rect, kLarge, style), Expected(L"&#xg;", rect, kLarge, style));
}

using TextSizeTest = RenderTextTest;

TEST_F(TextSizeTest, IsTheExtentOfOneLine)
{
    for (const int font : {-1, kLarge, kSlanted}) {
        for (const auto* text : {L"Caption", L"x", L"Some more words"}) {
            const SIZE expected = SystemExtent(text, font);
            const SIZE size = CRenderEngine::GetTextSize(canvas.Dc(), &manager, text, font, 0);
            EXPECT_EQ(size.cx, expected.cx);
            EXPECT_EQ(size.cy, expected.cy);
        }
    }
}

TEST_F(TextSizeTest, AlignmentAndLineStylesChangeNothing)
{
    const SIZE plain = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"a b", kLarge, 0);
    for (const UINT style : {UINT{DT_CENTER | DT_VCENTER}, UINT{DT_WORDBREAK},
                             UINT{DT_RIGHT | DT_BOTTOM | DT_END_ELLIPSIS}, UINT{DT_SINGLELINE}}) {
        const SIZE size = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"a b", kLarge, style);
        EXPECT_EQ(size.cx, plain.cx);
        EXPECT_EQ(size.cy, plain.cy);
    }
}

TEST_F(TextSizeTest, NullArgumentsHaveNoSize)
{
    EXPECT_EQ(CRenderEngine::GetTextSize(canvas.Dc(), nullptr, L"a", -1, 0).cx, 0);
    EXPECT_EQ(CRenderEngine::GetTextSize(canvas.Dc(), &manager, nullptr, -1, 0).cx, 0);
}

TEST_F(TextSizeTest, FollowsAFontThatIsReplaced)
{
    manager.AddFont(7, L"DejaVu Sans", 12, false, false, false, false);
    const SIZE small = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", 7, 0);
    manager.AddFont(7, L"DejaVu Sans", 40, false, false, false, false);
    const SIZE large = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", 7, 0);
    EXPECT_EQ(large.cx, SystemExtent(L"Text", 7).cx);
    EXPECT_GT(large.cx, small.cx);
}

TEST_F(TextSizeTest, FollowsTheScaleOfTheWindow)
{
    const SIZE before = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", kLarge, 0);
    manager.SetDPI(192);
    const SIZE after = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", kLarge, 0);
    EXPECT_EQ(after.cx, SystemExtent(L"Text", kLarge).cx);
    EXPECT_GT(after.cx, before.cx);
}

// A handle that the system gives out again must not keep the measurements of the font before it.
TEST_F(TextSizeTest, NeverMixesUpFontsThatComeAndGo)
{
    for (int size = 8; size < 60; ++size) {
        manager.AddFont(7, L"DejaVu Sans", size, false, false, false, false);
        const SIZE measured = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", 7, 0);
        ASSERT_EQ(measured.cx, SystemExtent(L"Text", 7).cx) << size;
        manager.RemoveFont(7);
    }
}

TEST_F(TextSizeTest, IsNotTakenFromADcInOtherUnits)
{
    const SIZE pixels = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", kLarge, 0);
    ::SetMapMode(canvas.Dc(), MM_ANISOTROPIC);
    ::SetWindowExtEx(canvas.Dc(), 2, 2, nullptr);
    ::SetViewportExtEx(canvas.Dc(), 1, 1, nullptr);
    const SIZE other = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", kLarge, 0);
    EXPECT_EQ(other.cx, SystemExtent(L"Text", kLarge).cx);
    ::SetMapMode(canvas.Dc(), MM_TEXT);
    const SIZE again = CRenderEngine::GetTextSize(canvas.Dc(), &manager, L"Text", kLarge, 0);
    EXPECT_EQ(again.cx, pixels.cx);
}

class GdiplusTextTest : public RenderTextTest {
protected:
    GdiplusTextTest() { manager.SetUseGdiplusText(true); }

    RECT InkOf(const wchar_t* text, RECT rect, UINT style)
    {
        return Drawn(text, rect, kLarge, style).BoundsOfAllBut(kWhite);
    }
};

int systemTexts = 0;
int gdiplusTexts = 0;
decltype(&::DrawTextW) realDrawText = nullptr;
decltype(&::ExtTextOutW) realExtTextOut = nullptr;
decltype(&Gdiplus::DllExports::GdipDrawString) realDrawString = nullptr;

int WINAPI CountDrawText(HDC dc, LPCWSTR text, int length, LPRECT rect, UINT style)
{
    ++systemTexts;
    return realDrawText(dc, text, length, rect, style);
}

BOOL WINAPI CountExtTextOut(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR text,
                            UINT length, const INT* distances)
{
    ++systemTexts;
    return realExtTextOut(dc, x, y, options, rect, text, length, distances);
}

Gdiplus::GpStatus WINGDIPAPI CountDrawString(Gdiplus::GpGraphics* graphics, const WCHAR* text,
                                             INT length, const Gdiplus::GpFont* font,
                                             const Gdiplus::RectF* rect,
                                             const Gdiplus::GpStringFormat* format,
                                             const Gdiplus::GpBrush* brush)
{
    ++gdiplusTexts;
    return realDrawString(graphics, text, length, font, rect, format, brush);
}

// Counts who draws the text.
class TextCallsTest : public RenderTextTest {
protected:
    TextCallsTest()
    {
        realDrawText = m_drawText.Original<decltype(::DrawTextW)>();
        realExtTextOut = m_extTextOut.Original<decltype(::ExtTextOutW)>();
        realDrawString = m_drawString.Original<decltype(Gdiplus::DllExports::GdipDrawString)>();
        systemTexts = 0;
        gdiplusTexts = 0;
    }

private:
    ImportHook m_drawText{L"DuiLib.dll", "user32.dll", "DrawTextW", &CountDrawText};
    ImportHook m_extTextOut{L"DuiLib.dll", "gdi32.dll", "ExtTextOutW", &CountExtTextOut};
    ImportHook m_drawString{L"DuiLib.dll", "gdiplus.dll", "GdipDrawString", &CountDrawString};
};

TEST_F(TextCallsTest, PlainTextIsDrawnByTheSystem)
{
    Drawn(L"Text", {0, 0, 160, 90}, kLarge, DT_SINGLELINE);
    EXPECT_EQ(systemTexts, 1);
    EXPECT_EQ(gdiplusTexts, 0);
}

TEST_F(TextCallsTest, GdiplusModeDrawsWithGdiplus)
{
    manager.SetUseGdiplusText(true);
    Drawn(L"Text", {0, 0, 160, 90}, kLarge, DT_SINGLELINE);
    EXPECT_EQ(gdiplusTexts, 1);
    EXPECT_EQ(systemTexts, 0);
}

TEST_F(TextCallsTest, LayeredWindowDrawsWithGdiplus)
{
    manager.SetLayered(true);
    Drawn(L"Text", {0, 0, 160, 90}, kLarge, DT_SINGLELINE);
    EXPECT_EQ(gdiplusTexts, 1);
    EXPECT_EQ(systemTexts, 0);
}

TEST_F(TextCallsTest, TextThatCannotShowIsNotDrawn)
{
    Drawn(L"", {0, 0, 160, 90}, kLarge, DT_SINGLELINE);
    Drawn(L"Text", {10, 10, 10, 90}, kLarge, DT_SINGLELINE);
    EXPECT_EQ(systemTexts, 0);
}

int measurements = 0;
decltype(&::GetTextExtentPoint32W) realTextExtent = nullptr;

BOOL WINAPI CountTextExtent(HDC dc, LPCWSTR text, int length, LPSIZE size)
{
    ++measurements;
    return realTextExtent(dc, text, length, size);
}

TEST_F(RenderTextTest, ATextIsMeasuredOnce)
{
    const ImportHook hook(L"DuiLib.dll", "gdi32.dll", "GetTextExtentPoint32W", &CountTextExtent);
    ASSERT_TRUE(hook);
    realTextExtent = hook.Original<decltype(::GetTextExtentPoint32W)>();
    measurements = 0;
    for (int i = 0; i < 5; ++i)
        Drawn(L"Only once", {0, 0, 160, 90}, kLarge, DT_SINGLELINE | DT_CENTER);
    EXPECT_EQ(measurements, 1);
}

TEST_F(RenderTextTest, ManyTextsStayWithinABound)
{
    const auto drawMany = [&](const wchar_t* prefix) {
        for (int i = 0; i < 12000; ++i) {
            const std::wstring text = prefix + std::to_wstring(i);
            CRenderEngine::GetTextSize(canvas.Dc(), &manager, text.c_str(), kLarge, 0);
        }
    };
    drawMany(L"first ");
    const int before = HeapBlocks();
    drawMany(L"second ");
    drawMany(L"third ");
    EXPECT_LT(HeapBlocks(), before + 5000);
}

TEST_F(GdiplusTextTest, DrawsInsideTheRectangle)
{
    const RECT ink = InkOf(L"Text", {40, 20, 140, 60}, DT_SINGLELINE);
    EXPECT_GE(ink.left, 38);
    EXPECT_GE(ink.top, 20);
    EXPECT_LT(ink.right, 140);
    EXPECT_LE(ink.bottom, 60);
}

TEST_F(GdiplusTextTest, Aligns)
{
    const RECT rect{0, 0, 160, 90};
    const RECT left = InkOf(L"Text", rect, DT_SINGLELINE);
    const RECT centred = InkOf(L"Text", rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    const RECT right = InkOf(L"Text", rect, DT_SINGLELINE | DT_RIGHT | DT_BOTTOM);
    EXPECT_LT(left.right, centred.left + 20);
    EXPECT_NEAR(centred.left - left.left, right.left - centred.left, 3);
    EXPECT_NEAR(centred.top - left.top, right.top - centred.top, 3);
    EXPECT_GT(right.left, 90);
    EXPECT_GT(right.top, 50);
}

TEST_F(GdiplusTextTest, MeasuresAboutAsTheSystem)
{
    RECT rect{5, 5, 6, 6};
    CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"Some text", kBlack, kLarge,
                            DT_SINGLELINE | DT_CALCRECT);
    const SIZE system = SystemExtent(L"Some text", kLarge);
    EXPECT_EQ(rect.left, 5);
    EXPECT_EQ(rect.top, 5);
    EXPECT_NEAR(rect.right - 5, system.cx, system.cx / 5);
    EXPECT_NEAR(rect.bottom - 5, system.cy, system.cy / 2);
}

TEST_F(GdiplusTextTest, WrapsWordsOnlyWhenAsked)
{
    const auto heightOf = [&](UINT style) {
        RECT rect{0, 0, 60, 10};
        CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"some words to wrap", kBlack, kLarge,
                                style | DT_CALCRECT);
        return rect.bottom;
    };
    EXPECT_GT(heightOf(DT_WORDBREAK), heightOf(0));
    EXPECT_EQ(heightOf(DT_WORDBREAK | DT_SINGLELINE), heightOf(0));
}

TEST_F(GdiplusTextTest, LineFeedsBreakUnlessSingleLine)
{
    const auto heightOf = [&](UINT style) {
        RECT rect{0, 0, 160, 10};
        CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"a\nb", kBlack, kLarge,
                                style | DT_CALCRECT);
        return rect.bottom;
    };
    EXPECT_GT(heightOf(0), heightOf(DT_SINGLELINE));
}

TEST_F(GdiplusTextTest, CarriageReturnsBreakAsLineFeedsDo)
{
    const auto draw = [&](const wchar_t* text) {
        return Drawn(text, {0, 0, 160, 90}, kLarge, DT_WORDBREAK);
    };
    EXPECT_EQ(draw(L"a\rb"), draw(L"a\nb"));
    EXPECT_EQ(draw(L"a\r"), draw(L"a"));
    EXPECT_EQ(draw(L"a\r\nb"), draw(L"a\nb"));
    EXPECT_NE(draw(L"a\rb"), draw(L"a b"));
}

TEST_F(GdiplusTextTest, AlphaOfTheColourIsIgnored)
{
    const RECT rect{0, 0, 160, 90};
    EXPECT_EQ(Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0x00FF0000),
              Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0xFFFF0000));
    EXPECT_NE(Drawn(L"Text", rect, kLarge, DT_SINGLELINE, 0x00FF0000).BoundsOfAllBut(kWhite).right,
              0);
}

TEST_F(GdiplusTextTest, ReferenceShowsOneCharacter)
{
    const RECT rect{0, 0, 160, 90};
    EXPECT_EQ(Drawn(L"&#x41;", rect, kLarge, DT_SINGLELINE),
              Drawn(L"A", rect, kLarge, DT_SINGLELINE));
}

TEST_F(RenderTextTest, TextKeepsTheNumberOfObjects)
{
    const auto drawAll = [&] {
        RECT rect{0, 0, 160, 90};
        for (const UINT style : {UINT{DT_SINGLELINE}, UINT{DT_WORDBREAK}}) {
            CRenderEngine::DrawText(canvas.Dc(), &manager, rect, L"Some text", kBlack, kLarge,
                                    style, 0x80FF0000);
            CRenderEngine::GdiplusDrawText(canvas.Dc(), &manager, rect, L"Some text", kBlack,
                                           kLarge, style);
        }
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

} // namespace
