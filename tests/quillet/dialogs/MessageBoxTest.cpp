#include "tests/quillet/dialogs/MessageBoxHost.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace DuiLib;
using test::BoxCall;
using test::BoxSkin;
using test::DialogParent;
using test::Generation;
using test::kGenerations;
using test::kNewer;
using test::kOlder;
using test::OpenBox;
using test::Script;
using test::ShownBox;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr DWORD kSkinOk = 0xFF010203;
constexpr DWORD kSkinCancel = 0xFF040506;
constexpr DWORD kCustomRed = 0xFFFA2A2C;

constexpr wchar_t kTexts[] = LR"(<Language>
<Text id="IDS_MAIN_PAGE_SettingsWindow_OK" value="Alright"/>
<Text id="IDS_MAIN_Inforation_Cancel" value="Back"/>
<Text id="IDS_GALLERT_BTN_DELETE" value="Erase"/>
<Text id="IDS_MAIN_PAGE_Close" value="Shut"/>
<Text id="IDS_GALLERT_Transfer_Clear" value="Empty it"/>
</Language>)";

// A box that is not modal, over a parent.
class MessageBoxTest : public test::MessageBoxKit {
protected:
    ShownBox Open(const Generation& generation, BoxCall call)
    {
        call.parent = parent;
        call.modal = false;
        EXPECT_EQ(generation.pop(call), 1u);
        return ShownBox::Over(parent);
    }
    static void Close(const ShownBox& box) { ::DestroyWindow(box.Window()); }

    // Opens a modal box over the parent and gives its code.
    unsigned Run(const Generation& generation, BoxCall call)
    {
        call.parent = parent;
        return generation.pop(call);
    }
    ShownBox Box() { return ShownBox::Over(parent); }

    DialogParent parent;
};

class EveryMessageBoxTest : public MessageBoxTest,
                            public testing::WithParamInterface<Generation> {};

INSTANTIATE_TEST_SUITE_P(Generations, EveryMessageBoxTest, testing::ValuesIn(kGenerations),
                         [](const auto& test) { return test.param.name; });

// Types

struct ButtonOfType {
    bool visible;
    DWORD colour;
    const wchar_t* text;     // as shown without a language file
    const wchar_t* fromFile; // and with one
};

struct TypeRow {
    unsigned type;
    ButtonOfType ok, cancel;
    bool checkRow;
};

constexpr const wchar_t* kOkId = L"IDS_MAIN_PAGE_SettingsWindow_OK";
constexpr const wchar_t* kCancelId = L"IDS_MAIN_Inforation_Cancel";

constexpr TypeRow kOlderTypes[] = {
    {0, {false, kSkinOk, L"skin ok", L"skin ok"}, {true, kSkinCancel, L"确定", L"确定"}, false},
    {1, {true, 0xFF0000FF, L"确定", L"确定"}, {true, 0xFF0000FF, L"取消", L"取消"}, false},
    {2, {true, 0xFFFF0000, L"删除", L"删除"}, {true, 0xFF0000FF, L"取消", L"取消"}, false},
    {3, {true, 0xFFFF0000, L"关闭", L"关闭"}, {true, 0xFF0000FF, L"取消", L"取消"}, false},
    {4, {true, 0xFF0000FF, L"确定", L"确定"}, {true, 0xFF0000FF, L"取消", L"取消"}, true},
    {5, {true, 0xFFFF0000, L"清空", L"清空"}, {true, 0xFF007DFF, L"取消", L"取消"}, false},
    {6, {true, 0xFF000000, L"取消", L"取消"}, {true, 0xFF007DFF, L"立即开始", L"立即开始"}, false},
    {7,
     {true, kSkinOk, L"skin ok", L"skin ok"},
     {true, kSkinCancel, L"skin cancel", L"skin cancel"},
     false},
    {4294967295u,
     {true, kSkinOk, L"skin ok", L"skin ok"},
     {true, kSkinCancel, L"skin cancel", L"skin cancel"},
     false},
};

constexpr TypeRow kNewerTypes[] = {
    {0, {false, kSkinOk, L"skin ok", L"skin ok"}, {true, kSkinCancel, kOkId, L"Alright"}, false},
    {1, {true, 0xFF00BFFF, kOkId, L"Alright"}, {true, 0xFF00BFFF, kCancelId, L"Back"}, false},
    {2,
     {true, 0xFFFA2A2C, L"IDS_GALLERT_BTN_DELETE", L"Erase"},
     {true, 0xFF00BFFF, kCancelId, L"Back"},
     false},
    {3,
     {true, 0xFFFA2A2C, L"IDS_MAIN_PAGE_Close", L"Shut"},
     {true, 0xFF00BFFF, kCancelId, L"Back"},
     false},
    {4, {true, 0xFF00BFFF, kOkId, L"Alright"}, {true, 0xFF00BFFF, kCancelId, L"Back"}, true},
    {5,
     {true, 0xFFFA2A2C, L"IDS_GALLERT_Transfer_Clear", L"Empty it"},
     {true, 0xFF007DFF, kCancelId, L"Back"},
     false},
    {6,
     {true, kSkinOk, L"skin ok", L"skin ok"},
     {true, kSkinCancel, L"skin cancel", L"skin cancel"},
     false},
    {7,
     {true, kSkinOk, L"skin ok", L"skin ok"},
     {true, kSkinCancel, L"skin cancel", L"skin cancel"},
     false},
    {4294967295u,
     {true, kSkinOk, L"skin ok", L"skin ok"},
     {true, kSkinCancel, L"skin cancel", L"skin cancel"},
     false},
};

class MessageBoxTypesTest : public MessageBoxTest {
protected:
    void ExpectButton(const ShownBox& box, const wchar_t* name, const ButtonOfType& button,
                      bool withFile)
    {
        SCOPED_TRACE(test::Utf8(name));
        EXPECT_EQ(box.IsVisible(name), button.visible);
        EXPECT_EQ(box.Colour(name), button.colour);
        EXPECT_EQ(box.Text(name), withFile ? button.fromFile : button.text);
    }
    template <std::size_t n>
    void ExpectTypes(const Generation& generation, const TypeRow (&rows)[n], bool withFile)
    {
        for (const TypeRow& row : rows) {
            SCOPED_TRACE(row.type);
            const ShownBox box = Open(generation, {.type = row.type});
            ExpectButton(box, L"btn_ok", row.ok, withFile);
            ExpectButton(box, L"btn_cancel", row.cancel, withFile);
            EXPECT_EQ(box.IsVisible(L"lab_tip"), row.checkRow);
            EXPECT_EQ(box.IsVisible(L"checkbox_tip"), row.checkRow);
            Close(box);
        }
    }
};

TEST_F(MessageBoxTypesTest, TheOlderOnesAreAlwaysChinese)
{
    ExpectTypes(kOlder, kOlderTypes, false);
    ASSERT_TRUE(CResourceManager::GetInstance()->LoadLanguage(kTexts));
    ExpectTypes(kOlder, kOlderTypes, true);
}

TEST_F(MessageBoxTypesTest, TheNewerOnesShowTheIdsWithoutALanguageFile)
{
    ExpectTypes(kNewer, kNewerTypes, false);
}

TEST_F(MessageBoxTypesTest, TheNewerOnesShowTheTextsOfTheLanguageFile)
{
    ASSERT_TRUE(CResourceManager::GetInstance()->LoadLanguage(kTexts));
    ExpectTypes(kNewer, kNewerTypes, true);
}

TEST_F(MessageBoxTypesTest, TextsOfTheLibrarysOwnResourceManagerAreNotUsed)
{
    auto* const library = CResourceManagerEx::GetInstance();
    ASSERT_TRUE(
        library->LoadLanguage(L"<L><Text id=\"IDS_MAIN_PAGE_Close\" value=\"wrong\"/></L>"));
    EXPECT_EQ(Open(kNewer, {.type = 3}).Text(L"btn_ok"), L"IDS_MAIN_PAGE_Close");
}

// Notes which ids are asked for.
struct IdRecorder : IQueryControlText {
    std::vector<std::wstring> ids;
    LPCTSTR QueryControlText(LPCTSTR id, LPCTSTR) override
    {
        ids.emplace_back(id);
        return nullptr;
    }
};

TEST_F(MessageBoxTypesTest, OnlyTheIdsOfTheTypeAreAskedFor)
{
    IdRecorder asked;
    CResourceManager::GetInstance()->SetTextQueryInterface(&asked);
    const auto idsOf = [&](const Generation& generation, unsigned type) {
        asked.ids.clear();
        Close(Open(generation, {.type = type}));
        return asked.ids;
    };
    EXPECT_THAT(idsOf(kNewer, 0), ElementsAre(kOkId));
    EXPECT_THAT(idsOf(kNewer, 1), ElementsAre(kOkId, kCancelId));
    EXPECT_THAT(idsOf(kNewer, 2), ElementsAre(L"IDS_GALLERT_BTN_DELETE", kCancelId));
    EXPECT_THAT(idsOf(kNewer, 3), ElementsAre(L"IDS_MAIN_PAGE_Close", kCancelId));
    EXPECT_THAT(idsOf(kNewer, 4), ElementsAre(kOkId, kCancelId));
    EXPECT_THAT(idsOf(kNewer, 5), ElementsAre(L"IDS_GALLERT_Transfer_Clear", kCancelId));
    EXPECT_THAT(idsOf(kNewer, 6), IsEmpty());
    EXPECT_THAT(idsOf(kNewer, 7), IsEmpty());
    for (unsigned type = 0; type < 8; ++type)
        EXPECT_THAT(idsOf(kOlder, type), IsEmpty());
    CResourceManager::GetInstance()->SetTextQueryInterface(nullptr);
}

TEST_F(MessageBoxTypesTest, TypeZeroShowsAHiddenCancelButtonAndOthersDoNot)
{
    UseSkin(test::Replaced(
        test::Replaced(BoxSkin(), L"name=\"btn_ok\"", L"visible=\"false\" name=\"btn_ok\""),
        L"name=\"btn_cancel\"", L"visible=\"false\" name=\"btn_cancel\""));
    for (const Generation& generation : kGenerations)
        for (const unsigned type : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u}) {
            SCOPED_TRACE(testing::Message() << generation.name << " " << type);
            const ShownBox box = Open(generation, {.type = type});
            EXPECT_FALSE(box.IsVisible(L"btn_ok"));
            EXPECT_EQ(box.IsVisible(L"btn_cancel"), type == 0);
            Close(box);
        }
}

TEST_F(MessageBoxTypesTest, TypeFourLeavesACheckBoxThatTheSkinHides)
{
    UseSkin(test::Replaced(BoxSkin(), L"name=\"lab_tip\"", L"visible=\"false\" name=\"lab_tip\""));
    for (const Generation& generation : kGenerations) {
        const ShownBox box = Open(generation, {.type = 4});
        EXPECT_FALSE(box.IsVisible(L"lab_tip"));
        EXPECT_TRUE(box.IsVisible(L"checkbox_tip"));
        Close(box);
    }
}

// Texts

TEST_F(MessageBoxTypesTest, TheOlderOneKeepsTheColourOfItsTypeWithTextsOfTheCaller)
{
    for (const TypeRow& row : kOlderTypes) {
        SCOPED_TRACE(row.type);
        const ShownBox box =
            Open(kOlder, {.ok = L"my ok", .cancel = L"my cancel", .type = row.type});
        ExpectButton(box, L"btn_ok", {row.ok.visible, row.ok.colour, L"my ok", L""}, false);
        ExpectButton(box, L"btn_cancel", {true, row.cancel.colour, L"my cancel", L""}, false);
        Close(box);
    }
}

TEST_F(MessageBoxTypesTest, AnOkTextOfTheCallerIsRedInTheNewerOneWhateverTheType)
{
    for (const TypeRow& row : kNewerTypes) {
        SCOPED_TRACE(row.type);
        const ShownBox box =
            Open(kNewer, {.ok = L"my ok", .cancel = L"my cancel", .type = row.type});
        ExpectButton(box, L"btn_ok", {row.ok.visible, kCustomRed, L"my ok", L""}, false);
        ExpectButton(box, L"btn_cancel", {true, row.cancel.colour, L"my cancel", L""}, false);
        Close(box);
    }
}

TEST_P(EveryMessageBoxTest, ShowsCaptionAndText)
{
    const ShownBox box = Open(GetParam(), {.caption = L"A caption", .text = L"A text"});
    EXPECT_EQ(box.Text(L"lab_caption"), L"A caption");
    EXPECT_EQ(box.Text(L"lab_text"), L"A text");
    EXPECT_EQ(box.Text(L"btn_close"), L"skin close");
    EXPECT_EQ(box.Text(L"lab_tip"), L"skin tip");
    EXPECT_EQ(box.Text(L"checkbox_tip"), L"skin check");
}

TEST_P(EveryMessageBoxTest, EmptyTextsLeaveThoseOfTheSkin)
{
    const ShownBox box = Open(GetParam(), {.type = 7});
    EXPECT_EQ(box.Text(L"lab_caption"), L"skin caption");
    EXPECT_EQ(box.Text(L"lab_text"), L"skin text");
    EXPECT_EQ(box.Text(L"btn_ok"), L"skin ok");
    EXPECT_EQ(box.Text(L"btn_cancel"), L"skin cancel");
    EXPECT_STREQ(box.Find(L"lab_text")->GetToolTip(), L"skin tip");
}

TEST_P(EveryMessageBoxTest, OneTextOfTheCallerLeavesTheOtherButtonToItsType)
{
    const std::wstring okOfType = Open(GetParam(), {.type = 1}).Text(L"btn_ok");
    Close(Box());
    ShownBox box = Open(GetParam(), {.cancel = L"no", .type = 1});
    EXPECT_EQ(box.Text(L"btn_ok"), okOfType);
    EXPECT_EQ(box.Text(L"btn_cancel"), L"no");
    Close(box);
    box = Open(GetParam(), {.ok = L"yes", .type = 0});
    EXPECT_EQ(box.Text(L"btn_ok"), L"yes");
    EXPECT_FALSE(box.IsVisible(L"btn_ok"));
    EXPECT_EQ(box.Text(L"btn_cancel"), okOfType);
    Close(box);
    EXPECT_EQ(Open(GetParam(), {.cancel = L"only", .type = 0}).Text(L"btn_cancel"), L"only");
}

TEST_F(MessageBoxTest, OnlyTheNewerOneHasItsTextAsTooltip)
{
    ShownBox box = Open(kOlder, {.text = L"A text"});
    EXPECT_STREQ(box.Find(L"lab_text")->GetToolTip(), L"skin tip");
    Close(box);
    box = Open(kNewer, {.text = L"A text"});
    EXPECT_STREQ(box.Find(L"lab_text")->GetToolTip(), L"A text");
}

TEST_F(MessageBoxTest, ALongTextIsBrokenInTheNewerOneOnlyAndItsTooltipNot)
{
    std::wstring text;
    for (int i = 0; i < 40; ++i)
        text += L"some words ";
    ShownBox box = Open(kOlder, {.text = text});
    EXPECT_EQ(box.Text(L"lab_text"), text);
    Close(box);
    box = Open(kNewer, {.text = text});
    const std::wstring shown = box.Text(L"lab_text");
    EXPECT_EQ(std::ranges::count(shown, L'\r'), 1);
    EXPECT_EQ(shown.size(), text.size() + 1);
    EXPECT_STREQ(box.Find(L"lab_text")->GetToolTip(), text.c_str());
}

TEST_P(EveryMessageBoxTest, WithoutCaptionThreeControlsAreHidden)
{
    for (const bool shown : {true, false}) {
        const ShownBox box = Open(GetParam(), {.caption = L"c", .type = 4, .showCaption = shown});
        for (const wchar_t* const name : {L"lab_caption", L"btn_close", L"lab_divide"})
            EXPECT_EQ(box.IsVisible(name), shown) << test::Utf8(name);
        for (const wchar_t* const name :
             {L"lab_text", L"lab_tip", L"checkbox_tip", L"btn_ok", L"btn_cancel"})
            EXPECT_TRUE(box.IsVisible(name)) << test::Utf8(name);
        EXPECT_EQ(box.Text(L"lab_caption"), L"c");
        Close(box);
    }
}

TEST_P(EveryMessageBoxTest, ACaptionThatTheSkinHidesStaysHidden)
{
    UseSkin(test::Replaced(BoxSkin(), L"name=\"lab_divide\"",
                           L"visible=\"false\" name=\"lab_divide\""));
    EXPECT_FALSE(Open(GetParam(), {.showCaption = true}).IsVisible(L"lab_divide"));
}

TEST_P(EveryMessageBoxTest, LivesWithASkinThatLacksAnyControl)
{
    for (const auto& part : test::kBoxParts) {
        SCOPED_TRACE(test::Utf8(part.name));
        UseSkin(BoxSkin({part.name}));
        for (const unsigned type : {0u, 1u, 4u, 6u, 7u})
            for (const bool caption : {true, false}) {
                const ShownBox box = Open(GetParam(), {.caption = L"caption",
                                                       .text = L"text",
                                                       .ok = L"ok",
                                                       .cancel = L"cancel",
                                                       .type = type,
                                                       .showCaption = caption});
                EXPECT_EQ(box.Find(part.name), nullptr);
                if (box.Find(L"btn_cancel")) {
                    EXPECT_EQ(box.Text(L"btn_cancel"), L"cancel");
                }
                Close(box);
            }
    }
}

TEST_P(EveryMessageBoxTest, LivesWithASkinThatLacksAllControls)
{
    UseSkin(L"<Window size=\"100,50\"><VerticalLayout/></Window>");
    for (unsigned type = 0; type < 8; ++type)
        Close(Open(GetParam(),
                   {.caption = L"c", .text = L"t", .ok = L"o", .cancel = L"x", .type = type}));
}

TEST_P(EveryMessageBoxTest, ControlsOfOtherClassesAreFilledAsFarAsTheyGo)
{
    UseSkin(
        L"<Window size=\"100,50\"><VerticalLayout><Control name=\"btn_ok\"/>"
        L"<Control name=\"lab_text\"/><Label name=\"checkbox_tip\"/></VerticalLayout></Window>");
    bool checked = true;
    const ShownBox box =
        Open(GetParam(), {.text = L"t", .ok = L"o", .type = 4, .checked = &checked});
    EXPECT_EQ(box.Text(L"btn_ok"), L"o");
    EXPECT_EQ(box.Text(L"lab_text"), L"t");
}

// The window

TEST_P(EveryMessageBoxTest, ABoxThatIsNotModalIsATopmostToolWindowOverItsParent)
{
    const HWND window = Open(GetParam(), {}).Window();
    wchar_t text[64]{};
    ::GetClassNameW(window, text, 64);
    EXPECT_STREQ(text, GetParam().windowClass);
    EXPECT_EQ(::GetWindowTextLengthW(window), 0);
    EXPECT_EQ(::GetWindow(window, GW_OWNER), parent.GetHWND());
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_TRUE(parent.IsEnabled());

    const LONG extended = ::GetWindowLongW(window, GWL_EXSTYLE);
    EXPECT_TRUE(extended & WS_EX_TOPMOST);
    EXPECT_TRUE(extended & WS_EX_TOOLWINDOW);
    const LONG style = ::GetWindowLongW(window, GWL_STYLE);
    EXPECT_TRUE(style & WS_POPUP);
    EXPECT_FALSE(style & WS_SYSMENU);
}

TEST_P(EveryMessageBoxTest, AModalBoxIsAPlainPopupThatDisablesItsParent)
{
    Script script{[&] {
        const HWND window = Box().Window();
        wchar_t text[64]{};
        ::GetClassNameW(window, text, 64);
        EXPECT_STREQ(text, GetParam().windowClass);
        EXPECT_EQ(::GetWindowTextLengthW(window), 0);
        EXPECT_EQ(::GetWindow(window, GW_OWNER), parent.GetHWND());
        EXPECT_TRUE(::IsWindowVisible(window));
        EXPECT_FALSE(parent.IsEnabled());

        const LONG extended = ::GetWindowLongW(window, GWL_EXSTYLE);
        EXPECT_FALSE(extended & (WS_EX_TOPMOST | WS_EX_TOOLWINDOW));
        const LONG style = ::GetWindowLongW(window, GWL_STYLE);
        constexpr DWORD kThere = WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_SYSMENU;
        EXPECT_EQ(style & kThere, kThere);
        EXPECT_NE(style & WS_CAPTION, LONG{WS_CAPTION});
        ::PostMessageW(window, WM_CLOSE, 0, 0);
    }};
    Run(GetParam(), {});
    EXPECT_TRUE(parent.IsEnabled());
}

CREATESTRUCTW g_created{};
std::wstring g_createdClass;

// Notes how boxes are created.
class CreationHook {
public:
    CreationHook() : m_hook(L"DuiLib.dll", "user32.dll", "CreateWindowExW", &CreationHook::Create)
    {
        Original() = m_hook.Original<decltype(::CreateWindowExW)>();
    }

private:
    using Function = decltype(::CreateWindowExW);
    static Function*& Original()
    {
        static Function* original = nullptr;
        return original;
    }
    static HWND WINAPI Create(DWORD extended, LPCWSTR name, LPCWSTR title, DWORD style, int x,
                              int y, int width, int height, HWND parent, HMENU menu,
                              HINSTANCE instance, void* parameter)
    {
        if (ULONG_PTR(name) > 0xFFFF && std::wstring_view(name).ends_with(L"MessageBox")) {
            g_createdClass = name;
            g_created = {parameter, instance, menu,        parent, height, width,
                         y,         x,        LONG(style), title,  name,   extended};
        }
        return Original()(extended, name, title, style, x, y, width, height, parent, menu, instance,
                          parameter);
    }

    test::ImportHook m_hook;
};

TEST_P(EveryMessageBoxTest, IsCreatedWithItsExactStyles)
{
    const CreationHook hook;
    Close(Open(GetParam(), {}));
    EXPECT_EQ(g_createdClass, GetParam().windowClass);
    EXPECT_EQ(DWORD(g_created.style), WS_POPUP);
    EXPECT_EQ(g_created.dwExStyle, DWORD{WS_EX_TOPMOST | WS_EX_TOOLWINDOW});
    EXPECT_EQ(g_created.lpszName, nullptr);
    EXPECT_EQ(g_created.hwndParent, parent.GetHWND());

    Script script{[&] { ::DestroyWindow(Box().Window()); }};
    Run(GetParam(), {});
    EXPECT_EQ(DWORD(g_created.style),
              WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU);
    EXPECT_EQ(g_created.dwExStyle, DWORD{WS_EX_WINDOWEDGE});
    EXPECT_EQ(g_created.lpszName, nullptr);
    EXPECT_EQ(g_created.hwndParent, parent.GetHWND());
    EXPECT_EQ(g_created.x | g_created.y | g_created.cx | g_created.cy, 0);
}

TEST_P(EveryMessageBoxTest, StandsInTheMiddleOfItsParent)
{
    const auto expectCentred = [&](HWND window) {
        RECT box{};
        RECT owner{};
        ::GetWindowRect(window, &box);
        ::GetWindowRect(parent, &owner);
        EXPECT_EQ(box.right - box.left, 440);
        EXPECT_NEAR(box.left + box.right, owner.left + owner.right, 1);
    };
    ::MoveWindow(parent, 100, 100, 600, 400, FALSE);
    const ShownBox box = Open(GetParam(), {});
    expectCentred(box.Window());
    Close(box);
    Script script{[&] {
        expectCentred(Box().Window());
        ::DestroyWindow(Box().Window());
    }};
    Run(GetParam(), {});
}

TEST_P(EveryMessageBoxTest, NeedsNoParent)
{
    Script script{[] {
        ASSERT_EQ(ShownBox::All().size(), 1u);
        ShownBox::All()[0].Click(L"btn_ok");
    }};
    EXPECT_EQ(GetParam().pop({}), 1u);
}

template <class Box>
void ExpectMembers(const wchar_t* skinFile, const wchar_t* windowClass)
{
    bool checked = false;
    const auto someone = reinterpret_cast<HWND>(INT_PTR{4711});
    OpenBox<Box> box({.parent = someone,
                      .caption = L"1",
                      .text = L"2",
                      .ok = L"3",
                      .cancel = L"4",
                      .type = 5,
                      .checked = &checked,
                      .showCaption = false,
                      .modal = true});
    EXPECT_EQ(box.m_hParent, someone);
    EXPECT_EQ(box.m_strCaption + box.m_strText + box.m_strOkText + box.m_strCancelText, L"1234");
    EXPECT_EQ(box.m_nType, 5u);
    EXPECT_EQ(box.m_pbChecked, &checked);
    EXPECT_FALSE(box.m_bShowCaption);
    EXPECT_TRUE(box.m_bModal);
    EXPECT_STREQ(box.GetSkinFile(), skinFile);
    EXPECT_STREQ(box.GetWindowClassName(), windowClass);
    EXPECT_FALSE(OpenBox<Box>({.modal = false, .forceModal = true}).m_bModal);
}

TEST_F(MessageBoxTest, KeepsWhatItIsMadeWith)
{
    ExpectMembers<UIMessageBox>(L"MessageBox.xml", L"UIMessageBox");
    ExpectMembers<UIIMessageBox>(L"MessageBox02.xml", L"UIIMessageBox");
}

TEST_P(EveryMessageBoxTest, TheWindowStandsOverTheParentOfTheCallAndNotOverTheStoredOne)
{
    const DialogParent other;
    HWND owner = nullptr;
    const auto open = [&](auto* box) {
        box->RunModeless(box, other);
        owner = ::GetWindow(box->GetHWND(), GW_OWNER);
        ::DestroyWindow(box->GetHWND());
    };
    if (GetParam().pop == kOlder.pop) {
        open(new OpenBox<UIMessageBox>({.parent = parent}));
    } else {
        auto* const box = new OpenBox<UIIMessageBox>({.parent = parent});
        open(box);
        delete box;
    }
    EXPECT_EQ(owner, other.GetHWND());
}

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

class MessageBoxEndingTest : public MessageBoxTest, public testing::WithParamInterface<EndingOf> {};

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

TEST_P(EveryMessageBoxTest, TheOneButtonOfTypeZeroGivesTwo)
{
    Script script{[&] {
        EXPECT_FALSE(Box().IsVisible(L"btn_ok"));
        Box().Click(L"btn_cancel");
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 0}), 2u);
}

TEST_P(EveryMessageBoxTest, EnterAndEscapeDoNotCloseABoxWithoutAFocusedButton)
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

TEST_P(EveryMessageBoxTest, TheEndOfTheProgramEndsItAndGoesOn)
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

TEST_P(EveryMessageBoxTest, NamesAreComparedWithoutCase)
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

TEST_P(EveryMessageBoxTest, AnyOtherControlGivesOne)
{
    for (const wchar_t* const name :
         {L"", L"btn_other", L"btn_cancel2", L"cancel", L"close", L"closebtn", L"checkbox_tip"})
        EXPECT_EQ(CodeOfClick(GetParam(), name), 1) << test::Utf8(name);
}

TEST_P(EveryMessageBoxTest, OnlyClicksCount)
{
    for (const wchar_t* const type :
         {L"", L"Click", L"CLICK", L"click2", L"buttondown", L"selectchanged", L"timer"}) {
        SCOPED_TRACE(test::Utf8(type));
        bool checked = false;
        EXPECT_EQ(CodeOfClick(GetParam(), L"btn_ok", type, &checked), -1);
        EXPECT_FALSE(checked);
    }
}

TEST_P(EveryMessageBoxTest, AControlThatASubclassWiresGivesOne)
{
    unsigned code = 0;
    Script script{[&] { Box().Click(L"btn_other"); }};
    code = GetParam().pop == kOlder.pop
               ? OpenBox<UIMessageBox>::RunModal(new OpenBox<UIMessageBox>({}), parent)
               : OpenBox<UIIMessageBox>::RunModal(new OpenBox<UIIMessageBox>({}), parent);
    EXPECT_EQ(code, 1u);
}

TEST_P(EveryMessageBoxTest, NothingElseIsWired)
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

TEST_P(EveryMessageBoxTest, EveryButtonWritesTheCheckBoxAlsoClose)
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

TEST_P(EveryMessageBoxTest, AHiddenCheckBoxIsWrittenToo)
{
    for (const unsigned type : {0u, 1u, 7u}) {
        bool checked = true;
        Script script{[&] { Box().Click(L"btn_cancel"); }};
        Run(GetParam(), {.type = type, .checked = &checked});
        EXPECT_FALSE(checked);
    }
}

TEST_P(EveryMessageBoxTest, AnEndWithoutAButtonWritesNothing)
{
    bool checked = false;
    Script script{[&] {
        Box().Check(true);
        ::PostMessageW(Box().Window(), WM_CLOSE, 1, 0);
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = &checked}), 1u);
    EXPECT_FALSE(checked);
}

TEST_P(EveryMessageBoxTest, WithoutACheckBoxNothingIsWritten)
{
    UseSkin(BoxSkin({L"checkbox_tip"}));
    for (const bool state : {true, false}) {
        bool checked = state;
        Script script{[&] { Box().Click(L"btn_ok"); }};
        EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = &checked}), 1u);
        EXPECT_EQ(checked, state);
    }
}

TEST_P(EveryMessageBoxTest, NobodyHasToAskForTheCheckBox)
{
    Script script{[&] {
        Box().Check(true);
        Box().Click(L"btn_ok");
    }};
    EXPECT_EQ(Run(GetParam(), {.type = 4, .checked = nullptr}), 1u);
}

// Modal or not

TEST_P(EveryMessageBoxTest, EitherFlagMakesItModal)
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

TEST_P(EveryMessageBoxTest, ABoxThatIsNotModalGivesOneAtOnceWhateverIsClickedLater)
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

TEST_P(EveryMessageBoxTest, ABoxThatIsNotModalEndsWithItsParent)
{
    const ShownBox box = Open(GetParam(), {});
    parent.Destroy();
    EXPECT_FALSE(box.IsOpen());
}

// Several

TEST_P(EveryMessageBoxTest, NestedBoxesGiveTheirParentsBackFromTheInnermostOutward)
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

TEST_P(EveryMessageBoxTest, TheParentOfTwoBoxesStaysDisabledUntilBothHaveClosed)
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

TEST_P(EveryMessageBoxTest, AnOuterBoxThatIsClosedFirstTakesTheInnerOneWithIt)
{
    unsigned inner = 77;
    Script script{[&] { inner = GetParam().pop({.parent = Box().Window()}); },
                  [&] { ::PostMessageW(Box().Window(), WM_CLOSE, 5, 0); }};
    EXPECT_EQ(Run(GetParam(), {}), 5u);
    EXPECT_EQ(inner, 0u);
    EXPECT_TRUE(parent.IsEnabled());
    EXPECT_EQ(Objects(), 0);
}

TEST_P(EveryMessageBoxTest, BothGenerationsNest)
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

TEST_P(EveryMessageBoxTest, TwoThatAreNotModalStandBesideEachOther)
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

class OpenedFromTest : public EveryMessageBoxTest {
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
