#include "support/ImportHook.h"
#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <type_traits>

using namespace DuiLib;
using test::FrameHost;
using test::kFrameSkin;
using test::RecordingController;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::wstring ClassOf(HWND window)
{
    wchar_t name[256]{};
    ::GetClassNameW(window, name, 256);
    return name;
}

// The object of a window.
WindowImplBaseEx& ObjectOf(HWND window)
{
    return *static_cast<WindowImplBaseEx*>(
        reinterpret_cast<CWindowWnd*>(::GetWindowLongPtrW(window, GWLP_USERDATA)));
}

class Parent {
public:
    Parent()
        : handle(::CreateWindowExW(0, L"STATIC", L"parent", WS_POPUP | WS_VISIBLE, 100, 100, 800,
                                   600, nullptr, nullptr, nullptr, nullptr))
    {
    }
    ~Parent() { ::DestroyWindow(handle); }
    Parent(const Parent&) = delete;
    Parent& operator=(const Parent&) = delete;

    const HWND handle;
};

// Creation

TEST(UIWindowTest, IsCreatedWithNameStylesAndParentAtNoSize)
{
    const Parent parent;
    UIWindow window;
    constexpr wchar_t kUnsized[] = L"<Window><VerticalLayout/></Window>";
    const HWND handle = window.Create(parent.handle, L"Main", kUnsized, WS_POPUP | WS_DISABLED,
                                      WS_EX_TOOLWINDOW, false, false);
    ASSERT_NE(handle, nullptr);
    wchar_t text[32]{};
    ::GetWindowTextW(handle, text, 32);
    EXPECT_STREQ(text, L"Main");
    EXPECT_EQ(::GetWindow(handle, GW_OWNER), parent.handle);
    EXPECT_TRUE(::GetWindowLongW(handle, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
    EXPECT_TRUE(::GetWindowLongW(handle, GWL_STYLE) & WS_DISABLED);
    EXPECT_FALSE(::IsWindowVisible(handle));
    RECT place{};
    ::GetWindowRect(handle, &place);
    EXPECT_TRUE(::IsRectEmpty(&place));
    ::DestroyWindow(handle);
}

TEST(UIWindowTest, EveryWindowHasAClassOfItsOwn)
{
    FrameHost first;
    FrameHost second;
    first.Make();
    second.Make();
    const std::wstring one = ClassOf(first.handle);
    const std::wstring two = ClassOf(second.handle);
    ASSERT_TRUE(one.starts_with(L"UIWindow-") && one.ends_with(L"-Test"));
    const int number = std::stoi(one.substr(9));
    EXPECT_EQ(two, L"UIWindow-" + std::to_wstring(number + 1) + L"-Test");
}

TEST(UIWindowTest, TheNumberIsNotGivenBack)
{
    int number = 0;
    {
        FrameHost host;
        host.Make();
        number = std::stoi(ClassOf(host.handle).substr(9));
    }
    FrameHost host;
    host.Make();
    EXPECT_EQ(std::stoi(ClassOf(host.handle).substr(9)), number + 1);
}

TEST(UIWindowTest, TheFirstTwoOfAProcessAreZeroAndOne)
{
    EXPECT_EXIT(
        {
            UIWindow first;
            UIWindow second;
            const auto make = [](UIWindow& window) {
                return ClassOf(
                    window.Create(nullptr, L"Main", kFrameSkin, WS_POPUP, 0, false, false));
            };
            const bool right =
                make(first) == L"UIWindow-0-Main" && make(second) == L"UIWindow-1-Main";
            std::_Exit(right ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(UIWindowTest, TheIdentifiersOfAProcessStartAtTheirFixedValues)
{
    EXPECT_EXIT(
        {
            FrameHost host;
            host.Make();
            const bool timers = host.first->SetTimer(1000, [] {}) == 1000 &&
                                host.second->SetTimer(1000, [] {}) == 1001 &&
                                RecordingController::GenerateTimerId() == 1002;
            const bool messages = RecordingController::GenerateMsgId() == 20000 &&
                                  RecordingController::GenerateMsgId() == 20001 &&
                                  RecordingController::GenerateMsgId() == 20002;
            std::_Exit(timers && messages ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(UIWindowTest, ANullNameIsAnEmptyOne)
{
    UIWindow window;
    const HWND handle = window.Create(nullptr, nullptr, kFrameSkin, WS_POPUP, 0, false, false);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(ClassOf(handle).ends_with(L"-"));
    ::DestroyWindow(handle);
}

TEST(UIWindowTest, ACreationThatFailsGivesNull)
{
    UIWindow window;
    const auto nobody = reinterpret_cast<HWND>(INT_PTR{0x7FFF0001});
    EXPECT_EQ(window.Create(nobody, L"Test", kFrameSkin, WS_CHILD, 0, false, false), nullptr);
    EXPECT_FALSE(window.IsWindow());
}

TEST(UIWindowTest, ASecondCreationGivesNullAndChangesNothing)
{
    const Parent parent;
    FrameHost host;
    host.Make(parent.handle);
    EXPECT_EQ(host.window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, true, false), nullptr);
    EXPECT_TRUE(host.window.IsWindow());
    host.window.ShowWindow(false);
    EXPECT_TRUE(::IsWindowVisible(parent.handle)) << "it has no mask";
    host.window.SendMessageW(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"still"));
    EXPECT_EQ(::GetWindowTextLengthW(host.handle), 5);
}

TEST(UIWindowTest, TheSkinsNameIsNotCopied)
{
    FrameHost host;
    std::wstring skin = L"<Window><VerticalLayout name=\"a\"/></Window>";
    host.first->ListenMessage(WM_NCCREATE, [&](WPARAM, LPARAM) {
        skin[skin.find(L'a', skin.find(L"name=\"") + 5)] = L'b'; // before it is read
    });
    host.Make(nullptr, skin.c_str());
    EXPECT_EQ(host.Control(L"a"), nullptr);
    EXPECT_NE(host.Control(L"b"), nullptr);
}

// Controllers

TEST(UIWindowTest, ControllersAreLoadedWhenTheyAreAddedAndInitialisedInOrderWhenItIsBuilt)
{
    RecordingController::Log log;
    const auto one = std::make_shared<RecordingController>(log, "1");
    const auto two = std::make_shared<RecordingController>(log, "2");
    HWND inHook = nullptr;
    CControlUI* found = nullptr;
    one->inHook = [&](const std::string& hook) {
        if (hook != "OnInit")
            return;
        inHook = one->GetHwnd();
        found = one->GetControl(L"save");
    };
    UIWindow window;
    window.AddUIController(one);
    window.AddUIController(two);
    EXPECT_THAT(log, ElementsAre("1: OnLoad()", "2: OnLoad()"));
    log.clear();
    const HWND handle = window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, false, false);
    const auto first = std::ranges::find(log, "1: OnInit()");
    const auto second = std::ranges::find(log, "2: OnInit()");
    ASSERT_NE(first, log.end());
    EXPECT_LT(first, second);
    EXPECT_EQ(inHook, handle);
    EXPECT_NE(found, nullptr);
    ::DestroyWindow(handle);
}

TEST(UIWindowTest, ALateControllerIsLoadedButNeverInitialised)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    const auto late = std::make_shared<RecordingController>(host.log, "3");
    host.window.AddUIController(late);
    EXPECT_THAT(host.TakeLog(), ElementsAre("3: OnLoad()"));
    EXPECT_TRUE(late->IsLoad());
    EXPECT_EQ(late->GetHwnd(), nullptr);
    host.Send(WM_KEYUP, 'A');
    EXPECT_THAT(host.log, ElementsAre("1: OnKeyUp(65)", "2: OnKeyUp(65)", "3: OnKeyUp(65)"));
}

TEST(UIWindowTest, ANullControllerIsIgnored)
{
    FrameHost host;
    host.window.AddUIController(nullptr);
    host.Make();
    host.Send(WM_KEYUP, 'A');
    EXPECT_TRUE(host.window.IsWindow());
}

TEST(UIWindowTest, ItsEndReleasesTheControllers)
{
    RecordingController::Log log;
    auto controller = std::make_shared<RecordingController>(log, "1");
    const std::weak_ptr<RecordingController> weak = controller;
    UIWindow window;
    window.AddUIController(std::move(controller));
    const HWND handle = window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, false, false);
    EXPECT_FALSE(weak.expired());
    ::DestroyWindow(handle);
    EXPECT_TRUE(weak.expired());
}

TEST(UIWindowTest, AWindowThatIsNeverCreatedIsNeverFreed)
{
    RecordingController::Log log;
    auto controller = std::make_shared<RecordingController>(log, "1");
    const std::weak_ptr<RecordingController> weak = controller;
    {
        UIWindow window;
        window.AddUIController(std::move(controller));
    }
    ASSERT_FALSE(weak.expired());
    EXPECT_TRUE(weak.lock()->IsLoad());
}

TEST(UIWindowTest, TheEndOfItsHandleLeavesTheWindow)
{
    HWND handle = nullptr;
    {
        UIWindow window;
        handle = window.Create(nullptr, L"Test", kFrameSkin, WS_POPUP, 0, false, false);
    }
    EXPECT_TRUE(::IsWindow(handle));
    ::DestroyWindow(handle);
}

TEST(UIWindowTest, ACopyIsAHandleOfTheSameWindow)
{
    const Parent parent;
    FrameHost host;
    host.Make(parent.handle);
    const UIWindow copied(host.window);
    UIWindow assigned;
    assigned = copied;
    EXPECT_TRUE(assigned.IsWindow());
    EXPECT_EQ(assigned.GetMaskWnd(), parent.handle);
    host.Destroy();
    EXPECT_FALSE(assigned.IsWindow());
}

// Operations

TEST(UIWindowTest, ShowsAndHidesOnlyItselfWithoutAMask)
{
    const Parent parent;
    FrameHost host;
    host.Make(parent.handle);
    host.window.ShowWindow(true);
    EXPECT_TRUE(::IsWindowVisible(host.handle));
    host.window.ShowWindow(false);
    EXPECT_FALSE(::IsWindowVisible(host.handle));
    EXPECT_TRUE(::IsWindowVisible(parent.handle));
    host.window.ShowTitleWindow(true, false);
    EXPECT_TRUE(::IsWindowVisible(host.handle));
    EXPECT_TRUE(::IsWindowVisible(parent.handle));
    EXPECT_EQ(host.window.GetMaskWnd(), parent.handle);
}

BOOL g_repaint = TRUE;
RECT g_place{};

BOOL WINAPI RecordMoveWindow(HWND, int x, int y, int width, int height, BOOL repaint)
{
    g_place = {x, y, width, height};
    g_repaint = repaint;
    return TRUE;
}

TEST(UIWindowTest, MovesWithoutRepainting)
{
    FrameHost host;
    host.Make();
    host.window.MoveWindow(10, 20, 300, 200);
    RECT place{};
    ::GetWindowRect(host.handle, &place);
    const RECT expected{10, 20, 310, 220};
    EXPECT_TRUE(::EqualRect(&place, &expected));

    test::ImportHook hook(L"Quillet.dll", "user32.dll", "MoveWindow", &RecordMoveWindow);
    host.window.MoveWindow(1, 2, 3, 4);
    const RECT asked{1, 2, 3, 4};
    EXPECT_TRUE(::EqualRect(&g_place, &asked));
    EXPECT_EQ(g_repaint, FALSE);
}

TEST(UIWindowTest, CentresItselfOnItsOwner)
{
    const Parent parent;
    FrameHost host;
    host.Make(parent.handle);
    host.window.MoveWindow(0, 0, 200, 100);
    host.window.CenterWindow();
    RECT place{};
    ::GetWindowRect(host.handle, &place);
    EXPECT_EQ(place.left, 100 + (800 - 200) / 2);
    EXPECT_EQ(place.top, 100 + (600 - 100) / 2);
}

TEST(UIWindowTest, CloseIsPosted)
{
    FrameHost host;
    host.Make();
    host.window.Close();
    EXPECT_TRUE(host.window.IsWindow());
    FrameHost::Pump();
    EXPECT_FALSE(host.window.IsWindow());
    EXPECT_FALSE(::IsWindow(host.handle));
}

TEST(UIWindowTest, ShowModalReturnsTheCodeOfAController)
{
    const Parent parent;
    FrameHost host;
    host.Make(parent.handle);
    const UINT timer = host.first->SetTimer(1, [&] {
        EXPECT_FALSE(::IsWindowEnabled(parent.handle));
        host.first->OnCloseX(5);
    });
    EXPECT_NE(timer, 0u);
    EXPECT_EQ(host.window.ShowModal(), 5u);
    EXPECT_TRUE(::IsWindowEnabled(parent.handle));
    EXPECT_FALSE(host.window.IsWindow());
}

TEST(UIWindowTest, ShowModalReturnsZeroWhenTheSystemClosesTheWindow)
{
    FrameHost host;
    host.Make();
    host.first->SetTimer(1, [&] { host.Send(WM_CLOSE); });
    EXPECT_EQ(host.window.ShowModal(), 0u);
}

TEST(UIWindowTest, PostsAndSendsMessages)
{
    FrameHost host;
    host.Make();
    ::SetWindowTextW(host.handle, L"four");
    EXPECT_EQ(host.window.SendMessageW(WM_GETTEXTLENGTH), 4);
    host.TakeLog();
    EXPECT_TRUE(host.window.PostMessageW(WM_KEYUP, 'A', 0));
    EXPECT_THAT(host.log, IsEmpty());
    FrameHost::Pump();
    EXPECT_THAT(host.log, ElementsAre("1: OnKeyUp(65)", "2: OnKeyUp(65)"));
}

TEST(UIWindowTest, SetWindowTopMostDoesNothing)
{
    FrameHost host;
    host.Make();
    host.window.SetWindowTopMost();
    EXPECT_FALSE(::GetWindowLongW(host.handle, GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST(UIWindowTest, AWindowThatHasEndedOrIsNotYetThereDoesNothing)
{
    FrameHost ended;
    ended.Make();
    ended.Destroy();
    FrameHost early;
    for (UIWindow* window : {&ended.window, &early.window}) {
        window->ShowWindow(true);
        window->ShowTitleWindow(false, true);
        window->CenterWindow();
        window->MoveWindow(0, 0, 10, 10);
        window->Close();
        window->SetWindowTopMost();
        EXPECT_EQ(window->ShowModal(), 0u);
        EXPECT_FALSE(window->IsWindow());
        EXPECT_EQ(window->GetMaskWnd(), nullptr);
        EXPECT_EQ(window->PostMessageW(WM_CLOSE), 0);
        EXPECT_EQ(window->SendMessageW(WM_CLOSE), 0);
    }
    ended.window.AddUIController(ended.first);
    EXPECT_FALSE(ended.first->IsLoad());
    EXPECT_EQ(ended.Make(), nullptr);
}

// Messages and notifications

struct CountingFilter : IMessageFilterUI {
    UINT message = 0;
    int seen = 0;
    bool handle = false;
    LRESULT MessageHandler(UINT what, WPARAM, LPARAM, bool& handled) override
    {
        if (what != message)
            return 0;
        ++seen;
        handled = handle;
        return 21;
    }
};

TEST(UIWindowTest, ThePreMessageFiltersSeeSentMessagesToo)
{
    FrameHost host;
    host.Make();
    CountingFilter filter;
    filter.message = WM_USER + 77;
    host.Manager().AddPreMessageFilter(&filter);
    host.Send(WM_USER + 77);
    EXPECT_EQ(filter.seen, 1);
    filter.handle = true;
    EXPECT_EQ(host.Send(WM_USER + 77), 21) << "the filter's answer is the result";
    host.Manager().RemovePreMessageFilter(&filter);
}

TEST(UIWindowTest, TheControllersComeBeforeThePreMessageFilters)
{
    FrameHost host;
    host.Make();
    CountingFilter filter;
    filter.message = WM_KEYUP;
    filter.handle = true;
    int seenBefore = -1;
    host.first->inHook = [&](const std::string&) { seenBefore = filter.seen; };
    host.Manager().AddPreMessageFilter(&filter);
    host.Send(WM_KEYUP, 'A');
    EXPECT_EQ(seenBefore, 0);
    EXPECT_EQ(filter.seen, 1);
    host.Manager().RemovePreMessageFilter(&filter);
}

TEST(UIWindowTest, AClickWithACallbackIsPassedOnToTheWindow)
{
    FrameHost host;
    host.Make();
    int clicks = 0;
    host.first->ListenClickEvent(host.Control(L"closebtn"), [&] { ++clicks; });
    host.Manager().SendNotify(host.Control(L"closebtn"), L"click");
    EXPECT_EQ(clicks, 1);
    FrameHost::Pump();
    EXPECT_FALSE(::IsWindow(host.handle)) << "the close button closes it all the same";
}

TEST(UIWindowTest, ANewDpiReachesEveryControllerInOrder)
{
    FrameHost host;
    host.Make();
    host.TakeLog();
    BOOL handled = FALSE;
    EXPECT_EQ(ObjectOf(host.handle).OnDPIChanged(WM_TIMER, 120, 0, handled), 0);
    EXPECT_FALSE(handled);
    EXPECT_THAT(host.log, ElementsAre("1: OnDPIChanged()", "2: OnDPIChanged()"));
}

TEST(UIWindowTest, AnAnnouncedDpiReachesTheControllersWithTheTimerOfTheWindow)
{
    FrameHost host;
    host.Make();
    RECT suggested{0, 0, 200, 100};
    host.Send(WM_DPICHANGED, MAKEWPARAM(120, 120), reinterpret_cast<LPARAM>(&suggested));
    host.TakeLog();
    host.Send(WM_TIMER, 3257);
    std::erase_if(host.log, [](const std::string& call) { return call.ends_with("OnSize()"); });
    EXPECT_THAT(host.log, ElementsAre("1: OnDPIChanged()", "2: OnDPIChanged()"));
}

TEST(UIWindowTest, TheHooksOfAnEndedWindowAreNotCalledAgain)
{
    FrameHost host;
    host.Make();
    host.Destroy();
    host.TakeLog();
    FrameHost::Pump();
    EXPECT_THAT(host.log, IsEmpty());
}

TEST(UIWindowTest, IsNoPolymorphicClass)
{
    static_assert(!std::is_polymorphic_v<UIWindow>);
    static_assert(std::is_copy_assignable_v<UIWindow>);
}

} // namespace
