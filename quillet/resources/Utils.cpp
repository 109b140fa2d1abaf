#include "quillet/resources/Utils.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <string_view>

#include "quillet/resources/MonitorDpi.h"
#include "quillet/resources/SaturatingCast.h"

namespace DuiLib::Utils {

namespace {

// Colours of a palette of that depth; a deeper bitmap has no palette.
constexpr DWORD PaletteLength(WORD bitCount)
{
    return bitCount == 1 || bitCount == 4 || bitCount == 8 ? 1u << bitCount : 0u;
}

template <class Header>
Header ReadHeader(const void* memory)
{
    Header header{};
    std::memcpy(&header, memory, sizeof header);
    return header;
}

double MeasureDpi(bool& ok, DWORD& error)
{
    const auto measured = Quillet::MeasureMainMonitorDpi();
    ok = measured.succeeded;
    error = measured.error;
    return measured.dpi;
}

BYTE Blend(BYTE from, BYTE to, float t)
{
    const auto step = Quillet::SaturateToInt(static_cast<float>(to - from) * t);
    return static_cast<BYTE>(static_cast<unsigned>(from) + static_cast<unsigned>(step));
}

} // namespace

WORD ColorTableSize(void* header)
{
    if (!header)
        return 0;
    if (ReadHeader<DWORD>(header) == sizeof(BITMAPCOREHEADER)) {
        const auto core = ReadHeader<BITMAPCOREHEADER>(header);
        return static_cast<WORD>(PaletteLength(core.bcBitCount) * sizeof(RGBTRIPLE));
    }

    const auto info = ReadHeader<BITMAPINFOHEADER>(header);
    const DWORD colours = info.biClrUsed != 0 ? info.biClrUsed : PaletteLength(info.biBitCount);
    const DWORD masks = info.biCompression == BI_BITFIELDS ? 3 : 0;
    // Published: the size wraps at 16 bits; callers rely on the narrow result.
    return static_cast<WORD>((colours + masks) * sizeof(RGBQUAD));
}

Gdiplus::Rect FromWin32RECT(const RECT& rect)
{
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

double GetDPIFactor(bool& ok, DWORD& error)
{
    if (MeasureDpi(ok, error) == USER_DEFAULT_SCREEN_DPI)
        return 1.0;
    // Published: a scaled monitor is measured a second time and the second answer counts; callers
    // rely on the error of that second measurement.
    return MeasureDpi(ok, error) / USER_DEFAULT_SCREEN_DPI;
}

Gdiplus::Color GetTransitionColor(const Gdiplus::Color& from, const Gdiplus::Color& to, float t)
{
    // Published: the alpha is the target's from the start, and channels beyond 0 to 1 wrap; callers
    // rely on both.
    return {to.GetA(), Blend(from.GetR(), to.GetR(), t), Blend(from.GetG(), to.GetG(), t),
            Blend(from.GetB(), to.GetB(), t)};
}

HBITMAP LoadBitmapFromDuiRes(const wchar_t* name)
{
    TImageInfo* const info = CRenderEngine::LoadImage(STRINGorID(name), nullptr, 0);
    if (!info)
        return nullptr;
    const HBITMAP bitmap = info->hBitmap;
    info->hBitmap = nullptr; // the record goes, the bitmap stays with the caller
    CRenderEngine::FreeImage(info);
    return bitmap;
}

bool SaveBitmap(Gdiplus::Bitmap* bitmap, const std::wstring& path)
{
    if (!bitmap)
        return false;

    UINT count = 0;
    UINT bytes = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0)
        return false;
    const std::unique_ptr<BYTE[]> memory(new (std::nothrow) BYTE[bytes]);
    if (!memory)
        return false;
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.get());
    if (Gdiplus::GetImageEncoders(count, bytes, encoders) != Gdiplus::Ok)
        return false;

    const std::span all(encoders, count);
    // Published: the format is PNG whatever the path's extension says; callers rely on it.
    const auto png = std::ranges::find_if(all, [](const Gdiplus::ImageCodecInfo& encoder) {
        return std::wstring_view(encoder.MimeType) == L"image/png";
    });
    return png != all.end() && bitmap->Save(path.c_str(), &png->Clsid, nullptr) == Gdiplus::Ok;
}

} // namespace DuiLib::Utils
