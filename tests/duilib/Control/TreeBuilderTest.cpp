#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr wchar_t kSkin[] = LR"(<Window>
  <Default name="TreeNode" value="itemtextcolor=&quot;#FF102030&quot;" />
  <TreeView name="tree" vscrollbar="true" visiblecheckbtn="true" itemminwidth="90">
    <TreeNode name="fruit" text="fruit">
      <Button name="more" width="30" />
      <TreeNode name="apple" text="apple"><TreeNode name="core" text="core" /></TreeNode>
      <TreeNode name="pear" text="pear" />
    </TreeNode>
    <TreeNode name="tool" text="tool" itemtextcolor="#FF405060" />
  </TreeView></Window>)";

TEST(TreeBuilderTest, NodesGoToTheirViewOrParentAndOthersIntoTheRow)
{
    ControlHost host{200, 200};
    ASSERT_NE(host.Load(kSkin), nullptr);
    auto& tree = host.Find<CTreeViewUI>(L"tree");
    ASSERT_EQ(tree.GetCount(), 5);
    const wchar_t* const names[] = {L"fruit", L"apple", L"core", L"pear", L"tool"};
    const int levels[] = {0, 1, 2, 1, 0};
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        auto& node = host.Find<CTreeNodeUI>(names[i]);
        EXPECT_EQ(tree.GetItemAt(i), &node);
        EXPECT_EQ(node.GetTreeIndex(), i);
        EXPECT_EQ(node.GetTreeLevel(), levels[i]);
        EXPECT_EQ(node.GetTreeView(), &tree);
        EXPECT_EQ(node.GetItemText(), names[i]);
        EXPECT_EQ(node.GetItemTextColor(), i == 4 ? 0xFF405060u : 0xFF102030u);
    }
    EXPECT_EQ(host.Find<CButtonUI>(L"more").GetParent(),
              host.Find<CTreeNodeUI>(L"fruit").GetTreeNodeHoriznotal());
    EXPECT_TRUE(tree.GetVisibleCheckBtn());
    EXPECT_EQ(tree.GetItemMinWidth(), 90u);
}

TEST(TreeBuilderTest, ABranchBuiltIntoALivingNodeJoinsItsView)
{
    ControlHost host{200, 200};
    ASSERT_NE(host.Load(kSkin), nullptr);
    auto& pear = host.Find<CTreeNodeUI>(L"pear");
    CDialogBuilder builder;
    ASSERT_NE(builder.Create(STRINGorID(L"<Window><TreeNode name=\"stem\"><TreeNode name=\"leaf\"/>"
                                        L"</TreeNode></Window>"),
                             nullptr, nullptr, &host.Manager(), &pear),
              nullptr);
    EXPECT_EQ(host.Find<CTreeNodeUI>(L"leaf").GetTreeIndex(), 5);
    EXPECT_EQ(host.Find<CTreeNodeUI>(L"stem").GetParentNode(), &pear);
    EXPECT_EQ(host.Find<CTreeNodeUI>(L"tool").GetTreeIndex(), 6);
    host.Paint();
}

TEST(TreeBuilderTest, AViewRefusesOtherRowsAndSaysSo)
{
    ControlHost host{200, 200};
    CPaintManagerUI::SetLastErrorText(L"");
    host.Load(
        L"<Window><TreeView name=\"tree\"><ListLabelElement text=\"x\"/></TreeView></Window>");
    EXPECT_EQ(host.Find<CTreeViewUI>(L"tree").GetCount(), 0);
    EXPECT_FALSE(CPaintManagerUI::GetLastErrorText().IsEmpty());
}

} // namespace
