#include "quillet/drawing/AnimationKit.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

namespace test {
namespace {

using namespace DuiLib;

constexpr std::chrono::seconds kLongest{30}; // for what happens at once

// Follows the thread that decodes: it looks at the clock before and after each picture, opens the
// picture's file in between, and sleeps for the rest of its time. The clock stands still, unless
// times are given, and nobody really sleeps.
class DecoderProbe {
public:
    DecoderProbe() { s_probe = this; }
    ~DecoderProbe() { s_probe = nullptr; }
    DecoderProbe(const DecoderProbe&) = delete;
    DecoderProbe& operator=(const DecoderProbe&) = delete;

    // Wait until that many pictures were begun or ended; the test fails when it takes too long.
    void WaitForBegun(int pictures) { WaitFor(m_begun, pictures); }
    void WaitForEnded(int pictures) { WaitFor(m_ended, pictures); }
    void WaitForDeleting(int bitmaps) { WaitFor(m_deleting, bitmaps); }

    // The thread stops at the beginning of a picture, or before it deletes a bitmap, until it is
    // released.
    void HoldBegins() { Set(m_holdsBegins, true); }
    void HoldDeletions() { Set(m_holdsDeletions, true); }
    void Release()
    {
        Set(m_holdsBegins, false);
        Set(m_holdsDeletions, false);
    }

    // What the clock tells next: the beginning and the end of a picture.
    void SetTimes(DWORD begin, DWORD end)
    {
        const std::scoped_lock lock(m_mutex);
        m_times = {begin, end};
    }

    // Called on the thread, at the beginning of a picture.
    void AtBegin(std::function<void()> action) { m_atBegin = std::move(action); }

    int Begun() { return Locked(m_begun); }
    int Ended() { return Locked(m_ended); }
    std::vector<DWORD> Slept() { return Locked(m_slept); }
    // Names of the files without their folder.
    std::vector<std::wstring> Opened() { return Locked(m_opened); }

private:
    template <class Value>
    Value Locked(const Value& value)
    {
        const std::scoped_lock lock(m_mutex);
        return value;
    }

    void Set(bool& flag, bool value)
    {
        {
            const std::scoped_lock lock(m_mutex);
            flag = value;
        }
        m_changed.notify_all();
    }

    void WaitFor(const int& counter, int reached)
    {
        std::unique_lock lock(m_mutex);
        EXPECT_TRUE(m_changed.wait_for(lock, kLongest, [&] { return counter >= reached; }));
    }

    void Count(int& counter, const bool& held)
    {
        std::unique_lock lock(m_mutex);
        ++counter;
        m_changed.notify_all();
        m_changed.wait_for(lock, kLongest, [&] { return !held; });
    }

    static bool IsDecoding() { return ::GetCurrentThreadId() != s_probe->m_testThread; }

    static DWORD WINAPI OnGetTickCount()
    {
        auto& probe = *s_probe;
        if (!IsDecoding())
            return probe.m_clock.Original<decltype(::GetTickCount)>()();
        const DWORD time = probe.NextTime(); // before the test hears of it and sets others
        probe.m_inPicture = !probe.m_inPicture;
        if (probe.m_inPicture) {
            if (probe.m_atBegin)
                probe.m_atBegin();
            probe.Count(probe.m_begun, probe.m_holdsBegins);
        } else {
            probe.Count(probe.m_ended, probe.m_never);
        }
        return time;
    }

    DWORD NextTime()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_times.empty())
            return 0;
        const DWORD time = m_times.front();
        m_times.pop_front();
        return time;
    }

    static void WINAPI OnSleep(DWORD milliseconds)
    {
        auto& probe = *s_probe;
        if (!IsDecoding()) {
            probe.m_sleep.Original<decltype(::Sleep)>()(milliseconds);
            return;
        }
        const std::scoped_lock lock(probe.m_mutex);
        probe.m_slept.push_back(milliseconds);
    }

    static HANDLE WINAPI OnCreateFile(LPCWSTR path, DWORD access, DWORD share,
                                      LPSECURITY_ATTRIBUTES security, DWORD creation, DWORD flags,
                                      HANDLE pattern)
    {
        auto& probe = *s_probe;
        if (IsDecoding()) {
            const std::wstring name(path);
            const std::scoped_lock lock(probe.m_mutex);
            probe.m_opened.push_back(name.substr(name.find_last_of(L"\\/") + 1));
        }
        return probe.m_open.Original<decltype(::CreateFileW)>()(path, access, share, security,
                                                                creation, flags, pattern);
    }

    static BOOL WINAPI OnDeleteObject(HGDIOBJ object)
    {
        auto& probe = *s_probe;
        if (IsDecoding())
            probe.Count(probe.m_deleting, probe.m_holdsDeletions);
        return probe.m_delete.Original<decltype(::DeleteObject)>()(object);
    }

    static inline DecoderProbe* s_probe = nullptr;

    const DWORD m_testThread = ::GetCurrentThreadId();
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_inPicture = false;
    bool m_holdsBegins = false;
    bool m_holdsDeletions = false;
    const bool m_never = false;
    int m_begun = 0;
    int m_ended = 0;
    int m_deleting = 0;
    std::deque<DWORD> m_times;
    std::function<void()> m_atBegin;
    std::vector<DWORD> m_slept;
    std::vector<std::wstring> m_opened;
    ImportHook m_clock{L"Quillet.dll", "kernel32.dll", "GetTickCount", &OnGetTickCount};
    ImportHook m_sleep{L"Quillet.dll", "kernel32.dll", "Sleep", &OnSleep};
    ImportHook m_open{L"DuiLib.dll", "kernel32.dll", "CreateFileW", &OnCreateFile};
    ImportHook m_delete{L"Quillet.dll", "gdi32.dll", "DeleteObject", &OnDeleteObject};
};

// Calls something whenever Quillet asks for the size of a bitmap, which it does while it paints.
class SizeHook {
public:
    explicit SizeHook(std::function<void()> action) : m_action(std::move(action)) { s_hook = this; }
    ~SizeHook() { s_hook = nullptr; }
    SizeHook(const SizeHook&) = delete;
    SizeHook& operator=(const SizeHook&) = delete;

private:
    static int WINAPI OnGetObject(HANDLE object, int size, LPVOID data)
    {
        s_hook->m_action();
        return s_hook->m_hook.Original<decltype(::GetObjectW)>()(object, size, data);
    }

    static inline SizeHook* s_hook = nullptr;
    std::function<void()> m_action;
    ImportHook m_hook{L"Quillet.dll", "gdi32.dll", "GetObjectW", &OnGetObject};
};

class FrameDecoderTest : public AnimationTest {
protected:
    FrameDecoderTest() : names(WriteFrames(8)) {}
    ~FrameDecoderTest() override
    {
        probe.Release();
        if (painter)
            painter->Stop();
    }

    // Each tick is the next of the frames.
    void Start(const std::vector<std::wstring>& frames)
    {
        painter->SetDuring(0);
        painter->SetFileRes(frames, false, true, false);
        painter->Start();
    }

    // Hands out the next frame and waits until it is decoded.
    void Decode()
    {
        const int ended = probe.Ended();
        Tick(*control);
        probe.WaitForEnded(ended + 1);
    }

    const std::vector<std::wstring> names;
    DecoderProbe probe;
};

TEST_F(FrameDecoderTest, RunsFromStartToStop)
{
    const int before = Threads();
    Start(names);
    EXPECT_EQ(Threads(), before + 1);
    Decode();
    EXPECT_EQ(Shown(), 0);
    painter->Stop();
    EXPECT_EQ(Threads(), before);
}

TEST_F(FrameDecoderTest, RunsOnlyForNamesThatAreDecodedInTheBackground)
{
    const int before = Threads();
    painter->Start();
    painter->SetFileRes(names, false, false, false);
    painter->Start();
    painter->SetFileRes(names, true, true, false);
    painter->Start();
    Tick(*control, 50);
    EXPECT_EQ(Threads(), before);
}

TEST_F(FrameDecoderTest, StartReturnsWhenTheThreadRuns)
{
    const int before = Threads();
    painter->SetFileRes(names, false, true, false);
    for (int i = 0; i < 1000; ++i) {
        painter->Start();
        painter->Start(); // must find it running
        if (i % 100 == 0) {
            ASSERT_EQ(Threads(), before + 1);
        }
        painter->Stop();
    }
    EXPECT_EQ(Threads(), before);
}

TEST_F(FrameDecoderTest, AStartWhileItDecodesStartsNoSecondThread)
{
    Start(names);
    const int before = Threads();
    probe.HoldBegins();
    Tick(*control);
    probe.WaitForBegun(1);
    painter->Start();
    EXPECT_EQ(Threads(), before);
    probe.Release();
    probe.WaitForEnded(1);
    Decode();
    EXPECT_EQ(Shown(), 0);
}

// What a thousand rounds leave behind, after some that fill the caches of the system.
template <class Round>
void ExpectNothingIsLeftOf(Round round)
{
    constexpr int kRounds = 1000;
    for (int i = 0; i < 50; ++i)
        round();
    const int threads = Threads();
    const int objects = GdiObjects();
    const int blocks = HeapBlocks();
    for (int i = 0; i < kRounds && !testing::Test::HasFailure(); ++i)
        round();
    EXPECT_EQ(Threads(), threads);
    EXPECT_EQ(GdiObjects(), objects);
    EXPECT_LT(HeapBlocks(), blocks + kRounds / 20);
}

TEST_F(FrameDecoderTest, AThousandStartsAndStopsLeaveNothing)
{
    Start(names);
    Decode();
    painter->Stop();
    ExpectNothingIsLeftOf([this] {
        painter->Start();
        painter->Stop();
    });
}

TEST_F(FrameDecoderTest, AThousandStopsWhileItDecodesLeaveNothing)
{
    painter->SetDuring(0);
    painter->SetFileRes(names, false, true, false);
    ExpectNothingIsLeftOf([this] {
        const int begun = probe.Begun();
        painter->Start();
        Tick(*control);
        probe.WaitForBegun(begun + 1);
        painter->Stop();
    });
    EXPECT_EQ(probe.Begun(), probe.Ended());
}

TEST_F(FrameDecoderTest, AThousandRestartsGoOnDecoding)
{
    Start(names);
    ExpectNothingIsLeftOf([this] {
        Decode();
        EXPECT_EQ(Shown(), 0);
        painter->Stop();
        painter->Start();
    });
}

TEST_F(FrameDecoderTest, AThousandDestructionsWhileItDecodesLeaveNothing)
{
    ExpectNothingIsLeftOf([this] {
        CControlUI place;
        ImageAnimationPainter shortLived(&place);
        shortLived.SetDuring(0);
        shortLived.SetFileRes(names, false, true, false);
        shortLived.Start();
        const int begun = probe.Begun();
        Tick(place);
        probe.WaitForBegun(begun + 1);
        place.OnNotify.Clear();
    });
    EXPECT_EQ(probe.Begun(), probe.Ended());
}

TEST_F(FrameDecoderTest, TheDecodedBitmapGoesWithThePainter)
{
    Start(names);
    Decode();
    painter->Stop();
    const int before = GdiObjects();
    control->OnNotify.Clear();
    painter.reset();
    EXPECT_EQ(GdiObjects(), before - 1);
}

TEST_F(FrameDecoderTest, OnlyTheLatestNameIsDecoded)
{
    Start(names);
    probe.HoldBegins();
    Tick(*control);
    probe.WaitForBegun(1);
    Tick(*control, 4);
    probe.Release();
    probe.WaitForEnded(2);
    Decode();
    EXPECT_EQ(probe.Opened(), (std::vector<std::wstring>{L"0.bmp", L"4.bmp", L"5.bmp"}));
    EXPECT_EQ(probe.Ended(), 3);
}

TEST_F(FrameDecoderTest, ThePaintShowsWhatIsDecodedSoFar)
{
    Start(names);
    probe.HoldBegins();
    Tick(*control);
    probe.WaitForBegun(1);
    EXPECT_EQ(Shown(), -1);
    probe.Release();
    probe.WaitForEnded(1);
    EXPECT_EQ(Shown(), 0);

    probe.HoldBegins();
    Tick(*control);
    probe.WaitForBegun(2);
    EXPECT_EQ(Shown(), 0);
    probe.Release();
    probe.WaitForEnded(2);
    EXPECT_EQ(Shown(), 1);
}

TEST_F(FrameDecoderTest, TheDecodedFrameIsPadded)
{
    painter->SetPadding(1, 2, 3, 4);
    Start(names);
    Decode();
    ExpectBounds(Painted(), RECT{1, 2, kWidth - 3, kHeight - 4});
}

TEST_F(FrameDecoderTest, TheDecodedFrameOutlivesAStop)
{
    Start(names);
    Decode();
    Decode();
    painter->Stop();
    EXPECT_EQ(Shown(), -1);
    painter->Start();
    EXPECT_EQ(Shown(), -1);
    probe.HoldBegins();
    Tick(*control);
    EXPECT_EQ(Shown(), 1);
    probe.Release();
    probe.WaitForEnded(3);
    EXPECT_EQ(Shown(), 0);
}

TEST_F(FrameDecoderTest, APictureThatDoesNotDecodeLeavesTheFormerFrame)
{
    folder.Write(L"text.bmp", "no picture");
    Start({names[5], L"missing.bmp", L"text.bmp", names[6]});
    for (const int frame : {5, 5, 5, 6, 5}) {
        Decode();
        EXPECT_EQ(Shown(), frame);
    }
}

TEST_F(FrameDecoderTest, AnImageStringIsNoNameForIt)
{
    Start({names[5], L"file='6.bmp'"});
    Decode();
    Decode();
    EXPECT_EQ(Shown(), 5);
}

TEST_F(FrameDecoderTest, NoFramesAreNoName)
{
    painter->SetFileRes({}, false, true, false);
    for (const int during : {0, 1000}) {
        painter->SetDuring(during);
        painter->Start();
        Tick(*control, 100);
        EXPECT_EQ(Shown(), -1);
        painter->Stop();
    }
    EXPECT_EQ(probe.Begun(), 0);
}

TEST_F(FrameDecoderTest, AnEmptyNameIsNotDecoded)
{
    Start({names[3], L""});
    Decode();
    Tick(*control); // nothing to wait for
    Decode();
    EXPECT_EQ(probe.Ended(), 2);
    EXPECT_EQ(Shown(), 3);
}

TEST_F(FrameDecoderTest, APictureTakesThePrecisionAtLeast)
{
    struct Row {
        DWORD begin, end;
        int precision;
        std::vector<DWORD> slept;
    };
    constexpr DWORD kBeforeTheWrap = 0xFFFFFFFE;
    const Row rows[] = {{1000, 1007, 10, {3}},
                        {1000, 1000, 10, {10}},
                        {1000, 1009, 10, {1}},
                        {1000, 1010, 10, {}},
                        {1000, 1011, 10, {}},
                        {1000, 90'000, 10, {}},
                        {kBeforeTheWrap, 5, 10, {3}},
                        {kBeforeTheWrap, 8, 10, {}},
                        {0, 1, 1000, {999}},
                        {7, 7, 0, {}},
                        {7, 7, -5, {}}};
    std::vector<DWORD> slept;
    Start(names);
    for (const auto& row : rows) {
        painter->SetPrecision(row.precision); // also while the thread runs
        probe.SetTimes(row.begin, row.end);
        Decode();
        // The next picture begins after the sleep.
        probe.SetTimes(0, 1'000'000);
        Decode();
        slept.insert(slept.end(), row.slept.begin(), row.slept.end());
        EXPECT_EQ(probe.Slept(), slept)
            << row.begin << " to " << row.end << " of " << row.precision;
    }
}

TEST_F(FrameDecoderTest, WaitsTenMillisecondsWhenNothingIsSaid)
{
    Start(names);
    Decode();
    Decode();
    painter->Stop();
    EXPECT_EQ(probe.Slept(), (std::vector<DWORD>{10, 10}));
}

TEST_F(FrameDecoderTest, TheLimitOfRoundsStopsTheThreadToo)
{
    const int before = Threads();
    painter->SetFileRes(std::vector<std::wstring>(100, names[0]), false, true, false);
    painter->SetMaxRound(1);
    painter->Start();
    host->AdvanceFrames(100);
    EXPECT_EQ(Threads(), before + 1);
    host->AdvanceFrames(1);
    EXPECT_FALSE(painter->IsAnimating());
    EXPECT_EQ(Threads(), before);

    // The first frame was handed out after the stop.
    const int ended = probe.Ended();
    painter->Start();
    probe.WaitForEnded(ended + 1);
}

TEST_F(FrameDecoderTest, AHandlerOfTheControlMayStopIt)
{
    struct Listener {
        bool Listen(void* notification)
        {
            if (static_cast<TNotifyUI*>(notification)->sType == DUI_MSGTYPE_TIMER) {
                probe.WaitForBegun(++ticks); // stopped while it decodes
                painter.Stop();
            }
            return true;
        }
        DecoderProbe& probe;
        ImageAnimationPainter& painter;
        int ticks = 0;
    } listener{probe, *painter};

    const int before = Threads();
    painter->SetDuring(0);
    painter->SetFileRes(names, false, true, false);
    for (int i = 0; i < 100; ++i) {
        painter->Start();
        if (i == 0)
            control->OnNotify += MakeDelegate(&listener, &Listener::Listen);
        host->AdvanceFrames(1);
        ASSERT_FALSE(painter->IsAnimating());
        ASSERT_TRUE(host->Timers().empty());
        ASSERT_EQ(Threads(), before);
    }
    EXPECT_EQ(listener.ticks, 100);
}

TEST_F(FrameDecoderTest, AHandlerMayStopAndStartItAgain)
{
    struct Listener {
        bool Listen(void* notification)
        {
            if (static_cast<TNotifyUI*>(notification)->sType == DUI_MSGTYPE_TIMER) {
                painter.Stop();
                painter.Start();
            }
            return true;
        }
        ImageAnimationPainter& painter;
    } listener{*painter};

    control->OnNotify += MakeDelegate(&listener, &Listener::Listen); // before the painter
    Start(names);
    const int threads = Threads();
    host->AdvanceFrames(100);
    probe.WaitForEnded(1);
    EXPECT_EQ(Threads(), threads);
    EXPECT_TRUE(painter->IsAnimating());
    EXPECT_EQ(host->Timers().size(), 1u);
}

TEST_F(FrameDecoderTest, NamesGivenWhileItAnimatesWaitForTheNextStart)
{
    painter->SetBitmaps(MakeFrames(1));
    painter->SetDuring(0);
    painter->Start();
    const int before = Threads();
    painter->SetFileRes(names, false, true, false);
    Tick(*control);
    EXPECT_EQ(Threads(), before);
    EXPECT_EQ(Shown(), -1);
    painter->Start();
    probe.WaitForEnded(1);
    EXPECT_EQ(probe.Opened(), std::vector<std::wstring>{L"0.bmp"});
}

TEST_F(FrameDecoderTest, AStopForgetsTheNameThatWaits)
{
    painter->SetDuring(0);
    painter->Start();
    painter->SetFileRes(names, false, true, false);
    Tick(*control, 3); // nobody decodes it
    painter->Stop();
    painter->Start();
    Decode();
    painter->Stop();
    EXPECT_EQ(probe.Opened(), std::vector<std::wstring>{L"0.bmp"});
}

TEST_F(FrameDecoderTest, BitmapsGivenWhileItRunsAreShownAtOnce)
{
    Start(names);
    Decode();
    const int begun = probe.Begun();
    painter->SetBitmaps({MakeBitmap(FrameColour(7))});
    EXPECT_EQ(Shown(), 7);
    Tick(*control, 10);
    EXPECT_EQ(Shown(), 7);
    painter->Stop();
    EXPECT_EQ(probe.Begun(), begun);
}

TEST_F(FrameDecoderTest, ThePaintTakesTheFrameWithoutALock)
{
    Start(names);
    Decode();
    Decode();
    EXPECT_EQ(Shown(), 1); // the first paint makes what all paints share
    const int before = GdiObjects();
    {
        // While a paint is at the bitmap the thread replaces it, and does not wait for the paint.
        const SizeHook hook([this] { Decode(); });
        EXPECT_EQ(Shown(), 1);
    }
    EXPECT_EQ(GdiObjects(), before);
    EXPECT_EQ(Shown(), 2);
}

TEST_F(FrameDecoderTest, TheNewFrameIsInPlaceBeforeTheOldOneIsDeleted)
{
    Start(names);
    Decode();
    probe.HoldDeletions();
    Tick(*control);
    probe.WaitForDeleting(1);
    EXPECT_EQ(Shown(), 1);
    probe.Release();
    probe.WaitForEnded(2);
    EXPECT_EQ(Shown(), 1);
}

TEST_F(FrameDecoderTest, ThePaintNeverMeetsADeletedBitmap)
{
    constexpr int kReplacements = 10'000;
    painter->SetPrecision(0);
    Start(names);
    Decode();
    Canvas canvas(kWidth, kHeight);
    int paints = 0;
    for (int begun = 1; begun < kReplacements && !HasFailure();) {
        // The thread replaces the frame any moment from here on, several times while it is painted.
        Tick(*control);
        for (int i = 0; i < 3; ++i, ++paints) {
            canvas.Fill(kWhite);
            painter->Paint(canvas.Dc());
            const Picture picture = canvas.Take();
            const Argb colour = picture.At(0, 0);
            const unsigned frame = ((colour.value & 0xFFFFFF) - 0x100000) / 7;
            ASSERT_LT(frame, names.size()) << colour;
            ASSERT_TRUE(IsPainted(picture, colour));
        }
        begun = probe.Begun();
    }
    EXPECT_GT(paints, 0);
}

TEST_F(FrameDecoderTest, AStopOnItsOwnThreadIsAnError)
{
    CControlUI place; // without a manager, whose timers belong to its thread
    ImageAnimationPainter alone(&place);
    alone.SetFileRes(names, false, true, false);
    std::error_code failure;
    probe.AtBegin([&] {
        try {
            alone.Stop();
        } catch (const std::system_error& error) {
            failure = error.code();
        }
    });
    alone.Start();
    Tick(place);
    probe.WaitForBegun(1);
    place.OnNotify.Clear();
    alone.Stop();
    EXPECT_EQ(failure, std::errc::resource_deadlock_would_occur);
}

// The thread ends by a stop on itself, which cannot wait for it; the next start finds it unjoined.
[[noreturn]] void StartOverAnEndedThread(DecoderProbe& probe, const std::wstring& name)
{
    CControlUI place;
    auto* const painter = new ImageAnimationPainter(&place);
    painter->SetFileRes({name}, false, true, false);
    HANDLE thread = nullptr;
    probe.AtBegin([&] {
        ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(),
                          &thread, 0, FALSE, DUPLICATE_SAME_ACCESS);
        try {
            painter->Stop();
        } catch (const std::system_error&) {
            std::fputs("refused to wait, ", stderr);
        }
    });
    painter->Start();
    Tick(place);
    probe.WaitForBegun(1);
    if (::WaitForSingleObject(thread, 30'000) == WAIT_OBJECT_0)
        std::fputs("ended, ", stderr);
    std::fputs("starts again", stderr);
    std::fflush(stderr);
    painter->Start();
    std::_Exit(0);
}

TEST_F(FrameDecoderTest, AStartOverAThreadThatWasNeverStoppedEndsTheProcess)
{
    EXPECT_EXIT(
        StartOverAnEndedThread(probe, names[0]), [](int code) { return code != 0; },
        "refused to wait, ended, starts again");
}

} // namespace
} // namespace test
