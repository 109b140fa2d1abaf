#include "duilib/Control/TestPictures.h"
#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::SentTypes;

namespace {

// "a+ b-": who sent "selectchanged" with which state, in order.
std::wstring Changes(const ControlHost& host)
{
    std::wstring changes;
    for (const auto& sent : host.Sent(L"selectchanged"))
        changes += (changes.empty() ? L"" : L" ") + sent.senderName + (sent.wParam ? L"+" : L"-");
    return changes;
}

class OptionTest : public testing::Test {
protected:
    ControlHost host{50, 24};
    COptionUI& option = host.Add<COptionUI>();

    void SetUp() override { host.ClearSent(); }
};

TEST_F(OptionTest, AnswersToItsNames)
{
    EXPECT_STREQ(option.GetClass(), L"OptionUI");
    EXPECT_EQ(option.GetInterface(L"Option"), static_cast<COptionUI*>(&option));
    EXPECT_EQ(option.GetInterface(L"Button"), static_cast<CButtonUI*>(&option));
}

TEST_F(OptionTest, AttributesReachTheirSetters)
{
    option.SetAttribute(L"group", L"letters");
    option.SetAttribute(L"grouptype", L"vowels");
    option.SetAttribute(L"selectedimage", L"1.png");
    option.SetAttribute(L"selectedhotimage", L"2.png");
    option.SetAttribute(L"selectedpushedimage", L"3.png");
    option.SetAttribute(L"selectedforeimage", L"4.png");
    option.SetAttribute(L"selectedstateimage", L"5.png");
    option.SetAttribute(L"selectedstatecount", L"3");
    option.SetAttribute(L"selectedfont", L"6");
    option.SetAttribute(L"selectedbkcolor", L"#FF000007");
    option.SetAttribute(L"selectedtextcolor", L"#FF000008");
    option.SetAttribute(L"selected", L"true");
    EXPECT_STREQ(option.GetGroup(), L"letters");
    EXPECT_STREQ(option.GetGroupType(), L"vowels");
    EXPECT_STREQ(option.GetSelectedImage(), L"1.png");
    EXPECT_STREQ(option.GetSelectedHotImage(), L"2.png");
    EXPECT_STREQ(option.GetSelectedPushedImage(), L"3.png");
    EXPECT_STREQ(option.GetSelectedForedImage(), L"4.png");
    EXPECT_STREQ(option.GetSelectedStateImage(), L"5.png");
    EXPECT_EQ(option.GetSelectedStateCount(), 3);
    EXPECT_EQ(option.GetSelectedFont(), 6);
    EXPECT_EQ(option.GetSelectBkColor(), 0xFF000007u);
    EXPECT_EQ(option.GetSelectedTextColor(), 0xFF000008u);
    EXPECT_TRUE(option.IsSelected());
}

TEST_F(OptionTest, WithoutAGroupAClickToggles)
{
    option.SetFocus();
    host.ClearSent();
    host.Click(25, 12);
    EXPECT_TRUE(option.IsSelected());
    host.Click(25, 12);
    EXPECT_FALSE(option.IsSelected());
    EXPECT_EQ(SentTypes(host), L"click selectchanged click selectchanged");
}

TEST_F(OptionTest, InAGroupAClickSelectsAndStaysSelected)
{
    option.SetGroup(L"g");
    host.Click(25, 12);
    host.Click(25, 12);
    EXPECT_TRUE(option.IsSelected());
    EXPECT_EQ(host.Sent(L"click").size(), 2u);
    EXPECT_EQ(host.Sent(L"selectchanged").size(), 1u);
}

TEST_F(OptionTest, SelectingCarriesTheNewStateAndOnlyOnAChange)
{
    option.SetName(L"a");
    option.Selected(true);
    option.Selected(true);
    option.Selected(false);
    EXPECT_EQ(Changes(host), L"a+ a-");
}

TEST_F(OptionTest, SelectingCanBeSilent)
{
    option.Selected(true, false);
    EXPECT_TRUE(option.IsSelected());
    EXPECT_TRUE(host.Sent(L"selectchanged").empty());
}

TEST_F(OptionTest, ADisabledOptionIsNotActivated)
{
    option.SetEnabled(false);
    EXPECT_FALSE(option.Activate());
    host.Click(25, 12);
    EXPECT_FALSE(option.IsSelected());
    option.Selected(true);
    EXPECT_TRUE(option.IsSelected()) << "a program may still select it";
}

class OptionGroupTest : public testing::Test {
protected:
    ControlHost host{100, 100};
    COptionUI* a = nullptr;
    COptionUI* b = nullptr;
    COptionUI* c = nullptr;

    void SetUp() override
    {
        ASSERT_NE(host.Load(LR"(<Window><VerticalLayout>
              <Option name="a" group="g" selected="true" />
              <Option name="b" group="g" />
              <Option name="c" group="g" />
            </VerticalLayout></Window>)"),
                  nullptr);
        a = &host.Find<COptionUI>(L"a");
        b = &host.Find<COptionUI>(L"b");
        c = &host.Find<COptionUI>(L"c");
        host.ClearSent();
    }
};

TEST_F(OptionGroupTest, OptionsOfAGroupExcludeEachOther)
{
    ASSERT_TRUE(a->IsSelected());
    b->Activate();
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_FALSE(c->IsSelected());
}

TEST_F(OptionGroupTest, TheDeselectedOptionSpeaksBeforeTheSelectedOne)
{
    b->Activate();
    EXPECT_EQ(SentTypes(host), L"click selectchanged selectchanged");
    EXPECT_EQ(Changes(host), L"a- b+");
}

TEST_F(OptionGroupTest, ASilentSelectionIsSilentForTheOthersToo)
{
    b->Selected(true, false);
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(host.Sent().empty());
}

TEST_F(OptionGroupTest, OptionsThatShareAGroupTypeDoNotExcludeEachOther)
{
    a->SetGroupType(L"t");
    b->SetGroupType(L"t");
    b->Selected(true);
    EXPECT_TRUE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    c->Selected(true);
    EXPECT_FALSE(a->IsSelected());
    EXPECT_FALSE(b->IsSelected());
}

TEST_F(OptionGroupTest, AnOptionOfAnotherGroupIsLeftAlone)
{
    c->SetGroup(L"other");
    c->Selected(true);
    EXPECT_TRUE(a->IsSelected());
    b->Selected(true);
    EXPECT_TRUE(c->IsSelected());
    EXPECT_FALSE(a->IsSelected());
}

TEST_F(OptionGroupTest, LeavingTheGroupEndsTheExclusion)
{
    a->SetGroup();
    EXPECT_STREQ(a->GetGroup(), L"");
    b->Selected(true);
    EXPECT_TRUE(a->IsSelected());
    a->Activate();
    EXPECT_FALSE(a->IsSelected()) << "without a group it toggles";
}

TEST_F(OptionGroupTest, ASelectedNewcomerTakesTheSelection)
{
    auto* const late = new COptionUI;
    late->SetGroup(L"g");
    late->Selected(true);
    static_cast<CContainerUI*>(host.Root())->Add(late);
    EXPECT_TRUE(late->IsSelected());
    EXPECT_FALSE(a->IsSelected());

    auto* const later = new COptionUI;
    static_cast<CContainerUI*>(host.Root())->Add(later);
    later->Selected(true);
    later->SetGroup(L"g");
    EXPECT_TRUE(later->IsSelected());
    EXPECT_FALSE(late->IsSelected());
    EXPECT_TRUE(host.Sent(L"selectchanged").size() == 1u) << "only the explicit selection";
}

TEST_F(OptionGroupTest, ADeletedOptionLeavesItsGroup)
{
    test::DeleteAtOnce(host.Root());
    static_cast<CContainerUI*>(host.Root())->Remove(a);
    b->Activate();
    EXPECT_TRUE(b->IsSelected());
    ASSERT_NE(host.Manager().GetOptionGroup(L"g"), nullptr);
    EXPECT_EQ(host.Manager().GetOptionGroup(L"g")->GetSize(), 2);
}

TEST_F(OptionGroupTest, AHandlerMayDeleteTheOptionThatWasDeselected)
{
    test::DeleteAtOnce(host.Root());
    a->OnNotify += [](void* argument) {
        CControlUI* const sender = static_cast<TNotifyUI*>(argument)->pSender;
        static_cast<CContainerUI*>(sender->GetParent())->Remove(sender);
        return true;
    };
    b->Activate();
    EXPECT_TRUE(b->IsSelected());
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 2);
}

TEST_F(OptionGroupTest, AHandlerMayDeleteTheOptionThatIsBeingSelected)
{
    test::DeleteAtOnce(host.Root());
    a->OnNotify += [](void* argument) {
        auto* const parent =
            static_cast<CContainerUI*>(static_cast<TNotifyUI*>(argument)->pSender->GetParent());
        parent->RemoveAt(1);
        return true;
    };
    b->Activate();
    EXPECT_FALSE(a->IsSelected());
    EXPECT_EQ(static_cast<CContainerUI*>(host.Root())->GetCount(), 2);
    EXPECT_EQ(Changes(host), L"a-");
}

TEST_F(OptionGroupTest, AHandlerThatSelectsAgainHasTheLastWord)
{
    a->OnNotify += [](void* argument) {
        auto* const sent = static_cast<TNotifyUI*>(argument);
        if (sent->sType == DUI_MSGTYPE_SELECTCHANGED && !sent->wParam)
            static_cast<COptionUI*>(sent->pSender)->Selected(true);
        return true;
    };
    b->Activate();
    EXPECT_TRUE(a->IsSelected());
    EXPECT_FALSE(b->IsSelected());
}

TEST_F(OptionGroupTest, GroupsOfTwoWindowsAreSeparate)
{
    ControlHost other{50, 24};
    auto& elsewhere = other.Add<COptionUI>();
    elsewhere.SetGroup(L"g");
    elsewhere.Selected(true);
    EXPECT_TRUE(a->IsSelected());
    EXPECT_TRUE(elsewhere.IsSelected());
}

TEST_F(OptionGroupTest, ACopyIsNotInTheGroup)
{
    const int size = host.Manager().GetOptionGroup(L"g")->GetSize();
    {
        COptionUI copy(*a);
        EXPECT_STREQ(copy.GetGroup(), L"g");
        EXPECT_EQ(host.Manager().GetOptionGroup(L"g")->GetSize(), size);
    }
    EXPECT_EQ(host.Manager().GetOptionGroup(L"g")->GetSize(), size);
}

TEST(OptionSkinTest, OfTwoSelectedOptionsInASkinTheLastOneWins)
{
    ControlHost host{100, 100};
    ASSERT_NE(host.Load(LR"(<Window><VerticalLayout>
          <Option name="a" group="g" selected="true" />
          <Option name="b" group="g" selected="true" />
        </VerticalLayout></Window>)"),
              nullptr);
    EXPECT_FALSE(host.Find<COptionUI>(L"a").IsSelected());
    EXPECT_TRUE(host.Find<COptionUI>(L"b").IsSelected());
}

} // namespace
