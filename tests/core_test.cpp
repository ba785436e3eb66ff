// The context's defaults, and the names and messages of code types and status codes.
#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>

#include "support/conversion.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

constexpr char kUntouched = '#';

// A buffer that shows what was written behind the text.
struct Answer {
    std::string bytes = std::string(600, kUntouched);

    char *data() { return bytes.data(); }
    // The text, when exactly one NUL and nothing else follows it.
    std::string text(size_t length) const {
        const std::string rest = bytes.substr(length);
        return rest == '\0' + std::string(rest.size() - 1, kUntouched) ? bytes.substr(0, length)
                                                                       : "wrong end: " + bytes;
    }
};

class CoreTest : public ::testing::Test {
protected:
    ~CoreTest() override { release_jkc(ctx); }
    JkcContext *ctx = create_jkc();
};

TEST_F(CoreTest, ANewContextHasOptionsOrResultsSet) {
    EXPECT_EQ(ctx->version, 2.2F);
    EXPECT_EQ(jkc_get_version(), 2.2F);
    EXPECT_EQ(jkc_version_number(), 20200U);
    EXPECT_EQ(ctx->mode, 0U);
    EXPECT_EQ(ctx->suppress + ctx->utfmac_to + ctx->srg_exists + ctx->utfmac_exists + ctx->sts, 0);
    EXPECT_EQ(ctx->nochar_count, 0U);
    EXPECT_EQ(ctx->blocks->data, nullptr);
    EXPECT_EQ(jis_source(*ctx) + " " + euc_source(*ctx) + " " + euc_target(*ctx), "50221 common common");
    release_jkc(nullptr);
}

TEST(NamesTest, ACodeTypeHasAnotherNameOrNumber) {
    const char *names[] = {"Empty",         "ASCII",         "JIS(CP50221)", "JIS2(ISO-2022)", "SJIS",     "EUC",
                           "EUC1(CP20932)", "EUC2(CP51932)", "EUC3(EUC-MS)", "Unknown",        "Unknown",  "UTF16BE",
                           "UTF16BE_BOM",   "UTF16LE",       "UTF16LE_BOM",  "UTF8",           "UTF8_BOM", "Unknown"};
    for (int type = -1; type <= 17; type++) {
        const std::string name = type < 0 ? "Unknown" : names[type];
        Answer answer;
        EXPECT_EQ(answer.text(jkc_typeto_name(answer.data(), type)), name);
        const bool found = name != "Unknown" && type != JKC_TYPE_EMPTY;
        EXPECT_EQ(jkc_nameto_type(name.c_str()), found ? type : JKC_ECTYPE) << name;
    }
    const std::map<std::string, int> others = {
        {"utf8_bom", 16}, {"Utf16le", 13},     {"jis(cp50221)", 2},   {"dummy2", 0},
        {"", JKC_ECTYPE}, {"SJI", JKC_ECTYPE}, {"SJISX", JKC_ECTYPE}, {std::string(5000, 'S'), JKC_ECTYPE},
    };
    for (const auto &[name, type] : others) {
        EXPECT_EQ(jkc_nameto_type(name.c_str()), type) << name;
    }
    for (int a = 0; a <= 17; a++) {
        for (int b = 0; b <= 17; b++) {
            const bool marked = b == a + 1 && (a == 11 || a == 13 || a == 15);
            const bool unmarked = a == b + 1 && (b == 11 || b == 13 || b == 15);
            EXPECT_EQ(jkc_cmp_bom(a, b), marked ? 1 : unmarked ? -1 : 0) << a << " " << b;
        }
    }
}

TEST(NamesTest, AListOfNamesIsCutInsideANameOrRunsOver) {
    const std::string all =
        "ASCII;JIS(CP50221);JIS2(ISO-2022);SJIS;EUC;EUC1(CP20932);EUC2(CP51932);EUC3(EUC-MS);UTF16BE;"
        "UTF16BE_BOM;UTF16LE;UTF16LE_BOM;UTF8;UTF8_BOM";
    const struct {
        size_t size;
        int set;
        std::string names;
    } cases[] = {
        {100, 0x40 | 0x200 | 0x40000, "ASCII;SJIS;UTF8"},
        {15, 0x40 | 0x200 | 0x40000, "ASCII;SJIS;UTF8"},
        {14, 0x40 | 0x200 | 0x40000, "ASCII;SJIS"},
        {10, 0x40 | 0x200 | 0x40000, "ASCII;SJIS"},
        {9, 0x40 | 0x200, "ASCII"},
        {6, 0x40 | 0x200, "ASCII"},
        {5, 0x40 | 0x200, "ASCII"},
        {4, 0x40 | 0x200, ""},
        {1, 4, "SJIS"},
        {100, 0, "Empty"},
        {100, 63, "Unknown"},
        {100, 0x100000, ""},
        {100, 0x4000 | 0x8000 | 0x10000 | 0x20000 | 0x80000, "UTF16BE;UTF16BE_BOM;UTF16LE;UTF16LE_BOM;UTF8_BOM"},
        {137, 0xFFFC0, all},
        {136, 0xFFFC0, all.substr(0, all.rfind(';'))},
    };
    for (const auto &c : cases) {
        Answer answer;
        EXPECT_EQ(answer.text(jkc_multi_type_names(answer.data(), c.size, c.set)), c.names) << c.size;
        if (c.set == 0xFFFC0) {
            Answer same;
            EXPECT_EQ(same.text(jkc_all_type_names(same.data(), c.size)), c.names);
        }
    }
    Answer none;
    EXPECT_EQ(jkc_multi_type_names(none.data(), 0, 0x40) + jkc_all_type_names(none.data(), 0), 0U);
    EXPECT_EQ(none.bytes, Answer().bytes);
    EXPECT_EQ(jkc_all_type_names_length(), all.size() + 1);
}

TEST(NamesTest, WhatAJudgementReturnedIsNamedWronglyOrRunsOver) {
    const struct {
        int judged;
        size_t size;
        std::string written;
        size_t whole;
    } cases[] = {
        {JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), 17, "SJIS;EUC;UTF16BE", 16},
        {JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), 16, "SJIS;EUC", 16},
        {JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), 9, "SJIS;EUC", 16},
        {JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), 8, "SJIS", 16},
        {JKC_JUDGED_BIT(4) | JKC_JUDGED_BIT(5) | JKC_JUDGED_BIT(11), 4, "", 16},
        {0x7FFFFFFF, 200,
         "ASCII;JIS(CP50221);JIS2(ISO-2022);SJIS;EUC;EUC1(CP20932);EUC2(CP51932);EUC3(EUC-MS);UTF16BE;"
         "UTF16BE_BOM;UTF16LE;UTF16LE_BOM;UTF8;UTF8_BOM",
         137},
        {JKC_JUDGED_BIT(9), 100, "Unknown", 7},
        {JKC_TYPE_EMPTY, 100, "Empty", 5},
        {JKC_TYPE_UTF8, 5, "UTF8", 4},
        {JKC_TYPE_UTF8, 4, "", 4},
        {JKC_TYPE_UTF8, 1, "", 4},
        {-1, 100, "None", 4},
        {JKC_EREAD, 100, "Unknown", 7},
        {63, 100, "Unknown", 7},
    };
    for (const auto &c : cases) {
        Answer answer;
        EXPECT_EQ(jkc_judged_type_names(answer.data(), c.size, c.judged), c.whole) << c.judged;
        EXPECT_EQ(answer.text(c.written.size()), c.written) << c.judged << " " << c.size;
    }
    EXPECT_EQ(jkc_judged_type_names(nullptr, 0, JKC_TYPE_UTF8), 4U);
}

TEST_F(CoreTest, AMessageIsWrongOrInAnotherCode) {
    EXPECT_EQ(_satusMessageSize, 18U);
    EXPECT_EQ(_typeNamesSize, 17U);
    EXPECT_STREQ(_satusMessage[0].message, "SUCCESS:処理成功");
    const std::map<int, std::string> messages = {
        {-1, "EOF:入力ファイルの終わり"},
        {-4, "EALLOC:メモリー・アロケート・エラー"},
        {-12, "EIONOTOPEN:未オープン・ファイルへのアクセス"},
        {-21, "EBOM:BOM 不正（未使用）"},
        {-24, "ELTYPE:改行コード・タイプ誤り"},
        {0, "Unknown"},
        {-9, "Unknown"},
        {-14, "Unknown"},
        {-19, "Unknown"},
        {-25, "Unknown"},
        {1, "Unknown"},
    };
    for (const auto &[status, message] : messages) {
        for (int type = 0; type <= 16; type++) {
            Answer answer;
            const uint32_t length = jkc_statusto_message(ctx, answer.data(), status, type);
            Case c{"", {}, message, ""};
            c.options.add("src=15 dst=" + std::to_string(type));
            const bool recoded = type == JKC_TYPE_JIS || type == JKC_TYPE_SJIS || type == JKC_TYPE_EUC;
            EXPECT_EQ(answer.data(), recoded ? convert(c, Way::kBuffer).text() : message) << status << " " << type;
            EXPECT_EQ(length, strlen(answer.data()));
        }
    }
}

TEST_F(CoreTest, TheTextOfAnErrnoRunsOverItsBuffer) {
    const std::string whole = strerror(ENOENT);
    for (const int type : {JKC_TYPE_UTF8, JKC_TYPE_SJIS, JKC_TYPE_JIS}) {
        for (const size_t size : {1U, 2U, 8U, 100U}) {
            std::string buffer(size, kUntouched); // of its exact size
            const uint32_t length = jkc_get_strerror(ctx, ENOENT, buffer.data(), size, type);
            EXPECT_EQ(buffer.c_str(), whole.substr(0, size - 1));
            EXPECT_EQ(length, std::min(whole.size(), size - 1));
        }
        char untouched = kUntouched;
        EXPECT_EQ(jkc_get_strerror(ctx, ENOENT, &untouched, 0, type), 0U);
        EXPECT_EQ(untouched, kUntouched);
    }
}

TEST_F(CoreTest, ALongTextRunsOverTheMessageArea) {
    const struct {
        const char *character;
        size_t times;
        int type;
        int32_t length; // whole characters within 255 bytes, with the closing escape sequence of JIS
    } cases[] = {
        {"a", 255, 4, 255},   {"a", 256, 4, 255},  {"a", 5000, 2, 255}, {"あ", 127, 4, 254}, {"あ", 128, 4, 254},
        {"あ", 2000, 4, 254}, {"あ", 200, 5, 254}, {"あ", 200, 2, 254}, {"ｱ", 500, 4, 255},  {"ｱ", 500, 5, 254},
        {"ｱ", 500, 2, 255},   {"あ", 20, 11, 60},  {"", 0, 4, 0},
    };
    for (const auto &c : cases) {
        std::string text;
        for (size_t i = 0; i < c.times; i++) {
            text += c.character;
        }
        const std::string before = text;
        EXPECT_EQ(_convert_buf(ctx, text.data(), text.size(), c.type), c.length) << c.character << " " << c.times;
        if (c.type == 11) {
            EXPECT_EQ(text, before);
        } else if (c.type != 2) {
            Case back{"", {}, text.substr(0, static_cast<size_t>(c.length)), ""};
            back.options.add("dst=15 src=" + std::to_string(c.type));
            const std::string kept = convert(back, Way::kBuffer).text();
            EXPECT_EQ(kept, before.substr(0, kept.size())) << "cut inside a character";
        }
    }
}

} // namespace
} // namespace jkc::testing
