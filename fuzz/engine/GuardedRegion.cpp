#include "fuzz/engine/GuardedRegion.h"

#include "win32/Windows.h"

#include <cstring>

namespace fuzz {

namespace {

constexpr std::size_t kPage = 4096;

} // namespace

GuardedRegion::GuardedRegion(std::size_t capacity) : m_capacity((capacity + kPage) / kPage * kPage)
{
    m_start = static_cast<std::byte*>(
        ::VirtualAlloc(nullptr, m_capacity + kPage, MEM_RESERVE, PAGE_NOACCESS));
    ::VirtualAlloc(m_start, m_capacity, MEM_COMMIT, PAGE_READWRITE);
}

GuardedRegion::~GuardedRegion()
{
    ::VirtualFree(m_start, 0, MEM_RELEASE);
}

std::byte* GuardedRegion::Last(std::size_t size)
{
    return size <= m_capacity ? m_start + m_capacity - size : nullptr;
}

ByteView GuardedRegion::Place(ByteView bytes)
{
    std::byte* const place = Last(bytes.size());
    if (!bytes.empty())
        std::memcpy(place, bytes.data(), bytes.size());
    return {place, bytes.size()};
}

} // namespace fuzz
