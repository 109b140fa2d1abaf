#pragma once

#include <UIlib.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "quillet/Export.h"

class DuiWindow;
class UIWindow;

// A piece of an application's logic that works on a window: a page, a panel, a tool.
//
// A UIWindow hosts any number of controllers and calls the hooks of each, in the order in which
// they were added, for every window message and notification. Besides the hooks there are callbacks
// for the click of a control, for a message that has no hook, and for a timer.
//
//     class SearchController : public UIController {
//         void OnInit() override
//         {
//             ListenClickEvent(GetControl(L"search"), [this] { Search(); });
//         }
//     };
//     window.AddUIController(std::make_shared<SearchController>());
//
// Hooks and callbacks may end the window, add controllers, replace callbacks and show modal
// windows. User-interface thread only; other threads get there through UIMainQueue, or by
// PostMessage with a number from GenerateMsgId.
//
// Published: the destructor is not virtual. Controllers are made by std::make_shared, and the
// shared pointer deletes what it made.
class QUILLET_API UIController : public std::enable_shared_from_this<UIController> {
public:
    UIController();
    UIController(const UIController& other); // window, paint manager and callbacks are copied
    UIController& operator=(const UIController& other);
    ~UIController();

    // Published: the order of the hooks is that of their slots.

    // For the application: posts WM_CLOSE with the code, which a modal window returns.
    virtual void OnCloseX(UINT code);

protected:
    virtual void OnLoad(); // added to a window
    virtual void OnInit(); // the window has been built: controls can be found
    virtual void OnSize();
    virtual void OnMoveWnd();
    virtual void OnDestroy();
    virtual void OnDPIChanged();
    virtual void OnChangeLanguage(); // Published: only ever called by the application
    virtual void OnShowWindow(bool show);

    // Points are the signed words of lParam: client coordinates, but screen coordinates for
    // OnNcLButtonDown and the pointer hooks.
    virtual void OnMouseMove(const POINT& point);
    virtual void OnMouseHover(const POINT& point);
    virtual void OnMouseLeave(const POINT& point);
    virtual void OnNcLButtonDown(const POINT& point);
    virtual void OnLButtonDown(const POINT& point);
    virtual void OnLButtonUp(const POINT& point);
    virtual void OnRButtonDown(const POINT& point);
    virtual void OnLButtonDblClk(const POINT& point);

    virtual void OnKeyDown(UINT key); // a virtual-key code
    virtual void OnKeyUp(UINT key);

    // Notifications, with the control that sent them.
    virtual void OnMenu(DuiLib::CControlUI* sender);
    virtual void OnReturn(DuiLib::CControlUI* sender);
    virtual void OnItemClick(DuiLib::CControlUI* sender);
    virtual void OnItemDBClick(DuiLib::CControlUI* sender);
    virtual void OnItemListDBClick(DuiLib::CControlUI* sender); // of a tree
    virtual void OnTextChanged(DuiLib::CControlUI* sender);
    virtual void OnScroll(DuiLib::CControlUI* sender);
    virtual void OnTextKillFocus(DuiLib::CControlUI* sender);
    virtual void OnEditKeyBackSpace(DuiLib::CControlUI* sender);
    virtual void OnEditKeyEscape(DuiLib::CControlUI* sender);

    virtual void OnMouseWheel(WPARAM wParam);
    virtual void OnMouseHWheel(WPARAM wParam);
    virtual void OnMenuClick(WPARAM wParam); // a MenuCmd*, which the application deletes
    virtual void OnKillFocus(WPARAM wParam);
    virtual void OnSetFocus(WPARAM wParam);

    virtual void OnLink(DuiLib::CControlUI* sender);

    // Dragging: wParam is a TDragDropUI*, through whose pdwEffect the answer travels. Setting
    // `handled` keeps the message from the window.
    virtual LRESULT OnDrag(UINT msg, WPARAM wParam, LPARAM lParam, int& handled);
    virtual LRESULT OnDragEnter(UINT msg, WPARAM wParam, LPARAM lParam, int& handled);
    virtual LRESULT OnDragLeave(UINT msg, WPARAM wParam, LPARAM lParam, int& handled);
    virtual LRESULT OnDragOver(UINT msg, WPARAM wParam, LPARAM lParam, int& handled);
    virtual LRESULT OnDragRelease(UINT msg, WPARAM wParam, LPARAM lParam, int& handled);

    virtual void OnPointerUp(const POINT& point);
    virtual void OnPointerDown(const POINT& point);
    virtual void OnPointerUpdate(const POINT& point);

    // Numbers that nobody else in the process gets: messages from 20000, timers from 1000.
    // Published: they are never given back, nor skipped: the 2,258th timer of a process has the
    // number of the window base's own timer (3257), a later one that of the toast (9001).
    static UINT GenerateMsgId();
    static UINT GenerateTimerId();

    // Each replaces an earlier callback. One that is empty raises std::bad_function_call when its
    // turn comes.
    //
    // Published: the callback of a control stays when the control is deleted; a new control at the
    // same address inherits it.
    void ListenClickEvent(DuiLib::CControlUI* control, std::function<void()> handler);
    // Published: never called for a message that has a hook, nor for WM_TIMER.
    void ListenMessage(UINT msg, std::function<void(WPARAM, LPARAM)> handler);

    // Calls the handler every so many milliseconds, from OnInit on. Returns the timer's id.
    UINT SetTimer(UINT elapseMs, std::function<void()> handler);
    // Published: the handler stays, so that a WM_TIMER that is queued already still runs it.
    void KillTimer(UINT id);

    // Of the window, from OnInit on.
    HWND GetHwnd() const;
    DuiLib::CPaintManagerUI& GetPaintManagerUI() const;
    DuiLib::CControlUI* GetControl(const std::wstring& name) const;
    DuiLib::CControlUI* GetControl(const POINT& pt) const; // client coordinates

    // Opens a menu from a skin, at a screen point, and remembers it. `owner` is the element of a
    // sub-menu, or null; `checkState` keeps check states from one opening to the next. The menu
    // deletes itself when it closes. Null when it cannot be opened.
    DuiLib::CMenuWnd* OnCreateMenuInit(DuiLib::CMenuElementUI* owner, DuiLib::STRINGorID xml,
                                       POINT pt, DuiLib::CStdStringPtrMap* checkState = nullptr,
                                       DWORD alignment = DuiLib::eMenuAlignment_Left |
                                                         DuiLib::eMenuAlignment_Top);
    // A control of the menu that was opened last; null when it is gone.
    DuiLib::CControlUI* FindMenuControl(const std::wstring& name) const;

    // Lets data be dragged into the window and out of it; needs OleInitialize.
    void EnableDragDrop(bool enable);

    BOOL PostMessageW(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0); // any thread
    LRESULT SendMessageW(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);

    bool IsLoad() const; // part of a window, or ready to be

    static UINT m_timerBaseId; // the next ones
    static UINT m_msgBaseId;

private:
    friend class ::DuiWindow;
    friend class ::UIWindow;

    // Called by the window.
    void SetPaintManagerUI(DuiLib::CPaintManagerUI* manager);
    void Init(HWND window);
    void Load();
    void UnLoad();
    void OnClick(DuiLib::CControlUI* sender);
    void OnMessage(UINT msg, WPARAM wParam, LPARAM lParam);
    void OnTimer(UINT id);

    HWND m_hWnd = nullptr;
    DuiLib::CPaintManagerUI* m_pPaintManager = nullptr; // not owned
    std::map<UINT, std::function<void()>> m_timerHandlers;
    std::map<UINT, std::function<void(WPARAM, LPARAM)>> m_messageHandlers;
    std::map<DuiLib::CControlUI*, std::function<void()>> m_clickHandlers;
    bool m_bLoaded = false;
    DuiLib::CMenuWnd* m_pMenu = nullptr; // not owned
};
