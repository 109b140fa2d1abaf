#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::Picture;

namespace {

POINT MiddleOf(const CControlUI& control)
{
    const RECT& place = control.GetPos();
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

// fruit (apple (core), pear), tool
class TreeViewTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{240, 200, GetParam()};
    CTreeViewUI& tree = host.Add<CTreeViewUI>();
    CTreeNodeUI* fruit = Node(L"fruit");
    CTreeNodeUI* apple = Node(L"apple");
    CTreeNodeUI* core = Node(L"core");
    CTreeNodeUI* pear = Node(L"pear");
    CTreeNodeUI* tool = Node(L"tool");

    void SetUp() override
    {
        apple->AddChildNode(core);
        fruit->AddChildNode(apple);
        ASSERT_TRUE(tree.Add(fruit));
        ASSERT_TRUE(fruit->AddChildNode(pear));
        ASSERT_TRUE(tree.Add(tool));
        host.Paint();
    }

    static CTreeNodeUI* Node(const wchar_t* name)
    {
        auto* const node = new CTreeNodeUI;
        node->SetName(name);
        node->SetItemText(name);
        return node;
    }

    std::wstring Rows() const
    {
        std::wstring rows;
        for (int i = 0; i < tree.GetCount(); ++i) {
            auto* const node = static_cast<CTreeNodeUI*>(tree.GetItemAt(i));
            EXPECT_EQ(node->GetTreeIndex(), i);
            rows += (rows.empty() ? L"" : L" ") + std::wstring(node->GetName().GetData());
        }
        return rows;
    }

    std::wstring Shown() const
    {
        std::wstring rows;
        for (int i = 0; i < tree.GetCount(); ++i) {
            if (tree.GetItemAt(i)->IsVisible())
                rows += (rows.empty() ? L"" : L" ") +
                        std::wstring(tree.GetItemAt(i)->GetName().GetData());
        }
        return rows;
    }
};

INSTANTIATE_TEST_SUITE_P(Scales, TreeViewTest, testing::Values(96, 144));

TEST_P(TreeViewTest, ItIsATreeTypeOfList)
{
    EXPECT_EQ(tree.GetListType(), static_cast<UINT>(LT_TREE));
    EXPECT_STREQ(tree.GetClass(), L"TreeViewUI");
    EXPECT_EQ(tree.GetInterface(L"TreeView"), &tree);
    EXPECT_EQ(tree.GetInterface(L"IListOwner"), static_cast<IListOwnerUI*>(&tree));
    EXPECT_EQ(tree.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP));
    const std::unique_ptr<CControlUI> made(
        CControlFactory::GetInstance()->CreateControl(L"CTreeViewUI"));
    EXPECT_NE(dynamic_cast<CTreeViewUI*>(made.get()), nullptr);
}

TEST_P(TreeViewTest, RowsComeInTheOrderOfTheTree)
{
    EXPECT_EQ(Rows(), L"fruit apple core pear tool");
    EXPECT_EQ(tool->GetNodeIndex(), 1);
    EXPECT_EQ(pear->GetNodeIndex(), 1);
    EXPECT_EQ(core->GetTreeLevel(), 2);
}

TEST_P(TreeViewTest, AddAtARowTakesThePlaceOfItsNode)
{
    EXPECT_EQ(tree.AddAt(Node(L"fig"), 3), 3);
    EXPECT_EQ(Rows(), L"fruit apple core fig pear tool");
    EXPECT_EQ(fruit->GetCountChild(), 3);
    EXPECT_EQ(tree.AddAt(Node(L"end"), tree.GetCount()), 6);
    EXPECT_TRUE(tree.AddAt(Node(L"first"), fruit));
    EXPECT_EQ(Rows(), L"first fruit apple core fig pear tool end");
}

TEST_P(TreeViewTest, WhatDoesNotFitIsRefused)
{
    CTreeViewUI other;
    auto* const foreign = Node(L"foreign");
    ASSERT_TRUE(other.Add(foreign));
    auto late = std::unique_ptr<CTreeNodeUI>(Node(L"late"));
    EXPECT_FALSE(tree.Add(static_cast<CTreeNodeUI*>(nullptr)));
    EXPECT_FALSE(tree.Add(static_cast<CControlUI*>(nullptr)));
    EXPECT_FALSE(tree.Add(foreign));
    EXPECT_FALSE(tree.Add(apple));
    EXPECT_EQ(tree.AddAt(late.get(), -1), -1);
    EXPECT_EQ(tree.AddAt(late.get(), 6), -1);
    EXPECT_FALSE(tree.AddAt(late.get(), foreign));
    EXPECT_FALSE(tree.AddAt(late.get(), static_cast<CTreeNodeUI*>(nullptr)));
    EXPECT_FALSE(tree.Remove(foreign));
    EXPECT_FALSE(tree.Remove(late.get()));
    EXPECT_FALSE(tree.Remove(static_cast<CTreeNodeUI*>(nullptr)));
    EXPECT_FALSE(tree.RemoveAt(9));
    EXPECT_FALSE(core->AddChildNode(fruit));
    EXPECT_FALSE(tree.SetItemCheckBox(true, foreign));
    tree.SetItemExpand(false, foreign);
    EXPECT_TRUE(foreign->GetVisibleTag());
    EXPECT_FALSE(tree.SetItemIndex(tool, 0));
    EXPECT_FALSE(tree.SortItems([](UINT_PTR, UINT_PTR, UINT_PTR) { return 0; }, 0));
    CLabelUI label;
    EXPECT_FALSE(tree.Add(&label));
    EXPECT_EQ(Rows(), L"fruit apple core pear tool");
}

TEST_P(TreeViewTest, ANodeIsRemovedWithWhatIsBelowIt)
{
    EXPECT_TRUE(tree.Remove(apple));
    EXPECT_EQ(Rows(), L"fruit pear tool");
    EXPECT_EQ(fruit->GetCountChild(), 1);
    EXPECT_TRUE(tree.RemoveAt(0));
    EXPECT_EQ(Rows(), L"tool");
    EXPECT_EQ(tool->GetNodeIndex(), 0);
    tree.RemoveAll();
    EXPECT_EQ(tree.GetCount(), 0);
    host.Pump();
    host.Paint();
    EXPECT_TRUE(tree.Add(Node(L"new")));
    EXPECT_EQ(Rows(), L"new");
}

TEST_P(TreeViewTest, SubNodesAreRemovedThroughTheirParent)
{
    EXPECT_FALSE(fruit->RemoveAt(core));
    EXPECT_TRUE(fruit->RemoveAt(pear));
    EXPECT_EQ(Rows(), L"fruit apple core tool");
    fruit->RemoveAll();
    EXPECT_EQ(Rows(), L"fruit tool");
    EXPECT_FALSE(fruit->IsHasChild());
}

TEST_P(TreeViewTest, ABranchThatIsNotDestroyedKeepsItsNodes)
{
    tree.GetList()->SetAutoDestroy(false);
    ASSERT_TRUE(tree.Remove(apple));
    EXPECT_EQ(apple->GetTreeView(), nullptr);
    EXPECT_EQ(apple->GetTreeIndex(), -1);
    EXPECT_EQ(core->GetParentNode(), apple);
    ASSERT_TRUE(tree.Add(apple));
    EXPECT_EQ(Rows(), L"fruit pear tool apple core");
    tree.GetList()->SetAutoDestroy(true);
}

TEST_P(TreeViewTest, AClosedNodeHidesWhatIsBelowItAndKeepsItsStates)
{
    tree.SetItemExpand(false, apple);
    EXPECT_EQ(Shown(), L"fruit apple pear tool");
    tree.SetItemExpand(false, fruit);
    EXPECT_EQ(Shown(), L"fruit tool");
    EXPECT_TRUE(fruit->GetFolderButton()->IsSelected());
    EXPECT_FALSE(fruit->IsExpanded());
    tree.SetItemExpand(true, fruit);
    EXPECT_EQ(Shown(), L"fruit apple pear tool");
    tree.SetItemExpand(true);
    EXPECT_EQ(Shown(), L"fruit apple core pear tool");
    tree.SetItemExpand(false);
    EXPECT_EQ(Shown(), L"fruit tool");
    EXPECT_TRUE(tree.ExpandItem(0));
    EXPECT_EQ(Shown(), L"fruit apple pear tool");
    apple->SetVisibleTag(true);
    EXPECT_EQ(Shown(), L"fruit apple core pear tool");
}

TEST_P(TreeViewTest, ANodeAddedBelowAClosedOneIsHidden)
{
    tree.SetItemExpand(false, fruit);
    fruit->AddChildNode(Node(L"fig"));
    EXPECT_EQ(Shown(), L"fruit tool");
    tree.SetItemExpand(true, fruit);
    EXPECT_EQ(Shown(), L"fruit apple core pear fig tool");
}

TEST_P(TreeViewTest, HidingANodeHidesWhatIsBelowIt)
{
    fruit->SetVisible(false);
    EXPECT_EQ(Shown(), L"tool");
    fruit->SetVisible(true);
    EXPECT_EQ(Shown(), L"fruit apple core pear tool");
    tree.SetItemExpand(false, fruit);
    tree.SetVisible(false);
    tree.SetVisible(true);
    EXPECT_EQ(Shown(), L"fruit tool") << "a closed node stays closed";
}

TEST_P(TreeViewTest, TheRowsCloseUp)
{
    const int before = tool->GetPos().top;
    tree.SetItemExpand(false, fruit);
    host.Paint();
    EXPECT_EQ(tool->GetPos().top, fruit->GetPos().bottom);
    tree.SetItemExpand(true, fruit);
    host.Paint();
    EXPECT_EQ(tool->GetPos().top, before);
}

TEST_P(TreeViewTest, AClickOnTheFolderBoxOpensAndCloses)
{
    const POINT box = MiddleOf(*fruit->GetFolderButton());
    host.Click(box.x, box.y);
    EXPECT_EQ(Shown(), L"fruit tool");
    ASSERT_EQ(host.Sent(DUI_MSGTYPE_SELECTCHANGED).size(), 1u);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_SELECTCHANGED)[0].sender, fruit->GetFolderButton());
    EXPECT_EQ(tree.GetCurSel(), -1);
    host.Click(box.x, box.y);
    EXPECT_EQ(Shown(), L"fruit apple core pear tool");
}

TEST_P(TreeViewTest, ClosingSelectsTheNodeThatHidesTheSelectedOne)
{
    tree.SelectItem(2, true);
    host.ClearSent();
    tree.SetItemExpand(false, fruit);
    EXPECT_EQ(tree.GetCurSel(), 0);
    EXPECT_FALSE(core->IsSelected());
    EXPECT_TRUE(fruit->IsFocused());
    ASSERT_EQ(host.Sent(DUI_MSGTYPE_ITEMSELECT).size(), 1u);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_ITEMSELECT)[0].wParam, 0u);
}

TEST_P(TreeViewTest, ChecksSpreadDownAndUp)
{
    tree.SetVisibleCheckBtn(true);
    host.Paint();
    EXPECT_TRUE(tree.SetItemCheckBox(true, apple));
    EXPECT_TRUE(core->IsCheckBoxSelected());
    EXPECT_FALSE(fruit->IsCheckBoxSelected());
    EXPECT_TRUE(tree.SetItemCheckBox(true, pear));
    EXPECT_TRUE(fruit->IsCheckBoxSelected()) << "everything below is checked";
    EXPECT_TRUE(fruit->GetCheckBox()->IsSelected());
    EXPECT_FALSE(tool->IsCheckBoxSelected());

    const POINT box = MiddleOf(*core->GetCheckBox());
    host.Click(box.x, box.y);
    EXPECT_FALSE(core->IsCheckBoxSelected());
    EXPECT_FALSE(apple->IsCheckBoxSelected());
    EXPECT_FALSE(fruit->IsCheckBoxSelected());
    EXPECT_TRUE(pear->IsCheckBoxSelected());
    ASSERT_EQ(host.Sent(DUI_MSGTYPE_SELECTCHANGED).size(), 1u);

    EXPECT_TRUE(tree.SetItemCheckBox(true));
    EXPECT_TRUE(tool->IsCheckBoxSelected());
    tool->CheckBoxSelected(false);
    EXPECT_FALSE(tool->GetCheckBox()->IsSelected());
}

TEST_P(TreeViewTest, DelegateTargetsActOnTheBoxesOfTheirNodes)
{
    TNotifyUI notification;
    notification.sType = DUI_MSGTYPE_SELECTCHANGED;
    fruit->GetFolderButton()->Selected(true, false);
    EXPECT_EQ(Shown(), L"fruit tool") << "a box that is selected without a word counts too";
    apple->GetCheckBox()->Selected(true, false);
    EXPECT_FALSE(core->IsCheckBoxSelected());
    notification.pSender = apple->GetCheckBox();
    EXPECT_TRUE(tree.OnCheckBoxChanged(&notification));
    EXPECT_TRUE(core->IsCheckBoxSelected());

    apple->GetCheckBox()->Selected(false, false);
    tree.Notify(notification);
    EXPECT_FALSE(core->IsCheckBoxSelected());
    EXPECT_TRUE(tree.OnFolderChanged(nullptr));
    EXPECT_TRUE(tree.OnCheckBoxChanged(nullptr));
    EXPECT_TRUE(tree.OnDBClickItem(nullptr));
    notification.pSender = nullptr;
    tree.Notify(notification);
}

TEST_P(TreeViewTest, ADoubleClickActivatesThenTellsTheNode)
{
    const POINT text = MiddleOf(*pear->GetItemButton());
    host.DoubleClick(text.x, text.y);
    std::vector<std::wstring> types;
    for (const auto& sent : host.Sent()) {
        if (sent.type == DUI_MSGTYPE_ITEMACTIVATE || sent.type == DUI_MSGTYPE_TREEITEMDBCLICK ||
            sent.type == DUI_MSGTYPE_ITEMDBCLICK) {
            EXPECT_EQ(sent.sender, pear);
            types.push_back(sent.type);
        }
    }
    EXPECT_EQ(types,
              (std::vector<std::wstring>{DUI_MSGTYPE_ITEMACTIVATE, DUI_MSGTYPE_TREEITEMDBCLICK}));
}

TEST_P(TreeViewTest, ReturnActivatesWithoutADoubleClick)
{
    tree.SetFocus();
    tree.SelectItem(3);
    host.ClearSent();
    host.Key(VK_RETURN);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_ITEMACTIVATE).size(), 1u);
    EXPECT_TRUE(host.Sent(DUI_MSGTYPE_TREEITEMDBCLICK).empty());
}

TEST_P(TreeViewTest, KeysWalkAndWorkTheTree)
{
    for (const bool rowHasFocus : {false, true}) {
        SCOPED_TRACE(rowHasFocus);
        tree.SetItemExpand(true);
        tree.SelectItem(-1);
        tree.SetFocus();
        host.Key(VK_DOWN);
        ASSERT_EQ(tree.GetCurSel(), 0);
        if (rowHasFocus)
            fruit->SetFocus();
        host.Key(VK_LEFT);
        EXPECT_EQ(Shown(), L"fruit tool");
        host.Key(VK_DOWN);
        EXPECT_EQ(tree.GetCurSel(), 4);
        host.Key(VK_UP);
        host.Key(VK_RIGHT);
        EXPECT_EQ(Shown(), L"fruit apple core pear tool");
        host.Key(VK_RIGHT);
        EXPECT_EQ(tree.GetCurSel(), 1);
        host.Key(VK_RIGHT);
        EXPECT_EQ(tree.GetCurSel(), 2);
        host.Key(VK_LEFT);
        EXPECT_EQ(tree.GetCurSel(), 1);
        host.Key(VK_END);
        EXPECT_EQ(tree.GetCurSel(), 4);
        host.Key(VK_HOME);
        EXPECT_EQ(tree.GetCurSel(), 0);
    }
    host.Key(VK_SPACE);
    EXPECT_FALSE(fruit->IsCheckBoxSelected()) << "no box is shown";
    tree.SetVisibleCheckBtn(true);
    host.Key(VK_SPACE);
    EXPECT_TRUE(fruit->IsCheckBoxSelected());
    EXPECT_TRUE(core->IsCheckBoxSelected());
}

TEST_P(TreeViewTest, BoxesAreShownAsTheViewOrTheNodeWants)
{
    EXPECT_TRUE(tree.GetVisibleFolderBtn());
    EXPECT_FALSE(tree.GetVisibleCheckBtn());
    EXPECT_FALSE(apple->GetCheckBox()->IsVisible());
    tree.SetVisibleCheckBtn(true);
    tree.SetVisibleFolderBtn(false);
    EXPECT_TRUE(apple->GetVisibleCheckBtn());
    EXPECT_TRUE(apple->GetCheckBox()->IsVisible());
    EXPECT_FALSE(apple->GetFolderButton()->IsVisible());
    apple->SetVisibleCheckBtn(false);
    apple->SetVisibleFolderBtn(true);
    EXPECT_FALSE(apple->GetCheckBox()->IsVisible());
    EXPECT_TRUE(apple->GetFolderButton()->IsVisible());
    tree.SetVisibleCheckBtn(true);
    EXPECT_TRUE(apple->GetVisibleCheckBtn()) << "the view's setter is for all nodes";
}

TEST_P(TreeViewTest, EachLevelIsIndented)
{
    const LONG first = fruit->GetItemButton()->GetPos().left;
    const LONG second = apple->GetItemButton()->GetPos().left;
    const LONG third = core->GetItemButton()->GetPos().left;
    EXPECT_GT(second, first);
    EXPECT_EQ(third - second, second - first);
    EXPECT_EQ(pear->GetItemButton()->GetPos().left, second) << "with or without sub-nodes";
    EXPECT_EQ(second - first, host.Manager().GetDPIObj()->Scale(18));
}

TEST_P(TreeViewTest, TheViewsColoursServeNodesWithoutOnes)
{
    tree.SetAttribute(L"itemtextcolor", L"#FF0000F0");
    tree.SetAttribute(L"itemhottextcolor", L"#FF0000F1");
    tree.SetAttribute(L"selitemtextcolor", L"#FF0000F2");
    tree.SetAttribute(L"selitemhottextcolor", L"#FF0000F3");
    EXPECT_EQ(fruit->GetItemTextColor(), 0xFF0000F0u);
    EXPECT_EQ(fruit->GetItemHotTextColor(), 0xFF0000F1u);
    EXPECT_EQ(fruit->GetSelItemTextColor(), 0xFF0000F2u);
    EXPECT_EQ(fruit->GetSelItemHotTextColor(), 0xFF0000F3u);
    fruit->SetItemTextColor(0xFFAA0000);
    EXPECT_EQ(fruit->GetItemTextColor(), 0xFFAA0000u);
}

TEST_P(TreeViewTest, TextColoursFollowTheState)
{
    tree.SetAttribute(L"itemselectedbkcolor", L"#00000000");
    tree.SetAttribute(L"itemhotbkcolor", L"#00000000");
    tree.SetItemTextColor(0xFFFF0000);
    tree.SetItemHotTextColor(0xFF00FF00);
    tree.SetSelItemTextColor(0xFF0000FF);
    tree.SetSelItemHotTextColor(0xFFFF00FF);
    host.Manager().AddFont(5, L"Arial", 40, true, false, false,
                           false); // strokes wide enough to be full
    for (CTreeNodeUI* const node : {fruit, apple, core, pear, tool})
        node->SetItemText(node == tool ? L"H" : L"");
    tool->SetAttribute(L"height", L"50");
    tool->GetItemButton()->SetFont(5);
    tool->GetItemButton()->SetTextColor(0);
    host.LeaveMouse();
    const POINT at = MiddleOf(*tool);
    const auto has = [&](std::uint32_t color) { return host.Paint().Count(test::Argb(color)) > 0; };
    EXPECT_TRUE(has(0xFFFF0000));
    host.MoveMouse(at.x, at.y);
    EXPECT_TRUE(has(0xFF00FF00));
    tree.SelectItem(4);
    EXPECT_TRUE(has(0xFFFF00FF));
    host.LeaveMouse();
    EXPECT_TRUE(has(0xFF0000FF));
}

TEST_P(TreeViewTest, BoxesHaveALookWithoutPictures)
{
    tree.SetVisibleCheckBtn(true);
    const auto differs = [&](const Picture& a, const Picture& b, const CControlUI& control) {
        const RECT place = control.GetPos();
        int count = 0;
        for (int y = place.top; y < place.bottom; ++y) {
            for (int x = place.left; x < place.right; ++x)
                count += a.At(x, y) != b.At(x, y);
        }
        return count > 0;
    };
    const Picture open = host.Paint();
    tree.SetItemExpand(false, fruit);
    tree.SetItemCheckBox(true, fruit);
    const Picture closed = host.Paint();
    EXPECT_TRUE(differs(open, closed, *fruit->GetFolderButton()));
    EXPECT_TRUE(differs(open, closed, *fruit->GetCheckBox()));
}

TEST_P(TreeViewTest, TheLeastWidthOfATextIsScrolledTo)
{
    tree.EnableScrollBar(true, true);
    tree.SetAttribute(L"itemminwidth", L"400");
    host.Paint();
    EXPECT_EQ(tree.GetItemMinWidth(), 400u);
    EXPECT_GE(core->GetItemButton()->GetWidth(), host.Manager().GetDPIObj()->Scale(400));
    EXPECT_GT(tree.GetScrollRange().cx, 0);
}

TEST_P(TreeViewTest, OnlyNodesInSightMakeTheirParts)
{
    for (int i = 0; i < 500; ++i)
        ASSERT_TRUE(tree.Add(Node(L"more")));
    host.Paint();
    auto* const unseen = static_cast<CTreeNodeUI*>(tree.GetItemAt(400));
    EXPECT_EQ(unseen->GetCount(), 0);
    EXPECT_EQ(fruit->GetCount(), 1);
}

// What a handler does to the tree while one of its notifications is on the way.
struct Saboteur : INotifyUI {
    const wchar_t* type = L"";
    std::function<void()> act;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == type && act)
            std::exchange(act, nullptr)();
    }
};

TEST_P(TreeViewTest, HandlersMayRemoveTheNode)
{
    for (const wchar_t* type : {DUI_MSGTYPE_ITEMACTIVATE, DUI_MSGTYPE_TREEITEMDBCLICK,
                                DUI_MSGTYPE_ITEMSELECT, DUI_MSGTYPE_SELECTCHANGED}) {
        for (const bool delayed : {true, false}) {
            SCOPED_TRACE(testing::Message() << type << delayed);
            tree.RemoveAll();
            host.Pump();
            tree.SetDelayedDestroy(delayed);
            auto* const node = Node(L"node");
            node->AddChildNode(Node(L"below"));
            ASSERT_TRUE(tree.Add(node));
            host.Paint();
            Saboteur saboteur;
            saboteur.type = type;
            // A box cannot end while it sends, so it waits for its message's end.
            const bool isBox = std::wstring(type) == DUI_MSGTYPE_SELECTCHANGED;
            if (isBox)
                tree.SetDelayedDestroy(true);
            saboteur.act = [&] { tree.RemoveAll(); };
            host.Manager().AddNotifier(&saboteur);
            const POINT at =
                isBox ? MiddleOf(*node->GetFolderButton()) : MiddleOf(*node->GetItemButton());
            isBox ? host.Click(at.x, at.y) : host.DoubleClick(at.x, at.y);
            host.Manager().RemoveNotifier(&saboteur);
            host.Pump();
            EXPECT_EQ(tree.GetCount(), 0);
            host.Paint();
        }
    }
}

TEST_P(TreeViewTest, NodesLeaveNothingBehind)
{
    tree.RemoveAll();
    host.Pump();
    host.Paint();
    const auto before = test::GdiObjects();
    for (int i = 0; i < 200; ++i) {
        auto* const node = Node(L"node");
        node->AddChildNode(Node(L"below"));
        tree.Add(node);
        host.Layout();
        tree.RemoveAll();
        host.Pump();
    }
    host.Paint();
    EXPECT_LE(test::GdiObjects(), before + 2);
}

} // namespace
