#pragma once

#include <UIlib.h>

#include <vector>

// Lists for tests.
namespace test {

// Holds a key down for everybody who asks for the keyboard's state.
class HeldKey {
public:
    explicit HeldKey(int virtualKey)
    {
        ::GetKeyboardState(m_before);
        BYTE pressed[256];
        ::GetKeyboardState(pressed);
        pressed[virtualKey] = 0x80;
        ::SetKeyboardState(pressed);
    }
    ~HeldKey() { ::SetKeyboardState(m_before); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    BYTE m_before[256];
};

// Rows of one height in design pixels, tagged 0, 1, 2 and so on.
template <class Row = DuiLib::CListLabelElementUI>
std::vector<Row*> AddRows(DuiLib::CListUI& list, int count, int height = 20)
{
    std::vector<Row*> rows;
    for (int i = 0; i < count; ++i) {
        auto* const row = new Row;
        row->SetFixedHeight(height);
        row->SetTag(static_cast<UINT_PTR>(i));
        list.Add(row);
        rows.push_back(row);
    }
    return rows;
}

inline std::vector<int> SelectedRows(const DuiLib::CListUI& list)
{
    std::vector<int> selected;
    for (int i = list.GetNextSelItem(-1); i >= 0; i = list.GetNextSelItem(i))
        selected.push_back(i);
    return selected;
}

inline DuiLib::IListItemUI* ItemAt(const DuiLib::CListUI& list, int index)
{
    return static_cast<DuiLib::IListItemUI*>(list.GetItemAt(index)->GetInterface(DUI_CTR_LISTITEM));
}

} // namespace test
