#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

} // namespace

namespace interface_test {

std::vector<Declaration> Combos()
{
    return Join({});
}

} // namespace interface_test
