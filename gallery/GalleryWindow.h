#pragma once

#include <quillet/quillet.h>

#include "gallery/Page.h"

#include <memory>
#include <string>
#include <vector>

namespace gallery {

// The gallery's main window: the list of pages, the page, and the language and scale to show it in.
class GalleryWindow : public DuiLib::WindowImplBaseEx {
public:
    enum class AtClose { EndTheMessageLoop, Nothing };

    explicit GalleryWindow(AtClose atClose) : m_atClose(atClose) {}

    // Creates the window, shown or not, with the first page.
    bool Open(bool show);

    void ShowPage(const PageEntry& page);
    void SetLanguage(const wchar_t* language); // "en-US", "de-DE", "zh-CN" or "th-TH"
    void SetScale(int percent);

    DuiLib::CPaintManagerUI& Manager() { return m_pm; }
    Page* ShownPage() const { return m_page.get(); }
    const std::vector<std::string>& TraceLines() const { return m_trace; }

    // WindowImplBaseEx:
    void InitWindow() override;
    void Notify(DuiLib::TNotifyUI& notification) override;
    DuiLib::CControlUI* CreateControl(LPCTSTR name) override;
    void OnFinalMessage(HWND window) override;
    LRESULT OnDPIChanged(UINT message, WPARAM dpi, LPARAM lParam, BOOL& handled) override;
    void WriteLog(int line, std::string function, std::string message) override;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletGallery"; }
    DuiLib::CDuiString GetSkinFile() override { return L"gallery.xml"; }
    LRESULT ResponseDefaultKeyEvent(WPARAM) override { return FALSE; }

private:
    void ListPages();
    void ChooseFonts(std::wstring_view language);
    void Chosen(const std::wstring& optionName);

    AtClose m_atClose;
    std::unique_ptr<Page> m_page;
    std::vector<std::string> m_trace;
};

// The DPI that a window on a monitor of that size uses when the system asks for one.
unsigned UsableDpi(SIZE monitor, unsigned requestedDpi);

} // namespace gallery
