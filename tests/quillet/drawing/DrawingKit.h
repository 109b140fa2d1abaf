#pragma once

#include <UIlib.h>

#include "quillet/drawing/Image.h"
#include "support/Picture.h"

#include <memory>

namespace test {

// Lives, but its destructor is not called: for the second of two copies that share what they own.
template <class Value>
class Undestroyed {
public:
    explicit Undestroyed(const Value& other) { new (m_bytes) Value(other); }
    Undestroyed(const Undestroyed&) = delete;
    Undestroyed& operator=(const Undestroyed&) = delete;

    Value& operator*() { return *reinterpret_cast<Value*>(m_bytes); }
    Value* operator->() { return &**this; }

private:
    alignas(Value) unsigned char m_bytes[sizeof(Value)];
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
    constexpr Argb kColours[] = {Argb{0xFFFF0000}, Argb{0xFF00FF00}, Argb{0xFF0000FF},
                                 Argb{0xFFFFFF00}};
    Picture picture(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            picture.Set(x, y, kColours[(y >= size / 2) * 2 + (x >= size / 2)]);
    return picture;
}

} // namespace test
