#include "support/ControlHost.h"

#include <gtest/gtest.h>

#include <climits>

using namespace DuiLib;
using test::ControlHost;

namespace {

TEST(ShadowTest, StartsHiddenWithItsDefaults)
{
    ControlHost host(50, 50);
    CShadowUI* const shadow = host.Manager().GetShadow();
    ASSERT_NE(shadow, nullptr);
    EXPECT_EQ(shadow, host.Manager().GetShadow());
    EXPECT_EQ(shadow->GetManager(), &host.Manager());
    EXPECT_FALSE(shadow->IsShowShadow());
    EXPECT_FALSE(shadow->IsDisableShadow());
    EXPECT_EQ(shadow->GetSize(), 0);
    EXPECT_EQ(shadow->GetSharpness(), 5u);
    EXPECT_EQ(shadow->GetDarkness(), 200u);
    EXPECT_EQ(shadow->GetPosition().x, 5);
    EXPECT_EQ(shadow->GetPosition().y, 5);
    EXPECT_EQ(shadow->GetColor(), 0u);
    EXPECT_STREQ(shadow->GetImage(), L"");
}

TEST(ShadowTest, KeepsTheAttributesOfTheWindow)
{
    ControlHost host(50, 50);
    host.Load(LR"(<Window showshadow="true" shadowsize="7" shadowsharpness="9" shadowdarkness="120"
        shadowposition="3,-4" shadowcolor="#FF102030" shadowcorner="1,2,3,4"
        shadowimage="file='s.png'"><VerticalLayout /></Window>)");
    CShadowUI* const shadow = host.Manager().GetShadow();
    EXPECT_TRUE(shadow->IsShowShadow());
    EXPECT_EQ(shadow->GetSize(), 7);
    EXPECT_EQ(shadow->GetSharpness(), 9u);
    EXPECT_EQ(shadow->GetDarkness(), 120u);
    EXPECT_EQ(shadow->GetPosition().x, 3);
    EXPECT_EQ(shadow->GetPosition().y, -4);
    EXPECT_EQ(shadow->GetColor(), RGB(0x10, 0x20, 0x30));
    EXPECT_STREQ(shadow->GetImage(), L"file='s.png'");
    const RECT corner = shadow->GetShadowCorner();
    EXPECT_EQ(corner.left, 1);
    EXPECT_EQ(corner.bottom, 4);
}

TEST(ShadowTest, RefusesAbsurdValuesAndKeepsWhatItHad)
{
    CShadowUI shadow;
    EXPECT_FALSE(shadow.SetSize(21));
    EXPECT_FALSE(shadow.SetSize(INT_MIN));
    EXPECT_FALSE(shadow.SetSharpness(21));
    EXPECT_FALSE(shadow.SetDarkness(256));
    EXPECT_FALSE(shadow.SetPosition(101, 0));
    EXPECT_FALSE(shadow.SetPosition(0, -101));
    EXPECT_FALSE(shadow.SetColor(0x01000000));
    EXPECT_FALSE(shadow.SetImage(nullptr));
    EXPECT_FALSE(shadow.SetShadowCorner({0, 0, -1, 0}));
    EXPECT_FALSE(shadow.CopyShadow(nullptr));
    EXPECT_EQ(shadow.GetSize(), 0);
    EXPECT_EQ(shadow.GetSharpness(), 5u);
    EXPECT_EQ(shadow.GetDarkness(), 200u);
    EXPECT_EQ(shadow.GetPosition().x, 5);

    EXPECT_TRUE(shadow.SetSize(-20));
    EXPECT_TRUE(shadow.SetSharpness(20));
    EXPECT_TRUE(shadow.SetDarkness(255));
    EXPECT_TRUE(shadow.SetPosition(100, -100));
    EXPECT_TRUE(shadow.SetColor(0x00FFFFFF));
}

TEST(ShadowTest, CopiesTheSettingsOfAnotherButNotItsWindow)
{
    ControlHost first(50, 50);
    ControlHost second(50, 50);
    CShadowUI* const from = first.Manager().GetShadow();
    from->ShowShadow(true);
    from->DisableShadow(true);
    from->SetSize(11);
    from->SetImage(L"a.png");
    CShadowUI* const to = second.Manager().GetShadow();
    EXPECT_TRUE(to->CopyShadow(from));
    EXPECT_TRUE(to->IsShowShadow());
    EXPECT_TRUE(to->IsDisableShadow());
    EXPECT_EQ(to->GetSize(), 11);
    EXPECT_STREQ(to->GetImage(), L"a.png");
    EXPECT_EQ(to->GetManager(), &second.Manager());
}

TEST(ShadowTest, LeavesTheWindowProcedureAlone)
{
    ControlHost host(50, 50);
    const LONG_PTR procedure = ::GetWindowLongPtrW(host.Window(), GWLP_WNDPROC);
    host.Manager().GetShadow()->ShowShadow(true);
    EXPECT_EQ(::GetWindowLongPtrW(host.Window(), GWLP_WNDPROC), procedure);
}

} // namespace
