#pragma once

#include "Core/UIPlatform.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace DuiLib {

// Forgets every text extent and every laid-out text that was made with the font. The owner of a
// font calls it before the font is deleted, because the system gives handles out again.
void ForgetFont(HFONT font);

// What a text measures in a font.
struct TextExtent {
    SIZE size;
    bool overhangs; // synthesised slant or weight that sticks out of the extent
};

// The font must be selected in the DC. Short texts are measured once.
TextExtent MeasureText(HDC dc, HFONT font, std::wstring_view text);

// True for a DC on which a text always measures the same: the display or a bitmap for it, in
// pixels.
bool MeasuresAlike(HDC dc);

// Keeps what was used lately, up to about twice the limit. Not safe from several threads.
//
// There are two generations. Whatever is found in the older one moves to the younger one; when that
// is full the older one goes.
template <class Key, class Value, class Hash, class Equal>
class BoundedCache {
public:
    explicit BoundedCache(std::size_t limit) : m_limit(limit) {}

    template <class View>
    const Value* Find(const View& view)
    {
        if (const auto found = m_young.find(view); found != m_young.end())
            return &found->second.value;
        const auto found = m_old.find(view);
        if (found == m_old.end())
            return nullptr;
        auto entry = m_old.extract(found);
        MakeRoom(entry.mapped().weight);
        return &m_young.insert(std::move(entry)).position->second.value;
    }

    void Insert(Key key, Value value, std::size_t weight = 1)
    {
        MakeRoom(weight);
        m_young.insert_or_assign(std::move(key), Entry{std::move(value), weight});
    }

    template <class Predicate>
    void EraseIf(Predicate predicate)
    {
        const auto matches = [&](const auto& item) {
            return predicate(item.first, item.second.value);
        };
        std::erase_if(m_young, matches);
        std::erase_if(m_old, matches);
    }

private:
    struct Entry {
        Value value;
        std::size_t weight;
    };
    using Map = std::unordered_map<Key, Entry, Hash, Equal>;

    void MakeRoom(std::size_t weight)
    {
        if (m_weight + weight > m_limit) {
            m_old = std::move(m_young);
            m_young.clear();
            m_weight = 0;
        }
        m_weight += weight;
    }

    Map m_young;
    Map m_old;
    std::size_t m_limit;
    std::size_t m_weight = 0; // of the younger generation; never too low
};

// Folds one more value into a hash.
template <class Value>
std::size_t HashWith(std::size_t hash, const Value& value)
{
    return hash ^ (std::hash<Value>()(value) + 0x9E3779B97F4A7C15u + (hash << 6) + (hash >> 2));
}

} // namespace DuiLib
