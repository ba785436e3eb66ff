// Whatever is read as something else, once or twice: what is proposed is text in UTF-8, and its record is true.
#include "tests/fuzz/support.h"

#include "jkc/converter.h"
#include "jkc/mojibake.h"
#include "tests/fuzz/unicode_text.h"

namespace jkc::fuzz {
namespace {

constexpr size_t kLongest = 6000; // more than is looked at first

void read_as_latin1(const Bytes &text, Bytes &read) {
    for (size_t i = 0; i < text.size(); ++i) {
        const uint8_t b = text.data()[i];
        if (b >= 0x80) {
            read.fill(static_cast<uint8_t>(0xC0 | b >> 6), 1);
        }
        read.fill(b < 0x80 ? b : static_cast<uint8_t>(0x80 | (b & 0x3F)), 1);
    }
}

void read_as(int32_t type, const Bytes &text, Bytes &read) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.on_loss = JKC_ON_LOSS_REPLACE;
    uint8_t *out = nullptr;
    size_t length = 0;
    JKC_EXPECT(jkc_convert_memory(type, JKC_TYPE_UTF8, text.data(), text.size(), &options, &out, &length, nullptr) ==
               JKC_SUCCESS);
    read.append(out, length);
    jkc_free(out);
}

void misread(Choices &choices, const Bytes &text, Bytes &read) {
    constexpr int32_t kTypes[] = {0, 0, JKC_TYPE_SJIS, JKC_TYPE_EUC_MS, JKC_TYPE_UTF8};
    const int32_t type = kTypes[choices.below(5)];
    type == 0 ? read_as_latin1(text, read) : read_as(type, text, read);
}

void expect_true(const Bytes &text) {
    uint8_t *out = nullptr;
    size_t length = 0;
    JkcMending mending = {};
    mending.size = sizeof mending;
    const int32_t status = jkc_unmojibake(text.data(), text.size(), &out, &length, &mending);
    JKC_EXPECT(status == (is_utf8(text) ? JKC_SUCCESS : JKC_ECHAR));
    JKC_EXPECT((out != nullptr) == (mending.count > 0) && mending.count <= JKC_MISREADINGS);
    if (out != nullptr) {
        const Bytes mended(out, length);
        JKC_EXPECT(is_utf8(mended) && out[length] == 0);
        JKC_EXPECT(mending.confidence > 0 && mending.confidence <= 100);
        uint64_t lost = 0;
        for (size_t i = 0; i + 2 < length; ++i) {
            lost += memcmp(out + i, "\xEF\xBF\xBD", 3) == 0 ? 1 : 0;
        }
        JKC_EXPECT(lost == mending.lost);
    }
    for (int32_t i = 0; i < JKC_MISREADINGS; ++i) {
        JKC_EXPECT((*jkc_misread_name(mending.steps[i].was) != '\0') == (i < mending.count));
        JKC_EXPECT((*jkc_misread_name(mending.steps[i].read_as) != '\0') == (i < mending.count));
    }
    jkc_free(out);
}

void run(Choices &choices) {
    Bytes text;
    choices.take_text(text);
    const Bytes some(text.data(), std::min(text.size(), kLongest));
    Bytes once;
    misread(choices, some, once);
    if (choices.yes()) {
        Bytes twice;
        misread(choices, once, twice);
        expect_true(twice);
    }
    expect_true(once);
    expect_true(some);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    jkc::fuzz::Choices choices(data, size);
    jkc::fuzz::run(choices);
    return 0;
}
