#include "gallery/Screenshot.h"

#include <quillet/quillet.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace gallery {

namespace {

constexpr int kGrid = 3; // pixels

SIZE SizeOf(const RECT& rect)
{
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

int CountOwners(HWND window)
{
    int count = 0;
    while ((window = ::GetWindow(window, GW_OWNER)))
        count++;
    return count;
}

// An owner never covers what it owns.
std::vector<HWND> VisibleWindowsFromTheBottom()
{
    std::vector<HWND> windows;
    for (HWND window = ::GetTopWindow(nullptr); window; window = ::GetWindow(window, GW_HWNDNEXT)) {
        const bool own = ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId();
        if (own && ::IsWindowVisible(window) && !::IsIconic(window))
            windows.push_back(window);
    }
    std::reverse(windows.begin(), windows.end());
    std::stable_sort(windows.begin(), windows.end(),
                     [](HWND a, HWND b) { return CountOwners(a) < CountOwners(b); });
    return windows;
}

// The system's own windows, such as tooltips, do not print themselves.
bool PrintsItself(HWND window)
{
    wchar_t name[64]{};
    const int length = ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    const std::wstring_view className(name, static_cast<std::size_t>(length));
    return !className.starts_with(L"#") && className != TOOLTIPS_CLASSW;
}

BYTE OpacityOf(HWND window)
{
    BYTE alpha = 255;
    DWORD flags = 0;
    const bool constant = ::GetLayeredWindowAttributes(window, nullptr, &alpha, &flags) != FALSE;
    return constant && (flags & LWA_ALPHA) ? alpha : 255;
}

class Canvas {
public:
    Canvas(HDC screen, SIZE size)
        : m_dc(::CreateCompatibleDC(screen)),
          m_bitmap(::CreateCompatibleBitmap(screen, size.cx, size.cy)),
          m_selected(m_dc.get(), m_bitmap.get())
    {
    }

    HDC Dc() const { return m_dc.get(); }
    Quillet::UniqueBitmap Take()
    {
        ::SelectObject(m_dc.get(), m_selected.previous());
        return std::move(m_bitmap);
    }

private:
    Quillet::UniqueMemoryDc m_dc;
    Quillet::UniqueBitmap m_bitmap;
    Quillet::SelectedObject m_selected;
};

// Cuts the drawing to the shape of the window at that place.
void CutToShape(HDC dc, HWND window, POINT place)
{
    const Quillet::UniqueRegion shape(::CreateRectRgn(0, 0, 0, 0));
    if (::GetWindowRgn(window, shape.get()) == ERROR)
        return;
    ::OffsetRgn(shape.get(), place.x, place.y);
    ::SelectClipRgn(dc, shape.get());
}

// Draws the window over what the desktop shows so far.
void Compose(const Canvas& desktop, POINT origin, HDC screen, HWND window)
{
    const RECT place = PlaceOf(window);
    const auto [width, height] = SizeOf(place);
    const POINT at{place.left - origin.x, place.top - origin.y};
    if (!PrintsItself(window)) {
        ::BitBlt(desktop.Dc(), at.x, at.y, width, height, screen, place.left, place.top, SRCCOPY);
        return;
    }
    // Transparent parts keep what lies below.
    const Canvas layer(screen, SizeOf(place));
    ::BitBlt(layer.Dc(), 0, 0, width, height, desktop.Dc(), at.x, at.y, SRCCOPY);
    ::SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(layer.Dc()),
                   PRF_CLIENT | PRF_CHILDREN);
    const Quillet::SavedDc saved(desktop.Dc());
    CutToShape(desktop.Dc(), window, at);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, OpacityOf(window), 0};
    ::AlphaBlend(desktop.Dc(), at.x, at.y, width, height, layer.Dc(), 0, 0, width, height, blend);
}

} // namespace

Screenshot::Screenshot(int width, int height, Quillet::UniqueBitmap bitmap)
    : m_width(width), m_height(height), m_bitmap(std::move(bitmap))
{
}

Screenshot Screenshot::OfWindow(HWND window)
{
    RECT client{};
    ::GetClientRect(window, &client);
    const Quillet::WindowDc source(window);
    Canvas canvas(source.get(), SizeOf(client));
    ::BitBlt(canvas.Dc(), 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
    return {client.right, client.bottom, canvas.Take()};
}

Screenshot Screenshot::OfThisThread()
{
    const auto windows = VisibleWindowsFromTheBottom();
    RECT area{};
    for (const HWND window : windows) {
        const RECT place = PlaceOf(window);
        ::UnionRect(&area, &area, &place);
    }
    const RECT whole{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    ::IntersectRect(&area, &area, &whole);

    const Quillet::WindowDc screen(nullptr);
    Canvas desktop(screen.get(), SizeOf(area));
    const RECT everything{0, 0, SizeOf(area).cx, SizeOf(area).cy};
    ::FillRect(desktop.Dc(), &everything, ::GetSysColorBrush(COLOR_DESKTOP));
    for (const HWND window : windows)
        Compose(desktop, {area.left, area.top}, screen.get(), window);
    return {SizeOf(area).cx, SizeOf(area).cy, desktop.Take()};
}

bool Screenshot::Save(const std::wstring& path) const
{
    Gdiplus::Bitmap picture(m_bitmap.get(), nullptr);
    return DuiLib::Utils::SaveBitmap(&picture, path);
}

std::size_t Screenshot::Colours() const
{
    Gdiplus::Bitmap picture(m_bitmap.get(), nullptr);
    std::set<Gdiplus::ARGB> colours;
    for (int y = 0; y < m_height; y += kGrid) {
        for (int x = 0; x < m_width; x += kGrid) {
            Gdiplus::Color colour;
            picture.GetPixel(x, y, &colour);
            colours.insert(colour.GetValue());
        }
    }
    return colours.size();
}

} // namespace gallery
