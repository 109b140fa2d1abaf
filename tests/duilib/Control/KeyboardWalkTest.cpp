#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// A page with every control that takes keys, walked and worked without a mouse.

using namespace DuiLib;
using test::ControlHost;
using test::Picture;

namespace {

constexpr wchar_t kSkin[] = LR"(<Window>
  <Default name="Button" value="height=&quot;24&quot; bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <Default name="Option" value="height=&quot;24&quot; bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <Default name="CheckBox" value="height=&quot;24&quot; bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <Default name="List" value="bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <Default name="ListHeaderItem" value="bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <Default name="TreeView" value="bordersize=&quot;1&quot; bordercolor=&quot;#FFC0C0C0&quot; focusbordercolor=&quot;#FF0066CC&quot;" />
  <VerticalLayout bkcolor="#FFFFFFFF" inset="4,4,4,4" childpadding="4">
    <Label text="&amp;Name" height="20" />
    <Edit name="edit" height="24" />
    <Text text="{a link}a link{/a}" showhtml="true" height="20" />
    <Button name="button" text="Press" shortcut="P" />
    <Option name="option1" group="g" text="one" selected="true" />
    <Option name="option2" group="g" text="two" />
    <CheckBox name="check" text="check" />
    <Progress height="12" value="30" />
    <Slider name="slider" height="24" min="0" max="100" value="50" step="5" />
    <Combo name="combo" height="24">
      <ListLabelElement text="red" selected="true" />
      <ListLabelElement text="green" />
      <ListLabelElement text="blue" />
    </Combo>
    <List name="list" height="100" vscrollbar="true">
      <ListHeader height="22"><ListHeaderItem name="column" text="Name" width="120" /></ListHeader>
      <ListTextElement name="row0" text="row 0" />
      <ListTextElement name="row1" text="row 1" />
      <ListContainerElement name="row2" height="24"><Label text="row 2" /></ListContainerElement>
      <ListLabelElement name="row3" text="row 3" />
    </List>
    <TreeView name="tree" height="120" vscrollbar="true">
      <TreeNode name="fruit" text="fruit">
        <TreeNode name="apple" text="apple" />
        <TreeNode name="pear" text="pear" />
      </TreeNode>
      <TreeNode name="tool" text="tool" />
    </TreeView>
    <TabLayout height="30"><Button name="paged" text="on a page" /></TabLayout>
    <TileLayout height="30" itemsize="80,24"><Button name="tiled" text="on a tile" /></TileLayout>
  </VerticalLayout></Window>)";

class KeyboardWalkTest : public testing::Test {
protected:
    ControlHost host{360, 640};

    void SetUp() override
    {
        ASSERT_NE(host.Load(kSkin), nullptr);
        host.Paint();
        host.Manager().SetFocus(nullptr);
    }

    std::wstring Focus()
    {
        CControlUI* const focused = host.Manager().GetFocus();
        return focused ? std::wstring(focused->GetName()) : L"";
    }

    void TabTo(const wchar_t* name)
    {
        for (int presses = 0; presses < 40; ++presses) {
            if (Focus() == name)
                return;
            host.Key(VK_TAB);
        }
        FAIL() << "Tab does not reach " << name;
    }
};

TEST_F(KeyboardWalkTest, TabReachesEveryControlOnceInDocumentOrder)
{
    std::vector<std::wstring> walk;
    for (host.Key(VK_TAB); walk.empty() || Focus() != walk.front(); host.Key(VK_TAB)) {
        walk.push_back(Focus());
        ASSERT_LT(walk.size(), 40u);
    }
    const std::vector<std::wstring> expected = {L"edit",   L"button", L"option1", L"option2",
                                                L"check",  L"slider", L"combo",   L"list",
                                                L"column", L"tree",   L"paged",   L"tiled"};
    EXPECT_EQ(walk, expected);
}

TEST_F(KeyboardWalkTest, TheFocusIsSeenOnEveryControl)
{
    for (const auto* name : {L"edit", L"button", L"option1", L"option2", L"check", L"slider",
                             L"combo", L"list", L"column", L"tree", L"paged", L"tiled"}) {
        SCOPED_TRACE(testing::Message() << name);
        host.Manager().SetFocus(nullptr);
        const Picture without = host.Paint();
        TabTo(name);
        const Picture with = host.Paint();
        const RECT place = host.Find<CControlUI>(name).GetPos();
        int differences =
            host.Find<CControlUI>(name).GetInterface(L"Edit") && ::GetFocus() != host.Window();
        for (int y = place.top; y < place.bottom; ++y)
            for (int x = place.left; x < place.right; ++x)
                differences += with.At(x, y) != without.At(x, y);
        EXPECT_GT(differences, 0);
    }
}

TEST_F(KeyboardWalkTest, AnEditTakesText)
{
    TabTo(L"edit");
    auto& edit = host.Find<CEditUI>(L"edit");
    ASSERT_NE(edit.GetHWND(), nullptr);
    ::SendMessageW(edit.GetHWND(), WM_CHAR, L'x', 1);
    EXPECT_STREQ(edit.GetText(), L"x");
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_TEXTCHANGED).size(), 1u);
}

TEST_F(KeyboardWalkTest, SpaceAndReturnPressButtonsOptionsAndBoxes)
{
    TabTo(L"button");
    host.Key(VK_SPACE);
    host.Key(VK_RETURN);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_CLICK).size(), 2u);

    TabTo(L"option2");
    host.Key(VK_SPACE);
    EXPECT_TRUE(host.Find<COptionUI>(L"option2").IsSelected());
    EXPECT_FALSE(host.Find<COptionUI>(L"option1").IsSelected());

    TabTo(L"check");
    host.Key(VK_SPACE);
    EXPECT_TRUE(host.Find<CCheckBoxUI>(L"check").GetCheck());
}

TEST_F(KeyboardWalkTest, AMnemonicPressesItsButton)
{
    host.Manager().PreMessageHandler(WM_SYSCHAR, L'P', 0, *std::make_unique<LRESULT>());
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_CLICK).size(), 1u);
    EXPECT_EQ(Focus(), L"button");
}

TEST_F(KeyboardWalkTest, ArrowsHomeAndEndMoveASlider)
{
    TabTo(L"slider");
    auto& slider = host.Find<CSliderUI>(L"slider");
    host.Key(VK_RIGHT);
    EXPECT_EQ(slider.GetValue(), 55);
    host.Key(VK_LEFT);
    EXPECT_EQ(slider.GetValue(), 50);
    host.Key(VK_HOME);
    EXPECT_EQ(slider.GetValue(), 0);
    host.Key(VK_END);
    EXPECT_EQ(slider.GetValue(), 100);
}

TEST_F(KeyboardWalkTest, ArrowsSelectInACombo)
{
    TabTo(L"combo");
    auto& combo = host.Find<CComboUI>(L"combo");
    host.Key(VK_DOWN);
    EXPECT_EQ(combo.GetCurSel(), 1);
    host.Key(VK_END);
    EXPECT_EQ(combo.GetCurSel(), 2);
    host.Key(VK_HOME);
    EXPECT_EQ(combo.GetCurSel(), 0);
}

TEST_F(KeyboardWalkTest, ArrowsSelectInAListAndReturnActivates)
{
    TabTo(L"list");
    auto& list = host.Find<CListUI>(L"list");
    host.Key(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 0);
    host.Key(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 1);
    host.Key(VK_END);
    EXPECT_EQ(list.GetCurSel(), 3);
    host.Key(VK_HOME);
    EXPECT_EQ(list.GetCurSel(), 0);
    host.ClearSent();
    host.Key(VK_RETURN);
    EXPECT_EQ(host.Sent(DUI_MSGTYPE_ITEMACTIVATE).size(), 1u);
}

TEST_F(KeyboardWalkTest, ArrowsOpenCloseAndWalkATree)
{
    TabTo(L"tree");
    auto& tree = host.Find<CTreeViewUI>(L"tree");
    host.Key(VK_DOWN);
    ASSERT_EQ(tree.GetCurSel(), 0);
    auto& fruit = host.Find<CTreeNodeUI>(L"fruit");
    auto& apple = host.Find<CTreeNodeUI>(L"apple");
    tree.SetItemExpand(true);
    host.Key(VK_LEFT);
    EXPECT_FALSE(apple.IsVisible());
    host.Key(VK_RIGHT);
    EXPECT_TRUE(apple.IsVisible());
    host.Key(VK_RIGHT);
    EXPECT_TRUE(apple.IsSelected());
    host.Key(VK_LEFT);
    EXPECT_TRUE(fruit.IsSelected());
    host.Key(VK_END);
    EXPECT_TRUE(host.Find<CTreeNodeUI>(L"tool").IsSelected());
}

} // namespace
