// What the fuzz targets share. They need nothing of the C++ library at run time, so that they run wherever the library
// does: under MemorySanitizer and with musl, too.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/internal.h"
#include "judge/input/foreign_source.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace jkc::fuzz {

[[noreturn]] inline void fail(const char *file, int line, const char *what) {
    fprintf(stderr, "%s:%d: not so: %s\n", file, line, what);
    abort();
}
#define JKC_EXPECT(condition) ((condition) ? void() : jkc::fuzz::fail(__FILE__, __LINE__, #condition))

// Bytes in a heap block of their exact size, so that sanitizers see each access beyond it.
class Bytes {
public:
    Bytes() = default;
    Bytes(const uint8_t *data, size_t size) { append(data, size); }
    ~Bytes() { free(data_); }
    Bytes(const Bytes &) = delete;
    Bytes &operator=(const Bytes &) = delete;

    void append(const uint8_t *data, size_t size) {
        if (size > 0) {
            memcpy(grow(size), data, size);
        }
    }
    void fill(uint8_t byte, size_t count) {
        if (count > 0) {
            memset(grow(count), byte, count);
        }
    }

    uint8_t *data() const { return data_; }
    const char *chars() const { return reinterpret_cast<const char *>(data_); }
    size_t size() const { return size_; }
    bool operator==(const Bytes &other) const {
        return size_ == other.size_ && (size_ == 0 || memcmp(data_, other.data_, size_) == 0);
    }

private:
    uint8_t *grow(size_t more) {
        data_ = static_cast<uint8_t *>(realloc(data_, size_ + more));
        size_ += more;
        return data_ + size_ - more;
    }

    uint8_t *data_ = nullptr;
    size_t size_ = 0;
};

// What a run is to do: the first bytes of the input say it. The rest is the text.
class Choices {
public:
    static constexpr size_t kLength = 12;

    Choices(const uint8_t *data, size_t size) {
        memcpy(bytes_, data, std::min(size, kLength));
        for (const uint8_t byte : bytes_) {
            random_ = random_ * 31 + byte;
        }
        if (size > kLength) {
            text_ = data + kLength;
            text_size_ = size - kLength;
        }
    }

    uint32_t below(uint32_t limit) { return bytes_[next_++ % kLength] % limit; }
    bool yes() { return below(2) != 0; }
    // Not from the input, but the same for the same choices: where a text is cut.
    size_t random(size_t limit) {
        random_ = random_ * 1664525 + 1013904223;
        return (random_ >> 8) % limit;
    }
    // Mostly short ones.
    size_t piece() { return 1 + random(random(8) == 0 ? 9000 : 40); }

    // The text; one in four behind so many letters, each of `width` bytes, that a block's end is near or in it.
    void take_text(Bytes &text, size_t width = 1, size_t letter_at = 0) {
        constexpr size_t kNear = 64;
        if (below(4) == 0) {
            const size_t length = (JKC_BLOCK_READ / width - below(kNear)) * width;
            text.fill(width == 1 ? 'a' : 0, length);
            for (size_t i = letter_at; i < length; i += width) {
                text.data()[i] = 'a';
            }
        }
        text.append(text_, text_size_);
    }

private:
    uint8_t bytes_[kLength] = {};
    size_t next_ = 0;
    uint32_t random_ = 1;
    const uint8_t *text_ = nullptr;
    size_t text_size_ = 0;
};

constexpr int kCodeTypes[] = {JKC_TYPE_ASCII,   JKC_TYPE_JIS,         JKC_TYPE_JIS2004,   JKC_TYPE_SJIS,
                              JKC_TYPE_EUC,     JKC_TYPE_EUC_20932,   JKC_TYPE_EUC_51932, JKC_TYPE_EUC_MS,
                              JKC_TYPE_UTF16BE, JKC_TYPE_UTF16BE_BOM, JKC_TYPE_UTF16LE,   JKC_TYPE_UTF16LE_BOM,
                              JKC_TYPE_UTF8,    JKC_TYPE_UTF8_BOM};
constexpr uint32_t kCodeTypeCount = sizeof kCodeTypes / sizeof kCodeTypes[0];

// The text as a reader gives it that has nothing now and then.
struct CutReader : JkcReader {
    CutReader(const Bytes &bytes, Choices &source) : text(bytes), choices(source) {
        taken = filled = 0;
        ended = false;
        read = [](JkcReader *self, uint8_t *dst, size_t room) {
            return static_cast<CutReader *>(self)->next(dst, room);
        };
    }
    int64_t next(uint8_t *dst, size_t room) {
        if (position == text.size()) {
            return -1;
        }
        const size_t count = choices.random(4) == 0 ? 0 : std::min({choices.piece(), room, text.size() - position});
        memcpy(dst, text.data() + position, count);
        position += count;
        return static_cast<int64_t>(count);
    }

    const Bytes &text;
    Choices &choices;
    size_t position = 0;
};

// The text as an open stream.
class Stream {
public:
    explicit Stream(const Bytes &text) : file_(tmpfile()) {
        JKC_EXPECT(file_ != nullptr && fwrite(text.data(), 1, text.size(), file_) == text.size());
        rewind(file_);
    }
    ~Stream() { fclose(file_); }
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    FILE *file() const { return file_; }

private:
    FILE *file_;
};

// The text as a file with a name, which is one for the whole run.
inline const char *text_file(const Bytes &text) {
    static char name[64];
    if (name[0] == '\0') {
        const char *folder = getenv("JKC_FUZZ_DIR");
        snprintf(name, sizeof name, "%s/jkc-fuzz-%p", folder != nullptr ? folder : ".", static_cast<void *>(name));
        atexit([] { remove(name); });
    }
    FILE *file = fopen(name, "wb");
    JKC_EXPECT(file != nullptr && fwrite(text.data(), 1, text.size(), file) == text.size());
    fclose(file);
    return name;
}

} // namespace jkc::fuzz
