#include "interface/Declarations.h"
#include "interface/HeaderScan.h"

#include <gtest/gtest.h>

#include <iostream>

using namespace interface_test;

namespace {

std::vector<Declaration> AllDeclarations()
{
    return Join({Basics(), Building(), Combos(), Controls(), Drawing(), Extras(), Inputs(),
                 Interfaces(), Labels(), Layouts(), Lists(), Menus(), Services(), Trees(),
                 Windows()});
}

TEST(InterfaceTest, EveryDeclarationHasAnAddress)
{
    const auto all = AllDeclarations();
    EXPECT_GT(all.size(), 1000u);
    for (const auto& declaration : all)
        EXPECT_TRUE(declaration.hasAddress)
            << declaration.scope << "::" << declaration.name << ": " << declaration.signature;
}

TEST(InterfaceTest, AHeaderIsScannedForItsOperations)
{
    const auto found = OperationsIn(R"(
        // class Comment { void No(); };
class UILIB_API COne : public CBase {
public:
    COne();
    ~COne() override;
    bool operator()(void*);
    int Inline() const { if (true) { return 1; } return 0; }
    void Overridden() override;
    enum { kSize = 1 };
protected:
    static void Half(int count =
                         Default());
private:
    void Hidden();
};
struct TTwo {
    void Open();
};
)");
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].name, "Inline");
    EXPECT_EQ(found[1].name, "Half");
    EXPECT_EQ(found[1].scope, "COne");
    EXPECT_EQ(found[2].name, "Open");
    EXPECT_EQ(found[2].scope, "TTwo");
}

// interface-tests --gtest_also_run_disabled_tests --gtest_filter=*PrintAll
TEST(InterfaceTest, DISABLED_PrintAll)
{
    for (const auto& declaration : AllDeclarations())
        std::cout << declaration.scope << "::" << declaration.name << ": " << declaration.signature
                  << "\n";
}

} // namespace
