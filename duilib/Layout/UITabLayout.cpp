#include "Layout/UITabLayout.h"

#include "Core/UIManager.h"
#include "win32/AttributeTable.h"

#include <algorithm>

namespace DuiLib {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

CControlUI* CTabLayoutUI::CreateControl()
{
    return new CTabLayoutUI;
}

CTabLayoutUI::CTabLayoutUI() : m_iCurSel(-1) {}

int CTabLayoutUI::GetCurSel() const
{
    return m_iCurSel;
}

bool CTabLayoutUI::SelectItem(int index)
{
    CControlUI* const selected = GetItemAt(index);
    if (selected == nullptr)
        return false;
    if (index == m_iCurSel)
        return true;

    const int old = m_iCurSel;
    m_iCurSel = index;
    ChildWalk walk(*this);
    while (CControlUI* const child = walk.Next()) {
        if (child != selected) {
            child->SetVisible(false);
            continue;
        }
        child->SetVisible(true);
        child->SetFocus();
    }
    if (!walk.IsAlive())
        return true;
    NeedParentUpdate();
    if (m_pManager != nullptr) {
        m_pManager->SetNextTabControl();
        m_pManager->SendNotify(this, DUI_MSGTYPE_TABSELECT, static_cast<WPARAM>(index),
                               static_cast<LPARAM>(old));
    }
    return true;
}

bool CTabLayoutUI::SelectItem(CControlUI* control)
{
    const int index = GetItemIndex(control);
    return index >= 0 && SelectItem(index);
}

bool CTabLayoutUI::SetItemIndex(CControlUI* control, int index)
{
    CControlUI* const selected = GetItemAt(m_iCurSel);
    if (!CContainerUI::SetItemIndex(control, index))
        return false;
    m_iCurSel = selected != nullptr ? GetItemIndex(selected) : -1;
    return true;
}

bool CTabLayoutUI::Add(CControlUI* control)
{
    const bool isVisible = control != nullptr && control->IsVisible();
    if (!CContainerUI::Add(control))
        return false;
    if (m_iCurSel < 0 && isVisible)
        m_iCurSel = GetItemIndex(control);
    else
        control->SetVisible(false);
    return true;
}

bool CTabLayoutUI::AddAt(CControlUI* control, int index)
{
    const bool isVisible = control != nullptr && control->IsVisible();
    if (!CContainerUI::AddAt(control, index))
        return false;
    if (m_iCurSel < 0 && isVisible)
        m_iCurSel = GetItemIndex(control);
    else if (m_iCurSel >= 0 && index <= m_iCurSel)
        ++m_iCurSel; // a page put before the selection stays as visible as it was
    else
        control->SetVisible(false);
    return true;
}

bool CTabLayoutUI::Remove(CControlUI* control)
{
    const int index = control != nullptr ? GetItemIndex(control) : -1;
    if (index < 0)
        return false;
    const bool wasSelected = index == m_iCurSel;
    if (wasSelected)
        m_iCurSel = GetCount() > 1 ? 0 : -1;
    else if (index < m_iCurSel)
        --m_iCurSel;
    const ChildWalk watch(*this);
    CContainerUI::Remove(control);
    if (wasSelected && watch.IsAlive()) {
        if (CControlUI* const first = GetItemAt(m_iCurSel))
            first->SetVisible(true);
        NeedParentUpdate();
    }
    return true;
}

void CTabLayoutUI::RemoveAll()
{
    m_iCurSel = -1;
    CContainerUI::RemoveAll();
    NeedParentUpdate();
}

LPCTSTR CTabLayoutUI::GetClass() const
{
    return L"TabLayoutUI";
}

LPVOID CTabLayoutUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), L"TabLayout"))
        return this;
    return CContainerUI::GetInterface(name);
}

void CTabLayoutUI::SetPos(RECT rect, bool invalidate)
{
    CControlUI::SetPos(rect, invalidate);

    const RECT client = GetChildArea();
    CControlUI* const page = GetItemAt(m_iCurSel);
    if (page == nullptr || !page->IsVisible()) {
        ProcessScrollBar(client, 0, 0);
        return;
    }
    const ChildWalk watch(*this);
    if (page->IsFloat()) {
        SetFloatPos(m_iCurSel);
        if (watch.IsAlive())
            ProcessScrollBar(client, 0, 0);
        return;
    }

    const RECT padding = page->GetPadding();
    const SIZE margins{padding.left + padding.right, padding.top + padding.bottom};
    const auto size = [](LONG length, LONG lowest, LONG highest) {
        return std::max({std::min(length, highest), lowest, 0L});
    };
    const SIZE wish = page->EstimateSize({std::max(client.right - client.left - margins.cx, 0L),
                                          std::max(client.bottom - client.top - margins.cy, 0L)});
    const SIZE lowest{page->GetMinWidth(), page->GetMinHeight()};
    const SIZE highest{page->GetMaxWidth(), page->GetMaxHeight()};
    const SIZE needed{size(wish.cx, lowest.cx, highest.cx) + margins.cx,
                      size(wish.cy, lowest.cy, highest.cy) + margins.cy};
    const RECT content = GetContentArea(client, needed);
    RECT place{content.left + padding.left, content.top + padding.top, 0, 0};
    place.right =
        place.left + size(wish.cx > 0 ? wish.cx : content.right - content.left - margins.cx,
                          lowest.cx, highest.cx);
    place.bottom =
        place.top + size(wish.cy > 0 ? wish.cy : content.bottom - content.top - margins.cy,
                         lowest.cy, highest.cy);
    page->SetPos(place, false);
    if (watch.IsAlive())
        ProcessScrollBar(client, needed.cx, needed.cy);
}

void CTabLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CTabLayoutUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"selectedid", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SelectItem(ToInt(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CContainerUI::SetAttribute(name, value);
}

} // namespace DuiLib
