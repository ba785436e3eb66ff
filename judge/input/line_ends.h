// Tells which line ends a text has.
#pragma once

#include <cstdint>

#include "core/bytes.h"
#include "core/internal.h"
#include "core/wide_units.h"

namespace jkc {

// The units that are looked at: bytes or UTF-16 code units, one by one or sixteen bytes at a time.
struct ByteUnits {
    using Wide = Bytes16;
    static constexpr ptrdiff_t kSize = 1;
    static uint32_t unit(const uint8_t *p) { return *p; }
    static Wide where(const uint8_t *p, uint8_t b) { return equals(load16(p), b); }
};
template <class Order>
struct Utf16Units {
    using Wide = Units8;
    static constexpr ptrdiff_t kSize = 2;
    static uint32_t unit(const uint8_t *p) { return Order::unit(p); }
    static Wide where(const uint8_t *p, uint8_t b) { return units_equal(load8<Order>(p), b); }
};

// Gathers line ends from pieces. A CR waits for the next piece, which may begin with its LF.
template <class Unit>
class LineEndsBy {
public:
    explicit LineEndsBy(int bits = 0) : bits_(bits) {}

    // Returns where it stopped: at `end`, or at the first byte of a unit that `end` cuts.
    const uint8_t *take(const uint8_t *p, const uint8_t *end) {
        end -= (end - p) % Unit::kSize;
        if (bits_ == kAll || p == end) {
            return end;
        }
        add(Unit::unit(p));
        p = add_many(p + Unit::kSize, end);
        for (; p != end; p += Unit::kSize) {
            add(Unit::unit(p));
        }
        return end;
    }

    // JkcLineType bits, of all that was taken.
    int bits() const { return bits_ | (behind_cr_ ? JKC_LINE_CR : 0); }
    bool has_all() const { return bits() == kAll; }

private:
    static constexpr int kAll = JKC_LINE_LF | JKC_LINE_CR | JKC_LINE_CRLF;

    void add(uint32_t unit) {
        if (unit == kLf) {
            bits_ |= behind_cr_ ? JKC_LINE_CRLF : JKC_LINE_LF;
        } else if (behind_cr_) {
            bits_ |= JKC_LINE_CR;
        }
        behind_cr_ = unit == kCr;
    }

    // Passes units of which none is a CR.
    static const uint8_t *skip_to_cr(const uint8_t *p, const uint8_t *end) {
        constexpr ptrdiff_t kStep = 4 * kWide;
        for (; end - p >= kStep; p += kStep) {
            const auto crs = Unit::where(p, kCr) | Unit::where(p + kWide, kCr) | Unit::where(p + 2 * kWide, kCr) |
                             Unit::where(p + 3 * kWide, kCr);
            if (any(reinterpret_cast<Bytes16>(crs))) {
                break;
            }
        }
        return p;
    }

    // Each unit tells, with the one in front of it, about the line end that they are. Returns where it stopped.
    const uint8_t *add_many(const uint8_t *p, const uint8_t *end) {
        typename Unit::Wide lf{};
        typename Unit::Wide cr{};
        typename Unit::Wide cr_lf{};
        const uint8_t *const begin = p;
        if ((bits_ & JKC_LINE_LF) != 0 && !behind_cr_) {
            p = skip_to_cr(p, end); // LF by itself tells nothing more
        }
        for (; end - p >= static_cast<ptrdiff_t>(kWide); p += kWide) {
            const auto behind_crs = Unit::where(p - Unit::kSize, kCr);
            const auto lfs = Unit::where(p, kLf);
            lf |= lfs & ~behind_crs;
            cr |= behind_crs & ~lfs;
            cr_lf |= behind_crs & lfs;
        }
        bits_ |= bit_if_any(lf, JKC_LINE_LF) | bit_if_any(cr, JKC_LINE_CR) | bit_if_any(cr_lf, JKC_LINE_CRLF);
        behind_cr_ = p == begin ? behind_cr_ : Unit::unit(p - Unit::kSize) == kCr;
        return p;
    }

    template <class Wide>
    static int bit_if_any(Wide found, int bit) {
        return any(reinterpret_cast<Bytes16>(found)) ? bit : 0;
    }

    int bits_;
    bool behind_cr_ = false;
};

// Gathers them before it is known what the text is.
struct LineEnds {
    LineEndsBy<ByteUnits> bytes;
    LineEndsBy<Utf16Units<BigEndian>> big;
    LineEndsBy<Utf16Units<LittleEndian>> little;

    // What _check_ln() tells of the text.
    int of(int code_type) const;
};

} // namespace jkc
