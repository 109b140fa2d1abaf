#include "gallery/Tour.h"

#include "gallery/GalleryWindow.h"
#include "win32/Handles.h"

#include <set>

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

RECT ClientOf(HWND window)
{
    RECT client{};
    ::GetClientRect(window, &client);
    return client;
}

// A rectangle of a window's client area, or of the screen, read back as it is shown.
class Screenshot {
public:
    Screenshot(HWND window, const RECT& area)
        : m_width(area.right - area.left), m_height(area.bottom - area.top)
    {
        const Quillet::WindowDc source(window);
        const Quillet::UniqueMemoryDc memory(::CreateCompatibleDC(source.get()));
        m_bitmap.reset(::CreateCompatibleBitmap(source.get(), m_width, m_height));
        const Quillet::SelectedObject selected(memory.get(), m_bitmap.get());
        ::BitBlt(memory.get(), 0, 0, m_width, m_height, source.get(), area.left, area.top, SRCCOPY);
    }

    bool Save(const std::wstring& path) const
    {
        Gdiplus::Bitmap picture(m_bitmap.get(), nullptr);
        return Utils::SaveBitmap(&picture, path);
    }

    std::size_t Colours() const
    {
        Gdiplus::Bitmap picture(m_bitmap.get(), nullptr);
        std::set<Gdiplus::ARGB> colours;
        for (int y = 0; y < m_height; y += 3) {
            for (int x = 0; x < m_width; x += 3) {
                Gdiplus::Color colour;
                picture.GetPixel(x, y, &colour);
                colours.insert(colour.GetValue());
            }
        }
        return colours.size();
    }

private:
    int m_width;
    int m_height;
    Quillet::UniqueBitmap m_bitmap;
};

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

BOOL CALLBACK JoinVisible(HWND window, LPARAM context)
{
    auto& area = *reinterpret_cast<RECT*>(context);
    RECT place{};
    if (::IsWindowVisible(window) && ::GetWindowRect(window, &place))
        ::UnionRect(&area, &area, &place);
    return TRUE;
}

// The part of the screen that this thread's windows cover.
RECT AreaOfAllWindows()
{
    RECT area{};
    ::EnumThreadWindows(::GetCurrentThreadId(), JoinVisible, reinterpret_cast<LPARAM>(&area));
    const RECT screen{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    ::IntersectRect(&area, &area, &screen);
    return area;
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
        Keep(Screenshot(nullptr, AreaOfAllWindows()), folder,
             name + L"-scene" + std::to_wstring(scene + 1), result);
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

    Keep(Screenshot(window.GetHWND(), ClientOf(window.GetHWND())), folder, name, result);
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
