#pragma once

#include "fuzz/engine/Bytes.h"

#include <string>
#include <vector>

namespace fuzz {

struct File {
    std::wstring name; // below the folder
    Bytes bytes;
};

// The files of a folder and of the folders in it, sorted by name; none when there is no such
// folder. An extension such as L".xml" chooses among them.
std::vector<File> ReadFolder(const std::wstring& folder, const wchar_t* extension = nullptr);

Bytes ReadFile(const std::wstring& path);

// The lines of a text that are neither empty nor start with '#'.
std::vector<Bytes> Lines(ByteView text);

// The folder "fuzz" of the sources, with a trailing slash.
std::wstring FuzzFolder();

// The folder of the sources, with a trailing slash.
std::wstring SourceFolder();

} // namespace fuzz
