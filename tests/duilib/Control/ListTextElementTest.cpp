#include "duilib/Control/RowOwner.h"
#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/Cursors.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::Picture;
using test::RowOwner;
using test::UnderlineTexts;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kGray{0xFF808080};

// Two columns of 100 device pixels, rows of 40 design pixels, underlined red texts on white.
class ListTextElementTest : public testing::TestWithParam<int> {
protected:
    ControlHost host{200, 130, GetParam()};
    RowOwner& owner = host.Add<RowOwner>();
    CListTextElementUI& row = owner.AddRow<CListTextElementUI>(40);

    void SetUp() override
    {
        owner.SetBkColor(kWhite.value);
        auto& info = owner.info;
        info.dwTextColor = kRed.value;
        info.dwHotBkColor = info.dwSelectedBkColor = info.dwDisabledBkColor = 0;
        info.nColumns = 2;
        info.rcColumn[0] = {0, 0, 100, 20};
        info.rcColumn[1] = {100, 0, 200, 20};
        UnderlineTexts(host.Manager());
        host.ClearSent();
    }

    static constexpr RECT kFirst{0, 0, 100, 130};
    static constexpr RECT kSecond{100, 0, 200, 130};

    bool ShowsIn(const RECT& column, Argb colour)
    {
        row.Invalidate();
        return host.Paint().Count(colour, column) > 0;
    }
    int Scaled(int length) { return host.Manager().GetDPIObj()->Scale(length); }
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListTextElementTest, testing::Values(96, 144));

TEST_P(ListTextElementTest, AnswersToItsNames)
{
    EXPECT_STREQ(row.GetClass(), L"ListTextElementUI");
    EXPECT_EQ(row.GetInterface(L"ListTextElement"), &row);
    EXPECT_NE(row.GetInterface(L"ListLabelElement"), nullptr);
    const std::unique_ptr<CControlUI> made(CListTextElementUI::CreateControl());
    EXPECT_STREQ(made->GetClass(), L"ListTextElementUI");
    const std::unique_ptr<CControlUI> byName(
        CControlFactory::GetInstance()->CreateControl(L"CListTextElementUI"));
    ASSERT_NE(byName, nullptr);
    EXPECT_STREQ(byName->GetClass(), L"ListTextElementUI");
}

TEST_P(ListTextElementTest, ColumnsHaveTextsOfTheirOwn)
{
    EXPECT_EQ(row.GetText(0), nullptr);
    EXPECT_EQ(row.GetText(1), nullptr);
    row.SetText(2, L"third");
    EXPECT_STREQ(row.GetText(0), L"");
    EXPECT_STREQ(row.GetText(1), L"");
    EXPECT_STREQ(row.GetText(2), L"third");
    EXPECT_EQ(row.GetText(3), nullptr);
    EXPECT_EQ(row.GetText(-1), nullptr);
    row.SetText(0, L"first");
    EXPECT_STREQ(row.GetText(), L"first");
    row.SetText(L"other");
    EXPECT_STREQ(row.GetText(0), L"other");
    row.SetAttribute(L"text", L"attribute");
    EXPECT_STREQ(row.GetText(0), L"attribute");
    row.SetText(2, nullptr);
    EXPECT_STREQ(row.GetText(2), L"");
}

TEST_P(ListTextElementTest, ColumnsOutsideTheListAreIgnored)
{
    row.SetText(-1, L"x");
    row.SetText(UILIST_MAX_COLUMNS, L"x");
    row.SetTextColor(-1, kBlue.value);
    row.SetTextColor(UILIST_MAX_COLUMNS, kBlue.value);
    EXPECT_EQ(row.GetText(UILIST_MAX_COLUMNS), nullptr);
    EXPECT_EQ(row.GetText(0), nullptr);
    EXPECT_EQ(row.GetTextColor(-1), 0u);
    EXPECT_EQ(row.GetTextColor(UILIST_MAX_COLUMNS), 0u);
    row.SetText(UILIST_MAX_COLUMNS - 1, L"last");
    EXPECT_STREQ(row.GetText(UILIST_MAX_COLUMNS - 1), L"last");
}

TEST_P(ListTextElementTest, ALineFeedIsWrittenInBracesInEveryColumn)
{
    row.SetText(0, L"a{\\n}b");
    row.SetText(1, L"a{\\n}b");
    EXPECT_STREQ(row.GetText(0), L"a\nb");
    EXPECT_STREQ(row.GetText(1), L"a\nb");
}

TEST_P(ListTextElementTest, EachTextStaysInItsColumn)
{
    host.Manager().SetDefaultFont(L"Arial", 20, true, false, false, false);
    row.SetText(0, L"MMMMMMMMMMMMMMMMMMMMMMMMMMMM");
    // The last pixels may fall between two stems.
    const auto right = test::Ink(host.Paint()).right;
    EXPECT_LE(right, 100);
    EXPECT_GT(right, 90);
    row.SetText(0, L"");
    row.SetText(1, L"MMMM");
    EXPECT_GE(test::Ink(host.Paint()).left, 100);
}

TEST_P(ListTextElementTest, TheTextPaddingIsTakenFromEveryColumn)
{
    owner.info.rcTextPadding = {20, 0, 0, 0};
    row.SetText(0, L"nn");
    EXPECT_NEAR(test::Ink(host.Paint()).left, Scaled(20), 3);
    row.SetText(0, L"");
    row.SetText(1, L"nn");
    EXPECT_NEAR(test::Ink(host.Paint()).left, 100 + Scaled(20), 3);
}

TEST_P(ListTextElementTest, AHiddenColumnShowsNothing)
{
    owner.info.rcColumn[1] = {100, 0, 100, 20};
    row.SetText(1, L"nnnn");
    EXPECT_FALSE(ShowsIn({0, 0, 200, 130}, kRed));
}

TEST_P(ListTextElementTest, WithoutColumnsTheFirstTextHasTheWholeRow)
{
    owner.info.nColumns = 0;
    row.SetText(0, L"nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn");
    row.SetText(1, L"nnn");
    EXPECT_TRUE(ShowsIn(kFirst, kRed));
    EXPECT_TRUE(ShowsIn(kSecond, kRed));
}

TEST_P(ListTextElementTest, AColumnHasAColourOfItsOwnInAllStatesButDisabled)
{
    auto& info = owner.info;
    info.dwHotTextColor = info.dwSelectedTextColor = kGreen.value;
    info.dwDisabledTextColor = kGray.value;
    row.SetText(0, L"nn");
    row.SetText(1, L"nn");
    row.SetTextColor(1, kBlue.value);
    EXPECT_EQ(row.GetTextColor(1), kBlue.value);
    EXPECT_EQ(row.GetTextColor(0), 0u);
    EXPECT_TRUE(ShowsIn(kFirst, kRed));
    EXPECT_TRUE(ShowsIn(kSecond, kBlue));
    host.MoveMouse(5, 5);
    EXPECT_TRUE(ShowsIn(kFirst, kGreen));
    EXPECT_TRUE(ShowsIn(kSecond, kBlue));
    row.Select();
    EXPECT_TRUE(ShowsIn(kFirst, kGreen));
    EXPECT_TRUE(ShowsIn(kSecond, kBlue));
    row.SetEnabled(false);
    EXPECT_TRUE(ShowsIn(kFirst, kGray));
    EXPECT_TRUE(ShowsIn(kSecond, kGray));
}

TEST_P(ListTextElementTest, ARowWithoutColumnTextsOwnsNoHeap)
{
    const int before = test::HeapBlocks();
    const auto bare = std::make_unique<CListTextElementUI>();
    bare->SetOwner(&owner);
    bare->SetIndex(0);
    EXPECT_EQ(test::HeapBlocks() - before, 1);
    bare->SetText(0, L"text");
    EXPECT_EQ(test::HeapBlocks() - before, 2);
}

TEST_P(ListTextElementTest, ACopyHasTextsOfItsOwn)
{
    row.SetText(0, L"one");
    row.SetText(1, L"two");
    row.SetTextColor(1, kBlue.value);
    row.Select();
    CListTextElementUI copy(row);
    row.SetText(1, L"changed");
    EXPECT_STREQ(copy.GetText(0), L"one");
    EXPECT_STREQ(copy.GetText(1), L"two");
    EXPECT_EQ(copy.GetTextColor(1), kBlue.value);
    EXPECT_TRUE(copy.IsSelected());
    EXPECT_EQ(copy.GetIndex(), 0);

    CListTextElementUI assigned;
    assigned = copy;
    EXPECT_STREQ(assigned.GetText(1), L"two");
    EXPECT_EQ(assigned.GetOwner(), nullptr) << "it stays where it is";
    EXPECT_EQ(assigned.GetIndex(), -1);
    EXPECT_FALSE(assigned.IsSelected());
}

// The list's callback.

class Texts : public IListCallbackUI {
public:
    LPCTSTR GetItemText(CControlUI* list, int item, int subItem) override
    {
        lists.push_back(list);
        text = L"n" + std::to_wstring(item) + std::to_wstring(subItem);
        return subItem == missing ? nullptr : text.c_str();
    }
    DWORD GetItemTextColor(CControlUI*, int, int subItem, int state) override
    {
        states.push_back(state);
        return subItem == 1 ? colors[state] : 0;
    }

    std::wstring text;
    int missing = -1;
    DWORD colors[4] = {kBlue.value, kGreen.value, kGray.value, 0xFFFF00FF};
    std::vector<CControlUI*> lists;
    std::vector<int> states;
};

TEST_P(ListTextElementTest, TheCallbackSuppliesTexts)
{
    Texts texts;
    texts.missing = 1;
    owner.texts = &texts;
    row.SetText(0, L"");
    row.SetText(1, L"nnn");
    EXPECT_TRUE(ShowsIn(kFirst, kRed));
    EXPECT_FALSE(ShowsIn(kSecond, kRed)) << "a callback without a text hides the row's own";
    ASSERT_FALSE(texts.lists.empty());
    EXPECT_EQ(texts.lists[0], &owner);
    EXPECT_STREQ(row.GetText(0), L"") << "the row's own text is not the callback's";
    owner.texts = nullptr;
    EXPECT_TRUE(ShowsIn(kSecond, kRed));
}

TEST_P(ListTextElementTest, TheCallbackIsAskedForTheColourOfTheState)
{
    Texts texts;
    owner.texts = &texts;
    const auto paint = [&] {
        texts.states.clear();
        row.Invalidate();
        return host.Paint();
    };
    Picture picture = paint();
    EXPECT_GT(picture.Count(kRed, kFirst), 0) << "no colour: the list's";
    EXPECT_GT(picture.Count(kBlue, kSecond), 0);
    EXPECT_EQ(texts.states.back(), 0);
    host.MoveMouse(5, 5);
    EXPECT_GT(paint().Count(kGreen, kSecond), 0);
    EXPECT_EQ(texts.states.back(), 1);
    row.Select();
    EXPECT_GT(paint().Count(kGray, kSecond), 0);
    EXPECT_EQ(texts.states.back(), 2);
    row.SetEnabled(false);
    EXPECT_GT(paint().Count(Argb{0xFFFF00FF}, kSecond), 0);
    EXPECT_EQ(texts.states.back(), 3);
}

// Sizes.

TEST_P(ListTextElementTest, ItIsAsHighAsALineAndEightPixels)
{
    row.SetFixedHeight(0);
    EXPECT_EQ(row.EstimateSize({200, 0}).cy, host.Manager().GetDefaultFontInfo()->tm.tmHeight + 8);
}

TEST_P(ListTextElementTest, WrappingTextsMakeItAsHighAsTheHighestColumn)
{
    row.SetFixedHeight(0);
    owner.info.uTextStyle = DT_LEFT | DT_WORDBREAK;
    const wchar_t* const longText = L"one two three four five six seven";
    const auto wrapped = [&](int width) {
        return test::MeasureWrapped(host.Manager(), longText, width, DT_WORDBREAK).cy;
    };
    row.SetText(0, L"one");
    const LONG low = row.EstimateSize({200, 0}).cy;
    row.SetText(1, longText);
    EXPECT_EQ(row.EstimateSize({200, 0}).cy, wrapped(100));
    EXPECT_GT(row.EstimateSize({200, 0}).cy, low);
    owner.info.rcColumn[1].right = 160;
    EXPECT_EQ(row.EstimateSize({200, 0}).cy, wrapped(60)) << "a narrower column";
}

// Links.

class ListTextElementLinkTest : public ListTextElementTest {
protected:
    void SetUp() override
    {
        ListTextElementTest::SetUp();
        owner.info.bShowHtml = true;
        row.SetText(0, L"{a one}nnnn{/a}");
        row.SetText(1, L"{a two}nnnn{/a}");
        host.Paint();
        middle = Scaled(20);
        host.ClearSent();
    }

    int middle = 0;
};

INSTANTIATE_TEST_SUITE_P(Dpi, ListTextElementLinkTest, testing::Values(96, 144));

TEST_P(ListTextElementLinkTest, LinksAreCountedThroughTheRow)
{
    ASSERT_NE(row.GetLinkContent(0), nullptr);
    EXPECT_STREQ(*row.GetLinkContent(0), L"one");
    ASSERT_NE(row.GetLinkContent(1), nullptr);
    EXPECT_STREQ(*row.GetLinkContent(1), L"two");
    EXPECT_EQ(row.GetLinkContent(2), nullptr);
    EXPECT_EQ(row.GetLinkContent(-1), nullptr);
}

TEST_P(ListTextElementLinkTest, AReleaseOnALinkSendsIt)
{
    host.Click(110, middle);
    const auto links = host.Sent(L"link");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].sender, &row);
    EXPECT_EQ(links[0].wParam, 1u);
    EXPECT_TRUE(host.Sent(L"itemclick").empty());
    EXPECT_TRUE(row.IsSelected());
    host.ClearSent();
    host.Click(190, middle);
    EXPECT_TRUE(host.Sent(L"link").empty()) << "beside the link";
    EXPECT_EQ(host.Sent(L"itemclick").size(), 1u);
}

TEST_P(ListTextElementLinkTest, LinksFollowTheirRow)
{
    auto& above = owner.AddRow<CListTextElementUI>(40);
    owner.SetItemIndex(&above, 0);
    host.Paint();
    host.ClearSent();
    host.Click(110, middle + Scaled(40));
    EXPECT_EQ(host.Sent(L"link").size(), 1u);
}

TEST_P(ListTextElementLinkTest, OverALinkTheCursorIsAHand)
{
    const auto isShownAt = [this](LPCWSTR cursor, int x) {
        TEventUI event = {};
        event.Type = UIEVENT_SETCURSOR;
        event.ptMouse = {x, middle};
        ::SetCursor(nullptr);
        row.Event(event);
        return test::IsCursorShown(cursor);
    };
    EXPECT_TRUE(isShownAt(IDC_HAND, 110));
    EXPECT_TRUE(isShownAt(IDC_ARROW, 190));
    row.SetEnabled(false);
    EXPECT_TRUE(isShownAt(IDC_ARROW, 110));
}

TEST_P(ListTextElementLinkTest, TheHoveredLinkIsHighlighted)
{
    host.Manager().SetDefaultLinkHoverFontColor(kGreen.value);
    host.MoveMouse(110, middle);
    const Picture picture = host.Paint();
    EXPECT_GT(picture.Count(kGreen, kSecond), 0);
    EXPECT_EQ(picture.Count(kGreen, kFirst), 0);
}

TEST_P(ListTextElementLinkTest, TheCursorIsAskedForOnlyWhereThereAreLinks)
{
    EXPECT_EQ(row.GetControlFlags(), 0u + (UIFLAG_WANTRETURN | UIFLAG_SETCURSOR));
    row.SetEnabled(false);
    EXPECT_EQ(row.GetControlFlags(), 0u + UIFLAG_WANTRETURN);
    row.SetEnabled(true);
    row.SetText(0, L"n");
    row.SetText(1, L"n");
    host.Paint();
    EXPECT_EQ(row.GetControlFlags(), 0u + UIFLAG_WANTRETURN);
    EXPECT_EQ(row.GetLinkContent(0), nullptr);
}

TEST_P(ListTextElementLinkTest, ADisabledRowSendsNoLink)
{
    row.SetEnabled(false);
    host.Click(110, middle);
    EXPECT_TRUE(host.Sent(L"link").empty());
}

TEST_P(ListTextElementLinkTest, MoreLinksThanThereIsRoomForAreNotRecorded)
{
    std::wstring text;
    for (int i = 0; i < 6; ++i)
        text += L"{a " + std::to_wstring(i) + L"}i{/a} ";
    owner.info.rcColumn[0] = owner.info.rcColumn[1] = {0, 0, 200, 20};
    row.SetText(0, text.c_str());
    row.SetText(1, text.c_str());
    host.Paint();
    ASSERT_NE(row.GetLinkContent(7), nullptr);
    EXPECT_STREQ(*row.GetLinkContent(7), L"1");
    EXPECT_EQ(row.GetLinkContent(8), nullptr);
}

TEST_P(ListTextElementLinkTest, ALinkHandlerMayDeleteTheRow)
{
    class Remover : public INotifyUI {
    public:
        Remover(RowOwner& owner, CControlUI& row) : m_owner(owner), m_row(row) {}
        void Notify(TNotifyUI& notification) override
        {
            if (notification.sType == L"link")
                m_owner.Remove(&m_row);
        }

    private:
        RowOwner& m_owner;
        CControlUI& m_row;
    } remover(owner, row);
    test::DeleteAtOnce(&owner);
    host.Manager().AddNotifier(&remover);
    host.Click(110, middle);
    host.Manager().RemoveNotifier(&remover);
    EXPECT_EQ(owner.GetCount(), 0);
}

TEST_P(ListTextElementLinkTest, PaintingLinksAgainKeepsTheHeap)
{
    const auto paint = [this] {
        host.Manager().GetRoot()->Paint(host.Manager().GetPaintDC(), {0, 0, 200, 130});
    };
    paint();
    const auto before = test::HeapBlocks();
    for (int i = 0; i < 10; ++i)
        paint();
    EXPECT_EQ(test::HeapBlocks(), before);
}

} // namespace
