#include "tests/docs/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace test_docs {

std::filesystem::path FileAt(const char* path)
{
    return std::filesystem::path(QUILLET_SOURCES) / path;
}

std::vector<std::filesystem::path> FilesIn(const char* folder, const char* extension)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(FileAt(folder))) {
        if (entry.path().extension() == extension)
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

std::string Read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::erase(text, '\r');
    return text;
}

} // namespace test_docs
