#pragma once

#include "support/ControlHost.h"

#include <initializer_list>

namespace test {

// Registers an opaque picture of equal columns, one for each colour.
inline void AddColumns(DuiLib::CPaintManagerUI& manager, const wchar_t* name,
                       std::initializer_list<Argb> colours, int columnWidth = 10, int height = 10)
{
    const int width = columnWidth * static_cast<int>(colours.size());
    BYTE* bytes = nullptr;
    const HBITMAP bitmap =
        DuiLib::CRenderEngine::CreateARGB32Bitmap(manager.GetPaintDC(), width, height, &bytes);
    auto* const pixels = reinterpret_cast<std::uint32_t*>(bytes);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels[y * width + x] = colours.begin()[x / columnWidth].value;
    manager.AddImage(name, bitmap, width, height, false);
}

// Extent of a single line in a font of the manager, measured by GDI.
inline SIZE MeasureLine(DuiLib::CPaintManagerUI& manager, const wchar_t* text, int font = -1)
{
    const HDC dc = manager.GetPaintDC();
    const HGDIOBJ before = ::SelectObject(dc, manager.GetFont(font));
    RECT extent{0, 0, 0, 0};
    ::DrawTextW(dc, text, -1, &extent, DT_CALCRECT | DT_SINGLELINE);
    ::SelectObject(dc, before);
    return {extent.right, extent.bottom};
}

// Extent of a text that wraps at a width, measured by GDI.
inline SIZE MeasureWrapped(DuiLib::CPaintManagerUI& manager, const wchar_t* text, int width,
                           UINT style)
{
    const HDC dc = manager.GetPaintDC();
    const HGDIOBJ before = ::SelectObject(dc, manager.GetFont(-1));
    RECT extent{0, 0, width, 0};
    ::DrawTextW(dc, text, -1, &extent, DT_CALCRECT | style);
    ::SelectObject(dc, before);
    return {extent.right, extent.bottom};
}

// Makes the default font a large underlined one: the line under a text is solid in the text's
// colour, whatever glyphs the face has and however they are smoothed.
inline void UnderlineTexts(DuiLib::CPaintManagerUI& manager)
{
    manager.SetDefaultFont(L"Arial", 20, false, true, false, false);
}

// Makes a container delete what it loses at once, not from the message queue.
inline void DeleteAtOnce(DuiLib::CControlUI* container)
{
    static_cast<DuiLib::CContainerUI*>(container)->SetDelayedDestroy(false);
}

// The types of all notifications so far, in order: "click selectchanged".
inline std::wstring SentTypes(const ControlHost& host)
{
    std::wstring types;
    for (const auto& notification : host.Sent())
        types += (types.empty() ? L"" : L" ") + notification.type;
    return types;
}

// The bounds of the pixels that differ from the background.
inline RECT Ink(const Picture& picture, Argb background = Argb{0xFFFFFFFF})
{
    return picture.BoundsOfAllBut(background);
}

} // namespace test
