#pragma once

#include "Control/UIButton.h"

namespace DuiLib {

// A button that is selected or not; options of one group exclude each other.
//
// XML class "Option". Activating it sends "click", then selects it (in a group) or toggles it;
// every option whose state changed sends "selectchanged" with wParam = the new state. Options of
// a group that share a group type do not exclude each other.
class UILIB_API COptionUI : public CButtonUI {
public:
    static CControlUI* CreateControl();

    COptionUI();
    ~COptionUI() override;
    // A copy belongs to the same group by name, but is registered nowhere.
    COptionUI(const COptionUI&) = default;
    COptionUI& operator=(const COptionUI&) = default;

    LPCTSTR GetSelectedImage();
    void SetSelectedImage(LPCTSTR image);
    LPCTSTR GetSelectedHotImage();
    void SetSelectedHotImage(LPCTSTR image);
    LPCTSTR GetSelectedPushedImage();
    void SetSelectedPushedImage(LPCTSTR image);
    LPCTSTR GetSelectedForedImage();
    void SetSelectedForedImage(LPCTSTR image);
    void SetSelectedTextColor(DWORD color);
    DWORD GetSelectedTextColor();
    void SetSelectedBkColor(DWORD color);
    DWORD GetSelectBkColor();
    // One picture in equal columns: selected, and selected while hot, pushed, disabled. Without
    // effect while there is a selected image.
    void SetSelectedStateCount(int count);
    int GetSelectedStateCount() const;
    virtual LPCTSTR GetSelectedStateImage();
    virtual void SetSelectedStateImage(LPCTSTR image);
    void SetSelectedFont(int index);
    int GetSelectedFont() const;

    LPCTSTR GetGroup() const;
    void SetGroup(LPCTSTR group = NULL);
    LPCTSTR GetGroupType() const;
    void SetGroupType(LPCTSTR type = NULL);
    bool IsSelected() const;
    // State; with the second flag a change sends "selectchanged".
    virtual void Selected(bool selected, bool notify = true);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    bool Activate() override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintBkColor(HDC dc) override;
    void PaintStatusImage(HDC dc) override;
    void PaintForeImage(HDC dc) override;
    void PaintText(HDC dc) override;

protected:
    bool m_bSelected;
    CDuiString m_sGroupName;
    CDuiString m_sGroupType;
    int m_iSelectedFont;
    DWORD m_dwSelectedBkColor;
    DWORD m_dwSelectedTextColor;
    CDuiString m_sSelectedImage;
    CDuiString m_sSelectedHotImage;
    CDuiString m_sSelectedPushedImage;
    CDuiString m_sSelectedForeImage;
    int m_nSelectedStateCount;
    CDuiString m_sSelectedStateImage;

private:
    void JoinGroup(CPaintManagerUI* manager);
    void LeaveGroup();
    bool Excludes(const COptionUI& other) const;
    void DeselectOthers(bool notify);
    bool DrawSelectedImage(HDC dc);
};

} // namespace DuiLib
