#pragma once

#include <UIlib.h>

#include "support/ImportHook.h"
#include "win32/Handles.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace fuzz {

// A window that is not shown, with a manager, for skins and controls to live in.
//
// Timers tick only on demand, messages are delivered at once, so that a run depends on its input
// alone. The window may end before the object, when a control closes it.
class HiddenWindow final : public DuiLib::CWindowWnd, public DuiLib::INotifyUI {
public:
    static constexpr int kWidth = 320;
    static constexpr int kHeight = 240;

    HiddenWindow();
    ~HiddenWindow();

    DuiLib::CPaintManagerUI& Manager() { return m_manager; }
    HDC Canvas() const { return m_canvas.get(); }
    bool Lives() const { return m_hWnd != nullptr; }

    // Lays out the root in the client area and paints it into the canvas.
    void LayOutAndPaint();

    // As the system would show it.
    void ShowAndPaint();

    // Mouse, wheel and keys at a few places.
    void Use(std::uint64_t choice);

    // Fires each live timer once, dispatches what is queued.
    void Tick();
    void Pump();

    // INotifyUI:
    void Notify(DuiLib::TNotifyUI&) override {}

protected:
    // CWindowWnd:
    LPCTSTR GetWindowClassName() const override { return L"QuilletFuzz"; }
    UINT GetClassStyle() const override { return CS_DBLCLKS; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Send(UINT message, WPARAM wParam, LPARAM lParam);

    DuiLib::CPaintManagerUI m_manager;
    Quillet::UniqueMemoryDc m_canvas;
    Quillet::UniqueBitmap m_bitmap;
    HGDIOBJ m_previous = nullptr;
};

// The window that runs of a target share until the next rest.
HiddenWindow& SharedWindow();
void CloseSharedWindow();

} // namespace fuzz
