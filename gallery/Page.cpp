#include "gallery/Page.h"

#include <utility>

#include "gallery/GalleryWindow.h"

namespace gallery {

void Page::Enter()
{
    m_shown = true;
    Show();
}

void Page::Leave()
{
    if (!std::exchange(m_shown, false))
        return;
    Hide();
    // A controller keeps the handlers of controls that are gone, and a control of another page may
    // come to stand at the same address.
    for (DuiLib::CControlUI* const control : std::exchange(m_listened, {}))
        ListenClickEvent(control, [] {});
}

DuiLib::CControlUI* Page::FindControl(const wchar_t* name) const
{
    return m_window.IsOpen() ? m_window.Manager().FindControl(name) : nullptr;
}

void Page::SetText(const wchar_t* name, const wchar_t* text) const
{
    if (auto* const control = FindControl(name))
        control->SetText(text);
}

bool Page::IsChosen(const std::wstring& option) const
{
    const auto* const found = Find<DuiLib::COptionUI>(option.c_str());
    return found && found->IsSelected();
}

std::wstring Page::TextOf(const wchar_t* id)
{
    return DuiLib::CResourceManager::GetInstance()->GetText(id).GetData();
}

void Page::OnClickOf(const wchar_t* name, std::function<void()> handler)
{
    auto* const control = FindControl(name);
    if (!control)
        return;
    m_listened.push_back(control);
    ListenClickEvent(control, std::move(handler));
}

} // namespace gallery
