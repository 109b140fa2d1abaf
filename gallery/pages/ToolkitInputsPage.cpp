#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kSliders[] = {L"inputs.slider.plain", L"inputs.slider.pictures",
                                       L"inputs.slider.vertical"};

bool IsOfEdit(const CDuiString& type)
{
    return type == DUI_MSGTYPE_TEXTCHANGED || type == DUI_MSGTYPE_RETURN ||
           type == DUI_MSGTYPE_VKBACK || type == DUI_MSGTYPE_ESCAPE;
}

class ToolkitInputsPage : public Page {
public:
    using Page::Page;

    void Show() override
    {
        for (const wchar_t* const name : kSliders)
            ShowValue(name);
        LanguageChanged();
    }

    void LanguageChanged() override
    {
        if (auto* const edit = Find<CEditUI>(L"inputs.hint"))
            edit->SetTipValue(CResourceManager::GetInstance()->GetText(L"inputs.tip"));
    }

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender)
            return;
        const CDuiString name = notification.pSender->GetName();
        if (notification.sType == DUI_MSGTYPE_VALUECHANGED ||
            notification.sType == DUI_MSGTYPE_VALUECHANGED_MOVE)
            ShowValue(name);
        else if (!IsOfEdit(notification.sType))
            return;
        SetText(L"inputs.event", notification.sType + L" " + name);
    }

private:
    void ShowValue(LPCTSTR name)
    {
        if (auto* const slider = Find<CSliderUI>(name))
            SetText((std::wstring(name) + L".value").c_str(),
                    std::to_wstring(slider->GetValue()).c_str());
    }
};

} // namespace

std::unique_ptr<Page> MakeToolkitInputsPage(GalleryWindow& window)
{
    return std::make_unique<ToolkitInputsPage>(window);
}

} // namespace gallery
