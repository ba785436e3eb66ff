#include "descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace jkc::cli {
namespace {

using Block = std::array<char, 65536>;

// As pread(), but short at the end only.
ssize_t read_block(int descriptor, Block &block, off_t offset) {
    size_t filled = 0;
    while (filled < block.size()) {
        const ssize_t count =
            pread(descriptor, block.data() + filled, block.size() - filled, offset + static_cast<off_t>(filled));
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return -1;
        }
        filled += count < 0 ? 0 : static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

} // namespace

size_t write_all(int descriptor, const void *data, size_t length) {
    const auto *bytes = static_cast<const char *>(data);
    size_t done = 0;
    while (done < length) {
        const ssize_t written = ::write(descriptor, bytes + done, length - done);
        if (written >= 0) {
            done += static_cast<size_t>(written);
        } else if (errno != EINTR) {
            break;
        }
    }
    return done;
}

bool copy_content(int from, int to) {
    Block block{};
    ssize_t count = 0;
    for (off_t at = 0; (count = read_block(from, block, at)) > 0; at += count) {
        if (write_all(to, block.data(), static_cast<size_t>(count)) != static_cast<size_t>(count)) {
            return false;
        }
    }
    return count == 0;
}

bool sync_to_disk(int descriptor) { return fsync(descriptor) == 0 || errno == EINVAL; }

void sync_folder(const std::string &path) {
    const Descriptor folder(open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.number() >= 0) {
        fsync(folder.number());
    }
}

bool same_content(int a, int b) {
    struct stat a_file {};
    struct stat b_file {};
    if (fstat(a, &a_file) != 0 || fstat(b, &b_file) != 0 || a_file.st_size != b_file.st_size) {
        return false;
    }
    Block a_block{};
    Block b_block{};
    ssize_t count = 0;
    for (off_t at = 0; (count = read_block(a, a_block, at)) > 0; at += count) {
        if (read_block(b, b_block, at) != count ||
            !std::equal(a_block.begin(), a_block.begin() + count, b_block.begin())) {
            return false;
        }
    }
    return count == 0;
}

} // namespace jkc::cli
