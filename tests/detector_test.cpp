// A detector that is fed: cut anywhere, it finds what the text as a whole holds.
#include <cstddef>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "core/internal.h"
#include "judge/input/sample.h"
#include "support/case_file.h"
#include "support/exact_buffer.h"
#include "support/failing_alloc.h"

namespace jkc::testing {
namespace {

const uint8_t *bytes(const std::string &text) { return reinterpret_cast<const uint8_t *>(text.data()); }

class DetectorTest : public ::testing::Test {
protected:
    ~DetectorTest() override { jkc_detector_release(detector); }

    void make(int32_t preferred) {
        jkc_detector_release(detector);
        const JkcDetectorOptions options{sizeof options, preferred, 0};
        ASSERT_EQ(jkc_detector_create(&detector, &options), JKC_SUCCESS);
    }

    // In pieces of this size; 0: of any.
    JkcDetection detect(const std::string &text, size_t piece) {
        for (size_t at = 0; at < text.size();) {
            const ExactBuffer part(text.substr(at, piece != 0 ? piece : random() % (random() % 2 != 0U ? 9000 : 20)));
            jkc_detector_feed(detector, part.data(), part.size());
            at += part.size();
        }
        JkcDetection found = {};
        found.size = sizeof found;
        jkc_detector_finish(detector, &found);
        return found;
    }

    JkcDetector *detector = nullptr;
    std::mt19937 random{1};
};

std::string judgement_of(const JkcDetection &f) {
    std::ostringstream out;
    out << f.judged << ' ' << f.judged_set << ' ' << f.line_ends << ' ' << int{f.srg_exists} << int{f.utfmac_exists};
    return out.str();
}

std::string judge(const std::string &text, int32_t preferred) {
    JkcContext *ctx = create_jkc();
    JkcDetection f = {};
    f.judged = jkc_judges_buffer(ctx, &f.judged_set, &f.line_ends, text.data(), text.size(), preferred);
    f.srg_exists = ctx->srg_exists;
    f.utfmac_exists = ctx->utfmac_exists;
    release_jkc(ctx);
    return judgement_of(f);
}

TEST_F(DetectorTest, ACutChangesTheJudgement) {
    for (const char *file : {"judge.txt", "copies.txt", "converter.txt", "from_utf16.txt", "from_jis.txt"}) {
        std::string before;
        for (const Case &c : read_cases(file)) {
            const auto preferred = static_cast<int32_t>(c.options.number("preferred"));
            if (c.input == before && preferred == 0) {
                continue;
            }
            before = c.input;
            SCOPED_TRACE(c.name + ", preferred " + std::to_string(preferred));
            make(preferred);
            const std::string expected = judge(c.input, preferred);
            for (const size_t piece : {1U, 2U, 3U, 7U, 977U, 8128U, 0U}) {
                const JkcDetection found = detect(c.input, piece);
                EXPECT_EQ(judgement_of(found), expected) << piece;
                EXPECT_EQ(found.length, c.input.size());
                jkc_detector_reset(detector);
            }
        }
    }
}

// What is told besides: first errors as type@offset, UTF-8 by the standard, bytes that texts hardly have.
TEST_F(DetectorTest, WhatSpeaksForAndAgainstIsWrong) {
    check_results("detector.txt", [this](const Case &c) {
        std::string answer;
        for (const size_t piece : {1U, 3U, 8128U, 0U}) {
            make(JKC_TYPE_EMPTY);
            const JkcDetection found = detect(c.input, piece);
            std::ostringstream out;
            for (const JkcEvidence &e : found.evidence) {
                EXPECT_EQ(e.first_error < 0, e.ill_formed == 0);
                if (e.first_error >= 0) {
                    out << e.type << '@' << e.first_error << ' ';
                }
            }
            out << "utf8=" << found.utf8_first_error << ',' << found.utf8_two_byte << ',' << found.utf8_longer;
            if (found.nul_count + found.control_count > 0) {
                out << " nul=" << found.nul_count << " controls=" << found.control_count;
            }
            EXPECT_TRUE(answer.empty() || answer == out.str()) << piece << ": " << out.str();
            answer = out.str();
        }
        return answer;
    });
}

TEST_F(DetectorTest, OneThatHasEndedGoesOnOrARecordOfAnotherSizeIsWrittenBeyondItsEnd) {
    make(JKC_TYPE_EMPTY);
    const std::string text = "\x82\xA0";
    const JkcDetection first = detect(text, 1);
    EXPECT_EQ(judgement_of(detect("\x80\x80\x80", 1)), judgement_of(first));
    jkc_detector_reset(detector);
    EXPECT_EQ(judgement_of(detect("a", 1)), judge("a", 0));

    JkcDetection found = {};
    found.size = offsetof(JkcDetection, judged_set);
    found.judged_set = -7;
    jkc_detector_finish(detector, &found);
    EXPECT_EQ(found.judged, JKC_TYPE_ASCII);
    EXPECT_EQ(found.judged_set, -7);
    EXPECT_EQ(found.size, offsetof(JkcDetection, judged_set));

    jkc_detector_release(detector);
    const JkcDetectorOptions earlier{offsetof(JkcDetectorOptions, preferred), JKC_TYPE_SJIS, 0}; // not there for it
    ASSERT_EQ(jkc_detector_create(&detector, &earlier), JKC_SUCCESS);
    EXPECT_EQ(judgement_of(detect("\xB1\xB2", 1)), judge("\xB1\xB2", 0));
    EXPECT_NE(judge("\xB1\xB2", 0), judge("\xB1\xB2", JKC_TYPE_SJIS)) << "the preference makes no difference";

    const std::string cut(9000, '\x82'); // where operator new is in the program, its allocations fail, too
    const auto whole_life = [&cut] {
        JkcDetector *made = nullptr;
        const int32_t status = jkc_detector_create(&made, nullptr);
        EXPECT_EQ(made != nullptr, status == JKC_SUCCESS);
        if (made != nullptr) {
            JkcDetection result = {};
            jkc_detector_feed(made, bytes(cut), cut.size());
            jkc_detector_finish(made, &result);
        }
        jkc_detector_release(made);
        return status;
    };
    EXPECT_EQ(fail_each_allocation(whole_life, [](bool /*failed*/) {}), 1U);
}

TEST(SampleTest, WhatTheDecisionMustSeeIsLeftOutOrOutOfStep) {
    constexpr size_t kPiece = JKC_BLOCK_READ;
    const std::string kanji = "\x88\xC0\x91\x53";
    for (const size_t place : {300U, 4000U, 8120U, 8126U, 8127U, 8128U, 8159U, 8160U, 20000U}) {
        std::string text(30000, 'a');
        text.replace(place, kanji.size(), kanji);
        text.replace(25001, 2, "\xA4\xA2");
        Sample sample;
        for (size_t at = 0; at < text.size(); at += kPiece) {
            sample.take(bytes(text) + at, bytes(text) + std::min(text.size(), at + kPiece));
        }
        const DecisionSample got = sample.get(text.size());
        const std::string_view seen(reinterpret_cast<const char *>(got.bytes), got.length);
        EXPECT_FALSE(got.whole);
        EXPECT_LE(seen.size(), 512U);
        const size_t at = seen.find("aaaa" + kanji + "aaaa");
        EXPECT_TRUE(at != seen.npos && at % 2 == place % 2) << place;
        EXPECT_NE(seen.find("aaaa\xA4\xA2"
                            "aaaa"),
                  seen.npos);
    }
    for (const size_t size : {0U, 31U, 4095U, 4096U, 4097U, 9000U}) {
        Sample sample;
        const std::string text(size, '\x82');
        sample.take(bytes(text), bytes(text) + std::min(size, kPiece));
        const DecisionSample got = sample.get(size);
        EXPECT_EQ(got.whole, size <= 4096U);
        EXPECT_EQ(got.length, std::min(size, size_t{4096}));
    }
}

} // namespace
} // namespace jkc::testing
