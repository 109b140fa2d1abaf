#pragma once

#include <UIlib.h>

#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quillet/resources/ResourceQueue.h"
#include "support/ImportHook.h"
#include "support/Picture.h"
#include "support/TempFolder.h"

namespace test {

// Everything that the cache of thumbnails asks of the system, recorded, and some of it replaced.
class CacheCalls {
public:
    CacheCalls() { Current() = this; }
    ~CacheCalls() { Current() = nullptr; }
    CacheCalls(const CacheCalls&) = delete;
    CacheCalls& operator=(const CacheCalls&) = delete;

    struct Opening {
        std::wstring path;
        DWORD mode;
        DWORD attributes;
        BOOL create;
        IStream* pattern;
        bool operator==(const Opening&) const = default;
    };
    struct IconQuestion {
        std::wstring path;
        DWORD attributes;
        UINT size;
        UINT flags;
        bool operator==(const IconQuestion&) const = default;
    };
    struct Size {
        int width;
        int height;
        bool operator==(const Size&) const = default;
    };

    std::vector<Opening> opened;
    std::vector<IconQuestion> asked;
    std::vector<HICON> answered;
    std::vector<std::wstring> parsed;
    int imageLists = 0;
    bool imageListsWanted = false; // a pointer was not null
    std::vector<HICON> destroyed;
    std::vector<Gdiplus::RotateFlipType> turned;
    std::vector<Size> sizes; // of the thumbnails asked for

    // Thumbnails by the number of their making, from 0.
    std::vector<int> disposed;
    std::size_t Alive() const { return m_thumbnails.size(); }
    std::size_t mostAlive = 0;
    std::size_t Decoded() const { return m_pictures.size(); } // pictures held now
    std::set<HICON> icons;                                    // given and not destroyed

    // Answers in place of the system's.
    std::optional<Gdiplus::Status> thumbnailStatus;
    bool noFiles = false;      // none can be opened
    bool countedIcons = false; // numbers for the icons of existing files

private:
    static CacheCalls*& Current()
    {
        static CacheCalls* current = nullptr;
        return current;
    }

    static HRESULT WINAPI OnOpen(LPCWSTR path, DWORD mode, DWORD attributes, BOOL create,
                                 IStream* pattern, IStream** stream)
    {
        auto& self = *Current();
        self.opened.push_back({path, mode, attributes, create, pattern});
        if (self.noFiles)
            return E_FAIL;
        return self.m_open.Original<decltype(::SHCreateStreamOnFileEx)>()(path, mode, attributes,
                                                                          create, pattern, stream);
    }

    static DWORD_PTR WINAPI OnAskIcon(LPCWSTR path, DWORD attributes, SHFILEINFOW* info, UINT size,
                                      UINT flags)
    {
        auto& self = *Current();
        self.asked.push_back({path ? path : L"(null)", attributes, size, flags});
        DWORD_PTR answer = 1;
        if (!self.countedIcons)
            answer = self.m_askIcon.Original<decltype(::SHGetFileInfoW)>()(path, attributes, info,
                                                                           size, flags);
        else if (::GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES)
            answer = 0;
        else
            info->hIcon = reinterpret_cast<HICON>(static_cast<ULONG_PTR>(++self.m_lastIcon));
        self.answered.push_back(answer ? info->hIcon : nullptr);
        if (answer)
            self.icons.insert(info->hIcon);
        return answer;
    }

    static BOOL WINAPI OnDestroyIcon(HICON icon)
    {
        auto& self = *Current();
        self.destroyed.push_back(icon);
        if (icon) {
            EXPECT_EQ(self.icons.erase(icon), 1u) << "an icon that is not the cache's";
        }
        if (!icon || self.countedIcons)
            return FALSE;
        return self.m_destroyIcon.Original<decltype(::DestroyIcon)>()(icon);
    }

    static HRESULT WINAPI OnParse(LPCOLESTR text, LPIID id)
    {
        Current()->parsed.emplace_back(text);
        return Current()->m_parse.Original<decltype(::IIDFromString)>()(text, id);
    }

    static BOOL WINAPI OnImageLists(HIMAGELIST* large, HIMAGELIST* small)
    {
        ++Current()->imageLists;
        Current()->imageListsWanted |= large || small;
        return TRUE;
    }

    static Gdiplus::Status WINAPI OnLoad(IStream* stream, Gdiplus::GpImage** image)
    {
        auto& self = *Current();
        const auto status =
            self.m_load.Original<decltype(Gdiplus::DllExports::GdipLoadImageFromStream)>()(stream,
                                                                                           image);
        if (status == Gdiplus::Ok)
            self.m_pictures.insert(*image);
        return status;
    }

    static Gdiplus::Status WINAPI OnTurn(Gdiplus::GpImage* image, Gdiplus::RotateFlipType type)
    {
        Current()->turned.push_back(type);
        return Current()->m_turn.Original<decltype(Gdiplus::DllExports::GdipImageRotateFlip)>()(
            image, type);
    }

    static Gdiplus::Status WINAPI OnThumbnail(Gdiplus::GpImage* image, UINT width, UINT height,
                                              Gdiplus::GpImage** thumbnail,
                                              Gdiplus::GetThumbnailImageAbort abort, void* data)
    {
        auto& self = *Current();
        EXPECT_FALSE(abort) << "a callback";
        self.sizes.push_back({static_cast<int>(width), static_cast<int>(height)});
        if (self.thumbnailStatus)
            return *self.thumbnailStatus;
        const auto status =
            self.m_thumbnail.Original<decltype(Gdiplus::DllExports::GdipGetImageThumbnail)>()(
                image, width, height, thumbnail, abort, data);
        if (status == Gdiplus::Ok)
            self.m_thumbnails.emplace(*thumbnail, self.m_made++);
        self.mostAlive = std::max(self.mostAlive, self.m_thumbnails.size());
        return status;
    }

    static Gdiplus::Status WINAPI OnDispose(Gdiplus::GpImage* image)
    {
        auto& self = *Current();
        if (const auto found = self.m_thumbnails.find(image); found != self.m_thumbnails.end()) {
            self.disposed.push_back(found->second);
            self.m_thumbnails.erase(found);
        }
        self.m_pictures.erase(image);
        return self.m_dispose.Original<decltype(Gdiplus::DllExports::GdipDisposeImage)>()(image);
    }

    int m_made = 0;
    int m_lastIcon = 0;
    std::map<Gdiplus::GpImage*, int> m_thumbnails;
    std::set<Gdiplus::GpImage*> m_pictures;

    static constexpr const wchar_t* kModule = L"Quillet.dll";
    ImportHook m_open{kModule, "SHLWAPI.dll", "SHCreateStreamOnFileEx", &OnOpen};
    ImportHook m_askIcon{kModule, "SHELL32.dll", "SHGetFileInfoW", &OnAskIcon};
    ImportHook m_destroyIcon{kModule, "USER32.dll", "DestroyIcon", &OnDestroyIcon};
    ImportHook m_parse{kModule, "ole32.dll", "IIDFromString", &OnParse};
    ImportHook m_imageLists{kModule, "SHELL32.dll", "Shell_GetImageLists", &OnImageLists};
    ImportHook m_load{kModule, "gdiplus.dll", "GdipLoadImageFromStream", &OnLoad};
    ImportHook m_turn{kModule, "gdiplus.dll", "GdipImageRotateFlip", &OnTurn};
    ImportHook m_thumbnail{kModule, "gdiplus.dll", "GdipGetImageThumbnail", &OnThumbnail};
    ImportHook m_dispose{kModule, "gdiplus.dll", "GdipDisposeImage", &OnDispose};
};

// Never destroyed, as the destructor is the cache's own.
inline DuiLib::ResourceQueue& CopyOf(const DuiLib::ResourceQueue& queue)
{
    return *new DuiLib::ResourceQueue(queue);
}

// Taken before any test has asked for anything.
inline DuiLib::ResourceQueue& emptyQueue = CopyOf(*DuiLib::ResourceQueue::GetInstance());

// Gives back everything that the cache holds.
inline void EmptyTheQueue()
{
    constexpr int kMostEntries = 201;
    auto& queue = *DuiLib::ResourceQueue::GetInstance();
    {
        CacheCalls calls;
        calls.noFiles = calls.countedIcons = true;
        // The icons that the cache held before go back for good.
        const ImportHook destroyIcon(L"Quillet.dll", "USER32.dll", "DestroyIcon", &::DestroyIcon);
        for (int index = 0; index < kMostEntries; ++index)
            queue.GetResource((L"missing" + std::to_wstring(index)).c_str());
    }
    queue = emptyQueue;
}

constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kYellow{0xFFFFFF00};

// Red and green above blue and yellow.
inline Picture Quarters(int width, int height)
{
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool right = x >= width / 2;
            picture.Set(x, y, y < height / 2 ? right ? kGreen : kRed : right ? kYellow : kBlue);
        }
    }
    return picture;
}

// A file of 24 bits for each pixel.
inline std::string BmpOf(const Picture& picture)
{
    constexpr int kHeaders = 54;
    std::string file = "BM";
    const auto append = [&file](int value, int count) {
        for (int index = 0; index < count; ++index)
            file += static_cast<char>(value >> 8 * index);
    };
    const int stride = (picture.Width() * 3 + 3) / 4 * 4;
    for (const int field : {kHeaders + stride * picture.Height(), 0, kHeaders, 40, picture.Width(),
                            picture.Height(), 1 | 24 << 16, 0, 0, 0, 0, 0, 0})
        append(field, 4);
    for (int y = picture.Height() - 1; y >= 0; --y) {
        for (int x = 0; x < picture.Width(); ++x)
            append(static_cast<int>(picture.At(x, y).value), 3);
        file.append(static_cast<std::size_t>(stride - picture.Width() * 3), '\0');
    }
    return file;
}

// The empty cache and a folder of files for it.
class ThumbnailTest : public testing::Test {
protected:
    ThumbnailTest() { EmptyTheQueue(); }

    // Returns the full path.
    std::wstring WritePicture(const std::wstring& name, int width, int height) const
    {
        return folder.Write(name, BmpOf(Quarters(width, height)));
    }

    // The second form, of 2 width x 2 height.
    DuiLib::ThumbnailData* Sized(const std::wstring& path, int width, int height, int rotation = 0)
    {
        int first = -1;
        int second = -2;
        auto* const found = queue.GetResource(path.c_str(), width, height, first, second, rotation);
        EXPECT_EQ(first, -1);
        EXPECT_EQ(second, -2);
        return found;
    }

    // The third form.
    enum class Tip { Whole, Large };
    enum class Cached { Use, Reload };
    DuiLib::ThumbnailData* Shown(const std::wstring& path, Tip tip = Tip::Whole,
                                 Cached cached = Cached::Use, int rotation = 0)
    {
        return queue.GetResource(path.c_str(), 7, 9, rotation, tip == Tip::Large,
                                 cached == Cached::Reload);
    }

    DuiLib::ThumbnailData* Small(const std::wstring& path)
    {
        return queue.GetResource(path.c_str());
    }

    DuiLib::CPaintManagerUI manager; // keeps GDI+ running
    TempFolder folder;
    DuiLib::ResourceQueue& queue = *DuiLib::ResourceQueue::GetInstance();
};

// What a thumbnail shows.
inline Picture PixelsOf(Gdiplus::Image& image)
{
    const int width = static_cast<int>(image.GetWidth());
    const int height = static_cast<int>(image.GetHeight());
    Gdiplus::Bitmap bitmap(width, height, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    graphics.DrawImage(&image, 0, 0, width, height);
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Gdiplus::Color colour;
            bitmap.GetPixel(x, y, &colour);
            picture.Set(x, y, Argb{colour.GetValue()});
        }
    }
    return picture;
}

inline CacheCalls::Size SizeOf(const DuiLib::ThumbnailData& data)
{
    return {static_cast<int>(data.thumbnail->GetWidth()),
            static_cast<int>(data.thumbnail->GetHeight())};
}

// The colours in the middle of the quarters: upper left, upper right, lower left, lower right.
struct Middles {
    Argb upperLeft, upperRight, lowerLeft, lowerRight;
    bool operator==(const Middles&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Middles& middles)
{
    return out << middles.upperLeft << ' ' << middles.upperRight << ' ' << middles.lowerLeft << ' '
               << middles.lowerRight;
}

inline Middles MiddlesOf(const DuiLib::ThumbnailData& data)
{
    const Picture picture = PixelsOf(*data.thumbnail);
    const int left = picture.Width() / 4;
    const int right = picture.Width() * 3 / 4;
    const int top = picture.Height() / 4;
    const int bottom = picture.Height() * 3 / 4;
    return {picture.At(left, top), picture.At(right, top), picture.At(left, bottom),
            picture.At(right, bottom)};
}

constexpr Middles kUpright{kRed, kGreen, kBlue, kYellow};

inline void ExpectNothingRead(const DuiLib::ThumbnailData* data)
{
    ASSERT_NE(data, nullptr);
    EXPECT_FALSE(data->loaded);
    EXPECT_EQ(data->width, 0);
    EXPECT_EQ(data->height, 0);
    ASSERT_NE(data->thumbnail, nullptr);
    EXPECT_EQ(SizeOf(*data), (CacheCalls::Size{0, 0}));
    EXPECT_NE(data->thumbnail->GetLastStatus(), Gdiplus::Ok);
}

} // namespace test
