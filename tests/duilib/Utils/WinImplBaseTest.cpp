#include <UIlib.h>

#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace DuiLib;

namespace {

constexpr wchar_t kSkin[] =
    LR"(<Window size="400,300" caption="0,0,0,32" sizebox="4,4,6,6" mininfo="200,150" maxinfo="800,600">
  <VerticalLayout>
    <HorizontalLayout height="32">
      <Label name="title" />
      <Button name="minbtn" width="30" height="30" />
      <Button name="maxbtn" width="30" height="30" />
      <Button name="restorebtn" width="30" height="30" visible="false" />
      <Button name="closebtn" width="30" height="30" />
    </HorizontalLayout>
    <Control name="body" />
  </VerticalLayout>
</Window>)";

class SkinWindow : public WindowImplBase {
public:
    static constexpr UINT kIdle = WM_APP + 20;

    explicit SkinWindow(LPCTSTR skin = kSkin) : m_skin(skin) {}
    ~SkinWindow() override
    {
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
    }

    HWND Open(DWORD style = WS_POPUP | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_MINIMIZEBOX)
    {
        Create(nullptr, L"skin", style, 0, 50, 50, 400, 300);
        if (CControlUI* const root = m_pm.GetRoot())
            root->SetPos({0, 0, 400, 300});
        return m_hWnd;
    }

    LPCTSTR GetWindowClassName() const override { return L"DuiLib.WinImplBaseTest"; }
    CDuiString GetSkinFile() override { return m_skin; }
    CDuiString GetSkinType() override { return skinType; }
    LPCTSTR GetManagerName() override { return managerName; }
    void InitWindow() override { rootInInit = m_pm.GetRoot(); }

    CControlUI* CreateControl(LPCTSTR name) override
    {
        asked = name;
        return nullptr;
    }

    LRESULT OnSysCommand(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        commands.push_back(wParam);
        return WindowImplBase::OnSysCommand(message, wParam, lParam, handled);
    }

    LRESULT OnClose(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        ++closes;
        return WindowImplBase::OnClose(message, wParam, lParam, handled);
    }

    LRESULT OnKeyDown(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        if (onKeyDown)
            return onKeyDown(handled);
        return WindowImplBase::OnKeyDown(message, wParam, lParam, handled);
    }

    LRESULT HandleCustomMessage(UINT message, WPARAM wParam, LPARAM lParam, BOOL& handled) override
    {
        custom.push_back(message);
        if (message == kIdle && onIdle)
            onIdle();
        if (message == WM_APP + 9) {
            handled = TRUE;
            return 99;
        }
        return WindowImplBase::HandleCustomMessage(message, wParam, lParam, handled);
    }

    void OnClick(TNotifyUI& msg) override
    {
        ++clicks;
        WindowImplBase::OnClick(msg);
    }

    void OnFinalMessage(HWND window) override
    {
        WindowImplBase::OnFinalMessage(window);
        if (deleteItself)
            delete this;
    }

    LRESULT HitTest(int x, int y)
    {
        POINT point = {x, y};
        ::ClientToScreen(m_hWnd, &point);
        return SendMessage(WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
    }

    CControlUI& Control(LPCTSTR name) { return *m_pm.FindControl(name); }
    bool IsShown(LPCTSTR name) { return Control(name).IsVisible(); }

    void NotifyClick(LPCTSTR name) { m_pm.SendNotify(&Control(name), DUI_MSGTYPE_CLICK); }

    bool Got(UINT message) const
    {
        return std::find(custom.begin(), custom.end(), message) != custom.end();
    }

    CPaintManagerUI& Manager() { return m_pm; }

    LPCTSTR managerName = L"managed";
    CDuiString skinType;
    CControlUI* rootInInit = nullptr;
    std::wstring asked;
    std::vector<WPARAM> commands;
    std::vector<UINT> custom;
    std::function<LRESULT(BOOL& handled)> onKeyDown;
    std::function<void()> onIdle; // at a posted kIdle
    int closes = 0;
    int clicks = 0;
    bool deleteItself = false;

private:
    CDuiString m_skin;
};

void Pump()
{
    MSG message{};
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
        ::DispatchMessage(&message);
}

std::wstring g_boxText;
UINT g_boxType = 0;
UINT g_exitCode = 0;

int WINAPI RecordMessageBox(HWND, LPCWSTR text, LPCWSTR, UINT type)
{
    g_boxText = text;
    g_boxType = type;
    return IDOK;
}

// Ends only the thread, so that the test goes on.
void WINAPI EndThreadInstead(UINT code)
{
    g_exitCode = code;
    ::ExitThread(code);
}

DWORD WINAPI OpenWindowWithoutSkin(void*)
{
    auto* const window = new SkinWindow(L"no-such-skin.xml"); // outlived by nobody: the thread ends
    window->managerName = nullptr;
    window->Open();
    return 0;
}

TEST(ModalWindowTest, OpeningAndClosingNestedOnes200TimesLeavesNoObject)
{
    SkinWindow owner;
    ASSERT_NE(owner.Open(), nullptr);
    owner.ShowWindow();

    // Opens a window that deletes itself over another one, presses its close button and counts.
    int closed = 0;
    const std::function<void(HWND, int)> open = [&](HWND over, int levels) {
        auto* const dialog = new SkinWindow;
        dialog->deleteItself = true;
        dialog->Create(over, L"modal", WS_POPUP, 0, 60, 60, 300, 200);
        dialog->onIdle = [&, dialog, levels] {
            ::UpdateWindow(dialog->GetHWND());
            if (levels > 1)
                open(dialog->GetHWND(), levels - 1);
            dialog->NotifyClick(L"closebtn");
        };
        dialog->PostMessage(SkinWindow::kIdle);
        dialog->ShowModal();
        ++closed;
    };
    open(owner.GetHWND(), 2);
    const int windows = test::UserWindows();
    const int gdi = test::GdiObjects();
    const int managers = CPaintManagerUI::GetPaintManagers()->GetSize();
    for (int i = 0; i < 200; ++i)
        open(owner.GetHWND(), 2);
    EXPECT_EQ(closed, 402);
    EXPECT_EQ(test::UserWindows(), windows);
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), managers);
    EXPECT_TRUE(::IsWindowEnabled(owner.GetHWND()));
}

} // namespace

TEST(WinImplBaseTest, BuildsItsSkinBeforeInitWindow)
{
    SkinWindow window;
    ASSERT_NE(window.Open(), nullptr);
    ASSERT_NE(window.Manager().GetRoot(), nullptr);
    EXPECT_EQ(window.rootInInit, window.Manager().GetRoot());
    EXPECT_NE(window.Manager().FindControl(L"closebtn"), nullptr);
    EXPECT_STREQ(window.Manager().GetName(), L"managed");
    EXPECT_EQ(CPaintManagerUI::GetPaintManager(L"managed"), &window.Manager());
}

TEST(WinImplBaseTest, ItsStyleHasNoCaption)
{
    SkinWindow window;
    const HWND handle = window.Open(WS_OVERLAPPEDWINDOW);
    const LONG style = ::GetWindowLong(handle, GWL_STYLE);
    EXPECT_EQ(style & WS_CAPTION, 0);
    EXPECT_NE(style & WS_CLIPSIBLINGS, 0);
    EXPECT_NE(style & WS_CLIPCHILDREN, 0);
    EXPECT_EQ(window.GetStyle() & WS_CAPTION, 0);
}

TEST(WinImplBaseTest, TheClientAreaIsTheWholeWindow)
{
    SkinWindow window;
    const HWND handle = window.Open(WS_OVERLAPPEDWINDOW);
    RECT client{};
    ::GetClientRect(handle, &client);
    RECT whole{};
    ::GetWindowRect(handle, &whole);
    EXPECT_EQ(client.right, whole.right - whole.left);
    EXPECT_EQ(client.bottom, whole.bottom - whole.top);
}

TEST(WinImplBaseTest, AsksItselfForUnknownControls)
{
    SkinWindow window(L"<Window><VerticalLayout><Special/></VerticalLayout></Window>");
    window.Open();
    EXPECT_EQ(window.asked, L"Special");
}

TEST(WinImplBaseTest, ASkinTypeMakesTheSkinFileANumber)
{
    CPaintManagerUI::SetResourceDll(::GetModuleHandle(nullptr));
    SkinWindow window(L"101");
    window.skinType = L"XML";
    window.Open();
    EXPECT_NE(window.Manager().GetRoot(), nullptr);
}

TEST(WinImplBaseTest, AMissingSkinEndsTheProcessWithAnErrorBox)
{
    const test::ImportHook box(L"DuiLib.dll", "user32.dll", "MessageBoxW", &RecordMessageBox);
    const test::ImportHook end(L"DuiLib.dll", "kernel32.dll", "ExitProcess", &EndThreadInstead);
    ASSERT_TRUE(box && end);
    g_boxText.clear();
    g_exitCode = 0;
    const HANDLE thread = ::CreateThread(nullptr, 0, &OpenWindowWithoutSkin, nullptr, 0, nullptr);
    ::WaitForSingleObject(thread, 30000);
    ::CloseHandle(thread);
    EXPECT_EQ(g_exitCode, 1u);
    EXPECT_NE(g_boxText.find(L"no-such-skin.xml"), std::wstring::npos);
    EXPECT_EQ(g_boxType & MB_ICONMASK, static_cast<UINT>(MB_ICONERROR));
}

TEST(WinImplBaseTest, TheSystemButtonsWorkTheWindow)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.ShowWindow();
    window.NotifyClick(L"maxbtn");
    window.NotifyClick(L"restorebtn");
    window.NotifyClick(L"minbtn");
    EXPECT_EQ(window.commands, (std::vector<WPARAM>{SC_MAXIMIZE, SC_RESTORE, SC_MINIMIZE}));
    EXPECT_EQ(window.clicks, 3);

    window.NotifyClick(L"closebtn");
    EXPECT_TRUE(::IsWindow(handle));
    Pump();
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(window.closes, 1);
}

TEST(WinImplBaseTest, ButtonNamesAreExact)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.Control(L"closebtn").SetName(L"CloseBtn");
    CControlUI stranger;
    stranger.SetName(L"CloseBtn");
    TNotifyUI notification;
    notification.sType = DUI_MSGTYPE_CLICK;
    notification.pSender = &stranger;
    window.Notify(notification);
    Pump();
    EXPECT_EQ(window.clicks, 1);
    EXPECT_TRUE(::IsWindow(handle));
}

TEST(WinImplBaseTest, SystemCloseSendsClose)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.SendMessage(WM_SYSCOMMAND, SC_CLOSE | 2); // the system keeps the low bits to itself
    EXPECT_EQ(window.closes, 1);
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(WinImplBaseTest, TheZoomButtonsFollowTheWindow)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.ShowWindow();
    window.SendMessage(WM_SYSCOMMAND, SC_MAXIMIZE);
    ASSERT_TRUE(::IsZoomed(handle));
    EXPECT_FALSE(window.IsShown(L"maxbtn"));
    EXPECT_TRUE(window.IsShown(L"restorebtn"));
    window.SendMessage(WM_SYSCOMMAND, SC_RESTORE);
    EXPECT_FALSE(::IsZoomed(handle));
    EXPECT_TRUE(window.IsShown(L"maxbtn"));
    EXPECT_FALSE(window.IsShown(L"restorebtn"));
}

TEST(WinImplBaseTest, ARestoredSizeShowsTheMaximiseButton)
{
    SkinWindow window;
    window.Open();
    window.Control(L"maxbtn").SetVisible(false);
    window.Control(L"restorebtn").SetVisible(true);
    window.SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(400, 300));
    EXPECT_TRUE(window.IsShown(L"maxbtn"));
    EXPECT_FALSE(window.IsShown(L"restorebtn"));
}

TEST(WinImplBaseTest, HitTestGivesBordersCaptionAndClient)
{
    SkinWindow window;
    window.Open();
    const struct {
        int x;
        int y;
        LRESULT expected;
    } rows[] = {
        {0, 0, HTTOPLEFT},    {3, 3, HTTOPLEFT},         {100, 3, HTTOP},
        {399, 0, HTTOPRIGHT}, {394, 2, HTTOPRIGHT},      {3, 100, HTLEFT},
        {394, 100, HTRIGHT},  {393, 100, HTCLIENT},      {0, 299, HTBOTTOMLEFT},
        {100, 294, HTBOTTOM}, {399, 299, HTBOTTOMRIGHT}, {4, 4, HTCAPTION},
        {100, 31, HTCAPTION}, {100, 32, HTCLIENT},       {4, 100, HTCLIENT},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.x << "," << row.y);
        EXPECT_EQ(window.HitTest(row.x, row.y), row.expected);
    }
}

TEST(WinImplBaseTest, ButtonsInTheCaptionAreClientArea)
{
    SkinWindow window;
    window.Open();
    const RECT button = window.Control(L"closebtn").GetPos();
    EXPECT_EQ(window.HitTest(button.left + 5, button.top + 10), HTCLIENT);
}

TEST(WinImplBaseTest, TheCaptionRectangleHasDistancesAndAHeight)
{
    SkinWindow window;
    window.Open();
    RECT caption = {50, 10, 300, 20};
    window.Manager().SetCaptionRect(caption);
    EXPECT_EQ(window.HitTest(49, 15), HTCLIENT);
    EXPECT_EQ(window.HitTest(50, 15), HTCAPTION);
    EXPECT_EQ(window.HitTest(99, 15), HTCAPTION);
    EXPECT_EQ(window.HitTest(100, 15), HTCLIENT);
    EXPECT_EQ(window.HitTest(60, 9), HTCLIENT);
    EXPECT_EQ(window.HitTest(60, 29), HTCAPTION);
    EXPECT_EQ(window.HitTest(60, 30), HTCLIENT);
}

TEST(WinImplBaseTest, ANegativeCaptionHeightIsTheWholeWindow)
{
    SkinWindow window;
    window.Open();
    RECT caption = {0, 0, 0, -1};
    window.Manager().SetCaptionRect(caption);
    EXPECT_EQ(window.HitTest(100, 250), HTCAPTION);
}

TEST(WinImplBaseTest, TheMaximiseButtonIsTheSystemsToo)
{
    SkinWindow window;
    window.Open();
    const RECT button = window.Control(L"maxbtn").GetPos();
    const int x = button.left + 10;
    const int y = button.top + 10;
    EXPECT_EQ(window.HitTest(x, y), HTMAXBUTTON);

    window.Control(L"maxbtn").SetVisible(false);
    EXPECT_EQ(window.HitTest(x, y), HTCAPTION);
    window.Control(L"restorebtn").SetVisible(true);
    window.Control(L"restorebtn").SetPos(button);
    EXPECT_EQ(window.HitTest(x, y), HTMAXBUTTON);
}

TEST(WinImplBaseTest, AClickOnTheSystemsMaximiseButtonClicksTheSkins)
{
    SkinWindow window;
    window.Open();
    window.ShowWindow();
    const RECT button = window.Control(L"maxbtn").GetPos();
    POINT point = {button.left + 10, button.top + 10};
    ::ClientToScreen(window, &point);
    const LPARAM where = MAKELPARAM(point.x, point.y);
    window.SendMessage(WM_NCMOUSEMOVE, HTMAXBUTTON, where);
    window.SendMessage(WM_NCLBUTTONDOWN, HTMAXBUTTON, where);
    window.SendMessage(WM_NCLBUTTONUP, HTMAXBUTTON, where);
    EXPECT_EQ(window.clicks, 1);
    EXPECT_EQ(window.commands, std::vector<WPARAM>{SC_MAXIMIZE});
}

TEST(WinImplBaseTest, AZoomedWindowHasNoBorders)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.ShowWindow();
    ::ShowWindow(handle, SW_MAXIMIZE);
    ASSERT_TRUE(::IsZoomed(handle));
    EXPECT_EQ(window.HitTest(0, 0), HTCAPTION);
}

TEST(WinImplBaseTest, MinMaxInfoIsTheWorkAreaAndTheManagersLimits)
{
    SkinWindow window;
    window.Open();
    MINMAXINFO info{};
    info.ptMaxTrackSize = {5000, 5000};
    EXPECT_EQ(window.SendMessage(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info)), 0);

    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    EXPECT_EQ(info.ptMaxPosition.x, monitor.rcWork.left - monitor.rcMonitor.left);
    EXPECT_EQ(info.ptMaxPosition.y, monitor.rcWork.top - monitor.rcMonitor.top);
    EXPECT_EQ(info.ptMaxSize.x, monitor.rcWork.right - monitor.rcWork.left);
    EXPECT_EQ(info.ptMaxSize.y, monitor.rcWork.bottom - monitor.rcWork.top);
    EXPECT_EQ(info.ptMinTrackSize.x, 200);
    EXPECT_EQ(info.ptMinTrackSize.y, 150);
    EXPECT_EQ(info.ptMaxTrackSize.x, 800);
    EXPECT_EQ(info.ptMaxTrackSize.y, 600);
}

TEST(WinImplBaseTest, RoundCornersCutTheWindow)
{
    SkinWindow window;
    const HWND handle = window.Open();
    window.Manager().SetRoundCorner(20, 20);
    ::SetWindowPos(handle, nullptr, 0, 0, 300, 250, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    ASSERT_NE(::GetWindowRgn(handle, region), ERROR);
    EXPECT_FALSE(::PtInRegion(region, 0, 0));
    EXPECT_FALSE(::PtInRegion(region, 299, 249));
    EXPECT_TRUE(::PtInRegion(region, 150, 0));
    EXPECT_TRUE(::PtInRegion(region, 299, 125));
    ::DeleteObject(region);
}

TEST(WinImplBaseTest, OnlyRowsOfShowingControlsAreStatic)
{
    SkinWindow window;
    window.Open();
    EXPECT_TRUE(window.IsInStaticControl(&window.Control(L"title")));
    EXPECT_TRUE(window.IsInStaticControl(&window.Control(L"body")));
    EXPECT_FALSE(window.IsInStaticControl(&window.Control(L"closebtn")));
    EXPECT_FALSE(window.IsInStaticControl(nullptr));
}

TEST(WinImplBaseTest, TheKeyFilterAnswersButLeavesTheKeyAlone)
{
    SkinWindow window;
    bool handled = false;
    EXPECT_EQ(window.MessageHandler(WM_KEYDOWN, VK_ESCAPE, 0, handled), TRUE);
    EXPECT_EQ(window.MessageHandler(WM_KEYDOWN, VK_RETURN, 0, handled), FALSE);
    EXPECT_EQ(window.MessageHandler(WM_KEYDOWN, VK_SPACE, 0, handled), FALSE);
    EXPECT_EQ(window.MessageHandler(WM_CHAR, VK_ESCAPE, 0, handled), FALSE);
    EXPECT_FALSE(handled);
}

TEST(WinImplBaseTest, NcActivateIsAnsweredWithoutTheFrame)
{
    SkinWindow window;
    window.Open();
    EXPECT_EQ(window.SendMessage(WM_NCACTIVATE, FALSE), TRUE);
    EXPECT_EQ(window.SendMessage(WM_NCACTIVATE, TRUE), FALSE);
    EXPECT_EQ(window.SendMessage(WM_NCPAINT, 1), 0);
    EXPECT_FALSE(window.Got(WM_NCACTIVATE));
    EXPECT_FALSE(window.Got(WM_NCPAINT));
}

TEST(WinImplBaseTest, MessagesOfNoHookGoToHandleCustomMessage)
{
    SkinWindow window;
    window.Open();
    EXPECT_EQ(window.SendMessage(WM_APP + 9), 99);
    EXPECT_EQ(window.SendMessage(WM_APP + 8), 0);
    EXPECT_TRUE(window.Got(WM_APP + 8));
    window.SendMessage(WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(window.Got(WM_KEYDOWN));
}

TEST(WinImplBaseTest, AHandledHookEndsTheMessage)
{
    SkinWindow window;
    window.Open();
    window.onKeyDown = [](BOOL&) { return LRESULT{17}; };
    EXPECT_EQ(window.SendMessage(WM_KEYDOWN, VK_SPACE), 17);
    EXPECT_FALSE(window.Got(WM_KEYDOWN));
}

TEST(WinImplBaseTest, AHookMayEndTheWindowAndItsObject)
{
    auto* const window = new SkinWindow;
    window->deleteItself = true;
    const HWND handle = window->Open();
    window->onKeyDown = [handle](BOOL& handled) {
        handled = FALSE;
        ::DestroyWindow(handle);
        return LRESULT{5};
    };
    EXPECT_EQ(::SendMessage(handle, WM_KEYDOWN, VK_SPACE, 0), 5);
    EXPECT_FALSE(::IsWindow(handle));
}

TEST(WinImplBaseTest, TheControlsEndWithTheWindowsObject)
{
    int ended = 0;
    struct Counter {
        int* ended;
        bool OnEnd(void*)
        {
            ++*ended;
            return true;
        }
    } counter{&ended};
    {
        SkinWindow window;
        const HWND handle = window.Open();
        ASSERT_NE(window.rootInInit, nullptr);
        window.rootInInit->OnDestroy += MakeDelegate(&counter, &Counter::OnEnd);
        ::DestroyWindow(handle);
        EXPECT_EQ(ended, 0);
    }
    EXPECT_EQ(ended, 1);
}

TEST(WinImplBaseTest, DefaultsOfAPlainWindow)
{
    class Plain : public WindowImplBase {
    public:
        LPCTSTR GetWindowClassName() const override { return L"DuiLib.PlainTest"; }
        CDuiString GetSkinFile() override { return L""; }
        using WindowImplBase::GetManagerName;
        using WindowImplBase::GetSkinType;
        using WindowImplBase::ResponseDefaultKeyEvent;
    } window;
    EXPECT_TRUE(window.GetSkinType().IsEmpty());
    EXPECT_EQ(window.GetManagerName(), nullptr);
    EXPECT_EQ(window.GetClassStyle(), static_cast<UINT>(CS_DBLCLKS));
    EXPECT_EQ(window.CreateControl(L"Any"), nullptr);
    EXPECT_EQ(window.QueryControlText(L"id", L"type"), nullptr);
    EXPECT_EQ(window.ResponseDefaultKeyEvent(VK_ESCAPE), TRUE);
    EXPECT_EQ(window.ResponseDefaultKeyEvent(VK_RETURN), FALSE);
}
