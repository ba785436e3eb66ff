// The encoder of UTF-16 in either byte order.
#pragma once

#include <type_traits>

#include "convert/encoder_base.h"
#include "convert/line_type.h"
#include "core/wide_units.h"

namespace jkc {

template <class Order>
class Utf16Encoder : public EncoderBase {
public:
    static constexpr size_t kFlushAbove = 8187;
    static constexpr size_t kLongestStep = 4;
    static constexpr size_t kAsciiWidth = 2;
    static constexpr bool kIsUnicode = true;

    explicit Utf16Encoder(const JkcContext * /*ctx*/) {}

    uint8_t *bom(uint8_t *o) { return unit(o, 0xFEFF); }

    uint8_t *unit(uint8_t *o, uint32_t value) {
        Order::put(o, value);
        return o + 2;
    }
    uint8_t *ascii(uint8_t *o, uint8_t b) { return unit(o, b); }
    uint8_t *ascii_wide(uint8_t *o, Bytes16 text) {
        constexpr Bytes16 kZero = {};
        // A zero beside each byte.
        constexpr bool kBig = std::is_same_v<Order, BigEndian>;
        const Bytes16 left = kBig ? kZero : text;
        const Bytes16 right = kBig ? text : kZero;
        const Bytes16 first =
            __builtin_shufflevector(left, right, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
        const Bytes16 second =
            __builtin_shufflevector(left, right, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
        memcpy(o, &first, sizeof first);
        memcpy(o + kWide, &second, sizeof second);
        return o + 2 * kWide;
    }
    uint8_t *line_end(uint8_t *o, LineEnd end) {
        for (uint8_t i = 0; i < end.length; ++i) {
            o = unit(o, end.bytes[i]);
        }
        return o;
    }
    uint8_t *put(uint8_t *o, uint32_t c) { return unit(o, c); }
    uint8_t *put_mixed(uint8_t *o, uint32_t c) { return put(o, c); }
    static uint8_t *units(uint8_t *o, Units8 units) {
        store8<Order>(o, units);
        return o + kWide;
    }
    uint8_t *put_supplementary(uint8_t *o, uint32_t c) { return unit(unit(o, high_surrogate(c)), low_surrogate(c)); }
    static Encoded encode(const uint16_t *units, size_t count, uint8_t *o) {
        constexpr bool kBig = std::is_same_v<Order, BigEndian>;
        return {count, (kBig ? kernels().encode_utf16be : kernels().encode_utf16le)(units, count, o)};
    }
    uint8_t *replacement(uint8_t *o) { return unit(o, '?'); }
};

} // namespace jkc
