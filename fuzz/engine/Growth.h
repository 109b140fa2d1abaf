#pragma once

#include <cstdint>
#include <string>

namespace fuzz {

// What the process holds.
struct Holdings {
    int gdiObjects;
    int windows;
    std::int64_t blocks; // of the modules of the project
    std::int64_t bytes;
    std::int64_t systemBytes; // on the process heap, which the system uses for us
};

Holdings CountHoldings();

// What grew beyond the caches that both moments may find full to a different degree; empty when
// nothing did.
std::string FindGrowth(const Holdings& before, const Holdings& after);

} // namespace fuzz
