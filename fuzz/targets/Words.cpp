#include "fuzz/targets/Words.h"

#include "fuzz/Names.h"
#include "fuzz/engine/Files.h"
#include "support/TempFolder.h"

#include <iterator>

namespace fuzz {

std::vector<Bytes> DictionaryFile(const wchar_t* name)
{
    return Lines(ReadFile(FuzzFolder() + L"dictionaries/" + name + L".txt"));
}

std::vector<Bytes> SeedFolder(const wchar_t* name)
{
    std::vector<Bytes> seeds;
    for (auto& file : ReadFolder(FuzzFolder() + L"seeds/" + name)) {
        if (file.name.ends_with(L".lines"))
            Append(seeds, Lines(file.bytes));
        else
            seeds.push_back(std::move(file.bytes));
    }
    return seeds;
}

std::vector<Bytes> GalleryFiles(const wchar_t* extension)
{
    std::vector<Bytes> seeds;
    for (auto& file : ReadFolder(SourceFolder() + L"gallery/skin", extension))
        seeds.push_back(std::move(file.bytes));
    return seeds;
}

std::vector<Bytes> ControlNames()
{
    std::vector<Bytes> names;
    for (const wchar_t* const name : kToolkitClasses) {
        const std::wstring_view full = name;
        names.push_back(ToBytes(test::Utf8(full.substr(1, full.size() - 3))));
    }
    for (const auto& control : kQuilletControls)
        names.push_back(ToBytes(test::Utf8(control.name)));
    return names;
}

std::vector<Bytes> AttributeNames()
{
    std::vector<Bytes> names;
    for (const auto name : kAttributeNames)
        names.push_back(ToBytes(name));
    return names;
}

std::vector<Bytes> AttributeValues()
{
    return DictionaryFile(L"attribute-values");
}

void Append(std::vector<Bytes>& to, std::vector<Bytes> more)
{
    to.insert(to.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace fuzz
