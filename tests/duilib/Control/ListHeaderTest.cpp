#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/Cursors.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;
using test::UnderlineTexts;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kGray{0xFF808080};

// A header of three columns of 60 design pixels on white, in a window of 400 device pixels.
class ListHeaderTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{400, 60, GetParam()};
    CVerticalLayoutUI& page = host.Add<CVerticalLayoutUI>();
    CListHeaderUI& header = *new CListHeaderUI;
    CListHeaderItemUI* columns[3] = {};

    void SetUp() override
    {
        header.SetBkColor(kWhite.value);
        header.SetFixedHeight(30);
        for (int i = 0; i < 3; ++i) {
            columns[i] = new CListHeaderItemUI;
            columns[i]->SetFixedWidth(60);
            columns[i]->SetName((L"column" + std::to_wstring(i)).c_str());
            header.Add(columns[i]);
        }
        page.Add(&header);
        host.Layout();
        host.ClearSent();
    }
    int Scaled(int length) { return host.Manager().GetDPIObj()->Scale(length); }
    int Separator(int column) { return columns[column]->GetPos().right - 2; }
    int Width(int column)
    {
        host.Layout();
        return columns[column]->GetWidth();
    }
    void DragSeparator(int column, int by)
    {
        const int x = Separator(column);
        host.Press(x, 5);
        host.MoveMouse(x + by, 5);
        host.Release(x + by, 5);
        host.Layout();
    }
    std::wstring Focus()
    {
        CControlUI* const focus = host.Manager().GetFocus();
        return focus != nullptr ? std::wstring(focus->GetName()) : L"";
    }
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListHeaderTest, testing::Values(96, 144));

TEST_P(ListHeaderTest, AnswersToItsNames)
{
    EXPECT_STREQ(header.GetClass(), L"ListHeaderUI");
    EXPECT_EQ(header.GetInterface(L"ListHeader"), &header);
    EXPECT_STREQ(columns[0]->GetClass(), L"ListHeaderItemUI");
    EXPECT_EQ(columns[0]->GetInterface(L"ListHeaderItem"), columns[0]);
    EXPECT_NE(columns[0]->GetInterface(L"HorizontalLayout"), nullptr);
    for (const wchar_t* const name : {L"ListHeader", L"ListHeaderItem"}) {
        const std::wstring className = L"C" + std::wstring(name) + L"UI";
        const std::unique_ptr<CControlUI> made(
            CControlFactory::GetInstance()->CreateControl(className.c_str()));
        ASSERT_NE(made, nullptr);
        EXPECT_NE(made->GetInterface(name), nullptr);
    }
}

TEST_P(ListHeaderTest, StartValues)
{
    EXPECT_FALSE(header.IsScaleHeader());
    const auto& item = *columns[0];
    EXPECT_TRUE(item.IsDragable());
    EXPECT_EQ(item.GetSepWidth(), static_cast<DWORD>(Scaled(4)));
    EXPECT_EQ(item.GetTextStyle(), 0u + (DT_CENTER | DT_VCENTER | DT_SINGLELINE));
    EXPECT_EQ(item.GetTextColor(), 0u);
    EXPECT_EQ(item.GetScale(), 0);
    EXPECT_FALSE(columns[0]->IsShowHtml());
}

TEST_P(ListHeaderTest, AttributesReachTheirSetters)
{
    auto& item = *columns[0];
    item.SetAttribute(L"dragable", L"false");
    item.SetAttribute(L"sepwidth", L"6");
    item.SetAttribute(L"align", L"right");
    item.SetAttribute(L"endellipsis", L"true");
    item.SetAttribute(L"font", L"3");
    item.SetAttribute(L"textcolor", L"#FF123456");
    item.SetAttribute(L"textpadding", L"1,2,3,4");
    item.SetAttribute(L"showhtml", L"true");
    item.SetAttribute(L"normalimage", L"1.png");
    item.SetAttribute(L"hotimage", L"2.png");
    item.SetAttribute(L"pushedimage", L"3.png");
    item.SetAttribute(L"focusedimage", L"4.png");
    item.SetAttribute(L"sepimage", L"5.png");
    item.SetAttribute(L"SCALE", L"7");
    EXPECT_FALSE(item.IsDragable());
    EXPECT_EQ(item.GetSepWidth(), static_cast<DWORD>(Scaled(6)));
    EXPECT_EQ(item.GetTextStyle(), 0u + (DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS));
    EXPECT_EQ(item.GetTextColor(), 0xFF123456u);
    EXPECT_EQ(item.GetTextPadding().bottom - item.GetTextPadding().top, Scaled(2));
    EXPECT_EQ(item.GetTextPadding().left, Scaled(1));
    EXPECT_TRUE(item.IsShowHtml());
    EXPECT_STREQ(item.GetNormalImage(), L"1.png");
    EXPECT_STREQ(item.GetHotImage(), L"2.png");
    EXPECT_STREQ(item.GetPushedImage(), L"3.png");
    EXPECT_STREQ(item.GetFocusedImage(), L"4.png");
    EXPECT_STREQ(item.GetSepImage(), L"5.png");
    EXPECT_EQ(item.GetScale(), 7);
    item.SetAttribute(L"align", L"left");
    item.SetAttribute(L"endellipsis", L"false");
    EXPECT_EQ(item.GetTextStyle(), 0u + (DT_LEFT | DT_VCENTER | DT_SINGLELINE));
    header.SetAttribute(L"scaleheader", L"true");
    EXPECT_TRUE(header.IsScaleHeader());
}

TEST_P(ListHeaderTest, ItIsAsHighAsItsHighestColumn)
{
    header.SetFixedHeight(0);
    const LONG line = host.Manager().GetDefaultFontInfo()->tm.tmHeight;
    EXPECT_EQ(header.EstimateSize({400, 60}).cy, line + 8);
    columns[1]->SetFixedHeight(50);
    EXPECT_EQ(header.EstimateSize({400, 60}).cy, Scaled(50));
    columns[1]->SetVisible(false);
    EXPECT_EQ(header.EstimateSize({400, 60}).cy, line + 8);
    columns[0]->SetTextPadding({0, 3, 0, 4});
    const RECT padding = columns[0]->GetTextPadding();
    EXPECT_EQ(header.EstimateSize({400, 60}).cy, line + 8 + padding.top + padding.bottom);
    header.SetFixedHeight(20);
    EXPECT_EQ(header.EstimateSize({400, 60}).cy, Scaled(20));
}

TEST_P(ListHeaderTest, ColumnsStandBesideEachOther)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(columns[i]->GetX(), i * Scaled(60));
        EXPECT_EQ(columns[i]->GetWidth(), Scaled(60));
        EXPECT_EQ(columns[i]->GetHeight(), Scaled(30));
    }
    columns[1]->SetVisible(false);
    host.Layout();
    EXPECT_EQ(columns[2]->GetX(), Scaled(60));
}

TEST_P(ListHeaderTest, AHeaderThatScalesSharesItsWidth)
{
    header.SetScaleHeader(true);
    columns[0]->SetScale(1);
    columns[1]->SetScale(2);
    columns[2]->SetScale(1);
    EXPECT_EQ(Width(0), 100);
    EXPECT_EQ(Width(1), 200);
    EXPECT_EQ(Width(2), 100);
    EXPECT_EQ(columns[2]->GetPos().right, 400);
    columns[1]->SetVisible(false);
    EXPECT_EQ(Width(0), 200);
    EXPECT_EQ(columns[2]->GetX(), 200);
    host.Resize(301, 60);
    EXPECT_EQ(Width(0) + Width(2), 301);
}

TEST_P(ListHeaderTest, AColumnWithoutAScaleTakesItsWidthForOne)
{
    header.SetScaleHeader(true);
    columns[0]->SetFixedWidth(30);
    columns[1]->SetFixedWidth(30);
    EXPECT_EQ(Width(0), 100);
    EXPECT_EQ(Width(1), 100);
    EXPECT_EQ(Width(2), 200);
}

// Separators.

TEST_P(ListHeaderTest, TheSeparatorIsAtAnEdge)
{
    const RECT item = columns[1]->GetPos();
    const RECT right{item.right - Scaled(4), item.top, item.right, item.bottom};
    RECT thumb = columns[1]->GetThumbRect();
    EXPECT_TRUE(::EqualRect(&thumb, &right));
    columns[1]->SetSepWidth(-4);
    const RECT left{item.left, item.top, item.left + Scaled(4), item.bottom};
    thumb = columns[1]->GetThumbRect();
    EXPECT_TRUE(::EqualRect(&thumb, &left));
    columns[1]->SetSepWidth(0);
    thumb = columns[1]->GetThumbRect();
    EXPECT_TRUE(::IsRectEmpty(&thumb));
}

TEST_P(ListHeaderTest, DraggingASeparatorChangesTheWidthOnRelease)
{
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x + 30, 5);
    EXPECT_EQ(Width(0), Scaled(60));
    host.Release(x + 30, 5);
    EXPECT_EQ(Width(0), Scaled(60) + 30);
    EXPECT_EQ(columns[1]->GetX(), Scaled(60) + 30);
    EXPECT_EQ(Width(1), Scaled(60));
    EXPECT_TRUE(host.Sent(L"headerclick").empty());
}

TEST_P(ListHeaderTest, InImmediateModeDraggingChangesTheWidthAtOnce)
{
    columns[0]->SetAttribute(L"sepimm", L"true");
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x + 15, 5);
    EXPECT_EQ(Width(0), Scaled(60) + 15);
    host.MoveMouse(x + 30, 5);
    EXPECT_EQ(Width(0), Scaled(60) + 30);
    host.Release(x + 30, 5);
    EXPECT_EQ(Width(0), Scaled(60) + 30);
}

TEST_P(ListHeaderTest, DraggingStaysWithinTheLimits)
{
    columns[0]->SetMinWidth(40);
    columns[0]->SetMaxWidth(80);
    DragSeparator(0, -100);
    EXPECT_EQ(Width(0), Scaled(40));
    DragSeparator(0, 200);
    EXPECT_EQ(Width(0), Scaled(80));
    DragSeparator(1, -300);
    EXPECT_EQ(Width(1), Scaled(4)) << "the separator itself stays";
}

TEST_P(ListHeaderTest, TheSeparatorWaitsForTheMouseBeyondALimit)
{
    columns[0]->SetMinWidth(40);
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x - 200, 5);
    host.MoveMouse(x - 10, 5);
    host.Release(x - 10, 5);
    EXPECT_EQ(Width(0), Scaled(60) - 10);
}

TEST_P(ListHeaderTest, ASeparatorAtTheLeftGrowsToTheLeft)
{
    columns[1]->SetSepWidth(-4);
    const int x = columns[1]->GetX() + 1;
    host.Press(x, 5);
    host.MoveMouse(x - 20, 5);
    host.Release(x - 20, 5);
    EXPECT_EQ(Width(1), Scaled(60) + 20);
}

TEST_P(ListHeaderTest, AColumnThatIsNotDragableStays)
{
    columns[0]->SetDragable(false);
    DragSeparator(0, 30);
    EXPECT_EQ(Width(0), Scaled(60));
    EXPECT_EQ(host.Sent(L"headerclick").size(), 1u) << "the strip is part of the column then";
}

TEST_P(ListHeaderTest, EscapeEndsADragWithoutAChange)
{
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x + 30, 5);
    host.Key(VK_ESCAPE);
    host.Release(x + 30, 5);
    EXPECT_EQ(Width(0), Scaled(60));
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
}

TEST_P(ListHeaderTest, ADragEndsWhenTheWindowLosesTheMouse)
{
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x + 30, 5);
    host.Send(WM_KILLFOCUS);
    host.MoveMouse(x + 40, 5);
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
    host.Release(x + 40, 5);
    EXPECT_EQ(Width(0), Scaled(60));
}

TEST_P(ListHeaderTest, ADisabledColumnIsNeitherDraggedNorClicked)
{
    columns[0]->SetEnabled(false);
    DragSeparator(0, 30);
    EXPECT_EQ(Width(0), Scaled(60));
    host.Click(5, 5);
    EXPECT_TRUE(host.Sent(L"headerclick").empty());
}

TEST_P(ListHeaderTest, ABarFollowsTheMouseWhileDragging)
{
    const int x = Separator(0);
    const int edge = columns[0]->GetPos().right;
    host.Press(x, 5);
    host.MoveMouse(x + 30, 5);
    host.Paint();
    const Picture screen = host.Screen();
    const Argb under = screen.At(edge + 30 + 3, 5);
    EXPECT_EQ(under, kWhite);
    EXPECT_EQ(screen.At(edge + 30 - 1, 5), Argb{0xFF555555}) << "0xAA000000 over white";
    EXPECT_EQ(screen.At(edge + 30 - Scaled(4), 5), Argb{0xFF555555});
    host.Release(x + 30, 5);
    host.Paint();
    EXPECT_EQ(host.Screen().Count(Argb{0xFF555555}), 0);
    EXPECT_EQ(host.Manager().GetPostPaintCount(), 0);
}

TEST_P(ListHeaderTest, InAHeaderThatScalesTheNeighbourGivesTheSpace)
{
    header.SetScaleHeader(true);
    columns[0]->SetScale(1);
    columns[1]->SetScale(2);
    columns[2]->SetScale(1);
    columns[1]->SetMinWidth(Scaled(60) == 60 ? 60 : 40);
    host.Layout();
    DragSeparator(0, 50);
    EXPECT_EQ(Width(0), 150);
    EXPECT_EQ(Width(1), 150);
    EXPECT_EQ(Width(2), 100);
    DragSeparator(0, 300);
    EXPECT_EQ(Width(1), 60) << "the neighbour's minimum";
    EXPECT_EQ(Width(0) + Width(1) + Width(2), 400);
    DragSeparator(2, 50);
    EXPECT_EQ(Width(2), 100) << "nobody is beside the last column";
    host.Resize(800, 60);
    EXPECT_EQ(Width(2), 200) << "the new proportion holds";
}

TEST_P(ListHeaderTest, OverASeparatorTheCursorTellsSo)
{
    const auto isShownAt = [this](LPCWSTR cursor, int x) {
        TEventUI event = {};
        event.Type = UIEVENT_SETCURSOR;
        event.ptMouse = {x, 5};
        ::SetCursor(nullptr);
        columns[0]->Event(event);
        return test::IsCursorShown(cursor);
    };
    EXPECT_TRUE(isShownAt(IDC_SIZEWE, Separator(0)));
    EXPECT_TRUE(isShownAt(IDC_ARROW, 10));
    EXPECT_EQ(columns[0]->GetControlFlags() & UIFLAG_SETCURSOR, 0u + UIFLAG_SETCURSOR);
    columns[0]->SetDragable(false);
    EXPECT_FALSE(isShownAt(IDC_SIZEWE, Separator(0)));
    columns[0]->SetDragable(true);
    columns[0]->SetEnabled(false);
    EXPECT_FALSE(isShownAt(IDC_SIZEWE, Separator(0)));
}

// Clicks and keys.

TEST_P(ListHeaderTest, APressOutsideTheSeparatorClicks)
{
    host.Press(10, 5);
    const auto sent = host.Sent(L"headerclick");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, columns[0]);
    EXPECT_EQ(sent[0].wParam, 0u);
    EXPECT_EQ(sent[0].lParam, 0);
    host.Release(10, 5);
    host.DoubleClick(10, 5);
    EXPECT_GE(host.Sent(L"headerclick").size(), 2u) << "a quick second press counts";
}

TEST_P(ListHeaderTest, ASkippedColumnPassesTheMouseOn)
{
    columns[0]->SetMouseEnabled(false);
    host.Click(10, 5);
    EXPECT_TRUE(host.Sent(L"headerclick").empty());
}

TEST_P(ListHeaderTest, MenuComesFromTheColumn)
{
    columns[1]->SetContextMenuUsed(true);
    host.RightClick(Scaled(60) + 10, 5);
    host.Send(WM_CONTEXTMENU, 0, MAKELPARAM(Scaled(60) + 10, 5));
    ASSERT_FALSE(host.Sent(L"menu").empty());
    EXPECT_EQ(host.Sent(L"menu")[0].sender, columns[1]);
}

TEST_P(ListHeaderTest, OneColumnIsInTheOrderOfTab)
{
    auto* const button = new CButtonUI;
    button->SetName(L"button");
    page.Add(button);
    host.Layout();
    button->SetFocus();
    host.Key(VK_TAB);
    EXPECT_EQ(Focus(), L"column0");
    host.Key(VK_TAB);
    EXPECT_EQ(Focus(), L"button");
    columns[2]->SetFocus();
    host.Key(VK_TAB);
    EXPECT_EQ(Focus(), L"button");
    columns[0]->SetVisible(false);
    host.Layout();
    host.Key(VK_TAB);
    EXPECT_EQ(Focus(), L"column1");
    for (auto* const column : columns)
        column->SetKeyboardEnabled(false);
    button->SetFocus();
    host.Key(VK_TAB);
    EXPECT_EQ(Focus(), L"button");
}

TEST_P(ListHeaderTest, ArrowsMoveBetweenColumnsAndSpaceClicks)
{
    columns[0]->SetFocus();
    host.Key(VK_RIGHT);
    EXPECT_EQ(Focus(), L"column1");
    columns[0]->SetVisible(false);
    host.Key(VK_LEFT);
    EXPECT_EQ(Focus(), L"column1") << "a hidden column is passed over";
    host.Key(VK_RIGHT);
    host.Key(VK_RIGHT);
    EXPECT_EQ(Focus(), L"column2");
    host.ClearSent();
    host.Key(VK_SPACE);
    host.Key(VK_RETURN);
    EXPECT_EQ(host.Sent(L"headerclick").size(), 2u);
    columns[2]->SetKeyboardEnabled(false);
    host.Key(VK_SPACE);
    EXPECT_EQ(host.Sent(L"headerclick").size(), 2u);
}

TEST_P(ListHeaderTest, ArrowsWithShiftChangeTheWidth)
{
    const auto key = [this](int column, TCHAR code) {
        TEventUI event = {};
        event.Type = UIEVENT_KEYDOWN;
        event.chKey = code;
        event.wKeyState = MK_SHIFT;
        columns[column]->Event(event);
        return Width(column);
    };
    EXPECT_EQ(key(0, VK_RIGHT), Scaled(68));
    EXPECT_EQ(key(0, VK_LEFT), Scaled(60));
    columns[1]->SetMinWidth(60);
    EXPECT_EQ(key(1, VK_LEFT), Scaled(60));
    columns[2]->SetDragable(false);
    EXPECT_EQ(key(2, VK_RIGHT), Scaled(60));
}

// Looks.

TEST_P(ListHeaderTest, TheImageOfTheStateIsDrawn)
{
    auto& manager = host.Manager();
    AddColumns(manager, L"normal", {kGray});
    AddColumns(manager, L"hot", {kRed});
    AddColumns(manager, L"pushed", {kGreen});
    AddColumns(manager, L"focused", {kBlue});
    auto& item = *columns[0];
    const auto look = [this] { return host.Paint().At(10, 5); };

    item.SetNormalImage(L"normal");
    EXPECT_EQ(look(), kGray);
    item.SetHotImage(L"hot");
    item.SetPushedImage(L"pushed");
    item.SetFocusedImage(L"focused");
    EXPECT_EQ(look(), kGray);
    host.MoveMouse(10, 5);
    EXPECT_EQ(look(), kRed);
    host.Press(10, 5);
    EXPECT_EQ(look(), kGreen);
    host.Release(10, 5);
    EXPECT_EQ(look(), kRed);
    host.LeaveMouse();
    EXPECT_EQ(look(), kBlue);
    item.SetFocusedImage(L"missing");
    EXPECT_EQ(look(), kGray) << "a picture that does not load";
    columns[1]->SetFocus();
    EXPECT_EQ(look(), kGray);
}

TEST_P(ListHeaderTest, TheSeparatorImageFillsTheSeparator)
{
    AddColumns(host.Manager(), L"separator", {kBlue});
    columns[0]->SetSepImage(L"separator");
    const Picture picture = host.Paint();
    const RECT thumb = columns[0]->GetThumbRect();
    EXPECT_EQ(picture.Count(kBlue), Scaled(4) * Scaled(30));
    EXPECT_EQ(picture.Count(kBlue, thumb), Scaled(4) * Scaled(30));
}

TEST_P(ListHeaderTest, TheTextHasColourPlaceAndPadding)
{
    UnderlineTexts(host.Manager());
    auto& item = *columns[0];
    item.SetFixedWidth(150);
    item.SetText(L"nn");
    item.SetTextColor(kRed.value);
    item.SetTextStyle(DT_LEFT | DT_VCENTER | DT_SINGLELINE);
    item.SetTextPadding({20, 0, 0, 0});
    host.Layout();
    Picture picture = host.Paint();
    EXPECT_GT(picture.Count(kRed), 0);
    EXPECT_NEAR(test::Ink(picture, kWhite).left, Scaled(20), 3);
    item.SetTextStyle(DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    const RECT right = host.Paint().BoundsOfAllBut(kWhite);
    EXPECT_NEAR(right.right, Scaled(150), 3);
    item.SetTextColor(0);
    host.Manager().SetDefaultFontColor(kGreen.value);
    EXPECT_GT(host.Paint().Count(kGreen), 0);
    host.Manager().SetDefaultDisabledColor(kBlue.value);
    item.SetEnabled(false);
    EXPECT_GT(host.Paint().Count(kBlue), 0);
}

TEST_P(ListHeaderTest, MarkupIsShownWhenAskedFor)
{
    UnderlineTexts(host.Manager());
    columns[0]->SetFixedWidth(150);
    columns[0]->SetText(L"{c #0000FF}nn{/c}");
    columns[0]->SetTextColor(kRed.value);
    EXPECT_EQ(host.Paint().Count(kBlue), 0);
    columns[0]->SetShowHtml(true);
    EXPECT_GT(host.Paint().Count(kBlue), 0);
}

TEST_P(ListHeaderTest, AFocusByKeyIsVisible)
{
    host.Manager().SetDefaultFontColor(kRed.value);
    auto* const button = new CButtonUI;
    page.Add(button);
    host.Layout();
    button->SetFocus();
    EXPECT_EQ(host.Paint().Count(kRed), 0);
    host.Key(VK_TAB);
    EXPECT_GT(host.Paint().Count(kRed), 0);
    host.Click(10, 5);
    EXPECT_EQ(host.Paint().Count(kRed), 0) << "a press shows where it was itself";
}

TEST_P(ListHeaderTest, AHandlerMayDeleteTheHeader)
{
    class Remover : public INotifyUI {
    public:
        Remover(CContainerUI& page, CControlUI& header) : m_page(page), m_header(header) {}
        void Notify(TNotifyUI& notification) override
        {
            if (notification.sType == L"headerclick")
                m_page.Remove(&m_header);
        }

    private:
        CContainerUI& m_page;
        CControlUI& m_header;
    } remover(page, header);
    test::DeleteAtOnce(&page);
    host.Manager().AddNotifier(&remover);
    host.Click(10, 5);
    host.Manager().RemoveNotifier(&remover);
    EXPECT_EQ(page.GetCount(), 0);
}

TEST_P(ListHeaderTest, AColumnMayGoWhileItIsDragged)
{
    const int x = Separator(0);
    host.Press(x, 5);
    host.MoveMouse(x + 20, 5);
    test::DeleteAtOnce(&header);
    header.Remove(columns[0]);
    host.MoveMouse(x + 40, 5);
    host.Release(x + 40, 5);
    host.Paint();
    EXPECT_EQ(header.GetCount(), 2);
}

// In a list.

class ListWithHeaderTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{300, 200, GetParam()};
    CListUI* list = nullptr;

    void SetUp() override
    {
        ASSERT_NE(host.Load(LR"(<Window><VerticalLayout bkcolor="#FFFFFFFF">
              <List name="list" hscrollbar="true" vscrollbar="true" itemlinecolor="#FF0000FF"
                    itemshowcolumnline="true">
                <ListHeader name="header" height="20">
                  <ListHeaderItem name="a" width="80" />
                  <ListHeaderItem name="b" width="80" />
                </ListHeader>
                <ListTextElement text="one" height="20" />
                <ListContainerElement name="box" height="20"><Label name="label" width="30" />
                </ListContainerElement>
              </List></VerticalLayout></Window>)"),
                  nullptr);
        list = &host.Find<CListUI>(L"list");
        host.Layout();
        host.ClearSent();
    }
    CListHeaderItemUI& Column(const wchar_t* name) { return host.Find<CListHeaderItemUI>(name); }
    int Scaled(int length) { return host.Manager().GetDPIObj()->Scale(length); }
    void Drag(const wchar_t* column, int by)
    {
        const int x = Column(column).GetPos().right - 2;
        host.Press(x, 5);
        host.MoveMouse(x + by, 5);
        host.Release(x + by, 5);
        host.Layout();
    }
    void ExpectColumnsUnderHeader()
    {
        const TListInfoUI& info = *list->GetListInfo();
        ASSERT_EQ(info.nColumns, 2);
        EXPECT_EQ(info.rcColumn[0].left, Column(L"a").GetPos().left);
        EXPECT_EQ(info.rcColumn[0].right, Column(L"a").GetPos().right);
        EXPECT_EQ(info.rcColumn[1].left, Column(L"b").GetPos().left);
        EXPECT_EQ(info.rcColumn[1].right, Column(L"b").GetPos().right);
    }
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListWithHeaderTest, testing::Values(96, 144));

TEST_P(ListWithHeaderTest, TheColumnsOfTheRowsFollowADraggedSeparator)
{
    ExpectColumnsUnderHeader();
    EXPECT_EQ(host.Paint().Count(kBlue, {Scaled(80) - 1, Scaled(20), Scaled(80), Scaled(40)}),
              Scaled(20));
    Drag(L"a", -20);
    ExpectColumnsUnderHeader();
    const int edge = Column(L"a").GetPos().right;
    EXPECT_NEAR(edge, Scaled(80) - 20, 1);
    EXPECT_EQ(host.Paint().Count(kBlue, {edge - 1, Scaled(20), edge, Scaled(40)}), Scaled(20));
}

TEST(ListWithoutColumnsTest, TheRowsHaveTheRoomOfTheHeaderUnlessItHasAHeight)
{
    ControlHost host{200, 160};
    CListUI& list = host.Add<CListUI>();
    auto* const row = new CListLabelElementUI;
    row->SetFixedHeight(20);
    list.Add(row);
    host.Layout();
    EXPECT_EQ(row->GetPos().top, 0);
    EXPECT_EQ(list.GetList()->GetHeight(), 160);
    list.GetHeader()->SetFixedHeight(30);
    host.Layout();
    EXPECT_EQ(row->GetPos().top, 30);
    list.GetHeader()->SetFixedHeight(0);
    auto* const column = new CListHeaderItemUI;
    column->SetFixedHeight(24);
    list.Add(column);
    host.Layout();
    EXPECT_EQ(row->GetPos().top, 24);
}

TEST_P(ListWithHeaderTest, TheColumnsFollowWhatTheProgramDoes)
{
    Column(L"a").SetFixedWidth(50);
    host.Layout();
    ExpectColumnsUnderHeader();
    EXPECT_EQ(Column(L"b").GetX(), Scaled(50));
    Column(L"a").SetVisible(false);
    host.Layout();
    EXPECT_EQ(Column(L"b").GetX(), 0);
    EXPECT_EQ(list->GetListInfo()->rcColumn[1].left, 0);
    Column(L"a").SetVisible(true);
    list->GetHeader()->SetScaleHeader(true);
    host.Layout();
    ExpectColumnsUnderHeader();
    Column(L"a").SetScale(150);
    Column(L"b").SetScale(50);
    host.Layout();
    ExpectColumnsUnderHeader();
    EXPECT_EQ(Column(L"a").GetWidth(), 225);
}

TEST_P(ListWithHeaderTest, TheHeaderFollowsTheHorizontalScrolling)
{
    Column(L"a").SetFixedWidth(300);
    Column(L"b").SetFixedWidth(300);
    host.Layout();
    ASSERT_GT(list->GetScrollRange().cx, 0);
    list->SetScrollPos({70, 0});
    host.Layout();
    EXPECT_EQ(Column(L"a").GetX(), -70);
    EXPECT_EQ(Column(L"b").GetX(), Scaled(300) - 70);
    ExpectColumnsUnderHeader();
    list->SetPos(list->GetPos());
    EXPECT_EQ(Column(L"a").GetX(), -70) << "another layout moves nothing";
    ExpectColumnsUnderHeader();
}

TEST_P(ListWithHeaderTest, AListThatIsScrolledStaysInItsPlace)
{
    for (int i = 0; i < 100; ++i)
        list->Add(new CListLabelElementUI);
    host.Layout();
    const RECT header = list->GetHeader()->GetPos();
    const RECT body = list->GetList()->GetPos();
    list->SetScrollPos({0, 60});
    const LONG row = list->GetItemAt(3)->GetPos().top;
    list->SetPos(list->GetPos());
    EXPECT_TRUE(::EqualRect(&list->GetHeader()->GetPos(), &header));
    EXPECT_TRUE(::EqualRect(&list->GetList()->GetPos(), &body));
    EXPECT_EQ(list->GetItemAt(3)->GetPos().top, row);
}

TEST_P(ListWithHeaderTest, TheBarOfADragReachesToTheEndOfTheList)
{
    const int x = Column(L"a").GetPos().right - 2;
    host.Press(x, 5);
    host.MoveMouse(x + 30, 5);
    host.Paint();
    const Picture screen = host.Screen();
    EXPECT_EQ(screen.At(Scaled(80) + 29, 199), Argb{0xFF555555});
    host.Release(x + 30, 5);
    host.Paint();
    EXPECT_EQ(host.Screen().At(Scaled(80) + 29, 199), kWhite);
}

TEST_P(ListWithHeaderTest, KeysThatAreNotAColumnsAreTheLists)
{
    Column(L"a").SetFocus();
    host.Key(VK_DOWN);
    EXPECT_EQ(list->GetCurSel(), 0);
}

TEST_P(ListWithHeaderTest, APieceOfSkinAddsRowsToALiveList)
{
    CDialogBuilder builder;
    CControlUI* const added =
        builder.Create(L"<Window><ListTextElement name=\"late\" text=\"x\" height=\"20\" />"
                       L"<ListContainerElement name=\"later\" height=\"20\" /></Window>",
                       static_cast<LPCTSTR>(nullptr), nullptr, &host.Manager(), list);
    ASSERT_NE(added, nullptr);
    ASSERT_EQ(list->GetCount(), 4);
    for (const wchar_t* const name : {L"late", L"later"}) {
        CControlUI* const row = host.Manager().FindControl(name);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->GetParent(), list->GetList()) << "rows stand in the body";
    }
    host.Layout();
    EXPECT_EQ(host.Manager().FindControl(L"late")->GetY(), Scaled(60));
}

TEST_P(ListWithHeaderTest, RowsOutOfSightAnswerWhereTheyAre)
{
    for (int i = 0; i < 100; ++i) {
        auto* const row = new CListLabelElementUI;
        row->SetFixedHeight(20);
        list->Add(row);
    }
    host.Layout();
    const LONG top = list->GetList()->GetPos().top;
    const auto expectPlace = [&](int index, LONG y) {
        SCOPED_TRACE(index);
        const CControlUI& row = *list->GetItemAt(index);
        EXPECT_EQ(row.GetPos().top, y);
        EXPECT_EQ(row.GetY(), y);
        EXPECT_EQ(row.GetHeight(), Scaled(20));
        EXPECT_EQ(row.GetRelativePos().top, y - top);
        EXPECT_EQ(row.GetClientPos().top, y);
        EXPECT_EQ(row.GetWidth(), list->GetList()->GetItemAt(0)->GetWidth());
        EXPECT_EQ(row.GetX(), 0);
    };
    expectPlace(90, top + 90 * Scaled(20));
    list->SetScrollPos({0, 500});
    expectPlace(90, top + 90 * Scaled(20) - 500);
    expectPlace(50, top + 50 * Scaled(20) - 500);
    list->GetItemAt(2)->SetVisible(false);
    host.Layout();
    expectPlace(80, top + 79 * Scaled(20) - 500);
}

TEST_P(ListWithHeaderTest, ARowThatWasPlacedByACallerStaysUntilTheNextLayout)
{
    CControlUI& row = *list->GetItemAt(1);
    RECT there = row.GetPos();
    ::OffsetRect(&there, 11, 40);
    row.SetPos(there, true);
    EXPECT_TRUE(::EqualRect(&row.GetPos(), &there));
    EXPECT_EQ(host.Find<CLabelUI>(L"label").GetX(), 11);
    row.SetPos(row.GetPos(), true);
    EXPECT_TRUE(::EqualRect(&row.GetPos(), &there));
    list->NeedUpdate();
    host.Layout();
    EXPECT_EQ(row.GetY(), Scaled(40));
    EXPECT_EQ(host.Find<CLabelUI>(L"label").GetX(), 0);
}

TEST_P(ListWithHeaderTest, ARemovedRowHasNoOwner)
{
    auto* const row = static_cast<CListContainerElementUI*>(list->GetItemAt(1));
    static_cast<CContainerUI*>(list->GetList())->SetAutoDestroy(false);
    list->Remove(row);
    const std::unique_ptr<CListContainerElementUI> kept(row);
    EXPECT_EQ(row->GetOwner(), nullptr);
    EXPECT_TRUE(row->Select());
    const RECT place{1, 2, 3, 4};
    row->SetPos(place);
    EXPECT_TRUE(::EqualRect(&row->GetPos(), &place));
}

} // namespace
