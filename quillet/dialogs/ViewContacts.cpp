#include "quillet/dialogs/ViewContacts.h"

#include <shellapi.h>

#include <utility>

#include "quillet/dialogs/SkinControl.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

UIViewContacts::UIViewContacts(std::wstring path)
    : DialogWindow(L"ViewContacts.xml"), m_strPath(std::move(path))
{
}

UIViewContacts::~UIViewContacts() = default;

void UIViewContacts::SetMainWnd(HWND window)
{
    m_hMainWnd = window;
}

LPCTSTR UIViewContacts::GetWindowClassName() const
{
    return L"UIViewContacts";
}

void UIViewContacts::InitWindow()
{
    for (const wchar_t* const name : {L"btn_close", L"btn_ok", L"btn_ViewContacts"})
        Listen(m_pm.FindControl(name), MakeDelegate(this, &UIViewContacts::OnClickItem));
}

bool UIViewContacts::OnClickItem(void* pNotify)
{
    const TNotifyUI* const click = AsClick(pNotify);
    if (!click)
        return false;
    if (click->pSender->GetName().CompareNoCase(L"btn_ViewContacts") == 0) {
        const std::wstring parameters = L" /select, " + m_strPath;
        const auto life = Life();
        ::ShellExecuteW(nullptr, L"open", L"Explorer.exe", parameters.c_str(), nullptr,
                        SW_SHOWDEFAULT);
        // The shell may have dispatched messages, and one may have ended this object.
        if (life.expired())
            return false;
    }
    Close(IDOK);
    return false;
}

} // namespace DuiLib
