#include "gallery/GalleryWindow.h"

#include "gallery/GalleryController.h"

namespace gallery {

using namespace DuiLib;

GalleryWindow::GalleryWindow(AtClose atClose)
    : m_controller(std::make_shared<GalleryController>(*this, atClose))
{
    // The pages first: they are initialised when the other one shows the first of them.
    m_controller->TakePages(m_window);
    m_window.AddUIController(m_controller);
}

GalleryWindow::~GalleryWindow() = default;

bool GalleryWindow::Open(bool show)
{
    if (!m_window.Create(nullptr, L"Quillet", L"gallery.xml", UI_WNDSTYLE_FRAME & ~WS_VISIBLE, 0,
                         false, false))
        return false;
    m_window.CenterWindow();
    if (show)
        m_window.ShowWindow(true);
    return true;
}

bool GalleryWindow::IsOpen() const
{
    return m_window.IsWindow();
}

void GalleryWindow::ShowPage(const PageEntry& page)
{
    m_controller->ShowPage(page);
}

void GalleryWindow::SetLanguage(const wchar_t* language)
{
    m_controller->SetLanguage(language);
}

void GalleryWindow::SetScale(int percent)
{
    m_controller->SetScale(percent);
}

HWND GalleryWindow::GetHWND() const
{
    return IsOpen() ? m_controller->GetHwnd() : nullptr;
}

CPaintManagerUI& GalleryWindow::Manager() const
{
    return m_controller->GetPaintManagerUI();
}

Page* GalleryWindow::ShownPage() const
{
    return m_controller->ShownPage();
}

} // namespace gallery
