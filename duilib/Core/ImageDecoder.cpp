#include "Core/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "Core/FileBytes.h"
#include "Core/Svg.h"
#include "Core/TgaDecoder.h"
#include "win32/GdiPlus.h"

namespace DuiLib {

namespace {

constexpr std::string_view kPngSignature("\x89PNG\r\n\x1a\n", 8);
constexpr std::string_view kIconSignature("\0\0\1\0", 4);

struct HeaderSize {
    std::int64_t width;
    std::int64_t height;
};

// The size stands in the first of the segments that begin a frame.
std::optional<HeaderSize> JpegSize(const FileBytes& file)
{
    std::size_t at = 2;
    while (at + 9 < file.Size()) {
        if (file.At(at) != 0xFF)
            return std::nullopt;
        const unsigned marker = file.At(at + 1);
        const bool filling = marker == 0xFF;
        const bool alone = marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame)
            return HeaderSize{file.Big16(at + 7), file.Big16(at + 5)};
        if (filling)
            at += 1;
        else if (alone)
            at += 2;
        else
            at += 2 + file.Big16(at + 2);
    }
    return std::nullopt;
}

// The information header of a bitmap, in a file of its own or in an icon.
HeaderSize BitmapHeaderSize(const FileBytes& file, std::size_t at)
{
    constexpr unsigned kCoreHeaderBytes = 12;
    if (file.Little32(at) == kCoreHeaderBytes)
        return {file.Little16(at + 4), file.Little16(at + 6)};
    const auto width = static_cast<std::int32_t>(file.Little32(at + 4));
    const auto height = static_cast<std::int32_t>(file.Little32(at + 8));
    return {width, std::abs(static_cast<std::int64_t>(height))};
}

// A bitmap resource is a bitmap file without its file header.
bool IsHeaderlessBitmap(const FileBytes& file)
{
    constexpr unsigned kInfoHeaderBytes = 40;
    return file.Little32(0) == kInfoHeaderBytes && file.Little16(12) == 1;
}

std::vector<BYTE> WithFileHeader(std::span<const BYTE> data)
{
    constexpr unsigned kFileHeaderBytes = 14;
    constexpr unsigned kChannelMasksBytes = 12;
    const FileBytes file(data);
    const unsigned bits = file.Little16(14);
    const unsigned largestTable = bits <= 8 ? 1u << bits : 0;
    const unsigned used = file.Little32(32);
    const unsigned colours = used == 0 ? largestTable : std::min(used, 256u);
    const unsigned masks = file.Little32(16) == BI_BITFIELDS ? kChannelMasksBytes : 0;

    std::vector<BYTE> whole{'B', 'M'};
    const auto append = [&whole](std::size_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            whole.push_back(static_cast<BYTE>(value >> shift));
    };
    append(kFileHeaderBytes + data.size());
    append(0);
    append(kFileHeaderBytes + file.Little32(0) + masks + colours * 4);
    whole.insert(whole.end(), data.begin(), data.end());
    return whole;
}

// What an icon's largest picture says of itself.
HeaderSize IconSize(const FileBytes& file)
{
    constexpr std::size_t kDirectoryBytes = 6;
    constexpr std::size_t kEntryBytes = 16;
    HeaderSize largest{1, 1};
    const unsigned count = file.Little16(4);
    for (unsigned entry = 0; entry < count; entry++) {
        const std::size_t at = kDirectoryBytes + entry * kEntryBytes;
        if (at + kEntryBytes > file.Size())
            break;
        const std::size_t picture = file.Little32(at + 12);
        const HeaderSize size = file.StartsWith(kPngSignature, picture)
                                    ? HeaderSize{file.Big32(picture + 16), file.Big32(picture + 20)}
                                    : BitmapHeaderSize(file, picture);
        if (size.width * size.height > largest.width * largest.height)
            largest = size;
    }
    return largest;
}

std::optional<HeaderSize> FindHeaderSize(const FileBytes& file)
{
    if (file.StartsWith(kPngSignature))
        return HeaderSize{file.Big32(16), file.Big32(20)};
    if (file.StartsWith("\xFF\xD8"))
        return JpegSize(file);
    if (file.StartsWith("GIF8"))
        return HeaderSize{file.Little16(6), file.Little16(8)};
    if (file.StartsWith("BM"))
        return BitmapHeaderSize(file, 14);
    if (IsHeaderlessBitmap(file))
        return BitmapHeaderSize(file, 0);
    if (file.StartsWith(kIconSignature))
        return IconSize(file);
    return std::nullopt;
}

std::wstring CheckSize(std::int64_t width, std::int64_t height)
{
    const auto size = std::to_wstring(width) + L" x " + std::to_wstring(height);
    if (width <= 0 || height <= 0)
        return L"the picture is empty (" + size + L")";
    if (width > kLargestPicturePixels || height > kLargestPicturePixels ||
        width * height > kLargestPicturePixels)
        return L"the picture is too large (" + size + L")";
    return {};
}

std::span<BYTE> PixelBytes(const DecodedPicture& picture)
{
    return {picture.bits, std::size_t{4} * picture.width * picture.height};
}

// Takes the masked pixels out and finds out whether the picture is opaque.
void ApplyMask(DecodedPicture& picture, DWORD mask)
{
    const auto bytes = PixelBytes(picture);
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        DWORD colour = 0;
        std::memcpy(&colour, bytes.data() + at, sizeof colour);
        if (mask != 0 && colour == mask) {
            colour = 0;
            std::memset(bytes.data() + at, 0, sizeof colour);
        }
        if (colour >> 24 != 255)
            picture.alpha = true;
    }
}

struct ReleaseStream {
    void operator()(IStream* stream) const { stream->Release(); }
};

using UniqueStream = std::unique_ptr<IStream, ReleaseStream>;

UniqueStream MemoryStream(std::span<const BYTE> data)
{
    Quillet::UniqueGlobal memory(::GlobalAlloc(GMEM_MOVEABLE, data.size()));
    if (memory == nullptr)
        return nullptr;
    if (void* bytes = ::GlobalLock(memory.get())) {
        std::memcpy(bytes, data.data(), data.size());
        ::GlobalUnlock(memory.get());
    }
    IStream* stream = nullptr;
    if (FAILED(::CreateStreamOnHGlobal(memory.get(), TRUE, &stream)))
        return nullptr;
    memory.release(); // the stream frees it
    return UniqueStream(stream);
}

DecodedPicture DecodeWithGdiplus(std::span<const BYTE> data, std::wstring& failure)
{
    const auto stream = MemoryStream(data);
    if (stream == nullptr) {
        failure = L"not enough memory";
        return {};
    }

    Gdiplus::Bitmap source(stream.get());
    if (source.GetLastStatus() != Gdiplus::Ok) {
        failure = L"not a picture of a known format, or a damaged one";
        return {};
    }
    auto picture = CreatePicture(source.GetWidth(), source.GetHeight(), failure);
    if (picture.bitmap == nullptr)
        return {};

    const Gdiplus::Rect all(0, 0, picture.width, picture.height);
    Gdiplus::BitmapData pixels{};
    pixels.Width = static_cast<UINT>(picture.width);
    pixels.Height = static_cast<UINT>(picture.height);
    pixels.Stride = picture.width * 4;
    pixels.PixelFormat = PixelFormat32bppARGB;
    pixels.Scan0 = picture.bits;
    const auto status =
        source.LockBits(&all, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                        PixelFormat32bppARGB, &pixels);
    if (status != Gdiplus::Ok) {
        failure = L"the picture's pixels cannot be decoded";
        return {};
    }
    source.UnlockBits(&pixels);
    Premultiply(picture);
    return picture;
}

} // namespace

void Premultiply(const DecodedPicture& picture)
{
    const auto bytes = PixelBytes(picture);
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        BYTE* pixel = bytes.data() + at;
        const unsigned alpha = pixel[3];
        if (alpha == 255)
            continue;
        for (int channel = 0; channel < 3; channel++)
            pixel[channel] = static_cast<BYTE>((pixel[channel] * alpha + 127) / 255);
    }
}

DecodedPicture CreatePicture(std::int64_t width, std::int64_t height, std::wstring& failure)
{
    failure = CheckSize(width, height);
    if (!failure.empty())
        return {};

    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = static_cast<LONG>(width);
    info.bmiHeader.biHeight = -static_cast<LONG>(height);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;

    DecodedPicture picture;
    void* bits = nullptr;
    picture.bitmap.reset(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (picture.bitmap == nullptr || bits == nullptr) {
        failure = L"not enough memory for the picture";
        return {};
    }
    picture.bits = static_cast<BYTE*>(bits);
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    return picture;
}

bool IsMarkup(std::span<const BYTE> data)
{
    constexpr std::array<BYTE, 3> kUtf8Mark{0xEF, 0xBB, 0xBF};
    if (data.size() >= 2 &&
        ((data[0] == 0xFF && data[1] == 0xFE) || (data[0] == 0xFE && data[1] == 0xFF)))
        return true;
    if (data.size() >= kUtf8Mark.size() && std::ranges::equal(data.first(3), kUtf8Mark))
        data = data.subspan(3);
    const auto first = std::ranges::find_if(data, [](BYTE byte) {
        return byte != ' ' && byte != '\t' && byte != '\r' && byte != '\n';
    });
    return first != data.end() && *first == '<';
}

std::wstring CheckHeaderSize(std::span<const BYTE> data)
{
    const auto size = FindHeaderSize(FileBytes(data));
    return size ? CheckSize(size->width, size->height) : std::wstring();
}

std::unique_ptr<Gdiplus::Image> DecodeGdiplusImage(std::span<const BYTE> data)
{
    const auto stream = MemoryStream(data);
    if (stream == nullptr)
        return nullptr;
    // The image keeps the stream for as long as it lives.
    std::unique_ptr<Gdiplus::Image> image(Gdiplus::Image::FromStream(stream.get()));
    if (image != nullptr && image->GetLastStatus() != Gdiplus::Ok)
        image.reset();
    return image;
}

DecodedPicture DecodePicture(std::span<const BYTE> data, DWORD mask, int scale,
                             std::wstring& failure)
{
    failure.clear();
    if (data.empty()) {
        failure = L"the file is empty";
        return {};
    }

    std::vector<BYTE> whole;
    if (IsHeaderlessBitmap(FileBytes(data))) {
        whole = WithFileHeader(data);
        data = whole;
    }

    DecodedPicture picture;
    if (IsMarkup(data)) {
        picture = DrawSvg(data, scale, failure);
    } else {
        failure = CheckHeaderSize(data);
        if (!failure.empty())
            return {};
        const bool signature = FindHeaderSize(FileBytes(data)).has_value();
        picture =
            !signature && IsTga(data) ? DecodeTga(data, failure) : DecodeWithGdiplus(data, failure);
    }
    if (picture.bitmap != nullptr)
        ApplyMask(picture, mask);
    return picture;
}

} // namespace DuiLib
