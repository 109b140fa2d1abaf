#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/DialogWindow.h"

namespace DuiLib {

// A modal notice of a title and a text. The skin is "PromptWnd.xml", with "titleText", "delText",
// "cancel" and "close".
class QUILLET_API PromptWnd : public DialogWindow {
public:
    // Opens the notice over the parent and returns when it has closed: 2 (IDCANCEL) by "cancel",
    // 8 (IDCLOSE) by "close", 0 in another way. An empty text leaves the skin's.
    static unsigned int PopMessageBox(HWND hParent, std::wstring strTitle, std::wstring strContent);

    ~PromptWnd() override;

protected:
    PromptWnd(HWND hParent, std::wstring strTitle, std::wstring strContent);

    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;

    // Closes with 2, 8, or 1 for a control of another name that is made to call it.
    bool OnClickItem(void* pNotify);

    HWND m_hParent; // Published: kept only
    std::wstring m_strTitle;
    std::wstring m_strContent;
};

} // namespace DuiLib
