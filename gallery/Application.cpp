#include "gallery/Application.h"

#include <quillet/quillet.h>

namespace gallery {

using namespace DuiLib;

namespace {

// The cache of thumbnails frees its pictures when the process ends, later than the toolkit ends
// GDI+.
void KeepGdiplusRunning()
{
    static const bool isRunning = [] {
        ULONG_PTR token = 0;
        const Gdiplus::GdiplusStartupInput input;
        return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
    }();
    static_cast<void>(isRunning);
}

} // namespace

Application::Application()
{
    KeepGdiplusRunning();
    QuilletGlobal::GetInstatnce().SetMainThreadId(::GetCurrentThreadId());
    ::OleInitialize(nullptr);
    CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    CPaintManagerUI::SetResourcePath(CPaintManagerUI::GetInstancePath() + L"gallery-skin\\");

    auto& resources = *CResourceManagerEx::GetInstance();
    resources.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
    resources.LoadResource(STRINGorID(L"resources.xml"));

    // Skins name the library's controls; the windows of the frame leave them to the factory.
    REGIST_DUICONTROL(CRoundedRectButtonUI)
    REGIST_DUICONTROL(CToggleSwitchUI)
}

Application::~Application()
{
    CPaintManagerUI::Term();
    ::OleUninitialize();
}

} // namespace gallery
