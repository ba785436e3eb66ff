// Memory to memory, by a converter that is fed.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "convert/encoders.h"

namespace jkc {

namespace {

constexpr size_t kTerminator = 2; // NUL bytes behind the output

// What a legacy target can need for a byte of the text: a plane 2 character in two bytes of JIS becomes &#x20000;, and in
// JIS a geta mark, in a copy, stands between two designations.
constexpr size_t kEscapePerByte = kLongestEscape / 2;
constexpr size_t kLongestMark = 8;
static_assert(kEscapePerByte >= encoders::euc::kLongestStep && kLongestMark >= encoders::jis::kLongestStep);

// Memory that grows as output comes.
class GrowingBuffer {
public:
    explicit GrowingBuffer(size_t capacity) : begin_(static_cast<uint8_t *>(malloc(capacity))), capacity_(capacity) {}
    ~GrowingBuffer() { free(begin_); }
    GrowingBuffer(const GrowingBuffer &) = delete;
    GrowingBuffer &operator=(const GrowingBuffer &) = delete;

    bool is_allocated() const { return begin_ != nullptr; }
    size_t size() const { return size_; }

    // Runs the converter until the text has ended. A JkcConverterStop or a status.
    int32_t fill(JkcConverter *converter, const uint8_t *data, size_t length) {
        for (;;) {
            uint8_t *out = begin_ + size_;
            size_t room = capacity_ - kTerminator - size_;
            const int32_t stop = jkc_converter_run(converter, &data, &length, &out, &room, true);
            size_ = static_cast<size_t>(out - begin_);
            if (stop != JKC_STOP_OUTPUT) {
                return stop;
            }
            if (!grow()) {
                return JKC_EALLOC;
            }
        }
    }

    // The caller's from now on.
    uint8_t *release() {
        memset(begin_ + size_, 0, kTerminator);
        uint8_t *released = begin_;
        begin_ = nullptr;
        return released;
    }

private:
    bool grow() {
        if (capacity_ > SIZE_MAX / 2) {
            return false;
        }
        auto *grown = static_cast<uint8_t *>(realloc(begin_, 2 * capacity_));
        if (grown == nullptr) {
            return false;
        }
        begin_ = grown;
        capacity_ *= 2;
        return true;
    }

    uint8_t *begin_;
    size_t size_ = 0;
    size_t capacity_;
};

int32_t judge_memory(const uint8_t *data, size_t length) {
    JkcContext *ctx = create_jkc();
    if (ctx == nullptr) {
        return JKC_EALLOC;
    }
    const int judged =
        jkc_judges_buffer(ctx, nullptr, nullptr, reinterpret_cast<const char *>(data), length, JKC_TYPE_EMPTY);
    release_jkc(ctx);
    return judged == JKC_TYPE_EMPTY ? static_cast<int>(JKC_TYPE_ASCII) : judged; // an empty text converts to nothing
}

int32_t convert_memory(JkcConverter *converter, const uint8_t *data, size_t length, uint8_t **out, size_t *out_length) {
    // Mostly a text grows by half at most.
    GrowingBuffer buffer(length < SIZE_MAX / 2 - 64 ? length + length / 2 + 64 : SIZE_MAX);
    if (!buffer.is_allocated()) {
        return JKC_EALLOC;
    }
    const int32_t status = buffer.fill(converter, data, length);
    if (status == JKC_SUCCESS) {
        *out_length = buffer.size();
        *out = buffer.release();
    }
    return status;
}

} // namespace

} // namespace jkc

int32_t jkc_convert_memory(int32_t src_type, int32_t dst_type, const uint8_t *data, size_t length,
                           const JkcConverterOptions *options, uint8_t **out, size_t *out_length,
                           JkcConverterLosses *losses) {
    *out = nullptr;
    *out_length = 0;
    const int32_t source = src_type == JKC_TYPE_EMPTY ? jkc::judge_memory(data, length) : src_type;
    if (source < 0 || jkc::is_set(source)) {
        return source;
    }
    JkcConverter *converter = nullptr;
    int32_t status = jkc_converter_create(&converter, source, dst_type, options);
    if (status == JKC_SUCCESS) {
        status = jkc::convert_memory(converter, data, length, out, out_length);
    }
    if (status == JKC_SUCCESS && losses != nullptr) {
        jkc_converter_losses(converter, losses);
    }
    jkc_converter_release(converter);
    return status;
}

void jkc_free(void *memory) { free(memory); }

size_t jkc_converter_bound(int32_t dst_type, size_t length) {
    using namespace jkc;
    size_t longest = 0;
    switch (family_of(dst_type)) {
    case Family::kJis:
        longest = kLongestMark;
        break;
    case Family::kAscii:
    case Family::kSjis:
    case Family::kEuc:
        longest = kEscapePerByte;
        break;
    case Family::kUtf16Be:
    case Family::kUtf16Le:
        longest = encoders::unibe::kLongestStep;
        break;
    case Family::kUtf8:
        longest = encoders::utf8::kLongestStep;
        break;
    case Family::kNone:
        return 0; // nothing converts to it
    }
    // Each step takes a byte at least. Besides there are a BOM, a replacement at the end and a closing sequence.
    constexpr size_t kStepsBesides = 3;
    return length < SIZE_MAX / longest - kStepsBesides ? (length + kStepsBesides) * longest : SIZE_MAX;
}
