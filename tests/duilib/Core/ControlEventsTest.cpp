#include "duilib/Core/ControlKit.h"
#include "support/Cursors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::EventSink;

namespace {

// Writes down the events that reach it.
class EventLog : public CContainerUI {
public:
    std::vector<int> events;
    bool passOn = false;

    void DoEvent(TEventUI& event) override
    {
        events.push_back(event.Type);
        if (passOn)
            CContainerUI::DoEvent(event);
    }
};

class InitLog : public CContainerUI {
public:
    InitLog(std::wstring& log, LPCTSTR name) : m_log(log) { SetName(name); }
    void DoInit() override { m_log += L"do-" + std::wstring(GetName()) + L" "; }

private:
    std::wstring& m_log;
};

class ControlEventsTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    EventLog& parent = host.Add<EventLog>();
    CControlUI* control = new CControlUI;

    void SetUp() override
    {
        control->SetName(L"child");
        parent.Add(control);
        host.Layout();
        parent.events.clear();
        host.ClearSent();
    }

    static TEventUI MakeEvent(int type, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        TEventUI event{};
        event.Type = type;
        event.wParam = wParam;
        event.lParam = lParam;
        return event;
    }
};

} // namespace

TEST_F(ControlEventsTest, WhatAControlDoesNotUseReachesItsParent)
{
    for (const int type : {UIEVENT_MOUSEMOVE, UIEVENT_BUTTONDOWN, UIEVENT_BUTTONUP, UIEVENT_KEYDOWN,
                           UIEVENT_CHAR, UIEVENT_SCROLLWHEEL, UIEVENT_DBLCLICK, UIEVENT_MOUSEENTER,
                           UIEVENT_MOUSELEAVE, UIEVENT_MOUSEHOVER, UIEVENT_WINDOWSIZE,
                           UIEVENT_SYSKEY, UIEVENT_RBUTTONDOWN, UIEVENT_CONTEXTMENU}) {
        TEventUI event = MakeEvent(type);
        control->Event(event);
        ASSERT_FALSE(parent.events.empty()) << type;
        EXPECT_EQ(parent.events.back(), type);
        parent.events.clear();
    }
}

TEST_F(ControlEventsTest, WhatAControlUsesEndsThere)
{
    control->SetContextMenuUsed(true);
    for (const int type : {UIEVENT_SETCURSOR, UIEVENT_SETFOCUS, UIEVENT_KILLFOCUS, UIEVENT_TIMER,
                           UIEVENT_CONTEXTMENU}) {
        TEventUI event = MakeEvent(type);
        control->Event(event);
    }
    EXPECT_TRUE(parent.events.empty());
}

TEST_F(ControlEventsTest, AListenerMaySwallowAnEvent)
{
    bool answer = false;
    int type = 0;
    EventSink listener{[&](void* argument) {
        type = static_cast<TEventUI*>(argument)->Type;
        return answer;
    }};
    control->OnEvent += listener.Delegate();
    TEventUI event = MakeEvent(UIEVENT_BUTTONDOWN);
    control->Event(event);
    EXPECT_EQ(type, UIEVENT_BUTTONDOWN);
    EXPECT_TRUE(parent.events.empty());
    answer = true;
    control->Event(event);
    EXPECT_EQ(parent.events, std::vector<int>{UIEVENT_BUTTONDOWN});
}

TEST_F(ControlEventsTest, FocusEventsAreRemembered)
{
    TEventUI gain = MakeEvent(UIEVENT_SETFOCUS);
    control->Event(gain);
    EXPECT_TRUE(control->IsFocused());
    TEventUI loss = MakeEvent(UIEVENT_KILLFOCUS);
    control->Event(loss);
    EXPECT_FALSE(control->IsFocused());
}

TEST_F(ControlEventsTest, SetFocusGoesThroughTheWindow)
{
    control->SetFocus();
    EXPECT_EQ(host.Manager().GetFocus(), control);
    EXPECT_TRUE(control->IsFocused());
    EXPECT_EQ(host.Sent(L"setfocus").size(), 1u);
}

TEST_F(ControlEventsTest, ATimerEventIsNotifiedOnceWithItsNumber)
{
    control->SetTimer(7, 10);
    host.AdvanceFrames(1);
    const auto sent = host.Sent(L"timer");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, control);
    EXPECT_EQ(sent[0].wParam, 7u);
    EXPECT_TRUE(parent.events.empty());
}

TEST_F(ControlEventsTest, AContextMenuIsNotifiedOnlyWhenUsed)
{
    TEventUI event = MakeEvent(UIEVENT_CONTEXTMENU, 3, 4);
    control->Event(event);
    EXPECT_TRUE(host.Sent(L"menu").empty());
    EXPECT_EQ(parent.events, std::vector<int>{UIEVENT_CONTEXTMENU});
    control->SetContextMenuUsed(true);
    control->Event(event);
    const auto sent = host.Sent(L"menu");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, control);
    EXPECT_EQ(sent[0].wParam, 3u);
    EXPECT_EQ(sent[0].lParam, 4);
}

TEST_F(ControlEventsTest, NotificationsReachTheSendersListenersFirst)
{
    std::size_t deliveredBefore = 99;
    EventSink listener{[&](void* argument) {
        EXPECT_EQ(static_cast<TNotifyUI*>(argument)->pSender, control);
        deliveredBefore = host.Sent().size();
        return true;
    }};
    control->OnNotify += listener.Delegate();
    host.Manager().SendNotify(control, L"anything");
    EXPECT_EQ(listener.Calls(), 1);
    EXPECT_EQ(deliveredBefore, 0u);
    EXPECT_EQ(host.Sent(L"anything").size(), 1u);
}

TEST_F(ControlEventsTest, TheCursorOfAControlIsShown)
{
    control->SetCursor(DUI_HAND);
    TEventUI event = MakeEvent(UIEVENT_SETCURSOR);
    control->Event(event);
    EXPECT_TRUE(test::IsCursorShown(MAKEINTRESOURCEW(DUI_HAND)));
    control->SetCursor(0);
    control->Event(event);
    EXPECT_TRUE(test::IsCursorShown(MAKEINTRESOURCEW(DUI_ARROW)));
}

TEST_F(ControlEventsTest, AControlMayBeRemovedByItsOwnListener)
{
    EventSink remover{[&](void*) {
        parent.Remove(control);
        return true;
    }};
    control->OnEvent += remover.Delegate();
    TEventUI event = MakeEvent(UIEVENT_BUTTONDOWN);
    control->Event(event);
    EXPECT_EQ(parent.GetCount(), 0);
    host.Pump();
    EXPECT_EQ(remover.Calls(), 1);
}

TEST(ControlInitTest, ChildrenAreInitialisedBeforeTheirContainerAndTheRootNever)
{
    std::wstring log;
    const auto note = [&log](void* argument) {
        log += L"on-" + std::wstring(static_cast<CControlUI*>(argument)->GetName()) + L" ";
        return true;
    };
    EventSink listener{note};
    ControlHost host{50, 24};
    auto* const root = new InitLog(log, L"root");
    auto* const middle = new InitLog(log, L"middle");
    auto* const leaf = new InitLog(log, L"leaf");
    for (CControlUI* const control : {root, middle, leaf})
        control->OnInit += listener.Delegate();
    root->Add(middle);
    middle->Add(leaf);
    EXPECT_EQ(log, L"");
    host.Manager().AttachDialog(root);
    EXPECT_EQ(log, L"do-leaf on-leaf do-middle on-middle ");
    EXPECT_EQ(leaf->GetParent(), middle);
    EXPECT_EQ(leaf->GetManager(), &host.Manager());
}

TEST(ControlInitTest, DestructionIsAnnouncedWithTheControl)
{
    CControlUI* announced = nullptr;
    EventSink listener{[&](void* argument) {
        announced = static_cast<CControlUI*>(argument);
        return true;
    }};
    auto* const control = new CControlUI;
    control->OnDestroy += listener.Delegate();
    delete control;
    EXPECT_EQ(announced, control);
}
