#include <quillet/quillet.h>

#include "gallery/Application.h"
#include "gallery/GalleryWindow.h"
#include "gallery/Tour.h"

#include <shellapi.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

void PrintLine(const std::wstring& line)
{
    const int size = static_cast<int>(line.size());
    const int length =
        ::WideCharToMultiByte(CP_UTF8, 0, line.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, line.data(), size, utf8.data(), length, nullptr, nullptr);
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
    std::fputc('\n', stdout);
}

int RunTour(const std::wstring& folder)
{
    const auto result = gallery::TakeTour(folder);
    for (const auto& problem : result.problems)
        PrintLine(problem);
    PrintLine(std::to_wstring(result.pictures) + L" pictures, " +
              std::to_wstring(result.problems.size()) + L" problems");
    std::fflush(stdout);
    return result.problems.empty() && result.pictures > 0 ? 0 : 1;
}

// The application's own loop runs the tasks that were dispatched without a window.
void RunMessageLoop()
{
    constexpr UINT kWakeUp = WM_USER + 4;
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!message.hwnd && message.message == kWakeUp) {
            DuiLib::UIMainQueue::getInstance().finish();
        } else if (!DuiLib::CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

int RunWindow()
{
    gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::EndTheMessageLoop);
    if (!window.Open(true))
        return 1;
    RunMessageLoop();
    return 0;
}

int Run()
{
    const gallery::Application application;
    if (__argc == 3 && std::wstring_view(__wargv[1]) == L"--tour")
        return RunTour(__wargv[2]);
    return RunWindow();
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int)
{
    const int code = Run();
    DuiLib::UIMainQueue::getInstance().over();
    DuiLib::CResourceManagerEx::GetInstance()->Release();
    DuiLib::CResourceManagerModeEx::GetInstance()->Release();
    DuiLib::CResourceManagerTransEx::GetInstance()->Release();
    return code;
}
