#pragma once

#include <UIlib.h>

#include "support/ImportHook.h"

#include <cstring>
#include <string>
#include <vector>

namespace test {

// Stands in for the system's Shcore.dll in the calls that one module makes, and records them.
class FakeShcore {
public:
    explicit FakeShcore(const wchar_t* module = L"Quillet.dll")
        : m_load(module, "KERNEL32.dll", "LoadLibraryW", &FakeShcore::OnLoadLibrary),
          m_find(module, "KERNEL32.dll", "GetProcAddress", &FakeShcore::OnGetProcAddress),
          m_free(module, "KERNEL32.dll", "FreeLibrary", &FakeShcore::OnFreeLibrary)
    {
        Current() = this;
    }
    ~FakeShcore() { Current() = nullptr; }
    FakeShcore(const FakeShcore&) = delete;
    FakeShcore& operator=(const FakeShcore&) = delete;

    // What the system says.
    bool present = true;
    bool hasExports = true;
    HRESULT setResult = S_OK;
    HRESULT getResult = S_OK;
    PROCESS_DPI_AWARENESS awareness = PROCESS_PER_MONITOR_DPI_AWARE;
    HRESULT dpiResult = S_OK;
    std::vector<UINT> dpi{96};       // one answer per call, the last one for all further ones
    DWORD lastError = ERROR_SUCCESS; // left behind by a failing call

    // What was asked.
    std::vector<std::wstring> loaded;
    std::vector<std::string> looked;
    std::vector<PROCESS_DPI_AWARENESS> set;
    std::vector<HMONITOR> monitors;
    std::vector<int> dpiTypes;
    HANDLE process = nullptr;
    int freed = 0;

private:
    static FakeShcore*& Current()
    {
        static FakeShcore* current = nullptr;
        return current;
    }

    static HMODULE Handle() { return reinterpret_cast<HMODULE>(&Current()); }

    static HMODULE WINAPI OnLoadLibrary(LPCWSTR path)
    {
        Current()->loaded.emplace_back(path);
        return Current()->present ? Handle() : nullptr;
    }

    static FARPROC WINAPI OnGetProcAddress(HMODULE module, LPCSTR name)
    {
        if (module != Handle())
            return Current()->m_find.Original<decltype(::GetProcAddress)>()(module, name);
        Current()->looked.emplace_back(name);
        void* found = nullptr;
        if (!Current()->hasExports)
            found = nullptr;
        else if (std::strcmp(name, "GetProcessDpiAwareness") == 0)
            found = reinterpret_cast<void*>(&FakeShcore::OnGetAwareness);
        else if (std::strcmp(name, "SetProcessDpiAwareness") == 0)
            found = reinterpret_cast<void*>(&FakeShcore::OnSetAwareness);
        else if (std::strcmp(name, "GetDpiForMonitor") == 0)
            found = reinterpret_cast<void*>(&FakeShcore::OnGetDpiForMonitor);
        return reinterpret_cast<FARPROC>(found);
    }

    static BOOL WINAPI OnFreeLibrary(HMODULE module)
    {
        if (module != Handle())
            return Current()->m_free.Original<decltype(::FreeLibrary)>()(module);
        ++Current()->freed;
        return TRUE;
    }

    static HRESULT WINAPI OnGetAwareness(HANDLE process, PROCESS_DPI_AWARENESS* answer)
    {
        Current()->process = process;
        if (SUCCEEDED(Current()->getResult))
            *answer = Current()->awareness;
        return Current()->getResult;
    }

    static HRESULT WINAPI OnSetAwareness(PROCESS_DPI_AWARENESS value)
    {
        Current()->set.push_back(value);
        return Current()->setResult;
    }

    static HRESULT WINAPI OnGetDpiForMonitor(HMONITOR monitor, int type, UINT* x, UINT* y)
    {
        auto& self = *Current();
        const std::size_t call = self.monitors.size();
        self.monitors.push_back(monitor);
        self.dpiTypes.push_back(type);
        if (FAILED(self.dpiResult)) {
            ::SetLastError(self.lastError);
            return self.dpiResult;
        }
        *x = self.dpi[call < self.dpi.size() ? call : self.dpi.size() - 1];
        *y = *x + 1; // must never be taken for the answer
        return S_OK;
    }

    ImportHook m_load;
    ImportHook m_find;
    ImportHook m_free;
};

// Gives a manager an awareness, as a system that accepts it does.
template <class Manager>
void GiveAwareness(Manager& manager, PROCESS_DPI_AWARENESS awareness)
{
    const FakeShcore shcore;
    manager.SetDPIAwareness(awareness);
}

} // namespace test
