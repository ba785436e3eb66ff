// Candidates that are out are not counted any further. That must not show in anything that a caller can see.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <tuple>

#include "judge/judge.h"
#include "judge/scan/utf16.h"
#include "support/conversion.h"
#include "support/exact_buffer.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

using std::string;

constexpr int kEncodings[] = {JKC_TYPE_UTF8, JKC_TYPE_SJIS,    JKC_TYPE_EUC,
                              JKC_TYPE_JIS,  JKC_TYPE_UTF16LE, JKC_TYPE_UTF16BE};

string prose(int code_type) {
    std::ifstream file(JKC_TEST_DATA "/../../bench/text/prose.txt", std::ios::binary);
    return recoded({std::istreambuf_iterator<char>(file), {}}, JKC_TYPE_UTF8, code_type);
}

// What one scanner or another must not overlook once it has stopped counting: marks and bases, four-byte sequences,
// surrogates of both byte orders, codes of the EUC variants, escape sequences, NULs.
const string kTelling[] = {
    "\xCC\x86",         "\xCC\x88",         "\xE3\x82\x99",     "\xE3\x82\x9A",     "\xE3\x81\x8B\xE3\x82\x99",
    "\xD0\xB8\xCC\x86", "\xF0\x9F\x98\x80", "\xD8\x40\xDC\x0B", "\x40\xD8\x0B\xDC", "\x30\x4B\x30\x99",
    "\x4B\x30\x99\x30", "\x30\xD8\x30\x99", "\x8F\xB0\xA1",     "\xAD\xA1",         "\xF9\xA1",
    "\x8E\xB1",         "\x1B$B",           "\x1B(B",           "\x1B$(Q",          "\x8F\xF3\xF3",
    "\x04\x38\x03\x06", "\x38\x04\x06\x03", string(2, '\0'),
};

class TextMaker {
public:
    TextMaker() {
        for (const int encoding : kEncodings) {
            sources_.push_back(prose(encoding));
        }
    }

    // Pieces of text in several encodings, noise and telling sequences, damaged here and there.
    string next() {
        string text;
        for (size_t pieces = 1 + below(4); pieces > 0; --pieces) {
            const string &source = sources_[below(sources_.size())];
            const string &sequence = telling();
            const size_t lowest = below(256);
            const size_t range = 1 + below(256);
            const size_t kind = below(6);
            const size_t end = text.size() + below(kind == 0 ? 3000 : kind == 1 ? 4000 : 12000);
            for (size_t at = below(source.size()) & ~size_t{1}; text.size() < end; at = 0) {
                if (kind == 0) { // bytes of a narrow or wide range
                    text += static_cast<char>(lowest + below(range));
                } else if (kind == 1) {
                    text += below(4) == 0 ? telling() : sequence;
                } else {
                    text.append(source, at, end - text.size());
                }
            }
            text += kind == 1 ? telling() : "";
        }
        for (size_t damages = below(2) * below(40); damages > 0 && !text.empty(); --damages) {
            text.replace(below(text.size()), below(3), below(2) == 0 ? telling() : string(below(2), 'a'));
        }
        return text;
    }

    size_t below(size_t limit) { return limit == 0 ? 0 : random_() % limit; }

private:
    const string &telling() { return kTelling[below(std::size(kTelling))]; }

    std::mt19937 random_{1};
    std::vector<string> sources_;
};

struct Request {
    int preferred = 0;
    bool hint = false, keep = false, line_ends = false;
};

// What a judgement leaves behind, counted one way or the other.
string seen(const string &text, const Request &request, Counting counting) {
    const ExactBuffer input(text);
    JkcContext *ctx = create_jkc();
    ctx->in_ptr = input.data();
    ctx->in_end = ctx->in_ptr + input.size();
    ctx->mode = JKC_MODE_BUFFER;
    int type = 0;
    int ends = 0;
    const int result = judge(ctx, WorkArea(), &type, request.line_ends ? &ends : nullptr, request.preferred,
                             request.hint, request.keep, counting);
    string found =
        std::to_string(result) + " type=" + std::to_string(type) + " eol=" + std::to_string(ends) + judged_state(*ctx);
    release_jkc(ctx);
    return found;
}

void expect_same(const string &text, const Request &request) {
    const string expected = seen(text, request, Counting::kToTheEnd);
    ASSERT_EQ(seen(text, request, Counting::kWhileItCounts), expected) << request.preferred;
    ASSERT_EQ(seen(text, request, Counting::kEucToTheEnd), expected) << request.preferred << ", EUC to the end";
}

TEST(JudgeCountingTest, WhatABlockEdgeCutsIsFollowedInTheNextBlock) {
    for (const int encoding : kEncodings) {
        string source = prose(encoding);
        while (source.size() < 3 * size_t{JKC_BLOCK_READ}) {
            source += source;
        }
        for (const string &sequence : kTelling) {
            for (size_t before = 0; before <= sequence.size(); ++before) {
                SCOPED_TRACE(std::to_string(encoding) + " " + show_bytes(sequence) + " " + std::to_string(before));
                string text = source;
                text.replace(2 * size_t{JKC_BLOCK_READ} - before, sequence.size(), sequence);
                expect_same(text, {});
            }
        }
    }
}

TEST(JudgeCountingTest, NothingShowsThatCandidatesAreDropped) {
    TextMaker texts;
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE(i);
        const string text = texts.next();
        const int preferred = texts.below(2) == 0 ? 0 : kCandidateTypes[texts.below(kCandidates)];
        expect_same(text, {preferred, texts.below(8) == 0, texts.below(2) == 0, texts.below(4) == 0});
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
        for (const auto side : {&Utf16Scanner::little, &Utf16Scanner::big}) {
            // Evidence of the side while it can win; whether marks and surrogates were seen in either.
            const auto seen = [&](bool alone) {
                Utf16Scanner scanner(alone);
                if (alone) {
                    (side == &Utf16Scanner::little ? scanner.big : scanner.little).found.errors = kTooManyErrors;
                }
                scanner.scan(begin, begin + units.size() - JKC_BLOCK_HEADROOM, true);
                const auto &[found, surrogates, decomposed] = scanner.*side;
                const bool out = found.errors >= kTooManyErrors;
                return std::tuple(std::min(found.errors, kTooManyErrors), out ? 0 : found.valid, out ? 0 : found.kana,
                                  out ? 0 : surrogates, scanner.big.surrogates + scanner.little.surrogates > 0,
                                  scanner.big.decomposed + scanner.little.decomposed > 0);
            };
            ASSERT_EQ(seen(true), seen(false)) << round;
        }
    }
}

} // namespace
} // namespace jkc::testing
