#include "Control/UICheckBox.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

} // namespace

CControlUI* CCheckBoxUI::CreateControl()
{
    return new CCheckBoxUI;
}

CCheckBoxUI::CCheckBoxUI() : m_bAutoCheck(false) {}

CCheckBoxUI::~CCheckBoxUI() = default;

LPCTSTR CCheckBoxUI::GetClass() const
{
    return L"CheckBoxUI";
}

LPVOID CCheckBoxUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_CHECKBOX))
        return static_cast<CCheckBoxUI*>(this);
    return COptionUI::GetInterface(name);
}

void CCheckBoxUI::SetCheck(bool check)
{
    Selected(check);
}

bool CCheckBoxUI::GetCheck() const
{
    return IsSelected();
}

void CCheckBoxUI::SetAutoCheck(bool enable)
{
    m_bAutoCheck = enable;
}

void CCheckBoxUI::DoEvent(TEventUI& event)
{
    const bool isPress = event.Type == UIEVENT_BUTTONDOWN || event.Type == UIEVENT_DBLCLICK;
    if (!m_bAutoCheck || !isPress || !IsMouseEnabled()) {
        COptionUI::DoEvent(event);
        return;
    }
    if (!IsEnabled() || !::PtInRect(&m_rcItem, event.ptMouse))
        return;
    const Witness witness(*this);
    SetCheck(!GetCheck());
    if (!witness.ButtonIsGone() && m_pManager)
        m_pManager->SendNotify(this, DUI_MSGTYPE_CHECKCLICK);
}

void CCheckBoxUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CCheckBoxUI>({
        {L"EnableAutoCheck", AttributeKind::Boolean,
         [](CCheckBoxUI& self, LPCTSTR on) { self.SetAutoCheck(Text::IsTrue(on)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        COptionUI::SetAttribute(name, value);
}

} // namespace DuiLib
