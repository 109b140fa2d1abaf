#include "Utils/Utils.h"

#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include <new>
#include <utility>

namespace DuiLib {

namespace {

constexpr int kLeastBuckets = 16;
constexpr int kFirstAllocation = 8;

int GrownTo(int allocated, int count)
{
    return (std::max)({count, allocated + allocated / 2, kFirstAllocation});
}

void* ResizeBlock(void* block, size_t count, size_t size)
{
    void* const resized = realloc(block, count * size);
    if (resized == nullptr)
        throw std::bad_alloc();
    return resized;
}

void MoveBytes(void* to, const void* from, size_t bytes)
{
    if (bytes != 0)
        memmove(to, from, bytes);
}

// 33 per code unit, from the last unit to the first. The walking order of a map follows from it.
UINT HashKey(LPCTSTR key)
{
    UINT hash = 0;
    for (size_t i = wcslen(key); i > 0; --i)
        hash = hash * 33 + static_cast<UINT>(key[i - 1]);
    return hash;
}

} // namespace

CStdPtrArray::CStdPtrArray(int iPreallocSize) : m_ppVoid(nullptr), m_nCount(0), m_nAllocated(0)
{
    assert(iPreallocSize >= 0);
    if (iPreallocSize > 0)
        Grow(iPreallocSize);
}

CStdPtrArray::CStdPtrArray(const CStdPtrArray& other)
    : m_ppVoid(nullptr), m_nCount(0), m_nAllocated(0)
{
    *this = other;
}

CStdPtrArray& CStdPtrArray::operator=(const CStdPtrArray& other)
{
    if (this == &other)
        return *this;
    if (other.m_nCount > m_nAllocated)
        Grow(other.m_nCount);
    MoveBytes(m_ppVoid, other.m_ppVoid, static_cast<size_t>(other.m_nCount) * sizeof(LPVOID));
    m_nCount = other.m_nCount;
    return *this;
}

CStdPtrArray::~CStdPtrArray()
{
    free(m_ppVoid);
}

void CStdPtrArray::Grow(int count)
{
    m_ppVoid =
        static_cast<LPVOID*>(ResizeBlock(m_ppVoid, static_cast<size_t>(count), sizeof(LPVOID)));
    m_nAllocated = count;
}

void CStdPtrArray::Empty()
{
    free(m_ppVoid);
    m_ppVoid = nullptr;
    m_nCount = 0;
    m_nAllocated = 0;
}

void CStdPtrArray::Resize(int size)
{
    Empty();
    if (size <= 0)
        return;
    Grow(size);
    memset(m_ppVoid, 0, static_cast<size_t>(size) * sizeof(LPVOID));
    m_nCount = size;
}

int CStdPtrArray::Find(LPVOID data) const
{
    for (int i = 0; i < m_nCount; ++i) {
        if (m_ppVoid[i] == data)
            return i;
    }
    return -1;
}

bool CStdPtrArray::Add(LPVOID data)
{
    return InsertAt(m_nCount, data);
}

bool CStdPtrArray::SetAt(int index, LPVOID data)
{
    if (index < 0 || index >= m_nCount)
        return false;
    m_ppVoid[index] = data;
    return true;
}

bool CStdPtrArray::InsertAt(int index, LPVOID data)
{
    if (index < 0 || index > m_nCount)
        return false;
    if (m_nCount == m_nAllocated)
        Grow(GrownTo(m_nAllocated, m_nCount + 1));
    MoveBytes(&m_ppVoid[index + 1], &m_ppVoid[index],
              static_cast<size_t>(m_nCount - index) * sizeof(LPVOID));
    m_ppVoid[index] = data;
    ++m_nCount;
    return true;
}

bool CStdPtrArray::Remove(int index)
{
    if (index < 0 || index >= m_nCount)
        return false;
    --m_nCount;
    MoveBytes(&m_ppVoid[index], &m_ppVoid[index + 1],
              static_cast<size_t>(m_nCount - index) * sizeof(LPVOID));
    return true;
}

CStdValArray::CStdValArray(int iElementSize, int iPreallocSize)
    : m_pVoid(nullptr), m_iElementSize(iElementSize), m_nCount(0), m_nAllocated(0)
{
    assert(iElementSize > 0);
    assert(iPreallocSize >= 0);
    if (iPreallocSize > 0)
        Grow(iPreallocSize);
}

CStdValArray::CStdValArray(const CStdValArray& other)
    : m_pVoid(nullptr), m_iElementSize(other.m_iElementSize), m_nCount(0), m_nAllocated(0)
{
    *this = other;
}

CStdValArray& CStdValArray::operator=(const CStdValArray& other)
{
    if (this == &other)
        return *this;
    if (m_iElementSize != other.m_iElementSize)
        Empty();
    m_iElementSize = other.m_iElementSize;
    if (other.m_nCount > m_nAllocated)
        Grow(other.m_nCount);
    MoveBytes(m_pVoid, other.m_pVoid, static_cast<size_t>(other.m_nCount) * m_iElementSize);
    m_nCount = other.m_nCount;
    return *this;
}

CStdValArray::~CStdValArray()
{
    free(m_pVoid);
}

void CStdValArray::Grow(int count)
{
    m_pVoid = static_cast<LPBYTE>(
        ResizeBlock(m_pVoid, static_cast<size_t>(count), static_cast<size_t>(m_iElementSize)));
    m_nAllocated = count;
}

void CStdValArray::Empty()
{
    free(m_pVoid);
    m_pVoid = nullptr;
    m_nCount = 0;
    m_nAllocated = 0;
}

bool CStdValArray::Add(LPCVOID data)
{
    if (data == nullptr)
        return false;
    const auto* record = static_cast<const BYTE*>(data);
    if (m_nCount == m_nAllocated) {
        // The record may be one of the array's own, which moves.
        const bool own = m_nCount > 0 && record >= m_pVoid && record < At(m_nCount);
        const auto offset = own ? record - m_pVoid : 0;
        Grow(GrownTo(m_nAllocated, m_nCount + 1));
        record = own ? m_pVoid + offset : static_cast<const BYTE*>(data);
    }
    MoveBytes(At(m_nCount), record, static_cast<size_t>(m_iElementSize));
    ++m_nCount;
    return true;
}

bool CStdValArray::Remove(int index)
{
    if (index < 0 || index >= m_nCount)
        return false;
    --m_nCount;
    MoveBytes(At(index), At(index + 1), static_cast<size_t>(m_nCount - index) * m_iElementSize);
    return true;
}

CStdStringPtrMap::CStdStringPtrMap(int nSize) : m_aT(nullptr), m_nBuckets(0), m_nCount(0)
{
    Resize((std::max)(nSize, kLeastBuckets));
}

CStdStringPtrMap::~CStdStringPtrMap()
{
    FreeItems();
    delete[] m_aT;
}

void CStdStringPtrMap::FreeItems()
{
    for (int bucket = 0; bucket < m_nBuckets; ++bucket) {
        TITEM* item = std::exchange(m_aT[bucket], nullptr);
        while (item != nullptr)
            delete std::exchange(item, item->pNext);
    }
    m_nCount = 0;
}

void CStdStringPtrMap::Resize(int nSize)
{
    FreeItems();
    delete[] m_aT;
    m_nBuckets = (std::max)(nSize, 0);
    m_aT = m_nBuckets > 0 ? new TITEM*[static_cast<size_t>(m_nBuckets)]() : nullptr;
}

UINT CStdStringPtrMap::BucketOf(LPCTSTR key) const
{
    return HashKey(key) % static_cast<UINT>(m_nBuckets);
}

TITEM* CStdStringPtrMap::Lookup(UINT bucket, LPCTSTR key) const
{
    for (TITEM* item = m_aT[bucket]; item != nullptr; item = item->pNext) {
        if (wcscmp(item->Key, key) == 0)
            return item;
    }
    return nullptr;
}

void CStdStringPtrMap::LinkAsHead(UINT bucket, TITEM* item) const
{
    item->pPrev = nullptr;
    item->pNext = m_aT[bucket];
    if (item->pNext != nullptr)
        item->pNext->pPrev = item;
    m_aT[bucket] = item;
}

void CStdStringPtrMap::Unlink(UINT bucket, TITEM* item) const
{
    if (item->pPrev != nullptr)
        item->pPrev->pNext = item->pNext;
    else
        m_aT[bucket] = item->pNext;
    if (item->pNext != nullptr)
        item->pNext->pPrev = item->pPrev;
}

LPVOID CStdStringPtrMap::Find(LPCTSTR key, bool optimize) const
{
    if (key == nullptr || m_nBuckets == 0 || m_nCount == 0)
        return nullptr;
    const UINT bucket = BucketOf(key);
    TITEM* const item = Lookup(bucket, key);
    if (item == nullptr)
        return nullptr;
    if (optimize && item->pPrev != nullptr) {
        Unlink(bucket, item);
        LinkAsHead(bucket, item);
    }
    return item->Data;
}

bool CStdStringPtrMap::Insert(LPCTSTR key, LPVOID data)
{
    if (key == nullptr || m_nBuckets == 0)
        return false;
    const UINT bucket = BucketOf(key);
    if (TITEM* const item = Lookup(bucket, key)) {
        if (item->Data != nullptr)
            return false;
        // A key stored with a null value counts as absent, yet is an entry already.
        Unlink(bucket, item);
        LinkAsHead(bucket, item);
        item->Data = data;
        return true;
    }
    LinkAsHead(bucket, new TITEM{key, data, nullptr, nullptr});
    ++m_nCount;
    return true;
}

LPVOID CStdStringPtrMap::Set(LPCTSTR key, LPVOID data)
{
    if (key == nullptr || m_nBuckets == 0)
        return data;
    const UINT bucket = BucketOf(key);
    if (TITEM* const item = Lookup(bucket, key))
        return std::exchange(item->Data, data);
    LinkAsHead(bucket, new TITEM{key, data, nullptr, nullptr});
    ++m_nCount;
    return nullptr;
}

bool CStdStringPtrMap::Remove(LPCTSTR key)
{
    if (key == nullptr || m_nBuckets == 0 || m_nCount == 0)
        return false;
    const UINT bucket = BucketOf(key);
    TITEM* const item = Lookup(bucket, key);
    if (item == nullptr)
        return false;
    Unlink(bucket, item);
    delete item;
    --m_nCount;
    return true;
}

void CStdStringPtrMap::RemoveAll()
{
    FreeItems();
}

LPCTSTR CStdStringPtrMap::GetAt(int index) const
{
    if (index < 0 || index >= m_nCount)
        return nullptr;
    int position = 0;
    for (int bucket = m_nBuckets - 1; bucket >= 0; --bucket) {
        for (const TITEM* item = m_aT[bucket]; item != nullptr; item = item->pNext) {
            if (position++ == index)
                return item->Key;
        }
    }
    return nullptr;
}

} // namespace DuiLib
