#include "bench/BenchWindow.h"
#include "bench/Harness.h"

#include <unordered_map>

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kRows = 100;
constexpr int kColumns = 100;
constexpr int kControls = kRows * kColumns;
constexpr double kLargestToHashLookup = 2;
constexpr double kLargestToWalk = 0.2;
constexpr SIZE kWindow{1500, 1000};

// Keeps a result alive that nobody looks at.
void Use(const void* pointer)
{
    static const void* volatile sink;
    sink = pointer;
    (void)sink;
}

struct Walk {
    POINT point;
    CControlUI* found;
};

CControlUI* CALLBACK VisitAll(CControlUI* control, LPVOID context)
{
    auto& walk = *static_cast<Walk*>(context);
    if (::PtInRect(&control->GetPos(), walk.point))
        walk.found = control;
    return nullptr;
}

void FindByName(Report& report, BenchWindow& window)
{
    std::vector<std::wstring> names;
    std::unordered_map<std::wstring, CControlUI*> table;
    for (int i = 0; i < kControls; ++i) {
        names.push_back(L"control" + std::to_wstring(i));
        table[names.back()] = window.Manager().FindControl(names.back().c_str());
    }
    std::size_t next = 0;
    const auto nextName = [&]() -> const std::wstring& {
        next = (next + 7919) % names.size();
        return names[next];
    };
    const auto pair = TimeBoth([&] { Use(window.Manager().FindControl(nextName().c_str())); },
                               [&] { Use(table.find(nextName())->second); });
    report.Add({"FindControl by name in 10,000 controls / unordered_map lookup", pair.cost,
                pair.bare, kLargestToHashLookup});
}

void FindByNameCold(Report& report)
{
    const std::wstring skin = SkinOf(kRows, kColumns);
    BenchWindow window(kWindow.cx, kWindow.cy);
    window.Load(skin);
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&before);
    Use(window.Manager().FindControl(L"control5000"));
    ::QueryPerformanceCounter(&after);
    report.Add({"first FindControl by name in a new window of 10,000 controls",
                static_cast<double>(after.QuadPart - before.QuadPart) * 1e9 /
                    static_cast<double>(frequency.QuadPart),
                {},
                {}});
}

void FindByPoint(Report& report, BenchWindow& window)
{
    Walk walk{{kWindow.cx / 2, kWindow.cy / 2}, nullptr};
    const auto pair =
        TimeBoth([&] { Use(window.Manager().FindControl(walk.point)); },
                 [&] {
                     window.Manager().GetRoot()->FindControl(VisitAll, &walk, UIFIND_ALL);
                     Use(walk.found);
                 });
    report.Add({"FindControl by point in 10,000 controls / walk over all", pair.cost, pair.bare,
                kLargestToWalk});
}

} // namespace

void RunFindBench(Report& report)
{
    BenchWindow window(kWindow.cx, kWindow.cy);
    window.Load(SkinOf(kRows, kColumns));
    FindByName(report, window);
    FindByNameCold(report);
    FindByPoint(report, window);
}

} // namespace bench
