#pragma once

#include <UIlib.h>

#include <memory>

#include "quillet/Export.h"
#include "quillet/frame/Controller.h"

class DuiWindow;

// The handle of a window that is made of a skin and controllers.
//
//     UIWindow window;
//     window.AddUIController(std::make_shared<SearchController>());
//     if (window.Create(owner, L"Search", L"search.xml", UI_WNDSTYLE_DIALOG, 0, true, false)) {
//         window.CenterWindow();
//         window.ShowModal();
//     }
//
// The window itself lives from here to its final message, whatever becomes of its handles; copies
// of a handle are handles of the same window. When the window has ended, the operations of its
// handles do nothing and return null, 0 or false. Positions and sizes are device pixels. User-
// interface thread only.
//
// Published: a window that was never created is never freed, nor are its controllers.
class QUILLET_API UIWindow {
public:
    UIWindow();
    UIWindow(const UIWindow& other);
    UIWindow& operator=(const UIWindow& other);
    ~UIWindow();

    // Makes the window, hidden unless the style says otherwise, and initialises its controllers.
    // Null when it cannot be made, or has been made before. The skin's name is not copied: it must
    // stay as it is during the call. With bMask a dimming, disabled window covers the parent (with
    // bTitle all but the 33 design pixels at its top), owns this one and ends with it.
    //
    // Published: with a mask, ShowModal disables the mask and not the parent.
    HWND Create(HWND parent, const wchar_t* name, const wchar_t* skinFile, DWORD style,
                DWORD exStyle, bool bMask, bool bTitle);

    // Loads the controller; null is ignored. Published: only controllers that are there when the
    // window is created are initialised.
    void AddUIController(std::shared_ptr<UIController> controller);

    void ShowWindow(bool show);                     // the mask with it
    void ShowTitleWindow(bool show, bool showMask); // the mask as told
    UINT ShowModal();                               // the code of WM_CLOSE that ended it, or 0
    void CenterWindow();                            // on its owner
    void MoveWindow(int x, int y, int width, int height); // Published: does not repaint
    void Close();                                         // posts WM_CLOSE with the code 0
    bool IsWindow();
    HWND GetMaskWnd(); // Published: the parent when there is no mask

    LRESULT PostMessageW(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);
    LRESULT SendMessageW(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);

    void SetWindowTopMost(); // Published: does nothing

private:
    DuiWindow* Living() const;
    void ShowMask(bool show);

    bool m_bMask = false;
    std::shared_ptr<DuiWindow*> m_pWindow; // to null when the window has ended
};
