#pragma once

#include <UIlib.h>

#include <memory>

#include "quillet/Export.h"
#include "quillet/window/WindowImplBaseEx.h"

namespace DuiLib {

// The base of the ready-made dialogs: a window of a fixed skin.
class QUILLET_API DialogWindow : public WindowImplBaseEx {
public:
    ~DialogWindow() override;

protected:
    explicit DialogWindow(const wchar_t* skinFile); // not copied

    // WindowImplBaseEx:
    CDuiString GetSkinFile() override;

    // Opens a dialog that was made with new, over its parent, and returns the code that it was
    // closed with; 0 when it was closed without one or has no window. The dialog is deleted when
    // its window is gone and it has not deleted itself.
    static unsigned int RunModal(DialogWindow* dialog, HWND parent);

    // The same without waiting: a topmost tool window, and 1. A dialog that keeps its window lives
    // until it deletes itself.
    static unsigned int RunModeless(DialogWindow* dialog, HWND parent);

    // What a click handler is called with as a click; null for any other notification.
    static const TNotifyUI* AsClick(const void* notification);

    // IDCANCEL and IDCLOSE for the buttons of these names, in any case, else IDOK.
    static unsigned int CodeOf(const CControlUI& button, const wchar_t* cancel,
                               const wchar_t* close);

    std::weak_ptr<const void> Life() const; // expires with the object

    const wchar_t* m_pSkinFile;

private:
    static void DeleteWithoutWindow(DialogWindow* dialog, const std::weak_ptr<const void>& life);

    std::shared_ptr<const void> m_pLife;
};

} // namespace DuiLib
