#include "gallery/Tour.h"

#include "gallery/GalleryWindow.h"
#include "gallery/Screenshot.h"
#include "win32/Handles.h"

#include <string>

namespace gallery {

using namespace DuiLib;

namespace {

constexpr int kScales[] = {100, 150};
constexpr const wchar_t* kLanguages[] = {L"en-US", L"de-DE", L"zh-CN", L"th-TH"};
constexpr std::size_t kFewestColours = 24;

void DispatchWhatIsQueued(HWND window)
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (CPaintManagerUI::TranslateMessage(&message))
            continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    ::UpdateWindow(window);
}

bool HasAllGlyphs(HDC dc, const std::wstring& text)
{
    for (const wchar_t character : text) {
        if (character < L' ')
            continue;
        WORD glyph = 0;
        ::GetGlyphIndicesW(dc, &character, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS);
        if (glyph == 0xFFFF)
            return false;
    }
    return true;
}

struct Inspection {
    CPaintManagerUI* manager;
    std::wstring where;
    std::vector<std::wstring>* problems;
};

// Checks one control that shows text.
CControlUI* CALLBACK Inspect(CControlUI* control, LPVOID context)
{
    const auto& inspection = *static_cast<Inspection*>(context);
    auto* const label = static_cast<CLabelUI*>(control->GetInterface(L"Label"));
    const std::wstring text = control->GetText().GetData();
    if (!label || text.empty() || label->IsShowHtml())
        return nullptr;

    const Quillet::WindowDc dc(inspection.manager->GetPaintWindow());
    const Quillet::SelectedObject font(dc.get(), inspection.manager->GetFont(label->GetFont()));
    if (!HasAllGlyphs(dc.get(), text))
        inspection.problems->push_back(inspection.where + L": missing glyphs in \"" + text + L"\"");

    const UINT style = label->GetTextStyle();
    SIZE extent{};
    ::GetTextExtentPoint32W(dc.get(), text.data(), static_cast<int>(text.size()), &extent);
    const RECT padding = label->GetTextPadding();
    const int room = label->GetWidth() - padding.left - padding.right;
    if ((style & DT_SINGLELINE) && !(style & DT_END_ELLIPSIS) && extent.cx > room)
        inspection.problems->push_back(inspection.where + L": clipped text \"" + text + L"\"");
    return nullptr;
}

std::wstring Numbered(int scale, const wchar_t* page, const wchar_t* language)
{
    return std::wstring(page) + L"-" + std::to_wstring(scale) + L"-" + language;
}

void Keep(const Screenshot& screenshot, const std::wstring& folder, const std::wstring& name,
          TourResult& result)
{
    if (screenshot.Save(folder + L"\\" + name + L".png"))
        ++result.pictures;
    else
        result.problems.push_back(name + L": the picture cannot be written");
    if (screenshot.Colours() < kFewestColours)
        result.problems.push_back(name + L": the page is empty");
}

// Checks every text that a window shows.
void InspectWindow(CPaintManagerUI& manager, const std::wstring& where, TourResult& result)
{
    Inspection inspection{&manager, where, &result.problems};
    if (manager.GetRoot())
        manager.GetRoot()->FindControl(Inspect, &inspection, UIFIND_VISIBLE | UIFIND_ME_FIRST);
}

// Pictures of what the page opens beside itself.
void VisitScenes(GalleryWindow& window, const std::wstring& name, const std::wstring& folder,
                 TourResult& result)
{
    Page* const page = window.ShownPage();
    for (int scene = 0; page && scene < page->Scenes(); ++scene) {
        page->OpenScene(scene);
        DispatchWhatIsQueued(window.GetHWND());
        Keep(Screenshot::OfThisThread(), folder, name + L"-scene" + std::to_wstring(scene + 1),
             result);
        const CStdPtrArray& managers = *CPaintManagerUI::GetPaintManagers();
        for (int i = 0; i < managers.GetSize(); ++i) {
            auto& manager = *static_cast<CPaintManagerUI*>(managers[i]);
            if (&manager != &window.Manager())
                InspectWindow(manager, name, result);
        }
        page->CloseScene();
        DispatchWhatIsQueued(window.GetHWND());
    }
}

void Visit(GalleryWindow& window, const PageEntry& page, int scale, const wchar_t* language,
           const std::wstring& folder, TourResult& result)
{
    const std::wstring name = Numbered(scale, page.name, language);
    const auto option = std::wstring(L"page.") + page.name;
    static_cast<COptionUI*>(window.Manager().FindControl(option.c_str()))->Selected(true);
    DispatchWhatIsQueued(window.GetHWND());

    Keep(Screenshot::OfWindow(window.GetHWND()), folder, name, result);
    VisitScenes(window, name, folder, result);

    InspectWindow(window.Manager(), name, result);
}

void Choose(GalleryWindow& window, const std::wstring& option)
{
    static_cast<COptionUI*>(window.Manager().FindControl(option.c_str()))->Selected(true);
    DispatchWhatIsQueued(window.GetHWND());
}

} // namespace

TourResult TakeTour(const std::wstring& folder)
{
    TourResult result;
    GalleryWindow window(GalleryWindow::AtClose::Nothing);
    if (!window.Open(true)) {
        result.problems.push_back(L"the main window cannot be created");
        return result;
    }
    ::SetWindowPos(window.GetHWND(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);

    for (const int scale : kScales) {
        Choose(window, L"scale." + std::to_wstring(scale));
        for (const wchar_t* language : kLanguages) {
            Choose(window, std::wstring(L"language.") + language);
            for (const auto& page : Pages())
                Visit(window, page, scale, language, folder, result);
        }
    }
    ::DestroyWindow(window.GetHWND());
    return result;
}

} // namespace gallery
