#include "Core/ManagerState.h"

#include "Core/UIRender.h"

namespace DuiLib {

namespace {

constexpr std::uint32_t kAlphaMask = 0xFF000000;

std::uint32_t Multiply(std::uint32_t channel, std::uint32_t alpha)
{
    return channel * alpha / 255;
}

// The colour darkened by the alpha, with that alpha.
std::uint32_t UnderAlpha(std::uint32_t pixel, std::uint32_t alpha)
{
    return alpha << 24 | Multiply(pixel >> 16 & 0xFF, alpha) << 16 |
           Multiply(pixel >> 8 & 0xFF, alpha) << 8 | Multiply(pixel & 0xFF, alpha);
}

} // namespace

void CPaintManagerUI::State::PrintNativeWindows(HDC dc, const RECT& dirty)
{
    const auto windows = nativeWindows;
    for (const auto& [child, control] : windows) {
        if (!::IsWindow(child) || !::IsWindowVisible(child))
            continue;
        const RECT place = manager.GetNativeWindowRect(child);
        RECT visible{};
        if (!::IntersectRect(&visible, &place, &dirty))
            continue;
        const Quillet::SavedDc saved(dc);
        ::IntersectClipRect(dc, visible.left, visible.top, visible.right, visible.bottom);
        ::OffsetViewportOrgEx(dc, place.left, place.top, nullptr);
        ::SendMessageW(child, WM_PRINT, reinterpret_cast<WPARAM>(dc),
                       PRF_CLIENT | PRF_NONCLIENT | PRF_ERASEBKGND | PRF_CHILDREN);
    }
}

// GDI leaves the alpha of what it draws at 0.
void CPaintManagerUI::State::FinishPixels(const RECT& dirty)
{
    ::GdiFlush();
    for (LONG y = dirty.top; y < dirty.bottom; ++y) {
        std::uint32_t* const row = buffer.Row(y);
        for (LONG x = dirty.left; x < dirty.right; ++x) {
            if ((row[x] & kAlphaMask) == 0 && row[x] != 0)
                row[x] |= kAlphaMask;
        }
    }
}

void CPaintManagerUI::State::MultiplyByImage(const RECT& client, const RECT& dirty)
{
    if (layeredImage.IsEmpty())
        return;
    if (layeredMaskSize.cx != client.right || layeredMaskSize.cy != client.bottom) {
        if (!layeredMask.Reserve({client.right, client.bottom}))
            return;
        ::PatBlt(layeredMask.Dc(), 0, 0, client.right, client.bottom, BLACKNESS);
        if (!CRenderEngine::DrawImageString(layeredMask.Dc(), &manager, client, client,
                                            layeredImage))
            return;
        ::GdiFlush();
        layeredMaskSize = {client.right, client.bottom};
    }
    for (LONG y = dirty.top; y < dirty.bottom; ++y) {
        std::uint32_t* const row = buffer.Row(y);
        const std::uint32_t* const mask = layeredMask.Row(y);
        for (LONG x = dirty.left; x < dirty.right; ++x)
            row[x] = UnderAlpha(row[x], mask[x] >> 24);
    }
}

void CPaintManagerUI::State::ShowLayered()
{
    RECT place{};
    ::GetWindowRect(window, &place);
    SIZE size{place.right - place.left, place.bottom - place.top};
    if (size.cx <= 0 || size.cy <= 0 || !buffer.Holds(size))
        return;
    POINT source{};
    BLENDFUNCTION blend{AC_SRC_OVER, 0, static_cast<BYTE>(Multiply(layeredOpacity, opacity)),
                        AC_SRC_ALPHA};
    ::UpdateLayeredWindow(window, nullptr, nullptr, &size, buffer.Dc(), &source, 0, &blend,
                          ULW_ALPHA);
}

CShadowUI* CPaintManagerUI::GetShadow()
{
    return &m_pState->shadow;
}

} // namespace DuiLib
