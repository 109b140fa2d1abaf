#include "gallery/GalleryWindow.h"
#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kCombo = L"menus.combo.plain";
constexpr const wchar_t* kFileMenu = L"menus/file.xml";
constexpr const wchar_t* kViewMenu = L"menus/view.xml";
constexpr const wchar_t* kContextMenu = L"menus/context.xml";

enum Scene { kOpenCombo, kOpenFileMenu, kOpenViewMenu, kOpenContextMenu, kSceneCount };

class ToolkitMenusPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender)
            return;
        const CDuiString name = notification.pSender->GetName();
        if (notification.sType == DUI_MSGTYPE_ITEMSELECT)
            SetText(L"menus.event", name + L": " + notification.pSender->GetText());
        else if (notification.sType == DUI_MSGTYPE_VALUECHANGED)
            SetText(L"menus.event", notification.sType + L" " + name);
    }

    void MenuChosen(const MenuCmd& command) override
    {
        SetText(L"menus.event", CDuiString(L"WM_MENUCLICK ") + command.szName);
    }

    int Scenes() const override { return kSceneCount; }
    void OpenScene(int scene) override
    {
        if (scene == kOpenCombo) {
            if (auto* const combo = Find<CComboUI>(kCombo)) {
                combo->SetFocus();
                combo->Activate();
            }
        } else if (scene == kOpenContextMenu) {
            if (auto* const panel = Find<CLabelUI>(L"menus.context"))
                OpenMenu(kContextMenu, {panel->GetPos().left + 40, panel->GetPos().top + 20});
        } else {
            const bool file = scene == kOpenFileMenu;
            OpenBelow(file ? L"menus.file" : L"menus.view", file ? kFileMenu : kViewMenu);
            if (auto* const recent = FindMenuControl(L"menus.recent"))
                recent->Activate();
        }
    }
    void CloseScene() override
    {
        GetPaintManagerUI().SetFocus(nullptr);
        CMenuWnd::GetGlobalContextMenuObserver().RBroadcast({1, nullptr});
    }

protected:
    void Show() override
    {
        OnClickOf(L"menus.file", [this] { OpenBelow(L"menus.file", kFileMenu); });
        OnClickOf(L"menus.view", [this] { OpenBelow(L"menus.view", kViewMenu); });
    }
    void Hide() override
    {
        CloseScene();
        CMenuWnd::DestroyMenu();
    }

    void OnMenu(CControlUI* sender) override
    {
        if (IsShown() && sender == Find<CLabelUI>(L"menus.context"))
            OpenMenu(kContextMenu, GetPaintManagerUI().GetMousePos());
    }

private:
    void OpenBelow(const wchar_t* button, const wchar_t* skin)
    {
        if (auto* const control = Find<CButtonUI>(button))
            OpenMenu(skin, {control->GetPos().left, control->GetPos().bottom});
    }

    void OpenMenu(const wchar_t* skin, POINT point)
    {
        ::ClientToScreen(GetHwnd(), &point);
        OnCreateMenuInit(nullptr, skin, point);
    }
};

} // namespace

std::shared_ptr<Page> MakeToolkitMenusPage(GalleryWindow& window)
{
    return std::make_shared<ToolkitMenusPage>(window);
}

} // namespace gallery
