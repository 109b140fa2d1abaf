#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::SentTypes;

namespace {

constexpr wchar_t kSkin[] = LR"(<Window><VerticalLayout>
      <Button name="first" />
      <Label name="caption" text="no stop" />
      <HorizontalLayout>
        <Option name="second" group="g" />
        <Option name="third" group="g" />
      </HorizontalLayout>
      <CheckBox name="fourth" />
      <Progress name="bar" />
    </VerticalLayout></Window>)";

class KeyboardTest : public testing::Test {
protected:
    ControlHost host{200, 120};

    void SetUp() override { ASSERT_NE(host.Load(kSkin), nullptr); }

    std::wstring Focus()
    {
        CControlUI* const focused = host.Manager().GetFocus();
        return focused ? std::wstring(focused->GetName()) : L"";
    }

    // The focus after each of so many presses of Tab.
    std::wstring TabWalk(int presses)
    {
        std::wstring walk;
        for (int i = 0; i < presses; ++i) {
            host.Key(VK_TAB);
            walk += (walk.empty() ? L"" : L" ") + Focus();
        }
        return walk;
    }
};

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

private:
    BYTE m_before[256];
};

TEST_F(KeyboardTest, TabWalksTheStopsInDocumentOrderAndAround)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    EXPECT_EQ(TabWalk(5), L"second third fourth first second");
}

TEST_F(KeyboardTest, ShiftTabWalksBackwards)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    const HeldKey shift(VK_SHIFT);
    EXPECT_EQ(TabWalk(5), L"fourth third second first fourth");
}

TEST_F(KeyboardTest, DisabledInvisibleAndKeyboardlessControlsAreSkipped)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    host.Find<COptionUI>(L"second").SetEnabled(false);
    host.Find<COptionUI>(L"third").SetVisible(false);
    host.Paint();
    EXPECT_EQ(TabWalk(2), L"fourth first");

    host.Find<COptionUI>(L"second").SetEnabled(true);
    host.Find<CCheckBoxUI>(L"fourth").SetKeyboardEnabled(false);
    host.Paint();
    EXPECT_EQ(TabWalk(2), L"second first");
}

TEST_F(KeyboardTest, ControlsInAHiddenContainerAreSkipped)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    host.Find<COptionUI>(L"second").GetParent()->SetVisible(false);
    host.Paint();
    EXPECT_EQ(TabWalk(2), L"fourth first");
}

TEST_F(KeyboardTest, TheFocusMovesWithOneNotificationOnEachSide)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    host.ClearSent();
    host.Key(VK_TAB);
    ASSERT_EQ(SentTypes(host), L"killfocus setfocus");
    EXPECT_EQ(host.Sent()[0].senderName, L"first");
    EXPECT_EQ(host.Sent()[1].senderName, L"second");
    EXPECT_FALSE(host.Find<CButtonUI>(L"first").IsFocused());
    EXPECT_TRUE(host.Find<COptionUI>(L"second").IsFocused());
}

TEST_F(KeyboardTest, SpaceAndReturnActivateWhatHasTheFocus)
{
    const struct {
        const wchar_t* name;
        const wchar_t* onSpace;
        const wchar_t* onReturn;
    } rows[] = {
        {L"first", L"click", L"click"},
        {L"second", L"click selectchanged", L"click"},
        {L"third", L"click selectchanged selectchanged", L"click"},
        {L"fourth", L"click selectchanged", L"click selectchanged"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name);
        host.Manager().FindControl(row.name)->SetFocus();
        host.ClearSent();
        host.Key(VK_SPACE);
        EXPECT_EQ(SentTypes(host), row.onSpace);
        host.ClearSent();
        host.Key(VK_RETURN);
        EXPECT_EQ(SentTypes(host), row.onReturn);
    }
}

TEST_F(KeyboardTest, KeysGoOnlyToTheFocusedControl)
{
    host.Find<CCheckBoxUI>(L"fourth").SetFocus();
    host.ClearSent();
    host.Key(VK_SPACE);
    for (const auto& sent : host.Sent())
        EXPECT_EQ(sent.senderName, L"fourth");
    EXPECT_TRUE(host.Find<CCheckBoxUI>(L"fourth").GetCheck());
    EXPECT_FALSE(host.Find<COptionUI>(L"second").IsSelected());
}

TEST_F(KeyboardTest, WithoutAFocusKeysDoNothing)
{
    host.Manager().SetFocus(nullptr);
    host.ClearSent();
    host.Key(VK_SPACE);
    host.Key(VK_RETURN);
    EXPECT_TRUE(host.Sent(L"click").empty());
}

TEST_F(KeyboardTest, AShortcutFocusesAndActivatesItsControl)
{
    host.Find<CButtonUI>(L"first").SetFocus();
    host.Find<CCheckBoxUI>(L"fourth").SetShortcut(L'K');
    host.ClearSent();
    LRESULT result = 0;
    EXPECT_TRUE(host.Manager().PreMessageHandler(WM_SYSCHAR, L'K', 1, result));
    EXPECT_EQ(Focus(), L"fourth");
    EXPECT_TRUE(host.Find<CCheckBoxUI>(L"fourth").GetCheck());
    EXPECT_EQ(SentTypes(host), L"killfocus setfocus click selectchanged");
}

TEST_F(KeyboardTest, AShortcutCanBeSetInTheSkin)
{
    host.Find<CButtonUI>(L"first").SetAttribute(L"shortcut", L"J");
    LRESULT result = 0;
    EXPECT_TRUE(host.Manager().PreMessageHandler(WM_SYSCHAR, L'J', 1, result));
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
}

TEST_F(KeyboardTest, TheShortcutOfADisabledControlDoesNothing)
{
    auto& box = host.Find<CCheckBoxUI>(L"fourth");
    box.SetShortcut(L'K');
    box.SetEnabled(false);
    LRESULT result = 0;
    EXPECT_FALSE(host.Manager().PreMessageHandler(WM_SYSCHAR, L'K', 1, result));
    EXPECT_FALSE(box.GetCheck());
    EXPECT_TRUE(host.Sent(L"click").empty());
}

TEST_F(KeyboardTest, AnUnusedShortcutIsNotConsumed)
{
    LRESULT result = 0;
    EXPECT_FALSE(host.Manager().PreMessageHandler(WM_SYSCHAR, L'Q', 1, result));
}

TEST_F(KeyboardTest, HidingTheFocusedControlTakesTheFocusAway)
{
    auto& box = host.Find<CCheckBoxUI>(L"fourth");
    box.SetFocus();
    box.SetVisible(false);
    EXPECT_NE(host.Manager().GetFocus(), &box);
    EXPECT_FALSE(box.IsFocused());
    host.ClearSent();
    host.Key(VK_SPACE);
    EXPECT_FALSE(box.GetCheck());
}

TEST_F(KeyboardTest, ADisabledControlThatKeepsTheFocusIgnoresKeys)
{
    auto& box = host.Find<CCheckBoxUI>(L"fourth");
    box.SetFocus();
    box.SetEnabled(false);
    host.Key(VK_SPACE);
    EXPECT_FALSE(box.GetCheck());
}

TEST_F(KeyboardTest, AClickMovesTheFocusSoThatTabGoesOnFromThere)
{
    auto& third = host.Find<COptionUI>(L"third");
    const RECT place = third.GetPos();
    host.Click((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    EXPECT_EQ(Focus(), L"third");
    EXPECT_EQ(TabWalk(1), L"fourth");
}

TEST_F(KeyboardTest, AKeyHandlerMayRemoveTheControl)
{
    test::DeleteAtOnce(host.Root());
    auto& box = host.Find<CCheckBoxUI>(L"fourth");
    box.OnNotify += [](void* argument) {
        auto* const sent = static_cast<TNotifyUI*>(argument);
        if (sent->sType == DUI_MSGTYPE_CLICK) {
            CControlUI* const sender = sent->pSender;
            static_cast<CContainerUI*>(sender->GetParent()->GetInterface(DUI_CTR_CONTAINER))
                ->Remove(sender);
        }
        return true;
    };
    box.SetFocus();
    host.Key(VK_SPACE);
    host.Pump();
    EXPECT_EQ(host.Manager().FindControl(L"fourth"), nullptr);
    EXPECT_EQ(host.Manager().GetFocus(), nullptr);
}

} // namespace
