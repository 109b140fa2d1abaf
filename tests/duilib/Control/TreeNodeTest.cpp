#include "support/ControlHost.h"
#include "support/FaultPlan.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <utility>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr int kDeep = 20000;

class CountedNode : public CTreeNodeUI {
public:
    explicit CountedNode(int& alive) : m_alive(alive) { ++m_alive; }
    ~CountedNode() override { --m_alive; }

private:
    int& m_alive;
};

TEST(TreeNodeTest, ANewNodeIsOpenUncheckedAndAlone)
{
    CTreeNodeUI node;
    EXPECT_EQ(node.GetParentNode(), nullptr);
    EXPECT_EQ(node.GetTreeView(), nullptr);
    EXPECT_EQ(node.GetCountChild(), 0);
    EXPECT_FALSE(node.IsHasChild());
    EXPECT_EQ(node.GetTreeLevel(), 0);
    EXPECT_EQ(node.GetTreeIndex(), -1);
    EXPECT_EQ(node.GetNodeIndex(), -1);
    EXPECT_TRUE(node.GetVisibleTag());
    EXPECT_TRUE(node.IsExpanded());
    EXPECT_FALSE(node.IsCheckBoxSelected());
    EXPECT_TRUE(node.GetVisibleFolderBtn());
    EXPECT_FALSE(node.GetVisibleCheckBtn());
    EXPECT_STREQ(node.GetClass(), L"TreeNodeUI");
    EXPECT_EQ(node.GetInterface(L"treenode"), &node);
    EXPECT_NE(node.GetInterface(L"ListContainerElement"), nullptr);
}

TEST(TreeNodeTest, TheRowHoldsIndentationBoxesAndText)
{
    CTreeNodeUI node;
    CHorizontalLayoutUI* const row = node.GetTreeNodeHoriznotal();
    ASSERT_EQ(row->GetCount(), 4);
    EXPECT_EQ(row->GetItemAt(0), node.GetDottedLine());
    EXPECT_EQ(row->GetItemAt(1), node.GetFolderButton());
    EXPECT_EQ(row->GetItemAt(2), node.GetCheckBox());
    EXPECT_EQ(row->GetItemAt(3), node.GetItemButton());
    EXPECT_EQ(row->GetParent(), &node);
}

TEST(TreeNodeTest, TextAndStatesAreTheSameBeforeAndAfterThePartsAreMade)
{
    CTreeNodeUI node;
    node.SetItemText(L"apple");
    node.CheckBoxSelected(true);
    node.SetVisibleTag(false);
    EXPECT_EQ(node.GetItemText(), L"apple");
    EXPECT_EQ(node.GetItemButton()->GetText(), L"apple");
    EXPECT_TRUE(node.GetCheckBox()->IsSelected());
    EXPECT_TRUE(node.GetFolderButton()->IsSelected());

    node.GetItemButton()->SetText(L"pear");
    EXPECT_EQ(node.GetItemText(), L"pear");
    node.SetText(L"plum");
    EXPECT_EQ(node.GetItemButton()->GetText(), L"plum");
    node.GetCheckBox()->Selected(false, false);
    EXPECT_FALSE(node.IsCheckBoxSelected());
    node.GetFolderButton()->Selected(false, false);
    EXPECT_TRUE(node.GetVisibleTag());
}

TEST(TreeNodeTest, AttributeListsGoToTheParts)
{
    CTreeNodeUI node;
    node.SetAttribute(L"horizattr", L"padding=\"1,2,3,4\"");
    node.SetAttribute(L"dotlineattr", L"bkcolor=\"#FF010203\"");
    node.SetAttribute(L"folderattr", L"width=\"31\"");
    node.SetAttribute(L"checkboxattr", L"width=\"32\"");
    node.SetAttribute(L"ITEMATTR", L"font=\"3\"");
    EXPECT_EQ(node.GetTreeNodeHoriznotal()->GetPadding().top, 2);
    EXPECT_EQ(node.GetDottedLine()->GetBkColor(), 0xFF010203u);
    EXPECT_EQ(node.GetFolderButton()->GetFixedWidth(), 31);
    EXPECT_EQ(node.GetCheckBox()->GetFixedWidth(), 32);
    EXPECT_EQ(node.GetItemButton()->GetFont(), 3);
}

TEST(TreeNodeTest, TextAndColourAttributes)
{
    CTreeNodeUI node;
    node.SetAttribute(L"text", L"leaf");
    node.SetAttribute(L"itemtextcolor", L"#FF000001");
    node.SetAttribute(L"itemhottextcolor", L"#FF000002");
    node.SetAttribute(L"selitemtextcolor", L"#FF000003");
    node.SetAttribute(L"selitemhottextcolor", L"#FF000004");
    EXPECT_EQ(node.GetItemText(), L"leaf");
    EXPECT_EQ(node.GetItemTextColor(), 0xFF000001u);
    EXPECT_EQ(node.GetItemHotTextColor(), 0xFF000002u);
    EXPECT_EQ(node.GetSelItemTextColor(), 0xFF000003u);
    EXPECT_EQ(node.GetSelItemHotTextColor(), 0xFF000004u);
}

TEST(TreeNodeTest, OutsideAViewANodeOwnsWhatIsBelowIt)
{
    int alive = 0;
    auto root = std::make_unique<CountedNode>(alive);
    auto* const child = new CountedNode(alive);
    auto* const leaf = new CountedNode(alive);
    ASSERT_TRUE(root->AddChildNode(child));
    ASSERT_TRUE(child->Add(leaf));
    EXPECT_EQ(leaf->GetTreeLevel(), 2);
    EXPECT_EQ(leaf->GetParentNode(), child);
    EXPECT_EQ(root->GetChildNode(0), child);
    EXPECT_EQ(root->GetChildNode(1), nullptr);
    EXPECT_EQ(root->GetTreeNodes().GetSize(), 1);
    EXPECT_EQ(child->GetNodeIndex(), 0);

    EXPECT_TRUE(child->RemoveAt(leaf));
    EXPECT_EQ(alive, 2);
    root.reset();
    EXPECT_EQ(alive, 0);
}

TEST(TreeNodeTest, ADeepBranchEndsWithoutADeepStack)
{
    int alive = 0;
    auto root = std::make_unique<CountedNode>(alive);
    // From the inside outwards, so that no walk upwards is long.
    for (int i = 0; i < kDeep; ++i) {
        auto above = std::make_unique<CountedNode>(alive);
        ASSERT_TRUE(above->AddChildNode(root.release()));
        root = std::move(above);
    }
    root.reset();
    EXPECT_EQ(alive, 0);
}

TEST(TreeNodeTest, ANodeComesNeitherBelowItselfNorIntoTwoTrees)
{
    CTreeNodeUI root;
    CTreeNodeUI other;
    auto* const child = new CTreeNodeUI;
    ASSERT_TRUE(root.AddChildNode(child));
    EXPECT_FALSE(root.AddChildNode(&root));
    EXPECT_FALSE(child->AddChildNode(&root));
    EXPECT_FALSE(root.AddChildNode(child));
    EXPECT_FALSE(other.AddChildNode(child));
    EXPECT_FALSE(root.AddChildNode(nullptr));
    EXPECT_FALSE(root.Add(nullptr));
    EXPECT_FALSE(root.AddAt(nullptr, 0));
    EXPECT_FALSE(root.Remove(nullptr));
    EXPECT_FALSE(other.RemoveAt(child));
    EXPECT_FALSE(root.RemoveAt(static_cast<CTreeNodeUI*>(nullptr)));
    EXPECT_FALSE(root.RemoveAt(7));
    EXPECT_EQ(root.GetCountChild(), 1);
}

TEST(TreeNodeTest, AddAtCountsAmongTheSubNodes)
{
    CTreeNodeUI root;
    auto* const first = new CTreeNodeUI;
    auto* const second = new CTreeNodeUI;
    ASSERT_TRUE(root.AddAt(second, 0));
    ASSERT_TRUE(root.AddAt(first, 0));
    auto late = std::make_unique<CTreeNodeUI>();
    EXPECT_FALSE(root.AddAt(late.get(), 3));
    EXPECT_EQ(root.GetChildNode(0), first);
    EXPECT_EQ(second->GetNodeIndex(), 1);
    root.RemoveAll();
    EXPECT_FALSE(root.IsHasChild());
}

TEST(TreeNodeTest, OtherChildrenGoIntoTheRow)
{
    CTreeNodeUI node;
    auto* const button = new CButtonUI;
    ASSERT_TRUE(node.Add(button));
    EXPECT_EQ(button->GetParent(), node.GetTreeNodeHoriznotal());
    EXPECT_EQ(node.GetCountChild(), 0);
    EXPECT_FALSE(node.Remove(node.GetFolderButton()));
    EXPECT_TRUE(node.Remove(button));
    EXPECT_EQ(node.GetTreeNodeHoriznotal()->GetCount(), 4);
}

TEST(TreeNodeTest, AParentGivenBeforehandIsWhereTheViewPutsTheNode)
{
    ControlHost host{200, 100};
    auto& tree = host.Add<CTreeViewUI>();
    auto* const root = new CTreeNodeUI;
    auto* const last = new CTreeNodeUI;
    ASSERT_TRUE(tree.Add(root));
    ASSERT_TRUE(tree.Add(last));
    auto* const child = new CTreeNodeUI(root);
    EXPECT_EQ(child->GetParentNode(), root);
    EXPECT_EQ(root->GetCountChild(), 0);
    ASSERT_TRUE(tree.Add(child));
    EXPECT_EQ(root->GetChildNode(0), child);
    EXPECT_EQ(child->GetTreeIndex(), 1);
    child->SetParentNode(last);
    EXPECT_EQ(child->GetParentNode(), root) << "it is in the tree already";

    auto* const late = new CTreeNodeUI;
    late->SetTreeView(&tree);
    EXPECT_EQ(late->GetTreeView(), &tree);
    EXPECT_EQ(late->GetTreeIndex(), 3);
}

TEST(TreeNodeTest, AParentThatEndsBeforeTheNodeIsForgotten)
{
    auto parent = std::make_unique<CTreeNodeUI>();
    CTreeNodeUI node(parent.get());
    parent->SetParentNode(&node);
    EXPECT_EQ(parent->GetParentNode(), nullptr) << "it would be below itself";
    parent.reset();
    EXPECT_EQ(node.GetParentNode(), nullptr);
    EXPECT_EQ(node.GetTreeLevel(), 0);
}

TEST(TreeNodeTest, PartsThatRunOutOfMemoryAreMadeLater)
{
    test::FaultPlan plan(test::Resource::Memory);
    const auto makeParts = [&plan](int refused) {
        CTreeNodeUI node;
        plan.Start(refused);
        try {
            node.GetFolderButton();
        } catch (const std::bad_alloc&) {
        }
        const int requests = plan.Stop();
        EXPECT_NE(node.GetFolderButton(), nullptr);
        EXPECT_EQ(node.GetCount(), 1) << "one row of parts";
        return requests;
    };
    const int requests = makeParts(0);
    EXPECT_GT(requests, 5);
    for (int refused = 1; refused <= requests; ++refused) {
        SCOPED_TRACE(refused);
        const int held = test::FaultPlan::HeldBlocks();
        makeParts(refused);
        EXPECT_EQ(test::FaultPlan::HeldBlocks(), held);
    }
}

TEST(TreeNodeTest, ATreeEndsAlsoWhenThereIsNoMemory)
{
    int alive = 0;
    auto root = std::make_unique<CountedNode>(alive);
    for (int i = 0; i < 3; ++i) {
        auto* const child = new CountedNode(alive);
        root->Add(child);
        child->Add(new CountedNode(alive));
    }
    ASSERT_EQ(alive, 7);
    test::FaultPlan plan(test::Resource::Memory);
    plan.Start(1);
    root.reset();
    EXPECT_GE(plan.Stop(), 1) << "the list of all nodes below was refused";
    EXPECT_EQ(alive, 0);
}

} // namespace
