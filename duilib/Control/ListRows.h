#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace DuiLib {

// The heights of the rows of a list body, and where each row begins; device pixels from the top of
// the first row. Flat arrays, so that even 100,000 rows are looked through in microseconds.
class ListRows {
public:
    // What stands in place of a height.
    enum : int {
        kUnknown = -1, // to be measured
        kHidden = -2,
        kFloating = -3, // has its own place
        kShares = -4,   // takes a part of what the others leave
    };
    struct Wish {
        int height = kUnknown; // paddings included
        int width = 0;         // the least, paddings included
    };

    int GetCount() const { return static_cast<int>(m_wishes.size()); }
    void Insert(int index, int count = 1);
    void Remove(int index, int count = 1);
    void Clear();
    void Forget(int index); // measure it again
    void ForgetAll();

    // The rows are now those that had these indices.
    void Permute(const std::vector<int>& oldIndices);

    // Asks `measure(index)` for the wish of each row that is unknown.
    template <class Measure>
    void MeasureUnknown(Measure&& measure)
    {
        for (int i = m_firstUnknown; i < GetCount(); ++i) {
            if (m_wishes[At(i)].height != kUnknown)
                continue;
            const Wish wish = measure(i);
            if (i < GetCount())
                m_wishes[At(i)] = wish;
        }
        m_firstUnknown = GetCount();
    }

    // Stacks the rows with a gap between them. `limit(index, height)` bounds a shared height.
    template <class Limit>
    void Stack(int gap, int available, Limit&& limit)
    {
        const std::int64_t taken = Taken(gap);
        std::int64_t left = available > taken ? available - taken : 0;
        std::int64_t at = 0;
        int shares = m_sharing;
        m_tops.resize(m_wishes.size() + 1);
        m_gap = gap;
        for (int i = 0; i < GetCount(); ++i) {
            m_tops[At(i)] = at;
            const int wish = m_wishes[At(i)].height;
            if (wish == kShares) {
                const int height = limit(i, static_cast<int>(left / shares--));
                left = left > height ? left - height : 0;
                at += height + gap;
            } else if (wish >= 0) {
                at += wish + gap;
            }
        }
        m_tops[m_wishes.size()] = at;
        m_isStacked = true;
    }

    // False after a change until the next Stack; then nothing below may be asked.
    bool IsStacked() const { return m_isStacked; }
    bool IsShown(int index) const
    {
        const int wish = m_wishes[At(index)].height;
        return wish >= 0 || wish == kShares;
    }
    bool HasFloating() const { return m_floating > 0; }
    std::int64_t TopOf(int index) const { return m_tops[At(index)]; }
    std::int64_t HeightOf(int index) const
    {
        return IsShown(index) ? m_tops[At(index) + 1] - m_tops[At(index)] - m_gap : 0;
    }
    std::int64_t Total() const; // without a gap after the last row
    int WidestWish() const { return m_widest; }

    // The row at a height; the last one below all of them, 0 above.
    int IndexAt(std::int64_t y) const;

private:
    static std::size_t At(int index) { return static_cast<std::size_t>(index); }
    std::int64_t Taken(int gap);

    std::vector<Wish> m_wishes;
    std::vector<std::int64_t> m_tops;
    int m_firstUnknown = 0; // no row before it is unknown
    int m_gap = 0;
    int m_widest = 0;
    int m_sharing = 0;
    int m_floating = 0;
    bool m_isStacked = false;
};

} // namespace DuiLib
