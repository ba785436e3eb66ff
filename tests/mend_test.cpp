// Mojibake: texts are broken in every way that is known, and mended; sound texts stay as they are.
#include <gtest/gtest.h>

#include <fstream>

#include "mend/bytes_again.h"
#include "mend/ways.h"
#include "support/case_file.h"
#include "support/exact_buffer.h"
#include "support/failing_alloc.h"
#include "support/same_text.h"

namespace jkc::testing {
namespace {

using std::string;

const string kReplaced = "\xEF\xBF\xBD";

struct Mended {
    int32_t status = 0;
    string text; // the given one where nothing is proposed
    JkcMending how = {};

    bool operator==(const string &other) const { return text == other; }
};

Mended mend(const string &text) {
    const ExactBuffer given(text);
    Mended answer;
    answer.text = text;
    answer.how.size = sizeof answer.how;
    uint8_t *out = nullptr;
    size_t length = 0;
    answer.status = jkc_unmojibake(given.data(), given.size(), &out, &length, &answer.how);
    EXPECT_EQ(out != nullptr, answer.how.count > 0);
    if (out != nullptr) {
        EXPECT_EQ(out[length], '\0');
        answer.text.assign(reinterpret_cast<char *>(out), length);
    }
    jkc_free(out);
    return answer;
}

string to_utf8(std::u32string_view text) {
    string units;
    for (const char32_t c : text) {
        const auto unit = static_cast<char16_t>(c); // none of the texts leaves the BMP
        units.append(reinterpret_cast<const char *>(&unit), sizeof unit);
    }
    return converted(units, kUtf16, JKC_TYPE_UTF8).text;
}

std::u32string characters_of(const string &text) {
    const string units = converted(text, JKC_TYPE_UTF8, kUtf16).text;
    std::u32string characters;
    for (size_t i = 0; i + 1 < units.size(); i += 2) {
        char16_t unit;
        memcpy(&unit, &units[i], 2);
        characters += unit;
    }
    return characters;
}

std::vector<string> lines_of(const string &path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::vector<string> lines;
    for (string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

// Parts of so many characters, which begin `step` characters apart; those that are ASCII are left out.
std::vector<string> parts_of(const std::vector<string> &lines, size_t length, size_t step) {
    std::vector<string> parts;
    for (const string &line : lines) {
        const std::u32string characters = characters_of(line);
        for (size_t i = 0; i + length <= characters.size(); i += step) {
            string part = to_utf8(std::u32string_view(characters).substr(i, length));
            if (std::any_of(part.begin(), part.end(), [](char c) { return (c & 0x80) != 0; })) {
                parts.push_back(part);
            }
        }
    }
    return parts;
}

// The text as it is misread. With `lossy`, what the encoding lacks is replaced, else C1 control characters stand for it.
Converted misread(const string &text, JkcMisreading misreading, bool lossy) {
    const Converted bytes = converted(text, JKC_TYPE_UTF8, misreading.was);
    EXPECT_EQ(bytes.lost, 0U) << text;
    if (misreading.read_as < JKC_READ_CP1252) {
        return converted(bytes.text, misreading.read_as, JKC_TYPE_UTF8);
    }
    Converted read{};
    std::u32string characters;
    for (const char c : bytes.text) {
        const auto byte = static_cast<uint8_t>(c);
        characters += static_cast<char32_t>(
            byte < 0x80 ? byte : single_byte_character(single_byte_set(misreading.read_as), byte));
        if (lossy && misreading.read_as == JKC_READ_CP1252 && characters.back() >= 0x80 && characters.back() < 0xA0) {
            characters.back() = 0xFFFD;
            ++read.lost;
        }
    }
    read.text = to_utf8(characters);
    return read;
}

// Whether what came back is the text but for what was lost.
bool is_rest(const string &mended, const string &text) {
    size_t place = 0;
    for (size_t i = 0; i < mended.size(); ++i) {
        if (mended.compare(i, kReplaced.size(), kReplaced) == 0) {
            i += kReplaced.size() - 1;
            continue;
        }
        place = text.find(mended[i], place);
        if (place == string::npos) {
            return false;
        }
        ++place;
    }
    return true;
}

string share(size_t count, size_t all) {
    char shown[16];
    snprintf(shown, sizeof shown, "%.1f",
             all == 0 ? 0.0 : 100.0 * static_cast<double>(count) / static_cast<double>(all));
    return shown;
}

} // namespace

TEST(Mend, WhatWasBrokenComesBack) {
    static const std::vector<string> kProse = lines_of(JKC_BENCH_TEXT "/prose.txt");
    check_results("mending.txt", [](const Case &c) {
        const bool lossy = c.options.has("lossy");
        const auto length = static_cast<size_t>(c.options.number("length"));
        const auto number = [&c](const char *name) { return static_cast<int32_t>(c.options.number(name)); };
        size_t texts = 0;
        size_t exact = 0;
        size_t rest = 0;
        size_t as_they_are = 0;
        for (const string &text : parts_of(kProse, length, 2)) {
            Converted broken = misread(text, {number("was"), number("as")}, lossy);
            if (c.options.has("then-was") && broken.lost == 0) {
                broken = misread(broken.text, {number("then-was"), number("then-as")}, lossy);
            }
            if ((broken.lost > 0) != lossy) {
                continue;
            }
            const Mended mended = mend(broken.text);
            ++texts;
            exact += mended == text ? 1 : 0;
            rest += lossy && mended.how.count > 0 && !(mended == text) && is_rest(mended.text, text) ? 1 : 0;
            as_they_are += mended.how.count == 0 ? 1 : 0;
        }
        constexpr size_t kMany = 20;
        if (!lossy && length == 20 && texts >= kMany) {
            EXPECT_GE(static_cast<double>(exact), 0.95 * static_cast<double>(texts));
        }
        return std::to_string(texts) + " texts: " + share(exact, texts) + " % exactly, " +
               (lossy ? share(rest, texts) + " % but for what was lost, " : "") + share(as_they_are, texts) +
               " % not at all";
    });
}

TEST(Mend, SoundTextsStayAsTheyAre) {
    std::vector<string> lines = lines_of(JKC_TEST_DATA "/sound.txt");
    for (const char *name : {"/prose.txt", "/markup.html", "/ascii.txt"}) {
        const std::vector<string> more = lines_of(JKC_BENCH_TEXT + string(name));
        lines.insert(lines.end(), more.begin(), more.end());
    }
    std::vector<string> texts = lines;
    constexpr size_t kLengths[] = {3, 5, 10, 20};
    for (const size_t length : kLengths) {
        const std::vector<string> parts = parts_of(lines, length, 1);
        texts.insert(texts.end(), parts.begin(), parts.end());
    }
    for (const string &text : texts) {
        const Mended mended = mend(text);
        EXPECT_EQ(mended.how.count, 0) << text << " became " << mended.text;
    }
    RecordProperty("texts", static_cast<int>(texts.size()));
    EXPECT_GT(texts.size(), 10000U);
}

TEST(Mend, LongTextsAreMendedWhole) {
    string text;
    for (const string &line : lines_of(JKC_BENCH_TEXT "/prose.txt")) {
        text.append(line).append("\n");
    }
    string all(5000, 'a'); // in front of what is looked at first
    while (all.size() < 300000) {
        all += text;
    }
    for (const JkcMisreading way : ways_back()) {
        const Converted broken = misread(all, way, false);
        if (broken.lost == 0) {
            EXPECT_TRUE(mend(broken.text) == all) << jkc_misread_name(way.read_as);
            const Mended mixed = mend(broken.text + text); // a part that was not misread
            EXPECT_TRUE(mixed.how.count == 0) << jkc_misread_name(way.read_as);
        }
    }
}

TEST(Mend, TheRecordTellsHow) {
    const string text = "これは文字化けのテストです。";
    const string twice =
        misread(misread(text, {JKC_TYPE_SJIS, JKC_READ_CP437}, false).text, {JKC_TYPE_UTF8, JKC_READ_CP1252}, false)
            .text;
    for (const string &front : {string(), string("\xEF\xBB\xBF")}) { // a BOM is passed over
        const Mended mended = mend(front + twice);
        EXPECT_TRUE(mended == text);
        ASSERT_EQ(mended.how.count, 2);
        EXPECT_EQ(mended.how.steps[0].was, JKC_TYPE_UTF8);
        EXPECT_EQ(mended.how.steps[0].read_as, JKC_READ_CP1252);
        EXPECT_STREQ(jkc_misread_name(mended.how.steps[1].was), "Shift_JIS");
        EXPECT_STREQ(jkc_misread_name(mended.how.steps[1].read_as), "CP437");
        EXPECT_EQ(mended.how.steps[2].was, 0);
        EXPECT_EQ(mended.how.lost, 0U);
        EXPECT_GT(mended.how.confidence, 90);
    }
    const Mended lossy = mend(misread(text, {JKC_TYPE_SJIS, JKC_READ_CP1252}, true).text);
    EXPECT_TRUE(lossy == "これは文字化けのテストです\xEF\xBF\xBD") << lossy.text;
    EXPECT_EQ(lossy.how.lost, 1U);
    EXPECT_LT(lossy.how.confidence, 90);

    EXPECT_EQ(mend("").status, JKC_SUCCESS);
    EXPECT_EQ(mend("ASCII").how.count, 0);
    EXPECT_EQ(mend(twice + "\x82\xA0").status, JKC_ECHAR);
    uint8_t *out = nullptr;
    size_t length = 0;
    EXPECT_EQ(jkc_unmojibake(reinterpret_cast<const uint8_t *>(twice.data()), twice.size(), &out, &length, nullptr), 0);
    EXPECT_EQ(length, text.size());
    jkc_free(out);
    EXPECT_STREQ(jkc_misread_name(0), "");
}

TEST(Mend, MemoryRunsShort) {
    string text = "これは文字化けのテストです。";
    for (int i = 0; i < 3; ++i) {
        text = misread(text, {JKC_TYPE_UTF8, JKC_READ_CP850}, false).text;
    }
    uint8_t *out = nullptr;
    size_t length = 0;
    const auto *data = reinterpret_cast<const uint8_t *>(text.data());
    const size_t allocations = fail_each_allocation(
        [&] {
            const int32_t status = jkc_unmojibake(data, text.size(), &out, &length, nullptr);
            jkc_free(out);
            return status;
        },
        [&](bool failed) { EXPECT_EQ(out == nullptr, failed); });
    EXPECT_GE(allocations, 3U);
}

} // namespace jkc::testing
