#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "tests/quillet/dialogs/MessageBoxHost.h"

#include <type_traits>

using namespace DuiLib;
using test::BoxCall;
using test::Generation;
using test::kGenerations;
using test::kNewer;
using test::kOlder;
using test::OpenBox;
using test::Script;
using test::ShownBox;

// Who deletes a message box, and that nothing stays behind.
namespace {

constexpr int kTimes = 500;

using Older = OpenBox<UIMessageBox>;
using Newer = OpenBox<UIIMessageBox>;

class MessageBoxOwnershipTest : public test::MessageBoxKit {
protected:
    MessageBoxOwnershipTest()
    {
        Older::destroyed = 0;
        Newer::destroyed = 0;
    }

    void PopModal(const Generation& generation)
    {
        Script script{[&] { Box().Click(L"btn_ok"); }};
        EXPECT_EQ(generation.pop({.parent = parent, .text = L"text"}), 1u);
    }
    void PopModeless(const Generation& generation)
    {
        generation.pop({.parent = parent, .text = L"text", .modal = false});
        ::DestroyWindow(Box().Window());
    }
};

// Who deletes

TEST_F(MessageBoxOwnershipTest, TheOlderOneDeletesItselfWhenItsModalWindowEnds)
{
    Script script{[&] {
        EXPECT_EQ(Older::destroyed, 0);
        ::DestroyWindow(Box().Window());
        EXPECT_EQ(Older::destroyed, 1);
    }};
    Older::RunModal(new Older({}), parent);
    EXPECT_EQ(Older::destroyed, 1);
}

TEST_F(MessageBoxOwnershipTest, TheOlderOneDeletesItselfWhenItsModelessWindowEnds)
{
    Older::RunModeless(new Older({}), parent);
    EXPECT_EQ(Older::destroyed, 0);
    Box().Click(L"btn_cancel");
    EXPECT_EQ(Older::destroyed, 0) << "the window is closed by a message";
    test::Pump();
    EXPECT_EQ(Older::destroyed, 1);
}

TEST_F(MessageBoxOwnershipTest, TheNewerOneIsDeletedAfterItsModalLoop)
{
    Script script{[&] {
        EXPECT_EQ(Newer::destroyed, 0);
        ::DestroyWindow(Box().Window());
        EXPECT_EQ(Newer::destroyed, 0);
    }};
    Newer::RunModal(new Newer({}), parent);
    EXPECT_EQ(Newer::destroyed, 1);
}

TEST_F(MessageBoxOwnershipTest, TheNewerOneIsLeftWhenItIsNotModal)
{
    auto* const box = new Newer({});
    Newer::RunModeless(box, parent);
    Box().Click(L"btn_cancel");
    test::Pump();
    EXPECT_EQ(Newer::destroyed, 0);
    EXPECT_EQ(box->GetHWND(), nullptr);
    delete box;
    EXPECT_EQ(Newer::destroyed, 1);
}

TEST_F(MessageBoxOwnershipTest, OnlyNewerOnesThatAreNotModalStayBehindOneEach)
{
    constexpr int kBoxes = 10;
    for (int i = 0; i < kBoxes; ++i) {
        PopModal(kOlder);
        PopModal(kNewer);
        PopModeless(kOlder);
    }
    EXPECT_EQ(Objects(), 0);
    for (int i = 1; i <= kBoxes; ++i) {
        PopModeless(kNewer);
        EXPECT_EQ(Objects(), i);
    }
}

TEST_F(MessageBoxOwnershipTest, TheEndOfTheProgramDeletesEachOnce)
{
    const auto expectDeletedOnce = [&](auto* box) {
        using Box = std::remove_pointer_t<decltype(box)>;
        Script script({[] { ::PostQuitMessage(0); }}, Script::Afterwards::Nothing);
        EXPECT_EQ(Box::RunModal(box, parent), 0u);
        EXPECT_EQ(Box::destroyed, 1);
        MSG message{};
        EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    };
    expectDeletedOnce(new Older({}));
    expectDeletedOnce(new Newer({}));
}

TEST_F(MessageBoxOwnershipTest, TheEndOfTheirParentDeletesNestedOnesOnce)
{
    Script script{[&] { Newer::RunModal(new Newer({}), Box().Window()); },
                  [&] {
                      const HWND box = Box().Window();
                      Older::RunModal(new Older({}), ShownBox::Over(box).Window());
                  },
                  [&] { parent.Destroy(); }};
    EXPECT_EQ(Older::RunModal(new Older({}), parent), 0u);
    EXPECT_EQ(Older::destroyed, 2);
    EXPECT_EQ(Newer::destroyed, 1);
    EXPECT_EQ(Objects(), 0);
}

// Windows that do not come into being

HWND WINAPI CreateNoWindow(DWORD, LPCWSTR, LPCWSTR, DWORD, int, int, int, int, HWND, HMENU,
                           HINSTANCE, void*)
{
    ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

// Has the system refuse every window before its first message.
class NoMoreWindows {
public:
    NoMoreWindows()
        : m_hook(
              ::SetWindowsHookExW(WH_CBT, &NoMoreWindows::Refuse, nullptr, ::GetCurrentThreadId()))
    {
    }
    ~NoMoreWindows() { ::UnhookWindowsHookEx(m_hook); }
    NoMoreWindows(const NoMoreWindows&) = delete;
    NoMoreWindows& operator=(const NoMoreWindows&) = delete;

private:
    static LRESULT CALLBACK Refuse(int code, WPARAM wParam, LPARAM lParam)
    {
        return code == HCBT_CREATEWND ? 1 : ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK m_hook;
};

template <class Box>
void ExpectNothingLeft(HWND parent, UINT refused, LRESULT refusal, bool endsItself = false)
{
    const auto make = [&] {
        auto* const box = new Box({});
        box->refused = refused;
        box->refusal = refusal;
        if (endsItself)
            box->onInit = [box] { ::DestroyWindow(box->GetHWND()); };
        return box;
    };
    Box::destroyed = 0;
    EXPECT_EQ(Box::RunModal(make(), parent), 0u);
    EXPECT_EQ(Box::destroyed, 1);
    EXPECT_TRUE(::IsWindowEnabled(parent));
    EXPECT_EQ(Box::RunModeless(make(), parent), 1u);
    EXPECT_LE(Box::destroyed, 2);
    // What ends in its own initialisation was there, and is left like any other.
    if (!endsItself) {
        EXPECT_EQ(Box::destroyed, 2);
    }
    EXPECT_TRUE(ShownBox::All().empty());
}

TEST_F(MessageBoxOwnershipTest, NothingStaysOfABoxThatGetsNoWindow)
{
    const test::ImportHook none(L"DuiLib.dll", "user32.dll", "CreateWindowExW", &CreateNoWindow);
    ASSERT_TRUE(none);
    ExpectNothingLeft<Older>(parent, WM_NULL, 0);
    ExpectNothingLeft<Newer>(parent, WM_NULL, 0);
    for (const Generation& generation : kGenerations)
        for (const bool modal : {true, false}) {
            SCOPED_TRACE(generation.name);
            test::ExpectNoGrowth(50, [&] {
                const unsigned code =
                    generation.pop({.parent = parent, .text = L"text", .modal = modal});
                EXPECT_EQ(code, modal ? 0u : 1u);
            });
        }
}

TEST_F(MessageBoxOwnershipTest, NothingStaysOfABoxThatTheSystemRefuses)
{
    for (const Generation& generation : kGenerations)
        for (const bool modal : {true, false}) {
            SCOPED_TRACE(generation.name);
            const NoMoreWindows refusing;
            test::ExpectNoGrowth(50, [&] {
                const unsigned code =
                    generation.pop({.parent = parent, .text = L"text", .modal = modal});
                EXPECT_EQ(code, modal ? 0u : 1u);
            });
        }
    EXPECT_TRUE(parent.IsEnabled());
}

TEST_F(MessageBoxOwnershipTest, NothingStaysOfABoxThatRefusesItsFirstMessage)
{
    ExpectNothingLeft<Older>(parent, WM_NCCREATE, FALSE);
    ExpectNothingLeft<Newer>(parent, WM_NCCREATE, FALSE);
}

TEST_F(MessageBoxOwnershipTest, NothingStaysOfABoxThatRefusesToBeCreated)
{
    ExpectNothingLeft<Older>(parent, WM_CREATE, -1);
    ExpectNothingLeft<Newer>(parent, WM_CREATE, -1);
}

TEST_F(MessageBoxOwnershipTest, NothingStaysOfABoxThatEndsWhileItIsCreated)
{
    ExpectNothingLeft<Older>(parent, WM_NULL, 0, true);
    ExpectNothingLeft<Newer>(parent, WM_NULL, 0, true);
}

// Counts

TEST_F(MessageBoxOwnershipTest, FiveHundredModalOlderOnesLeaveNothing)
{
    test::ExpectNoGrowth(kTimes, [&] { PopModal(kOlder); });
}

TEST_F(MessageBoxOwnershipTest, FiveHundredModalNewerOnesLeaveNothing)
{
    test::ExpectNoGrowth(kTimes, [&] { PopModal(kNewer); });
}

TEST_F(MessageBoxOwnershipTest, FiveHundredOlderOnesThatAreNotModalLeaveNothing)
{
    test::ExpectNoGrowth(kTimes, [&] { PopModeless(kOlder); });
}

TEST_F(MessageBoxOwnershipTest, FiveHundredNewerOnesThatAreNotModalLeaveOnlyTheirObjects)
{
    test::ExpectNoGrowth(kTimes, [&] {
        auto* const box = new Newer({.text = L"text"});
        Newer::RunModeless(box, parent);
        ::DestroyWindow(Box().Window());
        delete box;
    });
}

} // namespace
