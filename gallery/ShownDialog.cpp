#include "gallery/ShownDialog.h"

#include "gallery/GalleryWindow.h"

#include <algorithm>

namespace gallery {

using namespace DuiLib;

namespace {

// Not every face has every script, so all fonts of the window's default face change with it.
void TakeFont(const TFontInfo& font, CPaintManagerUI& window)
{
    const CDuiString before = window.GetDefaultFontInfo()->sFontName;
    const auto count = static_cast<int>(window.GetCustomFontCount());
    for (int id = 0; id < count; ++id) {
        const TFontInfo own = *window.GetFontInfo(id);
        if (own.sFontName == before)
            window.AddFont(id, font.sFontName, own.iSize, own.bBold, own.bUnderline, own.bItalic,
                           own.bStrikeout);
    }
    window.SetDefaultFont(font.sFontName, font.iSize, false, false, false, false);
}

} // namespace

unsigned TakeLookOf(CPaintManagerUI& main, CPaintManagerUI& window)
{
    TakeFont(*main.GetDefaultFontInfo(), window);
    const auto percent = static_cast<int>(main.GetDPIObj()->GetScale());
    const int dpi = ::MulDiv(percent, USER_DEFAULT_SCREEN_DPI, 100);
    CResourceManagerEx::GetInstance()->SetScale(static_cast<unsigned>(dpi));
    window.SetDPI(dpi);
    return static_cast<unsigned>(dpi);
}

HWND OpenDialogs::Owner() const
{
    return m_main.GetHWND();
}

CPaintManagerUI& OpenDialogs::MainManager() const
{
    return m_main.Manager();
}

void OpenDialogs::PlaceSideBySide() const
{
    const LONG screenWidth = ::GetSystemMetrics(SM_CXSCREEN);
    POINT at{};
    LONG rowHeight = 0;
    for (const HWND dialog : m_dialogs) {
        RECT place{};
        ::GetWindowRect(dialog, &place);
        const SIZE size{place.right - place.left, place.bottom - place.top};
        if (at.x > 0 && at.x + size.cx > screenWidth) {
            at = {0, at.y + rowHeight};
            rowHeight = 0;
        }
        ::SetWindowPos(dialog, nullptr, at.x, at.y, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        at.x += size.cx;
        rowHeight = std::max(rowHeight, size.cy);
    }
}

void OpenDialogs::CloseAll()
{
    while (!m_dialogs.empty()) {
        const HWND dialog = m_dialogs.back();
        ::DestroyWindow(dialog);
        Remove(dialog);
    }
}

} // namespace gallery
