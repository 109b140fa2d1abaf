#include <quillet/quillet.h>

#include "bench/BenchWindow.h"
#include "bench/Harness.h"
#include "bench/Surface.h"

#include <string>

namespace bench {

namespace {

using namespace DuiLib;
using namespace Gdiplus;

constexpr double kLargestToBareCalls = 1.1;
constexpr RECT kPlace{20, 10, 180, 110};
constexpr auto kHint = TextRenderingHintAntiAliasGridFit;
constexpr DWORD kColour = 0xFF336699;

HBITMAP MakeBitmap(HDC screen)
{
    BYTE* bits = nullptr;
    return CRenderEngine::CreateARGB32Bitmap(screen, 200, 120, &bits);
}

void UseSmoothly(Graphics& graphics)
{
    graphics.SetInterpolationMode(InterpolationModeHighQualityBicubic);
    graphics.SetSmoothingMode(SmoothingModeAntiAlias);
}

void DrawBare(Graphics& graphics, UIImage& image, const Rect& place)
{
    ImageAttributes attributes;
    if (image.GetOpacity() < 100) {
        const float share = static_cast<float>(image.GetOpacity()) / 100.0f;
        const ColorMatrix matrix{{{1, 0, 0, 0, 0},
                                  {0, 1, 0, 0, 0},
                                  {0, 0, 1, 0, 0},
                                  {0, 0, 0, share, 0},
                                  {0, 0, 0, 0, 1}}};
        attributes.SetColorMatrix(&matrix);
    }
    graphics.SetTextRenderingHint(kHint);
    graphics.DrawImage(image.GetBitmap(), place, 0, 0, image.GetWidth(), image.GetHeight(),
                       UnitPixel, &attributes);
}

// Small shapes, so that the painter's own share shows.
void MeasureOperations(Report& report, CControlUI& control, HDC dc)
{
    UIPainter painter(&control, dc);
    painter.SetPen(kColour);
    painter.SetBrush(kColour);
    Graphics graphics(dc);
    UseSmoothly(graphics);
    UIImage image(16, 16);
    Graphics(image.GetBitmap()).Clear(Color(kColour));

    const auto add = [&report](const char* name, const Pair& pair) {
        report.Add({name, pair.cost, pair.bare, kLargestToBareCalls});
    };
    add("painter: line / the same GDI+ calls", LeastOfBoth([&] { painter.DrawLine(0, 0, 10, 0); },
                                                           [&] {
                                                               const Pen pen(Color(kColour), 1.0f);
                                                               graphics.DrawLine(&pen, 20, 10, 30,
                                                                                 10);
                                                           }));
    add("painter: rectangle / the same GDI+ calls", LeastOfBoth(
                                                        [&] {
                                                            painter.DrawRectange({0, 0, 10, 10});
                                                        },
                                                        [&] {
                                                            const Pen pen(Color(kColour), 1.0f);
                                                            graphics.DrawRectangle(&pen, 20, 10, 10,
                                                                                   10);
                                                        }));
    add("painter: fill / the same GDI+ calls", LeastOfBoth(
                                                   [&] {
                                                       painter.FillRectange({0, 0, 10, 10});
                                                   },
                                                   [&] {
                                                       const SolidBrush brush{Color(kColour)};
                                                       graphics.FillRectangle(&brush, 20, 10, 10,
                                                                              10);
                                                   }));
    add("painter: image / the same GDI+ calls",
        LeastOfBoth([&] { painter.DrawImage(0, 0, &image); },
                    [&] {
                        DrawBare(graphics, image, {20, 10, 16, 16});
                    }));
    add("painter: stretched image / the same GDI+ calls",
        LeastOfBoth(
            [&] {
                painter.DrawImage({0, 0, 40, 30}, &image);
            },
            [&] {
                DrawBare(graphics, image, {20, 10, 40, 30});
            }));
    image.SetOpacity(50);
    add("painter: translucent image / the same GDI+ calls",
        LeastOfBoth([&] { painter.DrawImage(0, 0, &image); },
                    [&] {
                        DrawBare(graphics, image, {20, 10, 16, 16});
                    }));
    add("painter: shifted fill / the same GDI+ calls",
        LeastOfBoth(
            [&] {
                painter.Translate(3, 4);
                painter.FillRectange({0, 0, 10, 10});
                painter.ResetTransform();
            },
            [&] {
                graphics.TranslateTransform(3, 4);
                const SolidBrush brush{Color(kColour)};
                graphics.FillRectangle(&brush, 20, 10, 10, 10);
                graphics.ResetTransform();
            }));
    report.Add({"painter: save, other colours, restore",
                TimeOf([&] {
                    painter.Save();
                    painter.SetPen(kColour);
                    painter.SetBrush(kColour);
                    painter.Restore();
                }),
                {},
                {}});
}

// A painter for the sake of one line.
void MeasureLife(Report& report, CControlUI& control, HDC dc)
{
    const auto onControl = LeastOfBoth(
        [&] {
            UIPainter painter(&control, dc);
            painter.SetPen(kColour);
            painter.DrawLine(0, 0, 10, 0);
        },
        [&] {
            Graphics graphics(dc);
            UseSmoothly(graphics);
            const Pen pen(Color(kColour), 1.0f);
            graphics.DrawLine(&pen, 20, 10, 30, 10);
        });
    report.Add({"painter: made for a line on a control / the same GDI+ calls", onControl.cost,
                onControl.bare, kLargestToBareCalls});
    UIImage image(16, 16);
    const auto intoImage = LeastOfBoth(
        [&] {
            UIPainter painter(&image);
            painter.SetPen(kColour);
            painter.DrawLine(0, 0, 10, 0);
        },
        [&] {
            Graphics graphics(image.GetBitmap());
            const Pen pen(Color(kColour), 1.0f);
            graphics.DrawLine(&pen, 0, 0, 10, 0);
        });
    report.Add({"painter: made for a line in an image / the same GDI+ calls", intoImage.cost,
                intoImage.bare, kLargestToBareCalls});
}

void MeasureParsing(Report& report)
{
    const std::wstring first =
        L"file='pictures/states.png' source='0,0,20,20' dest='1,1,30,30' corner='3,3,3,3' "
        L"mask='#FFFF00FF' fade='200' hole='true' xtiled='true' ytiled='true'";
    const std::wstring second = first + L" ";
    CImageAttribute attribute;
    bool odd = false;
    const double cost = TimeOf([&] {
        odd = !odd;
        attribute.SetAttributeString(odd ? first.c_str() : second.c_str());
    });
    report.Add({"parse an image description", cost, {}, {}});
    report.Add({"parse an image description, per character",
                cost / static_cast<double>(first.size()),
                {},
                {}});
}

} // namespace

void RunPainterBench(Report& report)
{
    BenchWindow window(200, 120);
    window.Load(L"<Window><Container/></Window>");
    auto* const control = new CControlUI;
    static_cast<CContainerUI*>(window.Manager().GetRoot())->Add(control);
    window.Repaint();
    control->SetPos(kPlace);
    const HDC screen = window.Manager().GetPaintDC();
    const Surface surface(screen, MakeBitmap(screen));
    MeasureOperations(report, *control, surface.Dc());
    MeasureLife(report, *control, surface.Dc());
    MeasureParsing(report);
}

} // namespace bench
