#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/MessageBoxWindow.h"

namespace DuiLib {

// A message box with one or two buttons, whose captions are texts of the application's language
// files by type:
//
//     type   "btn_ok"                               "btn_cancel"
//     0      hidden                                 IDS_MAIN_PAGE_SettingsWindow_OK
//     1      IDS_MAIN_PAGE_SettingsWindow_OK        IDS_MAIN_Inforation_Cancel
//     2      IDS_GALLERT_BTN_DELETE                 IDS_MAIN_Inforation_Cancel
//     3      IDS_MAIN_PAGE_Close                    IDS_MAIN_Inforation_Cancel
//     4      IDS_MAIN_PAGE_SettingsWindow_OK        IDS_MAIN_Inforation_Cancel
//     5      IDS_GALLERT_Transfer_Clear             IDS_MAIN_Inforation_Cancel
//     other  as the skin has them
//
// Type 4 shows the row with the check box. A long text gets one line break at a space, and is the
// tooltip of its label. Published: an OK text of the caller's is red whatever the type. The skin is
// "MessageBox02.xml".
class QUILLET_API UIIMessageBox : public MessageBoxWindow {
public:
    // As UIMessageBox::PopMessageBox. Published: a box that is not modal is never freed.
    static unsigned int PopMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                                      std::wstring strOkText, std::wstring strCancelText,
                                      unsigned int nType, bool* pbChecked, bool bShowCaption,
                                      bool bModal, bool bForceModal);

    ~UIIMessageBox() override;

protected:
    UIIMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                  std::wstring strOkText, std::wstring strCancelText, unsigned int nType,
                  bool* pbChecked, bool bShowCaption, bool bModal);

    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override;
    void InitWindow() override;

    // The text with one carriage return at a space near the end of the first 400 design pixels.
    std::wstring ProcessSpecialText(std::wstring text);
    int GetFontWidth(std::wstring text); // of the font of "lab_text", in device pixels
};

} // namespace DuiLib
