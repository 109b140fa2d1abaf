#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <cstring>
#include <new>
#include <string>

namespace test {
namespace {

using namespace DuiLib;

constexpr Argb kOnBlue{0xFF007DFF};
constexpr Argb kOffGray{0xFFDEDEDE};
constexpr Argb kDisabledGray{0xFFCCCCCC};
constexpr Argb kKnobWhite{0xFFFFFFFF};
constexpr Argb kBackgroundRed{0xFFFF0000};

constexpr wchar_t kToggled[] = L"UIToggleSwitch_Toggled";

constexpr int kMiddle = 11; // the row through the knob's centre
constexpr int kTravel = 25; // pixels between the knob's resting places
constexpr int kFrames = 13; // 12 and the one at the start

// 50 x 24 pixels: the knob is 17 wide and 3 from the edges.
class ToggleSwitchTest : public testing::Test {
protected:
    // Where the knob begins in its middle row.
    static int KnobLeft(const Picture& picture)
    {
        for (int x = 1; x < picture.Width(); ++x)
            if (picture.At(x, kMiddle) == kKnobWhite)
                return x;
        return -1;
    }
    static int KnobWidth(const Picture& picture)
    {
        // Beyond the track the window may be white too.
        return picture.Count(kKnobWhite, RECT{1, kMiddle, picture.Width() - 3, kMiddle + 1});
    }
    static bool IsLighter(Argb lighter, Argb darker)
    {
        return (lighter.value & 0xFF) > (darker.value & 0xFF) ||
               (lighter.value & 0xFF00) > (darker.value & 0xFF00);
    }

    ControlHost host{50, 24};
    CToggleSwitchUI& toggle = host.Add<CToggleSwitchUI>();
};

TEST_F(ToggleSwitchTest, AnswersItsNames)
{
    EXPECT_STREQ(toggle.GetClass(), L"ToggleSwitchUI");
    EXPECT_EQ(toggle.GetInterface(L"ToggleSwitch"), &toggle);
    EXPECT_EQ(toggle.GetInterface(L"toggleswitch"), &toggle);
    EXPECT_EQ(toggle.GetInterface(L"Control"), static_cast<CControlUI*>(&toggle));
    EXPECT_EQ(toggle.GetInterface(L"Button"), nullptr);
}

TEST_F(ToggleSwitchTest, IsMadeByItsFunction)
{
    CControlUI* const made = CToggleSwitchUI::CreateControl();
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->GetClass(), L"ToggleSwitchUI");
    delete made;
}

TEST_F(ToggleSwitchTest, ShowsTheHandWhileEnabled)
{
    EXPECT_EQ(toggle.GetCursor(), DUI_HAND);
    EXPECT_EQ(toggle.GetControlFlags(), UINT{UIFLAG_SETCURSOR});
    toggle.SetEnabled(false);
    EXPECT_EQ(toggle.GetControlFlags(), 0u);
}

TEST_F(ToggleSwitchTest, HasARedBackgroundThatItsFaceCovers)
{
    EXPECT_EQ(toggle.GetBkColor(), 0xFFFF0000u);
    EXPECT_EQ(host.Paint().Count(kBackgroundRed), 0);
}

TEST_F(ToggleSwitchTest, IsOffAtFirst)
{
    EXPECT_FALSE(toggle.IsOn());
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(11, kMiddle), kKnobWhite);
    EXPECT_EQ(picture.At(36, kMiddle), kOffGray);
}

TEST_F(ToggleSwitchTest, OnShowsABlueTrackWithTheKnobAtTheRight)
{
    toggle.SetOn(true);
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(20, kMiddle), kOnBlue);
    EXPECT_EQ(picture.At(36, kMiddle), kKnobWhite);
}

TEST_F(ToggleSwitchTest, TheKnobKeepsThreePixelsFromTheEdges)
{
    const Picture off = host.Paint();
    toggle.SetOn(true);
    const Picture on = host.Paint();
    EXPECT_NEAR(KnobLeft(off), 3, 1);
    EXPECT_NEAR(KnobWidth(off), 17, 1);
    EXPECT_EQ(KnobWidth(on), KnobWidth(off));
    EXPECT_EQ(KnobLeft(on) - KnobLeft(off), kTravel);
    EXPECT_NE(off.At(11, 1), kKnobWhite);
    EXPECT_EQ(off.At(11, 5), kKnobWhite);
}

TEST_F(ToggleSwitchTest, TheTrackIsAPill)
{
    const Picture picture = host.Paint();
    const Argb outside = picture.At(0, 0);
    EXPECT_NE(outside, kOffGray);
    EXPECT_EQ(picture.At(0, 23), outside);
    EXPECT_EQ(picture.At(49, 0), outside);
    EXPECT_EQ(picture.At(25, 1), kOffGray);
    EXPECT_EQ(picture.At(25, 21), kOffGray);
    EXPECT_EQ(picture.At(2, kMiddle), kOffGray);
    EXPECT_EQ(picture.At(46, kMiddle), kOffGray);
}

TEST_F(ToggleSwitchTest, TheKnobCastsAShadowToTheRightAndBelow)
{
    const Picture picture = host.Paint();
    // The shadow ends before the middle of the track, the untouched track shows beyond.
    EXPECT_TRUE(IsLighter(kOffGray, picture.At(21, kMiddle + 3)));
    EXPECT_EQ(picture.At(30, kMiddle + 3), kOffGray);
    EXPECT_EQ(picture.At(12, 1), kOffGray);
}

TEST_F(ToggleSwitchTest, PaintsTheSameAgainAndAtAnotherSize)
{
    const Picture first = host.Paint();
    EXPECT_EQ(host.Paint(), first);

    host.Resize(80, 40);
    host.Paint();
    host.Resize(50, 24);
    EXPECT_EQ(host.Paint(), first);
}

TEST_F(ToggleSwitchTest, PaintsWhereItStands)
{
    ControlHost wide(70, 44);
    auto& other = wide.Add<CToggleSwitchUI>();
    other.SetPos({10, 15, 60, 39});
    const Picture moved = wide.Paint();
    const Picture plain = [] {
        ControlHost fresh(50, 24);
        fresh.Add<CToggleSwitchUI>();
        return fresh.Paint();
    }();
    for (int x = 6; x < 44; ++x)
        EXPECT_EQ(moved.At(x + 10, kMiddle + 15), plain.At(x, kMiddle)) << x;
}

TEST_F(ToggleSwitchTest, DisabledIsGrayWhateverItsState)
{
    toggle.SetEnabled(false);
    EXPECT_EQ(host.Paint().At(36, kMiddle), kDisabledGray);
    toggle.SetOn(true);
    EXPECT_EQ(host.Paint().At(20, kMiddle), kDisabledGray);
}

TEST_F(ToggleSwitchTest, HoveringLightensTheWholeTrackEvenly)
{
    host.MoveMouse(25, 12);
    const Picture picture = host.Paint();
    const Argb sheen = picture.At(25, 1);
    EXPECT_TRUE(IsLighter(sheen, kOffGray));
    EXPECT_EQ(picture.At(45, kMiddle), sheen); // the right cap
    EXPECT_EQ(picture.At(30, kMiddle), sheen); // where cap and middle overlap
    EXPECT_EQ(picture.At(2, kMiddle), sheen);  // the left cap
    // 0x44 of white over 0xDE
    EXPECT_NEAR(static_cast<int>(sheen.value & 0xFF), 0xE7, 1);
}

TEST_F(ToggleSwitchTest, LeavingEndsTheSheen)
{
    host.MoveMouse(25, 12);
    host.LeaveMouse();
    EXPECT_EQ(host.Paint().At(25, 1), kOffGray);
}

TEST_F(ToggleSwitchTest, PressingEndsTheSheenUntilTheRelease)
{
    toggle.SetToggleOnClick(false);
    host.Press(25, 12);
    EXPECT_EQ(host.Paint().At(25, 1), kOffGray);
    host.Release(25, 12);
    EXPECT_TRUE(IsLighter(host.Paint().At(25, 1), kOffGray));
}

TEST_F(ToggleSwitchTest, ClickFlipsTheSwitchAndNotifiesOnce)
{
    host.Click(25, 12);

    EXPECT_TRUE(toggle.IsOn());
    const auto sent = host.Sent(kToggled);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, &toggle);
    EXPECT_EQ(sent[0].wParam, 1u);
    EXPECT_EQ(sent[0].lParam, 0);

    host.Click(25, 12);
    EXPECT_FALSE(toggle.IsOn());
    ASSERT_EQ(host.Sent(kToggled).size(), 2u);
    EXPECT_EQ(host.Sent(kToggled)[1].wParam, 0u);
}

TEST_F(ToggleSwitchTest, ReleasingOutsideDoesNothing)
{
    host.Press(25, 12);
    host.Release(200, 12);
    EXPECT_FALSE(toggle.IsOn());
    EXPECT_TRUE(host.Sent(kToggled).empty());
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ToggleSwitchTest, NotifiesAfterAClickThatDoesNotToggle)
{
    toggle.SetToggleOnClick(false);
    host.Click(25, 12);
    EXPECT_FALSE(toggle.IsOn());
    ASSERT_EQ(host.Sent(kToggled).size(), 1u);
    EXPECT_EQ(host.Sent(kToggled)[0].wParam, 0u);

    toggle.SetOn(true);
    host.Click(25, 12);
    EXPECT_EQ(host.Sent(kToggled)[1].wParam, 1u);
}

TEST_F(ToggleSwitchTest, DisabledIgnoresTheMouse)
{
    toggle.SetEnabled(false);
    host.Click(25, 12);
    EXPECT_FALSE(toggle.IsOn());
    EXPECT_TRUE(host.Sent(kToggled).empty());
    EXPECT_EQ(host.Paint().At(25, 1), kDisabledGray);
}

TEST_F(ToggleSwitchTest, DisabledWhileHoveredKeepsItsSheen)
{
    host.MoveMouse(25, 12);
    toggle.SetEnabled(false);
    EXPECT_TRUE(IsLighter(host.Paint().At(25, 1), kDisabledGray));
}

TEST_F(ToggleSwitchTest, SettingTheStateNeitherAnimatesNorNotifies)
{
    toggle.SetOn(true);
    EXPECT_TRUE(toggle.IsOn());
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_TRUE(host.Sent(kToggled).empty());
    EXPECT_EQ(host.Paint().At(36, kMiddle), kKnobWhite);
}

TEST_F(ToggleSwitchTest, SettingAnotherStateEndsARunningAnimation)
{
    toggle.Toggle(true);
    host.AdvanceFrames(4);
    toggle.SetOn(false);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(host.Paint().At(36, kMiddle), kOffGray);
}

TEST_F(ToggleSwitchTest, SettingTheSameStateLetsAnAnimationGoOn)
{
    toggle.Toggle(true);
    host.AdvanceFrames(4);
    toggle.SetOn(true);
    EXPECT_EQ(host.Timers().size(), 1u);
}

TEST_F(ToggleSwitchTest, TogglingSlidesWithoutANotification)
{
    toggle.Toggle(true);
    EXPECT_TRUE(toggle.IsOn());
    ASSERT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Timers()[0].period, 10u);
    EXPECT_TRUE(host.Sent(kToggled).empty());
}

TEST_F(ToggleSwitchTest, TogglingToTheSameStateDoesNothing)
{
    toggle.Toggle(false);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ToggleSwitchTest, TheKnobMovesTwoPixelsAFrameAndAnOddTravelBeginsOneShort)
{
    const int start = KnobLeft(host.Paint());
    toggle.Toggle(true);
    EXPECT_EQ(KnobLeft(host.Paint()), start);
    for (int frame = 0; frame < kFrames; ++frame) {
        host.AdvanceFrames(1);
        EXPECT_EQ(KnobLeft(host.Paint()), start + 1 + 2 * frame) << frame;
    }
    EXPECT_EQ(KnobLeft(host.Paint()), start + kTravel);
}

TEST_F(ToggleSwitchTest, TheKnobMovesBackTheSameWay)
{
    const int start = KnobLeft(host.Paint());
    toggle.SetOn(true);
    toggle.Toggle(false);
    EXPECT_EQ(KnobLeft(host.Paint()), start + kTravel);
    for (int frame = 0; frame < kFrames; ++frame) {
        host.AdvanceFrames(1);
        EXPECT_EQ(KnobLeft(host.Paint()), start + kTravel - 1 - 2 * frame) << frame;
    }
    EXPECT_EQ(KnobLeft(host.Paint()), start);
}

TEST_F(ToggleSwitchTest, TheAnimationEndsAfterItsLastFrame)
{
    toggle.Toggle(true);
    host.AdvanceFrames(kFrames - 1);
    EXPECT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(1);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(host.Paint().At(20, kMiddle), kOnBlue);
}

TEST_F(ToggleSwitchTest, TheTrackFadesWithTheKnob)
{
    toggle.Toggle(true);
    EXPECT_EQ(host.Paint().At(25, 1), kOffGray);
    host.AdvanceFrames(1);
    EXPECT_EQ(host.Paint().At(25, 1), Argb{0xFFD6DBDF}); // one of 25 pixels
    host.AdvanceFrames(6);
    EXPECT_EQ(host.Paint().At(25, 1), Argb{0xFF6BACEF}); // 13 of 25 pixels
}

TEST_F(ToggleSwitchTest, AMovingSwitchFadesAlsoWhenItIsDisabled)
{
    toggle.Toggle(true);
    host.AdvanceFrames(1);
    toggle.SetEnabled(false);
    EXPECT_EQ(host.Paint().At(25, 1), Argb{0xFFD6DBDF});
    host.AdvanceFrames(kFrames - 1);
    EXPECT_EQ(host.Paint().At(25, 1), kDisabledGray);
}

TEST_F(ToggleSwitchTest, ASecondToggleStartsFromTheFullTravel)
{
    const int start = KnobLeft(host.Paint());
    toggle.Toggle(true);
    host.AdvanceFrames(5);
    toggle.Toggle(false);
    EXPECT_EQ(KnobLeft(host.Paint()), start + kTravel);
    ASSERT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(kFrames - 1);
    EXPECT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(1);
    EXPECT_EQ(KnobLeft(host.Paint()), start);
}

TEST_F(ToggleSwitchTest, TimersOfOthersDoNotMoveTheKnob)
{
    const int start = KnobLeft(host.Paint());
    toggle.Toggle(true);
    TNotifyUI foreign{};
    foreign.sType = DUI_MSGTYPE_TIMER;
    foreign.pSender = host.Root();
    EXPECT_TRUE(toggle.OnNotify(&foreign));
    TNotifyUI other{};
    other.sType = L"click";
    other.pSender = &toggle;
    EXPECT_TRUE(toggle.OnNotify(&other));
    EXPECT_EQ(KnobLeft(host.Paint()), start);
}

TEST_F(ToggleSwitchTest, ItsDelegateLeavesNotificationsToOthers)
{
    static int seen = 0;
    seen = 0;
    toggle.OnNotify += +[](void*) -> bool {
        ++seen;
        return true;
    };
    host.Click(25, 12);
    EXPECT_GE(seen, 1);
}

TEST_F(ToggleSwitchTest, WithoutRoomToSlideItIsThereAtOnce)
{
    for (const int width : {20, 24, 25, 26, 1}) {
        SCOPED_TRACE(width);
        ControlHost narrow(width, 24);
        auto& stuck = narrow.Add<CToggleSwitchUI>();
        stuck.Toggle(true);
        EXPECT_TRUE(stuck.IsOn());
        EXPECT_TRUE(narrow.Timers().empty());
        narrow.Paint();
        stuck.Toggle(false);
        EXPECT_FALSE(stuck.IsOn());
    }
}

TEST_F(ToggleSwitchTest, WithoutAWindowItIsThereAtOnce)
{
    CToggleSwitchUI loose;
    loose.SetPos({0, 0, 50, 24});
    loose.Toggle(true);
    EXPECT_TRUE(loose.IsOn());

    Canvas canvas(50, 24);
    loose.DoPaint(canvas.Dc(), RECT{0, 0, 50, 24}, nullptr);
    EXPECT_EQ(canvas.Take().At(36, kMiddle), kKnobWhite);
}

TEST_F(ToggleSwitchTest, PaintingNeverStopsTheTree)
{
    const Canvas canvas(50, 24);
    EXPECT_TRUE(toggle.DoPaint(canvas.Dc(), RECT{0, 0, 50, 24}, nullptr));
}

// A switch whose memory is unusable once it is deleted, so that a late use of it is a fault.
class Mortal : public CToggleSwitchUI {
public:
    static void* operator new(std::size_t bytes) { return ::operator new(bytes); }
    static void operator delete(void* storage, std::size_t bytes)
    {
        std::memset(storage, 0xDD, bytes); // and never given back
    }
};

// Removes the sender, for good and at once, whenever a notification of the type arrives.
class Remover : public INotifyUI {
public:
    explicit Remover(const wchar_t* type) : m_type(type) {}
    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType != m_type)
            return;
        ++removed;
        auto* const parent = static_cast<CContainerUI*>(notification.pSender->GetParent());
        parent->SetDelayedDestroy(false);
        parent->Remove(notification.pSender);
    }
    int removed = 0;

private:
    const wchar_t* m_type;
};

TEST_F(ToggleSwitchTest, AHandlerOfTheNotificationMayDeleteTheSwitch)
{
    ControlHost other(50, 24);
    other.Adopt(new Mortal);
    Remover remover(kToggled);
    other.Manager().AddNotifier(&remover);
    other.Click(25, 12);
    other.Manager().RemoveNotifier(&remover);
    EXPECT_EQ(remover.removed, 1);
    EXPECT_TRUE(other.Timers().empty());
    other.Paint();
}

TEST_F(ToggleSwitchTest, AHandlerOfATimerMayDeleteTheSwitch)
{
    ControlHost other(50, 24);
    auto* const mortal = new Mortal;
    other.Adopt(mortal);
    Remover remover(DUI_MSGTYPE_TIMER);
    other.Manager().AddNotifier(&remover);
    mortal->Toggle(true);
    other.AdvanceFrames(2);
    other.Manager().RemoveNotifier(&remover);
    EXPECT_EQ(remover.removed, 1);
    EXPECT_TRUE(other.Timers().empty());
}

TEST_F(ToggleSwitchTest, ComesFromASkin)
{
    struct Factory : IDialogBuilderCallback {
        CControlUI* CreateControl(LPCTSTR name) override
        {
            return std::wstring(name) == L"ToggleSwitch" ? CToggleSwitchUI::CreateControl()
                                                         : nullptr;
        }
    } factory;
    ASSERT_NE(host.Load(L"<VerticalLayout><ToggleSwitch name=\"wifi\" width=\"50\" height=\"24\"/>"
                        L"</VerticalLayout>",
                        &factory),
              nullptr);
    auto& wifi = host.Find<CToggleSwitchUI>(L"wifi");
    host.Click(25, 12);
    EXPECT_TRUE(wifi.IsOn());
    EXPECT_EQ(host.Sent(kToggled).front().senderName, L"wifi");
}

TEST_F(ToggleSwitchTest, PaintingLeavesNoObjectsBehind)
{
    host.Paint();
    GdiplusObjects();
    host.Paint();
    const int gdi = GdiObjects();
    const int gdiplus = GdiplusObjects();
    for (int i = 0; i < 20; ++i)
        host.Paint();
    EXPECT_EQ(GdiObjects(), gdi);
    EXPECT_EQ(GdiplusObjects(), gdiplus);
}

TEST_F(ToggleSwitchTest, ASwitchLargerThanAnyScreenIsNotDrawn)
{
    const Canvas canvas(50, 24);
    CToggleSwitchUI huge;
    huge.SetPos({0, 0, 200'000, 100'000});
    huge.DoPaint(canvas.Dc(), RECT{0, 0, 50, 24}, nullptr);
    EXPECT_EQ(canvas.Take().Count(Argb{0xFFFFFFFF}), 50 * 24);
}

TEST_F(ToggleSwitchTest, AControlTakesItsObjectsWithIt)
{
    const Canvas canvas(50, 24);
    const auto live = [&] {
        CToggleSwitchUI brief;
        brief.SetPos({0, 0, 50, 24});
        brief.DoPaint(canvas.Dc(), RECT{0, 0, 50, 24}, nullptr);
    };
    GdiplusObjects();
    live();
    const int gdiplus = GdiplusObjects();
    for (int i = 0; i < 5; ++i)
        live();
    EXPECT_EQ(GdiplusObjects(), gdiplus);
}

} // namespace
} // namespace test
