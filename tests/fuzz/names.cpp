// Names and messages: any number and any name, into room of any size.
#include "tests/fuzz/support.h"

namespace jkc::fuzz {
namespace {

constexpr uint32_t kLongest = 600;

// Room in which all bytes count, and whether a text of this length with one NUL fills it no further.
struct Room {
    explicit Room(size_t size) { bytes.fill('#', size); }
    char *data() const { return reinterpret_cast<char *>(bytes.data()); }
    bool holds(size_t length) const { return length < bytes.size() && strlen(data()) == length; }

    Bytes bytes;
};

void write_names(Choices &choices, int number, size_t size) {
    const Room one(16);
    JKC_EXPECT(one.holds(jkc_typeto_name(one.data(), number)));
    const int named = jkc_nameto_type(one.data());
    JKC_EXPECT(named == number || named == JKC_ECTYPE || number < 0 || number > JKC_TYPE_UTF8_BOM);

    const Room several(size);
    const uint32_t whole = jkc_judged_type_names(several.data(), size, number);
    JKC_EXPECT(size == 0 || (strlen(several.data()) <= whole && strlen(several.data()) < size));
    JKC_EXPECT(whole < jkc_all_type_names_length());

    const Room set(std::max<size_t>(size + 1, 16));
    const uint32_t length = jkc_multi_type_names(set.data(), size, number);
    JKC_EXPECT(length == 0 || set.holds(length));
    JKC_EXPECT(jkc_cmp_bom(number, static_cast<int>(choices.below(18))) <= 1);
}

void write_messages(Choices &choices, const Bytes &text, int number, size_t size) {
    JkcContext *ctx = create_jkc();
    const auto code_type = static_cast<int>(choices.below(18));
    const Room message(64);
    JKC_EXPECT(
        message.holds(jkc_statusto_message(ctx, message.data(), -static_cast<int>(choices.below(30)), code_type)));
    const Room error(size);
    const uint32_t length = jkc_get_strerror(ctx, number, error.data(), size, code_type);
    JKC_EXPECT(size == 0 ? length == 0 : error.holds(length));

    Bytes area(text.data(), text.size());
    area.fill(0, kLongest); // to which it may grow
    const int32_t recoded = _convert_buf(ctx, reinterpret_cast<char *>(area.data()), text.size(), code_type);
    JKC_EXPECT(recoded <= 255 || recoded == static_cast<int32_t>(text.size()));
    release_jkc(ctx);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    using namespace jkc::fuzz;
    Choices choices(data, size);
    int number = 0;
    for (int i = 0; i < 4; ++i) {
        number = static_cast<int>(static_cast<uint32_t>(number) << 8 | choices.below(256));
    }
    number = choices.yes() ? number : number & 0xFF;
    const size_t room = choices.below(200);
    write_names(choices, number, room);
    Bytes text;
    text.append(data, std::min<size_t>(size, kLongest));
    write_messages(choices, text, number, room);
    text.fill(0, 1);
    jkc_nameto_type(text.chars());
    return 0;
}
