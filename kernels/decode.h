// Kernels that decode a source to units of UTF-16, in steps of 64 bytes. Each place is decoded as if a character began
// there; those where one does are kept.
#pragma once

#include "kernels/kernels.h"
#include "kernels/masks.h"

namespace jkc::JKC_KERNEL_SET {

// Which places of a block begin a character, and what it is.
struct Decoding {
    uint64_t begins;
    uint64_t stops; // where nothing can be taken; its lowest bit counts
    uint64_t leads; // of two bytes or more
    uint64_t leads_of_three;
    uint64_t carried; // bytes that end a character of the block before
    Block high;
    Block low;

    uint64_t trails() const { return leads << 1 | leads_of_three << 2 | carried; }
    // What of the characters that begin in the first `width` bytes lies behind these.
    uint64_t behind(size_t width) const {
        const uint64_t last = width > 1 ? leads_of_three >> (width - 2) : leads_of_three << 1;
        return leads >> (width - 1) | last | (width < kBlock ? carried >> width : 0);
    }
};

// At which places of a block lead bytes are, those of three bytes, and well-formed sequences.
struct Utf8Places {
    uint64_t leads;
    uint64_t three;
    uint64_t whole;
};
template <class Vector>
[[gnu::always_inline]] inline Utf8Places utf8_places(Vector first, Vector second, Vector third) {
    const Flags is_two = between(first, 0xC2, 0xDF);
    const Flags is_three = equals_masked<0xF0>(first, 0xE0);
    const auto seconds = ordered(second);
    const Flags trail = equals_masked<0xC0>(second, 0x80);
    const Flags whole = trail & equals_masked<0xC0>(third, 0x80) &
                        ~((equals(first, 0xE0) & ~above(seconds, 0x9F)) | (equals(first, 0xED) & above(seconds, 0x9F)));
    const uint64_t three = mask_of(is_three);
    return {.leads = mask_of(is_two) | three, .three = three, .whole = mask_of((is_two & trail) | (is_three & whole))};
}

struct Bytes2 {
    Block high;
    Block low;
};
// The two bytes of the unit that begins at each place.
template <class Vector>
[[gnu::always_inline]] inline Bytes2 utf8_units(Vector first, Vector second, Vector third, uint64_t /*leads*/,
                                                uint64_t /*three*/) {
    const Flags is_two = between(first, 0xC2, 0xDF);
    const Flags is_three = equals_masked<0xF0>(first, 0xE0);
    const Block from_second = masked<0x3F>(second);
    // Of three bytes; then of two, and of one.
    const Block high3 = joined(shifted_left<4>(first), shifted_right<2>(from_second));
    const Block low3 = joined(shifted_left<6>(second), masked<0x3F>(third));
    const Block high2 = masked<0x07>(shifted_right<2>(first));
    const Block low2 = joined(shifted_left<6>(first), from_second);
    return {chosen(is_three, high3, chosen(is_two, high2, zeros())),
            chosen(is_three, low3, chosen(is_two, low2, first))};
}

struct Utf8Decode {
    static constexpr size_t kLongest = 3;

    template <class At>
    static Decoding decode(const At &at, uint64_t valid, uint64_t carried) {
        const Block first = at(0);
        const Block second = at(1);
        const Block third = at(2);
        const uint64_t non_ascii = mask_of(top_bits(first)) & valid;
        const Utf8Places places = utf8_places(first, second, third);
        const uint64_t leads = places.leads & valid;
        const uint64_t three = places.three & valid;
        const uint64_t trails = leads << 1 | three << 2 | carried;
        const Bytes2 units = utf8_units(first, second, third, places.leads, places.three);
        return {
            .begins = ~trails & valid,
            .stops = (leads & ~places.whole) | (non_ascii & ~(leads | trails)),
            .leads = leads,
            .leads_of_three = three,
            .carried = carried,
            .high = units.high,
            .low = units.low,
        };
    }
};

// Units are codes, to be looked up.
template <class Code>
struct TwoByteDecode {
    static constexpr size_t kLongest = 2;

    template <class At>
    static Decoding decode(const At &at, uint64_t valid, uint64_t carried) {
        const Block first = at(0);
        const Block second = at(1);
        const uint64_t non_ascii = mask_of(top_bits(first)) & valid;
        const uint64_t leads = every_second(non_ascii & ~mask_of(Code::single(first)) & ~carried);
        const Flags code = Code::code(first, second);
        const uint64_t trails = leads << 1 | carried;
        const Flags is_lead = top_bits(first) & ~Code::single(first); // where one begins
        return {
            .begins = ~trails & valid,
            .stops = leads & ~mask_of(code),
            .leads = leads,
            .leads_of_three = 0,
            .carried = carried,
            .high = chosen(is_lead, first, zeros()),
            .low = chosen(is_lead, second, first),
        };
    }
};
struct SjisCode {
    static Flags single(Block first) { return between(first, 0xA1, 0xDF); }
    static Flags code(Block first, Block second) {
        return (between(first, 0x81, 0x9F) | between(first, 0xE0, 0xFC)) &
               (between(second, 0x40, 0x7E) | between(second, 0x80, 0xFC));
    }
};
struct EucCode {
    static Flags single(Block first) { return none(first); }
    static Flags code(Block first, Block second) { return between(first, 0xA1, 0xFE) & between(second, 0xA1, 0xFE); }
};

template <class Kind>
class ByteDecoder {
public:
    ByteDecoder(LineEndStops stops, uint16_t *units) : stops_(stops), begin_(units), o_(units) {}

    Decoded decode(const uint8_t *p, const uint8_t *limit) {
        for (; limit - p >= static_cast<ptrdiff_t>(kBlock); p += kBlock) {
            if (!take([p](size_t offset) { return load(p + offset); }, kBlock)) {
                return decoded(p + stop_);
            }
        }
        if (p < limit) {
            const auto left = static_cast<size_t>(limit - p);
            const Tail tail(p, left + Kind::kLongest - 1);
            if (!take([&tail](size_t offset) { return tail.at(offset); }, left)) {
                return decoded(p + stop_);
            }
            p = limit;
        }
        return decoded(p + count(carried_));
    }

private:
    Decoded decoded(const uint8_t *p) const { return {p, static_cast<size_t>(o_ - begin_), stopped_, ascii_}; }

    // Takes what begins in the first `width` bytes of a block. False if it stops in there, at stop_.
    template <class At>
    bool take(const At &at, size_t width) {
        const uint64_t valid = width < kBlock ? low_bits(width) : ~uint64_t{0};
        const Block first = at(0);
        const uint64_t line_ends = mask_of(equals(first, stops_.cr) | equals(first, stops_.lf)) & valid;
        const uint64_t non_ascii = mask_of(top_bits(first)) & valid;
        if ((line_ends | carried_ | non_ascii) == 0) {
            ascii_ = true;
            return false;
        }
        const Decoding found = Kind::decode(at, valid, carried_);
        const uint64_t stops = found.stops | (line_ends & ~found.trails());
        if (stops != 0) [[unlikely]] {
            o_ = put_units(o_, found.high, found.low, found.begins & below_lowest(stops));
            stop_ = lowest(stops);
            stopped_ = true;
            return false;
        }
        // Where half a block of ASCII is left, there is mostly more of it.
        const size_t others = kBlock - static_cast<size_t>(__builtin_clzll(non_ascii | found.trails() | 1));
        if (others <= kBlock / 2 && width == kBlock) {
            o_ = put_units(o_, found.high, found.low, found.begins & low_bits(others));
            stop_ = others;
            ascii_ = true;
            return false;
        }
        o_ = put_units(o_, found.high, found.low, found.begins);
        carried_ = found.behind(width);
        return true;
    }

    LineEndStops stops_;
    uint16_t *begin_;
    uint16_t *o_;
    uint64_t carried_ = 0; // bytes of the next block that end a character of this one
    size_t stop_ = 0;
    bool stopped_ = false;
    bool ascii_ = false;
};

template <class Kind>
Decoded decode_bytes(const uint8_t *p, const uint8_t *limit, LineEndStops stops, uint16_t *units) {
    return ByteDecoder<Kind>(stops, units).decode(p, limit);
}

template <bool kBig>
Decoded decode_utf16(const uint8_t *p, const uint8_t *limit, LineEndStops stops, uint16_t *units) {
    size_t count = 0;
    while (p < limit) {
        const auto left = static_cast<size_t>(limit - p + 1) / 2;
        const size_t width = left < kUnits ? left : kUnits;
        const Units native = width < kUnits ? units_of(Tail(p, 2 * width).at(0)) : load_units(p);
        const Units v = kBig ? swapped(native) : native;
        const uint32_t lanes = lanes_of(left);
        if ((~units_between(v, 0, kLastAscii) & lanes) == 0) {
            return {p, count, false, true};
        }
        store_units(units + count, v);
        const uint64_t stop =
            (units_between(v, 0xD800, 0xDFFF) | units_equal(v, stops.cr) | units_equal(v, stops.lf)) & lanes;
        if (stop != 0) [[unlikely]] {
            return {p + 2 * lowest(stop), count + lowest(stop), true, false};
        }
        count += width;
        p += 2 * width;
    }
    return {p, count, false, false};
}

} // namespace jkc::JKC_KERNEL_SET
