#include "fuzz/engine/GuardedHeap.h"

#include "support/ImportHook.h"
#include "win32/Windows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace fuzz::GuardedHeap {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kAlignment = 16;
constexpr unsigned char kFreed = 0xDD;
constexpr unsigned char kFresh = 0xCD;
constexpr unsigned char kBehind = 0xFD;
constexpr unsigned kProtectOneIn = 64; // freed blocks that nobody may touch any more

// Two sorts of slots: most blocks are small, some may be as large as a picture.
struct Sort {
    std::size_t slots;
    std::size_t size; // whole pages
};
constexpr Sort kSorts[] = {{8192, kPage}, {256, 64 * kPage}, {32, 1024 * kPage}};

enum class State : unsigned char { Free, FreeAndProtected, Used };

struct Slot {
    std::size_t size = 0; // of the block
    State state = State::Free;
    bool committed = false;
};

using AllocateFunction = void*(__cdecl*)(std::size_t);
using FreeFunction = void(__cdecl*)(void*);
using SizeFunction = std::size_t(__cdecl*)(void*);

// Of the C runtime; this program's own names for them are redirected too.
AllocateFunction g_malloc = nullptr;
FreeFunction g_free = nullptr;
SizeFunction g_msize = nullptr;

Placement g_placement = Placement::Aligned;
std::atomic<std::int64_t> g_blocks{0};
std::atomic<std::int64_t> g_bytes{0};
std::atomic<std::uint64_t> g_allocations{0};
std::atomic<std::uint64_t> g_unguarded{0};

class Lock {
public:
    Lock() { ::AcquireSRWLockExclusive(&s_lock); }
    ~Lock() { ::ReleaseSRWLockExclusive(&s_lock); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    static inline SRWLOCK s_lock = SRWLOCK_INIT;
};

void* ZeroedPages(std::size_t size)
{
    return ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

[[noreturn]] void ReportDamage(const void* block, std::size_t size, const char* what)
{
    std::fprintf(stderr, "%s: block of %llu bytes at %p\n", what,
                 static_cast<unsigned long long>(size), block);
    std::fflush(stderr);
    ::RaiseException(kDamage, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

// Slots of one size, each followed by an inaccessible page, used in turn.
class Arena {
public:
    bool Open(const Sort& sort)
    {
        m_count = sort.slots;
        m_size = sort.size;
        m_stride = sort.size + kPage;
        m_start = static_cast<std::byte*>(
            ::VirtualAlloc(nullptr, m_count * m_stride, MEM_RESERVE, PAGE_NOACCESS));
        m_slots = static_cast<Slot*>(ZeroedPages(m_count * sizeof(Slot)));
        m_queue = static_cast<std::uint32_t*>(ZeroedPages(m_count * sizeof(std::uint32_t)));
        if (!m_start || !m_slots || !m_queue)
            return false;
        for (std::uint32_t i = 0; i < m_count; ++i)
            m_queue[i] = i;
        m_waiting = m_count;
        return true;
    }

    bool Fits(std::size_t size) const { return size <= m_size; }
    bool Holds(const void* address) const
    {
        return address >= m_start && address < m_start + m_count * m_stride;
    }

    // Null when all slots are in use.
    void* Take(std::size_t size)
    {
        if (m_waiting == 0)
            return nullptr;
        const std::uint32_t index = m_queue[m_head];
        Slot& slot = m_slots[index];
        std::byte* const pages = PagesOf(index);
        if (!slot.committed && !::VirtualAlloc(pages, m_size, MEM_COMMIT, PAGE_READWRITE))
            return nullptr;
        slot.committed = true;
        if (slot.state == State::FreeAndProtected)
            Protect(pages, PAGE_READWRITE);
        m_head = (m_head + 1) % m_count;
        --m_waiting;

        slot.size = size;
        slot.state = State::Used;
        std::byte* const block = BlockOf(index);
        std::memset(block, kFresh, size);
        std::memset(block + size, kBehind, Behind(size));
        return block;
    }

    // What is wrong with a block that is to be freed; null when nothing is.
    const char* FindDamage(const void* block) const
    {
        const std::size_t index = IndexOf(block);
        const Slot& slot = m_slots[index];
        if (slot.state != State::Used || block != BlockOf(index))
            return "freed twice, or not the start of a block";
        const auto* const behind = static_cast<const unsigned char*>(block) + slot.size;
        const bool written = std::any_of(behind, behind + Behind(slot.size),
                                         [](unsigned char byte) { return byte != kBehind; });
        return written ? "written behind the end" : nullptr;
    }

    void Give(void* block)
    {
        const std::size_t index = IndexOf(block);
        Slot& slot = m_slots[index];
        std::memset(block, kFreed, slot.size);
        slot.state = State::Free;
        if (++m_freed % kProtectOneIn == 0) {
            Protect(PagesOf(index), PAGE_NOACCESS);
            slot.state = State::FreeAndProtected;
        }
        m_queue[(m_head + m_waiting) % m_count] = static_cast<std::uint32_t>(index);
        ++m_waiting;
    }

    const Slot& SlotOf(const void* address) const { return m_slots[IndexOf(address)]; }
    std::byte* BlockAround(const void* address) const { return BlockOf(IndexOf(address)); }

private:
    std::size_t IndexOf(const void* address) const
    {
        return static_cast<std::size_t>(static_cast<const std::byte*>(address) - m_start) /
               m_stride;
    }
    std::byte* PagesOf(std::size_t index) const { return m_start + index * m_stride; }

    // An empty block still has an address of its own within the pages.
    static std::size_t Taken(std::size_t size)
    {
        const std::size_t least = std::max<std::size_t>(size, 1);
        if (g_placement == Placement::Exact) {
            // A type of that size needs no stricter alignment than the size has.
            const std::size_t natural = std::min(least & (~least + 1), kAlignment);
            return (least + natural - 1) / natural * natural;
        }
        return (least + kAlignment - 1) / kAlignment * kAlignment;
    }
    static std::size_t Behind(std::size_t size) { return Taken(size) - size; }
    std::byte* BlockOf(std::size_t index) const
    {
        return PagesOf(index) + m_size - Taken(m_slots[index].size);
    }
    void Protect(std::byte* pages, DWORD protection) const
    {
        DWORD before = 0;
        ::VirtualProtect(pages, m_size, protection, &before);
    }

    std::byte* m_start = nullptr;
    std::size_t m_count = 0;
    std::size_t m_size = 0;
    std::size_t m_stride = 0;
    Slot* m_slots = nullptr;
    std::uint32_t* m_queue = nullptr; // of free slots, the one that was freed first at the head
    std::size_t m_head = 0;
    std::size_t m_waiting = 0;
    unsigned m_freed = 0;
};

std::array<Arena, std::size(kSorts)> g_arenas;

Arena* ArenaOf(const void* address)
{
    for (Arena& arena : g_arenas) {
        if (arena.Holds(address))
            return &arena;
    }
    return nullptr;
}

void Count(std::int64_t blocks, std::size_t bytes)
{
    g_blocks += blocks;
    g_bytes += blocks * static_cast<std::int64_t>(bytes);
}

void* __cdecl Allocate(std::size_t size)
{
    ++g_allocations;
    {
        const Lock lock;
        for (Arena& arena : g_arenas) {
            if (!arena.Fits(size))
                continue;
            if (void* const block = arena.Take(size)) {
                Count(1, size);
                return block;
            }
        }
    }
    ++g_unguarded;
    void* const block = g_malloc(size);
    if (block)
        Count(1, g_msize(block));
    return block;
}

void __cdecl Free(void* block)
{
    if (!block)
        return;
    if (Arena* const arena = ArenaOf(block)) {
        if (const char* const damage = arena->FindDamage(block))
            ReportDamage(block, arena->SlotOf(block).size, damage);
        const Lock lock;
        Count(-1, arena->SlotOf(block).size);
        arena->Give(block);
        return;
    }
    Count(-1, g_msize(block));
    g_free(block);
}

void* __cdecl AllocateZeros(std::size_t count, std::size_t size)
{
    if (size != 0 && count > SIZE_MAX / size)
        return nullptr;
    void* const block = Allocate(count * size);
    if (block)
        std::memset(block, 0, count * size);
    return block;
}

// Always moves, so that nobody counts on the old address.
void* __cdecl Resize(void* old, std::size_t size)
{
    if (!old)
        return Allocate(size);
    if (size == 0) {
        Free(old);
        return nullptr;
    }
    const Arena* const arena = ArenaOf(old);
    const std::size_t before = arena ? arena->SlotOf(old).size : g_msize(old);
    void* const block = Allocate(size);
    if (block) {
        std::memcpy(block, old, std::min(before, size));
        Free(old);
    }
    return block;
}

std::size_t __cdecl SizeOf(void* block)
{
    const Arena* const arena = ArenaOf(block);
    return arena ? arena->SlotOf(block).size : g_msize(block);
}

struct Replacement {
    const char* name;
    void* function;
};

void FindRuntime(void*, const char* dll, const char* function, void**)
{
    if (g_malloc || std::strcmp(function, "malloc") != 0)
        return;
    const HMODULE runtime = ::GetModuleHandleA(dll);
    const auto find = [runtime](auto*& into, const char* name) {
        into =
            std::bit_cast<std::remove_reference_t<decltype(into)>>(::GetProcAddress(runtime, name));
    };
    find(g_free, "free");
    find(g_msize, "_msize");
    find(g_malloc, "malloc");
}

void RedirectImport(void*, const char*, const char* function, void** slot)
{
    static const Replacement kReplacements[] = {
        {"malloc", reinterpret_cast<void*>(&Allocate)},
        {"calloc", reinterpret_cast<void*>(&AllocateZeros)},
        {"realloc", reinterpret_cast<void*>(&Resize)},
        {"free", reinterpret_cast<void*>(&Free)},
        {"_msize", reinterpret_cast<void*>(&SizeOf)},
    };
    for (const auto& replacement : kReplacements) {
        if (std::strcmp(function, replacement.name) == 0)
            test::ReplaceImport(slot, replacement.function);
    }
}

} // namespace

void Install(Placement placement)
{
    if (g_malloc)
        return;
    g_placement = placement;
    const HMODULE toolkit = ::GetModuleHandleW(L"DuiLib.dll");
    test::ForEachImport(toolkit, &FindRuntime, nullptr);
    for (std::size_t i = 0; i < g_arenas.size(); ++i) {
        if (!g_arenas[i].Open(kSorts[i]))
            std::abort();
    }
    for (const wchar_t* const module :
         {L"libstdc++-6.dll", L"msvcp140.dll", L"DuiLib.dll", L"Quillet.dll"}) {
        if (const HMODULE handle = ::GetModuleHandleW(module))
            test::ForEachImport(handle, &RedirectImport, nullptr);
    }
    test::ForEachImport(::GetModuleHandleW(nullptr), &RedirectImport, nullptr);
}

Counts Count()
{
    return {g_blocks, g_bytes, g_allocations, g_unguarded};
}

bool FindBlock(std::uintptr_t address, Block& block)
{
    const auto* const place = reinterpret_cast<const void*>(address);
    const Arena* const arena = ArenaOf(place);
    if (!arena)
        return false;
    const Slot& slot = arena->SlotOf(place);
    block = {reinterpret_cast<std::uintptr_t>(arena->BlockAround(place)), slot.size,
             slot.state != State::Used};
    return true;
}

} // namespace fuzz::GuardedHeap
