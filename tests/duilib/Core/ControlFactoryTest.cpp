#include "support/TempFolder.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

using DuiLib::CControlFactory;
using DuiLib::CControlUI;
using DuiLib::CDuiString;

namespace {

class CFactoryProbeUI : public DuiLib::CLabelUI {
    DECLARE_DUICONTROL(CFactoryProbeUI)

public:
    LPCTSTR GetClass() const override { return L"FactoryProbeUI"; }
};

IMPLEMENT_DUICONTROL(CFactoryProbeUI)

std::unique_ptr<CControlUI> Make(const wchar_t* className)
{
    return std::unique_ptr<CControlUI>(CControlFactory::GetInstance()->CreateControl(className));
}

// Leaves the classes as they were.
class ControlFactoryTest : public testing::Test {
protected:
    ~ControlFactoryTest() override { CControlFactory::GetInstance()->Release(); }
};

} // namespace

// By XML name: the class text and an interface name that it answers.
struct KnownControl {
    const wchar_t* xmlName;
    const wchar_t* classText;
    const wchar_t* interfaceName;
};

constexpr KnownControl kKnownControls[] = {
    {L"Control", L"ControlUI", L"Control"},
    {L"Container", L"ContainerUI", L"Container"},
    {L"Box", L"ContainerUI", L"IContainer"},
    {L"VerticalLayout", L"VerticalLayoutUI", L"VerticalLayout"},
    {L"VBox", L"VerticalLayoutUI", L"VerticalLayout"},
    {L"HorizontalLayout", L"HorizontalLayoutUI", L"HorizontalLayout"},
    {L"HBox", L"HorizontalLayoutUI", L"HorizontalLayout"},
    {L"TabLayout", L"TabLayoutUI", L"TabLayout"},
    {L"TabBox", L"TabLayoutUI", L"TabLayout"},
    {L"TileLayout", L"TileLayoutUI", L"TileLayout"},
    {L"TileBox", L"TileLayoutUI", L"TileLayout"},
    {L"ChildLayout", L"ChildLayoutUI", L"ChildLayout"},
    {L"ChildBox", L"ChildLayoutUI", L"ChildLayout"},
    {L"Label", L"LabelUI", L"Label"},
    {L"Text", L"TextUI", L"Text"},
    {L"Button", L"ButtonUI", L"Button"},
    {L"Option", L"OptionUI", L"Option"},
    {L"CheckBox", L"CheckBoxUI", L"CheckBox"},
    {L"Progress", L"ProgressUI", L"Progress"},
    {L"ScrollBar", L"ScrollBarUI", L"ScrollBar"},
};

class KnownClassTest : public testing::TestWithParam<KnownControl> {};

TEST_P(KnownClassTest, IsMadeByItsClassName)
{
    const auto& known = GetParam();
    const auto control = Make((std::wstring(L"C") + known.xmlName + L"UI").c_str());
    ASSERT_NE(control, nullptr);
    EXPECT_STREQ(control->GetClass(), known.classText);
    EXPECT_NE(control->GetInterface(known.interfaceName), nullptr);
}

TEST_P(KnownClassTest, IsBuiltFromItsXmlNameInAnyCase)
{
    std::wstring name = GetParam().xmlName;
    for (int round = 0; round < 2; ++round) {
        const auto skin = L"<Window><" + name + L"/></Window>";
        const std::unique_ptr<CControlUI> control(
            DuiLib::CDialogBuilder().Create(skin.c_str(), nullptr));
        ASSERT_NE(control, nullptr);
        EXPECT_STREQ(control->GetClass(), GetParam().classText);
        ::CharUpperW(name.data());
    }
}

INSTANTIATE_TEST_SUITE_P(All, KnownClassTest, testing::ValuesIn(kKnownControls),
                         [](const auto& info) { return test::Utf8(info.param.xmlName); });

TEST_F(ControlFactoryTest, NamesAreComparedInAnyCase)
{
    const auto control = Make(L"cbuttonui");
    ASSERT_NE(control, nullptr);
    EXPECT_STREQ(control->GetClass(), L"ButtonUI");
}

TEST_F(ControlFactoryTest, UnknownNamesGiveNull)
{
    for (const wchar_t* name : {L"", L"Button", L"CButton", L"ButtonUI", L"CUI", L"CNoSuchUI"})
        EXPECT_EQ(Make(name), nullptr) << test::Utf8(name);
}

TEST_F(ControlFactoryTest, RegisteredClassIsMadeAndBuilt)
{
    REGIST_DUICONTROL(CFactoryProbeUI)
    const auto made = Make(L"CFACTORYPROBEUI");
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->GetClass(), L"FactoryProbeUI");

    const std::unique_ptr<CControlUI> built(
        DuiLib::CDialogBuilder().Create(L"<Window><FactoryProbe/></Window>", nullptr));
    ASSERT_NE(built, nullptr);
    EXPECT_STREQ(built->GetClass(), L"FactoryProbeUI");
}

TEST_F(ControlFactoryTest, LaterRegistrationReplacesAnEarlierOne)
{
    CControlFactory::GetInstance()->RegistControl(L"clabelui", &CFactoryProbeUI::CreateControl);
    const auto control = Make(L"CLabelUI");
    ASSERT_NE(control, nullptr);
    EXPECT_STREQ(control->GetClass(), L"FactoryProbeUI");
}

TEST_F(ControlFactoryTest, NothingIsRegisteredWithoutNameOrFunction)
{
    CControlFactory::GetInstance()->RegistControl(L"CLabelUI", nullptr);
    CControlFactory::GetInstance()->RegistControl(L"", &CFactoryProbeUI::CreateControl);
    const auto control = Make(L"CLabelUI");
    ASSERT_NE(control, nullptr);
    EXPECT_STREQ(control->GetClass(), L"LabelUI");
    EXPECT_EQ(Make(L""), nullptr);
}

TEST_F(ControlFactoryTest, ReleaseForgetsRegisteredClassesOnly)
{
    REGIST_DUICONTROL(CFactoryProbeUI)
    CControlFactory::GetInstance()->Release();
    EXPECT_EQ(Make(L"CFactoryProbeUI"), nullptr);
    EXPECT_NE(Make(L"CButtonUI"), nullptr);
}

TEST_F(ControlFactoryTest, OneFactoryServesTheProcess)
{
    EXPECT_EQ(CControlFactory::GetInstance(), CControlFactory::GetInstance());
}
