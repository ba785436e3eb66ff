#include "tables/single_bytes.h"

#include <algorithm>
#include <array>

#include "tables/chart.h"

namespace jkc {

namespace tables {
namespace {

constexpr ChartLine kCp1252[] = {
#include "tables/data/cp1252.inc"
};
constexpr ChartLine kCp850[] = {
#include "tables/data/cp850.inc"
};
constexpr ChartLine kCp437[] = {
#include "tables/data/cp437.inc"
};
constexpr ChartLine kMacRoman[] = {
#include "tables/data/mac_roman.inc"
};

struct Pair {
    uint16_t character;
    uint8_t byte;
};

struct BothWays {
    std::array<uint16_t, 128> characters{};
    std::array<Pair, 128> bytes{}; // by their characters

    constexpr explicit BothWays(Chart chart) {
        for (uint32_t i = 0; i < 128; ++i) {
            characters[i] = static_cast<uint16_t>(0x80 + i); // a C1 control character
        }
        for_each_character(chart, [this](uint32_t code, char32_t character) {
            characters[code - 0x80] = static_cast<uint16_t>(character);
        });
        for (uint32_t i = 0; i < 128; ++i) {
            bytes[i] = {characters[i], static_cast<uint8_t>(0x80 + i)};
        }
        std::sort(bytes.begin(), bytes.end(), [](Pair a, Pair b) { return a.character < b.character; });
    }
};

constexpr ChartLine kLatin1[] = {{0xA0, U"\u00A0"}};

// In the order of SingleByteSet. Without a chart a byte is the character of its number.
constexpr BothWays kSets[] = {BothWays(kLatin1), BothWays(kCp1252), BothWays(kCp850), BothWays(kCp437),
                              BothWays(kMacRoman)};

} // namespace
} // namespace tables

uint8_t single_byte(SingleByteSet set, uint32_t c) {
    const auto &bytes = tables::kSets[static_cast<int>(set)].bytes;
    const auto *found = std::lower_bound(bytes.begin(), bytes.end(), c,
                                         [](tables::Pair pair, uint32_t wanted) { return pair.character < wanted; });
    return found != bytes.end() && found->character == c ? found->byte : 0;
}

uint32_t single_byte_character(SingleByteSet set, uint8_t byte) {
    return tables::kSets[static_cast<int>(set)].characters[byte - 0x80];
}

} // namespace jkc
