#include "Layout/UIChildLayout.h"

#include "Core/Diagnostics.h"
#include "Core/UIDlgBuilder.h"
#include "Core/UIManager.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <string>

namespace DuiLib {

namespace {

using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr int kDeepestNesting = 32; // of child layouts, also when their files differ

// The files being built into child layouts, innermost first: adding a file's controls initialises
// the child layouts among them. Parents tell nothing, for a control is initialised before its
// ancestors know theirs.
class BuildingFile {
public:
    explicit BuildingFile(LPCTSTR file) : m_file(file), m_outer(t_innermost) { t_innermost = this; }
    ~BuildingFile() { t_innermost = m_outer; }
    BuildingFile(const BuildingFile&) = delete;
    BuildingFile& operator=(const BuildingFile&) = delete;

    static bool NeverEnds(LPCTSTR file)
    {
        int nesting = 0;
        for (const auto* each = t_innermost; each != nullptr; each = each->m_outer) {
            if (++nesting > kDeepestNesting || Quillet::Text::EqualsNoCase(each->m_file, file))
                return true;
        }
        return false;
    }

private:
    static thread_local const BuildingFile* t_innermost;

    const LPCTSTR m_file;
    const BuildingFile* const m_outer;
};

thread_local const BuildingFile* BuildingFile::t_innermost = nullptr;

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

    const CDuiString file = m_sXmlFile;
    if (BuildingFile::NeverEnds(file)) {
        ReportFailure(std::wstring(file) + L": the child layout leads back to itself");
        return;
    }
    const BuildingFile building(file);
    CDialogBuilder builder;
    CControlUI* const child =
        builder.Create(STRINGorID(file.GetData()), nullptr, nullptr, m_pManager);
    if (child != nullptr)
        Add(child);
}

void CChildLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CChildLayoutUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"xmlfile", AttributeKind::Text,
         [](Self& self, LPCTSTR file) { self.SetChildLayoutXML(file); }},
    });
    if (!kTable.Apply(*this, name, value))
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
