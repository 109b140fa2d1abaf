#include "duilib/Control/MenuKit.h"
#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/DebugOutput.h"
#include "support/ObjectCounters.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace DuiLib;
using test::ClickOn;
using test::ControlHost;
using test::MenuClock;
using test::MenuCommands;
using test::OpenMenus;
using test::PlaceOf;
using test::PointAt;
using test::PressKey;
using test::WorkArea;

namespace {

constexpr wchar_t kSkin[] = LR"(<Window><Menu name="menu">
    <MenuElement name="open" text="&amp;Open" userdata="data of open"/>
    <MenuElement name="off" text="Off" enabled="false"/>
    <MenuElement linetype="true"/>
    <MenuElement name="recent" text="&amp;Recent">
      <MenuElement name="a" text="a.txt"/>
      <MenuElement name="more" text="More">
        <MenuElement name="deep" text="deep.txt"/>
      </MenuElement>
      <MenuElement name="b" text="b.txt"/>
    </MenuElement>
    <MenuElement name="check" text="Check" checkitem="true"/>
    <MenuElement name="close" text="Close" shortcut="x"/>
  </Menu></Window>)";

// A delegate target that counts its calls.
struct CallCounter {
    bool Count(void*)
    {
        ++calls;
        return true;
    }
    bool CountClick(void* notification)
    {
        calls += static_cast<TNotifyUI*>(notification)->sType == DUI_MSGTYPE_CLICK ? 1 : 0;
        return true;
    }
    int calls = 0;
};

class MenuTest : public testing::Test {
protected:
    ~MenuTest() override
    {
        for (CMenuWnd* const menu : OpenMenus())
            menu->Close();
        host.Pump();
        CMenuWnd::DestroyMenu();
    }

    CMenuWnd* Open(const wchar_t* skin = kSkin, POINT point = {100, 100},
                   DWORD alignment = eMenuAlignment_Left | eMenuAlignment_Top,
                   CStdStringPtrMap* states = nullptr)
    {
        CMenuWnd* const menu =
            CMenuWnd::CreateMenu(nullptr, skin, point, &host.Manager(), states, alignment);
        if (menu)
            ::UpdateWindow(menu->GetHWND());
        return menu;
    }

    static CMenuElementUI& Find(CMenuWnd* menu, const wchar_t* name)
    {
        return *static_cast<CMenuElementUI*>(menu->m_pm.FindControl(name));
    }

    // The name of the element that the keyboard is on in the menu opened last.
    static std::wstring Current()
    {
        CMenuUI& menu = *OpenMenus().back()->GetMenuUI();
        CControlUI* const element = menu.GetItemAt(menu.GetCurSel());
        return element ? element->GetName().GetData() : L"";
    }

    static void Press(int key) { PressKey(OpenMenus().front()->GetHWND(), key); }
    static void Type(wchar_t character)
    {
        PressKey(OpenMenus().front()->GetHWND(), character, WM_CHAR);
    }

    ControlHost host{200, 100};
    MenuCommands commands{host.Manager()};
};

TEST_F(MenuTest, OpensWithItsCornerAtThePoint)
{
    CMenuWnd* const menu = Open();
    ASSERT_NE(menu, nullptr);
    const RECT place = PlaceOf(menu->GetHWND());
    EXPECT_EQ(place.left, 100);
    EXPECT_EQ(place.top, 100);
    const SIZE wanted = menu->GetMenuUI()->EstimateSize({2000, 2000});
    EXPECT_EQ(place.right - place.left, wanted.cx);
    EXPECT_EQ(place.bottom - place.top, wanted.cy);
    EXPECT_EQ(place.bottom - place.top, 5 * 30 + 6 + 8);
    EXPECT_TRUE(::IsWindowVisible(menu->GetHWND()));
    EXPECT_STREQ(menu->GetWindowClassName(), L"DuiMenuWnd");
    EXPECT_EQ(menu->GetMenuUI()->m_pWindow, menu);
    EXPECT_EQ(menu->m_pLayout, menu->GetMenuUI());
    EXPECT_EQ(menu->m_pOwner, nullptr);
    EXPECT_EQ(menu->m_BasedPoint.x, 100);
    EXPECT_FALSE(menu->isClosing);
    EXPECT_EQ(::GetFocus(), menu->GetHWND());
    EXPECT_TRUE(commands.looksActive);
}

TEST_F(MenuTest, HangsToTheOtherSideOfThePoint)
{
    CMenuWnd* const menu = Open(kSkin, {500, 400}, eMenuAlignment_Right | eMenuAlignment_Bottom);
    EXPECT_EQ(PlaceOf(menu->GetHWND()).right, 500);
    EXPECT_EQ(PlaceOf(menu->GetHWND()).bottom, 400);
}

TEST_F(MenuTest, TurnsAroundAtTheEdgesOfTheMonitor)
{
    const RECT area = WorkArea();
    const RECT place = PlaceOf(Open(kSkin, {area.right - 20, area.bottom - 20})->GetHWND());
    EXPECT_EQ(place.right, area.right - 20);
    EXPECT_EQ(place.bottom, area.bottom - 20);
}

TEST_F(MenuTest, StaysOnTheMonitor)
{
    const RECT area = WorkArea();
    const struct {
        POINT point;
        DWORD alignment;
    } rows[] = {
        {{area.left - 500, area.top - 500}, eMenuAlignment_Left | eMenuAlignment_Top},
        {{area.right + 900, area.bottom + 900}, eMenuAlignment_Left | eMenuAlignment_Top},
        {{area.left + 5, area.top + 5}, eMenuAlignment_Right | eMenuAlignment_Bottom},
        {{area.right + 900, 50}, eMenuAlignment_Right | eMenuAlignment_Top},
    };
    for (const auto& row : rows) {
        const RECT place = PlaceOf(Open(kSkin, row.point, row.alignment)->GetHWND());
        EXPECT_GE(place.left, area.left);
        EXPECT_GE(place.top, area.top);
        EXPECT_LE(place.right, area.right);
        EXPECT_LE(place.bottom, area.bottom);
    }
}

TEST_F(MenuTest, AMenuHigherThanTheMonitorScrolls)
{
    std::wstring skin = L"<Window><Menu>";
    for (int i = 0; i < 100; ++i)
        skin += L"<MenuElement text=\"x\"/>";
    skin += L"</Menu></Window>";
    CMenuWnd* const menu = Open(skin.c_str());
    const RECT area = WorkArea();
    EXPECT_EQ(PlaceOf(menu->GetHWND()).top, area.top);
    EXPECT_EQ(PlaceOf(menu->GetHWND()).bottom, area.bottom);
    Press(VK_END);
    EXPECT_GT(menu->GetMenuUI()->GetScrollPos().cy, 1000);
}

TEST_F(MenuTest, HasTheScaleAndTheFontOfItsWindow)
{
    ControlHost large{200, 100, 144};
    large.Manager().SetDefaultFont(L"Arial", 21, true, false, false, false);
    CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, {10, 10}, &large.Manager());
    EXPECT_EQ(menu->m_pm.GetDPIObj()->GetDPI(), 144u);
    EXPECT_EQ(menu->m_pm.GetDefaultFontInfo()->iSize, 21);
    const RECT place = PlaceOf(menu->GetHWND());
    EXPECT_EQ(place.bottom - place.top, 5 * 45 + 9 + 12);
    menu->setDPI(192);
    EXPECT_EQ(PlaceOf(menu->GetHWND()).bottom - PlaceOf(menu->GetHWND()).top, 5 * 60 + 12 + 16);
    menu->Close();
    host.Pump();
}

TEST_F(MenuTest, AClickPostsTheCommandAndClosesTheMenu)
{
    CMenuWnd* const menu = Open();
    CMenuElementUI& element = Find(menu, L"open");
    std::wstring textOnArrival;
    commands.onCommand = [&] { textOnArrival = commands.received.back().element->GetText(); };
    ClickOn(element);
    host.Pump();
    ASSERT_EQ(commands.received.size(), 1u);
    const auto& received = commands.received[0];
    EXPECT_STREQ(received.command->szName, L"open");
    EXPECT_STREQ(received.command->szUserData, L"data of open");
    EXPECT_STREQ(received.command->szText, L"&Open");
    EXPECT_TRUE(received.command->bChecked);
    EXPECT_EQ(received.element, &element);
    EXPECT_EQ(textOnArrival, L"&Open") << "the element still lives";
    EXPECT_TRUE(OpenMenus().empty());
}

TEST_F(MenuTest, LongTextsAreCutInTheCommand)
{
    const std::wstring name(400, L'n');
    const std::wstring data(1500, L'd');
    const std::wstring text(1500, L't');
    const std::wstring skin = L"<Window><Menu width=\"100\"><MenuElement name=\"" + name +
                              L"\" userdata=\"" + data + L"\" text=\"" + text +
                              L"\"/></Menu></Window>";
    CMenuWnd* const menu = Open(skin.c_str());
    ClickOn(*menu->GetMenuUI()->GetItemAt(0));
    host.Pump();
    ASSERT_EQ(commands.received.size(), 1u);
    const MenuCmd& command = *commands.received[0].command;
    EXPECT_EQ(std::wstring(command.szName), name.substr(0, 255));
    EXPECT_EQ(std::wstring(command.szUserData), data.substr(0, 1023));
    EXPECT_EQ(std::wstring(command.szText), text.substr(0, 1023));
}

TEST_F(MenuTest, AReleaseBesideTheElementOrOnADisabledOneChoosesNothing)
{
    CMenuWnd* const menu = Open();
    ClickOn(Find(menu, L"off"));
    const HWND window = menu->GetHWND();
    const RECT& place = Find(menu, L"open").GetPos();
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(place.left + 5, place.top + 5));
    EXPECT_TRUE(menu->m_bCaptured);
    ::SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(place.left + 5, place.bottom + 5));
    EXPECT_FALSE(menu->m_bCaptured);
    host.Pump();
    EXPECT_TRUE(commands.received.empty());
    EXPECT_EQ(OpenMenus().size(), 1u);
}

TEST_F(MenuTest, CheckStatesAreKeptFromOneOpeningToTheNext)
{
    CStdStringPtrMap states;
    ClickOn(Find(Open(kSkin, {10, 10}, eMenuAlignment_Left, &states), L"check"));
    host.Pump();
    EXPECT_TRUE(commands.received.back().command->bChecked);
    const auto* const info = static_cast<MenuItemInfo*>(states.Find(L"check"));
    ASSERT_NE(info, nullptr);
    EXPECT_TRUE(info->bChecked);

    CMenuWnd* const again = Open(kSkin, {10, 10}, eMenuAlignment_Left, &states);
    EXPECT_TRUE(Find(again, L"check").GetChecked());
    ClickOn(Find(again, L"check"));
    host.Pump();
    EXPECT_FALSE(commands.received.back().command->bChecked);
    EXPECT_FALSE(info->bChecked);

    CMenuWnd::DestroyMenu();
    EXPECT_EQ(states.GetSize(), 0);
}

TEST_F(MenuTest, DestroyMenuFreesTheStates)
{
    CMenuWnd::SetMenuItemInfo(L"the first one", true);
    CMenuWnd::DestroyMenu();
    const int before = test::HeapBlocks();
    for (int i = 0; i < 50; ++i)
        CMenuWnd::SetMenuItemInfo(std::to_wstring(i).c_str(), true);
    EXPECT_GT(test::HeapBlocks(), before + 50);
    CMenuWnd::DestroyMenu();
    EXPECT_LE(test::HeapBlocks(), before);
}

TEST_F(MenuTest, HoveringOpensASubMenuAfterAWhile)
{
    MenuClock clock;
    CMenuWnd* const menu = Open();
    PointAt(Find(menu, L"recent"));
    EXPECT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(clock.Running(menu->GetHWND()), 1);
    clock.Tick(menu->GetHWND());
    ASSERT_EQ(OpenMenus().size(), 2u);
    EXPECT_EQ(clock.Running(menu->GetHWND()), 0);
    CMenuWnd* const sub = OpenMenus()[1];
    EXPECT_EQ(Find(menu, L"recent").GetMenuWnd(), sub);
    EXPECT_EQ(sub->m_pOwner, &Find(menu, L"recent"));
    EXPECT_EQ(sub->GetMenuUI()->GetCount(), 3);
    EXPECT_TRUE(::IsWindowVisible(sub->GetHWND()));

    // To another element: the sub-menu closes after the same while.
    PointAt(Find(menu, L"open"));
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 2u);
    clock.Tick(menu->GetHWND());
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(Find(menu, L"recent").GetMenuWnd(), nullptr);
}

TEST_F(MenuTest, LeavingAnElementStopsItsClock)
{
    MenuClock clock;
    CMenuWnd* const menu = Open();
    PointAt(Find(menu, L"recent"));
    ::SendMessageW(menu->GetHWND(), WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(clock.Running(menu->GetHWND()), 0);
    EXPECT_EQ(Current(), L"");
}

TEST_F(MenuTest, AClickOpensASubMenuAtOnce)
{
    CMenuWnd* const menu = Open();
    ClickOn(Find(menu, L"recent"));
    ASSERT_EQ(OpenMenus().size(), 2u);
    CMenuWnd* const sub = OpenMenus()[1];
    ClickOn(Find(menu, L"recent"));
    EXPECT_EQ(OpenMenus().size(), 2u);
    ClickOn(Find(sub, L"b"));
    host.Pump();
    ASSERT_EQ(commands.received.size(), 1u);
    EXPECT_STREQ(commands.received[0].command->szName, L"b");
    EXPECT_TRUE(OpenMenus().empty());
}

TEST_F(MenuTest, ASubMenuStandsBesideItsElement)
{
    CMenuWnd* const menu = Open();
    Find(menu, L"recent").CreateMenuWnd();
    const RECT outer = PlaceOf(menu->GetHWND());
    const RECT inner = PlaceOf(OpenMenus()[1]->GetHWND());
    EXPECT_EQ(inner.left, outer.right - 2);
    EXPECT_EQ(inner.top,
              outer.top + Find(menu, L"recent").GetParent()->GetPos().top + 3 * 30 + 6 - 30 - 4);
}

TEST_F(MenuTest, ASubMenuStandsBesideItsElementAlsoBeforeTheMenuIsPainted)
{
    CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, POINT{100, 100}, &host.Manager());
    CMenuElementUI& recent = Find(menu, L"recent");
    recent.CreateMenuWnd();
    const LONG row = PlaceOf(menu->GetHWND()).top + recent.GetPos().top;
    EXPECT_GT(recent.GetPos().top, 0);
    CMenuWnd* const sub = OpenMenus()[1];
    EXPECT_EQ(PlaceOf(sub->GetHWND()).top, row - sub->GetMenuUI()->GetInset().top);
}

TEST_F(MenuTest, ASubMenuFlipsAtTheEdgeOfTheMonitor)
{
    const RECT area = WorkArea();
    CMenuWnd* const menu = Open(kSkin, {area.right - 160, area.bottom - 400});
    ::SetWindowPos(menu->GetHWND(), nullptr, area.right - 160, area.bottom - 190, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Find(menu, L"recent").CreateMenuWnd();
    const RECT inner = PlaceOf(OpenMenus()[1]->GetHWND());
    EXPECT_EQ(inner.right, area.right - 160 + 2);
    EXPECT_LE(inner.bottom, area.bottom);
}

TEST_F(MenuTest, ASubMenuOfAMenuThatHangsLeftOpensToTheLeft)
{
    CMenuWnd* const menu = Open(kSkin, {600, 100}, eMenuAlignment_Right | eMenuAlignment_Top);
    Find(menu, L"recent").CreateMenuWnd();
    EXPECT_EQ(PlaceOf(OpenMenus()[1]->GetHWND()).right, PlaceOf(menu->GetHWND()).left + 2);
}

TEST_F(MenuTest, RoundCornersCutMenusAndSubMenus)
{
    CMenuWnd* const menu = Open(LR"(<Window roundcorner="12,12"><Menu>
        <MenuElement name="outer"><MenuElement name="inner"/></MenuElement></Menu></Window>)");
    Find(menu, L"outer").CreateMenuWnd();
    ASSERT_EQ(OpenMenus().size(), 2u);
    const HRGN shape = ::CreateRectRgn(0, 0, 0, 0);
    for (CMenuWnd* const each : OpenMenus()) {
        const RECT place = PlaceOf(each->GetHWND());
        const int width = place.right - place.left;
        const int height = place.bottom - place.top;
        ASSERT_NE(::GetWindowRgn(each->GetHWND(), shape), ERROR);
        EXPECT_FALSE(::PtInRegion(shape, 0, 0));
        EXPECT_FALSE(::PtInRegion(shape, width - 1, height - 1));
        EXPECT_TRUE(::PtInRegion(shape, width / 2, 0));
        EXPECT_TRUE(::PtInRegion(shape, width - 1, height / 2));
    }
    ::DeleteObject(shape);
}

TEST_F(MenuTest, ASubMenuLooksLikeItsMenu)
{
    CMenuWnd* const menu = Open(LR"(<Window roundcorner="6,6"><Font id="4" name="Arial" size="23"/>
        <Menu bkcolor="#FF102030" bordercolor="#FF405060" bordersize="3" inset="5,6,5,6"
              itemhotbkcolor="#FF708090" itemfont="4" childpadding="2">
          <MenuElement name="outer"><MenuElement name="inner"/></MenuElement></Menu></Window>)");
    Find(menu, L"outer").CreateMenuWnd();
    CMenuWnd* const sub = OpenMenus()[1];
    CMenuUI& look = *sub->GetMenuUI();
    EXPECT_EQ(look.GetBkColor(), 0xFF102030u);
    EXPECT_EQ(look.GetBorderColor(), 0xFF405060u);
    EXPECT_EQ(look.GetBorderSize(), 3);
    EXPECT_EQ(look.GetInset().top, 6);
    EXPECT_EQ(look.GetChildPadding(), 2);
    EXPECT_EQ(look.GetHotItemBkColor(), 0xFF708090u);
    EXPECT_EQ(sub->m_pm.GetFont(4), menu->m_pm.GetFont(4));
    EXPECT_EQ(sub->m_pm.GetRoundCorner().cx, 6);
}

TEST_F(MenuTest, ElementsAreLentToTheSubMenuAndComeBackUntouched)
{
    CMenuWnd* const menu = Open();
    CMenuElementUI& element = Find(menu, L"a");
    CallCounter inits;
    element.OnInit += MakeDelegate(&inits, &CallCounter::Count);
    for (int round = 0; round < 2; ++round) {
        Find(menu, L"recent").CreateMenuWnd();
        CMenuWnd* const sub = OpenMenus()[1];
        EXPECT_EQ(element.GetManager(), &sub->m_pm);
        EXPECT_EQ(&Find(menu, L"a"), &element) << "still found by name in the top menu";
        EXPECT_EQ(sub->m_pm.FindControl(L"a"), &element);
        PointAt(element);
        sub->Close();
        host.Pump();
        EXPECT_EQ(element.GetManager(), &menu->m_pm);
        EXPECT_EQ(element.GetParent(), &Find(menu, L"recent"));
        EXPECT_FALSE(element.IsSelected());
        EXPECT_EQ(element.GetOwner(), nullptr);
    }
    EXPECT_EQ(inits.calls, 0);
    EXPECT_EQ(&Find(menu, L"a"), &element);
}

TEST_F(MenuTest, ArrowsWalkAroundOverWhatCanBeChosen)
{
    Open();
    const struct {
        int key;
        const wchar_t* current;
    } rows[] = {{VK_DOWN, L"open"}, {VK_DOWN, L"recent"}, {VK_DOWN, L"check"}, {VK_DOWN, L"close"},
                {VK_DOWN, L"open"}, {VK_UP, L"close"},    {VK_HOME, L"open"},  {VK_END, L"close"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        Press(row.key);
        EXPECT_EQ(Current(), row.current);
    }
}

TEST_F(MenuTest, UpBeginsAtTheEnd)
{
    Open();
    Press(VK_UP);
    EXPECT_EQ(Current(), L"close");
}

TEST_F(MenuTest, ReturnAndSpaceChoose)
{
    for (const int key : {VK_RETURN, VK_SPACE}) {
        Open();
        Press(key);
        EXPECT_EQ(OpenMenus().size(), 1u) << "nothing is selected yet";
        Press(VK_DOWN);
        Press(key);
        host.Pump();
        EXPECT_STREQ(commands.received.back().command->szName, L"open");
        EXPECT_TRUE(OpenMenus().empty());
    }
    EXPECT_EQ(commands.received.size(), 2u);
}

TEST_F(MenuTest, RightReturnAndSpaceOpenASubMenuOnItsFirstElement)
{
    for (const int key : {VK_RIGHT, VK_RETURN, VK_SPACE}) {
        Open();
        Press(VK_DOWN);
        Press(VK_RIGHT);
        EXPECT_EQ(OpenMenus().size(), 1u) << "no sub-menu to open";
        Press(VK_DOWN);
        Press(key);
        ASSERT_EQ(OpenMenus().size(), 2u);
        EXPECT_EQ(Current(), L"a");
        OpenMenus().front()->Close();
        host.Pump();
        EXPECT_TRUE(OpenMenus().empty());
    }
}

TEST_F(MenuTest, LeftAndEscapeCloseOneMenu)
{
    for (const int key : {VK_LEFT, VK_ESCAPE}) {
        Open();
        Press(VK_DOWN);
        Press(VK_DOWN);
        Press(VK_RIGHT);
        Press(VK_DOWN);
        Press(VK_RIGHT);
        ASSERT_EQ(OpenMenus().size(), 3u);
        EXPECT_EQ(Current(), L"deep");
        for (const std::size_t left : {2u, 1u, 0u}) {
            Press(key);
            host.Pump();
            EXPECT_EQ(OpenMenus().size(), left);
        }
    }
    EXPECT_TRUE(commands.received.empty());
}

TEST_F(MenuTest, KeysReachTheInnermostMenuThroughAnyWindow)
{
    Open();
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_RIGHT);
    PressKey(OpenMenus()[1]->GetHWND(), VK_DOWN);
    EXPECT_EQ(Current(), L"more");
    PressKey(OpenMenus()[0]->GetHWND(), VK_DOWN);
    EXPECT_EQ(Current(), L"b");
}

TEST_F(MenuTest, MnemonicsAndShortcutsChoose)
{
    Open();
    Type(L'O');
    host.Pump();
    ASSERT_EQ(commands.received.size(), 1u);
    EXPECT_STREQ(commands.received[0].command->szName, L"open");
    Open();
    Type(L'X');
    host.Pump();
    EXPECT_STREQ(commands.received.back().command->szName, L"close");
    Open();
    Type(L'r');
    ASSERT_EQ(OpenMenus().size(), 2u);
    EXPECT_EQ(Current(), L"a");
    Type(L'q');
    EXPECT_EQ(OpenMenus().size(), 2u);
}

TEST_F(MenuTest, AMnemonicOfSeveralElementsSelectsOneAfterTheOther)
{
    Open(LR"(<Window><Menu><MenuElement name="1" text="&amp;same"/>
        <MenuElement name="2" text="a &amp;&amp; b"/><MenuElement name="3" text="the &amp;Same"/>
        </Menu></Window>)");
    Type(L's');
    EXPECT_EQ(Current(), L"1");
    Type(L's');
    EXPECT_EQ(Current(), L"3");
    Type(L's');
    EXPECT_EQ(Current(), L"1");
    Type(L'&');
    EXPECT_EQ(Current(), L"1");
    EXPECT_TRUE(commands.received.empty());
}

TEST_F(MenuTest, AltAndF10CloseAllMenus)
{
    for (const int key : {VK_MENU, VK_F10}) {
        SCOPED_TRACE(key);
        Open();
        Press(VK_DOWN);
        Press(VK_DOWN);
        Press(VK_RIGHT);
        ASSERT_EQ(OpenMenus().size(), 2u);
        PressKey(OpenMenus().front()->GetHWND(), key, WM_SYSKEYDOWN);
        host.Pump();
        EXPECT_TRUE(OpenMenus().empty());
    }
}

TEST_F(MenuTest, LosingTheFocusToAnotherWindowClosesAll)
{
    CMenuWnd* const menu = Open();
    Find(menu, L"recent").CreateMenuWnd();
    CMenuWnd* const sub = OpenMenus()[1];
    ::SendMessageW(menu->GetHWND(), WM_KILLFOCUS, reinterpret_cast<WPARAM>(sub->GetHWND()), 0);
    ::SendMessageW(menu->GetHWND(), WM_ACTIVATE, WA_INACTIVE,
                   reinterpret_cast<LPARAM>(sub->GetHWND()));
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 2u);
    ::SendMessageW(sub->GetHWND(), WM_KILLFOCUS, reinterpret_cast<WPARAM>(host.Window()), 0);
    EXPECT_TRUE(menu->isClosing);
    host.Pump();
    EXPECT_TRUE(OpenMenus().empty());

    Open();
    ::SetFocus(host.Window());
    host.Pump();
    EXPECT_TRUE(OpenMenus().empty());
}

TEST_F(MenuTest, AnotherMenuTakesThePlaceOfTheOpenOne)
{
    CMenuWnd* const first = Open();
    CMenuWnd* const second = Open(kSkin, {300, 100});
    EXPECT_TRUE(first->isClosing);
    host.Pump();
    ASSERT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(OpenMenus()[0], second);
}

TEST_F(MenuTest, ClicksAndValuesInsideAreNotificationsOfTheMainWindow)
{
    CMenuWnd* const menu = Open(LR"(<Window><Menu><MenuElement height="40">
        <Button name="button" text="b"/></MenuElement></Menu></Window>)");
    auto& button = *menu->m_pm.FindControl(L"button");
    CallCounter told;
    button.OnNotify += MakeDelegate(&told, &CallCounter::CountClick);
    ClickOn(button);
    ASSERT_EQ(host.Sent(L"click").size(), 1u);
    EXPECT_EQ(host.Sent(L"click")[0].sender, &button);
    EXPECT_EQ(told.calls, 1);
    menu->m_pm.SendNotify(&button, DUI_MSGTYPE_VALUECHANGED, 3, 4);
    ASSERT_EQ(host.Sent(L"valuechanged").size(), 1u);
    EXPECT_EQ(host.Sent(L"valuechanged")[0].lParam, 4);
    menu->m_pm.SendNotify(&button, DUI_MSGTYPE_TEXTCHANGED);
    EXPECT_TRUE(host.Sent(L"textchanged").empty());
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 1u) << "a control in a row does not choose the row";
    EXPECT_TRUE(commands.received.empty());
}

TEST_F(MenuTest, TextBesideAControlStillChoosesTheRow)
{
    CMenuWnd* const menu = Open(LR"(<Window><Menu><MenuElement name="row">
        <Label name="label" text="text"/></MenuElement></Menu></Window>)");
    ClickOn(*menu->m_pm.FindControl(L"label"));
    host.Pump();
    ASSERT_EQ(commands.received.size(), 1u);
    EXPECT_STREQ(commands.received[0].command->szName, L"row");
}

TEST_F(MenuTest, ABadSkinOpensNothingAndTellsWhy)
{
    const struct {
        const wchar_t* skin;
        const wchar_t* reason;
    } rows[] = {
        {L"no-such-menu.xml", L"no-such-menu.xml"},
        {L"<Window><Menu", L""},
        {L"<Window><VerticalLayout/></Window>", L"must be a Menu"},
        {L"<Window></Window>", L"there is no control"},
        {L"", L"needs a skin"},
    };
    Open(L"<Window><VerticalLayout/></Window>");
    const int windows = test::UserWindows();
    const int gdi = test::GdiObjects();
    const int managers = CPaintManagerUI::GetPaintManagers()->GetSize();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.skin);
        CPaintManagerUI::SetLastErrorText(L"");
        EXPECT_EQ(Open(row.skin), nullptr);
        const std::wstring reason(CPaintManagerUI::GetLastErrorText());
        EXPECT_FALSE(reason.empty());
        EXPECT_NE(reason.find(row.reason), std::wstring::npos) << "the reason is another one";
        EXPECT_TRUE(OpenMenus().empty());
        EXPECT_EQ(test::UserWindows(), windows);
        EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), managers);
    }
    EXPECT_EQ(test::GdiObjects(), gdi);
}

TEST_F(MenuTest, ASkinFileIsReadFromTheResources)
{
    const test::TempFolder folder;
    folder.Write(L"menu.xml", "<Window><Menu><MenuElement name=\"filed\"/></Menu></Window>");
    const CDuiString before = CPaintManagerUI::GetResourcePath();
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CMenuWnd* const menu = Open(L"menu.xml");
    CPaintManagerUI::SetResourcePath(before);
    ASSERT_NE(menu, nullptr);
    EXPECT_NE(menu->m_pm.FindControl(L"filed"), nullptr);
}

TEST_F(MenuTest, AMenuDeletesItselfWithItsWindow)
{
    class CountedMenu : public CMenuWnd {
    public:
        explicit CountedMenu(int& alive) : m_alive(alive) { ++m_alive; }
        ~CountedMenu() { --m_alive; }

    private:
        int& m_alive;
    };
    const auto open = [this](int& alive) {
        auto* const menu = new CountedMenu(alive);
        menu->Init(nullptr, kSkin, POINT{10, 10}, &host.Manager());
        return menu;
    };
    int alive = 0;
    CMenuWnd* menu = open(alive);
    ASSERT_EQ(alive, 1);
    menu->Close();
    host.Pump();
    EXPECT_EQ(alive, 0) << "closed";
    menu = open(alive);
    ClickOn(Find(menu, L"open"));
    host.Pump();
    EXPECT_EQ(alive, 0) << "an element was chosen";
    menu = open(alive);
    ::DestroyWindow(menu->GetHWND());
    host.Pump();
    EXPECT_EQ(alive, 0) << "destroyed";
}

TEST_F(MenuTest, InitOpensWhatTheApplicationMade)
{
    auto* const menu = new CMenuWnd;
    menu->Init(nullptr, kSkin, POINT{10, 10}, &host.Manager(), nullptr,
               eMenuAlignment_Left | eMenuAlignment_Top);
    EXPECT_TRUE(::IsWindowVisible(menu->GetHWND()));
    EXPECT_NE(menu->m_pm.FindControl(L"open"), nullptr);
    delete menu;
    EXPECT_TRUE(OpenMenus().empty());
}

TEST_F(MenuTest, TheMainWindowMayGoWhileAMenuIsOpen)
{
    auto other = std::make_unique<ControlHost>(200, 100);
    CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, {10, 10}, &other->Manager());
    Find(menu, L"recent").CreateMenuWnd();
    EXPECT_EQ(OpenMenus().size(), 2u);
    other.reset();
    host.Pump();
    EXPECT_TRUE(OpenMenus().empty());
    EXPECT_EQ(CMenuWnd::GetGlobalContextMenuObserver().GetManager(), nullptr);
}

TEST_F(MenuTest, TheHandlerOfACommandMayDestroyTheMainWindow)
{
    auto other = std::make_unique<ControlHost>(200, 100);
    MenuCommands received(other->Manager());
    received.onCommand = [&] { ::DestroyWindow(other->Window()); };
    CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, {10, 10}, &other->Manager());
    ClickOn(Find(menu, L"open"));
    host.Pump();
    EXPECT_EQ(received.received.size(), 1u);
    EXPECT_TRUE(OpenMenus().empty());
}

// Sends a message to every menu window that is about to be shown.
class WhenMenusShow {
public:
    explicit WhenMenusShow(UINT message)
    {
        s_message = message;
        s_hook = ::SetWindowsHookExW(WH_CALLWNDPROC, &Look, nullptr, ::GetCurrentThreadId());
    }
    ~WhenMenusShow() { ::UnhookWindowsHookEx(s_hook); }
    WhenMenusShow(const WhenMenusShow&) = delete;
    WhenMenusShow& operator=(const WhenMenusShow&) = delete;

private:
    static LRESULT CALLBACK Look(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& sent = *reinterpret_cast<CWPSTRUCT*>(lParam);
        wchar_t name[32]{};
        ::GetClassNameW(sent.hwnd, name, 32);
        if (code == HC_ACTION && sent.message == WM_SHOWWINDOW && sent.wParam &&
            std::wstring(name) == L"DuiMenuWnd")
            ::SendMessageW(sent.hwnd, s_message, 0, 0);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HHOOK s_hook = nullptr;
    static inline UINT s_message = 0;
};

TEST_F(MenuTest, AMenuThatIsClosedWhileItOpensIsNoMenu)
{
    {
        const WhenMenusShow close(WM_CLOSE);
        EXPECT_EQ(Open(), nullptr);
    }
    EXPECT_TRUE(OpenMenus().empty());

    CMenuWnd* const menu = Open();
    const WhenMenusShow close(WM_CLOSE);
    Find(menu, L"recent").CreateMenuWnd();
    EXPECT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(Find(menu, L"recent").GetMenuWnd(), nullptr);
    EXPECT_EQ(Find(menu, L"a").GetManager(), &menu->m_pm);
}

TEST_F(MenuTest, AWindowThatTheSystemRefusesIsNoMenu)
{
    const HHOOK refuse = ::SetWindowsHookExW(
        WH_CBT, [](int code, WPARAM, LPARAM) -> LRESULT { return code == HCBT_CREATEWND ? 1 : 0; },
        nullptr, ::GetCurrentThreadId());
    CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, {0, 0}, &host.Manager());
    ::UnhookWindowsHookEx(refuse);
    EXPECT_EQ(menu, nullptr);
    EXPECT_TRUE(OpenMenus().empty());
}

TEST_F(MenuTest, ElementsMayGoWhileTheirSubMenuIsOpen)
{
    CMenuWnd* const menu = Open();
    auto& recent = Find(menu, L"recent");
    recent.CreateMenuWnd();
    EXPECT_TRUE(recent.Remove(&Find(menu, L"a")));
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(recent.GetCount(), 2);

    recent.CreateMenuWnd();
    menu->GetMenuUI()->Remove(&recent);
    host.Pump();
    EXPECT_EQ(OpenMenus().size(), 1u);
    EXPECT_EQ(menu->m_pm.FindControl(L"recent"), nullptr);
}

// What a handler inside a menu does, at the moment of the choice and of a selection by key.
TEST_F(MenuTest, HandlersInAMenuMayDoAnything)
{
    class Handler : public INotifyUI {
    public:
        Handler(std::wstring type, std::function<void()> act)
            : m_type(std::move(type)), m_act(std::move(act))
        {
        }
        void Notify(TNotifyUI& notification) override
        {
            if (m_type != notification.sType.GetData() || std::exchange(m_done, true))
                return;
            m_act();
        }
        bool Done() const { return m_done; }

    private:
        std::wstring m_type;
        std::function<void()> m_act;
        bool m_done = false;
    };
    const struct {
        const char* name;
        const wchar_t* type;
        std::function<void(CMenuWnd*)> act;
    } ways[] = {
        {"click on an element", L"itemclick", [](CMenuWnd* menu) { ClickOn(Find(menu, L"open")); }},
        {"click on a sub-menu", L"itemclick",
         [](CMenuWnd* menu) { ClickOn(Find(menu, L"recent")); }},
        {"arrow", L"itemselect", [](CMenuWnd*) { Press(VK_DOWN); }},
        {"mnemonic", L"itemselect", [](CMenuWnd*) { Type(L'r'); }},
        {"mouse", L"itemselect", [](CMenuWnd* menu) { PointAt(Find(menu, L"open")); }},
    };
    const struct {
        const char* name;
        std::function<void(ControlHost&, CMenuWnd*)> act;
    } deeds[] = {
        {"closes the menu", [](ControlHost&, CMenuWnd* menu) { menu->Close(); }},
        {"destroys the menu",
         [](ControlHost&, CMenuWnd* menu) { ::DestroyWindow(menu->GetHWND()); }},
        {"deletes the menu", [](ControlHost&, CMenuWnd* menu) { delete menu; }},
        {"destroys the main window",
         [](ControlHost& in, CMenuWnd*) { ::DestroyWindow(in.Window()); }},
        {"removes the elements",
         [](ControlHost&, CMenuWnd* menu) { menu->GetMenuUI()->RemoveAll(); }},
        {"deletes the elements at once",
         [](ControlHost&, CMenuWnd* menu) {
             menu->GetMenuUI()->SetDelayedDestroy(false);
             menu->GetMenuUI()->RemoveAll();
         }},
        {"opens a sub-menu",
         [](ControlHost&, CMenuWnd* menu) { Find(menu, L"recent").CreateMenuWnd(); }},
        {"opens another menu",
         [](ControlHost& in, CMenuWnd*) {
             CMenuWnd::CreateMenu(nullptr, kSkin, {300, 10}, &in.Manager());
         }},
    };
    for (const auto& way : ways) {
        for (const auto& deed : deeds) {
            SCOPED_TRACE(std::string(way.name) + ", " + deed.name);
            ControlHost other{200, 100};
            MenuCommands received(other.Manager());
            CMenuWnd* const menu = CMenuWnd::CreateMenu(nullptr, kSkin, {10, 10}, &other.Manager());
            ::UpdateWindow(menu->GetHWND());
            Handler handler(way.type, [&] { deed.act(other, menu); });
            menu->m_pm.AddNotifier(&handler);
            way.act(menu);
            EXPECT_TRUE(handler.Done());
            for (CMenuWnd* const open : OpenMenus())
                open->Close();
            host.Pump();
            EXPECT_TRUE(OpenMenus().empty());
        }
    }
}

TEST_F(MenuTest, GrowsWithItsElements)
{
    CMenuWnd* const menu = Open();
    const RECT before = PlaceOf(menu->GetHWND());
    menu->GetMenuUI()->Add(new CMenuElementUI);
    menu->ResizeMenu();
    EXPECT_EQ(PlaceOf(menu->GetHWND()).bottom, before.bottom + 30);

    Find(menu, L"recent").CreateMenuWnd();
    CMenuWnd* const sub = OpenMenus()[1];
    const RECT inner = PlaceOf(sub->GetHWND());
    Find(menu, L"a").SetFixedHeight(50);
    sub->ResizeSubMenu();
    EXPECT_EQ(PlaceOf(sub->GetHWND()).bottom, inner.bottom + 20);
    EXPECT_EQ(PlaceOf(sub->GetHWND()).left, inner.left);
}

TEST_F(MenuTest, ReceivesWhatConcernsIt)
{
    CMenuWnd* const menu = Open();
    Find(menu, L"recent").CreateMenuWnd();
    CMenuWnd* const sub = OpenMenus()[1];
    menu->Receive({2, menu->GetHWND()});
    sub->Receive({2, sub->GetHWND()});
    sub->Receive({2, host.Window()});
    EXPECT_FALSE(menu->isClosing);
    EXPECT_TRUE(sub->isClosing) << "it stands below the main window";
    host.Pump();
    menu->Receive({1, nullptr});
    EXPECT_TRUE(menu->isClosing);
}

TEST_F(MenuTest, TwoHundredRoundsLeaveNothingBehind)
{
    CStdStringPtrMap states;
    const auto round = [&] {
        CMenuWnd* const menu = Open(kSkin, {50, 50}, eMenuAlignment_Left, &states);
        Find(menu, L"recent").CreateMenuWnd();
        CMenuWnd* const sub = OpenMenus()[1];
        ::UpdateWindow(sub->GetHWND());
        ClickOn(Find(sub, L"b"));
        host.Pump();
        commands.received.clear();
    };
    for (int i = 0; i < 3; ++i)
        round();
    const int gdi = test::GdiObjects();
    const int windows = test::UserWindows();
    const int blocks = test::HeapBlocks();
    const int managers = CPaintManagerUI::GetPaintManagers()->GetSize();
    for (int i = 0; i < 200; ++i)
        round();
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(test::UserWindows(), windows);
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), managers);
    EXPECT_LE(test::HeapBlocks(), blocks + 100);
    CMenuWnd::DestroyMenu();
}

} // namespace
