#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr int kSteps = 400;
constexpr int kMostNodes = 120;

// What a tree is, in the simplest way that can be right.
struct ModelNode {
    CTreeNodeUI* control = nullptr;
    bool open = true;
    std::vector<std::unique_ptr<ModelNode>> nodes;
};

struct ModelRow {
    ModelNode* node;
    ModelNode* parent; // null at the top level
    int level;
    int place; // among the nodes of the parent
    bool shown;
};

void ListRows(ModelNode& parent, bool isTop, int level, bool shown, std::vector<ModelRow>& rows)
{
    int place = 0;
    for (const auto& node : parent.nodes) {
        rows.push_back({node.get(), isTop ? nullptr : &parent, level, place++, shown});
        ListRows(*node, false, level + 1, shown && node->open, rows);
    }
}

class TreeModelTest : public testing::TestWithParam<unsigned> {
protected:
    ControlHost host{220, 160};
    CTreeViewUI& tree = host.Add<CTreeViewUI>();
    ModelNode top;
    std::mt19937 random{GetParam()};
    int made = 0;

    std::vector<ModelRow> Rows()
    {
        std::vector<ModelRow> rows;
        ListRows(top, true, 0, true, rows);
        return rows;
    }
    int Roll(int sides) { return static_cast<int>(random() % static_cast<unsigned>(sides)); }

    // A node with some below it, not yet in the view.
    std::unique_ptr<ModelNode> MakeBranch(int depth)
    {
        auto node = std::make_unique<ModelNode>();
        node->control = new CTreeNodeUI;
        node->control->SetItemText(std::to_wstring(++made).c_str());
        node->open = Roll(4) != 0;
        node->control->SetVisibleTag(node->open);
        for (int i = Roll(3); depth > 0 && i > 0; --i) {
            auto below = MakeBranch(depth - 1);
            EXPECT_TRUE(node->control->AddChildNode(below->control));
            node->nodes.push_back(std::move(below));
        }
        return node;
    }

    void Add()
    {
        const auto rows = Rows();
        auto node = MakeBranch(2);
        if (rows.empty() || Roll(4) == 0) {
            EXPECT_TRUE(tree.Add(node->control));
            top.nodes.push_back(std::move(node));
            return;
        }
        const int at = Roll(static_cast<int>(rows.size()));
        const ModelRow& row = rows[static_cast<std::size_t>(at)];
        auto& siblings = row.parent != nullptr ? row.parent->nodes : top.nodes;
        switch (Roll(3)) {
        case 0:
            EXPECT_EQ(tree.AddAt(node->control, at), at);
            siblings.insert(siblings.begin() + row.place, std::move(node));
            break;
        case 1:
            EXPECT_TRUE(row.node->control->AddChildNode(node->control));
            row.node->nodes.push_back(std::move(node));
            break;
        default:
            EXPECT_TRUE(row.node->control->AddAt(static_cast<CControlUI*>(node->control), 0));
            row.node->nodes.insert(row.node->nodes.begin(), std::move(node));
        }
    }

    void Remove(const std::vector<ModelRow>& rows)
    {
        const int at = Roll(static_cast<int>(rows.size()));
        const ModelRow& row = rows[static_cast<std::size_t>(at)];
        if (Roll(5) == 0) {
            row.node->control->RemoveAll();
            row.node->nodes.clear();
            return;
        }
        auto& siblings = row.parent != nullptr ? row.parent->nodes : top.nodes;
        if (row.parent != nullptr && Roll(2) == 0)
            EXPECT_TRUE(row.parent->control->RemoveAt(row.node->control));
        else
            EXPECT_TRUE(tree.RemoveAt(at));
        siblings.erase(siblings.begin() + row.place);
    }

    void OpenOrClose(const std::vector<ModelRow>& rows)
    {
        const bool open = Roll(2) == 0;
        if (Roll(8) == 0) {
            tree.SetItemExpand(open);
            for (const ModelRow& row : rows)
                row.node->open = open;
            return;
        }
        ModelNode& node = *rows[static_cast<std::size_t>(Roll(static_cast<int>(rows.size())))].node;
        if (Roll(2) == 0)
            tree.SetItemExpand(open, node.control);
        else
            node.control->GetFolderButton()->Selected(!open);
        node.open = open;
    }

    void Compare()
    {
        const auto rows = Rows();
        ASSERT_EQ(tree.GetCount(), static_cast<int>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            SCOPED_TRACE(i);
            const ModelRow& row = rows[i];
            CTreeNodeUI& node = *row.node->control;
            ASSERT_EQ(tree.GetItemAt(static_cast<int>(i)), &node);
            ASSERT_EQ(node.GetTreeIndex(), static_cast<int>(i));
            ASSERT_EQ(node.GetTreeLevel(), row.level);
            ASSERT_EQ(node.GetNodeIndex(), row.place);
            ASSERT_EQ(node.GetCountChild(), static_cast<long>(row.node->nodes.size()));
            ASSERT_EQ(node.GetParentNode(), row.parent != nullptr ? row.parent->control : nullptr);
            ASSERT_EQ(node.IsVisible(), row.shown);
            ASSERT_EQ(node.IsExpanded(), row.node->open);
        }
        const int selected = tree.GetCurSel();
        if (selected >= 0) {
            ASSERT_TRUE(rows[static_cast<std::size_t>(selected)].shown);
            ASSERT_TRUE(rows[static_cast<std::size_t>(selected)].node->control->IsSelected());
        }
    }

    // The shown rows stand below each other.
    void ComparePlaces()
    {
        host.Paint();
        LONG bottom = -tree.GetScrollPos().cy;
        for (const ModelRow& row : Rows()) {
            if (!row.shown)
                continue;
            ASSERT_EQ(row.node->control->GetPos().top, bottom);
            bottom = row.node->control->GetPos().bottom;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Seeds, TreeModelTest, testing::Range(1u, 9u));

TEST_P(TreeModelTest, ATreeStaysWhatItsModelIs)
{
    tree.EnableScrollBar(true, false);
    for (int step = 0; step < kSteps; ++step) {
        SCOPED_TRACE(testing::Message() << "step " << step);
        const auto rows = Rows();
        const int choice = Roll(10);
        if (rows.empty() || (choice < 4 && rows.size() < kMostNodes))
            Add();
        else if (choice < 6)
            Remove(rows);
        else if (choice < 9)
            OpenOrClose(rows);
        else
            tree.SelectItem(Roll(static_cast<int>(rows.size())));
        ASSERT_NO_FATAL_FAILURE(Compare());
        if (step % 20 == 0) {
            host.Pump();
            ASSERT_NO_FATAL_FAILURE(ComparePlaces());
        }
    }
}

} // namespace
