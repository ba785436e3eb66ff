// The scanners pass ordinary text many bytes at a time, without the tables. They must not pass anything else so.
#include <random>

#include <gtest/gtest.h>

#include "core/bytes.h"
#include "core/internal.h"
#include "judge/scan/euc.h"
#include "judge/scan/sjis.h"
#include "judge/scan/two_byte_run.h"
#include "judge/scan/utf8_run.h"
#include "tables/scan_classes.h"

namespace jkc::testing {
namespace {

// A text of 'a' with one character at `at`. A run stops within its last 32 bytes.
struct Text {
    Text(std::initializer_list<uint32_t> character, size_t at) {
        std::fill(std::begin(bytes), std::end(bytes), uint8_t{'a'});
        for (const uint32_t byte : character) {
            bytes[at++] = static_cast<uint8_t>(byte);
        }
    }
    const uint8_t *begin() const { return bytes; }
    const uint8_t *end() const { return bytes + 96; }
    uint8_t bytes[98];
};

constexpr size_t kPlaces[] = {0, 15, 30, 31, 40}; // across the edges of what is looked at together

// Checks a run over a text whose character at `at` is `length` bytes long; returns whether it passed the character.
bool passes(const OrdinaryRun &run, const Text &text, size_t at, int64_t length, bool mapped, bool kana) {
    const auto stopped = static_cast<size_t>(run.end - text.begin());
    if (stopped <= at) {
        EXPECT_EQ(stopped, at);
        EXPECT_EQ(run.valid + run.kana, 0);
        return false;
    }
    EXPECT_TRUE(mapped);
    EXPECT_EQ(run.valid, length);
    EXPECT_EQ(run.kana, kana ? length : 0);
    return true;
}

template <class Ordinary>
OrdinaryRun two_byte_run(const Text &text) {
    typename Ordinary::Katakana katakana;
    return ordinary_two_byte_run<Ordinary>(text.begin(), text.end(), katakana);
}

TEST(OrdinaryTextTest, AnUnmappedTwoByteCodeIsPassedOrAKanaMiscounted) {
    const auto between = [](uint32_t code, uint32_t first, uint32_t last) { return code >= first && code <= last; };
    size_t sjis = 0;
    size_t euc = 0;
    for (uint32_t code = 0x8000; code <= 0xFFFF; ++code) {
        SCOPED_TRACE(code);
        const uint32_t lead = code >> 8;
        const uint32_t trail = code & 0xFF;
        for (const size_t at : kPlaces) {
            const Text text({lead, trail}, at);
            if (!is_sjis_katakana(static_cast<uint8_t>(lead))) {
                sjis += passes(two_byte_run<OrdinarySjis>(text), text, at, 2,
                               code < _sjis2unibe932_table_size && _sjis2unibe932_table[code] != 0,
                               between(code, 0x829F, 0x82F1) || between(code, 0x8340, 0x8393));
            }
            const bool half_width = code >= 0x8EA1 && code <= 0x8EDF; // which counts by itself
            euc += passes(two_byte_run<OrdinaryEuc>(text), text, at, half_width ? 0 : 2,
                          code < _euc2unibecommon_table00_size && _euc2unibecommon_table00[code] != 0,
                          between(code, 0xA4A1, 0xA4F3) || between(code, 0xA5A1, 0xA5F3));
        }
    }
    // Nearly all of JIS X 0208 is ordinary.
    EXPECT_GT(sjis, 6300 * std::size(kPlaces));
    EXPECT_GT(euc, 6500 * std::size(kPlaces));
}

TEST(OrdinaryTextTest, AThreeByteCharacterThatIsNoTextIsPassedOrAKanaMiscounted) {
    size_t passed = 0;
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        SCOPED_TRACE(c);
        for (const size_t at : kPlaces) {
            const Text text({0xE0 | c >> 12, 0x80 | (c >> 6 & 0x3F), 0x80 | (c & 0x3F)}, at);
            passed += passes(ordinary_utf8_run(text.begin(), text.end()), text, at, 3,
                             (kScanClasses[c] & kScanText) != 0, (kScanClasses[c] & kScanKana) != 0);
        }
    }
    EXPECT_GT(passed, 20000 * std::size(kPlaces));
    for (const auto &broken : {std::initializer_list<uint32_t>{0xE3, 0x81},
                               {0xE3, 'b', 0x82},
                               {0xE3, 0xC1, 0x82},
                               {0xE3, 0x81, 0xE3},
                               {0x81},
                               {0xE3, 0x81, 0x82, 0x81}}) {
        const Text text(broken, 29);
        const OrdinaryRun run = ordinary_utf8_run(text.begin(), text.end());
        EXPECT_EQ(run.end - text.begin(), broken.size() == 4 ? 32 : 29);
    }
}

TEST(OrdinaryTextTest, AnEscapeIsPassed) {
    for (const size_t at : kPlaces) {
        const Text text({0x8A, 0xBF, kEsc, 0x8A, 0xBF}, at);
        const OrdinaryRun run = two_byte_run<OrdinarySjis>(text);
        EXPECT_EQ(run.end, text.begin() + at + 2);
        EXPECT_EQ(run.valid, 2);
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
        const auto scan = [&random](const std::string &text, const auto &scan_to) {
            const std::string readable = text + std::string(JKC_BLOCK_HEADROOM, '\0');
            const auto *begin = reinterpret_cast<const uint8_t *>(readable.data());
            const uint8_t *p = begin;
            for (size_t end = 0; end < text.size();) {
                end = std::min(text.size(), end + 1 + random() % 300);
                p = scan_to(p, begin + end, end == text.size(), begin);
            }
        };
        scan(sjis, [&](const uint8_t *p, const uint8_t *end, bool last, const uint8_t *begin) {
            return sjis_scanner.scan(p, end, last, begin, 0);
        });
        scan(euc, [&](const uint8_t *p, const uint8_t *end, bool last, const uint8_t * /*begin*/) {
            return euc_scanner.scan(p, end, last);
        });
        ASSERT_EQ(sjis_scanner.found.penalty, isolated) << round;
        ASSERT_EQ(euc_scanner.found.penalty, 2 * isolated) << round;
        ASSERT_EQ(sjis_scanner.found.valid, euc_scanner.found.valid) << round;
        release_jkc(ctx);
    }
}

} // namespace
} // namespace jkc::testing
