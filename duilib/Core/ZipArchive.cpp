#include "Core/ZipArchive.h"

#include "win32/TextParse.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <utility>

#include <zlib.h>

namespace DuiLib {

namespace {

constexpr std::uint32_t kEndSignature = 0x06054B50;
constexpr std::uint32_t kDirectorySignature = 0x02014B50;
constexpr std::uint32_t kFileSignature = 0x04034B50;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kDirectoryEntrySize = 46;
constexpr std::size_t kFileHeaderSize = 30;
constexpr std::size_t kLongestComment = 0xFFFF;
constexpr std::size_t kEncryptionHeaderSize = 12;

constexpr std::uint64_t kLargestArchive = 0xFFFFFFFFu;
constexpr std::size_t kLargestDirectory = 64u * 1024u * 1024u;

// What packing can add to a file at most, and how far it can shrink one.
constexpr std::size_t kLargestOverhead = 64u * 1024u;
constexpr std::size_t kLargestRatio = 1040;

constexpr unsigned kFlagEncrypted = 0x0001;
constexpr unsigned kFlagSizesFollow = 0x0008;
constexpr unsigned kFlagStrongEncryption = 0x0040;
constexpr unsigned kFlagUtf8Name = 0x0800;

constexpr unsigned kStored = 0;
constexpr unsigned kDeflated = 8;

using Bytes = std::vector<BYTE>;

std::uint16_t Read16(const BYTE* at)
{
    return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

std::uint32_t Read32(const BYTE* at)
{
    return Read16(at) | static_cast<std::uint32_t>(Read16(at + 2)) << 16;
}

std::wstring IndexKey(std::wstring_view name)
{
    std::wstring key(name);
    for (wchar_t& ch : key)
        ch = ch == L'\\' ? L'/' : Quillet::Text::LowerCase(ch);
    return key;
}

std::wstring DecodeName(std::span<const BYTE> bytes, bool utf8)
{
    const UINT codePage = utf8 ? CP_UTF8 : CP_OEMCP;
    const auto* const from = reinterpret_cast<LPCSTR>(bytes.data());
    const auto size = static_cast<int>(bytes.size());
    std::wstring name(bytes.size(), L'\0');
    if (size > 0)
        name.resize(static_cast<std::size_t>(
            ::MultiByteToWideChar(codePage, 0, from, size, name.data(), size)));
    return name;
}

void Explain(std::wstring* reason, std::wstring_view text)
{
    if (reason != nullptr)
        *reason = text;
}

// The classic scheme: three keys that every plain byte stirs.
class Decryption {
public:
    explicit Decryption(std::string_view password)
    {
        for (const char ch : password)
            Stir(static_cast<BYTE>(ch));
    }

    void Apply(std::span<BYTE> bytes)
    {
        for (BYTE& byte : bytes) {
            const std::uint32_t mix = (m_keys[2] | 2) & 0xFFFF;
            byte ^= static_cast<BYTE>(mix * (mix ^ 1) >> 8);
            Stir(byte);
        }
    }

private:
    static std::uint32_t Crc(std::uint32_t crc, BYTE byte)
    {
        return static_cast<std::uint32_t>(Table()[(crc ^ byte) & 0xFF]) ^ crc >> 8;
    }

    static const z_crc_t* Table() { return ::get_crc_table(); }

    void Stir(BYTE byte)
    {
        m_keys[0] = Crc(m_keys[0], byte);
        m_keys[1] = (m_keys[1] + (m_keys[0] & 0xFF)) * 134775813u + 1;
        m_keys[2] = Crc(m_keys[2], static_cast<BYTE>(m_keys[1] >> 24));
    }

    std::array<std::uint32_t, 3> m_keys{0x12345678, 0x23456789, 0x34567890};
};

// Unpacks into exactly `size` bytes; empty when the stream is damaged or says otherwise.
std::optional<Bytes> Inflate(std::span<BYTE> packed, std::size_t size)
{
    // One byte more than expected shows a stream that does not end where it should.
    Bytes unpacked(size + 1);
    z_stream stream{};
    stream.next_in = packed.data();
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = unpacked.data();
    stream.avail_out = static_cast<uInt>(unpacked.size());
    if (::inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return std::nullopt;
    const int result = ::inflate(&stream, Z_FINISH);
    const bool whole = result == Z_STREAM_END && stream.total_out == size;
    ::inflateEnd(&stream);
    if (!whole)
        return std::nullopt;
    unpacked.resize(size);
    return unpacked;
}

} // namespace

// Where the archive's bytes come from.
class ZipArchive::Source {
public:
    virtual ~Source() = default;
    virtual std::uint64_t Size() const = 0;

    // False unless all of them are there.
    virtual bool Read(std::uint64_t offset, std::span<BYTE> into) = 0;

    std::optional<Bytes> Part(std::uint64_t offset, std::uint64_t size)
    {
        if (offset > Size() || size > Size() - offset)
            return std::nullopt;
        Bytes bytes(static_cast<std::size_t>(size));
        if (!Read(offset, bytes))
            return std::nullopt;
        return bytes;
    }
};

class ZipArchive::FileSource : public Source {
public:
    explicit FileSource(const std::wstring& path)
        : m_file(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        LARGE_INTEGER size{};
        if (IsOpen() && ::GetFileSizeEx(m_file, &size))
            m_size = static_cast<std::uint64_t>(size.QuadPart);
    }
    ~FileSource() override
    {
        if (IsOpen())
            ::CloseHandle(m_file);
    }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
    std::uint64_t Size() const override { return m_size; }

    bool Read(std::uint64_t offset, std::span<BYTE> into) override
    {
        LARGE_INTEGER position{};
        position.QuadPart = static_cast<LONGLONG>(offset);
        DWORD read = 0;
        return ::SetFilePointerEx(m_file, position, nullptr, FILE_BEGIN) &&
               ::ReadFile(m_file, into.data(), static_cast<DWORD>(into.size()), &read, nullptr) &&
               read == into.size();
    }

private:
    HANDLE m_file;
    std::uint64_t m_size = 0;
};

class ZipArchive::MemorySource : public Source {
public:
    explicit MemorySource(Bytes bytes) : m_bytes(std::move(bytes)) {}

    std::uint64_t Size() const override { return m_bytes.size(); }

    bool Read(std::uint64_t offset, std::span<BYTE> into) override
    {
        if (offset > m_bytes.size() || into.size() > m_bytes.size() - offset)
            return false;
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), into.size(),
                    into.begin());
        return true;
    }

private:
    Bytes m_bytes;
};

ZipArchive::ZipArchive(std::unique_ptr<Source> source, std::string password)
    : m_source(std::move(source)), m_password(std::move(password))
{
}

ZipArchive::~ZipArchive() = default;

std::unique_ptr<ZipArchive> ZipArchive::OpenFile(const std::wstring& path, std::string password,
                                                 std::wstring* reason)
{
    auto source = std::make_unique<FileSource>(path);
    if (!source->IsOpen()) {
        Explain(reason, L"the archive cannot be opened");
        return nullptr;
    }
    std::unique_ptr<ZipArchive> archive(new ZipArchive(std::move(source), std::move(password)));
    return archive->ReadIndex(reason) ? std::move(archive) : nullptr;
}

std::unique_ptr<ZipArchive> ZipArchive::OpenMemory(Bytes bytes, std::string password,
                                                   std::wstring* reason)
{
    auto source = std::make_unique<MemorySource>(std::move(bytes));
    std::unique_ptr<ZipArchive> archive(new ZipArchive(std::move(source), std::move(password)));
    return archive->ReadIndex(reason) ? std::move(archive) : nullptr;
}

bool ZipArchive::ReadIndex(std::wstring* reason)
{
    constexpr auto kNotAnArchive = L"not a zip archive";
    const std::uint64_t archiveSize = m_source->Size();
    if (archiveSize < kEndSize || archiveSize > kLargestArchive) {
        Explain(reason, kNotAnArchive);
        return false;
    }

    // The end record stands last, but for a comment.
    const std::uint64_t tailSize = std::min<std::uint64_t>(archiveSize, kEndSize + kLongestComment);
    const auto tail = m_source->Part(archiveSize - tailSize, tailSize);
    if (!tail) {
        Explain(reason, L"the archive cannot be read");
        return false;
    }
    const BYTE* end = nullptr;
    for (std::size_t at = tail->size() - kEndSize + 1; at-- > 0 && end == nullptr;) {
        const BYTE* const candidate = tail->data() + at;
        if (Read32(candidate) == kEndSignature &&
            at + kEndSize + Read16(candidate + 20) <= tail->size())
            end = candidate;
    }
    if (end == nullptr) {
        Explain(reason, kNotAnArchive);
        return false;
    }

    const unsigned count = Read16(end + 10);
    const std::uint32_t directorySize = Read32(end + 12);
    const auto directory = directorySize <= kLargestDirectory
                               ? m_source->Part(Read32(end + 16), directorySize)
                               : std::nullopt;
    if (!directory) {
        Explain(reason, L"the archive's directory is damaged");
        return false;
    }

    std::span<const BYTE> rest(*directory);
    for (unsigned i = 0; i < count; ++i) {
        if (rest.size() < kDirectoryEntrySize || Read32(rest.data()) != kDirectorySignature) {
            Explain(reason, L"the archive's directory is damaged");
            return false;
        }
        const BYTE* const at = rest.data();
        const std::size_t nameSize = Read16(at + 28);
        const std::size_t wholeSize =
            kDirectoryEntrySize + nameSize + Read16(at + 30) + Read16(at + 32);
        if (wholeSize > rest.size()) {
            Explain(reason, L"the archive's directory is damaged");
            return false;
        }

        Entry entry{};
        entry.flags = Read16(at + 8);
        entry.method = Read16(at + 10);
        entry.time = Read16(at + 12);
        entry.crc = Read32(at + 16);
        entry.packedSize = Read32(at + 20);
        entry.size = Read32(at + 24);
        entry.offset = Read32(at + 42);
        const auto name = DecodeName(rest.subspan(kDirectoryEntrySize, nameSize),
                                     (entry.flags & kFlagUtf8Name) != 0);
        m_entries.emplace(IndexKey(name), entry);
        rest = rest.subspan(wholeSize);
    }
    return true;
}

bool ZipArchive::Contains(std::wstring_view name) const
{
    return m_entries.contains(IndexKey(name));
}

std::optional<Bytes> ZipArchive::Read(std::wstring_view name, std::size_t largest,
                                      std::wstring* reason)
{
    const auto found = m_entries.find(IndexKey(name));
    if (found == m_entries.end()) {
        Explain(reason, L"the archive has no such file");
        return std::nullopt;
    }
    return Unpack(found->second, largest, reason);
}

std::optional<Bytes> ZipArchive::Unpack(const Entry& entry, std::size_t largest,
                                        std::wstring* reason)
{
    if (entry.size > largest || entry.packedSize > largest + kLargestOverhead) {
        Explain(reason, L"the file in the archive is too large");
        return std::nullopt;
    }
    if ((entry.flags & kFlagStrongEncryption) != 0 ||
        (entry.method != kStored && entry.method != kDeflated)) {
        Explain(reason, L"the file in the archive is packed in an unknown way");
        return std::nullopt;
    }
    constexpr auto kDamaged = L"the file in the archive is damaged";
    if (entry.size / kLargestRatio > entry.packedSize) {
        Explain(reason, kDamaged);
        return std::nullopt;
    }

    std::optional<Bytes> packed;
    {
        const std::lock_guard lock(m_mutex);
        const auto header = m_source->Part(entry.offset, kFileHeaderSize);
        if (header && Read32(header->data()) == kFileSignature) {
            const std::uint64_t data = std::uint64_t{entry.offset} + kFileHeaderSize +
                                       Read16(header->data() + 26) + Read16(header->data() + 28);
            packed = m_source->Part(data, entry.packedSize);
        }
    }
    if (!packed) {
        Explain(reason, kDamaged);
        return std::nullopt;
    }

    std::span<BYTE> content(*packed);
    if ((entry.flags & kFlagEncrypted) != 0) {
        if (content.size() < kEncryptionHeaderSize) {
            Explain(reason, kDamaged);
            return std::nullopt;
        }
        Decryption(m_password).Apply(content);
        const BYTE check = static_cast<BYTE>(
            (entry.flags & kFlagSizesFollow) != 0 ? entry.time >> 8 : entry.crc >> 24);
        if (content[kEncryptionHeaderSize - 1] != check) {
            Explain(reason, L"the password of the archive is wrong");
            return std::nullopt;
        }
        content = content.subspan(kEncryptionHeaderSize);
    }

    std::optional<Bytes> unpacked;
    if (entry.method == kDeflated)
        unpacked = Inflate(content, entry.size);
    else if (content.size() == entry.size)
        unpacked.emplace(content.begin(), content.end());

    if (!unpacked ||
        ::crc32(0, unpacked->data(), static_cast<uInt>(unpacked->size())) != entry.crc) {
        Explain(reason, kDamaged);
        return std::nullopt;
    }
    return unpacked;
}

} // namespace DuiLib
