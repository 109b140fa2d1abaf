#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace DuiLib {

// An ordered list of pointers that are not its own, which may change, and even die, while it is
// walked. What is added during a walk waits for the next one; what is removed is not visited any
// more.
template <class T>
class WalkedList {
public:
    WalkedList() = default;
    ~WalkedList() { Clear(); }
    WalkedList(const WalkedList&) = delete;
    WalkedList& operator=(const WalkedList&) = delete;

    bool Contains(const T* item) const { return item && Place(item) != m_items->entries.end(); }
    int Count() const
    {
        const auto& entries = m_items->entries;
        const auto gaps = std::count(entries.begin(), entries.end(), nullptr);
        return static_cast<int>(entries.size()) - static_cast<int>(gaps);
    }

    // False for null and for what is there already.
    bool Add(T* item)
    {
        if (!item || Contains(item))
            return false;
        m_items->entries.push_back(item);
        return true;
    }

    bool Remove(const T* item)
    {
        if (!Contains(item))
            return false;
        const auto place = Place(item);
        if (m_items->walks > 0)
            *place = nullptr;
        else
            m_items->entries.erase(place);
        return true;
    }

    // False for an unknown item or an index out of range.
    bool Move(T* item, int index)
    {
        if (m_items->walks > 0 || index < 0 || index >= Count() || !Contains(item))
            return false;
        auto& entries = m_items->entries;
        entries.erase(Place(item));
        entries.insert(entries.begin() + index, item);
        return true;
    }

    void Clear()
    {
        if (m_items->walks > 0)
            std::fill(m_items->entries.begin(), m_items->entries.end(), nullptr);
        else
            m_items->entries.clear();
    }

    // Visits in order until a visit answers true, which is then the result.
    template <class Visit>
    bool Walk(Visit visit) const
    {
        const std::shared_ptr<Items> items = m_items;
        const Walking walking(*items);
        const std::size_t count = items->entries.size();
        for (std::size_t index = 0; index < count; ++index) {
            if (T* const item = items->entries[index]; item && visit(item))
                return true;
        }
        return false;
    }

private:
    struct Items {
        std::vector<T*> entries; // null where something was removed during a walk
        int walks = 0;
    };

    // Closes the gaps when the outermost walk ends.
    struct Walking {
        explicit Walking(Items& walked) : items(walked) { ++items.walks; }
        ~Walking()
        {
            if (--items.walks == 0)
                std::erase(items.entries, nullptr);
        }
        Walking(const Walking&) = delete;
        Walking& operator=(const Walking&) = delete;

        Items& items;
    };

    auto Place(const T* item) const
    {
        return std::find(m_items->entries.begin(), m_items->entries.end(), item);
    }

    std::shared_ptr<Items> m_items = std::make_shared<Items>();
};

} // namespace DuiLib
