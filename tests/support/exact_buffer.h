// Input in a heap block of exactly its own size, so that AddressSanitizer sees every read past it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace jkc::testing {

class ExactBuffer {
public:
    explicit ExactBuffer(std::string_view bytes) : size_(bytes.size()), bytes_(new uint8_t[bytes.size()]) {
        std::copy(bytes.begin(), bytes.end(), bytes_.get());
    }

    const uint8_t *data() const { return bytes_.get(); }
    const char *chars() const { return reinterpret_cast<const char *>(bytes_.get()); }
    size_t size() const { return size_; }

private:
    size_t size_;
    std::unique_ptr<uint8_t[]> bytes_;
};

} // namespace jkc::testing
