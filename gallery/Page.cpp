#include "gallery/Page.h"

#include "gallery/GalleryWindow.h"

namespace gallery {

DuiLib::CControlUI* Page::FindControl(const wchar_t* name) const
{
    return m_window.Manager().FindControl(name);
}

void Page::SetText(const wchar_t* name, const wchar_t* text) const
{
    if (auto* const control = FindControl(name))
        control->SetText(text);
}

} // namespace gallery
