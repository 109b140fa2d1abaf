#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIBase.h"
#include "Core/UIControl.h"
#include "Core/UIInterfaces.h"
#include "Core/UIManager.h"

namespace DuiLib {

// A window made from a skin: its client area is the whole window, the skin draws the frame.
//
// Skin controls named closebtn, minbtn, maxbtn and restorebtn work the window. Each On... operation
// gets one window message; setting bHandled to FALSE passes the message on to HandleCustomMessage,
// to the paint manager and to the default procedure, in this order.
class UILIB_API WindowImplBase : public CWindowWnd,
                                 public CNotifyPump,
                                 public INotifyUI,
                                 public IMessageFilterUI,
                                 public IDialogBuilderCallback,
                                 public IQueryControlText {
public:
    WindowImplBase() = default;
    WindowImplBase(const WindowImplBase&) = delete;
    WindowImplBase& operator=(const WindowImplBase&) = delete;
    virtual ~WindowImplBase();

    // Not called by this class; for derived classes and applications.
    virtual void InitResource();

    // The skin is built and attached.
    virtual void InitWindow();
    void OnFinalMessage(HWND hWnd) override;
    void Notify(TNotifyUI& msg) override;

    DUI_DECLARE_MESSAGE_MAP()

public:
    virtual void OnClick(TNotifyUI& msg);

    // Whether the control and all its parents only show something, so that the window can be moved
    // by it.
    virtual BOOL IsInStaticControl(CControlUI* pControl);

protected:
    virtual CDuiString GetSkinType();     // type of the resource; empty: the skin is a file
    virtual CDuiString GetSkinFile() = 0; // file name, or number of the resource
    LPCTSTR GetWindowClassName() const override = 0;
    virtual LPCTSTR GetManagerName();

    // Return and Escape; what it returns is the result of the pre-message filter.
    virtual LRESULT ResponseDefaultKeyEvent(WPARAM wParam);

    CPaintManagerUI m_pm;

public:
    UINT GetClassStyle() const override;
    CControlUI* CreateControl(LPCTSTR pstrClass) override;
    LPCTSTR QueryControlText(LPCTSTR lpstrId, LPCTSTR lpstrType) override;
    LRESULT MessageHandler(UINT uMsg, WPARAM wParam, LPARAM lParam, bool& bHandled) override;

    virtual LRESULT OnClose(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnDestroy(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnNcActivate(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnNcCalcSize(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnNcPaint(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnNcHitTest(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnGetMinMaxInfo(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnMouseWheel(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnMouseHover(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnSize(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnChar(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnSysCommand(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnCreate(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnKeyDown(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnKillFocus(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnSetFocus(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnLButtonDown(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnLButtonUp(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    virtual LRESULT OnMouseMove(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);
    LRESULT HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam) override;
    virtual LRESULT HandleCustomMessage(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled);

    virtual LONG GetStyle(); // of the window, without WS_CAPTION
};

} // namespace DuiLib
