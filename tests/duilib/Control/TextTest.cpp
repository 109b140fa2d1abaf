#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"
#include "support/Cursors.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::MeasureWrapped;

namespace {

constexpr wchar_t kTwoLinks[] = L"<a one>HHHH</a>  <a two>HHHH</a>";

// Shows which links were recorded.
class OpenText : public CTextUI {
public:
    using CTextUI::m_nHoverLink;
    using CTextUI::m_nLinks;
    using CTextUI::m_rcLinks;

    POINT InsideLink(int index) const
    {
        const RECT& link = m_rcLinks[index];
        return {(link.left + link.right) / 2, (link.top + link.bottom) / 2};
    }
};

class TextTest : public testing::Test {
protected:
    ControlHost host{300, 100};
    OpenText& text = host.Add<OpenText>();

    void ShowLinks()
    {
        text.SetShowHtml(true);
        text.SetText(kTwoLinks);
        host.Paint();
        ASSERT_EQ(text.m_nLinks, 2);
    }
};

TEST_F(TextTest, WrapsAndAnswersToItsNames)
{
    EXPECT_EQ(text.GetTextStyle(), static_cast<UINT>(DT_WORDBREAK));
    EXPECT_STREQ(text.GetClass(), L"TextUI");
    EXPECT_EQ(text.GetInterface(L"Text"), static_cast<CTextUI*>(&text));
    EXPECT_EQ(text.GetInterface(L"Label"), static_cast<CLabelUI*>(&text));
}

TEST_F(TextTest, ItsEstimateIsTheWrappedTextAndThePadding)
{
    constexpr wchar_t words[] = L"several words that do not fit into one line of ninety pixels";
    text.SetText(words);
    text.SetTextPadding({3, 4, 7, 6});
    const SIZE wrapped = MeasureWrapped(host.Manager(), words, 90, DT_WORDBREAK);
    const SIZE size = text.EstimateSize({100, 500});
    EXPECT_EQ(size.cx, wrapped.cx + 10);
    EXPECT_EQ(size.cy, wrapped.cy + 10);

    const SIZE wide = text.EstimateSize({1000, 500});
    EXPECT_LT(wide.cy, size.cy);
    EXPECT_GT(wide.cx, size.cx);
}

TEST_F(TextTest, AFixedWidthIsTheWidthToWrapAt)
{
    constexpr wchar_t words[] = L"several words that do not fit into one line of ninety pixels";
    text.SetText(words);
    text.SetFixedWidth(90);
    const SIZE size = text.EstimateSize({1000, 500});
    EXPECT_EQ(size.cx, 90);
    EXPECT_EQ(size.cy, MeasureWrapped(host.Manager(), words, 90, DT_WORDBREAK).cy);

    text.SetFixedHeight(17);
    EXPECT_EQ(text.EstimateSize({1000, 500}).cy, 17);
}

TEST_F(TextTest, ANewTextLaysOutTheParent)
{
    text.SetText(L"one");
    host.Paint();
    ASSERT_FALSE(host.Root()->IsUpdateNeeded());
    text.SetText(L"two");
    EXPECT_TRUE(host.Root()->IsUpdateNeeded());
}

TEST_F(TextTest, RecordsTheContentOfTheLinksItDrew)
{
    EXPECT_EQ(text.GetLinkContent(0), nullptr);
    ShowLinks();
    ASSERT_NE(text.GetLinkContent(0), nullptr);
    ASSERT_NE(text.GetLinkContent(1), nullptr);
    EXPECT_STREQ(*text.GetLinkContent(0), L"one");
    EXPECT_STREQ(*text.GetLinkContent(1), L"two");
    EXPECT_EQ(text.GetLinkContent(2), nullptr);
    EXPECT_EQ(text.GetLinkContent(-1), nullptr);
}

TEST_F(TextTest, PlainTextHasNoLinks)
{
    ShowLinks();
    text.SetShowHtml(false);
    host.Paint();
    EXPECT_EQ(text.GetLinkContent(0), nullptr);
    EXPECT_EQ(text.GetControlFlags(), 0u);
}

TEST_F(TextTest, NeverHoldsMoreThanEightLinks)
{
    std::wstring many;
    for (int i = 0; i < 12; ++i)
        many += L"<a x" + std::to_wstring(i) + L">|</a> ";
    text.SetShowHtml(true);
    text.SetText(many.c_str());
    host.Paint();
    EXPECT_EQ(text.m_nLinks, 8);
    EXPECT_STREQ(*text.GetLinkContent(7), L"x7");
    EXPECT_EQ(text.GetLinkContent(8), nullptr);
}

TEST_F(TextTest, AsksForTheCursorWhileItHasLinksAndIsEnabled)
{
    EXPECT_EQ(text.GetControlFlags(), 0u);
    ShowLinks();
    EXPECT_EQ(text.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    text.SetEnabled(false);
    EXPECT_EQ(text.GetControlFlags(), 0u);
}

TEST_F(TextTest, ReleasingTheButtonOnALinkSendsItsIndex)
{
    ShowLinks();
    const POINT second = text.InsideLink(1);
    host.Press(second.x, second.y);
    EXPECT_TRUE(host.Sent(L"link").empty());
    host.Release(second.x, second.y);
    ASSERT_EQ(host.Sent(L"link").size(), 1u);
    EXPECT_EQ(host.Sent(L"link")[0].wParam, 1u);
    EXPECT_EQ(host.Sent(L"link")[0].sender, &text);
}

TEST_F(TextTest, ReleasingBesideALinkOrWhileDisabledSendsNothing)
{
    ShowLinks();
    host.Click(290, 90);
    text.SetEnabled(false);
    const POINT first = text.InsideLink(0);
    host.Click(first.x, first.y);
    EXPECT_TRUE(host.Sent(L"link").empty());
}

TEST_F(TextTest, ALinkHandlerMayRemoveTheText)
{
    test::DeleteAtOnce(host.Root());
    ShowLinks();
    text.OnNotify += [](void* notification) {
        auto* const sent = static_cast<TNotifyUI*>(notification);
        if (sent->sType == L"link") {
            CControlUI* const sender = sent->pSender;
            static_cast<CContainerUI*>(sender->GetParent())->Remove(sender);
        }
        return true;
    };
    const POINT first = text.InsideLink(0);
    host.Click(first.x, first.y);
    host.Pump();
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
}

TEST_F(TextTest, TheHoveredLinkFollowsTheMouse)
{
    ShowLinks();
    EXPECT_EQ(text.m_nHoverLink, -1);
    const POINT second = text.InsideLink(1);
    host.MoveMouse(second.x, second.y);
    EXPECT_EQ(text.m_nHoverLink, 1);
    host.MoveMouse(290, 90);
    EXPECT_EQ(text.m_nHoverLink, -1);
    host.MoveMouse(second.x, second.y);
    host.LeaveMouse();
    EXPECT_EQ(text.m_nHoverLink, -1);
}

TEST_F(TextTest, TheHoveredLinkIsDrawnInTheHoverColour)
{
    text.SetBkColor(0xFFFFFFFF);
    host.Manager().SetDefaultLinkHoverFontColor(0xFFFF0000);
    ShowLinks();
    const POINT first = text.InsideLink(0);
    host.MoveMouse(first.x, first.y);
    const auto hovered = host.Paint();
    EXPECT_GT(hovered.Count(Argb{0xFFFF0000}, text.m_rcLinks[0]), 0);
    EXPECT_EQ(hovered.Count(Argb{0xFFFF0000}, text.m_rcLinks[1]), 0);
}

TEST_F(TextTest, OverALinkTheCursorIsAHand)
{
    ShowLinks();
    const POINT first = text.InsideLink(0);
    host.MoveMouse(first.x, first.y);
    TEventUI event{};
    event.Type = UIEVENT_SETCURSOR;
    event.ptMouse = first;
    ::SetCursor(nullptr);
    text.DoEvent(event);
    EXPECT_TRUE(test::IsCursorShown(IDC_HAND));
    event.ptMouse = {290, 90};
    text.DoEvent(event);
    EXPECT_TRUE(test::IsCursorShown(IDC_ARROW));
}

} // namespace
