#include "gallery/pages/Pages.h"

namespace gallery {

// The skin says it all.
std::unique_ptr<Page> MakeToolkitLayoutsPage(GalleryWindow& window)
{
    return std::make_unique<Page>(window);
}

} // namespace gallery
