#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

using namespace DuiLib;
using test::ControlHost;

namespace {

// Records every hook as one word: start:id:first, step:current/total:id, stop:id.
class AnimatedControl : public CControlUI, public CUIAnimation {
public:
    AnimatedControl() { Attach(this); }

    void OnAnimationStart(int id, BOOL first) override
    {
        Record(L"start:" + std::to_wstring(id) + (first ? L":first" : L":again"));
        if (onStart)
            onStart(id);
    }

    void OnAnimationStep(int total, int current, int id) override
    {
        Record(L"step:" + std::to_wstring(current) + L"/" + std::to_wstring(total) + L":" +
               std::to_wstring(id));
        if (onStep)
            onStep(current, id);
    }

    void OnAnimationStop(int id) override
    {
        Record(L"stop:" + std::to_wstring(id));
        if (onStop)
            onStop(id);
    }

    void DoEvent(TEventUI& event) override
    {
        if (event.Type == UIEVENT_TIMER)
            OnAnimationElapse(static_cast<int>(event.wParam));
        else
            CControlUI::DoEvent(event);
    }

    using CUIAnimation::GetAnimationDataByID;
    using CUIAnimation::m_pControl;

    std::wstring* record = &ownRecord;
    std::wstring ownRecord;
    std::function<void(int id)> onStart;
    std::function<void(int current, int id)> onStep;
    std::function<void(int id)> onStop;

private:
    void Record(const std::wstring& word) { *record += (record->empty() ? L"" : L" ") + word; }
};

class AnimationTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    AnimatedControl& control = host.Add<AnimatedControl>();
};

TEST_F(AnimationTest, AnAnimationOfTwoFramesMakesThreeSteps)
{
    ASSERT_TRUE(control.StartAnimation(10, 2, 7));
    host.AdvanceFrames(10);
    EXPECT_EQ(control.ownRecord, L"start:7:first step:0/2:7 step:1/2:7 step:2/2:7 stop:7");
}

TEST_F(AnimationTest, ALoopingAnimationShowsFrameZeroOnlyInItsFirstRound)
{
    ASSERT_TRUE(control.StartAnimation(10, 2, 7, TRUE));
    host.AdvanceFrames(6);
    EXPECT_EQ(control.ownRecord, L"start:7:first step:0/2:7 step:1/2:7 step:2/2:7 stop:7 "
                                 L"step:1/2:7 step:2/2:7 stop:7 step:1/2:7");
    EXPECT_TRUE(control.IsAnimationRunning(7));
}

TEST_F(AnimationTest, AFinishedAnimationIsForgottenWithItsTimer)
{
    ASSERT_TRUE(control.StartAnimation(10, 1, 7));
    EXPECT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(2);
    EXPECT_FALSE(control.IsAnimationRunning(7));
    EXPECT_EQ(control.GetAnimationDataByID(7), nullptr);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, ThePeriodIsTheTimersPeriod)
{
    ASSERT_TRUE(control.StartAnimation(35, 4, 2));
    ASSERT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Timers()[0].period, 35u);
}

TEST_F(AnimationTest, StartRefusesWhatCannotRun)
{
    EXPECT_FALSE(control.StartAnimation(0, 5, 1));
    EXPECT_FALSE(control.StartAnimation(-1, 5, 1));
    EXPECT_FALSE(control.StartAnimation(10, 0, 1));
    EXPECT_FALSE(control.StartAnimation(10, -3, 1));
    EXPECT_TRUE(host.Timers().empty());

    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    EXPECT_FALSE(control.StartAnimation(10, 5, 1));
    EXPECT_TRUE(control.StartAnimation(10, 5, 2));
    EXPECT_EQ(host.Timers().size(), 2u);
}

TEST_F(AnimationTest, StartWithoutAnOwnerIsRefused)
{
    CUIAnimation animation;
    EXPECT_FALSE(animation.StartAnimation(10, 5, 1));
    EXPECT_FALSE(animation.IsAnimationRunning(1));
}

TEST_F(AnimationTest, StartBeforeTheOwnerHasAManagerIsRefused)
{
    AnimatedControl outside;
    EXPECT_FALSE(outside.StartAnimation(10, 5, 1));
    EXPECT_FALSE(outside.IsAnimationRunning(1));
}

TEST_F(AnimationTest, TheConstructorTakesTheOwner)
{
    CUIAnimation animation(&control);
    EXPECT_TRUE(animation.StartAnimation(10, 5, 3));
    EXPECT_EQ(host.Timers().size(), 1u);
    animation.StopAnimation(3);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, StopEndsOneAnimationWithoutAHook)
{
    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    ASSERT_TRUE(control.StartAnimation(10, 5, 2));
    control.StopAnimation(1);
    EXPECT_FALSE(control.IsAnimationRunning(1));
    EXPECT_TRUE(control.IsAnimationRunning(2));
    EXPECT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(control.ownRecord, L"");
}

TEST_F(AnimationTest, StopOfNumberZeroEndsEveryAnimation)
{
    ASSERT_TRUE(control.StartAnimation(10, 5));
    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    ASSERT_TRUE(control.StartAnimation(10, 5, 2));
    control.StopAnimation(0);
    EXPECT_FALSE(control.IsAnimationRunning(0));
    EXPECT_FALSE(control.IsAnimationRunning(1));
    EXPECT_FALSE(control.IsAnimationRunning(2));
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, TheCurrentFrameCanBeReadAndSet)
{
    EXPECT_EQ(control.GetCurrentFrame(4), -1);
    EXPECT_FALSE(control.SetCurrentFrame(3, 4));
    ASSERT_TRUE(control.StartAnimation(10, 5, 4));
    EXPECT_EQ(control.GetCurrentFrame(4), 0);
    EXPECT_TRUE(control.SetCurrentFrame(4, 4));
    host.AdvanceFrames(3);
    EXPECT_EQ(control.ownRecord, L"step:4/5:4 step:5/5:4 stop:4");
}

TEST_F(AnimationTest, GoingBackToFrameZeroInALaterRoundIsNotTheFirstStart)
{
    ASSERT_TRUE(control.StartAnimation(10, 1, 4, TRUE));
    host.AdvanceFrames(2);
    control.SetCurrentFrame(0, 4);
    control.ownRecord.clear();
    host.AdvanceFrames(1);
    EXPECT_EQ(control.ownRecord, L"start:4:again step:0/1:4");
}

TEST_F(AnimationTest, TheDataShowsWhatWasAskedFor)
{
    ASSERT_TRUE(control.StartAnimation(15, 6, 9, TRUE));
    const CAnimationData* const data = control.GetAnimationDataByID(9);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->m_nAnimationID, 9);
    EXPECT_EQ(data->m_nElapse, 15);
    EXPECT_EQ(data->m_nTotalFrame, 6);
    EXPECT_EQ(data->m_nCurFrame, 0);
    EXPECT_TRUE(data->m_bLoop);
    EXPECT_TRUE(data->m_bFirstLoop);
}

TEST_F(AnimationTest, ATickOfAnUnknownAnimationDoesNothing)
{
    control.OnAnimationElapse(12);
    EXPECT_EQ(control.ownRecord, L"");
}

TEST_F(AnimationTest, AStepMayStopItsOwnAnimation)
{
    control.onStep = [this](int current, int id) {
        if (current == 1)
            control.StopAnimation(id);
    };
    ASSERT_TRUE(control.StartAnimation(10, 5, 3));
    host.AdvanceFrames(5);
    EXPECT_EQ(control.ownRecord, L"start:3:first step:0/5:3 step:1/5:3");
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, AStepMayRestartItsOwnAnimation)
{
    control.onStep = [this](int current, int id) {
        if (current != 2)
            return;
        control.onStep = nullptr;
        control.StopAnimation(id);
        control.StartAnimation(20, 1, id);
    };
    ASSERT_TRUE(control.StartAnimation(10, 5, 3));
    host.AdvanceFrames(3);
    EXPECT_EQ(control.GetCurrentFrame(3), 0) << "the tick that restarted it does not count";
    host.AdvanceFrames(5);
    EXPECT_EQ(control.ownRecord, L"start:3:first step:0/5:3 step:1/5:3 step:2/5:3 "
                                 L"start:3:first step:0/1:3 step:1/1:3 stop:3");
}

TEST_F(AnimationTest, TheStartHookMayStopTheAnimation)
{
    control.onStart = [this](int id) { control.StopAnimation(id); };
    ASSERT_TRUE(control.StartAnimation(10, 5, 3));
    host.AdvanceFrames(3);
    EXPECT_EQ(control.ownRecord, L"start:3:first");
}

TEST_F(AnimationTest, TheStopHookMayStartTheAnimationAnew)
{
    int rounds = 0;
    control.onStop = [this, &rounds](int id) {
        if (++rounds == 1) {
            control.StopAnimation(id);
            EXPECT_TRUE(control.StartAnimation(10, 1, id));
        }
    };
    ASSERT_TRUE(control.StartAnimation(10, 1, 3));
    host.AdvanceFrames(2);
    EXPECT_TRUE(control.IsAnimationRunning(3));
    host.AdvanceFrames(4);
    EXPECT_EQ(control.ownRecord, L"start:3:first step:0/1:3 step:1/1:3 stop:3 "
                                 L"start:3:first step:0/1:3 step:1/1:3 stop:3");
    EXPECT_FALSE(control.IsAnimationRunning(3));
}

TEST_F(AnimationTest, AStepMayStartAndStopOtherAnimations)
{
    control.onStep = [this](int current, int id) {
        if (id != 1 || current != 1)
            return;
        control.StopAnimation(2);
        for (int other = 10; other < 40; ++other)
            EXPECT_TRUE(control.StartAnimation(10, 1, other));
    };
    ASSERT_TRUE(control.StartAnimation(10, 2, 1));
    ASSERT_TRUE(control.StartAnimation(10, 5, 2));
    host.AdvanceFrames(2);
    EXPECT_FALSE(control.IsAnimationRunning(2));
    EXPECT_EQ(control.GetCurrentFrame(1), 2);
    host.AdvanceFrames(4);
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, AStepMayMoveTheCurrentFrameToTheEnd)
{
    control.onStep = [this](int, int id) { control.SetCurrentFrame(9, id); };
    ASSERT_TRUE(control.StartAnimation(10, 9, 1));
    host.AdvanceFrames(3);
    EXPECT_EQ(control.ownRecord, L"start:1:first step:0/9:1 stop:1");
}

TEST_F(AnimationTest, AStepMayDeleteItsControl)
{
    static_cast<CContainerUI*>(host.Root())->SetDelayedDestroy(false);
    std::wstring record;
    control.record = &record;
    control.onStep = [this](int current, int) {
        if (current == 1)
            static_cast<CContainerUI*>(host.Root())->Remove(&control);
    };
    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    ASSERT_TRUE(control.StartAnimation(10, 5, 2));
    host.AdvanceFrames(1);
    record.clear();
    host.AdvanceFrames(3);
    EXPECT_EQ(record, L"step:1/5:1");
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(AnimationTest, ACopyHasNoOwnerAndRunsNothing)
{
    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    AnimatedControl copy(control);
    EXPECT_EQ(copy.m_pControl, nullptr);
    EXPECT_FALSE(copy.IsAnimationRunning(1));
    EXPECT_TRUE(control.IsAnimationRunning(1));

    AnimatedControl assigned;
    assigned = control;
    EXPECT_EQ(assigned.m_pControl, &assigned);
    EXPECT_FALSE(assigned.IsAnimationRunning(1));
}

TEST_F(AnimationTest, TheAnimationOfARemovedControlGetsNoTicks)
{
    ASSERT_TRUE(control.StartAnimation(10, 5, 1));
    static_cast<CContainerUI*>(host.Root())->Remove(&control);
    EXPECT_TRUE(host.Timers().empty());
}

static_assert(std::is_convertible_v<CUIAnimation*, IUIAnimation*>);
static_assert(std::has_virtual_destructor_v<IUIAnimation>);

} // namespace
