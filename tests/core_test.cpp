// The context's defaults, and the names and messages of code types and status codes.
#include <cerrno>
#include <climits>
#include <cstring>

#include <gtest/gtest.h>

#include "support/conversion.h"
#include "support/selection.h"

namespace jkc::testing {
namespace {

constexpr char kUntouched = '#';

// The text that a function writes, when exactly one NUL and nothing else follows it.
template <class... Arguments>
std::string text_of(const auto &function, Arguments... arguments) {
    std::string bytes(600, kUntouched);
    const auto length = static_cast<size_t>(function(bytes.data(), arguments...));
    return bytes.substr(length) == '\0' + std::string(599 - length, kUntouched) ? bytes.substr(0, length)
                                                                                : "wrong end: " + bytes;
}

class CoreTest : public ::testing::Test {
protected:
    ~CoreTest() override { release_jkc(ctx); }

    // The functions of the file layer say the same under names of their own.
    static std::string type_of(const std::string &name) {
        EXPECT_EQ(jkc_io_nameto_type(name.c_str()), jkc_nameto_type(name.c_str()));
        return std::to_string(jkc_nameto_type(name.c_str()));
    }
    static std::string name_of(int type) {
        const std::string name = text_of(jkc_typeto_name, type);
        EXPECT_EQ(text_of(jkc_io_typeto_name, type), name);
        return name + " " + type_of(name);
    }
    static std::string list_of(int set, size_t size) {
        std::string names = text_of(jkc_multi_type_names, size, set);
        EXPECT_EQ(text_of(jkc_io_multi_type_names, size, set), names);
        if (set == 0xFFFC0) {
            EXPECT_EQ(text_of(jkc_all_type_names, size), names);
            EXPECT_EQ(text_of(jkc_io_all_type_names, size), names);
        }
        return names;
    }
    static std::string judged_of(int judged, size_t size) {
        size_t whole = 0;
        const std::string names = text_of([&](char *buf) {
            whole = jkc_judged_type_names(buf, size, judged);
            return strlen(buf);
        });
        return std::to_string(whole) + (names.empty() ? "" : " ") + names;
    }
    std::string message_of(int status) {
        std::string message;
        for (int type = JKC_TYPE_UTF8; type >= 0; type--) {
            char text[600];
            char same[600];
            const uint32_t length = jkc_statusto_message(ctx, text, status, type);
            EXPECT_EQ(length, strlen(text));
            EXPECT_EQ(jkc_io_statusto_message(same, status, type), int64_t{length});
            EXPECT_STREQ(same, text);
            message = type == JKC_TYPE_UTF8 ? text : message;
            const bool converted = type == JKC_TYPE_JIS || type == JKC_TYPE_SJIS || type == JKC_TYPE_EUC;
            EXPECT_EQ(text, converted ? recoded(message, JKC_TYPE_UTF8, type) : message) << type;
        }
        return message;
    }
    std::string area_of(std::string text, int type) {
        const std::string before = text;
        const int32_t length = _convert_buf(ctx, text.data(), text.size(), type);
        if (type == JKC_TYPE_UTF16BE) {
            EXPECT_EQ(text, before);
        } else if (type != JKC_TYPE_JIS) {
            const std::string kept = recoded(text.substr(0, static_cast<size_t>(length)), type, JKC_TYPE_UTF8);
            EXPECT_EQ(kept, before.substr(0, kept.size())) << "cut inside a character";
        }
        return std::to_string(length);
    }

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

TEST_F(CoreTest, ANameOrMessageIsWrongOrInAnotherCode) {
    check_results("names.txt", [this](const Case &c) {
        const Options &o = c.options;
        const auto number = [&o](const char *name) { return static_cast<int>(o.number(name)); };
        return o.has("type")     ? name_of(number("type"))
               : o.has("name")   ? type_of(o.text("name"))
               : o.has("set")    ? list_of(number("set"), static_cast<size_t>(o.number("size")))
               : o.has("judged") ? judged_of(number("judged"), static_cast<size_t>(o.number("size")))
               : o.has("status") ? message_of(number("status"))
                                 : area_of(parse_bytes(o.text("area")), number("to"));
    });
    EXPECT_EQ(_satusMessageSize, 18U);
    EXPECT_EQ(_typeNamesSize, 17U);
    EXPECT_STREQ(_satusMessage[0].message, "SUCCESS:処理成功");
    char none = kUntouched;
    EXPECT_EQ(jkc_multi_type_names(&none, 0, 0x40) + jkc_all_type_names(&none, 0), 0U);
    EXPECT_EQ(none, kUntouched);
    EXPECT_EQ(jkc_judged_type_names(nullptr, 0, JKC_TYPE_UTF8), 4U);
    EXPECT_EQ(jkc_all_type_names_length(), 138U);
    EXPECT_EQ(jkc_io_all_type_names_length(), 138);
}

TEST(NamesTest, AMarkIsSeenBetweenOtherCodeTypes) {
    const std::vector<int> types = {INT_MIN, INT_MIN + 1, -1, 0,  1,  2,  3,  4,  5,           10,
                                    11,      12,          13, 14, 15, 16, 17, 18, INT_MAX - 1, INT_MAX};
    for (const int a : types) {
        for (const int b : types) {
            const bool marked = (a == 11 && b == 12) || (a == 13 && b == 14) || (a == 15 && b == 16);
            const bool unmarked = (b == 11 && a == 12) || (b == 13 && a == 14) || (b == 15 && a == 16);
            EXPECT_EQ(jkc_cmp_bom(a, b), marked ? 1 : unmarked ? -1 : 0) << a << " " << b;
            EXPECT_EQ(jkc_io_cmp_bom(a, b), jkc_cmp_bom(a, b));
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

} // namespace
} // namespace jkc::testing
