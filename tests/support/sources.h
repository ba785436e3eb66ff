// The ways in which a text reaches the library, cut into reads of any size.
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "judge/input/foreign_source.h"
#include "support/temp_dir.h"

namespace jkc::testing {

enum class Way { kBuffer, kStream, kFile, kReader };

// Gives at most `piece` bytes a read, and nothing at every other call; answers `last` at the end.
struct CutReader : JkcReader {
    CutReader(std::string text, size_t size, int64_t answer = -1)
        : JkcReader{}, bytes(std::move(text)), piece(size), last(answer) {
        read = [](JkcReader *self, uint8_t *dst, size_t room) {
            return static_cast<CutReader *>(self)->next(dst, room);
        };
    }

    int64_t next(uint8_t *dst, size_t room) {
        if (position == bytes.size()) {
            return last;
        }
        idle = !idle;
        const size_t count = idle ? 0 : bytes.copy(reinterpret_cast<char *>(dst), std::min(room, piece), position);
        position += count;
        return static_cast<int64_t>(count);
    }

    std::string bytes;
    size_t piece;
    int64_t last;
    size_t position = 0;
    bool idle = false;
};

// The path of a file with this text, which the next call overwrites.
inline std::string text_file(const std::string &bytes) {
    static const TempDir dir;
    return dir.write("text", bytes);
}

} // namespace jkc::testing
