#pragma once

#include "win32/Handles.h"

#include <cstddef>
#include <string>

namespace gallery {

// A picture of what windows show.
class Screenshot {
public:
    // The client area, read back from the screen.
    static Screenshot OfWindow(HWND window);

    // All windows of this thread, composed here: a screen without a compositor shows no
    // transparency.
    static Screenshot OfThisThread();

    bool Save(const std::wstring& path) const; // as PNG
    std::size_t Colours() const;               // how many different ones, looked at in a grid

private:
    Screenshot(int width, int height, Quillet::UniqueBitmap bitmap);

    int m_width;
    int m_height;
    Quillet::UniqueBitmap m_bitmap;
};

} // namespace gallery
