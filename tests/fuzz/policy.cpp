// The program, by its own policy: what it converts without a word of loss comes back, and whatever else becomes of a text
// is told.
#include "cli/conversion.h"
#include "tests/fuzz/support.h"
#include "tests/support/same_text.h"

namespace jkc::fuzz {
namespace {

using namespace jkc::cli;

Options some_options(Choices &choices) {
    Options options;
    options.to = kCodeTypes[choices.below(kCodeTypeCount)];
    options.from = choices.below(3) == 0 ? kCodeTypes[choices.below(kCodeTypeCount)] : 0;
    options.any_variant = options.to == JKC_TYPE_EUC || options.to == JKC_TYPE_JIS;
    options.in_place = choices.yes();
    options.report = choices.yes() ? ReportForm::kJson : ReportForm::kNone;
    return options;
}

void convert(const Options &options, const Bytes &text) {
    Spoken spoken;
    collect(&spoken);
    Source source(text_file(text));
    FileReport report(options, source.name());
    FileConversion conversion(options, source, report);
    Progress progress({}, false);
    Outcome outcome = Outcome::kFailed;
    std::string made;
    if (conversion.prepare(outcome)) {
        outcome = conversion.run(
            true, [&](std::string_view piece) { made += piece; }, progress);
    }
    JKC_EXPECT(outcome != Outcome::kFailed);
    JKC_EXPECT(outcome == Outcome::kConverted || !spoken.messages.empty());
    JKC_EXPECT((options.report != ReportForm::kNone) == !report.text(outcome).empty());
    if (outcome == Outcome::kConverted && text.size() > 0) {
        Source again(source.name());
        const int type = judge(again, options).type;
        const int target = choose_target(again, {{type, 1, 1, 0, again.length()}}, options);
        JKC_EXPECT(testing::is_same_text({text.chars(), text.size()}, type, made, target));
    }
    collect(nullptr);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    using namespace jkc::fuzz;
    Choices choices(data, size);
    const auto options = some_options(choices);
    Bytes text;
    choices.take_text(text);
    convert(options, text);
    return 0;
}
