#include "Control/ListRows.h"

#include <algorithm>

namespace DuiLib {

void ListRows::Insert(int index, int count)
{
    m_wishes.insert(m_wishes.begin() + index, At(count), Wish());
    m_firstUnknown = std::min(m_firstUnknown, index);
    m_isStacked = false;
}

void ListRows::Remove(int index, int count)
{
    m_wishes.erase(m_wishes.begin() + index, m_wishes.begin() + index + count);
    if (m_firstUnknown > index)
        m_firstUnknown = std::max(m_firstUnknown - count, index);
    m_isStacked = false;
}

void ListRows::Clear()
{
    *this = ListRows();
}

void ListRows::Forget(int index)
{
    m_wishes[At(index)] = Wish();
    m_firstUnknown = std::min(m_firstUnknown, index);
    m_isStacked = false;
}

void ListRows::ForgetAll()
{
    std::fill(m_wishes.begin(), m_wishes.end(), Wish());
    m_firstUnknown = 0;
    m_isStacked = false;
}

void ListRows::Permute(const std::vector<int>& oldIndices)
{
    std::vector<Wish> wishes(m_wishes.size());
    for (std::size_t i = 0; i < wishes.size(); ++i)
        wishes[i] = m_wishes[At(oldIndices[i])];
    m_wishes = std::move(wishes);
    m_firstUnknown = 0;
    m_isStacked = false;
}

std::int64_t ListRows::Total() const
{
    const std::int64_t end = m_tops.back();
    return end > 0 ? end - m_gap : 0;
}

int ListRows::IndexAt(std::int64_t y) const
{
    const auto next = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    const auto index = static_cast<int>(next - m_tops.begin()) - 1;
    return std::clamp(index, 0, std::max(GetCount() - 1, 0));
}

// Counts the kinds of rows on the way.
std::int64_t ListRows::Taken(int gap)
{
    std::int64_t taken = 0;
    m_sharing = 0;
    m_floating = 0;
    m_widest = 0;
    for (const Wish& wish : m_wishes) {
        if (wish.height >= 0)
            taken += wish.height + gap;
        else if (wish.height == kShares)
            ++m_sharing;
        else if (wish.height == kFloating)
            ++m_floating;
        m_widest = std::max(m_widest, wish.width);
    }
    taken += static_cast<std::int64_t>(m_sharing) * gap;
    return taken > 0 ? taken - gap : 0;
}

} // namespace DuiLib
