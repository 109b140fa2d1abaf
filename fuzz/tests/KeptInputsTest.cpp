#include "fuzz/engine/Files.h"
#include "fuzz/engine/Session.h"

#include <gtest/gtest.h>

namespace {

using namespace fuzz;

// Inputs that failed once: fuzz/kept/TARGET/*.
TEST(KeptInputsTest, NoneFailsAgain)
{
    for (const auto& folder : ReadFolder(FuzzFolder() + L"kept")) {
        const auto slash = folder.name.find(L'/');
        if (slash == std::wstring::npos)
            continue;
        const std::string name(folder.name.begin(),
                               folder.name.begin() + static_cast<std::ptrdiff_t>(slash));
        const Target* const target = FindTarget(name);
        ASSERT_NE(target, nullptr) << name;
        RunOnce(*target, folder.bytes);
        if (target->rest)
            target->rest();
    }
}

} // namespace
