// Any code points, those that are no characters too, in a Unicode encoding.
#pragma once

#include <string>
#include <string_view>

#include "convert/routes.h"

namespace jkc::testing {

inline std::string encoded(std::u32string_view text, int code_type) {
    const Family family = family_of(code_type);
    std::string bytes;
    const auto put = [&bytes](uint32_t byte) { bytes += static_cast<char>(byte); };
    const auto put_unit = [&](uint32_t unit) {
        put(family == Family::kUtf16Be ? unit >> 8 : unit);
        put(family == Family::kUtf16Be ? unit : unit >> 8);
    };
    for (const uint32_t c : text) {
        if (family != Family::kUtf8) {
            put_unit(c < 0x10000 ? c : 0xD7C0 + (c >> 10));
            if (c >= 0x10000) {
                put_unit(0xDC00 + (c & 0x3FF));
            }
            continue;
        }
        const int trails = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        constexpr uint32_t kLeads[] = {0, 0xC0, 0xE0, 0xF0};
        put(kLeads[trails] | c >> 6 * trails);
        for (int left = trails; left-- > 0;) {
            put(0x80 | (c >> 6 * left & 0x3F));
        }
    }
    return bytes;
}

} // namespace jkc::testing
