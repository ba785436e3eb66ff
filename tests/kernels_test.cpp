// The kernels of each set that the processor has, against plain code: at every alignment and of every length.
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "convert/encoders.h"
#include "convert/sequences.h"
#include "judge/scan/pattern.h"
#include "judge/scan/two_byte_run.h"
#include "judge/scan/utf8_run.h"
#include "kernels/patterns.h"
#include "support/collecting_writer.h"
#include "support/conversion.h"
#include "support/exact_buffer.h"
#include "support/selection.h"
#include "tables/scan_classes.h"

namespace jkc::testing {
namespace {

using std::string;
using std::vector;

constexpr size_t kLongest = 300;
constexpr size_t kAlignments = 64;

class KernelsTest : public ::testing::TestWithParam<const Kernels *> {
protected:
    KernelsTest() : ctx_(create_jkc()) {}
    ~KernelsTest() override {
        use_kernels(*chosen_);
        release_jkc(ctx_);
    }

    size_t below(size_t limit) { return random_() % limit; }

    // Real text, and text of characters that matter to a kernel, damaged here and there.
    string text(int encoding) {
        static const string prose = [] {
            std::ifstream file(JKC_TEST_DATA "/../../bench/text/prose.txt", std::ios::binary);
            return string(std::istreambuf_iterator<char>(file), {});
        }();
        static const string pool[] = {"a", "\n", "\r\n", "あ", "ア", "漢", "。", "Ａ",
                                      "ｱ", "é",  "Я",    "→",  "￣", "¥",  "‾"};
        const bool is_wide = encoding == JKC_TYPE_UTF16LE || encoding == JKC_TYPE_UTF16BE;
        string utf8;
        if (below(3) == 0) {
            size_t at = below(prose.size() - 3 * kLongest);
            while (is_trail(static_cast<uint8_t>(prose[at]))) {
                ++at;
            }
            utf8 = prose.substr(at, 2 * kLongest);
        }
        const size_t variety = 1 + below(std::size(pool));
        while (utf8.size() < 2 * kLongest) {
            for (size_t times = 1 + below(40), which = below(variety); times > 0; --times) {
                utf8 += pool[which];
            }
        }
        string made = recoded(utf8, JKC_TYPE_UTF8, encoding);
        for (size_t damages = below(2) * below(8); damages > 0; --damages) {
            made[below(made.size())] = static_cast<char>(below(256));
        }
        made.resize(is_wide ? made.size() & ~size_t{1} : made.size());
        return made;
    }

    // Calls check(bytes, end) for the front of a text, which lies at each alignment in memory of its exact size.
    template <class Check>
    void for_all_places(int encoding, size_t rounds, const Check &check) {
        for (size_t round = 0; round < rounds; ++round) {
            const string made = text(encoding);
            for (size_t length = 0; length <= kLongest; ++length) {
                const size_t before = (length + round) % kAlignments;
                const ExactBuffer bytes(string(before, 'a') + made.substr(0, length));
                check(bytes.data() + before, bytes.data() + bytes.size());
                if (HasFatalFailure()) {
                    FAIL() << show_bytes(made.substr(0, length));
                }
            }
        }
    }

    const Kernels &set() const { return *GetParam(); }

    const Kernels *chosen_ = &kernels();
    JkcContext *ctx_;
    std::mt19937 random_{1};
};

TEST_P(KernelsTest, CodeUnitsAreCountedOtherwise) {
    for (CountUnits *const kernel : {set().count_utf16be, set().count_utf16le}) {
        const bool is_big = kernel == set().count_utf16be;
        const auto check = [=](const uint8_t *p, const uint8_t *end) {
            if (kernel == nullptr) {
                return;
            }
            const UnitRun run = kernel(p, end, kScanClasses.data());
            ASSERT_LE(run.end, end);
            int64_t evidence = 0;
            int64_t kana = 0;
            for (const uint8_t *at = p; at < run.end; at += 2) {
                const uint8_t bits = kScanClasses[is_big ? BigEndian::unit(at) : LittleEndian::unit(at)];
                evidence += (bits & kScanEvidence) != 0 ? 1 : 0;
                kana += (bits & kScanKana) != 0 ? 1 : 0;
            }
            ASSERT_EQ(run.evidence, evidence);
            ASSERT_EQ(run.kana, kana);
        };
        for_all_places(is_big ? JKC_TYPE_UTF16BE : JKC_TYPE_UTF16LE, kAlignments, check);
    }
}

// Runs stop where the plain ones do, but for half-width katakana.
TEST_P(KernelsTest, OrdinaryTextIsCountedOtherwise) {
    const auto check = [](CountRun *kernel, auto plain, auto is_katakana) {
        return [=](const uint8_t *p, const uint8_t *end) {
            if (kernel == nullptr) {
                return;
            }
            const OrdinaryRun run = kernel(p, end);
            const auto plain_run = [&](const uint8_t *from, const uint8_t *to) {
                const string padded = string(from, to) + string(kWide + kStride, '\0');
                const auto *begin = reinterpret_cast<const uint8_t *>(padded.data());
                OrdinaryRun found = plain(begin, begin + (to - from) + kStride);
                found.end = from + std::min(found.end - begin, to - from);
                return found;
            };
            const OrdinaryRun same = plain_run(p, run.end);
            ASSERT_EQ(same.end, run.end);
            ASSERT_EQ(same.valid, run.valid);
            ASSERT_EQ(same.kana, run.kana);
            ASSERT_TRUE(run.end == end || plain_run(run.end, end).end == run.end || is_katakana(run.end));
        };
    };
    const auto two_byte = [](auto kind) {
        using Ordinary = decltype(kind);
        return [](const uint8_t *p, const uint8_t *end) {
            typename Ordinary::Katakana katakana;
            return ordinary_two_byte_run<Ordinary>(p, end, katakana);
        };
    };
    const auto never = [](const uint8_t *) { return false; };
    for_all_places(JKC_TYPE_UTF8, kAlignments, check(set().count_utf8, &ordinary_utf8_run, never));
    for_all_places(JKC_TYPE_SJIS, kAlignments, check(set().count_sjis, two_byte(OrdinarySjis()), [](const uint8_t *p) {
                       return is_sjis_katakana(*p);
                   }));
    for_all_places(JKC_TYPE_EUC, kAlignments,
                   check(set().count_euc, two_byte(OrdinaryEuc()), [](const uint8_t *p) { return *p == kSs2; }));
}

// What is decoded are the characters that a strict look finds.
bool is_clean(const Sequence &found) { return found.kind == Sequence::kCharacter || found.kind == Sequence::kPlain; }
template <class Order>
Sequence look_at_unit(const uint8_t *p, size_t left) {
    const uint32_t unit = left < 2 ? 0xD800 : Order::unit(p);
    return is_surrogate(unit) ? ill_formed(2) : character(2, unit);
}
TEST_P(KernelsTest, CharactersAreDecodedOtherwise) {
    const auto check = [this](Decode *kernel, LookUpTable table, const auto &look) {
        return [this, kernel, table, look](const uint8_t *p, const uint8_t *end) {
            constexpr ptrdiff_t kBehind = 2;
            if (kernel == nullptr || end - p < kBehind) {
                return;
            }
            const LineEndStops stops = {below(2) == 0 ? LineEndStops::kNoStop : kCr, LineEndStops::kNoStop};
            uint16_t units[kMostTogether + kUnitsBehind];
            const uint8_t *const limit = end - kBehind;
            const Decoded decoded = kernel(p, limit, stops, units);
            const size_t count = table.entries != nullptr ? set().look_up(units, decoded.count, table) : decoded.count;
            const uint8_t *at = p;
            for (size_t i = 0; i < count; ++i) {
                const Sequence found = look(at, static_cast<size_t>(end - at));
                ASSERT_TRUE(is_clean(found));
                ASSERT_LT(at, limit);
                ASSERT_EQ(units[i], found.kind == Sequence::kPlain ? *at : found.c) << i;
                at += found.length;
            }
            if (count == decoded.count) {
                ASSERT_EQ(decoded.p, at);
                ASSERT_TRUE(decoded.stopped || decoded.ascii || at >= limit);
            }
            if (at < limit) { // nothing that is clean stops it
                const Sequence found = look(at, static_cast<size_t>(end - at));
                ASSERT_TRUE(decoded.ascii || !is_clean(found) || found.length > 3 || *at == stops.cr ||
                            found.c == stops.cr || found.c == LineEndStops::kNoStop || *at == kSs2 || *at == kSs3)
                    << at - p;
            }
        };
    };
    select_source_tables(*ctx_, JKC_TYPE_SJIS);
    select_source_tables(*ctx_, JKC_TYPE_EUC);
    const auto sjis = [this](const uint8_t *p, size_t left) { return look_at_sjis(p, left, *ctx_, true); };
    const auto euc = [this](const uint8_t *p, size_t left) { return look_at_euc(p, left, *ctx_, true); };
    for_all_places(JKC_TYPE_UTF8, kAlignments, check(set().decode_utf8, {}, look_at_utf8));
    for_all_places(JKC_TYPE_SJIS, kAlignments,
                   check(set().decode_sjis, {ctx_->sjis_src_table, ctx_->sjis_src_count}, sjis));
    for_all_places(JKC_TYPE_UTF16BE, kAlignments, check(set().decode_utf16be, {}, look_at_unit<BigEndian>));
    for_all_places(JKC_TYPE_UTF16LE, kAlignments, check(set().decode_utf16le, {}, look_at_unit<LittleEndian>));
    for_all_places(JKC_TYPE_EUC, kAlignments, check(set().decode_euc, {ctx_->euc_src_table, ctx_->euc_src_count}, euc));
}

// What is encoded are the characters that an encoder takes one by one.
TEST_P(KernelsTest, UnitsAreEncodedOtherwise) {
    if (set().encode_legacy == nullptr) {
        return;
    }
    use_kernels(set());
    static const uint16_t pool[] = {'a',  0,      '\n',   0x7F, 0x3042, 0x6F22, 0x30A2, 0x7FF,  0x800,
                                    0x80, 0xFF71, 0x203E, 0xA5, 0xF8F0, 0x2460, 0xFFFD, 0xFFFF, 0x4E28};
    const auto check = [this](auto made) {
        auto plain = made;
        vector<uint16_t> units(below(kMostTogether + 1));
        const size_t variety = 1 + below(below(2) == 0 ? 7 : std::size(pool));
        for (uint16_t &unit : units) {
            unit = below(8) == 0 ? static_cast<uint16_t>(below(0xD800)) : pool[below(variety)];
        }
        const size_t count = units.size();
        units.resize(count + kUnitsBehind);
        string bytes(6 * count + kBytesBehind, '\0');
        auto *begin = reinterpret_cast<uint8_t *>(bytes.data());
        const Encoded encoded = made.encode(units.data(), count, begin);
        bytes.resize(static_cast<size_t>(encoded.o - begin));
        string expected(6 * count + kBytesBehind, '\0');
        auto *o = reinterpret_cast<uint8_t *>(expected.data());
        auto *const expected_begin = o;
        for (size_t i = 0; i < encoded.count; ++i) {
            o = units[i] < 0x80 ? plain.ascii(o, static_cast<uint8_t>(units[i])) : plain.put(o, units[i]);
            ASSERT_NE(o, nullptr) << units[i];
        }
        expected.resize(static_cast<size_t>(o - expected_begin));
        ASSERT_EQ(show_bytes(bytes), show_bytes(expected));
        if (encoded.count < count) { // what stopped it is told by its bytes, or treated in a way of its own
            const uint16_t unit = units[encoded.count];
            uint8_t written[8];
            const uint8_t *behind = plain.put(written, unit);
            ASSERT_TRUE(is_half_width_katakana(unit) || unit == kOverline || unit == kYenSign || behind == nullptr ||
                        behind - written != 2 || made.is_lossy(unit))
                << unit;
        }
    };
    select_target_tables(*ctx_, JKC_TYPE_SJIS);
    select_target_tables(*ctx_, JKC_TYPE_JIS);
    for (int round = 0; round < 2000 && !HasFatalFailure(); ++round) {
        check(SjisEncoder(ctx_));
        select_target_tables(*ctx_, round % 2 == 0 ? JKC_TYPE_EUC : JKC_TYPE_EUC_MS);
        check(EucEncoder<Cascade::kNone>(ctx_));
        if (JisEncoder::has_kernel()) {
            check(JisEncoder(ctx_));
        }
        check(Utf8Encoder(ctx_));
        check(Utf16Encoder<BigEndian>(ctx_));
        check(Utf16Encoder<LittleEndian>(ctx_));
    }
}

TEST_P(KernelsTest, APatternIsFoundElsewhere) {
    use_kernels(set());
    const auto check = [this](auto pattern) {
        using Pattern = decltype(pattern);
        for (int round = 0; round < 4000; ++round) {
            string bytes = string(below(kLongest), below(2) == 0 ? 'a' : '\x82');
            const string needles[] = {"\xF0\x9F\x98\x80", "\xE3\x82\x99", "\xCC\x88",
                                      "\xD8\x40\xDC\x0B", "\x30\x99",     "\x06\x03"};
            for (size_t times = below(3); times > 0; --times) {
                bytes.insert(below(bytes.size() + 1), needles[below(std::size(needles))]);
            }
            const string readable = bytes + string(kPatternReach + kWide, '\0');
            const auto *begin = reinterpret_cast<const uint8_t *>(readable.data());
            ASSERT_EQ(find_pattern<Pattern>(begin, begin + bytes.size()) - begin,
                      find_plain_pattern<Pattern>(begin, begin + bytes.size()) - begin)
                << show_bytes(bytes);
        }
    };
    const auto last_by = [](const Kernels &kernels, const uint8_t *begin, const uint8_t *end) {
        use_kernels(kernels);
        const uint8_t *found = find_last_pattern<DecisivePattern>(begin, end);
        return found != nullptr ? found - begin : -1;
    };
    for (int round = 0; round < 4000; ++round) {
        string bytes(below(kLongest), 'a');
        for (size_t times = below(3); times > 0; --times) {
            bytes.insert(below(bytes.size() + 1), below(2) == 0 ? "\xE3\x82" : "\xC3\xA9");
        }
        const string readable = bytes + string(kPatternReach + kWide, '\0');
        const auto *begin = reinterpret_cast<const uint8_t *>(readable.data());
        ASSERT_EQ(last_by(set(), begin, begin + bytes.size()), last_by(**kernel_sets(), begin, begin + bytes.size()))
            << show_bytes(bytes);
    }
    use_kernels(set());
    check(FourBytePattern());
    check(Utf8MarkPattern());
    check(PairPattern());
    check(Utf16MarkPattern());
}

// Whole calls: the same pieces, records and tables as without kernels.
TEST_P(KernelsTest, AConversionShowsThem) {
    constexpr int kTypes[] = {JKC_TYPE_UTF8,    JKC_TYPE_SJIS,    JKC_TYPE_EUC,   JKC_TYPE_JIS,
                              JKC_TYPE_UTF16LE, JKC_TYPE_UTF16BE, JKC_TYPE_EUC_MS};
    for (int round = 0; round < 3000; ++round) {
        const int from = kTypes[below(6)];
        const int to = kTypes[below(std::size(kTypes))];
        string made;
        for (size_t texts = 1 + below(40); texts > 0; --texts) {
            made += text(from);
        }
        const ExactBuffer input(made);
        const uint32_t lines = below(2) == 0 ? 0 : static_cast<uint32_t>(below(4));
        const auto seen = [&](const Kernels &kernels) {
            use_kernels(kernels);
            JkcContext *ctx = create_jkc();
            ctx->mode = lines;
            CollectingWriter writer;
            const int32_t status = jkc_convert_buffer(ctx, input.data(), input.size(), from, to, false, nullptr,
                                                      CollectingWriter::write, &writer);
            string found = std::to_string(status) + judged_state(*ctx) + ' ' + std::to_string(ctx->nochar_count);
            for (const auto number : {ctx->first_nochar_index, ctx->last_nochar_index, ctx->first_nochar,
                                      ctx->last_nochar, ctx->read_offset}) {
                found += ' ' + std::to_string(number);
            }
            for (const string &piece : writer.pieces) {
                found += '|' + show_bytes(piece);
            }
            release_jkc(ctx);
            return found;
        };
        ASSERT_EQ(seen(set()), seen(**kernel_sets())) << from << " to " << to;
    }
}

vector<const Kernels *> sets() {
    vector<const Kernels *> found;
    for (const Kernels *const *set = kernel_sets(); *set != nullptr; ++set) {
        found.push_back(*set);
    }
    return found;
}
INSTANTIATE_TEST_SUITE_P(, KernelsTest, ::testing::ValuesIn(sets()),
                         [](const auto &info) { return string(info.param->name); });

} // namespace
} // namespace jkc::testing
