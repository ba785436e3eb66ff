// What a context keeps from one conversion to the next, and tables that a caller puts into it.
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "core/code_types.h"
#include "support/case_file.h"
#include "support/collecting_writer.h"
#include "support/exact_buffer.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

class DriverTest : public ::testing::Test {
protected:
    ~DriverTest() override { release_jkc(ctx); }

    // Runs a converter on the tables that are selected now, as the driver would, and answers the output.
    std::string run(int32_t (*converter)(JkcContext *), const std::string &hex) {
        const ExactBuffer input(parse_bytes(hex));
        ctx->in_ptr = input.data();
        ctx->in_end = input.data() + input.size();
        ctx->mode |= JKC_MODE_BUFFER;
        CollectingWriter writer;
        ctx->writer = CollectingWriter::write;
        ctx->user_data = &writer;
        EXPECT_EQ(_fill_buffer(ctx, JKC_TYPE_SJIS), 0);
        EXPECT_EQ(converter(ctx), ctx->sts);
        ll_clear(ctx->blocks);
        return writer.text();
    }
    // The same through the driver.
    std::string convert(int src, int dst, const std::string &hex) {
        const ExactBuffer input(parse_bytes(hex));
        CollectingWriter writer;
        jkc_convert_buffer(ctx, input.data(), input.size(), src, dst, true, nullptr, CollectingWriter::write, &writer);
        return writer.text();
    }

    JkcContext *ctx = create_jkc();
};

TEST_F(DriverTest, TheEucVariantThatACharacterNeededIsForgottenOrStaysTooLong) {
    const struct {
        int32_t (*converter)(JkcContext *);
        std::string common, numero, one; // U+3042, U+2116, which CP20932 has first, and U+2460, which it lacks
    } rows[] = {{_sjisto_euc, "82A0", "8782", "8740"},
                {_jisto_euc, "1B24422422", "1B24422D62", "1B24422D21"},
                {_eucto_euc, "A4A2", "ADE2", "ADA1"},
                {_unibeto_euc, "3042", "2116", "2460"},
                {_unileto_euc, "4230", "1621", "6024"}};
    for (const auto &[converter, common, numero, one] : rows) {
        select_source_tables(*ctx, JKC_TYPE_EUC_51932);
        select_target_tables(*ctx, JKC_TYPE_EUC);
        EXPECT_EQ(run(converter, common), parse_bytes("A4A2"));
        EXPECT_EQ(euc_target(*ctx), "common");
        EXPECT_EQ(run(converter, numero), parse_bytes("8FA2F1"));
        EXPECT_EQ(euc_target(*ctx), "20932");
        EXPECT_EQ(run(converter, one), "?");
        EXPECT_EQ(euc_target(*ctx), "20932");
        select_target_tables(*ctx, JKC_TYPE_EUC);
        EXPECT_EQ(run(converter, one), parse_bytes("ADA1"));
        EXPECT_EQ(euc_target(*ctx), "51932");
        EXPECT_EQ(convert(JKC_TYPE_SJIS, JKC_TYPE_EUC, "8740"), parse_bytes("ADA1")) << "the driver starts afresh";
    }
}

TEST_F(DriverTest, ThePlaneThatAnEscapeSelectedIsForgottenOrStaysTooLong) {
    EXPECT_EQ(convert(JKC_TYPE_JIS, JKC_TYPE_SJIS, "1B242850 2122"), "?");
    EXPECT_EQ(jis_source(*ctx), "plane2");
    EXPECT_EQ(run(_jisto_euc, "1B2442 2122"), parse_bytes("8FB0A1")) << "ESC $ B leaves the table of plane 2";
    EXPECT_EQ(convert(JKC_TYPE_JIS, JKC_TYPE_SJIS, "1B2442 2422"), parse_bytes("82A0"));
    EXPECT_EQ(jis_source(*ctx), "50221");
}

TEST_F(DriverTest, TheTablesOfATargetAreNotLoadedOrNotCleared) {
    using Tables = std::tuple<const void *, const void *, const void *, const void *, uint64_t, uint64_t>;
    const auto tables = [this] {
        return Tables(ctx->jis_dst_table, ctx->jis_dst_bits, ctx->jis_dst_srg_table, ctx->jis_dst_srg_bits,
                      ctx->jis_dst_srg_count, ctx->jis_dst_srg_bits_count);
    };
    EXPECT_EQ(convert(JKC_TYPE_SJIS, JKC_TYPE_JIS2004, "82A0"), parse_bytes("1B244224221B2842"));
    EXPECT_EQ(tables(), Tables(_unibe2jis2022jp2004_table, _unibe2jis2022jp2004_table_bits,
                               _unibe2jis2022jp2004_table_srg, _unibe2jis2022jp2004_table_srg_bits, 42675, 42675));
    convert(JKC_TYPE_SJIS, JKC_TYPE_JIS, "82A0");
    EXPECT_EQ(tables(), Tables(_unibe2jis50221_table, _unibe2jis50221_table_bits, nullptr, nullptr, 0, 0));
    const std::pair<int, const char *> variants[] = {{8, "ms"}, {6, "20932"}, {7, "51932"}, {5, "common"}};
    for (const auto &[type, name] : variants) {
        convert(JKC_TYPE_SJIS, type, "82A0");
        EXPECT_EQ(euc_target(*ctx), name);
        convert(type, JKC_TYPE_UTF8, "A4A2A4A2");
        EXPECT_EQ(euc_source(*ctx), name);
    }
}

TEST_F(DriverTest, ATablesOwnSubstituteIsNotWrittenOrIsRecorded) {
    std::vector<uint16_t> table(_unibe2sjis932_table, _unibe2sjis932_table + _unibe2sjis932_table_size);
    table[0] = 0x81AC;
    ctx->sjis_dst_table = table.data();
    EXPECT_EQ(run(_utf8to_sjis, "EAB080 41 80 424344"), parse_bytes("81AC 41 81AC 424344"));
    EXPECT_EQ(ctx->nochar_count, 0U);
    ctx->suppress = 1;
    EXPECT_EQ(run(_utf8to_sjis, "EAB080 41"), parse_bytes("81AC 41"));
}

TEST_F(DriverTest, TheFirstCodePointOfPlaneTwoIsOutsideIt) {
    select_target_tables(*ctx, JKC_TYPE_JIS2004);
    const uint16_t code = 0x2E21;
    const uint8_t set = 8; // ESC $ ( Q
    ctx->jis_dst_srg_table = &code;
    ctx->jis_dst_srg_bits = &set;
    ctx->jis_dst_srg_count = ctx->jis_dst_srg_bits_count = 1;
    EXPECT_EQ(run(_unibeto_jis, "D840DC00"), parse_bytes("1B242851 2E21 1B2842"));
}

TEST_F(DriverTest, ACopyThatCopiesNothingKeepsTheRecordOfLostCharacters) {
    convert(JKC_TYPE_UTF8, JKC_TYPE_SJIS, "EAB080");
    EXPECT_EQ(ctx->nochar_count, 1U);
    ctx->sts = JKC_EREAD;
    EXPECT_EQ(_jkc_copy(ctx, JKC_TYPE_EMPTY), 0);
    EXPECT_EQ(ctx->sts, 0);
    EXPECT_EQ(ctx->nochar_count, 0U);
    EXPECT_EQ(ctx->first_nochar_index + ctx->last_nochar_index + ctx->first_nochar + ctx->last_nochar, -4);
}

TEST_F(DriverTest, ACharacterBehindTheDesignationsKeepsItsOwn) {
    select_target_tables(*ctx, JKC_TYPE_JIS);
    ctx->jis_dst_bits_count = 0x2460; // CIRCLED DIGIT ONE is the first one behind
    EXPECT_EQ(run(_sjisto_jis, "FA40 8160 8740"), parse_bytes("1B242844 7C71 1B2442 2141 2D21 1B2842"));
    ctx->suppress = 1;
    EXPECT_EQ(run(_sjisto_jis, "8160 8740 41"), "A");
}

} // namespace
} // namespace jkc::testing
