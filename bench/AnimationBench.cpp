#include <quillet/quillet.h>

#include "bench/BenchWindow.h"
#include "bench/Harness.h"
#include "bench/Surface.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

namespace {

using namespace DuiLib;

constexpr double kLargestToBareStretch = 1.1;
constexpr int kFrameSide = 96;
constexpr int kSide = 120;
constexpr int kFrames = 100; // a new one for every tick
constexpr int kDuring = 1000;
constexpr int kPrecision = 10;

HBITMAP MakeFrame(HDC screen, unsigned frame)
{
    BYTE* bits = nullptr;
    const HBITMAP bitmap = CRenderEngine::CreateARGB32Bitmap(screen, kFrameSide, kFrameSide, &bits);
    auto* const pixels = reinterpret_cast<std::uint32_t*>(bits);
    for (unsigned i = 0; i < kFrameSide * kFrameSide; ++i)
        pixels[i] = 0xFF000000 | (i * 37 + frame);
    return bitmap;
}

std::vector<HBITMAP> MakeFrames(HDC screen, unsigned count)
{
    std::vector<HBITMAP> frames;
    for (unsigned frame = 0; frame < count; ++frame)
        frames.push_back(MakeFrame(screen, frame));
    return frames;
}

void Tick(CControlUI& control)
{
    TNotifyUI notification;
    notification.sType = DUI_MSGTYPE_TIMER;
    notification.pSender = &control;
    control.OnNotify(&notification);
}

// The time and the frame of a tick, and nothing else.
class BareTick {
public:
    explicit BareTick(CControlUI& control) : m_control(control) {}

    void operator()()
    {
        m_elapsed += kPrecision;
        if (m_elapsed > kDuring + kPrecision)
            m_elapsed = 0;
        const int frame = static_cast<int>(static_cast<double>(m_elapsed) / kDuring * kFrames);
        if (frame != m_frame) {
            m_frame = frame < kFrames ? frame : kFrames - 1;
            m_control.Invalidate();
        }
    }

private:
    CControlUI& m_control;
    int m_elapsed = 0;
    int m_frame = -1;
};

} // namespace

void RunAnimationBench(Report& report)
{
    BenchWindow window(200, 200);
    window.Load(L"<Window><Container/></Window>");
    auto* const animation = new CImageAnimationControlUI;
    static_cast<CContainerUI*>(window.Manager().GetRoot())->Add(animation);
    window.Repaint();
    animation->SetPos({0, 0, kSide, kSide});

    const HDC screen = window.Manager().GetPaintDC();
    BYTE* bits = nullptr;
    const Surface canvas(screen, CRenderEngine::CreateARGB32Bitmap(screen, kSide, kSide, &bits));
    const Surface frame(screen, MakeFrame(screen, 0));
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};

    animation->SetDuring(kDuring);
    animation->SetPrecision(kPrecision);
    animation->SetBitmaps(MakeFrames(screen, kFrames));
    animation->Start();
    Tick(*animation);
    auto& painter = *animation->GetPainter();
    const auto paint = LeastOfBoth([&] { painter.Paint(canvas.Dc()); },
                                   [&] {
                                       ::AlphaBlend(canvas.Dc(), 0, 0, kSide, kSide, frame.Dc(), 0,
                                                    0, kFrameSide, kFrameSide, blend);
                                   });
    report.Add({"paint a frame in memory / the bare stretch", paint.cost, paint.bare,
                kLargestToBareStretch});

    BareTick bareTick(*animation);
    const auto tick = LeastOfBoth([&] { Tick(*animation); }, [&] { bareTick(); });
    report.Add({"a tick with a new frame / its arithmetic and Invalidate", tick.cost, tick.bare,
                std::nullopt});
    animation->Stop();
}

} // namespace bench
