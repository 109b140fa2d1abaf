#include "quillet/drawing/ImageEffect.h"

#include "quillet/drawing/NativeImage.h"

namespace Quillet {

namespace {

using namespace Gdiplus;

// No library has them for every compiler.
constexpr GUID kBlur{0x633C80A4, 0x1843, 0x482B, {0x9E, 0xF2, 0xBE, 0x28, 0x34, 0xC5, 0xFD, 0xD4}};
constexpr GUID kBrightnessContrast{
    0xD3A1DBE1, 0x8EC4, 0x4C17, {0x9F, 0x4C, 0xEA, 0x97, 0xAD, 0x1C, 0x34, 0x3D}};

struct BlurParameters {
    float radius; // pixels
    BOOL expandEdge;
};
struct BrightnessContrastParameters {
    INT brightness;
    INT contrast;
};

class Effect {
public:
    template <class Parameters>
    Effect(const GUID& kind, const Parameters& parameters)
    {
        if (DllExports::GdipCreateEffect(kind, &m_effect) != Ok)
            m_effect = nullptr;
        else
            DllExports::GdipSetEffectParameters(m_effect, &parameters, sizeof parameters);
    }
    ~Effect()
    {
        if (m_effect)
            DllExports::GdipDeleteEffect(m_effect);
    }
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    void ApplyTo(Bitmap& bitmap) const
    {
        if (!m_effect)
            return;
        void* auxiliary = nullptr;
        INT size = 0;
        auto* const native = static_cast<GpBitmap*>(NativeImageOf(bitmap));
        DllExports::GdipBitmapApplyEffect(native, m_effect, nullptr, FALSE, &auxiliary, &size);
        DllExports::GdipFree(auxiliary);
    }

private:
    CGpEffect* m_effect = nullptr;
};

} // namespace

void Blur(Bitmap& bitmap, float radius, bool expandEdge)
{
    Effect(kBlur, BlurParameters{radius, expandEdge}).ApplyTo(bitmap);
}

void Brighten(Bitmap& bitmap, int level, int contrast)
{
    Effect(kBrightnessContrast, BrightnessContrastParameters{level, contrast}).ApplyTo(bitmap);
}

} // namespace Quillet
