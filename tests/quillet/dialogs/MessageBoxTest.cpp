#include "tests/quillet/dialogs/MessageBoxHost.h"

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

using MessageBoxTest = test::MessageBoxKit;

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

} // namespace
