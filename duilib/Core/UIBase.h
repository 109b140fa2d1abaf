#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIDefine.h"
#include "Core/UIRecords.h"
#include "Utils/Utils.h"

namespace DuiLib {

// Sends notifications to the handlers named in the message maps of a class and its bases.
class UILIB_API CNotifyPump {
public:
    // Pumps (not owned) that handle the notifications of a virtual window. False for a name that is
    // taken, or unknown.
    bool AddVirtualWnd(CDuiString strName, CNotifyPump* pObject);
    bool RemoveVirtualWnd(CDuiString strName);

    // Offers a notification to the pumps of its virtual window, then to the own handlers.
    void NotifyPump(TNotifyUI& msg);

    // Calls the handler of the most derived class that has one; true when there was one. Within a
    // class a handler for the sender's name beats one for any sender. The handler may destroy this.
    bool LoopDispatch(TNotifyUI& msg);

protected:
    static const DUI_MSGMAP* PASCAL _GetBaseMessageMap();
    static const DUI_MSGMAP* PASCAL _GetThisMessageMap();
    virtual const DUI_MSGMAP* GetMessageMap() const;

private:
    CStdStringPtrMap m_VirtualWndMap;
};

// A Win32 window. The object must outlive the window, or end with it: OnFinalMessage is the last
// use of the object and may delete it.
class UILIB_API CWindowWnd {
public:
    CWindowWnd();

    HWND GetHWND() const { return m_hWnd; } // null before creation and from the final message on
    operator HWND() const { return m_hWnd; }

    void EnableUnicode(); // no effect: every window is a Unicode window

    // Register the class named by GetWindowClassName(); one that exists already counts.
    bool RegisterWindowClass();
    bool RegisterSuperclass();

    // Null when the class or the window cannot be made. Positions and sizes are device pixels.
    HWND Create(HWND hwndParent, LPCTSTR pstrName, DWORD dwStyle, DWORD dwExStyle, const RECT rc,
                HMENU hMenu = NULL);
    HWND Create(HWND hwndParent, LPCTSTR pstrName, DWORD dwStyle, DWORD dwExStyle,
                int x = CW_USEDEFAULT, int y = CW_USEDEFAULT, int cx = CW_USEDEFAULT,
                int cy = CW_USEDEFAULT, HMENU hMenu = NULL);
    HWND CreateDuiWindow(HWND hwndParent, LPCTSTR pstrWindowName, DWORD dwStyle = 0,
                         DWORD dwExStyle = 0);

    // Attaches the object to an existing window; null when that fails. Unsubclass gives the window
    // back its own procedure.
    HWND Subclass(HWND hWnd);
    void Unsubclass();

    void ShowWindow(bool bShow = true, bool bTakeFocus = true);

    // Shows the window, disables its owner, and runs a message loop until the window is gone.
    // Returns the code of the Close that ended it, or 0. The window may delete its object.
    UINT ShowModal();

    // Disables the owner, shows the window and returns; the owner is enabled when the window
    // closes.
    void ShowModalFake();

    // Posts WM_CLOSE with the code. May be called from any thread.
    void Close(UINT nRet = IDOK);

    // On the owner, else on the work area of the monitor; always inside the work area.
    void CenterWindow();
    void SetIcon(UINT nRes); // a resource of CPaintManagerUI::GetInstance()

    // With no window: nothing, 0. PostMessage may be called from any thread.
    LRESULT SendMessage(UINT uMsg, WPARAM wParam = 0, LPARAM lParam = 0L);
    LRESULT PostMessage(UINT uMsg, WPARAM wParam = 0, LPARAM lParam = 0L);

    void ResizeClient(int cx = -1, int cy = -1); // -1 keeps the dimension

protected:
    virtual LPCTSTR GetWindowClassName() const = 0;
    virtual LPCTSTR GetSuperClassName() const; // null: not a superclassed window
    virtual UINT GetClassStyle() const;
    virtual LRESULT HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam);
    virtual void OnFinalMessage(HWND hWnd);

    static LRESULT CALLBACK __WndProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK __ControlProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd;
    WNDPROC m_OldWndProc;
    bool m_bSubclassed;
    bool m_bUnicode;
    bool m_bFakeModal;

private:
    static LRESULT Finish(CWindowWnd* pThis, HWND hWnd, WPARAM wParam, LPARAM lParam);
    void EnableOwnerOfFakeModal();
};

} // namespace DuiLib
