#include "Utils/DPI.h"

#include "win32/Handles.h"

#include <string>

namespace DuiLib {

namespace {

constexpr int kNormalDpi = 96;
constexpr int kNormalScale = 100; // percent

// Shcore.dll, which Windows has since 8.1, from the system directory and nowhere else. It is kept
// for the life of the process.
HMODULE Shcore()
{
    static const HMODULE module = [] {
        wchar_t folder[MAX_PATH] = {};
        const UINT length = ::GetSystemDirectory(folder, MAX_PATH);
        if (length == 0 || length >= MAX_PATH)
            return HMODULE{};
        return ::LoadLibrary((std::wstring(folder, length) + L"\\Shcore.dll").c_str());
    }();
    return module;
}

template <class Function>
Function FromShcore(const char* name)
{
    if (Shcore() == nullptr)
        return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(Shcore(), name)));
}

using GetDpiForMonitorFunction = HRESULT(WINAPI*)(HMONITOR, MONITOR_DPI_TYPE, UINT*, UINT*);
using GetAwarenessFunction = HRESULT(WINAPI*)(HANDLE, PROCESS_DPI_AWARENESS*);
using SetAwarenessFunction = HRESULT(WINAPI*)(PROCESS_DPI_AWARENESS);

int DpiOfScreen()
{
    const Quillet::WindowDc screen(nullptr);
    const int dpi = screen ? ::GetDeviceCaps(screen.get(), LOGPIXELSX) : 0;
    return dpi > 0 ? dpi : kNormalDpi;
}

} // namespace

CDPI::CDPI() : m_nScale(kNormalScale), m_Awareness(PROCESS_PER_MONITOR_DPI_AWARE) {}

int CDPI::GetDPIOfMonitor(HMONITOR hMonitor)
{
    const auto getDpi = FromShcore<GetDpiForMonitorFunction>("GetDpiForMonitor");
    if (getDpi == nullptr)
        return DpiOfScreen();
    UINT dpiX = kNormalDpi;
    UINT dpiY = kNormalDpi;
    if (FAILED(getDpi(hMonitor, MDT_EFFECTIVE_DPI, &dpiX, &dpiY)) || dpiX == 0)
        return kNormalDpi;
    return static_cast<int>(dpiX);
}

int CDPI::GetDPIOfMonitorNearestToPoint(POINT pt)
{
    return GetDPIOfMonitor(::MonitorFromPoint(pt, MONITOR_DEFAULTTONEAREST));
}

int CDPI::GetMainMonitorDPI(HWND hWnd)
{
    if (hWnd != nullptr)
        return GetDPIOfMonitor(::MonitorFromWindow(hWnd, MONITOR_DEFAULTTONEAREST));
    return GetDPIOfMonitorNearestToPoint({1, 1});
}

PROCESS_DPI_AWARENESS CDPI::GetDPIAwareness()
{
    const auto getAwareness = FromShcore<GetAwarenessFunction>("GetProcessDpiAwareness");
    PROCESS_DPI_AWARENESS awareness = m_Awareness;
    if (getAwareness != nullptr && SUCCEEDED(getAwareness(nullptr, &awareness)))
        m_Awareness = awareness;
    return m_Awareness;
}

BOOL CDPI::SetDPIAwareness(PROCESS_DPI_AWARENESS Awareness)
{
    const auto setAwareness = FromShcore<SetAwarenessFunction>("SetProcessDpiAwareness");
    if (setAwareness != nullptr && setAwareness(Awareness) != S_OK)
        return FALSE;
    m_Awareness = Awareness;
    return TRUE;
}

UINT CDPI::GetDPI()
{
    return static_cast<UINT>(::MulDiv(static_cast<int>(GetScale()), kNormalDpi, kNormalScale));
}

UINT CDPI::GetScale()
{
    return static_cast<UINT>(m_Awareness == PROCESS_DPI_UNAWARE ? kNormalScale : m_nScale);
}

void CDPI::SetScale(UINT uDPI)
{
    const int scale = ::MulDiv(static_cast<int>(uDPI), kNormalScale, kNormalDpi);
    if (scale > 0)
        m_nScale = scale;
}

int CDPI::Scale(int iValue)
{
    const int scaled = ::MulDiv(iValue, static_cast<int>(GetScale()), kNormalScale);
    if (scaled == 0 && iValue != 0)
        return iValue > 0 ? 1 : -1;
    return scaled;
}

int CDPI::ScaleBack(int iValue)
{
    return ::MulDiv(iValue, kNormalScale, static_cast<int>(GetScale()));
}

RECT CDPI::Scale(RECT rcRect)
{
    Scale(&rcRect);
    return rcRect;
}

void CDPI::Scale(RECT* pRect)
{
    const int width = Scale(static_cast<int>(pRect->right - pRect->left));
    const int height = Scale(static_cast<int>(pRect->bottom - pRect->top));
    pRect->left = Scale(static_cast<int>(pRect->left));
    pRect->top = Scale(static_cast<int>(pRect->top));
    pRect->right = pRect->left + width;
    pRect->bottom = pRect->top + height;
}

void CDPI::ScaleBack(RECT* pRect)
{
    const int width = ScaleBack(static_cast<int>(pRect->right - pRect->left));
    const int height = ScaleBack(static_cast<int>(pRect->bottom - pRect->top));
    pRect->left = ScaleBack(static_cast<int>(pRect->left));
    pRect->top = ScaleBack(static_cast<int>(pRect->top));
    pRect->right = pRect->left + width;
    pRect->bottom = pRect->top + height;
}

POINT CDPI::Scale(POINT ptPoint)
{
    Scale(&ptPoint);
    return ptPoint;
}

void CDPI::Scale(POINT* pPoint)
{
    pPoint->x = Scale(static_cast<int>(pPoint->x));
    pPoint->y = Scale(static_cast<int>(pPoint->y));
}

SIZE CDPI::Scale(SIZE szSize)
{
    Scale(&szSize);
    return szSize;
}

void CDPI::Scale(SIZE* pSize)
{
    pSize->cx = Scale(static_cast<int>(pSize->cx));
    pSize->cy = Scale(static_cast<int>(pSize->cy));
}

} // namespace DuiLib
