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

class ToolkitMenusPage : public Page, public IMessageFilterUI {
public:
    explicit ToolkitMenusPage(GalleryWindow& window) : Page(window)
    {
        Window().Manager().AddMessageFilter(this);
    }
    ~ToolkitMenusPage() override
    {
        CloseScene();
        CMenuWnd::DestroyMenu();
        Window().Manager().RemoveMessageFilter(this);
    }

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender)
            return;
        const CDuiString name = notification.pSender->GetName();
        if (notification.sType == DUI_MSGTYPE_CLICK && name == L"menus.file")
            OpenBelow(*notification.pSender, kFileMenu);
        else if (notification.sType == DUI_MSGTYPE_CLICK && name == L"menus.view")
            OpenBelow(*notification.pSender, kViewMenu);
        else if (notification.sType == DUI_MSGTYPE_MENU && name == L"menus.context")
            OpenMenu(kContextMenu, notification.ptMouse);
        else if (notification.sType == DUI_MSGTYPE_ITEMSELECT)
            SetText(L"menus.event", name + L": " + notification.pSender->GetText());
        else if (notification.sType == DUI_MSGTYPE_VALUECHANGED)
            SetText(L"menus.event", notification.sType + L" " + name);
    }

    LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM, bool& handled) override
    {
        if (message != WM_MENUCLICK)
            return 0;
        const std::unique_ptr<MenuCmd> command(reinterpret_cast<MenuCmd*>(wParam));
        SetText(L"menus.event", CDuiString(L"WM_MENUCLICK ") + command->szName);
        handled = true;
        return 0;
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
            if (auto* const button = Find<CButtonUI>(file ? L"menus.file" : L"menus.view"))
                OpenBelow(*button, file ? kFileMenu : kViewMenu);
            if (auto* const menu = m_menu ? m_menu->m_pm.FindControl(L"menus.recent") : nullptr)
                menu->Activate();
        }
    }
    void CloseScene() override
    {
        Window().Manager().SetFocus(nullptr);
        CMenuWnd::GetGlobalContextMenuObserver().RBroadcast({1, nullptr});
        m_menu = nullptr;
    }

private:
    void OpenBelow(const CControlUI& control, const wchar_t* skin)
    {
        const RECT& place = control.GetPos();
        OpenMenu(skin, {place.left, place.bottom});
    }

    void OpenMenu(const wchar_t* skin, POINT point)
    {
        ::ClientToScreen(Window().GetHWND(), &point);
        m_menu = CMenuWnd::CreateMenu(nullptr, skin, point, &Window().Manager());
    }

    CMenuWnd* m_menu = nullptr; // the one opened last, while a scene shows it
};

} // namespace

std::unique_ptr<Page> MakeToolkitMenusPage(GalleryWindow& window)
{
    return std::make_unique<ToolkitMenusPage>(window);
}

} // namespace gallery
