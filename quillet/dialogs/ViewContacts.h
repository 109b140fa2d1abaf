#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/DialogWindow.h"

namespace DuiLib {

// A notice with a button that shows a file in the file manager. The skin is "ViewContacts.xml" with
// "lab_caption", "btn_close", "btn_ViewContacts", "lab_text" and "btn_ok", and has the texts. The
// caller creates and shows the window and owns the object.
//
// Published: the path stands unquoted on a command line, so one with commas or quotes shows
// something else; any path works with ShowFileInFolder.
class QUILLET_API UIViewContacts : public DialogWindow {
public:
    explicit UIViewContacts(std::wstring path);
    ~UIViewContacts() override;

    void SetMainWnd(HWND window); // kept only

protected:
    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;

    // Published: every click closes with 1, whatever was clicked and whether the file was shown.
    bool OnClickItem(void* pNotify);

    std::wstring m_strPath;
    HWND m_hMainWnd = nullptr;
};

} // namespace DuiLib
