// What a converter that is fed does besides converting: its limits, its end, and whether it can be used again.
#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/collecting_writer.h"
#include "support/failing_alloc.h"

namespace jkc::testing {
namespace {

class ConverterTest : public ::testing::Test {
protected:
    ~ConverterTest() override { jkc_converter_release(converter); }

    void make(int32_t src, int32_t dst) {
        jkc_converter_release(converter);
        ASSERT_EQ(jkc_converter_create(&converter, src, dst, nullptr), JKC_SUCCESS);
    }
    int32_t feed(const std::string &bytes) {
        return jkc_converter_feed(converter, reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size(),
                                  CollectingWriter::write, &writer);
    }
    int32_t finish() { return jkc_converter_finish(converter, CollectingWriter::write, &writer); }

    JkcConverter *converter = nullptr;
    CollectingWriter writer;
};

TEST_F(ConverterTest, ARequestThatCannotBeMetMakesOne) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    const struct {
        int32_t src, dst;
        uint32_t line_type;
        int32_t status;
    } cases[] = {{0, 15, 0, JKC_ECTYPE}, {4, 0, 0, JKC_ECTYPE},   {9, 15, 0, JKC_ECTYPE},
                 {4, 17, 0, JKC_ECTYPE}, {-1, 15, 0, JKC_ECTYPE}, {INT32_MAX, INT32_MIN, 0, JKC_ECTYPE},
                 {4, 15, 3, JKC_ELTYPE}, {4, 15, 8, JKC_ELTYPE},  {1, 15, 4, JKC_SUCCESS},
                 {15, 1, 2, JKC_SUCCESS}};
    for (const auto &c : cases) {
        options.line_type = c.line_type;
        EXPECT_EQ(jkc_converter_create(&converter, c.src, c.dst, &options), c.status) << c.src << " " << c.dst;
        EXPECT_EQ(converter != nullptr, c.status == JKC_SUCCESS);
        jkc_converter_release(converter);
    }
    converter = nullptr;
    const FailingAlloc failing(1);
    EXPECT_EQ(jkc_converter_create(&converter, 4, 15, nullptr), JKC_EALLOC);
    EXPECT_EQ(converter, nullptr);
}

// A caller that was compiled against a later or an earlier header.
TEST_F(ConverterTest, ARecordOfAnotherSizeIsReadOrWrittenBeyondItsEnd) {
    struct {
        JkcConverterOptions known;
        uint8_t more[16];
    } later = {};
    memset(later.more, 0xFF, sizeof later.more);
    later.known.size = sizeof later;
    later.known.suppress = 1;
    ASSERT_EQ(jkc_converter_create(&converter, 15, 4, &later.known), JKC_SUCCESS);
    EXPECT_EQ(feed("\xE2\x98\x83!") + finish(), JKC_SUCCESS);
    EXPECT_EQ(writer.text(), "!");

    JkcConverterLosses losses = {};
    losses.size = offsetof(JkcConverterLosses, first_offset);
    losses.first_offset = -7;
    jkc_converter_losses(converter, &losses);
    EXPECT_EQ(losses.count, 1U);
    EXPECT_EQ(losses.first_offset, -7);

    jkc_converter_release(converter);
    JkcConverterOptions earlier = {};
    earlier.size = offsetof(JkcConverterOptions, compose);
    earlier.suppress = 1; // not there for this caller
    ASSERT_EQ(jkc_converter_create(&converter, 15, 4, &earlier), JKC_SUCCESS);
    EXPECT_EQ(feed("\xE2\x98\x83!") + finish(), JKC_SUCCESS);
    EXPECT_EQ(writer.text(), "!?!");
}

TEST_F(ConverterTest, OneThatHasEndedConvertsOnOrIsNotAsGoodAsNewAgain) {
    make(JKC_TYPE_SJIS, JKC_TYPE_UTF8);
    EXPECT_EQ(feed("\x82\xA0\x82"), JKC_SUCCESS);
    EXPECT_EQ(finish(), JKC_EUEXPEOD);
    EXPECT_EQ(feed("a"), JKC_EUEXPEOD);
    EXPECT_EQ(finish(), JKC_EUEXPEOD);
    EXPECT_EQ(writer.text(), "あ");

    writer = {};
    writer.answer_at = 1;
    writer.answer = 7;
    jkc_converter_reset(converter);
    EXPECT_EQ(feed(std::string(9000, 'a')), 7);
    EXPECT_EQ(finish(), 7);

    writer = {};
    jkc_converter_reset(converter);
    EXPECT_EQ(feed("\x85\x40\x82") + feed("\xA2") + finish(), JKC_SUCCESS);
    EXPECT_EQ(writer.text(), "?い");
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    jkc_converter_losses(converter, &losses);
    EXPECT_EQ(losses.count, 1U);
    EXPECT_EQ(losses.first_offset, 0);
}

// Each Unicode form may begin with its BOM, whatever the type is called; the BOM may be cut.
TEST_F(ConverterTest, ABomIsKeptDroppedOrAddedWrongly) {
    const std::string bom = "\xEF\xBB\xBF";
    const struct {
        int32_t src, dst;
        std::string input, output;
    } cases[] = {
        {15, 15, bom + "a", "a"},
        {15, 16, bom + "a", bom + "a"},
        {15, 16, "a", bom + "a"},
        {16, 15, "a", "a"},
        {16, 16, bom + bom, bom + bom},
        {15, 4, bom + "a", "a"},
        {15, 15, "\xEF\xBB", "\xEF\xBB"},
        {4, 16, "", bom},
        {13, 15,
         "\xFF\xFE"
         "a" +
             std::string(1, '\0'),
         "a"},
        {4, 4, bom.substr(0, 2), bom.substr(0, 2)},
    };
    for (const auto &c : cases) {
        for (const size_t piece : {1U, 2U, 100U}) {
            make(c.src, c.dst);
            writer = {};
            for (size_t at = 0; at < c.input.size(); at += piece) {
                EXPECT_EQ(feed(c.input.substr(at, piece)), JKC_SUCCESS);
            }
            EXPECT_EQ(finish(), JKC_SUCCESS);
            EXPECT_EQ(writer.text(), c.output) << c.src << " to " << c.dst << " from " << c.input;
        }
    }
}

TEST_F(ConverterTest, MemoryIsLostOrTheBoundIsExceeded) {
    // What grows most on the way to each: katakana and ASCII by turns, line ends, and bytes that are no character.
    std::string worst;
    for (int i = 0; i < 3000; ++i) {
        worst += "\xB1"
                 "a\n\x85\x40";
    }
    const struct {
        int32_t src, dst;
        std::string input;
        int32_t status;
        std::string output;
    } cases[] = {
        {4, 15, "\x82\xA0", JKC_SUCCESS, "あ"},
        {0, 15, "\x82\xA0\x82\xA2\x82\xA4\x82\xA6\x82\xA8", JKC_SUCCESS, "あいうえお"},
        {0, 15, "", JKC_SUCCESS, ""},
        {0, 15, "\xE4\xD8\xE5\xA5", JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), ""},
        {4, 15, "\x82", JKC_EUEXPEOD, ""},
        {4, 99, "a", JKC_ECTYPE, ""},
        {4, 2, worst, JKC_SUCCESS, "*"},
        {4, 5, worst, JKC_SUCCESS, "*"},
        {4, 11, worst, JKC_SUCCESS, "*"},
        {4, 16, worst, JKC_SUCCESS, "*"},
        {15, 2, worst, JKC_SUCCESS, "*"},
        {15, 15, worst, JKC_SUCCESS, "*"},
        {13, 4, worst, JKC_SUCCESS, "*"},
    };
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.line_type = JKC_LINE_CRLF;
    for (const auto &c : cases) {
        SCOPED_TRACE(std::to_string(c.src) + " to " + std::to_string(c.dst) + " from " + show_bytes(c.input));
        uint8_t *out = nullptr;
        size_t length = 0;
        JkcConverterLosses losses = {};
        losses.size = sizeof losses;
        const auto convert = [&] {
            return jkc_convert_memory(c.src, c.dst, reinterpret_cast<const uint8_t *>(c.input.data()), c.input.size(),
                                      &options, &out, &length, &losses);
        };
        ASSERT_EQ(convert(), c.status);
        ASSERT_EQ(out != nullptr, c.status == JKC_SUCCESS);
        const std::string text(reinterpret_cast<char *>(out), length);
        EXPECT_TRUE(c.output == "*" || text == c.output);
        EXPECT_LE(length, jkc_converter_bound(c.dst, c.input.size()));
        EXPECT_TRUE(out == nullptr || (out[length] | out[length + 1]) == 0);
        jkc_free(out);
        if (c.status == JKC_SUCCESS) {
            fail_each_allocation(
                [&] {
                    const int32_t status = convert();
                    jkc_free(out);
                    return status;
                },
                [](bool /*failed*/) {});
        }
    }
    EXPECT_EQ(jkc_converter_bound(JKC_TYPE_JIS, SIZE_MAX / 2), SIZE_MAX);
    EXPECT_EQ(jkc_converter_bound(10, 5), 0U);
}

// In a copy of blocks this was two line ends.
TEST_F(ConverterTest, ACrLfBetweenPiecesBecomesTwoLineEnds) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.line_type = JKC_LINE_LF;
    for (const int32_t type : {JKC_TYPE_UTF8, JKC_TYPE_SJIS, JKC_TYPE_EUC, JKC_TYPE_JIS}) {
        ASSERT_EQ(jkc_converter_create(&converter, type, type, &options), JKC_SUCCESS);
        writer = {};
        EXPECT_EQ(feed(std::string(8127, 'a') + "\r") + feed("\nb\r") + feed("\n") + finish(), JKC_SUCCESS);
        EXPECT_EQ(writer.text(), std::string(8127, 'a') + "\nb\n");
        jkc_converter_release(converter);
        converter = nullptr;
    }
}

} // namespace
} // namespace jkc::testing
