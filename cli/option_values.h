// The words that some options take, and what each means.
#pragma once

#include <cstdint>
#include <utility>

#include "jkc/converter.h"
#include "options.h"

namespace jkc::cli {

template <typename Value>
using OptionValue = std::pair<const char *, Value>;

inline constexpr OptionValue<uint32_t> kLineTypes[] = {
    {"keep", JKC_LINE_KEEP}, {"lf", JKC_LINE_LF}, {"crlf", JKC_LINE_CRLF}, {"cr", JKC_LINE_CR}};

inline constexpr OptionValue<uint8_t> kLossPolicies[] = {{"replace", JKC_ON_LOSS_REPLACE},
                                                         {"omit", JKC_ON_LOSS_OMIT},
                                                         {"escape", JKC_ON_LOSS_ESCAPE},
                                                         {"stop", JKC_ON_LOSS_STOP}};

inline constexpr OptionValue<ReportForm> kReportForms[] = {{"text", ReportForm::kText}, {"json", ReportForm::kJson}};

} // namespace jkc::cli
