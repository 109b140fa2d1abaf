#include "gallery/pages/Pages.h"

namespace gallery {

std::span<const PageEntry> Pages()
{
    static constexpr PageEntry kPages[] = {
        {L"toggle-switch", MakeToggleSwitchPage},
        {L"rounded-button", MakeRoundedButtonPage},
        {L"texts", MakeTextsPage},
        {L"scale", MakeScalePage},
        {L"frame", MakeFramePage},
        {L"message-boxes", MakeMessageBoxesPage},
        {L"notices", MakeNoticesPage},
        {L"loading", MakeLoadingPage},
        {L"confirmation", MakeConfirmationPage},
        {L"image-attributes", MakeImageAttributesPage},
        {L"images", MakeImagesPage},
        {L"painter", MakePainterPage},
        {L"frame-animation", MakeFrameAnimationPage},
        {L"thumbnails", MakeThumbnailsPage},
        {L"toolkit-controls", MakeToolkitControlsPage},
        {L"toolkit-inputs", MakeToolkitInputsPage},
        {L"toolkit-layouts", MakeToolkitLayoutsPage},
        {L"toolkit-list", MakeToolkitListPage},
        {L"toolkit-menus", MakeToolkitMenusPage},
        {L"toolkit-tree", MakeToolkitTreePage},
        {L"toolkit-windows", MakeToolkitWindowsPage},
    };
    return kPages;
}

} // namespace gallery
