#include "interface/Declarations.h"
#include "interface/HeaderScan.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

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

// Open to derived classes of the toolkit itself only.
const std::set<std::string> kInternal = {
    "CContainerUI::Detach",
    "CContainerUI::GetChildArea",
    "CContainerUI::GetContentArea",
    "CControlUI::ClampLength",
    "CControlUI::ScaleLength",
    "CDelegateBase::HasSameFunction",
    "CNotifyPump::_GetBaseMessageMap",
    "CNotifyPump::_GetThisMessageMap",
};

bool IsPublicHeader(const std::filesystem::path& path)
{
    const std::string folder = path.parent_path().filename().string();
    const std::string name = path.filename().string();
    return path.extension() == ".h" &&
           (name.rfind("UI", 0) == 0 || folder == "Utils" || name == "ControlFactory.h");
}

TEST(InterfaceTest, EveryOperationOfThePublicHeadersIsUsed)
{
    std::set<std::string> used;
    for (const auto& declaration : AllDeclarations())
        used.insert(declaration.scope + "::" + declaration.name);

    const std::filesystem::path toolkit = QUILLET_SOURCES L"/duilib";
    int seen = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(toolkit)) {
        if (!IsPublicHeader(entry.path()))
            continue;
        std::stringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        for (const auto& operation : OperationsIn(text.str())) {
            ++seen;
            const bool isRecord = operation.scope.rfind("tag", 0) == 0;
            const std::string name =
                operation.scope.substr(isRecord ? 3 : 0) + "::" + operation.name;
            EXPECT_TRUE(used.count(name) || kInternal.count(name))
                << name << " of " << entry.path().filename();
        }
    }
    EXPECT_GT(seen, 700);
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

// Off because it checks nothing: it prints the list for a person.
// interface-tests --gtest_also_run_disabled_tests --gtest_filter=*PrintAll
TEST(InterfaceTest, DISABLED_PrintAll)
{
    for (const auto& declaration : AllDeclarations())
        std::cout << declaration.scope << "::" << declaration.name << ": " << declaration.signature
                  << "\n";
}

} // namespace
