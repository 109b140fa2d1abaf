#include "fuzz/targets/GallerySkin.h"

#include "fuzz/engine/Files.h"
#include "support/ImportHook.h"

#include <UIlib.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace fuzz {

namespace {

const std::wstring& Folder()
{
    static const std::wstring folder = SourceFolder() + L"gallery/skin/";
    return folder;
}

// One spelling for either slash and case. Of a longer path nothing is kept: there is none.
class Spelled {
public:
    explicit Spelled(std::wstring_view path)
    {
        if (path.size() > std::size(m_path))
            return;
        m_length = path.size();
        std::replace_copy(path.begin(), path.end(), m_path, L'\\', L'/');
        ::CharLowerBuffW(m_path, static_cast<DWORD>(m_length));
    }
    operator std::wstring_view() const { return {m_path, m_length}; }

private:
    wchar_t m_path[300];
    std::size_t m_length = 0;
};

bool IsKnown(std::wstring_view path)
{
    static const auto known = [] {
        std::set<std::wstring, std::less<>> files;
        std::error_code failed;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder(), failed))
            files.emplace(Spelled(entry.path().wstring()));
        return files;
    }();
    return known.contains(std::wstring_view(Spelled(path)));
}

HANDLE WINAPI OpenKnown(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                        DWORD creation, DWORD flags, HANDLE pattern)
{
    const bool isOwn = Folder() == DuiLib::CPaintManagerUI::GetResourcePath().GetData();
    if (!isOwn || IsKnown(path))
        return ::CreateFileW(path, access, share, security, creation, flags, pattern);
    ::SetLastError(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
}

} // namespace

void UseGallerySkin()
{
    static const test::ImportHook hook(L"DuiLib.dll", "kernel32.dll", "CreateFileW", &OpenKnown);
    DuiLib::CPaintManagerUI::SetResourcePath(Folder().c_str());
}

} // namespace fuzz
