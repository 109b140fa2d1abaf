#include "quillet/resources/ResourceQueue.h"

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <cstddef>
#include <memory>

#include "win32/ComPointer.h"

namespace DuiLib {

namespace {

constexpr std::size_t kCapacity = 200; // and the one that was asked for last
constexpr std::size_t kFirstBuckets = 8;

constexpr SIZE kSmall{128, 64};
constexpr SIZE kLargeTip{384, 448};

using Picture = std::unique_ptr<Gdiplus::Image>;

// Reads the file and lets others read and delete it. Holds no picture when it cannot be read.
Picture Open(const wchar_t* path)
{
    IStream* opened = nullptr;
    ::SHCreateStreamOnFileEx(path, STGM_READ | STGM_SHARE_DENY_WRITE, 0, FALSE, nullptr, &opened);
    const Quillet::ComPointer<IStream> stream(opened);
    return std::make_unique<Gdiplus::Image>(stream.get());
}

// To be asked first: the answer is that of the last operation.
bool IsRead(const Gdiplus::Image& picture)
{
    return picture.GetLastStatus() == Gdiplus::Ok;
}

void Rotate(Gdiplus::Image& picture, int degrees)
{
    switch (degrees) {
    case 0:
        picture.RotateFlip(Gdiplus::RotateNoneFlipNone);
        break;
    case 90:
        picture.RotateFlip(Gdiplus::Rotate90FlipNone);
        break;
    case 180:
        picture.RotateFlip(Gdiplus::Rotate180FlipNone);
        break;
    case 270:
        picture.RotateFlip(Gdiplus::Rotate270FlipNone);
        break;
    }
}

// Published: exactly of that size, whatever the shape of the picture.
Gdiplus::Image* MakeThumbnail(Gdiplus::Image& picture, SIZE size)
{
    auto* const thumbnail = picture.GetThumbnailImage(static_cast<UINT>(size.cx),
                                                      static_cast<UINT>(size.cy), nullptr, nullptr);
    return thumbnail ? thumbnail : new Gdiplus::Image(static_cast<IStream*>(nullptr));
}

void Empty(ThumbnailData& entry)
{
    // Published: also when there is no icon.
    ::DestroyIcon(entry.icon);
    entry.icon = nullptr;
    delete entry.thumbnail;
    entry.thumbnail = nullptr;
}

int Doubled(int value)
{
    return static_cast<int>(2u * static_cast<unsigned>(value));
}

} // namespace

ResourceQueue* ResourceQueue::GetInstance()
{
    static ResourceQueue queue;
    return &queue;
}

ResourceQueue::ResourceQueue() : m_entries(kFirstBuckets)
{
    m_entries.max_load_factor(1.0f);
}

ResourceQueue::ResourceQueue(const ResourceQueue& other)
    : m_recency(other.m_recency), m_entries(other.m_entries), m_pManager(other.m_pManager)
{
    FindPositions();
}

ResourceQueue& ResourceQueue::operator=(const ResourceQueue& other)
{
    m_recency = other.m_recency;
    m_entries = other.m_entries;
    m_pManager = other.m_pManager;
    FindPositions();
    return *this;
}

ResourceQueue::~ResourceQueue()
{
    // Published: a handle that nobody ever sets is closed at the end.
    static HANDLE unused = nullptr;
    ::CloseHandle(unused);
    for (const auto& [path, entry] : m_entries) {
        Empty(*entry.data);
        delete entry.data;
    }
}

// After copying, when they are still those of the other's order.
void ResourceQueue::FindPositions()
{
    for (auto position = m_recency.begin(); position != m_recency.end(); ++position)
        m_entries.find(*position)->second.position = position;
}

void ResourceQueue::SetManager(CPaintManagerUI* manager)
{
    m_pManager = manager;
}

// Published: at each request while there are too many, even when the request then finds its own; so
// the one to go first is lost and made again when it is asked for.
void ResourceQueue::MakeRoom()
{
    if (m_entries.size() <= kCapacity)
        return;
    while (!m_recency.empty()) {
        const auto found = m_entries.find(m_recency.front());
        m_recency.pop_front();
        if (found == m_entries.end())
            continue;
        Empty(*found->second.data);
        delete found->second.data;
        m_entries.erase(found);
        return;
    }
}

ThumbnailData* ResourceQueue::FindAndTouch(const std::wstring& path)
{
    const auto found = m_entries.find(path);
    if (found == m_entries.end())
        return nullptr;
    const Entry& entry = found->second;
    m_recency.splice(m_recency.end(), m_recency, entry.position);
    entry.data->position = entry.position;
    return entry.data;
}

// Into the entry that is there, or into a new one.
ThumbnailData* ResourceQueue::Store(const std::wstring& path, ThumbnailData* entry,
                                    Gdiplus::Image& picture, bool loaded, SIZE size)
{
    if (entry) {
        Empty(*entry);
    } else {
        entry = new ThumbnailData;
        entry->position = m_recency.emplace(m_recency.end(), path);
        m_entries.emplace(path, Entry{entry, entry->position});
    }
    entry->loaded = loaded;
    entry->width = static_cast<int>(picture.GetWidth());
    entry->height = static_cast<int>(picture.GetHeight());
    entry->thumbnail = MakeThumbnail(picture, size);
    if (!loaded)
        entry->icon = GetDefaultIcon(path.c_str());
    return entry;
}

ThumbnailData* ResourceQueue::GetResource(const wchar_t* path)
{
    const std::wstring key = path ? path : L"";
    MakeRoom();
    if (ThumbnailData* const entry = FindAndTouch(key))
        return entry;
    const Picture picture = Open(key.c_str());
    return Store(key, nullptr, *picture, IsRead(*picture), kSmall);
}

ThumbnailData* ResourceQueue::GetResource(const wchar_t* path, int& width, int& height,
                                          int& /*reserved1*/, int& /*reserved2*/, int rotation)
{
    const std::wstring key = path ? path : L"";
    MakeRoom();
    if (ThumbnailData* const entry = FindAndTouch(key))
        return entry;
    const Picture picture = Open(key.c_str());
    if (!IsRead(*picture))
        return nullptr;
    Rotate(*picture, rotation);
    return Store(key, nullptr, *picture, true, {Doubled(width), Doubled(height)});
}

ThumbnailData* ResourceQueue::GetResource(const wchar_t* path, int /*width*/, int /*height*/,
                                          int rotation, bool largeTip, bool reload)
{
    const std::wstring key = path ? path : L"";
    MakeRoom();
    ThumbnailData* const entry = FindAndTouch(key);
    if (entry && !reload)
        return entry;
    const Picture picture = Open(key.c_str());
    if (!IsRead(*picture))
        return nullptr;
    Rotate(*picture, rotation);
    const SIZE whole{static_cast<LONG>(picture->GetWidth()),
                     static_cast<LONG>(picture->GetHeight())};
    return Store(key, entry, *picture, true, largeTip ? kLargeTip : whole);
}

HICON ResourceQueue::GetDefaultIcon(const wchar_t* path)
{
    // Published: asked for once and not used; no image list of the system is ever held.
    static const bool prepared = [] {
        IID imageList{};
        ::IIDFromString(L"{46EB5926-582E-4017-9FDF-E8998DAA0950}", &imageList);
        ::Shell_GetImageLists(nullptr, nullptr);
        return true;
    }();
    static_cast<void>(prepared);

    SHFILEINFOW info{};
    // Published: the attribute has no effect without the flag that makes it count.
    const DWORD_PTR found = ::SHGetFileInfoW(path, FILE_ATTRIBUTE_DIRECTORY, &info, sizeof info,
                                             SHGFI_ICON | SHGFI_DISPLAYNAME);
    return found ? info.hIcon : nullptr;
}

} // namespace DuiLib
