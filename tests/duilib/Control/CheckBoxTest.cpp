#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::ControlHost;
using test::SentTypes;

namespace {

class CheckBoxTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    CCheckBoxUI& box = host.Add<CCheckBoxUI>();

    void SetUp() override
    {
        box.SetFocus();
        host.ClearSent();
    }
};

TEST_F(CheckBoxTest, AnswersToItsNames)
{
    EXPECT_STREQ(box.GetClass(), L"CheckBoxUI");
    EXPECT_EQ(box.GetInterface(L"CheckBox"), static_cast<CCheckBoxUI*>(&box));
    EXPECT_EQ(box.GetInterface(L"Option"), static_cast<COptionUI*>(&box));
}

TEST_F(CheckBoxTest, AClickToggles)
{
    host.Press(25, 12);
    EXPECT_FALSE(box.GetCheck());
    host.Release(25, 12);
    EXPECT_TRUE(box.GetCheck());
    EXPECT_EQ(SentTypes(host), L"click selectchanged");
    EXPECT_EQ(host.Sent(L"selectchanged")[0].wParam, 1u);
    host.Click(25, 12);
    EXPECT_FALSE(box.GetCheck());
    EXPECT_EQ(host.Sent(L"selectchanged")[1].wParam, 0u);
}

TEST_F(CheckBoxTest, CheckingItByProgramIsAChangeOfSelection)
{
    box.SetCheck(true);
    EXPECT_TRUE(box.IsSelected());
    box.SetCheck(true);
    EXPECT_EQ(SentTypes(host), L"selectchanged");
    box.SetCheck(false);
    EXPECT_FALSE(box.GetCheck());
}

TEST_F(CheckBoxTest, WithAutomaticCheckThePressToggles)
{
    box.SetAutoCheck(true);
    host.Press(25, 12);
    EXPECT_TRUE(box.GetCheck());
    EXPECT_EQ(SentTypes(host), L"selectchanged checkclick");
    host.Release(25, 12);
    EXPECT_TRUE(box.GetCheck());
    EXPECT_EQ(SentTypes(host), L"selectchanged checkclick") << "and no click";
}

TEST_F(CheckBoxTest, WithAutomaticCheckADoubleClickTogglesTwice)
{
    box.SetAutoCheck(true);
    host.DoubleClick(25, 12);
    EXPECT_FALSE(box.GetCheck());
    EXPECT_EQ(host.Sent(L"checkclick").size(), 2u);
}

TEST_F(CheckBoxTest, AutomaticCheckIsAnAttribute)
{
    box.SetAttribute(L"EnableAutoCheck", L"true");
    host.Press(25, 12);
    EXPECT_EQ(host.Sent(L"checkclick").size(), 1u);
    host.Release(25, 12);
    box.SetAttribute(L"enableautocheck", L"false");
    host.Click(25, 12);
    EXPECT_EQ(host.Sent(L"checkclick").size(), 1u);
    EXPECT_EQ(host.Sent(L"click").size(), 1u);
}

TEST_F(CheckBoxTest, AutomaticCheckLeavesADisabledBoxAlone)
{
    box.SetAutoCheck(true);
    box.SetEnabled(false);
    host.Click(25, 12);
    EXPECT_FALSE(box.GetCheck());
    EXPECT_TRUE(host.Sent(L"checkclick").empty());
}

TEST_F(CheckBoxTest, SpaceTogglesWithAndWithoutAutomaticCheck)
{
    host.Key(VK_SPACE);
    EXPECT_TRUE(box.GetCheck());
    box.SetAutoCheck(true);
    host.Key(VK_SPACE);
    EXPECT_FALSE(box.GetCheck());
    EXPECT_EQ(SentTypes(host), L"click selectchanged click selectchanged");
}

TEST_F(CheckBoxTest, AHandlerMayDeleteTheBoxWhenItIsChecked)
{
    test::DeleteAtOnce(host.Root());
    box.SetAutoCheck(true);
    box.OnNotify += [](void* argument) {
        auto* const sent = static_cast<TNotifyUI*>(argument);
        if (sent->sType == DUI_MSGTYPE_SELECTCHANGED) {
            CControlUI* const sender = sent->pSender;
            static_cast<CContainerUI*>(sender->GetParent())->Remove(sender);
        }
        return true;
    };
    host.Click(25, 12);
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 0);
    EXPECT_TRUE(host.Sent(L"checkclick").empty());
}

} // namespace
