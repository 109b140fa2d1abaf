#include <quillet/quillet.h>

#include "bench/Harness.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

namespace bench {

namespace {

using namespace DuiLib;

constexpr double kLargestToBareWindow = 5;
constexpr int kOpenings = 101;
constexpr wchar_t kText[] = L"The file is open in another program. Closing it now may lose what "
                            L"was written there since it was saved last.";

double Now() // nanoseconds
{
    LARGE_INTEGER ticks;
    LARGE_INTEGER frequency;
    ::QueryPerformanceCounter(&ticks);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
}

// When each part of one opening and closing began; they follow each other in this order.
struct Moments {
    double open;   // the window is made by the system
    double build;  // its skin is read and built
    double fill;   // the controls get their texts
    double show;   // it is placed and shown
    double layOut; // before its first paint
    double paint;
    double close;
    double end;
};

// A message box of either generation that notes when what happens to it.
template <class Base>
class TimedBox : public Base {
public:
    explicit TimedBox(Moments& moments)
        : Base(nullptr, L"Close", kText, L"", L"", 3, nullptr, true, false), m_moments(moments)
    {
    }

    static TimedBox& Open(Moments& moments)
    {
        moments.open = Now();
        auto* const box = new TimedBox(moments);
        Base::RunModeless(box, nullptr);
        return *box;
    }
    void Close()
    {
        ::DestroyWindow(this->m_hWnd);
        if constexpr (std::is_same_v<Base, UIIMessageBox>)
            delete this; // the other generation has done so itself
    }

protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CREATE)
            m_moments.build = Now();
        return Base::HandleMessage(message, wParam, lParam);
    }
    void InitWindow() override
    {
        m_moments.fill = Now();
        Base::InitWindow();
        m_moments.show = Now();
    }
    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == DUI_MSGTYPE_WINDOWINIT)
            m_moments.paint = Now();
        Base::Notify(notification);
    }

private:
    Moments& m_moments;
};

// A window of the same kind with one fill.
class PlainWindow : public CWindowWnd {
public:
    static void OpenAndClose(SIZE size)
    {
        PlainWindow window;
        window.Create(nullptr, nullptr, WS_POPUP, WS_EX_TOPMOST | WS_EX_TOOLWINDOW, 0, 0, size.cx,
                      size.cy);
        window.CenterWindow();
        window.ShowWindow(true, true);
        ::UpdateWindow(window);
        ::DestroyWindow(window);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletPlainWindow"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_PAINT)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        PAINTSTRUCT paint{};
        const HDC dc = ::BeginPaint(m_hWnd, &paint);
        ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        ::EndPaint(m_hWnd, &paint);
        return 0;
    }
};

struct Part {
    const char* name;
    double Moments::*from;
    double Moments::*to;
};
constexpr Part kParts[] = {
    {"have the system make the window", &Moments::open, &Moments::build},
    {"read and build the skin", &Moments::build, &Moments::fill},
    {"fill in the texts", &Moments::fill, &Moments::show},
    {"place and show", &Moments::show, &Moments::layOut},
    {"lay out", &Moments::layOut, &Moments::paint},
    {"load pictures and paint", &Moments::paint, &Moments::close},
    {"close", &Moments::close, &Moments::end},
};

double MedianOf(const std::vector<Moments>& all, const Part& part)
{
    std::vector<double> times;
    for (const Moments& moments : all)
        times.push_back(moments.*part.to - moments.*part.from);
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

// Without waiting for an answer.
template <class Base>
void OpenAndClose(Moments& moments)
{
    auto& box = TimedBox<Base>::Open(moments);
    moments.layOut = Now();
    ::UpdateWindow(box);
    moments.close = Now();
    box.Close();
    moments.end = Now();
}

template <class Base>
void Measure(Report& report, const std::string& name)
{
    Moments moments{};
    auto& open = TimedBox<Base>::Open(moments);
    RECT place{};
    ::GetWindowRect(open, &place);
    const double paintAgain = TimeOf([&] {
        ::InvalidateRect(open, nullptr, FALSE);
        ::UpdateWindow(open);
    });
    open.Close();

    const SIZE size{place.right - place.left, place.bottom - place.top};
    const auto pair =
        TimeBoth([&] { OpenAndClose<Base>(moments); }, [&] { PlainWindow::OpenAndClose(size); });
    report.Add({"open and close a " + name + " / a bare window", pair.cost, pair.bare,
                kLargestToBareWindow});

    std::vector<Moments> all(kOpenings);
    for (Moments& each : all)
        OpenAndClose<Base>(each);
    for (const Part& part : kParts)
        report.Add({name + ": " + part.name, MedianOf(all, part), {}, {}});
    report.Add({name + ": paint once more", paintAgain, {}, {}});
}

} // namespace

void RunMessageBoxBench(Report& report)
{
    CPaintManagerUI::SetResourcePath(QUILLET_BENCH_SKINS);
    Measure<UIMessageBox>(report, "UIMessageBox");
    Measure<UIIMessageBox>(report, "UIIMessageBox");
    CPaintManagerUI::SetResourcePath(L"");
}

} // namespace bench
