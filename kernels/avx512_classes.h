// What the functions for vectors of any width find by comparing, found by looking bytes up in registers.
//
// A table has a class for each value that a byte of a character may have, with a bit for each row of the rules below that
// allows it. The bytes of a character have a bit in common where a row allows all of them.
#pragma once

#include "kernels/avx512.h"
#include "kernels/count.h"
#include "kernels/decode.h"

namespace jkc::avx512 {

struct Range {
    uint8_t first;
    uint8_t last;

    constexpr bool has(size_t b) const { return first <= b && b <= last; }
};
struct Rule {
    uint8_t bit;
    Range first;
    Range second;
    Range third = {};
};

template <size_t kSize>
struct Table {
    alignas(kBlock) uint8_t of[kSize];
};
// Of the bytes from kFrom on.
template <size_t kFrom, size_t kSize, size_t kRules>
constexpr Table<kSize> classes_of(const Rule (&rules)[kRules], Range Rule::*place) {
    Table<kSize> table = {};
    for (size_t i = 0; i < kSize; ++i) {
        for (const Rule &rule : rules) {
            table.of[i] = static_cast<uint8_t>(table.of[i] | ((rule.*place).has(kFrom + i) ? rule.bit : 0));
        }
    }
    return table;
}
template <size_t kFrom>
constexpr Table<kBlock> table_of(auto entry) {
    Table<kBlock> table = {};
    for (size_t i = 0; i < kBlock; ++i) {
        table.of[i] = static_cast<uint8_t>(entry(kFrom + i));
    }
    return table;
}

inline __m512i load_table(const uint8_t *table) { return _mm512_load_si512(table); }
// By the low six bits, or seven.
inline __m512i look_up(const Table<kBlock> &table, Block v) {
    return _mm512_permutexvar_epi8(v.bytes, load_table(table.of));
}
inline __m512i look_up(const Table<2 * kBlock> &table, Block v) {
    return _mm512_permutex2var_epi8(load_table(table.of), v.bytes, load_table(table.of + kBlock));
}

constexpr Range kAnyTrail = {0x80, 0xBF};
inline Flags is_trail(Block v) { return _mm512_cmplt_epi8_mask(v.bytes, splat(0xC0)); }
inline Flags from(Block v, uint8_t first) { return _mm512_cmpge_epu8_mask(v.bytes, splat(first)); }

// --- Ordinary characters, as kernels/ordinary_utf8.h and kernels/ordinary_two_byte.h tell them. ---

constexpr size_t kFirstOfUtf8 = 0xC0;
constexpr Rule kAnyThird[] = {
    {1, {0xE2, 0xE2}, {0x80, 0x80}}, {2, {0xE3, 0xE3}, {0x83, 0x83}},  {4, {0xE4, 0xE4}, {0xB8, 0xBF}},
    {8, {0xE5, 0xE8}, kAnyTrail},    {16, {0xE9, 0xE9}, {0x80, 0xBD}}, {32, {0xEF, 0xEF}, {0xBD, 0xBD}},
};
constexpr Rule kSomeThirds[] = {
    {1, {0xE2, 0xE2}, {0x86, 0x86}, {0x90, 0xBF}},  {2, {0xE3, 0xE3}, {0x80, 0x80}, {0x80, 0xA9}},
    {4, {0xE3, 0xE3}, {0x81, 0x81}, {0x81, 0xBF}},  {8, {0xE3, 0xE3}, {0x82, 0x82}, {0x80, 0x96}},
    {8, {0xE3, 0xE3}, {0x82, 0x82}, {0x9B, 0x9F}},  {8, {0xE3, 0xE3}, {0x82, 0x82}, {0xA1, 0xBF}},
    {16, {0xEF, 0xEF}, {0xBC, 0xBC}, {0x81, 0xBF}}, {32, {0xEF, 0xEF}, {0xBE, 0xBE}, {0x80, 0xBE}},
};

[[gnu::always_inline]] inline OrdinaryPlaces ordinary_utf8(Block first, Block second, Block third) {
    static constexpr auto kFirstA = classes_of<kFirstOfUtf8, kBlock>(kAnyThird, &Rule::first);
    static constexpr auto kSecondA = classes_of<0x80, kBlock>(kAnyThird, &Rule::second);
    static constexpr auto kFirstB = classes_of<kFirstOfUtf8, kBlock>(kSomeThirds, &Rule::first);
    static constexpr auto kSecondB = classes_of<0x80, kBlock>(kSomeThirds, &Rule::second);
    static constexpr auto kThirdB = classes_of<0x80, kBlock>(kSomeThirds, &Rule::third);
    const Flags leads = from(first, 0xE0);
    const Flags whole = leads & is_trail(second) & is_trail(third);
    const Flags any_third = _mm512_test_epi8_mask(look_up(kFirstA, first), look_up(kSecondA, second));
    const Flags some_third = _mm512_test_epi8_mask(_mm512_and_si512(look_up(kFirstB, first), look_up(kSecondB, second)),
                                                   look_up(kThirdB, third));
    return {leads, whole & (any_third | some_third), equals(first, 0xE3) & above(second, 0x80)};
}

constexpr Range kAnySjisTrail = {0x40, 0xFC};
constexpr Rule kSjisRules[] = {
    {1, {0x89, 0x97}, kAnySjisTrail}, {1, {0x99, 0x9F}, kAnySjisTrail}, {1, {0xE0, 0xE9}, kAnySjisTrail},
    {2, {0x81, 0x81}, {0x40, 0xAC}},  {4, {0x82, 0x82}, {0x9F, 0xF1}},  {8, {0x83, 0x83}, {0x40, 0x93}},
    {16, {0x88, 0x88}, {0x9F, 0xFC}}, {32, {0x98, 0x98}, {0x40, 0x72}}, {64, {0xA1, 0xDF}, {1, 0}},
};
constexpr uint8_t kSjisKana = 4 | 8;
constexpr uint8_t kSjisKatakana = 64;

[[gnu::always_inline]] inline TwoBytePlaces ordinary_places(OrdinarySjis /*rules*/, Block first, Block second) {
    static constexpr auto kFirst = classes_of<0x80, 2 * kBlock>(kSjisRules, &Rule::first);
    static constexpr auto kLow = classes_of<0x40, kBlock>(kSjisRules, &Rule::second);
    static constexpr auto kHigh = classes_of<0x80, 2 * kBlock>(kSjisRules, &Rule::second);
    const Flags non_ascii = top_bits(first);
    const __m512i firsts = _mm512_maskz_mov_epi8(non_ascii, look_up(kFirst, first));
    const __m512i seconds = _mm512_mask_blend_epi8(top_bits(second), look_up(kLow, second), look_up(kHigh, second));
    return {
        .codes = _mm512_mask_test_epi8_mask(from(second, 0x40), firsts, seconds) & ~equals(second, 0x7F),
        .singles = _mm512_test_epi8_mask(firsts, splat(kSjisKatakana)) | equals(first, kEsc),
        .kana = _mm512_test_epi8_mask(firsts, splat(kSjisKana)),
    };
}

constexpr Range kAnyEucTrail = {0xA1, 0xFE};
constexpr Rule kEucRules[] = {
    {1, {0xA1, 0xA1}, kAnyEucTrail}, {1, {0xB0, 0xCE}, kAnyEucTrail}, {1, {0xD0, 0xF3}, kAnyEucTrail},
    {2, {0xA4, 0xA5}, {0xA1, 0xF3}}, {4, {0xCF, 0xCF}, {0xA1, 0xD3}},
};
constexpr uint8_t kEucKana = 2;

[[gnu::always_inline]] inline TwoBytePlaces ordinary_places(OrdinaryEuc /*rules*/, Block first, Block second) {
    static constexpr auto kFirst = classes_of<0x80, 2 * kBlock>(kEucRules, &Rule::first);
    static constexpr auto kSecond = classes_of<0x80, 2 * kBlock>(kEucRules, &Rule::second);
    const __m512i firsts = look_up(kFirst, first);
    return {
        .codes = _mm512_test_epi8_mask(firsts, look_up(kSecond, second)) & top_bits(first) & top_bits(second),
        .singles = 0,
        .kana = _mm512_test_epi8_mask(firsts, splat(kEucKana)),
    };
}

// --- Decoding UTF-8. ---

constexpr Rule kWellFormed[] = {
    {1, {0xC2, 0xDF}, kAnyTrail},    {2, {0xE0, 0xE0}, {0xA0, 0xBF}}, {4, {0xE1, 0xEC}, kAnyTrail},
    {8, {0xED, 0xED}, {0x80, 0x9F}}, {4, {0xEE, 0xEF}, kAnyTrail},
};

[[gnu::always_inline]] inline Utf8Places utf8_places(Block first, Block second, Block third) {
    static constexpr auto kFirst = classes_of<kFirstOfUtf8, kBlock>(kWellFormed, &Rule::first);
    static constexpr auto kSecond = classes_of<0x80, kBlock>(kWellFormed, &Rule::second);
    const Flags leads = from(first, kFirstOfUtf8);
    const Flags three = from(first, 0xE0);
    const Flags begun = _mm512_mask_test_epi8_mask(is_trail(second), look_up(kFirst, first), look_up(kSecond, second));
    return {.leads = leads, .three = three, .whole = begun & (is_trail(third) | ~three)};
}

// The two bytes of the unit that begins at each place.
[[gnu::always_inline]] inline Bytes2 utf8_units(Block first, Block second, Block third, uint64_t leads,
                                                uint64_t three) {
    static constexpr auto kHighOfFirst =
        table_of<kFirstOfUtf8>([](size_t b) { return b < 0xE0 ? b >> 2 & 0x07 : b << 4 & 0xF0; });
    static constexpr auto kLowOfFirst = table_of<kFirstOfUtf8>([](size_t b) { return b < 0xE0 ? b << 6 & 0xC0 : 0; });
    static constexpr auto kHighOfSecond = table_of<0>([](size_t b) { return b >> 2; });
    static constexpr auto kLowOfSecond = table_of<0>([](size_t b) { return b << 6 & 0xC0; });
    const __m512i trail_bits = splat(0x3F);
    const __m512i high =
        _mm512_mask_permutexvar_epi8(_mm512_setzero_si512(), leads, first.bytes, load_table(kHighOfFirst.of));
    const __m512i high_of_second = _mm512_maskz_permutexvar_epi8(three, second.bytes, load_table(kHighOfSecond.of));
    const __m512i low = _mm512_mask_permutexvar_epi8(first.bytes, leads, first.bytes, load_table(kLowOfFirst.of));
    const __m512i low_of_second =
        _mm512_mask_permutexvar_epi8(_mm512_maskz_mov_epi8(leads, _mm512_and_si512(second.bytes, trail_bits)), three,
                                     second.bytes, load_table(kLowOfSecond.of));
    const __m512i low_of_third = _mm512_maskz_mov_epi8(three, _mm512_and_si512(third.bytes, trail_bits));
    return {{_mm512_or_si512(high, high_of_second)},
            {_mm512_or_si512(_mm512_or_si512(low, low_of_second), low_of_third)}};
}

} // namespace jkc::avx512
