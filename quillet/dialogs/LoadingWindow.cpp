#include "quillet/dialogs/LoadingWindow.h"

#include <utility>

namespace DuiLib {

LoadingWindow::LoadingWindow(std::wstring text)
    : DialogWindow(L"Loading.xml"), m_strText(std::move(text))
{
}

LoadingWindow::~LoadingWindow() = default;

void LoadingWindow::SetMainWnd(HWND window)
{
    m_hMainWnd = window;
}

LPCTSTR LoadingWindow::GetWindowClassName() const
{
    return L"LoadingWindow";
}

void LoadingWindow::InitWindow()
{
    if (CControlUI* const text = m_pm.FindControl(L"loadingText"))
        text->SetText(m_strText.c_str());
}

bool LoadingWindow::OnClickItem(void* /*pNotify*/)
{
    return false;
}

} // namespace DuiLib
