#include "quillet/resources/ThumbnailKit.h"

#include <random>

namespace test {
namespace {

using DuiLib::ThumbnailData;
using Size = CacheCalls::Size;

// A file as it is at the moment.
struct File {
    enum class Kind { Picture, Text, Missing };

    std::wstring path;
    Kind kind = Kind::Missing;
    int width = 0;
    int height = 0;
};

// What the cache is to know about a path.
struct Known {
    std::wstring path;
    const ThumbnailData* address;
    bool loaded;
    bool icon;
    int width, height;
    Size size;
    int number; // of the thumbnail, or -1
};

enum class Form { Small, Sized, Shown };

struct Request {
    Form form;
    std::size_t file;
    int width, height;
    int rotation;
    bool largeTip;
    bool reload;
};

class ResourceQueueModelTest : public ThumbnailTest {
protected:
    ResourceQueueModelTest()
    {
        for (int index = 0; index < 300; ++index) {
            files.push_back({.path = folder / std::to_wstring(index)});
            Change(files.back());
        }
        calls.countedIcons = true;
    }

    int Random(int first, int last)
    {
        return std::uniform_int_distribution<int>(first, last)(random);
    }

    // Into a picture of any small size, now and then into something else.
    void Change(File& file)
    {
        const int choice = Random(0, 9);
        file.kind = choice == 0   ? File::Kind::Missing
                    : choice == 1 ? File::Kind::Text
                                  : File::Kind::Picture;
        file.width = Random(1, 6);
        file.height = Random(1, 6);
        ::DeleteFileW(file.path.c_str());
        const std::wstring name = file.path.substr(folder.Path().size());
        if (file.kind == File::Kind::Picture)
            WritePicture(name, file.width, file.height);
        else if (file.kind == File::Kind::Text)
            folder.Write(name, "text");
    }

    Request AnyRequest()
    {
        static constexpr int kRotations[] = {0, 90, 180, 270, 45, -90};
        const int kind = Random(0, 3);
        return {.form = kind < 2    ? Form::Small
                        : kind == 2 ? Form::Sized
                                    : Form::Shown,
                .file = static_cast<std::size_t>(Random(0, 299)),
                .width = Random(1, 9),
                .height = Random(1, 9),
                .rotation = kRotations[Random(0, 5)],
                .largeTip = Random(0, 19) == 0,
                .reload = Random(0, 1) == 0};
    }

    ThumbnailData* Ask(const Request& request)
    {
        const std::wstring& path = files[request.file].path;
        switch (request.form) {
        case Form::Small:
            return Small(path);
        case Form::Sized:
            return Sized(path, request.width, request.height, request.rotation);
        default:
            return Shown(path, request.largeTip ? Tip::Large : Tip::Whole,
                         request.reload ? Cached::Reload : Cached::Use, request.rotation);
        }
    }

    void ExpectKnown(const Known& known)
    {
        const ThumbnailData& data = *known.address;
        EXPECT_EQ(data.loaded, known.loaded);
        EXPECT_EQ(data.icon != nullptr, known.icon);
        EXPECT_EQ(data.width, known.width);
        EXPECT_EQ(data.height, known.height);
        EXPECT_EQ(SizeOf(data), known.size);
        EXPECT_EQ(*data.position, known.path);
    }

    // Asks and says what the simplest cache would do.
    void Step(const Request& request)
    {
        const File& file = files[request.file];
        const std::size_t opened = calls.opened.size();
        calls.disposed.clear();
        ThumbnailData* const data = Ask(request);

        std::vector<int> disposed;
        const auto drop = [&](const Known& known) {
            if (known.number >= 0)
                disposed.push_back(known.number);
        };
        if (order.size() > 200) {
            drop(order.front());
            order.erase(order.begin());
        }
        auto found = std::find_if(order.begin(), order.end(),
                                  [&](const Known& known) { return known.path == file.path; });
        const bool cached = found != order.end();
        if (cached) {
            std::rotate(found, found + 1, order.end());
            found = order.end() - 1;
        }

        const bool reads = !cached || (request.form == Form::Shown && request.reload);
        EXPECT_EQ(calls.opened.size(), opened + (reads ? 1 : 0));
        const bool picture = file.kind == File::Kind::Picture;
        if (reads && !picture && request.form != Form::Small) {
            EXPECT_EQ(data, nullptr);
        } else if (reads) {
            ASSERT_NE(data, nullptr);
            if (cached) {
                EXPECT_EQ(data, found->address);
                drop(*found);
                order.pop_back();
            }
            const bool turned =
                request.form != Form::Small && (request.rotation == 90 || request.rotation == 270);
            Known known{.path = file.path,
                        .address = data,
                        .loaded = picture,
                        .icon = file.kind == File::Kind::Text,
                        .width = turned ? file.height : file.width,
                        .height = turned ? file.width : file.height,
                        .size = {128, 64},
                        .number = -1};
            if (!picture) {
                known.width = known.height = 0;
                known.size = {0, 0};
            } else {
                known.number = made++;
                if (request.form == Form::Sized)
                    known.size = {2 * request.width, 2 * request.height};
                else if (request.form == Form::Shown)
                    known.size =
                        request.largeTip ? Size{384, 448} : Size{known.width, known.height};
            }
            order.push_back(known);
        } else {
            EXPECT_EQ(data, found->address);
        }

        EXPECT_EQ(calls.disposed, disposed);
        EXPECT_EQ(calls.Decoded(), 0u);
        if (data)
            ExpectKnown(order.back());
    }

    void ExpectAllKnown()
    {
        std::size_t thumbnails = 0;
        std::size_t icons = 0;
        const ThumbnailData* previous = nullptr;
        for (const Known& known : order) {
            ExpectKnown(known);
            thumbnails += known.number >= 0;
            icons += known.icon;
            if (previous) {
                EXPECT_EQ(std::next(previous->position), known.address->position);
            }
            previous = known.address;
        }
        EXPECT_EQ(calls.Alive(), thumbnails);
        EXPECT_EQ(calls.icons.size(), icons);
    }

    std::mt19937 random{20260101};
    std::vector<File> files;
    CacheCalls calls;
    std::vector<Known> order; // the least recently used first
    int made = 0;
};

TEST_F(ResourceQueueModelTest, TenThousandRequestsAgreeWithTheSimplestCache)
{
    std::size_t most = 0;
    for (int step = 0; step < 10000 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (Random(0, 49) == 0)
            Change(files[static_cast<std::size_t>(Random(0, 299))]);
        Step(AnyRequest());
        if (step % 50 == 0)
            ExpectAllKnown();
        most = std::max(most, order.size());
    }
    ExpectAllKnown();
    EXPECT_EQ(most, 201u);
    EXPECT_LE(calls.mostAlive, 201u);
    RecordProperty("opened", static_cast<int>(calls.opened.size()));
}

} // namespace
} // namespace test
