// Candidates that are out are not counted any further. That must not show in anything that a caller can see.
#include <gtest/gtest.h>

#include <iconv.h>

#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "judge/judge.h"
#include "judge/scan/utf16.h"
#include "support/exact_buffer.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

using std::string;

// What a judgement leaves behind, counted one way or the other.
string seen(const string &text, int preferred, bool plain_is_preferred, bool keep, bool line_ends, Counting counting) {
    const ExactBuffer input(text);
    JkcContext *ctx = create_jkc();
    ctx->in_ptr = input.data();
    ctx->in_end = ctx->in_ptr + input.size();
    ctx->mode = JKC_MODE_BUFFER;
    int type = 0;
    int ends = 0;
    const int result = judge(ctx, &type, line_ends ? &ends : nullptr, preferred, plain_is_preferred, keep, counting);
    std::ostringstream answers;
    answers << "result " << result << " type " << type << " ends " << ends << " beyond BMP " << int{ctx->srg_exists}
            << " decomposed " << int{ctx->utfmac_exists} << " EUC " << euc_source(*ctx);
    release_jkc(ctx);
    return answers.str();
}

string prose() {
    std::ifstream file(JKC_TEST_DATA "/../../bench/text/prose.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

string recoded(string text, const char *encoding) {
    const iconv_t cd = iconv_open(encoding, "UTF-8");
    string out(text.size() * 3, '\0');
    char *from = text.data();
    char *to = out.data();
    size_t left = text.size();
    size_t room = out.size();
    EXPECT_NE(iconv(cd, &from, &left, &to, &room), static_cast<size_t>(-1)) << encoding;
    iconv_close(cd);
    out.resize(out.size() - room);
    return out;
}

// What one scanner or another must not overlook once it has stopped counting: marks and bases, four-byte sequences,
// surrogates of both byte orders, codes of the EUC variants, escape sequences, NULs.
const std::vector<string> kTelling = {
    "\xCC\x86",         "\xCC\x88",         "\xE3\x82\x99",     "\xE3\x82\x9A",     "\xE3\x81\x8B\xE3\x82\x99",
    "\xD0\xB8\xCC\x86", "\xF0\x9F\x98\x80", "\xD8\x40\xDC\x0B", "\x40\xD8\x0B\xDC", "\x30\x4B\x30\x99",
    "\x4B\x30\x99\x30", "\x30\xD8\x30\x99", "\x8F\xB0\xA1",     "\xAD\xA1",         "\xF9\xA1",
    "\x8E\xB1",         "\x1B$B",           "\x1B(B",           "\x1B$(Q",          "\x8F\xF3\xF3",
    "\x04\x38\x03\x06", "\x38\x04\x06\x03", string(2, '\0'),
};

class TextMaker {
public:
    explicit TextMaker(unsigned seed) : random_(seed) {
        for (const char *encoding : {"UTF-8", "CP932", "EUC-JP", "ISO-2022-JP", "UTF-16LE", "UTF-16BE"}) {
            sources_.push_back(recoded(prose(), encoding));
        }
    }

    // Pieces of text in several encodings, noise and telling sequences, damaged here and there.
    string next() {
        string text;
        for (size_t pieces = 1 + below(4); pieces > 0; --pieces) {
            switch (below(6)) {
            case 0: // bytes of a narrow or wide range
                append_noise(text, below(256), 1 + below(256), below(3000));
                break;
            case 1:
                append_telling(text, 1 + below(below(2) != 0 ? 4000 : 3));
                break;
            default:
                append_source(text, below(12000));
            }
        }
        for (size_t damages = below(2) * below(40); damages > 0 && !text.empty(); --damages) {
            const size_t at = below(text.size());
            switch (below(3)) {
            case 0:
                text[at] = byte();
                break;
            case 1:
                text.insert(at, telling());
                break;
            default:
                text.erase(at, 1 + below(3));
            }
        }
        return text;
    }

    size_t below(size_t limit) { return limit == 0 ? 0 : random_() % limit; }

private:
    char byte() { return static_cast<char>(random_()); }
    const string &telling() { return kTelling[below(kTelling.size())]; }

    void append_noise(string &text, size_t lowest, size_t range, size_t length) {
        for (; length > 0; --length) {
            text += static_cast<char>(lowest + below(range));
        }
    }
    void append_telling(string &text, size_t times) {
        for (const string &sequence = telling(); times > 0; --times) {
            text += sequence;
            text += below(4) == 0 ? telling() : "";
        }
    }
    void append_source(string &text, size_t length) {
        const string &source = sources_[below(sources_.size())];
        for (size_t at = below(source.size()) & ~size_t{1}; length > 0; at = 0) {
            const size_t taken = std::min(length, source.size() - at);
            text.append(source, at, taken);
            length -= taken;
        }
    }

    std::mt19937 random_;
    std::vector<string> sources_;
};

void expect_same(const string &text, int preferred, bool hint, bool keep, bool line_ends, const string &what) {
    const string expected = seen(text, preferred, hint, keep, line_ends, Counting::kToTheEnd);
    ASSERT_EQ(seen(text, preferred, hint, keep, line_ends, Counting::kWhileItCounts), expected) << what;
    ASSERT_EQ(seen(text, preferred, hint, keep, line_ends, Counting::kEucToTheEnd), expected)
        << what << ", EUC to the end";
}

TEST(JudgeCountingTest, WhatABlockEdgeCutsIsFollowedInTheNextBlock) {
    for (const char *encoding : {"UTF-8", "CP932", "EUC-JP", "UTF-16LE", "UTF-16BE"}) {
        string source = recoded(prose(), encoding);
        while (source.size() < 3 * size_t{JKC_BLOCK_READ}) {
            source += source;
        }
        for (const string &sequence : kTelling) {
            for (size_t before = 0; before <= sequence.size(); ++before) {
                string text = source;
                text.replace(2 * size_t{JKC_BLOCK_READ} - before, sequence.size(), sequence);
                expect_same(text, 0, false, false, false,
                            string(encoding).append(" ").append(std::to_string(before)).append(" ").append(sequence));
            }
        }
    }
}

TEST(JudgeCountingTest, NothingShowsThatCandidatesAreDropped) {
    constexpr int kPreferred[] = {0,
                                  JKC_TYPE_SJIS,
                                  JKC_TYPE_EUC,
                                  JKC_TYPE_EUC_20932,
                                  JKC_TYPE_EUC_51932,
                                  JKC_TYPE_EUC_MS,
                                  JKC_TYPE_UTF16BE,
                                  JKC_TYPE_UTF16LE,
                                  JKC_TYPE_UTF8};
    TextMaker texts(1);
    for (int i = 0; i < 1500; ++i) {
        const string text = texts.next();
        const int preferred = kPreferred[texts.below(std::size(kPreferred))];
        const bool hint = texts.below(8) == 0;
        const bool keep = texts.below(2) == 0;
        const bool line_ends = texts.below(4) == 0;
        expect_same(text, preferred, hint, keep, line_ends,
                    string("text ").append(std::to_string(i)).append(", preferred ").append(std::to_string(preferred)));
    }
}

// One counts both byte orders, the other one alone, as long as that can win.
TEST(JudgeCountingTest, OneByteOrderCountedAloneFindsSomethingElse) {
    // Kana and kanji, then what is no evidence, or belongs together with others in one byte order or the other.
    const string pool[] = {"\x42\x30", "\x4B\x30", "\x22\x6F", "a\1",      "\x99\x30",     "\x38\x04",
                           "\x06\x03", "\x30\x99", "\x30\x9A", "\x40\xD8", "\x0B\xDC",     "\xD8\x40",
                           "\xDC\x4E", "\xFD\xFF", "\xFF\xFD", "\x81\xE0", string(2, '\0')};
    std::mt19937 random(1);
    for (int round = 0; round < 4000; ++round) {
        string units;
        while (units.size() < 300) {
            const string &unit = pool[random() % (random() % 32 == 0 ? std::size(pool) : 4)];
            for (size_t times = random() % 3 == 0 ? 1 + random() % 12 : 1; times > 0; --times) {
                units.append(unit);
            }
        }
        units.append(JKC_BLOCK_HEADROOM, '\0'); // not scanned, but read
        const auto *begin = reinterpret_cast<const uint8_t *>(units.data());
        const uint8_t *end = begin + units.size() - JKC_BLOCK_HEADROOM;
        for (const auto side : {&Utf16Scanner::little, &Utf16Scanner::big}) {
            Utf16Scanner both(false);
            Utf16Scanner alone(true);
            (side == &Utf16Scanner::little ? alone.big : alone.little).found.errors = kTooManyErrors;
            both.scan(begin, end, true);
            alone.scan(begin, end, true);
            const auto seen = [side](const Utf16Scanner &scanner) {
                const Utf16Scanner::Side &counts = scanner.*side;
                return counts.found.errors < kTooManyErrors
                           ? std::tuple(counts.found.valid, counts.found.errors, counts.found.kana, counts.surrogates)
                           : std::tuple(int64_t{0}, kTooManyErrors, int64_t{0}, int64_t{0});
            };
            ASSERT_EQ(seen(alone), seen(both)) << round;
            ASSERT_EQ(both.big.surrogates + both.little.surrogates > 0,
                      alone.big.surrogates + alone.little.surrogates > 0);
            ASSERT_EQ(both.big.decomposed + both.little.decomposed > 0,
                      alone.big.decomposed + alone.little.decomposed > 0);
        }
    }
}

} // namespace
} // namespace jkc::testing
