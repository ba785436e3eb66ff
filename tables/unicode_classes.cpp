// What each BMP code point tells of a text: whether it is Japanese, whether it takes a combining mark.
#include <algorithm>
#include <string_view>

#include "tables/characters.h"
#include "tables/charts.h"
#include "tables/export.h"
#include "tables/look_alikes.h"
#include "tables/scan_classes.h"
#include "tables/unicode_classes.h"

namespace jkc::tables {
namespace {

constexpr uint16_t kJapanese = kEvidence;
constexpr uint16_t kOtherText = kEvidence | kPossible;

constexpr std::u32string_view kVoicedBases = U"〱〳うかきくけこさしすせそたちつてとはひふへほゝ"
                                             U"ウカキクケコサシスセソタチツテトハヒフヘホワヰヱヲヽ";
constexpr std::u32string_view kSemiVoicedBases = U"はひふへほハヒフヘホ";
constexpr std::u32string_view kDiaeresisBases = U"Ее"; // Cyrillic
constexpr std::u32string_view kBreveBases = U"Ии";

struct Range {
    char16_t first;
    char16_t last;
};

// Characters outside the charts that a code type has, and the punctuation that goes with Japanese text.
constexpr Range kJapaneseRanges[] = {
    // Single bytes.
    {0x0001, 0x008D},
    {0x0090, 0x009F},
    // JIS X 0201.
    {kYenSign, kYenSign},
    {kOverline, kOverline},
    {kFirstHalfWidthKatakana, kLastHalfWidthKatakana},
    // The em dash, JIS X 0213's reading of 213D.
    {0x2014, 0x2014},
    // Private-use characters of code page 932.
    {0xE000, 0xE757},
    {0xF8F0, 0xF8F3},
    // CJK symbols and punctuation, but no tone marks.
    {0x3000, 0x3029},
    {0x3030, 0x303A},
    {0x303E, 0x303F},
    {kVoicedMark, kSemiVoicedMark},
};

constexpr Range kOtherTextRanges[] = {
#include "tables/data/other_text.inc"
};

constexpr std::u32string_view kHangul =
#include "tables/data/hangul.inc"
    ;

constexpr Range kIdeographs = {0x4E00, 0x9FA5};

constexpr bool is_ascii_text_byte(uint32_t byte) {
    constexpr std::string_view kControls = "\a\b\t\n\f\r\x1B";
    return (byte >= 0x20 && byte <= 0x7E) || kControls.find(static_cast<char>(byte)) != std::string_view::npos;
}

// Two bytes of ASCII text form many an ideograph, which must not be evidence of UTF-16.
constexpr bool looks_like_ascii(uint32_t character) {
    return is_ascii_text_byte(character >> 8) && is_ascii_text_byte(character & 0xFF);
}

using Classes = std::array<uint16_t, 0x10000>;

constexpr void set_ranges(Classes &classes, std::span<const Range> ranges, uint16_t value) {
    for (const Range &range : ranges) {
        std::fill(classes.begin() + range.first, classes.begin() + range.last + 1, value);
    }
}

constexpr void add_bits(Classes &classes, std::u32string_view characters, uint16_t bits) {
    for (const char32_t character : characters) {
        classes[character] |= bits;
    }
}

constexpr Classes make_classes() {
    Classes classes{};
    set_ranges(classes, kOtherTextRanges, kOtherText);
    add_bits(classes, kHangul, kOtherText);
    for (uint32_t character = kIdeographs.first; character <= kIdeographs.last; ++character) {
        classes[character] = looks_like_ascii(character) ? kOtherText : kJapanese;
    }
    set_ranges(classes, kJapaneseRanges, kJapanese);
    for (const Chart chart : {Chart(kJisX0208), Chart(kJisX0212), Chart(kJisX0213Plane1), Chart(kJisX0213Plane2),
                              Chart(kNecRow13), Chart(kIbmExtension)}) {
        for_each_character(chart, [&](uint32_t, char32_t character) {
            if (character < classes.size()) {
                classes[character] = kJapanese;
            }
        });
    }
    for (const LookAlike &pair : kLookAlikes) {
        classes[pair.microsoft] = kJapanese;
    }
    add_bits(classes, kVoicedBases, kTakesAnyMark | kTakesVoicedMark);
    add_bits(classes, kSemiVoicedBases, kTakesAnyMark | kTakesSemiVoicedMark);
    // The bases of U+0308 have the bit of U+3099 too. The bit serves kana alone, but it is part of the exported table.
    add_bits(classes, kDiaeresisBases, kTakesAnyMark | kTakesDiaeresis | kTakesVoicedMark);
    add_bits(classes, kBreveBases, kTakesAnyMark | kTakesBreve);
    return classes;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_unibe_def_table, 0x10000, jkc::tables::make_classes());

namespace jkc {
namespace {

constexpr uint8_t scan_class(uint32_t unit, uint16_t bits) {
    const bool evidence = (bits & kAnyText) == kEvidence;
    const bool text = (bits & kAnyText) != 0;
    const bool base = (bits & kAnyBase) != 0;
    const bool special = is_high_surrogate(unit) || unit == kReplacement || unit == kSwappedReplacement;
    return static_cast<uint8_t>((evidence ? kScanEvidence : 0) | (evidence && is_kana(unit) ? kScanKana : 0) |
                                (text ? kScanText : 0) | (special ? kScanSpecial : 0) | (base ? kScanBase : 0) |
                                (is_combining_mark(unit) ? kScanMark : 0));
}

// What the scanners for Unicode rely on when they count many characters at once.
constexpr bool suits_scanners(const std::array<uint8_t, 0x10000> &classes) {
    for (uint32_t unit = 0; unit < classes.size(); ++unit) {
        const bool ascii = unit > 0 && unit < 0x80;
        const bool text_kana = is_kana(unit) && (classes[unit] & kScanText) != 0;
        if ((ascii && classes[unit] != (kScanEvidence | kScanText)) ||
            (text_kana && (classes[unit] & kScanKana) == 0) ||
            (unit % 0x100 == 0 && (classes[unit] & kScanBase) != 0)) {
            return false;
        }
    }
    return true;
}

constexpr std::array<uint8_t, 0x10000> make_scan_classes() {
    std::array<uint8_t, 0x10000> classes{};
    for (uint32_t unit = 0; unit < classes.size(); ++unit) {
        classes[unit] = scan_class(unit, _unibe_def_table_data[unit]);
    }
    return classes;
}

} // namespace

alignas(kTableAlignment) constexpr std::array<uint8_t, 0x10000> kScanClasses = make_scan_classes();
static_assert(suits_scanners(kScanClasses));

} // namespace jkc
