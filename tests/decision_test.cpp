// The decision about a text, and the rule that makes it. The cases are in tests/data/decision.txt.
#include <gtest/gtest.h>

#include "jkc.h"
#include "support/case_file.h"

namespace jkc::testing {

namespace {

JkcDetection detect(const std::string &text) {
    JkcDetection found{};
    found.size = sizeof found;
    JkcDetector *detector = nullptr;
    EXPECT_EQ(jkc_detector_create(&detector, nullptr), JKC_SUCCESS);
    jkc_detector_feed(detector, reinterpret_cast<const uint8_t *>(text.data()), text.size());
    jkc_detector_finish(detector, &found);
    jkc_detector_release(detector);
    return found;
}

} // namespace

TEST(Decision, EachTextIsDecidedByItsRule) {
    check_results("decision.txt", [](const Case &c) {
        const JkcDetection found = detect(c.input);
        std::string answer = jkc_decision_name(found.decision);
        answer.append(" ").append(std::to_string(found.confidence));
        if (found.open != 0) {
            char names[160];
            jkc_judged_type_names(names, sizeof names, found.open);
            answer += std::string(" open=") + names;
        }
        return answer + ": " + jkc_rule_name(found.rule);
    });
}

TEST(Decision, OtherNumbersHaveNoName) {
    for (const int32_t number : {-4, 9, 17, 64}) {
        EXPECT_STREQ(jkc_decision_name(number), "") << number;
    }
    EXPECT_STREQ(jkc_rule_name(0), "");
    EXPECT_STREQ(jkc_rule_name(100), "");
}

} // namespace jkc::testing
