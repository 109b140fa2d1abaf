// quillet-bench [--json FILE]: prints each cost as a ratio to what it cannot avoid, and ends with
// code 1 when a ratio is over its bound.
#include <UIlib.h>

#include "bench/Harness.h"

#include <cstring>
#include <string>

int main(int argc, char** argv)
{
    DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    bench::Report report;
    bench::RunSkinBench(report);
    bench::RunPaintBench(report);
    bench::RunResizeBench(report);
    bench::RunFindBench(report);
    bench::RunListBench(report);
    bench::RunTreeBench(report);
    bench::RunDialogBench(report);
    bench::RunMemoryBench(report);
    bench::RunMenuBench(report);
    bench::RunMessageBoxBench(report);
    bench::RunConfirmationBench(report);
    bench::RunThumbnailBench(report);
    bench::RunToggleSwitchBench(report);
    bench::RunAnimationBench(report);
    bench::RunPainterBench(report);
    bench::RunQueueBench(report);
    bench::RunRouteBench(report);
    bench::RunControllerBench(report);
    report.Print();

    if (argc == 3 && std::strcmp(argv[1], "--json") == 0) {
        const std::string path = argv[2];
        if (!report.WriteJson(std::wstring(path.begin(), path.end())))
            return 2;
    }
    return report.AllHold() ? 0 : 1;
}
