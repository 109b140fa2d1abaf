#include <quillet/quillet.h>

#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

using namespace DuiLib;
using namespace Gdiplus;

constexpr double kLargestToBareCalls = 1.1;
constexpr RECT kPlace{0, 0, 50, 24};

// What a switched-on switch of 50 x 24 pixels draws, written out.
void DrawBare(HDC dc)
{
    Graphics graphics(dc);
    graphics.SetSmoothingMode(SmoothingModeAntiAlias);
    const SolidBrush track(Color(0xFF007DFF));
    graphics.FillPie(&track, 0, 0, 23, 23, 90, 180);
    graphics.FillRectangle(&track, 10, 0, 27, 23);
    graphics.FillPie(&track, 25, 0, 23, 23, -90, 180);

    Bitmap shadow(4, 4, &graphics);
    Graphics shadowGraphics(&shadow);
    const SolidBrush dark(Color(0x33000000));
    shadowGraphics.FillEllipse(&dark, 0, 0, 4, 4);
    const auto state = graphics.Save();
    graphics.SetInterpolationMode(InterpolationModeHighQualityBilinear);
    graphics.DrawImage(&shadow, Rect(31, 6, 17, 17));
    graphics.Restore(state);

    const SolidBrush white(Color(0xFFFFFFFF));
    graphics.FillEllipse(&white, 28, 3, 17, 17);
}

} // namespace

void RunToggleSwitchBench(Report& report)
{
    BenchWindow window(200, 100);
    window.Load(L"<Window><Container/></Window>");
    auto* const toggle = new CToggleSwitchUI;
    static_cast<CContainerUI*>(window.Manager().GetRoot())->Add(toggle);
    window.Repaint();
    toggle->SetPos(kPlace);
    toggle->SetOn(true);

    const HDC screen = window.Manager().GetPaintDC();
    const HDC memory = ::CreateCompatibleDC(screen);
    BYTE* bits = nullptr;
    const HBITMAP canvas = CRenderEngine::CreateARGB32Bitmap(screen, 50, 24, &bits);
    const HGDIOBJ old = ::SelectObject(memory, canvas);
    const auto pair = TimeBoth([&] { toggle->Paint(memory, kPlace); }, [&] { DrawBare(memory); });
    ::SelectObject(memory, old);
    ::DeleteObject(canvas);
    ::DeleteDC(memory);
    report.Add(
        {"paint a toggle switch / the same GDI+ calls", pair.cost, pair.bare, kLargestToBareCalls});
}

} // namespace bench
