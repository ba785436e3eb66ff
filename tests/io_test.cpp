// Files by their paths and file slots: what a call does, and what it tells afterwards.
#include <functional>
#include <sstream>

#ifndef _WIN32
#include <unistd.h>
#endif

#include <gtest/gtest.h>

#include "support/conversion.h"
#include "support/temp_dir.h"

namespace jkc::testing {
namespace {

constexpr int64_t kSlots = 100;
constexpr int kCodeTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16};

struct Lines {
    std::vector<std::string> results; // one a call, until the end or a call that does not get on
    std::string joined;
};

Lines read_lines(int64_t slot, uint64_t size, uint64_t patience = 20) {
    Lines lines;
    const std::unique_ptr<char[]> line(new char[static_cast<size_t>(size)]);
    for (uint64_t idle = 0; idle < patience;) {
        uint64_t length = 0x55;
        lines.results.push_back(std::to_string(jkc_io_get_line(slot, line.get(), size, &length)));
        if (length == 0x55) {
            break; // the end, and what is no text, have no length
        }
        lines.joined.append(line.get(), static_cast<size_t>(length));
        idle = length == 0 ? idle + 1 : 0;
    }
    return lines;
}

#ifdef _WIN32
struct OrdinaryUser {};
constexpr bool kPosix = false;
#else
constexpr bool kPosix = true;

// While one is alive, the process has the rights of an ordinary user.
struct OrdinaryUser {
    OrdinaryUser() { EXPECT_EQ(geteuid() == 0 ? seteuid(65534) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(getuid() == 0 ? seteuid(0) : 0, 0); }
};
#endif

// Does with files what a case of io.txt says.
std::string io_result(const Case &c) {
    const Options &o = c.options;
    if (!kPosix && (o.has("unreadable") || (o.text("source") == "." && o.has("open")) ||
                    (o.text("source") + o.text("destination")).starts_with("/dev"))) {
        return c.output; // other systems have no such files, and open no directories
    }
    const TempDir dir;
    const std::string text = dir.write("text", "abc");
    const std::string source = o.has("source") ? dir.path(o.text("source")) : dir.write("source", c.input);
    const std::string destination = dir.path(o.text("destination", "destination"));
    if (o.has("unreadable")) {
        std::filesystem::permissions(source, std::filesystem::perms::none);
    }
    EXPECT_EQ(jkc_io_convert_file(text.c_str(), 0, dir.path("before").c_str(), 1, 0), 0); // tells of a copy
    const auto hint = static_cast<uint8_t>(o.number("hint"));
    std::ostringstream out;
    int64_t slot = -1;
    if (o.has("open")) {
        uint64_t judged = 0x55;
        [[maybe_unused]] const OrdinaryUser user;
        slot = jkc_io_open(source.c_str(), o.number("mode"), o.number("from"), o.number("to", 15), hint, &judged);
        out << slot << " judged=" << judged;
    } else if (o.has("judge")) {
        out << jkc_io_path(source.c_str(), o.number("from"));
    } else {
        out << jkc_io_convert_file(source.c_str(), o.number("from"),
                                   o.has("in_place") ? source.c_str() : destination.c_str(), o.number("to", 15), hint);
    }
    out << " type=" << jkc_io_get_ctype() << " decided=" << jkc_io_is_decided()
        << " operation=" << jkc_io_get_ope_type();
    if (slot >= 0) {
        // Read twice: each reading begins in ASCII again, whatever set the last one ended in.
        out << " stype=" << jkc_io_get_stype(slot) << " dtype=" << jkc_io_get_dtype(slot)
            << " size=" << jkc_io_get_size(slot) << " lines " << in_words(read_lines(slot, 400, 3).results)
            << " rewound " << jkc_io_rewind(slot) << ": " << in_words(read_lines(slot, 400, 3).results);
        EXPECT_EQ(jkc_io_close(slot), 0);
    }
    EXPECT_EQ(_getTIO(), 0);
    for (const auto &[name, bytes] : dir.files()) {
        if (name == "destination" || (name == "source" && bytes != c.input)) {
            out << ' ' << name << '=' << show_bytes(bytes);
        }
    }
    return out.str();
}

TEST(IoTest, AFileIsTreatedOtherwiseOrToldOfOtherwise) {
    check_results("io.txt", io_result);
    for (const int64_t mode : {-1, 0, 1, 2, 3, 4}) {
        EXPECT_EQ(jkc_io_is_can_read(mode), mode == 0 || mode == 3);
        EXPECT_EQ(jkc_io_is_can_write(mode), mode >= 1 && mode <= 3);
    }
    const TempDir dir;
    EXPECT_EQ(__check_stat(dir.path("missing").c_str()), 0);
    EXPECT_EQ(__check_stat(dir.path(".").c_str()), 1);
    EXPECT_EQ(__check_stat(dir.write("text", "abc").c_str()), 2);
    EXPECT_EQ(__check_stat("/dev/null"), kPosix ? 9 : 0);
}

std::string without_line_ends(std::string text) {
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
    return text;
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

TEST(IoTest, NoCodeTypeLosesTextOnItsWayThroughTheLines) {
    const std::string text = "日本語の文章を読みます。\r\nabc ｱｲｳ アイウ\n\n漢字かな交じり文\rこれは最後の行です end";
    const std::string plain = "twelve chars\r\nand  eleven\n\neight in\rthe last line";
    const TempDir dir;
    for (const int from : kCodeTypes) {
        std::vector<std::string> expected = {"12", "11", "0", "8", "13", std::to_string(JKC_EOF)};
        std::string source = from == JKC_TYPE_ASCII ? plain : text;
        if (from == JKC_TYPE_JIS2004) {
            source.insert(0, "俱\n"); // by which it is told from CP50221
            expected.insert(expected.begin(), "1");
        }
        const std::string bytes = recoded(source, JKC_TYPE_UTF8, from);
        const std::string path = dir.write("text", bytes);
        for (const int to : kCodeTypes) {
            SCOPED_TRACE(::testing::Message() << from << " to " << to);
            const int64_t slot = jkc_io_open(path.c_str(), 0, from, to, 0, nullptr);
            ASSERT_EQ(slot, 0);
            EXPECT_EQ(jkc_io_get_stype(slot), from);
            const std::string converted = recoded(bytes, from, to);
            EXPECT_EQ(jkc_io_get_size(slot), static_cast<int64_t>(converted.size()));
            if (to == JKC_TYPE_JIS2004) {
                uint64_t length = 0x55;
                EXPECT_EQ(jkc_io_get_line(slot, nullptr, 0, &length), JKC_ECTYPE);
                EXPECT_EQ(length, 0U);
            } else if (to == JKC_TYPE_ASCII && from != JKC_TYPE_ASCII) {
                EXPECT_EQ(read_lines(slot, converted.size()).results.back(), std::to_string(JKC_ECHAR))
                    << "it is held as Shift_JIS";
            } else {
                const std::string whole = recoded(converted, to, JKC_TYPE_UTF8);
                for (const uint64_t size : sizes_for(to, converted.size())) {
                    EXPECT_EQ(jkc_io_rewind(slot), 0);
                    const std::string read = recoded(read_lines(slot, size).joined, to, JKC_TYPE_UTF8);
                    EXPECT_EQ(without_line_ends(read), without_line_ends(whole)) << size;
                }
                EXPECT_EQ(jkc_io_rewind(slot), 0);
                EXPECT_EQ(read_lines(slot, converted.size()).results, expected);
            }
            EXPECT_EQ(jkc_io_close(slot), 0);
        }
    }
}

TEST(IoTest, NumbersThatAreNoOpenSlotAreRefusedEverywhere) {
    char buf[100];
    const std::function<int64_t(int64_t)> functions[] = {
        jkc_io_close,
        jkc_io_rewind,
        jkc_io_get_size,
        jkc_io_get_stype,
        jkc_io_get_dtype,
        jkc_io_get_errno,
        [&](int64_t slot) { return jkc_io_get_strerror(slot, 2, buf, sizeof buf, 15); },
        [&](int64_t slot) { return jkc_io_get_line(slot, buf, sizeof buf, nullptr); }};
    for (const auto &function : functions) {
        for (const int64_t slot : std::initializer_list<int64_t>{-1, 100, INT64_MAX, INT64_MIN, 0x100000000}) {
            EXPECT_EQ(function(slot), JKC_EIOFDRANGE) << slot;
            EXPECT_EQ(_get_jkc(slot), nullptr);
        }
        EXPECT_EQ(function(0), JKC_EIONOTOPEN);
        EXPECT_EQ(function(99), JKC_EIONOTOPEN);
    }
    EXPECT_EQ(_get_jkc(0), nullptr);
}

// As a program does that runs a conversion of its own with them, and with any user data.
TEST(IoTest, TheExportedCallbacksDoNotWorkOnWhatTheVariablesSay) {
    const TempDir dir;
    const std::string destination = dir.path("destination");
    const auto *text = reinterpret_cast<const uint8_t *>("text");
    EXPECT_EQ(jkc_io_convert_file(dir.write("text", "abc").c_str(), 4, destination.c_str(), 4, 0), 0);
    EXPECT_EQ(_dpath, destination.c_str());
    EXPECT_NE(_dfp, nullptr);
    _dfp = nullptr;
    EXPECT_EQ(_io_writer(text, 4, &_dfp), JKC_EWRITE);
    EXPECT_EQ(_io_observer(JKC_TYPE_JIS2004, &_dfp), 0);
    EXPECT_EQ(_io_observer(0x200, &_dfp), -1);
    EXPECT_EQ(jkc_io_get_ctype(), 0x200);
    EXPECT_EQ(_dfp, nullptr);
    EXPECT_EQ(_io_observer(JKC_TYPE_SJIS, &_dfp), 0);
    ASSERT_NE(_dfp, nullptr);
    EXPECT_EQ(_io_writer(text, 4, &_dfp), 0);
    EXPECT_EQ(fclose(_dfp), 0);
    EXPECT_EQ(dir.files()["destination"], "text");
    EXPECT_EQ(jkc_io_get_ctype() + jkc_io_is_decided(), JKC_TYPE_SJIS + 1);
    const std::string nowhere = dir.path("missing/destination");
    _dpath = nowhere.c_str();
    EXPECT_EQ(_io_observer(JKC_TYPE_SJIS, nullptr), -1);
    EXPECT_EQ(jkc_io_get_ctype(), JKC_EWOPEN);

    EXPECT_EQ(jkc_io_open(destination.c_str(), 0, 4, 4, 0, nullptr), 0);
    EXPECT_EQ(_fd, 0);
    EXPECT_EQ(jkc_io_open(destination.c_str(), 0, 4, 4, 0, nullptr), 1);
    _fd = 0;
    EXPECT_EQ(_io_fd_buf_observer(JKC_TYPE_EUC, &_fd), 0);
    EXPECT_EQ(_io_fd_buf_writer(text, 2, &_fd), 0);
    EXPECT_EQ(jkc_io_get_stype(0) + jkc_io_get_ctype(), 2 * JKC_TYPE_EUC);
    EXPECT_EQ(jkc_io_get_size(0) + jkc_io_close(0), 6);
    EXPECT_EQ(jkc_io_get_size(1) + jkc_io_close(1), 4);
    EXPECT_EQ(_convert_buf_writer(text, 1), JKC_EWRITE) << "no text is being converted";
}

TEST(IoTest, TheHundredAndFirstIsRefusedAndAFreedOneIsUsedAgain) {
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
        // Of its own context, the error of the system.
        _get_jkc(i)->sys_errno = static_cast<int32_t>(i);
        EXPECT_EQ(jkc_io_get_errno(i), i);
        char text[8];
        EXPECT_EQ(jkc_io_get_strerror(i, 2, text, sizeof text, 15), 7);
        EXPECT_EQ(text, std::string(strerror(2)).substr(0, 7));
        EXPECT_EQ(jkc_io_close(i), 0);
    }
    EXPECT_EQ(_getTIO(), 0);
}

} // namespace
} // namespace jkc::testing
