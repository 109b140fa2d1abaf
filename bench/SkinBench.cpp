#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

using namespace DuiLib;

constexpr double kLargestBuildToParse = 8;
constexpr double kLargestGrowth = 12; // from 1,000 to 10,000 controls: linear, with some slack
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
    report.Add(
        {"build 10,000 controls / build 1,000 controls", tenThousand, thousand, kLargestGrowth});
    FirstLayoutAndPaint(report, 1000);
}

} // namespace bench
