#include "duilib/Core/ManagerKit.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::AddProbe;
using test::ControlHost;
using test::Probe;
using test::RootOf;
using test::ShortLivedWindow;

namespace {

TEST(ManagerLifeTest, StartsWithoutWindowAndRoot)
{
    CPaintManagerUI manager;
    EXPECT_EQ(manager.GetPaintWindow(), nullptr);
    EXPECT_EQ(manager.GetPaintDC(), nullptr);
    EXPECT_EQ(manager.GetTooltipWindow(), nullptr);
    EXPECT_EQ(manager.GetRoot(), nullptr);
    EXPECT_EQ(manager.GetFocus(), nullptr);
    EXPECT_FALSE(manager.IsValid());
    EXPECT_FALSE(manager.IsUpdateNeeded());
    EXPECT_EQ(manager.GetHoverTime(), 400);
    EXPECT_EQ(manager.GetMousePos().x, -1);
    EXPECT_EQ(manager.GetMousePos().y, -1);
    EXPECT_EQ(manager.GetOpacity(), 255);
    EXPECT_FALSE(manager.IsLayered());
    EXPECT_FALSE(manager.IsNoActivate());
    EXPECT_FALSE(manager.IsCaptured());
    EXPECT_EQ(manager.GetDPIObj()->GetScale(), 100u);
}

TEST(ManagerLifeTest, EverythingIsSafeWithoutAWindow)
{
    CPaintManagerUI manager;
    LRESULT result = 0;
    RECT rect{0, 0, 10, 10};
    CControlUI control;
    manager.Invalidate();
    manager.Invalidate(rect);
    manager.NeedUpdate();
    manager.SetCapture();
    manager.ReleaseCapture();
    manager.SetFocus(nullptr);
    manager.SetOpacity(128);
    manager.SetLayered(true);
    manager.SetInitSize(10, 10);
    EXPECT_FALSE(manager.IsCaptured());
    EXPECT_FALSE(manager.IsLayered());
    EXPECT_FALSE(manager.SetTimer(&control, 1, 10));
    EXPECT_FALSE(manager.MessageHandler(WM_PAINT, 0, 0, result));
    EXPECT_FALSE(manager.PreMessageHandler(WM_KEYDOWN, VK_TAB, 0, result));
    EXPECT_EQ(manager.GetClientSize().cx, 0);
    EXPECT_EQ(manager.FindControl(POINT{1, 1}), nullptr);
    EXPECT_EQ(manager.FindControl(L"a"), nullptr);
    EXPECT_FALSE(manager.SetNextTabControl());
    EXPECT_NE(manager.GetFont(0), nullptr);
}

TEST(ManagerLifeTest, RootWithoutAWindowIsDeletedWithTheManager)
{
    int deaths = 0;
    {
        CPaintManagerUI manager;
        auto* const root = new Probe;
        root->deaths = &deaths;
        EXPECT_TRUE(manager.AttachDialog(root));
        EXPECT_EQ(manager.GetRoot(), root);
        EXPECT_FALSE(manager.IsValid());
    }
    EXPECT_EQ(deaths, 1);
}

TEST(ManagerLifeTest, InitBindsWindowNameAndList)
{
    const ControlHost host(40, 30);
    CPaintManagerUI manager;
    const int before = CPaintManagerUI::GetPaintManagers()->GetSize();
    manager.Init(host.Window(), L"second");
    EXPECT_EQ(manager.GetPaintWindow(), host.Window());
    EXPECT_NE(manager.GetPaintDC(), nullptr);
    EXPECT_STREQ(manager.GetName(), L"second");
    EXPECT_EQ(CPaintManagerUI::GetPaintManager(L"second"), &manager);
    EXPECT_EQ(CPaintManagerUI::GetPaintManager(L"Second"), nullptr);
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), before + 1);
    manager.Init(host.Window());
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), before + 1);
    EXPECT_STREQ(manager.GetName(), L"");
}

TEST(ManagerLifeTest, TheEndLeavesTheList)
{
    const int before = CPaintManagerUI::GetPaintManagers()->GetSize();
    {
        const ControlHost host(40, 30);
        EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), before + 1);
    }
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), before);
    EXPECT_EQ(CPaintManagerUI::GetPaintManager(L"host"), nullptr);
}

TEST(ManagerLifeTest, InitDropsTheAssetsOfAnEarlierLife)
{
    ControlHost host(40, 30);
    auto& manager = host.Manager();
    Probe& probe = AddProbe(host, {0, 0, 10, 10});
    manager.AddFont(1, L"Arial", 12, false, false, false, false);
    manager.AddStyle(L"s", L"text=\"a\"");
    manager.AddDefaultAttributeList(L"Button", L"text=\"a\"");
    manager.AddWindowCustomAttribute(L"a", L"b");
    manager.AddOptionGroup(L"g", &probe);
    manager.AddImage(L"i", ::CreateBitmap(2, 2, 1, 32, nullptr), 2, 2, false);
    manager.SetTimer(&probe, 1, 1000);
    manager.Init(host.Window(), L"host");
    EXPECT_EQ(manager.GetCustomFontCount(), 0u);
    EXPECT_EQ(manager.GetStyle(L"s"), nullptr);
    EXPECT_EQ(manager.GetDefaultAttributeList(L"Button"), nullptr);
    EXPECT_EQ(manager.GetWindowCustomAttribute(L"a"), nullptr);
    EXPECT_EQ(manager.GetOptionGroup(L"g"), nullptr);
    EXPECT_EQ(manager.GetImage(L"i"), nullptr);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_TRUE(manager.SetTimer(&probe, 1, 1000));
}

TEST(ManagerLifeTest, AttachDialogReplacesTheRootAndDeletesTheOldOneLater)
{
    ControlHost host(40, 30);
    int deaths = 0;
    auto* const old = new Probe;
    old->deaths = &deaths;
    host.Manager().AttachDialog(old);
    host.Pump();
    host.Manager().AttachDialog(new CContainerUI);
    EXPECT_EQ(deaths, 0);
    host.Pump();
    EXPECT_EQ(deaths, 1);
}

TEST(ManagerLifeTest, AttachDialogRefusesNull)
{
    ControlHost host(40, 30);
    CControlUI* const root = host.Root();
    EXPECT_FALSE(host.Manager().AttachDialog(nullptr));
    EXPECT_EQ(host.Root(), root);
}

TEST(ManagerLifeTest, AttachingTheRootAgainKeepsIt)
{
    ControlHost host(40, 30);
    int deaths = 0;
    auto* const root = new Probe;
    root->deaths = &deaths;
    host.Manager().AttachDialog(root);
    EXPECT_TRUE(host.Manager().AttachDialog(root));
    host.Pump();
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(host.Root(), root);
}

TEST(ManagerLifeTest, AttachDialogDropsTheFocusWithANotification)
{
    ControlHost host(40, 30);
    Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"a");
    probe.SetFocus();
    host.ClearSent();
    host.Manager().AttachDialog(new CContainerUI);
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
    ASSERT_EQ(host.Sent(L"killfocus").size(), 1u);
    EXPECT_EQ(host.Sent(L"killfocus")[0].senderName, L"a");
}

TEST(ManagerLifeTest, DeletingTheRootOutsideLeavesAnEmptyWindow)
{
    ControlHost host(40, 30);
    delete host.Root();
    EXPECT_EQ(host.Root(), nullptr);
    EXPECT_FALSE(host.Manager().IsValid());
    host.MoveMouse(5, 5);
    host.Click(5, 5);
    host.Send(WM_SIZE, 0, MAKELPARAM(40, 30));
    host.Layout();
}

TEST(ManagerLifeTest, AControlThatIsDeletedLaterMayLeaveAnotherOneBehind)
{
    class Last : public CControlUI {
    public:
        explicit Last(int& ended) : m_ended(ended) {}
        ~Last() override { ++m_ended; }

    private:
        int& m_ended;
    };
    class First : public CControlUI {
    public:
        First(CPaintManagerUI& manager, int& ended) : m_owner(manager), m_ended(ended) {}
        ~First() override
        {
            ++m_ended;
            m_owner.AddDelayedCleanup(new Last(m_ended));
        }

    private:
        CPaintManagerUI& m_owner;
        int& m_ended;
    };
    ControlHost host(50, 50);
    int ended = 0;
    host.Manager().AddDelayedCleanup(new First(host.Manager(), ended));
    host.Pump();
    EXPECT_EQ(ended, 2);
}

TEST(ManagerLifeTest, SizesOfTheWindowAreDesignPixels)
{
    ControlHost host(40, 30, 144);
    auto& manager = host.Manager();
    RECT box{4, 6, 8, 10};
    RECT caption{2, 4, 6, -1};
    manager.SetSizeBox(box);
    manager.SetCaptionRect(caption);
    manager.SetRoundCorner(6, 8);
    manager.SetMinInfo(100, 50);
    manager.SetMaxInfo(200, 150);
    EXPECT_EQ(manager.GetSizeBox().left, 6);
    EXPECT_EQ(manager.GetSizeBox().top, 9);
    EXPECT_EQ(manager.GetSizeBox().right, 12);
    EXPECT_EQ(manager.GetSizeBox().bottom, 15);
    EXPECT_EQ(manager.GetCaptionRect().left, 3);
    EXPECT_LT(manager.GetCaptionRect().bottom, 0);
    EXPECT_EQ(manager.GetRoundCorner().cx, 9);
    EXPECT_EQ(manager.GetMinInfo().cx, 150);
    EXPECT_EQ(manager.GetMaxInfo().cy, 225);
}

TEST(ManagerLifeTest, InitSizeSizesTheWindowOnlyWithoutARoot)
{
    bool gone = false;
    auto* const window = new ShortLivedWindow(&gone);
    window->m_manager.SetInitSize(120, 90);
    RECT place{};
    ::GetWindowRect(window->GetHWND(), &place);
    EXPECT_EQ(place.right - place.left, 120);
    EXPECT_EQ(place.bottom - place.top, 90);

    window->m_manager.AttachDialog(new CContainerUI);
    window->m_manager.SetInitSize(60, 40);
    ::GetWindowRect(window->GetHWND(), &place);
    EXPECT_EQ(place.right - place.left, 120);
    EXPECT_EQ(window->m_manager.GetInitSize().cx, 60);
    ::DestroyWindow(window->GetHWND());
    EXPECT_TRUE(gone);
}

TEST(ManagerLifeTest, InitSizeSizesANewWindowWhateverTheOneBeforeShowed)
{
    ControlHost first(40, 30);
    ControlHost second(50, 60);
    const auto sizeOf = [](HWND window) {
        RECT place{};
        ::GetWindowRect(window, &place);
        return std::pair(place.right - place.left, place.bottom - place.top);
    };
    CPaintManagerUI manager;
    manager.Init(first.Window());
    manager.AttachDialog(new CContainerUI);
    manager.Init(second.Window());
    manager.SetInitSize(120, 90);
    EXPECT_EQ(sizeOf(second.Window()), std::pair(120L, 90L));
    manager.AttachDialog(new CContainerUI);
    manager.SetInitSize(80, 70);
    EXPECT_EQ(sizeOf(second.Window()), std::pair(120L, 90L));
}

TEST(ManagerLifeTest, TheWindowMayGoBeforeTheManager)
{
    ControlHost host(40, 30);
    Probe& probe = AddProbe(host, {0, 0, 10, 10});
    probe.SetTimer(1, 1000);
    ::DestroyWindow(host.Window());
    EXPECT_FALSE(host.Manager().IsValid());
    EXPECT_FALSE(probe.SetTimer(2, 1000));
    probe.NeedUpdate();
    probe.Invalidate();
    host.Manager().SetFocus(&probe);
    host.Manager().SetDPI(144);
    EXPECT_EQ(host.Manager().GetClientSize().cx, 0);
}

TEST(ManagerLifeTest, WindowsComeAndGoWithoutLeavingObjects)
{
    const auto cycle = [] {
        ControlHost host(60, 40);
        auto& manager = host.Manager();
        manager.AddFont(1, L"Arial", 12, true, false, false, false);
        manager.SetDefaultFont(L"Arial", 14, false, false, false, false);
        manager.AddImage(L"i", ::CreateBitmap(2, 2, 1, 32, nullptr), 2, 2, false);
        AddProbe(host, {0, 0, 10, 10}, L"probe").SetBkColor(0xFF112233);
        manager.GetFontInfo(1);
        host.Paint();
        manager.SetDPI(144);
        host.Paint();
        manager.AttachDialog(new CContainerUI);
    };
    cycle();
    const int objects = test::GdiObjects();
    const int windows = test::UserWindows();
    for (int round = 0; round < 5; ++round)
        cycle();
    EXPECT_EQ(test::GdiObjects(), objects);
    EXPECT_EQ(test::UserWindows(), windows);
}

TEST(ManagerLifeTest, LifeLeavesNoHeapBlocks)
{
    const auto cycle = [] {
        ControlHost host(60, 40);
        auto& manager = host.Manager();
        Probe& probe = AddProbe(host, {0, 0, 10, 10}, L"probe");
        manager.AddStyle(L"s", L"text=\"a\"");
        manager.AddStyle(L"s", L"text=\"b\"");
        manager.AddDefaultAttributeList(L"Button", L"text=\"a\"");
        manager.AddOptionGroup(L"g", &probe);
        manager.GetDrawInfo(L"a.png", L"fade='10'");
        manager.AddFont(1, L"Arial", 12, true, false, false, false);
        manager.SendNotify(&probe, L"x", 0, 0, true);
        RootOf(host).Remove(&probe);
        host.Paint();
    };
    cycle();
    cycle();
    const int blocks = test::HeapBlocks();
    for (int round = 0; round < 10; ++round)
        cycle();
    EXPECT_LE(test::HeapBlocks(), blocks + 5);
}

} // namespace
