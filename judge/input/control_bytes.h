// Counts the bytes that texts hardly have.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/bytes.h"
#include "core/wide.h"

namespace jkc {

class ControlBytes {
public:
    void take(const uint8_t *p, const uint8_t *end) {
        constexpr ptrdiff_t kStep = 4 * kWide;
        constexpr ptrdiff_t kMost = 63 * kStep; // what counters of eight bits hold
        while (end - p >= kStep) {
            const uint8_t *const until = p + std::min(kMost, (end - p) / kStep * kStep);
            Bytes16 nuls{};
            Bytes16 controls{};
            for (; p != until; p += kStep) {
                const Bytes16 found = rare(load16(p)) | rare(load16(p + kWide)) | rare(load16(p + 2 * kWide)) |
                                      rare(load16(p + 3 * kWide));
                if (any(found)) {
                    for (ptrdiff_t at = 0; at < kStep; at += kWide) {
                        const Bytes16 bytes = load16(p + at);
                        const Bytes16 is_nul = equals(bytes, 0);
                        nuls -= is_nul; // all bits are -1
                        controls -= rare(bytes) & ~(is_nul | equals(bytes, kEsc));
                    }
                }
            }
            for (size_t i = 0; i < kWide; ++i) {
                nuls_ += nuls[i];
                controls_ += controls[i];
            }
        }
        for (; p != end; ++p) {
            const bool is_control = *p < 0x20 && (*p < '\t' || *p > kSi) && *p != kEsc;
            nuls_ += *p == 0 ? 1 : 0;
            controls_ += is_control && *p != 0 ? 1 : 0;
        }
    }

    uint64_t nuls() const { return nuls_; }
    // C0 control bytes but NUL, HT, LF, VT, FF, CR, SO, SI, ESC.
    uint64_t controls() const { return controls_; }

private:
    // Controls, NUL and ESC.
    static Bytes16 rare(Bytes16 bytes) { return between(bytes, 0, 0x1F) & ~between(bytes, '\t', kSi); }

    uint64_t nuls_ = 0;
    uint64_t controls_ = 0;
};

} // namespace jkc
