#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/MessageBoxWindow.h"

namespace DuiLib {

// A message box with one or two buttons, whose captions are fixed Chinese texts by type:
//
//     type   "btn_ok"   "btn_cancel"
//     0      hidden     OK
//     1      OK         Cancel
//     2      Delete     Cancel
//     3      Close      Cancel
//     4      OK         Cancel         and the row with the check box
//     5      Clear      Cancel
//     6      Cancel     Start now      (Published: so exchanged)
//     other  as the skin has them
//
// UIIMessageBox is the same in the language of the application. The skin is "MessageBox.xml". The
// object deletes itself when its window ends.
class QUILLET_API UIMessageBox : public MessageBoxWindow {
public:
    // Opens a box over the parent, on the user-interface thread. Modal when bModal or bForceModal
    // is set: the result is the code of the button: 1 (IDOK) of "btn_ok", 2 (IDCANCEL) of
    // "btn_cancel", 8 (IDCLOSE) of "btn_close", and 0 when the box ended in another way. Else the
    // box stays open as a topmost tool window, and the result is 1 at once.
    //
    // An empty text leaves the skin's, or the type's. Published: the one button of type 0 is
    // "btn_cancel", so it gives 2. pbChecked (may be null) receives the state of the check box with
    // the click of any button and lives as long as the box.
    static unsigned int PopMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                                      std::wstring strOkText, std::wstring strCancelText,
                                      unsigned int nType, bool* pbChecked, bool bShowCaption,
                                      bool bModal, bool bForceModal);

    ~UIMessageBox() override;

    // WindowImplBaseEx:
    void OnFinalMessage(HWND hWnd) override;

protected:
    UIMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                 std::wstring strOkText, std::wstring strCancelText, unsigned int nType,
                 bool* pbChecked, bool bShowCaption, bool bModal);

    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;
};

} // namespace DuiLib
