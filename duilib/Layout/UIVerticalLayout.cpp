#include "Layout/UIVerticalLayout.h"

#include "Layout/LinearLayout.h"
#include "win32/AttributeTable.h"

namespace DuiLib {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

CControlUI* CVerticalLayoutUI::CreateControl()
{
    return new CVerticalLayoutUI;
}

CVerticalLayoutUI::CVerticalLayoutUI()
    : m_iSepHeight(0), m_uButtonState(0), ptLastMouse{}, m_rcNewPos{}, m_bImmMode(false)
{
}

void CVerticalLayoutUI::SetSepHeight(int height)
{
    m_iSepHeight = ClampLength(height);
}

int CVerticalLayoutUI::GetSepHeight() const
{
    return ScaleLength(m_iSepHeight);
}

void CVerticalLayoutUI::SetSepImmMode(bool immediately)
{
    if (m_bImmMode == immediately)
        return;
    m_bImmMode = immediately;
    if ((m_uButtonState & UISTATE_CAPTURED) == 0 || m_pManager == nullptr)
        return;
    if (immediately)
        m_pManager->RemovePostPaint(this);
    else
        m_pManager->AddPostPaint(this);
}

bool CVerticalLayoutUI::IsSepImmMode() const
{
    return m_bImmMode;
}

RECT CVerticalLayoutUI::GetThumbRect(bool newPosition) const
{
    return SeparatorDrag<VerticalAxis>::Thumb(*this, newPosition);
}

LPCTSTR CVerticalLayoutUI::GetClass() const
{
    return L"VerticalLayoutUI";
}

LPVOID CVerticalLayoutUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), L"VerticalLayout"))
        return this;
    return CContainerUI::GetInterface(name);
}

UINT CVerticalLayoutUI::GetControlFlags() const
{
    return IsEnabled() && m_iSepHeight != 0 ? UIFLAG_SETCURSOR : 0;
}

void CVerticalLayoutUI::SetPos(RECT rect, bool invalidate)
{
    LinearLayout<VerticalAxis>::SetPos(*this, rect, invalidate);
}

void CVerticalLayoutUI::DoEvent(TEventUI& event)
{
    if (!SeparatorDrag<VerticalAxis>::DoEvent(*this, event))
        CContainerUI::DoEvent(event);
}

void CVerticalLayoutUI::DoPostPaint(HDC dc, const RECT& paint)
{
    SeparatorDrag<VerticalAxis>::DoPostPaint(*this, dc, paint);
}

void CVerticalLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CVerticalLayoutUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"sepheight", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetSepHeight(ToInt(v)); }},
        {L"sepimm", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetSepImmMode(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CContainerUI::SetAttribute(name, value);
}

} // namespace DuiLib
