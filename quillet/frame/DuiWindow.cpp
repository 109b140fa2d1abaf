#include "quillet/frame/DuiWindow.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "quillet/frame/MaskLayerWindow.h"

using namespace DuiLib;

namespace {

constexpr UINT kMenuClick = WM_USER + 3;

// With a toolkit that does not know dragging, applications may send these all the same.
constexpr UINT kDrag = WM_USER + 1000;
constexpr UINT kDragEnter = WM_USER + 1002;
constexpr UINT kDragLeave = WM_USER + 1003;
constexpr UINT kDragOver = WM_USER + 1004;
constexpr UINT kDragRelease = WM_USER + 1005;

int TakeWindowNumber()
{
    // Published: never reset, and signed.
    static unsigned next = 0;
    return static_cast<int>(next++);
}

// Tells whether the sender of a notification has been deleted by a callee.
class SenderWatch {
public:
    explicit SenderWatch(CControlUI* sender) : m_sender(sender)
    {
        if (m_sender)
            m_sender->OnDestroy += MakeDelegate(this, &SenderWatch::Deleted);
    }
    ~SenderWatch()
    {
        if (m_sender)
            m_sender->OnDestroy -= MakeDelegate(this, &SenderWatch::Deleted);
    }
    SenderWatch(const SenderWatch&) = delete;
    SenderWatch& operator=(const SenderWatch&) = delete;

    bool IsGone() const { return m_gone; }

private:
    bool Deleted(void*)
    {
        m_gone = true;
        m_sender = nullptr;
        return true;
    }

    CControlUI* m_sender;
    bool m_gone = false;
};

} // namespace

std::wstring UIWindowClassName(int number, const wchar_t* name)
{
    return L"UIWindow-" + std::to_wstring(number) + L"-" + (name ? name : L"");
}

// Tells after a call whether the callee has deleted the window.
class DuiWindow::Watch {
public:
    explicit Watch(DuiWindow& window) : m_window(window), m_outer(window.m_pWatch)
    {
        window.m_pWatch = this;
    }
    ~Watch()
    {
        if (!m_gone)
            m_window.m_pWatch = m_outer;
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    bool IsGone() const { return m_gone; }
    static void EndAll(Watch* innermost)
    {
        for (Watch* watch = innermost; watch; watch = watch->m_outer)
            watch->m_gone = true;
    }

private:
    DuiWindow& m_window;
    Watch* m_outer;
    bool m_gone = false;
};

std::shared_ptr<DuiWindow*> DuiWindow::Make()
{
    return (new DuiWindow)->m_pSelf; // deletes itself in its final message
}

DuiWindow::~DuiWindow()
{
    Watch::EndAll(m_pWatch);
    *m_pSelf = nullptr;
    for (const auto& controller : m_controllers)
        controller->UnLoad();
}

HWND DuiWindow::Create(HWND parent, const wchar_t* name, const wchar_t* skinFile, DWORD style,
                       DWORD exStyle, bool mask, bool keepTitle)
{
    m_hOwner = parent;
    if (mask) {
        m_hMask = MaskLayerWindow::Open(parent, keepTitle);
        m_hOwner = m_hMask;
    }
    m_sClassName = UIWindowClassName(TakeWindowNumber(), name);
    m_pSkinFile = skinFile;
    return CWindowWnd::Create(m_hOwner, name, style, exStyle, 0, 0, 0, 0);
}

void DuiWindow::Add(std::shared_ptr<UIController> controller)
{
    m_controllers.push_back(std::move(controller));
}

// Calls the controllers that are there now, each kept alive meanwhile; false when one of them has
// ended this window.
template <class Call>
bool DuiWindow::ForEachController(Call&& call)
{
    const Watch watch(*this);
    const std::size_t count = m_controllers.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::shared_ptr<UIController> controller = m_controllers[i];
        call(*controller);
        if (watch.IsGone())
            return false;
    }
    return true;
}

void DuiWindow::InitWindow()
{
    const Watch watch(*this);
    WindowImplBaseEx::InitWindow();
    if (watch.IsGone())
        return;
    ForEachController([this, window = m_hWnd](UIController& controller) {
        controller.SetPaintManagerUI(&m_pm);
        controller.Init(window);
    });
}

LRESULT DuiWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    DragAnswer answer;
    const bool lives = ForEachController(
        [&](UIController& controller) { Route(controller, message, wParam, lParam, answer); });
    // Published: a drag message that was handled is answered with 0, not with what a hook returned.
    if (!lives || answer.handled)
        return 0;

    // Published: the pre-message filters see every message here, those from the message loop for
    // the second time.
    const Watch watch(*this);
    if (m_pm.PreMessageHandler(message, wParam, lParam, answer.result))
        return answer.result;
    return watch.IsGone() ? 0 : WindowImplBaseEx::HandleMessage(message, wParam, lParam);
}

void DuiWindow::Route(UIController& controller, UINT message, WPARAM wParam, LPARAM lParam,
                      DragAnswer& answer)
{
    const POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    int& handled = answer.handled;
    switch (message) {
    case WM_TIMER:
        return controller.OnTimer(static_cast<UINT>(wParam));
    case WM_SIZE:
        return controller.OnSize();
    case WM_MOVE:
        return controller.OnMoveWnd();
    case WM_MOUSEMOVE:
        return controller.OnMouseMove(point);
    case WM_MOUSEHOVER:
        return controller.OnMouseHover(point);
    case WM_MOUSELEAVE:
        return controller.OnMouseLeave(point);
    case WM_KEYDOWN:
        return controller.OnKeyDown(static_cast<UINT>(wParam));
    case WM_KEYUP:
        return controller.OnKeyUp(static_cast<UINT>(wParam));
    case WM_NCLBUTTONDOWN:
        return controller.OnNcLButtonDown(point);
    case WM_LBUTTONDOWN:
        return controller.OnLButtonDown(point);
    case WM_LBUTTONUP:
        return controller.OnLButtonUp(point);
    case WM_RBUTTONDOWN:
        return controller.OnRButtonDown(point);
    case WM_LBUTTONDBLCLK:
        return controller.OnLButtonDblClk(point);
    case WM_SHOWWINDOW:
        return controller.OnShowWindow(wParam != 0);
    case WM_DESTROY:
        return controller.OnDestroy();
    case kMenuClick:
        return controller.OnMenuClick(wParam);
    case WM_SETFOCUS:
        return controller.OnSetFocus(wParam);
    case WM_KILLFOCUS:
        return controller.OnKillFocus(wParam);
    // Published: the last controller's answer counts.
    case kDrag:
        answer.result = controller.OnDrag(message, wParam, lParam, handled);
        return;
    case kDragEnter:
        answer.result = controller.OnDragEnter(message, wParam, lParam, handled);
        return;
    case kDragLeave:
        answer.result = controller.OnDragLeave(message, wParam, lParam, handled);
        return;
    case kDragOver:
        answer.result = controller.OnDragOver(message, wParam, lParam, handled);
        return;
    case kDragRelease:
        answer.result = controller.OnDragRelease(message, wParam, lParam, handled);
        return;
    case WM_MOUSEWHEEL:
        return controller.OnMouseWheel(wParam);
    case WM_MOUSEHWHEEL:
        return controller.OnMouseHWheel(wParam);
    case WM_POINTERUP:
        return controller.OnPointerUp(point);
    case WM_POINTERDOWN:
        return controller.OnPointerDown(point);
    case WM_POINTERUPDATE:
        return controller.OnPointerUpdate(point);
    default:
        return controller.OnMessage(message, wParam, lParam);
    }
}

void DuiWindow::Notify(TNotifyUI& msg)
{
    struct Hook {
        const wchar_t* type;
        void (UIController::*function)(CControlUI* sender);
    };
    static constexpr Hook kHooks[] = {
        {L"click", &UIController::OnClick},
        {L"menu", &UIController::OnMenu},
        {L"return", &UIController::OnReturn},
        {L"itemclick", &UIController::OnItemClick},
        {L"itemdbclick", &UIController::OnItemDBClick},
        {L"treeitemdbclick", &UIController::OnItemListDBClick},
        {L"textchanged", &UIController::OnTextChanged},
        {L"killfocus", &UIController::OnTextKillFocus},
        {L"vk_back", &UIController::OnEditKeyBackSpace},
        {L"escape", &UIController::OnEditKeyEscape},
        {L"link", &UIController::OnLink},
        {L"scroll", &UIController::OnScroll},
    };
    const std::wstring_view type = msg.sType.GetData();
    const auto hook = std::ranges::find(kHooks, type, &Hook::type);
    if (hook != std::end(kHooks)) {
        const SenderWatch sender(msg.pSender);
        const bool lives = ForEachController([&](UIController& controller) {
            if (!sender.IsGone())
                (controller.*hook->function)(msg.pSender);
        });
        if (!lives || sender.IsGone())
            return;
    }
    WindowImplBaseEx::Notify(msg);
}

// Published: the base class's own handling is not called.
LRESULT DuiWindow::OnDPIChanged(UINT, WPARAM, LPARAM, BOOL&)
{
    ForEachController([](UIController& controller) { controller.OnDPIChanged(); });
    return 0;
}

void DuiWindow::OnFinalMessage(HWND window)
{
    WindowImplBaseEx::OnFinalMessage(window);
    if (m_hMask && ::IsWindow(m_hMask))
        ::PostMessageW(m_hMask, WM_CLOSE, 0, 0);
    m_hMask = nullptr;
    delete this;
}
