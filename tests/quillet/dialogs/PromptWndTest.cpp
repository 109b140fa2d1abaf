#include "tests/quillet/dialogs/Popups.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

using namespace DuiLib;
using testing::ElementsAre;

namespace {

// The prompt that is open.
HWND Prompt()
{
    const HWND window = test::FindPopup(L"PromptWnd");
    EXPECT_NE(window, nullptr);
    return window;
}

constexpr wchar_t kControls[] = L"<Label name=\"titleText\" text=\"skin title\" height=\"30\"/>"
                                L"<Label name=\"delText\" text=\"skin text\" height=\"30\"/>"
                                L"<Button name=\"cancel\" height=\"30\"/>"
                                L"<Button name=\"other\" height=\"30\"/>"
                                L"<Button name=\"close\" height=\"30\"/>";

class TestPrompt : public PromptWnd {
public:
    TestPrompt(HWND parent, std::wstring title = L"title", std::wstring content = L"content")
        : PromptWnd(parent, std::move(title), std::move(content))
    {
        ++alive;
    }
    ~TestPrompt() override { --alive; }

    static unsigned Run(TestPrompt* prompt, HWND parent) { return RunModal(prompt, parent); }

    using PromptWnd::GetSkinFile;
    using PromptWnd::m_hParent;
    using PromptWnd::m_hWnd;
    using PromptWnd::m_strContent;
    using PromptWnd::m_strTitle;
    using PromptWnd::OnClickItem;

    // A notification as the control of that name would send it.
    bool Notify(const wchar_t* type, const wchar_t* name)
    {
        CButtonUI sender;
        sender.SetName(name);
        TNotifyUI notification{};
        notification.sType = type;
        notification.pSender = &sender;
        return OnClickItem(&notification);
    }

    static inline int alive = 0;
    bool initialised = false; // to the end

protected:
    void InitWindow() override
    {
        PromptWnd::InitWindow();
        initialised = true;
    }
};

class PromptWndTest : public test::PopupTest {
protected:
    PromptWndTest() { skins.Write(L"PromptWnd.xml", test::DialogSkins::Skin(kControls)); }

    // Opens the prompt and does this with its window.
    unsigned Pop(std::function<void(HWND)> action, const std::wstring& title = L"title",
                 const std::wstring& content = L"content")
    {
        actions.Post([action = std::move(action)] {
            const HWND window = Prompt();
            action(window);
            // A prompt that was not answered is a failure that must not wait for ever.
            ::PostMessageW(window, WM_CLOSE, 99, 0);
        });
        return PromptWnd::PopMessageBox(owner, title, content);
    }
};

TEST_F(PromptWndTest, AnswersWithTheCodeOfItsButton)
{
    EXPECT_EQ(Pop([](HWND window) { test::ClickControl(window, L"cancel"); }), 2u);
    EXPECT_EQ(Pop([](HWND window) { test::ClickControl(window, L"close"); }), 8u);
}

TEST_F(PromptWndTest, ClosedInAnotherWayItAnswersWithThatCode)
{
    EXPECT_EQ(Pop([](HWND window) { ::SendMessageW(window, WM_CLOSE, 7, 0); }), 0u);
    EXPECT_EQ(Pop([](HWND window) { ::PostMessageW(window, WM_CLOSE, 0, 0); }), 0u);
    EXPECT_EQ(Pop([](HWND window) { ::PostMessageW(window, WM_CLOSE, 7, 0); }), 7u);
    EXPECT_EQ(Pop([](HWND window) { ::DestroyWindow(window); }), 0u);
}

TEST_F(PromptWndTest, AnEndOfItsParentAnswersWithNothing)
{
    EXPECT_EQ(Pop([this](HWND) { owner.Destroy(); }), 0u);
    EXPECT_EQ(test::FindPopup(L"PromptWnd"), nullptr);
}

TEST_F(PromptWndTest, EscapeAndEnterDoNotAnswer)
{
    for (const WPARAM key : {VK_ESCAPE, VK_RETURN}) {
        bool open = false;
        const unsigned code = Pop([&](HWND window) {
            ::PostMessageW(window, WM_KEYDOWN, key, 0);
            test::Pump();
            open = ::IsWindow(window);
            test::ClickControl(window, L"close");
        });
        EXPECT_TRUE(open) << key;
        EXPECT_EQ(code, 8u) << key;
    }
}

// The prompt listens to its two buttons.
TEST_F(PromptWndTest, OtherControlsDoNotAnswer)
{
    bool open = false;
    Pop([&](HWND window) {
        test::ClickControl(window, L"other");
        test::Pump();
        open = ::IsWindow(window);
    });
    EXPECT_TRUE(open);
}

TEST_F(PromptWndTest, NamesAreComparedWithoutCase)
{
    struct Case {
        const wchar_t* name;
        unsigned code;
    };
    for (const Case& each : {Case{L"cancel", 2}, Case{L"CANCEL", 2}, Case{L"Cancel", 2},
                             Case{L"close", 8}, Case{L"CLOSE", 8}, Case{L"cLose", 8},
                             Case{L"other", 1}, Case{L"cancel2", 1}, Case{L"", 1}}) {
        auto* const prompt = new TestPrompt(owner);
        actions.Post([&] {
            EXPECT_FALSE(prompt->Notify(L"click", each.name));
            EXPECT_TRUE(::IsWindow(prompt->m_hWnd));
        });
        EXPECT_EQ(TestPrompt::Run(prompt, owner), each.code) << test::Utf8(each.name);
    }
}

TEST_F(PromptWndTest, AnswersClicksOnly)
{
    auto* const prompt = new TestPrompt(owner);
    bool open = false;
    actions.Post([&] {
        for (const wchar_t* const type :
             {L"windowinit", L"menu", L"Click", L"setfocus", L"buttondown", L"timer", L""})
            EXPECT_FALSE(prompt->Notify(type, L"cancel")) << test::Utf8(type);
        test::Pump();
        open = ::IsWindow(prompt->m_hWnd);
        prompt->Notify(L"click", L"close");
    });
    EXPECT_EQ(TestPrompt::Run(prompt, owner), 8u);
    EXPECT_TRUE(open);
}

TEST_F(PromptWndTest, ShowsItsTitleAndItsText)
{
    std::wstring title;
    std::wstring text;
    Pop(
        [&](HWND window) {
            title = test::TextOf(window, L"titleText");
            text = test::TextOf(window, L"delText");
        },
        L"删除", L"Delete 3 files?");
    EXPECT_EQ(title, L"删除");
    EXPECT_EQ(text, L"Delete 3 files?");
}

TEST_F(PromptWndTest, AnEmptyTextLeavesTheSkins)
{
    std::vector<std::wstring> texts;
    const auto note = [&](HWND window) {
        texts.push_back(test::TextOf(window, L"titleText"));
        texts.push_back(test::TextOf(window, L"delText"));
    };
    Pop(note, L"", L"text");
    Pop(note, L"title", L"");
    Pop(note, L"", L"");
    EXPECT_THAT(texts, ElementsAre(L"skin title", L"text", L"title", L"skin text", L"skin title",
                                   L"skin text"));
}

TEST_F(PromptWndTest, ASkinWithoutItsControlsDoesNoHarm)
{
    skins.Write(L"PromptWnd.xml", test::DialogSkins::Skin(L""));
    auto* const prompt = new TestPrompt(owner);
    bool initialised = false;
    actions.Post([&] {
        initialised = prompt->initialised;
        prompt->Close(99);
    });
    EXPECT_EQ(TestPrompt::Run(prompt, owner), 99u);
    EXPECT_TRUE(initialised);
}

TEST_F(PromptWndTest, HasItsClassItsSkinAndItsStyles)
{
    test::Creations creations;
    RECT place{};
    Pop([&](HWND window) { place = test::PlaceOf(window); });
    ASSERT_EQ(creations.All().size(), 1u);
    const test::Creation& made = creations.All()[0];
    EXPECT_EQ(made.className, L"PromptWnd");
    EXPECT_EQ(made.title, L"");
    EXPECT_EQ(made.style, 0x86C80000u);
    EXPECT_EQ(made.exStyle, 0x100u);
    EXPECT_EQ(made.owner, owner.GetHWND());
    const RECT nowhere{};
    EXPECT_TRUE(::EqualRect(&made.place, &nowhere));
    const RECT middle{150, 150, 450, 350};
    EXPECT_TRUE(::EqualRect(&place, &middle)) << place.left << ", " << place.top;

    auto* const prompt = new TestPrompt(owner, L"a", L"b");
    EXPECT_STREQ(prompt->GetSkinFile(), L"PromptWnd.xml");
    EXPECT_EQ(prompt->m_hParent, owner.GetHWND());
    EXPECT_EQ(prompt->m_strTitle, L"a");
    EXPECT_EQ(prompt->m_strContent, L"b");
    delete prompt;
}

TEST_F(PromptWndTest, ItsParentIsDisabledWhileItIsOpen)
{
    bool enabled = true;
    bool visible = false;
    Pop([&](HWND window) {
        enabled = owner.IsEnabled();
        visible = ::IsWindowVisible(window);
        test::ClickControl(window, L"cancel");
    });
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(visible);
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(PromptWndTest, WithoutAParentItIsModalAsWell)
{
    actions.Post([] { test::ClickControl(Prompt(), L"cancel"); });
    EXPECT_EQ(PromptWnd::PopMessageBox(nullptr, L"", L""), 2u);
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(PromptWndTest, IsDeletedAfterItsLoop)
{
    auto* const prompt = new TestPrompt(owner);
    int whileOpen = 0;
    int afterItsWindow = 0;
    actions.Post([&] {
        whileOpen = TestPrompt::alive;
        ::DestroyWindow(prompt->m_hWnd);
        afterItsWindow = TestPrompt::alive;
    });
    TestPrompt::Run(prompt, owner);
    EXPECT_EQ(whileOpen, 1);
    EXPECT_EQ(afterItsWindow, 1);
    EXPECT_EQ(TestPrompt::alive, 0);
}

TEST_F(PromptWndTest, NestedPromptsGiveBackTheirParentsOneByOne)
{
    std::vector<bool> enabled;
    unsigned inner = 0;
    const unsigned outer = Pop([&](HWND window) {
        const auto note = [&] {
            enabled.push_back(owner.IsEnabled());
            enabled.push_back(::IsWindowEnabled(window));
        };
        note();
        actions.Post([&] {
            note();
            HWND innermost = nullptr;
            for (const HWND each : {Prompt(), ::GetWindow(Prompt(), GW_HWNDNEXT)})
                if (each != window && test::ClassOf(each) == L"PromptWnd")
                    innermost = each;
            ASSERT_NE(innermost, nullptr);
            test::ClickControl(innermost, L"close");
        });
        inner = PromptWnd::PopMessageBox(window, L"inner", L"");
        note();
        test::ClickControl(window, L"cancel");
    });
    EXPECT_EQ(inner, 8u);
    EXPECT_EQ(outer, 2u);
    EXPECT_THAT(enabled, ElementsAre(false, true, false, false, false, true));
    EXPECT_TRUE(owner.IsEnabled());
}

// --- From where it may be opened ---

TEST_F(PromptWndTest, MayBeOpenedFromAClick)
{
    test::TestWindow window;
    window.skin = L"<Window size=\"200,100\"><VerticalLayout>"
                  L"<Button name=\"delete\" height=\"30\"/></VerticalLayout></Window>";
    struct Handler {
        bool OnNotify(void* notification)
        {
            if (static_cast<TNotifyUI*>(notification)->sType == DUI_MSGTYPE_CLICK)
                code = PromptWnd::PopMessageBox(parent, L"", L"");
            return true;
        }
        HWND parent = nullptr;
        unsigned code = 0;
    } handler;
    window.onInit = [&] {
        window.Manager().FindControl(L"delete")->OnNotify +=
            MakeDelegate(&handler, &Handler::OnNotify);
    };
    handler.parent = window.Make();
    window.ShowWindow();
    actions.Post([] { test::ClickControl(Prompt(), L"cancel"); });
    test::ClickControl(handler.parent, L"delete");
    EXPECT_EQ(handler.code, 2u);
    EXPECT_TRUE(::IsWindowEnabled(handler.parent));
}

TEST_F(PromptWndTest, MayBeOpenedFromATimer)
{
    unsigned code = 0;
    actions.PostTimer([&] {
        actions.Post([] { test::ClickControl(Prompt(), L"close"); });
        code = PromptWnd::PopMessageBox(owner, L"", L"");
    });
    test::Pump();
    EXPECT_EQ(code, 8u);
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(PromptWndTest, MayBeOpenedFromAQueuedTask)
{
    std::vector<unsigned> codes;
    UIMainQueue& queue = UIMainQueue::getInstance();
    queue.dispatch([&] {
        actions.Post([&] {
            // The queue goes on meanwhile.
            queue.dispatch([&] { codes.push_back(100); });
            queue.finish();
            test::ClickControl(Prompt(), L"cancel");
        });
        codes.push_back(PromptWnd::PopMessageBox(owner, L"", L""));
    });
    queue.dispatch([&] { codes.push_back(200); });
    queue.finish();
    EXPECT_THAT(codes, ElementsAre(100u, 2u, 200u));
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(PromptWndTest, ManyOpeningsLeaveNothingBehind)
{
    test::ExpectNoGrowth(500, [this] {
        actions.Post([] { test::ControlOf<CButtonUI>(Prompt(), L"cancel")->Activate(); });
        ASSERT_EQ(PromptWnd::PopMessageBox(owner, L"title", L"content"), 2u);
    });
}

} // namespace
