#pragma once

#include "Core/UIControl.h"

namespace DuiLib {

// A text in one format, plain or with markup.
//
// XML class "Label". A size that is not fixed can be computed from the text. Distances are design
// pixels in the setters and device pixels in the getters; colours are ARGB, 0 = the window's
// default; fonts are ids of the paint manager, -1 = the default font.
class UILIB_API CLabelUI : public CControlUI {
public:
    static CControlUI* CreateControl();

    CLabelUI();
    ~CLabelUI() override;
    CLabelUI(const CLabelUI&) = default;
    CLabelUI& operator=(const CLabelUI&) = default;

    // DT_* bits.
    void SetTextStyle(UINT style);
    UINT GetTextStyle() const;
    void SetTextColor(DWORD color);
    DWORD GetTextColor() const;
    void SetDisabledTextColor(DWORD color);
    DWORD GetDisabledTextColor() const;
    void SetFont(int index);
    int GetFont() const;
    RECT GetTextPadding() const;
    void SetTextPadding(RECT padding);
    bool IsShowHtml();
    void SetShowHtml(bool show = true);

    virtual bool GetAutoCalcWidth() const;
    virtual void SetAutoCalcWidth(bool autoCalc);
    virtual bool GetAutoCalcHeight() const;
    virtual void SetAutoCalcHeight(bool autoCalc);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetText(LPCTSTR text) override;
    // The fixed size. A missing width or height is computed from the text when asked for; a
    // single line is otherwise as high as its font and 8 pixels more. 0 = no wish.
    SIZE EstimateSize(SIZE available) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintText(HDC dc) override;

protected:
    DWORD m_dwTextColor;
    DWORD m_dwDisabledTextColor;
    int m_iFont;
    UINT m_uTextStyle;
    RECT m_rcTextPadding;
    bool m_bShowHtml;
    bool m_bAutoCalcWidth;
    bool m_bAutoCalcHeight;
    SIZE m_szAvailableLast;
    SIZE m_cxyFixedLast;
    bool m_bNeedEstimateSize;

private:
    friend class CTextUI;
    friend class CButtonUI;
    friend class COptionUI;
    friend class CEditUI;

    // What a measured text depends on besides the text and the label's own settings.
    struct MeasureKey {
        SIZE fixed; // device pixels
        HFONT font;
        LONG fontHeight;
        LONG fontWidth;
        UINT scale;

        bool operator==(const MeasureKey& other) const;
    };

    MeasureKey CurrentMeasureKey() const;
    SIZE MeasureText(int width) const;
    void TextChanged();
    DWORD LabelTextColor() const;
    RECT TextRect() const;
    void DrawLabelText(HDC dc, DWORD color, int font);

    MeasureKey m_LastMeasure;
};

} // namespace DuiLib
