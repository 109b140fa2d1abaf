#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kFew = 1000;
constexpr int kMany = 10000;
constexpr int kPerBranch = 20;
constexpr double kLargestGrowth = 1.5; // linear, but ten times as much leaves the caches

struct Costs {
    double build;
    double append;
    double toggle;
};

CTreeNodeUI* MakeNode()
{
    auto* const node = new CTreeNodeUI;
    node->SetItemText(L"node");
    return node;
}

// Branches of a head and what is below it, each made before it comes into the view.
void AddBranches(CTreeViewUI& tree, int nodes)
{
    for (int made = 0; made < nodes; made += kPerBranch) {
        CTreeNodeUI* const head = MakeNode();
        for (int i = 1; i < kPerBranch; ++i)
            head->AddChildNode(MakeNode());
        tree.Add(head);
    }
}

Costs Measure(Report& report, int nodes)
{
    const std::string count = std::to_string(nodes) + " nodes";
    BenchWindow window(400, 600);
    window.Load(L"<Window><VerticalLayout bkcolor=\"#FFFFFFFF\">"
                L"<TreeView name=\"tree\" vscrollbar=\"true\"/></VerticalLayout></Window>");
    auto& tree = *static_cast<CTreeViewUI*>(window.Manager().FindControl(L"tree"));
    tree.SetDelayedDestroy(false);

    Costs costs{};
    costs.build = TimeOf([&] {
        tree.RemoveAll();
        AddBranches(tree, nodes);
    });
    report.Add({"remove and add " + count + " in branches", costs.build, {}, {}});
    costs.append = TimeOf([&] {
        tree.RemoveAll();
        CTreeNodeUI* const head = MakeNode();
        tree.Add(head);
        for (int i = 1; i < nodes; ++i)
            head->AddChildNode(MakeNode());
    });
    report.Add({"remove and append " + count + " one by one", costs.append, {}, {}});

    tree.RemoveAll();
    AddBranches(tree, nodes);
    window.Repaint();
    bool open = false;
    costs.toggle = TimeOf([&] {
        tree.SetItemExpand(open);
        window.Repaint();
        open = !open;
    });
    report.Add({"open or close all of " + count + " and paint", costs.toggle, {}, {}});
    return costs;
}

} // namespace

void RunTreeBench(Report& report)
{
    const Costs few = Measure(report, kFew);
    const Costs many = Measure(report, kMany);
    const auto grow = [&](const std::string& what, double most, double least) {
        report.Add({what + " per node at 10,000 nodes / at 1,000", most / kMany, least / kFew,
                    kLargestGrowth});
    };
    grow("tree: add branches", many.build, few.build);
    grow("tree: append", many.append, few.append);
    grow("tree: open or close all", many.toggle, few.toggle);
}

} // namespace bench
