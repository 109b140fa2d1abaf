#include "quillet/frame/MaskLayerWindow.h"

#include <algorithm>

#include "quillet/ToolkitCompat.h"
#include "quillet/resources/ResourceManagerEx.h"

using namespace DuiLib;

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_VISIBLE | WS_DISABLED | WS_CLIPSIBLINGS | WS_CLIPCHILDREN |
                         WS_CAPTION | WS_SYSMENU;
constexpr DWORD kExStyle = WS_EX_WINDOWEDGE;

constexpr int kTitleHeight = 33; // design pixels

} // namespace

HWND MaskLayerWindow::Open(HWND parent, bool keepTitle)
{
    // A window that is refused after its first message has deleted its object, one that is refused
    // before has not.
    bool gone = false;
    auto* const mask = new MaskLayerWindow(keepTitle);
    mask->m_pGone = &gone;
    const HWND window = mask->Create(parent, L"PrintShadowingWnd", kStyle, kExStyle, 0, 0, 0, 0);
    if (gone)
        return nullptr;
    mask->m_pGone = nullptr;
    if (!window) {
        delete mask;
        return nullptr;
    }
    mask->ShowWindow(true, true);
    // Published: the handle stays there when the mask is gone.
    CResourceManagerEx::GetInstance()->SetVeskaMaskHWND(window);
    return window;
}

MaskLayerWindow::~MaskLayerWindow()
{
    if (m_pGone)
        *m_pGone = true;
}

void MaskLayerWindow::InitWindow()
{
    TakeDpiOfMainWindow();
    MeasureWorkArea();
    CoverParent();
}

void MaskLayerWindow::TakeDpiOfMainWindow()
{
    const HWND main = CResourceManagerEx::GetInstance()->GetMainHWND();
    const unsigned monitorDpi = Quillet::Toolkit::MonitorDpiOf(main);
    const unsigned dpi = std::min(monitorDpi, GetDPI(monitorDpi));
    dpiVal = dpi;
    m_pm.SetDPI(static_cast<int>(dpi));
}

// Published: the work area stands where the base class keeps the size of the whole monitor.
void MaskLayerWindow::MeasureWorkArea()
{
    const HWND main = CResourceManagerEx::GetInstance()->GetMainHWND();
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (::GetMonitorInfoW(::MonitorFromWindow(main, MONITOR_DEFAULTTONEAREST), &info))
        m_szScreen = {info.rcWork.right - info.rcWork.left, info.rcWork.bottom - info.rcWork.top};
}

void MaskLayerWindow::CoverParent()
{
    RECT parent{};
    if (!::GetWindowRect(::GetParent(m_hWnd), &parent))
        return;
    if (m_bKeepTitle)
        parent.top += CResourceManagerEx::GetInstance()->Scale(kTitleHeight);
    ::MoveWindow(m_hWnd, parent.left, parent.top, parent.right - parent.left,
                 parent.bottom - parent.top, TRUE);
}

LRESULT MaskLayerWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    // Whoever moves the parent moves the mask, by any distance: it finds its place itself.
    if (message == WM_MOVE)
        CoverParent();
    return WindowImplBaseEx::HandleMessage(message, wParam, lParam);
}

void MaskLayerWindow::OnFinalMessage(HWND window)
{
    WindowImplBaseEx::OnFinalMessage(window);
    delete this;
}
