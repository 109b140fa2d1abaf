#pragma once

#include "fuzz/engine/Bytes.h"

#include <cstddef>

namespace fuzz {

// Memory with an inaccessible page right behind its last byte. Used again and again.
class GuardedRegion {
public:
    explicit GuardedRegion(std::size_t capacity);
    ~GuardedRegion();
    GuardedRegion(const GuardedRegion&) = delete;
    GuardedRegion& operator=(const GuardedRegion&) = delete;

    // The last `size` bytes: one byte further is an access violation. Null when it is too small.
    std::byte* Last(std::size_t size);

    // A copy that ends with the region.
    ByteView Place(ByteView bytes);

private:
    std::byte* m_start;
    std::size_t m_capacity; // whole pages
};

} // namespace fuzz
