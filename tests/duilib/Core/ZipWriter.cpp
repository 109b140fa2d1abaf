#include "ZipWriter.h"

#include <array>
#include <cstdint>

#include <zlib.h>

namespace test {

namespace {

std::string Le16(unsigned value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string Le32(std::uint32_t value)
{
    return Le16(value & 0xFFFF) + Le16(value >> 16);
}

std::string Deflate(const std::string& plain)
{
    std::string packed(::compressBound(static_cast<uLong>(plain.size())) + 64, '\0');
    std::string input = plain;
    z_stream stream{};
    ::deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    ::deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    ::deflateEnd(&stream);
    return packed;
}

std::uint32_t CrcStep(std::uint32_t crc, unsigned char byte)
{
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
        crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320u : crc >> 1;
    return crc;
}

std::string Encrypt(std::string bytes, const std::string& password)
{
    std::array<std::uint32_t, 3> keys{305419896u, 591751049u, 878082192u};
    const auto stir = [&keys](char ch) {
        keys[0] = CrcStep(keys[0], static_cast<unsigned char>(ch));
        keys[1] = (keys[1] + (keys[0] & 0xFF)) * 134775813u + 1;
        keys[2] = CrcStep(keys[2], static_cast<unsigned char>(keys[1] >> 24));
    };
    for (const char ch : password)
        stir(ch);
    for (char& ch : bytes) {
        const std::uint32_t mix = (keys[2] & 0xFFFF) | 2;
        const char plain = ch;
        ch = static_cast<char>(ch ^ static_cast<char>(mix * (mix ^ 1) >> 8));
        stir(plain);
    }
    return bytes;
}

} // namespace

void ZipWriter::Add(Item item)
{
    constexpr unsigned kTime = 0x6B2A;
    const auto sum =
        static_cast<std::uint32_t>(::crc32(0, reinterpret_cast<const Bytef*>(item.content.data()),
                                           static_cast<uInt>(item.content.size())));
    const bool deflated = item.packing == Packing::Deflated;
    std::string data = deflated ? Deflate(item.content) : item.content;
    unsigned flags = (item.utf8Name ? 0x800u : 0u) | (item.sizesFollow ? 8u : 0u);
    if (!item.password.empty()) {
        flags |= 1;
        const unsigned check = item.sizesFollow ? kTime >> 8 : sum >> 24;
        data =
            Encrypt("elevenbytes" + std::string(1, static_cast<char>(check)) + data, item.password);
    }
    const unsigned method = item.method != ~0u ? item.method : deflated ? 8u : 0u;
    const unsigned size = item.size != ~0u ? item.size : static_cast<unsigned>(item.content.size());

    const std::string header = Le16(20) + Le16(flags) + Le16(method) + Le16(kTime) + Le16(0x5821) +
                               Le32(sum ^ item.wrongSum) +
                               Le32(static_cast<std::uint32_t>(data.size())) + Le32(size) +
                               Le16(static_cast<unsigned>(item.name.size()));
    m_items.push_back({header, item.name, static_cast<unsigned>(m_files.size())});
    m_files += "PK\3\4" + header + Le16(0) + item.name + data;
}

std::string ZipWriter::Finish(std::string_view comment) const
{
    std::string directory;
    for (const auto& item : m_items) {
        directory += "PK\1\2" + Le16(20) + item.header + Le16(0) + Le16(0) + Le16(0) + Le16(0) +
                     Le32(0) + Le32(item.offset) + item.name;
    }
    const auto count = static_cast<unsigned>(m_items.size());
    return m_files + directory + "PK\5\6" + Le16(0) + Le16(0) + Le16(count) + Le16(count) +
           Le32(static_cast<std::uint32_t>(directory.size())) +
           Le32(static_cast<std::uint32_t>(m_files.size())) +
           Le16(static_cast<unsigned>(comment.size())) + std::string(comment);
}

} // namespace test
