#pragma once

#include <string>
#include <vector>

namespace interface_test {

struct Named {
    std::string scope; // the class
    std::string name;
};

// The operations that a header declares as public or protected in classes at namespace scope, other
// than constructors, destructors, operators and what it overrides or deletes.
std::vector<Named> OperationsIn(const std::string& header);

} // namespace interface_test
