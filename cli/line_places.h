// Where a byte of a text stands: its line and column.
#pragma once

#include <cstdint>
#include <string>

namespace jkc::cli {

// Both from 1 on, the column in characters.
struct Place {
    uint64_t line;
    uint64_t column;
};

// Follows a text in one code type that comes in pieces. Its offsets begin with `offset`, its lines with `line`.
class LinePlaces {
public:
    explicit LinePlaces(int code_type, uint64_t offset = 0, uint64_t line = 1)
        : code_type_(code_type), offset_(offset), line_(line) {}

    void next(const uint8_t *data, size_t length);
    // The place of the byte at `offset`, in the last piece or at most kReach before it, where a character begins or a loss
    // stands. Offsets never go back.
    Place at(uint64_t offset);

private:
    static constexpr size_t kReach = 64; // more than a converter keeps back
    static constexpr size_t kLongLine = 65536;

    void pass(size_t end);
    uint64_t count_characters(size_t end);

    int code_type_;
    std::string bytes_;  // the last ones
    uint64_t offset_;    // of bytes_
    size_t passed_ = 0;  // of them, how many have been looked at for line ends
    size_t counted_ = 0; // of them, how many are of other lines or in characters_
    uint64_t line_;
    uint64_t characters_ = 0; // of this line, counted already
    bool behind_cr_ = false;
};

} // namespace jkc::cli
