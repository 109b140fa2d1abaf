#pragma once

#include "win32/Windows.h"

namespace test {

// Replaces one imported function of one loaded module for the life of the object.
//
// Only calls of that module are redirected; Original() reaches the real function.
class ImportHook {
public:
    template <class Function>
    ImportHook(const wchar_t* module, const char* dll, const char* function, Function* replacement)
        : ImportHook(module, dll, function, reinterpret_cast<void*>(replacement))
    {
    }
    ImportHook(const wchar_t* module, const char* dll, const char* function, void* replacement);
    ~ImportHook();
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

    // False when the module does not import the function.
    explicit operator bool() const { return m_slot != nullptr; }

    template <class Function>
    Function* Original() const
    {
        return reinterpret_cast<Function*>(m_original);
    }

private:
    void** m_slot = nullptr;
    void* m_original = nullptr;
};

// The address of the import table's entry, or null.
void** FindImport(HMODULE module, const char* dll, const char* function);

// Calls the visitor with every named import of the module: (dll, function, slot).
void ForEachImport(HMODULE module, void (*visit)(void* context, const char*, const char*, void**),
                   void* context);

// Writes a read-only import entry and returns what stood there.
void* ReplaceImport(void** slot, void* replacement);

} // namespace test
