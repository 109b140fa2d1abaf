#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

class RoundedButtonPage : public Page {
public:
    using Page::Page;

    void Show() override
    {
        auto* const button = Find<CRoundedRectButtonUI>(L"button.states");
        if (!button)
            return;
        button->SetCheckable(true);
        ShowState(*button);
    }

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType != DUI_MSGTYPE_CLICK || !notification.pSender)
            return;
        if (notification.pSender->GetName() == L"button.save")
            SetText(L"button.event", (L"click " + std::to_wstring(++m_clicks)).c_str());
        else if (auto* const button = Find<CRoundedRectButtonUI>(L"button.states");
                 button == notification.pSender) {
            button->SetChecked(!button->IsChecked());
            ShowState(*button);
        }
    }

private:
    void ShowState(const CRoundedRectButtonUI& button)
    {
        SetText(L"button.state-texts",
                button.IsChecked() ? L"IsChecked() = true" : L"IsChecked() = false");
    }

    int m_clicks = 0;
};

} // namespace

std::unique_ptr<Page> MakeRoundedButtonPage(GalleryWindow& window)
{
    return std::make_unique<RoundedButtonPage>(window);
}

} // namespace gallery
