// Lets a conversion take any bytes as any code type, so that broken and very short texts reach every converter.
// The linker wraps the driver's call of the judgement.
#pragma once

namespace jkc::testing {

// While one is alive, a conversion reads its input without judging it.
class ForcedJudgement {
public:
    explicit ForcedJudgement(int code_type);
    ~ForcedJudgement();
    ForcedJudgement(const ForcedJudgement &) = delete;
    ForcedJudgement &operator=(const ForcedJudgement &) = delete;
};

} // namespace jkc::testing
