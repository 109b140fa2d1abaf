#pragma once

#include <quillet/quillet.h>

#include <functional>

namespace gallery {

// A control whose picture is drawn by its page: over its background, cut to its rectangle.
class Canvas : public DuiLib::CControlUI {
public:
    using Draw = std::function<void(Canvas& canvas, HDC dc, const RECT& paint)>;

    explicit Canvas(Draw draw);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // Design pixels in device pixels.
    using CControlUI::ScaleLength;

    // CControlUI:
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;

private:
    Draw m_draw;
};

} // namespace gallery
