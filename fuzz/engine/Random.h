#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

// A small generator whose sequence depends on the seed alone, on every compiler.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next()
    {
        std::uint64_t mixed = m_state += 0x9E3779B97F4A7C15;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31);
    }

    // From 0 to below the bound; 0 when there is nothing below it.
    std::size_t Below(std::size_t bound)
    {
        return bound != 0 ? static_cast<std::size_t>(Next() % bound) : 0;
    }

    bool OneIn(std::size_t bound) { return Below(bound) == 0; }

private:
    std::uint64_t m_state;
};

} // namespace fuzz
