#include "quillet/dialogs/DialogWindow.h"

#include "quillet/dialogs/DialogStyle.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

namespace {

constexpr DWORD kModelessStyle = WS_POPUP;
constexpr DWORD kModelessExStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW;

} // namespace

DialogWindow::DialogWindow(const wchar_t* skinFile)
    : m_pSkinFile(skinFile), m_pLife(std::make_shared<char>())
{
}

DialogWindow::~DialogWindow() = default;

CDuiString DialogWindow::GetSkinFile()
{
    return m_pSkinFile;
}

unsigned int DialogWindow::RunModal(DialogWindow* dialog, HWND parent)
{
    const std::weak_ptr<const void> life = dialog->Life();
    unsigned int code = 0;
    const HWND window = dialog->Create(parent, nullptr, kModalStyle, kModalExStyle, 0, 0, 0, 0);
    if (::IsWindow(window))
        dialog->CenterWindow();
    if (::IsWindow(window))
        code = dialog->ShowModal();
    // A program that ends leaves the loop and the window; nobody would answer it any more.
    if (::IsWindow(window))
        ::DestroyWindow(window);
    DeleteWithoutWindow(dialog, life);
    return code;
}

unsigned int DialogWindow::RunModeless(DialogWindow* dialog, HWND parent)
{
    const std::weak_ptr<const void> life = dialog->Life();
    const HWND window =
        dialog->Create(parent, nullptr, kModelessStyle, kModelessExStyle, 0, 0, 0, 0);
    if (::IsWindow(window))
        dialog->CenterWindow();
    if (::IsWindow(window))
        dialog->ShowWindow(true, true);
    DeleteWithoutWindow(dialog, life);
    return IDOK;
}

// A window that was never made has no final message in which its object could delete itself.
void DialogWindow::DeleteWithoutWindow(DialogWindow* dialog, const std::weak_ptr<const void>& life)
{
    if (!life.expired() && !::IsWindow(dialog->GetHWND()))
        delete dialog;
}

const TNotifyUI* DialogWindow::AsClick(const void* notification)
{
    const auto* const msg = static_cast<const TNotifyUI*>(notification);
    return msg->pSender && msg->sType == DUI_MSGTYPE_CLICK ? msg : nullptr;
}

unsigned int DialogWindow::CodeOf(const CControlUI& button, const wchar_t* cancel,
                                  const wchar_t* close)
{
    const CDuiString name = button.GetName();
    if (name.CompareNoCase(cancel) == 0)
        return IDCANCEL;
    return name.CompareNoCase(close) == 0 ? IDCLOSE : IDOK;
}

std::weak_ptr<const void> DialogWindow::Life() const
{
    return m_pLife;
}

} // namespace DuiLib
