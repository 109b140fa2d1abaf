#include <UIlib.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

using namespace DuiLib;

namespace {

std::string g_calls;

// Handlers written with and without the name of their class.
class Page : public CNotifyPump {
public:
    void OnAnyClick(TNotifyUI&) { g_calls += "any "; }
    void OnSaveClick(TNotifyUI&) { g_calls += "save "; }
    virtual void OnChanged(TNotifyUI&) { g_calls += "changed "; }
    void OnKillFocus(TNotifyUI&) { g_calls += "killfocus "; }
    void OnMenu(TNotifyUI&) { g_calls += "menu "; }
    void OnReturn(TNotifyUI&) { g_calls += "return "; }

    DUI_DECLARE_MESSAGE_MAP()

protected:
    void OnTimer(TNotifyUI& msg) { g_calls += "timer" + std::to_string(msg.wParam) + " "; }
};

DUI_BASE_BEGIN_MESSAGE_MAP(Page)
DUI_ON_MSGTYPE(DUI_MSGTYPE_CLICK, OnAnyClick)
DUI_ON_CLICK_CTRNAME(L"save", Page::OnSaveClick)
DUI_ON_SELECTCHANGED_CTRNAME(L"option", Page::OnChanged)
DUI_ON_KILLFOCUS_CTRNAME(L"edit", OnKillFocus)
DUI_ON_MENU_CTRNAME(L"list", OnMenu)
DUI_ON_MSGTYPE_CTRNAME(DUI_MSGTYPE_RETURN, L"edit", Page::OnReturn)
DUI_ON_TIMER()
DUI_END_MESSAGE_MAP()

// A second base, so that members of the derived page need another address.
struct Extra {
    virtual ~Extra() = default;
    int value = 7;
};

class DerivedPage : public Extra, public Page {
public:
    void OnChanged(TNotifyUI&) override { g_calls += "override" + std::to_string(value) + " "; }
    void OnLoad(TNotifyUI&) { g_calls += "load "; }
    void OnOpenClick(TNotifyUI&) { g_calls += "open" + std::to_string(value) + " "; }

    DUI_DECLARE_MESSAGE_MAP()
};

DUI_BEGIN_MESSAGE_MAP(DerivedPage, Page)
DUI_ON_MSGTYPE(DUI_MSGTYPE_WINDOWINIT, DerivedPage::OnLoad)
DUI_ON_CLICK_CTRNAME(L"open", OnOpenClick)
DUI_END_MESSAGE_MAP()

// A map made by hand, with a handler of the other form.
class ParameterPage : public CNotifyPump {
public:
    LRESULT OnParameters(WPARAM wParam, LPARAM lParam)
    {
        g_calls += std::to_string(wParam) + "/" + std::to_string(lParam) + " ";
        return 0;
    }

protected:
    const DUI_MSGMAP* GetMessageMap() const override
    {
        typedef LRESULT (CNotifyPump::*Handler)(WPARAM, LPARAM);
        union {
            Handler parameters;
            DUI_PMSG entry;
        } handler = {static_cast<Handler>(&ParameterPage::OnParameters)};
        static const DUI_MSGMAP_ENTRY entries[] = {
            {L"custom", L"", DuiSig_lwl, handler.entry},
            {L"", L"", DuiSig_end, nullptr},
        };
        static const DUI_MSGMAP map = {nullptr, entries};
        return &map;
    }
};

class NotifyPumpTest : public testing::Test {
protected:
    NotifyPumpTest() { g_calls.clear(); }

    bool Send(CNotifyPump& pump, LPCTSTR type, LPCTSTR sender = L"", WPARAM wParam = 0)
    {
        m_control.SetName(sender);
        TNotifyUI notification;
        notification.sType = type;
        notification.pSender = &m_control;
        notification.wParam = wParam;
        return pump.LoopDispatch(notification);
    }

    void SendThrough(CNotifyPump& pump, LPCTSTR type, LPCTSTR virtualWindow)
    {
        TNotifyUI notification;
        notification.sType = type;
        notification.sVirtualWnd = virtualWindow;
        pump.NotifyPump(notification);
    }

private:
    CControlUI m_control;
};

} // namespace

TEST_F(NotifyPumpTest, AnEntryForTheSenderBeatsOneForAnySender)
{
    Page page;
    EXPECT_TRUE(Send(page, L"click", L"save"));
    EXPECT_TRUE(Send(page, L"click", L"other"));
    EXPECT_TRUE(Send(page, L"click"));
    EXPECT_EQ(g_calls, "save any any ");
}

TEST_F(NotifyPumpTest, EveryMacroFindsItsType)
{
    Page page;
    Send(page, L"selectchanged", L"option");
    Send(page, L"killfocus", L"edit");
    Send(page, L"menu", L"list");
    Send(page, L"return", L"edit");
    Send(page, L"timer", L"anything", 5);
    EXPECT_EQ(g_calls, "changed killfocus menu return timer5 ");
}

TEST_F(NotifyPumpTest, TypesAndNamesAreComparedExactly)
{
    Page page;
    EXPECT_FALSE(Send(page, L"Click", L"save"));
    EXPECT_FALSE(Send(page, L"return", L"Edit"));
    EXPECT_FALSE(Send(page, L"return"));
    EXPECT_FALSE(Send(page, L"unknown"));
    EXPECT_EQ(g_calls, "");
}

TEST_F(NotifyPumpTest, TheMostDerivedMapWithAnEntryWins)
{
    DerivedPage page;
    EXPECT_TRUE(Send(page, L"windowinit"));
    EXPECT_TRUE(Send(page, L"click", L"open"));
    EXPECT_EQ(g_calls, "load open7 ");
}

TEST_F(NotifyPumpTest, WhatAClassDoesNotHandleGoesToItsBase)
{
    DerivedPage page;
    EXPECT_TRUE(Send(page, L"click", L"save"));
    EXPECT_TRUE(Send(page, L"click", L"other"));
    EXPECT_EQ(g_calls, "save any ");
}

TEST_F(NotifyPumpTest, HandlersAreCalledVirtually)
{
    DerivedPage page;
    EXPECT_TRUE(Send(page, L"selectchanged", L"option"));
    EXPECT_EQ(g_calls, "override7 ");
}

TEST_F(NotifyPumpTest, ANotificationWithoutSenderReachesEntriesWithoutName)
{
    Page page;
    TNotifyUI notification;
    notification.sType = L"click";
    EXPECT_TRUE(page.LoopDispatch(notification));
    EXPECT_EQ(g_calls, "any ");
}

TEST_F(NotifyPumpTest, APumpWithoutAMapHandlesNothing)
{
    CNotifyPump pump;
    EXPECT_FALSE(Send(pump, L"click", L"save"));
}

TEST_F(NotifyPumpTest, HandlersMayTakeTheTwoParameters)
{
    ParameterPage page;
    TNotifyUI notification;
    notification.sType = L"custom";
    notification.wParam = 3;
    notification.lParam = -4;
    EXPECT_TRUE(page.LoopDispatch(notification));
    EXPECT_EQ(g_calls, "3/-4 ");
}

TEST_F(NotifyPumpTest, VirtualWindowsAreRegisteredOnce)
{
    CNotifyPump pump;
    Page page;
    EXPECT_TRUE(pump.AddVirtualWnd(L"page", &page));
    EXPECT_FALSE(pump.AddVirtualWnd(L"page", &page));
    EXPECT_TRUE(pump.RemoveVirtualWnd(L"page"));
    EXPECT_FALSE(pump.RemoveVirtualWnd(L"page"));
    EXPECT_FALSE(pump.RemoveVirtualWnd(L"never"));
    EXPECT_FALSE(pump.AddVirtualWnd(L"null", nullptr));
}

TEST_F(NotifyPumpTest, AVirtualWindowIsAskedFirstInAnyCase)
{
    Page window;
    DerivedPage page;
    window.AddVirtualWnd(L"Settings", &page);
    SendThrough(window, L"windowinit", L"SETTINGS");
    EXPECT_EQ(g_calls, "load ");
}

TEST_F(NotifyPumpTest, WhatTheVirtualWindowDoesNotHandleGoesToThePump)
{
    DerivedPage window;
    CNotifyPump nothing;
    window.AddVirtualWnd(L"Settings", &nothing);
    SendThrough(window, L"windowinit", L"Settings");
    SendThrough(window, L"click", L"Unknown");
    SendThrough(window, L"click", L"");
    EXPECT_EQ(g_calls, "load any any ");
}

TEST_F(NotifyPumpTest, NamesAndNumbersOfTheConstants)
{
    static_assert(UIEVENT__FIRST == 1 && UIEVENT_KEYDOWN == 3 && UIEVENT_MOUSEMOVE == 9);
    static_assert(UIEVENT_BUTTONDOWN == 13 && UIEVENT_DBLCLICK == 19 && UIEVENT__MOUSEEND == 22);
    static_assert(UIEVENT_SETFOCUS == 24 && UIEVENT_TIMER == 27 && UIEVENT__LAST == 28);
    static_assert(UIMSG_TRAYICON == 1025 && UIMSG_SET_DPI == 1026 && WM_MENUCLICK == 1027);
    static_assert(UIMSG_USER == 1124 && UIMSG_DRAG == 2024 && UIMSG_DRAGENTER == 2026);
    static_assert(UIMSG_DRAGLEAVE == 2027 && UIMSG_DRAGOVER == 2028 && UIMSG_DRAGRELEASE == 2029);
    static_assert(UILIB_FILE == 1 && UILIB_ZIPRESOURCE == 4 && LT_MENU == 3);
    static_assert(DuiSig_end == 0 && DuiSig_lwl == 1 && DuiSig_vn == 2);
    EXPECT_STREQ(DUI_MSGTYPE_VKBACK, L"vk_back");
    EXPECT_STREQ(DUI_MSGTYPE_ESCAPE, L"escape");
    EXPECT_STREQ(DUI_MSGTYPE_PAGECHANED, L"page_selected_changed");
    EXPECT_STREQ(DUI_CTR_TAB_BOX, L"TabBox");
}

TEST_F(NotifyPumpTest, RecordsStartCleared)
{
    alignas(TImageInfo) unsigned char memory[sizeof(TImageInfo)];
    std::memset(memory, 0xCC, sizeof(memory));
    TImageInfo& image = *new (memory) TImageInfo;
    EXPECT_EQ(image.pImage, nullptr);
    EXPECT_EQ(image.hBitmap, nullptr);
    EXPECT_EQ(image.pBits, nullptr);
    EXPECT_EQ(image.pSrcBits, nullptr);
    EXPECT_EQ(image.nX, 0);
    EXPECT_EQ(image.nY, 0);
    EXPECT_FALSE(image.bAlpha);
    EXPECT_FALSE(image.bUseHSL);
    EXPECT_TRUE(image.sResType.IsEmpty());
    EXPECT_EQ(image.dwMask, 0u);
    image.~TImageInfo();

    static_assert(std::is_aggregate_v<TEventUI> && std::is_trivially_copyable_v<TEventUI>);
}
