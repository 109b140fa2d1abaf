#include "quillet/window/TestWindow.h"

#include <cstdlib>

namespace test {
namespace {

using namespace DuiLib;

// What the end of a process would have been.
struct Ended {
    UINT code;
};

// The message box as it was asked for.
struct MessageBoxCall {
    HWND owner = reinterpret_cast<HWND>(1);
    std::wstring text, title;
    UINT type = 0;
    int shown = 0;
};

// The resource that was looked for, and not found.
struct ResourceSearch {
    static inline std::wstring type;
    static inline INT_PTR number = 0;
    static HRSRC WINAPI Find(HMODULE, LPCWSTR name, LPCWSTR kind)
    {
        number = IS_INTRESOURCE(name) ? reinterpret_cast<INT_PTR>(name) : -1;
        type = IS_INTRESOURCE(kind) ? L"" : kind;
        return nullptr;
    }
};

class MissingSkinTest : public WindowTest {
protected:
    MissingSkinTest()
    {
        box = MessageBoxCall{};
        window.m_hWnd = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                          nullptr, nullptr, nullptr);
    }

    static inline MessageBoxCall box;

    static int WINAPI ShowBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT type)
    {
        box = {owner, text, title, type, box.shown + 1};
        return IDOK;
    }
    [[noreturn]] static void WINAPI End(UINT code) { throw Ended{code}; }

    // The exit code, or -1 when the process would go on.
    int Create()
    {
        BOOL handled = FALSE;
        try {
            window.OnCreate(WM_CREATE, 0, 0, handled);
        } catch (const Ended& ended) {
            return static_cast<int>(ended.code);
        }
        return -1;
    }

    TestWindow window;
    ImportHook messageBox{L"Quillet.dll", "USER32.dll", "MessageBoxW", &ShowBox};
    ImportHook exitProcess{L"Quillet.dll", "KERNEL32.dll", "ExitProcess", &End};
};

TEST_F(MissingSkinTest, ShowsABoxThatNamesTheSkinAndEndsTheProcessWithOne)
{
    window.skin = L"no-such-skin.xml";
    EXPECT_EQ(Create(), 1);
    EXPECT_EQ(box.shown, 1);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_EQ(box.text, L"\u52A0\u8F7D\u8D44\u6E90\u6587\u4EF6\u5931\u8D25\uFF1Ano-such-skin.xml");
    EXPECT_EQ(box.title, L"Duilib");
    EXPECT_EQ(box.type, UINT{MB_OK | MB_ICONHAND});
    EXPECT_EQ(window.initialised, 0);
}

TEST_F(MissingSkinTest, ASkinThatIsNoXmlIsMissingToo)
{
    window.skin = L"<Window><Unclosed></Window>";
    EXPECT_EQ(Create(), 1);
    EXPECT_EQ(box.shown, 1);
}

TEST_F(MissingSkinTest, ASkinWithoutAnyControlIsMissingToo)
{
    window.skin = L"<Window/>";
    EXPECT_EQ(Create(), 1);
}

TEST_F(MissingSkinTest, AGoodSkinShowsNoBox)
{
    EXPECT_EQ(Create(), -1);
    EXPECT_EQ(box.shown, 0);
    EXPECT_EQ(window.initialised, 1);
}

TEST_F(MissingSkinTest, ASkinTypeMakesTheSkinAResourceNumber)
{
    const ImportHook find(L"DuiLib.dll", "KERNEL32.dll", "FindResourceW", &ResourceSearch::Find);
    ASSERT_TRUE(static_cast<bool>(find));
    window.skin = L"4711";
    window.skinType = L"SKIN";
    EXPECT_EQ(Create(), 1);
    EXPECT_EQ(ResourceSearch::number, 4711);
    EXPECT_EQ(ResourceSearch::type, L"SKIN");
}

TEST_F(MissingSkinTest, TheWindowIsRecordedBeforeItsSkinIsBuilt)
{
    window.skin = L"no-such-skin.xml";
    Create();
    ASSERT_EQ(WindowImplBaseEx::vChildHwndMap.size(), 1u);
    EXPECT_EQ(WindowImplBaseEx::vChildHwndMap[0].hWnd, window.m_hWnd);
}

// The real box, answered as soon as it is activated, and the real end of a process.
TEST(MissingSkinProcessTest, EndsWithCodeOneAfterTheBox)
{
    EXPECT_EXIT(
        {
            struct Answer {
                static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
                {
                    wchar_t title[32]{};
                    if (code == HCBT_ACTIVATE &&
                        ::GetWindowTextW(reinterpret_cast<HWND>(wParam), title, 32) > 0 &&
                        std::wstring(title) == L"Duilib")
                        ::EndDialog(reinterpret_cast<HWND>(wParam), IDOK);
                    return ::CallNextHookEx(nullptr, code, wParam, lParam);
                }
            };
            ::SetWindowsHookExW(WH_CBT, &Answer::Hook, nullptr, ::GetCurrentThreadId());
            TestWindow window;
            window.skin = L"no-such-skin.xml";
            window.Make();
            std::_Exit(7);
        },
        testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace test
