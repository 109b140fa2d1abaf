#include "Core/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

#include "Core/Svg.h"
#include "win32/GdiPlus.h"

namespace DuiLib {

namespace {

// Reads numbers out of a file's bytes; beyond the end everything is 0.
class Bytes {
public:
    explicit Bytes(std::span<const BYTE> data) : m_data(data) {}

    std::size_t Size() const { return m_data.size(); }

    unsigned At(std::size_t index) const { return index < m_data.size() ? m_data[index] : 0; }

    unsigned Little16(std::size_t index) const { return At(index) | At(index + 1) << 8; }

    unsigned Big16(std::size_t index) const { return At(index) << 8 | At(index + 1); }

    unsigned Little32(std::size_t index) const
    {
        return Little16(index) | Little16(index + 2) << 16;
    }

    unsigned Big32(std::size_t index) const { return Big16(index) << 16 | Big16(index + 2); }

    bool StartsWith(std::string_view text, std::size_t index = 0) const
    {
        return index + text.size() <= m_data.size() &&
               std::memcmp(m_data.data() + index, text.data(), text.size()) == 0;
    }

    std::span<const BYTE> From(std::size_t index) const
    {
        return m_data.subspan(std::min(index, m_data.size()));
    }

private:
    std::span<const BYTE> m_data;
};

constexpr std::string_view kPngSignature("\x89PNG\r\n\x1a\n", 8);
constexpr std::string_view kIconSignature("\0\0\1\0", 4);

struct HeaderSize {
    std::int64_t width;
    std::int64_t height;
};

// The size stands in the first of the segments that begin a frame.
std::optional<HeaderSize> JpegSize(const Bytes& file)
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
HeaderSize BitmapHeaderSize(const Bytes& file, std::size_t at)
{
    constexpr unsigned kCoreHeaderBytes = 12;
    if (file.Little32(at) == kCoreHeaderBytes)
        return {file.Little16(at + 4), file.Little16(at + 6)};
    const auto width = static_cast<std::int32_t>(file.Little32(at + 4));
    const auto height = static_cast<std::int32_t>(file.Little32(at + 8));
    return {width, std::abs(static_cast<std::int64_t>(height))};
}

// What an icon's largest picture says of itself.
HeaderSize IconSize(const Bytes& file)
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

std::optional<HeaderSize> FindHeaderSize(const Bytes& file)
{
    if (file.StartsWith(kPngSignature))
        return HeaderSize{file.Big32(16), file.Big32(20)};
    if (file.StartsWith("\xFF\xD8"))
        return JpegSize(file);
    if (file.StartsWith("GIF8"))
        return HeaderSize{file.Little16(6), file.Little16(8)};
    if (file.StartsWith("BM"))
        return BitmapHeaderSize(file, 14);
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

void Premultiply(DecodedPicture& picture)
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

// The Truevision format: it has no signature, so every field of the header must make sense.
class TgaReader {
public:
    explicit TgaReader(std::span<const BYTE> data) : m_file(data)
    {
        m_type = m_file.At(2);
        m_mapLength = m_file.Little16(5);
        m_mapFirst = m_file.Little16(3);
        m_mapDepth = m_file.At(7);
        m_width = static_cast<int>(m_file.Little16(12));
        m_height = static_cast<int>(m_file.Little16(14));
        m_depth = m_file.At(16);
        m_attributeBits = m_file.At(17) & 0x0F;
        m_rightToLeft = (m_file.At(17) & 0x10) != 0;
        m_topDown = (m_file.At(17) & 0x20) != 0;
        m_mapAt = kHeaderBytes + m_file.At(0);
        m_at = m_mapAt + (HasMap() ? std::size_t{m_mapLength} * BytesOf(m_mapDepth) : 0);
    }

    bool IsTga() const
    {
        if (m_file.Size() < kHeaderBytes || m_file.At(1) > 1)
            return false;
        switch (Layout()) {
        case kMapped:
            return HasMap() && m_depth == 8 && IsColourDepth(m_mapDepth);
        case kTrueColour:
            return IsColourDepth(m_depth);
        case kGrey:
            return m_depth == 8;
        default:
            return false;
        }
    }

    DecodedPicture Decode(std::wstring& failure)
    {
        auto picture = CreatePicture(m_width, m_height, failure);
        if (picture.bitmap == nullptr)
            return {};

        const bool decoded = (m_type & kRunLength) != 0 ? ReadRuns(picture) : ReadPlain(picture);
        if (!decoded) {
            failure = L"the file is cut short";
            return {};
        }
        Premultiply(picture);
        return picture;
    }

private:
    static constexpr std::size_t kHeaderBytes = 18;
    static constexpr unsigned kMapped = 1;
    static constexpr unsigned kTrueColour = 2;
    static constexpr unsigned kGrey = 3;
    static constexpr unsigned kRunLength = 8;

    using Pixel = std::array<BYTE, 4>;

    static bool IsColourDepth(unsigned bits)
    {
        return bits == 15 || bits == 16 || bits == 24 || bits == 32;
    }

    static std::size_t BytesOf(unsigned bits) { return (bits + 7) / 8; }

    unsigned Layout() const { return m_type & ~kRunLength; }

    bool HasMap() const { return m_file.At(1) == 1; }

    Pixel ReadColour(std::size_t at, unsigned bits) const
    {
        const auto byte = [&](std::size_t offset) {
            return static_cast<BYTE>(m_file.At(at + offset));
        };
        if (bits <= 16) {
            const unsigned value = m_file.Little16(at);
            const auto widen = [value](unsigned shift) {
                const unsigned five = value >> shift & 0x1F;
                return static_cast<BYTE>(five << 3 | five >> 2);
            };
            const bool opaque = m_attributeBits == 0 || bits == 15 || (value & 0x8000) != 0;
            return {widen(0), widen(5), widen(10), static_cast<BYTE>(opaque ? 255 : 0)};
        }
        const bool hasAlpha = bits == 32 && m_attributeBits != 0;
        return {byte(0), byte(1), byte(2), hasAlpha ? byte(3) : BYTE{255}};
    }

    bool ReadPixel(Pixel& pixel)
    {
        const auto bytes = BytesOf(m_depth);
        if (m_at + bytes > m_file.Size())
            return false;
        const unsigned value = m_file.At(m_at);
        if (Layout() == kGrey) {
            const auto grey = static_cast<BYTE>(value);
            pixel = {grey, grey, grey, 255};
        } else if (Layout() == kMapped) {
            if (value < m_mapFirst || value - m_mapFirst >= m_mapLength)
                return false;
            const auto entry = (value - m_mapFirst) * BytesOf(m_mapDepth);
            pixel = ReadColour(m_mapAt + entry, m_mapDepth);
        } else {
            pixel = ReadColour(m_at, m_depth);
        }
        m_at += bytes;
        return true;
    }

    void Put(const DecodedPicture& picture, std::int64_t index, const Pixel& pixel) const
    {
        auto column = index % m_width;
        auto row = index / m_width;
        if (m_rightToLeft)
            column = m_width - 1 - column;
        if (!m_topDown)
            row = m_height - 1 - row;
        std::memcpy(picture.bits + (row * m_width + column) * 4, pixel.data(), pixel.size());
    }

    bool ReadPlain(const DecodedPicture& picture)
    {
        const auto count = static_cast<std::int64_t>(m_width) * m_height;
        Pixel pixel{};
        for (std::int64_t index = 0; index < count; index++) {
            if (!ReadPixel(pixel))
                return false;
            Put(picture, index, pixel);
        }
        return true;
    }

    bool ReadRuns(const DecodedPicture& picture)
    {
        const auto count = static_cast<std::int64_t>(m_width) * m_height;
        Pixel pixel{};
        for (std::int64_t index = 0; index < count;) {
            if (m_at >= m_file.Size())
                return false;
            const unsigned packet = m_file.At(m_at++);
            const bool repeated = (packet & 0x80) != 0;
            const auto end = std::min<std::int64_t>(count, index + (packet & 0x7F) + 1);
            for (auto first = index; index < end; index++) {
                if ((!repeated || index == first) && !ReadPixel(pixel))
                    return false;
                Put(picture, index, pixel);
            }
        }
        return true;
    }

    Bytes m_file;
    unsigned m_type = 0;
    unsigned m_mapFirst = 0;
    unsigned m_mapLength = 0;
    unsigned m_mapDepth = 0;
    int m_width = 0;
    int m_height = 0;
    unsigned m_depth = 0;
    unsigned m_attributeBits = 0;
    bool m_rightToLeft = false;
    bool m_topDown = false;
    std::size_t m_mapAt = 0;
    std::size_t m_at = 0;
};

} // namespace

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
    const auto size = FindHeaderSize(Bytes(data));
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

    DecodedPicture picture;
    if (IsMarkup(data)) {
        picture = DrawSvg(data, scale, failure);
    } else {
        failure = CheckHeaderSize(data);
        if (!failure.empty())
            return {};
        const bool signature = FindHeaderSize(Bytes(data)).has_value();
        TgaReader tga(data);
        picture =
            !signature && tga.IsTga() ? tga.Decode(failure) : DecodeWithGdiplus(data, failure);
    }
    if (picture.bitmap != nullptr)
        ApplyMask(picture, mask);
    return picture;
}

} // namespace DuiLib
