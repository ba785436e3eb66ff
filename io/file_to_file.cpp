// Converts a file into a file.
#include "io/outcome.h"
#include "io/path.h"

const char *_dpath = nullptr;
FILE *_dfp = nullptr;

// The destination is made here: a source of unknown code type leaves it alone.
int32_t _io_observer(int32_t code_type, void * /*user_data*/) {
    jkc::outcome.code_type = code_type;
    if (!jkc::is_decided_type(code_type)) {
        return jkc::answer_undecided(code_type);
    }
    _dfp = fopen(_dpath, "wb");
    if (_dfp == nullptr) {
        jkc::outcome.code_type = JKC_EWOPEN;
        return -1;
    }
    jkc::outcome.decided = true;
    return 0;
}

// JIS X 0213 text is converted although no destination was made for it.
int32_t _io_writer(const uint8_t *data, uint64_t length, void * /*user_data*/) {
    return _dfp != nullptr && fwrite(data, 1, length, _dfp) == length ? JKC_SUCCESS : JKC_EWRITE;
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
    jkc::Outcome &outcome = jkc::outcome;
    outcome = jkc::kNothingYet;
    _dpath = dst_path;
    _dfp = nullptr;
    int64_t status = jkc_convert_file(ctx, src_path, static_cast<int32_t>(src_type), static_cast<int32_t>(dst_type),
                                      source_hint != 0, _io_observer, _io_writer, nullptr);
    if (outcome.code_type == JKC_EWOPEN) {
        status = JKC_EWOPEN;
    }
    if (_dfp != nullptr && fclose(_dfp) != 0 && status == JKC_SUCCESS) {
        status = JKC_EWRITE;
    }
    if (status == JKC_SUCCESS) {
        // For the BOM the source counts as what the caller expected, not as what it was judged to be.
        outcome.operation = jkc::operation_between(outcome.code_type, src_type, dst_type);
    } else {
        outcome.code_type = status;
    }
    release_jkc(ctx);
    return status;
}
