// What a converter that is fed does besides converting: its limits, its end, and whether it can be used again.
#include <gtest/gtest.h>

#include "support/collecting_writer.h"
#include "support/conversion.h"
#include "support/failing_alloc.h"

namespace jkc::testing {
namespace {

class ConverterTest : public ::testing::Test {
protected:
    ~ConverterTest() override { jkc_converter_release(converter); }

    void make(int32_t src, int32_t dst) {
        jkc_converter_release(converter);
        JkcConverterOptions options = {};
        options.size = sizeof options;
        options.places = 1;
        ASSERT_EQ(jkc_converter_create(&converter, src, dst, &options), JKC_SUCCESS);
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
    options.on_loss = JKC_ON_LOSS_ESCAPE + 1;
    EXPECT_EQ(jkc_converter_create(&converter, 4, 15, &options), JKC_EIOMODE);
    EXPECT_EQ(converter, nullptr);
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
    losses.size = offsetof(JkcConverterLosses, truncated);
    losses.truncated = 7;
    jkc_converter_losses(converter, &losses);
    EXPECT_EQ(losses.unmappable, 1U);
    EXPECT_EQ(losses.truncated, 7U);

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
    EXPECT_EQ(losses.unmappable, 1U);
    EXPECT_EQ(losses.ill_formed + losses.truncated + losses.first.offset, 0U);
    EXPECT_EQ(losses.first.column, 1U);
}

// The cases of data/converter.txt, fed in pieces and in memory as a whole.
TEST_F(ConverterTest, ACaseFedOrInMemory) {
    for (const Case &c : read_cases("converter.txt")) {
        const auto src = static_cast<int32_t>(c.options.number("src"));
        const auto dst = static_cast<int32_t>(c.options.number("dst"));
        const auto status = static_cast<int32_t>(c.options.number("status"));
        const std::string output = parse_bytes(c.output);
        SCOPED_TRACE(c.name + ", to " + std::to_string(dst) + " from " + show_bytes(c.input));
        JkcConverterOptions options = {};
        options.size = sizeof options;
        options.line_type = static_cast<uint32_t>(c.options.number("eol"));
        options.places = 1;
        if (src != 0 && dst < 99 && !c.options.has("any")) {
            for (const size_t piece : {1U, 2U, 977U}) {
                jkc_converter_release(converter);
                ASSERT_EQ(jkc_converter_create(&converter, src, dst, &options), JKC_SUCCESS);
                writer = {};
                for (size_t at = 0; at < c.input.size(); at += piece) {
                    EXPECT_EQ(feed(c.input.substr(at, piece)), JKC_SUCCESS);
                }
                EXPECT_EQ(finish(), status);
                EXPECT_EQ(writer.text(), output);
            }
        }
        uint8_t *out = nullptr;
        size_t length = 0;
        const auto convert = [&] {
            const auto *in = reinterpret_cast<const uint8_t *>(c.input.data());
            const int32_t result = jkc_convert_memory(src, dst, in, c.input.size(), &options, &out, &length, nullptr);
            if (result == JKC_SUCCESS) {
                EXPECT_TRUE(c.options.has("any") || std::string_view(reinterpret_cast<char *>(out), length) == output);
                EXPECT_EQ(out[length] | out[length + 1], 0);
                EXPECT_LE(length, jkc_converter_bound(dst, c.input.size()));
            }
            jkc_free(out);
            return result;
        };
        EXPECT_EQ(convert(), status);
        EXPECT_EQ(out != nullptr, status == JKC_SUCCESS);
        if (status == JKC_SUCCESS) {
            fail_each_allocation(convert, [](bool /*failed*/) {});
        }
    }
    EXPECT_EQ(jkc_converter_bound(JKC_TYPE_JIS, SIZE_MAX / 2), SIZE_MAX);
    EXPECT_EQ(jkc_converter_bound(10, 5), 0U);
}

// What becomes of a loss, whatever its place in a piece.
TEST_F(ConverterTest, ALossIsNotCountedOrWrittenOtherwise) {
    for (const Case &c : read_cases("losses.txt")) {
        SCOPED_TRACE(c.name + ", to " + c.options.text("dst") + ", policy " + c.options.text("on_loss"));
        for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{977}, kRandomPieces}) {
            for (const bool into_buffers : {false, true}) {
                const Outcome outcome = convert_fed(c, piece, into_buffers);
                EXPECT_EQ(show_bytes(outcome.text()), show_bytes(parse_bytes(c.output))) << piece;
                EXPECT_EQ(outcome.status, c.options.number("status")) << piece;
                EXPECT_EQ(outcome.summary, "losses=" + c.options.text("losses")) << piece;
                EXPECT_LE(outcome.text().size(),
                          jkc_converter_bound(static_cast<int32_t>(c.options.number("dst")), c.input.size()));
            }
        }
    }
}

// In lines that are longer than what is counted at once, and behind more of them.
TEST_F(ConverterTest, APlaceFarInATextIsNotThatOfTheLoss) {
    constexpr uint64_t kMany = 70000;
    const struct {
        int32_t type;
        std::string line_end, character, loss;
    } cases[] = {{JKC_TYPE_UTF8, "\n", "𠮷", "\xFF"},
                 {JKC_TYPE_SJIS, "\r", "\x82\xA0", "\x80"},
                 {JKC_TYPE_JIS, "\r\n", "\x1B$B$\"\x1B(B", "\xFF"},
                 {JKC_TYPE_UTF16LE, {"\n\0", 2}, "\x42\xD8\xB7\xDF", {"\0\xD8", 2}}};
    for (const auto &c : cases) {
        std::string text;
        for (const std::string &part : {c.line_end, c.character}) {
            for (uint64_t i = 0; i < kMany; ++i) {
                text += part;
            }
            text += c.loss;
        }
        JkcConverterOptions options = {};
        options.size = sizeof options;
        options.on_loss = JKC_ON_LOSS_REPLACE;
        options.places = 1;
        JkcConverterLosses losses = {};
        losses.size = sizeof losses;
        uint8_t *out = nullptr;
        size_t length = 0;
        EXPECT_EQ(jkc_convert_memory(c.type, JKC_TYPE_UTF16BE, reinterpret_cast<const uint8_t *>(text.data()),
                                     text.size(), &options, &out, &length, &losses),
                  JKC_SUCCESS);
        jkc_free(out);
        EXPECT_EQ(losses.first.line, kMany + 1);
        EXPECT_EQ(losses.first.column, 1U);
        EXPECT_EQ(losses.last.line, kMany + 1);
        EXPECT_EQ(losses.last.column, kMany + 2) << c.type;
    }
}

} // namespace
} // namespace jkc::testing
