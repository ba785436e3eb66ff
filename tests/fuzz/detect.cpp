// A detector that is fed answers the same however the text is cut, and its judgement is that of the whole call.
#include "tests/fuzz/support.h"

#include "jkc/detector.h"

namespace jkc::fuzz {
namespace {

// `next()` is the size of the next piece.
template <class Next>
void detect(JkcDetector *detector, const Bytes &text, JkcDetection &found, Next next) {
    for (size_t at = 0; at < text.size();) {
        const Bytes piece(text.data() + at, std::min<size_t>(next(), text.size() - at));
        jkc_detector_feed(detector, piece.data(), piece.size());
        at += piece.size();
    }
    found = {};
    found.size = sizeof found;
    jkc_detector_finish(detector, &found);
}

void expect_sound(const JkcDetection &found, const Bytes &text) {
    const auto length = static_cast<int64_t>(text.size());
    JKC_EXPECT(found.length == text.size());
    JKC_EXPECT(found.utf8_first_error >= -1 && found.utf8_first_error < std::max<int64_t>(length, 1));
    JKC_EXPECT(found.nul_count + found.control_count <= text.size());
    JKC_EXPECT(found.confidence >= 0 && found.confidence <= 100);
    JKC_EXPECT(*jkc_rule_name(found.rule) != '\0' && *jkc_decision_name(found.decision) != '\0');
    JKC_EXPECT((found.decision == JKC_DECISION_UNDECIDED) == (found.open != 0));
    for (const JkcEvidence &evidence : found.evidence) {
        JKC_EXPECT(evidence.first_error >= -1 && evidence.first_error < std::max<int64_t>(length, 1));
    }
}

// What jkc_judges_buffer() answers and leaves behind.
void expect_judged(const JkcDetection &found, const Bytes &text, int32_t preferred) {
    JkcContext *ctx = create_jkc();
    int type = 0;
    int line = 0;
    JKC_EXPECT(jkc_judges_buffer(ctx, &type, &line, text.chars(), text.size(), preferred) == found.judged);
    JKC_EXPECT(type == found.judged_set && line == found.line_ends);
    JKC_EXPECT(ctx->srg_exists == found.srg_exists && ctx->utfmac_exists == found.utfmac_exists);
    release_jkc(ctx);
}

void run(Choices &choices) {
    JkcDetectorOptions options = {};
    options.size = sizeof options;
    options.preferred = static_cast<int32_t>(choices.below(18));
    Bytes text;
    choices.take_text(text, choices.yes() ? 1 : 2, choices.below(2));
    JkcDetector *detector = nullptr;
    JKC_EXPECT(jkc_detector_create(&detector, &options) == JKC_SUCCESS);
    JkcDetection whole;
    detect(detector, text, whole, [&] { return text.size(); });
    expect_sound(whole, text);
    expect_judged(whole, text, options.preferred);
    jkc_detector_reset(detector);
    JkcDetection cut;
    detect(detector, text, cut, [&] { return choices.piece(); });
    JKC_EXPECT(memcmp(&cut, &whole, sizeof whole) == 0);
    jkc_detector_release(detector);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    jkc::fuzz::Choices choices(data, size);
    jkc::fuzz::run(choices);
    return 0;
}
