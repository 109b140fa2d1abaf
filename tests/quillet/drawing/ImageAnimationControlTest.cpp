#include "quillet/drawing/AnimationKit.h"

#include <climits>
#include <string>
#include <vector>

#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

namespace test {
namespace {

using namespace DuiLib;

// Both forms of painting in the open.
class OpenAnimation : public CImageAnimationControlUI {
public:
    using CImageAnimationControlUI::CImageAnimationControlUI;
    using CImageAnimationControlUI::DoPaint;
};

class ImageAnimationControlTest : public testing::Test {
protected:
    static constexpr int kWidth = 40;
    static constexpr int kHeight = 20;

    ImageAnimationControlTest()
    {
        CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    }

    // Each tick of the window's timers is the next of that many frames.
    void StartStepping(int frames)
    {
        animation.SetBitmaps(MakeFrames(frames));
        animation.SetDuring(0);
        animation.Start();
    }

    Picture Painted() { return PaintOf(*animation.GetPainter(), kWidth, kHeight); }
    bool Shows(int frame) { return IsPainted(Painted(), FrameColour(frame)); }

    TempFolder folder;
    ControlHost host{kWidth, kHeight};
    OpenAnimation& animation = host.Add<OpenAnimation>();
};

TEST_F(ImageAnimationControlTest, HasTheNamesOfAPlainControl)
{
    CControlUI plain;
    EXPECT_STREQ(animation.GetClass(), plain.GetClass());
    EXPECT_EQ(animation.GetInterface(DUI_CTR_CONTROL), static_cast<CControlUI*>(&animation));
    EXPECT_EQ(animation.GetInterface(L"ImageAnimationControl"), nullptr);
    EXPECT_EQ(animation.GetInterface(L"ImageAnimationControlUI"), nullptr);
}

TEST_F(ImageAnimationControlTest, HasNoXmlClass)
{
    for (const wchar_t* name : {L"ImageAnimationControl", L"ImageAnimationControlUI"}) {
        CControlUI* const made = CControlFactory::GetInstance()->CreateControl(name);
        EXPECT_EQ(made, nullptr) << Utf8(name);
        delete made;
    }
}

TEST_F(ImageAnimationControlTest, AnimatesItself)
{
    ASSERT_NE(animation.GetPainter(), nullptr);
    StartStepping(3);
    EXPECT_TRUE(animation.IsAnimating());
    EXPECT_TRUE(animation.GetPainter()->IsAnimating());
    for (const int frame : {0, 1, 2, 0}) {
        host.AdvanceFrames(1);
        EXPECT_TRUE(IsPainted(host.Paint(), FrameColour(frame)));
    }
    animation.Stop();
    EXPECT_FALSE(animation.IsAnimating());
    EXPECT_TRUE(host.Timers().empty());
}

TEST_F(ImageAnimationControlTest, OwnsTheGivenPainter)
{
    struct WatchedPainter : ImageAnimationPainter {
        WatchedPainter(CControlUI* control, int& ends)
            : ImageAnimationPainter(control), m_ends(ends)
        {
        }
        ~WatchedPainter() override { ++m_ends; }
        int& m_ends;
    };
    int ends = 0;
    CControlUI other;
    other.SetPos({0, 0, 8, 8}, false);
    {
        auto* const painter = new WatchedPainter(&other, ends);
        OpenAnimation adopting(painter);
        EXPECT_EQ(adopting.GetPainter(), painter);
        adopting.SetBitmaps(MakeFrames(1));
        adopting.Start();
        EXPECT_TRUE(painter->IsAnimating());
        Tick(other); // the painter is the other control's
        const Canvas canvas(8, 8);
        adopting.DoPaint(canvas.Dc(), RECT{0, 0, 8, 8});
        EXPECT_TRUE(IsPainted(canvas.Take(), FrameColour(0)));
        EXPECT_EQ(ends, 0);
        other.OnNotify.Clear();
    }
    EXPECT_EQ(ends, 1);
}

TEST_F(ImageAnimationControlTest, TakesItsFramesAlong)
{
    {
        CImageAnimationControlUI first;
    }
    const int before = GdiObjects();
    {
        CImageAnimationControlUI single;
        single.SetBitmaps(MakeFrames(5));
        single.Start();
        EXPECT_EQ(GdiObjects(), before + 5);
    }
    EXPECT_EQ(GdiObjects(), before);
}

TEST_F(ImageAnimationControlTest, MayBeDestroyedWhileItAnimates)
{
    folder.Write(L"0.bmp", BitmapFile(kRed));
    auto* const root = static_cast<CContainerUI*>(host.Root());
    auto* const second = new CImageAnimationControlUI;
    root->Add(second);
    host.Layout();
    second->SetFileRes({L"0.bmp"}, false, true, false);
    second->Start();
    EXPECT_EQ(host.Timers().size(), 1u);
    host.AdvanceFrames(3);
    root->Remove(second);
    host.Pump();
    EXPECT_TRUE(host.Timers().empty());
    host.AdvanceFrames(3);
}

TEST_F(ImageAnimationControlTest, HandsItsSettingsToThePainter)
{
    animation.SetBitmaps(MakeFrames(100));
    animation.SetDuring(2000);
    animation.SetPrecision(20);
    animation.SetPadding(1, 2, 3, 4);
    animation.SetMaxRound(3);
    animation.SetAnimationBackgroundColor(kYellow.value);
    animation.Start();
    ASSERT_EQ(host.Timers().size(), 1u);
    EXPECT_EQ(host.Timers()[0].period, 20u);
    EXPECT_TRUE(IsPainted(Painted(), kYellow));

    host.AdvanceFrames(50);
    const auto picture = Painted();
    EXPECT_EQ(picture.Count(FrameColour(50)), (kWidth - 4) * (kHeight - 6));
    EXPECT_EQ(picture.Count(FrameColour(50), RECT{1, 2, kWidth - 3, kHeight - 4}),
              (kWidth - 4) * (kHeight - 6));
    EXPECT_EQ(picture.At(0, 0), kYellow);

    host.AdvanceFrames(152);
    EXPECT_TRUE(animation.IsAnimating());
    host.AdvanceFrames(1);
    EXPECT_FALSE(animation.IsAnimating());
}

TEST_F(ImageAnimationControlTest, HandsAllOfItsNamesToThePainter)
{
    folder.Write(L"red.bmp", BitmapFile(kRed));
    animation.SetDuring(0);

    animation.SetFileRes({L"red.bmp"}, false, false, false);
    animation.Start();
    Tick(animation);
    EXPECT_TRUE(IsPainted(Painted(), kRed));

    animation.SetFileRes({L"file='red.bmp' dest='0,0,5,5'"}, false, false, true);
    EXPECT_EQ(Painted().Count(kRed), 25);

    animation.SetFileRes({L"red.bmp"}, true, false, false);
    ::DeleteFileW((folder / L"red.bmp").c_str());
    EXPECT_TRUE(IsPainted(Painted(), kRed));

    // In the background: nothing was decoded so far.
    animation.SetFileRes({L"red.bmp"}, false, true, false);
    EXPECT_TRUE(IsPainted(Painted(), kWhite));
}

TEST_F(ImageAnimationControlTest, NumbersBeyondTheRangeWrap)
{
    StartStepping(3);
    animation.SetPadding(UINT_MAX, UINT_MAX, UINT_MAX, UINT_MAX); // one pixel outwards
    animation.SetMaxRound(UINT_MAX);                              // no limit
    Tick(animation, 2);
    EXPECT_TRUE(Shows(1));
    animation.SetDuring(UINT_MAX); // below zero: always the first
    Tick(animation);
    EXPECT_TRUE(Shows(0));
}

TEST_F(ImageAnimationControlTest, GoesOnWhereAnotherOneWas)
{
    StartStepping(9);
    Tick(animation, 4);
    OpenAnimation other;
    other.SetPos({0, 0, kWidth, kHeight}, false);
    other.SetBitmaps(MakeFrames(9));
    other.Start();
    other.CloneStateFrom(nullptr);
    EXPECT_TRUE(IsPainted(PaintOf(*other.GetPainter(), kWidth, kHeight), kWhite));
    other.CloneStateFrom(&animation);
    EXPECT_TRUE(IsPainted(PaintOf(*other.GetPainter(), kWidth, kHeight), FrameColour(3)));
}

TEST_F(ImageAnimationControlTest, PaintsItsPainterOnly)
{
    folder.Write(L"back.bmp", BitmapFile(kGreen));
    animation.SetBkColor(kRed.value);
    animation.SetForeColor(kRed.value);
    animation.SetBkImage(L"back.bmp");
    animation.SetForeImage(L"back.bmp");
    animation.SetBorderColor(kRed.value);
    animation.SetBorderSize(3);
    animation.SetBitmaps(MakeFrames(1));
    const RECT all{0, 0, kWidth, kHeight};
    for (int state = 0; state < 3; ++state) {
        SCOPED_TRACE(state);
        const Argb expected = state == 2 ? FrameColour(0) : kWhite;
        {
            const Canvas canvas(kWidth, kHeight);
            EXPECT_TRUE(animation.DoPaint(canvas.Dc(), all, nullptr));
            EXPECT_TRUE(IsPainted(canvas.Take(), expected));
        }
        {
            const Canvas canvas(kWidth, kHeight);
            animation.DoPaint(canvas.Dc(), all);
            EXPECT_TRUE(IsPainted(canvas.Take(), expected));
        }
        {
            const Canvas canvas(kWidth, kHeight);
            EXPECT_TRUE(animation.Paint(canvas.Dc(), all));
            EXPECT_TRUE(IsPainted(canvas.Take(), expected));
        }
        if (state == 0)
            animation.Start();
        else
            Tick(animation);
    }
}

TEST_F(ImageAnimationControlTest, IsNotBoundToItsVisibilityAtFirst)
{
    animation.SetBitmaps(MakeFrames(2));
    animation.SetVisible(false);
    animation.SetVisible(true);
    EXPECT_FALSE(animation.IsAnimating());
    animation.Start();
    animation.SetVisible(false);
    EXPECT_TRUE(animation.IsAnimating());
}

TEST_F(ImageAnimationControlTest, IsBoundToItsVisibilityByOneSpellingOfTheValue)
{
    for (const wchar_t* value : {L"TRUE", L"True", L"1", L"", L" true", L"true ", L"false"}) {
        animation.SetAttribute(L"bindwithvisible", value);
        animation.SetVisible(false);
        animation.SetVisible(true);
        EXPECT_FALSE(animation.IsAnimating()) << Utf8(value);
    }
    animation.SetAttribute(L"bindwithvisible", nullptr);
    animation.SetAttribute(nullptr, L"true");
    animation.SetVisible(true);
    EXPECT_FALSE(animation.IsAnimating());

    animation.SetAttribute(L"bindwithvisible", L"true");
    EXPECT_FALSE(animation.IsAnimating()); // not yet
    animation.SetVisible(true);
    EXPECT_TRUE(animation.IsAnimating());
    animation.SetVisible(false);
    EXPECT_FALSE(animation.IsAnimating());
    EXPECT_FALSE(animation.IsVisible());
    animation.SetVisible();
    EXPECT_TRUE(animation.IsAnimating());
    EXPECT_TRUE(animation.IsVisible());
}

TEST_F(ImageAnimationControlTest, IsBoundByTheNameInAnyCase)
{
    for (const wchar_t* name : {L"bindwithvisible", L"BindWithVisible", L"BINDWITHVISIBLE"}) {
        CImageAnimationControlUI single;
        single.SetAttribute(name, L"true");
        single.SetVisible(true);
        EXPECT_TRUE(single.IsAnimating()) << Utf8(name);
    }
    CImageAnimationControlUI single;
    single.SetAttribute(L"bindwithvisibles", L"true");
    single.SetVisible(true);
    EXPECT_FALSE(single.IsAnimating());
}

TEST_F(ImageAnimationControlTest, TheBindingCannotBeUndone)
{
    animation.SetAttribute(L"bindwithvisible", L"true");
    for (const wchar_t* value : {L"false", L"FALSE", L"0", L""})
        animation.SetAttribute(L"bindwithvisible", value);
    animation.SetVisible(true);
    EXPECT_TRUE(animation.IsAnimating());
    animation.SetVisible(false);
    EXPECT_FALSE(animation.IsAnimating());
}

TEST_F(ImageAnimationControlTest, EveryAttributeGoesOnToTheBase)
{
    animation.SetAttribute(L"bindwithvisible", L"true");
    EXPECT_STREQ(animation.GetCustomAttribute(L"bindwithvisible"), L"true");
    animation.SetAttribute(L"tooltip", L"what it shows");
    EXPECT_STREQ(animation.GetToolTip(), L"what it shows");
    animation.SetAttribute(L"mine", L"5");
    EXPECT_STREQ(animation.GetCustomAttribute(L"mine"), L"5");

    animation.SetAttribute(L"visible", L"false");
    animation.SetAttribute(L"visible", L"true");
    EXPECT_TRUE(animation.IsAnimating());
}

TEST_F(ImageAnimationControlTest, ShowingItTwiceBeginsAgain)
{
    animation.SetAttribute(L"bindwithvisible", L"true");
    StartStepping(9);
    Tick(animation, 3);
    EXPECT_TRUE(Shows(2));
    animation.SetVisible(true);
    EXPECT_TRUE(IsPainted(Painted(), kWhite));
    Tick(animation);
    EXPECT_TRUE(Shows(0));
}

// What the control says of itself when its timer comes and goes.
class TimerWatch {
public:
    explicit TimerWatch(const CControlUI& control) : m_control(control) { s_watch = this; }
    ~TimerWatch() { s_watch = nullptr; }
    TimerWatch(const TimerWatch&) = delete;
    TimerWatch& operator=(const TimerWatch&) = delete;

    std::vector<bool> visibleAtStart;
    std::vector<bool> visibleAtEnd;

private:
    static UINT_PTR WINAPI OnSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC callback)
    {
        s_watch->visibleAtStart.push_back(s_watch->m_control.IsVisible());
        return s_watch->m_set.Original<decltype(::SetTimer)>()(window, id, period, callback);
    }
    static BOOL WINAPI OnKillTimer(HWND window, UINT_PTR id)
    {
        s_watch->visibleAtEnd.push_back(s_watch->m_control.IsVisible());
        return s_watch->m_kill.Original<decltype(::KillTimer)>()(window, id);
    }

    static inline TimerWatch* s_watch = nullptr;
    const CControlUI& m_control;
    ImportHook m_set{L"DuiLib.dll", "user32.dll", "SetTimer", &OnSetTimer};
    ImportHook m_kill{L"DuiLib.dll", "user32.dll", "KillTimer", &OnKillTimer};
};

TEST_F(ImageAnimationControlTest, StartsAndStopsBeforeItsVisibilityChanges)
{
    animation.SetVisible(false);
    animation.SetAttribute(L"bindwithvisible", L"true");
    const TimerWatch watch(animation);
    animation.SetVisible(true);
    EXPECT_EQ(watch.visibleAtStart, std::vector<bool>{false});
    animation.SetVisible(false);
    EXPECT_EQ(watch.visibleAtEnd, std::vector<bool>{true});
}

TEST_F(ImageAnimationControlTest, TheBasesPaddingIsStillThere)
{
    animation.SetPadding(RECT{1, 2, 3, 4});
    EXPECT_EQ(static_cast<CControlUI&>(animation).GetPadding().top, 2);
    StartStepping(1);
    Tick(animation);
    EXPECT_TRUE(Shows(0));
}

} // namespace
} // namespace test
