#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kSliders[] = {L"inputs.slider.plain", L"inputs.slider.pictures",
                                       L"inputs.slider.vertical"};

class ToolkitInputsPage : public Page {
public:
    using Page::Page;

    void LanguageChanged() override
    {
        if (auto* const edit = Find<CEditUI>(L"inputs.hint"))
            edit->SetTipValue(CResourceManager::GetInstance()->GetText(L"inputs.tip"));
    }

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender || (notification.sType != DUI_MSGTYPE_VALUECHANGED &&
                                      notification.sType != DUI_MSGTYPE_VALUECHANGED_MOVE))
            return;
        ShowValue(notification.pSender->GetName());
        ShowEvent(notification.sType, notification.pSender);
    }

protected:
    void Show() override
    {
        for (const wchar_t* const name : kSliders)
            ShowValue(name);
        LanguageChanged();
    }

    void OnTextChanged(CControlUI* sender) override { ShowEvent(DUI_MSGTYPE_TEXTCHANGED, sender); }
    void OnReturn(CControlUI* sender) override { ShowEvent(DUI_MSGTYPE_RETURN, sender); }
    void OnEditKeyBackSpace(CControlUI* sender) override { ShowEvent(DUI_MSGTYPE_VKBACK, sender); }
    void OnEditKeyEscape(CControlUI* sender) override { ShowEvent(DUI_MSGTYPE_ESCAPE, sender); }

private:
    void ShowEvent(LPCTSTR type, const CControlUI* sender)
    {
        if (IsShown())
            SetText(L"inputs.event", CDuiString(type) + L" " + sender->GetName());
    }

    void ShowValue(LPCTSTR name)
    {
        if (auto* const slider = Find<CSliderUI>(name))
            SetText((std::wstring(name) + L".value").c_str(),
                    std::to_wstring(slider->GetValue()).c_str());
    }
};

} // namespace

std::shared_ptr<Page> MakeToolkitInputsPage(GalleryWindow& window)
{
    return std::make_shared<ToolkitInputsPage>(window);
}

} // namespace gallery
