#include "quillet/drawing/AnimationKit.h"

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "support/ObjectCounters.h"

namespace test {
namespace {

using namespace DuiLib;

constexpr UINT kTimer = 17303;

static_assert(std::has_virtual_destructor_v<ImageAnimationPainter>);

class ImageAnimationPainterTest : public AnimationTest {
protected:
    // Each tick is the next frame.
    void StartStepping()
    {
        painter->SetDuring(0);
        painter->Start();
    }

    int ShownAfterATick()
    {
        Tick(*control);
        return Shown();
    }

    // How many pictures of these names the manager keeps.
    int CachedOf(const std::vector<const wchar_t*>& names)
    {
        int cached = 0;
        for (const wchar_t* name : names)
            cached += host->Manager().GetImage(name) != nullptr;
        return cached;
    }
};

TEST_F(ImageAnimationPainterTest, HasItsDefaults)
{
    EXPECT_FALSE(painter->IsAnimating());
    painter->SetBitmaps(MakeFrames(100));
    painter->Start();
    EXPECT_TRUE(painter->IsAnimating());

    const auto timers = host->Timers();
    ASSERT_EQ(timers.size(), 1u);
    EXPECT_EQ(timers[0].period, 10u);

    EXPECT_EQ(Shown(), -1); // no background
    Tick(*control, 50);
    EXPECT_EQ(Shown(), 50); // of a second, in ticks of ten, without padding
    Tick(*control, 1000);
    EXPECT_TRUE(painter->IsAnimating()); // no limit
}

TEST_F(ImageAnimationPainterTest, OwnsItsBitmaps)
{
    painter->SetBitmaps(MakeFrames(1));
    painter->SetBitmaps({});
    const int before = GdiObjects();

    painter->SetBitmaps(MakeFrames(5));
    EXPECT_EQ(GdiObjects(), before + 5);
    painter->SetBitmaps(MakeFrames(2));
    EXPECT_EQ(GdiObjects(), before + 2);
    painter->SetFileRes({L"a.bmp"}, false, false, false);
    EXPECT_EQ(GdiObjects(), before);

    painter->SetBitmaps(MakeFrames(3));
    painter.reset();
    EXPECT_EQ(GdiObjects(), before);
}

TEST_F(ImageAnimationPainterTest, PreloadingReplacesTheBitmaps)
{
    auto names = WriteFrames(4);
    painter->SetFileRes(names, true, false, false);
    const int before = GdiObjects();
    painter->SetBitmaps(MakeFrames(7));
    painter->SetFileRes({names[3], names[1]}, true, true, true);
    EXPECT_EQ(GdiObjects(), before - 2);

    // They are pictures in memory by now.
    for (const auto& name : names)
        ::DeleteFileW((folder / name).c_str());
    StartStepping();
    EXPECT_EQ(ShownAfterATick(), 3);
    EXPECT_EQ(ShownAfterATick(), 1);
    EXPECT_EQ(ShownAfterATick(), 3);
}

TEST_F(ImageAnimationPainterTest, PreloadingSkipsWhatDoesNotDecode)
{
    const auto names = WriteFrames(3);
    folder.Write(L"text.bmp", "no picture");
    painter->SetFileRes({L"missing.bmp", names[0], L"text.bmp", L"", names[2], L"missing.bmp"},
                        true, false, false);
    StartStepping();
    for (const int frame : {0, 2, 0, 2})
        EXPECT_EQ(ShownAfterATick(), frame);
}

TEST_F(ImageAnimationPainterTest, PreloadingNothingKeepsTheBitmaps)
{
    painter->SetBitmaps(MakeFrames(2));
    const int before = GdiObjects();
    painter->SetFileRes({L"missing.bmp"}, true, true, true);
    EXPECT_EQ(GdiObjects(), before);
    painter->SetFileRes({}, true, false, false);
    StartStepping();
    for (const int frame : {0, 1, 0})
        EXPECT_EQ(ShownAfterATick(), frame);
}

TEST_F(ImageAnimationPainterTest, PreloadingNothingStillLeavesTheNames)
{
    painter->SetFileRes(WriteFrames(2), false, false, false);
    StartStepping();
    EXPECT_EQ(ShownAfterATick(), 0);
    painter->SetFileRes({L"missing.bmp"}, true, false, false);
    EXPECT_EQ(Shown(), -1);
    EXPECT_EQ(ShownAfterATick(), -1);

    painter->SetBitmaps(MakeFrames(1));
    EXPECT_EQ(ShownAfterATick(), 0);
}

TEST_F(ImageAnimationPainterTest, NamesReplaceTheBitmapsAndBitmapsTheNames)
{
    painter->SetBitmaps(MakeFrames(2));
    StartStepping();
    EXPECT_EQ(ShownAfterATick(), 0);

    auto names = WriteFrames(6);
    painter->SetFileRes({names[4], names[5]}, false, false, false);
    EXPECT_EQ(Shown(), 4);
    EXPECT_EQ(ShownAfterATick(), 5);
    EXPECT_EQ(ShownAfterATick(), 4);

    painter->SetBitmaps(MakeFrames(1));
    EXPECT_EQ(Shown(), 0);
}

TEST_F(ImageAnimationPainterTest, AFrameThatIsNoLongerThereIsNotDrawn)
{
    painter->SetBitmaps(MakeFrames(10));
    painter->Start();
    Tick(*control, 95);
    EXPECT_EQ(Shown(), 9);
    painter->SetBitmaps(MakeFrames(9));
    EXPECT_EQ(Shown(), -1);
    painter->SetFileRes(WriteFrames(9), false, false, false);
    EXPECT_EQ(Shown(), -1);
}

TEST_F(ImageAnimationPainterTest, PaddingIsAroundBitmaps)
{
    painter->SetBitmaps({MakeBitmap(kBlue, 3, 5)});
    painter->SetPadding(1, 2, 3, 4);
    StartStepping();
    Tick(*control);
    ExpectBounds(Painted(), RECT{1, 2, kWidth - 3, kHeight - 4});
    EXPECT_EQ(Painted().Count(kBlue), (kWidth - 4) * (kHeight - 6));

    painter->SetPadding(-5, 0, 0, kHeight - 1); // beyond the left edge
    EXPECT_EQ(Painted().Count(kBlue), kWidth);
    painter->SetPadding(kWidth, 0, 0, 0);
    EXPECT_EQ(Painted().Count(kBlue), 0);
}

TEST_F(ImageAnimationPainterTest, PaddingIsNotAroundBackgroundAndNames)
{
    painter->SetPadding(5, 5, 5, 5);
    painter->SetAnimationBackgroundColor(kYellow.value);
    painter->Start();
    EXPECT_TRUE(IsPainted(Painted(), kYellow));

    for (const bool asAttribute : {false, true}) {
        painter->SetFileRes(WriteFrames(1), false, false, asAttribute);
        Tick(*control);
        EXPECT_EQ(Shown(), 0);
    }
}

TEST_F(ImageAnimationPainterTest, DrawsTheWholeBitmapAcrossTheControl)
{
    // Left half red, right half green.
    const HBITMAP halves = MakeBitmap(kRed, 2, 1);
    DIBSECTION section{};
    ::GetObjectW(halves, sizeof section, &section);
    static_cast<DWORD*>(section.dsBm.bmBits)[1] = kGreen.value;
    painter->SetBitmaps({halves});
    StartStepping();
    Tick(*control);
    const auto picture = Painted();
    EXPECT_EQ(picture.At(2, 2), kRed);
    EXPECT_EQ(picture.At(2, kHeight - 1), kRed);
    EXPECT_EQ(picture.At(kWidth - 2, 2), kGreen);
}

TEST_F(ImageAnimationPainterTest, BitmapsAreBlendedOverTheBackground)
{
    painter->SetAnimationBackgroundColor(kBlue.value);
    painter->SetBitmaps({MakeBitmap(Argb{0x80800000})}); // half a red, multiplied by its alpha
    StartStepping();
    Tick(*control);
    ExpectSimilar(Painted(), Picture(kWidth, kHeight, Argb{0xFF80007F}), 1, 1);
}

TEST_F(ImageAnimationPainterTest, TheBackgroundIsBlendedOverWhatIsThere)
{
    painter->SetAnimationBackgroundColor(0x80FF0000);
    painter->Start();
    ExpectSimilar(Painted(), Picture(kWidth, kHeight, Argb{0xFFFF7F7F}), 1, 1);
}

TEST_F(ImageAnimationPainterTest, NothingButTheBackgroundIsPaintedRightAfterStart)
{
    for (int form = 0; form < 4; ++form) {
        SCOPED_TRACE(form);
        if (form == 0)
            painter->SetBitmaps(MakeFrames(2));
        else
            painter->SetFileRes(WriteFrames(2), false, form == 1, form == 2);
        painter->SetAnimationBackgroundColor(0);
        painter->Start();
        EXPECT_EQ(Shown(), -1);
        painter->SetAnimationBackgroundColor(kYellow.value);
        EXPECT_TRUE(IsPainted(Painted(), kYellow));
        Tick(*control, 60);
        painter->Start();
        EXPECT_TRUE(IsPainted(Painted(), kYellow));
        painter->Stop();
    }
}

TEST_F(ImageAnimationPainterTest, NothingIsPaintedWhenStopped)
{
    painter->SetBitmaps(MakeFrames(2));
    painter->SetAnimationBackgroundColor(kYellow.value);
    EXPECT_EQ(Shown(), -1);
    painter->Start();
    Tick(*control);
    EXPECT_EQ(Shown(), 0);
    painter->Stop();
    EXPECT_FALSE(painter->IsAnimating());
    EXPECT_EQ(Shown(), -1);
}

TEST_F(ImageAnimationPainterTest, PaintsWhereTheControlIs)
{
    painter->SetBitmaps(MakeFrames(1));
    painter->Start();
    Tick(*control);
    control->SetPos({4, 5, 14, 11}, false);
    ExpectBounds(Painted(), RECT{4, 5, 14, 11});
}

TEST_F(ImageAnimationPainterTest, ListensOnceHoweverOftenItStarts)
{
    painter->SetBitmaps(MakeFrames(9));
    for (int i = 0; i < 3; ++i)
        StartStepping();
    EXPECT_EQ(ShownAfterATick(), 0);
    EXPECT_EQ(ShownAfterATick(), 1);

    painter->Stop();
    StartStepping();
    EXPECT_EQ(ShownAfterATick(), 0);
    EXPECT_EQ(ShownAfterATick(), 1);
}

TEST_F(ImageAnimationPainterTest, ListensForGood)
{
    painter->SetBitmaps(MakeFrames(9));
    StartStepping();
    Tick(*control, 3);
    painter->Stop();
    EXPECT_TRUE(static_cast<bool>(control->OnNotify));
    Tick(*control, 4); // other timers of the control go on

    ImageAnimationPainter other(control);
    other.SetBitmaps(MakeFrames(9));
    other.Start();
    other.CloneStateFrom(&*painter);
    EXPECT_TRUE(IsPainted(PaintOf(other, kWidth, kHeight), FrameColour(6)));
    control->OnNotify.Clear(); // the other painter goes first
}

TEST_F(ImageAnimationPainterTest, EveryTimerOfTheControlIsATick)
{
    painter->SetBitmaps(MakeFrames(9));
    StartStepping();
    host->Manager().SetTimer(control, 5, 250);
    host->ClearSent();
    host->AdvanceFrames(1); // both
    EXPECT_EQ(Shown(), 1);
    EXPECT_EQ(host->Sent(DUI_MSGTYPE_TIMER).size(), 2u);
    host->Manager().KillTimer(control, kTimer);
    host->AdvanceFrames(1);
    EXPECT_EQ(Shown(), 2);
}

TEST_F(ImageAnimationPainterTest, OtherSendersAndOtherNotificationsAreNoTick)
{
    painter->SetBitmaps(MakeFrames(9));
    StartStepping();
    EXPECT_EQ(ShownAfterATick(), 0);

    CControlUI other;
    for (CControlUI* sender : {static_cast<CControlUI*>(nullptr), &other, host->Root()}) {
        TNotifyUI notification;
        notification.sType = DUI_MSGTYPE_TIMER;
        notification.pSender = sender;
        EXPECT_TRUE(control->OnNotify(&notification));
        EXPECT_EQ(Shown(), 0);
    }
    for (const wchar_t* type : {L"click", L"", L"Timer", L"timers"}) {
        TNotifyUI notification;
        notification.sType = type;
        notification.pSender = control;
        EXPECT_TRUE(control->OnNotify(&notification));
        EXPECT_EQ(Shown(), 0);
    }
}

TEST_F(ImageAnimationPainterTest, EveryNotificationGoesOnToTheNextListener)
{
    struct Listener {
        bool Listen(void*)
        {
            ++heard;
            return true;
        }
        int heard = 0;
    } listener;
    painter->SetBitmaps(MakeFrames(2));
    painter->Start();
    control->OnNotify += MakeDelegate(&listener, &Listener::Listen);
    EXPECT_TRUE(Tick(*control));
    EXPECT_EQ(listener.heard, 1);
    host->Manager().SendNotify(control, L"click");
    EXPECT_EQ(listener.heard, 2);
    painter->Stop();
    EXPECT_TRUE(Tick(*control));
    EXPECT_EQ(listener.heard, 3);
}

TEST_F(ImageAnimationPainterTest, RunsATimerOfItsOwnFromStartToStop)
{
    painter->SetBitmaps(MakeFrames(9));
    painter->SetPrecision(35);
    EXPECT_TRUE(host->Timers().empty());
    painter->Start();
    ASSERT_EQ(host->Timers().size(), 1u);
    EXPECT_EQ(host->Timers()[0].period, 35u);

    host->ClearSent();
    host->AdvanceFrames(1);
    const auto sent = host->Sent(DUI_MSGTYPE_TIMER);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].sender, control);
    EXPECT_EQ(sent[0].wParam, kTimer);
    EXPECT_EQ(Shown(), 0);

    // Another timer of the control stays.
    host->Manager().SetTimer(control, 5, 250);
    painter->Stop();
    ASSERT_EQ(host->Timers().size(), 1u);
    EXPECT_EQ(host->Timers()[0].period, 250u);
}

TEST_F(ImageAnimationPainterTest, TheLimitOfRoundsStopsTheTimerToo)
{
    painter->SetBitmaps(MakeFrames(100));
    painter->SetMaxRound(3);
    painter->Start();
    host->AdvanceFrames(202);
    EXPECT_TRUE(painter->IsAnimating());
    EXPECT_EQ(host->Timers().size(), 1u);
    host->Layout();
    Validate();
    host->AdvanceFrames(1);
    EXPECT_FALSE(painter->IsAnimating());
    EXPECT_TRUE(host->Timers().empty());
    EXPECT_TRUE(IsInvalid());
}

TEST_F(ImageAnimationPainterTest, TheLimitOfRoundsEndsAtTheFirstFrame)
{
    painter->SetBitmaps(MakeFrames(100));
    painter->SetMaxRound(1);
    painter->Start();
    Tick(*control, 101);
    ASSERT_FALSE(painter->IsAnimating());

    CControlUI place;
    place.SetPos({0, 0, kWidth, kHeight}, false);
    ImageAnimationPainter other(&place);
    other.SetBitmaps(MakeFrames(100));
    other.Start();
    other.CloneStateFrom(&*painter);
    EXPECT_TRUE(IsPainted(PaintOf(other, kWidth, kHeight), FrameColour(0)));
}

TEST_F(ImageAnimationPainterTest, InvalidatesTheControlForANewFrameOnly)
{
    painter->SetBitmaps(MakeFrames(10));
    painter->Start();
    for (int tick = 1; tick <= 40; ++tick) {
        host->Layout();
        Validate();
        Tick(*control);
        EXPECT_EQ(IsInvalid(), tick == 1 || tick % 10 == 0) << tick;
    }
}

TEST_F(ImageAnimationPainterTest, InvalidatesTheControlWhenItStops)
{
    painter->SetBitmaps(MakeFrames(10));
    painter->Start();
    host->Layout();
    Validate();
    painter->Stop();
    EXPECT_TRUE(IsInvalid());
    host->Layout();
    Validate();
    painter->Stop(); // also when it was stopped already
    EXPECT_TRUE(IsInvalid());
}

TEST_F(ImageAnimationPainterTest, DoesNothingWithoutAControl)
{
    ImageAnimationPainter alone(nullptr);
    alone.SetBitmaps(MakeFrames(2));
    alone.SetAnimationBackgroundColor(kYellow.value);
    alone.Start();
    EXPECT_TRUE(alone.IsAnimating());
    EXPECT_TRUE(IsPainted(PaintOf(alone, 4, 4), kWhite));
    alone.Stop();
    EXPECT_FALSE(alone.IsAnimating());

    alone.SetFileRes(WriteFrames(1), false, true, false);
    alone.Start();
    EXPECT_TRUE(IsPainted(PaintOf(alone, 4, 4), kWhite));
    alone.Stop();
}

TEST_F(ImageAnimationPainterTest, WithoutAManagerOnlyBitmapsAreDrawn)
{
    CControlUI single;
    single.SetPos({0, 0, kWidth, kHeight}, false);
    ImageAnimationPainter alone(&single);
    alone.SetBitmaps(MakeFrames(3));
    alone.SetDuring(0);
    alone.Start();
    Tick(single, 2);
    EXPECT_TRUE(IsPainted(PaintOf(alone, kWidth, kHeight), FrameColour(1)));

    alone.SetAnimationBackgroundColor(kYellow.value);
    for (int form = 0; form < 3; ++form) {
        alone.SetFileRes(WriteFrames(3), false, form == 1, form == 2);
        EXPECT_TRUE(IsPainted(PaintOf(alone, kWidth, kHeight), kYellow)) << form;
    }
    alone.Stop();
    EXPECT_FALSE(alone.IsAnimating());
}

TEST_F(ImageAnimationPainterTest, GoesOnWhereAnotherOneWas)
{
    painter->SetBitmaps(MakeFrames(10));
    painter->Start();
    Tick(*control, 57);

    CControlUI place;
    place.SetPos({0, 0, kWidth, kHeight}, false);
    ImageAnimationPainter other(&place);
    const auto shown = [&] {
        const auto picture = PaintOf(other, kWidth, kHeight);
        for (int frame = 0; frame < 10; ++frame)
            if (IsPainted(picture, FrameColour(frame)))
                return frame;
        return -1;
    };
    other.SetBitmaps(MakeFrames(10));
    other.CloneStateFrom(&*painter);
    EXPECT_FALSE(other.IsAnimating());
    other.Start();
    EXPECT_EQ(shown(), -1);
    other.CloneStateFrom(nullptr);
    EXPECT_EQ(shown(), -1);
    other.CloneStateFrom(&*painter);
    EXPECT_EQ(shown(), 5);
    Tick(place, 2);
    EXPECT_EQ(shown(), 5);
    Tick(place); // 600
    EXPECT_EQ(shown(), 6);
    other.CloneStateFrom(nullptr);
    EXPECT_EQ(shown(), 6);
    EXPECT_EQ(Shown(), 5);
}

TEST_F(ImageAnimationPainterTest, CopiesShareOneRecord)
{
    // Only one of them is destroyed.
    auto* const copy = new ImageAnimationPainter(*painter);
    copy->SetBitmaps(MakeFrames(9));
    copy->SetDuring(0);
    painter->Start();
    EXPECT_TRUE(copy->IsAnimating());
    copy->Start(); // the record listens already
    EXPECT_EQ(ShownAfterATick(), 0);
    EXPECT_EQ(ShownAfterATick(), 1);
    EXPECT_TRUE(IsPainted(PaintOf(*copy, kWidth, kHeight), FrameColour(1)));
    painter->Stop();
    EXPECT_FALSE(copy->IsAnimating());
    ::operator delete(copy);
}

TEST_F(ImageAnimationPainterTest, AnAssignedOneSharesTheRecordAndItsOwnIsLost)
{
    auto* const assigned = new ImageAnimationPainter(nullptr);
    assigned->SetBitmaps(MakeFrames(3));
    const int before = GdiObjects();
    *assigned = *painter;
    EXPECT_EQ(GdiObjects(), before);
    painter->SetBitmaps(MakeFrames(9));
    StartStepping();
    Tick(*control);
    EXPECT_TRUE(assigned->IsAnimating());
    EXPECT_TRUE(IsPainted(PaintOf(*assigned, kWidth, kHeight), FrameColour(0)));
    ::operator delete(assigned);
}

TEST_F(ImageAnimationPainterTest, NamesAreDrawnAcrossTheControlAndNotKept)
{
    const auto names = WriteFrames(3);
    painter->SetFileRes(names, false, false, false);
    StartStepping();
    for (const int frame : {0, 1, 2, 0}) {
        EXPECT_EQ(ShownAfterATick(), frame);
        EXPECT_EQ(CachedOf({L"0.bmp", L"1.bmp", L"2.bmp"}), 0);
    }
    // What a plain drawing leaves.
    const Canvas canvas(kWidth, kHeight);
    CRenderEngine::DrawImageString(canvas.Dc(), &host->Manager(), control->GetPos(),
                                   control->GetPos(), L"1.bmp");
    EXPECT_EQ(CachedOf({L"0.bmp", L"1.bmp", L"2.bmp"}), 1);
}

TEST_F(ImageAnimationPainterTest, ANameThatDoesNotLoadDrawsNothing)
{
    for (const bool asAttribute : {false, true}) {
        painter->SetFileRes({L"missing.bmp", L"", L"file='missing.bmp'"}, false, false,
                            asAttribute);
        painter->SetAnimationBackgroundColor(kYellow.value);
        StartStepping();
        for (int i = 0; i < 4; ++i) {
            Tick(*control);
            EXPECT_TRUE(IsPainted(Painted(), kYellow));
        }
    }
}

TEST_F(ImageAnimationPainterTest, AttributesAreDrawnAsTheySay)
{
    folder.Write(L"red.bmp", BitmapFile(kRed));
    painter->SetFileRes({L"file='red.bmp' dest='2,3,10,9'", L"file='red.bmp' fade='128'",
                         L"red.bmp", L"res='red.bmp' dest='0,0,20,20' fade='64'"},
                        false, true, true);
    StartStepping();

    Tick(*control);
    Picture picture = Painted();
    ExpectBounds(picture, RECT{2, 3, 10, 9});
    EXPECT_EQ(picture.Count(kRed), 8 * 6);

    Tick(*control);
    ExpectSimilar(Painted(), Picture(kWidth, kHeight, Argb{0xFFFF7F7F}), 1, 1);

    Tick(*control);
    EXPECT_TRUE(IsPainted(Painted(), kRed));

    Tick(*control);
    picture = Painted();
    ExpectBounds(picture, RECT{0, 0, 20, 20});
    EXPECT_EQ(
        CachedOf({L"red.bmp", L"file='red.bmp' dest='2,3,10,9'", L"file='red.bmp' fade='128'"}), 0);
    painter->Stop();
}

// At 150 % a picture is first looked for by a name of its own.
TEST_F(ImageAnimationPainterTest, PicturesOfAScaledWindowAreNotKeptEither)
{
    ControlHost scaled(kWidth, kHeight, 144);
    auto& place = scaled.Add<CControlUI>();
    folder.Write(L"a.bmp", BitmapFile(kRed));
    folder.Write(L"a@150.bmp", BitmapFile(kGreen));
    folder.Write(L"b.bmp", BitmapFile(kBlue));
    auto& manager = scaled.Manager();
    const auto cached = [&manager] {
        int count = 0;
        for (const wchar_t* name : {L"a.bmp", L"a@150.bmp", L"b.bmp", L"b@150.bmp"})
            count += manager.GetImage(name) != nullptr;
        return count;
    };

    auto* const frames = new ImageAnimationPainter(&place);
    for (const bool asAttribute : {false, true}) {
        SCOPED_TRACE(asAttribute);
        frames->SetFileRes({L"a.bmp", L"b.bmp"}, false, false, asAttribute);
        frames->SetDuring(0);
        frames->Start();
        for (const Argb colour : {kGreen, kBlue}) {
            Tick(place);
            const auto picture = PaintOf(*frames, kWidth, kHeight);
            EXPECT_EQ(picture.At(kWidth / 2, kHeight / 2), colour);
            EXPECT_EQ(cached(), 0);
        }
    }
    frames->SetFileRes({L"file='a.bmp' dest='0,0,8,8'"}, false, false, true);
    Tick(place);
    const auto picture = PaintOf(*frames, kWidth, kHeight);
    ExpectBounds(picture, RECT{0, 0, 12, 12});
    EXPECT_EQ(picture.At(4, 4), kGreen);
    EXPECT_EQ(cached(), 0);
    frames->Stop();
    place.OnNotify.Clear();
    delete frames;
}

} // namespace
} // namespace test
