#include "duilib/Core/ManagerKit.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Probe;
using test::RootOf;

namespace {

class ManagerNamesTest : public testing::Test {
protected:
    ControlHost host{100, 60};
    CPaintManagerUI& manager = host.Manager();
};

TEST_F(ManagerNamesTest, FindsByExactName)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"apple");
    EXPECT_EQ(manager.FindControl(L"apple"), &probe);
    EXPECT_EQ(manager.FindControl(L"Apple"), nullptr);
    EXPECT_EQ(manager.FindControl(L"app"), nullptr);
    EXPECT_EQ(manager.FindControl(L""), nullptr);
    EXPECT_EQ(manager.FindControl(static_cast<LPCTSTR>(nullptr)), nullptr);
}

TEST_F(ManagerNamesTest, ALaterControlTakesTheEntry)
{
    AddProbe(host, {0, 0, 10, 10}, L"a");
    Probe& second = AddProbe(host, {0, 0, 10, 10}, L"a");
    EXPECT_EQ(manager.FindControl(L"a"), &second);
}

TEST_F(ManagerNamesTest, ADyingControlDropsOnlyAnEntryOfItsOwn)
{
    Probe& first = AddProbe(host, {0, 0, 10, 10}, L"a");
    Probe& second = AddProbe(host, {0, 0, 10, 10}, L"a");
    RootOf(host).Remove(&first);
    host.Pump();
    EXPECT_EQ(manager.FindControl(L"a"), &second);
    RootOf(host).Remove(&second);
    EXPECT_EQ(manager.FindControl(L"a"), nullptr);
}

TEST_F(ManagerNamesTest, SetNameDoesNotRegister)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"before");
    probe.SetName(L"after");
    EXPECT_EQ(manager.FindControl(L"before"), &probe);
    EXPECT_EQ(manager.FindControl(L"after"), nullptr);
}

TEST_F(ManagerNamesTest, ARenamedControlLeavesNoEntryBehind)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"before");
    probe.SetName(L"after");
    RootOf(host).Remove(&probe);
    host.Pump();
    EXPECT_EQ(manager.FindControl(L"before"), nullptr);
}

TEST_F(ManagerNamesTest, InitControlsRegistersTheNewName)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"before");
    probe.SetName(L"after");
    EXPECT_TRUE(manager.InitControls(&probe));
    EXPECT_EQ(manager.FindControl(L"after"), &probe);
    EXPECT_EQ(manager.FindControl(L"before"), nullptr);
    EXPECT_FALSE(manager.InitControls(nullptr));
}

TEST_F(ManagerNamesTest, SubtreesAreRegisteredWithTheirContainer)
{
    auto* const box = new CContainerUI;
    auto* const inner = new CControlUI;
    box->SetName(L"box");
    inner->SetName(L"inner");
    box->Add(inner);
    EXPECT_EQ(manager.FindControl(L"inner"), nullptr);
    host.Adopt(box);
    EXPECT_EQ(manager.FindControl(L"box"), box);
    EXPECT_EQ(manager.FindControl(L"inner"), inner);
    RootOf(host).Remove(box);
    EXPECT_EQ(manager.FindControl(L"inner"), nullptr);
}

TEST_F(ManagerNamesTest, NothingIsFoundWithoutARoot)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"a");
    EXPECT_EQ(manager.FindControl(L"a"), &probe);
    delete host.Root();
    EXPECT_EQ(manager.FindControl(L"a"), nullptr);
    EXPECT_EQ(manager.FindSubControlByName(nullptr, L"a"), nullptr);
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"*"), nullptr);
    EXPECT_TRUE(manager.FindSubControlsByClass(nullptr, L"*")->IsEmpty());
}

TEST_F(ManagerNamesTest, ManyNamesAreAllFoundAgain)
{
    auto* const box = new CContainerUI;
    for (int index = 0; index < 2000; ++index) {
        auto* const control = new CControlUI;
        control->SetName((L"name" + std::to_wstring(index)).c_str());
        box->Add(control);
    }
    host.Adopt(box);
    for (int index = 0; index < 2000; ++index)
        ASSERT_EQ(manager.FindControl((L"name" + std::to_wstring(index)).c_str()),
                  box->GetItemAt(index));
}

TEST_F(ManagerNamesTest, SubControlsAreFoundByNameInAnyCase)
{
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"Apple");
    EXPECT_EQ(manager.FindSubControlByName(nullptr, L"aPPLE"), &probe);
    EXPECT_EQ(manager.FindSubControlByName(host.Root(), L"apple"), &probe);
    EXPECT_EQ(manager.FindSubControlByName(host.Root(), L"pear"), nullptr);
}

TEST_F(ManagerNamesTest, SubControlsAreFoundByExactClassAndIndex)
{
    Probe& first = AddProbe(host, {0, 0, 10, 10});
    Probe& second = AddProbe(host, {10, 0, 20, 10});
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"ProbeUI"), &first);
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"ProbeUI", 1), &second);
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"ProbeUI", 2), nullptr);
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"probeui"), nullptr);
    EXPECT_EQ(manager.FindSubControlByClass(nullptr, L"ProbeUI", -1), nullptr);
}

TEST_F(ManagerNamesTest, AStarMatchesEveryClass)
{
    AddProbe(host, {0, 0, 10, 10});
    AddProbe(host, {10, 0, 20, 10});
    EXPECT_EQ(manager.FindSubControlsByClass(nullptr, L"ProbeUI")->GetSize(), 2);
    EXPECT_EQ(manager.FindSubControlsByClass(nullptr, L"*")->GetSize(), 3);
}

TEST_F(ManagerNamesTest, FindsTheTopmostControlUnderAPoint)
{
    Probe& below = AddProbe(host, {0, 0, 50, 50});
    Probe& above = AddProbe(host, {20, 20, 40, 40});
    EXPECT_EQ(manager.FindControl(POINT{5, 5}), &below);
    EXPECT_EQ(manager.FindControl(POINT{25, 25}), &above);
    EXPECT_EQ(manager.FindControl(POINT{60, 55}), host.Root());
    EXPECT_EQ(manager.FindControl(POINT{200, 200}), nullptr);
    EXPECT_EQ(manager.FindControl(POINT{-1, -1}), nullptr);
}

TEST_F(ManagerNamesTest, PointSearchSkipsHiddenAndTransparentControls)
{
    Probe& below = AddProbe(host, {0, 0, 50, 50});
    Probe& above = AddProbe(host, {0, 0, 50, 50});
    above.SetMouseEnabled(false);
    EXPECT_EQ(manager.FindControl(POINT{5, 5}), &below);
    above.SetMouseEnabled(true);
    EXPECT_EQ(manager.FindControl(POINT{5, 5}), &above);
    above.SetVisible(false);
    EXPECT_EQ(manager.FindControl(POINT{5, 5}), &below);
    below.SetEnabled(false);
    EXPECT_EQ(manager.FindControl(POINT{5, 5}), &below);
}

TEST_F(ManagerNamesTest, PointSearchStaysBelowTheGivenControl)
{
    Probe& below = AddProbe(host, {0, 0, 50, 50});
    AddProbe(host, {0, 0, 50, 50});
    EXPECT_EQ(manager.FindSubControlByPoint(&below, {5, 5}), &below);
    EXPECT_EQ(manager.FindSubControlByPoint(&below, {55, 5}), nullptr);
}

TEST_F(ManagerNamesTest, OptionGroupsHoldEachMemberOnce)
{
    Probe& first = AddProbe(host, {0, 0, 10, 10});
    Probe& second = AddProbe(host, {0, 0, 10, 10});
    EXPECT_EQ(manager.GetOptionGroup(L"g"), nullptr);
    EXPECT_TRUE(manager.AddOptionGroup(L"g", &first));
    EXPECT_FALSE(manager.AddOptionGroup(L"g", &first));
    EXPECT_TRUE(manager.AddOptionGroup(L"g", &second));
    EXPECT_FALSE(manager.AddOptionGroup(L"", &second));
    EXPECT_FALSE(manager.AddOptionGroup(L"g", nullptr));
    ASSERT_NE(manager.GetOptionGroup(L"g"), nullptr);
    EXPECT_EQ(manager.GetOptionGroup(L"g")->GetSize(), 2);
    EXPECT_EQ(manager.GetOptionGroup(L"G"), nullptr);
    manager.RemoveOptionGroup(L"g", &first);
    EXPECT_EQ(manager.GetOptionGroup(L"g")->GetAt(0), &second);
    manager.RemoveOptionGroup(L"g", &second);
    EXPECT_EQ(manager.GetOptionGroup(L"g"), nullptr);
    manager.RemoveOptionGroup(L"unknown", &second);
    manager.AddOptionGroup(L"g", &first);
    manager.RemoveAllOptionGroups();
    EXPECT_EQ(manager.GetOptionGroup(L"g"), nullptr);
}

} // namespace
