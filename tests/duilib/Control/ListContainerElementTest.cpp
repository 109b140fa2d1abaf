#include "duilib/Control/RowOwner.h"
#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::Picture;
using test::RowOwner;
using test::UnderlineTexts;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};

class ListContainerElementTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{200, 120, GetParam()};
    RowOwner& owner = host.Add<RowOwner>();
    CListContainerElementUI& row = owner.AddRow<CListContainerElementUI>(40);
    CLabelUI& label = *new CLabelUI;
    CButtonUI& button = *new CButtonUI;

    void SetUp() override
    {
        owner.SetBkColor(kWhite.value);
        label.SetFixedWidth(50);
        button.SetFixedWidth(30);
        row.Add(&label);
        row.Add(&button);
        row.SetName(L"row");
        button.SetName(L"button");
        host.Layout();
        host.ClearSent();
    }
    int Scaled(int length) { return host.Manager().GetDPIObj()->Scale(length); }
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListContainerElementTest, testing::Values(96, 144));

TEST_P(ListContainerElementTest, AnswersToItsNames)
{
    EXPECT_STREQ(row.GetClass(), L"ListContainerElementUI");
    EXPECT_EQ(row.GetInterface(L"ListContainerElement"), &row);
    EXPECT_NE(row.GetInterface(L"HorizontalLayout"), nullptr);
    EXPECT_NE(row.GetInterface(L"IContainer"), nullptr);
    const std::unique_ptr<CControlUI> made(CListContainerElementUI::CreateControl());
    EXPECT_STREQ(made->GetClass(), L"ListContainerElementUI");
    const std::unique_ptr<CControlUI> byName(
        CControlFactory::GetInstance()->CreateControl(L"CListContainerElementUI"));
    ASSERT_NE(byName, nullptr);
    EXPECT_STREQ(byName->GetClass(), L"ListContainerElementUI");
}

TEST_P(ListContainerElementTest, ChildrenStandFromLeftToRight)
{
    EXPECT_EQ(label.GetX(), 0);
    EXPECT_EQ(label.GetWidth(), Scaled(50));
    EXPECT_EQ(button.GetX(), Scaled(50));
    EXPECT_EQ(button.GetHeight(), Scaled(40));
}

TEST_P(ListContainerElementTest, ChildrenMoveWithTheRow)
{
    RECT there = row.GetPos();
    ::OffsetRect(&there, 7, 33);
    row.SetPos(there);
    EXPECT_EQ(label.GetX(), 7);
    EXPECT_EQ(label.GetY(), 33);
}

TEST_P(ListContainerElementTest, TheLookIsBelowTheChildren)
{
    owner.info.dwBkColor = kGreen.value;
    label.SetBkColor(kRed.value);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(Scaled(25), Scaled(20)), kRed);
    EXPECT_EQ(picture.At(Scaled(90), Scaled(20)), kGreen);
}

TEST_P(ListContainerElementTest, ItsOwnBackgroundIsOverTheLook)
{
    owner.info.dwSelectedBkColor = kGreen.value;
    row.SetBkColor(kBlue.value);
    row.Select();
    EXPECT_EQ(host.Paint().At(Scaled(90), Scaled(20)), kBlue);
}

TEST_P(ListContainerElementTest, PaintingCallsTheLookAndNotTheText)
{
    class Noting : public CListContainerElementUI {
    public:
        void DrawItemBk(HDC dc, const RECT& item) override
        {
            ++backgrounds;
            CListContainerElementUI::DrawItemBk(dc, item);
        }
        void DrawItemText(HDC, const RECT&) override { ++texts; }
        int backgrounds = 0;
        int texts = 0;
    };
    auto& noting = owner.AddRow<Noting>();
    host.Paint();
    EXPECT_GT(noting.backgrounds, 0);
    EXPECT_EQ(noting.texts, 0);
}

TEST_P(ListContainerElementTest, ItsTextCanBeDrawnInTheLookOfTheList)
{
    UnderlineTexts(host.Manager());
    row.SetText(L"nnnn");
    owner.info.dwTextColor = kRed.value;
    owner.info.rcTextPadding = {10, 0, 0, 0};
    test::Canvas canvas(200, 120);
    row.DrawItemText(canvas.Dc(), row.GetPos());
    const Picture picture = canvas.Take();
    EXPECT_GT(picture.Count(kRed), 0);
    EXPECT_NEAR(test::Ink(picture).left, Scaled(10), 3);
}

TEST_P(ListContainerElementTest, APressOnALabelIsOneOnTheRow)
{
    host.Click(Scaled(25), Scaled(20));
    EXPECT_TRUE(row.IsSelected());
    EXPECT_EQ(host.Sent(L"itemclick").size(), 1u);
    EXPECT_EQ(host.Sent(L"itemclick")[0].sender, &row);
    host.DoubleClick(Scaled(25), Scaled(20));
    EXPECT_EQ(host.Sent(L"itemdbclick").size(), 1u);
}

TEST_P(ListContainerElementTest, APressOnAButtonIsTheButtons)
{
    host.Click(Scaled(65), Scaled(20));
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    EXPECT_TRUE(host.Sent(L"itemclick").empty());
    EXPECT_FALSE(row.IsSelected());
}

TEST_P(ListContainerElementTest, TheRowIsHotUnderItsChildren)
{
    owner.info.dwHotBkColor = kRed.value;
    host.MoveMouse(Scaled(25), Scaled(20));
    EXPECT_EQ(host.Paint().At(Scaled(90), Scaled(20)), kRed);
    host.MoveMouse(Scaled(65), Scaled(20));
    EXPECT_EQ(host.Paint().At(Scaled(90), Scaled(20)), kRed);
    host.MoveMouse(5, 119);
    EXPECT_EQ(host.Paint().At(Scaled(90), Scaled(20)), kWhite);
}

TEST_P(ListContainerElementTest, ChildrenFollowTheStateOfTheRow)
{
    row.SetEnabled(false);
    EXPECT_FALSE(button.IsEnabled());
    row.SetVisible(false);
    EXPECT_FALSE(button.IsVisible());
}

TEST_P(ListContainerElementTest, ADerivedRowTellsDoubleClicksItsOwnWay)
{
    class Node : public CListContainerElementUI {
    protected:
        void NotifyDoubleClick() override
        {
            m_pManager->SendNotify(this, DUI_MSGTYPE_TREEITEMDBCLICK);
        }
    };
    auto& node = owner.AddRow<Node>();
    host.Layout();
    host.DoubleClick(5, node.GetY() + 5);
    EXPECT_EQ(host.Sent(L"treeitemdbclick").size(), 1u);
    EXPECT_EQ(host.Sent(L"treeitemdbclick")[0].sender, &node);
    EXPECT_TRUE(host.Sent(L"itemdbclick").empty());
}

TEST_P(ListContainerElementTest, ASkinBuildsRowsWithChildren)
{
    host.Load(
        L"<Window><VerticalLayout><ListContainerElement name=\"r\" height=\"30\">"
        L"<Label name=\"l\" width=\"20\" /></ListContainerElement></VerticalLayout></Window>");
    auto& built = host.Find<CListContainerElementUI>(L"r");
    ASSERT_EQ(built.GetCount(), 1);
    host.Layout();
    EXPECT_EQ(host.Find<CLabelUI>(L"l").GetWidth(), Scaled(20));
}

TEST_P(ListContainerElementTest, PaintingUpToAStopControlEnds)
{
    test::Canvas canvas(200, 120);
    EXPECT_FALSE(row.Paint(canvas.Dc(), {0, 0, 200, 120}, &button));
    EXPECT_FALSE(row.Paint(canvas.Dc(), {0, 0, 200, 120}, &row));
    EXPECT_TRUE(row.Paint(canvas.Dc(), {0, 0, 200, 120}, nullptr));
}

} // namespace
