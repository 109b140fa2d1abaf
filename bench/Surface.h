#pragma once

#include <UIlib.h>

namespace bench {

// A bitmap, which it owns, in a memory DC.
class Surface {
public:
    Surface(HDC screen, HBITMAP bitmap)
        : m_dc(::CreateCompatibleDC(screen)),
          m_bitmap(bitmap),
          m_former(::SelectObject(m_dc, bitmap))
    {
    }
    ~Surface()
    {
        ::SelectObject(m_dc, m_former);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    HDC Dc() const { return m_dc; }

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

} // namespace bench
