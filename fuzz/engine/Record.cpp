#include "fuzz/engine/Record.h"

#include "win32/Handles.h"

#include <array>
#include <cstdio>
#include <cwchar>

namespace fuzz {

Record& Record::Instance()
{
    // Outlives whatever may crash late.
    static Record* const record = new Record;
    return *record;
}

namespace {

// For those who have nothing but the output.
void PrintBytes(ByteView bytes)
{
    for (const std::byte byte : bytes)
        std::fprintf(stderr, "%02x", std::to_integer<unsigned>(byte));
    std::fputc('\n', stderr);
}

} // namespace

void Record::Report(const char* failure) const
{
    std::fprintf(stderr, "%s in target %s, seed %llu, execution %llu, %llu bytes\n", failure,
                 target.c_str(), static_cast<unsigned long long>(seed),
                 static_cast<unsigned long long>(execution.load()),
                 static_cast<unsigned long long>(input.size()));
    if (!folder.empty() && execution != 0) {
        std::array<wchar_t, MAX_PATH> path{};
        std::swprintf(path.data(), path.size(), L"%ls%016llx", folder.c_str(),
                      static_cast<unsigned long long>(HashOf(input)));
        const Quillet::UniqueKernelHandle file(::CreateFileW(
            path.data(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        DWORD written = 0;
        if (file && ::WriteFile(file.get(), input.data(), static_cast<DWORD>(input.size()),
                                &written, nullptr))
            std::fprintf(stderr, "saved as %ls\n", path.data());
    }
    if (folder.empty() && execution != 0)
        PrintBytes(input);
    std::fflush(stderr);
}

} // namespace fuzz
