#include "tables/euc_classes.h"

#include <algorithm>

#include "tables/euc.h"

namespace jkc {
namespace {

using Classes = std::array<uint8_t, 0x4000>;

struct Made {
    Classes classes{};
    bool fits_index = true; // the trail byte of each code is 0x80 or more

    // With pointers, for the compiler takes all these steps itself.
    template <size_t kCount>
    constexpr void add(const std::array<uint16_t, kCount> &decoding, EucClass in) {
        const uint16_t *const characters = decoding.data();
        uint8_t *const to = classes.data();
        for (uint32_t code = 0x8000; code < kCount; ++code) {
            if (characters[code] != 0) {
                to[euc_class_index(static_cast<uint8_t>(code >> 8), static_cast<uint8_t>(code))] |= in;
                fits_index = fits_index && (code & 0x80) != 0;
            }
        }
    }
};

constexpr Made make_classes() {
    Made made;
    made.add(tables::euc_standard().characters, kInGeneric);
    made.add(tables::euc_51932().characters, kIn51932);
    made.add(tables::euc_ms().characters, kInMs);
    made.add(tables::euc_20932_three_bytes().characters, kIn20932ThreeBytes);
    made.add(tables::euc_ms_three_bytes().characters, kInMsThreeBytes);
    return made;
}

constexpr Made kMade = make_classes();
static_assert(kMade.fits_index);

} // namespace

constexpr Classes kEucClasses = kMade.classes;

static_assert(std::all_of(kEucClasses.begin(), kEucClasses.end(),
                          [](uint8_t classes) {
                              return (classes & (kInGeneric | kInMs)) == 0 || (classes & kIn51932) != 0;
                          }),
              "the scanner relies on CP51932 to have every two-byte code");

} // namespace jkc
