#pragma once

#include "win32/Windows.h"

#include <memory>
#include <type_traits>
#include <utility>

// Owners and scopes for the platform's handles. An empty owner means failure.
namespace Quillet {

struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const noexcept { ::DeleteObject(object); }
};

struct DeleteMemoryDc {
    void operator()(HDC dc) const noexcept { ::DeleteDC(dc); }
};

struct FreeModule {
    void operator()(HMODULE module) const noexcept { ::FreeLibrary(module); }
};

struct CloseKernelHandle {
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};

struct DestroyIconHandle {
    void operator()(HICON icon) const noexcept { ::DestroyIcon(icon); }
};

struct FreeGlobalMemory {
    void operator()(HGLOBAL memory) const noexcept { ::GlobalFree(memory); }
};

struct FreeTaskMemory {
    void operator()(void* memory) const noexcept { ::CoTaskMemFree(memory); }
};

template <class Handle, class Closer>
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<Handle>, Closer>;

using UniqueBitmap = UniqueHandle<HBITMAP, DeleteGdiObject>;
using UniqueBrush = UniqueHandle<HBRUSH, DeleteGdiObject>;
using UniquePen = UniqueHandle<HPEN, DeleteGdiObject>;
using UniqueFont = UniqueHandle<HFONT, DeleteGdiObject>;
using UniqueRegion = UniqueHandle<HRGN, DeleteGdiObject>;
using UniqueMemoryDc = UniqueHandle<HDC, DeleteMemoryDc>;
using UniqueModule = UniqueHandle<HMODULE, FreeModule>;
using UniqueIcon = UniqueHandle<HICON, DestroyIconHandle>;
using UniqueGlobal = UniqueHandle<HGLOBAL, FreeGlobalMemory>;
template <class T>
using UniqueTaskMemory = std::unique_ptr<T, FreeTaskMemory>;

// A kernel object. CreateFile and its like answer failure with INVALID_HANDLE_VALUE, which counts
// as empty here.
class UniqueKernelHandle {
public:
    UniqueKernelHandle() = default;
    explicit UniqueKernelHandle(HANDLE handle)
        : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle)
    {
    }
    HANDLE get() const { return m_handle.get(); }
    explicit operator bool() const { return m_handle != nullptr; }
    void reset() { m_handle.reset(); }

private:
    UniqueHandle<HANDLE, CloseKernelHandle> m_handle;
};

// The DC of a window, or of the screen for a null window.
class WindowDc {
public:
    explicit WindowDc(HWND window) : m_window(window), m_dc(::GetDC(window)) {}
    ~WindowDc()
    {
        if (m_dc != nullptr)
            ::ReleaseDC(m_window, m_dc);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    HDC get() const { return m_dc; }
    explicit operator bool() const { return m_dc != nullptr; }

private:
    HWND m_window;
    HDC m_dc;
};

// Keeps an object selected while it lives; then selects the earlier one again.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(::SelectObject(dc, object)) {}
    ~SelectedObject()
    {
        if (m_previous != nullptr && m_previous != HGDI_ERROR)
            ::SelectObject(m_dc, m_previous);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

    HGDIOBJ previous() const { return m_previous; }

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// Saves the whole state of a DC and restores it at its end.
class SavedDc {
public:
    explicit SavedDc(HDC dc) : m_dc(dc), m_level(::SaveDC(dc)) {}
    ~SavedDc()
    {
        if (m_level != 0)
            ::RestoreDC(m_dc, m_level);
    }
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;

private:
    HDC m_dc;
    int m_level;
};

// Calls a function at the end of the scope.
template <class Function>
class [[nodiscard]] AtScopeEnd {
public:
    explicit AtScopeEnd(Function function) : m_function(std::move(function)) {}
    ~AtScopeEnd() { m_function(); }
    AtScopeEnd(const AtScopeEnd&) = delete;
    AtScopeEnd& operator=(const AtScopeEnd&) = delete;

private:
    Function m_function;
};

} // namespace Quillet
