#include "Control/ListSelection.h"
#include "Core/Diagnostics.h"
#include "Core/UIManager.h"

#include <algorithm>
#include <new>
#include <utility>

// Which rows of a list are selected, and what the mouse and the keyboard do to that.
//
// A row that is selected by its own Select asks the list, and the list tells the rows:
// m_bChangingRow keeps the second from coming back as the first.
namespace DuiLib {

namespace {

bool IsDown(int virtualKey)
{
    return ::GetKeyState(virtualKey) < 0;
}

} // namespace

int CListUI::GetCurSel() const
{
    return m_iCurSel;
}

int CListUI::GetCurSelActivate() const
{
    return m_iCurSelActivate;
}

bool CListUI::IsMultiSelect() const
{
    return m_bMultiSel;
}

void CListUI::SetMultiSelect(bool multiSelect)
{
    m_bMultiSel = multiSelect;
    if (multiSelect || m_pSelection->Count() <= 1)
        return;
    if (ChangeOthers(m_iCurSel))
        NotifySelected(m_iCurSel);
}

int CListUI::GetSelectItemCount() const
{
    return m_pSelection->Count();
}

int CListUI::GetNextSelItem(int index) const
{
    return m_pSelection->Next(index);
}

IListItemUI* CListUI::RowAt(int index) const
{
    CControlUI* const row = m_pList->GetItemAt(index);
    return row != nullptr ? static_cast<IListItemUI*>(row->GetInterface(DUI_CTR_LISTITEM))
                          : nullptr;
}

// Rows of a list that is hidden as a whole may be selected.
bool CListUI::IsSelectable(int index) const
{
    CControlUI* const row = m_pList->GetItemAt(index);
    return row != nullptr && row->IsEnabled() && (row->IsVisible() || !m_pList->IsVisible()) &&
           row->GetInterface(DUI_CTR_LISTITEM) != nullptr;
}

// True when the row is now as asked for and was not before.
bool CListUI::ChangeRow(int index, bool select)
{
    IListItemUI* const row = RowAt(index);
    if (row == nullptr || m_pSelection->Has(index) == select)
        return false;
    m_pSelection->Set(index, select);
    const bool wasChanging = std::exchange(m_bChangingRow, true);
    const bool done = select ? row->SelectMulti(true) : row->Select(false);
    m_bChangingRow = wasChanging;
    if (!done)
        m_pSelection->Set(index, !select);
    return done;
}

// Takes every row but one out of the selection.
bool CListUI::ChangeOthers(int kept)
{
    bool changed = false;
    for (int i = m_pSelection->Next(-1); i >= 0; i = m_pSelection->Next(i)) {
        if (i == kept)
            continue;
        if (!ChangeRow(i, false))
            m_pSelection->Set(i, false);
        changed = true;
    }
    return changed;
}

void CListUI::NotifySelected(int index)
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMSELECT, static_cast<WPARAM>(index), 0);
}

// For changes that the rows bring with them when they come and go: nobody may be called in between.
void CListUI::QueueSelected(int index)
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMSELECT, static_cast<WPARAM>(index), 0, true);
}

bool CListUI::SelectItem(int index, bool takeFocus)
{
    if (m_bChangingRow)
        return true;
    if (index < 0) {
        m_iFirstSel = -1;
        m_iCurSel = -1;
        if (ChangeOthers(-1))
            NotifySelected(-1);
        return false;
    }
    if (!IsSelectable(index)) {
        // A row that selected itself is told otherwise.
        IListItemUI* const row = RowAt(index);
        if (row != nullptr && row->IsSelected() && !m_pSelection->Has(index)) {
            const bool wasChanging = std::exchange(m_bChangingRow, true);
            row->Select(false);
            m_bChangingRow = wasChanging;
        }
        return false;
    }

    const bool others = ChangeOthers(index);
    const bool added = ChangeRow(index, true);
    if (!m_pSelection->Has(index)) {
        m_iCurSel = -1;
        if (others)
            NotifySelected(-1);
        return false;
    }
    m_iCurSel = index;
    m_iFirstSel = index;
    const ChildWalk watch(*this);
    ShowSelected(index, takeFocus);
    // A handler that selected another row has told of that.
    if ((others || added) && watch.IsAlive() && m_iCurSel == index)
        NotifySelected(index);
    return true;
}

// What runs on the way may change the rows, and delete the list.
void CListUI::ShowSelected(int index, bool takeFocus)
{
    const ChildWalk watch(*this);
    EnsureVisible(index);
    if (!takeFocus || !watch.IsAlive())
        return;
    if (CControlUI* const row = m_pList->GetItemAt(index))
        row->SetFocus();
}

bool CListUI::SelectItemActivate(int index)
{
    const ChildWalk watch(*this);
    if (!SelectItem(index, true))
        return false;
    if (watch.IsAlive())
        m_iCurSelActivate = index;
    return true;
}

// With Shift from the row that a selection began with to this one, with Ctrl the row itself in or
// out, else the row in addition.
bool CListUI::SelectMultiItem(int index, bool takeFocus)
{
    if (m_bChangingRow)
        return true;
    if (!m_bMultiSel)
        return SelectItem(index, takeFocus);
    if (!IsSelectable(index))
        return false;

    const bool extend = IsDown(VK_SHIFT) && m_iFirstSel >= 0;
    bool changed = false;
    if (extend) {
        const unsigned before = m_pSelection->Changes();
        SelectRange(m_iFirstSel, index);
        changed = m_pSelection->Changes() != before;
        m_iCurSel = index;
    } else {
        const bool toggleOff = IsDown(VK_CONTROL) && m_pSelection->Has(index);
        changed = ChangeRow(index, !toggleOff);
        m_iCurSel = m_pSelection->Has(index) ? index : m_pSelection->Next(-1);
        m_iFirstSel = index;
    }
    const ChildWalk watch(*this);
    ShowSelected(index, takeFocus);
    if (changed && watch.IsAlive())
        NotifySelected(-1);
    return true;
}

void CListUI::SelectRange(int from, int to)
{
    const int first = std::min(from, to);
    const int last = std::max(from, to);
    if (!IsDown(VK_CONTROL)) {
        for (int i = m_pSelection->Next(-1); i >= 0; i = m_pSelection->Next(i)) {
            if ((i < first || i > last) && !ChangeRow(i, false))
                m_pSelection->Set(i, false);
        }
    }
    for (int i = first; i <= last; ++i) {
        if (IsSelectable(i))
            ChangeRow(i, true);
    }
}

bool CListUI::UnSelectItem(int index, bool others)
{
    if (m_bChangingRow)
        return true;
    bool changed = false;
    if (others) {
        changed = ChangeOthers(index);
        m_iCurSel = m_pSelection->Has(index) ? index : -1;
    } else {
        if (!m_pSelection->Has(index))
            return false;
        // A row that took itself out is out already.
        if (!ChangeRow(index, false))
            m_pSelection->Set(index, false);
        changed = true;
        if (m_iCurSel == index)
            m_iCurSel = m_pSelection->Next(-1);
    }
    if (changed)
        NotifySelected(-1);
    return true;
}

void CListUI::SelectAllItems()
{
    if (!m_bMultiSel)
        return;
    bool changed = false;
    for (int i = 0; i < m_pList->GetCount(); ++i)
        changed = (IsSelectable(i) && ChangeRow(i, true)) || changed;
    if (m_iCurSel < 0)
        m_iCurSel = m_pSelection->Next(-1);
    if (changed)
        NotifySelected(-1);
}

void CListUI::UnSelectAllItems()
{
    m_iCurSel = -1;
    if (ChangeOthers(-1))
        NotifySelected(-1);
}

// Keys

// The focus stays where it is when that is the list itself.
void CListUI::SelectFromKeyboard(int index)
{
    if (index < 0)
        return;
    const bool takeFocus = m_pManager != nullptr && m_pManager->GetFocus() != this;
    if (m_bMultiSel && IsDown(VK_SHIFT))
        SelectMultiItem(index, takeFocus);
    else
        SelectItem(index, takeFocus);
}

bool CListUI::HasOrderOfItsOwn() const
{
    return false;
}

bool CListUI::DoRowKey(const TEventUI&)
{
    return false;
}

bool CListUI::SelectByKey(const TEventUI& event)
{
    if (DoRowKey(event))
        return true;
    const int last = GetCount() - 1;
    const auto next = [this, last](int from, bool forward) {
        return from < 0 || from > last ? -1 : FindSelectable(from, forward);
    };
    switch (event.chKey) {
    case VK_UP:
        SelectFromKeyboard(m_iCurSel < 0 ? next(last, false) : next(m_iCurSel - 1, false));
        return true;
    case VK_DOWN:
        SelectFromKeyboard(next(m_iCurSel + 1, true));
        return true;
    case VK_PRIOR:
        SelectFromKeyboard(next(m_pList->IndexAPageAway(m_iCurSel, false), false));
        return true;
    case VK_NEXT:
        SelectFromKeyboard(next(m_pList->IndexAPageAway(m_iCurSel, true), true));
        return true;
    case VK_HOME:
        SelectFromKeyboard(next(0, true));
        return true;
    case VK_END:
        SelectFromKeyboard(next(last, false));
        return true;
    case VK_LEFT:
        LineLeft();
        return true;
    case VK_RIGHT:
        LineRight();
        return true;
    case VK_SPACE:
        if (m_bMultiSel && m_iCurSel >= 0 && IsDown(VK_CONTROL))
            SelectMultiItem(m_iCurSel);
        else if (m_iCurSel < 0)
            SelectFromKeyboard(next(0, true));
        return true;
    case VK_RETURN:
        if (CControlUI* const row = GetItemAt(m_iCurSel)) {
            m_iCurSelActivate = m_iCurSel;
            row->Activate();
        }
        return true;
    case L'A':
        if (!m_bMultiSel || !IsDown(VK_CONTROL))
            return false;
        SelectAllItems();
        return true;
    default:
        return false;
    }
}

// What the list is told of its rows

// Where many rows come and go in the middle, those behind learn their indices when they are asked.
void CListUI::NumberRows()
{
    const int first = std::exchange(m_nNumbered, m_pList->GetCount());
    for (int i = first; i < m_pList->GetCount(); ++i) {
        if (IListItemUI* const row = RowAt(i))
            row->SetIndex(i);
    }
}

void CListUI::RowsInserted(int first, int count)
{
    m_pSelection->Insert(first, count);
    for (int* const marked : {&m_iCurSel, &m_iFirstSel, &m_iCurSelActivate, &m_iExpandedItem}) {
        if (*marked >= first)
            *marked += count;
    }
    for (int i = first; i < first + count; ++i) {
        if (IListItemUI* const row = RowAt(i)) {
            row->SetOwner(this);
            row->SetIndex(i);
        }
    }
    if (m_nNumbered >= first)
        m_nNumbered = first + count;
    if (HasOrderOfItsOwn())
        NumberRows();

    int selected = -1;
    for (int i = first; i < first + count; ++i) {
        const IListItemUI* const row = RowAt(i);
        if (row == nullptr || !row->IsSelected())
            continue;
        m_pSelection->Set(i, true);
        selected = i;
    }
    if (selected < 0)
        return;
    m_iCurSel = m_iFirstSel = selected;
    try {
        if (!m_bMultiSel)
            ChangeOthers(selected);
        QueueSelected(m_bMultiSel ? -1 : selected);
    } catch (const std::bad_alloc&) {
        ReportOutOfMemory(); // the rows are in, though nobody is told of the selection
    }
}

void CListUI::RowsRemoved(int first, const CStdPtrArray& rows)
{
    const int count = rows.GetSize();
    const int selected = m_pSelection->Count();
    m_pSelection->Remove(first, count);
    for (int* const marked : {&m_iCurSel, &m_iFirstSel, &m_iCurSelActivate, &m_iExpandedItem}) {
        if (*marked >= first + count)
            *marked -= count;
        else if (*marked >= first)
            *marked = -1;
    }
    for (int i = 0; i < count; ++i) {
        auto* const row = static_cast<CControlUI*>(rows[i]);
        if (auto* const item = static_cast<IListItemUI*>(row->GetInterface(DUI_CTR_LISTITEM))) {
            item->SetOwner(nullptr);
            item->SetIndex(-1);
        }
    }
    m_nNumbered = std::min(m_nNumbered, first);
    if (HasOrderOfItsOwn())
        NumberRows();
    if (m_pSelection->Count() != selected)
        QueueSelected(-1);
}

void CListUI::RowsRemoved()
{
    const bool hadSelection = m_pSelection->Count() > 0;
    m_pSelection->Clear();
    m_nNumbered = 0;
    m_iCurSel = m_iFirstSel = m_iCurSelActivate = m_iExpandedItem = -1;
    if (hadSelection)
        QueueSelected(-1);
}

void CListUI::RowsSorted(const std::vector<int>& oldIndices)
{
    m_pSelection->Permute(oldIndices);
    m_nNumbered = 0;
    NumberRows();
    for (int* const marked : {&m_iCurSel, &m_iFirstSel, &m_iCurSelActivate, &m_iExpandedItem}) {
        const auto found = std::find(oldIndices.begin(), oldIndices.end(), *marked);
        if (*marked >= 0 && found != oldIndices.end())
            *marked = static_cast<int>(found - oldIndices.begin());
    }
}

} // namespace DuiLib
