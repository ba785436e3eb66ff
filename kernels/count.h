// Kernels that count runs of ordinary text for the scanners.
//
// They go in steps of 64 bytes, whatever begins where: what of a block belongs to a character of the block before is
// carried along in a mask, so that no load waits for it.
#pragma once

#include "kernels/kernels.h"
#include "kernels/masks.h"
#include "kernels/ordinary_two_byte.h"
#include "kernels/ordinary_utf8.h"

namespace jkc::JKC_KERNEL_SET {

// What all of them count.
struct Counts {
    int64_t characters = 0; // that are not ASCII
    int64_t kana = 0;
    uint64_t carried = 0; // the bytes of the next block that end a character of this one

    void add(uint64_t begins, uint64_t kana_mask) {
        characters += count(begins);
        kana += count(begins & kana_mask);
    }
};

// At which places of a block lead bytes are, ordinary characters if a character begins there, and kana.
struct OrdinaryPlaces {
    uint64_t leads;
    uint64_t characters;
    uint64_t kana;
};
template <class Vector>
[[gnu::always_inline]] inline OrdinaryPlaces ordinary_utf8(Vector first, Vector second, Vector third) {
    return {mask_of(OrdinaryUtf8::lead(first)), mask_of(OrdinaryUtf8::character(first, second, third)),
            mask_of(OrdinaryUtf8::kana(first, second))};
}

struct Utf8Count {
    static constexpr size_t kLongest = 3;

    // Counts a block; `at(n)` are the bytes n behind its own. Returns a mask whose lowest bit is where it stops.
    template <class At>
    static uint64_t step(Counts &counts, const At &at) {
        const Block first = at(0);
        const uint64_t non_ascii = mask_of(top_bits(first));
        if (non_ascii == 0) {
            counts.carried = 0;
            return 0;
        }
        const auto [leads, characters, kana] = ordinary_utf8(first, at(1), at(2));
        const uint64_t trails = leads << 1 | leads << 2 | counts.carried;
        const uint64_t stops = (leads & ~characters) | (non_ascii & ~(leads | trails));
        if (stops != 0) [[unlikely]] {
            counts.add(leads & below_lowest(stops), kana);
            return stops;
        }
        counts.carried = leads >> 63 | leads >> 62;
        counts.add(leads, kana);
        return 0;
    }
};

// As above; `singles` are what is neither ASCII nor a lead byte.
struct TwoBytePlaces {
    uint64_t codes;
    uint64_t singles;
    uint64_t kana;
};
template <class Ordinary, class Vector>
[[gnu::always_inline]] inline TwoBytePlaces ordinary_places(Ordinary /*rules*/, Vector first, Vector second) {
    return {mask_of(Ordinary::code(first, second)), mask_of(Ordinary::single(first)), mask_of(Ordinary::kana(first))};
}

// Half-width katakana stop it.
template <class Ordinary>
struct TwoByteCount {
    static constexpr size_t kLongest = 2;

    template <class At>
    static uint64_t step(Counts &counts, const At &at) {
        const Block first = at(0);
        const uint64_t non_ascii = mask_of(top_bits(first));
        if ((non_ascii | mask_of(Ordinary::single(first))) == 0) {
            counts.carried = 0;
            return 0;
        }
        const TwoBytePlaces places = ordinary_places(Ordinary(), first, at(1));
        const uint64_t singles = places.singles & ~counts.carried;
        const uint64_t leads = every_second(non_ascii & ~singles & ~counts.carried);
        const uint64_t trails = leads << 1;
        const uint64_t stops = (leads & ~places.codes) | (singles & ~trails);
        if (stops != 0) [[unlikely]] {
            counts.add(leads & below_lowest(stops), places.kana);
            return stops;
        }
        counts.carried = leads >> 63;
        counts.add(leads, places.kana);
        return 0;
    }
};

template <class Kind>
OrdinaryRun count_run(const uint8_t *p, const uint8_t *end) {
    constexpr ptrdiff_t kBehind = Kind::kLongest - 1;
    Counts counts;
    uint64_t stops = 0;
    for (; end - p >= static_cast<ptrdiff_t>(kBlock) + kBehind; p += kBlock) {
        stops = Kind::step(counts, [p](size_t offset) { return load(p + offset); });
        if (stops != 0) {
            break;
        }
    }
    // Zeros behind the end count as ASCII: a character that the end cuts stops the run.
    while (stops == 0 && p < end) {
        const auto left = static_cast<size_t>(end - p);
        const Tail tail(p, left);
        stops = Kind::step(counts, [&tail](size_t offset) { return tail.at(offset); });
        if (stops == 0) {
            p += left < kBlock ? left : kBlock;
            counts.carried = left <= kBlock ? 0 : counts.carried;
        }
    }
    p += stops != 0 ? static_cast<int64_t>(lowest(stops)) : count(counts.carried);
    constexpr auto kBytes = static_cast<int64_t>(Kind::kLongest);
    return {p, kBytes * counts.characters, kBytes * counts.kana};
}

} // namespace jkc::JKC_KERNEL_SET
