// The line scanners and the file slots: what they copy is the text, piece by piece, and never more than there is room.
#include "tests/fuzz/support.h"

namespace jkc::fuzz {
namespace {

constexpr size_t kCalls = 3000;

using Scanner = int32_t (*)(JkcContext *, void *, uint64_t, uint64_t *, const uint8_t **, uint64_t);
constexpr Scanner kScanners[] = {jkc_sjis_strln, jkc_euc_strln, jkc_unibe_strln, jkc_unile_strln, jkc_utf8_strln};
constexpr uint32_t kJis = sizeof kScanners / sizeof kScanners[0];

void scan(Choices &choices, const Bytes &text) {
    JkcContext *ctx = create_jkc();
    const uint32_t code = choices.below(kJis + 1);
    const uint8_t *position = text.data();
    const uint8_t *const end = text.data() + text.size();
    uint32_t shift_state = 0;
    for (size_t calls = 0; position != end && calls < kCalls; ++calls) {
        const uint8_t *const start = position;
        const auto left = static_cast<size_t>(end - position);
        const size_t room = choices.piece() - 1;
        const Bytes line(start, std::min(room, left)); // of the size that may be written
        uint64_t length = UINT64_MAX;
        const int32_t result = code == kJis
                                   ? jkc_jis_strln(ctx, line.data(), room, &length, &position, left, &shift_state)
                                   : kScanners[code](ctx, line.data(), room, &length, &position, left);
        JKC_EXPECT(result >= 0 || result == JKC_ECHAR || result == JKC_EUEXPEOD);
        JKC_EXPECT(length <= line.size() && result <= static_cast<int64_t>(length));
        JKC_EXPECT(length == 0 || memcmp(line.data(), start, static_cast<size_t>(length)) == 0);
        JKC_EXPECT(position >= start && position <= end);
        JKC_EXPECT(static_cast<uint64_t>(position - start) >= length);
    }
    release_jkc(ctx);
}

void read_slot(Choices &choices, const Bytes &text) {
    const int64_t target = kCodeTypes[choices.below(kCodeTypeCount)];
    const int64_t expected = choices.below(18);
    uint64_t judged = 0;
    const int64_t slot = jkc_io_open(text_file(text), 0, expected, target, choices.yes() ? 1 : 0, &judged);
    if (slot < 0) {
        JKC_EXPECT(slot == -1 || slot == JKC_EUEXPEOD);
        JKC_EXPECT(_getTIO() == 0);
        return;
    }
    uint64_t copied = 0;
    const int64_t size = jkc_io_get_size(slot);
    JKC_EXPECT(size >= 0 && static_cast<uint64_t>(jkc_io_get_stype(slot)) == judged);
    for (size_t calls = 0; calls < kCalls; ++calls) {
        const Bytes line(text.data(), std::min(choices.piece(), text.size()));
        uint64_t length = 0;
        const int64_t result = jkc_io_get_line(slot, line.data(), line.size(), &length);
        JKC_EXPECT(length <= line.size());
        copied += length;
        if (result < 0 && length == 0) {
            break;
        }
    }
    JKC_EXPECT(copied <= static_cast<uint64_t>(size));
    JKC_EXPECT(jkc_io_rewind(slot) == 0 && jkc_io_close(slot) == 0 && _getTIO() == 0);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    jkc::fuzz::Choices choices(data, size);
    jkc::fuzz::Bytes text;
    choices.take_text(text);
    choices.below(8) == 0 ? jkc::fuzz::read_slot(choices, text) : jkc::fuzz::scan(choices, text);
    return 0;
}
