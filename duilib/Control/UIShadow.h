#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

namespace DuiLib {

class CPaintManagerUI;

// The settings of a window's shadow, from the "shadow..." attributes of its skin or from code.
//
// They are kept for whoever draws a shadow; the toolkit itself draws none and leaves the window
// procedure alone. Lengths are design pixels.
class UILIB_API CShadowUI {
public:
    CShadowUI();

    // Binds to the window of a manager, which is not owned.
    void Create(CPaintManagerUI* manager);

    void ShowShadow(bool show);
    bool IsShowShadow() const;

    // Off for the time being, whatever ShowShadow says.
    void DisableShadow(bool disable);
    bool IsDisableShadow() const;

    // Each is refused, and changes nothing, outside its range: size -20 to 20 (how far the shadow
    // reaches over the window's edges), sharpness 0 to 20, darkness 0 to 255, position -100 to 100
    // in both directions. The colour is a COLORREF without high byte.
    bool SetSize(int size = 0);
    bool SetSharpness(unsigned int sharpness = 5);
    bool SetDarkness(unsigned int darkness = 200);
    bool SetPosition(int x = 5, int y = 5);
    bool SetColor(COLORREF color = 0);

    // A picture in place of a computed shadow; false, and none, for an empty name.
    bool SetImage(LPCTSTR image);
    // The parts of the picture that are not stretched; false for a negative one.
    bool SetShadowCorner(RECT corner);

    // Takes over the settings of another shadow, not its window; false for null.
    bool CopyShadow(CShadowUI* shadow);

    int GetSize() const;
    unsigned int GetSharpness() const;
    unsigned int GetDarkness() const;
    POINT GetPosition() const;
    COLORREF GetColor() const;
    LPCTSTR GetImage() const;
    RECT GetShadowCorner() const;
    CPaintManagerUI* GetManager() const;

protected:
    CPaintManagerUI* m_pManager;
    bool m_bIsShowShadow;
    bool m_bIsDisableShadow;
    int m_nSize;
    unsigned int m_nSharpness;
    unsigned int m_nDarkness;
    POINT m_ptPosition;
    COLORREF m_Color;
    CDuiString m_sShadowImage;
    RECT m_rcShadowCorner;
};

} // namespace DuiLib
