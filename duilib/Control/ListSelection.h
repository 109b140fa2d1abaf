#pragma once

#include "Control/UIList.h"

#include <cstring>
#include <vector>

namespace DuiLib {

// One flag per row, so that the next selected row is found by a scan of bytes.
class CListUI::Selection {
public:
    int Count() const { return m_count; }
    bool Has(int index) const { return IsIndex(index) && m_flags[At(index)] != 0; }

    void Set(int index, bool selected)
    {
        if (!IsIndex(index) || Has(index) == selected)
            return;
        m_flags[At(index)] = selected ? 1 : 0;
        ++m_changes;
        m_count += selected ? 1 : -1;
    }

    // Grows with every row that is taken in or out.
    unsigned Changes() const { return m_changes; }

    // -1 when there is none.
    int Next(int index) const
    {
        const std::size_t from = index < 0 ? 0 : At(index) + 1;
        if (m_count == 0 || from >= m_flags.size())
            return -1;
        const void* const found = std::memchr(m_flags.data() + from, 1, m_flags.size() - from);
        return found != nullptr ? static_cast<int>(static_cast<const char*>(found) - m_flags.data())
                                : -1;
    }

    void Insert(int index, int count) { m_flags.insert(m_flags.begin() + index, At(count), 0); }
    void Remove(int index, int count)
    {
        for (int i = 0; i < count; ++i)
            Set(index + i, false);
        m_flags.erase(m_flags.begin() + index, m_flags.begin() + index + count);
    }
    void Clear()
    {
        m_flags.clear();
        m_count = 0;
    }
    void Permute(const std::vector<int>& oldIndices)
    {
        std::vector<char> flags(m_flags.size());
        for (std::size_t i = 0; i < flags.size(); ++i)
            flags[i] = m_flags[At(oldIndices[i])];
        m_flags = std::move(flags);
    }

private:
    static std::size_t At(int index) { return static_cast<std::size_t>(index); }
    bool IsIndex(int index) const { return index >= 0 && At(index) < m_flags.size(); }

    std::vector<char> m_flags;
    int m_count = 0;
    unsigned m_changes = 0;
};

} // namespace DuiLib
