#pragma once

#include "Control/UIList.h"
#include "Control/UIListElement.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"

#include <utility>

// What the rows of lists share, whatever they derive from: look, selection, events and placing.
namespace DuiLib {

// Knows whether a row outlived a call that ran foreign code. Witnesses live on the stack.
class RowWitness {
public:
    explicit RowWitness(const void* row) : m_row(row), m_outer(s_latest) { s_latest = this; }
    ~RowWitness() { s_latest = m_outer; }
    RowWitness(const RowWitness&) = delete;
    RowWitness& operator=(const RowWitness&) = delete;

    bool RowLives() const { return m_row != nullptr; }

    static void RowDies(const void* row)
    {
        for (RowWitness* witness = s_latest; witness != nullptr; witness = witness->m_outer) {
            if (witness->m_row == row)
                witness->m_row = nullptr;
        }
    }

private:
    static inline thread_local RowWitness* s_latest = nullptr;

    const void* m_row;
    RowWitness* m_outer;
};

// What a single line gets above and below its text, together, in device pixels.
inline constexpr LONG kRowLineMargin = 8;

inline RECT LessPadding(const RECT& rect, const RECT& padding)
{
    return {rect.left + padding.left, rect.top + padding.top, rect.right - padding.right,
            rect.bottom - padding.bottom};
}

// The height of a text that wraps at a width, in device pixels.
inline LONG MeasureRowText(CPaintManagerUI& manager, const TListInfoUI& info, LPCTSTR text,
                           int width)
{
    // No text is higher than this; GDI takes 32-bit coordinates, but not near their end.
    constexpr LONG kUnlimited = 0xFFFFF;
    constexpr UINT kPlaceBits = DT_VCENTER | DT_BOTTOM | DT_CENTER | DT_RIGHT | DT_END_ELLIPSIS;

    if (*text == L'\0')
        return manager.GetFontInfo(info.nFont)->tm.tmHeight;
    const UINT style = (info.uTextStyle & ~kPlaceBits) | DT_CALCRECT;
    RECT extent{0, 0, width, kUnlimited};
    if (info.bShowHtml) {
        int links = 0;
        CRenderEngine::DrawHtmlText(manager.GetPaintDC(), &manager, extent, text, 0, nullptr,
                                    nullptr, links, info.nFont, style);
    } else {
        CRenderEngine::DrawText(manager.GetPaintDC(), &manager, extent, text, 0, info.nFont, style);
    }
    return extent.bottom - extent.top;
}

// The operations of a row class, which makes this its friend.
template <class Row>
class ListRow {
public:
    static TListInfoUI* Info(const Row& row)
    {
        return row.m_pOwner != nullptr ? row.m_pOwner->GetListInfo() : nullptr;
    }

    // Selection.

    static bool Select(Row& row, bool select) { return ChangeSelection(row, select, false); }
    static bool SelectMulti(Row& row, bool select) { return ChangeSelection(row, select, true); }

    static void HasBeenHidden(Row& row)
    {
        if (!row.IsVisible() && row.m_bSelected)
            row.Select(false);
    }

    // A row that is disabled forgets the mouse: it is neither hot nor pressed when it comes back.
    static void HasBeenEnabled(Row& row)
    {
        const UINT kept = row.m_uButtonState & UISTATE_SELECTED;
        if (!row.IsEnabled())
            row.m_uButtonState = kept | UISTATE_DISABLED;
        else
            row.m_uButtonState &= ~static_cast<UINT>(UISTATE_DISABLED);
    }

    // Placing. A body that places its rows lazily is asked before a position is told.

    static void FindBody(Row& row)
    {
        row.m_pBody = dynamic_cast<CListBodyUI*>(row.m_pParent);
        row.m_uPlaced = 0;
    }

    static int IndexOf(const Row& row)
    {
        if (row.m_pBody != nullptr)
            row.m_pBody->NumberRows();
        return row.m_iIndex;
    }

    static void EnsurePlaced(const Row& row)
    {
        if (row.m_pBody != nullptr && row.m_uPlaced != row.m_pBody->GetPlacing())
            row.m_pBody->EnsureRowPlaced(const_cast<Row&>(row), row.m_iIndex);
    }

    static void HasBeenPlaced(Row& row, const RECT& rect)
    {
        if (row.m_pBody == nullptr)
            return;
        row.m_uPlaced = row.m_pBody->GetPlacing();
        row.m_pBody->RowMoved(row, row.m_iIndex, rect);
    }

    static void Invalidate(Row& row)
    {
        if (row.m_pManager == nullptr || !row.IsVisible())
            return;
        // A row that has not been placed since the latest scrolling is out of sight.
        if (row.m_pBody != nullptr && row.m_uPlaced != row.m_pBody->GetPlacing())
            return;
        RECT rect = row.GetPos();
        if (row.m_pParent != nullptr) {
            const RECT client = row.m_pParent->GetClientPos();
            if (!::IntersectRect(&rect, &rect, &client))
                return;
        }
        for (const CControlUI* outer = row.m_pParent; outer != nullptr;
             outer = outer->GetParent()) {
            if (!outer->IsVisible() || !::IntersectRect(&rect, &rect, &outer->GetPos()))
                return;
        }
        row.m_pManager->Invalidate(rect);
    }

    // Events.

    static void DoEvent(Row& row, TEventUI& event)
    {
        const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
        if (isMouse && !row.IsMouseEnabled()) {
            PassOn(row, event);
            return;
        }
        switch (event.Type) {
        case UIEVENT_BUTTONDOWN:
            Press(row, event);
            return;
        case UIEVENT_BUTTONUP:
            Release(row, event);
            return;
        case UIEVENT_DBLCLICK:
            DoubleClick(row, event);
            return;
        case UIEVENT_RBUTTONDOWN:
            if (!SelectsWithRightButton(row))
                break;
            if (row.IsEnabled() && !row.m_bSelected)
                SelectAlone(row);
            return;
        case UIEVENT_MOUSEENTER:
        case UIEVENT_MOUSELEAVE:
            SetHot(row, event);
            return;
        case UIEVENT_KEYDOWN:
            if (event.chKey != VK_RETURN || !row.IsKeyboardEnabled() || !row.IsEnabled())
                break;
            row.Activate();
            return;
        case UIEVENT_SETFOCUS:
        case UIEVENT_KILLFOCUS:
            // The owner shows the focus of its rows as its own.
            row.m_bFocused = event.Type == UIEVENT_SETFOCUS;
            row.Invalidate();
            break;
        case UIEVENT_TIMER:
            Notify(row, DUI_MSGTYPE_TIMER, event);
            return;
        case UIEVENT_CONTEXTMENU:
            if (!row.IsContextMenuUsed())
                break;
            Notify(row, DUI_MSGTYPE_MENU, event);
            return;
        default:
            break;
        }
        PassOn(row, event);
    }

    static void NotifyActivated(Row& row)
    {
        if (row.m_pManager != nullptr)
            row.m_pManager->SendNotify(&row, DUI_MSGTYPE_ITEMACTIVATE);
    }

    // Look.

    static DWORD TextColor(Row& row, const TListInfoUI& info)
    {
        DWORD color = 0;
        switch (StateOf(row)) {
        case State::Disabled:
            color = info.dwDisabledTextColor;
            if (color == 0 && row.m_pManager != nullptr)
                color = row.m_pManager->GetDefaultDisabledColor();
            return color;
        case State::Selected:
            color = info.dwSelectedTextColor;
            break;
        case State::Hot:
            color = info.dwHotTextColor;
            break;
        case State::Normal:
            break;
        }
        if (color == 0)
            color = info.dwTextColor;
        if (color == 0 && row.m_pManager != nullptr)
            color = row.m_pManager->GetDefaultFontColor();
        return color;
    }

    // As the list's text callback counts them.
    static int StateNumber(const Row& row) { return static_cast<int>(StateOf(row)); }

    static void DrawBk(Row& row, HDC dc, const RECT& item)
    {
        const TListInfoUI* const info = Info(row);
        if (info == nullptr)
            return;
        if (const DWORD color = BkColor(row, *info); color != 0)
            CRenderEngine::DrawColor(dc, item, row.GetAdjustColor(color));
        DrawBkImage(row, dc, item, *info);
        DrawForeImage(row, dc, item, *info);
        DrawLines(row, dc, item, *info);
    }

    // One text in the rectangle; the padding of the list is off already.
    static void DrawText(Row& row, HDC dc, RECT room, LPCTSTR text, DWORD color,
                         const TListInfoUI& info, RECT* links = nullptr,
                         CDuiString* linkTexts = nullptr, int* linkCount = nullptr)
    {
        int none = 0;
        int& count = linkCount != nullptr ? *linkCount : none;
        if (text == nullptr || *text == L'\0' || row.m_pManager == nullptr ||
            ::IsRectEmpty(&room)) {
            count = 0;
            return;
        }
        color = row.GetAdjustColor(color);
        if (info.bShowHtml) {
            CRenderEngine::DrawHtmlText(dc, row.m_pManager, room, text, color, links, linkTexts,
                                        count, info.nFont, info.uTextStyle);
        } else {
            count = 0;
            CRenderEngine::DrawText(dc, row.m_pManager, room, text, color, info.nFont,
                                    info.uTextStyle);
        }
    }

private:
    // Where several hold, the last one counts.
    enum class State { Normal, Hot, Selected, Disabled };

    static State StateOf(const Row& row)
    {
        if (!row.IsEnabled())
            return State::Disabled;
        if (row.m_bSelected)
            return State::Selected;
        return IsHot(row) ? State::Hot : State::Normal;
    }

    static bool IsHot(const Row& row) { return (row.m_uButtonState & UISTATE_HOT) != 0; }

    // Every second row only, when the background alternates.
    static bool HasListBk(const Row& row, const TListInfoUI& info)
    {
        return !info.bAlternateBk || IndexOf(row) % 2 == 0;
    }

    static DWORD BkColor(const Row& row, const TListInfoUI& info)
    {
        if (!row.IsEnabled() && info.dwDisabledBkColor != 0)
            return info.dwDisabledBkColor;
        if (row.m_bSelected && info.dwSelectedBkColor != 0)
            return info.dwSelectedBkColor;
        if (IsHot(row) && info.dwHotBkColor != 0)
            return info.dwHotBkColor;
        if (row.GetBkColor() != 0)
            return row.GetBkColor();
        return HasListBk(row, info) ? info.dwBkColor : 0;
    }

    static bool DrawOne(Row& row, HDC dc, const RECT& item, LPCTSTR image)
    {
        if (*image == L'\0')
            return false;
        RECT part;
        if (!::IntersectRect(&part, &row.m_rcPaint, &item))
            part = item;
        return CRenderEngine::DrawImageString(dc, row.m_pManager, item, part, image, nullptr,
                                              row.m_instance);
    }

    static void DrawBkImage(Row& row, HDC dc, const RECT& item, const TListInfoUI& info)
    {
        if (!row.IsEnabled() && DrawOne(row, dc, item, info.sDisabledImage))
            return;
        if (row.m_bSelected && DrawOne(row, dc, item, info.sSelectedImage))
            return;
        if (IsHot(row) && DrawOne(row, dc, item, info.sHotImage))
            return;
        if (DrawOne(row, dc, item, row.m_sBkImage))
            return;
        if (HasListBk(row, info))
            DrawOne(row, dc, item, info.sBkImage);
    }

    static void DrawForeImage(Row& row, HDC dc, const RECT& item, const TListInfoUI& info)
    {
        if (row.m_bSelected && DrawOne(row, dc, item, info.sSelectedForeImage))
            return;
        if (IsHot(row) && DrawOne(row, dc, item, info.sHotForeImage))
            return;
        DrawOne(row, dc, item, info.sForeImage);
    }

    // At the lower edge of the row, and at the right edge of every column.
    static void DrawLines(Row& row, HDC dc, const RECT& item, const TListInfoUI& info)
    {
        if (info.dwLineColor == 0)
            return;
        const DWORD color = row.GetAdjustColor(info.dwLineColor);
        const int width = row.ScaleLength(1);
        if (info.bShowRowLine) {
            CRenderEngine::DrawColor(dc, {item.left, item.bottom - width, item.right, item.bottom},
                                     color);
        }
        if (!info.bShowColumnLine)
            return;
        for (int i = 0; i < info.nColumns; ++i) {
            const RECT& column = info.rcColumn[i];
            const RECT line{column.right - width, item.top, column.right, item.bottom};
            if (column.right > column.left)
                CRenderEngine::DrawColor(dc, line, color);
        }
    }

    static bool ChangeSelection(Row& row, bool select, bool multi)
    {
        if (select && !row.IsEnabled())
            return false;
        if (row.m_bSelected == select)
            return true;
        row.m_bSelected = select;
        if (select)
            row.m_uButtonState |= UISTATE_SELECTED;
        else
            row.m_uButtonState &= ~static_cast<UINT>(UISTATE_SELECTED);
        row.Invalidate();
        if (row.m_pOwner == nullptr || IndexOf(row) < 0)
            return true;

        const RowWitness witness(&row);
        if (!select)
            row.m_pOwner->UnSelectItem(IndexOf(row));
        else if (multi)
            row.m_pOwner->SelectMultiItem(IndexOf(row));
        else
            row.m_pOwner->SelectItem(IndexOf(row));
        return !witness.RowLives() || row.m_bSelected == select;
    }

    static void SelectAlone(Row& row)
    {
        if (row.m_pOwner != nullptr && IndexOf(row) >= 0)
            row.m_pOwner->SelectItem(IndexOf(row));
        else
            row.Select();
    }

    // The owner knows what the keys do to the other rows.
    static void SelectMore(Row& row)
    {
        if (row.m_pOwner != nullptr && IndexOf(row) >= 0)
            row.m_pOwner->SelectMultiItem(IndexOf(row));
        else
            row.SelectMulti();
    }

    static bool HasSelectKey(const TEventUI& event)
    {
        return (event.wKeyState & (MK_CONTROL | MK_SHIFT)) != 0;
    }

    static bool SelectsWithRightButton(const Row& row)
    {
        const TListInfoUI* const info = Info(row);
        return info != nullptr && info->bRSelected;
    }

    static void Press(Row& row, const TEventUI& event)
    {
        if (!row.IsEnabled())
            return;
        row.m_uButtonState |= UISTATE_PUSHED | UISTATE_CAPTURED;
        if (row.IsRichEvent()) {
            const RowWitness witness(&row);
            Notify(row, DUI_MSGTYPE_BUTTONDOWN, event);
            if (!witness.RowLives())
                return;
        }
        if (HasSelectKey(event))
            SelectMore(row);
        else
            SelectAlone(row);
    }

    static void Release(Row& row, const TEventUI& event)
    {
        row.m_uButtonState &= ~static_cast<UINT>(UISTATE_PUSHED | UISTATE_CAPTURED);
        if (row.IsEnabled() && ::PtInRect(&row.GetPos(), event.ptMouse) &&
            row.m_pManager != nullptr)
            row.m_pManager->SendNotify(&row, DUI_MSGTYPE_ITEMCLICK);
    }

    // The second click may hit another row than the first one, which selected.
    static void DoubleClick(Row& row, const TEventUI& event)
    {
        if (!row.IsEnabled())
            return;
        const RowWitness witness(&row);
        if (!row.m_bSelected && !HasSelectKey(event))
            SelectAlone(row);
        if (!witness.RowLives() || !row.Activate() || !witness.RowLives())
            return;
        row.NotifyDoubleClick();
    }

    static void SetHot(Row& row, const TEventUI& event)
    {
        if (!row.IsEnabled())
            return;
        const bool hot = event.Type == UIEVENT_MOUSEENTER;
        if (hot)
            row.m_uButtonState |= UISTATE_HOT;
        else
            row.m_uButtonState &= ~static_cast<UINT>(UISTATE_HOT);
        row.Invalidate();
        if (row.IsRichEvent())
            Notify(row, hot ? DUI_MSGTYPE_MOUSEENTER : DUI_MSGTYPE_MOUSELEAVE, event);
    }

    static void Notify(Row& row, LPCTSTR type, const TEventUI& event)
    {
        if (row.m_pManager != nullptr)
            row.m_pManager->SendNotify(&row, type, event.wParam, event.lParam);
    }

    static void PassOn(Row& row, TEventUI& event)
    {
        if (row.m_pOwner != nullptr)
            row.m_pOwner->DoEvent(event);
        else if (row.m_pParent != nullptr)
            row.m_pParent->DoEvent(event);
    }
};

} // namespace DuiLib
