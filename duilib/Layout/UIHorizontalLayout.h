#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIContainer.h"

namespace DuiLib {

template <class Axis>
class LinearLayout;
template <class Axis>
class SeparatorDrag;
struct HorizontalAxis;

// Puts its children in a row from left to right. A child without a width of its own shares what
// the others leave; one without a height of its own fills the row.
//
// XML classes "HorizontalLayout" and "HBox". A separator strip at the right or left edge lets the
// user drag the width of the layout itself.
class UILIB_API CHorizontalLayoutUI : public CContainerUI {
public:
    static CControlUI* CreateControl();

    CHorizontalLayoutUI();

    // Positive: at the right, negative: at the left, 0: none. Set in design pixels, read in device
    // pixels.
    void SetSepWidth(int width);
    int GetSepWidth() const;

    // Resize while dragging, or when the mouse is released.
    void SetSepImmMode(bool immediately);
    bool IsSepImmMode() const;

    // The strip; with `newPosition` that of the size being dragged to.
    RECT GetThumbRect(bool newPosition = false) const;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void DoEvent(TEventUI& event) override;
    void DoPostPaint(HDC dc, const RECT& paint) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    int m_iSepWidth;
    UINT m_uButtonState;
    POINT ptLastMouse;
    RECT m_rcNewPos;
    bool m_bImmMode;

private:
    friend class LinearLayout<HorizontalAxis>;
    friend class SeparatorDrag<HorizontalAxis>;
};

} // namespace DuiLib
