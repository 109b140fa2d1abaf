#pragma once

#include "fuzz/engine/Bytes.h"

#include <string_view>
#include <vector>

namespace fuzz {

// A piece of the toolkit that takes bytes from outside.
struct Target {
    std::string_view name;
    void (*run)(ByteView input);

    // What its mutations start from, and the words they insert.
    std::vector<Bytes> (*seeds)();
    std::vector<Bytes> (*dictionary)();

    // Lets go of what runs share, such as a window; the next run makes it anew. May be null.
    void (*rest)() = nullptr;
};

// Null when there is no target of that name.
const Target* FindTarget(std::string_view name);
std::span<const Target> Targets();

} // namespace fuzz
