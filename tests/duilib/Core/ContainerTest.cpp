#include "duilib/Core/ControlKit.h"
#include "support/FaultPlan.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::EventSink;
using test::Place;

namespace {

// Counts the living, and says its name when it dies.
class Mortal : public CControlUI {
public:
    explicit Mortal(int& alive) : m_alive(alive) { ++m_alive; }
    ~Mortal() override { --m_alive; }

private:
    int& m_alive;
};

class OpenContainer : public CContainerUI {
public:
    using CContainerUI::ChildWalk;
};

class ListItem : public CControlUI {
public:
    LPVOID GetInterface(LPCTSTR name) override
    {
        return std::wstring(name) == DUI_CTR_LISTITEM ? this : CControlUI::GetInterface(name);
    }
};

CControlUI* AcceptAny(CControlUI* control, LPVOID)
{
    return control;
}

class ContainerTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CContainerUI& container = host.Add<CContainerUI>();
    int alive = 0;

    CControlUI* AddNamed(LPCTSTR name)
    {
        auto* const child = new Mortal(alive);
        child->SetName(name);
        EXPECT_TRUE(container.Add(child));
        return child;
    }

    std::wstring Names() const
    {
        std::wstring names;
        for (int i = 0; i < container.GetCount(); ++i)
            names += container.GetItemAt(i)->GetName().GetData();
        return names;
    }
};

} // namespace

TEST_F(ContainerTest, AnswersToItsNames)
{
    EXPECT_STREQ(container.GetClass(), L"ContainerUI");
    EXPECT_EQ(container.GetInterface(L"Container"), &container);
    EXPECT_EQ(container.GetInterface(L"IContainer"), static_cast<IContainerUI*>(&container));
    EXPECT_EQ(container.GetInterface(L"Control"), static_cast<CControlUI*>(&container));
    EXPECT_EQ(container.GetInterface(L"VerticalLayout"), nullptr);
}

TEST_F(ContainerTest, KeepsItsChildrenInOrder)
{
    AddNamed(L"a");
    auto* const c = AddNamed(L"c");
    auto* const b = new Mortal(alive);
    b->SetName(L"b");
    EXPECT_TRUE(container.AddAt(b, 1));
    EXPECT_EQ(Names(), L"abc");
    EXPECT_EQ(container.GetItemIndex(c), 2);
    EXPECT_EQ(container.GetItemIndex(nullptr), -1);
    EXPECT_EQ(container.GetItemAt(3), nullptr);
    EXPECT_EQ(container.GetItemAt(-1), nullptr);
    EXPECT_TRUE(container.SetItemIndex(c, 0));
    EXPECT_EQ(Names(), L"cab");
    EXPECT_FALSE(container.SetItemIndex(c, 3));
    EXPECT_FALSE(container.SetItemIndex(nullptr, 0));
    EXPECT_EQ(Names(), L"cab");
}

TEST_F(ContainerTest, TakesNeitherNothingNorItselfNorAChildTwice)
{
    auto* const child = AddNamed(L"a");
    EXPECT_FALSE(container.Add(nullptr));
    EXPECT_FALSE(container.Add(&container));
    EXPECT_FALSE(container.Add(child));
    EXPECT_FALSE(container.AddAt(child, 0));
    auto other = std::make_unique<CControlUI>();
    EXPECT_FALSE(container.AddAt(other.get(), 2));
    EXPECT_FALSE(container.AddAt(other.get(), -1));
    EXPECT_EQ(container.GetCount(), 1);
}

TEST_F(ContainerTest, AChildAddedToAWindowIsInitialisedNamedAndLaidOut)
{
    host.Layout();
    EventSink initialised{[](void*) { return true; }};
    auto* const child = new CControlUI;
    child->SetName(L"late");
    child->OnInit += initialised.Delegate();
    container.Add(child);
    EXPECT_EQ(initialised.Calls(), 1);
    EXPECT_EQ(child->GetManager(), &host.Manager());
    EXPECT_EQ(child->GetParent(), &container);
    EXPECT_EQ(host.Manager().FindControl(L"late"), child);
    EXPECT_TRUE(container.IsUpdateNeeded());
    host.Layout();
    EXPECT_EQ(Place(child->GetPos()), Place(0, 0, 100, 60));
}

TEST_F(ContainerTest, ARemovedChildIsDeletedAfterTheMessage)
{
    auto* const child = AddNamed(L"a");
    EXPECT_TRUE(container.Remove(child));
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(container.GetCount(), 0);
    EXPECT_EQ(host.Manager().FindControl(L"a"), nullptr);
    host.Pump();
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(container.Remove(nullptr));
    EXPECT_FALSE(container.RemoveAt(0));
}

TEST_F(ContainerTest, ARemovedChildIsDeletedAtOnceWithoutDelay)
{
    AddNamed(L"a");
    AddNamed(L"b");
    container.SetDelayedDestroy(false);
    EXPECT_TRUE(container.RemoveAt(0));
    EXPECT_EQ(alive, 1);
    container.RemoveAll();
    EXPECT_EQ(alive, 0);
}

TEST(ContainerWithoutWindowTest, DeletesAtOnce)
{
    int alive = 0;
    CContainerUI container;
    container.Add(new Mortal(alive));
    container.RemoveAt(0);
    EXPECT_EQ(alive, 0);
}

TEST(ContainerWithoutWindowTest, TheEndOfAContainerIsTheEndOfItsChildren)
{
    int alive = 0;
    {
        CContainerUI container;
        auto* const inner = new CContainerUI;
        container.Add(inner);
        inner->Add(new Mortal(alive));
        inner->Add(new Mortal(alive));
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 0);
}

TEST(ContainerWithoutWindowTest, ChildrenThatItDoesNotOwnOutliveIt)
{
    int alive = 0;
    Mortal child(alive);
    {
        CContainerUI container;
        container.SetAutoDestroy(false);
        container.Add(&child);
        EXPECT_EQ(child.GetParent(), &container);
    }
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(child.GetParent(), nullptr);
}

TEST_F(ContainerTest, WithoutAutomaticDeletionAChildIsOnlyDetached)
{
    container.SetAutoDestroy(false);
    const std::unique_ptr<CControlUI> child(AddNamed(L"a"));
    child->SetTimer(1, 10);
    child->SetFocus();
    container.Remove(child.get());
    host.Pump();
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(child->GetManager(), nullptr);
    EXPECT_EQ(child->GetParent(), nullptr);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
    EXPECT_EQ(host.Manager().FindControl(L"a"), nullptr);
    container.SetAutoDestroy(true);
}

TEST_F(ContainerTest, AChildDetachedFromAHiddenContainerIsVisibleElsewhere)
{
    container.SetAutoDestroy(false);
    const std::unique_ptr<CControlUI> child(AddNamed(L"a"));
    container.SetVisible(false);
    EXPECT_FALSE(child->IsVisible());
    container.Remove(child.get());
    EXPECT_TRUE(child->IsVisible());
}

TEST_F(ContainerTest, RemoveAllEmptiesTheContainerBeforeAnyHandlerRuns)
{
    container.SetDelayedDestroy(false);
    int countSeen = -1;
    EventSink onDestroy{[&](void*) {
        countSeen = container.GetCount();
        return true;
    }};
    AddNamed(L"a")->OnDestroy += onDestroy.Delegate();
    AddNamed(L"b");
    container.RemoveAll();
    EXPECT_EQ(countSeen, 0);
    EXPECT_EQ(alive, 0);
}

TEST_F(ContainerTest, ADyingChildMayRemoveItsSiblings)
{
    container.SetDelayedDestroy(false);
    CControlUI* const a = AddNamed(L"a");
    CControlUI* const b = AddNamed(L"b");
    AddNamed(L"c");
    EventSink onDestroy{[&](void*) {
        container.Remove(b);
        return true;
    }};
    a->OnDestroy += onDestroy.Delegate();
    container.Remove(a);
    EXPECT_EQ(Names(), L"c");
    EXPECT_EQ(alive, 1);
}

TEST_F(ContainerTest, AHandlerMayRemoveEverythingDuringTheLayout)
{
    container.SetDelayedDestroy(false);
    CControlUI* const a = AddNamed(L"a");
    AddNamed(L"b");
    AddNamed(L"c");
    host.Layout();
    EventSink resized{[&](void*) {
        if (container.GetCount() == 3)
            container.RemoveAt(1);
        return true;
    }};
    a->OnSize += resized.Delegate();
    container.NeedUpdate();
    host.Layout();
    EXPECT_EQ(Names(), L"ac");
    EXPECT_EQ(alive, 2);
}

TEST_F(ContainerTest, AWalkMeetsEachChildOnceWhateverChanges)
{
    OpenContainer open;
    std::vector<CControlUI*> children;
    for (int i = 0; i < 4; ++i) {
        children.push_back(new Mortal(alive));
        open.Add(children.back());
    }
    std::vector<CControlUI*> met;
    OpenContainer::ChildWalk walk(open);
    while (CControlUI* const child = walk.Next()) {
        met.push_back(child);
        if (met.size() == 1) {
            open.AddAt(new Mortal(alive), 0); // before the walk: not met
            open.Remove(children[1]);
        } else if (met.size() == 2) {
            open.Remove(child);
            open.Add(new Mortal(alive));
        }
    }
    ASSERT_EQ(met.size(), 4u);
    EXPECT_EQ(met[0], children[0]);
    EXPECT_EQ(met[1], children[2]);
    EXPECT_EQ(met[2], children[3]);
    EXPECT_EQ(met[3], open.GetItemAt(open.GetCount() - 1));
}

TEST_F(ContainerTest, AWalkEndsWithItsContainer)
{
    auto open = std::make_unique<OpenContainer>();
    open->Add(new CControlUI);
    open->Add(new CControlUI);
    OpenContainer::ChildWalk walk(*open);
    EXPECT_NE(walk.Next(), nullptr);
    open.reset();
    EXPECT_FALSE(walk.IsAlive());
    EXPECT_EQ(walk.Next(), nullptr);
}

TEST_F(ContainerTest, AClickedChildMayRemoveItself)
{
    auto* const button = new CButtonUI;
    container.Add(button);
    host.Layout();
    EventSink listener{[&](void* argument) {
        if (static_cast<TNotifyUI*>(argument)->sType == DUI_MSGTYPE_CLICK)
            container.RemoveAll();
        return true;
    }};
    button->OnNotify += listener.Delegate();
    host.Click(10, 10);
    EXPECT_EQ(container.GetCount(), 0);
    host.Pump();
    host.Paint();
}

TEST_F(ContainerTest, AddingAndRemovingLeavesNoMemoryBehind)
{
    const auto cycle = [this] {
        for (int i = 0; i < 20; ++i)
            AddNamed(L"x");
        host.Layout();
        container.RemoveAll();
        host.Pump();
        host.Layout();
        host.Pump();
        host.ClearSent();
    };
    cycle();
    cycle();
    const int before = test::HeapBlocks();
    cycle();
    EXPECT_LE(test::HeapBlocks() - before, 0);
    EXPECT_EQ(alive, 0);
}

TEST_F(ContainerTest, VisibilityIsHandedDown)
{
    auto* const inner = new CContainerUI;
    container.Add(inner);
    auto* const leaf = new CControlUI;
    auto* const hidden = new CControlUI;
    inner->Add(leaf);
    inner->Add(hidden);
    hidden->SetVisible(false);
    container.SetVisible(false);
    EXPECT_FALSE(inner->IsVisible());
    EXPECT_FALSE(leaf->IsVisible());
    inner->SetVisible(false);
    container.SetVisible(true);
    EXPECT_FALSE(leaf->IsVisible());
    inner->SetVisible(true);
    EXPECT_TRUE(leaf->IsVisible());
    EXPECT_FALSE(hidden->IsVisible());
}

TEST_F(ContainerTest, AChildOfAHiddenContainerIsHiddenFromTheStart)
{
    container.SetVisible(false);
    auto* const child = AddNamed(L"a");
    EXPECT_FALSE(child->IsVisible());
    container.SetVisible(true);
    EXPECT_TRUE(child->IsVisible());
}

TEST_F(ContainerTest, AHiddenContainerTakesTheFocusFromItsChildren)
{
    auto* const child = AddNamed(L"a");
    host.Layout();
    child->SetFocus();
    ASSERT_EQ(host.Manager().GetFocus(), child);
    container.SetVisible(false);
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
    EXPECT_FALSE(child->IsFocused());
}

TEST_F(ContainerTest, ChildrenAndBarsFollowTheEnabledState)
{
    auto* const child = AddNamed(L"a");
    container.EnableScrollBar(true, true);
    container.SetEnabled(false);
    EXPECT_FALSE(child->IsEnabled());
    EXPECT_FALSE(container.GetVerticalScrollBar()->IsEnabled());
    EXPECT_FALSE(container.GetHorizontalScrollBar()->IsEnabled());
    container.SetEnabled(true);
    EXPECT_TRUE(child->IsEnabled());
}

TEST_F(ContainerTest, OnlyTheBarsFollowTheMouse)
{
    auto* const child = AddNamed(L"a");
    container.EnableScrollBar(true, true);
    container.SetMouseEnabled(false);
    EXPECT_TRUE(child->IsMouseEnabled());
    EXPECT_FALSE(container.GetVerticalScrollBar()->IsMouseEnabled());
}

TEST_F(ContainerTest, EveryChildGetsTheAreaInsideTheInsetWithinItsLimits)
{
    container.SetInset({10, 5, 20, 15});
    auto* const plain = AddNamed(L"a");
    auto* const limited = AddNamed(L"b");
    limited->SetMaxWidth(30);
    limited->SetMaxHeight(20);
    auto* const large = AddNamed(L"c");
    large->SetMinWidth(200);
    auto* const fixed = AddNamed(L"d");
    fixed->SetFixedWidth(5);
    fixed->SetPadding({3, 3, 3, 3});
    host.Layout();
    EXPECT_EQ(Place(plain->GetPos()), Place(10, 5, 80, 45));
    EXPECT_EQ(Place(limited->GetPos()), Place(10, 5, 40, 25));
    EXPECT_EQ(Place(large->GetPos()), Place(10, 5, 210, 45));
    EXPECT_EQ(Place(fixed->GetPos()), Place(10, 5, 80, 45));
    EXPECT_EQ(Place(container.GetClientPos()), Place(10, 5, 80, 45));
}

TEST_F(ContainerTest, ALayoutIsIdempotent)
{
    AddNamed(L"a")->SetMinHeight(500);
    container.EnableScrollBar(true, true);
    host.Layout();
    container.SetScrollPos({0, 30});
    const std::wstring before = test::Places(container);
    for (int i = 0; i < 3; ++i) {
        container.SetPos(container.GetPos(), true);
        EXPECT_EQ(test::Places(container), before);
        EXPECT_EQ(container.GetScrollPos().cy, 30);
    }
}

TEST_F(ContainerTest, AnInsetLargerThanTheContainerLeavesNoRoom)
{
    container.SetInset({200, 200, 200, 200});
    auto* const child = AddNamed(L"a");
    host.Layout();
    EXPECT_EQ(child->GetWidth(), 0);
    EXPECT_EQ(child->GetHeight(), 0);
    host.Paint();
}

TEST_F(ContainerTest, AttributesHaveTheirEffect)
{
    const struct {
        const wchar_t* name;
        const wchar_t* value;
        bool (*holds)(CContainerUI& container);
    } rows[] = {
        {L"inset", L"1,2,3,4",
         [](CContainerUI& c) { return Place(c.GetInset()) == Place(1, 2, 3, 4); }},
        {L"mousechild", L"false", [](CContainerUI& c) { return !c.IsMouseChildEnabled(); }},
        {L"vscrollbar", L"true",
         [](CContainerUI& c) { return c.GetVerticalScrollBar() != nullptr; }},
        {L"hscrollbar", L"true",
         [](CContainerUI& c) { return c.GetHorizontalScrollBar() != nullptr; }},
        {L"vscrollbarstyle", L"width=\"9\"",
         [](CContainerUI& c) {
             auto* const bar = c.GetVerticalScrollBar();
             return bar != nullptr && bar->GetFixedWidth() == 9;
         }},
        {L"hscrollbarstyle", L"height=\"8\"",
         [](CContainerUI& c) {
             auto* const bar = c.GetHorizontalScrollBar();
             return bar != nullptr && bar->IsHorizontal() && bar->GetFixedHeight() == 8;
         }},
        {L"childpadding", L"5", [](CContainerUI& c) { return c.GetChildPadding() == 5; }},
        {L"childalign", L"center", [](CContainerUI& c) { return c.GetChildAlign() == DT_CENTER; }},
        {L"childalign", L"right", [](CContainerUI& c) { return c.GetChildAlign() == DT_RIGHT; }},
        {L"childvalign", L"vcenter",
         [](CContainerUI& c) { return c.GetChildVAlign() == DT_VCENTER; }},
        {L"childvalign", L"bottom",
         [](CContainerUI& c) { return c.GetChildVAlign() == DT_BOTTOM; }},
        {L"scrollstepsize", L"33", [](CContainerUI& c) { return c.GetScrollStepSize() == 33; }},
        {L"fixedscrollbar", L"true", [](CContainerUI& c) { return c.IsFixedScrollbar(); }},
        {L"showscrollbar", L"false", [](CContainerUI& c) { return !c.IsShowScrollbar(); }},
        {L"bkcolor", L"#FF000001", [](CContainerUI& c) { return c.GetBkColor() == 0xFF000001; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name << L"=" << row.value);
        CContainerUI fresh;
        EXPECT_FALSE(row.holds(fresh));
        fresh.SetAttribute(row.name, row.value);
        EXPECT_TRUE(row.holds(fresh));
    }
}

TEST_F(ContainerTest, ChildrenAreReachedByNameAtAnyDepth)
{
    auto* const inner = new CContainerUI;
    inner->SetName(L"Box");
    container.Add(inner);
    auto* const leaf = new CControlUI;
    leaf->SetName(L"Leaf");
    inner->Add(leaf);
    container.SetName(L"self");
    EXPECT_EQ(container.FindSubControl(L"leaf"), leaf);
    EXPECT_EQ(container.FindSubControl(L"BOX"), inner);
    EXPECT_EQ(container.FindSubControl(L"self"), nullptr);
    EXPECT_EQ(container.FindSubControl(L""), nullptr);
    EXPECT_TRUE(container.SetSubControlText(L"leaf", L"text"));
    EXPECT_TRUE(container.SetSubControlFixedHeight(L"leaf", 7));
    EXPECT_TRUE(container.SetSubControlFixedWdith(L"leaf", 8));
    EXPECT_TRUE(container.SetSubControlUserData(L"leaf", L"data"));
    EXPECT_STREQ(container.GetSubControlText(L"leaf"), L"text");
    EXPECT_EQ(container.GetSubControlFixedHeight(L"leaf"), 7);
    EXPECT_EQ(container.GetSubControlFixedWdith(L"leaf"), 8);
    EXPECT_STREQ(container.GetSubControlUserData(L"leaf"), L"data");
    EXPECT_FALSE(container.SetSubControlText(L"nobody", L"text"));
    EXPECT_STREQ(container.GetSubControlText(L"nobody"), L"");
    EXPECT_EQ(container.GetSubControlFixedHeight(L"nobody"), -1);
}

TEST_F(ContainerTest, TheNextSelectableItemIsVisibleEnabledAndAListItem)
{
    container.Add(new CControlUI);
    auto* const disabled = new ListItem;
    auto* const hidden = new ListItem;
    container.Add(disabled);
    container.Add(new ListItem);
    container.Add(hidden);
    container.Add(new ListItem);
    disabled->SetEnabled(false);
    hidden->SetVisible(false);
    EXPECT_EQ(container.FindSelectable(0), 2);
    EXPECT_EQ(container.FindSelectable(2), 2);
    EXPECT_EQ(container.FindSelectable(3), 4);
    EXPECT_EQ(container.FindSelectable(3, false), 2);
    EXPECT_EQ(container.FindSelectable(1, false), -1);
    EXPECT_EQ(container.FindSelectable(99), 4);
    CContainerUI empty;
    EXPECT_EQ(empty.FindSelectable(0), -1);
}

class HitTestTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CContainerUI& outer = host.Add<CContainerUI>();

    CControlUI* AddAt(const RECT& place)
    {
        auto* const child = new CControlUI;
        outer.Add(child);
        m_places.push_back({child, place});
        host.Layout();
        for (const auto& [control, rect] : m_places)
            control->SetPos(rect);
        return child;
    }

    CControlUI* Hit(int x, int y) { return host.Manager().FindControl(POINT{x, y}); }

private:
    std::vector<std::pair<CControlUI*, RECT>> m_places;
};

TEST_F(HitTestTest, TheLastChildUnderThePointIsOnTop)
{
    auto* const below = AddAt({0, 0, 50, 50});
    auto* const above = AddAt({25, 25, 75, 50});
    EXPECT_EQ(Hit(10, 10), below);
    EXPECT_EQ(Hit(30, 30), above);
    EXPECT_EQ(Hit(90, 10), &outer);
    above->SetVisible(false);
    EXPECT_EQ(Hit(30, 30), below);
}

TEST_F(HitTestTest, AChildWithoutMouseIsTransparent)
{
    auto* const child = AddAt({0, 0, 50, 50});
    child->SetMouseEnabled(false);
    EXPECT_EQ(Hit(10, 10), &outer);
    outer.SetMouseEnabled(false);
    EXPECT_EQ(Hit(10, 10), host.Root());
    child->SetMouseEnabled(true);
    EXPECT_EQ(Hit(10, 10), child);
}

TEST_F(HitTestTest, AContainerMayHideItsChildrenFromTheMouse)
{
    AddAt({0, 0, 50, 50});
    outer.SetMouseChildEnabled(false);
    EXPECT_EQ(Hit(10, 10), &outer);
}

TEST_F(HitTestTest, ADisabledChildIsHit)
{
    auto* const child = AddAt({0, 0, 50, 50});
    child->SetEnabled(false);
    EXPECT_EQ(Hit(10, 10), child);
}

TEST_F(HitTestTest, OutsideTheChildAreaOnlyFloatingChildrenCount)
{
    outer.SetInset({20, 0, 0, 0});
    auto* const child = AddAt({0, 0, 50, 50});
    EXPECT_EQ(Hit(10, 10), &outer);
    EXPECT_EQ(Hit(30, 10), child);
    child->SetFloat(true);
    child->SetPos({0, 0, 50, 50});
    EXPECT_EQ(Hit(10, 10), child);
}

TEST_F(HitTestTest, ScrollBarsComeBeforeTheChildren)
{
    outer.EnableScrollBar(true, false);
    outer.SetFixedScrollbar(true);
    auto* const child = AddAt({0, 0, 100, 60});
    child->SetFloat(true);
    child->SetPos({0, 0, 100, 60});
    EXPECT_EQ(Hit(90, 30), outer.GetVerticalScrollBar());
    EXPECT_EQ(Hit(80, 30), child);
}

TEST_F(HitTestTest, APointOutsideTheContainerHitsNoChild)
{
    auto* const child = AddAt({0, 0, 100, 60});
    outer.CControlUI::SetPos({0, 0, 50, 60});
    EXPECT_EQ(Hit(60, 10), host.Root());
    EXPECT_EQ(Hit(40, 10), child);
}

TEST_F(HitTestTest, ASearchForOutdatedControlsStopsAtAnOutdatedContainer)
{
    auto* const child = AddAt({0, 0, 10, 10});
    child->NeedUpdate();
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_VISIBLE | UIFIND_UPDATETEST), child);
    outer.NeedUpdate();
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_VISIBLE | UIFIND_UPDATETEST), &outer);
}

TEST_F(HitTestTest, ASearchMayAskTheContainerFirstAndTheChildrenFromTheTop)
{
    auto* const first = AddAt({0, 0, 10, 10});
    auto* const last = AddAt({0, 0, 10, 10});
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_ALL), first);
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_TOP_FIRST), last);
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_ME_FIRST), &outer);
    outer.SetVisible(false);
    EXPECT_EQ(outer.FindControl(&AcceptAny, nullptr, UIFIND_VISIBLE), nullptr);
}

TEST(ContainerEndTest, NeedsNoMemoryAndEndsTheFirstChildFirst)
{
    struct Noting : CControlUI {
        Noting(std::string& ended, char name) : m_ended(ended), m_name(name) {}
        ~Noting() override { m_ended += m_name; }
        std::string& m_ended;
        char m_name;
    };
    std::string ended;
    auto container = std::make_unique<CContainerUI>();
    for (const char name : {'a', 'b', 'c'})
        container->Add(new Noting(ended, name));
    test::FaultPlan plan(test::Resource::Memory);
    plan.Start();
    container.reset();
    EXPECT_EQ(plan.Stop(), 0);
    EXPECT_EQ(ended, "abc");
}
