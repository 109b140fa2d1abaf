#include "bench/BenchWindow.h"
#include "bench/Harness.h"

#include <malloc.h>

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kRows = 100;
constexpr int kColumns = 100;
constexpr double kMostBytesPerControl = 1024;

double UsedHeapBytes()
{
    double bytes = 0;
    _HEAPINFO entry{};
    while (_heapwalk(&entry) == _HEAPOK)
        if (entry._useflag == _USEDENTRY)
            bytes += static_cast<double>(entry._size);
    return bytes;
}

} // namespace

void RunMemoryBench(Report& report)
{
    const std::wstring skin = SkinOf(kRows, kColumns);
    BenchWindow window(800, 600);
    CDialogBuilder builder;
    const double before = UsedHeapBytes();
    CControlUI* root = nullptr;
    {
        CDialogBuilder temporary;
        root = temporary.Create(STRINGorID(skin.c_str()), nullptr, nullptr, &window.Manager());
    }
    window.Manager().AttachDialog(root);
    const double after = UsedHeapBytes();
    report.Add({"heap bytes per plain control, text and name included",
                (after - before) / (kRows * kColumns),
                {},
                kMostBytesPerControl,
                "B"});
}

} // namespace bench
