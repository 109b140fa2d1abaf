#include "tests/gallery/PageKit.h"

using namespace DuiLib;
using test::Pump;

namespace {

class FramePageTest : public test::PageKit {
protected:
    FramePageTest() { ShowPage(L"frame"); }

    HWND Mask() const { return CResourceManagerEx::GetInstance()->GetVeskaMaskHWND(); }
};

TEST_F(FramePageTest, TheWorkerReportsThroughTheQueue)
{
    Click(L"frame.start");
    auto* const progress =
        static_cast<CProgressUI*>(window.Manager().FindControl(L"frame.progress"));
    EXPECT_TRUE(WaitUntil([&] { return progress->GetValue() == 100; }));
    EXPECT_EQ(Text(L"frame.primes"), "148933");
}

TEST_F(FramePageTest, LeavingThePageStopsTheWorker)
{
    Click(L"frame.start");
    LeavePage();
    EXPECT_EQ(window.Manager().FindControl(L"frame.primes"), nullptr);
}

TEST_F(FramePageTest, TheWindowMayCloseWhileTheWorkerRuns)
{
    Click(L"frame.start");
    ::DestroyWindow(window.GetHWND());
    Pump();
    EXPECT_FALSE(window.IsOpen());
}

TEST_F(FramePageTest, ABroadcastReachesTheServiceFirst)
{
    EXPECT_EQ(Text(L"frame.route"), "service, client 1, client 2");
}

TEST_F(FramePageTest, APrivateMessageIsCounted)
{
    Click(L"frame.message");
    Click(L"frame.message");
    Pump();
    EXPECT_TRUE(Text(L"frame.messages").ends_with(": 2")) << Text(L"frame.messages");
}

TEST_F(FramePageTest, TheTimerTicks)
{
    EXPECT_TRUE(WaitUntil([&] { return Text(L"frame.ticks").ends_with(": 1"); }));
}

TEST_F(FramePageTest, AChosenMenuElementIsShown)
{
    auto* const command = new MenuCmd{};
    ::lstrcpynW(command->szName, L"menus.copy", 256);
    ::SendMessageW(window.GetHWND(), WM_USER + 3, reinterpret_cast<WPARAM>(command), 0);
    EXPECT_EQ(Text(L"frame.event"), "OnMenuClick menus.copy");
}

TEST_F(FramePageTest, DraggingOverTheTargetIsAnsweredThroughThePayload)
{
    DWORD effect = DROPEFFECT_NONE;
    TDragDropUI drag{};
    drag.ptMouse = {12, 34};
    drag.pdwEffect = &effect;
    drag.pControl = window.Manager().FindControl(L"frame.target");
    ::SendMessageW(window.GetHWND(), UIMSG_DRAGOVER, reinterpret_cast<WPARAM>(&drag), 0);
    EXPECT_EQ(Text(L"frame.event"), "OnDragOver  (12, 34)  frame.target");
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));

    effect = DROPEFFECT_NONE;
    drag.pControl = window.Manager().FindControl(L"frame.source");
    ::SendMessageW(window.GetHWND(), UIMSG_DRAGOVER, reinterpret_cast<WPARAM>(&drag), 0);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
}

TEST_F(FramePageTest, TheMaskFollowsTheMainWindow)
{
    for (const int scene : {0, 1}) {
        window.ShownPage()->OpenScene(scene);
        Pump();
        const HWND mask = Mask();
        ASSERT_TRUE(::IsWindow(mask));
        ::SetWindowPos(window.GetHWND(), nullptr, 60 + scene, 40, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        RECT main{};
        RECT place{};
        ::GetWindowRect(window.GetHWND(), &main);
        ::GetWindowRect(mask, &place);
        main.top += scene == 1 ? 33 : 0;
        EXPECT_TRUE(::EqualRect(&place, &main)) << scene;
        window.ShownPage()->CloseScene();
        Pump();
        EXPECT_FALSE(::IsWindow(mask)) << scene;
    }
}

TEST_F(FramePageTest, TheMaskedPageIsModalAndAnswers)
{
    // The dialog's button is pressed as soon as the modal loop runs.
    ::SetTimer(window.GetHWND(), 77, 1, [](HWND main, UINT, UINT_PTR timer, DWORD) {
        ::KillTimer(main, timer);
        const CStdPtrArray& managers = *CPaintManagerUI::GetPaintManagers();
        for (int i = 0; i < managers.GetSize(); ++i) {
            auto* const manager = static_cast<CPaintManagerUI*>(managers[i]);
            if (CControlUI* const cancel = manager->FindControl(L"dialog.cancel"))
                cancel->Activate();
        }
    });
    Click(L"frame.masked");
    EXPECT_EQ(Text(L"frame.event"), "ShowModal: 2");
}

TEST_F(FramePageTest, TheDialogKeepsTheScaleOfTheMainWindow)
{
    window.SetScale(150);
    window.ShownPage()->OpenScene(1);
    Pump();
    RECT main{};
    RECT place{};
    ::GetWindowRect(window.GetHWND(), &main);
    ::GetWindowRect(Mask(), &place);
    EXPECT_EQ(place.top, main.top + 50);
    EXPECT_EQ(CResourceManagerEx::GetInstance()->GetScale(), 150u);
    window.ShownPage()->CloseScene();
}

} // namespace
