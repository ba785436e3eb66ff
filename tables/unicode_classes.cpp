/** What each character of the BMP says about a text: whether it is Japanese, whether a combining mark may follow. */
#include <algorithm>
#include <string_view>

#include "tables/charts.h"
#include "tables/export.h"
#include "tables/look_alikes.h"
#include "tables/scan_classes.h"
#include "tables/table_builder.h"

namespace jkc::tables {
namespace {

constexpr uint16_t kJapanese = 0x0003; // evidence of Japanese text
constexpr uint16_t kOtherText = 0x0203;
constexpr uint16_t kTakesVoicedMark = 0x0410;     // U+3099
constexpr uint16_t kTakesSemiVoicedMark = 0x0420; // U+309A
constexpr uint16_t kTakesDiaeresis = 0x0450;      // U+0308; these two have the bit of U+3099 as well
constexpr uint16_t kTakesBreve = 0x0480;          // U+0306

constexpr std::u32string_view kVoiced = U"〱〳うかきくけこさしすせそたちつてとはひふへほゝ"
                                        U"ウカキクケコサシスセソタチツテトハヒフヘホワヰヱヲヽ";
constexpr std::u32string_view kSemiVoiced = U"はひふへほハヒフヘホ";
constexpr std::u32string_view kDiaeresis = U"Ее"; // Cyrillic
constexpr std::u32string_view kBreve = U"Ии";

struct Range {
    char16_t first;
    char16_t last;
};

/** Characters outside the charts that a code type has, and the punctuation that goes with Japanese text. */
constexpr Range kJapaneseRanges[] = {
    {0x0001, 0x008D}, {0x0090, 0x009F},                   // single bytes
    {0x00A5, 0x00A5}, {0x203E, 0x203E},                   // the yen sign and overline of JIS X 0201
    {0x2014, 0x2014},                                     // the em dash, JIS X 0213's reading of 213D
    {0xE000, 0xE757}, {0xF8F0, 0xF8F3},                   // private characters of code page 932
    {0xFF61, 0xFF9F},                                     // half-width katakana
    {0x3000, 0x3029}, {0x3030, 0x303A}, {0x303E, 0x303F}, // CJK symbols and punctuation, but no tone marks
    {0x3099, 0x309A},                                     // the combining marks of kana
};

constexpr Range kOtherTextRanges[] = {
#include "tables/data/other_text.inc"
};

constexpr std::u32string_view kHangul =
#include "tables/data/hangul.inc"
    ;

constexpr Range kIdeographs = {0x4E00, 0x9FA5};

constexpr bool is_plain_text_byte(uint32_t byte) {
    constexpr std::string_view kControls = "\a\b\t\n\f\r\x1B";
    return (byte >= 0x20 && byte <= 0x7E) || kControls.find(static_cast<char>(byte)) != std::string_view::npos;
}

/** Two bytes of plain ASCII text look like many an ideograph and must not pass for UTF-16. */
constexpr bool looks_like_ascii(uint32_t character) {
    return is_plain_text_byte(character >> 8) && is_plain_text_byte(character & 0xFF);
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
    for (uint32_t character = kIdeographs.first; character <= kIdeographs.last; character++) {
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
    add_bits(classes, kVoiced, kTakesVoicedMark);
    add_bits(classes, kSemiVoiced, kTakesSemiVoicedMark);
    add_bits(classes, kDiaeresis, kTakesDiaeresis);
    add_bits(classes, kBreve, kTakesBreve);
    return classes;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_unibe_def_table, 0x10000, jkc::tables::make_classes());

namespace jkc {
namespace {

constexpr bool is_kana(uint32_t unit) {
    return (unit >= 0x3041 && unit <= 0x309F) || (unit >= 0x30A1 && unit <= 0x30FF) ||
           (unit >= 0x3031 && unit <= 0x3035);
}

constexpr uint8_t scan_class(uint32_t unit, uint16_t bits) {
    const bool evidence = (bits & tables::kOtherText) == tables::kJapanese;
    const bool text = (bits & tables::kOtherText) != 0;
    const bool base = (bits & 0x00F0) != 0;
    const bool mark = unit == 0x0306 || unit == 0x0308 || unit == 0x3099 || unit == 0x309A;
    const bool special = (unit & 0xFC00) == 0xD800 || unit == kReplacement || unit == kSwappedReplacement;
    return static_cast<uint8_t>((evidence ? kScanEvidence : 0) | (evidence && is_kana(unit) ? kScanKana : 0) |
                                (text ? kScanText : 0) | (special ? kScanSpecial : 0) | (base ? kScanBase : 0) |
                                (mark ? kScanMark : 0));
}

// What the scanners for Unicode take for granted when they count many characters at once.
constexpr bool suits_scanners(const std::array<uint8_t, 0x10000> &classes) {
    for (uint32_t unit = 0; unit < classes.size(); unit++) {
        const bool plain = unit > 0 && unit < 0x80;
        const bool text_kana = is_kana(unit) && (classes[unit] & kScanText) != 0;
        if ((plain && classes[unit] != (kScanEvidence | kScanText)) ||
            (text_kana && (classes[unit] & kScanKana) == 0) ||
            (unit % 0x100 == 0 && (classes[unit] & kScanBase) != 0)) {
            return false;
        }
    }
    return true;
}

constexpr std::array<uint8_t, 0x10000> make_scan_classes() {
    std::array<uint8_t, 0x10000> classes{};
    for (uint32_t unit = 0; unit < classes.size(); unit++) {
        classes[unit] = scan_class(unit, _unibe_def_table_data[unit]);
    }
    return classes;
}

} // namespace

alignas(kTableAlignment) constexpr std::array<uint8_t, 0x10000> kScanClasses = make_scan_classes();
static_assert(suits_scanners(kScanClasses));

} // namespace jkc
