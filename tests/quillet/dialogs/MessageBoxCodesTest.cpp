#include "tests/quillet/dialogs/MessageBoxHost.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace DuiLib;
using test::BoxSkin;
using test::Generation;
using test::kGenerations;
using test::kNewer;
using test::kOlder;
using test::OpenBox;
using test::Script;
using test::ShownBox;
using testing::ElementsAre;
using testing::IsEmpty;

// How message boxes are answered, and where they may be opened.
namespace {

class MessageBoxCodesTest : public test::MessageBoxKit,
                            public testing::WithParamInterface<Generation> {};

INSTANTIATE_TEST_SUITE_P(Generations, MessageBoxCodesTest, testing::ValuesIn(kGenerations),
                         [](const auto& test) { return test.param.name; });

// Codes

struct Ending {
    const char* name;
    unsigned code;
    void (*end)(const ShownBox& box);
};

void PostKey(const ShownBox& box, WPARAM key)
{
    ::PostMessageW(box.Window(), WM_KEYDOWN, key, 0);
}

constexpr Ending kEndings[] = {
    {"Ok", 1, [](const ShownBox& box) { box.Click(L"btn_ok"); }},
    {"Cancel", 2, [](const ShownBox& box) { box.Click(L"btn_cancel"); }},
    {"Close", 8, [](const ShownBox& box) { box.Click(L"btn_close"); }},
    {"OkTwice", 1,
     [](const ShownBox& box) {
         box.Click(L"btn_ok");
         box.Click(L"btn_cancel");
     }},
    {"EnterOnAButton", 8,
     [](const ShownBox& box) {
         box.Find(L"btn_close")->SetFocus();
         PostKey(box, VK_RETURN);
     }},
    {"SpaceOnAButton", 2,
     [](const ShownBox& box) {
         box.Find(L"btn_cancel")->SetFocus();
         PostKey(box, VK_SPACE);
     }},
    {"CloseMessage", 0, [](const ShownBox& box) { ::SendMessageW(box.Window(), WM_CLOSE, 7, 0); }},
    {"PostedCloseMessage", 7,
     [](const ShownBox& box) { ::PostMessageW(box.Window(), WM_CLOSE, 7, 0); }},
    {"SystemClose", 0,
     [](const ShownBox& box) { ::PostMessageW(box.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }},
    {"Destroyed", 0, [](const ShownBox& box) { ::DestroyWindow(box.Window()); }},
    {"ParentDestroyed", 0,
     [](const ShownBox& box) { ::DestroyWindow(::GetWindow(box.Window(), GW_OWNER)); }},
};

struct EndingOf {
    Generation generation;
    Ending ending;
};

void PrintTo(const EndingOf& row, std::ostream* out)
{
    *out << row.generation.name << " " << row.ending.name;
}

std::vector<EndingOf> AllEndings()
{
    std::vector<EndingOf> all;
    for (const Generation& generation : kGenerations)
        for (const Ending& ending : kEndings)
            all.push_back({generation, ending});
    return all;
}

class MessageBoxEndingTest : public test::MessageBoxKit,
                             public testing::WithParamInterface<EndingOf> {};

INSTANTIATE_TEST_SUITE_P(All, MessageBoxEndingTest, testing::ValuesIn(AllEndings()),
                         [](const auto& test) {
                             return std::string(test.param.generation.name) + "_" +
                                    test.param.ending.name;
                         });

TEST_P(MessageBoxEndingTest, GivesItsCode)
{
    const auto& [generation, ending] = GetParam();
    const HWND owner = parent;
    HWND box = nullptr;
    Script script{[&] {
        box = Box().Window();
        ending.end(Box());
    }};
    EXPECT_EQ(Run(generation, {}), ending.code);
    EXPECT_NE(box, nullptr);
    EXPECT_FALSE(::IsWindow(box));
    EXPECT_TRUE(!::IsWindow(owner) || parent.IsEnabled());
    EXPECT_EQ(Objects(), 0) << "the object is gone";
}

TEST_P(MessageBoxCodesTest, TheOneButtonOfTypeZeroGivesTwo)
{
    Script script{[&] {
        EXPECT_FALSE(Box().IsVisible(L"btn_ok"));
        Box().Click(L"btn_cancel");
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 0}), 2u);
}

TEST_P(MessageBoxCodesTest, EnterAndEscapeDoNotCloseABoxWithoutAFocusedButton)
{
    Script script{[&] {
                      PostKey(Box(), VK_RETURN);
                      PostKey(Box(), VK_ESCAPE);
                  },
                  [&] {
                      EXPECT_TRUE(Box().IsOpen());
                      Box().Find(L"btn_ok")->SetFocus();
                      PostKey(Box(), VK_ESCAPE);
                  },
                  [&] {
                      EXPECT_TRUE(Box().IsOpen());
                      Box().Click(L"btn_cancel");
                  }};
    EXPECT_EQ(Run(GetParam(), {}), 2u);
}

TEST_P(MessageBoxCodesTest, TheEndOfTheProgramEndsItAndGoesOn)
{
    bool checked = false;
    HWND box = nullptr;
    Script script({[&] {
                      box = Box().Window();
                      ::PostQuitMessage(42);
                  }},
                  Script::Afterwards::Nothing);
    EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = &checked}), 0u);
    EXPECT_FALSE(::IsWindow(box)) << "it could only write to what the caller no longer has";
    EXPECT_EQ(Objects(), 0);
    EXPECT_TRUE(parent.IsEnabled());
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 42u);
}

// The code that a click of a control of this name closes with, or -1 when it does not.
template <class Box>
int CodeOfClick(const wchar_t* name, const wchar_t* type, bool* checked)
{
    auto* const box = new OpenBox<Box>({.type = 4, .checked = checked});
    box->RunModeless(box, nullptr);
    const HWND window = box->GetHWND();
    ShownBox(window).Check(true);
    CButtonUI sender;
    sender.SetName(name);
    TNotifyUI notification;
    notification.sType = type;
    notification.pSender = &sender;
    EXPECT_FALSE(box->OnClickItem(&notification));
    MSG message{};
    const bool closed = ::PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE);
    EXPECT_FALSE(::PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE)) << "just once";
    ::DestroyWindow(window);
    if constexpr (std::is_same_v<Box, UIIMessageBox>)
        delete box;
    return closed ? static_cast<int>(message.wParam) : -1;
}

int CodeOfClick(const Generation& generation, const wchar_t* name, const wchar_t* type = L"click",
                bool* checked = nullptr)
{
    return generation.pop == kOlder.pop ? CodeOfClick<UIMessageBox>(name, type, checked)
                                        : CodeOfClick<UIIMessageBox>(name, type, checked);
}

TEST_P(MessageBoxCodesTest, NamesAreComparedWithoutCase)
{
    const auto code = [&](const wchar_t* name) { return CodeOfClick(GetParam(), name); };
    EXPECT_EQ(code(L"btn_ok"), 1);
    EXPECT_EQ(code(L"BTN_OK"), 1);
    EXPECT_EQ(code(L"btn_cancel"), 2);
    EXPECT_EQ(code(L"Btn_Cancel"), 2);
    EXPECT_EQ(code(L"BTN_CANCEL"), 2);
    EXPECT_EQ(code(L"btn_close"), 8);
    EXPECT_EQ(code(L"BTN_close"), 8);
}

TEST_P(MessageBoxCodesTest, AnyOtherControlGivesOne)
{
    for (const wchar_t* const name :
         {L"", L"btn_other", L"btn_cancel2", L"cancel", L"close", L"closebtn", L"checkbox_tip"})
        EXPECT_EQ(CodeOfClick(GetParam(), name), 1) << test::Utf8(name);
}

TEST_P(MessageBoxCodesTest, OnlyClicksCount)
{
    for (const wchar_t* const type :
         {L"", L"Click", L"CLICK", L"click2", L"buttondown", L"selectchanged", L"timer"}) {
        SCOPED_TRACE(test::Utf8(type));
        bool checked = false;
        EXPECT_EQ(CodeOfClick(GetParam(), L"btn_ok", type, &checked), -1);
        EXPECT_FALSE(checked);
    }
}

TEST_P(MessageBoxCodesTest, AControlThatASubclassWiresGivesOne)
{
    unsigned code = 0;
    Script script{[&] { Box().Click(L"btn_other"); }};
    code = GetParam().pop == kOlder.pop
               ? OpenBox<UIMessageBox>::RunModal(new OpenBox<UIMessageBox>({}), parent)
               : OpenBox<UIIMessageBox>::RunModal(new OpenBox<UIIMessageBox>({}), parent);
    EXPECT_EQ(code, 1u);
}

TEST_P(MessageBoxCodesTest, NothingElseIsWired)
{
    Script script{[&] {
                      Box().Click(L"btn_other");
                      Box().Click(L"lab_text");
                      Box().Click(L"checkbox_tip");
                  },
                  [&] {
                      EXPECT_TRUE(Box().IsOpen());
                      Box().Click(L"btn_cancel");
                  }};
    EXPECT_EQ(Run(GetParam(), {.type = 4}), 2u);
}

// The check box

TEST_P(MessageBoxCodesTest, EveryButtonWritesTheCheckBoxAlsoClose)
{
    for (const wchar_t* const name : {L"btn_ok", L"btn_cancel", L"btn_close"})
        for (const bool state : {true, false}) {
            SCOPED_TRACE(test::Utf8(name));
            bool checked = !state;
            Script script{[&] {
                Box().Check(state);
                EXPECT_EQ(checked, !state);
                Box().Click(name);
                EXPECT_EQ(checked, state);
            }};
            EXPECT_NE(Run(GetParam(), {.type = 4, .checked = &checked}), 0u);
            EXPECT_EQ(checked, state);
        }
}

TEST_P(MessageBoxCodesTest, AHiddenCheckBoxIsWrittenToo)
{
    for (const unsigned type : {0u, 1u, 7u}) {
        bool checked = true;
        Script script{[&] { Box().Click(L"btn_cancel"); }};
        Run(GetParam(), {.type = type, .checked = &checked});
        EXPECT_FALSE(checked);
    }
}

TEST_P(MessageBoxCodesTest, AnEndWithoutAButtonWritesNothing)
{
    bool checked = false;
    Script script{[&] {
        Box().Check(true);
        ::PostMessageW(Box().Window(), WM_CLOSE, 1, 0);
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = &checked}), 1u);
    EXPECT_FALSE(checked);
}

TEST_P(MessageBoxCodesTest, WithoutACheckBoxNothingIsWritten)
{
    UseSkin(BoxSkin({L"checkbox_tip"}));
    for (const bool state : {true, false}) {
        bool checked = state;
        Script script{[&] { Box().Click(L"btn_ok"); }};
        EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = &checked}), 1u);
        EXPECT_EQ(checked, state);
    }
}

TEST_P(MessageBoxCodesTest, NobodyHasToAskForTheCheckBox)
{
    Script script{[&] {
        Box().Check(true);
        Box().Click(L"btn_ok");
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = nullptr}), 1u);
}

// Modal or not

TEST_P(MessageBoxCodesTest, EitherFlagMakesItModal)
{
    static constexpr struct {
        bool modal, force, waits;
    } kRows[] = {
        {false, false, false}, {true, false, true}, {false, true, true}, {true, true, true}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.modal << row.force);
        bool answered = false;
        Script script{[&] {
            answered = true;
            EXPECT_EQ(parent.IsEnabled(), !row.waits);
            Box().Click(L"btn_cancel");
        }};
        EXPECT_EQ(Run(GetParam(), {.modal = row.modal, .forceModal = row.force}),
                  row.waits ? 2u : 1u);
        EXPECT_EQ(answered, row.waits);
        test::Pump();
        EXPECT_TRUE(answered);
        EXPECT_THAT(ShownBox::All(), IsEmpty());
    }
}

TEST_P(MessageBoxCodesTest, ABoxThatIsNotModalGivesOneAtOnceWhateverIsClickedLater)
{
    for (const wchar_t* const name : {L"btn_ok", L"btn_cancel", L"btn_close"}) {
        bool checked = false;
        const ShownBox box = Open(GetParam(), {.type = 4, .checked = &checked});
        ASSERT_TRUE(box.IsOpen());
        box.Check(true);
        box.Click(name);
        EXPECT_TRUE(checked);
        test::Pump();
        EXPECT_FALSE(box.IsOpen());
    }
}

TEST_P(MessageBoxCodesTest, ABoxThatIsNotModalEndsWithItsParent)
{
    const ShownBox box = Open(GetParam(), {});
    parent.Destroy();
    EXPECT_FALSE(box.IsOpen());
}

// Several

TEST_P(MessageBoxCodesTest, NestedBoxesGiveTheirParentsBackFromTheInnermostOutward)
{
    HWND first = nullptr;
    HWND second = nullptr;
    std::vector<unsigned> codes;
    Script script{[&] {
                      first = Box().Window();
                      codes.push_back(GetParam().pop({.parent = first}));
                      EXPECT_FALSE(parent.IsEnabled());
                      EXPECT_TRUE(::IsWindowEnabled(first));
                  },
                  [&] {
                      second = ShownBox::Over(first).Window();
                      EXPECT_FALSE(::IsWindowEnabled(first));
                      codes.push_back(GetParam().pop({.parent = second}));
                      EXPECT_FALSE(parent.IsEnabled());
                      EXPECT_FALSE(::IsWindowEnabled(first));
                      EXPECT_TRUE(::IsWindowEnabled(second));
                  },
                  [&] {
                      EXPECT_FALSE(::IsWindowEnabled(second));
                      ShownBox::Over(second).Click(L"btn_close");
                  },
                  [&] { ShownBox(second).Click(L"btn_cancel"); },
                  [&] { ShownBox(first).Click(L"btn_ok"); }};
    codes.push_back(Run(GetParam(), {}));
    EXPECT_THAT(codes, ElementsAre(8u, 2u, 1u));
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_P(MessageBoxCodesTest, TheParentOfTwoBoxesStaysDisabledUntilBothHaveClosed)
{
    unsigned inner = 0;
    HWND first = nullptr;
    Script script{[&] {
                      first = Box().Window();
                      inner = GetParam().pop({.parent = parent});
                      EXPECT_FALSE(parent.IsEnabled());
                      ShownBox(first).Click(L"btn_ok");
                  },
                  [&] {
                      for (const ShownBox& box : ShownBox::All())
                          if (box.Window() != first)
                              box.Click(L"btn_cancel");
                  }};
    EXPECT_EQ(Run(GetParam(), {}), 1u);
    EXPECT_EQ(inner, 2u);
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_P(MessageBoxCodesTest, AnOuterBoxThatIsClosedFirstTakesTheInnerOneWithIt)
{
    unsigned inner = 77;
    Script script{[&] { inner = GetParam().pop({.parent = Box().Window()}); },
                  [&] { ::PostMessageW(Box().Window(), WM_CLOSE, 5, 0); }};
    EXPECT_EQ(Run(GetParam(), {}), 5u);
    EXPECT_EQ(inner, 0u);
    EXPECT_TRUE(parent.IsEnabled());
    EXPECT_EQ(Objects(), 0);
}

TEST_P(MessageBoxCodesTest, BothGenerationsNest)
{
    const Generation& other = GetParam().pop == kOlder.pop ? kNewer : kOlder;
    unsigned inner = 0;
    HWND first = nullptr;
    Script script{[&] {
                      first = Box().Window();
                      inner = other.pop({.parent = first});
                      ShownBox(first).Click(L"btn_close");
                  },
                  [&] { ShownBox::Over(first).Click(L"btn_cancel"); }};
    EXPECT_EQ(Run(GetParam(), {}), 8u);
    EXPECT_EQ(inner, 2u);
}

TEST_P(MessageBoxCodesTest, TwoThatAreNotModalStandBesideEachOther)
{
    bool first = false;
    bool second = false;
    GetParam().pop({.parent = parent, .text = L"1", .checked = &first, .modal = false});
    const ShownBox one = Box();
    GetParam().pop({.parent = parent, .text = L"2", .checked = &second, .modal = false});
    ASSERT_EQ(ShownBox::All().size(), 2u);
    const ShownBox two = ShownBox::All()[ShownBox::All()[0].Window() == one.Window() ? 1 : 0];
    EXPECT_EQ(one.Text(L"lab_text"), L"1");
    EXPECT_EQ(two.Text(L"lab_text"), L"2");
    one.Check(true);
    one.Click(L"btn_ok");
    test::Pump();
    EXPECT_FALSE(one.IsOpen());
    EXPECT_TRUE(two.IsOpen());
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    two.Check(true);
    two.Click(L"btn_close");
    test::Pump();
    EXPECT_FALSE(two.IsOpen());
    EXPECT_TRUE(second);
}

// From where it is opened

class OpenedFromTest : public MessageBoxCodesTest {
protected:
    OpenedFromTest()
    {
        host.Make();
        ::ShowWindow(host.handle, SW_SHOWNOACTIVATE);
    }

    void Ask()
    {
        Script script{[&] {
            EXPECT_FALSE(::IsWindowEnabled(host.handle));
            ShownBox::Over(host.handle).Click(L"btn_cancel");
        }};
        code = GetParam().pop({.parent = host.handle});
        EXPECT_TRUE(::IsWindowEnabled(host.handle));
    }

    test::FrameHost host;
    unsigned code = 0;
};

INSTANTIATE_TEST_SUITE_P(Generations, OpenedFromTest, testing::ValuesIn(kGenerations),
                         [](const auto& test) { return test.param.name; });

TEST_P(OpenedFromTest, AClick)
{
    host.first->ListenClickEvent(host.Control(L"save"), [&] { Ask(); });
    test::ClickControl(host.handle, L"save");
    EXPECT_EQ(code, 2u);
}

TEST_P(OpenedFromTest, AClickOfAnotherBox)
{
    Script script{[&] {
        const ShownBox box = Box();
        static std::function<void()> action;
        action = [&] { Ask(); };
        box.Find(L"btn_other")->OnNotify += +[](void*) {
            if (const auto once = std::exchange(action, {}))
                once();
            return true;
        };
        box.Find(L"btn_other")->Activate();
        EXPECT_EQ(code, 2u);
        box.Click(L"btn_close");
    }};
    EXPECT_EQ(Run(GetParam(), {}), 8u);
}

TEST_P(OpenedFromTest, AClickWhoseWindowEndsMeanwhile)
{
    host.first->ListenClickEvent(host.Control(L"save"), [&] {
        Script script{[&] { host.Destroy(); }};
        code = GetParam().pop({.parent = host.handle});
    });
    code = 77;
    test::ClickControl(host.handle, L"save");
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(Objects(), 0);
}

TEST_P(OpenedFromTest, ATimer)
{
    const UINT id = host.first->SetTimer(1000000, [&] { Ask(); });
    host.Send(WM_TIMER, id);
    EXPECT_EQ(code, 2u);
}

TEST_P(OpenedFromTest, AQueuedTask)
{
    constexpr UINT kWakeUp = WM_USER + 4;
    host.first->ListenMessage(kWakeUp, [](WPARAM, LPARAM) { UIMainQueue::getInstance().finish(); });
    bool later = false;
    UIMainQueue::getInstance().dispatch(
        [&] {
            UIMainQueue::getInstance().dispatch([&] { later = true; }, host.handle);
            Ask();
            EXPECT_TRUE(later) << "tasks go on while a box is open";
        },
        host.handle);
    test::Pump();
    EXPECT_EQ(code, 2u);
}

} // namespace
