#include "gallery/Application.h"
#include "gallery/GalleryWindow.h"
#include "support/FaultPlan.h"
#include "support/ObjectCounters.h"
#include "support/Picture.h"
#include "tests/gallery/PageNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

using namespace DuiLib;
using test::FaultPlan;
using test::Resource;

namespace {

struct Kind {
    Resource resource;
    const char* name;
};
constexpr Kind kSystemObjects[] = {{Resource::Window, "window"}, {Resource::DeviceContext, "DC"},
                                   {Resource::Bitmap, "bitmap"}, {Resource::Font, "font"},
                                   {Resource::Region, "region"}, {Resource::Timer, "timer"}};
constexpr Kind kMemory = {Resource::Memory, "memory"};

// How many requests are refused of a kind that has more, evenly spread. The environment variable
// refuses every one, which takes minutes for memory.
constexpr int kMostRefused = 50;
constexpr char kRefuseAll[] = "QUILLET_REFUSE_ALL";

// Whether a window of the frame came into being.
class CreationWatch {
public:
    CreationWatch() : m_hook(::SetWindowsHookExW(WH_CBT, &Hook, nullptr, ::GetCurrentThreadId()))
    {
        s_created = false;
    }
    ~CreationWatch() { ::UnhookWindowsHookEx(m_hook); }
    CreationWatch(const CreationWatch&) = delete;
    CreationWatch& operator=(const CreationWatch&) = delete;

    bool Created() const { return s_created; }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        wchar_t name[16]{};
        if (code == HCBT_CREATEWND && ::GetClassNameW(reinterpret_cast<HWND>(wParam), name, 16) > 0)
            s_created = s_created || std::wstring_view(name).starts_with(L"UIWindow-");
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline bool s_created = false;
    HHOOK m_hook;
};

// Opens the gallery at a page, shows and paints it and closes it, while one request after the other
// is refused.
class FaultTest : public testing::TestWithParam<std::size_t> {
protected:
    gallery::Application application;
    const gallery::PageEntry& page = gallery::Pages()[GetParam()];

    static void Dispatch()
    {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            if (!CPaintManagerUI::TranslateMessage(&message))
                ::DispatchMessageW(&message);
    }

    static test::Picture PictureOf(HWND window)
    {
        RECT client{};
        ::GetClientRect(window, &client);
        test::Canvas canvas(client.right, client.bottom);
        ::SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
        return canvas.Take();
    }

    // Gives the number of requests; notes whether the window was there, if only for a moment.
    int Visit(FaultPlan& plan, int refused, test::Picture* picture = nullptr)
    {
        gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::Nothing);
        const CreationWatch creation;
        plan.Start(refused);
        try {
            if (window.Open(true)) {
                window.ShowPage(page);
                ::UpdateWindow(window.GetHWND());
                Dispatch();
            }
        } catch (const std::bad_alloc&) {
        }
        const int requests = plan.Stop();
        m_created = creation.Created();
        if (picture)
            *picture = PictureOf(window.GetHWND());
        if (window.GetHWND())
            ::DestroyWindow(window.GetHWND());
        Dispatch();
        return requests;
    }

    bool m_created = false;

    // What the system itself keeps of any window that has gone.
    static int GdiKeptOfABareWindow()
    {
        const int before = test::GdiObjects();
        const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 1040,
                                              700, nullptr, nullptr, nullptr, nullptr);
        ::UpdateWindow(window);
        Dispatch();
        ::DestroyWindow(window);
        Dispatch();
        return std::max(test::GdiObjects() - before, 0);
    }

    // What there is more after a visit than before.
    struct Growth {
        int blocks; // of memory
        int gdi;
        int gdiplus;
    };
    Growth GrowthBy(FaultPlan& plan, int refused)
    {
        const Growth before{FaultPlan::HeldBlocks(), test::GdiObjects(), test::GdiplusObjects()};
        Visit(plan, refused);
        // A window of the frame that was never created is never freed.
        const int blocks = m_created ? FaultPlan::HeldBlocks() - before.blocks : 0;
        const int gdi = test::GdiObjects() - before.gdi;
        return {blocks, gdi > 0 ? gdi - GdiKeptOfABareWindow() : gdi,
                test::GdiplusObjects() - before.gdiplus};
    }

    // A leak grows each time. What is kept on purpose does not: reasons of failures, spare regions,
    // and measured texts up to a bound. A system under load may fall behind with what it keeps of
    // windows that have gone, so growth has to last.
    void ExpectNoLeak(FaultPlan& plan, int refused)
    {
        constexpr int kTries = 12;
        constexpr DWORD kPatience = 20'000; // milliseconds; only a leak takes so long
        const DWORD start = ::GetTickCount();
        Growth least{INT_MAX, INT_MAX, INT_MAX};
        const std::string kinds = test::GdiObjectKinds();
        const auto grows = [&] { return least.blocks > 0 || least.gdi > 0 || least.gdiplus > 0; };
        const auto patient = [&] { return ::GetTickCount() - start < kPatience; };
        for (int i = 0; grows() && (i < kTries || patient()); ++i) {
            const Growth growth = GrowthBy(plan, refused);
            least.blocks = std::min(least.blocks, growth.blocks);
            least.gdi = std::min(least.gdi, growth.gdi);
            least.gdiplus = std::min(least.gdiplus, growth.gdiplus);
        }
        EXPECT_LE(least.blocks, 0) << "memory";
        EXPECT_LE(least.gdi, 0) << "GDI: " << kinds << " became " << test::GdiObjectKinds();
        EXPECT_LE(least.gdiplus, 0) << "GDI+";
    }

    // Gives how many requests there are.
    int RefuseEach(Kind kind)
    {
        FaultPlan plan(kind.resource);
        Visit(plan, 0);
        test::Picture before(1, 1);
        const int requests = Visit(plan, 0, &before);
        const int windows = test::UserWindows();
        const int managers = CPaintManagerUI::GetPaintManagers()->GetSize();

        const bool all = std::getenv(kRefuseAll) != nullptr;
        const int refusals = all ? requests : std::min(requests, kMostRefused);
        for (int i = 0; i < refusals; ++i) {
            const int refused =
                1 + static_cast<int>(static_cast<long long>(requests) * i / refusals);
            SCOPED_TRACE(kind.name + (" " + std::to_string(refused)) + " of " +
                         std::to_string(requests));
            ExpectNoLeak(plan, refused);
            if (HasFailure())
                return requests;
            EXPECT_EQ(test::UserWindows(), windows);
            EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), managers);
        }

        SCOPED_TRACE(kind.name);
        test::Picture after(1, 1);
        Visit(plan, 0, &after);
        EXPECT_EQ(after, before) << "the page looks as before";
        return requests;
    }
};

TEST_P(FaultTest, ObjectsThatTheSystemRefusesDoNoHarm)
{
    int requests = 0;
    for (const Kind kind : kSystemObjects)
        requests += RefuseEach(kind);
    EXPECT_GT(requests, 30);
}

TEST_P(FaultTest, MemoryThatIsRefusedDoesNoHarm)
{
    EXPECT_GT(RefuseEach(kMemory), 1000);
}

INSTANTIATE_TEST_SUITE_P(Pages, FaultTest, testing::Range<std::size_t>(0, gallery::Pages().size()),
                         [](const auto& test) { return test::NameOfPage(test.param); });

} // namespace
