#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

using namespace DuiLib;
using test::ControlHost;

namespace {

constexpr int kRows = 40;
constexpr int kRowHeight = 20;

// What an application's handler may do to the list whose notification it handles.
enum class Deed {
    RemoveTheRow,
    RemoveAllRows,
    RemoveTheList,
    DeleteTheListAtOnce,
    RefillTheList,
    SortTheList,
    SelectAnotherRow,
    HideTheList,
    CloseTheWindow,
};

struct Case {
    const wchar_t* notification;
    std::function<void(ControlHost&)> trigger;
    const char* name;
};

constexpr std::pair<Deed, const char*> kDeeds[] = {
    {Deed::RemoveTheRow, "RemoveTheRow"},
    {Deed::RemoveAllRows, "RemoveAllRows"},
    {Deed::RemoveTheList, "RemoveTheList"},
    {Deed::DeleteTheListAtOnce, "DeleteTheListAtOnce"},
    {Deed::RefillTheList, "RefillTheList"},
    {Deed::SortTheList, "SortTheList"},
    {Deed::SelectAnotherRow, "SelectAnotherRow"},
    {Deed::HideTheList, "HideTheList"},
    {Deed::CloseTheWindow, "CloseTheWindow"},
};

int CALLBACK Backwards(UINT_PTR left, UINT_PTR right, UINT_PTR)
{
    const auto tag = [](UINT_PTR row) { return reinterpret_cast<CControlUI*>(row)->GetTag(); };
    return tag(left) > tag(right) ? -1 : tag(left) < tag(right);
}

void Fill(CListUI& list)
{
    for (int i = 0; i < kRows; ++i) {
        auto* const row = new CListLabelElementUI;
        row->SetFixedHeight(kRowHeight);
        row->SetTag(static_cast<UINT_PTR>(i));
        list.Add(row);
    }
}

// Does the deed once, at the first notification of a type.
class Handler : public INotifyUI {
public:
    Handler(ControlHost& host, CListUI& list, std::wstring type, Deed deed)
        : m_host(host), m_list(list), m_type(std::move(type)), m_deed(deed)
    {
        m_host.Manager().AddNotifier(this);
    }
    ~Handler() { m_host.Manager().RemoveNotifier(this); }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    bool HasRun() const { return m_hasRun; }

    void Notify(TNotifyUI& notification) override
    {
        if (m_hasRun || m_type != notification.sType.GetData())
            return;
        m_hasRun = true;
        auto* const parent = static_cast<CContainerUI*>(m_list.GetParent());
        switch (m_deed) {
        case Deed::RemoveTheRow:
            m_list.SetDelayedDestroy(false);
            m_list.RemoveAt(m_list.GetCurSel() >= 0 ? m_list.GetCurSel() : 1);
            break;
        case Deed::RemoveAllRows:
            m_list.SetDelayedDestroy(false);
            m_list.RemoveAll();
            break;
        case Deed::RemoveTheList:
            parent->Remove(&m_list);
            break;
        case Deed::DeleteTheListAtOnce:
            parent->SetDelayedDestroy(false);
            parent->Remove(&m_list);
            break;
        case Deed::RefillTheList:
            m_list.SetDelayedDestroy(false);
            m_list.RemoveAll();
            Fill(m_list);
            break;
        case Deed::SortTheList:
            m_list.SortItems(Backwards, 0);
            break;
        case Deed::SelectAnotherRow:
            m_list.SelectItem(kRows - 1);
            break;
        case Deed::HideTheList:
            m_list.SetVisible(false);
            break;
        case Deed::CloseTheWindow:
            ::DestroyWindow(m_host.Window());
            break;
        }
    }

private:
    ControlHost& m_host;
    CListUI& m_list;
    std::wstring m_type;
    Deed m_deed;
    bool m_hasRun = false;
};

const Case kCases[] = {
    {L"itemselect", [](ControlHost& host) { host.Press(20, 30); }, "SelectByMouse"},
    {L"itemselect", [](ControlHost& host) { host.KeyDown(VK_DOWN); }, "SelectByKey"},
    {L"itemselect", [](ControlHost& host) { host.KeyDown(VK_END); }, "SelectByKeyOutOfSight"},
    {L"itemclick", [](ControlHost& host) { host.Click(20, 30); }, "Click"},
    {L"itemactivate", [](ControlHost& host) { host.DoubleClick(20, 30); }, "DoubleClick"},
    {L"itemactivate", [](ControlHost& host) { host.KeyDown(VK_RETURN); }, "Return"},
    {L"itemdbclick", [](ControlHost& host) { host.DoubleClick(20, 30); }, "AfterDoubleClick"},
    {L"scroll", [](ControlHost& host) { host.Wheel(20, 30, -120); }, "Wheel"},
    {L"scroll", [](ControlHost& host) { host.KeyDown(VK_END); }, "ScrollByKey"},
    {L"setfocus", [](ControlHost& host) { host.Press(20, 50); }, "Focus"},
};

class ListHandlerTest
    : public testing::TestWithParam<std::tuple<int, std::pair<Deed, const char*>>> {
protected:
    ControlHost host{120, 100};
};

TEST_P(ListHandlerTest, MayDoAnything)
{
    const Case& when = kCases[std::get<0>(GetParam())];
    auto& list = host.Add<CListUI>();
    list.SetAttribute(L"header", L"hidden");
    list.EnableScrollBar(true, false);
    list.SetMultiSelect(true);
    Fill(list);
    host.Layout();
    list.SelectItem(2);
    list.SetFocus();
    host.Pump();

    const bool closes = std::get<1>(GetParam()).first == Deed::CloseTheWindow;
    const bool ends = closes || std::get<1>(GetParam()).first == Deed::RemoveTheList ||
                      std::get<1>(GetParam()).first == Deed::DeleteTheListAtOnce;
    Handler handler(host, list, when.notification, std::get<1>(GetParam()).first);
    if (std::wstring_view(when.notification) == L"setfocus")
        host.Manager().SetFocus(nullptr);
    when.trigger(host);
    host.Pump();
    ASSERT_TRUE(handler.HasRun());
    if (!closes) {
        host.Paint();
        host.MoveMouse(20, 30);
        host.Wheel(20, 30, 120);
        host.KeyDown(VK_UP);
    }
    if (ends)
        return;

    // The list goes on as before.
    list.SetVisible(true);
    host.Layout();
    ASSERT_EQ(list.SelectItem(0), list.GetCount() > 0);
    for (int i = 0; i < list.GetCount(); ++i) {
        auto* const item =
            static_cast<IListItemUI*>(list.GetItemAt(i)->GetInterface(DUI_CTR_LISTITEM));
        ASSERT_EQ(item->GetIndex(), i);
        ASSERT_EQ(item->IsSelected(), i == 0);
    }
}

std::string NameOf(const testing::TestParamInfo<ListHandlerTest::ParamType>& info)
{
    return std::string(kCases[std::get<0>(info.param)].name) + "Then" +
           std::get<1>(info.param).second;
}

INSTANTIATE_TEST_SUITE_P(Deeds, ListHandlerTest,
                         testing::Combine(testing::Range(0, static_cast<int>(std::size(kCases))),
                                          testing::ValuesIn(kDeeds)),
                         NameOf);

} // namespace
