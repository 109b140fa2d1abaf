#include "quillet/dialogs/ShowFileInFolder.h"

#include <UIlib.h>

#include <objbase.h>
#include <shlobj.h>

#include <memory>

namespace DuiLib {

namespace {

// COM for the time of a call; a thread that has it already keeps its own.
class ComScope {
public:
    ComScope()
        : m_entered(SUCCEEDED(
              ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)))
    {
    }
    ~ComScope()
    {
        if (m_entered)
            ::CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    bool m_entered;
};

struct FreeItemList {
    void operator()(ITEMIDLIST* list) const { ::ILFree(list); }
};

} // namespace

bool ShowFileInFolder(const std::wstring& path)
{
    // The shell also parses names of things that are no files.
    if (::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
        return false;
    const ComScope com;
    PIDLIST_ABSOLUTE found = nullptr;
    if (FAILED(::SHParseDisplayName(path.c_str(), nullptr, &found, 0, nullptr)))
        return false;
    const std::unique_ptr<ITEMIDLIST, FreeItemList> file(found);
    return SUCCEEDED(::SHOpenFolderAndSelectItems(file.get(), 0, nullptr, 0));
}

} // namespace DuiLib
