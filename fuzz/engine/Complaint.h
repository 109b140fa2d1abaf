#pragma once

#include <cstdint>

namespace fuzz {

// The toolkit's latest failure text, without the numbers in it.
void ClearComplaint();
std::uint64_t ComplaintHash();

} // namespace fuzz
