// The conversion of one text.
#pragma once

#include "input.h"
#include "options.h"
#include "outcomes.h"
#include "output.h"
#include "progress.h"

namespace jkc::cli {

// Writes a text in the wanted code type, and says what was lost or why it is refused. Throws FileError.
Outcome convert_text(const Options &options, const Input &in, Output &out, Progress &progress);

} // namespace jkc::cli
