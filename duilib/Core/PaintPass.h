#pragma once

#include "Core/UIPlatform.h"

namespace DuiLib {

// While it lives, a text that is drawn on the DC leaves its font selected, because to select a font
// costs more than to draw with it. The next text selects another one only when it needs one.
// Whoever opens a pass saves the DC before and restores it afterwards. Belongs to the thread that
// paints.
class PaintPass {
public:
    explicit PaintPass(HDC dc);
    ~PaintPass();
    PaintPass(const PaintPass&) = delete;
    PaintPass& operator=(const PaintPass&) = delete;

    // True when the DC is being painted in a pass of the calling thread.
    static bool Covers(HDC dc);

    // Lets go of a font that is about to be deleted.
    static void ForgetFont(HFONT font);

private:
    HDC m_dc;
    PaintPass* m_outer;
};

} // namespace DuiLib
