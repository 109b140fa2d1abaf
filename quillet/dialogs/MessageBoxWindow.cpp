#include "quillet/dialogs/MessageBoxWindow.h"

#include <utility>

#include "quillet/dialogs/MessageBoxFaces.h"
#include "quillet/dialogs/SkinControl.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

namespace {

constexpr unsigned kTypeWithOneButton = 0;
constexpr unsigned kTypeWithCheckBox = 4;

} // namespace

MessageBoxWindow::MessageBoxWindow(const wchar_t* skinFile, HWND hParent, std::wstring strCaption,
                                   std::wstring strText, std::wstring strOkText,
                                   std::wstring strCancelText, unsigned int nType, bool* pbChecked,
                                   bool bShowCaption, bool bModal)
    : DialogWindow(skinFile),
      m_hParent(hParent),
      m_strCaption(std::move(strCaption)),
      m_strText(std::move(strText)),
      m_strOkText(std::move(strOkText)),
      m_strCancelText(std::move(strCancelText)),
      m_nType(nType),
      m_bShowCaption(bShowCaption),
      m_pbChecked(pbChecked),
      m_bModal(bModal)
{
}

MessageBoxWindow::~MessageBoxWindow() = default;

void MessageBoxWindow::InitFrame()
{
    CControlUI* const caption = m_pm.FindControl(L"lab_caption");
    CControlUI* const close = m_pm.FindControl(L"btn_close");
    if (!m_bShowCaption) {
        for (CControlUI* const part : {caption, close, m_pm.FindControl(L"lab_divide")})
            SetVisible(part, false);
    }
    SetTextUnlessEmpty(caption, m_strCaption);
    if (m_nType != kTypeWithCheckBox) {
        SetVisible(m_pm.FindControl(L"lab_tip"), false);
        SetVisible(m_pm.FindControl(L"checkbox_tip"), false);
    }
    Listen(close, MakeDelegate(this, &MessageBoxWindow::OnClickItem));
}

void MessageBoxWindow::InitButtons(const MessageBoxFaces& faces)
{
    CControlUI* const ok = m_pm.FindControl(L"btn_ok");
    CControlUI* const cancel = m_pm.FindControl(L"btn_cancel");
    const auto show = [&faces](CControlUI* button, const ButtonFace& face) {
        SetTextColour(button, face.colour);
        SetTextUnlessEmpty(button, faces.resolve(face.text));
    };

    if (m_nType == kTypeWithOneButton) {
        // Published: the one button is the one that cancels, so a box of this type gives IDCANCEL.
        SetVisible(ok, false);
        SetVisible(cancel, true);
        SetTextUnlessEmpty(cancel, faces.resolve(faces.onlyButton));
    } else if (m_nType <= faces.byType.size()) {
        const ButtonFaces& ofType = faces.byType[m_nType - 1];
        show(ok, ofType.ok);
        show(cancel, ofType.cancel);
    }
    SetTextUnlessEmpty(ok, m_strOkText);
    SetTextUnlessEmpty(cancel, m_strCancelText);
    for (CControlUI* const button : {ok, cancel})
        Listen(button, MakeDelegate(this, &MessageBoxWindow::OnClickItem));
}

bool MessageBoxWindow::OnClickItem(void* pNotify)
{
    const TNotifyUI* const click = AsClick(pNotify);
    if (!click)
        return false;
    const auto* const checkBox = FindSkinControl<COptionUI>(m_pm, L"checkbox_tip");
    if (m_pbChecked && checkBox)
        *m_pbChecked = checkBox->IsSelected();
    Close(CodeOf(*click->pSender, L"btn_cancel", L"btn_close"));
    return false;
}

} // namespace DuiLib
