// File slots: opening, reading line by line, the table, and what goes wrong.
#include <cstdint>
#include <functional>

#include <unistd.h>

#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/collecting_writer.h"
#include "support/failing_alloc.h"
#include "support/temp_dir.h"

namespace jkc::testing {
namespace {

using namespace std::string_literals;

constexpr int64_t kSlots = 100;
constexpr int kCodeTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16};

std::string convert(const std::string &text, int from, int to) {
    JkcContext *ctx = create_jkc();
    CollectingWriter writer;
    EXPECT_EQ(jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(text.data()), text.size(), from, to, false,
                                 nullptr, CollectingWriter::write, &writer),
              0);
    release_jkc(ctx);
    return writer.text();
}

struct Lines {
    std::vector<int64_t> results; // one a call, until the end or a call that does not get on
    std::string joined;
};

Lines read_lines(int64_t slot, uint64_t size) {
    Lines lines;
    const std::unique_ptr<char[]> line(new char[size]);
    for (uint64_t idle = 0; idle < 20;) {
        uint64_t length = 0x55;
        lines.results.push_back(jkc_io_get_line(slot, line.get(), size, &length));
        if (lines.results.back() == JKC_EOF) {
            EXPECT_EQ(length, 0x55U) << "the end of the text has no length";
            break;
        }
        lines.joined.append(line.get(), length);
        idle = length == 0 ? idle + 1 : 0;
    }
    return lines;
}

std::string without_line_ends(const std::string &text, int code_type) {
    const size_t width = code_type >= 11 && code_type <= 14 ? 2 : 1;
    const size_t low = code_type == 11 || code_type == 12 ? 1 : 0;
    std::string kept;
    for (size_t i = 0; i < text.size(); i += width) {
        const std::string unit = text.substr(i, width);
        const bool line_end =
            (unit[low % width] == '\r' || unit[low % width] == '\n') && (width == 1 || unit[1 - low] == 0);
        kept += line_end ? "" : unit;
    }
    return kept;
}

// The buffer sizes that get through any text of the code type. In UTF-8 a cut character takes up to four bytes along,
// line ends too; a JIS line whose escape sequences are cut does not find back to ASCII.
std::vector<uint64_t> sizes_for(int code_type, uint64_t whole) {
    constexpr uint64_t kLongestLine = 80;
    if (code_type == JKC_TYPE_JIS) {
        return {kLongestLine, whole};
    }
    return {code_type >= 5 && code_type <= 8 ? 3U : 2U, 4, 5, 7, 64, whole};
}

TEST(IoSlotsTest, NoCodeTypeLosesTextOnItsWayThroughTheLines) {
    const std::string text = "日本語の文章を読みます。\r\nabc ｱｲｳ アイウ\n\n漢字かな交じり文\rこれは最後の行です end";
    const std::string plain = "twelve chars\r\nand  eleven\n\neight in\rthe last line";
    const std::vector<int64_t> counts = {12, 11, 0, 8, 13, JKC_EOF};
    const TempDir dir;
    for (const int from : kCodeTypes) {
        std::vector<int64_t> expected = counts;
        std::string source = from == JKC_TYPE_ASCII ? plain : text;
        if (from == JKC_TYPE_JIS2004) {
            source.insert(0, "俱\n"); // by which it is told from CP50221
            expected.insert(expected.begin(), 1);
        }
        const std::string path = dir.write("text", convert(source, 15, from));
        for (const int to : kCodeTypes) {
            SCOPED_TRACE(::testing::Message() << from << " to " << to);
            uint64_t judged = 0;
            const int64_t slot = jkc_io_open(path.c_str(), 0, from, to, 0, &judged);
            ASSERT_EQ(slot, 0);
            EXPECT_EQ(judged, static_cast<uint64_t>(from));
            EXPECT_EQ(jkc_io_get_stype(slot), from);
            EXPECT_EQ(jkc_io_get_dtype(slot), to);
            const std::string converted = convert(dir.files()["text"], from, to);
            EXPECT_EQ(jkc_io_get_size(slot), static_cast<int64_t>(converted.size()));
            if (to == JKC_TYPE_JIS2004) {
                uint64_t length = 0x55;
                EXPECT_EQ(jkc_io_get_line(slot, nullptr, 0, &length), JKC_ECTYPE);
                EXPECT_EQ(length, 0U);
            } else if (to == JKC_TYPE_ASCII && from != JKC_TYPE_ASCII) {
                EXPECT_EQ(read_lines(slot, converted.size()).results.back(), JKC_ECHAR) << "it is held as Shift_JIS";
            } else {
                for (const uint64_t size : sizes_for(to, converted.size())) {
                    EXPECT_EQ(jkc_io_rewind(slot), 0);
                    EXPECT_EQ(without_line_ends(read_lines(slot, size).joined, to), without_line_ends(converted, to))
                        << size;
                }
                EXPECT_EQ(jkc_io_rewind(slot), 0);
                EXPECT_EQ(read_lines(slot, converted.size()).results, expected);
            }
            EXPECT_EQ(jkc_io_close(slot), 0);
        }
    }
}

TEST(IoSlotsTest, TextThatCannotBeReadStopsAtTheSamePlaceEachTime) {
    struct Row {
        std::string bytes;
        int type;
        std::vector<int64_t> results;
    };
    const int64_t cut = JKC_EUEXPEOD;
    std::string long_euc; // in which one wrong byte does not change the judgement
    for (int i = 0; i < 200; i++) {
        long_euc += "\xA4\xA2";
    }
    const Row rows[] = {
        {"ab\n\x82\xA0\x82", JKC_TYPE_SJIS, {2, 1, 0, 0}},         // ends inside a character
        {long_euc + "\xFF\n", JKC_TYPE_EUC, {200, -23, -23, -23}}, // 0xFF
        {"ab\n\x1B$B0!0\"0#\n", JKC_TYPE_JIS, {2, -23, -23}},      // no way back to ASCII
        {"\x1B$B0!0", JKC_TYPE_JIS, {cut, JKC_EOF}},               // half a character
        {"\x0E\x31\x32\n", JKC_TYPE_JIS, {-23, 0, JKC_EOF}},       // shifted out
        {"a\x1B", JKC_TYPE_ASCII, {1, JKC_EOF}},                   // ESC alone
    };
    const TempDir dir;
    for (const Row &row : rows) {
        const std::string path = dir.write("text", row.bytes);
        const int64_t slot = jkc_io_open(path.c_str(), 3, row.type, row.type, 1, nullptr);
        ASSERT_GE(slot, 0);
        // Each reading begins in ASCII again, whatever set the last one ended in.
        for (int round = 0; round < 2; round++) {
            std::vector<int64_t> results = read_lines(slot, 400).results;
            ASSERT_GE(results.size(), row.results.size());
            results.resize(row.results.size());
            EXPECT_EQ(results, row.results) << row.bytes;
            EXPECT_EQ(jkc_io_rewind(slot), 0);
        }
        EXPECT_EQ(jkc_io_close(slot), 0);
    }
}

TEST(IoSlotsTest, WhatAnOpenFoundAndDidIsToldAfterwards) {
    struct Row {
        std::string bytes;
        int from, to;
        int64_t judged, decided, operation, size;
    };
    const Row rows[] = {
        {"", 0, 15, 0, 1, 4, 0},                       // empty input counts as decided here
        {"\x1B$(Q.!\x1B(B\n", 0, 15, 3, 1, 4, 4},      // and so does JIS X 0213
        {"abc", 0, 1, 1, 1, 1, 3},                     // plain text
        {"abc", 0, 15, 1, 1, 4, 3},                    // converted like Shift_JIS
        {"日本語", 0, 15, 15, 1, 1, 9},                // copied
        {"日本語", 0, 16, 15, 1, 2, 12},               // mark added
        {"\xEF\xBB\xBF日本語", 0, 15, 16, 1, 3, 9},    // mark removed
        {"\xFF\xFE\x42\x30", 0, 13, 14, 1, 3, 2},      // in UTF-16 as well
        {"日本語", 0, 4, 15, 1, 4, 6},                 // converted
        {"日本語", 0, 17, 15, 1, 4, 0},                // into nothing
        {"\xE4\xD8\xE5\xA5", 0, 15, 0x10600, 0, 4, 0}, // Shift_JIS, EUC or UTF-16
        {"\xE4\xD8\xE5\xA5", 5, 15, 5, 1, 4, 6},       // the expected one of them
    };
    const TempDir dir;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.bytes + " to " + std::to_string(row.to));
        uint64_t judged = 0x55;
        const int64_t slot = jkc_io_open(dir.write("text", row.bytes).c_str(), 0, row.from, row.to, 0, &judged);
        EXPECT_EQ(slot, 0);
        EXPECT_EQ(static_cast<int64_t>(judged), row.judged);
        EXPECT_EQ(jkc_io_get_ctype(), row.judged);
        EXPECT_EQ(jkc_io_get_stype(slot), row.judged);
        EXPECT_EQ(jkc_io_is_decided(), row.decided);
        EXPECT_EQ(jkc_io_get_ope_type(), row.operation);
        EXPECT_EQ(jkc_io_get_size(slot), row.size);
        EXPECT_EQ(jkc_io_close(slot), 0);
    }
}

TEST(IoSlotsTest, ModesAllowWhatTheySay) {
    struct Row {
        int64_t mode, opened, reads, can_read, can_write;
    };
    const int64_t refused = JKC_EIOMODE;
    const Row rows[] = {{0, 0, 0, 1, 0}, {1, 0, refused, 0, 1},       {2, 0, refused, 0, 1},
                        {3, 0, 0, 1, 1}, {4, refused, refused, 0, 0}, {-1, refused, refused, 0, 0}};
    const TempDir dir;
    const std::string path = dir.write("text", "\nabc");
    for (const Row &row : rows) {
        SCOPED_TRACE(row.mode);
        EXPECT_EQ(jkc_io_is_can_read(row.mode), row.can_read);
        EXPECT_EQ(jkc_io_is_can_write(row.mode), row.can_write);
        uint64_t length = 0x55;
        EXPECT_EQ(jkc_io_open(path.c_str(), row.mode, 0, 15, 0, &length), row.opened);
        if (row.opened == 0) {
            length = 0x55;
            char line[9];
            EXPECT_EQ(jkc_io_get_line(0, line, sizeof line, &length), row.reads);
            EXPECT_EQ(length, row.reads == 0 ? 0U : 0x55U);
            EXPECT_EQ(jkc_io_rewind(0), row.reads);
            EXPECT_EQ(jkc_io_get_size(0), 4);
            EXPECT_EQ(jkc_io_close(0), 0);
        }
    }
}

TEST(IoSlotsTest, NumbersThatAreNoOpenSlotAreRefusedEverywhere) {
    char buf[100];
    const std::function<int64_t(int64_t)> functions[] = {
        jkc_io_close,
        jkc_io_rewind,
        jkc_io_get_size,
        jkc_io_get_stype,
        jkc_io_get_dtype,
        jkc_io_get_errno,
        [&](int64_t slot) { return jkc_io_get_strerror(slot, 2, buf, sizeof buf, 15); },
        [&](int64_t slot) { return jkc_io_get_line(slot, buf, sizeof buf, nullptr); },
    };
    for (const auto &function : functions) {
        for (const int64_t slot : {-1L, 100L, INT64_MAX, INT64_MIN, 0x100000000L}) {
            EXPECT_EQ(function(slot), JKC_EIOFDRANGE) << slot;
        }
        EXPECT_EQ(function(0), JKC_EIONOTOPEN);
        EXPECT_EQ(function(99), JKC_EIONOTOPEN);
    }
    EXPECT_EQ(_get_jkc(-1), nullptr);
    EXPECT_EQ(_get_jkc(100), nullptr);
    EXPECT_EQ(_get_jkc(0), nullptr);
}

TEST(IoSlotsTest, TheHundredAndFirstIsRefusedAndAFreedOneIsUsedAgain) {
    const TempDir dir;
    for (int64_t i = 0; i < kSlots; i++) {
        const std::string path = dir.write("text", "line " + std::to_string(i));
        ASSERT_EQ(jkc_io_open(path.c_str(), 0, 0, 15, 0, nullptr), i);
    }
    const std::string other = dir.write("other", "other");
    EXPECT_EQ(jkc_io_open(other.c_str(), 0, 0, 4, 0, nullptr), JKC_EIOMAX);
    EXPECT_EQ(_fd, -1);
    EXPECT_EQ(_io_fd_buf_writer(nullptr, 1, nullptr), JKC_EIOFDRANGE) << "no slot is being filled";
    EXPECT_EQ(jkc_io_close(42), 0);
    EXPECT_EQ(jkc_io_close(42), JKC_EIONOTOPEN);
    EXPECT_EQ(jkc_io_open(other.c_str(), 0, 0, 4, 0, nullptr), 42);
    for (int64_t i = 0; i < kSlots; i++) {
        EXPECT_EQ(read_lines(i, 20).joined, i == 42 ? "other" : "line " + std::to_string(i));
        EXPECT_NE(_get_jkc(i), nullptr);
        EXPECT_EQ(jkc_io_close(i), 0);
    }
    EXPECT_EQ(_getTIO(), 0);
}

// While one is alive, the process has the rights of an ordinary user.
struct OrdinaryUser {
    OrdinaryUser() { EXPECT_EQ(geteuid() == 0 ? seteuid(65534) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(getuid() == 0 ? seteuid(0) : 0, 0); }
};

TEST(IoSlotsTest, AFileThatCannotBeReadLeavesTheSlotFree) {
    struct Row {
        std::string path;
        int64_t result;
    };
    const TempDir dir;
    const std::string unreadable = dir.write("unreadable", "abc");
    std::filesystem::permissions(unreadable, std::filesystem::perms::none);
    const Row rows[] = {{dir.path("missing"), JKC_EROPEN},
                        {dir.path(""), JKC_EREAD},
                        {unreadable, JKC_EROPEN},
                        {dir.write("noise", "\x80\xFF\xFE\xFD\x81\x80\xFF\xC0\xFF\xC0\xFF\xC1\xFF\x80\xFF"), JKC_EOF}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.path);
        uint64_t judged = 0x55;
        {
            const OrdinaryUser user;
            EXPECT_EQ(jkc_io_open(row.path.c_str(), 0, 0, 15, 0, &judged), row.result);
        }
        EXPECT_EQ(judged, 0U);
        EXPECT_EQ(jkc_io_is_decided(), 0);
        EXPECT_EQ(_getTIO(), 0);
    }
}

TEST(IoSlotsTest, NoFailingAllocationLeaksOrKeepsTheSlot) {
    std::string text;
    while (text.size() < 40000) { // several blocks, several sizes of the slot's memory
        text += "これは日本語の文章です。\n";
    }
    const TempDir dir;
    const std::string path = dir.write("text", text);
    for (size_t n = 1;; n++) {
        int64_t result = 0;
        int64_t size = 0;
        int64_t first_free = 0;
        bool failed = true;
        size_t live = 0;
        {
            FailingAlloc alloc(n);
            result = jkc_io_open(path.c_str(), 0, 0, 13, 0, nullptr);
            size = jkc_io_get_size(0);
            jkc_io_close(0);
            failed = alloc.failed();
            first_free = _getTIO();
            live = alloc.live();
        }
        EXPECT_EQ(result, failed ? JKC_EALLOC : 0) << n;
        EXPECT_EQ(size,
                  failed ? static_cast<int64_t>(JKC_EIONOTOPEN) : static_cast<int64_t>(convert(text, 15, 13).size()));
        EXPECT_EQ(first_free, 0);
        EXPECT_EQ(live, 0U) << n;
        if (!failed) {
            EXPECT_GT(n, 10U);
            break;
        }
    }
}

TEST(IoSlotsTest, ALongFileIsHeldWhole) {
    constexpr int kCount = 750000;
    std::string text;
    for (int i = 0; i < kCount; i++) {
        text += "これは長い文章\r\n";
    }
    ASSERT_GT(text.size(), 16U << 20U);
    const TempDir dir;
    ASSERT_EQ(jkc_io_open(dir.write("text", text).c_str(), 0, 0, 15, 0, nullptr), 0);
    EXPECT_EQ(jkc_io_get_size(0), static_cast<int64_t>(text.size()));
    const Lines lines = read_lines(0, 100);
    EXPECT_EQ(lines.results.size(), kCount + 1U);
    EXPECT_TRUE(lines.joined == without_line_ends(text, 15));
    EXPECT_EQ(jkc_io_close(0), 0);
}

TEST(IoSlotsTest, NamesAndMessagesAreThoseOfTheLibrary) {
    char ours[200];
    char theirs[200];
    JkcContext *ctx = create_jkc();
    EXPECT_EQ(jkc_io_typeto_name(ours, 12), jkc_typeto_name(theirs, 12));
    EXPECT_STREQ(ours, theirs);
    EXPECT_EQ(jkc_io_multi_type_names(ours, 100, 0x240), jkc_multi_type_names(theirs, 100, 0x240));
    EXPECT_STREQ(ours, theirs);
    EXPECT_EQ(jkc_io_all_type_names(ours, 137), jkc_all_type_names(theirs, 137));
    EXPECT_STREQ(ours, theirs);
    EXPECT_EQ(jkc_io_statusto_message(ours, -12, 4), jkc_statusto_message(ctx, theirs, -12, 4));
    EXPECT_STREQ(ours, theirs);
    const TempDir dir;
    ASSERT_EQ(jkc_io_open(dir.write("text", "abc").c_str(), 0, 0, 15, 0, nullptr), 0);
    _get_jkc(0)->sys_errno = 2;
    EXPECT_EQ(jkc_io_get_strerror(0, jkc_io_get_errno(0), ours, 8, 15), jkc_get_strerror(ctx, 2, theirs, 8, 15));
    EXPECT_STREQ(ours, theirs);
    EXPECT_EQ(jkc_io_close(0), 0);
    release_jkc(ctx);
    EXPECT_EQ(jkc_io_all_type_names_length(), 138);
    EXPECT_EQ(jkc_io_nameto_type("utf8"), 15);
    EXPECT_EQ(jkc_io_nameto_type("no such type"), JKC_ECTYPE);
    EXPECT_EQ(jkc_io_cmp_bom(12, 11), -1);
    const FailingAlloc alloc(1);
    EXPECT_EQ(jkc_io_statusto_message(ours, -1, 4), JKC_EALLOC);
}

} // namespace
} // namespace jkc::testing
