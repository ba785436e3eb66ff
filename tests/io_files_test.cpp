// Files by their paths: converting one into another, judging one.
#include <unistd.h>

#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/failing_alloc.h"
#include "support/temp_dir.h"

namespace jkc::testing {
namespace {

TEST(IoFilesTest, WhatAConversionDoesAndTellsAfterwards) {
    struct Row {
        std::string bytes;
        int from, to;
        int64_t result, type, decided, operation;
        const char *written; // null: the destination is not made
    };
    const Row rows[] = {
        {"\x93\xFA\x96\x7B\x8C\xEA\x82\xCC\x95\xB6", 0, 15, 0, 4, 1, 4, "日本語の文"},
        {"日本語", 15, 15, 0, 15, 1, 1, "日本語"},
        {"日本語", 15, 16, 0, 15, 1, 2, "\xEF\xBB\xBF日本語"},
        {"日本語", 0, 16, 0, 15, 1, 4, "\xEF\xBB\xBF日本語"}, // not what was judged, but what was expected counts
        {"\xEF\xBB\xBF日本語", 16, 15, 0, 16, 1, 3, "日本語"},
        {"日本語", 16, 15, 0, 15, 1, 1, "日本語"},
        {"日本語", 15, 17, 0, 15, 1, 4, ""},                          // no such target
        {"", 15, 15, 0, 0, 0, 4, nullptr},                            // nothing to write
        {"\x1B$(Q.!\x1B(B\n", 3, 15, -8, -8, 0, 0, nullptr},          // JIS X 0213 is not decided
        {"\xE4\xD8\xE5\xA5", 0, 15, 0x10600, 0x10600, 0, 0, nullptr}, // several code types
        {"\xE4\xD8\xE5\xA5", 4, 15, 0, 4, 1, 4, "蒭螂"},              // the expected one of them
        {"\x80\xFF\xFE\xFD\x81\x80\xFF\xC0\xFF\xC0\xFF\xC1\xFF\x80\xFF", 0, 15, -1, -1, 0, 0, nullptr},
        {"\x93\xFA\x96\x7B\x82", 0, 15, -22, -22, 1, 0, "日本"}, // ends inside a character
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.bytes + " to " + std::to_string(row.to));
        const TempDir dir;
        const std::string source = dir.write("source", row.bytes);
        const std::string destination = dir.path("destination");
        EXPECT_EQ(jkc_io_convert_file(source.c_str(), row.from, destination.c_str(), row.to, 0), row.result);
        EXPECT_EQ(jkc_io_get_ctype(), row.type);
        EXPECT_EQ(jkc_io_is_decided(), row.decided);
        EXPECT_EQ(jkc_io_get_ope_type(), row.operation);
        std::map<std::string, std::string> files = {{"source", row.bytes}};
        if (row.written != nullptr) {
            files["destination"] = row.written;
        }
        EXPECT_EQ(dir.files(), files);
        // In place: the source is read before the destination is made.
        EXPECT_EQ(jkc_io_convert_file(source.c_str(), row.from, source.c_str(), row.to, 0), row.result);
        files["source"] = row.written != nullptr ? row.written : row.bytes;
        EXPECT_EQ(dir.files(), files);
    }
}

TEST(IoFilesTest, PathsThatCannotBeUsedAreToldApart) {
    struct Row {
        std::string source, destination;
        int64_t result, judged;
    };
    const TempDir dir;
    const std::string text = dir.write("text", "abc");
    const std::string longer = dir.write("longer", std::string(100000, 'a'));
    const std::string out = dir.path("out");
    const Row rows[] = {{dir.path("missing"), out, JKC_ENOTEXISTS, JKC_ENOTEXISTS},
                        {dir.path(""), out, JKC_ENOTFILE, JKC_ENOTFILE},
                        {"/dev/null", out, JKC_ENOTFILE, JKC_ENOTFILE},
                        {text, dir.path("missing/out"), JKC_EWOPEN, JKC_TYPE_ASCII},
                        {text, dir.path(""), JKC_EWOPEN, JKC_TYPE_ASCII},
                        {text, "/dev/full", JKC_EWRITE, JKC_TYPE_ASCII},    // at its end
                        {longer, "/dev/full", JKC_EWRITE, JKC_TYPE_ASCII}}; // on the way
    for (const Row &row : rows) {
        SCOPED_TRACE(row.source + " to " + row.destination);
        ASSERT_EQ(jkc_io_convert_file(text.c_str(), 0, dir.path("before").c_str(), 1, 0), 0);
        EXPECT_EQ(jkc_io_path(row.source.c_str(), 0), row.judged);
        EXPECT_EQ(jkc_io_convert_file(row.source.c_str(), 0, row.destination.c_str(), 15, 0), row.result);
        const bool begun = row.judged == JKC_TYPE_ASCII;
        EXPECT_EQ(jkc_io_get_ctype(), begun ? row.result : int64_t{JKC_TYPE_ASCII});
        EXPECT_EQ(jkc_io_is_decided(), row.result != JKC_EWOPEN);
        EXPECT_EQ(jkc_io_get_ope_type(), begun ? JKC_OPERATION_NONE : JKC_OPERATION_COPY) << "told of the call before";
        EXPECT_EQ(dir.files().count("out"), 0U);
    }
    EXPECT_EQ(__check_stat(dir.path("missing").c_str()), 0);
    EXPECT_EQ(__check_stat(dir.path("").c_str()), 1);
    EXPECT_EQ(__check_stat(text.c_str()), 2);
    EXPECT_EQ(__check_stat("/dev/null"), 9);
}

TEST(IoFilesTest, ThePreferredTypeAndTheHintReachTheJudgement) {
    const TempDir dir;
    const std::string tie = dir.write("tie", "\xE4\xD8\xE5\xA5");
    EXPECT_EQ(jkc_io_path(tie.c_str(), 0), 0x10600);
    EXPECT_EQ(jkc_io_path(tie.c_str(), JKC_TYPE_EUC), JKC_TYPE_EUC);
    const std::string plain = dir.write("plain", "abc");
    for (const uint8_t hint : {uint8_t{0}, uint8_t{1}}) {
        EXPECT_EQ(jkc_io_convert_file(plain.c_str(), JKC_TYPE_EUC, dir.path("out").c_str(), 15, hint), 0);
        EXPECT_EQ(jkc_io_get_ctype(), hint == 0 ? JKC_TYPE_ASCII : JKC_TYPE_EUC);
        EXPECT_EQ(jkc_io_open(plain.c_str(), 0, JKC_TYPE_EUC, 15, hint, nullptr), 0);
        EXPECT_EQ(jkc_io_get_stype(0), hint == 0 ? JKC_TYPE_ASCII : JKC_TYPE_EUC);
        EXPECT_EQ(jkc_io_close(0), 0);
    }
}

TEST(IoFilesTest, NoFailingAllocationLeaksOrTouchesTheDestination) {
    const TempDir dir;
    const std::string source = dir.write("source", std::string(20000, 'a'));
    const std::string destination = dir.write("destination", "as it was");
    for (size_t n = 1; n < 100; n++) {
        int64_t judged = 0;
        int64_t converted = 0;
        bool failed = true;
        size_t live = 0;
        {
            const FailingAlloc alloc(n);
            judged = jkc_io_path(source.c_str(), 0);
            live = alloc.live();
        }
        EXPECT_TRUE(judged == JKC_EALLOC || judged == JKC_TYPE_ASCII);
        EXPECT_EQ(live, 0U) << n;
        {
            const FailingAlloc alloc(n);
            converted = jkc_io_convert_file(source.c_str(), 0, destination.c_str(), 15, 0);
            failed = alloc.failed();
            live = alloc.live();
        }
        EXPECT_EQ(live, 0U) << n;
        EXPECT_EQ(converted, failed ? JKC_EALLOC : 0) << n;
        EXPECT_EQ(dir.files()["destination"], failed ? "as it was" : dir.files()["source"]);
        if (!failed) {
            EXPECT_GT(n, 5U);
            return;
        }
    }
    ADD_FAILURE() << "every conversion failed";
}

} // namespace
} // namespace jkc::testing
