#include "Control/UIMenu.h"

#include "Control/PopupPlace.h"
#include "Control/UIScrollBar.h"
#include "Core/Diagnostics.h"
#include "Core/PopupLink.h"
#include "Core/UIDefine.h"
#include "Core/UIDlgBuilder.h"
#include "win32/Handles.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace DuiLib {

namespace {

using Quillet::Text::LowerCase;
using Quillet::Text::View;

constexpr int kOverlap = 2; // design pixels that a sub-menu covers of its menu

enum Broadcast : WPARAM { kCloseAll = 1, kCloseSubMenus = 2 };

bool IsBelow(HWND window, HWND ancestor)
{
    for (; window != nullptr; window = ::GetWindow(window, GW_OWNER)) {
        if (window == ancestor)
            return true;
    }
    return false;
}

// The character after the first single '&', or 0.
wchar_t MnemonicOf(std::wstring_view text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&')
            continue;
        if (text[i + 1] != L'&')
            return LowerCase(text[i + 1]);
        ++i;
    }
    return 0;
}

std::wstring SourceOf(STRINGorID xml)
{
    if (IS_INTRESOURCE(xml.m_lpstr))
        return std::to_wstring(reinterpret_cast<ULONG_PTR>(xml.m_lpstr));
    return xml.m_lpstr[0] == L'<' ? L"markup" : xml.m_lpstr;
}

} // namespace

MenuObserverImpl& CMenuWnd::GetGlobalContextMenuObserver()
{
    static MenuObserverImpl observer;
    return observer;
}

CMenuWnd* CMenuWnd::CreateMenu(CMenuElementUI* owner, STRINGorID xml, POINT point,
                               CPaintManagerUI* manager, CStdStringPtrMap* checkInfo,
                               DWORD alignment)
{
    auto* const menu = new CMenuWnd;
    const auto alive = menu->m_pAlive;
    menu->Init(owner, xml, point, manager, checkInfo, alignment);
    return *alive ? menu : nullptr;
}

void CMenuWnd::DestroyMenu()
{
    auto& observer = GetGlobalContextMenuObserver();
    CStdStringPtrMap* const states = observer.GetMenuCheckInfo();
    if (states == nullptr)
        return;
    for (int i = 0; i < states->GetSize(); ++i)
        delete static_cast<MenuItemInfo*>(states->Find(states->GetAt(i), false));
    states->RemoveAll();
    observer.SetMenuCheckInfo(nullptr);
}

MenuItemInfo* CMenuWnd::SetMenuItemInfo(LPCTSTR name, bool checked)
{
    const auto text = View(name);
    if (text.empty())
        return nullptr;
    auto& observer = GetGlobalContextMenuObserver();
    if (observer.GetMenuCheckInfo() == nullptr)
        observer.SetMenuCheckInfo(nullptr);
    CStdStringPtrMap& states = *observer.GetMenuCheckInfo();
    auto* info = static_cast<MenuItemInfo*>(states.Find(name));
    if (info == nullptr) {
        auto added = std::make_unique<MenuItemInfo>();
        const auto length = std::min(text.size(), std::size(added->szName) - 1);
        std::copy_n(text.data(), length, added->szName);
        added->szName[length] = L'\0';
        if (!states.Insert(name, added.get()))
            return nullptr;
        info = added.release(); // the map's, until DestroyMenu
    }
    info->bChecked = checked;
    return info;
}

CMenuWnd::CMenuWnd()
    : isClosing(false),
      m_bCaptured(false),
      m_BasedPoint{},
      m_xml(static_cast<LPCTSTR>(L"")),
      m_pOwner(nullptr),
      m_pLayout(nullptr),
      m_dwAlignment(eMenuAlignment_Left | eMenuAlignment_Top),
      m_pAlive(std::make_shared<bool>(true)),
      m_bDeleting(false),
      m_bShown(false)
{
}

CMenuWnd::~CMenuWnd()
{
    m_bDeleting = true;
    if (m_hWnd != nullptr)
        ::DestroyWindow(m_hWnd);
    ReturnElements();
    *m_pAlive = false;
}

void CMenuWnd::Init(CMenuElementUI* owner, STRINGorID xml, POINT point, CPaintManagerUI* manager,
                    CStdStringPtrMap* checkInfo, DWORD alignment)
{
    m_pOwner = owner;
    m_xml = xml;
    m_BasedPoint = point;
    m_dwAlignment = alignment;
    auto& observer = GetGlobalContextMenuObserver();
    if (owner == nullptr) {
        observer.RBroadcast({kCloseAll, nullptr}); // one menu at a time
        observer.SetManger(manager);
        observer.SetMenuCheckInfo(checkInfo);
    }
    AddObserver(&observer);

    const auto alive = m_pAlive;
    CPaintManagerUI* const parent = owner != nullptr ? owner->GetManager() : manager;
    const HWND parentWindow = parent != nullptr ? parent->GetPaintWindow() : nullptr;
    if (!Create(parentWindow, nullptr, WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_TOPMOST, RECT{})) {
        if (*alive)
            OnFinalMessage(nullptr);
        return;
    }
    if (owner != nullptr && parent != nullptr) {
        PopupLink::Borrow(m_pm, *parent);
    } else if (parent != nullptr) {
        m_pm.GetDPIObj()->SetScale(parent->GetDPIObj()->GetDPI());
        InheritFont(*parent);
    }

    CMenuUI* const layout = owner != nullptr ? BorrowElements() : BuildMenu();
    if (!*alive) {
        delete layout;
        return;
    }
    if (layout == nullptr) {
        ::DestroyWindow(m_hWnd);
        return;
    }
    m_pLayout = layout;
    layout->m_pWindow = this;
    m_pm.AttachDialog(layout);
    if (!*alive)
        return;
    ResizeMenu();
    Open();
}

// A menu is written like its window unless its skin says otherwise.
void CMenuWnd::InheritFont(CPaintManagerUI& main)
{
    const TFontInfo& font = *main.GetDefaultFontInfo();
    m_pm.SetDefaultFont(font.sFontName, font.iSize, font.bBold, font.bUnderline, font.bItalic,
                        font.bStrikeout);
    m_pm.SetDefaultFontColor(main.GetDefaultFontColor());
    m_pm.SetDefaultDisabledColor(main.GetDefaultDisabledColor());
}

// The root of the skin; null, with the reason left behind, when that is no menu.
CMenuUI* CMenuWnd::BuildMenu()
{
    if (!IS_INTRESOURCE(m_xml.m_lpstr) && *m_xml.m_lpstr == L'\0') {
        ReportFailure(L"a menu needs a skin");
        return nullptr;
    }
    CDialogBuilder builder;
    std::unique_ptr<CControlUI> root(builder.Create(m_xml, L"xml", this, &m_pm));
    if (!root)
        return nullptr;
    auto* const menu = static_cast<CMenuUI*>(root->GetInterface(DUI_CTR_MENU));
    if (menu == nullptr) {
        ReportFailure(SourceOf(m_xml) + L": the root of a menu must be a Menu, not a " +
                      root->GetClass());
        return nullptr;
    }
    root.release();
    return menu;
}

// A sub-menu shows the elements of its owner, which gets them back when it closes.
CMenuUI* CMenuWnd::BorrowElements()
{
    auto menu = std::make_unique<CMenuUI>();
    menu->GetList()->SetAutoDestroy(false);
    if (const CMenuUI* const outer = m_pOwner->OwnerMenu()) {
        menu->InheritLook(*outer);
        if (CMenuWnd* const window = outer->m_pWindow) {
            const SIZE round = window->m_pm.GetRoundCorner();
            CDPI& dpi = *m_pm.GetDPIObj();
            m_pm.SetRoundCorner(dpi.ScaleBack(static_cast<int>(round.cx)),
                                dpi.ScaleBack(static_cast<int>(round.cy)));
        }
    }
    for (CMenuElementUI* const element : m_pOwner->m_subElements)
        menu->Add(element);
    return menu.release();
}

void CMenuWnd::ReturnElements()
{
    CMenuElementUI* const owner = std::exchange(m_pOwner, nullptr);
    if (owner == nullptr)
        return;
    owner->m_pWindow = nullptr;
    if (m_pLayout != nullptr) {
        for (CMenuElementUI* const element : owner->m_subElements) {
            element->CloseSubMenu();
            element->SetOwner(nullptr);
        }
        m_pLayout->RemoveAll();
    }
    for (CMenuElementUI* const element : owner->m_subElements) {
        element->SetManager(owner->GetManager(), owner, false);
        element->m_bSelected = false;
        element->m_uButtonState = 0;
        element->SetIndex(-1);
    }
    owner->Invalidate();
}

void CMenuWnd::Open()
{
    const auto alive = m_pAlive;
    if (m_pOwner != nullptr) {
        ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
        m_bShown = *alive;
        return;
    }
    CPaintManagerUI* const main = GetGlobalContextMenuObserver().GetManager();
    const HWND owner = main != nullptr ? ::GetAncestor(main->GetPaintWindow(), GA_ROOT) : nullptr;
    ::SetForegroundWindow(m_hWnd);
    if (!*alive)
        return;
    ::ShowWindow(m_hWnd, SW_SHOW);
    if (!*alive)
        return;
    ::SetFocus(m_hWnd);
    if (!*alive)
        return;
    m_bShown = true;
    if (owner != nullptr) // it goes on looking like the active window
        ::SendMessageW(owner, WM_NCACTIVATE, TRUE, 0);
}

void CMenuWnd::Close(UINT code)
{
    if (isClosing)
        return;
    isClosing = true;
    CWindowWnd::Close(code);
}

CMenuUI* CMenuWnd::GetMenuUI()
{
    return m_pLayout;
}

void CMenuWnd::setDPI(int dpi)
{
    m_pm.SetDPI(dpi);
    ResizeMenu();
}

// What the rows need, with a scroll bar when the monitor is too low for them.
SIZE CMenuWnd::Measure(const RECT& workArea)
{
    const SIZE room{workArea.right - workArea.left, workArea.bottom - workArea.top};
    SIZE size = m_pLayout->EstimateSize(room);
    const bool scrolls = size.cy > room.cy;
    m_pLayout->EnableScrollBar(scrolls, false);
    if (scrolls && m_pLayout->GetVerticalScrollBar() != nullptr)
        size.cx += m_pLayout->GetVerticalScrollBar()->GetFixedWidth();
    return {std::min(size.cx, room.cx), std::min(size.cy, room.cy)};
}

void CMenuWnd::Place(SIZE size, POINT corner, const RECT& workArea)
{
    const LONG left = KeepWithin(corner.x, size.cx, workArea.left, workArea.right);
    const LONG top = KeepWithin(corner.y, size.cy, workArea.top, workArea.bottom);
    ::SetWindowPos(m_hWnd, HWND_TOPMOST, left, top, size.cx, size.cy, SWP_NOACTIVATE);
    m_pLayout->NeedUpdate();
}

void CMenuWnd::ResizeMenu()
{
    if (m_pLayout == nullptr || m_hWnd == nullptr)
        return;
    if (m_pOwner != nullptr) {
        ResizeSubMenu();
        return;
    }
    const RECT at{m_BasedPoint.x, m_BasedPoint.y, m_BasedPoint.x + 1, m_BasedPoint.y + 1};
    const RECT area = WorkAreaAt(at);
    const SIZE size = Measure(area);
    POINT corner = m_BasedPoint;
    const bool hangsLeft = (m_dwAlignment & eMenuAlignment_Right) != 0;
    const bool hangsUp = (m_dwAlignment & eMenuAlignment_Bottom) != 0;

    // To the other side of the point where the monitor ends.
    if (hangsLeft ? corner.x - size.cx >= area.left
                  : corner.x + size.cx > area.right && corner.x - size.cx >= area.left)
        corner.x -= size.cx;
    if (hangsUp ? corner.y - size.cy >= area.top
                : corner.y + size.cy > area.bottom && corner.y - size.cy >= area.top)
        corner.y -= size.cy;
    Place(size, corner, area);
}

void CMenuWnd::ResizeSubMenu()
{
    if (m_pLayout == nullptr || m_hWnd == nullptr || m_pOwner == nullptr ||
        m_pOwner->OwnerWindow() == nullptr)
        return;
    const HWND outer = m_pOwner->OwnerWindow()->GetHWND();
    const auto alive = m_pAlive;
    ::UpdateWindow(outer); // a menu that was not painted yet has not placed its rows
    if (!*alive || m_pOwner == nullptr)
        return;
    RECT menu{};
    ::GetWindowRect(outer, &menu);
    RECT row = m_pOwner->GetPos();
    ::MapWindowPoints(outer, HWND_DESKTOP, reinterpret_cast<POINT*>(&row), 2);
    const RECT area = WorkAreaAt(row);
    const SIZE size = Measure(area);
    const LONG overlap = m_pm.GetDPIObj()->Scale(kOverlap);
    const LONG right = menu.right - overlap;
    const LONG left = menu.left + overlap - size.cx;
    const bool fitsRight = right + size.cx <= area.right;
    const bool fitsLeft = left >= area.left;
    const bool wantsLeft = (m_dwAlignment & eMenuAlignment_Right) != 0;
    const bool goesLeft = wantsLeft ? fitsLeft || !fitsRight : !fitsRight && fitsLeft;
    m_BasedPoint = {goesLeft ? left : right, row.top - m_pLayout->GetInset().top};
    Place(size, m_BasedPoint, area);
}

LPCTSTR CMenuWnd::GetWindowClassName() const
{
    return L"DuiMenuWnd";
}

void CMenuWnd::OnFinalMessage(HWND)
{
    ReturnElements();
    RemoveObserver();
    if (!m_bDeleting)
        delete this;
}

LRESULT CMenuWnd::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto alive = m_pAlive;
    switch (message) {
    case WM_CREATE:
        m_pm.Init(m_hWnd);
        m_pm.AddNotifier(this);
        return 0;
    case WM_CLOSE:
        isClosing = true;
        break;
    case WM_DESTROY:
        isClosing = true;
        ReturnElements();
        break;
    case WM_SIZE:
        if (const SIZE round = m_pm.GetRoundCorner(); round.cx > 0 || round.cy > 0) {
            RECT window{};
            ::GetWindowRect(m_hWnd, &window);
            Quillet::UniqueRegion shape(::CreateRoundRectRgn(0, 0, window.right - window.left + 1,
                                                             window.bottom - window.top + 1,
                                                             round.cx, round.cy));
            if (::SetWindowRgn(m_hWnd, shape.get(), TRUE))
                shape.release(); // the window's now
        }
        break;
    case WM_KILLFOCUS:
        FocusMoved(reinterpret_cast<HWND>(wParam));
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            FocusMoved(reinterpret_cast<HWND>(lParam));
        break;
    case WM_LBUTTONDOWN:
        m_bCaptured = true;
        break;
    case WM_LBUTTONUP:
        m_bCaptured = false;
        break;
    case WM_KEYDOWN:
        if (!KeysBelongToControl() || wParam == VK_ESCAPE) {
            CMenuWnd* const target = Innermost();
            if (target != nullptr && target->PressKey(wParam))
                return 0;
        }
        break;
    case WM_CHAR:
        if (!KeysBelongToControl()) {
            CMenuWnd* const target = Innermost();
            if (target != nullptr)
                target->PressCharacter(static_cast<wchar_t>(wParam));
            return 0;
        }
        break;
    case WM_SYSKEYDOWN:
        if (wParam == VK_MENU || wParam == VK_F10) {
            GetGlobalContextMenuObserver().RBroadcast({kCloseAll, nullptr});
            return 0;
        }
        break;
    default:
        break;
    }
    if (!*alive)
        return 0;

    LRESULT result = 0;
    const bool handled = m_pm.MessageHandler(message, wParam, lParam, result);
    if (handled || !*alive)
        return result;
    return CWindowWnd::HandleMessage(message, wParam, lParam);
}

// Menus close when the keyboard goes to a window that is none of them.
void CMenuWnd::FocusMoved(HWND next)
{
    if (!m_bShown || isClosing)
        return;
    auto& observer = GetGlobalContextMenuObserver();
    for (MenuObserverImpl::Iterator menus(observer);
         MenuMenuReceiverImplBase* const receiver = menus.next();) {
        const auto* const menu = dynamic_cast<CMenuWnd*>(receiver);
        if (menu != nullptr && next != nullptr &&
            (menu->m_hWnd == next || ::IsChild(menu->m_hWnd, next)))
            return;
    }
    observer.RBroadcast({kCloseAll, nullptr});
}

// What the main window wants to know of the controls in a menu.
void CMenuWnd::Notify(TNotifyUI& notification)
{
    if (notification.sType != DUI_MSGTYPE_CLICK && notification.sType != DUI_MSGTYPE_VALUECHANGED)
        return;
    if (CPaintManagerUI* const main = GetGlobalContextMenuObserver().GetManager())
        PopupLink::PassOn(*main, notification);
}

CControlUI* CMenuWnd::CreateControl(LPCTSTR)
{
    return nullptr;
}

BOOL CMenuWnd::Receive(ContextMenuParam param)
{
    if (param.wParam == kCloseAll ||
        (param.wParam == kCloseSubMenus && m_hWnd != param.hWnd && IsBelow(m_hWnd, param.hWnd)))
        Close();
    return TRUE;
}

// The menu that was opened last has the keyboard, whichever window gets the messages.
CMenuWnd* CMenuWnd::Innermost()
{
    CMenuWnd* innermost = nullptr;
    for (MenuObserverImpl::Iterator menus(GetGlobalContextMenuObserver());
         MenuMenuReceiverImplBase* const receiver = menus.next();) {
        auto* const menu = dynamic_cast<CMenuWnd*>(receiver);
        if (menu != nullptr && menu->m_pLayout != nullptr && !menu->isClosing)
            innermost = menu;
    }
    return innermost;
}

CMenuElementUI* CMenuWnd::ElementAt(int index) const
{
    CControlUI* const control = m_pLayout->GetItemAt(index);
    return control != nullptr
               ? static_cast<CMenuElementUI*>(control->GetInterface(DUI_CTR_MENUELEMENT))
               : nullptr;
}

bool CMenuWnd::IsChoosable(int index) const
{
    const CMenuElementUI* const element = ElementAt(index);
    return element != nullptr && element->IsVisible() && element->IsEnabled();
}

bool CMenuWnd::KeysBelongToControl() const
{
    CControlUI* const focus = m_pm.GetFocus();
    return focus != nullptr && focus != m_pLayout &&
           (focus->GetControlFlags() & UIFLAG_TABSTOP) != 0;
}

bool CMenuWnd::PressKey(WPARAM key)
{
    const int current = m_pLayout->GetCurSel();
    switch (key) {
    case VK_UP:
        SelectFrom(current < 0 ? m_pLayout->GetCount() - 1 : current - 1, false);
        return true;
    case VK_DOWN:
        SelectFrom(current + 1, true);
        return true;
    case VK_HOME:
        SelectFrom(0, true);
        return true;
    case VK_END:
        SelectFrom(m_pLayout->GetCount() - 1, false);
        return true;
    case VK_RIGHT:
        if (const CMenuElementUI* const element = ElementAt(current);
            element != nullptr && element->HasSubMenu())
            OpenSelected();
        return true;
    case VK_RETURN:
    case VK_SPACE:
        OpenSelected();
        return true;
    case VK_LEFT:
    case VK_ESCAPE:
        Close();
        return true;
    default:
        return false;
    }
}

// The next element that can be chosen; after the last comes the first.
void CMenuWnd::SelectFrom(int index, bool forward)
{
    const int count = m_pLayout->GetCount();
    for (int step = 0; step < count; ++step) {
        const int at = ((index + (forward ? step : -step)) % count + count) % count;
        if (IsChoosable(at)) {
            m_pLayout->SelectItem(at);
            return;
        }
    }
}

void CMenuWnd::OpenSelected()
{
    const int current = m_pLayout->GetCurSel();
    if (!IsChoosable(current))
        return;
    const bool opens = ElementAt(current)->HasSubMenu();
    const auto alive = m_pAlive;
    ElementAt(current)->Activate();
    if (!opens || !*alive)
        return;
    const CMenuElementUI* const element = ElementAt(current);
    if (element != nullptr && element->m_pWindow != nullptr)
        element->m_pWindow->SelectFrom(0, true);
}

// The key of an element chooses it; of several elements with one key, the next is selected.
bool CMenuWnd::PressCharacter(wchar_t character)
{
    if (character <= L' ')
        return false;
    const wchar_t wanted = LowerCase(character);
    const int count = m_pLayout->GetCount();
    const int from = m_pLayout->GetCurSel() + 1;
    int found = -1;
    int matches = 0;
    for (int step = 0; step < count; ++step) {
        const int at = (from + step) % count;
        if (!IsChoosable(at))
            continue;
        const CMenuElementUI& element = *ElementAt(at);
        const CDuiString text = element.GetText();
        if (LowerCase(element.GetShortcut()) != wanted && MnemonicOf(View(text)) != wanted)
            continue;
        if (matches++ == 0)
            found = at;
    }
    if (found < 0)
        return false;
    const auto alive = m_pAlive;
    m_pLayout->SelectItem(found);
    if (matches == 1 && *alive)
        OpenSelected();
    return true;
}

} // namespace DuiLib
