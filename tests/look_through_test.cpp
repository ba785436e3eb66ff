// Text is looked through for line ends and for what Unicode text needs, many bytes at a time. Nothing must be overlooked
// or made up, wherever it stands.
#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/exact_buffer.h"

namespace jkc::testing {
namespace {

// In units: the first ones of a text, and those around the block edges of texts in bytes and in UTF-16.
std::vector<size_t> places() {
    std::vector<size_t> all;
    constexpr size_t kBlock = JKC_BLOCK_READ;
    for (const size_t from : {size_t{0}, kBlock / 2 - 40, kBlock - 40, 3 * kBlock / 2 - 40}) {
        for (size_t i = 0; i < 60; ++i) {
            all.push_back(from + i);
        }
    }
    return all;
}

std::string encoded(const std::u16string &text, int code_type) {
    std::string bytes;
    for (const char16_t c : text) {
        const auto put = [&bytes](int byte) { bytes += static_cast<char>(byte); };
        if (code_type != JKC_TYPE_UTF8) {
            put(code_type == JKC_TYPE_UTF16BE ? c >> 8 : c);
            put(code_type == JKC_TYPE_UTF16BE ? c : c >> 8);
        } else if (c < 0x80) {
            put(c);
        } else if (c < 0x800) {
            put(0xC0 | c >> 6);
            put(0x80 | (c & 0x3F));
        } else {
            put(0xE0 | c >> 12);
            put(0x80 | (c >> 6 & 0x3F));
            put(0x80 | (c & 0x3F));
        }
    }
    return bytes;
}

struct Seen {
    int line_ends;
    bool srg;
    bool utfmac;
    bool operator==(const Seen &) const = default;
};
void PrintTo(const Seen &seen, std::ostream *out) {
    *out << "line ends " << seen.line_ends << ", beyond the BMP " << seen.srg << ", decomposed " << seen.utfmac;
}

Seen look_through(const std::string &bytes, int code_type) {
    const ExactBuffer input(bytes);
    JkcContext *ctx = create_jkc();
    ctx->in_ptr = input.data();
    ctx->in_end = ctx->in_ptr + input.size();
    ctx->mode = JKC_MODE_BUFFER;
    EXPECT_EQ(_fill_buffer(ctx, code_type), 0);
    const Seen seen{_check_ln(ctx, 0, code_type), ctx->srg_exists != 0, ctx->utfmac_exists != 0};
    release_jkc(ctx);
    return seen;
}

constexpr int kTypes[] = {JKC_TYPE_UTF8, JKC_TYPE_UTF16BE, JKC_TYPE_UTF16LE};

TEST(LookThroughTest, ALineEndIsOverlookedOrTakenForAnotherKind) {
    struct LineEnd {
        std::u16string text;
        int kind;
    };
    const LineEnd kinds[] = {{u"\n", JKC_LINE_LF}, {u"\r", JKC_LINE_CR}, {u"\r\n", JKC_LINE_CRLF}};
    for (const LineEnd &others : kinds) {
        std::u16string filler;
        while (filler.size() < 3 * size_t{JKC_BLOCK_READ}) {
            filler += u"ab" + others.text + u"abcdefg";
        }
        for (const LineEnd &one : kinds) {
            for (const size_t place : places()) {
                // Between letters, so that it stays what it is.
                const std::u16string text = filler.substr(0, place) + u"x" + one.text + u"y" + filler.substr(place);
                const bool splits = filler[place] == u'\n' && place > 0 && filler[place - 1] == u'\r';
                const int split = splits ? JKC_LINE_CR | JKC_LINE_LF : 0;
                for (const int type : kTypes) {
                    ASSERT_EQ(look_through(encoded(text, type), type),
                              (Seen{one.kind | others.kind | split, false, false}))
                        << "type " << type << " at " << place;
                }
            }
        }
    }
}

TEST(LookThroughTest, AMarkOrASurrogateIsOverlookedOrMadeUp) {
    struct Sequence {
        std::u16string text;
        bool decomposed;
        bool in_utf8;
    };
    const Sequence sequences[] = {
        {u"\u304B\u3099", true, true}, // bases and their marks
        {u"\u306F\u309A", true, true},         {u"\u0438\u0306", true, true},
        {u"\u0435\u0308", true, false},        // not looked for in UTF-8
        {u"\u6F22\u3042\u3099", false, false}, // behind a kana that takes none
    };
    for (const char16_t *line : {u"abcdefg ", u"\u6F22\u5B57\u3042"}) {
        std::u16string filler;
        while (filler.size() < 2 * size_t{JKC_BLOCK_READ}) {
            filler += line;
        }
        for (const size_t place : places()) {
            for (const Sequence &sequence : sequences) {
                const std::u16string text = filler.substr(0, place) + sequence.text + filler.substr(place);
                for (const int type : kTypes) {
                    const bool expected = type == JKC_TYPE_UTF8 ? sequence.in_utf8 : sequence.decomposed;
                    ASSERT_EQ(look_through(encoded(text, type), type), (Seen{0, false, expected}))
                        << "type " << type << " at " << place;
                }
            }
            const std::u16string high = filler.substr(0, place) + char16_t{0xD840} + filler.substr(place);
            EXPECT_TRUE(look_through(encoded(high, JKC_TYPE_UTF16BE), JKC_TYPE_UTF16BE).srg) << place;
            EXPECT_TRUE(look_through(encoded(high, JKC_TYPE_UTF16LE), JKC_TYPE_UTF16LE).srg) << place;
            const std::string utf8 = encoded(filler.substr(0, place), JKC_TYPE_UTF8) + "\xF0\x9F\x98\x80" +
                                     encoded(filler.substr(place), JKC_TYPE_UTF8);
            EXPECT_TRUE(look_through(utf8, JKC_TYPE_UTF8).srg) << place;
        }
    }
}

} // namespace
} // namespace jkc::testing
