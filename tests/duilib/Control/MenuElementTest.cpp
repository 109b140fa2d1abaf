#include "duilib/Control/MenuKit.h"
#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kMark{0xFF5A6472};

// A menu in an ordinary window: its look, without a menu's window.
class MenuElementTest : public testing::Test {
protected:
    ~MenuElementTest() override { CMenuWnd::DestroyMenu(); }

    CMenuUI& Menu(const std::wstring& elements, ControlHost* in = nullptr)
    {
        ControlHost& where = in ? *in : host;
        auto* const root =
            where.Load((L"<Window><Menu name=\"menu\">" + elements + L"</Menu></Window>").c_str());
        return *static_cast<CMenuUI*>(root->GetInterface(L"Menu"));
    }

    static CMenuElementUI& Element(CMenuUI& menu, int index)
    {
        return *static_cast<CMenuElementUI*>(menu.GetItemAt(index));
    }

    ControlHost host{220, 200};
};

TEST_F(MenuElementTest, TellsItsClassAndInterfaces)
{
    CMenuElementUI element;
    EXPECT_STREQ(element.GetClass(), L"MenuElementUI");
    EXPECT_EQ(element.GetInterface(L"menuelement"), &element);
    EXPECT_EQ(element.GetInterface(L"ListItem"), static_cast<IListItemUI*>(&element));
    EXPECT_EQ(element.GetInterface(L"IContainer"), static_cast<IContainerUI*>(&element));
    CMenuUI menu;
    EXPECT_STREQ(menu.GetClass(), L"MenuUI");
    EXPECT_EQ(menu.GetInterface(L"menu"), &menu);
    EXPECT_EQ(menu.GetListType(), static_cast<UINT>(LT_MENU));
    EXPECT_EQ(menu.m_pWindow, nullptr);
}

TEST_F(MenuElementTest, AMenuTakesNothingButMenuElements)
{
    CMenuUI menu;
    CLabelUI label;
    CListLabelElementUI row;
    EXPECT_FALSE(menu.Add(&label));
    EXPECT_FALSE(menu.AddAt(&row, 0));
    EXPECT_FALSE(menu.Add(nullptr));
    EXPECT_TRUE(menu.Add(new CMenuElementUI));
    EXPECT_TRUE(menu.AddAt(new CMenuElementUI, 0));
    EXPECT_EQ(menu.GetCount(), 2);
    EXPECT_EQ(Element(menu, 1).GetIndex(), 1);
}

TEST_F(MenuElementTest, AttributesSetWhatTheirSettersSet)
{
    CMenuElementUI element;
    EXPECT_EQ(element.GetFixedHeight(), 30);
    EXPECT_EQ(element.GetIconSize().cx, 16);
    EXPECT_EQ(element.GetLineColor(), 0xFFBCBFC4u);
    EXPECT_EQ(element.GetLinePadding().left, 29);
    EXPECT_EQ(element.GetLinePadding().right, 7);
    const struct {
        const wchar_t* name;
        const wchar_t* value;
        std::function<bool()> holds;
    } rows[] = {
        {L"iconsize", L"20,21", [&] { return element.GetIconSize().cy == 21; }},
        {L"checkitem", L"true", [&] { return element.GetCheckItem(); }},
        {L"ischeck", L"true", [&] { return element.GetChecked(); }},
        {L"linecolor", L"#FF112233", [&] { return element.GetLineColor() == 0xFF112233; }},
        {L"linepadding", L"1,2,3,4", [&] { return element.GetLinePadding().bottom == 4; }},
        {L"height", L"44", [&] { return element.GetFixedHeight() == 44; }},
        {L"linetype", L"true", [&] { return !element.IsEnabled(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(row.holds());
        element.SetAttribute(row.name, row.value);
        EXPECT_TRUE(row.holds());
    }
}

TEST_F(MenuElementTest, LengthsAreScaledByTheirGetters)
{
    ControlHost large{300, 200, 144};
    auto& element = Element(
        Menu(L"<MenuElement iconsize=\"10,20\" linepadding=\"2,4,6,8\" height=\"20\"/>", &large),
        0);
    EXPECT_EQ(element.GetIconSize().cx, 15);
    EXPECT_EQ(element.GetIconSize().cy, 30);
    EXPECT_EQ(element.GetLinePadding().left, 3);
    EXPECT_EQ(element.GetFixedHeight(), 30);
}

TEST_F(MenuElementTest, ElementsInsideAreItsSubMenuAndOtherControlsStandInTheRow)
{
    auto& element = Element(Menu(LR"(<MenuElement text="a">
            <MenuElement name="sub1" text="x"/><Label name="label" width="30"/>
            <MenuElement name="sub2" text="y"/></MenuElement>)"),
                            0);
    ASSERT_EQ(element.GetCount(), 3);
    EXPECT_EQ(element.GetItemAt(0)->GetName(), L"label");
    EXPECT_EQ(element.GetItemAt(1)->GetName(), L"sub1");
    EXPECT_EQ(element.GetItemAt(2)->GetName(), L"sub2");
    EXPECT_EQ(element.GetItemAt(3), nullptr);
    EXPECT_EQ(element.GetItemIndex(element.GetItemAt(2)), 2);
    EXPECT_EQ(host.Manager().FindControl(L"sub2"), element.GetItemAt(2));
    EXPECT_EQ(element.FindSubControl(L"sub1"), element.GetItemAt(1));
    EXPECT_FALSE(::IsRectEmpty(&element.GetItemAt(0)->GetPos()));
    EXPECT_TRUE(::IsRectEmpty(&element.GetItemAt(1)->GetPos()));
    const RECT& place = element.GetPos();
    EXPECT_EQ(host.Manager().FindControl(POINT{place.right - 40, place.top + 5}), &element);
}

TEST_F(MenuElementTest, SubMenusChangeAtRunTime)
{
    auto& element = Element(Menu(L"<MenuElement text=\"a\"/>"), 0);
    auto* const first = new CMenuElementUI;
    auto* const second = new CMenuElementUI;
    second->SetName(L"second");
    EXPECT_TRUE(element.Add(first));
    EXPECT_TRUE(element.AddAt(second, 0));
    EXPECT_FALSE(element.Add(second));
    EXPECT_FALSE(element.Add(&element));
    EXPECT_EQ(element.GetItemAt(0), second);
    EXPECT_EQ(second->GetManager(), &host.Manager());
    EXPECT_EQ(host.Manager().FindControl(L"second"), second);
    EXPECT_TRUE(element.SetItemIndex(second, 1));
    EXPECT_FALSE(element.SetItemIndex(second, 2));
    EXPECT_EQ(element.GetItemAt(0), first);
    EXPECT_TRUE(element.Remove(first));
    EXPECT_EQ(element.GetCount(), 1);
    element.Add(new CLabelUI);
    element.RemoveAll();
    host.Pump();
    EXPECT_EQ(element.GetCount(), 0);
    EXPECT_EQ(host.Manager().FindControl(L"second"), nullptr);
    EXPECT_FALSE(element.RemoveAt(0));
}

TEST_F(MenuElementTest, WhatIsRemovedMayBeKept)
{
    auto& element = Element(Menu(L"<MenuElement text=\"a\"/>"), 0);
    element.SetAutoDestroy(false);
    CMenuElementUI kept;
    element.Add(&kept);
    EXPECT_TRUE(element.Remove(&kept));
    EXPECT_EQ(kept.GetManager(), nullptr);
    EXPECT_EQ(kept.GetParent(), nullptr);
}

TEST_F(MenuElementTest, ElementsOfOneNameShareTheirCheckState)
{
    CMenuElementUI first;
    CMenuElementUI second;
    first.SetName(L"shared");
    second.SetName(L"shared");
    EXPECT_EQ(first.GetItemInfo(L"shared"), nullptr);
    first.SetChecked(true);
    EXPECT_TRUE(second.GetChecked());
    ASSERT_NE(second.GetItemInfo(L"shared"), nullptr);
    EXPECT_STREQ(second.GetItemInfo(L"shared")->szName, L"shared");
    EXPECT_EQ(second.SetItemInfo(L"shared", false), first.GetItemInfo(L"shared"));
    EXPECT_FALSE(first.GetChecked());
    EXPECT_EQ(first.SetItemInfo(L"", true), nullptr);
    EXPECT_EQ(first.GetItemInfo(nullptr), nullptr);
}

TEST_F(MenuElementTest, AnElementWithoutANameKeepsItsOwnCheckState)
{
    CMenuElementUI first;
    CMenuElementUI second;
    first.SetChecked(true);
    EXPECT_TRUE(first.GetChecked());
    EXPECT_FALSE(second.GetChecked());
}

TEST_F(MenuElementTest, TheSharedStateWinsOverTheSkin)
{
    constexpr wchar_t kSkin[] = L"<MenuElement ischeck=\"true\" checkitem=\"true\" name=\"c\"/>";
    EXPECT_TRUE(Element(Menu(kSkin), 0).GetChecked());
    CMenuWnd::SetMenuItemInfo(L"c", false);
    EXPECT_FALSE(Element(Menu(kSkin), 0).GetChecked());
    Element(*static_cast<CMenuUI*>(host.Root()), 0).SetAttribute(L"ischeck", L"true");
    EXPECT_TRUE(Element(*static_cast<CMenuUI*>(host.Root()), 0).GetChecked());
}

TEST_F(MenuElementTest, ALongNameIsCutInTheRecord)
{
    const std::wstring name(300, L'n');
    const MenuItemInfo* const info = CMenuWnd::SetMenuItemInfo(name.c_str(), true);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(std::wstring(info->szName), name.substr(0, 255));
}

TEST_F(MenuElementTest, IsAsWideAsItsTextNeedsAndAtLeastTheDefault)
{
    auto& menu = Menu(LR"(<MenuElement text="x"/>
        <MenuElement text="mmmmmmmmmmmmmmmmmmmmmmmmmmmmmm"/>
        <MenuElement text="" width="77"/>
        <MenuElement><Control width="200" padding="5,0,5,0"/></MenuElement>
        <MenuElement text="x"><Control width="200"/></MenuElement>)");
    EXPECT_EQ(Element(menu, 0).EstimateSize({500, 500}).cx, 150);
    const SIZE wide = Element(menu, 1).EstimateSize({500, 500});
    const SIZE text = test::MeasureLine(host.Manager(), L"mmmmmmmmmmmmmmmmmmmmmmmmmmmmmm");
    EXPECT_EQ(wide.cx, 26 + text.cx + 12);
    EXPECT_EQ(wide.cy, 30);
    EXPECT_EQ(Element(menu, 2).EstimateSize({500, 500}).cx, 77);
    EXPECT_EQ(Element(menu, 3).EstimateSize({500, 500}).cx, 210);
    EXPECT_EQ(Element(menu, 4).EstimateSize({500, 500}).cx,
              26 + test::MeasureLine(host.Manager(), L"x").cx + 12 + 200);
    const SIZE all = menu.EstimateSize({500, 500});
    EXPECT_EQ(all.cx, wide.cx + 2);
    EXPECT_EQ(all.cy, 5 * 30 + 8);
}

TEST_F(MenuElementTest, ALineIsThinAndCannotBeChosen)
{
    auto& menu = Menu(LR"(<MenuElement linetype="true" linecolor="#FFFF0000"
        linepadding="10,0,20,0"/><MenuElement linetype="true" height="11"/>)");
    EXPECT_EQ(Element(menu, 0).GetFixedHeight(), 6);
    EXPECT_EQ(Element(menu, 1).GetFixedHeight(), 11);
    EXPECT_FALSE(Element(menu, 0).IsMouseEnabled());
    EXPECT_EQ(menu.FindSelectable(0), -1);
    const Picture picture = host.Paint();
    const RECT& place = Element(menu, 0).GetPos();
    const int middle = (place.top + place.bottom) / 2;
    EXPECT_EQ(picture.At(place.left + 10, middle), kRed);
    EXPECT_NE(picture.At(place.left + 9, middle), kRed);
    EXPECT_EQ(picture.At(place.right - 21, middle), kRed);
    EXPECT_NE(picture.At(place.right - 20, middle), kRed);
    EXPECT_EQ(picture.Count(kRed, place), place.right - place.left - 30);
}

TEST_F(MenuElementTest, TheIconStandsLeftOfTheText)
{
    AddColumns(host.Manager(), L"icon.png", {kRed});
    auto& menu = Menu(L"<MenuElement icon=\"icon.png\" iconsize=\"10,10\"/>");
    AddColumns(host.Manager(), L"icon.png", {kRed});
    const Picture picture = host.Paint();
    const RECT& place = Element(menu, 0).GetPos();
    EXPECT_EQ(picture.Count(kRed), 100);
    EXPECT_EQ(picture.At(place.left + 8, place.top + 10), kRed);
    EXPECT_EQ(picture.At(place.left + 17, place.top + 19), kRed);
}

TEST_F(MenuElementTest, ACheckItemShowsItsMarkWhileItIsChecked)
{
    AddColumns(host.Manager(), L"icon.png", {kRed});
    auto& menu = Menu(LR"(<MenuElement checkitem="true"/>
        <MenuElement checkitem="true" icon="icon.png"/>)");
    AddColumns(host.Manager(), L"icon.png", {kRed});
    EXPECT_EQ(host.Paint().Count(kMark), 0);
    EXPECT_EQ(host.Paint().Count(kRed), 0);
    Element(menu, 0).SetChecked(true);
    Element(menu, 1).SetChecked(true);
    EXPECT_GT(host.Paint().Count(kMark, Element(menu, 0).GetPos()), 8);
    EXPECT_GT(host.Paint().Count(kRed, Element(menu, 1).GetPos()), 100);
}

TEST_F(MenuElementTest, AnArrowShowsASubMenu)
{
    auto& menu = Menu(LR"(<MenuElement><MenuElement/></MenuElement>
        <MenuElement expland="false"><MenuElement/></MenuElement><MenuElement expland="true"/>)");
    const Picture picture = host.Paint();
    const RECT first = Element(menu, 0).GetPos();
    EXPECT_GT(picture.Count(kMark, RECT{first.right - 20, first.top, first.right, first.bottom}),
              8);
    EXPECT_EQ(picture.Count(kMark, Element(menu, 1).GetPos()), 0);
    EXPECT_EQ(picture.Count(kMark, Element(menu, 2).GetPos()), 0);
    Element(menu, 0).SetShowExplandIcon(false);
    EXPECT_EQ(host.Paint().Count(kMark), 0);
}

TEST_F(MenuElementTest, OneHighlightShowsMouseAndKeyboard)
{
    auto& menu = Menu(L"<MenuElement/><MenuElement/>");
    menu.SetHotItemBkColor(kGreen.value);
    menu.SetSelectedItemBkColor(kRed.value);
    menu.SelectItem(1);
    EXPECT_EQ(host.Paint().Count(kRed), 0);
    EXPECT_GT(host.Paint().Count(kGreen, Element(menu, 1).GetPos()), 1000);
    EXPECT_TRUE(Element(menu, 1).IsSelected());
    const RECT& first = Element(menu, 0).GetPos();
    host.MoveMouse(first.left + 50, first.top + 5);
    EXPECT_GT(host.Paint().Count(kGreen, first), 1000);
    EXPECT_EQ(host.Paint().Count(kGreen, Element(menu, 1).GetPos()), 0);
    host.LeaveMouse();
    EXPECT_EQ(host.Paint().Count(kGreen), 0);
}

TEST_F(MenuElementTest, TheTextIsDrawnBesideTheIconInTheColourOfItsState)
{
    auto& menu = Menu(L"<MenuElement text=\"mmm\"/>");
    test::UnderlineTexts(host.Manager());
    menu.SetItemTextColor(kRed.value);
    menu.SetHotItemTextColor(kGreen.value);
    const RECT& place = Element(menu, 0).GetPos();
    const Picture picture = host.Paint();
    EXPECT_GT(picture.Count(kRed), 20);
    EXPECT_EQ(picture.Count(kRed, RECT{0, 0, place.left + 26, 200}), 0);
    host.MoveMouse(place.left + 5, place.top + 5);
    EXPECT_GT(host.Paint().Count(kGreen), 20);
    menu.SetItemTextPadding({60, 0, 0, 0});
    EXPECT_EQ(host.Paint().Count(kGreen, RECT{0, 0, place.left + 60, 200}), 0);
}

TEST_F(MenuElementTest, WithoutAMenuWindowNothingIsChosenOrOpened)
{
    test::MenuCommands commands(host.Manager());
    auto& menu = Menu(L"<MenuElement name=\"a\"/><MenuElement><MenuElement/></MenuElement>");
    EXPECT_FALSE(Element(menu, 0).Activate());
    Element(menu, 1).CreateMenuWnd();
    EXPECT_EQ(Element(menu, 1).GetMenuWnd(), nullptr);
    host.Pump();
    EXPECT_TRUE(commands.received.empty());
}

TEST_F(MenuElementTest, ObserversBroadcastToReceiversThatComeAndGo)
{
    class Receiver : public MenuReceiverImpl {
    public:
        BOOL Receive(ContextMenuParam param) override
        {
            heard.push_back(static_cast<int>(param.wParam));
            if (onReceive)
                onReceive();
            return TRUE;
        }
        std::vector<int> heard;
        std::function<void()> onReceive;
    };
    MenuObserverImpl observer;
    EXPECT_FALSE(observer.RBroadcast({1, nullptr}));
    Receiver first;
    Receiver third;
    first.AddObserver(&observer);
    {
        Receiver second;
        second.AddObserver(&observer);
        third.AddObserver(&observer);
        first.onReceive = [&] { first.RemoveObserver(); };
        EXPECT_TRUE(observer.RBroadcast({1, nullptr}));
        EXPECT_EQ(second.heard, std::vector<int>{1});
    }
    EXPECT_TRUE(observer.RBroadcast({2, nullptr}));
    EXPECT_EQ(first.heard, std::vector<int>{1});
    EXPECT_EQ(third.heard, (std::vector<int>{1, 2}));
    MenuObserverImpl::Iterator iterator(observer);
    EXPECT_EQ(iterator.next(), &third);
    EXPECT_EQ(iterator.next(), nullptr);
}

TEST_F(MenuElementTest, ObserversForgetAManagerThatIsGone)
{
    MenuObserverImpl observer;
    observer.SetManger(&host.Manager());
    EXPECT_EQ(observer.GetManager(), &host.Manager());
    {
        ControlHost other{10, 10};
        observer.SetManger(&other.Manager());
        EXPECT_EQ(observer.GetManager(), &other.Manager());
    }
    EXPECT_EQ(observer.GetManager(), nullptr);
    CStdStringPtrMap states;
    observer.SetMenuCheckInfo(&states);
    EXPECT_EQ(observer.GetMenuCheckInfo(), &states);
    observer.SetMenuCheckInfo(nullptr);
    EXPECT_NE(observer.GetMenuCheckInfo(), nullptr);
    EXPECT_NE(observer.GetMenuCheckInfo(), &states);
}

} // namespace
