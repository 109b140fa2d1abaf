#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

constexpr int kRows = 50;
constexpr int kColumns = 20;
constexpr int kSteps = 100;
constexpr int kWidth = 1200;
constexpr int kHeight = 800;
constexpr double kLargestToRepaint = 1.5;

void Resize(HWND window, int width, int height)
{
    ::SetWindowPos(window, nullptr, 0, 0, width, height,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

// Each step gives every control another place, so what the system takes to resize a window, and one
// repaint of all, is the least that it can cost.
void RunResizeBench(Report& report)
{
    BenchWindow window(kWidth, kHeight);
    window.Load(SkinOf(kRows, kColumns));
    const auto resize = [&] {
        for (int step = 1; step <= kSteps; ++step) {
            Resize(window, kWidth + step % 2 * 40, kHeight + step % 2 * 40);
            window.Repaint();
        }
    };
    EmptyWindow empty(kWidth, kHeight);
    const auto repaint = [&] {
        for (int step = 1; step <= kSteps; ++step) {
            Resize(empty, kWidth + step % 2 * 40, kHeight + step % 2 * 40);
            empty.Repaint();
            window.Repaint();
        }
    };
    const auto both = TimeBoth(resize, repaint);
    report.Add({"resize a page of 1,000 controls 100 times / an empty window, and repaint",
                both.cost, both.bare, kLargestToRepaint});
}

} // namespace bench
