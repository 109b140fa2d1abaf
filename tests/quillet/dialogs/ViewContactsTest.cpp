#include "support/ImportHook.h"
#include "tests/quillet/dialogs/Popups.h"

#include <gmock/gmock.h>

#include <shellapi.h>
#include <shlobj.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace DuiLib;
using test::ImportHook;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr wchar_t kControls[] =
    L"<Label name=\"lab_caption\" text=\"skin caption\" height=\"20\"/>"
    L"<Label name=\"lab_text\" text=\"skin text\" height=\"20\"/>"
    L"<Button name=\"btn_ViewContacts\" text=\"skin view\" height=\"20\"/>"
    L"<Button name=\"btn_ok\" text=\"skin ok\" height=\"20\"/>"
    L"<Button name=\"btn_close\" text=\"skin close\" height=\"20\"/>"
    L"<Button name=\"other\" height=\"20\"/>";

// What would be started.
class Starts {
public:
    Starts() : m_hook(L"Quillet.dll", "SHELL32.dll", "ShellExecuteW", &Starts::Execute)
    {
        all.clear();
        answer = 33;
        during = nullptr;
    }
    ~Starts() { during = nullptr; }
    explicit operator bool() const { return static_cast<bool>(m_hook); }

    struct Start {
        HWND window;
        std::wstring operation, file, parameters;
        LPCWSTR folder;
        INT show;
    };
    static inline std::vector<Start> all;
    static inline INT_PTR answer = 33;
    static inline std::function<void()> during;

private:
    static HINSTANCE WINAPI Execute(HWND window, LPCWSTR operation, LPCWSTR file,
                                    LPCWSTR parameters, LPCWSTR folder, INT show)
    {
        all.push_back({window, operation ? operation : L"(null)", file ? file : L"(null)",
                       parameters ? parameters : L"(null)", folder, show});
        if (during)
            during();
        return reinterpret_cast<HINSTANCE>(answer);
    }

    ImportHook m_hook;
};

class TestNotice : public UIViewContacts {
public:
    explicit TestNotice(std::wstring path = L"C:\\a.csv") : UIViewContacts(std::move(path)) {}
    ~TestNotice() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    HWND Make(HWND parent)
    {
        const HWND window = Create(parent, L"", WS_POPUP, 0, 0, 0, 0, 0);
        ShowWindow();
        return window;
    }

    using UIViewContacts::GetSkinFile;
    using UIViewContacts::m_hMainWnd;
    using UIViewContacts::m_hWnd;
    using UIViewContacts::m_strPath;
    using UIViewContacts::OnClickItem;

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

    std::vector<WPARAM> closings;
    bool initialised = false; // to the end

protected:
    void InitWindow() override
    {
        UIViewContacts::InitWindow();
        initialised = true;
    }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CLOSE)
            closings.push_back(wParam);
        return UIViewContacts::HandleMessage(message, wParam, lParam);
    }
};

class FleetingNotice : public TestNotice, public test::OutOfReachWhenDeleted {
    using TestNotice::TestNotice;
};

class ViewContactsTest : public test::PopupTest {
protected:
    ViewContactsTest() { skins.Write(L"ViewContacts.xml", test::DialogSkins::Skin(kControls)); }
    void SetUp() override { ASSERT_TRUE(static_cast<bool>(starts)); }

    Starts starts;
};

TEST_F(ViewContactsTest, ShowsTheFileByACommandLine)
{
    TestNotice notice(L"C:\\folder\\contacts.csv");
    test::ClickControl(notice.Make(owner), L"btn_ViewContacts");
    ASSERT_EQ(starts.all.size(), 1u);
    EXPECT_EQ(starts.all[0].window, nullptr);
    EXPECT_EQ(starts.all[0].operation, L"open");
    EXPECT_EQ(starts.all[0].file, L"Explorer.exe");
    EXPECT_EQ(starts.all[0].parameters, L" /select, C:\\folder\\contacts.csv");
    EXPECT_EQ(starts.all[0].folder, nullptr);
    EXPECT_EQ(starts.all[0].show, SW_SHOWDEFAULT);
}

// The path is not quoted; callers rely on the words as they stand.
TEST_F(ViewContactsTest, ThePathStandsUnquotedWhateverItIs)
{
    for (const wchar_t* const path :
         {L"C:\\with blanks\\my contacts.csv", L"C:\\a,b\\c,d.csv", L"", L"\"C:\\quoted.csv\"",
          L"C:\\联系人\\导出.csv", L"relative.csv", L" "}) {
        starts.all.clear();
        TestNotice notice(path);
        EXPECT_EQ(notice.m_strPath, path);
        test::ClickControl(notice.Make(owner), L"btn_ViewContacts");
        ASSERT_EQ(starts.all.size(), 1u);
        EXPECT_EQ(starts.all[0].parameters, std::wstring(L" /select, ") + path);
    }
}

// Whatever was clicked, and whether the file manager could be started or not.
TEST_F(ViewContactsTest, EveryButtonClosesWithOne)
{
    struct Case {
        const wchar_t* button;
        INT_PTR answer;
        std::size_t starts;
    };
    for (const Case& each :
         {Case{L"btn_close", 33, 0}, Case{L"btn_ok", 33, 0}, Case{L"btn_ViewContacts", 33, 1},
          Case{L"btn_ViewContacts", 2, 1}, Case{L"btn_ViewContacts", 0, 1}}) {
        SCOPED_TRACE(test::Utf8(each.button));
        starts.all.clear();
        starts.answer = each.answer;
        TestNotice notice;
        const HWND window = notice.Make(owner);
        test::ClickControl(window, each.button);
        EXPECT_EQ(starts.all.size(), each.starts);
        test::Pump();
        EXPECT_THAT(notice.closings, ElementsAre(1u));
        EXPECT_FALSE(::IsWindow(window));
    }
}

TEST_F(ViewContactsTest, AModalNoticeAnswersOne)
{
    for (const wchar_t* const button : {L"btn_close", L"btn_ok", L"btn_ViewContacts"}) {
        TestNotice notice;
        const HWND window = notice.Make(owner);
        actions.Post([&] { test::ClickControl(window, button); });
        EXPECT_EQ(notice.ShowModal(), 1u);
        EXPECT_TRUE(owner.IsEnabled());
    }
}

TEST_F(ViewContactsTest, StartsBeforeItCloses)
{
    TestNotice notice;
    const HWND window = notice.Make(owner);
    std::size_t closings = 1;
    starts.during = [&] {
        test::Pump();
        closings = notice.closings.size();
    };
    test::ClickControl(window, L"btn_ViewContacts");
    EXPECT_EQ(closings, 0u);
}

TEST_F(ViewContactsTest, NamesAreComparedWithoutCase)
{
    struct Case {
        const wchar_t* name;
        std::size_t starts;
    };
    for (const Case& each :
         {Case{L"btn_ViewContacts", 1}, Case{L"BTN_VIEWCONTACTS", 1}, Case{L"btn_viewcontacts", 1},
          Case{L"btn_ViewContacts2", 0}, Case{L"btn_ok", 0}, Case{L"btn_close", 0},
          Case{L"other", 0}, Case{L"", 0}}) {
        SCOPED_TRACE(test::Utf8(each.name));
        starts.all.clear();
        TestNotice notice;
        notice.Make(owner);
        EXPECT_FALSE(notice.Notify(L"click", each.name));
        EXPECT_EQ(starts.all.size(), each.starts);
        test::Pump();
        EXPECT_THAT(notice.closings, ElementsAre(1u));
    }
}

TEST_F(ViewContactsTest, ActsOnClicksOnly)
{
    TestNotice notice;
    const HWND window = notice.Make(owner);
    for (const wchar_t* const type : {L"windowinit", L"menu", L"Click", L"setfocus", L"timer", L""})
        EXPECT_FALSE(notice.Notify(type, L"btn_ViewContacts")) << test::Utf8(type);
    test::Pump();
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_THAT(starts.all, IsEmpty());
    EXPECT_THAT(notice.closings, IsEmpty());
}

TEST_F(ViewContactsTest, OtherControlsDoNothing)
{
    TestNotice notice;
    const HWND window = notice.Make(owner);
    test::ClickControl(window, L"other");
    test::Pump();
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_THAT(starts.all, IsEmpty());
}

TEST_F(ViewContactsTest, LeavesTheTextsToTheSkin)
{
    TestNotice notice;
    const HWND window = notice.Make(owner);
    EXPECT_EQ(test::ClassOf(window), L"UIViewContacts");
    EXPECT_STREQ(notice.GetSkinFile(), L"ViewContacts.xml");
    std::vector<std::wstring> texts;
    for (const wchar_t* const name :
         {L"lab_caption", L"lab_text", L"btn_ViewContacts", L"btn_ok", L"btn_close"})
        texts.push_back(test::TextOf(window, name));
    EXPECT_THAT(
        texts, ElementsAre(L"skin caption", L"skin text", L"skin view", L"skin ok", L"skin close"));
}

TEST_F(ViewContactsTest, ASkinWithoutItsControlsDoesNoHarm)
{
    skins.Write(L"ViewContacts.xml", test::DialogSkins::Skin(L""));
    TestNotice notice;
    EXPECT_NE(notice.Make(owner), nullptr);
    EXPECT_TRUE(notice.initialised);
}

TEST_F(ViewContactsTest, KeepsTheMainWindow)
{
    TestNotice notice;
    EXPECT_EQ(notice.m_hMainWnd, nullptr);
    notice.SetMainWnd(owner);
    EXPECT_EQ(notice.m_hMainWnd, owner.GetHWND());
    EXPECT_EQ(::GetWindow(notice.Make(nullptr), GW_OWNER), nullptr);
}

// Starting a program may dispatch messages.
TEST_F(ViewContactsTest, MayEndWhileTheFileManagerIsStarted)
{
    auto notice = std::make_unique<FleetingNotice>();
    const HWND window = notice->Make(owner);
    CButtonUI sender;
    sender.SetName(L"btn_ViewContacts");
    TNotifyUI click{};
    click.sType = DUI_MSGTYPE_CLICK;
    click.pSender = &sender;
    const HWND bystander = owner.GetHWND();
    starts.during = [&] {
        ::DestroyWindow(window);
        notice.reset();
    };
    EXPECT_FALSE(notice->OnClickItem(&click));
    EXPECT_EQ(notice, nullptr);
    test::Pump();
    EXPECT_TRUE(::IsWindow(bystander));
}

TEST_F(ViewContactsTest, ManyOpeningsLeaveNothingBehind)
{
    test::ExpectNoGrowth(500, [this] {
        TestNotice notice;
        const HWND window = notice.Make(owner);
        test::ControlOf<CButtonUI>(window, L"btn_ok")->Activate();
        test::Pump();
        ASSERT_FALSE(::IsWindow(window));
    });
}

// --- Showing a file without a command line ---

// The shell, as the library sees it. Calls are counted; what is not faked goes on to the system.
class FakeShell {
public:
    FakeShell()
    {
        order.clear();
        parsed.clear();
        opened.clear();
        freed.clear();
        lists.clear();
        entered.clear();
        left = 0;
        parseAnswer = openAnswer = S_OK;
        exists = true;
    }
    explicit operator bool() const
    {
        return m_attributes && m_parse && m_open && m_free && m_enter && m_leave;
    }

    struct Opening {
        const void* folder;
        UINT count;
        const void* children;
        DWORD flags;
    };
    static inline std::vector<std::string> order; // of the calls
    static inline std::vector<std::wstring> parsed;
    static inline std::vector<Opening> opened;
    static inline std::vector<void*> freed;
    static inline std::vector<void*> lists;     // that were given out
    static inline std::vector<HRESULT> entered; // answers to CoInitializeEx
    static inline int left = 0;
    static inline HRESULT parseAnswer = S_OK;
    static inline HRESULT openAnswer = S_OK;
    static inline bool exists = true;

private:
    static DWORD WINAPI Attributes(LPCWSTR path)
    {
        EXPECT_NE(path, nullptr);
        return exists ? FILE_ATTRIBUTE_ARCHIVE : INVALID_FILE_ATTRIBUTES;
    }
    static HRESULT WINAPI Parse(LPCWSTR name, IBindCtx* context, PIDLIST_ABSOLUTE* list,
                                SFGAOF asked, SFGAOF* flags)
    {
        EXPECT_EQ(context, nullptr);
        EXPECT_EQ(asked, 0u);
        EXPECT_EQ(flags, nullptr);
        order.push_back("parse");
        parsed.push_back(name);
        *list = nullptr;
        if (FAILED(parseAnswer))
            return parseAnswer;
        *list = static_cast<PIDLIST_ABSOLUTE>(::CoTaskMemAlloc(sizeof(USHORT)));
        (*list)->mkid.cb = 0;
        lists.push_back(*list);
        return parseAnswer;
    }
    static HRESULT WINAPI Open(PCIDLIST_ABSOLUTE folder, UINT count, PCUITEMID_CHILD_ARRAY children,
                               DWORD flags)
    {
        order.push_back("open");
        opened.push_back({folder, count, children, flags});
        return openAnswer;
    }
    static void WINAPI Free(PIDLIST_RELATIVE list)
    {
        order.push_back("free");
        freed.push_back(list);
        ::ILFree(list);
    }
    static HRESULT WINAPI Enter(LPVOID reserved, DWORD model)
    {
        EXPECT_EQ(reserved, nullptr);
        EXPECT_TRUE(model & COINIT_APARTMENTTHREADED);
        order.push_back("enter");
        entered.push_back(::CoInitializeEx(reserved, model));
        return entered.back();
    }
    static void WINAPI Leave()
    {
        order.push_back("leave");
        ++left;
        ::CoUninitialize();
    }

    ImportHook m_attributes{L"Quillet.dll", "KERNEL32.dll", "GetFileAttributesW",
                            &FakeShell::Attributes};
    ImportHook m_parse{L"Quillet.dll", "SHELL32.dll", "SHParseDisplayName", &FakeShell::Parse};
    ImportHook m_open{L"Quillet.dll", "SHELL32.dll", "SHOpenFolderAndSelectItems",
                      &FakeShell::Open};
    ImportHook m_free{L"Quillet.dll", "SHELL32.dll", "ILFree", &FakeShell::Free};
    ImportHook m_enter{L"Quillet.dll", "ole32.dll", "CoInitializeEx", &FakeShell::Enter};
    ImportHook m_leave{L"Quillet.dll", "ole32.dll", "CoUninitialize", &FakeShell::Leave};
};

// On a thread of its own, whose COM is as the test leaves it.
template <class Body>
void OnFreshThread(Body body)
{
    std::thread(body).join();
}

class ShowFileInFolderTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(static_cast<bool>(shell)); }

    FakeShell shell;
};

TEST_F(ShowFileInFolderTest, SelectsTheFileInItsFolder)
{
    OnFreshThread([] { EXPECT_TRUE(ShowFileInFolder(L"C:\\folder\\contacts.csv")); });
    EXPECT_THAT(shell.order, ElementsAre("enter", "parse", "open", "free", "leave"));
    EXPECT_THAT(shell.parsed, ElementsAre(L"C:\\folder\\contacts.csv"));
    ASSERT_EQ(shell.opened.size(), 1u);
    ASSERT_EQ(shell.lists.size(), 1u);
    EXPECT_EQ(shell.opened[0].folder, shell.lists[0]);
    EXPECT_EQ(shell.opened[0].count, 0u); // the item itself is to be selected
    EXPECT_EQ(shell.opened[0].children, nullptr);
    EXPECT_EQ(shell.opened[0].flags, 0u);
    EXPECT_EQ(shell.freed, shell.lists);
}

TEST_F(ShowFileInFolderTest, AnyNameReachesTheShellAsItIs)
{
    const std::wstring longPath =
        L"C:\\" + std::wstring(140, L'd') + L"\\" + std::wstring(152, L'f') + L".txt";
    ASSERT_EQ(longPath.size(), 300u);
    for (const std::wstring& path :
         {std::wstring(L"C:\\a,b,c.txt"), std::wstring(L"C:\\it's “quoted” `so`.txt"),
          std::wstring(L"C:\\ leading and  inner blanks .txt"), std::wstring(L"C:\\联系人.csv"),
          std::wstring(L"C:\\%TEMP% & ^more;$(x).txt"), longPath}) {
        shell.parsed.clear();
        EXPECT_TRUE(ShowFileInFolder(path));
        EXPECT_THAT(shell.parsed, ElementsAre(path));
    }
}

TEST_F(ShowFileInFolderTest, WithoutTheFileNothingIsAskedOfTheShell)
{
    shell.exists = false;
    EXPECT_FALSE(ShowFileInFolder(L"C:\\folder\\contacts.csv"));
    EXPECT_THAT(shell.parsed, IsEmpty());
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_THAT(shell.entered, IsEmpty());
    EXPECT_EQ(shell.left, 0);
}

TEST_F(ShowFileInFolderTest, ANameThatTheShellDoesNotTakeIsAFailure)
{
    for (const HRESULT answer : {E_INVALIDARG, E_FAIL, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)}) {
        shell.parsed.clear();
        shell.parseAnswer = answer;
        EXPECT_FALSE(ShowFileInFolder(L"C:\\contacts.csv"));
        EXPECT_THAT(shell.parsed, testing::SizeIs(1));
    }
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_THAT(shell.freed, IsEmpty());
    EXPECT_EQ(shell.left, 3);
}

TEST_F(ShowFileInFolderTest, AFileManagerThatDoesNotOpenIsAFailure)
{
    shell.openAnswer = E_FAIL;
    EXPECT_FALSE(ShowFileInFolder(L"C:\\contacts.csv"));
    EXPECT_EQ(shell.opened.size(), 1u);
    EXPECT_EQ(shell.freed, shell.lists);
    EXPECT_EQ(shell.freed.size(), 1u);
    EXPECT_EQ(shell.left, 1);
}

TEST_F(ShowFileInFolderTest, AThreadWithoutComHasItForTheCallOnly)
{
    OnFreshThread([] {
        EXPECT_TRUE(ShowFileInFolder(L"C:\\contacts.csv"));
        // Any model can be chosen now.
        EXPECT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        ::CoUninitialize();
    });
    EXPECT_THAT(shell.entered, ElementsAre(S_OK));
    EXPECT_EQ(shell.left, 1);
}

TEST_F(ShowFileInFolderTest, AThreadKeepsItsCom)
{
    struct Case {
        DWORD model;
        HRESULT entering;
        int left;
    };
    for (const Case& each : {Case{COINIT_APARTMENTTHREADED, S_FALSE, 1},
                             Case{COINIT_MULTITHREADED, RPC_E_CHANGED_MODE, 0}}) {
        SCOPED_TRACE(each.model);
        shell.parsed.clear();
        shell.freed.clear();
        shell.entered.clear();
        shell.left = 0;
        OnFreshThread([&each] {
            ASSERT_EQ(::CoInitializeEx(nullptr, each.model), S_OK);
            EXPECT_TRUE(ShowFileInFolder(L"C:\\contacts.csv"));
            EXPECT_EQ(::CoInitializeEx(nullptr, each.model), S_FALSE);
            ::CoUninitialize();
            ::CoUninitialize();
            // That was the last one.
            EXPECT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            ::CoUninitialize();
        });
        EXPECT_THAT(shell.entered, ElementsAre(each.entering));
        EXPECT_EQ(shell.left, each.left);
    }
}

// With the system's own names, but for the file manager.
TEST(ShowFileInFolderRealNamesTest, FindsFilesOfAnyName)
{
    struct Hook {
        static HRESULT WINAPI Open(PCIDLIST_ABSOLUTE folder, UINT, PCUITEMID_CHILD_ARRAY, DWORD)
        {
            wchar_t path[MAX_PATH]{};
            ::SHGetPathFromIDListW(folder, path);
            Shown() = path;
            return S_OK;
        }
        static std::wstring& Shown()
        {
            static std::wstring shown;
            return shown;
        }
    };
    const ImportHook hook(L"Quillet.dll", "SHELL32.dll", "SHOpenFolderAndSelectItems", &Hook::Open);
    const test::TempFolder folder;
    for (const wchar_t* const name :
         {L"plain.txt", L"a,b, c.txt", L"it's “quoted”.txt", L"two  blanks.txt", L"联系人.csv",
          L"no extension", L"%TEMP% & more;.txt"}) {
        SCOPED_TRACE(test::Utf8(name));
        const std::wstring path = folder.Write(name, "x");
        Hook::Shown().clear();
        OnFreshThread([&path] { EXPECT_TRUE(ShowFileInFolder(path)); });
        EXPECT_EQ(::CompareStringOrdinal(Hook::Shown().c_str(), -1, path.c_str(), -1, TRUE),
                  CSTR_EQUAL)
            << test::Utf8(Hook::Shown());
    }
    Hook::Shown().clear();
    EXPECT_FALSE(ShowFileInFolder(folder / L"missing.txt"));
    EXPECT_FALSE(ShowFileInFolder(L""));
    EXPECT_FALSE(ShowFileInFolder(L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"));
    EXPECT_EQ(Hook::Shown(), L"");
}

} // namespace
