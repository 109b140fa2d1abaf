#include "gallery/Application.h"

#include <quillet/quillet.h>

namespace gallery {

using namespace DuiLib;

Application::Application()
{
    ::OleInitialize(nullptr);
    CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    CPaintManagerUI::SetResourcePath(CPaintManagerUI::GetInstancePath() + L"gallery-skin\\");

    auto& resources = *CResourceManagerEx::GetInstance();
    resources.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
    resources.LoadResource(STRINGorID(L"resources.xml"));
}

Application::~Application()
{
    CPaintManagerUI::Term();
    ::OleUninitialize();
}

} // namespace gallery
