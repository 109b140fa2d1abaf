#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::Argb;
using test::ControlHost;
using test::SentTypes;

namespace {

// Shows the state bits.
class OpenButton : public CButtonUI {
public:
    using CButtonUI::m_uButtonState;
};

class ButtonTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    OpenButton& button = host.Add<OpenButton>();

    void SetUp() override { host.ClearSent(); }
};

bool RemoveSender(void* argument)
{
    auto* const sent = static_cast<TNotifyUI*>(argument);
    if (sent->sType != DUI_MSGTYPE_CLICK)
        return true;
    CControlUI* const sender = sent->pSender;
    static_cast<CContainerUI*>(sender->GetParent())->Remove(sender);
    return true;
}

TEST_F(ButtonTest, StartsCentredAndWithoutState)
{
    EXPECT_EQ(button.GetTextStyle(), static_cast<UINT>(DT_SINGLELINE | DT_VCENTER | DT_CENTER));
    EXPECT_EQ(button.m_uButtonState, 0u);
    EXPECT_EQ(button.GetHotFont(), -1);
    EXPECT_EQ(button.GetPushedFont(), -1);
    EXPECT_EQ(button.GetFocusedFont(), -1);
    EXPECT_EQ(button.GetBindTabLayoutIndex(), -1);
    EXPECT_STREQ(button.GetBindTabLayoutName(), L"");
}

TEST_F(ButtonTest, AnswersToItsNames)
{
    EXPECT_STREQ(button.GetClass(), L"ButtonUI");
    EXPECT_EQ(button.GetInterface(L"BUTTON"), static_cast<CButtonUI*>(&button));
    EXPECT_EQ(button.GetInterface(L"Label"), static_cast<CLabelUI*>(&button));
}

TEST_F(ButtonTest, IsATabStopWithTheKeyboardAndAsksForTheCursorWhileEnabled)
{
    EXPECT_EQ(button.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP | UIFLAG_SETCURSOR));
    button.SetKeyboardEnabled(false);
    EXPECT_EQ(button.GetControlFlags(), static_cast<UINT>(UIFLAG_SETCURSOR));
    button.SetKeyboardEnabled(true);
    button.SetEnabled(false);
    EXPECT_EQ(button.GetControlFlags(), static_cast<UINT>(UIFLAG_TABSTOP));
}

TEST_F(ButtonTest, ImageAttributesReachTheirSetters)
{
    const struct {
        const wchar_t* name;
        LPCTSTR (CButtonUI::*getter)();
    } rows[] = {
        {L"normalimage", &CButtonUI::GetNormalImage},
        {L"hotimage", &CButtonUI::GetHotImage},
        {L"pushedimage", &CButtonUI::GetPushedImage},
        {L"focusedimage", &CButtonUI::GetFocusedImage},
        {L"disabledimage", &CButtonUI::GetDisabledImage},
        {L"hotforeimage", &CButtonUI::GetHotForeImage},
        {L"pushedforeimage", &CButtonUI::GetPushedForeImage},
        {L"stateimage", &CButtonUI::GetStateImage},
        {L"bindtablayoutname", &CButtonUI::GetBindTabLayoutName},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name);
        const std::wstring value = std::wstring(row.name) + L".png";
        EXPECT_STREQ((button.*row.getter)(), L"");
        button.SetAttribute(row.name, value.c_str());
        EXPECT_STREQ((button.*row.getter)(), value.c_str());
    }
}

TEST_F(ButtonTest, ColourAttributesReachTheirSetters)
{
    const struct {
        const wchar_t* name;
        DWORD (CButtonUI::*getter)() const;
    } rows[] = {
        {L"hotbkcolor", &CButtonUI::GetHotBkColor},
        {L"pushedbkcolor", &CButtonUI::GetPushedBkColor},
        {L"disabledbkcolor", &CButtonUI::GetDisabledBkColor},
        {L"hottextcolor", &CButtonUI::GetHotTextColor},
        {L"pushedtextcolor", &CButtonUI::GetPushedTextColor},
        {L"focusedtextcolor", &CButtonUI::GetFocusedTextColor},
        {L"hotbordercolor", &CButtonUI::GetHotBorderColor},
        {L"pushedbordercolor", &CButtonUI::GetPushedBorderColor},
        {L"disabledbordercolor", &CButtonUI::GetDisabledBorderColor},
    };
    DWORD color = 0xFF010203;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name);
        wchar_t value[16];
        ::wsprintfW(value, L"#%08X", ++color);
        EXPECT_EQ((button.*row.getter)(), 0u);
        button.SetAttribute(row.name, value);
        EXPECT_EQ((button.*row.getter)(), color);
    }
}

TEST_F(ButtonTest, NumberAttributesReachTheirSetters)
{
    button.SetAttribute(L"statecount", L"4");
    button.SetAttribute(L"bindtabindex", L"2");
    button.SetAttribute(L"hotfont", L"5");
    button.SetAttribute(L"pushedfont", L"6");
    EXPECT_EQ(button.GetStateCount(), 4);
    EXPECT_EQ(button.GetBindTabLayoutIndex(), 2);
    EXPECT_EQ(button.GetHotFont(), 5);
    EXPECT_EQ(button.GetPushedFont(), 6);
}

TEST_F(ButtonTest, TheFocusedFontIsAcceptedInBothSpellings)
{
    button.SetAttribute(L"focuedfont", L"7");
    EXPECT_EQ(button.GetFocusedFont(), 7);
    button.SetAttribute(L"focusedfont", L"8");
    EXPECT_EQ(button.GetFocusedFont(), 8);
}

TEST_F(ButtonTest, AClickIsSentOnRelease)
{
    host.Press(25, 12);
    EXPECT_TRUE(host.Sent(L"click").empty());
    EXPECT_EQ(button.m_uButtonState & (UISTATE_PUSHED | UISTATE_CAPTURED),
              static_cast<UINT>(UISTATE_PUSHED | UISTATE_CAPTURED));
    host.Release(25, 12);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    EXPECT_EQ(button.m_uButtonState & (UISTATE_PUSHED | UISTATE_CAPTURED), 0u);
}

TEST_F(ButtonTest, ReleasingOutsideDoesNotClick)
{
    host.Press(25, 12);
    host.MoveMouse(25, 200);
    EXPECT_EQ(button.m_uButtonState & UISTATE_PUSHED, 0u);
    EXPECT_NE(button.m_uButtonState & UISTATE_CAPTURED, 0u);
    host.Release(25, 200);
    EXPECT_TRUE(host.Sent(L"click").empty());
    EXPECT_EQ(button.m_uButtonState & UISTATE_CAPTURED, 0u);
}

TEST_F(ButtonTest, ReturningWhilePressedPushesItAgain)
{
    host.Press(25, 12);
    host.MoveMouse(25, 200);
    host.MoveMouse(25, 12);
    EXPECT_NE(button.m_uButtonState & UISTATE_PUSHED, 0u);
    host.Release(25, 12);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
}

TEST_F(ButtonTest, ADoubleClickIsTwoClicks)
{
    host.DoubleClick(25, 12);
    EXPECT_EQ(host.Sent(L"click").size(), 2u);
}

TEST_F(ButtonTest, ADisabledButtonDoesNothing)
{
    button.SetEnabled(false);
    host.Click(25, 12);
    EXPECT_FALSE(button.Activate());
    EXPECT_TRUE(host.Sent(L"click").empty());
    EXPECT_EQ(button.m_uButtonState, static_cast<UINT>(UISTATE_DISABLED));
}

TEST_F(ButtonTest, DisablingItWhilePressedForgetsThePress)
{
    host.Press(25, 12);
    button.SetEnabled(false);
    button.SetEnabled(true);
    EXPECT_EQ(button.m_uButtonState, 0u);
    host.Release(25, 12);
    EXPECT_TRUE(host.Sent(L"click").empty());
}

TEST_F(ButtonTest, AnInvisibleButtonIsNotActivated)
{
    button.SetVisible(false);
    EXPECT_FALSE(button.Activate());
    EXPECT_TRUE(host.Sent(L"click").empty());
}

TEST_F(ButtonTest, ActivatingItSendsAClick)
{
    EXPECT_TRUE(button.Activate());
    EXPECT_EQ(SentTypes(host), L"click");
}

TEST_F(ButtonTest, TheMouseMakesItHot)
{
    host.MoveMouse(25, 12);
    EXPECT_NE(button.m_uButtonState & UISTATE_HOT, 0u);
    host.LeaveMouse();
    EXPECT_EQ(button.m_uButtonState & UISTATE_HOT, 0u);
}

TEST_F(ButtonTest, RichEventsAreSentOnlyWhenAskedFor)
{
    host.MoveMouse(25, 12);
    host.Press(25, 12);
    host.Release(25, 12);
    host.LeaveMouse();
    EXPECT_TRUE(host.Sent(L"mouseenter").empty());
    EXPECT_TRUE(host.Sent(L"buttondown").empty());
    EXPECT_TRUE(host.Sent(L"mouseleave").empty());

    button.SetRichEvent(true);
    button.SetFocus();
    host.ClearSent();
    host.MoveMouse(25, 12);
    host.Press(25, 12);
    host.Release(25, 12);
    host.LeaveMouse();
    EXPECT_EQ(SentTypes(host), L"mouseenter buttondown click mouseleave");
}

TEST_F(ButtonTest, SpaceAndReturnActivateIt)
{
    button.SetFocus();
    host.ClearSent();
    host.Key(VK_SPACE);
    host.Key(VK_RETURN);
    host.Key('A');
    EXPECT_EQ(host.Sent(L"click").size(), 2u);

    button.SetKeyboardEnabled(false);
    host.Key(VK_SPACE);
    EXPECT_EQ(host.Sent(L"click").size(), 2u);
}

TEST_F(ButtonTest, ARightClickSendsTheMenuWhenItIsUsed)
{
    host.RightClick(25, 12);
    EXPECT_TRUE(host.Sent(L"menu").empty());
    button.SetContextMenuUsed(true);
    host.RightClick(25, 12);
    EXPECT_EQ(host.Sent(L"menu").size(), 1u);
}

TEST_F(ButtonTest, WithTheMouseOffItsParentGetsTheMouse)
{
    static int presses;
    presses = 0;
    class Parent : public CContainerUI {
    public:
        void DoEvent(TEventUI& event) override
        {
            presses += event.Type == UIEVENT_BUTTONDOWN;
            CContainerUI::DoEvent(event);
        }
    };
    auto& parent = host.Add<Parent>();
    auto* const child = new OpenButton;
    parent.Add(child);
    host.Paint();
    child->SetMouseEnabled(false);
    TEventUI event{};
    event.Type = UIEVENT_BUTTONDOWN;
    event.ptMouse = {25, 12};
    child->DoEvent(event);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(child->m_uButtonState, 0u);
}

TEST_F(ButtonTest, AClickHandlerMayDeleteTheButton)
{
    test::DeleteAtOnce(host.Root());
    button.OnNotify += &RemoveSender;
    button.BindTabLayoutName(L"tabs");
    button.BindTabIndex(0);
    host.Click(25, 12);
    host.Pump();
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
}

TEST_F(ButtonTest, ARichEventHandlerMayDeleteTheButton)
{
    test::DeleteAtOnce(host.Root());
    button.SetRichEvent(true);
    button.OnNotify += [](void* argument) {
        auto* const sent = static_cast<TNotifyUI*>(argument);
        if (sent->sType == DUI_MSGTYPE_MOUSEENTER) {
            CControlUI* const sender = sent->pSender;
            static_cast<CContainerUI*>(sender->GetParent())->Remove(sender);
        }
        return true;
    };
    host.MoveMouse(25, 12);
    host.MoveMouse(26, 12);
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
}

TEST(ButtonTabTest, AClickSelectsTheBoundPage)
{
    ControlHost host{100, 100};
    ASSERT_NE(host.Load(LR"(<Window><VerticalLayout>
          <Button name="second" height="20" bindtabindex="1" bindtablayoutname="pages" />
          <TabLayout name="pages"><Control name="a" /><Control name="b" /><Control name="c" />
          </TabLayout>
        </VerticalLayout></Window>)"),
              nullptr);
    auto& button = host.Find<CButtonUI>(L"second");
    auto& pages = host.Find<CTabLayoutUI>(L"pages");
    ASSERT_EQ(pages.GetCurSel(), 0);
    host.ClearSent();
    host.Click(50, 10);
    EXPECT_EQ(pages.GetCurSel(), 1);
    ASSERT_EQ(host.Sent(L"tabselect").size(), 1u);
    EXPECT_EQ(host.Sent(L"tabselect")[0].wParam, 1u);
    const std::wstring order = SentTypes(host);
    EXPECT_LT(order.find(L"click"), order.find(L"tabselect"));

    button.BindTriggerTabSel(2);
    EXPECT_EQ(pages.GetCurSel(), 2);
    button.BindTriggerTabSel();
    EXPECT_EQ(pages.GetCurSel(), 1);

    button.RemoveBindTabIndex();
    EXPECT_EQ(button.GetBindTabLayoutIndex(), -1);
    pages.SelectItem(0);
    host.Click(50, 10);
    EXPECT_EQ(pages.GetCurSel(), 0);
}

TEST(ButtonTabTest, ABindingToSomethingElseIsHarmless)
{
    ControlHost host{100, 100};
    ASSERT_NE(host.Load(LR"(<Window><VerticalLayout>
          <Button height="20" bindtabindex="1" bindtablayoutname="label" />
          <Button height="20" bindtabindex="1" bindtablayoutname="nobody" />
          <Label name="label" />
        </VerticalLayout></Window>)"),
              nullptr);
    host.Click(50, 10);
    host.Click(50, 30);
    EXPECT_EQ(host.Sent(L"click").size(), 2u);
}

TEST_F(ButtonTest, AButtonWithoutAManagerIsHarmless)
{
    OpenButton outside;
    outside.SetNormalImage(L"picture");
    TEventUI event{};
    event.Type = UIEVENT_KEYDOWN;
    event.chKey = VK_SPACE;
    outside.DoEvent(event);
    event.Type = UIEVENT_MOUSEENTER;
    outside.DoEvent(event);
    outside.SetEnabled(false);
    outside.BindTabLayoutName(L"tabs");
    outside.BindTriggerTabSel(1);
    EXPECT_FALSE(outside.Activate());
}

TEST_F(ButtonTest, ACopyMadeInAClickHandlerLeavesTheOriginalAlone)
{
    button.SetText(L"original");
    button.SetHotImage(L"picture");
    button.OnNotify += [](void* argument) {
        auto* const sent = static_cast<TNotifyUI*>(argument);
        if (sent->sType == DUI_MSGTYPE_CLICK) {
            const OpenButton copy(*static_cast<OpenButton*>(sent->pSender));
            EXPECT_STREQ(copy.GetText(), L"original");
        }
        return true;
    };
    host.Click(25, 12);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
    {
        OpenButton copy(button);
        EXPECT_STREQ(copy.GetHotImage(), L"picture");
    }
    host.Click(25, 12);
    EXPECT_EQ(host.Sent(L"click").size(), 2u);
}

TEST_F(ButtonTest, NullTextsCountAsEmpty)
{
    button.SetNormalImage(L"picture");
    button.SetNormalImage(nullptr);
    button.BindTabLayoutName(nullptr);
    EXPECT_STREQ(button.GetNormalImage(), L"");
    EXPECT_STREQ(button.GetBindTabLayoutName(), L"");
}

} // namespace
