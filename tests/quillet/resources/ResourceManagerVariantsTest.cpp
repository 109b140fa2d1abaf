#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"

#include <cstdlib>
#include <string>
#include <type_traits>

namespace test {
namespace {

using namespace DuiLib;

// Operations that a class may or may not offer.
template <class Manager>
concept HasMainWindow = requires(Manager manager)
{
    manager.GetMainHWND();
};
template <class Manager>
concept HasMaskWindow = requires(Manager manager)
{
    manager.GetVeskaMaskHWND();
};
template <class Manager>
concept ScalesByDpi = requires(Manager manager)
{
    manager.Scale(1, 96u);
};

// What all three managers do alike.
template <class Class>
class EveryResourceManagerTest : public testing::Test {
protected:
    EveryResourceManagerTest() { Prepare(); }
    ~EveryResourceManagerTest() override { Prepare(); }

    void Prepare()
    {
        GiveAwareness(manager, PROCESS_PER_MONITOR_DPI_AWARE);
        manager.SetScale(96);
        manager.SetTextQueryInterface(nullptr);
        manager.ResetTextMap();
        manager.ResetResourceMap();
    }

    Class& manager = *Class::GetInstance();
};

using Managers =
    testing::Types<CResourceManagerEx, CResourceManagerModeEx, CResourceManagerTransEx>;
TYPED_TEST_SUITE(EveryResourceManagerTest, Managers);

TYPED_TEST(EveryResourceManagerTest, IsOneObject)
{
    EXPECT_EQ(TypeParam::GetInstance(), &this->manager);
}

TYPED_TEST(EveryResourceManagerTest, HoldsTextsAndPaths)
{
    EXPECT_EQ(this->manager.LoadLanguage(L"<L><Text id=\"t\" value=\"text\"/></L>"), 1);
    EXPECT_EQ(
        this->manager.LoadResource(
            STRINGorID(L"<R><Image id=\"i\" path=\"i.png\"/><Xml id=\"x\" path=\"x.xml\"/></R>"),
            nullptr),
        1);
    EXPECT_STREQ(this->manager.GetText(L"t"), L"text");
    EXPECT_STREQ(this->manager.GetImagePath(L"i"), L"i.png");
    EXPECT_STREQ(this->manager.GetXmlPath(L"x"), L"x.xml");
}

TYPED_TEST(EveryResourceManagerTest, AsksTheApplicationForTexts)
{
    struct Application : IQueryControlTextEx {
        const wchar_t* QueryControlText(const wchar_t*, const wchar_t*) override { return text; }
        const wchar_t* text = L"first";
    } application;
    this->manager.SetTextQueryInterface(&application);
    EXPECT_STREQ(this->manager.GetText(L"asked"), L"first");
    application.text = L"second";
    EXPECT_STREQ(this->manager.GetText(L"asked"), L"first");
    this->manager.ReloadText();
    EXPECT_STREQ(this->manager.GetText(L"asked"), L"second");
}

TYPED_TEST(EveryResourceManagerTest, ScalesByTheMonitorsDpi)
{
    this->manager.SetScale(144);
    EXPECT_EQ(this->manager.GetScale(), 150u);
    EXPECT_EQ(this->manager.GetDPI(), 144u);
    EXPECT_EQ(this->manager.Scale(3), 5);
    EXPECT_EQ(this->manager.Scale(1), 1);
    EXPECT_EQ(this->manager.RestoreScale(5), 4);
    EXPECT_EQ(this->manager.RestoreScaleRect({5, 5, 5, 5}).right, 4);
    const RECT rect = this->manager.Scale(RECT{1, 1, 11, 11});
    EXPECT_EQ(rect.right, 16);
    SIZE small{1, 0};
    this->manager.Scale(&small);
    EXPECT_EQ(small.cy, 0);
}

TYPED_TEST(EveryResourceManagerTest, SystemAwareModeStaysAtHundredPercent)
{
    GiveAwareness(this->manager, PROCESS_SYSTEM_DPI_AWARE);
    this->manager.SetScale(192);
    EXPECT_EQ(this->manager.GetScale(), 100u);
    EXPECT_EQ(this->manager.Scale(0), 0);
    EXPECT_EQ(this->manager.Scale(7), 7);
}

TYPED_TEST(EveryResourceManagerTest, AsksTheSystemForDpiAndAwareness)
{
    FakeShcore shcore;
    shcore.dpi = {168};
    shcore.awareness = PROCESS_DPI_UNAWARE;
    EXPECT_EQ(this->manager.GetTrueDPI(), 168u);
    EXPECT_EQ(this->manager.GetDPIAwareness(), PROCESS_DPI_UNAWARE);
    EXPECT_EQ(this->manager.GetDPI(), 96u);
    ::CloseHandle(shcore.process);
}

TYPED_TEST(EveryResourceManagerTest, KeepsALanguageCode)
{
    this->manager.SetLanguage(L"de-DE");
    EXPECT_STREQ(this->manager.GetLanguage(), L"de-DE");
}

TYPED_TEST(EveryResourceManagerTest, ReleaseLeavesTheStoredPointerBehind)
{
    EXPECT_EXIT(
        {
            TypeParam::GetInstance()->Release();
            std::_Exit(TypeParam::GetInstance() == &this->manager ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TYPED_TEST(EveryResourceManagerTest, ACopySharesTextsAndIsOtherwiseItsOwn)
{
    this->manager.LoadLanguage(L"<L><Text id=\"before\" value=\"seen\"/></L>");
    this->manager.SetScale(120);
    auto* const copy = new TypeParam(this->manager); // never freed, see the class
    this->manager.LoadLanguage(L"<L><Text id=\"shared\" value=\"seen\"/></L>");
    this->manager.SetScale(144);
    EXPECT_STREQ(copy->GetText(L"shared"), L"seen");
    EXPECT_EQ(copy->GetScale(), 125u);
}

TEST(ResourceManagerVariantsTest, TheClassesAreUnrelated)
{
    EXPECT_FALSE((std::is_base_of_v<CResourceManagerEx, CResourceManagerModeEx>));
    EXPECT_FALSE((std::is_base_of_v<CResourceManagerEx, CResourceManagerTransEx>));
    EXPECT_FALSE((std::is_base_of_v<CResourceManagerModeEx, CResourceManagerTransEx>));
    EXPECT_FALSE((std::is_convertible_v<CResourceManagerModeEx*, CResourceManagerEx*>));
    EXPECT_FALSE((std::is_convertible_v<CResourceManagerTransEx*, CResourceManagerEx*>));
}

TEST(ResourceManagerVariantsTest, EachOffersItsOwnWindows)
{
    EXPECT_TRUE(HasMainWindow<CResourceManagerEx> && HasMaskWindow<CResourceManagerEx>);
    EXPECT_TRUE(HasMainWindow<CResourceManagerModeEx>);
    EXPECT_FALSE(HasMaskWindow<CResourceManagerModeEx>);
    EXPECT_FALSE(HasMainWindow<CResourceManagerTransEx>);
    EXPECT_FALSE(HasMaskWindow<CResourceManagerTransEx>);
}

TEST(ResourceManagerVariantsTest, ScalingByAGivenDpiIsNotOfferedByTheTransferManager)
{
    EXPECT_TRUE(ScalesByDpi<CResourceManagerEx>);
    EXPECT_TRUE(ScalesByDpi<CResourceManagerModeEx>);
    EXPECT_FALSE(ScalesByDpi<CResourceManagerTransEx>);
    EXPECT_EQ(CResourceManagerModeEx::GetInstance()->Scale(1, 192u), 2);
}

TEST(ResourceManagerVariantsTest, KeepsTheMainWindowOfEachApart)
{
    const auto window = reinterpret_cast<HWND>(0x77);
    CResourceManagerModeEx::GetInstance()->SetMainHWND(window);
    EXPECT_EQ(CResourceManagerModeEx::GetInstance()->GetMainHWND(), window);
    EXPECT_NE(CResourceManagerEx::GetInstance()->GetMainHWND(), window);
    CResourceManagerModeEx::GetInstance()->SetMainHWND(nullptr);
}

TEST(ResourceManagerVariantsTest, TheTransferManagerNeverLiftsZeroToOne)
{
    auto& ex = *CResourceManagerEx::GetInstance();
    auto& mode = *CResourceManagerModeEx::GetInstance();
    auto& trans = *CResourceManagerTransEx::GetInstance();
    for (const unsigned dpi : {96u, 144u, 10u}) {
        ex.SetScale(dpi);
        mode.SetScale(dpi);
        trans.SetScale(dpi);
        EXPECT_EQ(ex.Scale(0), 1);
        EXPECT_EQ(mode.Scale(0), 1);
        EXPECT_EQ(trans.Scale(0), 0);
    }
    EXPECT_EQ(ex.Scale(3), 1); // at ten percent
    EXPECT_EQ(trans.Scale(3), 0);
    const SIZE size = trans.Scale(SIZE{0, 3});
    EXPECT_TRUE(size.cx == 0 && size.cy == 0);
    const RECT rect = trans.Scale(RECT{0, 0, 3, 100});
    EXPECT_TRUE(rect.left == 0 && rect.right == 0 && rect.bottom == 10);
    ex.SetScale(96);
    mode.SetScale(96);
    trans.SetScale(96);
}

TEST(ResourceManagerVariantsTest, TheTransferManagerLeavesOneAlone)
{
    auto& trans = *CResourceManagerTransEx::GetInstance();
    trans.SetScale(48);
    EXPECT_EQ(trans.Scale(1), 1);
    EXPECT_EQ(trans.Scale(2), 1);
    trans.SetScale(96);
}

TEST(ResourceManagerVariantsTest, EachHasItsOwnTextsAndScale)
{
    auto& ex = *CResourceManagerEx::GetInstance();
    auto& mode = *CResourceManagerModeEx::GetInstance();
    auto& trans = *CResourceManagerTransEx::GetInstance();
    mode.LoadLanguage(L"<L><Text id=\"own\" value=\"mode\"/></L>");
    EXPECT_STREQ(mode.GetText(L"own"), L"mode");
    EXPECT_STREQ(ex.GetText(L"own"), L"own");
    EXPECT_STREQ(trans.GetText(L"own"), L"own");

    ex.SetScale(96);
    trans.SetScale(96);
    mode.SetScale(192);
    EXPECT_EQ(ex.GetScale(), 100u);
    EXPECT_EQ(trans.GetScale(), 100u);
    mode.SetScale(96);
}

} // namespace
} // namespace test
