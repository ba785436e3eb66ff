// In a long text, characters are converted many at a time, by other code than single ones. What comes out is the same.
#include <random>

#include <gtest/gtest.h>

#include "support/conversion.h"

namespace jkc::testing {
namespace {

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
    for (const Case &source : read_cases("mixed_text.txt")) {
        const std::vector<std::string> characters = parse_pieces(source.output);
        for (const char *target : {"4", "7", "8", "11", "13", "15"}) {
            for (const char *options :
                 {"eol=0", "eol=1", "eol=2", "eol=3", "eol=4", "suppress=1", "suppress=1 eol=1"}) {
                if (source.options.text("src") == target) {
                    continue; // a copy
                }
                const auto converted = [&](const std::string &input) {
                    Case c = source;
                    c.input = input;
                    c.options.add(std::string("dst=") + target + " " + options);
                    return convert(c, Way::kBuffer);
                };
                std::vector<Outcome> alone;
                for (const std::string &character : characters) {
                    alone.push_back(converted(character));
                }
                std::string text;
                std::string expected;
                uint32_t lost = 0;
                size_t last_lost = 0;
                for (const size_t i : random_order(characters.size(), random)) {
                    expected += alone[i].text();
                    lost += alone[i].nochar_count;
                    last_lost = alone[i].nochar_count > 0 ? text.size() : last_lost;
                    text += characters[i];
                }
                const Outcome outcome = converted(text);
                SCOPED_TRACE("from " + source.name + " to " + target + ", " + options);
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
