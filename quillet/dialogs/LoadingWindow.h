#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/DialogWindow.h"

namespace DuiLib {

// A window that says that something is being loaded. The skin is "Loading.xml" with "loadingText"
// and "loadingGif". The caller creates, shows and closes the window and owns the object.
class QUILLET_API LoadingWindow : public DialogWindow {
public:
    explicit LoadingWindow(std::wstring text);
    ~LoadingWindow() override;

    void SetMainWnd(HWND window); // kept only

protected:
    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;

    bool OnClickItem(void* pNotify); // for derived classes; nothing happens here

    std::wstring m_strText;
    HWND m_hMainWnd = nullptr;
};

} // namespace DuiLib
