#include "mend/sample.h"

#include <algorithm>

#include "core/bytes.h"
#include "core/unicode.h"

namespace jkc {

namespace {

const uint8_t *first_beyond_ascii(const uint8_t *p, const uint8_t *end) {
    return std::find_if(p, end, [](uint8_t b) { return !is_ascii(b); });
}

} // namespace

std::span<const uint8_t> sample_of(std::span<const uint8_t> text, uint8_t (&room)[kMendSample], bool &whole) {
    // A byte of ASCII behind another one is no trail byte, so that what is left out cuts no character.
    constexpr std::ptrdiff_t kAround = 8;
    const uint8_t *const end = text.data() + text.size();
    const uint8_t *p = text.data();
    size_t size = 0;
    for (;;) {
        const uint8_t *const next = first_beyond_ascii(p, end);
        if (next == end) {
            const auto rest =
                std::min<std::ptrdiff_t>({end - p, kAround, static_cast<std::ptrdiff_t>(kMendSample - size)});
            std::copy(p, p + (size == 0 ? 0 : rest), room + size);
            whole = true;
            return {room, size == 0 ? 0 : size + static_cast<size_t>(rest)};
        }
        if (next - p > 2 * kAround) {
            const std::ptrdiff_t behind = size == 0 ? 0 : kAround;
            if (size + static_cast<size_t>(behind) > kMendSample) {
                break;
            }
            std::copy(p, p + behind, room + size);
            size += static_cast<size_t>(behind);
            p = next - kAround;
        }
        const size_t length = static_cast<size_t>(next - p) + utf8_length(*next);
        if (length > kMendSample - size) {
            break;
        }
        std::copy(p, p + length, room + size);
        size += length;
        p += length;
    }
    whole = false;
    return {room, size};
}

} // namespace jkc
