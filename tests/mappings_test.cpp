// Every mapping: the tables, and what each code becomes in each other code type.
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "support/conversion.h"
#include "support/encoded.h"

namespace jkc::testing {
namespace {

using std::string;

// FNV-1a over values of any width.
struct Digest {
    uint64_t hash = 0xCBF29CE484222325;
    void add(uint64_t value) { hash = (hash ^ value) * 0x100000001B3; }
};

// Any of the exported tables.
struct Table {
    const void *entries = nullptr;
    size_t width = 0;
    uint64_t size = 0;

    uint32_t operator[](uint64_t i) const {
        return width == 1   ? static_cast<const uint8_t *>(entries)[i]
               : width == 2 ? static_cast<const uint16_t *>(entries)[i]
                            : static_cast<const uint32_t *>(entries)[i];
    }
};

#define TABLE(name)                                                                                                    \
    {                                                                                                                  \
#name, Table { name, sizeof *(name), name##_size }                                                             \
    }
std::map<string, Table> kTables = {
    TABLE(_sjis2unibe932_table),
    TABLE(_jis2unibe50221_table),
    TABLE(_jis2unibe2022jp2004_table01),
    TABLE(_jis2unibe2022jp2004_table02),
    TABLE(_euc2unibecommon_table00),
    TABLE(_euc2unibe20932_table00),
    TABLE(_euc2unibe20932_table8f),
    TABLE(_euc2unibe51932_table00),
    TABLE(_euc2unibems_table00),
    TABLE(_euc2unibems_table8f),
    TABLE(_unibe2sjis932_table),
    TABLE(_unibe2jis50221_table),
    TABLE(_unibe2jis50221_table_bits),
    TABLE(_unibe2jis2022jp2004_table),
    TABLE(_unibe2jis2022jp2004_table_bits),
    TABLE(_unibe2jis2022jp2004_table_srg),
    TABLE(_unibe2jis2022jp2004_table_srg_bits),
    TABLE(_unibe2euccommon_table),
    TABLE(_unibe2euc51932_table),
    TABLE(_unibe2euc20932_table),
    TABLE(_unibe2eucms_table),
    TABLE(_unibe_def_table),
};

// The codes whose character is written as another code or not at all.
void show_one_way(std::ostream &out, const Table &table, const Options &options) {
    const Table encoding = kTables[options.text("back")];
    const Table supplementary = kTables["_unibe2jis2022jp2004_table_srg"];
    out << " one_way=";
    for (uint32_t i = 0; i < table.size; i++) {
        const uint32_t c = table[i];
        const uint32_t back = c >= 0x20000 ? supplementary[c - 0x20000] : c < encoding.size ? encoding[c] : 0;
        const uint32_t code = i + static_cast<uint32_t>(options.number("offset"));
        if (c != 0 && back != (static_cast<uint32_t>(options.number("prefix")) | code)) {
            out << code << ",";
        }
    }
}

string table_result(const Case &c) {
    const Table table = kTables[c.name];
    const auto length = static_cast<uint64_t>(c.options.number("length", static_cast<int64_t>(table.size)));
    Digest digest;
    int mapped = 0;
    int foreign = 0;
    for (uint64_t i = 0; i < length; i++) {
        digest.add(table[i]);
        mapped += table[i] != 0 ? 1 : 0;
        foreign += table[i] != 0 && i < _unibe_def_table_size && (_unibe_def_table[i] & 0x203) != 3 ? 1 : 0;
    }
    std::ostringstream out;
    out << "size=" << table.size << " mapped=" << mapped << std::hex << std::uppercase << " digest=" << digest.hash;
    if (c.options.has("japanese")) {
        out << " foreign=" << foreign;
    }
    if (c.options.has("back")) {
        show_one_way(out, table, c.options);
    }
    // Those that the file shows.
    std::istringstream words(c.output);
    for (string word; words >> word;) {
        if (const size_t colon = word.find(':'); colon != string::npos) {
            out << ' ' << word.substr(0, colon) << ':' << table[std::stoul(word, nullptr, 16)];
        }
    }
    return out.str();
}

TEST(MappingsTest, AnEntryIsWrongOrLost) {
    check_results("tables.txt", table_result);
    EXPECT_EQ(_jis2unibe2022jp2004_table02_offset, 8480U);
    EXPECT_EQ(_unibe2jis2022jp2004_table_srg_bits_offset, 11808U);
}

struct Range {
    int first, last;
};
constexpr Range kAnyByte = {0, 0xFF};

string bytes_in(Range range, int except = -1) {
    string bytes;
    for (int byte = range.first; byte <= range.last; byte++) {
        bytes += byte != except ? string(1, static_cast<char>(byte)) : "";
    }
    return bytes;
}

string pairs(Range leads, Range trails = kAnyByte, const string &prefix = "", int except_lead = -1) {
    string all;
    for (const char lead : bytes_in(leads, except_lead)) {
        for (const char trail : bytes_in(trails)) {
            all += prefix + lead + trail;
        }
    }
    return all;
}

// Every code of a code type, assigned or not, and every byte that is none.
string every_code(int code_type) {
    constexpr int kEsc = 0x1B;
    string all;
    std::u32string characters;
    switch (family_of(code_type)) {
    case Family::kSjis:
        return bytes_in({0, 0x7F}) + bytes_in({0xA1, 0xDF}) + pairs({0x80, 0xA0}) + pairs({0xE0, 0xFF});
    case Family::kEuc:
        return bytes_in({0, 0x8D}) + bytes_in({0x90, 0xA0}) + pairs({0x8E, 0x8E}) + pairs({0xA1, 0xFF}) +
               pairs(kAnyByte, kAnyByte, "\x8F");
    case Family::kJis:
        all = bytes_in({0, 0x0D}) + bytes_in({0x0F, 0xFF}, kEsc);
        for (const char *set : {"$@", "$B", "$(D", "$(O", "$(Q", "$(P"}) {
            all.append("\x1B").append(set).append(pairs(kAnyByte, kAnyByte, "", kEsc));
        }
        all.append("\x1B(I").append(bytes_in(kAnyByte, kEsc));
        return all.append("\x1B(B\x0E").append(bytes_in({0x21, 0x5F})).append("\x0F");
    default: // planes 0, 1, 2 and 16
        for (char32_t c = 0; c < 0x110000; c = c == 0x2FFFF ? 0x100000 : c + 1) {
            characters += c;
        }
        return encoded(characters, code_type);
    }
}

TEST(MappingsTest, ACodeAnywhereIsConvertedOtherwise) {
    check_results("repertoire.txt", [](Case c) {
        if (c.input.empty()) {
            c.input = every_code(static_cast<int>(c.options.number("src")));
        }
        const Outcome outcome = convert(c, Way::kBuffer);
        EXPECT_TRUE(outcome.reusable);
        Digest digest;
        for (const string &chunk : outcome.chunks) {
            for (const char byte : chunk) {
                digest.add(static_cast<uint8_t>(byte));
            }
            digest.add(0x100); // its end
        }
        std::ostringstream out;
        out << (outcome.status != 0 ? "status=" + std::to_string(outcome.status) + " " : "") << outcome.summary
            << "size=" << outcome.text().size() << std::hex << std::uppercase << " digest=" << digest.hash;
        return out.str();
    });
}

} // namespace
} // namespace jkc::testing
