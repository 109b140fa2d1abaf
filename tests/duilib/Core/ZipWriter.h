#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test {

// Writes small archives, right ones and wrong ones.
class ZipWriter {
public:
    enum class Packing { Stored, Deflated };

    struct Item {
        std::string name{};
        std::string content{};
        Packing packing = Packing::Deflated;
        std::string password{}; // empty: not encrypted
        bool utf8Name = true;
        bool sizesFollow = false; // the password is checked by the time instead of the sum
        unsigned method = ~0u;    // said instead of the true one
        unsigned size = ~0u;      // said instead of the true one
        unsigned wrongSum = 0;    // mixed into the check sum
    };

    void Add(Item item);
    void Add(std::string_view name, std::string_view content)
    {
        Add(Item{.name = std::string(name), .content = std::string(content)});
    }

    std::string Finish(std::string_view comment = {}) const;

private:
    struct Written {
        std::string header; // what file header and directory entry share
        std::string name{};
        unsigned offset;
    };

    std::string m_files;
    std::vector<Written> m_items;
};

} // namespace test
