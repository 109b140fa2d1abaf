#include "support/ControlHost.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace DuiLib;

namespace {

class ChildLayoutTest : public testing::Test {
protected:
    ChildLayoutTest() { CPaintManagerUI::SetResourcePath(folder.Path().c_str()); }

    CChildLayoutUI& Load(const wchar_t* attributes)
    {
        const auto skin = std::wstring(L"<Window><VBox><ChildLayout name=\"child\" ") + attributes +
                          L"/></VBox></Window>";
        EXPECT_NE(host.Load(skin.c_str()), nullptr);
        return host.Find<CChildLayoutUI>(L"child");
    }

    test::TempFolder folder;
    test::ControlHost host{100, 50};
};

} // namespace

TEST_F(ChildLayoutTest, AnswersItsClassAndInterfaces)
{
    CChildLayoutUI layout;
    EXPECT_STREQ(layout.GetClass(), L"ChildLayoutUI");
    EXPECT_EQ(layout.GetInterface(L"childlayout"), &layout);
    EXPECT_EQ(layout.GetInterface(L"IContainer"), static_cast<IContainerUI*>(&layout));
    EXPECT_EQ(layout.GetInterface(L"Label"), nullptr);
}

TEST_F(ChildLayoutTest, FileIsBuiltWhenTheLayoutIsInitialised)
{
    folder.Write(L"page.xml",
                 std::string_view("<Page><Label name=\"inner\" text=\"hello\"/><Button/></Page>"));
    auto& layout = Load(L"xmlfile=\"page.xml\"");
    ASSERT_EQ(layout.GetCount(), 1);
    CControlUI* const inner = host.Manager().FindControl(L"inner");
    ASSERT_EQ(inner, layout.GetItemAt(0));
    EXPECT_STREQ(inner->GetText(), L"hello");
    EXPECT_EQ(inner->GetParent(), &layout);
}

TEST_F(ChildLayoutTest, ChildFillsTheLayout)
{
    folder.Write(L"page.xml", std::string_view("<Page><Label name=\"inner\"/></Page>"));
    auto& layout = Load(L"xmlfile=\"page.xml\" inset=\"5,6,7,8\"");
    const RECT outer = layout.GetPos();
    const RECT inner = layout.GetItemAt(0)->GetPos();
    EXPECT_EQ(inner.left, outer.left + 5);
    EXPECT_EQ(inner.top, outer.top + 6);
    EXPECT_EQ(inner.right, outer.right - 7);
    EXPECT_EQ(inner.bottom, outer.bottom - 8);
}

TEST_F(ChildLayoutTest, AttributeIsFoundInAnyCase)
{
    CChildLayoutUI layout;
    layout.SetAttribute(L"XmlFile", L"a.xml");
    EXPECT_STREQ(layout.GetChildLayoutXML(), L"a.xml");
    layout.SetChildLayoutXML(L"b.xml");
    EXPECT_STREQ(layout.GetChildLayoutXML(), L"b.xml");
}

TEST_F(ChildLayoutTest, OtherAttributesReachTheContainer)
{
    CChildLayoutUI layout;
    layout.SetAttribute(L"childpadding", L"9");
    EXPECT_EQ(layout.GetChildPadding(), 9);
}

TEST_F(ChildLayoutTest, WithoutAFileItStaysEmpty)
{
    CPaintManagerUI::SetLastErrorText(L"");
    EXPECT_EQ(Load(L"").GetCount(), 0);
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"");
}

TEST_F(ChildLayoutTest, MissingFileLeavesItEmptyWithAReason)
{
    EXPECT_EQ(Load(L"xmlfile=\"none.xml\"").GetCount(), 0);
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"none.xml: the file does not exist");
}

TEST_F(ChildLayoutTest, InitialisingAgainDoesNotBuildTwice)
{
    folder.Write(L"page.xml", std::string_view("<Page><Label/></Page>"));
    auto& layout = Load(L"xmlfile=\"page.xml\"");
    layout.Init();
    EXPECT_EQ(layout.GetCount(), 1);
}

TEST_F(ChildLayoutTest, NewFileIsBuiltByTheNextInit)
{
    folder.Write(L"page.xml", std::string_view("<Page><Label/></Page>"));
    folder.Write(L"other.xml", std::string_view("<Page><Button/></Page>"));
    auto& layout = Load(L"xmlfile=\"page.xml\"");
    layout.SetChildLayoutXML(L"other.xml");
    layout.Init();
    ASSERT_EQ(layout.GetCount(), 2);
    EXPECT_STREQ(layout.GetItemAt(1)->GetClass(), L"ButtonUI");
}

TEST_F(ChildLayoutTest, FilesMayNest)
{
    folder.Write(L"outer.xml",
                 std::string_view("<A><VBox><ChildLayout xmlfile=\"inner.xml\"/></VBox></A>"));
    folder.Write(L"inner.xml", std::string_view("<B><Label name=\"deep\"/></B>"));
    Load(L"xmlfile=\"outer.xml\"");
    EXPECT_NE(host.Manager().FindControl(L"deep"), nullptr);
}

TEST_F(ChildLayoutTest, FileThatLeadsBackToItselfStaysEmpty)
{
    folder.Write(
        L"self.xml",
        std::string_view("<A><VBox><ChildLayout name=\"again\" xmlfile=\"SELF.xml\"/></VBox></A>"));
    Load(L"xmlfile=\"self.xml\"");
    EXPECT_EQ(host.Find<CChildLayoutUI>(L"again").GetCount(), 0);
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"SELF.xml: the child layout leads back to itself");
}

TEST_F(ChildLayoutTest, CircleOfFilesEnds)
{
    folder.Write(L"a.xml",
                 std::string_view("<A><Box><ChildLayout xmlfile=\".\\b.xml\"/></Box></A>"));
    folder.Write(L"b.xml",
                 std::string_view("<A><Box><ChildLayout xmlfile=\".\\a.xml\"/></Box></A>"));
    Load(L"xmlfile=\"a.xml\"");
    EXPECT_NE(std::wstring(CPaintManagerUI::GetLastErrorText()).find(L"leads back to itself"),
              std::wstring::npos);
}
