#pragma once

#include <UIlib.h>

#include <string>

namespace bench {

// A shown window with a paint manager, for the controls that are measured.
class BenchWindow : public DuiLib::CWindowWnd {
public:
    BenchWindow(int width, int height)
    {
        const RECT place{0, 0, width, height};
        Create(nullptr, L"bench", WS_POPUP, WS_EX_TOOLWINDOW, place);
        ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
    }
    ~BenchWindow()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    BenchWindow(const BenchWindow&) = delete;
    BenchWindow& operator=(const BenchWindow&) = delete;

    DuiLib::CPaintManagerUI& Manager() { return m_manager; }

    void Load(const std::wstring& skin)
    {
        DuiLib::CDialogBuilder builder;
        m_manager.AttachDialog(
            builder.Create(DuiLib::STRINGorID(skin.c_str()), nullptr, nullptr, &m_manager));
        Repaint();
    }

    void Repaint()
    {
        ::InvalidateRect(m_hWnd, nullptr, FALSE);
        ::UpdateWindow(m_hWnd);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletBench"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CREATE)
            m_manager.Init(m_hWnd, L"bench");
        LRESULT result = 0;
        if (m_manager.MessageHandler(message, wParam, lParam, result))
            return result;
        return CWindowWnd::HandleMessage(message, wParam, lParam);
    }

private:
    DuiLib::CPaintManagerUI m_manager;
};

// A window without controls, for what the system takes for a repaint anyway.
class EmptyWindow : public DuiLib::CWindowWnd {
public:
    EmptyWindow(int width, int height)
    {
        const RECT place{0, 0, width, height};
        Create(nullptr, L"empty", WS_POPUP, WS_EX_TOOLWINDOW, place);
        ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
    }
    ~EmptyWindow()
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    EmptyWindow(const EmptyWindow&) = delete;
    EmptyWindow& operator=(const EmptyWindow&) = delete;

    void Repaint(const RECT* place = nullptr)
    {
        ::InvalidateRect(m_hWnd, place, FALSE);
        ::UpdateWindow(m_hWnd);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletEmptyBench"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_PAINT)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        PAINTSTRUCT paint{};
        ::BeginPaint(m_hWnd, &paint);
        ::EndPaint(m_hWnd, &paint);
        return 0;
    }
};

// Rows of plain controls, each with fill, border and text, named "control0" upward.
std::wstring SkinOf(int rows, int columns);

} // namespace bench
