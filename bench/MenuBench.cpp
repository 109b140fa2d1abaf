#include "bench/BenchWindow.h"
#include "bench/Harness.h"

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kRows = 30;
constexpr int kRowHeight = 30; // pixels
constexpr int kWidth = 150;
constexpr double kLargestToBareWindow = 4.0;

std::wstring MenuSkin()
{
    std::wstring skin = L"<Window><Menu>";
    for (int row = 0; row < kRows; ++row)
        skin += L"<MenuElement name=\"row" + std::to_wstring(row) + L"\" text=\"Menu row " +
                std::to_wstring(row) + L"\"/>";
    return skin + L"</Menu></Window>";
}

void DispatchWhatIsQueued()
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (!CPaintManagerUI::TranslateMessage(&message))
            ::DispatchMessageW(&message);
    }
}

// A popup that writes its rows itself.
class BarePopup : public CWindowWnd {
public:
    explicit BarePopup(HWND owner)
    {
        const RECT place{0, 0, kWidth, kRows * kRowHeight};
        Create(owner, nullptr, WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_TOPMOST, place);
        ::ShowWindow(m_hWnd, SW_SHOW);
        ::SetFocus(m_hWnd);
        ::UpdateWindow(m_hWnd);
    }
    ~BarePopup()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    BarePopup(const BarePopup&) = delete;
    BarePopup& operator=(const BarePopup&) = delete;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletBarePopup"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_PAINT)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        PAINTSTRUCT paint{};
        const HDC dc = ::BeginPaint(m_hWnd, &paint);
        ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        ::SetBkMode(dc, TRANSPARENT);
        for (int row = 0; row < kRows; ++row) {
            const std::wstring text = L"Menu row " + std::to_wstring(row);
            RECT place{26, row * kRowHeight, kWidth, (row + 1) * kRowHeight};
            ::DrawTextW(dc, text.c_str(), -1, &place, DT_VCENTER | DT_SINGLELINE);
        }
        ::EndPaint(m_hWnd, &paint);
        return 0;
    }
};

} // namespace

void RunMenuBench(Report& report)
{
    BenchWindow window(200, 100);
    window.Load(L"<Window><Container/></Window>");
    const std::wstring skin = MenuSkin();
    const auto openMenu = [&] {
        CMenuWnd* const menu =
            CMenuWnd::CreateMenu(nullptr, skin.c_str(), {0, 0}, &window.Manager());
        ::UpdateWindow(menu->GetHWND());
        menu->Close();
        DispatchWhatIsQueued();
    };
    const auto openBare = [&] {
        {
            const BarePopup popup(window.GetHWND());
        }
        DispatchWhatIsQueued();
    };
    const auto pair = TimeBoth(openMenu, openBare);
    report.Add({"open and close a menu of 30 rows / a window with 30 texts", pair.cost, pair.bare,
                kLargestToBareWindow});
}

} // namespace bench
