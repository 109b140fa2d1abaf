#include "gallery/Canvas.h"

#include "win32/Handles.h"

#include <utility>

namespace gallery {

using namespace DuiLib;

Canvas::Canvas(Draw draw) : m_draw(std::move(draw)) {}

bool Canvas::DoPaint(HDC dc, const RECT& paint, CControlUI* stop)
{
    if (!CControlUI::DoPaint(dc, paint, stop))
        return false;
    const Quillet::SavedDc saved(dc);
    ::IntersectClipRect(dc, m_rcItem.left, m_rcItem.top, m_rcItem.right, m_rcItem.bottom);
    m_draw(*this, dc, paint);
    return true;
}

} // namespace gallery
