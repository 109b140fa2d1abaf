#include "docs/tool/AttributeTables.h"
#include "docs/tool/Classes.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace {

std::vector<docs::Page> PagesIn(const std::filesystem::path& folder)
{
    std::vector<docs::Page> pages;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".md")
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        if (!file)
            throw std::runtime_error("cannot read " + entry.path().string());
        pages.push_back({entry.path().filename().string(),
                         {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}});
    }
    std::ranges::sort(pages, {}, &docs::Page::file);
    return pages;
}

int Check(const std::vector<docs::Page>& pages)
{
    const auto complaints = docs::CheckTables(docs::AllClasses(), pages);
    for (const auto& line : complaints)
        std::cerr << line << "\n";
    if (!complaints.empty())
        std::cerr << "tools/docs writes the tables anew; effect texts are written by hand\n";
    return complaints.empty() ? 0 : 1;
}

int Write(const std::filesystem::path& folder, const std::vector<docs::Page>& pages)
{
    const auto [rewritten, complaints] = docs::RewriteTables(docs::AllClasses(), pages);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (rewritten[i].text == pages[i].text)
            continue;
        std::ofstream file(folder / pages[i].file, std::ios::binary);
        file << rewritten[i].text;
        if (!file.flush())
            throw std::runtime_error("cannot write " + pages[i].file);
        std::cout << pages[i].file << ": written\n";
    }
    for (const auto& line : complaints)
        std::cerr << line << "\n";
    return complaints.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const bool check = argc == 3 && argv[1] == std::string_view("--check");
    if (argc != 2 && !check) {
        std::cerr << "usage: quillet-docs [--check] FOLDER\n"
                     "Writes the attribute tables of the pages in a folder anew, or says what is "
                     "out of step.\n";
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[argc - 1];
        const auto pages = PagesIn(folder);
        return check ? Check(pages) : Write(folder, pages);
    } catch (const std::exception& error) {
        std::cerr << "quillet-docs: " << error.what() << "\n";
        return 1;
    }
}
