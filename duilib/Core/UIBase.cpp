#include "Core/UIBase.h"

#include "Core/Diagnostics.h"
#include "Core/UIControl.h"
#include "Core/UIManager.h"

#include <bit>
#include <new>

namespace DuiLib {

namespace {

// Where a window that keeps its own procedure remembers its object.
constexpr wchar_t kObjectProperty[] = L"DuiLib.CWindowWnd";

// The running modal loops of a thread, innermost first. An inner loop may take the message that
// closes an outer window from the queue.
struct ModalLoop {
    HWND window;
    HWND owner;
    UINT result;
    ModalLoop* outer;
};

thread_local ModalLoop* t_innermostLoop = nullptr;

bool OwnerIsNeededDisabled(const ModalLoop& except)
{
    for (const ModalLoop* loop = t_innermostLoop; loop != nullptr; loop = loop->outer) {
        if (loop != &except && loop->owner == except.owner && ::IsWindow(loop->window))
            return true;
    }
    return false;
}

void GiveBackOwner(const ModalLoop& loop)
{
    if (loop.owner == nullptr || !::IsWindow(loop.owner) || OwnerIsNeededDisabled(loop))
        return;
    ::EnableWindow(loop.owner, TRUE);
    ::SetFocus(loop.owner);
}

void NoteClosing(const MSG& message)
{
    for (ModalLoop* loop = t_innermostLoop; loop != nullptr; loop = loop->outer) {
        if (loop->window == message.hwnd) {
            loop->result = static_cast<UINT>(message.wParam);
            GiveBackOwner(*loop);
        }
    }
}

const DUI_MSGMAP_ENTRY* FindEntry(const DUI_MSGMAP_ENTRY* entries, const CDuiString& type,
                                  const CDuiString& sender)
{
    const DUI_MSGMAP_ENTRY* forAnySender = nullptr;
    for (const auto* entry = entries; entry->nSig != DuiSig_end; ++entry) {
        if (entry->sMsgType != type)
            continue;
        if (entry->sCtrlName.IsEmpty()) {
            if (forAnySender == nullptr)
                forAnySender = entry;
        } else if (entry->sCtrlName == sender) {
            return entry;
        }
    }
    return forAnySender;
}

RECT WorkAreaOf(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

// The start of a stretch of the given length that is centred on another and stays within limits;
// when it is too long, it starts with them.
int CentredWithin(int centreFrom, int centreTo, int length, int leastStart, int largestEnd)
{
    const int start = centreFrom + (centreTo - centreFrom - length) / 2;
    return (std::max)(leastStart, (std::min)(start, largestEnd - length));
}

// Nothing may be thrown through the system's frames. What runs out of memory is left to the system:
// a window that is being created does not come into being.
template <class Handler>
LRESULT HandleWithinMemory(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                           Handler&& handler)
{
    try {
        return handler();
    } catch (const std::bad_alloc&) {
        ReportOutOfMemory();
    }
    switch (message) {
    case WM_NCCREATE:
    case WM_NCDESTROY:
        return 0;
    case WM_CREATE:
        return -1;
    default:
        return ::DefWindowProc(window, message, wParam, lParam);
    }
}

} // namespace

bool CNotifyPump::AddVirtualWnd(CDuiString strName, CNotifyPump* pObject)
{
    if (pObject == nullptr || m_VirtualWndMap.Find(strName) != nullptr)
        return false;
    return m_VirtualWndMap.Insert(strName, pObject);
}

bool CNotifyPump::RemoveVirtualWnd(CDuiString strName)
{
    return m_VirtualWndMap.Remove(strName);
}

void CNotifyPump::NotifyPump(TNotifyUI& msg)
{
    if (!msg.sVirtualWnd.IsEmpty()) {
        for (int i = 0; i < m_VirtualWndMap.GetSize(); ++i) {
            LPCTSTR name = m_VirtualWndMap.GetAt(i);
            if (msg.sVirtualWnd.CompareNoCase(name) != 0)
                continue;
            if (static_cast<CNotifyPump*>(m_VirtualWndMap.Find(name, false))->LoopDispatch(msg))
                return;
        }
    }
    LoopDispatch(msg);
}

bool CNotifyPump::LoopDispatch(TNotifyUI& msg)
{
    const CDuiString sender = msg.pSender != nullptr ? msg.pSender->GetName() : CDuiString();
    for (const DUI_MSGMAP* map = GetMessageMap(); map != nullptr;
         map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        const auto* const entry = FindEntry(map->lpEntries, msg.sType, sender);
        if (entry == nullptr)
            continue;
        if (entry->nSig == DuiSig_vn) {
            (this->*entry->pfn)(msg);
        } else if (entry->nSig == DuiSig_lwl) {
            typedef LRESULT (CNotifyPump::*ParameterHandler)(WPARAM, LPARAM);
            (this->*std::bit_cast<ParameterHandler>(entry->pfn))(msg.wParam, msg.lParam);
        } else {
            return false;
        }
        return true;
    }
    return false;
}

const DUI_MSGMAP* PASCAL CNotifyPump::_GetBaseMessageMap()
{
    return nullptr;
}

const DUI_MSGMAP* PASCAL CNotifyPump::_GetThisMessageMap()
{
    static const DUI_MSGMAP_ENTRY entries[] = {{CDuiString(), CDuiString(), DuiSig_end, nullptr}};
    static const DUI_MSGMAP map = {&CNotifyPump::_GetBaseMessageMap, entries};
    return &map;
}

const DUI_MSGMAP* CNotifyPump::GetMessageMap() const
{
    return _GetThisMessageMap();
}

CWindowWnd::CWindowWnd()
    : m_hWnd(nullptr),
      m_OldWndProc(::DefWindowProc),
      m_bSubclassed(false),
      m_bUnicode(true),
      m_bFakeModal(false)
{
}

void CWindowWnd::EnableUnicode() {}

bool CWindowWnd::RegisterWindowClass()
{
    WNDCLASSEX windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = GetClassStyle();
    windowClass.lpfnWndProc = __WndProc;
    windowClass.hInstance = CPaintManagerUI::GetInstance();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = GetWindowClassName();
    return ::RegisterClassEx(&windowClass) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool CWindowWnd::RegisterSuperclass()
{
    WNDCLASSEX windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    if (!::GetClassInfoEx(nullptr, GetSuperClassName(), &windowClass) &&
        !::GetClassInfoEx(CPaintManagerUI::GetInstance(), GetSuperClassName(), &windowClass)) {
        return false;
    }
    m_OldWndProc = windowClass.lpfnWndProc;
    windowClass.lpfnWndProc = __ControlProc;
    windowClass.hInstance = CPaintManagerUI::GetInstance();
    windowClass.lpszClassName = GetWindowClassName();
    return ::RegisterClassEx(&windowClass) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

HWND CWindowWnd::Create(HWND hwndParent, LPCTSTR pstrName, DWORD dwStyle, DWORD dwExStyle,
                        const RECT rc, HMENU hMenu)
{
    return Create(hwndParent, pstrName, dwStyle, dwExStyle, rc.left, rc.top, rc.right - rc.left,
                  rc.bottom - rc.top, hMenu);
}

HWND CWindowWnd::Create(HWND hwndParent, LPCTSTR pstrName, DWORD dwStyle, DWORD dwExStyle, int x,
                        int y, int cx, int cy, HMENU hMenu)
{
    const bool registered =
        GetSuperClassName() != nullptr ? RegisterSuperclass() : RegisterWindowClass();
    if (!registered)
        return nullptr;
    // A window that refuses its creation may have deleted this object already.
    return ::CreateWindowEx(dwExStyle, GetWindowClassName(), pstrName, dwStyle, x, y, cx, cy,
                            hwndParent, hMenu, CPaintManagerUI::GetInstance(), this);
}

HWND CWindowWnd::CreateDuiWindow(HWND hwndParent, LPCTSTR pstrWindowName, DWORD dwStyle,
                                 DWORD dwExStyle)
{
    return Create(hwndParent, pstrWindowName, dwStyle, dwExStyle, 0, 0, 0, 0, nullptr);
}

HWND CWindowWnd::Subclass(HWND hWnd)
{
    assert(m_hWnd == nullptr);
    if (!::IsWindow(hWnd) || m_hWnd != nullptr)
        return nullptr;

    const HANDLE previousObject = ::GetProp(hWnd, kObjectProperty);
    if (previousObject != nullptr || !::SetProp(hWnd, kObjectProperty, this))
        return nullptr;
    m_OldWndProc = reinterpret_cast<WNDPROC>(::SetWindowLongPtr(
        hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWindowWnd::__ControlProc)));
    if (m_OldWndProc == nullptr) {
        ::RemoveProp(hWnd, kObjectProperty);
        m_OldWndProc = ::DefWindowProc;
        return nullptr;
    }
    m_bSubclassed = true;
    m_hWnd = hWnd;
    return m_hWnd;
}

void CWindowWnd::Unsubclass()
{
    if (!m_bSubclassed)
        return;
    if (::IsWindow(m_hWnd)) {
        ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_OldWndProc));
        ::RemoveProp(m_hWnd, kObjectProperty);
    }
    m_OldWndProc = ::DefWindowProc;
    m_bSubclassed = false;
    m_hWnd = nullptr;
}

void CWindowWnd::ShowWindow(bool bShow, bool bTakeFocus)
{
    if (!::IsWindow(m_hWnd))
        return;
    const int whenShown = bTakeFocus ? SW_SHOWNORMAL : SW_SHOWNOACTIVATE;
    ::ShowWindow(m_hWnd, bShow ? whenShown : SW_HIDE);
}

UINT CWindowWnd::ShowModal()
{
    assert(::IsWindow(m_hWnd));
    if (!::IsWindow(m_hWnd))
        return 0;

    // The object may be gone after any message, so the loop works on handles alone.
    ModalLoop loop{m_hWnd, ::GetWindow(m_hWnd, GW_OWNER), 0, t_innermostLoop};
    t_innermostLoop = &loop;
    ShowWindow();
    if (loop.owner != nullptr)
        ::EnableWindow(loop.owner, FALSE);

    MSG message{};
    bool quit = false;
    while (::IsWindow(loop.window)) {
        const BOOL got = ::GetMessage(&message, nullptr, 0, 0);
        if (got <= 0) {
            quit = got == 0;
            break;
        }
        if (message.message == WM_CLOSE)
            NoteClosing(message);
        if (!CPaintManagerUI::TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessage(&message);
        }
    }

    t_innermostLoop = loop.outer;
    GiveBackOwner(loop);
    if (quit)
        ::PostQuitMessage(static_cast<int>(message.wParam));
    return loop.result;
}

void CWindowWnd::ShowModalFake()
{
    assert(::IsWindow(m_hWnd));
    if (!::IsWindow(m_hWnd))
        return;
    m_bFakeModal = true;
    const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    if (owner != nullptr)
        ::EnableWindow(owner, FALSE);
    ShowWindow();
}

void CWindowWnd::EnableOwnerOfFakeModal()
{
    if (!m_bFakeModal)
        return;
    m_bFakeModal = false;
    const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    if (owner != nullptr)
        ::EnableWindow(owner, TRUE);
}

void CWindowWnd::Close(UINT nRet)
{
    // Another thread may ask; the window may end while it does.
    const HWND window = m_hWnd;
    if (!::IsWindow(window))
        return;
    EnableOwnerOfFakeModal();
    ::PostMessage(window, WM_CLOSE, static_cast<WPARAM>(nRet), 0L);
}

void CWindowWnd::CenterWindow()
{
    if (!::IsWindow(m_hWnd))
        return;
    RECT window{};
    ::GetWindowRect(m_hWnd, &window);
    const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    const bool onOwner = owner != nullptr && !::IsIconic(owner);
    const RECT limits = WorkAreaOf(onOwner ? owner : m_hWnd);
    RECT centre = limits;
    if (onOwner)
        ::GetWindowRect(owner, &centre);

    const int x = CentredWithin(centre.left, centre.right, window.right - window.left, limits.left,
                                limits.right);
    const int y = CentredWithin(centre.top, centre.bottom, window.bottom - window.top, limits.top,
                                limits.bottom);
    ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CWindowWnd::SetIcon(UINT nRes)
{
    if (!::IsWindow(m_hWnd))
        return;
    const struct {
        WPARAM kind;
        int width;
        int height;
    } icons[] = {{ICON_BIG, SM_CXICON, SM_CYICON}, {ICON_SMALL, SM_CXSMICON, SM_CYSMICON}};
    for (const auto& icon : icons) {
        const HANDLE image =
            ::LoadImage(CPaintManagerUI::GetInstance(), MAKEINTRESOURCE(nRes), IMAGE_ICON,
                        ::GetSystemMetrics(icon.width), ::GetSystemMetrics(icon.height), LR_SHARED);
        if (image != nullptr)
            ::SendMessage(m_hWnd, WM_SETICON, icon.kind, reinterpret_cast<LPARAM>(image));
    }
}

LRESULT CWindowWnd::SendMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    const HWND window = m_hWnd;
    return window != nullptr ? ::SendMessage(window, uMsg, wParam, lParam) : 0;
}

LRESULT CWindowWnd::PostMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    const HWND window = m_hWnd;
    return window != nullptr ? ::PostMessage(window, uMsg, wParam, lParam) : 0;
}

void CWindowWnd::ResizeClient(int cx, int cy)
{
    RECT client{};
    RECT window{};
    if (!::GetClientRect(m_hWnd, &client) || !::GetWindowRect(m_hWnd, &window))
        return;
    const int width = window.right - window.left + (cx == -1 ? 0 : cx - client.right);
    const int height = window.bottom - window.top + (cy == -1 ? 0 : cy - client.bottom);
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, width, height,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LPCTSTR CWindowWnd::GetSuperClassName() const
{
    return nullptr;
}

UINT CWindowWnd::GetClassStyle() const
{
    return 0;
}

LRESULT CWindowWnd::HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return ::CallWindowProc(m_OldWndProc, m_hWnd, uMsg, wParam, lParam);
}

void CWindowWnd::OnFinalMessage(HWND /*hWnd*/) {}

// WM_NCDESTROY: OnFinalMessage may delete the object.
LRESULT CWindowWnd::Finish(CWindowWnd* pThis, HWND hWnd, WPARAM wParam, LPARAM lParam)
{
    pThis->EnableOwnerOfFakeModal();
    const WNDPROC previous = pThis->m_OldWndProc;
    if (pThis->m_bSubclassed)
        ::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
    const LRESULT result = ::CallWindowProc(previous, hWnd, WM_NCDESTROY, wParam, lParam);
    pThis->m_OldWndProc = ::DefWindowProc;
    pThis->m_bSubclassed = false;
    pThis->m_hWnd = nullptr;
    pThis->OnFinalMessage(hWnd);
    return result;
}

LRESULT CALLBACK CWindowWnd::__WndProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCT*>(lParam);
        auto* const created = static_cast<CWindowWnd*>(creation->lpCreateParams);
        if (created != nullptr)
            created->m_hWnd = hWnd;
        ::SetWindowLongPtr(hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const pThis = reinterpret_cast<CWindowWnd*>(::GetWindowLongPtr(hWnd, GWLP_USERDATA));
    if (pThis == nullptr)
        return ::DefWindowProc(hWnd, uMsg, wParam, lParam);
    if (uMsg == WM_NCDESTROY) {
        ::SetWindowLongPtr(hWnd, GWLP_USERDATA, 0);
        return HandleWithinMemory(hWnd, uMsg, wParam, lParam,
                                  [&] { return Finish(pThis, hWnd, wParam, lParam); });
    }
    return HandleWithinMemory(hWnd, uMsg, wParam, lParam,
                              [&] { return pThis->HandleMessage(uMsg, wParam, lParam); });
}

// Of superclassed and subclassed windows, whose user data belongs to their own procedure.
LRESULT CALLBACK CWindowWnd::__ControlProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCT*>(lParam);
        auto* const created = static_cast<CWindowWnd*>(creation->lpCreateParams);
        if (created != nullptr && ::SetProp(hWnd, kObjectProperty, created))
            created->m_hWnd = hWnd;
    }
    auto* const pThis = static_cast<CWindowWnd*>(::GetProp(hWnd, kObjectProperty));
    if (pThis == nullptr)
        return ::DefWindowProc(hWnd, uMsg, wParam, lParam);
    if (uMsg == WM_NCDESTROY) {
        ::RemoveProp(hWnd, kObjectProperty);
        return HandleWithinMemory(hWnd, uMsg, wParam, lParam,
                                  [&] { return Finish(pThis, hWnd, wParam, lParam); });
    }
    return HandleWithinMemory(hWnd, uMsg, wParam, lParam,
                              [&] { return pThis->HandleMessage(uMsg, wParam, lParam); });
}

} // namespace DuiLib
