#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

class RoundedButtonPage : public Page {
public:
    using Page::Page;

protected:
    void Show() override
    {
        m_clicks = 0;
        OnClickOf(L"button.save", [this] {
            SetText(L"button.event", (L"click " + std::to_wstring(++m_clicks)).c_str());
        });
        auto* const button = Find<CRoundedRectButtonUI>(L"button.states");
        if (!button)
            return;
        button->SetCheckable(true);
        ShowState(*button);
        OnClickOf(L"button.states", [this, button] {
            button->SetChecked(!button->IsChecked());
            ShowState(*button);
        });
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

std::shared_ptr<Page> MakeRoundedButtonPage(GalleryWindow& window)
{
    return std::make_shared<RoundedButtonPage>(window);
}

} // namespace gallery
