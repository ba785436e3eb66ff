// Whether what was converted is still the same text.
#pragma once

#include <bit>
#include <cstring>
#include <string>

#include "jkc.h"
#include "jkc/converter.h"

namespace jkc::testing {

// That of this machine's char16_t.
constexpr int kUtf16 = std::endian::native == std::endian::big ? JKC_TYPE_UTF16BE : JKC_TYPE_UTF16LE;

struct Converted {
    int32_t status;
    std::string text;
    uint64_t lost;
};

inline Converted converted(const std::string &text, int from, int to) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.on_loss = JKC_ON_LOSS_REPLACE;
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    uint8_t *out = nullptr;
    size_t length = 0;
    const int32_t status = jkc_convert_memory(from, to, reinterpret_cast<const uint8_t *>(text.data()), text.size(),
                                              &options, &out, &length, &losses);
    Converted all{status, status == JKC_SUCCESS ? std::string(reinterpret_cast<char *>(out), length) : "",
                  losses.ill_formed + losses.unmappable + losses.truncated};
    jkc_free(out);
    return all;
}

// As UTF-16, with the look-alikes that share a code in one mapping or another made one.
inline std::u16string read_as(const std::string &text, int type) {
    constexpr char16_t kLookAlikes[][2] = {{0xA2, 0xFFE0},   {0xA3, 0xFFE1},   {0xA5, '\\'},     {0xA6, 0xFFE4},
                                           {0xAC, 0xFFE2},   {0x2014, 0x2015}, {0x2016, 0x2225}, {0x203E, '~'},
                                           {0x2212, 0xFF0D}, {0x301C, 0xFF5E}};
    const std::string bytes = converted(text, type, kUtf16).text;
    std::u16string units(bytes.size() / 2, u'\0');
    memcpy(units.data(), bytes.data(), bytes.size());
    for (char16_t &unit : units) {
        for (const auto &[one, other] : kLookAlikes) {
            unit = unit == one ? other : unit;
        }
    }
    return units;
}

// Whether a text in `source` is what `made` is in `target`: it comes back, or both read the same. JIS text may designate a
// set twice, code page 932 has characters twice, and EUC-JP reads two characters that it does not write.
inline bool is_same_text(const std::string &text, int source, const std::string &made, int target) {
    const Converted back = converted(made, target, source);
    return (back.lost == 0 && back.text == text) || read_as(made, target) == read_as(text, source);
}

} // namespace jkc::testing
