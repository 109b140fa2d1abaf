#include "PageController.h"

#include "StopController.h"

#include <memory>

using namespace DuiLib;

namespace {

constexpr int kOnePercent = 500'000; // numbers

bool IsPrime(int number)
{
    for (int divisor = 2; divisor <= number / divisor; ++divisor) {
        if (number % divisor == 0)
            return false;
    }
    return true;
}

} // namespace

void PageController::OnInit()
{
    ListenClickEvent(GetControl(L"start"), [this] { Start(); });
    ListenClickEvent(GetControl(L"stop"), [this] { Stop(); });
    ListenMessage(WM_USER + 4, [](WPARAM, LPARAM) { UIMainQueue::getInstance().finish(); });

    static_cast<CToggleSwitchUI*>(GetControl(L"ask"))->SetOn(true);
    ShowRunning(false);
    ShowProgress(0, 0);
}

void PageController::OnDestroy()
{
    m_worker = {}; // asks the worker to stop and waits for it
    ::PostQuitMessage(0);
}

void PageController::ShowRunning(bool running)
{
    GetControl(L"start")->SetEnabled(!running);
    GetControl(L"stop")->SetEnabled(running);
}

void PageController::ShowProgress(int percent, int found)
{
    CDuiString text;
    text.Format(CResourceManagerEx::GetInstance()->GetText(L"page.found"), found);
    GetControl(L"found")->SetText(text);
    static_cast<CProgressUI*>(GetControl(L"progress"))->SetValue(percent);
    if (percent == 100)
        ShowRunning(false);
}

void PageController::Start()
{
    ShowRunning(true);
    m_worker = std::jthread([this](std::stop_token stop) { Count(stop); });
}

void PageController::Count(std::stop_token stop)
{
    int found = 0;
    for (int number = 2; number <= 100 * kOnePercent && !stop.stop_requested(); ++number) {
        if (IsPrime(number))
            ++found;
        if (number % kOnePercent == 0)
            Report(number / kOnePercent, found);
    }
}

void PageController::Report(int percent, int found)
{
    const auto show = [page = weak_from_this(), percent, found] {
        if (const auto living = page.lock())
            static_cast<PageController&>(*living).ShowProgress(percent, found);
    };
    UIMainQueue::getInstance().dispatch(show, GetHwnd());
}

void PageController::Stop()
{
    if (!IsStopMeant())
        return;
    m_worker = {};
    ShowRunning(false);
}

bool PageController::IsStopMeant()
{
    if (!static_cast<CToggleSwitchUI*>(GetControl(L"ask"))->IsOn())
        return true;

    auto& resources = *CResourceManagerEx::GetInstance();
    UIWindow dialog;
    dialog.AddUIController(std::make_shared<StopController>());
    if (!dialog.Create(GetHwnd(), resources.GetText(L"dialog.title"),
                       resources.GetXmlPath(L"dialog"), WS_POPUP, 0, true, false)) {
        return false;
    }
    dialog.CenterWindow();
    return dialog.ShowModal() == IDOK;
}
