// The line scanners, byte for byte: what they copy, count and leave at every limit.
#include <cinttypes>
#include <sstream>

#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/case_file.h"
#include "support/exact_buffer.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

struct IoScannersTest : ::testing::Test {
    JkcContext *ctx = create_jkc();
    ~IoScannersTest() override { release_jkc(ctx); }

    // Scans `text`, of which the limit is either the room or the end. Answers as the data file writes it.
    std::string scan(const Case &c, const ExactBuffer &text, uint64_t room) {
        using Scanner = int32_t (*)(JkcContext *, void *, uint64_t, uint64_t *, const uint8_t **, uint64_t);
        const std::map<std::string, Scanner> scanners = {{"sjis", jkc_sjis_strln},
                                                         {"euc", jkc_euc_strln},
                                                         {"unibe", jkc_unibe_strln},
                                                         {"unile", jkc_unile_strln},
                                                         {"utf8", jkc_utf8_strln}};
        const std::string code = c.options.text("code");
        const uint8_t *position = text.data();
        auto state = static_cast<uint32_t>(c.options.number("state"));
        uint64_t copied = 0x55;
        const std::unique_ptr<uint8_t[]> line(new uint8_t[room]);
        const int32_t result = code == "jis"
                                   ? jkc_jis_strln(ctx, line.get(), room, &copied, &position, text.size(), &state)
                                   : scanners.at(code)(ctx, line.get(), room, &copied, &position, text.size());
        EXPECT_EQ(ctx->sts, std::min(result, 0));
        EXPECT_TRUE(std::equal(line.get(), line.get() + std::min(copied, room), text.data()));
        std::ostringstream out;
        if (result < 0) {
            out << (result == JKC_ECHAR ? "char" : result == JKC_EUEXPEOD ? "cut" : "?");
        } else {
            out << result;
        }
        out << '/' << copied << '/' << position - text.data();
        if (code == "jis") {
            out << '/' << state;
        }
        return out.str();
    }
};

TEST_F(IoScannersTest, NoLimitMovesWhereALineOrAnErrorEnds) {
    check_results("line_scanners.txt", [this](const Case &c) {
        const ExactBuffer whole(c.input);
        std::vector<std::string> by_room;
        std::vector<std::string> by_end;
        for (size_t limit = 0; limit <= c.input.size(); limit++) {
            by_room.push_back(scan(c, whole, limit));
            by_end.push_back(scan(c, ExactBuffer(c.input.substr(0, limit)), c.input.size() + 1));
        }
        EXPECT_EQ(by_end, by_room);
        return in_words(by_room);
    });
}

TEST_F(IoScannersTest, JisPlanesStaySelectedInTheContext) {
    const std::pair<const char *, const char *> cases[] = {{"\x1B$B!!\x1B(B", "50221"},
                                                           {"\x1B$(D!!\x1B(B", "50221"},
                                                           {"\x1B$(O!!\x1B(B", "plane1"},
                                                           {"\x1B$(P!!\x1B(B", "plane2"},
                                                           {"\x1B$(P!!\x1B$(Q!!\x1B(B", "plane1"}};
    for (const auto &[text, selected] : cases) {
        release_jkc(std::exchange(ctx, create_jkc()));
        Case c;
        c.options.add("code=jis");
        scan(c, ExactBuffer(text), 100);
        EXPECT_EQ(jis_source(*ctx), selected) << text + 1;
    }
}

// A caller may select another table of Shift_JIS codes.
TEST_F(IoScannersTest, ShiftJisIsCheckedAgainstTheTableOfTheContext) {
    ctx->sjis_src_count = 0x82A0;
    Case c;
    c.options.add("code=sjis");
    EXPECT_EQ(scan(c, ExactBuffer("\x82\x9F"), 9), "1/2/2");
    EXPECT_EQ(scan(c, ExactBuffer("\x82\xA0"), 9), "char/1/1");
}

} // namespace
} // namespace jkc::testing
