#include "line_places.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "code_types.h"
#include "jkc/converter.h"

namespace jkc::cli {

void LinePlaces::next(const uint8_t *data, size_t length) {
    pass(bytes_.size() - std::min(bytes_.size(), kReach));
    if (passed_ - counted_ > kLongLine) {
        count_characters(passed_);
    }
    bytes_.erase(0, counted_);
    offset_ += counted_;
    passed_ -= counted_;
    counted_ = 0;
    bytes_.append(reinterpret_cast<const char *>(data), length);
}

Place LinePlaces::at(uint64_t offset) {
    const auto end = static_cast<size_t>(offset - offset_);
    pass(end);
    return {line_, count_characters(end) + 1};
}

// Looks for line ends up to the byte at `end`.
void LinePlaces::pass(size_t end) {
    const size_t width = is_utf16(code_type_) ? 2 : 1;
    const size_t low = without_mark(code_type_) == JKC_TYPE_UTF16BE ? 1 : 0; // where a unit has its ASCII byte
    while (passed_ + width <= end) {
        if (width == 1) {
            const auto is_line_end = [](char c) { return c == '\n' || c == '\r'; };
            const auto from = bytes_.begin() + static_cast<ptrdiff_t>(passed_);
            const auto found = std::find_if(from, bytes_.begin() + static_cast<ptrdiff_t>(end), is_line_end);
            behind_cr_ = behind_cr_ && found == from;
            passed_ = static_cast<size_t>(found - bytes_.begin());
            if (passed_ == end) {
                return;
            }
        }
        const char c = bytes_[passed_ + (width == 1 ? 0 : low)];
        const bool is_ascii = width == 1 || bytes_[passed_ + 1 - low] == '\0';
        passed_ += width;
        if (is_ascii && (c == '\n' || c == '\r')) {
            line_ += c == '\n' && behind_cr_ ? 0 : 1;
            counted_ = passed_;
            characters_ = 0;
        }
        behind_cr_ = is_ascii && c == '\r';
    }
}

// The characters of this line in front of the byte at `end`.
uint64_t LinePlaces::count_characters(size_t end) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.on_loss = JKC_ON_LOSS_REPLACE;
    uint8_t *units = nullptr;
    size_t length = 0;
    const auto *from = reinterpret_cast<const uint8_t *>(bytes_.data()) + counted_;
    jkc_convert_memory(without_mark(code_type_), JKC_TYPE_UTF16LE, from, end - counted_, &options, &units, &length,
                       nullptr);
    const std::unique_ptr<uint8_t, void (*)(void *)> owner(units, jkc_free);
    uint64_t count = characters_;
    for (size_t i = 1; i < length; i += 2) {
        count += (units[i] & 0xFC) != 0xDC ? 1 : 0; // a low surrogate goes with the high one
    }
    // JIS text is read from the line's begin on, as its designations last.
    if (!is_7bit(code_type_) || end - counted_ > kLongLine) {
        characters_ = count;
        counted_ = end;
    }
    return count;
}

} // namespace jkc::cli
