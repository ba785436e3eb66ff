#include "tables/euc_classes.h"

#include <algorithm>

#include "tables/euc.h"

namespace jkc {
namespace {

using Classes = std::array<uint8_t, 0x4000>;

template <size_t kCount>
constexpr void add(Classes &classes, const std::array<uint16_t, kCount> &decoding, EucClass in) {
    for (uint32_t code = 0x8000; code < kCount; ++code) {
        if (decoding[code] != 0) {
            classes[euc_class_index(static_cast<uint8_t>(code >> 8), static_cast<uint8_t>(code))] |= in;
        }
    }
}

// Whether the trail byte of each code is 0x80 or more.
template <size_t kCount>
constexpr bool suits_index(const std::array<uint16_t, kCount> &decoding) {
    for (uint32_t code = 0x8000; code < kCount; ++code) {
        if (decoding[code] != 0 && (code & 0x80) == 0) {
            return false;
        }
    }
    return true;
}

constexpr Classes make_classes() {
    Classes classes{};
    add(classes, tables::euc_standard().characters, kInGeneric);
    add(classes, tables::euc_51932().characters, kIn51932);
    add(classes, tables::euc_ms().characters, kInMs);
    add(classes, tables::euc_20932_three_bytes().characters, kIn20932ThreeBytes);
    add(classes, tables::euc_ms_three_bytes().characters, kInMsThreeBytes);
    return classes;
}

static_assert(suits_index(tables::euc_standard().characters) && suits_index(tables::euc_51932().characters) &&
              suits_index(tables::euc_ms().characters) && suits_index(tables::euc_20932_three_bytes().characters) &&
              suits_index(tables::euc_ms_three_bytes().characters));

} // namespace

constexpr Classes kEucClasses = make_classes();

static_assert(std::all_of(kEucClasses.begin(), kEucClasses.end(),
                          [](uint8_t classes) {
                              return (classes & (kInGeneric | kInMs)) == 0 || (classes & kIn51932) != 0;
                          }),
              "the scanner relies on CP51932 to have every two-byte code");

} // namespace jkc
