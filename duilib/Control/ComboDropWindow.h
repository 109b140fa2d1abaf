#pragma once

#include "Core/UIBase.h"
#include "Core/UIManager.h"

#include <memory>

namespace DuiLib {

class CComboUI;

// The window in which the items of a combo stand while its list is open. It deletes itself in its
// final message.
class ComboDropWindow final : public CWindowWnd, public INotifyUI {
public:
    explicit ComboDropWindow(CComboUI& combo);
    ~ComboDropWindow();
    ComboDropWindow(const ComboDropWindow&) = delete;
    ComboDropWindow& operator=(const ComboDropWindow&) = delete;

    // Takes the items and shows the window. False when there is no window; the object is gone then.
    bool Open();

    // Gives the items back; the window goes with a later message.
    void Close();

    void Place();        // beside the combo, on its monitor
    void ItemsChanged(); // the combo has other items, or in another order
    void Forget(CControlUI* item);
    void EnsureVisible(int index);
    int VisibleRows() const; // how many make a page
    void TurnWheel(bool up);

    // INotifyUI:
    void Notify(TNotifyUI& notification) override;

private:
    class Rows;

    // CWindowWnd:
    LPCTSTR GetWindowClassName() const override { return L"DuiComboDropWnd"; }
    UINT GetClassStyle() const override { return CS_DBLCLKS; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnFinalMessage(HWND window) override;

    bool PressKey(WPARAM key);
    bool KeysBelongToItems() const;
    int RowAt(POINT point) const;
    void LoseFocus(HWND next);
    void Release(POINT point);
    void MoveOn();

    CComboUI* m_combo; // null once the items are given back
    CPaintManagerUI m_manager;
    Rows* m_rows = nullptr; // the root, which the manager owns
    CControlUI* m_chosenBefore;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    bool m_isShown = false;
    bool m_isEnding = false;         // on its way out
    bool m_pressedElsewhere = false; // the button went down on something else than a row
};

} // namespace DuiLib
