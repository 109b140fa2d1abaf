#pragma once

#include <quillet/quillet.h>

#include "gallery/Page.h"

#include <memory>

namespace gallery {

class GalleryController;

// The gallery's main window: the list of pages, the page, and the language and scale to show it in.
// Its work is done by controllers: one for the window itself, and the pages.
class GalleryWindow {
public:
    enum class AtClose { EndTheMessageLoop, Nothing };

    explicit GalleryWindow(AtClose atClose);
    ~GalleryWindow();
    GalleryWindow(const GalleryWindow&) = delete;
    GalleryWindow& operator=(const GalleryWindow&) = delete;

    // Creates the window, shown or not, with the first page.
    bool Open(bool show);
    bool IsOpen() const;

    void ShowPage(const PageEntry& page);
    void SetLanguage(const wchar_t* language); // "en-US", "de-DE", "zh-CN" or "th-TH"
    void SetScale(int percent);

    HWND GetHWND() const;                     // null when it is not open
    DuiLib::CPaintManagerUI& Manager() const; // while it is open
    Page* ShownPage() const;

private:
    std::shared_ptr<GalleryController> m_controller;
    mutable UIWindow m_window;
};

} // namespace gallery
