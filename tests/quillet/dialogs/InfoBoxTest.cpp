#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "tests/quillet/dialogs/Popups.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

using namespace DuiLib;
using test::ImportHook;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kLibrary[] = "USER32.dll";
constexpr UINT_PTR kCloseTimer = 9001;
constexpr DWORD kToastStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW;

using Log = std::vector<std::string>;

class TestToast : public UIInfoBox {
public:
    explicit TestToast(std::wstring text = L"Copied") : UIInfoBox(std::move(text)) {}
    ~TestToast() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }

    HWND Make(HWND parent) { return Create(parent, L"", WS_POPUP, kToastStyle, 30, 40, 200, 100); }

    using UIInfoBox::m_bInfo;
    using UIInfoBox::m_hWnd;
    using UIInfoBox::m_pm;
    using UIInfoBox::m_pTextLabel;
    using UIInfoBox::m_strText;
    using UIInfoBox::OnCalTextWidth;
    using UIInfoBox::TimerClose;

    Log* log = nullptr; // of closing and of timers that reach the base

protected:
    LRESULT OnClose(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        if (log)
            log->push_back("OnClose");
        return UIInfoBox::OnClose(message, wParam, lParam, handled);
    }
    LRESULT HandleCustomMessage(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        if (log && message == WM_TIMER)
            log->push_back("base timer " + std::to_string(wParam));
        return UIInfoBox::HandleCustomMessage(message, wParam, lParam, handled);
    }
    void OnFinalMessage(HWND window) override
    {
        if (log)
            log->push_back("OnFinalMessage");
        UIInfoBox::OnFinalMessage(window);
    }
};

// What the library asks of the system, and what the system answers where the test decides.
class Calls {
public:
    Calls()
    {
        text = 77;
        log.clear();
        moves.clear();
        places.clear();
        contexts.clear();
        released = 0;
        windowOfLastText.clear();
        period = 0;
    }

    struct Move {
        HWND window;
        int x, y, width, height;
        BOOL repaint;
        bool operator==(const Move&) const = default;
    };
    struct Place {
        HWND window, after;
        int x, y, width, height;
        UINT flags;
        bool operator==(const Place&) const = default;
    };

    static inline Log log; // sent messages and timers
    static inline std::vector<Move> moves;
    static inline std::vector<Place> places;
    static inline std::vector<std::pair<HWND, HDC>> contexts; // got
    static inline int released = 0;
    static inline int text = 77; // the width of every text; measured when negative
    static inline std::wstring windowOfLastText;
    static inline HFONT font = nullptr; // of the last text
    static inline UINT period = 0;      // instead of that of the timers, unless 0

private:
    static LRESULT WINAPI Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        log.push_back((window ? "send " : "send to none ") + std::to_string(message) + " " +
                      std::to_string(wParam) + " " + std::to_string(lParam));
        return ::SendMessageW(window, message, wParam, lParam);
    }
    static UINT_PTR WINAPI Set(HWND window, UINT_PTR id, UINT time, TIMERPROC procedure)
    {
        if (id == kCloseTimer)
            log.push_back((window && !procedure ? "timer " : "other timer ") +
                          std::to_string(time));
        return ::SetTimer(window, id, period && id == kCloseTimer ? period : time, procedure);
    }
    static BOOL WINAPI Kill(HWND window, UINT_PTR id)
    {
        log.push_back((window ? "kill " : "kill of none ") + std::to_string(id));
        return ::KillTimer(window, id);
    }
    static BOOL WINAPI MoveIt(HWND window, int x, int y, int width, int height, BOOL repaint)
    {
        moves.push_back({window, x, y, width, height, repaint});
        return ::MoveWindow(window, x, y, width, height, repaint);
    }
    static BOOL WINAPI PlaceIt(HWND window, HWND after, int x, int y, int width, int height,
                               UINT flags)
    {
        places.push_back({window, after, x, y, width, height, flags});
        return ::SetWindowPos(window, after, x, y, width, height, flags);
    }
    static HDC WINAPI Get(HWND window)
    {
        const HDC dc = ::GetDC(window);
        contexts.push_back({window, dc});
        return dc;
    }
    static int WINAPI Release(HWND window, HDC dc)
    {
        ++released;
        return ::ReleaseDC(window, dc);
    }
    static BOOL WINAPI Extent(HDC dc, LPCWSTR from, int length, LPSIZE size)
    {
        windowOfLastText.assign(from, static_cast<std::size_t>(length));
        font = static_cast<HFONT>(::GetCurrentObject(dc, OBJ_FONT));
        if (text < 0)
            return ::GetTextExtentPoint32W(dc, from, length, size);
        *size = {text, 10};
        return TRUE;
    }

    ImportHook m_send{L"Quillet.dll", kLibrary, "SendMessageW", &Calls::Send};
    ImportHook m_set{L"Quillet.dll", kLibrary, "SetTimer", &Calls::Set};
    ImportHook m_kill{L"Quillet.dll", kLibrary, "KillTimer", &Calls::Kill};
    ImportHook m_move{L"Quillet.dll", kLibrary, "MoveWindow", &Calls::MoveIt};
    ImportHook m_place{L"Quillet.dll", kLibrary, "SetWindowPos", &Calls::PlaceIt};
    ImportHook m_get{L"Quillet.dll", kLibrary, "GetDC", &Calls::Get};
    ImportHook m_release{L"Quillet.dll", kLibrary, "ReleaseDC", &Calls::Release};
    ImportHook m_extent{L"Quillet.dll", "GDI32.dll", "GetTextExtentPoint32W", &Calls::Extent};
};

const std::string kSendClose = "send " + std::to_string(WM_CLOSE) + " 0 0";

class InfoBoxTest : public test::PopupTest {
protected:
    InfoBoxTest()
    {
        skins.Write(L"MessageBox03.xml",
                    L"<Window size=\"200,100\"><Font id=\"0\" name=\"Arial\" size=\"12\"/>"
                    L"<Font id=\"1\" name=\"Arial\" size=\"30\"/><VerticalLayout>"
                    L"<Label name=\"lab_text\" text=\"skin\" font=\"1\"/></VerticalLayout>"
                    L"</Window>");
    }
    void UseSkinWithoutLabel()
    {
        skins.Write(L"MessageBox03.xml", L"<Window size=\"200,100\"><VerticalLayout/></Window>");
    }

    Calls calls;
};

// --- Construction ---

// There is no window yet.
TEST_F(InfoBoxTest, ItsConstructorSendsCloseToNoWindow)
{
    {
        const UIInfoBox toast(L"text");
        EXPECT_THAT(calls.log, ElementsAre("send to none " + std::to_string(WM_CLOSE) + " 0 0"));
    }
    EXPECT_THAT(calls.log, testing::SizeIs(1));
    EXPECT_TRUE(::IsWindow(owner));
}

TEST_F(InfoBoxTest, StartsWithItsTextAndNoLabel)
{
    TestToast toast(L"text");
    EXPECT_EQ(toast.m_strText, L"text");
    EXPECT_EQ(toast.m_pTextLabel, nullptr);
    EXPECT_EQ(toast.OnCalTextWidth(), 0);
    EXPECT_THAT(calls.contexts, IsEmpty());
}

// The member is set and read by nobody.
TEST_F(InfoBoxTest, TheBoolIsTrueAndMeansNothing)
{
    for (const bool info : {true, false}) {
        TestToast toast;
        EXPECT_TRUE(toast.m_bInfo);
        toast.m_bInfo = info;
        const HWND window = toast.Make(owner);
        ASSERT_NE(window, nullptr);
        toast.OnSetWndPos();
        EXPECT_TRUE(::IsWindowVisible(window));
        ::SendMessageW(window, WM_TIMER, kCloseTimer, 0);
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_EQ(toast.m_bInfo, info);
    }
}

TEST_F(InfoBoxTest, HasItsClassAndItsSkin)
{
    TestToast toast;
    ASSERT_NE(toast.Make(owner), nullptr);
    EXPECT_EQ(test::ClassOf(toast.m_hWnd), L"UIInfoBox");
    EXPECT_EQ(test::TextOf(toast.m_hWnd, L"lab_text"), L"Copied");
    EXPECT_EQ(toast.m_pTextLabel, test::ControlOf(toast.m_hWnd, L"lab_text"));
}

TEST_F(InfoBoxTest, AnEmptyTextLeavesTheSkins)
{
    TestToast toast(L"");
    ASSERT_NE(toast.Make(owner), nullptr);
    EXPECT_EQ(test::TextOf(toast.m_hWnd, L"lab_text"), L"skin");
}

// --- The size ---

// The left edge is part of the width, and the lower edge is the height.
TEST_F(InfoBoxTest, MovesItsWindowWithTheEdgesInWidthAndHeight)
{
    struct Case {
        bool label;
        int text;
        int width;
    };
    for (const Case& each :
         {Case{true, 77, 30 + 50 + 77}, Case{true, 200, 30 + 50 + 200}, Case{false, 77, 30 + 50}}) {
        if (!each.label)
            UseSkinWithoutLabel();
        calls.moves.clear();
        calls.text = each.text;
        TestToast toast;
        const HWND window = toast.Make(owner);
        EXPECT_THAT(calls.moves, ElementsAre(Calls::Move{window, 30, 40, each.width, 140, TRUE}));
        const RECT place = test::PlaceOf(window);
        const RECT expected{30, 40, 30 + each.width, 40 + 140};
        EXPECT_TRUE(::EqualRect(&place, &expected));
    }
}

TEST_F(InfoBoxTest, StartsItsTimerOfThreeSecondsAfterTheMove)
{
    TestToast toast;
    calls.log.clear();
    ASSERT_NE(toast.Make(owner), nullptr);
    EXPECT_THAT(calls.log, ElementsAre("timer 3000"));
}

TEST_F(InfoBoxTest, MeasuresTheTextInTheFontOfTheLabel)
{
    calls.text = -1;
    TestToast toast(L"A longer text");
    const HWND window = toast.Make(owner);
    const int measured = toast.OnCalTextWidth();
    EXPECT_EQ(calls.windowOfLastText, L"A longer text");
    EXPECT_EQ(calls.font, toast.m_pm.GetFont(1));
    EXPECT_NE(toast.m_pm.GetFont(1), toast.m_pm.GetFont(0));

    const HDC dc = ::GetDC(window);
    const HGDIOBJ before = ::SelectObject(dc, toast.m_pm.GetFont(1));
    SIZE size{};
    ::GetTextExtentPoint32W(dc, L"A longer text", 13, &size);
    ::SelectObject(dc, before);
    ::ReleaseDC(window, dc);
    EXPECT_EQ(measured, size.cx);
    EXPECT_GT(measured, 0);
}

TEST_F(InfoBoxTest, WithoutTheLabelNothingIsMeasured)
{
    UseSkinWithoutLabel();
    TestToast toast;
    ASSERT_NE(toast.Make(owner), nullptr);
    EXPECT_EQ(toast.OnCalTextWidth(), 0);
    EXPECT_EQ(toast.m_pTextLabel, nullptr);
    EXPECT_THAT(calls.contexts, IsEmpty());
}

// Each measurement keeps its device context; the class has done so from the beginning.
TEST_F(InfoBoxTest, EachMeasurementTakesADeviceContextForGood)
{
    TestToast toast;
    const HWND window = toast.Make(owner);
    EXPECT_EQ(calls.contexts.size(), 1u);
    toast.OnSetWndPos();
    EXPECT_EQ(calls.contexts.size(), 2u);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(toast.OnCalTextWidth(), 77);
    EXPECT_EQ(calls.contexts.size(), 12u);
    EXPECT_EQ(calls.released, 0);
    for (const auto& [from, dc] : calls.contexts) {
        EXPECT_EQ(from, window);
        EXPECT_NE(dc, nullptr);
    }
}

// --- The place ---

struct PlaceCase {
    const char* name;
    RECT parent;
    int text;
    UINT dpi;
    int x, y;
};

void PrintTo(const PlaceCase& each, std::ostream* out)
{
    *out << each.name;
}

class InfoBoxPlaceTest : public InfoBoxTest, public testing::WithParamInterface<PlaceCase> {};

TEST_P(InfoBoxPlaceTest, StandsInTheMiddleAboveTheLowerEdge)
{
    const RECT& parent = GetParam().parent;
    ::MoveWindow(owner, parent.left, parent.top, parent.right - parent.left,
                 parent.bottom - parent.top, FALSE);
    const RECT moved = test::PlaceOf(owner);
    ASSERT_TRUE(::EqualRect(&moved, &parent));
    TestToast toast;
    const HWND window = toast.Make(owner);
    // Only the low half of a window handle counts.
    ASSERT_EQ(HandleToLong(::GetParent(window)), HandleToLong(owner.GetHWND()));
    const RECT before = test::PlaceOf(window);
    EXPECT_FALSE(::IsWindowVisible(window));
    CResourceManagerEx::GetInstance()->SetScale(GetParam().dpi);
    calls.text = GetParam().text;

    toast.OnSetWndPos();
    EXPECT_THAT(calls.places, ElementsAre(Calls::Place{window, nullptr, GetParam().x, GetParam().y,
                                                       0, 0, SWP_NOSIZE | SWP_SHOWWINDOW}));
    const RECT after = test::PlaceOf(window);
    EXPECT_EQ(after.left, GetParam().x);
    EXPECT_EQ(after.top, GetParam().y);
    EXPECT_EQ(after.right - after.left, before.right - before.left);
    EXPECT_EQ(after.bottom - after.top, before.bottom - before.top);
    EXPECT_TRUE(::IsWindowVisible(window));
}

INSTANTIATE_TEST_SUITE_P(
    Parents, InfoBoxPlaceTest,
    testing::Values(PlaceCase{"Plain", {100, 50, 900, 650}, 200, 96, 375, 530},
                    PlaceCase{"OddSizes", {0, 0, 801, 601}, 201, 96, 275, 481},
                    PlaceCase{"OddText", {0, 0, 800, 600}, 201, 96, 275, 480},
                    PlaceCase{"Negative", {-500, -300, 301, 0}, 201, 96, -225, -120},
                    PlaceCase{"NegativeAndOdd", {-301, -41, 500, 260}, 150, 96, -1, 140},
                    PlaceCase{"EmptyText", {100, 50, 900, 650}, 0, 96, 475, 530},
                    PlaceCase{"WiderThanItsParent", {10, 10, 50, 50}, 300, 96, -145, -70},
                    PlaceCase{"AtOneAndAHalf", {100, 50, 900, 650}, 200, 144, 375, 470}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(InfoBoxTest, WithoutAParentItStandsAroundTheOrigin)
{
    TestToast toast;
    const HWND window = toast.Make(nullptr);
    ASSERT_EQ(::GetParent(window), nullptr);
    calls.text = 200;
    toast.OnSetWndPos();
    EXPECT_THAT(calls.places, ElementsAre(Calls::Place{window, nullptr, -125, -120, 0, 0,
                                                       SWP_NOSIZE | SWP_SHOWWINDOW}));
}

TEST_F(InfoBoxTest, WithoutTheLabelItStandsAsIfTheTextWereEmpty)
{
    UseSkinWithoutLabel();
    TestToast toast;
    const HWND window = toast.Make(owner); // 400 x 300 at (100, 100)
    toast.OnSetWndPos();
    EXPECT_THAT(calls.places, ElementsAre(Calls::Place{window, nullptr, 275, 280, 0, 0,
                                                       SWP_NOSIZE | SWP_SHOWWINDOW}));
}

// --- The end ---

TEST_F(InfoBoxTest, TheTimerClosesItAndThenStops)
{
    TestToast toast;
    toast.log = &calls.log;
    const HWND window = toast.Make(owner);
    calls.log.clear();
    ::SendMessageW(window, WM_TIMER, kCloseTimer, 0);
    EXPECT_THAT(calls.log, ElementsAre(kSendClose, "OnClose", "OnFinalMessage", "kill 9001"));
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(toast.m_hWnd, nullptr);
}

TEST_F(InfoBoxTest, OtherTimersDoNotCloseIt)
{
    TestToast toast;
    const HWND window = toast.Make(owner);
    calls.log.clear();
    toast.log = &calls.log;
    for (const WPARAM id : {0, 1, 9000, 9002})
        ::SendMessageW(window, WM_TIMER, id, 0);
    EXPECT_THAT(calls.log,
                ElementsAre("base timer 0", "base timer 1", "base timer 9000", "base timer 9002"));
    ::SendMessageW(window, WM_USER + 1, kCloseTimer, 0);
    EXPECT_TRUE(::IsWindow(window));
}

TEST_F(InfoBoxTest, GoesAwayByItself)
{
    calls.period = 10;
    TestToast toast;
    const HWND window = toast.Make(owner);
    toast.OnSetWndPos();
    EXPECT_TRUE(test::PumpUntil([window] { return !::IsWindow(window); }));
}

// The message goes its way after that.
TEST_F(InfoBoxTest, AWindowThatRefusesToCloseLosesItsTimer)
{
    class Stubborn : public TestToast {
        LRESULT OnClose(UINT, WPARAM, LPARAM, BOOL& handled) override
        {
            handled = TRUE;
            return 0;
        }
    };
    Stubborn toast;
    toast.log = &calls.log;
    const HWND window = toast.Make(owner);
    calls.log.clear();
    ::SendMessageW(window, WM_TIMER, kCloseTimer, 0);
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_THAT(calls.log, ElementsAre(kSendClose, "kill 9001", "base timer 9001"));
    EXPECT_FALSE(::KillTimer(window, kCloseTimer));
}

TEST_F(InfoBoxTest, TimerCloseClosesAtOnce)
{
    TestToast toast;
    const HWND window = toast.Make(owner);
    calls.log.clear();
    toast.TimerClose();
    EXPECT_THAT(calls.log, ElementsAre(kSendClose));
    EXPECT_FALSE(::IsWindow(window));
}

// The system ends the timers of a window with it.
TEST_F(InfoBoxTest, ClosedEarlierItLeavesTheTimerToTheSystem)
{
    for (const bool byUser : {true, false}) {
        TestToast toast;
        const HWND window = toast.Make(owner);
        calls.log.clear();
        if (byUser)
            ::SendMessageW(window, WM_CLOSE, 0, 0);
        else
            ::DestroyWindow(window);
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_THAT(calls.log, IsEmpty());
        EXPECT_FALSE(::KillTimer(window, kCloseTimer));
    }
}

TEST_F(InfoBoxTest, OnCloseIsTheBases)
{
    TestToast toast;
    const HWND window = toast.Make(owner);
    BOOL handled = TRUE;
    EXPECT_EQ(static_cast<UIInfoBox&>(toast).OnClose(WM_CLOSE, 0, 0, handled), 0);
    EXPECT_FALSE(handled);
    EXPECT_TRUE(::IsWindow(window));
}

TEST_F(InfoBoxTest, MayBeShownAgain)
{
    TestToast toast;
    const HWND first = toast.Make(owner);
    ::SendMessageW(first, WM_TIMER, kCloseTimer, 0);
    EXPECT_FALSE(::IsWindow(first));
    const HWND second = toast.Make(owner);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(test::TextOf(second, L"lab_text"), L"Copied");
    ::SendMessageW(second, WM_TIMER, kCloseTimer, 0);
    EXPECT_FALSE(::IsWindow(second));
}

// Deletes itself with its window.
class SelfDeletingToast : public UIInfoBox, public test::OutOfReachWhenDeleted {
public:
    SelfDeletingToast() : UIInfoBox(L"Copied") { ++alive; }
    ~SelfDeletingToast() override { --alive; }

    static inline int alive = 0;

protected:
    void OnFinalMessage(HWND window) override
    {
        UIInfoBox::OnFinalMessage(window);
        delete this;
    }
};

TEST_F(InfoBoxTest, OneThatDeletesItselfIsNotTouchedAfterwards)
{
    auto* const toast = new SelfDeletingToast;
    const HWND window = toast->Create(owner, L"", WS_POPUP, kToastStyle, 30, 40, 200, 100);
    ASSERT_NE(window, nullptr);
    toast->OnSetWndPos();
    calls.log.clear();
    EXPECT_EQ(SelfDeletingToast::alive, 1);
    ::SendMessageW(window, WM_TIMER, kCloseTimer, 0);
    EXPECT_EQ(SelfDeletingToast::alive, 0);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_THAT(calls.log, ElementsAre(kSendClose, "kill 9001"));
}

TEST_F(InfoBoxTest, ManyOpeningsTakeTheirDeviceContextsAndNothingElse)
{
    std::size_t toasts = 0;
    std::size_t contexts = 0;
    test::ExpectNoGrowth(500, [&] {
        ++toasts;
        {
            TestToast toast;
            const HWND window = toast.Make(owner);
            toast.OnSetWndPos();
            // These are known to stay, so the test gives them back.
            contexts += calls.contexts.size();
            for (const auto& [from, dc] : calls.contexts)
                ::ReleaseDC(from, dc);
            ::SendMessageW(window, WM_TIMER, kCloseTimer, 0);
        }
        Log().swap(calls.log);
        std::vector<Calls::Move>().swap(calls.moves);
        std::vector<Calls::Place>().swap(calls.places);
        std::vector<std::pair<HWND, HDC>>().swap(calls.contexts);
        std::wstring().swap(calls.windowOfLastText);
        test::Pump();
    });
    EXPECT_GE(toasts, 502u);
    EXPECT_EQ(contexts, 2 * toasts);
    EXPECT_EQ(calls.released, 0);
}

} // namespace
