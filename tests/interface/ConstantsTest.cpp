#include <UIlib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

using namespace DuiLib;

namespace {

#define TEXT_OF_THE_EXPANSION(macro) TEXT_OF(macro)
#define TEXT_OF(tokens) #tokens

// Names in the export table of a loaded module.
std::vector<std::string_view> ExportsOf(const wchar_t* module)
{
    const auto* const base = reinterpret_cast<const BYTE*>(::GetModuleHandleW(module));
    const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
    const auto& entry = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto& table =
        *reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
    const auto* const names = reinterpret_cast<const DWORD*>(base + table.AddressOfNames);
    std::vector<std::string_view> exports;
    for (DWORD i = 0; i < table.NumberOfNames; ++i)
        exports.emplace_back(reinterpret_cast<const char*>(base + names[i]));
    return exports;
}

int CountOf(const std::vector<std::string_view>& names, std::string_view part)
{
    return static_cast<int>(std::count_if(names.begin(), names.end(), [&](std::string_view name) {
        return name.find(part) != std::string_view::npos;
    }));
}

// Whatever the compiler: it exports everything by itself only as long as nothing is marked.
TEST(ExportTest, TheLibraryExportsItsClassesAndNothingElse)
{
    EXPECT_NE(std::string_view(TEXT_OF_THE_EXPANSION(UILIB_API)).find("dllimport"),
              std::string_view::npos);
    const auto exports = ExportsOf(L"DuiLib.dll");
    for (const char* const name : {"CControlUI", "CPaintManagerUI", "CDuiString", "CListUI"})
        EXPECT_GT(CountOf(exports, name), 10) << name;
    for (const char* const name : {"ReportFailure", "LoadResourceBytes", "ZipArchive"})
        EXPECT_EQ(CountOf(exports, name), 0) << name;
}

// Numbers that applications have in their own code and files.
static_assert(UIEVENT__FIRST == 1);
static_assert(UIEVENT__KEYBEGIN == 2);
static_assert(UIEVENT_KEYDOWN == 3);
static_assert(UIEVENT_KEYUP == 4);
static_assert(UIEVENT_CHAR == 5);
static_assert(UIEVENT_SYSKEY == 6);
static_assert(UIEVENT__KEYEND == 7);
static_assert(UIEVENT__MOUSEBEGIN == 8);
static_assert(UIEVENT_MOUSEMOVE == 9);
static_assert(UIEVENT_MOUSELEAVE == 10);
static_assert(UIEVENT_MOUSEENTER == 11);
static_assert(UIEVENT_MOUSEHOVER == 12);
static_assert(UIEVENT_BUTTONDOWN == 13);
static_assert(UIEVENT_BUTTONUP == 14);
static_assert(UIEVENT_RBUTTONDOWN == 15);
static_assert(UIEVENT_RBUTTONUP == 16);
static_assert(UIEVENT_MBUTTONDOWN == 17);
static_assert(UIEVENT_MBUTTONUP == 18);
static_assert(UIEVENT_DBLCLICK == 19);
static_assert(UIEVENT_CONTEXTMENU == 20);
static_assert(UIEVENT_SCROLLWHEEL == 21);
static_assert(UIEVENT__MOUSEEND == 22);
static_assert(UIEVENT_KILLFOCUS == 23);
static_assert(UIEVENT_SETFOCUS == 24);
static_assert(UIEVENT_WINDOWSIZE == 25);
static_assert(UIEVENT_SETCURSOR == 26);
static_assert(UIEVENT_TIMER == 27);
static_assert(UIEVENT__LAST == 28);
static_assert(UIFLAG_TABSTOP == 1);
static_assert(UIFLAG_SETCURSOR == 2);
static_assert(UIFLAG_WANTRETURN == 4);
static_assert(UIFIND_ALL == 0);
static_assert(UIFIND_VISIBLE == 1);
static_assert(UIFIND_ENABLED == 2);
static_assert(UIFIND_HITTEST == 4);
static_assert(UIFIND_UPDATETEST == 8);
static_assert(UIFIND_TOP_FIRST == 0x10);
static_assert(UIFIND_ME_FIRST == 0x80000000);
static_assert(UISTATE_FOCUSED == 1);
static_assert(UISTATE_SELECTED == 2);
static_assert(UISTATE_DISABLED == 4);
static_assert(UISTATE_HOT == 8);
static_assert(UISTATE_PUSHED == 0x10);
static_assert(UISTATE_READONLY == 0x20);
static_assert(UISTATE_CAPTURED == 0x40);
static_assert(UILIB_FILE == 1);
static_assert(UILIB_ZIP == 2);
static_assert(UILIB_RESOURCE == 3);
static_assert(UILIB_ZIPRESOURCE == 4);
static_assert(LT_LIST == 0);
static_assert(LT_COMBO == 1);
static_assert(LT_TREE == 2);
static_assert(LT_MENU == 3);
static_assert(XMLFILE_ENCODING_UTF8 == 0);
static_assert(XMLFILE_ENCODING_UNICODE == 1);
static_assert(XMLFILE_ENCODING_ASNI == 2);
static_assert(DUI_ARROW == 32512);
static_assert(DUI_IBEAM == 32513);
static_assert(DUI_WAIT == 32514);
static_assert(DUI_CROSS == 32515);
static_assert(DUI_UPARROW == 32516);
static_assert(DUI_SIZE == 32640);
static_assert(DUI_ICON == 32641);
static_assert(DUI_SIZENWSE == 32642);
static_assert(DUI_SIZENESW == 32643);
static_assert(DUI_SIZEWE == 32644);
static_assert(DUI_SIZENS == 32645);
static_assert(DUI_SIZEALL == 32646);
static_assert(DUI_NO == 32648);
static_assert(DUI_HAND == 32649);
static_assert(MAX_FONT_ID == 30000);
static_assert(CARET_TIMERID == 0x1999);
static_assert(UILIST_MAX_COLUMNS == 32);
static_assert(UIMSG_TRAYICON == WM_USER + 1);
static_assert(UIMSG_SET_DPI == WM_USER + 2);
static_assert(WM_MENUCLICK == WM_USER + 3);
static_assert(UIMSG_USER == WM_USER + 100);
static_assert(UIMSG_DRAG == WM_USER + 1000);
static_assert(UIMSG_DRAGENTER == WM_USER + 1002);
static_assert(UIMSG_DRAGLEAVE == WM_USER + 1003);
static_assert(UIMSG_DRAGOVER == WM_USER + 1004);
static_assert(UIMSG_DRAGRELEASE == WM_USER + 1005);
static_assert(UI_WNDSTYLE_CONTAINER == 0);
static_assert(UI_WNDSTYLE_FRAME == (WS_VISIBLE | WS_OVERLAPPEDWINDOW));
static_assert(UI_WNDSTYLE_CHILD == (WS_VISIBLE | WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN));
static_assert(UI_WNDSTYLE_DIALOG == (WS_VISIBLE | WS_POPUPWINDOW | WS_CAPTION | WS_DLGFRAME |
                                     WS_CLIPSIBLINGS | WS_CLIPCHILDREN));
static_assert(UI_WNDSTYLE_EX_FRAME == WS_EX_WINDOWEDGE);
static_assert(UI_WNDSTYLE_EX_DIALOG == (WS_EX_TOOLWINDOW | WS_EX_DLGMODALFRAME));
static_assert(UI_CLASSSTYLE_CONTAINER == 0);
static_assert(UI_CLASSSTYLE_FRAME == (CS_VREDRAW | CS_HREDRAW));
static_assert(UI_CLASSSTYLE_CHILD == (CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_SAVEBITS));
static_assert(UI_CLASSSTYLE_DIALOG == (CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_SAVEBITS));

TEST(InterfaceTest, NotificationTypesHaveTheirTexts)
{
    EXPECT_STREQ(DUI_MSGTYPE_MENU, L"menu");
    EXPECT_STREQ(DUI_MSGTYPE_LINK, L"link");
    EXPECT_STREQ(DUI_MSGTYPE_TIMER, L"timer");
    EXPECT_STREQ(DUI_MSGTYPE_CLICK, L"click");
    EXPECT_STREQ(DUI_MSGTYPE_DBCLICK, L"dbclick");
    EXPECT_STREQ(DUI_MSGTYPE_RETURN, L"return");
    EXPECT_STREQ(DUI_MSGTYPE_SCROLL, L"scroll");
    EXPECT_STREQ(DUI_MSGTYPE_PREDROPDOWN, L"predropdown");
    EXPECT_STREQ(DUI_MSGTYPE_DROPDOWN, L"dropdown");
    EXPECT_STREQ(DUI_MSGTYPE_SETFOCUS, L"setfocus");
    EXPECT_STREQ(DUI_MSGTYPE_KILLFOCUS, L"killfocus");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMCLICK, L"itemclick");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMRCLICK, L"itemrclick");
    EXPECT_STREQ(DUI_MSGTYPE_TABSELECT, L"tabselect");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMSELECT, L"itemselect");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMEXPAND, L"itemexpand");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMCOLLAPSE, L"itemcollapse");
    EXPECT_STREQ(DUI_MSGTYPE_WINDOWINIT, L"windowinit");
    EXPECT_STREQ(DUI_MSGTYPE_WINDOWSIZE, L"windowsize");
    EXPECT_STREQ(DUI_MSGTYPE_BUTTONDOWN, L"buttondown");
    EXPECT_STREQ(DUI_MSGTYPE_MOUSEENTER, L"mouseenter");
    EXPECT_STREQ(DUI_MSGTYPE_MOUSELEAVE, L"mouseleave");
    EXPECT_STREQ(DUI_MSGTYPE_TEXTCHANGED, L"textchanged");
    EXPECT_STREQ(DUI_MSGTYPE_HEADERCLICK, L"headerclick");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMDBCLICK, L"itemdbclick");
    EXPECT_STREQ(DUI_MSGTYPE_SHOWACTIVEX, L"showactivex");
    EXPECT_STREQ(DUI_MSGTYPE_ITEMACTIVATE, L"itemactivate");
    EXPECT_STREQ(DUI_MSGTYPE_VALUECHANGED, L"valuechanged");
    EXPECT_STREQ(DUI_MSGTYPE_VALUECHANGED_MOVE, L"movevaluechanged");
    EXPECT_STREQ(DUI_MSGTYPE_SELECTCHANGED, L"selectchanged");
    EXPECT_STREQ(DUI_MSGTYPE_UNSELECTED, L"unselected");
    EXPECT_STREQ(DUI_MSGTYPE_TREEITEMDBCLICK, L"treeitemdbclick");
    EXPECT_STREQ(DUI_MSGTYPE_CHECKCLICK, L"checkclick");
    EXPECT_STREQ(DUI_MSGTYPE_TEXTROLLEND, L"textrollend");
    EXPECT_STREQ(DUI_MSGTYPE_COLORCHANGED, L"colorchanged");
    EXPECT_STREQ(DUI_MSGTYPE_LISTITEMSELECT, L"listitemselect");
    EXPECT_STREQ(DUI_MSGTYPE_LISTITEMCHECKED, L"listitemchecked");
    EXPECT_STREQ(DUI_MSGTYPE_COMBOITEMSELECT, L"comboitemselect");
    EXPECT_STREQ(DUI_MSGTYPE_LISTHEADERCLICK, L"listheaderclick");
    EXPECT_STREQ(DUI_MSGTYPE_LISTHEADITEMCHECKED, L"listheaditemchecked");
    EXPECT_STREQ(DUI_MSGTYPE_LISTPAGECHANGED, L"listpagechanged");
    EXPECT_STREQ(DUI_MSGTYPE_PAGECHANED, L"page_selected_changed");
    EXPECT_STREQ(DUI_MSGTYPE_VKBACK, L"vk_back");
    EXPECT_STREQ(DUI_MSGTYPE_ESCAPE, L"escape");
}

TEST(InterfaceTest, ControlNamesHaveTheirTexts)
{
    EXPECT_STREQ(DUI_CTR_CONTROL, L"Control");
    EXPECT_STREQ(DUI_CTR_CONTAINER, L"Container");
    EXPECT_STREQ(DUI_CTR_BOX, L"Box");
    EXPECT_STREQ(DUI_CTR_VERTICALLAYOUT, L"VerticalLayout");
    EXPECT_STREQ(DUI_CTR_VBOX, L"VBox");
    EXPECT_STREQ(DUI_CTR_HORIZONTALLAYOUT, L"HorizontalLayout");
    EXPECT_STREQ(DUI_CTR_HBOX, L"HBox");
    EXPECT_STREQ(DUI_CTR_TABLAYOUT, L"TabLayout");
    EXPECT_STREQ(DUI_CTR_TAB_BOX, L"TabBox");
    EXPECT_STREQ(DUI_CTR_TILELAYOUT, L"TileLayout");
    EXPECT_STREQ(DUI_CTR_TILE_BOX, L"TileBox");
    EXPECT_STREQ(DUI_CTR_CHILDLAYOUT, L"ChildLayout");
    EXPECT_STREQ(DUI_CTR_CHILD_BOX, L"ChildBox");
    EXPECT_STREQ(DUI_CTR_LABEL, L"Label");
    EXPECT_STREQ(DUI_CTR_TEXT, L"Text");
    EXPECT_STREQ(DUI_CTR_BUTTON, L"Button");
    EXPECT_STREQ(DUI_CTR_OPTION, L"Option");
    EXPECT_STREQ(DUI_CTR_CHECKBOX, L"CheckBox");
    EXPECT_STREQ(DUI_CTR_EDIT, L"Edit");
    EXPECT_STREQ(DUI_CTR_PROGRESS, L"Progress");
    EXPECT_STREQ(DUI_CTR_SLIDER, L"Slider");
    EXPECT_STREQ(DUI_CTR_SCROLLBAR, L"ScrollBar");
    EXPECT_STREQ(DUI_CTR_COMBO, L"Combo");
    EXPECT_STREQ(DUI_CTR_LIST, L"List");
    EXPECT_STREQ(DUI_CTR_LISTHEADER, L"ListHeader");
    EXPECT_STREQ(DUI_CTR_LISTHEADERITEM, L"ListHeaderItem");
    EXPECT_STREQ(DUI_CTR_LISTLABELELEMENT, L"ListLabelElement");
    EXPECT_STREQ(DUI_CTR_LISTTEXTELEMENT, L"ListTextElement");
    EXPECT_STREQ(DUI_CTR_LISTCONTAINERELEMENT, L"ListContainerElement");
    EXPECT_STREQ(DUI_CTR_TREEVIEW, L"TreeView");
    EXPECT_STREQ(DUI_CTR_TREENODE, L"TreeNode");
    EXPECT_STREQ(DUI_CTR_MENU, L"Menu");
    EXPECT_STREQ(DUI_CTR_MENUELEMENT, L"MenuElement");
}

struct Made {
    const wchar_t* xmlName;
    const wchar_t* className;
};

// The class strings that the factory's controls answer.
TEST(InterfaceTest, TheFactoryMakesEachControlByName)
{
    constexpr Made kControls[] = {
        {L"Control", L"ControlUI"},
        {L"Container", L"ContainerUI"},
        {L"Box", L"ContainerUI"},
        {L"VerticalLayout", L"VerticalLayoutUI"},
        {L"VBox", L"VerticalLayoutUI"},
        {L"HorizontalLayout", L"HorizontalLayoutUI"},
        {L"HBox", L"HorizontalLayoutUI"},
        {L"TabLayout", L"TabLayoutUI"},
        {L"TabBox", L"TabLayoutUI"},
        {L"TileLayout", L"TileLayoutUI"},
        {L"TileBox", L"TileLayoutUI"},
        {L"ChildLayout", L"ChildLayoutUI"},
        {L"ChildBox", L"ChildLayoutUI"},
        {L"Label", L"LabelUI"},
        {L"Text", L"TextUI"},
        {L"Button", L"ButtonUI"},
        {L"Option", L"OptionUI"},
        {L"CheckBox", L"CheckBoxUI"},
        {L"Edit", L"EditUI"},
        {L"Progress", L"ProgressUI"},
        {L"Slider", L"SliderUI"},
        {L"ScrollBar", L"ScrollBarUI"},
        {L"Combo", L"ComboUI"},
        {L"List", L"ListUI"},
        {L"ListHeader", L"ListHeaderUI"},
        {L"ListHeaderItem", L"ListHeaderItemUI"},
        {L"ListLabelElement", L"ListLabelElementUI"},
        {L"ListTextElement", L"ListTextElementUI"},
        {L"ListContainerElement", L"ListContainerElementUI"},
        {L"TreeView", L"TreeViewUI"},
        {L"TreeNode", L"TreeNodeUI"},
        {L"Menu", L"MenuUI"},
        {L"MenuElement", L"MenuElementUI"},
    };
    for (const auto& [xmlName, className] : kControls) {
        SCOPED_TRACE(testing::Message() << "control " << xmlName);
        const CDuiString factoryName = CDuiString(L"C") + xmlName + L"UI";
        const std::unique_ptr<CControlUI> control(
            CControlFactory::GetInstance()->CreateControl(factoryName));
        ASSERT_TRUE(control);
        EXPECT_STREQ(control->GetClass(), className);
    }
}

template <class Control>
class MadeDirectlyTest : public testing::Test {
};

using Controls =
    testing::Types<CControlUI, CContainerUI, CVerticalLayoutUI, CHorizontalLayoutUI, CTabLayoutUI,
                   CTileLayoutUI, CChildLayoutUI, CLabelUI, CTextUI, CButtonUI, COptionUI,
                   CCheckBoxUI, CEditUI, CProgressUI, CSliderUI, CScrollBarUI, CComboUI, CListUI,
                   CListHeaderUI, CListHeaderItemUI, CListLabelElementUI, CListTextElementUI,
                   CListContainerElementUI, CTreeViewUI, CTreeNodeUI, CMenuUI, CMenuElementUI>;
TYPED_TEST_SUITE(MadeDirectlyTest, Controls);

TYPED_TEST(MadeDirectlyTest, AnApplicationMakesAndDeletesIt)
{
    static_assert(std::is_base_of_v<CControlUI, TypeParam>);
    const auto own = std::make_unique<TypeParam>();
    const std::unique_ptr<CControlUI> made(TypeParam::CreateControl());
    EXPECT_NE(dynamic_cast<TypeParam*>(made.get()), nullptr);
    EXPECT_STREQ(own->GetClass(), made->GetClass());
}

} // namespace
