#include <gtest/gtest.h>

#include "support/conversion.h"

namespace jkc::testing {
namespace {

// One file for each family of sources.
class ConvertTest : public ::testing::TestWithParam<const char *> {
protected:
    std::vector<Case> cases() const { return read_cases(std::string(GetParam()) + ".txt"); }
};

std::string title(const Case &c) { return c.name + ", to " + c.options.text("dst") + ", from " + show_bytes(c.input); }

size_t unit_of(int64_t type) { return type >= JKC_TYPE_UTF16BE && type <= JKC_TYPE_UTF16LE_BOM ? 2 : 1; }

TEST_P(ConvertTest, EveryCaseFromBufferStreamFileAndReader) {
    for (const Case &c : cases()) {
        SCOPED_TRACE(title(c));
        for (const Way way : {Way::kBuffer, Way::kStream, Way::kFile, Way::kReader}) {
            EXPECT_EQ(convert(c, way), expected_outcome(c)) << static_cast<int>(way);
        }
    }
}

// Behind letters that put each character across the end of a block, and each piece of output to where it is just handed
// over to the writer, and just not.
TEST_P(ConvertTest, ABlocksEndCutsACharacterOrOutputIsHandedOverAStepTooEarlyOrTooLate) {
    for (const Case &c : cases()) {
        if (!c.options.has("flush") || c.options.has("still")) {
            continue;
        }
        std::vector<size_t> paddings;
        const size_t unit = unit_of(c.options.number("src"));
        for (size_t before = unit; before < c.input.size(); before += unit) {
            paddings.push_back((JKC_BLOCK_READ - before) / unit);
        }
        const auto flush_above = static_cast<size_t>(c.options.number("flush"));
        size_t written = 0;
        for (const std::string &piece : parse_pieces(c.output)) {
            written += piece.size();
            for (const size_t pending : {flush_above, flush_above + 1}) {
                paddings.push_back((pending - written) / unit_of(c.options.number("dst")));
            }
        }
        for (const size_t padding : paddings) {
            SCOPED_TRACE(title(c) + " behind " + std::to_string(padding));
            ASSERT_EQ(convert(c, Way::kBuffer, static_cast<int64_t>(padding)), expected_behind_padding(c, padding));
        }
    }
}

// A converter that is fed hands over the same pieces, however its input is cut.
TEST_P(ConvertTest, ACutOfWhatIsFedShows) {
    for (const Case &c : cases()) {
        if (!can_be_fed(c)) {
            continue;
        }
        SCOPED_TRACE(title(c));
        const Outcome whole = as_fed(convert(c, Way::kBuffer));
        for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{977}, size_t{8128}, kRandomPieces}) {
            EXPECT_EQ(convert_fed(c, piece, false), whole) << piece;
            if (!c.options.has("answer")) {
                const Outcome filled = convert_fed(c, piece, true);
                EXPECT_EQ(filled.text(), whole.text()) << piece;
                EXPECT_EQ(filled.status, whole.status) << piece;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Families, ConvertTest,
                         ::testing::Values("from_utf8", "from_sjis", "from_euc", "from_jis", "from_utf16", "copies",
                                           "writer_answers"),
                         [](const auto &family) { return std::string(family.param); });

} // namespace
} // namespace jkc::testing
