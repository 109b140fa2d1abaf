#include "gallery/pages/Pages.h"

#include <algorithm>
#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr int kProgressStep = 10;

class ToolkitControlsPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender)
            return;
        const CDuiString name = notification.pSender->GetName();
        const bool reports = notification.sType == DUI_MSGTYPE_CLICK ||
                             notification.sType == DUI_MSGTYPE_SELECTCHANGED ||
                             notification.sType == DUI_MSGTYPE_LINK;
        if (reports && name.Find(L"controls.") == 0)
            SetText(L"controls.event", notification.sType + L" " + name);
    }

protected:
    void Show() override
    {
        ShowProgress();
        OnClickOf(L"controls.less", [this] { AddProgress(-kProgressStep); });
        OnClickOf(L"controls.more", [this] { AddProgress(kProgressStep); });
    }

private:
    void AddProgress(int step)
    {
        if (auto* const progress = Find<CProgressUI>(L"controls.progress"))
            progress->SetValue(std::clamp(progress->GetValue() + step, progress->GetMinValue(),
                                          progress->GetMaxValue()));
        ShowProgress();
    }

    void ShowProgress()
    {
        if (const auto* const progress = Find<CProgressUI>(L"controls.progress"))
            SetText(L"controls.progress.value",
                    (std::to_wstring(progress->GetValue()) + L" %").c_str());
    }
};

} // namespace

std::shared_ptr<Page> MakeToolkitControlsPage(GalleryWindow& window)
{
    return std::make_shared<ToolkitControlsPage>(window);
}

} // namespace gallery
