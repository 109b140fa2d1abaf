#include "Core/TgaDecoder.h"

#include "Core/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace DuiLib {

namespace {

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

    FileBytes m_file;
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

bool IsTga(std::span<const BYTE> data)
{
    return TgaReader(data).IsTga();
}

DecodedPicture DecodeTga(std::span<const BYTE> data, std::wstring& failure)
{
    return TgaReader(data).Decode(failure);
}

} // namespace DuiLib
