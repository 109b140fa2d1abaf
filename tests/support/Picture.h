#pragma once

#include "win32/Windows.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace test {

// A colour, printed as #AARRGGBB.
struct Argb {
    std::uint32_t value = 0;

    constexpr Argb() = default;
    constexpr explicit Argb(std::uint32_t argb) : value(argb) {}
    constexpr bool operator==(const Argb&) const = default;
};

std::ostream& operator<<(std::ostream& out, Argb colour);

// A grid of colours, top row first.
class Picture {
public:
    Picture(int width, int height, Argb fill = Argb{0});

    int Width() const { return m_width; }
    int Height() const { return m_height; }

    // Outside the picture: a colour that nothing draws, 0x00000001.
    Argb At(int x, int y) const;
    void Set(int x, int y, Argb colour);

    // How many pixels have the colour, in all or within a part.
    int Count(Argb colour) const;
    int Count(Argb colour, const RECT& part) const;

    // The smallest rectangle that holds every pixel of another colour than the given one.
    RECT BoundsOfAllBut(Argb background) const;

    bool operator==(const Picture&) const = default;

    // Writes a PNG, for a person to look at. False when the folder does not exist.
    bool Save(const std::wstring& path) const;

private:
    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_pixels;
};

// A memory DC with a 32-bit top-down bitmap to draw into.
class Canvas {
public:
    Canvas(int width, int height, Argb fill = Argb{0xFFFFFFFF});
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return m_dc; }
    HBITMAP Bitmap() const { return m_bitmap; }
    void Fill(Argb colour);

    // What was drawn. GDI leaves the alpha byte undefined, so it reads as opaque unless asked for.
    enum class Alpha { Opaque, AsDrawn };
    Picture Take(Alpha alpha = Alpha::Opaque) const;

private:
    int m_width;
    int m_height;
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_previous;
    std::uint32_t* m_bits = nullptr;
};

// Fails the running test when a channel differs by more than `largest` anywhere, or by more than
// `mean` on average; prints the worst pixels and a small map.
void ExpectSimilar(const Picture& actual, const Picture& expected, int largest, double mean);

} // namespace test
