// A text in UTF-8 that is being written: in memory that grows, or in as much as there is.
#pragma once

#include <cstdlib>

#include "convert/encode_utf8.h"
#include "tables/characters.h"

namespace jkc {

class TextBuffer {
public:
    // Memory that grows.
    TextBuffer() = default;
    // Memory of the caller's.
    TextBuffer(uint8_t *memory, size_t capacity) : begin_(memory), capacity_(capacity), grows_(false) {}
    ~TextBuffer() { clear(); }
    TextBuffer(const TextBuffer &) = delete;
    TextBuffer &operator=(const TextBuffer &) = delete;

    const uint8_t *begin() const { return begin_; }
    const uint8_t *end() const { return begin_ + size_; }
    size_t size() const { return size_; }
    bool grows() const { return grows_; }
    uint64_t replacements() const { return replacements_; }

    // Makes it an empty one.
    void clear() {
        if (grows_) {
            free(begin_);
            begin_ = nullptr;
            capacity_ = 0;
        }
        size_ = 0;
        replacements_ = 0;
    }

    // Writes a character. False: there is no room, or no memory.
    bool put(uint32_t c) {
        if (capacity_ - size_ < kRoom && !(grows_ && grow(2 * capacity_))) {
            return false;
        }
        Utf8Encoder encoder(nullptr);
        uint8_t *const o = begin_ + size_;
        size_ += static_cast<size_t>((c > 0xFFFF ? encoder.put_supplementary(o, c) : encoder.put(o, c)) - o);
        replacements_ += c == kReplacement ? 1 : 0;
        return true;
    }

    bool grow(size_t capacity) {
        constexpr size_t kLeast = 64;
        capacity = capacity < kLeast ? kLeast : capacity;
        auto *grown = capacity > capacity_ ? static_cast<uint8_t *>(realloc(begin_, capacity)) : nullptr;
        if (grown == nullptr) {
            return false;
        }
        begin_ = grown;
        capacity_ = capacity;
        return true;
    }

    // The caller's from now on, with a NUL byte behind it.
    uint8_t *release() {
        begin_[size_] = '\0';
        uint8_t *released = begin_;
        begin_ = nullptr;
        return released;
    }

private:
    // A character, of which the encoder writes four bytes, and the NUL byte.
    static constexpr size_t kRoom = 5;

    uint8_t *begin_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
    uint64_t replacements_ = 0;
    bool grows_ = true;
};

} // namespace jkc
