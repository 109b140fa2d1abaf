#pragma once

#include "gallery/Page.h"

namespace gallery {

// One function per page, in the page's own source.
std::shared_ptr<Page> MakeConfirmationPage(GalleryWindow& window);
std::shared_ptr<Page> MakeFrameAnimationPage(GalleryWindow& window);
std::shared_ptr<Page> MakeFramePage(GalleryWindow& window);
std::shared_ptr<Page> MakeImageAttributesPage(GalleryWindow& window);
std::shared_ptr<Page> MakeImagesPage(GalleryWindow& window);
std::shared_ptr<Page> MakeLoadingPage(GalleryWindow& window);
std::shared_ptr<Page> MakeMessageBoxesPage(GalleryWindow& window);
std::shared_ptr<Page> MakeNoticesPage(GalleryWindow& window);
std::shared_ptr<Page> MakePainterPage(GalleryWindow& window);
std::shared_ptr<Page> MakeRoundedButtonPage(GalleryWindow& window);
std::shared_ptr<Page> MakeScalePage(GalleryWindow& window);
std::shared_ptr<Page> MakeTextsPage(GalleryWindow& window);
std::shared_ptr<Page> MakeThumbnailsPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToggleSwitchPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitControlsPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitInputsPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitLayoutsPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitListPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitMenusPage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitTreePage(GalleryWindow& window);
std::shared_ptr<Page> MakeToolkitWindowsPage(GalleryWindow& window);

} // namespace gallery
