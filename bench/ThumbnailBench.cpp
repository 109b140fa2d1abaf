#include <quillet/quillet.h>

#include "bench/Harness.h"
#include "win32/ComPointer.h"

#include <shlwapi.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace bench {

namespace {

using namespace DuiLib;

constexpr double kLargestHit = 5000; // nanoseconds
constexpr double kLargestToBareMiss = 1.1;
constexpr std::array<std::size_t, 3> kEntries{10, 100, 200};
constexpr std::size_t kFiles = 300; // asked for in turn, they are never found among the last 201
constexpr UINT kThumbnailWidth = 128;
constexpr UINT kThumbnailHeight = 64;

// Goes through the paths for ever.
class Walk {
public:
    explicit Walk(const std::vector<std::wstring>& paths) : m_paths(paths) {}

    const wchar_t* Next()
    {
        m_next = m_next + 1 < m_paths.size() ? m_next + 1 : 0;
        return m_paths[m_next].c_str();
    }

private:
    const std::vector<std::wstring>& m_paths;
    std::size_t m_next = 0;
};

// What a hit finds does not matter, so these files need not exist.
void MeasureHits(Report& report, ResourceQueue& queue)
{
    std::vector<std::wstring> paths;
    std::unordered_map<std::wstring, ThumbnailData*> bareEntries;
    for (const std::size_t entries : kEntries) {
        while (paths.size() < entries) {
            paths.push_back(L"C:\\Users\\Somebody\\Pictures\\No such holiday\\Picture " +
                            std::to_wstring(paths.size()) + L".jpeg");
            bareEntries[paths.back()] = queue.GetResource(paths.back().c_str());
        }
        Walk walk(paths);
        Walk bareWalk(paths);
        const auto pair = TimeBoth([&] { queue.GetResource(walk.Next()); },
                                   [&] { bareEntries.find(bareWalk.Next()); });
        const std::string name = "find one of " + std::to_string(entries) + " thumbnails";
        report.Add({name, pair.cost, {}, kLargestHit});
        report.Add({name + " / look up in a hash table", pair.cost, pair.bare, {}});
    }
}

// Copies of one picture, in a folder that goes with the object.
class Album {
public:
    Album(const wchar_t* name, int width, int height)
        : m_folder(std::filesystem::temp_directory_path() /
                   (L"quillet-bench-" + std::to_wstring(::GetCurrentProcessId()) + name))
    {
        std::filesystem::create_directories(m_folder);
        const std::string picture = Bitmap(width, height);
        for (std::size_t file = 0; file < kFiles; ++file) {
            m_paths.push_back((m_folder / (std::to_wstring(file) + L".bmp")).wstring());
            std::ofstream(std::filesystem::path(m_paths.back()), std::ios::binary) << picture;
        }
    }
    ~Album()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    Album(const Album&) = delete;
    Album& operator=(const Album&) = delete;

    const std::vector<std::wstring>& Paths() const { return m_paths; }

private:
    // 24 bits for each pixel; the width is a multiple of four.
    static std::string Bitmap(int width, int height)
    {
        std::string file = "BM";
        const auto append = [&file](int value) {
            for (int shift = 0; shift < 32; shift += 8)
                file += static_cast<char>(value >> shift);
        };
        const int bytes = width * height * 3;
        for (const int field :
             {54 + bytes, 0, 54, 40, width, height, 1 | 24 << 16, 0, bytes, 0, 0, 0, 0})
            append(field);
        for (int i = 0; i < bytes; ++i)
            file += static_cast<char>(i * 7);
        return file;
    }

    std::filesystem::path m_folder;
    std::vector<std::wstring> m_paths;
};

void MakeBareThumbnail(const wchar_t* path)
{
    IStream* opened = nullptr;
    ::SHCreateStreamOnFileEx(path, STGM_READ | STGM_SHARE_DENY_WRITE, 0, FALSE, nullptr, &opened);
    const Quillet::ComPointer<IStream> stream(opened);
    Gdiplus::Image picture(stream.get());
    const std::unique_ptr<Gdiplus::Image> thumbnail(
        picture.GetThumbnailImage(kThumbnailWidth, kThumbnailHeight, nullptr, nullptr));
}

void MeasureMisses(Report& report, ResourceQueue& queue, const wchar_t* folder, int width,
                   int height)
{
    const Album album(folder, width, height);
    Walk walk(album.Paths());
    Walk bareWalk(album.Paths());
    const auto pair = LeastOfBoth([&] { queue.GetResource(walk.Next()); },
                                  [&] { MakeBareThumbnail(bareWalk.Next()); });
    report.Add({"make a thumbnail of " + std::to_string(width) + " x " + std::to_string(height) +
                    " / GDI+ alone",
                pair.cost, pair.bare, kLargestToBareMiss});
}

} // namespace

void RunThumbnailBench(Report& report)
{
    auto& queue = *ResourceQueue::GetInstance();
    const CPaintManagerUI manager; // keeps GDI+ running
    MeasureHits(report, queue);
    MeasureMisses(report, queue, L"-small", 64, 48);
    MeasureMisses(report, queue, L"-large", 640, 480);
}

} // namespace bench
