#include "gallery/pages/Pages.h"

namespace gallery {

// The skin says it all.
std::shared_ptr<Page> MakeToolkitLayoutsPage(GalleryWindow& window)
{
    return std::make_shared<Page>(window);
}

} // namespace gallery
