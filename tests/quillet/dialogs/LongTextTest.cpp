#include "support/ImportHook.h"
#include "tests/quillet/dialogs/MessageBoxHost.h"
#include "win32/Handles.h"

#include <gmock/gmock.h>

#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace DuiLib;
using test::BoxSkin;
using test::kNewer;
using test::OpenBox;
using test::ShownBox;
using testing::ElementsAre;
using testing::IsEmpty;

// The one break that a long text gets in UIIMessageBox.
namespace {

constexpr int kCharacterWidth = 10;

// Every character ten pixels wide; notes how long the measured texts are.
class FixedWidth {
public:
    FixedWidth() : m_hook(L"Quillet.dll", "gdi32.dll", "GetTextExtentPoint32W", &FixedWidth::Answer)
    {
        lengths.clear();
    }
    explicit operator bool() const { return static_cast<bool>(m_hook); }

    static inline std::vector<int> lengths;

private:
    static BOOL WINAPI Answer(HDC, LPCWSTR, int length, SIZE* extent)
    {
        lengths.push_back(length);
        *extent = {length * kCharacterWidth, 20};
        return TRUE;
    }

    test::ImportHook m_hook;
};

class MeasuringBox : public OpenBox<UIIMessageBox> {
public:
    explicit MeasuringBox(HWND parent) : OpenBox({}) { RunModeless(this, parent); }
    ~MeasuringBox() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    using UIIMessageBox::GetFontWidth;
    using UIIMessageBox::ProcessSpecialText;
};

class LongTextTest : public test::MessageBoxKit {
protected:
    static void ScaleTo(unsigned dpi) { CResourceManagerEx::GetInstance()->SetScale(dpi); }
};

std::wstring As(int count)
{
    return std::wstring(static_cast<std::size_t>(count), L'a');
}

std::wstring Words(int count)
{
    std::wstring text;
    for (int i = 0; i < count; ++i)
        text += L"word ";
    return text;
}

// Each row at 96 DPI: the limit is reached, exactly, by the 40th character.
struct TextRow {
    const char* name;
    std::wstring text;
    int breakAt; // where the break is put in, or -1
};

std::vector<TextRow> TextRows()
{
    return {
        {"empty", L"", -1},
        {"one space", L" ", -1},
        {"narrower by a character", L"a " + As(37), -1},
        {"reached by the last character", L"a " + As(38), -1},
        {"reached by a space that is the last character", As(39) + L" ", -1},
        {"one character more", L"a " + As(39), 2},
        {"one character more and no space", As(41), -1},
        {"no space at all", As(500), -1},
        {"space only after the limit and one more", As(41) + L" " + As(10), -1},
        {"overflows inside the second word", As(20) + L" " + As(30), 21},
        {"overflows inside the third word", As(10) + L" " + As(10) + L" " + As(30), 22},
        {"the last measured character is a space", As(39) + L" " + As(5), 40},
        {"the first character not measured is a space", As(40) + L" " + As(5), 41},
        {"the same at the end of the text", As(40) + L" ", 41},
        {"both are spaces", As(39) + L"  " + As(5), 40},
        {"the first character is the only space", L" " + As(50), 1},
        {"only spaces", std::wstring(60, L' '), 40},
        {"one break for many lines", Words(100), 40},
        {"a tab is no space", L"a\t" + As(50), -1},
        {"a break of the caller's is no space", L"a\r" + As(50), -1},
        {"ten thousand characters of words", L"ab " + Words(2000), 38},
        {"ten thousand characters without a space", As(10000), -1},
    };
}

TEST_F(LongTextTest, IsBrokenOnceAtTheLastSpaceThatFits)
{
    MeasuringBox box(parent);
    const FixedWidth fixed;
    ASSERT_TRUE(fixed);
    for (const TextRow& row : TextRows()) {
        SCOPED_TRACE(row.name);
        std::wstring expected = row.text;
        if (row.breakAt >= 0)
            expected.insert(static_cast<std::size_t>(row.breakAt), 1, L'\r');
        EXPECT_EQ(box.ProcessSpecialText(row.text), expected);
    }
}

TEST_F(LongTextTest, TheLimitGoesWithTheScale)
{
    MeasuringBox box(parent);
    const FixedWidth fixed;
    const auto isBroken = [&](int characters) {
        const std::wstring text = L"a " + As(characters - 2);
        return box.ProcessSpecialText(text) != text;
    };
    const struct {
        unsigned dpi;
        int characters;
    } rows[] = {{96, 40}, {120, 50}, {144, 60}, {192, 80}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.dpi);
        ScaleTo(row.dpi);
        EXPECT_FALSE(isBroken(row.characters));
        EXPECT_TRUE(isBroken(row.characters + 1));
    }
}

std::vector<int> Upto(int last)
{
    std::vector<int> numbers(static_cast<std::size_t>(last));
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

TEST_F(LongTextTest, EveryPrefixIsMeasuredUntilTheLimitAndNoneBeyond)
{
    MeasuringBox box(parent);
    const FixedWidth fixed;
    const auto measured = [&](const std::wstring& text) {
        FixedWidth::lengths.clear();
        box.ProcessSpecialText(text);
        return FixedWidth::lengths;
    };
    EXPECT_THAT(measured(L""), IsEmpty());
    EXPECT_THAT(measured(L"ab"), ElementsAre(1, 2));
    EXPECT_EQ(measured(As(39)), Upto(39));
    EXPECT_EQ(measured(As(40)), Upto(40));
    EXPECT_EQ(measured(As(41)), Upto(40));
    EXPECT_EQ(measured(Words(2000)), Upto(40));
    ScaleTo(144);
    EXPECT_EQ(measured(As(10000)), Upto(60));
}

// Texts as they come

// The width in a font, measured beside the window.
int WidthIn(HFONT font, const std::wstring& text)
{
    const Quillet::WindowDc screen(nullptr);
    const Quillet::SelectedObject selected(screen.get(), font);
    SIZE extent{};
    ::GetTextExtentPoint32W(screen.get(), text.c_str(), static_cast<int>(text.size()), &extent);
    return extent.cx;
}

// Put down step by step, without regard to speed.
std::wstring Expected(const std::wstring& text, int limit, HFONT font)
{
    std::size_t measured = 0;
    bool reached = false;
    while (measured < text.size() && !reached) {
        ++measured;
        reached = WidthIn(font, text.substr(0, measured)) >= limit;
    }
    if (!reached || measured == text.size())
        return text;
    if (text[measured - 1] == L' ')
        return text.substr(0, measured) + L"\r" + text.substr(measured);
    for (std::size_t i = measured + 1; i-- > 0;) {
        if (text[i] == L' ')
            return text.substr(0, i + 1) + L"\r" + text.substr(i + 1);
    }
    return text;
}

std::wstring RandomText(std::mt19937& random)
{
    static constexpr std::wstring_view kAlphabet = L"aWi.中éMl";
    const unsigned length = random() % 130;
    const unsigned longestWord = 1 + random() % 60;
    std::wstring text;
    while (text.size() < length) {
        if (random() % longestWord == 0)
            text += L' ';
        text += kAlphabet[random() % kAlphabet.size()];
        if (random() % (4 * longestWord) == 0)
            text += L"  ";
    }
    return text;
}

TEST_F(LongTextTest, RandomTextsAreBrokenAsByTheNaiveWay)
{
    constexpr int kTexts = 200;
    MeasuringBox box(parent);
    int broken = 0;
    int whole = 0;
    for (const unsigned dpi : {96u, 144u}) {
        ScaleTo(dpi);
        std::mt19937 random(20240 + dpi);
        for (int i = 0; i < kTexts; ++i) {
            const std::wstring text = RandomText(random);
            SCOPED_TRACE(testing::Message() << dpi << ": " << test::Utf8(text));
            const int limit = dpi == 96 ? 400 : 600;
            const std::wstring shown = box.ProcessSpecialText(text);
            EXPECT_EQ(shown, Expected(text, limit, box.m_pm.GetFont(1)));
            ++(shown == text ? whole : broken);
        }
    }
    EXPECT_GT(broken, kTexts / 4);
    EXPECT_GT(whole, kTexts / 4);
}

TEST_F(LongTextTest, ABoxOfALargerScaleBreaksItsTextAtThatScale)
{
    test::ForgetProcessState();
    {
        const test::FakeMonitors monitors(SIZE{7680, 4320});
        const test::FakeMainMonitorDpi dpi(144);
        std::wstring text;
        for (int i = 0; i < 30; ++i)
            text += L"many words ";
        kNewer.pop({.parent = parent, .text = text, .modal = false});
        const ShownBox box = ShownBox::Over(parent);
        EXPECT_EQ(CResourceManagerEx::GetInstance()->Scale(400), 600);
        const HFONT font = test::ManagerOf(box.Window())->GetFont(1);
        LOGFONTW logical{};
        ::GetObjectW(font, sizeof logical, &logical);
        EXPECT_EQ(logical.lfHeight, -21) << "14 at 144 DPI";
        const std::wstring shown = box.Text(L"lab_text");
        EXPECT_EQ(shown, Expected(text, 600, font));
        EXPECT_NE(shown, text);
        EXPECT_STREQ(box.Find(L"lab_text")->GetToolTip(), text.c_str());
        ::DestroyWindow(box.Window());
    }
    test::ForgetProcessState();
}

// Measuring

TEST_F(LongTextTest, IsMeasuredInTheFontOfItsLabel)
{
    MeasuringBox box(parent);
    const std::wstring text = L"Some words";
    auto& manager = box.m_pm;
    ASSERT_NE(WidthIn(manager.GetFont(0), text), WidthIn(manager.GetFont(1), text));
    EXPECT_EQ(box.GetFontWidth(text), WidthIn(manager.GetFont(1), text));
    static_cast<CLabelUI*>(manager.FindControl(L"lab_text"))->SetFont(0);
    EXPECT_EQ(box.GetFontWidth(text), WidthIn(manager.GetFont(0), text));
    EXPECT_EQ(box.GetFontWidth(L""), 0);
}

TEST_F(LongTextTest, IsMeasuredInTheFirstFontWithoutALabel)
{
    UseSkin(BoxSkin({L"lab_text"}));
    MeasuringBox box(parent);
    EXPECT_EQ(box.GetFontWidth(L"Some words"), WidthIn(box.m_pm.GetFont(0), L"Some words"));
}

TEST_F(LongTextTest, MeasuringPutsTheFontBackAndLeavesATransparentBackground)
{
    MeasuringBox box(parent);
    const HDC dc = box.m_pm.GetPaintDC();
    const HGDIOBJ before = ::GetCurrentObject(dc, OBJ_FONT);
    ::SetBkMode(dc, OPAQUE);
    box.GetFontWidth(L"Some words");
    EXPECT_EQ(::GetCurrentObject(dc, OBJ_FONT), before);
    EXPECT_EQ(::GetBkMode(dc), TRANSPARENT);
}

} // namespace
