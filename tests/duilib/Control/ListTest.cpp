#include "duilib/Control/ListKit.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace DuiLib;
using test::AddRows;
using test::ControlHost;
using test::ItemAt;

namespace {

// At the top left, 200 x 160 device pixels.
class ListTest : public testing::Test {
protected:
    ControlHost host{200, 160};
    CListUI& list = host.Add<CListUI>();
    const TListInfoUI& info = *list.GetListInfo();

    CListHeaderItemUI& AddColumn(int width)
    {
        auto* const column = new CListHeaderItemUI;
        column->SetFixedWidth(width);
        list.Add(column);
        return *column;
    }
};

TEST_F(ListTest, StartsWithTheLookOfAList)
{
    EXPECT_EQ(info.nColumns, 0);
    EXPECT_EQ(info.nFont, -1);
    EXPECT_EQ(info.dwTextColor, 0xFF000000u);
    EXPECT_EQ(info.dwBkColor, 0u);
    EXPECT_EQ(info.dwSelectedTextColor, 0u);
    EXPECT_EQ(info.dwSelectedBkColor, 0xFFC1E3FFu);
    EXPECT_EQ(info.dwHotTextColor, 0u);
    EXPECT_EQ(info.dwHotBkColor, 0xFFE9F5FFu);
    EXPECT_EQ(info.dwDisabledTextColor, 0xFFCCCCCCu);
    EXPECT_EQ(info.dwDisabledBkColor, 0xFFFFFFFFu);
    EXPECT_EQ(info.dwLineColor, 0u);
    EXPECT_FALSE(info.bShowRowLine || info.bShowColumnLine || info.bShowHtml);
    EXPECT_FALSE(info.bAlternateBk || info.bMultiExpandable || info.bRSelected);
    EXPECT_FALSE(list.GetScrollSelect());
    EXPECT_FALSE(list.IsMultiSelect());
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_EQ(list.GetCurSelActivate(), -1);
    EXPECT_EQ(list.GetExpandedItem(), -1);
    EXPECT_EQ(list.GetTextCallback(), nullptr);
    EXPECT_EQ(list.GetCount(), 0);
}

TEST_F(ListTest, AnswersToItsNames)
{
    EXPECT_STREQ(list.GetClass(), L"ListUI");
    EXPECT_EQ(list.GetInterface(L"List"), &list);
    EXPECT_EQ(list.GetInterface(L"IList"), static_cast<IListUI*>(&list));
    EXPECT_EQ(list.GetInterface(L"IListOwner"), static_cast<IListUI*>(&list));
    EXPECT_NE(list.GetInterface(L"VerticalLayout"), nullptr);
    EXPECT_EQ(list.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP));
    EXPECT_EQ(list.GetListType(), static_cast<UINT>(LT_LIST));
}

TEST_F(ListTest, HasNothingToEditInIt)
{
    EXPECT_FALSE(list.CheckColumEditable(0));
    EXPECT_EQ(list.GetEditUI(), nullptr);
    EXPECT_FALSE(list.CheckColumComboBoxable(0));
    EXPECT_EQ(list.GetComboBoxUI(), nullptr);
}

TEST_F(ListTest, AHeaderReplacesOnlyAHeaderWithoutColumns)
{
    auto* const header = new CListHeaderUI;
    EXPECT_TRUE(list.Add(header));
    EXPECT_EQ(list.GetHeader(), header);
    EXPECT_FALSE(list.Add(header));

    AddColumn(50);
    CListHeaderUI other;
    EXPECT_FALSE(list.Add(&other));
    EXPECT_EQ(list.GetHeader(), header);
    host.Layout();
    EXPECT_EQ(header->GetParent(), &list);
}

TEST_F(ListTest, HeaderItemsBecomeColumns)
{
    CListHeaderItemUI& first = AddColumn(50);
    CListHeaderItemUI& third = AddColumn(70);
    auto* const second = new CListHeaderItemUI;
    second->SetFixedWidth(60);
    EXPECT_TRUE(list.AddAt(second, 1));
    EXPECT_EQ(list.GetHeader()->GetCount(), 3);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetItemIndex(second), 1);
    host.Layout();
    ASSERT_EQ(info.nColumns, 3);
    EXPECT_EQ(info.rcColumn[1].left, 50);
    EXPECT_EQ(info.rcColumn[1].right, 110);

    EXPECT_TRUE(list.SetItemIndex(&third, 0));
    EXPECT_TRUE(list.Remove(&first));
    host.Layout();
    ASSERT_EQ(info.nColumns, 2);
    EXPECT_EQ(info.rcColumn[0].right, 70);
}

TEST_F(ListTest, ColumnsFollowTheirHeads)
{
    CListHeaderItemUI& first = AddColumn(50);
    AddColumn(60);
    host.Layout();
    first.SetFixedWidth(80);
    host.Layout();
    EXPECT_EQ(info.rcColumn[0].right, 80);
    EXPECT_EQ(info.rcColumn[1].left, 80);
    EXPECT_EQ(info.rcColumn[1].right, 140);
    first.SetVisible(false);
    host.Layout();
    EXPECT_EQ(info.rcColumn[0].right, info.rcColumn[0].left);
    EXPECT_EQ(info.rcColumn[1].left, 0);
}

TEST_F(ListTest, AHiddenHeaderTakesNoSpaceAndKeepsItsColumns)
{
    AddColumn(50).SetFixedHeight(30);
    AddColumn(60);
    AddRows(list, 1);
    host.Layout();
    EXPECT_GT(list.GetItemAt(0)->GetPos().top, 0);
    list.SetAttribute(L"header", L"hidden");
    host.Layout();
    EXPECT_FALSE(list.GetHeader()->IsVisible());
    EXPECT_EQ(list.GetItemAt(0)->GetPos().top, 0);
    EXPECT_EQ(info.rcColumn[1].left, 50);
    EXPECT_EQ(info.rcColumn[1].right, 110);
    list.SetAttribute(L"header", L"");
    EXPECT_TRUE(list.GetHeader()->IsVisible());
}

TEST_F(ListTest, ColumnsAreAsManyAsTheRecordHolds)
{
    for (int i = 0; i < UILIST_MAX_COLUMNS + 3; ++i)
        AddColumn(5);
    host.Layout();
    EXPECT_EQ(info.nColumns, UILIST_MAX_COLUMNS);
}

TEST_F(ListTest, RowsGetOwnerAndIndex)
{
    const auto rows = AddRows(list, 3);
    EXPECT_EQ(rows[2]->GetOwner(), static_cast<IListOwnerUI*>(&list));
    EXPECT_EQ(rows[2]->GetIndex(), 2);
    auto* const between = new CListContainerElementUI;
    EXPECT_TRUE(list.AddAt(between, 1));
    EXPECT_EQ(between->GetIndex(), 1);
    EXPECT_EQ(rows[2]->GetIndex(), 3);
    EXPECT_EQ(rows[2]->GetParent(), list.GetList());
    EXPECT_TRUE(list.SetItemIndex(rows[2], 0));
    EXPECT_EQ(between->GetIndex(), 2);
    EXPECT_EQ(list.GetItemIndex(between), 2);
}

TEST_F(ListTest, RowsThatAreTakenOutForgetTheList)
{
    const auto rows = AddRows(list, 3);
    list.GetList()->SetAutoDestroy(false);
    EXPECT_TRUE(list.Remove(rows[1]));
    EXPECT_EQ(rows[1]->GetOwner(), nullptr);
    EXPECT_EQ(rows[1]->GetIndex(), -1);
    EXPECT_EQ(rows[2]->GetIndex(), 1);
    EXPECT_TRUE(list.AddAt(rows[1], 0));
    EXPECT_EQ(rows[0]->GetIndex(), 1);
    list.GetList()->SetAutoDestroy(true);
}

TEST_F(ListTest, WhatIsNoRowOfTheListIsRefused)
{
    AddRows(list, 2);
    CListLabelElementUI foreign;
    CListHeaderItemUI foreignColumn;
    foreign.SetIndex(1);
    EXPECT_FALSE(list.Add(nullptr));
    EXPECT_FALSE(list.AddAt(nullptr, 0));
    EXPECT_FALSE(list.AddAt(&foreign, 3));
    EXPECT_FALSE(list.AddAt(&foreign, -1));
    EXPECT_FALSE(list.Remove(nullptr));
    EXPECT_FALSE(list.Remove(&foreign));
    EXPECT_FALSE(list.Remove(&foreignColumn));
    EXPECT_FALSE(list.RemoveAt(2));
    EXPECT_FALSE(list.RemoveAt(-1));
    EXPECT_FALSE(list.SetItemIndex(nullptr, 0));
    EXPECT_FALSE(list.SetItemIndex(&foreign, 0));
    EXPECT_FALSE(list.SetItemIndex(list.GetItemAt(0), 2));
    EXPECT_EQ(list.GetItemIndex(nullptr), -1);
    EXPECT_EQ(list.GetItemIndex(&foreign), -1);
    EXPECT_EQ(list.GetItemAt(2), nullptr);
    EXPECT_FALSE(list.Add(list.GetItemAt(0)));
    EXPECT_EQ(list.GetCount(), 2);
}

TEST_F(ListTest, AnyControlCanStandBetweenTheRows)
{
    AddRows(list, 1);
    auto* const line = new CControlUI;
    line->SetFixedHeight(7);
    EXPECT_TRUE(list.Add(line));
    const auto rows = AddRows(list, 1);
    host.Layout();
    EXPECT_EQ(line->GetPos().top, 20);
    EXPECT_EQ(rows[0]->GetPos().top, 27);
    EXPECT_EQ(rows[0]->GetIndex(), 2);
    EXPECT_FALSE(list.SelectItem(1));
    EXPECT_EQ(list.FindSelectable(1), 2);
    line->SetFixedHeight(9);
    host.Layout();
    EXPECT_EQ(rows[0]->GetPos().top, 29);
}

TEST_F(ListTest, AttributesSetTheLook)
{
    const struct {
        const wchar_t* name;
        const wchar_t* value;
        std::function<bool()> holds;
    } cases[] = {
        {L"scrollselect", L"true", [&] { return list.GetScrollSelect(); }},
        {L"multiexpanding", L"true", [&] { return info.bMultiExpandable; }},
        {L"multiselect", L"true", [&] { return list.IsMultiSelect(); }},
        {L"itemrselected", L"true", [&] { return list.IsItemRSelected() && info.bRSelected; }},
        {L"itemaltbk", L"true", [&] { return list.IsAlternateBk() && info.bAlternateBk; }},
        {L"itemshowrowline", L"true", [&] { return info.bShowRowLine; }},
        {L"itemshowcolumnline", L"true", [&] { return info.bShowColumnLine; }},
        {L"itemshowhtml", L"true", [&] { return list.IsItemShowHtml() && info.bShowHtml; }},
        {L"itemfont", L"3", [&] { return info.nFont == 3; }},
        {L"itemalign", L"right", [&] { return (info.uTextStyle & DT_RIGHT) != 0; }},
        {L"itemvalign", L"bottom", [&] { return (info.uTextStyle & DT_BOTTOM) != 0; }},
        {L"itemendellipsis", L"true", [&] { return (info.uTextStyle & DT_END_ELLIPSIS) != 0; }},
        {L"itemtextpadding", L"1,2,3,4", [&] { return info.rcTextPadding.bottom == 4; }},
        {L"itemtextcolor", L"#FF000001", [&] { return list.GetItemTextColor() == 0xFF000001; }},
        {L"itembkcolor", L"#FF000002", [&] { return list.GetItemBkColor() == 0xFF000002; }},
        {L"itemselectedtextcolor", L"#FF000003",
         [&] { return list.GetSelectedItemTextColor() == 0xFF000003; }},
        {L"itemselectedbkcolor", L"#FF000004",
         [&] { return list.GetSelectedItemBkColor() == 0xFF000004; }},
        {L"itemhottextcolor", L"#FF000005",
         [&] { return list.GetHotItemTextColor() == 0xFF000005; }},
        {L"itemhotbkcolor", L"#FF000006", [&] { return list.GetHotItemBkColor() == 0xFF000006; }},
        {L"itemdisabledtextcolor", L"#FF000007",
         [&] { return list.GetDisabledItemTextColor() == 0xFF000007; }},
        {L"itemdisabledbkcolor", L"#FF000008",
         [&] { return list.GetDisabledItemBkColor() == 0xFF000008; }},
        {L"itemlinecolor", L"#FF000009", [&] { return list.GetItemLineColor() == 0xFF000009; }},
        {L"itembkimage", L"a.png", [&] { return info.sBkImage == list.GetItemBkImage(); }},
        {L"itemselectedimage", L"b.png",
         [&] { return info.sSelectedImage == list.GetSelectedItemImage(); }},
        {L"itemhotimage", L"c.png", [&] { return info.sHotImage == list.GetHotItemImage(); }},
        {L"itemdisabledimage", L"d.png",
         [&] { return info.sDisabledImage == list.GetDisabledItemImage(); }},
        {L"itemforeimage", L"e.png", [&] { return info.sForeImage == L"e.png"; }},
        {L"itemhotforeimage", L"f.png", [&] { return info.sHotForeImage == L"f.png"; }},
        {L"itemselectedforeimage", L"g.png", [&] { return info.sSelectedForeImage == L"g.png"; }},
        {L"headerbkimage", L"h.png",
         [&] { return CDuiString(L"h.png") == list.GetHeader()->GetBkImage(); }},
        {L"vscrollbar", L"true", [&] { return list.GetVerticalScrollBar() != nullptr; }},
        {L"hscrollbar", L"true", [&] { return list.GetHorizontalScrollBar() != nullptr; }},
        {L"childpadding", L"5", [&] { return list.GetList()->GetChildPadding() == 5; }},
        {L"ITEMFONT", L"4", [&] { return info.nFont == 4; }},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(each.name)));
        const bool isImage = std::wstring(each.name).find(L"image") != std::wstring::npos;
        EXPECT_TRUE(isImage || !each.holds());
        list.SetAttribute(each.name, each.value);
        EXPECT_TRUE(each.holds());
    }
    EXPECT_STREQ(list.GetItemBkImage(), L"a.png");
    EXPECT_STREQ(list.GetSelectedItemImage(), L"b.png");
    EXPECT_STREQ(list.GetHotItemImage(), L"c.png");
    EXPECT_STREQ(list.GetDisabledItemImage(), L"d.png");
}

TEST_F(ListTest, SettersWithoutGettersReachTheLook)
{
    list.SetItemTextStyle(DT_CENTER | DT_SINGLELINE);
    EXPECT_EQ(info.uTextStyle, static_cast<UINT>(DT_CENTER | DT_SINGLELINE));
    list.SetItemShowRowLine(true);
    list.SetItemShowColumnLine(true);
    list.SetItemShowHtml();
    list.SetItemRSelected();
    EXPECT_TRUE(info.bShowRowLine && info.bShowColumnLine && info.bShowHtml && info.bRSelected);
    list.SetItemShowRowLine();
    list.SetItemShowColumnLine();
    EXPECT_FALSE(info.bShowRowLine || info.bShowColumnLine);
}

TEST(ListScaleTest, GettersScaleAndTheRecordDoesNot)
{
    ControlHost host{200, 160, 144};
    CListUI& list = host.Add<CListUI>();
    list.SetItemTextPadding({2, 4, 6, 8});
    list.SetChildPadding(4);
    EXPECT_EQ(list.GetItemTextPadding().right, 9);
    EXPECT_EQ(list.GetListInfo()->rcTextPadding.right, 6);
    EXPECT_EQ(list.GetChildPadding(), 6);
    AddRows(list, 2);
    host.Layout();
    EXPECT_EQ(list.GetItemAt(1)->GetPos().top, 36);
}

TEST_F(ListTest, RowsFollowAChangeOfTheFont)
{
    auto* const row = new CListLabelElementUI;
    list.Add(row);
    AddRows(list, 1);
    host.Layout();
    const LONG before = list.GetItemAt(1)->GetPos().top;
    host.Manager().AddFont(5, L"Arial", 40, false, false, false, false);
    list.SetItemFont(5);
    host.Layout();
    EXPECT_GT(list.GetItemAt(1)->GetPos().top, before);
    EXPECT_EQ(list.GetItemAt(1)->GetPos().top, row->GetPos().bottom);
}

TEST_F(ListTest, RowsFollowTheScaleOfTheWindow)
{
    AddRows(list, 3);
    host.Layout();
    host.Manager().SetDPI(192);
    host.Layout();
    EXPECT_EQ(list.GetItemAt(2)->GetPos().top, 80);
}

TEST_F(ListTest, DestroyingAndPaddingAreThoseOfTheRows)
{
    EXPECT_TRUE(list.IsDelayedDestroy());
    list.SetDelayedDestroy(false);
    EXPECT_FALSE(list.GetList()->IsDelayedDestroy());
    EXPECT_FALSE(list.IsDelayedDestroy());
    list.SetChildPadding(3);
    EXPECT_EQ(list.GetList()->GetChildPadding(), 3);
}

TEST_F(ListTest, SendsTheTicksOfItsTimers)
{
    ASSERT_TRUE(list.SetTimer(7, 100));
    host.AdvanceFrames(1);
    const auto sent = host.Sent(L"timer");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, &list);
    EXPECT_EQ(sent[0].wParam, 7u);
}

TEST_F(ListTest, SendsMenuWhenItIsUsed)
{
    list.SetContextMenuUsed(true);
    host.RightClick(10, 100);
    EXPECT_EQ(host.Sent(L"menu").size(), 1u);
}

// A row that shows more when it is expanded.
class ExpandingRow : public CListContainerElementUI {
public:
    bool IsExpanded() const override { return m_isExpanded; }
    bool Expand(bool expand) override
    {
        m_isExpanded = expand;
        return true;
    }

private:
    bool m_isExpanded = false;
};

TEST_F(ListTest, ExpandsOneRowAtATime)
{
    const auto rows = AddRows<ExpandingRow>(list, 3);
    EXPECT_TRUE(list.ExpandItem(1));
    EXPECT_EQ(list.GetExpandedItem(), 1);
    EXPECT_TRUE(list.ExpandItem(2));
    EXPECT_FALSE(rows[1]->IsExpanded());
    EXPECT_TRUE(rows[2]->IsExpanded());
    EXPECT_EQ(list.GetExpandedItem(), 2);
    EXPECT_TRUE(list.ExpandItem(2, false));
    EXPECT_EQ(list.GetExpandedItem(), -1);
    EXPECT_FALSE(list.ExpandItem(3));
    EXPECT_FALSE(list.ExpandItem(-1));
}

TEST_F(ListTest, ExpandsSeveralRowsWhenToldTo)
{
    const auto rows = AddRows<ExpandingRow>(list, 3);
    list.SetMultiExpanding(true);
    list.ExpandItem(0);
    list.ExpandItem(2);
    EXPECT_TRUE(rows[0]->IsExpanded());
    EXPECT_TRUE(rows[2]->IsExpanded());
    EXPECT_EQ(list.GetExpandedItem(), 2);
    list.AddAt(new CListLabelElementUI, 0);
    EXPECT_EQ(list.GetExpandedItem(), 3);
}

TEST_F(ListTest, ARowThatCannotExpandIsNotTheExpandedOne)
{
    AddRows(list, 2);
    EXPECT_FALSE(list.ExpandItem(0));
    EXPECT_EQ(list.GetExpandedItem(), -1);
}

// A list with a body of its own.
class OwnBodyList : public CListUI {
public:
    class Body : public CListBodyUI {
    public:
        using CListBodyUI::CListBodyUI;
        CListUI* Owner() const { return m_pOwner; }
    };

    OwnBodyList()
    {
        CVerticalLayoutUI::Remove(m_pList);
        m_pList = new Body(this);
        CVerticalLayoutUI::Add(m_pList);
    }
};

TEST(ListBodyOfItsOwnTest, WorksAsTheFirstOne)
{
    ControlHost host{100, 50};
    auto& list = host.Add<OwnBodyList>();
    EXPECT_EQ(static_cast<OwnBodyList::Body*>(list.GetList())->Owner(), &list);
    list.EnableScrollBar();
    AddRows(list, 10);
    host.Layout();
    list.SelectItem(9);
    EXPECT_EQ(list.GetScrollPos().cy, 150);
    EXPECT_EQ(ItemAt(list, 9)->GetOwner(), static_cast<IListOwnerUI*>(&list));
    list.RemoveAll();
    EXPECT_EQ(list.GetCount(), 0);
}

TEST(ListSkinTest, BuildsAListWithHeaderAndRows)
{
    ControlHost host{300, 120};
    ASSERT_NE(host.Load(L"<Window><VerticalLayout><List name=\"list\" vscrollbar=\"true\">"
                        L"<ListHeader height=\"24\"><ListHeaderItem width=\"100\" text=\"a\"/>"
                        L"<ListHeaderItem width=\"80\"/></ListHeader>"
                        L"<ListTextElement height=\"20\" text=\"one\"/>"
                        L"<ListLabelElement height=\"20\" selected=\"true\"/>"
                        L"<ListContainerElement height=\"20\"><Label name=\"inner\" text=\"x\"/>"
                        L"</ListContainerElement></List></VerticalLayout></Window>"),
              nullptr);
    host.Layout();
    CListUI& list = host.Find<CListUI>(L"list");
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetHeader()->GetCount(), 2);
    EXPECT_EQ(list.GetListInfo()->nColumns, 2);
    EXPECT_EQ(list.GetCurSel(), 1);
    EXPECT_EQ(list.GetItemAt(0)->GetPos().top, 24);
    EXPECT_EQ(host.Find<CLabelUI>(L"inner").GetPos().top, 64);
}

} // namespace
