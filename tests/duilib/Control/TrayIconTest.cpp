#include "support/ControlHost.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <shellapi.h>

#include <string>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::ImportHook;

namespace {

struct Call {
    DWORD action;
    NOTIFYICONDATAW data;
};
std::vector<Call> calls;
BOOL answer = TRUE;

BOOL WINAPI RecordNotifyIcon(DWORD action, NOTIFYICONDATAW* data)
{
    calls.push_back({action, *data});
    return answer;
}

class TrayIconTest : public testing::Test {
protected:
    void SetUp() override
    {
        calls.clear();
        answer = TRUE;
    }

    ControlHost host{50, 50};
    ImportHook hook{L"DuiLib.dll", "shell32.dll", "Shell_NotifyIconW",
                    reinterpret_cast<void*>(&RecordNotifyIcon)};
};

TEST_F(TrayIconTest, AddsTheIconWithItsTipAndMessage)
{
    CTrayIcon icon;
    icon.CreateTrayIcon(host.Window(), 7, L"a tip", WM_USER + 50);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].action, static_cast<DWORD>(NIM_ADD));
    const NOTIFYICONDATAW& data = calls[0].data;
    EXPECT_EQ(data.cbSize, sizeof(data));
    EXPECT_EQ(data.hWnd, host.Window());
    EXPECT_EQ(data.uID, 7u);
    EXPECT_EQ(data.uFlags, static_cast<UINT>(NIF_MESSAGE | NIF_ICON | NIF_TIP));
    EXPECT_EQ(data.uCallbackMessage, static_cast<UINT>(WM_USER + 50));
    EXPECT_STREQ(data.szTip, L"a tip");
}

TEST_F(TrayIconTest, WithoutAMessageUsesTheToolkitsOwn)
{
    CTrayIcon icon;
    icon.CreateTrayIcon(host.Window(), 7);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].data.uCallbackMessage, static_cast<UINT>(UIMSG_TRAYICON));
    EXPECT_STREQ(calls[0].data.szTip, L"");
}

TEST_F(TrayIconTest, CutsATipThatIsTooLong)
{
    CTrayIcon icon;
    icon.CreateTrayIcon(host.Window(), 7, std::wstring(500, L'x').c_str());
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(std::wstring(calls[0].data.szTip), std::wstring(127, L'x'));
}

TEST_F(TrayIconTest, DeletesTheIconOnceAndWithTheObject)
{
    {
        CTrayIcon icon;
        icon.DeleteTrayIcon();
        EXPECT_TRUE(calls.empty());
        icon.CreateTrayIcon(host.Window(), 7);
        icon.DeleteTrayIcon();
        icon.DeleteTrayIcon();
        ASSERT_EQ(calls.size(), 2u);
        EXPECT_EQ(calls[1].action, static_cast<DWORD>(NIM_DELETE));
        EXPECT_EQ(calls[1].data.hWnd, host.Window());
        EXPECT_EQ(calls[1].data.uID, 7u);
        icon.CreateTrayIcon(host.Window(), 8);
    }
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[3].action, static_cast<DWORD>(NIM_DELETE));
    EXPECT_EQ(calls[3].data.uID, 8u);
}

TEST_F(TrayIconTest, ReplacesAnIconThatIsThere)
{
    CTrayIcon icon;
    icon.CreateTrayIcon(host.Window(), 7);
    icon.CreateTrayIcon(host.Window(), 9);
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[1].action, static_cast<DWORD>(NIM_DELETE));
    EXPECT_EQ(calls[1].data.uID, 7u);
    EXPECT_EQ(calls[2].data.uID, 9u);
}

TEST_F(TrayIconTest, WhatTheSystemRefusesIsNotDeletedLater)
{
    answer = FALSE;
    {
        CTrayIcon icon;
        icon.CreateTrayIcon(host.Window(), 7);
    }
    EXPECT_EQ(calls.size(), 1u);
}

} // namespace
