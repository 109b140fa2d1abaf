#include "tests/quillet/dialogs/DialogHost.h"

#include <array>
#include <climits>
#include <cstddef>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace DuiLib;

// How the content of a confirmation is broken into lines.
namespace {

constexpr wchar_t kOpening[] = L"<a><c #007DFF>";
constexpr wchar_t kClosing[] = L"</c></a>";
constexpr int kLineWidth = 346; // at 96 DPI
constexpr wchar_t kSkin[] =
    L"<Window size=\"300,200\">"
    L"<Font id=\"0\" name=\"Tahoma\" size=\"12\" default=\"true\"/>"
    L"<Font id=\"1\" name=\"Tahoma\" size=\"24\"/>"
    L"<VerticalLayout><Label name=\"content\" font=\"0\"/></VerticalLayout></Window>";
constexpr wchar_t kThrows[] = L"std::out_of_range";

std::wstring Link(const std::wstring& text)
{
    return kOpening + text + kClosing;
}

// A confirmation whose steps can be called one by one. Its window is made and never shown.
class TextWindow : public ConfirmationWindow {
public:
    TextWindow() : ConfirmationWindow(nullptr, L"", false) {}
    ~TextWindow() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    void SetDpi(int dpi)
    {
        CResourceManagerEx::GetInstance()->SetScale(dpi);
        m_pm.SetDPI(dpi);
    }
    HFONT Font(int index) { return m_pm.GetFont(index); }

    std::wstring Plain(std::wstring text)
    {
        try {
            ReContentText(text);
        } catch (const std::out_of_range&) {
            return kThrows;
        }
        return text;
    }
    std::wstring LinkLines(std::wstring text)
    {
        try {
            ShowLinkWndReContentText(text);
        } catch (const std::out_of_range&) {
            return kThrows;
        }
        return text;
    }
    std::wstring Html(std::wstring text)
    {
        ReShowhtmlContentText(text);
        return text;
    }

    using ConfirmationWindow::m_pContentLabel;
    using ConfirmationWindow::m_pm;

protected:
    LPCTSTR GetWindowClassName() const override { return L"ConfirmationTextTest"; }
    CDuiString GetSkinFile() override { return L"Confirmation.xml"; }
};

// Widths as the system tells them.
class Ruler {
public:
    explicit Ruler(HFONT font)
        : m_dc(::CreateCompatibleDC(nullptr)), m_old(::SelectObject(m_dc, font))
    {
    }
    ~Ruler()
    {
        ::SelectObject(m_dc, m_old);
        ::DeleteDC(m_dc);
    }
    Ruler(const Ruler&) = delete;
    Ruler& operator=(const Ruler&) = delete;

    int WidthOf(const std::wstring& text) const
    {
        SIZE size{};
        ::GetTextExtentPoint32W(m_dc, text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    }

    // How many of the character stay narrower than a line.
    std::size_t FittingCount(wchar_t character, int width = kLineWidth) const
    {
        std::size_t count = 0;
        while (WidthOf(std::wstring(count + 1, character)) < width)
            ++count;
        return count;
    }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// The same once more, in the simplest way: every line is measured again and again.
struct Reference {
    const Ruler& ruler;
    int width;
    std::wstring language;
    bool showLink;
    int maxLines;

    static void ReplaceAll(std::wstring& text, const std::wstring& from, const std::wstring& to)
    {
        while (text.find(from) != std::wstring::npos)
            text.replace(text.find(from), from.size(), to);
    }

    bool IsInTag(std::size_t position, const std::wstring& text) const
    {
        if (!showLink)
            return false;
        const auto opening = text.find(kOpening);
        if (opening != std::wstring::npos && opening <= position && position <= opening + 14)
            return true;
        const auto closing = text.find(kClosing);
        return closing != std::wstring::npos && closing <= position && position <= closing + 8;
    }

    void Wrap(std::wstring& text, bool withLink) const
    {
        const auto lastSpaceBefore = [&](std::size_t end) {
            for (std::size_t i = end; i > 0; --i)
                if (text[i - 1] == L' ')
                    return i - 1;
            return std::wstring::npos;
        };
        std::wstring line;
        int breaks = 0;
        std::size_t i = 0;
        while (i < text.size()) {
            if (withLink && IsInTag(i, text)) {
                ++i;
                continue;
            }
            if (text[i] == L'\r') {
                line = L"";
                ++i;
                continue;
            }
            line += text[i];
            if (ruler.WidthOf(line) < width) {
                ++i;
                continue;
            }
            if (line.size() == text.size())
                return;
            ++breaks;
            if (!withLink && maxLines != 0 && maxLines <= breaks)
                return;
            line = L"";
            if (text[i] == L' ') {
                text[i] = L'\r';
                ++i;
                continue;
            }
            std::size_t space = lastSpaceBefore(i);
            if (space == std::wstring::npos)
                return;
            while (withLink && IsInTag(space, text)) {
                space = lastSpaceBefore(space);
                if (space == std::wstring::npos)
                    throw std::out_of_range("no space");
            }
            text[space] = L'\r';
            i = space + 1;
        }
    }

    void Plain(std::wstring& text) const
    {
        ReplaceAll(text, L"\\u200b", L" ");
        for (const wchar_t* const code : {L"zh-CN", L"en-GB", L"en-US", L"th-TH"})
            if (language == code)
                return;
        Wrap(text, false);
        if (text.rfind(L'\r') == std::wstring::npos) {
            if (text.size() <= 4)
                throw std::out_of_range("no break");
            return;
        }
        const std::size_t lastLine = text.size() - text.rfind(L'\r') - 1;
        if (lastLine <= 4)
            text.insert(text.rfind(L'\r'), L" ");
    }

    bool LeavesLinkTextAlone() const { return language == L"zh-CN" || language == L"th-TH"; }

    void LinkLines(std::wstring& text) const
    {
        ReplaceAll(text, L"\\u200b", L" ");
        ReplaceAll(text, L"\\n", L"\r");
        if (!LeavesLinkTextAlone())
            Wrap(text, true);
    }

    int Html(std::wstring& text) const
    {
        int measured = 1;
        std::wstring line;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (IsInTag(i, text))
                continue;
            if (text[i] != L'\r')
                line += text[i];
            if (text[i] == L'\r' || ruler.WidthOf(line) >= width) {
                line = L"";
                ++measured;
            }
        }
        text = L"<p>" + text + L"</p>";
        ReplaceAll(text, L"\r", L"</p><p>");
        ReplaceAll(text, L"</p><p></p><p>", L"</p><p> </p><p>");
        if (LeavesLinkTextAlone())
            return measured;
        int paragraphs = 0;
        for (std::size_t i = 0; i + 3 <= text.size(); ++i)
            paragraphs += text.compare(i, 3, L"<p>") == 0;
        return paragraphs;
    }
};

class ConfirmationTextTest : public test::WindowTest {
protected:
    ConfirmationTextTest()
    {
        skins.Write(L"Confirmation.xml", kSkin);
        SetLanguage(L"en-US");
        window.CreateMaskLayer();
        window.SetDpi(96);
        SetLanguage(L"de-DE");
        Measure();
    }
    ~ConfirmationTextTest() override { SetLanguage(L""); }

    static void SetLanguage(const wchar_t* language)
    {
        CResourceManager::GetInstance()->SetLanguage(language);
    }
    void Measure()
    {
        ruler = std::make_unique<Ruler>(window.Font(0));
        fitting = ruler->FittingCount(L'x');
    }
    void ShowLink() { window.m_bShowLink = true; }

    // A word of Full() characters just fits into a line.
    static std::wstring Word(std::size_t length) { return std::wstring(length, L'x'); }
    std::size_t Full() const { return fitting; }

    // A word that leaves no room for another.
    std::wstring Line() const { return Word(Full() - 3); }

    // The start and as many x as fit.
    std::wstring Filled(std::wstring start, int width = kLineWidth) const
    {
        while (ruler->WidthOf(start + L'x') < width)
            start += L'x';
        return start;
    }

    // The start and letters, exactly that wide together.
    std::wstring FilledExactly(const std::wstring& start, int width = kLineWidth) const
    {
        std::wstring line = Filled(start, width);
        line.resize(line.size() - 2);
        constexpr std::wstring_view kLetters = L"Wmxiltrfsceovz";
        for (const wchar_t a : kLetters)
            for (const wchar_t b : kLetters)
                for (const wchar_t c : kLetters)
                    for (const std::wstring& end : {std::wstring{a, b}, std::wstring{a, b, c}})
                        if (ruler->WidthOf(line + end) == width)
                            return line + end;
        return L"";
    }

    test::DialogSkins skins;
    TextWindow window;
    std::unique_ptr<Ruler> ruler;
    std::size_t fitting = 0;
};

struct LanguageCase {
    const wchar_t* language;
    bool breaksPlain;
    bool breaksLink;
};
constexpr LanguageCase kLanguages[] = {
    {L"zh-CN", false, false}, {L"en-GB", false, true}, {L"en-US", false, true},
    {L"th-TH", false, false}, {L"de-DE", true, true},  {L"", true, true},
    {L"zh-TW", true, true},   {L"en", true, true},     {L"EN-us", true, true},
    {L"zh-cn", true, true},   {L"th", true, true},     {L"en-USA", true, true},
};

TEST_F(ConfirmationTextTest, TheLanguageDecidesWhetherAPlainTextIsBroken)
{
    const std::wstring text = Line() + L" " + Line() + L" more text";
    const std::wstring broken = Line() + L"\r" + Line() + L"\rmore text";
    for (const auto& [language, breaks, breaksLink] : kLanguages) {
        SCOPED_TRACE(test::Utf8(language));
        SetLanguage(language);
        EXPECT_EQ(window.Plain(text), breaks ? broken : text);
    }
}

// English is in the list of plain texts and not in that of texts with a link.
TEST_F(ConfirmationTextTest, TheLanguageDecidesWhetherATextWithLinkIsBroken)
{
    ShowLink();
    const std::wstring text = Line() + L" " + Line() + L" more text";
    const std::wstring broken = Line() + L"\r" + Line() + L"\rmore text";
    for (const auto& [language, breaksPlain, breaks] : kLanguages) {
        SCOPED_TRACE(test::Utf8(language));
        SetLanguage(language);
        EXPECT_EQ(window.LinkLines(text), breaks ? broken : text);
    }
}

TEST_F(ConfirmationTextTest, TheLanguageDecidesHowTheLinesOfATextWithLinkAreCounted)
{
    ShowLink();
    const std::wstring text = Word(3 * (Full() + 1)); // as one paragraph, or by measuring
    for (const auto& [language, breaksPlain, breaks] : kLanguages) {
        SCOPED_TRACE(test::Utf8(language));
        SetLanguage(language);
        EXPECT_EQ(window.Html(text), L"<p>" + text + L"</p>");
        EXPECT_EQ(window.m_nLineCount, breaks ? 1 : 4);
    }
}

TEST_F(ConfirmationTextTest, EscapedSpacesAreReplacedInEveryLanguage)
{
    for (const auto& row : kLanguages) {
        SCOPED_TRACE(test::Utf8(row.language));
        SetLanguage(row.language);
        EXPECT_EQ(window.Plain(L"one\\u200btwo\\u200b\\u200bthree"), L"one two  three");
        EXPECT_EQ(window.LinkLines(L"one\\u200btwo\\u200b\\u200bthree"), L"one two  three");
    }
}

TEST_F(ConfirmationTextTest, OnlyWholeEscapesAreReplaced)
{
    EXPECT_EQ(window.Plain(L"\\u200\\u200bb and \\\\u200b and \\U200b"),
              L"\\u200 b and \\  and \\U200b");
    EXPECT_EQ(window.LinkLines(L"a\\\\nb\\ n \\N"), L"a\\\rb\\ n \\N");
}

TEST_F(ConfirmationTextTest, OnlyATextWithLinkHasEscapedLineEnds)
{
    for (const auto& row : kLanguages) {
        SCOPED_TRACE(test::Utf8(row.language));
        SetLanguage(row.language);
        EXPECT_EQ(window.Plain(L"first\\nsecond"), L"first\\nsecond");
        EXPECT_EQ(window.LinkLines(L"first\\nsecond\\n\\nthird"), L"first\rsecond\r\rthird");
    }
}

TEST_F(ConfirmationTextTest, AnEscapedSpaceIsAPlaceToBreak)
{
    EXPECT_EQ(window.Plain(Line() + L"\\u200b" + Line()), Line() + L"\r" + Line());
}

TEST_F(ConfirmationTextTest, BreaksBeforeTheWordThatOverflows)
{
    const std::wstring half = Word(Full() / 2 - 2);
    EXPECT_EQ(window.Plain(half + L" " + half + L" " + half), half + L" " + half + L"\r" + half);
}

TEST_F(ConfirmationTextTest, BreaksEveryLine)
{
    std::wstring text = Line();
    std::wstring broken = Line();
    for (int i = 0; i < 20; ++i) {
        text += L" " + Line();
        broken += L"\r" + Line();
    }
    EXPECT_EQ(window.Plain(text), broken);
    EXPECT_EQ(window.LinkLines(text), broken);
}

// A width that is reached exactly is too much already.
TEST_F(ConfirmationTextTest, ALineStaysNarrowerThanTheContent)
{
    const std::wstring tooWide = FilledExactly(L"two ");
    const std::wstring fits = FilledExactly(L"two ", kLineWidth - 1);
    ASSERT_EQ(ruler->WidthOf(tooWide), kLineWidth);
    ASSERT_EQ(ruler->WidthOf(fits), kLineWidth - 1);
    std::wstring broken = tooWide;
    broken[3] = L'\r';
    EXPECT_EQ(window.Plain(tooWide + L" words"), broken + L"\rwords");
    EXPECT_EQ(window.Plain(fits + L" words"), fits + L"\rwords");
}

TEST_F(ConfirmationTextTest, TheWidthGrowsWithTheScale)
{
    CResourceManagerEx::GetInstance()->SetScale(144);
    const int width = 519;
    const std::wstring tooWide = FilledExactly(L"two ", width);
    const std::wstring fits = FilledExactly(L"two ", width - 1);
    ASSERT_EQ(ruler->WidthOf(tooWide), width);
    ASSERT_EQ(ruler->WidthOf(fits), width - 1);
    std::wstring broken = tooWide;
    broken[3] = L'\r';
    EXPECT_EQ(window.Plain(tooWide + L" words"), broken + L"\rwords");
    EXPECT_EQ(window.Plain(fits + L" words"), fits + L"\rwords");
}

TEST_F(ConfirmationTextTest, TheFontOfTheContentCounts)
{
    const std::wstring text = Filled(L"two ");
    EXPECT_EQ(window.Plain(text), text);
    window.m_pContentLabel->SetFont(1);
    const Ruler large(window.Font(1));
    ASSERT_GT(large.WidthOf(text), kLineWidth);
    const std::wstring inLarge = std::wstring(large.FittingCount(L'x') - 2, L'x');
    EXPECT_EQ(window.Plain(inLarge + L" " + inLarge), inLarge + L"\r" + inLarge);
}

TEST_F(ConfirmationTextTest, WithoutContentTheFirstFontCounts)
{
    window.m_pContentLabel->SetFont(1);
    window.m_pContentLabel = nullptr;
    EXPECT_EQ(window.Plain(Filled(L"two ") + L" words"), Filled(L"two ") + L"\rwords");
}

TEST_F(ConfirmationTextTest, MeasuringGivesTheFontBack)
{
    const HDC dc = window.m_pm.GetPaintDC();
    window.m_pContentLabel->SetFont(1);
    ::SetBkMode(dc, OPAQUE);
    const HGDIOBJ font = ::GetCurrentObject(dc, OBJ_FONT);
    window.Plain(Line() + L" " + Line());
    EXPECT_EQ(::GetCurrentObject(dc, OBJ_FONT), font);
    EXPECT_EQ(::GetBkMode(dc), TRANSPARENT);
}

TEST_F(ConfirmationTextTest, ASpaceThatOverflowsIsTheBreak)
{
    const std::wstring start = L"two ";
    int spaceWidth = ruler->WidthOf(L" ");
    const std::wstring line = FilledExactly(start, kLineWidth - spaceWidth);
    ASSERT_EQ(ruler->WidthOf(line + L" "), kLineWidth);
    EXPECT_EQ(window.Plain(line + L" words"), line + L"\rwords");
    EXPECT_EQ(window.Plain(line + L"  words"), line + L"\r words");
}

TEST_F(ConfirmationTextTest, ATextThatIsTooWideOnlyWithItsLastCharacterStaysInOneLine)
{
    const std::wstring fits = Filled(L"two ");
    const std::wstring after = fits.substr(4);
    EXPECT_EQ(window.Plain(fits), fits);
    EXPECT_EQ(window.Plain(fits + L"x"), fits + L"x");
    EXPECT_EQ(window.Plain(fits + L"xx"), L"two\r" + after + L"xx");
    EXPECT_EQ(window.Plain(L"\r" + fits + L"x"), L"\rtwo\r" + after + L"x");
    EXPECT_EQ(window.LinkLines(fits + L"x"), fits + L"x");
    EXPECT_EQ(window.LinkLines(fits + L"xx"), L"two\r" + after + L"xx");
}

TEST_F(ConfirmationTextTest, AWordThatIsTooWideStaysWhole)
{
    const std::wstring word = Word(3 * Full());
    EXPECT_EQ(window.Plain(word), word);
    EXPECT_EQ(window.LinkLines(word), word);
}

TEST_F(ConfirmationTextTest, NothingIsBrokenAfterAWordThatIsTooWide)
{
    const std::wstring word = Word(Full() + 1);
    const std::wstring rest = L" " + Line() + L" " + Line();
    EXPECT_EQ(window.Plain(word + rest), word + rest);
    EXPECT_EQ(window.Plain(L"before " + word + rest), L"before\r" + word + rest);
    EXPECT_EQ(window.LinkLines(L"before " + word + rest), L"before\r" + word + rest);
}

// One space after the other, from the last to the first.
TEST_F(ConfirmationTextTest, AWordThatIsTooWideBreaksAllLinesBeforeIt)
{
    const std::wstring word = Word(Full() + 1);
    EXPECT_EQ(window.Plain(L"a b c d " + word + L" e"), L"a\rb\rc\rd\r" + word + L" e");
    EXPECT_EQ(window.Plain(L"a b\rc d\r" + word + L" e"), L"a\rb\rc\rd\r" + word + L" e");
    EXPECT_EQ(window.LinkLines(L"a b c d " + word + L" e"), L"a\rb\rc\rd\r" + word + L" e");
}

TEST_F(ConfirmationTextTest, SpacesAtTheEndsAreKept)
{
    EXPECT_EQ(window.Plain(L"  two  words  "), L"  two  words  ");
    const std::wstring word = Word(Full() + 1);
    EXPECT_EQ(window.Plain(L"  " + word), L"\r\r" + word);
    EXPECT_EQ(window.Plain(Line() + L"  " + Line() + L" "), Line() + L" \r" + Line() + L" ");
}

TEST_F(ConfirmationTextTest, SpacesAloneAreBrokenToo)
{
    const std::size_t spaces = ruler->FittingCount(L' ');
    const std::wstring line(spaces, L' ');
    EXPECT_EQ(window.Plain(line), line);
    EXPECT_EQ(window.Plain(line + L" "), line + L" ") << "the last character of all";
    EXPECT_EQ(window.Plain(line + L"        "), line + L"\r       ");
}

TEST_F(ConfirmationTextTest, ACarriageReturnBeginsALine)
{
    for (const std::wstring& text : {Line() + L"\r" + Line(), L"\r" + Line() + L"\r\r" + Line(),
                                     Line() + L"\r" + Line() + L"\r" + Line()}) {
        EXPECT_EQ(window.Plain(text), text);
        EXPECT_EQ(window.LinkLines(text), text);
    }
    EXPECT_EQ(window.Plain(Line() + L"\rtwo " + Line()), Line() + L"\rtwo\r" + Line());
}

TEST_F(ConfirmationTextTest, ALineFeedIsACharacter)
{
    EXPECT_EQ(window.Plain(L"first\nsecond"), L"first\nsecond");
    EXPECT_EQ(window.LinkLines(L"first\nsecond"), L"first\nsecond");
}

TEST_F(ConfirmationTextTest, TheLimitOfLinesLimitsTheBreaks)
{
    const struct {
        int limit;
        int breaks;
    } rows[] = {{0, 4}, {1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 4}, {-1, 0}, {INT_MIN, 0}};
    for (const auto& [limit, breaks] : rows) {
        SCOPED_TRACE(limit);
        window.SetMaxLineNums(limit);
        EXPECT_EQ(window.m_nMaxLineNums, limit);
        std::wstring text = Line();
        std::wstring broken = Line();
        for (int i = 0; i < 4; ++i) {
            text += L" " + Line();
            broken += (i < breaks ? L"\r" : L" ") + Line();
        }
        EXPECT_EQ(window.Plain(text), broken);
    }
}

TEST_F(ConfirmationTextTest, CarriageReturnsOfTheTextDoNotCountAgainstTheLimit)
{
    window.SetMaxLineNums(2);
    EXPECT_EQ(window.Plain(L"one\rtwo\rthree\r" + Line() + L" " + Line() + L" " + Line()),
              L"one\rtwo\rthree\r" + Line() + L"\r" + Line() + L" " + Line());
}

TEST_F(ConfirmationTextTest, ATextWithLinkHasNoLimitOfLines)
{
    ShowLink();
    window.SetMaxLineNums(1);
    EXPECT_EQ(window.LinkLines(Line() + L" " + Line() + L" " + Line()),
              Line() + L"\r" + Line() + L"\r" + Line());
}

TEST_F(ConfirmationTextTest, AShortLastLineGetsASpaceBeforeItsBreak)
{
    for (std::size_t length = 0; length <= 6; ++length) {
        SCOPED_TRACE(length);
        const std::wstring end(length, L'W');
        const std::wstring lastBreak = length <= 4 ? L" \r" : L"\r";
        EXPECT_EQ(window.Plain(L"words\r" + end), L"words" + lastBreak + end);
        EXPECT_EQ(window.Plain(L"\r" + end), lastBreak + end);
        EXPECT_EQ(window.Plain(L"one\rtwo\r" + end), L"one\rtwo" + lastBreak + end);
        if (length >= 4) {
            EXPECT_EQ(window.Plain(Line() + L" " + end), Line() + lastBreak + end);
        }
    }
}

TEST_F(ConfirmationTextTest, AShortLastLineIsLeftAloneInATextWithLink)
{
    ShowLink();
    EXPECT_EQ(window.LinkLines(L"words\rab"), L"words\rab");
    EXPECT_EQ(window.LinkLines(Line() + L" WWWW"), Line() + L"\rWWWW");
}

TEST_F(ConfirmationTextTest, AShortLastLineIsLeftAloneWhereTheLabelBreaks)
{
    SetLanguage(L"en-US");
    EXPECT_EQ(window.Plain(L"words\rab"), L"words\rab");
}

TEST_F(ConfirmationTextTest, AShortTextWithoutBreakRaisesAnError)
{
    for (std::size_t length = 0; length <= 6; ++length) {
        SCOPED_TRACE(length);
        const std::wstring text = Word(length);
        EXPECT_EQ(window.Plain(text), length <= 4 ? kThrows : text);
        EXPECT_EQ(window.LinkLines(text), text);
        SetLanguage(L"en-US");
        EXPECT_EQ(window.Plain(text), text);
        SetLanguage(L"de-DE");
    }
    EXPECT_EQ(window.Plain(L"\\u200b"), kThrows) << "one character";
    EXPECT_EQ(window.Plain(L"\\n"), kThrows) << "two characters";
}

TEST_F(ConfirmationTextTest, ATagIsNotMeasured)
{
    ShowLink();
    const std::wstring text = Word(Full() - 8) + L" " + Link(L"xx");
    ASSERT_GT(ruler->WidthOf(text), kLineWidth);
    EXPECT_EQ(window.LinkLines(text), text);
}

TEST_F(ConfirmationTextTest, ATagIsTextWhereNoLinkIsShown)
{
    const std::wstring text = Word(Full() - 8) + L" " + Link(L"xx");
    EXPECT_EQ(window.LinkLines(text), Word(Full() - 8) + L" <a><c\r#007DFF>xx</c></a>");
    EXPECT_EQ(window.LinkLines(Link(Word(Full()))), L"<a><c\r#007DFF>" + Word(Full()) + kClosing);
}

TEST_F(ConfirmationTextTest, APlainTextHasNoTags)
{
    ShowLink();
    EXPECT_EQ(window.Plain(Word(Full() - 8) + L" " + Link(L"xx")),
              Word(Full() - 8) + L" <a><c\r#007DFF>xx</c></a>");
}

TEST_F(ConfirmationTextTest, ALineIsBrokenBeforeALink)
{
    ShowLink();
    EXPECT_EQ(window.LinkLines(Line() + L" " + Link(L"linked words")),
              Line() + L"\r" + Link(L"linked words"));
}

TEST_F(ConfirmationTextTest, ALineIsBrokenInTheTextOfALink)
{
    ShowLink();
    EXPECT_EQ(window.LinkLines(Link(Line() + L" " + Line() + L" " + Line())),
              Link(Line() + L"\r" + Line() + L"\r" + Line()));
}

TEST_F(ConfirmationTextTest, ALinkMayStandFirstInTheMiddleOrLast)
{
    ShowLink();
    const std::wstring half = Word(Full() / 2 - 3);
    const std::wstring link = Link(half);
    EXPECT_EQ(window.LinkLines(link + L", " + half + L" " + half),
              link + L", " + half + L"\r" + half);
    EXPECT_EQ(window.LinkLines(half + L" " + link + L". " + half),
              half + L" " + link + L".\r" + half);
    EXPECT_EQ(window.LinkLines(half + L" " + half + L" " + link),
              half + L" " + half + L"\r" + link);
}

// The character behind a tag counts as part of it, so it is not measured.
TEST_F(ConfirmationTextTest, TheCharacterBehindATagIsNotMeasured)
{
    ShowLink();
    const std::wstring fits = Filled(L"two ");
    const std::wstring after = fits.substr(4);
    EXPECT_EQ(window.LinkLines(Link(L"W") + L"W" + fits + L".."),
              Link(L"W") + L"Wtwo\r" + after + L"..");
    EXPECT_EQ(window.LinkLines(Link(L"W") + L"W" + fits), Link(L"W") + L"W" + fits);
    EXPECT_EQ(window.LinkLines(Link(L"") + L"WWWW"), Link(L"") + L"WWWW");
}

TEST_F(ConfirmationTextTest, ASpaceBehindATagIsNoPlaceToBreak)
{
    ShowLink();
    // Of the link's xxxx only three are measured, and the space behind it is not.
    const std::wstring word = Word(Full() - 4);
    EXPECT_EQ(window.LinkLines(L"first words " + Link(L"xxxx") + L" " + word),
              L"first words\r" + Link(L"xxxx") + L" " + word);
    EXPECT_EQ(window.LinkLines(L"first words " + Link(L" " + word)),
              L"first words\r" + Link(L" " + word));
    EXPECT_EQ(window.LinkLines(L"first words " + Link(L"xxxx") + L"  " + word),
              L"first words " + Link(L"xxxx") + L" \r" + word)
        << "the second space is one";
}

TEST_F(ConfirmationTextTest, ATextWhoseOnlySpacesBelongToTagsRaisesAnError)
{
    ShowLink();
    const std::wstring word = Word(Full() + 2);
    EXPECT_EQ(window.LinkLines(Link(word)), kThrows);
    EXPECT_EQ(window.LinkLines(word + Link(L"x")), word + Link(L"x"))
        << "the tag's space stands behind the overflow";
    EXPECT_EQ(window.LinkLines(Link(L"x") + L" " + word), kThrows);
    EXPECT_EQ(window.LinkLines(Link(L" " + word)), kThrows);
    EXPECT_EQ(window.LinkLines(Link(L"x") + word), kThrows);
    EXPECT_EQ(window.LinkLines(L"a " + Link(word)), kThrows) << "after the first break";
    EXPECT_EQ(window.LinkLines(word), word) << "no tag";
    SetLanguage(L"zh-CN");
    EXPECT_EQ(window.LinkLines(Link(word)), Link(word));
}

TEST_F(ConfirmationTextTest, OnlyTheFirstOpeningTagCounts)
{
    ShowLink();
    // The line is full somewhere in the second tag, behind its space.
    std::wstring start = L" ";
    while (ruler->WidthOf(start + L"x <a><c ") < kLineWidth)
        start += L"x";
    ASSERT_GE(ruler->WidthOf(start + L" " + kOpening), kLineWidth);
    const std::wstring before = Link(L"W") + L"W" + start + L" ";
    EXPECT_EQ(window.LinkLines(before + Link(L"second")),
              before + L"<a><c\r#007DFF>second</c></a>");
}

TEST_F(ConfirmationTextTest, OnlyTheFirstClosingTagCounts)
{
    ShowLink();
    const std::wstring start = L"two words " + Link(L"x") + L" and " + Link(L"y");
    // A space behind the first closing tag would be no place to break.
    EXPECT_EQ(window.LinkLines(start + L" " + Line()), start + L"\r" + Line());
}

TEST_F(ConfirmationTextTest, AClosingTagCountsWithoutAnOpeningOne)
{
    ShowLink();
    const std::wstring word = Word(Full() - 8);
    EXPECT_EQ(window.LinkLines(L"the first words</c></a> " + word),
              L"the first\rwords</c></a> " + word);
}

TEST_F(ConfirmationTextTest, AnEmptyTextIsOneEmptyParagraph)
{
    ShowLink();
    for (const auto& row : kLanguages) {
        SCOPED_TRACE(test::Utf8(row.language));
        SetLanguage(row.language);
        window.m_nLineCount = -1;
        EXPECT_EQ(window.LinkLines(L""), L"");
        EXPECT_EQ(window.Html(L""), L"<p></p>");
        EXPECT_EQ(window.m_nLineCount, 1);
    }
}

struct ParagraphCase {
    const wchar_t* text;
    const wchar_t* paragraphs;
    int count;
};
constexpr ParagraphCase kParagraphs[] = {
    {L"one", L"<p>one</p>", 1},
    {L"one\rtwo", L"<p>one</p><p>two</p>", 2},
    {L"one\r\rtwo", L"<p>one</p><p> </p><p>two</p>", 3},
    // The second empty paragraph only shows when the search begins again at the start.
    {L"one\r\r\rtwo", L"<p>one</p><p> </p><p> </p><p>two</p>", 4},
    {L"one\r\r\r\r\rtwo", L"<p>one</p><p> </p><p> </p><p> </p><p> </p><p>two</p>", 6},
    {L"\rone", L"<p></p><p>one</p>", 2},
    {L"one\r", L"<p>one</p><p></p>", 2},
    {L"\r", L"<p></p><p></p>", 2},
    {L"\r\r", L"<p></p><p> </p><p></p>", 3},
    {L"one\n\\n", L"<p>one\n\\n</p>", 1},
    {L"\r \r", L"<p></p><p> </p><p></p>", 3},
};

TEST_F(ConfirmationTextTest, LinesBecomeParagraphs)
{
    ShowLink();
    for (const wchar_t* const language : {L"de-DE", L"en-US", L"zh-CN", L"th-TH"}) {
        SCOPED_TRACE(test::Utf8(language));
        SetLanguage(language);
        for (const auto& [text, paragraphs, count] : kParagraphs) {
            SCOPED_TRACE(test::Utf8(text));
            EXPECT_EQ(window.Html(text), paragraphs);
            EXPECT_EQ(window.m_nLineCount, count);
        }
    }
}

TEST_F(ConfirmationTextTest, ParagraphsOfTheTextAreCounted)
{
    ShowLink();
    window.Html(L"one<p>two<p><p>three<P>");
    EXPECT_EQ(window.m_nLineCount, 4);
    window.Html(L"<<p>>");
    EXPECT_EQ(window.m_nLineCount, 2);
    SetLanguage(L"zh-CN");
    window.Html(L"one<p>two<p><p>three<P>");
    EXPECT_EQ(window.m_nLineCount, 1);
}

// The character that makes a line too wide is not part of the next one.
TEST_F(ConfirmationTextTest, TheMeasuredCountDropsTheCharacterThatOverflows)
{
    ShowLink();
    SetLanguage(L"zh-CN");
    const struct {
        std::size_t length;
        int count;
    } rows[] = {
        {0, 1},
        {Full(), 1},
        {Full() + 1, 2},
        {2 * Full() + 1, 2},
        {2 * Full() + 2, 3},
        {10 * (Full() + 1) - 1, 10},
        {10 * (Full() + 1), 11},
    };
    for (const auto& [length, count] : rows) {
        SCOPED_TRACE(length);
        window.Html(Word(length));
        EXPECT_EQ(window.m_nLineCount, count);
    }
}

TEST_F(ConfirmationTextTest, TheMeasuredCountPaysNoHeedToSpaces)
{
    ShowLink();
    SetLanguage(L"th-TH");
    const std::wstring words = L"words of some length ";
    std::wstring text;
    while (ruler->WidthOf(text) < kLineWidth)
        text += words[text.size() % words.size()];
    window.Html(text);
    EXPECT_EQ(window.m_nLineCount, 2);
    window.Html(L"one\r" + text + L"\rtwo");
    EXPECT_EQ(window.m_nLineCount, 4);
}

TEST_F(ConfirmationTextTest, TheMeasuredCountPassesTags)
{
    ShowLink();
    SetLanguage(L"zh-CN");
    // The first character of the link counts as part of the tag.
    window.Html(Link(Word(Full() + 1)));
    EXPECT_EQ(window.m_nLineCount, 1);
    window.Html(Link(Word(Full() + 2)));
    EXPECT_EQ(window.m_nLineCount, 2);
    // So does the one behind it.
    window.Html(Word(Full() - 1) + Link(L"xx") + L"x");
    EXPECT_EQ(window.m_nLineCount, 1);
    window.Html(Word(Full() - 1) + Link(L"xx") + L"xx");
    EXPECT_EQ(window.m_nLineCount, 2);
    window.Html(Word(Full() - 1) + Link(L"x\r"));
    EXPECT_EQ(window.m_nLineCount, 2);
    window.Html(Word(Full() - 1) + Link(L"\rx"));
    EXPECT_EQ(window.m_nLineCount, 1) << "a break there is not counted";
    window.m_bShowLink = false;
    window.Html(Link(Word(Full() - 2)));
    EXPECT_EQ(window.m_nLineCount, 2);
}

TEST_F(ConfirmationTextTest, OnlyTheStepToParagraphsCounts)
{
    window.m_nLineCount = 77;
    window.Plain(Line() + L" " + Line());
    ShowLink();
    window.LinkLines(Line() + L" " + Line());
    EXPECT_EQ(window.m_nLineCount, 77);
}

// Texts of all that matters to the lines, in any order.
class RandomTexts {
public:
    std::wstring Next()
    {
        std::wstring text;
        const std::size_t parts = Below(150);
        while (text.size() < parts)
            text += Part();
        return text;
    }
    std::size_t Below(std::size_t end) { return m_engine() % end; }

private:
    std::wstring Part()
    {
        switch (Below(24)) {
        case 0:
            return L"\r";
        case 1:
            return L"\\u200b";
        case 2:
            return L"\\n";
        case 3:
            return kOpening;
        case 4:
            return kClosing;
        case 5:
            return Link(Letters(Below(9)));
        case 6:
            return L"<p>";
        case 7:
            return Below(4) == 0 ? Letters(20 + Below(30)) : L"\\u200\\u200bb";
        case 8:
        case 9:
        case 10:
        case 11:
        case 12:
            return L" ";
        default:
            return Letters(1 + Below(8));
        }
    }
    std::wstring Letters(std::size_t count)
    {
        constexpr std::wstring_view kLetters = L"eeeiillxxmW\u00E4\u6F22\u0E01-.";
        std::wstring letters;
        for (std::size_t i = 0; i < count; ++i)
            letters += kLetters[Below(kLetters.size())];
        return letters;
    }

    std::mt19937 m_engine{20240229};
};

template <class Steps>
std::wstring Outcome(const Steps& steps)
{
    try {
        return steps();
    } catch (const std::out_of_range&) {
        return kThrows;
    }
}

class RandomTextTest : public ConfirmationTextTest, public testing::WithParamInterface<int> {};

TEST_P(RandomTextTest, GivesTheLinesOfTheSimplestWay)
{
    const int dpi = GetParam();
    window.SetDpi(dpi);
    window.m_pContentLabel->SetFont(1);
    ruler = std::make_unique<Ruler>(window.Font(1));
    constexpr const wchar_t* kCodes[] = {L"de-DE", L"de-DE", L"de-DE", L"en-US", L"zh-CN", L""};
    constexpr int kLimits[] = {0, 0, 0, 1, 2, 3, -1};

    RandomTexts random;
    int broken = 0;
    int thrown = 0;
    for (int i = 0; i < 4000; ++i) {
        const wchar_t* const language = kCodes[random.Below(std::size(kCodes))];
        SetLanguage(language);
        window.m_bShowLink = random.Below(4) != 0;
        window.SetMaxLineNums(kLimits[random.Below(std::size(kLimits))]);
        const std::wstring text = random.Next();
        SCOPED_TRACE(test::Utf8(language) + (window.m_bShowLink ? " link " : " plain ") +
                     std::to_string(window.m_nMaxLineNums) + ": " + test::Utf8(text));
        const Reference reference{*ruler, dpi == 96 ? 346 : 519, language, window.m_bShowLink,
                                  window.m_nMaxLineNums};

        std::wstring plain = text;
        const std::wstring expectedPlain = Outcome([&] { return reference.Plain(plain), plain; });
        ASSERT_EQ(window.Plain(text), expectedPlain);

        std::wstring lines = text;
        const std::wstring expectedLines =
            Outcome([&] { return reference.LinkLines(lines), lines; });
        ASSERT_EQ(window.LinkLines(text), expectedLines);
        broken += expectedLines.find(L'\r') != std::wstring::npos;
        thrown += expectedLines == kThrows;
        if (expectedLines == kThrows)
            continue;

        const int count = reference.Html(lines);
        ASSERT_EQ(window.Html(expectedLines), lines);
        ASSERT_EQ(window.m_nLineCount, count);
    }
    EXPECT_GT(broken, 1500);
    EXPECT_GT(thrown, 50);
}

INSTANTIATE_TEST_SUITE_P(Dpi, RandomTextTest, testing::Values(96, 144),
                         [](const auto& test) { return std::to_string(test.param); });

} // namespace
