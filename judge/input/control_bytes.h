// Counts the bytes that texts hardly have.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/bytes.h"
#include "core/wide.h"

namespace jkc {

struct ControlBytes {
    uint64_t nuls = 0;
    uint64_t controls = 0; // C0 control bytes but NUL, HT, LF, VT, FF, CR, SO, SI, ESC

    void take(const uint8_t *p, const uint8_t *end) {
        constexpr ptrdiff_t kMost = 255 * static_cast<ptrdiff_t>(kWide); // what counters of eight bits hold
        while (end - p >= static_cast<ptrdiff_t>(kWide)) {
            const uint8_t *const until =
                p + std::min(kMost, (end - p) / static_cast<ptrdiff_t>(kWide) * static_cast<ptrdiff_t>(kWide));
            Bytes16 nul_counts{};
            Bytes16 control_counts{};
            for (; p != until; p += kWide) {
                const Bytes16 bytes = load16(p);
                const Bytes16 is_nul = equals(bytes, 0);
                nul_counts -= is_nul;
                control_counts -= between(bytes, 0, 0x1F) & ~(is_nul | between(bytes, '\t', kSi) | equals(bytes, kEsc));
            }
            for (size_t i = 0; i < kWide; ++i) {
                nuls += nul_counts[i];
                controls += control_counts[i];
            }
        }
        for (; p != end; ++p) {
            nuls += *p == 0 ? 1 : 0;
            controls += *p < 0x20 && *p != 0 && (*p < '\t' || *p > kSi) && *p != kEsc ? 1 : 0;
        }
    }
};

} // namespace jkc
