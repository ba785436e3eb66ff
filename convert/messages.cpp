// Messages, and texts of errno values, in the encoding that the caller wants.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "core/bytes.h"
#include "core/messages.h"
#include "core/unicode.h"

namespace {

constexpr uint64_t kAreaSize = 256;
constexpr uint64_t kLongestUtf8 = 4;

// Where the converted text of one call goes.
struct Area {
    uint8_t text[kAreaSize];
    uint64_t size;
    uint64_t used;
    bool overflowed;
};

int32_t gather(const uint8_t *data, uint64_t length, void *user_data) {
    auto *area = static_cast<Area *>(user_data);
    if (area == nullptr) {
        return JKC_EWRITE;
    }
    if (length >= area->size - area->used) { // one byte is the NUL's
        area->overflowed = true;
        return JKC_EWRITE;
    }
    memcpy(area->text + area->used, data, jkc::as_size(length));
    area->used += length;
    return JKC_SUCCESS;
}

bool is_message_type(int32_t type) { return type == JKC_TYPE_JIS || type == JKC_TYPE_SJIS || type == JKC_TYPE_EUC; }

// Takes the last character off a UTF-8 text.
uint64_t without_last_character(const char *text, uint64_t len) {
    do {
        --len;
    } while (len > 0 && jkc::is_trail(static_cast<uint8_t>(text[len])));
    return len;
}

// As _convert_buf(), for a text in an area of `capacity` bytes, its NUL included.
uint32_t recode(JkcContext *ctx, char *text, uint64_t len, int32_t dst_type, uint64_t capacity) {
    if (!is_message_type(dst_type)) {
        return static_cast<uint32_t>(len);
    }
    Area area;
    const uint64_t original = len;
    area.size = std::min(kAreaSize, capacity);
    // A converted character has one byte at least: what is behind this cannot fit.
    if (len > area.size * kLongestUtf8) {
        len = without_last_character(text, area.size * kLongestUtf8 + 1);
    }
    for (;;) {
        area.used = 0;
        area.overflowed = false;
        jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(text), len, JKC_TYPE_UTF8, dst_type, false, nullptr,
                           gather, &area);
        if (!area.overflowed) {
            break;
        }
        len = without_last_character(text, len); // too long: cut at a character, so that JIS still closes
    }
    ctx->user_data = nullptr; // the area ends here
    memcpy(text, area.text, jkc::as_size(area.used));
    if (area.used != original) {
        text[area.used] = '\0';
    }
    return static_cast<uint32_t>(area.used);
}

} // namespace

// From outside there is no area to write into.
int32_t _convert_buf_writer(const uint8_t *data, uint64_t len) { return gather(data, len, nullptr); }

int32_t _convert_buf(JkcContext *ctx, char *text, uint64_t len, int32_t dst_type) {
    return static_cast<int32_t>(recode(ctx, text, len, dst_type, kAreaSize));
}

uint32_t jkc_statusto_message(JkcContext *ctx, char *buf, int status, int code_type) {
    const char *message = jkc::message_of(status);
    const size_t length = strlen(message);
    memcpy(buf, message, length + 1);
    return static_cast<uint32_t>(_convert_buf(ctx, buf, length, code_type));
}

uint32_t jkc_get_strerror(JkcContext *ctx, int errnum, char *buf, size_t size, int code_type) {
    if (size == 0) {
        return 0;
    }
    const char *text = strerror(errnum);
    if (text == nullptr) {
        return static_cast<uint32_t>(snprintf(buf, size, "Unknown(%d)", errnum));
    }
    strncpy(buf, text, size);
    buf[size - 1] = '\0';
    return recode(ctx, buf, strlen(buf), code_type, size);
}
