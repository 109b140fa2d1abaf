#include "gallery/pages/Pages.h"

namespace gallery {

namespace {

using namespace DuiLib;

class ToggleSwitchPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == L"UIToggleSwitch_Toggled")
            SetText(L"switch.event", notification.wParam ? L"UIToggleSwitch_Toggled (1)"
                                                         : L"UIToggleSwitch_Toggled (0)");
    }

protected:
    void Show() override
    {
        for (const wchar_t* name : {L"switch.on", L"switch.disabled-on", L"switch.large"})
            if (auto* const toggle = Find<CToggleSwitchUI>(name))
                toggle->SetOn(true);
        if (auto* const manual = Find<CToggleSwitchUI>(L"switch.manual"))
            manual->SetToggleOnClick(false);
    }
};

} // namespace

std::shared_ptr<Page> MakeToggleSwitchPage(GalleryWindow& window)
{
    return std::make_shared<ToggleSwitchPage>(window);
}

} // namespace gallery
