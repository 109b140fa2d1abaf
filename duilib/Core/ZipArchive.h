#pragma once

#include "Core/UIPlatform.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace DuiLib {

// An archive of stored and deflated files, plain or with the classic password scheme.
//
// Names are found in any case, with '/' and '\' alike. Every operation may be called from any
// thread. A malformed archive or file gives an empty answer and a reason.
class ZipArchive {
public:
    static std::unique_ptr<ZipArchive> OpenFile(const std::wstring& path, std::string password,
                                                std::wstring* reason);
    static std::unique_ptr<ZipArchive> OpenMemory(std::vector<BYTE> bytes, std::string password,
                                                  std::wstring* reason);

    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    bool Contains(std::wstring_view name) const;

    // The unpacked file. Larger ones than `largest` are refused before anything is unpacked.
    std::optional<std::vector<BYTE>> Read(std::wstring_view name, std::size_t largest,
                                          std::wstring* reason);

private:
    class Source;
    class FileSource;
    class MemorySource;
    struct Entry {
        unsigned flags;
        unsigned method;
        WORD time;
        DWORD crc;
        DWORD packedSize;
        DWORD size;
        DWORD offset; // of its header
    };

    ZipArchive(std::unique_ptr<Source> source, std::string password);
    bool ReadIndex(std::wstring* reason);
    std::optional<std::vector<BYTE>> Unpack(const Entry& entry, std::size_t largest,
                                            std::wstring* reason);

    std::unique_ptr<Source> m_source;
    std::string m_password;
    std::unordered_map<std::wstring, Entry> m_entries;
    std::mutex m_mutex; // guards the source
};

} // namespace DuiLib
