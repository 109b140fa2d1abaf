#include "support/ControlHost.h"
#include "support/DebugOutput.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace DuiLib;

namespace {

using Log = std::vector<std::wstring>;

// Writes down what the builder does to it.
class CProbeUI : public CContainerUI {
public:
    CProbeUI(const wchar_t* label, Log& log, int& alive)
        : m_label(label), m_log(log), m_alive(alive)
    {
        ++m_alive;
    }
    ~CProbeUI() override { --m_alive; }

    LPCTSTR GetClass() const override { return L"ProbeUI"; }

    bool Add(CControlUI* child) override
    {
        m_log.push_back(m_label + L" gets " + std::wstring(child->GetClass()));
        return CContainerUI::Add(child);
    }
    void SetAttribute(LPCTSTR name, LPCTSTR value) override
    {
        const auto* const manager = GetManager() != nullptr ? L" managed" : L" unmanaged";
        const auto* const parent = GetParent() != nullptr ? L" child" : L" orphan";
        m_log.push_back(m_label + L" " + name + L"=" + value + manager + parent);
        CContainerUI::SetAttribute(name, value);
    }
    void DoInit() override
    {
        m_log.push_back(m_label + L" init");
        CContainerUI::DoInit();
    }

private:
    std::wstring m_label;
    Log& m_log;
    int& m_alive;
};

// Makes a probe for every name that begins with "Probe".
class ProbeMaker : public IDialogBuilderCallback {
public:
    CControlUI* CreateControl(LPCTSTR name) override
    {
        asked.emplace_back(name);
        return asked.back().starts_with(L"Probe") ? new CProbeUI(name, log, alive) : nullptr;
    }

    Log asked;
    Log log;
    int alive = 0;
};

std::unique_ptr<CControlUI> Build(const wchar_t* skin, IDialogBuilderCallback* callback = nullptr)
{
    return std::unique_ptr<CControlUI>(CDialogBuilder().Create(skin, nullptr, callback));
}

// Classes of a control and all below it: "VerticalLayoutUI(LabelUI,ButtonUI)".
std::wstring Shape(CControlUI* control)
{
    if (control == nullptr)
        return L"(none)";
    std::wstring text = control->GetClass();
    auto* const container = static_cast<IContainerUI*>(control->GetInterface(L"IContainer"));
    if (container == nullptr || container->GetCount() == 0)
        return text;
    text += L'(';
    for (int i = 0; i < container->GetCount(); ++i)
        text += (i > 0 ? L"," : L"") + Shape(container->GetItemAt(i));
    return text + L')';
}

std::wstring ShapeOf(const wchar_t* skin)
{
    return Shape(Build(skin).get());
}

std::wstring LastError()
{
    return std::wstring(CPaintManagerUI::GetLastErrorText());
}

std::wstring Nested(int levels)
{
    std::wstring skin = L"<Window>";
    for (int i = 0; i < levels; ++i)
        skin += L"<Box>";
    for (int i = 0; i < levels; ++i)
        skin += L"</Box>";
    return skin + L"</Window>";
}

class SkinFolderTest : public testing::Test {
protected:
    SkinFolderTest() { CPaintManagerUI::SetResourcePath(folder.Path().c_str()); }

    test::TempFolder folder;
};

using DialogBuilderIncludeTest = SkinFolderTest;

} // namespace

TEST(DialogBuilderTest, FirstTopLevelControlIsTheResult)
{
    EXPECT_EQ(ShapeOf(L"<Window><VBox><Label/><HBox><Button/></HBox></VBox></Window>"),
              L"VerticalLayoutUI(LabelUI,HorizontalLayoutUI(ButtonUI))");
}

TEST(DialogBuilderTest, AnyRootNameWillDo)
{
    EXPECT_EQ(ShapeOf(L"<Part><Label/></Part>"), L"LabelUI");
    EXPECT_EQ(ShapeOf(L"<VerticalLayout><Label/></VerticalLayout>"), L"LabelUI");
}

TEST(DialogBuilderTest, SurplusTopLevelControlsAreDeleted)
{
    ProbeMaker maker;
    {
        const auto root = Build(L"<Window><Probe1/><Probe2><Probe3/></Probe2></Window>", &maker);
        ASSERT_NE(root, nullptr);
        EXPECT_EQ(maker.asked, (Log{L"Probe1", L"Probe2", L"Probe3"}));
        EXPECT_EQ(maker.alive, 1);
    }
    EXPECT_EQ(maker.alive, 0);
}

TEST(DialogBuilderTest, EveryTopLevelControlGoesToAGivenParent)
{
    CVerticalLayoutUI parent;
    CControlUI* const first = CDialogBuilder().Create(
        L"<Window><Label name=\"a\"/><Button/></Window>", nullptr, nullptr, nullptr, &parent);
    EXPECT_EQ(Shape(&parent), L"VerticalLayoutUI(LabelUI,ButtonUI)");
    EXPECT_EQ(first, parent.GetItemAt(0));
    EXPECT_STREQ(first->GetName(), L"a");
}

TEST(DialogBuilderTest, GivenParentOnAWindowStaysTheParent)
{
    test::ControlHost host(100, 50);
    auto& parent = host.Add<CVerticalLayoutUI>();
    CControlUI* const child = CDialogBuilder().Create(L"<Window><Label name=\"a\"/></Window>",
                                                      nullptr, nullptr, &host.Manager(), &parent);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->GetParent(), &parent);
    EXPECT_EQ(child->GetManager(), &host.Manager());
    EXPECT_EQ(host.Manager().FindControl(L"a"), child);
}

TEST(DialogBuilderTest, ParentThatTakesNoChildrenGetsNone)
{
    CLabelUI label;
    EXPECT_EQ(
        CDialogBuilder().Create(L"<Window><Button/></Window>", nullptr, nullptr, nullptr, &label),
        nullptr);
    EXPECT_EQ(ShapeOf(L"<Window><Box><Label><Button/></Label><Text/></Box></Window>"),
              L"ContainerUI(LabelUI,TextUI)");
    EXPECT_EQ(LastError(), L"text(1,21): the control around it takes no children");
}

TEST(DialogBuilderTest, ChildrenAreBuiltThenAddedThenGivenAttributes)
{
    test::ControlHost host(100, 50);
    ProbeMaker maker;
    const std::unique_ptr<CControlUI> root(CDialogBuilder().Create(
        L"<Window><Probe1 a=\"1\"><Probe2 b=\"2\" c=\"3\"><Probe3 d=\"4\"/></Probe2></Probe1>"
        L"</Window>",
        nullptr, &maker, &host.Manager()));
    EXPECT_EQ(maker.asked, (Log{L"Probe1", L"Probe2", L"Probe3"}));
    EXPECT_EQ(maker.log, (Log{L"Probe2 gets ProbeUI", L"Probe3 d=4 managed orphan",
                              L"Probe1 gets ProbeUI", L"Probe2 b=2 managed orphan",
                              L"Probe2 c=3 managed orphan", L"Probe1 a=1 managed orphan"}));
    EXPECT_EQ(root->GetManager(), nullptr);
}

TEST(DialogBuilderTest, AttachingInitialisesChildrenBeforeTheirContainers)
{
    test::ControlHost host(100, 50);
    ProbeMaker maker;
    CControlUI* const root =
        host.Load(L"<Window><Probe1><Probe2><Probe3/></Probe2><Probe4/></Probe1></Window>", &maker);
    ASSERT_NE(root, nullptr);
    std::erase_if(maker.log, [](const auto& line) { return !line.ends_with(L" init"); });
    EXPECT_EQ(maker.log, (Log{L"Probe3 init", L"Probe2 init", L"Probe4 init"}));
    EXPECT_EQ(root->GetManager(), &host.Manager());
}

TEST(DialogBuilderTest, WithoutAManagerAttributesAreSetAllTheSame)
{
    ProbeMaker maker;
    const auto root = Build(L"<Window><Probe1 name=\"x\"/></Window>", &maker);
    EXPECT_EQ(maker.log, (Log{L"Probe1 name=x unmanaged orphan"}));
    EXPECT_STREQ(root->GetName(), L"x");
}

TEST(DialogBuilderTest, CallbackIsAskedWithTheNameAsWrittenAndOnlyForUnknownOnes)
{
    ProbeMaker maker;
    const auto root = Build(L"<Window><Box><LABEL/><ProbeX/><my:Thing/></Box></Window>", &maker);
    EXPECT_EQ(maker.asked, (Log{L"ProbeX", L"my:Thing"}));
    EXPECT_EQ(Shape(root.get()), L"ContainerUI(LabelUI,ProbeUI)");
}

TEST(DialogBuilderTest, UnknownElementIsLeftOutWithItsChildrenAndLeavesALine)
{
    test::DebugOutput output(L"DuiLib.dll");
    EXPECT_EQ(ShapeOf(L"<Window>\n<Box>\n  <Foo><Label/></Foo><Text/>\n</Box></Window>"),
              L"ContainerUI(TextUI)");
    EXPECT_EQ(LastError(), L"text(3,3): nobody makes a control \"Foo\"");
    EXPECT_EQ(output.Text(), L"text(3,3): nobody makes a control \"Foo\"\n");
}

TEST(DialogBuilderTest, SkinWithoutControlsIsNullWithAReason)
{
    EXPECT_EQ(ShapeOf(L"<Window size=\"1,1\"/>"), L"(none)");
    EXPECT_EQ(LastError(), L"text(1,1): there is no control");
}

TEST(DialogBuilderTest, LoadedSkinIsBuiltAgain)
{
    CDialogBuilder builder;
    const std::unique_ptr<CControlUI> first(builder.Create(L"<Window><Label/></Window>", nullptr));
    const std::unique_ptr<CControlUI> second(builder.Create());
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_STREQ(builder.GetMarkup()->GetRoot().GetName(), L"Window");
}

TEST(DialogBuilderTest, NothingLoadedBuildsNothing)
{
    EXPECT_EQ(CDialogBuilder().Create(), nullptr);
}

TEST(DialogBuilderTest, CallbackMayUseTheBuilderAgain)
{
    class Nesting : public IDialogBuilderCallback {
    public:
        CControlUI* CreateControl(LPCTSTR name) override
        {
            return std::wstring_view(name) == L"Outer"
                       ? builder.Create(L"<Other><Box><Text/></Box></Other>", nullptr)
                       : nullptr;
        }
        CDialogBuilder builder;
    } nesting;
    const std::unique_ptr<CControlUI> root(nesting.builder.Create(
        L"<Window><Box><Outer/><Label name=\"last\"/></Box></Window>", nullptr, &nesting));
    EXPECT_EQ(Shape(root.get()), L"ContainerUI(ContainerUI(TextUI),LabelUI)");
    EXPECT_STREQ(static_cast<CContainerUI*>(root.get())->GetItemAt(1)->GetName(), L"last");
}

TEST(DialogBuilderTest, ErrorsOfTheTextAreAnswered)
{
    CDialogBuilder builder;
    EXPECT_EQ(builder.Create(L"<Window>\n<Label></Window>", nullptr), nullptr);
    wchar_t text[200];
    builder.GetLastErrorLocation(text, 200);
    EXPECT_STREQ(text, L"text(2,8)");
    builder.GetLastErrorMessage(text, 200);
    EXPECT_STREQ(text, L"the closing tag \"Window\" does not match \"Label\" of line 2");
}

TEST(DialogBuilderTest, TwoHundredFiftySixLevelsAreBuilt)
{
    EXPECT_NE(Build(Nested(256).c_str()), nullptr);
}

TEST(DialogBuilderTest, MoreLevelsAreRefusedReadably)
{
    CDialogBuilder builder;
    EXPECT_EQ(builder.Create(Nested(257).c_str(), nullptr), nullptr);
    wchar_t text[200];
    builder.GetLastErrorMessage(text, 200);
    EXPECT_STREQ(text, L"the controls nest more than 256 levels deep");
    builder.GetLastErrorLocation(text, 200);
    EXPECT_STREQ(text, L"text(1,1289)");
    EXPECT_EQ(LastError(), L"text(1,1289): the controls nest more than 256 levels deep");

    EXPECT_EQ(builder.Create(Nested(100'000).c_str(), nullptr), nullptr);
    const std::unique_ptr<CControlUI> good(builder.Create(L"<Window><Label/></Window>", nullptr));
    EXPECT_NE(good, nullptr);
    builder.GetLastErrorMessage(text, 200);
    EXPECT_STREQ(text, L"");
}

TEST(DialogBuilderTest, RefusedSkinLeavesNoControlBehind)
{
    ProbeMaker maker;
    std::wstring skin = L"<Window><Probe1><Probe2/></Probe1><Probe3>";
    for (int i = 0; i < 300; ++i)
        skin += L"<ProbeX>";
    for (int i = 0; i < 300; ++i)
        skin += L"</ProbeX>";
    EXPECT_EQ(Build((skin + L"</Probe3></Window>").c_str(), &maker), nullptr);
    EXPECT_GT(maker.asked.size(), 250u);
    EXPECT_EQ(maker.alive, 0);
}

TEST(DialogBuilderTest, ResourcesAreReadBeforeAnyControlWhateverTheirPlace)
{
    test::ControlHost host(100, 50);
    CControlUI* const root = host.Load(
        L"<Window><Box><Button name=\"b\" style=\"s\"/></Box>"
        L"<Default name=\"Button\" value=\"width=&quot;33&quot; tooltip=&quot;tip&quot;\"/>"
        L"<Style name=\"s\" value=\"height=&quot;44&quot;\"/>"
        L"<Font id=\"7\" name=\"Arial\" size=\"20\" bold=\"true\"/></Window>");
    ASSERT_NE(root, nullptr);
    auto& button = host.Find<CButtonUI>(L"b");
    EXPECT_EQ(button.GetFixedWidth(), 33);
    EXPECT_STREQ(button.GetToolTip(), L"tip");
    EXPECT_EQ(button.GetFixedHeight(), 44);
    EXPECT_EQ(host.Manager().GetFontInfo(7)->iSize, 20);
    EXPECT_TRUE(host.Manager().GetFontInfo(7)->bBold);
}

TEST(DialogBuilderTest, AttributesOverrideTheDefaultList)
{
    test::ControlHost host(100, 50);
    ASSERT_NE(host.Load(L"<Window><Default name=\"Label\" value=\"width=&quot;10&quot; "
                        L"height=&quot;20&quot;\"/><Box><Label name=\"a\" width=\"30\"/></Box>"
                        L"</Window>"),
              nullptr);
    auto& label = host.Find<CLabelUI>(L"a");
    EXPECT_EQ(label.GetFixedWidth(), 30);
    EXPECT_EQ(label.GetFixedHeight(), 20);
}

TEST(DialogBuilderTest, DefaultListBelongsToTheXmlNameExactly)
{
    test::ControlHost host(100, 50);
    ASSERT_NE(host.Load(L"<Window><Default name=\"VBox\" value=\"width=&quot;10&quot;\"/>"
                        L"<Box><VBox name=\"a\"/><VerticalLayout name=\"b\"/><vbox name=\"c\"/>"
                        L"</Box></Window>"),
              nullptr);
    EXPECT_EQ(host.Find<CControlUI>(L"a").GetFixedWidth(), 10);
    EXPECT_EQ(host.Find<CControlUI>(L"b").GetFixedWidth(), 0);
    EXPECT_EQ(host.Find<CControlUI>(L"c").GetFixedWidth(), 0);
}

TEST(DialogBuilderTest, FontsHaveDefaultsAndMayBeTheDefault)
{
    test::ControlHost host(100, 50);
    host.Load(L"<Window><Font id=\"3\" name=\"Arial\" default=\"true\"/>"
              L"<Font id=\"4\" name=\"Arial\" size=\"15\" underline=\"true\" italic=\"true\" "
              L"strikeout=\"true\"/><Box/></Window>");
    auto& manager = host.Manager();
    EXPECT_EQ(manager.GetFontInfo(3)->iSize, 12);
    EXPECT_FALSE(manager.GetFontInfo(3)->bBold);
    EXPECT_STREQ(manager.GetDefaultFontInfo()->sFontName, L"Arial");
    EXPECT_EQ(manager.GetDefaultFontInfo()->iSize, 12);
    EXPECT_TRUE(manager.GetFontInfo(4)->bUnderline);
    EXPECT_TRUE(manager.GetFontInfo(4)->bItalic);
    EXPECT_TRUE(manager.GetFontInfo(4)->bStrikeout);
}

TEST(DialogBuilderTest, FontWithoutAnIdIsLeftOutWithAReason)
{
    for (const wchar_t* font : {L"<Font name=\"Arial\"/>", L"<Font id=\"-1\" name=\"Arial\"/>",
                                L"<Font id=\"x\" name=\"Arial\"/>"}) {
        test::ControlHost host(100, 50);
        host.Load((std::wstring(L"<Window>") + font + L"<Box/></Window>").c_str());
        EXPECT_EQ(host.Manager().GetCustomFontCount(), 0u);
        EXPECT_EQ(LastError(), L"text(1,9): a font needs an id of 0 or more");
    }
}

TEST(DialogBuilderTest, SharedResourcesServeEveryWindow)
{
    test::TempFolder folder;
    folder.Write(
        L"dot.bmp",
        std::string_view("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0"
                         "\0\0\0\0\4\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\2\3\0",
                         58));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    test::ControlHost first(100, 50);
    ASSERT_NE(first.Load(L"<Window><Image name=\"dot.bmp\" shared=\"true\"/>"
                         L"<Font id=\"21\" name=\"Arial\" size=\"31\" shared=\"true\"/>"
                         L"<Style name=\"sh\" value=\"width=&quot;5&quot;\" shared=\"true\"/>"
                         L"<Style name=\"own\" value=\"width=&quot;6&quot;\"/>"
                         L"<Default name=\"Text\" value=\"width=&quot;7&quot;\" shared=\"true\"/>"
                         L"<Box/></Window>"),
              nullptr);
    test::ControlHost second(100, 50);
    EXPECT_NE(second.Manager().GetImage(L"dot.bmp"), nullptr);
    EXPECT_EQ(second.Manager().GetFontInfo(21)->iSize, 31);
    EXPECT_STREQ(second.Manager().GetStyle(L"sh"), L"width=\"5\"");
    EXPECT_EQ(second.Manager().GetStyle(L"own"), nullptr);
    EXPECT_STREQ(second.Manager().GetDefaultAttributeList(L"Text"), L"width=\"7\"");
    second.Manager().RemoveAllImages(true);
    second.Manager().RemoveAllFonts(true);
    second.Manager().RemoveAllStyle(true);
    second.Manager().RemoveAllDefaultAttributeList(true);
}

TEST(DialogBuilderTest, ResourcesAreIgnoredBelowTheRootLevel)
{
    test::ControlHost host(100, 50);
    ProbeMaker maker;
    CControlUI* const root = host.Load(
        L"<Window><Box><Font id=\"3\" name=\"Arial\"/><Style name=\"s\" value=\"x\"/>"
        L"<Default name=\"Label\" value=\"x\"/><Image name=\"a.png\"/><Import fontfile=\"f\"/>"
        L"<MultiLanguage id=\"1\"/></Box></Window>",
        &maker);
    EXPECT_EQ(Shape(root), L"ContainerUI");
    EXPECT_EQ(maker.asked, Log{});
    EXPECT_EQ(host.Manager().GetCustomFontCount(), 0u);
    EXPECT_EQ(host.Manager().GetStyle(L"s"), nullptr);
    EXPECT_EQ(host.Manager().GetDefaultAttributeList(L"Label"), nullptr);
}

TEST(DialogBuilderTest, ResourcesAreIgnoredWithoutAManager)
{
    EXPECT_EQ(ShapeOf(L"<Window><Font id=\"3\" name=\"Arial\"/><Style name=\"s\" value=\"x\"/>"
                      L"<Label/></Window>"),
              L"LabelUI");
}

TEST(DialogBuilderTest, MultiLanguageIsAcceptedAndIgnored)
{
    CPaintManagerUI::SetLastErrorText(L"");
    EXPECT_EQ(ShapeOf(L"<Window><MultiLanguage id=\"1\" value=\"x\"/><Label/></Window>"),
              L"LabelUI");
    EXPECT_EQ(LastError(), L"");
}

TEST(DialogBuilderTest, WindowAttributesReachTheManagerInAnyCase)
{
    test::ControlHost host(100, 50);
    auto& manager = host.Manager();
    ASSERT_NE(host.Load(L"<Window SIZE=\"300,200\" MinInfo=\"10,20\" maxinfo=\"1000,900\" "
                        L"caption=\"1,2,3,32\" sizebox=\"4,5,6,7\" RoundCorner=\"8,9\" "
                        L"NoActivate=\"true\" showdirty=\"TRUE\" disabledfontcolor=\"#FF010203\" "
                        L"defaultfontcolor=\"FF040506\" linkfontcolor=\"#FF070809\" "
                        L"linkhoverfontcolor=\"#FF0A0B0C\" selectedcolor=\"#FF0D0E0F\" "
                        L"gdiplustext=\"true\" textrenderinghint=\"3\" "
                        L"tooltiphovertime=\"750\"><Box/></Window>"),
              nullptr);
    EXPECT_EQ(manager.GetInitSize().cx, 300);
    EXPECT_EQ(manager.GetInitSize().cy, 200);
    EXPECT_EQ(manager.GetMinInfo().cx, 10);
    EXPECT_EQ(manager.GetMinInfo().cy, 20);
    EXPECT_EQ(manager.GetMaxInfo().cx, 1000);
    EXPECT_EQ(manager.GetMaxInfo().cy, 900);
    EXPECT_EQ(manager.GetCaptionRect().bottom, 32);
    EXPECT_EQ(manager.GetCaptionRect().right, 3);
    EXPECT_EQ(manager.GetSizeBox().top, 5);
    EXPECT_EQ(manager.GetRoundCorner().cx, 8);
    EXPECT_EQ(manager.GetRoundCorner().cy, 9);
    EXPECT_TRUE(manager.IsNoActivate());
    EXPECT_TRUE(manager.IsShowUpdateRect());
    EXPECT_EQ(manager.GetDefaultDisabledColor(), 0xFF010203u);
    EXPECT_EQ(manager.GetDefaultFontColor(), 0xFF040506u);
    EXPECT_EQ(manager.GetDefaultLinkFontColor(), 0xFF070809u);
    EXPECT_EQ(manager.GetDefaultLinkHoverFontColor(), 0xFF0A0B0Cu);
    EXPECT_EQ(manager.GetDefaultSelectedBkColor(), 0xFF0D0E0Fu);
    EXPECT_TRUE(manager.IsUseGdiplusText());
    EXPECT_EQ(manager.GetGdiplusTextRenderingHint(), 3);
    EXPECT_EQ(manager.GetHoverTime(), 750);
}

TEST(DialogBuilderTest, WindowSizeIsScaled)
{
    test::ControlHost host(100, 50, 144);
    ASSERT_NE(host.Load(L"<Window size=\"200,100\"><Box/></Window>"), nullptr);
    EXPECT_EQ(host.Manager().GetInitSize().cx, 300);
    EXPECT_EQ(host.Manager().GetInitSize().cy, 150);
}

TEST(DialogBuilderTest, OpacityHasTwoNamesAndStaysInRange)
{
    test::ControlHost host(100, 50);
    host.Load(L"<Window opacity=\"120\"><Box/></Window>");
    EXPECT_EQ(host.Manager().GetOpacity(), 120);
    host.Load(L"<Window Alpha=\"999\"><Box/></Window>");
    EXPECT_EQ(host.Manager().GetOpacity(), 255);
}

TEST(DialogBuilderTest, LayeredAttributesReachTheManager)
{
    for (const wchar_t* attribute :
         {L"layered=\"true\"", L"BkTrans=\"true\"", L"layeredimage=\"a.png\""}) {
        test::ControlHost host(100, 50);
        host.Load((std::wstring(L"<Window layeredinset=\"1,2,3,4\" layeredopacity=\"90\" ") +
                   attribute + L"><Box/></Window>")
                      .c_str());
        EXPECT_TRUE(host.Manager().IsLayered());
        EXPECT_EQ(host.Manager().GetLayeredInset().bottom, 4);
        EXPECT_EQ(host.Manager().GetLayeredOpacity(), 90);
    }
}

TEST(DialogBuilderTest, UnknownWindowAttributesAreKeptForTheApplication)
{
    test::ControlHost host(100, 50);
    ASSERT_NE(host.Load(L"<Window mine=\"17\"><Box/></Window>"), nullptr);
    EXPECT_STREQ(host.Manager().GetWindowCustomAttribute(L"mine"), L"17");
}

TEST(DialogBuilderTest, OnlyAWindowElementHasWindowAttributes)
{
    test::ControlHost host(100, 50);
    ASSERT_NE(host.Load(L"<Page mine=\"17\" tooltiphovertime=\"750\"><Box/></Page>"), nullptr);
    EXPECT_EQ(host.Manager().GetWindowCustomAttribute(L"mine"), nullptr);
    EXPECT_EQ(host.Manager().GetHoverTime(), 400);
}

TEST(DialogBuilderTest, WindowAttributesNeedAWindow)
{
    CPaintManagerUI manager;
    const std::unique_ptr<CControlUI> root(CDialogBuilder().Create(
        L"<Window mine=\"17\"><Box/></Window>", nullptr, nullptr, &manager));
    EXPECT_NE(root, nullptr);
    EXPECT_EQ(manager.GetWindowCustomAttribute(L"mine"), nullptr);
}

TEST_F(DialogBuilderIncludeTest, ControlsBelowTheRootAreBuiltIntoTheSurroundingControl)
{
    folder.Write(L"part.xml", std::string_view("<Part><Label/><Button/></Part>"));
    EXPECT_EQ(ShapeOf(L"<Window><VBox><Text/><Include source=\"part.xml\"/><Option/></VBox>"
                      L"</Window>"),
              L"VerticalLayoutUI(TextUI,LabelUI,ButtonUI,OptionUI)");
}

TEST_F(DialogBuilderIncludeTest, CountRepeatsTheControls)
{
    folder.Write(L"part.xml", std::string_view("<Part><Label/></Part>"));
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"part.xml\" count=\"3\"/></Box></Window>"),
              L"ContainerUI(LabelUI,LabelUI,LabelUI)");
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"part.xml\" count=\"0\"/></Box></Window>"),
              L"ContainerUI");
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"part.xml\" count=\"-2\"/></Box></Window>"),
              L"ContainerUI");
}

TEST_F(DialogBuilderIncludeTest, TopLevelIncludeGivesTopLevelControls)
{
    folder.Write(L"part.xml", std::string_view("<Part><Label/><Button/></Part>"));
    EXPECT_EQ(ShapeOf(L"<Window><Include source=\"part.xml\"/><Text/></Window>"), L"LabelUI");
}

TEST_F(DialogBuilderIncludeTest, IncludesMayNest)
{
    folder.Write(L"outer.xml",
                 std::string_view("<A><HBox><Include source=\"inner.xml\"/></HBox></A>"));
    folder.Write(L"inner.xml", std::string_view("<B><Label/></B>"));
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"outer.xml\" count=\"2\"/></Box></Window>"),
              L"ContainerUI(HorizontalLayoutUI(LabelUI),HorizontalLayoutUI(LabelUI))");
}

TEST_F(DialogBuilderIncludeTest, SourceMayBeAnIdOfTheResourceManager)
{
    folder.Write(L"part.xml", std::string_view("<Part><Label/></Part>"));
    auto& resources = *CResourceManager::GetInstance();
    resources.LoadResource(L"<I><Xml id=\"thePart\" path=\"part.xml\"/></I>");
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"thePart\"/></Box></Window>"),
              L"ContainerUI(LabelUI)");
    resources.Release();
}

TEST_F(DialogBuilderIncludeTest, ResourcesOfTheIncludedDocumentServeItsControls)
{
    folder.Write(L"part.xml",
                 std::string_view("<Part><Label name=\"l\" style=\"s\"/>"
                                  "<Style name=\"s\" value=\"width=&quot;12&quot;\"/></Part>"));
    test::ControlHost host(100, 50);
    ASSERT_NE(host.Load(L"<Window><Box><Include source=\"part.xml\"/></Box></Window>"), nullptr);
    EXPECT_EQ(host.Find<CLabelUI>(L"l").GetFixedWidth(), 12);
}

TEST_F(DialogBuilderIncludeTest, MissingOrBrokenSourceIsLeftOutWithAReason)
{
    folder.Write(L"bad.xml", std::string_view("<A>\n<B></A>"));
    EXPECT_EQ(ShapeOf(L"<Window><Box>\n<Include source=\"none.xml\"/><Label/></Box></Window>"),
              L"ContainerUI(LabelUI)");
    EXPECT_EQ(LastError(), L"text(2,1): the Include failed, none.xml: the file does not exist");
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"bad.xml\" count=\"9\"/><Label/></Box>"
                      L"</Window>"),
              L"ContainerUI(LabelUI)");
    EXPECT_EQ(LastError(),
              L"text(1,14): the Include failed, bad.xml(2,4): the closing tag \"A\" does not match "
              L"\"B\" of line 2");
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include/><Label/></Box></Window>"), L"ContainerUI(LabelUI)");
    EXPECT_EQ(LastError(), L"text(1,14): an Include needs a source");
}

TEST_F(DialogBuilderIncludeTest, FailureInsideNamesTheIncludedFile)
{
    folder.Write(L"part.xml", std::string_view("<Part>\n  <Foo/></Part>"));
    EXPECT_EQ(ShapeOf(L"<Window><Box><Include source=\"part.xml\"/></Box></Window>"),
              L"ContainerUI");
    EXPECT_EQ(LastError(), L"part.xml(2,3): nobody makes a control \"Foo\"");
}

TEST_F(DialogBuilderIncludeTest, IncludeOfItselfIsRefused)
{
    folder.Write(L"self.xml",
                 std::string_view("<A><Box>\n<Include source=\"SELF.xml\"/></Box></A>"));
    CDialogBuilder builder;
    EXPECT_EQ(builder.Create(L"self.xml", nullptr), nullptr);
    EXPECT_EQ(LastError(), L"self.xml(2,1): the Include of \"SELF.xml\" never ends");
    wchar_t text[200];
    builder.GetLastErrorLocation(text, 200);
    EXPECT_STREQ(text, L"self.xml(2,1)");
}

TEST_F(DialogBuilderIncludeTest, IncludesInACircleAreRefused)
{
    folder.Write(L"a.xml", std::string_view("<A><Include source=\"b.xml\" count=\"2\"/></A>"));
    folder.Write(L"b.xml", std::string_view("<B><Include source=\".\\a.xml\" count=\"2\"/></B>"));
    EXPECT_EQ(Build(L"a.xml"), nullptr);
    EXPECT_NE(LastError().find(L"never ends"), std::wstring::npos);
}

TEST_F(DialogBuilderIncludeTest, WhatFailsInEveryRepetitionIsToldOnce)
{
    folder.Write(L"part.xml", std::string_view("<A><Nobody/><Label textcolor=\"red\"/></A>"));
    const test::DebugOutput lines(L"DuiLib.dll");
    EXPECT_NE(Build(L"<Window><VerticalLayout><Include source=\"part.xml\" count=\"50\"/>"
                    L"</VerticalLayout></Window>"),
              nullptr);
    EXPECT_EQ(lines.Lines().size(), 2u);
}

TEST_F(DialogBuilderIncludeTest, IncludesThatMultiplyAreRefused)
{
    // Twenty files that each include the next one ten times: 10^20 controls.
    for (int i = 0; i < 20; ++i) {
        folder.Write(std::to_wstring(i) + L".xml",
                     "<A><Include source=\"" + std::to_string(i + 1) + ".xml\" count=\"10\"/></A>");
    }
    folder.Write(L"20.xml", std::string_view("<A><Include source=\"none.xml\"/></A>"));
    EXPECT_EQ(Build(L"0.xml"), nullptr);
    EXPECT_NE(LastError().find(L"more than 100,000"), std::wstring::npos);
}
