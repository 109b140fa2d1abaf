#include "quillet/frame/Controller.h"

#include <utility>

#include "quillet/frame/ControllerMenu.h"

using namespace DuiLib;

namespace {

// Calls a copy, because a callback may replace itself or end its controller.
template <class Handlers, class Key, class... Arguments>
void CallHandler(const Handlers& handlers, Key key, Arguments... arguments)
{
    const auto found = handlers.find(key);
    if (found == handlers.end())
        return;
    const auto handler = found->second;
    handler(arguments...);
}

} // namespace

UINT UIController::m_timerBaseId = 1000;
UINT UIController::m_msgBaseId = 20000;

UIController::UIController() = default;
UIController::UIController(const UIController& other) = default;
UIController& UIController::operator=(const UIController& other) = default;
UIController::~UIController() = default;

void UIController::OnCloseX(UINT code)
{
    ::PostMessageW(m_hWnd, WM_CLOSE, code, 0);
}

void UIController::OnLoad() {}
void UIController::OnInit() {}
void UIController::OnSize() {}
void UIController::OnMoveWnd() {}
void UIController::OnDestroy() {}
void UIController::OnDPIChanged() {}
void UIController::OnChangeLanguage() {}
void UIController::OnShowWindow(bool) {}

void UIController::OnMouseMove(const POINT&) {}
void UIController::OnMouseHover(const POINT&) {}
void UIController::OnMouseLeave(const POINT&) {}
void UIController::OnNcLButtonDown(const POINT&) {}
void UIController::OnLButtonDown(const POINT&) {}
void UIController::OnLButtonUp(const POINT&) {}
void UIController::OnRButtonDown(const POINT&) {}
void UIController::OnLButtonDblClk(const POINT&) {}
void UIController::OnKeyDown(UINT) {}
void UIController::OnKeyUp(UINT) {}

void UIController::OnMenu(CControlUI*) {}
void UIController::OnReturn(CControlUI*) {}
void UIController::OnItemClick(CControlUI*) {}
void UIController::OnItemDBClick(CControlUI*) {}
void UIController::OnItemListDBClick(CControlUI*) {}
void UIController::OnTextChanged(CControlUI*) {}
void UIController::OnScroll(CControlUI*) {}
void UIController::OnTextKillFocus(CControlUI*) {}
void UIController::OnEditKeyBackSpace(CControlUI*) {}
void UIController::OnEditKeyEscape(CControlUI*) {}

void UIController::OnMouseWheel(WPARAM) {}
void UIController::OnMouseHWheel(WPARAM) {}
void UIController::OnMenuClick(WPARAM) {}
void UIController::OnKillFocus(WPARAM) {}
void UIController::OnSetFocus(WPARAM) {}
void UIController::OnLink(CControlUI*) {}

LRESULT UIController::OnDrag(UINT, WPARAM, LPARAM, int&)
{
    return 0;
}

LRESULT UIController::OnDragEnter(UINT, WPARAM, LPARAM, int&)
{
    return 0;
}

LRESULT UIController::OnDragLeave(UINT, WPARAM, LPARAM, int&)
{
    return 0;
}

LRESULT UIController::OnDragOver(UINT, WPARAM, LPARAM, int&)
{
    return 0;
}

LRESULT UIController::OnDragRelease(UINT, WPARAM, LPARAM, int&)
{
    return 0;
}

void UIController::OnPointerUp(const POINT&) {}
void UIController::OnPointerDown(const POINT&) {}
void UIController::OnPointerUpdate(const POINT&) {}

UINT UIController::GenerateMsgId()
{
    return m_msgBaseId++;
}

UINT UIController::GenerateTimerId()
{
    return m_timerBaseId++;
}

void UIController::ListenClickEvent(CControlUI* control, std::function<void()> handler)
{
    m_clickHandlers[control] = std::move(handler);
}

void UIController::ListenMessage(UINT msg, std::function<void(WPARAM, LPARAM)> handler)
{
    m_messageHandlers[msg] = std::move(handler);
}

UINT UIController::SetTimer(UINT elapseMs, std::function<void()> handler)
{
    const UINT id = GenerateTimerId();
    m_timerHandlers[id] = std::move(handler);
    ::SetTimer(m_hWnd, id, elapseMs, nullptr);
    return id;
}

void UIController::KillTimer(UINT id)
{
    ::KillTimer(m_hWnd, id);
}

HWND UIController::GetHwnd() const
{
    return m_hWnd;
}

CPaintManagerUI& UIController::GetPaintManagerUI() const
{
    return *m_pPaintManager;
}

CControlUI* UIController::GetControl(const std::wstring& name) const
{
    return m_pPaintManager->FindControl(name.c_str());
}

CControlUI* UIController::GetControl(const POINT& pt) const
{
    return m_pPaintManager->FindControl(pt);
}

CMenuWnd* UIController::OnCreateMenuInit(CMenuElementUI* owner, STRINGorID xml, POINT pt,
                                         CStdStringPtrMap* checkState, DWORD alignment)
{
    // Opening runs other people's code, which may end the window and this controller with it.
    const auto self = weak_from_this().lock();
    auto* const opened = new Quillet::ControllerMenu; // deletes itself, also when it cannot open
    m_pMenu = opened;
    opened->Init(owner, xml, pt, m_pPaintManager, checkState, alignment);
    return Quillet::ControllerMenu::IsOpen(opened) ? opened : nullptr;
}

CControlUI* UIController::FindMenuControl(const std::wstring& name) const
{
    if (!Quillet::ControllerMenu::IsOpen(m_pMenu))
        return nullptr;
    return m_pMenu->m_pm.FindControl(name.c_str());
}

void UIController::EnableDragDrop(bool enable)
{
    m_pPaintManager->EnableDragDrop(enable);
}

BOOL UIController::PostMessageW(UINT msg, WPARAM wParam, LPARAM lParam)
{
    return ::PostMessageW(m_hWnd, msg, wParam, lParam);
}

LRESULT UIController::SendMessageW(UINT msg, WPARAM wParam, LPARAM lParam)
{
    return ::SendMessageW(m_hWnd, msg, wParam, lParam);
}

bool UIController::IsLoad() const
{
    return m_bLoaded;
}

void UIController::SetPaintManagerUI(CPaintManagerUI* manager)
{
    m_pPaintManager = manager;
}

void UIController::Init(HWND window)
{
    m_hWnd = window;
    OnInit();
}

void UIController::Load()
{
    m_bLoaded = true;
    OnLoad();
}

void UIController::UnLoad()
{
    m_bLoaded = false;
}

void UIController::OnClick(CControlUI* sender)
{
    CallHandler(m_clickHandlers, sender);
}

void UIController::OnMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    CallHandler(m_messageHandlers, msg, wParam, lParam);
}

void UIController::OnTimer(UINT id)
{
    CallHandler(m_timerHandlers, id);
}
