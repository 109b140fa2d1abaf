#include <quillet/quillet.h>

#include "Demonstration.h"
#include "PageController.h"

#include <memory>
#include <string_view>

using namespace DuiLib;

namespace {

void LoadResources()
{
    CPaintManagerUI::SetResourcePath(CPaintManagerUI::GetInstancePath() + L"skin\\");
    REGIST_DUICONTROL(CToggleSwitchUI)

    auto& resources = *CResourceManagerEx::GetInstance();
    resources.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE); // before any window
    resources.SetLanguage(L"en-US");
    resources.LoadLanguage(L"en-US.xml");                        // texts of the code
    CResourceManager::GetInstance()->LoadLanguage(L"en-US.xml"); // texts of the skins
    resources.LoadResource(L"resources.xml");
}

void RunMessageLoop()
{
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_USER + 4) {
            UIMainQueue::getInstance().finish();
        } else if (!CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR arguments, int)
{
    QuilletGlobal::GetInstatnce().SetMainThreadId(::GetCurrentThreadId());
    CPaintManagerUI::SetInstance(instance);
    LoadResources();

    auto& resources = *CResourceManagerEx::GetInstance();
    const bool isDemonstration = std::wstring_view(arguments) == L"--demo";
    const auto demonstration = std::make_shared<Demonstration>();

    UIWindow page;
    page.AddUIController(std::make_shared<PageController>());
    if (isDemonstration)
        page.AddUIController(demonstration);
    const HWND window =
        page.Create(nullptr, resources.GetText(L"page.title"), resources.GetXmlPath(L"page"),
                    WS_OVERLAPPEDWINDOW, 0, false, false);
    if (!window)
        return 1;
    resources.SetMainHWND(window);
    page.CenterWindow();
    page.ShowWindow(true);
    RunMessageLoop();

    UIMainQueue::getInstance().over();
    CPaintManagerUI::Term();
    resources.Release();
    return isDemonstration && !demonstration->HasSucceeded() ? 1 : 0;
}
