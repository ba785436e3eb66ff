// What a decision says the text is, and what no converter then reports as lost, comes back. Texts are cut, spliced from
// two encodings and damaged at random.
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "jkc.h"
#include "jkc/converter.h"
#include "jkc/detector.h"

namespace jkc::testing {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kTexts = 10000;
#else
constexpr int kTexts = 100000;
#endif

constexpr int kEncodings[] = {JKC_TYPE_UTF8, JKC_TYPE_SJIS,    JKC_TYPE_EUC,     JKC_TYPE_EUC_MS,
                              JKC_TYPE_JIS,  JKC_TYPE_UTF16LE, JKC_TYPE_UTF16BE, JKC_TYPE_UTF8_BOM};

struct Converted {
    std::string text;
    uint64_t lost = 0;
};

Converted convert(const std::string &text, int from, int to) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.on_loss = JKC_ON_LOSS_REPLACE;
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    uint8_t *out = nullptr;
    size_t length = 0;
    const int32_t status = jkc_convert_memory(from, to, reinterpret_cast<const uint8_t *>(text.data()), text.size(),
                                              &options, &out, &length, &losses);
    Converted converted{status == JKC_SUCCESS ? std::string(reinterpret_cast<char *>(out), length) : "",
                        losses.ill_formed + losses.unmappable + losses.truncated};
    EXPECT_EQ(status, JKC_SUCCESS);
    jkc_free(out);
    return converted;
}

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
    const std::string units = convert(all, JKC_TYPE_UTF8, JKC_TYPE_UTF16LE).text;
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
        return convert(bytes, JKC_TYPE_UTF16LE, kEncodings[below(std::size(kEncodings))]).text;
    }

    std::u16string all_ = read_texts();
    std::mt19937 random_{20260101};
};

// As UTF-16, with the look-alikes that share a code in one mapping or another made one.
std::u16string read_as(const std::string &text, int type) {
    constexpr char16_t kLookAlikes[][2] = {{0xA2, 0xFFE0},   {0xA3, 0xFFE1},   {0xA5, '\\'},     {0xA6, 0xFFE4},
                                           {0xAC, 0xFFE2},   {0x2014, 0x2015}, {0x2016, 0x2225}, {0x203E, '~'},
                                           {0x2212, 0xFF0D}, {0x301C, 0xFF5E}};
    const std::string bytes = convert(text, type, JKC_TYPE_UTF16LE).text;
    std::u16string units(bytes.size() / 2, u'\0');
    memcpy(units.data(), bytes.data(), bytes.size());
    for (char16_t &unit : units) {
        for (const auto &[one, other] : kLookAlikes) {
            unit = unit == one ? other : unit;
        }
    }
    return units;
}

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
        const Converted there = convert(text, source, target);
        if (there.lost > 0) {
            continue;
        }
        ++compared;
        const Converted back = convert(there.text, target, source);
        // JIS text may designate a set twice, and code page 932 has characters twice: the text is the same then.
        if (back.lost > 0 || (back.text != text && read_as(back.text, source) != read_as(text, source))) {
            ++failed;
            ADD_FAILURE() << "case " << i << ": " << source << " to " << target << ": "
                          << ::testing::PrintToString(text);
        }
    }
    EXPECT_GT(compared, kTexts / 2);
}

} // namespace
} // namespace jkc::testing
