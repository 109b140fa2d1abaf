#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Layout/UIHorizontalLayout.h"

namespace DuiLib {

class CListHeaderItemUI;
class CListUI;

// The header of a list: its children are the columns. It follows the horizontal scrolling of the
// rows. Without columns it takes no room, unless it is given a height. XML class "ListHeader".
class UILIB_API CListHeaderUI : public CHorizontalLayoutUI {
public:
    static CControlUI* CreateControl();

    CListHeaderUI();

    // Columns share the width of the header in the proportion of their scales; one without a scale
    // takes its fixed width for it. Dragging a separator then moves space between two columns.
    void SetScaleHeader(bool scale);
    bool IsScaleHeader() const;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    SIZE EstimateSize(SIZE available) override;
    int GetMaxHeight() const override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void DoPostPaint(HDC dc, const RECT& paint) override; // the bar of a dragged separator

private:
    friend class CListHeaderItemUI;

    CListUI* GetListOf() const;
    void FollowRows();
    void PlaceByScale();
    static int ShareOf(CControlUI& column);
    RECT GetDragBar() const;
    void InvalidateDragBar();
    CListHeaderItemUI* NextColumn(const CListHeaderItemUI& column, bool forward) const;
    void ColumnsChanged();

    bool m_bIsScaleHeader;
};

// A column's head: a text or any children, and a separator at an edge with which the user drags
// the width of the column. XML class "ListHeaderItem".
//
// A press outside the separator, Space or Return send "headerclick". One column of a header is in
// the order of Tab; Left and Right go to the others, with Shift they change the width. Distances
// are design pixels in the setters and device pixels in the getters; colours are ARGB.
class UILIB_API CListHeaderItemUI : public CHorizontalLayoutUI {
public:
    static CControlUI* CreateControl();

    CListHeaderItemUI();

    bool IsDragable() const;
    void SetDragable(bool dragable);
    DWORD GetSepWidth() const;   // the int of the setter, scaled
    void SetSepWidth(int width); // positive: at the right edge, negative: at the left, 0: none
    DWORD GetTextStyle() const;  // DT_* bits
    void SetTextStyle(UINT style);
    DWORD GetTextColor() const; // ARGB, 0 = the window's default
    void SetTextColor(DWORD color);
    void SetTextPadding(RECT padding);
    RECT GetTextPadding() const;
    void SetFont(int index);
    bool IsShowHtml();
    void SetShowHtml(bool show = true);

    LPCTSTR GetNormalImage() const;
    void SetNormalImage(LPCTSTR image);
    LPCTSTR GetHotImage() const;
    void SetHotImage(LPCTSTR image);
    LPCTSTR GetPushedImage() const;
    void SetPushedImage(LPCTSTR image);
    LPCTSTR GetFocusedImage() const;
    void SetFocusedImage(LPCTSTR image);
    LPCTSTR GetSepImage() const;
    void SetSepImage(LPCTSTR image);

    // Its share of a header that scales.
    void SetScale(int scale);
    int GetScale() const;

    // The strip of the separator, device pixels of the window.
    RECT GetThumbRect() const;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetEnabled(bool enable = true) override;
    void SetVisible(bool visible = true) override;
    void SetFixedWidth(int width) override;
    void DoEvent(TEventUI& event) override;
    SIZE EstimateSize(SIZE available) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintText(HDC dc) override;
    void PaintStatusImage(HDC dc) override;
    void PaintBorder(HDC dc) override;

protected:
    POINT ptLastMouse;
    bool m_bDragable;
    UINT m_uButtonState;
    int m_iSepWidth;
    DWORD m_dwTextColor;
    int m_iFont;
    UINT m_uTextStyle;
    bool m_bShowHtml;
    RECT m_rcTextPadding;
    CDuiString m_sNormalImage;
    CDuiString m_sHotImage;
    CDuiString m_sPushedImage;
    CDuiString m_sFocusedImage;
    CDuiString m_sSepImage;
    int m_nScale;

private:
    friend class CListHeaderUI;

    CListHeaderUI* GetHeader() const;
    RECT ThumbOf(RECT item) const;
    RECT GetNewThumbRect() const;
    bool IsDragging() const;
    bool IsOverThumb(POINT point) const;
    LONG LimitWidth(LONG width) const;
    LONG LimitNewWidth(LONG width) const;
    void ApplyWidth(LONG width);
    void Press(const TEventUI& event);
    void Drag(POINT mouse);
    void EndDrag(bool apply);
    void Resize(LONG width);
    bool HandleKey(const TEventUI& event);
    void NotifyClick();
    void SetHot(bool hot);
    bool DrawOwn(HDC dc, LPCTSTR image);
    void SetImage(CDuiString& member, LPCTSTR image);

    bool m_bFocusByKey; // the focus came without the mouse and has to be shown
};

} // namespace DuiLib
