// The code units of a code type: bytes, or two bytes in UTF-16.
#pragma once

#include <cstddef>
#include <string_view>

#include "code_types.h"

namespace jkc::cli {

class CodeUnits {
public:
    explicit CodeUnits(int code_type)
        : size_(is_utf16(code_type) ? 2 : 1), big_endian_(without_mark(code_type) == JKC_TYPE_UTF16BE) {}

    size_t size() const { return size_; }
    // The one at this byte, of which size() bytes must be there.
    unsigned at(std::string_view text, size_t offset) const {
        const unsigned first = static_cast<unsigned char>(text[offset]);
        if (size_ == 1) {
            return first;
        }
        const unsigned second = static_cast<unsigned char>(text[offset + 1]);
        return big_endian_ ? first << 8 | second : second << 8 | first;
    }

private:
    size_t size_;
    bool big_endian_;
};

} // namespace jkc::cli
