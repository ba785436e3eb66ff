// Converts a file into a file.
#include <atomic>

#include "core/bytes.h"
#include "core/files.h"
#include "io/outcome.h"
#include "io/path.h"

const char *_dpath = nullptr;
FILE *_dfp = nullptr;

namespace jkc {

namespace {

struct FileConversion {
    Outcome outcome;
    const char *destination;
    FILE *file;
};

// The destination is made here: a source of unknown code type leaves it alone.
int32_t make_destination(FileConversion &conversion, int32_t code_type) {
    if (!take_judged(conversion.outcome, code_type)) {
        return answer_undecided(code_type);
    }
    conversion.file = open_to_write(conversion.destination);
    std::atomic_ref(_dfp).store(conversion.file);
    if (conversion.file == nullptr) {
        conversion.outcome.code_type = JKC_EWOPEN;
        return -1;
    }
    conversion.outcome.decided = true;
    return 0;
}

// JIS X 0213 text is converted although no destination was made for it.
int32_t write_to(FILE *file, const uint8_t *data, uint64_t length) {
    return file != nullptr && fwrite(data, 1, as_size(length), file) == length ? JKC_SUCCESS : JKC_EWRITE;
}

int32_t observe(int32_t code_type, void *conversion) {
    return make_destination(*static_cast<FileConversion *>(conversion), code_type);
}

int32_t write(const uint8_t *data, uint64_t length, void *conversion) {
    return write_to(static_cast<FileConversion *>(conversion)->file, data, length);
}

} // namespace

} // namespace jkc

// These two are for callers who set the variables themselves.
int32_t _io_observer(int32_t code_type, void * /*user_data*/) {
    jkc::FileConversion conversion{jkc::last_outcome(), _dpath, _dfp};
    const int32_t answer = jkc::make_destination(conversion, code_type);
    jkc::set_last_outcome(conversion.outcome);
    return answer;
}

int32_t _io_writer(const uint8_t *data, uint64_t length, void * /*user_data*/) {
    return jkc::write_to(_dfp, data, length);
}

int64_t jkc_io_convert_file(const char *src_path, int64_t src_type, const char *dst_path, int64_t dst_type,
                            uint8_t source_hint) {
    if (const int32_t status = jkc::require_regular_file(src_path); status != JKC_SUCCESS) {
        return status;
    }
    JkcContext *ctx = create_jkc();
    if (ctx == nullptr) {
        return JKC_EALLOC;
    }
    std::atomic_ref(_dpath).store(dst_path);
    std::atomic_ref(_dfp).store(nullptr);
    jkc::FileConversion conversion{{}, dst_path, nullptr};
    jkc::Outcome &outcome = conversion.outcome;
    int64_t status = jkc_convert_file(ctx, src_path, static_cast<int32_t>(src_type), static_cast<int32_t>(dst_type),
                                      source_hint != 0, jkc::observe, jkc::write, &conversion);
    if (outcome.code_type == JKC_EWOPEN) {
        status = JKC_EWOPEN;
    }
    if (conversion.file != nullptr && fclose(conversion.file) != 0 && status == JKC_SUCCESS) {
        status = JKC_EWRITE;
    }
    if (status == JKC_SUCCESS) {
        // For the BOM the source counts as what the caller expected, not as what it was judged to be.
        outcome.operation = jkc::operation_between(outcome.code_type, src_type, dst_type);
    } else {
        outcome.code_type = status;
    }
    jkc::set_last_outcome(outcome);
    release_jkc(ctx);
    return status;
}
