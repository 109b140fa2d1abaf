#include "Core/UIContainer.h"

#include "Control/UIScrollBar.h"
#include "Core/UIManager.h"

#include <algorithm>
#include <utility>

namespace DuiLib {

namespace {

constexpr double kLargestPart = 1'000'000'000; // device pixels
constexpr int kDefaultStep = 8;                // device pixels
constexpr int kDeepestLayout = 2; // layouts that a change of the bars starts in one pass

bool IsShown(const CScrollBarUI* bar)
{
    return bar != nullptr && bar->IsVisible();
}

LONG Part(LONG whole, double fraction)
{
    return static_cast<LONG>(std::clamp(whole * fraction, -kLargestPart, kLargestPart));
}

LONG AtLeast(LONG edge, LONG lowest)
{
    return std::max(edge, lowest);
}

} // namespace

RECT CContainerUI::GetChildArea() const
{
    const RECT inset = GetInset();
    RECT area{m_rcItem.left + inset.left, m_rcItem.top + inset.top, m_rcItem.right - inset.right,
              m_rcItem.bottom - inset.bottom};
    if (IsShown(m_pVerticalScrollBar))
        area.right -= BarThickness(Direction::Vertical);
    if (IsShown(m_pHorizontalScrollBar))
        area.bottom -= BarThickness(Direction::Horizontal);
    area.right = AtLeast(area.right, area.left);
    area.bottom = AtLeast(area.bottom, area.top);
    return area;
}

void CContainerUI::SetPos(RECT rect, bool invalidate)
{
    CControlUI::SetPos(rect, invalidate);

    const RECT client = GetChildArea();
    ChildWalk walk(*this);
    SIZE needed{};
    for (int i = 0; i < m_items.GetSize(); ++i) {
        const auto* const child = static_cast<CControlUI*>(m_items[i]);
        if (!child->IsVisible() || child->IsFloat())
            continue;
        needed.cx = AtLeast(needed.cx, child->GetMinWidth());
        needed.cy = AtLeast(needed.cy, child->GetMinHeight());
    }

    const RECT content = GetContentArea(client, needed);
    while (CControlUI* const child = walk.Next()) {
        if (!child->IsVisible())
            continue;
        if (child->IsFloat()) {
            SetFloatPos(walk.GetIndex());
            continue;
        }
        const LONG width =
            AtLeast(std::min<LONG>(content.right - content.left, child->GetMaxWidth()),
                    child->GetMinWidth());
        const LONG height =
            AtLeast(std::min<LONG>(content.bottom - content.top, child->GetMaxHeight()),
                    child->GetMinHeight());
        child->SetPos({content.left, content.top, content.left + width, content.top + height},
                      false);
    }
    if (walk.IsAlive())
        ProcessScrollBar(client, needed.cx, needed.cy);
}

// The client area as far as it can be scrolled, moved by the positions of the container's own bars:
// a list tells the position of its body, which moves rows and not the body. A shown bar has, or
// will have at the end of this pass, the range that the needed size asks for.
RECT CContainerUI::GetContentArea(const RECT& client, SIZE needed) const
{
    const SIZE position = CContainerUI::GetScrollPos();
    RECT area{client.left - position.cx, client.top - position.cy, client.right - position.cx,
              client.bottom - position.cy};
    if (IsShown(m_pHorizontalScrollBar))
        area.right = AtLeast(area.right, area.left + needed.cx);
    if (IsShown(m_pVerticalScrollBar))
        area.bottom = AtLeast(area.bottom, area.top + needed.cy);
    return area;
}

void CContainerUI::SetFloatPos(int index)
{
    auto* const child = static_cast<CControlUI*>(m_items.GetAt(index));
    if (child == nullptr || !child->IsVisible() || !child->IsFloat())
        return;

    const SIZE at = child->GetFixedXY();
    const SIZE size = child->GetFixedSize();
    const LONG width = m_rcItem.right - m_rcItem.left;
    const LONG height = m_rcItem.bottom - m_rcItem.top;
    const UINT align = child->GetFloatAlign();
    RECT rect;
    if (align != 0) {
        LONG left = at.cx;
        LONG top = at.cy;
        if ((align & DT_CENTER) != 0)
            left = (width - size.cx) / 2;
        else if ((align & DT_RIGHT) != 0)
            left = width - size.cx;
        if ((align & DT_VCENTER) != 0)
            top = (height - size.cy) / 2;
        else if ((align & DT_BOTTOM) != 0)
            top = height - size.cy;
        left += m_rcItem.left;
        top += m_rcItem.top;
        rect = {left, top, left + size.cx, top + size.cy};
    } else {
        const TPercentInfo percent = child->GetFloatPercent();
        const LONG x = at.cx + (at.cx >= 0 ? m_rcItem.left : m_rcItem.right);
        const LONG y = at.cy + (at.cy >= 0 ? m_rcItem.top : m_rcItem.bottom);
        rect.left = Part(width, percent.left) + x;
        rect.top = Part(height, percent.top) + y;
        rect.right = Part(width, percent.right) + x + size.cx;
        rect.bottom = Part(height, percent.bottom) + y + size.cy;
    }
    child->SetPos(rect, false);
}

SIZE CContainerUI::GetScrollPos() const
{
    return {IsShown(m_pHorizontalScrollBar) ? m_pHorizontalScrollBar->GetScrollPos() : 0,
            IsShown(m_pVerticalScrollBar) ? m_pVerticalScrollBar->GetScrollPos() : 0};
}

SIZE CContainerUI::GetScrollRange() const
{
    return {IsShown(m_pHorizontalScrollBar) ? m_pHorizontalScrollBar->GetScrollRange() : 0,
            IsShown(m_pVerticalScrollBar) ? m_pVerticalScrollBar->GetScrollRange() : 0};
}

void CContainerUI::SetScrollPos(SIZE position, bool notify)
{
    const SIZE old = GetScrollPos();
    if (IsShown(m_pVerticalScrollBar))
        m_pVerticalScrollBar->SetScrollPos(position.cy);
    if (IsShown(m_pHorizontalScrollBar))
        m_pHorizontalScrollBar->SetScrollPos(position.cx);
    const SIZE now = GetScrollPos();
    if (old.cx == now.cx && old.cy == now.cy)
        return;

    const ChildWalk watch(*this);
    ShiftChildren(old.cx - now.cx, old.cy - now.cy);
    if (!watch.IsAlive())
        return;
    Invalidate();
    if (notify && m_pVerticalScrollBar != nullptr && m_pManager != nullptr) {
        const int line = std::max(m_pVerticalScrollBar->GetLineSize(), 1);
        m_pManager->SendNotify(this, DUI_MSGTYPE_SCROLL,
                               static_cast<WPARAM>((now.cy + line) / line), 0);
    }
}

void CContainerUI::ShiftChildren(int dx, int dy)
{
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();) {
        if (!child->IsVisible() || child->IsFloat())
            continue;
        RECT rect = child->GetPos();
        ::OffsetRect(&rect, dx, dy);
        child->SetPos(rect, false);
    }
}

void CContainerUI::SetScrollStepSize(int size)
{
    if (size > 0)
        m_nScrollStepSize = ClampLength(size);
}

int CContainerUI::GetScrollStepSize() const
{
    return ScaleLength(m_nScrollStepSize);
}

int CContainerUI::GetLineStep(Direction direction) const
{
    if (const int step = GetScrollStepSize(); step > 0)
        return step;
    if (direction == Direction::Vertical && m_pManager != nullptr)
        return m_pManager->GetDefaultFontInfo()->tm.tmHeight + kDefaultStep;
    return kDefaultStep;
}

int CContainerUI::GetPageStep(Direction direction) const
{
    const RECT client = GetChildArea();
    return direction == Direction::Vertical ? client.bottom - client.top
                                            : client.right - client.left;
}

void CContainerUI::ScrollTo(Direction direction, int position)
{
    SIZE target = GetScrollPos();
    (direction == Direction::Vertical ? target.cy : target.cx) = position;
    SetScrollPos(target);
}

void CContainerUI::LineUp()
{
    ScrollTo(Direction::Vertical, GetScrollPos().cy - GetLineStep(Direction::Vertical));
}

void CContainerUI::LineDown()
{
    ScrollTo(Direction::Vertical, GetScrollPos().cy + GetLineStep(Direction::Vertical));
}

void CContainerUI::PageUp()
{
    ScrollTo(Direction::Vertical, GetScrollPos().cy - GetPageStep(Direction::Vertical));
}

void CContainerUI::PageDown()
{
    ScrollTo(Direction::Vertical, GetScrollPos().cy + GetPageStep(Direction::Vertical));
}

void CContainerUI::HomeUp()
{
    ScrollTo(Direction::Vertical, 0);
}

void CContainerUI::EndDown()
{
    ScrollTo(Direction::Vertical, GetScrollRange().cy);
}

void CContainerUI::LineLeft()
{
    ScrollTo(Direction::Horizontal, GetScrollPos().cx - GetLineStep(Direction::Horizontal));
}

void CContainerUI::LineRight()
{
    ScrollTo(Direction::Horizontal, GetScrollPos().cx + GetLineStep(Direction::Horizontal));
}

void CContainerUI::PageLeft()
{
    ScrollTo(Direction::Horizontal, GetScrollPos().cx - GetPageStep(Direction::Horizontal));
}

void CContainerUI::PageRight()
{
    ScrollTo(Direction::Horizontal, GetScrollPos().cx + GetPageStep(Direction::Horizontal));
}

void CContainerUI::HomeLeft()
{
    ScrollTo(Direction::Horizontal, 0);
}

void CContainerUI::EndRight()
{
    ScrollTo(Direction::Horizontal, GetScrollRange().cx);
}

// False for a key that does not scroll this container.
bool CContainerUI::ScrollByKey(TCHAR key)
{
    const bool vertical = IsShown(m_pVerticalScrollBar);
    switch (key) {
    case VK_UP:
        vertical ? LineUp() : LineLeft();
        return true;
    case VK_DOWN:
        vertical ? LineDown() : LineRight();
        return true;
    case VK_PRIOR:
        vertical ? PageUp() : PageLeft();
        return true;
    case VK_NEXT:
        vertical ? PageDown() : PageRight();
        return true;
    case VK_HOME:
        vertical ? HomeUp() : HomeLeft();
        return true;
    case VK_END:
        vertical ? EndDown() : EndRight();
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (!IsShown(m_pHorizontalScrollBar))
            return false;
        key == VK_LEFT ? LineLeft() : LineRight();
        return true;
    default:
        return false;
    }
}

void CContainerUI::EnableScrollBar(bool vertical, bool horizontal)
{
    if (vertical)
        CreateBar(Direction::Vertical);
    else
        DeleteBar(Direction::Vertical);
    if (horizontal)
        CreateBar(Direction::Horizontal);
    else
        DeleteBar(Direction::Horizontal);
    NeedUpdate();
}

CScrollBarUI* CContainerUI::GetVerticalScrollBar() const
{
    return m_pVerticalScrollBar;
}

CScrollBarUI* CContainerUI::GetHorizontalScrollBar() const
{
    return m_pHorizontalScrollBar;
}

CScrollBarUI*& CContainerUI::BarOf(Direction direction)
{
    return direction == Direction::Vertical ? m_pVerticalScrollBar : m_pHorizontalScrollBar;
}

void CContainerUI::CreateBar(Direction direction)
{
    CScrollBarUI*& bar = BarOf(direction);
    if (bar != nullptr)
        return;
    bar = new CScrollBarUI;
    bar->SetOwner(this);
    bar->SetManager(m_pManager, nullptr, false);
    bar->SetHorizontal(direction == Direction::Horizontal);
    if (m_pManager != nullptr) {
        const bool isVertical = direction == Direction::Vertical;
        bar->ApplyAttributeList(
            m_pManager->GetDefaultAttributeList(isVertical ? L"VScrollBar" : L"HScrollBar"));
    }
    ApplyBarStyle(direction);
    bar->SetShow(m_bShowScrollbar);
    bar->SetEnabled(IsEnabled());
    bar->SetMouseEnabled(IsMouseEnabled());
    bar->SetVisible(false); // until the layout finds that it is needed
}

void CContainerUI::DeleteBar(Direction direction)
{
    CScrollBarUI* const bar = std::exchange(BarOf(direction), nullptr);
    if (bar == nullptr)
        return;
    bar->SetOwner(nullptr);
    if (m_pManager != nullptr)
        m_pManager->AddDelayedCleanup(bar); // it may be the one whose handler asked for this
    else
        delete bar;
}

void CContainerUI::ApplyBarStyle(Direction direction)
{
    const CDuiString& style =
        direction == Direction::Vertical ? m_sVerticalScrollBarStyle : m_sHorizontalScrollBarStyle;
    CScrollBarUI* const bar = BarOf(direction);
    if (bar != nullptr && !style.IsEmpty())
        bar->ApplyAttributeList(style);
}

bool CContainerUI::IsFixedScrollbar()
{
    return m_bFixedScrollbar;
}

void CContainerUI::SetFixedScrollbar(bool isFixed)
{
    m_bFixedScrollbar = isFixed;
    NeedUpdate();
}

bool CContainerUI::IsShowScrollbar()
{
    return m_bShowScrollbar;
}

void CContainerUI::SetShowScrollbar(bool show)
{
    m_bShowScrollbar = show;
    if (m_pVerticalScrollBar != nullptr)
        m_pVerticalScrollBar->SetShow(show);
    if (m_pHorizontalScrollBar != nullptr)
        m_pHorizontalScrollBar->SetShow(show);
}

int CContainerUI::BarThickness(Direction direction) const
{
    return direction == Direction::Vertical ? m_pVerticalScrollBar->GetFixedWidth()
                                            : m_pHorizontalScrollBar->GetFixedHeight();
}

void CContainerUI::ProcessScrollBar(RECT client, int neededWidth, int neededHeight)
{
    if (m_pVerticalScrollBar == nullptr && m_pHorizontalScrollBar == nullptr)
        return;
    if (m_nLayoutDepth == 0)
        m_bBarShownInPass[0] = m_bBarShownInPass[1] = false;

    const ChildWalk watch(*this);
    const SIZE old = GetScrollPos();
    const bool mayLayOut = m_nLayoutDepth < kDeepestLayout;
    const bool verticalChanged =
        FitBar(Direction::Vertical, client.bottom - client.top, neededHeight, mayLayOut);
    const bool horizontalChanged =
        FitBar(Direction::Horizontal, client.right - client.left, neededWidth, mayLayOut);
    const SIZE now = GetScrollPos();
    const bool moved = old.cx != now.cx || old.cy != now.cy;
    if ((verticalChanged || horizontalChanged || moved) && mayLayOut) {
        ++m_nLayoutDepth;
        SetPos(m_rcItem, false);
        if (watch.IsAlive())
            --m_nLayoutDepth;
        return;
    }
    if (moved)
        ShiftChildren(old.cx - now.cx, old.cy - now.cy);
    if (watch.IsAlive())
        PlaceBars(client);
}

// Shows or hides a bar and ranges it. True when that changes the space of the children. A bar that
// was shown in this pass stays, so that children which need it only when it is there cannot make
// it flicker.
bool CContainerUI::FitBar(Direction direction, int space, int needed, bool mayLayOut)
{
    CScrollBarUI* const bar = BarOf(direction);
    if (bar == nullptr)
        return false;
    bool& shownInPass = m_bBarShownInPass[direction == Direction::Vertical ? 0 : 1];
    const int range = std::max(needed - space, 0);
    const bool necessary = range > 0 || m_bFixedScrollbar || shownInPass;
    if (necessary == bar->IsVisible()) {
        if (necessary)
            bar->SetScrollRange(range);
        return false;
    }
    if (!mayLayOut)
        return false;
    shownInPass = necessary;
    bar->SetVisible(necessary);
    bar->SetScrollPos(0);
    bar->SetScrollRange(necessary ? range : 0);
    return true;
}

void CContainerUI::PlaceBars(const RECT& client)
{
    if (IsShown(m_pVerticalScrollBar)) {
        m_pVerticalScrollBar->SetPos({client.right, client.top,
                                      client.right + BarThickness(Direction::Vertical),
                                      client.bottom},
                                     false);
    }
    if (IsShown(m_pHorizontalScrollBar)) {
        m_pHorizontalScrollBar->SetPos({client.left, client.bottom, client.right,
                                        client.bottom + BarThickness(Direction::Horizontal)},
                                       false);
    }
}

} // namespace DuiLib
