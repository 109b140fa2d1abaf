#include "tests/quillet/frame/FrameHost.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

using namespace DuiLib;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using Log = test::RecordingController::Log;

struct MessageCase {
    const char* name;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    const char* call;
};

constexpr LPARAM kPoint = MAKELPARAM(static_cast<WORD>(-3), 250);

// In the order in which the window looks for them.
constexpr MessageCase kMessages[] = {
    {"Size", WM_SIZE, SIZE_RESTORED, MAKELPARAM(10, 10), "OnSize()"},
    {"Move", WM_MOVE, 0, kPoint, "OnMoveWnd()"},
    {"MouseMove", WM_MOUSEMOVE, 0, kPoint, "OnMouseMove(-3, 250)"},
    {"MouseHover", WM_MOUSEHOVER, 0, kPoint, "OnMouseHover(-3, 250)"},
    {"MouseLeave", WM_MOUSELEAVE, 0, kPoint, "OnMouseLeave(-3, 250)"},
    {"KeyDown", WM_KEYDOWN, 'A', 0, "OnKeyDown(65)"},
    {"KeyUp", WM_KEYUP, VK_F5, 0, "OnKeyUp(116)"},
    {"NcLButtonDown", WM_NCLBUTTONDOWN, HTNOWHERE, kPoint, "OnNcLButtonDown(-3, 250)"},
    {"LButtonDown", WM_LBUTTONDOWN, 0, kPoint, "OnLButtonDown(-3, 250)"},
    {"LButtonUp", WM_LBUTTONUP, 0, kPoint, "OnLButtonUp(-3, 250)"},
    {"RButtonDown", WM_RBUTTONDOWN, 0, kPoint, "OnRButtonDown(-3, 250)"},
    {"LButtonDblClk", WM_LBUTTONDBLCLK, 0, kPoint, "OnLButtonDblClk(-3, 250)"},
    {"ShowWindow", WM_SHOWWINDOW, TRUE, 0, "OnShowWindow(true)"},
    {"HideWindow", WM_SHOWWINDOW, FALSE, 0, "OnShowWindow(false)"},
    {"MenuClick", WM_USER + 3, 4711, 0, "OnMenuClick(4711)"},
    {"SetFocus", WM_SETFOCUS, 0, 0, "OnSetFocus(0)"},
    {"KillFocus", WM_KILLFOCUS, 0, 0, "OnKillFocus(0)"},
    {"Drag", 2024, 11, 12, "OnDrag(2024, 11, 12, 0)"},
    {"DragEnter", 2026, 11, 12, "OnDragEnter(2026, 11, 12, 0)"},
    {"DragLeave", 2027, 11, 12, "OnDragLeave(2027, 11, 12, 0)"},
    {"DragOver", 2028, 11, 12, "OnDragOver(2028, 11, 12, 0)"},
    {"DragRelease", 2029, 11, 12, "OnDragRelease(2029, 11, 12, 0)"},
    {"MouseWheel", WM_MOUSEWHEEL, 7864320, kPoint, "OnMouseWheel(7864320)"},
    {"MouseHWheel", WM_MOUSEHWHEEL, 7864320, kPoint, "OnMouseHWheel(7864320)"},
    {"PointerUp", WM_POINTERUP, 1, kPoint, "OnPointerUp(-3, 250)"},
    {"PointerDown", WM_POINTERDOWN, 1, kPoint, "OnPointerDown(-3, 250)"},
    {"PointerUpdate", WM_POINTERUPDATE, 1, kPoint, "OnPointerUpdate(-3, 250)"},
};

class MessageHookTest : public testing::TestWithParam<MessageCase> {
protected:
    test::FrameHost host;
};

TEST_P(MessageHookTest, ReachesEveryControllerInOrderWithItsArgument)
{
    const auto& row = GetParam();
    host.Make();
    host.TakeLog();
    host.Send(row.message, row.wParam, row.lParam);
    const std::string call = row.call;
    ASSERT_GE(host.log.size(), 2u);
    EXPECT_EQ(host.log[0], "1: " + call);
    EXPECT_EQ(host.log[1], "2: " + call);
}

TEST_P(MessageHookTest, IsNotOfferedToTheCallbacksOfMessages)
{
    const auto& row = GetParam();
    host.Make();
    bool called = false;
    host.first->ListenMessage(row.message, [&](WPARAM, LPARAM) { called = true; });
    host.Send(row.message, row.wParam, row.lParam);
    EXPECT_FALSE(called);
}

INSTANTIATE_TEST_SUITE_P(Hooks, MessageHookTest, testing::ValuesIn(kMessages),
                         [](const auto& test) { return test.param.name; });

TEST(ControllerHooksTest, DestroyReachesEveryControllerInOrder)
{
    test::FrameHost host;
    host.Make();
    host.TakeLog();
    host.Destroy();
    EXPECT_THAT(host.log, testing::IsSupersetOf({"1: OnDestroy()", "2: OnDestroy()"}));
    const auto first = std::ranges::find(host.log, "1: OnDestroy()");
    const auto second = std::ranges::find(host.log, "2: OnDestroy()");
    EXPECT_LT(first, second);
}

TEST(ControllerHooksTest, TheFocusHooksGetTheOtherWindow)
{
    test::FrameHost host;
    host.Make();
    host.TakeLog();
    const auto other = reinterpret_cast<WPARAM>(::GetDesktopWindow());
    host.Send(WM_KILLFOCUS, other);
    EXPECT_EQ(host.log.front(), "1: OnKillFocus(" + std::to_string(other) + ")");
}

struct NotificationCase {
    const wchar_t* type;
    const char* call;
};

constexpr NotificationCase kNotifications[] = {
    {L"menu", "OnMenu"},
    {L"return", "OnReturn"},
    {L"itemclick", "OnItemClick"},
    {L"itemdbclick", "OnItemDBClick"},
    {L"treeitemdbclick", "OnItemListDBClick"},
    {L"textchanged", "OnTextChanged"},
    {L"killfocus", "OnTextKillFocus"},
    {L"vk_back", "OnEditKeyBackSpace"},
    {L"escape", "OnEditKeyEscape"},
    {L"link", "OnLink"},
    {L"scroll", "OnScroll"},
};

class NotificationHookTest : public testing::TestWithParam<NotificationCase> {
protected:
    test::FrameHost host;
};

TEST_P(NotificationHookTest, ReachesEveryControllerInOrderWithItsSender)
{
    host.Make();
    host.TakeLog();
    host.Manager().SendNotify(host.Control(L"save"), GetParam().type);
    const std::string call = GetParam().call;
    EXPECT_THAT(host.log, ElementsAre("1: " + call + "(save)", "2: " + call + "(save)"));
}

TEST_P(NotificationHookTest, ComparesTheTypeExactly)
{
    host.Make();
    host.TakeLog();
    std::wstring upper = GetParam().type;
    upper[0] = static_cast<wchar_t>(::towupper(upper[0]));
    host.Manager().SendNotify(host.Control(L"save"), upper.c_str());
    EXPECT_THAT(host.log, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Hooks, NotificationHookTest, testing::ValuesIn(kNotifications),
                         [](const auto& test) { return std::string(test.param.call); });

TEST(ControllerHooksTest, ANotificationWithoutASenderReachesItsHook)
{
    test::FrameHost host;
    host.Make();
    host.TakeLog();
    host.Manager().SendNotify(nullptr, L"scroll");
    EXPECT_THAT(host.log, ElementsAre("1: OnScroll(null)", "2: OnScroll(null)"));
}

TEST(ControllerHooksTest, OtherNotificationsReachNoHook)
{
    test::FrameHost host;
    host.Make();
    host.TakeLog();
    for (const wchar_t* type : {L"timer", L"valuechanged", L"selectchanged", L"clicked", L""})
        host.Manager().SendNotify(host.Control(L"save"), type);
    EXPECT_THAT(host.log, IsEmpty());
}

TEST(ControllerHooksTest, AllMessagesInTurnReachAllHooksInTurn)
{
    test::FrameHost host;
    host.Make();
    Log expected;
    Log seen;
    for (const auto& row : kMessages) {
        host.TakeLog();
        host.Send(row.message, row.wParam, row.lParam);
        expected.push_back(std::string("1: ") + row.call);
        seen.push_back(host.log.front());
    }
    EXPECT_EQ(seen, expected);
}

// The default hooks of a controller that overrides nothing.
class PlainController : public UIController {
public:
    using UIController::OnDrag;
    using UIController::OnDragEnter;
    using UIController::OnDragLeave;
    using UIController::OnDragOver;
    using UIController::OnDragRelease;
};

TEST(ControllerHooksTest, TheDefaultDragHooksReturnZeroAndLeaveTheFlagAlone)
{
    PlainController controller;
    using Hook = LRESULT (PlainController::*)(UINT, WPARAM, LPARAM, int&);
    for (const Hook hook : {static_cast<Hook>(&PlainController::OnDrag),
                            static_cast<Hook>(&PlainController::OnDragEnter),
                            static_cast<Hook>(&PlainController::OnDragLeave),
                            static_cast<Hook>(&PlainController::OnDragOver),
                            static_cast<Hook>(&PlainController::OnDragRelease)}) {
        for (int handled : {0, 1, 5}) {
            const int before = handled;
            EXPECT_EQ((controller.*hook)(2024, 1, 2, handled), 0);
            EXPECT_EQ(handled, before);
        }
    }
}

TEST(ControllerHooksTest, AControllerThatOverridesNothingIsHarmless)
{
    UIWindow window;
    window.AddUIController(std::make_shared<UIController>());
    const HWND handle =
        window.Create(nullptr, L"Test", test::kFrameSkin, WS_POPUP, 0, false, false);
    ASSERT_NE(handle, nullptr);
    TDragDropUI drag{};
    for (const auto& row : kMessages) {
        const bool isDrag = row.message >= 2024 && row.message <= 2029;
        ::SendMessageW(handle, row.message, isDrag ? reinterpret_cast<WPARAM>(&drag) : row.wParam,
                       row.lParam);
    }
    EXPECT_TRUE(::IsWindow(handle));
    ::DestroyWindow(handle);
}

// The five drag messages.

TEST(DragHooksTest, AHandledMessageIsAnsweredWithZeroAndGoesNoFurther)
{
    test::FrameHost host;
    host.Make();
    struct Filter : IMessageFilterUI {
        int seen = 0;
        LRESULT MessageHandler(UINT message, WPARAM, LPARAM, bool&) override
        {
            seen += message == 2026;
            return 0;
        }
    } filter;
    host.Manager().AddPreMessageFilter(&filter);
    host.first->dragResult = 7;
    host.second->dragResult = 8;
    host.second->dragHandled = 1;
    EXPECT_EQ(host.Send(2026, 0, 0), 0);
    EXPECT_EQ(filter.seen, 0);
    host.second->dragHandled = 0;
    host.Send(2026, 0, 0);
    EXPECT_EQ(filter.seen, 1);
    host.Manager().RemovePreMessageFilter(&filter);
}

TEST(DragHooksTest, EveryControllerIsAskedAlsoWhenOneHasHandledTheMessage)
{
    test::FrameHost host;
    host.Make();
    host.TakeLog();
    host.first->dragHandled = 1;
    host.Send(2028, 0, 0);
    EXPECT_THAT(host.log,
                ElementsAre("1: OnDragOver(2028, 0, 0, 0)", "2: OnDragOver(2028, 0, 0, 1)"));
}

TEST(DragHooksTest, AnyValueButZeroCountsAsHandled)
{
    test::FrameHost host;
    host.Make();
    host.first->dragHandled = -1;
    host.first->dragResult = 9;
    EXPECT_EQ(host.Send(2024, 0, 0), 0);
}

TEST(DragHooksTest, TheAnswerTravelsInThePayload)
{
    test::FrameHost host;
    host.Make();
    class Copying : public UIController {
        LRESULT OnDragOver(UINT, WPARAM wParam, LPARAM, int& handled) override
        {
            *reinterpret_cast<TDragDropUI*>(wParam)->pdwEffect = DROPEFFECT_COPY;
            handled = 1;
            return 0;
        }
    };
    host.window.AddUIController(std::make_shared<Copying>());
    DWORD effect = DROPEFFECT_NONE;
    TDragDropUI drag{};
    drag.pdwEffect = &effect;
    host.Send(UIMSG_DRAGOVER, reinterpret_cast<WPARAM>(&drag), 0);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
}

TEST(DragHooksTest, TheHooksPairWithTheToolkitsMessagesInAscendingOrder)
{
    EXPECT_EQ(UIMSG_DRAG, 2024);
    EXPECT_EQ(UIMSG_DRAGENTER, 2026);
    EXPECT_EQ(UIMSG_DRAGLEAVE, 2027);
    EXPECT_EQ(UIMSG_DRAGOVER, 2028);
    EXPECT_EQ(UIMSG_DRAGRELEASE, 2029);
}

} // namespace
