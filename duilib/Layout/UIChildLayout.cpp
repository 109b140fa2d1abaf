#include "Layout/UIChildLayout.h"

#include "Core/Diagnostics.h"
#include "Core/UIDlgBuilder.h"
#include "Core/UIManager.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

constexpr int kDeepestNesting = 32; // of child layouts, also when their files differ

} // namespace

CControlUI* CChildLayoutUI::CreateControl()
{
    return new CChildLayoutUI;
}

CChildLayoutUI::CChildLayoutUI() : m_bBuilt(false) {}

void CChildLayoutUI::SetChildLayoutXML(CDuiString file)
{
    m_sXmlFile = file;
    m_bBuilt = false;
}

CDuiString CChildLayoutUI::GetChildLayoutXML()
{
    return m_sXmlFile;
}

void CChildLayoutUI::Init()
{
    CContainerUI::Init();
    if (m_bBuilt || m_sXmlFile.IsEmpty())
        return;
    m_bBuilt = true;
    if (LeadsBackToItself()) {
        ReportFailure(std::wstring(m_sXmlFile) + L": the child layout leads back to itself");
        return;
    }

    CDialogBuilder builder;
    CControlUI* const child =
        builder.Create(STRINGorID(m_sXmlFile.GetData()), nullptr, nullptr, m_pManager);
    if (child != nullptr)
        Add(child);
}

bool CChildLayoutUI::LeadsBackToItself() const
{
    int nesting = 0;
    for (CControlUI* above = GetParent(); above != nullptr; above = above->GetParent()) {
        auto* const layout = static_cast<CChildLayoutUI*>(above->GetInterface(DUI_CTR_CHILDLAYOUT));
        if (layout != nullptr &&
            (++nesting > kDeepestNesting ||
             Quillet::Text::EqualsNoCase(layout->m_sXmlFile.GetData(), m_sXmlFile.GetData())))
            return true;
    }
    return false;
}

void CChildLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    if (name != nullptr && Quillet::Text::EqualsNoCase(name, L"xmlfile"))
        SetChildLayoutXML(value);
    else
        CContainerUI::SetAttribute(name, value);
}

LPVOID CChildLayoutUI::GetInterface(LPCTSTR name)
{
    if (name != nullptr && Quillet::Text::EqualsNoCase(name, DUI_CTR_CHILDLAYOUT))
        return this;
    return CContainerUI::GetInterface(name);
}

LPCTSTR CChildLayoutUI::GetClass() const
{
    return L"ChildLayoutUI";
}

} // namespace DuiLib
