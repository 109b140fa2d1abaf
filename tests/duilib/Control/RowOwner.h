#pragma once

#include "support/ControlHost.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

// The least that rows ask of the control that they are in: rows from top to bottom, one list look,
// one selection. It notes what rows ask for, and the events that they pass on.
class RowOwner : public DuiLib::CVerticalLayoutUI, public DuiLib::IListUI {
public:
    RowOwner()
    {
        info.nFont = -1;
        info.nColumns = 0;
        info.uTextStyle = DT_LEFT | DT_VCENTER | DT_SINGLELINE;
    }

    template <class Row>
    Row& AddRow(int height = 20)
    {
        auto* const row = new Row;
        row->SetFixedHeight(height);
        row->SetOwner(this);
        row->SetIndex(GetCount());
        Add(row);
        return *row;
    }

    DuiLib::TListInfoUI info;
    std::wstring asked;        // "select 1", "multi 0", "unselect 2"
    std::vector<int> passedOn; // types of events
    DuiLib::IListCallbackUI* texts = nullptr;
    UINT type = DuiLib::LT_LIST;

    // IListOwnerUI:
    UINT GetListType() override { return type; }
    DuiLib::TListInfoUI* GetListInfo() override { return &info; }
    int GetCurSel() const override { return m_selected; }
    bool SelectItem(int index, bool = false) override
    {
        if (index == m_selected)
            return true;
        Note(L"select", index);
        const int former = std::exchange(m_selected, index);
        if (RowAt(former) != nullptr)
            RowAt(former)->Select(false);
        if (RowAt(index) == nullptr || !RowAt(index)->Select(true))
            return false;
        if (GetManager() != nullptr)
            GetManager()->SendNotify(this, L"itemselect", static_cast<WPARAM>(index));
        return true;
    }
    bool SelectMultiItem(int index, bool = false) override
    {
        Note(L"multi", index);
        return true;
    }
    bool UnSelectItem(int index, bool = false) override
    {
        if (index == m_selected) {
            Note(L"unselect", index);
            m_selected = -1;
        }
        return true;
    }
    void DoEvent(DuiLib::TEventUI& event) override { passedOn.push_back(event.Type); }

    // IListUI:
    DuiLib::CListHeaderUI* GetHeader() const override { return nullptr; }
    DuiLib::CContainerUI* GetList() const override { return const_cast<RowOwner*>(this); }
    DuiLib::IListCallbackUI* GetTextCallback() const override { return texts; }
    void SetTextCallback(DuiLib::IListCallbackUI* callback) override { texts = callback; }
    bool ExpandItem(int, bool) override { return false; }
    int GetExpandedItem() const override { return -1; }
    void SetMultiSelect(bool) override {}
    bool IsMultiSelect() const override { return true; }
    void SelectAllItems() override {}
    void UnSelectAllItems() override {}
    int GetSelectItemCount() const override { return m_selected >= 0 ? 1 : 0; }
    int GetNextSelItem(int) const override { return -1; }

    // CControlUI:
    LPVOID GetInterface(LPCTSTR name) override
    {
        if (std::wstring_view(name) == L"IList" || std::wstring_view(name) == L"IListOwner")
            return static_cast<DuiLib::IListUI*>(this);
        return CVerticalLayoutUI::GetInterface(name);
    }

    bool Got(int event) const
    {
        return std::find(passedOn.begin(), passedOn.end(), event) != passedOn.end();
    }

private:
    DuiLib::IListItemUI* RowAt(int index) const
    {
        DuiLib::CControlUI* const control = GetItemAt(index);
        return control != nullptr
                   ? static_cast<DuiLib::IListItemUI*>(control->GetInterface(DUI_CTR_LISTITEM))
                   : nullptr;
    }
    void Note(const wchar_t* what, int index)
    {
        asked += (asked.empty() ? L"" : L" ") + std::wstring(what) + L' ' + std::to_wstring(index);
    }

    int m_selected = -1;
};

} // namespace test
