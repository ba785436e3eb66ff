// What the program looks for in a text itself, where the library does not look or does not tell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace jkc::cli {

// Whether a text is well-formed UTF-8 with a character of three bytes or more, which other text hardly ever is by
// chance.
bool is_surely_utf8(std::string_view text);

// Where the first byte is that no text holds, if the answer of the judgement leaves no code type but those in bytes.
std::optional<size_t> find_binary_byte(std::string_view text, int judged);

// "binary: byte 00 at byte 12"
std::string describe_binary(std::string_view text, size_t offset);

struct BadBytes {
    uint64_t count = 0;
    size_t first = 0;
    size_t last = 0;

    void add(size_t offset);
};

// The ill-formed bytes of a text in a code type.
BadBytes find_ill_formed(std::string_view text, int code_type);

// What a conversion of a text to another encoding spoils and the library does not record.
BadBytes find_unrecorded(std::string_view text, int code_type, int target);

} // namespace jkc::cli
