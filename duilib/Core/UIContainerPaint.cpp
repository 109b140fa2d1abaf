#include "Core/UIContainer.h"

#include "Control/UIScrollBar.h"
#include "Core/UIRender.h"

#include <algorithm>

// What lies where in a container: its painting, and the search for the control under a point.
namespace DuiLib {

namespace {

bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Meet(const RECT& first, const RECT& second)
{
    return first.left < second.right && second.left < first.right && first.top < second.bottom &&
           second.top < first.bottom;
}

} // namespace

void CContainerUI::GetChildrenInSight(int& first, int& last) const
{
    first = 0;
    last = m_items.GetSize();
}

bool CContainerUI::DoPaint(HDC dc, const RECT& paint, CControlUI* stop)
{
    RECT visible;
    if (!::IntersectRect(&visible, &paint, &m_rcItem))
        return true;

    // Most paints need no clip: the children that are painted lie inside the areas below anyway.
    const RECT childArea = GetChildArea();
    const bool childrenMeet = Meet(childArea, visible);
    bool clipChildren = false;
    bool clipAll = !Contains(paint, m_rcItem);
    const auto isPainted = [&](CControlUI& child, const RECT& rect) {
        return child.IsVisible() && Meet(rect, visible) &&
               (child.IsFloat() || (childrenMeet && Meet(rect, childArea)));
    };
    int first;
    int last;
    GetChildrenInSight(first, last);
    for (int i = first; i < last; ++i) {
        auto& child = *static_cast<CControlUI*>(m_items[i]);
        const RECT& rect = child.GetPos();
        if (!isPainted(child, rect))
            continue;
        if (child.IsFloat())
            clipAll = clipAll || !Contains(m_rcItem, rect);
        else
            clipChildren = clipChildren || !Contains(childArea, rect);
    }

    CRenderClip clip;
    if (clipAll)
        CRenderClip::GenerateClip(dc, visible, clip);
    if (!CControlUI::DoPaint(dc, paint, stop))
        return false;

    {
        CRenderClip childClip;
        if (clipChildren)
            CRenderClip::GenerateClip(dc, childArea, childClip);
        for (int i = first; i < std::min(last, m_items.GetSize()); ++i) {
            auto& child = *static_cast<CControlUI*>(m_items[i]);
            if (&child == stop)
                return false;
            if (!isPainted(child, child.GetPos()))
                continue;
            const bool outer = clipChildren && child.IsFloat();
            if (outer)
                CRenderClip::UseOldClipBegin(dc, childClip);
            const bool goOn = child.Paint(dc, paint, stop);
            if (outer)
                CRenderClip::UseOldClipEnd(dc, childClip);
            if (!goOn)
                return false;
        }
    }

    for (CScrollBarUI* const bar : {m_pVerticalScrollBar, m_pHorizontalScrollBar}) {
        if (bar == nullptr)
            continue;
        if (bar == stop)
            return false;
        if (bar->IsVisible() && !bar->Paint(dc, paint, stop))
            return false;
    }
    return true;
}

CControlUI* CContainerUI::FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags)
{
    const bool hitTest = (flags & UIFIND_HITTEST) != 0;
    if ((flags & UIFIND_VISIBLE) != 0 && !IsVisible())
        return nullptr;
    if ((flags & UIFIND_ENABLED) != 0 && !IsEnabled())
        return nullptr;
    if (hitTest && !::PtInRect(&m_rcItem, *static_cast<POINT*>(data)))
        return nullptr;

    const bool meFirst =
        (flags & UIFIND_ME_FIRST) != 0 || ((flags & UIFIND_UPDATETEST) != 0 && IsUpdateNeeded());
    if (meFirst) {
        // What lies below a container that is laid out anyway is not asked for.
        CControlUI* const found = CControlUI::FindControl(procedure, data, flags);
        if (found != nullptr || (flags & UIFIND_UPDATETEST) != 0)
            return found;
    }
    if (hitTest) {
        for (CScrollBarUI* const bar : {m_pVerticalScrollBar, m_pHorizontalScrollBar}) {
            CControlUI* const found = bar != nullptr && bar->IsVisible()
                                          ? bar->FindControl(procedure, data, flags)
                                          : nullptr;
            if (found != nullptr)
                return found;
        }
    }
    if (!hitTest || m_bMouseChildEnabled) {
        if (CControlUI* const found = FindBelow(procedure, data, flags))
            return found;
    }
    return meFirst ? nullptr : CControlUI::FindControl(procedure, data, flags);
}

CControlUI* CContainerUI::FindBelow(FINDCONTROLPROC procedure, LPVOID data, UINT flags)
{
    const bool hitTest = (flags & UIFIND_HITTEST) != 0;
    const RECT childArea = hitTest ? GetChildArea() : RECT{};
    const bool inChildArea = hitTest && ::PtInRect(&childArea, *static_cast<POINT*>(data));
    const auto ask = [&](CControlUI& child) -> CControlUI* {
        if (hitTest && !inChildArea && !child.IsFloat())
            return nullptr;
        return child.FindControl(procedure, data, flags);
    };

    int first = 0;
    int last = m_items.GetSize();
    if (hitTest || (flags & UIFIND_UPDATETEST) != 0)
        GetChildrenInSight(first, last);
    if ((flags & UIFIND_TOP_FIRST) == 0) {
        ChildWalk walk(*this, first);
        for (CControlUI* child = walk.Next(); child != nullptr && walk.GetIndex() < last;
             child = walk.Next()) {
            if (CControlUI* const found = ask(*child))
                return found;
        }
        return nullptr;
    }
    const ChildWalk watch(*this);
    for (int i = last - 1; watch.IsAlive() && i >= first; --i) {
        if (i >= m_items.GetSize())
            continue;
        if (CControlUI* const found = ask(*static_cast<CControlUI*>(m_items[i])))
            return found;
    }
    return nullptr;
}

} // namespace DuiLib
