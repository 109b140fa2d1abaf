#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

using namespace DuiLib;

constexpr double kLargestBuildToParse = 8;
constexpr double kLargestGrowth = 1.5; // linear, but ten times as much leaves the caches
constexpr int kColumns = 20;

double BuildSkin(Report& report, int controls)
{
    const std::wstring skin = SkinOf(controls / kColumns, kColumns);
    BenchWindow window(800, 600);
    const auto pair = TimeBoth(
        [&] {
            CDialogBuilder builder;
            delete builder.Create(STRINGorID(skin.c_str()), nullptr, nullptr, &window.Manager());
        },
        [&] {
            CMarkup markup;
            markup.Load(skin.c_str());
        });
    report.Add(
        {"build and delete a skin of " + std::to_string(controls) + " controls / parse its text",
         pair.cost, pair.bare, kLargestBuildToParse});
    return pair.cost;
}

void FirstLayoutAndPaint(Report& report, int controls)
{
    const std::wstring skin = SkinOf(controls / kColumns, kColumns);
    BenchWindow window(1400, 800);
    report.Add({"build, lay out and paint " + std::to_string(controls) + " controls the first time",
                TimeOf([&] { window.Load(skin); }),
                {},
                {}});
}

} // namespace

void RunSkinBench(Report& report)
{
    const double thousand = BuildSkin(report, 1000);
    const double tenThousand = BuildSkin(report, 10000);
    report.Add({"build cost per control at 10,000 controls / at 1,000", tenThousand / 10000,
                thousand / 1000, kLargestGrowth});
    FirstLayoutAndPaint(report, 1000);
}

} // namespace bench
