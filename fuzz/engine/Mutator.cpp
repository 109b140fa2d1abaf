#include "fuzz/engine/Mutator.h"

#include <algorithm>
#include <cctype>

namespace fuzz {

namespace {

constexpr std::size_t kMostChanges = 8;
constexpr std::size_t kShortRange = 32;
constexpr std::size_t kMostRepetitions = 300; // deeper than any limit of nesting

// Numbers around which arithmetic goes wrong.
constexpr std::string_view kNumbers[] = {
    "0",           "1",           "-1",         "2",          "7",          "100",
    "127",         "128",         "255",        "256",        "-32768",     "32767",
    "32768",       "65535",       "65536",      "16777216",   "1073741823", "1073741824",
    "2147483647",  "-2147483647", "2147483648", "4294967295", "4294967296", "-2147483648",
    "0.5",         "1e9",         "1e308",      "-1e308",     "1e-308",     "nan",
    "inf",         "0x7fffffff",  "ffffffff",   "80000000",   "9999999999", "99999999999999999999",
    "00000000001", "+5",          ".",          "-",
};

constexpr std::uint32_t kBinaryNumbers[] = {
    0,      1,      2,      0x7F,       0x80,       0xFF,       0x100,
    0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFF0,
};

bool IsDigit(std::byte byte)
{
    return byte >= std::byte{'0'} && byte <= std::byte{'9'};
}

bool IsNameCharacter(std::byte byte)
{
    return std::isalnum(std::to_integer<unsigned char>(byte)) != 0;
}

// The run of bytes of one sort that starts at or after a place, or before it when there is none.
template <class Belongs>
std::pair<std::size_t, std::size_t> FindRun(const Bytes& input, std::size_t from, Belongs belongs)
{
    const auto first = input.begin();
    auto start = std::find_if(first + static_cast<std::ptrdiff_t>(from), input.end(), belongs);
    if (start == input.end())
        start = std::find_if(first, input.end(), belongs);
    const auto end = std::find_if_not(start, input.end(), belongs);
    return {static_cast<std::size_t>(start - first), static_cast<std::size_t>(end - start)};
}

Bytes Copy(const Bytes& input, std::size_t start, std::size_t length)
{
    const auto from = input.begin() + static_cast<std::ptrdiff_t>(start);
    return Bytes(from, from + static_cast<std::ptrdiff_t>(length));
}

void Erase(Bytes& input, std::size_t start, std::size_t length)
{
    const auto from = input.begin() + static_cast<std::ptrdiff_t>(start);
    input.erase(from, from + static_cast<std::ptrdiff_t>(length));
}

} // namespace

Bytes Mutator::Make(const std::vector<Bytes>& pool)
{
    Bytes input = pool.empty() ? Bytes() : pool[m_random.Below(pool.size())];
    const std::size_t changes = 1 + m_random.Below(kMostChanges);
    for (std::size_t i = 0; i < changes; ++i)
        Change(input, pool);
    if (input.size() > m_largestInput)
        input.resize(m_largestInput);
    return input;
}

void Mutator::Change(Bytes& input, const std::vector<Bytes>& pool)
{
    switch (m_random.Below(16)) {
    case 0:
        return FlipBit(input);
    case 1:
        return ReplaceByte(input);
    case 2:
    case 3:
        return PutWord(input);
    case 4:
    case 5:
        return ReplaceName(input);
    case 6:
        return Remove(input);
    case 7:
        return m_random.OneIn(4) ? Truncate(input) : Remove(input);
    case 8:
        return Duplicate(input);
    case 9:
        return Repeat(input);
    case 10:
        return MoveRange(input);
    case 11:
    case 12:
        return Splice(input, pool);
    case 13:
        return ReplaceBinaryNumber(input);
    default:
        return ReplaceNumber(input);
    }
}

void Mutator::FlipBit(Bytes& input)
{
    if (!input.empty())
        input[m_random.Below(input.size())] ^= static_cast<std::byte>(1u << m_random.Below(8));
}

void Mutator::ReplaceByte(Bytes& input)
{
    if (!input.empty())
        input[m_random.Below(input.size())] = static_cast<std::byte>(m_random.Below(256));
}

void Mutator::PutWord(Bytes& input)
{
    const Bytes& word = AnyWord();
    const std::size_t at = m_random.Below(input.size() + 1);
    if (m_random.OneIn(2))
        Erase(input, at, std::min(word.size(), input.size() - at));
    Insert(input, at, word);
}

// Puts a word in the place of another one, so that what is around it stays right.
void Mutator::ReplaceName(Bytes& input)
{
    const auto [start, length] = FindRun(input, m_random.Below(input.size()),
                                         [](std::byte b) { return IsNameCharacter(b); });
    Erase(input, start, length);
    Insert(input, start, AnyWord());
}

void Mutator::Remove(Bytes& input)
{
    const auto range = AnyRange(input, m_random.OneIn(4) ? input.size() : kShortRange);
    Erase(input, range.start, range.length);
}

void Mutator::Truncate(Bytes& input)
{
    input.resize(m_random.Below(input.size() + 1));
}

void Mutator::Duplicate(Bytes& input)
{
    const auto range = AnyRange(input, input.size());
    const Bytes copy = Copy(input, range.start, range.length);
    Insert(input, range.start, copy);
}

void Mutator::Repeat(Bytes& input)
{
    const auto range = AnyRange(input, kShortRange);
    if (range.length == 0)
        return;
    const std::size_t room = (m_largestInput - std::min(m_largestInput, input.size()));
    const std::size_t most = std::min(kMostRepetitions, room / range.length);
    const Bytes piece = Copy(input, range.start, range.length);
    Bytes pieces;
    for (std::size_t i = m_random.Below(most + 1); i > 0; --i)
        pieces.insert(pieces.end(), piece.begin(), piece.end());
    Insert(input, range.start, pieces);
}

void Mutator::Splice(Bytes& input, const std::vector<Bytes>& pool)
{
    if (pool.empty())
        return;
    const Bytes& other = pool[m_random.Below(pool.size())];
    const auto range = AnyRange(other, m_random.OneIn(2) ? other.size() : kShortRange * 4);
    const Bytes piece = Copy(other, range.start, range.length);
    const std::size_t at = m_random.Below(input.size() + 1);
    if (m_random.OneIn(2))
        Erase(input, at, std::min(piece.size(), input.size() - at));
    Insert(input, at, piece);
}

void Mutator::MoveRange(Bytes& input)
{
    const auto range = AnyRange(input, kShortRange * 4);
    const Bytes piece = Copy(input, range.start, range.length);
    Erase(input, range.start, range.length);
    Insert(input, m_random.Below(input.size() + 1), piece);
}

void Mutator::ReplaceNumber(Bytes& input)
{
    const auto [start, length] =
        FindRun(input, m_random.Below(input.size()), [](std::byte b) { return IsDigit(b); });
    Erase(input, start, length);
    Insert(input, start, AsBytes(kNumbers[m_random.Below(std::size(kNumbers))]));
}

void Mutator::ReplaceBinaryNumber(Bytes& input)
{
    const std::size_t size = std::size_t{1} << m_random.Below(3);
    if (input.size() < size)
        return;
    const std::size_t at = m_random.Below(input.size() - size + 1);
    const std::uint32_t number = kBinaryNumbers[m_random.Below(std::size(kBinaryNumbers))];
    for (std::size_t i = 0; i < size; ++i)
        input[at + i] = static_cast<std::byte>(number >> (8 * i));
}

Mutator::Range Mutator::AnyRange(const Bytes& input, std::size_t longest)
{
    const std::size_t start = m_random.Below(input.size());
    const std::size_t most = std::min(longest, input.size() - start);
    return {start, most != 0 ? 1 + m_random.Below(most) : 0};
}

const Bytes& Mutator::AnyWord()
{
    static const Bytes none;
    return m_dictionary.empty() ? none : m_dictionary[m_random.Below(m_dictionary.size())];
}

void Mutator::Insert(Bytes& input, std::size_t at, ByteView bytes)
{
    input.insert(input.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin(), bytes.end());
}

} // namespace fuzz
