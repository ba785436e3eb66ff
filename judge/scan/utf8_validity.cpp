#include "judge/scan/utf8_validity.h"

#include "core/bytes.h"
#include "core/unicode.h"
#include "judge/scan/ordinary_run.h"

namespace jkc {

namespace {

// Whether two bytes begin a character, as far as they tell.
bool may_begin(uint8_t lead, uint8_t second) {
    switch (lead) {
    case 0xE0:
        return second >= 0xA0 && second <= 0xBF;
    case 0xED:
        return second >= 0x80 && second <= 0x9F;
    case 0xF0:
        return second >= 0x90 && second <= 0xBF;
    case 0xF4:
        return second >= 0x80 && second <= 0x8F;
    default:
        return is_trail(second);
    }
}

// Of bytes of 0x80 or more, those above b. One instruction: SSE2 compares signed bytes only.
Bytes16 above_in_upper_half(Bytes16 bytes, uint8_t b) {
    using Signed16 = int8_t __attribute__((vector_size(kWide)));
    return reinterpret_cast<Bytes16>(reinterpret_cast<Signed16>(bytes) > reinterpret_cast<Signed16>(splat16(b)));
}

// Lead bytes that say more about the byte behind them than that it is a trail byte, or that are none.
Bytes16 is_special_lead(Bytes16 bytes) {
    return equals_masked<0xFE>(bytes, 0xC0) | equals(bytes, 0xE0) | equals(bytes, 0xED) |
           above_in_upper_half(bytes, 0xEF);
}

} // namespace

// Takes characters of up to three bytes, 32 bytes at a time, as far as their lead bytes are not special.
const uint8_t *Utf8Validity::take_many(const uint8_t *p, const uint8_t *end) {
    MaskCounts counts;
    uint32_t cut = 0; // trail bytes that the character in front of p lacks
    for (; end - p >= kStride; p += kStride) {
        const Bytes16 left = load16(p);
        const Bytes16 right = load16(p + kWide);
        const uint32_t non_ascii = movemask(left, right);
        if ((non_ascii | cut) == 0) {
            continue;
        }
        const auto upper = [=](auto is) { return non_ascii & movemask(is(left), is(right)); };
        const uint32_t leads = upper([](Bytes16 bytes) { return above_in_upper_half(bytes, 0xBF); });
        const uint32_t long_leads = upper([](Bytes16 bytes) { return above_in_upper_half(bytes, 0xDF); });
        const uint64_t trails = uint64_t{leads} << 1 | uint64_t{long_leads} << 2 | cut;
        const uint32_t stops = upper(is_special_lead) | ((non_ascii & ~leads) ^ static_cast<uint32_t>(trails));
        if (stops != 0) [[unlikely]] {
            break;
        }
        counts.add(leads & ~long_leads, long_leads);
        cut = static_cast<uint32_t>(trails >> kStride);
    }
    two_byte += static_cast<uint64_t>(counts.left());
    longer += static_cast<uint64_t>(counts.right());
    if (cut != 0) { // back to its lead byte
        p -= is_trail(p[-1]) ? 2 : 1;
        (*p >= 0xE0 ? longer : two_byte) -= 1;
    }
    return p;
}

const uint8_t *Utf8Validity::take(const uint8_t *p, const uint8_t *end, bool last, int64_t offset) {
    const uint8_t *const begin = p;
    while (p < end && first_error < 0) {
        p = take_many(p, end);
        const uint8_t *const close = close_look_end(p, p, end);
        while (p < close) {
            if (is_ascii(*p)) {
                ++p;
                continue;
            }
            const size_t length = *p >= 0xC2 && *p <= 0xF4 ? utf8_length(*p) : 0;
            const auto left = static_cast<size_t>(end - p);
            bool is_well_formed = length > 0;
            for (size_t i = 1; i < length && i < left && is_well_formed; ++i) {
                is_well_formed = i == 1 ? may_begin(p[0], p[1]) : is_trail(p[i]);
            }
            if (is_well_formed && length > left && !last) {
                return p;
            }
            if (!is_well_formed || length > left) {
                first_error = offset + (p - begin);
                return end;
            }
            (length == 2 ? two_byte : longer) += 1;
            p += length;
        }
    }
    return first_error < 0 ? p : end;
}

} // namespace jkc
