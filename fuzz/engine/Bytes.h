#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace fuzz {

using Bytes = std::vector<std::byte>;
using ByteView = std::span<const std::byte>;

inline ByteView AsBytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

inline Bytes ToBytes(std::string_view text)
{
    const auto view = AsBytes(text);
    return Bytes(view.begin(), view.end());
}

inline std::string_view AsText(ByteView bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// FNV-1a: the same on every machine, so that what hangs on it is repeatable.
constexpr std::uint64_t kHashSeed = 0xCBF29CE484222325;

constexpr std::uint64_t HashStep(std::uint64_t hash, std::uint64_t value)
{
    return (hash ^ value) * 0x100000001B3;
}

inline std::uint64_t HashOf(ByteView bytes)
{
    std::uint64_t hash = kHashSeed;
    for (const std::byte byte : bytes)
        hash = HashStep(hash, std::to_integer<std::uint64_t>(byte));
    return hash;
}

} // namespace fuzz
