#include "jkc.h"

#include <map>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace jkc::testing {
namespace {

/** Any of the exported tables. */
struct Table {
    const char *name;
    const void *entries;
    size_t width;
    uint64_t size;

    uint32_t operator[](uint64_t i) const {
        return width == 1   ? static_cast<const uint8_t *>(entries)[i]
               : width == 2 ? static_cast<const uint16_t *>(entries)[i]
                            : static_cast<const uint32_t *>(entries)[i];
    }
    /** An entry, 0 where there is none. */
    uint32_t at(uint64_t i) const { return i < size ? (*this)[i] : 0; }
};

#define TABLE(name)                                                                                                    \
    Table { #name, name, sizeof *(name), name##_size }

/** How often each value stands in a table. */
std::map<uint32_t, int> spread(const Table &table) {
    std::map<uint32_t, int> counts;
    for (uint64_t i = 0; i < table.size; i++) {
        counts[table[i]]++;
    }
    return counts;
}

/** FNV-1a over the entries as 64-bit words. */
uint64_t digest(const Table &table) {
    uint64_t hash = 0xCBF29CE484222325;
    for (uint64_t i = 0; i < table.size; i++) {
        hash = (hash ^ table[i]) * 0x100000001B3;
    }
    return hash;
}

// The digests were computed from the published mappings by another program: one wrong character in a chart shows here.
TEST(TablesTest, NoEntryIsWrongOrLost) {
    struct Case {
        Table table;
        uint64_t size;
        int mapped;
        uint64_t digest;
    };
    const Case cases[] = {
        {TABLE(_sjis2unibe932_table), 64588, 9401, 0xEF61A717946EBC38},
        {TABLE(_jis2unibe50221_table), 31871, 7453, 0x63BB6EF388304BBA},
        {TABLE(_jis2unibe2022jp2004_table01), 32384, 8898, 0x92C4B3B3CE47BC32},
        {TABLE(_jis2unibe2022jp2004_table02), 23904, 2436, 0xCD5BE37C5D8D7C04},
        {TABLE(_euc2unibecommon_table00), 62631, 7069, 0x250494CFDF07E929},
        {TABLE(_euc2unibe20932_table00), 62631, 7069, 0x250494CFDF07E929},
        {TABLE(_euc2unibe20932_table8f), 60900, 6067, 0xE4D4CB4DB71465B5},
        {TABLE(_euc2unibe51932_table00), 64767, 7516, 0x00C81CA108B6275A},
        {TABLE(_euc2unibems_table00), 62631, 7173, 0xE1A4B846CE05C20B},
        {TABLE(_euc2unibems_table8f), 62719, 6159, 0xE6F242222286DBD1},
        {TABLE(_unibe2sjis932_table), 65510, 9408, 0xB6EFA26679F5228F},
        {TABLE(_unibe2jis50221_table), 65510, 7524, 0x7AD9D270119158FF},
        {TABLE(_unibe2jis50221_table_bits), 65510, 65384, 0xF0DAB6E289624580},
        {TABLE(_unibe2jis2022jp2004_table), 65510, 11101, 0x771CBA511B0880BF},
        {TABLE(_unibe2jis2022jp2004_table_bits), 65510, 65383, 0x6DA11E91F80DC66E},
        {TABLE(_unibe2jis2022jp2004_table_srg), 42675, 303, 0xC1462A3030189EAE},
        {TABLE(_unibe2jis2022jp2004_table_srg_bits), 42675, 42675, 0xCA497D447DB07BF1},
        {TABLE(_unibe2euccommon_table), 65510, 7071, 0xDD1B3C7664FC0CE8},
        {TABLE(_unibe2euc51932_table), 65510, 7523, 0x0F848B0B43D75555},
        {TABLE(_unibe2euc20932_table), 65510, 13141, 0xFE651BD6E3262374},
        {TABLE(_unibe2eucms_table), 65510, 13338, 0x4485E401A75DAF61},
        {TABLE(_unibe_def_table), 65536, 37143, 0x5A7C2E3A6D4F1D3E},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.table.name);
        EXPECT_EQ(c.table.size, c.size);
        EXPECT_EQ(static_cast<int>(c.table.size) - spread(c.table)[0], c.mapped);
        EXPECT_EQ(digest(c.table), c.digest);
    }
    EXPECT_EQ(_jis2unibe2022jp2004_table02_offset, 8480U);
    EXPECT_EQ(_unibe2jis2022jp2004_table_srg_bits_offset, 11808U);
}

TEST(TablesTest, DesignationsAndClassesAreSpreadAsPublished) {
    using Spread = std::map<uint32_t, int>;
    EXPECT_EQ(spread(TABLE(_unibe2jis50221_table_bits)),
              (Spread{{0, 126}, {1, 63}, {4, 6961}, {6, 372}, {255, 57988}}));
    EXPECT_EQ(spread(TABLE(_unibe2jis2022jp2004_table_bits)),
              (Spread{{0, 127}, {1, 63}, {2, 2}, {4, 6881}, {7, 1860}, {8, 9}, {9, 2159}, {255, 54409}}));
    EXPECT_EQ(spread(TABLE(_unibe2jis2022jp2004_table_srg_bits)), (Spread{{7, 25}, {8, 1}, {9, 277}, {255, 42372}}));
    EXPECT_EQ(spread(TABLE(_unibe_def_table)),
              (Spread{{0, 28393}, {0x003, 22675}, {0x203, 14414}, {0x413, 40}, {0x433, 10}, {0x453, 2}, {0x483, 2}}));
}

TEST(TablesTest, TwoByteTablesHoldNothingBehindTheirSize) {
    for (const Table &table :
         {TABLE(_sjis2unibe932_table), TABLE(_jis2unibe50221_table), TABLE(_jis2unibe2022jp2004_table01),
          TABLE(_euc2unibecommon_table00), TABLE(_euc2unibe20932_table00), TABLE(_euc2unibe51932_table00),
          TABLE(_euc2unibems_table00)}) {
        for (uint64_t code = table.size; code < 0x10000; code++) {
            ASSERT_EQ(table[code], 0U) << table.name << " " << std::hex << code;
        }
    }
}

TEST(TablesTest, CharactersWithSeveralPossibleCodesGoToTheKnownOne) {
    struct Row {
        uint32_t character, sjis, jis, jis_set, jis2004, jis2004_set, euc, euc51932, euc20932, euc_ms;
    };
    const Row rows[] = {
        {0x3042, 0x82A0, 0x2422, 4, 0x2422, 4, 0xA4A2, 0xA4A2, 0xA4A2, 0xA4A2},
        {0x4E9C, 0x889F, 0x3021, 4, 0x3021, 4, 0xB0A1, 0xB0A1, 0xB0A1, 0xB0A1},
        {0x301C, 0x8160, 0x2141, 4, 0x2141, 4, 0xA1C1, 0xA1C1, 0xA1C1, 0xA1C1},
        {0xFF5E, 0x8160, 0x2141, 6, 0x2232, 7, 0, 0xA1C1, 0, 0xA1C1},
        {0x2016, 0x8161, 0x2142, 4, 0x2142, 4, 0, 0xA1C2, 0xA1C2, 0xA1C2},
        {0x2225, 0x8161, 0x2142, 4, 0x2254, 7, 0, 0xA1C2, 0, 0xA1C2},
        {0x2212, 0x817C, 0x215D, 4, 0x215D, 4, 0, 0xA1DD, 0xA1DD, 0xA1DD},
        {0xFF0D, 0x817C, 0x215D, 4, 0x2231, 7, 0xA1DD, 0xA1DD, 0xA1DD, 0xA1DD},
        {0x00A5, 0x5C, 0x5C, 255, 0x216F, 2, 0, 0x5C, 0x5C, 0x5C},
        {0x203E, 0, 0x7E, 4, 0x2131, 2, 0, 0, 0, 0},
        {0x00A6, 0, 0, 255, 0x2925, 7, 0, 0, 0x8FA2C3, 0},
        {0xFFE4, 0xFA55, 0x7C7C, 4, 0, 255, 0, 0xFCFC, 0x8FA2C3, 0x8FA2C3},
        {0x2460, 0x8740, 0x2D21, 4, 0x2D21, 7, 0, 0xADA1, 0, 0xADA1},
        {0x2116, 0x8782, 0x2D62, 4, 0x2D62, 7, 0, 0xADE2, 0x8FA2F1, 0xADE2},
        {0x2170, 0xFA40, 0x7C71, 6, 0x2C35, 7, 0, 0xFCF1, 0, 0x8FF3F3},
        {0x9AD9, 0xFBFC, 0x7C62, 6, 0, 255, 0, 0xFCE2, 0, 0x8FF4FB},
        {0xFF71, 0xB1, 0x31, 1, 0x31, 1, 0x8EB1, 0x8EB1, 0x8EB1, 0x8EB1},
        {0x3000, 0x8140, 0x2121, 4, 0x2121, 4, 0xA1A1, 0xA1A1, 0xA1A1, 0xA1A1},
        {0x7E6B, 0, 0, 255, 0x7E7E, 8, 0, 0, 0x8FD4DA, 0x8FD4DA},
        // ASCII's ends, additions of 2004, an odd one of the IBM extension, and the last character.
        {0x0000, 0, 0, 0, 0, 0, 0, 0, 0, 0},
        {0x007E, 0x7E, 0x7E, 255, 0x7E, 0, 0x7E, 0x7E, 0x7E, 0x7E},
        {0x007F, 0x7F, 0x7F, 255, 0x7F, 255, 0x7F, 0x7F, 0x7F, 0x7F},
        {0x4FF1, 0, 0, 255, 0x2E21, 8, 0, 0, 0, 0},
        {0x525D, 0, 0, 255, 0x2F7E, 8, 0, 0, 0, 0},
        {0x663B, 0xFAD0, 0x7A36, 4, 0, 255, 0, 0xFAB6, 0, 0x8FF4C2},
        {0xFFE5, 0x818F, 0x216F, 4, 0x216F, 4, 0xA1EF, 0xA1EF, 0xA1EF, 0xA1EF},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::Message() << "U+" << std::hex << row.character);
        EXPECT_EQ(_unibe2sjis932_table[row.character], row.sjis);
        EXPECT_EQ(_unibe2jis50221_table[row.character], row.jis);
        EXPECT_EQ(_unibe2jis50221_table_bits[row.character], row.jis_set);
        EXPECT_EQ(_unibe2jis2022jp2004_table[row.character], row.jis2004);
        EXPECT_EQ(_unibe2jis2022jp2004_table_bits[row.character], row.jis2004_set);
        EXPECT_EQ(_unibe2euccommon_table[row.character], row.euc);
        EXPECT_EQ(_unibe2euc51932_table[row.character], row.euc51932);
        EXPECT_EQ(_unibe2euc20932_table[row.character], row.euc20932);
        EXPECT_EQ(_unibe2eucms_table[row.character], row.euc_ms);
    }
    EXPECT_EQ(_unibe2jis2022jp2004_table_srg[0x20B9F - 0x20000], 0x4F54);
    EXPECT_EQ(_unibe2jis2022jp2004_table_srg_bits[0x20B9F - 0x20000], 8);
}

TEST(TablesTest, CodesWithSeveralPossibleCharactersDecodeToTheKnownOne) {
    struct Case {
        Table table;
        const char *rows; // index:character, in hexadecimal; character 0: unmapped
    };
    const Case cases[] = {
        {TABLE(_sjis2unibe932_table),
         "0:0 7F:7F 80:80 81:0 9F:0 A0:F8F0 A1:FF61 DF:FF9F E0:0 FC:0 FD:F8F1 FE:F8F2 FF:F8F3 82A0:3042 "
         "815F:FF3C 8160:FF5E 81CA:FFE2 81E6:2235 8740:2460 8754:2160 8793:222E FA40:2170 FA55:FFE4 FA56:FF07 "
         "FC4B:9ED1 F040:E000 F9FC:E757 8790:0 8791:0 8792:0 8795:0 8796:0 8797:0 879A:0 879B:0 879C:0 FA54:0 "
         "FA5B:0"},
        {TABLE(_jis2unibe50221_table),
         "7F:7F 7921:7E8A 7C71:2170 7C7E:FF02 2422:3042 2140:FF3C 2141:FF5E 2131:FFE3 224C:FFE2 2D21:2460 "
         "2D35:2160 2D70:0 2D71:0 2D7C:0 7C7B:0"},
        {TABLE(_jis2unibe2022jp2004_table01),
         "7E:7E 7F:0 2422:3042 2141:FF5E 2140:FF3C 222F:FF07 2D21:2460 2E22:2000B 4F54:20B9F 2B52:361 "
         "2232:FF5E 2254:2225 2231:FF0D 2477:0 2478:0 2B44:0 2D70:0"},
        {TABLE(_jis2unibe2022jp2004_table02), "0:0 1:20089 2:4E02 5D56:2A6B2"},
        {TABLE(_euc2unibecommon_table00),
         "7F:7F 80:0 FF:0 8EA1:FF61 8EDF:FF9F A4A2:3042 A1C1:301C A1C0:FF3C A1DD:2212 A1F1:A2 A2CC:AC "
         "A1EF:FFE5 F4A6:7199 ADA1:0"},
        {TABLE(_euc2unibe20932_table8f), "A2AF:2D8 A2B7:FF5E A2C3:A6 A2F1:2116 A9A1:C6 B0A1:4E02 EDE3:9FA5"},
        {TABLE(_euc2unibe51932_table00),
         "80:0 A4A2:3042 A1C1:FF5E A1DD:FF0D A1F1:FFE0 A2CC:FFE2 ADA1:2460 F9A1:7E8A FCFE:FF02"},
        {TABLE(_euc2unibems_table00),
         "80:80 8D:8D 8E:0 8F:0 90:90 9F:9F A0:0 A4A2:3042 A1C1:FF5E A1DD:FF0D A2CC:FFE2 ADA1:2460"},
        {TABLE(_euc2unibems_table8f), "A2B7:301C A2C3:FFE4 A2F1:0 B0A1:4E02 F3F3:2170 F3F4:2171 F4FE:9ED1"},
    };
    for (const Case &c : cases) {
        std::istringstream rows(c.rows);
        uint32_t code = 0;
        uint32_t character = 0;
        char colon = 0;
        while (rows >> std::hex >> code >> colon >> character) {
            EXPECT_EQ(c.table[code], character) << c.table.name << " " << std::hex << code;
        }
        EXPECT_TRUE(rows.eof());
    }
}

TEST(TablesTest, RangesThatRepeatOtherCodesOrAreNotAssignedStayEmpty) {
    struct Range {
        Table table;
        uint32_t first, last;
    };
    const Range ranges[] = {
        {TABLE(_sjis2unibe932_table), 0xED40, 0xEEFC},     {TABLE(_sjis2unibe932_table), 0xFA4A, 0xFA54},
        {TABLE(_sjis2unibe932_table), 0xFA58, 0xFA5B},     {TABLE(_jis2unibe50221_table), 0x7521, 0x787E},
        {TABLE(_euc2unibecommon_table00), 0xADA1, 0xADFE}, {TABLE(_euc2unibe51932_table00), 0xF5A1, 0xF8FE},
        {TABLE(_unibe2jis50221_table), 0xE000, 0xE757},    {TABLE(_unibe_def_table), 0x0500, 0x0505},
    };
    for (const Range &range : ranges) {
        for (uint32_t i = range.first; i <= range.last; i++) {
            ASSERT_EQ(range.table[i], 0U) << range.table.name << " " << std::hex << i;
        }
    }
}

TEST(TablesTest, EachCodeComesBackFromUnicode) {
    struct Case {
        Table decoding, encoding;
        uint32_t prefix;               // stands before the code in the encoding table
        uint32_t offset;               // code of the decoding table's entry 0
        std::vector<uint32_t> one_way; // codes that are read, but written otherwise or not at all
    };
    const Case cases[] = {
        {TABLE(_sjis2unibe932_table), TABLE(_unibe2sjis932_table), 0, 0, {}},
        {TABLE(_jis2unibe50221_table), TABLE(_unibe2jis50221_table), 0, 0, {}},
        {TABLE(_jis2unibe2022jp2004_table01), TABLE(_unibe2jis2022jp2004_table), 0, 0, {0x2141, 0x2142, 0x215D}},
        {TABLE(_jis2unibe2022jp2004_table02), TABLE(_unibe2jis2022jp2004_table), 0, 8480, {}},
        {TABLE(_euc2unibecommon_table00), TABLE(_unibe2euccommon_table), 0, 0, {0xA1C2, 0xA1DD}},
        {TABLE(_euc2unibe20932_table00), TABLE(_unibe2euc20932_table), 0, 0, {}},
        {TABLE(_euc2unibe20932_table8f), TABLE(_unibe2euc20932_table), 0x8F0000, 0, {0xA2B7}},
        {TABLE(_euc2unibe51932_table00), TABLE(_unibe2euc51932_table), 0, 0, {}},
        {TABLE(_euc2unibems_table00), TABLE(_unibe2eucms_table), 0, 0, {}},
        {TABLE(_euc2unibems_table8f), TABLE(_unibe2eucms_table), 0x8F0000, 0, {0xA2B7}},
    };
    const Table supplementary = TABLE(_unibe2jis2022jp2004_table_srg);
    for (const Case &c : cases) {
        std::vector<uint32_t> lost;
        for (uint32_t i = 0; i < c.decoding.size; i++) {
            const uint32_t character = c.decoding[i];
            const uint32_t back =
                character < 0x20000 ? c.encoding.at(character) : supplementary.at(character - 0x20000);
            const uint32_t code = i + c.offset;
            if (character != 0 && back != (c.prefix | code)) {
                lost.push_back(code);
            }
        }
        EXPECT_EQ(lost, c.one_way) << c.decoding.name;
    }
}

TEST(TablesTest, ClassesTellJapaneseFromOtherTextAndKnowWhatTakesAMark) {
    const std::map<uint32_t, uint32_t> classes = {
        {0x0000, 0},     {0x0041, 3},     {0x008E, 0x203}, {0x00B5, 0x203}, {0x0114, 0x203}, {0x2014, 3},
        {0x302A, 0x203}, {0x3042, 3},     {0x3099, 3},     {0x3031, 0x413}, {0x3033, 0x413}, {0x304B, 0x413},
        {0x30F2, 0x413}, {0x306F, 0x433}, {0x30DB, 0x433}, {0x0415, 0x453}, {0x0435, 0x453}, {0x0418, 0x483},
        {0x0438, 0x483}, {0x4E00, 3},     {0x4E21, 3},     {0x4E20, 0x203}, {0x9FA5, 3},     {0x9FA6, 0x203},
        {0xAC00, 0x203}, {0xAC02, 0},     {0xD800, 0},     {0xE000, 3},     {0xE758, 0},     {0xFFFF, 0},
    };
    for (const auto &[character, bits] : classes) {
        EXPECT_EQ(_unibe_def_table[character], bits) << std::hex << character;
    }
    // A character of some code type that does not count as Japanese would turn the judgement of UTF-16 against it.
    for (const Table &encoding :
         {TABLE(_unibe2sjis932_table), TABLE(_unibe2jis50221_table), TABLE(_unibe2jis2022jp2004_table),
          TABLE(_unibe2euccommon_table), TABLE(_unibe2euc51932_table), TABLE(_unibe2euc20932_table),
          TABLE(_unibe2eucms_table)}) {
        for (uint32_t character = 0; character < encoding.size; character++) {
            if (encoding[character] != 0) {
                ASSERT_EQ(_unibe_def_table[character] & 0x203, 3) << encoding.name << " " << std::hex << character;
            }
        }
    }
}

} // namespace
} // namespace jkc::testing
