#include "fuzz/engine/Files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fuzz {

namespace fs = std::filesystem;

std::vector<File> ReadFolder(const std::wstring& folder, const wchar_t* extension)
{
    std::vector<File> files;
    std::error_code failed;
    for (const auto& entry : fs::recursive_directory_iterator(folder, failed)) {
        if (!entry.is_regular_file() || (extension && entry.path().extension() != extension))
            continue;
        auto name = entry.path().lexically_relative(folder).generic_wstring();
        files.push_back({std::move(name), ReadFile(entry.path().wstring())});
    }
    std::sort(files.begin(), files.end(),
              [](const File& left, const File& right) { return left.name < right.name; });
    return files;
}

Bytes ReadFile(const std::wstring& path)
{
    std::ifstream file(fs::path(path), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return ToBytes(text);
}

std::vector<Bytes> Lines(ByteView text)
{
    std::vector<Bytes> lines;
    std::string_view rest = AsText(text);
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty() && line.front() != '#')
            lines.push_back(ToBytes(line));
    }
    return lines;
}

std::wstring FuzzFolder()
{
    return SourceFolder() + L"fuzz/";
}

std::wstring SourceFolder()
{
    return QUILLET_SOURCES L"/";
}

} // namespace fuzz
