#include "quillet/dialogs/InfoBox.h"

#include <utility>

#include "quillet/dialogs/DialogResources.h"
#include "quillet/dialogs/SkinControl.h"
#include "quillet/dialogs/TextMeasure.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

namespace {

constexpr UINT_PTR kCloseTimer = 9001;
constexpr UINT kLifetime = 3000; // milliseconds

constexpr int kMargins = 50;       // device pixels, both sides together
constexpr int kAboveTheEdge = 120; // design pixels

} // namespace

UIInfoBox::UIInfoBox(std::wstring text)
    : DialogWindow(L"MessageBox03.xml"), m_strText(std::move(text))
{
    // Published: the message is sent before there is a window, and so to none.
    TimerClose();
}

UIInfoBox::~UIInfoBox() = default;

LPCTSTR UIInfoBox::GetWindowClassName() const
{
    return L"UIInfoBox";
}

void UIInfoBox::InitWindow()
{
    m_pTextLabel = FindSkinControl<CLabelUI>(m_pm, L"lab_text");
    SetTextUnlessEmpty(m_pTextLabel, m_strText);

    RECT window{};
    ::GetWindowRect(m_hWnd, &window);
    // Published: the edges are part of width and height.
    ::MoveWindow(m_hWnd, window.left, window.top, window.left + kMargins + OnCalTextWidth(),
                 window.bottom, TRUE);
    ::SetTimer(m_hWnd, kCloseTimer, kLifetime, nullptr);
}

int UIInfoBox::OnCalTextWidth()
{
    if (!m_pTextLabel)
        return 0;
    const HDC dc = ::GetDC(m_hWnd);
    return TextMeasure(dc, m_pm.GetFont(m_pTextLabel->GetFont())).WidthOf(m_strText);
}

void UIInfoBox::OnSetWndPos()
{
    const int width = OnCalTextWidth() + kMargins;
    RECT parent{};
    ::GetWindowRect(::GetParent(m_hWnd), &parent);
    const int x = parent.left + (parent.right - parent.left) / 2 - width / 2;
    const int y = parent.top + (parent.bottom - parent.top) - Scaled(kAboveTheEdge);
    ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
}

LRESULT UIInfoBox::HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_TIMER && wParam == kCloseTimer) {
        const HWND window = m_hWnd;
        const auto life = Life();
        TimerClose();
        ::KillTimer(window, kCloseTimer);
        // A derived class may delete itself with its window. Published: otherwise the message goes
        // its way although the window has ended.
        if (life.expired())
            return 0;
    }
    return DialogWindow::HandleMessage(uMsg, wParam, lParam);
}

LRESULT UIInfoBox::OnClose(UINT uMsg, WPARAM wParam, LPARAM lParam, BOOL& bHandled)
{
    return DialogWindow::OnClose(uMsg, wParam, lParam, bHandled);
}

void UIInfoBox::TimerClose()
{
    ::SendMessageW(m_hWnd, WM_CLOSE, 0, 0);
}

} // namespace DuiLib
