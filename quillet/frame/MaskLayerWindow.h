#pragma once

#include <UIlib.h>

#include "quillet/window/WindowImplBaseEx.h"

// The disabled window that dims a parent while a dialog is open over it. It deletes itself in its
// final message. The application's skin gives it its look.
class MaskLayerWindow : public DuiLib::WindowImplBaseEx {
public:
    // Covers the parent, or all but its title strip, and records itself with the resource manager.
    // Null when there is no window.
    static HWND Open(HWND parent, bool keepTitle);

    // WindowImplBaseEx:
    void InitWindow() override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnFinalMessage(HWND window) override;

protected:
    // WindowImplBaseEx:
    LPCTSTR GetWindowClassName() const override { return L"MaskLayerWindow"; }
    DuiLib::CDuiString GetSkinFile() override { return L"HomePageTools/PrintShadow.xml"; }

private:
    explicit MaskLayerWindow(bool keepTitle) : m_bKeepTitle(keepTitle) {}
    ~MaskLayerWindow() override;

    void TakeDpiOfMainWindow();
    void MeasureWorkArea();
    void CoverParent();

    bool m_bKeepTitle;
    bool* m_pGone = nullptr; // while it opens
};
