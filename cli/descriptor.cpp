#include "descriptor.h"

#include <algorithm>
#include <array>

namespace jkc::cli {
namespace {

using Block = std::array<char, 65536>;

// Short at the end only.
ptrdiff_t read_block(int descriptor, Block &block, uint64_t offset) {
    size_t filled = 0;
    while (filled < block.size()) {
        const ptrdiff_t count = read_some_at(descriptor, block.data() + filled, block.size() - filled, offset + filled);
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<size_t>(count);
    }
    return static_cast<ptrdiff_t>(filled);
}

} // namespace

size_t write_all(int descriptor, const void *data, size_t length) {
    const auto *bytes = static_cast<const char *>(data);
    size_t done = 0;
    while (done < length) {
        const ptrdiff_t written = write_some(descriptor, bytes + done, length - done);
        if (written < 0) {
            break;
        }
        done += static_cast<size_t>(written);
    }
    return done;
}

bool copy_content(int from, int to) {
    Block block{};
    ptrdiff_t count = 0;
    for (uint64_t at = 0; (count = read_block(from, block, at)) > 0; at += static_cast<uint64_t>(count)) {
        if (write_all(to, block.data(), static_cast<size_t>(count)) != static_cast<size_t>(count)) {
            return false;
        }
    }
    return count == 0;
}

bool same_content(int a, int b) {
    const auto a_file = status_of(a);
    const auto b_file = status_of(b);
    if (!a_file || !b_file || a_file->size != b_file->size) {
        return false;
    }
    Block a_block{};
    Block b_block{};
    ptrdiff_t count = 0;
    for (uint64_t at = 0; (count = read_block(a, a_block, at)) > 0; at += static_cast<uint64_t>(count)) {
        if (read_block(b, b_block, at) != count ||
            !std::equal(a_block.begin(), a_block.begin() + count, b_block.begin())) {
            return false;
        }
    }
    return count == 0;
}

} // namespace jkc::cli
