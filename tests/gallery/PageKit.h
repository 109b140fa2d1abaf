#pragma once

#include "gallery/Application.h"
#include "gallery/GalleryWindow.h"
#include "support/TempFolder.h"
#include "tests/quillet/dialogs/DialogHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace test {

// The main window of the gallery, and what a user does with its pages.
class PageKit : public testing::Test {
protected:
    PageKit() { window.Open(true); }
    ~PageKit() override
    {
        if (window.IsOpen())
            ::DestroyWindow(window.GetHWND());
        Pump();
    }

    void ShowPage(std::wstring_view name)
    {
        const auto pages = gallery::Pages();
        window.ShowPage(*std::ranges::find(pages, name, &gallery::PageEntry::name));
        Pump();
    }
    void LeavePage() { ShowPage(L"toggle-switch"); }

    // A control of the page; one that is missing fails the test by an exception.
    template <class Control>
    Control& Find(const wchar_t* name)
    {
        return dynamic_cast<Control&>(*window.Manager().FindControl(name));
    }
    void Click(const wchar_t* name) { Find<DuiLib::CControlUI>(name).Activate(); }
    void Choose(const wchar_t* name, bool chosen = true)
    {
        Find<DuiLib::COptionUI>(name).Selected(chosen);
    }
    std::string Text(const wchar_t* name)
    {
        return Utf8(Find<DuiLib::CControlUI>(name).GetText().GetData());
    }

    // Dispatches until the condition holds; false when it never does.
    static bool WaitUntil(const std::function<bool()>& condition)
    {
        constexpr DWORD kPatience = 60'000; // milliseconds; only a failure takes so long
        const DWORD start = ::GetTickCount();
        while (!condition()) {
            if (::GetTickCount() - start > kPatience)
                return false;
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
            Pump();
        }
        return true;
    }

    gallery::Application application;
    gallery::GalleryWindow window{gallery::GalleryWindow::AtClose::Nothing};
};

} // namespace test
