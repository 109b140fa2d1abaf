#include "tests/quillet/dialogs/DialogHost.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

using namespace DuiLib;
using test::ClickControl;
using test::DialogParent;
using test::DialogSkins;
using test::LoopActions;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

static_assert(std::is_abstract_v<ConfirmationWindow>);
static_assert(std::is_base_of_v<WindowImplBaseEx, ConfirmationWindow>);

// A confirmation that notes what reaches it.
class Question : public ConfirmationWindow {
public:
    explicit Question(HWND parent, const std::wstring& title = L"Question", bool flag = false)
        : ConfirmationWindow(parent, title, flag)
    {
    }
    ~Question() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    CPaintManagerUI& Manager() { return m_pm; }
    std::wstring TextOf(const wchar_t* name) { return m_pm.FindControl(name)->GetText().GetData(); }
    std::wstring ToolTip() { return m_pContentLabel->GetToolTip().GetData(); }
    void Press(WPARAM key) { ::PostMessageW(m_hWnd, WM_KEYDOWN, key, 0); }
    void Click(const wchar_t* name) { ClickControl(m_hWnd, name); }

    // What it is.
    std::wstring skin = L"Confirmation.xml";
    std::function<void(const std::wstring& name)> onClick;

    // What reached it.
    std::vector<WPARAM> keys;
    std::vector<WPARAM> closeCodes;
    CREATESTRUCTW created{};

    using ConfirmationWindow::CloseWindow;
    using ConfirmationWindow::m_bConfirmation;
    using ConfirmationWindow::m_bFlag;
    using ConfirmationWindow::m_hMaskParent;
    using ConfirmationWindow::m_hParent;
    using ConfirmationWindow::m_hWnd;
    using ConfirmationWindow::m_nHeight;
    using ConfirmationWindow::m_nWidth;
    using ConfirmationWindow::m_pCloseBtn;
    using ConfirmationWindow::m_pConfirmBtn;
    using ConfirmationWindow::m_pContentLabel;
    using ConfirmationWindow::m_pHeaderLabel;
    using ConfirmationWindow::m_pMaskLayer;
    using ConfirmationWindow::m_pRejectBtn;
    using ConfirmationWindow::m_strConfirmText;
    using ConfirmationWindow::m_strContent;
    using ConfirmationWindow::m_strHeader;
    using ConfirmationWindow::m_strRejectText;
    using ConfirmationWindow::m_strTitle;
    using ConfirmationWindow::m_strToolTip;
    using ConfirmationWindow::SetBlueButton;
    using ConfirmationWindow::SetGrayButton;

    void Notify(TNotifyUI& msg) override
    {
        if (onClick && msg.sType == DUI_MSGTYPE_CLICK)
            onClick(msg.pSender->GetName().GetData());
        ConfirmationWindow::Notify(msg);
    }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_NCCREATE)
            created = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
        return ConfirmationWindow::HandleMessage(message, wParam, lParam);
    }
    LRESULT OnKeyDown(UINT message, WPARAM key, LPARAM lParam, BOOL& handled) override
    {
        keys.push_back(key);
        return ConfirmationWindow::OnKeyDown(message, key, lParam, handled);
    }
    LRESULT OnClose(UINT message, WPARAM code, LPARAM lParam, BOOL& handled) override
    {
        closeCodes.push_back(code);
        return ConfirmationWindow::OnClose(message, code, lParam, handled);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"ConfirmationTest"; }
    CDuiString GetSkinFile() override { return skin.c_str(); }
};

// Counts what it is asked to close.
class Mask : public CWindowWnd {
public:
    Mask() { Create(nullptr, L"", WS_POPUP, 0, 0, 0, 10, 10); }
    ~Mask() { Destroy(); }

    void Destroy()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    int closed = 0;
    bool staysOpen = false;

protected:
    LPCTSTR GetWindowClassName() const override { return L"ConfirmationTestMask"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CLOSE) {
            ++closed;
            if (staysOpen)
                return 0;
        }
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }
};

class ConfirmationTest : public test::WindowTest {
protected:
    ConfirmationTest() { CResourceManager::GetInstance()->SetLanguage(L"en-US"); }
    ~ConfirmationTest() override
    {
        CResourceManager::GetInstance()->SetLanguage(L"");
        CResourceManager::GetInstance()->ResetTextMap();
    }

    // Shows the question and does that inside its loop.
    void Show(Question& shown, const std::function<void()>& inLoop)
    {
        loop.Post(inLoop);
        shown.ShowWindow();
    }

    DialogSkins skins;
    DialogParent parent;
    LoopActions loop;
    Question question{parent.GetHWND()};
};

TEST_F(ConfirmationTest, BeginsWithItsDefaults)
{
    Question fresh(parent.GetHWND(), L"Title", true);
    EXPECT_EQ(fresh.m_nMaxLineNums, 0);
    EXPECT_FALSE(fresh.m_bShowLink);
    EXPECT_EQ(fresh.m_nLineCount, 0);
    EXPECT_EQ(fresh.m_pConfirmBtn, nullptr);
    EXPECT_EQ(fresh.m_pRejectBtn, nullptr);
    EXPECT_EQ(fresh.m_pCloseBtn, nullptr);
    EXPECT_EQ(fresh.m_pHeaderLabel, nullptr);
    EXPECT_EQ(fresh.m_pContentLabel, nullptr);
    EXPECT_EQ(fresh.m_hParent, parent.GetHWND());
    EXPECT_EQ(fresh.m_strTitle, L"Title");
    EXPECT_TRUE(fresh.m_bFlag);
    EXPECT_EQ(fresh.m_pMaskLayer, nullptr);
    EXPECT_EQ(fresh.m_hMaskParent, nullptr);
    EXPECT_EQ(fresh.m_strContent, L"");
    EXPECT_EQ(fresh.m_strHeader, L"");
    EXPECT_EQ(fresh.m_strConfirmText, L"");
    EXPECT_EQ(fresh.m_strRejectText, L"");
    EXPECT_EQ(fresh.m_strToolTip, L"");
    EXPECT_EQ(fresh.m_nWidth, 0);
    EXPECT_EQ(fresh.m_nHeight, 0);
    EXPECT_EQ(fresh.GetHWND(), nullptr);
}

TEST_F(ConfirmationTest, TheAnswerIsYesUntilItIsChanged)
{
    EXPECT_TRUE(question.IsConfirmation());
    question.SetConfirmation(false);
    EXPECT_FALSE(question.IsConfirmation());
    question.SetConfirmation(true);
    EXPECT_TRUE(question.IsConfirmation());
}

// Ways to leave the window.
enum class Answer { Yes, No, Unchanged };

struct Way {
    const char* name;
    void (*go)(Question& question, DialogParent& parent);
    Answer answer;
    std::vector<WPARAM> closeCodes;
};
void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}
const Way kWays[] = {
    {"ClickOnConfirm", [](Question& q, DialogParent&) { q.Click(L"confirm"); }, Answer::Yes, {8}},
    {"ClickOnReject", [](Question& q, DialogParent&) { q.Click(L"reject"); }, Answer::No, {8}},
    {"ClickOnClose", [](Question& q, DialogParent&) { q.Click(L"close"); }, Answer::No, {8}},
    {"Enter", [](Question& q, DialogParent&) { q.Press(VK_RETURN); }, Answer::Yes, {8}},
    {"Escape", [](Question& q, DialogParent&) { q.Press(VK_ESCAPE); }, Answer::No, {8}},
    {"CloseWindow", [](Question& q, DialogParent&) { q.CloseWindow(); }, Answer::Unchanged, {8}},
    {"CloseWithACode",
     [](Question& q, DialogParent&) { q.Close(IDCANCEL); },
     Answer::Unchanged,
     {2}},
    {"CloseSent",
     [](Question& q, DialogParent&) { q.SendMessage(WM_CLOSE); },
     Answer::Unchanged,
     {0}},
    {"ClosePosted",
     [](Question& q, DialogParent&) { q.PostMessage(WM_CLOSE); },
     Answer::Unchanged,
     {0}},
    {"CloseOfTheSystem",
     [](Question& q, DialogParent&) { q.SendMessage(WM_SYSCOMMAND, SC_CLOSE); },
     Answer::Unchanged,
     {0}},
    {"EndOfTheWindow",
     [](Question& q, DialogParent&) { ::DestroyWindow(q.GetHWND()); },
     Answer::Unchanged,
     {}},
    {"EndOfTheParent",
     [](Question&, DialogParent& parent) { parent.Destroy(); },
     Answer::Unchanged,
     {}},
};

class ConfirmationAnswerTest : public ConfirmationTest, public testing::WithParamInterface<Way> {};

TEST_P(ConfirmationAnswerTest, EndsTheLoopAndGivesTheAnswer)
{
    for (const bool before : {true, false}) {
        SCOPED_TRACE(before);
        DialogParent owner;
        Question asked(owner.GetHWND());
        asked.SetConfirmation(before);
        bool ran = false;
        Show(asked, [&] {
            ran = true;
            EXPECT_TRUE(::IsWindowVisible(asked.GetHWND()));
            EXPECT_FALSE(owner.IsEnabled());
            GetParam().go(asked, owner);
        });
        EXPECT_TRUE(ran);
        EXPECT_EQ(asked.GetHWND(), nullptr);
        EXPECT_EQ(asked.closeCodes, GetParam().closeCodes);
        const Answer answer = GetParam().answer;
        EXPECT_EQ(asked.IsConfirmation(),
                  answer == Answer::Unchanged ? before : answer == Answer::Yes);
        if (::IsWindow(owner.GetHWND())) {
            EXPECT_TRUE(owner.IsEnabled());
        }
    }
}

// The answer does not need a loop.
TEST_P(ConfirmationAnswerTest, EndsAWindowThatIsNotModal)
{
    question.CreateMaskLayer();
    ::ShowWindow(question.GetHWND(), SW_SHOW);
    question.SetConfirmation(GetParam().answer == Answer::No);
    GetParam().go(question, parent);
    test::Pump();
    EXPECT_EQ(question.GetHWND(), nullptr);
    if (GetParam().answer != Answer::Unchanged) {
        EXPECT_EQ(question.IsConfirmation(), GetParam().answer == Answer::Yes);
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, ConfirmationAnswerTest, testing::ValuesIn(kWays),
                         [](const auto& test) { return test.param.name; });

TEST_F(ConfirmationTest, OtherClicksAnswerNothing)
{
    Show(question, [&] {
        question.Click(L"other");
        test::Pump();
        EXPECT_TRUE(::IsWindow(question.GetHWND()));
        EXPECT_TRUE(question.IsConfirmation());
        question.Click(L"reject");
    });
    EXPECT_THAT(question.closeCodes, ElementsAre(8u));
}

TEST_F(ConfirmationTest, OnlyClicksOfItsButtonsAnswer)
{
    Show(question, [&] {
        for (const wchar_t* const name : {L"confirm", L"reject", L"close"})
            for (const wchar_t* const type : {L"buttondown", L"setfocus", L"menu"})
                question.Manager().SendNotify(question.Manager().FindControl(name), type);
        test::Pump();
        EXPECT_TRUE(::IsWindow(question.GetHWND()));
        EXPECT_TRUE(question.IsConfirmation());
        question.Press(VK_RETURN);
    });
}

TEST_F(ConfirmationTest, OtherClicksReachTheBase)
{
    skins.Write(L"Confirmation.xml",
                DialogSkins::Skin(L"<Button name=\"closebtn\"/><Button name=\"reject\"/>"));
    Show(question, [&] { question.Click(L"closebtn"); });
    EXPECT_THAT(question.closeCodes, ElementsAre(DWORD{IDOK})) << "the base's own button";
    EXPECT_TRUE(question.IsConfirmation());
}

TEST_F(ConfirmationTest, EnterAndEscapeArePassedOn)
{
    Show(question, [&] {
        ::SendMessageW(question.GetHWND(), WM_KEYDOWN, 'A', 0);
        ::SendMessageW(question.GetHWND(), WM_KEYDOWN, VK_RETURN, 0);
        EXPECT_TRUE(question.IsConfirmation());
        ::SendMessageW(question.GetHWND(), WM_KEYDOWN, VK_ESCAPE, 0);
        EXPECT_FALSE(question.IsConfirmation());
    });
    EXPECT_THAT(question.keys, ElementsAre('A', VK_RETURN, VK_ESCAPE));
}

// Because the key is passed on, the button with the focus has the last word.
TEST_F(ConfirmationTest, EnterOnAFocusedButtonIsItsClick)
{
    Show(question, [&] {
        question.Manager().SetFocus(question.m_pRejectBtn);
        question.Press(VK_RETURN);
    });
    EXPECT_FALSE(question.IsConfirmation());
}

TEST_F(ConfirmationTest, OtherKeysAnswerNothing)
{
    question.CreateMaskLayer();
    for (const WPARAM key : {VK_SPACE, VK_TAB, VK_F4, VK_BACK})
        ::SendMessageW(question.GetHWND(), WM_KEYDOWN, key, 0);
    for (const UINT message : {WM_KEYUP, WM_CHAR, WM_SYSKEYDOWN})
        for (const WPARAM key : {VK_RETURN, VK_ESCAPE})
            ::SendMessageW(question.GetHWND(), message, key, 0);
    test::Pump();
    EXPECT_TRUE(::IsWindow(question.GetHWND()));
    EXPECT_TRUE(question.IsConfirmation());
}

TEST_F(ConfirmationTest, IsModalWithoutAParent)
{
    Question alone(nullptr);
    Show(alone, [&] { alone.Click(L"reject"); });
    EXPECT_FALSE(alone.IsConfirmation());
}

TEST_F(ConfirmationTest, OpensFromAClick)
{
    Question inner(nullptr);
    question.onClick = [&](const std::wstring& name) {
        if (name != L"other")
            return;
        inner.m_hParent = question.GetHWND();
        loop.Post([&] {
            EXPECT_FALSE(::IsWindowEnabled(question.GetHWND()));
            EXPECT_FALSE(parent.IsEnabled());
            inner.Click(L"reject");
        });
        inner.ShowWindow();
        EXPECT_TRUE(::IsWindowEnabled(question.GetHWND()));
        EXPECT_FALSE(parent.IsEnabled()) << "the outer question is still open";
        loop.Post([&] { question.Click(L"confirm"); });
    };
    Show(question, [&] { question.Click(L"other"); });
    EXPECT_FALSE(inner.IsConfirmation());
    EXPECT_TRUE(question.IsConfirmation());
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, OpensFromTheClickThatAnswersIt)
{
    Question inner(nullptr);
    question.onClick = [&](const std::wstring& name) {
        if (name != L"confirm")
            return;
        inner.m_hParent = question.GetHWND();
        Show(inner, [&] { inner.Click(L"reject"); });
        EXPECT_TRUE(::IsWindowEnabled(question.GetHWND()));
        EXPECT_FALSE(parent.IsEnabled());
    };
    Show(question, [&] { question.Click(L"confirm"); });
    EXPECT_FALSE(inner.IsConfirmation());
    EXPECT_TRUE(question.IsConfirmation());
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, TwoOfOneParentGiveItBackWithTheLast)
{
    Question inner(parent.GetHWND());
    Show(question, [&] {
        Show(inner, [&] { inner.Click(L"confirm"); });
        EXPECT_FALSE(parent.IsEnabled());
        question.Click(L"reject");
    });
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, TheOuterMayBeAnsweredFirst)
{
    Question inner(nullptr);
    Show(question, [&] {
        inner.m_hParent = question.GetHWND();
        Show(inner, [&] {
            question.CloseWindow();
            question.SetConfirmation(false);
        });
    });
    EXPECT_EQ(inner.GetHWND(), nullptr) << "its owner is gone";
    EXPECT_TRUE(inner.IsConfirmation());
    EXPECT_FALSE(question.IsConfirmation());
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, NestedOnesEndWithTheirParent)
{
    Question inner(nullptr);
    Show(question, [&] {
        inner.m_hParent = question.GetHWND();
        Show(inner, [&] { parent.Destroy(); });
        EXPECT_EQ(inner.GetHWND(), nullptr);
    });
    EXPECT_EQ(question.GetHWND(), nullptr);
}

TEST_F(ConfirmationTest, OpensFromATimer)
{
    loop.PostTimer([&] {
        loop.Post([&] { question.Press(VK_ESCAPE); });
        question.ShowWindow();
        EXPECT_TRUE(parent.IsEnabled());
    });
    test::Pump();
    EXPECT_FALSE(question.IsConfirmation());
}

TEST_F(ConfirmationTest, OpensFromAQueuedTask)
{
    UIMainQueue& queue = UIMainQueue::getInstance();
    parent.onMessage = [&](UINT message) {
        if (message == WM_USER + 4)
            queue.finish();
    };
    bool later = false;
    queue.dispatch(
        [&] {
            queue.dispatch(
                [&] {
                    later = true;
                    question.Click(L"reject");
                },
                parent.GetHWND());
            question.ShowWindow();
        },
        parent.GetHWND());
    test::Pump();
    EXPECT_TRUE(later) << "a task that is queued meanwhile runs in the loop";
    EXPECT_FALSE(question.IsConfirmation());
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, MayBeDeletedRightAfterItsLoop)
{
    auto asked = std::make_unique<Question>(parent.GetHWND());
    Show(*asked, [&] { asked->Click(L"confirm"); });
    const bool answer = asked->IsConfirmation();
    asked.reset();
    test::Pump();
    EXPECT_TRUE(answer);
}

TEST_F(ConfirmationTest, TheEndOfTheProgramEndsTheLoop)
{
    Show(question, [&] { ::PostQuitMessage(3); });
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3u);
    EXPECT_TRUE(question.IsConfirmation());
}

TEST_F(ConfirmationTest, AWindowThatCannotBeMadeReturnsAtOnce)
{
    class Nameless : public Question {
    public:
        using Question::Question;

    protected:
        LPCTSTR GetWindowClassName() const override { return L""; }
    };
    Nameless nameless(parent.GetHWND());
    nameless.ShowWindow();
    EXPECT_EQ(nameless.GetHWND(), nullptr);
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(ConfirmationTest, CreateMaskLayerCreatesTheWindow)
{
    const int before = test::UserWindows();
    question.CreateMaskLayer();
    const HWND window = question.GetHWND();
    ASSERT_TRUE(::IsWindow(window));
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_TRUE(parent.IsEnabled());
    EXPECT_EQ(question.m_pMaskLayer, nullptr);
    EXPECT_EQ(test::UserWindows(), before + 1) << "there is no mask";
    EXPECT_EQ(question.TextOf(L"content"), L"skin content") << "it is filled already";
}

TEST_F(ConfirmationTest, IsCreatedAsAPopupWithATitle)
{
    question.CreateMaskLayer();
    EXPECT_EQ(question.created.style, static_cast<LONG>(WS_POPUP | WS_CLIPSIBLINGS |
                                                        WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU));
    EXPECT_EQ(question.created.dwExStyle & WS_EX_WINDOWEDGE, DWORD{WS_EX_WINDOWEDGE});
    EXPECT_EQ(question.created.dwExStyle & (WS_EX_TOPMOST | WS_EX_TOOLWINDOW), 0u);
    EXPECT_EQ(question.created.x, 0);
    EXPECT_EQ(question.created.y, 0);
    EXPECT_EQ(question.created.cx, 0);
    EXPECT_EQ(question.created.cy, 0);
    wchar_t title[40]{};
    ::GetWindowTextW(question.GetHWND(), title, 40);
    EXPECT_STREQ(title, L"Question");
}

TEST_F(ConfirmationTest, TheParentOwnsTheWindow)
{
    question.CreateMaskLayer();
    EXPECT_EQ(::GetWindow(question.GetHWND(), GW_OWNER), parent.GetHWND());
}

TEST_F(ConfirmationTest, TheParentOfTheMaskWinsOverTheParent)
{
    DialogParent other;
    question.m_hMaskParent = other.GetHWND();
    Show(question, [&] {
        EXPECT_EQ(::GetWindow(question.GetHWND(), GW_OWNER), other.GetHWND());
        EXPECT_FALSE(other.IsEnabled());
        EXPECT_TRUE(parent.IsEnabled());
        question.Click(L"confirm");
    });
    EXPECT_TRUE(other.IsEnabled());
}

TEST_F(ConfirmationTest, TheMaskIsAskedToCloseOnce)
{
    for (const wchar_t* const button : {L"confirm", L"reject", L"close"}) {
        SCOPED_TRACE(test::Utf8(button));
        Mask mask;
        Question asked(parent.GetHWND());
        asked.m_pMaskLayer = &mask;
        Show(asked, [&] {
            asked.Click(button);
            EXPECT_EQ(asked.m_pMaskLayer, nullptr);
            EXPECT_EQ(mask.closed, 0) << "posted, not sent";
            asked.Click(button);
            asked.CloseWindow();
        });
        test::Pump();
        EXPECT_EQ(mask.closed, 1);
        EXPECT_EQ(mask.GetHWND(), nullptr);
    }
}

TEST_F(ConfirmationTest, EnterAndEscapeCloseTheMask)
{
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        Mask mask;
        mask.staysOpen = true;
        Question asked(parent.GetHWND());
        asked.m_pMaskLayer = &mask;
        Show(asked, [&] {
            asked.Press(key);
            asked.Press(key);
        });
        test::Pump();
        EXPECT_EQ(mask.closed, 1);
        EXPECT_EQ(asked.m_pMaskLayer, nullptr);
    }
}

TEST_F(ConfirmationTest, TheMaskStaysWhenTheWindowIsClosedInAnotherWay)
{
    Mask mask;
    question.m_pMaskLayer = &mask;
    Show(question, [&] { question.PostMessage(WM_CLOSE); });
    test::Pump();
    EXPECT_EQ(mask.closed, 0);
    EXPECT_EQ(question.m_pMaskLayer, &mask);
}

TEST_F(ConfirmationTest, AMaskWhoseWindowIsGoneIsLeftAlone)
{
    Mask mask;
    mask.Destroy();
    question.m_pMaskLayer = &mask;
    Show(question, [&] { question.Click(L"confirm"); });
    EXPECT_EQ(question.m_pMaskLayer, &mask);
}

TEST_F(ConfirmationTest, AWindowThatWasNeverMadeClosesItsMask)
{
    Mask mask;
    question.m_pMaskLayer = &mask;
    question.CloseWindow();
    test::Pump();
    EXPECT_EQ(mask.closed, 1);
    EXPECT_EQ(question.m_pMaskLayer, nullptr);
}

// Sizes, as the library asks the system for them.
class MoveWindowCalls {
public:
    struct Call {
        HWND window;
        int x, y, width, height;
        BOOL repaint;
        bool operator==(const Call&) const = default;
    };

    MoveWindowCalls() : m_hook(L"Quillet.dll", "USER32.dll", "MoveWindow", &MoveWindowCalls::Note)
    {
        calls.clear();
        original = m_hook.Original<decltype(::MoveWindow)>();
    }

    static inline std::vector<Call> calls;

private:
    static BOOL WINAPI Note(HWND window, int x, int y, int width, int height, BOOL repaint)
    {
        calls.push_back({window, x, y, width, height, repaint});
        return original(window, x, y, width, height, repaint);
    }

    static inline decltype(::MoveWindow)* original = nullptr;
    test::ImportHook m_hook;
};

SIZE SizeOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

void ExpectCentred(HWND window, HWND owner)
{
    RECT inner{};
    RECT outer{};
    ::GetWindowRect(window, &inner);
    ::GetWindowRect(owner, &outer);
    EXPECT_NEAR(inner.left + inner.right, outer.left + outer.right, 1);
    EXPECT_NEAR(inner.top + inner.bottom, outer.top + outer.bottom, 1);
}

TEST_F(ConfirmationTest, WithoutASizeTheSkinHasItsOwn)
{
    const MoveWindowCalls moves;
    Show(question, [&] {
        EXPECT_THAT(moves.calls, IsEmpty());
        EXPECT_EQ(SizeOf(question.GetHWND()).cx, 300);
        EXPECT_EQ(SizeOf(question.GetHWND()).cy, 200);
        ExpectCentred(question.GetHWND(), parent.GetHWND());
        question.Click(L"confirm");
    });
}

TEST_F(ConfirmationTest, ASizeIsAppliedBeforeTheWindowIsCentred)
{
    const MoveWindowCalls moves;
    question.SetWndSize(360, 260);
    EXPECT_EQ(question.m_nWidth, 360);
    EXPECT_EQ(question.m_nHeight, 260);
    Show(question, [&] {
        const HWND window = question.GetHWND();
        EXPECT_EQ(moves.calls, (std::vector{MoveWindowCalls::Call{window, 0, 0, 360, 260, FALSE}}));
        EXPECT_EQ(SizeOf(window).cx, 360);
        EXPECT_EQ(SizeOf(window).cy, 260);
        ExpectCentred(window, parent.GetHWND());
        question.Click(L"confirm");
    });
}

TEST_F(ConfirmationTest, ASizeOfOneZeroIsAppliedAsItIs)
{
    for (const SIZE size : {SIZE{360, 0}, SIZE{0, 260}}) {
        const MoveWindowCalls moves;
        Question asked(parent.GetHWND());
        asked.SetWndSize(size.cx, size.cy);
        Show(asked, [&] {
            EXPECT_EQ(moves.calls, (std::vector{MoveWindowCalls::Call{asked.GetHWND(), 0, 0,
                                                                      size.cx, size.cy, FALSE}}));
            asked.Press(VK_RETURN);
        });
    }
}

TEST_F(ConfirmationTest, ChangeWndSizeResizesTheParent)
{
    question.CreateMaskLayer();
    const SIZE own = SizeOf(question.GetHWND());
    const MoveWindowCalls moves;
    question.SetWndSize(500, 350);
    question.ChangeWndSize();
    EXPECT_EQ(moves.calls,
              (std::vector{MoveWindowCalls::Call{parent.GetHWND(), 0, 0, 500, 350, TRUE}}));
    RECT place{};
    ::GetWindowRect(parent.GetHWND(), &place);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 0);
    EXPECT_EQ(SizeOf(parent.GetHWND()).cx, 500);
    EXPECT_EQ(SizeOf(parent.GetHWND()).cy, 350);
    EXPECT_EQ(SizeOf(question.GetHWND()).cx, own.cx);
    EXPECT_EQ(SizeOf(question.GetHWND()).cy, own.cy);
}

TEST_F(ConfirmationTest, ChangeWndSizeWithoutAWindowDoesNothing)
{
    const SIZE before = SizeOf(parent.GetHWND());
    question.SetWndSize(500, 350);
    question.ChangeWndSize();
    EXPECT_EQ(SizeOf(parent.GetHWND()).cx, before.cx);
}

TEST_F(ConfirmationTest, FindsItsControls)
{
    question.CreateMaskLayer();
    CPaintManagerUI& manager = question.Manager();
    EXPECT_EQ(question.m_pConfirmBtn, manager.FindControl(L"confirm"));
    EXPECT_EQ(question.m_pRejectBtn, manager.FindControl(L"reject"));
    EXPECT_EQ(question.m_pCloseBtn, manager.FindControl(L"close"));
    EXPECT_EQ(question.m_pHeaderLabel, manager.FindControl(L"header"));
    EXPECT_EQ(question.m_pContentLabel, manager.FindControl(L"content"));
    EXPECT_NE(question.m_pContentLabel, nullptr);
}

TEST_F(ConfirmationTest, ConfirmIsBlueAndRejectGray)
{
    question.CreateMaskLayer();
    EXPECT_EQ(question.m_pConfirmBtn->GetBkColor(), 0xFF226BFFu);
    EXPECT_EQ(question.m_pConfirmBtn->GetHotBkColor(), 0xFF1E60E5u);
    EXPECT_EQ(question.m_pConfirmBtn->GetPushedBkColor(), 0xFF1C5BD9u);
    EXPECT_EQ(question.m_pRejectBtn->GetBkColor(), 0xFFF2F2F2u);
    EXPECT_EQ(question.m_pRejectBtn->GetHotBkColor(), 0xFFE5E5E5u);
    EXPECT_EQ(question.m_pRejectBtn->GetPushedBkColor(), 0xFFD9D9D9u);
    EXPECT_EQ(question.m_pRejectBtn->GetTextColor(), 0xFF226BFFu);
    EXPECT_EQ(question.m_pHeaderLabel->GetTextColor(), 0xFF666666u);
}

std::wstring ColouredSkin(const std::wstring& names)
{
    std::wstring controls;
    std::wstring name;
    for (const wchar_t c : names + L" ") {
        if (c != L' ') {
            name += c;
            continue;
        }
        const bool label = name == L"header" || name == L"content";
        controls += (label ? L"<Label" : L"<Button") + (L" name=\"" + name) +
                    L"\" textcolor=\"#FF123456\" bkcolor=\"#FF654321\" text=\"skin text\"/>";
        name.clear();
    }
    return DialogSkins::Skin(controls);
}

// The white text belongs to "confirm", one would think.
TEST_F(ConfirmationTest, TheTextOfCloseIsWhiteAndNotThatOfConfirm)
{
    skins.Write(L"Confirmation.xml", ColouredSkin(L"header content confirm reject close"));
    question.CreateMaskLayer();
    EXPECT_EQ(question.m_pCloseBtn->GetTextColor(), 0xFFFFFFFFu);
    EXPECT_EQ(question.m_pConfirmBtn->GetTextColor(), 0xFF123456u);
    EXPECT_EQ(question.m_pCloseBtn->GetBkColor(), 0xFF654321u);
    EXPECT_EQ(question.m_pContentLabel->GetTextColor(), 0xFF123456u);
    EXPECT_EQ(question.m_pHeaderLabel->GetBkColor(), 0xFF654321u);
}

TEST_F(ConfirmationTest, TheTextOfCloseIsTheSkinsWithoutConfirm)
{
    skins.Write(L"Confirmation.xml", ColouredSkin(L"header content reject close"));
    question.CreateMaskLayer();
    EXPECT_EQ(question.m_pCloseBtn->GetTextColor(), 0xFF123456u);
}

TEST_F(ConfirmationTest, CloseHasItsImages)
{
    question.CreateMaskLayer();
    EXPECT_STREQ(question.m_pCloseBtn->GetNormalImage(), L"common/CloseButton/normal.svg");
    EXPECT_STREQ(question.m_pCloseBtn->GetHotImage(), L"common/CloseButton/hot.svg");
    EXPECT_STREQ(question.m_pCloseBtn->GetPushedImage(), L"common/CloseButton/pushed.svg");
}

TEST_F(ConfirmationTest, TheOtherButtonsHaveNoImages)
{
    question.CreateMaskLayer();
    for (CButtonUI* const button : {question.m_pConfirmBtn, question.m_pRejectBtn}) {
        EXPECT_STREQ(button->GetNormalImage(), L"");
        EXPECT_STREQ(button->GetHotImage(), L"");
        EXPECT_STREQ(button->GetPushedImage(), L"");
    }
}

TEST_F(ConfirmationTest, ButtonsCanBeColouredByHand)
{
    CButtonUI button;
    question.SetBlueButton(&button);
    EXPECT_EQ(button.GetBkColor(), 0xFF226BFFu);
    EXPECT_EQ(button.GetHotBkColor(), 0xFF1E60E5u);
    EXPECT_EQ(button.GetPushedBkColor(), 0xFF1C5BD9u);
    EXPECT_EQ(button.GetTextColor(), 0xFFFFFFFFu);
    question.SetGrayButton(&button);
    EXPECT_EQ(button.GetBkColor(), 0xFFF2F2F2u);
    EXPECT_EQ(button.GetHotBkColor(), 0xFFE5E5E5u);
    EXPECT_EQ(button.GetPushedBkColor(), 0xFFD9D9D9u);
    EXPECT_EQ(button.GetTextColor(), 0xFF226BFFu);
    question.SetBlueButton(nullptr);
    question.SetGrayButton(nullptr);
}

TEST_F(ConfirmationTest, ASkinMayLackControls)
{
    const wchar_t* const skinsOfNames[] = {
        L"other",
        L"content confirm reject close",
        L"header confirm reject close",
        L"header content reject close",
        L"header content confirm close",
        L"header content confirm reject",
        L"confirm",
        L"reject",
        L"close",
        L"header",
        L"content",
    };
    for (const wchar_t* const names : skinsOfNames) {
        SCOPED_TRACE(test::Utf8(names));
        skins.Write(L"Confirmation.xml", ColouredSkin(names));
        Question asked(parent.GetHWND());
        asked.ReSetShowAllContent({L"content text", L"yes", L"no", L"header text", L"tooltip"});
        Show(asked, [&] {
            asked.RefreshShow(L"a", L"b", L"c", L"d", L"e");
            asked.Press(VK_ESCAPE);
        });
        EXPECT_FALSE(asked.IsConfirmation());
    }
}

TEST_F(ConfirmationTest, ControlsOfOtherClassesAreNotItsOwn)
{
    skins.Write(L"Confirmation.xml",
                DialogSkins::Skin(L"<Label name=\"confirm\" text=\"skin\"/><Control "
                                  L"name=\"content\"/><Button name=\"header\"/>"));
    question.ReSetShowAllContent({L"content", L"yes", L"no", L"header", L"tooltip"});
    question.CreateMaskLayer();
    EXPECT_EQ(question.m_pConfirmBtn, nullptr);
    EXPECT_EQ(question.m_pContentLabel, nullptr);
    EXPECT_EQ(question.TextOf(L"confirm"), L"skin");
    EXPECT_EQ(question.m_pHeaderLabel, question.Manager().FindControl(L"header"))
        << "a button is a label";
}

TEST_F(ConfirmationTest, ShowsItsTexts)
{
    question.ReSetShowAllContent({L"content text", L"yes", L"no", L"header text", L"tooltip"});
    EXPECT_EQ(question.m_strContent, L"content text");
    EXPECT_EQ(question.m_strConfirmText, L"yes");
    EXPECT_EQ(question.m_strRejectText, L"no");
    EXPECT_EQ(question.m_strHeader, L"header text");
    EXPECT_EQ(question.m_strToolTip, L"tooltip");
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), L"content text");
    EXPECT_EQ(question.TextOf(L"confirm"), L"yes");
    EXPECT_EQ(question.TextOf(L"reject"), L"no");
    EXPECT_EQ(question.TextOf(L"header"), L"header text");
    EXPECT_EQ(question.ToolTip(), L"tooltip");
}

TEST_F(ConfirmationTest, EmptyTextsLeaveTheSkins)
{
    question.ReSetShowAllContent({L"", L"", L"", L"", L""});
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), L"skin content");
    EXPECT_EQ(question.TextOf(L"confirm"), L"skin confirm");
    EXPECT_EQ(question.TextOf(L"reject"), L"skin reject");
    EXPECT_EQ(question.TextOf(L"header"), L"skin header");
    EXPECT_EQ(question.ToolTip(), L"skin content");
}

TEST_F(ConfirmationTest, OnlyFiveTextsAreTaken)
{
    const std::vector<std::wstring> texts{L"1", L"2", L"3", L"4", L"5", L"6"};
    for (std::size_t count = 0; count <= texts.size(); ++count) {
        SCOPED_TRACE(count);
        Question asked(nullptr);
        asked.ReSetShowAllContent({L"a", L"b", L"c", L"d", L"e"});
        asked.ReSetShowAllContent({texts.begin(), texts.begin() + static_cast<int>(count)});
        const bool taken = count == 5;
        EXPECT_EQ(asked.m_strContent, taken ? L"1" : L"a");
        EXPECT_EQ(asked.m_strConfirmText, taken ? L"2" : L"b");
        EXPECT_EQ(asked.m_strRejectText, taken ? L"3" : L"c");
        EXPECT_EQ(asked.m_strHeader, taken ? L"4" : L"d");
        EXPECT_EQ(asked.m_strToolTip, taken ? L"5" : L"e");
    }
}

TEST_F(ConfirmationTest, TheContentCanBeSetAlone)
{
    question.ReSetShowAllContent({L"a", L"b", L"c", L"d", L"e"});
    question.ReSetShowContent(L"alone");
    EXPECT_EQ(question.m_strContent, L"alone");
    EXPECT_EQ(question.m_strConfirmText, L"b");
    question.ReSetShowContent(L"");
    EXPECT_EQ(question.m_strContent, L"");
}

TEST_F(ConfirmationTest, TheSkinsContentIsTheIdOfAText)
{
    CResourceManager::GetInstance()->LoadLanguage(
        L"<Language><Text id=\"skin content\" value=\"Really?\"/></Language>");
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), L"Really?");
    EXPECT_EQ(question.ToolTip(), L"Really?");
}

TEST_F(ConfirmationTest, TheContentThatIsSetIsNoId)
{
    CResourceManager::GetInstance()->LoadLanguage(
        L"<Language><Text id=\"skin content\" value=\"Really?\"/></Language>");
    question.ReSetShowContent(L"skin content");
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), L"skin content");
}

// A text that is too wide for a line wherever fonts differ.
constexpr wchar_t kLong[] =
    L"Some words\\u200bthat are certainly too long for one line of a content label of three "
    L"hundred and forty six pixels, twice as long and longer, so that it is broken somewhere";

std::wstring WithSpaces(std::wstring text)
{
    for (auto at = text.find(L"\\u200b"); at != text.npos; at = text.find(L"\\u200b"))
        text.replace(at, 6, L" ");
    return text;
}

TEST_F(ConfirmationTest, TheContentIsBrokenAndItsToolTipIsNot)
{
    CResourceManager::GetInstance()->SetLanguage(L"de-DE");
    question.ReSetShowContent(kLong);
    question.CreateMaskLayer();
    EXPECT_THAT(question.TextOf(L"content"), testing::HasSubstr(L"\r"));
    EXPECT_EQ(question.ToolTip(), WithSpaces(kLong));
}

TEST_F(ConfirmationTest, WithLinkTheContentIsParagraphsAndItsToolTipIsNot)
{
    question.ReSetShowContent(L"See\\u200b<a><c #007DFF>this</c></a>\\nand\\n\\nthat");
    question.m_bShowLink = true;
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"),
              L"<p>See <a><c #007DFF>this</c></a></p><p>and</p><p> </p><p>that</p>");
    EXPECT_EQ(question.m_nLineCount, 4);
    EXPECT_EQ(question.ToolTip(), L"See <a><c #007DFF>this</c></a>\\nand\\n\\nthat");
}

TEST_F(ConfirmationTest, WithoutLinkLinesAreNotCounted)
{
    CResourceManager::GetInstance()->SetLanguage(L"de-DE");
    question.ReSetShowContent(kLong);
    question.CreateMaskLayer();
    EXPECT_EQ(question.m_nLineCount, 0);
}

TEST_F(ConfirmationTest, TheLimitOfLinesIsApplied)
{
    CResourceManager::GetInstance()->SetLanguage(L"de-DE");
    question.ReSetShowContent(kLong);
    question.SetMaxLineNums(1);
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), WithSpaces(kLong));
}

TEST_F(ConfirmationTest, AToolTipOfItsOwnHasItsEscapedSpacesReplaced)
{
    question.ReSetShowAllContent({L"content", L"", L"", L"", L"tool\\u200btip\\u200b\\n"});
    question.CreateMaskLayer();
    EXPECT_EQ(question.ToolTip(), L"tool tip \\n");
}

TEST_F(ConfirmationTest, TheOtherTextsAreTakenAsTheyAre)
{
    question.ReSetShowAllContent({L"", L"y\\u200bes", L"n\\u200bo", L"he\\u200bader", L""});
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"confirm"), L"y\\u200bes");
    EXPECT_EQ(question.TextOf(L"reject"), L"n\\u200bo");
    EXPECT_EQ(question.TextOf(L"header"), L"he\\u200bader");
}

class ConfirmationRefreshTest : public ConfirmationTest {
protected:
    ConfirmationRefreshTest()
    {
        question.ReSetShowAllContent({L"content", L"yes", L"no", L"header", L"tooltip"});
        question.CreateMaskLayer();
    }
    std::vector<std::wstring> Texts()
    {
        return {question.TextOf(L"content"), question.TextOf(L"confirm"),
                question.TextOf(L"reject"), question.TextOf(L"header"), question.ToolTip()};
    }
};

TEST_F(ConfirmationRefreshTest, ChangesWhatIsShown)
{
    question.RefreshShow(L"1", L"2", L"3", L"4", L"5");
    EXPECT_THAT(Texts(), ElementsAre(L"1", L"2", L"3", L"4", L"5"));
    EXPECT_EQ(question.m_strContent, L"content") << "not what a next window shows";
}

TEST_F(ConfirmationRefreshTest, LeavesAloneWhatIsEmpty)
{
    question.RefreshShow(L"", L"", L"", L"", L"");
    EXPECT_THAT(Texts(), ElementsAre(L"content", L"yes", L"no", L"header", L"tooltip"));
    question.RefreshShow(L"1", L"", L"", L"", L"");
    EXPECT_THAT(Texts(), ElementsAre(L"1", L"yes", L"no", L"header", L"tooltip"));
    question.RefreshShow(L"", L"2", L"", L"", L"");
    EXPECT_THAT(Texts(), ElementsAre(L"1", L"2", L"no", L"header", L"tooltip"));
    question.RefreshShow(L"", L"", L"3", L"", L"");
    EXPECT_THAT(Texts(), ElementsAre(L"1", L"2", L"3", L"header", L"tooltip"));
    question.RefreshShow(L"", L"", L"", L"4", L"");
    EXPECT_THAT(Texts(), ElementsAre(L"1", L"2", L"3", L"4", L"tooltip"));
}

TEST_F(ConfirmationRefreshTest, ChangesTheToolTipOnlyWithTheContent)
{
    question.RefreshShow(L"", L"2", L"3", L"4", L"5");
    EXPECT_EQ(question.ToolTip(), L"tooltip");
    question.RefreshShow(L"1", L"", L"", L"", L"5");
    EXPECT_EQ(question.ToolTip(), L"5");
}

TEST_F(ConfirmationRefreshTest, BreaksNoLinesAndReplacesNothing)
{
    CResourceManager::GetInstance()->SetLanguage(L"de-DE");
    for (const bool link : {false, true}) {
        question.m_bShowLink = link;
        question.RefreshShow(kLong, kLong, kLong, kLong, kLong);
        EXPECT_THAT(Texts(), ElementsAre(kLong, kLong, kLong, kLong, kLong));
        question.RefreshShow(L"abc", L"", L"", L"", L"");
        EXPECT_EQ(question.TextOf(L"content"), L"abc");
    }
}

TEST_F(ConfirmationRefreshTest, PaintsTheWindowAgain)
{
    const HWND window = question.GetHWND();
    ::ShowWindow(window, SW_SHOW);
    test::Pump();
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ::ValidateRect(window, nullptr);
    RECT update{};
    ASSERT_FALSE(::GetUpdateRect(window, &update, FALSE));
    question.RefreshShow(L"", L"", L"", L"", L"");
    EXPECT_TRUE(::GetUpdateRect(window, &update, FALSE));
    EXPECT_EQ(update.right, 300);
    EXPECT_EQ(update.bottom, 200);
}

TEST_F(ConfirmationTest, RefreshingBeforeThereIsAWindowChangesNothing)
{
    question.RefreshShow(L"1", L"2", L"3", L"4", L"5");
    question.CreateMaskLayer();
    EXPECT_EQ(question.TextOf(L"content"), L"skin content");
    EXPECT_EQ(question.TextOf(L"confirm"), L"skin confirm");
}

TEST_F(ConfirmationTest, OneObjectAsksAgainInAWindowOfTheSameSize)
{
    for (const WPARAM key : {VK_ESCAPE, VK_RETURN, VK_ESCAPE}) {
        Show(question, [&] {
            RECT client{};
            ::GetClientRect(question.GetHWND(), &client);
            EXPECT_EQ(client.right, 300);
            EXPECT_EQ(client.bottom, 200);
            EXPECT_EQ(question.TextOf(L"confirm"), L"skin confirm");
            question.Press(key);
        });
        EXPECT_EQ(question.IsConfirmation(), key == VK_RETURN);
    }
}

TEST_F(ConfirmationTest, OpeningAndClosing500TimesLeavesNoObject)
{
    CResourceManager::GetInstance()->SetLanguage(L"de-DE");
    int round = 0;
    test::ExpectNoGrowth(500, [&] {
        Mask mask;
        Question asked(parent.GetHWND());
        asked.ReSetShowAllContent({kLong, L"yes", L"no", L"header", L"tooltip"});
        asked.m_bShowLink = ++round % 2 == 0;
        asked.m_pMaskLayer = &mask;
        Show(asked, [&] { asked.Press(round % 3 == 0 ? VK_RETURN : VK_ESCAPE); });
        test::Pump();
    });
}

} // namespace
