#include "support/Picture.h"

#include "win32/GdiPlus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace test {

namespace {

constexpr Argb kOutside{0x00000001};
constexpr std::uint32_t kOpaque = 0xFF000000;

int LargestChannelDifference(std::uint32_t a, std::uint32_t b)
{
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference =
            static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
        largest = std::max(largest, std::abs(difference));
    }
    return largest;
}

// One character per cell of a coarse grid: blank, '.', '+', '#' by the largest difference in it.
std::string DifferenceMap(const Picture& actual, const Picture& expected)
{
    constexpr int kCells = 32;
    std::string map;
    const int stepX = std::max(1, (actual.Width() + kCells - 1) / kCells);
    const int stepY = std::max(1, (actual.Height() + kCells - 1) / kCells);
    for (int top = 0; top < actual.Height(); top += stepY) {
        for (int left = 0; left < actual.Width(); left += stepX) {
            int largest = 0;
            for (int y = top; y < std::min(top + stepY, actual.Height()); ++y)
                for (int x = left; x < std::min(left + stepX, actual.Width()); ++x)
                    largest = std::max(largest, LargestChannelDifference(actual.At(x, y).value,
                                                                         expected.At(x, y).value));
            map += largest == 0 ? ' ' : largest < 32 ? '.' : largest < 128 ? '+' : '#';
        }
        map += '\n';
    }
    return map;
}

CLSID PngEncoder()
{
    UINT count = 0;
    UINT bytes = 0;
    Gdiplus::GetImageEncodersSize(&count, &bytes);
    std::vector<BYTE> buffer(bytes);
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
    Gdiplus::GetImageEncoders(count, bytes, encoders);
    for (UINT i = 0; i < count; ++i)
        if (std::wstring_view(encoders[i].MimeType) == L"image/png")
            return encoders[i].Clsid;
    return {};
}

} // namespace

std::ostream& operator<<(std::ostream& out, Argb colour)
{
    std::ostringstream text;
    text << '#' << std::hex << std::uppercase << std::setw(8) << std::setfill('0') << colour.value;
    return out << text.str();
}

Picture::Picture(int width, int height, Argb fill)
    : m_width(width),
      m_height(height),
      m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill.value)
{
}

Argb Picture::At(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_height)
        return kOutside;
    return Argb{m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                         static_cast<std::size_t>(x)]};
}

void Picture::Set(int x, int y, Argb colour)
{
    m_pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                static_cast<std::size_t>(x)) = colour.value;
}

int Picture::Count(Argb colour) const
{
    return static_cast<int>(std::count(m_pixels.begin(), m_pixels.end(), colour.value));
}

int Picture::Count(Argb colour, const RECT& part) const
{
    int count = 0;
    for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x)
            count += At(x, y) == colour;
    return count;
}

RECT Picture::BoundsOfAllBut(Argb background) const
{
    RECT bounds{m_width, m_height, 0, 0};
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (At(x, y) == background)
                continue;
            bounds.left = std::min<LONG>(bounds.left, x);
            bounds.top = std::min<LONG>(bounds.top, y);
            bounds.right = std::max<LONG>(bounds.right, x + 1);
            bounds.bottom = std::max<LONG>(bounds.bottom, y + 1);
        }
    }
    return bounds.right > bounds.left ? bounds : RECT{};
}

bool Picture::Save(const std::wstring& path) const
{
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
    bool saved = false;
    {
        auto pixels = m_pixels;
        Gdiplus::Bitmap bitmap(m_width, m_height, m_width * 4, PixelFormat32bppARGB,
                               reinterpret_cast<BYTE*>(pixels.data()));
        const CLSID encoder = PngEncoder();
        saved = bitmap.Save(path.c_str(), &encoder, nullptr) == Gdiplus::Ok;
    }
    Gdiplus::GdiplusShutdown(token);
    return saved;
}

Canvas::Canvas(int width, int height, Argb fill) : m_width(width), m_height(height)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    m_dc = ::CreateCompatibleDC(nullptr);
    m_bitmap = ::CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    m_bits = static_cast<std::uint32_t*>(bits);
    m_previous = ::SelectObject(m_dc, m_bitmap);
    Fill(fill);
}

Canvas::~Canvas()
{
    ::SelectObject(m_dc, m_previous);
    ::DeleteObject(m_bitmap);
    ::DeleteDC(m_dc);
}

void Canvas::Fill(Argb colour)
{
    ::GdiFlush();
    std::fill_n(m_bits, m_width * m_height, colour.value);
}

Picture Canvas::Take(Alpha alpha) const
{
    ::GdiFlush();
    Picture picture(m_width, m_height);
    const std::uint32_t opaque = alpha == Alpha::Opaque ? kOpaque : 0;
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            picture.Set(x, y, Argb{m_bits[y * m_width + x] | opaque});
    return picture;
}

void ExpectSimilar(const Picture& actual, const Picture& expected, int largest, double mean)
{
    ASSERT_EQ(actual.Width(), expected.Width());
    ASSERT_EQ(actual.Height(), expected.Height());

    int worst = 0;
    int worstX = 0;
    int worstY = 0;
    double sum = 0;
    for (int y = 0; y < actual.Height(); ++y) {
        for (int x = 0; x < actual.Width(); ++x) {
            const int difference =
                LargestChannelDifference(actual.At(x, y).value, expected.At(x, y).value);
            sum += difference;
            if (difference > worst) {
                worst = difference;
                worstX = x;
                worstY = y;
            }
        }
    }
    const double average = sum / std::max(1, actual.Width() * actual.Height());
    if (worst <= largest && average <= mean)
        return;
    ADD_FAILURE() << "pictures differ: largest " << worst << " (allowed " << largest << ") at ("
                  << worstX << ", " << worstY << "): " << actual.At(worstX, worstY)
                  << " instead of " << expected.At(worstX, worstY) << ", mean " << average
                  << " (allowed " << mean << ")\n"
                  << DifferenceMap(actual, expected);
}

} // namespace test
