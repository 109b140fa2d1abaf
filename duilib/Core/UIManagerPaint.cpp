#include "Core/ManagerState.h"

#include "Core/PaintPass.h"
#include "Core/UIRender.h"
#include "win32/Handles.h"

#include <algorithm>
#include <cstring>

namespace DuiLib {

namespace {

// Up to this many rectangles of an update region are painted one by one, when that saves at least
// a third of the area around them.
constexpr DWORD kMostSingleRects = 16;

std::int64_t AreaOf(const RECT& rect)
{
    return static_cast<std::int64_t>(rect.right - rect.left) * (rect.bottom - rect.top);
}

CControlUI* CALLBACK Collect(CControlUI* control, LPVOID data)
{
    static_cast<std::vector<CControlUI*>*>(data)->push_back(control);
    return nullptr;
}

} // namespace

bool BackBuffer::Reserve(SIZE size)
{
    if (Holds(size))
        return true;
    const int newWidth = std::max<int>(size.cx, m_width);
    const int newHeight = std::max<int>(size.cy, m_height);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = newWidth;
    info.bmiHeader.biHeight = -newHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    Quillet::UniqueBitmap bitmap(
        ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (!m_dc)
        m_dc.reset(::CreateCompatibleDC(nullptr));
    if (!bitmap || !m_dc)
        return false;
    ::SelectObject(m_dc.get(), bitmap.get());
    m_bitmap = std::move(bitmap);
    m_pixels = static_cast<std::uint32_t*>(pixels);
    m_width = newWidth;
    m_height = newHeight;
    return true;
}

void CPaintManagerUI::State::Paint()
{
    // What a control does while it draws cannot paint the window once more; the rest stays due.
    if (drawing)
        return;
    int due = QueryUpdateRegion();
    if (due == NULLREGION)
        return;
    if (!root) {
        PaintWithoutRoot();
        return;
    }

    const Watch watch(*this);
    painting = true;
    const Quillet::AtScopeEnd ended([&] {
        if (watch.ManagerLives())
            painting = false;
    });
    const bool mayBecomeMore = focusOwed || layoutNeeded;
    GiveOwedFocus();
    if (!watch.ManagerLives())
        return;
    const bool laidOut = LayOut();
    if (!watch.ManagerLives())
        return;
    if (laidOut && std::exchange(firstLayout, false)) {
        manager.SendNotify(root, DUI_MSGTYPE_WINDOWINIT);
        if (!watch.ManagerLives())
            return;
    }
    if (!root || !HasWindow())
        return;

    RECT client{};
    ::GetClientRect(window, &client);
    if (mayBecomeMore)
        due = QueryUpdateRegion();
    CollectDirtyRects(client, due);
    PAINTSTRUCT paint{};
    const HWND painted = window;
    ::BeginPaint(painted, &paint);
    {
        const Quillet::AtScopeEnd validated([&] { ::EndPaint(painted, &paint); });
        Draw(client);
    }
    if (!watch.ManagerLives())
        return;
    painting = false;
    if (laidOut && root)
        manager.SendNotify(root, DUI_MSGTYPE_WINDOWSIZE, 0, 0, true);
    if (layoutNeeded && !::IsIconic(window) && client.right > 0 && client.bottom > 0)
        manager.Invalidate();
}

// What kind of region is due, which is then in updateRegion; ERROR when nobody knows.
int CPaintManagerUI::State::QueryUpdateRegion()
{
    if (!updateRegion)
        updateRegion.reset(::CreateRectRgn(0, 0, 0, 0));
    return ::GetUpdateRgn(window, updateRegion.get(), FALSE);
}

void CPaintManagerUI::State::PaintWithoutRoot()
{
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(window, &paint);
    ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    ::EndPaint(window, &paint);
}

// True when something was laid out. The flag goes first, so that a layout may ask for another one.
bool CPaintManagerUI::State::LayOut()
{
    RECT client{};
    ::GetClientRect(window, &client);
    if (!layoutNeeded || ::IsRectEmpty(&client) || ::IsIconic(window))
        return false;
    layoutNeeded = false;
    if (!root->IsUpdateNeeded())
        return LayOutDirtyControls();
    if (layered) {
        client.left += layeredInset.left;
        client.top += layeredInset.top;
        client.right -= layeredInset.right;
        client.bottom -= layeredInset.bottom;
    }
    root->SetPos(client, true);
    return true;
}

bool CPaintManagerUI::State::LayOutDirtyControls()
{
    layoutQueue.clear();
    // Controls that ask for a layout, but not those below another one that does.
    root->FindControl(&Collect, &layoutQueue, UIFIND_VISIBLE | UIFIND_UPDATETEST);
    const Watch watch(*this);
    for (std::size_t index = 0; index < layoutQueue.size(); ++index) {
        CControlUI* const control = layoutQueue[index];
        if (!control)
            continue;
        control->SetPos(control->GetPos(), true);
        if (!watch.ManagerLives())
            return true;
    }
    const bool any = !layoutQueue.empty();
    layoutQueue.clear();
    return any || firstLayout;
}

// The parts of the client area that are due: the rectangles of the update region, which is of that
// kind, or the one around them. All of it when nobody knows what is due.
void CPaintManagerUI::State::CollectDirtyRects(const RECT& client, int kind)
{
    dirtyRects.clear();
    if (kind == NULLREGION)
        return;
    if (kind == ERROR) {
        dirtyRects.push_back(client);
        return;
    }

    RECT around{};
    ::GetRgnBox(updateRegion.get(), &around);
    const auto add = [&](const RECT& rect) {
        RECT visible{};
        if (::IntersectRect(&visible, &rect, &client))
            dirtyRects.push_back(visible);
    };
    if (kind == COMPLEXREGION) {
        const DWORD size = ::GetRegionData(updateRegion.get(), 0, nullptr);
        if (regionData.size() < size)
            regionData.resize(size);
        auto* const data = reinterpret_cast<RGNDATA*>(regionData.data());
        if (size > 0 && ::GetRegionData(updateRegion.get(), size, data) > 0 &&
            data->rdh.nCount <= kMostSingleRects) {
            const auto* const rects = reinterpret_cast<const RECT*>(data->Buffer);
            std::int64_t area = 0;
            for (DWORD index = 0; index < data->rdh.nCount; ++index)
                area += AreaOf(rects[index]);
            if (area * 3 <= AreaOf(around) * 2) {
                std::for_each(rects, rects + data->rdh.nCount, add);
                return;
            }
        }
    }
    add(around);
}

void CPaintManagerUI::State::Draw(const RECT& client)
{
    if (dirtyRects.empty())
        return;

    // A layered window is shown whole, with its frame.
    SIZE size{client.right, client.bottom};
    if (layered) {
        RECT place{};
        ::GetWindowRect(window, &place);
        size.cx = std::max(size.cx, place.right - place.left);
        size.cy = std::max(size.cy, place.bottom - place.top);
    }
    if (!buffer.Holds(size)) {
        dirtyRects.assign(1, client);
        if (!buffer.Reserve(size))
            return;
    }
    const Watch watch(*this);
    const HDC dc = buffer.Dc();
    drawing = true;
    const Quillet::AtScopeEnd drawn([&] {
        if (watch.ManagerLives())
            drawing = false;
    });
    for (std::size_t index = 0; index < dirtyRects.size(); ++index) {
        const RECT dirty = dirtyRects[index];
        DrawTree(dc, dirty);
        if (!watch.ManagerLives())
            return;
        if (layered) {
            PrintNativeWindows(dc, dirty);
            FinishPixels(dirty);
            MultiplyByImage(client, dirty);
            continue;
        }
        ::BitBlt(windowDc, dirty.left, dirty.top, dirty.right - dirty.left,
                 dirty.bottom - dirty.top, dc, dirty.left, dirty.top, SRCCOPY);
        if (showUpdateRect)
            CRenderEngine::DrawRect(windowDc, dirty, 1, 0xFFFF0000);
    }
    drawing = false;
    if (layered)
        ShowLayered();
}

// Nothing outside the rectangle is touched: another part of the picture may be finished already.
void CPaintManagerUI::State::DrawTree(HDC dc, const RECT& dirty)
{
    const Watch watch(*this);
    const int saved = ::SaveDC(dc);
    const PaintPass pass(dc);
    const Quillet::AtScopeEnd restored([&] {
        if (watch.ManagerLives())
            ::RestoreDC(dc, saved);
    });
    // A clip makes every drawing dearer, even when it leaves nothing out.
    if (!buffer.IsWhole(dirty))
        ::IntersectClipRect(dc, dirty.left, dirty.top, dirty.right, dirty.bottom);
    ::PatBlt(dc, dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top,
             BLACKNESS);
    if (root)
        root->Paint(dc, dirty, nullptr);
    if (watch.ManagerLives()) {
        postPaint.Walk([&](CControlUI* control) {
            control->DoPostPaint(dc, dirty);
            return !watch.ManagerLives();
        });
    }
}

// The visible child windows, into a picture of the client area.
void CPaintManagerUI::State::PrintChildren(HDC dc)
{
    for (HWND child = ::GetWindow(window, GW_CHILD); child;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(child))
            continue;
        RECT place{};
        ::GetWindowRect(child, &place);
        ::MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&place), 2);
        POINT origin{};
        ::OffsetViewportOrgEx(dc, place.left, place.top, &origin);
        ::SendMessageW(child, WM_PRINT, reinterpret_cast<WPARAM>(dc),
                       PRF_CLIENT | PRF_NONCLIENT | PRF_ERASEBKGND | PRF_CHILDREN);
        ::SetViewportOrgEx(dc, origin.x, origin.y, nullptr);
    }
}

} // namespace DuiLib
