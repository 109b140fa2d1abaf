#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIContainer.h"

namespace DuiLib {

// Shows one of its children at a time.
//
// XML classes "TabLayout" and "TabBox". Sends "tabselect" (new index, old index).
class UILIB_API CTabLayoutUI : public CContainerUI {
public:
    static CControlUI* CreateControl();

    CTabLayoutUI();

    int GetCurSel() const; // -1 = nothing

    // True for the child that is selected already; false when there is no such child.
    virtual bool SelectItem(int index);
    virtual bool SelectItem(CControlUI* control);

    // CContainerUI:
    bool SetItemIndex(CControlUI* control, int index) override;
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    void RemoveAll() override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    int m_iCurSel;
};

} // namespace DuiLib
