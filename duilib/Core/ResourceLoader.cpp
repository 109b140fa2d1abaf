#include "Core/ResourceLoader.h"

#include "Core/Diagnostics.h"
#include "Core/UIManager.h"
#include "Core/ZipArchive.h"

#include <cwchar>
#include <memory>
#include <mutex>
#include <utility>

namespace DuiLib {

namespace {

using Bytes = std::vector<BYTE>;

// The archive in use. Its lock is held only to look; who reads holds a share of the archive.
struct ZipSetting {
    std::mutex mutex;
    enum class Kind { None, Memory, File, CachedFile } kind = Kind::None;
    std::wstring path;
    std::string password;
    std::shared_ptr<ZipArchive> open;
};

// Never destroyed: other threads may still load while the process ends.
ZipSetting& TheZip()
{
    static ZipSetting& setting = *new ZipSetting;
    return setting;
}

std::string Narrow(const CDuiString& text)
{
    const int length = text.GetLength();
    if (length == 0)
        return {};
    const int size =
        ::WideCharToMultiByte(CP_ACP, 0, text.GetData(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text.GetData(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

struct CurrentZip {
    bool wanted;
    std::shared_ptr<ZipArchive> archive;
};

CurrentZip OpenCurrentZip(std::wstring& reason)
{
    auto& setting = TheZip();
    const std::lock_guard lock(setting.mutex);
    if (setting.open)
        return {true, setting.open};
    if (setting.kind == ZipSetting::Kind::None)
        return {false, nullptr};
    if (setting.kind == ZipSetting::Kind::Memory) {
        reason = L"the archive in memory is damaged";
        return {true, nullptr};
    }
    std::shared_ptr<ZipArchive> archive =
        ZipArchive::OpenFile(setting.path, setting.password, &reason);
    if (!archive)
        reason = setting.path + L": " + reason;
    if (setting.kind == ZipSetting::Kind::CachedFile)
        setting.open = archive;
    return {true, archive};
}

std::wstring SystemReason(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
        return L"the file does not exist";
    case ERROR_ACCESS_DENIED:
        return L"access is denied";
    case ERROR_SHARING_VIOLATION:
        return L"another program holds the file";
    default:
        return L"the file cannot be read (error " + std::to_wstring(error) + L")";
    }
}

std::optional<Bytes> ReadWholeFile(const std::wstring& path, std::size_t largest,
                                   std::wstring& reason)
{
    struct CloseFile {
        void operator()(HANDLE file) const { ::CloseHandle(file); }
    };
    const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        reason = SystemReason(::GetLastError());
        return std::nullopt;
    }
    const std::unique_ptr<void, CloseFile> file(handle);

    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file.get(), &size)) {
        reason = SystemReason(::GetLastError());
        return std::nullopt;
    }
    if (static_cast<ULONGLONG>(size.QuadPart) > largest) {
        reason = L"the file is larger than " + std::to_wstring(largest) + L" bytes";
        return std::nullopt;
    }

    Bytes bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!bytes.empty() &&
        !::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        reason = SystemReason(::GetLastError());
        return std::nullopt;
    }
    bytes.resize(read); // it may have shrunk meanwhile
    return bytes;
}

std::optional<Bytes> ReadModuleResource(LPCTSTR name, LPCTSTR type, HINSTANCE module,
                                        std::size_t largest, std::wstring& reason)
{
    if (module == nullptr)
        module = CPaintManagerUI::GetResourceDll();
    if (!IS_INTRESOURCE(name) && *name >= L'0' && *name <= L'9')
        name = MAKEINTRESOURCE(static_cast<WORD>(std::wcstoul(name, nullptr, 10)));

    const HRSRC found = ::FindResourceW(module, name, type);
    const HGLOBAL loaded = found != nullptr ? ::LoadResource(module, found) : nullptr;
    const auto* const data =
        loaded != nullptr ? static_cast<const BYTE*>(::LockResource(loaded)) : nullptr;
    if (data == nullptr) {
        reason = L"the module has no such resource";
        return std::nullopt;
    }
    const std::size_t size = ::SizeofResource(module, found);
    if (size > largest) {
        reason = L"the resource is larger than " + std::to_wstring(largest) + L" bytes";
        return std::nullopt;
    }
    return Bytes(data, data + size);
}

std::optional<Bytes> ReadFromFolderOrZip(LPCTSTR name, std::size_t largest, std::wstring& reason)
{
    const auto zip = OpenCurrentZip(reason);
    if (zip.archive)
        return zip.archive->Read(name, largest, &reason);
    if (zip.wanted)
        return std::nullopt;
    return ReadWholeFile(std::wstring(CPaintManagerUI::GetResourcePath().GetData()) + name, largest,
                         reason);
}

bool HasType(LPCTSTR type)
{
    return type != nullptr && (IS_INTRESOURCE(type) || *type != 0);
}

} // namespace

std::optional<Bytes> LoadResourceBytes(STRINGorID name, LPCTSTR type, HINSTANCE module,
                                       ResourceFallback fallback, std::size_t largest,
                                       std::wstring* reason)
{
    const LPCTSTR text = name.m_lpstr;
    const bool isText = !IS_INTRESOURCE(text);

    std::wstring why = L"a number needs a resource type";
    std::optional<Bytes> bytes;
    if (isText && *text == 0)
        why = L"there is no name";
    else if (HasType(type))
        bytes = ReadModuleResource(text, type, module, largest, why);
    else if (isText)
        bytes = ReadFromFolderOrZip(text, largest, why);

    if (!bytes && isText && *text != 0 && fallback == ResourceFallback::PlainPath) {
        std::wstring ignored;
        bytes = ReadWholeFile(text, largest, ignored);
    }
    if (!bytes && reason != nullptr)
        *reason = why;
    return bytes;
}

void UseResourceZip(const std::wstring& path, bool cached, const CDuiString& password)
{
    auto& setting = TheZip();
    std::wstring reason;
    {
        using enum ZipSetting::Kind;
        const std::lock_guard lock(setting.mutex);
        setting.kind = path.empty() ? None : cached ? CachedFile : File;
        setting.path = path;
        setting.password = Narrow(password);
        setting.open.reset();
        if (setting.kind == CachedFile)
            setting.open = ZipArchive::OpenFile(path, setting.password, &reason);
    }
    if (!reason.empty())
        ReportFailure(path + L": " + reason);
}

void UseResourceZip(const void* bytes, std::size_t size, const CDuiString& password)
{
    auto& setting = TheZip();
    std::wstring reason;
    {
        using enum ZipSetting::Kind;
        const std::lock_guard lock(setting.mutex);
        const auto* const first = static_cast<const BYTE*>(bytes);
        setting.kind = first == nullptr || size == 0 ? None : Memory;
        setting.path.clear();
        setting.password = Narrow(password);
        setting.open.reset();
        if (setting.kind == Memory) {
            setting.open =
                ZipArchive::OpenMemory(Bytes(first, first + size), setting.password, &reason);
        }
    }
    if (!reason.empty())
        ReportFailure(L"archive in memory: " + reason);
}

HANDLE ResourceZipHandle()
{
    auto& setting = TheZip();
    const std::lock_guard lock(setting.mutex);
    return setting.open.get();
}

} // namespace DuiLib
