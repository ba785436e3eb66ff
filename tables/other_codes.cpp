#include "tables/other_codes.h"

#include <algorithm>

#include "jkc.h"
#include "tables/euc.h"
#include "tables/microsoft_jis.h"

namespace jkc {

namespace tables {
namespace {

struct OtherCode {
    uint16_t code;
    uint16_t character;
};

template <size_t kCount>
struct OtherCodes {
    std::array<OtherCode, kCount> codes{};
    size_t count = 0;

    constexpr void add(uint32_t code, char32_t character) {
        codes[count++] = {static_cast<uint16_t>(code), static_cast<uint16_t>(character)};
    }
    constexpr void sort() {
        std::sort(codes.begin(), codes.end(), [](OtherCode a, OtherCode b) { return a.code < b.code; });
    }
    uint32_t find(uint32_t code) const {
        const auto *found = std::lower_bound(codes.begin(), codes.end(), code,
                                             [](OtherCode entry, uint32_t wanted) { return entry.code < wanted; });
        return found != codes.end() && found->code == code ? found->character : 0;
    }
};

// Each with the tables' rule: the first code that claims a character gets it.
constexpr auto make_sjis() {
    OtherCodes<398> other;
    DecodingTable<kTwoByteCodes> table;
    const auto add = [&](uint32_t sjis, char32_t character) {
        if (table.claimed[character]) {
            other.add(sjis, character);
        }
        table.claimed[character] = true;
    };
    const auto add_jis = [&](uint32_t jis, char32_t character) { add(sjis_from_jis(jis), character); };
    for_each_microsoft_0208(add_jis);
    for_each_character(kNecRow13, add_jis);
    for_each_character(kIbmExtension, add);
    for_each_nec_selected(add_jis);
    other.sort();
    return other;
}

constexpr auto make_jis() {
    OtherCodes<10> other;
    DecodingTable<kTwoByteCodes> table;
    for_each_microsoft_jis([&](uint32_t jis, char32_t character) {
        if (table.claimed[character]) {
            other.add(jis, character);
        }
        table.claimed[character] = true;
    });
    other.sort();
    return other;
}

constexpr auto make_euc_ms() {
    OtherCodes<14> other;
    const auto claimed = euc_ms().claimed;
    const auto add = [&](uint32_t jis, char32_t character) {
        if (claimed[character]) {
            other.add(euc_from_jis(jis), character);
        }
    };
    for_each_character(kJisX0212, [&](uint32_t jis, char32_t character) {
        if (jis != 0x2237 && jis != 0x2243) { // which have other characters here
            add(jis, character);
        }
    });
    for_each_character(kEucJpMsIbmRows, add);
    other.sort();
    return other;
}

constexpr auto kSjis = make_sjis();
constexpr auto kJis = make_jis();
constexpr auto kEucMs = make_euc_ms();
static_assert(kSjis.count == kSjis.codes.size() && kJis.count == kJis.codes.size() &&
              kEucMs.count == kEucMs.codes.size());

} // namespace
} // namespace tables

uint32_t other_sjis_code(uint32_t sjis) { return tables::kSjis.find(sjis); }
uint32_t sjis_code_beside(uint32_t sjis) {
    const uint32_t character = _sjis2unibe932_table[sjis];
    const auto &codes = tables::kSjis.codes;
    const auto *found = std::find_if(codes.begin(), codes.end(),
                                     [character](tables::OtherCode entry) { return entry.character == character; });
    return character != 0 && found != codes.end() ? found->code : 0;
}
uint32_t other_jis_code(uint32_t jis) { return tables::kJis.find(jis); }
uint32_t other_euc_ms_code(uint32_t euc) { return tables::kEucMs.find(euc); }

} // namespace jkc
