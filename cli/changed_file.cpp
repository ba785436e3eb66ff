#include "changed_file.h"

#include <algorithm>

namespace jkc::cli {

// What was the same so far is taken from the source.
void ChangedFile::begin_file() {
    differs_ = true;
    if (only_compare_) {
        return;
    }
    file_ = std::make_unique<SafeFile>(source_.name(), backup_suffix_, source_.status());
    constexpr uint64_t kPiece = 65536;
    for (uint64_t done = 0; done < equal_;) {
        const std::string same = source_.slice(done, std::min(equal_, done + kPiece));
        file_->print(same);
        done += same.size();
    }
}

void ChangedFile::print(std::string_view text) {
    if (!differs_) {
        if (source_.slice(equal_, equal_ + text.size()) == text) {
            equal_ += text.size();
            return;
        }
        begin_file();
    }
    if (file_) {
        file_->print(text);
    }
}

bool ChangedFile::changes() {
    if (!differs_ && equal_ < source_.length()) {
        begin_file();
    }
    return differs_;
}

void ChangedFile::commit(bool keep_time) {
    if (file_) {
        if (keep_time) {
            file_->set_time(source_.status().modified);
        }
        source_.close();
        file_->commit();
    }
}

} // namespace jkc::cli
