#include "support/FaultPlan.h"

#include "support/ImportHook.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace test {

namespace {

std::atomic<DWORD> g_thread{0}; // whose requests count; none at 0
int g_requests = 0;
int g_refused = 0;

bool IsRefused()
{
    if (g_thread != ::GetCurrentThreadId() || ++g_requests != g_refused)
        return false;
    ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return true;
}

// A function's stand-in. The id tells functions of one type apart.
template <int id, class Function>
struct StandIn;

template <int id, class Result, class... Arguments>
struct StandIn<id, Result(Arguments...)> {
    static inline Result (*original)(Arguments...) = nullptr;

    static Result Call(Arguments... arguments)
    {
        return IsRefused() ? Result{} : original(arguments...);
    }
};

namespace Heap {

void* (*originalMalloc)(std::size_t) = nullptr;
void* (*originalCalloc)(std::size_t, std::size_t) = nullptr;
void* (*originalRealloc)(void*, std::size_t) = nullptr;
void (*originalFree)(void*) = nullptr;

bool refuses = false; // memory is what the plan is about
std::atomic<int> held{0};

bool Refuses()
{
    return refuses && IsRefused();
}

void* Malloc(std::size_t size)
{
    void* const block = Refuses() ? nullptr : originalMalloc(size);
    held += block != nullptr;
    return block;
}

void* Calloc(std::size_t count, std::size_t size)
{
    void* const block = Refuses() ? nullptr : originalCalloc(count, size);
    held += block != nullptr;
    return block;
}

void* Realloc(void* block, std::size_t size)
{
    if (Refuses())
        return nullptr;
    void* const resized = originalRealloc(block, size);
    held += (block == nullptr && resized != nullptr) - (block != nullptr && size == 0);
    return resized;
}

void Free(void* block)
{
    held -= block != nullptr;
    originalFree(block);
}

} // namespace Heap

struct Function {
    Resource resource;
    const char* name;
    void* standIn;
    void** original; // as the first import of it says
};

template <int id, class Type>
Function Refusable(Resource resource, const char* name)
{
    using Of = StandIn<id, Type>;
    return {resource, name, reinterpret_cast<void*>(&Of::Call),
            reinterpret_cast<void**>(&Of::original)};
}

template <class Type>
Function OfHeap(const char* name, Type* standIn, Type*& original)
{
    return {Resource::Memory, name, reinterpret_cast<void*>(standIn),
            reinterpret_cast<void**>(&original)};
}

const std::vector<Function>& Functions()
{
    static const std::vector<Function> functions = {
        Refusable<0, decltype(::CreateWindowExW)>(Resource::Window, "CreateWindowExW"),
        Refusable<1, decltype(::GetDC)>(Resource::DeviceContext, "GetDC"),
        Refusable<2, decltype(::GetWindowDC)>(Resource::DeviceContext, "GetWindowDC"),
        Refusable<3, decltype(::CreateCompatibleDC)>(Resource::DeviceContext, "CreateCompatibleDC"),
        Refusable<4, decltype(::CreateCompatibleBitmap)>(Resource::Bitmap,
                                                         "CreateCompatibleBitmap"),
        Refusable<5, decltype(::CreateDIBSection)>(Resource::Bitmap, "CreateDIBSection"),
        Refusable<6, decltype(::CreateFontIndirectW)>(Resource::Font, "CreateFontIndirectW"),
        Refusable<7, decltype(::CreateRectRgn)>(Resource::Region, "CreateRectRgn"),
        Refusable<8, decltype(::CreateRectRgnIndirect)>(Resource::Region, "CreateRectRgnIndirect"),
        Refusable<9, decltype(::CreateRoundRectRgn)>(Resource::Region, "CreateRoundRectRgn"),
        Refusable<10, decltype(::SetTimer)>(Resource::Timer, "SetTimer"),
        OfHeap("malloc", &Heap::Malloc, Heap::originalMalloc),
        OfHeap("calloc", &Heap::Calloc, Heap::originalCalloc),
        OfHeap("realloc", &Heap::Realloc, Heap::originalRealloc),
        OfHeap("free", &Heap::Free, Heap::originalFree),
    };
    return functions;
}

} // namespace

struct FaultPlan::Redirections {
    struct Slot {
        void** slot;
        void* original;
    };
    Resource resource;
    std::vector<Slot> slots;

    static void Redirect(void* context, const char*, const char* name, void** slot)
    {
        auto& self = *static_cast<Redirections*>(context);
        for (const auto& function : Functions()) {
            const bool wanted =
                function.resource == self.resource || function.resource == Resource::Memory;
            if (!wanted || std::strcmp(function.name, name) != 0)
                continue;
            if (*function.original == nullptr)
                *function.original = *slot;
            self.slots.push_back({slot, ReplaceImport(slot, function.standIn)});
        }
    }
};

FaultPlan::FaultPlan(Resource resource)
    : m_redirections(std::make_unique<Redirections>(Redirections{resource, {}}))
{
    Heap::refuses = resource == Resource::Memory;
    // The shared runtime asks for what operator new gives.
    for (const wchar_t* const module :
         {L"DuiLib.dll", L"Quillet.dll", L"libstdc++-6.dll", L"msvcp140.dll"}) {
        if (const HMODULE handle = ::GetModuleHandleW(module))
            ForEachImport(handle, &Redirections::Redirect, m_redirections.get());
    }
    ForEachImport(::GetModuleHandleW(nullptr), &Redirections::Redirect, m_redirections.get());
}

FaultPlan::~FaultPlan()
{
    Stop();
    for (const auto& redirected : m_redirections->slots)
        ReplaceImport(redirected.slot, redirected.original);
}

void FaultPlan::Start(int refused)
{
    g_requests = 0;
    g_refused = refused;
    g_thread = ::GetCurrentThreadId();
}

int FaultPlan::Stop()
{
    g_thread = 0;
    return g_requests;
}

int FaultPlan::HeldBlocks()
{
    return Heap::held;
}

} // namespace test
