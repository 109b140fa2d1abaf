#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::Canvas;
using test::ControlHost;
using test::Ink;
using test::MeasureLine;
using test::Picture;
using test::SentTypes;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kYellow{0xFFFFFF00};

constexpr wchar_t kTwoEdits[] = LR"(<Window>
    <VerticalLayout>
        <Edit name="first" height="30" text="one"/>
        <Edit name="second" height="30" text="two"/>
        <Control name="rest"/>
    </VerticalLayout>
</Window>)";

constexpr wchar_t kScrolledEdit[] = LR"(<Window>
    <VerticalLayout name="page" vscrollbar="true">
        <Control height="40"/>
        <Edit name="edit" height="30"/>
        <Control height="300"/>
    </VerticalLayout>
</Window>)";

// Runs a function at each notification of a type.
class Handler : public INotifyUI {
public:
    Handler(CPaintManagerUI& manager, std::wstring type, std::function<void(TNotifyUI&)> action)
        : m_type(std::move(type)), m_action(std::move(action))
    {
        manager.AddNotifier(this);
    }

    void Notify(TNotifyUI& notification) override
    {
        if (m_type == notification.sType.GetData())
            m_action(notification);
    }

private:
    std::wstring m_type;
    std::function<void(TNotifyUI&)> m_action;
};

void Type(CEditUI& edit, const wchar_t* text)
{
    for (; *text; ++text)
        ::SendMessageW(edit.GetHWND(), WM_CHAR, *text, 1);
}

void PressNative(CEditUI& edit, int key)
{
    ::SendMessageW(edit.GetHWND(), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
}

std::wstring NativeText(CEditUI& edit)
{
    wchar_t text[300] = L"";
    ::GetWindowTextW(edit.GetHWND(), text, 300);
    return text;
}

std::pair<DWORD, DWORD> Selection(CEditUI& edit)
{
    DWORD start = 0;
    DWORD end = 0;
    ::SendMessageW(edit.GetHWND(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                   reinterpret_cast<LPARAM>(&end));
    return {start, end};
}

RECT PlaceOf(const ControlHost& host, HWND child)
{
    RECT place{};
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(HWND_DESKTOP, host.Window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

LOGFONTW FontOf(HFONT font)
{
    LOGFONTW described{};
    ::GetObjectW(font, sizeof(described), &described);
    return described;
}

bool SameFont(HFONT first, HFONT second)
{
    const LOGFONTW one = FontOf(first);
    const LOGFONTW other = FontOf(second);
    return std::memcmp(&one, &other, sizeof(one)) == 0;
}

HFONT NativeFont(CEditUI& edit)
{
    return reinterpret_cast<HFONT>(::SendMessageW(edit.GetHWND(), WM_GETFONT, 0, 0));
}

void PutOnClipboard(HWND owner, const std::wstring& text)
{
    ASSERT_TRUE(::OpenClipboard(owner));
    ::EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(::GlobalLock(memory), text.c_str(), bytes);
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_UNICODETEXT, memory);
    ::CloseClipboard();
}

class EditTest : public testing::Test {
protected:
    ControlHost host{200, 40};
    CEditUI& edit = host.Add<CEditUI>();

    void Focus()
    {
        edit.SetFocus();
        ASSERT_NE(edit.GetHWND(), nullptr);
        host.ClearSent();
    }
};

TEST_F(EditTest, StartsAsAnEmptyWhiteLine)
{
    EXPECT_STREQ(edit.GetClass(), L"EditUI");
    EXPECT_EQ(edit.GetInterface(L"Edit"), static_cast<CEditUI*>(&edit));
    EXPECT_EQ(edit.GetInterface(L"Label"), static_cast<CLabelUI*>(&edit));
    const RECT padding = edit.GetTextPadding();
    EXPECT_EQ(padding.left, 4);
    EXPECT_EQ(padding.top, 3);
    EXPECT_EQ(padding.right, 4);
    EXPECT_EQ(padding.bottom, 3);
    EXPECT_EQ(edit.GetBkColor(), 0xFFFFFFFF);
    EXPECT_EQ(edit.GetNativeEditBkColor(), 0xFFFFFFFF);
    EXPECT_EQ(edit.GetMaxChar(), 255u);
    EXPECT_EQ(edit.GetPasswordChar(), L'*');
    EXPECT_FALSE(edit.IsPasswordMode());
    EXPECT_FALSE(edit.IsReadOnly());
    EXPECT_FALSE(edit.IsNumberOnly());
    EXPECT_FALSE(edit.IsAutoSelAll());
    EXPECT_EQ(edit.GetWindowStyls(), 0);
    EXPECT_EQ(edit.GetHWND(), nullptr);
    EXPECT_STREQ(edit.GetTipValue(), L"");
}

TEST_F(EditTest, AttributesReachTheirSetters)
{
    edit.SetAttribute(L"ReadOnly", L"true");
    edit.SetAttribute(L"numberonly", L"true");
    edit.SetAttribute(L"autoselall", L"TRUE");
    edit.SetAttribute(L"password", L"true");
    edit.SetAttribute(L"passwordchar", L"#x");
    edit.SetAttribute(L"maxchar", L"12");
    edit.SetAttribute(L"normalimage", L"n");
    edit.SetAttribute(L"hotimage", L"h");
    edit.SetAttribute(L"focusedimage", L"f");
    edit.SetAttribute(L"disabledimage", L"d");
    edit.SetAttribute(L"tipvalue", L"hint");
    edit.SetAttribute(L"tipvaluecolor", L"#FF112233");
    edit.SetAttribute(L"nativetextcolor", L"FF445566");
    edit.SetAttribute(L"nativebkcolor", L"#FF778899");
    edit.SetAttribute(L"textpadding", L"1,2,3,4");
    EXPECT_TRUE(edit.IsReadOnly());
    EXPECT_TRUE(edit.IsNumberOnly());
    EXPECT_TRUE(edit.IsAutoSelAll());
    EXPECT_TRUE(edit.IsPasswordMode());
    EXPECT_EQ(edit.GetPasswordChar(), L'#');
    EXPECT_EQ(edit.GetMaxChar(), 12u);
    EXPECT_STREQ(edit.GetNormalImage(), L"n");
    EXPECT_STREQ(edit.GetHotImage(), L"h");
    EXPECT_STREQ(edit.GetFocusedImage(), L"f");
    EXPECT_STREQ(edit.GetDisabledImage(), L"d");
    EXPECT_STREQ(edit.GetTipValue(), L"hint");
    EXPECT_EQ(edit.GetTipValueColor(), 0xFF112233);
    EXPECT_EQ(edit.GetNativeEditTextColor(), 0xFF445566);
    EXPECT_EQ(edit.GetNativeEditBkColor(), 0xFF778899);
    EXPECT_EQ(edit.GetTextPadding().bottom, 4);
    EXPECT_EQ(edit.GetWindowStyls(), ES_NUMBER);
}

TEST_F(EditTest, TheFactoryMakesIt)
{
    const std::unique_ptr<CControlUI> made(
        CControlFactory::GetInstance()->CreateControl(L"CEditUI"));
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->GetClass(), L"EditUI");
}

TEST_F(EditTest, IsATabStopUnlessTheKeyboardIsOff)
{
    EXPECT_EQ(edit.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP | UIFLAG_SETCURSOR));
    edit.SetKeyboardEnabled(false);
    EXPECT_EQ(edit.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    edit.SetEnabled(false);
    EXPECT_EQ(edit.GetControlFlags(), 0u);
}

TEST_F(EditTest, HasANativeWindowOnlyWhileItHasTheFocus)
{
    edit.SetText(L"text");
    host.ClearSent();
    edit.SetFocus();
    const HWND native = edit.GetHWND();
    ASSERT_NE(native, nullptr);
    EXPECT_TRUE(::IsWindowVisible(native));
    EXPECT_EQ(::GetParent(native), host.Window());
    EXPECT_EQ(::GetFocus(), native);
    EXPECT_EQ(NativeText(edit), L"text");

    host.Manager().SetFocus(nullptr);
    EXPECT_EQ(edit.GetHWND(), nullptr);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(::GetFocus(), host.Window());
    EXPECT_EQ(SentTypes(host), L"setfocus killfocus");
}

TEST_F(EditTest, TheNativeWindowGetsTheKeyboardThatItsParentIsGiven)
{
    Focus();
    ::SetFocus(host.Window());
    EXPECT_EQ(::GetFocus(), edit.GetHWND());
}

TEST_F(EditTest, TheNativeWindowIsALineInsideTheTextPadding)
{
    edit.SetTextPadding({10, 4, 20, 6});
    Focus();
    const LONG line = host.Manager().GetFontInfo(-1)->tm.tmHeight;
    const RECT place = PlaceOf(host, edit.GetHWND());
    EXPECT_EQ(place.left, 10);
    EXPECT_EQ(place.right, 180);
    EXPECT_EQ(place.top, 4 + (30 - line) / 2);
    EXPECT_EQ(place.bottom, place.top + line);
}

TEST_F(EditTest, TheNativeLineStandsWhereTheTextIsAligned)
{
    Focus();
    const LONG line = host.Manager().GetFontInfo(-1)->tm.tmHeight;
    edit.SetAttribute(L"valign", L"top");
    host.Paint();
    EXPECT_EQ(PlaceOf(host, edit.GetHWND()).top, 3);
    edit.SetAttribute(L"valign", L"bottom");
    host.Paint();
    EXPECT_EQ(PlaceOf(host, edit.GetHWND()).top, 37 - line);
}

TEST_F(EditTest, TheNativeWindowIsAlignedLikeTheText)
{
    edit.SetAttribute(L"align", L"center");
    Focus();
    EXPECT_NE(::GetWindowLongW(edit.GetHWND(), GWL_STYLE) & ES_CENTER, 0);
    host.Manager().SetFocus(nullptr);
    edit.SetAttribute(L"align", L"right");
    Focus();
    EXPECT_NE(::GetWindowLongW(edit.GetHWND(), GWL_STYLE) & ES_RIGHT, 0);
}

TEST_F(EditTest, TheNativeWindowFitsIntoTheSmallestControl)
{
    Focus();
    edit.SetPos({5, 5, 7, 6});
    const RECT place = PlaceOf(host, edit.GetHWND());
    EXPECT_GE(place.right, place.left);
    EXPECT_EQ(place.bottom, place.top);
}

TEST_F(EditTest, TheNativeWindowHasTheFontOfTheControl)
{
    host.Manager().AddFont(3, L"Arial", 20, true, false, false, false);
    Focus();
    EXPECT_TRUE(SameFont(NativeFont(edit), host.Manager().GetFont(-1)));
    edit.SetFont(3);
    host.Paint();
    EXPECT_TRUE(SameFont(NativeFont(edit), host.Manager().GetFont(3)));
}

TEST_F(EditTest, TheNativeWindowOutlivesItsFontInTheManager)
{
    host.Manager().AddFont(3, L"Arial", 20, true, false, false, false);
    edit.SetFont(3);
    Focus();
    host.Manager().RemoveFont(3);
    EXPECT_EQ(FontOf(NativeFont(edit)).lfWeight, FW_BOLD);
}

TEST_F(EditTest, AChangeOfTheScaleReachesTheOpenWindow)
{
    edit.SetTextPadding({10, 4, 20, 6});
    Focus();
    host.Manager().SetDPI(144);
    host.Resize(300, 60);
    host.Layout();
    EXPECT_TRUE(SameFont(NativeFont(edit), host.Manager().GetFont(-1)));
    const LONG line = host.Manager().GetFontInfo(-1)->tm.tmHeight;
    const RECT place = PlaceOf(host, edit.GetHWND());
    EXPECT_EQ(place.left, 15);
    EXPECT_EQ(place.right, 270);
    EXPECT_EQ(place.bottom - place.top, line);
    EXPECT_EQ(place.top, 6 + (60 - 15 - line) / 2);
}

TEST_F(EditTest, GivesItsColoursToTheNativeWindow)
{
    edit.SetNativeEditBkColor(0xFF102030);
    edit.SetNativeEditTextColor(L"#FF405060");
    Focus();
    const Canvas canvas(10, 10);
    for (const UINT message : {WM_CTLCOLOREDIT, WM_CTLCOLORSTATIC}) {
        SCOPED_TRACE(message);
        const LRESULT brush = host.Send(message, reinterpret_cast<WPARAM>(canvas.Dc()),
                                        reinterpret_cast<LPARAM>(edit.GetHWND()));
        LOGBRUSH described{};
        ASSERT_NE(::GetObjectW(reinterpret_cast<HGDIOBJ>(brush), sizeof(described), &described), 0);
        EXPECT_EQ(described.lbColor, RGB(0x10, 0x20, 0x30));
        EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(0x10, 0x20, 0x30));
        EXPECT_EQ(::GetTextColor(canvas.Dc()), RGB(0x40, 0x50, 0x60));
    }
}

TEST_F(EditTest, KeepsTheBrushOfTheNativeBackground)
{
    Focus();
    const Canvas canvas(10, 10);
    const auto ask = [&] {
        return host.Send(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(canvas.Dc()),
                         reinterpret_cast<LPARAM>(edit.GetHWND()));
    };
    const LRESULT first = ask();
    const int before = test::GdiObjects();
    for (int round = 0; round < 20; ++round)
        EXPECT_EQ(ask(), first);
    EXPECT_EQ(test::GdiObjects(), before);
}

TEST_F(EditTest, TheNativeWindowStaysOnTopOfWhatItsParentPaints)
{
    edit.SetNativeEditBkColor(kRed.value);
    edit.SetText(L"text");
    Focus();
    host.Paint();
    ::UpdateWindow(edit.GetHWND());
    EXPECT_EQ(host.Screen().At(150, 20), kRed);
    EXPECT_EQ(host.Screen().At(150, 2), kWhite);
    edit.SetBorderColor(kBlue.value);
    host.Manager().Invalidate();
    host.Paint();
    ::UpdateWindow(edit.GetHWND());
    EXPECT_EQ(host.Screen().At(150, 20), kRed);
}

TEST_F(EditTest, WithoutNativeColoursItsOwnCount)
{
    edit.SetTextColor(0xFF010203);
    edit.SetBkColor(0xFFE0E1E2);
    Focus();
    const Canvas canvas(10, 10);
    host.Send(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(canvas.Dc()),
              reinterpret_cast<LPARAM>(edit.GetHWND()));
    EXPECT_EQ(::GetTextColor(canvas.Dc()), RGB(1, 2, 3));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(0xE0, 0xE1, 0xE2));
    edit.SetBkColor(0);
    EXPECT_EQ(edit.GetNativeEditBkColor(), 0xFFFFFFFF);
}

TEST_F(EditTest, TypingChangesTheTextAndTellsEachChangeOnce)
{
    Focus();
    Type(edit, L"ab");
    EXPECT_STREQ(edit.GetText(), L"ab");
    EXPECT_EQ(SentTypes(host), L"textchanged textchanged");
    EXPECT_EQ(host.Sent().front().sender, &edit);
}

TEST_F(EditTest, WhatIsTypedIsTakenAsItIs)
{
    Focus();
    Type(edit, L"a{\\n}b");
    EXPECT_STREQ(edit.GetText(), L"a{\\n}b");
}

TEST_F(EditTest, SetTextShowsInTheOpenWindowAndTellsNothing)
{
    Focus();
    edit.SetText(L"from the program");
    EXPECT_EQ(NativeText(edit), L"from the program");
    EXPECT_EQ(SentTypes(host), L"");
    edit.SetText(L"");
    EXPECT_EQ(NativeText(edit), L"");
    EXPECT_EQ(SentTypes(host), L"");
}

TEST_F(EditTest, AHandlerMayReplaceTheTextThatWasTyped)
{
    Focus();
    Handler upper(host.Manager(), L"textchanged", [this](TNotifyUI&) {
        CDuiString text = edit.GetText();
        text.MakeUpper();
        edit.SetText(text);
    });
    Type(edit, L"abc");
    EXPECT_STREQ(edit.GetText(), L"ABC");
    EXPECT_EQ(NativeText(edit), L"ABC");
    EXPECT_EQ(host.Sent(L"textchanged").size(), 3u);
    host.Manager().RemoveNotifier(&upper);
}

TEST_F(EditTest, WhatAHandlerTypesIsToldToo)
{
    Focus();
    bool typed = false;
    Handler more(host.Manager(), L"textchanged", [&](TNotifyUI&) {
        if (!std::exchange(typed, true))
            Type(edit, L"b");
    });
    Type(edit, L"a");
    EXPECT_STREQ(edit.GetText(), L"ab");
    EXPECT_EQ(SentTypes(host), L"textchanged textchanged");
    host.Manager().RemoveNotifier(&more);
}

TEST_F(EditTest, TellsTheKeysBeforeTheirEffect)
{
    Focus();
    edit.SetText(L"abc");
    edit.SetSel(3, 3);
    std::wstring textThen;
    Handler back(host.Manager(), L"vk_back",
                 [&](TNotifyUI& sent) { textThen = sent.pSender->GetText(); });
    PressNative(edit, VK_BACK);
    ::SendMessageW(edit.GetHWND(), WM_CHAR, VK_BACK, 1);
    EXPECT_EQ(textThen, L"abc");
    EXPECT_STREQ(edit.GetText(), L"ab");
    EXPECT_EQ(SentTypes(host), L"vk_back textchanged");

    host.ClearSent();
    PressNative(edit, VK_RETURN);
    PressNative(edit, VK_ESCAPE);
    PressNative(edit, VK_LEFT);
    EXPECT_EQ(SentTypes(host), L"return escape");
    host.Manager().RemoveNotifier(&back);
}

TEST_F(EditTest, TheCharactersOfCommandKeysAreNoText)
{
    Focus();
    edit.SetText(L"abc");
    for (const wchar_t character : {L'\r', L'\n', L'\t', L'\x1B', L'\x01', L'\x7F'})
        ::SendMessageW(edit.GetHWND(), WM_CHAR, character, 1);
    EXPECT_STREQ(edit.GetText(), L"abc");
    EXPECT_EQ(SentTypes(host), L"");
}

TEST_F(EditTest, KeysThatTheParentWindowGetsArriveToo)
{
    Focus();
    host.Char(L'x');
    host.KeyDown(VK_RETURN);
    EXPECT_STREQ(edit.GetText(), L"x");
    EXPECT_EQ(SentTypes(host), L"textchanged return");
}

TEST_F(EditTest, LimitsWhatTheUserPutsIn)
{
    edit.SetMaxChar(3);
    Focus();
    Type(edit, L"abcdef");
    EXPECT_STREQ(edit.GetText(), L"abc");
    edit.SetMaxChar(5);
    Type(edit, L"xyz");
    EXPECT_EQ(edit.GetText().GetLength(), 5);
}

TEST_F(EditTest, AnAbsurdLimitIsNone)
{
    for (const wchar_t* const limit :
         {L"0", L"-1", L"-2147483648", L"2147483647", L"99999999999"}) {
        SCOPED_TRACE(limit);
        edit.SetText(L"");
        edit.SetAttribute(L"maxchar", limit);
        Focus();
        Type(edit, L"abcdef");
        EXPECT_STREQ(edit.GetText(), L"abcdef");
        host.Manager().SetFocus(nullptr);
    }
    edit.SetMaxChar(UINT_MAX);
    Focus();
    Type(edit, L"g");
    EXPECT_EQ(edit.GetText().GetLength(), 7);
}

TEST_F(EditTest, TheProgramMaySetMoreThanTheUser)
{
    edit.SetMaxChar(2);
    edit.SetText(L"abcdef");
    EXPECT_STREQ(edit.GetText(), L"abcdef");
    Focus();
    EXPECT_EQ(NativeText(edit), L"abcdef");
}

TEST_F(EditTest, TakesDigitsOnly)
{
    edit.SetNumberOnly(true);
    Focus();
    Type(edit, L"1a2-b3");
    EXPECT_STREQ(edit.GetText(), L"123");
    edit.SetNumberOnly(false);
    Type(edit, L"x");
    EXPECT_STREQ(edit.GetText(), L"123x");
}

TEST_F(EditTest, PastesDigitsOnly)
{
    edit.SetNumberOnly(true);
    Focus();
    PutOnClipboard(host.Window(), L"+49 (30) 12");
    ::SendMessageW(edit.GetHWND(), WM_PASTE, 0, 0);
    EXPECT_STREQ(edit.GetText(), L"493012");
    EXPECT_EQ(SentTypes(host), L"textchanged");

    edit.SetReadOnly(true);
    ::SendMessageW(edit.GetHWND(), WM_PASTE, 0, 0);
    EXPECT_STREQ(edit.GetText(), L"493012");
}

TEST_F(EditTest, AReadOnlyOneCannotBeTypedInto)
{
    edit.SetText(L"fixed");
    edit.SetReadOnly(true);
    Focus();
    Type(edit, L"x");
    EXPECT_STREQ(edit.GetText(), L"fixed");
    EXPECT_EQ(SentTypes(host), L"");
    edit.SetReadOnly(false);
    edit.SetSel(5, 5);
    Type(edit, L"!");
    EXPECT_STREQ(edit.GetText(), L"fixed!");
}

TEST_F(EditTest, DrawsAPasswordAsItsCharacter)
{
    edit.SetPasswordMode(true);
    edit.SetPasswordChar(L'o');
    edit.SetText(L"iiii");
    const Picture narrow = host.Paint();
    edit.SetText(L"MMMM");
    EXPECT_EQ(host.Paint(), narrow);
    edit.SetPasswordMode(false);
    edit.SetText(L"oooo");
    EXPECT_EQ(host.Paint(), narrow);
}

TEST_F(EditTest, TheNativeWindowHidesAPassword)
{
    edit.SetPasswordMode(true);
    edit.SetPasswordChar(L'#');
    edit.SetPasswordChar(L'\0');
    Focus();
    EXPECT_EQ(::SendMessageW(edit.GetHWND(), EM_GETPASSWORDCHAR, 0, 0), L'#');
    Type(edit, L"secret");
    EXPECT_STREQ(edit.GetText(), L"secret");
    edit.SetPasswordMode(false);
    EXPECT_EQ(::SendMessageW(edit.GetHWND(), EM_GETPASSWORDCHAR, 0, 0), 0);
    edit.SetPasswordMode(true);
    EXPECT_EQ(::SendMessageW(edit.GetHWND(), EM_GETPASSWORDCHAR, 0, 0), L'#');
}

TEST_F(EditTest, ShowsTheHintWhileEmpty)
{
    test::UnderlineTexts(host.Manager());
    edit.SetTipValue(L"hint");
    edit.SetTipValueColor(L"#FF00FF00");
    edit.SetTextColor(kRed.value);
    Picture picture = host.Paint();
    EXPECT_GT(picture.Count(kGreen), 0);
    EXPECT_EQ(picture.Count(kRed), 0);

    edit.SetText(L"text");
    picture = host.Paint();
    EXPECT_EQ(picture.Count(kGreen), 0);
    EXPECT_GT(picture.Count(kRed), 0);

    edit.SetText(L"");
    EXPECT_GT(host.Paint().Count(kGreen), 0);
}

TEST_F(EditTest, TheNativeWindowShowsTheHintUntilSomethingIsTyped)
{
    test::UnderlineTexts(host.Manager());
    edit.SetTipValue(L"hint");
    edit.SetTipValueColor(L"#FF00FF00");
    Focus();
    const auto printed = [this] {
        const Canvas canvas(200, 40);
        ::SendMessageW(edit.GetHWND(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()),
                       PRF_CLIENT);
        return canvas.Take();
    };
    EXPECT_GT(printed().Count(kGreen), 0);
    Type(edit, L"x");
    EXPECT_EQ(printed().Count(kGreen), 0);
}

TEST_F(EditTest, DrawsTheTextInOneLineWithEveryCharacter)
{
    edit.SetText(L"&");
    EXPECT_NE(Ink(host.Paint()).right, 0);
    edit.SetAttribute(L"wordbreak", L"true");
    edit.SetText(L"many words that do not fit into the width of this control");
    const RECT ink = Ink(host.Paint());
    EXPECT_LE(ink.bottom - ink.top, host.Manager().GetFontInfo(-1)->tm.tmHeight);
}

TEST_F(EditTest, SelectsInTheOpenWindow)
{
    edit.SetText(L"abcdef");
    Focus();
    edit.SetSel(1, 3);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{1}, DWORD{3}));
    edit.SetSelAll();
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{6}));
    edit.SetSel(2, 1000);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{2}, DWORD{6}));
    edit.SetSel(-1, 4);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{4}, DWORD{4}));
}

TEST_F(EditTest, StartsWithTheCaretAtTheEndAndKeepsTheSelection)
{
    edit.SetText(L"abcdef");
    Focus();
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{6}, DWORD{6}));
    edit.SetSel(1, 3);
    host.Manager().SetFocus(nullptr);
    Focus();
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{1}, DWORD{3}));
    host.Manager().SetFocus(nullptr);
    edit.SetSel(0, 2);
    Focus();
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{2}));
}

TEST_F(EditTest, SelectsAllWithTheFocusWhenAskedTo)
{
    edit.SetText(L"abcdef");
    edit.SetAutoSelAll(true);
    Focus();
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{6}));
}

TEST_F(EditTest, TheProgramReplacesTheSelectionUntold)
{
    edit.SetText(L"abcdef");
    Focus();
    edit.SetSel(1, 3);
    edit.SetReplaceSel(L"XYZ");
    EXPECT_STREQ(edit.GetText(), L"aXYZdef");
    EXPECT_EQ(NativeText(edit), L"aXYZdef");
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{4}, DWORD{4}));
    host.Manager().SetFocus(nullptr);
    edit.SetSel(0, 4);
    edit.SetReplaceSel(nullptr);
    EXPECT_STREQ(edit.GetText(), L"def");
    edit.SetReplaceSel(L"12");
    EXPECT_STREQ(edit.GetText(), L"12def");
    edit.SetSelAll();
    edit.SetReplaceSel(L"{\\n}");
    EXPECT_STREQ(edit.GetText(), L"{\\n}");
    EXPECT_EQ(host.Sent(L"textchanged").size(), 0u);
}

TEST_F(EditTest, AClickPlacesTheCaretUnderTheMouse)
{
    edit.SetText(L"mmmmmmmm");
    host.Paint();
    const int four = MeasureLine(host.Manager(), L"mmmm").cx;
    host.Click(4 + four, 20);
    ASSERT_NE(edit.GetHWND(), nullptr);
    EXPECT_EQ(::GetFocus(), edit.GetHWND());
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{4}, DWORD{4}));
    host.Click(1, 1);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{0}));
    EXPECT_NE(::GetCapture(), edit.GetHWND());
}

TEST_F(EditTest, DraggingSelects)
{
    edit.SetText(L"mmmmmmmm");
    host.Paint();
    const int one = MeasureLine(host.Manager(), L"m").cx;
    host.Press(4 + one, 20);
    host.MoveMouse(4 + 3 * one, 20);
    host.Release(4 + 3 * one, 20);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{1}, DWORD{3}));
}

TEST_F(EditTest, TheClickThatBringsTheFocusLeavesAllSelected)
{
    edit.SetText(L"mmmmmmmm");
    edit.SetAutoSelAll(true);
    host.Paint();
    host.Click(30, 20);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{8}));
    EXPECT_FALSE(host.Manager().IsCaptured());
    host.Click(1, 20);
    EXPECT_EQ(Selection(edit), std::make_pair(DWORD{0}, DWORD{0}));
}

TEST_F(EditTest, TheManagerLearnsOfAReleaseOverTheNativeWindow)
{
    host.Press(30, 20);
    struct Counter {
        int count = 0;
        bool Count(void* event)
        {
            count += static_cast<TEventUI*>(event)->Type == UIEVENT_BUTTONUP ? 1 : 0;
            return true;
        }
    } counter;
    edit.OnEvent += MakeDelegate(&counter, &Counter::Count);
    ::SendMessageW(edit.GetHWND(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(counter.count, 1);
    edit.OnEvent -= MakeDelegate(&counter, &Counter::Count);
}

TEST_F(EditTest, TheWheelOverTheNativeWindowReachesTheControl)
{
    Focus();
    struct Counter {
        int count = 0;
        bool Count(void* event)
        {
            count += static_cast<TEventUI*>(event)->Type == UIEVENT_SCROLLWHEEL ? 1 : 0;
            return true;
        }
    } counter;
    edit.OnEvent += MakeDelegate(&counter, &Counter::Count);
    POINT screen{30, 20};
    ::ClientToScreen(host.Window(), &screen);
    ::SendMessageW(edit.GetHWND(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120),
                   MAKELPARAM(screen.x, screen.y));
    EXPECT_EQ(counter.count, 1);
    edit.OnEvent -= MakeDelegate(&counter, &Counter::Count);
}

TEST_F(EditTest, AMenuOfItsOwnReplacesTheNativeOne)
{
    edit.SetContextMenuUsed(true);
    Focus();
    ::SendMessageW(edit.GetHWND(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(edit.GetHWND()), 0);
    ASSERT_EQ(SentTypes(host), L"menu");
    EXPECT_EQ(host.Sent().front().lParam, reinterpret_cast<LPARAM>(&edit));
}

TEST_F(EditTest, DrawsThePictureOfTheFirstStateThatHolds)
{
    AddColumns(host.Manager(), L"n", {kRed});
    AddColumns(host.Manager(), L"h", {kGreen});
    AddColumns(host.Manager(), L"f", {kBlue});
    AddColumns(host.Manager(), L"d", {kYellow});
    edit.SetNormalImage(L"n");
    EXPECT_EQ(host.Paint().At(100, 1), kRed);
    host.MoveMouse(100, 1);
    EXPECT_EQ(host.Paint().At(100, 1), kRed) << "the normal image stands in for the hot one";
    edit.SetHotImage(L"h");
    EXPECT_EQ(host.Paint().At(100, 1), kGreen);
    edit.SetFocusedImage(L"f");
    edit.SetFocus();
    EXPECT_EQ(host.Paint().At(100, 1), kBlue);
    edit.SetDisabledImage(L"d");
    edit.SetEnabled(false);
    EXPECT_EQ(host.Paint().At(100, 1), kYellow);
    edit.SetEnabled(true);
    host.Manager().SetFocus(nullptr);
    EXPECT_EQ(host.Paint().At(100, 1), kRed) << "disabling ends the hot state";
}

TEST_F(EditTest, DisablingClosesTheWindowAndEnablingOpensItAgain)
{
    Focus();
    const HWND native = edit.GetHWND();
    edit.SetEnabled(false);
    EXPECT_EQ(edit.GetHWND(), nullptr);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(::GetFocus(), host.Window());
    edit.SetEnabled(true);
    EXPECT_NE(edit.GetHWND(), nullptr);
}

TEST_F(EditTest, HidingClosesTheWindow)
{
    Focus();
    edit.SetVisible(false);
    EXPECT_EQ(edit.GetHWND(), nullptr);
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
}

// The container's word on visibility must reach the control itself.
TEST_F(EditTest, SetInternVisibleAlsoHidesTheControl)
{
    Focus();
    edit.SetInternVisible(false);
    EXPECT_FALSE(edit.IsVisible());
    EXPECT_EQ(edit.GetHWND(), nullptr);
    edit.SetInternVisible(true);
    EXPECT_TRUE(edit.IsVisible());
}

TEST_F(EditTest, HidingTheContainerClosesTheWindow)
{
    Focus();
    host.Root()->SetVisible(false);
    EXPECT_EQ(edit.GetHWND(), nullptr);
}

TEST_F(EditTest, RemovingTheControlClosesTheWindow)
{
    Focus();
    const HWND native = edit.GetHWND();
    static_cast<CContainerUI*>(host.Root())->Remove(&edit);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(::GetFocus(), host.Window());
    host.Pump();
}

TEST_F(EditTest, DeletingTheControlClosesTheWindow)
{
    test::DeleteAtOnce(host.Root());
    Focus();
    const HWND native = edit.GetHWND();
    static_cast<CContainerUI*>(host.Root())->RemoveAll();
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(::GetFocus(), host.Window());
}

TEST_F(EditTest, TheEndOfItsWindowIsNoHarm)
{
    Focus();
    ::DestroyWindow(host.Window());
    EXPECT_EQ(edit.GetHWND(), nullptr);
    edit.SetText(L"still alive");
    edit.SetSelAll();
    EXPECT_STREQ(edit.GetText(), L"still alive");
}

struct KeyCase {
    const wchar_t* type;
    UINT message;
    WPARAM key;
};

class EditHandlerTest : public testing::TestWithParam<KeyCase> {
protected:
    ControlHost host{200, 40};
    CEditUI& edit = host.Add<CEditUI>();

    void SetUp() override
    {
        edit.SetText(L"abc");
        edit.SetFocus();
        ASSERT_NE(edit.GetHWND(), nullptr);
    }
    void SendIt(HWND native) { ::SendMessageW(native, GetParam().message, GetParam().key, 1); }
};

TEST_P(EditHandlerTest, MayDeleteTheControl)
{
    test::DeleteAtOnce(host.Root());
    int calls = 0;
    Handler handler(host.Manager(), GetParam().type, [&](TNotifyUI& sent) {
        ++calls;
        static_cast<CContainerUI*>(host.Root())->Remove(sent.pSender);
    });
    const HWND native = edit.GetHWND();
    SendIt(native);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
    host.Manager().RemoveNotifier(&handler);
}

TEST_P(EditHandlerTest, MayDestroyTheWindow)
{
    Handler handler(host.Manager(), GetParam().type,
                    [&](TNotifyUI&) { ::DestroyWindow(host.Window()); });
    const HWND native = edit.GetHWND();
    SendIt(native);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_EQ(edit.GetHWND(), nullptr);
    host.Manager().RemoveNotifier(&handler);
}

TEST_P(EditHandlerTest, MayMoveTheFocusAwayAndBack)
{
    Handler handler(host.Manager(), GetParam().type, [&](TNotifyUI& sent) {
        host.Manager().SetFocus(nullptr);
        sent.pSender->SetFocus();
    });
    const HWND native = edit.GetHWND();
    SendIt(native);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_TRUE(::IsWindow(edit.GetHWND()));
    EXPECT_EQ(::GetFocus(), edit.GetHWND());
    host.Manager().RemoveNotifier(&handler);
}

INSTANTIATE_TEST_SUITE_P(Notifications, EditHandlerTest,
                         testing::Values(KeyCase{L"return", WM_KEYDOWN, VK_RETURN},
                                         KeyCase{L"vk_back", WM_KEYDOWN, VK_BACK},
                                         KeyCase{L"escape", WM_KEYDOWN, VK_ESCAPE},
                                         KeyCase{L"textchanged", WM_CHAR, L'x'}),
                         [](const auto& info) {
                             const std::wstring type = info.param.type;
                             std::string name;
                             for (const wchar_t letter : type)
                                 name += letter == L'_' ? 'X' : static_cast<char>(letter);
                             return name;
                         });

TEST_F(EditTest, ACopyHasNoNativeWindow)
{
    edit.SetText(L"text");
    edit.SetTipValue(L"hint");
    Focus();
    {
        const CEditUI copy(edit);
        EXPECT_EQ(const_cast<CEditUI&>(copy).GetHWND(), nullptr);
        EXPECT_STREQ(copy.GetText(), L"text");
    }
    EXPECT_TRUE(::IsWindow(edit.GetHWND()));
}

TEST_F(EditTest, AssigningClosesTheNativeWindow)
{
    Focus();
    CEditUI other;
    other.SetText(L"other");
    edit = other;
    EXPECT_EQ(edit.GetHWND(), nullptr);
    EXPECT_STREQ(edit.GetText(), L"other");
}

TEST_F(EditTest, OpeningAndClosingLeavesNothingBehind)
{
    const auto round = [this] {
        edit.SetFocus();
        host.Paint();
        host.Manager().SetFocus(nullptr);
        host.Paint();
    };
    round();
    const int gdi = test::GdiObjects();
    const int user = test::UserWindows();
    for (int count = 0; count < 200; ++count)
        round();
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(test::UserWindows(), user);
}

TEST_F(EditTest, ATextFromTheLanguageTableBecomesPlainWhenTheUserChangesIt)
{
    edit.SetText(L"id");
    edit.SetResourceText(true);
    Focus();
    Type(edit, L"!");
    EXPECT_FALSE(edit.IsResourceText());
    EXPECT_EQ(edit.GetText().Right(1), CDuiString(L"!"));
}

TEST_F(EditTest, IsAsHighAsItsFontWhenNoHeightIsSet)
{
    const LONG line = host.Manager().GetFontInfo(-1)->tm.tmHeight;
    EXPECT_EQ(edit.EstimateSize({200, 200}).cy, line + 8 + 6);
    edit.SetFixedHeight(26);
    EXPECT_EQ(edit.EstimateSize({200, 200}).cy, 26);
}

class EditPageTest : public testing::Test {
protected:
    ControlHost host{200, 100};

    void SetUp() override { ASSERT_NE(host.Load(kTwoEdits), nullptr); }

    // As the message loop gets it from the native window that has the keyboard.
    void PressTab()
    {
        MSG message{};
        message.hwnd = ::GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = VK_TAB;
        message.lParam = 1;
        if (!CPaintManagerUI::TranslateMessage(&message))
            ::DispatchMessageW(&message);
    }
};

TEST_F(EditPageTest, TabLeavesTheNativeWindowInTabOrder)
{
    auto& first = host.Find<CEditUI>(L"first");
    auto& second = host.Find<CEditUI>(L"second");
    first.SetFocus();
    ASSERT_EQ(::GetFocus(), first.GetHWND());
    PressTab();
    EXPECT_EQ(host.Manager().GetFocus(), &second);
    EXPECT_EQ(first.GetHWND(), nullptr);
    EXPECT_EQ(::GetFocus(), second.GetHWND());
    PressTab();
    EXPECT_EQ(::GetFocus(), first.GetHWND());
    EXPECT_STREQ(first.GetText(), L"one");
    EXPECT_STREQ(second.GetText(), L"two");
}

TEST_F(EditPageTest, AClickOnAnotherEditMovesTheNativeWindow)
{
    auto& first = host.Find<CEditUI>(L"first");
    auto& second = host.Find<CEditUI>(L"second");
    host.Click(50, 15);
    EXPECT_EQ(::GetFocus(), first.GetHWND());
    host.Click(50, 45);
    EXPECT_EQ(first.GetHWND(), nullptr);
    EXPECT_EQ(::GetFocus(), second.GetHWND());
    host.Click(50, 80);
    EXPECT_EQ(second.GetHWND(), nullptr);
    EXPECT_EQ(::GetFocus(), host.Window());
}

TEST_F(EditPageTest, MovingTheControlMovesItsWindow)
{
    auto& first = host.Find<CEditUI>(L"first");
    first.SetFocus();
    const RECT before = PlaceOf(host, first.GetHWND());
    first.SetPos({20, 50, 120, 80});
    const RECT after = PlaceOf(host, first.GetHWND());
    EXPECT_EQ(after.left, before.left + 20);
    EXPECT_EQ(after.top, before.top + 50);
    EXPECT_EQ(after.right, 116);
}

// A window as applications write it, with the skin of one edit.
class EditWindow : public WindowImplBase {
public:
    ~EditWindow() override
    {
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
    }

    CEditUI& Open()
    {
        Create(nullptr, L"edit", WS_POPUP, WS_EX_TOOLWINDOW, 0, 0, 200, 60);
        ShowWindow(true, false);
        ::UpdateWindow(m_hWnd);
        return *static_cast<CEditUI*>(m_pm.FindControl(L"edit"));
    }

    LPCTSTR GetWindowClassName() const override { return L"DuiLib.EditTest"; }
    CDuiString GetSkinFile() override
    {
        return LR"(<Window size="200,60"><VerticalLayout>
            <Edit name="edit" height="30" nativebkcolor="#FF102030"/>
        </VerticalLayout></Window>)";
    }
    void Notify(TNotifyUI& sent) override
    {
        types.push_back(sent.sType.GetData());
        if (sent.sType == DUI_MSGTYPE_RETURN)
            SendMessage(WM_CLOSE);
    }

    std::vector<std::wstring> types;
};

TEST(EditInApplicationWindowTest, WorksAndMayCloseItsWindow)
{
    EditWindow window;
    CEditUI& edit = window.Open();
    edit.SetFocus();
    const HWND native = edit.GetHWND();
    ASSERT_NE(native, nullptr);
    window.types.clear();
    Type(edit, L"ab");
    EXPECT_STREQ(edit.GetText(), L"ab");
    EXPECT_EQ(window.types, (std::vector<std::wstring>{L"textchanged", L"textchanged"}));
    {
        const Canvas canvas(10, 10);
        window.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(canvas.Dc()),
                           reinterpret_cast<LPARAM>(native));
        EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(0x10, 0x20, 0x30));
    }
    ::SendMessageW(native, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_FALSE(::IsWindow(native));
    EXPECT_FALSE(::IsWindow(window.GetHWND()));
}

TEST(EditInScrolledContainerTest, TheNativeWindowMovesAndIsCut)
{
    ControlHost host{200, 80};
    ASSERT_NE(host.Load(kScrolledEdit), nullptr);
    auto& page = host.Find<CContainerUI>(L"page");
    auto& edit = host.Find<CEditUI>(L"edit");
    edit.SetFocus();
    const RECT before = PlaceOf(host, edit.GetHWND());
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(::GetWindowRgn(edit.GetHWND(), region), ERROR) << "wholly visible";

    page.SetScrollPos({0, 20});
    host.Layout();
    EXPECT_EQ(PlaceOf(host, edit.GetHWND()).top, before.top - 20);

    // The upper part of the line is above the page.
    page.SetScrollPos({0, static_cast<LONG>(before.top) + 4});
    host.Layout();
    ASSERT_NE(::GetWindowRgn(edit.GetHWND(), region), ERROR);
    RECT shown{};
    ::GetRgnBox(region, &shown);
    EXPECT_EQ(shown.top, 4);
    EXPECT_EQ(shown.bottom, before.bottom - before.top);

    // All of it is outside; it stays open, with the keyboard.
    page.SetScrollPos({0, 150});
    host.Layout();
    EXPECT_EQ(::GetWindowRgn(edit.GetHWND(), region), NULLREGION);
    EXPECT_EQ(::GetFocus(), edit.GetHWND());

    page.SetScrollPos({0, 0});
    host.Layout();
    EXPECT_EQ(::GetWindowRgn(edit.GetHWND(), region), ERROR);
    ::DeleteObject(region);
}

TEST(EditInLayeredWindowTest, TheNativeWindowIsPrintedByTheManager)
{
    ControlHost host{200, 40};
    auto& edit = host.Add<CEditUI>();
    host.Manager().SetLayered(true);
    edit.SetFocus();
    ASSERT_NE(edit.GetHWND(), nullptr);
    EXPECT_EQ(host.Manager().GetNativeWindowCount(), 1);
    const RECT place = host.Manager().GetNativeWindowRect(edit.GetHWND());
    EXPECT_EQ(place.left, 4);
    Type(edit, L"text");
    host.Layout();
    host.Manager().SetFocus(nullptr);
    EXPECT_EQ(host.Manager().GetNativeWindowCount(), 0);

    edit.SetFocus();
    ::DestroyWindow(host.Window());
    EXPECT_EQ(host.Manager().GetNativeWindowCount(), 0);
}

TEST(EditScaleTest, TheTextPaddingOfTheNativeWindowIsScaled)
{
    ControlHost host{300, 60, 144};
    auto& edit = host.Add<CEditUI>();
    edit.SetFocus();
    ASSERT_NE(edit.GetHWND(), nullptr);
    const RECT place = PlaceOf(host, edit.GetHWND());
    EXPECT_EQ(place.left, 6);
    EXPECT_EQ(place.right, 294);
}

} // namespace
