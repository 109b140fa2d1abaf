#include "support/ObjectCounters.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <string>

using namespace DuiLib;
using test::FrameHost;
using test::kFrameSkin;
using test::RecordingController;
using testing::ElementsAre;

// What a controller may do while it is being called.
namespace {

// How a hook is reached.
struct Trigger {
    const char* hook;
    void (*pull)(FrameHost& host);
};

constexpr Trigger kTriggers[] = {
    {"OnSize", [](FrameHost& host) { host.Send(WM_SIZE, 0, MAKELPARAM(10, 10)); }},
    {"OnMoveWnd", [](FrameHost& host) { host.Send(WM_MOVE); }},
    {"OnMouseMove", [](FrameHost& host) { host.Send(WM_MOUSEMOVE); }},
    {"OnMouseLeave", [](FrameHost& host) { host.Send(WM_MOUSELEAVE); }},
    {"OnLButtonDown", [](FrameHost& host) { host.Send(WM_LBUTTONDOWN); }},
    {"OnLButtonUp", [](FrameHost& host) { host.Send(WM_LBUTTONUP); }},
    {"OnKeyDown", [](FrameHost& host) { host.Send(WM_KEYDOWN, 'A'); }},
    {"OnShowWindow", [](FrameHost& host) { host.window.ShowWindow(true); }},
    {"OnSetFocus", [](FrameHost& host) { host.Send(WM_SETFOCUS); }},
    {"OnMenuClick", [](FrameHost& host) { host.Send(WM_USER + 3); }},
    {"OnDragOver", [](FrameHost& host) { host.Send(2028); }},
    {"OnPointerDown", [](FrameHost& host) { host.Send(WM_POINTERDOWN); }},
    {"OnDPIChanged",
     [](FrameHost& host) {
         RECT suggested{0, 0, 200, 100};
         host.Send(WM_DPICHANGED, MAKEWPARAM(120, 120), reinterpret_cast<LPARAM>(&suggested));
         host.Send(WM_TIMER, 3257);
     }},
    {"OnReturn",
     [](FrameHost& host) { host.Manager().SendNotify(host.Control(L"edit"), L"return"); }},
    {"OnScroll", [](FrameHost& host) { host.Manager().SendNotify(nullptr, L"scroll"); }},
};

class HookSafetyTest : public testing::TestWithParam<Trigger> {
protected:
    // Pulls the trigger with something to do in its hook of the first controller, once.
    void PullWith(const std::function<void()>& action)
    {
        host.Make();
        bool done = false;
        host.first->inHook = [this, action, &done](const std::string& hook) {
            if (done || hook != GetParam().hook)
                return;
            done = true;
            action();
        };
        GetParam().pull(host);
        EXPECT_TRUE(done);
        host.first->inHook = nullptr;
    }

    FrameHost host;
};

TEST_P(HookSafetyTest, MayDestroyTheWindow)
{
    PullWith([&] {
        host.Destroy();
        host.TakeLog();
    });
    EXPECT_FALSE(host.window.IsWindow());
    EXPECT_TRUE(host.log.empty()) << "no other controller is called any more";
}

TEST_P(HookSafetyTest, MayAddControllers)
{
    PullWith([&] {
        for (int i = 0; i < 100; ++i)
            host.window.AddUIController(std::make_shared<RecordingController>(host.log, "late"));
    });
    host.TakeLog();
    host.Send(WM_KEYUP, 'A');
    EXPECT_EQ(host.log.size(), 102u);
}

TEST_P(HookSafetyTest, MayShowAModalWindow)
{
    PullWith([&] {
        FrameHost dialog;
        dialog.Make(host.handle);
        dialog.first->SetTimer(1, [&] { dialog.first->OnCloseX(3); });
        EXPECT_EQ(dialog.window.ShowModal(), 3u);
    });
    EXPECT_TRUE(host.window.IsWindow());
    EXPECT_TRUE(::IsWindowEnabled(host.handle));
}

TEST_P(HookSafetyTest, MayDestroyTheWindowWhileAModalOneIsShown)
{
    PullWith([&] {
        FrameHost dialog;
        dialog.Make(host.handle);
        dialog.first->SetTimer(1, [&] { host.Destroy(); });
        EXPECT_EQ(dialog.window.ShowModal(), 0u);
    });
    EXPECT_FALSE(host.window.IsWindow());
}

INSTANTIATE_TEST_SUITE_P(Hooks, HookSafetyTest, testing::ValuesIn(kTriggers),
                         [](const auto& test) { return test.param.hook; });

constexpr UINT kPrivateMessage = WM_USER + 500;

TEST(WindowSafetyTest, ACallbackOfAMessageMayDestroyTheWindow)
{
    FrameHost host;
    host.Make();
    int second = 0;
    host.first->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { host.Destroy(); });
    host.second->ListenMessage(kPrivateMessage, [&](WPARAM, LPARAM) { ++second; });
    host.Send(kPrivateMessage);
    EXPECT_FALSE(host.window.IsWindow());
    EXPECT_EQ(second, 0);
}

TEST(WindowSafetyTest, ACallbackOfATimerMayDestroyTheWindow)
{
    FrameHost host;
    host.Make();
    const UINT id = host.first->SetTimer(100000, [&] { host.Destroy(); });
    host.Send(WM_TIMER, id);
    EXPECT_FALSE(host.window.IsWindow());
}

TEST(WindowSafetyTest, ACallbackOfAClickMayDestroyTheWindow)
{
    FrameHost host;
    host.Make();
    int second = 0;
    auto* const save = host.Control(L"save");
    host.first->ListenClickEvent(save, [&] { host.Destroy(); });
    host.second->ListenClickEvent(save, [&] { ++second; });
    save->Activate();
    EXPECT_FALSE(host.window.IsWindow());
    EXPECT_EQ(second, 0);
}

TEST(WindowSafetyTest, ACallbackOfAClickMayShowAModalWindow)
{
    FrameHost host;
    host.Make();
    UINT code = 0;
    host.first->ListenClickEvent(host.Control(L"save"), [&] {
        FrameHost dialog;
        dialog.Make(host.handle);
        dialog.first->SetTimer(1, [&] { dialog.first->OnCloseX(9); });
        code = dialog.window.ShowModal();
    });
    host.Control(L"save")->Activate();
    EXPECT_EQ(code, 9u);
}

TEST(WindowSafetyTest, OnInitMayDestroyTheWindow)
{
    FrameHost host;
    host.first->inHook = [&](const std::string& hook) {
        if (hook == "OnInit")
            ::DestroyWindow(host.first->GetHwnd());
    };
    host.Make();
    EXPECT_FALSE(host.window.IsWindow());
    EXPECT_THAT(host.log, testing::Not(testing::Contains("2: OnInit()")));
}

TEST(WindowSafetyTest, AControllerThatIsAddedInOnInitIsNotInitialised)
{
    FrameHost host;
    const auto late = std::make_shared<RecordingController>(host.log, "3");
    host.first->inHook = [&](const std::string& hook) {
        if (hook == "OnInit")
            host.window.AddUIController(late);
    };
    host.Make();
    EXPECT_THAT(host.log, testing::Contains("3: OnLoad()"));
    EXPECT_THAT(host.log, testing::Not(testing::Contains("3: OnInit()")));
}

TEST(WindowSafetyTest, OnLoadMayAddAnotherController)
{
    RecordingController::Log log;
    UIWindow window;
    const auto one = std::make_shared<RecordingController>(log, "1");
    const auto two = std::make_shared<RecordingController>(log, "2");
    one->inHook = [&](const std::string& hook) {
        if (hook == "OnLoad")
            window.AddUIController(two);
    };
    window.AddUIController(one);
    EXPECT_THAT(log, ElementsAre("1: OnLoad()", "2: OnLoad()"));
    const HWND handle = window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, false, false);
    one->inHook = nullptr;
    ::DestroyWindow(handle);
}

TEST(WindowSafetyTest, OnDestroyMayAskForEverything)
{
    FrameHost host;
    host.Make();
    host.first->inHook = [&](const std::string& hook) {
        if (hook != "OnDestroy")
            return;
        host.window.Close();
        host.window.ShowWindow(true);
        host.window.AddUIController(std::make_shared<RecordingController>(host.log, "late"));
        ::DestroyWindow(host.handle);
    };
    host.Destroy();
    host.first->inHook = nullptr;
    EXPECT_FALSE(host.window.IsWindow());
}

TEST(WindowSafetyTest, AControllersEndMayAskItsWindow)
{
    class Asking : public UIController {
    public:
        explicit Asking(UIWindow& window) : m_window(window) {}
        ~Asking()
        {
            m_window.Close();
            m_window.AddUIController(std::make_shared<UIController>());
        }

    private:
        UIWindow& m_window;
    };
    UIWindow window;
    window.AddUIController(std::make_shared<Asking>(window));
    const HWND handle = window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, false, false);
    ::DestroyWindow(handle);
    EXPECT_FALSE(window.IsWindow());
}

TEST(WindowSafetyTest, ANotificationWhoseSenderIsDeletedGoesNoFurther)
{
    FrameHost host;
    host.Make();
    auto* const edit = host.Control(L"edit");
    auto& root = *static_cast<CContainerUI*>(host.Manager().GetRoot());
    root.SetDelayedDestroy(false);
    host.first->inHook = [&](const std::string& hook) {
        if (hook == "OnReturn")
            root.Remove(edit);
    };
    host.TakeLog();
    host.Manager().SendNotify(edit, L"return");
    EXPECT_THAT(host.log, ElementsAre("1: OnReturn(edit)"));
    host.first->inHook = nullptr;
}

TEST(WindowSafetyTest, OpeningAndClosing200TimesLeavesNoObject)
{
    const auto round = [] {
        FrameHost host;
        host.Make();
        host.window.ShowWindow(true);
        FrameHost::Pump();
        host.Destroy();
        FrameHost::Pump();
    };
    round();
    round();
    const int gdi = test::GdiObjects();
    const int windows = test::UserWindows();
    for (int i = 0; i < 200; ++i)
        round();
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(test::UserWindows(), windows);
}

} // namespace
