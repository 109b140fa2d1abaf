#pragma once

#include "fuzz/engine/Bytes.h"
#include "fuzz/engine/Random.h"

#include <vector>

namespace fuzz {

// Makes new inputs out of old ones. The same seed, inputs and words give the same sequence.
class Mutator {
public:
    Mutator(std::uint64_t seed, std::vector<Bytes> dictionary, std::size_t largestInput)
        : m_random(seed), m_dictionary(std::move(dictionary)), m_largestInput(largestInput)
    {
    }

    // One to eight changes of an input from the pool, of which some splice in others.
    Bytes Make(const std::vector<Bytes>& pool);

    Random& Dice() { return m_random; }

private:
    void Change(Bytes& input, const std::vector<Bytes>& pool);
    void FlipBit(Bytes& input);
    void ReplaceByte(Bytes& input);
    void PutWord(Bytes& input);
    void ReplaceName(Bytes& input);
    void Remove(Bytes& input);
    void Truncate(Bytes& input);
    void Duplicate(Bytes& input);
    void Repeat(Bytes& input);
    void Splice(Bytes& input, const std::vector<Bytes>& pool);
    void MoveRange(Bytes& input);
    void ReplaceNumber(Bytes& input);
    void ReplaceBinaryNumber(Bytes& input);

    struct Range {
        std::size_t start;
        std::size_t length;
    };
    Range AnyRange(const Bytes& input, std::size_t longest);
    const Bytes& AnyWord();
    void Insert(Bytes& input, std::size_t at, ByteView bytes);

    Random m_random;
    std::vector<Bytes> m_dictionary;
    std::size_t m_largestInput;
};

} // namespace fuzz
