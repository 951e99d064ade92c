#pragma once
// How the built-in substitution tables are made: each is a seeded permutation of the key space,
// fixed by its seed on every machine. The build writes the four tables into the program (see
// tools/tablegen), so that a start reads them as data instead of making them; the tests make them
// here again and hold the program's copies to them. Plain C++ without Qt, so that the build tool
// needs nothing else.

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace vt {

struct BuiltInTableSeed {
    const char16_t* name;
    uint64_t seed;
};

// In the order of the table files: "JIeMiText", "JIeMiNewWords", "JIeMiSpoken",
// "JIeMiVocabulary".
inline constexpr BuiltInTableSeed kBuiltInTableSeeds[4] = {
    {u"JIeMiText", 0x5D1A7E3C0B9F2468ULL},
    {u"JIeMiNewWords", 0x0F3E2D1C4B5A6978ULL},
    {u"JIeMiSpoken", 0x7A6B5C4D3E2F1029ULL},
    {u"JIeMiVocabulary", 0x13579BDF2468ACE0ULL},
};

inline constexpr int kSeededTableKeys = 65536;

// splitmix64: a small generator whose output is fixed by its definition, so a seed gives the
// same table with every compiler and standard library (the standard distributions do not).
class SplitMix64 {
public:
    explicit SplitMix64(uint64_t seed) : state_(seed) {}
    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    // A value in 0..bound-1 (bound at most 2^32), from the high 32 bits of the next value.
    uint32_t Below(uint32_t bound) { return static_cast<uint32_t>(((Next() >> 32) * bound) >> 32); }

private:
    uint64_t state_;
};

// The codes of the table of seed, by key as unsigned 16-bit (kSeededTableKeys of them). The whole
// key space is shuffled (Fisher-Yates); the code units 1..65535 take the first 65535 keys in
// turn, and the last key is left out of the table (it gives 0).
inline std::vector<int16_t> SeededTableCodes(uint64_t seed) {
    std::vector<uint16_t> keys(kSeededTableKeys);
    for (int i = 0; i < kSeededTableKeys; ++i)
        keys[static_cast<size_t>(i)] = static_cast<uint16_t>(i);
    SplitMix64 rng(seed);
    for (uint32_t i = kSeededTableKeys - 1; i > 0; --i)
        std::swap(keys[i], keys[rng.Below(i + 1)]);
    std::vector<int16_t> codes(kSeededTableKeys, 0);
    for (int code = 1; code < kSeededTableKeys; ++code)
        codes[keys[static_cast<size_t>(code - 1)]] =
            static_cast<int16_t>(static_cast<uint16_t>(code));
    return codes;
}

} // namespace vt
