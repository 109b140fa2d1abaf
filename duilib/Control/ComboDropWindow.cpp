#include "Control/ComboDropWindow.h"

#include "Control/PopupPlace.h"
#include "Control/UICombo.h"
#include "Core/PopupLink.h"
#include "Layout/UIVerticalLayout.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace DuiLib {

namespace {

constexpr LONG kRowMargin = 8;      // design pixels, above and below the text of a row, together
constexpr LONG kUnlimited = 999999; // device pixels
constexpr DWORD kBoxColor = 0xFFFFFFFF;
constexpr DWORD kBoxBorderColor = 0xFFC8CDD4;
constexpr int kBoxBorderSize = 1; // design pixels
constexpr int kLinesPerWheelStep = 3;

bool IsPressed(int virtualKey)
{
    return ::GetKeyState(virtualKey) < 0;
}

} // namespace

// The layout of the items. Its children are the rows in view; the others wait, without a place,
// until they are scrolled to.
class ComboDropWindow::Rows final : public CVerticalLayoutUI {
public:
    Rows()
    {
        SetAutoDestroy(false);
        SetBkColor(kBoxColor);
        SetBorderColor(kBoxBorderColor);
        SetBorderSize(kBoxBorderSize);
    }
    ~Rows() override { m_items.Empty(); }

    void Take(const CStdPtrArray& items)
    {
        Drop(m_firstShown, m_firstShown + m_items.GetSize());
        m_items.Empty();
        m_all = items;
        m_firstShown = 0;
        for (int i = 0; i < m_all.GetSize(); ++i) {
            if (At(i).GetParent() != this)
                At(i).SetManager(m_pManager, this, false);
        }
        m_tops.clear();
        NeedUpdate();
    }

    void GiveBack(CPaintManagerUI* manager, CControlUI* parent)
    {
        const CStdPtrArray items = std::exchange(m_all, CStdPtrArray());
        m_items.Empty();
        m_tops.clear();
        for (int i = 0; i < items.GetSize(); ++i) {
            auto& item = *static_cast<CControlUI*>(items[i]);
            item.SetManager(manager, parent, false);
            item.SetPos({0, 0, 0, 0}, false);
        }
    }

    // The item is about to die.
    void Forget(CControlUI* item)
    {
        const int index = m_all.Find(item);
        if (index < 0)
            return;
        m_all.Remove(index);
        m_items.Remove(m_items.Find(item));
        m_tops.clear();
    }

    // What all rows and the inset need at a width.
    LONG HeightFor(LONG width)
    {
        const RECT inset = GetInset();
        Measure(width - inset.left - inset.right);
        return m_tops.back() + inset.top + inset.bottom;
    }

    int RowAt(POINT point) const
    {
        const RECT area = GetChildArea();
        if (m_tops.empty() || !::PtInRect(&area, point))
            return -1;
        const int row = RowOf(point.y - area.top + GetScrollPos().cy);
        return row < m_all.GetSize() ? row : -1;
    }

    void EnsureVisible(int index)
    {
        if (index < 0 || index >= m_all.GetSize() || m_tops.empty())
            return;
        const auto row = static_cast<std::size_t>(index);
        const RECT area = GetChildArea();
        SIZE position = GetScrollPos();
        position.cy = std::max(position.cy, m_tops[row + 1] - (area.bottom - area.top));
        position.cy = std::min(position.cy, m_tops[row]);
        SetScrollPos(position, false);
    }

    int VisibleRows() const { return m_items.GetSize(); }

    // CContainerUI:
    void SetScrollPos(SIZE position, bool) override
    {
        const SIZE before = GetScrollPos();
        CVerticalLayoutUI::SetScrollPos(position, false);
        if (before.cy != GetScrollPos().cy)
            PlaceRows();
    }

    // CControlUI:
    void SetPos(RECT rect, bool invalidate) override
    {
        CControlUI::SetPos(rect, invalidate);
        const RECT area = GetChildArea();
        Measure(area.right - area.left);
        PlaceRows();
        ProcessScrollBar(area, 0, m_tops.back());
    }

private:
    CControlUI& At(int index) const { return *static_cast<CControlUI*>(m_all.GetAt(index)); }

    void Measure(LONG width)
    {
        const LONG plain = m_pManager->GetDefaultFontInfo()->tm.tmHeight +
                           m_pManager->GetDPIObj()->Scale(kRowMargin);
        m_tops.assign(1, 0);
        m_tops.reserve(static_cast<std::size_t>(m_all.GetSize()) + 1);
        LONG top = 0;
        for (int i = 0; i < m_all.GetSize(); ++i) {
            auto& item = At(i);
            if (item.IsVisible()) {
                const LONG wish = item.EstimateSize({width, kUnlimited}).cy;
                const LONG height = std::min<LONG>(wish > 0 ? wish : plain, item.GetMaxHeight());
                top +=
                    std::max<LONG>(height, item.GetMinHeight()) + (top > 0 ? GetChildPadding() : 0);
            }
            m_tops.push_back(top);
        }
    }

    // The row at a distance from the top of the first one.
    int RowOf(LONG distance) const
    {
        const auto after =
            std::upper_bound(m_tops.begin(), m_tops.end(), std::max<LONG>(distance, 0));
        return static_cast<int>(after - m_tops.begin()) - 1;
    }

    void Drop(int from, int to)
    {
        for (int i = from; i < std::min(to, m_all.GetSize()); ++i)
            At(i).SetPos({0, 0, 0, 0}, false);
    }

    void PlaceRows()
    {
        if (m_tops.empty())
            return;
        const RECT area = GetChildArea();
        const LONG position = GetScrollPos().cy;
        const int first = std::min(RowOf(position), m_all.GetSize());
        int last = first;
        while (last < m_all.GetSize() &&
               m_tops[static_cast<std::size_t>(last)] - position < area.bottom - area.top)
            ++last;

        // A row that left the view is nowhere, so that it takes no part in anything.
        const int oldLast = m_firstShown + m_items.GetSize();
        Drop(m_firstShown, std::min(oldLast, first));
        Drop(std::max(m_firstShown, last), oldLast);
        m_items.Empty();
        m_firstShown = first;
        for (int i = first; i < last; ++i) {
            const auto row = static_cast<std::size_t>(i);
            if (m_tops[row + 1] == m_tops[row])
                continue;
            const LONG gap = m_tops[row] > 0 ? GetChildPadding() : 0;
            At(i).SetPos({area.left, area.top + m_tops[row] + gap - position, area.right,
                          area.top + m_tops[row + 1] - position},
                         false);
        }
        for (int i = first; i < last; ++i)
            m_items.Add(&At(i));
        Invalidate();
    }

    CStdPtrArray m_all;
    std::vector<LONG> m_tops; // of the rows, from the first one's; the last entry is the end
    int m_firstShown = 0;
};

ComboDropWindow::ComboDropWindow(CComboUI& combo)
    : m_combo(&combo), m_chosenBefore(combo.SelectedItem())
{
}

ComboDropWindow::~ComboDropWindow()
{
    *m_alive = false;
}

bool ComboDropWindow::Open()
{
    const auto alive = m_alive;
    CPaintManagerUI& main = *m_combo->GetManager();
    if (!Create(main.GetPaintWindow(), nullptr, WS_POPUP, WS_EX_TOOLWINDOW, RECT{})) {
        if (*alive) {
            m_combo->m_pDrop = nullptr;
            delete this;
        }
        return false;
    }
    PopupLink::Borrow(m_manager, main);
    m_manager.AddNotifier(this);
    m_rows = new Rows;
    m_manager.AttachDialog(m_rows);
    m_rows->SetInset(m_combo->m_rcDropBoxInset);
    m_rows->EnableScrollBar();
    m_rows->ApplyAttributeList(m_combo->m_sDropBoxAttributes);
    m_rows->Take(m_combo->m_items);
    Place();
    EnsureVisible(m_combo->GetCurSel());

    // The main window goes on looking like the active one.
    const HWND owner = ::GetAncestor(main.GetPaintWindow(), GA_ROOT);
    ::ShowWindow(m_hWnd, SW_SHOW);
    if (!*alive || m_combo == nullptr)
        return false;
    ::SetFocus(m_hWnd);
    if (!*alive || m_combo == nullptr)
        return false;
    m_isShown = true;
    ::SendMessage(owner, WM_NCACTIVATE, TRUE, 0);
    return *alive && m_combo != nullptr;
}

void ComboDropWindow::Close()
{
    if (m_combo == nullptr)
        return;
    // What lies under the mouse, is pressed or has the focus hears that this is over.
    const auto alive = m_alive;
    m_isShown = false;
    LRESULT result = 0;
    m_manager.MessageHandler(WM_CLOSE, 0, 0, result);
    if (!*alive || m_combo == nullptr)
        return;
    CComboUI* const combo = std::exchange(m_combo, nullptr);
    combo->m_pDrop = nullptr;
    m_rows->GiveBack(combo->GetManager(), combo);
    combo->Invalidate();
    if (!m_isEnding) {
        ::ShowWindow(m_hWnd, SW_HIDE);
        PostMessage(WM_CLOSE);
    }
}

void ComboDropWindow::Place()
{
    CPaintManagerUI& main = *m_combo->GetManager();
    if (main.GetDPIObj()->GetDPI() != m_manager.GetDPIObj()->GetDPI())
        m_manager.SetDPI(static_cast<int>(main.GetDPIObj()->GetDPI()));

    RECT field = m_combo->GetPos();
    ::MapWindowPoints(main.GetPaintWindow(), HWND_DESKTOP, reinterpret_cast<POINT*>(&field), 2);
    const RECT area = WorkAreaAt(field);
    const SIZE wanted = m_combo->GetDropBoxSize();
    const LONG width =
        std::min(wanted.cx > 0 ? wanted.cx : field.right - field.left, area.right - area.left);
    LONG height = std::min(m_rows->HeightFor(width), wanted.cy);
    height = std::max<LONG>(height, m_manager.GetDPIObj()->Scale(kRowMargin));

    const LONG below = area.bottom - field.bottom;
    const LONG above = field.top - area.top;
    const bool dropsDown = height <= below || below >= above;
    height = std::min(height, std::max(dropsDown ? below : above, 1L));
    const LONG left = KeepWithin(field.left, width, area.left, area.right);
    const LONG top =
        dropsDown ? std::max(field.bottom, area.top) : std::min(field.top, area.bottom) - height;
    ::SetWindowPos(m_hWnd, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    m_rows->SetPos({0, 0, width, height}, true);
}

void ComboDropWindow::ItemsChanged()
{
    m_rows->Take(m_combo->m_items);
    Place();
}

void ComboDropWindow::Forget(CControlUI* item)
{
    const auto forget = [](CControlUI* control, LPVOID manager) -> CControlUI* {
        static_cast<CPaintManagerUI*>(manager)->ReapObjects(control);
        return nullptr;
    };
    item->FindControl(forget, &m_manager, UIFIND_ALL);
    m_rows->Forget(item);
}

void ComboDropWindow::EnsureVisible(int index)
{
    m_rows->EnsureVisible(index);
}

int ComboDropWindow::VisibleRows() const
{
    return m_rows->VisibleRows();
}

void ComboDropWindow::TurnWheel(bool up)
{
    for (int line = 0; line < kLinesPerWheelStep; ++line)
        up ? m_rows->LineUp() : m_rows->LineDown();
}

// What the items say is said to the window of the combo.
void ComboDropWindow::Notify(TNotifyUI& notification)
{
    if (m_combo != nullptr && m_combo->GetManager() != nullptr && notification.pSender != m_rows)
        PopupLink::PassOn(*m_combo->GetManager(), notification);
}

LRESULT ComboDropWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto alive = m_alive;
    switch (message) {
    case WM_CREATE:
        m_manager.Init(m_hWnd);
        return 0;
    case WM_MOUSEACTIVATE:
        return MA_ACTIVATE;
    case WM_CLOSE:
    case WM_DESTROY:
        m_isEnding = true;
        if (m_combo != nullptr)
            Close();
        if (!*alive)
            return 0;
        break;
    case WM_KILLFOCUS:
        LoseFocus(reinterpret_cast<HWND>(wParam));
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            LoseFocus(reinterpret_cast<HWND>(lParam));
        break;
    case WM_KEYDOWN:
        if (PressKey(wParam) || !*alive)
            return 0;
        break;
    case WM_SYSKEYDOWN:
        if (m_combo != nullptr && (wParam == VK_UP || wParam == VK_DOWN)) {
            Close();
            return 0;
        }
        break;
    case WM_CHAR:
        if (m_combo != nullptr && KeysBelongToItems()) {
            m_combo->TypeCharacter(static_cast<wchar_t>(wParam),
                                   static_cast<DWORD>(::GetMessageTime()));
            return 0;
        }
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        m_pressedElsewhere = RowAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}) < 0;
        break;
    default:
        break;
    }

    LRESULT result = 0;
    const bool handled = m_manager.MessageHandler(message, wParam, lParam, result);
    if (!*alive)
        return result;
    if (message == WM_LBUTTONUP) {
        Release({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    }
    return handled ? result : CWindowWnd::HandleMessage(message, wParam, lParam);
}

void ComboDropWindow::OnFinalMessage(HWND)
{
    delete this;
}

// The window closes with a later message, so that a press on the combo itself still finds it open
// and does not open it again.
void ComboDropWindow::LoseFocus(HWND next)
{
    if (m_combo != nullptr && m_isShown && next != m_hWnd && !::IsChild(m_hWnd, next))
        PostMessage(WM_CLOSE);
}

// The row under a point; -1 over anything that is worked with the mouse itself, and over a row that
// cannot be selected.
int ComboDropWindow::RowAt(POINT point) const
{
    if (m_combo == nullptr)
        return -1;
    const int row = m_rows->RowAt(point);
    CControlUI* const item = m_combo->GetItemAt(row);
    if (item == nullptr || !item->IsEnabled() || item->GetInterface(DUI_CTR_LISTITEM) == nullptr)
        return -1;
    for (CControlUI* control = m_manager.FindControl(point); control != nullptr && control != item;
         control = control->GetParent()) {
        if ((control->GetControlFlags() & UIFLAG_TABSTOP) != 0)
            return -1;
    }
    return row;
}

// A button released over a row chooses it, also when it was pressed on the combo.
void ComboDropWindow::Release(POINT point)
{
    const bool elsewhere = std::exchange(m_pressedElsewhere, false);
    const int row = elsewhere ? -1 : RowAt(point);
    if (row < 0)
        return;
    const auto alive = m_alive;
    m_combo->SelectItem(row);
    if (*alive)
        Close();
}

bool ComboDropWindow::KeysBelongToItems() const
{
    CControlUI* const focus = m_manager.GetFocus();
    return focus == nullptr || focus == m_rows ||
           focus->GetInterface(DUI_CTR_LISTITEM) != nullptr ||
           (focus->GetControlFlags() & UIFLAG_TABSTOP) == 0;
}

bool ComboDropWindow::PressKey(WPARAM key)
{
    if (m_combo == nullptr)
        return false;
    const auto alive = m_alive;
    switch (key) {
    case VK_ESCAPE:
        m_combo->SelectItem(m_combo->GetItemIndex(m_chosenBefore));
        if (*alive)
            Close();
        return true;
    case VK_F4:
        Close();
        return true;
    case VK_RETURN:
        if (!KeysBelongToItems())
            return false;
        Close();
        return true;
    case VK_TAB:
        if (!KeysBelongToItems() || IsPressed(VK_CONTROL))
            return false;
        MoveOn();
        return true;
    default:
        return KeysBelongToItems() && m_combo->PressKey(key);
    }
}

// Tab closes the list and leaves the combo.
void ComboDropWindow::MoveOn()
{
    CPaintManagerUI* const main = m_combo->GetManager();
    Close();
    if (CPaintManagerUI::GetPaintManagers()->Find(main) >= 0)
        main->SetNextTabControl(!IsPressed(VK_SHIFT));
}

} // namespace DuiLib
