#pragma once

#include <UIlib.h>

#include <memory>
#include <string>
#include <vector>

#include "quillet/frame/Controller.h"
#include "quillet/window/WindowImplBaseEx.h"

// The window behind a UIWindow: offers every message and notification to its controllers before it
// does its own work. It deletes itself in its final message.
class DuiWindow : public DuiLib::WindowImplBaseEx {
public:
    // Points at the window as long as it lives, then at null.
    static std::shared_ptr<DuiWindow*> Make();

    HWND Create(HWND parent, const wchar_t* name, const wchar_t* skinFile, DWORD style,
                DWORD exStyle, bool mask, bool keepTitle);
    void Add(std::shared_ptr<UIController> controller);
    HWND Owner() const { return m_hOwner; } // the mask, or the parent without one

    // WindowImplBaseEx:
    void InitWindow() override;
    void Notify(DuiLib::TNotifyUI& msg) override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnFinalMessage(HWND window) override;
    LRESULT OnDPIChanged(UINT message, WPARAM dpi, LPARAM lParam, BOOL& handled) override;

protected:
    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override { return m_sClassName.c_str(); }
    DuiLib::CDuiString GetSkinFile() override { return m_pSkinFile; }

private:
    class Watch;
    struct DragAnswer {
        int handled = 0;
        LRESULT result = 0;
    };

    DuiWindow() = default;
    ~DuiWindow() override;

    template <class Call>
    bool ForEachController(Call&& call);
    static void Route(UIController& controller, UINT message, WPARAM wParam, LPARAM lParam,
                      DragAnswer& answer);

    HWND m_hMask = nullptr;
    HWND m_hOwner = nullptr;
    const wchar_t* m_pSkinFile = nullptr; // Published: not copied
    std::wstring m_sClassName;            // its window class needs it to the end
    std::vector<std::shared_ptr<UIController>> m_controllers;
    std::shared_ptr<DuiWindow*> m_pSelf = std::make_shared<DuiWindow*>(this);
    Watch* m_pWatch = nullptr; // the innermost one
};

// The window class of the UIWindow of that number.
std::wstring UIWindowClassName(int number, const wchar_t* name);
