#include "support/ObjectCounters.h"

#include "support/ImportHook.h"
#include "win32/Windows.h"

#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <cstring>
#include <malloc.h>
#include <span>
#include <string_view>

namespace test {

namespace {

// An entry of the table of GDI handles that the system shares with the process.
struct GdiEntry {
    ULONG64 object;
    ULONG owner;
    USHORT unique;
    UCHAR type;
    UCHAR flags;
    ULONG64 user;
};

constexpr int kGdiEntries = 65536;
constexpr std::size_t kSharedHandleTable = 0xF8; // offset in the x64 process environment block

std::span<const GdiEntry> GdiTable()
{
    auto* const block = reinterpret_cast<const BYTE*>(::NtCurrentTeb()->ProcessEnvironmentBlock);
    const GdiEntry* table = nullptr;
    std::memcpy(&table, block + kSharedHandleTable, sizeof table);
    return {table, kGdiEntries};
}

BOOL CALLBACK CountWindow(HWND, LPARAM counter)
{
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

BOOL CALLBACK CountTopLevel(HWND window, LPARAM counter)
{
    ++*reinterpret_cast<int*>(counter);
    ::EnumChildWindows(window, CountWindow, counter);
    return TRUE;
}

volatile LONG64 g_created = 0;
volatile LONG64 g_freed = 0;

bool StartsWith(const char* text, std::string_view prefix)
{
    return std::strncmp(text, prefix.data(), prefix.size()) == 0;
}

// GDI+ functions that make an object; each such call that is matched by a delete balances.
bool Creates(const char* function)
{
    return StartsWith(function, "GdipCreate") || StartsWith(function, "GdipClone") ||
           StartsWith(function, "GdipLoadImage") || StartsWith(function, "GdipGetImageThumbnail") ||
           StartsWith(function, "GdipGetImageGraphicsContext") ||
           StartsWith(function, "GdipNewInstalledFontCollection");
}

bool Frees(const char* function)
{
    return StartsWith(function, "GdipDelete") || StartsWith(function, "GdipDisposeImage");
}

// Code that counts one call and goes on to the real function with all arguments untouched.
void* MakeCountingThunk(volatile LONG64* counter, void* target)
{
    static BYTE* page = nullptr;
    static std::size_t used = 0;
    constexpr std::size_t kThunkSize = 32;
    constexpr std::size_t kPageSize = 65536;
    if (!page || used + kThunkSize > kPageSize) {
        page = static_cast<BYTE*>(
            ::VirtualAlloc(nullptr, kPageSize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
        used = 0;
    }
    BYTE* const thunk = page + used;
    used += kThunkSize;

    BYTE* at = thunk;
    const auto moveToRax = [&at](const void* value) {
        *at++ = 0x48;
        *at++ = 0xB8;
        std::memcpy(at, &value, sizeof value);
        at += sizeof value;
    };
    moveToRax(const_cast<const LONG64*>(counter));
    for (const BYTE byte : {0xF0, 0x48, 0xFF, 0x00}) // lock inc qword ptr [rax]
        *at++ = byte;
    moveToRax(target);
    for (const BYTE byte : {0xFF, 0xE0}) // jmp rax
        *at++ = byte;
    return thunk;
}

// Not every platform has effects, and code may ask for one to find out.
using CreateEffect = int(WINAPI*)(const GUID kind, void** effect);
CreateEffect g_createEffect = nullptr;

int WINAPI CountCreatedEffect(const GUID kind, void** effect)
{
    const int status = g_createEffect(kind, effect);
    if (status == 0 && *effect)
        ::InterlockedIncrement64(&g_created);
    return status;
}

void CountGdiplusImport(void*, const char* dll, const char* function, void** slot)
{
    if (_stricmp(dll, "gdiplus.dll") != 0)
        return;
    if (std::string_view(function) == "GdipCreateEffect") {
        g_createEffect = reinterpret_cast<CreateEffect>(*slot);
        ReplaceImport(slot, reinterpret_cast<void*>(&CountCreatedEffect));
    } else if (Creates(function)) {
        ReplaceImport(slot, MakeCountingThunk(&g_created, *slot));
    } else if (Frees(function)) {
        ReplaceImport(slot, MakeCountingThunk(&g_freed, *slot));
    }
}

void StartCountingGdiplus()
{
    static bool started = false;
    if (started)
        return;
    started = true;
    for (const wchar_t* module : {L"DuiLib.dll", L"Quillet.dll"})
        if (const HMODULE handle = ::GetModuleHandleW(module))
            ForEachImport(handle, CountGdiplusImport, nullptr);
    ForEachImport(::GetModuleHandleW(nullptr), CountGdiplusImport, nullptr);
}

} // namespace

int GdiObjects()
{
    const DWORD counted = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    if (counted != 0)
        return static_cast<int>(counted);
    int objects = 0;
    for (const GdiEntry& entry : GdiTable())
        objects += entry.type != 0;
    return objects;
}

std::string GdiObjectKinds()
{
    static constexpr struct {
        UCHAR type;
        const char* name;
    } kKinds[] = {{0x01, "DC"},   {0x04, "region"}, {0x05, "bitmap"}, {0x08, "palette"},
                  {0x0A, "font"}, {0x10, "brush"},  {0x30, "pen"}};
    std::string text;
    for (const auto& kind : kKinds) {
        const auto count = std::ranges::count(
            GdiTable(), kind.type, [](const GdiEntry& entry) { return entry.type & 0x7F; });
        text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ' + kind.name;
    }
    return text;
}

int Threads()
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int threads = 0;
    for (BOOL more = ::Thread32First(snapshot, &entry); more;
         more = ::Thread32Next(snapshot, &entry))
        threads += entry.th32OwnerProcessID == ::GetCurrentProcessId();
    ::CloseHandle(snapshot);
    return threads;
}

int UserWindows()
{
    int windows = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), CountTopLevel, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

int GdiplusObjects()
{
    StartCountingGdiplus();
    return static_cast<int>(g_created - g_freed);
}

int HeapBlocks()
{
    int used = 0;
    _HEAPINFO entry{};
    while (_heapwalk(&entry) == _HEAPOK)
        used += entry._useflag == _USEDENTRY;
    return used;
}

} // namespace test
