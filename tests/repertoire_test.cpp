// Whole repertoires: digests of all that can come out, and agreement with another converter where all agree.
#include <iconv.h>

#include <set>

#include <gtest/gtest.h>

#include "convert/routes.h"
#include "core/unicode.h"
#include "support/conversion.h"

namespace jkc::testing {
namespace {

using std::string;

struct Range {
    int first, last;
};
constexpr Range kAnyByte = {0, 0xFF};

string bytes_in(Range range, int except = -1) {
    string bytes;
    for (int byte = range.first; byte <= range.last; byte++) {
        if (byte != except) {
            bytes += static_cast<char>(byte);
        }
    }
    return bytes;
}

string pairs(Range leads, Range trails = kAnyByte, const string &prefix = "", int except_lead = -1) {
    string all;
    for (const char lead : bytes_in(leads, except_lead)) {
        for (const char trail : bytes_in(trails)) {
            all += prefix + lead + trail;
        }
    }
    return all;
}

string character(uint32_t c, Family family) {
    const auto unit = [family](uint32_t u) {
        const char high = static_cast<char>(u >> 8);
        const char low = static_cast<char>(u);
        return family == Family::kUtf16Be ? string{high, low} : string{low, high};
    };
    if (family == Family::kUtf8) {
        const auto trail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
        return c < 0x80      ? string{static_cast<char>(c)}
               : c < 0x800   ? string{static_cast<char>(0xC0 | c >> 6), trail(0)}
               : c < 0x10000 ? string{static_cast<char>(0xE0 | c >> 12), trail(6), trail(0)}
                             : string{static_cast<char>(0xF0 | c >> 18), trail(12), trail(6), trail(0)};
    }
    return c < 0x10000 ? unit(c) : unit(0xD7C0 + (c >> 10)) + unit(0xDC00 + (c & 0x3FF));
}

// Every code of a family, assigned or not, and every byte that is none.
string every_code(Family family) {
    constexpr int kEsc = 0x1B;
    string all;
    switch (family) {
    case Family::kSjis:
        return bytes_in({0, 0x7F}) + bytes_in({0xA1, 0xDF}) + pairs({0x80, 0xA0}) + pairs({0xE0, 0xFF});
    case Family::kEuc:
        return bytes_in({0, 0x8D}) + bytes_in({0x90, 0xA0}) + pairs({0x8E, 0x8E}) + pairs({0xA1, 0xFF}) +
               pairs(kAnyByte, kAnyByte, "\x8F");
    case Family::kJis:
        all = bytes_in({0, 0x0D}) + bytes_in({0x0F, 0xFF}, kEsc);
        for (const char *set : {"$@", "$B", "$(D", "$(O", "$(Q", "$(P"}) {
            all.append("\x1B").append(set).append(pairs(kAnyByte, kAnyByte, "", kEsc));
        }
        all.append("\x1B(I").append(bytes_in(kAnyByte, kEsc));
        return all.append("\x1B(B\x0E").append(bytes_in({0x21, 0x5F})).append("\x0F");
    default: // planes 0, 1, 2 and 16
        for (uint32_t c = 0; c < 0x110000; c = c == 0x2FFFF ? 0x100000 : c + 1) {
            all += character(c, family);
        }
        return all;
    }
}

// FNV-1a over the output; the end of each chunk counts as a byte of its own.
uint64_t digest(const std::vector<string> &chunks) {
    constexpr uint64_t kPrime = 0x100000001B3;
    uint64_t hash = 0xCBF29CE484222325;
    for (const string &chunk : chunks) {
        for (const char byte : chunk) {
            hash = (hash ^ static_cast<uint8_t>(byte)) * kPrime;
        }
        hash = (hash ^ 0x100) * kPrime;
    }
    return hash;
}

Case conversion_of(const string &input, int src, int dst) {
    Case c{"", {}, input, ""};
    c.options.add("src=" + std::to_string(src) + " dst=" + std::to_string(dst));
    return c;
}

TEST(RepertoireTest, ACodeAnywhereIsConvertedOtherwise) {
    for (Case c : read_cases("repertoire.txt")) {
        SCOPED_TRACE("from " + c.options.text("src") + " to " + c.options.text("dst") + " " + show_bytes(c.input));
        if (c.input.empty()) {
            c.input = every_code(family_of(static_cast<int32_t>(c.options.number("src"))));
        }
        Outcome outcome = convert(c, Way::kBuffer);
        EXPECT_EQ(outcome.text().size(), c.options.number("size"));
        EXPECT_EQ(digest(outcome.chunks), std::stoull(c.options.text("digest"), nullptr, 16));
        outcome.chunks.clear();
        EXPECT_EQ(outcome, expected_outcome(c));
    }
}

void erase(string &text, const string &character) {
    for (size_t at = text.find(character); at != string::npos; at = text.find(character)) {
        text.erase(at, character.size());
    }
}

// From a legacy code type to Unicode and back, each code that has a character.
TEST(RepertoireTest, ACodeDoesNotComeBackFromUnicode) {
    const struct {
        int type;
        string text;
        std::vector<string> one_way; // read from a code, but written as another or not at all
    } trips[] = {
        {2, string("\x1B$B") + pairs({0x21, 0x7E}, {0x21, 0x7E}), {}},
        {3, string("\x1B$(Q") + pairs({0x21, 0x7E}, {0x21, 0x7E}) + "\x1B$(P" + pairs({0x21, 0x7E}, {0x21, 0x7E}), {}},
        {4, bytes_in({0xA1, 0xDF}) + pairs({0x81, 0x9F}, {0x40, 0xFC}) + pairs({0xE0, 0xFC}, {0x40, 0xFC}), {}},
        {5, pairs({0xA1, 0xFE}, {0xA1, 0xFE}), {"‖", "−"}},
        {6, pairs({0xA1, 0xFE}, {0xA1, 0xFE}) + pairs({0xA1, 0xFE}, {0xA1, 0xFE}, "\x8F"), {"～"}},
        {7, pairs({0xA1, 0xFE}, {0xA1, 0xFE}) + pairs({0x8E, 0x8E}, {0xA1, 0xDF}), {}},
        {8, pairs({0xA1, 0xFE}, {0xA1, 0xFE}) + pairs({0xA1, 0xFE}, {0xA1, 0xFE}, "\x8F"), {"〜"}},
    };
    for (const auto &trip : trips) {
        SCOPED_TRACE(trip.type);
        Case from = conversion_of(trip.text, trip.type, JKC_TYPE_UTF8);
        from.options.add("suppress=1");
        string text = convert(from, Way::kBuffer).text();
        for (const string &c : trip.one_way) {
            erase(text, c);
        }
        EXPECT_GT(text.size(), 15000U);
        const Outcome back = convert(conversion_of(text, JKC_TYPE_UTF8, trip.type), Way::kBuffer);
        EXPECT_EQ(back.nochar_count, 0U);
        const string again = convert(conversion_of(back.text(), trip.type, JKC_TYPE_UTF8), Way::kBuffer).text();
        EXPECT_TRUE(again == text);
    }
}

#ifdef __GLIBC__

// Empty where the other converter knows no such code.
string recoded(const char *to, const char *from, string text) {
    iconv_t converter = iconv_open(to, from);
    EXPECT_NE(converter, reinterpret_cast<iconv_t>(-1)) << from << " to " << to;
    string result(text.size() * 4 + 16, '\0');
    char *in = text.data();
    char *out = result.data();
    size_t in_left = text.size();
    size_t out_left = result.size();
    const bool done = iconv(converter, &in, &in_left, &out, &out_left) != static_cast<size_t>(-1) &&
                      iconv(converter, nullptr, nullptr, &out, &out_left) != static_cast<size_t>(-1);
    iconv_close(converter);
    result.resize(done ? result.size() - out_left : 0);
    return result;
}

TEST(RepertoireTest, CommonCharactersDifferFromOtherConverters) {
    // Wave dash, double vertical line, minus, cent, pound, not, dash, overline, backslash, yen, tilde, broken bar: the
    // characters that vendors map in their own ways.
    const std::set<string> disputed = {"〜", "～", "‖",  "∥",  "−",  "－", "¢",  "￠", "£", "￡", "¬", "￢",
                                       "—",  "―",  "￣", "＼", "\\", "¥",  "￥", "‾",  "~", "￤", "¦"};
    string common;
    for (int c = 0x20; c < 0x7F; c++) {
        common += static_cast<char>(c);
    }
    const string katakana = recoded("UTF-8", "CP932", bytes_in({0xA1, 0xDF}));
    for (int row = 0xA1; row <= 0xF4; row++) {
        for (int cell = 0xA1; cell <= 0xFE; cell++) {
            common += recoded("UTF-8", "EUC-JP", {static_cast<char>(row), static_cast<char>(cell)});
        }
    }
    for (const string &c : disputed) {
        erase(common, c);
    }
    EXPECT_GT(common.size(), 20000U);
    const struct {
        int type;
        const char *name;
        bool has_katakana;
    } peers[] = {{4, "CP932", true}, {4, "SHIFT_JIS", true}, {5, "EUC-JP", true}, {2, "ISO-2022-JP", false}};
    for (const auto &peer : peers) {
        SCOPED_TRACE(peer.name);
        const string text = common + (peer.has_katakana ? katakana : "");
        const string theirs = recoded(peer.name, "UTF-8", text);
        EXPECT_EQ(convert(conversion_of(text, JKC_TYPE_UTF8, peer.type), Way::kBuffer).text(), theirs);
        EXPECT_EQ(convert(conversion_of(theirs, peer.type, JKC_TYPE_UTF8), Way::kBuffer).text(), text);
    }
    const string utf16 = recoded("UTF-16LE", "UTF-8", common);
    EXPECT_EQ(convert(conversion_of(common, JKC_TYPE_UTF8, JKC_TYPE_UTF16LE), Way::kBuffer).text(), utf16);
    EXPECT_EQ(convert(conversion_of(utf16, JKC_TYPE_UTF16LE, JKC_TYPE_UTF8), Way::kBuffer).text(), common);
}

#endif

} // namespace
} // namespace jkc::testing
