#include "duilib/Control/TestPictures.h"
#include "duilib/Core/ControlKit.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Place;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kOutline{0xFF85E4FF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kGrey{0xFF808080};

class OpenBar : public CScrollBarUI {
public:
    using CScrollBarUI::m_rcButton1;
    using CScrollBarUI::m_rcButton2;
    using CScrollBarUI::m_rcThumb;
    using CScrollBarUI::m_uButton1State;
    using CScrollBarUI::m_uThumbState;
};

// A bar of 16 x 116 without an owner: two buttons of 16, a track of 84.
class ScrollBarTest : public testing::Test {
protected:
    ControlHost host{16, 116};
    OpenBar& bar = host.Add<OpenBar>();

    void SetUp() override
    {
        bar.SetScrollRange(116); // the thumb takes half the track
        host.Layout();
        host.ClearSent();
    }

    std::size_t Scrolls() const { return host.Sent(L"scroll").size(); }
};

// Writes down what a bar asks of it.
class Owner : public CVerticalLayoutUI {
public:
    std::wstring calls;

    void LineUp() override { calls += L"LineUp "; }
    void LineDown() override { calls += L"LineDown "; }
    void PageUp() override { calls += L"PageUp "; }
    void PageDown() override { calls += L"PageDown "; }
    void LineLeft() override { calls += L"LineLeft "; }
    void LineRight() override { calls += L"LineRight "; }
    void PageLeft() override { calls += L"PageLeft "; }
    void PageRight() override { calls += L"PageRight "; }
    void DoEvent(TEventUI& event) override { calls += std::to_wstring(event.Type) + L" "; }
};

} // namespace

TEST(ScrollBarStartTest, StartsVerticalWithBothButtons)
{
    CScrollBarUI bar;
    EXPECT_STREQ(bar.GetClass(), L"ScrollBarUI");
    EXPECT_EQ(bar.GetInterface(L"ScrollBar"), &bar);
    EXPECT_FALSE(bar.IsHorizontal());
    EXPECT_TRUE(bar.GetShow());
    EXPECT_TRUE(bar.GetShowButton1());
    EXPECT_TRUE(bar.GetShowButton2());
    EXPECT_EQ(bar.GetLineSize(), 8);
    EXPECT_EQ(bar.GetScrollRange(), 0);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    EXPECT_EQ(bar.GetOwner(), nullptr);
    EXPECT_EQ(bar.GetFixedWidth(), 16);
    EXPECT_EQ(bar.GetFixedHeight(), 0);
}

TEST(ScrollBarStartTest, TheDefaultThicknessTurnsWithTheBar)
{
    CScrollBarUI bar;
    bar.SetHorizontal();
    EXPECT_EQ(bar.GetFixedWidth(), 0);
    EXPECT_EQ(bar.GetFixedHeight(), 16);
    bar.SetHorizontal(false);
    EXPECT_EQ(bar.GetFixedWidth(), 16);
    bar.SetFixedWidth(9);
    bar.SetFixedHeight(50);
    bar.SetHorizontal();
    EXPECT_EQ(bar.GetFixedWidth(), 9);
    EXPECT_EQ(bar.GetFixedHeight(), 50);
}

TEST(ScrollBarStartTest, ThePositionIsClampedToTheRange)
{
    CScrollBarUI bar;
    bar.SetScrollPos(5);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    bar.SetScrollRange(100);
    bar.SetScrollPos(150);
    EXPECT_EQ(bar.GetScrollPos(), 100);
    bar.SetScrollPos(-3);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    bar.SetScrollPos(80);
    bar.SetScrollRange(50);
    EXPECT_EQ(bar.GetScrollPos(), 50);
    bar.SetScrollRange(-1);
    EXPECT_EQ(bar.GetScrollRange(), 0);
    EXPECT_EQ(bar.GetScrollPos(), 0);
}

TEST(ScrollBarStartTest, AttributesReachTheirSetters)
{
    const struct {
        const wchar_t* name;
        LPCTSTR (CScrollBarUI::*getter)();
    } images[] = {
        {L"button1normalimage", &CScrollBarUI::GetButton1NormalImage},
        {L"button1hotimage", &CScrollBarUI::GetButton1HotImage},
        {L"button1pushedimage", &CScrollBarUI::GetButton1PushedImage},
        {L"button1disabledimage", &CScrollBarUI::GetButton1DisabledImage},
        {L"button2normalimage", &CScrollBarUI::GetButton2NormalImage},
        {L"button2hotimage", &CScrollBarUI::GetButton2HotImage},
        {L"button2pushedimage", &CScrollBarUI::GetButton2PushedImage},
        {L"button2disabledimage", &CScrollBarUI::GetButton2DisabledImage},
        {L"thumbnormalimage", &CScrollBarUI::GetThumbNormalImage},
        {L"thumbhotimage", &CScrollBarUI::GetThumbHotImage},
        {L"thumbpushedimage", &CScrollBarUI::GetThumbPushedImage},
        {L"thumbdisabledimage", &CScrollBarUI::GetThumbDisabledImage},
        {L"railnormalimage", &CScrollBarUI::GetRailNormalImage},
        {L"railhotimage", &CScrollBarUI::GetRailHotImage},
        {L"railpushedimage", &CScrollBarUI::GetRailPushedImage},
        {L"raildisabledimage", &CScrollBarUI::GetRailDisabledImage},
        {L"bknormalimage", &CScrollBarUI::GetBkNormalImage},
        {L"bkhotimage", &CScrollBarUI::GetBkHotImage},
        {L"bkpushedimage", &CScrollBarUI::GetBkPushedImage},
        {L"bkdisabledimage", &CScrollBarUI::GetBkDisabledImage},
    };
    CScrollBarUI bar;
    for (const auto& image : images) {
        const std::wstring value = std::wstring(image.name) + L".png";
        EXPECT_STREQ((bar.*image.getter)(), L"");
        bar.SetAttribute(image.name, value.c_str());
        EXPECT_STREQ((bar.*image.getter)(), value.c_str());
    }
    bar.ApplyAttributeList(L"hor=\"true\" linesize=\"5\" range=\"70\" value=\"30\" "
                           L"showbutton1=\"false\" showbutton2=\"false\"");
    EXPECT_TRUE(bar.IsHorizontal());
    EXPECT_EQ(bar.GetLineSize(), 5);
    EXPECT_EQ(bar.GetScrollRange(), 70);
    EXPECT_EQ(bar.GetScrollPos(), 30);
    EXPECT_FALSE(bar.GetShowButton1());
    EXPECT_FALSE(bar.GetShowButton2());
}

TEST(ScrollBarStartTest, AbsurdRangesAndPlacesAreHarmless)
{
    OpenBar bar;
    for (const int range : {0, 1, INT_MAX}) {
        for (const LONG length : {0, 1, 15, 16, 31, 33, 40, 1'000'000'000}) {
            bar.SetScrollRange(range);
            bar.SetScrollPos(range);
            bar.SetPos({0, 0, 16, length});
            EXPECT_LE(bar.m_rcButton1.bottom, bar.m_rcButton2.top);
            EXPECT_LE(bar.m_rcThumb.bottom, length);
            if (!::IsRectEmpty(&bar.m_rcThumb)) {
                EXPECT_EQ(bar.m_rcThumb.bottom, bar.m_rcButton2.top);
            }
        }
    }
}

TEST_F(ScrollBarTest, PartsFillTheBarInOrder)
{
    EXPECT_EQ(Place(bar.m_rcButton1), Place(0, 0, 16, 16));
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 16, 16, 58));
    EXPECT_EQ(Place(bar.m_rcButton2), Place(0, 100, 16, 116));
    bar.SetScrollPos(116);
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 58, 16, 100));
    bar.SetScrollPos(58);
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 37, 16, 79));
}

TEST_F(ScrollBarTest, WithoutButtonsTheTrackTakesTheWholeBar)
{
    bar.SetShowButton1(false);
    bar.SetShowButton2(false);
    EXPECT_EQ(Place(bar.m_rcButton1), Place(0, 0, 0, 0));
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 0, 16, 58));
    bar.SetShowButton2(true);
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 0, 16, 50));
}

TEST_F(ScrollBarTest, ABarWithNothingToScrollHasNoThumb)
{
    bar.SetScrollRange(0);
    EXPECT_TRUE(::IsRectEmpty(&bar.m_rcThumb));
    EXPECT_FALSE(::IsRectEmpty(&bar.m_rcButton1));
}

TEST_F(ScrollBarTest, AThumbIsNeverShorterThanTheBarIsThick)
{
    bar.SetScrollRange(100'000);
    EXPECT_EQ(Place(bar.m_rcThumb), Place(0, 16, 16, 32));
}

TEST_F(ScrollBarTest, AHorizontalBarMirrorsTheParts)
{
    ControlHost wide{116, 16};
    auto& across = wide.Add<OpenBar>();
    across.SetHorizontal();
    across.SetScrollRange(116);
    wide.Layout();
    EXPECT_EQ(Place(across.m_rcButton1), Place(0, 0, 16, 16));
    EXPECT_EQ(Place(across.m_rcThumb), Place(16, 0, 58, 16));
    EXPECT_EQ(Place(across.m_rcButton2), Place(100, 0, 116, 16));
    wide.Click(108, 8);
    EXPECT_EQ(across.GetScrollPos(), 8);
    wide.Click(90, 8);
    EXPECT_EQ(across.GetScrollPos(), 116);
}

TEST_F(ScrollBarTest, ButtonsScrollByALineAndTheTrackByAPage)
{
    bar.SetLineSize(10);
    host.Click(8, 108);
    EXPECT_EQ(bar.GetScrollPos(), 10);
    host.Click(8, 8);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    host.Click(8, 90);
    EXPECT_EQ(bar.GetScrollPos(), 116);
    host.Click(8, 20);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    EXPECT_EQ(Scrolls(), 4u);
    EXPECT_EQ(host.Sent(L"scroll")[0].sender, &bar);
}

TEST_F(ScrollBarTest, AButtonThatIsHeldRepeatsAfterADelay)
{
    bar.SetLineSize(1);
    host.Press(8, 108);
    ASSERT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Timers()[0].period, 50u);
    EXPECT_EQ(bar.GetScrollPos(), 1);
    host.AdvanceFrames(5);
    EXPECT_EQ(bar.GetScrollPos(), 1);
    host.AdvanceFrames(3);
    EXPECT_EQ(bar.GetScrollPos(), 4);
    host.MoveMouse(8, 50);
    host.AdvanceFrames(3);
    EXPECT_EQ(bar.GetScrollPos(), 4);
    host.MoveMouse(8, 110);
    host.AdvanceFrames(1);
    EXPECT_EQ(bar.GetScrollPos(), 5);
    host.Release(8, 110);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ScrollBarTest, PagingStopsAtTheMouse)
{
    bar.SetScrollRange(1160);
    host.Layout();
    host.Press(8, 40);
    host.AdvanceFrames(30);
    EXPECT_TRUE(::PtInRect(&bar.m_rcThumb, POINT{8, 40}));
    const int position = bar.GetScrollPos();
    host.AdvanceFrames(10);
    EXPECT_EQ(bar.GetScrollPos(), position);
    host.Release(8, 40);
}

TEST_F(ScrollBarTest, ADraggedThumbFollowsAtEachTick)
{
    host.Press(8, 20);
    host.MoveMouse(8, 41);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    host.AdvanceFrames(1);
    EXPECT_EQ(bar.GetScrollPos(), 58);
    EXPECT_EQ(Scrolls(), 1u);
    host.AdvanceFrames(3);
    EXPECT_EQ(Scrolls(), 1u);
    host.MoveMouse(8, 500);
    host.AdvanceFrames(1);
    EXPECT_EQ(bar.GetScrollPos(), 116);
    host.MoveMouse(8, -500);
    host.AdvanceFrames(1);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    host.Release(8, -500);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(bar.m_uThumbState & (UISTATE_PUSHED | UISTATE_CAPTURED), 0u);
}

TEST_F(ScrollBarTest, AQuickDragIsNotLostWithTheRelease)
{
    host.Press(8, 20);
    host.MoveMouse(8, 41);
    host.Release(8, 41);
    EXPECT_EQ(bar.GetScrollPos(), 58);
    EXPECT_EQ(Scrolls(), 1u);
}

TEST_F(ScrollBarTest, ADisabledBarDoesNotScroll)
{
    bar.SetEnabled(false);
    host.Click(8, 108);
    host.Press(8, 20);
    host.MoveMouse(8, 60);
    host.AdvanceFrames(10);
    host.Release(8, 60);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    EXPECT_EQ(Scrolls(), 0u);
}

TEST_F(ScrollBarTest, DisablingOrHidingLetsGoOfWhatIsPressed)
{
    host.Press(8, 108);
    ASSERT_FALSE(host.Timers().empty());
    bar.SetEnabled(false);
    EXPECT_TRUE(host.Timers().empty());
    bar.SetEnabled(true);
    host.Release(8, 108);
    host.Press(8, 20);
    bar.SetVisible(false);
    EXPECT_TRUE(host.Timers().empty());
    EXPECT_EQ(bar.m_uThumbState & UISTATE_CAPTURED, 0u);
}

TEST_F(ScrollBarTest, ThePartUnderTheMouseIsHot)
{
    host.MoveMouse(8, 30);
    EXPECT_EQ(bar.m_uThumbState, static_cast<UINT>(UISTATE_HOT));
    host.MoveMouse(8, 8);
    EXPECT_EQ(bar.m_uThumbState, 0u);
    EXPECT_EQ(bar.m_uButton1State, static_cast<UINT>(UISTATE_HOT));
    host.LeaveMouse();
    EXPECT_EQ(bar.m_uButton1State, 0u);
}

TEST_F(ScrollBarTest, WithoutPicturesTheButtonsAndTheThumbHaveOutlines)
{
    const auto picture = host.Paint();
    const RECT parts[] = {bar.m_rcButton1, bar.m_rcThumb, bar.m_rcButton2};
    for (const RECT& part : parts) {
        SCOPED_TRACE(testing::Message() << Place(part));
        EXPECT_EQ(picture.At(part.left, part.top), kOutline);
        EXPECT_EQ(picture.At(part.left + 1, part.top + 1), kOutline);
        EXPECT_EQ(picture.At(part.left + 2, part.top + 2), kWhite);
        EXPECT_EQ(picture.At(part.right - 1, part.bottom - 1), kOutline);
    }
    EXPECT_EQ(picture.At(8, 80), kWhite);
}

TEST_F(ScrollBarTest, ABarThatIsNotShownPaintsNothing)
{
    bar.SetBkColor(kRed.value);
    bar.SetShow(false);
    EXPECT_EQ(host.Paint().Count(kWhite), 16 * 116);
    bar.SetShow(true);
    EXPECT_GT(host.Paint().Count(kRed), 0);
}

TEST_F(ScrollBarTest, PartsShowThePictureOfTheirStateOrTheNormalOne)
{
    auto& manager = host.Manager();
    AddColumns(manager, L"normal.png", {kRed});
    AddColumns(manager, L"hot.png", {kGreen});
    AddColumns(manager, L"pushed.png", {kBlue});
    AddColumns(manager, L"disabled.png", {kGrey});
    bar.SetThumbNormalImage(L"normal.png");
    EXPECT_EQ(host.Paint().At(8, 30), kRed);
    host.MoveMouse(8, 30);
    EXPECT_EQ(host.Paint().At(8, 30), kRed);
    bar.SetThumbHotImage(L"hot.png");
    EXPECT_EQ(host.Paint().At(8, 30), kGreen);
    host.Press(8, 30);
    EXPECT_EQ(host.Paint().At(8, 30), kRed);
    bar.SetThumbPushedImage(L"pushed.png");
    EXPECT_EQ(host.Paint().At(8, 30), kBlue);
    host.Release(8, 30);
    bar.SetEnabled(false);
    EXPECT_EQ(host.Paint().At(8, 30), kRed);
    bar.SetThumbDisabledImage(L"disabled.png");
    EXPECT_EQ(host.Paint().At(8, 30), kGrey);
}

TEST_F(ScrollBarTest, PartsAreDrawnFromTheBackgroundToTheRail)
{
    auto& manager = host.Manager();
    AddColumns(manager, L"red.png", {kRed});
    AddColumns(manager, L"green.png", {kGreen});
    AddColumns(manager, L"blue.png", {kBlue});
    AddColumns(manager, L"grey.png", {kGrey});
    bar.SetBkColor(kWhite.value);
    bar.SetBkNormalImage(L"red.png");
    bar.SetButton1NormalImage(L"green.png");
    bar.SetButton2NormalImage(L"green.png");
    bar.SetThumbNormalImage(L"blue.png");
    bar.SetRailNormalImage(L"grey.png");
    bar.SetBorderColor(0xFF010101);
    bar.SetBorderSize(1);
    const auto picture = host.Paint();
    EXPECT_EQ(picture.At(8, 80), kRed);
    EXPECT_EQ(picture.At(8, 8), kGreen);
    EXPECT_EQ(picture.At(8, 108), kGreen);
    EXPECT_EQ(picture.At(8, 20), kBlue);
    EXPECT_EQ(picture.At(8, 37), kGrey);
    EXPECT_EQ(picture.At(0, 60).value, 0xFF010101);
}

TEST_F(ScrollBarTest, PartsKeepTheirDeviceRectanglesAtAnyScale)
{
    ControlHost scaled{24, 174, 144};
    auto& large = scaled.Add<OpenBar>();
    AddColumns(scaled.Manager(), L"red@150.png", {kRed});
    large.SetScrollRange(174);
    large.SetThumbNormalImage(L"red.png");
    scaled.Layout();
    EXPECT_EQ(Place(large.m_rcButton1), Place(0, 0, 24, 24));
    EXPECT_EQ(scaled.Paint().Count(kRed), 24 * (large.m_rcThumb.bottom - large.m_rcThumb.top));
}

TEST(ScrollBarOwnerTest, TheOwnerIsAskedToScroll)
{
    ControlHost host{16, 116};
    Owner owner;
    auto& bar = host.Add<CScrollBarUI>();
    bar.SetOwner(&owner);
    bar.SetScrollRange(116);
    bar.SetScrollPos(58);
    host.Layout();
    host.Click(8, 8);
    host.Click(8, 108);
    host.Click(8, 20);
    host.Click(8, 95);
    // The first is the focus, which a press brings.
    EXPECT_EQ(owner.calls, L"24 LineUp LineDown PageUp PageDown ");
    EXPECT_EQ(bar.GetScrollPos(), 58);
    EXPECT_EQ(host.Sent(L"scroll").size(), 4u);
}

TEST(ScrollBarOwnerTest, AHorizontalBarAsksSideways)
{
    ControlHost host{116, 16};
    Owner owner;
    auto& bar = host.Add<CScrollBarUI>();
    bar.SetOwner(&owner);
    bar.SetHorizontal();
    bar.SetScrollRange(116);
    bar.SetScrollPos(58);
    host.Layout();
    host.Click(8, 8);
    host.Click(108, 8);
    host.Click(20, 8);
    host.Click(95, 8);
    EXPECT_EQ(owner.calls, L"24 LineLeft LineRight PageLeft PageRight ");
}

TEST(ScrollBarOwnerTest, OtherEventsReachTheOwner)
{
    ControlHost host{16, 116};
    Owner owner;
    auto& bar = host.Add<CScrollBarUI>();
    bar.SetOwner(&owner);
    TEventUI event{};
    for (const int type :
         {UIEVENT_SCROLLWHEEL, UIEVENT_KEYDOWN, UIEVENT_CONTEXTMENU, UIEVENT_CHAR}) {
        event.Type = type;
        bar.Event(event);
    }
    event.Type = UIEVENT_TIMER;
    event.wParam = 11;
    bar.Event(event);
    EXPECT_EQ(owner.calls, L"21 3 20 5 27 ");
    event.wParam = 10;
    bar.Event(event);
    EXPECT_EQ(owner.calls, L"21 3 20 5 27 ");
}

TEST(ScrollBarOwnerTest, WithoutTheMouseItsEventsReachTheOwner)
{
    ControlHost host{16, 116};
    Owner owner;
    auto& bar = host.Add<CScrollBarUI>();
    bar.SetOwner(&owner);
    bar.SetMouseEnabled(false);
    TEventUI event{};
    event.Type = UIEVENT_BUTTONDOWN;
    bar.Event(event);
    EXPECT_EQ(owner.calls, L"13 ");
}

TEST(ScrollBarOwnerTest, DraggingTheThumbScrollsTheOwner)
{
    ControlHost host{100, 116};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, false);
    auto* const child = new CControlUI;
    child->SetFixedHeight(232);
    layout.Add(child);
    host.Layout();
    host.ClearSent();
    host.Press(92, 20);
    host.MoveMouse(92, 41);
    host.AdvanceFrames(1);
    host.Release(92, 41);
    EXPECT_EQ(layout.GetScrollPos().cy, 58);
    EXPECT_EQ(child->GetY(), -58);
    const auto sent = host.Sent(L"scroll");
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].sender, &layout);
    EXPECT_EQ(sent[1].sender, layout.GetVerticalScrollBar());
}

TEST(ScrollBarOwnerTest, TheFocusGoesToTheOwner)
{
    ControlHost host{100, 116};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, false);
    host.Layout();
    layout.GetVerticalScrollBar()->SetFocus();
    EXPECT_EQ(host.Manager().GetFocus(), &layout);
}

TEST(ScrollBarOwnerTest, ShowingABarDoesNotLayTheOwnerOut)
{
    ControlHost host{100, 116};
    auto& layout = host.Add<CVerticalLayoutUI>();
    layout.EnableScrollBar(true, false);
    host.Layout();
    layout.GetVerticalScrollBar()->SetVisible(true);
    EXPECT_FALSE(layout.IsUpdateNeeded());
    EXPECT_FALSE(host.Manager().IsUpdateNeeded());
}

TEST(ScrollBarOwnerTest, APaintLeavesNoHandlesBehind)
{
    ControlHost host{16, 116};
    auto& bar = host.Add<CScrollBarUI>();
    bar.SetScrollRange(100);
    bar.SetBkColor(0x80FF0000);
    bar.SetBorderColor(kRed.value);
    bar.SetBorderSize(1);
    host.Paint();
    const int before = test::GdiObjects();
    EXPECT_EQ(host.Paint().At(0, 60), kRed);
    host.Paint();
    EXPECT_EQ(test::GdiObjects(), before);
}
