#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIControl.h"

namespace DuiLib {

class CContainerUI;

// A scroll bar: two buttons, a thumb and a rail.
//
// XML class "ScrollBar"; containers make their own with EnableScrollBar. Sends "scroll" when the
// user works it. Positions and ranges are device pixels of the owner; images are image strings.
class UILIB_API CScrollBarUI : public CControlUI {
public:
    static CControlUI* CreateControl();

    CScrollBarUI();
    CScrollBarUI(const CScrollBarUI&) = default;
    CScrollBarUI& operator=(const CScrollBarUI&) = default;

    // The container that it scrolls; not owned.
    CContainerUI* GetOwner() const;
    void SetOwner(CContainerUI* owner);

    bool IsHorizontal();
    void SetHorizontal(bool horizontal = true);
    int GetScrollRange() const;
    void SetScrollRange(int range);
    int GetScrollPos() const;
    void SetScrollPos(int position); // clamped to 0 to range
    int GetLineSize() const;
    void SetLineSize(int size);

    bool GetShowButton1(); // the upper or left one
    void SetShowButton1(bool show);
    LPCTSTR GetButton1NormalImage();
    void SetButton1NormalImage(LPCTSTR image);
    LPCTSTR GetButton1HotImage();
    void SetButton1HotImage(LPCTSTR image);
    LPCTSTR GetButton1PushedImage();
    void SetButton1PushedImage(LPCTSTR image);
    LPCTSTR GetButton1DisabledImage();
    void SetButton1DisabledImage(LPCTSTR image);
    bool GetShowButton2();
    void SetShowButton2(bool show);
    LPCTSTR GetButton2NormalImage();
    void SetButton2NormalImage(LPCTSTR image);
    LPCTSTR GetButton2HotImage();
    void SetButton2HotImage(LPCTSTR image);
    LPCTSTR GetButton2PushedImage();
    void SetButton2PushedImage(LPCTSTR image);
    LPCTSTR GetButton2DisabledImage();
    void SetButton2DisabledImage(LPCTSTR image);
    LPCTSTR GetThumbNormalImage();
    void SetThumbNormalImage(LPCTSTR image);
    LPCTSTR GetThumbHotImage();
    void SetThumbHotImage(LPCTSTR image);
    LPCTSTR GetThumbPushedImage();
    void SetThumbPushedImage(LPCTSTR image);
    LPCTSTR GetThumbDisabledImage();
    void SetThumbDisabledImage(LPCTSTR image);
    LPCTSTR GetRailNormalImage();
    void SetRailNormalImage(LPCTSTR image);
    LPCTSTR GetRailHotImage();
    void SetRailHotImage(LPCTSTR image);
    LPCTSTR GetRailPushedImage();
    void SetRailPushedImage(LPCTSTR image);
    LPCTSTR GetRailDisabledImage();
    void SetRailDisabledImage(LPCTSTR image);
    LPCTSTR GetBkNormalImage();
    void SetBkNormalImage(LPCTSTR image);
    LPCTSTR GetBkHotImage();
    void SetBkHotImage(LPCTSTR image);
    LPCTSTR GetBkPushedImage();
    void SetBkPushedImage(LPCTSTR image);
    LPCTSTR GetBkDisabledImage();
    void SetBkDisabledImage(LPCTSTR image);

    bool GetShow(); // a bar that is not shown paints nothing
    void SetShow(bool show);

    // The state image, else the normal image. The thumb and the buttons without an image get an
    // outline.
    void PaintBk(HDC dc);
    void PaintButton1(HDC dc);
    void PaintButton2(HDC dc);
    void PaintThumb(HDC dc);
    void PaintRail(HDC dc);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetVisible(bool visible = true) override; // the owner does not lay out
    void SetEnabled(bool enable = true) override;
    void SetFocus() override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;

protected:
    enum { DEFAULT_SCROLLBAR_SIZE = 16, DEFAULT_TIMERID = 10 };

    bool m_bShow;
    bool m_bHorizontal;
    __int64 m_nRange;
    __int64 m_nScrollPos;
    int m_nLineSize;
    CContainerUI* m_pOwner;
    POINT m_ptLastMouse;
    int m_nLastScrollPos;
    int m_nLastScrollOffset;
    int m_nScrollRepeatDelay; // timer ticks since the press
    CDuiString m_sBkNormalImage;
    CDuiString m_sBkHotImage;
    CDuiString m_sBkPushedImage;
    CDuiString m_sBkDisabledImage;
    bool m_bShowButton1;
    RECT m_rcButton1;
    UINT m_uButton1State;
    CDuiString m_sButton1NormalImage;
    CDuiString m_sButton1HotImage;
    CDuiString m_sButton1PushedImage;
    CDuiString m_sButton1DisabledImage;
    bool m_bShowButton2;
    RECT m_rcButton2;
    UINT m_uButton2State;
    CDuiString m_sButton2NormalImage;
    CDuiString m_sButton2HotImage;
    CDuiString m_sButton2PushedImage;
    CDuiString m_sButton2DisabledImage;
    RECT m_rcThumb;
    UINT m_uThumbState;
    CDuiString m_sThumbNormalImage;
    CDuiString m_sThumbHotImage;
    CDuiString m_sThumbPushedImage;
    CDuiString m_sThumbDisabledImage;
    CDuiString m_sRailNormalImage;
    CDuiString m_sRailHotImage;
    CDuiString m_sRailPushedImage;
    CDuiString m_sRailDisabledImage;
    CDuiString m_sImageModify;

private:
    enum class Part { None, Button1, Button2, Thumb, TrackBefore, TrackAfter };
    struct Lengths {
        LONG button;
        LONG track;
        LONG thumb; // 0: none
    };
    struct Look;

    LONG Start() const;
    LONG Length() const;
    LONG Along(POINT point) const;
    RECT Slice(LONG from, LONG to) const;
    Lengths Measure() const;
    void PlaceParts();
    Part PartAt(POINT point) const;
    void Press(POINT mouse);
    void Release();
    void StopWork();
    void FollowMouse(POINT mouse);
    void ShowHot(Part part);
    void Tick();
    void DragThumb();
    void ScrollBy(Part part);
    void MoveTo(int position);
    void SendScroll();
    void SetImage(CDuiString& member, LPCTSTR image);
    void SetState(UINT& state, UINT bits, bool on);
    bool DrawPart(HDC dc, const RECT& part, UINT state, const Look& look);
    void DrawOutline(HDC dc, const RECT& part);

    Part m_PressedPart = Part::None;
};

} // namespace DuiLib
