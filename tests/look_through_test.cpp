// Text is looked through for line ends and for what Unicode text needs, many bytes at a time. Nothing must be overlooked
// or made up, wherever it stands.
#include <gtest/gtest.h>

#include "support/encoded.h"
#include "support/exact_buffer.h"

namespace jkc::testing {
namespace {

constexpr int kTypes[] = {JKC_TYPE_UTF8, JKC_TYPE_UTF16BE, JKC_TYPE_UTF16LE};

// A line that is repeated over several blocks, with what is put in behind that many of its characters.
struct Filler {
    Filler(std::u32string_view line_, int type_) : line(line_), type(type_) {
        const std::string bytes = encoded(line, type);
        width = bytes.size() / line.size();
        while (text.size() < 3 * size_t{JKC_BLOCK_READ} * width) {
            text += bytes;
        }
    }
    // "line ends", "beyond the BMP", "decomposed".
    std::array<int, 3> look_through(size_t place, std::u32string_view put_in) const {
        const ExactBuffer input(text.substr(0, place * width) + encoded(put_in, type) + text.substr(place * width));
        JkcContext *ctx = create_jkc();
        ctx->in_ptr = input.data();
        ctx->in_end = ctx->in_ptr + input.size();
        ctx->mode = JKC_MODE_BUFFER;
        EXPECT_EQ(_fill_buffer(ctx, type), 0);
        const std::array seen{_check_ln(ctx, 0, type), int{ctx->srg_exists}, int{ctx->utfmac_exists}};
        release_jkc(ctx);
        return seen;
    }

    std::u32string line;
    int type;
    size_t width; // of a character
    std::string text;
};

// Calls check(place) with the first places of a text and those around the block edges of texts in bytes and in UTF-16.
void at_each_place(const auto &check) {
    constexpr size_t kBlock = JKC_BLOCK_READ;
    for (const size_t from : {size_t{0}, kBlock / 2 - 40, kBlock - 40, 3 * kBlock / 2 - 40}) {
        for (size_t i = 0; i < 60; ++i) {
            SCOPED_TRACE(from + i);
            check(from + i);
        }
    }
}

TEST(LookThroughTest, ALineEndIsOverlookedOrTakenForAnotherKind) {
    const std::pair<std::u32string, int> line_ends[] = {
        {U"\n", JKC_LINE_LF}, {U"\r", JKC_LINE_CR}, {U"\r\n", JKC_LINE_CRLF}};
    for (const auto &others : line_ends) {
        for (const int type : kTypes) {
            const Filler filler(U"ab" + others.first + U"abcdefg", type);
            for (const auto &one : line_ends) {
                at_each_place([&](size_t place) {
                    const bool splits = others.first.size() == 2 && place % filler.line.size() == 3;
                    const int split = splits ? JKC_LINE_CR | JKC_LINE_LF : 0;
                    // Between letters, so that it stays what it is.
                    EXPECT_EQ(filler.look_through(place, U"x" + one.first + U"y"),
                              (std::array{one.second | others.second | split, 0, 0}))
                        << type;
                });
            }
        }
    }
}

TEST(LookThroughTest, AMarkOrASurrogateIsOverlookedOrMadeUp) {
    const struct {
        std::u32string text;
        int srg, decomposed, decomposed_in_utf8;
    } sequences[] = {
        {U"\u304B\u3099", 0, 1, 1}, // bases and their marks
        {U"\u306F\u309A", 0, 1, 1},       {U"\u0438\u0306", 0, 1, 1},
        {U"\u0435\u0308", 0, 1, 0},       // not looked for in UTF-8
        {U"\u6F22\u3042\u3099", 0, 0, 0}, // behind a kana that takes none
        {U"\U0001F600", 1, 0, 0},
    };
    for (const char32_t *line : {U"abcdefg ", U"\u6F22\u5B57\u3042"}) {
        for (const int type : kTypes) {
            const Filler filler(line, type);
            at_each_place([&](size_t place) {
                for (const auto &sequence : sequences) {
                    const int decomposed = type == JKC_TYPE_UTF8 ? sequence.decomposed_in_utf8 : sequence.decomposed;
                    EXPECT_EQ(filler.look_through(place, sequence.text), (std::array{0, sequence.srg, decomposed}))
                        << type;
                }
                if (type != JKC_TYPE_UTF8) { // a high surrogate will do
                    EXPECT_EQ(filler.look_through(place, U"\xD840")[1], 1) << type;
                }
            });
        }
    }
}

} // namespace
} // namespace jkc::testing
