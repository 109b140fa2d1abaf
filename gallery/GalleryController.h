#pragma once

#include "gallery/GalleryWindow.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gallery {

// The main window's own controller: fills the list of pages, shows one page at a time, and keeps
// language and scale.
class GalleryController : public UIController, public DuiLib::INotifyUI {
public:
    GalleryController(GalleryWindow& window, GalleryWindow::AtClose atClose)
        : m_window(window), m_atClose(atClose)
    {
    }
    virtual ~GalleryController() = default;

    // One page for each entry of the list, in its order; before the window is created.
    void TakePages(UIWindow& window);

    void ShowPage(const PageEntry& entry);
    void SetLanguage(const wchar_t* language);
    void SetScale(int percent);

    Page* ShownPage() const { return m_page; }
    using UIController::GetHwnd;
    using UIController::GetPaintManagerUI;

    // INotifyUI:
    void Notify(DuiLib::TNotifyUI& notification) override;

protected:
    // UIController:
    void OnInit() override;
    void OnDestroy() override;
    void OnDPIChanged() override;
    void OnMenuClick(WPARAM wParam) override;

private:
    void ListPages();
    void ChooseFonts(std::wstring_view language);
    void Chosen(const std::wstring& optionName);
    void LeavePage();

    GalleryWindow& m_window;
    GalleryWindow::AtClose m_atClose;
    std::vector<std::shared_ptr<Page>> m_pages;
    Page* m_page = nullptr; // the one that is shown
};

} // namespace gallery
