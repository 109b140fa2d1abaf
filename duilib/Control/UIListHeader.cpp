#include "Control/UIListHeader.h"

#include "Control/UIList.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr DWORD kDragColor = 0xAA000000;

CListHeaderItemUI* AsItem(CControlUI* control)
{
    return static_cast<CListHeaderItemUI*>(control->GetInterface(DUI_CTR_LISTHEADERITEM));
}

} // namespace

CControlUI* CListHeaderUI::CreateControl()
{
    return new CListHeaderUI;
}

CListHeaderUI::CListHeaderUI() : m_bIsScaleHeader(false) {}

void CListHeaderUI::SetScaleHeader(bool scale)
{
    if (m_bIsScaleHeader == scale)
        return;
    m_bIsScaleHeader = scale;
    NeedParentUpdate();
}

bool CListHeaderUI::IsScaleHeader() const
{
    return m_bIsScaleHeader;
}

LPCTSTR CListHeaderUI::GetClass() const
{
    return L"ListHeaderUI";
}

LPVOID CListHeaderUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTHEADER))
        return this;
    return CHorizontalLayoutUI::GetInterface(name);
}

CListUI* CListHeaderUI::GetListOf() const
{
    return m_pParent != nullptr ? static_cast<CListUI*>(m_pParent->GetInterface(DUI_CTR_LIST))
                                : nullptr;
}

// As high as its highest column.
SIZE CListHeaderUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    if (size.cy > 0)
        return size;
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();) {
        if (child->IsVisible() && !child->IsFloat())
            size.cy = std::max(size.cy, child->EstimateSize(available).cy);
    }
    if (size.cy > 0) {
        const RECT inset = GetInset();
        size.cy += inset.top + inset.bottom;
    }
    return size;
}

int CListHeaderUI::GetMaxHeight() const
{
    const int highest = CHorizontalLayoutUI::GetMaxHeight();
    return m_items.IsEmpty() ? std::min(highest, GetFixedHeight()) : highest;
}

void CListHeaderUI::SetPos(RECT rect, bool invalidate)
{
    const ChildWalk watch(*this);
    if (m_bIsScaleHeader)
        CControlUI::SetPos(rect, invalidate);
    else
        CHorizontalLayoutUI::SetPos(rect, invalidate);
    if (!watch.IsAlive())
        return;
    if (m_bIsScaleHeader)
        PlaceByScale();
    else
        FollowRows();
}

// The columns stand over those of the rows.
void CListHeaderUI::FollowRows()
{
    const CListUI* const list = GetListOf();
    const LONG scrolled = list != nullptr ? list->GetScrollPos().cx : 0;
    if (scrolled == 0)
        return;
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();) {
        if (!child->IsVisible() || child->IsFloat())
            continue;
        RECT place = child->GetPos();
        ::OffsetRect(&place, -scrolled, 0);
        child->SetPos(place, false);
    }
}

// A column that was given no scale takes its fixed width for one.
int CListHeaderUI::ShareOf(CControlUI& column)
{
    const CListHeaderItemUI* const item = AsItem(&column);
    if (item != nullptr && item->GetScale() > 0)
        return item->GetScale();
    return std::max(column.GetFixedWidth(), 1);
}

void CListHeaderUI::PlaceByScale()
{
    const RECT area = GetChildArea();
    const LONG gap = GetChildPadding();
    std::int64_t shares = 0;
    std::int64_t count = 0;
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();) {
        if (!child->IsVisible() || child->IsFloat())
            continue;
        shares += ShareOf(*child);
        ++count;
    }
    const std::int64_t width =
        std::max<std::int64_t>(area.right - area.left - gap * (count - 1), 0);

    // Edges are computed from the sums, so that the last column ends where the header does.
    std::int64_t sum = 0;
    LONG left = area.left;
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();) {
        if (child->IsFloat()) {
            SetFloatPos(walk.GetIndex());
            continue;
        }
        if (!child->IsVisible() || shares == 0)
            continue;
        const std::int64_t before = sum * width / shares;
        sum = std::min(sum + ShareOf(*child), shares);
        const LONG length = static_cast<LONG>(sum * width / shares - before);
        child->SetPos({left, area.top, left + length, area.bottom}, false);
        left += length + gap;
    }
}

void CListHeaderUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CListHeaderUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"scaleheader", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetScaleHeader(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CHorizontalLayoutUI::SetAttribute(name, value);
}

// The bar of a separator that is being dragged, down to the end of the list.
RECT CListHeaderUI::GetDragBar() const
{
    for (int i = 0; i < GetCount(); ++i) {
        const CListHeaderItemUI* const item = AsItem(GetItemAt(i));
        if (item == nullptr || !item->IsDragging())
            continue;
        RECT bar = item->GetNewThumbRect();
        if (m_pParent != nullptr && GetListOf() != nullptr)
            bar.bottom = std::max(bar.bottom, m_pParent->GetClientPos().bottom);
        return bar;
    }
    return {};
}

void CListHeaderUI::InvalidateDragBar()
{
    RECT bar = GetDragBar();
    if (m_pManager != nullptr && !::IsRectEmpty(&bar))
        m_pManager->Invalidate(bar);
}

CListHeaderItemUI* CListHeaderUI::NextColumn(const CListHeaderItemUI& column, bool forward) const
{
    const int step = forward ? 1 : -1;
    const int count = GetCount();
    int at = 0;
    while (at < count && GetItemAt(at) != &column)
        ++at;
    for (at += step; at >= 0 && at < count; at += step) {
        CControlUI* const control = GetItemAt(at);
        if (CListHeaderItemUI* const item = AsItem(control); item != nullptr && item->IsVisible())
            return item;
    }
    return nullptr;
}

// The rows have the columns of the header, so all of the list is laid out.
void CListHeaderUI::ColumnsChanged()
{
    NeedParentUpdate();
}

void CListHeaderUI::DoPostPaint(HDC dc, const RECT& paint)
{
    RECT bar = GetDragBar();
    if (::IntersectRect(&bar, &bar, &paint))
        CRenderEngine::DrawColor(dc, bar, kDragColor);
}

} // namespace DuiLib
