#include "quillet/frame/Window.h"

#include <utility>

#include "quillet/frame/DuiWindow.h"

UIWindow::UIWindow() : m_pWindow(DuiWindow::Make()) {}
UIWindow::UIWindow(const UIWindow& other) = default;
UIWindow& UIWindow::operator=(const UIWindow& other) = default;
UIWindow::~UIWindow() = default;

DuiWindow* UIWindow::Living() const
{
    return *m_pWindow;
}

HWND UIWindow::Create(HWND parent, const wchar_t* name, const wchar_t* skinFile, DWORD style,
                      DWORD exStyle, bool bMask, bool bTitle)
{
    DuiWindow* const window = Living();
    if (!window || window->GetHWND())
        return nullptr;
    m_bMask = bMask;
    return window->Create(parent, name, skinFile, style, exStyle, bMask, bTitle);
}

void UIWindow::AddUIController(std::shared_ptr<UIController> controller)
{
    DuiWindow* const window = Living();
    if (!window || !controller)
        return;
    window->Add(controller);
    controller->Load();
}

void UIWindow::ShowWindow(bool show)
{
    ShowTitleWindow(show, show);
}

void UIWindow::ShowTitleWindow(bool show, bool showMask)
{
    if (DuiWindow* const window = Living())
        window->ShowWindow(show, true);
    ShowMask(showMask);
}

void UIWindow::ShowMask(bool show)
{
    const HWND mask = GetMaskWnd();
    if (m_bMask && mask)
        ::ShowWindow(mask, show ? SW_SHOW : SW_HIDE);
}

UINT UIWindow::ShowModal()
{
    return IsWindow() ? Living()->ShowModal() : 0;
}

void UIWindow::CenterWindow()
{
    if (DuiWindow* const window = Living())
        window->CenterWindow();
}

void UIWindow::MoveWindow(int x, int y, int width, int height)
{
    if (DuiWindow* const window = Living())
        ::MoveWindow(window->GetHWND(), x, y, width, height, FALSE);
}

void UIWindow::Close()
{
    if (IsWindow())
        PostMessageW(WM_CLOSE);
}

bool UIWindow::IsWindow()
{
    DuiWindow* const window = Living();
    return window && ::IsWindow(window->GetHWND());
}

HWND UIWindow::GetMaskWnd()
{
    DuiWindow* const window = Living();
    return window ? window->Owner() : nullptr;
}

LRESULT UIWindow::PostMessageW(UINT msg, WPARAM wParam, LPARAM lParam)
{
    DuiWindow* const window = Living();
    return window ? window->PostMessage(msg, wParam, lParam) : 0;
}

LRESULT UIWindow::SendMessageW(UINT msg, WPARAM wParam, LPARAM lParam)
{
    DuiWindow* const window = Living();
    return window ? window->SendMessage(msg, wParam, lParam) : 0;
}

void UIWindow::SetWindowTopMost() {}
