#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"
#include "quillet/dialogs/DialogWindow.h"

namespace DuiLib {

struct MessageBoxFaces;

// What both generations of message boxes are made of: a caption row, a text, a row with a check
// box and two buttons. Applications use UIMessageBox and UIIMessageBox.
//
// The skin has "lab_caption", "btn_close", "lab_divide", "lab_text", "lab_tip", "btn_ok",
// "btn_cancel" and the option "checkbox_tip"; what it lacks is skipped.
class QUILLET_API MessageBoxWindow : public DialogWindow {
public:
    ~MessageBoxWindow() override;

protected:
    // pbChecked may be null; it is written when a button is clicked.
    MessageBoxWindow(const wchar_t* skinFile, HWND hParent, std::wstring strCaption,
                     std::wstring strText, std::wstring strOkText, std::wstring strCancelText,
                     unsigned int nType, bool* pbChecked, bool bShowCaption, bool bModal);

    // The steps of InitWindow that both generations share: all but the text.
    void InitFrame();
    void InitButtons(const MessageBoxFaces& faces);

    bool OnClickItem(void* pNotify);

    HWND m_hParent; // Published: kept only; the box stands over the parent that the call names
    std::wstring m_strCaption;
    std::wstring m_strText;
    std::wstring m_strOkText;
    std::wstring m_strCancelText;
    unsigned int m_nType;
    bool m_bShowCaption;
    bool* m_pbChecked;
    bool m_bModal; // Published: kept only
};

} // namespace DuiLib
