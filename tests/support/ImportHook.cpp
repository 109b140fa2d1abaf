#include "support/ImportHook.h"

#include <cstring>

namespace test {

void ForEachImport(HMODULE module, void (*visit)(void*, const char*, const char*, void**),
                   void* context)
{
    auto* const base = reinterpret_cast<BYTE*>(module);
    auto* const dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    auto* const headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.Size == 0)
        return;

    auto* import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; import->Name != 0; ++import) {
        auto* const dll = reinterpret_cast<const char*>(base + import->Name);
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (name->u1.Ordinal & IMAGE_ORDINAL_FLAG)
                continue;
            auto* const byName =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            visit(context, dll, reinterpret_cast<const char*>(byName->Name),
                  reinterpret_cast<void**>(&address->u1.Function));
        }
    }
}

void** FindImport(HMODULE module, const char* dll, const char* function)
{
    struct Search {
        const char* dll;
        const char* function;
        void** found = nullptr;
    } search{dll, function};

    ForEachImport(
        module,
        [](void* context, const char* importDll, const char* importName, void** slot) {
            auto& wanted = *static_cast<Search*>(context);
            if (_stricmp(importDll, wanted.dll) == 0 &&
                std::strcmp(importName, wanted.function) == 0)
                wanted.found = slot;
        },
        &search);
    return search.found;
}

void* ReplaceImport(void** slot, void* replacement)
{
    DWORD protection = 0;
    ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* const original = *slot;
    *slot = replacement;
    ::VirtualProtect(slot, sizeof *slot, protection, &protection);
    return original;
}

ImportHook::ImportHook(const wchar_t* module, const char* dll, const char* function,
                       void* replacement)
{
    const HMODULE handle = ::GetModuleHandleW(module);
    m_slot = handle ? FindImport(handle, dll, function) : nullptr;
    if (m_slot)
        m_original = ReplaceImport(m_slot, replacement);
}

ImportHook::~ImportHook()
{
    if (m_slot)
        ReplaceImport(m_slot, m_original);
}

} // namespace test
