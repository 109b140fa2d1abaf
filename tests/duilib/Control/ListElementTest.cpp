#include "duilib/Control/RowOwner.h"
#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::DeleteAtOnce;
using test::Picture;
using test::RowOwner;
using test::SentTypes;
using test::UnderlineTexts;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kGray{0xFF808080};
constexpr Argb kYellow{0xFFFFFF00};
constexpr Argb kBlack{0xFF000000};

// What every kind of row does. Rows are 20 design pixels high, on white.
template <class Row>
class ListRowTest : public testing::Test {
protected:
    ControlHost host{100, 80};
    RowOwner& owner = host.Add<RowOwner>();
    Row& first = owner.AddRow<Row>();
    Row& second = owner.AddRow<Row>();
    Row& third = owner.AddRow<Row>();

    void SetUp() override
    {
        owner.SetName(L"list");
        first.SetName(L"first");
        second.SetName(L"second");
        third.SetName(L"third");
        owner.SetBkColor(kWhite.value);
        host.Layout();
        host.ClearSent();
    }

    // "itemclick second": what came and from whom.
    std::wstring Sent() const
    {
        std::wstring all;
        for (const auto& sent : host.Sent()) {
            if (sent.type == L"setfocus" || sent.type == L"killfocus")
                continue;
            all += (all.empty() ? L"" : L", ") + sent.type + L' ' + sent.senderName;
        }
        return all;
    }

    // Runs when the first notification of the type comes.
    class OnSent : public INotifyUI {
    public:
        OnSent(ControlHost& host, std::wstring type, std::function<void()> run)
            : m_manager(host.Manager()), m_type(std::move(type)), m_run(std::move(run))
        {
            m_manager.AddNotifier(this);
        }
        ~OnSent() { m_manager.RemoveNotifier(this); }
        void Notify(TNotifyUI& notification) override
        {
            if (m_type == notification.sType.GetData() && m_run)
                std::exchange(m_run, nullptr)();
        }

    private:
        CPaintManagerUI& m_manager;
        std::wstring m_type;
        std::function<void()> m_run;
    };
};

using RowClasses = testing::Types<CListLabelElementUI, CListTextElementUI, CListContainerElementUI>;
TYPED_TEST_SUITE(ListRowTest, RowClasses);

TYPED_TEST(ListRowTest, AnswersToItsNames)
{
    EXPECT_EQ(this->first.GetInterface(L"ListItem"), static_cast<IListItemUI*>(&this->first));
    EXPECT_NE(this->first.GetInterface(L"Control"), nullptr);
    EXPECT_EQ(this->first.GetControlFlags() & UIFLAG_WANTRETURN, UIFLAG_WANTRETURN * 1u);
    EXPECT_EQ(this->first.GetControlFlags() & UIFLAG_TABSTOP, 0u);
}

TYPED_TEST(ListRowTest, StartsWithoutOwnerAndIndex)
{
    TypeParam row;
    EXPECT_EQ(row.GetIndex(), -1);
    EXPECT_EQ(row.GetOwner(), nullptr);
    EXPECT_FALSE(row.IsSelected());
    EXPECT_FALSE(row.IsExpanded());
    EXPECT_FALSE(row.Expand());
}

TYPED_TEST(ListRowTest, KeepsIndexAndOwner)
{
    EXPECT_EQ(this->second.GetIndex(), 1);
    EXPECT_EQ(this->second.GetOwner(), static_cast<IListOwnerUI*>(&this->owner));
    this->second.SetOwner(nullptr);
    EXPECT_EQ(this->second.GetOwner(), nullptr);
    CControlUI noOwner;
    this->second.SetOwner(&noOwner);
    EXPECT_EQ(this->second.GetOwner(), nullptr);
}

TYPED_TEST(ListRowTest, WithoutAnOwnerEverythingIsSafe)
{
    this->first.SetOwner(nullptr);
    this->host.MoveMouse(10, 10);
    this->host.Click(10, 10);
    this->host.RightClick(10, 10);
    this->host.Wheel(10, 10, 120);
    this->host.KeyDown(VK_DOWN);
    EXPECT_TRUE(this->first.IsSelected()) << "it selects itself";
    this->host.Paint();
    this->first.DrawItemText(this->host.Manager().GetPaintDC(), this->first.GetPos());
    this->first.Select(false);
    EXPECT_FALSE(this->first.IsSelected());
}

TYPED_TEST(ListRowTest, SelectingGoesThroughTheOwner)
{
    EXPECT_TRUE(this->second.Select());
    EXPECT_EQ(this->owner.GetCurSel(), 1);
    EXPECT_TRUE(this->second.IsSelected());
    EXPECT_TRUE(this->third.Select());
    EXPECT_FALSE(this->second.IsSelected());
    EXPECT_TRUE(this->third.Select(false));
    EXPECT_EQ(this->owner.GetCurSel(), -1);
    EXPECT_EQ(this->owner.asked, L"select 1 select 2 unselect 2");
}

TYPED_TEST(ListRowTest, TheOwnerSelectsRows)
{
    EXPECT_TRUE(this->owner.SelectItem(0));
    EXPECT_TRUE(this->first.IsSelected());
    EXPECT_TRUE(this->owner.SelectItem(2));
    EXPECT_FALSE(this->first.IsSelected());
    EXPECT_TRUE(this->third.IsSelected());
}

TYPED_TEST(ListRowTest, SelectingMoreAsksForMore)
{
    EXPECT_TRUE(this->second.SelectMulti());
    EXPECT_TRUE(this->second.IsSelected());
    EXPECT_EQ(this->owner.asked, L"multi 1");
    EXPECT_TRUE(this->second.SelectMulti(false));
    EXPECT_FALSE(this->second.IsSelected());
}

TYPED_TEST(ListRowTest, TheSelectedAttributeSelects)
{
    this->second.SetAttribute(L"selected", L"true");
    EXPECT_EQ(this->owner.GetCurSel(), 1);
    this->second.SetAttribute(L"SELECTED", L"false");
    EXPECT_EQ(this->owner.GetCurSel(), -1);
}

TYPED_TEST(ListRowTest, ADisabledRowIsNotSelected)
{
    this->second.SetEnabled(false);
    EXPECT_FALSE(this->second.Select());
    EXPECT_FALSE(this->second.SelectMulti());
    this->host.Click(10, 30);
    EXPECT_FALSE(this->second.IsSelected());
    EXPECT_EQ(this->owner.asked, L"");
    EXPECT_EQ(this->Sent(), L"");
}

TYPED_TEST(ListRowTest, ARowThatIsDisabledWhileSelectedCanBeUnselected)
{
    this->second.Select();
    this->second.SetEnabled(false);
    EXPECT_TRUE(this->second.IsSelected());
    this->third.Select();
    EXPECT_FALSE(this->second.IsSelected());
}

TYPED_TEST(ListRowTest, AHiddenRowIsNotSelected)
{
    this->second.Select();
    this->second.SetVisible(false);
    EXPECT_FALSE(this->second.IsSelected());
    EXPECT_EQ(this->owner.GetCurSel(), -1);
}

TYPED_TEST(ListRowTest, AHiddenListKeepsItsSelection)
{
    this->second.Select();
    this->owner.SetVisible(false);
    EXPECT_TRUE(this->second.IsSelected());
    EXPECT_EQ(this->owner.GetCurSel(), 1);
}

TYPED_TEST(ListRowTest, APressSelectsAndAReleaseClicks)
{
    this->host.Press(10, 30);
    EXPECT_EQ(this->Sent(), L"itemselect list");
    EXPECT_TRUE(this->second.IsSelected());
    this->host.Release(10, 30);
    EXPECT_EQ(this->Sent(), L"itemselect list, itemclick second");
    const auto click = this->host.Sent(L"itemclick")[0];
    EXPECT_EQ(click.sender, &this->second);
    EXPECT_EQ(click.wParam, 0u);
    EXPECT_EQ(click.lParam, 0);
}

TYPED_TEST(ListRowTest, AReleaseOutsideIsNoClick)
{
    this->host.Press(10, 30);
    this->host.Release(10, 70);
    EXPECT_TRUE(this->host.Sent(L"itemclick").empty());
}

TYPED_TEST(ListRowTest, APressWithControlOrShiftAsksForMore)
{
    this->host.Send(WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, MAKELPARAM(10, 30));
    this->host.Send(WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(10, 30));
    this->host.Send(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(10, 50));
    this->host.Send(WM_LBUTTONUP, MK_SHIFT, MAKELPARAM(10, 50));
    EXPECT_EQ(this->owner.asked, L"multi 1 multi 2");
}

TYPED_TEST(ListRowTest, ARightPressSelectsWhenTheListSaysSo)
{
    this->host.RightClick(10, 30);
    EXPECT_FALSE(this->second.IsSelected());
    EXPECT_TRUE(this->owner.Got(UIEVENT_RBUTTONDOWN));
    this->owner.info.bRSelected = true;
    this->host.RightClick(10, 30);
    EXPECT_TRUE(this->second.IsSelected());
    this->owner.asked.clear();
    this->host.RightClick(10, 30);
    EXPECT_EQ(this->owner.asked, L"") << "a selection of several rows stays";
}

TYPED_TEST(ListRowTest, ADoubleClickActivates)
{
    this->host.Click(10, 30);
    this->host.ClearSent();
    this->host.DoubleClick(10, 30);
    const std::wstring sent = this->Sent();
    EXPECT_NE(sent.find(L"itemactivate second, itemdbclick second"), std::wstring::npos)
        << "got: " << testing::PrintToString(sent);
    EXPECT_EQ(this->host.Sent(L"itemactivate").size(), 1u);
    EXPECT_EQ(this->host.Sent(L"itemdbclick")[0].sender, &this->second);
    EXPECT_EQ(this->host.Sent(L"itemdbclick")[0].wParam, 0u);
}

TYPED_TEST(ListRowTest, ADoubleClickOnARowThatIsNotSelectedSelectsIt)
{
    this->host.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, 30));
    EXPECT_EQ(this->Sent(), L"itemselect list, itemactivate second, itemdbclick second");
}

TYPED_TEST(ListRowTest, ReturnActivatesWithoutADoubleClick)
{
    this->second.SetFocus();
    this->host.ClearSent();
    this->host.Key(VK_RETURN);
    EXPECT_EQ(this->Sent(), L"itemactivate second");
    this->second.SetKeyboardEnabled(false);
    this->host.Key(VK_RETURN);
    EXPECT_EQ(this->host.Sent(L"itemactivate").size(), 1u);
}

TYPED_TEST(ListRowTest, ADisabledRowIsNotActivated)
{
    this->second.SetEnabled(false);
    EXPECT_FALSE(this->second.Activate());
    this->host.DoubleClick(10, 30);
    EXPECT_EQ(this->Sent(), L"");
}

TYPED_TEST(ListRowTest, RichEventsTellOfTheMouse)
{
    this->second.SetRichEvent(true);
    this->host.MoveMouse(10, 10);
    this->host.MoveMouse(10, 30);
    this->host.Click(10, 30);
    this->host.MoveMouse(10, 50);
    EXPECT_EQ(this->Sent(), L"mouseenter second, buttondown second, itemselect list, "
                            L"itemclick second, mouseleave second");
}

TYPED_TEST(ListRowTest, MenuAndTimerComeFromTheRow)
{
    this->second.SetContextMenuUsed(true);
    this->host.RightClick(10, 30);
    this->host.Send(WM_CONTEXTMENU, 0, MAKELPARAM(10, 30));
    ASSERT_FALSE(this->host.Sent(L"menu").empty());
    EXPECT_EQ(this->host.Sent(L"menu")[0].sender, &this->second);
    ASSERT_TRUE(this->second.SetTimer(7, 1000));
    this->host.AdvanceFrames(1);
    ASSERT_EQ(this->host.Sent(L"timer").size(), 1u);
    EXPECT_EQ(this->host.Sent(L"timer")[0].sender, &this->second);
    EXPECT_EQ(this->host.Sent(L"timer")[0].wParam, 7u);
}

TYPED_TEST(ListRowTest, AContextMenuThatIsNotUsedIsTheOwners)
{
    this->host.RightClick(10, 30);
    this->host.Send(WM_CONTEXTMENU, 0, MAKELPARAM(10, 30));
    EXPECT_TRUE(this->owner.Got(UIEVENT_CONTEXTMENU));
    EXPECT_TRUE(this->host.Sent(L"menu").empty());
}

TYPED_TEST(ListRowTest, OtherEventsAreTheOwners)
{
    this->host.Press(10, 30);
    this->host.Release(10, 30);
    this->host.MoveMouse(12, 30);
    this->host.Wheel(12, 30, -120);
    this->host.Key(VK_DOWN);
    this->host.Char(L'x');
    for (const int type : {UIEVENT_SETFOCUS, UIEVENT_MOUSEMOVE, UIEVENT_SCROLLWHEEL,
                           UIEVENT_KEYDOWN, UIEVENT_KEYUP, UIEVENT_CHAR}) {
        SCOPED_TRACE(type);
        EXPECT_TRUE(this->owner.Got(type));
    }
    for (const int type : {UIEVENT_BUTTONDOWN, UIEVENT_BUTTONUP, UIEVENT_MOUSEENTER}) {
        SCOPED_TRACE(type);
        EXPECT_FALSE(this->owner.Got(type));
    }
}

TYPED_TEST(ListRowTest, ARowKnowsThatItHasTheFocus)
{
    this->host.Click(10, 30);
    EXPECT_TRUE(this->second.IsFocused());
    this->host.Click(10, 50);
    EXPECT_FALSE(this->second.IsFocused());
    EXPECT_TRUE(this->owner.Got(UIEVENT_KILLFOCUS));
}

TYPED_TEST(ListRowTest, WithTheMouseOffMouseEventsAreTheOwners)
{
    this->second.SetMouseEnabled(false);
    TEventUI event = {};
    event.Type = UIEVENT_BUTTONDOWN;
    event.ptMouse = {10, 30};
    this->second.DoEvent(event);
    EXPECT_TRUE(this->owner.Got(UIEVENT_BUTTONDOWN));
    EXPECT_FALSE(this->second.IsSelected());
}

// Looks. The middle of the second row is at (50, 30).

TYPED_TEST(ListRowTest, TheColourOfTheStateFillsTheRow)
{
    auto& info = this->owner.info;
    info.dwBkColor = kGray.value;
    info.dwHotBkColor = kRed.value;
    info.dwSelectedBkColor = kGreen.value;
    info.dwDisabledBkColor = kBlue.value;
    EXPECT_EQ(this->host.Paint().Count(kGray), 100 * 60);

    this->host.MoveMouse(10, 30);
    EXPECT_EQ(this->host.Paint().Count(kRed, {0, 20, 100, 40}), 100 * 20);
    this->second.Select();
    EXPECT_EQ(this->host.Paint().Count(kGreen, {0, 20, 100, 40}), 100 * 20);
    this->second.SetEnabled(false);
    const Picture disabled = this->host.Paint();
    EXPECT_EQ(disabled.Count(kBlue, {0, 20, 100, 40}), 100 * 20);
    EXPECT_EQ(disabled.Count(kGray), 100 * 40);
}

TYPED_TEST(ListRowTest, AStateWithoutAColourShowsTheNextOne)
{
    auto& info = this->owner.info;
    info.dwBkColor = kGray.value;
    info.dwHotBkColor = 0;
    info.dwSelectedBkColor = 0;
    info.dwDisabledBkColor = 0;
    this->host.MoveMouse(10, 30);
    this->second.Select();
    EXPECT_EQ(this->host.Paint().At(50, 30), kGray);
    this->second.SetEnabled(false);
    EXPECT_EQ(this->host.Paint().At(50, 30), kGray);
}

TYPED_TEST(ListRowTest, ALeavingMouseTakesTheHotLookAway)
{
    this->owner.info.dwHotBkColor = kRed.value;
    this->host.MoveMouse(10, 30);
    EXPECT_EQ(this->host.Paint().At(50, 30), kRed);
    this->host.LeaveMouse();
    EXPECT_EQ(this->host.Paint().At(50, 30), kWhite);
}

TYPED_TEST(ListRowTest, ARowIsNotHotWhenItIsEnabledAgain)
{
    this->owner.info.dwHotBkColor = kRed.value;
    this->host.MoveMouse(10, 30);
    this->second.SetEnabled(false);
    this->second.SetEnabled(true);
    EXPECT_EQ(this->host.Paint().At(50, 30), kWhite);
}

TYPED_TEST(ListRowTest, TheRowsOwnColourIsBelowThoseOfStates)
{
    this->owner.info.dwBkColor = kGray.value;
    this->second.SetBkColor(kYellow.value);
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.At(50, 10), kGray);
    EXPECT_EQ(picture.At(50, 30), kYellow);
}

// Rows of text draw the look of the list instead of what controls draw; containers draw both.
TYPED_TEST(ListRowTest, OnlyARowThatIsAContainerDrawsLikeOtherControls)
{
    AddColumns(this->host.Manager(), L"fore", {kBlue});
    this->second.ApplyAttributeList(
        L"forecolor=\"#FFFF0000\" bordercolor=\"#FF00FF00\" "
        L"bordersize=\"2\" foreimage=\"file='fore' dest='40,5,50,15'\"");
    const Picture picture = this->host.Paint();
    const bool isContainer = std::is_base_of_v<CContainerUI, TypeParam>;
    EXPECT_EQ(picture.Count(kRed) > 0, isContainer);
    EXPECT_EQ(picture.Count(kGreen) > 0, isContainer);
    EXPECT_EQ(picture.Count(kBlue) > 0, isContainer);
}

TYPED_TEST(ListRowTest, AnAlternatingBackgroundLeavesEverySecondRowOut)
{
    this->owner.info.dwBkColor = kGray.value;
    this->owner.info.bAlternateBk = true;
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.At(50, 10), kGray);
    EXPECT_EQ(picture.At(50, 30), kWhite);
    EXPECT_EQ(picture.At(50, 50), kGray);
}

TYPED_TEST(ListRowTest, AnAlternatingImageLeavesEverySecondRowOut)
{
    AddColumns(this->host.Manager(), L"list", {kBlue});
    this->owner.info.sBkImage = L"list";
    this->owner.info.bAlternateBk = true;
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.At(50, 10), kBlue);
    EXPECT_EQ(picture.At(50, 30), kWhite);
}

TYPED_TEST(ListRowTest, TheFirstImageThatIsFoundIsDrawn)
{
    auto& manager = this->host.Manager();
    AddColumns(manager, L"disabled", {kBlue});
    AddColumns(manager, L"selected", {kGreen});
    AddColumns(manager, L"hot", {kRed});
    AddColumns(manager, L"own", {kYellow});
    AddColumns(manager, L"list", {kGray});
    auto& info = this->owner.info;
    info.sDisabledImage = L"disabled";
    info.sSelectedImage = L"selected";
    info.sHotImage = L"hot";
    info.sBkImage = L"list";
    // A container draws an own image once more, over all the others.
    const bool ownIsOnTop = std::is_same_v<TypeParam, CListContainerElementUI>;

    EXPECT_EQ(this->host.Paint().At(50, 30), kGray);
    this->host.MoveMouse(10, 30);
    EXPECT_EQ(this->host.Paint().At(50, 30), kRed);
    info.sHotImage = L"missing";
    EXPECT_EQ(this->host.Paint().At(50, 30), kGray) << "a picture that does not load";
    this->second.SetBkImage(L"own");
    EXPECT_EQ(this->host.Paint().At(50, 30), kYellow);
    info.sHotImage = L"hot";
    this->second.Select();
    EXPECT_EQ(this->host.Paint().At(50, 30), ownIsOnTop ? kYellow : kGreen);
    this->second.SetBkImage(L"");
    EXPECT_EQ(this->host.Paint().At(50, 30), kGreen);
    this->second.SetEnabled(false);
    EXPECT_EQ(this->host.Paint().At(50, 30), kBlue);
}

TYPED_TEST(ListRowTest, ForeImagesLieOverTheBackground)
{
    auto& manager = this->host.Manager();
    AddColumns(manager, L"bk", {kGray});
    AddColumns(manager, L"fore", {kBlue});
    AddColumns(manager, L"hotfore", {kRed});
    AddColumns(manager, L"selectedfore", {kGreen});
    auto& info = this->owner.info;
    info.sBkImage = L"bk";
    info.sForeImage = L"file='fore' dest='0,0,50,20'";
    info.sHotForeImage = L"file='hotfore' dest='0,0,50,20'";
    info.sSelectedForeImage = L"file='selectedfore' dest='0,0,50,20'";

    const auto left = [this] { return this->host.Paint().At(25, 30); };
    EXPECT_EQ(left(), kBlue);
    EXPECT_EQ(this->host.Paint().At(75, 30), kGray);
    this->host.MoveMouse(10, 30);
    EXPECT_EQ(left(), kRed);
    this->second.Select();
    EXPECT_EQ(left(), kGreen);
    info.sSelectedForeImage = L"";
    this->second.Invalidate();
    EXPECT_EQ(left(), kRed);
}

TYPED_TEST(ListRowTest, RowLinesLieAtTheLowerEdges)
{
    auto& info = this->owner.info;
    info.dwLineColor = kBlack.value;
    EXPECT_EQ(this->host.Paint().Count(kBlack), 0);
    info.bShowRowLine = true;
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.Count(kBlack), 3 * 100);
    for (const int y : {19, 39, 59})
        EXPECT_EQ(picture.Count(kBlack, {0, y, 100, y + 1}), 100);
}

TYPED_TEST(ListRowTest, ColumnLinesLieAtTheRightEdges)
{
    auto& info = this->owner.info;
    info.dwLineColor = kBlack.value;
    info.bShowColumnLine = true;
    info.nColumns = 3;
    info.rcColumn[0] = {0, 0, 30, 0};
    info.rcColumn[1] = {30, 0, 30, 0}; // a hidden column
    info.rcColumn[2] = {30, 0, 80, 0};
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.Count(kBlack, {29, 0, 30, 60}), 60);
    EXPECT_EQ(picture.Count(kBlack, {79, 0, 80, 60}), 60);
    EXPECT_EQ(picture.Count(kBlack), 120);
}

TYPED_TEST(ListRowTest, LinesLieOverEverythingElse)
{
    AddColumns(this->host.Manager(), L"list", {kGray});
    auto& info = this->owner.info;
    info.sBkImage = L"list";
    info.dwBkColor = kRed.value;
    info.dwLineColor = kBlack.value;
    info.bShowRowLine = true;
    const Picture picture = this->host.Paint();
    EXPECT_EQ(picture.At(50, 19), kBlack);
    EXPECT_EQ(picture.At(50, 10), kGray);
}

TYPED_TEST(ListRowTest, StatesAndLinesAreScaled)
{
    ControlHost large{100, 120, 192};
    auto& list = large.Add<RowOwner>();
    auto& row = list.template AddRow<TypeParam>();
    list.info.dwBkColor = kGray.value;
    list.info.dwHotBkColor = kRed.value;
    list.info.dwSelectedBkColor = kGreen.value;
    list.info.dwDisabledBkColor = kBlue.value;
    list.info.dwLineColor = kBlack.value;
    list.info.bShowRowLine = true;
    EXPECT_EQ(large.Paint().Count(kGray), 100 * 38);
    EXPECT_EQ(large.Paint().Count(kBlack, {0, 38, 100, 40}), 200);
    large.MoveMouse(5, 35);
    EXPECT_EQ(large.Paint().Count(kRed), 100 * 38);
    row.Select();
    EXPECT_EQ(large.Paint().Count(kGreen), 100 * 38);
    row.SetEnabled(false);
    EXPECT_EQ(large.Paint().Count(kBlue), 100 * 38);
}

TYPED_TEST(ListRowTest, InvalidatingIsCutByTheAreaOfTheRows)
{
    this->owner.SetInset({0, 0, 0, 35}); // the second row sticks out of the area
    this->host.Paint();
    ::ValidateRect(this->host.Window(), nullptr);
    this->second.Invalidate();
    RECT update{};
    ASSERT_TRUE(::GetUpdateRect(this->host.Window(), &update, FALSE));
    const RECT expected{0, 20, 100, 40};
    EXPECT_TRUE(::EqualRect(&update, &expected)) << update.top << " to " << update.bottom;

    ::ValidateRect(this->host.Window(), nullptr);
    this->owner.SetInset({0, 0, 0, 45});
    this->host.Layout();
    ::ValidateRect(this->host.Window(), nullptr);
    this->second.Invalidate();
    ASSERT_TRUE(::GetUpdateRect(this->host.Window(), &update, FALSE));
    EXPECT_EQ(update.bottom, 35);
}

TYPED_TEST(ListRowTest, ARowIsPlacedWhereItIsTold)
{
    this->second.SetFixedWidth(30);
    this->owner.info.nColumns = 2;
    this->owner.info.rcColumn[0] = {0, 0, 30, 0};
    this->owner.info.rcColumn[1] = {30, 0, 70, 0};
    this->host.Layout();
    const RECT target{5, 33, 61, 47};
    this->second.SetPos(target, true);
    EXPECT_TRUE(::EqualRect(&this->second.GetPos(), &target));
    this->second.SetPos(this->second.GetPos(), true);
    EXPECT_TRUE(::EqualRect(&this->second.GetPos(), &target)) << "again moves nothing";
    EXPECT_EQ(this->second.GetX(), 5);
    EXPECT_EQ(this->second.GetY(), 33);
    EXPECT_EQ(this->second.GetWidth(), 56);
    EXPECT_EQ(this->second.GetHeight(), 14);
    const RECT relative{5, 33, 61, 47};
    const RECT got = this->second.GetRelativePos();
    EXPECT_TRUE(::EqualRect(&got, &relative));
}

TYPED_TEST(ListRowTest, PaintingCreatesNothing)
{
    AddColumns(this->host.Manager(), L"list", {kGray});
    auto& info = this->owner.info;
    info.sBkImage = L"list";
    info.dwBkColor = kRed.value;
    info.dwLineColor = kBlack.value;
    info.bShowRowLine = true;
    this->first.SetText(L"one");
    this->host.Paint();
    const auto handles = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 20; ++i)
        this->host.Paint();
    EXPECT_EQ(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS), handles);
}

// Handlers.

TYPED_TEST(ListRowTest, AHandlerMayDeleteTheRow)
{
    DeleteAtOnce(&this->owner);
    for (const wchar_t* const type :
         {L"itemselect", L"itemclick", L"itemactivate", L"buttondown", L"mouseenter"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(type)));
        auto& row = this->owner.template AddRow<TypeParam>();
        this->owner.SetItemIndex(&row, 0);
        row.SetRichEvent(true);
        for (int i = 0; i < this->owner.GetCount(); ++i)
            static_cast<TypeParam*>(this->owner.GetItemAt(i))->SetIndex(i);
        this->owner.UnSelectItem(this->owner.GetCurSel());
        this->host.LeaveMouse();
        this->host.Layout();
        const int count = this->owner.GetCount();
        const typename TestFixture::OnSent handler(this->host, type,
                                                   [&] { this->owner.Remove(&row); });
        this->host.MoveMouse(10, 10);
        this->host.Press(10, 10);
        this->host.Release(10, 10);
        this->host.DoubleClick(10, 10);
        EXPECT_EQ(this->owner.GetCount(), count - 1);
    }
}

TYPED_TEST(ListRowTest, AfterADeletedActivationThereIsNoDoubleClick)
{
    DeleteAtOnce(&this->owner);
    const typename TestFixture::OnSent handler(this->host, L"itemactivate",
                                               [this] { this->owner.Remove(&this->second); });
    this->host.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, 30));
    EXPECT_EQ(this->host.Sent(L"itemactivate").size(), 1u);
    EXPECT_TRUE(this->host.Sent(L"itemdbclick").empty());
}

TYPED_TEST(ListRowTest, AHandlerMayDeleteTheList)
{
    DeleteAtOnce(this->host.Root());
    const typename TestFixture::OnSent handler(this->host, L"itemactivate", [this] {
        static_cast<CContainerUI*>(this->host.Root())->Remove(&this->owner);
    });
    this->host.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, 30));
    EXPECT_EQ(static_cast<CContainerUI*>(this->host.Root())->GetCount(), 0);
}

TYPED_TEST(ListRowTest, AHandlerMayCloseTheWindow)
{
    const HWND window = this->host.Window();
    const typename TestFixture::OnSent handler(this->host, L"itemactivate",
                                               [window] { ::DestroyWindow(window); });
    this->host.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, 30));
    EXPECT_FALSE(::IsWindow(window));
}

// Rows of one text.

class ListLabelElementTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{200, 120, GetParam()};
    RowOwner& owner = host.Add<RowOwner>();
    CListLabelElementUI& row = owner.AddRow<CListLabelElementUI>(40);

    void SetUp() override
    {
        owner.SetBkColor(kWhite.value);
        UnderlineTexts(host.Manager());
    }
    int Scaled(int length) { return host.Manager().GetDPIObj()->Scale(length); }
    bool Shows(Argb colour) { return host.Paint().Count(colour) > 0; }
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListLabelElementTest, testing::Values(96, 144));

TEST_P(ListLabelElementTest, AnswersToItsNames)
{
    EXPECT_STREQ(row.GetClass(), L"ListLabelElementUI");
    EXPECT_EQ(row.GetInterface(L"ListLabelElement"), &row);
    EXPECT_NE(row.GetInterface(L"ListElement"), nullptr);
    const std::unique_ptr<CControlUI> made(CListLabelElementUI::CreateControl());
    EXPECT_STREQ(made->GetClass(), L"ListLabelElementUI");
    const std::unique_ptr<CControlUI> byName(
        CControlFactory::GetInstance()->CreateControl(L"CListLabelElementUI"));
    ASSERT_NE(byName, nullptr);
    EXPECT_STREQ(byName->GetClass(), L"ListLabelElementUI");
}

TEST_P(ListLabelElementTest, TheTextHasTheColourOfTheState)
{
    row.SetText(L"nnnnnn");
    auto& info = owner.info;
    info.dwTextColor = kRed.value;
    info.dwHotTextColor = kGreen.value;
    info.dwSelectedTextColor = kBlue.value;
    info.dwDisabledTextColor = kGray.value;
    info.dwHotBkColor = info.dwSelectedBkColor = info.dwDisabledBkColor = 0;
    EXPECT_TRUE(Shows(kRed));
    host.MoveMouse(5, 5);
    EXPECT_TRUE(Shows(kGreen));
    row.Select();
    EXPECT_TRUE(Shows(kBlue));
    row.SetEnabled(false);
    EXPECT_TRUE(Shows(kGray));
}

TEST_P(ListLabelElementTest, AStateWithoutATextColourHasTheNormalOne)
{
    row.SetText(L"nnnnnn");
    auto& info = owner.info;
    info.dwTextColor = kRed.value;
    info.dwHotTextColor = info.dwSelectedTextColor = 0;
    info.dwHotBkColor = info.dwSelectedBkColor = 0;
    host.MoveMouse(5, 5);
    EXPECT_TRUE(Shows(kRed));
    row.Select();
    EXPECT_TRUE(Shows(kRed));
}

TEST_P(ListLabelElementTest, WithoutColoursTheWindowsAreUsed)
{
    row.SetText(L"nnnnnn");
    owner.info.dwTextColor = owner.info.dwDisabledTextColor = owner.info.dwDisabledBkColor = 0;
    host.Manager().SetDefaultFontColor(kGreen.value);
    host.Manager().SetDefaultDisabledColor(kBlue.value);
    EXPECT_TRUE(Shows(kGreen));
    row.SetEnabled(false);
    EXPECT_TRUE(Shows(kBlue));
}

TEST_P(ListLabelElementTest, FontStyleAndPaddingAreTheLists)
{
    row.SetText(L"nn");
    owner.info.dwTextColor = kRed.value;
    owner.info.rcTextPadding = {20, 0, 0, 0};
    const RECT left = test::Ink(host.Paint());
    EXPECT_NEAR(left.left, Scaled(20), 3);
    owner.info.uTextStyle = DT_RIGHT | DT_VCENTER | DT_SINGLELINE;
    owner.info.rcTextPadding = {0, 0, 30, 0};
    row.Invalidate();
    EXPECT_NEAR(test::Ink(host.Paint()).right, 200 - Scaled(30), 3);
    host.Manager().AddFont(5, L"Arial", 34, false, true, false, false);
    owner.info.nFont = 5;
    const RECT large = test::Ink(host.Paint());
    EXPECT_GT(large.right - large.left, (left.right - left.left) * 3 / 2);
}

TEST_P(ListLabelElementTest, MarkupIsShownWhenTheListSaysSo)
{
    row.SetText(L"{c #0000FF}nn{/c}");
    owner.info.dwTextColor = kRed.value;
    EXPECT_FALSE(Shows(kBlue));
    owner.info.bShowHtml = true;
    row.Invalidate();
    EXPECT_TRUE(Shows(kBlue));
    EXPECT_FALSE(Shows(kRed));
}

TEST_P(ListLabelElementTest, WithoutAHeightItIsAsHighAsALineAndEightPixels)
{
    row.SetFixedHeight(0);
    const LONG line = host.Manager().GetDefaultFontInfo()->tm.tmHeight;
    const SIZE size = row.EstimateSize({200, 100});
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, line + 8);
    owner.info.rcTextPadding = {0, 4, 0, 6};
    EXPECT_EQ(row.EstimateSize({200, 100}).cy, line + 8 + Scaled(4) + Scaled(6));
    row.SetFixedHeight(30);
    row.SetFixedWidth(50);
    EXPECT_EQ(row.EstimateSize({200, 100}).cy, Scaled(30));
    EXPECT_EQ(row.EstimateSize({200, 100}).cx, Scaled(50));
}

TEST_P(ListLabelElementTest, AWrappingTextIsAsHighAsItNeeds)
{
    row.SetFixedHeight(0);
    owner.info.uTextStyle = DT_LEFT | DT_WORDBREAK;
    row.SetText(L"one two three four five six seven eight");
    const auto wrapped = [this](int width) {
        return test::MeasureWrapped(host.Manager(), row.GetText(), width, DT_WORDBREAK).cy;
    };
    EXPECT_EQ(row.EstimateSize({100, 0}).cy, wrapped(100));
    EXPECT_EQ(row.EstimateSize({60, 0}).cy, wrapped(60)) << "another width";
    row.SetText(L"one two");
    EXPECT_EQ(row.EstimateSize({60, 0}).cy, wrapped(60)) << "another text";
    host.Manager().SetDefaultFont(L"Arial", 40, false, false, false, false);
    EXPECT_EQ(row.EstimateSize({60, 0}).cy, wrapped(60)) << "another font";
    row.SetText(L"");
    EXPECT_EQ(row.EstimateSize({60, 0}).cy, host.Manager().GetDefaultFontInfo()->tm.tmHeight);
}

TEST_P(ListLabelElementTest, ImagesOfRowsAreScaled)
{
    AddColumns(host.Manager(), L"fore", {kBlue});
    owner.info.sForeImage = L"file='fore' dest='10,0,20,40'";
    EXPECT_EQ(host.Paint().Count(kBlue), Scaled(10) * Scaled(40));
}

} // namespace
