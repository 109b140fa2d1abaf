#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIContainer.h"

namespace DuiLib {

// A container that builds its one child from a skin file when it is initialised.
//
// XML class "ChildLayout" or "ChildBox". Attribute `xmlfile`: the file, or its id in
// CResourceManager. A file that leads back to itself stays empty and leaves a readable failure.
class UILIB_API CChildLayoutUI : public CContainerUI {
public:
    static CControlUI* CreateControl();

    CChildLayoutUI();

    // The next Init builds the file, also when it is the same one again.
    void SetChildLayoutXML(CDuiString file);
    CDuiString GetChildLayoutXML();

    // CControlUI:
    void Init() override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    LPVOID GetInterface(LPCTSTR name) override;
    LPCTSTR GetClass() const override;

private:
    CDuiString m_sXmlFile;
    bool m_bBuilt;
};

} // namespace DuiLib
