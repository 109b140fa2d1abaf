#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace test_docs {

// The project's files with that extension below one of its folders, sorted.
std::vector<std::filesystem::path> FilesIn(const char* folder, const char* extension);

// A file of the project by its path from the top folder.
std::filesystem::path FileAt(const char* path);

// The text, with line feeds only.
std::string Read(const std::filesystem::path& file);

} // namespace test_docs
