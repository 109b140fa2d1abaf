#pragma once

#include "win32/GdiPlus.h"

// What the flat functions of GDI+ call an image. The classes keep it to themselves, and not every
// compiler's have the operations for which it is needed.
namespace Quillet {

template <class Tag, typename Tag::Type member>
struct ExposedMember {
    friend typename Tag::Type MemberOf(Tag) { return member; }
};

struct NativeImageTag {
    using Type = Gdiplus::GpImage* Gdiplus::Image::*;
    friend Type MemberOf(NativeImageTag);
};
template struct ExposedMember<NativeImageTag, &Gdiplus::Image::nativeImage>;

inline Gdiplus::GpImage* NativeImageOf(Gdiplus::Image& image)
{
    return image.*MemberOf(NativeImageTag{});
}

} // namespace Quillet
