#include "gallery/ReadImage.h"

namespace gallery {

using namespace DuiLib;

std::unique_ptr<UIImage> ReadImage(const wchar_t* name)
{
    Gdiplus::Bitmap file(CPaintManagerUI::GetResourcePath() + name);
    auto image = std::make_unique<UIImage>(static_cast<int>(file.GetWidth()),
                                           static_cast<int>(file.GetHeight()));
    UIImage source(&file);
    source.SetAutoDestroyResource(false);
    UIPainter(image.get()).DrawImage(0, 0, &source);
    return image;
}

} // namespace gallery
