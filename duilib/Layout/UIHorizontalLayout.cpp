#include "Layout/UIHorizontalLayout.h"

#include "Layout/LinearLayout.h"
#include "win32/AttributeTable.h"

namespace DuiLib {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

CControlUI* CHorizontalLayoutUI::CreateControl()
{
    return new CHorizontalLayoutUI;
}

CHorizontalLayoutUI::CHorizontalLayoutUI()
    : m_iSepWidth(0), m_uButtonState(0), ptLastMouse{}, m_rcNewPos{}, m_bImmMode(false)
{
}

void CHorizontalLayoutUI::SetSepWidth(int width)
{
    m_iSepWidth = ClampLength(width);
}

int CHorizontalLayoutUI::GetSepWidth() const
{
    return ScaleLength(m_iSepWidth);
}

void CHorizontalLayoutUI::SetSepImmMode(bool immediately)
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

bool CHorizontalLayoutUI::IsSepImmMode() const
{
    return m_bImmMode;
}

RECT CHorizontalLayoutUI::GetThumbRect(bool newPosition) const
{
    return SeparatorDrag<HorizontalAxis>::Thumb(*this, newPosition);
}

LPCTSTR CHorizontalLayoutUI::GetClass() const
{
    return L"HorizontalLayoutUI";
}

LPVOID CHorizontalLayoutUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), L"HorizontalLayout"))
        return this;
    return CContainerUI::GetInterface(name);
}

UINT CHorizontalLayoutUI::GetControlFlags() const
{
    return IsEnabled() && m_iSepWidth != 0 ? UIFLAG_SETCURSOR : 0;
}

void CHorizontalLayoutUI::SetPos(RECT rect, bool invalidate)
{
    LinearLayout<HorizontalAxis>::SetPos(*this, rect, invalidate);
}

void CHorizontalLayoutUI::DoEvent(TEventUI& event)
{
    if (!SeparatorDrag<HorizontalAxis>::DoEvent(*this, event))
        CContainerUI::DoEvent(event);
}

void CHorizontalLayoutUI::DoPostPaint(HDC dc, const RECT& paint)
{
    SeparatorDrag<HorizontalAxis>::DoPostPaint(*this, dc, paint);
}

void CHorizontalLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CHorizontalLayoutUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"sepwidth", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetSepWidth(ToInt(v)); }},
        {L"sepimm", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetSepImmMode(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CContainerUI::SetAttribute(name, value);
}

} // namespace DuiLib
