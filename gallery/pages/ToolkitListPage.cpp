#include "gallery/pages/Pages.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr int kFewRows = 40;
constexpr int kManyRows = 100'000;
constexpr int kRowHeight = 26; // design pixels
constexpr std::uint32_t kLargestFile = 4'000'000;

enum Column { kName, kSize, kKind, kColumns };

constexpr const wchar_t* kHeads[kColumns] = {L"list.name", L"list.size", L"list.kind"};
constexpr const wchar_t* kKinds[] = {L"XML", L"PNG", L"SVG", L"TTF", L"DLL"};
constexpr const wchar_t* kUp =
    L"file='pictures/sort-up.svg' size='10,10' align='right,vcenter' padding='0,0,8,0'";
constexpr const wchar_t* kDown =
    L"file='pictures/sort-down.svg' size='10,10' align='right,vcenter' padding='0,0,8,0'";

// What stands in a row of the table. Everything follows from its number, so that a row needs to
// keep nothing else.
struct File {
    std::uint32_t number;

    std::uint32_t Mixed() const { return number * 2'654'435'761u; }
    std::uint32_t Size() const { return Mixed() % kLargestFile; }
    std::size_t Kind() const { return Mixed() / 7 % std::size(kKinds); }
    std::wstring Name() const
    {
        std::wstring digits = std::to_wstring(number);
        digits.insert(0, digits.size() < 6 ? 6 - digits.size() : 0, L'0');
        return L"file-" + digits;
    }
};

File FileOf(UINT_PTR row)
{
    const auto* const control = reinterpret_cast<const CControlUI*>(row);
    return {static_cast<std::uint32_t>(control->GetTag())};
}

struct Order {
    int column = kName;
    bool descending = false;
};

int CALLBACK Compare(UINT_PTR left, UINT_PTR right, UINT_PTR data)
{
    const auto& order = *reinterpret_cast<const Order*>(data);
    const File first = FileOf(order.descending ? right : left);
    const File second = FileOf(order.descending ? left : right);
    const auto compare = [](auto one, auto other) { return one < other ? -1 : one > other; };
    switch (order.column) {
    case kSize:
        return compare(first.Size(), second.Size());
    case kKind:
        return compare(std::wstring_view(kKinds[first.Kind()]),
                       std::wstring_view(kKinds[second.Kind()]));
    default:
        return compare(first.number, second.number);
    }
}

class ToolkitListPage : public Page, public IListCallbackUI {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (!notification.pSender || !Table())
            return;
        const CDuiString name = notification.pSender->GetName();
        if (notification.sType == DUI_MSGTYPE_HEADERCLICK)
            SortBy(name);
        else if (notification.sType == DUI_MSGTYPE_ITEMSELECT)
            ShowSelection();
        else if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && name == L"list.multi")
            Table()->SetMultiSelect(notification.wParam != FALSE);
        else if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && name == L"list.alternate")
            Table()->SetAlternateBk(notification.wParam != FALSE);
    }

    // IListCallbackUI: the text is good until the next one is asked for.
    LPCTSTR GetItemText(CControlUI* list, int row, int column) override
    {
        const auto* const container = dynamic_cast<CListUI*>(list);
        const CControlUI* const item = container ? container->GetItemAt(row) : nullptr;
        if (!item)
            return L"";
        const File file{static_cast<std::uint32_t>(item->GetTag())};
        if (column == kKind)
            return kKinds[file.Kind()];
        m_text = column == kName ? file.Name() : std::to_wstring(file.Size());
        return m_text.c_str();
    }
    DWORD GetItemTextColor(CControlUI*, int, int, int) override { return 0; }

protected:
    void Show() override
    {
        if (auto* const table = Table())
            table->SetTextCallback(this);
        Fill(kFewRows);
        OnClickOf(L"list.few", [this] { Fill(kFewRows); });
        OnClickOf(L"list.many", [this] { Fill(kManyRows); });
    }
    void Hide() override
    {
        if (auto* const table = Table())
            table->SetTextCallback(nullptr);
    }

private:
    CListUI* Table() const { return Find<CListUI>(L"list.table"); }

    void Fill(int count)
    {
        CListUI* const table = Table();
        if (!table)
            return;
        table->RemoveAll();
        for (int i = 0; i < count; ++i) {
            auto row = std::make_unique<CListTextElementUI>();
            row->SetTag(static_cast<UINT_PTR>(i));
            row->SetFixedHeight(kRowHeight);
            if (table->Add(row.get()))
                row.release();
        }
        Sort({});
        table->SelectItem(0);
        ShowSelection();
    }

    void SortBy(const CDuiString& head)
    {
        const auto* const found =
            std::find_if(std::begin(kHeads), std::end(kHeads),
                         [&head](const wchar_t* name) { return head == name; });
        if (found == std::end(kHeads))
            return;
        const int column = static_cast<int>(found - std::begin(kHeads));
        Sort({column, column == m_order.column && !m_order.descending});
    }

    void Sort(const Order& order)
    {
        m_order = order;
        Table()->SortItems(Compare, reinterpret_cast<UINT_PTR>(&m_order));
        for (int column = 0; column < kColumns; ++column) {
            auto* const head = Find<CListHeaderItemUI>(kHeads[column]);
            if (head)
                head->SetForeImage(column != order.column ? L"" : order.descending ? kDown : kUp);
        }
    }

    void ShowSelection() const
    {
        SetText(L"list.state", (std::to_wstring(Table()->GetSelectItemCount()) + L" / " +
                                std::to_wstring(Table()->GetCount()))
                                   .c_str());
    }

    Order m_order;
    std::wstring m_text;
};

} // namespace

std::shared_ptr<Page> MakeToolkitListPage(GalleryWindow& window)
{
    return std::make_shared<ToolkitListPage>(window);
}

} // namespace gallery
