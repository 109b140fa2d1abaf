#pragma once

#include "Control/UILabel.h"

namespace DuiLib {

// A bar that is filled in proportion to a value, from the left or from the bottom.
//
// XML class "Progress". The part is drawn in the fore colour and with the fore image, which is
// either stretched to the part or cut to it.
class UILIB_API CProgressUI : public CLabelUI {
public:
    static CControlUI* CreateControl();

    CProgressUI();
    ~CProgressUI() override;
    CProgressUI(const CProgressUI&) = default;
    CProgressUI& operator=(const CProgressUI&) = default;

    // The percentage as the control's text.
    bool IsShowText();
    void SetShowText(bool show = true);
    virtual void UpdateText();

    bool IsHorizontal();
    void SetHorizontal(bool horizontal = true);
    bool IsStretchForeImage();
    void SetStretchForeImage(bool stretch = true);

    int GetMinValue() const;
    void SetMinValue(int value);
    int GetMaxValue() const;
    void SetMaxValue(int value);
    int GetValue() const;
    // Ignored outside minimum to maximum.
    void SetValue(int value);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintForeColor(HDC dc) override;
    void PaintForeImage(HDC dc) override;

protected:
    bool m_bShowText;
    bool m_bHorizontal;
    bool m_bStretchForeImage;
    int m_nMax;
    int m_nMin;
    int m_nValue;
    CDuiString m_sForeImageModify;

private:
    int PartOf(int whole) const;
    RECT FilledPart() const;
};

} // namespace DuiLib
