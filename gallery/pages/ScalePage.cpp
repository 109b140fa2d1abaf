#include "gallery/MonitorRules.h"
#include "gallery/pages/Pages.h"

#include <iterator>
#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr SIZE kMonitors[] = {{1366, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
constexpr unsigned kRequests[] = {96, 120, 144, 192, 288};
constexpr int kColumn = 5;
constexpr int kMonitorColumn = 11;
constexpr unsigned kAnnouncedDpi = 144;

std::wstring RightAligned(const std::wstring& text, int width)
{
    const auto missing = width - static_cast<int>(text.size());
    return std::wstring(static_cast<std::size_t>(missing > 0 ? missing : 0), L' ') + text;
}

template <class Manager>
std::wstring Describe(const wchar_t* name, Manager& manager)
{
    return std::wstring(name) + L"  scale " + std::to_wstring(manager.GetScale()) + L"  DPI " +
           std::to_wstring(manager.GetDPI()) + L"  Scale(10) = " +
           std::to_wstring(manager.Scale(10));
}

class ScalePage : public Page {
public:
    using Page::Page;

    void ScaleChanged() override
    {
        SetText(L"scale.manager.ex",
                Describe(L"Ex   ", *CResourceManagerEx::GetInstance()).c_str());
        SetText(L"scale.manager.mode",
                Describe(L"Mode ", *CResourceManagerModeEx::GetInstance()).c_str());
        SetText(L"scale.manager.trans",
                Describe(L"Trans", *CResourceManagerTransEx::GetInstance()).c_str());
    }

protected:
    void Show() override
    {
        std::wstring head = RightAligned(L"", kMonitorColumn);
        for (const unsigned request : kRequests)
            head += RightAligned(std::to_wstring(request), kColumn);
        SetText(L"scale.rules.head", head.c_str());
        for (std::size_t i = 0; i < std::size(kMonitors); ++i)
            SetText((L"scale.rules." + std::to_wstring(i)).c_str(), Rules(kMonitors[i]).c_str());
        ScaleChanged();
        ShowTrace();
        OnClickOf(L"scale.announce", [this] {
            PostMessageW(WM_DPICHANGED, MAKEWPARAM(kAnnouncedDpi, kAnnouncedDpi));
        });
    }

private:
    // The row of a monitor: the DPI that a window would use there for each request.
    std::wstring Rules(SIZE monitor) const
    {
        std::wstring row = RightAligned(
            std::to_wstring(monitor.cx) + L"x" + std::to_wstring(monitor.cy), kMonitorColumn);
        for (const unsigned request : kRequests)
            row += RightAligned(std::to_wstring(UsableDpi(monitor, request)), kColumn);
        return row;
    }

    // How the announced DPI becomes a usable one on this screen.
    void ShowTrace()
    {
        const SIZE screen{::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
        std::wstring text;
        for (const std::string& line : TraceOf(screen, kAnnouncedDpi))
            text += std::wstring(line.begin(), line.end()) + L"\n";
        SetText(L"scale.trace.lines", text.c_str());
    }
};

} // namespace

std::shared_ptr<Page> MakeScalePage(GalleryWindow& window)
{
    return std::make_shared<ScalePage>(window);
}

} // namespace gallery
