#pragma once

#include <UIlib.h>

#include "quillet/drawing/Image.h"
#include "support/Picture.h"

#include <cstdint>
#include <memory>

namespace test {

// Lives, but its destructor is not called: for the second of two copies that share what they own.
template <class Value>
class Undestroyed {
public:
    explicit Undestroyed(const Value& other) : m_value(other) {}
    ~Undestroyed() {}
    Undestroyed(const Undestroyed&) = delete;
    Undestroyed& operator=(const Undestroyed&) = delete;

    Value& operator*() { return m_value; }
    Value* operator->() { return &m_value; }

private:
    union {
        Value m_value;
    };
};

inline std::unique_ptr<DuiLib::UIImage> ImageOf(const Picture& picture)
{
    auto image = std::make_unique<DuiLib::UIImage>(picture.Width(), picture.Height());
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            image->GetBitmap()->SetPixel(x, y, Gdiplus::Color(picture.At(x, y).value));
    return image;
}

inline Picture PictureOf(Gdiplus::Bitmap& bitmap)
{
    Picture picture(static_cast<int>(bitmap.GetWidth()), static_cast<int>(bitmap.GetHeight()));
    for (int y = 0; y < picture.Height(); ++y) {
        for (int x = 0; x < picture.Width(); ++x) {
            Gdiplus::Color colour;
            bitmap.GetPixel(x, y, &colour);
            picture.Set(x, y, Argb{colour.GetValue()});
        }
    }
    return picture;
}

// Red, green / blue, yellow.
inline Picture Quarters(int size)
{
    Picture picture(size, size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const bool right = x >= size / 2;
            const bool bottom = y >= size / 2;
            const std::uint32_t green = right ? 0xFF00 : 0;
            const std::uint32_t red = right == bottom ? 0xFF0000 : 0;
            const std::uint32_t blue = bottom && !right ? 0xFF : 0;
            picture.Set(x, y, Argb{0xFF000000 | red | green | blue});
        }
    }
    return picture;
}

} // namespace test
