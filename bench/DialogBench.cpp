#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

constexpr double kLargestToBareWindow = 3;

class BareWindow : public DuiLib::CWindowWnd {
protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletBareWindow"; }
};

} // namespace

void RunDialogBench(Report& report)
{
    const std::wstring skin = SkinOf(2, 5);
    const auto pair = TimeBoth(
        [&] {
            BenchWindow window(400, 200);
            window.Load(skin);
        },
        [] {
            BareWindow window;
            window.Create(nullptr, L"bench", WS_POPUP, WS_EX_TOOLWINDOW, RECT{0, 0, 400, 200});
            ::ShowWindow(window, SW_SHOWNOACTIVATE);
            ::UpdateWindow(window);
            ::DestroyWindow(window);
        });
    report.Add({"open and close a dialog of ten controls / a bare window", pair.cost, pair.bare,
                kLargestToBareWindow});
}

} // namespace bench
