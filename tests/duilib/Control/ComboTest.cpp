#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace DuiLib;
using test::AddColumns;
using test::Argb;
using test::ControlHost;
using test::Picture;
using test::SentTypes;

namespace {

constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kYellow{0xFFFFFF00};
constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kFocusFrame{0xFF007DFF};
constexpr Argb kArrow{0xFF5A6472};
constexpr int kNoIndex = -1;

// Runs a function at each notification of a type.
class Handler : public INotifyUI {
public:
    Handler(CPaintManagerUI& manager, std::wstring type, std::function<void(TNotifyUI&)> action)
        : m_manager(manager), m_type(std::move(type)), m_action(std::move(action))
    {
        m_manager.AddNotifier(this);
    }
    ~Handler() { m_manager.RemoveNotifier(this); }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    void Notify(TNotifyUI& notification) override
    {
        if (m_type == notification.sType.GetData())
            m_action(notification);
    }

private:
    CPaintManagerUI& m_manager;
    std::wstring m_type;
    std::function<void(TNotifyUI&)> m_action;
};

// A delegate target that counts its calls.
struct CallCounter {
    bool Count(void*)
    {
        ++calls;
        return true;
    }
    bool CountClick(void* notification)
    {
        calls += static_cast<TNotifyUI*>(notification)->sType == DUI_MSGTYPE_CLICK ? 1 : 0;
        return true;
    }
    int calls = 0;
};

// The open list of this thread, or null.
HWND DropWindow()
{
    struct Search {
        static BOOL CALLBACK Look(HWND window, LPARAM found)
        {
            wchar_t name[64]{};
            ::GetClassNameW(window, name, 64);
            if (std::wstring(name) != L"DuiComboDropWnd" || !::IsWindowVisible(window))
                return TRUE;
            *reinterpret_cast<HWND*>(found) = window;
            return FALSE;
        }
    };
    HWND found = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &Search::Look, reinterpret_cast<LPARAM>(&found));
    return found;
}

RECT PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

RECT WorkArea()
{
    RECT area{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

void Key(HWND window, int virtualKey)
{
    MSG message{};
    message.hwnd = window;
    message.message = WM_KEYDOWN;
    message.wParam = static_cast<WPARAM>(virtualKey);
    if (!CPaintManagerUI::TranslateMessage(&message))
        ::DispatchMessageW(&message);
}

void AltKey(HWND window, int virtualKey)
{
    MSG message{};
    message.hwnd = window;
    message.message = WM_SYSKEYDOWN;
    message.wParam = static_cast<WPARAM>(virtualKey);
    message.lParam = 1 << 29;
    if (!CPaintManagerUI::TranslateMessage(&message))
        ::DispatchMessageW(&message);
}

void ClickInside(HWND window, const CControlUI& control)
{
    const RECT& place = control.GetPos();
    const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ::SendMessageW(window, WM_MOUSEMOVE, 0, point);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    ::SendMessageW(window, WM_LBUTTONUP, 0, point);
}

class ComboTest : public testing::Test {
protected:
    ControlHost host{200, 60};

    CComboUI& Make(int items = 3, ControlHost* in = nullptr)
    {
        ControlHost& where = in ? *in : host;
        auto* const combo = new CComboUI;
        combo->SetName(L"combo");
        combo->SetFixedWidth(120);
        combo->SetFixedHeight(30);
        combo->SetFloat(true);
        where.Adopt(combo);
        for (int i = 0; i < items; ++i)
            AddItem(*combo, std::wstring(1, static_cast<wchar_t>(L'a' + i)).c_str());
        where.Layout();
        where.ClearSent();
        return *combo;
    }

    static CListLabelElementUI& AddItem(CComboUI& combo, const wchar_t* text)
    {
        auto* const item = new CListLabelElementUI;
        item->SetText(text);
        combo.Add(item);
        return *item;
    }

    static CListLabelElementUI& Item(CComboUI& combo, int index)
    {
        return *static_cast<CListLabelElementUI*>(combo.GetItemAt(index));
    }

    // The items from the top, as "abc".
    static std::wstring Texts(CComboUI& combo)
    {
        std::wstring texts;
        for (int i = 0; i < combo.GetCount(); ++i)
            texts += combo.GetItemAt(i)->GetText().GetData();
        return texts;
    }
};

TEST_F(ComboTest, IsAListOwnerOfItsOwnKind)
{
    CComboUI combo;
    EXPECT_STREQ(combo.GetClass(), L"ComboUI");
    EXPECT_EQ(combo.GetInterface(L"combo"), &combo);
    EXPECT_EQ(combo.GetInterface(L"IListOwner"), static_cast<IListOwnerUI*>(&combo));
    EXPECT_EQ(combo.GetInterface(L"Container"), static_cast<CContainerUI*>(&combo));
    EXPECT_EQ(combo.GetListType(), static_cast<UINT>(LT_COMBO));
    EXPECT_NE(combo.GetControlFlags() & UIFLAG_TABSTOP, 0u);
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    EXPECT_TRUE(combo.GetText().IsEmpty());
    EXPECT_EQ(combo.GetDropBoxSize().cx, 0);
    EXPECT_EQ(combo.GetDropBoxSize().cy, 150);
    EXPECT_EQ(combo.GetListInfo()->dwSelectedBkColor, 0xFFC1E3FFu);
}

TEST_F(ComboTest, IsBuiltWithItsItemsFromASkin)
{
    ASSERT_NE(host.Load(LR"(<Window><VerticalLayout>
        <Combo name="c" height="30">
          <ListLabelElement text="one"/><ListLabelElement text="two" selected="true"/>
        </Combo></VerticalLayout></Window>)"),
              nullptr);
    auto& combo = host.Find<CComboUI>(L"c");
    EXPECT_EQ(combo.GetCount(), 2);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_STREQ(combo.GetText(), L"two");
    EXPECT_TRUE(SentTypes(host).empty());
}

TEST_F(ComboTest, AttributesSetWhatTheirSettersSet)
{
    auto& combo = Make();
    const struct {
        const wchar_t* name;
        const wchar_t* value;
        std::function<bool()> holds;
    } rows[] = {
        {L"align", L"right", [&] { return (combo.GetTextStyle() & DT_RIGHT) != 0; }},
        {L"valign", L"bottom", [&] { return (combo.GetTextStyle() & DT_BOTTOM) != 0; }},
        {L"endellipsis", L"false", [&] { return (combo.GetTextStyle() & DT_END_ELLIPSIS) == 0; }},
        {L"wordbreak", L"true", [&] { return (combo.GetTextStyle() & DT_WORDBREAK) != 0; }},
        {L"noprefix", L"true", [&] { return (combo.GetTextStyle() & DT_NOPREFIX) != 0; }},
        {L"font", L"7", [&] { return combo.GetFont() == 7; }},
        {L"textcolor", L"#FF112233", [&] { return combo.GetTextColor() == 0xFF112233; }},
        {L"disabledtextcolor", L"#FF112234",
         [&] { return combo.GetDisabledTextColor() == 0xFF112234; }},
        {L"textpadding", L"1,2,3,4", [&] { return combo.GetTextPadding().right == 3; }},
        {L"showhtml", L"true", [&] { return combo.IsShowHtml(); }},
        {L"normalimage", L"n", [&] { return std::wstring(combo.GetNormalImage()) == L"n"; }},
        {L"hotimage", L"h", [&] { return std::wstring(combo.GetHotImage()) == L"h"; }},
        {L"pushedimage", L"p", [&] { return std::wstring(combo.GetPushedImage()) == L"p"; }},
        {L"focusedimage", L"f", [&] { return std::wstring(combo.GetFocusedImage()) == L"f"; }},
        {L"disabledimage", L"d", [&] { return std::wstring(combo.GetDisabledImage()) == L"d"; }},
        {L"scrollselect", L"false", [&] { return !combo.GetScrollSelect(); }},
        {L"showshadow", L"true", [&] { return combo.IsShowShadow(); }},
        {L"dropbox", L"bkcolor=\"#FF000001\"",
         [&] { return combo.GetDropBoxAttributeList() == L"bkcolor=\"#FF000001\""; }},
        {L"dropboxsize", L"70,80",
         [&] { return combo.GetDropBoxSize().cx == 70 && combo.GetDropBoxSize().cy == 80; }},
        {L"dropboxinset", L"5,6,7,8", [&] { return combo.GetDropBoxInset().bottom == 8; }},
        {L"itemfont", L"3", [&] { return combo.GetListInfo()->nFont == 3; }},
        {L"itemalign", L"center",
         [&] { return (combo.GetListInfo()->uTextStyle & DT_CENTER) != 0; }},
        {L"itemvalign", L"top",
         [&] { return (combo.GetListInfo()->uTextStyle & DT_VCENTER) == 0; }},
        {L"itemendellipsis", L"true",
         [&] { return (combo.GetListInfo()->uTextStyle & DT_END_ELLIPSIS) != 0; }},
        {L"itemtextpadding", L"1,2,3,4", [&] { return combo.GetItemTextPadding().top == 2; }},
        {L"itemtextcolor", L"#FF000010", [&] { return combo.GetItemTextColor() == 0xFF000010; }},
        {L"itembkcolor", L"#FF000011", [&] { return combo.GetItemBkColor() == 0xFF000011; }},
        {L"itembkimage", L"b", [&] { return std::wstring(combo.GetItemBkImage()) == L"b"; }},
        {L"itemaltbk", L"true", [&] { return combo.IsAlternateBk(); }},
        {L"itemselectedtextcolor", L"#FF000012",
         [&] { return combo.GetSelectedItemTextColor() == 0xFF000012; }},
        {L"itemselectedbkcolor", L"#FF000013",
         [&] { return combo.GetSelectedItemBkColor() == 0xFF000013; }},
        {L"itemselectedimage", L"s",
         [&] { return std::wstring(combo.GetSelectedItemImage()) == L"s"; }},
        {L"itemhottextcolor", L"#FF000014",
         [&] { return combo.GetHotItemTextColor() == 0xFF000014; }},
        {L"itemhotbkcolor", L"#FF000015", [&] { return combo.GetHotItemBkColor() == 0xFF000015; }},
        {L"itemhotimage", L"t", [&] { return std::wstring(combo.GetHotItemImage()) == L"t"; }},
        {L"itemdisabledtextcolor", L"#FF000016",
         [&] { return combo.GetDisabledItemTextColor() == 0xFF000016; }},
        {L"itemdisabledbkcolor", L"#FF000017",
         [&] { return combo.GetDisabledItemBkColor() == 0xFF000017; }},
        {L"itemdisabledimage", L"u",
         [&] { return std::wstring(combo.GetDisabledItemImage()) == L"u"; }},
        {L"itemforeimage", L"v", [&] { return combo.GetListInfo()->sForeImage == L"v"; }},
        {L"itemhotforeimage", L"w", [&] { return combo.GetListInfo()->sHotForeImage == L"w"; }},
        {L"itemselectedforeimage", L"x",
         [&] { return combo.GetListInfo()->sSelectedForeImage == L"x"; }},
        {L"itemlinecolor", L"#FF000018", [&] { return combo.GetItemLineColor() == 0xFF000018; }},
        {L"itemshowrowline", L"true", [&] { return combo.GetListInfo()->bShowRowLine; }},
        {L"itemshowcolumnline", L"true", [&] { return combo.GetListInfo()->bShowColumnLine; }},
        {L"itemshowhtml", L"true", [&] { return combo.IsItemShowHtml(); }},
        {L"itemrselected", L"true", [&] { return combo.IsItemRSelected(); }},
        {L"multiexpanding", L"true", [&] { return combo.GetListInfo()->bMultiExpandable; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(row.holds());
        combo.SetAttribute(row.name, row.value);
        EXPECT_TRUE(row.holds());
    }
}

TEST_F(ComboTest, LengthsAreScaledByTheirGetters)
{
    ControlHost large{200, 60, 144};
    auto& combo = Make(1, &large);
    combo.SetDropBoxSize({100, 40});
    combo.SetTextPadding({2, 4, 6, 8});
    combo.SetItemTextPadding({2, 4, 6, 8});
    EXPECT_EQ(combo.GetDropBoxSize().cx, 150);
    EXPECT_EQ(combo.GetTextPadding().left, 3);
    EXPECT_EQ(combo.GetItemTextPadding().top, 6);
}

TEST_F(ComboTest, SelectingTellsTheNewAndTheOldIndex)
{
    auto& combo = Make();
    EXPECT_TRUE(combo.SelectItem(1));
    EXPECT_TRUE(combo.SelectItem(2));
    EXPECT_TRUE(combo.SelectItem(2));
    const auto sent = host.Sent(L"itemselect");
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(static_cast<int>(sent[0].wParam), 1);
    EXPECT_EQ(static_cast<int>(sent[0].lParam), kNoIndex);
    EXPECT_EQ(static_cast<int>(sent[1].wParam), 2);
    EXPECT_EQ(static_cast<int>(sent[1].lParam), 1);
    EXPECT_EQ(sent[1].sender, &combo);
    EXPECT_TRUE(Item(combo, 2).IsSelected());
    EXPECT_FALSE(Item(combo, 1).IsSelected());
    EXPECT_STREQ(combo.GetText(), L"c");
}

TEST_F(ComboTest, MinusOneSelectsNothing)
{
    auto& combo = Make();
    combo.SelectItem(1);
    EXPECT_TRUE(combo.SelectItem(-1));
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    EXPECT_FALSE(Item(combo, 1).IsSelected());
    EXPECT_TRUE(combo.GetText().IsEmpty());
    EXPECT_EQ(static_cast<int>(host.Sent(L"itemselect").back().lParam), 1);
}

TEST_F(ComboTest, RefusesItemsThatCannotBeChosen)
{
    auto& combo = Make(4);
    combo.SelectItem(0);
    Item(combo, 1).SetEnabled(false);
    Item(combo, 2).SetVisible(false);
    host.ClearSent();
    for (const int index : {1, 2, 4, -2}) {
        SCOPED_TRACE(index);
        EXPECT_FALSE(combo.SelectItem(index));
    }
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_TRUE(host.Sent(L"itemselect").empty());
}

TEST_F(ComboTest, OneItemIsSelectedAtATime)
{
    auto& combo = Make();
    EXPECT_TRUE(combo.SelectMultiItem(0));
    EXPECT_TRUE(combo.SelectMultiItem(2));
    EXPECT_FALSE(Item(combo, 0).IsSelected());
    EXPECT_TRUE(Item(combo, 1).Select());
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_FALSE(combo.UnSelectItem(2));
    EXPECT_FALSE(combo.UnSelectItem(1, true));
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_TRUE(combo.UnSelectItem(2, true));
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    combo.SelectItem(0);
    EXPECT_TRUE(combo.UnSelectItem(0));
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
}

TEST_F(ComboTest, InsertingAndMovingKeepTheSelectedItem)
{
    auto& combo = Make();
    combo.SelectItem(1);
    auto* const first = new CListLabelElementUI;
    first->SetText(L"0");
    EXPECT_TRUE(combo.AddAt(first, 0));
    EXPECT_EQ(Texts(combo), L"0abc");
    EXPECT_EQ(combo.GetCurSel(), 2);
    EXPECT_EQ(Item(combo, 3).GetIndex(), 3);
    EXPECT_EQ(first->GetOwner(), static_cast<IListOwnerUI*>(&combo));

    EXPECT_TRUE(combo.SetItemIndex(first, 3));
    EXPECT_EQ(Texts(combo), L"abc0");
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(first->GetIndex(), 3);
    EXPECT_FALSE(combo.Add(first));
    EXPECT_FALSE(combo.AddAt(nullptr, 0));
}

TEST_F(ComboTest, RemovingTheSelectedItemSelectsANeighbour)
{
    auto& combo = Make(4);
    combo.SelectItem(2);
    host.ClearSent();
    EXPECT_TRUE(combo.RemoveAt(0));
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_TRUE(host.Sent(L"itemselect").empty());

    EXPECT_TRUE(combo.RemoveAt(1));
    EXPECT_EQ(Texts(combo), L"bd");
    EXPECT_STREQ(combo.GetText(), L"d");
    EXPECT_TRUE(combo.RemoveAt(1));
    EXPECT_STREQ(combo.GetText(), L"b");
    host.ClearSent();
    EXPECT_TRUE(combo.RemoveAt(0));
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    EXPECT_EQ(static_cast<int>(host.Sent(L"itemselect").back().wParam), kNoIndex);
    EXPECT_FALSE(combo.RemoveAt(0));
}

TEST_F(ComboTest, AnItemThatIsTakenOutBelongsToNobody)
{
    auto& combo = Make();
    combo.SetAutoDestroy(false);
    const std::unique_ptr<CListLabelElementUI> kept(&Item(combo, 1));
    combo.SelectItem(1);
    EXPECT_TRUE(combo.Remove(kept.get()));
    EXPECT_EQ(kept->GetOwner(), nullptr);
    EXPECT_FALSE(kept->IsSelected());
    EXPECT_EQ(kept->GetManager(), nullptr);
    EXPECT_EQ(combo.GetCurSel(), 1);
    combo.SetAutoDestroy(true);
}

TEST_F(ComboTest, RemoveAllEndsTheSelection)
{
    auto& combo = Make();
    combo.SelectItem(1);
    host.ClearSent();
    combo.RemoveAll();
    EXPECT_EQ(combo.GetCount(), 0);
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    EXPECT_EQ(host.Sent(L"itemselect").size(), 1u);
    EXPECT_TRUE(combo.GetText().IsEmpty());
}

TEST_F(ComboTest, SortsByTextWhateverTheCaseAndKeepsTheSelectedItem)
{
    auto& combo = Make(0);
    for (const wchar_t* text : {L"b", L"C", L"a", L"B"})
        AddItem(combo, text);
    combo.SelectItem(0);
    combo.SortItems();
    EXPECT_EQ(Texts(combo), L"abBC");
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(Item(combo, 3).GetIndex(), 3);
}

TEST_F(ComboTest, SortsByTheCallersComparison)
{
    auto& combo = Make(4);
    combo.SelectItem(0);
    const PULVCompareFunc backwards = [](UINT_PTR first, UINT_PTR second, UINT_PTR data) -> int {
        const auto text = [](UINT_PTR item) {
            return reinterpret_cast<CControlUI*>(item)->GetText();
        };
        return text(second).Compare(text(first)) * static_cast<int>(data);
    };
    EXPECT_TRUE(combo.SortItems(backwards, 1));
    EXPECT_EQ(Texts(combo), L"dcba");
    EXPECT_EQ(combo.GetCurSel(), 3);
    EXPECT_FALSE(combo.SortItems(nullptr, 0));
}

TEST_F(ComboTest, KeysMoveTheSelectionOfTheClosedCombo)
{
    auto& combo = Make(8);
    combo.SetFocus();
    Item(combo, 1).SetEnabled(false);
    const struct {
        int key;
        int selected;
    } rows[] = {{VK_DOWN, 0}, {VK_DOWN, 2},  {VK_RIGHT, 3}, {VK_UP, 2},
                {VK_LEFT, 0}, {VK_UP, 0},    {VK_NEXT, 5},  {VK_NEXT, 7},
                {VK_DOWN, 7}, {VK_PRIOR, 2}, {VK_END, 7},   {VK_HOME, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        host.Key(row.key);
        EXPECT_EQ(combo.GetCurSel(), row.selected);
    }
    EXPECT_EQ(DropWindow(), nullptr);
}

TEST_F(ComboTest, TypingSelectsByTheBeginningOfTheText)
{
    auto& combo = Make(0);
    for (const wchar_t* text : {L"Berlin", L"Bern", L"Bangkok", L"Paris"})
        AddItem(combo, text);
    combo.SetFocus();
    host.Char(L'b');
    EXPECT_STREQ(combo.GetText(), L"Berlin");
    host.Char(L'e');
    host.Char(L'r');
    host.Char(L'n');
    EXPECT_STREQ(combo.GetText(), L"Bern");
}

TEST_F(ComboTest, TypingOneCharacterAgainGoesOnToTheNextItem)
{
    auto& combo = Make(0);
    for (const wchar_t* text : {L"Berlin", L"Paris", L"Bern"})
        AddItem(combo, text);
    combo.SetFocus();
    host.Char(L'B');
    host.Char(L'B');
    EXPECT_STREQ(combo.GetText(), L"Bern");
    host.Char(L'B');
    EXPECT_STREQ(combo.GetText(), L"Berlin");
}

TEST_F(ComboTest, TheWheelMovesTheSelectionUnlessTurnedOff)
{
    auto& combo = Make();
    host.Wheel(10, 10, -WHEEL_DELTA);
    EXPECT_EQ(combo.GetCurSel(), 0);
    host.Wheel(10, 10, -WHEEL_DELTA);
    host.Wheel(10, 10, WHEEL_DELTA);
    EXPECT_EQ(combo.GetCurSel(), 0);
    combo.SetScrollSelect(false);
    host.Wheel(10, 10, -WHEEL_DELTA);
    EXPECT_EQ(combo.GetCurSel(), 0);
}

TEST_F(ComboTest, ADisabledComboDoesNothing)
{
    auto& combo = Make();
    Item(combo, 1).SetEnabled(false);
    combo.SetFocus();
    combo.SetEnabled(false);
    host.Click(10, 10);
    host.Key(VK_DOWN);
    host.Wheel(10, 10, -WHEEL_DELTA);
    EXPECT_EQ(DropWindow(), nullptr);
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
    EXPECT_FALSE(combo.Activate());

    combo.SetEnabled(true);
    EXPECT_FALSE(Item(combo, 1).IsEnabled());
    EXPECT_TRUE(Item(combo, 0).IsEnabled());
}

TEST_F(ComboTest, OpensByMouseAndKeyboard)
{
    auto& combo = Make();
    combo.SetFocus();
    const std::function<void()> ways[] = {
        [&] { host.Click(10, 10); }, [&] { host.Key(VK_F4); },
        [&] { host.Key(VK_SPACE); }, [&] { AltKey(host.Window(), VK_DOWN); },
        [&] { combo.Activate(); },
    };
    for (const auto& open : ways) {
        open();
        ASSERT_NE(DropWindow(), nullptr);
        ::SendMessageW(DropWindow(), WM_CLOSE, 0, 0);
        host.Pump();
        ASSERT_EQ(DropWindow(), nullptr);
    }
}

TEST_F(ComboTest, TellsBeforeAndAfterOpening)
{
    auto& combo = Make();
    bool wasOpen = true;
    const Handler before(host.Manager(), L"predropdown",
                         [&](TNotifyUI&) { wasOpen = DropWindow() != nullptr; });
    bool isOpen = false;
    const Handler after(host.Manager(), L"dropdown",
                        [&](TNotifyUI&) { isOpen = DropWindow() != nullptr; });
    EXPECT_TRUE(combo.Activate());
    EXPECT_FALSE(wasOpen);
    EXPECT_TRUE(isOpen);
    ASSERT_EQ(host.Sent(L"predropdown").size(), 1u);
    EXPECT_EQ(host.Sent(L"dropdown").size(), 1u);
    EXPECT_TRUE(combo.Activate());
    EXPECT_EQ(host.Sent(L"predropdown").size(), 1u);
}

TEST_F(ComboTest, ItemsMadeBeforeOpeningAreShown)
{
    auto& combo = Make(0);
    const Handler before(host.Manager(), L"predropdown",
                         [&](TNotifyUI&) { AddItem(combo, L"late"); });
    combo.Activate();
    EXPECT_FALSE(::IsRectEmpty(&Item(combo, 0).GetPos()));
}

TEST_F(ComboTest, TheListStandsBelowAsWideAsTheComboAndAsHighAsItsItems)
{
    auto& combo = Make(2);
    combo.Activate();
    const RECT place = PlaceOf(DropWindow());
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 30);
    EXPECT_EQ(place.right - place.left, 120);
    const LONG row = Item(combo, 0).GetHeight();
    EXPECT_GT(row, 0);
    EXPECT_EQ(place.bottom - place.top, 2 * row + 2);
}

TEST_F(ComboTest, TheListIsNoHigherThanItsSize)
{
    auto& combo = Make(26);
    combo.Activate();
    EXPECT_EQ(PlaceOf(DropWindow()).bottom - PlaceOf(DropWindow()).top, 150);
    combo.RemoveAll();
    ::SendMessageW(DropWindow(), WM_CLOSE, 0, 0);

    for (int i = 0; i < 26; ++i)
        AddItem(combo, L"x");
    combo.SetDropBoxSize({180, 70});
    combo.Activate();
    EXPECT_EQ(PlaceOf(DropWindow()).bottom - PlaceOf(DropWindow()).top, 70);
    EXPECT_EQ(PlaceOf(DropWindow()).right - PlaceOf(DropWindow()).left, 180);
}

TEST_F(ComboTest, TheListStandsAboveAtTheLowerEndOfTheMonitor)
{
    auto& combo = Make(26);
    const RECT area = WorkArea();
    ::SetWindowPos(host.Window(), nullptr, 10, area.bottom - 60, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    combo.Activate();
    const RECT place = PlaceOf(DropWindow());
    EXPECT_EQ(place.bottom, area.bottom - 60);
    EXPECT_EQ(place.bottom - place.top, 150);
}

TEST_F(ComboTest, TheListStaysOnTheMonitor)
{
    auto& combo = Make(2);
    const RECT area = WorkArea();
    combo.SetDropBoxSize({300, 150});
    ::SetWindowPos(host.Window(), nullptr, area.right - 60, 10, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    combo.Activate();
    EXPECT_EQ(PlaceOf(DropWindow()).right, area.right);
    EXPECT_EQ(PlaceOf(DropWindow()).left, area.right - 300);
}

TEST_F(ComboTest, ItemsAreLentToTheListAndComeBack)
{
    auto& combo = Make();
    CallCounter inits;
    Item(combo, 1).OnInit += MakeDelegate(&inits, &CallCounter::Count);
    Item(combo, 1).SetName(L"second");
    host.Manager().InitControls(&Item(combo, 1), &combo);
    inits.calls = 0;

    combo.Activate();
    EXPECT_NE(Item(combo, 1).GetManager(), &host.Manager());
    EXPECT_EQ(Item(combo, 1).GetManager()->GetPaintWindow(), DropWindow());
    EXPECT_EQ(combo.GetCount(), 3);
    EXPECT_EQ(host.Manager().FindControl(L"second"), &Item(combo, 1));

    ::SendMessageW(DropWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(Item(combo, 1).GetManager(), &host.Manager());
    EXPECT_EQ(Item(combo, 1).GetParent(), &combo);
    EXPECT_EQ(host.Manager().FindControl(L"second"), &Item(combo, 1));
    EXPECT_EQ(inits.calls, 0);
}

TEST_F(ComboTest, AClickSelectsAndCloses)
{
    auto& combo = Make();
    combo.Activate();
    const HWND list = DropWindow();
    ClickInside(list, Item(combo, 2));
    host.Pump();
    EXPECT_EQ(combo.GetCurSel(), 2);
    EXPECT_FALSE(::IsWindow(list));
    EXPECT_EQ(host.Sent(L"itemselect").size(), 1u);
    EXPECT_EQ(host.Sent(L"itemclick").size(), 1u);
}

TEST_F(ComboTest, APressThatBeganOnTheComboEndsOnAnItem)
{
    auto& combo = Make();
    combo.Activate();
    const RECT& place = Item(combo, 1).GetPos();
    ::SendMessageW(DropWindow(), WM_LBUTTONUP, 0, MAKELPARAM(place.left + 5, place.top + 3));
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(DropWindow(), nullptr);
}

TEST_F(ComboTest, AClickOnADisabledItemLeavesTheListOpen)
{
    auto& combo = Make();
    Item(combo, 1).SetEnabled(false);
    combo.Activate();
    ClickInside(DropWindow(), Item(combo, 1));
    EXPECT_NE(DropWindow(), nullptr);
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);
}

TEST_F(ComboTest, KeysWorkInTheOpenList)
{
    auto& combo = Make();
    combo.Activate();
    Key(DropWindow(), VK_DOWN);
    Key(DropWindow(), VK_DOWN);
    EXPECT_EQ(combo.GetCurSel(), 1);
    ::SendMessageW(DropWindow(), WM_CHAR, L'c', 1);
    EXPECT_EQ(combo.GetCurSel(), 2);
    Key(DropWindow(), VK_RETURN);
    EXPECT_EQ(DropWindow(), nullptr);
    EXPECT_EQ(combo.GetCurSel(), 2);
}

TEST_F(ComboTest, EscapeBringsTheOldSelectionBack)
{
    auto& combo = Make();
    combo.SelectItem(1);
    combo.Activate();
    Key(DropWindow(), VK_END);
    EXPECT_EQ(combo.GetCurSel(), 2);
    Key(DropWindow(), VK_ESCAPE);
    EXPECT_EQ(DropWindow(), nullptr);
    EXPECT_EQ(combo.GetCurSel(), 1);
}

TEST_F(ComboTest, ClosesByKeyboardFocusAndMessage)
{
    auto& combo = Make();
    const struct {
        const char* name;
        std::function<void(HWND)> close;
    } ways[] = {
        {"F4", [](HWND list) { Key(list, VK_F4); }},
        {"Tab", [](HWND list) { Key(list, VK_TAB); }},
        {"Alt+Up", [](HWND list) { AltKey(list, VK_UP); }},
        {"focus",
         [&](HWND list) {
             ::SendMessageW(list, WM_KILLFOCUS, reinterpret_cast<WPARAM>(host.Window()), 0);
         }},
        {"another window", [](HWND list) { ::SendMessageW(list, WM_ACTIVATE, WA_INACTIVE, 0); }},
        {"hidden",
         [&](HWND) {
             combo.SetVisible(false);
             combo.SetVisible(true);
         }},
        {"disabled",
         [&](HWND) {
             combo.SetEnabled(false);
             combo.SetEnabled(true);
         }},
        {"focus in the window", [&](HWND) { host.Manager().SetFocus(nullptr); }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        combo.SetFocus();
        ASSERT_TRUE(combo.Activate());
        way.close(DropWindow());
        host.Pump();
        EXPECT_EQ(DropWindow(), nullptr);
        EXPECT_EQ(Item(combo, 0).GetManager(), &host.Manager());
    }
}

TEST_F(ComboTest, TabLeavesTheComboForTheNextControl)
{
    auto& combo = Make();
    auto* const button = new CButtonUI;
    host.Adopt(button);
    combo.SetFocus();
    combo.Activate();
    Key(DropWindow(), VK_TAB);
    host.Pump();
    host.Layout();
    EXPECT_EQ(host.Manager().GetFocus(), button);
}

TEST_F(ComboTest, APressOnTheOpenComboCloses)
{
    auto& combo = Make();
    host.Click(10, 10);
    ASSERT_NE(DropWindow(), nullptr);
    host.Click(10, 10); // takes the focus from the list first
    host.Pump();
    EXPECT_EQ(DropWindow(), nullptr);
    EXPECT_EQ(host.Sent(L"dropdown").size(), 1u);
    host.Click(10, 10);
    EXPECT_NE(DropWindow(), nullptr);
    EXPECT_EQ(combo.GetCount(), 3);
}

TEST_F(ComboTest, TheWindowGoesOnLookingActive)
{
    class Activation : public IMessageFilterUI {
    public:
        LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM, bool&) override
        {
            if (message == WM_NCACTIVATE)
                last = wParam != 0;
            return 0;
        }
        bool last = false;
    } activation;
    auto& combo = Make();
    host.Manager().AddMessageFilter(&activation);
    combo.Activate();
    EXPECT_TRUE(activation.last);
    host.Manager().RemoveMessageFilter(&activation);
}

TEST_F(ComboTest, TheListHasTheScaleOfItsWindow)
{
    ControlHost large{300, 100, 144};
    auto& combo = Make(2, &large);
    combo.Activate();
    EXPECT_EQ(Item(combo, 0).GetManager()->GetDPIObj()->GetDPI(), 144u);
    const LONG before = Item(combo, 0).GetHeight();

    large.Manager().SetDPI(192);
    large.Layout();
    EXPECT_EQ(Item(combo, 0).GetManager()->GetDPIObj()->GetDPI(), 192u);
    EXPECT_GT(Item(combo, 0).GetHeight(), before);
}

TEST_F(ComboTest, ItemsUseFontsStylesAndColoursOfTheWindow)
{
    auto& combo = Make();
    auto& main = host.Manager();
    main.AddFont(5, L"Arial", 31, true, false, false, false);
    main.SetDefaultFont(L"Arial", 17, false, false, false, false);
    main.AddStyle(L"mine", L"text=\"styled\"");
    main.AddDefaultAttributeList(L"VScrollBar", L"width=\"7\"");
    main.SetDefaultFontColor(0xFF123456);
    main.SetDefaultDisabledColor(0xFF123457);
    main.SetDefaultLinkFontColor(0xFF123458);
    main.SetDefaultLinkHoverFontColor(0xFF123459);
    main.SetDefaultSelectedBkColor(0xFF12345A);
    AddColumns(main, L"own.png", {kRed});
    combo.Activate();
    auto& list = *Item(combo, 0).GetManager();
    EXPECT_EQ(list.GetFont(5), main.GetFont(5));
    EXPECT_EQ(list.GetFontInfo(main.GetFont(5)), main.GetFontInfo(5));
    EXPECT_EQ(list.GetFont(L"Arial", 31, true, false, false, false), main.GetFont(5));
    EXPECT_EQ(list.GetDefaultFontInfo(), main.GetDefaultFontInfo());
    EXPECT_STREQ(list.GetStyle(L"mine"), L"text=\"styled\"");
    EXPECT_STREQ(list.GetDefaultAttributeList(L"VScrollBar"), L"width=\"7\"");
    EXPECT_EQ(list.GetDefaultFontColor(), 0xFF123456u);
    EXPECT_EQ(list.GetDefaultDisabledColor(), 0xFF123457u);
    EXPECT_EQ(list.GetDefaultLinkFontColor(), 0xFF123458u);
    EXPECT_EQ(list.GetDefaultLinkHoverFontColor(), 0xFF123459u);
    EXPECT_EQ(list.GetDefaultSelectedBkColor(), 0xFF12345Au);
    EXPECT_EQ(list.GetImage(L"own.png"), main.GetImage(L"own.png"));
    auto* const root = static_cast<CContainerUI*>(list.GetRoot());
    EXPECT_EQ(root->GetVerticalScrollBar()->GetFixedWidth(), 7);

    list.AddFont(5, L"Arial", 9, false, false, false, false);
    EXPECT_NE(list.GetFont(5), main.GetFont(5));
}

TEST_F(ComboTest, TheDropBoxAttributesShapeTheList)
{
    auto& combo = Make();
    combo.SetDropBoxAttributeList(L"bkcolor=\"#FFFF0000\" childpadding=\"4\"");
    combo.SetDropBoxInset({3, 5, 3, 7});
    combo.Activate();
    auto& list = *Item(combo, 0).GetManager();
    EXPECT_EQ(list.GetRoot()->GetBkColor(), kRed.value);
    EXPECT_EQ(Item(combo, 0).GetPos().left, 3);
    EXPECT_EQ(Item(combo, 0).GetPos().top, 5);
    EXPECT_EQ(Item(combo, 1).GetPos().top, Item(combo, 0).GetPos().bottom + 4);
    EXPECT_EQ(PlaceOf(DropWindow()).bottom - PlaceOf(DropWindow()).top,
              Item(combo, 2).GetPos().bottom + 7);
}

TEST_F(ComboTest, WhatItemsSayReachesTheWindowOnce)
{
    auto& combo = Make(0);
    auto* const item = new CListContainerElementUI;
    auto* const button = new CButtonUI;
    button->SetName(L"inside");
    item->Add(button);
    combo.Add(item);
    CallCounter told;
    button->OnNotify += MakeDelegate(&told, &CallCounter::CountClick);
    combo.Activate();
    host.ClearSent();
    ClickInside(DropWindow(), *button);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    EXPECT_EQ(host.Sent(L"click").at(0).senderName, L"inside");
    EXPECT_EQ(told.calls, 1);
    EXPECT_NE(DropWindow(), nullptr) << "a control in an item works without choosing the item";
}

TEST_F(ComboTest, ItemsChangeWhileTheListIsOpen)
{
    auto& combo = Make();
    combo.Activate();
    const LONG before = PlaceOf(DropWindow()).bottom;
    auto& added = AddItem(combo, L"new");
    EXPECT_EQ(added.GetManager()->GetPaintWindow(), DropWindow());
    EXPECT_GT(PlaceOf(DropWindow()).bottom, before);
    combo.RemoveAt(0);
    EXPECT_EQ(PlaceOf(DropWindow()).bottom, before);
    EXPECT_EQ(Item(combo, 0).GetPos().top, 1);
    combo.SetItemIndex(&added, 0);
    EXPECT_EQ(added.GetPos().top, 1);
    combo.RemoveAll();
    ::UpdateWindow(DropWindow());
    host.Pump();
    EXPECT_EQ(combo.GetCount(), 0);
    AddItem(combo, L"again");
    ClickInside(DropWindow(), Item(combo, 0));
    EXPECT_STREQ(combo.GetText(), L"again");
}

TEST_F(ComboTest, AnItemMayBeDeletedWhileItIsPressed)
{
    auto& combo = Make();
    combo.Activate();
    const Handler remove(host.Manager(), L"itemselect",
                         [&](TNotifyUI&) { combo.RemoveAt(combo.GetCurSel()); });
    ClickInside(DropWindow(), Item(combo, 1));
    host.Pump();
    EXPECT_LT(combo.GetCount(), 3);
}

TEST_F(ComboTest, TheComboMayBeDeletedWhileItsListIsOpen)
{
    auto& combo = Make();
    combo.Activate();
    static_cast<CContainerUI*>(host.Root())->Remove(&combo);
    host.Pump();
    EXPECT_EQ(DropWindow(), nullptr);
}

TEST_F(ComboTest, TheComboMayBeDeletedAtOnce)
{
    auto& combo = Make();
    test::DeleteAtOnce(host.Root());
    combo.Activate();
    const HWND list = DropWindow();
    const Handler remove(host.Manager(), L"itemselect", [&](TNotifyUI&) {
        static_cast<CContainerUI*>(host.Root())->Remove(&combo);
    });
    ClickInside(list, Item(combo, 1));
    host.Pump();
    EXPECT_FALSE(::IsWindow(list));
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
}

TEST_F(ComboTest, HandlersOfOpeningMayDeleteTheCombo)
{
    for (const wchar_t* const type : {L"predropdown", L"dropdown"}) {
        auto& combo = Make();
        test::DeleteAtOnce(host.Root());
        const Handler remove(host.Manager(), type, [&](TNotifyUI& notification) {
            static_cast<CContainerUI*>(host.Root())->Remove(notification.pSender);
        });
        combo.Activate();
        host.Pump();
        EXPECT_EQ(DropWindow(), nullptr);
        EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
    }
}

TEST_F(ComboTest, TheWindowMayCloseWhileTheListIsOpen)
{
    {
        ControlHost other{200, 60};
        Make(3, &other).Activate();
        EXPECT_NE(DropWindow(), nullptr);
    }
    host.Pump();
    EXPECT_EQ(DropWindow(), nullptr);

    auto other = std::make_unique<ControlHost>(200, 60);
    auto& combo = Make(3, other.get());
    combo.Activate();
    const Handler close(other->Manager(), L"itemselect",
                        [&](TNotifyUI&) { ::DestroyWindow(other->Window()); });
    ClickInside(DropWindow(), Item(combo, 1));
    host.Pump();
    EXPECT_EQ(DropWindow(), nullptr);
}

// What the handler of a changed selection does, by whatever way the selection changes.
TEST_F(ComboTest, HandlersOfASelectionMayDoAnything)
{
    const struct {
        const char* name;
        bool opens;
        std::function<void(ControlHost&, CComboUI&)> select;
    } ways[] = {
        {"program", false, [](ControlHost&, CComboUI& combo) { combo.SelectItem(1, true); }},
        {"key", false, [](ControlHost& in, CComboUI&) { in.Key(VK_DOWN); }},
        {"character", false, [](ControlHost& in, CComboUI&) { in.Char(L'b'); }},
        {"wheel", false, [](ControlHost& in, CComboUI&) { in.Wheel(10, 10, -WHEEL_DELTA); }},
        {"removal", false, [](ControlHost&, CComboUI& combo) { combo.RemoveAt(0); }},
        {"removal of all", false, [](ControlHost&, CComboUI& combo) { combo.RemoveAll(); }},
        {"click in the list", true,
         [](ControlHost&, CComboUI& combo) { ClickInside(DropWindow(), Item(combo, 1)); }},
        {"key in the list", true, [](ControlHost&, CComboUI&) { Key(DropWindow(), VK_DOWN); }},
        {"character in the list", true,
         [](ControlHost&, CComboUI&) { ::SendMessageW(DropWindow(), WM_CHAR, L'b', 1); }},
        {"release in the list", true,
         [](ControlHost&, CComboUI& combo) {
             const RECT& place = Item(combo, 1).GetPos();
             ::SendMessageW(DropWindow(), WM_LBUTTONUP, 0,
                            MAKELPARAM(place.left + 5, place.top + 3));
         }},
    };
    const struct {
        const char* name;
        std::function<void(ControlHost&, CComboUI&)> act;
    } deeds[] = {
        {"removes the combo",
         [](ControlHost& in, CComboUI& combo) {
             static_cast<CContainerUI*>(in.Root())->Remove(&combo);
         }},
        {"deletes the combo at once",
         [](ControlHost& in, CComboUI& combo) {
             test::DeleteAtOnce(in.Root());
             static_cast<CContainerUI*>(in.Root())->Remove(&combo);
         }},
        {"deletes the items at once",
         [](ControlHost&, CComboUI& combo) {
             combo.SetDelayedDestroy(false);
             combo.RemoveAll();
         }},
        {"sorts", [](ControlHost&, CComboUI& combo) { combo.SortItems(); }},
        {"hides the combo", [](ControlHost&, CComboUI& combo) { combo.SetVisible(false); }},
        {"opens the list", [](ControlHost&, CComboUI& combo) { combo.Activate(); }},
        {"closes the list",
         [](ControlHost&, CComboUI&) {
             if (DropWindow())
                 ::SendMessageW(DropWindow(), WM_CLOSE, 0, 0);
         }},
        {"destroys the window", [](ControlHost& in, CComboUI&) { ::DestroyWindow(in.Window()); }},
    };
    for (const auto& way : ways) {
        for (const auto& deed : deeds) {
            SCOPED_TRACE(std::string(way.name) + ", " + deed.name);
            ControlHost other{200, 60};
            CComboUI& combo = Make(3, &other);
            combo.SelectItem(0);
            combo.SetFocus();
            if (way.opens)
                combo.Activate();
            bool done = false;
            const Handler handler(other.Manager(), L"itemselect", [&](TNotifyUI&) {
                if (!std::exchange(done, true))
                    deed.act(other, combo);
            });
            way.select(other, combo);
            host.Pump();
            EXPECT_TRUE(done);
        }
        host.Pump();
        EXPECT_EQ(DropWindow(), nullptr);
    }
}

TEST_F(ComboTest, ItemsOfTheClosedComboAreOutOfReach)
{
    auto& combo = Make(0);
    auto* const item = new CListContainerElementUI;
    item->Add(new CButtonUI);
    combo.Add(item);
    combo.SelectItem(0);
    combo.SetFocus();
    host.Layout();
    EXPECT_EQ(host.Manager().FindControl(POINT{10, 10}), &combo);
    host.Key(VK_TAB);
    EXPECT_EQ(host.Manager().GetFocus(), &combo);
}

TEST_F(ComboTest, OnlyRowsInViewArePlaced)
{
    auto& combo = Make(0);
    class CountedItem : public CListLabelElementUI {
    public:
        explicit CountedItem(std::shared_ptr<int> places) : m_places(std::move(places)) {}
        void SetPos(RECT rect, bool invalidate) override
        {
            ++*m_places;
            CListLabelElementUI::SetPos(rect, invalidate);
        }

    private:
        std::shared_ptr<int> m_places;
    };
    constexpr int kItems = 5000;
    const auto places = std::make_shared<int>(0);
    for (int i = 0; i < kItems; ++i) {
        auto item = std::make_unique<CountedItem>(places);
        item->SetText(L"x");
        combo.Add(item.release());
    }
    combo.Activate();
    *places = 0;
    ::SendMessageW(DropWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(20, 50));
    ::UpdateWindow(DropWindow());
    EXPECT_GT(*places, 0);
    EXPECT_LT(*places, 200);
    EXPECT_EQ(combo.GetCurSel(), kNoIndex);

    combo.SelectItem(kItems - 1);
    EXPECT_FALSE(::IsRectEmpty(&Item(combo, kItems - 1).GetPos()));
    EXPECT_TRUE(::IsRectEmpty(&Item(combo, 0).GetPos()));
}

TEST_F(ComboTest, TheHotItemIsForgottenWhenTheListCloses)
{
    auto& combo = Make();
    combo.SetHotItemBkColor(kGreen.value);
    combo.Activate();
    const RECT place = Item(combo, 1).GetPos();
    const LPARAM point = MAKELPARAM(place.left + 5, place.top + 5);
    ::SendMessageW(DropWindow(), WM_MOUSEMOVE, 0, point);
    Key(DropWindow(), VK_F4);
    host.Pump();
    combo.Activate();
    test::Canvas canvas(200, 200);
    ::SendMessageW(DropWindow(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
    EXPECT_EQ(canvas.Take().Count(kGreen), 0);
}

TEST_F(ComboTest, TheListShowsItsItems)
{
    auto& combo = Make();
    combo.SetSelectedItemBkColor(kGreen.value);
    combo.SelectItem(1);
    combo.Activate();
    ::UpdateWindow(DropWindow());
    test::Canvas canvas(200, 200);
    ::SendMessageW(DropWindow(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
    const Picture picture = canvas.Take();
    const RECT& place = Item(combo, 1).GetPos();
    EXPECT_EQ(picture.At(place.right - 3, place.top + 2), kGreen);
    const RECT& first = Item(combo, 0).GetPos();
    EXPECT_LT(picture.Count(kWhite, first),
              (first.right - first.left) * (first.bottom - first.top));
}

TEST_F(ComboTest, DrawsAnArrowAndItsFocusWithoutPictures)
{
    auto& combo = Make();
    const Picture plain = host.Paint();
    EXPECT_GT(plain.Count(kArrow, RECT{96, 0, 120, 30}), 5);
    EXPECT_EQ(plain.Count(kFocusFrame), 0);
    combo.SetFocus();
    const Picture focused = host.Paint();
    EXPECT_EQ(focused.At(0, 15), kFocusFrame);
    EXPECT_EQ(focused.At(60, 0), kFocusFrame);
    combo.SetEnabled(false);
    const Picture disabled = host.Paint();
    EXPECT_EQ(disabled.Count(kFocusFrame), 0);
    EXPECT_EQ(disabled.Count(kArrow), 0);
}

TEST_F(ComboTest, ShowsTheFocusInsideABorderOfItsOwn)
{
    auto& combo = Make();
    combo.SetBorderColor(kRed.value);
    combo.SetBorderSize(2);
    combo.SetFocus();
    const Picture picture = host.Paint();
    EXPECT_EQ(picture.At(1, 15), kRed);
    EXPECT_EQ(picture.At(2, 15), kFocusFrame);
    combo.SetFocusBorderColor(kBlue.value);
    EXPECT_EQ(host.Paint().At(1, 15), kBlue);
    EXPECT_EQ(host.Paint().Count(kFocusFrame), 0);
}

TEST_F(ComboTest, DrawsThePictureOfItsState)
{
    auto& combo = Make();
    AddColumns(host.Manager(), L"normal.png", {kRed});
    AddColumns(host.Manager(), L"hot.png", {kGreen});
    AddColumns(host.Manager(), L"pushed.png", {kBlue});
    AddColumns(host.Manager(), L"focused.png", {kYellow});
    combo.SetNormalImage(L"normal.png");
    EXPECT_EQ(host.Paint().At(60, 15), kRed);
    combo.SetHotImage(L"hot.png");
    combo.SetPushedImage(L"pushed.png");
    combo.SetFocusedImage(L"focused.png");
    combo.SetFocus();
    EXPECT_EQ(host.Paint().At(60, 15), kYellow);
    host.MoveMouse(60, 15);
    EXPECT_EQ(host.Paint().At(60, 15), kGreen);
    combo.Activate();
    EXPECT_EQ(host.Paint().At(60, 15), kBlue);
    combo.SetEnabled(false);
    EXPECT_EQ(host.Paint().At(60, 15), kRed) << "no picture of its own: the normal one";
}

TEST_F(ComboTest, DrawsTheTextOfTheSelectedItem)
{
    auto& combo = Make(0);
    test::UnderlineTexts(host.Manager());
    AddItem(combo, L"mmm");
    combo.SetTextColor(kRed.value);
    EXPECT_EQ(host.Paint().Count(kRed), 0);
    combo.SelectItem(0);
    EXPECT_GT(host.Paint().Count(kRed), 20);
    combo.SetTextPadding({40, 0, 0, 0});
    EXPECT_EQ(host.Paint().Count(kRed, RECT{0, 0, 39, 30}), 0);
    combo.SetEnabled(false);
    combo.SetDisabledTextColor(kBlue.value);
    EXPECT_EQ(host.Paint().Count(kRed), 0);
    EXPECT_GT(host.Paint().Count(kBlue), 20);
}

TEST_F(ComboTest, DrawsMarkupWhenAskedTo)
{
    auto& combo = Make(0);
    test::UnderlineTexts(host.Manager());
    AddItem(combo, L"<c #00FF00>mmm</c>");
    combo.SelectItem(0);
    combo.SetShowHtml(true);
    EXPECT_GT(host.Paint().Count(kGreen), 20);
}

TEST_F(ComboTest, AChangedTextOfTheSelectedItemIsPainted)
{
    auto& combo = Make(1);
    test::UnderlineTexts(host.Manager());
    combo.SelectItem(0);
    combo.SetTextColor(kRed.value);
    Item(combo, 0).SetText(L"");
    host.Paint();
    Item(combo, 0).SetText(L"mmm");
    host.Pump();
    ::UpdateWindow(host.Window());
    EXPECT_GT(host.Screen().Count(kRed), 20);
}

TEST_F(ComboTest, AContainerItemIsPicturedByItsFirstText)
{
    auto& combo = Make(0);
    auto* const item = new CListContainerElementUI;
    item->Add(new CControlUI);
    auto* const label = new CLabelUI;
    label->SetText(L"inside");
    item->Add(label);
    combo.Add(item);
    combo.SelectItem(0);
    EXPECT_STREQ(combo.GetText(), L"inside");
    item->SetText(L"own");
    EXPECT_STREQ(combo.GetText(), L"own");
}

TEST_F(ComboTest, IsAsHighAsALineOfItsFontByItself)
{
    auto& combo = Make();
    combo.SetFixedHeight(0);
    const LONG line = host.Manager().GetDefaultFontInfo()->tm.tmHeight;
    EXPECT_EQ(combo.EstimateSize({100, 100}).cy, line + 12);
    combo.SetFixedHeight(44);
    EXPECT_EQ(combo.EstimateSize({100, 100}).cy, 44);
}

TEST_F(ComboTest, TwoHundredRoundsLeaveNothingBehind)
{
    auto& combo = Make(5);
    const auto round = [&] {
        combo.Activate();
        ::UpdateWindow(DropWindow());
        ClickInside(DropWindow(), Item(combo, combo.GetCurSel() == 0 ? 1 : 0));
        host.Pump();
    };
    round();
    round();
    const int gdi = test::GdiObjects();
    const int windows = test::UserWindows();
    const int managers = CPaintManagerUI::GetPaintManagers()->GetSize();
    for (int i = 0; i < 200; ++i)
        round();
    EXPECT_EQ(test::GdiObjects(), gdi);
    EXPECT_EQ(test::UserWindows(), windows);
    EXPECT_EQ(CPaintManagerUI::GetPaintManagers()->GetSize(), managers);
    EXPECT_EQ(DropWindow(), nullptr);
}

} // namespace
