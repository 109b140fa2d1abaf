#pragma once

#include "support/ControlHost.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

// A control that records its events and paints, and can be told what to do about them.
class Probe : public DuiLib::CControlUI {
public:
    ~Probe() override
    {
        if (deaths)
            ++*deaths;
    }

    LPCTSTR GetClass() const override { return L"ProbeUI"; }
    UINT GetControlFlags() const override { return flags; }
    bool Activate() override
    {
        ++activations;
        return CControlUI::Activate();
    }

    void DoEvent(DuiLib::TEventUI& event) override
    {
        events.push_back(event);

        // The action may delete the probe.
        if (const auto action = onEvent) {
            action(event);
            return;
        }
        CControlUI::DoEvent(event);
    }

    bool DoPaint(HDC dc, const RECT& dirty, DuiLib::CControlUI* stop) override
    {
        paints.push_back(dirty);
        return CControlUI::DoPaint(dc, dirty, stop);
    }

    void DoPostPaint(HDC, const RECT& dirty) override
    {
        postPaints.push_back(dirty);
        if (onPostPaint)
            onPostPaint();
    }

    void SetPos(RECT place, bool invalidate = true) override
    {
        ++placements;
        CControlUI::SetPos(place, invalidate);
    }

    std::vector<int> Types() const
    {
        std::vector<int> types;
        for (const auto& event : events)
            types.push_back(event.Type);
        return types;
    }

    int Count(int type) const
    {
        int count = 0;
        for (const auto& event : events)
            count += event.Type == type ? 1 : 0;
        return count;
    }

    UINT flags = 0;
    int* deaths = nullptr;
    int activations = 0;
    int placements = 0;
    std::function<void(DuiLib::TEventUI&)> onEvent;
    std::function<void()> onPostPaint;
    std::vector<DuiLib::TEventUI> events;
    std::vector<RECT> paints;
    std::vector<RECT> postPaints;
};

// Adds a probe at a fixed place of the root.
inline Probe& AddProbe(ControlHost& host, RECT place, const wchar_t* name = L"")
{
    auto probe = std::make_unique<Probe>();
    Probe& added = *probe;
    added.SetName(name);
    added.SetFloat(true);
    added.SetFixedXY({place.left, place.top});
    added.SetFixedWidth(place.right - place.left);
    added.SetFixedHeight(place.bottom - place.top);
    host.Adopt(probe.release());
    added.events.clear();
    added.paints.clear();
    added.placements = 0;
    return added;
}

inline DuiLib::CContainerUI& RootOf(ControlHost& host)
{
    return *static_cast<DuiLib::CContainerUI*>(host.Root());
}

// A native child window that can only be printed: in blue, RGB(0, 0, 255).
inline HWND MakePrintedChild(HWND parent, const RECT& place)
{
    const HWND child = ::CreateWindowExW(
        0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
        place.bottom - place.top, parent, nullptr, nullptr, nullptr);
    const WNDPROC procedure = [](HWND window, UINT message, WPARAM wParam,
                                 LPARAM lParam) -> LRESULT {
        if (message != WM_PRINTCLIENT)
            return ::DefWindowProcW(window, message, wParam, lParam);
        RECT client{};
        ::GetClientRect(window, &client);
        const HDC dc = reinterpret_cast<HDC>(wParam);
        ::SetDCBrushColor(dc, RGB(0, 0, 255));
        ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        return 0;
    };
    ::SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return child;
}

// A notifier and a filter made of functions.
class Listener : public DuiLib::INotifyUI, public DuiLib::IMessageFilterUI {
public:
    void Notify(DuiLib::TNotifyUI& notification) override
    {
        heard.push_back(notification);
        if (onNotify)
            onNotify(notification);
    }
    LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, bool& handled) override
    {
        messages.push_back(message);
        return onMessage ? onMessage(message, wParam, lParam, handled) : 0;
    }
    int CountOf(UINT message) const
    {
        int count = 0;
        for (const UINT each : messages)
            count += each == message ? 1 : 0;
        return count;
    }

    std::function<void(DuiLib::TNotifyUI&)> onNotify;
    std::function<LRESULT(UINT, WPARAM, LPARAM, bool&)> onMessage;
    std::vector<DuiLib::TNotifyUI> heard;
    std::vector<UINT> messages;
};

// A window on the heap that deletes itself, with its manager, when it is destroyed.
class ShortLivedWindow final : public DuiLib::CWindowWnd {
public:
    explicit ShortLivedWindow(bool* gone, int width = 100, int height = 50) : m_gone(gone)
    {
        Create(nullptr, L"", WS_POPUP, WS_EX_TOOLWINDOW, RECT{0, 0, width, height});
        m_manager.Init(m_hWnd, L"short-lived");
    }

    DuiLib::CPaintManagerUI m_manager;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletShortLivedWindow"; }
    UINT GetClassStyle() const override { return CS_DBLCLKS; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const HWND window = m_hWnd;
        LRESULT result = 0;
        bool gone = false;
        bool* const outer = std::exchange(m_deleted, &gone);
        const bool handled = m_manager.MessageHandler(message, wParam, lParam, result);
        if (gone) {
            if (outer)
                *outer = true;
            return handled ? result : ::DefWindowProcW(window, message, wParam, lParam);
        }
        m_deleted = outer;
        return handled ? result : CWindowWnd::HandleMessage(message, wParam, lParam);
    }
    void OnFinalMessage(HWND) override
    {
        if (m_deleted)
            *m_deleted = true;
        *m_gone = true;
        delete this;
    }

private:
    ~ShortLivedWindow() = default;

    bool* m_gone;
    bool* m_deleted = nullptr;
};

} // namespace test
