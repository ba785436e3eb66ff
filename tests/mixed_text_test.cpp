// In a long text, characters are converted many at a time, by other code than single ones. What comes out is the same.
#include <random>

#include <gtest/gtest.h>

#include "support/conversion.h"

namespace jkc::testing {
namespace {

using std::string;

string big_endian(const std::u16string &units) {
    string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit);
    }
    return bytes;
}

string swapped(string bytes) {
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
    return bytes;
}

struct Source {
    int type;
    std::vector<string> characters;
};

// Characters of each length in every target, line ends, and some that targets lack. Supplementary characters are
// invalid bytes to some converters from UTF-8, which group them.
std::vector<Source> sources() {
    const std::vector<string> utf16 = {
        big_endian(u"a"),      big_endian(u"~"),          big_endian(u"\n"),     big_endian(u"\r\n"),
        big_endian(u"\rb"),    big_endian(u"\u00A5"),     big_endian(u"\u0416"), big_endian(u"\u203E"),
        big_endian(u"\u3042"), big_endian(u"\u6F22"),     big_endian(u"\u9AD9"), big_endian(u"\uFF71"),
        big_endian(u"\uE9FF"), big_endian(u"\U00020B9F"), big_endian({0xDC00}),  string(2, '\0')};
    std::vector<Source> all = {
        {JKC_TYPE_SJIS,
         {"a", "~", "\n", "\r\n", "\rb", "\xB1", "\x82\xA0", "\x8A\xBF", "\x81\x60", "\xFC\x4B", "\x85\x40",
          string(1, '\0')}},
        {JKC_TYPE_EUC_20932,
         {"a", "~", "\n", "\r\n", "\rb", "\x8E\xB1", "\xA4\xA2", "\xB4\xC1", "\x8F\xB0\xA1", "\xA9\xA1",
          string(1, '\0')}},
        {JKC_TYPE_UTF8,
         {"a", "~", "\n", "\r\n", "\rb", "\u00E9", "\u0416", "\u203E", "\u3042", "\u6F22", "\u9AD9", "\uFF71", "\uE9FF",
          string(1, '\0')}},
        {JKC_TYPE_UTF16BE, utf16},
        {JKC_TYPE_UTF16LE, {}},
    };
    for (const string &character : utf16) {
        all.back().characters.push_back(swapped(character));
    }
    return all;
}

Outcome converted(const string &input, const Source &source, int target, int line_type, int suppress) {
    Case c{"", {}, input, ""};
    c.options.add("src=" + std::to_string(source.type) + " dst=" + std::to_string(target) +
                  " eol=" + std::to_string(line_type) + " suppress=" + std::to_string(suppress));
    return convert(c, Way::kBuffer);
}

// Each character several times in a row, and in any order, over several blocks.
std::vector<size_t> random_order(size_t characters, std::mt19937 &random) {
    std::vector<size_t> order;
    while (order.size() < 12000) {
        const size_t choice = random() % characters;
        order.insert(order.end(), random() % 4 == 0 ? 1 + random() % 40 : 1, choice);
    }
    return order;
}

TEST(MixedTextTest, ACharacterAmongOthersIsConvertedOtherwiseThanAlone) {
    std::mt19937 random(1);
    for (const Source &source : sources()) {
        for (const int target :
             {JKC_TYPE_SJIS, JKC_TYPE_EUC_51932, JKC_TYPE_EUC_MS, JKC_TYPE_UTF16BE, JKC_TYPE_UTF16LE, JKC_TYPE_UTF8}) {
            for (const int options : {0, 1, 2, 3, 4, 10, 11}) {
                const int line_type = options % 10;
                const int suppress = options / 10;
                if (source.type == target) {
                    continue; // a copy
                }
                std::vector<Outcome> alone;
                for (const string &character : source.characters) {
                    alone.push_back(converted(character, source, target, line_type, suppress));
                }
                string text;
                string expected;
                uint32_t lost = 0;
                size_t last_lost = 0;
                for (const size_t i : random_order(source.characters.size(), random)) {
                    expected += alone[i].text();
                    lost += alone[i].nochar_count;
                    last_lost = alone[i].nochar_count > 0 ? text.size() : last_lost;
                    text += source.characters[i];
                }
                const Outcome outcome = converted(text, source, target, line_type, suppress);
                SCOPED_TRACE("from " + std::to_string(source.type) + " to " + std::to_string(target) + ", line type " +
                             std::to_string(line_type));
                ASSERT_EQ(outcome.status, 0);
                ASSERT_TRUE(outcome.text() == expected);
                ASSERT_EQ(outcome.nochar_count, lost);
                ASSERT_EQ(outcome.last_index, lost > 0 ? static_cast<int64_t>(last_lost) : -1);
            }
        }
    }
}

} // namespace
} // namespace jkc::testing
