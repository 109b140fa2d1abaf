#include "gallery/GalleryController.h"

#include "gallery/Demonstration.h"

#include <utility>

namespace gallery {

using namespace DuiLib;

namespace {

constexpr UINT kWakeUp = WM_USER + 4; // of the task queue

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

void GalleryController::TakePages(UIWindow& window)
{
    for (const auto& entry : Pages()) {
        m_pages.push_back(entry.make(m_window));
        window.AddUIController(m_pages.back());
    }
}

void GalleryController::OnInit()
{
    CResourceManagerEx::GetInstance()->SetMainHWND(GetHwnd());
    ListenMessage(kWakeUp, [](WPARAM, LPARAM) { UIMainQueue::getInstance().finish(); });
    GetPaintManagerUI().AddNotifier(this);
    ListPages();
    SetLanguage(L"en-US");
}

void GalleryController::ListPages()
{
    auto* const list = static_cast<CContainerUI*>(GetControl(L"pages"));
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

void GalleryController::ShowPage(const PageEntry& entry)
{
    const std::wstring name = entry.name;
    LeavePage();
    auto& manager = GetPaintManagerUI();
    auto* const content = static_cast<CContainerUI*>(manager.FindControl(L"content"));
    content->RemoveAll();

    CDialogBuilder frame;
    Give(*content,
         std::unique_ptr<CControlUI>(frame.Create(L"page.xml", nullptr, nullptr, &manager)));
    manager.FindControl(L"page.title")->SetText((L"page." + name).c_str());
    manager.FindControl(L"page.description")->SetText((name + L".description").c_str());

    const auto demonstration = Demonstration::Read(L"demos/" + name + L".xml");
    manager.FindControl(L"page.code")->SetText(demonstration.Code().c_str());
    CDialogBuilder demo;
    Give(*static_cast<CContainerUI*>(manager.FindControl(L"page.demo")),
         std::unique_ptr<CControlUI>(
             demo.Create(demonstration.Markup(), nullptr, nullptr, &manager)));

    m_page = m_pages[static_cast<std::size_t>(&entry - Pages().data())].get();
    m_page->Enter();
    manager.GetRoot()->NeedUpdate();
}

void GalleryController::LeavePage()
{
    if (Page* const page = std::exchange(m_page, nullptr))
        page->Leave();
}

void GalleryController::SetLanguage(const wchar_t* language)
{
    // Skins and dialogs take their texts from the one manager, everything else from the other.
    CResourceManager::GetInstance()->SetLanguage(language);
    CResourceManagerEx::GetInstance()->SetLanguage(language);
    for (const wchar_t* const folder : {L"languages/", L"common/languages/"}) {
        const std::wstring file = std::wstring(folder) + language + L".xml";
        CResourceManager::GetInstance()->LoadLanguage(file.c_str());
        CResourceManagerEx::GetInstance()->LoadLanguage(file.c_str());
    }

    ChooseFonts(language);
    if (m_page)
        m_page->LanguageChanged();
    GetPaintManagerUI().GetRoot()->NeedUpdate();
}

void GalleryController::ChooseFonts(std::wstring_view language)
{
    auto& manager = GetPaintManagerUI();
    const wchar_t* const face = FaceOf(language);
    for (const auto& font : kBodyFonts)
        manager.AddFont(font.id, face, font.size, font.bold, false, false, false);
    manager.SetDefaultFont(face, kBodyFonts[0].size, false, false, false, false);
}

void GalleryController::SetScale(int percent)
{
    const int dpi = ::MulDiv(percent, USER_DEFAULT_SCREEN_DPI, 100);
    CResourceManagerEx::GetInstance()->SetScale(static_cast<unsigned>(dpi));
    GetPaintManagerUI().SetDPI(dpi);
    OnDPIChanged();
}

void GalleryController::Notify(TNotifyUI& notification)
{
    if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && notification.pSender) {
        const auto* const option =
            static_cast<COptionUI*>(notification.pSender->GetInterface(L"Option"));
        if (option && option->IsSelected())
            Chosen(notification.pSender->GetName().GetData());
    }
    if (m_page)
        m_page->Notify(notification);
}

void GalleryController::Chosen(const std::wstring& optionName)
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

void GalleryController::OnDPIChanged()
{
    if (m_page)
        m_page->ScaleChanged();
}

void GalleryController::OnMenuClick(WPARAM wParam)
{
    const std::unique_ptr<MenuCmd> command(reinterpret_cast<MenuCmd*>(wParam));
    if (m_page)
        m_page->MenuChosen(*command);
}

void GalleryController::OnDestroy()
{
    LeavePage();
    if (GetHwnd()) // it was initialised
        GetPaintManagerUI().RemoveNotifier(this);
    if (m_atClose == GalleryWindow::AtClose::EndTheMessageLoop)
        ::PostQuitMessage(0);
}

} // namespace gallery
