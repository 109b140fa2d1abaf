#pragma once

#include "Control/UIProgress.h"

namespace DuiLib {

// A bar with a thumb that the user moves: with the mouse on the thumb or beside it, with the wheel
// or with the keyboard.
//
// XML class "Slider". Sends "valuechanged" when the user has set another value and, when asked to,
// "movevaluechanged" for each value while the thumb is dragged. Without pictures and colours of its
// own it has a plain look.
class UILIB_API CSliderUI : public CProgressUI {
public:
    static CControlUI* CreateControl();

    CSliderUI();
    ~CSliderUI() override;
    CSliderUI(const CSliderUI&) = default;
    CSliderUI& operator=(const CSliderUI&) = default;

    // How much an arrow key or a notch of the wheel moves; at least 1.
    int GetChangeStep();
    void SetChangeStep(int step);

    void SetThumbSize(SIZE size); // design pixels
    RECT GetThumbRect() const;    // device pixels, in the window

    LPCTSTR GetThumbImage() const;
    void SetThumbImage(LPCTSTR image);
    LPCTSTR GetThumbHotImage() const;
    void SetThumbHotImage(LPCTSTR image);
    LPCTSTR GetThumbPushedImage() const;
    void SetThumbPushedImage(LPCTSTR image);

    // Ignored while the user drags the thumb, and outside minimum to maximum.
    void SetValue(int value);

    // Whether each move of the thumb is told.
    void SetCanSendMove(bool canSend);
    bool GetCanSendMove() const;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetEnabled(bool enable = true) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintForeImage(HDC dc) override;

protected:
    SIZE m_szThumb;
    UINT m_uButtonState; // UISTATE_HOT, UISTATE_PUSHED, UISTATE_CAPTURED
    int m_nStep;
    CDuiString m_sThumbImage;
    CDuiString m_sThumbHotImage;
    CDuiString m_sThumbPushedImage;
    bool m_bSendMove;

private:
    bool IsDragged() const;
    LONG Room() const;
    LONG ThumbOffset() const;
    int ValueAt(LONG offset) const;
    LONG OffsetAt(POINT mouse) const;
    void SetState(UINT bits, bool on);
    void Press(POINT mouse);
    void Drag(POINT mouse);
    void Release(POINT mouse);
    bool PressKey(WPARAM key);
    void TurnWheel(int delta);
    bool Change(long long value);
    void Send(LPCTSTR type);
    void SetImage(CDuiString& member, LPCTSTR image);
    bool HasOwnTrack() const;
    void PaintTrack(HDC dc);
    void PaintThumb(HDC dc);
    void FillRounded(HDC dc, const RECT& part, DWORD color);

    LONG m_nGrabbed; // from the start of the thumb to the mouse
    int m_nValueAtPress;
    int m_nWheelDelta; // of a notch that is not complete
};

} // namespace DuiLib
