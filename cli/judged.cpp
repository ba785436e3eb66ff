#include "judged.h"

#include "code_types.h"
#include "objects.h"
#include "translate.h"

namespace jkc::cli {

Judged judge(Source &source, const Options &options) {
    const Detector detector = make_detector();
    source.read_all([&](const uint8_t *data, size_t length) { jkc_detector_feed(detector.get(), data, length); });
    Judged judged{finish(detector), 0, options.assume != 0, false};
    judged.type = judged.found.decision;
    if (judged.assumed) {
        judged.type = judged.found.length == 0 ? static_cast<int>(JKC_TYPE_EMPTY) : options.assume;
    } else if (judged.type == JKC_DECISION_UNDECIDED && options.from != 0) {
        const int expected = without_mark(options.from);
        const int likely = expected == JKC_TYPE_ASCII ? static_cast<int>(JKC_TYPE_SJIS) : expected;
        judged.is_expected = likely >= JKC_TYPE_SJIS && (judged.found.open & JKC_JUDGED_BIT(likely)) != 0;
        judged.type = judged.is_expected ? likely : judged.type;
    }
    return judged;
}

std::string undecided_reason(const Judged &judged, const Options &options) {
    switch (judged.type) {
    case JKC_DECISION_UNDECIDED:
        return format(tr("undecided (%s)"), judged_set_names(judged.found.open).c_str()) +
               (options.from == 0 ? tr("; -f CODE may decide") : "");
    case JKC_DECISION_BINARY:
        return tr("binary");
    default:
        return tr("no code type fits all of it ('jkc check' tells where)");
    }
}

} // namespace jkc::cli
