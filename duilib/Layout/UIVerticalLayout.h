#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIContainer.h"

namespace DuiLib {

template <class Axis>
class LinearLayout;
template <class Axis>
class SeparatorDrag;
struct VerticalAxis;

// Stacks its children from top to bottom. A child without a height of its own shares what the
// others leave.
//
// XML classes "VerticalLayout" and "VBox". A separator strip at the lower or upper edge lets the
// user drag the height of the layout itself.
class UILIB_API CVerticalLayoutUI : public CContainerUI {
public:
    static CControlUI* CreateControl();

    CVerticalLayoutUI();

    // Positive: at the bottom, negative: at the top, 0: none. Set in design pixels, read in device
    // pixels.
    void SetSepHeight(int height);
    int GetSepHeight() const;

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
    int m_iSepHeight;
    UINT m_uButtonState;
    POINT ptLastMouse;
    RECT m_rcNewPos;
    bool m_bImmMode;

private:
    friend class LinearLayout<VerticalAxis>;
    friend class SeparatorDrag<VerticalAxis>;
};

} // namespace DuiLib
