#include "quillet/window/TestWindow.h"

namespace test {
namespace {

using namespace DuiLib;
using Lines = std::vector<std::string>;

constexpr char kScreenFunction[] = "DuiLib::WindowImplBaseEx::GetScreenSizeMaxDPI";
constexpr char kDpiFunction[] = "DuiLib::WindowImplBaseEx::GetDPI";

class DpiComputationTest : public WindowTest {
protected:
    TestWindow window;

    int Evaluations() const
    {
        return static_cast<int>(
            std::count_if(window.traces.begin(), window.traces.end(), [](const TraceLine& trace) {
                return trace.message.rfind("screen size:", 0) == 0;
            }));
    }
};

TEST_F(DpiComputationTest, TheScreenLimitsTheDpi)
{
    struct Row {
        SIZE screen;
        unsigned limit;
    };
    for (const auto& [screen, limit] :
         {Row{{1366, 768}, 96}, Row{{1920, 1080}, 120}, Row{{2560, 1440}, 168},
          Row{{3840, 2160}, 240}, Row{{0, 0}, 96}, Row{{1280, 720}, 96}, Row{{1366, 4000}, 96},
          Row{{4000, 800}, 96}, Row{{2732, 1600}, 192}, Row{{1708, 1000}, 120},
          Row{{1707, 1000}, 96}}) {
        SCOPED_TRACE(std::to_string(screen.cx) + "x" + std::to_string(screen.cy));
        window.m_szScreen = screen;
        EXPECT_EQ(window.GetScreenSizeMaxDPI(), limit);
    }
}

TEST_F(DpiComputationTest, TheLimitIsTracedInThreeLines)
{
    window.m_szScreen = {1920, 1080};
    window.GetScreenSizeMaxDPI();
    EXPECT_EQ(window.Messages(), (Lines{"screen size:1920*1080 ratioX:140 ratioY135 ratio135",
                                        "round ratio by 25%:125", "fix ratio by 0.96:120"}));
    for (const auto& trace : window.traces)
        EXPECT_EQ(trace.function, kScreenFunction);
}

TEST_F(DpiComputationTest, TheTraceOfTheRatiosLacksTwoColons)
{
    window.m_szScreen = {1280, 720};
    window.GetScreenSizeMaxDPI();
    EXPECT_EQ(window.Messages().front(), "screen size:1280*720 ratioX:93 ratioY90 ratio90");
}

TEST_F(DpiComputationTest, EveryTraceHasALineNumberOfItsOwn)
{
    window.m_szScreen = {3840, 2160};
    window.GetDPI(96);
    std::vector<int> lines;
    for (const auto& trace : window.traces)
        lines.push_back(trace.line);
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(std::unique(lines.begin(), lines.end()), lines.end());

    const auto first = window.traces.front().line;
    window.traces.clear();
    window.GetDPI(120);
    EXPECT_EQ(window.traces.front().line, first);
}

TEST_F(DpiComputationTest, RatiosAreComparedAsUnsignedNumbers)
{
    window.m_szScreen = {-1366, 1200};
    EXPECT_EQ(window.GetScreenSizeMaxDPI(), 144u);
    EXPECT_EQ(window.Messages().front(), "screen size:-1366*1200 ratioX:-100 ratioY150 ratio150");
}

TEST_F(DpiComputationTest, TheLimitDoesNotMeasureTheScreen)
{
    FakeMonitors monitors(SIZE{3840, 2160});
    EXPECT_EQ(window.GetScreenSizeMaxDPI(), 96u);
    EXPECT_EQ(monitors.flags, 0u);

    window.GetScreenSize();
    EXPECT_EQ(window.GetScreenSizeMaxDPI(), 240u);
    monitors.Resize(1366, 768);
    EXPECT_EQ(window.GetScreenSizeMaxDPI(), 240u);
}

TEST_F(DpiComputationTest, TheScreenIsTheWholeMonitorNearestToTheWindow)
{
    FakeMonitors monitors({RECT{0, 0, 1920, 1080}, RECT{-2560, -100, 0, 1340}});
    EXPECT_EQ(window.GetCurrentMonitor(), reinterpret_cast<HMONITOR>(1));
    EXPECT_EQ(monitors.flags, DWORD{MONITOR_DEFAULTTONEAREST});

    window.m_hWnd = reinterpret_cast<HWND>(0x42);
    monitors.onSecond = window.m_hWnd;
    const SIZE screen = window.GetScreenSize();
    window.m_hWnd = nullptr;
    EXPECT_EQ(screen.cx, 2560);
    EXPECT_EQ(screen.cy, 1440);
    EXPECT_EQ(window.m_szScreen.cx, 2560);
    EXPECT_EQ(window.m_szScreen.cy, 1440);
}

TEST_F(DpiComputationTest, AMonitorWithoutAnAnswerKeepsTheFormerSize)
{
    FakeMonitors monitors(SIZE{1920, 1080});
    window.GetScreenSize();
    monitors.answers = false;
    EXPECT_EQ(window.GetScreenSize().cx, 1920);
}

TEST_F(DpiComputationTest, ARequestIsRoundedToQuartersAndCapped)
{
    struct Row {
        SIZE screen;
        unsigned requested, usable;
    };
    constexpr SIZE kQhd{2560, 1440};
    constexpr SIZE kUhd{3840, 2160};
    for (const auto& [screen, requested, usable] :
         {Row{kQhd, 96, 96}, Row{kQhd, 120, 120}, Row{kQhd, 144, 144}, Row{kQhd, 168, 168},
          Row{kQhd, 192, 168}, Row{kQhd, 110, 120}, Row{kQhd, 105, 96}, Row{kQhd, 0, 0},
          Row{kUhd, 288, 216}, Row{kUhd, 216, 216}, Row{kUhd, 240, 216}, Row{kUhd, 192, 192},
          Row{{1366, 800}, 96, 96}, Row{{1366, 800}, 120, 96}, Row{{1920, 1080}, 192, 120}}) {
        SCOPED_TRACE(std::to_string(screen.cx) + ", " + std::to_string(requested));
        window.m_szScreen = screen;
        EXPECT_EQ(window.GetDPI(requested), usable);
    }
}

TEST_F(DpiComputationTest, TwelvePercentGoDownAndThirteenUp)
{
    window.m_szScreen = {3840, 2160};
    EXPECT_EQ(window.GetDPI(108), 96u);  // 112 percent
    EXPECT_EQ(window.GetDPI(109), 120u); // 113 percent
    EXPECT_EQ(window.GetDPI(132), 120u); // 137 percent
    EXPECT_EQ(window.GetDPI(133), 144u); // 138 percent
}

TEST_F(DpiComputationTest, AnUnmeasuredScreenAllowsNoMoreThanTheDefault)
{
    for (const unsigned requested : {96u, 120u, 192u, 288u, 1000u})
        EXPECT_EQ(window.GetDPI(requested), 96u) << requested;
    EXPECT_EQ(window.GetDPI(72), 72u);
}

TEST_F(DpiComputationTest, ARequestIsTracedInFourLinesBeforeTheScreen)
{
    window.m_szScreen = {3840, 2160};
    window.GetDPI(110);
    EXPECT_EQ(window.Messages(),
              (Lines{"system request dpi:110", "system dpi by 0.96:114", "system dpi round:25",
                     "system dpi:120", "screen size:3840*2160 ratioX:281 ratioY270 ratio270",
                     "round ratio by 25%:250", "fix ratio by 0.96:240"}));
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(window.traces[i].function, kDpiFunction);
    for (std::size_t i = 4; i < 7; ++i)
        EXPECT_EQ(window.traces[i].function, kScreenFunction);
}

TEST_F(DpiComputationTest, ARoundingDownIsTracedAsZero)
{
    window.GetDPI(105);
    EXPECT_EQ(window.traces[1].message, "system dpi by 0.96:109");
    EXPECT_EQ(window.traces[2].message, "system dpi round:0");
    EXPECT_EQ(window.traces[3].message, "system dpi:96");
}

TEST_F(DpiComputationTest, TheScreenIsEvaluatedAfreshForEachUse)
{
    struct Row {
        SIZE screen;
        unsigned requested;
        int evaluations;
    };
    for (const auto& [screen, requested, evaluations] :
         {Row{{1920, 1080}, 96, 2}, Row{{1920, 1080}, 120, 4}, Row{{1920, 1080}, 192, 4},
          Row{{3840, 2160}, 96, 1}, Row{{3840, 2160}, 120, 1}, Row{{3840, 2160}, 192, 1},
          Row{{3840, 2160}, 288, 2}, Row{{0, 0}, 96, 4}, Row{{0, 0}, 72, 2},
          Row{{3074, 1800}, 216, 4}, Row{{3074, 1800}, 192, 2}}) {
        SCOPED_TRACE(std::to_string(screen.cx) + ", " + std::to_string(requested));
        window.traces.clear();
        window.m_szScreen = screen;
        window.GetDPI(requested);
        EXPECT_EQ(Evaluations(), evaluations);
        EXPECT_EQ(window.traces.size(), 4u + 3u * static_cast<unsigned>(evaluations));
    }
}

TEST_F(DpiComputationTest, TheSystemDpiNeverExceedsTheMonitors)
{
    const FakeMainMonitorDpi monitor(110);
    ASSERT_TRUE(static_cast<bool>(monitor));
    window.m_szScreen = {2560, 1440};
    EXPECT_EQ(window.GetDPI(110), 120u);
    EXPECT_EQ(window.GetSystemDPI(), 110u);
    EXPECT_EQ(WindowImplBaseEx::dpiVal, 110u);
}

TEST_F(DpiComputationTest, TheSystemDpiIsCappedByTheScreen)
{
    const FakeMainMonitorDpi monitor(192);
    window.m_szScreen = {1920, 1080};
    EXPECT_EQ(window.GetSystemDPI(), 120u);
}

TEST_F(DpiComputationTest, TheSystemDpiOfAnUnmeasuredScreenIsTheDefault)
{
    const FakeMainMonitorDpi monitor(192);
    EXPECT_EQ(window.GetSystemDPI(), 96u);
}

TEST_F(DpiComputationTest, TheSystemDpiIsComputedOnce)
{
    const FakeMainMonitorDpi monitor(144);
    window.m_szScreen = {2560, 1440};
    EXPECT_EQ(window.GetSystemDPI(), 144u);

    FakeMainMonitorDpi::dpi = 96;
    window.m_szScreen = {1366, 768};
    EXPECT_EQ(window.GetSystemDPI(), 144u);
    EXPECT_EQ(FakeMainMonitorDpi::calls, 1);

    WindowImplBaseEx::dpiVal = 77;
    EXPECT_EQ(window.GetSystemDPI(), 77u);
    TestWindow another;
    EXPECT_EQ(another.GetSystemDPI(), 77u);
    EXPECT_TRUE(another.traces.empty());
}

TEST_F(DpiComputationTest, TheSystemDpiAsksForTheWindowsMonitor)
{
    const FakeMainMonitorDpi monitor(96);
    window.m_hWnd = reinterpret_cast<HWND>(0x42);
    window.GetSystemDPI();
    window.m_hWnd = nullptr;
    EXPECT_EQ(FakeMainMonitorDpi::window, reinterpret_cast<HWND>(0x42));
}

class MonitorKindTest : public DpiComputationTest {
protected:
    // Whether this and the main window are on the same kind of monitor, each on one of the two.
    bool SameKind(bool windowOnSecond, bool mainOnSecond, RECT second)
    {
        FakeMonitors monitors({RECT{0, 0, 1920, 1080}, second});
        const auto self = reinterpret_cast<HWND>(0x10);
        const auto onSecond = reinterpret_cast<HWND>(0x20);
        window.m_hWnd = windowOnSecond ? onSecond : self;
        CResourceManagerEx::GetInstance()->SetMainHWND(mainOnSecond ? onSecond : nullptr);
        monitors.onSecond = onSecond;
        const bool same = window.UpdateDPIByMonitor();
        window.m_hWnd = nullptr;
        return same;
    }
};

TEST_F(MonitorKindTest, IsTheSameOnOneMonitor)
{
    constexpr RECT kRight{1920, 0, 3840, 1080};
    EXPECT_TRUE(SameKind(false, false, kRight));
    EXPECT_TRUE(SameKind(true, true, kRight));
}

TEST_F(MonitorKindTest, DiffersWhenOneIsElsewhere)
{
    for (const RECT second : {RECT{1920, 0, 3840, 1080}, RECT{-1920, 0, 0, 1080},
                              RECT{0, 1080, 1920, 2160}, RECT{0, -1080, 1920, 0}}) {
        EXPECT_FALSE(SameKind(true, false, second)) << second.left << "," << second.top;
        EXPECT_FALSE(SameKind(false, true, second)) << second.left << "," << second.top;
    }
}

TEST_F(MonitorKindTest, AMonitorThatMeetsThePrimaryScreenCountsAsPrimary)
{
    EXPECT_TRUE(SameKind(true, false, {1919, 1079, 3840, 2160}));
    EXPECT_TRUE(SameKind(true, false, {-1920, -1080, 1, 1}));
}

} // namespace
} // namespace test
