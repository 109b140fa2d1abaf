#include "quillet/dialogs/PromptWnd.h"

#include <utility>

#include "quillet/dialogs/SkinControl.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

unsigned int PromptWnd::PopMessageBox(HWND hParent, std::wstring strTitle, std::wstring strContent)
{
    return RunModal(new PromptWnd(hParent, std::move(strTitle), std::move(strContent)), hParent);
}

PromptWnd::PromptWnd(HWND hParent, std::wstring strTitle, std::wstring strContent)
    : DialogWindow(L"PromptWnd.xml"),
      m_hParent(hParent),
      m_strTitle(std::move(strTitle)),
      m_strContent(std::move(strContent))
{
}

PromptWnd::~PromptWnd() = default;

LPCTSTR PromptWnd::GetWindowClassName() const
{
    return L"PromptWnd";
}

void PromptWnd::InitWindow()
{
    SetTextUnlessEmpty(m_pm.FindControl(L"titleText"), m_strTitle);
    SetTextUnlessEmpty(m_pm.FindControl(L"delText"), m_strContent);
    for (const wchar_t* const name : {L"cancel", L"close"})
        Listen(m_pm.FindControl(name), MakeDelegate(this, &PromptWnd::OnClickItem));
}

bool PromptWnd::OnClickItem(void* pNotify)
{
    if (const TNotifyUI* const click = AsClick(pNotify))
        Close(CodeOf(*click->pSender, L"cancel", L"close"));
    return false;
}

} // namespace DuiLib
