#include <quillet/quillet.h>

#include "bench/Harness.h"

#include <memory>
#include <string>

namespace bench {

namespace {

constexpr int kControllers = 10;
constexpr int kManyControllers = 1000;
constexpr wchar_t kSkin[] = L"<Window size=\"400,300\"><VerticalLayout>"
                            L"<Button name=\"save\"/><Label name=\"text\"/></VerticalLayout>"
                            L"</Window>";

// A hidden window with so many controllers that listen to nothing.
class HiddenWindow {
public:
    explicit HiddenWindow(int controllers)
    {
        for (int i = 0; i < controllers; ++i)
            m_window.AddUIController(std::make_shared<UIController>());
        m_handle = m_window.Create(nullptr, L"Bench", kSkin, WS_POPUP, 0, false, false);
    }
    ~HiddenWindow() { ::DestroyWindow(m_handle); }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    void Send(UINT message, LPARAM lParam) const { ::SendMessageW(m_handle, message, 0, lParam); }

private:
    UIWindow m_window;
    HWND m_handle = nullptr;
};

} // namespace

void RunControllerBench(Report& report)
{
    const HiddenWindow without(0);
    const HiddenWindow with(kControllers);
    const HiddenWindow withMany(kManyControllers);
    const auto measure = [&](const std::string& name, UINT message, LPARAM lParam) {
        const auto toNone = [&] { without.Send(message, lParam); };
        const auto pair = LeastOfBoth([&] { with.Send(message, lParam); }, toNone);
        report.Add({name + " to 10 controllers / to none", pair.cost, pair.bare, {}});

        // What few of them add is lost in what other programs add to some messages.
        const auto many = LeastOfBoth([&] { withMany.Send(message, lParam); }, toNone);
        const double added = (many.cost - many.bare) * kControllers / kManyControllers;
        report.Add({name + ": added by each 10 of 1000 controllers", added, {}, {}});
    };
    measure("WM_USER + 100", WM_USER + 100, 0);
    measure("WM_MOUSEMOVE", WM_MOUSEMOVE, MAKELPARAM(20, 20));
}

} // namespace bench
