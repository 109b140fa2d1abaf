#pragma once

#include "Core/UIPlatform.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>

namespace DuiLib {

// Reads numbers out of a file's bytes; beyond the end everything is 0.
class FileBytes {
public:
    explicit FileBytes(std::span<const BYTE> data) : m_data(data) {}

    std::size_t Size() const { return m_data.size(); }

    unsigned At(std::size_t index) const { return index < m_data.size() ? m_data[index] : 0; }

    unsigned Little16(std::size_t index) const { return At(index) | At(index + 1) << 8; }

    unsigned Big16(std::size_t index) const { return At(index) << 8 | At(index + 1); }

    unsigned Little32(std::size_t index) const
    {
        return Little16(index) | Little16(index + 2) << 16;
    }

    unsigned Big32(std::size_t index) const { return Big16(index) << 16 | Big16(index + 2); }

    bool StartsWith(std::string_view text, std::size_t index = 0) const
    {
        return index + text.size() <= m_data.size() &&
               std::memcmp(m_data.data() + index, text.data(), text.size()) == 0;
    }

    std::span<const BYTE> From(std::size_t index) const
    {
        return m_data.subspan(std::min(index, m_data.size()));
    }

private:
    std::span<const BYTE> m_data;
};

} // namespace DuiLib
