#pragma once

#include "quillet/quillet.h"

#include <functional>
#include <string>
#include <vector>

namespace test {

// Notes which of its hooks was called with what, and can do something in each.
//
// Its entries are "name: Hook(argument)"; several controllers may share a log.
class RecordingController : public UIController {
public:
    using Log = std::vector<std::string>;

    RecordingController(Log& log, std::string name) : m_log(log), m_name(std::move(name)) {}

    std::function<void(const std::string& hook)> inHook; // after the hook was noted
    LRESULT dragResult = 0;
    int dragHandled = 0; // what the drag hooks set their flag to, unless 0

    using UIController::EnableDragDrop;
    using UIController::FindMenuControl;
    using UIController::GenerateMsgId;
    using UIController::GenerateTimerId;
    using UIController::GetControl;
    using UIController::GetHwnd;
    using UIController::GetPaintManagerUI;
    using UIController::IsLoad;
    using UIController::KillTimer;
    using UIController::ListenClickEvent;
    using UIController::ListenMessage;
    using UIController::OnChangeLanguage;
    using UIController::OnCreateMenuInit;
    using UIController::PostMessageW;
    using UIController::SendMessageW;
    using UIController::SetTimer;

    // UIController:
    void OnLoad() override { Note("OnLoad"); }
    void OnInit() override { Note("OnInit"); }
    void OnSize() override { Note("OnSize"); }
    void OnMoveWnd() override { Note("OnMoveWnd"); }
    void OnDestroy() override { Note("OnDestroy"); }
    void OnDPIChanged() override { Note("OnDPIChanged"); }
    void OnChangeLanguage() override { Note("OnChangeLanguage"); }
    void OnShowWindow(bool show) override { Note("OnShowWindow", show ? "true" : "false"); }
    void OnMouseMove(const POINT& point) override { Note("OnMouseMove", point); }
    void OnMouseHover(const POINT& point) override { Note("OnMouseHover", point); }
    void OnMouseLeave(const POINT& point) override { Note("OnMouseLeave", point); }
    void OnNcLButtonDown(const POINT& point) override { Note("OnNcLButtonDown", point); }
    void OnLButtonDown(const POINT& point) override { Note("OnLButtonDown", point); }
    void OnLButtonUp(const POINT& point) override { Note("OnLButtonUp", point); }
    void OnRButtonDown(const POINT& point) override { Note("OnRButtonDown", point); }
    void OnLButtonDblClk(const POINT& point) override { Note("OnLButtonDblClk", point); }
    void OnKeyDown(UINT key) override { Note("OnKeyDown", key); }
    void OnKeyUp(UINT key) override { Note("OnKeyUp", key); }
    void OnMenu(DuiLib::CControlUI* sender) override { Note("OnMenu", sender); }
    void OnReturn(DuiLib::CControlUI* sender) override { Note("OnReturn", sender); }
    void OnItemClick(DuiLib::CControlUI* sender) override { Note("OnItemClick", sender); }
    void OnItemDBClick(DuiLib::CControlUI* sender) override { Note("OnItemDBClick", sender); }
    void OnItemListDBClick(DuiLib::CControlUI* sender) override
    {
        Note("OnItemListDBClick", sender);
    }
    void OnTextChanged(DuiLib::CControlUI* sender) override { Note("OnTextChanged", sender); }
    void OnScroll(DuiLib::CControlUI* sender) override { Note("OnScroll", sender); }
    void OnTextKillFocus(DuiLib::CControlUI* sender) override { Note("OnTextKillFocus", sender); }
    void OnEditKeyBackSpace(DuiLib::CControlUI* sender) override
    {
        Note("OnEditKeyBackSpace", sender);
    }
    void OnEditKeyEscape(DuiLib::CControlUI* sender) override { Note("OnEditKeyEscape", sender); }
    void OnMouseWheel(WPARAM wParam) override { Note("OnMouseWheel", wParam); }
    void OnMouseHWheel(WPARAM wParam) override { Note("OnMouseHWheel", wParam); }
    void OnMenuClick(WPARAM wParam) override { Note("OnMenuClick", wParam); }
    void OnKillFocus(WPARAM wParam) override { Note("OnKillFocus", wParam); }
    void OnSetFocus(WPARAM wParam) override { Note("OnSetFocus", wParam); }
    void OnLink(DuiLib::CControlUI* sender) override { Note("OnLink", sender); }
    LRESULT OnDrag(UINT message, WPARAM wParam, LPARAM lParam, int& handled) override
    {
        return Dragged("OnDrag", message, wParam, lParam, handled);
    }
    LRESULT OnDragEnter(UINT message, WPARAM wParam, LPARAM lParam, int& handled) override
    {
        return Dragged("OnDragEnter", message, wParam, lParam, handled);
    }
    LRESULT OnDragLeave(UINT message, WPARAM wParam, LPARAM lParam, int& handled) override
    {
        return Dragged("OnDragLeave", message, wParam, lParam, handled);
    }
    LRESULT OnDragOver(UINT message, WPARAM wParam, LPARAM lParam, int& handled) override
    {
        return Dragged("OnDragOver", message, wParam, lParam, handled);
    }
    LRESULT OnDragRelease(UINT message, WPARAM wParam, LPARAM lParam, int& handled) override
    {
        return Dragged("OnDragRelease", message, wParam, lParam, handled);
    }
    void OnPointerUp(const POINT& point) override { Note("OnPointerUp", point); }
    void OnPointerDown(const POINT& point) override { Note("OnPointerDown", point); }
    void OnPointerUpdate(const POINT& point) override { Note("OnPointerUpdate", point); }

private:
    void Note(const std::string& hook, const std::string& argument = {})
    {
        m_log.push_back(m_name + ": " + hook + "(" + argument + ")");
        if (inHook)
            inHook(hook);
    }
    void Note(const std::string& hook, const char* argument) { Note(hook, std::string(argument)); }
    void Note(const std::string& hook, UINT argument) { Note(hook, std::to_string(argument)); }
    void Note(const std::string& hook, WPARAM argument) { Note(hook, std::to_string(argument)); }
    void Note(const std::string& hook, const POINT& point)
    {
        Note(hook, std::to_string(point.x) + ", " + std::to_string(point.y));
    }
    void Note(const std::string& hook, DuiLib::CControlUI* sender)
    {
        const std::wstring name = sender ? sender->GetName().GetData() : L"null";
        Note(hook, std::string(name.begin(), name.end()));
    }
    LRESULT Dragged(const std::string& hook, UINT message, WPARAM wParam, LPARAM lParam,
                    int& handled)
    {
        Note(hook, std::to_string(message) + ", " + std::to_string(wParam) + ", " +
                       std::to_string(lParam) + ", " + std::to_string(handled));
        if (dragHandled)
            handled = dragHandled;
        return dragResult;
    }

    Log& m_log;
    std::string m_name;
};

} // namespace test
