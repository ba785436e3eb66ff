// The detector that is fed: gathers blocks, and gives each to all that looks at a text.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "core/context.h"
#include "judge/input/byte_source.h"
#include "judge/input/control_bytes.h"
#include "judge/input/feature_scan.h"
#include "judge/input/sample.h"
#include "judge/judgement.h"
#include "judge/scan/utf8_validity.h"

namespace jkc {

namespace {

static_assert(JKC_CANDIDATES == kCandidates);
static_assert(JKC_BLOCK_READ % Sample::kUnit == 0);

JkcContext default_context() {
    JkcContext ctx = {};
    set_defaults(ctx);
    return ctx;
}

// The code type of the BOM with which a text begins; 0 without one.
int32_t type_of_front(const uint8_t *p, size_t length) {
    BomMatch match{JKC_TYPE_EMPTY, true};
    for (size_t count = 1; count <= length && match.may_grow; ++count) {
        match = match_bom(p, count);
    }
    return match.type;
}

int32_t preferred_of(const JkcDetectorOptions *options) {
    constexpr size_t kEnd = offsetof(JkcDetectorOptions, preferred) + sizeof options->preferred;
    return options != nullptr && options->size >= kEnd ? options->preferred : static_cast<int32_t>(JKC_TYPE_EMPTY);
}

// Where a scanner begins in the next block, of which it has left something over.
int32_t next_start(const uint8_t *stopped, const uint8_t *end) {
    return JKC_BLOCK_HEADROOM - static_cast<int32_t>(end - stopped);
}

} // namespace

} // namespace jkc

struct JkcDetector {
    explicit JkcDetector(int32_t preferred_type)
        : preferred(preferred_type), ctx(jkc::default_context()), features(ctx, JKC_TYPE_EMPTY),
          judgement(&ctx, preferred_type, false, jkc::Counting::kEucToTheEnd) {
        jkc::reset_block(block);
        jkc::start_first_block(block);
    }
    // The parts know each other by address.
    JkcDetector(const JkcDetector &) = delete;
    JkcDetector &operator=(const JkcDetector &) = delete;

    void feed(const uint8_t *data, size_t size);
    void finish();

    int32_t preferred;
    bool ended = false;
    JkcDetection found = {}; // once it has ended

private:
    void take_block(bool last);
    void judge_block(const uint8_t *begin, bool last);
    void look_through_block(const uint8_t *begin, bool last);
    void tell_judgement();
    void tell_evidence();

    JkcBlock block;
    uint64_t length = 0; // of the text in front of the block
    JkcContext ctx;      // has no blocks

    int32_t bom = JKC_TYPE_EMPTY;  // the code type of the BOM with which the text begins
    jkc::UnicodeFeatures features; // of what is behind it
    jkc::Judgement judgement;      // without one
    bool stands = false;           // the judgement needs no more blocks
    jkc::LineEnds line_ends;

    jkc::Utf8Validity validity;
    int32_t validity_start = JKC_BLOCK_HEADROOM;
    int32_t features_start = JKC_BLOCK_HEADROOM;
    jkc::ControlBytes control_bytes;
    jkc::Sample sample;
};
static_assert(sizeof(JkcDetector) < 65536, "told in jkc/detector.h");

void JkcDetector::feed(const uint8_t *data, size_t size) {
    while (size > 0 && !ended) {
        auto filled = static_cast<size_t>(block.end - JKC_BLOCK_HEADROOM);
        if (filled == JKC_BLOCK_READ) { // no earlier: now it is not the last one
            take_block(false);
            jkc::start_next_block(block);
            filled = 0;
        }
        const size_t taken = std::min(size, JKC_BLOCK_READ - filled);
        memcpy(block.data + block.end, data, taken);
        block.end += static_cast<int32_t>(taken);
        data += taken;
        size -= taken;
    }
}

void JkcDetector::take_block(bool last) {
    const uint8_t *begin = block.data + JKC_BLOCK_HEADROOM;
    const uint8_t *const end = block.data + block.end;
    control_bytes.take(begin, end);
    sample.take(begin, end);
    const uint8_t *const from = block.data + validity_start;
    validity_start =
        jkc::next_start(validity.take(from, end, last, static_cast<int64_t>(length) + (from - begin)), end);

    if (length == 0) {
        bom = jkc::type_of_front(begin, static_cast<size_t>(end - begin));
        if (bom != JKC_TYPE_EMPTY) {
            features = jkc::UnicodeFeatures(ctx, bom);
            begin += jkc::bom_of(jkc::family_of(bom)).length;
            features_start = static_cast<int32_t>(begin - block.data);
        }
    }
    if (bom != JKC_TYPE_EMPTY) {
        look_through_block(begin, last);
    } else {
        judge_block(begin, last);
    }
    length += static_cast<uint64_t>(block.end - JKC_BLOCK_HEADROOM);
}

void JkcDetector::look_through_block(const uint8_t *begin, bool last) {
    const uint8_t *const end = block.data + block.end;
    line_ends.bytes.take(begin, end);
    features_start = jkc::next_start(features.take(block.data + features_start, end, last), end);
}

void JkcDetector::judge_block(const uint8_t *begin, bool last) {
    judgement.take_line_ends(begin, block.data + block.end, line_ends);
    if (!stands) {
        stands = judgement.take_block(block, last);
        if (last && !stands) {
            judgement.decide();
        }
    }
}

void JkcDetector::finish() {
    ended = true;
    const bool empty = block.end == JKC_BLOCK_HEADROOM;
    if (!empty) {
        take_block(true);
    }
    found.length = length;
    if (empty) {
        found.judged = found.judged_set = JKC_TYPE_EMPTY;
    } else {
        tell_judgement();
    }
    found.srg_exists = ctx.srg_exists;
    found.utfmac_exists = ctx.utfmac_exists;
    tell_evidence();
    found.utf8_first_error = validity.first_error;
    found.utf8_two_byte = validity.two_byte;
    found.utf8_longer = validity.longer;
    found.nul_count = control_bytes.nuls();
    found.control_count = control_bytes.controls();
    jkc::decide(found, sample.get(length));
}

// As judge() answers.
void JkcDetector::tell_judgement() {
    using jkc::Verdict;
    const jkc::Verdict &verdict = judgement.verdict;
    if (bom != JKC_TYPE_EMPTY) {
        const int status = features.tell(ctx);
        found.judged = found.judged_set = status != JKC_SUCCESS ? status : bom;
        found.line_ends = status != JKC_SUCCESS ? 0 : line_ends.of(bom);
        return;
    }
    found.judged = verdict.result;
    found.judged_set = verdict.kind == Verdict::Kind::kSingle ? verdict.result : judgement.possible;
    found.line_ends = verdict.kind == Verdict::Kind::kSet ? 0 : line_ends.of(verdict.result);
}

void JkcDetector::tell_evidence() {
    jkc::Judgement::Found evidence;
    judgement.tell(evidence);
    for (int i = 0; i < jkc::kCandidates; ++i) {
        const jkc::Evidence &e = evidence[i];
        found.evidence[i] = {jkc::kCandidateTypes[i], 0, e.valid, e.errors, e.kana, e.penalty, e.first_error};
    }
}

int32_t jkc_detector_create(JkcDetector **detector, const JkcDetectorOptions *options) {
    void *memory = malloc(sizeof(JkcDetector));
    *detector = memory != nullptr ? new (memory) JkcDetector(jkc::preferred_of(options)) : nullptr;
    return memory != nullptr ? JKC_SUCCESS : JKC_EALLOC;
}

void jkc_detector_release(JkcDetector *detector) { free(detector); }

void jkc_detector_reset(JkcDetector *detector) {
    const int32_t preferred = detector->preferred;
    new (detector) JkcDetector(preferred);
}

void jkc_detector_feed(JkcDetector *detector, const uint8_t *data, size_t length) { detector->feed(data, length); }

void jkc_detector_finish(JkcDetector *detector, JkcDetection *found) {
    if (!detector->ended) {
        detector->finish();
    }
    JkcDetection told = detector->found;
    told.size = found->size;
    memcpy(found, &told, std::min(told.size, sizeof told));
}
