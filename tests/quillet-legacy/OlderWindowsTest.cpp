#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "quillet/resources/FakeShcore.h"

namespace test {
namespace {

using namespace DuiLib;

// This program names no newer Windows in a manifest, so the system presents itself as 6.2.
template <class Class>
class OlderWindowsTest : public testing::Test {
protected:
    OlderWindowsTest() { Restore(); }
    ~OlderWindowsTest() override { Restore(); }

    void Restore()
    {
        manager.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
        manager.SetScale(96);
    }

    FakeShcore shcore;
    Class& manager = *Class::GetInstance();
};

using Managers =
    testing::Types<CResourceManagerEx, CResourceManagerModeEx, CResourceManagerTransEx>;
TYPED_TEST_SUITE(OlderWindowsTest, Managers);

TYPED_TEST(OlderWindowsTest, SettingTheAwarenessTakesItAndAnswersZero)
{
    this->manager.SetScale(192);
    EXPECT_EQ(this->manager.SetDPIAwareness(PROCESS_DPI_UNAWARE), 0);
    EXPECT_EQ(this->manager.GetDPIAwareness(), PROCESS_DPI_UNAWARE);
    EXPECT_EQ(this->manager.GetScale(), 100u);
    EXPECT_EQ(this->manager.SetDPIAwareness(PROCESS_PER_MONITOR_DPI_AWARE), 0);
    EXPECT_EQ(this->manager.GetScale(), 200u);
}

TYPED_TEST(OlderWindowsTest, TheAwarenessIsNeitherSetNorAskedOfTheSystem)
{
    this->shcore.awareness = PROCESS_DPI_UNAWARE;
    this->manager.SetDPIAwareness(PROCESS_SYSTEM_DPI_AWARE);
    EXPECT_EQ(this->manager.GetDPIAwareness(), PROCESS_SYSTEM_DPI_AWARE);
    EXPECT_TRUE(this->shcore.loaded.empty());
    EXPECT_TRUE(this->shcore.set.empty());
}

TYPED_TEST(OlderWindowsTest, TheMonitorsDpiIsAskedForSinceWindowsSeven)
{
    this->shcore.dpi = {120};
    EXPECT_EQ(this->manager.GetTrueDPI(), 120u);
}

TYPED_TEST(OlderWindowsTest, SystemAwareModeScalesByHundredPercent)
{
    this->manager.SetDPIAwareness(PROCESS_SYSTEM_DPI_AWARE);
    this->manager.SetScale(192);
    EXPECT_EQ(this->manager.GetScale(), 100u);
    EXPECT_EQ(this->manager.Scale(0), 0);
    EXPECT_EQ(this->manager.Scale(10), 10);
}

TEST(OlderWindowsUtilsTest, TheDpiFactorIsMeasuredSinceWindowsSeven)
{
    FakeShcore shcore;
    shcore.dpi = {144};
    bool ok = false;
    DWORD error = 1;
    EXPECT_EQ(Utils::GetDPIFactor(ok, error), 1.5);
}

} // namespace
} // namespace test
