#pragma once

#include "Core/UIContainer.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "Layout/UIHorizontalLayout.h"
#include "Layout/UIVerticalLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// What the vertical and the horizontal layout share: the main axis is the one along which children
// follow each other, the cross axis is the other.
namespace DuiLib {

struct VerticalAxis {
    using Layout = CVerticalLayoutUI;

    static constexpr UINT kMiddle = DT_VCENTER;
    static constexpr UINT kEnd = DT_BOTTOM;
    static constexpr UINT kCrossMiddle = DT_CENTER;
    static constexpr UINT kCrossEnd = DT_RIGHT;
    static constexpr WORD kResizeCursor = DUI_SIZENS;

    // A child is as wide as it estimates, and the estimate may use what can be scrolled to.
    static constexpr bool kCrossFromEstimate = true;
    static constexpr bool kScrollsWhileEstimating = true;

    static UINT Align(const Layout& layout) { return layout.GetChildVAlign(); }
    static UINT CrossAlign(const Layout& layout) { return layout.GetChildAlign(); }
    static int Separator(const Layout& layout) { return layout.GetSepHeight(); }
    static void SetFixed(Layout& layout, int length) { layout.SetFixedHeight(length); }

    template <class Size>
    static auto& Main(Size& size)
    {
        return size.cy;
    }
    template <class Size>
    static auto& Cross(Size& size)
    {
        return size.cx;
    }
    static SIZE MakeSize(LONG main, LONG cross) { return {cross, main}; }
    template <class Rect>
    static auto& Start(Rect& rect)
    {
        return rect.top;
    }
    template <class Rect>
    static auto& End(Rect& rect)
    {
        return rect.bottom;
    }
    template <class Rect>
    static auto& CrossStart(Rect& rect)
    {
        return rect.left;
    }
    template <class Rect>
    static auto& CrossEnd(Rect& rect)
    {
        return rect.right;
    }
    static LONG At(const POINT& point) { return point.y; }
    static SIZE Fixed(const CControlUI& control)
    {
        return {control.GetFixedWidth(), control.GetFixedHeight()};
    }
};

struct HorizontalAxis {
    using Layout = CHorizontalLayoutUI;

    static constexpr UINT kMiddle = DT_CENTER;
    static constexpr UINT kEnd = DT_RIGHT;
    static constexpr UINT kCrossMiddle = DT_VCENTER;
    static constexpr UINT kCrossEnd = DT_BOTTOM;
    static constexpr WORD kResizeCursor = DUI_SIZEWE;

    // A child fills the row unless its height is fixed or limited.
    static constexpr bool kCrossFromEstimate = false;
    static constexpr bool kScrollsWhileEstimating = false;

    static UINT Align(const Layout& layout) { return layout.GetChildAlign(); }
    static UINT CrossAlign(const Layout& layout) { return layout.GetChildVAlign(); }
    static int Separator(const Layout& layout) { return layout.GetSepWidth(); }
    static void SetFixed(Layout& layout, int length) { layout.SetFixedWidth(length); }

    template <class Size>
    static auto& Main(Size& size)
    {
        return size.cx;
    }
    template <class Size>
    static auto& Cross(Size& size)
    {
        return size.cy;
    }
    static SIZE MakeSize(LONG main, LONG cross) { return {main, cross}; }
    template <class Rect>
    static auto& Start(Rect& rect)
    {
        return rect.left;
    }
    template <class Rect>
    static auto& End(Rect& rect)
    {
        return rect.right;
    }
    template <class Rect>
    static auto& CrossStart(Rect& rect)
    {
        return rect.top;
    }
    template <class Rect>
    static auto& CrossEnd(Rect& rect)
    {
        return rect.bottom;
    }
    static LONG At(const POINT& point) { return point.x; }
    static SIZE Fixed(const CControlUI& control)
    {
        return {control.GetFixedWidth(), control.GetFixedHeight()};
    }
};

// One pass over the children of a layout: what each needs, then where it goes.
template <class Axis>
class LinearLayout {
public:
    using Layout = typename Axis::Layout;

    static void SetPos(Layout& layout, const RECT& rect, bool invalidate)
    {
        layout.CControlUI::SetPos(rect, invalidate);
        LinearLayout pass(layout);
        pass.Run();
    }

private:
    struct Child {
        CControlUI* control;
        RECT padding;
        LONG main; // 0: shares what the others leave
        LONG mainMin;
        LONG mainMax;
        LONG crossWish;  // 0: fills
        LONG crossLimit; // the fixed length or else the maximum
        LONG crossMin;
    };

    explicit LinearLayout(Layout& layout) : m_layout(layout), m_client(layout.GetChildArea()) {}

    void Run()
    {
        typename Layout::ChildWalk watch(m_layout);
        Measure();
        if (!watch.IsAlive())
            return;
        ShareSpace();
        Place();
        if (!watch.IsAlive())
            return;
        const SIZE needed = Needed();
        m_layout.ProcessScrollBar(m_client, needed.cx, needed.cy);
    }

    void Measure()
    {
        SIZE available{m_client.right - m_client.left, m_client.bottom - m_client.top};
        const SIZE range = m_layout.GetScrollRange();
        Axis::Cross(available) += Axis::Cross(range);
        if constexpr (Axis::kScrollsWhileEstimating)
            Axis::Main(available) += Axis::Main(range);

        m_children.reserve(static_cast<std::size_t>(m_layout.m_items.GetSize()));
        for (typename Layout::ChildWalk walk(m_layout); CControlUI* const control = walk.Next();) {
            if (control->IsVisible() && !control->IsFloat())
                m_children.push_back(MeasureChild(*control, available));
        }
        m_gap = m_layout.GetChildPadding();
    }

    static Child MeasureChild(CControlUI& control, const SIZE& available)
    {
        const SIZE fixed = Axis::Fixed(control);
        const SIZE lowest{control.GetMinWidth(), control.GetMinHeight()};
        const SIZE highest{control.GetMaxWidth(), control.GetMaxHeight()};
        const auto limit = [](LONG fixedLength, LONG longest) {
            return fixedLength > 0 ? fixedLength : longest;
        };

        Child child{};
        child.control = &control;
        child.padding = control.GetPadding();
        child.mainMin = Axis::Main(lowest);
        child.mainMax = Axis::Main(highest);
        child.crossMin = Axis::Cross(lowest);
        child.crossLimit = limit(Axis::Cross(fixed), Axis::Cross(highest));

        const LONG cross = Axis::Cross(available) - Axis::CrossStart(child.padding) -
                           Axis::CrossEnd(child.padding);
        const LONG main =
            std::min(Axis::Main(available), limit(Axis::Main(fixed), Axis::Main(highest)));
        const SIZE wish = control.EstimateSize(Axis::MakeSize(
            std::max<LONG>(main, 0), std::max<LONG>(std::min(cross, child.crossLimit), 0)));
        if (Axis::Main(wish) > 0)
            child.main = Clamp(Axis::Main(wish), child.mainMin, child.mainMax);
        if constexpr (Axis::kCrossFromEstimate)
            child.crossWish = std::max<LONG>(Axis::Cross(wish), 0);
        else
            child.crossWish = std::max<LONG>(Axis::Cross(fixed), 0);
        return child;
    }

    // The minimum wins over the maximum.
    static LONG Clamp(LONG length, LONG lowest, LONG highest)
    {
        return std::max(std::min(length, highest), lowest);
    }

    // Gives the children without a length of their own what is left of the client area.
    void ShareSpace()
    {
        std::int64_t taken = 0;
        std::int64_t adjustable = 0;
        for (const Child& child : m_children) {
            taken += child.main + Axis::Start(child.padding) + Axis::End(child.padding);
            if (child.main == 0)
                ++adjustable;
        }
        if (!m_children.empty())
            taken += m_gap * static_cast<std::int64_t>(m_children.size() - 1);
        m_hasAdjustable = adjustable > 0;
        m_total = taken;
        if (!m_hasAdjustable)
            return;

        std::int64_t left = std::max<std::int64_t>(ClientLength() - taken, 0);
        const std::int64_t share = left / adjustable;
        for (Child& child : m_children) {
            if (child.main != 0)
                continue;
            --adjustable;
            const std::int64_t part =
                std::clamp<std::int64_t>(adjustable > 0 ? share : left, 0, kFarthest);
            child.main = Clamp(static_cast<LONG>(part), child.mainMin, child.mainMax);
            left -= child.main;
            m_total += child.main;
        }
    }

    LONG ClientLength() const { return Axis::End(m_client) - Axis::Start(m_client); }

    SIZE Needed() const
    {
        LONG cross = 0;
        for (const Child& child : m_children) {
            const LONG wish = Clamp(child.crossWish, child.crossMin, child.crossLimit);
            cross = std::max(cross, wish + Axis::CrossStart(child.padding) +
                                        Axis::CrossEnd(child.padding));
        }
        return Axis::MakeSize(static_cast<LONG>(std::clamp<std::int64_t>(m_total, 0, kFarthest)),
                              cross);
    }

    void Place()
    {
        const RECT content = m_layout.GetContentArea(m_client, Needed());
        std::int64_t at = Axis::Start(content) + AlignShift();
        std::size_t next = 0;
        for (typename Layout::ChildWalk walk(m_layout); CControlUI* const control = walk.Next();) {
            if (control->IsFloat()) {
                m_layout.SetFloatPos(walk.GetIndex());
                continue;
            }
            // A handler may have changed the children since they were measured.
            for (std::size_t i = next; i < m_children.size(); ++i) {
                if (m_children[i].control != control)
                    continue;
                for (; next < i; ++next)
                    at += Advance(m_children[next]);
                control->SetPos(PlaceFor(m_children[i], at, content), false);
                at += Advance(m_children[i]);
                next = i + 1;
                break;
            }
        }
    }

    std::int64_t Advance(const Child& child) const
    {
        return static_cast<std::int64_t>(child.main) + Axis::Start(child.padding) +
               Axis::End(child.padding) + m_gap;
    }

    std::int64_t AlignShift() const
    {
        const SIZE range = m_layout.GetScrollRange();
        const std::int64_t spare = ClientLength() - m_total;
        if (m_hasAdjustable || Axis::Main(range) > 0 || spare <= 0)
            return 0;
        const UINT align = Axis::Align(m_layout);
        if (align == Axis::kMiddle)
            return spare / 2;
        return align == Axis::kEnd ? spare : 0;
    }

    RECT PlaceFor(const Child& child, std::int64_t at, const RECT& content) const
    {
        const LONG room = Axis::CrossEnd(content) - Axis::CrossStart(content) -
                          Axis::CrossStart(child.padding) - Axis::CrossEnd(child.padding);
        const LONG wish = Axis::kCrossFromEstimate && child.crossWish > 0 ? child.crossWish : room;
        const LONG cross =
            std::max<LONG>(Clamp(std::min(wish, room), child.crossMin, child.crossLimit), 0);

        const auto farthest = [](std::int64_t edge) {
            return static_cast<LONG>(std::clamp<std::int64_t>(edge, -kFarthest, kFarthest));
        };
        RECT rect{};
        Axis::Start(rect) = farthest(at + Axis::Start(child.padding));
        Axis::End(rect) = farthest(at + Axis::Start(child.padding) + child.main);
        const UINT align = Axis::CrossAlign(m_layout);
        if (align == Axis::kCrossMiddle) {
            // Centred on the middle of the area, whatever the paddings.
            const LONG spare = Axis::CrossEnd(content) - Axis::CrossStart(content) - cross;
            Axis::CrossStart(rect) = Axis::CrossStart(content) + spare / 2;
        } else if (align == Axis::kCrossEnd) {
            Axis::CrossStart(rect) =
                Axis::CrossEnd(content) - Axis::CrossEnd(child.padding) - cross;
        } else {
            Axis::CrossStart(rect) = Axis::CrossStart(content) + Axis::CrossStart(child.padding);
        }
        Axis::CrossEnd(rect) = Axis::CrossStart(rect) + cross;
        return rect;
    }

    static constexpr std::int64_t kFarthest = 100'000'000; // device pixels

    Layout& m_layout;
    const RECT m_client;
    std::vector<Child> m_children; // the visible ones that do not float
    LONG m_gap = 0;
    std::int64_t m_total = 0; // of everything along the main axis
    bool m_hasAdjustable = false;
};

// The strip at an edge of a layout with which the user drags the length of the layout.
template <class Axis>
class SeparatorDrag {
public:
    using Layout = typename Axis::Layout;

    static RECT Thumb(const Layout& layout, bool newPosition)
    {
        RECT rect = newPosition ? layout.m_rcNewPos : layout.m_rcItem;
        const int separator = Axis::Separator(layout);
        if (separator >= 0)
            Axis::Start(rect) = Axis::End(rect) - separator;
        else
            Axis::End(rect) = Axis::Start(rect) - separator;
        return rect;
    }

    // True when the event is the separator's alone.
    static bool DoEvent(Layout& layout, const TEventUI& event)
    {
        if (Axis::Separator(layout) == 0)
            return false;
        const RECT thumb = Thumb(layout, false);
        const bool isOver = ::PtInRect(&thumb, event.ptMouse) != FALSE;
        switch (event.Type) {
        case UIEVENT_BUTTONDOWN:
            if (!layout.IsEnabled() || !isOver)
                return false;
            Press(layout, event.ptMouse);
            return true;
        case UIEVENT_BUTTONUP:
            return Release(layout);
        case UIEVENT_MOUSEMOVE:
            return Drag(layout, event.ptMouse);
        case UIEVENT_SETCURSOR:
            if (!layout.IsEnabled() || !isOver)
                return false;
            ::SetCursor(::LoadCursorW(nullptr, MAKEINTRESOURCEW(Axis::kResizeCursor)));
            return true;
        default:
            return false;
        }
    }

    static void DoPostPaint(const Layout& layout, HDC dc, const RECT& paint)
    {
        if (!IsDragging(layout) || layout.m_bImmMode)
            return;
        RECT thumb = Thumb(layout, true);
        if (::IntersectRect(&thumb, &thumb, &paint))
            CRenderEngine::DrawColor(dc, thumb, kDragColor);
    }

private:
    static constexpr DWORD kDragColor = 0xAA000000;

    static bool IsDragging(const Layout& layout)
    {
        return (layout.m_uButtonState & UISTATE_CAPTURED) != 0;
    }

    static void Press(Layout& layout, POINT mouse)
    {
        layout.m_uButtonState |= UISTATE_CAPTURED;
        layout.ptLastMouse = mouse;
        layout.m_rcNewPos = layout.m_rcItem;
        if (!layout.m_bImmMode && layout.m_pManager != nullptr)
            layout.m_pManager->AddPostPaint(&layout);
    }

    static bool Release(Layout& layout)
    {
        if (!IsDragging(layout))
            return false;
        layout.m_uButtonState &= ~static_cast<UINT>(UISTATE_CAPTURED);
        if (layout.m_bImmMode)
            return true;
        if (layout.m_pManager != nullptr) {
            layout.m_pManager->RemovePostPaint(&layout);
            InvalidateThumb(layout);
        }
        Apply(layout);
        return true;
    }

    static bool Drag(Layout& layout, POINT mouse)
    {
        if (!IsDragging(layout))
            return false;
        // Beyond a limit the strip stays, and waits for the mouse to come back to it.
        const bool atEnd = Axis::Separator(layout) > 0;
        const LONG length = Axis::End(layout.m_rcNewPos) - Axis::Start(layout.m_rcNewPos);
        const LONG moved = Axis::At(mouse) - Axis::At(layout.ptLastMouse);
        const LONG wanted = Limit(layout, atEnd ? length + moved : length - moved);
        const LONG step = atEnd ? wanted - length : length - wanted;
        if (step == 0)
            return true;

        if (!layout.m_bImmMode)
            InvalidateThumb(layout);
        if (atEnd)
            Axis::End(layout.m_rcNewPos) += step;
        else
            Axis::Start(layout.m_rcNewPos) += step;
        auto& last = layout.ptLastMouse;
        if constexpr (Axis::kResizeCursor == DUI_SIZENS)
            last.y += step;
        else
            last.x += step;
        if (layout.m_bImmMode)
            Apply(layout);
        else
            InvalidateThumb(layout);
        return true;
    }

    // At least the strip itself stays, so that it can be dragged back.
    static LONG Limit(const Layout& layout, LONG length)
    {
        const SIZE lowest{layout.GetMinWidth(), layout.GetMinHeight()};
        const SIZE highest{layout.GetMaxWidth(), layout.GetMaxHeight()};
        const LONG strip = std::abs(Axis::Separator(layout));
        return std::max({std::min(length, Axis::Main(highest)), Axis::Main(lowest), strip});
    }

    static void Apply(Layout& layout)
    {
        const LONG length = Axis::End(layout.m_rcNewPos) - Axis::Start(layout.m_rcNewPos);
        CPaintManagerUI* const manager = layout.m_pManager;
        Axis::SetFixed(layout,
                       manager != nullptr ? manager->GetDPIObj()->ScaleBack(length) : length);
    }

    static void InvalidateThumb(Layout& layout)
    {
        RECT thumb = Thumb(layout, true);
        if (layout.m_pManager != nullptr)
            layout.m_pManager->Invalidate(thumb);
    }
};

} // namespace DuiLib
