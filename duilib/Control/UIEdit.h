#pragma once

#include "Control/UILabel.h"

namespace DuiLib {

class CNativeEdit;

// One line of text that the user can change.
//
// XML class "Edit". While the control has the focus, a native edit window lies over its text; at
// other times the control draws the text itself. Sends "textchanged" when the user (not the
// program) changed the text, and "return", "vk_back" and "escape" when one of these keys is
// pressed, before the key has its effect. Colours are ARGB, images are image strings.
class UILIB_API CEditUI : public CLabelUI {
public:
    static CControlUI* CreateControl();

    CEditUI();
    ~CEditUI() override;

    // A copy has no native window; assigning closes that of the target.
    CEditUI(const CEditUI&) = default;
    CEditUI& operator=(const CEditUI&) = default;

    // How much the user can put in, in UTF-16 units; 0 = no limit. The program may set more.
    void SetMaxChar(UINT max);
    UINT GetMaxChar();
    void SetReadOnly(bool readOnly);
    bool IsReadOnly() const;
    void SetPasswordMode(bool password);
    bool IsPasswordMode() const;
    void SetPasswordChar(TCHAR character); // the zero character is ignored
    TCHAR GetPasswordChar() const;
    void SetNumberOnly(bool numberOnly); // the user can put in digits only
    bool IsNumberOnly() const;
    int GetWindowStyls() const; // ES_* bits of the native window besides the usual ones

    LPCTSTR GetNormalImage();
    void SetNormalImage(LPCTSTR image);
    LPCTSTR GetHotImage();
    void SetHotImage(LPCTSTR image);
    LPCTSTR GetFocusedImage();
    void SetFocusedImage(LPCTSTR image);
    LPCTSTR GetDisabledImage();
    void SetDisabledImage(LPCTSTR image);

    // Colours of the native window, which is always opaque. Without one of its own the background
    // is the control's when that is opaque, else white; the text is in the control's text colour.
    void SetNativeEditBkColor(DWORD color);
    DWORD GetNativeEditBkColor() const;
    void SetNativeEditTextColor(LPCTSTR color);
    DWORD GetNativeEditTextColor() const; // 0 = the text colour

    // Selects the whole text whenever the control gets the focus.
    bool IsAutoSelAll();
    void SetAutoSelAll(bool autoSelect);

    // The selection, from the first unit to the one before the last; an end below 0 means the end
    // of the text, a start below 0 nothing but the caret at the end position. It is kept while the
    // control has no focus.
    void SetSel(long start, long end);
    void SetSelAll();
    void SetReplaceSel(LPCTSTR text); // puts a text in its place; not a change by the user

    // The hint that is shown while there is no text.
    void SetTipValue(LPCTSTR text);
    LPCTSTR GetTipValue();
    void SetTipValueColor(LPCTSTR color);
    DWORD GetTipValueColor();

    HWND GetHWND(); // the native window, or null

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    void SetText(LPCTSTR text) override;
    void SetEnabled(bool enable = true) override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void Move(SIZE offset, bool invalidate = true) override;
    void SetVisible(bool visible = true) override;
    void SetInternVisible(bool visible = true) override;
    SIZE EstimateSize(SIZE available) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintStatusImage(HDC dc) override;
    void PaintText(HDC dc) override;

protected:
    UINT m_uButtonState; // UISTATE_HOT
    UINT m_uMaxChar;
    bool m_bReadOnly;
    bool m_bPasswordMode;
    bool m_bAutoSelAll;
    TCHAR m_cPasswordChar;
    int m_iWindowStyls;
    CDuiString m_sNormalImage;
    CDuiString m_sHotImage;
    CDuiString m_sFocusedImage;
    CDuiString m_sDisabledImage;
    CDuiString m_sTipValue;
    DWORD m_dwTipValueColor;
    DWORD m_dwEditBkColor;
    DWORD m_dwEditTextColor;

private:
    friend class CNativeEdit;

    // The native window is a control's own: copying leaves it where it is.
    struct UILIB_API NativeLink {
        NativeLink() = default;
        NativeLink(const NativeLink&) {}
        NativeLink& operator=(const NativeLink& other);

        CNativeEdit* pWindow = nullptr;
        bool bBarred = false; // no window any more
    };

    void OpenNative();
    void CloseNative();
    void FollowLook();
    void Press(const TEventUI& event);
    void SetImage(CDuiString& member, LPCTSTR image);
    bool DrawStateImage(HDC dc, LPCTSTR image);
    UINT LineStyle() const;

    // For the native window:
    RECT NativePlace() const;
    RECT VisiblePart(RECT part) const;
    DWORD NativeTextColor();
    void DrawTip(HDC dc, RECT room);
    void SendKey(WPARAM key);
    void StoreText(const CDuiString& text);
    void TakeNativeText();
    void OpenOwnMenu();

    long m_nSelectionStart;
    long m_nSelectionEnd;
    NativeLink m_Native; // last: whatever is assigned is there when the window closes
};

} // namespace DuiLib
