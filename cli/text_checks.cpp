#include "text_checks.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "code_units.h"
#include "jkc.h"
#include "library.h"
#include "translate.h"

namespace jkc::cli {
namespace {

constexpr bool in(unsigned char b, unsigned first, unsigned last) { return b >= first && b <= last; }

unsigned char byte_at(std::string_view text, size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0; // 0: no trail byte
}

// How many bytes from here on are 7-bit, looked at eight at a time.
size_t seven_bit_run(std::string_view text) {
    constexpr uint64_t kHighBits = 0x8080808080808080;
    size_t i = 0;
    uint64_t eight = 0;
    for (; i + sizeof eight <= text.size(); i += sizeof eight) {
        std::memcpy(&eight, text.data() + i, sizeof eight);
        if ((eight & kHighBits) != 0) {
            break;
        }
    }
    while (i < text.size() && byte_at(text, i) < 0x80) {
        ++i;
    }
    return i;
}

// The lengths of the well-formed non-ASCII character at the front of a text; 0: there is none.

inline size_t utf8_character(std::string_view text) {
    const unsigned char lead = byte_at(text, 0);
    const size_t length = in(lead, 0xC2, 0xDF) ? 2 : in(lead, 0xE0, 0xEF) ? 3 : in(lead, 0xF0, 0xF4) ? 4 : 0;
    // Neither longer than needed, nor a surrogate, nor beyond U+10FFFF.
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    const auto is_trail = [&](size_t i) { return in(byte_at(text, i), 0x80, 0xBF); };
    const bool well_formed = length != 0 && in(byte_at(text, 1), lowest, highest) && (length < 3 || is_trail(2)) &&
                             (length < 4 || is_trail(3));
    return well_formed ? length : 0;
}

size_t sjis_character(std::string_view text) {
    const unsigned char lead = byte_at(text, 0);
    const unsigned char trail = byte_at(text, 1);
    if (in(lead, 0xA1, 0xDF)) {
        return 1;
    }
    return in(lead, 0x81, 0xFC) && lead != 0xA0 && in(trail, 0x40, 0xFC) && trail != 0x7F ? 2 : 0;
}

size_t euc_character(std::string_view text) {
    const unsigned char lead = byte_at(text, 0);
    const auto is_trail = [&](size_t i) { return in(byte_at(text, i), 0xA1, 0xFE); };
    if (lead == 0x8E) {
        return in(byte_at(text, 1), 0xA1, 0xDF) ? 2 : 0;
    }
    if (lead == 0x8F) {
        return is_trail(1) && is_trail(2) ? 3 : 0;
    }
    return is_trail(0) && is_trail(1) ? 2 : 0;
}

size_t no_character(std::string_view /*text*/) { return 0; }

template <typename Character>
BadBytes find_ill_formed_bytes(std::string_view text, Character character) {
    BadBytes bad;
    for (size_t i = seven_bit_run(text); i < text.size(); i += seven_bit_run(text.substr(i))) {
        const size_t length = character(text.substr(i));
        if (length == 0) {
            bad.add(i);
        }
        i += length == 0 ? 1 : length;
    }
    return bad;
}

// Surrogates that are alone, or only the low ones of them, and an odd byte at the end.
BadBytes find_ill_formed_units(std::string_view text, int code_type, bool low_only = false) {
    const CodeUnits units(code_type);
    const auto kind_at = [&](size_t i) { return i + 2 <= text.size() ? units.at(text, i) & 0xFC00 : 0; };
    constexpr unsigned kHigh = 0xD800;
    constexpr unsigned kLow = 0xDC00;
    BadBytes bad;
    size_t i = 0;
    for (; i + 2 <= text.size(); i += 2) {
        const unsigned kind = kind_at(i);
        if (kind == kHigh && kind_at(i + 2) == kLow) {
            i += 2;
        } else if (kind == kLow || (kind == kHigh && !low_only)) {
            bad.add(i);
        }
    }
    if (i < text.size()) {
        bad.add(i);
    }
    return bad;
}

// What is no character in the character set of its place, and half-width katakana between SO and SI, of which only
// Shift_JIS and EUC get more than the letters that the same bytes are in ASCII.
BadBytes find_unrecorded_in_jis(std::string_view text, int target) {
    const bool takes_shifted_katakana = !is_7bit(target) && !is_unicode(target);
    // As the library reads them. What is no known escape sequence changes nothing.
    enum class Set { kPlain, kKatakana, kPairs, kAsBefore };
    constexpr std::pair<std::string_view, Set> kEscapes[] = {
        {"\x1B(B", Set::kPlain},   {"\x1B(H", Set::kPlain},   {"\x1B(J", Set::kPlain},  {"\x1B(I", Set::kKatakana},
        {"\x1B$@", Set::kPairs},   {"\x1B$B", Set::kPairs},   {"\x1B$J", Set::kPairs},  {"\x1B$(D", Set::kPairs},
        {"\x1B$(O", Set::kPairs},  {"\x1B$(P", Set::kPairs},  {"\x1B$(Q", Set::kPairs}, {"\x1B$(", Set::kAsBefore},
        {"\x1B$", Set::kAsBefore}, {"\x1B(", Set::kAsBefore}, {"\x1B", Set::kAsBefore}};
    constexpr unsigned char kShiftOut = 0x0E;
    constexpr unsigned char kShiftIn = 0x0F;
    Set set = Set::kPlain;
    bool shifted_out = false;
    BadBytes bad;
    for (size_t i = 0; i < text.size();) {
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](const auto &known) {
            return text.substr(i, known.first.size()) == known.first;
        });
        if (escape != std::end(kEscapes)) {
            shifted_out = false;
            set = escape->second == Set::kAsBefore ? set : escape->second;
            i += escape->first.size();
            continue;
        }
        if (set == Set::kPairs) {
            i += 2; // the library records what is wrong with them
            continue;
        }
        const unsigned char b = byte_at(text, i);
        const bool is_katakana = in(b, 0x21, 0x5F);
        const bool lost = set == Set::kKatakana ? !is_katakana
                          : shifted_out         ? !(is_katakana ? takes_shifted_katakana : b == kShiftIn)
                                                : b >= 0x80;
        if (lost) {
            bad.add(i);
        }
        shifted_out = set == Set::kPlain && (shifted_out ? is_katakana : b == kShiftOut);
        ++i;
    }
    return bad;
}

// Bytes of the range C1, which are written as they stand, and to JIS also what stands behind a single shift and is no
// katakana.
BadBytes find_unrecorded_in_euc(std::string_view text, int target) {
    constexpr unsigned char kSs2 = 0x8E;
    constexpr unsigned char kSs3 = 0x8F;
    BadBytes bad;
    for (size_t i = seven_bit_run(text); i < text.size(); i += seven_bit_run(text.substr(i))) {
        const unsigned char b = byte_at(text, i);
        const bool bad_katakana = b == kSs2 && is_7bit(target) && !in(byte_at(text, i + 1), 0xA1, 0xDF);
        if (bad_katakana || (b < 0xA1 && b != kSs2 && b != kSs3)) {
            bad.add(i);
        }
        i += b == kSs3 ? 3 : b == kSs2 || b >= 0xA1 ? 2 : 1;
        i = std::min(i, text.size());
    }
    return bad;
}

} // namespace

void BadBytes::add(size_t offset) {
    first = count == 0 ? offset : first;
    last = offset;
    ++count;
}

bool is_surely_utf8(std::string_view text) {
    bool found = false;
    for (size_t i = seven_bit_run(text); i < text.size(); i += seven_bit_run(text.substr(i))) {
        const size_t length = utf8_character(text.substr(i));
        if (length == 0) {
            return false;
        }
        found = found || length >= 3;
        i += length;
    }
    return found;
}

std::optional<size_t> find_binary_byte(std::string_view text, int judged) {
    constexpr int kUtf16 = JKC_JUDGED_BIT(JKC_TYPE_UTF16BE) | JKC_JUDGED_BIT(JKC_TYPE_UTF16BE_BOM) |
                           JKC_JUDGED_BIT(JKC_TYPE_UTF16LE) | JKC_JUDGED_BIT(JKC_TYPE_UTF16LE_BOM);
    if (judged < 0 || is_utf16(judged) || (is_undecided(judged) && (judged & kUtf16) != 0)) {
        return std::nullopt;
    }
    // White space; BEL, BS and ESC stand in what was printed on a terminal (sequences for colours and titles, letters
    // struck twice in manuals); SO, SI and ESC shift in JIS; US divides the nodes of Info files and the letters of old
    // mailboxes. Nothing else below the space has a meaning in text, and where there is one, refusing a file harms
    // less than recoding a picture.
    constexpr uint32_t kInText = 1U << 0x07 | 1U << 0x08 | 1U << '\t' | 1U << '\n' | 1U << '\v' | 1U << '\f' |
                                 1U << '\r' | 1U << 0x0E | 1U << 0x0F | 1U << 0x1B | 1U << 0x1F;
    // DOS ends files with this, and CP/M fills their last record with it.
    constexpr char kEndOfFile = '\x1A';
    const std::string_view content = text.substr(0, text.find_last_not_of(kEndOfFile) + 1);
    for (size_t i = 0; i < content.size(); ++i) {
        const auto b = static_cast<unsigned char>(content[i]);
        if (b < 0x20 && (kInText >> b & 1) == 0) {
            return i;
        }
    }
    return std::nullopt;
}

std::string describe_binary(std::string_view text, size_t offset) {
    return format(tr("binary: byte %02X at byte %zu"), static_cast<unsigned>(byte_at(text, offset)), offset);
}

BadBytes find_ill_formed(std::string_view text, int code_type) {
    if (is_utf16(code_type)) {
        return find_ill_formed_units(text, code_type);
    }
    return is_7bit(code_type)           ? find_ill_formed_bytes(text, no_character)
           : is_unicode(code_type)      ? find_ill_formed_bytes(text, utf8_character)
           : code_type == JKC_TYPE_SJIS ? find_ill_formed_bytes(text, sjis_character)
                                        : find_ill_formed_bytes(text, euc_character);
}

BadBytes find_unrecorded(std::string_view text, int code_type, int target) {
    if (is_utf16(code_type)) {
        // Surrogates that are alone stay what they are, and only to UTF-8 the high ones are recorded.
        return is_unicode(target) ? find_ill_formed_units(text, code_type, !is_utf16(target)) : BadBytes();
    }
    if (is_unicode(code_type) || code_type == JKC_TYPE_SJIS || code_type == JKC_TYPE_ASCII) {
        return {};
    }
    return is_7bit(code_type) ? find_unrecorded_in_jis(text, target) : find_unrecorded_in_euc(text, target);
}

} // namespace jkc::cli
