#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "tests/gallery/PageKit.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

using namespace DuiLib;
using test::ClickControl;
using test::ControlOf;
using test::Pump;

namespace {

constexpr const wchar_t* kDialogPages[] = {L"message-boxes", L"notices", L"loading",
                                           L"confirmation"};

struct Search {
    std::wstring_view className;
    HWND found = nullptr;
};

BOOL CALLBACK IsOfClass(HWND window, LPARAM context)
{
    auto& search = *reinterpret_cast<Search*>(context);
    wchar_t name[256]{};
    ::GetClassNameW(window, name, 256);
    if (search.className == name)
        search.found = window;
    return search.found == nullptr;
}

// A window of the class; null when there is none.
HWND Opened(const wchar_t* className)
{
    Search search{className};
    ::EnumThreadWindows(::GetCurrentThreadId(), IsOfClass, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

class DialogPagesTest : public test::PageKit {
protected:
    static std::string TextOf(HWND dialog, const wchar_t* name)
    {
        return test::Utf8(ControlOf(dialog, name)->GetText().GetData());
    }

    // Clicks the page's control, which opens a modal dialog of the class, and does something to it.
    void InModal(const wchar_t* control, const wchar_t* className, std::function<void(HWND)> action)
    {
        HWND seen = nullptr;
        loop.Post([&] {
            seen = Opened(className);
            if (seen)
                action(seen);
        });
        Click(control);
        EXPECT_NE(seen, nullptr);
        EXPECT_FALSE(::IsWindow(seen));
        if (window.IsOpen()) {
            EXPECT_TRUE(::IsWindowEnabled(window.GetHWND()));
        }
    }
    void AnswerWith(const wchar_t* button, const wchar_t* control, const wchar_t* className)
    {
        InModal(control, className, [button](HWND dialog) { ClickControl(dialog, button); });
    }

    // The scale of the main window, whatever the monitor's is.
    static void ExpectScale(HWND dialog, unsigned percent)
    {
        EXPECT_EQ(test::ManagerOf(dialog)->GetDPIObj()->GetScale(), percent);
        EXPECT_EQ(CResourceManagerEx::GetInstance()->GetScale(), percent);
    }

    test::LoopActions loop;
};

struct Generation {
    const wchar_t* option;
    const wchar_t* className;
};
constexpr Generation kGenerations[] = {{L"message-boxes.first", L"UIMessageBox"},
                                       {L"message-boxes.second", L"UIIMessageBox"}};

TEST_F(DialogPagesTest, AMessageBoxTellsTheButtonThatClosedIt)
{
    ShowPage(L"message-boxes");
    for (const auto& [option, className] : kGenerations) {
        Choose(option);
        for (const wchar_t* const type : {L"1", L"2", L"3", L"5", L"6"}) {
            SCOPED_TRACE(test::Utf8(std::wstring(className) + L" " + type));
            Choose((std::wstring(L"message-boxes.type.") + type).c_str());
            AnswerWith(L"btn_ok", L"message-boxes.open", className);
            EXPECT_EQ(Text(L"message-boxes.result"), "btn_ok: 1");
            AnswerWith(L"btn_cancel", L"message-boxes.open", className);
            EXPECT_EQ(Text(L"message-boxes.result"), "btn_cancel: 2");
            AnswerWith(L"btn_close", L"message-boxes.open", className);
            EXPECT_EQ(Text(L"message-boxes.result"), "btn_close: 8");
        }
        Choose(L"message-boxes.type.0");
        AnswerWith(L"btn_cancel", L"message-boxes.open", className);
        EXPECT_EQ(Text(L"message-boxes.result"), "btn_cancel: 2");
    }
}

TEST_F(DialogPagesTest, TheCheckBoxOfAMessageBoxIsShown)
{
    ShowPage(L"message-boxes");
    Choose(L"message-boxes.type.4");
    for (const auto& [option, className] : kGenerations) {
        Choose(option);
        InModal(L"message-boxes.open", className, [](HWND dialog) {
            ClickControl(dialog, L"checkbox_tip");
            ClickControl(dialog, L"btn_ok");
        });
        EXPECT_EQ(Text(L"message-boxes.result"), "btn_ok: 1  checkbox_tip: true");
        AnswerWith(L"btn_ok", L"message-boxes.open", className);
        EXPECT_EQ(Text(L"message-boxes.result"), "btn_ok: 1  checkbox_tip: false");
    }
}

TEST_F(DialogPagesTest, AMessageBoxHasTheTextsThatWereWritten)
{
    ShowPage(L"message-boxes");
    window.Manager().FindControl(L"message-boxes.caption")->SetText(L"My caption");
    window.Manager().FindControl(L"message-boxes.ok")->SetText(L"My OK");
    window.Manager().FindControl(L"message-boxes.cancel")->SetText(L"My cancel");
    for (const auto& [option, className] : kGenerations) {
        Choose(option);
        InModal(L"message-boxes.open", className, [](HWND dialog) {
            EXPECT_EQ(TextOf(dialog, L"lab_caption"), "My caption");
            EXPECT_EQ(TextOf(dialog, L"btn_ok"), "My OK");
            EXPECT_EQ(TextOf(dialog, L"btn_cancel"), "My cancel");
            EXPECT_TRUE(ControlOf(dialog, L"lab_caption")->IsVisible());
            ClickControl(dialog, L"btn_ok");
        });
    }
    Choose(L"message-boxes.with-caption", false);
    InModal(L"message-boxes.open", L"UIIMessageBox", [](HWND dialog) {
        EXPECT_FALSE(ControlOf(dialog, L"lab_caption")->IsVisible());
        ClickControl(dialog, L"btn_ok");
    });
}

TEST_F(DialogPagesTest, TheSampleCaptionFollowsTheLanguageAndAWrittenOneStays)
{
    ShowPage(L"message-boxes");
    window.SetLanguage(L"zh-CN");
    EXPECT_EQ(Text(L"message-boxes.caption"), "相册");
    window.Manager().FindControl(L"message-boxes.caption")->SetText(L"My caption");
    window.SetLanguage(L"de-DE");
    EXPECT_EQ(Text(L"message-boxes.caption"), "My caption");
}

TEST_F(DialogPagesTest, AMessageBoxHasTheScaleAndTheLanguageOfTheMainWindow)
{
    ShowPage(L"message-boxes");
    window.SetLanguage(L"de-DE");
    window.SetScale(150);
    Choose(L"message-boxes.second");
    InModal(L"message-boxes.open", L"UIIMessageBox", [](HWND dialog) {
        ExpectScale(dialog, 150);
        RECT place{};
        ::GetWindowRect(dialog, &place);
        EXPECT_EQ(place.right - place.left, 484 * 3 / 2);
        EXPECT_EQ(TextOf(dialog, L"btn_cancel"), "Abbrechen");
        ClickControl(dialog, L"btn_ok");
    });
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetScale(), 150u);
}

TEST_F(DialogPagesTest, AModelessMessageBoxStaysOpenUntilThePageIsLeft)
{
    ShowPage(L"message-boxes");
    Choose(L"message-boxes.modal", false);
    for (const auto& [option, className] : kGenerations) {
        Choose(option);
        Click(L"message-boxes.open");
        EXPECT_EQ(Text(L"message-boxes.result"), "PopMessageBox: 1");
        EXPECT_TRUE(::IsWindowVisible(Opened(className)));
    }
    LeavePage();
    for (const auto& generation : kGenerations)
        EXPECT_EQ(Opened(generation.className), nullptr);
}

TEST_F(DialogPagesTest, AModelessMessageBoxIsClosedByItsButton)
{
    ShowPage(L"message-boxes");
    Choose(L"message-boxes.modal", false);
    for (const auto& [option, className] : kGenerations) {
        Choose(option);
        Click(L"message-boxes.open");
        ClickControl(Opened(className), L"btn_ok");
        Pump();
        EXPECT_EQ(Opened(className), nullptr);
    }
}

TEST_F(DialogPagesTest, LeavingThePageClosesAModalDialog)
{
    ShowPage(L"message-boxes");
    InModal(L"message-boxes.open", L"UIMessageBox", [this](HWND) { LeavePage(); });
    EXPECT_TRUE(window.IsOpen());
}

TEST_F(DialogPagesTest, TheMainWindowMayCloseUnderAModalDialog)
{
    ShowPage(L"message-boxes");
    InModal(L"message-boxes.open", L"UIMessageBox",
            [this](HWND) { ::DestroyWindow(window.GetHWND()); });
    EXPECT_FALSE(window.IsOpen());
}

TEST_F(DialogPagesTest, TheToastStandsOverTheMainWindowUntilThePageIsLeft)
{
    ShowPage(L"notices");
    window.SetScale(150);
    Click(L"notices.toast");
    const HWND toast = Opened(L"UIInfoBox");
    ASSERT_TRUE(::IsWindowVisible(toast));
    ExpectScale(toast, 150);
    EXPECT_EQ(TextOf(toast, L"lab_text"), "Copied to the clipboard");
    RECT main{};
    RECT place{};
    ::GetWindowRect(window.GetHWND(), &main);
    ::GetWindowRect(toast, &place);
    EXPECT_EQ(place.top, main.bottom - 180);
    EXPECT_NEAR(place.left + place.right, main.left + main.right, 2);
    LeavePage();
    EXPECT_FALSE(::IsWindow(toast));
}

TEST_F(DialogPagesTest, ThePromptTellsTheButtonThatClosedIt)
{
    ShowPage(L"notices");
    AnswerWith(L"cancel", L"notices.prompt", L"PromptWnd");
    EXPECT_EQ(Text(L"notices.result"), "PromptWnd: 2");
    AnswerWith(L"close", L"notices.prompt", L"PromptWnd");
    EXPECT_EQ(Text(L"notices.result"), "PromptWnd: 8");
}

std::wstring g_parameters;
HINSTANCE WINAPI KeepParameters(HWND, LPCWSTR, LPCWSTR, LPCWSTR parameters, LPCWSTR, INT)
{
    g_parameters = parameters;
    return nullptr;
}

int g_folders;
HRESULT WINAPI CountFolder(PCIDLIST_ABSOLUTE, UINT, PCUITEMID_CHILD_ARRAY, DWORD)
{
    ++g_folders;
    return S_OK;
}

TEST_F(DialogPagesTest, TheFileNoticeShowsAFileThatIsThere)
{
    const test::ImportHook hook(L"Quillet.dll", "shell32.dll", "ShellExecuteW", &KeepParameters);
    ASSERT_TRUE(hook);
    ShowPage(L"notices");
    const std::wstring path = window.Manager().FindControl(L"notices.path")->GetText().GetData();
    EXPECT_TRUE(std::filesystem::exists(path));

    g_parameters.clear();
    AnswerWith(L"btn_ok", L"notices.contacts", L"UIViewContacts");
    EXPECT_TRUE(g_parameters.empty());
    AnswerWith(L"btn_ViewContacts", L"notices.contacts", L"UIViewContacts");
    EXPECT_EQ(g_parameters, L" /select, " + path);
    EXPECT_EQ(Text(L"notices.result"), "UIViewContacts: 1");
}

TEST_F(DialogPagesTest, TheFileIsShownByTheShell)
{
    const test::ImportHook hook(L"Quillet.dll", "shell32.dll", "SHOpenFolderAndSelectItems",
                                &CountFolder);
    ASSERT_TRUE(hook);
    ShowPage(L"notices");
    g_folders = 0;
    Click(L"notices.folder");
    EXPECT_EQ(g_folders, 1);
    EXPECT_EQ(Text(L"notices.result"), "ShowFileInFolder: true");
}

std::string FilesOfTheSkin()
{
    const std::filesystem::path folder = CPaintManagerUI::GetResourcePath().GetData();
    const auto isFile = [](const auto& entry) { return entry.is_regular_file(); };
    return std::to_string(
        std::ranges::count_if(std::filesystem::recursive_directory_iterator(folder), isFile));
}

TEST_F(DialogPagesTest, TheModalWaitingWindowShowsWhatItsWorkFound)
{
    ShowPage(L"loading");
    Click(L"loading.common");
    const std::string first = Text(L"loading.result");
    EXPECT_TRUE(first.starts_with("Files and checksum: " + FilesOfTheSkin() + ": ")) << first;
    const auto isAtTheEnd = [this] {
        return static_cast<CProgressUI*>(window.Manager().FindControl(L"loading.progress"))
                   ->GetValue() == 100;
    };
    EXPECT_TRUE(WaitUntil(isAtTheEnd));
    Click(L"loading.common");
    EXPECT_EQ(Text(L"loading.result"), first);
}

TEST_F(DialogPagesTest, TheModalWaitingWindowClosesWithoutWorkToo)
{
    ShowPage(L"loading");
    window.SetScale(150);
    InModal(L"loading.empty", L"Checking the files…",
            [](HWND dialog) { ExpectScale(dialog, 150); });
    EXPECT_EQ(Text(L"loading.result"), "Closed after a second");
}

TEST_F(DialogPagesTest, TheModalWaitingWindowMayBeClosedEarly)
{
    ShowPage(L"loading");
    InModal(L"loading.common", L"Checking the files…",
            [](HWND dialog) { ::SendMessageW(dialog, WM_CLOSE, 0, 0); });
    EXPECT_FALSE(Text(L"loading.result").empty());
}

TEST_F(DialogPagesTest, TheMainWindowMayCloseWhileTheModalWaitingWindowWorks)
{
    ShowPage(L"loading");
    InModal(L"loading.common", L"Checking the files…",
            [this](HWND) { ::DestroyWindow(window.GetHWND()); });
    EXPECT_FALSE(window.IsOpen());
}

TEST_F(DialogPagesTest, ThePageClosesTheWaitingWindowWhenTheWorkIsDone)
{
    ShowPage(L"loading");
    Click(L"loading.window");
    EXPECT_TRUE(::IsWindowVisible(Opened(L"LoadingWindow")));
    EXPECT_TRUE(WaitUntil([] { return !Opened(L"LoadingWindow"); }));
    const std::string result = Text(L"loading.result");
    EXPECT_TRUE(result.starts_with("Files and checksum: " + FilesOfTheSkin() + ": ")) << result;
}

TEST_F(DialogPagesTest, LeavingThePageStopsTheWorkAndClosesTheWaitingWindow)
{
    ShowPage(L"loading");
    Click(L"loading.window");
    LeavePage();
    EXPECT_EQ(Opened(L"LoadingWindow"), nullptr);
    ShowPage(L"loading");
    Pump();
    EXPECT_EQ(Text(L"loading.result"), "");
}

TEST_F(DialogPagesTest, OtherWorkClosesTheWaitingWindow)
{
    ShowPage(L"loading");
    Click(L"loading.window");
    Click(L"loading.common");
    EXPECT_EQ(Opened(L"LoadingWindow"), nullptr);
    EXPECT_TRUE(Text(L"loading.result").starts_with("Files and checksum: "));
}

TEST_F(DialogPagesTest, TheMainWindowMayCloseWhileTheWorkerRuns)
{
    ShowPage(L"loading");
    Click(L"loading.window");
    ::DestroyWindow(window.GetHWND());
    Pump();
    EXPECT_EQ(Opened(L"LoadingWindow"), nullptr);
}

constexpr const wchar_t* kQuestion = L"QuilletGalleryConfirmation";
constexpr const wchar_t* kDimLayer = L"QuilletGalleryDimLayer";

TEST_F(DialogPagesTest, TheAnswerIsShown)
{
    ShowPage(L"confirmation");
    AnswerWith(L"confirm", L"confirmation.open", kQuestion);
    EXPECT_EQ(Text(L"confirmation.result"), "IsConfirmation: true  m_nLineCount: 0");
    AnswerWith(L"reject", L"confirmation.open", kQuestion);
    EXPECT_EQ(Text(L"confirmation.result"), "IsConfirmation: false  m_nLineCount: 0");
    AnswerWith(L"close", L"confirmation.open", kQuestion);
    EXPECT_EQ(Text(L"confirmation.result"), "IsConfirmation: false  m_nLineCount: 0");
}

TEST_F(DialogPagesTest, TheQuestionHasTheScaleAndTheLanguageOfTheMainWindow)
{
    ShowPage(L"confirmation");
    window.SetLanguage(L"th-TH");
    window.SetScale(150);
    InModal(L"confirmation.open", kQuestion, [](HWND dialog) {
        ExpectScale(dialog, 150);
        EXPECT_EQ(TextOf(dialog, L"confirm"), "ลบ");
        ClickControl(dialog, L"confirm");
    });
}

TEST_F(DialogPagesTest, TheMainWindowIsDimmedWhileItIsAsked)
{
    ShowPage(L"confirmation");
    const auto expectLayer = [this](bool isThere) {
        InModal(L"confirmation.open", kQuestion, [this, isThere](HWND dialog) {
            const HWND layer = Opened(kDimLayer);
            EXPECT_EQ(layer != nullptr, isThere);
            RECT main{};
            RECT place{};
            ::GetWindowRect(window.GetHWND(), &main);
            ::GetWindowRect(layer, &place);
            EXPECT_EQ(::EqualRect(&place, &main) != FALSE, isThere);
            ClickControl(dialog, L"reject");
        });
        EXPECT_EQ(Opened(kDimLayer), nullptr);
    };
    expectLayer(true);
    Choose(L"confirmation.mask", false);
    expectLayer(false);
}

TEST_F(DialogPagesTest, TheLineLimitIsKeptAndTheLinesOfALinkAreCounted)
{
    ShowPage(L"confirmation");
    window.SetLanguage(L"de-DE");
    const auto breaksOf = [this](const wchar_t* limit) {
        Choose(limit);
        std::ptrdiff_t breaks = 0;
        InModal(L"confirmation.open", kQuestion, [&breaks](HWND dialog) {
            breaks = std::ranges::count(TextOf(dialog, L"content"), '\r');
            ClickControl(dialog, L"confirm");
        });
        return breaks;
    };
    EXPECT_EQ(breaksOf(L"confirmation.lines.1"), 0);
    EXPECT_EQ(breaksOf(L"confirmation.lines.2"), 1);
    EXPECT_GT(breaksOf(L"confirmation.lines.0"), 2);

    Choose(L"confirmation.link");
    InModal(L"confirmation.open", kQuestion, [](HWND dialog) {
        EXPECT_TRUE(TextOf(dialog, L"content").starts_with("<p>"));
        ClickControl(dialog, L"confirm");
    });
    const std::string result = Text(L"confirmation.result");
    EXPECT_GT(std::stoi(result.substr(result.rfind(' '))), 3) << result;
}

TEST_F(DialogPagesTest, TheMainWindowMayCloseUnderAQuestion)
{
    ShowPage(L"confirmation");
    InModal(L"confirmation.open", kQuestion, [this](HWND) { ::DestroyWindow(window.GetHWND()); });
    EXPECT_FALSE(window.IsOpen());
    EXPECT_EQ(Opened(kDimLayer), nullptr);
}

TEST_F(DialogPagesTest, ScenesLeaveNothing)
{
    for (const wchar_t* const name : kDialogPages) {
        SCOPED_TRACE(test::Utf8(name));
        ShowPage(name);
        auto& page = *window.ShownPage();
        test::ExpectNoGrowth(5, [&page] {
            for (int scene = 0; scene < page.Scenes(); ++scene) {
                page.OpenScene(scene);
                Pump();
                page.CloseScene();
                Pump();
            }
        });
    }
}

TEST_F(DialogPagesTest, DialogsLeaveNothing)
{
    ShowPage(L"message-boxes");
    test::ExpectNoGrowth(10, [this] {
        for (const auto& [option, className] : kGenerations) {
            Choose(option);
            AnswerWith(L"btn_ok", L"message-boxes.open", className);
        }
    });
    ShowPage(L"confirmation");
    test::ExpectNoGrowth(10, [this] { AnswerWith(L"confirm", L"confirmation.open", kQuestion); });
}

TEST_F(DialogPagesTest, AMainWindowThatClosesWhileItWorksLeavesNothing)
{
    ::DestroyWindow(window.GetHWND());
    test::ExpectNoGrowth(5, [] {
        gallery::GalleryWindow main(gallery::GalleryWindow::AtClose::Nothing);
        ASSERT_TRUE(main.Open(true));
        main.ShowPage(*std::ranges::find(gallery::Pages(), std::wstring_view(L"loading"),
                                         &gallery::PageEntry::name));
        main.Manager().FindControl(L"loading.window")->Activate();
        ::DestroyWindow(main.GetHWND());
        Pump();
        // What the worker has queued for the window that is gone.
        UIMainQueue::getInstance().finish();
    });
}

} // namespace
