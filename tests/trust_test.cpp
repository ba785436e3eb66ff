// What a decision says the text is, and what no converter then reports as lost, comes back. Texts are cut, spliced from
// two encodings and damaged at random.
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "jkc.h"
#include "jkc/detector.h"
#include "support/same_text.h"

namespace jkc::testing {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kTexts = 10000;
#else
constexpr int kTexts = 100000;
#endif

constexpr int kEncodings[] = {JKC_TYPE_UTF8, JKC_TYPE_SJIS,    JKC_TYPE_EUC,     JKC_TYPE_EUC_MS,
                              JKC_TYPE_JIS,  JKC_TYPE_UTF16LE, JKC_TYPE_UTF16BE, JKC_TYPE_UTF8_BOM};

int decide(const std::string &text) {
    JkcDetector *detector = nullptr;
    jkc_detector_create(&detector, nullptr);
    jkc_detector_feed(detector, reinterpret_cast<const uint8_t *>(text.data()), text.size());
    JkcDetection found = {};
    found.size = sizeof found;
    jkc_detector_finish(detector, &found);
    jkc_detector_release(detector);
    return found.decision;
}

std::u16string read_texts() {
    std::string all;
    for (const char *name : {"prose.txt", "markup.html", "ascii.txt"}) {
        std::ifstream file(std::string(JKC_BENCH_TEXT) + "/" + name, std::ios::binary);
        all.append(std::istreambuf_iterator<char>(file), {});
    }
    const std::string units = converted(all, JKC_TYPE_UTF8, kUtf16).text;
    std::u16string text(units.size() / 2, u'\0');
    memcpy(text.data(), units.data(), units.size());
    return text;
}

class Texts {
public:
    std::string next() {
        std::string text = piece();
        if (one_in(4)) {
            text += piece();
        }
        for (size_t flips = one_in(3) ? below(4) : 0; flips > 0 && !text.empty(); --flips) {
            text[below(text.size())] = static_cast<char>(below(256));
        }
        if (one_in(8)) {
            text.resize(below(text.size() + 1));
        }
        return text;
    }
    size_t below(size_t bound) { return std::uniform_int_distribution<size_t>(0, bound - 1)(random_); }

private:
    bool one_in(size_t n) { return below(n) == 0; }
    std::string piece() {
        const size_t begin = below(all_.size());
        const std::u16string units = all_.substr(begin, 1 + below(one_in(4) ? 400 : 24));
        const std::string bytes(reinterpret_cast<const char *>(units.data()), 2 * units.size());
        return converted(bytes, kUtf16, kEncodings[below(std::size(kEncodings))]).text;
    }

    std::u16string all_ = read_texts();
    std::mt19937 random_{20260101};
};

TEST(Trust, WhatIsConvertedWithoutALossComesBack) {
    Texts texts;
    int compared = 0;
    int failed = 0;
    for (int i = 0; i < kTexts && failed < 10; ++i) {
        const std::string text = texts.next();
        const int source = decide(text);
        if (source <= JKC_TYPE_EMPTY) {
            continue;
        }
        const int target = kEncodings[texts.below(std::size(kEncodings))];
        const Converted there = converted(text, source, target);
        EXPECT_EQ(there.status, JKC_SUCCESS);
        if (there.lost > 0) {
            continue;
        }
        ++compared;
        if (!is_same_text(text, source, there.text, target)) {
            ++failed;
            ADD_FAILURE() << "case " << i << ": " << source << " to " << target << ": "
                          << ::testing::PrintToString(text);
        }
    }
    EXPECT_GT(compared, kTexts / 2);
}

} // namespace
} // namespace jkc::testing
