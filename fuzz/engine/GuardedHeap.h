#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

// A heap under the modules of the project that finds wrong uses of memory at the instruction that
// does them.
//
// The imports of malloc and its like are redirected, also those of the shared C++ runtime, so that
// operator new of every module is included. A block ends right before an inaccessible page; a freed
// one is filled, not used again for long, and a share of the freed ones is inaccessible.
namespace GuardedHeap {

// Where a block stands before its inaccessible page.
enum class Placement {
    Exact,   // its last byte is the last one of the page
    Aligned, // at a multiple of 16; optimised code counts on that. Up to 15 bytes behind it are
             // checked when it is freed
};

// The code of the exception that damage found at a free raises, for lack of a fault.
constexpr unsigned long kDamage = 0xE0464401;

// From now on, until the process ends. What was allocated before may be freed as ever.
void Install(Placement placement);

// Blocks and bytes that were allocated through the redirected imports and live.
struct Counts {
    std::int64_t blocks;
    std::int64_t bytes;
    std::uint64_t allocations; // since the beginning
    std::uint64_t unguarded;   // of these: too large, or made while all guarded places were taken
};
Counts Count();

// The block that an address lies in or right behind, when it is a guarded one.
struct Block {
    std::uintptr_t start;
    std::size_t size;
    bool freed;
};
bool FindBlock(std::uintptr_t address, Block& block);

} // namespace GuardedHeap

} // namespace fuzz
