#include "source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "report.h"
#include "translate.h"

namespace jkc::cli {
namespace {

constexpr size_t kPiece = 65536;
constexpr size_t kMostInMemory = size_t{64} << 20;

std::unique_ptr<Descriptor> open_file(const std::string &name) {
    if (name == "-") {
        return nullptr;
    }
    auto file = std::make_unique<Descriptor>(open_to_read(name));
    if (file->number() < 0) {
        throw FileError(name, errno);
    }
    return file;
}

std::unique_ptr<Descriptor> open_spill() {
    auto file = std::make_unique<Descriptor>(open_temporary());
    if (file->number() < 0) {
        throw FileError(tr("temporary file"), errno);
    }
    return file;
}

} // namespace

Source::Source(std::string name) : name_(std::move(name)), opened_(open_file(name_)) {
    file_ = opened_ ? opened_->number() : kStandardInput;
    const auto status = status_of(file_);
    if (!status) {
        fail(errno);
    }
    status_ = *status;
    if (status_.kind == FileKind::kFolder) {
        fail(EISDIR);
    }
    const int64_t position = position_of(file_);
    rereadable_ = status_.kind == FileKind::kRegular && position >= 0;
    begin_ = rereadable_ ? static_cast<uint64_t>(position) : 0;
}

void Source::fail(int error_number) const { throw FileError(name_, error_number); }

size_t Source::read_at(uint64_t offset, uint8_t *data, size_t room) const {
    if (!rereadable_ && offset < kept_.size()) {
        const size_t count = std::min<uint64_t>(room, kept_.size() - offset);
        memcpy(data, kept_.data() + offset, count);
        return count;
    }
    const int file = rereadable_ ? file_ : spill_ ? spill_->number() : -1;
    const uint64_t at = rereadable_ ? begin_ + offset : offset - kept_.size();
    const ptrdiff_t got = read_some_at(file, data, room, at);
    if (got < 0) {
        fail(errno);
    }
    return static_cast<size_t>(got);
}

void Source::keep(const uint8_t *data, size_t length) {
    const size_t in_memory = std::min(length, kMostInMemory - std::min(kMostInMemory, kept_.size()));
    kept_.append(reinterpret_cast<const char *>(data), in_memory);
    if (in_memory == length) {
        return;
    }
    if (!spill_) {
        spill_ = open_spill();
    }
    if (write_all(spill_->number(), data + in_memory, length - in_memory) != length - in_memory) {
        throw FileError(tr("temporary file"), errno);
    }
}

size_t Source::read_first(uint8_t *data, size_t room) const {
    if (rereadable_) {
        return read_at(length_, data, room);
    }
    const ptrdiff_t got = read_some(file_, data, room);
    if (got < 0) {
        fail(errno);
    }
    return static_cast<size_t>(got);
}

void Source::read_all(const std::function<void(const uint8_t *data, size_t length)> &take) {
    std::vector<uint8_t> piece(kPiece);
    while (const size_t got = read_first(piece.data(), piece.size())) {
        length_ += got;
        if (!rereadable_) {
            keep(piece.data(), got);
        }
        take(piece.data(), got);
    }
}

void Source::read(uint64_t begin, uint64_t end,
                  const std::function<bool(const uint8_t *data, size_t length)> &take) const {
    std::vector<uint8_t> piece(kPiece);
    while (begin < end) {
        const size_t got = read_at(begin, piece.data(), std::min<uint64_t>(piece.size(), end - begin));
        if (got == 0) {
            throw FileError(name_, tr("became shorter while it was read"));
        }
        begin += got;
        if (!take(piece.data(), got)) {
            return;
        }
    }
}

std::string Source::slice(uint64_t begin, uint64_t end) const {
    std::string bytes;
    if (begin < length_) {
        read(begin, std::min(end, length_), [&](const uint8_t *data, size_t length) {
            bytes.append(reinterpret_cast<const char *>(data), length);
            return true;
        });
    }
    return bytes;
}

} // namespace jkc::cli
