#include "gallery/GalleryWindow.h"

#include "gallery/Demonstration.h"

#include <string_view>

namespace gallery {

using namespace DuiLib;

namespace {

constexpr std::size_t kTraceLinesKept = 200;

// Fonts whose face follows the language, because not every face has every script.
struct BodyFont {
    int id;
    int size; // pixels at 100 percent
    bool bold;
};
constexpr BodyFont kBodyFonts[] = {
    {0, 13, false}, {1, 22, true}, {2, 12, false}, {6, 13, true}, {7, 16, true}};

const wchar_t* FaceOf(std::wstring_view language)
{
    if (language == L"zh-CN")
        return L"Microsoft YaHei";
    if (language == L"th-TH")
        return L"Leelawadee UI";
    return L"Segoe UI";
}

// A window that never exists: it only lends its arithmetic.
class MonitorRules : public WindowImplBaseEx {
public:
    explicit MonitorRules(SIZE monitor) { m_szScreen = monitor; }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletMonitorRules"; }
    CDuiString GetSkinFile() override { return {}; }
};

void Give(CContainerUI& container, std::unique_ptr<CControlUI> control)
{
    if (control && container.Add(control.get()))
        control.release();
}

bool TakePrefix(std::wstring& text, std::wstring_view prefix)
{
    if (text.compare(0, prefix.size(), prefix) != 0)
        return false;
    text.erase(0, prefix.size());
    return true;
}

} // namespace

unsigned UsableDpi(SIZE monitor, unsigned requestedDpi)
{
    return MonitorRules(monitor).GetDPI(requestedDpi);
}

bool GalleryWindow::Open(bool show)
{
    if (!Create(nullptr, L"Quillet", UI_WNDSTYLE_FRAME & ~WS_VISIBLE, 0))
        return false;
    CenterWindow();
    if (show)
        ShowWindow();
    return true;
}

void GalleryWindow::InitWindow()
{
    CResourceManagerEx::GetInstance()->SetMainHWND(m_hWnd);
    ListPages();
    SetLanguage(L"en-US");
}

void GalleryWindow::ListPages()
{
    auto* const list = static_cast<CContainerUI*>(m_pm.FindControl(L"pages"));
    for (const auto& page : Pages()) {
        auto option = std::make_unique<COptionUI>();
        auto& entry = *option;
        entry.SetName((std::wstring(L"page.") + page.name).c_str());
        Give(*list, std::move(option));
        entry.ApplyAttributeList(L"page-link");
        entry.SetText((std::wstring(L"page.") + page.name).c_str());
    }
    static_cast<COptionUI*>(list->GetItemAt(0))->Selected(true);
}

void GalleryWindow::ShowPage(const PageEntry& page)
{
    const std::wstring name = page.name;
    m_page.reset();
    auto* const content = static_cast<CContainerUI*>(m_pm.FindControl(L"content"));
    content->RemoveAll();

    CDialogBuilder frame;
    Give(*content, std::unique_ptr<CControlUI>(frame.Create(L"page.xml", nullptr, this, &m_pm)));
    m_pm.FindControl(L"page.title")->SetText((L"page." + name).c_str());
    m_pm.FindControl(L"page.description")->SetText((name + L".description").c_str());

    const auto demonstration = Demonstration::Read(L"demos/" + name + L".xml");
    m_pm.FindControl(L"page.code")->SetText(demonstration.Code().c_str());
    CDialogBuilder demo;
    Give(*static_cast<CContainerUI*>(m_pm.FindControl(L"page.demo")),
         std::unique_ptr<CControlUI>(demo.Create(demonstration.Markup(), nullptr, this, &m_pm)));

    m_page = page.make(*this);
    m_page->Show();
    m_pm.GetRoot()->NeedUpdate();
}

void GalleryWindow::SetLanguage(const wchar_t* language)
{
    const std::wstring file = std::wstring(L"languages/") + language + L".xml";
    CResourceManager::GetInstance()->SetLanguage(language);
    CResourceManager::GetInstance()->LoadLanguage(file.c_str());
    CResourceManagerEx::GetInstance()->SetLanguage(language);
    CResourceManagerEx::GetInstance()->LoadLanguage(file.c_str());

    ChooseFonts(language);
    if (m_page)
        m_page->LanguageChanged();
    m_pm.GetRoot()->NeedUpdate();
}

void GalleryWindow::ChooseFonts(std::wstring_view language)
{
    const wchar_t* const face = FaceOf(language);
    for (const auto& font : kBodyFonts)
        m_pm.AddFont(font.id, face, font.size, font.bold, false, false, false);
    m_pm.SetDefaultFont(face, kBodyFonts[0].size, false, false, false, false);
}

void GalleryWindow::SetScale(int percent)
{
    const int dpi = ::MulDiv(percent, USER_DEFAULT_SCREEN_DPI, 100);
    m_uDpi = static_cast<unsigned>(dpi);
    CResourceManagerEx::GetInstance()->SetScale(m_uDpi);
    m_pm.SetDPI(dpi);
    if (m_page)
        m_page->ScaleChanged();
}

void GalleryWindow::Notify(TNotifyUI& notification)
{
    if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && notification.pSender) {
        const auto* const option =
            static_cast<COptionUI*>(notification.pSender->GetInterface(L"Option"));
        if (option && option->IsSelected())
            Chosen(notification.pSender->GetName().GetData());
    }
    if (m_page)
        m_page->Notify(notification);
    WindowImplBaseEx::Notify(notification);
}

void GalleryWindow::Chosen(const std::wstring& optionName)
{
    std::wstring rest = optionName;
    if (TakePrefix(rest, L"language."))
        SetLanguage(rest.c_str());
    else if (TakePrefix(rest, L"scale."))
        SetScale(std::stoi(rest));
    else if (TakePrefix(rest, L"page."))
        for (const auto& page : Pages())
            if (rest == page.name)
                ShowPage(page);
}

CControlUI* GalleryWindow::CreateControl(LPCTSTR name)
{
    const std::wstring_view wanted = name;
    if (wanted == L"ToggleSwitch")
        return CToggleSwitchUI::CreateControl();
    if (wanted == L"RoundedRectButton")
        return CRoundedRectButtonUI::CreateControl();
    return WindowImplBaseEx::CreateControl(name);
}

LRESULT GalleryWindow::OnDPIChanged(UINT, WPARAM, LPARAM, BOOL&)
{
    if (m_page)
        m_page->ScaleChanged();
    return 0;
}

void GalleryWindow::WriteLog(int, std::string, std::string message)
{
    if (m_trace.size() >= kTraceLinesKept)
        m_trace.erase(m_trace.begin());
    m_trace.push_back(std::move(message));
    if (m_page)
        m_page->Traced();
}

void GalleryWindow::OnFinalMessage(HWND window)
{
    m_page.reset();
    WindowImplBaseEx::OnFinalMessage(window);
    if (m_atClose == AtClose::EndTheMessageLoop)
        ::PostQuitMessage(0);
}

} // namespace gallery
