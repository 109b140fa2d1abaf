#include "Control/UICombo.h"

#include "Control/ComboDropWindow.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace DuiLib {

namespace {

using namespace Quillet::Text;

constexpr int kDropHeight = 150;     // design pixels
constexpr DWORD kTypingPause = 1000; // milliseconds that end a typed text
constexpr int kPageOfClosed = 5;     // items that a page key steps over while the list is closed

IListItemUI* ItemOf(CControlUI* control)
{
    return control != nullptr ? static_cast<IListItemUI*>(control->GetInterface(DUI_CTR_LISTITEM))
                              : nullptr;
}

bool StartsWith(std::wstring_view text, std::wstring_view start)
{
    return text.size() >= start.size() && EqualsNoCase(text.substr(0, start.size()), start);
}

CControlUI* CALLBACK FirstText(CControlUI* control, LPVOID)
{
    return control->GetText().IsEmpty() ? nullptr : control;
}

// What stands for an item in the closed combo: its text, or the first one in it.
CDuiString TextOf(CControlUI& item)
{
    const CDuiString own = item.GetText();
    if (!own.IsEmpty() || item.GetInterface(DUI_CTR_CONTAINER) == nullptr)
        return own;
    const CControlUI* const shown = item.FindControl(&FirstText, nullptr, UIFIND_ALL);
    return shown != nullptr ? shown->GetText() : own;
}

bool ComesBefore(const CDuiString& first, const CDuiString& second)
{
    return ::CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, first, -1, second, -1) ==
           CSTR_LESS_THAN;
}

} // namespace

CControlUI* CComboUI::CreateControl()
{
    return new CComboUI;
}

CComboUI::CComboUI()
    : m_dwTextColor(0),
      m_dwDisabledTextColor(0),
      m_iFont(-1),
      m_uTextStyle(DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS),
      m_rcTextPadding{},
      m_bShowHtml(false),
      m_bShowShadow(false),
      m_bScrollSelect(true),
      m_iCurSel(-1),
      m_uButtonState(0),
      m_szDropBox{0, kDropHeight},
      m_rcDropBoxInset{1, 1, 1, 1},
      m_pDrop(nullptr),
      m_dwTypedTime(0)
{
    m_ListInfo.rcTextPadding = {6, 0, 6, 0};
}

CComboUI::~CComboUI()
{
    CloseDrop();
}

UINT CComboUI::GetListType()
{
    return LT_COMBO;
}

TListInfoUI* CComboUI::GetListInfo()
{
    return &m_ListInfo;
}

int CComboUI::GetCurSel() const
{
    return m_iCurSel;
}

CControlUI* CComboUI::SelectedItem() const
{
    return GetItemAt(m_iCurSel);
}

bool CComboUI::SelectItem(int index, bool takeFocus)
{
    const ChildWalk life(*this);
    if (index == m_iCurSel) {
        if (takeFocus)
            SetFocus();
        return true;
    }
    if (index < -1 || index >= GetCount())
        return false;
    CControlUI* const chosen = GetItemAt(index);
    IListItemUI* const item = ItemOf(chosen);
    if (index >= 0 && (item == nullptr || !chosen->IsVisible() || !chosen->IsEnabled()))
        return false;

    // The items ask who is selected, so that is decided first.
    const int old = std::exchange(m_iCurSel, index);
    if (IListItemUI* const left = ItemOf(GetItemAt(old)))
        left->Select(false);
    if (item != nullptr)
        item->Select(true);
    if (m_pDrop != nullptr)
        m_pDrop->EnsureVisible(index);
    else if (chosen != nullptr)
        chosen->SetPos(m_rcItem, false); // what changes in it changes the combo
    Invalidate();
    if (takeFocus)
        SetFocus();
    if (life.IsAlive() && m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMSELECT, static_cast<WPARAM>(index), old);
    return true;
}

bool CComboUI::SelectMultiItem(int index, bool takeFocus)
{
    return SelectItem(index, takeFocus);
}

bool CComboUI::UnSelectItem(int index, bool others)
{
    if (m_iCurSel < 0 || (index == m_iCurSel) == others)
        return false;
    return SelectItem(-1);
}

bool CComboUI::SetItemIndex(CControlUI* control, int index)
{
    CControlUI* const selected = SelectedItem();
    if (!CContainerUI::SetItemIndex(control, index))
        return false;
    Renumber(0);
    m_iCurSel = GetItemIndex(selected);
    ItemsChanged();
    return true;
}

bool CComboUI::Add(CControlUI* control)
{
    return AddAt(control, GetCount());
}

bool CComboUI::AddAt(CControlUI* control, int index)
{
    if (control == nullptr || index < 0 || index > GetCount())
        return false;
    if (GetItemIndex(control) >= 0)
        return false;
    const ChildWalk life(*this);
    if (IListItemUI* const item = ItemOf(control))
        item->SetOwner(this);
    if (!CContainerUI::AddAt(control, index) || !life.IsAlive())
        return life.IsAlive() ? false : true;
    if (index <= m_iCurSel)
        ++m_iCurSel;
    Renumber(index);
    ItemsChanged();
    return true;
}

bool CComboUI::Remove(CControlUI* control)
{
    const int index = GetItemIndex(control);
    if (index < 0)
        return false;
    if (m_pDrop != nullptr)
        m_pDrop->Forget(control);
    Disown(control);
    const ChildWalk life(*this);
    if (!CContainerUI::Remove(control))
        return false;
    if (life.IsAlive())
        ItemRemoved(index);
    return true;
}

bool CComboUI::RemoveAt(int index)
{
    return Remove(GetItemAt(index));
}

void CComboUI::RemoveAll()
{
    if (GetCount() == 0)
        return;
    if (m_pDrop != nullptr) {
        for (int i = 0; i < GetCount(); ++i)
            m_pDrop->Forget(GetItemAt(i));
    }
    for (int i = 0; i < GetCount(); ++i)
        Disown(GetItemAt(i));
    const ChildWalk life(*this);
    const int old = std::exchange(m_iCurSel, -1);
    CContainerUI::RemoveAll();
    if (!life.IsAlive())
        return;
    ItemsChanged();
    if (old >= 0 && m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMSELECT, static_cast<WPARAM>(-1), old);
}

// An item that goes, and may live on elsewhere, is selected nowhere.
void CComboUI::Disown(CControlUI* control)
{
    if (IListItemUI* const item = ItemOf(control)) {
        item->SetOwner(nullptr);
        item->Select(false);
    }
}

// The selection moves to a neighbour of an item that is gone.
void CComboUI::ItemRemoved(int index)
{
    Renumber(index);
    if (index < m_iCurSel)
        --m_iCurSel;
    const bool selected = index == m_iCurSel;
    if (selected)
        m_iCurSel = -1;
    ItemsChanged();
    if (!selected)
        return;
    int next = FindSelectable(index, true);
    if (next < 0)
        next = FindSelectable(index, false);
    if (next >= 0)
        SelectItem(next);
    else if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMSELECT, static_cast<WPARAM>(-1), index);
}

void CComboUI::Renumber(int from)
{
    for (int i = from; i < GetCount(); ++i) {
        if (IListItemUI* const item = ItemOf(GetItemAt(i)))
            item->SetIndex(i);
    }
}

void CComboUI::ItemsChanged()
{
    if (m_pDrop != nullptr)
        m_pDrop->ItemsChanged();
    Invalidate();
}

template <class Compare>
void CComboUI::Sort(Compare compare)
{
    CControlUI* const selected = SelectedItem();
    std::vector<CControlUI*> items;
    items.reserve(static_cast<std::size_t>(GetCount()));
    for (int i = 0; i < GetCount(); ++i)
        items.push_back(GetItemAt(i));
    std::stable_sort(items.begin(), items.end(), compare);
    for (int i = 0; i < GetCount(); ++i)
        m_items.SetAt(i, items[static_cast<std::size_t>(i)]);
    Renumber(0);
    m_iCurSel = GetItemIndex(selected);
    ItemsChanged();
}

void CComboUI::SortItems()
{
    Sort([](CControlUI* first, CControlUI* second) {
        return ComesBefore(TextOf(*first), TextOf(*second));
    });
}

BOOL CComboUI::SortItems(PULVCompareFunc compare, UINT_PTR data)
{
    if (compare == nullptr)
        return FALSE;
    Sort([compare, data](CControlUI* first, CControlUI* second) {
        return compare(reinterpret_cast<UINT_PTR>(first), reinterpret_cast<UINT_PTR>(second),
                       data) < 0;
    });
    return TRUE;
}

LPCTSTR CComboUI::GetClass() const
{
    return L"ComboUI";
}

LPVOID CComboUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_COMBO))
        return static_cast<CComboUI*>(this);
    if (EqualsNoCase(View(name), DUI_CTR_ILISTOWNER))
        return static_cast<IListOwnerUI*>(this);
    return CContainerUI::GetInterface(name);
}

UINT CComboUI::GetControlFlags() const
{
    return (IsKeyboardEnabled() ? UIFLAG_TABSTOP : 0) | (IsEnabled() ? UIFLAG_SETCURSOR : 0);
}

CDuiString CComboUI::GetText() const
{
    CControlUI* const item = SelectedItem();
    return item != nullptr ? TextOf(*item) : CDuiString();
}

bool CComboUI::Activate()
{
    return CContainerUI::Activate() && (m_pDrop != nullptr || Open());
}

bool CComboUI::Open()
{
    if (m_pManager == nullptr || m_pManager->GetPaintWindow() == nullptr)
        return false;
    const ChildWalk life(*this);
    m_pManager->SendNotify(this, DUI_MSGTYPE_PREDROPDOWN);
    if (!life.IsAlive() || m_pDrop != nullptr || m_pManager == nullptr || !IsVisible() ||
        !IsEnabled())
        return false;
    m_pDrop = new ComboDropWindow(*this);
    if (!m_pDrop->Open() || !life.IsAlive())
        return false;
    Invalidate();
    m_pManager->SendNotify(this, DUI_MSGTYPE_DROPDOWN);
    return true;
}

void CComboUI::CloseDrop()
{
    if (m_pDrop != nullptr)
        m_pDrop->Close();
}

void CComboUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    if (manager != m_pManager || parent != m_pParent)
        CloseDrop();
    CContainerUI::SetManager(manager, parent, init);
}

void CComboUI::SetVisible(bool visible)
{
    if (!visible)
        CloseDrop();
    CContainerUI::SetVisible(visible);
}

void CComboUI::SetInternVisible(bool visible)
{
    if (!visible)
        CloseDrop();
    CContainerUI::SetInternVisible(visible);
}

// Items keep their own state.
void CComboUI::SetEnabled(bool enable)
{
    if (!enable) {
        CloseDrop();
        m_uButtonState = 0;
    }
    CControlUI::SetEnabled(enable);
}

void CComboUI::SetPos(RECT rect, bool invalidate)
{
    const ChildWalk life(*this);
    CControlUI::SetPos(rect, invalidate);
    if (!life.IsAlive())
        return;
    if (m_pDrop != nullptr)
        m_pDrop->Place();
    else if (CControlUI* const item = SelectedItem())
        item->SetPos(m_rcItem, false);
}

void CComboUI::Move(SIZE offset, bool invalidate)
{
    const ChildWalk life(*this);
    CContainerUI::Move(offset, invalidate);
    if (life.IsAlive() && m_pDrop != nullptr)
        m_pDrop->Place();
}

// Nobody but the combo looks for its items by place, state or order of the keyboard.
CControlUI* CComboUI::FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags)
{
    constexpr UINT kOwn =
        UIFIND_VISIBLE | UIFIND_ENABLED | UIFIND_HITTEST | UIFIND_UPDATETEST | UIFIND_TOP_FIRST;
    return (flags & kOwn) != 0 ? CControlUI::FindControl(procedure, data, flags)
                               : CContainerUI::FindControl(procedure, data, flags);
}

void CComboUI::DoEvent(TEventUI& event)
{
    // An item hands on what it does not need.
    if (event.pSender != nullptr && event.pSender != this) {
        if (event.Type == UIEVENT_SCROLLWHEEL && m_pDrop != nullptr)
            m_pDrop->TurnWheel(LOWORD(event.wParam) == SB_LINEUP);
        return;
    }

    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (isMouse && !IsMouseEnabled()) {
        if (m_pParent != nullptr)
            m_pParent->DoEvent(event);
        return;
    }
    const bool takesKeys = IsEnabled() && IsKeyboardEnabled();
    switch (event.Type) {
    case UIEVENT_KILLFOCUS:
        CloseDrop();
        break;
    case UIEVENT_KEYDOWN:
        if (takesKeys && PressKey(event.chKey))
            return;
        break;
    case UIEVENT_SYSKEY:
        if (takesKeys && PressSystemKey(event.wParam))
            return;
        break;
    case UIEVENT_CHAR:
        if (takesKeys) {
            TypeCharacter(event.chKey, event.dwTimestamp);
            return;
        }
        break;
    case UIEVENT_SCROLLWHEEL:
        if (!m_bScrollSelect || !IsEnabled())
            break;
        if (LOWORD(event.wParam) == SB_LINEUP)
            StepSelection(m_iCurSel - 1, false);
        else
            StepSelection(m_iCurSel + 1, true);
        return;
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        if (!IsEnabled())
            return;
        if (m_pDrop != nullptr) {
            CloseDrop();
            return;
        }
        m_uButtonState |= UISTATE_CAPTURED;
        Activate();
        return;
    case UIEVENT_BUTTONUP:
        m_uButtonState &= ~UISTATE_CAPTURED;
        Invalidate();
        return;
    case UIEVENT_MOUSEMOVE:
        return;
    case UIEVENT_MOUSEENTER:
    case UIEVENT_MOUSELEAVE:
        if (event.Type == UIEVENT_MOUSEENTER && IsEnabled())
            m_uButtonState |= UISTATE_HOT;
        else
            m_uButtonState &= ~UISTATE_HOT;
        Invalidate();
        return;
    default:
        break;
    }
    CControlUI::DoEvent(event);
}

bool CComboUI::PressKey(WPARAM key)
{
    switch (key) {
    case VK_UP:
    case VK_LEFT:
        return StepSelection(m_iCurSel - 1, false);
    case VK_DOWN:
    case VK_RIGHT:
        return StepSelection(m_iCurSel + 1, true);
    case VK_PRIOR:
        return StepSelection(m_iCurSel - PageSize(), false);
    case VK_NEXT:
        return StepSelection(m_iCurSel + PageSize(), true);
    case VK_HOME:
        return StepSelection(0, true);
    case VK_END:
        return StepSelection(GetCount() - 1, false);
    case VK_F4:
    case VK_SPACE:
        if (m_pDrop == nullptr)
            Activate();
        return true;
    default:
        return false;
    }
}

// With Alt the arrows open and close the list.
bool CComboUI::PressSystemKey(WPARAM key)
{
    if (key != VK_UP && key != VK_DOWN)
        return false;
    if (m_pDrop != nullptr)
        CloseDrop();
    else
        Activate();
    return true;
}

int CComboUI::PageSize() const
{
    return m_pDrop != nullptr ? std::max(m_pDrop->VisibleRows() - 1, 1) : kPageOfClosed;
}

// True for the caller's convenience: the key was for the combo, whether something changed or not.
bool CComboUI::StepSelection(int from, bool forward)
{
    int target = FindSelectable(from, forward);
    if (target < 0)
        target = FindSelectable(from, !forward);
    if (target >= 0)
        SelectItem(target);
    return true;
}

// A typed text selects the next item that starts with it; one character that is typed again goes
// on to the next item of that character.
void CComboUI::TypeCharacter(wchar_t character, DWORD time)
{
    if (character < L' ' || (character == L' ' && m_sTyped.empty()))
        return;
    if (time - m_dwTypedTime > kTypingPause)
        m_sTyped.clear();
    m_dwTypedTime = time;
    m_sTyped += character;

    const int count = GetCount();
    const auto find = [&](std::wstring_view start, int from) {
        for (int step = 0; step < count; ++step) {
            const int at = (from + step) % count;
            CControlUI& item = *GetItemAt(at);
            if (item.IsVisible() && item.IsEnabled() && ItemOf(&item) != nullptr &&
                StartsWith(TextOf(item).GetData(), start))
                return at;
        }
        return -1;
    };
    if (count == 0)
        return;
    const bool single = m_sTyped.size() == 1;
    int found = find(m_sTyped, single ? m_iCurSel + 1 : std::max(m_iCurSel, 0));
    const bool repeats =
        m_sTyped.find_first_not_of(m_sTyped.front()) == std::wstring::npos && !single;
    if (found < 0 && repeats)
        found = find(m_sTyped.substr(0, 1), m_iCurSel + 1);
    if (found >= 0)
        SelectItem(found);
}

} // namespace DuiLib
