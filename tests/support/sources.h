// The ways in which a text reaches the library, cut into reads of any size.
#pragma once

#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

#include <unistd.h>

#include "judge/reader.h"

namespace jkc::testing {

enum class Way { kBuffer, kStream, kFile, kReader };

// Gives at most `piece` bytes a read, and nothing at every other call.
struct CutReader : JkcReader {
    CutReader(std::string text, size_t size) : JkcReader{}, bytes(std::move(text)), piece(size) {
        read = [](JkcReader *self, uint8_t *dst, size_t room) {
            return static_cast<CutReader *>(self)->next(dst, room);
        };
    }

    int64_t next(uint8_t *dst, size_t room) {
        if (position == bytes.size()) {
            return -1;
        }
        idle = !idle;
        const size_t count = idle ? 0 : bytes.copy(reinterpret_cast<char *>(dst), std::min(room, piece), position);
        position += count;
        return static_cast<int64_t>(count);
    }

    std::string bytes;
    size_t piece;
    size_t position = 0;
    bool idle = false;
};

class TempFile {
public:
    explicit TempFile(const std::string &bytes) {
        close(mkstemp(path_.data()));
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~TempFile() { unlink(path_.c_str()); }
    TempFile(const TempFile &) = delete;
    TempFile &operator=(const TempFile &) = delete;

    const char *path() const { return path_.c_str(); }

private:
    std::string path_ = "/tmp/jkc-test-XXXXXX";
};

} // namespace jkc::testing
