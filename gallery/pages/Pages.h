#pragma once

#include "gallery/Page.h"

namespace gallery {

// One function per page, in the page's own source.
std::unique_ptr<Page> MakeRoundedButtonPage(GalleryWindow& window);
std::unique_ptr<Page> MakeScalePage(GalleryWindow& window);
std::unique_ptr<Page> MakeTextsPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToggleSwitchPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitControlsPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitInputsPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitLayoutsPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitListPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitMenusPage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitTreePage(GalleryWindow& window);
std::unique_ptr<Page> MakeToolkitWindowsPage(GalleryWindow& window);

} // namespace gallery
