// The scanners pass ordinary text many bytes at a time, without the tables. They must not pass anything else so.
#include <random>

#include <gtest/gtest.h>

#include "core/bytes.h"
#include "core/internal.h"
#include "judge/scan/euc.h"
#include "judge/scan/sjis.h"
#include "judge/scan/two_byte_run.h"
#include "judge/scan/utf8_run.h"
#include "support/case_file.h"
#include "tables/scan_classes.h"

namespace jkc::testing {
namespace {

constexpr size_t kPlaces[] = {0, 15, 30, 31, 40}; // across the edges of what is looked at together

// Runs over a text of 'a' with other bytes in it, and answers how far. A run stops within its last 32 bytes.
size_t run_over(const std::string &bytes, size_t at, const auto &run, OrdinaryRun &found) {
    std::string text(98, 'a');
    text.replace(at, bytes.size(), bytes);
    const auto *begin = reinterpret_cast<const uint8_t *>(text.data());
    found = run(begin, begin + 96);
    return static_cast<size_t>(found.end - begin);
}

template <class Ordinary>
OrdinaryRun two_byte_run(const uint8_t *begin, const uint8_t *end) {
    typename Ordinary::Katakana katakana;
    return ordinary_two_byte_run<Ordinary>(begin, end, katakana);
}

// A character, and what it adds to the bytes of valid characters.
struct Character {
    std::string bytes;
    int64_t counted;
    bool mapped;
    bool kana;
};

// Checks a run over each character from the first to U+FFFF or FFFF. Returns how many were passed.
size_t passed(uint32_t first, const auto &describe, const auto &run) {
    size_t count = 0;
    for (uint32_t code = first; code <= 0xFFFF; ++code) {
        SCOPED_TRACE(code);
        const Character c = describe(code);
        for (const size_t at : kPlaces) {
            OrdinaryRun found{};
            const size_t end = run_over(c.bytes, at, run, found);
            EXPECT_TRUE(end == at || (end > at && c.mapped));
            EXPECT_EQ(found.valid, end > at ? c.counted : 0);
            EXPECT_EQ(found.kana, end > at && c.kana ? c.counted : 0);
            count += end > at ? 1 : 0;
        }
    }
    return count / std::size(kPlaces);
}

TEST(OrdinaryTextTest, WhatIsNoTextIsPassedOrAKanaMiscounted) {
    const auto between = [](uint32_t code, uint32_t first, uint32_t last) { return code >= first && code <= last; };
    const auto bytes = [](uint32_t code) { return std::string{static_cast<char>(code >> 8), static_cast<char>(code)}; };
    const auto sjis = [&](uint32_t code) {
        const bool katakana = is_sjis_katakana(static_cast<uint8_t>(code >> 8)); // 'a' instead
        return Character{katakana ? "aa" : bytes(code), katakana ? 0 : 2,
                         katakana || (code < _sjis2unibe932_table_size && _sjis2unibe932_table[code] != 0),
                         between(code, 0x829F, 0x82F1) || between(code, 0x8340, 0x8393)};
    };
    const auto euc = [&](uint32_t code) {
        const bool half_width = between(code, 0x8EA1, 0x8EDF); // which counts by itself
        return Character{bytes(code), half_width ? 0 : 2,
                         code < _euc2unibecommon_table00_size && _euc2unibecommon_table00[code] != 0,
                         between(code, 0xA4A1, 0xA4F3) || between(code, 0xA5A1, 0xA5F3)};
    };
    const auto utf8 = [](uint32_t c) {
        return Character{std::string{static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                                     static_cast<char>(0x80 | (c & 0x3F))},
                         3, (kScanClasses[c] & kScanText) != 0, (kScanClasses[c] & kScanKana) != 0};
    };
    // Nearly all of JIS X 0208 is ordinary.
    EXPECT_GT(passed(0x8000, sjis, two_byte_run<OrdinarySjis>), 6300U);
    EXPECT_GT(passed(0x8000, euc, two_byte_run<OrdinaryEuc>), 6500U);
    EXPECT_GT(passed(0, utf8, ordinary_utf8_run), 20000U);
    OrdinaryRun found{};
    for (const char *broken : {"\xE3\x81", "\xE3\x62\x82", "\xE3\xC1\x82", "\xE3\x81\xE3", "\x81"}) {
        EXPECT_EQ(run_over(broken, 29, ordinary_utf8_run, found), 29U) << show_bytes(broken);
    }
    EXPECT_EQ(run_over("\xE3\x81\x82\x81", 29, ordinary_utf8_run, found), 32U);
    for (const size_t at : kPlaces) {
        EXPECT_EQ(run_over("\x8A\xBF\x1B\x8A\xBF", at, two_byte_run<OrdinarySjis>, found), at + 2);
        EXPECT_EQ(found.valid, 2);
    }
}

TEST(OrdinaryTextTest, IsolatedHalfWidthKatakanaAreMiscounted) {
    // The same text in both encodings: what stands between katakana, short and long runs of them, and what stops a run.
    const std::string others[][2] = {{"a", "a"}, {"\x8A\xBF", "\xB4\xC1"}, {"\x85\x40", "\xA9\xA1"}, {"\n12", "\n12"}};
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::string sjis;
        std::string euc;
        int64_t isolated = 0;
        while (sjis.size() < 500) {
            const size_t run = random() % 4 == 0 ? random() % 40 : random() % 3;
            for (size_t i = 0; i < run; ++i) {
                const char katakana = static_cast<char>(0xA1 + random() % 0x3F);
                sjis += katakana;
                euc += std::string("\x8E") + katakana;
            }
            isolated += run == 1 ? 1 : 0;
            const auto &other = others[random() % (round % 2 == 0 ? 2 : std::size(others))];
            for (size_t times = 1 + random() % (random() % 4 == 0 ? 40 : 2); times > 0; --times) {
                sjis += other[0];
                euc += other[1];
            }
        }
        JkcContext *ctx = create_jkc();
        SjisScanner sjis_scanner(*ctx, false);
        EucScanner euc_scanner(ctx);
        const auto scan = [&random](const std::string &text, auto &scanner) {
            const std::string readable = text + std::string(JKC_BLOCK_HEADROOM, '\0');
            const auto *begin = reinterpret_cast<const uint8_t *>(readable.data());
            const uint8_t *p = begin;
            scanner.origin.at = begin;
            for (size_t end = 0; end < text.size();) {
                end = std::min(text.size(), end + 1 + random() % 300);
                p = scanner.scan(p, begin + end, end == text.size());
            }
        };
        scan(sjis, sjis_scanner);
        scan(euc, euc_scanner);
        ASSERT_EQ(sjis_scanner.found.penalty, isolated) << round;
        ASSERT_EQ(euc_scanner.found.penalty, 2 * isolated) << round;
        ASSERT_EQ(sjis_scanner.found.valid, euc_scanner.found.valid) << round;
        release_jkc(ctx);
    }
}

} // namespace
} // namespace jkc::testing
