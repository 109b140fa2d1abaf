#pragma once

#include "Control/UILabel.h"

namespace DuiLib {

// A push button.
//
// XML class "Button". Sends "click" when the mouse is released over it, or on Space or Return.
// Each look (background, picture, text, border) can have a variant per state; where several
// states hold, the one named first in "disabled, pushed, hot, focused" counts.
class UILIB_API CButtonUI : public CLabelUI {
public:
    static CControlUI* CreateControl();

    CButtonUI();
    ~CButtonUI() override;
    CButtonUI(const CButtonUI&) = default;
    CButtonUI& operator=(const CButtonUI&) = default;

    // Image strings.
    virtual LPCTSTR GetNormalImage();
    virtual void SetNormalImage(LPCTSTR image);
    virtual LPCTSTR GetHotImage();
    virtual void SetHotImage(LPCTSTR image);
    virtual LPCTSTR GetPushedImage();
    virtual void SetPushedImage(LPCTSTR image);
    virtual LPCTSTR GetFocusedImage();
    virtual void SetFocusedImage(LPCTSTR image);
    virtual LPCTSTR GetDisabledImage();
    virtual void SetDisabledImage(LPCTSTR image);
    virtual LPCTSTR GetHotForeImage();
    virtual void SetHotForeImage(LPCTSTR image);
    virtual LPCTSTR GetPushedForeImage();
    virtual void SetPushedForeImage(LPCTSTR image);
    // One picture in equal columns: normal, hot, pushed, disabled. With two columns the second is
    // hot and pushed. Without effect while there is a normal image.
    virtual LPCTSTR GetStateImage();
    virtual void SetStateImage(LPCTSTR image);
    void SetStateCount(int count);
    int GetStateCount() const;

    // Selects a page of a named tab layout whenever the button is activated.
    void BindTabIndex(int index);
    void BindTabLayoutName(LPCTSTR name);
    void BindTriggerTabSel(int index = -1); // selects at once; -1 = the bound page
    void RemoveBindTabIndex();
    int GetBindTabLayoutIndex();
    LPCTSTR GetBindTabLayoutName();

    // -1 = the label's font.
    void SetHotFont(int index);
    int GetHotFont() const;
    void SetPushedFont(int index);
    int GetPushedFont() const;
    void SetFocusedFont(int index);
    int GetFocusedFont() const;

    // ARGB, 0 = no colour of its own.
    void SetHotBkColor(DWORD color);
    DWORD GetHotBkColor() const;
    void SetPushedBkColor(DWORD color);
    DWORD GetPushedBkColor() const;
    void SetDisabledBkColor(DWORD color);
    DWORD GetDisabledBkColor() const;
    void SetHotTextColor(DWORD color);
    DWORD GetHotTextColor() const;
    void SetPushedTextColor(DWORD color);
    DWORD GetPushedTextColor() const;
    void SetFocusedTextColor(DWORD color);
    DWORD GetFocusedTextColor() const;
    void SetHotBorderColor(DWORD color);
    DWORD GetHotBorderColor() const;
    void SetPushedBorderColor(DWORD color);
    DWORD GetPushedBorderColor() const;
    void SetDisabledBorderColor(DWORD color);
    DWORD GetDisabledBorderColor() const;

    // A border in a given colour: rectangle, colour, width, width per side, corner round, pen
    // style; all in device pixels.
    void DrawBorder(HDC dc, const RECT& item, const DWORD& color, const int& size,
                    const RECT& sizes, const SIZE& round, const int& style);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    bool Activate() override;
    void SetEnabled(bool enable = true) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintText(HDC dc) override;
    void PaintBkColor(HDC dc) override;
    void PaintStatusImage(HDC dc) override;
    void PaintBorder(HDC dc) override;
    void PaintForeImage(HDC dc) override;

protected:
    UINT m_uButtonState; // UISTATE_* bits
    int m_iHotFont;
    int m_iPushedFont;
    int m_iFocusedFont;
    DWORD m_dwHotBkColor;
    DWORD m_dwPushedBkColor;
    DWORD m_dwDisabledBkColor;
    DWORD m_dwHotTextColor;
    DWORD m_dwPushedTextColor;
    DWORD m_dwFocusedTextColor;
    DWORD m_dwHotBorderColor;
    DWORD m_dwPushedBorderColor;
    DWORD m_dwDisabledBorderColor;
    CDuiString m_sNormalImage;
    CDuiString m_sHotImage;
    CDuiString m_sHotForeImage;
    CDuiString m_sPushedImage;
    CDuiString m_sPushedForeImage;
    CDuiString m_sFocusedImage;
    CDuiString m_sDisabledImage;
    int m_nStateCount;
    CDuiString m_sStateImage;
    int m_iBindTabIndex;
    CDuiString m_sBindTabLayoutName;

private:
    friend class COptionUI;
    friend class CCheckBoxUI;

    // Knows whether the button outlived a call that ran foreign code.
    class Witness {
    public:
        explicit Witness(CButtonUI& button);
        ~Witness();
        Witness(const Witness&) = delete;
        Witness& operator=(const Witness&) = delete;

        bool ButtonIsGone() const { return m_pButton == NULL; }

    private:
        friend class CButtonUI;

        CButtonUI* m_pButton;
        Witness* m_pNext;
    };

    // A copy of a button has no witnesses.
    class Witnesses {
    public:
        Witnesses() = default;
        Witnesses(const Witnesses&) {}
        Witnesses& operator=(const Witnesses&) { return *this; }

        Witness* m_pFirst = NULL;
    };

    void SetImage(CDuiString& member, LPCTSTR image);
    void SetColor(DWORD& member, DWORD color);
    void SetStateFont(int& member, int index);

    UINT ShownState() const;
    DWORD StateTextColor(UINT state) const;
    int StateFont(UINT state) const;
    bool DrawColumn(HDC dc, LPCTSTR image, int columns, UINT state);
    bool DrawOwnImage(HDC dc, LPCTSTR image);
    void SetPushed(bool pushed);
    void SetHot(bool hot, const TEventUI& event);
    void MousePressed(const TEventUI& event);
    void MouseReleased(const TEventUI& event);

    Witnesses m_Witnesses;
};

} // namespace DuiLib
