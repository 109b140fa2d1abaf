#include "fuzz/engine/Growth.h"

#include "fuzz/engine/GuardedHeap.h"
#include "support/ObjectCounters.h"
#include "win32/Windows.h"

namespace fuzz {

namespace {

// The toolkit remembers the sizes of some thousand texts for as long as their font lives.
constexpr Holdings kAllowed{.gdiObjects = 16,
                            .windows = 0,
                            .blocks = 20'000,
                            .bytes = 8 * 1024 * 1024,
                            .systemBytes = 8 * 1024 * 1024};

std::int64_t BytesOnProcessHeap()
{
    std::int64_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    const HANDLE heap = ::GetProcessHeap();
    ::HeapLock(heap);
    while (::HeapWalk(heap, &entry))
        bytes += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? entry.cbData : 0;
    ::HeapUnlock(heap);
    return bytes;
}

} // namespace

Holdings CountHoldings()
{
    const auto heap = GuardedHeap::Count();
    return {test::GdiObjects(), test::UserWindows(), heap.blocks, heap.bytes, BytesOnProcessHeap()};
}

std::string FindGrowth(const Holdings& before, const Holdings& after)
{
    std::string found;
    const auto compare = [&found](const char* what, std::int64_t first, std::int64_t second,
                                  std::int64_t allowed) {
        if (second - first > allowed)
            found += std::string(what) + " grew from " + std::to_string(first) + " to " +
                     std::to_string(second) + "; ";
    };
    compare("GDI objects", before.gdiObjects, after.gdiObjects, kAllowed.gdiObjects);
    compare("windows", before.windows, after.windows, kAllowed.windows);
    compare("blocks", before.blocks, after.blocks, kAllowed.blocks);
    compare("bytes", before.bytes, after.bytes, kAllowed.bytes);
    compare("bytes of the system", before.systemBytes, after.systemBytes, kAllowed.systemBytes);
    return found;
}

} // namespace fuzz
